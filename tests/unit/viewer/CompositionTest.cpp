// The composite of turned layers: a layer that is moved by whole pixels after it was
// warped reuses its warped pixels, and those are the warp at the new place.
#include <gtest/gtest.h>

#include <cmath>

#include "composition/Composition.h"

namespace qzviewtest {
namespace {

/// A 64 x 48 layer with colour ramps and an alpha that falls to the right.
qzview::LayerImage Ramp() {
    qzview::LayerImage image;
    image.name = "ramp";
    image.width = 64;
    image.height = 48;
    image.depth = 2;
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            image.rgba.insert(
                image.rgba.end(),
                {x / 63.0f, y / 47.0f, std::sin(x * 0.3f) * 0.5f + 0.5f, 1.0f - x / 127.0f});
        }
    }
    return image;
}

void Turn(qzview::Composition& composition, double x, double y) {
    const qzview::Layer& layer = composition.Layers().front();
    qzview::LayerValues values = layer.values;
    values.rotation = 30;
    values.scale = {90, 110, 100};
    values.position = {x, y, 0};
    composition.SetValues(layer.id, values);
    composition.Render();
}

TEST(CompositionTest, ATurnedLayerMovedByWholePixelsIsTheWarpAtItsNewPlace) {
    qzview::Composition dragged;
    dragged.AddImage(Ramp());
    Turn(dragged, 30.25, 22.5);
    const std::vector<float> before = dragged.Pixels();
    // The first move warps the layer a margin beyond the composition; the next ones paste
    // those pixels.
    Turn(dragged, 31.25, 22.5);
    const int warps = dragged.Warps();
    Turn(dragged, 33.25, 20.5);
    EXPECT_EQ(dragged.Warps(), warps) << "the kept warp was pasted";
    qzview::Composition fresh;
    fresh.AddImage(Ramp());
    Turn(fresh, 33.25, 20.5);
    ASSERT_EQ(dragged.Pixels().size(), fresh.Pixels().size());
    std::size_t moved = 0;
    for (std::size_t i = 0; i < fresh.Pixels().size(); ++i) {
        // The same samples; only the float rounding of the inverse transform may differ.
        ASSERT_NEAR(dragged.Pixels()[i], fresh.Pixels()[i], 1e-5f) << "value " << i;
        moved += std::abs(before[i] - fresh.Pixels()[i]) > 1e-3f ? 1 : 0;
    }
    EXPECT_GT(moved, 1000u) << "the layer did move";
    // Moved by a fraction of a pixel, the layer is warped anew.
    Turn(dragged, 33.75, 20.5);
    EXPECT_EQ(dragged.Warps(), warps + 1);
    Turn(fresh, 33.75, 20.5);
    for (std::size_t i = 0; i < fresh.Pixels().size(); ++i) {
        ASSERT_NEAR(dragged.Pixels()[i], fresh.Pixels()[i], 1e-5f) << "value " << i;
    }
    Turn(dragged, 3.25, 2.5);
    Turn(fresh, 3.25, 2.5);
    for (std::size_t i = 0; i < fresh.Pixels().size(); ++i) {
        ASSERT_NEAR(dragged.Pixels()[i], fresh.Pixels()[i], 1e-5f) << "value " << i;
    }
}

TEST(CompositionTest, AChangedOpacityIsNotHiddenByTheKeptWarp) {
    qzview::Composition composition;
    composition.AddImage(Ramp());
    Turn(composition, 30.25, 22.5);
    const float alpha = composition.PixelAt(32, 24)[3];
    qzview::LayerValues values = composition.Layers().front().values;
    values.opacity = 50;
    values.position = {31.25, 22.5, 0};
    composition.SetValues(composition.Layers().front().id, values);
    composition.Render();
    EXPECT_NEAR(composition.PixelAt(33, 24)[3], alpha * 0.5f, 1e-5f);
}

} // namespace
} // namespace qzviewtest
