// The viewer's composition: the opened images as layers, each at the composition's
// top-left corner, the newest on top, over a transparent black background. The
// composition takes the first image's size. Its pixels are the working values that the
// Info palette reads: straight colour with alpha, as the images hold them.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "LayerImage.h"

namespace qzview {

/// Red, green, blue, alpha.
using WorkingPixel = std::array<float, 4>;

class Composition {
public:
    /// Adds `image` as the new top layer and composites again.
    void AddLayer(LayerImage image);
    const std::vector<LayerImage>& Layers() const noexcept { return layers_; }
    bool Empty() const noexcept { return layers_.empty(); }

    int Width() const noexcept { return width_; }
    int Height() const noexcept { return height_; }

    /// The composited pixel at column `x`, row `y`; transparent black outside the
    /// composition.
    WorkingPixel PixelAt(int x, int y) const noexcept;
    /// The topmost layer that covers pixel `x`, `y`, or null.
    const LayerImage* LayerAt(int x, int y) const noexcept;

    /// The composited pixels: Width() x Height() x 4 floats, rows top to bottom.
    const std::vector<float>& Pixels() const noexcept { return pixels_; }

private:
    void Composite();

    std::vector<LayerImage> layers_;
    int width_ = 0;
    int height_ = 0;
    std::vector<float> pixels_;
};

} // namespace qzview
