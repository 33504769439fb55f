#include "kitworkspace/workspace/TabPanel.h"

#include "qzhost/WorkspaceModel.h"

namespace kitworkspace::workspace {

OS_TabPanel::OS_TabPanel() = default;
OS_TabPanel::~OS_TabPanel() = default;

TabPanel::TabPanel(const char* tab_type, kitui::ui::UI_Node*, const TabPanelCreationArgs* args,
                   const kitcore::utility::UTF16String& title, std::uint32_t options)
    : tabType_(tab_type != nullptr ? tab_type : ""), title_(title),
      creationFlags_(args != nullptr ? args->flags : 0), options_(options) {}

TabPanel::~TabPanel() = default;

void TabPanel::SetTabType(const char* tab_type) {
    tabType_ = tab_type != nullptr ? tab_type : "";
}

bool TabPanel::InStackedFrame() const {
    // Answered from the workspace's tab list, not from the node tree, so that any thread
    // may ask.
    return qzhost::WorkspaceModel::Get().InStackedFrame(this);
}

void TabPanel::PopulateFlyoutMenu(FlyoutMenu& /*menu*/) {}

bool TabPanel::DoFlyoutMenuCommand(std::int32_t /*command*/) {
    return false;
}

} // namespace kitworkspace::workspace
