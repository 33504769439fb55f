// The host locale's decimal separator put into printf-formatted numbers.
#include <optional>
#include <string>

#include <unicode/dcfmtsym.h>
#include <unicode/locid.h>
#include <unicode/numsys.h>

#include "HostCodePage.h"
#include "host/U_Text.h"
#include "qzhost/HostControls.h"

namespace {

// The decimal separator that the locale uses with Latin digits (the digits printf
// writes), in the code page; nullopt when that is not exactly one byte.
std::optional<char> FindSeparator(const std::string& locale) {
    UErrorCode status = U_ZERO_ERROR;
    icu::LocalPointer<icu::NumberingSystem> latin(
        icu::NumberingSystem::createInstanceByName("latn", status));
    if (U_FAILURE(status)) {
        return std::nullopt;
    }
    const icu::DecimalFormatSymbols symbols(icu::Locale(locale.c_str()), *latin, status);
    if (U_FAILURE(status)) {
        return std::nullopt;
    }
    const icu::UnicodeString& separator =
        symbols.getConstSymbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol);
    const std::string bytes = qzhost::strings::ToHostCodePage(
        std::u16string_view(separator.getBuffer(), static_cast<std::size_t>(separator.length())));
    if (bytes.size() != 1 || bytes[0] == '\0') {
        return std::nullopt;
    }
    return bytes[0];
}

// The calling thread's separator for the host locale and code page, found once per pair.
std::optional<char> HostSeparator() {
    const qzhost::HostControls& host = qzhost::HostControls::Get();
    thread_local std::string last_locale;
    thread_local std::string last_codepage;
    thread_local std::optional<char> last_separator;
    thread_local bool known = false;
    if (!known || last_locale != host.Locale() || last_codepage != host.Codepage()) {
        last_separator = FindSeparator(host.Locale());
        last_locale = host.Locale();
        last_codepage = host.Codepage();
        known = true;
    }
    return last_separator;
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

} // namespace

void U_InternationalizeNum(char* buffer) {
    if (buffer == nullptr || buffer[0] == '\0') {
        return;
    }
    const std::optional<char> separator = HostSeparator();
    if (!separator || *separator == '.') {
        return;
    }
    for (char* p = buffer + 1; *p != '\0'; ++p) {
        if (*p == '.' && IsDigit(p[-1]) && IsDigit(p[1])) {
            *p = *separator;
        }
    }
}
