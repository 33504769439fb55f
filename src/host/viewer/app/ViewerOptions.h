// The viewer's command line.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QRect>

#include "qzhost/ColourConfig.h"

namespace qzview {

struct ViewerOptions {
    std::vector<std::string> images;
    /// --geometry WxH+X+Y: the window's size and place on the screen.
    std::optional<QRect> geometry;
    std::optional<double> zoom;
    std::optional<std::string> prefs;
    std::string locale = "en_US";
    std::string plugin;
    std::optional<double> scale;
    std::optional<std::string> monitor;
    /// The colour config (--ocio, else the OCIO environment variable), loaded; null for
    /// none. The display and view to start with (none: the preference file's, else the
    /// config's defaults).
    std::shared_ptr<const qzhost::ColourConfig> colour;
    std::optional<std::string> display;
    std::optional<std::string> view;
    bool logJson = false;
};

/// What parsing gave: options to run with, or an exit (help printed, or a bad command
/// line with its one-line message, or a colour config that does not load).
struct ParsedCommandLine {
    std::optional<ViewerOptions> options;
    int exitStatus = 0;
    std::string message;
};

ParsedCommandLine ParseCommandLine(int argc, char** argv);

/// "WxH+X+Y" (X and Y may be negative: "+-10"); nullopt when it is not one.
std::optional<QRect> ParseGeometry(const std::string& text);

} // namespace qzview
