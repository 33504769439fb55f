// Colour management for display: what a monitor shows for a working-space colour.
#pragma once

#include "host/PF_Pixel.h"
#include "qzgp/QZ_Basic.h"

/// [ui-thread] Converts `in` (working space, alpha untouched) to the colour that the
/// monitor under the screen point (x, y) shows, into `*out`. Without a monitor profile the
/// colour passes through unchanged. `out` may be `&in`; a null `out` does nothing.
QZ_HOST_API void TransformPixelAtScreenLocation(const PF_PixelFloat& in, int x, int y,
                                                PF_PixelFloat* out);
