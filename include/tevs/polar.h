#ifndef TEVS_POLAR_H
#define TEVS_POLAR_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- Arctan: arctangent ---------------------------------------------------------------------------------------------
 *
 *     pDst[n] = atan(pSrc[n]), in -pi/2 .. pi/2 radians
 *
 * pSrc, pDst    len >= 1 elements each; equal pointers work. Off by 1.5 units in the last place at most, in double
 *               precision by 0.6. -0 gives -0, an infinity +-pi/2, NaN gives NaN.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len <
 * 1).
 */
Status tevsArctan_32f(const float* pSrc, float* pDst, int len);
Status tevsArctan_32f_I(float* pSrcDst, int len);
Status tevsArctan_64f(const double* pSrc, double* pDst, int len);
Status tevsArctan_64f_I(double* pSrcDst, int len);

/* ---- Magnitude, Phase, PowerSpectr: of complex samples, or of their parts in two vectors ----------------------------
 *
 *     Magnitude      pDst[n] = sqrt(re^2 + im^2)
 *     Phase          pDst[n] = atan2(im, re), in -pi .. pi radians: positive where im > 0, 0 along the positive real
 *                    axis, pi along the negative one
 *     PowerSpectr    pDst[n] = re^2 + im^2
 *
 * pSrc             re = pSrc[n].re, im = pSrc[n].im
 * pSrcRe, pSrcIm   re = pSrcRe[n], im = pSrcIm[n]
 * pDst             len >= 1 elements, as the sources have; it may equal a source whose elements are as wide
 * scaleFactor      _Sfs forms: stores the result times 2^-scaleFactor, to nearest, ties to even, saturated, for any
 *                  scaleFactor. The Phase of integers is in radians as well: scaleFactor -13 stores it in units of
 *                  2^-13, which just holds pi in 16 bits.
 *
 * Magnitude is off by 1.23 units in the last place at most, over the whole range: it overflows or underflows only where
 * the result does. An infinite part gives infinity, whatever the other one is; NaN beside a finite part gives NaN. Phase
 * is off by 2 units, in double precision by 0.65, and follows C's atan2: (+0, +-0) gives +-0, (-0, +-0) gives +-pi,
 * infinities give multiples of pi/4, NaN gives NaN. PowerSpectr rounds both squares and their sum, 1.25 units off at
 * most.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len <
 * 1).
 */
Status tevsMagnitude_32fc(const Complex32f* pSrc, float* pDst, int len);
Status tevsMagnitude_64fc(const Complex64f* pSrc, double* pDst, int len);
Status tevsMagnitude_16sc_Sfs(const Complex16s* pSrc, int16_t* pDst, int len, int scaleFactor);
Status tevsMagnitude_16sc32f(const Complex16s* pSrc, float* pDst, int len);
Status tevsMagnitude_32f(const float* pSrcRe, const float* pSrcIm, float* pDst, int len);
Status tevsMagnitude_64f(const double* pSrcRe, const double* pSrcIm, double* pDst, int len);
Status tevsMagnitude_16s_Sfs(const int16_t* pSrcRe, const int16_t* pSrcIm, int16_t* pDst, int len, int scaleFactor);
Status tevsMagnitude_16s32f(const int16_t* pSrcRe, const int16_t* pSrcIm, float* pDst, int len);

Status tevsPhase_32fc(const Complex32f* pSrc, float* pDst, int len);
Status tevsPhase_64fc(const Complex64f* pSrc, double* pDst, int len);
Status tevsPhase_16sc_Sfs(const Complex16s* pSrc, int16_t* pDst, int len, int scaleFactor);
Status tevsPhase_32sc_Sfs(const Complex32s* pSrc, int32_t* pDst, int len, int scaleFactor);
Status tevsPhase_16sc32f(const Complex16s* pSrc, float* pDst, int len);
Status tevsPhase_32f(const float* pSrcRe, const float* pSrcIm, float* pDst, int len);
Status tevsPhase_64f(const double* pSrcRe, const double* pSrcIm, double* pDst, int len);
Status tevsPhase_16s_Sfs(const int16_t* pSrcRe, const int16_t* pSrcIm, int16_t* pDst, int len, int scaleFactor);
Status tevsPhase_16s32f(const int16_t* pSrcRe, const int16_t* pSrcIm, float* pDst, int len);

Status tevsPowerSpectr_32fc(const Complex32f* pSrc, float* pDst, int len);
Status tevsPowerSpectr_64fc(const Complex64f* pSrc, double* pDst, int len);
Status tevsPowerSpectr_16sc_Sfs(const Complex16s* pSrc, int16_t* pDst, int len, int scaleFactor);
Status tevsPowerSpectr_16sc32f(const Complex16s* pSrc, float* pDst, int len);
Status tevsPowerSpectr_32f(const float* pSrcRe, const float* pSrcIm, float* pDst, int len);
Status tevsPowerSpectr_64f(const double* pSrcRe, const double* pSrcIm, double* pDst, int len);
Status tevsPowerSpectr_16s_Sfs(const int16_t* pSrcRe, const int16_t* pSrcIm, int16_t* pDst, int len, int scaleFactor);
Status tevsPowerSpectr_16s32f(const int16_t* pSrcRe, const int16_t* pSrcIm, float* pDst, int len);

/* ---- CartToPolar, PolarToCart: polar form and back ------------------------------------------------------------------
 *
 *     CartToPolar    pDstMagn[n] = Magnitude, pDstPhase[n] = Phase, as above and equal to them to the bit
 *     PolarToCart    re = magn * cos(phase), im = magn * sin(phase) of magn = pSrcMagn[n], phase = pSrcPhase[n] in
 *                    radians
 *
 * Sources and destinations hold len >= 1 elements each; a destination may equal a source whose elements are as wide.
 * scaleFactor   _Sfs forms: both results times 2^-scaleFactor, to nearest, ties to even, saturated. Integer phases are
 *               whole radians; 32sc is stored unscaled.
 *
 * PolarToCart is off by 2.5 units in the last place at most, for every finite phase however large. A negative magnitude is a half turn; an infinite one gives infinities, or NaN for a part that is 0. An
 * infinite phase, or NaN, gives NaN.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len <
 * 1).
 */
Status tevsCartToPolar_32fc(const Complex32f* pSrc, float* pDstMagn, float* pDstPhase, int len);
Status tevsCartToPolar_64fc(const Complex64f* pSrc, double* pDstMagn, double* pDstPhase, int len);
Status tevsCartToPolar_16sc_Sfs(const Complex16s* pSrc, int16_t* pDstMagn, int16_t* pDstPhase, int len, int scaleFactor);
Status tevsCartToPolar_32f(const float* pSrcRe, const float* pSrcIm, float* pDstMagn, float* pDstPhase, int len);
Status tevsCartToPolar_64f(const double* pSrcRe, const double* pSrcIm, double* pDstMagn, double* pDstPhase, int len);

Status tevsPolarToCart_32fc(const float* pSrcMagn, const float* pSrcPhase, Complex32f* pDst, int len);
Status tevsPolarToCart_64fc(const double* pSrcMagn, const double* pSrcPhase, Complex64f* pDst, int len);
Status tevsPolarToCart_16sc_Sfs(const int16_t* pSrcMagn, const int16_t* pSrcPhase, Complex16s* pDst, int len, int scaleFactor);
Status tevsPolarToCart_32sc(const int32_t* pSrcMagn, const int32_t* pSrcPhase, Complex32s* pDst, int len);
Status tevsPolarToCart_32f(const float* pSrcMagn, const float* pSrcPhase, float* pDstRe, float* pDstIm, int len);
Status tevsPolarToCart_64f(const double* pSrcMagn, const double* pSrcPhase, double* pDstRe, double* pDstIm, int len);

TEVS_END

#endif
