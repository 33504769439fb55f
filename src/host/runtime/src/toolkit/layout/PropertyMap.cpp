#include "PropertyMap.h"

#include <pugixml.hpp>

#include <charconv>
#include <cmath>
#include <limits>

namespace qzhost::layout {

namespace {

std::string_view Trim(std::string_view s) {
    const auto isSpace = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    while (!s.empty() && isSpace(s.front())) {
        s.remove_prefix(1);
    }
    while (!s.empty() && isSpace(s.back())) {
        s.remove_suffix(1);
    }
    return s;
}

// How deeply lists and arrays may nest. The reader descends one level per list or array,
// so the limit bounds its stack; the host's own layouts nest five levels.
constexpr int kMaxNesting = 64;

std::string Where(const pugi::xml_node& node) {
    return "<" + std::string(node.name()) + "> at offset " + std::to_string(node.offset_debug());
}

/// The element children of `node`; text other than white space between them is an error.
std::vector<pugi::xml_node> Elements(const pugi::xml_node& node) {
    std::vector<pugi::xml_node> elements;
    for (pugi::xml_node child : node.children()) {
        switch (child.type()) {
        case pugi::node_element:
            elements.push_back(child);
            break;
        case pugi::node_pcdata:
        case pugi::node_cdata:
            if (!Trim(child.value()).empty()) {
                throw PropertyMapError("unexpected text inside " + Where(node));
            }
            break;
        default: // comments, processing instructions
            break;
        }
    }
    return elements;
}

/// The text content of a leaf element (no element children).
std::string LeafText(const pugi::xml_node& node) {
    std::string text;
    for (pugi::xml_node child : node.children()) {
        if (child.type() == pugi::node_element) {
            throw PropertyMapError("unexpected element inside " + Where(node));
        }
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
            text += child.value();
        }
    }
    return text;
}

PropertyValue ParseValue(const pugi::xml_node& node, int depth);

// `depth` is the number of lists and arrays around `node`, itself included.
PropertyList ParseList(const pugi::xml_node& node, int depth) {
    if (depth > kMaxNesting) {
        throw PropertyMapError(Where(node) + " is nested more than " + std::to_string(kMaxNesting) +
                               " levels deep");
    }
    PropertyList list;
    for (const pugi::xml_node& pair : Elements(node)) {
        if (std::string_view(pair.name()) != "prop.pair") {
            throw PropertyMapError("expected <prop.pair>, found " + Where(pair));
        }
        const std::vector<pugi::xml_node> parts = Elements(pair);
        if (parts.size() != 2 || std::string_view(parts[0].name()) != "key") {
            throw PropertyMapError(Where(pair) + " must hold a <key> and one value");
        }
        list.emplace_back(LeafText(parts[0]), ParseValue(parts[1], depth));
    }
    return list;
}

double ParseFloat(const pugi::xml_node& node) {
    const std::string text(Trim(LeafText(node)));
    double value = 0.0;
    const char* end = text.data() + text.size();
    const auto [ptr, ec] = std::from_chars(text.data(), end, value);
    if (text.empty() || ec != std::errc() || ptr != end || !std::isfinite(value)) {
        throw PropertyMapError("not a number in " + Where(node) + ": \"" + text + "\"");
    }
    return value;
}

PropertyValue ParseInt(const pugi::xml_node& node) {
    PropertyValue v;
    v.type = PropertyValue::Type::kInt;
    const std::string_view type = node.attribute("type").as_string("signed");
    const std::string_view sizeText = node.attribute("size").as_string("32");
    if (type != "signed" && type != "unsigned") {
        throw PropertyMapError("unknown int type \"" + std::string(type) + "\" in " + Where(node));
    }
    int bits = 0;
    if (sizeText == "8" || sizeText == "16" || sizeText == "32" || sizeText == "64") {
        bits = std::stoi(std::string(sizeText));
    } else {
        throw PropertyMapError("unknown int size \"" + std::string(sizeText) + "\" in " +
                               Where(node));
    }
    const std::string text(Trim(LeafText(node)));
    const char* begin = text.data();
    const char* end = text.data() + text.size();
    v.isUnsigned = type == "unsigned";
    bool ok = !text.empty();
    if (ok && v.isUnsigned) {
        const auto [ptr, ec] = std::from_chars(begin, end, v.unsignedValue);
        ok = ec == std::errc() && ptr == end &&
             (bits == 64 || v.unsignedValue < (std::uint64_t{1} << bits));
        v.number = static_cast<double>(v.unsignedValue);
    } else if (ok) {
        const auto [ptr, ec] = std::from_chars(begin, end, v.signedValue);
        const std::int64_t limit = bits == 64 ? std::numeric_limits<std::int64_t>::max()
                                              : (std::int64_t{1} << (bits - 1)) - 1;
        ok = ec == std::errc() && ptr == end && v.signedValue <= limit &&
             v.signedValue >= -limit - 1;
        v.number = static_cast<double>(v.signedValue);
    }
    if (!ok) {
        throw PropertyMapError("not a " + std::string(type) + " " + std::string(sizeText) +
                               "-bit integer in " + Where(node) + ": \"" + text + "\"");
    }
    return v;
}

PropertyValue ParseValue(const pugi::xml_node& node, int depth) {
    const std::string_view name = node.name();
    PropertyValue v;
    if (name == "string") {
        v.type = PropertyValue::Type::kString;
        v.text = LeafText(node);
    } else if (name == "int") {
        v = ParseInt(node);
    } else if (name == "float") {
        v.type = PropertyValue::Type::kFloat;
        v.number = ParseFloat(node);
    } else if (name == "prop.list") {
        v.type = PropertyValue::Type::kList;
        v.list = ParseList(node, depth + 1);
    } else if (name == "array") {
        v.type = PropertyValue::Type::kArray;
        if (depth + 1 > kMaxNesting) {
            throw PropertyMapError(Where(node) + " is nested more than " +
                                   std::to_string(kMaxNesting) + " levels deep");
        }
        const std::vector<pugi::xml_node> children = Elements(node);
        if (children.empty() || std::string_view(children[0].name()) != "array.type") {
            throw PropertyMapError(Where(node) + " must start with <array.type>");
        }
        const std::vector<pugi::xml_node> typeElements = Elements(children[0]);
        if (typeElements.size() != 1) {
            throw PropertyMapError(Where(children[0]) + " must name one element type");
        }
        v.elementType = typeElements[0].name();
        for (std::size_t i = 1; i < children.size(); ++i) {
            if (v.elementType != children[i].name()) {
                throw PropertyMapError("element " + Where(children[i]) + " of an array of <" +
                                       v.elementType + ">");
            }
            v.elements.push_back(ParseValue(children[i], depth + 1));
        }
    } else {
        throw PropertyMapError("unknown value type " + Where(node));
    }
    return v;
}

} // namespace

PropertyValue::PropertyValue() = default;
PropertyValue::PropertyValue(const PropertyValue&) = default;
PropertyValue::PropertyValue(PropertyValue&&) noexcept = default;
PropertyValue& PropertyValue::operator=(const PropertyValue&) = default;
PropertyValue& PropertyValue::operator=(PropertyValue&&) noexcept = default;
PropertyValue::~PropertyValue() = default;

const PropertyValue* PropertyValue::Find(std::string_view key) const {
    if (type != Type::kList) {
        return nullptr;
    }
    for (const auto& [k, value] : list) {
        if (k == key) {
            return &value;
        }
    }
    return nullptr;
}

std::optional<double> PropertyValue::AsNumber() const {
    if (type == Type::kInt || type == Type::kFloat) {
        return number;
    }
    return std::nullopt;
}

PropertyList ParsePropertyMap(std::string_view document) {
    pugi::xml_document doc;
    const pugi::xml_parse_result result =
        doc.load_buffer(document.data(), document.size(), pugi::parse_default);
    if (!result) {
        throw PropertyMapError(std::string("not well-formed XML (") + result.description() +
                               " at offset " + std::to_string(result.offset) + ")");
    }
    const pugi::xml_node root = doc.document_element();
    if (std::string_view(root.name()) != "prop.map") {
        throw PropertyMapError("the root element is <" + std::string(root.name()) +
                               ">, not <prop.map>");
    }
    const std::string_view version = root.attribute("version").as_string();
    if (version != "4") {
        throw PropertyMapError("property map version \"" + std::string(version) +
                               "\" is not supported");
    }
    const std::vector<pugi::xml_node> top = Elements(root);
    if (top.size() != 1 || std::string_view(top[0].name()) != "prop.list") {
        throw PropertyMapError("<prop.map> must hold one <prop.list>");
    }
    return ParseList(top[0], 1);
}

} // namespace qzhost::layout
