#include "CairoPixels.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <stdexcept>

namespace qzhost::images {

namespace {

std::uint32_t Unpremultiply(std::uint32_t premultiplied) {
    const std::uint32_t a = premultiplied >> 24;
    if (a == 0) {
        return 0;
    }
    if (a == 255) {
        return premultiplied;
    }
    const auto channel = [&](int shift) {
        const std::uint32_t c = (premultiplied >> shift) & 0xFF;
        return std::min<std::uint32_t>(255, (c * 255 + a / 2) / a);
    };
    return (a << 24) | (channel(16) << 16) | (channel(8) << 8) | channel(0);
}

} // namespace

DecodedImage ReadCairoPixels(cairo_surface_t* surface) {
    const cairo_format_t format = cairo_image_surface_get_format(surface);
    if (format != CAIRO_FORMAT_ARGB32 && format != CAIRO_FORMAT_RGB24) {
        const int width = cairo_image_surface_get_width(surface);
        const int height = cairo_image_surface_get_height(surface);
        cairo_surface_t* argb = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
        cairo_t* cr = cairo_create(argb);
        cairo_set_source_surface(cr, surface, 0, 0);
        cairo_paint(cr);
        cairo_destroy(cr);
        DecodedImage image = ReadCairoPixels(argb);
        cairo_surface_destroy(argb);
        return image;
    }
    cairo_surface_flush(surface);
    DecodedImage image;
    image.width = cairo_image_surface_get_width(surface);
    image.height = cairo_image_surface_get_height(surface);
    const int stride = cairo_image_surface_get_stride(surface);
    const unsigned char* data = cairo_image_surface_get_data(surface);
    if (data == nullptr && image.width > 0 && image.height > 0) {
        throw std::runtime_error("the image surface has no pixels");
    }
    image.pixels.resize(static_cast<std::size_t>(image.width) *
                        static_cast<std::size_t>(image.height));
    for (int y = 0; y < image.height; ++y) {
        const unsigned char* row = data + static_cast<std::ptrdiff_t>(y) * stride;
        for (int x = 0; x < image.width; ++x) {
            std::uint32_t value = 0;
            std::memcpy(&value, row + static_cast<std::ptrdiff_t>(x) * 4, sizeof value);
            if (format == CAIRO_FORMAT_RGB24) {
                value |= 0xFF000000u;
            }
            image.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width) +
                         static_cast<std::size_t>(x)] = Unpremultiply(value);
        }
    }
    return image;
}

} // namespace qzhost::images
