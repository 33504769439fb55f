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

#include "pixelview/AreaSample.h"
#include "pixelview/ChannelSets.h"
#include "pixelview/DisplayModeChoice.h"
#include "pixelview/PanelState.h"
#include "pixelview/PanelText.h"
#include "pixelview/PixelViewColour.h"
#include "pixelview/PixelViewError.h"
#include "pixelview/PixelViewHost.h"
#include "pixelview/PixelViewImage.h"
#include "pixelview/PixelViewPoint.h"
#include "pixelview/SampleImage.h"
#include "pixelview/SnapshotJson.h"
#include "pixelview/TextBuffer.h"
#include "qzhost/PluginLoader.h"
#include "qzhost/ProgramName.h"

namespace qzhost::pixelview {

namespace {

namespace fs = std::filesystem;

/// A point of the run: where the pointer rests, and the pixel under it.
struct Shown {
    Point at;
    PixelARGB pixel{};
};

std::string NumberText(double value) {
    char text[32];
    const auto result = std::to_chars(text, text + sizeof text, value);
    return std::string(text, result.ptr);
}

std::string PointText(const Point& point) {
    return NumberText(point.x) + "," + NumberText(point.y);
}

/// "first to last" of `count` columns or rows from `first` (in wide integers: a file may
/// put its windows anywhere in the integer range).
std::string Span(long long first, long long count) {
    return std::to_string(first) + " to " + std::to_string(first + count - 1);
}

/// The pixel under `point`, a point of the image's frame (its display window; 0,0 its
/// top-left pixel): transparent black where the frame has no pixel; or, with `sample` above
/// 1, the mean of the square of that side around it. Throws BadRequest for a point outside
/// both the frame and the pixels.
Shown PixelAt(const PixelViewImage& image, const Point& point, int sample) {
    const double column = std::floor(point.x);
    const double row = std::floor(point.y);
    // Far beyond any image; keeps the sums below in range.
    constexpr double kFar = 1 << 30;
    const bool representable = std::abs(column) <= kFar && std::abs(row) <= kFar;
    const int x = representable ? static_cast<int>(column) : 0;
    const int y = representable ? static_cast<int>(row) : 0;
    const bool in_frame =
        representable && x >= 0 && y >= 0 && x < image.DisplayWidth() && y < image.DisplayHeight();
    const long long wide_x = static_cast<long long>(x) + image.DisplayX();
    const long long wide_y = static_cast<long long>(y) + image.DisplayY();
    const bool fits =
        wide_x >= INT_MIN && wide_x <= INT_MAX && wide_y >= INT_MIN && wide_y <= INT_MAX;
    const int file_x = fits ? static_cast<int>(wide_x) : 0;
    const int file_y = fits ? static_cast<int>(wide_y) : 0;
    const bool in_pixels = representable && fits && image.Contains(file_x, file_y);
    if (!in_frame && !in_pixels) {
        std::string where =
            "columns " + Span(0, image.DisplayWidth()) + ", rows " + Span(0, image.DisplayHeight());
        if (image.Framed()) {
            where += "; its pixels: columns " +
                     Span(static_cast<long long>(image.X0()) - image.DisplayX(), image.Width()) +
                     ", rows " +
                     Span(static_cast<long long>(image.Y0()) - image.DisplayY(), image.Height());
        }
        throw BadRequest("point " + PointText(point) + " lies outside the image (" + where + ")");
    }
    if (sample != 1) {
        return {point, MeanAround(image, file_x, file_y, sample)};
    }
    if (!in_pixels) {
        return {point, PixelARGB{0.0f, 0.0f, 0.0f, 0.0f}};
    }
    return {point, image.PixelAt(file_x, file_y)};
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

/// The image's size for its text line: the frame, and the pixels' rectangle when it is
/// another ("100 x 80, pixels 64 x 48 at 10,20").
std::string SizeText(const PixelViewImage& image) {
    std::string size =
        std::to_string(image.DisplayWidth()) + " x " + std::to_string(image.DisplayHeight());
    const long long x = static_cast<long long>(image.X0()) - image.DisplayX();
    const long long y = static_cast<long long>(image.Y0()) - image.DisplayY();
    if (image.Framed()) {
        size += ", pixels " + std::to_string(image.Width()) + " x " +
                std::to_string(image.Height()) + " at " + std::to_string(x) + "," +
                std::to_string(y);
    }
    return size;
}

/// What the host writes into the panel's text lines about the image in the viewer: its
/// name; its format, size, channels (the channel set read, when they make several) and
/// channel type; the project depth, and with a sample its square after the depth (short:
/// the panel is narrow).
std::vector<std::string> ImageLines(const PixelViewImage& image, int sample) {
    const std::string channels = image.Sets().size() == 1 ? image.ChannelNames() : image.Set().name;
    return {
        fs::path(image.Path()).filename().string(),
        image.FormatName() + ", " + SizeText(image) + ", " + channels + ", " + image.ChannelType(),
        sample == 1 ? std::string("Project: ") + DepthText(image.ProjectDepth())
                    : DepthText(image.ProjectDepth()) + (", " + SampleSizeName(sample)) + " mean",
    };
}

/// The delivered pixel (alpha, red, green, blue) for the JSON output: numbers, or "nan",
/// "inf", "-inf" for values that JSON numbers cannot carry.
void AppendPixelJson(const PixelARGB& pixel, TextBuffer& out) {
    out.Append('[');
    for (std::size_t c = 0; c < pixel.size(); ++c) {
        if (c > 0) {
            out.Append(',');
        }
        const float v = pixel[c];
        if (std::isnan(v)) {
            out.Append("\"nan\"");
        } else if (std::isinf(v)) {
            out.Append(v > 0 ? "\"inf\"" : "\"-inf\"");
        } else {
            AppendJsonDouble(static_cast<double>(v), out);
        }
    }
    out.Append(']');
}

/// The host's viewer as the run drives it: the host starts with the first point to show,
/// then each point's pixel is delivered through the Info palette suite, the panel read
/// back and printed at once.
class Viewer {
public:
    /// `display`: the monitor's display transform, none when null.
    Viewer(const PixelViewOptions& options, const PixelViewImage& image,
           const std::optional<Point>& origin, const DisplayModeChoice* mode, bool several,
           std::shared_ptr<const ColourTransform> display)
        : options_(options), image_(image), origin_(origin), mode_(mode), several_(several),
          display_(std::move(display)) {
        TextBuffer path;
        AppendJsonString(image.Path(), path);
        imageJson_ = ",\"image\":" + std::string(path.View()) + ",\"at\":[";
        if (options.sample != 1) {
            depthJson_ = ",\"sample\":" + std::to_string(options.sample);
        }
        depthJson_ += ",\"project_depth\":" + std::to_string(image.ProjectDepth()) + "}\n";
    }

    std::size_t Count() const noexcept { return count_; }

    /// Shows the panel for `shown`, prints it and flushes `out`.
    void Show(const Shown& shown, std::ostream& out) {
        if (!host_) {
            Start();
        }
        host_->Deliver(shown.pixel, shown.at, origin_);
        if (!options_.png.empty()) {
            host_->Snapshot(PngFileFor(options_.png, count_, several_));
        }
        host_->Read(state_);
        text_.Clear();
        if (options_.json) {
            text_.Append('{');
            AppendSnapshotMembers(state_, text_);
            text_.Append(imageJson_);
            AppendJsonDouble(shown.at.x, text_);
            text_.Append(',');
            AppendJsonDouble(shown.at.y, text_);
            text_.Append("],\"pixel\":");
            AppendPixelJson(shown.pixel, text_);
            text_.Append(depthJson_);
        } else {
            AppendPanelText(state_, options_.colour, text_);
            if (several_) {
                // An empty line ends each panel of a run of several, so that a reader of
                // the stream knows where one ends before the next arrives.
                text_.Append('\n');
            }
        }
        out.write(text_.View().data(), static_cast<std::streamsize>(text_.Size()));
        out.flush();
        ++count_;
    }

private:
    void Start() {
        HostSettings settings;
        settings.plugin = options_.plugin.empty() ? DefaultPluginPath() : options_.plugin;
        settings.locale = options_.locale;
        settings.scale = options_.scale;
        settings.projectDepth = image_.ProjectDepth();
        if (!options_.prefs.empty()) {
            settings.prefs = options_.prefs;
        }
        if (!options_.monitor.empty()) {
            settings.monitor = options_.monitor;
        }
        settings.display = display_;
        host_ = std::make_unique<PixelViewHost>(settings);
        if (mode_ != nullptr) {
            host_->ChooseDisplayMode(*mode_);
        }
        const std::vector<std::string> lines = ImageLines(image_, options_.sample);
        host_->ShowTextLines(lines[0], lines[1], lines[2]);
    }

    const PixelViewOptions& options_;
    const PixelViewImage& image_;
    std::optional<Point> origin_;
    const DisplayModeChoice* mode_;
    bool several_;
    std::shared_ptr<const ColourTransform> display_;
    std::unique_ptr<PixelViewHost> host_;
    PanelState state_;
    /// The image's member and the start of the point's, and the sample's side (above 1)
    /// and the project depth that end the object: the same for every point.
    std::string imageJson_;
    std::string depthJson_;
    /// The text of one point, its storage reused.
    TextBuffer text_;
    std::size_t count_ = 0;
};

std::string OneLine(std::string message) {
    std::replace(message.begin(), message.end(), '\n', ' ');
    return message;
}

int Run(const PixelViewOptions& options, std::istream& in, std::ostream& out, std::ostream& err) {
    // Everything that the command line can get wrong is checked before the host starts,
    // so that a bad request shows nothing and writes nothing.
    const PixelViewRequest request = CheckPixelViewOptions(options);
    const std::string path = options.image.empty() ? DefaultSampleImage() : options.image;
    // With a config the panel reads the pixels in its working space, and the monitor shows
    // the swatch through the chosen display's view.
    std::optional<PixelViewColour> colour;
    std::string note;
    if (!request.config.empty()) {
        colour = SetUpColour(request.config, options, path, note);
    }
    PixelViewImage image(path);
    if (colour) {
        image.SetColourTransform(colour->toWorking);
    }
    if (!options.channels.empty()) {
        const int set = FindChannelSet(image.Sets(), options.channels);
        if (set < 0) {
            throw BadRequest("no channel set '" + options.channels + "' in '" + image.Path() +
                             "'; its sets: " + ChannelSetNames(image.Sets()));
        }
        image.ChooseSet(set);
    }
    // The points of the command line lie in the image, and their pixels can be read,
    // before anything is shown.
    std::vector<Shown> given;
    bool from_input = false;
    for (const PointSource& source : request.sources) {
        if (source.fromInput) {
            from_input = true;
        } else {
            given.push_back(PixelAt(image, source.at, options.sample));
        }
    }

    // A display or view that the config lacks gave way to its default: the run goes on,
    // and says so once, as the host's other warnings are said.
    if (!note.empty()) {
        err << ProgramName() << ": warning: " << note << '\n';
    }

    // Points of standard input are shown as their lines arrive; a line that is not a
    // point inside the image ends the run, after the panels before it.
    Viewer viewer(options, image, request.origin, request.mode, given.size() > 1 || from_input,
                  colour ? colour->display : nullptr);
    std::size_t next = 0;
    for (const PointSource& source : request.sources) {
        if (!source.fromInput) {
            viewer.Show(given[next++], out);
            continue;
        }
        PointReader reader(in);
        for (Point point; reader.Next(point);) {
            viewer.Show(PixelAt(image, point, options.sample), out);
        }
    }
    if (viewer.Count() == 0) {
        throw BadRequest("standard input holds no point");
    }
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
        return Run(options, in, out, err);
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
        "unknown format, a point outside the image, a malformed option or line of standard input "
        "(the panels of the lines before it stay printed), an OpenColorIO config that cannot "
        "be used or an unknown colour space; 3: a failure of the host or the plug-in.");
    auto options = std::make_shared<PixelViewOptions>();
    AddPixelViewOptions(*command, *options);
    command->callback([options, &exit_status] {
        PixelViewOptions run = *options;
        run.colour = ::isatty(STDOUT_FILENO) != 0 && std::getenv("NO_COLOR") == nullptr;
        exit_status = RunPixelView(run, std::cin, std::cout, std::cerr);
    });
    return command;
}

} // namespace qzhost::pixelview
