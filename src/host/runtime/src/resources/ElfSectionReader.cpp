// Finds a named section in an ELF64 little-endian file and reads its bytes, without
// loading the file. Every offset and size in the file's headers is checked against the
// file's size before it is used.

#include <elf.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <bit>
#include <cerrno>
#include <cstring>
#include <sstream>

#include "qzhost/ResourceArchive.h"

namespace qzhost::resources {

namespace {

static_assert(std::endian::native == std::endian::little,
              "ELF headers are read in place on a little-endian host");

std::string Hex(std::uint64_t value) {
    std::ostringstream out;
    out << "0x" << std::hex << value;
    return out.str();
}

// An ELF image in memory.
class MemorySource {
public:
    explicit MemorySource(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}
    std::uint64_t Size() const { return bytes_.size(); }
    void Read(std::uint64_t offset, std::size_t size, void* out) const {
        // An empty section reads into an empty buffer, whose data may be null: memcpy
        // must not see it.
        if (size == 0) {
            return;
        }
        std::memcpy(out, bytes_.data() + offset, size);
    }

private:
    std::span<const std::uint8_t> bytes_;
};

// An ELF file, read piece by piece.
class FileSource {
public:
    FileSource(const std::string& path, const std::string& subject) : subject_(subject) {
        fd_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        if (fd_ < 0) {
            throw ResourceFormatError(subject_,
                                      std::string("cannot open: ") + std::strerror(errno));
        }
        struct stat info {};
        if (::fstat(fd_, &info) != 0) {
            const int error = errno;
            ::close(fd_);
            throw ResourceFormatError(subject_,
                                      std::string("cannot read: ") + std::strerror(error));
        }
        if (!S_ISREG(info.st_mode)) {
            ::close(fd_);
            throw ResourceFormatError(subject_, "not a regular file");
        }
        size_ = static_cast<std::uint64_t>(info.st_size);
    }
    ~FileSource() { ::close(fd_); }
    FileSource(const FileSource&) = delete;
    FileSource& operator=(const FileSource&) = delete;

    std::uint64_t Size() const { return size_; }
    void Read(std::uint64_t offset, std::size_t size, void* out) const {
        auto* target = static_cast<std::uint8_t*>(out);
        while (size > 0) {
            const ssize_t got = ::pread(fd_, target, size, static_cast<off_t>(offset));
            if (got < 0 && errno == EINTR) {
                continue;
            }
            if (got <= 0) {
                throw ResourceFormatError(
                    subject_, "cannot read " + std::to_string(size) + " bytes at offset " +
                                  std::to_string(offset) + ": " +
                                  (got < 0 ? std::strerror(errno) : "the file ended early"));
            }
            target += got;
            offset += static_cast<std::uint64_t>(got);
            size -= static_cast<std::size_t>(got);
        }
    }

private:
    std::string subject_;
    int fd_ = -1;
    std::uint64_t size_ = 0;
};

template <class Source>
std::optional<std::vector<std::uint8_t>> FindSection(const Source& source, std::string_view name,
                                                     const std::string& subject) {
    auto fail = [&subject](const std::string& reason) {
        return ResourceFormatError(subject, reason);
    };
    const std::uint64_t fileSize = source.Size();
    // Whether [offset, offset + size) lies inside the file, without overflow.
    auto fits = [fileSize](std::uint64_t offset, std::uint64_t size) {
        return offset <= fileSize && size <= fileSize - offset;
    };

    unsigned char ident[EI_NIDENT] = {};
    if (fileSize < SELFMAG) {
        throw fail("not an ELF file (" + std::to_string(fileSize) +
                   " bytes, too short for the ELF magic at offset 0)");
    }
    source.Read(0, std::min<std::uint64_t>(fileSize, EI_NIDENT), ident);
    if (std::memcmp(ident, ELFMAG, SELFMAG) != 0) {
        throw fail("not an ELF file (no ELF magic at offset 0)");
    }
    if (fileSize < sizeof(Elf64_Ehdr)) {
        throw fail("truncated: the ELF header needs " + std::to_string(sizeof(Elf64_Ehdr)) +
                   " bytes, the file has " + std::to_string(fileSize));
    }
    if (ident[EI_CLASS] != ELFCLASS64) {
        throw fail("not a 64-bit ELF file (class " + std::to_string(ident[EI_CLASS]) +
                   " at offset " + std::to_string(EI_CLASS) + ")");
    }
    if (ident[EI_DATA] != ELFDATA2LSB) {
        throw fail("not a little-endian ELF file (data encoding " + std::to_string(ident[EI_DATA]) +
                   " at offset " + std::to_string(EI_DATA) + ")");
    }
    if (ident[EI_VERSION] != EV_CURRENT) {
        throw fail("unknown ELF version " + std::to_string(ident[EI_VERSION]) + " at offset " +
                   std::to_string(EI_VERSION));
    }

    Elf64_Ehdr header{};
    source.Read(0, sizeof header, &header);
    if (header.e_shoff == 0) {
        return std::nullopt; // no section header table: no sections
    }
    if (header.e_shentsize != sizeof(Elf64_Shdr)) {
        throw fail("section header size " + std::to_string(header.e_shentsize) + " at offset " +
                   std::to_string(offsetof(Elf64_Ehdr, e_shentsize)) + " is not " +
                   std::to_string(sizeof(Elf64_Shdr)));
    }

    auto readSectionHeader = [&](std::uint64_t index) {
        const std::uint64_t at = header.e_shoff + index * sizeof(Elf64_Shdr);
        Elf64_Shdr section{};
        source.Read(at, sizeof section, &section);
        return section;
    };

    // Section 0 carries the real count and name-table index when they do not fit the
    // ELF header's 16-bit fields.
    if (!fits(header.e_shoff, sizeof(Elf64_Shdr))) {
        throw fail("section header table at offset " + Hex(header.e_shoff) +
                   " lies outside the file (" + std::to_string(fileSize) + " bytes)");
    }
    const Elf64_Shdr first = readSectionHeader(0);
    std::uint64_t count = header.e_shnum != 0 ? header.e_shnum : first.sh_size;
    std::uint64_t namesIndex = header.e_shstrndx != SHN_XINDEX ? header.e_shstrndx : first.sh_link;
    if (count == 0) {
        return std::nullopt;
    }
    if (count > (fileSize - header.e_shoff) / sizeof(Elf64_Shdr)) {
        throw fail("section header table of " + std::to_string(count) + " entries at offset " +
                   Hex(header.e_shoff) + " runs past the end of the file (" +
                   std::to_string(fileSize) + " bytes)");
    }
    if (namesIndex == SHN_UNDEF) {
        return std::nullopt; // no section name table: no section has a name
    }
    if (namesIndex >= count) {
        throw fail("section name table index " + std::to_string(namesIndex) +
                   " is not below the section count " + std::to_string(count));
    }

    const Elf64_Shdr namesHeader = readSectionHeader(namesIndex);
    if (namesHeader.sh_type != SHT_STRTAB) {
        throw fail("section name table (section " + std::to_string(namesIndex) +
                   ") is not a string table (type " + std::to_string(namesHeader.sh_type) + ")");
    }
    if (!fits(namesHeader.sh_offset, namesHeader.sh_size)) {
        throw fail("section name table of " + std::to_string(namesHeader.sh_size) +
                   " bytes at offset " + Hex(namesHeader.sh_offset) +
                   " runs past the end of the file (" + std::to_string(fileSize) + " bytes)");
    }
    std::vector<char> names(static_cast<std::size_t>(namesHeader.sh_size));
    source.Read(namesHeader.sh_offset, names.size(), names.data());

    for (std::uint64_t i = 0; i < count; ++i) {
        const Elf64_Shdr section = readSectionHeader(i);
        if (i == 0 && section.sh_type == SHT_NULL) {
            continue;
        }
        if (section.sh_name >= names.size()) {
            throw fail("name of section " + std::to_string(i) + " at string offset " +
                       std::to_string(section.sh_name) + " lies outside the section name table (" +
                       std::to_string(names.size()) + " bytes)");
        }
        const char* begin = names.data() + section.sh_name;
        const void* end = std::memchr(begin, '\0', names.size() - section.sh_name);
        if (end == nullptr) {
            throw fail("name of section " + std::to_string(i) + " at string offset " +
                       std::to_string(section.sh_name) +
                       " is not terminated inside the section name table");
        }
        const std::string_view sectionName(
            begin, static_cast<std::size_t>(static_cast<const char*>(end) - begin));
        if (sectionName != name) {
            continue;
        }
        if (section.sh_type == SHT_NOBITS) {
            throw fail("section " + std::string(name) + " has no bytes in the file");
        }
        if (!fits(section.sh_offset, section.sh_size)) {
            throw fail("section " + std::string(name) + " of " + std::to_string(section.sh_size) +
                       " bytes at offset " + Hex(section.sh_offset) +
                       " runs past the end of the file (" + std::to_string(fileSize) + " bytes)");
        }
        std::vector<std::uint8_t> bytes(static_cast<std::size_t>(section.sh_size));
        source.Read(section.sh_offset, bytes.size(), bytes.data());
        return bytes;
    }
    return std::nullopt;
}

} // namespace

std::optional<std::vector<std::uint8_t>> ReadElfSection(std::span<const std::uint8_t> image,
                                                        std::string_view name) {
    return FindSection(MemorySource(image), name, "ELF image");
}

std::optional<std::vector<std::uint8_t>> ReadElfSectionFromFile(const std::string& path,
                                                                std::string_view name) {
    const std::string subject = "ELF file '" + path + "'";
    return FindSection(FileSource(path, subject), name, subject);
}

} // namespace qzhost::resources
