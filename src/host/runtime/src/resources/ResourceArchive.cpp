// Reads the resource archives of a resource section, checking every offset and size.

#include "qzhost/ResourceArchive.h"

#include <algorithm>
#include <set>
#include <tuple>

#include "ArchiveLayout.h"
#include "LittleEndian.h"
#include "ResourceNames.h"

namespace qzhost::resources {

namespace {

const char* const kSubject = "resource section";

std::string At(std::size_t offset) {
    return "offset " + std::to_string(offset);
}

bool AllZero(std::span<const std::uint8_t> bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](std::uint8_t b) { return b == 0; });
}

// Reads the archive that starts at `base` in `section`, appends its entries (with
// offsets from the start of the section) and returns the archive's total size.
std::size_t ReadOneArchive(std::span<const std::uint8_t> section, std::size_t base,
                           std::vector<ResourceEntry>& entries) {
    const std::size_t remaining = section.size() - base;
    const std::string where = "archive at " + At(base);
    if (remaining < layout::kHeaderSize) {
        const std::size_t compared = std::min(remaining, layout::kMagic.size());
        if (std::equal(layout::kMagic.begin(),
                       layout::kMagic.begin() + static_cast<std::ptrdiff_t>(compared),
                       section.begin() + static_cast<std::ptrdiff_t>(base))) {
            throw ResourceFormatError(
                kSubject, where + ": header needs " + std::to_string(layout::kHeaderSize) +
                              " bytes, only " + std::to_string(remaining) + " remain");
        }
        throw ResourceFormatError(kSubject, "unexpected bytes at " + At(base) +
                                                " (neither a resource archive nor zero padding)");
    }
    if (!std::equal(layout::kMagic.begin(), layout::kMagic.end(),
                    section.begin() + static_cast<std::ptrdiff_t>(base))) {
        throw ResourceFormatError(kSubject, "unexpected bytes at " + At(base) +
                                                " (neither a resource archive nor zero padding)");
    }
    const std::uint32_t version = le::ReadU32(section, base + layout::kVersionAt);
    if (version != layout::kFormatVersion) {
        throw ResourceFormatError(kSubject, where + ": format version " + std::to_string(version) +
                                                " at " + At(base + layout::kVersionAt) +
                                                " is not supported (expected " +
                                                std::to_string(layout::kFormatVersion) + ")");
    }
    const std::uint64_t total = le::ReadU64(section, base + layout::kTotalSizeAt);
    if (total < layout::kHeaderSize || total > remaining) {
        throw ResourceFormatError(kSubject, where + ": total size " + std::to_string(total) +
                                                " at " + At(base + layout::kTotalSizeAt) +
                                                " does not fit the " + std::to_string(remaining) +
                                                " bytes that remain in the section");
    }
    const auto archive = section.subspan(base, static_cast<std::size_t>(total));
    const std::uint32_t count = le::ReadU32(section, base + layout::kCountAt);
    if (count > (archive.size() - layout::kHeaderSize) / layout::kEntrySize) {
        throw ResourceFormatError(
            kSubject, where + ": a table of " + std::to_string(count) + " entries (count at " +
                          At(base + layout::kCountAt) + ") runs past the archive's end at " +
                          At(base + archive.size()));
    }

    std::set<std::tuple<std::string, std::string, std::uint32_t>> seen;
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::size_t entryAt = layout::kHeaderSize + layout::kEntrySize * i;
        const std::string entryWhere =
            where + ", entry " + std::to_string(i + 1) + " at " + At(base + entryAt);

        auto readString = [&](std::size_t offsetAt, std::size_t lengthAt, const char* what) {
            const std::uint32_t offset = le::ReadU32(archive, entryAt + offsetAt);
            const std::uint32_t length = le::ReadU32(archive, entryAt + lengthAt);
            if (offset > archive.size() || length > archive.size() - offset) {
                throw ResourceFormatError(
                    kSubject, entryWhere + ": " + what + " of " + std::to_string(length) +
                                  " bytes at " + At(base + offset) +
                                  " runs past the archive's end at " + At(base + archive.size()));
            }
            std::string text(reinterpret_cast<const char*>(archive.data()) + offset, length);
            const std::string problem = ResourceNameProblem(text);
            if (!problem.empty()) {
                throw ResourceFormatError(kSubject, entryWhere + ": " + what + " at " +
                                                        At(base + offset) + " " + problem);
            }
            return text;
        };

        ResourceEntry entry;
        entry.type = readString(layout::kEntryTypeOffsetAt, layout::kEntryTypeLengthAt, "type");
        entry.name = readString(layout::kEntryNameOffsetAt, layout::kEntryNameLengthAt, "name");
        entry.language = le::ReadU32(archive, entryAt + layout::kEntryLanguageAt);
        const std::uint32_t reserved = le::ReadU32(archive, entryAt + layout::kEntryReservedAt);
        if (reserved != 0) {
            throw ResourceFormatError(kSubject, entryWhere + ": reserved field at " +
                                                    At(base + entryAt + layout::kEntryReservedAt) +
                                                    " is " + std::to_string(reserved) +
                                                    ", expected 0");
        }
        const std::uint64_t dataOffset = le::ReadU64(archive, entryAt + layout::kEntryDataOffsetAt);
        const std::uint64_t dataSize = le::ReadU64(archive, entryAt + layout::kEntryDataSizeAt);
        if (dataOffset > archive.size() || dataSize > archive.size() - dataOffset) {
            throw ResourceFormatError(kSubject,
                                      entryWhere + ": data of " + std::to_string(dataSize) +
                                          " bytes at " + std::to_string(dataOffset) +
                                          " from the archive's start runs past its end at " +
                                          At(base + archive.size()));
        }
        if (!seen.emplace(FoldedAscii(entry.type), FoldedAscii(entry.name), entry.language)
                 .second) {
            throw ResourceFormatError(
                kSubject, entryWhere + ": " + entry.type + " '" + entry.name + "' in language " +
                              std::to_string(entry.language) + " appears twice");
        }
        entry.offset = base + static_cast<std::size_t>(dataOffset);
        entry.size = static_cast<std::size_t>(dataSize);
        entries.push_back(std::move(entry));
    }
    return archive.size();
}

} // namespace

ResourceArchive ResourceArchive::Parse(std::vector<std::uint8_t> section) {
    ResourceArchive result;
    const std::span<const std::uint8_t> bytes(section);
    std::size_t pos = 0;
    while (pos < bytes.size()) {
        // Zero padding between and after archives, in whole alignment units.
        const std::size_t unit = std::min(layout::kAlignment, bytes.size() - pos);
        if (AllZero(bytes.subspan(pos, unit))) {
            pos += unit;
            continue;
        }
        const std::size_t size = ReadOneArchive(bytes, pos, result.entries_);
        const std::size_t next = std::min(layout::AlignUp(pos + size), bytes.size());
        if (!AllZero(bytes.subspan(pos + size, next - (pos + size)))) {
            throw ResourceFormatError(kSubject, "unexpected bytes at " + At(pos + size) +
                                                    " after the archive at " + At(pos));
        }
        pos = next;
    }
    result.bytes_ = std::move(section);
    return result;
}

ResourceArchive ResourceArchive::FromFile(const std::string& path) {
    auto section = ReadElfSectionFromFile(path, kResourceSectionName);
    if (!section) {
        return ResourceArchive();
    }
    try {
        return Parse(std::move(*section));
    } catch (const ResourceFormatError& error) {
        throw ResourceFormatError("ELF file '" + path + "'", "section " +
                                                                 std::string(kResourceSectionName) +
                                                                 ": " + error.Reason());
    }
}

const ResourceEntry* ResourceArchive::Find(std::string_view type,
                                           std::string_view name) const noexcept {
    for (const ResourceEntry& entry : entries_) {
        if (ResourceNamesEqual(entry.type, type) && ResourceNamesEqual(entry.name, name)) {
            return &entry;
        }
    }
    return nullptr;
}

const ResourceEntry* ResourceArchive::Find(std::string_view type, std::string_view name,
                                           std::uint32_t language) const noexcept {
    for (const ResourceEntry& entry : entries_) {
        if (entry.language == language && ResourceNamesEqual(entry.type, type) &&
            ResourceNamesEqual(entry.name, name)) {
            return &entry;
        }
    }
    return Find(type, name);
}

std::span<const std::uint8_t> ResourceArchive::Data(const ResourceEntry& entry) const noexcept {
    if (entry.offset > bytes_.size() || entry.size > bytes_.size() - entry.offset) {
        return {};
    }
    return std::span<const std::uint8_t>(bytes_).subspan(entry.offset, entry.size);
}

} // namespace qzhost::resources
