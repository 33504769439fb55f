// The text form of the host's preference file.
//
// The file is plain text, one item per line, in sections:
//
//   # qzhost preferences
//   [Misc Section]
//   Info Palette Pixel Display = 7
//
// - A line "[name]" opens the section called `name`; every "key = value" line below it,
//   up to the next section line, belongs to that section. A section may appear more
//   than once: its entries add up. A key appears at most once in a section.
// - Blank lines and lines whose first non-blank character is "#" are comments.
// - Spaces and tabs around a section name, a key and a value are not part of them.
//   Section names, keys and values may hold inner spaces and any byte but NUL.
// - A backslash escapes the next character: "\\", "\=", "\[", "\]", "\#" and "\ " (a
//   space) stand for themselves; "\n", "\r" and "\t" for newline, carriage return and
//   tab; "\xHH" (two hexadecimal digits) for any other byte. The writer escapes the
//   backslash, "=", "[", "]", "#", a space at either end of a text and every control
//   character, so any text reads back exactly as it was stored.
// - Everything else on a line is an error: an entry before the first section, an entry
//   without "=", an unknown or unfinished escape, a key given twice in a section, or a
//   NUL byte. A file with any error cannot be read as a whole.
//
// Values are stored as text; the whole-number preferences are written in decimal.
#pragma once

#include <cstddef>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

namespace qzhost::prefs {

/// Section name to (key to value text), in byte order of the names.
using PreferenceData = std::map<std::string, std::map<std::string, std::string>>;

/// A preference text that cannot be read; `Line()` is the 1-based line of the problem.
class PreferenceFormatError : public std::runtime_error {
public:
    PreferenceFormatError(std::size_t line, const std::string& problem);
    std::size_t Line() const noexcept { return line_; }

private:
    std::size_t line_;
};

/// Reads a whole preference text. Throws PreferenceFormatError.
PreferenceData ParsePreferenceText(std::string_view text);

/// Writes the preference text of `data`; ParsePreferenceText gives `data` back.
std::string FormatPreferenceText(const PreferenceData& data);

} // namespace qzhost::prefs
