#pragma once

#include "core/simd/dispatch.h"

namespace tevs {

struct FirKernels {
    // out[n] = sum over j = 0 .. tapsLen-1 of taps[j] * in[n+j] for 0 <= n < len. out may lie at or before in + tapsLen - 1's place only where the
    // caller has seen to it that no output overwrites an input still to be read; each sum is formed in the same order whatever n and len are.
    void (*block)(const float* in, const float* taps, int tapsLen, float* out, int len);
    // One such sum.
    float (*dot)(const float* in, const float* taps, int tapsLen);
};

}   // namespace tevs

TEVS_KERNEL_TABLE(FirKernels, fir, 3)
