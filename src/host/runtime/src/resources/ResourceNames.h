// Resource types and names: which strings are valid, and the ASCII case folding under
// which they are compared.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "kitcore/utility/UTF16String.h"

namespace qzhost::resources {

inline constexpr std::size_t kMaxResourceNameLength = 255;

/// 'a' to 'z' become 'A' to 'Z'; every other character stays.
inline char FoldAscii(char c) noexcept {
    return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c;
}

/// `text` with every ASCII letter folded to upper case (FoldAscii).
inline std::string FoldedAscii(std::string_view text) {
    std::string folded(text);
    for (char& c : folded) {
        c = FoldAscii(c);
    }
    return folded;
}

/// Why `text` cannot be a resource type or name, or "" when it can: 1 to 255 printable
/// ASCII characters.
inline std::string ResourceNameProblem(std::string_view text) {
    if (text.empty()) {
        return "is empty";
    }
    if (text.size() > kMaxResourceNameLength) {
        return "is " + std::to_string(text.size()) + " characters long (at most " +
               std::to_string(kMaxResourceNameLength) + ")";
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        if (c < 0x20 || c > 0x7E) {
            return "has byte " + std::to_string(c) + " at position " + std::to_string(i) +
                   ", which is not printable ASCII";
        }
    }
    return "";
}

/// A resource type or name asked for in UTF-16, as ASCII; none when it has any other
/// character (types and names are ASCII, so such a text names nothing).
inline std::optional<std::string> AsciiResourceText(const kitcore::utility::UTF16String& text) {
    std::string ascii;
    ascii.reserve(text.size());
    for (const kitcore::utility::UTF16Char unit : text) {
        if (unit > 0x7F) {
            return std::nullopt;
        }
        ascii += static_cast<char>(unit);
    }
    return ascii;
}

/// The number that a resource type or name stands for when it is a decimal number from 1
/// to 65535 written without leading zeros ("16000"), or none. On Windows such a type or
/// name is a numbered resource, not a named one: the resource script writes it as a
/// number and the reader asks for it by number.
inline std::optional<std::uint16_t> ResourceNumber(std::string_view text) noexcept {
    if (text.empty() || text.size() > 5 || text[0] == '0') {
        return std::nullopt;
    }
    std::uint32_t value = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') {
            return std::nullopt;
        }
        value = value * 10 + static_cast<std::uint32_t>(c - '0');
    }
    if (value > 0xFFFF) {
        return std::nullopt;
    }
    return static_cast<std::uint16_t>(value);
}

} // namespace qzhost::resources
