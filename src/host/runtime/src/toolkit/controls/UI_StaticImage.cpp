#include "kitui/controls/UI_StaticImage.h"

namespace kitui::controls {

UI_StaticImage::UI_StaticImage(std::uint32_t creation_flags) : UI_PictureControl(creation_flags) {}

UI_StaticImage::~UI_StaticImage() = default;

void UI_StaticImage::UI_Draw(kitui::inkwell::Inkwell* ink) {
    DrawPictureCentred(ink, UI_GetLocalRectF());
    UI_DrawChildren(ink);
}

} // namespace kitui::controls
