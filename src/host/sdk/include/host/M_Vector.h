// The host's 2-D vector.
#pragma once

template <class T>
struct M_Vector2T {
    T x;
    T y;
};
