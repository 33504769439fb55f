// Host math helpers.
#include <cmath>
#include <cstdint>
#include <limits>

#include "host/M_Math.h"

std::int32_t M_RoundDouble(double value) {
    if (std::isnan(value)) {
        return 0;
    }
    // A half goes to the even neighbour, as the processor's own conversion rounds. The
    // fraction is compared rather than adding 0.5 (which would round 0.49999999999999994
    // up), and the rounding does not depend on the floating-point environment's mode
    // (value - floor(value) is exact for every finite double).
    double whole = std::floor(value);
    const double fraction = value - whole;
    if (fraction > 0.5 || (fraction == 0.5 && std::fmod(whole, 2.0) != 0.0)) {
        whole += 1.0;
    }
    constexpr double kMax = std::numeric_limits<std::int32_t>::max();
    constexpr double kMin = std::numeric_limits<std::int32_t>::min();
    if (whole >= kMax) {
        return std::numeric_limits<std::int32_t>::max();
    }
    if (whole <= kMin) {
        return std::numeric_limits<std::int32_t>::min();
    }
    return static_cast<std::int32_t>(whole);
}

double M_fmod(double x, double y) {
    const double remainder = std::fmod(x, y);
    // The C library gives an infinite or NaN operand a NaN whose sign bit varies between
    // platforms; the host hands back one NaN, without sign, so that its text never reads
    // "-NaN" on one machine and "NaN" on another.
    return std::isnan(remainder) ? std::numeric_limits<double>::quiet_NaN() : remainder;
}
