// Locale-aware number text and text patterns of the host's core library.
#pragma once

#include <cstddef>

#include "kitcore/utility/Flags.h"
#include "kitcore/utility/UTF16String.h"

namespace kitcore::utility {

/// [any-thread] The text of `value` in the host locale: at least `fewest` and at most
/// max(`most`, `fewest`) fraction digits (trailing zeros beyond `fewest` dropped), no
/// grouping separators, the locale's decimal separator, minus sign and digits, halves
/// rounded to even. `flags` and `last` are accepted and change nothing. Counts above 999
/// are taken as 999. NaN and the infinities give the locale's own texts ("NaN", "∞").
QZ_HOST_API UTF16String NumberToString(double value, std::size_t most, std::size_t fewest,
                                       Flags<unsigned short> flags, int last);

/// [any-thread] `pattern` with each placeholder "@0" to "@9" replaced by the argument of
/// that number. Replacement texts are not scanned again.
QZ_HOST_API UTF16String ReplaceInString(const UTF16String& pattern, const UTF16String& a0 = {},
                                        const UTF16String& a1 = {}, const UTF16String& a2 = {},
                                        const UTF16String& a3 = {}, const UTF16String& a4 = {},
                                        const UTF16String& a5 = {}, const UTF16String& a6 = {},
                                        const UTF16String& a7 = {}, const UTF16String& a8 = {},
                                        const UTF16String& a9 = {});

/// [any-thread] The first `length` bytes of `ascii` widened unit for unit; bytes above
/// 0x7F become U+FFFD.
QZ_HOST_API UTF16String AsciiToUTF16(const char* ascii, std::size_t length);

} // namespace kitcore::utility
