// The host's colour management on OpenColorIO: configs, their displays, views and colour
// spaces, and the processors that turn pixels from a file's colour space into the working
// space and from the working space into what a display shows.
#include "qzhost/ColourConfig.h"

#include <algorithm>
#include <cmath>
#include <mutex>
#include <stdexcept>
#include <system_error>

#include <OpenColorIO/OpenColorIO.h>

namespace OCIO = OCIO_NAMESPACE;

namespace qzhost {

ColourTransform::~ColourTransform() = default;

namespace {

/// The first line of a library message, without trailing blanks: the host's errors are
/// one line.
std::string FirstLine(const std::string& text) {
    std::string line = text.substr(0, text.find('\n'));
    while (!line.empty() && std::isspace(static_cast<unsigned char>(line.back())) != 0) {
        line.pop_back();
    }
    return line;
}

/// Library messages go to standard error as one line each, warnings and errors only.
void QuietLibraryLog() {
    static std::once_flag once;
    std::call_once(once, [] { OCIO::SetLoggingLevel(OCIO::LOGGING_LEVEL_WARNING); });
}

/// A processor that the library made for the CPU, 32-bit floats in and out.
class CpuTransform final : public ColourTransform {
public:
    explicit CpuTransform(OCIO::ConstCPUProcessorRcPtr cpu) : cpu_(std::move(cpu)) {}

    void Apply(float* rgba, std::size_t count) const noexcept override {
        if (count == 0 || cpu_->isNoOp()) {
            return;
        }
        try {
            OCIO::PackedImageDesc pixels(rgba, static_cast<long>(count), 1, 4);
            cpu_->apply(pixels);
        } catch (const std::exception&) {
            // The library refused the buffer (it never does for packed RGBA floats): the
            // colours are unknown rather than wrong.
            for (std::size_t i = 0; i < count; ++i) {
                rgba[i * 4] = rgba[i * 4 + 1] = rgba[i * 4 + 2] = std::nanf("");
            }
        }
    }

    bool Identity() const noexcept override { return cpu_->isNoOp(); }

private:
    OCIO::ConstCPUProcessorRcPtr cpu_;
};

std::shared_ptr<const ColourTransform> CpuOf(const OCIO::ConstProcessorRcPtr& processor) {
    return std::make_shared<const CpuTransform>(processor->getDefaultCPUProcessor());
}

} // namespace

struct ColourConfig::State {
    std::filesystem::path file;
    OCIO::ConstConfigRcPtr config;
};

ColourConfig::ColourConfig(std::unique_ptr<State> state) : state_(std::move(state)) {}

ColourConfig::~ColourConfig() = default;

std::shared_ptr<const ColourConfig> ColourConfig::Load(const std::filesystem::path& file) {
    QuietLibraryLog();
    const auto fail = [&](const std::string& problem) {
        return std::runtime_error("cannot use the OpenColorIO config " + file.string() + ": " +
                                  problem);
    };
    std::error_code ec;
    if (!std::filesystem::is_regular_file(file, ec)) {
        throw fail(std::filesystem::exists(file, ec) ? "not a file" : "no such file");
    }
    auto state = std::make_unique<State>();
    state->file = file;
    try {
        state->config = OCIO::Config::CreateFromFile(file.c_str());
        state->config->validate();
    } catch (const std::exception& error) {
        throw fail(FirstLine(error.what()));
    }
    if (state->config->getColorSpace(OCIO::ROLE_SCENE_LINEAR) == nullptr) {
        throw fail("it has no scene_linear role (the working space)");
    }
    if (state->config->getNumDisplays() == 0) {
        throw fail("it has no display");
    }
    return std::shared_ptr<const ColourConfig>(new ColourConfig(std::move(state)));
}

const std::filesystem::path& ColourConfig::File() const noexcept {
    return state_->file;
}

std::vector<std::string> ColourConfig::Displays() const {
    std::vector<std::string> displays;
    for (int i = 0; i < state_->config->getNumDisplays(); ++i) {
        displays.emplace_back(state_->config->getDisplay(i));
    }
    return displays;
}

std::string ColourConfig::DefaultDisplay() const {
    return state_->config->getDefaultDisplay();
}

std::vector<std::string> ColourConfig::Views(const std::string& display) const {
    std::vector<std::string> views;
    const std::vector<std::string> displays = Displays();
    if (std::find(displays.begin(), displays.end(), display) == displays.end()) {
        return views;
    }
    for (int i = 0; i < state_->config->getNumViews(display.c_str()); ++i) {
        views.emplace_back(state_->config->getView(display.c_str(), i));
    }
    return views;
}

std::string ColourConfig::DefaultView(const std::string& display) const {
    const char* view = state_->config->getDefaultView(display.c_str());
    return view != nullptr ? view : "";
}

std::vector<std::string> ColourConfig::ColourSpaces() const {
    std::vector<std::string> spaces;
    for (int i = 0; i < state_->config->getNumColorSpaces(); ++i) {
        spaces.emplace_back(state_->config->getColorSpaceNameByIndex(i));
    }
    return spaces;
}

bool ColourConfig::HasColourSpace(const std::string& name) const {
    const std::vector<std::string> spaces = ColourSpaces();
    return std::find(spaces.begin(), spaces.end(), name) != spaces.end();
}

std::string ColourConfig::ColourSpaceOf(const std::string& path) const {
    const char* space = state_->config->getColorSpaceFromFilepath(path.c_str());
    // The default rule names a role or a space; either way the space's own name is kept.
    if (space != nullptr) {
        if (const OCIO::ConstColorSpaceRcPtr found = state_->config->getColorSpace(space)) {
            return found->getName();
        }
    }
    return WorkingSpace();
}

std::string ColourConfig::WorkingSpace() const {
    return state_->config->getColorSpace(OCIO::ROLE_SCENE_LINEAR)->getName();
}

DisplayChoice ColourConfig::Resolve(DisplayChoice choice, std::string* note) const {
    std::string said;
    const std::vector<std::string> displays = Displays();
    // No display or view asked for: the config's own, without a word.
    if (choice.display.empty()) {
        choice.display = DefaultDisplay();
    }
    if (choice.view.empty()) {
        choice.view = DefaultView(choice.display);
    }
    if (std::find(displays.begin(), displays.end(), choice.display) == displays.end()) {
        const std::string fallback = DefaultDisplay();
        said = "the config has no display '" + choice.display + "'; showing '" + fallback + "'";
        choice.display = fallback;
    }
    const std::vector<std::string> views = Views(choice.display);
    if (std::find(views.begin(), views.end(), choice.view) == views.end()) {
        const std::string fallback = DefaultView(choice.display);
        if (said.empty()) {
            said = "the display '" + choice.display + "' has no view '" + choice.view +
                   "'; showing '" + fallback + "'";
        } else {
            said += " with its view '" + fallback + "'";
        }
        choice.view = fallback;
    }
    if (!std::isfinite(choice.exposure)) {
        choice.exposure = 0;
    }
    choice.gamma =
        std::isfinite(choice.gamma) ? std::clamp(choice.gamma, kMinimumGamma, kMaximumGamma) : 1.0;
    if (note != nullptr && !said.empty()) {
        *note = said;
    }
    return choice;
}

std::shared_ptr<const ColourTransform> ColourConfig::ToWorking(const std::string& space) const {
    if (!HasColourSpace(space)) {
        throw std::runtime_error("the OpenColorIO config has no colour space '" + space + "'");
    }
    try {
        return CpuOf(state_->config->getProcessor(space.c_str(), OCIO::ROLE_SCENE_LINEAR));
    } catch (const std::exception& error) {
        throw std::runtime_error("cannot turn '" + space +
                                 "' into the working space: " + FirstLine(error.what()));
    }
}

std::shared_ptr<const ColourTransform> ColourConfig::ToDisplay(const DisplayChoice& choice) const {
    const std::vector<std::string> views = Views(choice.display);
    if (std::find(views.begin(), views.end(), choice.view) == views.end()) {
        throw std::runtime_error("the OpenColorIO config has no view '" + choice.view +
                                 "' of a display '" + choice.display + "'");
    }
    try {
        OCIO::GroupTransformRcPtr steps = OCIO::GroupTransform::Create();
        if (choice.exposure != 0) {
            // The exposure scales the working values, before the view.
            const double gain = std::exp2(choice.exposure);
            const double scale[4] = {gain, gain, gain, 1.0};
            double matrix[16];
            double offset[4];
            OCIO::MatrixTransform::Scale(matrix, offset, scale);
            OCIO::MatrixTransformRcPtr exposure = OCIO::MatrixTransform::Create();
            exposure->setMatrix(matrix);
            exposure->setOffset(offset);
            steps->appendTransform(exposure);
        }
        OCIO::DisplayViewTransformRcPtr view = OCIO::DisplayViewTransform::Create();
        view->setSrc(OCIO::ROLE_SCENE_LINEAR);
        view->setDisplay(choice.display.c_str());
        view->setView(choice.view.c_str());
        steps->appendTransform(view);
        if (choice.gamma != 1.0) {
            // The gamma acts on the display's values; negative ones become 0.
            const double power = 1.0 / choice.gamma;
            OCIO::ExponentTransformRcPtr gamma = OCIO::ExponentTransform::Create();
            const double value[4] = {power, power, power, 1.0};
            gamma->setValue(value);
            steps->appendTransform(gamma);
        }
        return CpuOf(state_->config->getProcessor(steps));
    } catch (const std::exception& error) {
        throw std::runtime_error("cannot show '" + choice.display + "' / '" + choice.view +
                                 "': " + FirstLine(error.what()));
    }
}

} // namespace qzhost
