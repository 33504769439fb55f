// What one step of a layer drag costs in the viewer: a move event with the left button
// held on the canvas, which changes the layer's Position and hands the Info palette its
// position readout through suite slot 7; the frame, which composites the 1024 x 512 float
// layer again and turns it into display colours, delivers the pixel under the pointer and
// draws what the panel marked invalid at UI scale 2; and the repaints of the canvas and the
// panel, run at once instead of waiting for the event loop. Qt runs on its offscreen
// platform. The layer moves by whole pixels (a paste) in one benchmark and is turned by 10
// degrees (an affine warp for every step) in the other.
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

#include "CanvasView.h"
#include "DockWorkspace.h"
#include "LayerPropertiesPanel.h"
#include "PanelWidget.h"
#include "TempFolder.h"
#include "ViewerBenchSession.h"
#include "ViewerSession.h"
#include "qzhost/MainLoop.h"
#include "script/ScriptSession.h"

namespace {

constexpr int kWidth = 1024;
constexpr int kHeight = 512;

/// A float layer with a colour ramp across and down, half transparent at the right.
qzview::LayerImage MakeLayer() {
    qzview::LayerImage image;
    image.name = "ramp.exr";
    image.path = image.name;
    image.format = "openexr";
    image.channelType = "float";
    image.width = kWidth;
    image.height = kHeight;
    image.depth = 2;
    image.rgba.resize(static_cast<std::size_t>(kWidth) * kHeight * 4);
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            float* p = image.rgba.data() + (static_cast<std::size_t>(y) * kWidth + x) * 4;
            p[0] = static_cast<float>(x) / kWidth * 2.0f;
            p[1] = static_cast<float>(y) / kHeight;
            p[2] = 0.25f;
            p[3] = x < kWidth / 2 ? 1.0f : 0.5f;
        }
    }
    return image;
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

void DragSteps(benchmark::State& state, double rotation) {
    DragFixture viewer(rotation);
    qzview::MainWindow& window = viewer.Window();
    const QPointF from = viewer.Middle();
    viewer.Mouse(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    const int readouts = window.Readout().Calls();
    const std::uint64_t repaints = viewer.Panel()->Repaints();
    std::size_t i = 0;
    for (auto _ : state) {
        // One screen pixel further each step, back and forth: at zoom 1/2, two composition
        // pixels, so the position readout changes every time.
        const double offset = static_cast<double>(i % 32 < 16 ? i % 16 : 16 - i % 16);
        viewer.Mouse(QEvent::MouseMove, from + QPointF(offset + 1, 0), Qt::NoButton,
                     Qt::LeftButton);
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

void DragStepWholePixels(benchmark::State& state) {
    DragSteps(state, 0.0);
}

void DragStepTurnedLayer(benchmark::State& state) {
    DragSteps(state, 10.0);
}

} // namespace

BENCHMARK(DragStepWholePixels)
    ->Name("viewer_drag_step_1024x512_float")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(DragStepTurnedLayer)
    ->Name("viewer_drag_step_1024x512_float_turned")
    ->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    return RunViewerBenchmarks(argc, argv);
}
