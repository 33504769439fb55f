#include "InfoPal/frame/BasicQZGPHost.h"

#include "InfoPal/frame/Hooks.h"
#include "InfoPal/frame/HostSuiteCache.h"
#include "host/U_RunMode.h"

namespace infopal {

namespace {

// The host's menu and position for the command: passed through as the host gives them.
constexpr QZGP_MenuID kCommandMenu = 8;
constexpr std::int32_t kCommandPosition = -2;
constexpr QZGP_HookPriority kCommandHookPriority = 1;

} // namespace

QZGP_GlobalRefcon ToGlobalRefcon(BasicQZGPHost* host) noexcept {
    return reinterpret_cast<QZGP_GlobalRefcon>(host);
}

BasicQZGPHost* FromGlobalRefcon(QZGP_GlobalRefcon global) noexcept {
    return reinterpret_cast<BasicQZGPHost*>(global);
}

BasicQZGPHost::BasicQZGPHost(const STR_ModuleRecord& module, QZ_BasicSuiteTable* basic,
                             QZGP_PluginID plugin_id, bool wants_idle)
    : STR_ZLinkedCachePlugin(module), basic_(basic), pluginID_(plugin_id) {
    registerSuite_.Acquire(basic, kQZGP_RegisterSuite, kQZGP_RegisterSuiteVersion6);
    commandSuite_.Acquire(basic, kQZGP_CommandSuite, kQZGP_CommandSuiteVersion1);
    command_ = 0;
    SetUpHostSuiteCache(basic, plugin_id);
    RegisterHooks(wants_idle);
}

BasicQZGPHost::~BasicQZGPHost() {
    commandSuite_.Release();
    registerSuite_.Release();
}

void BasicQZGPHost::RegisterHooks(bool wants_idle) {
    const QZGP_RegisterSuite6& reg = *registerSuite_;
    CallSuite(reg.RegisterCommandHook, pluginID_, kCommandHookPriority, QZGP_Command{0},
              &CommandHook, QZGP_HookRefcon{nullptr});
    CallSuite(reg.RegisterUpdateMenuHook, pluginID_, &UpdateMenuHook, QZGP_HookRefcon{nullptr});
    CallSuite(reg.RegisterDeathHook, pluginID_, &DeathHook, QZGP_HookRefcon{nullptr});
    if (wants_idle) {
        CallSuite(reg.RegisterIdleHook, pluginID_, &IdleHook, QZGP_HookRefcon{nullptr});
    }
}

QZGP_Command BasicQZGPHost::CommandNumber() const {
    return command_;
}

void BasicQZGPHost::DeathHandler() {
    // Host contract: required, though nothing here uses it.
    (void)U_GetRunMode();
    TearDownHostSuiteCache();
    basic_ = nullptr;
}

void BasicQZGPHost::IdleHandler() {}

void BasicQZGPHost::CommandHandler(QZGP_Command, bool, bool*) {}

void BasicQZGPHost::UpdateMenuHandler() {}

void BasicQZGPHost::InsertMenuCommand(const char* name, bool insert) {
    const QZGP_CommandSuite1& commands = *commandSuite_;
    if (command_ == 0) {
        QZGP_Command command = 0;
        CallSuite(commands.GetUniqueCommand, &command);
        command_ = command;
    }
    if (!insert) {
        return;
    }
    const char* text = MenuName();
    if (text == nullptr) {
        text = name;
    }
    if (text == nullptr) {
        text = "You need to pass menu name.";
    }
    CallSuite(commands.InsertMenuCommand, command_, text, kCommandMenu, kCommandPosition);
}

} // namespace infopal
