#ifndef TEVS_ARITHMETIC_H
#define TEVS_ARITHMETIC_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- Add, Sub, Mul, AddProduct: two vectors, element by element -----------------------------------------------------
 *
 *     Add           pDst[n] = pSrc1[n] + pSrc2[n]
 *     Sub           pDst[n] = pSrc2[n] - pSrc1[n]                 the first source is the subtrahend; in place
 *                                                                 pSrcDst[n] - pSrc[n]
 *     Mul           pDst[n] = pSrc1[n] * pSrc2[n]
 *     AddProduct    pSrcDst[n] = pSrcDst[n] + pSrc1[n] * pSrc2[n]
 *
 *     complex       (a + ib) (c + id) = (ac - bd) + i (ad + bc)
 *
 * pSrc1, pSrc2, pSrc, pDst, pSrcDst    len >= 1 elements each; the destination may equal any source whose elements are
 *                                      at least as wide
 * scaleFactor                          _Sfs forms store r * 2^-scaleFactor of the exact result r, to nearest, ties to
 *                                      even, saturated; any integer will do. In AddProduct r is the whole sum.
 *
 * Integer forms without a scale store r saturated; none wraps. The parts of a complex result saturate each by itself.
 * Float forms are plain IEEE 754 arithmetic in the type of the elements: each product and each sum is rounded, to
 * nearest. Of two type codes the first is that of the sources, the second that of the destination; of 32f32fc, 32s32sc
 * and 16u16s that of the first and of the second source, the latter the destination's too; Add_16s32s_I adds 16-bit
 * elements to 32-bit ones.
 *
 * Mul_Low_32s_Sfs stores what Mul_32s_Sfs stores.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len <
 * 1). Add_16u_Sfs with scaleFactor > 17, where only zeros are left, looks at pDst and len alone.
 */
Status tevsAdd_32f(const float* pSrc1, const float* pSrc2, float* pDst, int len);
Status tevsAdd_32f_I(const float* pSrc, float* pSrcDst, int len);
Status tevsAdd_64f(const double* pSrc1, const double* pSrc2, double* pDst, int len);
Status tevsAdd_64f_I(const double* pSrc, double* pSrcDst, int len);
Status tevsAdd_32fc(const Complex32f* pSrc1, const Complex32f* pSrc2, Complex32f* pDst, int len);
Status tevsAdd_32fc_I(const Complex32f* pSrc, Complex32f* pSrcDst, int len);
Status tevsAdd_64fc(const Complex64f* pSrc1, const Complex64f* pSrc2, Complex64f* pDst, int len);
Status tevsAdd_64fc_I(const Complex64f* pSrc, Complex64f* pSrcDst, int len);
Status tevsAdd_8u_Sfs(const uint8_t* pSrc1, const uint8_t* pSrc2, uint8_t* pDst, int len, int scaleFactor);
Status tevsAdd_8u_ISfs(const uint8_t* pSrc, uint8_t* pSrcDst, int len, int scaleFactor);
Status tevsAdd_16u_Sfs(const uint16_t* pSrc1, const uint16_t* pSrc2, uint16_t* pDst, int len, int scaleFactor);
Status tevsAdd_16u_ISfs(const uint16_t* pSrc, uint16_t* pSrcDst, int len, int scaleFactor);
Status tevsAdd_16s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int16_t* pDst, int len, int scaleFactor);
Status tevsAdd_16s_ISfs(const int16_t* pSrc, int16_t* pSrcDst, int len, int scaleFactor);
Status tevsAdd_32s_Sfs(const int32_t* pSrc1, const int32_t* pSrc2, int32_t* pDst, int len, int scaleFactor);
Status tevsAdd_32s_ISfs(const int32_t* pSrc, int32_t* pSrcDst, int len, int scaleFactor);
Status tevsAdd_16sc_Sfs(const Complex16s* pSrc1, const Complex16s* pSrc2, Complex16s* pDst, int len, int scaleFactor);
Status tevsAdd_16sc_ISfs(const Complex16s* pSrc, Complex16s* pSrcDst, int len, int scaleFactor);
Status tevsAdd_32sc_Sfs(const Complex32s* pSrc1, const Complex32s* pSrc2, Complex32s* pDst, int len, int scaleFactor);
Status tevsAdd_32sc_ISfs(const Complex32s* pSrc, Complex32s* pSrcDst, int len, int scaleFactor);
Status tevsAdd_16s(const int16_t* pSrc1, const int16_t* pSrc2, int16_t* pDst, int len);
Status tevsAdd_16s_I(const int16_t* pSrc, int16_t* pSrcDst, int len);
Status tevsAdd_16u(const uint16_t* pSrc1, const uint16_t* pSrc2, uint16_t* pDst, int len);
Status tevsAdd_32u(const uint32_t* pSrc1, const uint32_t* pSrc2, uint32_t* pDst, int len);
Status tevsAdd_8u16u(const uint8_t* pSrc1, const uint8_t* pSrc2, uint16_t* pDst, int len);
Status tevsAdd_16s32f(const int16_t* pSrc1, const int16_t* pSrc2, float* pDst, int len);
Status tevsAdd_16s32s_I(const int16_t* pSrc, int32_t* pSrcDst, int len);

Status tevsSub_32f(const float* pSrc1, const float* pSrc2, float* pDst, int len);
Status tevsSub_32f_I(const float* pSrc, float* pSrcDst, int len);
Status tevsSub_64f(const double* pSrc1, const double* pSrc2, double* pDst, int len);
Status tevsSub_64f_I(const double* pSrc, double* pSrcDst, int len);
Status tevsSub_32fc(const Complex32f* pSrc1, const Complex32f* pSrc2, Complex32f* pDst, int len);
Status tevsSub_32fc_I(const Complex32f* pSrc, Complex32f* pSrcDst, int len);
Status tevsSub_64fc(const Complex64f* pSrc1, const Complex64f* pSrc2, Complex64f* pDst, int len);
Status tevsSub_64fc_I(const Complex64f* pSrc, Complex64f* pSrcDst, int len);
Status tevsSub_8u_Sfs(const uint8_t* pSrc1, const uint8_t* pSrc2, uint8_t* pDst, int len, int scaleFactor);
Status tevsSub_8u_ISfs(const uint8_t* pSrc, uint8_t* pSrcDst, int len, int scaleFactor);
Status tevsSub_16u_Sfs(const uint16_t* pSrc1, const uint16_t* pSrc2, uint16_t* pDst, int len, int scaleFactor);
Status tevsSub_16u_ISfs(const uint16_t* pSrc, uint16_t* pSrcDst, int len, int scaleFactor);
Status tevsSub_16s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int16_t* pDst, int len, int scaleFactor);
Status tevsSub_16s_ISfs(const int16_t* pSrc, int16_t* pSrcDst, int len, int scaleFactor);
Status tevsSub_32s_Sfs(const int32_t* pSrc1, const int32_t* pSrc2, int32_t* pDst, int len, int scaleFactor);
Status tevsSub_32s_ISfs(const int32_t* pSrc, int32_t* pSrcDst, int len, int scaleFactor);
Status tevsSub_16sc_Sfs(const Complex16s* pSrc1, const Complex16s* pSrc2, Complex16s* pDst, int len, int scaleFactor);
Status tevsSub_16sc_ISfs(const Complex16s* pSrc, Complex16s* pSrcDst, int len, int scaleFactor);
Status tevsSub_32sc_Sfs(const Complex32s* pSrc1, const Complex32s* pSrc2, Complex32s* pDst, int len, int scaleFactor);
Status tevsSub_32sc_ISfs(const Complex32s* pSrc, Complex32s* pSrcDst, int len, int scaleFactor);
Status tevsSub_16s(const int16_t* pSrc1, const int16_t* pSrc2, int16_t* pDst, int len);
Status tevsSub_16s_I(const int16_t* pSrc, int16_t* pSrcDst, int len);
Status tevsSub_16s32f(const int16_t* pSrc1, const int16_t* pSrc2, float* pDst, int len);

Status tevsMul_32f(const float* pSrc1, const float* pSrc2, float* pDst, int len);
Status tevsMul_32f_I(const float* pSrc, float* pSrcDst, int len);
Status tevsMul_64f(const double* pSrc1, const double* pSrc2, double* pDst, int len);
Status tevsMul_64f_I(const double* pSrc, double* pSrcDst, int len);
Status tevsMul_32fc(const Complex32f* pSrc1, const Complex32f* pSrc2, Complex32f* pDst, int len);
Status tevsMul_32fc_I(const Complex32f* pSrc, Complex32f* pSrcDst, int len);
Status tevsMul_64fc(const Complex64f* pSrc1, const Complex64f* pSrc2, Complex64f* pDst, int len);
Status tevsMul_64fc_I(const Complex64f* pSrc, Complex64f* pSrcDst, int len);
Status tevsMul_8u_Sfs(const uint8_t* pSrc1, const uint8_t* pSrc2, uint8_t* pDst, int len, int scaleFactor);
Status tevsMul_8u_ISfs(const uint8_t* pSrc, uint8_t* pSrcDst, int len, int scaleFactor);
Status tevsMul_16u_Sfs(const uint16_t* pSrc1, const uint16_t* pSrc2, uint16_t* pDst, int len, int scaleFactor);
Status tevsMul_16u_ISfs(const uint16_t* pSrc, uint16_t* pSrcDst, int len, int scaleFactor);
Status tevsMul_16s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int16_t* pDst, int len, int scaleFactor);
Status tevsMul_16s_ISfs(const int16_t* pSrc, int16_t* pSrcDst, int len, int scaleFactor);
Status tevsMul_32s_Sfs(const int32_t* pSrc1, const int32_t* pSrc2, int32_t* pDst, int len, int scaleFactor);
Status tevsMul_32s_ISfs(const int32_t* pSrc, int32_t* pSrcDst, int len, int scaleFactor);
Status tevsMul_16sc_Sfs(const Complex16s* pSrc1, const Complex16s* pSrc2, Complex16s* pDst, int len, int scaleFactor);
Status tevsMul_16sc_ISfs(const Complex16s* pSrc, Complex16s* pSrcDst, int len, int scaleFactor);
Status tevsMul_32sc_Sfs(const Complex32s* pSrc1, const Complex32s* pSrc2, Complex32s* pDst, int len, int scaleFactor);
Status tevsMul_32sc_ISfs(const Complex32s* pSrc, Complex32s* pSrcDst, int len, int scaleFactor);
Status tevsMul_32f32fc(const float* pSrc1, const Complex32f* pSrc2, Complex32f* pDst, int len);
Status tevsMul_32f32fc_I(const float* pSrc, Complex32f* pSrcDst, int len);
Status tevsMul_16u16s_Sfs(const uint16_t* pSrc1, const int16_t* pSrc2, int16_t* pDst, int len, int scaleFactor);
Status tevsMul_16s32s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int32_t* pDst, int len, int scaleFactor);
Status tevsMul_32s32sc_Sfs(const int32_t* pSrc1, const Complex32s* pSrc2, Complex32s* pDst, int len, int scaleFactor);
Status tevsMul_32s32sc_ISfs(const int32_t* pSrc, Complex32s* pSrcDst, int len, int scaleFactor);
Status tevsMul_Low_32s_Sfs(const int32_t* pSrc1, const int32_t* pSrc2, int32_t* pDst, int len, int scaleFactor);
Status tevsMul_16s(const int16_t* pSrc1, const int16_t* pSrc2, int16_t* pDst, int len);
Status tevsMul_16s_I(const int16_t* pSrc, int16_t* pSrcDst, int len);
Status tevsMul_8u16u(const uint8_t* pSrc1, const uint8_t* pSrc2, uint16_t* pDst, int len);
Status tevsMul_16s32f(const int16_t* pSrc1, const int16_t* pSrc2, float* pDst, int len);

Status tevsAddProduct_32f(const float* pSrc1, const float* pSrc2, float* pSrcDst, int len);
Status tevsAddProduct_64f(const double* pSrc1, const double* pSrc2, double* pSrcDst, int len);
Status tevsAddProduct_32fc(const Complex32f* pSrc1, const Complex32f* pSrc2, Complex32f* pSrcDst, int len);
Status tevsAddProduct_64fc(const Complex64f* pSrc1, const Complex64f* pSrc2, Complex64f* pSrcDst, int len);
Status tevsAddProduct_16s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int16_t* pSrcDst, int len, int scaleFactor);
Status tevsAddProduct_32s_Sfs(const int32_t* pSrc1, const int32_t* pSrc2, int32_t* pSrcDst, int len, int scaleFactor);
Status tevsAddProduct_16s32s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int32_t* pSrcDst, int len, int scaleFactor);

/* ---- AddC, SubC, SubCRev, MulC, AddProductC: a vector and a constant ------------------------------------------------
 *
 *     AddC           pDst[n] = pSrc[n] + val
 *     SubC           pDst[n] = pSrc[n] - val
 *     SubCRev        pDst[n] = val - pSrc[n]
 *     MulC           pDst[n] = pSrc[n] * val
 *     AddProductC    pSrcDst[n] = pSrcDst[n] + pSrc[n] * val
 *
 * Arguments, rounding and statuses as above. val comes first in place. MulC_32f16s_Sfs rounds the product to single
 * precision, then scales it; a product that is NaN becomes -32768. MulC_Low_32f16s is the same with a scale of 0.
 */
Status tevsAddC_32f(const float* pSrc, float val, float* pDst, int len);
Status tevsAddC_32f_I(float val, float* pSrcDst, int len);
Status tevsAddC_64f(const double* pSrc, double val, double* pDst, int len);
Status tevsAddC_64f_I(double val, double* pSrcDst, int len);
Status tevsAddC_32fc(const Complex32f* pSrc, Complex32f val, Complex32f* pDst, int len);
Status tevsAddC_32fc_I(Complex32f val, Complex32f* pSrcDst, int len);
Status tevsAddC_64fc(const Complex64f* pSrc, Complex64f val, Complex64f* pDst, int len);
Status tevsAddC_64fc_I(Complex64f val, Complex64f* pSrcDst, int len);
Status tevsAddC_8u_Sfs(const uint8_t* pSrc, uint8_t val, uint8_t* pDst, int len, int scaleFactor);
Status tevsAddC_8u_ISfs(uint8_t val, uint8_t* pSrcDst, int len, int scaleFactor);
Status tevsAddC_16u_Sfs(const uint16_t* pSrc, uint16_t val, uint16_t* pDst, int len, int scaleFactor);
Status tevsAddC_16u_ISfs(uint16_t val, uint16_t* pSrcDst, int len, int scaleFactor);
Status tevsAddC_16s_Sfs(const int16_t* pSrc, int16_t val, int16_t* pDst, int len, int scaleFactor);
Status tevsAddC_16s_ISfs(int16_t val, int16_t* pSrcDst, int len, int scaleFactor);
Status tevsAddC_32s_Sfs(const int32_t* pSrc, int32_t val, int32_t* pDst, int len, int scaleFactor);
Status tevsAddC_32s_ISfs(int32_t val, int32_t* pSrcDst, int len, int scaleFactor);
Status tevsAddC_16sc_Sfs(const Complex16s* pSrc, Complex16s val, Complex16s* pDst, int len, int scaleFactor);
Status tevsAddC_16sc_ISfs(Complex16s val, Complex16s* pSrcDst, int len, int scaleFactor);
Status tevsAddC_32sc_Sfs(const Complex32s* pSrc, Complex32s val, Complex32s* pDst, int len, int scaleFactor);
Status tevsAddC_32sc_ISfs(Complex32s val, Complex32s* pSrcDst, int len, int scaleFactor);
Status tevsAddC_16s_I(int16_t val, int16_t* pSrcDst, int len);

Status tevsSubC_32f(const float* pSrc, float val, float* pDst, int len);
Status tevsSubC_32f_I(float val, float* pSrcDst, int len);
Status tevsSubC_64f(const double* pSrc, double val, double* pDst, int len);
Status tevsSubC_64f_I(double val, double* pSrcDst, int len);
Status tevsSubC_32fc(const Complex32f* pSrc, Complex32f val, Complex32f* pDst, int len);
Status tevsSubC_32fc_I(Complex32f val, Complex32f* pSrcDst, int len);
Status tevsSubC_64fc(const Complex64f* pSrc, Complex64f val, Complex64f* pDst, int len);
Status tevsSubC_64fc_I(Complex64f val, Complex64f* pSrcDst, int len);
Status tevsSubC_8u_Sfs(const uint8_t* pSrc, uint8_t val, uint8_t* pDst, int len, int scaleFactor);
Status tevsSubC_8u_ISfs(uint8_t val, uint8_t* pSrcDst, int len, int scaleFactor);
Status tevsSubC_16u_Sfs(const uint16_t* pSrc, uint16_t val, uint16_t* pDst, int len, int scaleFactor);
Status tevsSubC_16u_ISfs(uint16_t val, uint16_t* pSrcDst, int len, int scaleFactor);
Status tevsSubC_16s_Sfs(const int16_t* pSrc, int16_t val, int16_t* pDst, int len, int scaleFactor);
Status tevsSubC_16s_ISfs(int16_t val, int16_t* pSrcDst, int len, int scaleFactor);
Status tevsSubC_32s_Sfs(const int32_t* pSrc, int32_t val, int32_t* pDst, int len, int scaleFactor);
Status tevsSubC_32s_ISfs(int32_t val, int32_t* pSrcDst, int len, int scaleFactor);
Status tevsSubC_16sc_Sfs(const Complex16s* pSrc, Complex16s val, Complex16s* pDst, int len, int scaleFactor);
Status tevsSubC_16sc_ISfs(Complex16s val, Complex16s* pSrcDst, int len, int scaleFactor);
Status tevsSubC_32sc_Sfs(const Complex32s* pSrc, Complex32s val, Complex32s* pDst, int len, int scaleFactor);
Status tevsSubC_32sc_ISfs(Complex32s val, Complex32s* pSrcDst, int len, int scaleFactor);
Status tevsSubC_16s_I(int16_t val, int16_t* pSrcDst, int len);

Status tevsSubCRev_32f(const float* pSrc, float val, float* pDst, int len);
Status tevsSubCRev_32f_I(float val, float* pSrcDst, int len);
Status tevsSubCRev_64f(const double* pSrc, double val, double* pDst, int len);
Status tevsSubCRev_64f_I(double val, double* pSrcDst, int len);
Status tevsSubCRev_32fc(const Complex32f* pSrc, Complex32f val, Complex32f* pDst, int len);
Status tevsSubCRev_32fc_I(Complex32f val, Complex32f* pSrcDst, int len);
Status tevsSubCRev_64fc(const Complex64f* pSrc, Complex64f val, Complex64f* pDst, int len);
Status tevsSubCRev_64fc_I(Complex64f val, Complex64f* pSrcDst, int len);
Status tevsSubCRev_8u_Sfs(const uint8_t* pSrc, uint8_t val, uint8_t* pDst, int len, int scaleFactor);
Status tevsSubCRev_8u_ISfs(uint8_t val, uint8_t* pSrcDst, int len, int scaleFactor);
Status tevsSubCRev_16u_Sfs(const uint16_t* pSrc, uint16_t val, uint16_t* pDst, int len, int scaleFactor);
Status tevsSubCRev_16u_ISfs(uint16_t val, uint16_t* pSrcDst, int len, int scaleFactor);
Status tevsSubCRev_16s_Sfs(const int16_t* pSrc, int16_t val, int16_t* pDst, int len, int scaleFactor);
Status tevsSubCRev_16s_ISfs(int16_t val, int16_t* pSrcDst, int len, int scaleFactor);
Status tevsSubCRev_32s_Sfs(const int32_t* pSrc, int32_t val, int32_t* pDst, int len, int scaleFactor);
Status tevsSubCRev_32s_ISfs(int32_t val, int32_t* pSrcDst, int len, int scaleFactor);
Status tevsSubCRev_16sc_Sfs(const Complex16s* pSrc, Complex16s val, Complex16s* pDst, int len, int scaleFactor);
Status tevsSubCRev_16sc_ISfs(Complex16s val, Complex16s* pSrcDst, int len, int scaleFactor);
Status tevsSubCRev_32sc_Sfs(const Complex32s* pSrc, Complex32s val, Complex32s* pDst, int len, int scaleFactor);
Status tevsSubCRev_32sc_ISfs(Complex32s val, Complex32s* pSrcDst, int len, int scaleFactor);

Status tevsMulC_32f(const float* pSrc, float val, float* pDst, int len);
Status tevsMulC_32f_I(float val, float* pSrcDst, int len);
Status tevsMulC_64f(const double* pSrc, double val, double* pDst, int len);
Status tevsMulC_64f_I(double val, double* pSrcDst, int len);
Status tevsMulC_32fc(const Complex32f* pSrc, Complex32f val, Complex32f* pDst, int len);
Status tevsMulC_32fc_I(Complex32f val, Complex32f* pSrcDst, int len);
Status tevsMulC_64fc(const Complex64f* pSrc, Complex64f val, Complex64f* pDst, int len);
Status tevsMulC_64fc_I(Complex64f val, Complex64f* pSrcDst, int len);
Status tevsMulC_8u_Sfs(const uint8_t* pSrc, uint8_t val, uint8_t* pDst, int len, int scaleFactor);
Status tevsMulC_8u_ISfs(uint8_t val, uint8_t* pSrcDst, int len, int scaleFactor);
Status tevsMulC_16u_Sfs(const uint16_t* pSrc, uint16_t val, uint16_t* pDst, int len, int scaleFactor);
Status tevsMulC_16u_ISfs(uint16_t val, uint16_t* pSrcDst, int len, int scaleFactor);
Status tevsMulC_16s_Sfs(const int16_t* pSrc, int16_t val, int16_t* pDst, int len, int scaleFactor);
Status tevsMulC_16s_ISfs(int16_t val, int16_t* pSrcDst, int len, int scaleFactor);
Status tevsMulC_32s_Sfs(const int32_t* pSrc, int32_t val, int32_t* pDst, int len, int scaleFactor);
Status tevsMulC_32s_ISfs(int32_t val, int32_t* pSrcDst, int len, int scaleFactor);
Status tevsMulC_16sc_Sfs(const Complex16s* pSrc, Complex16s val, Complex16s* pDst, int len, int scaleFactor);
Status tevsMulC_16sc_ISfs(Complex16s val, Complex16s* pSrcDst, int len, int scaleFactor);
Status tevsMulC_32sc_Sfs(const Complex32s* pSrc, Complex32s val, Complex32s* pDst, int len, int scaleFactor);
Status tevsMulC_32sc_ISfs(Complex32s val, Complex32s* pSrcDst, int len, int scaleFactor);
Status tevsMulC_32f16s_Sfs(const float* pSrc, float val, int16_t* pDst, int len, int scaleFactor);
Status tevsMulC_16s_I(int16_t val, int16_t* pSrcDst, int len);
Status tevsMulC_Low_32f16s(const float* pSrc, float val, int16_t* pDst, int len);

Status tevsAddProductC_32f(const float* pSrc, float val, float* pSrcDst, int len);

/* ---- Div, DivC, DivCRev: quotients ----------------------------------------------------------------------------------
 *
 *     Div        pDst[n] = pSrc2[n] / pSrc1[n]          the first source is the divisor; in place pSrcDst[n] / pSrc[n]
 *     DivC       pDst[n] = pSrc[n] / val
 *     DivCRev    pDst[n] = val / pSrc[n]
 *
 *     complex    x / y = x conj(y) / |y|^2
 *
 * pSrc1, pSrc2, pSrc, pDst, pSrcDst    len >= 1 elements each; the destination may equal any source whose elements are
 *                                      at least as wide
 * scaleFactor                          _Sfs forms store the quotient * 2^-scaleFactor, to nearest, ties to even,
 *                                      saturated; any integer will do
 *
 * Integer quotients are rounded once, from the exact value. Below a scaleFactor of -32, Div_16sc_Sfs stores for each
 * part of x conj(y) that is not 0 the extreme of its sign. Float Div and DivCRev are correctly rounded. A part of a
 * complex Div is off by 6 * 2^-24 (64fc: 2^-50) of the sum of its two terms' magnitudes at most, and what leaves the
 * range on the way but not in the end does no harm. Float DivC multiplies by 1 / val, complex DivC by (val.re / m,
 * -val.im / m) with m = val.re^2 + val.im^2, all rounded in the type of the elements: the last bit may differ from a
 * division's.
 *
 * Where a divisor is zero, of either sign, and whatever the scale:
 *
 *     dividend     8u, 16u    16s, 32s          16sc    32f, 64f     32fc, 64fc
 *     > 0          maximum    maximum           0       +infinity    NaN
 *     < 0                     minimum           0       -infinity    NaN
 *     0            0          0                 0       NaN          NaN
 *     NaN                                               NaN          NaN         NaN is 0x7FC00000 or
 *                                                                                0x7FF8000000000000
 *
 * Returns StatusOk; WarnDivByZero if a divisor element was zero, with the whole destination written; or the first that
 * applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len < 1), StatusDivByZeroErr (DivC: val is
 * zero or NaN; of a complex float val, m is).
 */
Status tevsDiv_32f(const float* pSrc1, const float* pSrc2, float* pDst, int len);
Status tevsDiv_32f_I(const float* pSrc, float* pSrcDst, int len);
Status tevsDiv_64f(const double* pSrc1, const double* pSrc2, double* pDst, int len);
Status tevsDiv_64f_I(const double* pSrc, double* pSrcDst, int len);
Status tevsDiv_32fc(const Complex32f* pSrc1, const Complex32f* pSrc2, Complex32f* pDst, int len);
Status tevsDiv_32fc_I(const Complex32f* pSrc, Complex32f* pSrcDst, int len);
Status tevsDiv_64fc(const Complex64f* pSrc1, const Complex64f* pSrc2, Complex64f* pDst, int len);
Status tevsDiv_64fc_I(const Complex64f* pSrc, Complex64f* pSrcDst, int len);
Status tevsDiv_8u_Sfs(const uint8_t* pSrc1, const uint8_t* pSrc2, uint8_t* pDst, int len, int scaleFactor);
Status tevsDiv_8u_ISfs(const uint8_t* pSrc, uint8_t* pSrcDst, int len, int scaleFactor);
Status tevsDiv_16u_Sfs(const uint16_t* pSrc1, const uint16_t* pSrc2, uint16_t* pDst, int len, int scaleFactor);
Status tevsDiv_16u_ISfs(const uint16_t* pSrc, uint16_t* pSrcDst, int len, int scaleFactor);
Status tevsDiv_16s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int16_t* pDst, int len, int scaleFactor);
Status tevsDiv_16s_ISfs(const int16_t* pSrc, int16_t* pSrcDst, int len, int scaleFactor);
Status tevsDiv_32s_Sfs(const int32_t* pSrc1, const int32_t* pSrc2, int32_t* pDst, int len, int scaleFactor);
Status tevsDiv_32s_ISfs(const int32_t* pSrc, int32_t* pSrcDst, int len, int scaleFactor);
Status tevsDiv_16sc_Sfs(const Complex16s* pSrc1, const Complex16s* pSrc2, Complex16s* pDst, int len, int scaleFactor);
Status tevsDiv_16sc_ISfs(const Complex16s* pSrc, Complex16s* pSrcDst, int len, int scaleFactor);
Status tevsDiv_32s16s_Sfs(const int16_t* pSrc1, const int32_t* pSrc2, int16_t* pDst, int len, int scaleFactor);
Status tevsDiv_16s(const int16_t* pSrc1, const int16_t* pSrc2, int16_t* pDst, int len);
Status tevsDiv_16sc(const Complex16s* pSrc1, const Complex16s* pSrc2, Complex16s* pDst, int len);
Status tevsDiv_32s(const int32_t* pSrc1, const int32_t* pSrc2, int32_t* pDst, int len);
Status tevsDiv_32s16s(const int16_t* pSrc1, const int32_t* pSrc2, int16_t* pDst, int len);
Status tevsDiv_8u(const uint8_t* pSrc1, const uint8_t* pSrc2, uint8_t* pDst, int len);

Status tevsDivC_32f(const float* pSrc, float val, float* pDst, int len);
Status tevsDivC_32f_I(float val, float* pSrcDst, int len);
Status tevsDivC_64f(const double* pSrc, double val, double* pDst, int len);
Status tevsDivC_64f_I(double val, double* pSrcDst, int len);
Status tevsDivC_32fc(const Complex32f* pSrc, Complex32f val, Complex32f* pDst, int len);
Status tevsDivC_32fc_I(Complex32f val, Complex32f* pSrcDst, int len);
Status tevsDivC_64fc(const Complex64f* pSrc, Complex64f val, Complex64f* pDst, int len);
Status tevsDivC_64fc_I(Complex64f val, Complex64f* pSrcDst, int len);
Status tevsDivC_8u_Sfs(const uint8_t* pSrc, uint8_t val, uint8_t* pDst, int len, int scaleFactor);
Status tevsDivC_8u_ISfs(uint8_t val, uint8_t* pSrcDst, int len, int scaleFactor);
Status tevsDivC_16u_Sfs(const uint16_t* pSrc, uint16_t val, uint16_t* pDst, int len, int scaleFactor);
Status tevsDivC_16u_ISfs(uint16_t val, uint16_t* pSrcDst, int len, int scaleFactor);
Status tevsDivC_16s_Sfs(const int16_t* pSrc, int16_t val, int16_t* pDst, int len, int scaleFactor);
Status tevsDivC_16s_ISfs(int16_t val, int16_t* pSrcDst, int len, int scaleFactor);
Status tevsDivC_16sc_Sfs(const Complex16s* pSrc, Complex16s val, Complex16s* pDst, int len, int scaleFactor);
Status tevsDivC_16sc_ISfs(Complex16s val, Complex16s* pSrcDst, int len, int scaleFactor);
Status tevsDivC_8u(const uint8_t* pSrc, uint8_t val, uint8_t* pDst, int len);
Status tevsDivC_16s(const int16_t* pSrc, int16_t val, int16_t* pDst, int len);
Status tevsDivC_16sc(const Complex16s* pSrc, Complex16s val, Complex16s* pDst, int len);

Status tevsDivCRev_32f(const float* pSrc, float val, float* pDst, int len);
Status tevsDivCRev_32f_I(float val, float* pSrcDst, int len);
Status tevsDivCRev_16u(const uint16_t* pSrc, uint16_t val, uint16_t* pDst, int len);
Status tevsDivCRev_16u_I(uint16_t val, uint16_t* pSrcDst, int len);

/* ---- Abs: absolute value --------------------------------------------------------------------------------------------
 *
 *     pDst[n] = |pSrc[n]|
 *
 * pSrc, pDst, pSrcDst    len >= 1 elements each. The minimum of an integer type gives its maximum. Of a float the sign
 *                        bit is cleared, a NaN's too.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len <
 * 1).
 */
Status tevsAbs_32f(const float* pSrc, float* pDst, int len);
Status tevsAbs_32f_I(float* pSrcDst, int len);
Status tevsAbs_64f(const double* pSrc, double* pDst, int len);
Status tevsAbs_64f_I(double* pSrcDst, int len);
Status tevsAbs_16s(const int16_t* pSrc, int16_t* pDst, int len);
Status tevsAbs_16s_I(int16_t* pSrcDst, int len);
Status tevsAbs_32s(const int32_t* pSrc, int32_t* pDst, int len);
Status tevsAbs_32s_I(int32_t* pSrcDst, int len);

TEVS_END

#endif
