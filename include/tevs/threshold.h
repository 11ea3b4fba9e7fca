#ifndef TEVS_THRESHOLD_H
#define TEVS_THRESHOLD_H

#include "tevs/types.h"

TEVS_BEGIN

/* Comparison codes: relOp of tevsThreshold. */
enum { CmpLess = 0, CmpLessOrEqual = 1, CmpEqual = 2, CmpGreaterOrEqual = 3, CmpGreater = 4 };

/* ---- Threshold: elements below or above a level replaced ------------------------------------------------------------
 *
 *     Threshold_LT           x < level  gives level                      every other element stays as it is
 *     Threshold_GT           x > level  gives level
 *     Threshold              as GT if relOp is CmpGreater, as LT for any other relOp
 *     Threshold_LTVal        x < level  gives value
 *     Threshold_GTVal        x > level  gives value
 *     Threshold_LTValGTVal   x < levelLT  gives valueLT,  x > levelGT  gives valueGT
 *     Threshold_LTAbs        |x| < level  gives level with the sign of x
 *     Threshold_GTAbs        |x| > level  gives level with the sign of x
 *     Threshold_LTInv        1/x,  and where |x| < level  1/level with the sign of x
 *
 * Complex elements are compared by magnitude: re^2 + im^2 with level^2, the squares of 16-bit and single-precision
 * parts without rounding error. What is limited keeps its phase and gets the magnitude of the level, x * level / |x|; a
 * zero, which has no phase, becomes (level, 0). Level 0 is decided without magnitudes: GT fills the destination with
 * zeros, LT copies. LTInv gives conj(x) / |x|^2, and below the level conj(x) / (|x| level), of a zero (1/level, 0).
 * Neither squares nor quotients overflow or vanish between; parts of results are off by at most 3 units in the last
 * place of the larger part (16sc: rounded to the nearest integer). Of an infinite element only the direction of its
 * infinite parts counts.
 *
 * Signs of zero   LT and GT replace a zero by a level of zero, whatever the two signs. Abs forms and LTInv go by the
 *                 sign bit of floats, so that -0.0 gives -level; integers below 0 are negative.
 * NaN elements    LT and GT of reals, and GTAbs, replace them by level, GTAbs with their sign; level 0 of complex
 *                 elements as said; all other forms keep them, and LTInv too.
 * -2^15, -2^31    magnitudes count as 2^15 and 2^31
 * pSrc, pDst      len >= 1 elements each; equal pointers work in place, as the _I forms do
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len <
 * 1), then, NaN levels included,
 *
 *     StatusThresholdNegLevel   complex elements and LTInv: level is not >= 0
 *     StatusThresholdErr        Abs forms: level is not >= 0; LTValGTVal: levelGT is not >= levelLT
 *
 * LTInv returns WarnInvZero, with everything written, if a part of a result is infinite: of a zero at level 0, or where
 * 1/x or 1/level is beyond the range.
 */
Status tevsThreshold_16s(const int16_t* pSrc, int16_t* pDst, int len, int16_t level, int relOp);
Status tevsThreshold_16s_I(int16_t* pSrcDst, int len, int16_t level, int relOp);
Status tevsThreshold_16sc(const Complex16s* pSrc, Complex16s* pDst, int len, int16_t level, int relOp);
Status tevsThreshold_16sc_I(Complex16s* pSrcDst, int len, int16_t level, int relOp);
Status tevsThreshold_32f(const float* pSrc, float* pDst, int len, float level, int relOp);
Status tevsThreshold_32f_I(float* pSrcDst, int len, float level, int relOp);
Status tevsThreshold_32fc(const Complex32f* pSrc, Complex32f* pDst, int len, float level, int relOp);
Status tevsThreshold_32fc_I(Complex32f* pSrcDst, int len, float level, int relOp);
Status tevsThreshold_64f(const double* pSrc, double* pDst, int len, double level, int relOp);
Status tevsThreshold_64f_I(double* pSrcDst, int len, double level, int relOp);
Status tevsThreshold_64fc(const Complex64f* pSrc, Complex64f* pDst, int len, double level, int relOp);
Status tevsThreshold_64fc_I(Complex64f* pSrcDst, int len, double level, int relOp);

Status tevsThreshold_LT_16s(const int16_t* pSrc, int16_t* pDst, int len, int16_t level);
Status tevsThreshold_LT_16s_I(int16_t* pSrcDst, int len, int16_t level);
Status tevsThreshold_LT_16sc(const Complex16s* pSrc, Complex16s* pDst, int len, int16_t level);
Status tevsThreshold_LT_16sc_I(Complex16s* pSrcDst, int len, int16_t level);
Status tevsThreshold_LT_32f(const float* pSrc, float* pDst, int len, float level);
Status tevsThreshold_LT_32f_I(float* pSrcDst, int len, float level);
Status tevsThreshold_LT_32fc(const Complex32f* pSrc, Complex32f* pDst, int len, float level);
Status tevsThreshold_LT_32fc_I(Complex32f* pSrcDst, int len, float level);
Status tevsThreshold_LT_64f(const double* pSrc, double* pDst, int len, double level);
Status tevsThreshold_LT_64f_I(double* pSrcDst, int len, double level);
Status tevsThreshold_LT_64fc(const Complex64f* pSrc, Complex64f* pDst, int len, double level);
Status tevsThreshold_LT_64fc_I(Complex64f* pSrcDst, int len, double level);
Status tevsThreshold_LT_32s(const int32_t* pSrc, int32_t* pDst, int len, int32_t level);
Status tevsThreshold_LT_32s_I(int32_t* pSrcDst, int len, int32_t level);

Status tevsThreshold_GT_16s(const int16_t* pSrc, int16_t* pDst, int len, int16_t level);
Status tevsThreshold_GT_16s_I(int16_t* pSrcDst, int len, int16_t level);
Status tevsThreshold_GT_16sc(const Complex16s* pSrc, Complex16s* pDst, int len, int16_t level);
Status tevsThreshold_GT_16sc_I(Complex16s* pSrcDst, int len, int16_t level);
Status tevsThreshold_GT_32f(const float* pSrc, float* pDst, int len, float level);
Status tevsThreshold_GT_32f_I(float* pSrcDst, int len, float level);
Status tevsThreshold_GT_32fc(const Complex32f* pSrc, Complex32f* pDst, int len, float level);
Status tevsThreshold_GT_32fc_I(Complex32f* pSrcDst, int len, float level);
Status tevsThreshold_GT_64f(const double* pSrc, double* pDst, int len, double level);
Status tevsThreshold_GT_64f_I(double* pSrcDst, int len, double level);
Status tevsThreshold_GT_64fc(const Complex64f* pSrc, Complex64f* pDst, int len, double level);
Status tevsThreshold_GT_64fc_I(Complex64f* pSrcDst, int len, double level);
Status tevsThreshold_GT_32s(const int32_t* pSrc, int32_t* pDst, int len, int32_t level);
Status tevsThreshold_GT_32s_I(int32_t* pSrcDst, int len, int32_t level);

Status tevsThreshold_LTVal_16s(const int16_t* pSrc, int16_t* pDst, int len, int16_t level, int16_t value);
Status tevsThreshold_LTVal_16s_I(int16_t* pSrcDst, int len, int16_t level, int16_t value);
Status tevsThreshold_LTVal_16sc(const Complex16s* pSrc, Complex16s* pDst, int len, int16_t level, Complex16s value);
Status tevsThreshold_LTVal_16sc_I(Complex16s* pSrcDst, int len, int16_t level, Complex16s value);
Status tevsThreshold_LTVal_32f(const float* pSrc, float* pDst, int len, float level, float value);
Status tevsThreshold_LTVal_32f_I(float* pSrcDst, int len, float level, float value);
Status tevsThreshold_LTVal_32fc(const Complex32f* pSrc, Complex32f* pDst, int len, float level, Complex32f value);
Status tevsThreshold_LTVal_32fc_I(Complex32f* pSrcDst, int len, float level, Complex32f value);
Status tevsThreshold_LTVal_64f(const double* pSrc, double* pDst, int len, double level, double value);
Status tevsThreshold_LTVal_64f_I(double* pSrcDst, int len, double level, double value);
Status tevsThreshold_LTVal_64fc(const Complex64f* pSrc, Complex64f* pDst, int len, double level, Complex64f value);
Status tevsThreshold_LTVal_64fc_I(Complex64f* pSrcDst, int len, double level, Complex64f value);

Status tevsThreshold_GTVal_16s(const int16_t* pSrc, int16_t* pDst, int len, int16_t level, int16_t value);
Status tevsThreshold_GTVal_16s_I(int16_t* pSrcDst, int len, int16_t level, int16_t value);
Status tevsThreshold_GTVal_16sc(const Complex16s* pSrc, Complex16s* pDst, int len, int16_t level, Complex16s value);
Status tevsThreshold_GTVal_16sc_I(Complex16s* pSrcDst, int len, int16_t level, Complex16s value);
Status tevsThreshold_GTVal_32f(const float* pSrc, float* pDst, int len, float level, float value);
Status tevsThreshold_GTVal_32f_I(float* pSrcDst, int len, float level, float value);
Status tevsThreshold_GTVal_32fc(const Complex32f* pSrc, Complex32f* pDst, int len, float level, Complex32f value);
Status tevsThreshold_GTVal_32fc_I(Complex32f* pSrcDst, int len, float level, Complex32f value);
Status tevsThreshold_GTVal_64f(const double* pSrc, double* pDst, int len, double level, double value);
Status tevsThreshold_GTVal_64f_I(double* pSrcDst, int len, double level, double value);
Status tevsThreshold_GTVal_64fc(const Complex64f* pSrc, Complex64f* pDst, int len, double level, Complex64f value);
Status tevsThreshold_GTVal_64fc_I(Complex64f* pSrcDst, int len, double level, Complex64f value);

Status tevsThreshold_LTValGTVal_16s(const int16_t* pSrc, int16_t* pDst, int len, int16_t levelLT, int16_t valueLT, int16_t levelGT, int16_t valueGT);
Status tevsThreshold_LTValGTVal_16s_I(int16_t* pSrcDst, int len, int16_t levelLT, int16_t valueLT, int16_t levelGT, int16_t valueGT);
Status tevsThreshold_LTValGTVal_32f(const float* pSrc, float* pDst, int len, float levelLT, float valueLT, float levelGT, float valueGT);
Status tevsThreshold_LTValGTVal_32f_I(float* pSrcDst, int len, float levelLT, float valueLT, float levelGT, float valueGT);
Status tevsThreshold_LTValGTVal_64f(const double* pSrc, double* pDst, int len, double levelLT, double valueLT, double levelGT, double valueGT);
Status tevsThreshold_LTValGTVal_64f_I(double* pSrcDst, int len, double levelLT, double valueLT, double levelGT, double valueGT);
Status tevsThreshold_LTValGTVal_32s(const int32_t* pSrc, int32_t* pDst, int len, int32_t levelLT, int32_t valueLT, int32_t levelGT, int32_t valueGT);
Status tevsThreshold_LTValGTVal_32s_I(int32_t* pSrcDst, int len, int32_t levelLT, int32_t valueLT, int32_t levelGT, int32_t valueGT);

Status tevsThreshold_LTAbs_16s(const int16_t* pSrc, int16_t* pDst, int len, int16_t level);
Status tevsThreshold_LTAbs_16s_I(int16_t* pSrcDst, int len, int16_t level);
Status tevsThreshold_LTAbs_32f(const float* pSrc, float* pDst, int len, float level);
Status tevsThreshold_LTAbs_32f_I(float* pSrcDst, int len, float level);
Status tevsThreshold_LTAbs_64f(const double* pSrc, double* pDst, int len, double level);
Status tevsThreshold_LTAbs_64f_I(double* pSrcDst, int len, double level);
Status tevsThreshold_LTAbs_32s(const int32_t* pSrc, int32_t* pDst, int len, int32_t level);
Status tevsThreshold_LTAbs_32s_I(int32_t* pSrcDst, int len, int32_t level);

Status tevsThreshold_GTAbs_16s(const int16_t* pSrc, int16_t* pDst, int len, int16_t level);
Status tevsThreshold_GTAbs_16s_I(int16_t* pSrcDst, int len, int16_t level);
Status tevsThreshold_GTAbs_32f(const float* pSrc, float* pDst, int len, float level);
Status tevsThreshold_GTAbs_32f_I(float* pSrcDst, int len, float level);
Status tevsThreshold_GTAbs_64f(const double* pSrc, double* pDst, int len, double level);
Status tevsThreshold_GTAbs_64f_I(double* pSrcDst, int len, double level);
Status tevsThreshold_GTAbs_32s(const int32_t* pSrc, int32_t* pDst, int len, int32_t level);
Status tevsThreshold_GTAbs_32s_I(int32_t* pSrcDst, int len, int32_t level);

Status tevsThreshold_LTInv_32f(const float* pSrc, float* pDst, int len, float level);
Status tevsThreshold_LTInv_32f_I(float* pSrcDst, int len, float level);
Status tevsThreshold_LTInv_32fc(const Complex32f* pSrc, Complex32f* pDst, int len, float level);
Status tevsThreshold_LTInv_32fc_I(Complex32f* pSrcDst, int len, float level);
Status tevsThreshold_LTInv_64f(const double* pSrc, double* pDst, int len, double level);
Status tevsThreshold_LTInv_64f_I(double* pSrcDst, int len, double level);
Status tevsThreshold_LTInv_64fc(const Complex64f* pSrc, Complex64f* pDst, int len, double level);
Status tevsThreshold_LTInv_64fc_I(Complex64f* pSrcDst, int len, double level);

TEVS_END

#endif
