// "QZGP Register Suite" version 6: hook registration for general plug-ins.
#pragma once

#include "qzgp/QZ_Basic.h"

inline constexpr const char* kQZGP_RegisterSuite = "QZGP Register Suite";
inline constexpr std::int32_t kQZGP_RegisterSuiteVersion6 = 6;

using QZGP_HookRefcon = void*;
using QZGP_Command = std::int32_t;
using QZGP_HookPriority = std::int32_t;
using QZGP_WindowType = std::int32_t;

/// Command hook. `host_arg` is the host's hook priority; `already_handled` tells whether
/// an earlier hook handled the command; the hook sets `*handled` when it handles it.
using QZGP_CommandHook = QZ_Err (*)(QZGP_GlobalRefcon global, QZGP_HookRefcon refcon,
                                    QZGP_Command command, QZGP_HookPriority host_arg,
                                    bool already_handled, bool* handled);
/// Update-menu hook; `host_arg` is the kind of the active window.
using QZGP_UpdateMenuHook = QZ_Err (*)(QZGP_GlobalRefcon global, QZGP_HookRefcon refcon,
                                       QZGP_WindowType host_arg);
/// Death hook: the host is going down; the plug-in releases everything it holds.
using QZGP_DeathHook = QZ_Err (*)(QZGP_GlobalRefcon global, QZGP_HookRefcon refcon);
/// Idle hook; `host_arg` is the longest time in milliseconds the host may sleep.
using QZGP_IdleHook = QZ_Err (*)(QZGP_GlobalRefcon global, QZGP_HookRefcon refcon,
                                 std::int32_t* host_arg);

/// Table positions are fixed; entries the host does not offer are null. A plug-in registers
/// each kind of hook at most once; the host forgets every hook after the death hook.
struct QZGP_RegisterSuite6 {
    /// 1st. [ui-thread] Calls `hook` for each menu command the user chooses.
    QZ_Err (*RegisterCommandHook)(QZGP_PluginID plugin_id, QZGP_HookPriority priority,
                                  QZGP_Command command, QZGP_CommandHook hook,
                                  QZGP_HookRefcon refcon);
    /// 2nd. [ui-thread] Calls `hook` each time a menu is about to show.
    QZ_Err (*RegisterUpdateMenuHook)(QZGP_PluginID plugin_id, QZGP_UpdateMenuHook hook,
                                     QZGP_HookRefcon refcon);
    /// 3rd. [ui-thread] Calls `hook` once, when the host is about to unload the plug-in.
    QZ_Err (*RegisterDeathHook)(QZGP_PluginID plugin_id, QZGP_DeathHook hook,
                                QZGP_HookRefcon refcon);
    /// 4th to 8th: not offered by this host (null).
    void (*reserved4)();
    void (*reserved5)();
    void (*reserved6)();
    void (*reserved7)();
    void (*reserved8)();
    /// 9th. [ui-thread] Calls `hook` whenever the host is idle.
    QZ_Err (*RegisterIdleHook)(QZGP_PluginID plugin_id, QZGP_IdleHook hook, QZGP_HookRefcon refcon);
};
