// Order and search: sorting, the order that sorts, the nearest value of a table and the nearest vector of a codebook.
#include "tevs/search.h"

#include "core/args.h"
#include "core/rounding.h"
#include "vector/search.table.h"

namespace tevs {
namespace {

// The integer as wide as T, which is what kernels sort.
template <class T> struct BitsOf { using type = T; };
template <> struct BitsOf<float> { using type = int32_t; };
template <> struct BitsOf<double> { using type = int64_t; };
template <class T> using Bits = typename BitsOf<T>::type;

template <class T> Status sort(Sort<Bits<T>> kernel, T* pSrcDst, int len, bool down) {
    if (Status s = Args().ptr(pSrcDst).len(len)) return s;
    kernel(reinterpret_cast<Bits<T>*>(pSrcDst), len, down);
    return StatusOk;
}

template <class T> Status sortIndx(SortIndx<Bits<T>> kernel, const T* pSrc, int* pIndx, int len, bool down) {
    if (Status s = Args().ptr(pSrc).ptr(pIndx).len(len)) return s;
    kernel(reinterpret_cast<const Bits<T>*>(pSrc), pIndx, len, down);
    return StatusOk;
}

template <class T> Status nearest(NearestOf<T> kernel, const T* pSrc, int* pIndx, int len, const T* pTable, int tableLen) {
    if (Status s = Args().ptr(pSrc).ptr(pIndx).ptr(pTable).len(len).len(tableLen)) return s;
    toNearest(kernel, pSrc, pIndx, len, pTable, tableLen);
    return StatusOk;
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsNearest_16s(const int16_t* pSrc, int* pIndx, int len, const int16_t* pTable, int tableLen) {
    return nearest(search->nearest16s, pSrc, pIndx, len, pTable, tableLen);
}
Status tevsNearest_32s(const int32_t* pSrc, int* pIndx, int len, const int32_t* pTable, int tableLen) {
    return nearest(search->nearest32s, pSrc, pIndx, len, pTable, tableLen);
}
Status tevsNearest_32f(const float* pSrc, int* pIndx, int len, const float* pTable, int tableLen) {
    return nearest(search->nearest32f, pSrc, pIndx, len, pTable, tableLen);
}
Status tevsNearest_64f(const double* pSrc, int* pIndx, int len, const double* pTable, int tableLen) {
    return nearest(search->nearest64f, pSrc, pIndx, len, pTable, tableLen);
}

Status tevsNearestVec_32f(const float* pSrc, int* pIndx, float* pDist, int len, const float* pBook, int bookLen, int dim) {
    if (Status s = Args().ptr(pSrc).ptr(pIndx).ptr(pBook).len(len).len(bookLen).len(dim)) return s;
    toNearest(search->nearestVec, pSrc, pIndx, pDist, len, pBook, bookLen, dim);
    return StatusOk;
}

Status tevsSort_16s_I(int16_t* pSrcDst, int len) { return sort(search->sort16s, pSrcDst, len, false); }
Status tevsSort_32s_I(int32_t* pSrcDst, int len) { return sort(search->sort32s, pSrcDst, len, false); }
Status tevsSort_32f_I(float* pSrcDst, int len) { return sort(search->sort32f, pSrcDst, len, false); }
Status tevsSort_64f_I(double* pSrcDst, int len) { return sort(search->sort64f, pSrcDst, len, false); }

Status tevsSortDown_16s_I(int16_t* pSrcDst, int len) { return sort(search->sort16s, pSrcDst, len, true); }
Status tevsSortDown_32s_I(int32_t* pSrcDst, int len) { return sort(search->sort32s, pSrcDst, len, true); }
Status tevsSortDown_32f_I(float* pSrcDst, int len) { return sort(search->sort32f, pSrcDst, len, true); }
Status tevsSortDown_64f_I(double* pSrcDst, int len) { return sort(search->sort64f, pSrcDst, len, true); }

Status tevsSortIndx_16s(const int16_t* pSrc, int* pIndx, int len) { return sortIndx(search->indx16s, pSrc, pIndx, len, false); }
Status tevsSortIndx_32s(const int32_t* pSrc, int* pIndx, int len) { return sortIndx(search->indx32s, pSrc, pIndx, len, false); }
Status tevsSortIndx_32f(const float* pSrc, int* pIndx, int len) { return sortIndx(search->indx32f, pSrc, pIndx, len, false); }
Status tevsSortIndx_64f(const double* pSrc, int* pIndx, int len) { return sortIndx(search->indx64f, pSrc, pIndx, len, false); }

Status tevsSortIndxDown_16s(const int16_t* pSrc, int* pIndx, int len) { return sortIndx(search->indx16s, pSrc, pIndx, len, true); }
Status tevsSortIndxDown_32s(const int32_t* pSrc, int* pIndx, int len) { return sortIndx(search->indx32s, pSrc, pIndx, len, true); }
Status tevsSortIndxDown_32f(const float* pSrc, int* pIndx, int len) { return sortIndx(search->indx32f, pSrc, pIndx, len, true); }
Status tevsSortIndxDown_64f(const double* pSrc, int* pIndx, int len) { return sortIndx(search->indx64f, pSrc, pIndx, len, true); }
