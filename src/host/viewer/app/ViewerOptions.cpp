#include "ViewerOptions.h"

#include <cmath>
#include <filesystem>
#include <regex>
#include <sstream>

#include <CLI/CLI.hpp>

namespace qzview {

std::optional<QRect> ParseGeometry(const std::string& text) {
    static const std::regex pattern(R"(^(\d{1,5})x(\d{1,5})([+-]\d{1,5})([+-]\d{1,5})$)");
    std::smatch match;
    if (!std::regex_match(text, match, pattern)) {
        return std::nullopt;
    }
    const int width = std::stoi(match[1]);
    const int height = std::stoi(match[2]);
    if (width < 1 || height < 1) {
        return std::nullopt;
    }
    return QRect(std::stoi(match[3]), std::stoi(match[4]), width, height);
}

ParsedCommandLine ParseCommandLine(int argc, char** argv) {
    CLI::App app{"qzview: the reference host's interactive viewer. Opens images as a "
                 "composition; the docked Info panel shows the pixel under the pointer.",
                 "qzview"};
    ViewerOptions options;
    std::string geometry;
    double zoom = 0;
    double scale = 0;
    std::string prefs;
    std::string monitor;
    std::string ocio;
    std::string display;
    std::string view;
    app.add_option("images", options.images, "images to open, the first one on the bottom");
    app.add_option("--geometry", geometry, "the window's size and place: WxH+X+Y");
    app.add_option("--zoom", zoom, "start at this zoom (1/16 to 64; the nearest level)");
    app.add_option("--prefs", prefs, "the preference file (default: the user's)");
    app.add_option("--locale", options.locale, "the host's locale (ICU id)")->default_str("en_US");
    app.add_option("--plugin", options.plugin, "the plug-in library (default: beside qzview)");
    app.add_option("--scale", scale, "the panel's UI scale (default: the screen's pixel ratio)");
    app.add_option("--monitor", monitor, "the monitor's ICC profile (not with a colour config)");
    app.add_option("--ocio", ocio,
                   "the OpenColorIO config that manages colour (default: the file that the "
                   "OCIO environment variable names; none: the sRGB transfer)");
    app.add_option("--display", display,
                   "the config's display to start with (default: the last one chosen for "
                   "the config, else its default)");
    app.add_option("--view", view,
                   "the display's view to start with (default: the last one chosen, else the "
                   "display's default)");
    app.add_flag("--log-json", options.logJson,
                 "print events as JSON Lines on standard output (ready, panel)");
    ParsedCommandLine parsed;
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
            std::ostringstream out;
            app.exit(error, out, out);
            parsed.message = out.str();
            parsed.exitStatus = 0;
            return parsed;
        }
        parsed.exitStatus = 2;
        parsed.message = error.what();
        return parsed;
    }
    if (!geometry.empty()) {
        options.geometry = ParseGeometry(geometry);
        if (!options.geometry) {
            parsed.exitStatus = 2;
            parsed.message = "--geometry: must be WxH+X+Y, not '" + geometry + "'";
            return parsed;
        }
    }
    if (app.count("--zoom") > 0) {
        if (!std::isfinite(zoom) || zoom < 1.0 / 16 || zoom > 64) {
            parsed.exitStatus = 2;
            parsed.message = "--zoom: must be from 0.0625 (1/16) to 64";
            return parsed;
        }
        options.zoom = zoom;
    }
    if (app.count("--scale") > 0) {
        if (!std::isfinite(scale) || scale < 0.25 || scale > 8) {
            parsed.exitStatus = 2;
            parsed.message = "--scale: must be from 0.25 to 8";
            return parsed;
        }
        options.scale = scale;
    }
    if (!prefs.empty()) {
        options.prefs = prefs;
    }
    if (!monitor.empty()) {
        options.monitor = monitor;
    }
    const std::optional<std::filesystem::path> config =
        !ocio.empty() ? std::optional<std::filesystem::path>(ocio)
                      : qzhost::ColourConfig::FromEnvironment();
    if (config) {
        if (options.monitor) {
            parsed.exitStatus = 2;
            parsed.message = "--monitor: a colour config's display is the monitor; give one or "
                             "the other";
            return parsed;
        }
        try {
            options.colour = qzhost::ColourConfig::Load(*config);
        } catch (const std::exception& error) {
            parsed.exitStatus = 2;
            parsed.message = error.what();
            return parsed;
        }
    } else if (!display.empty() || !view.empty()) {
        parsed.exitStatus = 2;
        parsed.message = std::string(!display.empty() ? "--display" : "--view") +
                         ": there is no colour config (--ocio FILE or the OCIO variable)";
        return parsed;
    }
    if (!display.empty()) {
        options.display = display;
    }
    if (!view.empty()) {
        options.view = view;
    }
    parsed.options = std::move(options);
    return parsed;
}

} // namespace qzview
