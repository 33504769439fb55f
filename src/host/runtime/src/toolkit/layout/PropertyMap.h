// The host's property-map documents in XML, read into a tree of typed values.
//
//   <prop.map version="4"><prop.list>
//     <prop.pair><key>name</key> value </prop.pair> ...
//   </prop.list></prop.map>
//
// A value is <string>, <int type="signed|unsigned" size="8|16|32|64">, <float>, <array>
// whose first child <array.type> holds one empty element naming the type of the elements
// that follow, or a nested <prop.list>.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qzhost::layout {

/// A document that is not a valid property map; what() says what is wrong.
class PropertyMapError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct PropertyValue;
/// The pairs of a prop.list in document order.
using PropertyList = std::vector<std::pair<std::string, PropertyValue>>;

struct PropertyValue {
    // Declared here and defaulted in the source file: a value holds a list of pairs of
    // values, which is an incomplete type inside this class, so the members that copy,
    // move or destroy the list must not be made before the class is complete.
    PropertyValue();
    PropertyValue(const PropertyValue&);
    PropertyValue(PropertyValue&&) noexcept;
    PropertyValue& operator=(const PropertyValue&);
    PropertyValue& operator=(PropertyValue&&) noexcept;
    ~PropertyValue();

    enum class Type { kString, kInt, kFloat, kArray, kList };
    Type type = Type::kString;
    std::string text;                    // kString
    double number = 0.0;                 // kInt and kFloat
    bool isUnsigned = false;             // kInt
    std::uint64_t unsignedValue = 0;     // kInt, unsigned
    std::int64_t signedValue = 0;        // kInt, signed
    std::string elementType;             // kArray: the element name of array.type
    std::vector<PropertyValue> elements; // kArray
    PropertyList list;                   // kList

    /// For a list: the value of the first pair with `key`, or null.
    const PropertyValue* Find(std::string_view key) const;
    /// For an int or a float: its value.
    std::optional<double> AsNumber() const;
};

/// Reads `document`. Throws PropertyMapError when it is not well-formed XML or not a
/// property map of version "4".
PropertyList ParsePropertyMap(std::string_view document);

} // namespace qzhost::layout
