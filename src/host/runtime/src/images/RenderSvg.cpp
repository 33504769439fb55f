#include <cmath>
#include <stdexcept>
#include <string>

#include <cairo.h>
#include <librsvg/rsvg.h>

#include "CairoPixels.h"
#include "DecodedImage.h"

namespace qzhost::images {

namespace {

// The document's size in pixels at 96 dots per inch: its width and height when they
// have absolute units, else the size of its view box.
bool DocumentSize(RsvgHandle* handle, double& width, double& height) {
    if (rsvg_handle_get_intrinsic_size_in_pixels(handle, &width, &height)) {
        return width > 0 && height > 0;
    }
    gboolean has_width = FALSE;
    gboolean has_height = FALSE;
    gboolean has_view_box = FALSE;
    RsvgLength w{};
    RsvgLength h{};
    RsvgRectangle view_box{};
    rsvg_handle_get_intrinsic_dimensions(handle, &has_width, &w, &has_height, &h, &has_view_box,
                                         &view_box);
    if (!has_view_box || view_box.width <= 0 || view_box.height <= 0) {
        return false;
    }
    width = view_box.width;
    height = view_box.height;
    return true;
}

std::runtime_error SvgError(const std::string& problem, GError* error) {
    std::string message = "cannot draw the SVG picture: " + problem;
    if (error != nullptr) {
        message += std::string(" (") + error->message + ")";
        g_error_free(error);
    }
    return std::runtime_error(message);
}

} // namespace

DecodedImage RenderSvg(std::span<const std::uint8_t> bytes, double scale_from_2x) {
    if (!(scale_from_2x > 0) || !std::isfinite(scale_from_2x)) {
        throw std::runtime_error("cannot draw the SVG picture at scale " +
                                 std::to_string(scale_from_2x));
    }
    GError* error = nullptr;
    RsvgHandle* handle = rsvg_handle_new_from_data(bytes.data(), bytes.size(), &error);
    if (handle == nullptr) {
        throw SvgError("not an SVG document", error);
    }
    rsvg_handle_set_dpi(handle, 96.0);
    double doc_width = 0;
    double doc_height = 0;
    if (!DocumentSize(handle, doc_width, doc_height)) {
        g_object_unref(handle);
        throw SvgError("the document has no size", nullptr);
    }
    // A pixel size a rounding error above a whole number is that number.
    const int width = static_cast<int>(std::ceil(doc_width * scale_from_2x - 1e-6));
    const int height = static_cast<int>(std::ceil(doc_height * scale_from_2x - 1e-6));
    if (width <= 0 || height <= 0 || width > 16384 || height > 16384) {
        g_object_unref(handle);
        throw SvgError("a picture of " + std::to_string(width) + " x " + std::to_string(height) +
                           " pixels",
                       nullptr);
    }
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    cairo_t* cr = cairo_create(surface);
    const RsvgRectangle viewport{0.0, 0.0, doc_width * scale_from_2x, doc_height * scale_from_2x};
    const gboolean drawn = rsvg_handle_render_document(handle, cr, &viewport, &error);
    cairo_destroy(cr);
    g_object_unref(handle);
    if (!drawn) {
        cairo_surface_destroy(surface);
        throw SvgError("librsvg cannot draw it", error);
    }
    DecodedImage image = ReadCairoPixels(surface);
    cairo_surface_destroy(surface);
    return image;
}

} // namespace qzhost::images
