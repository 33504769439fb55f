// The "menu" op: every menu command inserted through the Command suite.
#include "qzhost/MenuModel.h"
#include "script/OpTable.h"

namespace qzhost::script {

namespace {

Json Menu(ScriptSession&, const OpArgs& args) {
    args.AllowOnly({});
    Json items = Json::array();
    for (const MenuItem& item : MenuModel::Get().Items()) {
        Json entry = Json::object();
        entry["command"] = item.command;
        entry["text"] = item.text;
        entry["menu"] = item.menu;
        entry["position"] = item.position;
        entry["enabled"] = item.enabled;
        entry["checked"] = item.checked;
        items.push_back(std::move(entry));
    }
    Json out = OpOutput(args);
    out["items"] = std::move(items);
    return out;
}

} // namespace

void AddMenuOps(OpTable& table) {
    table.Add("menu", Menu);
}

} // namespace qzhost::script
