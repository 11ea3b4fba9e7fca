#include "filter/sparse_plain.h"

namespace plain {

void firSparse(const float* x, const float* taps, const int* delays, int count, float* y, int n) {
    for (int i = 0; i < n; ++i) y[i] = 0;
    for (int k = 0; k < count; ++k)
        for (int i = 0; i < n; ++i) y[i] += taps[k] * x[i - delays[k]];
}
void iirSparse(float* y, const float* taps, const int* delays, int count, int n) {
    for (int i = 0; i < n; ++i)
        for (int k = 0; k < count; ++k) y[i] -= taps[k] * y[i - delays[k]];
}

}   // namespace plain
