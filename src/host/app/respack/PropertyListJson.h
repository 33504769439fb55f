// The readable description of a plug-in property list that resource manifests use, and
// its compilation to a qzhost::PropertyList.
//
// A description is a JSON array of properties, in stored order. Each property is an
// object with
//   "key"     the four-character property key, e.g. "kind"
//   "vendor"  (optional) the four-character vendor signature, "XPLG" when left out
//   "id"      (optional) the property id, 0 when left out
//   "length"  (optional) the data length with padding; at least the natural length
//             below and a multiple of 4
// and exactly one value:
//   "fourcc"  a four-character code, stored with its bytes reversed        4 bytes
//   "pascal"  a text stored as a length byte and the text (at most 255)  1 + n bytes
//   "cstring" a text stored with a terminating NUL                       n + 1 bytes
//   "u32"     a 32-bit number, little-endian: a JSON number or a string
//             in decimal or with "0x"                                      4 bytes
//   "hex"     raw bytes as hexadecimal digits (spaces allowed)               n bytes
// The natural length is the value's size rounded up to a multiple of 4 with zero bytes.
// Texts are stored as their UTF-8 bytes.
#pragma once

#include <cstdint>

#include <nlohmann/json.hpp>

#include "qzhost/PropertyList.h"

namespace qzrespack {

/// Compiles `description` (see above); throws std::runtime_error naming the property
/// and the field that is wrong.
qzhost::PropertyList PropertyListFromJson(const nlohmann::json& description,
                                          std::uint16_t formatVersion = 1);

} // namespace qzrespack
