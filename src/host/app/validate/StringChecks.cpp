// Strings are read during the call only: every string argument is given in guarded pages
// (GuardedStrings) that are sealed when the call returns, and the plug-in is then driven
// on (its queue run, every slot called again, its hooks, its panel hidden, shown, closed
// and opened, its death), so that a plug-in that kept a caller's pointer and reads it
// later faults, and the fault names the string and the call it came with.
#include "validate/CheckRegistry.h"
#include "validate/ContractRules.h"
#include "validate/GuardedStrings.h"
#include "validate/SlotArguments.h"
#include "validate/SuiteCalls.h"

namespace qzhost::validate {

namespace {

std::string StringsNotKept(const CheckContext& context) {
    ValidationHost host(context.Plugin());
    GuardedStrings guard;
    if (auto nothing = LoadStartedWithSuite(host, context)) {
        return *nothing;
    }
    const bool has_panel = !ValidationHost::State().tabCreators.empty();
    if (has_panel) {
        RunOp(host, WorkspaceLine("open"), "opening the panel");
    }
    int calls = 0;
    context.Step("calls with strings");
    for (int slot = 0; slot < 24; ++slot) {
        if (!TakesStrings(slot)) {
            continue;
        }
        CallSlotChecked(host, &guard, slot, PlainArgs(slot, 100 + slot), false, "with strings");
        ++calls;
        if (IsAnyThreadSlot(slot)) {
            CallSlotChecked(host, &guard, slot, PlainArgs(slot, 200 + slot), true, "with strings");
            ++calls;
        }
    }
    context.Step("the calls that follow");
    RunMainChecked(host, "after the calls with strings");
    for (int slot = 0; slot < 24; ++slot) {
        if (!TakesStrings(slot)) {
            CallSlotChecked(host, &guard, slot, PlainArgs(slot, 300 + slot), false,
                            "after the calls with strings");
        }
    }
    RunOp(host, "update_menu", "the update-menu hook");
    RunOp(host, "idle", "the idle hook");
    if (has_panel) {
        for (const char* action : {"hide", "show", "close", "open"}) {
            RunOp(host, WorkspaceLine(action), std::string("the panel: ") + action);
        }
        RunOp(host, "flyout", "the flyout menu");
    }
    RunMainChecked(host, "after the calls with strings");
    RunOp(host, "death", "the death hook");
    RunOp(host, "unload", "unloading");
    return std::to_string(guard.Placed()) + " strings in " + std::to_string(calls) +
           " calls, sealed when each call returned; none read later";
}

} // namespace

void AddStringChecks(std::vector<Check>& checks) {
    checks.push_back({"suite.strings-not-kept", 3, "string arguments are read during the call only",
                      StringsNotKept});
}

} // namespace qzhost::validate
