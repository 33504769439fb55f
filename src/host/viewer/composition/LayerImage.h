// An image read for the viewer's composition, kept in its own type: every pixel as red,
// green, blue and alpha samples of 8 or 16 bits (integer codes), half floats or floats,
// with what the host says about the file. The working values that the Info palette is
// given are made from the samples when they are asked for: a code k is k / the largest
// code (rounded once), half and full floats are their values, and an image without alpha
// has alpha 1.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "pixelview/ImageFile.h"

namespace qzview {

using SampleKind = qzhost::pixelview::SampleKind;

struct LayerImage {
    std::string path;
    /// The file's name without its folder.
    std::string name;
    /// The reader's format name and the channel type ("png", "8-bit").
    std::string format;
    std::string channelType;
    int width = 0;
    int height = 0;
    /// How many times wider than tall a pixel is meant to be shown (1: square pixels).
    double pixelAspect = 1.0;
    /// The project depth that the file's format gives (0 8-bit, 1 16-bit, 2 float).
    std::int8_t depth = 0;
    SampleKind samples = SampleKind::Float;
    /// The largest code of an integer image; 0 for half and float images.
    std::uint32_t integerMax = 0;
    /// width x height x 4 samples, rows top to bottom.
    std::vector<std::byte> pixels;

    /// The bytes of one sample.
    std::size_t SampleBytes() const noexcept;
    /// The working values of columns `x0` to `x1 - 1` of row `y` (all inside the image)
    /// into `out`, four floats per pixel.
    void WorkingRow(int y, int x0, int x1, float* out) const noexcept;
    /// The working values of the pixel at column `x`, row `y` (inside the image).
    std::array<float, 4> WorkingPixel(int x, int y) const noexcept;
};

/// An image of `width` x `height` float pixels (red, green, blue, alpha, rows top to
/// bottom), for images that the viewer makes itself.
LayerImage FloatImage(std::string name, int width, int height, const std::vector<float>& rgba);

/// Reports how far a read has come, 0 to 1; it may be called on the reading thread.
using ReadProgress = std::function<void(double done)>;

/// Reads `path` with the host's image reader (any thread). Throws std::runtime_error with
/// a one-line message when the file cannot be read; `progress` (when set) is called as
/// the reader goes, ending with 1.
LayerImage ReadLayerImage(const std::string& path, const ReadProgress& progress = {});

} // namespace qzview
