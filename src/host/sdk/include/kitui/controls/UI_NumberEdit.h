// An edit field for a number: a framed field whose text follows its value.
#pragma once

#include "kitui/controls/UI_NumberTextControl.h"

namespace kitui::controls {

/// [ui-thread] for every operation.
class QZ_HOST_API UI_NumberEdit : public UI_NumberTextControl {
public:
    explicit UI_NumberEdit(std::uint32_t creation_flags = 0);
    ~UI_NumberEdit() override;

    void UI_Draw(kitui::inkwell::Inkwell* ink) override;
};

} // namespace kitui::controls
