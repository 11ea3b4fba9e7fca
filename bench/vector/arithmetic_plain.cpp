#include "vector/arithmetic_plain.h"

#include <cmath>
#include <limits>

namespace plain {
namespace {

template <class T, class W> T saturated(W r) {
    constexpr W lo = std::numeric_limits<T>::min(), hi = std::numeric_limits<T>::max();
    return T(r < lo ? lo : r > hi ? hi : r);
}
template <class W> W right(W r, int s) { return (r + (W{1} << (s - 1)) - 1 + ((r >> s) & 1)) >> s; }
template <class T, class W> T left(W r, int s) { return saturated<T>(W(saturated<T>(r)) * (W{1} << s)); }

}   // namespace

template <class T, class Op> void binary(const T* a, const T* b, T* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = Op{}(a[n], b[n]);
}
template <class T, class W, class Op> void scaled(const T* a, const T* b, T* dst, int len, int s) {
    if (s == 0)
        for (int n = 0; n < len; ++n) dst[n] = saturated<T>(Op{}(W(a[n]), W(b[n])));
    else if (s > 0)
        for (int n = 0; n < len; ++n) dst[n] = saturated<T>(right(Op{}(W(a[n]), W(b[n])), s));
    else
        for (int n = 0; n < len; ++n) dst[n] = left<T>(Op{}(W(a[n]), W(b[n])), -s);
}
template <class T, class F> void divide(const T* a, const T* b, T* dst, int len, int s) {
    const F factor = std::ldexp(F(1), -s);
    for (int n = 0; n < len; ++n) {
        const F q = a[n] == 0 ? F(0) : F(b[n]) / F(a[n]) * factor;
        dst[n] = T(std::rint(std::fmin(std::fmax(q, F(std::numeric_limits<T>::min())), F(std::numeric_limits<T>::max()))));
    }
}
template <class C, class W> void complexProduct(const C* a, const C* b, C* dst, int len, int s) {
    using T = decltype(C::re);
    for (int n = 0; n < len; ++n) {
        const W re = W(a[n].re) * b[n].re - W(a[n].im) * b[n].im, im = W(a[n].re) * b[n].im + W(a[n].im) * b[n].re;
        dst[n] = {saturated<T>(right(re, s)), saturated<T>(right(im, s))};
    }
}
template <class C> void complexProduct(const C* a, const C* b, C* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = {a[n].re * b[n].re - a[n].im * b[n].im, a[n].re * b[n].im + a[n].im * b[n].re};
}
template <class C> void complexQuotient(const C* a, const C* b, C* dst, int len) {
    for (int n = 0; n < len; ++n) {
        const auto m = a[n].re * a[n].re + a[n].im * a[n].im;
        dst[n] = {(b[n].re * a[n].re + b[n].im * a[n].im) / m, (b[n].im * a[n].re - b[n].re * a[n].im) / m};
    }
}
template <class T> void addProduct(const T* a, const T* b, T* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] += a[n] * b[n];
}
void abs(const int16_t* src, int16_t* dst, int len) {
    for (int n = 0; n < len; ++n) dst[n] = saturated<int16_t>(std::abs(int(src[n])));
}

template void binary<float, Sum>(const float*, const float*, float*, int);
template void binary<float, Product>(const float*, const float*, float*, int);
template void binary<float, Quotient>(const float*, const float*, float*, int);
template void binary<double, Sum>(const double*, const double*, double*, int);
template void binary<double, Quotient>(const double*, const double*, double*, int);
template void scaled<uint8_t, int, Sum>(const uint8_t*, const uint8_t*, uint8_t*, int, int);
template void scaled<uint8_t, int, Product>(const uint8_t*, const uint8_t*, uint8_t*, int, int);
template void scaled<int16_t, int, Sum>(const int16_t*, const int16_t*, int16_t*, int, int);
template void scaled<int16_t, int, Product>(const int16_t*, const int16_t*, int16_t*, int, int);
template void scaled<int32_t, int64_t, Sum>(const int32_t*, const int32_t*, int32_t*, int, int);
template void scaled<int32_t, int64_t, Product>(const int32_t*, const int32_t*, int32_t*, int, int);
template void divide<uint8_t, float>(const uint8_t*, const uint8_t*, uint8_t*, int, int);
template void divide<int16_t, float>(const int16_t*, const int16_t*, int16_t*, int, int);
template void divide<int32_t, double>(const int32_t*, const int32_t*, int32_t*, int, int);
template void complexProduct<Complex16s, int64_t>(const Complex16s*, const Complex16s*, Complex16s*, int, int);
template void complexProduct<Complex32s, int64_t>(const Complex32s*, const Complex32s*, Complex32s*, int, int);
template void complexProduct<Complex32f>(const Complex32f*, const Complex32f*, Complex32f*, int);
template void complexProduct<Complex64f>(const Complex64f*, const Complex64f*, Complex64f*, int);
template void complexQuotient<Complex32f>(const Complex32f*, const Complex32f*, Complex32f*, int);
template void addProduct<float>(const float*, const float*, float*, int);

}   // namespace plain
