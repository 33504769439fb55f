// An Info panel whose text-lines operation a test replaces, built by the workspace in
// place of the plug-in's own panel: the workspace's creator for the panel's tab type is
// swapped for one that builds this class.
#pragma once

#include <functional>

#include "InfoPal/panel/InfoPal_UI.h"
#include "kitworkspace/workspace/TabCreator.h"
#include "qzhost/WorkspaceModel.h"

namespace textlines_test {

class SubstitutePanel : public infopal::InfoPal_UI {
public:
    using Handler = std::function<void(SubstitutePanel&, const kitcore::utility::UTF16String* lines,
                                       infopal::TextLinesType type)>;

    SubstitutePanel(kitui::ui::UI_Node* parent,
                    const kitworkspace::workspace::TabPanelCreationArgs* args, Handler handler)
        : InfoPal_UI(parent, args, u"Info", 0, true), handler_(std::move(handler)) {}

    void
    ShowTextLines(const kitcore::utility::UTF16String& l1, const kitcore::utility::UTF16String& l2,
                  const kitcore::utility::UTF16String& l3, const kitcore::utility::UTF16String& l4,
                  const kitcore::utility::UTF16String& l5, infopal::TextLinesType type) override {
        const kitcore::utility::UTF16String lines[5] = {l1, l2, l3, l4, l5};
        handler_(*this, lines, type);
    }

    /// The panel's own text-lines operation.
    void ShowTextLinesAsUsual(const kitcore::utility::UTF16String* lines,
                              infopal::TextLinesType type) {
        InfoPal_UI::ShowTextLines(lines[0], lines[1], lines[2], lines[3], lines[4], type);
    }

private:
    Handler handler_;
};

class SubstitutePanelCreator : public kitworkspace::workspace::TabCreator {
public:
    SubstitutePanelCreator(const char* tab_type, SubstitutePanel::Handler handler)
        : TabCreator(tab_type), handler_(std::move(handler)) {}

    void Create(kitworkspace::workspace::TabPanel** out_panel, kitui::ui::UI_Node* parent,
                const kitworkspace::workspace::TabPanelCreationArgs* args) override {
        auto* panel = new SubstitutePanel(parent, args, handler_);
        *out_panel = panel;
        static_cast<kitui::ui::UI_NodeBase*>(panel)->UI_PostCreate();
    }

private:
    SubstitutePanel::Handler handler_;
};

/// Makes the workspace build SubstitutePanel for `tab_type` from now on.
inline void UseSubstitutePanel(const char* tab_type, SubstitutePanel::Handler handler) {
    qzhost::WorkspaceModel::Get().RegisterTabCreator(
        new SubstitutePanelCreator(tab_type, std::move(handler)));
}

} // namespace textlines_test
