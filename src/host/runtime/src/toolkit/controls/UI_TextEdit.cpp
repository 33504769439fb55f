#include "kitui/controls/UI_TextEdit.h"

#include "ControlPainting.h"
#include "kitui/ui/Theme.h"

namespace kitui::controls {

UI_TextEdit::UI_TextEdit(std::uint32_t creation_flags) : UI_TextControl(creation_flags) {}

UI_TextEdit::~UI_TextEdit() = default;

void UI_TextEdit::UI_Draw(kitui::inkwell::Inkwell* ink) {
    const kitui::ui::RectT<float> local = UI_GetLocalRectF();
    qzhost::controls::PaintBox(ink, local,
                               kitui::ui::GetColor(kitui::ui::color_id::kEditBackground),
                               kitui::ui::GetColor(kitui::ui::color_id::kControlFrame));
    qzhost::controls::PaintText(ink, GetValue(), qzhost::controls::Inset(local, 3.0f, 1.0f),
                                GetEffectiveTextColor(), GetTextStyle());
    UI_DrawChildren(ink);
}

} // namespace kitui::controls
