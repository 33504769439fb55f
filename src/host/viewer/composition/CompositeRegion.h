// The exact composite of any region of the composition, computed from each drawn layer's
// own pixels: every layer's working values are multiplied by their alpha, by the mask's
// coverage and by the opacity, taken into the composition by the layer's warp (or moved
// unchanged when the layer sits on whole pixels), laid over one another bottom to top and
// divided by alpha again. A lone layer on whole pixels with nothing scaling its values
// gives its own values. Only the layer pixels that the region needs are read, so one
// pixel costs a few microseconds and no buffer of the whole composition is kept.
//
// A snapshot holds what the compositor reads (the layers' pixels are shared and never
// change), so a worker thread composites from it while the person goes on editing.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "Layer.h"
#include "LayerWarp.h"

namespace qzview {

/// One drawn layer as the compositor reads it.
struct DrawnLayer {
    std::shared_ptr<const LayerImage> image;
    LayerWarp warp{Affine{}};
    /// 0 to 1, in single precision as it multiplies the pixels.
    float opacity = 1.0f;
    std::optional<RectMask> mask;
    /// Whether nothing scales the layer's values (full opacity, no mask): alone and on
    /// whole pixels, it then shows its own values.
    bool own = true;
};

struct CompositionSnapshot {
    int width = 0;
    int height = 0;
    /// Bottom first.
    std::vector<DrawnLayer> layers;
};

/// Drawn layer `layer` as the compositor reads it, its pixels taken into the composition
/// by `warp` (the warp of its transform through the active camera).
DrawnLayer DrawnLayerOf(const Layer& layer, const LayerWarp& warp);

enum class AlphaForm : std::uint8_t {
    /// Colour divided by alpha: the working values that the Info palette reads.
    Straight,
    /// Colour multiplied by alpha, as the layers are laid over one another.
    Premultiplied,
};

/// What one compositing thread reuses from one region to the next.
struct CompositeScratch {
    LayerPatch patch;
    std::vector<float> layer;
    std::vector<float> sum;
};

/// The composite of composition pixels `region` into `out` (4 floats per pixel, rows of
/// region.Width() pixels); pixels outside the composition are composited all the same
/// (layers may lie beyond it).
void CompositeRegion(const CompositionSnapshot& snapshot, const PixelRect& region, AlphaForm form,
                     float* out, CompositeScratch& scratch);

/// The composite pixel at column `x`, row `y`, straight.
std::array<float, 4> CompositePixel(const CompositionSnapshot& snapshot, int x, int y);

} // namespace qzview
