#include "ViewerHarness.h"
#include "BuildPaths.h"

#include <filesystem>

#include <QAction>
#include <QDockWidget>
#include <QMenu>

#include "docks/DockWorkspace.h"
#include "script/ScriptSession.h"

namespace qzviewtest {

std::string Sample(const char* name) {
    return (std::filesystem::path(QZ_SOURCE_DIR) / "samples" / name).string();
}

QDockWidget* ViewerHarness::InfoDock() {
    return Window().Docks().FindDock(qzhost::script::kInfoTabType);
}

QAction* ViewerHarness::InfoCommand() {
    emit Window().WindowMenu()->aboutToShow();
    return Window().WindowMenu()->findChild<QAction*>("command.2028");
}

qzview::ViewerOptions ViewerHarness::TestOptions(double scale) const {
    qzview::ViewerOptions options;
    options.prefs = PrefsPath();
    options.plugin = QZ_INFOPAL_LIBRARY;
    options.scale = scale;
    options.geometry = QRect(0, 0, 1000, 640);
    return options;
}

void ViewerHarness::Launch(const qzview::ViewerOptions& options,
                           std::vector<qzview::LayerImage> layers,
                           std::vector<std::string> unreadable) {
    if (session_) {
        // The next session resets the host's records: check this one's first.
        Stop();
        EXPECT_EQ(qzhost::HostControls::Get().Violations(), std::vector<std::string>());
    }
    session_ =
        std::make_unique<qzview::ViewerSession>(options, std::move(layers), std::move(unreadable));
    session_->Window().show();
    Settle();
}

void ViewerHarness::Start(std::initializer_list<const char*> samples, double scale) {
    qzview::ViewerOptions options = TestOptions(scale);
    std::vector<qzview::LayerImage> layers;
    for (const char* name : samples) {
        options.images.push_back(Sample(name));
        layers.push_back(qzview::ReadLayerImage(options.images.back()));
    }
    Launch(options, std::move(layers));
}

void ViewerHarness::StartWith(std::vector<qzview::LayerImage> layers, std::optional<double> zoom) {
    qzview::ViewerOptions options = TestOptions();
    for (const qzview::LayerImage& layer : layers) {
        options.images.push_back(layer.path);
    }
    options.zoom = zoom;
    Launch(options, std::move(layers));
}

} // namespace qzviewtest
