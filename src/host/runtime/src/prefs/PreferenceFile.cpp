#include "qzhost/PreferenceFile.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "PreferenceStore.h"
#include "PreferenceText.h"

namespace qzhost {

void SetPreferenceFile(const std::filesystem::path& path) {
    PREF_Store::Get().Open(path);
}

void UsePrivatePreferenceFile() {
    PREF_Store::Get().UsePrivateFile();
}

std::filesystem::path PreferenceFilePath() {
    return PREF_Store::Get().Path();
}

std::optional<std::string> HostTextPreference(const std::string& section, const std::string& key) {
    return PREF_Store::Get().Find(section, key);
}

int SetHostTextPreference(const std::string& section, const std::string& key,
                          const std::string& value) {
    return PREF_Store::Get().Set(section, key, value);
}

std::filesystem::path DefaultPreferenceFilePath() {
    const std::filesystem::path relative = std::filesystem::path("qzhost") / "preferences.txt";
    if (const char* config = std::getenv("XDG_CONFIG_HOME");
        config != nullptr && std::filesystem::path(config).is_absolute()) {
        return std::filesystem::path(config) / relative;
    }
    if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0') {
        return std::filesystem::path(home) / ".config" / relative;
    }
    throw std::runtime_error("neither XDG_CONFIG_HOME nor HOME names a folder for the "
                             "preference file");
}

std::optional<std::string> ReadStoredPreference(const std::string& section,
                                                const std::string& key) {
    const std::filesystem::path path = PreferenceFilePath();
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw std::runtime_error("cannot read the preference file " + path.string());
    }
    std::ostringstream text;
    text << in.rdbuf();
    prefs::PreferenceData data;
    try {
        data = prefs::ParsePreferenceText(text.str());
    } catch (const prefs::PreferenceFormatError& error) {
        throw std::runtime_error("the preference file " + path.string() +
                                 " cannot be read: " + error.what());
    }
    auto s = data.find(section);
    if (s == data.end()) {
        return std::nullopt;
    }
    auto k = s->second.find(key);
    if (k == s->second.end()) {
        return std::nullopt;
    }
    return k->second;
}

} // namespace qzhost
