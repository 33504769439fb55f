// The colour notations of the pixel readout. The numbers are stored in the preference
// file and are not the order of the panel menu.
#pragma once

#include <cstdint>

namespace infopal {

using PixelDisplayMode = std::uint16_t;

namespace pixel_mode {
/// By the open project's bit depth: 8-bit scale, 16-bit scale or four decimals.
inline constexpr PixelDisplayMode kAuto = 0;
/// Channel times 100 with one decimal and "%".
inline constexpr PixelDisplayMode kPercent = 1;
/// Channel times 255, rounded, upper-case hexadecimal without padding.
inline constexpr PixelDisplayMode kWeb = 2;
/// Channel times 255, rounded.
inline constexpr PixelDisplayMode kBpc8 = 3;
/// Channel times 32768, rounded.
inline constexpr PixelDisplayMode kBpc16 = 4;
/// The channel as it is, four decimals.
inline constexpr PixelDisplayMode kDecimal = 5;
/// Channel times 1023, rounded.
inline constexpr PixelDisplayMode kBpc10 = 6;
/// Hue in degrees, saturation and brightness in percent.
inline constexpr PixelDisplayMode kHSB = 7;
/// Passed to SetPixelDisplayMode: the mode stored in the preference file.
inline constexpr PixelDisplayMode kStored = 65535;
} // namespace pixel_mode

} // namespace infopal
