// Editing layers in the viewer: dragging with the tools and scrubbing or typing in the
// Layer Properties dock hand the property to the Info panel, which shows its label, its
// value and its change; the composite follows every edit; undo, redo and Reset Transform
// put values back without a readout.
#include <cmath>
#include <numbers>

#include <QCheckBox>
#include <QDockWidget>
#include <QTest>
#include <QWheelEvent>

#include <OpenImageIO/imagebuf.h>
#include <OpenImageIO/imagebufalgo.h>

#include "ViewerHarness.h"
#include "docks/DockWorkspace.h"
#include "docks/LayerPropertiesPanel.h"
#include "docks/ScrubNumber.h"
#include "qzhost/WorkspaceModel.h"
#include "script/ScriptSession.h"

namespace qzviewtest {
namespace {

using qzview::Property;

class LayerReadoutTest : public ViewerHarness {
protected:
    void StartAtZoom1() {
        Start();
        Canvas().ZoomTo(1.0);
        Settle();
    }

    const qzview::Layer& Layer(std::size_t index = 0) { return Window().Comp().Layers().at(index); }

    /// Scrubs the dock's number of `component` of `property` by `pixels` screen pixels,
    /// through the window system's path, as a person's pointer does (a press there gives
    /// the clicked widget the focus before the widget sees it).
    void Scrub(Property property, int component, int pixels) {
        qzview::ScrubNumber* field = Window().LayerPanel().Field(property, component);
        ASSERT_NE(field, nullptr);
        const QPoint middle(field->width() / 2, field->height() / 2);
        QTest::mousePress(field, Qt::LeftButton, Qt::NoModifier, middle);
        const int steps = std::abs(pixels);
        for (int i = 1; i <= steps; ++i) {
            QTest::mouseMove(field, middle + QPoint(pixels > 0 ? i : -i, 0));
        }
        QTest::mouseRelease(field, Qt::LeftButton, Qt::NoModifier, middle + QPoint(pixels, 0));
        Settle();
    }

    /// Types `text` into the dock's number and presses Enter.
    void Type(Property property, int component, const QString& text) {
        qzview::ScrubNumber* field = Window().LayerPanel().Field(property, component);
        ASSERT_NE(field, nullptr);
        field->setFocus();
        field->setText(text);
        emit field->returnPressed();
        field->clearFocus();
        Settle();
    }

    std::string Line(int row) { return Text(Snapshot(), 20 + row); }

    /// Puts the layer's position on the centre of composition pixel 120, 80 and drags
    /// round it with the rotation tool, 10 degrees a move, from 0 degrees (to the right
    /// of it) to `end` degrees (clockwise on the screen when positive), ending at whole
    /// pixels `last_x`, `last_y` from it.
    void TurnAround(int end, int last_x, int last_y,
                    Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        Type(Property::Position, 0, "120.5");
        Type(Property::Position, 1, "80.5");
        Window().SetTool(qzview::Tool::Rotation);
        std::vector<QPointF> points;
        const int step = end > 0 ? 10 : -10;
        for (int degrees = 0; std::abs(degrees) < std::abs(end); degrees += step) {
            const double r = degrees * std::numbers::pi / 180.0;
            points.push_back(
                Over(120.5 + std::round(80 * std::cos(r)), 80.5 + std::round(80 * std::sin(r))));
        }
        points.push_back(Over(120.5 + last_x, 80.5 + last_y));
        DragOnCanvas(points, modifiers);
    }

    /// The delta row's text without the spaces that align it.
    std::string DeltaRow() {
        std::string text = Line(2);
        text.erase(0, text.find_first_not_of(' '));
        return text;
    }
};

TEST_F(LayerReadoutTest, DraggingALayerShowsItsPositionAndTheChange) {
    StartAtZoom1();
    const int before = Window().Readout().Calls();
    const QPointF from = Over(60.5, 40.5);
    DragOnCanvas({from, from + QPointF(4, -1), from + QPointF(10, -4)});
    EXPECT_EQ(Layer().values.position[0], 130.0);
    EXPECT_EQ(Layer().values.position[1], 76.0);
    EXPECT_EQ(Window().Readout().Calls(), before + 2) << "one readout per move of the drag";
    EXPECT_EQ(Line(0), "chart.png");
    EXPECT_EQ(Line(1), "Position: 130.0, 76.0");
    EXPECT_EQ(DeltaRow(), "\u0394: 10.0, -4.0");
    // The dock follows the drag.
    EXPECT_EQ(Window().LayerPanel().Field(Property::Position, 0)->text(), "130.0");
}

TEST_F(LayerReadoutTest, ADragBackToWhereItBeganShowsNoChange) {
    StartAtZoom1();
    const QPointF from = Over(60.5, 40.5);
    DragOnCanvas({from, from + QPointF(7, 3), from});
    EXPECT_EQ(Line(1), "Position: 120.0, 80.0");
    EXPECT_EQ(DeltaRow(), "") << "no delta lines while the change is zero";
}

TEST_F(LayerReadoutTest, RotatingFourHundredDegreesShowsOneRevolution) {
    StartAtZoom1();
    // The last point lies at 40.006 degrees from the anchor point.
    TurnAround(400, 56, 47);
    EXPECT_NEAR(Layer().values.rotation, 400.006, 1e-3);
    EXPECT_EQ(Line(1), "Rotation: 1x + 40.0\u00b0");
    EXPECT_EQ(DeltaRow(), "\u0394: 1x + 40.0\u00b0");
}

TEST_F(LayerReadoutTest, TheAnchorPointToolMovesTheAnchorAndKeepsTheLayerInPlace) {
    StartAtZoom1();
    Window().SetTool(qzview::Tool::AnchorPoint);
    const QPointF from = Over(120.5, 80.5);
    DragOnCanvas({from, from + QPointF(-20, 10)});
    EXPECT_EQ(Line(1), "Anchor Point: 100.0, 90.0");
    EXPECT_EQ(DeltaRow(), "\u0394: -20.0, 10.0");
    // The layer is drawn where it was: position and anchor moved together.
    EXPECT_EQ(Layer().values.position[0], 100.0);
    EXPECT_EQ(Layer().values.position[1], 90.0);
    const qzview::Affine placed = qzview::LayerToComposition(Layer());
    EXPECT_TRUE(placed.IsIntegerTranslation());
    EXPECT_EQ(placed.e, 0.0);
    EXPECT_EQ(placed.f, 0.0);
}

TEST_F(LayerReadoutTest, DraggingACornerHandleScalesTheLayer) {
    StartAtZoom1();
    // Next to the bottom-right corner handle of the 240 x 160 chart, 119.5 pixels right of
    // the anchor point, dragged 24 pixels right: the layer widens by 143.5 / 119.5.
    const QPointF corner = Over(239.5, 159.5);
    DragOnCanvas({corner, corner + QPointF(12, 0), corner + QPointF(24, 0)});
    EXPECT_NEAR(Layer().values.scale[0], 100.0 * 143.5 / 119.5, 1e-9);
    EXPECT_NEAR(Layer().values.scale[1], 100.0, 1e-9);
    EXPECT_EQ(Line(1), "Scale: 120.1%, 100%");
    EXPECT_EQ(DeltaRow(), "\u0394: 20.1%, 0%");
}

TEST_F(LayerReadoutTest, TheWheelWithAltScalesInSteps) {
    StartAtZoom1();
    const QPointF over = Over(100, 70);
    for (int notch = 0; notch < 3; ++notch) {
        QWheelEvent wheel(over, Canvas().mapToGlobal(over), QPoint(), QPoint(0, 120), Qt::NoButton,
                          Qt::AltModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&Canvas(), &wheel);
    }
    Settle();
    EXPECT_EQ(Line(1), "Scale: 103%");
    EXPECT_EQ(DeltaRow(), "\u0394: 3%");
    EXPECT_EQ(Canvas().Mapping().Zoom(), 1.0) << "the wheel with Alt does not zoom";
    // The three notches are one step of the history.
    Window().Editor().History().undo();
    EXPECT_EQ(Layer().values.scale[0], 100.0);
}

TEST_F(LayerReadoutTest, ScrubbingOpacityShowsOneNumberWithoutAPercentSign) {
    StartAtZoom1();
    Scrub(Property::Opacity, 0, -25);
    EXPECT_EQ(Layer().values.opacity, 75.0);
    EXPECT_EQ(Line(1), "Opacity: 75.0");
    EXPECT_EQ(DeltaRow(), "");
    // The composite follows: the opaque chart is now three-quarters opaque.
    Canvas().ZoomTo(1.0);
    MoveTo(static_cast<int>(Over(10.5, 10.5).x()), static_cast<int>(Over(10.5, 10.5).y()));
    EXPECT_NEAR(Window().Comp().PixelAt(10, 10)[3], 0.75f, 1e-6);
}

TEST_F(LayerReadoutTest, ZRotationReadsRotationOnA2DLayerAndRotationZOnA3DLayer) {
    StartAtZoom1();
    Type(Property::Rotation, 0, "30");
    EXPECT_EQ(Line(1), "Rotation: 30.0\u00b0");
    EXPECT_EQ(DeltaRow(), "\u0394: 30.0\u00b0");
    Window().LayerPanel().ThreeDSwitch()->click();
    Settle();
    ASSERT_TRUE(Layer().values.threeD);
    Type(Property::Rotation, 0, "45");
    EXPECT_EQ(Line(1), "Rotation (z): 45.0\u00b0");
    EXPECT_EQ(DeltaRow(), "\u0394: 15.0\u00b0");
}

TEST_F(LayerReadoutTest, A3DLayerHasThreeComponentPointsAndOrientationReadsPosition) {
    StartAtZoom1();
    Window().LayerPanel().ThreeDSwitch()->click();
    Settle();
    Scrub(Property::Position, 2, 12);
    EXPECT_EQ(Line(1), "Position: 120.0, 80.0, 12.0");
    EXPECT_EQ(DeltaRow(), "\u0394: 0.0, 0.0, 12.0");
    // The orientation stream reads as a point, with no angle formatting.
    Scrub(Property::Orientation, 0, 10);
    EXPECT_EQ(Line(1), "Position: 10.0, 0.0, 0.0");
    // The viewer's position drag on a 3-D layer goes through the three-component slot.
    const QPointF from = Over(60.5, 40.5);
    DragOnCanvas({from, from + QPointF(0, 5)});
    EXPECT_EQ(Line(1), "Position: 120.0, 85.0, 12.0");
    EXPECT_EQ(DeltaRow(), "\u0394: 0.0, 5.0, 0.0");
}

TEST_F(LayerReadoutTest, WithNoLayerSelectedTheDockShowsNoSwitchTurnedOn) {
    StartAtZoom1();
    Window().LayerPanel().ThreeDSwitch()->click();
    Settle();
    ASSERT_TRUE(Layer().values.threeD);
    Window().Editor().Select(0);
    Settle();
    EXPECT_FALSE(Window().LayerPanel().ThreeDSwitch()->isChecked());
    EXPECT_FALSE(Window().LayerPanel().ThreeDSwitch()->isEnabled());
    EXPECT_EQ(Window().LayerPanel().Field(Property::Position, 0), nullptr);
    EXPECT_TRUE(Layer().values.threeD) << "showing no layer changes no layer";
}

TEST_F(LayerReadoutTest, RotatingA3DLayerTurnsItsOrientationWithinATurn) {
    StartAtZoom1();
    Window().LayerPanel().ThreeDSwitch()->click();
    Settle();
    // Counter-clockwise to -100.008 degrees, with Shift: about Z.
    TurnAround(-100, -18, -102, Qt::ShiftModifier);
    EXPECT_NEAR(Layer().values.orientation[2], 259.992, 1e-3);
    EXPECT_EQ(Line(1), "Orientation: 0.0\u00b0, 0.0\u00b0, 260.0\u00b0");
    EXPECT_EQ(DeltaRow(), "\u0394: 0.0\u00b0, 0.0\u00b0, -100.0\u00b0");
}

TEST_F(LayerReadoutTest, ACamerasPointOfInterestReadsPOI) {
    StartAtZoom1();
    Window().Editor().AddCamera();
    Settle();
    ASSERT_EQ(Window().Comp().Layers().size(), 2u);
    const qzview::Layer& camera = Layer(1);
    EXPECT_EQ(camera.kind, qzview::LayerKind::Camera);
    EXPECT_EQ(Window().Editor().Selected(), camera.id);
    Scrub(Property::AnchorPoint, 0, 10);
    EXPECT_EQ(Line(0), "Camera 1");
    EXPECT_EQ(Line(1), "POI: 130.0, 80.0, 0.0");
    EXPECT_EQ(DeltaRow(), "\u0394: 10.0, 0.0, 0.0");
    // A camera is not drawn: the composite is the chart alone.
    EXPECT_EQ(Window().Comp().LayerAt(5, 5), &Layer(0));
}

TEST_F(LayerReadoutTest, MaskPropertiesReadWithoutUnits) {
    StartAtZoom1();
    Window().Editor().AddMask();
    Settle();
    ASSERT_TRUE(Layer().values.mask.has_value());
    Scrub(Property::MaskOpacity, 0, -50);
    EXPECT_EQ(Line(1), "Mask Opacity: 50.0");
    Scrub(Property::MaskFeather, 0, 8);
    EXPECT_EQ(Line(1), "Feather: 8.0");
    Scrub(Property::MaskExpansion, 0, -4);
    EXPECT_EQ(Line(1), "Mask Expansion: -4.0");
    // Outside the mask the layer is transparent; inside it, half opaque.
    EXPECT_EQ(Window().Comp().PixelAt(2, 2)[3], 0.0f);
    EXPECT_NEAR(Window().Comp().PixelAt(120, 80)[3], 0.5f, 1e-6);
}

TEST_F(LayerReadoutTest, TheCompositeUnderThePointerIsOpenImageIOsWarpOfTheLayer) {
    StartAtZoom1();
    Type(Property::Position, 0, "131.5");
    Type(Property::Rotation, 0, "30");
    Type(Property::Scale, 1, "80");
    // The same warp computed here on its own: the chart, premultiplied, rotated by 30
    // degrees and scaled to 80 % vertically about its anchor (120, 80), placed at
    // (131.5, 80), and divided by alpha again.
    const double r = 30.0 * std::numbers::pi / 180.0;
    const double a = std::cos(r);
    const double b = std::sin(r);
    const double c = -std::sin(r) * 0.8;
    const double d = std::cos(r) * 0.8;
    const double e = 131.5 - a * 120.0 - c * 80.0;
    const double f = 80.0 - b * 120.0 - d * 80.0;
    const float matrix[3][3] = {{static_cast<float>(a), static_cast<float>(b), 0.0f},
                                {static_cast<float>(c), static_cast<float>(d), 0.0f},
                                {static_cast<float>(e), static_cast<float>(f), 1.0f}};
    OIIO::ImageBuf file(Sample("chart.png"));
    ASSERT_TRUE(file.read(0, 0, true, OIIO::TypeDesc::FLOAT)) << file.geterror();
    // The chart has no alpha channel: it is opaque. Named R, G, B, A, the fourth channel
    // is the alpha that premult and unpremult use.
    const int order[4] = {0, 1, 2, file.nchannels() > 3 ? 3 : -1};
    const float fill[4] = {0, 0, 0, 1};
    const std::string names[4] = {"R", "G", "B", "A"};
    const OIIO::ImageBuf chart = OIIO::ImageBufAlgo::channels(file, 4, order, fill, names);
    const OIIO::ImageBuf premultiplied = OIIO::ImageBufAlgo::premult(chart);
    OIIO::ImageBuf warped = OIIO::ImageBufAlgo::zero(chart.roi());
    ASSERT_TRUE(OIIO::ImageBufAlgo::warp(warped, premultiplied, matrix, "triangle", 0.0f, false,
                                         OIIO::ImageBuf::WrapBlack));
    const OIIO::ImageBuf expected = OIIO::ImageBufAlgo::unpremult(warped);
    int compared = 0;
    for (const auto& [x, y] :
         std::vector<std::pair<int, int>>{{131, 80}, {60, 50}, {170, 120}, {100, 30}, {205, 95}}) {
        MoveTo(static_cast<int>(Over(x + 0.5, y + 0.5).x()),
               static_cast<int>(Over(x + 0.5, y + 0.5).y()));
        const auto snapshot = Snapshot();
        ASSERT_EQ(Text(snapshot, 15), std::to_string(x));
        ASSERT_EQ(Text(snapshot, 16), std::to_string(y));
        float want[4] = {0, 0, 0, 0};
        expected.getpixel(x, y, want, 4);
        const qzview::WorkingPixel got = Window().Comp().PixelAt(x, y);
        SCOPED_TRACE("pixel " + std::to_string(x) + "," + std::to_string(y));
        for (std::size_t ch = 0; ch < 4; ++ch) {
            EXPECT_NEAR(got[ch], want[ch], 1e-6f);
        }
        // The panel shows that pixel in 8-bit codes; a transparent pixel shows no colour.
        if (want[3] > 0) {
            EXPECT_EQ(Text(snapshot, 7), std::to_string(std::lround(want[0] * 255.0f)));
            EXPECT_EQ(Text(snapshot, 10), std::to_string(std::lround(want[3] * 255.0f)));
            ++compared;
        }
    }
    EXPECT_GE(compared, 4);
}

TEST_F(LayerReadoutTest, UndoRedoAndResetPutValuesBackWithoutAReadout) {
    StartAtZoom1();
    const QPointF from = Over(60.5, 40.5);
    DragOnCanvas({from, from + QPointF(10, -4)});
    Scrub(Property::Opacity, 0, -10);
    const int calls = Window().Readout().Calls();
    const std::string shown = Line(1);
    QUndoStack& history = Window().Editor().History();
    ASSERT_EQ(history.count(), 2);
    history.undo();
    Settle();
    EXPECT_EQ(Layer().values.opacity, 100.0);
    EXPECT_EQ(Layer().values.position[0], 130.0);
    history.undo();
    Settle();
    EXPECT_EQ(Layer().values.position[0], 120.0);
    EXPECT_EQ(Window().LayerPanel().Field(Property::Position, 0)->text(), "120.0");
    history.redo();
    Settle();
    EXPECT_EQ(Layer().values.position[0], 130.0);
    Window().Editor().ResetTransform();
    Settle();
    EXPECT_EQ(Layer().values, Layer().defaults);
    history.undo();
    Settle();
    EXPECT_EQ(Layer().values.position[0], 130.0);
    EXPECT_EQ(Window().Readout().Calls(), calls) << "walking the history reports nothing";
    EXPECT_EQ(Line(1), shown);
}

TEST_F(LayerReadoutTest, InfoTabbedBehindLayerPropertiesShowsTheScrubButClosedDropsIt) {
    StartAtZoom1();
    QDockWidget* info = Window().Docks().FindDock(qzhost::script::kInfoTabType);
    ASSERT_NE(info, nullptr);
    Window().tabifyDockWidget(info, Window().LayersDock());
    Settle();
    Window().LayersDock()->raise();
    Settle();
    const qzhost::TabState state =
        qzhost::WorkspaceModel::Get().State(qzhost::script::kInfoTabType);
    EXPECT_TRUE(state.stacked);
    EXPECT_FALSE(state.front);
    // A panel in a stacked frame counts as visible, behind another tab too.
    Scrub(Property::Opacity, 0, -5);
    EXPECT_EQ(Line(1), "Opacity: 95.0");
    // Closed, it is not given readouts: it shows what it showed when it opens again.
    info->hide();
    Settle();
    Scrub(Property::Opacity, 0, -5);
    EXPECT_EQ(Layer().values.opacity, 90.0);
    info->show();
    Settle();
    EXPECT_EQ(Line(1), "Opacity: 95.0");
    Scrub(Property::Opacity, 0, -5);
    EXPECT_EQ(Line(1), "Opacity: 85.0");
}

} // namespace
} // namespace qzviewtest
