// Panels that live as tabs in the docking workspace.
#pragma once

#include <cstdint>
#include <string>

#include "kitcore/utility/UTF16String.h"
#include "kitui/ui/OS_Window.h"
#include "kitworkspace/workspace/FlyoutMenu.h"

namespace kitworkspace::workspace {

/// What the workspace hands to a tab creator for a new panel.
struct TabPanelCreationArgs {
    /// Creation flags of the panel, passed on to the panel's own children.
    std::uint32_t flags = 0;
};

class QZ_HOST_API OS_TabPanel : public kitui::ui::OS_ScaledView {
public:
    OS_TabPanel();
    ~OS_TabPanel() override;
};

class QZ_HOST_API TabPanel : public OS_TabPanel {
public:
    /// `parent` is the frame that the workspace will put the panel into; the workspace
    /// adds the panel to it after creation. `options` are the panel's further options.
    TabPanel(const char* tab_type, kitui::ui::UI_Node* parent, const TabPanelCreationArgs* args,
             const kitcore::utility::UTF16String& title, std::uint32_t options);
    ~TabPanel() override;

    /// [ui-thread] The tab type under which the workspace knows the panel.
    const std::string& GetTabType() const noexcept { return tabType_; }
    /// [ui-thread] Set by the tab creator right after creation.
    void SetTabType(const char* tab_type);
    const kitcore::utility::UTF16String& GetTitle() const noexcept { return title_; }
    std::uint32_t GetCreationFlags() const noexcept { return creationFlags_; }
    std::uint32_t GetOptions() const noexcept { return options_; }

    /// [any-thread] Whether the panel's frame holds a stack of tabs.
    bool InStackedFrame() const;

    /// [ui-thread] Fills the menu behind the panel's tab; by default it stays as it is.
    virtual void PopulateFlyoutMenu(FlyoutMenu& menu);
    /// [ui-thread] Carries out the command of the flyout item the user chose; returns
    /// whether the panel handled it (by default it does not).
    virtual bool DoFlyoutMenuCommand(std::int32_t command);

private:
    std::string tabType_;
    kitcore::utility::UTF16String title_;
    std::uint32_t creationFlags_ = 0;
    std::uint32_t options_ = 0;
};

} // namespace kitworkspace::workspace
