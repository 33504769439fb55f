#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ResourceTestSupport.h"
#include "qzhost/ResourceArchive.h"

namespace {

using qzhost::resources::Resource;
using qzhost::resources::ResourceArchive;
using qzhost::resources::ResourceFormatError;
using qzhost::resources::WriteResourceArchive;
using qztest::Bytes;
using qztest::FormatError;
using ::testing::HasSubstr;

std::string Text(std::span<const std::uint8_t> bytes) {
    return {bytes.begin(), bytes.end()};
}

std::vector<Resource> SampleResources() {
    return {
        {"XML", "CONTROL_LAYOUT", 1033, Bytes("<layout/>")},
        {"XML", "CONTROL_LAYOUT_DE_DE", 1033, Bytes("<layout lang='de'/>")},
        {"PNG", "Picture_At_2x", 1033, {0x89, 'P', 'N', 'G', 0, 0, 0xFF}},
        {"TXT", "Empty", 1033, {}},
    };
}

void PutU32(std::vector<std::uint8_t>& bytes, std::size_t at, std::uint32_t value) {
    for (int i = 0; i < 4; ++i) {
        bytes[at + static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(value >> (8 * i));
    }
}

void PutU64(std::vector<std::uint8_t>& bytes, std::size_t at, std::uint64_t value) {
    for (int i = 0; i < 8; ++i) {
        bytes[at + static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(value >> (8 * i));
    }
}

TEST(ResourceArchive, RoundTripKeepsEveryResourceInOrder) {
    const std::vector<Resource> resources = SampleResources();
    const ResourceArchive archive = ResourceArchive::Parse(WriteResourceArchive(resources));

    ASSERT_EQ(archive.Entries().size(), resources.size());
    for (std::size_t i = 0; i < resources.size(); ++i) {
        const auto& entry = archive.Entries()[i];
        EXPECT_EQ(entry.type, resources[i].type);
        EXPECT_EQ(entry.name, resources[i].name);
        EXPECT_EQ(entry.language, resources[i].language);
        const auto data = archive.Data(entry);
        EXPECT_EQ(std::vector<std::uint8_t>(data.begin(), data.end()), resources[i].data);
    }
}

TEST(ResourceArchive, WrittenArchiveStartsWithItsHeaderAndIsPaddedToEightBytes) {
    const std::vector<std::uint8_t> bytes = WriteResourceArchive(SampleResources());
    EXPECT_EQ(Text(std::span(bytes).first(8)), "QZRESARC");
    EXPECT_EQ(bytes[8], 1);  // format version
    EXPECT_EQ(bytes[12], 4); // entry count
    EXPECT_EQ(bytes.size() % 8, 0u);
    std::uint64_t total = 0;
    for (int i = 7; i >= 0; --i) {
        total = (total << 8) | bytes[16 + static_cast<std::size_t>(i)];
    }
    EXPECT_EQ(total, bytes.size());
}

TEST(ResourceArchive, DataOfEveryResourceStartsAtAMultipleOfEight) {
    const ResourceArchive archive = ResourceArchive::Parse(WriteResourceArchive(SampleResources()));
    for (const auto& entry : archive.Entries()) {
        EXPECT_EQ(entry.offset % 8, 0u) << entry.name;
    }
}

TEST(ResourceArchive, TypesAndNamesMatchWithoutRegardToCase) {
    const ResourceArchive archive = ResourceArchive::Parse(WriteResourceArchive(SampleResources()));
    const auto* entry = archive.Find("xml", "control_layout_de_de");
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(Text(archive.Data(*entry)), "<layout lang='de'/>");
    ASSERT_NE(archive.Find("Png", "PICTURE_AT_2X"), nullptr);
    EXPECT_EQ(archive.Find("Png", "PICTURE_AT_2X")->name, "Picture_At_2x");
}

TEST(ResourceArchive, CaseFoldingIsAsciiOnlyAndNeedsTheWholeName) {
    const ResourceArchive archive = ResourceArchive::Parse(WriteResourceArchive(SampleResources()));
    EXPECT_EQ(archive.Find("XML", "CONTROL_LAYOUT_"), nullptr);
    EXPECT_EQ(archive.Find("XML", "CONTROL_LAYOU"), nullptr);
    EXPECT_EQ(archive.Find("XM", "CONTROL_LAYOUT"), nullptr);
    EXPECT_EQ(archive.Find("PNG", "Picture@At@2x"), nullptr); // '@' is not a folded '`'
    EXPECT_TRUE(qzhost::resources::ResourceNamesEqual("a_z", "A_Z"));
    EXPECT_FALSE(qzhost::resources::ResourceNamesEqual("[", "{"));
}

TEST(ResourceArchive, AResourceOfTheAskedLanguageComesBeforeOthers) {
    const std::vector<Resource> resources = {
        {"XML", "LAYOUT", 1031, Bytes("de")},
        {"XML", "layout", 1033, Bytes("en")},
    };
    const ResourceArchive archive = ResourceArchive::Parse(WriteResourceArchive(resources));
    EXPECT_EQ(Text(archive.Data(*archive.Find("XML", "LAYOUT", 1033))), "en");
    EXPECT_EQ(Text(archive.Data(*archive.Find("XML", "LAYOUT", 1031))), "de");
    // Another language falls back to the first in any language.
    EXPECT_EQ(Text(archive.Data(*archive.Find("XML", "LAYOUT", 1036))), "de");
    EXPECT_EQ(Text(archive.Data(*archive.Find("XML", "LAYOUT"))), "de");
}

TEST(ResourceArchive, MissingResourceIsNull) {
    const ResourceArchive archive = ResourceArchive::Parse(WriteResourceArchive(SampleResources()));
    EXPECT_EQ(archive.Find("XML", "NO_SUCH_LAYOUT"), nullptr);
    EXPECT_EQ(archive.Find("PRPL", "16000", 1033), nullptr);
}

TEST(ResourceArchive, EmptyOrAllZeroSectionHoldsNoResources) {
    EXPECT_TRUE(ResourceArchive::Parse({}).Entries().empty());
    EXPECT_TRUE(ResourceArchive::Parse(std::vector<std::uint8_t>(21, 0)).Entries().empty());
    EXPECT_TRUE(ResourceArchive::Parse(WriteResourceArchive({})).Entries().empty());
}

TEST(ResourceArchive, SectionWithTwoArchivesAndPaddingHoldsBoth) {
    std::vector<std::uint8_t> section = WriteResourceArchive(SampleResources());
    section.insert(section.end(), 16, 0);
    const std::vector<Resource> more = {{"XML", "OTHER", 1033, Bytes("other")},
                                        {"XML", "CONTROL_LAYOUT", 1033, Bytes("second")}};
    const std::vector<std::uint8_t> second = WriteResourceArchive(more);
    section.insert(section.end(), second.begin(), second.end());
    section.insert(section.end(), 8, 0);

    const ResourceArchive archive = ResourceArchive::Parse(section);
    EXPECT_EQ(archive.Entries().size(), 6u);
    EXPECT_EQ(Text(archive.Data(*archive.Find("xml", "other"))), "other");
    // The first archive's resource wins when two carry the same one.
    EXPECT_EQ(Text(archive.Data(*archive.Find("XML", "CONTROL_LAYOUT"))), "<layout/>");
}

TEST(ResourceArchive, WriterRefusesInvalidOrDuplicateNames) {
    EXPECT_THAT(FormatError([] {
                    WriteResourceArchive(std::vector<Resource>{{"XML", "", 1033, {}}});
                }),
                HasSubstr("resource 1: name '' is empty"));
    EXPECT_THAT(FormatError([] {
                    WriteResourceArchive(std::vector<Resource>{{"X\tML", "A", 1033, {}}});
                }),
                HasSubstr("not printable ASCII"));
    EXPECT_THAT(
        FormatError([] {
            WriteResourceArchive(std::vector<Resource>{{"XML", std::string(256, 'A'), 1033, {}}});
        }),
        HasSubstr("256 characters long"));
    EXPECT_THAT(FormatError([] {
                    WriteResourceArchive(std::vector<Resource>{{"XML", "Layout", 1033, {}},
                                                               {"xml", "LAYOUT", 1033, {}}});
                }),
                HasSubstr("resource 2: xml 'LAYOUT' in language 1033 is listed twice"));
    // The same name in another language is another resource.
    EXPECT_NO_THROW(WriteResourceArchive(
        std::vector<Resource>{{"XML", "Layout", 1033, {}}, {"XML", "Layout", 1031, {}}}));
}

TEST(ResourceArchive, EveryTruncationIsRefusedWithAClearError) {
    const std::vector<std::uint8_t> full = WriteResourceArchive(SampleResources());
    for (std::size_t size = 1; size < full.size(); ++size) {
        const std::vector<std::uint8_t> cut(full.begin(), full.begin() + static_cast<long>(size));
        const std::string message = FormatError([&] { ResourceArchive::Parse(cut); });
        EXPECT_THAT(message, HasSubstr("resource section: ")) << "size " << size;
    }
}

TEST(ResourceArchive, TruncatedHeaderNamesTheMissingBytes) {
    const std::vector<std::uint8_t> full = WriteResourceArchive(SampleResources());
    const std::vector<std::uint8_t> cut(full.begin(), full.begin() + 12);
    EXPECT_EQ(FormatError([&] { ResourceArchive::Parse(cut); }),
              "resource section: archive at offset 0: header needs 24 bytes, only 12 remain");
}

TEST(ResourceArchive, TotalSizePastTheSectionIsRefused) {
    std::vector<std::uint8_t> bytes = WriteResourceArchive(SampleResources());
    PutU64(bytes, 16, bytes.size() + 8);
    EXPECT_THAT(
        FormatError([&] { ResourceArchive::Parse(bytes); }),
        HasSubstr("total size " + std::to_string(bytes.size() + 8) + " at offset 16 does not fit"));
}

TEST(ResourceArchive, WrongMagicIsRefused) {
    std::vector<std::uint8_t> bytes = WriteResourceArchive(SampleResources());
    bytes[3] = 'X';
    EXPECT_EQ(FormatError([&] { ResourceArchive::Parse(bytes); }),
              "resource section: unexpected bytes at offset 0 (neither a resource archive nor "
              "zero padding)");
}

TEST(ResourceArchive, UnknownFormatVersionIsRefused) {
    std::vector<std::uint8_t> bytes = WriteResourceArchive(SampleResources());
    PutU32(bytes, 8, 2);
    EXPECT_THAT(FormatError([&] { ResourceArchive::Parse(bytes); }),
                HasSubstr("format version 2 at offset 8 is not supported"));
}

TEST(ResourceArchive, EntryCountPastTheArchiveIsRefused) {
    std::vector<std::uint8_t> bytes = WriteResourceArchive(SampleResources());
    PutU32(bytes, 12, 0xFFFFFFFF);
    EXPECT_THAT(FormatError([&] { ResourceArchive::Parse(bytes); }),
                HasSubstr("a table of 4294967295 entries"));
}

TEST(ResourceArchive, NameOffsetPastTheArchiveIsRefused) {
    std::vector<std::uint8_t> bytes = WriteResourceArchive(SampleResources());
    PutU32(bytes, 24 + 40 + 24, static_cast<std::uint32_t>(bytes.size() - 2)); // entry 2 name
    EXPECT_THAT(FormatError([&] { ResourceArchive::Parse(bytes); }),
                HasSubstr("entry 2 at offset 64: name of 20 bytes at offset " +
                          std::to_string(bytes.size() - 2) + " runs past the archive's end"));
}

TEST(ResourceArchive, HugeDataSizeIsRefusedWithoutOverflow) {
    std::vector<std::uint8_t> bytes = WriteResourceArchive(SampleResources());
    PutU64(bytes, 24 + 8, 0xFFFFFFFFFFFFFFF0ull); // entry 1 data size
    EXPECT_THAT(FormatError([&] { ResourceArchive::Parse(bytes); }),
                HasSubstr("entry 1 at offset 24: data of 18446744073709551600 bytes"));
    PutU64(bytes, 24 + 8, 1);
    PutU64(bytes, 24, 0xFFFFFFFFFFFFFFFFull); // entry 1 data offset
    EXPECT_THAT(FormatError([&] { ResourceArchive::Parse(bytes); }), HasSubstr("runs past"));
}

TEST(ResourceArchive, NonPrintableNameIsRefused) {
    std::vector<std::uint8_t> bytes = WriteResourceArchive(SampleResources());
    const std::uint32_t typeAt = bytes[24 + 16]; // entry 1 type offset (small)
    bytes[typeAt] = 0x01;
    EXPECT_THAT(FormatError([&] { ResourceArchive::Parse(bytes); }),
                HasSubstr("has byte 1 at position 0, which is not printable ASCII"));
}

TEST(ResourceArchive, NonZeroReservedFieldIsRefused) {
    std::vector<std::uint8_t> bytes = WriteResourceArchive(SampleResources());
    PutU32(bytes, 24 + 36, 7);
    EXPECT_THAT(FormatError([&] { ResourceArchive::Parse(bytes); }),
                HasSubstr("reserved field at offset 60 is 7, expected 0"));
}

TEST(ResourceArchive, DuplicateEntryInOneArchiveIsRefused) {
    std::vector<std::uint8_t> bytes = WriteResourceArchive(
        std::vector<Resource>{{"XML", "AAAA", 1033, {}}, {"XML", "aaab", 1033, {}}});
    // Make the second name "aaaa": equal to the first without regard to case.
    const std::uint32_t nameAt = bytes[24 + 40 + 24];
    bytes[nameAt + 3] = 'a';
    EXPECT_THAT(FormatError([&] { ResourceArchive::Parse(bytes); }), HasSubstr("appears twice"));
}

TEST(ResourceArchive, GarbageAfterAnArchiveIsRefused) {
    std::vector<std::uint8_t> bytes = WriteResourceArchive(SampleResources());
    const std::size_t end = bytes.size();
    bytes.insert(bytes.end(), {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0});
    EXPECT_EQ(FormatError([&] { ResourceArchive::Parse(bytes); }),
              "resource section: unexpected bytes at offset " + std::to_string(end + 8) +
                  " (neither a resource archive nor zero padding)");
}

TEST(ResourceArchive, RandomCorruptionNeverReadsOutsideTheBytes) {
    // Deterministic byte changes: every result is either a checked archive whose data lies
    // inside the bytes, or a ResourceFormatError.
    const std::vector<std::uint8_t> original = WriteResourceArchive(SampleResources());
    std::uint32_t state = 12345;
    auto next = [&state] {
        state = state * 1664525u + 1013904223u;
        return state >> 8;
    };
    int refused = 0;
    for (int round = 0; round < 3000; ++round) {
        std::vector<std::uint8_t> bytes = original;
        const int changes = 1 + static_cast<int>(next() % 4);
        for (int i = 0; i < changes; ++i) {
            bytes[next() % bytes.size()] = static_cast<std::uint8_t>(next());
        }
        try {
            const ResourceArchive archive = ResourceArchive::Parse(bytes);
            for (const auto& entry : archive.Entries()) {
                ASSERT_LE(entry.offset + entry.size, bytes.size());
                ASSERT_EQ(archive.Data(entry).size(), entry.size);
            }
        } catch (const ResourceFormatError&) {
            ++refused;
        }
    }
    EXPECT_GT(refused, 0);
}

} // namespace
