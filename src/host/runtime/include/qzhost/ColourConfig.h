// The host's colour management: an OpenColorIO config, which names the colour spaces that
// files are in, the displays and their views, and the file rules that give each file its
// colour space. Pixels are read into the config's working space (its scene_linear role)
// and shown through a display and a view.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "qzgp/QZ_Basic.h"
#include "qzhost/ColourTransform.h"

namespace qzhost {

/// How working values are shown: through a display and one of its views, after an
/// exposure in stops (working values times 2^exposure) and before a gamma (display values
/// v become v^(1/gamma)).
struct DisplayChoice {
    std::string display;
    std::string view;
    double exposure = 0;
    double gamma = 1;

    bool operator==(const DisplayChoice&) const = default;
};

/// The lowest and highest gamma that a display choice takes.
inline constexpr double kMinimumGamma = 0.1;
inline constexpr double kMaximumGamma = 10.0;

class QZ_HOST_API ColourConfig {
public:
    /// [any-thread] Loads the config at `file`. Throws std::runtime_error with a one-line
    /// message naming the file when it cannot be read, is not a valid config or has no
    /// scene_linear role.
    static std::shared_ptr<const ColourConfig> Load(const std::filesystem::path& file);
    /// [any-thread] The file that the OCIO environment variable names; none when it is
    /// unset or empty. Inline: option parsers that do not link the runtime ask it too.
    static std::optional<std::filesystem::path> FromEnvironment() {
        const char* named = std::getenv("OCIO");
        if (named == nullptr || *named == '\0') {
            return std::nullopt;
        }
        return std::filesystem::path(named);
    }

    ~ColourConfig();
    ColourConfig(const ColourConfig&) = delete;
    ColourConfig& operator=(const ColourConfig&) = delete;

    /// The config's file, as it was given.
    const std::filesystem::path& File() const noexcept;

    /// The displays, in the config's order, and the one it starts with.
    std::vector<std::string> Displays() const;
    std::string DefaultDisplay() const;
    /// The views of `display` (none for a display the config does not have) and its
    /// default one.
    std::vector<std::string> Views(const std::string& display) const;
    std::string DefaultView(const std::string& display) const;

    /// The colour spaces that a file's values can be in, in the config's order.
    std::vector<std::string> ColourSpaces() const;
    bool HasColourSpace(const std::string& name) const;
    /// The colour space that the file rules give the file at `path`.
    std::string ColourSpaceOf(const std::string& path) const;
    /// The working space: the colour space of the scene_linear role.
    std::string WorkingSpace() const;

    /// `choice` with a display and view that the config has. A display the config does not
    /// have becomes its default display; a view that the display does not have becomes the
    /// display's default view. When something was replaced, `note` (if given) gets one
    /// line that says what; otherwise it is left alone. Exposure and gamma are kept, gamma
    /// brought into its range.
    DisplayChoice Resolve(DisplayChoice choice, std::string* note = nullptr) const;

    /// [any-thread] From the colour space `space` to the working space. Throws
    /// std::runtime_error for a colour space that the config does not have.
    std::shared_ptr<const ColourTransform> ToWorking(const std::string& space) const;
    /// [any-thread] From the working space to what `choice` shows. Throws
    /// std::runtime_error for a display or view that the config does not have.
    std::shared_ptr<const ColourTransform> ToDisplay(const DisplayChoice& choice) const;

private:
    struct State;
    explicit ColourConfig(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;
};

} // namespace qzhost
