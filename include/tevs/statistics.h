#ifndef TEVS_STATISTICS_H
#define TEVS_STATISTICS_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- Sum, Mean: sum and arithmetic mean -----------------------------------------------------------------------------
 *
 *     Sum    sum over n = 0 .. len-1 of  pSrc[n]              Mean    that sum / len
 *
 * pSrc          len >= 1 elements
 * pSum, pMean   one value
 * hint          HintFast adds in single precision; any other value adds in 80-bit extended precision, in eight partial
 *               sums, and rounds once. The forms _Fast and _Accur are these two.
 * scaleFactor   _Sfs forms: the exact sum or mean * 2^-scaleFactor, to nearest, ties to even, saturated; any integer
 *               will do
 *
 * Sums of integers are exact before they are scaled or rounded. 64f and 64fc add in double precision. What is not exact
 * is added in an order that depends on len and the SIMD level only, never on the address.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len <
 * 1).
 */
Status tevsSum_16s_Sfs(const int16_t* pSrc, int len, int16_t* pSum, int scaleFactor);
Status tevsSum_16s32s_Sfs(const int16_t* pSrc, int len, int32_t* pSum, int scaleFactor);
Status tevsSum_16sc_Sfs(const Complex16s* pSrc, int len, Complex16s* pSum, int scaleFactor);
Status tevsSum_16sc32sc_Sfs(const Complex16s* pSrc, int len, Complex32s* pSum, int scaleFactor);
Status tevsSum_32s_Sfs(const int32_t* pSrc, int len, int32_t* pSum, int scaleFactor);
Status tevsSum_16s64f(const int16_t* pSrc, int len, double* pSum);
Status tevsSum_16sc64fc(const Complex16s* pSrc, int len, Complex64f* pSum);
Status tevsSum_32f(const float* pSrc, int len, float* pSum, int hint);
Status tevsSum_32fc(const Complex32f* pSrc, int len, Complex32f* pSum, int hint);
Status tevsSum_64f(const double* pSrc, int len, double* pSum);
Status tevsSum_64fc(const Complex64f* pSrc, int len, Complex64f* pSum);
Status tevsSum_32f_Fast(const float* pSrc, int len, float* pSum);
Status tevsSum_32f_Accur(const float* pSrc, int len, float* pSum);
Status tevsSum_32fc_Fast(const Complex32f* pSrc, int len, Complex32f* pSum);
Status tevsSum_32fc_Accur(const Complex32f* pSrc, int len, Complex32f* pSum);
Status tevsMean_16s_Sfs(const int16_t* pSrc, int len, int16_t* pMean, int scaleFactor);
Status tevsMean_16sc_Sfs(const Complex16s* pSrc, int len, Complex16s* pMean, int scaleFactor);
Status tevsMean_32s_Sfs(const int32_t* pSrc, int len, int32_t* pMean, int scaleFactor);
Status tevsMean_32f(const float* pSrc, int len, float* pMean, int hint);
Status tevsMean_32fc(const Complex32f* pSrc, int len, Complex32f* pMean, int hint);
Status tevsMean_64f(const double* pSrc, int len, double* pMean);
Status tevsMean_64fc(const Complex64f* pSrc, int len, Complex64f* pMean);

/* ---- StdDev: sample standard deviation ------------------------------------------------------------------------------
 *
 *     sqrt( (len * Q - S^2) / (len * (len - 1)) ),    S = sum of pSrc[n],  Q = sum of pSrc[n]^2
 *
 * pSrc          len >= 2 elements
 * pStdDev       one value
 * hint          HintFast forms S and Q in single precision, any other value in extended precision; the forms _Fast and
 *               _Accur are these two
 * scaleFactor   _Sfs forms: the deviation of the exact sums * 2^-scaleFactor, to nearest, ties to even, saturated; any
 *               integer will do
 *
 * 64f sums the squares of the differences to the mean, in double precision. A value below 0 under the root, an artefact
 * of rounding, counts as 0.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len <
 * 2).
 */
Status tevsStdDev_16s_Sfs(const int16_t* pSrc, int len, int16_t* pStdDev, int scaleFactor);
Status tevsStdDev_16s32s_Sfs(const int16_t* pSrc, int len, int32_t* pStdDev, int scaleFactor);
Status tevsStdDev_32f(const float* pSrc, int len, float* pStdDev, int hint);
Status tevsStdDev_32f_Fast(const float* pSrc, int len, float* pStdDev);
Status tevsStdDev_32f_Accur(const float* pSrc, int len, float* pStdDev);
Status tevsStdDev_64f(const double* pSrc, int len, double* pStdDev);

/* ---- Norm_Inf, Norm_L1, Norm_L2, Norm_L2Sqr, NormDiff_...: norms of a vector and of a difference --------------------
 *
 *     Inf     the largest |x[n]|               L2      the root of the sum of |x[n]|^2
 *     L1      the sum of |x[n]|                L2Sqr   the sum of |x[n]|^2
 *
 * where x[n] is pSrc[n], or pSrc1[n] - pSrc2[n] in NormDiff. The magnitude of a complex element is sqrt(re^2 + im^2).
 *
 * pSrc, pSrc1, pSrc2   len >= 1 elements each
 * pNorm                one value
 * scaleFactor          _Sfs forms: the norm * 2^-scaleFactor, to nearest, ties to even, saturated; any integer will do
 *
 * Sums of integers are exact, and their root is taken in double precision. Sums of floats are formed in double
 * precision and rounded once, but L1 and L2 of 32f in single precision over blocks of 8192 elements, off by (min(len,
 * 8192) / 16 + 8) * 2^-24 of the sum at most; in an order that depends on len and the SIMD level only. What leaves the
 * range on the way but not in the end does no harm. Norm_Inf passes over a NaN that is not in front.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len <
 * 1).
 */
Status tevsNorm_Inf_32f(const float* pSrc, int len, float* pNorm);
Status tevsNorm_Inf_64f(const double* pSrc, int len, double* pNorm);
Status tevsNorm_Inf_16s32f(const int16_t* pSrc, int len, float* pNorm);
Status tevsNorm_Inf_16s32s_Sfs(const int16_t* pSrc, int len, int32_t* pNorm, int scaleFactor);
Status tevsNorm_Inf_32fc32f(const Complex32f* pSrc, int len, float* pNorm);
Status tevsNorm_Inf_64fc64f(const Complex64f* pSrc, int len, double* pNorm);
Status tevsNorm_L1_32f(const float* pSrc, int len, float* pNorm);
Status tevsNorm_L1_64f(const double* pSrc, int len, double* pNorm);
Status tevsNorm_L1_16s32f(const int16_t* pSrc, int len, float* pNorm);
Status tevsNorm_L1_16s32s_Sfs(const int16_t* pSrc, int len, int32_t* pNorm, int scaleFactor);
Status tevsNorm_L1_16s64s_Sfs(const int16_t* pSrc, int len, int64_t* pNorm, int scaleFactor);
Status tevsNorm_L1_32fc64f(const Complex32f* pSrc, int len, double* pNorm);
Status tevsNorm_L1_64fc64f(const Complex64f* pSrc, int len, double* pNorm);
Status tevsNorm_L2_32f(const float* pSrc, int len, float* pNorm);
Status tevsNorm_L2_64f(const double* pSrc, int len, double* pNorm);
Status tevsNorm_L2_16s32f(const int16_t* pSrc, int len, float* pNorm);
Status tevsNorm_L2_16s32s_Sfs(const int16_t* pSrc, int len, int32_t* pNorm, int scaleFactor);
Status tevsNorm_L2_32fc64f(const Complex32f* pSrc, int len, double* pNorm);
Status tevsNorm_L2_64fc64f(const Complex64f* pSrc, int len, double* pNorm);
Status tevsNorm_L2Sqr_16s64s_Sfs(const int16_t* pSrc, int len, int64_t* pNorm, int scaleFactor);
Status tevsNormDiff_Inf_32f(const float* pSrc1, const float* pSrc2, int len, float* pNorm);
Status tevsNormDiff_Inf_64f(const double* pSrc1, const double* pSrc2, int len, double* pNorm);
Status tevsNormDiff_Inf_16s32f(const int16_t* pSrc1, const int16_t* pSrc2, int len, float* pNorm);
Status tevsNormDiff_Inf_16s32s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int len, int32_t* pNorm, int scaleFactor);
Status tevsNormDiff_Inf_32fc32f(const Complex32f* pSrc1, const Complex32f* pSrc2, int len, float* pNorm);
Status tevsNormDiff_Inf_64fc64f(const Complex64f* pSrc1, const Complex64f* pSrc2, int len, double* pNorm);
Status tevsNormDiff_L1_32f(const float* pSrc1, const float* pSrc2, int len, float* pNorm);
Status tevsNormDiff_L1_64f(const double* pSrc1, const double* pSrc2, int len, double* pNorm);
Status tevsNormDiff_L1_16s32f(const int16_t* pSrc1, const int16_t* pSrc2, int len, float* pNorm);
Status tevsNormDiff_L1_16s32s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int len, int32_t* pNorm, int scaleFactor);
Status tevsNormDiff_L1_16s64s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int len, int64_t* pNorm, int scaleFactor);
Status tevsNormDiff_L1_32fc64f(const Complex32f* pSrc1, const Complex32f* pSrc2, int len, double* pNorm);
Status tevsNormDiff_L1_64fc64f(const Complex64f* pSrc1, const Complex64f* pSrc2, int len, double* pNorm);
Status tevsNormDiff_L2_32f(const float* pSrc1, const float* pSrc2, int len, float* pNorm);
Status tevsNormDiff_L2_64f(const double* pSrc1, const double* pSrc2, int len, double* pNorm);
Status tevsNormDiff_L2_16s32f(const int16_t* pSrc1, const int16_t* pSrc2, int len, float* pNorm);
Status tevsNormDiff_L2_16s32s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int len, int32_t* pNorm, int scaleFactor);
Status tevsNormDiff_L2_32fc64f(const Complex32f* pSrc1, const Complex32f* pSrc2, int len, double* pNorm);
Status tevsNormDiff_L2_64fc64f(const Complex64f* pSrc1, const Complex64f* pSrc2, int len, double* pNorm);
Status tevsNormDiff_L2Sqr_16s64s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int len, int64_t* pNorm, int scaleFactor);

/* ---- CountInRange: number of elements between two bounds ------------------------------------------------------------
 *
 *     *pCounts = the number of n with  lowerBound < pSrc[n] < upperBound
 *
 * pSrc                     len >= 1 elements
 * pCounts                  one value
 * lowerBound, upperBound   neither counts itself; any order
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len <
 * 1).
 */
Status tevsCountInRange_32s(const int32_t* pSrc, int len, int* pCounts, int32_t lowerBound, int32_t upperBound);

/* ---- SumLn: sum of natural logarithms -------------------------------------------------------------------------------
 *
 *     sum over n = 0 .. len-1 of  ln(pSrc[n])
 *
 * pSrc   len >= 1 elements
 * pSum   one value. The first element that is zero or negative, of either kind of zero and -infinity too, ends the sum:
 *        it is +infinity for a zero and NaN for a negative element, whatever stands before and behind. Without one, a
 *        NaN among the elements gives NaN, and else an infinity +infinity.
 *
 * Returns StatusOk, with NaN and infinities too; WarnLnZeroArg or WarnLnNegArg, by the first element that is zero or
 * negative; or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len < 1).
 */
Status tevsSumLn_32f(const float* pSrc, int len, float* pSum);
Status tevsSumLn_64f(const double* pSrc, int len, double* pSum);
Status tevsSumLn_32f64f(const float* pSrc, int len, double* pSum);
Status tevsSumLn_16s32f(const int16_t* pSrc, int len, float* pSum);

TEVS_END

#endif
