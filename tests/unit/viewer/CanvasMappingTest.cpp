// The canvas mapping: the pixel drawn at a screen pixel is the floor of the position the
// pointer reads there, and zooming keeps the pixel under the pointer; a composition pixel
// is drawn its pixel aspect times as wide as tall.
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

TEST(CanvasMappingTest, AnAnamorphicPixelCoversAspectTimesZoomByZoomScreenPixels) {
    // Aspect, zoom, screen pixels across and down.
    const struct {
        double aspect;
        double zoom;
        int across;
        int down;
    } cases[] = {{2.0, 4.0, 8, 4}, {0.5, 4.0, 2, 4}, {2.0, 1.0, 2, 1}, {0.5, 8.0, 4, 8}};
    for (const auto& c : cases) {
        CanvasMapping mapping;
        mapping.SetAspect(c.aspect);
        mapping.ZoomAround(c.zoom, 0, 0);
        mapping.SetOrigin(7, -3);
        EXPECT_EQ(mapping.ScaleX(), c.across);
        EXPECT_EQ(mapping.ScaleY(), c.down);
        for (int s = 7; s < 7 + 5 * c.across; ++s) {
            int px = 0;
            int py = 0;
            mapping.PixelAt(s, s - 7 - 3, px, py);
            EXPECT_EQ(px, (s - 7) / c.across) << "aspect " << c.aspect << " zoom " << c.zoom;
            EXPECT_EQ(py, (s - 7) / c.down) << "aspect " << c.aspect << " zoom " << c.zoom;
            EXPECT_EQ(mapping.ColumnsAt(s), std::make_pair(px, px + 1));
        }
        // The drawn place of a composition point is the inverse of the rule.
        const auto [x, y] = mapping.ToScreen({3.0, 5.0});
        EXPECT_EQ(x, 7 + 3 * c.across);
        EXPECT_EQ(y, -3 + 5 * c.down);
    }
}

TEST(CanvasMappingTest, ScreenPixelsNarrowerThanTheirPixelsShareOutTheColumns) {
    // Wherever a composition pixel is less than a screen pixel wide, each screen column
    // shows the next run of whole columns (as many as it is wide, give or take one), and
    // the column that the pointer reads there is one of them; elsewhere the pointer's one
    // column.
    for (const double aspect : {0.5, 0.75, 0.9, 1.0, 1.0926, 1.5, 2.0}) {
        for (const double level : CanvasMapping::kLevels) {
            CanvasMapping mapping;
            mapping.SetAspect(aspect);
            mapping.ZoomAround(level, 0, 0);
            mapping.SetOrigin(13, 0);
            const double across = mapping.ScaleX();
            std::pair<int, int> before = mapping.ColumnsAt(-60);
            for (int s = -59; s < 260; ++s) {
                const auto columns = mapping.ColumnsAt(s);
                int px = 0;
                int py = 0;
                mapping.PixelAt(s, 0, px, py);
                ASSERT_GE(px, columns.first) << aspect << " at " << level << ", column " << s;
                ASSERT_LT(px, columns.second) << aspect << " at " << level << ", column " << s;
                if (across < 1.0) {
                    ASSERT_EQ(columns.first, before.second) << aspect << " at " << level;
                    const int count = columns.second - columns.first;
                    ASSERT_GE(count, static_cast<int>(std::floor(1 / across)));
                    ASSERT_LE(count, static_cast<int>(std::ceil(1 / across)));
                } else {
                    ASSERT_EQ(columns.second - columns.first, 1);
                    ASSERT_TRUE(columns.first == before.first || columns.first == before.second)
                        << aspect << " at " << level << ", column " << s;
                }
                before = columns;
            }
        }
    }
}

TEST(CanvasMappingTest, ZoomAroundKeepsThePixelUnderThePointerWithWideOrTallPixels) {
    for (const double aspect : {2.0, 0.5}) {
        CanvasMapping mapping;
        mapping.SetAspect(aspect);
        mapping.SetOrigin(100, 50);
        const int sx = 333;
        const int sy = 211;
        int before_x = 0;
        int before_y = 0;
        mapping.PixelAt(sx, sy, before_x, before_y);
        for (double level : CanvasMapping::kLevels) {
            mapping.ZoomAround(level, sx, sy);
            const auto [x0, x1] = mapping.ColumnsAt(sx);
            const auto [y0, y1] = mapping.RowsAt(sy);
            // The pixel that was under the pointer is among those drawn there.
            EXPECT_TRUE(before_x >= x0 && before_x < x1)
                << "aspect " << aspect << " level " << level;
            EXPECT_TRUE(before_y >= y0 && before_y < y1)
                << "aspect " << aspect << " level " << level;
        }
    }
}

TEST(CanvasMappingTest, FitAndActualPixelsTakeTheDrawnWidth) {
    CanvasMapping mapping;
    mapping.SetAspect(2.0);
    // 240 x 160 pixels drawn 480 wide at zoom 1 (960 at zoom 2 would not fit).
    mapping.Fit(240, 160, 800, 600);
    EXPECT_EQ(mapping.Zoom(), 1.0);
    EXPECT_EQ(mapping.OriginX(), 160);
    EXPECT_EQ(mapping.OriginY(), 220);
    mapping.SetAspect(0.5);
    // Drawn 120 wide at zoom 1: zoom 3 is 360 x 480, zoom 4 too tall.
    mapping.Fit(240, 160, 800, 600);
    EXPECT_EQ(mapping.Zoom(), 3.0);
    EXPECT_EQ(mapping.OriginX(), 220);
    EXPECT_EQ(mapping.OriginY(), 60);
    mapping.SetAspect(2.0);
    mapping.Actual(240, 160, 800, 600);
    EXPECT_EQ(mapping.Zoom(), 1.0);
    EXPECT_EQ(mapping.OriginX(), 160);
    EXPECT_EQ(mapping.OriginY(), 220);
    mapping.SetAspect(0.5);
    mapping.Centre(0.25, 240, 160, 101, 100);
    EXPECT_EQ(mapping.OriginX(), 35) << "(101 - 30) / 2, rounded down";
    EXPECT_EQ(mapping.OriginY(), 30);
}

} // namespace
