// The hook ops: "command", "update_menu", "idle" and "death" call the hooks that the
// plug-in registered, with the global reference that its entry point handed back.
#include "qzhost/HookRegistry.h"
#include "qzhost/MenuModel.h"
#include "script/OpTable.h"

namespace qzhost::script {

namespace {

// The further arguments that the host passes to the hooks.
constexpr QZGP_WindowType kActiveWindowType = 0;
constexpr std::int32_t kIdleMaxSleepMs = 0;

Json NotRegistered(const OpArgs& args) {
    Json out = OpOutput(args);
    out["registered"] = false;
    return out;
}

Json Command(ScriptSession& session, const OpArgs& args) {
    args.AllowOnly({"command", "already_handled"});
    const QZGP_Command command = args.Int32("command");
    const bool already_handled = args.Bool("already_handled", false);
    const RegisteredHooks hooks = HookRegistry::Get().Hooks();
    if (hooks.command == nullptr) {
        return NotRegistered(args);
    }
    bool handled = false;
    const QZ_Err result = hooks.command(session.Global(), hooks.commandRefcon, command,
                                        hooks.commandPriority, already_handled, &handled);
    Json out = OpOutput(args);
    out["result"] = result;
    out["handled"] = handled;
    return out;
}

Json UpdateMenu(ScriptSession& session, const OpArgs& args) {
    args.AllowOnly({});
    const RegisteredHooks hooks = HookRegistry::Get().Hooks();
    if (hooks.updateMenu == nullptr) {
        return NotRegistered(args);
    }
    const QZ_Err result =
        hooks.updateMenu(session.Global(), hooks.updateMenuRefcon, kActiveWindowType);
    // The plug-in inserts one menu command; its state is what the user sees.
    const auto& items = MenuModel::Get().Items();
    Json out = OpOutput(args);
    out["result"] = result;
    out["enabled"] = !items.empty() && items.front().enabled;
    out["checked"] = !items.empty() && items.front().checked;
    return out;
}

Json Idle(ScriptSession& session, const OpArgs& args) {
    args.AllowOnly({});
    const RegisteredHooks hooks = HookRegistry::Get().Hooks();
    if (hooks.idle == nullptr) {
        return NotRegistered(args);
    }
    std::int32_t max_sleep = kIdleMaxSleepMs;
    Json out = OpOutput(args);
    out["result"] = hooks.idle(session.Global(), hooks.idleRefcon, &max_sleep);
    return out;
}

Json Death(ScriptSession& session, const OpArgs& args) {
    args.AllowOnly({});
    const RegisteredHooks hooks = HookRegistry::Get().Hooks();
    if (hooks.death == nullptr) {
        return NotRegistered(args);
    }
    const QZ_Err result = hooks.death(session.Global(), hooks.deathRefcon);
    // After the death hook the host no longer calls any of the plug-in's hooks.
    HookRegistry::Get().Clear();
    Json out = OpOutput(args);
    out["result"] = result;
    return out;
}

} // namespace

void AddHookOps(OpTable& table) {
    table.Add("command", Command);
    table.Add("update_menu", UpdateMenu);
    table.Add("idle", Idle);
    table.Add("death", Death);
}

} // namespace qzhost::script
