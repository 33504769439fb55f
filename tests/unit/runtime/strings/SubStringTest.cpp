// Narrow number patterns and their localisation.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <limits>
#include <string>

#include "StringTestSupport.h"
#include "host/U_Text.h"

namespace strings_test {
namespace {

std::string Sub(const char* pattern, double value, std::int32_t size = 128) {
    char buffer[128];
    std::memset(buffer, 'Z', sizeof buffer);
    U_SubString(buffer, size, pattern, value);
    return buffer;
}

std::string Printf(const char* format, double value) {
    char buffer[512];
    std::snprintf(buffer, sizeof buffer, format, value);
    return buffer;
}

std::string Localised(const char* text) {
    char buffer[128];
    std::snprintf(buffer, sizeof buffer, "%s", text);
    U_InternationalizeNum(buffer);
    return buffer;
}

TEST(U_SubString, PrintsOneFractionDigit) {
    EXPECT_EQ(Sub("^F1@1.1@", 50.0), "50.0");
    EXPECT_EQ(Sub("^F1@1.1@", 12.5), "12.5");
    EXPECT_EQ(Sub("^F1@1.1@", 0.0), "0.0");
    EXPECT_EQ(Sub("^F1@1.1@", -7.25), "-7.2");
}

TEST(U_SubString, RoundsAsPrintfDoes) {
    for (double value : {0.05, 0.15, 0.25, 0.35, 0.45, 1.25, 2.25, 12.25, 12.35, -0.05, -0.04,
                         99.95, 1e-9, 123456.789}) {
        EXPECT_EQ(Sub("^F1@1.1@", value), Printf("%1.1f", value)) << value;
    }
    EXPECT_EQ(Sub("^F1@1.1@", 0.25), "0.2");
    EXPECT_EQ(Sub("^F1@1.1@", 0.35), "0.3"); // 0.35 is just below 0.35 in binary
    EXPECT_EQ(Sub("^F1@1.1@", -0.04), "-0.0");
}

TEST(U_SubString, UsesThePrecisionOfTheToken) {
    EXPECT_EQ(Sub("^F1@1.0@", 2.5), Printf("%.0f", 2.5));
    EXPECT_EQ(Sub("^F1@1.3@", 3.14159), "3.142");
    EXPECT_EQ(Sub("^F1@0.2@", 1.0), "1.00");
    EXPECT_EQ(Sub("^F1@1.12@", 1.0 / 3.0), Printf("%.12f", 1.0 / 3.0));
}

TEST(U_SubString, WidthIsAMinimumPaddedWithSpaces) {
    EXPECT_EQ(Sub("^F1@6.2@", 3.14159), "  3.14");
    EXPECT_EQ(Sub("^F1@2.2@", 3.14159), "3.14");
    EXPECT_EQ(Sub("^F1@.1@", 3.14159), "3.1");
}

TEST(U_SubString, CopiesTheTextAroundTokens) {
    EXPECT_EQ(Sub("x = ^F1@1.1@ px", 12.34), "x = 12.3 px");
    EXPECT_EQ(Sub("^F1@1.1@/^F1@1.2@", 1.5), "1.5/1.50");
    EXPECT_EQ(Sub("no token", 1.0), "no token");
    EXPECT_EQ(Sub("", 1.0), "");
}

TEST(U_SubString, TokensOfOtherArgumentsGiveNoText) {
    EXPECT_EQ(Sub("[^F2@1.1@]", 1.0), "[]");
    EXPECT_EQ(Sub("[^F0@1.1@]", 1.0), "[]");
}

TEST(U_SubString, CopiesMalformedTokensAsText) {
    EXPECT_EQ(Sub("^F1@1@", 1.0), "^F1@1@");
    EXPECT_EQ(Sub("^F1@1.1", 1.0), "^F1@1.1");
    EXPECT_EQ(Sub("^F@1.1@", 1.0), "^F@1.1@");
    EXPECT_EQ(Sub("^F1@1.@", 1.0), "^F1@1.@");
    EXPECT_EQ(Sub("^G1@1.1@", 1.0), "^G1@1.1@");
    EXPECT_EQ(Sub("50^", 1.0), "50^");
    EXPECT_EQ(Sub("^^F1@1.1@", 1.0), "^1.0");
    EXPECT_EQ(Sub("^F1@1.1000@", 1.0), "^F1@1.1000@");
    EXPECT_EQ(Sub("^F1@1000.1@", 1.0), "^F1@1000.1@");
}

TEST(U_SubString, PrintsNonFiniteValuesAsPrintfDoes) {
    EXPECT_EQ(Sub("^F1@1.1@", std::numeric_limits<double>::quiet_NaN()), "nan");
    EXPECT_EQ(Sub("^F1@1.1@", std::numeric_limits<double>::infinity()), "inf");
    EXPECT_EQ(Sub("^F1@1.1@", -std::numeric_limits<double>::infinity()), "-inf");
}

TEST(U_SubString, PrintsHugeValuesInFull) {
    const std::string text = Sub("^F1@1.1@", 1e20);
    EXPECT_EQ(text, "100000000000000000000.0");
}

TEST(U_SubString, CutsTheResultToTheBufferAndTerminatesIt) {
    EXPECT_EQ(Sub("^F1@1.1@", 12.5, 1), "");
    EXPECT_EQ(Sub("^F1@1.1@", 12.5, 3), "12");
    EXPECT_EQ(Sub("^F1@1.1@", 12.5, 5), "12.5");
    EXPECT_EQ(Sub("abc ^F1@1.1@", 12.5, 6), "abc 1");
    // The maximum value printed in full is longer than the whole buffer.
    const std::string cut = Sub("^F1@1.1@", std::numeric_limits<double>::max(), 128);
    EXPECT_EQ(cut.size(), 127U);
    EXPECT_EQ(cut, Printf("%.1f", std::numeric_limits<double>::max()).substr(0, 127));
}

TEST(U_SubString, NeverWritesBeyondTheBuffer) {
    char buffer[16];
    std::memset(buffer, 'Z', sizeof buffer);
    U_SubString(buffer, 4, "123456789 ^F1@1.1@", 1.0);
    EXPECT_STREQ(buffer, "123");
    for (std::size_t i = 4; i < sizeof buffer; ++i) {
        EXPECT_EQ(buffer[i], 'Z') << i;
    }
}

TEST(U_SubString, DoesNothingWithoutARoomyBuffer) {
    char buffer[4] = {'a', 'b', 'c', '\0'};
    U_SubString(buffer, 0, "^F1@1.1@", 1.0);
    EXPECT_STREQ(buffer, "abc");
    U_SubString(buffer, -5, "^F1@1.1@", 1.0);
    EXPECT_STREQ(buffer, "abc");
    U_SubString(nullptr, 128, "^F1@1.1@", 1.0); // must not crash
}

TEST(U_SubString, NullPatternGivesEmptyText) {
    char buffer[8] = "old";
    U_SubString(buffer, sizeof buffer, nullptr, 1.0);
    EXPECT_STREQ(buffer, "");
}

TEST(U_SubString, PatternMayBeTheBufferItself) {
    char buffer[32] = "v=^F1@1.1@!";
    U_SubString(buffer, sizeof buffer, buffer, 2.25);
    EXPECT_STREQ(buffer, "v=2.2!");
}

TEST_F(HostStringTest, InternationalizeNumLeavesEnglishNumbersAlone) {
    EXPECT_EQ(Localised("12.5"), "12.5");
    qzhost::HostControls::Get().SetLocale("ja_JP");
    EXPECT_EQ(Localised("12.5"), "12.5");
}

TEST_F(HostStringTest, InternationalizeNumPutsTheGermanDecimalComma) {
    qzhost::HostControls::Get().SetLocale("de_DE");
    EXPECT_EQ(Localised("12.5"), "12,5");
    EXPECT_EQ(Localised("-0.0"), "-0,0");
    EXPECT_EQ(Localised("1.5/2.25"), "1,5/2,25");
    qzhost::HostControls::Get().SetLocale("fr_FR");
    EXPECT_EQ(Localised("50.0"), "50,0");
}

TEST_F(HostStringTest, InternationalizeNumChangesOnlyPointsBetweenDigits) {
    qzhost::HostControls::Get().SetLocale("de_DE");
    EXPECT_EQ(Localised("Feather... v1.2 a.b 3. .4"), "Feather... v1,2 a.b 3. .4");
    EXPECT_EQ(Localised("."), ".");
    EXPECT_EQ(Localised(""), "");
    EXPECT_EQ(Localised("nan"), "nan");
}

TEST_F(HostStringTest, InternationalizeNumUsesTheSeparatorOfLatinDigits) {
    // Arabic text uses its own separator with Arabic digits; beside printf's Latin digits
    // the locale writes a point.
    qzhost::HostControls::Get().SetLocale("ar_EG");
    EXPECT_EQ(Localised("12.5"), "12.5");
}

TEST_F(HostStringTest, InternationalizeNumWritesTheSeparatorInTheCodePage) {
    qzhost::HostControls::Get().SetLocale("de_DE");
    qzhost::HostControls::Get().SetCodepage("cp1252");
    EXPECT_EQ(Localised("12.5"), "12,5");
}

TEST_F(HostStringTest, InternationalizeNumNeverGrowsTheText) {
    // In UTF-16 the comma takes two bytes; the text is left as it is.
    qzhost::HostControls::Get().SetLocale("de_DE");
    qzhost::HostControls::Get().SetCodepage("UTF-16BE");
    EXPECT_EQ(Localised("12.5"), "12.5");
}

TEST_F(HostStringTest, InternationalizeNumOfNullDoesNothing) {
    qzhost::HostControls::Get().SetLocale("de_DE");
    U_InternationalizeNum(nullptr); // must not crash
    EXPECT_EQ(Localised("1.0"), "1,0");
}

TEST_F(HostStringTest, SingleValueReadoutInGerman) {
    qzhost::HostControls::Get().SetLocale("de_DE");
    char buffer[128];
    U_SubString(buffer, 128, "^F1@1.1@", 12.5);
    U_InternationalizeNum(buffer);
    EXPECT_STREQ(buffer, "12,5");
    U_SubString(buffer, 128, "^F1@1.1@", 50.0);
    U_InternationalizeNum(buffer);
    EXPECT_STREQ(buffer, "50,0");
}

TEST_F(HostStringTest, InternationalizeNumFollowsLocaleChanges) {
    qzhost::HostControls::Get().SetLocale("de_DE");
    EXPECT_EQ(Localised("1.5"), "1,5");
    qzhost::HostControls::Get().SetLocale("en_US");
    EXPECT_EQ(Localised("1.5"), "1.5");
    qzhost::HostControls::Get().SetLocale("it_IT");
    EXPECT_EQ(Localised("1.5"), "1,5");
}

} // namespace
} // namespace strings_test
