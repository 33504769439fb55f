// The request of `qzhost inspect` as its command line gives it: the options, and the
// checks of everything that the command line can get wrong, made before the host starts.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "pixelview/DisplayModeChoice.h"
#include "pixelview/PixelViewPoint.h"

namespace qzhost::pixelview {

struct PixelViewOptions {
    /// The image; the bundled sample chart when empty.
    std::string image;
    /// The points, each "X,Y"; "-" reads points from standard input, one per line, each
    /// shown as soon as its line arrives.
    std::vector<std::string> at;
    /// "X,Y": the origin of X', Y'; none when empty.
    std::string origin;
    /// The notation to choose through the panel's flyout menu; the stored one when empty.
    std::string mode;
    /// The preference file; the host's own when empty.
    std::string prefs;
    /// The host's locale (ICU locale id).
    std::string locale = "en_US";
    /// The ICC profile of the monitor that the swatch is shown on; none when empty.
    std::string monitor;
    /// The UI scale (the size of the drawn panel).
    double scale = 1.0;
    /// Where to draw the panel as PNG; nothing drawn when empty.
    std::string png;
    /// The panel's snapshot as JSON, one line per point, instead of text; with the image
    /// ("image"), the point ("at"), the pixel delivered ("pixel": alpha, red, green, blue),
    /// the side of a sample above 1 ("sample") and the project depth ("project_depth")
    /// added.
    bool json = false;
    /// Colours in the text (terminal escape sequences).
    bool colour = false;
    /// The channel set to read (a name that the image's channels make: "RGBA",
    /// "diffuse", "Z"...); the image's first set when empty.
    std::string channels;
    /// The plug-in library; the Info palette library of this build when empty.
    std::string plugin;
    /// The side of the square around each point whose mean is shown (AreaSample.h); 1:
    /// the point's own pixel.
    int sample = 1;
};

/// A point of the command line, or the place of "-" among them: the points of standard
/// input, shown as they arrive.
struct PointSource {
    bool fromInput = false;
    Point at;
};

/// The options of a request, checked and read.
struct PixelViewRequest {
    /// The points of the command line in their order; at most one from standard input.
    std::vector<PointSource> sources;
    std::optional<Point> origin;
    /// The notation to choose; null for the stored one.
    const DisplayModeChoice* mode = nullptr;
};

/// Adds the options of `inspect` to `command`; parsing stores them into `options`.
void AddPixelViewOptions(CLI::App& command, PixelViewOptions& options);

/// Reads the points, the origin and the notation of `options` and checks the scale, the
/// sample size, the locale and the files named. Throws BadRequest naming the first problem. Only
/// looks at the files; reads and writes none.
PixelViewRequest CheckPixelViewOptions(const PixelViewOptions& options);

} // namespace qzhost::pixelview
