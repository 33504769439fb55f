// Small drawing helpers built on a context's supplier and surface.
#pragma once

#include "kitui/inkwell/ColorRGBA.h"
#include "kitui/inkwell/Inkwell.h"
#include "kitui/ui/Geometry.h"
#include "qzgp/QZ_Basic.h"

namespace kitui::inkwell {

/// [ui-thread] Fills `rect` with a brush of `color`.
QZ_HOST_API void FillRect(Inkwell& ink, const kitui::ui::RectT<float>& rect,
                          const ColorRGBA& color);

/// [ui-thread] Strokes the inside edge of `rect` with a pen of `color`, `width` wide: the
/// stroke lies wholly inside the rectangle.
QZ_HOST_API void FrameRect(Inkwell& ink, const kitui::ui::RectT<float>& rect,
                           const ColorRGBA& color, float width);

} // namespace kitui::inkwell
