// The core library's text building: locale-aware number text on ICU's number formatter,
// text patterns with numbered placeholders, and ASCII widened to UTF-16.
//
// Number text is exactly what icu::number::NumberFormatter gives for the host locale with
// grouping off and Precision::minMaxFraction(fewest, max(most, fewest)), with ICU's
// default rounding (half-even). This runs for every number of every pointer move, so a
// locale whose numbers are plain (a minus sign before the digits, nothing else) is written
// without ICU: the shortest digits of the double rounded half-even, as ICU rounds them,
// in the locale's symbols read once from ICU. Other locales go through ICU's formatter;
// building one is costly, so each thread keeps the formatters it has built, keyed by
// locale and fraction digits.
#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include <unicode/numberformatter.h>

#include "LocaleNumberText.h"
#include "kitcore/utility/NumberText.h"
#include "qzhost/HostControls.h"

namespace kitcore::utility {

namespace {

// ICU refuses more fraction digits than this; larger counts are clamped to it.
constexpr std::size_t kMaxFractionDigits = 999;
// Formatters (and locales' symbols) kept per thread; the oldest is dropped first.
constexpr std::size_t kMaxCachedFormatters = 128;

struct CachedFormatter {
    std::string locale;
    int32_t fewest;
    int32_t most;
    icu::number::LocalizedNumberFormatter formatter;
};

const icu::number::LocalizedNumberFormatter& ThreadFormatter(const std::string& locale,
                                                             int32_t fewest, int32_t most) {
    thread_local std::vector<CachedFormatter> cache;
    auto it = std::find_if(cache.begin(), cache.end(), [&](const CachedFormatter& entry) {
        return entry.fewest == fewest && entry.most == most && entry.locale == locale;
    });
    if (it != cache.end()) {
        return it->formatter;
    }
    if (cache.size() >= kMaxCachedFormatters) {
        cache.erase(cache.begin());
    }
    cache.push_back(
        CachedFormatter{locale, fewest, most,
                        icu::number::NumberFormatter::withLocale(icu::Locale(locale.c_str()))
                            .grouping(UNUM_GROUPING_OFF)
                            .precision(icu::number::Precision::minMaxFraction(fewest, most))});
    return cache.back().formatter;
}

struct CachedSymbols {
    std::string locale;
    detail::LocaleNumberSymbols symbols;
};

struct SymbolsCache {
    std::vector<CachedSymbols> entries;
    std::size_t last = 0; // the entry of the previous call
};

// The number symbols of `locale`, probed once per thread and locale.
const detail::LocaleNumberSymbols& ThreadSymbols(const std::string& locale) {
    thread_local SymbolsCache cache;
    std::vector<CachedSymbols>& entries = cache.entries;
    if (cache.last < entries.size() && entries[cache.last].locale == locale) {
        return entries[cache.last].symbols;
    }
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (entries[i].locale == locale) {
            cache.last = i;
            return entries[i].symbols;
        }
    }
    if (entries.size() >= kMaxCachedFormatters) {
        entries.erase(entries.begin());
    }
    entries.push_back(CachedSymbols{locale, detail::ProbeLocaleNumberSymbols(locale)});
    cache.last = entries.size() - 1;
    return entries.back().symbols;
}

int32_t FractionDigits(std::size_t count) {
    return static_cast<int32_t>(std::min(count, kMaxFractionDigits));
}

} // namespace

UTF16String NumberToString(double value, std::size_t most, std::size_t fewest,
                           Flags<unsigned short> /*flags*/, int /*last*/) {
    const qzhost::HostControls& host = qzhost::HostControls::Get();
    host.ThrowIfInjected(qzhost::op::kNumberText);
    const int32_t min_digits = FractionDigits(fewest);
    const int32_t max_digits = std::max(FractionDigits(most), min_digits);
    const detail::LocaleNumberSymbols& symbols = ThreadSymbols(host.Locale());
    if (symbols.plain) {
        char16_t text[detail::kMaxLocaleNumberText];
        const std::size_t length =
            detail::LocaleNumberText(symbols, value, min_digits, max_digits, text);
        return UTF16String(text, length);
    }
    const auto& formatter = ThreadFormatter(host.Locale(), min_digits, max_digits);

    UErrorCode status = U_ZERO_ERROR;
    const icu::number::FormattedNumber formatted = formatter.formatDouble(value, status);
    const icu::UnicodeString text = formatted.toString(status);
    if (U_FAILURE(status)) {
        throw std::runtime_error(std::string("number text failed: ") + u_errorName(status));
    }
    return UTF16String(text.getBuffer(), static_cast<std::size_t>(text.length()));
}

// Text patterns with the placeholders "@0" to "@9". The result's length is counted first,
// so that it is built in one allocation (none when it fits the string's own buffer), and
// the pattern's text between placeholders is copied a run at a time.
namespace {

bool IsPlaceholder(const UTF16String& pattern, std::size_t i) {
    return pattern[i] == u'@' && i + 1 < pattern.size() && pattern[i + 1] >= u'0' &&
           pattern[i + 1] <= u'9';
}

} // namespace

UTF16String ReplaceInString(const UTF16String& pattern, const UTF16String& a0,
                            const UTF16String& a1, const UTF16String& a2, const UTF16String& a3,
                            const UTF16String& a4, const UTF16String& a5, const UTF16String& a6,
                            const UTF16String& a7, const UTF16String& a8, const UTF16String& a9) {
    const UTF16String* const args[10] = {&a0, &a1, &a2, &a3, &a4, &a5, &a6, &a7, &a8, &a9};
    const std::size_t size = pattern.size();
    std::size_t length = 0;
    for (std::size_t i = 0; i < size; ++i) {
        if (IsPlaceholder(pattern, i)) {
            length += args[pattern[i + 1] - u'0']->size();
            ++i;
        } else {
            ++length;
        }
    }
    UTF16String out;
    out.reserve(length);
    std::size_t run = 0; // where the literal text not yet copied starts
    for (std::size_t i = 0; i < size; ++i) {
        if (IsPlaceholder(pattern, i)) {
            out.append(pattern, run, i - run);
            out += *args[pattern[i + 1] - u'0'];
            ++i; // the digit is consumed; the inserted text is not looked at again
            run = i + 1;
        }
    }
    out.append(pattern, run, size - run);
    return out;
}

// ASCII text widened to UTF-16, unit for unit.
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
