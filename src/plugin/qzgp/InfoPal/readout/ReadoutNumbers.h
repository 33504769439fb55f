// Number conversions of the readouts that are defined for every input. C++ leaves a
// floating-point value converted to an integer (or a double narrowed to a float) undefined
// when it does not fit; the readouts meet NaN, infinities and huge values from the host, so
// they convert only through these functions.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

namespace infopal {

/// `value` truncated toward zero to a 32-bit integer; a value outside the 32-bit range, an
/// infinity or NaN gives -2147483648.
inline std::int32_t TruncateToInt32(double value) noexcept {
    constexpr std::int32_t kOutOfRange = std::numeric_limits<std::int32_t>::min();
    // Strict bounds: every double strictly between them truncates into the 32-bit range.
    // Both comparisons are false for NaN.
    if (!(value > -2147483649.0 && value < 2147483648.0)) {
        return kOutOfRange;
    }
    return static_cast<std::int32_t>(value);
}

/// The low 16 bits of `value` read as a signed 16-bit number (two's complement wrap:
/// 32768 gives -32768, 65636 gives 100).
inline std::int16_t LowSigned16(std::int32_t value) noexcept {
    const auto low = static_cast<std::uint16_t>(static_cast<std::uint32_t>(value) & 0xFFFFU);
    // Conversion to a narrower signed type is modular since C++20.
    return static_cast<std::int16_t>(low);
}

/// `value` narrowed to a float as IEEE arithmetic rounds it: to nearest, values beyond the
/// float range becoming infinities, NaN staying NaN.
inline float NarrowToFloat(double value) noexcept {
    if (std::isnan(value)) {
        return std::copysign(std::numeric_limits<float>::quiet_NaN(),
                             std::signbit(value) ? -1.0F : 1.0F);
    }
    constexpr double kMax = std::numeric_limits<float>::max();
    // Halfway between the largest float and 2^128: from here on (ties going to the even
    // neighbour, which is infinity) a value rounds to infinity.
    constexpr double kOverflow = 0x1.ffffffp127;
    const double magnitude = std::fabs(value);
    if (magnitude > kMax) {
        const float bound = magnitude >= kOverflow ? std::numeric_limits<float>::infinity()
                                                   : std::numeric_limits<float>::max();
        return std::signbit(value) ? -bound : bound;
    }
    return static_cast<float>(value);
}

} // namespace infopal
