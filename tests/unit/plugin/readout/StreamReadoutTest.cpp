// The stream readout: the property's match name, its mask membership and its value kind
// choose the readout; component counts follow the layer's three-dimensionality.
#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "InfoPal/readout/PropertyReadouts.h"
#include "ReadoutTestSupport.h"
#include "host/KVB_MatchName.h"
#include "host/KVB_StreamIDPath.h"
#include "host/PXM_Layer.h"
#include "qzhost/LiveMatchNames.h"

// Lets GoogleTest print a layer's recorded questions.
static void PrintTo(const PXM_LayerQuery& query, std::ostream* out) {
    *out << (query.what == PXM_LayerQuery::What::Kind ? "kind " : "flags ") << query.kind;
}

namespace readout_test {
namespace {

using Lines = std::array<std::string, 5>;
using Query = PXM_LayerQuery;

constexpr std::uint32_t kSingle = 0;
constexpr std::uint32_t kPoint2D = 6;
constexpr std::uint32_t kPoint3D = 18;

Query Kind(std::int32_t kind) {
    return Query{Query::What::Kind, kind};
}
Query Flags() {
    return Query{Query::What::Flags, 0};
}

/// A property path from the layer down to `stream`, through a mask when `in_mask`.
KVB_StreamIDPath PathTo(const char* stream, bool in_mask) {
    std::vector<KVB_MatchName> names;
    if (in_mask) {
        names.emplace_back("MASK_PARADE");
        names.emplace_back("MASK_ATOM");
    } else {
        names.emplace_back("TRANSFORM_GROUP");
    }
    names.emplace_back(stream);
    return KVB_StreamIDPath(std::move(names), in_mask);
}

class StreamReadout : public ReadoutTest {
protected:
    /// Shows `stream` of `layer` with the values (x, y, z) = (1, 2, 3) and the deltas
    /// (dx, dy, dz) = (0.5, 0, 0.25), and checks that the match name was released.
    void Show(PXM_Layer& layer, const char* stream, bool in_mask,
              std::uint32_t value_kind = kSingle, const char* label = "Fallback:") {
        const KVB_StreamIDPath path = PathTo(stream, in_mask);
        const std::int64_t live = qzhost::LiveMatchNameCount();
        infopal::ShowStreamReadout(sink, &layer, &path, "Layer 1", label, value_kind, 1.0F, 2.0F,
                                   3.0F, 0.5F, 0.0F, 0.25F);
        EXPECT_EQ(qzhost::LiveMatchNameCount(), live) << stream << " kept a match name";
    }

    static constexpr const char* kValues2 = "1.0, 2.0";
    static constexpr const char* kValues3 = "1.0, 2.0, 3.0";
    static constexpr const char* kDeltas2 = "0.5, 0.0";
    static constexpr const char* kDeltas3 = "0.5, 0.0, 0.2";
};

// --- One row at a time -------------------------------------------------------------------

TEST_F(StreamReadout, MaskShapeAndPaintShapeChangeNothing) {
    PXM_Layer layer(0, true);
    for (const bool in_mask : {false, true}) {
        Show(layer, "MASK_SHAPE", in_mask, kPoint2D);
        Show(layer, "PAINT_SHAPE", in_mask, kPoint3D);
    }
    EXPECT_TRUE(sink.calls.empty());
    EXPECT_TRUE(layer.Queries().empty());
}

TEST_F(StreamReadout, MaskOpacityShowsOneNumberWithoutPercentSign) {
    PXM_Layer layer(0, false);
    const KVB_StreamIDPath path = PathTo("MASK_OPACITY", true);
    infopal::ShowStreamReadout(sink, &layer, &path, "Mask 1", "ignored", kSingle, 50.0F, 0.0F, 0.0F,
                               5.0F, 0.0F, 0.0F);
    const ShownLines shown = sink.Only();
    EXPECT_EQ(shown.lines, (Lines{"Mask 1", "Mask Opacity:", "50.0", "", ""}));
    EXPECT_EQ(shown.type, 1U);
}

TEST_F(StreamReadout, MaskFeatherShowsOneNumberWithoutUnit) {
    PXM_Layer layer(0, false);
    const KVB_StreamIDPath path = PathTo("MASK_FEATHER", true);
    infopal::ShowStreamReadout(sink, &layer, &path, "Mask 1", "ignored", kPoint2D, 12.5F, 3.0F,
                               0.0F, 1.0F, 1.0F, 0.0F);
    EXPECT_EQ(sink.Only().lines, (Lines{"Mask 1", "Feather:", "12.5", "", ""}));
}

TEST_F(StreamReadout, MaskExpansionShowsOneNumberWithoutUnit) {
    PXM_Layer layer(0, false);
    const KVB_StreamIDPath path = PathTo("MASK_OFFSET", true);
    infopal::ShowStreamReadout(sink, &layer, &path, "Mask 1", "ignored", kSingle, -3.5F, 0.0F, 0.0F,
                               0.0F, 0.0F, 0.0F);
    EXPECT_EQ(sink.Only().lines, (Lines{"Mask 1", "Mask Expansion:", "-3.5", "", ""}));
}

TEST_F(StreamReadout, OpacityAndAudioLevelsBothUseTheOpacityLabel) {
    PXM_Layer layer(0, false);
    const KVB_StreamIDPath opacity = PathTo("OPACITY", false);
    const KVB_StreamIDPath audio = PathTo("AUDIO_LEVELS", false);
    infopal::ShowStreamReadout(sink, &layer, &opacity, "L", "x", kSingle, 75.0F, 0.0F, 0.0F, -5.0F,
                               0.0F, 0.0F);
    infopal::ShowStreamReadout(sink, &layer, &audio, "L", "x", kPoint2D, -6.0F, -6.5F, 0.0F, 1.0F,
                               0.0F, 0.0F);
    ASSERT_EQ(sink.calls.size(), 2U);
    EXPECT_EQ(sink.calls[0].lines, (Lines{"L", "Opacity:", "75.0", "", ""}));
    EXPECT_EQ(sink.calls[1].lines, (Lines{"L", "Opacity:", "-6.0", "", ""}));
}

TEST_F(StreamReadout, AnchorPointOfAVisualLayerIsLabelledAnchorPoint) {
    PXM_Layer flat(0, false);
    PXM_Layer deep(0, true);
    Show(flat, "ANCHOR_POINT", false);
    Show(deep, "ANCHOR_POINT", false);
    ASSERT_EQ(sink.calls.size(), 2U);
    EXPECT_EQ(sink.calls[0].lines,
              (Lines{"Layer 1", "Anchor Point:", kValues2, kDeltaLabel, kDeltas2}));
    EXPECT_EQ(sink.calls[1].lines,
              (Lines{"Layer 1", "Anchor Point:", kValues3, kDeltaLabel, kDeltas3}));
}

TEST_F(StreamReadout, AnchorPointOfACameraOrLightIsLabelledPOI) {
    PXM_Layer camera(1, false);
    PXM_Layer light(2, false);
    Show(camera, "ANCHOR_POINT", false);
    Show(light, "ANCHOR_POINT", false);
    ASSERT_EQ(sink.calls.size(), 2U);
    for (const ShownLines& shown : sink.calls) {
        EXPECT_EQ(shown.lines, (Lines{"Layer 1", "POI:", kValues3, kDeltaLabel, kDeltas3}));
    }
}

TEST_F(StreamReadout, PositionHasTwoComponentsOnAFlatLayerAndThreeOnA3DLayer) {
    PXM_Layer flat(0, false);
    PXM_Layer deep(0, true);
    Show(flat, "POSITION", false);
    Show(deep, "POSITION", false);
    ASSERT_EQ(sink.calls.size(), 2U);
    EXPECT_EQ(sink.calls[0].lines,
              (Lines{"Layer 1", "Position:", kValues2, kDeltaLabel, kDeltas2}));
    EXPECT_EQ(sink.calls[1].lines,
              (Lines{"Layer 1", "Position:", kValues3, kDeltaLabel, kDeltas3}));
}

TEST_F(StreamReadout, PositionDeltaOfZeroInTheShownComponentsHidesTheDeltaLines) {
    // On a flat layer only dx and dy count.
    PXM_Layer flat(0, false);
    const KVB_StreamIDPath path = PathTo("POSITION", false);
    infopal::ShowStreamReadout(sink, &flat, &path, "L", "x", kSingle, 320.0F, 240.0F, 0.0F, 0.0F,
                               -0.0F, 7.0F);
    EXPECT_EQ(sink.Only().lines, (Lines{"L", "Position:", "320.0, 240.0", "", ""}));
}

TEST_F(StreamReadout, ScaleHasTwoComponentsOnAFlatLayerAndThreeOnA3DLayer) {
    PXM_Layer flat(0, false);
    PXM_Layer light(2, false);
    const KVB_StreamIDPath path = PathTo("SCALE", false);
    infopal::ShowStreamReadout(sink, &flat, &path, "L", "x", kSingle, 100.0F, 100.0F, 101.0F, 0.0F,
                               0.0F, 1.0F);
    infopal::ShowStreamReadout(sink, &light, &path, "L", "x", kSingle, 100.0F, 100.0F, 101.0F, 0.0F,
                               0.0F, 1.0F);
    ASSERT_EQ(sink.calls.size(), 2U);
    EXPECT_EQ(sink.calls[0].lines, (Lines{"L", "Scale:", "100%", "", ""}));
    EXPECT_EQ(sink.calls[1].lines,
              (Lines{"L", "Scale:", "100%, 100%, 101%", kDeltaLabel, "0%, 0%, 1%"}));
}

TEST_F(StreamReadout, OrientationStreamReadsPositionWithThreePlainNumbers) {
    PXM_Layer layer(0, true);
    const KVB_StreamIDPath path = PathTo("ORIENTATION", false);
    infopal::ShowStreamReadout(sink, &layer, &path, "L", "x", kSingle, -90.0F, 370.0F, 720.0F,
                               190.0F, 0.0F, 0.0F);
    EXPECT_EQ(sink.Only().lines,
              (Lines{"L", "Position:", "-90.0, 370.0, 720.0", kDeltaLabel, "190.0, 0.0, 0.0"}));
    EXPECT_TRUE(layer.Queries().empty());
}

TEST_F(StreamReadout, XAndYRotationsShowTheirOwnLabels) {
    PXM_Layer layer(0, true);
    const KVB_StreamIDPath x_path = PathTo("ROTATE_X", false);
    const KVB_StreamIDPath y_path = PathTo("ROTATE_Y", false);
    infopal::ShowStreamReadout(sink, &layer, &x_path, "L", "x", kSingle, 400.0F, 9.0F, 9.0F, 0.0F,
                               9.0F, 9.0F);
    infopal::ShowStreamReadout(sink, &layer, &y_path, "L", "x", kSingle, -45.0F, 9.0F, 9.0F,
                               -360.0F, 9.0F, 9.0F);
    ASSERT_EQ(sink.calls.size(), 2U);
    EXPECT_EQ(sink.calls[0].lines,
              (Lines{"L", "Rotation (x):", std::string("1x + 40.0") + kDeg, "", ""}));
    EXPECT_EQ(sink.calls[1].lines, (Lines{"L", "Rotation (y):", std::string("-45.0") + kDeg,
                                          kDeltaLabel, std::string("-1x - 0.0") + kDeg}));
}

TEST_F(StreamReadout, ZRotationIsLabelledRotationOnAFlatLayer) {
    PXM_Layer flat(0, false);
    const KVB_StreamIDPath path = PathTo("ROTATE_Z", false);
    infopal::ShowStreamReadout(sink, &flat, &path, "L", "x", kSingle, 30.0F, 0.0F, 0.0F, 15.0F,
                               0.0F, 0.0F);
    EXPECT_EQ(sink.Only().lines, (Lines{"L", "Rotation:", std::string("30.0") + kDeg, kDeltaLabel,
                                        std::string("15.0") + kDeg}));
}

TEST_F(StreamReadout, ZRotationIsLabelledRotationZOnA3DLayer) {
    PXM_Layer deep(0, true);
    PXM_Layer camera(1, false);
    const KVB_StreamIDPath path = PathTo("ROTATE_Z", false);
    infopal::ShowStreamReadout(sink, &deep, &path, "L", "x", kSingle, 30.0F, 0.0F, 0.0F, 0.0F, 0.0F,
                               0.0F);
    infopal::ShowStreamReadout(sink, &camera, &path, "L", "x", kSingle, 30.0F, 0.0F, 0.0F, 0.0F,
                               0.0F, 0.0F);
    ASSERT_EQ(sink.calls.size(), 2U);
    for (const ShownLines& shown : sink.calls) {
        EXPECT_EQ(shown.lines, (Lines{"L", "Rotation (z):", std::string("30.0") + kDeg, "", ""}));
    }
}

TEST_F(StreamReadout, AnyOtherStreamInsideAMaskReadsValueWithOneNumber) {
    PXM_Layer layer(0, false);
    Show(layer, "MASK_VERTICES", true, kPoint2D);
    Show(layer, "MASK_VERTICES", true, kPoint3D);
    Show(layer, "MASK_VERTICES", true, kSingle);
    ASSERT_EQ(sink.calls.size(), 3U);
    for (const ShownLines& shown : sink.calls) {
        EXPECT_EQ(shown.lines, (Lines{"Layer 1", "Value:", "1.0", "", ""}));
    }
}

TEST_F(StreamReadout, AnyOtherStreamOfValueKind6OutsideAMaskReadsPointWithTwoComponents) {
    PXM_Layer layer(0, true);
    Show(layer, "EFFECT_POINT", false, kPoint2D);
    EXPECT_EQ(sink.Only().lines, (Lines{"Layer 1", "Point:", kValues2, kDeltaLabel, kDeltas2}));
    EXPECT_TRUE(layer.Queries().empty());
}

TEST_F(StreamReadout, AnyOtherStreamOfValueKind18OutsideAMaskReadsPointWithThreeComponents) {
    PXM_Layer layer(0, false);
    Show(layer, "EFFECT_POINT_3D", false, kPoint3D);
    EXPECT_EQ(sink.Only().lines, (Lines{"Layer 1", "Point:", kValues3, kDeltaLabel, kDeltas3}));
    EXPECT_TRUE(layer.Queries().empty());
}

TEST_F(StreamReadout, AnyOtherStreamOfAnotherValueKindUsesTheCallersLabel) {
    PXM_Layer layer(0, false);
    Show(layer, "EFFECT_SLIDER", false, kSingle, "Blur Radius:");
    Show(layer, "EFFECT_SLIDER", false, 7, "Amount:");
    ASSERT_EQ(sink.calls.size(), 2U);
    EXPECT_EQ(sink.calls[0].lines, (Lines{"Layer 1", "Blur Radius:", "1.0", "", ""}));
    EXPECT_EQ(sink.calls[1].lines, (Lines{"Layer 1", "Amount:", "1.0", "", ""}));
}

TEST_F(StreamReadout, NullNameAndFallbackLabelAreEmptyLines) {
    PXM_Layer layer(0, false);
    const KVB_StreamIDPath path = PathTo("EFFECT_SLIDER", false);
    infopal::ShowStreamReadout(sink, &layer, &path, nullptr, nullptr, kSingle, 2.0F, 0.0F, 0.0F,
                               0.0F, 0.0F, 0.0F);
    EXPECT_EQ(sink.Only().lines, (Lines{"", "", "2.0", "", ""}));
}

TEST_F(StreamReadout, MissingLayerOrPathShowsNothing) {
    PXM_Layer layer(0, false);
    const KVB_StreamIDPath path = PathTo("POSITION", false);
    infopal::ShowStreamReadout(sink, nullptr, &path, "L", "x", kSingle, 1.0F, 2.0F, 3.0F, 0.0F,
                               0.0F, 0.0F);
    infopal::ShowStreamReadout(sink, &layer, nullptr, "L", "x", kSingle, 1.0F, 2.0F, 3.0F, 0.0F,
                               0.0F, 0.0F);
    EXPECT_TRUE(sink.calls.empty());
}

TEST_F(StreamReadout, EmptyPathReadsAsAnyOtherStream) {
    PXM_Layer layer(0, false);
    const KVB_StreamIDPath path;
    infopal::ShowStreamReadout(sink, &layer, &path, "L", "Fallback:", kSingle, 1.0F, 0.0F, 0.0F,
                               0.0F, 0.0F, 0.0F);
    EXPECT_EQ(sink.Only().lines, (Lines{"L", "Fallback:", "1.0", "", ""}));
}

TEST_F(StreamReadout, SingleValuesGiveDefinedTextForNaNAndInfinities) {
    PXM_Layer layer(0, false);
    const KVB_StreamIDPath opacity = PathTo("OPACITY", false);
    const KVB_StreamIDPath feather = PathTo("MASK_FEATHER", true);
    infopal::ShowStreamReadout(sink, &layer, &opacity, "L", "x", kSingle,
                               std::numeric_limits<float>::quiet_NaN(), 0.0F, 0.0F, 0.0F, 0.0F,
                               0.0F);
    infopal::ShowStreamReadout(sink, &layer, &feather, "L", "x", kSingle,
                               -std::numeric_limits<float>::infinity(), 0.0F, 0.0F, 0.0F, 0.0F,
                               0.0F);
    ASSERT_EQ(sink.calls.size(), 2U);
    EXPECT_EQ(sink.calls[0].lines[2], "nan");
    EXPECT_EQ(sink.calls[1].lines[2], "-inf");
}

TEST_F(StreamReadout, UsesTheLocaleDecimalSeparator) {
    qzhost::HostControls::Get().SetLocale("de_DE");
    PXM_Layer layer(0, true);
    Show(layer, "MASK_OPACITY", true);
    Show(layer, "POSITION", false);
    Show(layer, "ROTATE_Z", false);
    Show(layer, "EFFECT_SLIDER", false, kSingle, "Betrag:");
    ASSERT_EQ(sink.calls.size(), 4U);
    EXPECT_EQ(sink.calls[0].lines, (Lines{"Layer 1", "Mask Opacity:", "1,0", "", ""}));
    EXPECT_EQ(sink.calls[1].lines,
              (Lines{"Layer 1", "Position:", "1,0, 2,0, 3,0", kDeltaLabel, "0,5, 0,0, 0,2"}));
    EXPECT_EQ(sink.calls[2].lines, (Lines{"Layer 1", "Rotation (z):", std::string("1,0") + kDeg,
                                          kDeltaLabel, std::string("0,5") + kDeg}));
    EXPECT_EQ(sink.calls[3].lines, (Lines{"Layer 1", "Betrag:", "1,0", "", ""}));
}

// --- How the layer is asked -----------------------------------------------------------------

TEST_F(StreamReadout, AsksKindZeroFirstAndReadsTheFlagOnlyForAVisualLayer) {
    PXM_Layer flat(0, false);
    PXM_Layer deep(0, true);
    PXM_Layer camera(1, false);
    PXM_Layer light(2, false);
    PXM_Layer other(5, true);
    for (PXM_Layer* layer : {&flat, &deep, &camera, &light, &other}) {
        Show(*layer, "POSITION", false);
    }
    EXPECT_EQ(flat.Queries(), (std::vector<Query>{Kind(0), Flags(), Kind(1), Kind(2)}));
    EXPECT_EQ(deep.Queries(), (std::vector<Query>{Kind(0), Flags()}));
    EXPECT_EQ(camera.Queries(), (std::vector<Query>{Kind(0), Kind(1)}));
    EXPECT_EQ(light.Queries(), (std::vector<Query>{Kind(0), Kind(1), Kind(2)}));
    EXPECT_EQ(other.Queries(), (std::vector<Query>{Kind(0), Kind(1), Kind(2)}));
}

TEST_F(StreamReadout, AnchorPointAsksKindZeroOnceMoreForItsLabel) {
    PXM_Layer light(2, false);
    PXM_Layer deep(0, true);
    Show(light, "ANCHOR_POINT", false);
    Show(deep, "ANCHOR_POINT", false);
    EXPECT_EQ(light.Queries(), (std::vector<Query>{Kind(0), Kind(0), Kind(1), Kind(2)}));
    EXPECT_EQ(deep.Queries(), (std::vector<Query>{Kind(0), Kind(0), Flags()}));
}

TEST_F(StreamReadout, AsksTheLayerOnlyWhereTheComponentCountOrLabelDependsOnIt) {
    PXM_Layer layer(0, false);
    for (const char* stream :
         {"MASK_SHAPE", "PAINT_SHAPE", "MASK_OPACITY", "MASK_FEATHER", "MASK_OFFSET", "ORIENTATION",
          "ROTATE_X", "ROTATE_Y", "OPACITY", "AUDIO_LEVELS", "SOMETHING_ELSE"}) {
        Show(layer, stream, false, kPoint3D);
        Show(layer, stream, true, kPoint2D);
    }
    EXPECT_TRUE(layer.Queries().empty());
}

TEST_F(StreamReadout, ThreeDimensionalSwitchOfACameraOrLightChangesNothing) {
    for (const std::int32_t kind : {1, 2}) {
        PXM_Layer off(kind, false);
        PXM_Layer on(kind, true);
        Show(off, "POSITION", false);
        Show(on, "POSITION", false);
    }
    ASSERT_EQ(sink.calls.size(), 4U);
    for (const ShownLines& shown : sink.calls) {
        EXPECT_EQ(shown.lines[2], kValues3) << shown;
    }
}

TEST_F(StreamReadout, ReleasesTheMatchNameWhenAHostOperationThrows) {
    PXM_Layer layer(0, false);
    const KVB_StreamIDPath path = PathTo("POSITION", false);
    const std::int64_t live = qzhost::LiveMatchNameCount();
    qzhost::HostControls::Get().SetThrow(qzhost::op::kStringLookup, "lookup failed");
    EXPECT_THROW(infopal::ShowStreamReadout(sink, &layer, &path, "L", "x", kSingle, 1.0F, 2.0F,
                                            3.0F, 0.0F, 0.0F, 0.0F),
                 std::runtime_error);
    EXPECT_EQ(qzhost::LiveMatchNameCount(), live);
    EXPECT_TRUE(sink.calls.empty());
}

TEST_F(StreamReadout, ReadsTheStreamAtTheTailOfThePath) {
    // A path through a position group whose property is the opacity reads as opacity.
    PXM_Layer layer(0, false);
    std::vector<KVB_MatchName> names;
    names.emplace_back("POSITION");
    names.emplace_back("OPACITY");
    const KVB_StreamIDPath path(std::move(names), false);
    infopal::ShowStreamReadout(sink, &layer, &path, "L", "x", kPoint2D, 60.0F, 0.0F, 0.0F, 0.0F,
                               0.0F, 0.0F);
    EXPECT_EQ(sink.Only().lines, (Lines{"L", "Opacity:", "60.0", "", ""}));
}

TEST_F(StreamReadout, ShowsNoViolationOfTheHostsThreadContract) {
    PXM_Layer layer(0, true);
    Show(layer, "POSITION", true);
    EXPECT_TRUE(qzhost::HostControls::Get().Violations().empty());
}

} // namespace
} // namespace readout_test
