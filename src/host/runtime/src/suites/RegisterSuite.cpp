// "QZGP Register Suite" version 6: the host side of hook registration.
#include "qzgp/QZGP_RegisterSuite.h"
#include "qzhost/HookRegistry.h"
#include "qzhost/HostControls.h"

namespace qzhost {

namespace {

// A second registration of a hook kind replaces the first here, where the application
// would call both: a breach that the host records.
void NoteRegistration(HookKind kind, const char* what) {
    if (HookRegistry::Get().CountRegistration(kind) > 0) {
        HostControls::Get().RecordViolation(what);
    }
}

QZ_Err RegisterCommandHook(QZGP_PluginID plugin, QZGP_HookPriority priority, QZGP_Command command,
                           QZGP_CommandHook hook, QZGP_HookRefcon refcon) {
    RequireUIThread("RegisterCommandHook");
    if (QZ_Err err = HostControls::Get().InjectedError(op::kRegisterCommandHook)) {
        return err;
    }
    if (hook == nullptr) {
        return QZ_Err_NULL_ARGUMENT;
    }
    NoteRegistration(HookKind::Command,
                     "RegisterCommandHook: a command hook was registered a second time");
    RegisteredHooks& hooks = HookRegistry::Get().Hooks();
    hooks.plugin = plugin;
    hooks.command = hook;
    hooks.commandRefcon = refcon;
    hooks.commandPriority = priority;
    hooks.commandNumber = command;
    return QZ_Err_NONE;
}

QZ_Err RegisterUpdateMenuHook(QZGP_PluginID plugin, QZGP_UpdateMenuHook hook,
                              QZGP_HookRefcon refcon) {
    RequireUIThread("RegisterUpdateMenuHook");
    if (QZ_Err err = HostControls::Get().InjectedError(op::kRegisterUpdateMenuHook)) {
        return err;
    }
    if (hook == nullptr) {
        return QZ_Err_NULL_ARGUMENT;
    }
    NoteRegistration(HookKind::UpdateMenu,
                     "RegisterUpdateMenuHook: an update-menu hook was registered a second time");
    RegisteredHooks& hooks = HookRegistry::Get().Hooks();
    hooks.plugin = plugin;
    hooks.updateMenu = hook;
    hooks.updateMenuRefcon = refcon;
    return QZ_Err_NONE;
}

QZ_Err RegisterDeathHook(QZGP_PluginID plugin, QZGP_DeathHook hook, QZGP_HookRefcon refcon) {
    RequireUIThread("RegisterDeathHook");
    if (QZ_Err err = HostControls::Get().InjectedError(op::kRegisterDeathHook)) {
        return err;
    }
    if (hook == nullptr) {
        return QZ_Err_NULL_ARGUMENT;
    }
    NoteRegistration(HookKind::Death,
                     "RegisterDeathHook: a death hook was registered a second time");
    RegisteredHooks& hooks = HookRegistry::Get().Hooks();
    hooks.plugin = plugin;
    hooks.death = hook;
    hooks.deathRefcon = refcon;
    return QZ_Err_NONE;
}

QZ_Err RegisterIdleHook(QZGP_PluginID plugin, QZGP_IdleHook hook, QZGP_HookRefcon refcon) {
    RequireUIThread("RegisterIdleHook");
    if (QZ_Err err = HostControls::Get().InjectedError(op::kRegisterIdleHook)) {
        return err;
    }
    if (hook == nullptr) {
        return QZ_Err_NULL_ARGUMENT;
    }
    NoteRegistration(HookKind::Idle, "RegisterIdleHook: an idle hook was registered a second time");
    RegisteredHooks& hooks = HookRegistry::Get().Hooks();
    hooks.plugin = plugin;
    hooks.idle = hook;
    hooks.idleRefcon = refcon;
    return QZ_Err_NONE;
}

} // namespace

extern const QZGP_RegisterSuite6 gRegisterSuite6 = {RegisterCommandHook,
                                                    RegisterUpdateMenuHook,
                                                    RegisterDeathHook,
                                                    nullptr,
                                                    nullptr,
                                                    nullptr,
                                                    nullptr,
                                                    nullptr,
                                                    RegisterIdleHook};

HookRegistry& HookRegistry::Get() {
    static HookRegistry registry;
    return registry;
}

void HookRegistry::Reset() {
    Clear();
}

} // namespace qzhost
