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

std::optional<QZ_Err> ScriptSession::Unload() {
    if (!Loaded()) {
        return std::nullopt;
    }
    std::optional<QZ_Err> death;
    std::exception_ptr escaped;
    const RegisteredHooks hooks = HookRegistry::Get().Hooks();
    if (hooks.death != nullptr) {
        try {
            death = hooks.death(global_, hooks.deathRefcon);
        } catch (...) {
            escaped = std::current_exception();
        }
    }
    HookRegistry::Get().Clear();
    // Queued calls, panels, tab creators and published suite tables may hold the
    // plug-in's code: all go before the library does.
    MainLoop::Get().Discard();
    kept_.clear();
    WorkspaceModel::Get().Reset();
    SuiteRegistry::Get().WithdrawPublished();
    MenuModel::Get().Reset();
    global_ = nullptr;
    plugin_.reset();
    if (escaped) {
        std::rethrow_exception(escaped);
    }
    return death;
}

void ScriptSession::Shutdown() noexcept {
    if (shutDown_) {
        return;
    }
    shutDown_ = true;
    try {
        Unload();
    } catch (const std::exception& error) {
        std::cerr << "qzhost script: shutdown: " << error.what() << '\n';
    } catch (...) {
        std::cerr << "qzhost script: shutdown: the plug-in let an unknown exception escape\n";
    }
}

} // namespace qzhost::script
