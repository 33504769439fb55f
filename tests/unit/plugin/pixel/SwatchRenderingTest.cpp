// The swatch as the panel draws it after a pixel readout: the fill colour inside, the
// theme's frame colour at the border, in every shape and fill path; and a monitor
// profile, which changes what the swatch shows but not the numbers.
#include <gtest/gtest.h>

#include <filesystem>
#include <unistd.h>

#include <lcms2.h>

#include "InfoPal/controls/UI_SwatchRect.h"
#include "PixelTestSupport.h"
#include "kitui/ui/Theme.h"
#include "qzhost/MonitorProfile.h"
#include "qzhost/PanelRenderer.h"
#include "qzhost/ToolkitSettings.h"

namespace pixel_test {
namespace {

using qzhost::Rgba8;

Rgba8 ToRgba8(const kitui::inkwell::ColorRGBA& c) {
    auto channel = [](float v) { return static_cast<std::uint8_t>(v * 255.0f + 0.5f); };
    return {channel(c.r), channel(c.g), channel(c.b), channel(c.a)};
}

::testing::AssertionResult Near(const Rgba8& actual, const Rgba8& expected) {
    auto off = [](int a, int b) { return a > b + 1 || b > a + 1; };
    if (off(actual.r, expected.r) || off(actual.g, expected.g) || off(actual.b, expected.b) ||
        off(actual.a, expected.a)) {
        return ::testing::AssertionFailure()
               << "pixel " << int(actual.r) << "," << int(actual.g) << "," << int(actual.b) << ","
               << int(actual.a) << " expected " << int(expected.r) << "," << int(expected.g) << ","
               << int(expected.b) << "," << int(expected.a);
    }
    return ::testing::AssertionSuccess();
}

// 1, 0.6, 0.2 in 8 bits.
constexpr Rgba8 kOrange{255, 153, 51, 255};

class SwatchRendering : public PanelTest {
protected:
    void SetUp() override {
        PanelTest::SetUp();
        qzhost::ToolkitSettings::Get().Reset();
        Open();
    }
    void TearDown() override {
        qzhost::ToolkitSettings::Get().Reset();
        qzhost::SetMonitorProfile(std::nullopt);
        PanelTest::TearDown();
    }

    kitui::controls::UI_SwatchRect& Swatch() const {
        return Panel()->GetControl<kitui::controls::UI_SwatchRect>(19);
    }
    struct Box {
        double x, y, width, height;
    };
    // The swatch's bounds in the panel's coordinates.
    Box SwatchInPanel() const {
        const kitui::ui::RectT<float> bounds = Swatch().UI_GetBounds();
        Box box{bounds.x, bounds.y, bounds.width, bounds.height};
        for (const kitui::ui::UI_Node* node = Swatch().UI_GetParent(); node != Panel();
             node = node->UI_GetParent()) {
            box.x += node->UI_GetBounds().x;
            box.y += node->UI_GetBounds().y;
        }
        return box;
    }
    void SetSwatchSize(float width, float height) {
        kitui::ui::RectT<float> bounds = Swatch().UI_GetBounds();
        bounds.width = width;
        bounds.height = height;
        Swatch().UI_SetBounds(bounds);
    }
    qzhost::RenderedImage Render(double scale = 1.0) { return qzhost::RenderNode(*Panel(), scale); }
    // The drawn pixel at swatch-local unit (x, y), at `scale`.
    static Rgba8 At(const qzhost::RenderedImage& image, const Box& swatch, double x, double y,
                    double scale = 1.0) {
        return image.At(static_cast<int>((swatch.x + x) * scale),
                        static_cast<int>((swatch.y + y) * scale));
    }
    static Rgba8 Frame() { return ToRgba8(kitui::ui::GetColor(20)); }
};

TEST_F(SwatchRendering, ASquareSwatchIsFilledWithThePixelAndFramed) {
    ASSERT_EQ(Deliver(Pixel(0.25f, 1.0f, 0.6f, 0.2f)), 0);
    const auto swatch = SwatchInPanel();
    ASSERT_EQ(swatch.width, swatch.height);
    const qzhost::RenderedImage image = Render();
    // Both halves (left and right of the middle) carry the colour, opaque.
    for (double x : {2.5, swatch.width / 2 - 1.5, swatch.width / 2 + 0.5, swatch.width - 2.5}) {
        for (double y : {2.5, swatch.height / 2, swatch.height - 2.5}) {
            EXPECT_TRUE(Near(At(image, swatch, x, y), kOrange)) << x << ", " << y;
        }
    }
    // The frame, 2 units wide centred on the edge, shows one unit inside every side.
    EXPECT_TRUE(Near(At(image, swatch, 0.5, swatch.height / 2), Frame()));
    EXPECT_TRUE(Near(At(image, swatch, swatch.width - 0.5, swatch.height / 2), Frame()));
    EXPECT_TRUE(Near(At(image, swatch, swatch.width / 2, 0.5), Frame()));
    EXPECT_TRUE(Near(At(image, swatch, swatch.width / 2, swatch.height - 0.5), Frame()));
}

TEST_F(SwatchRendering, AWideSwatchIsFilledEverywhereInside) {
    SetSwatchSize(40, 12);
    ASSERT_EQ(Deliver(Pixel(1, 1.0f, 0.6f, 0.2f)), 0);
    const auto swatch = SwatchInPanel();
    const qzhost::RenderedImage image = Render();
    for (double x : {1.5, 10.5, 20.5, 38.5}) {
        for (double y : {1.5, 5.5, 6.5, 10.5}) {
            EXPECT_TRUE(Near(At(image, swatch, x, y), kOrange)) << x << ", " << y;
        }
    }
    EXPECT_TRUE(Near(At(image, swatch, 0.5, 6.5), Frame()));
    EXPECT_TRUE(Near(At(image, swatch, 20.5, 11.5), Frame()));
}

TEST_F(SwatchRendering, TheShaderPathFillsTheSameColour) {
    qzhost::ToolkitSettings::Get().SetShaderFills(true);
    for (auto size : {std::pair{20.0f, 20.0f}, std::pair{40.0f, 12.0f}}) {
        SetSwatchSize(size.first, size.second);
        ASSERT_EQ(Deliver(Pixel(1, 1.0f, 0.6f, 0.2f)), 0);
        const auto swatch = SwatchInPanel();
        const qzhost::RenderedImage image = Render();
        for (double x : {1.5, swatch.width / 2 - 0.5, swatch.width / 2 + 0.5, swatch.width - 1.5}) {
            for (double y :
                 {1.5, swatch.height / 2 - 0.5, swatch.height / 2 + 0.5, swatch.height - 1.5}) {
                EXPECT_TRUE(Near(At(image, swatch, x, y), kOrange))
                    << size.first << "x" << size.second << " at " << x << ", " << y;
            }
        }
        EXPECT_TRUE(Near(At(image, swatch, 0.5, swatch.height / 2), Frame()));
    }
}

TEST_F(SwatchRendering, AThinSwatchStaysInsideItsBoundsAndIsFramed) {
    // Two units across: the two one-unit strokes lie under the frame, which is one unit
    // inside each side; nothing is drawn outside the bounds.
    SetSwatchSize(2, 20);
    ASSERT_EQ(Deliver(Pixel(1, 1.0f, 0.6f, 0.2f)), 0);
    const auto swatch = SwatchInPanel();
    const qzhost::RenderedImage image = Render();
    const Rgba8 outside = At(image, swatch, -0.5, 10.5);
    EXPECT_FALSE(Near(outside, kOrange));
    EXPECT_FALSE(Near(At(image, swatch, 2.5, 10.5), kOrange));
    for (double y : {0.5, 5.5, 10.5, 19.5}) {
        EXPECT_TRUE(Near(At(image, swatch, 0.5, y), Frame())) << y;
        EXPECT_TRUE(Near(At(image, swatch, 1.5, y), Frame())) << y;
    }
}

TEST_F(SwatchRendering, AMagnifiedThinSwatchIsFilledAndFramed) {
    SetSwatchSize(2, 20);
    ASSERT_EQ(Deliver(Pixel(1, 1.0f, 0.6f, 0.2f)), 0);
    const auto swatch = SwatchInPanel();
    const qzhost::RenderedImage image = Render(2.0);
    for (double y : {1.25, 10.25, 18.75}) {
        EXPECT_TRUE(Near(At(image, swatch, 0.25, y, 2.0), Frame())) << y;
        EXPECT_TRUE(Near(At(image, swatch, 1.75, y, 2.0), Frame())) << y;
    }
    EXPECT_FALSE(Near(At(image, swatch, 2.25, 10.25, 2.0), kOrange));
}

TEST_F(SwatchRendering, AnOverRangeTransparentPixelShowsOpaqueClampedColour) {
    ASSERT_EQ(Deliver(Pixel(0.25f, 2.0f, -0.5f, 0.6f)), 0);
    const auto swatch = SwatchInPanel();
    const qzhost::RenderedImage image = Render();
    EXPECT_TRUE(Near(At(image, swatch, 10.5, 10.5), Rgba8{255, 0, 153, 255}));
}

// A monitor profile with the sRGB primaries and white point and a linear response: a
// middle grey of the working space shows darker on it.
std::filesystem::path WriteLinearMonitorProfile() {
    const std::filesystem::path path =
        std::filesystem::temp_directory_path() /
        ("infopal-linear-monitor-" + std::to_string(::getpid()) + ".icc");
    cmsCIExyY white{0.3127, 0.3290, 1.0};
    cmsCIExyYTRIPLE primaries{{0.64, 0.33, 1.0}, {0.30, 0.60, 1.0}, {0.15, 0.06, 1.0}};
    cmsToneCurve* linear = cmsBuildGamma(nullptr, 1.0);
    cmsToneCurve* curves[3] = {linear, linear, linear};
    cmsHPROFILE profile = cmsCreateRGBProfile(&white, &primaries, curves);
    cmsFreeToneCurve(linear);
    EXPECT_NE(profile, nullptr);
    EXPECT_TRUE(cmsSaveProfileToFile(profile, path.c_str()));
    cmsCloseProfile(profile);
    return path;
}

TEST_F(SwatchRendering, AMonitorProfileChangesTheSwatchButNotTheNumbers) {
    Choose(kBpc8Command);
    const PF_PixelFloat grey = Pixel(1, 0.5f, 0.5f, 0.5f);
    ASSERT_EQ(Deliver(grey), 0);
    const auto plain = Swatch().color;
    const std::array<std::string, 4> plain_values = Values();
    EXPECT_EQ(plain_values, (std::array<std::string, 4>{"128", "128", "128", "255"}));
    EXPECT_FLOAT_EQ(plain.r, 0.5f);

    const std::filesystem::path profile = WriteLinearMonitorProfile();
    qzhost::SetMonitorProfile(profile);
    ASSERT_EQ(Deliver(grey), 0);
    const auto shown = Swatch().color;
    // sRGB 0.5 is about 0.214 in linear light.
    EXPECT_NEAR(shown.r, 0.214f, 0.01f);
    EXPECT_NEAR(shown.g, 0.214f, 0.01f);
    EXPECT_NEAR(shown.b, 0.214f, 0.01f);
    EXPECT_EQ(shown.a, 1.0f);
    EXPECT_EQ(Values(), plain_values);
    PF_PixelFloat back{-1, -1, -1, -1};
    ASSERT_EQ(Suite().GetPixel(&back), 0);
    EXPECT_EQ(back.red, 0.5f); // slot 3 gives the untransformed pixel

    qzhost::SetMonitorProfile(std::nullopt);
    std::filesystem::remove(profile);
}

} // namespace
} // namespace pixel_test
