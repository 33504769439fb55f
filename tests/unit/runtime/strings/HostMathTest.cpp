// Host math helpers: rounding to a 32-bit integer and the floating remainder.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

#include "host/M_Math.h"

namespace {

constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

TEST(M_RoundDouble, RoundsHalvesToTheEvenNeighbour) {
    EXPECT_EQ(M_RoundDouble(127.5), 128);
    EXPECT_EQ(M_RoundDouble(382.5), 382);
    EXPECT_EQ(M_RoundDouble(0.5), 0);
    EXPECT_EQ(M_RoundDouble(1.5), 2);
    EXPECT_EQ(M_RoundDouble(2.5), 2);
    EXPECT_EQ(M_RoundDouble(3.5), 4);
    EXPECT_EQ(M_RoundDouble(-0.5), 0);
    EXPECT_EQ(M_RoundDouble(-1.5), -2);
    EXPECT_EQ(M_RoundDouble(-2.5), -2);
    EXPECT_EQ(M_RoundDouble(-127.5), -128);
}

TEST(M_RoundDouble, RoundsLikeTheProcessorsOwnConversion) {
    // nearbyint in the default rounding mode is the processor's conversion.
    for (double v = -1030.0; v <= 1030.0; v += 0.25) {
        EXPECT_EQ(M_RoundDouble(v), static_cast<std::int32_t>(std::nearbyint(v))) << v;
    }
}

TEST(M_RoundDouble, RoundsOtherValuesToTheNearest) {
    EXPECT_EQ(M_RoundDouble(0.0), 0);
    EXPECT_EQ(M_RoundDouble(-0.0), 0);
    EXPECT_EQ(M_RoundDouble(1.4), 1);
    EXPECT_EQ(M_RoundDouble(1.6), 2);
    EXPECT_EQ(M_RoundDouble(-1.4), -1);
    EXPECT_EQ(M_RoundDouble(-1.6), -2);
    EXPECT_EQ(M_RoundDouble(0.02 * 255), 5);
    EXPECT_EQ(M_RoundDouble(1.5f * 255.0f), 382);
    EXPECT_EQ(M_RoundDouble(1.4999999), 1);
    EXPECT_EQ(M_RoundDouble(std::numeric_limits<double>::denorm_min()), 0);
    EXPECT_EQ(M_RoundDouble(-std::numeric_limits<double>::denorm_min()), 0);
}

TEST(M_RoundDouble, DoesNotRoundTheLargestDoubleBelowOneHalfUp) {
    EXPECT_EQ(M_RoundDouble(0.49999999999999994), 0);
    EXPECT_EQ(M_RoundDouble(-0.50000000000000011), -1);
    EXPECT_EQ(M_RoundDouble(4503599627370497.0), kMax); // beyond 2^52: already whole
}

TEST(M_RoundDouble, SaturatesToThe32BitRange) {
    EXPECT_EQ(M_RoundDouble(2147483647.0), kMax);
    EXPECT_EQ(M_RoundDouble(2147483646.5), 2147483646);
    EXPECT_EQ(M_RoundDouble(2147483647.5), kMax);
    EXPECT_EQ(M_RoundDouble(2147483648.0), kMax);
    EXPECT_EQ(M_RoundDouble(1e300), kMax);
    EXPECT_EQ(M_RoundDouble(kInf), kMax);
    EXPECT_EQ(M_RoundDouble(-2147483648.0), kMin);
    EXPECT_EQ(M_RoundDouble(-2147483648.5), kMin);
    EXPECT_EQ(M_RoundDouble(-2147483647.5), kMin);
    EXPECT_EQ(M_RoundDouble(-2147483646.5), -2147483646);
    EXPECT_EQ(M_RoundDouble(-2147483649.0), kMin);
    EXPECT_EQ(M_RoundDouble(-1e300), kMin);
    EXPECT_EQ(M_RoundDouble(-kInf), kMin);
}

TEST(M_RoundDouble, NaNGivesZero) {
    EXPECT_EQ(M_RoundDouble(kNaN), 0);
    EXPECT_EQ(M_RoundDouble(-kNaN), 0);
}

TEST(M_fmod, KeepsTheSignOfTheDividend) {
    EXPECT_DOUBLE_EQ(M_fmod(370.0, 360.0), 10.0);
    EXPECT_DOUBLE_EQ(M_fmod(-370.0, 360.0), -10.0);
    EXPECT_DOUBLE_EQ(M_fmod(370.0, -360.0), 10.0);
    EXPECT_DOUBLE_EQ(M_fmod(720.0, 360.0), 0.0);
    EXPECT_TRUE(std::signbit(M_fmod(-720.0, 360.0)));
    EXPECT_DOUBLE_EQ(M_fmod(5.5, 2.0), 1.5);
}

TEST(M_fmod, FollowsTheStandardForSpecialValues) {
    EXPECT_TRUE(std::isnan(M_fmod(1.0, 0.0)));
    EXPECT_TRUE(std::isnan(M_fmod(kInf, 360.0)));
    EXPECT_TRUE(std::isnan(M_fmod(kNaN, 360.0)));
    EXPECT_DOUBLE_EQ(M_fmod(5.0, kInf), 5.0);
    EXPECT_DOUBLE_EQ(M_fmod(1e300, 360.0), std::fmod(1e300, 360.0));
}

TEST(M_fmod, GivesTheSameUnsignedNaNForEveryOperandWithoutARemainder) {
    for (const double x : {kInf, -kInf, kNaN, -kNaN, 1.0, -1.0}) {
        const double y = std::isfinite(x) ? 0.0 : 360.0;
        const double remainder = M_fmod(x, y);
        EXPECT_TRUE(std::isnan(remainder)) << x;
        EXPECT_FALSE(std::signbit(remainder)) << x;
    }
}

} // namespace
