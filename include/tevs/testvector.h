#ifndef TEVS_TESTVECTOR_H
#define TEVS_TESTVECTOR_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- VectorRamp: straight line --------------------------------------------------------------------------------------
 *
 *     pDst[n] = offset + n * slope
 *
 * In single precision: n, the product and the sum are rounded (64f: in double precision). Integers are then rounded
 * half away from zero and saturated; NaN gives the least number of the type. 32s and 32u lose the digits that single
 * precision has not.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr, StatusBadSize (len < 1).
 */
Status tevsVectorRamp_8u(uint8_t* pDst, int len, float offset, float slope);
Status tevsVectorRamp_8s(int8_t* pDst, int len, float offset, float slope);
Status tevsVectorRamp_16u(uint16_t* pDst, int len, float offset, float slope);
Status tevsVectorRamp_16s(int16_t* pDst, int len, float offset, float slope);
Status tevsVectorRamp_32u(uint32_t* pDst, int len, float offset, float slope);
Status tevsVectorRamp_32s(int32_t* pDst, int len, float offset, float slope);
Status tevsVectorRamp_32f(float* pDst, int len, float offset, float slope);
Status tevsVectorRamp_64f(double* pDst, int len, float offset, float slope);

/* ---- VectorJaehne: chirp from frequency 0 to half the sampling rate -------------------------------------------------
 *
 *     y[n] = magn * sin(pi n^2 / (2 len)),  n = 0 .. len-1
 *
 * after B. Jaehne, Digital Image Processing. The phase is computed in double precision, pi / (2 len) first.
 *
 * signed, floating    pDst[n] = y[n], integers rounded half away from zero
 * unsigned            y[n] spread over 0 .. magn: (y[n] - min) * magn / (max - min), min and max those of the vector,
 *                     rounded half up; 0 throughout for magn 0 and for len 1
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr, StatusBadSize (len < 1),
 * StatusJaehneMagnitude (magn < 0), StatusNoMemory (unsigned types, which keep y while they look for its extremes).
 */
Status tevsVectorJaehne_8u(uint8_t* pDst, int len, uint8_t magn);
Status tevsVectorJaehne_8s(int8_t* pDst, int len, int8_t magn);
Status tevsVectorJaehne_16u(uint16_t* pDst, int len, uint16_t magn);
Status tevsVectorJaehne_16s(int16_t* pDst, int len, int16_t magn);
Status tevsVectorJaehne_32u(uint32_t* pDst, int len, uint32_t magn);
Status tevsVectorJaehne_32s(int32_t* pDst, int len, int32_t magn);
Status tevsVectorJaehne_32f(float* pDst, int len, float magn);
Status tevsVectorJaehne_64f(double* pDst, int len, double magn);

TEVS_END

#endif
