// How the viewer shows the composition: its working values turned into 8-bit display
// colours. With a colour config, a display's view (with its exposure and gamma) turns them
// into display values. Without one, integer projects show the values as they are and
// float projects show linear values through the sRGB transfer after an exposure in stops;
// with a monitor profile the colours then go from sRGB to the monitor through LittleCMS.
// The Info palette is given the working values, or on request the displayed ones
// (DisplayedPixel: before the values become 8-bit levels and without the monitor profile).
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "qzhost/ColourTransform.h"

namespace qzview {

struct DisplaySettings {
    /// Linear float values (a float project): the sRGB transfer and the exposure apply.
    bool linear = false;
    /// Stops: values are multiplied by 2^exposure before the transfer.
    double exposure = 0;
    /// The colour config's display and view, which then replaces the transfer and the
    /// exposure above (its own exposure and gamma are part of it); null without a config.
    std::shared_ptr<const qzhost::ColourTransform> view;

    bool operator==(const DisplaySettings&) const = default;
};

/// A transform from sRGB to a monitor's ICC profile, 8 bits per channel.
class MonitorDisplay {
public:
    /// Throws std::runtime_error with a one-line message when the profile cannot be used.
    explicit MonitorDisplay(const std::string& icc_path);
    ~MonitorDisplay();
    MonitorDisplay(const MonitorDisplay&) = delete;
    MonitorDisplay& operator=(const MonitorDisplay&) = delete;
    /// Converts `count` pixels 0xAARRGGBB in place; alpha is left alone (any thread).
    void Apply(std::uint32_t* pixels, std::size_t count) const;

private:
    void* transform_ = nullptr;
};

/// One working value as the display shows it without a config, before it becomes a
/// display level: in a float project times 2^exposure and through the sRGB transfer,
/// otherwise the value as it is; neither clamped nor rounded (NaN stays NaN).
double DisplayValue(double value, const DisplaySettings& settings) noexcept;

/// A working pixel (red, green, blue, alpha) as the display shows it, before it becomes
/// display levels: through the view, or each colour through DisplayValue; alpha as it is.
/// The Info palette's displayed values.
std::array<float, 4> DisplayedPixel(std::array<float, 4> pixel, const DisplaySettings& settings);

/// What the settings do to working colours, as a transform that the host's monitor can
/// apply before its profile: the view, the exposure and the sRGB transfer of a float
/// project, or null when the colours are shown as they are.
std::shared_ptr<const qzhost::ColourTransform> DisplayTransform(const DisplaySettings& settings);

/// The display colour of one working value (0-255): its DisplayValue clamped to 0-1 and
/// rounded to the nearest level, 0 for NaN.
std::uint8_t DisplayLevel(float value, const DisplaySettings& settings) noexcept;

/// `pixels` (RGBA floats, `count` pixels) as 0xAARRGGBB display colours, not
/// premultiplied, into `out` (any thread).
void ToDisplay(const float* pixels, std::size_t count, const DisplaySettings& settings,
               const MonitorDisplay* monitor, std::uint32_t* out);

} // namespace qzview
