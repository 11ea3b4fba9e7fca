/* Convolution and correlation of finite vectors. */
#ifndef TEVS_CONVOLUTION_H
#define TEVS_CONVOLUTION_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- Conv: linear convolution ---------------------------------------------------------------------------------------
 *
 *     pDst[n] = sum over k of  pSrc1[k] * pSrc2[n-k],   n = 0 .. len1+len2-2
 *
 * over those k for which both elements are there.
 *
 * pSrc1, pSrc2   len1 >= 1 and len2 >= 1 elements; they may be the same vector. Exchanged, they give the same result;
 *                equally long ones in floating point but for rounding.
 * pDst           len1 + len2 - 1 elements, at most INT_MAX; it overlaps neither source
 * scaleFactor    _Sfs: results are stored times 2^-scaleFactor, to nearest, ties to even, saturated; any value will do
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len1
 * or len2 below 1, or more than INT_MAX results), StatusFftOrder (a transform beyond 2^30 points would be needed),
 * StatusNoMemory.
 *
 * Method         With S the length of the shorter source, L that of the longer one:
 *
 *     fewer than 512 results, or S < 64   direct; no memory is taken
 *     else L >= 3 S                       FFT, by overlap-save in blocks of 2^(c+1) points, 2^c the least power of two
 *                                         not below 2 S
 *     else                                one FFT of the least power of two not below L + S - 1 points
 *
 *                (Oppenheim and Schafer, Discrete-Time Signal Processing, ch. 8). Direct sums of 16-bit samples are
 *                exact and rounded once, those by FFT are computed in single precision. The error of an FFT is relative
 *                to the largest result of its block, and an infinity or NaN among its inputs reaches all of them.
 *                Results in floating point may differ in rounding between the methods and between SIMD levels.
 * Threads        Blocks of an L above 4096 are shared out over an OpenMP team of threads_omp_of_n_tev threads
 *                (tevcore.h), at most omp_get_max_threads(); the results are the same for any number.
 */
Status tevsConv_32f(const float* pSrc1, int len1, const float* pSrc2, int len2, float* pDst);
Status tevsConv_64f(const double* pSrc1, int len1, const double* pSrc2, int len2, double* pDst);
Status tevsConv_16s_Sfs(const int16_t* pSrc1, int len1, const int16_t* pSrc2, int len2, int16_t* pDst, int scaleFactor);

/* ---- ConvBiased: a part of the linear convolution -------------------------------------------------------------------
 *
 *     pDst[n] = sum over k = 0 .. len1-1 of  pSrc1[k] * pSrc2[bias+n-k],   n = 0 .. dstLen-1
 *
 * where an element of pSrc2 outside 0 .. len2-1 counts as 0: elements bias .. bias+dstLen-1 of Conv, and zeros beyond
 * its ends.
 *
 * pSrc1, pSrc2, pDst   len1, len2, dstLen >= 1 elements; pDst overlaps neither source
 * bias                 any value
 *
 * Direct at every length. Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any
 * pointer), StatusBadSize (a length below 1).
 */
Status tevsConvBiased_32f(const float* pSrc1, int len1, const float* pSrc2, int len2, float* pDst, int dstLen, int bias);

/* ---- ConvCyclic: cyclic convolution of a fixed length N -------------------------------------------------------------
 *
 *     pY[n] = sum over k = 0 .. N-1 of  pX[k] * pH[(n-k) mod N],   n = 0 .. N-1
 *
 * pX, pH, pY    N = 4 elements (4x4) or 8 (8x8) each; pY may equal either source
 * scaleFactor   _Sfs: the exact sum is stored times 2^-scaleFactor, to nearest, ties to even, saturated; any value will
 *               do
 *
 * Nothing is checked, null pointers neither. Returns StatusOk.
 */
Status tevsConvCyclic4x4_32f32fc(const float* pX, const Complex32f* pH, Complex32f* pY);
Status tevsConvCyclic8x8_32f(const float* pX, const float* pH, float* pY);
Status tevsConvCyclic8x8_16s_Sfs(const int16_t* pX, const int16_t* pH, int16_t* pY, int scaleFactor);

/* ---- CrossCorr: cross-correlation over a range of lags --------------------------------------------------------------
 *
 *     pDst[n] = r(lowLag+n),   r(lag) = sum over k of  conj(pSrc1[k]) * pSrc2[k+lag],   n = 0 .. dstLen-1
 *
 * over those k for which both elements are there: r is 0 but for lags -(len1-1) .. len2-1. Of complex samples the
 * factor without the lag is the one that is conjugated, whatever the lengths and the method; r(-lag) is then the
 * conjugate of what the sources give at lag in exchanged roles.
 *
 * pSrc1, pSrc2, pDst   len1, len2, dstLen >= 1 elements; the sources may be the same vector, pDst overlaps neither
 * lowLag               any value
 * scaleFactor          _Sfs: as of Conv
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (a
 * length below 1), StatusFftOrder (a transform beyond 2^30 points would be needed), StatusNoMemory.
 *
 * Method   With m the shorter and M the longer length of the sources, and n the number of lags among dstLen at which r
 *          is not 0 as above, an FFT of the least power of two not below len1 + len2 - 1 points where n m / M, computed
 *          in single precision and cut to an integer, is above 383 for _32f and _16s, 255 for _32fc, 511 for _64f and
 *          _64fc; direct otherwise, without memory. On precision see Conv.
 */
Status tevsCrossCorr_32f(const float* pSrc1, int len1, const float* pSrc2, int len2, float* pDst, int dstLen, int lowLag);
Status tevsCrossCorr_64f(const double* pSrc1, int len1, const double* pSrc2, int len2, double* pDst, int dstLen, int lowLag);
Status tevsCrossCorr_32fc(const Complex32f* pSrc1, int len1, const Complex32f* pSrc2, int len2, Complex32f* pDst, int dstLen, int lowLag);
Status tevsCrossCorr_64fc(const Complex64f* pSrc1, int len1, const Complex64f* pSrc2, int len2, Complex64f* pDst, int dstLen, int lowLag);
Status tevsCrossCorr_16s_Sfs(const int16_t* pSrc1, int len1, const int16_t* pSrc2, int len2, int16_t* pDst, int dstLen, int lowLag, int scaleFactor);

/* ---- AutoCorr: auto-correlation -------------------------------------------------------------------------------------
 *
 *     AutoCorr         pDst[lag] = r(lag) = sum over k = 0 .. srcLen-1-lag of conj(pSrc[k]) * pSrc[k+lag], lag = 0 .. dstLen-1
 *     AutoCorr_NormA   pDst[lag] = r(lag) * (1 / srcLen)
 *     AutoCorr_NormB   pDst[lag] = r(lag) / (srcLen-lag)
 *
 * and 0 for lags from srcLen on. What CrossCorr gives of a vector and itself.
 *
 * pSrc, pDst    srcLen and dstLen >= 1 elements, which do not overlap
 * scaleFactor   _Sfs: as of Conv. Of 16-bit samples NormA divides too; quotients are computed in double precision and
 *               rounded to integers once, with the scale.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (either pointer), StatusBadSize (a
 * length below 1), StatusFftOrder (a transform beyond 2^30 points would be needed), StatusNoMemory. Normalising takes
 * no memory.
 *
 * Method   An FFT of the least power of two not below 2 srcLen points where min(srcLen, dstLen) is at least 856 for
 *          _32f, _64f and _16s, 152 for _32fc, 368 for _64fc; direct otherwise, without memory. On precision see Conv.
 */
Status tevsAutoCorr_32f(const float* pSrc, int srcLen, float* pDst, int dstLen);
Status tevsAutoCorr_64f(const double* pSrc, int srcLen, double* pDst, int dstLen);
Status tevsAutoCorr_32fc(const Complex32f* pSrc, int srcLen, Complex32f* pDst, int dstLen);
Status tevsAutoCorr_64fc(const Complex64f* pSrc, int srcLen, Complex64f* pDst, int dstLen);
Status tevsAutoCorr_16s_Sfs(const int16_t* pSrc, int srcLen, int16_t* pDst, int dstLen, int scaleFactor);
Status tevsAutoCorr_NormA_32f(const float* pSrc, int srcLen, float* pDst, int dstLen);
Status tevsAutoCorr_NormA_64f(const double* pSrc, int srcLen, double* pDst, int dstLen);
Status tevsAutoCorr_NormA_32fc(const Complex32f* pSrc, int srcLen, Complex32f* pDst, int dstLen);
Status tevsAutoCorr_NormA_64fc(const Complex64f* pSrc, int srcLen, Complex64f* pDst, int dstLen);
Status tevsAutoCorr_NormA_16s_Sfs(const int16_t* pSrc, int srcLen, int16_t* pDst, int dstLen, int scaleFactor);
Status tevsAutoCorr_NormB_32f(const float* pSrc, int srcLen, float* pDst, int dstLen);
Status tevsAutoCorr_NormB_64f(const double* pSrc, int srcLen, double* pDst, int dstLen);
Status tevsAutoCorr_NormB_32fc(const Complex32f* pSrc, int srcLen, Complex32f* pDst, int dstLen);
Status tevsAutoCorr_NormB_64fc(const Complex64f* pSrc, int srcLen, Complex64f* pDst, int dstLen);
Status tevsAutoCorr_NormB_16s_Sfs(const int16_t* pSrc, int srcLen, int16_t* pDst, int dstLen, int scaleFactor);

TEVS_END

#endif
