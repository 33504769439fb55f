#include "InfoPal/frame/Hooks.h"

#include "InfoPal/frame/BasicQZGPHost.h"
#include "InfoPal/frame/HostCallGuard.h"

namespace infopal {

QZ_Err CommandHook(QZGP_GlobalRefcon global, QZGP_HookRefcon, QZGP_Command command,
                   QZGP_HookPriority, bool already_handled, bool* handled) {
    BasicQZGPHost* host = FromGlobalRefcon(global);
    if (host == nullptr) {
        return QZ_Err_NONE;
    }
    return GuardHostCall([&] { host->CommandHandler(command, already_handled, handled); });
}

QZ_Err UpdateMenuHook(QZGP_GlobalRefcon global, QZGP_HookRefcon, QZGP_WindowType) {
    BasicQZGPHost* host = FromGlobalRefcon(global);
    if (host == nullptr) {
        return QZ_Err_NONE;
    }
    return GuardHostCall([&] { host->UpdateMenuHandler(); });
}

QZ_Err DeathHook(QZGP_GlobalRefcon global, QZGP_HookRefcon) {
    BasicQZGPHost* host = FromGlobalRefcon(global);
    if (host == nullptr) {
        return QZ_Err_NONE;
    }
    return GuardHostCall([&] {
        host->DeathHandler();
        delete host;
    });
}

QZ_Err IdleHook(QZGP_GlobalRefcon global, QZGP_HookRefcon, std::int32_t*) {
    BasicQZGPHost* host = FromGlobalRefcon(global);
    if (host == nullptr) {
        return QZ_Err_NONE;
    }
    return GuardHostCall([&] { host->IdleHandler(); });
}

} // namespace infopal
