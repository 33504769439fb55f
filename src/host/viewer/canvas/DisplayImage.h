// How the viewer shows the composition: its working values turned into 8-bit display
// colours. Integer projects show the values as they are; float projects show linear
// values through the sRGB transfer after an exposure in stops. With a monitor profile the
// colours then go from sRGB to the monitor through LittleCMS. None of this reaches the
// Info palette, which is always given the working values.
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

/// The display colour of one working value (0-255).
std::uint8_t DisplayLevel(float value, const DisplaySettings& settings) noexcept;

/// `pixels` (RGBA floats, `count` pixels) as 0xAARRGGBB display colours, not
/// premultiplied, into `out` (any thread).
void ToDisplay(const float* pixels, std::size_t count, const DisplaySettings& settings,
               const MonitorDisplay* monitor, std::uint32_t* out);

} // namespace qzview
