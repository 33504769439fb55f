// Makes the canvas's scenes from the composition and the display settings, keeping each
// layer's display images until its pixels, its mask or the display settings change (a
// drag or an opacity scrub reuses them).
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>

#include "canvas/CanvasScene.h"
#include "composition/Composition.h"

namespace qzview {

class SceneMaker {
public:
    /// The scene of `composition` shown with `display` (and `monitor`, which may be null).
    CanvasScene Make(const Composition& composition, const DisplaySettings& display,
                     const std::shared_ptr<const MonitorDisplay>& monitor);

private:
    struct Kept {
        std::shared_ptr<const LayerImage> image;
        std::optional<RectMask> mask;
        std::shared_ptr<const LayerPyramid> pyramid;
    };
    std::map<int, Kept> kept_;
    std::optional<DisplaySettings> display_;
    std::shared_ptr<const MonitorDisplay> monitor_;
};

} // namespace qzview
