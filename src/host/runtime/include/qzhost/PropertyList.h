// Plug-in property lists: the "PRPL" resource through which the host learns a plug-in's
// kind, name and entry point before it runs any of the plug-in's code.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "qzgp/QZ_Basic.h"

namespace qzhost {

/// One property: vendor and key as four-character codes written in reading order
/// ("XPLG", "kind"), the id, and the data with its padding.
struct Property {
    std::string vendor;
    std::string key;
    std::uint32_t id = 0;
    std::vector<std::uint8_t> data;
};

struct PropertyList {
    std::uint16_t formatVersion = 0;
    std::vector<Property> properties;

    /// The first property with this key, or null.
    QZ_HOST_API const Property* Find(const std::string& key) const;
};

/// Decodes a property list; throws std::runtime_error naming the offset of the first
/// byte that does not fit the format.
QZ_HOST_API PropertyList DecodePropertyList(std::span<const std::uint8_t> bytes);
/// Encodes a property list; the inverse of DecodePropertyList.
QZ_HOST_API std::vector<std::uint8_t> EncodePropertyList(const PropertyList& list);

} // namespace qzhost
