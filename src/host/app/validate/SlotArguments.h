// Arguments for the slots of the published Info palette suite, as "call" lines give
// them: plain ones, boundary ones (null and very long strings, invalid UTF-8, lone
// surrogates, NaN, infinities, huge values) and random ones from a seeded generator.
#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "script/Json.h"

namespace qzhost::validate {

using script::Json;

/// The slot's name in the suite table.
const char* SlotName(int slot);
/// Whether the slot is [any-thread] (else [ui-thread]: called on the main thread only).
bool IsAnyThreadSlot(int slot);
/// Whether some argument of the slot is a string.
bool TakesStrings(int slot);

/// Ordinary arguments: short text, small finite numbers, records present. `tag` makes
/// the strings of different calls differ.
Json PlainArgs(int slot, int tag);
/// One call's arguments for each boundary value of each parameter kind (every other
/// argument plain).
std::vector<Json> BoundaryArgs(int slot);
/// Arguments drawn from `random`: each parameter a boundary value or a random one.
Json RandomArgs(int slot, std::mt19937_64& random);

/// A text of `length` bytes with no zero before its end: it looks unterminated to a
/// reader that scans a fixed buffer.
std::string LongText(std::size_t length);

} // namespace qzhost::validate
