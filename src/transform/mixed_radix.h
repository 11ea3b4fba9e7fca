// Transforms of lengths whose primes are small, in mixed radices: built in memory that their owner brings, and from then on without a failure.
#pragma once

#include <stdint.h>

#include "core/memory.h"
#include "transform/dft_pairs.table.h"
#include "transform/dft.table.h"

namespace tevs {

// Up to here transforms of interleaved values are fastest in pairs.
constexpr int kMostInPairs = 45000;

// N is a product of primes up to kMostPrime.
bool isMixedLength(int n);

template <class T> const DftPairKernels<T>* pairKernels() {
    if constexpr (sizeof(T) == 4)
        return dftPairs32;
    else
        return dftPairs64;
}

// Of interleaved values: forward and inverse at once where the length is up to kMostAtOnce, else in steps.
template <class T> struct PairPlan {
    typename DftPairKernels<T>::Whole* whole[2];
    typename DftPairKernels<T>::Columns* columns;
    const typename DftPairKernels<T>::Width* width;
    typename DftPairKernels<T>::Rows* rows;
    PairSteps<T> steps;
};

template <class T> struct MixedRadix {
    int length;                     // 1 does nothing; up to kMostRadix at once; else rows x columns
    int passes;                     // kInPairs: a plan of interleaved values alone
    const DftKernels<T>* kernels;   // the tables are in their layout: the library may choose others after a record is built before its constructor has run
    const typename DftKernels<T>::Width* width;
    union {   // no larger for the second: a record of the cosine transform has to hold it in its stated size
        const DftPass<T>* pass;
        const PairPlan<T>* pairs;
    };
    DftRows<T> rows;

    static constexpr int kInPairs = -1;
    bool inPairs() const { return passes == kInPairs; }
};

// The plan of length n with its tables; over no block it only adds up their bytes. Of interleaved values alone, a plan in pairs has no tables for other forms.
template <class T> void planMixedRadix(MixedRadix<T>& plan, int n, bool interleaved, Carve& tables, bool write);
// What a plan of n interleaved values costs in pairs, to compare lengths; 0 where there is none.
template <class T> double costInPairs(int n);

// The transform times scale. work holds as many values as the transform; src may be dst, or any array of one any array of the other.
template <class T> void runMixedRadix(const MixedRadix<T>& plan, const Values<const T>& src, const Values<T>& dst, T scale, T* work);

// The same of interleaved values by a plan of more than kMostAtOnce, with no work area if the length is at most kMostOnStack.
constexpr int kMostOnStack = kMostAtOnce * kMostAtOnce;
template <class T> void runPairs(const PairPlan<T>& plan, const T* src, T* dst, T scale, bool inverse, T* work);

}   // namespace tevs
