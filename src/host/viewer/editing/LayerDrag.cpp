#include "LayerDrag.h"

#include <cmath>
#include <numbers>

namespace qzview {

LayerDrag::LayerDrag(const Layer& layer, Property property, CompositionPoint at)
    : layerId_(layer.id), property_(property), before_(layer.values), values_(layer.values),
      from_(at), start_(LayerToComposition(layer)),
      startValue_(GetProperty(layer.values, property)) {
    value_ = startValue_;
    lastAngle_ = PointerAngle(at);
}

double LayerDrag::PointerAngle(CompositionPoint at) const noexcept {
    // The anchor point is drawn where the position is.
    return std::atan2(at.y - before_.position[1], at.x - before_.position[0]) * 180.0 /
           std::numbers::pi;
}

const LayerValues& LayerDrag::Move(CompositionPoint at, bool uniform) {
    const double dx = at.x - from_.x;
    const double dy = at.y - from_.y;
    values_ = before_;
    switch (property_) {
    case Property::Position:
        value_ = {startValue_[0] + dx, startValue_[1] + dy, startValue_[2]};
        break;
    case Property::AnchorPoint: {
        // The anchor moves under the pointer in the layer's own pixels, and the position
        // with it, so the layer stays put.
        Affine linear = start_;
        linear.e = 0;
        linear.f = 0;
        const std::optional<Affine> inverse = linear.Inverse();
        const auto [ux, uy] = inverse ? inverse->Apply(dx, dy) : std::array<double, 2>{0, 0};
        value_ = {startValue_[0] + ux, startValue_[1] + uy, startValue_[2]};
        values_.position = {before_.position[0] + dx, before_.position[1] + dy,
                            before_.position[2]};
        break;
    }
    case Property::Scale: {
        // The pointer's place in the layer's pixels, from the anchor, against where it was
        // pressed: the layer grows by that ratio on each axis.
        const std::optional<Affine> inverse = start_.Inverse();
        if (!inverse) {
            break;
        }
        const auto [px, py] = inverse->Apply(from_.x, from_.y);
        const auto [nx, ny] = inverse->Apply(at.x, at.y);
        const double ox = px - before_.anchor[0];
        const double oy = py - before_.anchor[1];
        const double qx = nx - before_.anchor[0];
        const double qy = ny - before_.anchor[1];
        double rx = std::abs(ox) >= 0.5 ? qx / ox : 1.0;
        double ry = std::abs(oy) >= 0.5 ? qy / oy : 1.0;
        if (uniform) {
            const double length = ox * ox + oy * oy;
            rx = ry = length >= 0.25 ? (qx * ox + qy * oy) / length : 1.0;
        }
        value_ = {startValue_[0] * rx, startValue_[1] * ry,
                  uniform ? startValue_[2] * rx : startValue_[2]};
        break;
    }
    case Property::Rotation:
    case Property::Orientation: {
        const double angle = PointerAngle(at);
        double step = angle - lastAngle_;
        if (step > 180.0) {
            step -= 360.0;
        } else if (step < -180.0) {
            step += 360.0;
        }
        lastAngle_ = angle;
        turned_ += step;
        value_ = startValue_;
        value_[property_ == Property::Orientation ? 2 : 0] += turned_;
        break;
    }
    default:
        break;
    }
    SetProperty(values_, property_, value_);
    // The orientation is kept within a turn; its change is how far the pointer turned.
    value_ = GetProperty(values_, property_);
    change_ = {0, 0, 0};
    if (property_ == Property::Orientation) {
        change_[2] = turned_;
    } else {
        for (std::size_t i = 0; i < 3; ++i) {
            change_[i] = value_[i] - startValue_[i];
        }
    }
    return values_;
}

} // namespace qzview
