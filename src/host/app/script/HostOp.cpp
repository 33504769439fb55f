// The "host" op: changes the reference host's settings.
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <functional>
#include <iostream>
#include <map>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

#include "qzhost/HostControls.h"
#include "qzhost/MonitorProfile.h"
#include "qzhost/PreferenceFile.h"
#include "qzhost/ToolkitSettings.h"
#include "script/OpTable.h"
#include "script/ScriptErrors.h"
#include "script/Shape.h"
#include "script/Values.h"

namespace qzhost::script {

namespace {

/// A change of the host, ready to apply.
using Change = std::function<void()>;
/// Checks the value of one setting and gives the change it makes.
using Setting = std::function<Change(const Json& value, const std::string& what)>;

/// "NAME/VERSION": the version is the integer after the last slash.
std::pair<std::string, std::int32_t> ParseSuite(const Json& entry, const std::string& what) {
    const std::string& text = AsString(entry, what);
    const std::size_t slash = text.rfind('/');
    const std::string problem = what + " must be \"NAME/VERSION\", not " + Quoted(text);
    if (slash == std::string::npos || slash == 0 || slash + 1 == text.size()) {
        throw ArgumentError(problem);
    }
    const std::string version = text.substr(slash + 1);
    const bool digits =
        version.size() <= 9 &&
        std::all_of(version.begin(), version.end(), [](char c) { return c >= '0' && c <= '9'; });
    if (!digits) {
        throw ArgumentError(problem);
    }
    return {text.substr(0, slash), static_cast<std::int32_t>(std::stol(version))};
}

Change MissingSuites(const Json& value, const std::string& what) {
    std::vector<std::pair<std::string, std::int32_t>> suites;
    for (const Json& entry : AsArray(value, what)) {
        suites.push_back(ParseSuite(entry, what + " entries"));
    }
    return [suites] { HostControls::Get().SetMissingSuites(suites); };
}

/// The operation name must be one of `names`.
void CheckOperation(const std::vector<std::string_view>& names, const std::string& name,
                    const std::string& what) {
    if (std::find(names.begin(), names.end(), name) == names.end()) {
        throw ArgumentError(what + ": unknown operation " + Quoted(name));
    }
}

Change Errors(const Json& value, const std::string& what) {
    std::vector<std::pair<std::string, QZ_Err>> errors;
    for (const auto& member : AsObject(value, what).items()) {
        CheckOperation(ErrorOperationNames(), member.key(), what);
        errors.emplace_back(member.key(), AsInt32(member.value(), what + "." + member.key()));
    }
    return [errors] {
        for (const auto& [name, code] : errors) {
            HostControls::Get().SetError(name, code);
        }
    };
}

Change Throws(const Json& value, const std::string& what) {
    std::vector<std::pair<std::string, std::optional<std::string>>> throws;
    for (const auto& member : AsObject(value, what).items()) {
        CheckOperation(ThrowOperationNames(), member.key(), what);
        if (member.value().is_null()) {
            throws.emplace_back(member.key(), std::nullopt);
        } else {
            throws.emplace_back(member.key(), AsString(member.value(), what + "." + member.key()));
        }
    }
    return [throws] {
        for (const auto& [name, message] : throws) {
            HostControls::Get().SetThrow(name, message);
        }
    };
}

/// The four alert flags, G_msg1_redB to G_msg4_redB.
Change Alerts(const Json& value, const std::string& what) {
    const Json& list = AsArray(value, what);
    if (list.size() != 4) {
        throw ArgumentError(what + " must be a list of 4 bools");
    }
    bool flags[4];
    for (std::size_t i = 0; i < 4; ++i) {
        flags[i] = AsBool(list[i], what + " entries");
    }
    return [a1 = flags[0], a2 = flags[1], a3 = flags[2], a4 = flags[3]] {
        HostControls::Get().SetAlerts(a1, a2, a3, a4);
    };
}

/// `null` (no open project) or `{"depth": N}` (an open project of that depth).
Change Project(const Json& value, const std::string& what) {
    if (value.is_null()) {
        return [] { HostControls::Get().SetProjectDepth(std::nullopt); };
    }
    if (!value.is_object()) {
        throw ArgumentError(what + " must be null or {\"depth\": N}");
    }
    for (const auto& member : value.items()) {
        if (member.key() != "depth") {
            throw ArgumentError("unknown field " + Quoted(member.key()) + " in " + what);
        }
    }
    auto depth_field = value.find("depth");
    if (depth_field == value.end()) {
        throw ArgumentError("missing field \"depth\" in " + what);
    }
    const auto depth =
        static_cast<std::int8_t>(AsInteger(*depth_field, what + ".depth", -128, 127));
    return [depth] { HostControls::Get().SetProjectDepth(depth); };
}

/// `null` (the identity) or the path of the monitor's ICC profile.
Change Monitor(const Json& value, const std::string& what) {
    if (value.is_null()) {
        return [] { SetMonitorProfile(std::nullopt); };
    }
    const std::string path = AsString(value, what);
    if (path.empty()) {
        throw ArgumentError(what + " must be null or a path, not \"\"");
    }
    return [path] { SetMonitorProfile(std::filesystem::path(path)); };
}

/// The path of the preference file; it is created when missing.
Change Prefs(const Json& value, const std::string& what) {
    const std::string path = AsString(value, what);
    if (path.empty()) {
        throw ArgumentError(what + " must be a path, not \"\"");
    }
    return [path] { SetPreferenceFile(std::filesystem::path(path)); };
}

const std::map<std::string, Setting, std::less<>>& Settings() {
    static const std::map<std::string, Setting, std::less<>> settings = {
        {"locale",
         [](const Json& value, const std::string& what) -> Change {
             std::string locale = AsString(value, what);
             return [locale] { HostControls::Get().SetLocale(locale); };
         }},
        {"codepage",
         [](const Json& value, const std::string& what) -> Change {
             std::string codepage = AsString(value, what);
             return [codepage] { HostControls::Get().SetCodepage(codepage); };
         }},
        {"ui_suppressed",
         [](const Json& value, const std::string& what) -> Change {
             const auto byte = static_cast<std::uint8_t>(AsInteger(value, what, 0, 255));
             return [byte] { HostControls::Get().SetUISuppressed(byte); };
         }},
        {"workspace",
         [](const Json& value, const std::string& what) -> Change {
             const bool exists = AsBool(value, what);
             return [exists] { HostControls::Get().SetWorkspaceExists(exists); };
         }},
        {"missing_suites", MissingSuites},
        {"errors", Errors},
        {"throws", Throws},
        {"report_result",
         [](const Json& value, const std::string& what) -> Change {
             const QZ_Err result = AsInt32(value, what);
             return [result] { HostControls::Get().SetReportResult(result); };
         }},
        {"update_suppressed",
         [](const Json& value, const std::string& what) -> Change {
             const bool suppressed = AsBool(value, what);
             return [suppressed] { HostControls::Get().SetUpdateSuppressed(suppressed); };
         }},
        {"alerts", Alerts},
        {"project", Project},
        {"monitor", Monitor},
        {"prefs", Prefs},
        {"shaders",
         [](const Json& value, const std::string& what) -> Change {
             const bool on = AsBool(value, what);
             return [on] { ToolkitSettings::Get().SetShaderFills(on); };
         }},
        {"scale",
         [](const Json& value, const std::string& what) -> Change {
             const double scale = NumberArg(value, what);
             if (!std::isfinite(scale) || scale <= 0) {
                 throw ArgumentError(what + " must be a positive number");
             }
             return [scale] { HostControls::Get().SetUIScale(scale); };
         }},
    };
    return settings;
}

Json Host(ScriptSession&, const OpArgs& args) {
    const auto& settings = Settings();
    // Every value is checked before any change is made, so that a line with a badly
    // shaped setting leaves the host as it was.
    std::vector<std::pair<std::string, Change>> changes;
    for (const auto& member : args.Line().items()) {
        const std::string& name = member.key();
        if (name == "op") {
            continue;
        }
        auto setting = settings.find(name);
        if (setting == settings.end()) {
            throw ArgumentError("unknown setting " + Quoted(name));
        }
        changes.emplace_back(name, setting->second(member.value(), Quoted(name)));
    }
    for (const auto& [name, change] : changes) {
        try {
            change();
        } catch (const std::invalid_argument& error) {
            // The host refuses the value itself, e.g. a code page that it does not know.
            throw ArgumentError(Quoted(name) + ": " + error.what());
        } catch (const std::runtime_error& error) {
            // A file that the setting names cannot be used: a monitor profile that cannot
            // be read, a preference file that can neither be read nor created.
            throw ArgumentError(Quoted(name) + ": " + error.what());
        }
    }
    // Problems that the host worked around, such as an unreadable preference file that
    // it set aside, are worth a diagnostic, under the name of the program that runs.
    HostControls::Get().PrintWarnings(std::cerr);
    return OpOutput(args);
}

} // namespace

void AddHostOps(OpTable& table) {
    table.Add("host", Host);
}

} // namespace qzhost::script
