#include "Space3.h"

#include <cmath>
#include <numbers>

namespace qzview {

namespace {

double Radians(double degrees) noexcept {
    return degrees * std::numbers::pi / 180.0;
}

} // namespace

Matrix3 Multiply(const Matrix3& l, const Matrix3& r) noexcept {
    Matrix3 out{};
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            for (int k = 0; k < 3; ++k) {
                out[i][j] += l[i][k] * r[k][j];
            }
        }
    }
    return out;
}

Vector3 Multiply(const Matrix3& m, const Vector3& v) noexcept {
    return {m[0][0] * v[0] + m[0][1] * v[1] + m[0][2] * v[2],
            m[1][0] * v[0] + m[1][1] * v[1] + m[1][2] * v[2],
            m[2][0] * v[0] + m[2][1] * v[1] + m[2][2] * v[2]};
}

Matrix3 Transposed(const Matrix3& m) noexcept {
    return {
        {{m[0][0], m[1][0], m[2][0]}, {m[0][1], m[1][1], m[2][1]}, {m[0][2], m[1][2], m[2][2]}}};
}

Matrix3 RotateZ(double degrees) noexcept {
    const double c = std::cos(Radians(degrees));
    const double s = std::sin(Radians(degrees));
    return {{{c, -s, 0}, {s, c, 0}, {0, 0, 1}}};
}

Matrix3 RotateY(double degrees) noexcept {
    const double c = std::cos(Radians(degrees));
    const double s = std::sin(Radians(degrees));
    return {{{c, 0, s}, {0, 1, 0}, {-s, 0, c}}};
}

Matrix3 RotateX(double degrees) noexcept {
    const double c = std::cos(Radians(degrees));
    const double s = std::sin(Radians(degrees));
    return {{{1, 0, 0}, {0, c, -s}, {0, s, c}}};
}

Matrix3 RotateXYZ(double x, double y, double z) noexcept {
    return Multiply(RotateZ(z), Multiply(RotateY(y), RotateX(x)));
}

} // namespace qzview
