// The "prefs" op: the Info panel's display-mode preference as the preference file holds
// it on disk.
#include <charconv>
#include <optional>
#include <string>

#include "qzhost/PreferenceFile.h"
#include "script/OpTable.h"

namespace qzhost::script {

namespace {

constexpr const char* kSection = "Misc Section";
constexpr const char* kKey = "Info Palette Pixel Display";

Json Prefs(ScriptSession&, const OpArgs& args) {
    args.AllowOnly({});
    const std::optional<std::string> stored = ReadStoredPreference(kSection, kKey);
    Json out = OpOutput(args);
    out["exists"] = stored.has_value();
    if (!stored) {
        out["value"] = nullptr;
        return out;
    }
    long long number = 0;
    const char* first = stored->data();
    const char* last = stored->data() + stored->size();
    const auto [end, ec] = std::from_chars(first, last, number);
    if (!stored->empty() && ec == std::errc() && end == last) {
        out["value"] = number;
    } else {
        // Not a whole number: the text as it is stored.
        out["value"] = *stored;
    }
    return out;
}

} // namespace

void AddPrefsOps(OpTable& table) {
    table.Add("prefs", Prefs);
}

} // namespace qzhost::script
