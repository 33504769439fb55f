// Number text agrees with ICU's own number formatter, unit for unit, over a large
// deterministic set of doubles, every pair of fraction-digit counts from 0 to 9 and a
// dozen locales with different digits, separators and minus signs.
#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <unicode/numberformatter.h>

#include "SplitMix64.h"
#include "StringTestSupport.h"
#include "kitcore/utility/NumberText.h"

namespace strings_test {
namespace {

using kitcore::utility::Flags;
using kitcore::utility::NumberToString;

constexpr int kDigitCounts = 10; // fraction-digit counts 0..9

using qztest::SplitMix64;

double Parse(const std::string& text) {
    return std::strtod(text.c_str(), nullptr);
}

// A decimal whose shortest digits end in 5 at fraction digit `place` (a tie of ICU's
// rounding at `place - 1` digits): `whole`.`fraction`5, written out and read back.
double DecimalTie(std::uint64_t whole, std::uint64_t fraction, int place) {
    std::string digits = std::to_string(fraction);
    if (static_cast<int>(digits.size()) > place - 1) {
        digits = digits.substr(digits.size() - static_cast<std::size_t>(place - 1));
    }
    while (static_cast<int>(digits.size()) < place - 1) {
        digits.insert(digits.begin(), '0');
    }
    return Parse(std::to_string(whole) + "." + digits + "5");
}

std::vector<double> AgreementValues() {
    SplitMix64 random(0x5EED0F1CE5ULL);
    std::vector<double> values;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    // Special values.
    for (const double v : {0.0,
                           1.0,
                           nan,
                           inf,
                           std::numeric_limits<double>::denorm_min(),
                           std::numeric_limits<double>::min(),
                           std::numeric_limits<double>::max(),
                           std::numeric_limits<double>::epsilon(),
                           1e20,
                           1e21,
                           1e22,
                           1e23,
                           1e300,
                           0x1.0p53,
                           0x1.0p53 + 2.0,
                           0x1.0p63,
                           0x1.0p64,
                           0.5,
                           0.05,
                           0.15,
                           0.25,
                           0.35,
                           1.005,
                           2.675,
                           99.995,
                           9.995,
                           0.995,
                           999.9996}) {
        values.push_back(v);
        values.push_back(-v);
    }
    for (int i = 0; i < 25000; ++i) {
        // Any bit pattern: every magnitude, denormals, the odd NaN.
        values.push_back(std::bit_cast<double>(random.Next()));
        // Floats widened to double, as channel values arrive.
        values.push_back(
            static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(random.Next()))));
        // Everyday magnitudes, 1e-12 to 1e20.
        const int exponent = static_cast<int>(random.Below(33)) - 12;
        values.push_back(random.Unit() * std::pow(10.0, exponent));
        // Binary ties at every digit count: n + k / 2^j, exact in binary.
        const int j = 1 + static_cast<int>(random.Below(12));
        const double tie =
            static_cast<double>(random.Below(100000)) +
            std::ldexp(static_cast<double>(2 * random.Below(1ULL << (j - 1)) + 1), -j);
        values.push_back(tie);
        // Decimal ties (shortest digits ending in 5) and their neighbours.
        const int place = 1 + static_cast<int>(random.Below(kDigitCounts));
        const double decimal =
            DecimalTie(random.Below(1000000), random.Next() % 1000000000ULL, place);
        values.push_back(decimal);
        values.push_back(std::nextafter(decimal, 0.0));
        values.push_back(std::nextafter(decimal, inf));
        // Integers of every size up to 2^64, and a fraction on top of some.
        const int bits = static_cast<int>(random.Below(65));
        const std::uint64_t whole = bits == 0 ? 0 : random.Next() >> (64 - bits);
        values.push_back(static_cast<double>(whole) + (bits < 40 ? random.Unit() : 0.0));
    }
    // Half of them negative.
    for (std::size_t i = 0; i < values.size(); i += 2) {
        values[i] = -values[i];
    }
    return values;
}

const std::vector<double>& Values() {
    static const std::vector<double> values = AgreementValues();
    return values;
}

std::string Describe(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.17g (%a)", value, value);
    return text;
}

class NumberTextAgreement : public HostStringTest,
                            public ::testing::WithParamInterface<const char*> {};

TEST_P(NumberTextAgreement, EveryValueAndDigitCountGivesIcusText) {
    const std::string locale = GetParam();
    qzhost::HostControls::Get().SetLocale(locale);
    // One ICU formatter for each pair of digit counts: [most][fewest].
    std::vector<std::unique_ptr<icu::number::LocalizedNumberFormatter>> formatters;
    for (int most = 0; most < kDigitCounts; ++most) {
        for (int fewest = 0; fewest < kDigitCounts; ++fewest) {
            formatters.push_back(std::make_unique<icu::number::LocalizedNumberFormatter>(
                icu::number::NumberFormatter::withLocale(icu::Locale(locale.c_str()))
                    .grouping(UNUM_GROUPING_OFF)
                    .precision(
                        icu::number::Precision::minMaxFraction(fewest, std::max(most, fewest)))));
        }
    }
    const std::vector<double>& values = Values();
    ASSERT_GE(values.size(), 200000u);
    std::size_t compared = 0;
    int failures = 0;
    const auto check = [&](double value, int most, int fewest) {
        UErrorCode status = U_ZERO_ERROR;
        const icu::UnicodeString expected =
            formatters[static_cast<std::size_t>(most * kDigitCounts + fewest)]
                ->formatDouble(value, status)
                .toString(status);
        ASSERT_TRUE(U_SUCCESS(status)) << u_errorName(status);
        const UTF16String actual =
            NumberToString(value, static_cast<std::size_t>(most), static_cast<std::size_t>(fewest),
                           Flags<unsigned short>(), 0);
        ++compared;
        const bool same = static_cast<std::size_t>(expected.length()) == actual.size() &&
                          expected.compare(0, expected.length(), actual.data(), 0,
                                           static_cast<int32_t>(actual.size())) == 0;
        if (!same && ++failures <= 20) {
            std::string utf8;
            expected.toUTF8String(utf8);
            ADD_FAILURE() << locale << " " << Describe(value) << " most " << most << " fewest "
                          << fewest << ": got \"" << Utf8(actual) << "\", ICU gives \"" << utf8
                          << "\"";
        }
    };
    for (std::size_t i = 0; i < values.size(); ++i) {
        // Each value with one pair of digit counts, the pairs taken in turn.
        const int pair = static_cast<int>(i % (kDigitCounts * kDigitCounts));
        check(values[i], pair / kDigitCounts, pair % kDigitCounts);
    }
    // The first values (the special ones) with every pair.
    for (std::size_t i = 0; i < 64 && i < values.size(); ++i) {
        for (int most = 0; most < kDigitCounts; ++most) {
            for (int fewest = 0; fewest < kDigitCounts; ++fewest) {
                check(values[i], most, fewest);
            }
        }
    }
    EXPECT_EQ(failures, 0) << "of " << compared << " texts in " << locale;
}

// The last three: a direction mark in the minus sign, and two whose digits lie outside
// the BMP (their numbers go through ICU's formatter).
INSTANTIATE_TEST_SUITE_P(Locales, NumberTextAgreement,
                         ::testing::Values("en_US", "de_DE", "fr_FR", "ja_JP", "ar_EG", "hi_IN",
                                           "fa_IR", "sv_SE", "de_CH", "es_ES", "it_IT", "ko_KR",
                                           "he_IL", "ccp_BD", "en_US@numbers=mathsanb"),
                         [](const ::testing::TestParamInfo<const char*>& info) {
                             std::string name = info.param;
                             for (char& c : name) {
                                 if (!std::isalnum(static_cast<unsigned char>(c))) {
                                     c = '_';
                                 }
                             }
                             return name;
                         });

} // namespace
} // namespace strings_test
