// How the toolkit's controls paint their parts: boxes, frames and text.
#pragma once

#include "kitcore/utility/UTF16String.h"
#include "kitui/inkwell/Inkwell.h"
#include "kitui/inkwell/TextStyle.h"

namespace qzhost::controls {

using kitui::inkwell::ColorRGBA;
using kitui::inkwell::Inkwell;
using kitui::ui::RectT;

/// `rect` made smaller by dx on the left and the right and dy at the top and the bottom.
RectT<float> Inset(const RectT<float>& rect, float dx, float dy);

/// A box: `face` filled, then a one-unit frame of `frame` inside its edge.
void PaintBox(Inkwell* ink, const RectT<float>& rect, const ColorRGBA& face,
              const ColorRGBA& frame);

/// One line of `text` in `box`.
void PaintText(Inkwell* ink, const kitcore::utility::UTF16String& text, const RectT<float>& box,
               const ColorRGBA& color, const kitui::inkwell::TextStyle& style);

} // namespace qzhost::controls
