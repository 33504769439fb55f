// The host's text conversions between UTF-16 and narrow text: its multibyte code page,
// and ASCII.
#include "host/U_TextConversion.h"

#include <cstring>

#include "HostCodePage.h"
#include "kitcore/utility/NumberText.h"

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

kitcore::utility::UTF16String U_AsciiToUTF16String(const char* text) {
    if (text == nullptr) {
        return {};
    }
    return kitcore::utility::AsciiToUTF16(text, std::strlen(text));
}
