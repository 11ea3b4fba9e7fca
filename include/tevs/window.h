#ifndef TEVS_WINDOW_H
#define TEVS_WINDOW_H

#include "tevs/types.h"

/* What all windows share.
 *
 *     pDst[n] = pSrc[n] * w(n),  n = 0 .. len-1,  w(n) = w(len-1-n)
 *
 * The weights are those of the symmetric window of len samples; they are computed in the call, and nothing is kept.
 * Below, n runs over the first half: n < len / 2. The middle one of an odd number of samples is copied (in place: left
 * as it is), whatever the window: its weight is 1.
 *
 * Complex samples have both parts multiplied by the same weight. A destination may equal its source (the _I forms are
 * that call); other overlaps do not work.
 * 32f, 32fc          weight and product are rounded to single precision each
 * 64f, 64fc          weight and product in double precision
 * 16s, 16sc          the product of the sample and a weight in single precision, rounded to nearest, ties to even, and
 *                    saturated (a parameter of Blackman beyond -1.5 .. 0.5 makes weights above 1); a NaN, which only a
 *                    NaN or infinite parameter makes, gives 0
 *
 * Weights do not drift however long the window is: in double precision they are within 2^-48 of the formula's value,
 * relative to it, those of Bartlett within 2^-52, and in single precision they are that value rounded once more. Kaiser
 * has bounds of its own. Results are the same to the bit on every machine.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len
 * below the window's least), and what the windows name. No memory is taken; any number of threads may call.
 */

TEVS_BEGIN

/* ---- WinBartlett: triangle ------------------------------------------------------------------------------------------
 *
 *     w(n) = 2 n / (len-1),  len >= 3
 *
 * Of three samples, the first and the last become +0.
 */
Status tevsWinBartlett_16s(const int16_t* pSrc, int16_t* pDst, int len);
Status tevsWinBartlett_16s_I(int16_t* pSrcDst, int len);
Status tevsWinBartlett_16sc(const Complex16s* pSrc, Complex16s* pDst, int len);
Status tevsWinBartlett_16sc_I(Complex16s* pSrcDst, int len);
Status tevsWinBartlett_32f(const float* pSrc, float* pDst, int len);
Status tevsWinBartlett_32f_I(float* pSrcDst, int len);
Status tevsWinBartlett_32fc(const Complex32f* pSrc, Complex32f* pDst, int len);
Status tevsWinBartlett_32fc_I(Complex32f* pSrcDst, int len);
Status tevsWinBartlett_64f(const double* pSrc, double* pDst, int len);
Status tevsWinBartlett_64f_I(double* pSrcDst, int len);
Status tevsWinBartlett_64fc(const Complex64f* pSrc, Complex64f* pDst, int len);
Status tevsWinBartlett_64fc_I(Complex64f* pSrcDst, int len);

/* ---- WinHann: raised cosine -----------------------------------------------------------------------------------------
 *
 *     w(n) = (1 - cos(2 pi n / (len-1))) / 2,  len >= 3
 *
 * Of three samples, the first and the last become +0 (64f and 64fc: the sample times 0, which keeps its sign).
 */
Status tevsWinHann_16s(const int16_t* pSrc, int16_t* pDst, int len);
Status tevsWinHann_16s_I(int16_t* pSrcDst, int len);
Status tevsWinHann_16sc(const Complex16s* pSrc, Complex16s* pDst, int len);
Status tevsWinHann_16sc_I(Complex16s* pSrcDst, int len);
Status tevsWinHann_32f(const float* pSrc, float* pDst, int len);
Status tevsWinHann_32f_I(float* pSrcDst, int len);
Status tevsWinHann_32fc(const Complex32f* pSrc, Complex32f* pDst, int len);
Status tevsWinHann_32fc_I(Complex32f* pSrcDst, int len);
Status tevsWinHann_64f(const double* pSrc, double* pDst, int len);
Status tevsWinHann_64f_I(double* pSrcDst, int len);
Status tevsWinHann_64fc(const Complex64f* pSrc, Complex64f* pDst, int len);
Status tevsWinHann_64fc_I(Complex64f* pSrcDst, int len);

/* ---- WinHamming: raised cosine on a step ----------------------------------------------------------------------------
 *
 *     w(n) = 0.54 - 0.46 cos(2 pi n / (len-1)),  len >= 3
 */
Status tevsWinHamming_16s(const int16_t* pSrc, int16_t* pDst, int len);
Status tevsWinHamming_16s_I(int16_t* pSrcDst, int len);
Status tevsWinHamming_16sc(const Complex16s* pSrc, Complex16s* pDst, int len);
Status tevsWinHamming_16sc_I(Complex16s* pSrcDst, int len);
Status tevsWinHamming_32f(const float* pSrc, float* pDst, int len);
Status tevsWinHamming_32f_I(float* pSrcDst, int len);
Status tevsWinHamming_32fc(const Complex32f* pSrc, Complex32f* pDst, int len);
Status tevsWinHamming_32fc_I(Complex32f* pSrcDst, int len);
Status tevsWinHamming_64f(const double* pSrc, double* pDst, int len);
Status tevsWinHamming_64f_I(double* pSrcDst, int len);
Status tevsWinHamming_64fc(const Complex64f* pSrc, Complex64f* pDst, int len);
Status tevsWinHamming_64fc_I(Complex64f* pSrcDst, int len);

/* ---- WinBlackman: two cosines ---------------------------------------------------------------------------------------
 *
 *     w(n) = (alpha + 1) / 2 - cos(2 pi n / (len-1)) / 2 - alpha / 2 * cos(4 pi n / (len-1)),  len >= 3
 *
 * alpha       any number. WinBlackmanStd takes -0.16 (in single precision, 64f and 64fc in double), WinBlackmanOpt -1 /
 *             (2 cos(pi / (len-1)))^2 (rounded to single precision, 64f and 64fc not), len >= 4, and WinBlackmanQ15
 *             alphaQ15 / 32768
 * _ISfs       every product times 2^-scaleFactor before it is rounded, for any scaleFactor; the middle sample too,
 *             which is rounded half away from zero
 *
 * Of three samples, the first and the last become +0. The error of a weight is relative to 1 + |alpha|.
 *
 * WinBlackmanOpt returns StatusBadSize (len < 4) before it looks at a pointer.
 */
Status tevsWinBlackman_16s(const int16_t* pSrc, int16_t* pDst, int len, float alpha);
Status tevsWinBlackman_16s_I(int16_t* pSrcDst, int len, float alpha);
Status tevsWinBlackman_16sc(const Complex16s* pSrc, Complex16s* pDst, int len, float alpha);
Status tevsWinBlackman_16sc_I(Complex16s* pSrcDst, int len, float alpha);
Status tevsWinBlackman_32f(const float* pSrc, float* pDst, int len, float alpha);
Status tevsWinBlackman_32f_I(float* pSrcDst, int len, float alpha);
Status tevsWinBlackman_32fc(const Complex32f* pSrc, Complex32f* pDst, int len, float alpha);
Status tevsWinBlackman_32fc_I(Complex32f* pSrcDst, int len, float alpha);
Status tevsWinBlackman_64f(const double* pSrc, double* pDst, int len, double alpha);
Status tevsWinBlackman_64f_I(double* pSrcDst, int len, double alpha);
Status tevsWinBlackman_64fc(const Complex64f* pSrc, Complex64f* pDst, int len, double alpha);
Status tevsWinBlackman_64fc_I(Complex64f* pSrcDst, int len, double alpha);
Status tevsWinBlackmanStd_16s(const int16_t* pSrc, int16_t* pDst, int len);
Status tevsWinBlackmanStd_16s_I(int16_t* pSrcDst, int len);
Status tevsWinBlackmanStd_16sc(const Complex16s* pSrc, Complex16s* pDst, int len);
Status tevsWinBlackmanStd_16sc_I(Complex16s* pSrcDst, int len);
Status tevsWinBlackmanStd_32f(const float* pSrc, float* pDst, int len);
Status tevsWinBlackmanStd_32f_I(float* pSrcDst, int len);
Status tevsWinBlackmanStd_32fc(const Complex32f* pSrc, Complex32f* pDst, int len);
Status tevsWinBlackmanStd_32fc_I(Complex32f* pSrcDst, int len);
Status tevsWinBlackmanStd_64f(const double* pSrc, double* pDst, int len);
Status tevsWinBlackmanStd_64f_I(double* pSrcDst, int len);
Status tevsWinBlackmanStd_64fc(const Complex64f* pSrc, Complex64f* pDst, int len);
Status tevsWinBlackmanStd_64fc_I(Complex64f* pSrcDst, int len);
Status tevsWinBlackmanOpt_16s(const int16_t* pSrc, int16_t* pDst, int len);
Status tevsWinBlackmanOpt_16s_I(int16_t* pSrcDst, int len);
Status tevsWinBlackmanOpt_16sc(const Complex16s* pSrc, Complex16s* pDst, int len);
Status tevsWinBlackmanOpt_16sc_I(Complex16s* pSrcDst, int len);
Status tevsWinBlackmanOpt_32f(const float* pSrc, float* pDst, int len);
Status tevsWinBlackmanOpt_32f_I(float* pSrcDst, int len);
Status tevsWinBlackmanOpt_32fc(const Complex32f* pSrc, Complex32f* pDst, int len);
Status tevsWinBlackmanOpt_32fc_I(Complex32f* pSrcDst, int len);
Status tevsWinBlackmanOpt_64f(const double* pSrc, double* pDst, int len);
Status tevsWinBlackmanOpt_64f_I(double* pSrcDst, int len);
Status tevsWinBlackmanOpt_64fc(const Complex64f* pSrc, Complex64f* pDst, int len);
Status tevsWinBlackmanOpt_64fc_I(Complex64f* pSrcDst, int len);
Status tevsWinBlackmanQ15_16s(const int16_t* pSrc, int16_t* pDst, int len, int alphaQ15);
Status tevsWinBlackmanQ15_16s_I(int16_t* pSrcDst, int len, int alphaQ15);
Status tevsWinBlackmanQ15_16sc(const Complex16s* pSrc, Complex16s* pDst, int len, int alphaQ15);
Status tevsWinBlackmanQ15_16sc_I(Complex16s* pSrcDst, int len, int alphaQ15);
Status tevsWinBlackmanQ15_16s_ISfs(int16_t* pSrcDst, int len, int alphaQ15, int scaleFactor);

/* ---- WinKaiser ------------------------------------------------------------------------------------------------------
 *
 *     w(n) = I0(alpha sqrt(n (len-1-n))) / I0(alpha (len-1) / 2),  len >= 1
 *
 * with I0 the modified Bessel function of order 0. alpha stands for 2 beta / (len-1), where beta is the parameter that
 * filter design knows; its sign has no effect. WinKaiserQ15 takes alphaQ15 / 32768.
 *
 * I0 comes from polynomials of limited accuracy (Abramowitz and Stegun 9.8.1 and 9.8.2, and a fit of its own for 64f
 * and 64fc): weights are within 2e-4 of the formula in single precision and 16 bits, within 3e-5 in double precision.
 *
 * Returns also StatusHugeWindow: |alpha| (len-1) / 2 is above 38 (32f, 32fc) or 308 (the others). NaN is not; its
 * weights are NaN.
 */
Status tevsWinKaiser_16s(const int16_t* pSrc, int16_t* pDst, int len, float alpha);
Status tevsWinKaiser_16s_I(int16_t* pSrcDst, int len, float alpha);
Status tevsWinKaiser_16sc(const Complex16s* pSrc, Complex16s* pDst, int len, float alpha);
Status tevsWinKaiser_16sc_I(Complex16s* pSrcDst, int len, float alpha);
Status tevsWinKaiser_32f(const float* pSrc, float* pDst, int len, float alpha);
Status tevsWinKaiser_32f_I(float* pSrcDst, int len, float alpha);
Status tevsWinKaiser_32fc(const Complex32f* pSrc, Complex32f* pDst, int len, float alpha);
Status tevsWinKaiser_32fc_I(Complex32f* pSrcDst, int len, float alpha);
Status tevsWinKaiser_64f(const double* pSrc, double* pDst, int len, float alpha);
Status tevsWinKaiser_64f_I(double* pSrcDst, int len, float alpha);
Status tevsWinKaiser_64fc(const Complex64f* pSrc, Complex64f* pDst, int len, float alpha);
Status tevsWinKaiser_64fc_I(Complex64f* pSrcDst, int len, float alpha);
Status tevsWinKaiserQ15_16s(const int16_t* pSrc, int16_t* pDst, int len, int alphaQ15);
Status tevsWinKaiserQ15_16s_I(int16_t* pSrcDst, int len, int alphaQ15);
Status tevsWinKaiserQ15_16sc(const Complex16s* pSrc, Complex16s* pDst, int len, int alphaQ15);
Status tevsWinKaiserQ15_16sc_I(Complex16s* pSrcDst, int len, int alphaQ15);

TEVS_END

#endif
