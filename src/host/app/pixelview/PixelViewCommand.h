// `qzhost inspect [IMAGE] --at X,Y ...`: the Info panel for one pixel of a real image, as
// the panel shows it while the pointer rests on that pixel in the host's viewer.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

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
    /// ("image"), the point ("at"), the pixel delivered ("pixel": alpha, red, green, blue)
    /// and the project depth ("project_depth") added.
    bool json = false;
    /// Colours in the text (terminal escape sequences).
    bool colour = false;
    /// The plug-in library; the Info palette library of this build when empty.
    std::string plugin;
};

/// Shows the panel for every point of `options` on `out`, reading "-" points from `in`
/// line by line and printing each panel (flushed) before the next line is read. Returns
/// 0; on a bad request writes one line to `err` and returns 2: before anything is shown
/// or written when the command line or the image is at fault, after the panels of the
/// lines before it when a line of `in` is; on a failure of the host or the plug-in
/// writes one line and returns 3.
int RunPixelView(const PixelViewOptions& options, std::istream& in, std::ostream& out,
                 std::ostream& err);

/// The PNG file of the point at `index` (from 0): `png` itself when the run shows one
/// point, otherwise (`several`) the name with "-N" (N = index + 1) before its extension.
std::string PngFileFor(const std::string& png, std::size_t index, bool several);

/// Adds the `inspect` subcommand to `app`. When it runs, its exit status is stored in
/// `exit_status`.
CLI::App* AddPixelViewCommand(CLI::App& app, int& exit_status);

} // namespace qzhost::pixelview
