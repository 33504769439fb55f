// The general plug-in frame: the host suites a plug-in needs for its hooks and menu
// item, the hooks themselves, and the menu command.
#pragma once

#include "InfoPal/frame/SuiteHolder.h"
#include "qzgp/QZGP_CommandSuite.h"
#include "qzgp/STR_Cache.h"

namespace infopal {

class BasicQZGPHost : public STR_ZLinkedCachePlugin {
public:
    /// Keeps the basic suite table, acquires the Register (6) and Command (1) suites,
    /// sets up the process-wide suite cache and registers the command, update-menu and
    /// death hooks, and the idle hook when `wants_idle`. Integer errors: 13 for a
    /// missing suite, the host's code for a failed registration.
    BasicQZGPHost(const STR_ModuleRecord& module, QZ_BasicSuiteTable* basic,
                  QZGP_PluginID plugin_id, bool wants_idle);
    /// Releases the Command suite, then the Register suite.
    ~BasicQZGPHost() override;

    /// [ui-thread] The menu text of the plug-in's command, a NUL-terminated multibyte
    /// string that lives as long as the process.
    virtual const char* MenuName() = 0;
    /// [ui-thread] The plug-in's command number; 0 while it has none.
    virtual QZGP_Command CommandNumber() const;
    /// [ui-thread] The host is dying: the suite cache goes, releasing its suites.
    virtual void DeathHandler();
    /// [ui-thread] Idle time.
    virtual void IdleHandler();
    /// [ui-thread] A menu command was chosen; sets `*handled` when it handles it.
    virtual void CommandHandler(QZGP_Command command, bool already_handled, bool* handled);
    /// [ui-thread] The host is about to show its menus.
    virtual void UpdateMenuHandler();

    QZGP_PluginID PluginID() const noexcept { return pluginID_; }
    QZ_BasicSuiteTable* BasicSuiteTable() const noexcept { return basic_; }

protected:
    void SetCommandNumber(QZGP_Command command) noexcept { command_ = command; }
    /// Gets a command number from the host when there is none; with `insert`, inserts
    /// the command into menu 8 at position -2 under the menu name (or `name`, or a
    /// placeholder text when both are null).
    void InsertMenuCommand(const char* name, bool insert);
    const QZGP_CommandSuite1& CommandSuite() const { return *commandSuite_; }

private:
    void RegisterHooks(bool wants_idle);

    QZ_BasicSuiteTable* basic_;
    SuiteHolder<QZGP_RegisterSuite6> registerSuite_;
    SuiteHolder<QZGP_CommandSuite1> commandSuite_;
    QZGP_Command command_ = 0;
    QZGP_PluginID pluginID_;
};

/// The global reference that the host hands back to every hook.
QZGP_GlobalRefcon ToGlobalRefcon(BasicQZGPHost* host) noexcept;
BasicQZGPHost* FromGlobalRefcon(QZGP_GlobalRefcon global) noexcept;

} // namespace infopal
