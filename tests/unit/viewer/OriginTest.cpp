// The origin of X', Y' is the corner of a pixel: set by Ctrl+click or View > Set Origin at
// Pointer, at any zoom, X' and Y' are then the whole differences of the pixel positions.
#include <cmath>

#include <QAction>
#include <QLabel>
#include <QStatusBar>
#include <QWheelEvent>

#include "ViewerHarness.h"
#include "actions/ViewActions.h"

namespace qzviewtest {
namespace {

class OriginTest : public ViewerHarness {
protected:
    void CtrlClick(const QPointF& at) {
        Mouse(Canvas(), QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton,
              Qt::ControlModifier);
        Mouse(Canvas(), QEvent::MouseButtonRelease, at, Qt::LeftButton, Qt::NoButton,
              Qt::ControlModifier);
        Settle();
    }

    /// X, Y, X', Y' as the panel shows them.
    std::array<std::string, 4> Positions() {
        const auto snapshot = Snapshot();
        return {Text(snapshot, 15), Text(snapshot, 16), Text(snapshot, 17), Text(snapshot, 18)};
    }

    QAction* FindAction(const char* name) {
        for (auto* set : Window().findChildren<qzview::ViewActions*>()) {
            if (QAction* action = set->actions().value(QString::fromLatin1(name))) {
                return action;
            }
        }
        return nullptr;
    }
};

TEST_F(OriginTest, CtrlClickPutsTheOriginAtThePixelCornerAtEveryZoom) {
    Start();
    for (const double zoom : {0.5, 1.0, 3.0, 8.0}) {
        SCOPED_TRACE("zoom " + std::to_string(zoom));
        Canvas().ZoomCentred(zoom);
        Settle();
        // Well inside pixel 164, 42 (at zoom 1/2 a screen pixel covers two composition
        // pixels: its centre is on 164.5, 42.5 or beside it).
        CtrlClick(Over(zoom < 1 ? 164.5 : 164.7, zoom < 1 ? 42.5 : 42.6));
        ASSERT_TRUE(Window().Origin().has_value());
        const double ox = Window().Origin()->x;
        const double oy = Window().Origin()->y;
        EXPECT_EQ(ox, std::floor(ox));
        EXPECT_EQ(oy, std::floor(oy));
        MoveOver(Over(120.5, 80.5));
        const auto at = Positions();
        const int x = std::stoi(at[0]);
        const int y = std::stoi(at[1]);
        EXPECT_EQ(std::stoi(at[2]), x - static_cast<int>(ox));
        EXPECT_EQ(std::stoi(at[3]), y - static_cast<int>(oy));
        if (zoom >= 1) {
            EXPECT_EQ(ox, 164);
            EXPECT_EQ(oy, 42);
            EXPECT_EQ(at[0], "120");
            EXPECT_EQ(at[1], "80");
            EXPECT_EQ(at[2], "-44");
            EXPECT_EQ(at[3], "38");
        }
    }
}

TEST_F(OriginTest, AWheelNotchOnTheSamePixelKeepsTheDifference) {
    Start();
    Canvas().ZoomCentred(2.0);
    Settle();
    CtrlClick(Over(164.7, 42.6));
    const QPointF at = Over(120.75, 80.75);
    MoveOver(at);
    ASSERT_EQ(Positions()[2], "-44");
    QWheelEvent wheel(at, Canvas().mapToGlobal(at), QPoint(), QPoint(0, 120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&Canvas(), &wheel);
    Settle();
    EXPECT_EQ(Canvas().Mapping().Zoom(), 3.0);
    const auto after = Positions();
    EXPECT_EQ(after[0], "120");
    EXPECT_EQ(after[2], "-44");
    EXPECT_EQ(after[3], "38");
}

TEST_F(OriginTest, MenuCommandTakesTheLastPlaceOnTheCanvasAndWaitsForOne) {
    Start();
    Canvas().ZoomCentred(1.0);
    Settle();
    QAction* setOrigin = FindAction("SetOrigin");
    ASSERT_NE(setOrigin, nullptr);
    EXPECT_FALSE(setOrigin->isEnabled()) << "no place on the canvas yet";
    MoveOver(Over(30.5, 60.5));
    EXPECT_TRUE(setOrigin->isEnabled());
    // The pointer then goes to the menu bar, far from that place: the origin is still the
    // pixel last pointed at on the canvas.
    setOrigin->trigger();
    Settle();
    ASSERT_TRUE(Window().Origin().has_value());
    EXPECT_EQ(Window().Origin()->x, 30);
    EXPECT_EQ(Window().Origin()->y, 60);
    auto* label = Window().findChild<QLabel*>("status.origin");
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->text(), "Origin 30, 60");
}

TEST_F(OriginTest, AnOriginAtZeroIsToldInTheStatusBar) {
    Start();
    Canvas().ZoomCentred(1.0);
    Settle();
    CtrlClick(Over(0.3, 0.9));
    ASSERT_TRUE(Window().Origin().has_value());
    EXPECT_EQ(Window().Origin()->x, 0);
    EXPECT_EQ(Window().Origin()->y, 0);
    EXPECT_NE(Window().statusBar()->currentMessage().indexOf("0, 0"), -1);
    // The panel cannot tell it from no origin: X', Y' are hidden.
    MoveOver(Over(10.5, 10.5));
    EXPECT_FALSE(Visible(Snapshot(), 17));
    // Any other origin shows them.
    CtrlClick(Over(1.5, 0.5));
    MoveOver(Over(10.5, 10.5));
    EXPECT_TRUE(Visible(Snapshot(), 17));
    EXPECT_EQ(Text(Snapshot(), 17), "9");
}

TEST_F(OriginTest, TheStatusBarShowsTheZoom) {
    Start();
    auto* zoom = Window().findChild<QLabel*>("status.zoom");
    ASSERT_NE(zoom, nullptr);
    Canvas().ZoomCentred(0.125);
    Settle();
    EXPECT_EQ(zoom->text(), "Zoom 12.5%");
    Canvas().ZoomCentred(8.0);
    Settle();
    EXPECT_EQ(zoom->text(), "Zoom 800%");
}

} // namespace
} // namespace qzviewtest
