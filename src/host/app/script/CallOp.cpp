// The "call" op: acquires the published Info palette suite through the host's basic
// suite table and calls one of its slots, on the main thread or from a worker thread.
#include <exception>
#include <functional>
#include <string>
#include <thread>

#include "qzgp/QZ_InfoPaletteSuite.h"
#include "qzhost/SuiteRegistry.h"
#include "script/OpTable.h"
#include "script/ScriptErrors.h"
#include "script/Shape.h"
#include "script/SuiteSlots.h"

namespace qzhost::script {

namespace {

using Suite = QZ_InfoPaletteSuite2;

/// Runs `call` on this thread, or on a second thread that this one waits for.
QZ_Err RunOn(bool worker, const std::function<QZ_Err()>& call) {
    if (!worker) {
        return call();
    }
    QZ_Err result = 0;
    std::exception_ptr escaped;
    std::thread thread([&] {
        try {
            result = call();
        } catch (...) {
            escaped = std::current_exception();
        }
    });
    thread.join();
    if (escaped) {
        std::rethrow_exception(escaped);
    }
    return result;
}

/// The suite, acquired through the host's basic suite table for the length of one call.
class AcquiredSuite {
public:
    AcquiredSuite() {
        const void* table = nullptr;
        basic_ = SuiteRegistry::Get().HostTable();
        if (basic_->AcquireSuite(kQZ_InfoPaletteSuite, kQZ_InfoPaletteSuiteVersion2, &table) == 0 &&
            table != nullptr) {
            suite_ = static_cast<const Suite*>(table);
        }
    }
    ~AcquiredSuite() {
        if (suite_ != nullptr) {
            basic_->ReleaseSuite(kQZ_InfoPaletteSuite, kQZ_InfoPaletteSuiteVersion2);
        }
    }
    AcquiredSuite(const AcquiredSuite&) = delete;
    AcquiredSuite& operator=(const AcquiredSuite&) = delete;
    const Suite* Get() const noexcept { return suite_; }

private:
    QZ_BasicSuiteTable* basic_ = nullptr;
    const Suite* suite_ = nullptr;
};

Json Call(ScriptSession& session, const OpArgs& args) {
    args.AllowOnly({"slot", "args", "thread"});
    const int slot = static_cast<int>(
        AsInteger(args.Require("slot"), "\"slot\"", 0, kQZ_InfoPaletteSuiteSlotCount - 1));
    bool worker = false;
    if (const Json* thread = args.Find("thread")) {
        const std::string& name = AsString(*thread, "\"thread\"");
        if (name != "main" && name != "worker") {
            throw ArgumentError("\"thread\" must be \"main\" or \"worker\", not " + Quoted(name));
        }
        worker = name == "worker";
    }

    // Every argument is checked before anything is called.
    const SlotCall call = MakeSlotCall(slot, args.Find("args"));

    Json out = OpOutput(args);
    out["slot"] = slot;
    AcquiredSuite acquired;
    const Suite* suite = acquired.Get();
    if (suite == nullptr) {
        out["published"] = false;
        return out;
    }
    // A call from a worker may leave a queued call behind that reads these values when the
    // main loop runs it; a call on the main thread is done with them when it returns.
    if (worker) {
        session.Keep(call.values);
    }
    if (call.prepare) {
        call.prepare(*suite);
    }
    out["result"] = RunOn(worker, [&] { return call.call(*suite); });
    if (call.report) {
        call.report(out);
    }
    return out;
}

} // namespace

void AddCallOps(OpTable& table) {
    table.Add("call", Call);
}

} // namespace qzhost::script
