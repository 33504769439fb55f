// The composite as the Info palette samples it around the pointer's pixel: that pixel
// itself, or the mean of the square of pixels centred on it (pixelview/AreaSample.h),
// computed exactly from the layers' full-precision pixels: the part of the square inside
// the composition is composited premultiplied and summed in double; the part outside it
// counts as transparent.
#pragma once

#include <array>
#include <vector>

#include "CompositeRegion.h"

namespace qzview {

class CompositeSampler {
public:
    /// The straight red, green, blue and alpha that a sample of side `size` (an odd side
    /// from 1 to 101) gives at column `x`, row `y` of `snapshot`: the composite pixel for
    /// side 1, otherwise the square's mean.
    std::array<float, 4> At(const CompositionSnapshot& snapshot, int x, int y, int size);

private:
    /// What one sample reuses from the last.
    CompositeScratch scratch_;
    std::vector<float> square_;
};

} // namespace qzview
