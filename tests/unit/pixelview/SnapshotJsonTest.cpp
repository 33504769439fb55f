// The JSON of `qzhost inspect --json`, written without a JSON document: each piece spelled
// as the host's JSON library spells it, and whole snapshots of the running panel equal,
// byte for byte, to what the host script's "snapshot" op gives.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

#include "BuildPaths.h"
#include "PixelViewTestSupport.h"
#include "pixelview/PanelReader.h"
#include "pixelview/PanelText.h"
#include "pixelview/PixelViewHost.h"
#include "pixelview/SnapshotJson.h"
#include "pixelview/TextBuffer.h"
#include "qzhost/MainLoop.h"
#include "qzhost/UnicodeText.h"
#include "script/Values.h"

namespace qzhost::pixelview {
namespace {

using script::Json;

std::string Dumped(const Json& value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string NumberOutText(double value) {
    TextBuffer out;
    AppendNumberOut(value, out);
    return std::string(out.View());
}

std::string DoubleText(double value) {
    TextBuffer out;
    AppendJsonDouble(value, out);
    return std::string(out.View());
}

std::string StringText(const std::string& text) {
    TextBuffer out;
    AppendJsonString(text, out);
    return std::string(out.View());
}

TEST(PixelViewSnapshotJson, NumbersAreWrittenAsTheHostScriptWritesItsOutputNumbers) {
    const double inf = std::numeric_limits<double>::infinity();
    for (const double v : {0.0,
                           -0.0,
                           1.0,
                           206.0,
                           0.25,
                           -5.0,
                           -0.5,
                           4294967295.0,
                           4294967296.0,
                           9007199254740992.0,
                           9007199254740994.0,
                           -9007199254740992.0,
                           1e-7,
                           1e21,
                           1e300,
                           123456789.125,
                           static_cast<double>(0.1f),
                           static_cast<double>(0.7132f),
                           5e-324,
                           std::numeric_limits<double>::quiet_NaN(),
                           inf,
                           -inf}) {
        EXPECT_EQ(NumberOutText(v), Dumped(script::NumberOut(v))) << v;
    }
    std::mt19937_64 random(7);
    for (int i = 0; i < 20000; ++i) {
        // Any double, any float, and whole numbers of every size.
        const double bits = std::bit_cast<double>(random());
        const double single = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        const double whole = std::ldexp(static_cast<double>(random() >> 11), -(i % 64));
        for (const double v : {bits, single, whole, -whole}) {
            ASSERT_EQ(NumberOutText(v), Dumped(script::NumberOut(v))) << v;
        }
    }
}

TEST(PixelViewSnapshotJson, DoublesAreWrittenAsTheJsonLibraryWritesThem) {
    std::mt19937_64 random(11);
    for (int i = 0; i < 20000; ++i) {
        const double bits = std::bit_cast<double>(random());
        const double single = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        for (const double v : {bits, single, std::floor(single), 45.0, -0.0, 0.0}) {
            if (std::isfinite(v)) {
                ASSERT_EQ(DoubleText(v), Dumped(Json(v))) << v;
            } else {
                ASSERT_EQ(DoubleText(v), "null") << v;
            }
        }
    }
}

TEST(PixelViewSnapshotJson, StringsAreEscapedAsTheJsonLibraryEscapesThem) {
    std::string controls;
    for (int c = 0; c < 0x20; ++c) {
        controls += static_cast<char>(c);
    }
    for (const std::string& text :
         {std::string(), std::string("R :"), controls, std::string("\"quoted\" \\ /slash/ \x7f"),
          std::string("caf\xc3\xa9 \xe2\x82\xac \xf0\x9f\x8e\xa8"), std::string("cut \xe2\x82"),
          std::string("\xff\xfe bytes"), std::string("\xc0\xaf overlong"),
          std::string("\xed\xa0\x80 surrogate"), std::string("\xf4\x90\x80\x80 beyond")}) {
        EXPECT_EQ(StringText(text), Dumped(Json(text))) << Dumped(Json(text));
    }
    std::mt19937 random(3);
    for (int i = 0; i < 20000; ++i) {
        std::string text(random() % 40, '\0');
        for (char& c : text) {
            // Mostly text, some control characters, some bytes of UTF-8 sequences.
            const unsigned pick = random() % 10;
            c = static_cast<char>(pick < 5   ? 0x20 + random() % 0x60
                                  : pick < 7 ? random() % 0x20
                                             : 0x80 + random() % 0x80);
        }
        ASSERT_EQ(StringText(text), Dumped(Json(text))) << Dumped(Json(text));
    }
}

TEST(PixelViewSnapshotJson, Utf16TextBecomesTheUtf8OfTheHostsOwnConversion) {
    std::mt19937 random(5);
    std::string converted;
    for (int i = 0; i < 20000; ++i) {
        std::u16string text(random() % 10, u'\0');
        for (char16_t& unit : text) {
            // Plain text, other characters, and surrogates alone and in pairs.
            const unsigned pick = random() % 4;
            unit = static_cast<char16_t>(pick == 0   ? 0x20 + random() % 0x60
                                         : pick == 1 ? random() % 0x10000
                                         : pick == 2 ? 0xD800 + random() % 0x400
                                                     : 0xDC00 + random() % 0x400);
        }
        AssignUtf8(text, converted);
        ASSERT_EQ(converted, strings::Utf16ToUtf8(text)) << i;
    }
}

#ifdef QZ_INFOPAL_LIBRARY

/// The host with the Info panel open, as `qzhost inspect` sets it up.
class PixelViewRunningPanel : public ::testing::Test {
protected:
    void SetUp() override {
        MainLoop::Get().AdoptCurrentThread();
        settings_.plugin = QZ_INFOPAL_LIBRARY;
        settings_.projectDepth = 2;
        settings_.prefs = folder_.File("prefs.txt");
    }

    /// The state read after the last delivery, as JSON and as text, against the host
    /// script's snapshot of the same panel.
    void ExpectSameAsSnapshot(PixelViewHost& host, const std::string& what) {
        host.Read(state_);
        TextBuffer written;
        written.Append('{');
        AppendSnapshotMembers(state_, written);
        written.Append('}');
        const Json snapshot = host.Snapshot();
        EXPECT_EQ(written.View(), Dumped(snapshot)) << what;
        EXPECT_EQ(PanelText(state_), PanelText(snapshot)) << what;
    }

    pixelviewtest::TempFolder folder_;
    HostSettings settings_;
    PanelState state_;
};

TEST_F(PixelViewRunningPanel, TheStateReadForEachPointIsTheHostScriptsSnapshot) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    const std::vector<PixelARGB> pixels = {
        {1, 4, 1, 0.25f},    {0, 1, 1, 1},   {0.5f, -0.5f, 2.5f, 1e-3f},
        {1, nan, inf, -inf}, {nan, 0, 0, 0}, {1, -0.0f, 0.7132f, 65535},
    };
    for (const char* mode : {"auto", "web", "hsb", "percent"}) {
        PixelViewHost host(settings_);
        host.ChooseDisplayMode(FindDisplayMode(mode));
        host.ShowTextLines("chart \"one\".exr", "tab\there, caf\xc3\xa9", "");
        for (std::size_t i = 0; i < pixels.size(); ++i) {
            const Point at = {static_cast<double>(i) * 10.5, -3.25};
            host.Deliver(pixels[i], at,
                         i % 2 == 0 ? std::optional<Point>()
                                    : std::optional<Point>(Point{1e6, -0.5}));
            ExpectSameAsSnapshot(host, std::string(mode) + " pixel " + std::to_string(i));
        }
    }
}

TEST_F(PixelViewRunningPanel, AStateReadAgainAfterAnotherPointHoldsOnlyThatPoint) {
    PixelViewHost host(settings_);
    // A point with an origin, then one without: the relative rows go, nothing stays behind.
    host.Deliver({1, 1, 0, 0}, {5, 5}, Point{1, 1});
    ExpectSameAsSnapshot(host, "with an origin");
    host.Deliver({0, 1, 1, 1}, {205, 125}, std::nullopt);
    ExpectSameAsSnapshot(host, "without an origin");
}

#endif

} // namespace
} // namespace qzhost::pixelview
