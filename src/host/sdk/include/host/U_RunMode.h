// How the host runs: with its user interface or without.
#pragma once

#include <cstdint>

#include "qzgp/QZ_Basic.h"

/// [any-thread] How the host runs: 0 interactive, 1 without a user interface.
QZ_HOST_API std::int32_t U_GetRunMode();
