// The Info dock as the host's docking workspace: the Window menu's command, the dock's
// flyout menu, tabbing, hiding and showing, and the layout kept across runs.
#include <fstream>
#include <sstream>
#include <thread>

#include <QAction>
#include <QContextMenuEvent>
#include <QDockWidget>
#include <QMenu>

#include "ViewerHarness.h"
#include "docks/DockTitleBar.h"
#include "docks/DockWorkspace.h"
#include "docks/PanelWidget.h"
#include "qzgp/QZ_InfoPaletteSuite.h"
#include "qzhost/PanelRenderer.h"
#include "qzhost/WorkspaceModel.h"
#include "script/ScriptSession.h"

namespace qzviewtest {
namespace {

using qzhost::script::kInfoTabType;

class DockWorkspaceTest : public ViewerHarness {
protected:
    qzhost::TabState InfoState() { return qzhost::WorkspaceModel::Get().State(kInfoTabType); }
    void WriteLines(const char* a, const char* b, const char* c) {
        session_->Host().Suite().SetTextLines3(a, b, c);
        Settle();
    }
};

TEST_F(DockWorkspaceTest, InfoDockIsTitledByThePanelAndShownAtFirstStart) {
    Start();
    ASSERT_NE(InfoDock(), nullptr);
    EXPECT_EQ(InfoDock()->windowTitle(), "Info");
    EXPECT_TRUE(InfoDock()->isVisible());
    EXPECT_TRUE(InfoState().Visible());
}

TEST_F(DockWorkspaceTest, WindowMenuCommandTogglesTheDockAndItsCheckMark) {
    Start();
    QAction* command = InfoCommand();
    ASSERT_NE(command, nullptr);
    EXPECT_EQ(command->text(), "Info");
    EXPECT_TRUE(command->isEnabled());
    EXPECT_TRUE(command->isChecked());

    command->trigger();
    Settle();
    EXPECT_FALSE(InfoDock()->isVisible());
    EXPECT_FALSE(InfoState().panel) << "closing the dock closes the panel";
    command = InfoCommand();
    EXPECT_FALSE(command->isChecked());

    command->trigger();
    Settle();
    EXPECT_TRUE(InfoDock()->isVisible());
    EXPECT_TRUE(InfoState().panel);
    EXPECT_TRUE(InfoCommand()->isChecked());
}

TEST_F(DockWorkspaceTest, DockCloseButtonClosesThePanel) {
    Start();
    InfoDock()->close();
    Settle();
    EXPECT_FALSE(InfoState().panel);
    EXPECT_FALSE(InfoCommand()->isChecked());
}

TEST_F(DockWorkspaceTest, FlyoutChoiceIsRememberedAcrossARestart) {
    Start();
    QMenu* flyout = Window().Docks().TitleBar(kInfoTabType)->FlyoutMenu();
    emit flyout->aboutToShow();
    const QList<QAction*> items = flyout->actions();
    ASSERT_EQ(items.size(), 8);
    EXPECT_TRUE(items[0]->isChecked());
    // "Percent" is the second item.
    EXPECT_EQ(items[1]->text(), "Percent");
    items[1]->trigger();
    Settle();
    const auto mode = Snapshot().at("mode");
    EXPECT_NE(mode, 0);

    Start();
    EXPECT_EQ(Snapshot().at("mode"), mode);
    emit Window().Docks().TitleBar(kInfoTabType)->FlyoutMenu()->aboutToShow();
    const QList<QAction*> again = Window().Docks().TitleBar(kInfoTabType)->FlyoutMenu()->actions();
    ASSERT_EQ(again.size(), 8);
    EXPECT_TRUE(again[1]->isChecked());
    EXPECT_FALSE(again[0]->isChecked());
}

TEST_F(DockWorkspaceTest, RightClickOnThePanelOpensItsFlyoutMenu) {
    Start();
    qzview::PanelWidget* panel = Window().Docks().Panel(kInfoTabType);
    ASSERT_NE(panel, nullptr);
    QMenu* flyout = Window().Docks().TitleBar(kInfoTabType)->FlyoutMenu();
    QContextMenuEvent click(QContextMenuEvent::Mouse, QPoint(10, 10),
                            panel->mapToGlobal(QPoint(10, 10)));
    QApplication::sendEvent(panel, &click);
    Settle();
    EXPECT_TRUE(flyout->isVisible());
    const QList<QAction*> items = flyout->actions();
    ASSERT_EQ(items.size(), 8);
    EXPECT_EQ(items[1]->text(), "Percent");
    items[1]->trigger();
    flyout->close();
    Settle();
    EXPECT_NE(Snapshot().at("mode"), 0);
}

TEST_F(DockWorkspaceTest, InfoTabbedBehindAnotherDockCountsAsVisible) {
    Start();
    Window().tabifyDockWidget(Window().ProjectDock(), InfoDock());
    Settle();
    Window().ProjectDock()->raise();
    Settle();
    const qzhost::TabState state = InfoState();
    EXPECT_TRUE(state.shown);
    EXPECT_FALSE(state.front);
    EXPECT_TRUE(state.stacked);
    // A panel in a stacked frame counts as visible: the lines are shown at once.
    WriteLines("behind", "another", "tab");
    EXPECT_EQ(Lines()[0], "behind");
}

TEST_F(DockWorkspaceTest, HiddenPanelRunsItsPendingUpdateWhenShownAgain) {
    Start();
    MoveTo(Canvas().Mapping().OriginX() + 2, Canvas().Mapping().OriginY() + 2);
    const std::string before = Text(Snapshot(), 15);
    // A worker delivers a pixel while the panel is shown; the delivery waits for the main
    // thread, and by then the dock has been hidden.
    std::thread worker([this] {
        const PF_PixelFloat pixel = {1.0f, 0.5f, 0.25f, 0.0f};
        const M_Vector2T<double> at = {123.5, 45.5};
        session_->Host().Suite().SetPixelInfo(&pixel, &at, nullptr);
    });
    worker.join();
    InfoDock()->hide();
    Settle();
    EXPECT_FALSE(InfoState().Visible());
    EXPECT_EQ(Text(Snapshot(), 15), before) << "a hidden panel keeps the update for later";
    InfoDock()->show();
    Settle();
    EXPECT_TRUE(InfoState().Visible());
    EXPECT_EQ(Text(Snapshot(), 15), "123");
    EXPECT_EQ(Text(Snapshot(), 16), "45");
}

TEST_F(DockWorkspaceTest, MainThreadLinesForAHiddenPanelAreDropped) {
    Start();
    WriteLines("first", "", "");
    InfoDock()->hide();
    Settle();
    WriteLines("while", "hidden", "");
    InfoDock()->show();
    Settle();
    EXPECT_EQ(Lines()[0], "first");
}

TEST_F(DockWorkspaceTest, MinimisedWindowHidesThePanel) {
    Start();
    Window().showMinimized();
    Settle();
    Window().Docks().UpdateAnswers();
    EXPECT_FALSE(InfoState().shown);
    Window().showNormal();
    Settle();
    Window().Docks().UpdateAnswers();
    EXPECT_TRUE(InfoState().shown);
}

TEST_F(DockWorkspaceTest, PanelDrawnPieceByPieceEqualsAWholeDrawing) {
    Start({"chart.png"}, 2.0);
    MoveTo(Canvas().Mapping().OriginX() + 30, Canvas().Mapping().OriginY() + 30);
    MoveTo(Canvas().Mapping().OriginX() + 130, Canvas().Mapping().OriginY() + 90);
    WriteLines("a line", "another", "");
    qzview::PanelWidget* panel = Window().Docks().Panel(kInfoTabType);
    ASSERT_NE(panel, nullptr);
    const QImage kept = panel->Picture();
    const qzhost::RenderedImage whole =
        qzhost::RenderNode(*qzhost::WorkspaceModel::Get().Frame(kInfoTabType), 2.0);
    ASSERT_EQ(kept.width(), whole.Width());
    ASSERT_EQ(kept.height(), whole.Height());
    int differing = 0;
    for (int y = 0; y < whole.Height(); ++y) {
        for (int x = 0; x < whole.Width(); ++x) {
            const std::uint32_t expected =
                whole.Pixels()[static_cast<std::size_t>(y) * whole.Width() + x];
            differing += kept.pixel(x, y) != expected ? 1 : 0;
        }
    }
    EXPECT_EQ(differing, 0);
}

TEST_F(DockWorkspaceTest, DockIsNeverSmallerThanThePanelsMinimum) {
    Start({"chart.png"}, 2.0);
    const auto minimum = Snapshot().at("min_size");
    qzview::PanelWidget* panel = Window().Docks().Panel(kInfoTabType);
    // The panel gives its minimum in pixels of its UI scale; the screen's pixel ratio is 1.
    EXPECT_EQ(panel->minimumWidth(), static_cast<int>(std::ceil(minimum[0].get<double>())));
    EXPECT_EQ(panel->minimumHeight(), static_cast<int>(std::ceil(minimum[1].get<double>())));
    // The panel follows the dock's width in units.
    const auto size = Snapshot().at("size");
    EXPECT_DOUBLE_EQ(size[0].get<double>(), panel->width() / 2.0);
}

TEST_F(DockWorkspaceTest, LayoutIsSavedAndTheInfoDockComesBackThroughItsCreator) {
    Start();
    Window().tabifyDockWidget(Window().ProjectDock(), InfoDock());
    InfoDock()->raise();
    Settle();
    Stop();
    std::ifstream file(PrefsPath());
    std::stringstream text;
    text << file.rdbuf();
    EXPECT_NE(text.str().find("[Viewer Layout]"), std::string::npos);

    Start();
    ASSERT_NE(InfoDock(), nullptr);
    EXPECT_TRUE(InfoState().panel);
    EXPECT_TRUE(Window().tabifiedDockWidgets(InfoDock()).contains(Window().ProjectDock()));

    // A closed Info dock stays closed at the next start.
    InfoCommand()->trigger();
    Settle();
    Start();
    EXPECT_FALSE(InfoState().panel);
}

} // namespace
} // namespace qzviewtest
