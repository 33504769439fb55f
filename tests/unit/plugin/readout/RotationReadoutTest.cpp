// The rotation readout: "Rotation:", the angle text of the value and of its change.
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "InfoPal/readout/PropertyReadouts.h"
#include "ReadoutTestSupport.h"

namespace readout_test {
namespace {

using Lines = std::array<std::string, 5>;
using RotationReadout = ReadoutTest;

TEST_F(RotationReadout, AngleBelowAFullTurnShowsOneDecimal) {
    infopal::ShowRotationReadout(sink, "Layer", 359.9F, 0.0F);
    const ShownLines shown = sink.Only();
    EXPECT_EQ(shown.lines, (Lines{"Layer", "Rotation:", Deg("359.9"), "", ""}));
    EXPECT_EQ(shown.type, 1U);
}

TEST_F(RotationReadout, AFullTurnShowsRevolutions) {
    infopal::ShowRotationReadout(sink, "Layer", 360.0F, 0.0F);
    infopal::ShowRotationReadout(sink, "Layer", -360.0F, 0.0F);
    ASSERT_EQ(sink.calls.size(), 2U);
    EXPECT_EQ(sink.calls[0].lines[2], Deg("1x + 0.0"));
    EXPECT_EQ(sink.calls[1].lines[2], Deg("-1x - 0.0"));
}

TEST_F(RotationReadout, ShowsTheChangeAsAnAngle) {
    infopal::ShowRotationReadout(sink, "Layer", 45.0F, -400.0F);
    EXPECT_EQ(sink.Only().lines,
              (Lines{"Layer", "Rotation:", Deg("45.0"), kDeltaLabel, Deg("-1x - 40.0")}));
}

TEST_F(RotationReadout, ZeroAndNegativeZeroChangesHideTheDeltaLines) {
    infopal::ShowRotationReadout(sink, "Layer", 10.0F, 0.0F);
    infopal::ShowRotationReadout(sink, "Layer", 10.0F, -0.0F);
    ASSERT_EQ(sink.calls.size(), 2U);
    for (const ShownLines& shown : sink.calls) {
        EXPECT_EQ(shown.lines, (Lines{"Layer", "Rotation:", Deg("10.0"), "", ""}));
    }
}

TEST_F(RotationReadout, ShowsDefinedTextForNaNAndInfiniteValuesAndChanges) {
    infopal::ShowRotationReadout(sink, "r", std::numeric_limits<float>::quiet_NaN(),
                                 std::numeric_limits<float>::infinity());
    EXPECT_EQ(sink.Only().lines,
              (Lines{"r", "Rotation:", Deg("0x + NaN"), kDeltaLabel, Deg("0x + \u221E")}));
}

TEST_F(RotationReadout, NullNameIsAnEmptyHeading) {
    infopal::ShowRotationReadout(sink, nullptr, 1.0F, 0.0F);
    EXPECT_EQ(sink.Only().lines, (Lines{"", "Rotation:", Deg("1.0"), "", ""}));
}

TEST_F(RotationReadout, UsesTheLocaleDecimalSeparator) {
    qzhost::HostControls::Get().SetLocale("de_DE");
    infopal::ShowRotationReadout(sink, "Ebene", 400.0F, 0.5F);
    EXPECT_EQ(sink.Only().lines,
              (Lines{"Ebene", "Rotation:", Deg("1x + 40,0"), kDeltaLabel, Deg("0,5")}));
}

} // namespace
} // namespace readout_test
