// The list of a popup: every item on a row of its own, the chosen one highlighted.
#pragma once

#include "kitui/controls/UI_ItemsControl.h"

namespace kitui::controls {

/// [ui-thread] for every operation.
class QZ_HOST_API UI_PopupListBox : public UI_ItemsControl {
public:
    explicit UI_PopupListBox(std::uint32_t creation_flags = 0);
    ~UI_PopupListBox() override;

    /// The height of one item's row in user units.
    static constexpr float kRowHeight = 14.0f;
    void UI_Draw(kitui::inkwell::Inkwell* ink) override;
};

} // namespace kitui::controls
