// `qzhost inspect [IMAGE] --at X,Y ...`: the Info panel for one pixel of a real image, as
// the panel shows it while the pointer rests on that pixel in the host's viewer.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "pixelview/PixelViewRequest.h"

namespace qzhost::pixelview {

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
