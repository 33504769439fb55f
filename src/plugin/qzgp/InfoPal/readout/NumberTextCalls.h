// The readouts' calls of the host's number text. NumberToString takes a last argument
// that its text does not depend on; the readouts pass it as the host expects it, 8 for the
// fractional colour notations and 31 everywhere else, and name it here once.
#pragma once

#include "kitcore/utility/NumberText.h"

namespace infopal {

/// The last argument of NumberToString for the fractional colour notations (Percent and
/// Decimal).
inline constexpr int kNumberTextFractional = 8;
/// The last argument of NumberToString for every other number text.
inline constexpr int kNumberTextWhole = 31;

/// [ui-thread] `value` with at most `most` and at least `fewest` fraction digits, in the
/// host locale; `last` is NumberToString's last argument.
inline kitcore::utility::UTF16String NumberText(double value, std::size_t most, std::size_t fewest,
                                                int last = kNumberTextWhole) {
    return kitcore::utility::NumberToString(value, most, fewest,
                                            kitcore::utility::Flags<unsigned short>(), last);
}

/// [ui-thread] `value` with exactly one fraction digit ("12.0").
inline kitcore::utility::UTF16String OneDecimalText(double value) {
    return NumberText(value, 1, 1);
}

/// [ui-thread] `value` with at most one fraction digit, a zero fraction dropped ("100").
inline kitcore::utility::UTF16String AtMostOneDecimalText(double value) {
    return NumberText(value, 1, 0);
}

} // namespace infopal
