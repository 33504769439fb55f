#include "qzhost/ImageCanvas.h"

#include <cairo.h>

#include <algorithm>
#include <boost/make_shared.hpp>
#include <stdexcept>

#include "../inkwell/CairoSupplier.h"
#include "../inkwell/CairoSurface.h"

namespace qzhost {

namespace {
constexpr int kMaxPixels = 32767;
}

struct ImageCanvas::Impl {
    int width;
    int height;
    double scale;
    cairo_surface_t* image = nullptr;
    cairo_t* cr = nullptr;
    std::unique_ptr<kitui::inkwell::Inkwell> ink;

    Impl(int w, int h, double s) : width(w), height(h), scale(s) {
        image = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, w, h);
        if (cairo_surface_status(image) != CAIRO_STATUS_SUCCESS) {
            cairo_surface_destroy(image);
            throw std::runtime_error("image canvas: cannot create an image surface");
        }
        cr = cairo_create(image);
        cairo_scale(cr, s, s);
        ink = std::make_unique<kitui::inkwell::Inkwell>(
            boost::make_shared<inkwell::CairoSupplier>(),
            boost::make_shared<inkwell::CairoSurface>(cr));
    }
    ~Impl() {
        ink.reset();
        cairo_destroy(cr);
        cairo_surface_destroy(image);
    }
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
};

ImageCanvas::ImageCanvas(int pixel_width, int pixel_height, double scale) {
    if (pixel_width < 1 || pixel_height < 1 || pixel_width > kMaxPixels ||
        pixel_height > kMaxPixels) {
        throw std::invalid_argument("image canvas: size out of range");
    }
    if (!(scale > 0.0)) {
        throw std::invalid_argument("image canvas: scale must be above 0");
    }
    impl_ = std::make_unique<Impl>(pixel_width, pixel_height, scale);
}

ImageCanvas::~ImageCanvas() = default;

kitui::inkwell::Inkwell& ImageCanvas::GetInkwell() noexcept {
    return *impl_->ink;
}
int ImageCanvas::PixelWidth() const noexcept {
    return impl_->width;
}
int ImageCanvas::PixelHeight() const noexcept {
    return impl_->height;
}
double ImageCanvas::Scale() const noexcept {
    return impl_->scale;
}

void ImageCanvas::RedrawArea(kitui::ui::UI_Node& root, int x, int y, int width, int height) {
    const int x0 = std::max(x, 0);
    const int y0 = std::max(y, 0);
    const int x1 = std::min(x + std::max(width, 0), impl_->width);
    const int y1 = std::min(y + std::max(height, 0), impl_->height);
    if (x0 >= x1 || y0 >= y1) {
        return;
    }
    cairo_t* cr = impl_->cr;
    cairo_save(cr);
    // The area in pixels, whatever the user scale.
    cairo_identity_matrix(cr);
    cairo_rectangle(cr, x0, y0, x1 - x0, y1 - y0);
    cairo_clip(cr);
    cairo_set_operator(cr, CAIRO_OPERATOR_CLEAR);
    cairo_paint(cr);
    cairo_set_operator(cr, CAIRO_OPERATOR_OVER);
    cairo_scale(cr, impl_->scale, impl_->scale);
    kitui::inkwell::Inkwell& ink = *impl_->ink;
    ink.GetSurface()->BeginDrawing();
    kitui::ui::UI_Node::UI_ClipToRect(root.UI_GetLocalRectF(), &ink);
    root.UI_Draw(&ink);
    ink.GetSurface()->EndDrawing();
    cairo_restore(cr);
    cairo_surface_flush(impl_->image);
}

const unsigned char* ImageCanvas::Data() const {
    cairo_surface_flush(impl_->image);
    return cairo_image_surface_get_data(impl_->image);
}

int ImageCanvas::Stride() const noexcept {
    return cairo_image_surface_get_stride(impl_->image);
}

RenderedImage ImageCanvas::Snapshot() const {
    cairo_surface_flush(impl_->image);
    const unsigned char* data = cairo_image_surface_get_data(impl_->image);
    const int stride = cairo_image_surface_get_stride(impl_->image);
    std::vector<std::uint32_t> pixels;
    pixels.reserve(static_cast<std::size_t>(impl_->width) * impl_->height);
    for (int y = 0; y < impl_->height; ++y) {
        const auto* row =
            reinterpret_cast<const std::uint32_t*>(data + static_cast<std::ptrdiff_t>(y) * stride);
        pixels.insert(pixels.end(), row, row + impl_->width);
    }
    return RenderedImage(impl_->width, impl_->height, std::move(pixels));
}

} // namespace qzhost
