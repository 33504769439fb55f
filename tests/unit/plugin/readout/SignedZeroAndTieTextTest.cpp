// Zeros that carry a minus sign and values exactly halfway between two one-digit texts:
// points and angles go through the number text (ties to the even digit, the sign of zero
// kept), single values through the number pattern (the same, as printf rounds).
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "InfoPal/readout/PropertyReadouts.h"
#include "ReadoutTestSupport.h"
#include "host/KVB_MatchName.h"
#include "host/KVB_StreamIDPath.h"
#include "host/PXM_Layer.h"

namespace readout_test {
namespace {

using Lines = std::array<std::string, 5>;
using SignedZeroAndTieText = ReadoutTest;

std::string Triple(const std::string& a, const std::string& b, const std::string& c) {
    return Deg(a) + ", " + Deg(b) + ", " + Deg(c);
}

TEST_F(SignedZeroAndTieText, NegativeZeroRotationReadsMinusZeroWithoutDeltaLines) {
    infopal::ShowRotationReadout(sink, "Layer", -0.0F, -0.0F);
    EXPECT_EQ(sink.Only().lines, (Lines{"Layer", "Rotation:", Deg("-0.0"), "", ""}));
}

TEST_F(SignedZeroAndTieText, WholeNegativeTurnsOfOrientationWrapToMinusZero) {
    // The remainder of -360 and -720 in a turn is -0, which is not below 0: no turn is
    // added. The change -360 is not zero, and wraps to -0 as well.
    infopal::ShowOrientationReadout(sink, "Light", true, -360.0, -720.0, 360.0, -360.0, 0.0, 0.0);
    EXPECT_EQ(sink.Only().lines, (Lines{"Light", "Orientation:", Triple("-0.0", "-0.0", "0.0"),
                                        kDeltaLabel, Triple("-0.0", "0.0", "0.0")}));
}

TEST_F(SignedZeroAndTieText, NegativeZeroDeltaComponentShowsBesideANonZeroOne) {
    infopal::ShowPositionReadout2D(sink, "Layer", 320.25F, -0.04F, -0.0F, 0.5F);
    EXPECT_EQ(sink.Only().lines,
              (Lines{"Layer", "Position:", "320.2, -0.0", kDeltaLabel, "-0.0, 0.5"}));
}

TEST_F(SignedZeroAndTieText, SingleValuesRoundTiesToEvenAndKeepTheSignOfZero) {
    PXM_Layer layer(0, false);
    const KVB_StreamIDPath path(std::vector<KVB_MatchName>{KVB_MatchName("MASK_FEATHER")}, true);
    for (const float value : {12.25F, -3.75F, -0.04F, -0.0F}) {
        infopal::ShowStreamReadout(sink, &layer, &path, "Mask 1", "x", 0, value, 0.0F, 0.0F, 0.0F,
                                   0.0F, 0.0F);
    }
    ASSERT_EQ(sink.calls.size(), 4U);
    EXPECT_EQ(sink.calls[0].lines[2], "12.2");
    EXPECT_EQ(sink.calls[1].lines[2], "-3.8");
    EXPECT_EQ(sink.calls[2].lines[2], "-0.0");
    EXPECT_EQ(sink.calls[3].lines[2], "-0.0");
}

TEST_F(SignedZeroAndTieText, ScaleOfMinusHalfComparesAsZero) {
    // -0.5 + 0.5 is 0 and 0.4 + 0.5 truncates to 0: one percentage, the first unrounded.
    infopal::ShowScaleReadout2D(sink, "Layer", -0.5F, 0.4F, -0.0F, -0.0F);
    EXPECT_EQ(sink.Only().lines, (Lines{"Layer", "Scale:", "-0.5%", "", ""}));
}

} // namespace
} // namespace readout_test
