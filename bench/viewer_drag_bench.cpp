// What one step of a layer drag costs in the viewer: a move event with the left button
// held on the canvas, which changes the layer's Position and hands the Info palette its
// position readout through suite slot 7; the frame, which composites the 1024 x 512 float
// layer again and turns it into display colours, delivers the pixel under the pointer and
// draws what the panel marked invalid at UI scale 2; and the repaints of the canvas and the
// panel, run at once instead of waiting for the event loop. Qt runs on its offscreen
// platform. The layer is moved untouched (pasted), moved after it was turned by 10 degrees
// (warped once, then its kept warp pasted), and turned with the rotation tool (warped
// every step).
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

#include "TempFolder.h"
#include "ViewerBenchSession.h"
#include "app/ViewerSession.h"
#include "canvas/CanvasView.h"
#include "docks/DockWorkspace.h"
#include "docks/LayerPropertiesPanel.h"
#include "docks/PanelWidget.h"
#include "qzhost/MainLoop.h"
#include "script/ScriptSession.h"

namespace {

constexpr int kWidth = 1024;
constexpr int kHeight = 512;

/// A float layer with a colour ramp across and down, half transparent at the right.
qzview::LayerImage MakeLayer() {
    std::vector<float> rgba(static_cast<std::size_t>(kWidth) * kHeight * 4);
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            float* p = rgba.data() + (static_cast<std::size_t>(y) * kWidth + x) * 4;
            p[0] = static_cast<float>(x) / kWidth * 2.0f;
            p[1] = static_cast<float>(y) / kHeight;
            p[2] = 0.25f;
            p[3] = x < kWidth / 2 ? 1.0f : 0.5f;
        }
    }
    return qzview::FloatImage("ramp.exr", kWidth, kHeight, rgba);
}

class DragFixture : public ViewerBenchSession {
public:
    explicit DragFixture(double rotation)
        : ViewerBenchSession("viewer_drag_bench", QRect(0, 0, 1400, 800), Images()) {
        Window().Canvas().ZoomTo(0.5);
        if (rotation != 0) {
            const qzview::Layer& layer = Window().Comp().Layers().front();
            Window().Editor().Type(layer.id, qzview::Property::Rotation, {rotation, 0, 0});
        }
        Window().RunFrame();
        QCoreApplication::processEvents();
    }

    void Mouse(QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons held) {
        qzview::CanvasView& canvas = Window().Canvas();
        QMouseEvent event(type, at, canvas.mapToGlobal(at), button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(&canvas, &event);
    }

    /// The canvas point over the layer's middle.
    QPointF Middle() {
        const qzview::Layer& layer = Window().Comp().Layers().front();
        return Window().Canvas().WidgetPointOf(
            {layer.values.position[0] - 100.25, layer.values.position[1] - 50.25});
    }

private:
    static std::vector<qzview::LayerImage> Images() {
        std::vector<qzview::LayerImage> images;
        images.push_back(MakeLayer());
        return images;
    }
};

/// Drags with the current tool from `from` through the points that `step` gives for each
/// iteration.
template <typename Step>
void DragSteps(benchmark::State& state, DragFixture& viewer, QPointF from, Step step) {
    qzview::MainWindow& window = viewer.Window();
    viewer.Mouse(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    const int readouts = window.Readout().Calls();
    const std::uint64_t repaints = viewer.Panel()->Repaints();
    std::size_t i = 0;
    for (auto _ : state) {
        viewer.Mouse(QEvent::MouseMove, step(i), Qt::NoButton, Qt::LeftButton);
        window.RunFrame();
        window.Canvas().repaint();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest);
        ++i;
    }
    viewer.Mouse(QEvent::MouseButtonRelease, from, Qt::LeftButton, Qt::NoButton);
    if (window.Readout().Calls() - readouts < static_cast<int>(state.iterations())) {
        state.SkipWithError("a drag step made no readout");
    }
    state.counters["panel_repaints_per_step"] =
        static_cast<double>(viewer.Panel()->Repaints() - repaints) /
        static_cast<double>(state.iterations());
}

/// Moves the layer one screen pixel further each step, back and forth: at zoom 1/2, two
/// composition pixels, so the position readout changes every time.
void MoveSteps(benchmark::State& state, double rotation) {
    DragFixture viewer(rotation);
    const QPointF from = viewer.Middle();
    DragSteps(state, viewer, from, [from](std::size_t i) {
        const double offset = static_cast<double>(i % 32 < 16 ? i % 16 : 16 - i % 16);
        return from + QPointF(offset + 1, 0);
    });
}

void DragStepWholePixels(benchmark::State& state) {
    MoveSteps(state, 0.0);
}

void DragStepTurnedLayer(benchmark::State& state) {
    MoveSteps(state, 10.0);
}

/// Turns the layer with the rotation tool, 2 degrees a step around its anchor point: every
/// step resamples the whole layer.
void RotationStep(benchmark::State& state) {
    DragFixture viewer(0.0);
    viewer.Window().SetTool(qzview::Tool::Rotation);
    const qzview::Layer& layer = viewer.Window().Comp().Layers().front();
    const QPointF centre = viewer.Window().Canvas().WidgetPointOf(
        {layer.values.position[0], layer.values.position[1]});
    const auto at = [centre](double degrees) {
        const double r = degrees * 3.14159265358979 / 180.0;
        return centre + QPointF(150 * std::cos(r), 150 * std::sin(r));
    };
    DragSteps(state, viewer, at(0), [at](std::size_t i) { return at(2.0 * (i % 90 + 1)); });
}

} // namespace

BENCHMARK(DragStepWholePixels)
    ->Name("viewer_drag_step_1024x512_float")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(DragStepTurnedLayer)
    ->Name("viewer_drag_step_1024x512_float_turned")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(RotationStep)
    ->Name("viewer_rotation_drag_step_1024x512_float")
    ->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    return RunViewerBenchmarks(argc, argv);
}
