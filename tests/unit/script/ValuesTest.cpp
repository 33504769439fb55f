// The value encodings of host scripts: string and number arguments, and the output forms
// of numbers and UTF-16 text.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "qzhost/HostControls.h"
#include "script/ScriptErrors.h"
#include "script/Values.h"

namespace {

using qzhost::script::ArgumentError;
using qzhost::script::Json;
using qzhost::script::NarrowArg;
using qzhost::script::NumberArg;
using qzhost::script::NumberOut;
using qzhost::script::UTF16Arg;
using qzhost::script::UTF16ToUTF8;
using qzhost::script::UTF8ToUTF16;

class ScriptValues : public ::testing::Test {
protected:
    void SetUp() override { qzhost::HostControls::Get().Reset(); }
    void TearDown() override { qzhost::HostControls::Get().Reset(); }
};

TEST_F(ScriptValues, NumberArgTakesJsonNumbers) {
    EXPECT_EQ(NumberArg(Json(3), "x"), 3.0);
    EXPECT_EQ(NumberArg(Json(-2.25), "x"), -2.25);
}

TEST_F(ScriptValues, NumberArgSpellsNonFiniteValuesAndNegativeZeroAsStrings) {
    EXPECT_TRUE(std::isnan(NumberArg(Json("nan"), "x")));
    EXPECT_EQ(NumberArg(Json("inf"), "x"), INFINITY);
    EXPECT_EQ(NumberArg(Json("-inf"), "x"), -INFINITY);
    const double negative_zero = NumberArg(Json("-0"), "x");
    EXPECT_EQ(negative_zero, 0.0);
    EXPECT_TRUE(std::signbit(negative_zero));
}

TEST_F(ScriptValues, NumberArgRefusesOtherStringsAndOtherTypes) {
    EXPECT_THROW(NumberArg(Json("NaN"), "x"), ArgumentError);
    EXPECT_THROW(NumberArg(Json("1.5"), "x"), ArgumentError);
    EXPECT_THROW(NumberArg(Json(true), "x"), ArgumentError);
    EXPECT_THROW(NumberArg(Json(nullptr), "x"), ArgumentError);
}

TEST_F(ScriptValues, NumberOutWritesWholeNumbersWithoutFraction) {
    EXPECT_EQ(NumberOut(206.0).dump(), "206");
    EXPECT_EQ(NumberOut(-3.0).dump(), "-3");
    EXPECT_EQ(NumberOut(0.5).dump(), "0.5");
}

TEST_F(ScriptValues, NumberOutWritesNonFiniteValuesAsStrings) {
    EXPECT_EQ(NumberOut(NAN), Json("nan"));
    EXPECT_EQ(NumberOut(INFINITY), Json("inf"));
    EXPECT_EQ(NumberOut(-INFINITY), Json("-inf"));
}

TEST_F(ScriptValues, NumberOutKeepsTheSignOfNegativeZero) {
    EXPECT_EQ(NumberOut(-0.0).dump(), "-0.0");
    EXPECT_EQ(NumberOut(0.0).dump(), "0");
}

TEST_F(ScriptValues, UTF16ToUTF8WritesLoneSurrogatesAsReplacementCharacters) {
    EXPECT_EQ(UTF16ToUTF8(u"a\xD800"
                          u"b"),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(UTF16ToUTF8(u"\xDC00"), "\xEF\xBF\xBD");
    // A low surrogate before a high one is two lone surrogates.
    EXPECT_EQ(UTF16ToUTF8(u"\xDC00\xD800"), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST_F(ScriptValues, UTF16ToUTF8JoinsSurrogatePairs) {
    EXPECT_EQ(UTF16ToUTF8(u"\xD83D\xDE00"), "\xF0\x9F\x98\x80");
    EXPECT_EQ(UTF16ToUTF8(u"\x0394\x00B0"), "\xCE\x94\xC2\xB0");
}

TEST_F(ScriptValues, UTF8ToUTF16DecodesEveryLength) {
    EXPECT_EQ(UTF8ToUTF16("A\xCE\x94\xE2\x82\xAC\xF0\x9F\x98\x80"),
              kitcore::utility::UTF16String(u"A\x0394\x20AC\xD83D\xDE00"));
}

TEST_F(ScriptValues, UTF8ToUTF16ReplacesBytesThatFormNoCharacter) {
    EXPECT_EQ(UTF8ToUTF16("\xFF"
                          "a"),
              kitcore::utility::UTF16String(u"\xFFFD"
                                            u"a"));
    EXPECT_EQ(UTF8ToUTF16("\xC0\x80"), kitcore::utility::UTF16String(u"\xFFFD\xFFFD"));
}

TEST_F(ScriptValues, UTF16ArgTakesStringsNullAndCodeUnits) {
    EXPECT_EQ(UTF16Arg(Json("x\xCE\x94"), "s"), kitcore::utility::UTF16String(u"x\x0394"));
    EXPECT_FALSE(UTF16Arg(Json(nullptr), "s").has_value());
    const Json units = Json::parse(R"({"utf16": [55296, 65, 0]})");
    const auto text = UTF16Arg(units, "s");
    ASSERT_TRUE(text.has_value());
    ASSERT_EQ(text->size(), 3u);
    EXPECT_EQ((*text)[0], u'\xD800');
    EXPECT_EQ((*text)[1], u'A');
    EXPECT_EQ((*text)[2], u'\0');
}

TEST_F(ScriptValues, UTF16ArgRefusesUnitsOutOfRangeAndOtherShapes) {
    EXPECT_THROW(UTF16Arg(Json::parse(R"({"utf16": [65536]})"), "s"), ArgumentError);
    EXPECT_THROW(UTF16Arg(Json::parse(R"({"utf16": [-1]})"), "s"), ArgumentError);
    EXPECT_THROW(UTF16Arg(Json::parse(R"({"utf16": "A"})"), "s"), ArgumentError);
    EXPECT_THROW(UTF16Arg(Json::parse(R"({"utf16": [65], "more": 1})"), "s"), ArgumentError);
    EXPECT_THROW(UTF16Arg(Json(5), "s"), ArgumentError);
}

TEST_F(ScriptValues, NarrowArgEncodesStringsInTheHostCodePage) {
    EXPECT_EQ(NarrowArg(Json("\xC3\xA9"), "s"), std::string("\xC3\xA9"));
    qzhost::HostControls::Get().SetCodepage("cp1252");
    EXPECT_EQ(NarrowArg(Json("\xC3\xA9"), "s"), std::string("\xE9"));
}

TEST_F(ScriptValues, NarrowArgTakesNullAndRawBytes) {
    EXPECT_FALSE(NarrowArg(Json(nullptr), "s").has_value());
    const auto bytes = NarrowArg(Json::parse(R"({"hex": "41fF00"})"), "s");
    ASSERT_TRUE(bytes.has_value());
    EXPECT_EQ(*bytes, std::string("A\xFF\0", 3));
}

TEST_F(ScriptValues, NarrowArgRefusesMalformedHex) {
    EXPECT_THROW(NarrowArg(Json::parse(R"({"hex": "414"})"), "s"), ArgumentError);
    EXPECT_THROW(NarrowArg(Json::parse(R"({"hex": "4g"})"), "s"), ArgumentError);
    EXPECT_THROW(NarrowArg(Json::parse(R"({"hex": 65})"), "s"), ArgumentError);
    EXPECT_THROW(NarrowArg(Json::parse(R"({"bytes": "41"})"), "s"), ArgumentError);
    EXPECT_THROW(NarrowArg(Json(true), "s"), ArgumentError);
}

} // namespace
