// The loops that a caller would write, left to the compiler.
#include "generate/testvector_plain.h"

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

template <class T> void ramp(T* dst, int len, float offset, float slope) {
    for (int n = 0; n < len; ++n) dst[n] = stored<T>(offset + float(n) * slope);
}
template <class T> void jaehne(T* dst, int len, double magn) {
    for (int n = 0; n < len; ++n) dst[n] = stored<T>(magn * std::sin(std::numbers::pi / 2 / len * n * n));
}
template void ramp(uint8_t*, int, float, float);
template void ramp(int16_t*, int, float, float);
template void ramp(int32_t*, int, float, float);
template void ramp(float*, int, float, float);
template void jaehne(int16_t*, int, double);
template void jaehne(float*, int, double);
template void jaehne(double*, int, double);

}   // namespace plain
