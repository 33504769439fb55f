// The "run_main" op: runs every call queued to the main thread.
#include "qzhost/MainLoop.h"
#include "script/OpTable.h"

namespace qzhost::script {

namespace {

Json RunMain(ScriptSession&, const OpArgs& args) {
    args.AllowOnly({});
    const DrainResult drained = MainLoop::Get().Drain();
    Json out = OpOutput(args);
    out["ran"] = drained.ran;
    out["thrown"] = drained.thrown;
    return out;
}

} // namespace

void AddRunMainOps(OpTable& table) {
    table.Add("run_main", RunMain);
}

} // namespace qzhost::script
