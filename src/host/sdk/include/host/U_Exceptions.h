// Exception reports: an error that a plug-in caught, shown to the user by the host.
#pragma once

#include <exception>

#include "qzgp/QZ_Basic.h"

/// [ui-thread] Reports `error` to the user and gives the result code that the
/// reporting function returns to the host.
QZ_HOST_API QZ_Err U_TranslateAndReportException(const std::exception& error);
