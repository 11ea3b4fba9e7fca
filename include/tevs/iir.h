#ifndef TEVS_IIR_H
#define TEVS_IIR_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- IIR: infinite impulse response filter --------------------------------------------------------------------------
 *
 *              b0 + b1 z^-1 + ... + bN z^-N
 *     H(z) =  ------------------------------
 *              a0 + a1 z^-1 + ... + aN z^-N
 *
 *     a0 y[n] = sum over k = 0..N of b_k x[n-k]  -  sum over k = 1..N of a_k y[n-k]
 *
 * of arbitrary order N, or as a cascade of second-order sections (BiQuad), each of which filters the output of the one
 * before. A record holds the taps, divided by a0, and a state d; it filters a stream in blocks of any length, or sample
 * by sample; the two may be mixed. One sample, in the transposed direct form II (Oppenheim and Schafer, Discrete-Time
 * Signal Processing, ch. 6), with d[N] = 0:
 *
 *     y = b0 x + d[0]
 *     d[k] = b_(k+1) x - a_(k+1) y + d[k+1]                for k = 0 .. N-1
 *
 *                   taps               samples             computed in
 *     _32f          single             single              single
 *     _32fc         complex single     complex single      single
 *     32f_16s       single             16-bit              single
 *     32fc_16sc     complex single     complex 16-bit      single
 *     32s_16s       32-bit, exponent   16-bit              single       also built from single-precision taps:
 *                                                                       32s_16s32f
 *     32sc_16sc     complex 32-bit     complex 16-bit      single       32sc_16sc32fc
 *     _64f          double             double              double
 *     _64fc         complex double     complex double      double
 *     64f_32f       double             single              double
 *     64fc_32fc     complex double     complex single      double
 *     64f_32s       double             32-bit              double
 *     64fc_32sc     complex double     complex 32-bit      double
 *     64f_16s       double             16-bit              double
 *     64fc_16sc     complex double     complex 16-bit      double
 *
 * pTaps           arbitrary order, 2 (order + 1) values:    b0 b1 .. bN   a0 a1 .. aN
 *                 sections, 6 numBq values:                 b0 b1 b2 a0 a1 a2   b0 b1 b2 a0 a1 a2   ...
 * tapsFactor      of 32-bit taps: they stand for pTaps[k] * 2^-tapsFactor, rounded to single precision, with tapsFactor
 *                 taken as -112 .. 126 at most. (The exponent of FIR taps has the other sign.)
 * order, numBq    at least 1
 * pDlyLine        the state, in the type computed in: d[0] .. d[order-1], or d[0] d[1] of each section. Where a record
 *                 is built or set, NULL stands for zeros.
 * scaleFactor     of integer samples: results are stored times 2^-scaleFactor, to nearest, ties to even, saturated; any
 *                 value will do. This is the only time that they are rounded to integers: sections hand on what they
 *                 compute.
 * pSrc, pDst      len >= 1 samples each; equal pointers filter in place, other overlaps do not work
 *
 * GetStateSize    The bytes of a record in the caller's memory, at any address: 4472 for _32f of order 4, 4408 for one
 *                 section. Returns StatusOk, StatusNullPtr (pSize), StatusFilterOrder (order or numBq < 1, or so large
 *                 that the size is beyond INT_MAX).
 * Init            Builds a record in pBuffer and stores its address. Returns StatusOk, StatusNullPtr (ppState, pTaps,
 *                 pBuffer), StatusFilterOrder (as GetStateSize), StatusDivByZeroErr (a0 is 0 or NaN or, in any section,
 *                 b0 is 0; of complex taps, both parts 0 or either part of a0 NaN).
 * InitAlloc       The same in memory of its own. Returns StatusOk, StatusNullPtr (ppState, pTaps), StatusFilterOrder
 *                 (order or numBq < 1), StatusNoMemory (the size is beyond INT_MAX), StatusDivByZeroErr,
 *                 StatusNoMemory.
 * Free            Gives back what InitAlloc took, and clears the record's identifier before. A record in the caller's
 *                 memory is left as it is and may still be used. Returns StatusOk, StatusNullPtr, StatusContextMismatch
 *                 (not a record of this type).
 * SetTaps         Other taps, as many as before; the state stays. Returns StatusOk, StatusNullPtr,
 *                 StatusContextMismatch, StatusDivByZeroErr.
 * SetDlyLine      Another state. GetDlyLine reads it. Both: StatusOk, StatusNullPtr (either pointer; pDlyLine of
 *                 SetDlyLine may be NULL), StatusContextMismatch.
 * IIR             Filters a block. Returns StatusOk, StatusNullPtr (any pointer), StatusBadSize (len < 1),
 *                 StatusContextMismatch.
 * IIROne          Filters one sample. Returns StatusOk, StatusNullPtr, StatusContextMismatch.
 *
 * On failure nothing is written: no output, no record, no pointer to one, no taps; a record keeps the filter that it
 * had.
 *
 * Threads         One call per record at a time; no call starts threads.
 * Stability       is the caller's affair: poles on or outside the unit circle are filtered as they are. What grows
 *                 beyond the range becomes infinite, and infinite or NaN from there on, and integer results saturate
 *                 (NaN to the least integer), until SetDlyLine puts another state. The same goes for infinite and NaN
 *                 taps. Outputs before an infinity or NaN of the input do not change with it.
 * Denormals       At the end of a call, and at least every 1024 samples of a block, a state (of a section, or of the
 *                 whole filter of arbitrary order) whose parts are all below the smallest normal number becomes 0. So a
 *                 decaying filter reaches zero instead of staying among the subnormal numbers, whose arithmetic is slow
 *                 on some processors, and spends no more than those samples there. A state that SetDlyLine puts is read
 *                 back as it is.
 * Method          Blocks take a section (and order 2 or less) by maps of eight real or four complex samples at a time,
 *                 with the state in double precision in between; higher orders by 16 bytes of outputs at a time. Their
 *                 error is at most about that of single samples, and much less where poles lie near the unit circle.
 *                 Results in floating point may differ in rounding between SIMD levels, between blocks and single
 *                 samples, and with where a stream is cut into blocks.
 */
typedef struct IIRState_32f IIRState_32f;
typedef struct IIRState_32fc IIRState_32fc;
typedef struct IIRState32f_16s IIRState32f_16s;
typedef struct IIRState32fc_16sc IIRState32fc_16sc;
typedef struct IIRState32s_16s IIRState32s_16s;
typedef IIRState32s_16s IIRState32s_16s32f;
typedef struct IIRState32sc_16sc IIRState32sc_16sc;
typedef IIRState32sc_16sc IIRState32sc_16sc32fc;
typedef struct IIRState_64f IIRState_64f;
typedef struct IIRState_64fc IIRState_64fc;
typedef struct IIRState64f_32f IIRState64f_32f;
typedef struct IIRState64fc_32fc IIRState64fc_32fc;
typedef struct IIRState64f_32s IIRState64f_32s;
typedef struct IIRState64fc_32sc IIRState64fc_32sc;
typedef struct IIRState64f_16s IIRState64f_16s;
typedef struct IIRState64fc_16sc IIRState64fc_16sc;

Status tevsIIRGetStateSize_32f(int order, int* pSize);
Status tevsIIRGetStateSize_32fc(int order, int* pSize);
Status tevsIIRGetStateSize32f_16s(int order, int* pSize);
Status tevsIIRGetStateSize32fc_16sc(int order, int* pSize);
Status tevsIIRGetStateSize32s_16s(int order, int* pSize);
Status tevsIIRGetStateSize32s_16s32f(int order, int* pSize);
Status tevsIIRGetStateSize32sc_16sc(int order, int* pSize);
Status tevsIIRGetStateSize32sc_16sc32fc(int order, int* pSize);
Status tevsIIRGetStateSize_64f(int order, int* pSize);
Status tevsIIRGetStateSize_64fc(int order, int* pSize);
Status tevsIIRGetStateSize64f_32f(int order, int* pSize);
Status tevsIIRGetStateSize64fc_32fc(int order, int* pSize);
Status tevsIIRGetStateSize64f_32s(int order, int* pSize);
Status tevsIIRGetStateSize64fc_32sc(int order, int* pSize);
Status tevsIIRGetStateSize64f_16s(int order, int* pSize);
Status tevsIIRGetStateSize64fc_16sc(int order, int* pSize);
Status tevsIIRGetStateSize_BiQuad_32f(int numBq, int* pSize);
Status tevsIIRGetStateSize_BiQuad_32fc(int numBq, int* pSize);
Status tevsIIRGetStateSize32f_BiQuad_16s(int numBq, int* pSize);
Status tevsIIRGetStateSize32fc_BiQuad_16sc(int numBq, int* pSize);
Status tevsIIRGetStateSize32s_BiQuad_16s(int numBq, int* pSize);
Status tevsIIRGetStateSize32s_BiQuad_16s32f(int numBq, int* pSize);
Status tevsIIRGetStateSize32sc_BiQuad_16sc(int numBq, int* pSize);
Status tevsIIRGetStateSize32sc_BiQuad_16sc32fc(int numBq, int* pSize);
Status tevsIIRGetStateSize_BiQuad_64f(int numBq, int* pSize);
Status tevsIIRGetStateSize_BiQuad_64fc(int numBq, int* pSize);
Status tevsIIRGetStateSize64f_BiQuad_32f(int numBq, int* pSize);
Status tevsIIRGetStateSize64fc_BiQuad_32fc(int numBq, int* pSize);
Status tevsIIRGetStateSize64f_BiQuad_32s(int numBq, int* pSize);
Status tevsIIRGetStateSize64fc_BiQuad_32sc(int numBq, int* pSize);
Status tevsIIRGetStateSize64f_BiQuad_16s(int numBq, int* pSize);
Status tevsIIRGetStateSize64fc_BiQuad_16sc(int numBq, int* pSize);

Status tevsIIRInit_32f(IIRState_32f** ppState, const float* pTaps, int order, const float* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit_32fc(IIRState_32fc** ppState, const Complex32f* pTaps, int order, const Complex32f* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit32f_16s(IIRState32f_16s** ppState, const float* pTaps, int order, const float* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit32fc_16sc(IIRState32fc_16sc** ppState, const Complex32f* pTaps, int order, const Complex32f* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit32s_16s(IIRState32s_16s** ppState, const int32_t* pTaps, int order, int tapsFactor, const float* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit32s_16s32f(IIRState32s_16s32f** ppState, const float* pTaps, int order, const float* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit32sc_16sc(IIRState32sc_16sc** ppState, const Complex32s* pTaps, int order, int tapsFactor, const Complex32f* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit32sc_16sc32fc(IIRState32sc_16sc32fc** ppState, const Complex32f* pTaps, int order, const Complex32f* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit_64f(IIRState_64f** ppState, const double* pTaps, int order, const double* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit_64fc(IIRState_64fc** ppState, const Complex64f* pTaps, int order, const Complex64f* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit64f_32f(IIRState64f_32f** ppState, const double* pTaps, int order, const double* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit64fc_32fc(IIRState64fc_32fc** ppState, const Complex64f* pTaps, int order, const Complex64f* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit64f_32s(IIRState64f_32s** ppState, const double* pTaps, int order, const double* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit64fc_32sc(IIRState64fc_32sc** ppState, const Complex64f* pTaps, int order, const Complex64f* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit64f_16s(IIRState64f_16s** ppState, const double* pTaps, int order, const double* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit64fc_16sc(IIRState64fc_16sc** ppState, const Complex64f* pTaps, int order, const Complex64f* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit_BiQuad_32f(IIRState_32f** ppState, const float* pTaps, int numBq, const float* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit_BiQuad_32fc(IIRState_32fc** ppState, const Complex32f* pTaps, int numBq, const Complex32f* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit32f_BiQuad_16s(IIRState32f_16s** ppState, const float* pTaps, int numBq, const float* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit32fc_BiQuad_16sc(IIRState32fc_16sc** ppState, const Complex32f* pTaps, int numBq, const Complex32f* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit32s_BiQuad_16s(IIRState32s_16s** ppState, const int32_t* pTaps, int numBq, int tapsFactor, const float* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit32s_BiQuad_16s32f(IIRState32s_16s32f** ppState, const float* pTaps, int numBq, const float* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit32sc_BiQuad_16sc(IIRState32sc_16sc** ppState, const Complex32s* pTaps, int numBq, int tapsFactor, const Complex32f* pDlyLine,
                                   uint8_t* pBuffer);
Status tevsIIRInit32sc_BiQuad_16sc32fc(IIRState32sc_16sc32fc** ppState, const Complex32f* pTaps, int numBq, const Complex32f* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit_BiQuad_64f(IIRState_64f** ppState, const double* pTaps, int numBq, const double* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit_BiQuad_64fc(IIRState_64fc** ppState, const Complex64f* pTaps, int numBq, const Complex64f* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit64f_BiQuad_32f(IIRState64f_32f** ppState, const double* pTaps, int numBq, const double* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit64fc_BiQuad_32fc(IIRState64fc_32fc** ppState, const Complex64f* pTaps, int numBq, const Complex64f* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit64f_BiQuad_32s(IIRState64f_32s** ppState, const double* pTaps, int numBq, const double* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit64fc_BiQuad_32sc(IIRState64fc_32sc** ppState, const Complex64f* pTaps, int numBq, const Complex64f* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit64f_BiQuad_16s(IIRState64f_16s** ppState, const double* pTaps, int numBq, const double* pDlyLine, uint8_t* pBuffer);
Status tevsIIRInit64fc_BiQuad_16sc(IIRState64fc_16sc** ppState, const Complex64f* pTaps, int numBq, const Complex64f* pDlyLine, uint8_t* pBuffer);

Status tevsIIRInitAlloc_32f(IIRState_32f** ppState, const float* pTaps, int order, const float* pDlyLine);
Status tevsIIRInitAlloc_32fc(IIRState_32fc** ppState, const Complex32f* pTaps, int order, const Complex32f* pDlyLine);
Status tevsIIRInitAlloc32f_16s(IIRState32f_16s** ppState, const float* pTaps, int order, const float* pDlyLine);
Status tevsIIRInitAlloc32fc_16sc(IIRState32fc_16sc** ppState, const Complex32f* pTaps, int order, const Complex32f* pDlyLine);
Status tevsIIRInitAlloc32s_16s(IIRState32s_16s** ppState, const int32_t* pTaps, int order, int tapsFactor, const float* pDlyLine);
Status tevsIIRInitAlloc32s_16s32f(IIRState32s_16s32f** ppState, const float* pTaps, int order, const float* pDlyLine);
Status tevsIIRInitAlloc32sc_16sc(IIRState32sc_16sc** ppState, const Complex32s* pTaps, int order, int tapsFactor, const Complex32f* pDlyLine);
Status tevsIIRInitAlloc32sc_16sc32fc(IIRState32sc_16sc32fc** ppState, const Complex32f* pTaps, int order, const Complex32f* pDlyLine);
Status tevsIIRInitAlloc_64f(IIRState_64f** ppState, const double* pTaps, int order, const double* pDlyLine);
Status tevsIIRInitAlloc_64fc(IIRState_64fc** ppState, const Complex64f* pTaps, int order, const Complex64f* pDlyLine);
Status tevsIIRInitAlloc64f_32f(IIRState64f_32f** ppState, const double* pTaps, int order, const double* pDlyLine);
Status tevsIIRInitAlloc64fc_32fc(IIRState64fc_32fc** ppState, const Complex64f* pTaps, int order, const Complex64f* pDlyLine);
Status tevsIIRInitAlloc64f_32s(IIRState64f_32s** ppState, const double* pTaps, int order, const double* pDlyLine);
Status tevsIIRInitAlloc64fc_32sc(IIRState64fc_32sc** ppState, const Complex64f* pTaps, int order, const Complex64f* pDlyLine);
Status tevsIIRInitAlloc64f_16s(IIRState64f_16s** ppState, const double* pTaps, int order, const double* pDlyLine);
Status tevsIIRInitAlloc64fc_16sc(IIRState64fc_16sc** ppState, const Complex64f* pTaps, int order, const Complex64f* pDlyLine);
Status tevsIIRInitAlloc_BiQuad_32f(IIRState_32f** ppState, const float* pTaps, int numBq, const float* pDlyLine);
Status tevsIIRInitAlloc_BiQuad_32fc(IIRState_32fc** ppState, const Complex32f* pTaps, int numBq, const Complex32f* pDlyLine);
Status tevsIIRInitAlloc32f_BiQuad_16s(IIRState32f_16s** ppState, const float* pTaps, int numBq, const float* pDlyLine);
Status tevsIIRInitAlloc32fc_BiQuad_16sc(IIRState32fc_16sc** ppState, const Complex32f* pTaps, int numBq, const Complex32f* pDlyLine);
Status tevsIIRInitAlloc32s_BiQuad_16s(IIRState32s_16s** ppState, const int32_t* pTaps, int numBq, int tapsFactor, const float* pDlyLine);
Status tevsIIRInitAlloc32s_BiQuad_16s32f(IIRState32s_16s32f** ppState, const float* pTaps, int numBq, const float* pDlyLine);
Status tevsIIRInitAlloc32sc_BiQuad_16sc(IIRState32sc_16sc** ppState, const Complex32s* pTaps, int numBq, int tapsFactor, const Complex32f* pDlyLine);
Status tevsIIRInitAlloc32sc_BiQuad_16sc32fc(IIRState32sc_16sc32fc** ppState, const Complex32f* pTaps, int numBq, const Complex32f* pDlyLine);
Status tevsIIRInitAlloc_BiQuad_64f(IIRState_64f** ppState, const double* pTaps, int numBq, const double* pDlyLine);
Status tevsIIRInitAlloc_BiQuad_64fc(IIRState_64fc** ppState, const Complex64f* pTaps, int numBq, const Complex64f* pDlyLine);
Status tevsIIRInitAlloc64f_BiQuad_32f(IIRState64f_32f** ppState, const double* pTaps, int numBq, const double* pDlyLine);
Status tevsIIRInitAlloc64fc_BiQuad_32fc(IIRState64fc_32fc** ppState, const Complex64f* pTaps, int numBq, const Complex64f* pDlyLine);
Status tevsIIRInitAlloc64f_BiQuad_32s(IIRState64f_32s** ppState, const double* pTaps, int numBq, const double* pDlyLine);
Status tevsIIRInitAlloc64fc_BiQuad_32sc(IIRState64fc_32sc** ppState, const Complex64f* pTaps, int numBq, const Complex64f* pDlyLine);
Status tevsIIRInitAlloc64f_BiQuad_16s(IIRState64f_16s** ppState, const double* pTaps, int numBq, const double* pDlyLine);
Status tevsIIRInitAlloc64fc_BiQuad_16sc(IIRState64fc_16sc** ppState, const Complex64f* pTaps, int numBq, const Complex64f* pDlyLine);

Status tevsIIRFree_32f(IIRState_32f* pState);
Status tevsIIRFree_32fc(IIRState_32fc* pState);
Status tevsIIRFree32f_16s(IIRState32f_16s* pState);
Status tevsIIRFree32fc_16sc(IIRState32fc_16sc* pState);
Status tevsIIRFree32s_16s(IIRState32s_16s* pState);
Status tevsIIRFree32s_16s32f(IIRState32s_16s32f* pState);
Status tevsIIRFree32sc_16sc(IIRState32sc_16sc* pState);
Status tevsIIRFree32sc_16sc32fc(IIRState32sc_16sc32fc* pState);
Status tevsIIRFree_64f(IIRState_64f* pState);
Status tevsIIRFree_64fc(IIRState_64fc* pState);
Status tevsIIRFree64f_32f(IIRState64f_32f* pState);
Status tevsIIRFree64fc_32fc(IIRState64fc_32fc* pState);
Status tevsIIRFree64f_32s(IIRState64f_32s* pState);
Status tevsIIRFree64fc_32sc(IIRState64fc_32sc* pState);
Status tevsIIRFree64f_16s(IIRState64f_16s* pState);
Status tevsIIRFree64fc_16sc(IIRState64fc_16sc* pState);

Status tevsIIRSetTaps_32f(const float* pTaps, IIRState_32f* pState);
Status tevsIIRSetTaps_32fc(const Complex32f* pTaps, IIRState_32fc* pState);
Status tevsIIRSetTaps32f_16s(const float* pTaps, IIRState32f_16s* pState);
Status tevsIIRSetTaps32fc_16sc(const Complex32f* pTaps, IIRState32fc_16sc* pState);
Status tevsIIRSetTaps32s_16s(const int32_t* pTaps, IIRState32s_16s* pState, int tapsFactor);
Status tevsIIRSetTaps32s_16s32f(const float* pTaps, IIRState32s_16s32f* pState);
Status tevsIIRSetTaps32sc_16sc(const Complex32s* pTaps, IIRState32sc_16sc* pState, int tapsFactor);
Status tevsIIRSetTaps32sc_16sc32fc(const Complex32f* pTaps, IIRState32sc_16sc32fc* pState);
Status tevsIIRSetTaps_64f(const double* pTaps, IIRState_64f* pState);
Status tevsIIRSetTaps_64fc(const Complex64f* pTaps, IIRState_64fc* pState);
Status tevsIIRSetTaps64f_32f(const double* pTaps, IIRState64f_32f* pState);
Status tevsIIRSetTaps64fc_32fc(const Complex64f* pTaps, IIRState64fc_32fc* pState);
Status tevsIIRSetTaps64f_32s(const double* pTaps, IIRState64f_32s* pState);
Status tevsIIRSetTaps64fc_32sc(const Complex64f* pTaps, IIRState64fc_32sc* pState);
Status tevsIIRSetTaps64f_16s(const double* pTaps, IIRState64f_16s* pState);
Status tevsIIRSetTaps64fc_16sc(const Complex64f* pTaps, IIRState64fc_16sc* pState);

Status tevsIIRSetDlyLine_32f(IIRState_32f* pState, const float* pDlyLine);
Status tevsIIRSetDlyLine_32fc(IIRState_32fc* pState, const Complex32f* pDlyLine);
Status tevsIIRSetDlyLine32f_16s(IIRState32f_16s* pState, const float* pDlyLine);
Status tevsIIRSetDlyLine32fc_16sc(IIRState32fc_16sc* pState, const Complex32f* pDlyLine);
Status tevsIIRSetDlyLine32s_16s(IIRState32s_16s* pState, const float* pDlyLine);
Status tevsIIRSetDlyLine32sc_16sc(IIRState32sc_16sc* pState, const Complex32f* pDlyLine);
Status tevsIIRSetDlyLine_64f(IIRState_64f* pState, const double* pDlyLine);
Status tevsIIRSetDlyLine_64fc(IIRState_64fc* pState, const Complex64f* pDlyLine);
Status tevsIIRSetDlyLine64f_32f(IIRState64f_32f* pState, const double* pDlyLine);
Status tevsIIRSetDlyLine64fc_32fc(IIRState64fc_32fc* pState, const Complex64f* pDlyLine);
Status tevsIIRSetDlyLine64f_32s(IIRState64f_32s* pState, const double* pDlyLine);
Status tevsIIRSetDlyLine64fc_32sc(IIRState64fc_32sc* pState, const Complex64f* pDlyLine);
Status tevsIIRSetDlyLine64f_16s(IIRState64f_16s* pState, const double* pDlyLine);
Status tevsIIRSetDlyLine64fc_16sc(IIRState64fc_16sc* pState, const Complex64f* pDlyLine);

Status tevsIIRGetDlyLine_32f(const IIRState_32f* pState, float* pDlyLine);
Status tevsIIRGetDlyLine_32fc(const IIRState_32fc* pState, Complex32f* pDlyLine);
Status tevsIIRGetDlyLine32f_16s(const IIRState32f_16s* pState, float* pDlyLine);
Status tevsIIRGetDlyLine32fc_16sc(const IIRState32fc_16sc* pState, Complex32f* pDlyLine);
Status tevsIIRGetDlyLine32s_16s(const IIRState32s_16s* pState, float* pDlyLine);
Status tevsIIRGetDlyLine32sc_16sc(const IIRState32sc_16sc* pState, Complex32f* pDlyLine);
Status tevsIIRGetDlyLine_64f(const IIRState_64f* pState, double* pDlyLine);
Status tevsIIRGetDlyLine_64fc(const IIRState_64fc* pState, Complex64f* pDlyLine);
Status tevsIIRGetDlyLine64f_32f(const IIRState64f_32f* pState, double* pDlyLine);
Status tevsIIRGetDlyLine64fc_32fc(const IIRState64fc_32fc* pState, Complex64f* pDlyLine);
Status tevsIIRGetDlyLine64f_32s(const IIRState64f_32s* pState, double* pDlyLine);
Status tevsIIRGetDlyLine64fc_32sc(const IIRState64fc_32sc* pState, Complex64f* pDlyLine);
Status tevsIIRGetDlyLine64f_16s(const IIRState64f_16s* pState, double* pDlyLine);
Status tevsIIRGetDlyLine64fc_16sc(const IIRState64fc_16sc* pState, Complex64f* pDlyLine);

Status tevsIIR_32f(const float* pSrc, float* pDst, int len, IIRState_32f* pState);
Status tevsIIR_32f_I(float* pSrcDst, int len, IIRState_32f* pState);
Status tevsIIR_32fc(const Complex32f* pSrc, Complex32f* pDst, int len, IIRState_32fc* pState);
Status tevsIIR_32fc_I(Complex32f* pSrcDst, int len, IIRState_32fc* pState);
Status tevsIIR32f_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int len, IIRState32f_16s* pState, int scaleFactor);
Status tevsIIR32f_16s_ISfs(int16_t* pSrcDst, int len, IIRState32f_16s* pState, int scaleFactor);
Status tevsIIR32fc_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int len, IIRState32fc_16sc* pState, int scaleFactor);
Status tevsIIR32fc_16sc_ISfs(Complex16s* pSrcDst, int len, IIRState32fc_16sc* pState, int scaleFactor);
Status tevsIIR32s_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int len, IIRState32s_16s* pState, int scaleFactor);
Status tevsIIR32s_16s_ISfs(int16_t* pSrcDst, int len, IIRState32s_16s* pState, int scaleFactor);
Status tevsIIR32sc_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int len, IIRState32sc_16sc* pState, int scaleFactor);
Status tevsIIR32sc_16sc_ISfs(Complex16s* pSrcDst, int len, IIRState32sc_16sc* pState, int scaleFactor);
Status tevsIIR_64f(const double* pSrc, double* pDst, int len, IIRState_64f* pState);
Status tevsIIR_64f_I(double* pSrcDst, int len, IIRState_64f* pState);
Status tevsIIR_64fc(const Complex64f* pSrc, Complex64f* pDst, int len, IIRState_64fc* pState);
Status tevsIIR_64fc_I(Complex64f* pSrcDst, int len, IIRState_64fc* pState);
Status tevsIIR64f_32f(const float* pSrc, float* pDst, int len, IIRState64f_32f* pState);
Status tevsIIR64f_32f_I(float* pSrcDst, int len, IIRState64f_32f* pState);
Status tevsIIR64fc_32fc(const Complex32f* pSrc, Complex32f* pDst, int len, IIRState64fc_32fc* pState);
Status tevsIIR64fc_32fc_I(Complex32f* pSrcDst, int len, IIRState64fc_32fc* pState);
Status tevsIIR64f_32s_Sfs(const int32_t* pSrc, int32_t* pDst, int len, IIRState64f_32s* pState, int scaleFactor);
Status tevsIIR64f_32s_ISfs(int32_t* pSrcDst, int len, IIRState64f_32s* pState, int scaleFactor);
Status tevsIIR64fc_32sc_Sfs(const Complex32s* pSrc, Complex32s* pDst, int len, IIRState64fc_32sc* pState, int scaleFactor);
Status tevsIIR64fc_32sc_ISfs(Complex32s* pSrcDst, int len, IIRState64fc_32sc* pState, int scaleFactor);
Status tevsIIR64f_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int len, IIRState64f_16s* pState, int scaleFactor);
Status tevsIIR64f_16s_ISfs(int16_t* pSrcDst, int len, IIRState64f_16s* pState, int scaleFactor);
Status tevsIIR64fc_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int len, IIRState64fc_16sc* pState, int scaleFactor);
Status tevsIIR64fc_16sc_ISfs(Complex16s* pSrcDst, int len, IIRState64fc_16sc* pState, int scaleFactor);

Status tevsIIROne_32f(float src, float* pDst, IIRState_32f* pState);
Status tevsIIROne_32fc(Complex32f src, Complex32f* pDst, IIRState_32fc* pState);
Status tevsIIROne32f_16s_Sfs(int16_t src, int16_t* pDst, IIRState32f_16s* pState, int scaleFactor);
Status tevsIIROne32fc_16sc_Sfs(Complex16s src, Complex16s* pDst, IIRState32fc_16sc* pState, int scaleFactor);
Status tevsIIROne32s_16s_Sfs(int16_t src, int16_t* pDst, IIRState32s_16s* pState, int scaleFactor);
Status tevsIIROne32sc_16sc_Sfs(Complex16s src, Complex16s* pDst, IIRState32sc_16sc* pState, int scaleFactor);
Status tevsIIROne_64f(double src, double* pDst, IIRState_64f* pState);
Status tevsIIROne_64fc(Complex64f src, Complex64f* pDst, IIRState_64fc* pState);
Status tevsIIROne64f_32f(float src, float* pDst, IIRState64f_32f* pState);
Status tevsIIROne64fc_32fc(Complex32f src, Complex32f* pDst, IIRState64fc_32fc* pState);
Status tevsIIROne64f_32s_Sfs(int32_t src, int32_t* pDst, IIRState64f_32s* pState, int scaleFactor);
Status tevsIIROne64fc_32sc_Sfs(Complex32s src, Complex32s* pDst, IIRState64fc_32sc* pState, int scaleFactor);
Status tevsIIROne64f_16s_Sfs(int16_t src, int16_t* pDst, IIRState64f_16s* pState, int scaleFactor);
Status tevsIIROne64fc_16sc_Sfs(Complex16s src, Complex16s* pDst, IIRState64fc_16sc* pState, int scaleFactor);

/* ---- IIR without a record: 16-bit samples and taps, 32-bit state ----------------------------------------------------
 *
 * pTaps           arbitrary order, 2 (order + 1) values:    b0 b1 .. bN   s a1 .. aN
 *                 sections, 6 numBq values:                 b0 b1 b2 s a1 a2   b0 b1 b2 s a1 a2   ... with the exponent
 *                 s in the place of a0, which stands for a0 = 2^s. As a shift count it is taken modulo 32.
 * pDlyLine        the state, read and written: d[0] .. d[order-1], or d[0] d[1] of each section, 32 bits each
 *
 * One sample, in 32-bit integers that wrap, with arithmetic shifts and d[N] = 0:
 *
 *     v = b0 x + d[0]
 *     y = (v + 2^((s+31) mod 32) - 1 + (v >> s) % 2) >> s            that is v * 2^-s to nearest, ties to even, for s >
 *                                                                    0
 *     d[k] = b_(k+1) x - a_(k+1) y + d[k+1]                         for k = 0 .. N-1
 *
 * The output is y saturated to 16 bits; what is fed back is y as it is. For s = 0 the term added is 2^31, whose sign is
 * what the output then shows: 0 gives 32767, 1 gives -32768. Of order 0, without a state, y = (v + 2^((s+31) mod 32))
 * >> s: halves round up. Each section takes the saturated output of the one before.
 *
 * IIR_Direct, IIROne_Direct, IIR_BiQuadDirect
 *                 Return StatusOk, or the first that applies: StatusFilterOrder (order < 0, numBq < 1), StatusNullPtr
 *                 (any pointer), StatusTapsFactor (s < 0, in any section), StatusBadSize (len < 1). Equal pointers
 *                 filter in place, other overlaps do not work. On failure nothing is written.
 */
Status tevsIIROne_Direct_16s(int16_t src, int16_t* pDst, const int16_t* pTaps, int order, int32_t* pDlyLine);
Status tevsIIROne_Direct_16s_I(int16_t* pSrcDst, const int16_t* pTaps, int order, int32_t* pDlyLine);
Status tevsIIR_Direct_16s(const int16_t* pSrc, int16_t* pDst, int len, const int16_t* pTaps, int order, int32_t* pDlyLine);
Status tevsIIR_Direct_16s_I(int16_t* pSrcDst, int len, const int16_t* pTaps, int order, int32_t* pDlyLine);

Status tevsIIR_BiQuadDirect_16s(const int16_t* pSrc, int16_t* pDst, int len, const int16_t* pTaps, int numBq, int32_t* pDlyLine);
Status tevsIIR_BiQuadDirect_16s_I(int16_t* pSrcDst, int len, const int16_t* pTaps, int numBq, int32_t* pDlyLine);

TEVS_END

#endif
