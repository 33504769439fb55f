// The host's floating-point pixel.
#pragma once

/// Four 32-bit floats in the order alpha, red, green, blue; nominally 0 to 1, over-range
/// and negative values allowed.
struct PF_PixelFloat {
    float alpha;
    float red;
    float green;
    float blue;
};
