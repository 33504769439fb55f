#include "LayerDrag.h"

#include <cmath>
#include <numbers>

#include "composition/Camera.h"

namespace qzview {

LayerDrag::LayerDrag(const Layer& layer, Property property, CompositionPoint at,
                     const Projective& placed, double composition_aspect)
    : layerId_(layer.id), property_(property), before_(layer.values), values_(layer.values),
      from_(at), aspect_(DrawnAspect(composition_aspect)), start_(placed),
      startInverse_(placed.Inverse()), space_(LayerToSpace(layer, composition_aspect)), last_(at),
      startValue_(GetProperty(layer.values, property)) {
    value_ = startValue_;
    space_[0][0] /= aspect_;
    space_[0][1] /= aspect_;
    // Without a camera the anchor point is drawn where the position is.
    anchorSeen_ = {before_.position[0], before_.position[1]};
    if (!start_.IsAffine()) {
        if (const auto seen = start_.Apply(before_.anchor[0], before_.anchor[1])) {
            anchorSeen_ = *seen;
        }
    }
    lastAngle_ = PointerAngle(at);
}

LayerDrag::LayerDrag(const Layer& layer, Property property, CompositionPoint at,
                     double composition_aspect)
    : LayerDrag(layer, property, at, Projective(LayerToComposition(layer, composition_aspect)),
                composition_aspect) {}

double LayerDrag::PointerAngle(CompositionPoint at) const noexcept {
    // As drawn: a composition pixel is aspect_ pixel heights wide.
    return std::atan2(at.y - anchorSeen_[1], (at.x - anchorSeen_[0]) * aspect_) * 180.0 /
           std::numbers::pi;
}

std::optional<std::array<double, 2>> LayerDrag::LayerPoint(CompositionPoint at) const noexcept {
    if (!startInverse_) {
        return std::nullopt;
    }
    const auto [a, b, w] = startInverse_->Homogeneous(at.x, at.y);
    if (!(w > 0)) {
        return std::nullopt;
    }
    return std::array<double, 2>{a / w, b / w};
}

const LayerValues& LayerDrag::Move(CompositionPoint at, bool shift) {
    const bool uniform = shift;
    const double dx = at.x - from_.x;
    const double dy = at.y - from_.y;
    values_ = before_;
    switch (property_) {
    case Property::Position:
        value_ = {startValue_[0] + dx, startValue_[1] + dy, startValue_[2]};
        break;
    case Property::AnchorPoint: {
        if (!start_.IsAffine()) {
            // Seen in perspective: the anchor moves by the layer pixels between the points
            // under the pointer, and the position by where those pixels lie in space, so
            // the layer stays put.
            const auto pressed = LayerPoint(from_);
            const auto now = LayerPoint(at);
            value_ = startValue_;
            if (!pressed || !now) {
                break;
            }
            const double du = (*now)[0] - (*pressed)[0];
            const double dv = (*now)[1] - (*pressed)[1];
            value_ = {startValue_[0] + du, startValue_[1] + dv, startValue_[2]};
            for (std::size_t i = 0; i < 3; ++i) {
                values_.position[i] = before_.position[i] + space_[i][0] * du + space_[i][1] * dv;
            }
            break;
        }
        // The anchor moves under the pointer in the layer's own pixels, and the position
        // with it, so the layer stays put.
        Affine linear = start_.ToAffine();
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
        const auto pressed = LayerPoint(from_);
        const auto now = LayerPoint(at);
        if (!pressed || !now) {
            break;
        }
        const auto [px, py] = *pressed;
        const auto [nx, ny] = *now;
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
        if (property_ == Property::Rotation) {
            turned_ += step;
            value_ = startValue_;
            value_[0] += turned_;
        } else {
            if (shift) {
                turnedXYZ_[2] += step;
            } else {
                // The face follows the pointer: down brings the top forward (about X),
                // right brings the left side forward (about Y).
                turnedXYZ_[0] += (at.y - last_.y) * kDegreesPerPixel;
                turnedXYZ_[1] -= (at.x - last_.x) * aspect_ * kDegreesPerPixel;
            }
            value_ = {startValue_[0] + turnedXYZ_[0], startValue_[1] + turnedXYZ_[1],
                      startValue_[2] + turnedXYZ_[2]};
        }
        last_ = at;
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
        change_ = turnedXYZ_;
    } else {
        for (std::size_t i = 0; i < 3; ++i) {
            change_[i] = value_[i] - startValue_[i];
        }
    }
    return values_;
}

} // namespace qzview
