#pragma once

#include <stdint.h>

#include "core/simd/dispatch.h"
#include "transform/fft.plan.h"

namespace tevs {

// What the kernels read of a record: tables in the layout of fft.plan.h, with `lanes` complex values to a block.
struct FftTables {
    int order;                    // of the complex transform, N = 2^order
    const float* passes;          // orders 4 to 15: the passes' factors. Large: those of the column passes, length P and then Q
    const float* outer;           // large: the factors w_N^(n2 k1) between the sweeps: for n2 < kTileColumns in blocks, then for its multiples
    const float* recombination;   // real records: exp(-2 pi i k / 2N) for 1 <= k <= N/2
};

// An N-point transform of interleaved complex values, times scale (1: none). src may equal dst or work. work holds N values for orders
// 4 to 15, two tiles for larger ones, and is not touched below 4.
using FftTransform = void(const FftTables& t, const float* src, float* dst, float* work, float scale);

struct FftKernels {
    int lanes;

    struct Orders {
        FftTransform* of[kFirstLargeOrder + 1];
        FftTransform* operator[](int order) const { return of[order < kFirstLargeOrder ? order : kFirstLargeOrder]; }
    };
    Orders forward, inverse;

    // The spectrum of 2N reals from the N-point transform z of their pairs: X[k] goes to bins + 2k for 0 < k < N, X[0] and X[N], both real, to first and last.
    // z holds half the transform. bins may equal z.
    void (*spectrumOfReal)(const FftTables& t, const float* z, float* bins, float* first, float* last);
    // And back: z from X, such that the N-point inverse of z is the 2N-point one of X.
    void (*pairsOfSpectrum)(const FftTables& t, const float* bins, float first, float last, float* z);
};

}   // namespace tevs

TEVS_KERNEL_TABLE(FftKernels, fft, 3)
