// Every text argument of the suite takes null, empty, very long and invalid input in each
// code page without harm: the panel ends up with the text, or with U+FFFD in place of
// what cannot be read.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "TextLinesFixture.h"
#include "host/KVB_MatchName.h"
#include "host/KVB_StreamIDPath.h"
#include "host/PXM_Layer.h"

namespace {

using qzhost::HostControls;
using namespace textlines_test;

constexpr char16_t kFFFD = u'\uFFFD';

struct NarrowInput {
    const char* name;
    std::string codepage;
    std::string bytes;
    bool null;
    /// What the panel must hold: the exact text (UTF-8), or, when empty and `replaced`,
    /// any text that has U+FFFD.
    std::string expected;
    bool replaced;
};

std::vector<NarrowInput> NarrowInputs() {
    const std::string megabyte(1 << 20, 'm');
    return {
        {"null", "UTF-8", "", true, "", false},
        {"empty", "UTF-8", "", false, "", false},
        {"one megabyte", "UTF-8", megabyte, false, megabyte, false},
        {"invalid UTF-8", "UTF-8", "a\xC3\x28\xFF\xED\xA0\x80z", false, "", true},
        {"truncated UTF-8", "UTF-8", "ab\xE2\x82", false, "", true},
        {"invalid Shift_JIS", "Shift_JIS", "a\x81\x20\xA0\xFDz", false, "", true},
        {"truncated Shift_JIS", "Shift_JIS", "ab\x82", false, "", true},
        {"valid Shift_JIS", "Shift_JIS", "\x82\xA0", false, "\u3042", false},
        // Every byte has a character in cp1252 here, the five without a glyph too.
        {"cp1252 bytes without a glyph", "cp1252", "a\x81\x8D\x8F\x90\x9Dz", false,
         "a\u0081\u008D\u008F\u0090\u009Dz", false},
        {"valid cp1252", "cp1252", "\x80\xE9", false, "\u20AC\u00E9", false},
    };
}

class BadTextInputTest : public TextLinesFixture {
protected:
    void SetUp() override {
        TextLinesFixture::SetUp();
        OpenPanel();
    }

    /// Calls `slot` with `input` in the given code page, then checks stored line `line`
    /// (0-based) of the panel.
    void Check(const char* slot, const NarrowInput& input, std::size_t line,
               const std::function<QZ_Err(const char*)>& call) {
        SCOPED_TRACE(std::string(slot) + ", " + input.name);
        HostControls::Get().SetCodepage(input.codepage);
        const char* text = input.null ? nullptr : input.bytes.c_str();
        EXPECT_EQ(call(text), 0);
        auto* panel = Panel();
        ASSERT_NE(panel, nullptr);
        const UTF16String& stored = panel->StoredLines()[line];
        if (input.replaced) {
            EXPECT_NE(stored.find(kFFFD), UTF16String::npos) << Utf8(stored);
        } else if (input.null || input.bytes.empty()) {
            // An empty name or label leaves its line empty or with the readout's own text,
            // never anything of the input's.
            EXPECT_EQ(stored.find(kFFFD), UTF16String::npos);
        } else {
            EXPECT_NE(Utf8(stored).find(input.expected), std::string::npos);
        }
        EXPECT_TRUE(HostControls::Get().Reported().empty());
        HostControls::Get().SetCodepage("UTF-8");
    }
};

TEST_F(BadTextInputTest, NarrowTextSlotsTakeAnyBytes) {
    for (const NarrowInput& input : NarrowInputs()) {
        for (std::size_t line = 0; line < 3; ++line) {
            Check("slot 0", input, line, [&](const char* t) {
                const char* lines[3] = {"", "", ""};
                lines[line] = t;
                return Suite().SetTextLines3(lines[0], lines[1], lines[2]);
            });
        }
        for (std::size_t line = 0; line < 5; ++line) {
            Check("slot 1", input, line, [&](const char* t) {
                const char* lines[5] = {"", "", "", "", ""};
                lines[line] = t;
                return Suite().SetTextLines5(lines[0], lines[1], lines[2], lines[3], lines[4]);
            });
        }
        // The suffix ends up after the first line of the next update.
        // (A three-line update first: a change of type would drop the suffix.)
        Check("slot 2", input, 0, [&](const char* t) {
            QZ_Err err = Suite().SetTextLines3("", "", "");
            err |= Suite().SetFirstLineSuffix(t);
            return err | Suite().SetTextLines3("", "", "");
        });
    }
}

TEST_F(BadTextInputTest, NarrowTextTakesAnyBytesOffTheUIThread) {
    for (const NarrowInput& input : NarrowInputs()) {
        Check("slot 1 from a worker", input, 0, [&](const char* t) {
            QZ_Err err = -1;
            std::thread worker([&] { err = Suite().SetTextLines5(t, "", "", "", ""); });
            worker.join();
            qzhost::MainLoop::Get().Drain();
            return err;
        });
    }
}

TEST_F(BadTextInputTest, PropertyNamesAndLabelsTakeAnyBytes) {
    for (const NarrowInput& input : NarrowInputs()) {
        Check("slot 5", input, 0,
              [&](const char* t) { return Suite().ShowRotationReadout(t, 10.0F, 0.0F); });
        Check("slot 6", input, 0, [&](const char* t) {
            return Suite().ShowOrientationReadout(t, true, 1, 2, 3, 0, 0, 0);
        });
        Check("slot 7", input, 0,
              [&](const char* t) { return Suite().ShowPositionReadout2D(t, 1, 2, 0, 0); });
        Check("slot 8", input, 0,
              [&](const char* t) { return Suite().ShowPositionReadout3D(t, 1, 2, 3, 0, 0, 0); });
        Check("slot 9 name", input, 0,
              [&](const char* t) { return Suite().ShowPointReadout2D(t, "P:", 1, 2, 0, 0); });
        Check("slot 9 label", input, 1,
              [&](const char* t) { return Suite().ShowPointReadout2D("n", t, 1, 2, 0, 0); });
        Check("slot 10 name", input, 0,
              [&](const char* t) { return Suite().ShowPointReadout3D(t, "P:", 1, 2, 3, 0, 0, 0); });
        Check("slot 10 label", input, 1,
              [&](const char* t) { return Suite().ShowPointReadout3D("n", t, 1, 2, 3, 0, 0, 0); });
        Check("slot 11", input, 0,
              [&](const char* t) { return Suite().ShowScaleReadout2D(t, 1, 2, 0, 0); });
        Check("slot 12", input, 0,
              [&](const char* t) { return Suite().ShowScaleReadout3D(t, 1, 2, 3, 0, 0, 0); });
        // A stream that is in no list shows its own label with the name as heading.
        PXM_Layer layer(0, false);
        std::vector<KVB_MatchName> names;
        names.emplace_back("TRANSFORM_GROUP");
        names.emplace_back("SOME_OTHER_STREAM");
        const KVB_StreamIDPath path(std::move(names), false);
        Check("slot 13 name", input, 0, [&](const char* t) {
            return Suite().ShowStreamReadout(&layer, &path, t, "L:", 0, 1, 2, 3, 0, 0, 0);
        });
        Check("slot 13 label", input, 1, [&](const char* t) {
            return Suite().ShowStreamReadout(&layer, &path, "n", t, 0, 1, 2, 3, 0, 0, 0);
        });
    }
}

struct WideInput {
    const char* name;
    std::u16string units;
    bool null;
    bool replaced;
};

std::vector<WideInput> WideInputs() {
    return {
        {"null", u"", true, false},
        {"empty", u"", false, false},
        {"one megabyte", std::u16string(1 << 19, u'w'), false, false},
        {"lone high surrogate", std::u16string{u'a', char16_t(0xD800), u'b'}, false, true},
        {"lone low surrogate", std::u16string{char16_t(0xDC00), u'b'}, false, true},
        {"high surrogate at the end", std::u16string{u'a', char16_t(0xDBFF)}, false, true},
        {"reversed pair", std::u16string{char16_t(0xDC00), char16_t(0xD800)}, false, true},
        {"valid pair", u"\U0001F600", false, false},
    };
}

TEST_F(BadTextInputTest, WideTextSlotsTakeAnyUnits) {
    for (const WideInput& input : WideInputs()) {
        SCOPED_TRACE(input.name);
        const char16_t* text = input.null ? nullptr : input.units.c_str();
        for (int slot : {22, 23}) {
            for (std::size_t line = 0; line < (slot == 22 ? 3U : 5U); ++line) {
                const char16_t* lines[5] = {u"", u"", u"", u"", u""};
                lines[line] = text;
                const QZ_Err err = slot == 22 ? Suite().SetTextLines3W(lines[0], lines[1], lines[2])
                                              : Suite().SetTextLines5W(lines[0], lines[1], lines[2],
                                                                       lines[3], lines[4]);
                ASSERT_EQ(err, 0) << slot << " " << line;
                auto& panel = *Panel();
                // The panel keeps the units as they came; what is drawn or written out
                // shows U+FFFD where a unit stands alone.
                const UTF16String& stored = panel.StoredLines()[line];
                EXPECT_EQ(std::u16string(stored.begin(), stored.end()),
                          input.null ? std::u16string() : input.units);
                const std::string row = Utf8(Row(panel, 0).GetValue()) +
                                        Utf8(Row(panel, 1).GetValue()) +
                                        Utf8(Row(panel, 2).GetValue());
                EXPECT_EQ(row.find("\uFFFD") != std::string::npos, input.replaced) << row.size();
            }
        }
    }
}

} // namespace
