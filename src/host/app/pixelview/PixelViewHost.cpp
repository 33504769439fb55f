#include "pixelview/PixelViewHost.h"

#include <cmath>
#include <exception>
#include <limits>
#include <stdexcept>

#include "host/PF_Pixel.h"
#include "pixelview/PixelViewError.h"
#include "qzgp/QZ_InfoPaletteSuite.h"
#include "qzhost/MonitorProfile.h"
#include "qzhost/PreferenceFile.h"
#include "qzhost/SuiteRegistry.h"
#include "script/OpArgs.h"
#include "script/OpTable.h"
#include "script/ScriptErrors.h"

namespace qzhost::pixelview {

namespace {

using script::Json;

/// The number of items of the panel's notation menu.
constexpr std::size_t kNotationItems = 8;

/// A pixel channel as the host hands it to the suite: a NaN of any sign or payload as
/// the one quiet NaN.
float Channel(float value) {
    return std::isnan(value) ? std::numeric_limits<float>::quiet_NaN() : value;
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
    // The session's start reset the monitor; the swatch goes through this display's view.
    if (settings.display) {
        SetMonitorDisplay(settings.display);
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
    if (settings.openPanel) {
        const Json opened = Run({{"op", "workspace"}, {"action", "open"}});
        if (!opened.value("panel", false) || !opened.value("visible", false)) {
            throw HostFailed("the workspace did not open the Info panel");
        }
    }
    const void* table = nullptr;
    if (SuiteRegistry::Get().HostTable()->AcquireSuite(kQZ_InfoPaletteSuite,
                                                       kQZ_InfoPaletteSuiteVersion2, &table) != 0 ||
        table == nullptr) {
        throw HostFailed("the plug-in did not publish the Info palette suite");
    }
    suite_ = static_cast<const QZ_InfoPaletteSuite2*>(table);
}

PixelViewHost::~PixelViewHost() {
    Shutdown();
}

void PixelViewHost::Shutdown() {
    if (suite_ != nullptr) {
        SuiteRegistry::Get().HostTable()->ReleaseSuite(kQZ_InfoPaletteSuite,
                                                       kQZ_InfoPaletteSuiteVersion2);
        suite_ = nullptr;
    }
    session_.Shutdown();
}

void PixelViewHost::SetProjectDepth(std::int8_t depth) {
    Set("", "project", {{"depth", depth}});
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

void PixelViewHost::Deliver(const PixelARGB& pixel, const Point& position,
                            const std::optional<Point>& origin) {
    const PF_PixelFloat value = {Channel(pixel[0]), Channel(pixel[1]), Channel(pixel[2]),
                                 Channel(pixel[3])};
    const M_Vector2T<double> at = {position.x, position.y};
    M_Vector2T<double> from{};
    if (origin) {
        from = {origin->x, origin->y};
    }
    if (suite_ == nullptr) {
        throw HostFailed("the host has shut down");
    }
    const QZ_Err result = suite_->SetPixelInfo(&value, &at, origin ? &from : nullptr);
    if (result != 0) {
        throw HostFailed("the Info palette suite refused the pixel (code " +
                         std::to_string(result) + ")");
    }
}

void PixelViewHost::Read(PanelState& state) {
    reader_.Read(state);
    if (!state.panel) {
        throw HostFailed("the Info panel is gone");
    }
}

Json PixelViewHost::Snapshot(const std::string& png) {
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
