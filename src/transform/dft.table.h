// Mixed-radix transforms of any length N = rows x columns, for the kernels that run them and the tables that feed them.
//
// The source is a matrix, x[columns a + l]. First the columns are transformed, all at once, in passes that do not care what a column is (Stockham's autosort form, decimation in
// frequency): with m = rows left / R and s = columns times the radices before, for p < m, j < R and q < s
//
//     y[q + s (R p + j)] = w^(p j) * sum over i of  x[q + s (p + m i)] exp(-2 pi i i j / R),   w = exp(-2 pi i / (R m))
//
// Then each row k is transformed and turned over (W. M. Gentleman and G. Sande, Fast Fourier Transforms for Fun and Profit, 1966):
//
//     X[k + rows j] = sum over l of  y[k][l] exp(-2 pi i k l / N) exp(-2 pi i l j / columns)
//
// Vectors lie along q, and in the last step along k: so both rows and columns may be any number, and only the end of a run is done twice.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "core/simd/dispatch.h"
#include "transform/fft.table.h"

namespace tevs {

constexpr int kMostRadix = 16;    // of the straight-line DFTs
constexpr int kMostPrime = 149;   // other primes, by symmetric sums
constexpr int kMostPasses = 16;   // 3^17 rows, of 4 floats or 2 doubles at least, are more than the work area of any record holds

// Radices whose butterflies registers hold, and those that nothing else can do. 0 is any prime above kMostRadix.
constexpr bool isPassRadix(int r) { return r == 0 || (r >= 2 && r <= 8) || r == 10 || r == 11 || r == 13; }

template <class T> struct DftPass {
    int radix, m;
    ptrdiff_t stride;   // s
    const T* factors;   // w^(p j): for p from 1 on, j from 1 on
    const T* prime;     // of a radix above kMostRadix: cosine and sine of 2 pi j k / R for k = 1 .. (R-1)/2 (one more where that is odd), j = 1 .. (R-1)/2
};

template <class T> struct DftRows {
    int rows, columns;
    const T*
        factors;   // exp(-2 pi i k l / N): for each block of rows, in block order, l from 1 on. Of a prime above kMostRadix: for each row from 1 on, l from 1 on
    const T* prime;   // for each block of `lanes` k from 1 on, for j = 1 .. (R-1)/2: the cosines and the sines of 2 pi j k / R
};

// Where the values of a transform lie, of source or destination. Handed on by reference: a copy would load what was just stored in other pieces, and wait. A forward transform between places with their parts exchanged is an inverse one.
enum class Form { Parts, Pairs, SwappedPairs, Reals };
template <class T> struct Values {
    Form form;
    T *re, *im;   // of pairs re is the first value's real part, and im is not used; nor is it of reals, which are a source alone
};

template <class T> struct DftKernels {
    using Pass = void(const DftPass<T>& pass, const Values<const T>& src, Parts<T> dst);
    using Rows = void(const DftRows<T>& rows, Parts<const T> src, const Values<T>& dst, T scale);
    using Whole = void(const Values<const T>& src, const Values<T>& dst, T scale);

    // Vectors of so many values. Short lengths are faster in half of a register.
    struct Width {
        int lanes;
        Pass* pass[4][kMostRadix + 1];   // by the source's form, and by radix; 0 is any prime above kMostRadix. Reals have odd ones alone
        Rows* rows[kMostRadix + 1];      // by columns; null below the lanes
    };
    int widths;
    Width width[3];
    Whole* whole[kMostRadix + 1];   // of so many values, at once

    // The spectrum of 2n reals from the n-point transform z of their pairs, and back, but for X[0], X[n] and z[0]: w^k = exp(-2 pi i k / 2n), k < n / 2. bins is not z.
    void (*binsOfPairs)(const T* z, T* bins, int n, const T* w);
    void (*pairsOfBins)(const T* bins, T* z, int n, const T* w);
};

}   // namespace tevs

TEVS_KERNEL_TABLE(DftKernels<float>, dft32, 3, FMA)
TEVS_KERNEL_TABLE(DftKernels<double>, dft64, 3, FMA)
