// Resource types and names: which strings are valid, and the ASCII case folding under
// which they are compared.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

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

} // namespace qzhost::resources
