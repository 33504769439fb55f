#include "kitui/controls/UI_HotText.h"

#include "ControlPainting.h"
#include "kitui/ui/Theme.h"

namespace kitui::controls {

UI_HotText::UI_HotText(std::uint32_t creation_flags) : UI_TextControl(creation_flags) {}

UI_HotText::~UI_HotText() = default;

std::size_t UI_HotText::DefaultTextColorID() const {
    return kitui::ui::color_id::kHotText;
}

void UI_HotText::UI_Draw(kitui::inkwell::Inkwell* ink) {
    kitui::inkwell::TextStyle style = GetTextStyle();
    style.underline = true;
    qzhost::controls::PaintText(ink, GetValue(), UI_GetLocalRectF(), GetEffectiveTextColor(),
                                style);
    UI_DrawChildren(ink);
}

} // namespace kitui::controls
