// Layers and compositions of pixels wider or taller than square: a layer's transform is
// Kc^-1 * T(Kc * position) * R * S * Kl * T(-anchor), with Kl and Kc the layer's and the
// composition's pixel aspects along x, so that as drawn (a composition pixel its aspect
// wide) a turn is a true turn and a layer pixel its own aspect wide; the composition takes
// the first image's aspect; and a square layer over an anamorphic composition (and the
// reverse) is composited, bit for bit, as OpenImageIO warps it by that transform.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <numbers>

#include "ReferenceComposite.h"
#include "composition/Composition.h"

namespace qzviewtest::aspect {
namespace {

/// Rows of a 3 x 3 matrix acting on column vectors (x, y, 1).
using M3 = std::array<std::array<double, 3>, 3>;

M3 Times(const M3& l, const M3& r) {
    M3 out{};
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 3; ++j) {
            for (std::size_t k = 0; k < 3; ++k) {
                out[i][j] += l[i][k] * r[k][j];
            }
        }
    }
    return out;
}

M3 Translate(double x, double y) {
    return {{{1, 0, x}, {0, 1, y}, {0, 0, 1}}};
}

M3 Diagonal(double x, double y) {
    return {{{x, 0, 0}, {0, y, 0}, {0, 0, 1}}};
}

/// Kc^-1 * T(Kc * position) * R * S * Kl * T(-anchor) for a 2-D layer turned `degrees`
/// clockwise on the screen (y down).
M3 Expected(const qzview::LayerValues& v, double degrees, double layer_aspect,
            double composition_aspect) {
    const double r = degrees * std::numbers::pi / 180.0;
    const M3 turn{{{std::cos(r), -std::sin(r), 0}, {std::sin(r), std::cos(r), 0}, {0, 0, 1}}};
    M3 m = Diagonal(1.0 / composition_aspect, 1);
    m = Times(m, Translate(composition_aspect * v.position[0], v.position[1]));
    m = Times(m, turn);
    m = Times(m, Diagonal(v.scale[0] / 100.0, v.scale[1] / 100.0));
    m = Times(m, Diagonal(layer_aspect, 1));
    return Times(m, Translate(-v.anchor[0], -v.anchor[1]));
}

qzview::Layer LayerOfAspect(double aspect) {
    qzview::Layer layer;
    layer.id = 5;
    auto image = std::make_shared<qzview::LayerImage>();
    image->width = 40;
    image->height = 30;
    image->pixelAspect = aspect;
    layer.image = image;
    layer.values.anchor = {10.5, 7.25, 0};
    layer.values.position = {40.3, 22.6, 0};
    layer.values.scale = {80, 120, 100};
    return layer;
}

TEST(WidePixelTransformTest, ALayersTransformIsTheProductOfItsAspectsTurnAndScale) {
    const double cases[][2] = {{1, 2}, {2, 1}, {0.5, 2}, {2, 2}, {1, 0.5}, {1.5, 0.9}};
    for (const auto& [layerAspect, compositionAspect] : cases) {
        for (const double degrees : {0.0, 30.0, 90.0, 211.0}) {
            qzview::Layer layer = LayerOfAspect(layerAspect);
            layer.values.rotation = degrees;
            const qzview::Affine got = qzview::LayerToComposition(layer, compositionAspect);
            const M3 want = Expected(layer.values, degrees, layerAspect, compositionAspect);
            SCOPED_TRACE("layer aspect " + std::to_string(layerAspect) + ", composition " +
                         std::to_string(compositionAspect) + ", turned " + std::to_string(degrees));
            EXPECT_NEAR(got.a, want[0][0], 1e-12);
            EXPECT_NEAR(got.c, want[0][1], 1e-12);
            EXPECT_NEAR(got.e, want[0][2], 1e-12);
            EXPECT_NEAR(got.b, want[1][0], 1e-12);
            EXPECT_NEAR(got.d, want[1][1], 1e-12);
            EXPECT_NEAR(got.f, want[1][2], 1e-12);
            // As drawn (x times the composition's aspect), a layer pixel's steps along u
            // and v are at right angles, the one along u its aspect times the scale long.
            const double ux = got.a * compositionAspect;
            const double vx = got.c * compositionAspect;
            EXPECT_NEAR(ux * vx + got.b * got.d, 0.0, 1e-12);
            EXPECT_NEAR(std::hypot(ux, got.b), layerAspect * 0.8, 1e-12);
            EXPECT_NEAR(std::hypot(vx, got.d), 1.2, 1e-12);
            // The anchor point lies at the position.
            const auto anchor = got.Apply(10.5, 7.25);
            EXPECT_NEAR(anchor[0], 40.3, 1e-12);
            EXPECT_NEAR(anchor[1], 22.6, 1e-12);
        }
    }
}

TEST(WidePixelTransformTest, ALayerOfTheCompositionsAspectLiesOnItsPixelsAsASquareOneWould) {
    // Unturned, a layer whose pixels are as wide as the composition's has the very
    // transform of square pixels on square ones (whole pixels stay whole pixels).
    const qzview::Layer square = LayerOfAspect(1.0);
    for (const double aspect : {2.0, 0.5, 1.0926}) {
        const qzview::Layer layer = LayerOfAspect(aspect);
        const qzview::Affine got = qzview::LayerToComposition(layer, aspect);
        const qzview::Affine want = qzview::LayerToComposition(square);
        EXPECT_EQ(got.a, want.a) << aspect;
        EXPECT_EQ(got.b, want.b) << aspect;
        EXPECT_EQ(got.c, want.c) << aspect;
        EXPECT_EQ(got.d, want.d) << aspect;
        EXPECT_EQ(got.e, want.e) << aspect;
        EXPECT_EQ(got.f, want.f) << aspect;
    }
    // Square pixels over wide ones are half as many composition pixels wide.
    EXPECT_EQ(qzview::LayerToComposition(square, 2.0).a, 0.8 / 2.0);
}

TEST(WidePixelTransformTest, AThreeDLayerTurnsAboutYInTheSpaceAsDrawn) {
    // Without a camera a 3-D layer is seen straight on: turned 60 degrees about y, its
    // width as drawn is cos 60 of its own (in pixel heights), whatever the aspects.
    for (const auto& [layerAspect, compositionAspect] :
         {std::array<double, 2>{1, 2}, std::array<double, 2>{2, 1}, std::array<double, 2>{2, 2}}) {
        qzview::Layer layer = LayerOfAspect(layerAspect);
        layer.values.threeD = true;
        layer.values.scale = {100, 100, 100};
        layer.values.rotationY = 60;
        layer.values.anchor = {20, 15, 4};
        const qzview::Affine m = qzview::LayerToComposition(layer, compositionAspect);
        const auto left = m.Apply(0, 15);
        const auto right = m.Apply(40, 15);
        EXPECT_NEAR((right[0] - left[0]) * compositionAspect, 40 * layerAspect * 0.5, 1e-9);
        EXPECT_NEAR(right[1] - left[1], 0.0, 1e-9);
        // The anchor's depth moves the layer across by its sine, in pixel heights.
        const auto anchor = m.Apply(20, 15);
        EXPECT_NEAR((anchor[0] - 40.3) * compositionAspect, -std::sin(std::numbers::pi / 3) * 4,
                    1e-9);
    }
}

TEST(WidePixelTransformTest, TheCompositionTakesTheFirstImagesAspect) {
    qzview::Composition composition;
    qzview::LayerImage wide = Plate("wide", 60, 40, 1);
    wide.pixelAspect = 2.0;
    composition.AddImage(wide);
    EXPECT_EQ(composition.PixelAspect(), 2.0);
    // A square image after it keeps the composition as it is, centred on it as drawn.
    const int square = composition.AddImage(Plate("square", 20, 20, 2));
    EXPECT_EQ(composition.PixelAspect(), 2.0);
    const auto centre = composition.Transform(square).Apply(10, 10);
    ASSERT_TRUE(centre.has_value());
    EXPECT_EQ((*centre)[0], 30.0);
    EXPECT_EQ((*centre)[1], 20.0);
    const auto corner = composition.Transform(square).Apply(20, 20);
    EXPECT_EQ((*corner)[0], 35.0) << "20 square pixels are 10 wide ones";
    // The first image covers the composition exactly.
    EXPECT_TRUE(
        composition.Transform(composition.Layers().front().id).ToAffine().IsIntegerTranslation());

    for (const double unusable : {0.0, -2.0, std::numeric_limits<double>::quiet_NaN(),
                                  std::numeric_limits<double>::infinity()}) {
        qzview::Composition other;
        qzview::LayerImage image = Plate("odd", 8, 8, 3);
        image.pixelAspect = unusable;
        other.AddImage(image);
        EXPECT_EQ(other.PixelAspect(), 1.0) << unusable;
    }
}

/// Bit for bit (a NaN equal to a NaN of the same bits).
bool Same(float a, float b) {
    return std::memcmp(&a, &b, sizeof a) == 0 || (a == b);
}

/// Every pixel of `composition` equals the full OpenImageIO composite's; returns how many
/// differ from `other`'s, to show that the aspect changed the picture.
int ExpectExactAndCountChanges(const qzview::Composition& composition,
                               const qzview::Composition& other, const std::string& what) {
    const OIIO::ImageBuf reference = Reference(composition);
    int wrong = 0;
    int changed = 0;
    for (int y = 0; y < composition.Height(); ++y) {
        for (int x = 0; x < composition.Width(); ++x) {
            float want[4];
            reference.getpixel(x, y, want);
            const qzview::WorkingPixel got = composition.PixelAt(x, y);
            changed += got != other.PixelAt(x, y) ? 1 : 0;
            for (std::size_t c = 0; c < 4; ++c) {
                if (!Same(got[c], want[c]) && ++wrong <= 5) {
                    ADD_FAILURE() << what << ": pixel " << x << "," << y << " channel " << c
                                  << " is " << got[c] << ", the full composite has " << want[c];
                }
            }
        }
    }
    EXPECT_EQ(wrong, 0) << what;
    return changed;
}

/// A 120 x 90 plate of pixels `below` wide under a turned, scaled 50 x 40 one of pixels
/// `above` wide placed off the pixel grid.
qzview::Composition TwoPlates(double below, double above) {
    qzview::Composition composition;
    qzview::LayerImage base = Plate("base", 120, 90, 41);
    base.pixelAspect = below;
    composition.AddImage(base);
    qzview::LayerImage top = Plate("top", 50, 40, 42);
    top.pixelAspect = above;
    const int id = composition.AddImage(top);
    qzview::LayerValues values = composition.Find(id)->values;
    values.rotation = 31;
    values.scale = {90, 115, 100};
    values.position = {57.3, 41.8, 0};
    values.opacity = 80;
    values.mask = qzview::RectMask{4, 3, 40, 30, 100, 3, 0};
    composition.SetValues(id, values);
    return composition;
}

/// The top layer of TwoPlates(below, above) is placed by its aspects, turn and scale:
/// Kc^-1 R S Kl.
void ExpectTopPlacedByItsAspects(const qzview::Composition& composition, double below,
                                 double above) {
    const qzview::Projective& m = composition.Transform(composition.Layers().back().id);
    const double r = 31 * std::numbers::pi / 180.0;
    EXPECT_NEAR(m.m[0][0], std::cos(r) * 0.9 * above / below, 1e-12);
    EXPECT_NEAR(m.m[1][0], std::sin(r) * 0.9 * above, 1e-12);
    EXPECT_NEAR(m.m[0][1], -std::sin(r) * 1.15 / below, 1e-12);
    EXPECT_NEAR(m.m[1][1], std::cos(r) * 1.15, 1e-12);
}

TEST(WidePixelTransformTest, ASquareLayerOverAnAnamorphicCompositionIsItsExactWarp) {
    const qzview::Composition square = TwoPlates(1.0, 1.0);
    for (const double aspect : {2.0, 0.5}) {
        const qzview::Composition composition = TwoPlates(aspect, 1.0);
        ASSERT_EQ(composition.PixelAspect(), aspect);
        ExpectTopPlacedByItsAspects(composition, aspect, 1.0);
        const int changed = ExpectExactAndCountChanges(composition, square,
                                                       "square over " + std::to_string(aspect));
        EXPECT_GE(changed, 1000) << "the top layer is drawn otherwise than on square pixels";
    }
}

TEST(WidePixelTransformTest, AnAnamorphicLayerOverASquareCompositionIsItsExactWarp) {
    const qzview::Composition square = TwoPlates(1.0, 1.0);
    for (const double aspect : {2.0, 0.5}) {
        const qzview::Composition composition = TwoPlates(1.0, aspect);
        ASSERT_EQ(composition.PixelAspect(), 1.0);
        ExpectTopPlacedByItsAspects(composition, 1.0, aspect);
        const int changed = ExpectExactAndCountChanges(composition, square,
                                                       std::to_string(aspect) + " over square");
        EXPECT_GE(changed, 1000) << "the top layer is drawn otherwise than with square pixels";
    }
    // Wide pixels over wide ones, turned.
    const qzview::Composition wide = TwoPlates(2.0, 2.0);
    ExpectTopPlacedByItsAspects(wide, 2.0, 2.0);
    ExpectExactAndCountChanges(wide, square, "wide over wide");
}

} // namespace
} // namespace qzviewtest::aspect
