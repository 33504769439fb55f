#include "Layer.h"

#include <algorithm>
#include <cmath>

#include "PropertyRange.h"

namespace qzview {

namespace {

double Wrap360(double degrees) noexcept {
    double wrapped = std::fmod(degrees, 360.0);
    if (wrapped < 0) {
        wrapped += 360.0;
    }
    return wrapped >= 360.0 ? 0.0 : wrapped;
}

} // namespace

double DrawnAspect(double aspect) noexcept {
    if (!(aspect > 0) || !std::isfinite(aspect)) {
        return 1.0;
    }
    return std::clamp(aspect, 1.0 / 16, 16.0);
}

std::vector<Property> PropertiesOf(const Layer& layer) {
    std::vector<Property> list{Property::AnchorPoint, Property::Position};
    if (layer.kind == LayerKind::Visual) {
        list.push_back(Property::Scale);
    }
    if (layer.ThreeD()) {
        list.insert(list.end(), {Property::Orientation, Property::RotationX, Property::RotationY});
    }
    list.push_back(Property::Rotation);
    if (layer.kind == LayerKind::Camera) {
        list.push_back(Property::Zoom);
    }
    if (layer.kind == LayerKind::Visual) {
        list.push_back(Property::Opacity);
        if (layer.values.mask) {
            list.insert(list.end(),
                        {Property::MaskOpacity, Property::MaskFeather, Property::MaskExpansion});
        }
    }
    return list;
}

std::string PropertyName(const Layer& layer, Property property) {
    switch (property) {
    case Property::AnchorPoint:
        return layer.kind == LayerKind::Camera ? "Point of Interest" : "Anchor Point";
    case Property::Position:
        return "Position";
    case Property::Scale:
        return "Scale";
    case Property::Orientation:
        return "Orientation";
    case Property::RotationX:
        return "X Rotation";
    case Property::RotationY:
        return "Y Rotation";
    case Property::Rotation:
        return layer.ThreeD() ? "Z Rotation" : "Rotation";
    case Property::Opacity:
        return "Opacity";
    case Property::MaskOpacity:
        return "Mask Opacity";
    case Property::MaskFeather:
        return "Mask Feather";
    case Property::MaskExpansion:
        return "Mask Expansion";
    case Property::Zoom:
        return "Zoom";
    }
    return {};
}

const char* MatchName(Property property) {
    switch (property) {
    case Property::AnchorPoint:
        return "ANCHOR_POINT";
    case Property::Position:
        return "POSITION";
    case Property::Scale:
        return "SCALE";
    case Property::Orientation:
        return "ORIENTATION";
    case Property::RotationX:
        return "ROTATE_X";
    case Property::RotationY:
        return "ROTATE_Y";
    case Property::Rotation:
        return "ROTATE_Z";
    case Property::Opacity:
        return "OPACITY";
    case Property::MaskOpacity:
        return "MASK_OPACITY";
    case Property::MaskFeather:
        return "MASK_FEATHER";
    case Property::MaskExpansion:
        return "MASK_OFFSET";
    case Property::Zoom:
        return "ZOOM";
    }
    return "";
}

bool IsMaskProperty(Property property) noexcept {
    return property == Property::MaskOpacity || property == Property::MaskFeather ||
           property == Property::MaskExpansion;
}

int Components(const Layer& layer, Property property) noexcept {
    switch (property) {
    case Property::AnchorPoint:
    case Property::Position:
    case Property::Scale:
        return layer.ThreeD() ? 3 : 2;
    case Property::Orientation:
        return 3;
    default:
        return 1;
    }
}

PropertyValue GetProperty(const LayerValues& values, Property property) noexcept {
    const RectMask none;
    const RectMask& mask = values.mask ? *values.mask : none;
    switch (property) {
    case Property::AnchorPoint:
        return values.anchor;
    case Property::Position:
        return values.position;
    case Property::Scale:
        return values.scale;
    case Property::Orientation:
        return values.orientation;
    case Property::RotationX:
        return {values.rotationX, 0, 0};
    case Property::RotationY:
        return {values.rotationY, 0, 0};
    case Property::Rotation:
        return {values.rotation, 0, 0};
    case Property::Opacity:
        return {values.opacity, 0, 0};
    case Property::MaskOpacity:
        return {mask.opacity, 0, 0};
    case Property::MaskFeather:
        return {mask.feather, 0, 0};
    case Property::MaskExpansion:
        return {mask.expansion, 0, 0};
    case Property::Zoom:
        return {values.zoom, 0, 0};
    }
    return {};
}

void SetProperty(LayerValues& values, Property property, const PropertyValue& value) noexcept {
    const double x = std::isfinite(value[0]) ? value[0] : 0.0;
    switch (property) {
    case Property::AnchorPoint:
        values.anchor = value;
        return;
    case Property::Position:
        values.position = value;
        return;
    case Property::Scale:
        values.scale = value;
        return;
    case Property::Orientation:
        values.orientation = {Wrap360(value[0]), Wrap360(value[1]), Wrap360(value[2])};
        return;
    case Property::RotationX:
        values.rotationX = x;
        return;
    case Property::RotationY:
        values.rotationY = x;
        return;
    case Property::Rotation:
        values.rotation = x;
        return;
    case Property::Opacity:
        values.opacity = RangeOf(property).Clamp(x);
        return;
    case Property::Zoom:
        values.zoom = std::max(x, kMinimumZoom);
        return;
    default:
        break;
    }
    if (!values.mask) {
        return;
    }
    if (property == Property::MaskOpacity) {
        values.mask->opacity = RangeOf(property).Clamp(x);
    } else if (property == Property::MaskFeather) {
        values.mask->feather = RangeOf(property).Clamp(x);
    } else if (property == Property::MaskExpansion) {
        values.mask->expansion = x;
    }
}

bool Affine::IsIntegerTranslation() const noexcept {
    return a == 1 && b == 0 && c == 0 && d == 1 && e == std::floor(e) && f == std::floor(f) &&
           std::abs(e) < 1e7 && std::abs(f) < 1e7;
}

std::array<double, 2> Affine::Apply(double x, double y) const noexcept {
    return {a * x + c * y + e, b * x + d * y + f};
}

std::optional<Affine> Affine::Inverse() const noexcept {
    const double det = a * d - b * c;
    if (!std::isfinite(det) || std::abs(det) < 1e-12) {
        return std::nullopt;
    }
    Affine inverse;
    inverse.a = d / det;
    inverse.b = -b / det;
    inverse.c = -c / det;
    inverse.d = a / det;
    inverse.e = -(inverse.a * e + inverse.c * f);
    inverse.f = -(inverse.b * e + inverse.d * f);
    return inverse;
}

Matrix3 RotationOf(const Layer& layer) noexcept {
    const LayerValues& v = layer.values;
    return layer.ThreeD()
               ? Multiply(RotateXYZ(v.rotationX, v.rotationY, v.rotation),
                          RotateXYZ(v.orientation[0], v.orientation[1], v.orientation[2]))
               : RotateZ(v.rotation);
}

Affine LayerToComposition(const Layer& layer, double composition_aspect) noexcept {
    const LayerValues& v = layer.values;
    const Matrix3 r = RotationOf(layer);
    const double sx = v.scale[0] / 100.0;
    const double sy = v.scale[1] / 100.0;
    const double sz = layer.ThreeD() ? v.scale[2] / 100.0 : 1.0;
    const double az = layer.ThreeD() ? v.anchor[2] : 0.0;
    // A layer pixel is `wide` units wide, a composition pixel `across`; a unit is a pixel's
    // height. Layer pixels as wide as the composition's (square ones among them) keep their
    // x steps unchanged.
    const double wide = layer.PixelAspect();
    const double across = DrawnAspect(composition_aspect);
    Affine m;
    m.a = r[0][0] * sx * (wide / across);
    m.b = r[1][0] * sx * wide;
    m.c = r[0][1] * sy / across;
    m.d = r[1][1] * sy;
    // The rotations of whole turns leave sines of about 1e-16; a transform that is a
    // translation in all but rounding is drawn as one.
    for (double* entry : {&m.a, &m.b, &m.c, &m.d}) {
        if (std::abs(*entry) < 1e-12) {
            *entry = 0;
        } else if (std::abs(*entry - 1) < 1e-12) {
            *entry = 1;
        } else if (std::abs(*entry + 1) < 1e-12) {
            *entry = -1;
        }
    }
    m.e = v.position[0] - m.a * v.anchor[0] - m.c * v.anchor[1] - r[0][2] * sz * az / across;
    m.f = v.position[1] - m.b * v.anchor[0] - m.d * v.anchor[1] - r[1][2] * sz * az;
    return m;
}

std::array<std::array<double, 2>, 4> Corners(const Affine& transform, int width,
                                             int height) noexcept {
    const double w = width;
    const double h = height;
    return {transform.Apply(0, 0), transform.Apply(w, 0), transform.Apply(w, h),
            transform.Apply(0, h)};
}

float MaskCoverage(const RectMask& mask, int x, int y) noexcept {
    const double x0 = mask.x - mask.expansion;
    const double y0 = mask.y - mask.expansion;
    const double x1 = mask.x + mask.width + mask.expansion;
    const double y1 = mask.y + mask.height + mask.expansion;
    if (x1 <= x0 || y1 <= y0) {
        return 0.0f;
    }
    const double cx = x + 0.5;
    const double cy = y + 0.5;
    // Signed distance from the pixel centre to the rectangle's edge, negative inside.
    const double dx = std::max(x0 - cx, cx - x1);
    const double dy = std::max(y0 - cy, cy - y1);
    const double distance =
        dx > 0 || dy > 0 ? std::hypot(std::max(dx, 0.0), std::max(dy, 0.0)) : std::max(dx, dy);
    double coverage = 0;
    if (mask.feather > 0) {
        coverage = std::clamp(0.5 - distance / mask.feather, 0.0, 1.0);
    } else {
        coverage = distance <= 0 ? 1.0 : 0.0;
    }
    return static_cast<float>(coverage * std::clamp(mask.opacity / 100.0, 0.0, 1.0));
}

} // namespace qzview
