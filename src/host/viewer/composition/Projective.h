// A projective transform of the plane (a homography): how a camera sees a flat layer in
// perspective. Layer point (u, v) goes to the homogeneous point (x w, y w, w) = M (u, v, 1)
// of the composition, and is seen at (x, y) only where w > 0, in front of the camera (w is
// the point's distance in front of the camera over the camera's Zoom). An affine transform
// is the case whose bottom row is (0, 0, 1).
#pragma once

#include <array>
#include <optional>

#include "Layer.h"

namespace qzview {

struct Projective {
    /// Rows of the matrix, acting on column vectors (u, v, 1).
    Matrix3 m{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};

    Projective() = default;
    explicit Projective(const Affine& affine) noexcept;

    /// Whether the bottom row is exactly (0, 0, 1).
    bool IsAffine() const noexcept;
    /// The top two rows as an affine transform (the bottom row taken as (0, 0, 1)).
    Affine ToAffine() const noexcept;
    /// (x w, y w, w) of point `u`, `v`.
    std::array<double, 3> Homogeneous(double u, double v) const noexcept;
    /// Where point `u`, `v` is seen; nullopt when it lies at or behind the camera.
    std::optional<std::array<double, 2>> Apply(double u, double v) const noexcept;
    /// The inverse; nullopt when there is none (a layer seen edge-on).
    std::optional<Projective> Inverse() const noexcept;

    bool operator==(const Projective&) const = default;
};

/// `transform` after a move by `dx`, `dy`: where a point at u, v of an image whose pixel
/// 0,0 lies at dx, dy of the layer goes. The same transform when the move is 0, 0.
Projective AfterMove(const Projective& transform, double dx, double dy) noexcept;

/// The corners of a `width` x `height` layer placed by `transform`, in the composition:
/// top-left, top-right, bottom-right, bottom-left. A corner at or behind the camera has
/// no place in the composition: its coordinates are NaN.
std::array<std::array<double, 2>, 4> Corners(const Projective& transform, int width,
                                             int height) noexcept;

} // namespace qzview
