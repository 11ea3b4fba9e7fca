// Extremes: the largest and smallest elements, magnitudes, and their positions.
#include "tevs/extremes.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

#include "core/args.h"
#include "core/scale.h"
#include "vector/extremes.table.h"

namespace tevs {
namespace {

template <class T> Status value(const T* pSrc, int len, T* pValue, const OneExtreme<T>& kernel) {
    if (Status s = Args().ptr(pSrc).ptr(pValue).len(len)) return s;
    kernel.value(pSrc, len, pValue);
    return StatusOk;
}
template <class T> Status place(const T* pSrc, int len, T* pValue, int* pIndx, const OneExtreme<T>& kernel) {
    if (!pIndx) return value(pSrc, len, pValue, kernel);
    if (Status s = Args().ptr(pSrc).ptr(pValue).len(len)) return s;
    kernel.place(pSrc, len, pValue, pIndx);
    return StatusOk;
}

template <class T> Status minMax(const T* pSrc, int len, T* pMin, T* pMax, const TwoExtremes<T>& kernel) {
    if (Status s = Args().ptr(pSrc).ptr(pMin).ptr(pMax).len(len)) return s;
    kernel.value(pSrc, len, pMin, pMax);
    return StatusOk;
}
template <class T> Status minMaxIndx(const T* pSrc, int len, T* pMin, int* pMinIndx, T* pMax, int* pMaxIndx, const TwoExtremes<T>& kernel) {
    if (Status s = Args().ptr(pSrc).ptr(pMin).ptr(pMinIndx).ptr(pMax).ptr(pMaxIndx).len(len)) return s;
    kernel.place(pSrc, len, pMin, pMinIndx, pMax, pMaxIndx);
    return StatusOk;
}

// The largest magnitude as it is, 2^15 or 2^31 where an element is the type's minimum.
template <class T> int64_t magnitude(const T* pSrc, int len, const TwoExtremes<T>& kernel) {
    T lo, hi;
    kernel.value(pSrc, len, &lo, &hi);
    return std::max(int64_t{hi}, -int64_t{lo});
}

template <class T> Status maxAbs(const T* pSrc, int len, T* pMaxAbs, const TwoExtremes<T>& kernel) {
    if (Status s = Args().ptr(pSrc).ptr(pMaxAbs).len(len)) return s;
    *pMaxAbs = saturate<T>(magnitude(pSrc, len, kernel));
    return StatusOk;
}
template <class T> Status minAbs(const T* pSrc, int len, T* pMinAbs, T (*kernel)(const T*, int)) {
    if (Status s = Args().ptr(pSrc).ptr(pMinAbs).len(len)) return s;
    *pMinAbs = saturate<T>(-int64_t{kernel(pSrc, len)});
    return StatusOk;
}

template <class T> Status every(const T* pSrc, T* pSrcDst, int len, void (*kernel)(const T*, T*, int)) {
    if (Status s = Args().ptr(pSrc).ptr(pSrcDst).len(len)) return s;
    kernel(pSrc, pSrcDst, len);
    return StatusOk;
}

// The length before the pointers.
Args orderArgs(int len, const void* pSrc, const void* pOrder) { return Args().len(len).ptr(pSrc).ptr(pOrder); }

template <class T> Status maxOrder(const T* pSrc, int len, int* pOrder, const TwoExtremes<T>& kernel) {
    if (Status s = orderArgs(len, pSrc, pOrder)) return s;
    *pOrder = int(std::bit_width(uint64_t(magnitude(pSrc, len, kernel))));
    return StatusOk;
}
template <class T> Status maxOrder(const T* pSrc, int len, int* pOrder, T (*kernel)(const T*, int)) {
    if (Status s = orderArgs(len, pSrc, pOrder)) return s;
    const T m = kernel(pSrc, len);
    if (!(m <= std::numeric_limits<T>::max())) {
        *pOrder = std::numeric_limits<T>::max_exponent + 1;
        return WarnInfOrNaN;
    }
    std::frexp(m, pOrder);
    return StatusOk;
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsMax_16s(const int16_t* pSrc, int len, int16_t* pMax) { return value(pSrc, len, pMax, extremes->max16s); }
Status tevsMax_32s(const int32_t* pSrc, int len, int32_t* pMax) { return value(pSrc, len, pMax, extremes->max32s); }
Status tevsMax_32f(const float* pSrc, int len, float* pMax) { return value(pSrc, len, pMax, extremes->max32f); }
Status tevsMax_64f(const double* pSrc, int len, double* pMax) { return value(pSrc, len, pMax, extremes->max64f); }

Status tevsMin_16s(const int16_t* pSrc, int len, int16_t* pMin) { return value(pSrc, len, pMin, extremes->min16s); }
Status tevsMin_32s(const int32_t* pSrc, int len, int32_t* pMin) { return value(pSrc, len, pMin, extremes->min32s); }
Status tevsMin_32f(const float* pSrc, int len, float* pMin) { return value(pSrc, len, pMin, extremes->min32f); }
Status tevsMin_64f(const double* pSrc, int len, double* pMin) { return value(pSrc, len, pMin, extremes->min64f); }

Status tevsMaxIndx_16s(const int16_t* pSrc, int len, int16_t* pMax, int* pIndx) { return place(pSrc, len, pMax, pIndx, extremes->max16s); }
Status tevsMaxIndx_32s(const int32_t* pSrc, int len, int32_t* pMax, int* pIndx) { return place(pSrc, len, pMax, pIndx, extremes->max32s); }
Status tevsMaxIndx_32f(const float* pSrc, int len, float* pMax, int* pIndx) { return place(pSrc, len, pMax, pIndx, extremes->max32f); }
Status tevsMaxIndx_64f(const double* pSrc, int len, double* pMax, int* pIndx) { return place(pSrc, len, pMax, pIndx, extremes->max64f); }

Status tevsMinIndx_16s(const int16_t* pSrc, int len, int16_t* pMin, int* pIndx) { return place(pSrc, len, pMin, pIndx, extremes->min16s); }
Status tevsMinIndx_32s(const int32_t* pSrc, int len, int32_t* pMin, int* pIndx) { return place(pSrc, len, pMin, pIndx, extremes->min32s); }
Status tevsMinIndx_32f(const float* pSrc, int len, float* pMin, int* pIndx) { return place(pSrc, len, pMin, pIndx, extremes->min32f); }
Status tevsMinIndx_64f(const double* pSrc, int len, double* pMin, int* pIndx) { return place(pSrc, len, pMin, pIndx, extremes->min64f); }

Status tevsMaxAbs_16s(const int16_t* pSrc, int len, int16_t* pMaxAbs) { return maxAbs(pSrc, len, pMaxAbs, extremes->minMax16s); }
Status tevsMaxAbs_32s(const int32_t* pSrc, int len, int32_t* pMaxAbs) { return maxAbs(pSrc, len, pMaxAbs, extremes->minMax32s); }

Status tevsMinAbs_16s(const int16_t* pSrc, int len, int16_t* pMinAbs) { return minAbs(pSrc, len, pMinAbs, extremes->nearest16s); }
Status tevsMinAbs_32s(const int32_t* pSrc, int len, int32_t* pMinAbs) { return minAbs(pSrc, len, pMinAbs, extremes->nearest32s); }

Status tevsMinMax_8u(const uint8_t* pSrc, int len, uint8_t* pMin, uint8_t* pMax) { return minMax(pSrc, len, pMin, pMax, extremes->minMax8u); }
Status tevsMinMax_16u(const uint16_t* pSrc, int len, uint16_t* pMin, uint16_t* pMax) { return minMax(pSrc, len, pMin, pMax, extremes->minMax16u); }
Status tevsMinMax_16s(const int16_t* pSrc, int len, int16_t* pMin, int16_t* pMax) { return minMax(pSrc, len, pMin, pMax, extremes->minMax16s); }
Status tevsMinMax_32u(const uint32_t* pSrc, int len, uint32_t* pMin, uint32_t* pMax) { return minMax(pSrc, len, pMin, pMax, extremes->minMax32u); }
Status tevsMinMax_32s(const int32_t* pSrc, int len, int32_t* pMin, int32_t* pMax) { return minMax(pSrc, len, pMin, pMax, extremes->minMax32s); }
Status tevsMinMax_32f(const float* pSrc, int len, float* pMin, float* pMax) { return minMax(pSrc, len, pMin, pMax, extremes->minMax32f); }
Status tevsMinMax_64f(const double* pSrc, int len, double* pMin, double* pMax) { return minMax(pSrc, len, pMin, pMax, extremes->minMax64f); }

Status tevsMinMaxIndx_8u(const uint8_t* pSrc, int len, uint8_t* pMin, int* pMinIndx, uint8_t* pMax, int* pMaxIndx) {
    return minMaxIndx(pSrc, len, pMin, pMinIndx, pMax, pMaxIndx, extremes->minMax8u);
}
Status tevsMinMaxIndx_16u(const uint16_t* pSrc, int len, uint16_t* pMin, int* pMinIndx, uint16_t* pMax, int* pMaxIndx) {
    return minMaxIndx(pSrc, len, pMin, pMinIndx, pMax, pMaxIndx, extremes->minMax16u);
}
Status tevsMinMaxIndx_16s(const int16_t* pSrc, int len, int16_t* pMin, int* pMinIndx, int16_t* pMax, int* pMaxIndx) {
    return minMaxIndx(pSrc, len, pMin, pMinIndx, pMax, pMaxIndx, extremes->minMax16s);
}
Status tevsMinMaxIndx_32u(const uint32_t* pSrc, int len, uint32_t* pMin, int* pMinIndx, uint32_t* pMax, int* pMaxIndx) {
    return minMaxIndx(pSrc, len, pMin, pMinIndx, pMax, pMaxIndx, extremes->minMax32u);
}
Status tevsMinMaxIndx_32s(const int32_t* pSrc, int len, int32_t* pMin, int* pMinIndx, int32_t* pMax, int* pMaxIndx) {
    return minMaxIndx(pSrc, len, pMin, pMinIndx, pMax, pMaxIndx, extremes->minMax32s);
}
Status tevsMinMaxIndx_32f(const float* pSrc, int len, float* pMin, int* pMinIndx, float* pMax, int* pMaxIndx) {
    return minMaxIndx(pSrc, len, pMin, pMinIndx, pMax, pMaxIndx, extremes->minMax32f);
}
Status tevsMinMaxIndx_64f(const double* pSrc, int len, double* pMin, int* pMinIndx, double* pMax, int* pMaxIndx) {
    return minMaxIndx(pSrc, len, pMin, pMinIndx, pMax, pMaxIndx, extremes->minMax64f);
}

Status tevsMaxEvery_16s_I(const int16_t* pSrc, int16_t* pSrcDst, int len) { return every(pSrc, pSrcDst, len, extremes->maxEvery16s); }
Status tevsMaxEvery_32s_I(const int32_t* pSrc, int32_t* pSrcDst, int len) { return every(pSrc, pSrcDst, len, extremes->maxEvery32s); }
Status tevsMaxEvery_32f_I(const float* pSrc, float* pSrcDst, int len) { return every(pSrc, pSrcDst, len, extremes->maxEvery32f); }

Status tevsMinEvery_16s_I(const int16_t* pSrc, int16_t* pSrcDst, int len) { return every(pSrc, pSrcDst, len, extremes->minEvery16s); }
Status tevsMinEvery_32s_I(const int32_t* pSrc, int32_t* pSrcDst, int len) { return every(pSrc, pSrcDst, len, extremes->minEvery32s); }
Status tevsMinEvery_32f_I(const float* pSrc, float* pSrcDst, int len) { return every(pSrc, pSrcDst, len, extremes->minEvery32f); }

Status tevsMaxOrder_16s(const int16_t* pSrc, int len, int* pOrder) { return maxOrder(pSrc, len, pOrder, extremes->minMax16s); }
Status tevsMaxOrder_32s(const int32_t* pSrc, int len, int* pOrder) { return maxOrder(pSrc, len, pOrder, extremes->minMax32s); }
Status tevsMaxOrder_32f(const float* pSrc, int len, int* pOrder) { return maxOrder(pSrc, len, pOrder, extremes->magnitude32f); }
Status tevsMaxOrder_64f(const double* pSrc, int len, int* pOrder) { return maxOrder(pSrc, len, pOrder, extremes->magnitude64f); }
