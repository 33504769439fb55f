#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "ResourceTestSupport.h"
#include "qzhost/PropertyList.h"

namespace {

using qzhost::DecodePropertyList;
using qzhost::EncodePropertyList;
using qzhost::Property;
using qzhost::PropertyList;
using qztest::Bytes;
using ::testing::HasSubstr;

// Stored bytes written out by hand: each code already reversed, each number spelled in
// little-endian order.
std::vector<std::uint8_t> HandWrittenList() {
    std::vector<std::uint8_t> bytes = {1, 0, 0, 0, 0, 0, 2, 0, 0, 0};
    auto add = [&bytes](const std::string& text) {
        bytes.insert(bytes.end(), text.begin(), text.end());
    };
    add("GLPX");
    add("dnik");
    bytes.insert(bytes.end(), {0, 0, 0, 0, 4, 0, 0, 0});
    add("xgZQ");
    add("GLPX");
    add("srev");
    bytes.insert(bytes.end(), {9, 0, 0, 0, 8, 0, 0, 0});
    bytes.insert(bytes.end(), {0x00, 0x00, 0x01, 0x00, 0xAA, 0xBB, 0xCC, 0xDD});
    return bytes;
}

PropertyList SampleList() {
    PropertyList list;
    list.formatVersion = 1;
    list.properties.push_back({"XPLG", "kind", 0, Bytes("xgZQ")});
    list.properties.push_back(
        {"XPLG", "vers", 9, {0x00, 0x00, 0x01, 0x00, 0xAA, 0xBB, 0xCC, 0xDD}});
    return list;
}

std::string DecodeError(const std::vector<std::uint8_t>& bytes) {
    try {
        DecodePropertyList(bytes);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    ADD_FAILURE() << "no error";
    return "";
}

TEST(PropertyList, EncodesCodesReversedAndNumbersLittleEndian) {
    EXPECT_EQ(EncodePropertyList(SampleList()), HandWrittenList());
}

TEST(PropertyList, DecodesCodesInReadingOrder) {
    const PropertyList list = DecodePropertyList(HandWrittenList());
    EXPECT_EQ(list.formatVersion, 1);
    ASSERT_EQ(list.properties.size(), 2u);
    EXPECT_EQ(list.properties[0].vendor, "XPLG");
    EXPECT_EQ(list.properties[0].key, "kind");
    EXPECT_EQ(list.properties[0].id, 0u);
    EXPECT_EQ(list.properties[0].data, Bytes("xgZQ"));
    EXPECT_EQ(list.properties[1].key, "vers");
    EXPECT_EQ(list.properties[1].id, 9u);
    EXPECT_EQ(list.properties[1].data.size(), 8u);
}

TEST(PropertyList, RoundTripKeepsEverything) {
    PropertyList list;
    list.formatVersion = 7;
    list.properties.push_back(
        {"ABCD", "k\x01\xff ", 0xFFFFFFFF, std::vector<std::uint8_t>(44, 0x5A)});
    list.properties.push_back({"XPLG", "none", 0, {}});
    list.properties.push_back({"XPLG", "8664", 0, Bytes(std::string("GPMain_InfoPal\0\0", 16))});
    const PropertyList decoded = DecodePropertyList(EncodePropertyList(list));
    EXPECT_EQ(decoded.formatVersion, 7);
    ASSERT_EQ(decoded.properties.size(), list.properties.size());
    for (std::size_t i = 0; i < list.properties.size(); ++i) {
        EXPECT_EQ(decoded.properties[i].vendor, list.properties[i].vendor);
        EXPECT_EQ(decoded.properties[i].key, list.properties[i].key);
        EXPECT_EQ(decoded.properties[i].id, list.properties[i].id);
        EXPECT_EQ(decoded.properties[i].data, list.properties[i].data);
    }
    EXPECT_EQ(EncodePropertyList(decoded), EncodePropertyList(list));
}

TEST(PropertyList, FindGivesTheFirstPropertyWithTheKey) {
    PropertyList list = SampleList();
    list.properties.push_back({"XPLG", "kind", 1, Bytes("2222")});
    ASSERT_NE(list.Find("kind"), nullptr);
    EXPECT_EQ(list.Find("kind")->id, 0u);
    EXPECT_EQ(list.Find("vers"), &list.properties[1]);
    EXPECT_EQ(list.Find("8664"), nullptr);
}

TEST(PropertyList, EmptyListIsTenBytes) {
    PropertyList list;
    list.formatVersion = 1;
    const std::vector<std::uint8_t> bytes = EncodePropertyList(list);
    EXPECT_EQ(bytes, (std::vector<std::uint8_t>{1, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_TRUE(DecodePropertyList(bytes).properties.empty());
}

TEST(PropertyList, ShortHeaderIsRefused) {
    EXPECT_EQ(DecodeError({1, 0, 0}), "property list: the header needs 10 bytes, only 3 given");
}

TEST(PropertyList, EveryTruncationIsRefusedNamingAnOffset) {
    const std::vector<std::uint8_t> full = HandWrittenList();
    for (std::size_t size = 0; size < full.size(); ++size) {
        const std::vector<std::uint8_t> cut(full.begin(), full.begin() + static_cast<long>(size));
        EXPECT_THAT(DecodeError(cut), HasSubstr("property list: ")) << "size " << size;
    }
}

TEST(PropertyList, TruncatedPropertyHeaderNamesItsOffset) {
    std::vector<std::uint8_t> bytes = HandWrittenList();
    bytes.resize(10 + 20 + 6);
    EXPECT_EQ(DecodeError(bytes),
              "property list: property 2 of 2 at offset 30: its header needs 16 bytes, only 6 "
              "remain");
}

TEST(PropertyList, DataPastTheEndIsRefused) {
    std::vector<std::uint8_t> bytes = HandWrittenList();
    bytes.resize(bytes.size() - 4);
    EXPECT_EQ(DecodeError(bytes),
              "property list: property 2 of 2 at offset 30 ('vers'): 8 bytes of data at offset "
              "46 run past the end (4 bytes remain)");
}

TEST(PropertyList, HugeLengthIsRefusedWithoutOverflow) {
    std::vector<std::uint8_t> bytes = HandWrittenList();
    bytes[10 + 12] = 0xFC;
    bytes[10 + 13] = 0xFF;
    bytes[10 + 14] = 0xFF;
    bytes[10 + 15] = 0xFF;
    EXPECT_THAT(DecodeError(bytes),
                HasSubstr("property 1 of 2 at offset 10 ('kind'): 4294967292 bytes of data at "
                          "offset 26 run past the end"));
}

TEST(PropertyList, LengthThatIsNotAMultipleOfFourIsRefused) {
    std::vector<std::uint8_t> bytes = HandWrittenList();
    bytes[10 + 12] = 3;
    EXPECT_EQ(DecodeError(bytes), "property list: property 1 of 2 at offset 10 ('kind'): data "
                                  "length 3 at offset 22 is not a multiple of 4");
}

TEST(PropertyList, CountBeyondTheBytesIsRefused) {
    std::vector<std::uint8_t> bytes = HandWrittenList();
    bytes[6] = 3;
    EXPECT_EQ(DecodeError(bytes), "property list: property 3 of 3 at offset 54: its header needs "
                                  "16 bytes, only 0 remain");
}

TEST(PropertyList, BytesAfterTheLastPropertyAreRefused) {
    std::vector<std::uint8_t> bytes = HandWrittenList();
    bytes.insert(bytes.end(), {0, 0, 0, 0});
    EXPECT_EQ(DecodeError(bytes),
              "property list: 4 bytes at offset 54 follow the last of 2 properties");
}

TEST(PropertyList, NonZeroReservedFieldIsRefused) {
    std::vector<std::uint8_t> bytes = HandWrittenList();
    bytes[3] = 1;
    EXPECT_EQ(DecodeError(bytes),
              "property list: the reserved field at offset 2 is 256, expected 0");
}

TEST(PropertyList, EncodeRefusesWhatCannotBeStored) {
    PropertyList list = SampleList();
    list.properties[1].key = "ver";
    EXPECT_THROW(EncodePropertyList(list), std::runtime_error);
    list = SampleList();
    list.properties[0].vendor = "XPLGX";
    EXPECT_THROW(EncodePropertyList(list), std::runtime_error);
    list = SampleList();
    list.properties[0].data.push_back(0);
    try {
        EncodePropertyList(list);
        ADD_FAILURE() << "no error";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(),
                     "property list: property 1 ('kind'): data length 5 is not a multiple of 4");
    }
}

} // namespace
