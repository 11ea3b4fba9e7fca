// Transforms of interleaved complex values as they lie, for lengths N = A B of short factors: no shuffles between layouts, one pass over memory of its own, and N up to 16 in registers.
//
// The source is a matrix of A rows, x[b + B a]. Its columns are transformed, several to a register, turned, and stored as rows of a matrix y[b][j]; then the columns of that are:
//
//     y[b][j] = w_N^(b j) * sum over a of  x[b + B a] w_A^(a j),        X[j + A k] = sum over b of  y[b][j] w_B^(b k),        w_R = exp(-2 pi i / R)
//
// (W. M. Gentleman and G. Sande, Fast Fourier Transforms for Fun and Profit, 1966). Where B is no short factor, its transforms are taken apart in the same way, in place, all A of them
// side by side: a pass of radix R takes each run of L = R M rows to R runs of M, row l of run s turned by w_L^(l s), and the last step puts the runs where they belong. The inverse reads rows A - a, B - b, and turns the other way: the DFT of x[-n] is the inverse.
#pragma once

#include <stddef.h>

#include "core/simd/dispatch.h"

namespace tevs {

constexpr int kMostAtOnce = 16;   // of the straight-line DFTs
constexpr int kMostOdd = 15;      // reals of an odd length

template <class T> struct PairPass {
    int radix, runs, rest;   // R, how many runs there are before, and M
    const T* factors;        // w_L^(l s) for l from 1 on, s from 1 on: real part twice, imaginary part negative and positive
};
template <class T> struct PairSteps {
    int a, b;
    // w_N^(b j) for each block of `lanes` b, the last of which ends with B - 1, and j from 1 on: real parts, each twice; imaginary parts, each negative and positive.
    const T* factors;
    int passes, runs;   // in between; and the runs that these leave
    const PairPass<T>* pass;
    const int* place;   // of each run: k modulo `runs` of its results. Of one run not read
};

template <class T> struct DftPairKernels {
    // From x to y: a row of y has room for A values rounded up to a multiple of the lanes.
    using Columns = void(const PairSteps<T>& steps, const T* src, T* y, bool inverse);
    using Pass = void(const PairPass<T>& pass, int a, T* y, bool inverse);
    using Rows = void(const PairSteps<T>& steps, const T* y, T* dst, T scale, bool inverse);
    using Whole = void(const T* src, T* dst, T scale);
    // Of N reals: X[0] goes to first, X[N/2] of an even N to last, X[1] and on to bins. And back. Any array of the source may be any of the destination.
    using Spectrum = void(const T* src, T* first, T* last, T* bins, T scale);
    using RealValues = void(const T* bins, T first, T last, T* dst, T scale);

    struct Width {
        int lanes;   // complex values to a register; B is no less, and A a multiple where there are passes
        Columns* columns[kMostAtOnce + 1];
        Pass* pass[kMostAtOnce + 1];
        Rows* rows[kMostAtOnce + 1];
    };
    int widths;
    Width width[3];
    Whole *forward[kMostAtOnce + 1], *inverse[kMostAtOnce + 1];   // of so many values; src may be dst
    Spectrum* spectrum[2 * kMostAtOnce + 1];
    RealValues* reals[2 * kMostAtOnce + 1];
};

}   // namespace tevs

TEVS_KERNEL_TABLE(DftPairKernels<float>, dftPairs32, 3, FMA)
TEVS_KERNEL_TABLE(DftPairKernels<double>, dftPairs64, 3, FMA)
