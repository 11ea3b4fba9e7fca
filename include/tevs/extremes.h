#ifndef TEVS_EXTREMES_H
#define TEVS_EXTREMES_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- Max, Min, MaxIndx, MinIndx, MinMax, MinMaxIndx: extremes and where they are ------------------------------------
 *
 *     Max     the largest element        Min     the smallest element        MinMax    both, in one pass
 *     ...Indx the extreme, and the position (counted from 0) of the first element that is equal to it
 *
 * The first element is the start, and an element replaces the extreme so far only if it is strictly better. So a NaN in
 * front stays, one further on is passed over, and of zeros of either sign the first counts.
 *
 * pSrc                          len >= 1 elements
 * pMax, pMin, pMaxIndx, ...     one value each
 * pIndx                         one value, or NULL: MaxIndx and MinIndx are Max and Min then
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer but pIndx),
 * StatusBadSize (len < 1).
 */
Status tevsMax_16s(const int16_t* pSrc, int len, int16_t* pMax);
Status tevsMax_32s(const int32_t* pSrc, int len, int32_t* pMax);
Status tevsMax_32f(const float* pSrc, int len, float* pMax);
Status tevsMax_64f(const double* pSrc, int len, double* pMax);
Status tevsMin_16s(const int16_t* pSrc, int len, int16_t* pMin);
Status tevsMin_32s(const int32_t* pSrc, int len, int32_t* pMin);
Status tevsMin_32f(const float* pSrc, int len, float* pMin);
Status tevsMin_64f(const double* pSrc, int len, double* pMin);
Status tevsMaxIndx_16s(const int16_t* pSrc, int len, int16_t* pMax, int* pIndx);
Status tevsMaxIndx_32s(const int32_t* pSrc, int len, int32_t* pMax, int* pIndx);
Status tevsMaxIndx_32f(const float* pSrc, int len, float* pMax, int* pIndx);
Status tevsMaxIndx_64f(const double* pSrc, int len, double* pMax, int* pIndx);
Status tevsMinIndx_16s(const int16_t* pSrc, int len, int16_t* pMin, int* pIndx);
Status tevsMinIndx_32s(const int32_t* pSrc, int len, int32_t* pMin, int* pIndx);
Status tevsMinIndx_32f(const float* pSrc, int len, float* pMin, int* pIndx);
Status tevsMinIndx_64f(const double* pSrc, int len, double* pMin, int* pIndx);
Status tevsMinMax_8u(const uint8_t* pSrc, int len, uint8_t* pMin, uint8_t* pMax);
Status tevsMinMax_16u(const uint16_t* pSrc, int len, uint16_t* pMin, uint16_t* pMax);
Status tevsMinMax_16s(const int16_t* pSrc, int len, int16_t* pMin, int16_t* pMax);
Status tevsMinMax_32u(const uint32_t* pSrc, int len, uint32_t* pMin, uint32_t* pMax);
Status tevsMinMax_32s(const int32_t* pSrc, int len, int32_t* pMin, int32_t* pMax);
Status tevsMinMax_32f(const float* pSrc, int len, float* pMin, float* pMax);
Status tevsMinMax_64f(const double* pSrc, int len, double* pMin, double* pMax);
Status tevsMinMaxIndx_8u(const uint8_t* pSrc, int len, uint8_t* pMin, int* pMinIndx, uint8_t* pMax, int* pMaxIndx);
Status tevsMinMaxIndx_16u(const uint16_t* pSrc, int len, uint16_t* pMin, int* pMinIndx, uint16_t* pMax, int* pMaxIndx);
Status tevsMinMaxIndx_16s(const int16_t* pSrc, int len, int16_t* pMin, int* pMinIndx, int16_t* pMax, int* pMaxIndx);
Status tevsMinMaxIndx_32u(const uint32_t* pSrc, int len, uint32_t* pMin, int* pMinIndx, uint32_t* pMax, int* pMaxIndx);
Status tevsMinMaxIndx_32s(const int32_t* pSrc, int len, int32_t* pMin, int* pMinIndx, int32_t* pMax, int* pMaxIndx);
Status tevsMinMaxIndx_32f(const float* pSrc, int len, float* pMin, int* pMinIndx, float* pMax, int* pMaxIndx);
Status tevsMinMaxIndx_64f(const double* pSrc, int len, double* pMin, int* pMinIndx, double* pMax, int* pMaxIndx);

/* ---- MaxAbs, MinAbs: largest and smallest magnitude -----------------------------------------------------------------
 *
 *     max or min over n of |pSrc[n]|; the magnitude of the type's minimum is taken as its maximum
 *
 * pSrc               len >= 1 elements
 * pMaxAbs, pMinAbs   one value
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len <
 * 1).
 */
Status tevsMaxAbs_16s(const int16_t* pSrc, int len, int16_t* pMaxAbs);
Status tevsMaxAbs_32s(const int32_t* pSrc, int len, int32_t* pMaxAbs);
Status tevsMinAbs_16s(const int16_t* pSrc, int len, int16_t* pMinAbs);
Status tevsMinAbs_32s(const int32_t* pSrc, int len, int32_t* pMinAbs);

/* ---- MaxEvery, MinEvery: the larger or smaller of two elements ------------------------------------------------------
 *
 *     MaxEvery   pSrcDst[n] = pSrc[n] where pSrc[n] > pSrcDst[n]         MinEvery   where pSrc[n] < pSrcDst[n]
 *
 * and unchanged elsewhere, so that where either is NaN pSrcDst[n] stays.
 *
 * pSrc, pSrcDst   len >= 1 elements each
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len <
 * 1).
 */
Status tevsMaxEvery_16s_I(const int16_t* pSrc, int16_t* pSrcDst, int len);
Status tevsMaxEvery_32s_I(const int32_t* pSrc, int32_t* pSrcDst, int len);
Status tevsMaxEvery_32f_I(const float* pSrc, float* pSrcDst, int len);
Status tevsMinEvery_16s_I(const int16_t* pSrc, int16_t* pSrcDst, int len);
Status tevsMinEvery_32s_I(const int32_t* pSrc, int32_t* pSrcDst, int len);
Status tevsMinEvery_32f_I(const float* pSrc, float* pSrcDst, int len);

/* ---- MaxOrder: binary order of the largest magnitude ----------------------------------------------------------------
 *
 *     16s, 32s    the smallest k >= 0 for which all |pSrc[n]| < 2^k:  0 -> 0, 1 -> 1, 32767 -> 15, -32768 -> 16
 *     32f, 64f    the k for which 2^(k-1) <= max |pSrc[n]| < 2^k:     0.25 -> -1, 0.5 -> 0, 1 -> 1; 0 where all are 0
 *
 * pSrc     len >= 1 elements
 * pOrder   one value
 *
 * Returns StatusOk; WarnInfOrNaN where an element is infinite or NaN, with the order 129 (32f) or 1025 (64f), one above
 * that of any finite number; or the first that applies, with nothing written: StatusBadSize (len < 1, looked at first),
 * StatusNullPtr (any pointer).
 */
Status tevsMaxOrder_16s(const int16_t* pSrc, int len, int* pOrder);
Status tevsMaxOrder_32s(const int32_t* pSrc, int len, int* pOrder);
Status tevsMaxOrder_32f(const float* pSrc, int len, int* pOrder);
Status tevsMaxOrder_64f(const double* pSrc, int len, int* pOrder);

TEVS_END

#endif
