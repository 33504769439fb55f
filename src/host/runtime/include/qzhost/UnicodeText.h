// UTF-8 and UTF-16 conversions of the host: the string services, the host program and the
// tests all use these. Both directions replace what is not valid (a malformed UTF-8
// sequence, a lone surrogate) by U+FFFD.
#pragma once

#include <string>
#include <string_view>

#include "kitcore/utility/UTF16String.h"
#include "qzgp/QZ_Basic.h"

namespace qzhost::strings {

inline constexpr char16_t kReplacementCharacter = u'\uFFFD';

/// [any-thread] UTF-8 to UTF-16; each maximal malformed subsequence becomes U+FFFD.
QZ_HOST_API kitcore::utility::UTF16String Utf8ToUtf16(std::string_view utf8);

/// [any-thread] UTF-16 to UTF-8; each lone surrogate becomes U+FFFD.
QZ_HOST_API std::string Utf16ToUtf8(std::u16string_view utf16);

} // namespace qzhost::strings
