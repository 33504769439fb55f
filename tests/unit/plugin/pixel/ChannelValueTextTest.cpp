// One colour channel as text in each notation, in English and German number text.
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "InfoPal/readout/ChannelValueText.h"
#include "qzhost/HostControls.h"
#include "qzhost/MainLoop.h"
#include "qzhost/UnicodeText.h"

namespace {

namespace mode = infopal::pixel_mode;
using kitcore::utility::UTF16String;

class ChannelValueText : public ::testing::Test {
protected:
    void SetUp() override {
        qzhost::HostControls::Get().Reset();
        qzhost::MainLoop::Get().AdoptCurrentThread();
    }
    void TearDown() override { qzhost::HostControls::Get().Reset(); }

    static std::string Format(infopal::PixelDisplayMode m, float value) {
        UTF16String out;
        infopal::FormatChannelValue(m, value, out);
        return qzhost::strings::Utf16ToUtf8(out);
    }
    // What a mode without a rule leaves: the text that was there.
    static std::string FormatOver(infopal::PixelDisplayMode m, float value,
                                  const std::u16string& before) {
        UTF16String out(before.begin(), before.end());
        infopal::FormatChannelValue(m, value, out);
        return qzhost::strings::Utf16ToUtf8(out);
    }
    static void German() { qzhost::HostControls::Get().SetLocale("de_DE"); }
};

constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

TEST_F(ChannelValueText, EightBitScaleRoundsHalvesToTheEvenNeighbour) {
    EXPECT_EQ(Format(mode::kBpc8, 1.0f), "255");
    EXPECT_EQ(Format(mode::kBpc8, 0.5f), "128");   // 127.5
    EXPECT_EQ(Format(mode::kBpc8, -0.5f), "-128"); // -127.5
    EXPECT_EQ(Format(mode::kBpc8, 2.5f / 255.0f), "2");
    EXPECT_EQ(Format(mode::kBpc8, 0.0f), "0");
}

TEST_F(ChannelValueText, EightBitScaleShowsOverRangeAndNegativeValues) {
    EXPECT_EQ(Format(mode::kBpc8, 2.0f), "510");
    EXPECT_EQ(Format(mode::kBpc8, -0.5f), "-128"); // -127.5, a half to the even neighbour
    EXPECT_EQ(Format(mode::kBpc8, -1.0f), "-255");
}

TEST_F(ChannelValueText, TenBitScaleTopsOutAt1023) {
    EXPECT_EQ(Format(mode::kBpc10, 1.0f), "1023");
    EXPECT_EQ(Format(mode::kBpc10, 0.5f), "512");    // 511.5
    EXPECT_EQ(Format(mode::kBpc10, 1.5f), "1534");   // 1534.5
    EXPECT_EQ(Format(mode::kBpc10, -0.25f), "-256"); // -255.75
}

TEST_F(ChannelValueText, SixteenBitScaleTopsOutAt32768) {
    EXPECT_EQ(Format(mode::kBpc16, 1.0f), "32768");
    EXPECT_EQ(Format(mode::kBpc16, 0.5f), "16384");
    EXPECT_EQ(Format(mode::kBpc16, 2.0f), "65536");
    EXPECT_EQ(Format(mode::kBpc16, -1.0f), "-32768");
}

TEST_F(ChannelValueText, WebIsUpperCaseHexadecimalWithoutPadding) {
    EXPECT_EQ(Format(mode::kWeb, 0.02f), "5"); // not 05
    EXPECT_EQ(Format(mode::kWeb, 10.0f / 255.0f), "A");
    EXPECT_EQ(Format(mode::kWeb, 1.0f), "FF");
    EXPECT_EQ(Format(mode::kWeb, 0.0f), "0");
}

TEST_F(ChannelValueText, WebShowsOverRangeValuesWithMoreDigits) {
    EXPECT_EQ(Format(mode::kWeb, 382.0f / 255.0f), "17E");
    // 1.5 x 255 is 382.5, whose half goes to the even neighbour, 382.
    EXPECT_EQ(Format(mode::kWeb, 1.5f), "17E");
    EXPECT_EQ(Format(mode::kWeb, 383.0f / 255.0f), "17F");
}

TEST_F(ChannelValueText, WebShowsNegativeValuesAsTwosComplement) {
    EXPECT_EQ(Format(mode::kWeb, -1.0f / 255.0f), "FFFFFFFF");
    EXPECT_EQ(Format(mode::kWeb, -1.0f), "FFFFFF01");
}

TEST_F(ChannelValueText, PercentHasOneDecimalAndASign) {
    EXPECT_EQ(Format(mode::kPercent, 0.123456f), "12.3%");
    EXPECT_EQ(Format(mode::kPercent, 1.0f), "100.0%");
    EXPECT_EQ(Format(mode::kPercent, 0.5f), "50.0%");
    EXPECT_EQ(Format(mode::kPercent, 0.0f), "0.0%");
}

TEST_F(ChannelValueText, PercentShowsOverRangeAndNegativeValues) {
    EXPECT_EQ(Format(mode::kPercent, 2.5f), "250.0%");
    EXPECT_EQ(Format(mode::kPercent, -0.25f), "-25.0%");
}

TEST_F(ChannelValueText, DecimalHasFourDecimals) {
    EXPECT_EQ(Format(mode::kDecimal, 0.5f), "0.5000");
    EXPECT_EQ(Format(mode::kDecimal, 0.0f), "0.0000");
    EXPECT_EQ(Format(mode::kDecimal, 1.5f), "1.5000");
    EXPECT_EQ(Format(mode::kDecimal, -0.125f), "-0.1250");
}

TEST_F(ChannelValueText, GermanNumbersUseTheDecimalComma) {
    German();
    EXPECT_EQ(Format(mode::kPercent, 0.123456f), "12,3%");
    EXPECT_EQ(Format(mode::kPercent, -0.25f), "-25,0%");
    EXPECT_EQ(Format(mode::kPercent, 2.5f), "250,0%");
    EXPECT_EQ(Format(mode::kDecimal, 0.5f), "0,5000");
    EXPECT_EQ(Format(mode::kDecimal, -0.125f), "-0,1250");
    EXPECT_EQ(Format(mode::kDecimal, 1.5f), "1,5000");
    EXPECT_EQ(Format(mode::kDecimal, 0.0f), "0,0000");
}

TEST_F(ChannelValueText, GermanWholeNumbersAndWebAreUnchanged) {
    German();
    EXPECT_EQ(Format(mode::kBpc8, 0.5f), "128");
    EXPECT_EQ(Format(mode::kBpc8, -0.5f), "-128");
    EXPECT_EQ(Format(mode::kBpc16, 2.0f), "65536");
    EXPECT_EQ(Format(mode::kBpc10, 0.0f), "0");
    EXPECT_EQ(Format(mode::kWeb, 1.5f), "17E");
    EXPECT_EQ(Format(mode::kWeb, -1.0f / 255.0f), "FFFFFFFF");
}

TEST_F(ChannelValueText, AutoFollowsTheProjectDepth) {
    auto& host = qzhost::HostControls::Get();
    host.SetProjectDepth(0);
    EXPECT_EQ(Format(mode::kAuto, 0.5f), "128");
    host.SetProjectDepth(1);
    EXPECT_EQ(Format(mode::kAuto, 0.5f), "16384");
    host.SetProjectDepth(2);
    EXPECT_EQ(Format(mode::kAuto, 0.5f), "0.5000");
    host.SetProjectDepth(std::nullopt);
    EXPECT_EQ(Format(mode::kAuto, 0.5f), "128");
}

TEST_F(ChannelValueText, AutoWithAnUnknownDepthLeavesTheTextAsItWas) {
    qzhost::HostControls::Get().SetProjectDepth(3);
    EXPECT_EQ(FormatOver(mode::kAuto, 0.5f, u"old"), "old");
    qzhost::HostControls::Get().SetProjectDepth(-1);
    EXPECT_EQ(FormatOver(mode::kAuto, 0.5f, u"old"), "old");
}

TEST_F(ChannelValueText, HSBAndUnknownModesLeaveTheTextAsItWas) {
    EXPECT_EQ(FormatOver(mode::kHSB, 0.5f, u"old"), "old");
    EXPECT_EQ(FormatOver(8, 0.5f, u"old"), "old");
    EXPECT_EQ(FormatOver(9, 0.5f, u"old"), "old");
    EXPECT_EQ(FormatOver(65535, 0.5f, u"old"), "old");
}

TEST_F(ChannelValueText, AProjectQueryErrorIsThrownAsItsCodeInEveryMode) {
    qzhost::HostControls::Get().SetError("project_query", 17);
    for (infopal::PixelDisplayMode m = 0; m <= 9; ++m) {
        UTF16String out(u"old");
        try {
            infopal::FormatChannelValue(m, 0.5f, out);
            ADD_FAILURE() << "mode " << m << " did not throw";
        } catch (QZ_Err code) {
            EXPECT_EQ(code, 17) << "mode " << m;
        }
        EXPECT_EQ(qzhost::strings::Utf16ToUtf8(out), "old") << "mode " << m;
    }
}

TEST_F(ChannelValueText, NotFiniteValuesGiveDefinedText) {
    // The host's rounding saturates infinities and takes NaN as 0.
    EXPECT_EQ(Format(mode::kBpc8, kInf), "2147483647");
    EXPECT_EQ(Format(mode::kBpc8, -kInf), "-2147483648");
    EXPECT_EQ(Format(mode::kBpc8, kNaN), "0");
    EXPECT_EQ(Format(mode::kWeb, kInf), "7FFFFFFF");
    EXPECT_EQ(Format(mode::kWeb, -kInf), "80000000");
    EXPECT_EQ(Format(mode::kWeb, kNaN), "0");
    EXPECT_EQ(Format(mode::kPercent, kInf), "\u221E%");
    EXPECT_EQ(Format(mode::kPercent, kNaN), "NaN%");
    EXPECT_EQ(Format(mode::kDecimal, -kInf), "-\u221E");
}

TEST_F(ChannelValueText, HugeValuesStayDefined) {
    const float huge = std::numeric_limits<float>::max();
    EXPECT_EQ(Format(mode::kBpc16, huge), "2147483647");
    // Times 100 leaves the float range: the percentage is an infinity.
    EXPECT_EQ(Format(mode::kPercent, huge), "\u221E%");
    EXPECT_EQ(Format(mode::kPercent, -huge), "-\u221E%");
}

} // namespace
