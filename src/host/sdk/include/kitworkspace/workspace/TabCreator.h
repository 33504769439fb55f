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

    /// [ui-thread] Calls Create, then hands the tab type to the new panel.
    virtual void CreateAndTag(TabPanel** out_panel, kitui::ui::UI_Node* parent,
                              const TabPanelCreationArgs* args);
    /// [ui-thread] Builds one panel into `*out_panel` (null when none could be made).
    virtual void Create(TabPanel** out_panel, kitui::ui::UI_Node* parent,
                        const TabPanelCreationArgs* args) = 0;
    /// [ui-thread] Whether several panels of the type may be open at once.
    virtual bool AllowsMultipleTabs() const;
    /// [ui-thread] Whether the type is a document rather than a palette.
    virtual bool IsDocumentTab() const;
    /// [ui-thread] Whether the tab's header is hidden.
    virtual bool HidesTabHeader() const;
    /// [ui-thread] Whether a closed tab of the type comes back at workspace restore.
    virtual bool RestoresClosedTab() const;

    const std::string& GetTabType() const noexcept { return tabType_; }

private:
    std::string tabType_;
};

} // namespace kitworkspace::workspace
