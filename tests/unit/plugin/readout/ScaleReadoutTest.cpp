// Scale readouts: "Scale:", the scale text, and the change in the same percent forms.
#include <gtest/gtest.h>

#include <limits>

#include "InfoPal/readout/PropertyReadouts.h"
#include "ReadoutTestSupport.h"

namespace readout_test {
namespace {

using Lines = std::array<std::string, 5>;
using ScaleReadout = ReadoutTest;

TEST_F(ScaleReadout, UniformScaleWithoutChangeShowsOnePercentage) {
    infopal::ShowScaleReadout3D(sink, "Layer", 100.0F, 100.0F, 100.0F, 0.0F, 0.0F, 0.0F);
    const ShownLines shown = sink.Only();
    EXPECT_EQ(shown.lines, (Lines{"Layer", "Scale:", "100%", "", ""}));
    EXPECT_EQ(shown.type, 1U);
}

TEST_F(ScaleReadout, ShowsTheChangeWithTheSameCollapsingRule) {
    infopal::ShowScaleReadout2D(sink, "Layer", 50.0F, 75.5F, 10.0F, 10.2F);
    EXPECT_EQ(sink.Only().lines, (Lines{"Layer", "Scale:", "50%, 75.5%", kDeltaLabel, "10%"}));
}

TEST_F(ScaleReadout, ShowsEveryComponentOfADifferingChange) {
    infopal::ShowScaleReadout3D(sink, "L", 100.4F, 99.6F, 100.0F, 0.0F, 0.0F, 1.0F);
    EXPECT_EQ(sink.Only().lines, (Lines{"L", "Scale:", "100.4%", kDeltaLabel, "0%, 0%, 1%"}));
}

TEST_F(ScaleReadout, ThreeDifferingComponentsShowThreePercentages) {
    infopal::ShowScaleReadout3D(sink, "L", 100.0F, 100.0F, 101.0F, 0.0F, 0.0F, 0.0F);
    EXPECT_EQ(sink.Only().lines, (Lines{"L", "Scale:", "100%, 100%, 101%", "", ""}));
}

TEST_F(ScaleReadout, NegativeZeroChangeCountsAsZero) {
    infopal::ShowScaleReadout2D(sink, "L", 100.0F, 100.0F, -0.0F, -0.0F);
    EXPECT_EQ(sink.Only().lines, (Lines{"L", "Scale:", "100%", "", ""}));
}

TEST_F(ScaleReadout, NaNChangeIsShown) {
    infopal::ShowScaleReadout2D(sink, "L", 100.0F, 100.0F, std::numeric_limits<float>::quiet_NaN(),
                                0.0F);
    EXPECT_EQ(sink.Only().lines, (Lines{"L", "Scale:", "100%", kDeltaLabel, "NaN%"}));
}

TEST_F(ScaleReadout, NullNameIsAnEmptyHeading) {
    infopal::ShowScaleReadout2D(sink, nullptr, 100.0F, 100.0F, 0.0F, 0.0F);
    EXPECT_EQ(sink.Only().lines, (Lines{"", "Scale:", "100%", "", ""}));
}

TEST_F(ScaleReadout, UsesTheLocaleDecimalSeparator) {
    qzhost::HostControls::Get().SetLocale("de_DE");
    infopal::ShowScaleReadout2D(sink, "Ebene", 50.0F, 75.5F, 0.5F, 0.0F);
    EXPECT_EQ(sink.Only().lines, (Lines{"Ebene", "Scale:", "50%, 75,5%", kDeltaLabel, "0,5%, 0%"}));
}

} // namespace
} // namespace readout_test
