#ifndef TEVS_CONVERSION_H
#define TEVS_CONVERSION_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- Convert: a vector in another sample type -----------------------------------------------------------------------
 *
 *     to a wider type          pDst[n] = pSrc[n], exact
 *     32s32f, 64f32f           pDst[n] = pSrc[n] rounded to nearest, ties to even; beyond the single-precision range:
 *                              infinity
 *     32s16s                   pDst[n] = pSrc[n], saturated
 *     integer to float, _Sfs   pDst[n] = pSrc[n] * 2^-scaleFactor, with scaleFactor taken as -112 .. 126 at most;
 *                              32s32f rounds pSrc[n] to single precision first, and gives infinity beyond that range,
 *                              which large numbers reach from a scaleFactor of -97 on down
 *     integer, _Sfs            pDst[n] = pSrc[n] * 2^-scaleFactor, to nearest, ties to even, saturated;
 *                              64s32s takes 63 for any larger scaleFactor, 32s24s 31
 *     float to integer, _Sfs   pDst[n] = pSrc[n] * 2^-scaleFactor, rounded by rndMode, saturated; NaN gives the type's
 *                              minimum
 *
 * 24s, 24u      3 bytes an element, the least significant first; len counts elements
 * 16f           IEEE 754 binary16. To it: one rounding, by rndMode; subnormals and signs of zero are kept; what is
 *               beyond the range becomes infinity (RoundNearest) or 65504 (toward zero). NaN stays NaN, quiet, with its
 *               sign. 16f16s: infinities give 32767 and -32768, NaN -32768
 * pSrc, pDst    len >= 1 elements each; types of the same width may share one vector
 * rndMode       float to integer: RoundTowardZero truncates; RoundNearest, and any other value, rounds to nearest with
 *               ties to even. 16f, both ways: RoundNearest rounds so; RoundTowardZero, and any other value, truncates.
 *               The 24-bit forms round to nearest.
 * scaleFactor   any integer; the factor itself never overflows, so 0 stays 0, and is a power of two: the one rounding
 *               is that of the formula above
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer), StatusBadSize (len <
 * 1).
 */
Status tevsConvert_8s16s(const int8_t* pSrc, int16_t* pDst, int len);
Status tevsConvert_16s32s(const int16_t* pSrc, int32_t* pDst, int len);
Status tevsConvert_32s64f(const int32_t* pSrc, double* pDst, int len);
Status tevsConvert_32f64f(const float* pSrc, double* pDst, int len);
Status tevsConvert_24s32s(const uint8_t* pSrc, int32_t* pDst, int len);
Status tevsConvert_24u32u(const uint8_t* pSrc, uint32_t* pDst, int len);

Status tevsConvert_8s32f(const int8_t* pSrc, float* pDst, int len);
Status tevsConvert_8u32f(const uint8_t* pSrc, float* pDst, int len);
Status tevsConvert_16s32f(const int16_t* pSrc, float* pDst, int len);
Status tevsConvert_16u32f(const uint16_t* pSrc, float* pDst, int len);
Status tevsConvert_32s32f(const int32_t* pSrc, float* pDst, int len);
Status tevsConvert_24s32f(const uint8_t* pSrc, float* pDst, int len);
Status tevsConvert_24u32f(const uint8_t* pSrc, float* pDst, int len);
Status tevsConvert_16f32f(const uint16_t* pSrc, float* pDst, int len);

Status tevsConvert_64f32f(const double* pSrc, float* pDst, int len);
Status tevsConvert_32s16s(const int32_t* pSrc, int16_t* pDst, int len);

Status tevsConvert_16s32f_Sfs(const int16_t* pSrc, float* pDst, int len, int scaleFactor);
Status tevsConvert_16s64f_Sfs(const int16_t* pSrc, double* pDst, int len, int scaleFactor);
Status tevsConvert_32s32f_Sfs(const int32_t* pSrc, float* pDst, int len, int scaleFactor);
Status tevsConvert_32s64f_Sfs(const int32_t* pSrc, double* pDst, int len, int scaleFactor);

Status tevsConvert_32s16s_Sfs(const int32_t* pSrc, int16_t* pDst, int len, int scaleFactor);
Status tevsConvert_64s32s_Sfs(const int64_t* pSrc, int32_t* pDst, int len, int scaleFactor);
Status tevsConvert_32s24s_Sfs(const int32_t* pSrc, uint8_t* pDst, int len, int scaleFactor);
Status tevsConvert_32u24u_Sfs(const uint32_t* pSrc, uint8_t* pDst, int len, int scaleFactor);

Status tevsConvert_32f8s_Sfs(const float* pSrc, int8_t* pDst, int len, int rndMode, int scaleFactor);
Status tevsConvert_32f8u_Sfs(const float* pSrc, uint8_t* pDst, int len, int rndMode, int scaleFactor);
Status tevsConvert_32f16s_Sfs(const float* pSrc, int16_t* pDst, int len, int rndMode, int scaleFactor);
Status tevsConvert_32f16u_Sfs(const float* pSrc, uint16_t* pDst, int len, int rndMode, int scaleFactor);
Status tevsConvert_32f32s_Sfs(const float* pSrc, int32_t* pDst, int len, int rndMode, int scaleFactor);
Status tevsConvert_64f32s_Sfs(const double* pSrc, int32_t* pDst, int len, int rndMode, int scaleFactor);
Status tevsConvert_32f24s_Sfs(const float* pSrc, uint8_t* pDst, int len, int scaleFactor);
Status tevsConvert_32f24u_Sfs(const float* pSrc, uint8_t* pDst, int len, int scaleFactor);

Status tevsConvert_16s16f(const int16_t* pSrc, uint16_t* pDst, int len, int rndMode);
Status tevsConvert_32f16f(const float* pSrc, uint16_t* pDst, int len, int rndMode);

Status tevsConvert_16f16s_Sfs(const uint16_t* pSrc, int16_t* pDst, int len, int rndMode, int scaleFactor);

/* ---- Join, Split: channels in vectors of their own, and interleaved -------------------------------------------------
 *
 * Frame f of the interleaved vector holds sample f of every channel, channel 0 first.
 *
 *     Join          pDst[f * nChannels + k] = pSrc[k][f]            rounded to nearest, ties to even, saturated; NaN
 *                                                                   gives the minimum
 *     JoinScaled    pDst[f * nChannels + k] = pSrc[k][f] * full     likewise; full is 2^15 for 16s and 2^23 for 24s
 *     SplitScaled   pDst[k][f] = pSrc[f * nChannels + k] / full     exact: -1 .. 1 is the full range, and JoinScaled
 *                                                                   undoes it
 *
 * pSrc, pDst    the interleaved vector of nChannels * chanLen samples (24s: of 3 bytes), and nChannels >= 1 pointers to
 *               chanLen >= 1 samples each
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (the interleaved vector),
 * StatusBadSize (nChannels < 1 or chanLen < 1), StatusNullPtr (the array of channels, or any channel).
 */
Status tevsJoin_32f16s_D2L(const float* const* pSrc, int nChannels, int chanLen, int16_t* pDst);

Status tevsJoinScaled_32f16s_D2L(const float* const* pSrc, int nChannels, int chanLen, int16_t* pDst);
Status tevsJoinScaled_32f24s_D2L(const float* const* pSrc, int nChannels, int chanLen, uint8_t* pDst);

Status tevsSplitScaled_16s32f_D2L(const int16_t* pSrc, float* const* pDst, int nChannels, int chanLen);
Status tevsSplitScaled_24s32f_D2L(const uint8_t* pSrc, float* const* pDst, int nChannels, int chanLen);

TEVS_END

#endif
