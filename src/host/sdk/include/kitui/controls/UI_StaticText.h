// A line of text that the user cannot change.
#pragma once

#include "kitui/controls/UI_TextControl.h"

namespace kitui::controls {

/// [ui-thread] for every operation.
class QZ_HOST_API UI_StaticText : public UI_TextControl {
public:
    explicit UI_StaticText(std::uint32_t creation_flags = 0);
    ~UI_StaticText() override;

    void UI_Draw(kitui::inkwell::Inkwell* ink) override;
};

} // namespace kitui::controls
