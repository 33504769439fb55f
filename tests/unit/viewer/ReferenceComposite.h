// Composites made independently of the viewer's compositor, with OpenImageIO alone, for
// tests to hold the viewer's pixels against: each layer multiplied by alpha, its mask and
// its opacity, warped with the triangle filter (pasted when it sits on whole pixels),
// laid over the ones below and divided by alpha again.
#pragma once

#include <OpenImageIO/imagebuf.h>

#include "composition/Composition.h"

namespace qzviewtest {

/// A `width` x `height` float layer of smooth ramps, a little noise (from `seed`) and an
/// alpha that varies.
qzview::LayerImage Plate(const char* name, int width, int height, unsigned seed);

/// A `width` x `height` RGBA float layout with its alpha channel named.
OIIO::ImageSpec Rgba(int width, int height);

/// One layer placed into a composition-sized buffer, colour multiplied by alpha, the mask
/// and the opacity: pasted when its transform moves it by whole pixels, warped otherwise.
/// The composition's pixels are `composition_aspect` times as wide as tall.
OIIO::ImageBuf Placed(const qzview::Layer& layer, int width, int height,
                      double composition_aspect = 1.0);

/// The full composite of `composition`, premultiplied (`straight` false) or straight.
OIIO::ImageBuf Reference(const qzview::Composition& composition, bool straight = true);

} // namespace qzviewtest
