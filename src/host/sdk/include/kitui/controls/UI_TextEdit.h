// An edit field for a line of text: a framed field with the text inside.
#pragma once

#include "kitui/controls/UI_TextControl.h"

namespace kitui::controls {

/// [ui-thread] for every operation.
class QZ_HOST_API UI_TextEdit : public UI_TextControl {
public:
    explicit UI_TextEdit(std::uint32_t creation_flags = 0);
    ~UI_TextEdit() override;

    void UI_Draw(kitui::inkwell::Inkwell* ink) override;
};

} // namespace kitui::controls
