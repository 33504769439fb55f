#include "Composition.h"

#include <algorithm>
#include <cmath>

#include "Camera.h"

namespace qzview {

Layer& Composition::Add(Layer layer) {
    layer.id = nextId_++;
    layers_.push_back(std::move(layer));
    KeepPlacement(layers_.back());
    Changed();
    return layers_.back();
}

void Composition::Changed() noexcept {
    ++generation_;
    snapshot_.reset();
}

void Composition::KeepPlacement(const Layer& layer) {
    Placement& placement = placements_[layer.id];
    placement.transform =
        LayerThroughCamera(layer, ActiveCamera(layers_), width_, height_, pixelAspect_);
    placement.inverse = placement.transform.Inverse();
    placement.pixels = layer.image
                           ? AfterMove(placement.transform, layer.image->dataX, layer.image->dataY)
                           : placement.transform;
    placement.warp = LayerWarp(placement.pixels);
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

const Projective& Composition::PixelTransform(int id) const noexcept {
    static const Projective identity;
    const auto found = placements_.find(id);
    return found != placements_.end() ? found->second.pixels : identity;
}

bool Composition::SetChannelSet(int id, int set) {
    for (Layer& layer : layers_) {
        if (layer.id != id || !layer.image || layer.image->set == set) {
            continue;
        }
        layer.image = std::make_shared<const LayerImage>(WithChannelSet(*layer.image, set));
        // A set of another part may lie elsewhere in the frame.
        KeepPlacement(layer);
        if (layer.Drawn()) {
            Changed();
        }
        return true;
    }
    return false;
}

bool Composition::SetColourSpace(int id, const std::string& space,
                                 std::shared_ptr<const qzhost::ColourTransform> to_working) {
    for (Layer& layer : layers_) {
        if (layer.id != id || !layer.image || layer.image->colourSpace == space) {
            continue;
        }
        layer.image = std::make_shared<const LayerImage>(
            WithColourSpace(*layer.image, space, std::move(to_working)));
        if (layer.Drawn()) {
            Changed();
        }
        return true;
    }
    return false;
}

int Composition::AddImage(LayerImage image) {
    if (image.frameWidth <= 0 || image.frameHeight <= 0) {
        // An image made without a frame fills one of its own size.
        image.frameWidth = image.width;
        image.frameHeight = image.height;
    }
    if (layers_.empty() || width_ == 0) {
        width_ = image.frameWidth;
        height_ = image.frameHeight;
        pixelAspect_ = DrawnAspect(image.pixelAspect);
    }
    Layer layer;
    layer.name = image.name;
    layer.kind = LayerKind::Visual;
    layer.values.anchor = {image.frameWidth / 2.0, image.frameHeight / 2.0, 0};
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
    camera.values = NewCameraValues(width_, height_, pixelAspect_);
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
                Changed();
            }
        }
    }
}

void Composition::SetVisible(int id, bool visible) {
    for (Layer& layer : layers_) {
        if (layer.id == id && layer.visible != visible) {
            const bool drawn = layer.Drawn();
            layer.visible = visible;
            if (drawn != layer.Drawn()) {
                Changed();
            }
        }
    }
}

std::optional<std::size_t> Composition::IndexOf(int id) const noexcept {
    for (std::size_t i = 0; i < layers_.size(); ++i) {
        if (layers_[i].id == id) {
            return i;
        }
    }
    return std::nullopt;
}

std::optional<RemovedLayer> Composition::Remove(int id) {
    const std::optional<std::size_t> index = IndexOf(id);
    if (!index) {
        return std::nullopt;
    }
    const auto at = layers_.begin() + static_cast<std::ptrdiff_t>(*index);
    RemovedLayer removed{std::move(*at), *index};
    layers_.erase(at);
    placements_.erase(id);
    if (removed.layer.kind == LayerKind::Camera) {
        // Another camera (or none) sees the 3-D layers now.
        KeepPlacements();
    }
    Changed();
    return removed;
}

void Composition::Restore(RemovedLayer removed) {
    if (Find(removed.layer.id) != nullptr) {
        return;
    }
    nextId_ = std::max(nextId_, removed.layer.id + 1);
    const std::size_t index = std::min(removed.index, layers_.size());
    const auto at = layers_.insert(layers_.begin() + static_cast<std::ptrdiff_t>(index),
                                   std::move(removed.layer));
    if (at->kind == LayerKind::Camera) {
        KeepPlacements();
    } else {
        KeepPlacement(*at);
    }
    Changed();
}

bool Composition::Move(int id, std::size_t index) {
    const std::optional<std::size_t> from = IndexOf(id);
    if (!from || layers_.empty()) {
        return false;
    }
    const std::size_t to = std::min(index, layers_.size() - 1);
    if (to == *from) {
        return false;
    }
    const auto first = layers_.begin();
    if (to < *from) {
        std::rotate(first + static_cast<std::ptrdiff_t>(to),
                    first + static_cast<std::ptrdiff_t>(*from),
                    first + static_cast<std::ptrdiff_t>(*from) + 1);
    } else {
        std::rotate(first + static_cast<std::ptrdiff_t>(*from),
                    first + static_cast<std::ptrdiff_t>(*from) + 1,
                    first + static_cast<std::ptrdiff_t>(to) + 1);
    }
    // The top-most camera is the active one: a camera moved may hand the view to another.
    if (layers_[to].kind == LayerKind::Camera) {
        KeepPlacements();
    }
    Changed();
    return true;
}

std::shared_ptr<const CompositionSnapshot> Composition::Snapshot() const {
    if (!snapshot_) {
        // Cameras are not drawn; each drawn layer is warped as it is kept placed.
        auto snapshot = std::make_shared<CompositionSnapshot>();
        snapshot->width = width_;
        snapshot->height = height_;
        for (const Layer& layer : layers_) {
            if (layer.Drawn()) {
                snapshot->layers.push_back(DrawnLayerOf(layer, placements_.at(layer.id).warp));
            }
        }
        snapshot_ = std::move(snapshot);
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
