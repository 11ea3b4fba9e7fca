#ifndef TEVS_SPARSE_H
#define TEVS_SPARSE_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- FIRSparse: FIR filter given by its non-zero taps ---------------------------------------------------------------
 *
 *     y[n] = sum over k = 0 .. nzTapsLen-1 of  pNZTaps[k] * x[n - pNZTapPos[k]]
 *
 * Echoes, multipath channels, combs: long filters most of whose taps are zero. Time and memory of a block follow the
 * taps that are given; the delays cost their samples in the record. Sums are formed in the order of the formula, so
 * that a stream gives the same bits wherever it is cut into blocks.
 *
 * pNZTaps         nzTapsLen >= 1 taps; they and the delays are copied
 * pNZTapPos       their delays in samples, the first at least 0, each above the one before. The largest is the filter's
 *                 order; a filter of order 0 has one tap, at 0.
 * pDlyLine        the `order` samples before the first one, newest first; NULL stands for silence
 * pBuffer         of the size that GetStateSize reports for the order, at any address; the record lies in it and is
 *                 good as long as it is
 * pSrc, pDst      len >= 1 samples each, apart from each other
 *
 * GetStateSize    8 order and twice 4 nzTapsLen bytes, each rounded up to 16, and 48. Returns StatusOk, StatusNullPtr
 *                 (pSize), StatusFilterLength (nzTapsLen < 1, or so large that the size is beyond INT_MAX),
 *                 StatusSparseArg (order < 0, or so large).
 * Init            Builds the record. Returns StatusOk, or, with nothing written, StatusNullPtr (ppState, pNZTaps,
 *                 pNZTapPos, pBuffer), StatusFilterLength (nzTapsLen as above), StatusSparseArg (delays that do not
 *                 rise from 0 or above, or are too large).
 * FIRSparse       Filters a block. Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr,
 *                 StatusBadSize (len < 1), StatusContextMismatch.
 *
 * One call per record at a time. Results may differ in rounding between SIMD levels.
 */
typedef struct FIRSparseState_32f FIRSparseState_32f;

Status tevsFIRSparseGetStateSize_32f(int nzTapsLen, int order, int* pSize);
Status tevsFIRSparseInit_32f(FIRSparseState_32f** ppState, const float* pNZTaps, const int32_t* pNZTapPos, int nzTapsLen, const float* pDlyLine,
                             uint8_t* pBuffer);
Status tevsFIRSparse_32f(const float* pSrc, float* pDst, int len, FIRSparseState_32f* pState);

/* ---- IIRSparse: IIR filter given by its non-zero taps ---------------------------------------------------------------
 *
 *     y[n] = sum over k of  b[k] * x[n - p[k]]  -  sum over k of  a[k] * y[n - q[k]]
 *
 * the filter b(z) / (1 + a(z)), as IIR has it with a leading denominator tap of 1: combs with feedback, reverberators,
 * strings. The second sum is taken from the longest delay to the shortest, after the first one. As long as all delays q
 * are of eight samples and more it is formed for several outputs at a time; shorter ones are taken in turn.
 *
 * pNZTaps         nzTapsLen1 >= 1 taps b, and behind them nzTapsLen2 >= 0 taps a
 * pNZTapPos       delays p, rising from 0 or above, and behind them delays q, rising from 1 or above. The last of each,
 *                 or 0 where there is none, is order1 and order2.
 * pDlyLine        order1 inputs that came before, newest first, and behind them order2 outputs, newest first; NULL
 *                 stands for silence
 *
 * GetStateSize    Returns StatusOk, StatusNullPtr (pSize), StatusFilterOrder (nzTapsLen1 < 1, nzTapsLen2 < 0, or so
 *                 large that the size is beyond INT_MAX), StatusSparseArg (order1 or order2 < 0, or so large).
 * Init            Returns StatusOk, or, with nothing written, StatusNullPtr (ppState, pNZTaps, pNZTapPos, pBuffer),
 *                 StatusFilterOrder, StatusSparseArg.
 *
 * All else is as for FIRSparse.
 */
typedef struct IIRSparseState_32f IIRSparseState_32f;

Status tevsIIRSparseGetStateSize_32f(int nzTapsLen1, int nzTapsLen2, int order1, int order2, int* pSize);
Status tevsIIRSparseInit_32f(IIRSparseState_32f** ppState, const float* pNZTaps, const int32_t* pNZTapPos, int nzTapsLen1, int nzTapsLen2,
                             const float* pDlyLine, uint8_t* pBuffer);
Status tevsIIRSparse_32f(const float* pSrc, float* pDst, int len, IIRSparseState_32f* pState);

TEVS_END

#endif
