// Builds one resource archive from a list of resources.

#include <algorithm>
#include <cstdint>
#include <set>
#include <string>
#include <tuple>

#include "ArchiveLayout.h"
#include "LittleEndian.h"
#include "ResourceNames.h"
#include "qzhost/ResourceArchive.h"

namespace qzhost::resources {

namespace {

void CheckName(std::size_t index, const char* what, const std::string& text) {
    const std::string problem = ResourceNameProblem(text);
    if (!problem.empty()) {
        throw ResourceFormatError("resource archive", "resource " + std::to_string(index + 1) +
                                                          ": " + what + " '" + text + "' " +
                                                          problem);
    }
}

} // namespace

std::vector<std::uint8_t> WriteResourceArchive(std::span<const Resource> resources) {
    if (resources.size() > UINT32_MAX) {
        throw ResourceFormatError("resource archive", "too many resources");
    }

    std::set<std::tuple<std::string, std::string, std::uint32_t>> seen;
    for (std::size_t i = 0; i < resources.size(); ++i) {
        const Resource& resource = resources[i];
        CheckName(i, "type", resource.type);
        CheckName(i, "name", resource.name);
        if (!seen.emplace(FoldedAscii(resource.type), FoldedAscii(resource.name), resource.language)
                 .second) {
            throw ResourceFormatError("resource archive",
                                      "resource " + std::to_string(i + 1) + ": " + resource.type +
                                          " '" + resource.name + "' in language " +
                                          std::to_string(resource.language) +
                                          " is listed twice (types and names ignore case)");
        }
    }

    // Header and table first, then the strings, then each resource's data, aligned.
    const std::size_t tableEnd = layout::kHeaderSize + layout::kEntrySize * resources.size();
    std::vector<std::uint8_t> out(tableEnd, 0);
    std::copy(layout::kMagic.begin(), layout::kMagic.end(), out.begin());
    le::WriteU32(out, layout::kVersionAt, layout::kFormatVersion);
    le::WriteU32(out, layout::kCountAt, static_cast<std::uint32_t>(resources.size()));

    auto appendString = [&out](const std::string& text) {
        const std::size_t at = out.size();
        out.insert(out.end(), text.begin(), text.end());
        return at;
    };
    auto offset32 = [](std::size_t value) {
        if (value > UINT32_MAX) {
            throw ResourceFormatError("resource archive", "strings run past 4 GiB");
        }
        return static_cast<std::uint32_t>(value);
    };

    for (std::size_t i = 0; i < resources.size(); ++i) {
        const std::size_t entry = layout::kHeaderSize + layout::kEntrySize * i;
        const std::size_t typeAt = appendString(resources[i].type);
        const std::size_t nameAt = appendString(resources[i].name);
        le::WriteU32(out, entry + layout::kEntryTypeOffsetAt, offset32(typeAt));
        le::WriteU32(out, entry + layout::kEntryTypeLengthAt,
                     static_cast<std::uint32_t>(resources[i].type.size()));
        le::WriteU32(out, entry + layout::kEntryNameOffsetAt, offset32(nameAt));
        le::WriteU32(out, entry + layout::kEntryNameLengthAt,
                     static_cast<std::uint32_t>(resources[i].name.size()));
        le::WriteU32(out, entry + layout::kEntryLanguageAt, resources[i].language);
        le::WriteU32(out, entry + layout::kEntryReservedAt, 0);
    }

    for (std::size_t i = 0; i < resources.size(); ++i) {
        const std::size_t entry = layout::kHeaderSize + layout::kEntrySize * i;
        out.resize(layout::AlignUp(out.size()), 0);
        const std::size_t dataAt = out.size();
        out.insert(out.end(), resources[i].data.begin(), resources[i].data.end());
        le::WriteU64(out, entry + layout::kEntryDataOffsetAt, dataAt);
        le::WriteU64(out, entry + layout::kEntryDataSizeAt, resources[i].data.size());
    }

    out.resize(layout::AlignUp(out.size()), 0);
    le::WriteU64(out, layout::kTotalSizeAt, out.size());
    return out;
}

} // namespace qzhost::resources
