// The recurrence as it stands in textbooks.
#include "telephony/goertzel_plain.h"

#include <cmath>

namespace plain {
namespace {

template <class T, class S> void real(const S* src, int len, T* re, T* im, double omega) {
    const T c = T(std::cos(omega)), s = T(std::sin(omega)), twice = 2 * c;
    T s1 = 0, s2 = 0;
    for (int n = 0; n < len; ++n) {
        const T next = T(src[n]) + twice * s1 - s2;
        s2 = s1;
        s1 = next;
    }
    *re = c * s1 - s2;
    *im = s * s1;
}
template <class T, class S, class Z> void complex(const S* src, int len, Z* result, double omega) {
    const T c = T(std::cos(omega)), s = T(std::sin(omega)), twice = 2 * c;
    Z s1{}, s2{};
    for (int n = 0; n < len; ++n) {
        const Z next = {T(src[n].re) + twice * s1.re - s2.re, T(src[n].im) + twice * s1.im - s2.im};
        s2 = s1;
        s1 = next;
    }
    *result = {c * s1.re - s * s1.im - s2.re, c * s1.im + s * s1.re - s2.im};
}
constexpr double kTurn = 6.283185307179586;

}   // namespace

void goertzel(const float* src, int len, Complex32f* result, float f) { real(src, len, &result->re, &result->im, kTurn * f); }
void goertzel(const int16_t* src, int len, Complex32f* result, float f) { real(src, len, &result->re, &result->im, kTurn * f); }
void goertzel(const Complex32f* src, int len, Complex32f* result, float f) { complex<float>(src, len, result, kTurn * f); }
void goertzel(const Complex16s* src, int len, Complex32f* result, float f) { complex<float>(src, len, result, kTurn * f); }
void goertzel(const Complex64f* src, int len, Complex64f* result, double f) { complex<double>(src, len, result, kTurn * f); }

}   // namespace plain
