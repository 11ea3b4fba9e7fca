// Sample-rate change by whole factors, without a filter.
#include "tevs/sample.h"

#include <limits.h>

#include "core/args.h"
#include "filter/sample.table.h"
#include "vector/movement.h"
#include "vector/movement.table.h"

namespace tevs {
namespace {

template <class T> auto upOf() { return sizeof(T) == 2 ? sample->up16 : sizeof(T) == 4 ? sample->up32 : sizeof(T) == 8 ? sample->up64 : sample->up128; }
template <class T> auto downOf() {
    return sizeof(T) == 2 ? sample->down16 : sizeof(T) == 4 ? sample->down32 : sizeof(T) == 8 ? sample->down64 : sample->down128;
}
// The first of each pair.
template <class T> auto halveOf() { return sizeof(T) == 2 ? movement->real16 : sizeof(T) == 4 ? movement->real32 : movement->real64; }

template <class T> Args checked(const T* pSrc, int srcLen, T* pDst, int* pDstLen, int factor, int* pPhase) {
    return Args()
        .ptr(pSrc)
        .ptr(pDst)
        .ptr(pDstLen)
        .ptr(pPhase)
        .len(srcLen)
        .require(factor >= 1, StatusSampleFactor)
        .require([=] { return *pPhase >= 0 && *pPhase < factor; }, StatusSamplePhase);
}

template <class T> Status up(const T* pSrc, int srcLen, T* pDst, int* pDstLen, int factor, int* pPhase) {
    if (Status s = checked(pSrc, srcLen, pDst, pDstLen, factor, pPhase).require(int64_t{srcLen} * factor <= INT_MAX, StatusBadSize)) return s;
    if (factor == 1)
        copy(pSrc, pDst, srcLen);
    else
        upOf<T>()(pSrc, pDst, srcLen, factor, *pPhase);
    *pDstLen = srcLen * factor;
    return StatusOk;
}

template <class T> Status down(const T* pSrc, int srcLen, T* pDst, int* pDstLen, int factor, int* pPhase) {
    if (Status s = checked(pSrc, srcLen, pDst, pDstLen, factor, pPhase)) return s;
    const int phase = *pPhase, n = phase < srcLen ? (srcLen - 1 - phase) / factor + 1 : 0;
    if (factor == 1)
        copy(pSrc, pDst, srcLen);
    else if (const int pairs = factor == 2 && sizeof(T) <= 8 ? (srcLen - phase) / 2 : 0) {
        halveOf<T>()(pSrc + phase, pDst, pairs);
        if (pairs < n) pDst[pairs] = pSrc[srcLen - 1];
    } else if (n > 0)
        downOf<T>()(pSrc + phase, pDst, n, factor);
    *pDstLen = n;
    *pPhase = int(phase + int64_t{n} * factor - srcLen);
    return StatusOk;
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsSampleUp_32f(const float* pSrc, int srcLen, float* pDst, int* pDstLen, int factor, int* pPhase) {
    return up(pSrc, srcLen, pDst, pDstLen, factor, pPhase);
}
Status tevsSampleUp_32fc(const Complex32f* pSrc, int srcLen, Complex32f* pDst, int* pDstLen, int factor, int* pPhase) {
    return up(pSrc, srcLen, pDst, pDstLen, factor, pPhase);
}
Status tevsSampleUp_64f(const double* pSrc, int srcLen, double* pDst, int* pDstLen, int factor, int* pPhase) {
    return up(pSrc, srcLen, pDst, pDstLen, factor, pPhase);
}
Status tevsSampleUp_64fc(const Complex64f* pSrc, int srcLen, Complex64f* pDst, int* pDstLen, int factor, int* pPhase) {
    return up(pSrc, srcLen, pDst, pDstLen, factor, pPhase);
}
Status tevsSampleUp_16s(const int16_t* pSrc, int srcLen, int16_t* pDst, int* pDstLen, int factor, int* pPhase) {
    return up(pSrc, srcLen, pDst, pDstLen, factor, pPhase);
}
Status tevsSampleUp_16sc(const Complex16s* pSrc, int srcLen, Complex16s* pDst, int* pDstLen, int factor, int* pPhase) {
    return up(pSrc, srcLen, pDst, pDstLen, factor, pPhase);
}
Status tevsSampleDown_32f(const float* pSrc, int srcLen, float* pDst, int* pDstLen, int factor, int* pPhase) {
    return down(pSrc, srcLen, pDst, pDstLen, factor, pPhase);
}
Status tevsSampleDown_32fc(const Complex32f* pSrc, int srcLen, Complex32f* pDst, int* pDstLen, int factor, int* pPhase) {
    return down(pSrc, srcLen, pDst, pDstLen, factor, pPhase);
}
Status tevsSampleDown_64f(const double* pSrc, int srcLen, double* pDst, int* pDstLen, int factor, int* pPhase) {
    return down(pSrc, srcLen, pDst, pDstLen, factor, pPhase);
}
Status tevsSampleDown_64fc(const Complex64f* pSrc, int srcLen, Complex64f* pDst, int* pDstLen, int factor, int* pPhase) {
    return down(pSrc, srcLen, pDst, pDstLen, factor, pPhase);
}
Status tevsSampleDown_16s(const int16_t* pSrc, int srcLen, int16_t* pDst, int* pDstLen, int factor, int* pPhase) {
    return down(pSrc, srcLen, pDst, pDstLen, factor, pPhase);
}
Status tevsSampleDown_16sc(const Complex16s* pSrc, int srcLen, Complex16s* pDst, int* pDstLen, int factor, int* pPhase) {
    return down(pSrc, srcLen, pDst, pDstLen, factor, pPhase);
}
