#include "LayerImage.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "pixelview/PixelViewError.h"
#include "pixelview/PixelViewImage.h"

namespace qzview {

namespace {
/// Rows turned into working values at a time.
constexpr int kBand = 64;
} // namespace

LayerImage ReadLayerImage(const std::string& path, const ReadProgress& progress) {
    try {
        qzhost::pixelview::PixelViewImage image(path);
        LayerImage layer;
        layer.path = path;
        layer.name = std::filesystem::path(path).filename().string();
        layer.format = image.FormatName();
        layer.channelType = image.ChannelType();
        layer.width = image.Width();
        layer.height = image.Height();
        layer.depth = image.ProjectDepth();
        layer.rgba.resize(static_cast<std::size_t>(layer.width) * layer.height * 4);
        image.ReadAllPixels(progress);
        for (int row = 0; row < layer.height; row += kBand) {
            const int rows = std::min(kBand, layer.height - row);
            image.ReadRowsRGBA(image.Y0() + row, rows,
                               layer.rgba.data() + static_cast<std::size_t>(row) * layer.width * 4);
        }
        return layer;
    } catch (const qzhost::pixelview::PixelViewError& error) {
        throw std::runtime_error(error.what());
    }
}

} // namespace qzview
