// The "resize" op: gives the Info panel new bounds, and new panels the same size.
#include "qzhost/WorkspaceModel.h"
#include "script/OpTable.h"
#include "script/ScriptErrors.h"
#include "script/Values.h"

namespace qzhost::script {

namespace {

float Extent(const OpArgs& args, const std::string& field) {
    const double value = NumberArg(args.Require(field), "\"" + field + "\"");
    if (!(value >= 0.0) || value > 1.0e6) {
        throw ArgumentError("\"" + field + "\" must be a number from 0 to 1000000");
    }
    return static_cast<float>(value);
}

Json Resize(ScriptSession&, const OpArgs& args) {
    args.AllowOnly({"width", "height"});
    const kitui::ui::RectT<float> bounds{0.0f, 0.0f, Extent(args, "width"), Extent(args, "height")};
    WorkspaceModel& workspace = WorkspaceModel::Get();
    workspace.SetNewPanelBounds(bounds);
    if (kitworkspace::workspace::TabPanel* panel = workspace.Panel(kInfoTabType)) {
        panel->UI_SetBounds(bounds);
    }
    return OpOutput(args);
}

} // namespace

void AddResizeOps(OpTable& table) {
    table.Add("resize", Resize);
}

} // namespace qzhost::script
