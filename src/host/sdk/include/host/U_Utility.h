// Host utility services: threads, exception reporting, localised strings, code-page
// conversion and suite publication.
#pragma once

#include <cstdint>
#include <exception>
#include <string>

#include "kitcore/utility/UTF16String.h"
#include "qzgp/QZ_Basic.h"

/// QZ_ANY_THREAD Whether the caller is on the host's main (UI) thread.
QZ_HOST_API bool U_IsOnUIThread();

/// QZ_UI_THREAD Reports `error` to the user and gives the result code that the
/// reporting function returns to the host.
QZ_HOST_API QZ_Err U_TranslateAndReportException(const std::exception& error);

/// QZ_ANY_THREAD The text of a localised key "$$$/path=default": the host string table's
/// text for the path in the current locale, else the default text after the first "=".
/// "^I" becomes U+0394 and "^D" becomes U+00B0. A null key gives an empty text.
/// A key without "=" is all path with an empty default text. "^^" reads as one "^"
/// (so "^^I" gives "^I"); any other "^", also one at the end, stays as it is. Keys and
/// texts are UTF-8; malformed UTF-8 becomes U+FFFD.
QZ_HOST_API kitcore::utility::UTF16String U_ZStringToUTF16String(const char* zstring);
/// QZ_ANY_THREAD The same text in the host's multibyte code page.
QZ_HOST_API std::string U_ZStringToMBString(const char* zstring);

/// QZ_ANY_THREAD UTF-16 to the host's multibyte code page; a null text gives "".
/// Characters the code page cannot hold become its substitution character.
QZ_HOST_API std::string U_UTF16ToMBString(const kitcore::utility::UTF16Char* text);
/// QZ_ANY_THREAD The host's multibyte code page to UTF-16; a null text gives "".
/// Byte sequences that are not valid in the code page become U+FFFD.
QZ_HOST_API kitcore::utility::UTF16String U_MBToUTF16String(const char* text);
/// QZ_ANY_THREAD ASCII to UTF-16; a null text gives ""; bytes above 0x7F become U+FFFD.
QZ_HOST_API kitcore::utility::UTF16String U_AsciiToUTF16String(const char* text);

/// QZ_ANY_THREAD How the host runs: 0 interactive, 1 without a user interface.
QZ_HOST_API std::int32_t U_GetRunMode();

/// QZ_UI_THREAD Publishes a suite in the host's basic suite table so that other
/// components acquire it by `name` and `version`. `host_a` and `host_b` must be null;
/// `internal` is the host's publication kind. Returns an error when a suite of that
/// name and version is already published or an argument is invalid.
QZ_HOST_API QZ_Err U_SP_AddSPSuite(void* host_a, void* host_b, const char* name,
                                   std::int32_t version, std::int32_t internal,
                                   std::int32_t slot_count, const void* table);
