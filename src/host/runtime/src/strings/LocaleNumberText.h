// Number text in a locale without going through ICU for every number: the locale's
// digits, decimal separator, minus sign and the texts of NaN and the infinities, read once
// from ICU's number formatter, around the rounded digits of FixedDecimalText.
#pragma once

#include <cstddef>
#include <string>

#include "FixedDecimalText.h"

namespace kitcore::utility::detail {

/// A short piece of UTF-16 text kept inline.
struct SymbolText {
    static constexpr std::size_t kCapacity = 32;
    char16_t units[kCapacity] = {};
    std::size_t length = 0;
};

/// What a locale's number text is made of.
struct LocaleNumberSymbols {
    /// False when the locale's number text is more than a minus sign before the digits
    /// (other affixes, digits outside the BMP, ...) or does not match ICU on the probes;
    /// its numbers then go through ICU.
    bool plain = false;
    char16_t digits[10] = {};
    SymbolText separator;
    SymbolText minus;
    SymbolText nan;
    SymbolText negativeNan;
    SymbolText infinity;
    SymbolText negativeInfinity;
};

/// Longest text LocaleNumberText writes.
inline constexpr std::size_t kMaxLocaleNumberText =
    kMaxFixedDecimalText + 2 * SymbolText::kCapacity;

/// Reads the symbols of the ICU locale id from ICU's number formatter and checks the fast
/// text against ICU on a set of probes.
LocaleNumberSymbols ProbeLocaleNumberSymbols(const std::string& locale);

/// Writes the text of `value` with `fewest` to `most` fraction digits (`fewest` <= `most`
/// <= 999) in the plain locale of `symbols` to `out`, which holds kMaxLocaleNumberText
/// units. Returns the length.
std::size_t LocaleNumberText(const LocaleNumberSymbols& symbols, double value, int fewest, int most,
                             char16_t* out) noexcept;

} // namespace kitcore::utility::detail
