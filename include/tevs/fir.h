#ifndef TEVS_FIR_H
#define TEVS_FIR_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- FIR: finite impulse response filter ----------------------------------------------------------------------------
 *
 *     y[t] = sum over k = 0 .. tapsLen-1 of  h[k] * x[t-k]
 *
 * A record holds the taps h and the delay line, the last tapsLen inputs, and filters a stream in blocks of any length,
 * or sample by sample; the two may be mixed. Wherever a stream is cut into blocks, direct filtering gives the same
 * results to the bit. A record is used where it was built: it must not be copied or moved.
 *
 *                   taps               samples             sums in           by FFT from   threads above
 *     _32f          single             single              single            64 taps       160000 samples
 *     _32fc         complex single     complex single      single            16             80000
 *     32f_16s       single             16-bit              single            64              1600
 *     32fc_16sc     complex single     complex 16-bit      single            16               800
 *     32s_16s       32-bit, exponent   16-bit              64 bits, exact    -                  -
 *     32sc_16sc     complex 32-bit     complex 16-bit      64 bits, exact    -                  -
 *     _64f          double             double              double            32              1600
 *     _64fc         complex double     complex double      double            16               800
 *     64f_32f       double             single              double            32              1600
 *     64fc_32fc     complex double     complex single      double            16               800
 *     64f_32s       double             32-bit              double            32              1600     also named _32s
 *     64fc_32sc     complex double     complex 32-bit      double            16               800
 *     64f_16s       double             16-bit              double            32                 -
 *     64fc_16sc     complex double     complex 16-bit      double            16                 -
 *
 * pTaps           h[0] .. h[tapsLen-1] in the order of the formula; tapsLen >= 1
 * tapsFactor      of 32-bit taps: they stand for pTaps[k] * 2^tapsFactor. They are kept in 16 bits: all are shifted to
 *                 the right by one count, the least that brings the largest magnitude below 32767. 32s_16s32f,
 *                 32sc_16sc32fc build the same records from single-precision taps: all are multiplied by one power of
 *                 two, which brings the largest magnitude (but infinities) to between 16383.5 and 32767, and rounded to
 *                 nearest, halves away from zero. NaN counts as 0.
 * scaleFactor     of integer samples: results are stored times 2^-scaleFactor, to nearest, ties to even, saturated; any
 *                 value will do
 * pDlyLine        the tapsLen samples before the next input, newest first: x[-1] .. x[-tapsLen]. The oldest is kept,
 *                 though no output needs it. Where a record is built or set, NULL stands for silence.
 * pSrc, pDst      numIters >= 1 samples each; equal pointers filter in place, other overlaps do not work
 *
 * GetStateSize    The bytes of a record in the caller's memory, at any address: most of them for the samples that a
 *                 block in place or of another type goes through, so 16784 for _32f with 8 taps and one thread. The
 *                 size depends on the thread count (tevcore.h) at the time of the call, which Init need not find again.
 *                 Returns StatusOk, StatusNullPtr (pSize), StatusFilterLength (tapsLen < 1, or so large that the size
 *                 is beyond INT_MAX).
 * Init            Builds a record in pBuffer and stores its address. Such a record filters directly at every length.
 *                 Returns StatusOk, StatusNullPtr (ppState, pTaps, pBuffer), StatusFilterLength (as GetStateSize for
 *                 one thread).
 * InitAlloc       The same in memory of its own. With as many taps as the table says, blocks of 512 samples and more
 *                 are filtered by FFT. Returns StatusOk, StatusNullPtr (ppState, pTaps), StatusFilterLength (tapsLen <
 *                 1), StatusFftOrder (from 2^29 taps on, where there would be an FFT), StatusNoMemory.
 * Free            Gives back what InitAlloc took, and clears the record's identifier before. A record in the caller's
 *                 memory is left as it is and may still be used, unlike a transform's, which FFTFree makes invalid.
 *                 Returns StatusOk, StatusNullPtr, StatusContextMismatch (not a record of this type).
 * SetTaps         Other taps, as many as before; the delay line stays. GetTaps reads them back: of 16-bit taps the 16
 *                 bits, or, as single precision, what they stand for.
 * SetDlyLine      Another past. GetDlyLine reads it. All four: StatusOk, StatusNullPtr (either pointer; pDlyLine of
 *                 SetDlyLine may be NULL), StatusContextMismatch.
 * FIR             Filters a block. Returns StatusOk, StatusNullPtr (any pointer), StatusBadSize (numIters < 1),
 *                 StatusContextMismatch.
 * FIROne          Filters one sample. Returns StatusOk, StatusNullPtr, StatusContextMismatch.
 *
 * On failure nothing is written: no output, no record, no pointer to one, no taps.
 *
 * Threads         One call per record at a time. Blocks of more samples than the table says are shared out over an
 *                 OpenMP team of at most as many threads as threads_omp_of_n_tev said when the record was built; the
 *                 results are the same for any number.
 * Method          Direct: each output summed in one order whatever the other arguments. FFT: overlap-save with
 *                 transforms of four times the largest power of two not above tapsLen (Oppenheim and Schafer,
 *                 Discrete-Time Signal Processing, ch. 8); the error is then relative to the largest output of a
 *                 transform's block, and an infinity or NaN among its inputs reaches all of its outputs, earlier ones
 *                 too. Results in floating point may differ in rounding between SIMD levels, between blocks and single
 *                 samples, and between blocks filtered by FFT and directly. A record from Init, or blocks of less than
 *                 512 samples, are filtered directly whatever the taps.
 * Memory          Of these calls only InitAlloc returns StatusNoMemory. A record from InitAlloc owns what its blocks
 *                 are transformed in. A block that threads share in place, or with samples of another type than the
 *                 sums, is filtered directly by way of memory taken for the call; without any, one thread filters it.
 *                 The threads themselves are the OpenMP runtime's, which ends the process where it has no memory to
 *                 start them with.
 */
typedef struct FIRState_32f FIRState_32f;
typedef struct FIRState_32fc FIRState_32fc;
typedef struct FIRState32f_16s FIRState32f_16s;
typedef struct FIRState32fc_16sc FIRState32fc_16sc;
typedef struct FIRState32s_16s FIRState32s_16s;
typedef FIRState32s_16s FIRState32s_16s32f;
typedef struct FIRState32sc_16sc FIRState32sc_16sc;
typedef FIRState32sc_16sc FIRState32sc_16sc32fc;
typedef struct FIRState_64f FIRState_64f;
typedef struct FIRState_64fc FIRState_64fc;
typedef struct FIRState64f_32f FIRState64f_32f;
typedef struct FIRState64fc_32fc FIRState64fc_32fc;
typedef struct FIRState64f_32s FIRState64f_32s;
typedef FIRState64f_32s FIRState_32s;
typedef struct FIRState64fc_32sc FIRState64fc_32sc;
typedef struct FIRState64f_16s FIRState64f_16s;
typedef struct FIRState64fc_16sc FIRState64fc_16sc;

/* One type of record serves filters of one and of several rates. */
typedef FIRState_32f FIRMRState_32f;
typedef FIRState_32fc FIRMRState_32fc;
typedef FIRState32f_16s FIRMRState32f_16s;
typedef FIRState32fc_16sc FIRMRState32fc_16sc;
typedef FIRState32s_16s FIRMRState32s_16s;
typedef FIRState32s_16s32f FIRMRState32s_16s32f;
typedef FIRState32sc_16sc FIRMRState32sc_16sc;
typedef FIRState32sc_16sc32fc FIRMRState32sc_16sc32fc;
typedef FIRState_64f FIRMRState_64f;
typedef FIRState_64fc FIRMRState_64fc;
typedef FIRState64f_32f FIRMRState64f_32f;
typedef FIRState64fc_32fc FIRMRState64fc_32fc;
typedef FIRState64f_32s FIRMRState64f_32s;
typedef FIRState_32s FIRMRState_32s;
typedef FIRState64fc_32sc FIRMRState64fc_32sc;
typedef FIRState64f_16s FIRMRState64f_16s;
typedef FIRState64fc_16sc FIRMRState64fc_16sc;

Status tevsFIRGetStateSize_32f(int tapsLen, int* pSize);
Status tevsFIRGetStateSize_32fc(int tapsLen, int* pSize);
Status tevsFIRGetStateSize32f_16s(int tapsLen, int* pSize);
Status tevsFIRGetStateSize32fc_16sc(int tapsLen, int* pSize);
Status tevsFIRGetStateSize32s_16s(int tapsLen, int* pSize);
Status tevsFIRGetStateSize32s_16s32f(int tapsLen, int* pSize);
Status tevsFIRGetStateSize32sc_16sc(int tapsLen, int* pSize);
Status tevsFIRGetStateSize32sc_16sc32fc(int tapsLen, int* pSize);
Status tevsFIRGetStateSize_64f(int tapsLen, int* pSize);
Status tevsFIRGetStateSize_64fc(int tapsLen, int* pSize);
Status tevsFIRGetStateSize64f_32f(int tapsLen, int* pSize);
Status tevsFIRGetStateSize64fc_32fc(int tapsLen, int* pSize);
Status tevsFIRGetStateSize64f_32s(int tapsLen, int* pSize);
Status tevsFIRGetStateSize_32s(int tapsLen, int* pSize);
Status tevsFIRGetStateSize64fc_32sc(int tapsLen, int* pSize);
Status tevsFIRGetStateSize64f_16s(int tapsLen, int* pSize);
Status tevsFIRGetStateSize64fc_16sc(int tapsLen, int* pSize);

Status tevsFIRInit_32f(FIRState_32f** ppState, const float* pTaps, int tapsLen, const float* pDlyLine, uint8_t* pBuffer);
Status tevsFIRInit_32fc(FIRState_32fc** ppState, const Complex32f* pTaps, int tapsLen, const Complex32f* pDlyLine, uint8_t* pBuffer);
Status tevsFIRInit32f_16s(FIRState32f_16s** ppState, const float* pTaps, int tapsLen, const int16_t* pDlyLine, uint8_t* pBuffer);
Status tevsFIRInit32fc_16sc(FIRState32fc_16sc** ppState, const Complex32f* pTaps, int tapsLen, const Complex16s* pDlyLine, uint8_t* pBuffer);
Status tevsFIRInit32s_16s(FIRState32s_16s** ppState, const int32_t* pTaps, int tapsLen, int tapsFactor, const int16_t* pDlyLine, uint8_t* pBuffer);
Status tevsFIRInit32s_16s32f(FIRState32s_16s32f** ppState, const float* pTaps, int tapsLen, const int16_t* pDlyLine, uint8_t* pBuffer);
Status tevsFIRInit32sc_16sc(FIRState32sc_16sc** ppState, const Complex32s* pTaps, int tapsLen, int tapsFactor, const Complex16s* pDlyLine, uint8_t* pBuffer);
Status tevsFIRInit32sc_16sc32fc(FIRState32sc_16sc32fc** ppState, const Complex32f* pTaps, int tapsLen, const Complex16s* pDlyLine, uint8_t* pBuffer);
Status tevsFIRInit_64f(FIRState_64f** ppState, const double* pTaps, int tapsLen, const double* pDlyLine, uint8_t* pBuffer);
Status tevsFIRInit_64fc(FIRState_64fc** ppState, const Complex64f* pTaps, int tapsLen, const Complex64f* pDlyLine, uint8_t* pBuffer);
Status tevsFIRInit64f_32f(FIRState64f_32f** ppState, const double* pTaps, int tapsLen, const float* pDlyLine, uint8_t* pBuffer);
Status tevsFIRInit64fc_32fc(FIRState64fc_32fc** ppState, const Complex64f* pTaps, int tapsLen, const Complex32f* pDlyLine, uint8_t* pBuffer);
Status tevsFIRInit64f_32s(FIRState64f_32s** ppState, const double* pTaps, int tapsLen, const int32_t* pDlyLine, uint8_t* pBuffer);
Status tevsFIRInit_32s(FIRState_32s** ppState, const double* pTaps, int tapsLen, const int32_t* pDlyLine, uint8_t* pBuffer);
Status tevsFIRInit64fc_32sc(FIRState64fc_32sc** ppState, const Complex64f* pTaps, int tapsLen, const Complex32s* pDlyLine, uint8_t* pBuffer);
Status tevsFIRInit64f_16s(FIRState64f_16s** ppState, const double* pTaps, int tapsLen, const int16_t* pDlyLine, uint8_t* pBuffer);
Status tevsFIRInit64fc_16sc(FIRState64fc_16sc** ppState, const Complex64f* pTaps, int tapsLen, const Complex16s* pDlyLine, uint8_t* pBuffer);

Status tevsFIRInitAlloc_32f(FIRState_32f** ppState, const float* pTaps, int tapsLen, const float* pDlyLine);
Status tevsFIRInitAlloc_32fc(FIRState_32fc** ppState, const Complex32f* pTaps, int tapsLen, const Complex32f* pDlyLine);
Status tevsFIRInitAlloc32f_16s(FIRState32f_16s** ppState, const float* pTaps, int tapsLen, const int16_t* pDlyLine);
Status tevsFIRInitAlloc32fc_16sc(FIRState32fc_16sc** ppState, const Complex32f* pTaps, int tapsLen, const Complex16s* pDlyLine);
Status tevsFIRInitAlloc32s_16s(FIRState32s_16s** ppState, const int32_t* pTaps, int tapsLen, int tapsFactor, const int16_t* pDlyLine);
Status tevsFIRInitAlloc32s_16s32f(FIRState32s_16s32f** ppState, const float* pTaps, int tapsLen, const int16_t* pDlyLine);
Status tevsFIRInitAlloc32sc_16sc(FIRState32sc_16sc** ppState, const Complex32s* pTaps, int tapsLen, int tapsFactor, const Complex16s* pDlyLine);
Status tevsFIRInitAlloc32sc_16sc32fc(FIRState32sc_16sc32fc** ppState, const Complex32f* pTaps, int tapsLen, const Complex16s* pDlyLine);
Status tevsFIRInitAlloc_64f(FIRState_64f** ppState, const double* pTaps, int tapsLen, const double* pDlyLine);
Status tevsFIRInitAlloc_64fc(FIRState_64fc** ppState, const Complex64f* pTaps, int tapsLen, const Complex64f* pDlyLine);
Status tevsFIRInitAlloc64f_32f(FIRState64f_32f** ppState, const double* pTaps, int tapsLen, const float* pDlyLine);
Status tevsFIRInitAlloc64fc_32fc(FIRState64fc_32fc** ppState, const Complex64f* pTaps, int tapsLen, const Complex32f* pDlyLine);
Status tevsFIRInitAlloc64f_32s(FIRState64f_32s** ppState, const double* pTaps, int tapsLen, const int32_t* pDlyLine);
Status tevsFIRInitAlloc_32s(FIRState_32s** ppState, const double* pTaps, int tapsLen, const int32_t* pDlyLine);
Status tevsFIRInitAlloc64fc_32sc(FIRState64fc_32sc** ppState, const Complex64f* pTaps, int tapsLen, const Complex32s* pDlyLine);
Status tevsFIRInitAlloc64f_16s(FIRState64f_16s** ppState, const double* pTaps, int tapsLen, const int16_t* pDlyLine);
Status tevsFIRInitAlloc64fc_16sc(FIRState64fc_16sc** ppState, const Complex64f* pTaps, int tapsLen, const Complex16s* pDlyLine);

Status tevsFIRFree_32f(FIRState_32f* pState);
Status tevsFIRFree_32fc(FIRState_32fc* pState);
Status tevsFIRFree32f_16s(FIRState32f_16s* pState);
Status tevsFIRFree32fc_16sc(FIRState32fc_16sc* pState);
Status tevsFIRFree32s_16s(FIRState32s_16s* pState);
Status tevsFIRFree32s_16s32f(FIRState32s_16s32f* pState);
Status tevsFIRFree32sc_16sc(FIRState32sc_16sc* pState);
Status tevsFIRFree32sc_16sc32fc(FIRState32sc_16sc32fc* pState);
Status tevsFIRFree_64f(FIRState_64f* pState);
Status tevsFIRFree_64fc(FIRState_64fc* pState);
Status tevsFIRFree64f_32f(FIRState64f_32f* pState);
Status tevsFIRFree64fc_32fc(FIRState64fc_32fc* pState);
Status tevsFIRFree64f_32s(FIRState64f_32s* pState);
Status tevsFIRFree_32s(FIRState_32s* pState);
Status tevsFIRFree64fc_32sc(FIRState64fc_32sc* pState);
Status tevsFIRFree64f_16s(FIRState64f_16s* pState);
Status tevsFIRFree64fc_16sc(FIRState64fc_16sc* pState);

Status tevsFIRSetTaps_32f(const float* pTaps, FIRState_32f* pState);
Status tevsFIRSetTaps_32fc(const Complex32f* pTaps, FIRState_32fc* pState);
Status tevsFIRSetTaps32f_16s(const float* pTaps, FIRState32f_16s* pState);
Status tevsFIRSetTaps32fc_16sc(const Complex32f* pTaps, FIRState32fc_16sc* pState);
Status tevsFIRSetTaps32s_16s(const int32_t* pTaps, FIRState32s_16s* pState, int tapsFactor);
Status tevsFIRSetTaps32s_16s32f(const float* pTaps, FIRState32s_16s32f* pState);
Status tevsFIRSetTaps32sc_16sc(const Complex32s* pTaps, FIRState32sc_16sc* pState, int tapsFactor);
Status tevsFIRSetTaps32sc_16sc32fc(const Complex32f* pTaps, FIRState32sc_16sc32fc* pState);
Status tevsFIRSetTaps_64f(const double* pTaps, FIRState_64f* pState);
Status tevsFIRSetTaps_64fc(const Complex64f* pTaps, FIRState_64fc* pState);
Status tevsFIRSetTaps64f_32f(const double* pTaps, FIRState64f_32f* pState);
Status tevsFIRSetTaps64fc_32fc(const Complex64f* pTaps, FIRState64fc_32fc* pState);
Status tevsFIRSetTaps64f_32s(const double* pTaps, FIRState64f_32s* pState);
Status tevsFIRSetTaps_32s(const double* pTaps, FIRState_32s* pState);
Status tevsFIRSetTaps64fc_32sc(const Complex64f* pTaps, FIRState64fc_32sc* pState);
Status tevsFIRSetTaps64f_16s(const double* pTaps, FIRState64f_16s* pState);
Status tevsFIRSetTaps64fc_16sc(const Complex64f* pTaps, FIRState64fc_16sc* pState);

Status tevsFIRGetTaps_32f(const FIRState_32f* pState, float* pTaps);
Status tevsFIRGetTaps_32fc(const FIRState_32fc* pState, Complex32f* pTaps);
Status tevsFIRGetTaps32f_16s(const FIRState32f_16s* pState, float* pTaps);
Status tevsFIRGetTaps32fc_16sc(const FIRState32fc_16sc* pState, Complex32f* pTaps);
Status tevsFIRGetTaps32s_16s(const FIRState32s_16s* pState, int32_t* pTaps);
Status tevsFIRGetTaps32s_16s32f(const FIRState32s_16s32f* pState, float* pTaps);
Status tevsFIRGetTaps32sc_16sc(const FIRState32sc_16sc* pState, Complex32s* pTaps);
Status tevsFIRGetTaps32sc_16sc32fc(const FIRState32sc_16sc32fc* pState, Complex32f* pTaps);
Status tevsFIRGetTaps_64f(const FIRState_64f* pState, double* pTaps);
Status tevsFIRGetTaps_64fc(const FIRState_64fc* pState, Complex64f* pTaps);
Status tevsFIRGetTaps64f_32f(const FIRState64f_32f* pState, double* pTaps);
Status tevsFIRGetTaps64fc_32fc(const FIRState64fc_32fc* pState, Complex64f* pTaps);
Status tevsFIRGetTaps64f_32s(const FIRState64f_32s* pState, double* pTaps);
Status tevsFIRGetTaps_32s(const FIRState_32s* pState, double* pTaps);
Status tevsFIRGetTaps64fc_32sc(const FIRState64fc_32sc* pState, Complex64f* pTaps);
Status tevsFIRGetTaps64f_16s(const FIRState64f_16s* pState, double* pTaps);
Status tevsFIRGetTaps64fc_16sc(const FIRState64fc_16sc* pState, Complex64f* pTaps);

Status tevsFIRSetDlyLine_32f(FIRState_32f* pState, const float* pDlyLine);
Status tevsFIRSetDlyLine_32fc(FIRState_32fc* pState, const Complex32f* pDlyLine);
Status tevsFIRSetDlyLine32f_16s(FIRState32f_16s* pState, const int16_t* pDlyLine);
Status tevsFIRSetDlyLine32fc_16sc(FIRState32fc_16sc* pState, const Complex16s* pDlyLine);
Status tevsFIRSetDlyLine32s_16s(FIRState32s_16s* pState, const int16_t* pDlyLine);
Status tevsFIRSetDlyLine32sc_16sc(FIRState32sc_16sc* pState, const Complex16s* pDlyLine);
Status tevsFIRSetDlyLine_64f(FIRState_64f* pState, const double* pDlyLine);
Status tevsFIRSetDlyLine_64fc(FIRState_64fc* pState, const Complex64f* pDlyLine);
Status tevsFIRSetDlyLine64f_32f(FIRState64f_32f* pState, const float* pDlyLine);
Status tevsFIRSetDlyLine64fc_32fc(FIRState64fc_32fc* pState, const Complex32f* pDlyLine);
Status tevsFIRSetDlyLine64f_32s(FIRState64f_32s* pState, const int32_t* pDlyLine);
Status tevsFIRSetDlyLine_32s(FIRState_32s* pState, const int32_t* pDlyLine);
Status tevsFIRSetDlyLine64fc_32sc(FIRState64fc_32sc* pState, const Complex32s* pDlyLine);
Status tevsFIRSetDlyLine64f_16s(FIRState64f_16s* pState, const int16_t* pDlyLine);
Status tevsFIRSetDlyLine64fc_16sc(FIRState64fc_16sc* pState, const Complex16s* pDlyLine);

Status tevsFIRGetDlyLine_32f(const FIRState_32f* pState, float* pDlyLine);
Status tevsFIRGetDlyLine_32fc(const FIRState_32fc* pState, Complex32f* pDlyLine);
Status tevsFIRGetDlyLine32f_16s(const FIRState32f_16s* pState, int16_t* pDlyLine);
Status tevsFIRGetDlyLine32fc_16sc(const FIRState32fc_16sc* pState, Complex16s* pDlyLine);
Status tevsFIRGetDlyLine32s_16s(const FIRState32s_16s* pState, int16_t* pDlyLine);
Status tevsFIRGetDlyLine32sc_16sc(const FIRState32sc_16sc* pState, Complex16s* pDlyLine);
Status tevsFIRGetDlyLine_64f(const FIRState_64f* pState, double* pDlyLine);
Status tevsFIRGetDlyLine_64fc(const FIRState_64fc* pState, Complex64f* pDlyLine);
Status tevsFIRGetDlyLine64f_32f(const FIRState64f_32f* pState, float* pDlyLine);
Status tevsFIRGetDlyLine64fc_32fc(const FIRState64fc_32fc* pState, Complex32f* pDlyLine);
Status tevsFIRGetDlyLine64f_32s(const FIRState64f_32s* pState, int32_t* pDlyLine);
Status tevsFIRGetDlyLine_32s(const FIRState_32s* pState, int32_t* pDlyLine);
Status tevsFIRGetDlyLine64fc_32sc(const FIRState64fc_32sc* pState, Complex32s* pDlyLine);
Status tevsFIRGetDlyLine64f_16s(const FIRState64f_16s* pState, int16_t* pDlyLine);
Status tevsFIRGetDlyLine64fc_16sc(const FIRState64fc_16sc* pState, Complex16s* pDlyLine);

Status tevsFIR_32f(const float* pSrc, float* pDst, int numIters, FIRState_32f* pState);
Status tevsFIR_32f_I(float* pSrcDst, int numIters, FIRState_32f* pState);
Status tevsFIR_32fc(const Complex32f* pSrc, Complex32f* pDst, int numIters, FIRState_32fc* pState);
Status tevsFIR_32fc_I(Complex32f* pSrcDst, int numIters, FIRState_32fc* pState);
Status tevsFIR32f_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int numIters, FIRState32f_16s* pState, int scaleFactor);
Status tevsFIR32f_16s_ISfs(int16_t* pSrcDst, int numIters, FIRState32f_16s* pState, int scaleFactor);
Status tevsFIR32fc_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int numIters, FIRState32fc_16sc* pState, int scaleFactor);
Status tevsFIR32fc_16sc_ISfs(Complex16s* pSrcDst, int numIters, FIRState32fc_16sc* pState, int scaleFactor);
Status tevsFIR32s_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int numIters, FIRState32s_16s* pState, int scaleFactor);
Status tevsFIR32s_16s_ISfs(int16_t* pSrcDst, int numIters, FIRState32s_16s* pState, int scaleFactor);
Status tevsFIR32sc_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int numIters, FIRState32sc_16sc* pState, int scaleFactor);
Status tevsFIR32sc_16sc_ISfs(Complex16s* pSrcDst, int numIters, FIRState32sc_16sc* pState, int scaleFactor);
Status tevsFIR_64f(const double* pSrc, double* pDst, int numIters, FIRState_64f* pState);
Status tevsFIR_64f_I(double* pSrcDst, int numIters, FIRState_64f* pState);
Status tevsFIR_64fc(const Complex64f* pSrc, Complex64f* pDst, int numIters, FIRState_64fc* pState);
Status tevsFIR_64fc_I(Complex64f* pSrcDst, int numIters, FIRState_64fc* pState);
Status tevsFIR64f_32f(const float* pSrc, float* pDst, int numIters, FIRState64f_32f* pState);
Status tevsFIR64f_32f_I(float* pSrcDst, int numIters, FIRState64f_32f* pState);
Status tevsFIR64fc_32fc(const Complex32f* pSrc, Complex32f* pDst, int numIters, FIRState64fc_32fc* pState);
Status tevsFIR64fc_32fc_I(Complex32f* pSrcDst, int numIters, FIRState64fc_32fc* pState);
Status tevsFIR64f_32s_Sfs(const int32_t* pSrc, int32_t* pDst, int numIters, FIRState64f_32s* pState, int scaleFactor);
Status tevsFIR64f_32s_ISfs(int32_t* pSrcDst, int numIters, FIRState64f_32s* pState, int scaleFactor);
Status tevsFIR_32s_Sfs(const int32_t* pSrc, int32_t* pDst, int numIters, FIRState_32s* pState, int scaleFactor);
Status tevsFIR_32s_ISfs(int32_t* pSrcDst, int numIters, FIRState_32s* pState, int scaleFactor);
Status tevsFIR64fc_32sc_Sfs(const Complex32s* pSrc, Complex32s* pDst, int numIters, FIRState64fc_32sc* pState, int scaleFactor);
Status tevsFIR64fc_32sc_ISfs(Complex32s* pSrcDst, int numIters, FIRState64fc_32sc* pState, int scaleFactor);
Status tevsFIR64f_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int numIters, FIRState64f_16s* pState, int scaleFactor);
Status tevsFIR64f_16s_ISfs(int16_t* pSrcDst, int numIters, FIRState64f_16s* pState, int scaleFactor);
Status tevsFIR64fc_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int numIters, FIRState64fc_16sc* pState, int scaleFactor);
Status tevsFIR64fc_16sc_ISfs(Complex16s* pSrcDst, int numIters, FIRState64fc_16sc* pState, int scaleFactor);

Status tevsFIROne_32f(float src, float* pDst, FIRState_32f* pState);
Status tevsFIROne_32fc(Complex32f src, Complex32f* pDst, FIRState_32fc* pState);
Status tevsFIROne32f_16s_Sfs(int16_t src, int16_t* pDst, FIRState32f_16s* pState, int scaleFactor);
Status tevsFIROne32fc_16sc_Sfs(Complex16s src, Complex16s* pDst, FIRState32fc_16sc* pState, int scaleFactor);
Status tevsFIROne32s_16s_Sfs(int16_t src, int16_t* pDst, FIRState32s_16s* pState, int scaleFactor);
Status tevsFIROne32sc_16sc_Sfs(Complex16s src, Complex16s* pDst, FIRState32sc_16sc* pState, int scaleFactor);
Status tevsFIROne_64f(double src, double* pDst, FIRState_64f* pState);
Status tevsFIROne_64fc(Complex64f src, Complex64f* pDst, FIRState_64fc* pState);
Status tevsFIROne64f_32f(float src, float* pDst, FIRState64f_32f* pState);
Status tevsFIROne64fc_32fc(Complex32f src, Complex32f* pDst, FIRState64fc_32fc* pState);
Status tevsFIROne64f_32s_Sfs(int32_t src, int32_t* pDst, FIRState64f_32s* pState, int scaleFactor);
Status tevsFIROne_32s_Sfs(int32_t src, int32_t* pDst, FIRState_32s* pState, int scaleFactor);
Status tevsFIROne64fc_32sc_Sfs(Complex32s src, Complex32s* pDst, FIRState64fc_32sc* pState, int scaleFactor);
Status tevsFIROne64f_16s_Sfs(int16_t src, int16_t* pDst, FIRState64f_16s* pState, int scaleFactor);
Status tevsFIROne64fc_16sc_Sfs(Complex16s src, Complex16s* pDst, FIRState64fc_16sc* pState, int scaleFactor);

/* ---- FIR_Direct: the same filter without a record -------------------------------------------------------------------
 *
 * pTaps            tapsLen >= 1 taps in the order of the formula
 * pDlyLine         2 * tapsLen samples: the past twice over, oldest first from *pDlyLineIndex on in a circle of
 *                  tapsLen. Zeros and an index of 0 to begin with; every call leaves it ready for the next.
 * pDlyLineIndex    0 .. tapsLen-1; any other value is taken modulo tapsLen
 *
 * Sums are formed in double precision and rounded once; 32-bit taps are brought into 16 bits as for records, in every
 * call. Wherever a stream is cut into blocks the results are the same to the bit. Single samples, from FIROne, may
 * differ from them in the rounding of the sum, and are quicker in double precision than blocks of one to three, which
 * are summed in the order of long ones. _16s: pTapsQ15 stand for taps * 2^-15; sums are formed in 32 bits, and wrap;
 * they are stored times 2^-(scaleFactor + 15), to nearest, ties to even, saturated.
 *
 * Equal pSrc and pDst filter in place; taps, delay line and samples lie apart.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (pSrc, pDst), StatusBadSize
 * (numIters < 1), StatusNullPtr (pTaps), StatusFilterLength (tapsLen < 1), StatusNullPtr (pDlyLine, pDlyLineIndex), of
 * _16s alone StatusDelayIndex (*pDlyLineIndex outside 0 .. tapsLen-1). FIROne filters one sample and has no numIters.
 */
Status tevsFIR_Direct_32f(const float* pSrc, float* pDst, int numIters, const float* pTaps, int tapsLen, float* pDlyLine, int* pDlyLineIndex);
Status tevsFIR_Direct_32f_I(float* pSrcDst, int numIters, const float* pTaps, int tapsLen, float* pDlyLine, int* pDlyLineIndex);
Status tevsFIR_Direct_32fc(const Complex32f* pSrc, Complex32f* pDst, int numIters, const Complex32f* pTaps, int tapsLen, Complex32f* pDlyLine,
                           int* pDlyLineIndex);
Status tevsFIR_Direct_32fc_I(Complex32f* pSrcDst, int numIters, const Complex32f* pTaps, int tapsLen, Complex32f* pDlyLine, int* pDlyLineIndex);
Status tevsFIR32f_Direct_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int numIters, const float* pTaps, int tapsLen, int16_t* pDlyLine, int* pDlyLineIndex,
                                 int scaleFactor);
Status tevsFIR32f_Direct_16s_ISfs(int16_t* pSrcDst, int numIters, const float* pTaps, int tapsLen, int16_t* pDlyLine, int* pDlyLineIndex, int scaleFactor);
Status tevsFIR32fc_Direct_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int numIters, const Complex32f* pTaps, int tapsLen, Complex16s* pDlyLine,
                                   int* pDlyLineIndex, int scaleFactor);
Status tevsFIR32fc_Direct_16sc_ISfs(Complex16s* pSrcDst, int numIters, const Complex32f* pTaps, int tapsLen, Complex16s* pDlyLine, int* pDlyLineIndex,
                                    int scaleFactor);
Status tevsFIR32s_Direct_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int numIters, const int32_t* pTaps, int tapsLen, int tapsFactor, int16_t* pDlyLine,
                                 int* pDlyLineIndex, int scaleFactor);
Status tevsFIR32s_Direct_16s_ISfs(int16_t* pSrcDst, int numIters, const int32_t* pTaps, int tapsLen, int tapsFactor, int16_t* pDlyLine, int* pDlyLineIndex,
                                  int scaleFactor);
Status tevsFIR32sc_Direct_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int numIters, const Complex32s* pTaps, int tapsLen, int tapsFactor,
                                   Complex16s* pDlyLine, int* pDlyLineIndex, int scaleFactor);
Status tevsFIR32sc_Direct_16sc_ISfs(Complex16s* pSrcDst, int numIters, const Complex32s* pTaps, int tapsLen, int tapsFactor, Complex16s* pDlyLine,
                                    int* pDlyLineIndex, int scaleFactor);
Status tevsFIR_Direct_64f(const double* pSrc, double* pDst, int numIters, const double* pTaps, int tapsLen, double* pDlyLine, int* pDlyLineIndex);
Status tevsFIR_Direct_64f_I(double* pSrcDst, int numIters, const double* pTaps, int tapsLen, double* pDlyLine, int* pDlyLineIndex);
Status tevsFIR_Direct_64fc(const Complex64f* pSrc, Complex64f* pDst, int numIters, const Complex64f* pTaps, int tapsLen, Complex64f* pDlyLine,
                           int* pDlyLineIndex);
Status tevsFIR_Direct_64fc_I(Complex64f* pSrcDst, int numIters, const Complex64f* pTaps, int tapsLen, Complex64f* pDlyLine, int* pDlyLineIndex);
Status tevsFIR64f_Direct_32f(const float* pSrc, float* pDst, int numIters, const double* pTaps, int tapsLen, float* pDlyLine, int* pDlyLineIndex);
Status tevsFIR64f_Direct_32f_I(float* pSrcDst, int numIters, const double* pTaps, int tapsLen, float* pDlyLine, int* pDlyLineIndex);
Status tevsFIR64fc_Direct_32fc(const Complex32f* pSrc, Complex32f* pDst, int numIters, const Complex64f* pTaps, int tapsLen, Complex32f* pDlyLine,
                               int* pDlyLineIndex);
Status tevsFIR64fc_Direct_32fc_I(Complex32f* pSrcDst, int numIters, const Complex64f* pTaps, int tapsLen, Complex32f* pDlyLine, int* pDlyLineIndex);
Status tevsFIR64f_Direct_32s_Sfs(const int32_t* pSrc, int32_t* pDst, int numIters, const double* pTaps, int tapsLen, int32_t* pDlyLine, int* pDlyLineIndex,
                                 int scaleFactor);
Status tevsFIR64f_Direct_32s_ISfs(int32_t* pSrcDst, int numIters, const double* pTaps, int tapsLen, int32_t* pDlyLine, int* pDlyLineIndex, int scaleFactor);
Status tevsFIR_Direct_32s_Sfs(const int32_t* pSrc, int32_t* pDst, int numIters, const double* pTaps, int tapsLen, int32_t* pDlyLine, int* pDlyLineIndex,
                              int scaleFactor);
Status tevsFIR_Direct_32s_ISfs(int32_t* pSrcDst, int numIters, const double* pTaps, int tapsLen, int32_t* pDlyLine, int* pDlyLineIndex, int scaleFactor);
Status tevsFIR64fc_Direct_32sc_Sfs(const Complex32s* pSrc, Complex32s* pDst, int numIters, const Complex64f* pTaps, int tapsLen, Complex32s* pDlyLine,
                                   int* pDlyLineIndex, int scaleFactor);
Status tevsFIR64fc_Direct_32sc_ISfs(Complex32s* pSrcDst, int numIters, const Complex64f* pTaps, int tapsLen, Complex32s* pDlyLine, int* pDlyLineIndex,
                                    int scaleFactor);
Status tevsFIR64f_Direct_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int numIters, const double* pTaps, int tapsLen, int16_t* pDlyLine, int* pDlyLineIndex,
                                 int scaleFactor);
Status tevsFIR64f_Direct_16s_ISfs(int16_t* pSrcDst, int numIters, const double* pTaps, int tapsLen, int16_t* pDlyLine, int* pDlyLineIndex, int scaleFactor);
Status tevsFIR64fc_Direct_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int numIters, const Complex64f* pTaps, int tapsLen, Complex16s* pDlyLine,
                                   int* pDlyLineIndex, int scaleFactor);
Status tevsFIR64fc_Direct_16sc_ISfs(Complex16s* pSrcDst, int numIters, const Complex64f* pTaps, int tapsLen, Complex16s* pDlyLine, int* pDlyLineIndex,
                                    int scaleFactor);
Status tevsFIR_Direct_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int numIters, const int16_t* pTapsQ15, int tapsLen, int16_t* pDlyLine, int* pDlyLineIndex,
                              int scaleFactor);
Status tevsFIR_Direct_16s_ISfs(int16_t* pSrcDst, int numIters, const int16_t* pTapsQ15, int tapsLen, int16_t* pDlyLine, int* pDlyLineIndex, int scaleFactor);

Status tevsFIROne_Direct_32f(float src, float* pDst, const float* pTaps, int tapsLen, float* pDlyLine, int* pDlyLineIndex);
Status tevsFIROne_Direct_32f_I(float* pSrcDst, const float* pTaps, int tapsLen, float* pDlyLine, int* pDlyLineIndex);
Status tevsFIROne_Direct_32fc(Complex32f src, Complex32f* pDst, const Complex32f* pTaps, int tapsLen, Complex32f* pDlyLine, int* pDlyLineIndex);
Status tevsFIROne_Direct_32fc_I(Complex32f* pSrcDst, const Complex32f* pTaps, int tapsLen, Complex32f* pDlyLine, int* pDlyLineIndex);
Status tevsFIROne32f_Direct_16s_Sfs(int16_t src, int16_t* pDst, const float* pTaps, int tapsLen, int16_t* pDlyLine, int* pDlyLineIndex, int scaleFactor);
Status tevsFIROne32f_Direct_16s_ISfs(int16_t* pSrcDst, const float* pTaps, int tapsLen, int16_t* pDlyLine, int* pDlyLineIndex, int scaleFactor);
Status tevsFIROne32fc_Direct_16sc_Sfs(Complex16s src, Complex16s* pDst, const Complex32f* pTaps, int tapsLen, Complex16s* pDlyLine, int* pDlyLineIndex,
                                      int scaleFactor);
Status tevsFIROne32fc_Direct_16sc_ISfs(Complex16s* pSrcDst, const Complex32f* pTaps, int tapsLen, Complex16s* pDlyLine, int* pDlyLineIndex, int scaleFactor);
Status tevsFIROne32s_Direct_16s_Sfs(int16_t src, int16_t* pDst, const int32_t* pTaps, int tapsLen, int tapsFactor, int16_t* pDlyLine, int* pDlyLineIndex,
                                    int scaleFactor);
Status tevsFIROne32s_Direct_16s_ISfs(int16_t* pSrcDst, const int32_t* pTaps, int tapsLen, int tapsFactor, int16_t* pDlyLine, int* pDlyLineIndex,
                                     int scaleFactor);
Status tevsFIROne32sc_Direct_16sc_Sfs(Complex16s src, Complex16s* pDst, const Complex32s* pTaps, int tapsLen, int tapsFactor, Complex16s* pDlyLine,
                                      int* pDlyLineIndex, int scaleFactor);
Status tevsFIROne32sc_Direct_16sc_ISfs(Complex16s* pSrcDst, const Complex32s* pTaps, int tapsLen, int tapsFactor, Complex16s* pDlyLine, int* pDlyLineIndex,
                                       int scaleFactor);
Status tevsFIROne_Direct_64f(double src, double* pDst, const double* pTaps, int tapsLen, double* pDlyLine, int* pDlyLineIndex);
Status tevsFIROne_Direct_64f_I(double* pSrcDst, const double* pTaps, int tapsLen, double* pDlyLine, int* pDlyLineIndex);
Status tevsFIROne_Direct_64fc(Complex64f src, Complex64f* pDst, const Complex64f* pTaps, int tapsLen, Complex64f* pDlyLine, int* pDlyLineIndex);
Status tevsFIROne_Direct_64fc_I(Complex64f* pSrcDst, const Complex64f* pTaps, int tapsLen, Complex64f* pDlyLine, int* pDlyLineIndex);
Status tevsFIROne64f_Direct_32f(float src, float* pDst, const double* pTaps, int tapsLen, float* pDlyLine, int* pDlyLineIndex);
Status tevsFIROne64f_Direct_32f_I(float* pSrcDst, const double* pTaps, int tapsLen, float* pDlyLine, int* pDlyLineIndex);
Status tevsFIROne64fc_Direct_32fc(Complex32f src, Complex32f* pDst, const Complex64f* pTaps, int tapsLen, Complex32f* pDlyLine, int* pDlyLineIndex);
Status tevsFIROne64fc_Direct_32fc_I(Complex32f* pSrcDst, const Complex64f* pTaps, int tapsLen, Complex32f* pDlyLine, int* pDlyLineIndex);
Status tevsFIROne64f_Direct_32s_Sfs(int32_t src, int32_t* pDst, const double* pTaps, int tapsLen, int32_t* pDlyLine, int* pDlyLineIndex, int scaleFactor);
Status tevsFIROne64f_Direct_32s_ISfs(int32_t* pSrcDst, const double* pTaps, int tapsLen, int32_t* pDlyLine, int* pDlyLineIndex, int scaleFactor);
Status tevsFIROne_Direct_32s_Sfs(int32_t src, int32_t* pDst, const double* pTaps, int tapsLen, int32_t* pDlyLine, int* pDlyLineIndex, int scaleFactor);
Status tevsFIROne_Direct_32s_ISfs(int32_t* pSrcDst, const double* pTaps, int tapsLen, int32_t* pDlyLine, int* pDlyLineIndex, int scaleFactor);
Status tevsFIROne64fc_Direct_32sc_Sfs(Complex32s src, Complex32s* pDst, const Complex64f* pTaps, int tapsLen, Complex32s* pDlyLine, int* pDlyLineIndex,
                                      int scaleFactor);
Status tevsFIROne64fc_Direct_32sc_ISfs(Complex32s* pSrcDst, const Complex64f* pTaps, int tapsLen, Complex32s* pDlyLine, int* pDlyLineIndex, int scaleFactor);
Status tevsFIROne64f_Direct_16s_Sfs(int16_t src, int16_t* pDst, const double* pTaps, int tapsLen, int16_t* pDlyLine, int* pDlyLineIndex, int scaleFactor);
Status tevsFIROne64f_Direct_16s_ISfs(int16_t* pSrcDst, const double* pTaps, int tapsLen, int16_t* pDlyLine, int* pDlyLineIndex, int scaleFactor);
Status tevsFIROne64fc_Direct_16sc_Sfs(Complex16s src, Complex16s* pDst, const Complex64f* pTaps, int tapsLen, Complex16s* pDlyLine, int* pDlyLineIndex,
                                      int scaleFactor);
Status tevsFIROne64fc_Direct_16sc_ISfs(Complex16s* pSrcDst, const Complex64f* pTaps, int tapsLen, Complex16s* pDlyLine, int* pDlyLineIndex, int scaleFactor);
Status tevsFIROne_Direct_16s_Sfs(int16_t src, int16_t* pDst, const int16_t* pTapsQ15, int tapsLen, int16_t* pDlyLine, int* pDlyLineIndex, int scaleFactor);
Status tevsFIROne_Direct_16s_ISfs(int16_t* pSrcDst, const int16_t* pTapsQ15, int tapsLen, int16_t* pDlyLine, int* pDlyLineIndex, int scaleFactor);

/* ---- FIRMR: the same filter between two rates -----------------------------------------------------------------------
 *
 * upFactor - 1 zeros follow every input, the first of which comes at time upPhase; h filters all of that; and of the
 * result every downFactor-th value is kept, from time downPhase on. With t = downPhase + m * downFactor - upPhase,
 * output m of a stream is
 *
 *     y[m] = sum over j of  h[t mod upFactor + j * upFactor] * x[floor(t / upFactor) - j],  h up to tapsLen - 1
 *
 * A record of this kind is used through the calls above: Free, SetTaps, GetTaps, SetDlyLine, GetDlyLine, and FIR, which
 * makes numIters * upFactor outputs from numIters * downFactor inputs. FIROne refuses it. Its delay line has
 * ceil(tapsLen / upFactor) samples, newest first. With both factors 1 it is a record for one rate, as from FIRInit or
 * FIRInitAlloc.
 *
 * upFactor, downFactor     at least 1
 * upPhase, downPhase       0 .. factor - 1
 * pSrc, pDst               equal pointers filter in place; the vector then holds numIters * max(upFactor, downFactor)
 *                          samples
 * all others               as above; upFactor times downFactor need not fit in an int, nor numIters times either
 *
 * GetStateSize    The bytes of a record in the caller's memory, at any address, whatever its phases. Returns StatusOk,
 *                 StatusNullPtr (pSize), StatusFilterLength (tapsLen < 1), StatusRateFactor (a factor < 1),
 *                 StatusFilterLength (beyond INT_MAX bytes).
 * Init            Builds a record in pBuffer. Returns StatusOk, StatusNullPtr (ppState, pTaps, pBuffer),
 *                 StatusFilterLength (tapsLen < 1), StatusRateFactor (a factor < 1), StatusRatePhase (a phase out of
 *                 range), StatusFilterLength (a size beyond INT_MAX bytes).
 * InitAlloc       The same in memory of its own. Returns StatusOk, StatusNullPtr (ppState, pTaps), StatusFilterLength
 *                 (tapsLen < 1), StatusRateFactor, StatusRatePhase, StatusNoMemory (for a size beyond INT_MAX bytes
 *                 too).
 *
 * Threads         Blocks of more iterations than the samples stated above are shared out over a team in the same way;
 *                 the results are the same to the bit. The team works in memory that is taken for the call; without
 *                 any, one thread filters the block.
 * Method          Each phase of h as a filter of its own at the lower rate (Crochiere and Rabiner, Multirate Digital
 *                 Signal Processing, ch. 3); of the results only those that are kept are computed. Products in the
 *                 precision of the taps, 16-bit taps exactly; each output is summed from its oldest input to its
 *                 newest, whatever the other arguments, so wherever a stream is cut the results are the same to the
 *                 bit.
 */
Status tevsFIRMRGetStateSize_32f(int tapsLen, int upFactor, int downFactor, int* pSize);
Status tevsFIRMRGetStateSize_32fc(int tapsLen, int upFactor, int downFactor, int* pSize);
Status tevsFIRMRGetStateSize32f_16s(int tapsLen, int upFactor, int downFactor, int* pSize);
Status tevsFIRMRGetStateSize32fc_16sc(int tapsLen, int upFactor, int downFactor, int* pSize);
Status tevsFIRMRGetStateSize32s_16s(int tapsLen, int upFactor, int downFactor, int* pSize);
Status tevsFIRMRGetStateSize32s_16s32f(int tapsLen, int upFactor, int downFactor, int* pSize);
Status tevsFIRMRGetStateSize32sc_16sc(int tapsLen, int upFactor, int downFactor, int* pSize);
Status tevsFIRMRGetStateSize32sc_16sc32fc(int tapsLen, int upFactor, int downFactor, int* pSize);
Status tevsFIRMRGetStateSize_64f(int tapsLen, int upFactor, int downFactor, int* pSize);
Status tevsFIRMRGetStateSize_64fc(int tapsLen, int upFactor, int downFactor, int* pSize);
Status tevsFIRMRGetStateSize64f_32f(int tapsLen, int upFactor, int downFactor, int* pSize);
Status tevsFIRMRGetStateSize64fc_32fc(int tapsLen, int upFactor, int downFactor, int* pSize);
Status tevsFIRMRGetStateSize64f_32s(int tapsLen, int upFactor, int downFactor, int* pSize);
Status tevsFIRMRGetStateSize_32s(int tapsLen, int upFactor, int downFactor, int* pSize);
Status tevsFIRMRGetStateSize64fc_32sc(int tapsLen, int upFactor, int downFactor, int* pSize);
Status tevsFIRMRGetStateSize64f_16s(int tapsLen, int upFactor, int downFactor, int* pSize);
Status tevsFIRMRGetStateSize64fc_16sc(int tapsLen, int upFactor, int downFactor, int* pSize);

Status tevsFIRMRInit_32f(FIRState_32f** ppState, const float* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                         const float* pDlyLine, uint8_t* pBuffer);
Status tevsFIRMRInit_32fc(FIRState_32fc** ppState, const Complex32f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                          const Complex32f* pDlyLine, uint8_t* pBuffer);
Status tevsFIRMRInit32f_16s(FIRState32f_16s** ppState, const float* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                            const int16_t* pDlyLine, uint8_t* pBuffer);
Status tevsFIRMRInit32fc_16sc(FIRState32fc_16sc** ppState, const Complex32f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                              const Complex16s* pDlyLine, uint8_t* pBuffer);
Status tevsFIRMRInit32s_16s(FIRState32s_16s** ppState, const int32_t* pTaps, int tapsLen, int tapsFactor, int upFactor, int upPhase, int downFactor,
                            int downPhase, const int16_t* pDlyLine, uint8_t* pBuffer);
Status tevsFIRMRInit32s_16s32f(FIRState32s_16s32f** ppState, const float* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                               const int16_t* pDlyLine, uint8_t* pBuffer);
Status tevsFIRMRInit32sc_16sc(FIRState32sc_16sc** ppState, const Complex32s* pTaps, int tapsLen, int tapsFactor, int upFactor, int upPhase, int downFactor,
                              int downPhase, const Complex16s* pDlyLine, uint8_t* pBuffer);
Status tevsFIRMRInit32sc_16sc32fc(FIRState32sc_16sc32fc** ppState, const Complex32f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                                  int downPhase, const Complex16s* pDlyLine, uint8_t* pBuffer);
Status tevsFIRMRInit_64f(FIRState_64f** ppState, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                         const double* pDlyLine, uint8_t* pBuffer);
Status tevsFIRMRInit_64fc(FIRState_64fc** ppState, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                          const Complex64f* pDlyLine, uint8_t* pBuffer);
Status tevsFIRMRInit64f_32f(FIRState64f_32f** ppState, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                            const float* pDlyLine, uint8_t* pBuffer);
Status tevsFIRMRInit64fc_32fc(FIRState64fc_32fc** ppState, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                              const Complex32f* pDlyLine, uint8_t* pBuffer);
Status tevsFIRMRInit64f_32s(FIRState64f_32s** ppState, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                            const int32_t* pDlyLine, uint8_t* pBuffer);
Status tevsFIRMRInit_32s(FIRState_32s** ppState, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                         const int32_t* pDlyLine, uint8_t* pBuffer);
Status tevsFIRMRInit64fc_32sc(FIRState64fc_32sc** ppState, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                              const Complex32s* pDlyLine, uint8_t* pBuffer);
Status tevsFIRMRInit64f_16s(FIRState64f_16s** ppState, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                            const int16_t* pDlyLine, uint8_t* pBuffer);
Status tevsFIRMRInit64fc_16sc(FIRState64fc_16sc** ppState, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                              const Complex16s* pDlyLine, uint8_t* pBuffer);

Status tevsFIRMRInitAlloc_32f(FIRState_32f** ppState, const float* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                              const float* pDlyLine);
Status tevsFIRMRInitAlloc_32fc(FIRState_32fc** ppState, const Complex32f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                               const Complex32f* pDlyLine);
Status tevsFIRMRInitAlloc32f_16s(FIRState32f_16s** ppState, const float* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                 const int16_t* pDlyLine);
Status tevsFIRMRInitAlloc32fc_16sc(FIRState32fc_16sc** ppState, const Complex32f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                   const Complex16s* pDlyLine);
Status tevsFIRMRInitAlloc32s_16s(FIRState32s_16s** ppState, const int32_t* pTaps, int tapsLen, int tapsFactor, int upFactor, int upPhase, int downFactor,
                                 int downPhase, const int16_t* pDlyLine);
Status tevsFIRMRInitAlloc32s_16s32f(FIRState32s_16s32f** ppState, const float* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                    const int16_t* pDlyLine);
Status tevsFIRMRInitAlloc32sc_16sc(FIRState32sc_16sc** ppState, const Complex32s* pTaps, int tapsLen, int tapsFactor, int upFactor, int upPhase, int downFactor,
                                   int downPhase, const Complex16s* pDlyLine);
Status tevsFIRMRInitAlloc32sc_16sc32fc(FIRState32sc_16sc32fc** ppState, const Complex32f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                                       int downPhase, const Complex16s* pDlyLine);
Status tevsFIRMRInitAlloc_64f(FIRState_64f** ppState, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                              const double* pDlyLine);
Status tevsFIRMRInitAlloc_64fc(FIRState_64fc** ppState, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                               const Complex64f* pDlyLine);
Status tevsFIRMRInitAlloc64f_32f(FIRState64f_32f** ppState, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                 const float* pDlyLine);
Status tevsFIRMRInitAlloc64fc_32fc(FIRState64fc_32fc** ppState, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                   const Complex32f* pDlyLine);
Status tevsFIRMRInitAlloc64f_32s(FIRState64f_32s** ppState, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                 const int32_t* pDlyLine);
Status tevsFIRMRInitAlloc_32s(FIRState_32s** ppState, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                              const int32_t* pDlyLine);
Status tevsFIRMRInitAlloc64fc_32sc(FIRState64fc_32sc** ppState, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                   const Complex32s* pDlyLine);
Status tevsFIRMRInitAlloc64f_16s(FIRState64f_16s** ppState, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                 const int16_t* pDlyLine);
Status tevsFIRMRInitAlloc64fc_16sc(FIRState64fc_16sc** ppState, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                   const Complex16s* pDlyLine);

/* ---- FIRMR_Direct: the same without a record ------------------------------------------------------------------------
 *
 * pDlyLine        ceil(tapsLen / upFactor) samples before the first of pSrc, newest first. Zeros to begin with; every
 *                 call leaves it ready for the next.
 * all others      as above; tapsFactor and scaleFactor as for the single rate
 *
 * Sums are formed in double precision and rounded once; of integer taps they are exact up to 2^23 taps for each phase.
 * Each call makes whole periods of both rates, so a stream may be cut after any iteration. A call works through all
 * taps before the first output: a record spares that.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (pSrc, pDst), StatusBadSize
 * (numIters < 1), StatusNullPtr (pTaps), StatusFilterLength (tapsLen < 1), StatusRateFactor (a factor < 1),
 * StatusRatePhase (a phase out of range), StatusNullPtr (pDlyLine), StatusNoMemory (for taps and delay line of more
 * than 1024 together).
 */
Status tevsFIRMR_Direct_32f(const float* pSrc, float* pDst, int numIters, const float* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                            int downPhase, float* pDlyLine);
Status tevsFIRMR_Direct_32f_I(float* pSrcDst, int numIters, const float* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                              float* pDlyLine);
Status tevsFIRMR_Direct_32fc(const Complex32f* pSrc, Complex32f* pDst, int numIters, const Complex32f* pTaps, int tapsLen, int upFactor, int upPhase,
                             int downFactor, int downPhase, Complex32f* pDlyLine);
Status tevsFIRMR_Direct_32fc_I(Complex32f* pSrcDst, int numIters, const Complex32f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                               int downPhase, Complex32f* pDlyLine);
Status tevsFIRMR32f_Direct_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int numIters, const float* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                                   int downPhase, int16_t* pDlyLine, int scaleFactor);
Status tevsFIRMR32f_Direct_16s_ISfs(int16_t* pSrcDst, int numIters, const float* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                    int16_t* pDlyLine, int scaleFactor);
Status tevsFIRMR32fc_Direct_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int numIters, const Complex32f* pTaps, int tapsLen, int upFactor, int upPhase,
                                     int downFactor, int downPhase, Complex16s* pDlyLine, int scaleFactor);
Status tevsFIRMR32fc_Direct_16sc_ISfs(Complex16s* pSrcDst, int numIters, const Complex32f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                                      int downPhase, Complex16s* pDlyLine, int scaleFactor);
Status tevsFIRMR32s_Direct_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int numIters, const int32_t* pTaps, int tapsLen, int tapsFactor, int upFactor,
                                   int upPhase, int downFactor, int downPhase, int16_t* pDlyLine, int scaleFactor);
Status tevsFIRMR32s_Direct_16s_ISfs(int16_t* pSrcDst, int numIters, const int32_t* pTaps, int tapsLen, int tapsFactor, int upFactor, int upPhase,
                                    int downFactor, int downPhase, int16_t* pDlyLine, int scaleFactor);
Status tevsFIRMR32sc_Direct_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int numIters, const Complex32s* pTaps, int tapsLen, int tapsFactor, int upFactor,
                                     int upPhase, int downFactor, int downPhase, Complex16s* pDlyLine, int scaleFactor);
Status tevsFIRMR32sc_Direct_16sc_ISfs(Complex16s* pSrcDst, int numIters, const Complex32s* pTaps, int tapsLen, int tapsFactor, int upFactor, int upPhase,
                                      int downFactor, int downPhase, Complex16s* pDlyLine, int scaleFactor);
Status tevsFIRMR_Direct_64f(const double* pSrc, double* pDst, int numIters, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                            int downPhase, double* pDlyLine);
Status tevsFIRMR_Direct_64f_I(double* pSrcDst, int numIters, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                              double* pDlyLine);
Status tevsFIRMR_Direct_64fc(const Complex64f* pSrc, Complex64f* pDst, int numIters, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase,
                             int downFactor, int downPhase, Complex64f* pDlyLine);
Status tevsFIRMR_Direct_64fc_I(Complex64f* pSrcDst, int numIters, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                               int downPhase, Complex64f* pDlyLine);
Status tevsFIRMR64f_Direct_32f(const float* pSrc, float* pDst, int numIters, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                               int downPhase, float* pDlyLine);
Status tevsFIRMR64f_Direct_32f_I(float* pSrcDst, int numIters, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                 float* pDlyLine);
Status tevsFIRMR64fc_Direct_32fc(const Complex32f* pSrc, Complex32f* pDst, int numIters, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase,
                                 int downFactor, int downPhase, Complex32f* pDlyLine);
Status tevsFIRMR64fc_Direct_32fc_I(Complex32f* pSrcDst, int numIters, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                                   int downPhase, Complex32f* pDlyLine);
Status tevsFIRMR64f_Direct_32s_Sfs(const int32_t* pSrc, int32_t* pDst, int numIters, const double* pTaps, int tapsLen, int upFactor, int upPhase,
                                   int downFactor, int downPhase, int32_t* pDlyLine, int scaleFactor);
Status tevsFIRMR64f_Direct_32s_ISfs(int32_t* pSrcDst, int numIters, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                    int32_t* pDlyLine, int scaleFactor);
Status tevsFIRMR_Direct_32s_Sfs(const int32_t* pSrc, int32_t* pDst, int numIters, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                                int downPhase, int32_t* pDlyLine, int scaleFactor);
Status tevsFIRMR_Direct_32s_ISfs(int32_t* pSrcDst, int numIters, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                 int32_t* pDlyLine, int scaleFactor);
Status tevsFIRMR64fc_Direct_32sc_Sfs(const Complex32s* pSrc, Complex32s* pDst, int numIters, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase,
                                     int downFactor, int downPhase, Complex32s* pDlyLine, int scaleFactor);
Status tevsFIRMR64fc_Direct_32sc_ISfs(Complex32s* pSrcDst, int numIters, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                                      int downPhase, Complex32s* pDlyLine, int scaleFactor);
Status tevsFIRMR64f_Direct_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int numIters, const double* pTaps, int tapsLen, int upFactor, int upPhase,
                                   int downFactor, int downPhase, int16_t* pDlyLine, int scaleFactor);
Status tevsFIRMR64f_Direct_16s_ISfs(int16_t* pSrcDst, int numIters, const double* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase,
                                    int16_t* pDlyLine, int scaleFactor);
Status tevsFIRMR64fc_Direct_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int numIters, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase,
                                     int downFactor, int downPhase, Complex16s* pDlyLine, int scaleFactor);
Status tevsFIRMR64fc_Direct_16sc_ISfs(Complex16s* pSrcDst, int numIters, const Complex64f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                                      int downPhase, Complex16s* pDlyLine, int scaleFactor);

TEVS_END

#endif
