#ifndef TEVS_RANDOM_H
#define TEVS_RANDOM_H

#include "tevs/types.h"

/* Pseudo-random samples: fast, reproducible from the seed to the bit on every machine, and not for cryptography.
 *
 * One generator is behind all of them: a linear congruential sequence c and a lagged subtract-with-borrow sequence x,
 * added modulo 2^32 (after G. Marsaglia and A. Zaman, A new class of random number generators, 1991; the borrow here is
 * the sign bit of the difference):
 *
 *     c[n] = 69069 c[n-1] + 1013904243,  c[-1] = 1131199209
 *     t    = x[n-2] - x[n-3] - b[n-1],   b[n] = 1 if t < 0 as a signed number, else 0,   b[-1] = 1
 *     x[n] = t - 18 b[n],                x[-1] = seed, x[-2] = 69069 x[-1] + 1013904243, x[-3] = 69069 x[-2] +
 *                                        1013904243
 *     r[n] = x[n] + c[n], a signed number
 *
 * Record forms keep the generator in a record, so that consecutive calls go on with one sequence, however it is cut
 * into blocks. Direct forms start from *pSeed and leave the last x there: the next call goes on from it with c started
 * again.
 *
 *     GetSize      the bytes of a record, at any address
 *     Init         builds a record in the caller's memory; on a record that is in use it starts the sequence again
 *     InitAlloc    builds one in memory of its own
 *     Free         gives back what InitAlloc took, and leaves a record of Init as it is
 *
 * GetSize and Init return StatusOk or StatusNullPtr, InitAlloc also StatusNoMemory, with *ppState as it was, Free
 * StatusOk, StatusNullPtr or StatusContextMismatch. Bounds, deviations and seeds may be anything.
 *
 * What fills vectors returns StatusOk, or the first that applies, with neither pDst nor the sequence changed:
 * StatusNullPtr (any pointer), StatusBadSize (len < 1), StatusContextMismatch (pState is no record of this kind). One
 * call at a time for a record or a seed.
 */

TEVS_BEGIN

typedef struct RandUniState_8u RandUniState_8u;
typedef struct RandUniState_16s RandUniState_16s;
typedef struct RandUniState_32f RandUniState_32f;
typedef struct RandGaussState_8u RandGaussState_8u;
typedef struct RandGaussState_16s RandGaussState_16s;
typedef struct RandGaussState_32f RandGaussState_32f;

/* ---- RandUniform: evenly distributed in low .. high -----------------------------------------------------------------
 *
 *     pDst[n] = r[n] (high - low) 2^-32 + (low + high) / 2
 *
 * in double precision; 32f: high - low and low + high in single precision, and one more rounding at the end; 8u, 16s:
 * the fraction is cut off, toward zero. high < low is as good as low < high. The bounds' sum and difference are to be
 * finite.
 */
Status tevsRandUniformGetSize_16s(int* pSize);
Status tevsRandUniformInit_16s(RandUniState_16s* pState, int16_t low, int16_t high, uint32_t seed);
Status tevsRandUniformInitAlloc_8u(RandUniState_8u** ppState, uint8_t low, uint8_t high, uint32_t seed);
Status tevsRandUniformInitAlloc_16s(RandUniState_16s** ppState, int16_t low, int16_t high, uint32_t seed);
Status tevsRandUniformInitAlloc_32f(RandUniState_32f** ppState, float low, float high, uint32_t seed);
Status tevsRandUniform_8u(uint8_t* pDst, int len, RandUniState_8u* pState);
Status tevsRandUniform_16s(int16_t* pDst, int len, RandUniState_16s* pState);
Status tevsRandUniform_32f(float* pDst, int len, RandUniState_32f* pState);
Status tevsRandUniformFree_8u(RandUniState_8u* pState);
Status tevsRandUniformFree_16s(RandUniState_16s* pState);
Status tevsRandUniformFree_32f(RandUniState_32f* pState);

/* ---- RandGauss: normally distributed --------------------------------------------------------------------------------
 *
 *     pDst[n] = mean + stdDev f u,   f = sqrt(-2 ln s / s),   s = u1^2 + u2^2
 *
 * by Marsaglia's polar method (Bell, Algorithm 334, 1968): u1 and u2 are the next two r 2^-31, drawn again until 0 < s
 * < 1; u2 makes the first of two results and u1 the second, which a record keeps for the next call where one ends
 * between them. In double precision; 32f: stdDev f u is rounded, then mean is added in single precision; 8u, 16s: the
 * fraction is cut off, toward zero, and the result saturated.
 */
Status tevsRandGaussGetSize_16s(int* pSize);
Status tevsRandGaussInit_16s(RandGaussState_16s* pState, int16_t mean, int16_t stdDev, uint32_t seed);
Status tevsRandGaussInitAlloc_8u(RandGaussState_8u** ppState, uint8_t mean, uint8_t stdDev, uint32_t seed);
Status tevsRandGaussInitAlloc_16s(RandGaussState_16s** ppState, int16_t mean, int16_t stdDev, uint32_t seed);
Status tevsRandGaussInitAlloc_32f(RandGaussState_32f** ppState, float mean, float stdDev, uint32_t seed);
Status tevsRandGauss_8u(uint8_t* pDst, int len, RandGaussState_8u* pState);
Status tevsRandGauss_16s(int16_t* pDst, int len, RandGaussState_16s* pState);
Status tevsRandGauss_32f(float* pDst, int len, RandGaussState_32f* pState);
Status tevsRandGaussFree_8u(RandGaussState_8u* pState);
Status tevsRandGaussFree_16s(RandGaussState_16s* pState);
Status tevsRandGaussFree_32f(RandGaussState_32f* pState);

/* ---- RandUniform_Direct, RandGauss_Direct: from a seed alone --------------------------------------------------------
 *
 * As above, but for RandUniform_Direct_16s, which rounds to nearest, ties to even, so that high itself comes up. 64f:
 * in double precision throughout. Of an odd number of normal results, the second of the last pair is dropped.
 */
Status tevsRandUniform_Direct_16s(int16_t* pDst, int len, int16_t low, int16_t high, uint32_t* pSeed);
Status tevsRandUniform_Direct_32f(float* pDst, int len, float low, float high, uint32_t* pSeed);
Status tevsRandUniform_Direct_64f(double* pDst, int len, double low, double high, uint32_t* pSeed);
Status tevsRandGauss_Direct_16s(int16_t* pDst, int len, int16_t mean, int16_t stdDev, uint32_t* pSeed);
Status tevsRandGauss_Direct_32f(float* pDst, int len, float mean, float stdDev, uint32_t* pSeed);
Status tevsRandGauss_Direct_64f(double* pDst, int len, double mean, double stdDev, uint32_t* pSeed);

TEVS_END

#endif
