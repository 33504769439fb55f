// A check box with a label: a small framed box, checked or not, and the label's text.
#pragma once

#include "kitui/controls/UI_TextControl.h"

namespace kitui::controls {

/// [ui-thread] for every operation.
class QZ_HOST_API UI_Checkbox : public UI_TextControl {
public:
    explicit UI_Checkbox(std::uint32_t creation_flags = 0);
    ~UI_Checkbox() override;

    void SetChecked(bool checked);
    bool IsChecked() const noexcept { return checked_; }
    /// The user's click: toggles the check and sends a kValueChanged control message.
    void UI_Click() override;

    void UI_Draw(kitui::inkwell::Inkwell* ink) override;

private:
    bool checked_ = false;
};

} // namespace kitui::controls
