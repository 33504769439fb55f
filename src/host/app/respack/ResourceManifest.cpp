#include "ResourceManifest.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <limits>
#include <stdexcept>
#include <string>

#include <nlohmann/json.hpp>

#include "PropertyListJson.h"

namespace qzrespack {

namespace {

using nlohmann::json;

std::vector<std::uint8_t> ReadFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw std::runtime_error("cannot open '" + path.string() + "': " + std::strerror(errno));
    }
    std::vector<std::uint8_t> bytes((std::istreambuf_iterator<char>(in)),
                                    std::istreambuf_iterator<char>());
    if (in.bad()) {
        throw std::runtime_error("cannot read '" + path.string() + "'");
    }
    return bytes;
}

std::string NameText(const json& value, const char* field) {
    if (value.is_string()) {
        return value.get<std::string>();
    }
    if (value.is_number_integer() && value.get<std::int64_t>() >= 0) {
        return std::to_string(value.get<std::int64_t>());
    }
    throw std::runtime_error(std::string("\"") + field + "\" is " + value.dump() +
                             ", not a string");
}

std::uint32_t UnsignedField(const json& value, const char* field, std::uint64_t max) {
    if (!value.is_number_integer() || value.get<std::int64_t>() < 0 ||
        static_cast<std::uint64_t>(value.get<std::int64_t>()) > max) {
        throw std::runtime_error(std::string("\"") + field + "\" is " + value.dump() +
                                 ", not a number from 0 to " + std::to_string(max));
    }
    return static_cast<std::uint32_t>(value.get<std::int64_t>());
}

qzhost::resources::Resource ResourceFromJson(const json& item, const std::filesystem::path& folder,
                                             Manifest& manifest) {
    if (!item.is_object()) {
        throw std::runtime_error("expected an object, found " + item.dump());
    }
    for (const auto& [field, value] : item.items()) {
        (void)value;
        if (field != "type" && field != "name" && field != "language" && field != "file" &&
            field != "properties" && field != "format_version") {
            throw std::runtime_error("unknown field \"" + field + "\"");
        }
    }
    if (!item.contains("type") || !item.contains("name")) {
        throw std::runtime_error("a \"type\" and a \"name\" are needed");
    }
    qzhost::resources::Resource resource;
    resource.type = NameText(item["type"], "type");
    resource.name = NameText(item["name"], "name");
    if (item.contains("language")) {
        resource.language =
            UnsignedField(item["language"], "language", std::numeric_limits<std::uint32_t>::max());
    }

    const bool hasFile = item.contains("file");
    const bool hasProperties = item.contains("properties");
    if (hasFile == hasProperties) {
        throw std::runtime_error("exactly one of \"file\" and \"properties\" is needed");
    }
    if (hasFile) {
        if (item.contains("format_version")) {
            throw std::runtime_error("\"format_version\" only goes with \"properties\"");
        }
        if (!item["file"].is_string() || item["file"].get<std::string>().empty()) {
            throw std::runtime_error("\"file\" is " + item["file"].dump() + ", not a path");
        }
        const std::filesystem::path file =
            (folder / item["file"].get<std::string>()).lexically_normal();
        manifest.inputs.push_back(file);
        resource.data = ReadFile(file);
    } else {
        const std::uint16_t version = item.contains("format_version")
                                          ? static_cast<std::uint16_t>(UnsignedField(
                                                item["format_version"], "format_version", 0xFFFF))
                                          : 1;
        resource.data =
            qzhost::EncodePropertyList(PropertyListFromJson(item["properties"], version));
    }
    return resource;
}

} // namespace

Manifest LoadManifest(const std::filesystem::path& path) {
    const std::filesystem::path manifestPath = std::filesystem::absolute(path).lexically_normal();
    const std::string subject = "manifest '" + path.string() + "'";
    Manifest manifest;
    manifest.inputs.push_back(manifestPath);

    json document;
    try {
        const std::vector<std::uint8_t> bytes = ReadFile(manifestPath);
        document = json::parse(bytes.begin(), bytes.end());
    } catch (const std::exception& error) {
        throw std::runtime_error(subject + ": " + error.what());
    }
    if (!document.is_object() || !document.contains("resources") ||
        !document["resources"].is_array()) {
        throw std::runtime_error(subject + ": expected an object with a \"resources\" array");
    }
    for (const auto& [field, value] : document.items()) {
        (void)value;
        if (field != "resources") {
            throw std::runtime_error(subject + ": unknown field \"" + field + "\"");
        }
    }

    const std::filesystem::path folder = manifestPath.parent_path();
    const json& list = document["resources"];
    for (std::size_t i = 0; i < list.size(); ++i) {
        std::string which = "resource " + std::to_string(i + 1);
        if (list[i].is_object() && list[i].contains("type") && list[i].contains("name")) {
            which += " (" + list[i]["type"].dump() + " " + list[i]["name"].dump() + ")";
        }
        try {
            manifest.resources.push_back(ResourceFromJson(list[i], folder, manifest));
        } catch (const std::exception& error) {
            throw std::runtime_error(subject + ": " + which + ": " + error.what());
        }
    }
    return manifest;
}

} // namespace qzrespack
