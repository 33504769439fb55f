// What the canvas shows behind the composition: a checkerboard of 8-pixel squares under
// transparent pixels, and a dark grey beyond the composition's edges.
#pragma once

#include <cstdint>

namespace qzview {

/// Beyond the composition.
constexpr std::uint32_t kOutside = 0xFF202020u;

/// The checkerboard's colour at screen pixel `x`, `y`.
constexpr std::uint32_t Checker(int x, int y) noexcept {
    return ((x >> 3) + (y >> 3)) % 2 == 0 ? 0xFF3A3A3Au : 0xFF2E2E2Eu;
}

/// Display colour 0xAARRGGBB (not premultiplied) over an opaque background.
constexpr std::uint32_t OverBackground(std::uint32_t colour, std::uint32_t background) noexcept {
    const std::uint32_t a = colour >> 24;
    if (a == 255) {
        return colour;
    }
    if (a == 0) {
        return background;
    }
    std::uint32_t out = 0xFF000000u;
    for (int shift = 0; shift <= 16; shift += 8) {
        const std::uint32_t c = (colour >> shift) & 0xFF;
        const std::uint32_t b = (background >> shift) & 0xFF;
        out |= ((c * a + b * (255 - a) + 127) / 255) << shift;
    }
    return out;
}

} // namespace qzview
