// Localised strings: the text of a localised key "$$$/path=default" in the host locale.
#pragma once

#include <string>

#include "kitcore/utility/UTF16String.h"
#include "qzgp/QZ_Basic.h"

/// [any-thread] The text of a localised key "$$$/path=default": the host string table's
/// text for the path in the current locale, else the default text after the first "=".
/// "^I" becomes U+0394 and "^D" becomes U+00B0. A null key gives an empty text.
/// A key without "=" is all path with an empty default text. "^^" reads as one "^"
/// (so "^^I" gives "^I"); any other "^", also one at the end, stays as it is. Keys and
/// texts are UTF-8; malformed UTF-8 becomes U+FFFD.
QZ_HOST_API kitcore::utility::UTF16String U_ZStringToUTF16String(const char* zstring);
/// [any-thread] The same text in the host's multibyte code page.
QZ_HOST_API std::string U_ZStringToMBString(const char* zstring);
