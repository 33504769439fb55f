// The theme's colours: one dark theme with a red alert colour and a grey swatch frame.
#include <gtest/gtest.h>

#include "kitui/skins/core/Utilities.h"
#include "kitui/ui/Theme.h"

namespace {

using kitui::inkwell::ColorRGBA;

float Luminance(const ColorRGBA& c) {
    return 0.2126f * c.r + 0.7152f * c.g + 0.0722f * c.b;
}

TEST(ThemeTest, ContentBackgroundIsADarkGrey) {
    const ColorRGBA bg =
        kitui::ui::GetColor(kitui::skins::core::utilities::GetContentBackgroundColorID());
    EXPECT_EQ(bg.r, bg.g);
    EXPECT_EQ(bg.g, bg.b);
    EXPECT_LT(bg.r, 0.25f);
    EXPECT_GT(bg.r, 0.0f);
    EXPECT_EQ(bg.a, 1.0f);
}

TEST(ThemeTest, AlertColourIsAClearRed) {
    const ColorRGBA alert = kitui::ui::GetColor(10076);
    EXPECT_GT(alert.r, 0.8f);
    EXPECT_LT(alert.g, 0.3f);
    EXPECT_LT(alert.b, 0.3f);
    EXPECT_EQ(alert.a, 1.0f);
}

TEST(ThemeTest, SwatchFrameIsAMidGrey) {
    const ColorRGBA frame = kitui::ui::GetColor(20);
    EXPECT_EQ(frame.r, frame.g);
    EXPECT_EQ(frame.g, frame.b);
    EXPECT_GT(frame.r, 0.35f);
    EXPECT_LT(frame.r, 0.65f);
}

TEST(ThemeTest, TextAndDividerStandOutFromTheBackground) {
    const ColorRGBA bg = kitui::ui::GetColor(kitui::ui::color_id::kContentBackground);
    EXPECT_GT(Luminance(kitui::ui::GetColor(kitui::ui::color_id::kDefaultText)) - Luminance(bg),
              0.5f);
    EXPECT_GT(Luminance(kitui::ui::GetColor(kitui::ui::color_id::kDivider)) - Luminance(bg), 0.1f);
}

TEST(ThemeTest, UnknownColourGivesTheDefaultTextColour) {
    EXPECT_FALSE(kitui::ui::HasColor(123456));
    EXPECT_TRUE(kitui::ui::HasColor(10076));
    EXPECT_EQ(kitui::ui::GetColor(123456), kitui::ui::GetColor(kitui::ui::color_id::kDefaultText));
}

} // namespace
