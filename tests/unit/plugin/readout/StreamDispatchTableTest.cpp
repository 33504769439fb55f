// Every named stream and the streams that no name matches, on flat and 3-D layers of each
// kind, inside and outside a mask, with each value kind: the first matching name decides
// the readout, mask membership and value kind only decide for the streams without a name.
#include <gtest/gtest.h>

#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "InfoPal/readout/PropertyReadouts.h"
#include "ReadoutTestSupport.h"
#include "host/KVB_StreamIDPath.h"
#include "host/PXM_Layer.h"
#include "qzhost/LiveMatchNames.h"

namespace readout_test {
namespace {

using Lines = std::array<std::string, 5>;

struct LayerCase {
    std::int32_t kind;
    bool three_d_switch;
    // Visual layers with the switch, cameras and lights.
    bool three_d;
    bool visual;
};

const std::vector<LayerCase> kLayers = {
    {0, false, false, true}, {0, true, true, true},   {1, false, true, false},
    {1, true, true, false},  {2, false, true, false}, {2, true, true, false},
};

constexpr std::uint32_t kValueKinds[] = {0, 6, 18};

// Values (1, 2, 3), deltas (0.5, 0, 0.25).
const std::string kDeg1 = std::string("1.0") + kDeg;
const std::string kDegDelta = std::string("0.5") + kDeg;

Lines Point(const char* label, bool three) {
    return three ? Lines{"Layer 1", label, "1.0, 2.0, 3.0", kDeltaLabel, "0.5, 0.0, 0.2"}
                 : Lines{"Layer 1", label, "1.0, 2.0", kDeltaLabel, "0.5, 0.0"};
}

Lines Single(const char* label) {
    return Lines{"Layer 1", label, "1.0", "", ""};
}

Lines Rotation(const char* label) {
    return Lines{"Layer 1", label, kDeg1, kDeltaLabel, kDegDelta};
}

/// What a stream shows: nothing, or the five lines.
using Expectation = std::optional<Lines>;

Expectation Expected(const std::string& stream, const LayerCase& layer, bool in_mask,
                     std::uint32_t value_kind) {
    if (stream == "MASK_SHAPE" || stream == "PAINT_SHAPE") {
        return std::nullopt;
    }
    if (stream == "MASK_OPACITY") {
        return Single("Mask Opacity:");
    }
    if (stream == "MASK_FEATHER") {
        return Single("Feather:");
    }
    if (stream == "MASK_OFFSET") {
        return Single("Mask Expansion:");
    }
    if (stream == "ANCHOR_POINT") {
        return Point(layer.visual ? "Anchor Point:" : "POI:", layer.three_d);
    }
    if (stream == "POSITION") {
        return Point("Position:", layer.three_d);
    }
    if (stream == "SCALE") {
        // 1, 2, 3 differ; the deltas round to 1, 0, 0.
        return layer.three_d
                   ? Lines{"Layer 1", "Scale:", "1%, 2%, 3%", kDeltaLabel, "0.5%, 0%, 0.2%"}
                   : Lines{"Layer 1", "Scale:", "1%, 2%", kDeltaLabel, "0.5%, 0%"};
    }
    if (stream == "ORIENTATION") {
        return Point("Position:", true);
    }
    if (stream == "ROTATE_X") {
        return Rotation("Rotation (x):");
    }
    if (stream == "ROTATE_Y") {
        return Rotation("Rotation (y):");
    }
    if (stream == "ROTATE_Z") {
        return Rotation(layer.three_d ? "Rotation (z):" : "Rotation:");
    }
    if (stream == "OPACITY" || stream == "AUDIO_LEVELS") {
        return Single("Opacity:");
    }
    if (in_mask) {
        return Single("Value:");
    }
    if (value_kind == 6) {
        return Point("Point:", false);
    }
    if (value_kind == 18) {
        return Point("Point:", true);
    }
    return Single("Fallback:");
}

class StreamDispatchTable : public ReadoutTest,
                            public ::testing::WithParamInterface<const char*> {};

TEST_P(StreamDispatchTable, ShowsTheReadoutOfTheFirstMatchingRow) {
    const std::string stream = GetParam();
    for (const LayerCase& layer_case : kLayers) {
        for (const bool in_mask : {false, true}) {
            for (const std::uint32_t value_kind : kValueKinds) {
                std::ostringstream trace;
                trace << "kind " << layer_case.kind << ", switch " << layer_case.three_d_switch
                      << ", mask " << in_mask << ", value kind " << value_kind;
                SCOPED_TRACE(trace.str());

                PXM_Layer layer(layer_case.kind, layer_case.three_d_switch);
                std::vector<KVB_MatchName> names;
                names.emplace_back(in_mask ? "MASK_ATOM" : "TRANSFORM_GROUP");
                names.emplace_back(stream.c_str());
                const KVB_StreamIDPath path(std::move(names), in_mask);
                const std::int64_t live = qzhost::LiveMatchNameCount();
                sink.calls.clear();

                infopal::ShowStreamReadout(sink, &layer, &path, "Layer 1", "Fallback:", value_kind,
                                           1.0F, 2.0F, 3.0F, 0.5F, 0.0F, 0.25F);

                EXPECT_EQ(qzhost::LiveMatchNameCount(), live) << "the match name was kept";
                const Expectation expected = Expected(stream, layer_case, in_mask, value_kind);
                if (!expected) {
                    EXPECT_TRUE(sink.calls.empty());
                    continue;
                }
                ASSERT_EQ(sink.calls.size(), 1U);
                EXPECT_EQ(sink.calls[0].lines, *expected);
                EXPECT_EQ(sink.calls[0].type, 1U);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    EveryRow, StreamDispatchTable,
    ::testing::Values("MASK_SHAPE", "PAINT_SHAPE", "MASK_OPACITY", "MASK_FEATHER", "MASK_OFFSET",
                      "ANCHOR_POINT", "POSITION", "SCALE", "ORIENTATION", "ROTATE_X", "ROTATE_Y",
                      "ROTATE_Z", "OPACITY", "AUDIO_LEVELS", "EFFECT_SLIDER"),
    [](const ::testing::TestParamInfo<const char*>& info) { return std::string(info.param); });

} // namespace
} // namespace readout_test
