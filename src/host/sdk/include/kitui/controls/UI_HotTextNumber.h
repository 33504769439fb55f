// A number that the user can drag or click to change: hot text that follows its value.
#pragma once

#include "kitui/controls/UI_NumberTextControl.h"

namespace kitui::controls {

/// [ui-thread] for every operation.
class QZ_HOST_API UI_HotTextNumber : public UI_NumberTextControl {
public:
    explicit UI_HotTextNumber(std::uint32_t creation_flags = 0);
    ~UI_HotTextNumber() override;

    void UI_Draw(kitui::inkwell::Inkwell* ink) override;

protected:
    std::size_t DefaultTextColorID() const override;
};

} // namespace kitui::controls
