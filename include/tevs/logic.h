#ifndef TEVS_LOGIC_H
#define TEVS_LOGIC_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- And, Or, Xor, Not: bit by bit ----------------------------------------------------------------------------------
 *
 *     And     pDst[n] = pSrc1[n] & pSrc2[n]        AndC    pDst[n] = pSrc[n] & val
 *     Or      pDst[n] = pSrc1[n] | pSrc2[n]        OrC     pDst[n] = pSrc[n] | val
 *     Xor     pDst[n] = pSrc1[n] ^ pSrc2[n]        XorC    pDst[n] = pSrc[n] ^ val
 *     Not     pDst[n] = ~pSrc[n]
 *
 * Vectors hold len >= 1 elements each; a destination may equal a source.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len <
 * 1).
 */
Status tevsAnd_8u(const uint8_t* pSrc1, const uint8_t* pSrc2, uint8_t* pDst, int len);
Status tevsAnd_8u_I(const uint8_t* pSrc, uint8_t* pSrcDst, int len);
Status tevsAnd_16u(const uint16_t* pSrc1, const uint16_t* pSrc2, uint16_t* pDst, int len);
Status tevsAnd_16u_I(const uint16_t* pSrc, uint16_t* pSrcDst, int len);
Status tevsAnd_32u(const uint32_t* pSrc1, const uint32_t* pSrc2, uint32_t* pDst, int len);
Status tevsAnd_32u_I(const uint32_t* pSrc, uint32_t* pSrcDst, int len);
Status tevsOr_8u(const uint8_t* pSrc1, const uint8_t* pSrc2, uint8_t* pDst, int len);
Status tevsOr_8u_I(const uint8_t* pSrc, uint8_t* pSrcDst, int len);
Status tevsOr_16u(const uint16_t* pSrc1, const uint16_t* pSrc2, uint16_t* pDst, int len);
Status tevsOr_16u_I(const uint16_t* pSrc, uint16_t* pSrcDst, int len);
Status tevsOr_32u(const uint32_t* pSrc1, const uint32_t* pSrc2, uint32_t* pDst, int len);
Status tevsOr_32u_I(const uint32_t* pSrc, uint32_t* pSrcDst, int len);
Status tevsXor_8u(const uint8_t* pSrc1, const uint8_t* pSrc2, uint8_t* pDst, int len);
Status tevsXor_8u_I(const uint8_t* pSrc, uint8_t* pSrcDst, int len);
Status tevsXor_16u(const uint16_t* pSrc1, const uint16_t* pSrc2, uint16_t* pDst, int len);
Status tevsXor_16u_I(const uint16_t* pSrc, uint16_t* pSrcDst, int len);
Status tevsXor_32u(const uint32_t* pSrc1, const uint32_t* pSrc2, uint32_t* pDst, int len);
Status tevsXor_32u_I(const uint32_t* pSrc, uint32_t* pSrcDst, int len);

Status tevsAndC_8u(const uint8_t* pSrc, uint8_t val, uint8_t* pDst, int len);
Status tevsAndC_8u_I(uint8_t val, uint8_t* pSrcDst, int len);
Status tevsAndC_16u(const uint16_t* pSrc, uint16_t val, uint16_t* pDst, int len);
Status tevsAndC_16u_I(uint16_t val, uint16_t* pSrcDst, int len);
Status tevsAndC_32u(const uint32_t* pSrc, uint32_t val, uint32_t* pDst, int len);
Status tevsAndC_32u_I(uint32_t val, uint32_t* pSrcDst, int len);
Status tevsOrC_8u(const uint8_t* pSrc, uint8_t val, uint8_t* pDst, int len);
Status tevsOrC_8u_I(uint8_t val, uint8_t* pSrcDst, int len);
Status tevsOrC_16u(const uint16_t* pSrc, uint16_t val, uint16_t* pDst, int len);
Status tevsOrC_16u_I(uint16_t val, uint16_t* pSrcDst, int len);
Status tevsOrC_32u(const uint32_t* pSrc, uint32_t val, uint32_t* pDst, int len);
Status tevsOrC_32u_I(uint32_t val, uint32_t* pSrcDst, int len);
Status tevsXorC_8u(const uint8_t* pSrc, uint8_t val, uint8_t* pDst, int len);
Status tevsXorC_8u_I(uint8_t val, uint8_t* pSrcDst, int len);
Status tevsXorC_16u(const uint16_t* pSrc, uint16_t val, uint16_t* pDst, int len);
Status tevsXorC_16u_I(uint16_t val, uint16_t* pSrcDst, int len);
Status tevsXorC_32u(const uint32_t* pSrc, uint32_t val, uint32_t* pDst, int len);
Status tevsXorC_32u_I(uint32_t val, uint32_t* pSrcDst, int len);

Status tevsNot_8u(const uint8_t* pSrc, uint8_t* pDst, int len);
Status tevsNot_8u_I(uint8_t* pSrcDst, int len);
Status tevsNot_16u(const uint16_t* pSrc, uint16_t* pDst, int len);
Status tevsNot_16u_I(uint16_t* pSrcDst, int len);
Status tevsNot_32u(const uint32_t* pSrc, uint32_t* pDst, int len);
Status tevsNot_32u_I(uint32_t* pSrcDst, int len);

/* ---- LShiftC, RShiftC: shifts by a constant -------------------------------------------------------------------------
 *
 *     LShiftC    pDst[n] = pSrc[n] << val    bits that leave the element are dropped, of signed types too: nothing
 *                                            saturates
 *     RShiftC    pDst[n] = pSrc[n] >> val    zeros enter an unsigned element, copies of the sign a signed one
 *
 * pSrc, pDst    len >= 1 elements each; equal pointers work
 * val           >= 0. At the element's width and above, LShiftC and the unsigned RShiftC leave zeros, the signed
 *               RShiftC 0 or -1.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len <
 * 1), StatusShift (val < 0).
 */
Status tevsLShiftC_8u(const uint8_t* pSrc, int val, uint8_t* pDst, int len);
Status tevsLShiftC_8u_I(int val, uint8_t* pSrcDst, int len);
Status tevsLShiftC_16u(const uint16_t* pSrc, int val, uint16_t* pDst, int len);
Status tevsLShiftC_16u_I(int val, uint16_t* pSrcDst, int len);
Status tevsLShiftC_16s(const int16_t* pSrc, int val, int16_t* pDst, int len);
Status tevsLShiftC_16s_I(int val, int16_t* pSrcDst, int len);
Status tevsLShiftC_32s(const int32_t* pSrc, int val, int32_t* pDst, int len);
Status tevsLShiftC_32s_I(int val, int32_t* pSrcDst, int len);
Status tevsRShiftC_8u(const uint8_t* pSrc, int val, uint8_t* pDst, int len);
Status tevsRShiftC_8u_I(int val, uint8_t* pSrcDst, int len);
Status tevsRShiftC_16u(const uint16_t* pSrc, int val, uint16_t* pDst, int len);
Status tevsRShiftC_16u_I(int val, uint16_t* pSrcDst, int len);
Status tevsRShiftC_16s(const int16_t* pSrc, int val, int16_t* pDst, int len);
Status tevsRShiftC_16s_I(int val, int16_t* pSrcDst, int len);
Status tevsRShiftC_32s(const int32_t* pSrc, int val, int32_t* pDst, int len);
Status tevsRShiftC_32s_I(int val, int32_t* pSrcDst, int len);

TEVS_END

#endif
