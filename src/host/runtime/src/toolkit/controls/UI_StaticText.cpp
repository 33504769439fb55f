#include "kitui/controls/UI_StaticText.h"

#include "ControlPainting.h"

namespace kitui::controls {

UI_StaticText::UI_StaticText(std::uint32_t creation_flags) : UI_TextControl(creation_flags) {}

UI_StaticText::~UI_StaticText() = default;

void UI_StaticText::UI_Draw(kitui::inkwell::Inkwell* ink) {
    qzhost::controls::PaintText(ink, GetValue(), UI_GetLocalRectF(), GetEffectiveTextColor(),
                                GetTextStyle());
    UI_DrawChildren(ink);
}

} // namespace kitui::controls
