// Conversion between UTF-16 and the host's multibyte code page (HostControls' code page).
#pragma once

#include <string>
#include <string_view>

#include "kitcore/utility/UTF16String.h"

namespace qzhost::strings {

/// [any-thread] Bytes in the host code page to UTF-16; invalid or unmapped byte
/// sequences become U+FFFD.
kitcore::utility::UTF16String FromHostCodePage(std::string_view bytes);

/// [any-thread] UTF-16 to the host code page; lone surrogates and characters that the
/// code page cannot hold become the code page's substitution.
std::string ToHostCodePage(std::u16string_view text);

} // namespace qzhost::strings
