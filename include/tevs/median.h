#ifndef TEVS_MEDIAN_H
#define TEVS_MEDIAN_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- FilterMedian: median of a sliding window -----------------------------------------------------------------------
 *
 *     pDst[n] = median of  x[n-w] .. x[n+w],     w = (maskSize - 1) / 2
 *     x[n] = pSrc[n], before the first sample pSrc[0], behind the last one pSrc[len-1]
 *
 * takes clicks off a signal and leaves its edges where they are (Tukey, Exploratory Data Analysis, 1977). The result is
 * one of the samples, exactly. Floats are in the order of the numbers, -0 below +0, and any NaN, whatever its sign,
 * counts as above infinity: a window gives NaN where more than w of its samples are.
 *
 * maskSize        at least 1; an even one is taken as the odd one below it. It may be longer than the vector. With one
 *                 of 1 or 2, and with less than three samples, the samples stay as they are.
 * pSrc, pDst      len >= 1 samples each; they may be equal: windows hold the samples as they were. Other overlaps do
 *                 not work.
 *
 * Masks up to 9 take no memory. Above, memory is taken for the call, at most some bytes for each of its window's
 * samples and some hundred kilobytes, or beyond a mask of 2045 some forty bytes for each sample of as many again. The
 * time for a sample does not hang on what the samples are but by little; it grows with the logarithm of the mask.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr, StatusBadSize (len or maskSize <
 * 1), StatusNoMemory. With an even mask WarnEvenMedianMask, and the samples are filtered.
 */
Status tevsFilterMedian_32f(const float* pSrc, float* pDst, int len, int maskSize);
Status tevsFilterMedian_32f_I(float* pSrcDst, int len, int maskSize);
Status tevsFilterMedian_64f(const double* pSrc, double* pDst, int len, int maskSize);
Status tevsFilterMedian_64f_I(double* pSrcDst, int len, int maskSize);
Status tevsFilterMedian_16s(const int16_t* pSrc, int16_t* pDst, int len, int maskSize);
Status tevsFilterMedian_16s_I(int16_t* pSrcDst, int len, int maskSize);
Status tevsFilterMedian_8u(const uint8_t* pSrc, uint8_t* pDst, int len, int maskSize);
Status tevsFilterMedian_8u_I(uint8_t* pSrcDst, int len, int maskSize);
Status tevsFilterMedian_32s(const int32_t* pSrc, int32_t* pDst, int len, int maskSize);
Status tevsFilterMedian_32s_I(int32_t* pSrcDst, int len, int maskSize);

TEVS_END

#endif
