// The host's code-page conversions, on the calling thread's cached ICU converters.
#include "HostCodePage.h"

#include <cstring>
#include <stdexcept>

#include "ConverterCache.h"
#include "host/U_Utility.h"
#include "qzhost/HostControls.h"

namespace qzhost::strings {

namespace {

[[noreturn]] void ThrowConversionError(UErrorCode status) {
    throw std::runtime_error(std::string("code page conversion failed: ") + u_errorName(status));
}

} // namespace

kitcore::utility::UTF16String FromHostCodePage(std::string_view bytes) {
    kitcore::utility::UTF16String out;
    if (bytes.empty()) {
        return out;
    }
    UConverter* converter = ThreadConverter(HostControls::Get().Codepage());
    // One unit per byte is enough for nearly every code page; grow when it is not.
    out.resize(bytes.size() + 16);
    const char* source = bytes.data();
    const char* const source_end = bytes.data() + bytes.size();
    std::size_t written = 0;
    for (;;) {
        UChar* target = out.data() + written;
        UErrorCode status = U_ZERO_ERROR;
        ucnv_toUnicode(converter, &target, out.data() + out.size(), &source, source_end, nullptr,
                       true, &status);
        written = static_cast<std::size_t>(target - out.data());
        if (status == U_BUFFER_OVERFLOW_ERROR) {
            out.resize(out.size() * 2);
            continue;
        }
        if (U_FAILURE(status)) {
            ThrowConversionError(status);
        }
        break;
    }
    out.resize(written);
    return out;
}

std::string ToHostCodePage(std::u16string_view text) {
    std::string out;
    if (text.empty()) {
        return out;
    }
    UConverter* converter = ThreadConverter(HostControls::Get().Codepage());
    out.resize(text.size() * static_cast<std::size_t>(ucnv_getMaxCharSize(converter)) + 16);
    const UChar* source = text.data();
    const UChar* const source_end = text.data() + text.size();
    std::size_t written = 0;
    for (;;) {
        char* target = out.data() + written;
        UErrorCode status = U_ZERO_ERROR;
        ucnv_fromUnicode(converter, &target, out.data() + out.size(), &source, source_end, nullptr,
                         true, &status);
        written = static_cast<std::size_t>(target - out.data());
        if (status == U_BUFFER_OVERFLOW_ERROR) {
            out.resize(out.size() * 2);
            continue;
        }
        if (U_FAILURE(status)) {
            ThrowConversionError(status);
        }
        break;
    }
    out.resize(written);
    return out;
}

} // namespace qzhost::strings

kitcore::utility::UTF16String U_MBToUTF16String(const char* text) {
    if (text == nullptr) {
        return {};
    }
    return qzhost::strings::FromHostCodePage(std::string_view(text, std::strlen(text)));
}

std::string U_UTF16ToMBString(const kitcore::utility::UTF16Char* text) {
    if (text == nullptr) {
        return {};
    }
    return qzhost::strings::ToHostCodePage(std::u16string_view(text));
}
