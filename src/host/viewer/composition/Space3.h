// Points, directions and turns of the composition's 3-D space: x to the right, y down the
// screen, z away from the viewer (so a 3-D layer at z = 0 lies in the composition's plane).
// Matrices act on column vectors.
#pragma once

#include <array>

namespace qzview {

using Vector3 = std::array<double, 3>;
/// Rows of a 3 x 3 matrix.
using Matrix3 = std::array<std::array<double, 3>, 3>;

Matrix3 Multiply(const Matrix3& l, const Matrix3& r) noexcept;
Vector3 Multiply(const Matrix3& m, const Vector3& v) noexcept;
Matrix3 Transposed(const Matrix3& m) noexcept;

/// Rotation about the z axis; with y pointing down the screen, a positive angle turns
/// clockwise, as compositors turn layers.
Matrix3 RotateZ(double degrees) noexcept;
Matrix3 RotateY(double degrees) noexcept;
Matrix3 RotateX(double degrees) noexcept;
/// X first, then Y, then Z.
Matrix3 RotateXYZ(double x, double y, double z) noexcept;

} // namespace qzview
