#ifndef TEVS_G711_H
#define TEVS_G711_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- G.711: companding to the A-law and mu-law codes of ITU-T Recommendation G.711 ----------------------------------
 *
 *     LinToALaw, LinToMuLaw       pDst[n] = the 8-bit code of pSrc[n]
 *     ALawToLin, MuLawToLin       pDst[n] = the sample that code pSrc[n] stands for
 *     ALawToMuLaw, MuLawToALaw    pDst[n] = the other law's code for code pSrc[n], by the tables of the Recommendation
 *                                 (which are not those of a decoder with an encoder behind it: 32 and 44 of the 256
 *                                 codes differ)
 *
 * codes        as they are sent: A-law codes with every second bit inverted, mu-law codes with all bits. Every byte is
 *              a code. Silence is 0xd5 in A-law (the sample 8) and 0xff in mu-law (the sample 0)
 * 16s          -32768 .. 32767; A-law keeps the upper 13 bits, mu-law the upper 14. Negative samples are coded by their
 *              one's complement
 * 32f          -1 .. 1 for the same range. Encoders take 32768 x, rounded to the nearest integer, halves away from
 *              zero, saturated; NaN counts as -1. A-law goes by the sign of the integer, mu-law by x >= 0, so that what
 *              rounds to 0 from below has the code 0x7f. Decoders give samples / 32768, exact
 * pSrc, pDst   len >= 1 elements each; transcoding may be done in place
 *
 * Decoding and encoding again gives every code but the mu-law one of -0, 0x7f, which becomes 0xff.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len <
 * 1).
 */
Status tevsLinToALaw_16s8u(const int16_t* pSrc, uint8_t* pDst, int len);
Status tevsLinToALaw_32f8u(const float* pSrc, uint8_t* pDst, int len);
Status tevsLinToMuLaw_16s8u(const int16_t* pSrc, uint8_t* pDst, int len);
Status tevsLinToMuLaw_32f8u(const float* pSrc, uint8_t* pDst, int len);

Status tevsALawToLin_8u16s(const uint8_t* pSrc, int16_t* pDst, int len);
Status tevsALawToLin_8u32f(const uint8_t* pSrc, float* pDst, int len);
Status tevsMuLawToLin_8u16s(const uint8_t* pSrc, int16_t* pDst, int len);
Status tevsMuLawToLin_8u32f(const uint8_t* pSrc, float* pDst, int len);

Status tevsALawToMuLaw_8u(const uint8_t* pSrc, uint8_t* pDst, int len);
Status tevsMuLawToALaw_8u(const uint8_t* pSrc, uint8_t* pDst, int len);

TEVS_END

#endif
