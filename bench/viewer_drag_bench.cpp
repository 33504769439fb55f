// The viewer at plate scale: three 3840 x 2160 half-float layers in a 1600 x 900 window at
// fit zoom. One drag step (a move, a rotation, a corner scale, a scrub of Position or
// Opacity in the dock) brings the new values to the panel's readout and the canvas's
// preview to the screen; when the person lets go, the exact view of the visible region is
// rendered; a pointer move brings the pixel under it to the panel's pixels. Each step is
// measured in the process's CPU time (the exact view's threads included), and the
// process's resident memory is reported with it. Each benchmark runs without a colour
// config (argument ocio 0: the sRGB transfer) and with the project's own config showing its
// "Film" view (ocio 1: a matrix, an exponent and a 1-D table through OpenColorIO's CPU
// processor); a change of exposure, which shows every layer anew, is measured too.
#include <benchmark/benchmark.h>

#include <cmath>
#include <filesystem>
#include <string>

#include <QCoreApplication>
#include <QDoubleSpinBox>
#include <QMouseEvent>

#include "BenchPlates.h"
#include "BuildPaths.h"
#include "ViewerBenchSession.h"
#include "canvas/CanvasView.h"
#include "canvas/ExactView.h"
#include "editing/LayerEditor.h"
#include "validate/ProcessMeasures.h"

namespace {

using benchplates::kHeight;
using benchplates::kWidth;

qzview::LayerImage Plate(int index) {
    return benchplates::Plate(index, qzview::SampleKind::Half);
}

/// The process's resident memory in megabytes.
double ResidentMegabytes() {
    return static_cast<double>(qzhost::validate::ResidentBytes()) / (1024.0 * 1024.0);
}

/// The project's own colour config when the benchmark's argument asks for one.
std::shared_ptr<const qzhost::ColourConfig> ConfigFor(const benchmark::State& state) {
    if (state.range(0) == 0) {
        return nullptr;
    }
    return qzhost::ColourConfig::Load(std::filesystem::path(QZ_SOURCE_DIR) /
                                      "tests/ocio/config.ocio");
}

class PlateViewer : public ViewerBenchSession {
public:
    explicit PlateViewer(const benchmark::State& state)
        : ViewerBenchSession("viewer_drag_bench", QRect(0, 0, 1600, 900), Images(),
                             ConfigFor(state), "Second Monitor", "Film") {
        Window().Canvas().FitToWindow();
        Settle();
    }

    void Settle() {
        Window().RunFrame();
        QCoreApplication::processEvents();
    }

    void Mouse(QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons held) {
        qzview::CanvasView& canvas = Window().Canvas();
        QMouseEvent event(type, at, canvas.mapToGlobal(at), button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(&canvas, &event);
    }

    const qzview::Layer& Top() { return Window().Comp().Layers().back(); }

    /// The canvas point of composition point `x`, `y`.
    QPointF At(double x, double y) { return Window().Canvas().WidgetPointOf({x, y}); }

    /// What one step shows: the frame (readout, preview, panel) painted now.
    void Paint() {
        Window().RunFrame();
        Window().Canvas().repaint();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest);
    }

private:
    static std::vector<qzview::LayerImage> Images() {
        std::vector<qzview::LayerImage> images;
        for (int i = 0; i < 3; ++i) {
            images.push_back(Plate(i));
        }
        return images;
    }
};

void Report(benchmark::State& state, PlateViewer& viewer, int readouts) {
    qzview::MainWindow& window = viewer.Window();
    if (window.Readout().Calls() - readouts < static_cast<int>(state.iterations())) {
        state.SkipWithError("a step made no readout");
    }
    state.counters["resident_MB"] = ResidentMegabytes();
}

/// Drags with the current tool from `from` through the points that `step` gives.
template <typename Step>
void DragSteps(benchmark::State& state, PlateViewer& viewer, QPointF from, Step step) {
    qzview::MainWindow& window = viewer.Window();
    viewer.Mouse(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    const int readouts = window.Readout().Calls();
    std::size_t i = 0;
    for (auto _ : state) {
        viewer.Mouse(QEvent::MouseMove, step(i), Qt::NoButton, Qt::LeftButton);
        viewer.Paint();
        ++i;
    }
    viewer.Mouse(QEvent::MouseButtonRelease, step(i), Qt::LeftButton, Qt::NoButton);
    Report(state, viewer, readouts);
}

/// Moves the top layer one screen pixel further each step, back and forth.
void MoveStep(benchmark::State& state) {
    PlateViewer viewer(state);
    const QPointF from = viewer.At(1900.5, 1000.5);
    DragSteps(state, viewer, from, [from](std::size_t i) {
        const double offset = static_cast<double>(i % 64 < 32 ? i % 32 : 32 - i % 32);
        return from + QPointF(offset + 1, 0);
    });
}

/// Turns the top layer with the rotation tool, 2 degrees a step.
void RotationStep(benchmark::State& state) {
    PlateViewer viewer(state);
    viewer.Window().SetTool(qzview::Tool::Rotation);
    const auto& position = viewer.Top().values.position;
    const QPointF centre = viewer.At(position[0], position[1]);
    const auto at = [centre](double degrees) {
        const double r = degrees * 3.14159265358979 / 180.0;
        return centre + QPointF(150 * std::cos(r), 150 * std::sin(r));
    };
    DragSteps(state, viewer, at(0), [at](std::size_t i) { return at(2.0 * (i % 90 + 1)); });
}

/// Drags the top layer's bottom-right corner handle in and out.
void CornerScaleStep(benchmark::State& state) {
    PlateViewer viewer(state);
    const QPointF corner = viewer.At(kWidth, kHeight);
    DragSteps(state, viewer, corner, [corner](std::size_t i) {
        const double offset = static_cast<double>(i % 64 < 32 ? i % 32 : 32 - i % 32);
        return corner - QPointF(offset + 1, offset * 0.5 + 1);
    });
}

/// Scrubs a property of the top layer in the dock, as the dock's number does.
void ScrubSteps(benchmark::State& state, qzview::Property property, double from, double step) {
    PlateViewer viewer(state);
    qzview::MainWindow& window = viewer.Window();
    const int layer = viewer.Top().id;
    // The pointer rests over the layers: the readout follows what lies under it.
    viewer.Mouse(QEvent::MouseMove, viewer.At(1700.5, 900.5), Qt::NoButton, Qt::NoButton);
    viewer.Paint();
    window.Canvas().SetHold(true);
    window.Editor().BeginEdit(layer, property);
    const int readouts = window.Readout().Calls();
    std::size_t i = 0;
    qzview::PropertyValue value = qzview::GetProperty(viewer.Top().values, property);
    for (auto _ : state) {
        value[0] = from + step * static_cast<double>(i % 40);
        window.Editor().Edit(layer, property, value);
        viewer.Paint();
        ++i;
    }
    window.Editor().EndEdit(layer, property);
    window.Canvas().SetHold(false);
    Report(state, viewer, readouts);
}

void ScrubPosition(benchmark::State& state) {
    ScrubSteps(state, qzview::Property::Position, 1800.0, 3.5);
}

void ScrubOpacity(benchmark::State& state) {
    ScrubSteps(state, qzview::Property::Opacity, 40.0, 1.5);
}

/// The exact view of the window's canvas after the top layer was turned: what the worker
/// renders when the person lets go (on this machine's threads).
void ExactViewAfterRotation(benchmark::State& state) {
    PlateViewer viewer(state);
    qzview::MainWindow& window = viewer.Window();
    window.Editor().Type(viewer.Top().id, qzview::Property::Rotation, {12.5, 0, 0});
    viewer.Paint();
    const qzview::CanvasView& canvas = window.Canvas();
    const QSize size(static_cast<int>(canvas.width() * canvas.devicePixelRatioF()),
                     static_cast<int>(canvas.height() * canvas.devicePixelRatioF()));
    QImage view(size, QImage::Format_RGB32);
    const std::atomic<bool> cancel{false};
    const int threads = static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
    for (auto _ : state) {
        qzview::RenderExactView(canvas.Scene(), canvas.Mapping(), view, cancel, threads);
    }
    state.counters["zoom"] = canvas.Mapping().Zoom();
    state.counters["resident_MB"] = ResidentMegabytes();
}

/// Changes the exposure by half a stop, up and down: every layer's display images are made
/// anew and the canvas shows them.
void ExposureStep(benchmark::State& state) {
    PlateViewer viewer(state);
    QDoubleSpinBox* exposure = viewer.Window().findChild<QDoubleSpinBox*>("exposure");
    std::size_t i = 0;
    for (auto _ : state) {
        exposure->setValue(i % 2 == 0 ? 0.5 : 0.0);
        viewer.Paint();
        ++i;
    }
    state.counters["resident_MB"] = ResidentMegabytes();
}

/// Registers `run` under `name`, without (ocio 0) and with (ocio 1) the colour config.
benchmark::internal::Benchmark* Plates(const char* name, void (*run)(benchmark::State&)) {
    return benchmark::RegisterBenchmark(name, run)
        ->ArgName("ocio")
        ->Arg(0)
        ->Arg(1)
        ->Unit(benchmark::kMillisecond)
        ->MeasureProcessCPUTime();
}

} // namespace

int main(int argc, char** argv) {
    // The exposure step and the exact view run on several threads: their wall time counts.
    Plates("viewer_plates_exposure_step", ExposureStep)->UseRealTime();
    Plates("viewer_plates_move_step", MoveStep);
    Plates("viewer_plates_rotation_step", RotationStep);
    Plates("viewer_plates_corner_scale_step", CornerScaleStep);
    Plates("viewer_plates_scrub_position_step", ScrubPosition);
    Plates("viewer_plates_scrub_opacity_step", ScrubOpacity);
    Plates("viewer_plates_exact_view", ExactViewAfterRotation)->UseRealTime();
    return RunViewerBenchmarks(argc, argv);
}
