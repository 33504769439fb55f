#include "LayerPyramid.h"

#include <algorithm>
#include <cmath>
#include <thread>

namespace qzview {

namespace {

/// Levels stop halving below this many pixels on the longer side.
constexpr int kSmallest = 32;

/// Level 0's rows `y0` to `y1 - 1`.
void DisplayRows(const LayerImage& image, const std::optional<RectMask>& mask,
                 const DisplaySettings& settings, const MonitorDisplay* monitor, QImage& out,
                 int y0, int y1) {
    const auto width = static_cast<std::size_t>(image.width);
    std::vector<float> row(width * 4);
    for (int y = y0; y < y1; ++y) {
        image.WorkingRow(y, 0, image.width, row.data());
        if (mask) {
            for (int x = 0; x < image.width; ++x) {
                row[static_cast<std::size_t>(x) * 4 + 3] *=
                    MaskCoverage(*mask, x + image.dataX, y + image.dataY);
            }
        }
        auto* line = reinterpret_cast<std::uint32_t*>(out.scanLine(y));
        ToDisplay(row.data(), width, settings, monitor, line);
        for (std::size_t x = 0; x < width; ++x) {
            line[x] = qPremultiply(line[x]);
        }
    }
}

} // namespace

LayerPyramid::LayerPyramid(const LayerImage& image, const std::optional<RectMask>& mask,
                           const DisplaySettings& settings, const MonitorDisplay* monitor) {
    QImage full(std::max(1, image.width), std::max(1, image.height),
                QImage::Format_ARGB32_Premultiplied);
    full.fill(0);
    // Half the rows on another thread: a plate's display image is made in a blink.
    const int middle = image.height / 2;
    std::thread half(
        [&] { DisplayRows(image, mask, settings, monitor, full, middle, image.height); });
    DisplayRows(image, mask, settings, monitor, full, 0, middle);
    half.join();
    levels_.push_back(std::move(full));
    while (std::max(levels_.back().width(), levels_.back().height()) > kSmallest) {
        // Qt's smooth scaling averages the pixels that each new pixel covers.
        const QImage& finer = levels_.back();
        levels_.push_back(finer.scaled((finer.width() + 1) / 2, (finer.height() + 1) / 2,
                                       Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }
}

int LayerPyramid::LevelFor(double scale) const noexcept {
    if (!(scale > 0) || scale >= 1.0) {
        return 0;
    }
    const int level = static_cast<int>(std::floor(std::log2(1.0 / scale)));
    return std::clamp(level, 0, Levels() - 1);
}

} // namespace qzview
