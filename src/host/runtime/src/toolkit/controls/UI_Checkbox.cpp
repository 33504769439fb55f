#include "kitui/controls/UI_Checkbox.h"

#include <cmath>

#include "ControlPainting.h"
#include "kitui/ui/Theme.h"

namespace kitui::controls {

namespace {
/// The side of the check box, and the gap between it and the label.
constexpr float kBoxSide = 10.0f;
constexpr float kLabelGap = 4.0f;
} // namespace

UI_Checkbox::UI_Checkbox(std::uint32_t creation_flags) : UI_TextControl(creation_flags) {}

UI_Checkbox::~UI_Checkbox() = default;

void UI_Checkbox::SetChecked(bool checked) {
    if (checked != checked_) {
        checked_ = checked;
        UI_Refresh();
    }
}

void UI_Checkbox::UI_Click() {
    if (!IsEnabled()) {
        return;
    }
    SetChecked(!checked_);
    UI_ControlMessage message(this, UI_ControlMessage::kValueChanged);
    UI_SendControlMessage(message);
}

void UI_Checkbox::UI_Draw(kitui::inkwell::Inkwell* ink) {
    const kitui::ui::RectT<float> local = UI_GetLocalRectF();
    const kitui::ui::RectT<float> box{0.0f, std::floor((local.height - kBoxSide) / 2.0f), kBoxSide,
                                      kBoxSide};
    qzhost::controls::PaintBox(ink, box, kitui::ui::GetColor(kitui::ui::color_id::kEditBackground),
                               kitui::ui::GetColor(kitui::ui::color_id::kControlFrame));
    if (checked_ && ink != nullptr && ink->GetSupplier() != nullptr &&
        ink->GetSurface() != nullptr) {
        kitui::inkwell::PathRef mark = ink->GetSupplier()->NewPath();
        mark->MoveTo({box.x + 2.0f, box.y + 5.0f});
        mark->LineTo({box.x + 4.5f, box.y + 7.5f});
        mark->LineTo({box.x + 8.0f, box.y + 2.5f});
        ink->GetSurface()->StrokePath(
            mark, ink->GetSupplier()->NewPen(kitui::ui::GetColor(kitui::ui::color_id::kControlMark),
                                             1.5f));
    }
    const float labelX = kBoxSide + kLabelGap;
    qzhost::controls::PaintText(ink, GetValue(), {labelX, 0.0f, local.width - labelX, local.height},
                                GetEffectiveTextColor(), GetTextStyle());
    UI_DrawChildren(ink);
}

} // namespace kitui::controls
