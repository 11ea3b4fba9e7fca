// Discrete cosine transforms of length N by way of the spectrum V of the samples in another order (J. Makhoul, A fast cosine transform in one and two dimensions, 1980):
//
//     v[n] = x[2n], v[N-1-n] = x[2n+1];   with w = exp(-pi i k / 2N):   sum of x[n] cos(pi (2n+1) k / 2N) = Re(w V[k]),   that of N-k = -Im(w V[k])
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "core/simd/dispatch.h"

namespace tevs {

constexpr int kMostMatrix = 32;   // the longest transform by matrices

template <class T> struct DctKernels {
    // Into that order, and back.
    void (*fold)(const T* x, T* v, ptrdiff_t n);
    void (*unfold)(const T* v, T* x, ptrdiff_t n);
    // y[k] and y[n-k], times f, from V[k] for from <= k < to; w begins with that of `from`. And V from y, times f. bins + 2k is V[k], and nowhere where y is.
    void (*cosines)(const T* bins, T* y, ptrdiff_t n, ptrdiff_t from, ptrdiff_t to, const T* w, T f);
    void (*spectrum)(const T* y, T* bins, ptrdiff_t n, ptrdiff_t from, ptrdiff_t to, const T* w, T f);
    // Whole transforms of 2, 4, .. 32; y may be x.
    void (*forward)(const T* x, T* y, int n, T first, T other);
    void (*inverse)(const T* y, T* x, int n, T first, T other);
    // Any length up to 100, forward and inverse, from the cosines and sines of pi k / 2N, k < N, in two arrays. src may be dst.
    void (*forwardSums)(const T* x, T* y, int n, const double* turns, T first, T other);
    void (*inverseSums)(const T* y, T* x, int n, const double* turns, T first, T other);
};

}   // namespace tevs

TEVS_KERNEL_TABLE(DctKernels<float>, dct32, 3, FMA)
TEVS_KERNEL_TABLE(DctKernels<double>, dct64, 3, FMA)
