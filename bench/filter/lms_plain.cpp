#include "filter/lms_plain.h"

namespace plain {

void lms(const float* x, const float* ref, float* y, int n, float step, float* h, int taps) {
    constexpr int kSums = 16;
    for (int i = 0; i < n; ++i) {
        const float* const in = x + i - (taps - 1);
        float sum[kSums] = {}, v = 0;
        int j = 0;
        for (; j + kSums <= taps; j += kSums)
            for (int l = 0; l < kSums; ++l) sum[l] += h[j + l] * in[j + l];
        for (; j < taps; ++j) v += h[j] * in[j];
        for (float s : sum) v += s;
        y[i] = v;
        const float e = (ref[i] - v) * step;
        for (int k = 0; k < taps; ++k) h[k] += e * in[k];
    }
}

}   // namespace plain
