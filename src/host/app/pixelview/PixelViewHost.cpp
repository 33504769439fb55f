#include "pixelview/PixelViewHost.h"

#include <cmath>
#include <exception>
#include <stdexcept>

#include "pixelview/PixelViewError.h"
#include "qzhost/PreferenceFile.h"
#include "script/OpArgs.h"
#include "script/OpTable.h"
#include "script/ScriptErrors.h"

namespace qzhost::pixelview {

namespace {

using script::Json;

/// The number of items of the panel's notation menu.
constexpr std::size_t kNotationItems = 8;

/// A pixel value for a host script line: a JSON number, or "nan", "inf", "-inf", "-0"
/// for what JSON numbers cannot carry.
Json ValueArg(float value) {
    if (std::isnan(value)) {
        return "nan";
    }
    if (std::isinf(value)) {
        return value > 0 ? "inf" : "-inf";
    }
    if (value == 0 && std::signbit(value)) {
        return "-0";
    }
    return static_cast<double>(value);
}

/// The user's preference file; a host without a user folder cannot have one.
std::string DefaultPreferences() {
    try {
        return DefaultPreferenceFilePath().string();
    } catch (const std::runtime_error& error) {
        throw BadRequest(std::string("no preference file: ") + error.what() +
                         " (give one with --prefs)");
    }
}

Json PairArg(const Point& point) {
    return Json::array({point.x, point.y});
}

} // namespace

PixelViewHost::PixelViewHost(const HostSettings& settings) : session_(settings.plugin) {
    // One setting at a time, so that a refusal names its option; the monitor profile
    // before the preference file, so that a refused profile leaves no file behind.
    Set("--locale", "locale", settings.locale);
    Set("--scale", "scale", settings.scale);
    Set("", "project", {{"depth", settings.projectDepth}});
    if (settings.monitor) {
        Set("--monitor", "monitor", *settings.monitor);
    }
    Set(settings.prefs ? "--prefs" : "the host's preference file", "prefs",
        settings.prefs ? *settings.prefs : DefaultPreferences());

    const Json loaded = Run({{"op", "load"}});
    if (loaded.value("result", 0) != 0) {
        throw HostFailed("the plug-in's entry point failed with code " +
                         std::to_string(loaded.value("result", 0)));
    }
    if (!loaded.value("global", false) || !loaded.value("suite_published", false)) {
        throw HostFailed("the plug-in did not start its panel and suite");
    }
    const Json opened = Run({{"op", "workspace"}, {"action", "open"}});
    if (!opened.value("panel", false) || !opened.value("visible", false)) {
        throw HostFailed("the workspace did not open the Info panel");
    }
}

PixelViewHost::~PixelViewHost() {
    session_.Shutdown();
}

void PixelViewHost::Set(const std::string& option, const std::string& setting, const Json& value) {
    try {
        Run({{"op", "host"}, {setting, value}});
    } catch (const BadRequest& error) {
        // The host names the setting in quotes; the user knows the option.
        std::string message = error.what();
        const std::string quoted = "\"" + setting + "\": ";
        if (message.rfind(quoted, 0) == 0) {
            message.erase(0, quoted.size());
        }
        throw BadRequest(option.empty() ? message : option + ": " + message);
    }
}

Json PixelViewHost::Run(const Json& line) {
    const script::OpHandler* handler = script::ScriptOps().Find(line.at("op").get<std::string>());
    if (handler == nullptr) {
        throw HostFailed("this host has no " + line.at("op").get<std::string>() + " operation");
    }
    try {
        return (*handler)(session_, script::OpArgs(line));
    } catch (const script::ArgumentError& error) {
        // The host refused a value that came from the command line.
        throw BadRequest(error.what());
    } catch (const script::ScriptError& error) {
        throw HostFailed(error.what());
    } catch (const PixelViewError&) {
        throw;
    } catch (const std::exception& error) {
        throw HostFailed(error.what());
    }
}

void PixelViewHost::ChooseDisplayMode(const DisplayModeChoice& choice) {
    // The user opens the menu behind the panel's tab and picks the notation's item.
    const Json menu = Run({{"op", "flyout"}});
    if (!menu.value("panel", true)) {
        throw HostFailed("the Info panel is gone");
    }
    if (menu.contains("result")) {
        throw HostFailed("the Info panel failed to fill its menu (code " + menu["result"].dump() +
                         ")");
    }
    const Json& items = menu.at("items");
    if (items.size() != kNotationItems || !items[choice.menuPosition].value("enabled", false)) {
        throw HostFailed("the Info panel's menu does not offer the " + std::string(choice.name) +
                         " notation");
    }
    const std::int32_t command = items[choice.menuPosition].value("command", 0);
    const Json chosen = Run({{"op", "flyout_command"}, {"command", command}});
    if (chosen.contains("result")) {
        throw HostFailed("the Info panel failed to change its notation (code " +
                         chosen["result"].dump() + ")");
    }
    if (!chosen.value("handled", false)) {
        throw HostFailed("the Info panel did not take its menu command " + std::to_string(command));
    }
}

void PixelViewHost::ShowTextLines(const std::string& line1, const std::string& line2,
                                  const std::string& line3) {
    const Json result =
        Run({{"op", "call"}, {"slot", 0}, {"args", Json::array({line1, line2, line3})}});
    if (result.value("result", 0) != 0) {
        throw HostFailed("the Info palette suite refused the text lines (code " +
                         std::to_string(result.value("result", 0)) + ")");
    }
}

Json PixelViewHost::Show(const PixelARGB& pixel, const Point& position,
                         const std::optional<Point>& origin, const std::string& png) {
    Json args = {
        {"pixel", Json::array({ValueArg(pixel[0]), ValueArg(pixel[1]), ValueArg(pixel[2]),
                               ValueArg(pixel[3])})},
        {"position", PairArg(position)},
        {"origin", origin ? PairArg(*origin) : Json(nullptr)},
    };
    const Json result = Run({{"op", "call"}, {"slot", 4}, {"args", std::move(args)}});
    if (result.value("result", 0) != 0) {
        throw HostFailed("the Info palette suite refused the pixel (code " +
                         std::to_string(result.value("result", 0)) + ")");
    }
    Json snapshot = {{"op", "snapshot"}};
    if (!png.empty()) {
        snapshot["png"] = png;
    }
    Json shown = Run(snapshot);
    if (!shown.value("panel", false)) {
        throw HostFailed("the Info panel is gone");
    }
    return shown;
}

} // namespace qzhost::pixelview
