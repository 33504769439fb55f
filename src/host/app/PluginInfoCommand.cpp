#include "PluginInfoCommand.h"

#include <cstdio>
#include <filesystem>
#include <iostream>
#include <memory>

#include "ResourceCommand.h"

namespace qzhost::commands {

namespace {

using nlohmann::json;

// A property's value, read by the key's usual form: which manifest value field describes
// it, and the value.
struct Value {
    const char* field; // "fourcc", "pascal", "cstring", "u32" or "hex"
    json value;
};

bool ZeroFrom(const std::vector<std::uint8_t>& data, std::size_t from) {
    for (std::size_t i = from; i < data.size(); ++i) {
        if (data[i] != 0) {
            return false;
        }
    }
    return true;
}

std::string Hex(const std::vector<std::uint8_t>& data) {
    static const char* const digits = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t b : data) {
        if (!text.empty()) {
            text += ' ';
        }
        text += digits[b >> 4];
        text += digits[b & 0xF];
    }
    return text;
}

std::uint32_t U32(const std::vector<std::uint8_t>& data) {
    return static_cast<std::uint32_t>(data[0]) | (static_cast<std::uint32_t>(data[1]) << 8) |
           (static_cast<std::uint32_t>(data[2]) << 16) |
           (static_cast<std::uint32_t>(data[3]) << 24);
}

Value Describe(const Property& property) {
    const auto& data = property.data;
    if (property.key == "kind" && data.size() == 4) {
        return {"fourcc", std::string(data.rbegin(), data.rend())};
    }
    if ((property.key == "name" || property.key == "catg") && !data.empty() &&
        data[0] + 1u <= data.size() && ZeroFrom(data, data[0] + 1u)) {
        return {"pascal", std::string(data.begin() + 1, data.begin() + 1 + data[0])};
    }
    if (property.key == "8664") {
        for (std::size_t i = 0; i < data.size(); ++i) {
            if (data[i] == 0) {
                if (ZeroFrom(data, i)) {
                    return {"cstring",
                            std::string(data.begin(), data.begin() + static_cast<long>(i))};
                }
                break;
            }
        }
    }
    if (data.size() == 4) {
        return {"u32", U32(data)};
    }
    return {"hex", Hex(data)};
}

// Printable text in double quotes, with quotes, backslashes and other bytes escaped.
std::string Quoted(const std::string& text) {
    std::string out = "\"";
    for (const char c : text) {
        const auto u = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (u < 0x20 || u == 0x7F) {
            char escape[5];
            std::snprintf(escape, sizeof escape, "\\x%02x", u);
            out += escape;
        } else {
            out += c;
        }
    }
    return out + "\"";
}

std::string Code(const std::string& code) {
    const std::string quoted = Quoted(code);
    const bool plain = quoted.size() == code.size() + 2 && code.find(' ') == std::string::npos;
    return plain ? code : quoted;
}

} // namespace

std::string PluginInfoText(const PluginInfo& info) {
    std::string text;
    for (const Property& property : info.properties.properties) {
        const Value value = Describe(property);
        std::string shown;
        const std::string field = value.field;
        if (field == "fourcc") {
            shown = Code(value.value.get<std::string>());
        } else if (field == "pascal") {
            shown = Quoted(value.value.get<std::string>());
        } else if (field == "cstring") {
            shown = Code(value.value.get<std::string>());
        } else if (field == "u32") {
            char number[11];
            std::snprintf(number, sizeof number, "0x%08x", value.value.get<std::uint32_t>());
            shown = number;
        } else {
            shown = property.data.empty() ? "(no data)" : value.value.get<std::string>();
        }
        text += Code(property.key) + "  " + shown;
        if (property.vendor != "XPLG" || property.id != 0) {
            text +=
                "  (vendor " + Code(property.vendor) + ", id " + std::to_string(property.id) + ")";
        }
        text += "\n";
    }
    return text;
}

json PluginInfoJson(const PluginInfo& info) {
    json properties = json::array();
    for (const Property& property : info.properties.properties) {
        const Value value = Describe(property);
        json item;
        item["vendor"] = property.vendor;
        item["key"] = property.key;
        item["id"] = property.id;
        item["length"] = property.data.size();
        item[value.field] = value.value;
        properties.push_back(std::move(item));
    }
    json out;
    out["format_version"] = info.properties.formatVersion;
    out["kind"] = info.kind;
    out["entry_point"] = info.entryPoint;
    out["properties"] = std::move(properties);
    return out;
}

int RunPluginInfoCommand(const std::string& library, bool asJson, std::ostream& out,
                         std::ostream& err) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(library, error)) {
        err << "qzhost plugin-info: no such file '" << library << "'\n";
        return kExitBadArgument;
    }
    PluginInfo info;
    try {
        info = ReadPluginInfo(library);
    } catch (const PluginLoadError& failure) {
        err << "qzhost plugin-info: " << failure.what() << "\n";
        return kExitHostFailure;
    }
    if (asJson) {
        out << PluginInfoJson(info).dump(2, ' ', false, json::error_handler_t::replace) << "\n";
    } else {
        out << PluginInfoText(info);
    }
    out.flush();
    return kExitOk;
}

CLI::App* AddPluginInfoCommand(CLI::App& app, int& exit_status) {
    CLI::App* command = app.add_subcommand(
        "plugin-info",
        "Read a plug-in's property list (PRPL 16000) from its file without loading it, check "
        "it as the host does before loading (kind QZgx, an entry-point name), and print one "
        "property per line. Exit status 2: no such file; 3: not a valid plug-in.");
    struct Arguments {
        std::string library;
        bool json = false;
    };
    auto arguments = std::make_shared<Arguments>();
    command->add_option("LIBRARY", arguments->library, "The plug-in library file")->required();
    command->add_flag("--json", arguments->json, "Print the property list as JSON");
    command->callback([arguments, &exit_status] {
        exit_status =
            RunPluginInfoCommand(arguments->library, arguments->json, std::cout, std::cerr);
    });
    return command;
}

} // namespace qzhost::commands
