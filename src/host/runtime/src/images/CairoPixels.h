// Reading the pixels of a Cairo image surface as 0xAARRGGBB values, not premultiplied.
#pragma once

#include <cairo.h>

#include "DecodedImage.h"

namespace qzhost::images {

/// The pixels of an ARGB32 or RGB24 image surface (flushed here). Any other format is
/// first painted onto an ARGB32 surface.
DecodedImage ReadCairoPixels(cairo_surface_t* surface);

} // namespace qzhost::images
