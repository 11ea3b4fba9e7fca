#pragma once

#include <stdint.h>

#include "core/simd/dispatch.h"

namespace tevs {

// Elements of floats are handed over as the integers of the same bits.
template <class K> using Sort = void (*)(K* p, int len, bool down);
template <class K> using SortIndx = void (*)(const K* src, int* indx, int len, bool down);
template <class T> using NearestOf = void (*)(const T* src, int* indx, int len, const T* table, int tableLen);
// dist may be null.
using NearestVec = void (*)(const float* src, int* indx, float* dist, int len, const float* book, int bookLen, int dim);

struct SearchKernels {
    Sort<int16_t> sort16s;
    Sort<int32_t> sort32s, sort32f;
    Sort<int64_t> sort64f;
    SortIndx<int16_t> indx16s;
    SortIndx<int32_t> indx32s, indx32f;
    SortIndx<int64_t> indx64f;
    NearestOf<int16_t> nearest16s;
    NearestOf<int32_t> nearest32s;
    NearestOf<float> nearest32f;
    NearestOf<double> nearest64f;
    NearestVec nearestVec;
};

}   // namespace tevs

TEVS_KERNEL_TABLE(SearchKernels, search, 3, FMA)
