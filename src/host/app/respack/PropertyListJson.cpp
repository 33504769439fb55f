#include "PropertyListJson.h"

#include <algorithm>
#include <cctype>
#include <limits>
#include <stdexcept>
#include <string>

namespace qzrespack {

namespace {

using nlohmann::json;

const char* const kValueFields[] = {"fourcc", "pascal", "cstring", "u32", "hex"};

std::uint32_t ParseU32(const json& value, const std::string& where) {
    if (value.is_number_integer()) {
        const auto number = value.get<std::int64_t>();
        if (number >= 0 && number <= std::numeric_limits<std::uint32_t>::max()) {
            return static_cast<std::uint32_t>(number);
        }
    } else if (value.is_string()) {
        const auto text = value.get<std::string>();
        const bool hex = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
        const std::string digits = hex ? text.substr(2) : text;
        const bool valid =
            !digits.empty() && digits.find_first_not_of(hex ? "0123456789abcdefABCDEF"
                                                            : "0123456789") == std::string::npos;
        if (valid) {
            try {
                const unsigned long long number = std::stoull(digits, nullptr, hex ? 16 : 10);
                if (number <= std::numeric_limits<std::uint32_t>::max()) {
                    return static_cast<std::uint32_t>(number);
                }
            } catch (const std::out_of_range&) {
                // reported below
            }
        }
    }
    throw std::runtime_error(where + " is " + value.dump() +
                             ", not a 32-bit unsigned number (0 to 4294967295, or \"0x...\")");
}

std::string FourCharacterCode(const json& value, const std::string& where) {
    if (!value.is_string() || value.get<std::string>().size() != 4) {
        throw std::runtime_error(where + " is " + value.dump() +
                                 ", not a four-character code such as \"XPLG\"");
    }
    return value.get<std::string>();
}

std::string Text(const json& value, const std::string& where) {
    if (!value.is_string()) {
        throw std::runtime_error(where + " is " + value.dump() + ", not a string");
    }
    return value.get<std::string>();
}

std::vector<std::uint8_t> HexBytes(const std::string& text, const std::string& where) {
    std::string digits;
    for (const char c : text) {
        if (std::isspace(static_cast<unsigned char>(c)) != 0) {
            continue;
        }
        if (std::isxdigit(static_cast<unsigned char>(c)) == 0) {
            throw std::runtime_error(where + " holds '" + std::string(1, c) +
                                     "', not a hexadecimal digit");
        }
        digits += c;
    }
    if (digits.size() % 2 != 0) {
        throw std::runtime_error(where + " has an odd number of hexadecimal digits");
    }
    std::vector<std::uint8_t> bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        bytes.push_back(static_cast<std::uint8_t>(std::stoul(digits.substr(i, 2), nullptr, 16)));
    }
    return bytes;
}

std::vector<std::uint8_t> ValueBytes(const std::string& field, const json& value,
                                     const std::string& where) {
    std::vector<std::uint8_t> bytes;
    if (field == "fourcc") {
        const std::string code = FourCharacterCode(value, where);
        bytes.assign(code.rbegin(), code.rend());
    } else if (field == "pascal") {
        const std::string text = Text(value, where);
        if (text.size() > 255) {
            throw std::runtime_error(where + " is " + std::to_string(text.size()) +
                                     " bytes long; a Pascal string holds at most 255");
        }
        bytes.push_back(static_cast<std::uint8_t>(text.size()));
        bytes.insert(bytes.end(), text.begin(), text.end());
    } else if (field == "cstring") {
        const std::string text = Text(value, where);
        if (text.find('\0') != std::string::npos) {
            throw std::runtime_error(where + " holds a NUL character");
        }
        bytes.assign(text.begin(), text.end());
        bytes.push_back(0);
    } else if (field == "u32") {
        const std::uint32_t number = ParseU32(value, where);
        for (int shift = 0; shift < 32; shift += 8) {
            bytes.push_back(static_cast<std::uint8_t>(number >> shift));
        }
    } else {
        bytes = HexBytes(Text(value, where), where);
    }
    return bytes;
}

qzhost::Property PropertyFromJson(const json& item, std::size_t index) {
    std::string which = "property " + std::to_string(index + 1);
    if (!item.is_object()) {
        throw std::runtime_error(which + " is " + item.dump() + ", not an object");
    }
    if (!item.contains("key")) {
        throw std::runtime_error(which + " has no \"key\"");
    }
    qzhost::Property property;
    property.key = FourCharacterCode(item["key"], which + " \"key\"");
    which += " ('" + property.key + "')";
    property.vendor =
        item.contains("vendor") ? FourCharacterCode(item["vendor"], which + " \"vendor\"") : "XPLG";
    property.id = item.contains("id") ? ParseU32(item["id"], which + " \"id\"") : 0;

    std::string valueField;
    for (const auto& [field, value] : item.items()) {
        const bool isValue = std::find(std::begin(kValueFields), std::end(kValueFields), field) !=
                             std::end(kValueFields);
        if (isValue) {
            if (!valueField.empty()) {
                throw std::runtime_error(which + " has two values, \"" + valueField + "\" and \"" +
                                         field + "\"");
            }
            valueField = field;
        } else if (field != "key" && field != "vendor" && field != "id" && field != "length") {
            throw std::runtime_error(which + " has an unknown field \"" + field + "\"");
        }
    }
    if (valueField.empty()) {
        throw std::runtime_error(
            which + " has no value (one of \"fourcc\", \"pascal\", \"cstring\", \"u32\", \"hex\")");
    }
    property.data = ValueBytes(valueField, item[valueField], which + " \"" + valueField + "\"");

    const std::size_t natural = (property.data.size() + 3) / 4 * 4;
    std::size_t length = natural;
    if (item.contains("length")) {
        length = ParseU32(item["length"], which + " \"length\"");
        if (length % 4 != 0 || length < natural) {
            throw std::runtime_error(which + " \"length\" is " + std::to_string(length) +
                                     "; it must be a multiple of 4 and at least " +
                                     std::to_string(natural) + " for this value");
        }
    }
    property.data.resize(length, 0);
    return property;
}

} // namespace

qzhost::PropertyList PropertyListFromJson(const json& description, std::uint16_t formatVersion) {
    if (!description.is_array()) {
        throw std::runtime_error("the properties are " + description.dump() +
                                 ", not an array of property objects");
    }
    qzhost::PropertyList list;
    list.formatVersion = formatVersion;
    for (std::size_t i = 0; i < description.size(); ++i) {
        list.properties.push_back(PropertyFromJson(description[i], i));
    }
    return list;
}

} // namespace qzrespack
