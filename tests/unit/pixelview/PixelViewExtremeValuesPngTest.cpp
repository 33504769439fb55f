// The panel that `qzhost inspect --png` draws for a float pixel whose channel values are far
// out of range (65504, -1000, 123456.7): in the notations with the longest texts, whatever the
// values' texts change in the picture lies inside the value controls (and the swatch), never
// beyond.
#if defined(QZ_QZHOST_PROGRAM) && defined(QZ_INFOPAL_LIBRARY)

#include <gtest/gtest.h>

#include <string>

#include "PixelViewTestSupport.h"
#include "qzhost/RenderedImage.h"

namespace pixelviewtest {
namespace {

constexpr int kScale = 2;

/// A rectangle of the panel in its units, x, y, width, height.
struct Box {
    int x;
    int y;
    int width;
    int height;
    bool HoldsPixel(int px, int py) const {
        return px >= x * kScale && px < (x + width) * kScale && py >= y * kScale &&
               py < (y + height) * kScale;
    }
};

// The four channel value controls and the swatch, as the panel's layout places them, and
// the X number (the two points lie side by side).
const Box kValues[] = {{51, 4, 90, 14}, {51, 17, 90, 14}, {51, 30, 90, 14}, {52, 44, 90, 14}};
const Box kSwatch = {7, 17, 20, 20};
const Box kXNumber = {139, 4, 90, 14};
// The vertical divider between the values and X, Y.
constexpr int kDividerX = 100;

/// Whether two drawn panels have the same pixel at x, y.
bool SamePixel(const qzhost::RenderedImage& a, const qzhost::RenderedImage& b, int x, int y) {
    const qzhost::Rgba8 p = a.At(x, y);
    const qzhost::Rgba8 q = b.At(x, y);
    return p.r == q.r && p.g == q.g && p.b == q.b && p.a == q.a;
}

TEST(PixelViewExtremeValuesPng, ValueTextsStayInsideTheirControlsInEveryNotation) {
    TempFolder folder;
    const std::string image = folder.File("pixel.exr");
    // Pixel 0: the far values; pixel 1: zeros with the same alpha, so that the two panels
    // differ in the colour values, the swatch and X only.
    WriteImage(image, 2, 1, 4, "float", {65504, -1000, 123456.7, 1, 0, 0, 0, 1});
    // The notations with the longest texts for these values (auto shows a float image in
    // decimals; web's six hex digits and HSB's hue are short).
    for (const char* mode : {"percent", "8bpc", "10bpc", "16bpc", "decimal"}) {
        SCOPED_TRACE(mode);
        const std::string png = folder.File(std::string("panel-") + mode + ".png");
        const ProgramRun run = Qzhost("inspect --at 0,0 --at 1,0 --scale 2 --mode " +
                                      std::string(mode) + " --png " + Quoted(png) + " --prefs " +
                                      Quoted(folder.File("prefs.txt")) + " " + Quoted(image));
        ASSERT_EQ(run.status, 0) << run.err;
        const std::string stem = folder.File(std::string("panel-") + mode);
        const qzhost::RenderedImage far = qzhost::RenderedImage::ReadPng(stem + "-1.png");
        const qzhost::RenderedImage zero = qzhost::RenderedImage::ReadPng(stem + "-2.png");
        ASSERT_EQ(far.Width(), 206 * kScale);
        ASSERT_EQ(far.Height(), 114 * kScale);
        ASSERT_EQ(zero.Width(), far.Width());
        ASSERT_EQ(zero.Height(), far.Height());
        int changed = 0;
        int changedPastDivider = 0;
        int outside = 0;
        for (int y = 0; y < far.Height(); ++y) {
            for (int x = 0; x < far.Width(); ++x) {
                if (SamePixel(far, zero, x, y)) {
                    continue;
                }
                ++changed;
                if (x >= kDividerX * kScale) {
                    ++changedPastDivider;
                }
                bool inside = kSwatch.HoldsPixel(x, y) || kXNumber.HoldsPixel(x, y);
                for (const Box& value : kValues) {
                    inside = inside || value.HoldsPixel(x, y);
                }
                if (!inside) {
                    ADD_FAILURE() << "pixel " << x << "," << y << " changed outside the controls";
                    if (++outside > 5) {
                        return;
                    }
                }
            }
        }
        EXPECT_GT(changed, 100);
        // The texts reach past the divider: the check is made on texts longer than the
        // room before it.
        EXPECT_GT(changedPastDivider, 0);
    }
}

} // namespace
} // namespace pixelviewtest

#endif
