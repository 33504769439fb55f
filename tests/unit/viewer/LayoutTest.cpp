// The window's layout comes back as it was left: dock sizes, floating docks (kept on a
// screen), tabs; the docks keep their widths when the window shrinks and grows again;
// Window > Reset Layout puts the default back; at its smallest the window still shows
// every dock's title buttons.
#include <QAbstractButton>
#include <QDockWidget>
#include <QGuiApplication>
#include <QMenu>
#include <QScreen>

#include "ViewerHarness.h"
#include "docks/DockTitleBar.h"
#include "docks/DockWorkspace.h"
#include "qzhost/WorkspaceModel.h"
#include "script/ScriptSession.h"

namespace qzviewtest {
namespace {

using qzhost::script::kInfoTabType;

class LayoutTest : public ViewerHarness {
protected:
    QDockWidget* Project() { return Window().ProjectDock(); }
    QDockWidget* Layers() { return Window().LayersDock(); }

    QAction* ResetLayout() {
        emit Window().WindowMenu()->aboutToShow();
        for (QAction* action : Window().WindowMenu()->actions()) {
            if (action->objectName() == "window.resetLayout") {
                return action;
            }
        }
        return nullptr;
    }

    /// Starts on the chart without a window geometry from the command line, so that the
    /// saved one counts.
    void StartFree() {
        qzview::ViewerOptions options = TestOptions();
        options.geometry.reset();
        options.images = {Sample("chart.png")};
        std::vector<qzview::LayerImage> layers;
        layers.push_back(qzview::ReadLayerImage(options.images.front()));
        Launch(options, std::move(layers));
    }

    /// Resizes the window and lets Qt lay it out (and the docks take their kept widths).
    void ResizeWindow(int width, int height) {
        Window().resize(width, height);
        Settle();
        Settle();
    }
};

TEST_F(LayoutTest, DockSizesAndFloatingDocksComeBackAsSaved) {
    StartFree();
    // Within the screen of the offscreen platform, as a window that is put back must be.
    const QSize size = Window().screen()->availableGeometry().size() - QSize(40, 40);
    Window().resize(size);
    Settle();
    Window().resizeDocks({Layers()}, {420}, Qt::Horizontal);
    Window().resizeDocks({Project(), Layers()}, {200, 420}, Qt::Vertical);
    InfoDock()->setFloating(true);
    InfoDock()->setGeometry(300, 200, 380, 260);
    Settle();
    const int layersWidth = Layers()->width();
    const int projectHeight = Project()->height();
    const QRect infoGeometry = InfoDock()->geometry();
    ASSERT_NEAR(layersWidth, 420, 2);
    Stop();

    StartFree();
    Settle();
    EXPECT_EQ(Window().size(), size);
    EXPECT_EQ(Layers()->width(), layersWidth);
    EXPECT_EQ(Project()->height(), projectHeight);
    ASSERT_NE(InfoDock(), nullptr);
    EXPECT_TRUE(InfoDock()->isFloating());
    EXPECT_EQ(InfoDock()->geometry(), infoGeometry);
    EXPECT_TRUE(qzhost::WorkspaceModel::Get().State(kInfoTabType).panel);
}

TEST_F(LayoutTest, AFloatingDockLeftOffTheScreenComesBackOnIt) {
    Start();
    Layers()->setFloating(true);
    Layers()->setGeometry(-5000, -4000, 300, 300);
    Settle();
    Stop();

    Start();
    Settle();
    ASSERT_TRUE(Layers()->isFloating());
    const QRect frame = Layers()->frameGeometry();
    EXPECT_NE(QGuiApplication::screenAt(QPoint(frame.center().x(), frame.top() + 8)), nullptr)
        << "at " << frame.x() << ", " << frame.y();
}

TEST_F(LayoutTest, ShrinkingAndGrowingTheWindowKeepsTheDocksWidths) {
    Start();
    ResizeWindow(1200, 800);
    Window().resizeDocks({Layers()}, {380}, Qt::Horizontal);
    Settle();
    // A person lets go of the separator.
    Mouse(Window(), QEvent::MouseButtonRelease, QPointF(Layers()->geometry().right() + 2, 300),
          Qt::LeftButton, Qt::NoButton);
    Settle();
    ASSERT_NEAR(Layers()->width(), 380, 2);
    const int kept = Layers()->width();

    ResizeWindow(Window().minimumWidth(), 800);
    EXPECT_LT(Layers()->width(), kept) << "the window is too narrow for the kept width";
    ResizeWindow(1400, 800);
    EXPECT_EQ(Layers()->width(), kept);
}

TEST_F(LayoutTest, ResetLayoutPutsTheDefaultBack) {
    Start();
    Project()->setFloating(true);
    Layers()->hide();
    InfoDock()->close();
    Settle();
    ASSERT_FALSE(qzhost::WorkspaceModel::Get().State(kInfoTabType).panel);
    QAction* reset = ResetLayout();
    ASSERT_NE(reset, nullptr);
    reset->trigger();
    Settle();
    EXPECT_FALSE(Project()->isFloating());
    EXPECT_TRUE(Layers()->isVisible());
    EXPECT_EQ(Window().dockWidgetArea(Project()), Qt::LeftDockWidgetArea);
    EXPECT_EQ(Window().dockWidgetArea(Layers()), Qt::LeftDockWidgetArea);
    ASSERT_NE(InfoDock(), nullptr);
    EXPECT_TRUE(InfoDock()->isVisible());
    EXPECT_EQ(Window().dockWidgetArea(InfoDock()), Qt::RightDockWidgetArea);
    EXPECT_TRUE(qzhost::WorkspaceModel::Get().State(kInfoTabType).panel);
}

TEST_F(LayoutTest, AtItsSmallestTheWindowShowsEveryDocksTitleButtons) {
    Start();
    ResizeWindow(1, 1);
    const QSize smallest = Window().size();
    EXPECT_GE(smallest.width(), 400);
    for (QDockWidget* dock : {Project(), Layers(), InfoDock()}) {
        SCOPED_TRACE(dock->objectName().toStdString());
        const QRect inside = dock->rect();
        ASSERT_FALSE(inside.isEmpty());
        QWidget* bar = dock->titleBarWidget();
        if (bar != nullptr) {
            for (auto* button : bar->findChildren<QAbstractButton*>()) {
                const QRect at(button->mapTo(dock, QPoint(0, 0)), button->size());
                EXPECT_TRUE(inside.contains(at)) << button->toolTip().toStdString();
            }
        } else {
            // Qt's own title bar: its title and its two buttons need this much.
            EXPECT_GE(dock->width(), dock->minimumSizeHint().width());
        }
        EXPECT_LE(dock->geometry().right(), Window().width());
    }
}

} // namespace
} // namespace qzviewtest
