#include "pixelview/PixelViewImage.h"

#include <cstddef>

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

void PixelViewImage::ReadRowsRGBA(int y, int rows, float* out) const {
    std::vector<float> values;
    file_->ReadValues(header_.x0, header_.x0 + header_.width, y, y + rows, values);
    const auto channels = static_cast<std::size_t>(header_.channels);
    const std::size_t pixels =
        static_cast<std::size_t>(header_.width) * static_cast<std::size_t>(rows);
    for (std::size_t p = 0; p < pixels; ++p) {
        const float* pixel = values.data() + p * channels;
        out[4 * p + 0] = pixel[header_.red];
        out[4 * p + 1] = pixel[header_.green];
        out[4 * p + 2] = pixel[header_.blue];
        out[4 * p + 3] = header_.alpha >= 0 ? pixel[header_.alpha] : 1.0f;
    }
}

} // namespace qzhost::pixelview
