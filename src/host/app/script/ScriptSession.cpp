#include "script/ScriptSession.h"

#include <exception>
#include <iostream>

#include "qzhost/HookRegistry.h"
#include "qzhost/HostControls.h"
#include "qzhost/MainLoop.h"
#include "qzhost/MenuModel.h"
#include "qzhost/SuiteRegistry.h"
#include "qzhost/WorkspaceModel.h"

namespace qzhost::script {

ScriptSession::ScriptSession(std::string plugin_path) : pluginPath_(std::move(plugin_path)) {
    HostControls::Get().Reset();
    SuiteRegistry::Get().Reset();
    MenuModel::Get().Reset();
    HookRegistry::Get().Reset();
    WorkspaceModel::Get().Reset();
    MainLoop::Get().Discard();
}

ScriptSession::~ScriptSession() {
    Shutdown();
}

void ScriptSession::Shutdown() noexcept {
    if (shutDown_) {
        return;
    }
    shutDown_ = true;
    try {
        RegisteredHooks& hooks = HookRegistry::Get().Hooks();
        if (hooks.death != nullptr) {
            const QZGP_DeathHook death = hooks.death;
            const QZGP_HookRefcon refcon = hooks.deathRefcon;
            death(global_, refcon);
        }
        HookRegistry::Get().Clear();
        // Queued calls and panels may hold the plug-in's code: both go before the
        // library does.
        MainLoop::Get().Discard();
        WorkspaceModel::Get().Reset();
    } catch (const std::exception& error) {
        std::cerr << "qzhost script: shutdown: " << error.what() << '\n';
    } catch (...) {
        std::cerr << "qzhost script: shutdown: the plug-in let an unknown exception escape\n";
    }
    plugin_.reset();
}

} // namespace qzhost::script
