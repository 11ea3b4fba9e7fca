#ifndef TEVS_TRIANGLE_H
#define TEVS_TRIANGLE_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- Triangle_Direct: triangle wave from a phase that the caller keeps ----------------------------------------------
 *
 *     pDst[n] = magn * wave(*pPhase + 2 pi rFreq n)
 *
 * where wave(p) has the period 2 pi, is 1 at p = 0, falls in a straight line to -1 at p = pi + asym, and rises in a
 * straight line to 1 at p = 2 pi.
 *
 *           +magn  \            /\            /
 *                   \          /  \          /
 *                    \        /    \        /
 *                     \      /      \      /
 *                      \    /        \    /
 *           -magn       \  /          \  /
 *                        \/            \/
 *              p   0     pi+asym  2pi
 *
 * magn      the peak, above 0
 * rFreq     cycles per sample, 0 <= rFreq < 0.5
 * asym      radians, -pi <= asym < pi; 0 makes both slopes alike. -pi (in single precision) leaves no falling slope,
 *           and phase 0 is at -magn then
 * pPhase    the phase of the first sample, 0 <= *pPhase < 2 pi; on return that of the sample after the last
 * complex   the real part is the wave, the imaginary part wave(p + 3 pi / 2): the wave a quarter of a period later
 *
 * In double precision, rounded once at the end; each sample is computed from its own phase, so that no error adds up
 * along a block. 16s, 16sc: to nearest, ties to even, saturated. The phase handed back is rounded to single precision:
 * blocks that follow each other by it differ from one long block by that much.
 *
 * Returns StatusOk, or the first that applies in this order, with neither samples nor phase written: StatusNullPtr
 * (pPhase), StatusTriangleMagnitude, StatusTriangleFreq, StatusTriangleAsym, StatusTrianglePhase (each for a value
 * outside its range, and NaN), StatusNullPtr (pDst), StatusBadSize (len < 1).
 */
Status tevsTriangle_Direct_32f(float* pDst, int len, float magn, float rFreq, float asym, float* pPhase);
Status tevsTriangle_Direct_64f(double* pDst, int len, float magn, float rFreq, float asym, float* pPhase);
Status tevsTriangle_Direct_16s(int16_t* pDst, int len, float magn, float rFreq, float asym, float* pPhase);
Status tevsTriangle_Direct_32fc(Complex32f* pDst, int len, float magn, float rFreq, float asym, float* pPhase);
Status tevsTriangle_Direct_64fc(Complex64f* pDst, int len, float magn, float rFreq, float asym, float* pPhase);
Status tevsTriangle_Direct_16sc(Complex16s* pDst, int len, float magn, float rFreq, float asym, float* pPhase);

/* ---- TriangleQ15: parameters in fixed point -------------------------------------------------------------------------
 *
 * The wave above for rFreq = rFreqQ15 / 32768, asym = asymQ15 / 32768 and a phase of phaseQ15 / 32768, the latter two
 * in radians: a full turn is 205887.4. magn is the peak in steps of a sample.
 *
 * GetStateSize      the bytes of a record, at any address
 * Init, InitAlloc   build a record in the caller's memory, or in memory of its own. Return StatusOk, StatusNullPtr,
 *                   then as above from StatusTriangleMagnitude to StatusTrianglePhase, StatusNoMemory (InitAlloc), with
 *                   nothing stored
 * TriangleQ15_16s   the next len samples of a record's wave: the same, to the bit, however it is cut into blocks.
 *                   Returns StatusOk, StatusNullPtr (pDst, pState), StatusBadSize (len < 1), StatusContextMismatch. One
 *                   call at a time for a record
 * Q15_Direct        without a record, the phase handed back rounded to nearest. Returns as above
 * Free              gives back what InitAlloc took and leaves a record of Init as it is. Returns StatusOk,
 *                   StatusNullPtr, StatusContextMismatch
 */
typedef struct TriangleState_16s TriangleState_16s;

Status tevsTriangleGetStateSizeQ15_16s(int* pSize);
Status tevsTriangleInitQ15_16s(TriangleState_16s* pState, int16_t magn, int16_t rFreqQ15, int asymQ15, int phaseQ15);
Status tevsTriangleInitAllocQ15_16s(TriangleState_16s** ppState, int16_t magn, int16_t rFreqQ15, int asymQ15, int phaseQ15);
Status tevsTriangleQ15_16s(int16_t* pDst, int len, TriangleState_16s* pState);
Status tevsTriangleQ15_Direct_16s(int16_t* pDst, int len, int16_t magn, int16_t rFreqQ15, int asymQ15, int* pPhaseQ15);
Status tevsTriangleFree(TriangleState_16s* pState);

TEVS_END

#endif
