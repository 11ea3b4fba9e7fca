#ifndef TEVS_CONVERSION_H
#define TEVS_CONVERSION_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- Convert: a vector in another sample type ------------------------------------------------------------------------------
 *
 *     16s32f, 32f64f    pDst[n] = pSrc[n], exact
 *     64f32f            pDst[n] = pSrc[n] rounded to nearest, ties to even; beyond the single-precision range: infinity
 *     32f16s_Sfs        pDst[n] = pSrc[n] * 2^-scaleFactor, rounded, saturated to -32768 .. 32767
 *
 * pSrc, pDst    len >= 1 elements each; types of the same width may share one vector
 * rndMode       RoundTowardZero truncates; RoundNearest, and any other value, rounds to nearest with ties to even
 * scaleFactor   any integer; the product is exact, so 0 stays 0 and no factor overflows. NaN gives the type's minimum.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len < 1).
 */
Status tevsConvert_16s32f(const int16_t* pSrc, float* pDst, int len);
Status tevsConvert_32f64f(const float* pSrc, double* pDst, int len);
Status tevsConvert_64f32f(const double* pSrc, float* pDst, int len);
Status tevsConvert_32f16s_Sfs(const float* pSrc, int16_t* pDst, int len, int rndMode, int scaleFactor);

TEVS_END

#endif
