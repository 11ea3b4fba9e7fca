#ifndef TEVS_SAMPLE_H
#define TEVS_SAMPLE_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- SampleUp: up-sampling by zero insertion ------------------------------------------------------------------------
 *
 *     pDst[k * factor + *pPhase] = pSrc[k],     all other elements 0
 *
 * raises the sample rate; a low-pass filter behind it takes off the images (or FIRMR does both at once).
 *
 * pSrc            srcLen >= 1 samples
 * pDst            factor * srcLen samples, apart from pSrc; *pDstLen becomes their number
 * factor          at least 1, which copies
 * pPhase          where in each group of `factor` outputs the input goes, 0 .. factor-1; it is not changed
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr, StatusBadSize (srcLen < 1),
 * StatusSampleFactor (factor < 1), StatusSamplePhase (*pPhase out of range), StatusBadSize (factor * srcLen beyond
 * INT_MAX).
 */
Status tevsSampleUp_32f(const float* pSrc, int srcLen, float* pDst, int* pDstLen, int factor, int* pPhase);
Status tevsSampleUp_32fc(const Complex32f* pSrc, int srcLen, Complex32f* pDst, int* pDstLen, int factor, int* pPhase);
Status tevsSampleUp_64f(const double* pSrc, int srcLen, double* pDst, int* pDstLen, int factor, int* pPhase);
Status tevsSampleUp_64fc(const Complex64f* pSrc, int srcLen, Complex64f* pDst, int* pDstLen, int factor, int* pPhase);
Status tevsSampleUp_16s(const int16_t* pSrc, int srcLen, int16_t* pDst, int* pDstLen, int factor, int* pPhase);
Status tevsSampleUp_16sc(const Complex16s* pSrc, int srcLen, Complex16s* pDst, int* pDstLen, int factor, int* pPhase);

/* ---- SampleDown: down-sampling by decimation ------------------------------------------------------------------------
 *
 *     pDst[k] = pSrc[*pPhase + k * factor]      for as long as there are samples
 *
 * lowers the sample rate; a low-pass filter before it keeps off what would be mirrored. Blocks of a stream follow each
 * other with the phase as it is left: the same samples are kept wherever the stream is cut.
 *
 * pSrc            srcLen >= 1 samples
 * pDst            at most (srcLen + factor - 1) / factor samples, apart from pSrc; *pDstLen becomes their number, which
 *                 is 0 where srcLen <= *pPhase
 * factor          at least 1, which copies
 * pPhase          the first sample that is kept, 0 .. factor-1; it becomes the first one of the next block
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr, StatusBadSize (srcLen < 1),
 * StatusSampleFactor (factor < 1), StatusSamplePhase (*pPhase out of range).
 */
Status tevsSampleDown_32f(const float* pSrc, int srcLen, float* pDst, int* pDstLen, int factor, int* pPhase);
Status tevsSampleDown_32fc(const Complex32f* pSrc, int srcLen, Complex32f* pDst, int* pDstLen, int factor, int* pPhase);
Status tevsSampleDown_64f(const double* pSrc, int srcLen, double* pDst, int* pDstLen, int factor, int* pPhase);
Status tevsSampleDown_64fc(const Complex64f* pSrc, int srcLen, Complex64f* pDst, int* pDstLen, int factor, int* pPhase);
Status tevsSampleDown_16s(const int16_t* pSrc, int srcLen, int16_t* pDst, int* pDstLen, int factor, int* pPhase);
Status tevsSampleDown_16sc(const Complex16s* pSrc, int srcLen, Complex16s* pDst, int* pDstLen, int factor, int* pPhase);

TEVS_END

#endif
