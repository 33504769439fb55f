// Plug-in property lists: a small header and a run of tagged properties, little-endian,
// four-character codes stored with their bytes reversed.
//
//   offset  width  field
//   0       2      format version
//   2       4      reserved, 0
//   6       4      property count
//   10      ...    properties: vendor (4), key (4), id (u32), data length (u32, a multiple
//                  of 4, padding included), data

#include "qzhost/PropertyList.h"

#include <stdexcept>

#include "LittleEndian.h"

namespace qzhost {

namespace le = resources::le;

namespace {

constexpr std::size_t kHeaderSize = 10;
constexpr std::size_t kPropertyHeaderSize = 16;

[[noreturn]] void Fail(const std::string& detail) {
    throw std::runtime_error("property list: " + detail);
}

std::string At(std::size_t offset) {
    return "offset " + std::to_string(offset);
}

// A four-character code as stored: its bytes in reverse order.
std::string ReadCode(std::span<const std::uint8_t> bytes, std::size_t at) {
    return {static_cast<char>(bytes[at + 3]), static_cast<char>(bytes[at + 2]),
            static_cast<char>(bytes[at + 1]), static_cast<char>(bytes[at])};
}

std::string Printable(const std::string& code) {
    std::string text;
    for (const char c : code) {
        const auto u = static_cast<unsigned char>(c);
        if (u >= 0x20 && u < 0x7F) {
            text += c;
        } else {
            static const char* const digits = "0123456789ABCDEF";
            text += "\\x";
            text += digits[u >> 4];
            text += digits[u & 0xF];
        }
    }
    return text;
}

} // namespace

const Property* PropertyList::Find(const std::string& key) const {
    for (const Property& property : properties) {
        if (property.key == key) {
            return &property;
        }
    }
    return nullptr;
}

PropertyList DecodePropertyList(std::span<const std::uint8_t> bytes) {
    if (bytes.size() < kHeaderSize) {
        Fail("the header needs " + std::to_string(kHeaderSize) + " bytes, only " +
             std::to_string(bytes.size()) + " given");
    }
    PropertyList list;
    list.formatVersion = le::ReadU16(bytes, 0);
    const std::uint32_t reserved = le::ReadU32(bytes, 2);
    if (reserved != 0) {
        Fail("the reserved field at " + At(2) + " is " + std::to_string(reserved) + ", expected 0");
    }
    const std::uint32_t count = le::ReadU32(bytes, 6);

    std::size_t pos = kHeaderSize;
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::string which =
            "property " + std::to_string(i + 1) + " of " + std::to_string(count) + " at " + At(pos);
        const std::size_t remaining = bytes.size() - pos;
        if (remaining < kPropertyHeaderSize) {
            Fail(which + ": its header needs " + std::to_string(kPropertyHeaderSize) +
                 " bytes, only " + std::to_string(remaining) + " remain");
        }
        Property property;
        property.vendor = ReadCode(bytes, pos);
        property.key = ReadCode(bytes, pos + 4);
        property.id = le::ReadU32(bytes, pos + 8);
        const std::uint32_t length = le::ReadU32(bytes, pos + 12);
        const std::string named = which + " ('" + Printable(property.key) + "')";
        if (length % 4 != 0) {
            Fail(named + ": data length " + std::to_string(length) + " at " + At(pos + 12) +
                 " is not a multiple of 4");
        }
        if (length > remaining - kPropertyHeaderSize) {
            Fail(named + ": " + std::to_string(length) + " bytes of data at " +
                 At(pos + kPropertyHeaderSize) + " run past the end (" +
                 std::to_string(remaining - kPropertyHeaderSize) + " bytes remain)");
        }
        const auto data = bytes.subspan(pos + kPropertyHeaderSize, length);
        property.data.assign(data.begin(), data.end());
        list.properties.push_back(std::move(property));
        pos += kPropertyHeaderSize + length;
    }
    if (pos != bytes.size()) {
        Fail(std::to_string(bytes.size() - pos) + " bytes at " + At(pos) + " follow the last of " +
             std::to_string(count) + " properties");
    }
    return list;
}

std::vector<std::uint8_t> EncodePropertyList(const PropertyList& list) {
    if (list.properties.size() > UINT32_MAX) {
        Fail("too many properties");
    }
    std::vector<std::uint8_t> out;
    le::AppendU16(out, list.formatVersion);
    le::AppendU32(out, 0);
    le::AppendU32(out, static_cast<std::uint32_t>(list.properties.size()));
    for (std::size_t i = 0; i < list.properties.size(); ++i) {
        const Property& property = list.properties[i];
        const std::string which = "property " + std::to_string(i + 1);
        for (const std::string* code : {&property.vendor, &property.key}) {
            if (code->size() != 4) {
                Fail(which + ": '" + Printable(*code) + "' is not a four-character code");
            }
            out.insert(out.end(), code->rbegin(), code->rend());
        }
        if (property.data.size() % 4 != 0 || property.data.size() > UINT32_MAX) {
            Fail(which + " ('" + Printable(property.key) + "'): data length " +
                 std::to_string(property.data.size()) + " is not a multiple of 4");
        }
        le::AppendU32(out, property.id);
        le::AppendU32(out, static_cast<std::uint32_t>(property.data.size()));
        out.insert(out.end(), property.data.begin(), property.data.end());
    }
    return out;
}

} // namespace qzhost
