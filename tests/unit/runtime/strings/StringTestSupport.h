// Helpers shared by the string-service tests: UTF-16 <-> UTF-8 for readable checks, a
// printer for the host's UTF-16 strings, and a fixture that restores the default host.
#pragma once

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>

#include <unicode/ustring.h>

#include "host/U_LocalizedStrings.h"
#include "kitcore/utility/UTF16String.h"
#include "qzhost/HostControls.h"

namespace kitcore::utility {

// Lets GoogleTest print the host's strings as text (lone surrogates as U+FFFD).
inline void PrintTo(const UTF16String& text, std::ostream* out) {
    std::string utf8;
    int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strToUTF8WithSub(nullptr, 0, &length, text.data(), static_cast<int32_t>(text.size()), 0xFFFD,
                       nullptr, &status);
    utf8.resize(static_cast<std::size_t>(length));
    status = U_ZERO_ERROR;
    u_strToUTF8WithSub(utf8.data(), length, &length, text.data(), static_cast<int32_t>(text.size()),
                       0xFFFD, nullptr, &status);
    *out << "u\"" << utf8 << "\"";
}

} // namespace kitcore::utility

namespace strings_test {

using kitcore::utility::UTF16String;

/// The host string of a UTF-16 literal.
inline UTF16String U16(std::u16string_view text) {
    return UTF16String(text.begin(), text.end());
}

/// UTF-16 to UTF-8; lone surrogates become U+FFFD.
inline std::string Utf8(std::u16string_view text) {
    int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strToUTF8WithSub(nullptr, 0, &length, text.data(), static_cast<int32_t>(text.size()), 0xFFFD,
                       nullptr, &status);
    std::string utf8(static_cast<std::size_t>(length), '\0');
    status = U_ZERO_ERROR;
    u_strToUTF8WithSub(utf8.data(), length, &length, text.data(), static_cast<int32_t>(text.size()),
                       0xFFFD, nullptr, &status);
    return utf8;
}

inline std::string Utf8(const UTF16String& text) {
    return Utf8(std::u16string_view(text.data(), text.size()));
}

/// The key of the panel's layout file name, with its default text.
inline constexpr const char* kLayoutKey = "$$$/QZ/Plugin/InfoPal/layout_file_name=control_layout";

/// The host's text for `key` (a "$$$/...=default" key), as UTF-8.
inline std::string Lookup(const char* key) {
    return Utf8(U_ZStringToUTF16String(key));
}

/// Every test starts and ends with the default host (en_US, UTF-8, nothing injected).
class HostStringTest : public ::testing::Test {
protected:
    void SetUp() override { qzhost::HostControls::Get().Reset(); }
    void TearDown() override { qzhost::HostControls::Get().Reset(); }
};

} // namespace strings_test
