// The composite is shown through a table of display levels; every value must show the
// level that the display's rule gives it: the sRGB transfer after the exposure for a float
// project, the value as it is for an integer one.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <vector>

#include "canvas/DisplayImage.h"

namespace qzviewtest {
namespace {

TEST(DisplayLevelsTest, EveryValueShowsTheLevelOfTheTransferAtEveryExposure) {
    // Non-negative floats spread over every exponent, the two sides of each level's
    // threshold, and negative, infinite and NaN values.
    std::vector<float> values;
    for (std::uint32_t bits = 0; bits < 0x7F800000u; bits += 0x3F1Du) {
        values.push_back(std::bit_cast<float>(bits));
    }
    for (int level = 0; level < 256; ++level) {
        const double linear = std::pow((level / 255.0 + 0.055) / 1.055, 2.4);
        values.push_back(std::nextafter(static_cast<float>(linear), 0.0f));
        values.push_back(static_cast<float>(linear));
        values.push_back(std::nextafter(static_cast<float>(linear), 2.0f));
    }
    values.insert(values.end(), {-1.0f, -0.0f, INFINITY, -INFINITY, NAN});
    std::vector<float> pixels;
    for (float v : values) {
        pixels.insert(pixels.end(), {v, v, v, 1.0f});
    }
    for (const auto& [linear, exposure] : std::vector<std::pair<bool, double>>{
             {true, 0.0}, {true, -2.5}, {true, 3.0}, {false, 0.0}}) {
        qzview::DisplaySettings settings;
        settings.linear = linear;
        settings.exposure = exposure;
        std::vector<std::uint32_t> shown(values.size());
        qzview::ToDisplay(pixels.data(), values.size(), settings, nullptr, shown.data());
        for (std::size_t i = 0; i < values.size(); ++i) {
            const std::uint32_t want = qzview::DisplayLevel(values[i], settings);
            ASSERT_EQ(shown[i] & 0xFF, want) << "value " << values[i] << " exposure " << exposure;
            ASSERT_EQ((shown[i] >> 16) & 0xFF, want);
            ASSERT_EQ(shown[i] >> 24, 255u);
        }
    }
}

TEST(DisplayLevelsTest, AlphaIsClampedAndRoundedHalfAwayFromZero) {
    std::vector<float> pixels;
    std::vector<float> alphas = {-1.0f, NAN, 2.0f, 0.5f / 255.0f, 1.5f / 255.0f, 254.5f / 255.0f};
    for (int i = 0; i <= 5000; ++i) {
        alphas.push_back(static_cast<float>(i) / 5000.0f);
    }
    for (float alpha : alphas) {
        pixels.insert(pixels.end(), {0.5f, 0.5f, 0.5f, alpha});
    }
    std::vector<std::uint32_t> shown(alphas.size());
    qzview::ToDisplay(pixels.data(), alphas.size(), qzview::DisplaySettings{}, nullptr,
                      shown.data());
    for (std::size_t i = 0; i < alphas.size(); ++i) {
        const float clamped = std::isnan(alphas[i]) ? 0.0f : std::clamp(alphas[i], 0.0f, 1.0f);
        ASSERT_EQ(shown[i] >> 24, static_cast<std::uint32_t>(std::lround(clamped * 255.0f)))
            << "alpha " << alphas[i];
    }
}

} // namespace
} // namespace qzviewtest
