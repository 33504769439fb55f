// However fast pointer events arrive, the Info panel is given one pixel per displayed
// frame, the latest, and is repainted at most once for it.
#include <QApplication>

#include "ViewerHarness.h"
#include "docks/DockWorkspace.h"
#include "docks/PanelWidget.h"
#include "script/ScriptSession.h"

namespace qzviewtest {
namespace {

class FramePacingTest : public ViewerHarness {};

TEST_F(FramePacingTest, ManyMovesInOneFrameDeliverOnlyTheLatestPixel) {
    Start();
    Canvas().ZoomTo(1.0);
    Settle();
    qzview::PanelWidget* panel = Window().Docks().Panel(qzhost::script::kInfoTabType);
    ASSERT_NE(panel, nullptr);
    const int ox = Canvas().Mapping().OriginX();
    const int oy = Canvas().Mapping().OriginY();
    const std::uint64_t repaintsBefore = panel->Repaints();
    // Fifty moves arrive before the frame runs, as from a fast mouse.
    for (int i = 0; i < 50; ++i) {
        const QPointF local(ox + 10 + i, oy + 20 + i % 7);
        QMouseEvent move(QEvent::MouseMove, local, Canvas().mapToGlobal(local), Qt::NoButton,
                         Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&Canvas(), &move);
    }
    const auto beforeFrame = Snapshot();
    Window().RunFrame();
    QApplication::processEvents();
    const auto afterFrame = Snapshot();
    EXPECT_NE(Text(beforeFrame, 15), "59") << "no pixel reaches the panel before the frame";
    EXPECT_EQ(Text(afterFrame, 15), "59");
    EXPECT_EQ(Text(afterFrame, 16), "20"); // the last move: 20 + 49 % 7
    EXPECT_EQ(panel->Repaints() - repaintsBefore, 1u);
}

} // namespace
} // namespace qzviewtest
