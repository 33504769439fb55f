#include "kitworkspace/workspace/TabCreator.h"

namespace kitworkspace::workspace {

TabCreator::TabCreator(const char* tab_type) : tabType_(tab_type != nullptr ? tab_type : "") {}

TabCreator::~TabCreator() = default;

void TabCreator::CreateAndTag(TabPanel** out_panel, kitui::ui::UI_Node* parent,
                              const TabPanelCreationArgs* args) {
    Create(out_panel, parent, args);
    if (out_panel != nullptr && *out_panel != nullptr) {
        (*out_panel)->SetTabType(tabType_.c_str());
    }
}

bool TabCreator::AllowsMultipleTabs() const {
    return false;
}
bool TabCreator::IsDocumentTab() const {
    return false;
}
bool TabCreator::HidesTabHeader() const {
    return false;
}
bool TabCreator::RestoresClosedTab() const {
    return false;
}

} // namespace kitworkspace::workspace
