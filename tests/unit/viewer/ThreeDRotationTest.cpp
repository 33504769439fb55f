// The rotation tool on a 3-D layer turns its Orientation as a trackball does: vertical
// motion about X, horizontal motion about Y (half a degree a composition pixel, the
// layer's face following the pointer), and with Shift held the pointer's turns around the
// anchor point about Z. Every step reports the Orientation and its change to the Info
// palette; a whole drag is one step of the history.
#include <cmath>

#include <QCheckBox>
#include <QUndoStack>

#include "ViewerHarness.h"
#include "composition/Camera.h"
#include "docks/LayerPropertiesPanel.h"
#include "docks/ScrubNumber.h"
#include "editing/LayerDrag.h"
#include "editing/LayerEditor.h"

namespace qzviewtest::rotation {
namespace {

using qzview::Property;
using qzview::PropertyValue;

qzview::Layer ThreeDLayer() {
    qzview::Layer layer;
    layer.id = 3;
    layer.name = "plate";
    layer.values.threeD = true;
    layer.values.anchor = {50, 40, 0};
    layer.values.position = {200, 100, 0};
    return layer;
}

void ExpectNear(const PropertyValue& got, const PropertyValue& want, const char* what) {
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(got[i], want[i], 1e-9) << what << " component " << i;
    }
}

TEST(ThreeDRotationTest, VerticalMotionTurnsAboutXAndHorizontalAboutY) {
    const qzview::Layer layer = ThreeDLayer();
    qzview::LayerDrag drag(layer, Property::Orientation, {230, 100});
    // 20 pixels down: 10 degrees about X, the top coming forward.
    drag.Move({230, 120}, false);
    ExpectNear(drag.Value(), {10, 0, 0}, "down");
    ExpectNear(drag.Change(), {10, 0, 0}, "down");
    // Then 30 pixels right: 15 degrees about Y the other way (the left side forward),
    // kept within a turn; the change is how far it turned.
    const qzview::LayerValues& values = drag.Move({260, 120}, false);
    ExpectNear(values.orientation, {10, 345, 0}, "right");
    ExpectNear(drag.Change(), {10, -15, 0}, "right");
    EXPECT_EQ(values.rotation, 0.0) << "the Z Rotation property is not the one turned";
    EXPECT_EQ(values.rotationX, 0.0);
    // Back up and left to where it began: no turn at all.
    drag.Move({230, 100}, false);
    ExpectNear(drag.Value(), {0, 0, 0}, "back");
    ExpectNear(drag.Change(), {0, 0, 0}, "back");
}

TEST(ThreeDRotationTest, WithShiftThePointersTurnAroundTheAnchorTurnsAboutZ) {
    const qzview::Layer layer = ThreeDLayer();
    // From 40 pixels right of the anchor point (drawn at the position) to 40 below it: a
    // quarter turn clockwise, about Z only.
    qzview::LayerDrag drag(layer, Property::Orientation, {240, 100});
    drag.Move({240 - 40 + 40 * std::cos(0.5), 100 + 40 * std::sin(0.5)}, true);
    drag.Move({200, 140}, true);
    ExpectNear(drag.Value(), {0, 0, 90}, "shift");
    ExpectNear(drag.Change(), {0, 0, 90}, "shift");
    // Shift let go: the motion from there turns about X and Y, the Z turn kept.
    drag.Move({200, 150}, false);
    ExpectNear(drag.Value(), {5, 0, 90}, "after shift");
    ExpectNear(drag.Change(), {5, 0, 90}, "after shift");
}

TEST(ThreeDRotationTest, A2DLayerStillTurnsItsRotationAroundTheAnchor) {
    qzview::Layer layer = ThreeDLayer();
    layer.values.threeD = false;
    qzview::LayerDrag drag(layer, Property::Rotation, {240, 100});
    drag.Move({200, 140}, false);
    EXPECT_NEAR(drag.Value()[0], 90, 1e-9);
    EXPECT_NEAR(drag.Change()[0], 90, 1e-9);
}

class ThreeDRotationWindowTest : public ViewerHarness {
protected:
    void StartThreeD() {
        Start();
        Canvas().ZoomTo(1.0);
        Settle();
        Window().LayerPanel().ThreeDSwitch()->click();
        Settle();
        ASSERT_TRUE(Layer().values.threeD);
        Window().SetTool(qzview::Tool::Rotation);
    }

    const qzview::Layer& Layer() { return Window().Comp().Layers().at(0); }
    std::string Line(int row) { return Text(Snapshot(), 20 + row); }
    std::string DeltaRow() {
        std::string text = Line(2);
        text.erase(0, text.find_first_not_of(' '));
        return text;
    }
};

TEST_F(ThreeDRotationWindowTest, DraggingDownTurnsAboutXAndReportsEachStep) {
    StartThreeD();
    const int calls = Window().Readout().Calls();
    const int steps = Window().Editor().History().count();
    const QPointF from = Over(150.5, 60.5);
    DragOnCanvas({from, from + QPointF(0, 8), from + QPointF(0, 20)}, Qt::NoModifier);
    EXPECT_NEAR(Layer().values.orientation[0], 10.0, 1e-9);
    EXPECT_EQ(Window().Readout().Calls(), calls + 2) << "one readout per move of the drag";
    EXPECT_EQ(Line(1), "Orientation: 10.0\u00b0, 0.0\u00b0, 0.0\u00b0");
    EXPECT_EQ(DeltaRow(), "\u0394: 10.0\u00b0, 0.0\u00b0, 0.0\u00b0");
    EXPECT_EQ(Window().Editor().History().count(), steps + 1) << "the drag is one undo step";
    Window().Editor().History().undo();
    Settle();
    EXPECT_EQ(Layer().values.orientation, (PropertyValue{0, 0, 0}));
}

TEST_F(ThreeDRotationWindowTest, DraggingRightTurnsAboutYAndShiftTurnsAboutZ) {
    StartThreeD();
    const QPointF from = Over(150.5, 60.5);
    DragOnCanvas({from, from + QPointF(10, 0), from + QPointF(20, 0)}, Qt::NoModifier);
    EXPECT_NEAR(Layer().values.orientation[1], 350.0, 1e-9);
    EXPECT_EQ(Line(1), "Orientation: 0.0\u00b0, 350.0\u00b0, 0.0\u00b0");
    EXPECT_EQ(DeltaRow(), "\u0394: 0.0\u00b0, -10.0\u00b0, 0.0\u00b0");
    // With Shift, from right of the anchor point (put on the centre of pixel 120, 80, as
    // the pointer's points are pixel centres) to below it: a quarter turn about Z, X and
    // Y as they were.
    Window().Editor().Type(Layer().id, Property::Position, {120.5, 80.5, 0});
    Settle();
    const int steps = Window().Editor().History().count();
    DragOnCanvas({Over(160.5, 80.5), Over(148.5, 108.5), Over(120.5, 120.5)}, Qt::ShiftModifier);
    EXPECT_NEAR(Layer().values.orientation[2], 90.0, 1e-6);
    EXPECT_NEAR(Layer().values.orientation[1], 350.0, 1e-9);
    EXPECT_EQ(Line(1), "Orientation: 0.0\u00b0, 350.0\u00b0, 90.0\u00b0");
    EXPECT_EQ(DeltaRow(), "\u0394: 0.0\u00b0, 0.0\u00b0, 90.0\u00b0");
    EXPECT_EQ(Window().Editor().History().count(), steps + 1);
}

TEST_F(ThreeDRotationWindowTest, ThroughACameraTheTurnAboutZIsAroundWhereTheAnchorIsSeen) {
    StartThreeD();
    Window().Editor().AddCamera();
    Settle();
    // The chart pushed back by the camera's Zoom and moved aside: seen at half size, its
    // anchor point half as far from the centre as its position, on the centre of pixel
    // 140, 80.
    const int chart = Layer().id;
    const double zoom = Window().Comp().Layers().at(1).values.zoom;
    Window().Editor().Type(chart, Property::Position, {161, 81, zoom});
    Settle();
    const auto anchor = Window().Comp().Transform(chart).Apply(120, 80);
    ASSERT_TRUE(anchor.has_value());
    EXPECT_NEAR((*anchor)[0], 140.5, 1e-9);
    EXPECT_NEAR((*anchor)[1], 80.5, 1e-9);
    // A quarter turn around that point, where the layer is hit.
    DragOnCanvas({Over(160.5, 80.5), Over(154.5, 94.5), Over(140.5, 100.5)}, Qt::ShiftModifier);
    EXPECT_NEAR(Layer().values.orientation[2], 90.0, 1e-6);
    EXPECT_EQ(Line(1), "Orientation: 0.0\u00b0, 0.0\u00b0, 90.0\u00b0");
}

TEST_F(ThreeDRotationWindowTest, TheDockShowsAndScrubsTheCamerasZoom) {
    StartThreeD();
    Window().Editor().AddCamera();
    Settle();
    const qzview::Layer& camera = Window().Comp().Layers().at(1);
    ASSERT_EQ(camera.kind, qzview::LayerKind::Camera);
    qzview::LayerPropertiesPanel& dock = Window().LayerPanel();
    ASSERT_NE(dock.Field(Property::Zoom, 0), nullptr);
    EXPECT_EQ(dock.Field(Property::Zoom, 1), nullptr) << "one component";
    EXPECT_EQ(dock.Field(Property::Zoom, 0)->objectName(), "ZOOM.0");
    // Typed, as the dock sends it: the view of the 3-D chart changes, and the Info
    // palette reads the stream.
    const qzview::Projective before = Window().Comp().Transform(Layer().id);
    Window().Editor().Type(camera.id, Property::Zoom, {camera.values.zoom * 2, 0, 0});
    Settle();
    EXPECT_NEAR(camera.values.zoom, 240 * 50.0 / 36.0 * 2, 1e-9);
    EXPECT_NE(Window().Comp().Transform(Layer().id), before);
    EXPECT_EQ(Line(1), "Zoom: 666.7");
    // A zoom of zero or less is kept at the least.
    Window().Editor().Type(camera.id, Property::Zoom, {-5, 0, 0});
    EXPECT_EQ(camera.values.zoom, qzview::kMinimumZoom);
    // Reset Transform puts the camera's Zoom back as it was made, and the view with it.
    Window().Editor().ResetTransform();
    Settle();
    EXPECT_NEAR(camera.values.zoom, 240 * 50.0 / 36.0, 1e-9);
    EXPECT_EQ(Window().Comp().Transform(Layer().id), before);
}

} // namespace
} // namespace qzviewtest::rotation
