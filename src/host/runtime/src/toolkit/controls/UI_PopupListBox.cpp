#include "kitui/controls/UI_PopupListBox.h"

#include "ControlPainting.h"
#include "kitui/inkwell/Drawing.h"
#include "kitui/ui/Theme.h"

namespace kitui::controls {

UI_PopupListBox::UI_PopupListBox(std::uint32_t creation_flags) : UI_ItemsControl(creation_flags) {}

UI_PopupListBox::~UI_PopupListBox() = default;

void UI_PopupListBox::UI_Draw(kitui::inkwell::Inkwell* ink) {
    const kitui::ui::RectT<float> local = UI_GetLocalRectF();
    qzhost::controls::PaintBox(ink, local,
                               kitui::ui::GetColor(kitui::ui::color_id::kEditBackground),
                               kitui::ui::GetColor(kitui::ui::color_id::kControlFrame));
    const kitui::inkwell::ColorRGBA textColor = GetEffectiveTextColor();
    for (std::size_t i = 0; i < GetItemCount(); ++i) {
        const kitui::ui::RectT<float> row{1.0f, 1.0f + static_cast<float>(i) * kRowHeight,
                                          local.width - 2.0f, kRowHeight};
        if (row.y >= local.height) {
            break;
        }
        if (i == GetSelection() && ink != nullptr) {
            kitui::inkwell::FillRect(*ink, row, kitui::ui::GetColor(kitui::ui::color_id::kHotText));
        }
        qzhost::controls::PaintText(ink, GetItem(i), qzhost::controls::Inset(row, 3.0f, 0.0f),
                                    textColor, GetTextStyle());
    }
    UI_DrawChildren(ink);
}

} // namespace kitui::controls
