#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "ElfImageBuilder.h"
#include "ResourceTestSupport.h"
#include "host/OS_Module.h"
#include "qzhost/PropertyList.h"
#include "qzhost/ResourceArchive.h"

namespace {

using qzhost::resources::ReadElfSection;
using qzhost::resources::ReadElfSectionFromFile;
using qzhost::resources::ResourceFormatError;
using qztest::BuildElfImage;
using qztest::Bytes;
using qztest::ElfImage;
using qztest::FormatError;
using ::testing::HasSubstr;

ElfImage SampleImage() {
    return BuildElfImage(
        {{".text", Bytes("code")}, {".qzres", Bytes("resource bytes")}, {".data", Bytes("data!")}});
}

std::string ImageError(const std::vector<std::uint8_t>& bytes) {
    return FormatError([&] { ReadElfSection(bytes, ".qzres"); });
}

std::vector<std::uint8_t> ReadWholeFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::string RuntimeLibraryPath() {
    return OS_ModulePath(
        OS_ModuleFromAddress(reinterpret_cast<const void*>(&qzhost::DecodePropertyList)));
}

// A file in the test's temporary folder, removed again at the end of the test.
class TempFile {
public:
    TempFile(const std::string& name, const std::vector<std::uint8_t>& bytes)
        : path_(std::filesystem::path(::testing::TempDir()) / ("qz_elf_" + name)) {
        std::ofstream out(path_, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(bytes.data()),
                  static_cast<std::streamsize>(bytes.size()));
    }
    ~TempFile() {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    std::string Path() const { return path_.string(); }

private:
    std::filesystem::path path_;
};

TEST(ElfSectionReader, FindsTheNamedSectionsBytes) {
    const ElfImage image = SampleImage();
    EXPECT_EQ(ReadElfSection(image.bytes, ".qzres"), Bytes("resource bytes"));
    EXPECT_EQ(ReadElfSection(image.bytes, ".data"), Bytes("data!"));
    EXPECT_EQ(ReadElfSection(image.bytes, ".text"), Bytes("code"));
}

TEST(ElfSectionReader, EmptySectionIsReadAsNoBytes) {
    const ElfImage image = BuildElfImage({{".text", Bytes("code")}, {".qzres", {}}});
    const auto section = ReadElfSection(image.bytes, ".qzres");
    ASSERT_TRUE(section.has_value());
    EXPECT_TRUE(section->empty());
    const TempFile file("empty_section", image.bytes);
    EXPECT_EQ(ReadElfSectionFromFile(file.Path(), ".qzres"), section);
}

TEST(ElfSectionReader, EmptyNameTableIsRefused) {
    ElfImage image = SampleImage();
    const std::size_t names = image.Header().e_shstrndx;
    Elf64_Shdr table = image.Section(names);
    table.sh_offset = 0;
    table.sh_size = 0;
    image.SetSection(names, table);
    EXPECT_THAT(ImageError(image.bytes),
                HasSubstr("lies outside the section name table (0 bytes)"));
}

TEST(ElfSectionReader, MissingSectionIsNone) {
    const ElfImage image = SampleImage();
    EXPECT_FALSE(ReadElfSection(image.bytes, ".qzre").has_value());
    EXPECT_FALSE(ReadElfSection(image.bytes, ".qzres2").has_value());
    EXPECT_FALSE(ReadElfSection(BuildElfImage({}).bytes, ".qzres").has_value());
}

TEST(ElfSectionReader, FileWithoutSectionHeaderTableHasNoSections) {
    ElfImage image = SampleImage();
    Elf64_Ehdr header = image.Header();
    header.e_shoff = 0;
    image.SetHeader(header);
    EXPECT_FALSE(ReadElfSection(image.bytes, ".qzres").has_value());
}

TEST(ElfSectionReader, ExtendedSectionNumberingIsFollowed) {
    ElfImage image = SampleImage();
    Elf64_Ehdr header = image.Header();
    Elf64_Shdr first = image.Section(0);
    first.sh_size = header.e_shnum;
    first.sh_link = header.e_shstrndx;
    image.SetSection(0, first);
    header.e_shnum = 0;
    header.e_shstrndx = SHN_XINDEX;
    image.SetHeader(header);
    EXPECT_EQ(ReadElfSection(image.bytes, ".qzres"), Bytes("resource bytes"));
}

TEST(ElfSectionReader, TextIsNotAnElfFile) {
    EXPECT_EQ(ImageError(Bytes("#!/bin/sh\necho this is a script, not a library\n")),
              "ELF image: not an ELF file (no ELF magic at offset 0)");
    EXPECT_EQ(ImageError(Bytes("ab")),
              "ELF image: not an ELF file (2 bytes, too short for the ELF magic at offset 0)");
}

TEST(ElfSectionReader, TruncatedHeaderIsRefused) {
    std::vector<std::uint8_t> bytes = SampleImage().bytes;
    bytes.resize(40);
    EXPECT_EQ(ImageError(bytes),
              "ELF image: truncated: the ELF header needs 64 bytes, the file has 40");
}

TEST(ElfSectionReader, OnlyLittleEndianElf64IsRead) {
    ElfImage image = SampleImage();
    image.bytes[EI_CLASS] = ELFCLASS32;
    EXPECT_EQ(ImageError(image.bytes), "ELF image: not a 64-bit ELF file (class 1 at offset 4)");
    image.bytes[EI_CLASS] = ELFCLASS64;
    image.bytes[EI_DATA] = ELFDATA2MSB;
    EXPECT_EQ(ImageError(image.bytes),
              "ELF image: not a little-endian ELF file (data encoding 2 at offset 5)");
    image.bytes[EI_DATA] = ELFDATA2LSB;
    image.bytes[EI_VERSION] = 9;
    EXPECT_EQ(ImageError(image.bytes), "ELF image: unknown ELF version 9 at offset 6");
}

TEST(ElfSectionReader, SectionHeaderTableOutsideTheFileIsRefused) {
    ElfImage image = SampleImage();
    Elf64_Ehdr header = image.Header();
    header.e_shoff = 0xFFFFFFFFFFFFFFF0ull;
    image.SetHeader(header);
    EXPECT_THAT(ImageError(image.bytes),
                HasSubstr("section header table at offset 0xfffffffffffffff0 lies outside the "
                          "file"));
}

TEST(ElfSectionReader, SectionCountPastTheFileIsRefused) {
    ElfImage image = SampleImage();
    Elf64_Ehdr header = image.Header();
    header.e_shnum = 60000;
    image.SetHeader(header);
    EXPECT_THAT(ImageError(image.bytes),
                HasSubstr("section header table of 60000 entries at offset 0x"));
    EXPECT_THAT(ImageError(image.bytes), HasSubstr("runs past the end of the file"));
}

TEST(ElfSectionReader, UnexpectedSectionHeaderSizeIsRefused) {
    ElfImage image = SampleImage();
    Elf64_Ehdr header = image.Header();
    header.e_shentsize = 40;
    image.SetHeader(header);
    EXPECT_EQ(ImageError(image.bytes), "ELF image: section header size 40 at offset 58 is not 64");
}

TEST(ElfSectionReader, NameTableIndexOutOfRangeIsRefused) {
    ElfImage image = SampleImage();
    Elf64_Ehdr header = image.Header();
    header.e_shstrndx = static_cast<Elf64_Half>(header.e_shnum);
    image.SetHeader(header);
    EXPECT_EQ(ImageError(image.bytes),
              "ELF image: section name table index 5 is not below the section count 5");
}

TEST(ElfSectionReader, NameTableThatIsNotAStringTableIsRefused) {
    ElfImage image = SampleImage();
    Elf64_Shdr names = image.Section(image.namesIndex);
    names.sh_type = SHT_PROGBITS;
    image.SetSection(image.namesIndex, names);
    EXPECT_EQ(ImageError(image.bytes),
              "ELF image: section name table (section 4) is not a string table (type 1)");
}

TEST(ElfSectionReader, NameTableOutsideTheFileIsRefused) {
    ElfImage image = SampleImage();
    Elf64_Shdr names = image.Section(image.namesIndex);
    names.sh_size = image.bytes.size();
    image.SetSection(image.namesIndex, names);
    EXPECT_THAT(ImageError(image.bytes), HasSubstr("section name table of"));
    EXPECT_THAT(ImageError(image.bytes), HasSubstr("runs past the end of the file"));
}

TEST(ElfSectionReader, SectionNameOutsideTheNameTableIsRefused) {
    ElfImage image = SampleImage();
    Elf64_Shdr data = image.Section(1);
    data.sh_name = 5000;
    image.SetSection(1, data);
    EXPECT_THAT(ImageError(image.bytes),
                HasSubstr("name of section 1 at string offset 5000 lies outside the section "
                          "name table"));
}

TEST(ElfSectionReader, UnterminatedSectionNameIsRefused) {
    ElfImage image = SampleImage();
    const Elf64_Shdr names = image.Section(image.namesIndex);
    image.bytes[names.sh_offset + names.sh_size - 1] = 'x'; // ".shstrtabx" without NUL
    // The reader checks each name as it walks the sections: a name that is not there
    // makes it walk them all.
    EXPECT_THAT(FormatError([&] { ReadElfSection(image.bytes, ".absent"); }),
                HasSubstr("name of section 4 at string offset 20 is not terminated inside the "
                          "section name table"));
}

TEST(ElfSectionReader, SectionDataOutsideTheFileIsRefused) {
    ElfImage image = SampleImage();
    Elf64_Shdr section = image.Section(2);
    section.sh_size = 0xFFFFFFFFFFFFFFFFull;
    image.SetSection(2, section);
    EXPECT_THAT(ImageError(image.bytes),
                HasSubstr("section .qzres of 18446744073709551615 bytes at offset 0x"));
    // Other sections are still found: only the section asked for is read.
    EXPECT_EQ(ReadElfSection(image.bytes, ".text"), Bytes("code"));
}

TEST(ElfSectionReader, SectionWithoutFileBytesIsRefused) {
    ElfImage image = SampleImage();
    Elf64_Shdr section = image.Section(2);
    section.sh_type = SHT_NOBITS;
    image.SetSection(2, section);
    EXPECT_EQ(ImageError(image.bytes), "ELF image: section .qzres has no bytes in the file");
}

TEST(ElfSectionReader, EveryTruncationIsRefused) {
    const std::vector<std::uint8_t> full = SampleImage().bytes;
    for (std::size_t size = 0; size < full.size(); ++size) {
        const std::vector<std::uint8_t> cut(full.begin(), full.begin() + static_cast<long>(size));
        EXPECT_THROW(ReadElfSection(cut, ".qzres"), ResourceFormatError) << "size " << size;
    }
}

TEST(ElfSectionReader, RandomCorruptionEitherReadsInsideTheFileOrIsRefused) {
    const ElfImage original = SampleImage();
    std::uint32_t state = 2024;
    auto next = [&state] {
        state = state * 1664525u + 1013904223u;
        return state >> 8;
    };
    int refused = 0;
    for (int round = 0; round < 3000; ++round) {
        std::vector<std::uint8_t> bytes = original.bytes;
        const int changes = 1 + static_cast<int>(next() % 3);
        for (int i = 0; i < changes; ++i) {
            bytes[next() % bytes.size()] = static_cast<std::uint8_t>(next());
        }
        try {
            const auto section = ReadElfSection(bytes, ".qzres");
            if (section) {
                EXPECT_LE(section->size(), bytes.size());
            }
        } catch (const ResourceFormatError&) {
            ++refused;
        }
    }
    EXPECT_GT(refused, 0);
}

TEST(ElfSectionReader, ReadsTheResourceSectionOfThisTestProgram) {
    const auto section = ReadElfSectionFromFile("/proc/self/exe", ".qzres");
    ASSERT_TRUE(section.has_value());
    const auto archive = qzhost::resources::ResourceArchive::Parse(*section);
    const auto* entry = archive.Find("BIN", "ALL_BYTES");
    ASSERT_NE(entry, nullptr);
    const auto data = archive.Data(*entry);
    ASSERT_EQ(data.size(), 256u);
    for (std::size_t i = 0; i < data.size(); ++i) {
        EXPECT_EQ(data[i], i);
    }
}

TEST(ElfSectionReader, BuiltLibraryHasItsDynamicSectionsAndNoResources) {
    const std::string path = RuntimeLibraryPath();
    ASSERT_FALSE(path.empty());
    EXPECT_FALSE(ReadElfSectionFromFile(path, ".qzres").has_value());
    const auto dynsym = ReadElfSectionFromFile(path, ".dynsym");
    ASSERT_TRUE(dynsym.has_value());
    EXPECT_GT(dynsym->size(), 0u);
    EXPECT_EQ(dynsym->size() % sizeof(Elf64_Sym), 0u);
    const auto dynstr = ReadElfSectionFromFile(path, ".dynstr");
    ASSERT_TRUE(dynstr.has_value());
    const std::string names(dynstr->begin(), dynstr->end());
    EXPECT_THAT(names, HasSubstr("DecodePropertyList"));
}

TEST(ElfSectionReader, FileAndMemoryReadersAgree) {
    const std::string path = RuntimeLibraryPath();
    const std::vector<std::uint8_t> image = ReadWholeFile(path);
    for (const char* name : {".dynstr", ".text", ".rodata", ".qzres", ".no_such_section"}) {
        EXPECT_EQ(ReadElfSectionFromFile(path, name), ReadElfSection(image, name)) << name;
    }
}

TEST(ElfSectionReader, FileErrorsNameTheFile) {
    EXPECT_EQ(FormatError([] { ReadElfSectionFromFile("/no/such/library.so", ".qzres"); }),
              "ELF file '/no/such/library.so': cannot open: No such file or directory");
    const std::string folder = ::testing::TempDir();
    EXPECT_EQ(FormatError([&] { ReadElfSectionFromFile(folder, ".qzres"); }),
              "ELF file '" + folder + "': not a regular file");
    const TempFile text("text.so", Bytes("plain text, no library"));
    EXPECT_EQ(FormatError([&] { ReadElfSectionFromFile(text.Path(), ".qzres"); }),
              "ELF file '" + text.Path() + "': not an ELF file (no ELF magic at offset 0)");
}

TEST(ElfSectionReader, TruncatedLibraryFileIsRefused) {
    std::vector<std::uint8_t> bytes = ReadWholeFile(RuntimeLibraryPath());
    bytes.resize(bytes.size() / 2);
    const TempFile half("half.so", bytes);
    const std::string message =
        FormatError([&] { ReadElfSectionFromFile(half.Path(), ".dynsym"); });
    EXPECT_THAT(message, HasSubstr("ELF file '" + half.Path() + "': section header table"));
    EXPECT_THAT(message, HasSubstr("lies outside the file"));
}

} // namespace
