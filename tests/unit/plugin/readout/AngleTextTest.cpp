// Angle text: one decimal within a turn, revolutions and remaining degrees from a full turn
// on, the degree sign after either.
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "InfoPal/readout/AngleText.h"
#include "ReadoutTestSupport.h"

namespace readout_test {
namespace {

std::string Angle(float degrees) {
    UTF16String text;
    infopal::FormatAngleText(degrees, text);
    return Utf8(text);
}

using AngleText = ReadoutTest;

TEST_F(AngleText, ShowsAnglesWithinATurnWithOneDecimal) {
    EXPECT_EQ(Angle(45.0F), Deg("45.0"));
    EXPECT_EQ(Angle(-90.0F), Deg("-90.0"));
    EXPECT_EQ(Angle(0.0F), Deg("0.0"));
    EXPECT_EQ(Angle(12.25F), Deg("12.2"));
}

TEST_F(AngleText, ShowsAFullTurnOrMoreAsRevolutionsAndRemainder) {
    EXPECT_EQ(Angle(360.0F), Deg("1x + 0.0"));
    EXPECT_EQ(Angle(400.0F), Deg("1x + 40.0"));
    EXPECT_EQ(Angle(720.0F), Deg("2x + 0.0"));
    EXPECT_EQ(Angle(730.0F), Deg("2x + 10.0"));
}

TEST_F(AngleText, NegativeFullTurnsCarryTheMinusSignTwice) {
    EXPECT_EQ(Angle(-360.0F), Deg("-1x - 0.0"));
    EXPECT_EQ(Angle(-400.0F), Deg("-1x - 40.0"));
    EXPECT_EQ(Angle(-730.0F), Deg("-2x - 10.0"));
}

TEST_F(AngleText, JustBelowAFullTurnStaysInTheWithinATurnForm) {
    EXPECT_EQ(Angle(359.9F), Deg("359.9"));
    EXPECT_EQ(Angle(-359.9F), Deg("-359.9"));
    // The one-decimal text rounds up to 360.0, the form stays.
    EXPECT_EQ(Angle(359.95F), Deg("360.0"));
    EXPECT_EQ(Angle(359.96F), Deg("360.0"));
    EXPECT_EQ(Angle(-359.95F), Deg("-360.0"));
}

TEST_F(AngleText, ReplacesWhatTheOutputHeldBefore) {
    UTF16String text(u"old text");
    infopal::FormatAngleText(45.0F, text);
    EXPECT_EQ(Utf8(text), Deg("45.0"));
}

TEST_F(AngleText, KeepsUpTo32767TurnsAsTheyAre) {
    EXPECT_EQ(Angle(32767.0F * 360.0F), Deg("32767x + 0.0"));
    EXPECT_EQ(Angle(32767.0F * 360.0F + 10.0F), Deg("32767x + 10.0"));
    EXPECT_EQ(Angle(-32767.0F * 360.0F), Deg("-32767x - 0.0"));
}

TEST_F(AngleText, WrapsTheRevolutionCountAt32768Turns) {
    // 32768 turns read as -32768; the remainder is the angle less -32768 turns.
    EXPECT_EQ(Angle(32768.0F * 360.0F), Deg("-32768x + 23592960.0"));
    EXPECT_EQ(Angle(-32768.0F * 360.0F), Deg("--32768x - 23592960.0"));
    EXPECT_EQ(Angle(32769.0F * 360.0F), Deg("-32767x + 23592960.0"));
    EXPECT_EQ(Angle(65536.0F * 360.0F), Deg("0x + 23592960.0"));
}

TEST_F(AngleText, CountsNoRevolutionsBeyondThe32BitRange) {
    // 2^31 turns do not fit in 32 bits: the count is taken as 0.
    EXPECT_EQ(Angle(2147483648.0F * 360.0F), Deg("0x + 773094113280.0"));
    EXPECT_EQ(Angle(-2147483648.0F * 360.0F), Deg("-0x - 773094113280.0"));
}

TEST_F(AngleText, GivesDefinedTextForNaNAndInfinities) {
    EXPECT_EQ(Angle(std::numeric_limits<float>::quiet_NaN()), Deg("0x + NaN"));
    EXPECT_EQ(Angle(std::numeric_limits<float>::infinity()), Deg("0x + \u221E"));
    EXPECT_EQ(Angle(-std::numeric_limits<float>::infinity()), Deg("-0x - \u221E"));
}

TEST_F(AngleText, UsesTheLocaleDecimalSeparator) {
    qzhost::HostControls::Get().SetLocale("de_DE");
    EXPECT_EQ(Angle(45.0F), Deg("45,0"));
    EXPECT_EQ(Angle(400.0F), Deg("1x + 40,0"));
    EXPECT_EQ(Angle(-400.0F), Deg("-1x - 40,0"));
    EXPECT_EQ(Angle(359.9F), Deg("359,9"));
}

} // namespace
} // namespace readout_test
