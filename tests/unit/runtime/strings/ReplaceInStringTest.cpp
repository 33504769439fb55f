// Text patterns with "@0" to "@9", and ASCII widening.
#include <gtest/gtest.h>

#include "StringTestSupport.h"
#include "host/U_TextConversion.h"
#include "kitcore/utility/NumberText.h"

namespace strings_test {
namespace {

using kitcore::utility::AsciiToUTF16;
using kitcore::utility::ReplaceInString;

TEST(ReplaceInString, PutsEachArgumentInPlaceOfItsPlaceholder) {
    EXPECT_EQ(ReplaceInString(U16(u"@0, @1"), U16(u"320.0"), U16(u"240.0")), U16(u"320.0, 240.0"));
    EXPECT_EQ(ReplaceInString(U16(u"@0%"), U16(u"50.0")), U16(u"50.0%"));
}

TEST(ReplaceInString, HandlesAllTenPlaceholdersInAnyOrder) {
    const auto result =
        ReplaceInString(U16(u"@9@8@7@6@5@4@3@2@1@0"), U16(u"a"), U16(u"b"), U16(u"c"), U16(u"d"),
                        U16(u"e"), U16(u"f"), U16(u"g"), U16(u"h"), U16(u"i"), U16(u"j"));
    EXPECT_EQ(result, U16(u"jihgfedcba"));
}

TEST(ReplaceInString, RepeatsAPlaceholderThatAppearsTwice) {
    EXPECT_EQ(ReplaceInString(U16(u"@0-@0"), U16(u"x")), U16(u"x-x"));
}

TEST(ReplaceInString, UnusedArgumentsAreEmpty) {
    EXPECT_EQ(ReplaceInString(U16(u"@0@1x @2 @3"), U16(u"1")), U16(u"1x  "));
}

TEST(ReplaceInString, DoesNotScanReplacementTextsAgain) {
    EXPECT_EQ(ReplaceInString(U16(u"@0 @1"), U16(u"@1"), U16(u"B")), U16(u"@1 B"));
    EXPECT_EQ(ReplaceInString(U16(u"@0"), U16(u"@0@0")), U16(u"@0@0"));
}

TEST(ReplaceInString, KeepsAnAtSignThatIsNotFollowedByADigit) {
    EXPECT_EQ(ReplaceInString(U16(u"a@b @ @"), U16(u"X")), U16(u"a@b @ @"));
    EXPECT_EQ(ReplaceInString(U16(u"@@0"), U16(u"X")), U16(u"@X"));
    EXPECT_EQ(ReplaceInString(U16(u"100@"), U16(u"X")), U16(u"100@"));
}

TEST(ReplaceInString, ReadsOnlyOneDigitAfterTheAtSign) {
    EXPECT_EQ(ReplaceInString(U16(u"@10"), U16(u"zero"), U16(u"one")), U16(u"one0"));
}

TEST(ReplaceInString, EmptyPatternGivesEmptyText) {
    EXPECT_TRUE(ReplaceInString(UTF16String(), U16(u"x")).empty());
}

TEST(ReplaceInString, KeepsNonAsciiTextAndSurrogatePairs) {
    EXPECT_EQ(ReplaceInString(U16(u"\u0394 @0 \U0001F600"), U16(u"\u00B0")),
              U16(u"\u0394 \u00B0 \U0001F600"));
}

TEST(AsciiToUTF16, WidensEachByte) {
    EXPECT_EQ(AsciiToUTF16("FF", 2), U16(u"FF"));
    EXPECT_EQ(AsciiToUTF16("17E and more", 3), U16(u"17E"));
}

TEST(AsciiToUTF16, TurnsBytesAboveSevenBitsIntoReplacementCharacters) {
    EXPECT_EQ(AsciiToUTF16("a\xC3\xA9z\x80\xFF", 6), U16(u"a\uFFFD\uFFFDz\uFFFD\uFFFD"));
}

TEST(AsciiToUTF16, CopiesExactlyTheGivenLengthIncludingZeroBytes) {
    const char bytes[] = {'a', '\0', 'b'};
    const auto text = AsciiToUTF16(bytes, 3);
    ASSERT_EQ(text.size(), 3U);
    EXPECT_EQ(text[1], u'\0');
    EXPECT_EQ(text[2], u'b');
}

TEST(AsciiToUTF16, NullOrEmptyGivesEmptyText) {
    EXPECT_TRUE(AsciiToUTF16(nullptr, 5).empty());
    EXPECT_TRUE(AsciiToUTF16("abc", 0).empty());
}

TEST(U_AsciiToUTF16String, WidensUpToTheTerminatingZero) {
    EXPECT_EQ(U_AsciiToUTF16String("Web FF"), U16(u"Web FF"));
    EXPECT_EQ(U_AsciiToUTF16String("abc\xC3"), U16(u"abc\uFFFD"));
    EXPECT_TRUE(U_AsciiToUTF16String("").empty());
    EXPECT_TRUE(U_AsciiToUTF16String(nullptr).empty());
}

} // namespace
} // namespace strings_test
