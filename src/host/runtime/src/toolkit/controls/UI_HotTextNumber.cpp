#include "kitui/controls/UI_HotTextNumber.h"

#include "ControlPainting.h"
#include "kitui/ui/Theme.h"

namespace kitui::controls {

UI_HotTextNumber::UI_HotTextNumber(std::uint32_t creation_flags)
    : UI_NumberTextControl(creation_flags) {}

UI_HotTextNumber::~UI_HotTextNumber() = default;

std::size_t UI_HotTextNumber::DefaultTextColorID() const {
    return kitui::ui::color_id::kHotText;
}

void UI_HotTextNumber::UI_Draw(kitui::inkwell::Inkwell* ink) {
    kitui::inkwell::TextStyle style = GetTextStyle();
    style.underline = true;
    qzhost::controls::PaintText(ink, GetValue(), UI_GetLocalRectF(), GetEffectiveTextColor(),
                                style);
    UI_DrawChildren(ink);
}

} // namespace kitui::controls
