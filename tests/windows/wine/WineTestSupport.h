// What the Windows test programs and the attach probe share: texts between them and the
// Windows API (paths, resource names), and the bytes of a file.
#pragma once

// Lean, and without the min and max macros (the C++ library for Windows defines NOMINMAX).
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "kitcore/utility/UTF16String.h"

namespace qzwintest {

/// UTF-8 `text` as a wide Windows string.
inline std::wstring Wide(std::string_view text) {
    if (text.empty()) {
        return {};
    }
    const int length =
        ::MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    ::MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), wide.data(),
                          length);
    return wide;
}

/// ASCII `text` as the host's UTF-16 string.
inline kitcore::utility::UTF16String Utf16(std::string_view text) {
    return kitcore::utility::UTF16String(text.begin(), text.end());
}

/// The bytes of the file at UTF-8 `path`; empty when it cannot be read.
inline std::vector<std::uint8_t> FileBytes(const std::string& path) {
    std::ifstream in(std::filesystem::path(Wide(path)), std::ios::binary);
    return std::vector<std::uint8_t>(std::istreambuf_iterator<char>(in),
                                     std::istreambuf_iterator<char>());
}

} // namespace qzwintest
