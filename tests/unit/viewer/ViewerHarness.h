// A viewer session on the bundled chart for a widget test: its own preference file, the
// window shown on the offscreen platform, and ways to move the pointer and read the
// Info panel as the host script's snapshot shows it. A test fails when the host recorded
// a violation of its contract during it.
#pragma once

#include <chrono>
#include <cstdio>
#include <thread>

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QApplication>
#include <QMouseEvent>

class QAction;
class QDockWidget;

#include "TempFolder.h"
#include "app/ViewerSession.h"
#include "canvas/CanvasView.h"
#include "qzhost/HostControls.h"
#include "script/Json.h"

namespace qzviewtest {

/// The path of a bundled sample image.
std::string Sample(const char* name);

/// A value as the panel writes it in a float project: four decimals.
inline std::string FourDecimals(float value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.4f", static_cast<double>(value));
    return text;
}

class ViewerHarness : public ::testing::Test {
protected:
    ViewerHarness() : folder_("qzview-test") {}

    void TearDown() override {
        session_.reset();
        EXPECT_EQ(qzhost::HostControls::Get().Violations(), std::vector<std::string>())
            << "the host recorded contract violations";
    }

    std::string PrefsPath() const { return (folder_.Path() / "preferences.txt").string(); }

    /// Starts a session on the bundled `samples` with this test's preference file.
    void Start(std::initializer_list<const char*> samples = {"chart.png"}, double scale = 1.0);
    /// Starts a session on `layers` (read or made beforehand) with this test's preference
    /// file, opening at `zoom` as the command line's --zoom does (none: fitted).
    void StartWith(std::vector<qzview::LayerImage> layers,
                   std::optional<double> zoom = std::nullopt);
    void Stop() { session_.reset(); }

    qzview::MainWindow& Window() { return session_->Window(); }
    qzview::CanvasView& Canvas() { return Window().Canvas(); }

    /// Lets Qt handle what is queued, then runs the viewer's frame.
    void Settle() {
        for (int i = 0; i < 3; ++i) {
            QApplication::processEvents();
        }
        Window().RunFrame();
        QApplication::processEvents();
    }

    /// Settles, then waits (up to ten seconds) until the canvas shows the exact view
    /// instead of its preview.
    bool SettleExact() {
        Settle();
        const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (Canvas().ShowingPreview() && std::chrono::steady_clock::now() < until) {
            QApplication::processEvents(QEventLoop::AllEvents, 5);
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        QApplication::processEvents();
        return !Canvas().ShowingPreview();
    }

    /// Moves the pointer to canvas pixel `x`, `y` and lets the frame run.
    void MoveTo(int x, int y) {
        const QPointF local(x, y);
        QMouseEvent move(QEvent::MouseMove, local, Canvas().mapToGlobal(local), Qt::NoButton,
                         Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&Canvas(), &move);
        Settle();
    }

    /// The canvas widget point over composition point `x`, `y`.
    QPointF Over(double x, double y) {
        return Canvas().WidgetPointOf(qzview::CompositionPoint{x, y});
    }

    /// Moves the pointer (no button down) to the canvas widget point `at` and settles.
    void MoveOver(const QPointF& at) {
        Mouse(Canvas(), QEvent::MouseMove, at, Qt::NoButton, Qt::NoButton);
        Settle();
    }

    /// Sends a mouse event of `type` to `widget` at its point `local`.
    static void Mouse(QWidget& widget, QEvent::Type type, const QPointF& local,
                      Qt::MouseButton button, Qt::MouseButtons buttons,
                      Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QMouseEvent event(type, local, widget.mapToGlobal(local), button, buttons, modifiers);
        QApplication::sendEvent(&widget, &event);
    }

    /// Drags with the left button on the canvas through `points` (logical canvas
    /// coordinates), `modifiers` held throughout: pressed at the first, moved through the
    /// others, released at the last.
    void DragOnCanvas(const std::vector<QPointF>& points,
                      Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        Mouse(Canvas(), QEvent::MouseButtonPress, points.front(), Qt::LeftButton, Qt::LeftButton,
              modifiers);
        for (std::size_t i = 1; i < points.size(); ++i) {
            Mouse(Canvas(), QEvent::MouseMove, points[i], Qt::NoButton, Qt::LeftButton, modifiers);
        }
        Mouse(Canvas(), QEvent::MouseButtonRelease, points.back(), Qt::LeftButton, Qt::NoButton,
              modifiers);
        Settle();
    }

    qzhost::script::Json Snapshot() { return session_->Host().Run({{"op", "snapshot"}}); }
    /// The panel's three text lines as the snapshot shows them.
    std::vector<std::string> Lines() {
        return Snapshot().at("lines").get<std::vector<std::string>>();
    }

    /// The dock of the Info panel (none while the panel is closed).
    QDockWidget* InfoDock();
    /// The Window menu's command of the Info panel, as the menu shows it.
    QAction* InfoCommand();

    /// The text of control `id` of the panel's snapshot.
    static std::string Text(const qzhost::script::Json& snapshot, int id) {
        const auto& control = snapshot.at("controls").at(static_cast<std::size_t>(id));
        return control.value("text", std::string("<no text>"));
    }
    static bool Visible(const qzhost::script::Json& snapshot, int id) {
        return snapshot.at("controls").at(static_cast<std::size_t>(id)).value("visible", false);
    }

    /// What every test session is started with: this test's preference file, the plug-in
    /// built beside the tests and a 1000 x 640 window.
    qzview::ViewerOptions TestOptions(double scale = 1.0) const;

    /// Starts a session with `options` on `layers` (after checking the one before, if any),
    /// with `unreadable` the reasons of images that could not be read; shows its window and
    /// settles.
    void Launch(const qzview::ViewerOptions& options, std::vector<qzview::LayerImage> layers,
                std::vector<std::string> unreadable = {});

    qztest::TempFolder folder_;
    std::unique_ptr<qzview::ViewerSession> session_;
};

} // namespace qzviewtest
