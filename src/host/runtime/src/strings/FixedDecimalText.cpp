// Rounds the shortest round-trip digits of a double, which std::to_chars finds, rather
// than the double's exact binary value: 0.15 with one fraction digit is "0.2" here, as ICU
// gives, although the double lies just below 0.15.
#include "FixedDecimalText.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace kitcore::utility::detail {

namespace {

// Below 2^53 every whole number is a double, so a whole double's shortest digits are its
// own digits: no other decimal of as few digits reads back as it.
constexpr double kExactWholeLimit = 9007199254740992.0;

// The powers of ten that doubles hold exactly.
constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                   1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int kLargestExactPower = 22;

} // namespace

std::size_t FixedDecimalText(double value, int fewest, int most, char* out) noexcept {
    const double magnitude = std::fabs(value);
    char digits[24];
    int count = 0;
    // `point`: how many of the digits stand before the decimal point (may be <= 0 or
    // beyond the digits).
    int point = 1;
    // Most numbers are nowhere near a rounding tie: the shortest digits lie within half a
    // unit in the last place of the double, so when the scaled double is further than that
    // (with room for the scaling's own rounding) from a half, the shortest digits and the
    // double round the same way and the digits are those of the rounded scaled value.
    const double scaled =
        most <= kLargestExactPower ? magnitude * kPowersOfTen[most] : kExactWholeLimit;
    const double scaled_whole = std::floor(scaled);
    const double scaled_rest = scaled - scaled_whole;
    if (scaled < 0x1p52 && std::fabs(scaled_rest - 0.5) > scaled * 0x1p-48) {
        const std::uint64_t rounded =
            static_cast<std::uint64_t>(scaled_whole) + (scaled_rest > 0.5 ? 1 : 0);
        const auto converted = std::to_chars(digits, digits + sizeof digits, rounded);
        count = static_cast<int>(converted.ptr - digits);
        point = count - most;
    } else if (magnitude < kExactWholeLimit && magnitude == std::floor(magnitude)) {
        if (magnitude != 0.0) {
            const auto converted = std::to_chars(digits, digits + sizeof digits,
                                                 static_cast<std::uint64_t>(magnitude));
            count = static_cast<int>(converted.ptr - digits);
            point = count;
        }
    } else {
        // The shortest digits: "d[.ddd]e±xx", at most 17 significant digits.
        char sci[40];
        const auto converted =
            std::to_chars(sci, sci + sizeof sci, magnitude, std::chars_format::scientific);
        const char* c = sci;
        for (; c != converted.ptr && *c != 'e'; ++c) {
            if (*c != '.') {
                digits[count++] = *c;
            }
        }
        int exponent = 0;
        if (c != converted.ptr) {
            std::from_chars(c + (c[1] == '+' ? 2 : 1), converted.ptr, exponent);
        }
        point = exponent + 1;
    }

    // Keep the digits down to the last fraction digit asked for, rounding half-even.
    const int keep = point + most;
    if (count > keep) {
        if (keep < 0) {
            count = 0; // below half a unit of the last place
        } else {
            const char first_dropped = digits[keep];
            const bool more_dropped = count > keep + 1; // shortest digits end in non-zero
            const bool last_odd = keep > 0 && ((digits[keep - 1] - '0') & 1) != 0;
            const bool up =
                first_dropped > '5' || (first_dropped == '5' && (more_dropped || last_odd));
            count = keep;
            if (up) {
                int i = count - 1;
                while (i >= 0 && digits[i] == '9') {
                    --i;
                }
                if (i >= 0) {
                    ++digits[i];
                    count = i + 1;
                } else {
                    // All nines, or nothing kept: one unit of the place above the first
                    // kept digit.
                    digits[0] = '1';
                    count = 1;
                    point += 1;
                }
            }
        }
    }
    // Drop trailing zero digits; they come back as padding below.
    while (count > 0 && digits[count - 1] == '0') {
        --count;
    }
    if (count == 0) {
        point = 1;
    }

    std::size_t length = 0;
    // Integer part.
    if (point <= 0) {
        out[length++] = '0';
    } else {
        for (int i = 0; i < point; ++i) {
            out[length++] = i < count ? digits[i] : '0';
        }
    }
    // Fraction: the significant fraction digits, then zeros up to `fewest`.
    int fraction = count - point; // significant fraction digits (<= most after rounding)
    if (fraction < 0) {
        fraction = 0;
    }
    const int shown = fraction > fewest ? fraction : fewest;
    if (shown > 0) {
        out[length++] = '.';
        for (int i = 0; i < shown; ++i) {
            const int at = point + i;
            out[length++] = (at >= 0 && at < count) ? digits[at] : '0';
        }
    }
    return length;
}

} // namespace kitcore::utility::detail
