// Fuzz target of the resource readers: the same bytes as a plug-in property list
// (DecodePropertyList), as a resource section (ResourceArchive::Parse) and as an ELF image
// whose resource section is read (ReadElfSection) and then parsed. What the property list
// and archive readers accept, their writers write back: the property list byte for byte,
// the archive as an archive that reads back with the same resources.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <set>
#include <span>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

#include "qzhost/PropertyList.h"
#include "qzhost/ResourceArchive.h"

namespace {

using qzhost::resources::Resource;
using qzhost::resources::ResourceArchive;
using qzhost::resources::ResourceEntry;
using qzhost::resources::ResourceFormatError;

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

void CheckPropertyList(std::span<const std::uint8_t> bytes) {
    qzhost::PropertyList list;
    try {
        list = qzhost::DecodePropertyList(bytes);
    } catch (const std::runtime_error&) {
        return;
    }
    const std::vector<std::uint8_t> again = qzhost::EncodePropertyList(list);
    Require(std::equal(again.begin(), again.end(), bytes.begin(), bytes.end()));
}

std::string Folded(const std::string& text) {
    std::string folded = text;
    for (char& c : folded) {
        if (c >= 'a' && c <= 'z') {
            c = static_cast<char>(c - 'a' + 'A');
        }
    }
    return folded;
}

void CheckArchive(const ResourceArchive& archive) {
    std::vector<Resource> resources;
    std::set<std::tuple<std::string, std::string, std::uint32_t>> keys;
    for (const ResourceEntry& entry : archive.Entries()) {
        const std::span<const std::uint8_t> data = archive.Data(entry);
        Require(data.size() == entry.size);
        Require(archive.Find(entry.type, entry.name) != nullptr);
        if (entry.type == "PRPL") {
            CheckPropertyList(data);
        }
        keys.emplace(Folded(entry.type), Folded(entry.name), entry.language);
        resources.push_back({entry.type, entry.name, entry.language, {data.begin(), data.end()}});
    }
    // Archives of one section may repeat a resource; one archive may not.
    if (keys.size() != resources.size()) {
        return;
    }
    const ResourceArchive rewritten =
        ResourceArchive::Parse(qzhost::resources::WriteResourceArchive(resources));
    Require(rewritten.Entries().size() == resources.size());
    for (std::size_t i = 0; i < resources.size(); ++i) {
        const ResourceEntry& entry = rewritten.Entries()[i];
        const std::span<const std::uint8_t> data = rewritten.Data(entry);
        Require(entry.type == resources[i].type && entry.name == resources[i].name &&
                entry.language == resources[i].language &&
                std::equal(data.begin(), data.end(), resources[i].data.begin(),
                           resources[i].data.end()));
    }
}

void CheckSection(std::vector<std::uint8_t> section) {
    ResourceArchive archive;
    try {
        archive = ResourceArchive::Parse(std::move(section));
    } catch (const ResourceFormatError&) {
        return;
    }
    CheckArchive(archive);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span<const std::uint8_t> bytes(data, size);
    CheckPropertyList(bytes);
    CheckSection({bytes.begin(), bytes.end()});
    try {
        if (auto section =
                qzhost::resources::ReadElfSection(bytes, qzhost::resources::kResourceSectionName)) {
            CheckSection(std::move(*section));
        }
    } catch (const ResourceFormatError&) {
    }
    return 0;
}
