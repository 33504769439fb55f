#include "SceneMaker.h"

namespace qzview {

CanvasScene SceneMaker::Make(const Composition& composition, const DisplaySettings& display,
                             const std::shared_ptr<const MonitorDisplay>& monitor) {
    if (!display_ || *display_ != display || monitor_ != monitor) {
        // Every display image shows the old settings.
        kept_.clear();
        display_ = display;
        monitor_ = monitor;
    }
    CanvasScene scene;
    scene.width = composition.Width();
    scene.height = composition.Height();
    scene.pixelAspect = composition.PixelAspect();
    scene.snapshot = composition.Snapshot();
    scene.display = display;
    scene.monitor = monitor;
    std::map<int, Kept> still;
    for (const Layer& layer : composition.Layers()) {
        if (!layer.Drawn()) {
            continue;
        }
        Kept& kept = kept_[layer.id];
        if (!kept.pyramid || kept.image != layer.image || kept.mask != layer.values.mask) {
            kept.image = layer.image;
            kept.mask = layer.values.mask;
            kept.pyramid = std::make_shared<const LayerPyramid>(*layer.image, layer.values.mask,
                                                                display, monitor.get());
        }
        still[layer.id] = kept;
        scene.layers.push_back(
            {kept.pyramid, composition.PixelTransform(layer.id), layer.values.opacity / 100.0});
    }
    // Layers that are gone let go of their images.
    kept_ = std::move(still);
    return scene;
}

} // namespace qzview
