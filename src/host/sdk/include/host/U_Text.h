// The host's narrow-text number patterns: printf-style number formatting into a caller's
// buffer, and the localisation of the number's decimal point.
#pragma once

#include <cstdint>

#include "qzgp/QZ_Basic.h"

/// [any-thread] Formats `pattern` into `buffer` (`buffer_size` bytes, the terminating NUL
/// included). The pattern is text with number tokens "^F<n>@<w>.<p>@": argument number
/// `n` printed as printf("%<w>.<p>f") prints it, that is with exactly `p` fraction digits
/// (rounded as printf rounds), right-aligned in at least `w` characters (padded with
/// spaces; `w` may be left out), "nan", "inf" and "-inf" for values that are not finite.
/// There is one argument, `value`, which is argument 1; a token naming any other argument
/// number gives no text. `w` and `p` have at most three digits. Anything else, including
/// a malformed token, is copied as it is. The result is cut to `buffer_size` - 1 bytes
/// and always NUL-terminated. A null `buffer` or a `buffer_size` <= 0 does nothing; a null
/// `pattern` gives an empty text.
QZ_HOST_API void U_SubString(char* buffer, std::int32_t buffer_size, const char* pattern,
                             double value);

/// [any-thread] Localises the numbers of the NUL-terminated `buffer` in place: every "."
/// that stands between two ASCII digits becomes the host locale's decimal separator (the
/// separator that goes with Latin digits, in the host code page). The text never grows:
/// when the separator is not a single byte in the host code page the buffer is left as it
/// is. A null `buffer` does nothing.
QZ_HOST_API void U_InternationalizeNum(char* buffer);
