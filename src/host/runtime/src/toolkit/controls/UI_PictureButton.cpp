#include "kitui/controls/UI_PictureButton.h"

#include "ControlPainting.h"
#include "kitui/ui/Theme.h"

namespace kitui::controls {

UI_PictureButton::UI_PictureButton(std::uint32_t creation_flags)
    : UI_PictureControl(creation_flags) {}

UI_PictureButton::~UI_PictureButton() = default;

void UI_PictureButton::UI_Draw(kitui::inkwell::Inkwell* ink) {
    const kitui::ui::RectT<float> local = UI_GetLocalRectF();
    qzhost::controls::PaintBox(ink, local, kitui::ui::GetColor(kitui::ui::color_id::kControlFace),
                               kitui::ui::GetColor(kitui::ui::color_id::kControlFrame));
    DrawPictureCentred(ink, qzhost::controls::Inset(local, 1.0f, 1.0f));
    UI_DrawChildren(ink);
}

} // namespace kitui::controls
