// The "workspace" op: acts on the Info panel's tab as the user would, or sets the answers
// that its visibility rests on.
#include <functional>
#include <map>

#include "qzhost/PanelHandlerCall.h"
#include "qzhost/WorkspaceModel.h"
#include "script/OpTable.h"
#include "script/ScriptErrors.h"
#include "script/Shape.h"

namespace qzhost::script {

namespace {

using Action = void (WorkspaceModel::*)(const std::string&);

const std::map<std::string, Action, std::less<>>& Actions() {
    static const std::map<std::string, Action, std::less<>> actions = {
        {"open", &WorkspaceModel::Open},       {"close", &WorkspaceModel::Close},
        {"hide", &WorkspaceModel::Hide},       {"show", &WorkspaceModel::Show},
        {"restore", &WorkspaceModel::Restore},
    };
    return actions;
}

Json Workspace(ScriptSession&, const OpArgs& args) {
    args.AllowOnly({"action", "set"});
    const Json* action = args.Find("action");
    const Json* set = args.Find("set");
    if ((action == nullptr) == (set == nullptr)) {
        throw ArgumentError("give either \"action\" or \"set\"");
    }
    WorkspaceModel& workspace = WorkspaceModel::Get();
    std::optional<QZ_Err> thrown;
    if (action != nullptr) {
        const std::string& name = AsString(*action, "\"action\"");
        auto it = Actions().find(name);
        if (it == Actions().end()) {
            throw ArgumentError("\"action\" must be one of open, close, hide, show, restore, not " +
                                Quoted(name));
        }
        // A panel that the action builds may fail to construct; the host reports that as
        // it reports any failure of a panel's handler, and goes on without the panel.
        thrown = CallPanelHandler([&] { (workspace.*(it->second))(kInfoTabType); });
    } else {
        AsObject(*set, "\"set\"");
        for (const auto& member : set->items()) {
            if (member.key() != "shown" && member.key() != "front" && member.key() != "stacked") {
                throw ArgumentError("unknown field " + Quoted(member.key()) + " in \"set\"");
            }
        }
        auto answer = [&](const char* name) {
            auto it = set->find(name);
            if (it == set->end()) {
                throw ArgumentError("missing field " + Quoted(name) + " in \"set\"");
            }
            return AsBool(*it, "\"set\"." + std::string(name));
        };
        const bool shown = answer("shown");
        const bool front = answer("front");
        const bool stacked = answer("stacked");
        // A panel that becomes visible runs its pending updates, which may throw.
        thrown =
            CallPanelHandler([&] { workspace.SetAnswers(kInfoTabType, shown, front, stacked); });
    }

    const TabState state = workspace.State(kInfoTabType);
    Json out = OpOutput(args);
    out["panel"] = state.panel;
    out["shown"] = state.shown;
    out["front"] = state.front;
    out["stacked"] = state.stacked;
    out["visible"] = state.Visible();
    if (thrown) {
        out["result"] = *thrown;
    }
    return out;
}

} // namespace

void AddWorkspaceOps(OpTable& table) {
    table.Add("workspace", Workspace);
}

} // namespace qzhost::script
