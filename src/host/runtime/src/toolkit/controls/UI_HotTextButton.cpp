#include "kitui/controls/UI_HotTextButton.h"

#include "ControlPainting.h"
#include "kitui/inkwell/Drawing.h"
#include "kitui/ui/Theme.h"

namespace kitui::controls {

UI_HotTextButton::UI_HotTextButton(std::uint32_t creation_flags) : UI_TextControl(creation_flags) {
    SetTextAlignment(kitui::inkwell::TextStyle::kCenter);
}

UI_HotTextButton::~UI_HotTextButton() = default;

std::size_t UI_HotTextButton::DefaultTextColorID() const {
    return kitui::ui::color_id::kHotText;
}

void UI_HotTextButton::UI_Draw(kitui::inkwell::Inkwell* ink) {
    const kitui::ui::RectT<float> local = UI_GetLocalRectF();
    if (ink != nullptr) {
        kitui::inkwell::FrameRect(*ink, local,
                                  kitui::ui::GetColor(kitui::ui::color_id::kControlFrame), 1.0f);
    }
    qzhost::controls::PaintText(ink, GetValue(), qzhost::controls::Inset(local, 3.0f, 0.0f),
                                GetEffectiveTextColor(), GetTextStyle());
    UI_DrawChildren(ink);
}

} // namespace kitui::controls
