// Helpers of the toolkit tests: a fixture that resets the host and the toolkit settings,
// and pixel checks on drawn images.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "kitcore/utility/UTF16String.h"
#include "kitui/inkwell/ColorRGBA.h"
#include "kitui/ui/Geometry.h"
#include "qzhost/HostControls.h"
#include "qzhost/RenderedImage.h"
#include "qzhost/ToolkitSettings.h"

namespace qztest {

class ToolkitFixture : public ::testing::Test {
protected:
    void SetUp() override {
        qzhost::HostControls::Get().Reset();
        qzhost::HostControls::Get().SetUIScale(1.0);
        qzhost::ToolkitSettings::Get().Reset();
    }
    void TearDown() override {
        qzhost::ToolkitSettings::Get().Reset();
        qzhost::HostControls::Get().SetUIScale(1.0);
        qzhost::HostControls::Get().Reset();
    }
};

inline kitcore::utility::UTF16String U16(const char16_t* text) {
    return kitcore::utility::UTF16String(text);
}

/// The 8-bit form of a theme colour.
inline qzhost::Rgba8 ToRgba8(const kitui::inkwell::ColorRGBA& c) {
    auto channel = [](float v) { return static_cast<std::uint8_t>(v * 255.0f + 0.5f); };
    return {channel(c.r), channel(c.g), channel(c.b), channel(c.a)};
}

/// Whether two pixels differ by at most `tolerance` in every channel.
inline bool Near(const qzhost::Rgba8& a, const qzhost::Rgba8& b, int tolerance = 2) {
    return std::abs(a.r - b.r) <= tolerance && std::abs(a.g - b.g) <= tolerance &&
           std::abs(a.b - b.b) <= tolerance && std::abs(a.a - b.a) <= tolerance;
}

inline std::string Describe(const qzhost::Rgba8& p) {
    return "(" + std::to_string(p.r) + ", " + std::to_string(p.g) + ", " + std::to_string(p.b) +
           ", " + std::to_string(p.a) + ")";
}

/// How many pixels inside (or, with `inside` false, outside) the pixel rectangle `r` are
/// not fully transparent.
inline int CountDrawn(const qzhost::RenderedImage& image, const kitui::ui::RectT<int>& r,
                      bool inside = true) {
    int count = 0;
    for (int y = 0; y < image.Height(); ++y) {
        for (int x = 0; x < image.Width(); ++x) {
            const bool in = x >= r.x && x < r.x + r.width && y >= r.y && y < r.y + r.height;
            if (in == inside && image.At(x, y).a != 0) {
                ++count;
            }
        }
    }
    return count;
}

/// The most opaque pixel inside `r` (the first one found of the highest alpha).
inline qzhost::Rgba8 MostOpaque(const qzhost::RenderedImage& image,
                                const kitui::ui::RectT<int>& r) {
    qzhost::Rgba8 best{};
    for (int y = r.y; y < r.y + r.height; ++y) {
        for (int x = r.x; x < r.x + r.width; ++x) {
            const qzhost::Rgba8 p = image.At(x, y);
            if (p.a > best.a) {
                best = p;
            }
        }
    }
    return best;
}

} // namespace qztest
