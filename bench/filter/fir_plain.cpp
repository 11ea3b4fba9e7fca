// The loop that a careful caller would write: 64 outputs at a time, held in registers while the taps pass by.
#include "filter/fir_plain.h"

namespace plain {

void fir(const float* x, const float* h, int taps, float* y, int len) {
    constexpr int kBlock = 64;
    int n = 0;
    for (; n + kBlock <= len; n += kBlock) {
        float sum[kBlock] = {};
        for (int k = 0; k < taps; ++k)
            for (int i = 0; i < kBlock; ++i) sum[i] += h[k] * x[n + i - k];
        for (int i = 0; i < kBlock; ++i) y[n + i] = sum[i];
    }
    for (; n < len; ++n) {
        float sum = 0;
        for (int k = 0; k < taps; ++k) sum += h[k] * x[n - k];
        y[n] = sum;
    }
}

}   // namespace plain
