// The hooks that plug-ins registered through the Register suite, and the calls that
// the host makes through them.
#pragma once

#include <optional>

#include "qzgp/QZGP_RegisterSuite.h"

namespace qzhost {

struct RegisteredHooks {
    QZGP_PluginID plugin = 0;
    QZGP_CommandHook command = nullptr;
    QZGP_HookRefcon commandRefcon = nullptr;
    QZGP_HookPriority commandPriority = 0;
    QZGP_Command commandNumber = 0;
    QZGP_UpdateMenuHook updateMenu = nullptr;
    QZGP_HookRefcon updateMenuRefcon = nullptr;
    QZGP_DeathHook death = nullptr;
    QZGP_HookRefcon deathRefcon = nullptr;
    QZGP_IdleHook idle = nullptr;
    QZGP_HookRefcon idleRefcon = nullptr;
};

class QZ_HOST_API HookRegistry {
public:
    static HookRegistry& Get();
    void Reset();

    RegisteredHooks& Hooks() noexcept { return hooks_; }
    const RegisteredHooks& Hooks() const noexcept { return hooks_; }
    /// Forgets every hook (after the death hook has run).
    void Clear() noexcept { hooks_ = RegisteredHooks{}; }

private:
    HookRegistry() = default;
    RegisteredHooks hooks_;
};

} // namespace qzhost
