#include "Camera.h"

#include <algorithm>
#include <cmath>

namespace qzview {

namespace {

Vector3 Cross(const Vector3& a, const Vector3& b) noexcept {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

double Length(const Vector3& v) noexcept {
    return std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
}

Vector3 Scaled(const Vector3& v, double k) noexcept {
    return {v[0] * k, v[1] * k, v[2] * k};
}

/// The turn that makes a camera at `from` look at `to`: its columns are the camera's right,
/// down and forward axes.
Matrix3 LookAt(const Vector3& from, const Vector3& to) noexcept {
    Vector3 forward{to[0] - from[0], to[1] - from[1], to[2] - from[2]};
    const double distance = Length(forward);
    forward = distance > 0 && std::isfinite(distance) ? Scaled(forward, 1.0 / distance)
                                                      : Vector3{0, 0, 1};
    // Right is across the composition's downward axis and the view; looking straight up
    // or down, the composition's x axis is taken for it.
    Vector3 right = Cross({0, 1, 0}, forward);
    const double across = Length(right);
    right = across > 1e-12 ? Scaled(right, 1.0 / across) : Vector3{1, 0, 0};
    const Vector3 down = Cross(forward, right);
    return {{{right[0], down[0], forward[0]},
             {right[1], down[1], forward[1]},
             {right[2], down[2], forward[2]}}};
}

/// Composition point `p` in the space that the camera sees: its x in pixel heights.
Vector3 InSpace(const PropertyValue& p, double composition_aspect) noexcept {
    return {p[0] * DrawnAspect(composition_aspect), p[1], p[2]};
}

/// Whether `a` equals `b` but for rounding.
bool Near(double a, double b) noexcept {
    return std::abs(a - b) <= 1e-9 * std::max(1.0, std::abs(b));
}

} // namespace

const Layer* ActiveCamera(const std::vector<Layer>& layers) noexcept {
    for (auto it = layers.rbegin(); it != layers.rend(); ++it) {
        if (it->kind == LayerKind::Camera) {
            return &*it;
        }
    }
    return nullptr;
}

double NewCameraZoom(double width) noexcept {
    return std::max(kMinimumZoom, width * 50.0 / 36.0);
}

LayerValues NewCameraValues(int width, int height, double aspect) noexcept {
    LayerValues values;
    values.zoom = NewCameraZoom(width * DrawnAspect(aspect));
    values.anchor = {width / 2.0, height / 2.0, 0};
    values.position = {width / 2.0, height / 2.0, -values.zoom};
    return values;
}

Matrix3 LayerToSpace(const Layer& layer, double composition_aspect) noexcept {
    const LayerValues& v = layer.values;
    const Matrix3 r = RotationOf(layer);
    const Vector3 scale{v.scale[0] / 100.0, v.scale[1] / 100.0,
                        layer.ThreeD() ? v.scale[2] / 100.0 : 1.0};
    const double az = layer.ThreeD() ? v.anchor[2] : 0.0;
    // A layer pixel is `wide` pixel heights wide; the position's x is in composition pixels.
    const double wide = layer.PixelAspect();
    const Vector3 position = InSpace(v.position, composition_aspect);
    Matrix3 out{};
    for (int i = 0; i < 3; ++i) {
        out[i][0] = r[i][0] * scale[0] * wide;
        out[i][1] = r[i][1] * scale[1];
        out[i][2] = position[i] - out[i][0] * v.anchor[0] - out[i][1] * v.anchor[1] -
                    r[i][2] * scale[2] * az;
    }
    if (!layer.ThreeD()) {
        out[2][2] = 0;
    }
    return out;
}

Matrix3 CameraAxes(const Layer& camera, double composition_aspect) noexcept {
    const LayerValues& v = camera.values;
    return Multiply(
        LookAt(InSpace(v.position, composition_aspect), InSpace(v.anchor, composition_aspect)),
        RotationOf(camera));
}

Projective LayerThroughCamera(const Layer& layer, const Layer* camera, int width, int height,
                              double composition_aspect) noexcept {
    const Affine flat = LayerToComposition(layer, composition_aspect);
    if (camera == nullptr || !layer.ThreeD() || layer.kind != LayerKind::Visual) {
        return Projective(flat);
    }
    const LayerValues& c = camera->values;
    const double zoom = std::max(c.zoom, kMinimumZoom);
    const double across = DrawnAspect(composition_aspect);
    // The layer's points relative to the camera, in the camera's axes.
    const Matrix3 toCamera = Transposed(CameraAxes(*camera, composition_aspect));
    Matrix3 space = LayerToSpace(layer, composition_aspect);
    const Vector3 eye = InSpace(c.position, composition_aspect);
    for (int i = 0; i < 3; ++i) {
        space[i][2] -= eye[i];
    }
    const Matrix3 seen = Multiply(toCamera, space);
    // x w = x + cx z / Zoom, y w = y + cy z / Zoom, w = z / Zoom, with x and cx (the
    // composition's centre) in pixel heights; x w is then taken back to composition pixels.
    const double cx = across * width / 2.0;
    const double cy = height / 2.0;
    Projective out;
    for (int j = 0; j < 3; ++j) {
        out.m[0][j] = (zoom * seen[0][j] + cx * seen[2][j]) / zoom / across;
        out.m[1][j] = (zoom * seen[1][j] + cy * seen[2][j]) / zoom;
        out.m[2][j] = seen[2][j] / zoom;
    }
    // A layer that the camera sees as it would be seen without one (the new camera's view
    // of a layer facing it in the composition's plane) keeps that transform exactly.
    const Projective orthographic(flat);
    bool same = true;
    for (int i = 0; i < 3 && same; ++i) {
        for (int j = 0; j < 3 && same; ++j) {
            same = i < 2 ? Near(out.m[i][j], orthographic.m[i][j])
                         : std::abs(out.m[i][j] - orthographic.m[i][j]) <= 1e-12;
        }
    }
    return same ? orthographic : out;
}

} // namespace qzview
