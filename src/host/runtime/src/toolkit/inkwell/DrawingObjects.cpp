#include "DrawingObjects.h"

#include <cstring>
#include <stdexcept>

namespace qzhost::inkwell {

void RecordedPath::MoveTo(const PointT<float>& point) {
    elements_.push_back({Kind::kMove, {point.x, point.y, 0.0f, 0.0f}});
    hasCurrentPoint_ = true;
}

void RecordedPath::LineTo(const PointT<float>& point) {
    elements_.push_back({hasCurrentPoint_ ? Kind::kLine : Kind::kMove, {point.x, point.y, 0, 0}});
    hasCurrentPoint_ = true;
}

void RecordedPath::AddRect(const RectT<float>& rect) {
    elements_.push_back({Kind::kRect, rect});
    // A rectangle leaves its first corner as the current point, as in Cairo.
    hasCurrentPoint_ = true;
}

void RecordedPath::Close() {
    if (hasCurrentPoint_) {
        elements_.push_back({Kind::kClose, {}});
    }
}

void RecordedPath::Replay(cairo_t* cr) const {
    cairo_new_path(cr);
    for (const Element& e : elements_) {
        switch (e.kind) {
        case Kind::kMove:
            cairo_move_to(cr, e.data.x, e.data.y);
            break;
        case Kind::kLine:
            cairo_line_to(cr, e.data.x, e.data.y);
            break;
        case Kind::kRect:
            cairo_rectangle(cr, e.data.x, e.data.y, e.data.width, e.data.height);
            break;
        case Kind::kClose:
            cairo_close_path(cr);
            break;
        }
    }
}

namespace {

std::uint32_t Premultiply(std::uint32_t argb) {
    const std::uint32_t a = argb >> 24;
    if (a == 255) {
        return argb;
    }
    auto scale = [a](std::uint32_t c) { return (c * a + 127) / 255; };
    return (a << 24) | (scale((argb >> 16) & 0xFF) << 16) | (scale((argb >> 8) & 0xFF) << 8) |
           scale(argb & 0xFF);
}

} // namespace

ImagePicture::ImagePicture(int width, int height, float scale, const std::uint32_t* pixels,
                           std::size_t stride)
    : width_(width), height_(height), scale_(scale) {
    if (width < 1 || height < 1 || !(scale > 0.0f) || pixels == nullptr ||
        stride < static_cast<std::size_t>(width)) {
        throw std::invalid_argument("picture: invalid size, scale or pixels");
    }
    pixels_.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (int y = 0; y < height; ++y) {
        const std::uint32_t* row = pixels + static_cast<std::size_t>(y) * stride;
        pixels_.insert(pixels_.end(), row, row + width);
    }
    surface_ = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    if (cairo_surface_status(surface_) != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(surface_);
        throw std::runtime_error("picture: cannot create an image surface");
    }
    cairo_surface_flush(surface_);
    unsigned char* data = cairo_image_surface_get_data(surface_);
    const int surfaceStride = cairo_image_surface_get_stride(surface_);
    for (int y = 0; y < height; ++y) {
        auto* row =
            reinterpret_cast<std::uint32_t*>(data + static_cast<std::ptrdiff_t>(y) * surfaceStride);
        for (int x = 0; x < width; ++x) {
            row[x] = Premultiply(pixels_[static_cast<std::size_t>(y) * width + x]);
        }
    }
    cairo_surface_mark_dirty(surface_);
}

ImagePicture::~ImagePicture() {
    cairo_surface_destroy(surface_);
}

std::uint32_t ImagePicture::GetPixel(int x, int y) const {
    if (x < 0 || y < 0 || x >= width_ || y >= height_) {
        throw std::out_of_range("picture: pixel outside the picture");
    }
    return pixels_[static_cast<std::size_t>(y) * width_ + x];
}

} // namespace qzhost::inkwell
