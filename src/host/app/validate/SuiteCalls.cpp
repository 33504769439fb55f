#include "validate/SuiteCalls.h"

#include "qzhost/WorkspaceModel.h"
#include "script/ScriptSession.h"
#include "validate/ContractRules.h"
#include "validate/SlotArguments.h"

namespace qzhost::validate {

namespace {

std::string Describe(int slot, bool worker, const std::string& when) {
    return "slot " + std::to_string(slot) + " (" + SlotName(slot) + ") called from " +
           (worker ? "a worker thread" : "the main thread") + ", " + when;
}

} // namespace

Json CallSlot(ValidationHost& host, GuardedStrings* guard, int slot, const Json& args, bool worker,
              const std::string& when) {
    const std::string call = Describe(slot, worker, when);
    Json line{
        {"op", "call"}, {"slot", slot}, {"args", args}, {"thread", worker ? "worker" : "main"}};
    if (guard != nullptr) {
        guard->BeginCall(call);
    }
    Json out = RunOp(host, line, call);
    if (guard != nullptr) {
        guard->Seal();
    }
    Require(out.value("published", true), call + ": the suite is no longer published");
    return out;
}

int DocumentedResult(int slot, const Json& args) {
    if (slot == 3 && args.value("null", false)) {
        return 3;
    }
    if (slot == 14) {
        return WorkspaceModel::Get().State(script::kInfoTabType).Visible() ? 1 : 0;
    }
    return 0;
}

void CallSlotChecked(ValidationHost& host, GuardedStrings* guard, int slot, const Json& args,
                     bool worker, const std::string& when) {
    const int expected = DocumentedResult(slot, args);
    const Json out = CallSlot(host, guard, slot, args, worker, when);
    const int result = out.value("result", 0);
    if (result != expected) {
        throw CheckFailure(
            Describe(slot, worker, when) + " with arguments " +
            args.dump(-1, ' ', false, Json::error_handler_t::replace).substr(0, 200) + ": result " +
            std::to_string(result) + ", documented " + std::to_string(expected));
    }
}

void RunMainChecked(ValidationHost& host, const std::string& when) {
    const Json out = RunOp(host, "run_main", when + ", running the main thread's queue");
    const Json& thrown = out["thrown"];
    if (!thrown.empty()) {
        throw CheckFailure(when + ": calls queued to the main thread threw " + thrown.dump());
    }
}

} // namespace qzhost::validate
