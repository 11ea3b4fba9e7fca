#pragma once

#include "core/simd/dispatch.h"

namespace tevs {

// Taps lie in the order in which they meet the samples: the one of the oldest first. Sums are formed in an order that depends on tapsLen alone.
struct LmsKernels {
    // sum over j = 0 .. tapsLen-1 of taps[j] * in[j]
    float (*dot)(const float* in, const float* taps, int tapsLen);
    // taps[j] += e * in[j]
    void (*adapt)(const float* in, float* taps, int tapsLen, float e);
    // For n = 0 .. len-1 in turn: out[n] is the dot product at in + n, and the taps are adapted there with e = (ref[n] - out[n]) * step, unless step is 0. out may be ref.
    void (*block)(const float* in, const float* ref, float* out, int len, float step, float* taps, int tapsLen);
};

}   // namespace tevs

TEVS_KERNEL_TABLE(LmsKernels, lms, 2, FMA)
