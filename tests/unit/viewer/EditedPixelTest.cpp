// The pixel under the pointer while layers change: after every step of a drag with each
// tool, and after a scrub that changes a layer under a pointer that stays where it is, the
// Info panel shows the composite pixel under the pointer, and that pixel is the one of a
// full composite made with OpenImageIO alone, bit for bit. The layers are floats, so the
// panel shows working values with four decimals.
#include <cmath>
#include <cstdio>
#include <cstring>
#include <numbers>
#include <set>

#include "ReferenceComposite.h"
#include "ViewerHarness.h"
#include "docks/LayerPropertiesPanel.h"

namespace qzviewtest {
namespace {

using qzview::Property;
using qzview::WorkingPixel;

bool SameBits(float a, float b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

class EditedPixelTest : public ViewerHarness {
protected:
    /// Three float layers: a 200 x 150 plate, a smaller one turned and moved off the pixel
    /// grid, and a 90 x 64 one on top (selected), shown at zoom 2 so that a pointer step of
    /// one screen pixel moves a layer by half a composition pixel.
    void StartThreeLayers() {
        StartWith(
            {Plate("base", 200, 150, 31), Plate("middle", 130, 100, 32), Plate("top", 90, 64, 33)});
        ASSERT_EQ(Window().ProjectDepth(), 2);
        const int middle = Window().Comp().Layers().at(1).id;
        Window().Editor().Type(middle, Property::Rotation, {17, 0, 0});
        Window().Editor().Type(middle, Property::Position, {96.3, 77.8, 0});
        top_ = Window().Comp().Layers().at(2).id;
        ASSERT_EQ(Window().Editor().Selected(), top_);
        Canvas().ZoomTo(2.0);
        Settle();
        ASSERT_EQ(Canvas().Mapping().Zoom(), 2.0);
    }

    const qzview::Layer& Top() { return *Window().Comp().Find(top_); }

    /// The canvas point (whole logical pixels) nearest to composition point `x`, `y`.
    QPoint ScreenOf(double x, double y) {
        const QPointF at = Canvas().WidgetPointOf({x, y});
        return {static_cast<int>(std::lround(at.x())), static_cast<int>(std::lround(at.y()))};
    }

    /// The composition pixel under the centre of canvas pixel `screen`, worked out here
    /// from the zoom and the origin.
    std::pair<int, int> PixelUnder(QPoint screen) {
        const double zoom = Canvas().Mapping().Zoom();
        return {
            static_cast<int>(std::floor((screen.x() - Canvas().Mapping().OriginX() + 0.5) / zoom)),
            static_cast<int>(std::floor((screen.y() - Canvas().Mapping().OriginY() + 0.5) / zoom))};
    }

    /// The panel shows the pixel under canvas point `screen`: its position, and the
    /// composition's pixel there, which is the full OpenImageIO composite's pixel bit for
    /// bit. Returns that pixel.
    WorkingPixel ExpectPanelShowsPixelUnder(QPoint screen, const std::string& what) {
        SCOPED_TRACE(what);
        const auto [x, y] = PixelUnder(screen);
        const auto snapshot = Snapshot();
        EXPECT_EQ(Text(snapshot, 15), std::to_string(x));
        EXPECT_EQ(Text(snapshot, 16), std::to_string(y));
        const WorkingPixel pixel = Window().Comp().PixelAt(x, y);
        const OIIO::ImageBuf reference = Reference(Window().Comp());
        float want[4] = {0, 0, 0, 0};
        reference.getpixel(x, y, want, 4);
        for (std::size_t c = 0; c < 4; ++c) {
            EXPECT_TRUE(SameBits(pixel[c], want[c]))
                << "pixel " << x << "," << y << " channel " << c << ": the composition has "
                << pixel[c] << ", the full composite " << want[c];
        }
        // A transparent pixel shows its alpha alone.
        const bool colour = pixel[3] != 0.0f;
        EXPECT_EQ(Text(snapshot, 7), colour ? FourDecimals(pixel[0]) : "");
        EXPECT_EQ(Text(snapshot, 8), colour ? FourDecimals(pixel[1]) : "");
        EXPECT_EQ(Text(snapshot, 9), colour ? FourDecimals(pixel[2]) : "");
        EXPECT_EQ(Text(snapshot, 10), FourDecimals(pixel[3]));
        return pixel;
    }

    /// Presses the left button at `points[0]`, then moves through the others one at a
    /// time, letting the frame run and checking the panel after each; releases at the
    /// last. Returns the pixels read after the moves.
    std::vector<WorkingPixel> DragCheckingEachStep(const std::vector<QPoint>& points) {
        std::vector<WorkingPixel> seen;
        Mouse(Canvas(), QEvent::MouseButtonPress, points.front(), Qt::LeftButton, Qt::LeftButton);
        Settle();
        for (std::size_t i = 1; i < points.size(); ++i) {
            Mouse(Canvas(), QEvent::MouseMove, points[i], Qt::NoButton, Qt::LeftButton);
            Settle();
            seen.push_back(ExpectPanelShowsPixelUnder(points[i], "step " + std::to_string(i)));
        }
        Mouse(Canvas(), QEvent::MouseButtonRelease, points.back(), Qt::LeftButton, Qt::NoButton);
        Settle();
        ExpectPanelShowsPixelUnder(points.back(), "after the release");
        return seen;
    }

    /// How many different pixels `pixels` holds.
    static std::size_t Distinct(const std::vector<WorkingPixel>& pixels) {
        return std::set<WorkingPixel>(pixels.begin(), pixels.end()).size();
    }

    int top_ = 0;
};

TEST_F(EditedPixelTest, EachStepOfAMoveDragShowsTheCompositeUnderThePointer) {
    StartThreeLayers();
    const QPoint from = ScreenOf(90.25, 70.25);
    std::vector<QPoint> points{from};
    for (const QPoint step :
         {QPoint(1, 0), QPoint(1, 1), QPoint(3, 2), QPoint(4, -3), QPoint(-2, 5), QPoint(7, 1)}) {
        points.push_back(points.back() + step);
    }
    const std::vector<WorkingPixel> seen = DragCheckingEachStep(points);
    // The drag moved the top layer by half pixels: 14 screen pixels right, 6 down.
    EXPECT_EQ(Top().values.position[0], 100.0 + 7.0);
    EXPECT_EQ(Top().values.position[1], 75.0 + 3.0);
    EXPECT_GE(Distinct(seen), 4u) << "the pixel under the pointer changes as the layer moves";
}

TEST_F(EditedPixelTest, EachStepOfARotationDragShowsTheCompositeUnderThePointer) {
    StartThreeLayers();
    Window().SetTool(qzview::Tool::Rotation);
    // Round the top layer's anchor point (its centre, at 100, 75), 36 pixels from it.
    std::vector<QPoint> points;
    for (int degrees = 0; degrees <= 120; degrees += 15) {
        const double r = degrees * std::numbers::pi / 180.0;
        points.push_back(ScreenOf(100.0 + 36.0 * std::cos(r), 75.0 + 36.0 * std::sin(r)));
    }
    const std::vector<WorkingPixel> seen = DragCheckingEachStep(points);
    EXPECT_NEAR(Top().values.rotation, 120.0, 1.0);
    EXPECT_GE(Distinct(seen), 6u);
}

TEST_F(EditedPixelTest, EachStepOfACornerScaleDragShowsTheCompositeUnderThePointer) {
    StartThreeLayers();
    // The top layer's bottom-right corner handle, then outward and back in.
    const auto corners = qzview::Corners(Window().Comp().Transform(top_), 90, 64);
    const QPoint corner = ScreenOf(corners[2][0], corners[2][1]);
    std::vector<QPoint> points{corner};
    for (const QPoint step :
         {QPoint(3, 1), QPoint(5, 4), QPoint(9, 2), QPoint(-4, -6), QPoint(-11, -3)}) {
        points.push_back(points.back() + step);
    }
    const std::vector<WorkingPixel> seen = DragCheckingEachStep(points);
    // The press took hold of the handle: the drag scaled the layer, and moved nothing.
    EXPECT_NE(Top().values.scale[0], 100.0);
    EXPECT_NE(Top().values.scale[1], 100.0);
    EXPECT_EQ(Top().values.position[0], 100.0);
    EXPECT_GE(Distinct(seen), 4u);
}

TEST_F(EditedPixelTest, AnOpacityScrubUnderAStillPointerShowsTheNewPixel) {
    StartThreeLayers();
    const QPoint parked = ScreenOf(112.5, 81.5);
    MoveTo(parked.x(), parked.y());
    WorkingPixel before = ExpectPanelShowsPixelUnder(parked, "before the scrub");
    // The Layer Properties dock's scrub, as its number sends it; the pointer stays put.
    qzview::LayerPropertiesPanel& dock = Window().LayerPanel();
    emit dock.editStarted(top_, Property::Opacity);
    for (const double opacity : {63.0, 27.5}) {
        emit dock.edited(top_, Property::Opacity, {opacity, 0, 0});
        Settle();
        ASSERT_EQ(Top().values.opacity, opacity);
        const WorkingPixel now =
            ExpectPanelShowsPixelUnder(parked, "opacity " + std::to_string(opacity));
        EXPECT_NE(now, before) << "the layer under the pointer changed";
        before = now;
    }
    emit dock.editFinished(top_, Property::Opacity);
    Settle();
    EXPECT_EQ(ExpectPanelShowsPixelUnder(parked, "after the scrub"), before);
}

TEST_F(EditedPixelTest, APositionEditUnderAStillPointerShowsTheNewPixel) {
    StartThreeLayers();
    const QPoint parked = ScreenOf(84.5, 66.5);
    MoveTo(parked.x(), parked.y());
    WorkingPixel before = ExpectPanelShowsPixelUnder(parked, "before the edit");
    qzview::LayerEditor& editor = Window().Editor();
    editor.BeginEdit(top_, Property::Position);
    for (const auto& [x, y] : std::vector<std::pair<double, double>>{{103.3, 73.2}, {97.6, 79.9}}) {
        editor.Edit(top_, Property::Position, {x, y, 0});
        Settle();
        const WorkingPixel now =
            ExpectPanelShowsPixelUnder(parked, "position " + std::to_string(x));
        EXPECT_NE(now, before) << "the layer under the pointer moved";
        before = now;
    }
    editor.EndEdit(top_, Property::Position);
    Settle();
    EXPECT_EQ(ExpectPanelShowsPixelUnder(parked, "after the edit"), before);
}

} // namespace
} // namespace qzviewtest
