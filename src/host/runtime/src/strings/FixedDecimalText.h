// Fixed-point decimal text of a double as ICU's number formatter builds it: the shortest
// decimal that reads back as the same double, rounded half-even to a number of fraction
// digits, with trailing zeros dropped down to a minimum.
#pragma once

#include <cstddef>

namespace kitcore::utility::detail {

/// Largest text FixedDecimalText writes: 309 integer digits, the point and 999 fraction
/// digits.
inline constexpr std::size_t kMaxFixedDecimalText = 309 + 1 + 999;

/// Writes the magnitude of the finite `value` (its sign is ignored) as ASCII digits with a
/// '.' before the fraction: at least `fewest` and at most `most` fraction digits
/// (`fewest` <= `most` <= 999), no point when there is no fraction. `out` holds at least
/// kMaxFixedDecimalText characters. Returns the length written.
std::size_t FixedDecimalText(double value, int fewest, int most, char* out) noexcept;

} // namespace kitcore::utility::detail
