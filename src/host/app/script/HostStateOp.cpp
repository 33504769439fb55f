// The "host_state" op: what the host records of the plug-in's calls.
#include "qzhost/HostControls.h"
#include "qzhost/SuiteRegistry.h"
#include "qzhost/WorkspaceModel.h"
#include "script/OpTable.h"

namespace qzhost::script {

namespace {

Json HostState(ScriptSession&, const OpArgs& args) {
    args.AllowOnly({});
    Json out = OpOutput(args);
    out["held"] = SuiteRegistry::Get().Held(Acquirer::Plugin);
    out["reported"] = HostControls::Get().Reported();
    out["refresh_windows"] = HostControls::Get().RefreshWindowsCalls();
    out["tab_creators"] = WorkspaceModel::Get().CreatorTypes();
    out["tab_toggles"] = HostControls::Get().TabToggles();
    return out;
}

} // namespace

void AddHostStateOps(OpTable& table) {
    table.Add("host_state", HostState);
}

} // namespace qzhost::script
