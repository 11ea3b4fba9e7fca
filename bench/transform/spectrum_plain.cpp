#include "transform/spectrum_plain.h"

#include <algorithm>

namespace plain {
namespace {

int16_t scaled(int64_t r, int s) {
    r = (r + (int64_t{1} << (s - 1)) - 1 + ((r >> s) & 1)) >> s;
    return int16_t(std::clamp<int64_t>(r, -32768, 32767));
}
template <class C> C conjugate(C z) { return {z.re, decltype(z.re)(-z.im)}; }
Complex16s conjugate(Complex16s z) { return {z.re, int16_t(z.im == -32768 ? 32767 : -z.im)}; }

}   // namespace

template <class T> void mulPack(const T* a, const T* b, T* dst, int len) {
    dst[0] = a[0] * b[0];
    for (int i = 1; i + 1 < len; i += 2) {
        const T re = a[i] * b[i] - a[i + 1] * b[i + 1], im = a[i] * b[i + 1] + a[i + 1] * b[i];
        dst[i] = re;
        dst[i + 1] = im;
    }
    if (len % 2 == 0) dst[len - 1] = a[len - 1] * b[len - 1];
}
template <class T> void mulPackConj(const T* a, T* dst, int len) {
    dst[0] *= a[0];
    for (int i = 1; i + 1 < len; i += 2) {
        const T re = dst[i] * a[i] + dst[i + 1] * a[i + 1], im = dst[i + 1] * a[i] - dst[i] * a[i + 1];
        dst[i] = re;
        dst[i + 1] = im;
    }
    if (len % 2 == 0) dst[len - 1] *= a[len - 1];
}
void mulPack16s(const int16_t* a, const int16_t* b, int16_t* dst, int len, int scaleFactor) {
    dst[0] = scaled(a[0] * b[0], scaleFactor);
    for (int i = 1; i + 1 < len; i += 2) {
        const int64_t re = a[i] * b[i] - a[i + 1] * b[i + 1], im = int64_t{a[i]} * b[i + 1] + a[i + 1] * b[i];
        dst[i] = scaled(re, scaleFactor);
        dst[i + 1] = scaled(im, scaleFactor);
    }
    if (len % 2 == 0) dst[len - 1] = scaled(a[len - 1] * b[len - 1], scaleFactor);
}
template <class T, class C> void conjPack(const T* src, C* dst, int len) {
    dst[0] = {src[0], 0};
    for (int k = 1; 2 * k < len; ++k) {
        const C z = {src[2 * k - 1], src[2 * k]};
        dst[k] = z;
        dst[len - k] = conjugate(z);
    }
    if (len % 2 == 0) dst[len / 2] = {src[len - 1], 0};
}
template <class T, class C> void conjCcs(const T* src, C* dst, int len) {
    for (int k = 0; k <= len / 2; ++k) dst[k] = {src[2 * k], src[2 * k + 1]};
    for (int k = len / 2 + 1; k < len; ++k) dst[k] = conjugate(dst[len - k]);
}

template void mulPack<float>(const float*, const float*, float*, int);
template void mulPack<double>(const double*, const double*, double*, int);
template void mulPackConj<float>(const float*, float*, int);
template void mulPackConj<double>(const double*, double*, int);
template void conjPack<int16_t, Complex16s>(const int16_t*, Complex16s*, int);
template void conjPack<float, Complex32f>(const float*, Complex32f*, int);
template void conjPack<double, Complex64f>(const double*, Complex64f*, int);
template void conjCcs<float, Complex32f>(const float*, Complex32f*, int);

}   // namespace plain
