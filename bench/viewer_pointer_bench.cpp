// What one pointer move costs in the viewer, from the mouse event to the Info panel's
// pixels: a move event sent to the canvas, the frame that delivers the pixel under the
// pointer through suite slot 4 and draws what the panel marked invalid with the host's
// toolkit at UI scale 2, and the repaint of that region of the panel widget, run at once
// instead of waiting for the event loop. Qt runs on its offscreen platform, so no display
// is needed. The pointer alternates between two patches of the sample chart, so every
// move changes the panel's values and its swatch.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <QApplication>
#include <QMouseEvent>
#include <QWindow>

#include "BuildPaths.h"
#include "TempFolder.h"
#include "ViewerBenchSession.h"
#include "app/ViewerSession.h"
#include "canvas/CanvasView.h"
#include "docks/DockWorkspace.h"
#include "docks/PanelWidget.h"
#include "qzhost/MainLoop.h"
#include "script/ScriptSession.h"

namespace {

/// The viewer with the sample chart open and its Info panel on the (offscreen) screen.
class ViewerFixture : public ViewerBenchSession {
public:
    ViewerFixture()
        : ViewerBenchSession("viewer_pointer_bench", QRect(0, 0, 1000, 600),
                             Images(std::string(QZ_SOURCE_DIR) + "/samples/chart.png")) {}

    /// The canvas point (logical coordinates) at the centre of composition pixel `x`, `y`.
    QPointF CanvasPointOf(int x, int y) {
        qzview::CanvasView& canvas = Window().Canvas();
        const qzview::CanvasMapping& mapping = canvas.Mapping();
        const double ratio = canvas.devicePixelRatioF();
        const double sx = mapping.OriginX() + std::floor((x + 0.5) * mapping.Zoom());
        const double sy = mapping.OriginY() + std::floor((y + 0.5) * mapping.Zoom());
        return QPointF((sx + 0.5) / ratio, (sy + 0.5) / ratio);
    }

private:
    static std::vector<qzview::LayerImage> Images(const std::string& path) {
        std::vector<qzview::LayerImage> images;
        images.push_back(qzview::ReadLayerImage(path));
        return images;
    }
};

/// Moves the pointer to `at` on the canvas and brings the move to the panel's pixels.
void MoveAndPaint(qzview::MainWindow& window, QPointF at) {
    qzview::CanvasView& canvas = window.Canvas();
    QMouseEvent move(QEvent::MouseMove, at, canvas.mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(&canvas, &move);
    window.RunFrame();
    // The panel asked Qt to repaint the rectangles that it drew again; the repaint runs now.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest);
}

void PointerMove(benchmark::State& state) {
    ViewerFixture viewer;
    qzview::MainWindow& window = viewer.Window();
    qzview::PanelWidget& panel = *viewer.Panel();
    // Two patches of the chart: red (column 0, row 0) and orange (column 5, row 1).
    const QPointF points[2] = {viewer.CanvasPointOf(20, 20), viewer.CanvasPointOf(220, 60)};
    for (int i = 0; i < 16; ++i) {
        MoveAndPaint(window, points[i % 2]);
    }
    const std::uint64_t repaints = panel.Repaints();
    std::size_t i = 0;
    for (auto _ : state) {
        MoveAndPaint(window, points[i % 2]);
        ++i;
    }
    const std::uint64_t painted = panel.Repaints() - repaints;
    // Every move changes the panel, so every move must reach its pixels.
    if (painted < static_cast<std::uint64_t>(state.iterations())) {
        state.SkipWithError("the panel was not repainted on every move");
    }
    state.counters["panel_repaints_per_move"] =
        static_cast<double>(painted) / static_cast<double>(state.iterations());
}

// The same moves up to the panel's kept image (the frame: delivery and the toolkit's
// drawing of what changed), with the repaint of the widget outside the timing.
void PointerMoveWithoutRepaint(benchmark::State& state) {
    ViewerFixture viewer;
    qzview::MainWindow& window = viewer.Window();
    const QPointF points[2] = {viewer.CanvasPointOf(20, 20), viewer.CanvasPointOf(220, 60)};
    for (int i = 0; i < 16; ++i) {
        MoveAndPaint(window, points[i % 2]);
    }
    std::size_t i = 0;
    for (auto _ : state) {
        qzview::CanvasView& canvas = window.Canvas();
        const QPointF at = points[i % 2];
        QMouseEvent move(QEvent::MouseMove, at, canvas.mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(&canvas, &move);
        window.RunFrame();
        state.PauseTiming();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest);
        state.ResumeTiming();
        ++i;
    }
}

} // namespace

BENCHMARK(PointerMoveWithoutRepaint)->Name("viewer_pointer_move_to_panel_image_scale2");
BENCHMARK(PointerMove)->Name("viewer_pointer_move_to_panel_pixels_scale2");

int main(int argc, char** argv) {
    return RunViewerBenchmarks(argc, argv);
}
