// Pixels of a decoded picture resource, ready for SupplierInterface::NewPicture.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace qzhost::images {

/// Rows of 0xAARRGGBB values, not premultiplied, `width` values per row.
struct DecodedImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;
};

/// Decodes PNG bytes (any PNG that Cairo reads). Throws std::runtime_error when the bytes
/// are not a PNG that Cairo can read.
DecodedImage DecodePng(std::span<const std::uint8_t> bytes);

/// Draws an SVG document `scale_from_2x` times the size at which the document is drawn
/// for the 2x scale (its own size in pixels at 96 dots per inch). Throws
/// std::runtime_error when the bytes are not an SVG document that librsvg can draw.
DecodedImage RenderSvg(std::span<const std::uint8_t> bytes, double scale_from_2x);

} // namespace qzhost::images
