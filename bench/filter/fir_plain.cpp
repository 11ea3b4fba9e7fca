// The loops that a careful caller would write: 64 outputs at a time, held in registers while the taps pass by.
#include "filter/fir_plain.h"

#include <algorithm>
#include <cstdint>

namespace plain {
namespace {

constexpr int kBlock = 64;

template <class Sum, class T, class Out> void real(const T* x, const T* h, int taps, T* y, int len, Out out) {
    int n = 0;
    for (; n + kBlock <= len; n += kBlock) {
        Sum sum[kBlock] = {};
        for (int k = 0; k < taps; ++k)
            for (int i = 0; i < kBlock; ++i) sum[i] += Sum(h[k]) * x[n + i - k];
        for (int i = 0; i < kBlock; ++i) y[n + i] = out(sum[i]);
    }
    for (; n < len; ++n) {
        Sum sum = 0;
        for (int k = 0; k < taps; ++k) sum += Sum(h[k]) * x[n - k];
        y[n] = out(sum);
    }
}

// Taps by their parts, so that the samples stay interleaved.
template <class Sum, class C, class Out> void complex(const C* x, const C* h, int taps, C* y, int len, Out out) {
    constexpr int kBlock = plain::kBlock / 2;
    using Part = decltype(C::re);
    const auto some = [=](int n, int parts) {
        Sum byRe[kBlock] = {}, byIm[kBlock] = {};
        for (int k = 0; k < taps; ++k) {
            const Sum a = h[k].re, b = h[k].im;
            const Part* const s = &x[n - k].re;
            for (int i = 0; i < parts; ++i) byRe[i] += a * s[i];
            for (int i = 0; i < parts; ++i) byIm[i] += b * s[i];
        }
        for (int i = 0; i < parts; i += 2) y[n + i / 2] = {out(byRe[i] - byIm[i + 1]), out(byRe[i + 1] + byIm[i])};
    };
    int n = 0;
    for (; n + kBlock / 2 <= len; n += kBlock / 2) some(n, kBlock);
    if (n < len) some(n, 2 * (len - n));
}

constexpr auto same = [](auto v) { return v; };
constexpr auto fromQ15 = [](int32_t v) { return int16_t(std::clamp((v + (1 << 14)) >> 15, -32768, 32767)); };

}   // namespace

void fir(const float* x, const float* h, int taps, float* y, int len) { real<float>(x, h, taps, y, len, same); }
void fir(const double* x, const double* h, int taps, double* y, int len) { real<double>(x, h, taps, y, len, same); }
void fir(const Complex32f* x, const Complex32f* h, int taps, Complex32f* y, int len) { complex<float>(x, h, taps, y, len, same); }
void fir(const Complex64f* x, const Complex64f* h, int taps, Complex64f* y, int len) { complex<double>(x, h, taps, y, len, same); }
void fir(const int16_t* x, const int16_t* h, int taps, int16_t* y, int len) { real<int32_t>(x, h, taps, y, len, fromQ15); }
void fir(const Complex16s* x, const Complex16s* h, int taps, Complex16s* y, int len) { complex<int32_t>(x, h, taps, y, len, fromQ15); }

float dot(const float* x, const float* h, int n) {
    constexpr int kSums = 32;
    float sum[kSums] = {}, y = 0;
    int i = 0;
    for (; i + kSums <= n; i += kSums)
        for (int l = 0; l < kSums; ++l) sum[l] += x[i + l] * h[i + l];
    for (; i < n; ++i) y += x[i] * h[i];
    for (int half = kSums / 2; half > 0; half /= 2)
        for (int l = 0; l < half; ++l) sum[l] += sum[l + half];
    return y + sum[0];
}

}   // namespace plain
