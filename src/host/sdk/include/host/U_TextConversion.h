// Text conversions between UTF-16 and narrow text: the host's multibyte code page, and
// ASCII.
#pragma once

#include <string>

#include "kitcore/utility/UTF16String.h"
#include "qzgp/QZ_Basic.h"

/// [any-thread] UTF-16 to the host's multibyte code page; a null text gives "".
/// Characters the code page cannot hold become its substitution character.
QZ_HOST_API std::string U_UTF16ToMBString(const kitcore::utility::UTF16Char* text);
/// [any-thread] The host's multibyte code page to UTF-16; a null text gives "".
/// Byte sequences that are not valid in the code page become U+FFFD.
QZ_HOST_API kitcore::utility::UTF16String U_MBToUTF16String(const char* text);
/// [any-thread] ASCII to UTF-16; a null text gives ""; bytes above 0x7F become U+FFFD.
QZ_HOST_API kitcore::utility::UTF16String U_AsciiToUTF16String(const char* text);
