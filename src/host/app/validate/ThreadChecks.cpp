// The thread-safety pass: with the host recording every call of the [ui-thread]
// operations it checks, together with the thread it came from, the plug-in is driven
// through a session in which the [any-thread] slots of its suite are called from worker
// threads in rounds (and the [ui-thread] ones from the main thread only). The first
// [ui-thread] operation called off the main thread fails the check.
#include <set>

#include "qzhost/HostControls.h"
#include "qzhost/MenuModel.h"
#include "validate/CheckRegistry.h"
#include "validate/ContractRules.h"
#include "validate/SlotArguments.h"
#include "validate/SuiteCalls.h"

namespace qzhost::validate {

namespace {

std::string UIThreadCalls(const CheckContext& context) {
    ValidationHost host(context.Plugin());
    HostControls::Get().SetRecordUIThreadCalls(true);
    context.Step("the entry");
    RunOp(host, "load", "the entry");
    const bool has_panel = !ValidationHost::State().tabCreators.empty();
    const bool has_suite = ValidationHost::SuitePublished();
    const Json open{{"op", "workspace"}, {"action", "open"}};
    if (has_panel) {
        RunOp(host, open, "opening the panel");
        RunOp(host, "flyout", "the flyout menu");
    }
    RunOp(host, "update_menu", "the update-menu hook");
    RunOp(host, "idle", "the idle hook");
    const int rounds = 2 * context.Level();
    for (int round = 0; has_suite && round < rounds; ++round) {
        context.Step("round " + std::to_string(round + 1) + " of suite calls");
        for (int slot = 0; slot < 24; ++slot) {
            const bool worker = IsAnyThreadSlot(slot);
            // Slot 15 would hide the panel and 16 show it: both run, in this order.
            CallSlot(host, nullptr, slot, PlainArgs(slot, round), worker, "thread pass");
        }
        RunMainChecked(host, "thread pass");
        if (has_panel && round % 2 == 1) {
            RunOp(host, WorkspaceLine("hide"), "hiding the panel");
            RunOp(host, open, "opening the panel");
        }
    }
    RunOp(host, "death", "the death hook");
    RunOp(host, "unload", "unloading");

    const std::vector<HostControls::UIThreadCall> calls = HostControls::Get().UIThreadCalls();
    std::set<std::string> operations;
    std::size_t off_main = 0;
    const HostControls::UIThreadCall* first = nullptr;
    for (const HostControls::UIThreadCall& call : calls) {
        operations.insert(call.operation);
        if (!call.onMainThread) {
            ++off_main;
            if (first == nullptr) {
                first = &call;
            }
        }
    }
    Require(first == nullptr, first == nullptr
                                  ? ""
                                  : "[ui-thread] operation " + first->operation +
                                        " called from a worker thread (the first of " +
                                        std::to_string(off_main) + " such calls among " +
                                        std::to_string(calls.size()) + " recorded)");
    return std::to_string(calls.size()) + " calls of " + std::to_string(operations.size()) +
           " [ui-thread] operations, all on the main thread";
}

} // namespace

void AddThreadChecks(std::vector<Check>& checks) {
    checks.push_back({"threads.ui-thread", 1,
                      "every [ui-thread] host operation called on the main thread only",
                      UIThreadCalls});
}

} // namespace qzhost::validate
