// Transforms of lengths whose primes are small, in mixed radices: built in memory that their owner brings, and from then on without a failure.
#pragma once

#include <stdint.h>

#include "core/memory.h"
#include "transform/dft.table.h"

namespace tevs {

// N is a product of primes up to kMostPrime.
bool isMixedLength(int n);

template <class T> struct MixedRadix {
    int length;   // 1 does nothing; up to kMostRadix at once; else rows x columns
    int passes;
    const DftKernels<T>* kernels;   // the tables are in their layout: the library may choose others after a record is built before its constructor has run
    const typename DftKernels<T>::Width* width;
    const DftPass<T>* pass;
    DftRows<T> rows;
};

// The plan of length n with its tables; over no block it only adds up their bytes.
template <class T> void planMixedRadix(MixedRadix<T>& plan, int n, Carve& tables, bool write);

// The transform times scale. work holds as many values as the transform; src may be dst, or any array of one any array of the other.
template <class T> void runMixedRadix(const MixedRadix<T>& plan, const Values<const T>& src, const Values<T>& dst, T scale, T* work);

}   // namespace tevs
