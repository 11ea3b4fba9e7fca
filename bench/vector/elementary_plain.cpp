// The loops that a caller would write, left to the compiler's vectoriser and, in 64-bit, the C library's vector functions (4 units in the last place).
#include "vector/elementary_plain.h"

#include <algorithm>
#include <cmath>

namespace plain {

void exp(const float* src, float* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = std::exp(src[n]);
}
void exp(const double* src, double* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = std::exp(src[n]);
}
void ln(const float* src, float* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = std::log(src[n]);
}
void ln(const double* src, double* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = std::log(src[n]);
}
void sqrt(const float* src, float* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = std::sqrt(src[n]);
}
void sqrt(const double* src, double* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = std::sqrt(src[n]);
}
void cubrt(const float* src, float* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = std::cbrt(src[n]);
}
void sqr(const float* src, float* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = src[n] * src[n];
}
void sqrt(const std::complex<float>* src, std::complex<float>* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = std::sqrt(src[n]);
}

namespace {
template <class T> T rounded(double v) { return T(std::clamp(std::rint(v), double(std::numeric_limits<T>::min()), double(std::numeric_limits<T>::max()))); }
}   // namespace

void sqr(const int16_t* src, int16_t* dst, int len, int scaleFactor) {
    const double factor = std::ldexp(1.0, -scaleFactor);
    for (int n = 0; n < len; ++n) dst[n] = rounded<int16_t>(src[n] * src[n] * factor);
}
void sqrt(const int16_t* src, int16_t* dst, int len, int scaleFactor) {
    const float factor = std::ldexp(1.0f, -scaleFactor);
    for (int n = 0; n < len; ++n) dst[n] = rounded<int16_t>(std::sqrt(float(std::max<int>(src[n], 0))) * factor);
}
void ln(const int32_t* src, int32_t* dst, int len, int scaleFactor) {
    const double factor = std::ldexp(1.0, -scaleFactor);
    for (int n = 0; n < len; ++n) dst[n] = rounded<int32_t>(std::log(double(src[n])) * factor);
}
void normalize(const float* src, float* dst, int len, float sub, float div) {
    for (int n = 0; n < len; ++n) dst[n] = (src[n] - sub) / div;
}

}   // namespace plain
