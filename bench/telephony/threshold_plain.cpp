// The loops that a caller would write, left to the compiler's vectoriser.
#include "telephony/threshold_plain.h"

#include <algorithm>
#include <cmath>

namespace plain {

template <class T> void below(const T* src, T* dst, int len, T level) {
    for (int n = 0; n < len; ++n) dst[n] = std::max(src[n], level);
}
template <class T> void belowValue(const T* src, T* dst, int len, T level, T value) {
    for (int n = 0; n < len; ++n) dst[n] = src[n] < level ? value : src[n];
}
template <class T> void aboveValue(const T* src, T* dst, int len, T level, T value) {
    for (int n = 0; n < len; ++n) dst[n] = src[n] > level ? value : src[n];
}
template <class T> void outside(const T* src, T* dst, int len, T low, T valueLow, T high, T valueHigh) {
    for (int n = 0; n < len; ++n) dst[n] = src[n] > high ? valueHigh : src[n] < low ? valueLow : src[n];
}
template <class T> void smallMagnitude(const T* src, T* dst, int len, T level) {
    for (int n = 0; n < len; ++n) {
        if constexpr (T(0.5) != 0)
            dst[n] = std::copysign(std::max(std::abs(src[n]), level), src[n]);
        else
            dst[n] = src[n] < 0 ? std::min<T>(src[n], T(-level)) : std::max<T>(src[n], level);
    }
}
void inverse(const float* src, float* dst, int len, float level) {
    for (int n = 0; n < len; ++n) dst[n] = std::copysign(1 / std::max(std::abs(src[n]), level), src[n]);
}

template void below(const int16_t*, int16_t*, int, int16_t);
template void below(const int32_t*, int32_t*, int, int32_t);
template void below(const float*, float*, int, float);
template void below(const double*, double*, int, double);
template void belowValue(const int16_t*, int16_t*, int, int16_t, int16_t);
template void belowValue(const float*, float*, int, float, float);
template void belowValue(const double*, double*, int, double, double);
template void aboveValue(const int16_t*, int16_t*, int, int16_t, int16_t);
template void aboveValue(const float*, float*, int, float, float);
template void outside(const int16_t*, int16_t*, int, int16_t, int16_t, int16_t, int16_t);
template void outside(const int32_t*, int32_t*, int, int32_t, int32_t, int32_t, int32_t);
template void outside(const float*, float*, int, float, float, float, float);
template void smallMagnitude(const int16_t*, int16_t*, int, int16_t);
template void smallMagnitude(const int32_t*, int32_t*, int, int32_t);
template void smallMagnitude(const float*, float*, int, float);

void below(const Complex32f* src, Complex32f* dst, int len, float level) {
    for (int n = 0; n < len; ++n) {
        const float s = src[n].re * src[n].re + src[n].im * src[n].im, factor = s < level * level ? level / std::sqrt(s) : 1.0f;
        dst[n] = {src[n].re * factor, src[n].im * factor};
    }
}
template <class C, class T> void belowMagnitude(const C* src, C* dst, int len, T level, C value) {
    for (int n = 0; n < len; ++n) {
        const bool is = src[n].re * src[n].re + src[n].im * src[n].im < level * level;
        dst[n] = {is ? value.re : src[n].re, is ? value.im : src[n].im};
    }
}
void belowValue(const Complex32f* src, Complex32f* dst, int len, float level, Complex32f value) { belowMagnitude(src, dst, len, level, value); }
void belowValue(const Complex64f* src, Complex64f* dst, int len, double level, Complex64f value) { belowMagnitude(src, dst, len, level, value); }
void belowValue(const Complex16s* src, Complex16s* dst, int len, int16_t level, Complex16s value) {
    for (int n = 0; n < len; ++n) {
        const bool is = unsigned(src[n].re * src[n].re) + unsigned(src[n].im * src[n].im) < unsigned(level * level);
        dst[n] = {is ? value.re : src[n].re, is ? value.im : src[n].im};
    }
}
void inverse(const Complex32f* src, Complex32f* dst, int len, float level) {
    for (int n = 0; n < len; ++n) {
        const float s = src[n].re * src[n].re + src[n].im * src[n].im, factor = 1 / (s < level * level ? std::sqrt(s) * level : s);
        dst[n] = {src[n].re * factor, -src[n].im * factor};
    }
}

}   // namespace plain
