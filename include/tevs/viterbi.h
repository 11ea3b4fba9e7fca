#ifndef TEVS_VITERBI_H
#define TEVS_VITERBI_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- Convolutional codes and trellises ------------------------------------------------------------------------------
 *
 * A state is the last constraintLen - 1 input bits, the newest on top. Input u in state s forms the register r = u
 * 2^(constraintLen-1) + s; output i is the parity of r AND pPoly[i], the symbol has output 0 as its top bit, and the
 * next state is r >> 1. So a code is named by its octal polynomials with the newest input's bit on top: the code of
 * deep space, DVB and Wi-Fi, of constraint length 7, is 0171, 0133. Tables are indexed [s * numInputs + u].
 *
 * bits            one a byte, of which the lowest counts; written as 0 or 1
 * soft bits       positive for a 0, negative for a 1, the more so the surer; 0 is an erasure
 * metrics         correlations: the larger the better
 * constraintLen   2 .. 15        numPoly  1 .. 8; bits of pPoly above constraintLen have no effect
 */
enum { StateAny = -1 }; /* a trellis state that is not known */

/* ---- ViterbiSymbols, ViterbiNext, ViterbiEncode ---------------------------------------------------------------------
 *
 * Symbols, Next   the code's symbols and next states, 2^constraintLen of each, for Init_Table and for a caller's own
 *                 use
 * Encode          numPoly bits for each of len bits. *pShift is the state, kept from call to call: 0 to begin with;
 *                 constraintLen - 1 zeros end a frame in state 0.
 *
 * Return StatusOk, or the first that applies, with nothing written: StatusNullPtr, StatusBadSize (len < 1, numPoly or
 * constraintLen out of range), StatusBadArg (*pShift outside 0 .. 2^(constraintLen-1) - 1). No two vectors may overlap.
 */
Status tevsViterbiSymbols_8u(const int* pPoly, uint8_t* pDst, int numPoly, int constraintLen);
Status tevsViterbiNext_16s(int16_t* pDst, int constraintLen);
Status tevsViterbiEncode_8u(const uint8_t* pSrc, uint8_t* pDst, int len, const int* pPoly, int numPoly, int constraintLen, int* pShift);

/* ---- ViterbiPuncture, ViterbiDepuncture: codes of higher rates ------------------------------------------------------
 *
 * Puncture      Keeps the elements of pSrc at which the pattern, repeated, is not 0; *pDstLen is how many. pDst needs
 *               room for those only, and may be pSrc.
 * Depuncture    Fills dstLen places: with the next element of pSrc where the pattern is not 0, with an erasure where it
 *               is; *pSrcLen is how many it took.
 * *pPhase       the place in the pattern, kept from call to call: 0 to begin with
 *
 * Cain, Clark, Geist, Punctured Convolutional Codes of Rate (n-1)/n and Simplified Maximum Likelihood Decoding, IEEE
 * Transactions on Information Theory 25 (1979).
 *
 * Return StatusOk, or the first that applies, with nothing written: StatusNullPtr, StatusBadSize (srcLen, dstLen or
 * patternLen < 1), StatusSamplePhase (*pPhase outside 0 .. patternLen-1).
 */
Status tevsViterbiPuncture_8u(const uint8_t* pSrc, int srcLen, uint8_t* pDst, int* pDstLen, const uint8_t* pPattern, int patternLen, int* pPhase);
Status tevsViterbiDepuncture_8s(const int8_t* pSrc, int* pSrcLen, int8_t* pDst, int dstLen, const uint8_t* pPattern, int patternLen, int* pPhase);

/* ---- ViterbiMetric: branch metrics, one row for each of len steps ---------------------------------------------------
 *
 * 8s16s       Of soft bits, exactly: pDst[n 2^numPoly + y] = sum over i of pSrc[n numPoly + i], taken negative where
 *             output i of symbol y is 1.
 * 32fc16s     Of points of a constellation, which lie grouped by symbol, numPoints / numSymbols to each: pDst[n
 *             numSymbols + y] = -scale d^2, to nearest, ties to even, saturated, with d the distance to the group's
 *             nearest point, of equal ones the first. Its place in the group goes to pIndx[n numSymbols + y], which may
 *             be NULL: the bits of trellis-coded modulation that no code protects (Ungerboeck, Channel Coding with
 *             Multilevel/Phase Signals, IEEE Transactions on Information Theory 28, 1982). d^2 is within 4 units of
 *             2^-24 of itself. A point at a distance that is not a number is never nearest; where all are so, or scale
 *             d^2 is, the metric is -32768, and of no nearest point the index is 0.
 *
 * Return StatusOk, or the first that applies, with nothing written: StatusNullPtr (any pointer but pIndx),
 * StatusBadSize (len < 1, numPoly out of range, numSymbols outside 1 .. 256, numPoints no multiple of it or outside 1
 * to 256 times it). Results are the same to the bit everywhere. No two vectors may overlap.
 */
Status tevsViterbiMetric_8s16s(const int8_t* pSrc, int16_t* pDst, int len, int numPoly);
Status tevsViterbiMetric_32fc16s(const Complex32f* pSrc, int16_t* pDst, uint8_t* pIndx, int len, const Complex32f* pPoints, int numPoints, int numSymbols,
                                 float scale);

/* ---- Viterbi: maximum-likelihood decoder ----------------------------------------------------------------------------
 *
 * Follows the best path into every state (Viterbi, Error Bounds for Convolutional Codes, IEEE Transactions on
 * Information Theory 13, 1967; Forney, The Viterbi Algorithm, Proceedings of the IEEE 61, 1973). Of equal paths into a
 * state it keeps that from the lower state, and then that of the lower input; of equal states the lowest is the best.
 * Path metrics are exact, however long the stream, and results the same to the bit everywhere.
 *
 * What it releases is fixed: whenever 2 traceLen steps are held, it traces back from the best state and releases the
 * oldest traceLen inputs, each decided with traceLen to 2 traceLen - 1 later steps in view. So results do not depend on
 * how a stream is cut, and *pDstLen is known beforehand: a call releases at most len + traceLen - 1 inputs, Flush at
 * most 2 traceLen - 1. With traceLen at least the frame's length the result is the most likely path. 5 (constraintLen -
 * 1) costs little, 10 (constraintLen - 1) nothing; punctured codes take twice that (Heller and Jacobs, Viterbi Decoding
 * for Satellite and Space Communication, IEEE Transactions on Communication Technology 19, 1971).
 *
 * GetStateSize, Init, InitAlloc   A record of a code: its size in a buffer at any address, one in there, and one in
 *                                 memory of its own. It starts in state 0.
 * .._Table        Of any trellis: numStates 1 .. 16384, numInputs 1 .. 16, numSymbols 1 .. 256; entries of pNext in 0
 *                 .. numStates-1, of pSymbol in 0 .. numSymbols-1.
 * Free            Gives back what InitAlloc took; leaves a record of Init as it is
 * Reset           Forgets everything and starts in startState, or with StateAny in all states alike.
 * 8s8u            Decodes len steps of numPoly soft bits, with a record of a code
 * 16s8u           Decodes len steps from rows of branch metrics, 2^numPoly or numSymbols to each. Within a frame the
 *                 two do not mix: the other follows after Reset or Flush.
 * Flush           Decides what is held, back from endState, or with StateAny, and where no path reaches endState, from
 *                 the best; then starts anew as Reset(endState) does. Frames that bite their tails: Reset(StateAny),
 *                 the frame twice, Flush(StateAny), and of what comes out the middle.
 *
 * Return StatusOk, or the first that applies, with nothing written: StatusNullPtr; StatusBadSize (len < 1;
 * constraintLen, numPoly, numStates, numInputs, numSymbols out of range, traceLen < 1 or so large that the record would
 * take more than INT_MAX bytes), StatusContextMismatch (no such record; soft bits for a record of a table; the other
 * kind of metrics within a frame), StatusBadSize (more than INT_MAX inputs to release), StatusBadArg (an entry of a
 * table out of range; startState or endState outside -1 .. the number of states - 1); InitAlloc: StatusNoMemory.
 * Records copy what they are made from. One call per record at a time. No two vectors may overlap.
 */
typedef struct ViterbiState ViterbiState;

Status tevsViterbiGetStateSize(int constraintLen, int numPoly, int traceLen, int* pSize);
Status tevsViterbiInit(ViterbiState** ppState, const int* pPoly, int numPoly, int constraintLen, int traceLen, uint8_t* pBuffer);
Status tevsViterbiInitAlloc(ViterbiState** ppState, const int* pPoly, int numPoly, int constraintLen, int traceLen);
Status tevsViterbiGetStateSize_Table(int numStates, int numInputs, int numSymbols, int traceLen, int* pSize);
Status tevsViterbiInit_Table(ViterbiState** ppState, const int16_t* pNext, const uint8_t* pSymbol, int numStates, int numInputs, int numSymbols, int traceLen,
                             uint8_t* pBuffer);
Status tevsViterbiInitAlloc_Table(ViterbiState** ppState, const int16_t* pNext, const uint8_t* pSymbol, int numStates, int numInputs, int numSymbols,
                                  int traceLen);
Status tevsViterbiFree(ViterbiState* pState);
Status tevsViterbiReset(ViterbiState* pState, int startState);
Status tevsViterbi_8s8u(const int8_t* pSrc, int len, uint8_t* pDst, int* pDstLen, ViterbiState* pState);
Status tevsViterbi_16s8u(const int16_t* pMetric, int len, uint8_t* pDst, int* pDstLen, ViterbiState* pState);
Status tevsViterbiFlush_8u(uint8_t* pDst, int* pDstLen, int endState, ViterbiState* pState);

TEVS_END

#endif
