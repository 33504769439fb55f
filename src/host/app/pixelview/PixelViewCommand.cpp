#include "pixelview/PixelViewCommand.h"

#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <regex>

#include "pixelview/DisplayModeChoice.h"
#include "pixelview/PanelText.h"
#include "pixelview/PixelViewError.h"
#include "pixelview/PixelViewHost.h"
#include "pixelview/PixelViewImage.h"
#include "pixelview/PixelViewPoint.h"
#include "pixelview/SampleImage.h"
#include "qzhost/PluginLoader.h"
#include "script/Json.h"

namespace qzhost::pixelview {

namespace {

namespace fs = std::filesystem;
using script::Json;

/// The largest UI scale: a panel drawn beyond it would be a poster, not a panel.
constexpr double kMaxScale = 16.0;

/// A point of the run: where the pointer rests, and the pixel under it.
struct Shown {
    Point at;
    PixelARGB pixel{};
};

void RequireLocale(const std::string& locale) {
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

std::string NumberText(double value) {
    char text[32];
    const auto result = std::to_chars(text, text + sizeof text, value);
    return std::string(text, result.ptr);
}

std::string PointText(const Point& point) {
    return NumberText(point.x) + "," + NumberText(point.y);
}

/// Every point of the run, from the command line and, for "-", from `in`.
std::vector<Point> CollectPoints(const PixelViewOptions& options, std::istream& in,
                                 bool& from_input) {
    std::vector<Point> points;
    from_input = false;
    for (const std::string& at : options.at) {
        if (at == "-") {
            if (from_input) {
                throw BadRequest("--at - may be given once");
            }
            from_input = true;
            const std::vector<Point> read = ReadPoints(in);
            points.insert(points.end(), read.begin(), read.end());
        } else {
            points.push_back(ParsePoint(at, "--at"));
        }
    }
    if (points.empty()) {
        throw BadRequest(from_input ? "standard input holds no point" : "give a point with --at");
    }
    return points;
}

/// The pixel of each point; throws BadRequest for a point outside the image.
std::vector<Shown> PixelsAt(const PixelViewImage& image, const std::vector<Point>& points) {
    std::vector<Shown> shown;
    shown.reserve(points.size());
    for (const Point& point : points) {
        const double column = std::floor(point.x);
        const double row = std::floor(point.y);
        const bool representable =
            column >= INT_MIN && column <= INT_MAX && row >= INT_MIN && row <= INT_MAX;
        if (!representable || !image.Contains(static_cast<int>(column), static_cast<int>(row))) {
            throw BadRequest("point " + PointText(point) + " lies outside the image (columns " +
                             std::to_string(image.X0()) + " to " +
                             std::to_string(image.X0() + image.Width() - 1) + ", rows " +
                             std::to_string(image.Y0()) + " to " +
                             std::to_string(image.Y0() + image.Height() - 1) + ")");
        }
        shown.push_back({point, image.PixelAt(static_cast<int>(column), static_cast<int>(row))});
    }
    return shown;
}

const char* DepthText(std::int8_t depth) {
    switch (depth) {
    case 0:
        return "8 bpc";
    case 1:
        return "16 bpc";
    default:
        return "32 bpc float";
    }
}

/// What the host writes into the panel's text lines about the image in the viewer.
std::vector<std::string> ImageLines(const PixelViewImage& image) {
    return {
        fs::path(image.Path()).filename().string(),
        image.FormatName() + ", " + std::to_string(image.Width()) + " x " +
            std::to_string(image.Height()) + ", " + image.ChannelNames() + ", " +
            image.ChannelType(),
        std::string("Project: ") + DepthText(image.ProjectDepth()),
    };
}

/// The delivered pixel (alpha, red, green, blue) for the JSON output: numbers, or "nan",
/// "inf", "-inf" for values that JSON numbers cannot carry.
Json PixelJson(const PixelARGB& pixel) {
    Json values = Json::array();
    for (const float v : pixel) {
        if (std::isnan(v)) {
            values.push_back("nan");
        } else if (std::isinf(v)) {
            values.push_back(v > 0 ? "inf" : "-inf");
        } else {
            values.push_back(static_cast<double>(v));
        }
    }
    return values;
}

std::string OneLine(std::string message) {
    std::replace(message.begin(), message.end(), '\n', ' ');
    return message;
}

int Run(const PixelViewOptions& options, std::istream& in, std::ostream& out) {
    // Everything that the command line can get wrong is checked before the host starts,
    // so that a bad request shows nothing and writes nothing.
    bool from_input = false;
    const std::vector<Point> points = CollectPoints(options, in, from_input);
    std::optional<Point> origin;
    if (!options.origin.empty()) {
        origin = ParsePoint(options.origin, "--origin");
    }
    const DisplayModeChoice* mode = options.mode.empty() ? nullptr : &FindDisplayMode(options.mode);
    if (!std::isfinite(options.scale) || options.scale <= 0 || options.scale > kMaxScale) {
        throw BadRequest("--scale must be a number above 0 and at most 16");
    }
    RequireLocale(options.locale);
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
    const PixelViewImage image(options.image.empty() ? DefaultSampleImage() : options.image);
    const std::vector<Shown> shown = PixelsAt(image, points);

    HostSettings settings;
    settings.plugin = options.plugin.empty() ? DefaultPluginPath() : options.plugin;
    settings.locale = options.locale;
    settings.scale = options.scale;
    settings.projectDepth = image.ProjectDepth();
    if (!options.prefs.empty()) {
        settings.prefs = options.prefs;
    }
    if (!options.monitor.empty()) {
        settings.monitor = options.monitor;
    }
    PixelViewHost host(settings);
    if (mode != nullptr) {
        host.ChooseDisplayMode(*mode);
    }
    const std::vector<std::string> lines = ImageLines(image);
    host.ShowTextLines(lines[0], lines[1], lines[2]);

    const bool several = shown.size() > 1 || from_input;
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const std::string png = options.png.empty() ? "" : PngFileFor(options.png, i, several);
        Json snapshot = host.Show(shown[i].pixel, shown[i].at, origin, png);
        if (options.json) {
            snapshot["image"] = image.Path();
            snapshot["at"] = Json::array({shown[i].at.x, shown[i].at.y});
            snapshot["pixel"] = PixelJson(shown[i].pixel);
            snapshot["project_depth"] = image.ProjectDepth();
            out << snapshot.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
        } else {
            if (i > 0) {
                out << '\n';
            }
            out << PanelText(snapshot, options.colour);
        }
    }
    out.flush();
    return kExitOk;
}

} // namespace

std::string PngFileFor(const std::string& png, std::size_t index, bool several) {
    if (!several) {
        return png;
    }
    const fs::path path(png);
    fs::path numbered = path.parent_path() / path.stem();
    numbered += "-" + std::to_string(index + 1);
    numbered += path.extension();
    return numbered.string();
}

int RunPixelView(const PixelViewOptions& options, std::istream& in, std::ostream& out,
                 std::ostream& err) {
    try {
        return Run(options, in, out);
    } catch (const PixelViewError& error) {
        err << "qzhost inspect: " << OneLine(error.what()) << '\n';
        return error.ExitStatus();
    } catch (const std::exception& error) {
        err << "qzhost inspect: host failure: " << OneLine(error.what()) << '\n';
        return kExitHostFailure;
    }
}

CLI::App* AddPixelViewCommand(CLI::App& app, int& exit_status) {
    CLI::App* command = app.add_subcommand(
        "inspect",
        "Show the Info panel for pixels of an image, as the panel shows them while the pointer "
        "rests there in the host's viewer. Exit status 2: a missing or unreadable image, an "
        "unknown format, a point outside the image or a malformed option; 3: a failure of the "
        "host or the plug-in.");
    auto options = std::make_shared<PixelViewOptions>();
    command->add_option("IMAGE", options->image,
                        "The image (anything OpenImageIO reads: EXR, TIFF, PNG, JPEG, DPX...); "
                        "the bundled HDR colour chart when absent");
    command
        ->add_option("--at", options->at,
                     "A point X,Y in image coordinates; repeat for several points (one panel "
                     "each); \"-\" reads points from standard input, one per line, to its end "
                     "before the first panel is shown")
        ->required()
        ->expected(1)
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    command->add_option("--origin", options->origin, "The origin X,Y of X' and Y'");
    command->add_option("--mode", options->mode,
                        "The colour notation, chosen through the panel's menu (and so stored "
                        "in the preferences): auto, percent, web, hsb, 8bpc, 10bpc, 16bpc, "
                        "decimal");
    command->add_option("--prefs", options->prefs,
                        "The preference file (default: the host's, in the user's configuration "
                        "folder)");
    command->add_option("--locale", options->locale, "The host's locale, e.g. de_DE")
        ->capture_default_str();
    command->add_option("--monitor", options->monitor,
                        "The ICC profile of the monitor that shows the swatch");
    command->add_option("--scale", options->scale, "The UI scale of the drawn panel")
        ->capture_default_str();
    command->add_option("--png", options->png,
                        "Draw the panel into this PNG file (with several points: NAME-1.png, "
                        "NAME-2.png...)");
    command->add_flag("--json", options->json,
                      "Print the panel's snapshot (host script form) as JSON, one line per point");
    command->add_option("--plugin", options->plugin,
                        "The plug-in library (default: the Info palette library of this build)");
    command->callback([options, &exit_status] {
        PixelViewOptions run = *options;
        run.colour = ::isatty(STDOUT_FILENO) != 0 && std::getenv("NO_COLOR") == nullptr;
        exit_status = RunPixelView(run, std::cin, std::cout, std::cerr);
    });
    return command;
}

} // namespace qzhost::pixelview
