// A push button with a text: a framed face with the text centred.
#pragma once

#include "kitui/controls/UI_TextControl.h"

namespace kitui::controls {

/// [ui-thread] for every operation.
class QZ_HOST_API UI_TextButton : public UI_TextControl {
public:
    explicit UI_TextButton(std::uint32_t creation_flags = 0);
    ~UI_TextButton() override;

    void UI_Draw(kitui::inkwell::Inkwell* ink) override;
};

} // namespace kitui::controls
