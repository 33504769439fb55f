#include "ViewerHarness.h"
#include "BuildPaths.h"

#include <filesystem>

namespace qzviewtest {

std::string Sample(const char* name) {
    return (std::filesystem::path(QZ_SOURCE_DIR) / "samples" / name).string();
}

void ViewerHarness::Start(std::initializer_list<const char*> samples, double scale) {
    if (session_) {
        // The next session resets the host's records: check this one's first.
        Stop();
        EXPECT_EQ(qzhost::HostControls::Get().Violations(), std::vector<std::string>());
    }
    qzview::ViewerOptions options;
    for (const char* name : samples) {
        options.images.push_back(Sample(name));
    }
    options.prefs = PrefsPath();
    options.plugin = QZ_INFOPAL_LIBRARY;
    options.scale = scale;
    options.geometry = QRect(0, 0, 1000, 640);
    std::vector<qzview::LayerImage> layers;
    for (const std::string& path : options.images) {
        layers.push_back(qzview::ReadLayerImage(path));
    }
    session_ = std::make_unique<qzview::ViewerSession>(options, std::move(layers));
    session_->Window().show();
    Settle();
}

} // namespace qzviewtest
