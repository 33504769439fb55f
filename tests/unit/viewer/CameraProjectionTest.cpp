// 3-D layers seen through a camera: a layer's points land where a pinhole camera at the
// camera's Position, looking at its Point of Interest with its Zoom as focal length, sees
// them; a new camera leaves the view exactly as it was; hit testing, the outline and the
// preview follow the projection; and the composite of projected layers equals, bit for
// bit, a composite built here with OpenImageIO's warp given the 3 x 3 matrix alone
// (premult, mask and opacity, warp, over, unpremult), except where the layer would lie
// behind the camera, which the library's warp draws mirrored and the viewer leaves
// transparent.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <iostream>
#include <numbers>
#include <span>

#include <Imath/ImathMatrix.h>
#include <OpenImageIO/imagebufalgo.h>

#include <QImage>

#include "ReferenceComposite.h"
#include "canvas/Checkerboard.h"
#include "canvas/PreviewPainter.h"
#include "canvas/SceneMaker.h"
#include "composition/Camera.h"
#include "composition/Composition.h"
#include "editing/LayerDrag.h"
#include "editing/LayerHandles.h"

namespace qzviewtest::projection {
namespace {

using V3 = std::array<double, 3>;

V3 Sub(const V3& a, const V3& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
double Dot(const V3& a, const V3& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
V3 Cross(const V3& a, const V3& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
V3 Unit(const V3& a) {
    const double l = std::sqrt(Dot(a, a));
    return {a[0] / l, a[1] / l, a[2] / l};
}

/// Where a pinhole camera at `eye` looking at `target` (its up as near the screen's up,
/// -y, as the view allows) with focal length `zoom` shows space point `p` in a
/// `width` x `height` composition; nothing when `p` is not in front of it.
std::optional<std::array<double, 2>> Pinhole(const V3& eye, const V3& target, double zoom,
                                             int width, int height, const V3& p) {
    const V3 forward = Unit(Sub(target, eye));
    const V3 right = Unit(Cross({0, 1, 0}, forward));
    const V3 down = Cross(forward, right);
    const V3 d = Sub(p, eye);
    const double depth = Dot(d, forward);
    if (depth <= 0) {
        return std::nullopt;
    }
    return std::array<double, 2>{width / 2.0 + zoom * Dot(d, right) / depth,
                                 height / 2.0 + zoom * Dot(d, down) / depth};
}

/// Where pixel point `u`, `v` of a 3-D layer turned `degrees` about Y (nothing else
/// turned, scale 100 %) lies in space, measured as drawn: its pixels `layer_aspect` pixel
/// heights wide, in a composition of pixels `aspect` heights wide.
V3 TurnedAboutY(const qzview::LayerValues& v, double degrees, double u, double w,
                double aspect = 1.0, double layer_aspect = 1.0) {
    const double r = degrees * std::numbers::pi / 180.0;
    const double x = (u - v.anchor[0]) * layer_aspect;
    const double y = w - v.anchor[1];
    const double z = -v.anchor[2];
    return {aspect * v.position[0] + std::cos(r) * x + std::sin(r) * z, v.position[1] + y,
            v.position[2] - std::sin(r) * x + std::cos(r) * z};
}

bool Same(float a, float b) {
    return std::memcmp(&a, &b, sizeof a) == 0 || (a == b);
}

const qzview::Layer& LayerOf(const qzview::Composition& composition, int id) {
    return *composition.Find(id);
}

/// A 96 x 64 composition: a 2-D plate below (`under`, its pixels `aspect` times as wide as
/// tall, which the composition takes) and a 64 x 48 3-D layer above it (its pixels
/// `layer_aspect` times as wide).
struct Scene {
    qzview::Composition composition;
    int under = 0;
    int layer = 0;
    int camera = 0;

    explicit Scene(double aspect = 1.0, double layer_aspect = 1.0) {
        qzview::LayerImage below = Plate("under", 96, 64, 11);
        below.pixelAspect = aspect;
        under = composition.AddImage(std::move(below));
        qzview::LayerImage above = Plate("layer", 64, 48, 12);
        above.pixelAspect = layer_aspect;
        layer = composition.AddImage(std::move(above));
        qzview::LayerValues values = LayerOf(composition, layer).values;
        values.threeD = true;
        composition.SetValues(layer, values);
    }

    void SetLayer(const std::function<void(qzview::LayerValues&)>& change) {
        qzview::LayerValues values = LayerOf(composition, layer).values;
        change(values);
        composition.SetValues(layer, values);
    }
    void SetCamera(const std::function<void(qzview::LayerValues&)>& change) {
        qzview::LayerValues values = LayerOf(composition, camera).values;
        change(values);
        composition.SetValues(camera, values);
    }
    /// The camera 10 pixels in front of the layer with a wide lens, the layer turned 60
    /// degrees about y: its right part lies behind the camera.
    void PartlyBehindTheCamera() {
        SetCamera([](qzview::LayerValues& v) {
            v.position = {48, 32, -10};
            v.zoom = 30;
        });
        SetLayer([](qzview::LayerValues& v) {
            v.position = {48, 32, 0};
            v.rotationY = 60;
        });
    }
};

TEST(CameraProjectionTest, ANewCameraLeavesTheViewAsItWas) {
    Scene scene;
    scene.SetLayer([](qzview::LayerValues& v) {
        v.position = {50.25, 30.5, 0};
        v.rotation = 17;
        v.scale = {80, 110, 100};
    });
    const qzview::Projective before = scene.composition.Transform(scene.layer);
    std::vector<qzview::WorkingPixel> pixels;
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 96; ++x) {
            pixels.push_back(scene.composition.PixelAt(x, y));
        }
    }
    scene.camera = scene.composition.AddCamera();
    const qzview::Layer& camera = LayerOf(scene.composition, scene.camera);
    const double zoom = 96 * 50.0 / 36.0;
    EXPECT_DOUBLE_EQ(camera.values.zoom, zoom);
    EXPECT_EQ(camera.values.position, (qzview::PropertyValue{48, 32, -zoom}));
    EXPECT_EQ(camera.values.anchor, (qzview::PropertyValue{48, 32, 0}));
    EXPECT_EQ(qzview::ActiveCamera(scene.composition.Layers()), &camera);
    // The very transform, and so the very pixels.
    EXPECT_EQ(scene.composition.Transform(scene.layer), before);
    std::size_t i = 0;
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 96; ++x, ++i) {
            ASSERT_EQ(scene.composition.PixelAt(x, y), pixels[i]) << x << "," << y;
        }
    }
    // A layer further away is now smaller: twice the camera's distance shows it at half
    // size about the composition's centre.
    scene.SetLayer([zoom](qzview::LayerValues& v) {
        v.position = {48, 32, zoom};
        v.rotation = 0;
        v.scale = {100, 100, 100};
    });
    const auto corner = scene.composition.Transform(scene.layer).Apply(0, 0);
    ASSERT_TRUE(corner.has_value());
    EXPECT_NEAR((*corner)[0], 48 - 16, 1e-9);
    EXPECT_NEAR((*corner)[1], 32 - 12, 1e-9);
}

TEST(CameraProjectionTest, DeletingMovingAndPuttingBackACameraReplacesThe3DLayers) {
    Scene scene;
    scene.SetLayer([](qzview::LayerValues& v) { v.position = {48, 32, 200}; });
    const qzview::Projective alone = scene.composition.Transform(scene.layer);
    scene.camera = scene.composition.AddCamera();
    const qzview::Projective seen = scene.composition.Transform(scene.layer);
    ASSERT_FALSE(seen == alone) << "a layer 200 pixels away is smaller through the camera";
    const qzview::WorkingPixel corner = scene.composition.PixelAt(20, 12);

    std::optional<qzview::RemovedLayer> removed = scene.composition.Remove(scene.camera);
    ASSERT_TRUE(removed.has_value());
    EXPECT_EQ(scene.composition.Transform(scene.layer), alone);
    scene.composition.Restore(std::move(*removed));
    EXPECT_EQ(scene.composition.Transform(scene.layer), seen);
    EXPECT_EQ(scene.composition.PixelAt(20, 12), corner);

    // A second camera on top takes the view; moved below the first, it hands it back.
    const int second = scene.composition.AddCamera();
    qzview::LayerValues values = LayerOf(scene.composition, second).values;
    values.zoom *= 2;
    scene.composition.SetValues(second, values);
    EXPECT_FALSE(scene.composition.Transform(scene.layer) == seen);
    ASSERT_TRUE(scene.composition.Move(second, 0));
    EXPECT_EQ(scene.composition.Transform(scene.layer), seen);
}

/// Where a camera stands, what it looks at, its Zoom, and a layer turned `turn` degrees
/// about y at `position`.
struct CameraCase {
    V3 eye;
    V3 target;
    double zoom;
    double turn;
    V3 position;
};
constexpr CameraCase kCameraCases[] = {
    {{48, 32, -133.33}, {48, 32, 0}, 133.33, 60, {48, 32, 0}},
    {{10, -20, -90}, {50, 40, 15}, 120, 0, {40, 35, 25}},
    {{120, 30, -60}, {48, 32, 0}, 80, -35, {48, 32, 10}},
    {{48, 32, 200}, {48, 32, 0}, 133.33, 20, {48, 32, 0}}, // from behind the layer
};

TEST(CameraProjectionTest, ALayersPointsLandWhereThePinholeCameraSeesThem) {
    Scene scene;
    scene.camera = scene.composition.AddCamera();
    for (const auto& c : kCameraCases) {
        scene.SetCamera([&](qzview::LayerValues& v) {
            v.position = {c.eye[0], c.eye[1], c.eye[2]};
            v.anchor = {c.target[0], c.target[1], c.target[2]};
            v.zoom = c.zoom;
        });
        scene.SetLayer([&](qzview::LayerValues& v) {
            v.position = {c.position[0], c.position[1], c.position[2]};
            v.rotationY = c.turn;
        });
        const qzview::Layer& layer = LayerOf(scene.composition, scene.layer);
        const qzview::Projective& m = scene.composition.Transform(scene.layer);
        EXPECT_FALSE(m.IsAffine());
        for (const auto& [u, v] :
             {std::array<double, 2>{0, 0}, std::array<double, 2>{64, 0},
              std::array<double, 2>{13.5, 40.25}, std::array<double, 2>{64, 48}}) {
            const auto want =
                Pinhole(c.eye, c.target, c.zoom, 96, 64, TurnedAboutY(layer.values, c.turn, u, v));
            const auto got = m.Apply(u, v);
            ASSERT_EQ(got.has_value(), want.has_value()) << u << "," << v;
            if (want) {
                EXPECT_NEAR((*got)[0], (*want)[0], 1e-9) << u << "," << v;
                EXPECT_NEAR((*got)[1], (*want)[1], 1e-9) << u << "," << v;
            }
        }
    }
}

TEST(CameraProjectionTest, InAnAnamorphicCompositionTheCameraSeesTheSpaceAsDrawn) {
    // The space that the camera sees is the composition as drawn: x in composition pixels
    // times their aspect. A point lands where a pinhole camera there sees it, its x then
    // taken back to composition pixels.
    for (const auto& [aspect, layerAspect] :
         {std::array<double, 2>{2, 1}, std::array<double, 2>{0.5, 1}, std::array<double, 2>{2, 2},
          std::array<double, 2>{1, 0.5}}) {
        SCOPED_TRACE("composition aspect " + std::to_string(aspect) + ", layer " +
                     std::to_string(layerAspect));
        Scene scene(aspect, layerAspect);
        ASSERT_EQ(scene.composition.PixelAspect(), aspect);
        scene.SetLayer([](qzview::LayerValues& v) {
            v.position = {50.25, 30.5, 0};
            v.rotation = 17;
            v.scale = {80, 110, 100};
        });
        const qzview::Projective before = scene.composition.Transform(scene.layer);
        scene.camera = scene.composition.AddCamera();
        // A 50 mm lens on film as wide as the composition is drawn.
        EXPECT_DOUBLE_EQ(LayerOf(scene.composition, scene.camera).values.zoom,
                         96 * aspect * 50.0 / 36.0);
        EXPECT_EQ(scene.composition.Transform(scene.layer), before)
            << "a new camera leaves the view as it was";
        const int drawnWidth = static_cast<int>(96 * aspect);
        // The cases seen from in front of the layer.
        for (const CameraCase& c : std::span(kCameraCases).first(3)) {
            scene.SetCamera([&](qzview::LayerValues& v) {
                v.position = {c.eye[0], c.eye[1], c.eye[2]};
                v.anchor = {c.target[0], c.target[1], c.target[2]};
                v.zoom = c.zoom;
                v.rotation = 0;
            });
            scene.SetLayer([&](qzview::LayerValues& v) {
                v.position = {c.position[0], c.position[1], c.position[2]};
                v.rotation = 0;
                v.scale = {100, 100, 100};
                v.rotationY = c.turn;
            });
            const qzview::Layer& layer = LayerOf(scene.composition, scene.layer);
            const qzview::Projective& m = scene.composition.Transform(scene.layer);
            const V3 eye{c.eye[0] * aspect, c.eye[1], c.eye[2]};
            const V3 target{c.target[0] * aspect, c.target[1], c.target[2]};
            for (const auto& [u, v] :
                 {std::array<double, 2>{0, 0}, std::array<double, 2>{64, 0},
                  std::array<double, 2>{13.5, 40.25}, std::array<double, 2>{64, 48}}) {
                const auto want =
                    Pinhole(eye, target, c.zoom, drawnWidth, 64,
                            TurnedAboutY(layer.values, c.turn, u, v, aspect, layerAspect));
                const auto got = m.Apply(u, v);
                ASSERT_EQ(got.has_value(), want.has_value()) << u << "," << v;
                if (want) {
                    EXPECT_NEAR((*got)[0], (*want)[0] / aspect, 1e-9) << u << "," << v;
                    EXPECT_NEAR((*got)[1], (*want)[1], 1e-9) << u << "," << v;
                }
            }
        }
    }
}

TEST(CameraProjectionTest, TheCamerasOrientationTurnsTheViewAfterLookingAtThePoint) {
    Scene scene;
    scene.camera = scene.composition.AddCamera();
    // Turned half round about its own y axis, the camera looks away from the layer.
    scene.SetCamera([](qzview::LayerValues& v) { v.orientation = {0, 180, 0}; });
    EXPECT_FALSE(scene.composition.Transform(scene.layer).Apply(32, 24).has_value());
    EXPECT_EQ(scene.composition.LayerAt(48, 32), &LayerOf(scene.composition, scene.under));
    // The composite is the 2-D plate's alone (but for the rounding of laying it over
    // nothing and dividing by alpha again).
    qzview::Composition alone;
    alone.AddImage(Plate("under", 96, 64, 11));
    for (const auto& [x, y] : {std::array<int, 2>{48, 32}, std::array<int, 2>{10, 50}}) {
        const qzview::WorkingPixel got = scene.composition.PixelAt(x, y);
        const qzview::WorkingPixel want = alone.PixelAt(x, y);
        for (std::size_t c = 0; c < 4; ++c) {
            EXPECT_NEAR(got[c], want[c], 1e-6) << x << "," << y;
        }
    }
    // Turned about its view axis (Z Rotation), the layer's centre stays at the middle and
    // its right edge's middle goes round it, the other way.
    scene.SetCamera([](qzview::LayerValues& v) {
        v.orientation = {0, 0, 0};
        v.rotation = 90;
    });
    const qzview::Projective& m = scene.composition.Transform(scene.layer);
    const auto centre = m.Apply(32, 24);
    const auto right = m.Apply(64, 24);
    ASSERT_TRUE(centre && right);
    EXPECT_NEAR((*centre)[0], 48, 1e-9);
    EXPECT_NEAR((*centre)[1], 32, 1e-9);
    EXPECT_NEAR((*right)[0], 48, 1e-9);
    EXPECT_NEAR((*right)[1], 32 - 32, 1e-9);
    // 2-D layers are not seen through the camera.
    EXPECT_TRUE(scene.composition.Transform(scene.under).IsAffine());
    EXPECT_EQ(scene.composition.Transform(scene.under).ToAffine().e, 0.0);
}

TEST(CameraProjectionTest, HitTestingOutlineAndHandlesFollowTheProjection) {
    Scene scene;
    scene.camera = scene.composition.AddCamera();
    const double zoom = LayerOf(scene.composition, scene.camera).values.zoom;
    // Twice as far: the 64 x 48 layer covers 32 x 24 pixels about the centre.
    scene.SetLayer([zoom](qzview::LayerValues& v) { v.position = {48, 32, zoom}; });
    const qzview::Layer* layer = &LayerOf(scene.composition, scene.layer);
    const qzview::Layer* under = &LayerOf(scene.composition, scene.under);
    EXPECT_EQ(scene.composition.LayerAt(48, 32), layer);
    EXPECT_EQ(scene.composition.LayerAt(33, 21), layer);
    // Inside where the layer lay without the camera, outside where it is seen now.
    EXPECT_EQ(scene.composition.LayerAt(20, 12), under);
    EXPECT_EQ(scene.composition.LayerAt(63, 32), layer);
    EXPECT_EQ(scene.composition.LayerAt(65, 32), under);
    const auto outline = qzview::LayerOutlineOf(scene.composition, layer);
    ASSERT_TRUE(outline.has_value());
    const double want[4][2] = {{32, 20}, {64, 20}, {64, 44}, {32, 44}};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(outline->corners[i].x, want[i][0], 1e-9);
        EXPECT_NEAR(outline->corners[i].y, want[i][1], 1e-9);
    }
    EXPECT_NEAR(outline->anchor.x, 48, 1e-9);
    EXPECT_NEAR(outline->anchor.y, 32, 1e-9);
    // Turned so that its right side passes behind the camera: no outline of four corners,
    // and what lies behind is not hit.
    scene.SetCamera([](qzview::LayerValues& v) { v.position = {48, 32, -10}; });
    scene.SetLayer([](qzview::LayerValues& v) {
        v.position = {48, 32, 0};
        v.rotationY = 60;
    });
    EXPECT_FALSE(qzview::LayerOutlineOf(scene.composition, layer).has_value());
    const qzview::Projective& m = scene.composition.Transform(scene.layer);
    EXPECT_FALSE(m.Apply(64, 24).has_value()) << "the right edge lies behind the camera";
    ASSERT_TRUE(m.Apply(4, 24).has_value());
    const auto seen = *m.Apply(4, 24);
    EXPECT_EQ(scene.composition.LayerAt(seen[0], seen[1]), layer);
}

/// The 3 x 3 matrix as OpenImageIO takes it (row vectors, the transpose).
Imath::M33f LibraryMatrix(const qzview::Projective& p) {
    const auto& m = p.m;
    return Imath::M33f(
        static_cast<float>(m[0][0]), static_cast<float>(m[1][0]), static_cast<float>(m[2][0]),
        static_cast<float>(m[0][1]), static_cast<float>(m[1][1]), static_cast<float>(m[2][1]),
        static_cast<float>(m[0][2]), static_cast<float>(m[1][2]), static_cast<float>(m[2][2]));
}

TEST(CameraProjectionTest, TheLibrarysWarpDividesByW) {
    // A homography and its double are one map of the plane: the library's warp gives the
    // same pixels for both only because it divides by w; the matrix with its projective
    // terms dropped gives other pixels.
    const qzview::LayerImage plate = Plate("p", 32, 24, 7);
    OIIO::ImageBuf source(Rgba(32, 24));
    for (int y = 0; y < 24; ++y) {
        for (int x = 0; x < 32; ++x) {
            source.setpixel(x, y, plate.WorkingPixel(x, y).data());
        }
    }
    const Imath::M33f h(0.9f, 0.05f, 0.002f, -0.1f, 1.1f, 0.001f, 5.0f, 3.0f, 1.0f);
    const Imath::M33f twice = h * 2.0f;
    const Imath::M33f affine(0.9f, 0.05f, 0.0f, -0.1f, 1.1f, 0.0f, 5.0f, 3.0f, 1.0f);
    OIIO::ImageBuf one(Rgba(40, 32));
    OIIO::ImageBuf two(Rgba(40, 32));
    OIIO::ImageBuf flat(Rgba(40, 32));
    ASSERT_TRUE(OIIO::ImageBufAlgo::warp(one, source, h, "triangle", 0.0f, false,
                                         OIIO::ImageBuf::WrapBlack));
    ASSERT_TRUE(OIIO::ImageBufAlgo::warp(two, source, twice, "triangle", 0.0f, false,
                                         OIIO::ImageBuf::WrapBlack));
    ASSERT_TRUE(OIIO::ImageBufAlgo::warp(flat, source, affine, "triangle", 0.0f, false,
                                         OIIO::ImageBuf::WrapBlack));
    int differs = 0;
    for (int y = 0; y < 32; ++y) {
        for (int x = 0; x < 40; ++x) {
            float a[4];
            float b[4];
            float c[4];
            one.getpixel(x, y, a);
            two.getpixel(x, y, b);
            flat.getpixel(x, y, c);
            for (int k = 0; k < 4; ++k) {
                ASSERT_TRUE(Same(a[k], b[k])) << x << "," << y;
                differs += a[k] != c[k] ? 1 : 0;
            }
        }
    }
    EXPECT_GT(differs, 1000);
}

/// One layer premultiplied, masked and faded as the reference does, warped by the
/// library with `transform` alone, pixel by pixel. Pixels whose centre sees the layer's
/// plane behind the camera (its inverse's w negative, in double precision) are cleared,
/// and those too near the vanishing line to say are marked `unsure`. Where the filter's
/// footprint (found in double precision, with a margin) lies wholly beyond the layer, the
/// library's warp reads only black and gives transparent black, which is put there without
/// asking it: near the plane's vanishing line its footprints grow without bound and a
/// warp of the whole composition would not end.
OIIO::ImageBuf ProjectedLayer(const qzview::Layer& layer, const qzview::Projective& transform,
                              int width, int height, std::vector<bool>& unsure, int& behindDrawn) {
    // Placed() pastes a layer placed on whole pixels: at the origin, among pixels as wide
    // as its own, it gives the layer's pixels prepared as the reference prepares them.
    qzview::Layer flat = layer;
    flat.values = {};
    flat.values.opacity = layer.values.opacity;
    flat.values.mask = layer.values.mask;
    const OIIO::ImageBuf prepared =
        Placed(flat, layer.Width(), layer.Height(), layer.PixelAspect());
    OIIO::ImageBuf warped(Rgba(width, height));
    OIIO::ImageBufAlgo::zero(warped);
    const std::optional<qzview::Projective> inverse = transform.Inverse();
    EXPECT_TRUE(inverse.has_value());
    const Imath::M33f matrix = LibraryMatrix(transform);
    const float zero[4] = {0, 0, 0, 0};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const double xc = x + 0.5;
            const double yc = y + 0.5;
            const auto& n = inverse->m;
            const auto h = inverse->Homogeneous(xc, yc);
            // The size of the terms of w: single precision may not tell its sign when w
            // is within a few millionths of them.
            const double size = std::abs(n[2][0] * xc) + std::abs(n[2][1] * yc) + std::abs(n[2][2]);
            if (std::abs(h[2]) <= 1e-5 * size) {
                unsure[static_cast<std::size_t>(y * width + x)] = true;
                continue;
            }
            const double s = h[0] / h[2];
            const double t = h[1] / h[2];
            // The derivatives of s and t along x and y; the filter reaches twice the
            // larger on each axis (at least 1) from s, t.
            const double ds = std::max({1.0, std::abs((n[0][0] - s * n[2][0]) / h[2]),
                                        std::abs((n[0][1] - s * n[2][1]) / h[2])});
            const double dt = std::max({1.0, std::abs((n[1][0] - t * n[2][0]) / h[2]),
                                        std::abs((n[1][1] - t * n[2][1]) / h[2])});
            const double reach = 1.01;
            if (s + reach * ds + 2 < 0 || s - reach * ds - 2 > layer.Width() ||
                t + reach * dt + 2 < 0 || t - reach * dt - 2 > layer.Height()) {
                continue; // every tap beyond the layer
            }
            if ((2 * reach * ds + 3) * (2 * reach * dt + 3) > (1 << 19)) {
                unsure[static_cast<std::size_t>(y * width + x)] = true;
                continue;
            }
            EXPECT_TRUE(OIIO::ImageBufAlgo::warp(warped, prepared, matrix, "triangle", 0.0f, false,
                                                 OIIO::ImageBuf::WrapBlack,
                                                 OIIO::ROI(x, x + 1, y, y + 1, 0, 1, 0, 4), 1));
            if (h[2] < 0) {
                float p[4];
                warped.getpixel(x, y, p);
                behindDrawn += p[3] != 0.0f ? 1 : 0;
                warped.setpixel(x, y, zero);
            }
        }
    }
    return warped;
}

/// Every pixel of the composition against the library's composite: the 2-D layer placed
/// as the reference places it, the 3-D one warped by its 3 x 3 matrix alone.
void ExpectExact(const Scene& scene, const char* what, int* behindDrawn = nullptr) {
    const qzview::Composition& composition = scene.composition;
    const int w = composition.Width();
    const int h = composition.Height();
    std::vector<bool> unsure(static_cast<std::size_t>(w * h), false);
    int behind = 0;
    const OIIO::ImageBuf below =
        Placed(LayerOf(composition, scene.under), w, h, composition.PixelAspect());
    const OIIO::ImageBuf above =
        ProjectedLayer(LayerOf(composition, scene.layer), composition.Transform(scene.layer), w, h,
                       unsure, behind);
    OIIO::ImageBuf merged;
    ASSERT_TRUE(OIIO::ImageBufAlgo::over(merged, above, below));
    OIIO::ImageBuf straight;
    ASSERT_TRUE(OIIO::ImageBufAlgo::unpremult(straight, merged));
    int wrong = 0;
    int skipped = 0;
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            const qzview::WorkingPixel got = composition.PixelAt(x, y);
            if (unsure[static_cast<std::size_t>(y * w + x)]) {
                ++skipped;
                for (const float c : got) {
                    EXPECT_TRUE(std::isfinite(c)) << what << ": pixel " << x << "," << y;
                }
                EXPECT_GE(got[3], 0.0f);
                EXPECT_LE(got[3], 1.0f);
                continue;
            }
            float want[4];
            straight.getpixel(x, y, want);
            for (int c = 0; c < 4; ++c) {
                if (!Same(got[static_cast<std::size_t>(c)], want[c]) && ++wrong <= 5) {
                    ADD_FAILURE() << what << ": pixel " << x << "," << y << " channel " << c
                                  << " is " << got[static_cast<std::size_t>(c)]
                                  << ", the library's composite has " << want[c];
                }
            }
        }
    }
    EXPECT_EQ(wrong, 0) << what;
    EXPECT_LE(skipped, w * h / 10) << what << ": pixels too near the vanishing line to judge";
    std::cout << what << ": " << skipped << " of " << w * h
              << " pixels too near the vanishing line to compare\n";
    if (behindDrawn != nullptr) {
        *behindDrawn = behind;
    }
}

class ProjectedExactness : public ::testing::Test {
protected:
    void SetUp() override {
        scene.camera = scene.composition.AddCamera();
        qzview::LayerValues under = LayerOf(scene.composition, scene.under).values;
        under.mask = qzview::RectMask{8, 6, 70, 44, 80, 5, 1};
        scene.composition.SetValues(scene.under, under);
        scene.SetLayer([](qzview::LayerValues& v) {
            v.opacity = 50;
            v.mask = qzview::RectMask{6, 5, 50, 36, 100, 4, 0};
        });
    }
    Scene scene;
};

TEST_F(ProjectedExactness, ALayerFurtherAwaySeenFromAside) {
    scene.SetCamera([](qzview::LayerValues& v) {
        v.position = {20, 10, -110};
        v.anchor = {50, 35, 20};
    });
    scene.SetLayer([](qzview::LayerValues& v) { v.position = {51.3, 30.7, 37}; });
    ASSERT_FALSE(scene.composition.Transform(scene.layer).IsAffine());
    ExpectExact(scene, "further away, from aside");
}

TEST_F(ProjectedExactness, ALayerTiltedSixtyDegreesAboutY) {
    scene.SetLayer([](qzview::LayerValues& v) {
        v.position = {47.5, 31.25, 4};
        v.rotationY = 60;
    });
    ExpectExact(scene, "tilted 60 degrees about y");
    // Nearer, larger and turned about x as well: its near part is filtered narrowly, its
    // far part widely.
    scene.SetCamera([](qzview::LayerValues& v) {
        v.position = {48, 32, -40};
        v.zoom = 60;
    });
    scene.SetLayer([](qzview::LayerValues& v) {
        v.rotationX = 25;
        v.scale = {150, 120, 100};
    });
    ExpectExact(scene, "near, tilted about x and y");
}

TEST_F(ProjectedExactness, ALayerPartlyBehindTheCamera) {
    scene.PartlyBehindTheCamera();
    const qzview::Projective& m = scene.composition.Transform(scene.layer);
    ASSERT_FALSE(m.Apply(64, 24).has_value()) << "the right edge lies behind the camera";
    ASSERT_TRUE(m.Apply(0, 24).has_value());
    int behindDrawn = 0;
    ExpectExact(scene, "partly behind the camera", &behindDrawn);
    // The library's warp would have drawn the part behind the camera (mirrored) there.
    EXPECT_GT(behindDrawn, 0);
}

TEST(CameraProjectionTest, AnAnamorphicCompositionThroughTheCameraIsItsExactWarp) {
    // A layer of square pixels tilted in a composition of wide ones, and one of wide pixels
    // in a composition of tall ones.
    for (const auto& [aspect, layerAspect] :
         {std::array<double, 2>{2, 1}, std::array<double, 2>{0.5, 2}}) {
        Scene scene(aspect, layerAspect);
        scene.camera = scene.composition.AddCamera();
        scene.SetLayer([](qzview::LayerValues& v) {
            v.position = {47.5, 31.25, 4};
            v.rotationY = 50;
            v.rotationX = -20;
            v.opacity = 70;
        });
        ASSERT_FALSE(scene.composition.Transform(scene.layer).IsAffine());
        ExpectExact(scene, aspect == 2 ? "square pixels among wide ones, tilted"
                                       : "wide pixels among tall ones, tilted");
    }
}

TEST_F(ProjectedExactness, ARegionIsItsPixelsOneByOne) {
    scene.SetLayer([](qzview::LayerValues& v) {
        v.position = {40, 30, 20};
        v.rotationY = -50;
        v.rotationX = 20;
    });
    const auto snapshot = scene.composition.Snapshot();
    const qzview::PixelRect region{-3, -2, 99, 66};
    std::vector<float> out(static_cast<std::size_t>(region.Width()) * region.Height() * 4);
    qzview::CompositeScratch scratch;
    qzview::CompositeRegion(*snapshot, region, qzview::AlphaForm::Straight, out.data(), scratch);
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 96; ++x) {
            const float* p =
                out.data() + (static_cast<std::size_t>(y - region.y0) * region.Width() +
                              static_cast<std::size_t>(x - region.x0)) *
                                 4;
            ASSERT_EQ(qzview::WorkingPixel({p[0], p[1], p[2], p[3]}),
                      scene.composition.PixelAt(x, y))
                << x << "," << y;
        }
    }
}

TEST(CameraProjectionTest, ThePreviewDrawsTheLayerWhereTheCameraSeesIt) {
    Scene scene;
    scene.camera = scene.composition.AddCamera();
    const double zoom = LayerOf(scene.composition, scene.camera).values.zoom;
    scene.SetLayer([zoom](qzview::LayerValues& v) { v.position = {48, 32, zoom}; });
    // A composition of the 3-D layer alone over the checkerboard: the 2-D one is made
    // transparent.
    qzview::LayerValues under = LayerOf(scene.composition, scene.under).values;
    under.opacity = 0;
    scene.composition.SetValues(scene.under, under);
    qzview::SceneMaker maker;
    const qzview::CanvasScene canvas = maker.Make(scene.composition, {}, nullptr);
    qzview::CanvasMapping mapping;
    QImage view(96, 64, QImage::Format_RGB32);
    qzview::PaintPreview(canvas, mapping, true, view);
    // Drawn over its half-size place about the centre, the checkerboard elsewhere.
    int covered = 0;
    int bare = 0;
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 96; ++x) {
            const bool inside = x >= 33 && x < 63 && y >= 21 && y < 43;
            const bool outside = x < 31 || x >= 65 || y < 19 || y >= 45;
            const bool checker = view.pixel(x, y) == qzview::Checker(x, y);
            covered += inside && !checker ? 1 : 0;
            bare += outside && checker ? 1 : 0;
            if ((inside && checker) || (outside && !checker)) {
                ADD_FAILURE() << "pixel " << x << "," << y << (inside ? " not drawn" : " drawn");
                return;
            }
        }
    }
    EXPECT_GT(covered, 500);
    EXPECT_GT(bare, 3000);
}

TEST(CameraProjectionTest, ThePreviewLeavesOutWhatLiesBehindTheCamera) {
    Scene scene;
    scene.camera = scene.composition.AddCamera();
    scene.PartlyBehindTheCamera();
    qzview::LayerValues under = LayerOf(scene.composition, scene.under).values;
    under.opacity = 0;
    scene.composition.SetValues(scene.under, under);
    ASSERT_FALSE(scene.composition.Transform(scene.layer).Apply(64, 24).has_value());
    qzview::SceneMaker maker;
    const qzview::CanvasScene canvas = maker.Make(scene.composition, {}, nullptr);
    qzview::CanvasMapping mapping;
    QImage view(96, 64, QImage::Format_RGB32);
    qzview::PaintPreview(canvas, mapping, true, view);
    // Against the exact composite, away from the layer's edges: where it shows nothing
    // (also where a projection that ignored the camera's plane would draw the layer's far
    // side mirrored), the checkerboard; where it is nearly opaque, the layer.
    std::vector<float> alphas(96 * 64);
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 96; ++x) {
            alphas[static_cast<std::size_t>(y * 96 + x)] = scene.composition.PixelAt(x, y)[3];
        }
    }
    const auto alpha = [&](int x, int y) {
        float least = 1;
        float most = 0;
        for (int dy = -2; dy <= 2; ++dy) {
            for (int dx = -2; dx <= 2; ++dx) {
                const float a = alphas[static_cast<std::size_t>((y + dy) * 96 + x + dx)];
                least = std::min(least, a);
                most = std::max(most, a);
            }
        }
        return std::array<float, 2>{least, most};
    };
    int empty = 0;
    int drawn = 0;
    for (int y = 2; y < 62; ++y) {
        for (int x = 2; x < 94; ++x) {
            const auto [least, most] = alpha(x, y);
            const bool checker = view.pixel(x, y) == qzview::Checker(x, y);
            if (most == 0.0f) {
                ++empty;
                EXPECT_TRUE(checker) << "drawn at " << x << "," << y;
            } else if (least > 0.3f) {
                ++drawn;
                EXPECT_FALSE(checker) << "not drawn at " << x << "," << y;
            }
        }
    }
    EXPECT_GT(empty, 200);
    EXPECT_GT(drawn, 200);
}

/// Drags the anchor point of a projected layer in a composition of pixels `aspect` times as
/// wide as tall: the anchor moves by the layer pixels between the points under the
/// pointer, and the layer is seen where it was.
void ExpectTheAnchorPointToolKeepsTheLayerInPlace(double aspect) {
    SCOPED_TRACE("aspect " + std::to_string(aspect));
    Scene scene(aspect);
    scene.camera = scene.composition.AddCamera();
    scene.SetCamera([](qzview::LayerValues& v) { v.position = {10, 20, -90}; });
    scene.SetLayer([](qzview::LayerValues& v) {
        v.position = {50, 30, 15};
        v.rotationY = 40;
        v.rotationX = -15;
    });
    const qzview::Layer& layer = LayerOf(scene.composition, scene.layer);
    const qzview::Projective before = scene.composition.Transform(scene.layer);
    const qzview::PropertyValue placedAt = layer.values.position;
    const auto pressed = *before.Apply(32, 24);
    const auto released = *before.Apply(44, 30);
    qzview::LayerDrag drag(layer, qzview::Property::AnchorPoint, {pressed[0], pressed[1]}, before,
                           aspect);
    const qzview::LayerValues values = drag.Move({released[0], released[1]}, false);
    // The anchor moved by the layer pixels between the two points under the pointer...
    EXPECT_NEAR(values.anchor[0], 32 + 12, 1e-6);
    EXPECT_NEAR(values.anchor[1], 24 + 6, 1e-6);
    // ...and the layer is seen where it was.
    scene.composition.SetValues(scene.layer, values);
    const qzview::Projective after = scene.composition.Transform(scene.layer);
    for (const auto& [u, v] : {std::array<double, 2>{0, 0}, std::array<double, 2>{64, 48},
                               std::array<double, 2>{10, 40}}) {
        const auto was = *before.Apply(u, v);
        const auto now = *after.Apply(u, v);
        EXPECT_NEAR(now[0], was[0], 1e-9) << u << "," << v;
        EXPECT_NEAR(now[1], was[1], 1e-9) << u << "," << v;
    }
    EXPECT_GT(std::abs(values.position[2] - placedAt[2]), 1.0) << "the position moved in depth";
}

TEST(CameraProjectionTest, TheAnchorPointToolKeepsAProjectedLayerInPlace) {
    ExpectTheAnchorPointToolKeepsTheLayerInPlace(1.0);
}

TEST(CameraProjectionTest, TheAnchorPointToolKeepsAProjectedLayerInPlaceAmongWidePixels) {
    ExpectTheAnchorPointToolKeepsTheLayerInPlace(2.0);
}

} // namespace
} // namespace qzviewtest::projection
