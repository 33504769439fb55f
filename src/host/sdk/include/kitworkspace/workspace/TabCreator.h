// Tab creators: how the docking workspace builds a panel of a tab type on demand.
#pragma once

#include <string>

#include "kitworkspace/workspace/TabPanel.h"

namespace kitworkspace::workspace {

class QZ_HOST_API TabCreator {
public:
    explicit TabCreator(const char* tab_type);
    TabCreator(const TabCreator&) = delete;
    TabCreator& operator=(const TabCreator&) = delete;
    virtual ~TabCreator();

    /// QZ_UI_THREAD Calls Create, then hands the tab type to the new panel.
    virtual void CreateAndTag(TabPanel** out_panel, kitui::ui::UI_Node* parent,
                              const TabPanelCreationArgs* args);
    /// QZ_UI_THREAD Builds one panel into `*out_panel` (null when none could be made).
    virtual void Create(TabPanel** out_panel, kitui::ui::UI_Node* parent,
                        const TabPanelCreationArgs* args) = 0;
    /// QZ_UI_THREAD Whether several panels of the type may be open at once.
    virtual bool AllowsMultipleTabs() const;
    /// QZ_UI_THREAD Whether the type is a document rather than a palette.
    virtual bool IsDocumentTab() const;
    /// QZ_UI_THREAD Whether the tab's header is hidden.
    virtual bool HidesTabHeader() const;
    /// QZ_UI_THREAD Whether a closed tab of the type comes back at workspace restore.
    virtual bool RestoresClosedTab() const;

    const std::string& GetTabType() const noexcept { return tabType_; }

private:
    std::string tabType_;
};

} // namespace kitworkspace::workspace
