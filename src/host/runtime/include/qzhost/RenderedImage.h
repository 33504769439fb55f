// A drawn image in memory: 32-bit pixels, rows top to bottom.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "qzgp/QZ_Basic.h"

namespace qzhost {

/// One pixel, 8 bits per channel, not premultiplied.
struct Rgba8 {
    std::uint8_t r = 0;
    std::uint8_t g = 0;
    std::uint8_t b = 0;
    std::uint8_t a = 0;
    friend bool operator==(const Rgba8&, const Rgba8&) = default;
};

class QZ_HOST_API RenderedImage {
public:
    RenderedImage() = default;
    /// `pixels` are width x height values 0xAARRGGBB with premultiplied colour, rows
    /// packed.
    RenderedImage(int width, int height, std::vector<std::uint32_t> pixels);

    int Width() const noexcept { return width_; }
    int Height() const noexcept { return height_; }
    /// The premultiplied pixels.
    const std::vector<std::uint32_t>& Pixels() const noexcept { return pixels_; }
    /// The pixel at column x, row y, not premultiplied. Throws std::out_of_range outside.
    Rgba8 At(int x, int y) const;

    /// Writes the image as a PNG file. Throws std::runtime_error when it cannot.
    void WritePng(const std::string& path) const;
    /// Decodes a PNG file. Throws std::runtime_error when it cannot be read.
    static RenderedImage ReadPng(const std::string& path);

private:
    int width_ = 0;
    int height_ = 0;
    std::vector<std::uint32_t> pixels_;
};

} // namespace qzhost
