#pragma once

#include <stdint.h>

#include "core/simd/dispatch.h"
#include "tevs/types.h"

namespace tevs {

// A complex tap h as a row of the matrix that multiplies (re, im) of a sample: h.re, -h.im, and h.im, h.re.
struct TapMatrix {
    int16_t re[2], im[2];
};

// Taps lie in the order in which they meet the samples: the last one, h[tapsLen-1], first.
template <class Tap, class Sample, class Sum> struct FirKernel {
    // out[n] = sum over j = 0 .. tapsLen-1 of taps[j] * in[n+j] for 0 <= n < len. Each sum is formed in the same order whatever n and len are.
    // out and in lie apart.
    void (*block)(const Sample* in, const Tap* taps, int tapsLen, Sum* out, int len);
    // One such sum, in whatever order.
    Sum (*dot)(const Sample* in, const Tap* taps, int tapsLen);
};

struct FirKernels {
    FirKernel<float, float, float> real32f;
    FirKernel<Complex32f, Complex32f, Complex32f> complex32f;
    FirKernel<double, double, double> real64f;
    FirKernel<Complex64f, Complex64f, Complex64f> complex64f;
    // Sums in 32 bits, that wrap. A block of real ones takes an even number of taps.
    FirKernel<int16_t, int16_t, int32_t> real16s;
    FirKernel<TapMatrix, Complex16s, Complex32s> complex16s;
    // totals[n] += sums[n] * 2^s
    void (*addShifted)(const int32_t* sums, int s, int64_t* totals, int len);
};

}   // namespace tevs

TEVS_KERNEL_TABLE(FirKernels, fir, 3, FMA)
