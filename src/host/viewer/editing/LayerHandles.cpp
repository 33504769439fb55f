#include "LayerHandles.h"

#include <cmath>

namespace qzview {

namespace {

/// How near (in screen pixels) to a corner handle a press takes hold of it.
constexpr double kCornerHandleReach = 6.0;

} // namespace

std::optional<LayerOutline> LayerOutlineOf(const Composition& composition, const Layer* layer) {
    if (layer == nullptr || !layer->Drawn()) {
        return std::nullopt;
    }
    const Projective& m = composition.Transform(layer->id);
    LayerOutline outline;
    std::size_t i = 0;
    for (const auto& [x, y] : Corners(m, layer->Width(), layer->Height())) {
        if (!std::isfinite(x) || !std::isfinite(y)) {
            // A corner at or behind the camera: the layer has no outline of four corners.
            return std::nullopt;
        }
        outline.corners[i++] = {x, y};
    }
    const auto anchor = m.Apply(layer->values.anchor[0], layer->values.anchor[1]);
    if (!anchor) {
        return std::nullopt;
    }
    outline.anchor = {(*anchor)[0], (*anchor)[1]};
    return outline;
}

bool OnCornerHandle(const CanvasView& canvas, const Composition& composition, const Layer* layer,
                    CompositionPoint at) {
    if (layer == nullptr || !layer->Drawn()) {
        return false;
    }
    const QPointF pressed = canvas.WidgetPointOf(at);
    for (const auto& [x, y] :
         Corners(composition.Transform(layer->id), layer->Width(), layer->Height())) {
        if (!std::isfinite(x) || !std::isfinite(y)) {
            continue; // at or behind the camera
        }
        const QPointF handle = canvas.WidgetPointOf({x, y});
        if (std::abs(handle.x() - pressed.x()) <= kCornerHandleReach &&
            std::abs(handle.y() - pressed.y()) <= kCornerHandleReach) {
            return true;
        }
    }
    return false;
}

} // namespace qzview
