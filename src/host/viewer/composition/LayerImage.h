// An image read into the project's working values: every pixel as red, green, blue,
// alpha floats (integers scaled to 0-1 as the Info palette is given them, floats as
// stored, alpha 1 where the file has none), with what the host says about the file.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace qzview {

struct LayerImage {
    std::string path;
    /// The file's name without its folder.
    std::string name;
    /// The reader's format name and the channel type ("png", "8-bit").
    std::string format;
    std::string channelType;
    int width = 0;
    int height = 0;
    /// The project depth that the file's format gives (0 8-bit, 1 16-bit, 2 float).
    std::int8_t depth = 0;
    /// width x height x 4 floats, rows top to bottom.
    std::vector<float> rgba;
};

/// Reports how far a read has come, 0 to 1; it may be called on the reading thread.
using ReadProgress = std::function<void(double done)>;

/// Reads `path` with OpenImageIO (any thread). Throws std::runtime_error with a one-line
/// message when the file cannot be read; `progress` (when set) is called as the reader
/// goes, ending with 1.
LayerImage ReadLayerImage(const std::string& path, const ReadProgress& progress = {});

} // namespace qzview
