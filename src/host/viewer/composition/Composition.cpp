#include "Composition.h"

#include <algorithm>
#include <cmath>

#include "Camera.h"

namespace qzview {

Layer& Composition::Add(Layer layer) {
    layer.id = nextId_++;
    layers_.push_back(std::move(layer));
    KeepPlacement(layers_.back());
    ++generation_;
    snapshot_.reset();
    return layers_.back();
}

void Composition::KeepPlacement(const Layer& layer) {
    Placement& placement = placements_[layer.id];
    placement.transform = LayerThroughCamera(layer, ActiveCamera(layers_), width_, height_);
    placement.inverse = placement.transform.Inverse();
}

void Composition::KeepPlacements() {
    for (const Layer& layer : layers_) {
        KeepPlacement(layer);
    }
}

const Projective& Composition::Transform(int id) const noexcept {
    static const Projective identity;
    const auto found = placements_.find(id);
    return found != placements_.end() ? found->second.transform : identity;
}

int Composition::AddImage(LayerImage image) {
    if (layers_.empty() || width_ == 0) {
        width_ = image.width;
        height_ = image.height;
    }
    Layer layer;
    layer.name = image.name;
    layer.kind = LayerKind::Visual;
    layer.values.anchor = {image.width / 2.0, image.height / 2.0, 0};
    layer.values.position = {width_ / 2.0, height_ / 2.0, 0};
    layer.defaults = layer.values;
    layer.image = std::make_shared<const LayerImage>(std::move(image));
    return Add(std::move(layer)).id;
}

int Composition::AddCamera() {
    int cameras = 0;
    for (const Layer& layer : layers_) {
        cameras += layer.kind == LayerKind::Camera ? 1 : 0;
    }
    Layer camera;
    camera.name = "Camera " + std::to_string(cameras + 1);
    camera.kind = LayerKind::Camera;
    camera.values = NewCameraValues(width_, height_);
    camera.defaults = camera.values;
    const int id = Add(std::move(camera)).id;
    // The new camera is the active one.
    KeepPlacements();
    return id;
}

const Layer* Composition::Find(int id) const noexcept {
    for (const Layer& layer : layers_) {
        if (layer.id == id) {
            return &layer;
        }
    }
    return nullptr;
}

void Composition::SetValues(int id, const LayerValues& values) {
    for (Layer& layer : layers_) {
        if (layer.id == id && !(layer.values == values)) {
            layer.values = values;
            if (layer.kind == LayerKind::Camera) {
                // Every 3-D layer is seen through the active camera.
                KeepPlacements();
            } else {
                KeepPlacement(layer);
            }
            if (layer.Drawn() || layer.kind == LayerKind::Camera) {
                ++generation_;
                snapshot_.reset();
            }
        }
    }
}

std::shared_ptr<const CompositionSnapshot> Composition::Snapshot() const {
    if (!snapshot_) {
        snapshot_ =
            std::make_shared<const CompositionSnapshot>(SnapshotOf(layers_, width_, height_));
    }
    return snapshot_;
}

WorkingPixel Composition::PixelAt(int x, int y) const {
    return CompositePixel(*Snapshot(), x, y);
}

const Layer* Composition::LayerAt(double x, double y) const noexcept {
    for (auto it = layers_.rbegin(); it != layers_.rend(); ++it) {
        if (!it->Drawn()) {
            continue;
        }
        const std::optional<Projective>& inverse = placements_.at(it->id).inverse;
        if (!inverse) {
            continue;
        }
        // The layer's point seen at x, y; none where the point would lie behind the camera.
        const auto [a, b, w] = inverse->Homogeneous(x, y);
        if (!(w > 0)) {
            continue;
        }
        const double u = a / w;
        const double v = b / w;
        if (u >= 0 && v >= 0 && u < it->Width() && v < it->Height()) {
            return &*it;
        }
    }
    return nullptr;
}

} // namespace qzview
