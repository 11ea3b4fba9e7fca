#ifndef TEVS_LMS_H
#define TEVS_LMS_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- FIRLMS: adaptive FIR filter, least mean squares ----------------------------------------------------------------
 *
 *     y[n] = sum over k = 0 .. tapsLen-1 of  h[k] * x[n-k]
 *     h[k] += 2 mu (ref[n] - y[n]) x[n-k]                          for every k, after the output
 *
 * moves the taps h so that y comes to follow the reference (Widrow and Hoff, Adaptive Switching Circuits, 1960). A
 * record holds taps and delay line. Wherever a stream is cut into blocks, outputs and taps are the same to the bit.
 *
 *     _32f          single-precision samples and taps
 *     32f_16s       16-bit samples, single-precision taps and sums; outputs are rounded to nearest, ties to even,
 *                   saturated, the error is taken before that
 *
 * pTaps           h[0] .. h[tapsLen-1] in the order of the formula; NULL stands for zeros
 * tapsLen         at least 1
 * pDlyLine        tapsLen samples that came before; NULL stands for silence. They lie in a circle: the oldest is
 *                 pDlyLine[dlyLineIndex], behind the last one comes pDlyLine[0].
 * dlyLineIndex    is kept as it is given; one outside 0 .. tapsLen-1 counts as 0 where it is used
 * mu              the step. It converges for 0 < mu < 1 / (tapsLen * mean of x^2), and is the faster the larger it is;
 *                 0 leaves the taps as they are.
 * pSrc, pRef      len >= 1 samples each
 * pDst            len outputs; it may be pSrc or pRef itself, other overlaps do not work
 *
 * InitAlloc       Builds a record in memory of its own. Returns StatusOk, StatusNullPtr (ppState), StatusBadSize
 *                 (tapsLen < 1), StatusNoMemory.
 * Free            Gives it back, and clears the record's identifier before.
 * GetTaps         The taps as they are now, in the order of the formula.
 * GetDlyLine      The last tapsLen samples, oldest first, and the index: what was given as long as there was no block;
 *                 after one 0 with less than 80 taps, otherwise moved on by a place for each sample. (What it gives is
 *                 what SetDlyLine takes with an index of 0.)
 * SetDlyLine      Another past. Free and these return StatusOk, StatusNullPtr (any pointer but the pDlyLine of
 *                 SetDlyLine), StatusContextMismatch (not such a record; records of the two types are not told apart).
 * FIRLMS          Filters a block. Returns StatusOk, StatusNullPtr (pState, pSrc, pRef, pDst), StatusBadSize (len < 1),
 *                 StatusContextMismatch.
 *
 * On failure nothing is written. One call per record at a time. Results may differ in rounding between SIMD levels.
 */
typedef struct FIRLMSState_32f FIRLMSState_32f;
typedef struct FIRLMSState32f_16s FIRLMSState32f_16s;

Status tevsFIRLMSInitAlloc_32f(FIRLMSState_32f** ppState, const float* pTaps, int tapsLen, const float* pDlyLine, int dlyLineIndex);
Status tevsFIRLMSFree_32f(FIRLMSState_32f* pState);
Status tevsFIRLMSGetTaps_32f(const FIRLMSState_32f* pState, float* pOutTaps);
Status tevsFIRLMSGetDlyLine_32f(const FIRLMSState_32f* pState, float* pDlyLine, int* pDlyLineIndex);
Status tevsFIRLMSSetDlyLine_32f(FIRLMSState_32f* pState, const float* pDlyLine, int dlyLineIndex);
Status tevsFIRLMS_32f(const float* pSrc, const float* pRef, float* pDst, int len, float mu, FIRLMSState_32f* pState);
Status tevsFIRLMSInitAlloc32f_16s(FIRLMSState32f_16s** ppState, const float* pTaps, int tapsLen, const int16_t* pDlyLine, int dlyLineIndex);
Status tevsFIRLMSFree32f_16s(FIRLMSState32f_16s* pState);
Status tevsFIRLMSGetTaps32f_16s(const FIRLMSState32f_16s* pState, float* pOutTaps);
Status tevsFIRLMSGetDlyLine32f_16s(const FIRLMSState32f_16s* pState, int16_t* pDlyLine, int* pDlyLineIndex);
Status tevsFIRLMSSetDlyLine32f_16s(FIRLMSState32f_16s* pState, const int16_t* pDlyLine, int dlyLineIndex);
Status tevsFIRLMS32f_16s(const int16_t* pSrc, const int16_t* pRef, int16_t* pDst, int len, float mu, FIRLMSState32f_16s* pState);

/* ---- FIRLMSOne_Direct: one sample, without a record -----------------------------------------------------------------
 *
 * pTaps           tapsLen taps in the order in which they meet the samples, that of the newest last: h[tapsLen-1] ..
 *                 h[0]; read and written
 * pDlyLine        2 tapsLen samples, the last tapsLen ones twice over; read and written
 * pDlyLineIndex   where the oldest sample lies, 0 .. tapsLen-1. The new one takes its place, there and tapsLen further
 *                 on, and the index moves on by one.
 * pTapsQ15, muQ15 stand for their value / 2^15. y is the exact sum / 2^15, and each tap moves by mu (ref - y) x / 2^29
 * with that y; both are rounded to nearest, ties to
 *                 even, once, and saturated.
 *
 * Return StatusOk, or the first that applies, with nothing written: StatusNullPtr (pTaps, pDlyLine, pDlyLineIndex,
 * pDst), StatusBadSize (tapsLen < 1), StatusDelayIndex (*pDlyLineIndex out of range).
 */
Status tevsFIRLMSOne_Direct_32f(float src, float ref, float* pDst, float* pTaps, int tapsLen, float mu, float* pDlyLine, int* pDlyLineIndex);
Status tevsFIRLMSOne_Direct32f_16s(int16_t src, int16_t ref, int16_t* pDst, float* pTaps, int tapsLen, float mu, int16_t* pDlyLine, int* pDlyLineIndex);
Status tevsFIRLMSOne_DirectQ15_16s(int16_t src, int16_t ref, int16_t* pDst, int16_t* pTapsQ15, int tapsLen, int16_t muQ15, int16_t* pDlyLine,
                                   int* pDlyLineIndex);

TEVS_END

#endif
