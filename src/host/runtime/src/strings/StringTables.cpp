// The reference host's string tables. Texts are UTF-8.
//
// Only the control layout name is localised: each locale's table points the panel at its
// own layout document, so a localised host loads the localised layout. Everything else
// uses the default texts carried by the keys.
#include "StringTables.h"

#include <algorithm>
#include <array>

#include <unicode/locid.h>

namespace qzhost::strings {

namespace {

constexpr std::string_view kLayoutFileName = "$$$/QZ/Plugin/InfoPal/layout_file_name";

constexpr std::array kGermanStrings = {StringEntry{kLayoutFileName, "control_layout_de_de"}};
constexpr std::array kSpanishStrings = {StringEntry{kLayoutFileName, "control_layout_es_es"}};
constexpr std::array kFrenchStrings = {StringEntry{kLayoutFileName, "control_layout_fr_fr"}};
constexpr std::array kItalianStrings = {StringEntry{kLayoutFileName, "control_layout_it_it"}};
constexpr std::array kJapaneseStrings = {StringEntry{kLayoutFileName, "control_layout_ja_jp"}};
constexpr std::array kKoreanStrings = {StringEntry{kLayoutFileName, "control_layout_ko_kr"}};

struct LocaleTable {
    std::string_view locale; // language "_" country
    std::span<const StringEntry> entries;
};

constexpr std::array kTables = {
    LocaleTable{"de_DE", kGermanStrings},   LocaleTable{"es_ES", kSpanishStrings},
    LocaleTable{"fr_FR", kFrenchStrings},   LocaleTable{"it_IT", kItalianStrings},
    LocaleTable{"ja_JP", kJapaneseStrings}, LocaleTable{"ko_KR", kKoreanStrings},
};

struct ModulePrefix {
    std::string_view module;
    std::string_view prefix;
};

constexpr std::array kModulePrefixes = {
    ModulePrefix{"Info_Palette", "$$$/QZ/Plugin/InfoPal/"},
};

std::span<const StringEntry> FindTable(const std::string& icu_locale_id) {
    const icu::Locale locale(icu_locale_id.c_str());
    const std::string key = std::string(locale.getLanguage()) + "_" + locale.getCountry();
    for (const LocaleTable& table : kTables) {
        if (table.locale == key) {
            return table.entries;
        }
    }
    return {};
}

} // namespace

std::span<const StringEntry> StringTableFor(const std::string& icu_locale_id) {
    // Lookups come in bursts for one locale: remember the last answer of this thread.
    thread_local std::string last_id;
    thread_local std::span<const StringEntry> last_table;
    thread_local bool known = false;
    if (!known || last_id != icu_locale_id) {
        last_table = FindTable(icu_locale_id);
        last_id = icu_locale_id;
        known = true;
    }
    return last_table;
}

std::optional<std::string_view> TableText(const std::string& icu_locale_id, std::string_view path) {
    const auto table = StringTableFor(icu_locale_id);
    const auto it = std::find_if(table.begin(), table.end(),
                                 [&](const StringEntry& entry) { return entry.path == path; });
    if (it == table.end()) {
        return std::nullopt;
    }
    return it->text;
}

std::string_view ModuleKeyPrefix(std::string_view module_name) {
    for (const ModulePrefix& entry : kModulePrefixes) {
        if (entry.module == module_name) {
            return entry.prefix;
        }
    }
    return {};
}

} // namespace qzhost::strings
