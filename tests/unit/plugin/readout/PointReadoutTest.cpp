// Position and labelled point readouts: the heading, the label, the point text, and the
// delta lines unless every delta component is exactly zero.
#include <gtest/gtest.h>

#include <limits>

#include "InfoPal/readout/PropertyReadouts.h"
#include "ReadoutTestSupport.h"

namespace readout_test {
namespace {

using Lines = std::array<std::string, 5>;
using PointReadout = ReadoutTest;

TEST_F(PointReadout, TwoComponentPositionWithoutChangeShowsThreeLines) {
    infopal::ShowPositionReadout2D(sink, "Layer 1", 320.0F, 240.0F, 0.0F, 0.0F);
    const ShownLines shown = sink.Only();
    EXPECT_EQ(shown.lines, (Lines{"Layer 1", "Position:", "320.0, 240.0", "", ""}));
    EXPECT_EQ(shown.type, 1U);
}

TEST_F(PointReadout, TwoComponentPositionShowsItsChange) {
    infopal::ShowPositionReadout2D(sink, "Layer 1", 320.0F, 240.0F, -4.5F, 0.0F);
    EXPECT_EQ(sink.Only().lines,
              (Lines{"Layer 1", "Position:", "320.0, 240.0", kDeltaLabel, "-4.5, 0.0"}));
}

TEST_F(PointReadout, ZeroPositionDeltaShowsOnlyTheFirstThreeLines) {
    infopal::ShowPositionReadout3D(sink, "Cam", 1.0F, 2.0F, 3.0F, 0.0F, 0.0F, 0.0F);
    const ShownLines shown = sink.Only();
    EXPECT_EQ(shown.lines, (Lines{"Cam", "Position:", "1.0, 2.0, 3.0", "", ""}));
    EXPECT_EQ(shown.type, 1U);
}

TEST_F(PointReadout, OneNonZeroDeltaComponentShowsEveryDeltaComponent) {
    infopal::ShowPositionReadout3D(sink, "Cam", 1.0F, 2.0F, 3.0F, 0.0F, 0.0F, 0.5F);
    EXPECT_EQ(sink.Only().lines,
              (Lines{"Cam", "Position:", "1.0, 2.0, 3.0", kDeltaLabel, "0.0, 0.0, 0.5"}));
}

TEST_F(PointReadout, NegativeZeroDeltaCountsAsZero) {
    infopal::ShowPositionReadout3D(sink, "a", 1.0F, 2.0F, 3.0F, -0.0F, 0.0F, -0.0F);
    infopal::ShowPositionReadout2D(sink, "b", 1.0F, 2.0F, -0.0F, -0.0F);
    infopal::ShowPointReadout2D(sink, "c", "Point:", 1.0F, 2.0F, -0.0F, 0.0F);
    ASSERT_EQ(sink.calls.size(), 3U);
    for (const ShownLines& shown : sink.calls) {
        EXPECT_EQ(shown.lines[3], "") << shown;
        EXPECT_EQ(shown.lines[4], "") << shown;
    }
}

TEST_F(PointReadout, LabelledPointsShowTheCallersLabel) {
    infopal::ShowPointReadout2D(sink, "Effect", "Center:", 10.0F, 20.0F, 1.0F, 2.0F);
    infopal::ShowPointReadout3D(sink, "Effect", "Target:", 1.0F, 2.0F, 3.0F, 0.0F, 0.0F, 0.0F);
    ASSERT_EQ(sink.calls.size(), 2U);
    EXPECT_EQ(sink.calls[0].lines,
              (Lines{"Effect", "Center:", "10.0, 20.0", kDeltaLabel, "1.0, 2.0"}));
    EXPECT_EQ(sink.calls[1].lines, (Lines{"Effect", "Target:", "1.0, 2.0, 3.0", "", ""}));
}

TEST_F(PointReadout, NullNameAndLabelAreEmptyLines) {
    infopal::ShowPointReadout2D(sink, nullptr, nullptr, 1.0F, 2.0F, 0.0F, 0.0F);
    infopal::ShowPositionReadout2D(sink, nullptr, 1.0F, 2.0F, 0.0F, 0.0F);
    ASSERT_EQ(sink.calls.size(), 2U);
    EXPECT_EQ(sink.calls[0].lines, (Lines{"", "", "1.0, 2.0", "", ""}));
    EXPECT_EQ(sink.calls[1].lines, (Lines{"", "Position:", "1.0, 2.0", "", ""}));
}

TEST_F(PointReadout, HeadingIsTheCallersTextConvertedAsItIs) {
    infopal::ShowPositionReadout2D(sink, "  Ebene \xC3\x84 ^I ", 0.0F, 0.0F, 0.0F, 0.0F);
    EXPECT_EQ(sink.Only().lines[0], "  Ebene \xC3\x84 ^I ");
}

TEST_F(PointReadout, ShowsDefinedTextForNaNAndInfiniteValuesAndDeltas) {
    infopal::ShowPositionReadout2D(sink, "n", kNaNf, kInff, kNaNf, 0.0F);
    infopal::ShowPointReadout3D(sink, "n", "P:", -kInff, 0.0F, 1.0F, 0.0F, kInff, 0.0F);
    ASSERT_EQ(sink.calls.size(), 2U);
    EXPECT_EQ(sink.calls[0].lines,
              (Lines{"n", "Position:", "NaN, \u221E", kDeltaLabel, "NaN, 0.0"}));
    EXPECT_EQ(sink.calls[1].lines,
              (Lines{"n", "P:", "-\u221E, 0.0, 1.0", kDeltaLabel, "0.0, \u221E, 0.0"}));
}

TEST_F(PointReadout, UsesTheLocaleDecimalSeparator) {
    qzhost::HostControls::Get().SetLocale("de_DE");
    infopal::ShowPositionReadout2D(sink, "Ebene", 320.0F, 240.5F, 0.5F, 0.0F);
    EXPECT_EQ(sink.Only().lines,
              (Lines{"Ebene", "Position:", "320,0, 240,5", kDeltaLabel, "0,5, 0,0"}));
}

} // namespace
} // namespace readout_test
