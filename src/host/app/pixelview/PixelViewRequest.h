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
    /// The ICC profile of the monitor that the swatch is shown on; none when empty. Not
    /// with an OpenColorIO config, whose display is the monitor.
    std::string monitor;
    /// The OpenColorIO config; the file that the OCIO environment variable names when
    /// empty, none when that is unset too. Without a config the pixels are the file's
    /// values and the swatch shows them as they are (or through `monitor`), and the
    /// options below are refused.
    std::string ocio;
    /// The display and its view that the swatch shows the working values through; the
    /// config's default display and that display's default view when not given.
    std::optional<std::string> display;
    std::optional<std::string> view;
    /// The exposure in stops (working values times 2^exposure before the view) and the
    /// gamma (the view's values v shown as v^(1/gamma)) of the swatch; 0 and 1 when not
    /// given.
    std::optional<double> exposure;
    std::optional<double> gamma;
    /// The image's input colour space; what the config's file rules give its path when
    /// not given.
    std::optional<std::string> colorspace;
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
    /// The OpenColorIO config file (from --ocio or the OCIO environment variable); empty
    /// for none.
    std::string config;
};

/// Adds the options of `inspect` to `command`; parsing stores them into `options`.
void AddPixelViewOptions(CLI::App& command, PixelViewOptions& options);

/// Reads the points, the origin and the notation of `options`, finds the OpenColorIO config
/// (--ocio, else the OCIO environment variable), and checks the scale, the sample size, the
/// locale, the colour options and the files named. Throws BadRequest naming the first
/// problem. Only looks at the files; reads and writes none (the config is not loaded).
PixelViewRequest CheckPixelViewOptions(const PixelViewOptions& options);

} // namespace qzhost::pixelview
