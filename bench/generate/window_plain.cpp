// The loops that a caller would write, left to the compiler.
#include "generate/window_plain.h"

#include <cmath>
#include <numbers>

namespace plain {
namespace {

template <class T> T i0(T x) {
    if (x < T(3.75)) {
        const T z = x / T(3.75) * (x / T(3.75));
        return 1 + z * (T(3.5156229) + z * (T(3.0899424) + z * (T(1.2067492) + z * (T(0.2659732) + z * (T(0.0360768) + z * T(0.0045813))))));
    }
    const T u = T(3.75) / x;
    return std::exp(x) / std::sqrt(x) *
           (T(0.39894228) +
            u * (T(0.01328592) +
                 u * (T(0.00225319) +
                      u * (T(-0.00157565) + u * (T(0.00916281) + u * (T(-0.02057706) + u * (T(0.02635537) + u * (T(-0.01647633) + u * T(0.00392377)))))))));
}

}   // namespace

template <class T> void hann(const T* src, T* dst, int len) {
    const T step = T(2 * std::numbers::pi / (len - 1));
    for (int n = 0; n < len; ++n) dst[n] = src[n] * (T(0.5) - T(0.5) * std::cos(T(n) * step));
}
template <class T> void blackman(const T* src, T* dst, int len, T alpha) {
    const T step = T(2 * std::numbers::pi / (len - 1));
    for (int n = 0; n < len; ++n) {
        const T c = std::cos(T(n) * step) / 2;
        dst[n] = src[n] * (alpha + T(0.5) - c - 4 * alpha * c * c);
    }
}
template <class T> void kaiser(const T* src, T* dst, int len, T alpha) {
    const T g = 1 / i0(alpha * T(len - 1) / 2);
    for (int n = 0; n < len; ++n) dst[n] = src[n] * i0(alpha * std::sqrt(T(n) * T(len - 1 - n))) * g;
}
template <class T> void bartlett(const T* src, T* dst, int len) {
    const T step = T(2.0 / (len - 1));
    for (int n = 0; n < len; ++n) dst[n] = src[n] * (1 - std::fabs(T(n) * step - 1));
}

template void hann(const float*, float*, int);
template void hann(const double*, double*, int);
template void blackman(const float*, float*, int, float);
template void blackman(const double*, double*, int, double);
template void kaiser(const float*, float*, int, float);
template void kaiser(const double*, double*, int, double);
template void bartlett(const float*, float*, int);
template void bartlett(const double*, double*, int);

}   // namespace plain
