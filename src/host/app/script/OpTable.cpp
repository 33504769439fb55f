#include "script/OpTable.h"

#include <stdexcept>

namespace qzhost::script {

void OpTable::Add(const std::string& name, OpHandler handler) {
    if (!handlers_.emplace(name, std::move(handler)).second) {
        throw std::logic_error("script op added twice: " + name);
    }
}

const OpHandler* OpTable::Find(const std::string& name) const {
    auto it = handlers_.find(name);
    return it == handlers_.end() ? nullptr : &it->second;
}

const OpTable& ScriptOps() {
    static const OpTable table = [] {
        OpTable ops;
        AddHostOps(ops);
        AddLoadOps(ops);
        AddHookOps(ops);
        AddMenuOps(ops);
        AddWorkspaceOps(ops);
        AddSnapshotOps(ops);
        AddHostStateOps(ops);
        AddRunMainOps(ops);
        AddCallOps(ops);
        AddResizeOps(ops);
        AddFlyoutOps(ops);
        AddPrefsOps(ops);
        AddUnloadOps(ops);
        return ops;
    }();
    return table;
}

Json OpOutput(const OpArgs& args) {
    Json out = Json::object();
    out["op"] = args.Op();
    return out;
}

} // namespace qzhost::script
