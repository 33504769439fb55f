// The colour management of a `qzhost inspect` run with an OpenColorIO config: the config,
// the transform that turns the image's values from its input colour space into the
// config's working space (the values that the panel reads), and the display transform
// through which the monitor shows the swatch.
#pragma once

#include <memory>
#include <string>

#include "pixelview/PixelViewRequest.h"
#include "qzhost/ColourConfig.h"
#include "qzhost/ColourTransform.h"

namespace qzhost::pixelview {

struct PixelViewColour {
    std::shared_ptr<const ColourConfig> config;
    /// The display, view, exposure and gamma that the swatch is shown with: the ones asked
    /// for, or the config's defaults for those that it lacks.
    DisplayChoice choice;
    /// The working space to what `choice` shows.
    std::shared_ptr<const ColourTransform> display;
    /// The image's input colour space, and the transform from it to the working space.
    std::string inputSpace;
    std::shared_ptr<const ColourTransform> toWorking;
};

/// Loads the config `file` and sets up the colours of a run of `options` on the image at
/// `image_path`: the display choice (a display or view that the config lacks gives way to
/// its default, and `note` gets one line that says so; otherwise it stays as it is) and the
/// input colour space (--colorspace, else what the config's file rules give the path).
/// Throws BadRequest when the config cannot be loaded or has no such colour space.
PixelViewColour SetUpColour(const std::string& file, const PixelViewOptions& options,
                            const std::string& image_path, std::string& note);

} // namespace qzhost::pixelview
