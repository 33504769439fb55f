// Fuzz target of the host's code-page conversions over ICU: U_MBToUTF16String,
// U_UTF16ToMBString and U_AsciiToUTF16String in the host code page that the first byte
// picks, and the UTF-8 conversions beside them. The rest of the input is the narrow text,
// and, read as little-endian 16-bit units, the UTF-16 text.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "host/U_TextConversion.h"
#include "qzhost/HostControls.h"
#include "qzhost/UnicodeText.h"

namespace {

// Single-byte, multibyte and stateful code pages, and the Unicode forms.
constexpr std::array<const char*, 12> kCodePages = {
    "UTF-8", "cp1252", "cp1251", "ibm-037",     "Shift_JIS", "GB18030",
    "Big5",  "EUC-KR", "EUC-JP", "ISO-2022-JP", "UTF-7",     "UTF-16LE",
};

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    qzhost::HostControls::Get().SetCodepage(kCodePages[data[0] % kCodePages.size()]);
    const std::string narrow(reinterpret_cast<const char*>(data) + 1, size - 1);

    // Narrow text (up to its first NUL) to UTF-16 and back, twice.
    const kitcore::utility::UTF16String wide = U_MBToUTF16String(narrow.c_str());
    const std::string back = U_UTF16ToMBString(wide.c_str());
    (void)U_MBToUTF16String(back.c_str());
    const kitcore::utility::UTF16String ascii = U_AsciiToUTF16String(narrow.c_str());
    Require(ascii.size() == std::string_view(narrow.c_str()).size());

    // Any UTF-16 units, lone surrogates included, to the code page.
    kitcore::utility::UTF16String units;
    for (std::size_t i = 1; i + 1 < size; i += 2) {
        units.push_back(static_cast<char16_t>(data[i] | (data[i + 1] << 8)));
    }
    (void)U_UTF16ToMBString(units.c_str());

    // UTF-8 and UTF-16: what one round trip gives, a second gives unchanged.
    const std::string once = qzhost::strings::Utf16ToUtf8(qzhost::strings::Utf8ToUtf16(narrow));
    Require(qzhost::strings::Utf16ToUtf8(qzhost::strings::Utf8ToUtf16(once)) == once);
    const kitcore::utility::UTF16String unitsOnce =
        qzhost::strings::Utf8ToUtf16(qzhost::strings::Utf16ToUtf8(units));
    Require(qzhost::strings::Utf8ToUtf16(qzhost::strings::Utf16ToUtf8(unitsOnce)) == unitsOnce);
    return 0;
}
