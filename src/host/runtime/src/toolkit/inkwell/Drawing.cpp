#include "kitui/inkwell/Drawing.h"

#include <algorithm>

namespace kitui::inkwell {

void FillRect(Inkwell& ink, const kitui::ui::RectT<float>& rect, const ColorRGBA& color) {
    SupplierInterface* supplier = ink.GetSupplier();
    SurfaceInterface* surface = ink.GetSurface();
    if (supplier == nullptr || surface == nullptr) {
        return;
    }
    PathRef path = supplier->NewPath();
    path->AddRect(rect);
    surface->FillPath(path, supplier->NewBrush(color), kFillRuleWinding);
}

void FrameRect(Inkwell& ink, const kitui::ui::RectT<float>& rect, const ColorRGBA& color,
               float width) {
    SupplierInterface* supplier = ink.GetSupplier();
    SurfaceInterface* surface = ink.GetSurface();
    if (supplier == nullptr || surface == nullptr || !(width > 0.0f)) {
        return;
    }
    // The stroke is centred on the path: inset by half the width to keep it inside.
    const float half = width / 2.0f;
    const float w = std::max(0.0f, rect.width - width);
    const float h = std::max(0.0f, rect.height - width);
    PathRef path = supplier->NewPath();
    path->AddRect(kitui::ui::RectT<float>{rect.x + half, rect.y + half, w, h});
    surface->StrokePath(path, supplier->NewPen(color, width));
}

} // namespace kitui::inkwell
