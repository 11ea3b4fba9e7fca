// The loop that a careful caller would write: each output by the taps of its phase, in as many sums as a vector has lanes.
#include "filter/multirate_plain.h"

namespace plain {

void multirate(const float* x, const float* h, int taps, int up, int down, float* y, int len) {
    constexpr int kLanes = 8;
    int phase = 0;
    for (int m = 0; m < len; ++m) {
        const float* const row = h + phase * taps;
        float sum[kLanes] = {};
        for (int j = 0; j + kLanes <= taps; j += kLanes)
            for (int l = 0; l < kLanes; ++l) sum[l] += row[j + l] * x[j + l];
        y[m] = ((sum[0] + sum[4]) + (sum[1] + sum[5])) + ((sum[2] + sum[6]) + (sum[3] + sum[7]));
        for (phase += down; phase >= up; phase -= up) ++x;
    }
}

}   // namespace plain
