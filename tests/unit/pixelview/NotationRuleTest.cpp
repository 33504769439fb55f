// The tests' own notation rules, checked against the worked examples of the notations
// before they are used to judge the panel.
#include <gtest/gtest.h>

#include <limits>

#include "NotationRule.h"

namespace pixelviewtest {
namespace {

TEST(NotationRule, NumberTextKeepsAtLeastTheMinimumAndAtMostTheMaximumDigits) {
    EXPECT_EQ(NumberText(12, 1, 1), "12.0");
    EXPECT_EQ(NumberText(75.5, 0, 1), "75.5");
    EXPECT_EQ(NumberText(100, 0, 1), "100");
    EXPECT_EQ(NumberText(0, 4, 4), "0.0000");
    EXPECT_EQ(NumberText(200.0 / 3.0, 0, 1), "66.7");
    EXPECT_EQ(NumberText(0.5, 4, 4, ','), "0,5000");
}

TEST(NotationRule, NumberTextRoundsTiesOfTheShortestFormToEven) {
    EXPECT_EQ(NumberText(0.25, 1, 1), "0.2");
    EXPECT_EQ(NumberText(0.35, 1, 1), "0.4");
    EXPECT_EQ(NumberText(9.96, 1, 1), "10.0");
    EXPECT_EQ(NumberText(-0.02, 4, 4), "-0.0200");
}

TEST(NotationRule, RoundHalfEvenTakesAHalfToTheEvenNeighbour) {
    EXPECT_EQ(RoundHalfEven(127.5), 128);
    EXPECT_EQ(RoundHalfEven(382.5), 382);
    EXPECT_EQ(RoundHalfEven(2.5), 2);
    EXPECT_EQ(RoundHalfEven(0.5), 0);
    EXPECT_EQ(RoundHalfEven(1.5), 2);
    EXPECT_EQ(RoundHalfEven(-127.5), -128);
    EXPECT_EQ(RoundHalfEven(-0.5), 0);
    EXPECT_EQ(RoundHalfEven(-1.5), -2);
    EXPECT_EQ(RoundHalfEven(-2.5), -2);
}

TEST(NotationRule, RoundHalfEvenTakesTheNearestWholeNumberOtherwise) {
    EXPECT_EQ(RoundHalfEven(127.49), 127);
    EXPECT_EQ(RoundHalfEven(127.51), 128);
    EXPECT_EQ(RoundHalfEven(-5.1), -5);
    EXPECT_EQ(RoundHalfEven(-5.9), -6);
    EXPECT_EQ(RoundHalfEven(0.49999999999999994), 0);
}

TEST(NotationRule, RoundHalfEvenSaturatesToThe32BitRangeAndTakesNaNToZero) {
    EXPECT_EQ(RoundHalfEven(2147483646.5), 2147483646);
    EXPECT_EQ(RoundHalfEven(2147483647.4), 2147483647);
    EXPECT_EQ(RoundHalfEven(5e9), 2147483647);
    EXPECT_EQ(RoundHalfEven(std::numeric_limits<double>::infinity()), 2147483647);
    EXPECT_EQ(RoundHalfEven(-2147483647.5), -2147483648);
    EXPECT_EQ(RoundHalfEven(-5e9), -2147483648);
    EXPECT_EQ(RoundHalfEven(-std::numeric_limits<double>::infinity()), -2147483648);
    EXPECT_EQ(RoundHalfEven(std::numeric_limits<double>::quiet_NaN()), 0);
}

TEST(NotationRule, WholeNumberScalesRoundTheScaledChannel) {
    const auto fields = ExpectedValues({1, 1, 0.5f, 0}, kBpc8, 0);
    EXPECT_EQ(fields, (std::array<std::string, 4>{"255", "128", "0", "255"}));
    EXPECT_EQ(ExpectedValues({1, 1, 0.5f, 0}, kBpc16, 0)[1], "16384");
    EXPECT_EQ(ExpectedValues({1, 1, 0.5f, 0}, kBpc10, 0)[1], "512");
}

TEST(NotationRule, WholeNumberScalesTakeAHalfToTheEvenNeighbour) {
    // 1.5 × 255 is 382.5, -0.5 × 255 is -127.5, 1.5 × 1023 is 1534.5.
    EXPECT_EQ(ExpectedValues({1, 1.5f, -0.5f, 0}, kBpc8, 0),
              (std::array<std::string, 4>{"382", "-128", "0", "255"}));
    EXPECT_EQ(ExpectedValues({1, 1.5f, -0.5f, 0}, kBpc10, 0)[0], "1534");
}

TEST(NotationRule, WebIsUnpaddedUpperCaseHexadecimal) {
    // 1.5 × 255 is 382.5, whose half goes to the even 382 (17E), as does 1.498 × 255.
    EXPECT_EQ(ExpectedValues({1, 0.02f, 1.5f, -0.003f}, kWeb, 0),
              (std::array<std::string, 4>{"5", "17E", "FFFFFFFF", "FF"}));
    EXPECT_EQ(ExpectedValues({1, 1.498f, 0, 10 / 255.0f}, kWeb, 0)[0], "17E");
    EXPECT_EQ(ExpectedValues({1, 1.498f, 0, 10 / 255.0f}, kWeb, 0)[2], "A");
    // 383.5 goes up to the even 384 (180); far beyond the range, the largest 32-bit value.
    EXPECT_EQ(ExpectedValues({1, 383.5f / 255.0f, 1e8f, 0}, kWeb, 0)[0], "180");
    EXPECT_EQ(ExpectedValues({1, 383.5f / 255.0f, 1e8f, 0}, kWeb, 0)[1], "7FFFFFFF");
}

TEST(NotationRule, PercentHasOneDecimal) {
    EXPECT_EQ(ExpectedValues({1, 0.123456f, 0, 0}, kPercent, 0)[0], "12.3%");
    EXPECT_EQ(ExpectedValues({1, 0.123456f, 0, 0}, kPercent, 0)[3], "100.0%");
}

TEST(NotationRule, HsbGivesHueDegreesAndWholePercentages) {
    EXPECT_EQ(ExpectedValues({1, 1, 0, 0}, kHsb, 0),
              (std::array<std::string, 4>{"0", "100%", "100%", "100%"}));
    EXPECT_EQ(ExpectedValues({1, 0, 1, 0}, kHsb, 0)[0], "120");
    EXPECT_EQ(ExpectedValues({1, 0, 0, 1}, kHsb, 0)[0], "240");
    EXPECT_EQ(ExpectedValues({1, 1, 0, 0.5f}, kHsb, 0)[0], "330");
    EXPECT_EQ(ExpectedValues({1, 0.5f, 0.5f, 0.5f}, kHsb, 0),
              (std::array<std::string, 4>{"0", "0%", "50%", "100%"}));
}

TEST(NotationRule, ZeroAlphaLeavesOnlyTheAlphaField) {
    EXPECT_EQ(ExpectedValues({0, 1, 1, 1}, kBpc8, 0),
              (std::array<std::string, 4>{"", "", "", "0"}));
    EXPECT_EQ(ExpectedValues({0, 1, 1, 1}, kPercent, 0)[3], "0.0%");
    EXPECT_EQ(ExpectedValues({0, 1, 1, 1}, kHsb, 0)[3], "0%");
    EXPECT_EQ(ExpectedValues({0, 1, 1, 1}, kDecimal, 0)[3], "0.0000");
}

TEST(NotationRule, AutoFollowsTheProjectDepth) {
    const Pixel pixel{1, 0.5f, 0.25f, 1};
    EXPECT_EQ(ExpectedValues(pixel, kAuto, 0), ExpectedValues(pixel, kBpc8, 0));
    EXPECT_EQ(ExpectedValues(pixel, kAuto, 1), ExpectedValues(pixel, kBpc16, 1));
    EXPECT_EQ(ExpectedValues(pixel, kAuto, 2), ExpectedValues(pixel, kDecimal, 2));
}

} // namespace
} // namespace pixelviewtest
