// The host's narrow-text number patterns: "^F<n>@<w>.<p>@" tokens printed like
// printf("%<w>.<p>f"), and the host locale's decimal separator put into such numbers.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include <unicode/dcfmtsym.h>
#include <unicode/locid.h>
#include <unicode/numsys.h>

#include "HostCodePage.h"
#include "host/U_Text.h"
#include "qzhost/HostControls.h"

namespace {

// Most digits accepted for the argument number, and for the width and the precision.
constexpr std::size_t kMaxArgumentDigits = 9;
constexpr std::size_t kMaxFieldDigits = 3;

struct NumberToken {
    int argument = 0;
    int width = 0;
    int precision = 0;
    std::size_t length = 0; // bytes of the token in the pattern
};

// Reads a run of 0 to `max_digits` ASCII digits at `pos`; nullopt when more follow.
std::optional<int> ReadDigits(std::string_view text, std::size_t& pos, std::size_t max_digits,
                              bool required) {
    const std::size_t start = pos;
    int number = 0;
    while (pos < text.size() && text[pos] >= '0' && text[pos] <= '9') {
        if (pos - start == max_digits) {
            return std::nullopt;
        }
        number = number * 10 + (text[pos] - '0');
        ++pos;
    }
    if (required && pos == start) {
        return std::nullopt;
    }
    return number;
}

// The number token at the start of `text` ("^F1@1.1@"), if there is a well-formed one.
std::optional<NumberToken> ReadNumberToken(std::string_view text) {
    if (!text.starts_with("^F")) {
        return std::nullopt;
    }
    std::size_t pos = 2;
    const auto argument = ReadDigits(text, pos, kMaxArgumentDigits, true);
    if (!argument || pos >= text.size() || text[pos] != '@') {
        return std::nullopt;
    }
    ++pos;
    const auto width = ReadDigits(text, pos, kMaxFieldDigits, false);
    if (!width || pos >= text.size() || text[pos] != '.') {
        return std::nullopt;
    }
    ++pos;
    const auto precision = ReadDigits(text, pos, kMaxFieldDigits, true);
    if (!precision || pos >= text.size() || text[pos] != '@') {
        return std::nullopt;
    }
    ++pos;
    return NumberToken{*argument, *width, *precision, pos};
}

void AppendNumber(std::string& out, const NumberToken& token, double value) {
    if (token.argument != 1) {
        return; // the only argument is number 1
    }
    const int length = std::snprintf(nullptr, 0, "%*.*f", token.width, token.precision, value);
    if (length <= 0) {
        return;
    }
    const std::size_t start = out.size();
    out.resize(start + static_cast<std::size_t>(length) + 1);
    std::snprintf(out.data() + start, static_cast<std::size_t>(length) + 1, "%*.*f", token.width,
                  token.precision, value);
    out.resize(start + static_cast<std::size_t>(length));
}

} // namespace

void U_SubString(char* buffer, std::int32_t buffer_size, const char* pattern, double value) {
    if (buffer == nullptr || buffer_size <= 0) {
        return;
    }
    // The whole text is built first, so the pattern may even lie in the buffer.
    std::string out;
    if (pattern != nullptr) {
        const std::string_view text(pattern, std::strlen(pattern));
        std::size_t pos = 0;
        while (pos < text.size()) {
            const std::size_t caret = text.find('^', pos);
            if (caret == std::string_view::npos) {
                out.append(text.substr(pos));
                break;
            }
            out.append(text.substr(pos, caret - pos));
            if (const auto token = ReadNumberToken(text.substr(caret))) {
                AppendNumber(out, *token, value);
                pos = caret + token->length;
            } else {
                out += '^';
                pos = caret + 1;
            }
        }
    }
    const std::size_t length = std::min(out.size(), static_cast<std::size_t>(buffer_size) - 1);
    std::memcpy(buffer, out.data(), length);
    buffer[length] = '\0';
}

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
