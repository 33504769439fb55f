// Conversion between the host code page and UTF-16.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <unicode/ucnv.h>

#include "StringTestSupport.h"
#include "host/U_TextConversion.h"

namespace strings_test {
namespace {

// The converter's own substitution bytes for characters it cannot hold.
std::string SubstitutionBytes(const char* codepage) {
    UErrorCode status = U_ZERO_ERROR;
    UConverter* converter = ucnv_open(codepage, &status);
    EXPECT_TRUE(U_SUCCESS(status));
    char bytes[8];
    int8_t length = sizeof bytes;
    ucnv_getSubstChars(converter, bytes, &length, &status);
    ucnv_close(converter);
    EXPECT_TRUE(U_SUCCESS(status));
    return std::string(bytes, static_cast<std::size_t>(length));
}

std::string ToMB(std::u16string_view text) {
    const UTF16String wide = U16(text);
    return U_UTF16ToMBString(wide.c_str());
}

TEST_F(HostStringTest, Utf8IsTheDefaultCodePage) {
    EXPECT_EQ(U_MBToUTF16String("Gr\xC3\xBC\xC3\x9F"
                                "e \xE2\x82\xAC \xF0\x9F\x98\x80"),
              U16(u"Gr\u00FC\u00DFe \u20AC \U0001F600"));
    EXPECT_EQ(ToMB(u"Gr\u00FC\u00DFe \u20AC \U0001F600"), "Gr\xC3\xBC\xC3\x9F"
                                                          "e \xE2\x82\xAC \xF0\x9F\x98\x80");
}

TEST_F(HostStringTest, InvalidUtf8BecomesReplacementCharacters) {
    // A lead byte followed by a non-continuation byte: one U+FFFD, the byte is kept.
    EXPECT_EQ(U_MBToUTF16String("a\xC3(b"), U16(u"a\uFFFD(b"));
    // Bytes that never occur in UTF-8.
    EXPECT_EQ(U_MBToUTF16String("\xFF\xFE"), U16(u"\uFFFD\uFFFD"));
    // A stray continuation byte.
    EXPECT_EQ(U_MBToUTF16String("x\x80y"), U16(u"x\uFFFDy"));
    // A sequence cut short by the end of the text: one U+FFFD for its maximal part.
    EXPECT_EQ(U_MBToUTF16String("end\xE2\x82"), U16(u"end\uFFFD"));
    // An overlong encoding and an encoded surrogate are not valid either.
    EXPECT_EQ(U_MBToUTF16String("\xC0\xAF"), U16(u"\uFFFD\uFFFD"));
    EXPECT_EQ(U_MBToUTF16String("\xED\xA0\x80"), U16(u"\uFFFD\uFFFD\uFFFD"));
}

TEST_F(HostStringTest, LoneSurrogatesBecomeTheSubstitutionInUtf8) {
    const char16_t units[] = {u'a', 0xD800, u'b', 0xDC00, 0};
    EXPECT_EQ(U_UTF16ToMBString(units), "a\xEF\xBF\xBD"
                                        "b\xEF\xBF\xBD");
}

TEST_F(HostStringTest, NullTextsGiveEmptyResults) {
    EXPECT_TRUE(U_MBToUTF16String(nullptr).empty());
    EXPECT_TRUE(U_UTF16ToMBString(nullptr).empty());
    EXPECT_TRUE(U_MBToUTF16String("").empty());
    EXPECT_TRUE(ToMB(u"").empty());
}

TEST_F(HostStringTest, Windows1252ConvertsBothWays) {
    qzhost::HostControls::Get().SetCodepage("cp1252");
    EXPECT_EQ(U_MBToUTF16String("caf\xE9 \x80 \xB0"), U16(u"caf\u00E9 \u20AC \u00B0"));
    EXPECT_EQ(ToMB(u"caf\u00E9 \u20AC \u00B0"), "caf\xE9 \x80 \xB0");
}

TEST_F(HostStringTest, CharactersOutsideTheCodePageBecomeItsSubstitution) {
    qzhost::HostControls::Get().SetCodepage("cp1252");
    const std::string sub = SubstitutionBytes("cp1252");
    ASSERT_FALSE(sub.empty());
    EXPECT_EQ(ToMB(u"\u0394x"), sub + "x");
    const char16_t lone[] = {0xDBFF, u'y', 0};
    EXPECT_EQ(U_UTF16ToMBString(lone), sub + "y");
}

TEST_F(HostStringTest, ShiftJisConvertsBothWays) {
    qzhost::HostControls::Get().SetCodepage("Shift_JIS");
    EXPECT_EQ(U_MBToUTF16String("\x93\xFA\x96\x7B abc"), U16(u"\u65E5\u672C abc"));
    EXPECT_EQ(ToMB(u"\u65E5\u672C abc"), "\x93\xFA\x96\x7B abc");
    // Half-width katakana are single bytes.
    EXPECT_EQ(U_MBToUTF16String("\xB1"), U16(u"\uFF71"));
}

TEST_F(HostStringTest, InvalidShiftJisBecomesReplacementCharactersNotSubstitutes) {
    qzhost::HostControls::Get().SetCodepage("Shift_JIS");
    // 0x80 and 0xFF are not Shift_JIS bytes; a lead byte at the very end is incomplete.
    const auto text = U_MBToUTF16String("a\x80"
                                        "b\xFF"
                                        "c\x93");
    EXPECT_EQ(text, U16(u"a\uFFFDb\uFFFDc\uFFFD"));
}

TEST_F(HostStringTest, ChangingTheCodePageTakesEffectOnTheNextCall) {
    EXPECT_EQ(U_MBToUTF16String("\xE9"), U16(u"\uFFFD"));
    qzhost::HostControls::Get().SetCodepage("cp1252");
    EXPECT_EQ(U_MBToUTF16String("\xE9"), U16(u"\u00E9"));
    qzhost::HostControls::Get().SetCodepage("UTF-8");
    EXPECT_EQ(U_MBToUTF16String("\xE9"), U16(u"\uFFFD"));
}

TEST_F(HostStringTest, MegabyteTextsConvertCompletely) {
    // "a", "é", "€" and an emoji: 1, 2, 3 and 4 bytes; 1, 1, 1 and 2 UTF-16 units.
    const std::string unit = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80";
    std::string big;
    while (big.size() < (1U << 20)) {
        big += unit;
    }
    const std::size_t repeats = big.size() / unit.size();
    const UTF16String wide = U_MBToUTF16String(big.c_str());
    ASSERT_EQ(wide.size(), repeats * 5);
    const UTF16String expected_unit = U16(u"a\u00E9\u20AC\U0001F600");
    for (std::size_t i = 0; i < repeats; i += 997) {
        ASSERT_EQ(wide.compare(i * 5, 5, expected_unit), 0) << i;
    }
    EXPECT_EQ(wide.compare(wide.size() - 5, 5, expected_unit), 0);
    EXPECT_EQ(U_UTF16ToMBString(wide.c_str()), big);
}

TEST_F(HostStringTest, MegabyteOfInvalidBytesGivesOneReplacementEach) {
    const std::string bad(1U << 20, '\xFF');
    const UTF16String wide = U_MBToUTF16String(bad.c_str());
    ASSERT_EQ(wide.size(), bad.size());
    EXPECT_EQ(wide.find_first_not_of(u'\uFFFD'), UTF16String::npos);
}

TEST_F(HostStringTest, MegabyteOfWindows1252ConvertsEveryByte) {
    qzhost::HostControls::Get().SetCodepage("cp1252");
    std::string big;
    big.reserve(1U << 20);
    for (std::size_t i = 0; i < (1U << 20); ++i) {
        big += static_cast<char>(0x20 + i % 0xE0); // no zero byte
    }
    const UTF16String wide = U_MBToUTF16String(big.c_str());
    ASSERT_EQ(wide.size(), big.size());
    EXPECT_EQ(wide[0x80 - 0x20], u'\u20AC');
    EXPECT_EQ(wide[0xE9 - 0x20], u'\u00E9');
    EXPECT_EQ(U_UTF16ToMBString(wide.c_str()), big);
}

TEST_F(HostStringTest, ConversionsRunOnSeveralThreadsAtOnce) {
    qzhost::HostControls::Get().SetCodepage("Shift_JIS");
    std::vector<int> failures(4, 0);
    std::vector<std::thread> workers;
    for (std::size_t t = 0; t < failures.size(); ++t) {
        workers.emplace_back([&, t] {
            for (int i = 0; i < 500; ++i) {
                const UTF16String wide = U_MBToUTF16String("\x93\xFA\x96\x7B\x80");
                if (wide != U16(u"\u65E5\u672C\uFFFD")) {
                    ++failures[t];
                }
                if (U_UTF16ToMBString(wide.c_str()).substr(0, 4) != "\x93\xFA\x96\x7B") {
                    ++failures[t];
                }
            }
        });
    }
    for (auto& worker : workers) {
        worker.join();
    }
    for (int count : failures) {
        EXPECT_EQ(count, 0);
    }
}

TEST_F(HostStringTest, AsciiConversionIgnoresTheCodePage) {
    qzhost::HostControls::Get().SetCodepage("cp1252");
    EXPECT_EQ(U_AsciiToUTF16String("caf\xE9"), U16(u"caf\uFFFD"));
}

} // namespace
} // namespace strings_test
