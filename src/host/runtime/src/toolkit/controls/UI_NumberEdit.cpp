#include "kitui/controls/UI_NumberEdit.h"

#include "ControlPainting.h"
#include "kitui/ui/Theme.h"

namespace kitui::controls {

UI_NumberEdit::UI_NumberEdit(std::uint32_t creation_flags) : UI_NumberTextControl(creation_flags) {}

UI_NumberEdit::~UI_NumberEdit() = default;

void UI_NumberEdit::UI_Draw(kitui::inkwell::Inkwell* ink) {
    const kitui::ui::RectT<float> local = UI_GetLocalRectF();
    qzhost::controls::PaintBox(ink, local,
                               kitui::ui::GetColor(kitui::ui::color_id::kEditBackground),
                               kitui::ui::GetColor(kitui::ui::color_id::kControlFrame));
    qzhost::controls::PaintText(ink, GetValue(), qzhost::controls::Inset(local, 3.0f, 1.0f),
                                GetEffectiveTextColor(), GetTextStyle());
    UI_DrawChildren(ink);
}

} // namespace kitui::controls
