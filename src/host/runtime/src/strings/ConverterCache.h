// The calling thread's ICU converters, one per code page name, opened on first use and
// closed when the thread ends. A converter is never shared between threads.
#pragma once

#include <string>

#include <unicode/ucnv.h>

namespace qzhost::strings {

/// [any-thread] The calling thread's converter for `codepage`, reset and ready for a new
/// conversion. Converting to UTF-16, every byte sequence that is not valid in the code
/// page (or has no Unicode mapping) becomes U+FFFD; converting from UTF-16, the code
/// page's own substitution is used. Throws std::runtime_error for an unknown code page.
UConverter* ThreadConverter(const std::string& codepage);

} // namespace qzhost::strings
