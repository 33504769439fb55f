// Every slot of the published Info palette suite called with boundary arguments and then
// with random ones (reproducible with --seed), while the panel is open, hidden, a back
// tab and closed; the [any-thread] slots from worker threads too, the [ui-thread] ones
// from the main thread only. Every string is in guarded pages. Each call must return
// what the suite documents (SuiteCalls.h), queued calls must not throw, nothing may be
// reported, and no [ui-thread] operation may be called off the main thread.
#include "qzhost/HostControls.h"
#include "validate/CheckRegistry.h"
#include "validate/ContractRules.h"
#include "validate/GuardedStrings.h"
#include "validate/SlotArguments.h"
#include "validate/SuiteCalls.h"

namespace qzhost::validate {

namespace {

struct PanelState {
    const char* name;
    Json line;
};

std::vector<PanelState> PanelStates(bool has_panel) {
    if (!has_panel) {
        return {{"without a panel", Json()}};
    }
    return {
        {"with the panel open", WorkspaceLine("open")},
        {"with the panel hidden", WorkspaceLine("hide")},
        {"with the panel a back tab",
         Json{{"op", "workspace"},
              {"set", {{"shown", true}, {"front", false}, {"stacked", false}}}}},
        {"with the panel tabbed in a stack",
         Json{{"op", "workspace"},
              {"set", {{"shown", true}, {"front", false}, {"stacked", true}}}}},
        {"with the panel closed", WorkspaceLine("close")},
    };
}

void EnterState(ValidationHost& host, const PanelState& state) {
    if (state.line.is_null()) {
        return;
    }
    // "set" needs an existing tab: the panel is opened first.
    if (state.line.contains("set")) {
        RunOp(host, WorkspaceLine("open"), state.name);
    }
    RunOp(host, state.line, state.name);
}

std::string Arguments(const CheckContext& context) {
    ValidationHost host(context.Plugin());
    GuardedStrings guard;
    if (auto nothing = LoadStartedWithSuite(host, context)) {
        return *nothing;
    }
    const std::vector<PanelState> states =
        PanelStates(!ValidationHost::State().tabCreators.empty());
    int calls = 0;
    for (const PanelState& state : states) {
        context.Step("boundary arguments " + std::string(state.name));
        EnterState(host, state);
        for (int slot = 0; slot < 24; ++slot) {
            for (const Json& args : BoundaryArgs(slot)) {
                // Slots 15 and 16 change the panel's state: it is set again after them.
                CallSlotChecked(host, &guard, slot, args, false, state.name);
                ++calls;
                if (IsAnyThreadSlot(slot)) {
                    CallSlotChecked(host, &guard, slot, args, true, state.name);
                    ++calls;
                }
                if (slot == 15 || slot == 16) {
                    EnterState(host, state);
                }
            }
        }
        RunMainChecked(host, state.name);
    }

    std::mt19937_64 random(context.Seed());
    const int random_calls = 150 * context.Level();
    context.Step("random arguments (seed " + std::to_string(context.Seed()) + ")");
    std::size_t state_index = 0;
    for (int i = 0; i < random_calls; ++i) {
        if (random() % 40 == 0) {
            state_index = static_cast<std::size_t>(random() % states.size());
            EnterState(host, states[state_index]);
        }
        const int slot = static_cast<int>(random() % 24);
        const bool worker = IsAnyThreadSlot(slot) && (random() & 1);
        const Json args = RandomArgs(slot, random);
        CallSlotChecked(host, &guard, slot, args, worker,
                        "random call " + std::to_string(i + 1) + " " + states[state_index].name);
        ++calls;
        if (random() % 16 == 0) {
            RunMainChecked(host, "random calls");
        }
    }
    RunMainChecked(host, "random calls");
    RequireNothingReported("suite calls");
    RequireNoViolations("suite calls");
    context.Step("the death hook");
    RunOp(host, "death", "the death hook");
    RequireNothingHeld("after the death hook");
    RunOp(host, "unload", "unloading");
    return std::to_string(calls) + " calls (" + std::to_string(random_calls) + " random, seed " +
           std::to_string(context.Seed()) + ") in " + std::to_string(states.size()) +
           " panel states, every result as documented";
}

} // namespace

void AddArgumentChecks(std::vector<Check>& checks) {
    checks.push_back({"suite.arguments", 3,
                      "every suite slot with boundary and random arguments, from the main "
                      "thread and worker threads, in every panel state",
                      Arguments});
}

} // namespace qzhost::validate
