#include "ControlPainting.h"

#include <algorithm>

#include "kitui/inkwell/Drawing.h"

namespace qzhost::controls {

RectT<float> Inset(const RectT<float>& rect, float dx, float dy) {
    return {rect.x + dx, rect.y + dy, std::max(0.0f, rect.width - 2 * dx),
            std::max(0.0f, rect.height - 2 * dy)};
}

void PaintBox(Inkwell* ink, const RectT<float>& rect, const ColorRGBA& face,
              const ColorRGBA& frame) {
    if (ink == nullptr) {
        return;
    }
    kitui::inkwell::FillRect(*ink, rect, face);
    kitui::inkwell::FrameRect(*ink, rect, frame, 1.0f);
}

void PaintText(Inkwell* ink, const kitcore::utility::UTF16String& text, const RectT<float>& box,
               const ColorRGBA& color, const kitui::inkwell::TextStyle& style) {
    if (ink == nullptr || ink->GetSurface() == nullptr || text.empty()) {
        return;
    }
    ink->GetSurface()->DrawText(text, box, color, style);
}

} // namespace qzhost::controls
