#include "pixelview/PixelViewColour.h"

#include <stdexcept>
#include <vector>

#include "pixelview/PixelViewError.h"

namespace qzhost::pixelview {

namespace {

/// The names of `names`, each quoted, comma-separated.
std::string QuotedNames(const std::vector<std::string>& names) {
    std::string joined;
    for (const std::string& name : names) {
        joined += (joined.empty() ? "'" : ", '") + name + "'";
    }
    return joined;
}

} // namespace

PixelViewColour SetUpColour(const std::string& file, const PixelViewOptions& options,
                            const std::string& image_path, std::string& note) {
    PixelViewColour colour;
    try {
        colour.config = ColourConfig::Load(file);
    } catch (const std::runtime_error& error) {
        throw BadRequest(error.what());
    }
    const ColourConfig& config = *colour.config;

    DisplayChoice asked;
    asked.display = options.display.value_or("");
    asked.view = options.view.value_or("");
    asked.exposure = options.exposure.value_or(0.0);
    asked.gamma = options.gamma.value_or(1.0);
    colour.choice = config.Resolve(asked, &note);

    colour.inputSpace = options.colorspace ? *options.colorspace : config.ColourSpaceOf(image_path);
    if (!config.HasColourSpace(colour.inputSpace)) {
        // The file rules name colour spaces of the config's own; only a name given on the
        // command line can be unknown.
        throw BadRequest("--colorspace: the OpenColorIO config " + config.File().string() +
                         " has no colour space '" + colour.inputSpace +
                         "'; its colour spaces: " + QuotedNames(config.ColourSpaces()));
    }
    try {
        colour.toWorking = config.ToWorking(colour.inputSpace);
        colour.display = config.ToDisplay(colour.choice);
    } catch (const std::runtime_error& error) {
        // The config names a transform that the library cannot make (a missing file of
        // a view or a colour space): the config cannot be used as it is.
        throw BadRequest(error.what());
    }
    return colour;
}

} // namespace qzhost::pixelview
