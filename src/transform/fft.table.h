#pragma once

#include <stdint.h>

#include "core/simd/dispatch.h"
#include "transform/fft.plan.h"

namespace tevs {

// What the kernels read of a record: tables in the layout of fft.plan.h, with `lanes` complex values to a block.
template <class T> struct FftTables {
    int order;                 // of the complex transform, N = 2^order
    int room;                  // large: bytes of the work area that tiles may take
    const T* passes;           // the passes' factors, also depth first. Of large orders in two sweeps those of the column passes, length P and then Q
    const T* outer;            // large: the factors w_N^(n2 k1) between the sweeps: for the first columns in blocks, then for its multiples
    const T* recombination;    // real records: exp(-2 pi i k / 2N) for 1 <= k <= N/2
    const FftTables* little;   // where the room may be less than for two tiles: the tables of the columns, and of the rows, of a matrix that has room
};

// Where complex values lie: interleaved, or in two arrays.
template <class T> struct Pairs { T* p; };
template <class T> struct Parts { T *re, *im; };

// The same of complex integers, 16 bits that are transformed in single precision or 32 in double: read as T, and written rounded and saturated.
template <class T> struct IntegerOf;
template <> struct IntegerOf<float> { typedef int16_t type; };
template <> struct IntegerOf<double> { typedef int32_t type; };
template <class T> struct IntegerOf<const T> { typedef const typename IntegerOf<T>::type type; };
template <class T> struct IntegerPairs { typename IntegerOf<T>::type* p; };
template <class T> struct IntegerParts { typename IntegerOf<T>::type *re, *im; };

// An N-point transform, times scale (1: none). work holds N values below the large orders, t.room bytes from there on, and is not touched below order 4.
// Interleaved values: src may equal dst or work. Parts: src may equal dst; below the large orders any array of src may be any of dst.
template <class T, template <class> class Place> using FftTransform = void(const FftTables<T>& t, Place<const T> src, Place<T> dst, T* work, T scale);

template <class T> struct FftKernels {
    int lanes;

    // One routine for each order, the last for all large ones.
    template <template <class> class Place> struct Orders {
        FftTransform<T, Place>* of[kFirstLargeOrder<T> + 1];
        FftTransform<T, Place>* operator[](int order) const { return of[order < kFirstLargeOrder<T> ? order : kFirstLargeOrder<T>]; }
    };
    template <template <class> class Place> struct Directions { Orders<Place> forward, inverse; };
    Directions<Pairs> pairs;
    Directions<Parts> parts;

    // The spectrum of 2N reals from the N-point transform z of their pairs: X[k] goes to bins + 2k for 0 < k < N, X[0] and X[N], both real, to first and last.
    // z holds half the transform. bins may equal z.
    void (*spectrumOfReal)(const FftTables<T>& t, const T* z, T* bins, T* first, T* last);
    // And back: z from X, such that the N-point inverse of z is the 2N-point one of X.
    void (*pairsOfSpectrum)(const FftTables<T>& t, const T* bins, T first, T last, T* z);

    // The transforms of integers that are one kernel in registers convert on the way in and out: nothing is stored between.
    static constexpr int kIntegerOrders = 8;   // 1 to 7; null where the order is none of them
    template <template <class> class Place> struct IntegerDirections { FftTransform<T, Place>*forward[kIntegerOrders], *inverse[kIntegerOrders]; };
    IntegerDirections<IntegerPairs> integerPairs;
    IntegerDirections<IntegerParts> integerParts;
};

}   // namespace tevs

TEVS_KERNEL_TABLE(FftKernels<float>, fft32, 3, FMA)
TEVS_KERNEL_TABLE(FftKernels<double>, fft64, 3, FMA)
