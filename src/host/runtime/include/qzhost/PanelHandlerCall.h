// The host's wrapper around a call into a panel's handler, or around a user's action that
// makes the workspace build a panel: nothing that the plug-in throws leaves the host.
#pragma once

#include <functional>
#include <optional>

#include "qzgp/QZ_Basic.h"

namespace qzhost {

/// Runs `handler`. When it throws: an integer gives that code; a std::exception is
/// reported through U_TranslateAndReportException and gives what that returns; anything
/// else gives QZ_Err_GENERIC. Nullopt when it returned normally.
QZ_HOST_API std::optional<QZ_Err> CallPanelHandler(const std::function<void()>& handler);

} // namespace qzhost
