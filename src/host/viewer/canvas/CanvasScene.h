// Everything the canvas draws, as the composition and the display settings are now: the
// snapshot that the exact view is composited from, and each drawn layer's display images
// with its transform and opacity for the preview. A new scene is made whenever any of it
// changes.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "canvas/DisplayImage.h"
#include "canvas/LayerPyramid.h"
#include "composition/CompositeRegion.h"
#include "composition/Projective.h"

namespace qzview {

struct PreviewLayer {
    std::shared_ptr<const LayerPyramid> pyramid;
    Projective transform;
    /// 0 to 1.
    double opacity = 1.0;
};

struct CanvasScene {
    int width = 0;
    int height = 0;
    /// How many times wider than tall the composition's pixels are drawn.
    double pixelAspect = 1.0;
    std::shared_ptr<const CompositionSnapshot> snapshot;
    /// Bottom first.
    std::vector<PreviewLayer> layers;
    DisplaySettings display;
    std::shared_ptr<const MonitorDisplay> monitor;
};

} // namespace qzview
