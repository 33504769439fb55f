// Host math helpers.
#pragma once

#include <cstdint>

#include "qzgp/QZ_Basic.h"

/// [any-thread] The nearest whole number, a half to the even neighbour (127.5 gives 128,
/// 382.5 gives 382, 2.5 gives 2, -0.5 gives 0), saturated to the 32-bit range; NaN gives 0.
QZ_HOST_API std::int32_t M_RoundDouble(double value);

/// [any-thread] The floating remainder of x / y with the sign of x. A remainder that is
/// not a number (x infinite, y zero, or a NaN operand) is the one quiet NaN, sign bit clear.
QZ_HOST_API double M_fmod(double x, double y);
