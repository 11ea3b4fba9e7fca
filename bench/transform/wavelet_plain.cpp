#include "transform/wavelet_plain.h"

#include <algorithm>

namespace plain {

void analysis(const float* x, const float* lowTaps, const float* highTaps, int taps, float* low, float* high, int n) {
    for (int i = 0; i < n; ++i) {
        float l = 0, h = 0;
        for (int k = 0; k < taps; ++k) {
            l += lowTaps[k] * x[2 * i + 1 - k];
            h += highTaps[k] * x[2 * i + 1 - k];
        }
        low[i] = l;
        high[i] = h;
    }
}

void dwt(const double* x, double* y, double* work, int n, int levels, const double* lowTaps, const double* highTaps, int taps) {
    std::copy_n(x, n, work);
    for (int level = 0; level < levels; ++level) {
        const int m = (n + 1) / 2, before = taps / 2 - 1, after = taps / 2;
        if (n % 2) work[n] = work[n - 1];
        double* const signal = work + 2 * m + 64;
        for (int i = 0; i < before; ++i) signal[i] = work[(2 * m - before % (2 * m) + i) % (2 * m)];
        std::copy_n(work, 2 * m, signal + before);
        for (int i = 0; i < after; ++i) signal[before + 2 * m + i] = work[i % (2 * m)];
        for (int i = 0; i < m; ++i) {
            double l = 0, h = 0;
            for (int k = 0; k < taps; ++k) {
                l += lowTaps[k] * signal[2 * i + taps - 1 - k];
                h += highTaps[k] * signal[2 * i + taps - 1 - k];
            }
            work[i] = l;
            y[m + i] = h;
        }
        n = m;
    }
    std::copy_n(work, n, y);
}

void haar(const float* x, float* low, float* high, int n) {
    for (int i = 0; i < n; ++i) {
        low[i] = (x[2 * i] + x[2 * i + 1]) * 0.70710678f;
        high[i] = (x[2 * i] - x[2 * i + 1]) * 0.70710678f;
    }
}
void haar(const int16_t* x, int16_t* low, int16_t* high, int n) {
    const auto rounded = [](int v) { return int16_t((v + (v >> 1 & 1)) >> 1); };
    for (int i = 0; i < n; ++i) {
        low[i] = rounded(x[2 * i] + x[2 * i + 1]);
        high[i] = rounded(x[2 * i] - x[2 * i + 1]);
    }
}
void lift53(const int16_t* x, int16_t* low, int16_t* high, int n) {
    for (int i = 0; i < n - 1; ++i) high[i] = int16_t(x[2 * i + 1] - ((x[2 * i] + x[2 * i + 2]) >> 1));
    high[n - 1] = int16_t(x[2 * n - 1] - x[2 * n - 2]);
    low[0] = int16_t(x[0] + ((2 * high[0] + 2) >> 2));
    for (int i = 1; i < n; ++i) low[i] = int16_t(x[2 * i] + ((high[i - 1] + high[i] + 2) >> 2));
}

}   // namespace plain
