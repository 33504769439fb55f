#include "ViewerHarness.h"
#include "BuildPaths.h"

#include <filesystem>

namespace qzviewtest {

std::string Sample(const char* name) {
    return (std::filesystem::path(QZ_SOURCE_DIR) / "samples" / name).string();
}

namespace {

/// What every test session is started with: this test's preference file, the plug-in
/// built beside the tests and a 1000 x 640 window.
qzview::ViewerOptions TestOptions(const std::string& prefs, double scale) {
    qzview::ViewerOptions options;
    options.prefs = prefs;
    options.plugin = QZ_INFOPAL_LIBRARY;
    options.scale = scale;
    options.geometry = QRect(0, 0, 1000, 640);
    return options;
}

} // namespace

void ViewerHarness::Launch(const qzview::ViewerOptions& options,
                           std::vector<qzview::LayerImage> layers) {
    if (session_) {
        // The next session resets the host's records: check this one's first.
        Stop();
        EXPECT_EQ(qzhost::HostControls::Get().Violations(), std::vector<std::string>());
    }
    session_ = std::make_unique<qzview::ViewerSession>(options, std::move(layers));
    session_->Window().show();
    Settle();
}

void ViewerHarness::Start(std::initializer_list<const char*> samples, double scale) {
    qzview::ViewerOptions options = TestOptions(PrefsPath(), scale);
    std::vector<qzview::LayerImage> layers;
    for (const char* name : samples) {
        options.images.push_back(Sample(name));
        layers.push_back(qzview::ReadLayerImage(options.images.back()));
    }
    Launch(options, std::move(layers));
}

void ViewerHarness::StartWith(std::vector<qzview::LayerImage> layers, std::optional<double> zoom) {
    qzview::ViewerOptions options = TestOptions(PrefsPath(), 1.0);
    for (const qzview::LayerImage& layer : layers) {
        options.images.push_back(layer.path);
    }
    options.zoom = zoom;
    Launch(options, std::move(layers));
}

} // namespace qzviewtest
