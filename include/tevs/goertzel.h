#ifndef TEVS_GOERTZEL_H
#define TEVS_GOERTZEL_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- Goertz: the spectrum of a block at one frequency ---------------------------------------------------------------
 *
 *     y = e^(j omega len) * sum over n = 0 .. len-1 of  x[n] * e^(-j omega n)         omega = 2 pi rFreq
 *
 * which is what the Goertzel recurrence s[n] = x[n] + 2 cos(omega) s[n-1] - s[n-2] ends in, y = e^(j omega) s[len-1] -
 * s[len-2]; for rFreq = k/len it is bin k of the DFT. G. Goertzel, An Algorithm for the Evaluation of Finite
 * Trigonometric Series, American Mathematical Monthly 65 (1958).
 *
 * GoertzTwo     the same at two frequencies: pResult[0] at pRFreq[0] and pResult[1] at pRFreq[1], each to the bit as
 *               Goertz gives it
 * pSrc          len >= 1 samples; any length is served, and costs no accuracy
 * pResult       one complex value for each frequency; it may lie anywhere, in the source too
 * rFreq         of the sampling rate, in [0, 1). Q15 forms: rFreqQ15 / 32768
 * scaleFactor   _Sfs forms: y * 2^-scaleFactor, of y rounded to single precision, to nearest, ties to even, saturated;
 *               any integer
 *
 * Accuracy      the 64fc forms work in double precision, the others in single and, between blocks, double precision.
 *               Off by no more than 2^-18, of 64fc 2^-46, of the sum of the samples' magnitudes, while that sum is
 *               within the type's range; samples of like size come to an eighth of that at most. Results are the same
 *               at every SIMD level.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len <
 * 1), StatusRelFreq (a frequency that is not in [0, 1), NaN too). Q15 forms look at the frequencies first:
 * StatusRelFreq comes before all others, but for a null pRFreqQ15.
 */
Status tevsGoertz_32f(const float* pSrc, int len, Complex32f* pResult, float rFreq);
Status tevsGoertz_32fc(const Complex32f* pSrc, int len, Complex32f* pResult, float rFreq);
Status tevsGoertz_64fc(const Complex64f* pSrc, int len, Complex64f* pResult, double rFreq);
Status tevsGoertz_16s_Sfs(const int16_t* pSrc, int len, Complex16s* pResult, float rFreq, int scaleFactor);
Status tevsGoertz_16sc_Sfs(const Complex16s* pSrc, int len, Complex16s* pResult, float rFreq, int scaleFactor);
Status tevsGoertzQ15_16sc_Sfs(const Complex16s* pSrc, int len, Complex16s* pResult, int16_t rFreqQ15, int scaleFactor);

Status tevsGoertzTwo_32fc(const Complex32f* pSrc, int len, Complex32f* pResult, const float* pRFreq);
Status tevsGoertzTwo_64fc(const Complex64f* pSrc, int len, Complex64f* pResult, const double* pRFreq);
Status tevsGoertzTwo_16sc_Sfs(const Complex16s* pSrc, int len, Complex16s* pResult, const float* pRFreq, int scaleFactor);
Status tevsGoertzTwoQ15_16sc_Sfs(const Complex16s* pSrc, int len, Complex16s* pResult, const int16_t* pRFreqQ15, int scaleFactor);

TEVS_END

#endif
