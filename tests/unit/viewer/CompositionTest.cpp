// The composite that the Info palette reads: every pixel, computed on its own from the
// layers' pixels, equals bit for bit the same pixel of a full-resolution composite made
// here with OpenImageIO (premult, mask and opacity, warp with the triangle filter or a
// paste on whole pixels, over, unpremult), whatever the layers' transforms.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "ReferenceComposite.h"
#include "composition/Composition.h"

namespace qzviewtest {
namespace {

/// Bit for bit (a NaN equal to a NaN of the same bits).
bool Same(float a, float b) {
    return std::memcmp(&a, &b, sizeof a) == 0 || (a == b);
}

void ExpectEveryPixelExact(const qzview::Composition& composition, const char* what) {
    const OIIO::ImageBuf reference = Reference(composition);
    int wrong = 0;
    for (int y = 0; y < composition.Height(); ++y) {
        for (int x = 0; x < composition.Width(); ++x) {
            float want[4];
            reference.getpixel(x, y, want);
            const qzview::WorkingPixel got = composition.PixelAt(x, y);
            for (int c = 0; c < 4; ++c) {
                if (!Same(got[static_cast<std::size_t>(c)], want[c]) && ++wrong <= 5) {
                    ADD_FAILURE() << what << ": pixel " << x << "," << y << " channel " << c
                                  << " is " << got[static_cast<std::size_t>(c)] << ", the full "
                                  << "composite has " << want[c];
                }
            }
        }
    }
    EXPECT_EQ(wrong, 0) << what;
}

/// Three layers over a 160 x 120 composition: a plate, one with a mask and less opacity,
/// and one on top that is turned, scaled and moved through the cases.
class CompositionExactness : public ::testing::Test {
protected:
    void SetUp() override {
        composition.AddImage(Plate("a", 160, 120, 1));
        const int b = composition.AddImage(Plate("b", 100, 70, 2));
        top = composition.AddImage(Plate("c", 90, 60, 3));
        qzview::LayerValues values = composition.Find(b)->values;
        values.opacity = 70;
        values.mask = qzview::RectMask{10, 8, 60, 40, 90, 6, 2};
        values.position = {70.25, 50.5, 0};
        composition.SetValues(b, values);
    }

    void Place(double x, double y, double rotation, double sx, double sy) {
        qzview::LayerValues values = composition.Find(top)->values;
        values.position = {x, y, 0};
        values.rotation = rotation;
        values.scale = {sx, sy, 100};
        composition.SetValues(top, values);
    }

    qzview::Composition composition;
    int top = 0;
};

TEST_F(CompositionExactness, MovedByWholePixels) {
    Place(100, 70, 0, 100, 100);
    ExpectEveryPixelExact(composition, "moved by whole pixels");
}

TEST_F(CompositionExactness, MovedByFractionsOfAPixel) {
    Place(100.37, 69.81, 0, 100, 100);
    ExpectEveryPixelExact(composition, "moved by fractions");
}

TEST_F(CompositionExactness, Rotated) {
    for (const double angle : {7.5, 45.0, 90.0, 213.0}) {
        Place(83.2, 61.7, angle, 100, 100);
        ExpectEveryPixelExact(composition, "rotated");
    }
}

TEST_F(CompositionExactness, ScaledDownAndUp) {
    Place(80, 60, 12, 37, 45);
    ExpectEveryPixelExact(composition, "scaled down");
    Place(80.5, 60.25, -20, 250, 180);
    ExpectEveryPixelExact(composition, "scaled up");
}

TEST_F(CompositionExactness, LayersBeyondTheEdges) {
    Place(-10.3, 118.6, 33, 140, 100);
    ExpectEveryPixelExact(composition, "beyond the edges");
}

TEST(CompositionTest, ALoneLayerOnWholePixelsShowsItsOwnValues) {
    qzview::Composition composition;
    const qzview::LayerImage plate = Plate("a", 40, 30, 4);
    composition.AddImage(plate);
    for (int y = 0; y < 30; ++y) {
        for (int x = 0; x < 40; ++x) {
            EXPECT_EQ(composition.PixelAt(x, y), plate.WorkingPixel(x, y));
        }
    }
    EXPECT_EQ(composition.PixelAt(-1, 0), (qzview::WorkingPixel{0, 0, 0, 0}));
    EXPECT_EQ(composition.PixelAt(40, 0), (qzview::WorkingPixel{0, 0, 0, 0}));
}

TEST(CompositionTest, ARegionIsItsPixelsOneByOne) {
    qzview::Composition composition;
    composition.AddImage(Plate("a", 150, 100, 5));
    const int top = composition.AddImage(Plate("b", 80, 80, 6));
    qzview::LayerValues values = composition.Find(top)->values;
    values.rotation = 31;
    values.scale = {64, 130, 100};
    composition.SetValues(top, values);
    const auto snapshot = composition.Snapshot();
    const qzview::PixelRect region{3, 5, 147, 96};
    std::vector<float> out(static_cast<std::size_t>(region.Width()) * region.Height() * 4);
    qzview::CompositeScratch scratch;
    qzview::CompositeRegion(*snapshot, region, qzview::AlphaForm::Straight, out.data(), scratch);
    for (int y = region.y0; y < region.y1; ++y) {
        for (int x = region.x0; x < region.x1; ++x) {
            const float* p =
                out.data() + (static_cast<std::size_t>(y - region.y0) * region.Width() +
                              static_cast<std::size_t>(x - region.x0)) *
                                 4;
            const qzview::WorkingPixel one = composition.PixelAt(x, y);
            ASSERT_EQ(qzview::WorkingPixel({p[0], p[1], p[2], p[3]}), one) << x << "," << y;
        }
    }
}

} // namespace
} // namespace qzviewtest
