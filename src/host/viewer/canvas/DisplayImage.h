// How the viewer shows the composition: its working values turned into 8-bit display
// colours. Integer projects show the values as they are; float projects show linear
// values through the sRGB transfer after an exposure in stops. With a monitor profile the
// colours then go from sRGB to the monitor through LittleCMS. The Info palette is given
// the working values, or on request the displayed ones (DisplayValue: the exposure and
// the transfer, before the values become 8-bit levels and without the monitor profile).
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qzview {

struct DisplaySettings {
    /// Linear float values (a float project): the sRGB transfer and the exposure apply.
    bool linear = false;
    /// Stops: values are multiplied by 2^exposure before the transfer.
    double exposure = 0;
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

/// One working value as the display shows it, before it becomes a display level: in a
/// float project times 2^exposure and through the sRGB transfer, otherwise the value as it
/// is; neither clamped nor rounded (NaN stays NaN). The Info palette's displayed values.
double DisplayValue(double value, const DisplaySettings& settings) noexcept;

/// The display colour of one working value (0-255): its DisplayValue clamped to 0-1 and
/// rounded to the nearest level, 0 for NaN.
std::uint8_t DisplayLevel(float value, const DisplaySettings& settings) noexcept;

/// `pixels` (RGBA floats, `count` pixels) as 0xAARRGGBB display colours, not
/// premultiplied, into `out` (any thread).
void ToDisplay(const float* pixels, std::size_t count, const DisplaySettings& settings,
               const MonitorDisplay* monitor, std::uint32_t* out);

} // namespace qzview
