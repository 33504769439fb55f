// The host's string tables: for each locale that has one, the localised texts by key
// path. A locale without a table (en_US among them) uses the default texts of the keys.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace qzhost::strings {

/// One string of a table: the key path (the part of a key before "=") and its text,
/// both UTF-8.
struct StringEntry {
    std::string_view path;
    std::string_view text;
};

/// [any-thread] The table of an ICU locale id, matched by language and country
/// ("de_DE", "de-DE" and "de_DE@currency=EUR" all name the de_DE table); empty when the
/// host has no table for it.
std::span<const StringEntry> StringTableFor(const std::string& icu_locale_id);

/// [any-thread] The table text of `path` for the locale, if the table has the path.
std::optional<std::string_view> TableText(const std::string& icu_locale_id, std::string_view path);

/// [any-thread] The key-path prefix under which the strings of a string module are
/// listed ("Info_Palette" has "$$$/QZ/Plugin/InfoPal/"); empty for an unknown module.
std::string_view ModuleKeyPrefix(std::string_view module_name);

} // namespace qzhost::strings
