// A popup menu button: a framed face with the chosen item's text and an arrow.
#pragma once

#include "kitui/controls/UI_ItemsControl.h"

namespace kitui::controls {

/// [ui-thread] for every operation.
class QZ_HOST_API UI_Popup : public UI_ItemsControl {
public:
    explicit UI_Popup(std::uint32_t creation_flags = 0);
    ~UI_Popup() override;

    void UI_Draw(kitui::inkwell::Inkwell* ink) override;
};

} // namespace kitui::controls
