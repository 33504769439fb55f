#include "InfoPal/frame/TabVisibility.h"

#include "kitworkspace/workspace/Workspace.h"

namespace infopal {

using kitworkspace::workspace::TabPanel;
using kitworkspace::workspace::WorkspaceUtils;

bool IsTabShown(const char* tab_type, bool front_test) {
    bool front = false;
    if (!WorkspaceUtils::TabIsShown(tab_type, &front)) {
        return false;
    }
    TabPanel* tab = WorkspaceUtils::FindFirstTabOfType(tab_type, nullptr);
    if (!front_test) {
        return true;
    }
    if (tab != nullptr && tab->InStackedFrame()) {
        return true;
    }
    return front;
}

} // namespace infopal
