// A layer's pixels as the canvas draws them while the person edits: display colours,
// premultiplied by alpha and the mask's coverage (the opacity is applied as the layer is
// drawn), at full resolution and halved again and again (each pixel the mean of those it covers)
// down to a few dozen pixels. Made when the layer's pixels, its mask or the display
// settings change; drawn through the layer's transform at the level nearest the view's
// resolution, so a drag costs what the window shows.
#pragma once

#include <optional>
#include <vector>

#include <QImage>

#include "canvas/DisplayImage.h"
#include "composition/Layer.h"

namespace qzview {

class LayerPyramid {
public:
    LayerPyramid(const LayerImage& image, const std::optional<RectMask>& mask,
                 const DisplaySettings& settings, const MonitorDisplay* monitor);

    int Levels() const noexcept { return static_cast<int>(levels_.size()); }
    /// Level 0 is full resolution; level k has 2^k layer pixels per pixel.
    const QImage& Level(int level) const { return levels_.at(static_cast<std::size_t>(level)); }
    /// The coarsest level whose pixels are still no larger than a screen pixel when the
    /// layer is drawn at `scale` screen pixels per layer pixel.
    int LevelFor(double scale) const noexcept;

private:
    std::vector<QImage> levels_;
};

} // namespace qzview
