// Text that the user can click: drawn in the theme's hot-text colour, underlined.
#pragma once

#include "kitui/controls/UI_TextControl.h"

namespace kitui::controls {

/// [ui-thread] for every operation.
class QZ_HOST_API UI_HotText : public UI_TextControl {
public:
    explicit UI_HotText(std::uint32_t creation_flags = 0);
    ~UI_HotText() override;

    void UI_Draw(kitui::inkwell::Inkwell* ink) override;

protected:
    std::size_t DefaultTextColorID() const override;
};

} // namespace kitui::controls
