// The Info panel drawn as the toolkit draws it: its background, its text rows in the
// alert colour where the host asks for it, and its divider after a resize.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "../textlines/TextLinesFixture.h"
#include "kitui/skins/core/Utilities.h"
#include "kitui/ui/Theme.h"
#include "qzhost/PanelRenderer.h"

namespace {

using qzhost::HostControls;
using qzhost::RenderedImage;
using qzhost::Rgba8;
using namespace textlines_test;

Rgba8 ToRgba8(const kitui::inkwell::ColorRGBA& c) {
    auto channel = [](float v) { return static_cast<std::uint8_t>(v * 255.0f + 0.5f); };
    return {channel(c.r), channel(c.g), channel(c.b), channel(c.a)};
}

int Distance(const Rgba8& a, const Rgba8& b) {
    return std::abs(a.r - b.r) + std::abs(a.g - b.g) + std::abs(a.b - b.b);
}

std::string Describe(const Rgba8& p) {
    return "(" + std::to_string(p.r) + ", " + std::to_string(p.g) + ", " + std::to_string(p.b) +
           ", " + std::to_string(p.a) + ")";
}

/// How many pixels of the rectangle lie within `tolerance` (summed over the colour
/// channels) of `color`.
int CountNear(const RenderedImage& image, int x0, int y0, int w, int h, const Rgba8& color,
              int tolerance) {
    int count = 0;
    for (int y = y0; y < y0 + h && y < image.Height(); ++y) {
        for (int x = x0; x < x0 + w && x < image.Width(); ++x) {
            if (Distance(image.At(x, y), color) <= tolerance) {
                ++count;
            }
        }
    }
    return count;
}

class PanelRenderingTest : public TextLinesFixture {
protected:
    static Rgba8 Background() {
        return ToRgba8(
            kitui::ui::GetColor(kitui::skins::core::utilities::GetContentBackgroundColorID()));
    }
    static Rgba8 Alert() { return ToRgba8(kitui::ui::GetColor(10076)); }
    static Rgba8 Divider() { return ToRgba8(kitui::ui::GetColor(kitui::ui::color_id::kDivider)); }

    static std::string PngPath(const char* name) {
        return ::testing::TempDir() + "paneltests_" + name + ".png";
    }
    /// Draws the panel into the PNG file `name` and gives back what the file holds, decoded.
    static RenderedImage DrawnPng(kitui::ui::UI_Node& panel, const char* name) {
        const std::string path = PngPath(name);
        (void)qzhost::RenderNodeToPng(panel, 1.0, path);
        return RenderedImage::ReadPng(path);
    }
};

TEST_F(PanelRenderingTest, TheBackgroundIsTheThemesContentBackground) {
    auto& panel = OpenPanel();
    const RenderedImage image = DrawnPng(panel, "background");
    ASSERT_EQ(image.Width(), 206);
    ASSERT_EQ(image.Height(), 114);
    // Corners and a spot between the pixel block and the text rows hold no control.
    for (auto [x, y] : {std::pair{0, 0}, std::pair{205, 0}, std::pair{1, 60}, std::pair{2, 113},
                        std::pair{205, 113}}) {
        EXPECT_EQ(image.At(x, y), Background()) << x << ", " << y;
    }
    // The file holds exactly what the toolkit drew.
    EXPECT_EQ(image.Pixels(), qzhost::RenderNode(panel, 1.0).Pixels());
}

TEST_F(PanelRenderingTest, ARowWithItsAlertFlagSetIsDrawnInTheAlertColour) {
    auto& panel = OpenPanel();
    HostControls::Get().SetAlerts(true, false, false, false);
    ASSERT_EQ(Suite().SetTextLines3("Illegal move: Hill", "Illegal move: Hill", nullptr), 0);
    const RenderedImage image = DrawnPng(panel, "alert");
    // Row 1 (control 20 at 6, 68, 206, 14) has pixels of the alert colour; row 2 (control
    // 21 at 6, 82) has the same text in the default colour and none.
    EXPECT_GT(CountNear(image, 6, 68, 200, 14, Alert(), 40), 5);
    EXPECT_EQ(CountNear(image, 6, 82, 200, 14, Alert(), 120), 0);
    EXPECT_GT(CountNear(image, 6, 82, 200, 14, Background(), 0), 0);
    const Rgba8 sample = image.At(1, 75);
    EXPECT_EQ(sample, Background()) << Describe(sample);

    // Without the flag the first row loses its colour.
    HostControls::Get().SetAlerts(false, false, false, false);
    ASSERT_EQ(Suite().SetTextLines3("Illegal move: Hill!", nullptr, nullptr), 0);
    const RenderedImage plain = qzhost::RenderNode(panel, 1.0);
    EXPECT_EQ(CountNear(plain, 6, 68, 200, 14, Alert(), 120), 0);
}

TEST_F(PanelRenderingTest, PairedAlertFlagsColourTheJoinedRowsOfAFiveLineUpdate) {
    auto& panel = OpenPanel();
    HostControls::Get().SetAlerts(false, true, true, false);
    ASSERT_EQ(Suite().SetTextLines5("Hill", "Hill", "Hill", "Hill", "Hill"), 0);
    const RenderedImage image = qzhost::RenderNode(panel, 1.0);
    EXPECT_EQ(CountNear(image, 6, 68, 200, 14, Alert(), 120), 0);
    EXPECT_GT(CountNear(image, 6, 82, 200, 14, Alert(), 40), 5);
    EXPECT_EQ(CountNear(image, 6, 96, 200, 14, Alert(), 120), 0);
}

TEST_F(PanelRenderingTest, TheDividerSpansThePanelWidthLessThirteenAfterAResize) {
    auto& panel = OpenPanel();
    panel.UI_SetBounds(kitui::ui::RectT<float>{0, 0, 300, 114});
    const RenderedImage image = DrawnPng(panel, "divider");
    ASSERT_EQ(image.Width(), 300);
    // The divider's row: the run of divider-coloured pixels in row 63.
    int first = -1;
    int last = -1;
    for (int x = 0; x < image.Width(); ++x) {
        if (image.At(x, 63) == Divider()) {
            if (first < 0) {
                first = x;
            }
            last = x;
        }
    }
    EXPECT_EQ(first, 5);
    EXPECT_EQ(last, 5 + 300 - 13 - 1);
    for (int x = first; x <= last; ++x) {
        ASSERT_EQ(image.At(x, 63), Divider()) << x; // one unbroken run
        ASSERT_EQ(image.At(x, 64), Divider()) << x; // two units thick
    }
    EXPECT_EQ(image.At(last + 1, 63), Background());
    EXPECT_EQ(image.At(4, 63), Background());
}

TEST_F(PanelRenderingTest, AtUIScaleTwoThePanelIsDrawnAtTwiceItsSize) {
    auto& panel = OpenPanel();
    const RenderedImage image = qzhost::RenderNode(panel, 2.0);
    EXPECT_EQ(image.Width(), 412);
    EXPECT_EQ(image.Height(), 228);
    EXPECT_EQ(image.At(20, 127), Divider()); // the divider at y 63.5 in panel units
    EXPECT_EQ(image.At(1, 1), Background());
}

} // namespace
