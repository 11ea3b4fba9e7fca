#include "filter/multirate_lms_plain.h"

#include <algorithm>
#include <cmath>

namespace plain {

void lms(const float* x, const float* ref, float* y, int n, float mu, float norm, float* h, int taps) {
    constexpr int kSums = 16;
    for (int i = 0; i < n; ++i) {
        const float* const in = x + i - (taps - 1);
        float sum[kSums] = {}, squares[kSums] = {}, v = 0, power = 0;
        int j = 0;
        for (; j + kSums <= taps; j += kSums)
            for (int l = 0; l < kSums; ++l) sum[l] += h[j + l] * in[j + l], squares[l] += in[j + l] * in[j + l];
        for (; j < taps; ++j) v += h[j] * in[j], power += in[j] * in[j];
        for (int l = 0; l < kSums; ++l) v += sum[l], power += squares[l];
        const float e = 2 * mu * (ref[i] - v), g = norm > 0 ? e / (norm + power) : e;
        y[i] = v;
        for (int k = 0; k < taps; ++k) h[k] += g * in[k];
    }
}

void lms(const Complex32f* x, const Complex32f* ref, Complex32f* y, int n, float mu, float norm, Complex32f* h, int taps) {
    for (int i = 0; i < n; ++i) {
        const Complex32f* const in = x + i - (taps - 1);
        float re = 0, im = 0, power = 0;
        for (int k = 0; k < taps; ++k) {
            re += h[k].re * in[k].re - h[k].im * in[k].im;
            im += h[k].re * in[k].im + h[k].im * in[k].re;
            power += in[k].re * in[k].re + in[k].im * in[k].im;
        }
        const float by = norm > 0 ? 2 * mu / (norm + power) : 2 * mu, gr = by * (ref[i].re - re), gi = by * (ref[i].im - im);
        y[i] = {re, im};
        for (int k = 0; k < taps; ++k) {
            h[k].re += gr * in[k].re + gi * in[k].im;
            h[k].im += gi * in[k].re - gr * in[k].im;
        }
    }
}

void lms(const int16_t* x, const int16_t* ref, int16_t* y, int n, float mu, float norm, int32_t* h, int taps) {
    for (int i = 0; i < n; ++i) {
        const int16_t* const in = x + i - (taps - 1);
        int64_t sum = 0, power = 0;
        for (int k = 0; k < taps; ++k) sum += int64_t{h[k]} * in[k], power += in[k] * in[k];
        y[i] = int16_t(std::clamp<int64_t>((sum + (1 << 29)) >> 30, -32768, 32767));
        const double e = 2 * double(mu) * 0x1p30 * (ref[i] - y[i]), g = norm > 0 ? e / (norm + double(power)) : e;
        for (int k = 0; k < taps; ++k) h[k] = int32_t(std::clamp(h[k] + std::nearbyint(g * in[k]), -0x1p31, 0x1p31 - 1));
    }
}

}   // namespace plain
