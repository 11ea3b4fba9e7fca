#ifndef TEVS_DOTPROD_H
#define TEVS_DOTPROD_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- DotProd: dot product -------------------------------------------------------------------------------------------
 *
 *     *pDp = sum over n = 0 .. len-1 of  pSrc1[n] * pSrc2[n]
 *
 * with no conjugation. The type codes are those of both sources, or of a real and a complex one, then that of the
 * result where it differs: 32f32fc is float times Complex32f, 16sc32sc Complex16s times Complex16s with a Complex32s
 * result.
 *
 * pSrc1, pSrc2   len >= 1 elements each; they may be the same vector
 * pDp            one value
 * scaleFactor    _Sfs forms: the exact sum * 2^-scaleFactor, to nearest, ties to even, saturated. Any integer will do;
 *                in forms with results of 16 bits a factor above 31 acts as 31 and one below -15 as -15.
 *
 * Integer products and their sums are exact; a float result of integers is the exact sum, rounded once. Sums of floats
 * are formed in an order that depends on len and the SIMD level only: for results in double precision in that precision,
 * for 32f and 32fc results in single precision over blocks of 8192 elements, off by (min(len, 4096) / 4 + 8) * 2^-24 of
 * the sum of the products' magnitudes at most. Products that leave the range of single precision do no harm where their
 * sum does not.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len <
 * 1).
 */
Status tevsDotProd_32f(const float* pSrc1, const float* pSrc2, int len, float* pDp);
Status tevsDotProd_64f(const double* pSrc1, const double* pSrc2, int len, double* pDp);
Status tevsDotProd_32fc(const Complex32f* pSrc1, const Complex32f* pSrc2, int len, Complex32f* pDp);
Status tevsDotProd_64fc(const Complex64f* pSrc1, const Complex64f* pSrc2, int len, Complex64f* pDp);
Status tevsDotProd_32f64f(const float* pSrc1, const float* pSrc2, int len, double* pDp);
Status tevsDotProd_32fc64fc(const Complex32f* pSrc1, const Complex32f* pSrc2, int len, Complex64f* pDp);
Status tevsDotProd_32f32fc(const float* pSrc1, const Complex32f* pSrc2, int len, Complex32f* pDp);
Status tevsDotProd_32f32fc64fc(const float* pSrc1, const Complex32f* pSrc2, int len, Complex64f* pDp);
Status tevsDotProd_64f64fc(const double* pSrc1, const Complex64f* pSrc2, int len, Complex64f* pDp);
Status tevsDotProd_16s64s(const int16_t* pSrc1, const int16_t* pSrc2, int len, int64_t* pDp);
Status tevsDotProd_16s32f(const int16_t* pSrc1, const int16_t* pSrc2, int len, float* pDp);
Status tevsDotProd_16sc64sc(const Complex16s* pSrc1, const Complex16s* pSrc2, int len, Complex64s* pDp);
Status tevsDotProd_16sc32fc(const Complex16s* pSrc1, const Complex16s* pSrc2, int len, Complex32f* pDp);
Status tevsDotProd_16s16sc64sc(const int16_t* pSrc1, const Complex16s* pSrc2, int len, Complex64s* pDp);
Status tevsDotProd_16s16sc32fc(const int16_t* pSrc1, const Complex16s* pSrc2, int len, Complex32f* pDp);
Status tevsDotProd_16s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int len, int16_t* pDp, int scaleFactor);
Status tevsDotProd_16sc_Sfs(const Complex16s* pSrc1, const Complex16s* pSrc2, int len, Complex16s* pDp, int scaleFactor);
Status tevsDotProd_32s_Sfs(const int32_t* pSrc1, const int32_t* pSrc2, int len, int32_t* pDp, int scaleFactor);
Status tevsDotProd_32sc_Sfs(const Complex32s* pSrc1, const Complex32s* pSrc2, int len, Complex32s* pDp, int scaleFactor);
Status tevsDotProd_16s32s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int len, int32_t* pDp, int scaleFactor);
Status tevsDotProd_16sc32sc_Sfs(const Complex16s* pSrc1, const Complex16s* pSrc2, int len, Complex32s* pDp, int scaleFactor);
Status tevsDotProd_16s16sc_Sfs(const int16_t* pSrc1, const Complex16s* pSrc2, int len, Complex16s* pDp, int scaleFactor);
Status tevsDotProd_16s16sc32sc_Sfs(const int16_t* pSrc1, const Complex16s* pSrc2, int len, Complex32s* pDp, int scaleFactor);
Status tevsDotProd_16s32s32s_Sfs(const int16_t* pSrc1, const int32_t* pSrc2, int len, int32_t* pDp, int scaleFactor);
Status tevsDotProd_32s32sc_Sfs(const int32_t* pSrc1, const Complex32s* pSrc2, int len, Complex32s* pDp, int scaleFactor);

TEVS_END

#endif
