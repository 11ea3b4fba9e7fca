#ifndef TEVS_HILBERT_H
#define TEVS_HILBERT_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- Hilbert: the analytic signal -----------------------------------------------------------------------------------
 *
 * Of N reals, any N >= 1: complex values whose real parts are the samples and whose imaginary parts are their Hilbert
 * transform, all frequencies a quarter period late. With X the spectrum of the samples,
 *
 *     y[n] = 1/N * sum over k = 0 .. N-1 of  c[k] * X[k] * exp(+2 pi i n k / N)
 *
 *     c[k] = 1 for k = 0 and, of an even N, k = N/2;  2 for 0 < k < N/2;  0 above
 *
 * so |y| is the envelope of a narrow-band signal and the advance of its phase the frequency, near the ends as if the
 * samples went on periodically. Up to two samples are their own analytic signal.
 *
 *     HilbertSpec_32f32fc    from floats
 *     HilbertSpec_16s32fc    from 16-bit samples to floats
 *     HilbertSpec_16s16sc    from 16-bit samples to 16-bit values, computed in single precision
 *
 * InitAlloc      Builds a record in memory of its own. hint: any value, without effect. Returns StatusOk, StatusNullPtr
 *                (ppSpec), StatusBadSize (length < 1), StatusNoMemory. Where it is the memory of a transform inside
 *                that is refused, *ppSpec has a record that cannot transform: Free answers StatusNullPtr (tevsFree
 *                takes its memory), and so does Hilbert from three samples on; where it is the record's own, *ppSpec is
 *                NULL.
 * Free           Returns StatusOk, StatusNullPtr, StatusContextMismatch (not a record of this kind).
 * Hilbert        pSrc, pDst    N samples and N values; pDst may begin where pSrc does only in the form of floats
 *                scaleFactor   the result times 2^-scaleFactor, to the nearest integer, ties to even, saturated. Any
 *                              value.
 *                The relative error in the Euclidean norm is that of two transforms (tevs/dft.h). Any number of threads
 *                may use one record at once. Returns StatusOk, StatusNullPtr (any pointer), StatusContextMismatch,
 *                StatusNoMemory, in this order, with nothing written.
 *
 * S. L. Marple, Computing the Discrete-Time Analytic Signal via FFT, IEEE Trans. Signal Processing 47, 1999.
 */
typedef struct HilbertSpec_32f32fc HilbertSpec_32f32fc;
typedef struct HilbertSpec_16s32fc HilbertSpec_16s32fc;
typedef struct HilbertSpec_16s16sc HilbertSpec_16s16sc;

Status tevsHilbertInitAlloc_32f32fc(HilbertSpec_32f32fc** ppSpec, int length, int hint);
Status tevsHilbertInitAlloc_16s32fc(HilbertSpec_16s32fc** ppSpec, int length, int hint);
Status tevsHilbertInitAlloc_16s16sc(HilbertSpec_16s16sc** ppSpec, int length, int hint);
Status tevsHilbertFree_32f32fc(HilbertSpec_32f32fc* pSpec);
Status tevsHilbertFree_16s32fc(HilbertSpec_16s32fc* pSpec);
Status tevsHilbertFree_16s16sc(HilbertSpec_16s16sc* pSpec);
Status tevsHilbert_32f32fc(const float* pSrc, Complex32f* pDst, const HilbertSpec_32f32fc* pSpec);
Status tevsHilbert_16s32fc(const int16_t* pSrc, Complex32f* pDst, const HilbertSpec_16s32fc* pSpec);
Status tevsHilbert_16s16sc_Sfs(const int16_t* pSrc, Complex16s* pDst, const HilbertSpec_16s16sc* pSpec, int scaleFactor);

TEVS_END

#endif
