#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "respack/PropertyListJson.h"

namespace {

using nlohmann::json;
using qzrespack::PropertyListFromJson;
using ::testing::HasSubstr;

std::vector<std::uint8_t> Bytes(const std::string& text) {
    return {text.begin(), text.end()};
}

std::vector<std::uint8_t> DataOf(const json& property) {
    const qzhost::PropertyList list = PropertyListFromJson(json::array({property}));
    return list.properties.at(0).data;
}

std::string Error(const json& description) {
    try {
        PropertyListFromJson(description);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    ADD_FAILURE() << "no error for " << description.dump();
    return "";
}

TEST(PropertyListJson, FourCharacterCodeIsStoredReversed) {
    EXPECT_EQ(DataOf({{"key", "kind"}, {"fourcc", "QZgx"}}), Bytes("xgZQ"));
}

TEST(PropertyListJson, PascalStringHasALengthByteAndIsPaddedToFourBytes) {
    EXPECT_EQ(DataOf({{"key", "catg"}, {"pascal", "Ignored"}}), Bytes("\x07Ignored"));
    std::vector<std::uint8_t> expected = {2, 'a', 'b', 0};
    EXPECT_EQ(DataOf({{"key", "name"}, {"pascal", "ab"}}), expected);
    expected = {0, 0, 0, 0};
    EXPECT_EQ(DataOf({{"key", "name"}, {"pascal", ""}}), expected);
}

TEST(PropertyListJson, CStringIsTerminatedAndPadded) {
    std::vector<std::uint8_t> expected = Bytes("GPMain_InfoPal");
    expected.insert(expected.end(), {0, 0});
    EXPECT_EQ(DataOf({{"key", "8664"}, {"cstring", "GPMain_InfoPal"}}), expected);
    expected = Bytes("abc");
    expected.push_back(0);
    EXPECT_EQ(DataOf({{"key", "8664"}, {"cstring", "abc"}}), expected);
}

TEST(PropertyListJson, NumbersAreLittleEndianFromDecimalOrHex) {
    const std::vector<std::uint8_t> version = {0x00, 0x00, 0x01, 0x00};
    EXPECT_EQ(DataOf({{"key", "vers"}, {"u32", "0x00010000"}}), version);
    EXPECT_EQ(DataOf({{"key", "vers"}, {"u32", 65536}}), version);
    EXPECT_EQ(DataOf({{"key", "vers"}, {"u32", "65536"}}), version);
    const std::vector<std::uint8_t> max = {0xFF, 0xFF, 0xFF, 0xFF};
    EXPECT_EQ(DataOf({{"key", "qzFL"}, {"u32", 4294967295u}}), max);
}

TEST(PropertyListJson, HexBytesAreTakenAsTheyAre) {
    const std::vector<std::uint8_t> expected = {0x47, 0x50, 0xab, 0x00, 0x10, 0, 0, 0};
    EXPECT_EQ(DataOf({{"key", "8664"}, {"hex", "4750 AB00 10"}}), expected);
}

TEST(PropertyListJson, LengthPadsTheDataFurther) {
    std::vector<std::uint8_t> expected = Bytes("abc");
    expected.resize(16, 0);
    EXPECT_EQ(DataOf({{"key", "8664"}, {"cstring", "abc"}, {"length", 16}}), expected);
}

TEST(PropertyListJson, VendorAndIdDefaultAndCanBeGiven) {
    const qzhost::PropertyList list = PropertyListFromJson(
        json::array({{{"key", "kind"}, {"fourcc", "QZgx"}},
                     {{"key", "misc"}, {"vendor", "ABCD"}, {"id", 5}, {"u32", 1}}}),
        3);
    EXPECT_EQ(list.formatVersion, 3);
    EXPECT_EQ(list.properties[0].vendor, "XPLG");
    EXPECT_EQ(list.properties[0].id, 0u);
    EXPECT_EQ(list.properties[1].vendor, "ABCD");
    EXPECT_EQ(list.properties[1].id, 5u);
}

TEST(PropertyListJson, MistakesNameThePropertyAndField) {
    EXPECT_THAT(Error(json::object()), HasSubstr("not an array"));
    EXPECT_THAT(Error(json::array({{{"fourcc", "QZgx"}}})), HasSubstr("property 1 has no \"key\""));
    EXPECT_THAT(Error(json::array({{{"key", "kin"}, {"fourcc", "QZgx"}}})),
                HasSubstr("property 1 \"key\" is \"kin\", not a four-character code"));
    EXPECT_THAT(Error(json::array({{{"key", "kind"}, {"fourcc", "QZgxx"}}})),
                HasSubstr("property 1 ('kind') \"fourcc\" is \"QZgxx\""));
    EXPECT_THAT(Error(json::array({{{"key", "kind"}, {"fourcc", "QZgx"}, {"u32", 1}}})),
                HasSubstr("has two values"));
    EXPECT_THAT(Error(json::array({{{"key", "kind"}}})), HasSubstr("has no value"));
    EXPECT_THAT(Error(json::array({{{"key", "kind"}, {"fourcc", "QZgx"}, {"lenght", 4}}})),
                HasSubstr("unknown field \"lenght\""));
    EXPECT_THAT(Error(json::array({{{"key", "name"}, {"pascal", std::string(256, 'a')}}})),
                HasSubstr("256 bytes long; a Pascal string holds at most 255"));
    EXPECT_THAT(Error(json::array({{{"key", "vers"}, {"u32", 4294967296u}}})),
                HasSubstr("not a 32-bit unsigned number"));
    EXPECT_THAT(Error(json::array({{{"key", "vers"}, {"u32", -1}}})),
                HasSubstr("not a 32-bit unsigned number"));
    EXPECT_THAT(Error(json::array({{{"key", "vers"}, {"u32", "0x1g"}}})),
                HasSubstr("not a 32-bit unsigned number"));
    EXPECT_THAT(Error(json::array({{{"key", "8664"}, {"hex", "abc"}}})),
                HasSubstr("odd number of hexadecimal digits"));
    EXPECT_THAT(Error(json::array({{{"key", "8664"}, {"cstring", "abcdef"}, {"length", 4}}})),
                HasSubstr("\"length\" is 4; it must be a multiple of 4 and at least 8"));
    EXPECT_THAT(Error(json::array({{{"key", "8664"}, {"cstring", "a"}, {"length", 6}}})),
                HasSubstr("must be a multiple of 4"));
}

} // namespace
