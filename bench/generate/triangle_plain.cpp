// The loops that a caller would write, left to the compiler.
#include "generate/triangle_plain.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace plain {
namespace {

template <class T> T stored(double x) {
    if constexpr (std::numeric_limits<T>::is_integer)
        return T(std::clamp<double>(std::round(x), std::numeric_limits<T>::min(), std::numeric_limits<T>::max()));
    else
        return T(x);
}

}   // namespace

template <class T> void triangle(T* dst, int len, double magn, double rFreq, double phase) {
    double x = magn * (1 - 2 * phase / std::numbers::pi), step = -4 * magn * rFreq;
    for (int n = 0; n < len; ++n) {
        dst[n] = stored<T>(x);
        x += step;
        if (std::fabs(x) > magn) {
            x = std::copysign(2 * magn, x) - x;
            step = -step;
        }
    }
}

template void triangle(int16_t*, int, double, double, double);
template void triangle(float*, int, double, double, double);
template void triangle(double*, int, double, double, double);

}   // namespace plain
