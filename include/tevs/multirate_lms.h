#ifndef TEVS_MULTIRATE_LMS_H
#define TEVS_MULTIRATE_LMS_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- FIRLMSMR: adaptive FIR filter between two rates ----------------------------------------------------------------
 *
 * The filter of FIRMR, phases and all, whose taps move by the rule of FIRLMS: fractionally spaced equalisers (several
 * samples in, one symbol out), data-driven echo cancellers (one symbol in, several samples out), and, with factors of 1
 * and 1, echo cancellers and system identification.
 *
 * One iteration takes downFactor inputs and gives upFactor outputs. With t = downPhase + m * downFactor - upPhase, u =
 * t mod upFactor, and x_0, x_1 .. the newest sample at time t and those before it, output m is
 *
 *     y[m] = sum over j of  h[u + j * upFactor] * x_j             0 where the phase u has no taps
 *
 * and with the error e[m] of each output of the iteration, in order, the taps it was made with move:
 *
 *     h[u + j * upFactor] += g * conj(x_j),   g = 2 mu e[m],
 *                                             or where norm > 0   g = 2 mu e[m] / (norm + sum over j of |x_j|^2)
 *
 * The two halves are calls of their own, because a receiver knows its error only after it has looked at the output:
 * Filter, decide, Adapt. (Widrow and Stearns, Adaptive Signal Processing, 1985; normalised: Nagumo and Noda, 1967;
 * fractional spacing: Ungerboeck, 1976, Gitlin and Weinstein, 1981.)
 *
 *     32s_16s, 32sc_16sc    16-bit samples, 32-bit taps t that stand for t * 2^tapsFactor (-30 for taps within 2)
 *     _32f, _32fc           all in single precision
 *
 * pTaps           h[0] .. h[tapsLen-1] in the order of the formula; NULL stands for zeros
 * tapsLen         at least 1; with integers ceil(tapsLen / upFactor) is at most 2^15
 * upFactor, upPhase, downFactor, downPhase        as in FIRMR; phases are 0 .. factor-1
 * pDlyLine        the record keeps Q + downFactor samples, Q = ceil(tapsLen / upFactor): those at delays 0 (the newest)
 *                 to Q + downFactor - 1, which Adapt needs to find the samples of an iteration. NULL stands for
 *                 silence.
 * mu, norm        the step. Plain, for norm not above 0: samples count at face value, so that steps are of the order of
 *                 1 / (Q * mean square). Normalised: 0 < mu < 1, in practice to 0.5, and norm keeps silence from
 *                 dividing by 0. A mu of 0 leaves the taps as they are.
 * pErr            upFactor errors, reference less output
 * pSrc, pDst, pRef        downFactor inputs and upFactor outputs and references, numIters >= 1 times; pDst may be pRef
 *
 * GetStateSize    The bytes of a record in the caller's memory, at any address. Returns StatusOk, StatusNullPtr
 *                 (pSize), StatusFilterLength (tapsLen < 1, or too large), StatusRateFactor (a factor < 1, or one that
 *                 makes the record too large).
 * Init, InitAlloc Build a record in pBuffer, and in memory of its own. Return StatusOk, or, with nothing written,
 *                 StatusNullPtr (ppState, pBuffer), StatusFilterLength, StatusRateFactor, StatusRatePhase (a phase out
 *                 of range), StatusNoMemory.
 * Free            Gives back what InitAlloc took, the identifier cleared; leaves a record of Init as it is.
 * SetTaps, GetTaps        All taps, in the order of the formula. SetDlyLine: all samples, newest first.
 * GetDlyLine      `len` samples from delay dlyIndex on, newest first. StatusBadArg: dlyIndex < 0, or dlyIndex + len
 *                 beyond what the record keeps.
 * Filter          One iteration; the taps stay.
 * Adapt           Moves them by the errors of the last iteration's outputs. Before any Filter it works on the delay
 *                 line as it was set; twice in a row applies both errors.
 * FIRLMSMR        numIters times Filter, e = pRef - pDst, Adapt: integers to the bit.
 *
 * All return StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer but the pTaps of
 * SetTaps and the pDlyLine of SetDlyLine), StatusBadSize (len or numIters < 1), StatusContextMismatch.
 *
 * Integers        Sums are exact; an output is the sum times 2^tapsFactor, rounded to nearest, ties to even, and
 *                 saturated; errors are taken from stored outputs. A step is computed in double precision: c = 2 mu *
 *                 2^-tapsFactor, g = c e, divided by (norm + power) if norm > 0, with the power exact; each tap becomes
 *                 t + g x_j rounded to the nearest integer, saturated; the parts of g conj(x_j) are two products and a
 *                 sum. A part that is not a number counts as 0. The same bits everywhere.
 * Floats          Outputs are within (2 Q + 4) u of sum |h| |x|, u = 2^-24, each part of a step within 8 u of |g| |x_j|,
 *                 normalised within (2 Q + 12) u, for the error as rounded; the sum with the tap is rounded once.
 *                 Results may differ in rounding between SIMD levels, and between the block call and the two halves.
 *
 * One call per record at a time.
 */
typedef struct FIRLMSMRState32s_16s FIRLMSMRState32s_16s;
typedef struct FIRLMSMRState32sc_16sc FIRLMSMRState32sc_16sc;
typedef struct FIRLMSMRState_32f FIRLMSMRState_32f;
typedef struct FIRLMSMRState_32fc FIRLMSMRState_32fc;

Status tevsFIRLMSMRGetStateSize32s_16s(int tapsLen, int upFactor, int downFactor, int* pSize);
Status tevsFIRLMSMRGetStateSize32sc_16sc(int tapsLen, int upFactor, int downFactor, int* pSize);
Status tevsFIRLMSMRGetStateSize_32f(int tapsLen, int upFactor, int downFactor, int* pSize);
Status tevsFIRLMSMRGetStateSize_32fc(int tapsLen, int upFactor, int downFactor, int* pSize);
Status tevsFIRLMSMRInit32s_16s(FIRLMSMRState32s_16s** ppState, const int32_t* pTaps, int tapsLen, int tapsFactor, int upFactor, int upPhase, int downFactor,
                               int downPhase, const int16_t* pDlyLine, uint8_t* pBuffer);
Status tevsFIRLMSMRInit32sc_16sc(FIRLMSMRState32sc_16sc** ppState, const Complex32s* pTaps, int tapsLen, int tapsFactor, int upFactor, int upPhase,
                                 int downFactor, int downPhase, const Complex16s* pDlyLine, uint8_t* pBuffer);
Status tevsFIRLMSMRInit_32f(FIRLMSMRState_32f** ppState, const float* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                            const float* pDlyLine, uint8_t* pBuffer);
Status tevsFIRLMSMRInit_32fc(FIRLMSMRState_32fc** ppState, const Complex32f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                             const Complex32f* pDlyLine, uint8_t* pBuffer);
Status tevsFIRLMSMRInitAlloc32s_16s(FIRLMSMRState32s_16s** ppState, const int32_t* pTaps, int tapsLen, int tapsFactor, int upFactor, int upPhase,
                                    int downFactor, int downPhase, const int16_t* pDlyLine);
Status tevsFIRLMSMRInitAlloc32sc_16sc(FIRLMSMRState32sc_16sc** ppState, const Complex32s* pTaps, int tapsLen, int tapsFactor, int upFactor, int upPhase,
                                      int downFactor, int downPhase, const Complex16s* pDlyLine);
Status tevsFIRLMSMRInitAlloc_32f(FIRLMSMRState_32f** ppState, const float* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                 const float* pDlyLine);
Status tevsFIRLMSMRInitAlloc_32fc(FIRLMSMRState_32fc** ppState, const Complex32f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                  const Complex32f* pDlyLine);
Status tevsFIRLMSMRFree32s_16s(FIRLMSMRState32s_16s* pState);
Status tevsFIRLMSMRFree32sc_16sc(FIRLMSMRState32sc_16sc* pState);
Status tevsFIRLMSMRFree_32f(FIRLMSMRState_32f* pState);
Status tevsFIRLMSMRFree_32fc(FIRLMSMRState_32fc* pState);
Status tevsFIRLMSMRSetTaps32s_16s(const int32_t* pTaps, FIRLMSMRState32s_16s* pState);
Status tevsFIRLMSMRSetTaps32sc_16sc(const Complex32s* pTaps, FIRLMSMRState32sc_16sc* pState);
Status tevsFIRLMSMRSetTaps_32f(const float* pTaps, FIRLMSMRState_32f* pState);
Status tevsFIRLMSMRSetTaps_32fc(const Complex32f* pTaps, FIRLMSMRState_32fc* pState);
Status tevsFIRLMSMRGetTaps32s_16s(const FIRLMSMRState32s_16s* pState, int32_t* pTaps);
Status tevsFIRLMSMRGetTaps32sc_16sc(const FIRLMSMRState32sc_16sc* pState, Complex32s* pTaps);
Status tevsFIRLMSMRGetTaps_32f(const FIRLMSMRState_32f* pState, float* pTaps);
Status tevsFIRLMSMRGetTaps_32fc(const FIRLMSMRState_32fc* pState, Complex32f* pTaps);
Status tevsFIRLMSMRSetDlyLine32s_16s(FIRLMSMRState32s_16s* pState, const int16_t* pDlyLine);
Status tevsFIRLMSMRSetDlyLine32sc_16sc(FIRLMSMRState32sc_16sc* pState, const Complex16s* pDlyLine);
Status tevsFIRLMSMRSetDlyLine_32f(FIRLMSMRState_32f* pState, const float* pDlyLine);
Status tevsFIRLMSMRSetDlyLine_32fc(FIRLMSMRState_32fc* pState, const Complex32f* pDlyLine);
Status tevsFIRLMSMRGetDlyLine32s_16s(const FIRLMSMRState32s_16s* pState, int16_t* pDlyLine, int len, int dlyIndex);
Status tevsFIRLMSMRGetDlyLine32sc_16sc(const FIRLMSMRState32sc_16sc* pState, Complex16s* pDlyLine, int len, int dlyIndex);
Status tevsFIRLMSMRGetDlyLine_32f(const FIRLMSMRState_32f* pState, float* pDlyLine, int len, int dlyIndex);
Status tevsFIRLMSMRGetDlyLine_32fc(const FIRLMSMRState_32fc* pState, Complex32f* pDlyLine, int len, int dlyIndex);
Status tevsFIRLMSMRFilter32s_16s(const int16_t* pSrc, int16_t* pDst, FIRLMSMRState32s_16s* pState);
Status tevsFIRLMSMRFilter32sc_16sc(const Complex16s* pSrc, Complex16s* pDst, FIRLMSMRState32sc_16sc* pState);
Status tevsFIRLMSMRFilter_32f(const float* pSrc, float* pDst, FIRLMSMRState_32f* pState);
Status tevsFIRLMSMRFilter_32fc(const Complex32f* pSrc, Complex32f* pDst, FIRLMSMRState_32fc* pState);
Status tevsFIRLMSMRAdapt32s_16s(const int32_t* pErr, float mu, float norm, FIRLMSMRState32s_16s* pState);
Status tevsFIRLMSMRAdapt32sc_16sc(const Complex32s* pErr, float mu, float norm, FIRLMSMRState32sc_16sc* pState);
Status tevsFIRLMSMRAdapt_32f(const float* pErr, float mu, float norm, FIRLMSMRState_32f* pState);
Status tevsFIRLMSMRAdapt_32fc(const Complex32f* pErr, float mu, float norm, FIRLMSMRState_32fc* pState);
Status tevsFIRLMSMR32s_16s(const int16_t* pSrc, const int16_t* pRef, int16_t* pDst, int numIters, float mu, float norm, FIRLMSMRState32s_16s* pState);
Status tevsFIRLMSMR32sc_16sc(const Complex16s* pSrc, const Complex16s* pRef, Complex16s* pDst, int numIters, float mu, float norm,
                             FIRLMSMRState32sc_16sc* pState);
Status tevsFIRLMSMR_32f(const float* pSrc, const float* pRef, float* pDst, int numIters, float mu, float norm, FIRLMSMRState_32f* pState);
Status tevsFIRLMSMR_32fc(const Complex32f* pSrc, const Complex32f* pRef, Complex32f* pDst, int numIters, float mu, float norm, FIRLMSMRState_32fc* pState);

TEVS_END

#endif
