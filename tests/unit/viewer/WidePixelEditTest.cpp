// The viewer's tools over a composition of pixels wider or taller than square: a layer
// dragged by the pointer stays under it, the rotation tool turns a layer as the pointer
// turns on the screen (and the layer stays a true rectangle there), a corner handle is
// taken where it is drawn and follows the pointer, and the anchor-point tool leaves the
// layer where it is drawn.
#include <cmath>
#include <numbers>

#include "ReferenceComposite.h"
#include "ViewerHarness.h"
#include "editing/LayerDrag.h"
#include "editing/LayerHandles.h"

namespace qzviewtest::aspectedit {
namespace {

using qzview::Property;

class WidePixelEditTest : public ViewerHarness {
protected:
    /// A 160 x 100 plate of pixels `aspect` times as wide as tall (which the composition
    /// takes) under a 50 x 36 plate of square pixels (selected), at zoom 2.
    void StartSquareOverAnamorphic(double aspect) {
        qzview::LayerImage base = Plate("anamorphic", 160, 100, 61);
        base.pixelAspect = aspect;
        StartWith({base, Plate("square", 50, 36, 62)});
        ASSERT_EQ(Window().Comp().PixelAspect(), aspect);
        top_ = Window().Comp().Layers().at(1).id;
        ASSERT_EQ(Window().Editor().Selected(), top_);
        Canvas().ZoomTo(2.0);
        Settle();
        ASSERT_EQ(Canvas().Mapping().Zoom(), 2.0);
    }

    const qzview::Layer& Top() { return *Window().Comp().Find(top_); }

    /// The top layer's point under canvas point `at`.
    std::array<double, 2> LayerPointUnder(QPointF at) {
        const qzview::CompositionPoint p = Canvas().PositionAt(at);
        const auto inverse = Window().Comp().Transform(top_).Inverse();
        EXPECT_TRUE(inverse.has_value());
        return *inverse->Apply(p.x, p.y);
    }

    /// The top layer's corners as drawn on the canvas: top-left, top-right, bottom-right,
    /// bottom-left.
    std::array<QPointF, 4> DrawnCorners() {
        const auto outline = qzview::LayerOutlineOf(Window().Comp(), &Top());
        EXPECT_TRUE(outline.has_value());
        std::array<QPointF, 4> corners;
        for (std::size_t i = 0; i < 4; ++i) {
            corners[i] = Canvas().WidgetPointOf(outline->corners[i]);
        }
        return corners;
    }

    int top_ = 0;
};

TEST_F(WidePixelEditTest, ALayerDraggedByThePointerStaysUnderIt) {
    for (const double aspect : {2.0, 0.5}) {
        SCOPED_TRACE("aspect " + std::to_string(aspect));
        StartSquareOverAnamorphic(aspect);
        QPointF at = Over(70.3, 44.6) + QPointF(0.25, 0.25);
        const auto held = LayerPointUnder(at);
        Mouse(Canvas(), QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton);
        for (const QPointF step : {QPointF(3, 1), QPointF(7, -4), QPointF(-12, 9), QPointF(1, 0)}) {
            at += step;
            Mouse(Canvas(), QEvent::MouseMove, at, Qt::NoButton, Qt::LeftButton);
            Settle();
            const auto under = LayerPointUnder(at);
            EXPECT_NEAR(under[0], held[0], 1e-9);
            EXPECT_NEAR(under[1], held[1], 1e-9);
        }
        Mouse(Canvas(), QEvent::MouseButtonRelease, at, Qt::LeftButton, Qt::NoButton);
        Settle();
        // 1 left and 6 down on the screen: 1 / (2 x aspect) and 3 composition pixels.
        EXPECT_NEAR(Top().values.position[0], 80 - 1 / (2 * aspect), 1e-9);
        EXPECT_NEAR(Top().values.position[1], 50 + 3, 1e-9);
    }
}

TEST_F(WidePixelEditTest, TheRotationToolTurnsALayerAsThePointerTurnsOnTheScreen) {
    for (const double aspect : {2.0, 0.5}) {
        SCOPED_TRACE("aspect " + std::to_string(aspect));
        StartSquareOverAnamorphic(aspect);
        Window().SetTool(qzview::Tool::Rotation);
        // Round the anchor point as drawn, 40 screen pixels from it (over the layer, which
        // the press picks), to 45 degrees below the right (which is 63 or 27 degrees in
        // composition pixels).
        const QPointF anchor = Over(80, 50);
        std::vector<QPointF> path;
        for (int degrees = 0; degrees <= 45; degrees += 15) {
            const double r = degrees * std::numbers::pi / 180.0;
            path.push_back(anchor + QPointF(40 * std::cos(r), 40 * std::sin(r)));
        }
        DragOnCanvas(path);
        // A screen pixel 40 pixels away is under a degree.
        EXPECT_NEAR(Top().values.rotation, 45.0, 1.0);
        // On the screen the layer is a rectangle turned as far, a layer pixel zoom screen
        // pixels square.
        const std::array<QPointF, 4> c = DrawnCorners();
        const QPointF top = c[1] - c[0];
        const QPointF left = c[3] - c[0];
        EXPECT_NEAR(std::hypot(top.x(), top.y()), 50 * 2.0, 1e-6);
        EXPECT_NEAR(std::hypot(left.x(), left.y()), 36 * 2.0, 1e-6);
        EXPECT_NEAR(top.x() * left.x() + top.y() * left.y(), 0.0, 1e-6);
        EXPECT_NEAR(std::atan2(top.y(), top.x()) * 180.0 / std::numbers::pi, Top().values.rotation,
                    1e-9);
    }
}

TEST_F(WidePixelEditTest, ACornerHandleIsTakenWhereItIsDrawnAndFollowsThePointer) {
    for (const double aspect : {2.0, 0.5}) {
        SCOPED_TRACE("aspect " + std::to_string(aspect));
        StartSquareOverAnamorphic(aspect);
        const QPointF corner = DrawnCorners()[2];
        const auto pressedAt = [&](QPointF at) {
            return qzview::OnCornerHandle(Canvas(), Window().Comp(), &Top(),
                                          Canvas().PositionAt(at));
        };
        // Within a few screen pixels of the drawn corner, whatever that is in
        // composition pixels.
        EXPECT_TRUE(pressedAt(corner + QPointF(4.5, 0)));
        EXPECT_TRUE(pressedAt(corner + QPointF(0, -4.5)));
        EXPECT_FALSE(pressedAt(corner + QPointF(9.5, 0)));
        EXPECT_FALSE(pressedAt(corner + QPointF(0, 9.5)));
        // Dragged from there, the corner goes with the pointer (to within the pixel where
        // the press took it).
        const QPointF to = corner + QPointF(14, 8);
        DragOnCanvas({corner, corner + QPointF(5, 3), to});
        EXPECT_NE(Top().values.scale[0], 100.0);
        EXPECT_EQ(Top().values.position[0], 80.0) << "the handle scales, it does not move";
        const QPointF now = DrawnCorners()[2];
        EXPECT_LE(std::abs(now.x() - to.x()), 1.5) << now.x() << " against " << to.x();
        EXPECT_LE(std::abs(now.y() - to.y()), 1.5) << now.y() << " against " << to.y();
    }
}

TEST_F(WidePixelEditTest, TheAnchorPointToolLeavesTheLayerWhereItIsDrawn) {
    for (const double aspect : {2.0, 0.5}) {
        SCOPED_TRACE("aspect " + std::to_string(aspect));
        StartSquareOverAnamorphic(aspect);
        Window().Editor().Type(top_, Property::Rotation, {30, 0, 0});
        Settle();
        const std::array<QPointF, 4> before = DrawnCorners();
        const QPointF anchorBefore = Over(Top().values.position[0], Top().values.position[1]);
        Window().SetTool(qzview::Tool::AnchorPoint);
        const QPointF from = anchorBefore + QPointF(0.5, 0.5);
        DragOnCanvas({from, from + QPointF(6, 2), from + QPointF(20, 10)});
        const std::array<QPointF, 4> after = DrawnCorners();
        for (std::size_t i = 0; i < 4; ++i) {
            EXPECT_NEAR(after[i].x(), before[i].x(), 1e-9) << "corner " << i;
            EXPECT_NEAR(after[i].y(), before[i].y(), 1e-9) << "corner " << i;
        }
        // The anchor went with the pointer, 20 right and 10 down on the screen.
        const auto outline = qzview::LayerOutlineOf(Window().Comp(), &Top());
        ASSERT_TRUE(outline.has_value());
        const QPointF anchorAfter = Canvas().WidgetPointOf(outline->anchor);
        EXPECT_NEAR(anchorAfter.x() - anchorBefore.x(), 20, 1e-9);
        EXPECT_NEAR(anchorAfter.y() - anchorBefore.y(), 10, 1e-9);
    }
}

TEST(PixelAspectDragTest, TheTrackballAndTheTurnAboutZMeasureThePointerAsDrawn) {
    qzview::Layer layer;
    layer.id = 3;
    layer.values.threeD = true;
    layer.values.anchor = {50, 40, 0};
    layer.values.position = {200, 100, 0};
    // In a composition of pixels twice as wide as tall: 15 composition pixels right are
    // 30 pixel heights as drawn, 15 degrees about Y.
    qzview::LayerDrag drag(layer, Property::Orientation, {230, 100}, 2.0);
    drag.Move({245, 100}, false);
    EXPECT_NEAR(drag.Change()[1], -15.0, 1e-9);
    // Down is as before: 20 pixels, 10 degrees about X.
    drag.Move({245, 120}, false);
    EXPECT_NEAR(drag.Change()[0], 10.0, 1e-9);
    // Round the anchor (seen at the position) from the right to 15 right and 30 down,
    // which is 45 degrees as drawn.
    qzview::LayerDrag turn(layer, Property::Orientation, {230, 100}, 2.0);
    turn.Move({215, 130}, true);
    EXPECT_NEAR(turn.Change()[2], 45.0, 1e-9);
    qzview::Layer flat = layer;
    flat.values.threeD = false;
    qzview::LayerDrag rotation(flat, Property::Rotation, {230, 100}, 2.0);
    rotation.Move({215, 130}, false);
    EXPECT_NEAR(rotation.Value()[0], 45.0, 1e-9);
    // With square pixels the same path is 63.4 degrees.
    qzview::LayerDrag square(flat, Property::Rotation, {230, 100});
    square.Move({215, 130}, false);
    EXPECT_NEAR(square.Value()[0], std::atan2(30.0, 15.0) * 180.0 / std::numbers::pi, 1e-9);
}

} // namespace
} // namespace qzviewtest::aspectedit
