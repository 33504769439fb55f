#include "qzhost/RenderedImage.h"

#include <cairo.h>

#include <algorithm>
#include <stdexcept>

namespace qzhost {

RenderedImage::RenderedImage(int width, int height, std::vector<std::uint32_t> pixels)
    : width_(width), height_(height), pixels_(std::move(pixels)) {
    if (width < 0 || height < 0 ||
        pixels_.size() != static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {
        throw std::invalid_argument("rendered image: pixel count does not match the size");
    }
}

Rgba8 RenderedImage::At(int x, int y) const {
    if (x < 0 || y < 0 || x >= width_ || y >= height_) {
        throw std::out_of_range("rendered image: pixel outside the image");
    }
    const std::uint32_t p = pixels_[static_cast<std::size_t>(y) * width_ + x];
    const std::uint32_t a = p >> 24;
    auto unpremultiply = [a](std::uint32_t c) -> std::uint8_t {
        if (a == 0) {
            return 0;
        }
        return static_cast<std::uint8_t>(std::min<std::uint32_t>(255, (c * 255 + a / 2) / a));
    };
    return {unpremultiply((p >> 16) & 0xFF), unpremultiply((p >> 8) & 0xFF),
            unpremultiply(p & 0xFF), static_cast<std::uint8_t>(a)};
}

void RenderedImage::WritePng(const std::string& path) const {
    if (width_ < 1 || height_ < 1) {
        throw std::runtime_error("rendered image: nothing to write to " + path);
    }
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width_, height_);
    if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(surface);
        throw std::runtime_error("rendered image: cannot create an image surface");
    }
    cairo_surface_flush(surface);
    unsigned char* data = cairo_image_surface_get_data(surface);
    const int stride = cairo_image_surface_get_stride(surface);
    for (int y = 0; y < height_; ++y) {
        auto* row =
            reinterpret_cast<std::uint32_t*>(data + static_cast<std::ptrdiff_t>(y) * stride);
        std::copy_n(pixels_.begin() + static_cast<std::ptrdiff_t>(y) * width_, width_, row);
    }
    cairo_surface_mark_dirty(surface);
    const cairo_status_t status = cairo_surface_write_to_png(surface, path.c_str());
    cairo_surface_destroy(surface);
    if (status != CAIRO_STATUS_SUCCESS) {
        throw std::runtime_error("cannot write the PNG file " + path + ": " +
                                 cairo_status_to_string(status));
    }
}

RenderedImage RenderedImage::ReadPng(const std::string& path) {
    cairo_surface_t* surface = cairo_image_surface_create_from_png(path.c_str());
    const cairo_status_t status = cairo_surface_status(surface);
    if (status != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(surface);
        throw std::runtime_error("cannot read the PNG file " + path + ": " +
                                 cairo_status_to_string(status));
    }
    cairo_surface_flush(surface);
    const int width = cairo_image_surface_get_width(surface);
    const int height = cairo_image_surface_get_height(surface);
    const int stride = cairo_image_surface_get_stride(surface);
    // A PNG without alpha comes back as RGB24, whose top byte means nothing: opaque.
    const std::uint32_t opaque =
        cairo_image_surface_get_format(surface) == CAIRO_FORMAT_RGB24 ? 0xFF000000U : 0U;
    const unsigned char* data = cairo_image_surface_get_data(surface);
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) *
                                      static_cast<std::size_t>(height));
    for (int y = 0; y < height; ++y) {
        const auto* row =
            reinterpret_cast<const std::uint32_t*>(data + static_cast<std::ptrdiff_t>(y) * stride);
        for (int x = 0; x < width; ++x) {
            pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                   static_cast<std::size_t>(x)] = row[x] | opaque;
        }
    }
    cairo_surface_destroy(surface);
    return RenderedImage(width, height, std::move(pixels));
}

} // namespace qzhost
