// The "flyout" and "flyout_command" ops: the menu behind the Info panel's tab, as the user
// opens it and picks an item.
#include "qzhost/WorkspaceModel.h"
#include "script/OpTable.h"
#include "script/Values.h"

namespace qzhost::script {

namespace {

Json Flyout(ScriptSession&, const OpArgs& args) {
    args.AllowOnly({});
    const FlyoutMenuResult menu = WorkspaceModel::Get().PopulateFlyoutMenu(kInfoTabType);
    Json out = OpOutput(args);
    if (!menu.panel) {
        out["panel"] = false;
        return out;
    }
    Json items = Json::array();
    for (const auto& item : menu.items) {
        Json entry = Json::object();
        entry["text"] = UTF16ToUTF8(item.text);
        entry["command"] = item.command;
        entry["checked"] = item.checked;
        entry["enabled"] = item.enabled;
        items.push_back(std::move(entry));
    }
    out["items"] = std::move(items);
    if (menu.thrown) {
        out["result"] = *menu.thrown;
    }
    return out;
}

Json FlyoutCommand(ScriptSession&, const OpArgs& args) {
    args.AllowOnly({"command"});
    const std::int32_t command = args.Int32("command");
    const FlyoutCommandResult result =
        WorkspaceModel::Get().DoFlyoutMenuCommand(kInfoTabType, command);
    Json out = OpOutput(args);
    if (!result.panel) {
        out["panel"] = false;
    }
    out["handled"] = result.handled;
    if (result.thrown) {
        out["result"] = *result.thrown;
    }
    return out;
}

} // namespace

void AddFlyoutOps(OpTable& table) {
    table.Add("flyout", Flyout);
    table.Add("flyout_command", FlyoutCommand);
}

} // namespace qzhost::script
