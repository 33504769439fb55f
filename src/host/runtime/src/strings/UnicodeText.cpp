#include "qzhost/UnicodeText.h"

#include <stdexcept>

#include <unicode/ustring.h>

namespace qzhost::strings {

namespace {

// A string view's length as ICU's 32-bit length, or an error for longer texts.
int32_t IcuLength(std::size_t length) {
    if (length > static_cast<std::size_t>(INT32_MAX)) {
        throw std::length_error("text too long for conversion");
    }
    return static_cast<int32_t>(length);
}

} // namespace

kitcore::utility::UTF16String Utf8ToUtf16(std::string_view utf8) {
    kitcore::utility::UTF16String out;
    if (utf8.empty()) {
        return out;
    }
    // Every byte yields at most one UTF-16 unit (a 4-byte sequence yields two).
    out.resize(utf8.size());
    int32_t written = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8WithSub(out.data(), IcuLength(out.size()), &written, utf8.data(),
                         IcuLength(utf8.size()), 0xFFFD, nullptr, &status);
    if (U_FAILURE(status)) {
        throw std::runtime_error(std::string("UTF-8 conversion failed: ") + u_errorName(status));
    }
    out.resize(static_cast<std::size_t>(written));
    return out;
}

std::string Utf16ToUtf8(std::u16string_view utf16) {
    std::string out;
    if (utf16.empty()) {
        return out;
    }
    // Every UTF-16 unit yields at most three bytes (a surrogate pair four bytes for two).
    out.resize(utf16.size() * 3);
    int32_t written = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strToUTF8WithSub(out.data(), IcuLength(out.size()), &written, utf16.data(),
                       IcuLength(utf16.size()), 0xFFFD, nullptr, &status);
    if (U_FAILURE(status)) {
        throw std::runtime_error(std::string("UTF-16 conversion failed: ") + u_errorName(status));
    }
    out.resize(static_cast<std::size_t>(written));
    return out;
}

} // namespace qzhost::strings
