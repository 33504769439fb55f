// The "unload" op: lets the plug-in go and closes its library, so that a "load" may
// follow (ScriptSession::Unload).
#include "script/OpTable.h"

namespace qzhost::script {

namespace {

Json Unload(ScriptSession& session, const OpArgs& args) {
    args.AllowOnly({});
    Json out = OpOutput(args);
    if (!session.Loaded()) {
        out["unloaded"] = false;
        return out;
    }
    const std::optional<QZ_Err> death = session.Unload();
    out["unloaded"] = true;
    if (death.has_value()) {
        out["death_result"] = *death;
    }
    return out;
}

} // namespace

void AddUnloadOps(OpTable& table) {
    table.Add("unload", Unload);
}

} // namespace qzhost::script
