#include "Projective.h"

#include <cmath>
#include <limits>

namespace qzview {

Projective::Projective(const Affine& affine) noexcept
    : m{{{affine.a, affine.c, affine.e}, {affine.b, affine.d, affine.f}, {0, 0, 1}}} {}

bool Projective::IsAffine() const noexcept {
    return m[2][0] == 0 && m[2][1] == 0 && m[2][2] == 1;
}

Affine Projective::ToAffine() const noexcept {
    return Affine{m[0][0], m[1][0], m[0][1], m[1][1], m[0][2], m[1][2]};
}

std::array<double, 3> Projective::Homogeneous(double u, double v) const noexcept {
    return {m[0][0] * u + m[0][1] * v + m[0][2], m[1][0] * u + m[1][1] * v + m[1][2],
            m[2][0] * u + m[2][1] * v + m[2][2]};
}

std::optional<std::array<double, 2>> Projective::Apply(double u, double v) const noexcept {
    if (IsAffine()) {
        return ToAffine().Apply(u, v);
    }
    const auto [xw, yw, w] = Homogeneous(u, v);
    if (!(w > 0)) {
        return std::nullopt;
    }
    return std::array<double, 2>{xw / w, yw / w};
}

std::optional<Projective> Projective::Inverse() const noexcept {
    if (IsAffine()) {
        const std::optional<Affine> inverse = ToAffine().Inverse();
        return inverse ? std::optional<Projective>(Projective(*inverse)) : std::nullopt;
    }
    // The adjugate over the determinant.
    const Matrix3& a = m;
    Matrix3 adj{};
    adj[0][0] = a[1][1] * a[2][2] - a[1][2] * a[2][1];
    adj[0][1] = a[0][2] * a[2][1] - a[0][1] * a[2][2];
    adj[0][2] = a[0][1] * a[1][2] - a[0][2] * a[1][1];
    adj[1][0] = a[1][2] * a[2][0] - a[1][0] * a[2][2];
    adj[1][1] = a[0][0] * a[2][2] - a[0][2] * a[2][0];
    adj[1][2] = a[0][2] * a[1][0] - a[0][0] * a[1][2];
    adj[2][0] = a[1][0] * a[2][1] - a[1][1] * a[2][0];
    adj[2][1] = a[0][1] * a[2][0] - a[0][0] * a[2][1];
    adj[2][2] = a[0][0] * a[1][1] - a[0][1] * a[1][0];
    const double det = a[0][0] * adj[0][0] + a[0][1] * adj[1][0] + a[0][2] * adj[2][0];
    // Relative to the size of the entries: a layer seen edge-on has a determinant of
    // rounding noise.
    double size = 0;
    for (const auto& row : a) {
        for (const double entry : row) {
            size = std::max(size, std::abs(entry));
        }
    }
    if (!std::isfinite(det) || std::abs(det) <= 1e-12 * size * size * size) {
        return std::nullopt;
    }
    Projective inverse;
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            inverse.m[i][j] = adj[i][j] / det;
        }
    }
    return inverse;
}

std::array<std::array<double, 2>, 4> Corners(const Projective& transform, int width,
                                             int height) noexcept {
    const double w = width;
    const double h = height;
    std::array<std::array<double, 2>, 4> corners{};
    const std::array<std::array<double, 2>, 4> layer{{{0, 0}, {w, 0}, {w, h}, {0, h}}};
    for (std::size_t i = 0; i < 4; ++i) {
        const auto seen = transform.Apply(layer[i][0], layer[i][1]);
        const double nan = std::numeric_limits<double>::quiet_NaN();
        corners[i] = seen ? *seen : std::array<double, 2>{nan, nan};
    }
    return corners;
}

Projective AfterMove(const Projective& transform, double dx, double dy) noexcept {
    if (dx == 0 && dy == 0) {
        return transform;
    }
    Projective moved = transform;
    for (auto& row : moved.m) {
        row[2] += row[0] * dx + row[1] * dy;
    }
    return moved;
}

} // namespace qzview
