// A viewer session for a benchmark: the viewer on Qt's offscreen platform with the given
// layers, its own preference file in a scratch folder, the window shown and its Info panel
// on the screen at UI scale 2. Shut down as the application quitting would.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QApplication>
#include <QCoreApplication>
#include <QWindow>

#include "TempFolder.h"
#include "app/ViewerSession.h"
#include "docks/DockWorkspace.h"
#include "docks/PanelWidget.h"
#include "qzhost/MainLoop.h"
#include "script/ScriptSession.h"

class ViewerBenchSession {
public:
    /// `name` names the scratch folder and the benchmark in a failure message; `colour`
    /// (with its display and view) manages colour when given.
    ViewerBenchSession(const char* name, const QRect& geometry,
                       std::vector<qzview::LayerImage> images,
                       std::shared_ptr<const qzhost::ColourConfig> colour = nullptr,
                       std::optional<std::string> display = std::nullopt,
                       std::optional<std::string> view = std::nullopt)
        : folder_(name) {
        qzhost::MainLoop::Get().AdoptCurrentThread();
        qzview::ViewerOptions options;
        options.colour = std::move(colour);
        options.display = std::move(display);
        options.view = std::move(view);
        for (const qzview::LayerImage& image : images) {
            options.images.push_back(image.path);
        }
        options.geometry = geometry;
        options.scale = 2.0;
        options.prefs = (folder_.Path() / "preferences.txt").string();
        session_ = std::make_unique<qzview::ViewerSession>(options, std::move(images));
        session_->Show();
        // Until the window is exposed and the ready poll has run its first frame.
        for (int round = 0; round < 1000 && !Ready(); ++round) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        }
        if (!Ready()) {
            std::fprintf(stderr, "%s: the viewer's Info panel did not show\n", name);
            std::abort();
        }
        QCoreApplication::processEvents();
    }

    ~ViewerBenchSession() {
        session_->Shutdown();
        session_.reset();
    }
    ViewerBenchSession(const ViewerBenchSession&) = delete;
    ViewerBenchSession& operator=(const ViewerBenchSession&) = delete;

    qzview::MainWindow& Window() { return session_->Window(); }
    qzview::PanelWidget* Panel() {
        return session_->Window().Docks().Panel(qzhost::script::kInfoTabType);
    }

private:
    bool Ready() {
        QWindow* handle = session_->Window().windowHandle();
        return handle != nullptr && handle->isExposed() && Panel() != nullptr;
    }

    qztest::TempFolder folder_;
    std::unique_ptr<qzview::ViewerSession> session_;
};

/// The main() of a viewer benchmark program: Qt on its offscreen platform (no display is
/// needed), then the benchmarks that the command line asks for.
inline int RunViewerBenchmarks(int argc, char** argv) {
    // Before the QApplication.
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
