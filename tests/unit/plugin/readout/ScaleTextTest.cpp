// Scale text: percentages, one number when the components agree once rounded.
#include <gtest/gtest.h>

#include <limits>

#include "InfoPal/readout/FormatScaleText.h"
#include "ReadoutTestSupport.h"

namespace readout_test {
namespace {

using infopal::FormatScaleText;

using ScaleText = ReadoutTest;

TEST_F(ScaleText, UniformScaleShowsOnePercentage) {
    EXPECT_EQ(Utf8(FormatScaleText(100.0F, 100.0F, 100.0F)), "100%");
    EXPECT_EQ(Utf8(FormatScaleText(100.0F, 100.0F)), "100%");
}

TEST_F(ScaleText, ComponentsThatRoundAlikeShowTheFirstUnrounded) {
    EXPECT_EQ(Utf8(FormatScaleText(100.4F, 99.6F, 100.0F)), "100.4%");
    EXPECT_EQ(Utf8(FormatScaleText(100.2F, 99.9F)), "100.2%");
}

TEST_F(ScaleText, DifferingComponentsShowEveryPercentage) {
    EXPECT_EQ(Utf8(FormatScaleText(100.0F, 100.0F, 101.0F)), "100%, 100%, 101%");
    EXPECT_EQ(Utf8(FormatScaleText(100.0F, 101.0F, 100.0F)), "100%, 101%, 100%");
    EXPECT_EQ(Utf8(FormatScaleText(50.0F, 75.5F)), "50%, 75.5%");
}

TEST_F(ScaleText, RoundsHalvesUpForTheComparison) {
    // 99.5 + 0.5 truncates to 100; 99.4 + 0.5 to 99.
    EXPECT_EQ(Utf8(FormatScaleText(99.5F, 100.0F)), "99.5%");
    EXPECT_EQ(Utf8(FormatScaleText(99.4F, 100.0F)), "99.4%, 100%");
    // -0.4 + 0.5 and 0.4 + 0.5 both truncate toward zero to 0.
    EXPECT_EQ(Utf8(FormatScaleText(-0.4F, 0.4F)), "-0.4%");
}

TEST_F(ScaleText, ComparesOnlyTheLow16BitsOfTheRoundedComponents) {
    EXPECT_EQ(Utf8(FormatScaleText(65636.0F, 100.0F)), "65636%");
    EXPECT_EQ(Utf8(FormatScaleText(100.0F, 65636.0F, 100.0F)), "100%");
}

TEST_F(ScaleText, ComparesNaNAndOutOfRangeComponentsAsZero) {
    // NaN and values beyond the 32-bit range round to -2147483648, whose low 16 bits are 0.
    EXPECT_EQ(Utf8(FormatScaleText(kNaNf, 0.0F)), "NaN%");
    EXPECT_EQ(Utf8(FormatScaleText(kNaNf, 5.0F)), "NaN%, 5%");
    EXPECT_EQ(Utf8(FormatScaleText(1e10F, 0.0F, 0.0F)), "10000000000%");
    EXPECT_EQ(Utf8(FormatScaleText(kInff, 0.0F)), "\u221E%");
    EXPECT_EQ(Utf8(FormatScaleText(0.0F, -kInff, 5.0F)), "0%, -\u221E%, 5%");
}

TEST_F(ScaleText, UsesTheLocaleDecimalSeparator) {
    qzhost::HostControls::Get().SetLocale("de_DE");
    EXPECT_EQ(Utf8(FormatScaleText(50.0F, 75.5F)), "50%, 75,5%");
    EXPECT_EQ(Utf8(FormatScaleText(100.4F, 99.6F, 100.0F)), "100,4%");
}

} // namespace
} // namespace readout_test
