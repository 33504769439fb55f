// The slots that a "call" line names: each row of the table calls its own slot, with the
// line's arguments decoded by the types of the slot's parameters, and the slots with
// records prepare and report them.
#include <gtest/gtest.h>

#include <cstdint>
#include <iomanip>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "host/KVB_StreamIDPath.h"
#include "host/PXM_Layer.h"
#include "qzhost/HostControls.h"
#include "script/ScriptErrors.h"
#include "script/SuiteSlots.h"

namespace {

using qzhost::script::ArgumentError;
using qzhost::script::Json;
using qzhost::script::MakeSlotCall;
using qzhost::script::SlotCall;

/// One call that the recording suite received: its slot and its arguments as text.
struct Received {
    int slot;
    std::vector<std::string> args;
};

std::vector<Received> g_received;
/// The last narrow string pointer that the recording suite received.
const char* g_last_narrow = nullptr;
/// Whether the recording suite's GetFlag has an object bool to write, and its value.
bool g_has_flag = true;
bool g_flag = true;

std::string Text(const char* text) {
    g_last_narrow = text;
    return text == nullptr ? "null" : "\"" + std::string(text) + "\"";
}
std::string Text(const kitcore::utility::UTF16Char* text) {
    if (text == nullptr) {
        return "null";
    }
    std::ostringstream out;
    out << "u[";
    for (const auto* unit = text; *unit != 0; ++unit) {
        out << (unit == text ? "" : " ") << std::hex << static_cast<unsigned>(*unit);
    }
    out << "]";
    return out.str();
}
std::string Text(float value) {
    std::ostringstream out;
    out << "float " << std::setprecision(9) << value;
    return out.str();
}
std::string Text(double value) {
    std::ostringstream out;
    out << "double " << std::setprecision(17) << value;
    return out.str();
}
std::string Text(bool value) {
    return value ? "true" : "false";
}
std::string Text(std::uint32_t value) {
    return "uint32 " + std::to_string(value);
}
std::string Text(const PF_PixelFloat* pixel) {
    if (pixel == nullptr) {
        return "null";
    }
    std::ostringstream out;
    out << "pixel " << pixel->alpha << " " << pixel->red << " " << pixel->green << " "
        << pixel->blue;
    return out.str();
}
std::string Text(const M_Vector2T<double>* point) {
    if (point == nullptr) {
        return "null";
    }
    std::ostringstream out;
    out << "point " << point->x << " " << point->y;
    return out.str();
}
std::string Text(PXM_Layer* layer) {
    return layer == nullptr ? "null" : "layer";
}
std::string Text(const KVB_StreamIDPath* path) {
    return path == nullptr ? "null" : "path";
}
std::string Text(bool* flag) {
    return flag == nullptr ? "null" : std::string("bool* ") + (*flag ? "true" : "false");
}

template <typename... A>
QZ_Err Record(int slot, A... args) {
    g_received.push_back({slot, {Text(args)...}});
    return 100 + slot;
}

/// A suite whose every slot records its call; GetPixel writes 1, 2, 3, 4 and GetFlag
/// writes the object bool when there is one.
QZ_InfoPaletteSuite2 RecordingSuite() {
    QZ_InfoPaletteSuite2 suite{};
    suite.SetTextLines3 = [](auto... a) -> QZ_Err { return Record(0, a...); };
    suite.SetTextLines5 = [](auto... a) -> QZ_Err { return Record(1, a...); };
    suite.SetFirstLineSuffix = [](auto... a) -> QZ_Err { return Record(2, a...); };
    suite.GetPixel = [](PF_PixelFloat* pixel) -> QZ_Err {
        const QZ_Err result = Record(3, static_cast<const PF_PixelFloat*>(pixel));
        if (pixel != nullptr) {
            *pixel = {1.0f, 2.0f, 3.0f, 4.0f};
        }
        return result;
    };
    suite.SetPixelInfo = [](auto... a) -> QZ_Err { return Record(4, a...); };
    suite.ShowRotationReadout = [](auto... a) -> QZ_Err { return Record(5, a...); };
    suite.ShowOrientationReadout = [](auto... a) -> QZ_Err { return Record(6, a...); };
    suite.ShowPositionReadout2D = [](auto... a) -> QZ_Err { return Record(7, a...); };
    suite.ShowPositionReadout3D = [](auto... a) -> QZ_Err { return Record(8, a...); };
    suite.ShowPointReadout2D = [](auto... a) -> QZ_Err { return Record(9, a...); };
    suite.ShowPointReadout3D = [](auto... a) -> QZ_Err { return Record(10, a...); };
    suite.ShowScaleReadout2D = [](auto... a) -> QZ_Err { return Record(11, a...); };
    suite.ShowScaleReadout3D = [](auto... a) -> QZ_Err { return Record(12, a...); };
    suite.ShowStreamReadout = [](auto... a) -> QZ_Err { return Record(13, a...); };
    suite.IsPanelVisible = [](auto... a) -> QZ_Err { return Record(14, a...); };
    suite.SetPanelVisible = [](auto... a) -> QZ_Err { return Record(15, a...); };
    suite.ShowPanel = [](auto... a) -> QZ_Err { return Record(16, a...); };
    suite.SetFlag = [](auto... a) -> QZ_Err { return Record(17, a...); };
    suite.GetFlag = [](bool* flag) -> QZ_Err {
        const QZ_Err result = Record(18, flag);
        if (flag != nullptr && g_has_flag) {
            *flag = g_flag;
        }
        return result;
    };
    suite.Reserved19 = [](auto... a) -> QZ_Err { return Record(19, a...); };
    suite.Reserved20 = [](auto... a) -> QZ_Err { return Record(20, a...); };
    suite.UpdatePanelTab = [](auto... a) -> QZ_Err { return Record(21, a...); };
    suite.SetTextLines3W = [](auto... a) -> QZ_Err { return Record(22, a...); };
    suite.SetTextLines5W = [](auto... a) -> QZ_Err { return Record(23, a...); };
    return suite;
}

class SuiteSlots : public ::testing::Test {
protected:
    void SetUp() override {
        qzhost::HostControls::Get().Reset();
        g_received.clear();
        g_last_narrow = nullptr;
        g_has_flag = true;
        g_flag = true;
    }
    void TearDown() override { qzhost::HostControls::Get().Reset(); }

    /// Makes the call of `slot` from `args` (JSON text; empty for none) and runs it as the
    /// call op does; returns the output fields that it reports, "result" included.
    Json Run(int slot, const std::string& args) {
        const Json parsed = args.empty() ? Json() : Json::parse(args);
        const SlotCall call = MakeSlotCall(slot, args.empty() ? nullptr : &parsed);
        if (call.prepare) {
            call.prepare(suite_);
        }
        Json out = Json::object();
        out["result"] = call.call(suite_);
        if (call.report) {
            call.report(out);
        }
        return out;
    }

    /// The arguments of the last call received, which must be of `slot`.
    std::vector<std::string> LastArgs(int slot) {
        EXPECT_FALSE(g_received.empty());
        if (g_received.empty()) {
            return {};
        }
        EXPECT_EQ(g_received.back().slot, slot);
        return g_received.back().args;
    }

    /// The message of the ArgumentError that making the call throws ("" when none).
    static std::string Refusal(int slot, const std::string& args) {
        const Json parsed = args.empty() ? Json() : Json::parse(args);
        try {
            MakeSlotCall(slot, args.empty() ? nullptr : &parsed);
        } catch (const ArgumentError& error) {
            return error.what();
        }
        return "";
    }

    const QZ_InfoPaletteSuite2 suite_ = RecordingSuite();
};

using Strings = std::vector<std::string>;

TEST_F(SuiteSlots, EveryRowCallsItsOwnSlot) {
    const std::vector<std::string> args = {
        R"(["a", "b", "c"])",
        R"(["a", "b", "c", "d", "e"])",
        R"(["a"])",
        "",
        R"({"pixel": [1, 0.5, 0.25, 0]})",
        R"(["n", 1, 2])",
        R"(["n", true, 1, 2, 3, 4, 5, 6])",
        R"(["n", 1, 2, 3, 4])",
        R"(["n", 1, 2, 3, 4, 5, 6])",
        R"(["n", "l", 1, 2, 3, 4])",
        R"(["n", "l", 1, 2, 3, 4, 5, 6])",
        R"(["n", 1, 2, 3, 4])",
        R"(["n", 1, 2, 3, 4, 5, 6])",
        R"({"layer": {"kind": 0, "three_d": true}, "stream": "POSITION", "mask": false,
            "name": "n", "label": null, "value_kind": 3, "values": [1, 2, 3, 4, 5, 6]})",
        "[]",
        "[true]",
        "[]",
        "[false]",
        "",
        "[]",
        "[]",
        "[]",
        R"(["a", "b", "c"])",
        R"(["a", "b", "c", "d", "e"])",
    };
    ASSERT_EQ(args.size(), static_cast<std::size_t>(kQZ_InfoPaletteSuiteSlotCount));
    for (int slot = 0; slot < kQZ_InfoPaletteSuiteSlotCount; ++slot) {
        g_received.clear();
        const Json out = Run(slot, args[static_cast<std::size_t>(slot)]);
        EXPECT_EQ(out["result"], 100 + slot) << "slot " << slot;
        ASSERT_FALSE(g_received.empty()) << "slot " << slot;
        for (const Received& received : g_received) {
            EXPECT_EQ(received.slot, slot) << "row " << slot << " called another slot";
        }
    }
}

TEST_F(SuiteSlots, DecodesEachListEntryByTheTypeOfItsParameter) {
    Run(6, R"(["n", true, 0.1, "nan", "-0", "inf", "-inf", 2])");
    EXPECT_EQ(LastArgs(6), (Strings{"\"n\"", "true", "double 0.10000000000000001", "double nan",
                                    "double -0", "double inf", "double -inf", "double 2"}));
    Run(5, R"(["r", 0.1, "-0"])");
    EXPECT_EQ(LastArgs(5), (Strings{"\"r\"", "float 0.100000001", "float -0"}));
    Run(9, R"([null, "l", 1, 2, 3, 4.5])");
    EXPECT_EQ(LastArgs(9),
              (Strings{"null", "\"l\"", "float 1", "float 2", "float 3", "float 4.5"}));
    Run(15, "[false]");
    EXPECT_EQ(LastArgs(15), (Strings{"false"}));
}

TEST_F(SuiteSlots, NarrowEntriesTakeNullAndRawBytes) {
    Run(0, R"([null, {"hex": "41622e"}, "text"])");
    EXPECT_EQ(LastArgs(0), (Strings{"null", "\"Ab.\"", "\"text\""}));
}

TEST_F(SuiteSlots, WideEntriesTakeArbitraryCodeUnits) {
    Run(22, R"([{"utf16": [55296, 65]}, null, "hi"])");
    EXPECT_EQ(LastArgs(22), (Strings{"u[d800 41]", "null", "u[68 69]"}));
}

TEST_F(SuiteSlots, SlotsWithoutParametersTakeAnEmptyOrMissingList) {
    Run(14, "");
    Run(19, "[]");
    ASSERT_EQ(g_received.size(), 2u);
    EXPECT_EQ(LastArgs(19), Strings{});
    EXPECT_EQ(Refusal(14, "[1]"), "\"args\" must have 0 entries");
}

TEST_F(SuiteSlots, RefusesAListOfAnotherLength) {
    EXPECT_EQ(Refusal(5, R"(["n", 1])"), "\"args\" must have 3 entries");
    EXPECT_EQ(Refusal(23, R"(["1", "2", "3", "4", "5", "6"])"), "\"args\" must have 5 entries");
    EXPECT_EQ(Refusal(0, ""), "missing field \"args\"");
    EXPECT_EQ(Refusal(7, R"({"name": "n"})"), "\"args\" must be a list");
}

TEST_F(SuiteSlots, NamesTheFirstEntryOfTheWrongShape) {
    EXPECT_EQ(Refusal(9, R"(["n", 5, "x", true, 1, 2])"),
              "\"args\"[1] must be a string, null or {\"hex\": ...}");
    EXPECT_EQ(Refusal(6, R"(["n", 1, 1, 2, 3, 4, 5, 6])"), "\"args\"[1] must be true or false");
    EXPECT_EQ(Refusal(7, R"(["n", 1, 2, 3, 4e38])"),
              "\"args\"[4] is beyond the range of a float: give \"inf\" or \"-inf\"");
    EXPECT_EQ(Refusal(22, R"(["a", 7, null])"),
              "\"args\"[1] must be a string, null or {\"utf16\": [...]}");
    EXPECT_TRUE(g_received.empty()) << "a refused line calls nothing";
}

TEST_F(SuiteSlots, RefusesASlotOutsideTheSuite) {
    EXPECT_EQ(Refusal(-1, "[]"), "\"slot\" must be an integer from 0 to 23");
    EXPECT_EQ(Refusal(24, "[]"), "\"slot\" must be an integer from 0 to 23");
}

TEST_F(SuiteSlots, PointersOfACallPointIntoItsKeptValues) {
    const Json args = Json::parse(R"(["kept text"])");
    SlotCall call = MakeSlotCall(2, &args);
    call.call(suite_);
    const std::shared_ptr<void> kept = call.values;
    call = SlotCall{};
    ASSERT_NE(g_last_narrow, nullptr);
    EXPECT_STREQ(g_last_narrow, "kept text");
}

TEST_F(SuiteSlots, PixelOutRecordIsFilledWithMinusOneAndReportedAfterTheCall) {
    const Json out = Run(3, "{}");
    EXPECT_EQ(LastArgs(3), (Strings{"pixel -1 -1 -1 -1"}));
    EXPECT_EQ(out, Json::parse(R"({"result": 103, "pixel": [1, 2, 3, 4]})"));
    const Json null_out = Run(3, R"({"null": true})");
    EXPECT_EQ(LastArgs(3), (Strings{"null"}));
    EXPECT_EQ(null_out, Json::parse(R"({"result": 103})"));
}

TEST_F(SuiteSlots, FlagOutRecordStartsAsTheOppositeOfTheObjectsBool) {
    g_flag = true;
    EXPECT_EQ(Run(18, ""), Json::parse(R"({"result": 118, "flag": true})"));
    EXPECT_EQ(LastArgs(18), (Strings{"bool* false"}));
    g_flag = false;
    EXPECT_EQ(Run(18, ""), Json::parse(R"({"result": 118, "flag": false})"));
    EXPECT_EQ(LastArgs(18), (Strings{"bool* true"}));
    // Without a plug-in object nothing is written, and the host starts from false.
    g_has_flag = false;
    EXPECT_EQ(Run(18, R"({"null": false})"), Json::parse(R"({"result": 118, "flag": false})"));
    EXPECT_EQ(LastArgs(18), (Strings{"bool* false"}));
    EXPECT_EQ(Run(18, R"({"null": true})"), Json::parse(R"({"result": 118})"));
    EXPECT_EQ(LastArgs(18), (Strings{"null"}));
}

TEST_F(SuiteSlots, PixelInfoPassesNullForMissingRecords) {
    Run(4, R"({"pixel": [1, 0.5, 0.25, 0], "origin": [10, 20]})");
    EXPECT_EQ(LastArgs(4), (Strings{"pixel 1 0.5 0.25 0", "null", "point 10 20"}));
    Run(4, "");
    EXPECT_EQ(LastArgs(4), (Strings{"null", "null", "null"}));
    EXPECT_EQ(Refusal(4, R"({"position": [1]})"), "\"args\".position must have 2 entries");
}

TEST_F(SuiteSlots, StreamReadoutDecodesItsObject) {
    Run(13, R"({"layer": {"kind": 2, "three_d": false}, "stream": "OPACITY", "mask": false,
                "name": null, "label": "l", "value_kind": 4294967295,
                "values": [1, 2, 3, 4, 5, "nan"]})");
    EXPECT_EQ(LastArgs(13),
              (Strings{"layer", "path", "null", "\"l\"", "uint32 4294967295", "float 1", "float 2",
                       "float 3", "float 4", "float 5", "float nan"}));
    EXPECT_EQ(Refusal(13, R"({"layer": {"kind": 0}})"),
              "\"args\".layer needs \"kind\" and \"three_d\"");
}

} // namespace
