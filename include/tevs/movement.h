#ifndef TEVS_MOVEMENT_H
#define TEVS_MOVEMENT_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- Copy, Move, Set, Zero: vectors as they are ---------------------------------------------------------------------
 *
 *     Copy    pDst[n] = pSrc[n]
 *     Move    pDst[n] = pSrc[n], where the vectors may overlap in any way
 *     Set     pDst[n] = val
 *     Zero    pDst[n] = 0
 *
 * pSrc, pDst    len >= 1 elements each; bits are moved as they are, a NaN keeps its payload. Copy takes equal pointers,
 *               but no other overlap.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len <
 * 1).
 */
Status tevsCopy_8u(const uint8_t* pSrc, uint8_t* pDst, int len);
Status tevsCopy_16s(const int16_t* pSrc, int16_t* pDst, int len);
Status tevsCopy_32s(const int32_t* pSrc, int32_t* pDst, int len);
Status tevsCopy_32f(const float* pSrc, float* pDst, int len);
Status tevsCopy_64s(const int64_t* pSrc, int64_t* pDst, int len);
Status tevsCopy_64f(const double* pSrc, double* pDst, int len);
Status tevsCopy_16sc(const Complex16s* pSrc, Complex16s* pDst, int len);
Status tevsCopy_32sc(const Complex32s* pSrc, Complex32s* pDst, int len);
Status tevsCopy_32fc(const Complex32f* pSrc, Complex32f* pDst, int len);
Status tevsCopy_64sc(const Complex64s* pSrc, Complex64s* pDst, int len);
Status tevsCopy_64fc(const Complex64f* pSrc, Complex64f* pDst, int len);

Status tevsMove_8u(const uint8_t* pSrc, uint8_t* pDst, int len);
Status tevsMove_16s(const int16_t* pSrc, int16_t* pDst, int len);
Status tevsMove_32s(const int32_t* pSrc, int32_t* pDst, int len);
Status tevsMove_32f(const float* pSrc, float* pDst, int len);
Status tevsMove_64s(const int64_t* pSrc, int64_t* pDst, int len);
Status tevsMove_64f(const double* pSrc, double* pDst, int len);
Status tevsMove_16sc(const Complex16s* pSrc, Complex16s* pDst, int len);
Status tevsMove_32sc(const Complex32s* pSrc, Complex32s* pDst, int len);
Status tevsMove_32fc(const Complex32f* pSrc, Complex32f* pDst, int len);
Status tevsMove_64sc(const Complex64s* pSrc, Complex64s* pDst, int len);
Status tevsMove_64fc(const Complex64f* pSrc, Complex64f* pDst, int len);

Status tevsSet_8u(uint8_t val, uint8_t* pDst, int len);
Status tevsSet_16s(int16_t val, int16_t* pDst, int len);
Status tevsSet_32s(int32_t val, int32_t* pDst, int len);
Status tevsSet_32f(float val, float* pDst, int len);
Status tevsSet_64s(int64_t val, int64_t* pDst, int len);
Status tevsSet_64f(double val, double* pDst, int len);
Status tevsSet_16sc(Complex16s val, Complex16s* pDst, int len);
Status tevsSet_32sc(Complex32s val, Complex32s* pDst, int len);
Status tevsSet_32fc(Complex32f val, Complex32f* pDst, int len);
Status tevsSet_64sc(Complex64s val, Complex64s* pDst, int len);
Status tevsSet_64fc(Complex64f val, Complex64f* pDst, int len);

Status tevsZero_8u(uint8_t* pDst, int len);
Status tevsZero_16s(int16_t* pDst, int len);
Status tevsZero_32s(int32_t* pDst, int len);
Status tevsZero_32f(float* pDst, int len);
Status tevsZero_64s(int64_t* pDst, int len);
Status tevsZero_64f(double* pDst, int len);
Status tevsZero_16sc(Complex16s* pDst, int len);
Status tevsZero_32sc(Complex32s* pDst, int len);
Status tevsZero_32fc(Complex32f* pDst, int len);
Status tevsZero_64sc(Complex64s* pDst, int len);
Status tevsZero_64fc(Complex64f* pDst, int len);

/* ---- Copy_1u: a string of bits --------------------------------------------------------------------------------------
 *
 *     bit dstBitOffset + n of pDst = bit srcBitOffset + n of pSrc,  n = 0 .. len-1
 *
 * Bit k is in byte k / 8, the most significant bit of a byte first:
 *
 *     byte     0                  1
 *     bit      0 1 2 3 4 5 6 7    8 9 10 ...
 *     value    128 64 ... 2 1     128 64 ...
 *
 * pSrc, pDst        only bytes that hold a bit of the string are touched; the other bits of pDst's first and last byte
 *                   keep their values
 * len               bits, >= 1
 * srcBitOffset,
 * dstBitOffset      >= 0, also beyond 7. Strings must not overlap, unless pointers and offsets are equal.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len <
 * 1, then a negative offset).
 */
Status tevsCopy_1u(const uint8_t* pSrc, uint8_t* pDst, int len, int srcBitOffset, int dstBitOffset);

/* ---- Flip, SwapBytes: reversed order --------------------------------------------------------------------------------
 *
 *     Flip         pDst[n] = pSrc[len-1-n]
 *     SwapBytes    pDst[n] = pSrc[n] with its bytes in reversed order; an element of 24u is three bytes, packed
 *
 * pSrc, pDst    len >= 1 elements each; equal pointers work
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len <
 * 1).
 */
Status tevsFlip_8u(const uint8_t* pSrc, uint8_t* pDst, int len);
Status tevsFlip_8u_I(uint8_t* pSrcDst, int len);
Status tevsFlip_16u(const uint16_t* pSrc, uint16_t* pDst, int len);
Status tevsFlip_16u_I(uint16_t* pSrcDst, int len);
Status tevsFlip_32f(const float* pSrc, float* pDst, int len);
Status tevsFlip_32f_I(float* pSrcDst, int len);
Status tevsFlip_64f(const double* pSrc, double* pDst, int len);
Status tevsFlip_64f_I(double* pSrcDst, int len);

Status tevsSwapBytes_16u(const uint16_t* pSrc, uint16_t* pDst, int len);
Status tevsSwapBytes_16u_I(uint16_t* pSrcDst, int len);
Status tevsSwapBytes_24u(const uint8_t* pSrc, uint8_t* pDst, int len);
Status tevsSwapBytes_24u_I(uint8_t* pSrcDst, int len);
Status tevsSwapBytes_32u(const uint32_t* pSrc, uint32_t* pDst, int len);
Status tevsSwapBytes_32u_I(uint32_t* pSrcDst, int len);
Status tevsSwapBytes_64u(const uint64_t* pSrc, uint64_t* pDst, int len);
Status tevsSwapBytes_64u_I(uint64_t* pSrcDst, int len);

/* ---- Real, Imag, CplxToReal, RealToCplx: the parts of a complex vector ----------------------------------------------
 *
 *     Real          pDst[n] = pSrc[n].re
 *     Imag          pDst[n] = pSrc[n].im
 *     CplxToReal    pDstRe[n] = pSrc[n].re    pDstIm[n] = pSrc[n].im
 *     RealToCplx    pDst[n] = (pSrcRe[n], pSrcIm[n]); NULL for one of the two stands for zeros
 *
 * Sources and destinations hold len >= 1 elements each.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer; of RealToCplx the
 * destination), StatusBadSize (len < 1), StatusNullPtr (of RealToCplx both sources).
 */
Status tevsReal_16sc(const Complex16s* pSrc, int16_t* pDst, int len);
Status tevsReal_32fc(const Complex32f* pSrc, float* pDst, int len);
Status tevsReal_64fc(const Complex64f* pSrc, double* pDst, int len);
Status tevsImag_16sc(const Complex16s* pSrc, int16_t* pDst, int len);
Status tevsImag_32fc(const Complex32f* pSrc, float* pDst, int len);
Status tevsImag_64fc(const Complex64f* pSrc, double* pDst, int len);

Status tevsCplxToReal_16sc(const Complex16s* pSrc, int16_t* pDstRe, int16_t* pDstIm, int len);
Status tevsCplxToReal_32fc(const Complex32f* pSrc, float* pDstRe, float* pDstIm, int len);
Status tevsCplxToReal_64fc(const Complex64f* pSrc, double* pDstRe, double* pDstIm, int len);

Status tevsRealToCplx_16s(const int16_t* pSrcRe, const int16_t* pSrcIm, Complex16s* pDst, int len);
Status tevsRealToCplx_32f(const float* pSrcRe, const float* pSrcIm, Complex32f* pDst, int len);
Status tevsRealToCplx_64f(const double* pSrcRe, const double* pSrcIm, Complex64f* pDst, int len);

/* ---- Conj, ConjFlip: the complex conjugate --------------------------------------------------------------------------
 *
 *     Conj        pDst[n] = (pSrc[n].re, -pSrc[n].im)
 *     ConjFlip    pDst[n] = (pSrc[len-1-n].re, -pSrc[len-1-n].im)
 *
 * pSrc, pDst    len >= 1 elements each; equal pointers work. The negative of -32768 is 32767; of a floating-point part
 *               the sign bit is flipped, of zeros and NaN too.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len <
 * 1).
 */
Status tevsConj_16sc(const Complex16s* pSrc, Complex16s* pDst, int len);
Status tevsConj_16sc_I(Complex16s* pSrcDst, int len);
Status tevsConj_32fc(const Complex32f* pSrc, Complex32f* pDst, int len);
Status tevsConj_32fc_I(Complex32f* pSrcDst, int len);
Status tevsConj_64fc(const Complex64f* pSrc, Complex64f* pDst, int len);
Status tevsConj_64fc_I(Complex64f* pSrcDst, int len);

Status tevsConjFlip_16sc(const Complex16s* pSrc, Complex16s* pDst, int len);
Status tevsConjFlip_32fc(const Complex32f* pSrc, Complex32f* pDst, int len);
Status tevsConjFlip_64fc(const Complex64f* pSrc, Complex64f* pDst, int len);

TEVS_END

#endif
