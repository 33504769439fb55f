// One line of a host script as the runner reads it: skipped (blank or a comment), or a
// JSON object whose "op" member is a string.
#pragma once

#include <string>

#include "script/Json.h"

namespace qzhost::script {

/// Whether the runner skips the line: empty, blank, or '#' as its first non-blank
/// character.
bool IsSkippedLine(const std::string& line);

/// The line as a JSON object with a string "op"; throws ArgumentError when it is not valid
/// JSON, holds a number beyond the range of a double, is not an object, or has no string
/// "op".
Json DecodeScriptLine(const std::string& text);

} // namespace qzhost::script
