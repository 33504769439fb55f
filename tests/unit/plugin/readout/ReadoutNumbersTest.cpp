// The readouts' number conversions are defined for every input, NaN and infinities too.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

#include "InfoPal/readout/ReadoutNumbers.h"
#include "ReadoutTestSupport.h"

namespace readout_test {
namespace {

using infopal::LowSigned16;
using infopal::NarrowToFloat;
using infopal::TruncateToInt32;

constexpr std::int32_t kInt32Min = std::numeric_limits<std::int32_t>::min();

TEST(TruncateToInt32, TruncatesTowardZero) {
    EXPECT_EQ(TruncateToInt32(1.9), 1);
    EXPECT_EQ(TruncateToInt32(-1.9), -1);
    EXPECT_EQ(TruncateToInt32(-0.5), 0);
    EXPECT_EQ(TruncateToInt32(100.5), 100);
}

TEST(TruncateToInt32, KeepsValuesAtTheEdgesOfTheRange) {
    EXPECT_EQ(TruncateToInt32(2147483647.0), 2147483647);
    EXPECT_EQ(TruncateToInt32(2147483647.9), 2147483647);
    EXPECT_EQ(TruncateToInt32(-2147483648.0), kInt32Min);
    EXPECT_EQ(TruncateToInt32(-2147483648.9), kInt32Min);
    EXPECT_EQ(TruncateToInt32(-2147483647.5), -2147483647);
}

TEST(TruncateToInt32, GivesTheLowestValueOutsideTheRange) {
    EXPECT_EQ(TruncateToInt32(2147483648.0), kInt32Min);
    EXPECT_EQ(TruncateToInt32(-2147483649.0), kInt32Min);
    EXPECT_EQ(TruncateToInt32(1e300), kInt32Min);
    EXPECT_EQ(TruncateToInt32(-1e300), kInt32Min);
}

TEST(TruncateToInt32, GivesTheLowestValueForNaNAndInfinities) {
    EXPECT_EQ(TruncateToInt32(kNaN), kInt32Min);
    EXPECT_EQ(TruncateToInt32(-kNaN), kInt32Min);
    EXPECT_EQ(TruncateToInt32(kInf), kInt32Min);
    EXPECT_EQ(TruncateToInt32(-kInf), kInt32Min);
}

TEST(LowSigned16, KeepsSixteenBitValues) {
    EXPECT_EQ(LowSigned16(0), 0);
    EXPECT_EQ(LowSigned16(32767), 32767);
    EXPECT_EQ(LowSigned16(-1), -1);
    EXPECT_EQ(LowSigned16(-32768), -32768);
}

TEST(LowSigned16, WrapsLargerValuesToTheirLowBits) {
    EXPECT_EQ(LowSigned16(32768), -32768);
    EXPECT_EQ(LowSigned16(32769), -32767);
    EXPECT_EQ(LowSigned16(65535), -1);
    EXPECT_EQ(LowSigned16(65536), 0);
    EXPECT_EQ(LowSigned16(65636), 100);
    EXPECT_EQ(LowSigned16(-32769), 32767);
    EXPECT_EQ(LowSigned16(kInt32Min), 0);
    EXPECT_EQ(LowSigned16(2147483647), -1);
}

TEST(NarrowToFloat, RoundsValuesInsideTheFloatRange) {
    EXPECT_EQ(NarrowToFloat(0.1), 0.1F);
    EXPECT_EQ(NarrowToFloat(-400.0), -400.0F);
    EXPECT_EQ(NarrowToFloat(std::numeric_limits<float>::max()), std::numeric_limits<float>::max());
}

TEST(NarrowToFloat, RoundsLessThanHalfAStepBeyondTheLargestFloatDownToIt) {
    // The largest float is 0x1.fffffep127; the next step would be 2^128.
    const double quarter_step_above = 0x1.fffffe8p127;
    const double just_below_halfway = 0x1.fffffefffffffp127;
    EXPECT_EQ(NarrowToFloat(quarter_step_above), std::numeric_limits<float>::max());
    EXPECT_EQ(NarrowToFloat(just_below_halfway), std::numeric_limits<float>::max());
    EXPECT_EQ(NarrowToFloat(-quarter_step_above), -std::numeric_limits<float>::max());
}

TEST(NarrowToFloat, RoundsHalfAStepBeyondTheLargestFloatToInfinity) {
    // A tie goes to the even neighbour, which is infinity.
    EXPECT_EQ(NarrowToFloat(0x1.ffffffp127), std::numeric_limits<float>::infinity());
    EXPECT_EQ(NarrowToFloat(-0x1.ffffffp127), -std::numeric_limits<float>::infinity());
}

TEST(NarrowToFloat, TurnsValuesBeyondTheFloatRangeIntoInfinities) {
    EXPECT_EQ(NarrowToFloat(1e300), std::numeric_limits<float>::infinity());
    EXPECT_EQ(NarrowToFloat(-1e300), -std::numeric_limits<float>::infinity());
    EXPECT_EQ(NarrowToFloat(0x1p128), std::numeric_limits<float>::infinity());
    EXPECT_EQ(NarrowToFloat(kInf), std::numeric_limits<float>::infinity());
    EXPECT_EQ(NarrowToFloat(-kInf), -std::numeric_limits<float>::infinity());
}

TEST(NarrowToFloat, KeepsNaN) {
    EXPECT_TRUE(std::isnan(NarrowToFloat(kNaN)));
}

} // namespace
} // namespace readout_test
