#include "telephony/speech_plain.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

namespace plain {
namespace {

template <class T> T stored(double y) {
    if constexpr (std::is_integral_v<T>)
        return T(std::lrint(std::clamp(y, -32768.0, 32767.0)));
    else
        return T(y);
}
template <class W, class S, class D> void slide(const S* src, D* dst, int len, int maskSize) {
    W sum = 0;
    for (int k = 0; k < maskSize; ++k) sum += src[k];
    for (int n = 0; n < len; ++n) {
        dst[n] = D(sum);
        if (n + 1 < len) sum += W(src[n + maskSize]) - W(src[n]);
    }
}

}   // namespace

template <class T> void preEmphasis(const T* src, T* dst, int len, double alpha, double* mem) {
    for (int n = 0; n < len; ++n) dst[n] = stored<T>(src[n] - alpha * (n ? src[n - 1] : *mem));
    *mem = src[len - 1];
}
template <class T> void deEmphasis(const T* src, T* dst, int len, double alpha, double* mem) {
    double y = *mem;
    for (int n = 0; n < len; ++n) dst[n] = stored<T>(y = src[n] + alpha * y);
    *mem = y;
}
template <class T> void trackMean(const T* src, int len, double* level, double alpha) {
    for (int n = 0; n < len; ++n) *level = alpha * *level + (1 - alpha) * src[n];
}
template <class T> void trackPower(const T* src, int len, double* level, double alpha) {
    for (int n = 0; n < len; ++n) *level = alpha * *level + (1 - alpha) * src[n] * src[n];
}
#define EACH(T)                                                    \
    template void preEmphasis(const T*, T*, int, double, double*); \
    template void deEmphasis(const T*, T*, int, double, double*);  \
    template void trackMean(const T*, int, double*, double);       \
    template void trackPower(const T*, int, double*, double);
EACH(int16_t)
EACH(float)
EACH(double)

void sumWindow(const uint8_t* src, int32_t* dst, int len, int maskSize) { slide<int32_t>(src, dst, len, maskSize); }
void sumWindow(const int16_t* src, int32_t* dst, int len, int maskSize) { slide<int32_t>(src, dst, len, maskSize); }
void sumWindow(const float* src, float* dst, int len, int maskSize) { slide<double>(src, dst, len, maskSize); }
void sumWindow(const double* src, double* dst, int len, int maskSize) { slide<double>(src, dst, len, maskSize); }

void levinson(const double* r, double* a, int order, double* k) {
    double energy = r[0];
    a[0] = 1;
    for (int i = 1; i <= order; ++i) {
        double sum = r[i];
        for (int j = 1; j < i; ++j) sum += a[j] * r[i - j];
        const double reflection = k[i - 1] = a[i] = -sum / energy;
        for (int j = 1; 2 * j <= i; ++j) {
            const double x = a[j], y = a[i - j];
            a[j] = x + reflection * y;
            a[i - j] = y + reflection * x;
        }
        energy *= 1 - reflection * reflection;
    }
}

}   // namespace plain
