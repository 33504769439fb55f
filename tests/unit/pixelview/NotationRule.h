// The colour notations of the Info panel, worked out here from their rules for the
// tests to compare with what the panel shows: scale, rounding, decimals, percent sign,
// hexadecimal and the HSB conversion, in the en_US locale (or with another decimal
// separator).
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace pixelviewtest {

/// alpha, red, green, blue
using Pixel = std::array<float, 4>;

/// The notation numbers: 0 auto, 1 percent, 2 web, 3 8-bpc, 4 16-bpc, 5 decimal,
/// 6 10-bpc, 7 HSB.
enum Mode : std::uint16_t {
    kAuto = 0,
    kPercent = 1,
    kWeb = 2,
    kBpc8 = 3,
    kBpc16 = 4,
    kDecimal = 5,
    kBpc10 = 6,
    kHsb = 7
};

/// Number text: the value's shortest decimal form, rounded half to even at `max_digits`
/// fraction digits, trailing zeros dropped down to `min_digits`, with `separator` as the
/// decimal separator.
std::string NumberText(double value, int min_digits, int max_digits, char separator = '.');

/// Nearest whole number, a half to the even neighbour; saturated to the 32-bit range,
/// NaN gives 0.
std::int32_t RoundHalfEven(double value);

/// The four value fields (red, green, blue, alpha; hue, saturation, brightness, alpha in
/// HSB) for `pixel` in `mode`, with a project of `depth` for the automatic notation.
std::array<std::string, 4> ExpectedValues(const Pixel& pixel, Mode mode, int depth,
                                          char separator = '.');

/// The labels of the channel rows in `mode`: "R :", "G :", "B :", "A :" or "H :",
/// "S :", "B :", "A :".
std::array<std::string, 4> ExpectedLabels(Mode mode);

} // namespace pixelviewtest
