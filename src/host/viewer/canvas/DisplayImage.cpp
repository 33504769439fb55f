#include "DisplayImage.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <memory>
#include <mutex>
#include <stdexcept>

#include <lcms2.h>

namespace qzview {

MonitorDisplay::MonitorDisplay(const std::string& icc_path) {
    cmsHPROFILE monitor = cmsOpenProfileFromFile(icc_path.c_str(), "r");
    if (monitor == nullptr) {
        throw std::runtime_error("cannot read the monitor profile '" + icc_path + "'");
    }
    if (cmsGetColorSpace(monitor) != cmsSigRgbData) {
        cmsCloseProfile(monitor);
        throw std::runtime_error("the monitor profile '" + icc_path + "' is not an RGB profile");
    }
    cmsHPROFILE srgb = cmsCreate_sRGBProfile();
    transform_ = cmsCreateTransform(srgb, TYPE_BGRA_8, monitor, TYPE_BGRA_8,
                                    INTENT_RELATIVE_COLORIMETRIC, cmsFLAGS_COPY_ALPHA);
    cmsCloseProfile(srgb);
    cmsCloseProfile(monitor);
    if (transform_ == nullptr) {
        throw std::runtime_error("the monitor profile '" + icc_path +
                                 "' cannot be the target of a transform");
    }
}

MonitorDisplay::~MonitorDisplay() {
    cmsDeleteTransform(static_cast<cmsHTRANSFORM>(transform_));
}

void MonitorDisplay::Apply(std::uint32_t* pixels, std::size_t count) const {
    // 0xAARRGGBB in little-endian memory is B, G, R, A.
    cmsDoTransform(static_cast<cmsHTRANSFORM>(transform_), pixels, pixels,
                   static_cast<cmsUInt32Number>(count));
}

double DisplayValue(double value, const DisplaySettings& settings) noexcept {
    double v = value;
    if (settings.linear) {
        v *= std::exp2(settings.exposure);
        v = v <= 0.0031308 ? 12.92 * v : 1.055 * std::pow(v, 1.0 / 2.4) - 0.055;
    }
    return v;
}

namespace {

/// Each colour of `count` pixels (red, green, blue, alpha) through DisplayValue; alpha as
/// it is.
void Transfer(float* rgba, std::size_t count, const DisplaySettings& settings) noexcept {
    for (std::size_t i = 0; i < count * 4; i += 4) {
        for (std::size_t c = 0; c < 3; ++c) {
            rgba[i + c] = static_cast<float>(DisplayValue(rgba[i + c], settings));
        }
    }
}

/// The exposure and the sRGB transfer of a float project without a config.
class TransferTransform final : public qzhost::ColourTransform {
public:
    explicit TransferTransform(const DisplaySettings& settings) : settings_(settings) {}

    void Apply(float* rgba, std::size_t count) const noexcept override {
        Transfer(rgba, count, settings_);
    }

private:
    DisplaySettings settings_;
};

} // namespace

std::array<float, 4> DisplayedPixel(std::array<float, 4> pixel, const DisplaySettings& settings) {
    if (settings.view) {
        settings.view->Apply(pixel.data(), 1);
    } else {
        Transfer(pixel.data(), 1, settings);
    }
    return pixel;
}

std::shared_ptr<const qzhost::ColourTransform> DisplayTransform(const DisplaySettings& settings) {
    if (settings.view) {
        return settings.view;
    }
    if (settings.linear) {
        return std::make_shared<const TransferTransform>(settings);
    }
    return nullptr;
}

std::uint8_t DisplayLevel(float value, const DisplaySettings& settings) noexcept {
    if (std::isnan(value)) {
        return 0;
    }
    const double v = std::clamp(DisplayValue(value, settings), 0.0, 1.0);
    return static_cast<std::uint8_t>(std::lround(v * 255.0));
}

namespace {

/// DisplayLevel without a power function or a rounding per value: the smallest value that
/// reaches each display level, found once for the settings, and a table from a float's
/// sign, exponent and top mantissa bits to the level at the start of its range, from which
/// the thresholds step up. DisplayLevel never falls as the value rises, so the level found
/// is DisplayLevel's own.
class DisplayLevels {
public:
    explicit DisplayLevels(const DisplaySettings& settings) : settings_(settings) {
        thresholds_[0] = 0.0f;
        for (int level = 1; level < 256; ++level) {
            // The first bit pattern of a non-negative float whose level reaches `level`.
            std::uint32_t low = 0;
            std::uint32_t high = 0x7F800000u; // infinity, which shows 255
            while (low < high) {
                const std::uint32_t mid = low + (high - low) / 2;
                if (DisplayLevel(std::bit_cast<float>(mid), settings) >= level) {
                    high = mid;
                } else {
                    low = mid + 1;
                }
            }
            thresholds_[level] = std::bit_cast<float>(low);
        }
        for (std::uint32_t bucket = 0; bucket < buckets_.size(); ++bucket) {
            const float start = std::bit_cast<float>(bucket << 16);
            buckets_[bucket] =
                static_cast<std::uint8_t>(std::isnan(start) ? 0 : DisplayLevel(start, settings));
        }
    }

    bool For(const DisplaySettings& settings) const noexcept {
        return settings.linear == settings_.linear && settings.exposure == settings_.exposure;
    }

    std::uint8_t Level(float value) const noexcept {
        if (!(value > 0.0f)) {
            return 0; // negative, zero and NaN
        }
        int level = buckets_[std::bit_cast<std::uint32_t>(value) >> 16];
        while (level < 255 && value >= thresholds_[static_cast<std::size_t>(level) + 1]) {
            ++level;
        }
        return static_cast<std::uint8_t>(level);
    }

private:
    DisplaySettings settings_;
    std::array<float, 256> thresholds_{};
    std::array<std::uint8_t, 0x8000> buckets_{};
};

/// The levels of the last settings shown, shared by every thread that turns values into
/// display colours (the display images' and the exact view's threads come and go) and made
/// again only when the settings change.
std::shared_ptr<const DisplayLevels> LevelsFor(const DisplaySettings& settings) {
    static std::mutex mutex;
    static std::shared_ptr<const DisplayLevels> last;
    const std::lock_guard<std::mutex> lock(mutex);
    if (!last || !last->For(settings)) {
        last = std::make_shared<const DisplayLevels>(settings);
    }
    return last;
}

} // namespace

namespace {

/// Display colours of pixels whose red, green and blue go to levels through `levels` and
/// whose alpha, not transferred, is `alphas[4 * i]`: clamped, and rounded half away from
/// zero.
void ToLevels(const float* colours, const float* alphas, std::size_t count,
              const DisplayLevels& levels, std::uint32_t* out) {
    for (std::size_t i = 0; i < count; ++i) {
        const float* p = colours + 4 * i;
        const float alpha = alphas[4 * i];
        const float clamped = std::isnan(alpha) ? 0.0f : std::clamp(alpha, 0.0f, 1.0f);
        const float scaled = clamped * 255.0f;
        const auto whole = static_cast<std::uint32_t>(scaled);
        const std::uint32_t a = whole + (scaled - static_cast<float>(whole) >= 0.5f ? 1 : 0);
        out[i] = a << 24 | std::uint32_t{levels.Level(p[0])} << 16 |
                 std::uint32_t{levels.Level(p[1])} << 8 | levels.Level(p[2]);
    }
}

/// Pixels that go through a view at a time: a buffer that stays in the cache.
constexpr std::size_t kViewBlock = 1024;

} // namespace

void ToDisplay(const float* pixels, std::size_t count, const DisplaySettings& settings,
               const MonitorDisplay* monitor, std::uint32_t* out) {
    if (settings.view) {
        // The view gives display values, which become levels as they are.
        const std::shared_ptr<const DisplayLevels> levels = LevelsFor(DisplaySettings{});
        std::array<float, kViewBlock * 4> shown;
        for (std::size_t start = 0; start < count; start += kViewBlock) {
            const std::size_t n = std::min(kViewBlock, count - start);
            const float* in = pixels + 4 * start;
            std::copy(in, in + 4 * n, shown.data());
            settings.view->Apply(shown.data(), n);
            ToLevels(shown.data(), in + 3, n, *levels, out + start);
        }
    } else {
        ToLevels(pixels, pixels + 3, count, *LevelsFor(settings), out);
    }
    if (monitor != nullptr) {
        monitor->Apply(out, count);
    }
}

} // namespace qzview
