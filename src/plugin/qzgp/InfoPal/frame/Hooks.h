// The hooks that the plug-in registers with the host: thin trampolines that find the
// plug-in object behind the global reference and run its handler inside the host-call
// guard. A null global reference makes every hook a successful no-op.
#pragma once

#include "qzgp/QZGP_RegisterSuite.h"

namespace infopal {

QZ_Err CommandHook(QZGP_GlobalRefcon global, QZGP_HookRefcon refcon, QZGP_Command command,
                   QZGP_HookPriority host_arg, bool already_handled, bool* handled);
QZ_Err UpdateMenuHook(QZGP_GlobalRefcon global, QZGP_HookRefcon refcon, QZGP_WindowType host_arg);
/// Runs the death handler, then destroys the plug-in object.
QZ_Err DeathHook(QZGP_GlobalRefcon global, QZGP_HookRefcon refcon);
QZ_Err IdleHook(QZGP_GlobalRefcon global, QZGP_HookRefcon refcon, std::int32_t* host_arg);

} // namespace infopal
