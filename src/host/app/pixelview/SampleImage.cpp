#include "pixelview/SampleImage.h"

#include <filesystem>
#include <system_error>

#include "qzhost/PluginLoader.h"

namespace qzhost::pixelview {

std::string DefaultSampleImage() {
    namespace fs = std::filesystem;
    const std::string folder = ProgramFolder();
    if (!folder.empty()) {
        const fs::path beside = fs::path(folder) / "samples" / kSampleChart;
        std::error_code error;
        if (fs::is_regular_file(beside, error)) {
            return beside.string();
        }
    }
    return (fs::path(QZ_SAMPLES_DIR) / kSampleChart).string();
}

} // namespace qzhost::pixelview
