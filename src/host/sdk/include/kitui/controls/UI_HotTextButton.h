// A button shown as hot text in a frame.
#pragma once

#include "kitui/controls/UI_TextControl.h"

namespace kitui::controls {

/// [ui-thread] for every operation.
class QZ_HOST_API UI_HotTextButton : public UI_TextControl {
public:
    explicit UI_HotTextButton(std::uint32_t creation_flags = 0);
    ~UI_HotTextButton() override;

    void UI_Draw(kitui::inkwell::Inkwell* ink) override;

protected:
    std::size_t DefaultTextColorID() const override;
};

} // namespace kitui::controls
