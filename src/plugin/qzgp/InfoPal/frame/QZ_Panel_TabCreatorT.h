// The tab creator through which the docking workspace builds a palette's panel on demand.
#pragma once

#include "kitworkspace/workspace/TabCreator.h"

namespace infopal {

class InfoPal;

template <class PanelT>
class QZ_Panel_TabCreatorT : public kitworkspace::workspace::TabCreator {
public:
    QZ_Panel_TabCreatorT(const char* tab_type, const kitcore::utility::UTF16String& title,
                         InfoPal* plugin)
        : TabCreator(tab_type), title_(title), plugin_(plugin) {}

    /// [ui-thread] Builds one panel with the parent, the creation argument, the title, no
    /// further options and the flag true, then makes the toolkit's post-creation call.
    void Create(kitworkspace::workspace::TabPanel** out_panel, kitui::ui::UI_Node* parent,
                const kitworkspace::workspace::TabPanelCreationArgs* args) override {
        if (out_panel == nullptr) {
            return;
        }
        const kitcore::utility::UTF16String title = title_;
        PanelT* panel = new PanelT(parent, args, title, /*options=*/0, /*flag=*/true);
        *out_panel = panel;
        if (panel != nullptr) {
            static_cast<kitui::ui::UI_NodeBase*>(panel)->UI_PostCreate();
        }
    }

    InfoPal* Plugin() const noexcept { return plugin_; }

private:
    kitcore::utility::UTF16String title_;
    InfoPal* plugin_;
};

} // namespace infopal
