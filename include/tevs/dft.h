#ifndef TEVS_DFT_H
#define TEVS_DFT_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- DFT records ----------------------------------------------------------------------------------------------------
 *
 * A record fixes the length N >= 1 of a transform, its normalisation and its tables. It is built once and then only
 * read: any number of threads may use one record at once, each with its own work buffer. All records are the library's
 * own memory; do not copy or move one.
 *
 *     DFTSpec_C_32fc, DFTSpec_C_64fc    complex, interleaved
 *     DFTSpec_C_32f, DFTSpec_C_64f      complex, real and imaginary parts in two arrays
 *     DFTSpec_R_32f, DFTSpec_R_64f      real
 *     DFTSpec_C_16sc, DFTSpec_C_16s, DFTSpec_R_16s    the same of 16-bit samples, computed in single precision
 *     DFTOutOrdSpec_C_32fc, DFTOutOrdSpec_C_64fc      complex, interleaved, the spectrum in an order of its own (below)
 *
 * N               A power of two is transformed as by the FFT (tevs/fft.h). Lengths whose prime factors are all below
 *                 150 cost little more per point than the powers of two around them; a factor of 150 or more makes of
 *                 the whole transform a convolution of two to four times the length: two to six times the time. Of a
 *                 prime N up to 45000 where N - 1 is a product of factors up to 16, some of which fill the registers of
 *                 the SIMD level, it is one of N - 1: two to three times.
 * flag            ScaleFwdByN or ScaleInvByN: that direction's result times 1/N; ScaleBySqrtN: both directions' times
 *                 1/sqrt(N); NoScale
 * hint            any value, without effect
 *
 * InitAlloc       Builds a record and stores its address. Returns StatusOk, StatusNullPtr (ppSpec), StatusBadSize
 *                 (length < 1), StatusNoMemory, StatusFftFlag (flag), in this order; *ppSpec is stored on success
 *                 alone. Lengths whose work buffer is beyond INT_MAX bytes are StatusNoMemory.
 * Free            Gives a record's memory back. Returns StatusOk, StatusNullPtr, StatusContextMismatch (not a record of
 *                 this kind).
 * GetBufSize      The bytes of one call's work buffer, 0 where none is needed. Returns StatusOk, StatusNullPtr (either
 *                 pointer), StatusContextMismatch.
 */
typedef struct DFTSpec_C_16sc DFTSpec_C_16sc;
typedef struct DFTSpec_C_16s DFTSpec_C_16s;
typedef struct DFTSpec_R_16s DFTSpec_R_16s;
typedef struct DFTSpec_C_32fc DFTSpec_C_32fc;
typedef struct DFTSpec_C_32f DFTSpec_C_32f;
typedef struct DFTSpec_R_32f DFTSpec_R_32f;
typedef struct DFTSpec_C_64fc DFTSpec_C_64fc;
typedef struct DFTSpec_C_64f DFTSpec_C_64f;
typedef struct DFTSpec_R_64f DFTSpec_R_64f;

Status tevsDFTInitAlloc_C_16sc(DFTSpec_C_16sc** ppSpec, int length, int flag, int hint);
Status tevsDFTInitAlloc_C_16s(DFTSpec_C_16s** ppSpec, int length, int flag, int hint);
Status tevsDFTInitAlloc_R_16s(DFTSpec_R_16s** ppSpec, int length, int flag, int hint);
Status tevsDFTInitAlloc_C_32fc(DFTSpec_C_32fc** ppSpec, int length, int flag, int hint);
Status tevsDFTInitAlloc_C_32f(DFTSpec_C_32f** ppSpec, int length, int flag, int hint);
Status tevsDFTInitAlloc_R_32f(DFTSpec_R_32f** ppSpec, int length, int flag, int hint);
Status tevsDFTInitAlloc_C_64fc(DFTSpec_C_64fc** ppSpec, int length, int flag, int hint);
Status tevsDFTInitAlloc_C_64f(DFTSpec_C_64f** ppSpec, int length, int flag, int hint);
Status tevsDFTInitAlloc_R_64f(DFTSpec_R_64f** ppSpec, int length, int flag, int hint);
Status tevsDFTFree_C_16sc(DFTSpec_C_16sc* pSpec);
Status tevsDFTFree_C_16s(DFTSpec_C_16s* pSpec);
Status tevsDFTFree_R_16s(DFTSpec_R_16s* pSpec);
Status tevsDFTFree_C_32fc(DFTSpec_C_32fc* pSpec);
Status tevsDFTFree_C_32f(DFTSpec_C_32f* pSpec);
Status tevsDFTFree_R_32f(DFTSpec_R_32f* pSpec);
Status tevsDFTFree_C_64fc(DFTSpec_C_64fc* pSpec);
Status tevsDFTFree_C_64f(DFTSpec_C_64f* pSpec);
Status tevsDFTFree_R_64f(DFTSpec_R_64f* pSpec);
Status tevsDFTGetBufSize_C_16sc(const DFTSpec_C_16sc* pSpec, int* pSize);
Status tevsDFTGetBufSize_C_16s(const DFTSpec_C_16s* pSpec, int* pSize);
Status tevsDFTGetBufSize_R_16s(const DFTSpec_R_16s* pSpec, int* pSize);
Status tevsDFTGetBufSize_C_32fc(const DFTSpec_C_32fc* pSpec, int* pSize);
Status tevsDFTGetBufSize_C_32f(const DFTSpec_C_32f* pSpec, int* pSize);
Status tevsDFTGetBufSize_R_32f(const DFTSpec_R_32f* pSpec, int* pSize);
Status tevsDFTGetBufSize_C_64fc(const DFTSpec_C_64fc* pSpec, int* pSize);
Status tevsDFTGetBufSize_C_64f(const DFTSpec_C_64f* pSpec, int* pSize);
Status tevsDFTGetBufSize_R_64f(const DFTSpec_R_64f* pSpec, int* pSize);

/* ---- DFTFwd, DFTInv, complex ----------------------------------------------------------------------------------------
 *
 *     forward    y[k] = f * sum over n = 0 .. N-1 of  x[n] * exp(-2 pi i n k / N)
 *     inverse    y[n] = f * sum over k = 0 .. N-1 of  x[k] * exp(+2 pi i n k / N)
 *
 * with f the record's normalisation of that direction, 1 where it has none.
 *
 * pSrc, pDst            N values each in natural order; equal pointers transform in place
 * pSrcRe, pSrcIm, ...   N real and N imaginary parts; any array of the source may be any of the destination
 * scaleFactor           16-bit kinds: the result, times 2^-scaleFactor on top of the normalisation, to the nearest
 *                       integer, ties to even, saturated. Any value.
 * pBuffer               at least GetBufSize bytes, at any address, contents of no matter: the call cannot fail for
 *                       memory then; or NULL, and the call takes and returns memory of its own where it needs any
 *                       (short transforms do not)
 *
 * The relative error in the Euclidean norm is about 0.6 * sqrt(1 + log2 N) * 2^-24, in double precision 2^-53, and
 * below twice that; where N has a prime factor above 13, about as much and below three times. docs/accuracy.md has the
 * figures. Results are the same to the bit for any alignment, in place or not; they may differ in rounding between SIMD
 * levels (see TEVS_LEVEL in the README).
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (pSpec), StatusContextMismatch
 * (pSpec is no record of this kind), StatusNullPtr (data), StatusNoMemory (pBuffer NULL).
 *
 * Stockham autosort passes of radices 2 to 16 (C. Van Loan, Computational Frameworks for the Fast Fourier Transform,
 * SIAM 1992), larger primes by symmetric sums (R. C. Singleton, An Algorithm for Computing the Mixed Radix Fast Fourier
 * Transform, IEEE Trans. Audio Electroacoust. 17, 1969); convolution with a chirp (L. I. Bluestein, A Linear Filtering
 * Approach to the Computation of Discrete Fourier Transform, same journal 18, 1970) or with a prime's roots of unity
 * (C. M. Rader, Discrete Fourier Transforms When the Number of Data Samples Is Prime, Proc. IEEE 56, 1968).
 */
Status tevsDFTFwd_CToC_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, const DFTSpec_C_16sc* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsDFTInv_CToC_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, const DFTSpec_C_16sc* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsDFTFwd_CToC_16s_Sfs(const int16_t* pSrcRe, const int16_t* pSrcIm, int16_t* pDstRe, int16_t* pDstIm, const DFTSpec_C_16s* pSpec, int scaleFactor,
                               uint8_t* pBuffer);
Status tevsDFTInv_CToC_16s_Sfs(const int16_t* pSrcRe, const int16_t* pSrcIm, int16_t* pDstRe, int16_t* pDstIm, const DFTSpec_C_16s* pSpec, int scaleFactor,
                               uint8_t* pBuffer);
Status tevsDFTFwd_CToC_32fc(const Complex32f* pSrc, Complex32f* pDst, const DFTSpec_C_32fc* pSpec, uint8_t* pBuffer);
Status tevsDFTInv_CToC_32fc(const Complex32f* pSrc, Complex32f* pDst, const DFTSpec_C_32fc* pSpec, uint8_t* pBuffer);
Status tevsDFTFwd_CToC_32f(const float* pSrcRe, const float* pSrcIm, float* pDstRe, float* pDstIm, const DFTSpec_C_32f* pSpec, uint8_t* pBuffer);
Status tevsDFTInv_CToC_32f(const float* pSrcRe, const float* pSrcIm, float* pDstRe, float* pDstIm, const DFTSpec_C_32f* pSpec, uint8_t* pBuffer);
Status tevsDFTFwd_CToC_64fc(const Complex64f* pSrc, Complex64f* pDst, const DFTSpec_C_64fc* pSpec, uint8_t* pBuffer);
Status tevsDFTInv_CToC_64fc(const Complex64f* pSrc, Complex64f* pDst, const DFTSpec_C_64fc* pSpec, uint8_t* pBuffer);
Status tevsDFTFwd_CToC_64f(const double* pSrcRe, const double* pSrcIm, double* pDstRe, double* pDstIm, const DFTSpec_C_64f* pSpec, uint8_t* pBuffer);
Status tevsDFTInv_CToC_64f(const double* pSrcRe, const double* pSrcIm, double* pDstRe, double* pDstIm, const DFTSpec_C_64f* pSpec, uint8_t* pBuffer);

/* ---- DFTFwd, DFTInv, real -------------------------------------------------------------------------------------------
 *
 * The spectrum of N reals has floor(N/2) + 1 values X[0] .. X[floor(N/2)] of their own; the rest is X[N-k] =
 * conj(X[k]). X[0] is real, and for an even N X[N/2]. R is the real, I the imaginary part:
 *
 *     N even: position    0      1       2      3      4      5    ...   N-2       N-1       N       N+1
 *     CCS                 R[0]   0       R[1]   I[1]   R[2]   I[2] ...   R[N/2-1]  I[N/2-1]  R[N/2]  0   N + 2 values
 *     Pack                R[0]   R[1]    I[1]   R[2]   I[2]        ...   I[N/2-1]  R[N/2]                   N values
 *     Perm                R[0]   R[N/2]  R[1]   I[1]   R[2]   I[2] ...   R[N/2-1]  I[N/2-1]                 N values
 *
 *     N odd, H = (N-1)/2: 0      1       2      3      4      5    ...   N-2    N-1    N
 *     CCS                 R[0]   0       R[1]   I[1]   R[2]   I[2] ...          R[H]   I[H]              N + 1 values
 *     Pack, Perm          R[0]   R[1]    I[1]   R[2]   I[2]        ...   R[H]   I[H]                        N values
 *
 * N = 1: the one value; CCS adds a zero. N = 2: Pack and Perm are the same. These are the formats of MulPack, MulPerm,
 * ConjPack, ConjPerm and ConjCcs (tevs/fft.h).
 *
 *     RToCCS, RToPack, RToPerm    X[k] = f * sum over n = 0 .. N-1 of  x[n] * exp(-2 pi i n k / N)
 *     CCSToR, PackToR, PermToR    x[n] = f * sum over k = 0 .. N-1 of  X[k] * exp(+2 pi i n k / N); the zeros of CCS
 *                                                                      are not read
 *
 * pSrc, pDst    N reals and a spectrum of the form's length; equal pointers transform in place (CCS: the vector has the
 *               spectrum's length)
 *
 * scaleFactor, pBuffer, error, statuses: as for the complex transforms.
 */
Status tevsDFTFwd_RToCCS_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const DFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsDFTFwd_RToPack_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const DFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsDFTFwd_RToPerm_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const DFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsDFTFwd_RToCCS_32f(const float* pSrc, float* pDst, const DFTSpec_R_32f* pSpec, uint8_t* pBuffer);
Status tevsDFTFwd_RToPack_32f(const float* pSrc, float* pDst, const DFTSpec_R_32f* pSpec, uint8_t* pBuffer);
Status tevsDFTFwd_RToPerm_32f(const float* pSrc, float* pDst, const DFTSpec_R_32f* pSpec, uint8_t* pBuffer);
Status tevsDFTFwd_RToCCS_64f(const double* pSrc, double* pDst, const DFTSpec_R_64f* pSpec, uint8_t* pBuffer);
Status tevsDFTFwd_RToPack_64f(const double* pSrc, double* pDst, const DFTSpec_R_64f* pSpec, uint8_t* pBuffer);
Status tevsDFTFwd_RToPerm_64f(const double* pSrc, double* pDst, const DFTSpec_R_64f* pSpec, uint8_t* pBuffer);
Status tevsDFTInv_CCSToR_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const DFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsDFTInv_PackToR_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const DFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsDFTInv_PermToR_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const DFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer);
Status tevsDFTInv_CCSToR_32f(const float* pSrc, float* pDst, const DFTSpec_R_32f* pSpec, uint8_t* pBuffer);
Status tevsDFTInv_PackToR_32f(const float* pSrc, float* pDst, const DFTSpec_R_32f* pSpec, uint8_t* pBuffer);
Status tevsDFTInv_PermToR_32f(const float* pSrc, float* pDst, const DFTSpec_R_32f* pSpec, uint8_t* pBuffer);
Status tevsDFTInv_CCSToR_64f(const double* pSrc, double* pDst, const DFTSpec_R_64f* pSpec, uint8_t* pBuffer);
Status tevsDFTInv_PackToR_64f(const double* pSrc, double* pDst, const DFTSpec_R_64f* pSpec, uint8_t* pBuffer);
Status tevsDFTInv_PermToR_64f(const double* pSrc, double* pDst, const DFTSpec_R_64f* pSpec, uint8_t* pBuffer);

/* ---- DFTOutOrd ------------------------------------------------------------------------------------------------------
 *
 * The complex transforms of above for convolution and filtering in the frequency domain, where no bin is asked for by
 * its number. The spectrum may come in any order, which is the same for every call with a record and for every record
 * of that kind and length; so products of two spectra, element by element, invert to the cyclic convolution. Do not
 * rely on the order being that of another version of the library.
 *
 * Records, arguments, statuses: as those of DFTSpec_C_32fc and DFTSpec_C_64fc.
 */
typedef struct DFTOutOrdSpec_C_32fc DFTOutOrdSpec_C_32fc;
typedef struct DFTOutOrdSpec_C_64fc DFTOutOrdSpec_C_64fc;

Status tevsDFTOutOrdInitAlloc_C_32fc(DFTOutOrdSpec_C_32fc** ppSpec, int length, int flag, int hint);
Status tevsDFTOutOrdInitAlloc_C_64fc(DFTOutOrdSpec_C_64fc** ppSpec, int length, int flag, int hint);
Status tevsDFTOutOrdFree_C_32fc(DFTOutOrdSpec_C_32fc* pSpec);
Status tevsDFTOutOrdFree_C_64fc(DFTOutOrdSpec_C_64fc* pSpec);
Status tevsDFTOutOrdGetBufSize_C_32fc(const DFTOutOrdSpec_C_32fc* pSpec, int* pSize);
Status tevsDFTOutOrdGetBufSize_C_64fc(const DFTOutOrdSpec_C_64fc* pSpec, int* pSize);
Status tevsDFTOutOrdFwd_CToC_32fc(const Complex32f* pSrc, Complex32f* pDst, const DFTOutOrdSpec_C_32fc* pSpec, uint8_t* pBuffer);
Status tevsDFTOutOrdInv_CToC_32fc(const Complex32f* pSrc, Complex32f* pDst, const DFTOutOrdSpec_C_32fc* pSpec, uint8_t* pBuffer);
Status tevsDFTOutOrdFwd_CToC_64fc(const Complex64f* pSrc, Complex64f* pDst, const DFTOutOrdSpec_C_64fc* pSpec, uint8_t* pBuffer);
Status tevsDFTOutOrdInv_CToC_64fc(const Complex64f* pSrc, Complex64f* pDst, const DFTOutOrdSpec_C_64fc* pSpec, uint8_t* pBuffer);

TEVS_END

#endif
