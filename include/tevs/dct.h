#ifndef TEVS_DCT_H
#define TEVS_DCT_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- DCT: discrete cosine transform ---------------------------------------------------------------------------------
 *
 *     forward    y[k] = f[k] * sum over n = 0 .. N-1 of  x[n] * cos(pi (2n+1) k / 2N)
 *     inverse    x[n] = sum over k = 0 .. N-1 of  f[k] * y[k] * cos(pi (2n+1) k / 2N)
 *
 *     f[0] = 1/sqrt(N), f[k] = sqrt(2)/sqrt(N) for k > 0
 *
 * for any N >= 1: orthonormal, so each undoes the other, and the sum of squares stays (the transforms of types II and
 * III). A record fixes length and direction; it is built once and then only read: any number of threads may use one
 * record at once, each with its own work buffer. It holds addresses of its own: do not copy or move one, with its block
 * or without.
 *
 *     DCTFwdSpec_32f, DCTInvSpec_32f    single precision
 *     DCTFwdSpec_64f, DCTInvSpec_64f    double precision
 *     DCTFwdSpec_16s, DCTInvSpec_16s    16-bit samples, computed in single precision and rounded once
 *
 * length          N. Powers of two and lengths of small prime factors are fastest.
 * hint            HintAccurate chooses another method for powers of two above 32768, which takes a larger record and
 *                 work buffer and as much time; errors are the same. Any other value is HintNone. The 16-bit kinds do
 *                 not look at it.
 *
 * GetSize         The bytes that a record needs with its tables, that Init needs while it builds them, and that one
 *                 call needs as work buffer, at any address. Sizes beyond INT_MAX are reported as INT_MAX. Returns
 *                 StatusOk, StatusBadSize (length < 1), StatusNullPtr (any output), StatusFftOrder (a length for which
 *                 the sizes are those of an FFT of an order above 30), in this order.
 * Init            Builds a record in pMemSpec and stores its address. pMemInit may be NULL where GetSize has reported 0
 *                 for it, and is free again on return. Returns StatusOk, StatusNullPtr (ppSpec), StatusBadSize,
 *                 StatusNullPtr (pMemSpec), StatusFftOrder (also for sizes beyond INT_MAX), StatusNullPtr (pMemInit),
 *                 in this order, and StatusNoMemory: a length above 100 with a large prime factor takes memory for as
 *                 long as it is being built.
 * InitAlloc       The same in memory of its own. Returns StatusOk, StatusNullPtr (ppSpec), StatusBadSize,
 *                 StatusFftOrder, StatusNoMemory.
 * Free            Ends a record. One of InitAlloc's gives its memory back; one of Init's stays in the caller's memory,
 *                 and every later call answers StatusContextMismatch. Returns StatusOk, StatusNullPtr,
 *                 StatusContextMismatch (not a record of this kind).
 * GetBufSize      The bytes of one call's work buffer, 0 where none is needed. Returns StatusOk, StatusNullPtr (either
 *                 pointer), StatusContextMismatch.
 *
 * Failures store nothing in *ppSpec.
 */
typedef struct DCTFwdSpec_16s DCTFwdSpec_16s;
typedef struct DCTInvSpec_16s DCTInvSpec_16s;
typedef struct DCTFwdSpec_32f DCTFwdSpec_32f;
typedef struct DCTInvSpec_32f DCTInvSpec_32f;
typedef struct DCTFwdSpec_64f DCTFwdSpec_64f;
typedef struct DCTInvSpec_64f DCTInvSpec_64f;

Status tevsDCTFwdGetSize_16s(int length, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
Status tevsDCTFwdGetSize_32f(int length, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
Status tevsDCTFwdGetSize_64f(int length, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
Status tevsDCTInvGetSize_16s(int length, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
Status tevsDCTInvGetSize_32f(int length, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
Status tevsDCTInvGetSize_64f(int length, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
Status tevsDCTFwdInit_16s(DCTFwdSpec_16s** ppSpec, int length, int hint, uint8_t* pMemSpec, uint8_t* pMemInit);
Status tevsDCTFwdInit_32f(DCTFwdSpec_32f** ppSpec, int length, int hint, uint8_t* pMemSpec, uint8_t* pMemInit);
Status tevsDCTFwdInit_64f(DCTFwdSpec_64f** ppSpec, int length, int hint, uint8_t* pMemSpec, uint8_t* pMemInit);
Status tevsDCTInvInit_16s(DCTInvSpec_16s** ppSpec, int length, int hint, uint8_t* pMemSpec, uint8_t* pMemInit);
Status tevsDCTInvInit_32f(DCTInvSpec_32f** ppSpec, int length, int hint, uint8_t* pMemSpec, uint8_t* pMemInit);
Status tevsDCTInvInit_64f(DCTInvSpec_64f** ppSpec, int length, int hint, uint8_t* pMemSpec, uint8_t* pMemInit);
Status tevsDCTFwdInitAlloc_16s(DCTFwdSpec_16s** ppSpec, int length, int hint);
Status tevsDCTFwdInitAlloc_32f(DCTFwdSpec_32f** ppSpec, int length, int hint);
Status tevsDCTFwdInitAlloc_64f(DCTFwdSpec_64f** ppSpec, int length, int hint);
Status tevsDCTInvInitAlloc_16s(DCTInvSpec_16s** ppSpec, int length, int hint);
Status tevsDCTInvInitAlloc_32f(DCTInvSpec_32f** ppSpec, int length, int hint);
Status tevsDCTInvInitAlloc_64f(DCTInvSpec_64f** ppSpec, int length, int hint);
Status tevsDCTFwdFree_16s(DCTFwdSpec_16s* pSpec);
Status tevsDCTFwdFree_32f(DCTFwdSpec_32f* pSpec);
Status tevsDCTFwdFree_64f(DCTFwdSpec_64f* pSpec);
Status tevsDCTInvFree_16s(DCTInvSpec_16s* pSpec);
Status tevsDCTInvFree_32f(DCTInvSpec_32f* pSpec);
Status tevsDCTInvFree_64f(DCTInvSpec_64f* pSpec);
Status tevsDCTFwdGetBufSize_16s(const DCTFwdSpec_16s* pSpec, int* pSize);
Status tevsDCTFwdGetBufSize_32f(const DCTFwdSpec_32f* pSpec, int* pSize);
Status tevsDCTFwdGetBufSize_64f(const DCTFwdSpec_64f* pSpec, int* pSize);
Status tevsDCTInvGetBufSize_16s(const DCTInvSpec_16s* pSpec, int* pSize);
Status tevsDCTInvGetBufSize_32f(const DCTInvSpec_32f* pSpec, int* pSize);
Status tevsDCTInvGetBufSize_64f(const DCTInvSpec_64f* pSpec, int* pSize);

/* ---- DCTFwd, DCTInv -------------------------------------------------------------------------------------------------
 *
 * pSrc, pDst     N values each; equal pointers, or the _I forms, transform in place
 * scaleFactor    _Sfs forms: the result times 2^-scaleFactor, to the nearest integer, ties to even, saturated. Any
 *                value.
 * pBuffer        at least GetBufSize bytes, at any address, contents of no matter: the call cannot fail for memory
 *                then; or NULL, and the call takes and returns memory of its own where it needs any (short transforms
 *                do not)
 *
 * The relative error in the Euclidean norm is below 1.3 * sqrt(1 + log2 N) * 2^-24, in double precision 2^-53, and
 * below 2 * that where N is no power of two up to 100 or has a prime factor above 13; docs/accuracy.md has the figures.
 * Results are the same to the bit for any alignment, in place or not; they may differ in rounding between SIMD levels.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (pSpec), StatusContextMismatch
 * (pSpec is no record of this kind), StatusNullPtr (data), StatusNoMemory (pBuffer NULL).
 *
 * Through a real transform of the same length (J. Makhoul, A Fast Cosine Transform in One and Two Dimensions, IEEE
 * Trans. ASSP 28, 1980); from 2 to 32 points, and for short lengths with a large prime factor, as sums of products,
 * halved by symmetry.
 */
Status tevsDCTFwd_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const DCTFwdSpec_16s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsDCTFwd_16s_ISfs(int16_t* pSrcDst, const DCTFwdSpec_16s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsDCTFwd_32f(const float* pSrc, float* pDst, const DCTFwdSpec_32f* pSpec, uint8_t* pBuffer);
Status tevsDCTFwd_32f_I(float* pSrcDst, const DCTFwdSpec_32f* pSpec, uint8_t* pBuffer);
Status tevsDCTFwd_64f(const double* pSrc, double* pDst, const DCTFwdSpec_64f* pSpec, uint8_t* pBuffer);
Status tevsDCTFwd_64f_I(double* pSrcDst, const DCTFwdSpec_64f* pSpec, uint8_t* pBuffer);
Status tevsDCTInv_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const DCTInvSpec_16s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsDCTInv_16s_ISfs(int16_t* pSrcDst, const DCTInvSpec_16s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsDCTInv_32f(const float* pSrc, float* pDst, const DCTInvSpec_32f* pSpec, uint8_t* pBuffer);
Status tevsDCTInv_32f_I(float* pSrcDst, const DCTInvSpec_32f* pSpec, uint8_t* pBuffer);
Status tevsDCTInv_64f(const double* pSrc, double* pDst, const DCTInvSpec_64f* pSpec, uint8_t* pBuffer);
Status tevsDCTInv_64f_I(double* pSrcDst, const DCTInvSpec_64f* pSpec, uint8_t* pBuffer);

TEVS_END

#endif
