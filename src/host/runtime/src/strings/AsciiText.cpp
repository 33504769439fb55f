// ASCII text widened to UTF-16, unit for unit.
#include <cstring>

#include "host/U_TextConversion.h"
#include "kitcore/utility/NumberText.h"

namespace kitcore::utility {

UTF16String AsciiToUTF16(const char* ascii, std::size_t length) {
    UTF16String out;
    if (ascii == nullptr || length == 0) {
        return out;
    }
    out.resize(length);
    for (std::size_t i = 0; i < length; ++i) {
        const auto byte = static_cast<unsigned char>(ascii[i]);
        out[i] = byte < 0x80 ? static_cast<UTF16Char>(byte) : u'\uFFFD';
    }
    return out;
}

} // namespace kitcore::utility

kitcore::utility::UTF16String U_AsciiToUTF16String(const char* text) {
    if (text == nullptr) {
        return {};
    }
    return kitcore::utility::AsciiToUTF16(text, std::strlen(text));
}
