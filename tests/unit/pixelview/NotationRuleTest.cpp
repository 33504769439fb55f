// The tests' own notation rules, checked against the worked examples of the notations
// before they are used to judge the panel.
#include <gtest/gtest.h>

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

TEST(NotationRule, RoundHalfUpTakesHalvesUpward) {
    EXPECT_EQ(RoundHalfUp(127.5), 128);
    EXPECT_EQ(RoundHalfUp(-0.5), 0);
    EXPECT_EQ(RoundHalfUp(-5.1), -5);
}

TEST(NotationRule, WholeNumberScalesRoundTheScaledChannel) {
    const auto fields = ExpectedValues({1, 1, 0.5f, 0}, kBpc8, 0);
    EXPECT_EQ(fields, (std::array<std::string, 4>{"255", "128", "0", "255"}));
    EXPECT_EQ(ExpectedValues({1, 1, 0.5f, 0}, kBpc16, 0)[1], "16384");
    EXPECT_EQ(ExpectedValues({1, 1, 0.5f, 0}, kBpc10, 0)[1], "512");
}

TEST(NotationRule, WebIsUnpaddedUpperCaseHexadecimal) {
    // 1.5 × 255 is 382.5, whose half rounds up to 383 (17F); 1.498 × 255 rounds to 382.
    EXPECT_EQ(ExpectedValues({1, 0.02f, 1.5f, -0.003f}, kWeb, 0),
              (std::array<std::string, 4>{"5", "17F", "FFFFFFFF", "FF"}));
    EXPECT_EQ(ExpectedValues({1, 1.498f, 0, 10 / 255.0f}, kWeb, 0)[0], "17E");
    EXPECT_EQ(ExpectedValues({1, 1.498f, 0, 10 / 255.0f}, kWeb, 0)[2], "A");
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
