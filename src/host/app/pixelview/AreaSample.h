// The colour that the Info palette is given for a square of pixels around the pointer's
// pixel instead of that pixel alone: the mean of the square's alpha-multiplied colours
// divided by its mean alpha (so that transparent pixels do not darken it), with the mean
// alpha. Pixels of the square that the picture does not cover count as transparent: they
// are in the count, with alpha 0. Sums are kept in double, so that the 10,201 pixels of
// the largest square add up without losing the small ones. `qzhost inspect --sample` and
// the viewer's View > Sample Size both take their means here.
#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "pixelview/PixelViewImage.h"

namespace qzhost::pixelview {

/// The sides of the squares that the viewer offers, the point (1) first.
inline constexpr std::array<int, 7> kSampleSizes{1, 3, 5, 11, 31, 51, 101};
/// The side of the largest square.
inline constexpr int kLargestSampleSize = 101;

/// Whether a square of side `size` can be sampled around a pixel: an odd side from 1 to
/// kLargestSampleSize, so that the pixel lies at its centre.
constexpr bool IsSampleSize(int size) noexcept {
    return size >= 1 && size <= kLargestSampleSize && size % 2 == 1;
}

/// "Point" for 1, "N x N" otherwise.
std::string SampleSizeName(int size);

/// Columns x0 to x1 - 1, rows y0 to y1 - 1.
struct SampleSquare {
    int x0 = 0;
    int y0 = 0;
    int x1 = 0;
    int y1 = 0;

    bool Empty() const noexcept { return x1 <= x0 || y1 <= y0; }
    int Width() const noexcept { return Empty() ? 0 : x1 - x0; }
    int Height() const noexcept { return Empty() ? 0 : y1 - y0; }
};

/// The part of the square of side `size` centred on column `x`, row `y` that lies in
/// `bounds` (empty when none does).
SampleSquare SquareInside(int x, int y, int size, const SampleSquare& bounds) noexcept;

/// The mean of one square, built from the pixels of the part of it that the picture
/// covers.
class AreaMean {
public:
    /// A mean over a square of side `size`: size x size pixels, however few are added.
    explicit AreaMean(int size) noexcept;

    /// Adds `count` pixels of red, green, blue and alpha (in that order, four floats
    /// each) whose colour is already multiplied by alpha, as a compositor gives them.
    void AddPremultiplied(const float* rgba, std::size_t count) noexcept;
    /// Adds one pixel of straight colour: its colour is multiplied by its alpha in single
    /// precision, as a compositor lays an image over transparent black.
    void AddStraight(const PixelARGB& pixel) noexcept;

    /// Alpha, red, green, blue: the sums of the colours divided by the sum of alpha (0
    /// when that is 0), and the sum of alpha divided by the square's pixel count.
    PixelARGB Mean() const noexcept;

private:
    double count_;
    std::array<double, 4> sums_{}; // red, green, blue, alpha
};

/// The mean of the square of side `size` centred on column `x`, row `y` of `image` laid
/// alone over transparent black: its pixels' straight values (as PixelsAt gives them: in
/// the working space when the image has a colour transform, so each pixel is turned before
/// the mean is taken) times their alpha, pixels beyond the image transparent. Throws
/// BadRequest when the pixels cannot be read.
PixelARGB MeanAround(const PixelViewImage& image, int x, int y, int size);

} // namespace qzhost::pixelview
