#include "pixelview/AreaSample.h"

#include <algorithm>
#include <cstdint>

namespace qzhost::pixelview {

std::string SampleSizeName(int size) {
    if (size == 1) {
        return "Point";
    }
    const std::string side = std::to_string(size);
    return side + " x " + side;
}

SampleSquare SquareInside(int x, int y, int size, const SampleSquare& bounds) noexcept {
    // In 64 bits: a pixel near the ends of int has a square that reaches beyond them.
    const std::int64_t half = size / 2;
    const auto clip = [](std::int64_t v, int low, int high) {
        return static_cast<int>(std::clamp<std::int64_t>(v, low, high));
    };
    SampleSquare square;
    square.x0 = clip(std::int64_t{x} - half, bounds.x0, bounds.x1);
    square.x1 = clip(std::int64_t{x} + half + 1, bounds.x0, bounds.x1);
    square.y0 = clip(std::int64_t{y} - half, bounds.y0, bounds.y1);
    square.y1 = clip(std::int64_t{y} + half + 1, bounds.y0, bounds.y1);
    return square;
}

AreaMean::AreaMean(int size) noexcept : count_(static_cast<double>(size) * size) {}

void AreaMean::AddPremultiplied(const float* rgba, std::size_t count) noexcept {
    for (std::size_t i = 0; i < count; ++i, rgba += 4) {
        sums_[0] += rgba[0];
        sums_[1] += rgba[1];
        sums_[2] += rgba[2];
        sums_[3] += rgba[3];
    }
}

void AreaMean::AddStraight(const PixelARGB& pixel) noexcept {
    const float alpha = pixel[0];
    const float rgba[4] = {pixel[1] * alpha, pixel[2] * alpha, pixel[3] * alpha, alpha};
    AddPremultiplied(rgba, 1);
}

PixelARGB AreaMean::Mean() const noexcept {
    const double alpha = sums_[3];
    if (alpha == 0.0) {
        // Nothing covers the square: no colour to speak of.
        return {0.0f, 0.0f, 0.0f, 0.0f};
    }
    return {static_cast<float>(alpha / count_), static_cast<float>(sums_[0] / alpha),
            static_cast<float>(sums_[1] / alpha), static_cast<float>(sums_[2] / alpha)};
}

PixelARGB MeanAround(const PixelViewImage& image, int x, int y, int size) {
    const SampleSquare bounds{image.X0(), image.Y0(), image.X0() + image.Width(),
                              image.Y0() + image.Height()};
    const SampleSquare square = SquareInside(x, y, size, bounds);
    AreaMean mean(size);
    // A row of the square at a time: one read of the image each.
    std::vector<PixelARGB> row;
    for (int y = square.y0; y < square.y1 && !square.Empty(); ++y) {
        image.PixelsAt(square.x0, square.x1, y, row);
        for (const PixelARGB& pixel : row) {
            mean.AddStraight(pixel);
        }
    }
    return mean.Mean();
}

} // namespace qzhost::pixelview
