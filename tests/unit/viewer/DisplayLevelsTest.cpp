// Float projects are shown through a table of display levels; every value must show the
// level that the sRGB transfer gives it.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <vector>

#include "DisplayImage.h"

namespace qzviewtest {
namespace {

TEST(DisplayLevelsTest, LinearValuesShowTheLevelOfTheTransferAtEveryExposure) {
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
    for (double exposure : {0.0, -2.5, 3.0}) {
        qzview::DisplaySettings settings;
        settings.linear = true;
        settings.exposure = exposure;
        const std::vector<std::uint32_t> shown =
            qzview::ToDisplay(pixels, values.size(), settings, nullptr);
        for (std::size_t i = 0; i < values.size(); ++i) {
            const std::uint32_t want = qzview::DisplayLevel(values[i], settings);
            ASSERT_EQ(shown[i] & 0xFF, want) << "value " << values[i] << " exposure " << exposure;
            ASSERT_EQ((shown[i] >> 16) & 0xFF, want);
        }
    }
}

} // namespace
} // namespace qzviewtest
