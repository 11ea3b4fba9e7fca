#ifndef TEVS_ELEMENTARY_H
#define TEVS_ELEMENTARY_H

#include "tevs/types.h"

/* What all of these share. Vectors hold len >= 1 elements each; a destination may equal a source of the same width (the
 * _I forms are that call). A result in floating point is within one unit in the last place of the exact value (most are
 * within 0.6 in single precision), over the whole range of the type, subnormal numbers included, and the same on every
 * machine; docs/accuracy.md has the measured errors. NaN gives NaN and no warning. An integer result is the exact value
 * times 2^-scaleFactor, rounded to nearest, ties to even, and saturated, for any scaleFactor; where the exact value is
 * irrational, it is rounded from extended precision or from double precision where that gives the same.
 *
 * Returns StatusOk, or the first error that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize
 * (len < 1), and what the functions name. A warning does not end the call: the whole destination is written, and the
 * first offending element decides which warning it is.
 */

TEVS_BEGIN

/* ---- Exp: exponential -----------------------------------------------------------------------------------------------
 *
 *     pDst[n] = e^pSrc[n]
 *
 * Past the largest number of the type: infinity, or the largest integer; below the smallest: 0. Neither is a warning.
 */
Status tevsExp_32f(const float* pSrc, float* pDst, int len);
Status tevsExp_32f_I(float* pSrcDst, int len);
Status tevsExp_64f(const double* pSrc, double* pDst, int len);
Status tevsExp_64f_I(double* pSrcDst, int len);
Status tevsExp_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int len, int scaleFactor);
Status tevsExp_16s_ISfs(int16_t* pSrcDst, int len, int scaleFactor);
Status tevsExp_32s_Sfs(const int32_t* pSrc, int32_t* pDst, int len, int scaleFactor);
Status tevsExp_32s_ISfs(int32_t* pSrcDst, int len, int scaleFactor);
Status tevsExp_64s_Sfs(const int64_t* pSrc, int64_t* pDst, int len, int scaleFactor);
Status tevsExp_64s_ISfs(int64_t* pSrcDst, int len, int scaleFactor);
Status tevsExp_32f64f(const float* pSrc, double* pDst, int len);

/* ---- Ln: natural logarithm ------------------------------------------------------------------------------------------
 *
 *     pDst[n] = ln pSrc[n]
 *
 * zero        -infinity, or the least integer; WarnLnZeroArg. -0.0 is zero.
 * negative    NaN with its sign bit set (0xffc00000 in single precision), or the least integer; WarnLnNegArg
 */
Status tevsLn_32f(const float* pSrc, float* pDst, int len);
Status tevsLn_32f_I(float* pSrcDst, int len);
Status tevsLn_64f(const double* pSrc, double* pDst, int len);
Status tevsLn_64f_I(double* pSrcDst, int len);
Status tevsLn_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int len, int scaleFactor);
Status tevsLn_16s_ISfs(int16_t* pSrcDst, int len, int scaleFactor);
Status tevsLn_32s_Sfs(const int32_t* pSrc, int32_t* pDst, int len, int scaleFactor);
Status tevsLn_32s_ISfs(int32_t* pSrcDst, int len, int scaleFactor);
Status tevsLn_64f32f(const double* pSrc, float* pDst, int len);
Status tevsLn_32s16s_Sfs(const int32_t* pSrc, int16_t* pDst, int len, int scaleFactor);

/* ---- 10Log10: decibels of a power -----------------------------------------------------------------------------------
 *
 *     pDst[n] = 10 log10 pSrc[n]
 *
 * Zero and negative elements as in Ln.
 */
Status tevs10Log10_32s_Sfs(const int32_t* pSrc, int32_t* pDst, int len, int scaleFactor);
Status tevs10Log10_32s_ISfs(int32_t* pSrcDst, int len, int scaleFactor);

/* ---- Sqr: square ----------------------------------------------------------------------------------------------------
 *
 *     pDst[n] = pSrc[n]^2
 *
 * Floating point: one rounding, or for complex elements, (re^2 - im^2) + i (re im + im re), one for each operation.
 * Integers: exact before the scale.
 */
Status tevsSqr_32f(const float* pSrc, float* pDst, int len);
Status tevsSqr_32f_I(float* pSrcDst, int len);
Status tevsSqr_64f(const double* pSrc, double* pDst, int len);
Status tevsSqr_64f_I(double* pSrcDst, int len);
Status tevsSqr_32fc(const Complex32f* pSrc, Complex32f* pDst, int len);
Status tevsSqr_32fc_I(Complex32f* pSrcDst, int len);
Status tevsSqr_64fc(const Complex64f* pSrc, Complex64f* pDst, int len);
Status tevsSqr_64fc_I(Complex64f* pSrcDst, int len);
Status tevsSqr_8u_Sfs(const uint8_t* pSrc, uint8_t* pDst, int len, int scaleFactor);
Status tevsSqr_8u_ISfs(uint8_t* pSrcDst, int len, int scaleFactor);
Status tevsSqr_16u_Sfs(const uint16_t* pSrc, uint16_t* pDst, int len, int scaleFactor);
Status tevsSqr_16u_ISfs(uint16_t* pSrcDst, int len, int scaleFactor);
Status tevsSqr_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int len, int scaleFactor);
Status tevsSqr_16s_ISfs(int16_t* pSrcDst, int len, int scaleFactor);
Status tevsSqr_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int len, int scaleFactor);
Status tevsSqr_16sc_ISfs(Complex16s* pSrcDst, int len, int scaleFactor);

/* ---- Sqrt: square root ----------------------------------------------------------------------------------------------
 *
 *     pDst[n] = sqrt(pSrc[n])
 *
 * real        correctly rounded. A negative element gives NaN with its sign bit set, or the integer 0, and
 *             WarnSqrtNegArg; -0.0 gives -0.0.
 * complex     the principal root, whose real part is not negative and whose imaginary part has the sign of the
 *             element's; infinities as in C's csqrt. 32fc within 0.51 units in the last place of each part, 64fc within
 *             0.75; 16sc rounded from double precision. Never a warning.
 */
Status tevsSqrt_32f(const float* pSrc, float* pDst, int len);
Status tevsSqrt_32f_I(float* pSrcDst, int len);
Status tevsSqrt_64f(const double* pSrc, double* pDst, int len);
Status tevsSqrt_64f_I(double* pSrcDst, int len);
Status tevsSqrt_32fc(const Complex32f* pSrc, Complex32f* pDst, int len);
Status tevsSqrt_32fc_I(Complex32f* pSrcDst, int len);
Status tevsSqrt_64fc(const Complex64f* pSrc, Complex64f* pDst, int len);
Status tevsSqrt_64fc_I(Complex64f* pSrcDst, int len);
Status tevsSqrt_8u_Sfs(const uint8_t* pSrc, uint8_t* pDst, int len, int scaleFactor);
Status tevsSqrt_8u_ISfs(uint8_t* pSrcDst, int len, int scaleFactor);
Status tevsSqrt_16u_Sfs(const uint16_t* pSrc, uint16_t* pDst, int len, int scaleFactor);
Status tevsSqrt_16u_ISfs(uint16_t* pSrcDst, int len, int scaleFactor);
Status tevsSqrt_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int len, int scaleFactor);
Status tevsSqrt_16s_ISfs(int16_t* pSrcDst, int len, int scaleFactor);
Status tevsSqrt_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int len, int scaleFactor);
Status tevsSqrt_16sc_ISfs(Complex16s* pSrcDst, int len, int scaleFactor);
Status tevsSqrt_64s_Sfs(const int64_t* pSrc, int64_t* pDst, int len, int scaleFactor);
Status tevsSqrt_64s_ISfs(int64_t* pSrcDst, int len, int scaleFactor);
Status tevsSqrt_32s16s_Sfs(const int32_t* pSrc, int16_t* pDst, int len, int scaleFactor);
Status tevsSqrt_64s16s_Sfs(const int64_t* pSrc, int16_t* pDst, int len, int scaleFactor);

/* ---- Cubrt: cube root -----------------------------------------------------------------------------------------------
 *
 *     pDst[n] = cbrt(pSrc[n])
 *
 * The root of a negative element is negative; zeros and infinities are their own roots.
 */
Status tevsCubrt_32f(const float* pSrc, float* pDst, int len);
Status tevsCubrt_32s16s_Sfs(const int32_t* pSrc, int16_t* pDst, int len, int scaleFactor);

/* ---- Normalize: subtract and divide by constants --------------------------------------------------------------------
 *
 *     pDst[n] = (pSrc[n] - vSub) * (1 / vDiv)
 *
 * The reciprocal is computed once and rounded; in floating point the difference and the product are each rounded as
 * well, so results may differ from a division's in the last place. Integers: the difference is exact, the reciprocal
 * and the product are rounded to double precision before the scale.
 *
 * Returns also StatusDivByZeroErr: |vDiv| is below the smallest normal number of single precision (2^-126), in double
 * precision too, or 0 for integers.
 */
Status tevsNormalize_32f(const float* pSrc, float* pDst, int len, float vSub, float vDiv);
Status tevsNormalize_64f(const double* pSrc, double* pDst, int len, double vSub, double vDiv);
Status tevsNormalize_32fc(const Complex32f* pSrc, Complex32f* pDst, int len, Complex32f vSub, float vDiv);
Status tevsNormalize_64fc(const Complex64f* pSrc, Complex64f* pDst, int len, Complex64f vSub, double vDiv);
Status tevsNormalize_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int len, int16_t vSub, int16_t vDiv, int scaleFactor);
Status tevsNormalize_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int len, Complex16s vSub, int16_t vDiv, int scaleFactor);

TEVS_END

#endif
