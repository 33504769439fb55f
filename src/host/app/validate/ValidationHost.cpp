#include "validate/ValidationHost.h"

#include <stdexcept>

#include "qzgp/QZ_InfoPaletteSuite.h"
#include "qzhost/HostControls.h"
#include "qzhost/MenuModel.h"
#include "qzhost/SuiteRegistry.h"
#include "qzhost/WorkspaceModel.h"
#include "script/OpArgs.h"
#include "script/OpTable.h"
#include "script/ScriptErrors.h"

namespace qzhost::validate {

ValidationHost::ValidationHost(const std::string& plugin) : session_(plugin) {}

ValidationHost::~ValidationHost() = default;

Json ValidationHost::Op(const Json& line) {
    const script::OpArgs args(line);
    const script::OpHandler* handler = script::ScriptOps().Find(args.Op());
    if (handler == nullptr) {
        throw std::logic_error("unknown script op " + args.Op());
    }
    return (*handler)(session_, args);
}

Json ValidationHost::Op(const char* name) {
    Json line = Json::object();
    line["op"] = name;
    return Op(line);
}

bool ValidationHost::SuitePublished() {
    return SuiteRegistry::Get().IsPublished(kQZ_InfoPaletteSuite, kQZ_InfoPaletteSuiteVersion2);
}

HostState ValidationHost::State() {
    HostState state;
    state.held = SuiteRegistry::Get().Held(Acquirer::Plugin);
    state.tabCreators = WorkspaceModel::Get().CreatorTypes();
    state.reported = HostControls::Get().Reported();
    state.violations = HostControls::Get().Violations();
    state.menuItems = MenuModel::Get().Items().size();
    return state;
}

std::string Listed(const std::vector<std::string>& items) {
    if (items.empty()) {
        return "none";
    }
    std::string text;
    for (const std::string& item : items) {
        if (!text.empty()) {
            text += ", ";
        }
        text += item;
    }
    return text;
}

} // namespace qzhost::validate
