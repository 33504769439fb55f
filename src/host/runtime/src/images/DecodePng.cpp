#include <cstring>
#include <stdexcept>
#include <string>

#include <cairo.h>

#include "CairoPixels.h"
#include "DecodedImage.h"

namespace qzhost::images {

namespace {

struct ByteReader {
    std::span<const std::uint8_t> bytes;
    std::size_t offset = 0;
};

cairo_status_t ReadBytes(void* closure, unsigned char* data, unsigned int length) {
    auto* reader = static_cast<ByteReader*>(closure);
    if (reader->bytes.size() - reader->offset < length) {
        return CAIRO_STATUS_READ_ERROR;
    }
    std::memcpy(data, reader->bytes.data() + reader->offset, length);
    reader->offset += length;
    return CAIRO_STATUS_SUCCESS;
}

} // namespace

DecodedImage DecodePng(std::span<const std::uint8_t> bytes) {
    ByteReader reader{bytes};
    cairo_surface_t* surface = cairo_image_surface_create_from_png_stream(ReadBytes, &reader);
    const cairo_status_t status = cairo_surface_status(surface);
    if (status != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(surface);
        throw std::runtime_error(std::string("cannot decode the PNG picture: ") +
                                 cairo_status_to_string(status));
    }
    try {
        DecodedImage image = ReadCairoPixels(surface);
        cairo_surface_destroy(surface);
        return image;
    } catch (...) {
        cairo_surface_destroy(surface);
        throw;
    }
}

} // namespace qzhost::images
