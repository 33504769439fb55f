// An Info panel that is made again comes back whole: when its dock is closed and opened
// again, the host writes the text lines it last wrote and delivers the pixel under the
// pointer at once; and after a drag the hover lines come back with the next pointer move.
#include <QAction>
#include <QDockWidget>

#include "ViewerHarness.h"
#include "qzhost/WorkspaceModel.h"
#include "script/ScriptSession.h"

namespace qzviewtest {
namespace {

using qzhost::script::kInfoTabType;

using PanelReturnTest = ViewerHarness;

TEST_F(PanelReturnTest, AReopenedDockShowsTheLinesAndThePixelAtOnce) {
    Start();
    Canvas().ZoomCentred(1.0);
    Settle();
    MoveOver(Over(45.5, 85.5));
    const auto before = Snapshot();
    ASSERT_EQ(Text(before, 15), "45");
    ASSERT_EQ(before.at("lines")[1], "chart.png");

    InfoDock()->close();
    Settle();
    ASSERT_FALSE(qzhost::WorkspaceModel::Get().State(kInfoTabType).panel);
    InfoCommand()->trigger();
    Settle();
    ASSERT_TRUE(qzhost::WorkspaceModel::Get().State(kInfoTabType).panel);

    // No pointer move: the new panel has the lines and the pixel all the same.
    const auto after = Snapshot();
    EXPECT_EQ(after.at("lines"), before.at("lines"));
    for (const int id : {7, 8, 9, 10, 15, 16}) {
        EXPECT_EQ(Text(after, id), Text(before, id)) << "control " << id;
    }
}

TEST_F(PanelReturnTest, APanelMadeAgainBeforeThePointerCameShowsTheHint) {
    Start();
    InfoDock()->close();
    Settle();
    InfoCommand()->trigger();
    Settle();
    // The image of the command line is selected: its lines describe it.
    const auto lines = Lines();
    EXPECT_EQ(lines.at(0), "Drag to move, corners to scale");
    EXPECT_EQ(lines.at(1), "chart.png");
}

TEST_F(PanelReturnTest, AfterADragTheNextMoveBringsTheHoverLinesBack) {
    Start();
    Canvas().ZoomCentred(1.0);
    Settle();
    MoveOver(Over(100.5, 100.5));
    DragOnCanvas({Over(100.5, 100.5), Over(104.5, 100.5), Over(110.5, 103.5)});
    // The drag's readout holds the lines while the pointer is still.
    EXPECT_NE(Lines().at(0), "Drag to move, corners to scale");
    MoveOver(Over(111.5, 103.5));
    const auto lines = Lines();
    EXPECT_EQ(lines.at(0), "Drag to move, corners to scale");
    EXPECT_EQ(lines.at(1), "chart.png");
}

TEST_F(PanelReturnTest, ADragAfterAReopenIsFollowedByTheHoverLines) {
    Start();
    Canvas().ZoomCentred(1.0);
    Settle();
    InfoDock()->close();
    Settle();
    InfoCommand()->trigger();
    Settle();
    DragOnCanvas({Over(100.5, 100.5), Over(106.5, 100.5)});
    EXPECT_NE(Lines().at(0), "Drag to move, corners to scale");
    MoveOver(Over(107.5, 101.5));
    EXPECT_EQ(Lines().at(0), "Drag to move, corners to scale");
}

} // namespace
} // namespace qzviewtest
