// The loops that a careful caller would write.
#include "filter/convolution_plain.h"

#include <algorithm>

namespace plain {
namespace {

constexpr int kBlock = 64;

template <class Sum, class T, class Out> void some(const T* h, int m, const T* x, int len, int first, int count, Out out) {
    int n = 0;
    // Blocks of outputs that meet all taps are held in registers while these pass by.
    while (n < count) {
        const int at = first + n;
        if (at >= m - 1 && at + kBlock <= len && n + kBlock <= count) {
            Sum sum[kBlock] = {};
            for (int k = 0; k < m; ++k)
                for (int i = 0; i < kBlock; ++i) sum[i] += Sum(h[k]) * x[at + i - k];
            for (int i = 0; i < kBlock; ++i) out(n + i, sum[i]);
            n += kBlock;
        } else {
            Sum sum = 0;
            for (int k = std::max(0, at - len + 1); k <= std::min(at, m - 1); ++k) sum += Sum(h[k]) * x[at - k];
            out(n++, sum);
        }
    }
}
// Where few outputs meet all taps, a tap at a time.
template <class T> void byTaps(const T* h, int m, const T* x, int len, T* y) {
    std::fill(y, y + m + len - 1, T(0));
    for (int k = 0; k < m; ++k)
        for (int i = 0; i < len; ++i) y[k + i] += h[k] * x[i];
}
template <class T> void either(const T* h, int m, const T* x, int len, T* y) {
    if (m > len) return either(x, len, h, m, y);
    if (len < 3 * m || m + len < 512) return byTaps(h, m, x, len, y);
    some<T>(h, m, x, len, 0, m + len - 1, [=](int n, T sum) { y[n] = sum; });
}
int16_t fromQ15(int32_t v) { return int16_t(std::clamp((v + (1 << 14)) >> 15, -32768, 32767)); }

template <class Sum, class T> Sum dot(const T* x, const T* h, int n) {
    constexpr int kSums = 32;
    Sum sum[kSums] = {}, y = 0;
    int i = 0;
    for (; i + kSums <= n; i += kSums)
        for (int l = 0; l < kSums; ++l) sum[l] += Sum(x[i + l]) * h[i + l];
    for (; i < n; ++i) y += Sum(x[i]) * h[i];
    for (int half = kSums / 2; half > 0; half /= 2)
        for (int l = 0; l < half; ++l) sum[l] += sum[l + half];
    return y + sum[0];
}

}   // namespace

void convolve(const float* h, int m, const float* x, int len, float* y) { either(h, m, x, len, y); }
void convolve(const double* h, int m, const double* x, int len, double* y) { either(h, m, x, len, y); }
void convolve(const int16_t* h, int m, const int16_t* x, int len, int16_t* y) {
    some<int32_t>(h, m, x, len, 0, m + len - 1, [=](int n, int32_t sum) { y[n] = fromQ15(sum); });
}
void convolveBiased(const float* h, int m, const float* x, int len, float* y, int count, int bias) {
    if (bias >= m - 1 && bias + count <= len) {
        std::fill(y, y + count, 0.0f);
        for (int k = 0; k < m; ++k)
            for (int n = 0; n < count; ++n) y[n] += h[k] * x[bias + n - k];
        return;
    }
    some<float>(h, m, x, len, bias, count, [=](int n, float sum) { y[n] = sum; });
}
void autoCorrelate(const float* x, int len, float* r, int lags) {
    for (int lag = 0; lag < lags; ++lag) r[lag] = dot<float>(x, x + lag, len - lag);
}
void autoCorrelate(const int16_t* x, int len, int16_t* r, int lags) {
    for (int lag = 0; lag < lags; ++lag) r[lag] = fromQ15(dot<int32_t>(x, x + lag, len - lag));
}
void cyclic8(const float* x, const float* h, float* y) {
    float twice[16], sum[8] = {};
    for (int n = 0; n < 16; ++n) twice[n] = h[n % 8];
    for (int k = 0; k < 8; ++k)
        for (int n = 0; n < 8; ++n) sum[n] += x[k] * twice[8 + n - k];
    for (int n = 0; n < 8; ++n) y[n] = sum[n];
}

}   // namespace plain
