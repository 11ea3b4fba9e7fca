#ifndef TEVS_DESIGN_H
#define TEVS_DESIGN_H

#include "tevs/types.h"

/* Taps from edges and ripples, for FIR filters (tevs/fir.h) and recursive ones (tevs/iir.h): give them to the filters
 * with double taps as they are (FIR64f_32f, IIR64f_32f, ..), or convert them once.
 *
 * Frequencies are in cycles per sample, ripples and attenuations in dB. Taps are computed in extended precision and
 * rounded to double at the end; they follow no rounding mode. Nothing is kept, no memory is taken, any number of
 * threads may call. Returns StatusOk, or the first that applies, with nothing written.
 *
 * Literature   A. V. Oppenheim and R. W. Schafer, Discrete-Time Signal Processing, ch. 7; T. W. Parks and C. S. Burrus,
 *              Digital Filter Design (1987); J. F. Kaiser, Nonrecursive Digital Filter Design Using the I0-sinh Window
 *              Function (1974); J. G. Proakis, Digital Communications (raised cosine).
 */

TEVS_BEGIN

/* The windows of FIRGen. Any other value counts as the first. */
enum { TaperNone = 0, TaperBartlett = 1, TaperHann = 2, TaperHamming = 3, TaperBlackman = 4 };

/* ---- FIRGen: windowed linear-phase taps -----------------------------------------------------------------------------
 *
 * With t = n - (tapsLen-1)/2 and lp(f) = sin(2 pi f t) / (pi t), 2f at t = 0:
 *
 *                  ideal response                        gain 1 at
 *     Lowpass      lp(rFreq)                             0
 *     Highpass     delta(t) - lp(rFreq)                  1/2
 *     Bandpass     lp(rFreq2) - lp(rFreq1)               (rFreq1 + rFreq2) / 2
 *     Bandstop     delta(t) - lp(rFreq2) + lp(rFreq1)    0
 *
 * tapered by WinBartlett, WinHann, WinHamming or WinBlackmanOpt (TaperBlackman), or not at all with TaperNone or fewer
 * than 3 taps (Blackman 5, since of 4 it leaves none), then divided by its gain at the frequency of the table. For any
 * other window, take TaperNone, that window in place, and divide by the gain that FIRResponse finds.
 *
 * pTaps[n] equals pTaps[tapsLen-1-n] to the bit. Without a taper each tap is within 2^-50 of the formula, relative to
 * the largest; the tapers add what tevs/window.h says. The gain where it is 1 is within tapsLen 2^-52. The bounds hold
 * where the magnitudes of the taps before the division add up to at most 4 times the gain, and grow by that ratio; a
 * gain of 0 gives infinities.
 *
 * Statuses: StatusNullPtr; StatusBadSize (tapsLen < 1, of Highpass and Bandstop an even one too: even symmetric taps
 * cannot pass the frequency 1/2); StatusRelFreq (an edge outside (0, 0.5), or rFreq1 >= rFreq2).
 */
Status tevsFIRGenLowpass_64f(double* pTaps, int tapsLen, double rFreq, int taper);
Status tevsFIRGenHighpass_64f(double* pTaps, int tapsLen, double rFreq, int taper);
Status tevsFIRGenBandpass_64f(double* pTaps, int tapsLen, double rFreq1, double rFreq2, int taper);
Status tevsFIRGenBandstop_64f(double* pTaps, int tapsLen, double rFreq1, double rFreq2, int taper);

/* ---- FIRGenRootCosine: root raised-cosine pulse ---------------------------------------------------------------------
 *
 * At rFreq symbols per sample, with s = (n - (tapsLen-1)/2) rFreq and the roll-off b:
 *
 *     h = (sin(pi s (1-b)) + 4 b s cos(pi s (1+b))) / (pi s (1 - (4 b s)^2)),    1 - b + 4 b / pi at s = 0
 *
 * with its limit at |s| = 1/(4b); divided by the root of its energy, so that pulse and matched filter peak at 1.
 * Symmetric to the bit, each tap within 2^-48. Statuses: StatusNullPtr, StatusBadSize (tapsLen < 1), StatusRelFreq
 * (rFreq outside (0, 0.5], rolloff outside [0, 1]).
 */
Status tevsFIRGenRootCosine_64f(double* pTaps, int tapsLen, double rFreq, double rolloff);

/* ---- FIRGenKaiser: how many taps, and which Kaiser window -----------------------------------------------------------
 *
 * For a transition band rWidth wide and both ripples A = decibels down: tapsLen is the least odd integer >= 1 + (A -
 * 7.95) / (2.285 2 pi rWidth), at least 1, and alpha = 2 b / (tapsLen-1), 0 for one tap, as WinKaiser_64f_I takes it,
 * with
 *
 *     b = 0 for A <= 21,    0.5842 (A-21)^0.4 + 0.07886 below 50,    0.1102 from 50 on
 *
 * Statuses: StatusNullPtr, StatusRelFreq (rWidth outside (0, 0.5)), StatusBadSize (decibels not finite, a count beyond
 * INT_MAX).
 */
Status tevsFIRGenKaiser_64f(double rWidth, double decibels, int* pTapsLen, float* pAlpha);

/* ---- FIRResponse ----------------------------------------------------------------------------------------------------
 *
 *     pDst[i] = sum over k of pTaps[k] e^(-j 2 pi k pRFreq[i])
 *
 * for any finite frequencies, reduced exactly; the error is at most 4 tapsLen 2^-53 sum of |pTaps[k]|. The vectors are
 * distinct. Statuses: StatusNullPtr, StatusBadSize (tapsLen, len < 1).
 */
Status tevsFIRResponse_64f(const double* pTaps, int tapsLen, const double* pRFreq, Complex64f* pDst, int len);

/* ---- IIRGen: Butterworth and Chebyshev taps -------------------------------------------------------------------------
 *
 * pTaps           in the layouts of IIRInit, 2 (order+1) taps, and IIRInit_BiQuad, 6 taps a section with a0 = 1 and b0
 *                 never 0: (order+1) / 2 sections of Lowpass and Highpass, order sections of Bandpass and Bandstop
 * order           of the prototype, 1 .. 12; band designs have 2 order poles
 * rFreq           edges: in (0, 0.5]; of bands 2^-20 <= rFreq1 <= rFreq2 - 2^-20, rFreq2 <= 0.5 - 2^-20
 * ripple          0: Butterworth, half the power (-3.0103 dB) at the edges. In (0, 29]: Chebyshev of the first kind,
 *                 between 0 and -ripple dB in the pass-band and -ripple dB at the edges; below 0.001 it counts as
 *                 0.001.
 *
 * The poles of the prototype, -sinh v sin q +- j cosh v cos q with q = (2k-1) pi / (2 order) and v = asinh(1/e) /
 * order, e^2 = 10^(ripple/10) - 1 (Butterworth: -sin q +- j cos q), move to the edges W = tan(pi rFreq): p to W p
 * (Lowpass), W / p (Highpass), the roots of s^2 - p B s + W1 W2 (Bandpass), the same with 1/p for p (Bandstop), B = W2
 * - W1. Each conjugate pair, or one or two real ones, becomes a section by the bilinear transform s = (1 - z^-1) / (1 +
 * z^-1).
 *
 * Numerators are b0 (1, 2, 1) and (1, 1, 0) of a single pole; (1, -2, 1) and (1, -1, 0); (1, 0, -1); (1, -2 cos w, 1),
 * w the centre of Bandstop. Every section has the gain 1 at frequency 0 (Lowpass, Bandstop), 1/2 (Highpass), or the
 * centre, tan^2(w/2) = W1 W2 (Bandpass), by its rounded denominator; of even orders with ripple the first section also
 * carries -ripple dB. The section of a single pole comes first, then rising Q, of equal Q the lower frequency: so a
 * cascade in single precision keeps its headroom.
 *
 * The arbitrary-order form is the product of the sections. It suits order 4 from rFreq 0.001, 8 from 0.02, 12 from 0.05
 * on, and as far from 0.5; nearer, its rounding moves poles, of order 12 at 0.01 out of the circle. Sections have no
 * such limit.
 *
 * Sections have the gain at the edges within 1e-9 dB for edges in [0.01, 0.49] (bands at least 0.001 wide), 1e-5 dB in
 * [2^-13, 0.5 - 2^-13], and are stable as rounded, all of them: an edge below 2^-24 counts as 2^-24, one above 0.5 -
 * 2^-24 as that. At 0.5 the design is its limit: Lowpass passes everything (b0 of the first section is the gain at 0,
 * all else 1, 0, 0 over 1, 0, 0), Highpass nothing (2^-60 in its place, -361 dB: with 0 it were no filter). Rounded to
 * single precision, sections of Lowpass and Highpass stay stable for edges in [2^-10, 0.5 - 2^-10].
 *
 * Statuses: StatusNullPtr, StatusIirGenOrder, StatusIirGenFreq, StatusIirGenDecibels, each where its argument is out of
 * range.
 */
Status tevsIIRGenLowpass_64f(double* pTaps, int order, double rFreq, double ripple);
Status tevsIIRGenLowpass_BiQuad_64f(double* pTaps, int order, double rFreq, double ripple);
Status tevsIIRGenHighpass_64f(double* pTaps, int order, double rFreq, double ripple);
Status tevsIIRGenHighpass_BiQuad_64f(double* pTaps, int order, double rFreq, double ripple);
Status tevsIIRGenBandpass_BiQuad_64f(double* pTaps, int order, double rFreq1, double rFreq2, double ripple);
Status tevsIIRGenBandstop_BiQuad_64f(double* pTaps, int order, double rFreq1, double rFreq2, double ripple);

/* ---- IIRGenOrder: the least order that will do ----------------------------------------------------------------------
 *
 * With the edge rFreqPass and this ripple (0: Butterworth) a design of *pOrder is `decibels` down at rFreqStop, and
 * none of less: Lowpass where that lies above the edge, Highpass where it lies below. With r the ratio of the tangents
 * of pi times both, above 1, and d^2 = (10^(decibels/10) - 1) / e^2 (e = 1 of Butterworth): ceil(ln d / ln r), or
 * ceil(acosh d / acosh r), at least 1. Statuses: StatusNullPtr, StatusIirGenFreq (a frequency outside (0, 0.5), or both
 * equal), StatusIirGenDecibels (ripple as above, decibels not above 0 or not finite), StatusIirGenOrder (more than 12
 * would be needed).
 */
Status tevsIIRGenOrder_64f(double rFreqPass, double rFreqStop, double ripple, double decibels, int* pOrder);

/* ---- IIRResponse ----------------------------------------------------------------------------------------------------
 *
 * H at e^(j 2 pi pRFreq[i]) of taps of arbitrary order and of sections; frequencies as in FIRResponse. Each polynomial
 * is within 4 (terms) 2^-53 sum of |tap|; at a pole on the circle the result is infinite or NaN as the division gives
 * it. The vectors are distinct. Statuses: StatusNullPtr, StatusBadSize (len < 1), StatusFilterOrder (order or numBq <
 * 1), StatusDivByZeroErr (an a0 that is 0 or NaN).
 */
Status tevsIIRResponse_64f(const double* pTaps, int order, const double* pRFreq, Complex64f* pDst, int len);
Status tevsIIRResponse_BiQuad_64f(const double* pTaps, int numBq, const double* pRFreq, Complex64f* pDst, int len);

TEVS_END

#endif
