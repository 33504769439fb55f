// The plates that the viewer's benchmarks work on: 3840 x 2160 layers of ramps and squares
// that differ per layer, alpha below 1 on the upper ones, kept as half or full floats.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include <Imath/half.h>

#include "composition/LayerImage.h"

namespace benchplates {

inline constexpr int kWidth = 3840;
inline constexpr int kHeight = 2160;

/// Plate `index` (0 the bottom one), its samples of `kind` (Half or Float).
inline qzview::LayerImage Plate(int index, qzview::SampleKind kind) {
    qzview::LayerImage image;
    image.name = "plate" + std::to_string(index) + ".exr";
    image.path = image.name;
    image.format = "openexr";
    image.channelType = kind == qzview::SampleKind::Half ? "half float" : "float";
    image.width = kWidth;
    image.height = kHeight;
    image.depth = 2;
    image.samples = kind;
    const std::size_t bytes = image.SampleBytes();
    std::byte* out = image.NewPixels(static_cast<std::size_t>(kWidth) * kHeight * 4 * bytes);
    const int square = 64 << index;
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const bool light = ((x / square) + (y / square)) % 2 == 0;
            const float values[4] = {
                static_cast<float>(x) / kWidth * (light ? 1.0f : 0.6f),
                static_cast<float>(y) / kHeight,
                light ? 0.8f - 0.2f * static_cast<float>(index) : 0.3f,
                index == 0 ? 1.0f : (light ? 0.9f : 0.4f),
            };
            for (const float value : values) {
                if (kind == qzview::SampleKind::Half) {
                    const std::uint16_t bits = Imath::half(value).bits();
                    std::memcpy(out, &bits, sizeof bits);
                } else {
                    std::memcpy(out, &value, sizeof value);
                }
                out += bytes;
            }
        }
    }
    return image;
}

} // namespace benchplates
