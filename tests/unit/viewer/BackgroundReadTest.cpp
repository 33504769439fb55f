// Opening an image from the File menu: it is read on a worker thread whose progress lines
// reach the panel through the main thread, and a file that cannot be read changes nothing
// but an alert line and a dialog.
#include <QMessageBox>
#include <QSignalSpy>

#include "ViewerHarness.h"

namespace qzviewtest {
namespace {

class BackgroundReadTest : public ViewerHarness {
protected:
    bool WaitForRead(QSignalSpy& spy) {
        for (int i = 0; i < 500 && spy.isEmpty(); ++i) {
            spy.wait(20);
        }
        Settle();
        return !spy.isEmpty();
    }
};

TEST_F(BackgroundReadTest, WorkerProgressArrivesOnTheMainThread) {
    Start();
    QSignalSpy done(&Window(), &qzview::MainWindow::readFinished);
    Window().OpenInBackground(Sample("chart.exr"));
    ASSERT_TRUE(WaitForRead(done));
    EXPECT_TRUE(done.front().front().toBool());
    EXPECT_EQ(Window().Comp().Layers().size(), 2u);
    // The last progress line ("Reading 100%") gives way to the lines of the new layer,
    // which is selected.
    const auto lines = Snapshot().at("lines");
    EXPECT_EQ(lines[0], "Drag to move, corners to scale");
    EXPECT_EQ(lines[1], "chart.exr");
}

TEST_F(BackgroundReadTest, UnreadableFileShowsAnAlertLineAndChangesNothing) {
    Start();
    const std::string missing = (folder_.Path() / "missing.png").string();
    QSignalSpy done(&Window(), &qzview::MainWindow::readFinished);
    Window().OpenInBackground(missing);
    ASSERT_TRUE(WaitForRead(done));
    EXPECT_FALSE(done.front().front().toBool());
    EXPECT_EQ(Window().Comp().Layers().size(), 1u);
    const auto snapshot = Snapshot();
    EXPECT_EQ(snapshot.at("controls").at(20).value("color", std::string()), "alert");
    EXPECT_NE(Window().findChild<QMessageBox*>("readError"), nullptr);
}

} // namespace
} // namespace qzviewtest
