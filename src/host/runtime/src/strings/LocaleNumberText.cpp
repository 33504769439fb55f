// The symbols come from formatting a few numbers with ICU rather than from the locale
// data directly, so they are the ones the formatter really uses (its numbering system,
// its minus sign with any direction marks). A locale whose probes do not all come out as
// ICU writes them is not plain, and keeps going through ICU.
#include "LocaleNumberText.h"

#include <cmath>
#include <limits>

#include <unicode/numberformatter.h>

namespace kitcore::utility::detail {

namespace {

icu::number::LocalizedNumberFormatter IcuFormatter(const icu::Locale& locale, int fewest,
                                                   int most) {
    return icu::number::NumberFormatter::withLocale(locale)
        .grouping(UNUM_GROUPING_OFF)
        .precision(icu::number::Precision::minMaxFraction(fewest, most));
}

icu::UnicodeString IcuText(const icu::number::LocalizedNumberFormatter& formatter, double value) {
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString text = formatter.formatDouble(value, status).toString(status);
    if (U_FAILURE(status)) {
        text.setToBogus();
    }
    return text;
}

icu::UnicodeString IcuText(const icu::Locale& locale, double value, int fewest, int most) {
    return IcuText(IcuFormatter(locale, fewest, most), value);
}

bool Store(const icu::UnicodeString& text, int32_t start, int32_t end, SymbolText& symbol) {
    if (text.isBogus() || start < 0 || end < start || end > text.length() ||
        static_cast<std::size_t>(end - start) > SymbolText::kCapacity) {
        return false;
    }
    symbol.length = static_cast<std::size_t>(end - start);
    for (int32_t i = start; i < end; ++i) {
        symbol.units[i - start] = text.charAt(i);
    }
    return true;
}

bool Store(const icu::UnicodeString& text, SymbolText& symbol) {
    return Store(text, 0, text.isBogus() ? 0 : text.length(), symbol);
}

char16_t* Append(const SymbolText& symbol, char16_t* out) noexcept {
    for (std::size_t i = 0; i < symbol.length; ++i) {
        *out++ = symbol.units[i];
    }
    return out;
}

bool ReadSymbols(const icu::Locale& locale, LocaleNumberSymbols& symbols) {
    // Digits: "1234567890", one BMP unit each.
    const icu::UnicodeString digits = IcuText(locale, 1234567890.0, 0, 0);
    if (digits.isBogus() || digits.length() != 10) {
        return false;
    }
    for (int32_t i = 0; i < 10; ++i) {
        const char16_t unit = digits.charAt(i);
        if (U16_IS_SURROGATE(unit)) {
            return false;
        }
        symbols.digits[(i + 1) % 10] = unit;
    }
    // A positive number is its digits alone.
    const icu::UnicodeString seven = IcuText(locale, 7.0, 0, 0);
    if (seven.length() != 1 || seven.charAt(0) != symbols.digits[7]) {
        return false;
    }
    // A negative one has a prefix and nothing after the digits.
    const icu::UnicodeString negative = IcuText(locale, -7.0, 0, 0);
    if (negative.length() < 2 || negative.charAt(negative.length() - 1) != symbols.digits[7] ||
        !Store(negative, 0, negative.length() - 1, symbols.minus)) {
        return false;
    }
    // The decimal separator stands between "0" and "5".
    const icu::UnicodeString half = IcuText(locale, 0.5, 1, 1);
    if (half.length() < 3 || half.charAt(0) != symbols.digits[0] ||
        half.charAt(half.length() - 1) != symbols.digits[5] ||
        !Store(half, 1, half.length() - 1, symbols.separator)) {
        return false;
    }
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    return Store(IcuText(locale, nan, 0, 0), symbols.nan) &&
           Store(IcuText(locale, -nan, 0, 0), symbols.negativeNan) &&
           Store(IcuText(locale, inf, 0, 0), symbols.infinity) &&
           Store(IcuText(locale, -inf, 0, 0), symbols.negativeInfinity);
}

// Numbers whose text exercises every part: signs, zeros, ties, carries, large and tiny
// magnitudes, NaN and the infinities.
bool MatchesIcu(const icu::Locale& locale, const LocaleNumberSymbols& symbols) {
    const double probes[] = {0.0,
                             -0.0,
                             1.0,
                             -1.0,
                             0.5,
                             -0.05,
                             0.15,
                             2.5,
                             -1234.5678,
                             99.995,
                             9.96,
                             1e20,
                             -1e300,
                             1e-300,
                             123456.789,
                             0.000123,
                             66.66667,
                             4.9e-324,
                             -0.004,
                             1000.0,
                             std::numeric_limits<double>::quiet_NaN(),
                             std::numeric_limits<double>::infinity(),
                             -std::numeric_limits<double>::infinity()};
    const int pairs[][2] = {{0, 0}, {0, 1}, {1, 1}, {0, 2}, {2, 4}, {4, 4}, {0, 9}, {3, 9}};
    char16_t text[kMaxLocaleNumberText];
    for (const auto& pair : pairs) {
        const icu::number::LocalizedNumberFormatter formatter =
            IcuFormatter(locale, pair[0], pair[1]);
        for (const double value : probes) {
            const icu::UnicodeString expected = IcuText(formatter, value);
            const std::size_t length = LocaleNumberText(symbols, value, pair[0], pair[1], text);
            if (expected.isBogus() || static_cast<std::size_t>(expected.length()) != length ||
                expected.compare(0, expected.length(), text, 0, static_cast<int32_t>(length)) !=
                    0) {
                return false;
            }
        }
    }
    return true;
}

} // namespace

LocaleNumberSymbols ProbeLocaleNumberSymbols(const std::string& locale) {
    const icu::Locale icu_locale(locale.c_str());
    LocaleNumberSymbols symbols;
    symbols.plain = ReadSymbols(icu_locale, symbols);
    if (symbols.plain) {
        symbols.plain = MatchesIcu(icu_locale, symbols);
    }
    return symbols;
}

std::size_t LocaleNumberText(const LocaleNumberSymbols& symbols, double value, int fewest, int most,
                             char16_t* out) noexcept {
    const bool negative = std::signbit(value);
    char16_t* end = out;
    if (std::isnan(value)) {
        end = Append(negative ? symbols.negativeNan : symbols.nan, out);
        return static_cast<std::size_t>(end - out);
    }
    if (std::isinf(value)) {
        end = Append(negative ? symbols.negativeInfinity : symbols.infinity, out);
        return static_cast<std::size_t>(end - out);
    }
    if (negative) {
        end = Append(symbols.minus, end);
    }
    char ascii[kMaxFixedDecimalText];
    const std::size_t length = FixedDecimalText(value, fewest, most, ascii);
    for (std::size_t i = 0; i < length; ++i) {
        const char c = ascii[i];
        if (c == '.') {
            end = Append(symbols.separator, end);
        } else {
            *end++ = symbols.digits[c - '0'];
        }
    }
    return static_cast<std::size_t>(end - out);
}

} // namespace kitcore::utility::detail
