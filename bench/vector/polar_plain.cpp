// The loops that a caller would write, left to the compiler's vectoriser and, with -ffast-math, to the C library's vector functions (libmvec, off by up to 4 units).
#include "vector/polar_plain.h"

#include <cmath>

namespace plain {
namespace {

template <class S, class D> void magnitudes(const S* src, D* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = std::sqrt(src[n].re * src[n].re + src[n].im * src[n].im);
}
template <class S, class D> void phases(const S* src, D* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = std::atan2(src[n].im, src[n].re);
}
template <class S, class D> void powers(const S* src, D* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = src[n].re * src[n].re + src[n].im * src[n].im;
}
template <class T> void cartesians(const T* magnitude, const T* phase, T* re, T* im, int len) {
    for (int n = 0; n < len; ++n) {
        re[n] = magnitude[n] * std::cos(phase[n]);
        im[n] = magnitude[n] * std::sin(phase[n]);
    }
}

}   // namespace

void arctan(const float* src, float* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = std::atan(src[n]);
}
void arctan(const double* src, double* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = std::atan(src[n]);
}
void magnitude(const Complex32f* src, float* dst, int len) { magnitudes(src, dst, len); }
void magnitude(const Complex64f* src, double* dst, int len) { magnitudes(src, dst, len); }
void magnitude(const Complex16s* src, int16_t* dst, int len) {
    for (int n = 0; n < len; ++n) {
        const float re = src[n].re, im = src[n].im;
        dst[n] = int16_t(std::fmin(std::rint(std::sqrt(re * re + im * im)), 32767.0f));
    }
}
void phase(const Complex32f* src, float* dst, int len) { phases(src, dst, len); }
void phase(const Complex64f* src, double* dst, int len) { phases(src, dst, len); }
void phase(const Complex16s* src, int16_t* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = int16_t(std::rint(std::atan2(float(src[n].im), float(src[n].re)) * 4096));
}
void power(const Complex32f* src, float* dst, int len) { powers(src, dst, len); }
void power(const Complex64f* src, double* dst, int len) { powers(src, dst, len); }
void power(const Complex16s* src, int16_t* dst, int len) {
    for (int n = 0; n < len; ++n) {
        const unsigned square = unsigned(src[n].re * src[n].re) + unsigned(src[n].im * src[n].im), scaled = (square + 0x7fff + (square >> 16 & 1)) >> 16;
        dst[n] = int16_t(scaled < 32767 ? scaled : 32767);
    }
}
void cartesian(const float* magnitude, const float* phase, float* re, float* im, int len) { cartesians(magnitude, phase, re, im, len); }
void cartesian(const double* magnitude, const double* phase, double* re, double* im, int len) { cartesians(magnitude, phase, re, im, len); }

}   // namespace plain
