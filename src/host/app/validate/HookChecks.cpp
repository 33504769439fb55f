// Hook registration and teardown: each kind of hook registered at most once; after the
// death hook the plug-in holds no suite and has unregistered its tab creator (the
// registrations that it can undo; the host forgets the hooks itself), and every later
// call of its published suite succeeds and changes nothing.
#include "qzhost/HookRegistry.h"
#include "qzhost/MenuModel.h"
#include "script/ScriptSession.h"
#include "validate/CheckRegistry.h"
#include "validate/ContractRules.h"
#include "validate/SlotArguments.h"
#include "validate/SuiteCalls.h"

namespace qzhost::validate {

namespace {

std::string Teardown(const CheckContext& context) {
    ValidationHost host(context.Plugin());
    LoadStarted(host, context);
    const struct {
        HookKind kind;
        const char* name;
    } kinds[] = {{HookKind::Command, "command"},
                 {HookKind::UpdateMenu, "update-menu"},
                 {HookKind::Death, "death"},
                 {HookKind::Idle, "idle"}};
    for (const auto& kind : kinds) {
        const int count = HookRegistry::Get().Registrations(kind.kind);
        Require(count <= 1, std::string("the plug-in registered its ") + kind.name + " hook " +
                                std::to_string(count) + " times");
    }
    RequireNoViolations("after the entry");

    context.Step("the hooks at work");
    const HostState started = ValidationHost::State();
    const bool has_panel = !started.tabCreators.empty();
    if (has_panel) {
        RunOp(host, Json{{"op", "workspace"}, {"action", "open"}}, "opening the panel");
    }
    RunOp(host, "update_menu", "the update-menu hook");
    for (const MenuItem& item : MenuModel::Get().Items()) {
        RunOp(host, Json{{"op", "command"}, {"command", item.command}}, "the command hook");
    }
    RunOp(host, "idle", "the idle hook");
    RunMainChecked(host, "before the death hook");

    context.Step("the death hook");
    const Json death = RunOp(host, "death", "the death hook");
    if (death.contains("result")) {
        RequireResult(death, {0}, "the death hook");
    }
    RequireNothingHeld("after the death hook");
    RequireNoTabCreators("after the death hook");

    int calls = 0;
    if (ValidationHost::SuitePublished()) {
        context.Step("suite calls after the death hook");
        for (int slot = 0; slot < 24; ++slot) {
            CallSlotChecked(host, nullptr, slot, PlainArgs(slot, slot), false,
                            "after the death hook");
            ++calls;
            if (IsAnyThreadSlot(slot)) {
                CallSlotChecked(host, nullptr, slot, PlainArgs(slot, slot), true,
                                "after the death hook");
                ++calls;
            }
        }
        RunMainChecked(host, "after the death hook");
        RequireNothingHeld("after suite calls that followed the death hook");
    }
    RequireNoViolations("after the death hook");
    RequireNothingReported("from the entry to the calls after the death hook");
    RunOp(host, "unload", "unloading");
    return "hooks registered once each; after the death hook nothing held, no tab creator, " +
           std::to_string(calls) + " suite calls returned their documented result";
}

} // namespace

void AddHookChecks(std::vector<Check>& checks) {
    checks.push_back({"hooks.teardown", 1,
                      "hook registration, the death hook's teardown, and suite calls after it",
                      Teardown});
}

} // namespace qzhost::validate
