// The canvas mapping: the pixel drawn at a screen pixel is the floor of the position the
// pointer reads there, and zooming keeps the pixel under the pointer.
#include <gtest/gtest.h>

#include <cmath>

#include "canvas/CanvasMapping.h"

namespace {

using qzview::CanvasMapping;

TEST(CanvasMappingTest, MagnifiedPixelsAreSquaresOfWholeScreenPixels) {
    CanvasMapping mapping;
    mapping.SetOrigin(7, -3);
    mapping.ZoomAround(4.0, 7, -3);
    mapping.SetOrigin(7, -3);
    for (int s = 7; s < 7 + 16; ++s) {
        int px = 0;
        int py = 0;
        mapping.PixelAt(s, s - 10, px, py);
        EXPECT_EQ(px, (s - 7) / 4);
        EXPECT_EQ(py, (s - 10 + 3) / 4);
    }
}

TEST(CanvasMappingTest, ZoomAroundKeepsThePixelUnderThePointerAtEveryLevel) {
    CanvasMapping mapping;
    mapping.SetOrigin(100, 50);
    const int sx = 333;
    const int sy = 211;
    int before_x = 0;
    int before_y = 0;
    mapping.PixelAt(sx, sy, before_x, before_y);
    for (double level : CanvasMapping::kLevels) {
        mapping.ZoomAround(level, sx, sy);
        int x = 0;
        int y = 0;
        mapping.PixelAt(sx, sy, x, y);
        if (level >= 1.0) {
            EXPECT_EQ(x, before_x) << "level " << level;
            EXPECT_EQ(y, before_y) << "level " << level;
        } else {
            // Below 1 a screen pixel spans several composition pixels: the one under the
            // pointer is within that span.
            EXPECT_LE(std::abs(x - before_x), static_cast<int>(1 / level)) << "level " << level;
        }
    }
}

TEST(CanvasMappingTest, StepsStayWithinTheLevels) {
    CanvasMapping mapping;
    mapping.ZoomAround(64.0, 0, 0);
    EXPECT_EQ(mapping.Step(1), 64.0);
    mapping.ZoomAround(1.0 / 16, 0, 0);
    EXPECT_EQ(mapping.Step(-1), 1.0 / 16);
    mapping.ZoomAround(1.0, 0, 0);
    EXPECT_EQ(mapping.Step(1), 2.0);
    EXPECT_EQ(mapping.Step(-1), 0.5);
}

TEST(CanvasMappingTest, NearestLevelOfAnAskedZoom) {
    EXPECT_EQ(CanvasMapping::NearestLevel(1.0), 1.0);
    EXPECT_EQ(CanvasMapping::NearestLevel(2.2), 2.0);
    EXPECT_EQ(CanvasMapping::NearestLevel(0.26), 0.25);
    EXPECT_EQ(CanvasMapping::NearestLevel(1000), 64.0);
}

TEST(CanvasMappingTest, FitCentresTheLargestLevelThatFits) {
    CanvasMapping mapping;
    mapping.Fit(240, 160, 800, 600);
    EXPECT_EQ(mapping.Zoom(), 3.0);
    EXPECT_EQ(mapping.OriginX(), 40);
    EXPECT_EQ(mapping.OriginY(), 60);
}

} // namespace
