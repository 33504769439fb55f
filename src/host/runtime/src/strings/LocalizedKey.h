// Localised keys: "$$$/path=default text". A key resolves to the current locale's table
// text for its path, else to its default text; the text's caret escapes are then
// expanded:
//
//   "^I" -> U+0394 (delta sign)      "^D" -> U+00B0 (degree sign)
//   "^^" -> "^" (a literal caret, so "^^I" reads "^I")
//   "^0" to "^3" -> the replacement values of a toolkit error, when there are any
//   any other "^", including one at the end of the text, stays as it is.
#pragma once

#include <array>
#include <string_view>

#include "kitcore/utility/UTF16String.h"

namespace qzhost::strings {

/// [any-thread] The UTF-8 text of `key` before escape expansion: the table text of the
/// path (the part before the first "=") in the host locale, else the default text after
/// the first "=". A key without "=" is all path with an empty default; a null key gives
/// an empty text. Throws when a throw is injected for the string lookup.
std::string_view ResolveKeyText(const char* key);

/// Four optional replacement values for "^0" to "^3"; null entries leave the escape as is.
using EscapeValues = std::array<const kitcore::utility::UTF16String*, 4>;

/// [any-thread] The UTF-8 `text` in UTF-16 with its caret escapes expanded.
kitcore::utility::UTF16String ExpandEscapes(std::string_view text, const EscapeValues& values = {});

} // namespace qzhost::strings
