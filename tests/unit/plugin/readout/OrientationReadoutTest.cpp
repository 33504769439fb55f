// The angle triple readout: orientations wrapped into a turn and their changes into half a
// turn either way; rotation triples shown as they are, revolutions included.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "InfoPal/readout/PropertyReadouts.h"
#include "ReadoutTestSupport.h"
#include "host/M_Math.h"

namespace readout_test {
namespace {

using Lines = std::array<std::string, 5>;
using OrientationReadout = ReadoutTest;

std::string Triple(const std::string& a, const std::string& b, const std::string& c) {
    return Deg(a) + ", " + Deg(b) + ", " + Deg(c);
}

TEST_F(OrientationReadout, OrientationValuesAreWrappedIntoOneTurn) {
    infopal::ShowOrientationReadout(sink, "Light", true, -90.0, 370.0, 720.0, 0.0, 0.0, 0.0);
    const ShownLines shown = sink.Only();
    EXPECT_EQ(shown.lines,
              (Lines{"Light", "Orientation:", Triple("270.0", "10.0", "0.0"), "", ""}));
    EXPECT_EQ(shown.type, 1U);
}

TEST_F(OrientationReadout, OrientationChangesAreWrappedIntoHalfATurnEitherWay) {
    infopal::ShowOrientationReadout(sink, "Light", true, 0.0, 0.0, 0.0, 190.0, -190.0, 180.0);
    EXPECT_EQ(sink.Only().lines, (Lines{"Light", "Orientation:", Triple("0.0", "0.0", "0.0"),
                                        kDeltaLabel, Triple("-170.0", "170.0", "180.0")}));
}

TEST_F(OrientationReadout, OrientationChangeOfMinusHalfATurnStays) {
    infopal::ShowOrientationReadout(sink, "L", true, 0.0, 0.0, 0.0, -180.0, 540.0, -900.0);
    // 540 wraps to 180 and -900 to -180: both ends stay as they are.
    EXPECT_EQ(sink.Only().lines[4], Triple("-180.0", "180.0", "-180.0"));
}

TEST_F(OrientationReadout, RotationTripleShowsRevolutionsUnwrapped) {
    infopal::ShowOrientationReadout(sink, "Layer", false, 400.0, 0.0, 0.0, 0.0, 0.0, 0.0);
    EXPECT_EQ(sink.Only().lines,
              (Lines{"Layer", "Rotation:", Triple("1x + 40.0", "0.0", "0.0"), "", ""}));
}

TEST_F(OrientationReadout, RotationTripleChangesAreNotWrapped) {
    infopal::ShowOrientationReadout(sink, "Layer", false, -90.0, 0.0, 0.0, 730.0, 190.0, -400.0);
    EXPECT_EQ(sink.Only().lines, (Lines{"Layer", "Rotation:", Triple("-90.0", "0.0", "0.0"),
                                        kDeltaLabel, Triple("2x + 10.0", "190.0", "-1x - 40.0")}));
}

TEST_F(OrientationReadout, OneNonZeroChangeShowsAllThreeChanges) {
    infopal::ShowOrientationReadout(sink, "L", true, 0.0, 0.0, 0.0, 0.0, 5.0, 0.0);
    EXPECT_EQ(sink.Only().lines[3], kDeltaLabel);
    EXPECT_EQ(sink.Only().lines[4], Triple("0.0", "5.0", "0.0"));
}

TEST_F(OrientationReadout, ZeroAndNegativeZeroChangesHideTheDeltaLines) {
    infopal::ShowOrientationReadout(sink, "L", true, 1.0, 2.0, 3.0, -0.0, 0.0, -0.0);
    infopal::ShowOrientationReadout(sink, "L", false, 1.0, 2.0, 3.0, 0.0, -0.0, 0.0);
    ASSERT_EQ(sink.calls.size(), 2U);
    for (const ShownLines& shown : sink.calls) {
        EXPECT_EQ(shown.lines[3], "") << shown;
        EXPECT_EQ(shown.lines[4], "") << shown;
    }
}

TEST_F(OrientationReadout, ShowsDefinedTextForNaNAndInfiniteValuesAndChanges) {
    // An infinite orientation has no remainder in a turn: it wraps to the host's one NaN,
    // which reads "NaN" whatever the sign of the infinity.
    infopal::ShowOrientationReadout(sink, "o", true, kNaN, kInf, -kInf, kNaN, kInf, 0.0);
    infopal::ShowOrientationReadout(sink, "r", false, kNaN, kInf, -kInf, 0.0, 0.0, kNaN);
    ASSERT_EQ(sink.calls.size(), 2U);
    const std::string inf_wrapped = "0x + NaN";
    const std::string minus_inf_wrapped = "0x + NaN";
    EXPECT_EQ(sink.calls[0].lines,
              (Lines{"o", "Orientation:", Triple("0x + NaN", inf_wrapped, minus_inf_wrapped),
                     kDeltaLabel, Triple("0x + NaN", inf_wrapped, "0.0")}));
    EXPECT_EQ(sink.calls[1].lines,
              (Lines{"r", "Rotation:", Triple("0x + NaN", "0x + \u221E", "-0x - \u221E"),
                     kDeltaLabel, Triple("0.0", "0.0", "0x + NaN")}));
}

TEST_F(OrientationReadout, RotationTripleBeyondTheFloatRangeShowsInfiniteAngles) {
    infopal::ShowOrientationReadout(sink, "r", false, 1e300, -1e300, 0.0, 0.0, 0.0, 0.0);
    EXPECT_EQ(sink.Only().lines[2], Triple("0x + \u221E", "-0x - \u221E", "0.0"));
}

TEST_F(OrientationReadout, NullNameIsAnEmptyHeading) {
    infopal::ShowOrientationReadout(sink, nullptr, true, 10.0, 20.0, 30.0, 0.0, 0.0, 0.0);
    EXPECT_EQ(sink.Only().lines,
              (Lines{"", "Orientation:", Triple("10.0", "20.0", "30.0"), "", ""}));
}

TEST_F(OrientationReadout, UsesTheLocaleDecimalSeparator) {
    qzhost::HostControls::Get().SetLocale("de_DE");
    infopal::ShowOrientationReadout(sink, "Licht", true, -90.5, 370.0, 0.0, 190.0, 0.0, 0.0);
    EXPECT_EQ(sink.Only().lines, (Lines{"Licht", "Orientation:", Triple("269,5", "10,0", "0,0"),
                                        kDeltaLabel, Triple("-170,0", "0,0", "0,0")}));
}

} // namespace
} // namespace readout_test
