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

/// The kinds of hook that the Register suite takes.
enum class HookKind { Command, UpdateMenu, Death, Idle };
inline constexpr int kHookKindCount = 4;

class QZ_HOST_API HookRegistry {
public:
    static HookRegistry& Get();
    void Reset();

    RegisteredHooks& Hooks() noexcept { return hooks_; }
    const RegisteredHooks& Hooks() const noexcept { return hooks_; }
    /// Forgets every hook and every count of registrations (after the death hook has
    /// run).
    void Clear() noexcept {
        hooks_ = RegisteredHooks{};
        for (int& count : registrations_) {
            count = 0;
        }
    }

    /// Counts one accepted registration of a hook of `kind`; returns how many there were
    /// before it since the last Clear. A plug-in registers each kind once.
    int CountRegistration(HookKind kind) noexcept {
        return registrations_[static_cast<int>(kind)]++;
    }
    /// Accepted registrations of a hook of `kind` since the last Clear.
    int Registrations(HookKind kind) const noexcept {
        return registrations_[static_cast<int>(kind)];
    }

private:
    HookRegistry() = default;
    RegisteredHooks hooks_;
    int registrations_[kHookKindCount] = {0, 0, 0, 0};
};

} // namespace qzhost
