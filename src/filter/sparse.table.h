#pragma once

#include <stdint.h>

#include "core/simd/dispatch.h"

namespace tevs {

// Taps lie in rising order of their delays. Each output is summed in the same order whatever n and len are.
struct SparseKernels {
    // out[n] = sum over k = 0 .. count-1 of taps[k] * in[n - delays[k]] for 0 <= n < len. out and in lie apart.
    void (*fir)(const float* in, const float* taps, const int32_t* delays, int count, float* out, int len);
    // out[n] += sum over k = count-1 .. 0 of taps[k] * out[n - delays[k]] for n = 0 .. len-1 in turn. Delays are at least 1.
    void (*iir)(float* out, const float* taps, const int32_t* delays, int count, int len);
};

}   // namespace tevs

TEVS_KERNEL_TABLE(SparseKernels, sparse, 2, FMA)
