// The 2-D affine transform of a drawing surface, from user units to device pixels:
//   device x = xx * x + xy * y + x0
//   device y = yx * x + yy * y + y0
// The coefficients are stored in the order xx, yx, xy, yy, x0, y0.
#pragma once

#include <array>
#include <cstddef>

namespace kitui::inkwell {

struct Transform {
    std::array<double, 6> coefficients{1.0, 0.0, 0.0, 1.0, 0.0, 0.0};

    double operator[](std::size_t index) const { return coefficients[index]; }
    double XX() const noexcept { return coefficients[0]; }
    double YX() const noexcept { return coefficients[1]; }
    double XY() const noexcept { return coefficients[2]; }
    double YY() const noexcept { return coefficients[3]; }
    double X0() const noexcept { return coefficients[4]; }
    double Y0() const noexcept { return coefficients[5]; }
    friend bool operator==(const Transform&, const Transform&) = default;
};

} // namespace kitui::inkwell
