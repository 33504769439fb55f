#include "DisplayImage.h"

#include <algorithm>
#include <cmath>
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

std::uint8_t DisplayLevel(float value, const DisplaySettings& settings) noexcept {
    double v = value;
    if (std::isnan(v)) {
        return 0;
    }
    if (settings.linear) {
        v *= std::exp2(settings.exposure);
        v = v <= 0.0031308 ? 12.92 * v : 1.055 * std::pow(v, 1.0 / 2.4) - 0.055;
    }
    v = std::clamp(v, 0.0, 1.0);
    return static_cast<std::uint8_t>(std::lround(v * 255.0));
}

std::vector<std::uint32_t> ToDisplay(const std::vector<float>& pixels, std::size_t count,
                                     const DisplaySettings& settings,
                                     const MonitorDisplay* monitor) {
    std::vector<std::uint32_t> out(count);
    for (std::size_t i = 0; i < count; ++i) {
        const float* p = pixels.data() + 4 * i;
        const float alpha = std::isnan(p[3]) ? 0.0f : std::clamp(p[3], 0.0f, 1.0f);
        const auto a = static_cast<std::uint32_t>(std::lround(alpha * 255.0f));
        out[i] = a << 24 | std::uint32_t{DisplayLevel(p[0], settings)} << 16 |
                 std::uint32_t{DisplayLevel(p[1], settings)} << 8 | DisplayLevel(p[2], settings);
    }
    if (monitor != nullptr) {
        monitor->Apply(out.data(), out.size());
    }
    return out;
}

} // namespace qzview
