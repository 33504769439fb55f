#include "pixelview/PixelViewImage.h"

#include <cstddef>
#include <cstdint>

namespace qzhost::pixelview {

PixelViewImage::PixelViewImage(const std::string& path)
    : path_(path), file_(OpenImageFile(path)), header_(file_->Header()) {}

PixelViewImage::~PixelViewImage() = default;

PixelARGB PixelViewImage::PixelAt(int x, int y) const {
    file_->ReadValues(x, x + 1, y, y + 1, values_);
    const float alpha =
        header_.alpha >= 0 ? values_[static_cast<std::size_t>(header_.alpha)] : 1.0f;
    return {alpha, values_[static_cast<std::size_t>(header_.red)],
            values_[static_cast<std::size_t>(header_.green)],
            values_[static_cast<std::size_t>(header_.blue)]};
}

void PixelViewImage::ReadAllPixels(const std::function<void(double)>& progress) {
    file_->ReadAllPixels(progress);
}

namespace {

/// Picks red, green, blue and alpha out of `pixels` pixels of `channels` samples of type
/// T; `one` is the alpha of an image without alpha.
template <typename T>
void PickRGBA(const ImageFileHeader& header, const T* in, std::size_t pixels, T one, T* out) {
    const auto channels = static_cast<std::size_t>(header.channels);
    for (std::size_t p = 0; p < pixels; ++p) {
        const T* pixel = in + p * channels;
        out[4 * p + 0] = pixel[header.red];
        out[4 * p + 1] = pixel[header.green];
        out[4 * p + 2] = pixel[header.blue];
        out[4 * p + 3] = header.alpha >= 0 ? pixel[header.alpha] : one;
    }
}

template <typename T>
void ReadRGBA(ImageFile& file, const ImageFileHeader& header, int y, int rows, T one, void* out) {
    const std::size_t pixels =
        static_cast<std::size_t>(header.width) * static_cast<std::size_t>(rows);
    std::vector<T> samples(pixels * static_cast<std::size_t>(header.channels));
    file.ReadSamples(header.x0, header.x0 + header.width, y, y + rows, samples.data());
    PickRGBA(header, samples.data(), pixels, one, static_cast<T*>(out));
}

} // namespace

void PixelViewImage::ReadRowsSamplesRGBA(int y, int rows, void* out) const {
    switch (header_.samples) {
    case SampleKind::Code8:
        ReadRGBA<std::uint8_t>(*file_, header_, y, rows, 255, out);
        return;
    case SampleKind::Code16:
        ReadRGBA<std::uint16_t>(*file_, header_, y, rows,
                                static_cast<std::uint16_t>(header_.integerMax), out);
        return;
    case SampleKind::Half:
        // Half floats are moved as their bits; 0x3C00 is 1.0.
        ReadRGBA<std::uint16_t>(*file_, header_, y, rows, 0x3C00, out);
        return;
    case SampleKind::Float:
        ReadRGBA<float>(*file_, header_, y, rows, 1.0f, out);
        return;
    }
}

} // namespace qzhost::pixelview
