// Where the composition lies on the canvas: a zoom asked for on the command line opens
// with the composition's centre at the canvas's centre; a resize of the window keeps the
// composition point at the centre there; with no zoom chosen, the composition stays fitted
// into the canvas and centred, whatever its size. A composition of pixels wider or taller
// than square is fitted, centred and zoomed as it is drawn, its aspect times as wide.
#include <cmath>
#include <set>

#include <QWheelEvent>

#include "ReferenceComposite.h"
#include "ViewerHarness.h"

namespace qzviewtest {
namespace {

class ViewGeometryTest : public ViewerHarness {
protected:
    /// The canvas's centre, in its (device) pixels.
    QPointF CanvasCentre() { return {Canvas().width() / 2.0, Canvas().height() / 2.0}; }

    /// Screen pixels per composition pixel across: the zoom times the composition's pixel
    /// aspect.
    double Across() { return Canvas().Mapping().Zoom() * Window().Comp().PixelAspect(); }

    /// Where composition point `point` is drawn, worked out here from the zoom, the
    /// composition's pixel aspect and the origin.
    QPointF ScreenOf(QPointF point) {
        const auto& mapping = Canvas().Mapping();
        return {mapping.OriginX() + point.x() * Across(),
                mapping.OriginY() + point.y() * mapping.Zoom()};
    }

    /// The composition point drawn at screen point `screen`.
    QPointF CompositionOf(QPointF screen) {
        const auto& mapping = Canvas().Mapping();
        return {(screen.x() - mapping.OriginX()) / Across(),
                (screen.y() - mapping.OriginY()) / mapping.Zoom()};
    }

    /// Composition point `point` is drawn within a screen pixel of the canvas's centre.
    void ExpectAtCentre(QPointF point, const std::string& what) {
        const QPointF at = ScreenOf(point);
        const QPointF centre = CanvasCentre();
        EXPECT_LE(std::abs(at.x() - centre.x()), 1.0)
            << what << ": composition point " << point.x() << "," << point.y() << " drawn at "
            << at.x() << ", the canvas is " << Canvas().width() << " wide";
        EXPECT_LE(std::abs(at.y() - centre.y()), 1.0)
            << what << ": composition point " << point.x() << "," << point.y() << " drawn at "
            << at.y() << ", the canvas is " << Canvas().height() << " high";
    }

    /// The 400 x 300 composition is drawn at the largest of the zoom levels at which it
    /// fits into the canvas, centred.
    void ExpectFitted(const std::string& what) {
        double fits = 0;
        for (const double level : qzview::CanvasMapping::kLevels) {
            if (400 * level <= Canvas().width() && 300 * level <= Canvas().height()) {
                fits = level;
            }
        }
        EXPECT_EQ(Canvas().Mapping().Zoom(), fits) << what;
        ExpectAtCentre({200, 150}, what);
    }

    void ResizeWindow(int width, int height) {
        Window().resize(width, height);
        Settle();
    }

    /// The sizes that the window takes in turn: larger, smaller, odd ones.
    static constexpr std::pair<int, int> kSizes[] = {
        {1300, 900}, {860, 520}, {1111, 777}, {700, 450}, {1000, 640}};
};

TEST_F(ViewGeometryTest, AZoomAskedForOpensWithTheCompositionCentred) {
    StartWith({Plate("plate", 160, 100, 3)}, 2.0);
    ASSERT_EQ(Canvas().Mapping().Zoom(), 2.0);
    ExpectAtCentre({80, 50}, "at the start");
}

TEST_F(ViewGeometryTest, AResizeKeepsThePointAtTheCentreThere) {
    StartWith({Plate("plate", 160, 100, 3)}, 2.0);
    ASSERT_EQ(Canvas().Mapping().Zoom(), 2.0);
    for (const auto& [width, height] : kSizes) {
        const QPointF centred = CompositionOf(CanvasCentre());
        const QSize before = Canvas().size();
        ResizeWindow(width, height);
        ASSERT_NE(Canvas().size(), before) << "the canvas follows the window";
        EXPECT_EQ(Canvas().Mapping().Zoom(), 2.0) << "a chosen zoom stays";
        ExpectAtCentre(centred, "window " + std::to_string(width) + " x " + std::to_string(height));
    }
}

TEST_F(ViewGeometryTest, WithNoZoomChosenTheCompositionStaysFitted) {
    StartWith({Plate("plate", 400, 300, 4)});
    std::set<double> zooms;
    ExpectFitted("at the start");
    zooms.insert(Canvas().Mapping().Zoom());
    for (const auto& [width, height] : kSizes) {
        ResizeWindow(width, height);
        ExpectFitted("window " + std::to_string(width) + " x " + std::to_string(height));
        zooms.insert(Canvas().Mapping().Zoom());
    }
    EXPECT_GE(zooms.size(), 2u) << "the sizes call for different zooms";
}

TEST_F(ViewGeometryTest, AnAnamorphicCompositionIsFittedCentredAndZoomedAsDrawn) {
    for (const double aspect : {2.0, 0.5}) {
        const std::string what = "aspect " + std::to_string(aspect);
        qzview::LayerImage plate = Plate("plate", 200, 150, 5);
        plate.pixelAspect = aspect;
        StartWith({plate});
        ASSERT_EQ(Window().Comp().PixelAspect(), aspect);
        // Fitted: the largest level at which 200 x aspect by 150 screen pixels fit.
        double fits = 0;
        for (const double level : qzview::CanvasMapping::kLevels) {
            if (200 * aspect * level <= Canvas().width() && 150 * level <= Canvas().height()) {
                fits = level;
            }
        }
        EXPECT_EQ(Canvas().Mapping().Zoom(), fits) << what;
        ExpectAtCentre({100, 75}, what + ", fitted");
        // Actual Pixels: zoom 1, a pixel aspect screen pixels wide, centred.
        Canvas().ActualPixels();
        Settle();
        EXPECT_EQ(Canvas().Mapping().Zoom(), 1.0) << what;
        ExpectAtCentre({100, 75}, what + ", actual pixels");
        // From zoom 2, the wheel zooms in around the pointer: the pixel under it stays
        // under it.
        Canvas().ZoomTo(2.0);
        Settle();
        const QPointF pointer = ScreenOf({130.5, 40.5});
        const qzview::CompositionPoint before = Canvas().PositionAt(pointer);
        ASSERT_EQ(std::floor(before.x), 130) << what;
        ASSERT_EQ(std::floor(before.y), 40) << what;
        for (int notch = 0; notch < 2; ++notch) {
            QWheelEvent wheel(pointer, Canvas().mapToGlobal(pointer), QPoint(), QPoint(0, 120),
                              Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(&Canvas(), &wheel);
            Settle();
        }
        EXPECT_EQ(Canvas().Mapping().Zoom(), 4.0) << what;
        const qzview::CompositionPoint after = Canvas().PositionAt(pointer);
        EXPECT_EQ(std::floor(after.x), 130) << what;
        EXPECT_EQ(std::floor(after.y), 40) << what;
        EXPECT_NEAR(ScreenOf({after.x, after.y}).x(), std::floor(pointer.x()) + 0.5, 1e-9)
            << what << ": the position read is the screen pixel's centre as drawn";
    }
}

} // namespace
} // namespace qzviewtest
