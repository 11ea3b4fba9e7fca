#ifndef TEVS_SPEECH_H
#define TEVS_SPEECH_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- PreEmphasis, DeEmphasis: high frequencies raised by a first-order difference, and the inverse ------------------
 *
 *     PreEmphasis    y[n] = x[n] - alpha * x[n-1]
 *     DeEmphasis     y[n] = x[n] + alpha * y[n-1]
 *
 * Speech falls off by about 6 dB an octave; a coder or recogniser levels its spectrum with alpha of 0.9 to 0.97, and a
 * decoder undoes it. L. R. Rabiner and R. W. Schafer, Digital Processing of Speech Signals, Prentice-Hall 1978, ch. 8.
 *
 * pSrc, pDst     len >= 1 samples each; equal pointers work in place, as the _I forms do; other overlaps do not work
 * alpha          any number. From |alpha| = 1 on DeEmphasis does not forget.
 * pMem           one number that carries on from block to block. PreEmphasis: the sample before pSrc[0], then the last
 *                sample of the block. DeEmphasis: the output before pDst[0], unrounded and unscaled, then the last
 *                such. 0 is silence.
 * scaleFactor    _Sfs forms: y * 2^-scaleFactor to nearest, ties to even, saturated; any integer. A NaN becomes 0.
 *
 * Accuracy       product and sum in double precision, each rounded, in this order; the result is rounded once to the
 *                type. DeEmphasis does not carry that last rounding on, and for |alpha| < 1 undoes PreEmphasis but for
 *                what the y between them lost: 32f by no more than 2^-24 max|y| / (1 - |alpha|) before the last
 *                rounding, 64f by no more than 2^-53 (max|y| + 3 max|x|) / (1 - |alpha|). Results are the same at every
 *                SIMD level and for any cut of a signal into blocks.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr, StatusBadSize (len < 1).
 */
Status tevsPreEmphasis_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int len, double alpha, double* pMem, int scaleFactor);
Status tevsPreEmphasis_16s_ISfs(int16_t* pSrcDst, int len, double alpha, double* pMem, int scaleFactor);
Status tevsPreEmphasis_32f(const float* pSrc, float* pDst, int len, double alpha, double* pMem);
Status tevsPreEmphasis_32f_I(float* pSrcDst, int len, double alpha, double* pMem);
Status tevsPreEmphasis_64f(const double* pSrc, double* pDst, int len, double alpha, double* pMem);
Status tevsPreEmphasis_64f_I(double* pSrcDst, int len, double alpha, double* pMem);

Status tevsDeEmphasis_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int len, double alpha, double* pMem, int scaleFactor);
Status tevsDeEmphasis_16s_ISfs(int16_t* pSrcDst, int len, double alpha, double* pMem, int scaleFactor);
Status tevsDeEmphasis_32f(const float* pSrc, float* pDst, int len, double alpha, double* pMem);
Status tevsDeEmphasis_32f_I(float* pSrcDst, int len, double alpha, double* pMem);
Status tevsDeEmphasis_64f(const double* pSrc, double* pDst, int len, double alpha, double* pMem);
Status tevsDeEmphasis_64f_I(double* pSrcDst, int len, double alpha, double* pMem);

/* ---- TrackMean, TrackPower: a level that follows the signal ---------------------------------------------------------
 *
 *     TrackMean      for every sample in turn   s = alpha * s + (1 - alpha) * x
 *     TrackPower     the same of |x|^2
 *
 * The level meters of voice activity detectors and gain controls. A time constant of tau samples is alpha = e^(-1/tau).
 *
 * pSrc           len >= 1 samples
 * pTrack         s before the first sample, then s after the last
 * alpha          any number; a level lies in [0, 1)
 *
 * Accuracy       for 0 <= alpha < 1 off by no more than min(len, 1/(1 - alpha)) * 2^-50 of the largest |s|, |x| or
 *                |x|^2. Blocks are summed with weights rather than one sample after the other, so that the last bits
 *                may differ between SIMD levels and between cuts of a signal.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr, StatusBadSize (len < 1).
 */
Status tevsTrackMean_16s(const int16_t* pSrc, int len, double* pTrack, double alpha);
Status tevsTrackMean_32f(const float* pSrc, int len, double* pTrack, double alpha);
Status tevsTrackMean_64f(const double* pSrc, int len, double* pTrack, double alpha);
Status tevsTrackPower_16s(const int16_t* pSrc, int len, double* pTrack, double alpha);
Status tevsTrackPower_32f(const float* pSrc, int len, double* pTrack, double alpha);
Status tevsTrackPower_64f(const double* pSrc, int len, double* pTrack, double alpha);
Status tevsTrackPower_32fc(const Complex32f* pSrc, int len, double* pTrack, double alpha);

/* ---- SumWindow: the sum over a window that slides -------------------------------------------------------------------
 *
 *     pDst[n] = sum over k = 0 .. maskSize-1 of  pSrc[n + k]         n = 0 .. len-1
 *
 * pSrc           len + maskSize - 1 elements: there is no edge to invent, and the blocks of a stream overlap by
 *                maskSize - 1
 * pDst           len >= 1 sums; in 32f and 64f it may equal pSrc
 * maskSize       >= 1. The time of a sum does not grow with it.
 *
 * Accuracy       integers: the exact sum, saturated. Floats are summed in double precision from both ends of blocks of
 *                maskSize elements (M. van Herk, Pattern Recognition Letters 13, 1992; J. Gil and M. Werman, IEEE
 *                Transactions on PAMI 15, 1993), never as a running difference: 32f is off by no more than 2^-24 |sum|
 *                + maskSize * 2^-52 * sum|x|, 64f by no more than maskSize * 2^-52 * sum|x|, both of that window alone
 *                while sum|x| is finite, however long the vector; an infinity or NaN reaches the windows that hold it
 *                and no other. The last bits of floats may differ between SIMD levels.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr, StatusBadSize (len < 1),
 * StatusMaskSize (maskSize < 1), StatusNoMemory (32f and 64f with maskSize > 256, which take memory for maskSize sums).
 */
Status tevsSumWindow_8u32s(const uint8_t* pSrc, int32_t* pDst, int len, int maskSize);
Status tevsSumWindow_16s32s(const int16_t* pSrc, int32_t* pDst, int len, int maskSize);
Status tevsSumWindow_32f(const float* pSrc, float* pDst, int len, int maskSize);
Status tevsSumWindow_64f(const double* pSrc, double* pDst, int len, int maskSize);

/* ---- Levinson: the prediction-error filter of a signal, from its auto-correlations ----------------------------------
 *
 *     e[n] = sum over k = 0 .. order of  a[k] * x[n-k]       a[0] = 1, the others so that the energy of e is least:
 *     sum over j = 0 .. order of  a[j] * r[|i-j|] = 0        i = 1 .. order
 *
 * by the recursion of N. Levinson (1947) and J. Durbin (1960), in double precision, from E = r[0]:
 *
 *     k[i] = -(r[i] + sum over j = 1 .. i-1 of  a[j] * r[i-j]) / E
 *     a[j] += k[i] * a[i-j] for j < i,    a[i] = k[i],    E *= 1 - k[i]^2
 *
 * pSrc           r[0] .. r[order], as AutoCorr gives them
 * pDst           a[0] .. a[order]
 * order          >= 1
 * pRefl          the reflection coefficients k[1] .. k[order], or null
 * pErr           the energy that is left, or null
 *
 * All vectors are distinct. Where r[0] or E is not above 0, or |k[i]| would reach 1 (NaN too), the recursion stops:
 * coefficients from there on are 0, and the energy is that of the filter delivered, 0 where r[0] is not above 0. So
 * 1/A(z) is stable before the rounding of 32f, and silence gives 1, 0, .. 0. As the taps of an IIR record, 1, 0, .. 0
 * over pDst synthesise. J. D. Markel and A. H. Gray, Linear Prediction of Speech, Springer 1976.
 *
 * Accuracy       the residue of the equations is no more than (order + 4)^2 * 2^-52 * r[0] * product of (1 + |k[i]|)
 *                (G. Cybenko, SIAM Journal on Scientific and Statistical Computing 1, 1980); 32f is rounded once, at
 *                the end. The last bits may differ between SIMD levels.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (pSrc, pDst), StatusBadSize (order <
 * 1), StatusNoMemory (32f of orders above 256).
 */
Status tevsLevinson_32f(const float* pSrc, float* pDst, int order, float* pRefl, float* pErr);
Status tevsLevinson_64f(const double* pSrc, double* pDst, int order, double* pRefl, double* pErr);

TEVS_END

#endif
