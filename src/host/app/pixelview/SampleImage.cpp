#include "pixelview/SampleImage.h"

#include <filesystem>
#include <system_error>

namespace qzhost::pixelview {

std::string DefaultSampleImage() {
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    if (!error) {
        const fs::path beside = program.parent_path() / "samples" / kSampleChart;
        if (fs::is_regular_file(beside, error)) {
            return beside.string();
        }
    }
    return (fs::path(QZ_SAMPLES_DIR) / kSampleChart).string();
}

} // namespace qzhost::pixelview
