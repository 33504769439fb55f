// Number text in the host locale, checked against ICU's own number formatter.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <unicode/numberformatter.h>

#include "StringTestSupport.h"
#include "kitcore/utility/NumberText.h"

namespace strings_test {
namespace {

using kitcore::utility::Flags;
using kitcore::utility::NumberToString;

// What ICU itself gives for the locale, grouping off, fewest to max(most, fewest) digits.
std::string IcuNumberText(const std::string& locale, double value, int most, int fewest) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString text =
        icu::number::NumberFormatter::withLocale(icu::Locale(locale.c_str()))
            .grouping(UNUM_GROUPING_OFF)
            .precision(icu::number::Precision::minMaxFraction(fewest, std::max(most, fewest)))
            .formatDouble(value, status)
            .toString(status);
    EXPECT_TRUE(U_SUCCESS(status)) << u_errorName(status);
    std::string utf8;
    text.toUTF8String(utf8);
    return utf8;
}

std::string Text(double value, std::size_t most, std::size_t fewest, int last = 31) {
    return Utf8(NumberToString(value, most, fewest, Flags<unsigned short>(), last));
}

const std::vector<double>& SampleValues() {
    static const std::vector<double> values = {
        0.0,
        -0.0,
        1.0,
        12.0,
        75.5,
        100.0,
        100.2,
        99.9,
        0.5,
        0.05,
        0.15,
        0.25,
        0.35,
        0.45,
        1.005,
        2.5,
        3.5,
        -2.5,
        -0.04,
        -0.05,
        -1234.5678,
        66.66666666666667,
        123456789.125,
        1234567890123.0,
        1e20,
        1e300,
        -1e300,
        1e-5,
        1e-300,
        std::numeric_limits<double>::denorm_min(),
        std::numeric_limits<double>::max(),
        std::numeric_limits<double>::lowest(),
        std::numeric_limits<double>::quiet_NaN(),
        std::numeric_limits<double>::infinity(),
        -std::numeric_limits<double>::infinity(),
    };
    return values;
}

// (most, fewest) as the callers pass them, and a few more.
const std::vector<std::pair<int, int>>& SampleCounts() {
    static const std::vector<std::pair<int, int>> counts = {
        {1, 1}, {1, 0}, {1, 4}, {0, 0}, {4, 1}, {3, 2}, {0, 3}, {6, 0}, {2, 2},
    };
    return counts;
}

class NumberToStringLocaleTest : public HostStringTest,
                                 public ::testing::WithParamInterface<const char*> {};

TEST_P(NumberToStringLocaleTest, MatchesIcuNumberFormatterForEveryValueAndCount) {
    const std::string locale = GetParam();
    qzhost::HostControls::Get().SetLocale(locale);
    for (const auto& [most, fewest] : SampleCounts()) {
        for (double value : SampleValues()) {
            EXPECT_EQ(Text(value, static_cast<std::size_t>(most), static_cast<std::size_t>(fewest)),
                      IcuNumberText(locale, value, most, fewest))
                << "locale " << locale << " value " << value << " counts " << most << ", "
                << fewest;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(HostLocales, NumberToStringLocaleTest,
                         ::testing::Values("en_US", "de_DE", "fr_FR", "ja_JP", "es_ES", "it_IT",
                                           "ko_KR", "ar_EG", "hi_IN", "fa_IR", "de-CH"));

TEST_F(HostStringTest, NumberTextKeepsTheWorkedExamplesInEnglish) {
    EXPECT_EQ(Text(12.0, 1, 1), "12.0");
    EXPECT_EQ(Text(75.5, 1, 0), "75.5");
    EXPECT_EQ(Text(100.0, 1, 0), "100");
    EXPECT_EQ(Text(0.0, 1, 4), "0.0000");
    EXPECT_EQ(Text(320.0, 1, 1), "320.0");
    EXPECT_EQ(Text(50.0, 1, 0), "50");
    EXPECT_EQ(Text(100.2, 1, 0), "100.2");
    EXPECT_EQ(Text(2.0 / 3.0 * 100.0, 1, 0), "66.7");
    EXPECT_EQ(Text(60.0, 1, 0), "60");
    EXPECT_EQ(Text(12.3456, 1, 1, 8), "12.3");
}

TEST_F(HostStringTest, NumberTextHasNoGroupingSeparators) {
    EXPECT_EQ(Text(1234567.0, 1, 0), "1234567");
    qzhost::HostControls::Get().SetLocale("de_DE");
    EXPECT_EQ(Text(1234567.25, 2, 2), "1234567,25");
}

TEST_F(HostStringTest, NumberTextUsesTheLocaleDecimalSeparator) {
    qzhost::HostControls::Get().SetLocale("de_DE");
    EXPECT_EQ(Text(12.0, 1, 1), "12,0");
    EXPECT_EQ(Text(75.5, 1, 0), "75,5");
    qzhost::HostControls::Get().SetLocale("fr_FR");
    EXPECT_EQ(Text(-3.25, 2, 2), IcuNumberText("fr_FR", -3.25, 2, 2));
    EXPECT_THAT(Text(-3.25, 2, 2), ::testing::HasSubstr("3,25"));
    qzhost::HostControls::Get().SetLocale("ja_JP");
    EXPECT_EQ(Text(12.0, 1, 1), "12.0");
}

TEST_F(HostStringTest, NumberTextUsesTheLocaleDigits) {
    qzhost::HostControls::Get().SetLocale("ar_EG");
    // Arabic-Indic digits and the Arabic decimal separator.
    EXPECT_EQ(Text(1.5, 1, 0), "\xD9\xA1\xD9\xAB\xD9\xA5");
}

TEST_F(HostStringTest, NumberTextRoundsHalvesToEven) {
    EXPECT_EQ(Text(0.25, 1, 0), "0.2");
    EXPECT_EQ(Text(0.75, 1, 0), "0.8");
    EXPECT_EQ(Text(2.5, 0, 0), "2");
    EXPECT_EQ(Text(3.5, 0, 0), "4");
    EXPECT_EQ(Text(-2.5, 0, 0), "-2");
    EXPECT_EQ(Text(0.125, 2, 0), "0.12");
}

TEST_F(HostStringTest, NumberTextDropsTrailingZerosBeyondTheFewestDigits) {
    EXPECT_EQ(Text(1.5, 4, 1), "1.5");
    EXPECT_EQ(Text(1.0, 4, 1), "1.0");
    EXPECT_EQ(Text(1.0, 4, 0), "1");
    EXPECT_EQ(Text(1.23456, 4, 0), "1.2346");
}

TEST_F(HostStringTest, NumberTextShowsAtLeastTheFewestDigitsWhenMostIsSmaller) {
    EXPECT_EQ(Text(1.0, 0, 3), "1.000");
    EXPECT_EQ(Text(1.23456, 1, 3), "1.235");
}

TEST_F(HostStringTest, NumberTextOfNegativeZeroAndSmallNegativesKeepsTheSign) {
    EXPECT_EQ(Text(-0.0, 1, 1), IcuNumberText("en_US", -0.0, 1, 1));
    EXPECT_EQ(Text(-0.04, 1, 1), IcuNumberText("en_US", -0.04, 1, 1));
}

TEST_F(HostStringTest, NumberTextOfNonFiniteValuesIsIcuText) {
    EXPECT_EQ(Text(std::numeric_limits<double>::quiet_NaN(), 1, 1), "NaN");
    EXPECT_EQ(Text(std::numeric_limits<double>::infinity(), 1, 1), "\xE2\x88\x9E");
    EXPECT_EQ(Text(-std::numeric_limits<double>::infinity(), 1, 0), "-\xE2\x88\x9E");
}

TEST_F(HostStringTest, NumberTextIgnoresFlagsAndLastArgument) {
    const auto plain = NumberToString(75.25, 1, 0, Flags<unsigned short>(), 31);
    EXPECT_EQ(NumberToString(75.25, 1, 0, Flags<unsigned short>(0xFFFF), 8), plain);
    EXPECT_EQ(NumberToString(75.25, 1, 0, Flags<unsigned short>(1), -1), plain);
}

TEST_F(HostStringTest, NumberTextClampsHugeDigitCountsInsteadOfFailing) {
    EXPECT_EQ(Text(1.5, 5000, 0), "1.5");
    const std::string many = Text(1.0, 5000, 5000);
    EXPECT_EQ(many.size(), 2U + 999U);
    EXPECT_EQ(many.substr(0, 4), "1.00");
}

TEST_F(HostStringTest, NumberTextFollowsLocaleChangesBetweenCalls) {
    for (int round = 0; round < 3; ++round) {
        qzhost::HostControls::Get().SetLocale("en_US");
        EXPECT_EQ(Text(12.5, 1, 1), "12.5");
        qzhost::HostControls::Get().SetLocale("de_DE");
        EXPECT_EQ(Text(12.5, 1, 1), "12,5");
        EXPECT_EQ(Text(12.5, 2, 2), "12,50");
    }
}

TEST_F(HostStringTest, NumberTextWithManyDifferentCountsStaysCorrect) {
    // More (locale, digits) combinations than a thread keeps formatters for.
    for (int round = 0; round < 2; ++round) {
        for (int digits = 0; digits < 40; ++digits) {
            const std::string text =
                Text(0.5, static_cast<std::size_t>(digits), static_cast<std::size_t>(digits));
            EXPECT_EQ(text, IcuNumberText("en_US", 0.5, digits, digits)) << digits;
        }
    }
}

TEST_F(HostStringTest, NumberTextThrowsTheInjectedError) {
    qzhost::HostControls::Get().SetThrow("number_text", "number text unavailable");
    try {
        Text(1.0, 1, 1);
        ADD_FAILURE() << "no exception";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "number text unavailable");
    }
    qzhost::HostControls::Get().SetThrow("number_text", std::nullopt);
    EXPECT_EQ(Text(1.0, 1, 1), "1.0");
}

TEST_F(HostStringTest, NumberTextIsTheSameOnWorkerThreads) {
    qzhost::HostControls::Get().SetLocale("de_DE");
    std::vector<std::string> expected;
    for (double value : SampleValues()) {
        expected.push_back(IcuNumberText("de_DE", value, 1, 1));
    }
    std::vector<int> mismatches(4, 0);
    std::vector<std::thread> workers;
    for (std::size_t t = 0; t < mismatches.size(); ++t) {
        workers.emplace_back([&, t] {
            for (int round = 0; round < 50; ++round) {
                for (std::size_t i = 0; i < SampleValues().size(); ++i) {
                    if (Text(SampleValues()[i], 1, 1) != expected[i]) {
                        ++mismatches[t];
                    }
                }
            }
        });
    }
    for (auto& worker : workers) {
        worker.join();
    }
    for (int count : mismatches) {
        EXPECT_EQ(count, 0);
    }
}

} // namespace
} // namespace strings_test
