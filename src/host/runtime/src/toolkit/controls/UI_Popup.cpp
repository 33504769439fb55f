#include "kitui/controls/UI_Popup.h"

#include "ControlPainting.h"
#include "kitui/ui/Theme.h"

namespace kitui::controls {

namespace {
/// Room on the right for the arrow.
constexpr float kArrowRoom = 14.0f;
} // namespace

UI_Popup::UI_Popup(std::uint32_t creation_flags) : UI_ItemsControl(creation_flags) {}

UI_Popup::~UI_Popup() = default;

void UI_Popup::UI_Draw(kitui::inkwell::Inkwell* ink) {
    const kitui::ui::RectT<float> local = UI_GetLocalRectF();
    qzhost::controls::PaintBox(ink, local, kitui::ui::GetColor(kitui::ui::color_id::kControlFace),
                               kitui::ui::GetColor(kitui::ui::color_id::kControlFrame));
    kitui::ui::RectT<float> textBox = qzhost::controls::Inset(local, 4.0f, 1.0f);
    textBox.width = textBox.width > kArrowRoom ? textBox.width - kArrowRoom : 0.0f;
    qzhost::controls::PaintText(ink, GetValue(), textBox, GetEffectiveTextColor(), GetTextStyle());
    if (ink != nullptr && ink->GetSupplier() != nullptr && ink->GetSurface() != nullptr) {
        // A downward arrow, 7 wide and 4 high, centred in the room on the right.
        const float cx = local.width - kArrowRoom / 2.0f;
        const float cy = local.height / 2.0f;
        kitui::inkwell::PathRef arrow = ink->GetSupplier()->NewPath();
        arrow->MoveTo({cx - 3.5f, cy - 2.0f});
        arrow->LineTo({cx + 3.5f, cy - 2.0f});
        arrow->LineTo({cx, cy + 2.0f});
        arrow->Close();
        ink->GetSurface()->FillPath(
            arrow,
            ink->GetSupplier()->NewBrush(kitui::ui::GetColor(kitui::ui::color_id::kControlMark)),
            kitui::inkwell::kFillRuleWinding);
    }
    UI_DrawChildren(ink);
}

} // namespace kitui::controls
