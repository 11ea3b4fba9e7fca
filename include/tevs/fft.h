#ifndef TEVS_FFT_H
#define TEVS_FFT_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- FFT records ----------------------------------------------------------------------------------------------------
 *
 * A record fixes the length N = 2^order of a transform, its normalisation and its tables. It is built once and then
 * only read: any number of threads may use one record at once, each with its own work buffer. It holds addresses of its
 * own: do not copy or move one, with its block or without.
 *
 *     FFTSpec_C_32fc    complex, single precision, interleaved
 *     FFTSpec_C_32f     complex, single precision, real and imaginary parts in two arrays
 *     FFTSpec_R_32f     real, single precision
 *     FFTSpec_C_64fc, FFTSpec_C_64f, FFTSpec_R_64f    the same in double precision
 *
 * order           0 .. 30
 * flag            ScaleFwdByN or ScaleInvByN: that direction's result times 1/N; ScaleBySqrtN: both directions' times
 *                 1/sqrt(N); NoScale
 * hint            any value, without effect on these kinds
 *
 * GetSize         The bytes that a record needs with its tables, that Init needs while it builds them, and that one
 *                 transform call needs as work buffer, at any address. Sizes beyond INT_MAX (order 28 and above, in
 *                 double precision 27) are reported as INT_MAX. Looks at order only. Returns StatusOk, StatusFftOrder
 *                 (order), StatusNullPtr (any output), in this order.
 * Init            Builds a record in pMemSpec and stores its address. pMemInit is free again on return; orders 0 to 3
 *                 need none. Returns StatusOk, StatusNullPtr (ppSpec), StatusFftOrder (order, or one whose size is
 *                 beyond INT_MAX), StatusNullPtr (pMemSpec), StatusFftFlag (flag), StatusNullPtr (pMemInit), in this
 *                 order. *ppSpec is stored on success alone. The last two failures do write: they clear the head of the
 *                 block, so that no function finds a record in it.
 * InitAlloc       The same in memory of its own. Returns StatusOk, StatusNullPtr (ppSpec), StatusFftOrder,
 *                 StatusFftFlag, StatusNoMemory.
 * Free            Ends a record. One of InitAlloc's gives its memory back: later use is an error that nothing detects
 *                 for certain. One of Init's stays in the caller's memory, which needs no Free before it is used
 *                 otherwise; every later call answers StatusContextMismatch. Returns StatusOk, StatusNullPtr,
 *                 StatusContextMismatch (not a record of this kind).
 * GetBufSize      The bytes of one call's work buffer, 0 where none is needed. Returns StatusOk, StatusNullPtr (either
 *                 pointer), StatusContextMismatch.
 */
typedef struct FFTSpec_C_32fc FFTSpec_C_32fc;
typedef struct FFTSpec_C_32f FFTSpec_C_32f;
typedef struct FFTSpec_R_32f FFTSpec_R_32f;
typedef struct FFTSpec_C_64fc FFTSpec_C_64fc;
typedef struct FFTSpec_C_64f FFTSpec_C_64f;
typedef struct FFTSpec_R_64f FFTSpec_R_64f;

Status tevsFFTGetSize_C_32fc(int order, int flag, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
Status tevsFFTGetSize_C_32f(int order, int flag, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
Status tevsFFTGetSize_R_32f(int order, int flag, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
Status tevsFFTGetSize_C_64fc(int order, int flag, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
Status tevsFFTGetSize_C_64f(int order, int flag, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
Status tevsFFTGetSize_R_64f(int order, int flag, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
Status tevsFFTInit_C_32fc(FFTSpec_C_32fc** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit);
Status tevsFFTInit_C_32f(FFTSpec_C_32f** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit);
Status tevsFFTInit_R_32f(FFTSpec_R_32f** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit);
Status tevsFFTInit_C_64fc(FFTSpec_C_64fc** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit);
Status tevsFFTInit_C_64f(FFTSpec_C_64f** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit);
Status tevsFFTInit_R_64f(FFTSpec_R_64f** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit);
Status tevsFFTInitAlloc_C_32fc(FFTSpec_C_32fc** ppSpec, int order, int flag, int hint);
Status tevsFFTInitAlloc_C_32f(FFTSpec_C_32f** ppSpec, int order, int flag, int hint);
Status tevsFFTInitAlloc_R_32f(FFTSpec_R_32f** ppSpec, int order, int flag, int hint);
Status tevsFFTInitAlloc_C_64fc(FFTSpec_C_64fc** ppSpec, int order, int flag, int hint);
Status tevsFFTInitAlloc_C_64f(FFTSpec_C_64f** ppSpec, int order, int flag, int hint);
Status tevsFFTInitAlloc_R_64f(FFTSpec_R_64f** ppSpec, int order, int flag, int hint);
Status tevsFFTFree_C_32fc(FFTSpec_C_32fc* pSpec);
Status tevsFFTFree_C_32f(FFTSpec_C_32f* pSpec);
Status tevsFFTFree_R_32f(FFTSpec_R_32f* pSpec);
Status tevsFFTFree_C_64fc(FFTSpec_C_64fc* pSpec);
Status tevsFFTFree_C_64f(FFTSpec_C_64f* pSpec);
Status tevsFFTFree_R_64f(FFTSpec_R_64f* pSpec);
Status tevsFFTGetBufSize_C_32fc(const FFTSpec_C_32fc* pSpec, int* pSize);
Status tevsFFTGetBufSize_C_32f(const FFTSpec_C_32f* pSpec, int* pSize);
Status tevsFFTGetBufSize_R_32f(const FFTSpec_R_32f* pSpec, int* pSize);
Status tevsFFTGetBufSize_C_64fc(const FFTSpec_C_64fc* pSpec, int* pSize);
Status tevsFFTGetBufSize_C_64f(const FFTSpec_C_64f* pSpec, int* pSize);
Status tevsFFTGetBufSize_R_64f(const FFTSpec_R_64f* pSpec, int* pSize);

/* ---- FFTFwd, FFTInv, complex ----------------------------------------------------------------------------------------
 *
 *     forward    y[k] = f * sum over n = 0 .. N-1 of  x[n] * exp(-2 pi i n k / N)
 *     inverse    y[n] = f * sum over k = 0 .. N-1 of  x[k] * exp(+2 pi i n k / N)
 *
 * with f the record's normalisation of that direction, 1 where it has none.
 *
 * pSrc, pDst            N values each in natural order; equal pointers transform in place
 * pSrcRe, pSrcIm, ...   N real and N imaginary parts; any array of the source may be any of the destination
 * pBuffer               at least GetBufSize bytes, at any address, contents of no matter: the call cannot fail for
 *                       memory then; or NULL, and the call takes and returns memory of its own where GetBufSize is not
 *                       0. Orders from 19 on (real ones from 20 on) are faster with more than GetBufSize, 640 KiB to 2
 *                       MiB, and take that for the call where they get it. Without it results may round otherwise.
 *
 * The relative error in the Euclidean norm is about 0.6 * sqrt(order) * 2^-24, in double precision 2^-53;
 * docs/accuracy.md has the figures. Results are the same to the bit for any alignment, in place or not; they may differ
 * in rounding between SIMD levels (see TEVS_LEVEL in the README).
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (pSpec), StatusContextMismatch
 * (pSpec is no record of this kind), StatusNullPtr (data), StatusNoMemory (pBuffer NULL).
 *
 * Stockham autosort passes of radix 8 and 4 (C. Van Loan, Computational Frameworks for the Fast Fourier Transform, SIAM
 * 1992); from order 16 on, in double precision 14, in two sweeps over memory (D. H. Bailey, FFTs in External or
 * Hierarchical Memory, J. Supercomputing 4, 1990), where registers hold two doubles by halves down to 64 points instead.
 */
Status tevsFFTFwd_CToC_32fc(const Complex32f* pSrc, Complex32f* pDst, const FFTSpec_C_32fc* pSpec, uint8_t* pBuffer);
Status tevsFFTFwd_CToC_32fc_I(Complex32f* pSrcDst, const FFTSpec_C_32fc* pSpec, uint8_t* pBuffer);
Status tevsFFTInv_CToC_32fc(const Complex32f* pSrc, Complex32f* pDst, const FFTSpec_C_32fc* pSpec, uint8_t* pBuffer);
Status tevsFFTInv_CToC_32fc_I(Complex32f* pSrcDst, const FFTSpec_C_32fc* pSpec, uint8_t* pBuffer);
Status tevsFFTFwd_CToC_32f(const float* pSrcRe, const float* pSrcIm, float* pDstRe, float* pDstIm, const FFTSpec_C_32f* pSpec, uint8_t* pBuffer);
Status tevsFFTFwd_CToC_32f_I(float* pSrcDstRe, float* pSrcDstIm, const FFTSpec_C_32f* pSpec, uint8_t* pBuffer);
Status tevsFFTInv_CToC_32f(const float* pSrcRe, const float* pSrcIm, float* pDstRe, float* pDstIm, const FFTSpec_C_32f* pSpec, uint8_t* pBuffer);
Status tevsFFTInv_CToC_32f_I(float* pSrcDstRe, float* pSrcDstIm, const FFTSpec_C_32f* pSpec, uint8_t* pBuffer);
Status tevsFFTFwd_CToC_64fc(const Complex64f* pSrc, Complex64f* pDst, const FFTSpec_C_64fc* pSpec, uint8_t* pBuffer);
Status tevsFFTFwd_CToC_64fc_I(Complex64f* pSrcDst, const FFTSpec_C_64fc* pSpec, uint8_t* pBuffer);
Status tevsFFTInv_CToC_64fc(const Complex64f* pSrc, Complex64f* pDst, const FFTSpec_C_64fc* pSpec, uint8_t* pBuffer);
Status tevsFFTInv_CToC_64fc_I(Complex64f* pSrcDst, const FFTSpec_C_64fc* pSpec, uint8_t* pBuffer);
Status tevsFFTFwd_CToC_64f(const double* pSrcRe, const double* pSrcIm, double* pDstRe, double* pDstIm, const FFTSpec_C_64f* pSpec, uint8_t* pBuffer);
Status tevsFFTFwd_CToC_64f_I(double* pSrcDstRe, double* pSrcDstIm, const FFTSpec_C_64f* pSpec, uint8_t* pBuffer);
Status tevsFFTInv_CToC_64f(const double* pSrcRe, const double* pSrcIm, double* pDstRe, double* pDstIm, const FFTSpec_C_64f* pSpec, uint8_t* pBuffer);
Status tevsFFTInv_CToC_64f_I(double* pSrcDstRe, double* pSrcDstIm, const FFTSpec_C_64f* pSpec, uint8_t* pBuffer);

/* ---- FFTFwd, FFTInv, real -------------------------------------------------------------------------------------------
 *
 * The spectrum of N reals has N/2 + 1 values X[0] .. X[N/2] of their own; the rest is X[N-k] = conj(X[k]). X[0] and
 * X[N/2] are real. R is the real, I the imaginary part:
 *
 *     position    0      1       2      3      4      5    ...   N-2       N-1       N       N+1
 *     CCS         R[0]   0       R[1]   I[1]   R[2]   I[2] ...   R[N/2-1]  I[N/2-1]  R[N/2]  0      N + 2 values
 *     Pack        R[0]   R[1]    I[1]   R[2]   I[2]        ...   I[N/2-1]  R[N/2]                   N values
 *     Perm        R[0]   R[N/2]  R[1]   I[1]   R[2]   I[2] ...   R[N/2-1]  I[N/2-1]                 N values
 *
 * N = 1: the one value; CCS adds a zero. N = 2: Pack and Perm are the same.
 *
 *     RToCCS, RToPack, RToPerm    X[k] = f * sum over n = 0 .. N-1 of  x[n] * exp(-2 pi i n k / N)
 *     CCSToR, PackToR, PermToR    x[n] = f * sum over k = 0 .. N-1 of  X[k] * exp(+2 pi i n k / N); positions 1 and N+1
 *                                                                      of CCS are not read
 *
 * pSrc, pDst    N reals and a spectrum of the form's length; equal pointers transform in place (CCS: the vector has N +
 *               2 values)
 *
 * pBuffer, error, statuses: as for the complex transforms. The transform of length N/2 of the samples taken in pairs,
 * and a recombination.
 */
Status tevsFFTFwd_RToCCS_32f(const float* pSrc, float* pDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer);
Status tevsFFTFwd_RToCCS_32f_I(float* pSrcDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer);
Status tevsFFTFwd_RToPack_32f(const float* pSrc, float* pDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer);
Status tevsFFTFwd_RToPack_32f_I(float* pSrcDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer);
Status tevsFFTFwd_RToPerm_32f(const float* pSrc, float* pDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer);
Status tevsFFTFwd_RToPerm_32f_I(float* pSrcDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer);
Status tevsFFTInv_CCSToR_32f(const float* pSrc, float* pDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer);
Status tevsFFTInv_CCSToR_32f_I(float* pSrcDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer);
Status tevsFFTInv_PackToR_32f(const float* pSrc, float* pDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer);
Status tevsFFTInv_PackToR_32f_I(float* pSrcDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer);
Status tevsFFTInv_PermToR_32f(const float* pSrc, float* pDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer);
Status tevsFFTInv_PermToR_32f_I(float* pSrcDst, const FFTSpec_R_32f* pSpec, uint8_t* pBuffer);
Status tevsFFTFwd_RToCCS_64f(const double* pSrc, double* pDst, const FFTSpec_R_64f* pSpec, uint8_t* pBuffer);
Status tevsFFTFwd_RToCCS_64f_I(double* pSrcDst, const FFTSpec_R_64f* pSpec, uint8_t* pBuffer);
Status tevsFFTFwd_RToPack_64f(const double* pSrc, double* pDst, const FFTSpec_R_64f* pSpec, uint8_t* pBuffer);
Status tevsFFTFwd_RToPack_64f_I(double* pSrcDst, const FFTSpec_R_64f* pSpec, uint8_t* pBuffer);
Status tevsFFTFwd_RToPerm_64f(const double* pSrc, double* pDst, const FFTSpec_R_64f* pSpec, uint8_t* pBuffer);
Status tevsFFTFwd_RToPerm_64f_I(double* pSrcDst, const FFTSpec_R_64f* pSpec, uint8_t* pBuffer);
Status tevsFFTInv_CCSToR_64f(const double* pSrc, double* pDst, const FFTSpec_R_64f* pSpec, uint8_t* pBuffer);
Status tevsFFTInv_CCSToR_64f_I(double* pSrcDst, const FFTSpec_R_64f* pSpec, uint8_t* pBuffer);
Status tevsFFTInv_PackToR_64f(const double* pSrc, double* pDst, const FFTSpec_R_64f* pSpec, uint8_t* pBuffer);
Status tevsFFTInv_PackToR_64f_I(double* pSrcDst, const FFTSpec_R_64f* pSpec, uint8_t* pBuffer);
Status tevsFFTInv_PermToR_64f(const double* pSrc, double* pDst, const FFTSpec_R_64f* pSpec, uint8_t* pBuffer);
Status tevsFFTInv_PermToR_64f_I(double* pSrcDst, const FFTSpec_R_64f* pSpec, uint8_t* pBuffer);

/* ---- FFT of integer samples -----------------------------------------------------------------------------------------
 *
 * The transforms of above with integer samples and spectra. They are computed in floating point and rounded once: the
 * result, times 2^-scaleFactor on top of the record's normalisation, to the nearest integer, ties to even, saturated.
 * Any scaleFactor.
 *
 *     FFTSpec_C_16sc, FFTSpec_C_16s, FFTSpec_R_16s    16 bits, in single precision: complex interleaved, complex in two
 *                                                     arrays, real
 *     FFTSpec_C_32sc, FFTSpec_C_32s, FFTSpec_R_32s    32 bits, in double precision
 *     FFTSpec_R_16s32s                                real signal of 16 bits, CCS spectrum of 32, in single precision
 *
 * Records live as those of the float kinds do (above), with these differences: a 16-bit record's sizes depend on hint
 * where order is 1 to 3 (HintAccurate or any other), and its Init needs pMemInit from order 1 on. Its order 0 has no
 * record inside: each value is scaled and stored, whatever the flag. 16-bit results of orders 1 and 2 are exact but for
 * ScaleBySqrtN at order 1; elsewhere what lies as near to a tie as the float transform's error may go either way.
 *
 * Data, pBuffer, statuses: as for the float kinds. Any array of the source may be any of the destination.
 * FFTSpec_R_16s32s takes 32-bit values in with the 24 bits of single precision. Short transforms leave pBuffer alone
 * and take no memory: complex ones up to order 8 in 16 bits and 7 in 32, real ones up to one more.
 */
typedef struct FFTSpec_C_16sc FFTSpec_C_16sc;
typedef struct FFTSpec_C_16s FFTSpec_C_16s;
typedef struct FFTSpec_R_16s FFTSpec_R_16s;
typedef struct FFTSpec_C_32sc FFTSpec_C_32sc;
typedef struct FFTSpec_C_32s FFTSpec_C_32s;
typedef struct FFTSpec_R_32s FFTSpec_R_32s;
typedef struct FFTSpec_R_16s32s FFTSpec_R_16s32s;

Status tevsFFTGetSize_C_16sc(int order, int flag, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
Status tevsFFTGetSize_C_16s(int order, int flag, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
Status tevsFFTGetSize_R_16s(int order, int flag, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
Status tevsFFTGetSize_C_32sc(int order, int flag, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
Status tevsFFTGetSize_C_32s(int order, int flag, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
Status tevsFFTGetSize_R_32s(int order, int flag, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
Status tevsFFTGetSize_R_16s32s(int order, int flag, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
Status tevsFFTInit_C_16sc(FFTSpec_C_16sc** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit);
Status tevsFFTInit_C_16s(FFTSpec_C_16s** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit);
Status tevsFFTInit_R_16s(FFTSpec_R_16s** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit);
Status tevsFFTInit_C_32sc(FFTSpec_C_32sc** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit);
Status tevsFFTInit_C_32s(FFTSpec_C_32s** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit);
Status tevsFFTInit_R_32s(FFTSpec_R_32s** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit);
Status tevsFFTInit_R_16s32s(FFTSpec_R_16s32s** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit);
Status tevsFFTInitAlloc_C_16sc(FFTSpec_C_16sc** ppSpec, int order, int flag, int hint);
Status tevsFFTInitAlloc_C_16s(FFTSpec_C_16s** ppSpec, int order, int flag, int hint);
Status tevsFFTInitAlloc_R_16s(FFTSpec_R_16s** ppSpec, int order, int flag, int hint);
Status tevsFFTInitAlloc_C_32sc(FFTSpec_C_32sc** ppSpec, int order, int flag, int hint);
Status tevsFFTInitAlloc_C_32s(FFTSpec_C_32s** ppSpec, int order, int flag, int hint);
Status tevsFFTInitAlloc_R_32s(FFTSpec_R_32s** ppSpec, int order, int flag, int hint);
Status tevsFFTInitAlloc_R_16s32s(FFTSpec_R_16s32s** ppSpec, int order, int flag, int hint);
Status tevsFFTFree_C_16sc(FFTSpec_C_16sc* pSpec);
Status tevsFFTFree_C_16s(FFTSpec_C_16s* pSpec);
Status tevsFFTFree_R_16s(FFTSpec_R_16s* pSpec);
Status tevsFFTFree_C_32sc(FFTSpec_C_32sc* pSpec);
Status tevsFFTFree_C_32s(FFTSpec_C_32s* pSpec);
Status tevsFFTFree_R_32s(FFTSpec_R_32s* pSpec);
Status tevsFFTFree_R_16s32s(FFTSpec_R_16s32s* pSpec);
Status tevsFFTGetBufSize_C_16sc(const FFTSpec_C_16sc* pSpec, int* pSize);
Status tevsFFTGetBufSize_C_16s(const FFTSpec_C_16s* pSpec, int* pSize);
Status tevsFFTGetBufSize_R_16s(const FFTSpec_R_16s* pSpec, int* pSize);
Status tevsFFTGetBufSize_C_32sc(const FFTSpec_C_32sc* pSpec, int* pSize);
Status tevsFFTGetBufSize_C_32s(const FFTSpec_C_32s* pSpec, int* pSize);
Status tevsFFTGetBufSize_R_32s(const FFTSpec_R_32s* pSpec, int* pSize);
Status tevsFFTGetBufSize_R_16s32s(const FFTSpec_R_16s32s* pSpec, int* pSize);

Status tevsFFTFwd_CToC_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, const FFTSpec_C_16sc* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTFwd_CToC_16sc_ISfs(Complex16s* pSrcDst, const FFTSpec_C_16sc* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTInv_CToC_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, const FFTSpec_C_16sc* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTInv_CToC_16sc_ISfs(Complex16s* pSrcDst, const FFTSpec_C_16sc* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTFwd_CToC_16s_Sfs(const int16_t* pSrcRe, const int16_t* pSrcIm, int16_t* pDstRe, int16_t* pDstIm, const FFTSpec_C_16s* pSpec, int scaleFactor,
                               uint8_t* pBuffer);
Status tevsFFTFwd_CToC_16s_ISfs(int16_t* pSrcDstRe, int16_t* pSrcDstIm, const FFTSpec_C_16s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTInv_CToC_16s_Sfs(const int16_t* pSrcRe, const int16_t* pSrcIm, int16_t* pDstRe, int16_t* pDstIm, const FFTSpec_C_16s* pSpec, int scaleFactor,
                               uint8_t* pBuffer);
Status tevsFFTInv_CToC_16s_ISfs(int16_t* pSrcDstRe, int16_t* pSrcDstIm, const FFTSpec_C_16s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTFwd_CToC_32sc_Sfs(const Complex32s* pSrc, Complex32s* pDst, const FFTSpec_C_32sc* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTFwd_CToC_32sc_ISfs(Complex32s* pSrcDst, const FFTSpec_C_32sc* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTInv_CToC_32sc_Sfs(const Complex32s* pSrc, Complex32s* pDst, const FFTSpec_C_32sc* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTInv_CToC_32sc_ISfs(Complex32s* pSrcDst, const FFTSpec_C_32sc* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTFwd_CToC_32s_Sfs(const int32_t* pSrcRe, const int32_t* pSrcIm, int32_t* pDstRe, int32_t* pDstIm, const FFTSpec_C_32s* pSpec, int scaleFactor,
                               uint8_t* pBuffer);
Status tevsFFTFwd_CToC_32s_ISfs(int32_t* pSrcDstRe, int32_t* pSrcDstIm, const FFTSpec_C_32s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTInv_CToC_32s_Sfs(const int32_t* pSrcRe, const int32_t* pSrcIm, int32_t* pDstRe, int32_t* pDstIm, const FFTSpec_C_32s* pSpec, int scaleFactor,
                               uint8_t* pBuffer);
Status tevsFFTInv_CToC_32s_ISfs(int32_t* pSrcDstRe, int32_t* pSrcDstIm, const FFTSpec_C_32s* pSpec, int scaleFactor, uint8_t* pBuffer);

Status tevsFFTFwd_RToCCS_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTFwd_RToCCS_16s_ISfs(int16_t* pSrcDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTFwd_RToPack_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTFwd_RToPack_16s_ISfs(int16_t* pSrcDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTFwd_RToPerm_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTFwd_RToPerm_16s_ISfs(int16_t* pSrcDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTFwd_RToCCS_32s_Sfs(const int32_t* pSrc, int32_t* pDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTFwd_RToCCS_32s_ISfs(int32_t* pSrcDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTFwd_RToPack_32s_Sfs(const int32_t* pSrc, int32_t* pDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTFwd_RToPack_32s_ISfs(int32_t* pSrcDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTFwd_RToPerm_32s_Sfs(const int32_t* pSrc, int32_t* pDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTFwd_RToPerm_32s_ISfs(int32_t* pSrcDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTFwd_RToCCS_16s32s_Sfs(const int16_t* pSrc, int32_t* pDst, const FFTSpec_R_16s32s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTInv_CCSToR_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTInv_CCSToR_16s_ISfs(int16_t* pSrcDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTInv_PackToR_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTInv_PackToR_16s_ISfs(int16_t* pSrcDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTInv_PermToR_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTInv_PermToR_16s_ISfs(int16_t* pSrcDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTInv_CCSToR_32s_Sfs(const int32_t* pSrc, int32_t* pDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTInv_CCSToR_32s_ISfs(int32_t* pSrcDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTInv_PackToR_32s_Sfs(const int32_t* pSrc, int32_t* pDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTInv_PackToR_32s_ISfs(int32_t* pSrcDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTInv_PermToR_32s_Sfs(const int32_t* pSrc, int32_t* pDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTInv_PermToR_32s_ISfs(int32_t* pSrcDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsFFTInv_CCSToR_32s16s_Sfs(const int32_t* pSrc, int16_t* pDst, const FFTSpec_R_16s32s* pSpec, int scaleFactor, uint8_t* pBuffer);

/* ---- MulPack, MulPerm, MulPackConj: products of packed spectra ------------------------------------------------------
 *
 *     pDst[k] = pSrc1[k] * pSrc2[k],  in place  pSrcDst[k] = pSrcDst[k] * pSrc[k],  as complex numbers where the
 *                                                                                   packing holds pairs
 *     MulPackConj    pSrcDst[k] = pSrcDst[k] * conj(pSrc[k])
 *
 * len >= 1 reals in Pack or Perm order (above). The values that stand alone, the first of all and, of an even length,
 * Pack's last and Perm's second, are multiplied as reals. An odd length is the spectrum of an odd number of reals: one
 * real value, then pairs, the same in both packings.
 *
 * Floats: each product is rounded on its own, re = a.re b.re - a.im b.im. 16s: the exact result times 2^-scaleFactor,
 * to nearest, ties to even, saturated; any scaleFactor. pDst may equal a source. Returns StatusOk, StatusNullPtr (any
 * pointer), StatusBadSize (len < 1), in this order, with nothing written on failure.
 */
Status tevsMulPack_32f(const float* pSrc1, const float* pSrc2, float* pDst, int len);
Status tevsMulPack_32f_I(const float* pSrc, float* pSrcDst, int len);
Status tevsMulPack_64f(const double* pSrc1, const double* pSrc2, double* pDst, int len);
Status tevsMulPack_64f_I(const double* pSrc, double* pSrcDst, int len);
Status tevsMulPack_16s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int16_t* pDst, int len, int scaleFactor);
Status tevsMulPack_16s_ISfs(const int16_t* pSrc, int16_t* pSrcDst, int len, int scaleFactor);
Status tevsMulPerm_32f(const float* pSrc1, const float* pSrc2, float* pDst, int len);
Status tevsMulPerm_32f_I(const float* pSrc, float* pSrcDst, int len);
Status tevsMulPerm_64f(const double* pSrc1, const double* pSrc2, double* pDst, int len);
Status tevsMulPerm_64f_I(const double* pSrc, double* pSrcDst, int len);
Status tevsMulPerm_16s_Sfs(const int16_t* pSrc1, const int16_t* pSrc2, int16_t* pDst, int len, int scaleFactor);
Status tevsMulPerm_16s_ISfs(const int16_t* pSrc, int16_t* pSrcDst, int len, int scaleFactor);
Status tevsMulPackConj_32f_I(const float* pSrc, float* pSrcDst, int len);
Status tevsMulPackConj_64f_I(const double* pSrc, double* pSrcDst, int len);

/* ---- ConjPack, ConjPerm, ConjCcs: the whole spectrum of a real signal -----------------------------------------------
 *
 * Expands a packed spectrum into all len values, with X[len-k] = conj(X[k]). Of an even length, the values that a
 * packing keeps as reals get a zero imaginary part; CCS copies the imaginary parts that it holds. The conjugate of
 * -32768 is 32767 in 16sc.
 *
 * pSrc       len reals in Pack or Perm order, or 2 (len/2 + 1) in CCS order
 * pDst       len >= 1 complex values; apart from pSrc
 * pSrcDst    len complex values whose memory begins with the packed spectrum
 *
 * Returns StatusOk, StatusNullPtr (any pointer), StatusBadSize (len < 1), in this order, with nothing written on
 * failure.
 */
Status tevsConjPack_16sc(const int16_t* pSrc, Complex16s* pDst, int len);
Status tevsConjPack_16sc_I(Complex16s* pSrcDst, int len);
Status tevsConjPack_32fc(const float* pSrc, Complex32f* pDst, int len);
Status tevsConjPack_32fc_I(Complex32f* pSrcDst, int len);
Status tevsConjPack_64fc(const double* pSrc, Complex64f* pDst, int len);
Status tevsConjPack_64fc_I(Complex64f* pSrcDst, int len);
Status tevsConjPerm_16sc(const int16_t* pSrc, Complex16s* pDst, int len);
Status tevsConjPerm_16sc_I(Complex16s* pSrcDst, int len);
Status tevsConjPerm_32fc(const float* pSrc, Complex32f* pDst, int len);
Status tevsConjPerm_32fc_I(Complex32f* pSrcDst, int len);
Status tevsConjPerm_64fc(const double* pSrc, Complex64f* pDst, int len);
Status tevsConjPerm_64fc_I(Complex64f* pSrcDst, int len);
Status tevsConjCcs_16sc(const int16_t* pSrc, Complex16s* pDst, int len);
Status tevsConjCcs_16sc_I(Complex16s* pSrcDst, int len);
Status tevsConjCcs_32fc(const float* pSrc, Complex32f* pDst, int len);
Status tevsConjCcs_32fc_I(Complex32f* pSrcDst, int len);
Status tevsConjCcs_64fc(const double* pSrc, Complex64f* pDst, int len);
Status tevsConjCcs_64fc_I(Complex64f* pSrcDst, int len);

TEVS_END

#endif
