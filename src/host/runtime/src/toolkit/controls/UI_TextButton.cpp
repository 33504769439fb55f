#include "kitui/controls/UI_TextButton.h"

#include "ControlPainting.h"
#include "kitui/ui/Theme.h"

namespace kitui::controls {

UI_TextButton::UI_TextButton(std::uint32_t creation_flags) : UI_TextControl(creation_flags) {
    SetTextAlignment(kitui::inkwell::TextStyle::kCenter);
}

UI_TextButton::~UI_TextButton() = default;

void UI_TextButton::UI_Draw(kitui::inkwell::Inkwell* ink) {
    const kitui::ui::RectT<float> local = UI_GetLocalRectF();
    qzhost::controls::PaintBox(ink, local, kitui::ui::GetColor(kitui::ui::color_id::kControlFace),
                               kitui::ui::GetColor(kitui::ui::color_id::kControlFrame));
    qzhost::controls::PaintText(ink, GetValue(), qzhost::controls::Inset(local, 4.0f, 1.0f),
                                GetEffectiveTextColor(), GetTextStyle());
    UI_DrawChildren(ink);
}

} // namespace kitui::controls
