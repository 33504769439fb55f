// The value encodings of host scripts: narrow and UTF-16 string arguments, numbers with
// their non-finite spellings, and the output forms of numbers and UTF-16 text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "kitcore/utility/UTF16String.h"
#include "script/Json.h"

namespace qzhost::script {

/// A narrow string argument: a JSON string, encoded in the host's current code page;
/// {"hex": "..."} for raw bytes; null for a null pointer (nullopt). The std::string
/// carries the terminating zero that the call sees.
std::optional<std::string> NarrowArg(const Json& value, const std::string& what);

/// A UTF-16 string argument: a JSON string; {"utf16": [units...]} for arbitrary code
/// units, lone surrogates included; null for a null pointer (nullopt).
std::optional<kitcore::utility::UTF16String> UTF16Arg(const Json& value, const std::string& what);

/// A number argument: a JSON number, or "nan", "inf", "-inf", "-0".
double NumberArg(const Json& value, const std::string& what);
/// A number argument (as NumberArg) for a float parameter; a finite number beyond the float
/// range is an ArgumentError.
float FloatArg(const Json& value, const std::string& what);

/// A number for output: integral values as integers, non-finite values as "nan",
/// "inf" and "-inf", other values as JSON numbers.
Json NumberOut(double value);

/// UTF-16 text as UTF-8 for output; a lone surrogate becomes U+FFFD.
std::string UTF16ToUTF8(std::u16string_view text);

/// UTF-8 text (as JSON strings hold it) as UTF-16; bytes that do not form a character
/// become U+FFFD.
kitcore::utility::UTF16String UTF8ToUTF16(std::string_view text);

} // namespace qzhost::script
