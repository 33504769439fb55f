#include "pixelview/PixelViewRequest.h"

#include <unicode/uloc.h>
#include <unistd.h>

#include <charconv>
#include <cmath>
#include <filesystem>
#include <regex>
#include <utility>

#include "pixelview/AreaSample.h"
#include "pixelview/PixelViewError.h"
#include "qzhost/ColourConfig.h"

namespace qzhost::pixelview {

namespace {

namespace fs = std::filesystem;

/// The largest UI scale: a panel drawn beyond it would be a poster, not a panel.
constexpr double kMaxScale = 16.0;

void RequireLocale(const std::string& locale) {
    // ICU keeps a locale id in a buffer of this size, its terminating NUL included. The
    // length is checked first also because the pattern match below recurses once per
    // character: a long enough text would overflow the stack.
    if (locale.size() >= ULOC_FULLNAME_CAPACITY) {
        throw BadRequest("--locale must be a locale id such as en_US or de_DE, at most " +
                         std::to_string(ULOC_FULLNAME_CAPACITY - 1) + " characters, not " +
                         std::to_string(locale.size()));
    }
    // An ICU locale id: language, optional script and region, optional keywords.
    static const std::regex pattern(
        "[A-Za-z]{2,3}([_-][A-Za-z]{4})?([_-]([A-Za-z]{2}|[0-9]{3}))?(@[A-Za-z0-9=;_-]+)?");
    if (!std::regex_match(locale, pattern)) {
        throw BadRequest("--locale must be a locale id such as en_US or de_DE, not '" + locale +
                         "'");
    }
}

void RequireReadable(const std::string& path, const std::string& what) {
    std::error_code error;
    if (!fs::is_regular_file(path, error)) {
        throw BadRequest(what + ": no such file '" + path + "'");
    }
    if (::access(path.c_str(), R_OK) != 0) {
        throw BadRequest(what + ": cannot read '" + path + "'");
    }
}

/// A file that the run may create or replace: no folder, nor anything but a file.
void RequireFilePlace(const std::string& path, const std::string& what) {
    std::error_code error;
    const fs::path file(path);
    if (fs::is_directory(file, error)) {
        throw BadRequest(what + ": '" + path + "' is a directory");
    }
    if (fs::exists(file, error) && !fs::is_regular_file(file, error)) {
        throw BadRequest(what + ": '" + path + "' is not a regular file");
    }
}

/// A file that the run may create or replace in a folder that exists and is writable.
void RequireWritablePlace(const std::string& path, const std::string& what) {
    std::error_code error;
    const fs::path file(path);
    RequireFilePlace(path, what);
    const fs::path folder = file.parent_path().empty() ? fs::path(".") : file.parent_path();
    if (!fs::is_directory(folder, error)) {
        throw BadRequest(what + ": no such folder '" + folder.string() + "'");
    }
    if (::access(folder.c_str(), W_OK) != 0) {
        throw BadRequest(what + ": cannot write into '" + folder.string() + "'");
    }
}

/// The points of the command line in their order; at most one "-".
std::vector<PointSource> CommandLinePoints(const PixelViewOptions& options) {
    std::vector<PointSource> sources;
    bool from_input = false;
    for (const std::string& at : options.at) {
        if (at == "-") {
            if (from_input) {
                throw BadRequest("--at - may be given once");
            }
            from_input = true;
            sources.push_back({true, {}});
        } else {
            sources.push_back({false, ParsePoint(at, "--at")});
        }
    }
    if (sources.empty()) {
        throw BadRequest("give a point with --at");
    }
    return sources;
}

/// `value` as the shortest text that reads back as it ("0.1", "inf").
std::string ShortestText(double value) {
    char text[32];
    const auto result = std::to_chars(text, text + sizeof text, value);
    return std::string(text, result.ptr);
}

/// The config file that the run uses: --ocio, else the OCIO environment variable's; empty
/// for none.
std::string ConfigFile(const PixelViewOptions& options) {
    if (!options.ocio.empty()) {
        return options.ocio;
    }
    const std::optional<fs::path> named = ColourConfig::FromEnvironment();
    return named ? named->string() : std::string();
}

/// The colour options against the config: without one they mean nothing; with one the
/// monitor is its display, and the exposure and gamma must be numbers that it can show.
void CheckColourOptions(const PixelViewOptions& options, const std::string& config) {
    if (config.empty()) {
        const std::pair<const char*, bool> given[] = {
            {"--display", options.display.has_value()},
            {"--view", options.view.has_value()},
            {"--exposure", options.exposure.has_value()},
            {"--gamma", options.gamma.has_value()},
            {"--colorspace", options.colorspace.has_value()},
        };
        for (const auto& [option, is_given] : given) {
            if (is_given) {
                throw BadRequest(std::string(option) +
                                 " needs an OpenColorIO config: give one with --ocio FILE or "
                                 "the OCIO environment variable");
            }
        }
        return;
    }
    if (!options.monitor.empty()) {
        throw BadRequest(std::string("--monitor cannot be used with an OpenColorIO config (") +
                         (options.ocio.empty() ? "the OCIO environment variable names " : "") +
                         config + "): the config's display is the monitor");
    }
    if (options.exposure && !std::isfinite(*options.exposure)) {
        throw BadRequest("--exposure must be a finite number of stops, not " +
                         ShortestText(*options.exposure));
    }
    if (options.gamma && !(*options.gamma >= kMinimumGamma && *options.gamma <= kMaximumGamma)) {
        throw BadRequest("--gamma must be a number from " + ShortestText(kMinimumGamma) + " to " +
                         ShortestText(kMaximumGamma) + ", not " + ShortestText(*options.gamma));
    }
}

} // namespace

void AddPixelViewOptions(CLI::App& command, PixelViewOptions& options) {
    command.add_option("IMAGE", options.image,
                       "The image (anything OpenImageIO reads: EXR, TIFF, PNG, JPEG, DPX...); "
                       "the bundled HDR colour chart when absent");
    command
        .add_option("--at", options.at,
                    "A point X,Y of the image's frame (its display window; 0,0 is its top-left "
                    "pixel; a point of the frame without pixels reads as transparent); repeat for "
                    "several points (one panel "
                    "each); \"-\" reads points from standard input, one per line, and shows "
                    "each as soon as its line arrives. With several points each text panel "
                    "ends with an empty line")
        ->required()
        ->expected(1)
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    command.add_option("--origin", options.origin, "The origin X,Y of X' and Y'");
    command.add_option("--channels", options.channels,
                       "The channel set to read: RGBA (the unnamed set), a layer prefix such "
                       "as diffuse, a lone channel such as Z, or a part of a multi-part file; "
                       "a lone channel reads as grey with alpha 1 (default: the first set)");
    command.add_option("--mode", options.mode,
                       "The colour notation, chosen through the panel's menu (and so stored "
                       "in the preferences): auto, percent, web, hsb, 8bpc, 10bpc, 16bpc, "
                       "decimal");
    command.add_option("--prefs", options.prefs,
                       "The preference file (default: the host's, in the user's configuration "
                       "folder)");
    command.add_option("--locale", options.locale, "The host's locale, e.g. de_DE")
        ->capture_default_str();
    command.add_option("--monitor", options.monitor,
                       "The ICC profile of the monitor that shows the swatch (not with an "
                       "OpenColorIO config, whose display is the monitor)");
    command.add_option("--ocio", options.ocio,
                       "The OpenColorIO config (default: the file that the OCIO environment "
                       "variable names). With a config the numbers are the pixel's values in "
                       "its working space (scene_linear) and the swatch shows them through a "
                       "display's view; the options below need one");
    command.add_option("--display", options.display,
                       "The config's display that the swatch is shown on (default: the "
                       "config's default display; one it lacks gives way to that, with a "
                       "warning)");
    command.add_option("--view", options.view,
                       "The display's view that the swatch shows (default: the display's "
                       "default view; one it lacks gives way to that, with a warning)");
    command.add_option("--exposure", options.exposure,
                       "The swatch's exposure in stops: its working colour times 2^STOPS "
                       "before the view; the numbers stay the working values (default: 0)");
    command.add_option("--gamma", options.gamma,
                       "The swatch's gamma: the view's values v shown as v^(1/G), G from 0.1 "
                       "to 10 (default: 1)");
    command.add_option("--colorspace", options.colorspace,
                       "The image's colour space, one of the config's (an unknown name is "
                       "refused with their list; default: the one that the config's file "
                       "rules give the image's path)");
    command.add_option("--scale", options.scale, "The UI scale of the drawn panel")
        ->capture_default_str();
    command.add_option("--png", options.png,
                       "Draw the panel into this PNG file (with several points: NAME-1.png, "
                       "NAME-2.png...)");
    command.add_flag("--json", options.json,
                     "Print the panel's snapshot (host script form) as JSON, one line per point");
    command
        .add_option("--sample", options.sample,
                    "Show the mean of the N x N square centred on each point's pixel (odd N "
                    "from 1 to 101; pixels beyond the image count as transparent)")
        ->capture_default_str();
    command.add_option("--plugin", options.plugin,
                       "The plug-in library (default: the Info palette library of this build)");
}

PixelViewRequest CheckPixelViewOptions(const PixelViewOptions& options) {
    const std::vector<PointSource> sources = CommandLinePoints(options);
    std::optional<Point> origin;
    if (!options.origin.empty()) {
        origin = ParsePoint(options.origin, "--origin");
    }
    const DisplayModeChoice* mode = options.mode.empty() ? nullptr : &FindDisplayMode(options.mode);
    if (!std::isfinite(options.scale) || options.scale <= 0 || options.scale > kMaxScale) {
        throw BadRequest("--scale must be a number above 0 and at most 16");
    }
    if (!IsSampleSize(options.sample)) {
        throw BadRequest("--sample must be an odd number from 1 to 101, not " +
                         std::to_string(options.sample));
    }
    RequireLocale(options.locale);
    const std::string config = ConfigFile(options);
    CheckColourOptions(options, config);
    if (!options.monitor.empty()) {
        RequireReadable(options.monitor, "--monitor");
    }
    if (!options.prefs.empty()) {
        // The host makes a missing preference file, with its folder.
        RequireFilePlace(options.prefs, "--prefs");
    }
    if (!options.png.empty()) {
        RequireWritablePlace(options.png, "--png");
    }
    return {sources, origin, mode, config};
}

} // namespace qzhost::pixelview
