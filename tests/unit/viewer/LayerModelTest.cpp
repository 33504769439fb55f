// The layer model on its own: property ranges, the transform from layer to composition,
// the mask's coverage and what each drag makes of the pointer's path.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "editing/LayerDrag.h"

namespace qzviewtest {
namespace {

using qzview::Property;

qzview::Layer Chart() {
    qzview::Layer layer;
    layer.id = 7;
    auto image = std::make_shared<qzview::LayerImage>();
    image->width = 240;
    image->height = 160;
    layer.image = image;
    layer.values.anchor = {120, 80, 0};
    layer.values.position = {120, 80, 0};
    return layer;
}

TEST(LayerModelTest, PropertiesKeepTheirRanges) {
    qzview::LayerValues values;
    qzview::SetProperty(values, Property::Opacity, {140, 0, 0});
    EXPECT_EQ(values.opacity, 100.0);
    qzview::SetProperty(values, Property::Opacity, {-3, 0, 0});
    EXPECT_EQ(values.opacity, 0.0);
    qzview::SetProperty(values, Property::Orientation, {-90, 370, 720});
    EXPECT_EQ(values.orientation, (qzview::PropertyValue{270, 10, 0}));
    // Without a mask, a mask property has nowhere to go.
    qzview::SetProperty(values, Property::MaskFeather, {5, 0, 0});
    EXPECT_FALSE(values.mask.has_value());
    values.mask = qzview::RectMask{};
    qzview::SetProperty(values, Property::MaskFeather, {-5, 0, 0});
    EXPECT_EQ(values.mask->feather, 0.0);
    qzview::SetProperty(values, Property::Rotation, {NAN, 0, 0});
    EXPECT_EQ(values.rotation, 0.0);
}

TEST(LayerModelTest, ThreeDLayersAndCamerasHaveThreeComponentPoints) {
    qzview::Layer layer = Chart();
    EXPECT_EQ(qzview::Components(layer, Property::Position), 2);
    EXPECT_EQ(qzview::PropertyName(layer, Property::Rotation), "Rotation");
    layer.values.threeD = true;
    EXPECT_EQ(qzview::Components(layer, Property::Scale), 3);
    EXPECT_EQ(qzview::PropertyName(layer, Property::Rotation), "Z Rotation");
    qzview::Layer camera;
    camera.kind = qzview::LayerKind::Camera;
    EXPECT_TRUE(camera.ThreeD());
    EXPECT_EQ(qzview::PropertyName(camera, Property::AnchorPoint), "Point of Interest");
    const std::vector<Property> list = qzview::PropertiesOf(camera);
    EXPECT_EQ(std::count(list.begin(), list.end(), Property::Opacity), 0);
    EXPECT_EQ(std::count(list.begin(), list.end(), Property::Orientation), 1);
}

TEST(LayerModelTest, TheTransformTurnsAndScalesAboutTheAnchorPoint) {
    qzview::Layer layer = Chart();
    EXPECT_TRUE(qzview::LayerToComposition(layer).IsIntegerTranslation());
    layer.values.rotation = 90;
    layer.values.scale = {50, 200, 100};
    const qzview::Affine m = qzview::LayerToComposition(layer);
    // The anchor point stays at the position; a point 10 right of it goes 5 down (turned
    // clockwise on the screen), one 10 below it goes 20 left.
    const auto anchor = m.Apply(120, 80);
    EXPECT_NEAR(anchor[0], 120, 1e-9);
    EXPECT_NEAR(anchor[1], 80, 1e-9);
    const auto right = m.Apply(130, 80);
    EXPECT_NEAR(right[0], 120, 1e-9);
    EXPECT_NEAR(right[1], 85, 1e-9);
    const auto below = m.Apply(120, 90);
    EXPECT_NEAR(below[0], 100, 1e-9);
    EXPECT_NEAR(below[1], 80, 1e-9);
    const auto back = m.Inverse()->Apply(below[0], below[1]);
    EXPECT_NEAR(back[0], 120, 1e-9);
    EXPECT_NEAR(back[1], 90, 1e-9);
    // A 3-D layer turned 90 degrees about y is seen edge-on: no inverse.
    layer.values = {};
    layer.values.threeD = true;
    layer.values.rotationY = 90;
    EXPECT_FALSE(qzview::LayerToComposition(layer).Inverse().has_value());
}

TEST(LayerModelTest, TheMaskIsExpandedFeatheredAndScaledByItsOpacity) {
    qzview::RectMask mask{10, 10, 20, 20};
    EXPECT_EQ(qzview::MaskCoverage(mask, 15, 15), 1.0f);
    EXPECT_EQ(qzview::MaskCoverage(mask, 5, 15), 0.0f);
    mask.expansion = 6;
    EXPECT_EQ(qzview::MaskCoverage(mask, 5, 15), 1.0f);
    mask.expansion = -11;
    EXPECT_EQ(qzview::MaskCoverage(mask, 20, 20), 0.0f) << "shrunk to nothing";
    mask.expansion = 0;
    mask.feather = 4;
    // Pixel 9's centre lies half a pixel outside the edge: 0.5 - 0.5 / 4.
    EXPECT_FLOAT_EQ(qzview::MaskCoverage(mask, 9, 15), 0.375f);
    EXPECT_FLOAT_EQ(qzview::MaskCoverage(mask, 10, 15), 0.625f);
    EXPECT_EQ(qzview::MaskCoverage(mask, 15, 15), 1.0f);
    mask.opacity = 50;
    EXPECT_FLOAT_EQ(qzview::MaskCoverage(mask, 15, 15), 0.5f);
}

TEST(LayerModelTest, ARotationDragAddsUpWholeTurns) {
    const qzview::Layer layer = Chart();
    qzview::LayerDrag drag(layer, Property::Rotation, {180, 80});
    for (int degrees = 30; degrees <= 750; degrees += 30) {
        const double r = degrees * std::numbers::pi / 180.0;
        drag.Move({120 + 60 * std::cos(r), 80 + 60 * std::sin(r)}, false);
    }
    EXPECT_NEAR(drag.Value()[0], 750, 1e-9);
    EXPECT_NEAR(drag.Change()[0], 750, 1e-9);
    // Back the other way past the start.
    for (int degrees = 720; degrees >= -60; degrees -= 30) {
        const double r = degrees * std::numbers::pi / 180.0;
        drag.Move({120 + 60 * std::cos(r), 80 + 60 * std::sin(r)}, false);
    }
    EXPECT_NEAR(drag.Value()[0], -60, 1e-9);
}

TEST(LayerModelTest, APositionDragIsThePointersPathAndKeepsDepth) {
    qzview::Layer layer = Chart();
    layer.values.threeD = true;
    layer.values.position[2] = -40;
    qzview::LayerDrag drag(layer, Property::Position, {10.5, 10.5});
    const qzview::LayerValues& values = drag.Move({15.5, 2.5}, false);
    EXPECT_EQ(values.position, (qzview::PropertyValue{125, 72, -40}));
    EXPECT_EQ(drag.Change(), (qzview::PropertyValue{5, -8, 0}));
    EXPECT_EQ(drag.Before().position, layer.values.position);
}

} // namespace
} // namespace qzviewtest
