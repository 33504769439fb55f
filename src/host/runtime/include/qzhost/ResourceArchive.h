// Resources carried inside a library file.
//
// A library keeps its resources (property list, control layouts, pictures) in an ELF
// section of its own, ".qzres", which the host reads from the file without loading or
// running the library. The section holds one or more resource archives, one after
// another, each starting at a multiple of 8 bytes from the start of the section; the
// bytes between two archives and after the last one are zero (the linker pads input
// sections to their alignment).
//
// Archive layout, little-endian throughout, offsets relative to the archive's first byte:
//
//   offset  width  field
//   0       8      magic "QZRESARC"
//   8       4      format version, 1
//   12      4      entry count N
//   16      8      total size of the archive in bytes (header, table, strings and data)
//   24      40*N   entry table, one record per resource:
//                    +0   8  data offset
//                    +8   8  data size
//                    +16  4  type offset    (type string: ASCII, no terminating NUL)
//                    +20  4  type length
//                    +24  4  name offset    (name string: ASCII, no terminating NUL)
//                    +28  4  name length
//                    +32  4  language       (a numeric language id, 1033 for en-US)
//                    +36  4  reserved, 0
//   ...            strings, then each resource's data starting at a multiple of 8
//
// Types and names are 1 to 255 printable ASCII characters (0x20 to 0x7E). They are
// matched without regard to case by ASCII folding: 'a' to 'z' equal 'A' to 'Z', and no
// other character is folded. Two entries of one archive may not share type, name and
// language under that folding.
//
// Every reader below checks every offset and size against the bytes it has and throws
// ResourceFormatError (a std::runtime_error) with a message naming the offset that does
// not fit.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "qzgp/QZ_Basic.h"

namespace qzhost::resources {

/// The name of the ELF section that holds a library's resource archives.
inline constexpr std::string_view kResourceSectionName = ".qzres";
/// The language of the resources that a library carries by default (en-US).
inline constexpr std::uint32_t kDefaultLanguage = 1033;

/// A file or resource archive that cannot be read or does not fit its format. what() is
/// "<subject>: <reason>" on one line, for example "ELF file 'x.so': not an ELF file (no
/// ELF magic at offset 0)"; Reason() is the part after the subject.
class QZ_HOST_API ResourceFormatError : public std::runtime_error {
public:
    ResourceFormatError(const std::string& subject, const std::string& reason);
    const std::string& Subject() const noexcept { return subject_; }
    const std::string& Reason() const noexcept { return reason_; }

private:
    std::string subject_;
    std::string reason_;
};

/// Whether two resource types or names are equal under ASCII case folding.
QZ_HOST_API bool ResourceNamesEqual(std::string_view a, std::string_view b) noexcept;

/// One resource to be written into an archive.
struct Resource {
    std::string type;
    std::string name;
    std::uint32_t language = kDefaultLanguage;
    std::vector<std::uint8_t> data;
};

/// Builds one archive holding `resources` in the given order; its size is a multiple of
/// 8. Throws ResourceFormatError for an invalid type or name, or for two resources with
/// the same type, name and language.
QZ_HOST_API std::vector<std::uint8_t> WriteResourceArchive(std::span<const Resource> resources);

/// One resource found in an archive: where its data lies in the archive's bytes.
struct ResourceEntry {
    std::string type;
    std::string name;
    std::uint32_t language = 0;
    std::size_t offset = 0; // from the start of the bytes given to ResourceArchive::Parse
    std::size_t size = 0;
};

/// The resources of a whole resource section: every archive in it, read and checked.
class QZ_HOST_API ResourceArchive {
public:
    /// No resources at all.
    ResourceArchive() = default;

    /// Reads the archives held in `section` (one or more, or none when every byte is
    /// zero). Throws ResourceFormatError when anything does not fit the layout.
    static ResourceArchive Parse(std::vector<std::uint8_t> section);

    /// Reads the resource section of the ELF file at `path`; a file without one has no
    /// resources. Throws ResourceFormatError when the file cannot be read, is not an
    /// ELF64 file or does not fit its own headers, or when the archive is corrupt.
    static ResourceArchive FromFile(const std::string& path);

    const std::vector<ResourceEntry>& Entries() const noexcept { return entries_; }

    /// The first resource of `type` named `name` in any language, or null.
    const ResourceEntry* Find(std::string_view type, std::string_view name) const noexcept;
    /// The resource of `type` named `name` in `language`, else the first one of that type
    /// and name in any language, or null.
    const ResourceEntry* Find(std::string_view type, std::string_view name,
                              std::uint32_t language) const noexcept;

    /// The data of an entry of this archive.
    std::span<const std::uint8_t> Data(const ResourceEntry& entry) const noexcept;

private:
    std::vector<std::uint8_t> bytes_;
    std::vector<ResourceEntry> entries_;
};

/// The bytes of the section called `name` in the ELF64 little-endian image `image`, or
/// nullopt when the image has no such section. Throws ResourceFormatError when the image
/// is not such a file or its headers point outside it.
QZ_HOST_API std::optional<std::vector<std::uint8_t>>
ReadElfSection(std::span<const std::uint8_t> image, std::string_view name);

/// The same for the file at `path`, reading only the headers and that section. Messages
/// name the file.
QZ_HOST_API std::optional<std::vector<std::uint8_t>> ReadElfSectionFromFile(const std::string& path,
                                                                            std::string_view name);

} // namespace qzhost::resources
