#ifndef TEVS_WAVELET_H
#define TEVS_WAVELET_H

#include "tevs/types.h"

/* What all wavelet functions share: the pair. Analysis turns the samples x[2n], x[2n+1] into low[n] and high[n],
 * synthesis turns them back. `len` counts pairs: 2 len samples on the signal's side and len values in each channel.
 * Vectors lie apart from one another but where it is said that they may be equal.
 *
 * Returns StatusOk, or the first that applies, with nothing written. Results follow no rounding mode. Where they are
 * said to be near, they may differ in rounding between SIMD levels and ABIs; u is 2^-24 for 32f and 2^-53 for 64f. Any
 * alignment will do; no call starts threads.
 *
 * Literature   I. Daubechies, Ten Lectures on Wavelets (1992); S. Mallat, A Theory for Multiresolution Signal
 *              Decomposition (1989); A. Cohen, I. Daubechies and J. Feauveau, Biorthogonal Bases of Compactly Supported
 *              Wavelets (1992); P. P. Vaidyanathan, Multirate Systems and Filter Banks (1993); R. Calderbank, I.
 *              Daubechies, W. Sweldens and B.-L. Yeo, Wavelet Transforms that Map Integers to Integers (1998).
 */

TEVS_BEGIN

/* Names for choices. Any other value counts as the first. */
enum { WaveletDaubechies = 0, WaveletSymlet = 1, WaveletCdf = 2 };
enum { LiftHaar = 0, Lift53 = 1 };
enum { ExtPeriodic = 0, ExtMirror = 1 };

/* ---- WtGenTaps: the four filters of a named wavelet -----------------------------------------------------------------
 *
 *     family                tapsLen
 *     WaveletDaubechies     2, 4 .. 40      orthogonal, extremal phase, tapsLen / 2 vanishing moments; pLowS has its
 *                                           energy first; 2 is Haar
 *     WaveletSymlet         4, 6 .. 40      orthogonal, the same moments, least asymmetric
 *     WaveletCdf            6, 10           biorthogonal, symmetric: 5/3 and 9/7, the shorter filters with zeros around
 *                                           them
 *
 * Four filters of tapsLen taps, A for analysis and S for synthesis, that make a perfect bank: WtAnalysis and
 * WtSynthesis with them, all offsets -1, delay by tapsLen - 2 samples and change nothing else; DWTInit takes them as
 * they are.
 *
 *     pLowA and pLowS sum to sqrt 2;  orthogonal ones: pLowA[k] = pLowS[tapsLen-1-k]
 *     pHighS[k] = (-1)^k pLowA[k],  pHighA[k] = -(-1)^k pLowS[k]
 *     4 taps: pLowS = (1 + r, 3 + r, 3 - r, 1 - r) / (4 sqrt 2), r = sqrt 3
 *     5/3:    pLowA = (0, -1, 2, 6, 2, -1) sqrt 2 / 8,  pLowS = (0, 1, 2, 1, 0, 0) sqrt 2 / 4
 *     9/7:    pLowA = (0, nine taps),  pLowS = (0, seven taps, 0, 0)
 *
 * Every tap is its exact value, correctly rounded; one of zero is +0. The same to the bit everywhere.
 * Statuses: StatusNullPtr, StatusBadSize (a tapsLen that the family does not have). The four vectors are distinct.
 */
Status tevsWtGenTaps_32f(float* pLowA, float* pHighA, float* pLowS, float* pHighS, int tapsLen, int family);
Status tevsWtGenTaps_64f(double* pLowA, double* pHighA, double* pLowS, double* pHighS, int tapsLen, int family);

/* ---- Haar, without state --------------------------------------------------------------------------------------------
 *
 *                analysis                                      synthesis
 *     32f 64f    low = (x0 + x1) c,     high = (x0 - x1) c     x0 = (low + high) c,     x1 = (low - high) c
 *     16s_Sfs    low = (x0 + x1) 2^-s,  high = (x0 - x1) 2^-s  x0 = (low + high) 2^-s,  x1 = (low - high) 2^-s
 *
 * c is 1/sqrt 2 rounded, s the scaleFactor.
 *
 * Integers are rounded once, to nearest, ties to even, and saturated: 1 for analysis and 0 for synthesis keep the range
 * and err by at most 1; 0 and 1 are exact for samples up to +-16383. Floats are within 2 u (|x0| + |x1|); a sum may
 * overflow. The same to the bit everywhere. pDstLow may equal pSrc. Statuses: StatusNullPtr, StatusBadSize (len < 1).
 */
Status tevsWtHaarAnalysis_16s_Sfs(const int16_t* pSrc, int16_t* pDstLow, int16_t* pDstHigh, int len, int scaleFactor);
Status tevsWtHaarAnalysis_32f(const float* pSrc, float* pDstLow, float* pDstHigh, int len);
Status tevsWtHaarAnalysis_64f(const double* pSrc, double* pDstLow, double* pDstHigh, int len);
Status tevsWtHaarSynthesis_16s_Sfs(const int16_t* pSrcLow, const int16_t* pSrcHigh, int16_t* pDst, int len, int scaleFactor);
Status tevsWtHaarSynthesis_32f(const float* pSrcLow, const float* pSrcHigh, float* pDst, int len);
Status tevsWtHaarSynthesis_64f(const double* pSrcLow, const double* pSrcHigh, double* pDst, int len);

/* ---- Lossless lifting, without state --------------------------------------------------------------------------------
 *
 * Any number N = srcLen (of synthesis: dstLen) >= 1 of samples become (N + 1) / 2 low and N / 2 high values; for the
 * next level, the low ones are samples again.
 *
 *     LiftHaar   high[n] = x[2n] - x[2n+1]                        low[n] = x[2n+1] + floor(high[n] / 2)
 *     Lift53     high[n] = x[2n+1] - floor((x[2n] + x[2n+2]) / 2)   low[n] = x[2n] + floor((high[n-1] + high[n] + 2) / 4)
 *
 * LiftHaar of an odd N: the last low value is the last sample. Lift53 is mirrored at the ends: x[N] is x[N-2], high[-1]
 * is high[0], and what lies beyond the last high value is that; of N = 1 the sample is copied. Sums are exact, and
 * every stored value is reduced modulo 2^16 or 2^32: synthesis takes away again what analysis has added, so that every
 * input comes back bit for bit, of full scale too. Samples within +-(2^14 - 1), of 32s +-(2^30 - 1), do not wrap. The
 * same to the bit everywhere. Vectors are distinct; where there are no high values, their vector is not touched, but
 * has to be one. Statuses: StatusNullPtr, StatusBadSize (srcLen, dstLen < 1).
 */
Status tevsWtLiftAnalysis_16s(const int16_t* pSrc, int16_t* pDstLow, int16_t* pDstHigh, int srcLen, int lift);
Status tevsWtLiftAnalysis_32s(const int32_t* pSrc, int32_t* pDstLow, int32_t* pDstHigh, int srcLen, int lift);
Status tevsWtLiftSynthesis_16s(const int16_t* pSrcLow, const int16_t* pSrcHigh, int16_t* pDst, int dstLen, int lift);
Status tevsWtLiftSynthesis_32s(const int32_t* pSrcLow, const int32_t* pSrcHigh, int32_t* pDst, int dstLen, int lift);

/* ---- One level of a stream ------------------------------------------------------------------------------------------
 *
 *     analysis     low[n] = sum over k of  pTapsLow[k] x[2n - offsLow - k],  high alike
 *     synthesis    y[m] = sum over n of  low[n] pTapsLow[m - 2n - 1 - offsLow]  +  the same of high
 *
 * tapsLen         taps of a channel's filter, at least 1; low and high may differ
 * offs            how many zeros stand before the taps, less one: -1 is none. Below that the filter would need samples
 *                 that are still to come. So a filter with z zeros in front may be given without them and with an
 *                 offset of z - 1, at less cost: 5/3 as 5 and 3 taps with all offsets 0.
 * pDlyLine        what comes before the next block, newest first. Of analysis the last max(tapsLen + offs - 1) inputs,
 *                 the larger of the two channels' numbers; of synthesis the last floor((tapsLenLow + offsLow) / 2) low
 *                 values, then as many high ones by the same rule. Null stands for silence, which a new record begins
 *                 with.
 *
 * GetStateSize    The bytes of a record of either direction in the caller's memory, at any address.
 * AnalysisInit, SynthesisInit
 *                 Build a record in pBuffer and store its address. The record copies the taps. All three:
 *                 StatusNullPtr, then StatusFilterLength (a tapsLen < 1) and StatusWtOffset (an offset < -1) in the
 *                 order of tapsLenLow, offsLow, tapsLenHigh, offsHigh; where the size would be beyond INT_MAX, that of
 *                 the first of them with which it is.
 * AnalysisInitAlloc, SynthesisInitAlloc
 *                 The same in memory of their own. Also StatusNoMemory.
 * WtFree          Gives back what InitAlloc took, and clears the record's identifier before; a record in the caller's
 *                 memory stays as it is.
 * WtSetDlyLine, WtGetDlyLine
 *                 Of a record of either direction. StatusNullPtr (pDlyLine of SetDlyLine may be null),
 *                 StatusContextMismatch; so does WtFree.
 * WtAnalysis, WtSynthesis
 *                 The next len pairs of a stream, by a record of their own direction: StatusNullPtr, StatusBadSize (len
 *                 < 1), StatusContextMismatch.
 *
 * Errors are at most 2 tapsLen u sum of |tap| |sample|. The same bits wherever a stream is cut and vectors lie; near
 * between levels. A sample that is infinite or NaN reaches the outputs whose taps meet it and no other. One call per
 * record at a time.
 */
typedef struct WtState_32f WtState_32f;
typedef struct WtState_64f WtState_64f;

Status tevsWtGetStateSize_32f(int tapsLenLow, int offsLow, int tapsLenHigh, int offsHigh, int* pSize);
Status tevsWtGetStateSize_64f(int tapsLenLow, int offsLow, int tapsLenHigh, int offsHigh, int* pSize);
Status tevsWtAnalysisInit_32f(WtState_32f** ppState, const float* pTapsLow, int tapsLenLow, int offsLow, const float* pTapsHigh, int tapsLenHigh, int offsHigh,
                              uint8_t* pBuffer);
Status tevsWtAnalysisInit_64f(WtState_64f** ppState, const double* pTapsLow, int tapsLenLow, int offsLow, const double* pTapsHigh, int tapsLenHigh,
                              int offsHigh, uint8_t* pBuffer);
Status tevsWtAnalysisInitAlloc_32f(WtState_32f** ppState, const float* pTapsLow, int tapsLenLow, int offsLow, const float* pTapsHigh, int tapsLenHigh,
                                   int offsHigh);
Status tevsWtAnalysisInitAlloc_64f(WtState_64f** ppState, const double* pTapsLow, int tapsLenLow, int offsLow, const double* pTapsHigh, int tapsLenHigh,
                                   int offsHigh);
Status tevsWtSynthesisInit_32f(WtState_32f** ppState, const float* pTapsLow, int tapsLenLow, int offsLow, const float* pTapsHigh, int tapsLenHigh, int offsHigh,
                               uint8_t* pBuffer);
Status tevsWtSynthesisInit_64f(WtState_64f** ppState, const double* pTapsLow, int tapsLenLow, int offsLow, const double* pTapsHigh, int tapsLenHigh,
                               int offsHigh, uint8_t* pBuffer);
Status tevsWtSynthesisInitAlloc_32f(WtState_32f** ppState, const float* pTapsLow, int tapsLenLow, int offsLow, const float* pTapsHigh, int tapsLenHigh,
                                    int offsHigh);
Status tevsWtSynthesisInitAlloc_64f(WtState_64f** ppState, const double* pTapsLow, int tapsLenLow, int offsLow, const double* pTapsHigh, int tapsLenHigh,
                                    int offsHigh);
Status tevsWtFree_32f(WtState_32f* pState);
Status tevsWtFree_64f(WtState_64f* pState);
Status tevsWtSetDlyLine_32f(WtState_32f* pState, const float* pDlyLine);
Status tevsWtSetDlyLine_64f(WtState_64f* pState, const double* pDlyLine);
Status tevsWtGetDlyLine_32f(const WtState_32f* pState, float* pDlyLine);
Status tevsWtGetDlyLine_64f(const WtState_64f* pState, double* pDlyLine);
Status tevsWtAnalysis_32f(const float* pSrc, float* pDstLow, float* pDstHigh, int len, WtState_32f* pState);
Status tevsWtAnalysis_64f(const double* pSrc, double* pDstLow, double* pDstHigh, int len, WtState_64f* pState);
Status tevsWtSynthesis_32f(const float* pSrcLow, const float* pSrcHigh, float* pDst, int len, WtState_32f* pState);
Status tevsWtSynthesis_64f(const double* pSrcLow, const double* pSrcHigh, double* pDst, int len, WtState_64f* pState);

/* ---- DWT: all levels of a whole signal ------------------------------------------------------------------------------
 *
 * Each level turns a signal a of M samples into m low and m high values, and the low ones are the next level's signal.
 * With L = tapsLen:
 *
 *     ext            m                     low[n], high alike
 *     ExtPeriodic    ceil(M / 2)           sum of pLowA[k] a[(2n + L/2 - k) mod 2m];  a[M] is a[M-1] where M is odd
 *     ExtMirror      floor((M + L-1)/2)    sum of pLowA[k] a[2n + 1 - k];  a mirrored at its ends, which are repeated,
 *                                                                          again and again where L > M
 *
 * and the inverse
 *
 *     ExtPeriodic    a[(2n + k + 1 - L/2) mod 2m] gathers low[n] pLowS[k] + high[n] pHighS[k];  the first M values
 *     ExtMirror      a[i] = sum over n of low[n] pLowS[i + L - 2 - 2n] + high alike
 *
 * Periodic keeps the number of samples where length divides by 2^levels, and the energy where the wavelet is orthogonal
 * too; mirror has no seam. Given a perfect bank, both are undone exactly whatever the length; other filters are taken
 * as they are.
 *
 * Coefficients lie in one vector of coefLen values:    approximation of the coarsest level | its details | .. | details
 *                                                      of level 1
 *
 * length          samples, at least 1
 * levels          1 .. 30
 * tapsLen         even, at least 2: that of all four filters
 * pMemSpec        *pSpecSize bytes at any address
 * pBuffer         *pBufferSize bytes at any address, or null: the call takes what it needs itself
 *
 * DWTGetSize, DWTInit, DWTInitAlloc
 *                 StatusNullPtr, StatusBadSize (length, levels or tapsLen out of range, any size beyond INT_MAX),
 *                 InitAlloc also StatusNoMemory. The record copies the taps.
 * DWTFree         Ends a record, and gives back what InitAlloc took.
 * DWTGetBand      Where a level lies among the coefficients: 0 the approximation, 1 the finest details, .. levels the
 *                 coarsest. StatusNullPtr, StatusContextMismatch, StatusBadArg (level outside 0 .. levels).
 * DWTFwd, DWTInv  length samples to coefLen coefficients, and back. pDst may equal pSrc, where the two numbers are
 *                 equal. StatusNullPtr (pSpec), StatusContextMismatch, StatusNullPtr (pSrc, pDst), StatusNoMemory.
 *
 * The error of a transform of noise (of at least 64 samples), its norm over that of the result, is at most 5 u forward
 * and 7 u there and back as long as the coarsest level has 4 values (2^(levels+2) <= length), else (3 levels + 6) u,
 * for all wavelets of WtGenTaps. Near. A record serves any number of calls at a time, each with its own work buffer.
 */
typedef struct DWTSpec_32f DWTSpec_32f;
typedef struct DWTSpec_64f DWTSpec_64f;

Status tevsDWTGetSize_32f(int length, int levels, int tapsLen, int ext, int* pSpecSize, int* pBufferSize, int* pCoefLen);
Status tevsDWTGetSize_64f(int length, int levels, int tapsLen, int ext, int* pSpecSize, int* pBufferSize, int* pCoefLen);
Status tevsDWTInit_32f(DWTSpec_32f** ppSpec, int length, int levels, const float* pLowA, const float* pHighA, const float* pLowS, const float* pHighS,
                       int tapsLen, int ext, uint8_t* pMemSpec);
Status tevsDWTInit_64f(DWTSpec_64f** ppSpec, int length, int levels, const double* pLowA, const double* pHighA, const double* pLowS, const double* pHighS,
                       int tapsLen, int ext, uint8_t* pMemSpec);
Status tevsDWTInitAlloc_32f(DWTSpec_32f** ppSpec, int length, int levels, const float* pLowA, const float* pHighA, const float* pLowS, const float* pHighS,
                            int tapsLen, int ext);
Status tevsDWTInitAlloc_64f(DWTSpec_64f** ppSpec, int length, int levels, const double* pLowA, const double* pHighA, const double* pLowS, const double* pHighS,
                            int tapsLen, int ext);
Status tevsDWTFree_32f(DWTSpec_32f* pSpec);
Status tevsDWTFree_64f(DWTSpec_64f* pSpec);
Status tevsDWTGetBand_32f(const DWTSpec_32f* pSpec, int level, int* pOffset, int* pLen);
Status tevsDWTGetBand_64f(const DWTSpec_64f* pSpec, int level, int* pOffset, int* pLen);
Status tevsDWTFwd_32f(const float* pSrc, float* pDst, const DWTSpec_32f* pSpec, uint8_t* pBuffer);
Status tevsDWTFwd_64f(const double* pSrc, double* pDst, const DWTSpec_64f* pSpec, uint8_t* pBuffer);
Status tevsDWTInv_32f(const float* pSrc, float* pDst, const DWTSpec_32f* pSpec, uint8_t* pBuffer);
Status tevsDWTInv_64f(const double* pSrc, double* pDst, const DWTSpec_64f* pSpec, uint8_t* pBuffer);

TEVS_END

#endif
