#ifndef TEVS_SEARCH_H
#define TEVS_SEARCH_H

#include "tevs/types.h"

TEVS_BEGIN

/* ---- Nearest: the index of the nearest value of an ascending table --------------------------------------------------
 *
 *     pIndx[n] = the i for which  |pSrc[n] - pTable[i]|  is least;  of two equally near entries the lower, of equal
 *                                                                   entries the first
 *
 * What a scalar quantiser ends in: with the table of its levels it gives the codes.
 *
 * pSrc           len >= 1 samples
 * pIndx          len indices, each from 0 to tableLen - 1
 * pTable         tableLen >= 1 entries in ascending order, equal ones among them if need be. A table in any other order
 *                gives some index in range.
 *
 * The choice is exact: differences of integers do not overflow, and those of floats are compared with what their
 * rounding left. NaN gives 0, +infinity the first of the largest entries, -infinity 0; infinite entries are nearest to
 * equal samples only. Zeros of either sign are equal. Results are the same at every SIMD level.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr, StatusBadSize (len < 1, tableLen <
 * 1).
 */
Status tevsNearest_16s(const int16_t* pSrc, int* pIndx, int len, const int16_t* pTable, int tableLen);
Status tevsNearest_32s(const int32_t* pSrc, int* pIndx, int len, const int32_t* pTable, int tableLen);
Status tevsNearest_32f(const float* pSrc, int* pIndx, int len, const float* pTable, int tableLen);
Status tevsNearest_64f(const double* pSrc, int* pIndx, int len, const double* pTable, int tableLen);

/* ---- NearestVec: the nearest vector of a codebook -------------------------------------------------------------------
 *
 *     pIndx[n] = the row j for which  sum over k = 0 .. dim-1 of  (pSrc[n*dim + k] - pBook[j*dim + k])^2  is least;
 *                of equal sums the lower
 *
 * Vector quantisation by full search. A. Gersho and R. M. Gray, Vector Quantization and Signal Compression, Kluwer
 * 1992, ch. 10.
 *
 * pSrc           len >= 1 vectors of dim >= 1 elements, one after the other
 * pIndx          len indices, each from 0 to bookLen - 1
 * pDist          len sums, those of the rows found; or null
 * pBook          bookLen >= 1 rows of dim elements, one after the other
 *
 * A row whose sum is NaN is never nearest; if all are, the index is 0 and the sum NaN.
 *
 * Accuracy       sums in single precision, off by no more than (dim + 2) * 2^-24 of the sum. Rows nearer to each other
 *                than that may swap, between SIMD levels too.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr (pSrc, pIndx, pBook), StatusBadSize
 * (len < 1, bookLen < 1, dim < 1).
 */
Status tevsNearestVec_32f(const float* pSrc, int* pIndx, float* pDist, int len, const float* pBook, int bookLen, int dim);

/* ---- Sort, SortDown: ascending and descending order, in place -------------------------------------------------------
 *
 * pSrcDst        len >= 1 elements. Floats: -0 is below +0, infinities stand at the ends, and NaNs come last in both
 *                directions, in an order that is left open.
 *
 * Quicksort by vectors, with a sorting network for what is short (K. E. Batcher, Sorting networks and their
 * applications, AFIPS 1968). No memory is taken, and no input takes more than a multiple of len * log(len) steps.
 * Results are the same at every SIMD level, but for the order of NaNs.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr, StatusBadSize (len < 1).
 */
Status tevsSort_16s_I(int16_t* pSrcDst, int len);
Status tevsSort_32s_I(int32_t* pSrcDst, int len);
Status tevsSort_32f_I(float* pSrcDst, int len);
Status tevsSort_64f_I(double* pSrcDst, int len);

Status tevsSortDown_16s_I(int16_t* pSrcDst, int len);
Status tevsSortDown_32s_I(int32_t* pSrcDst, int len);
Status tevsSortDown_32f_I(float* pSrcDst, int len);
Status tevsSortDown_64f_I(double* pSrcDst, int len);

/* ---- SortIndx, SortIndxDown: the order that sorts, as indices -------------------------------------------------------
 *
 *     pSrc[pIndx[0]], pSrc[pIndx[1]], ..   is in ascending (descending) order
 *
 * pSrc           len >= 1 elements, which stay as they are; their order is that of Sort and SortDown
 * pIndx          the indices 0 .. len-1. Those of equal elements, and of NaNs, rise in both directions: the order is
 *                stable.
 *
 * No memory is taken, and no input takes more than a multiple of len * log(len) steps. Results are the same at every
 * SIMD level.
 *
 * Returns StatusOk, or the first that applies, with nothing written: StatusNullPtr, StatusBadSize (len < 1).
 */
Status tevsSortIndx_16s(const int16_t* pSrc, int* pIndx, int len);
Status tevsSortIndx_32s(const int32_t* pSrc, int* pIndx, int len);
Status tevsSortIndx_32f(const float* pSrc, int* pIndx, int len);
Status tevsSortIndx_64f(const double* pSrc, int* pIndx, int len);

Status tevsSortIndxDown_16s(const int16_t* pSrc, int* pIndx, int len);
Status tevsSortIndxDown_32s(const int32_t* pSrc, int* pIndx, int len);
Status tevsSortIndxDown_32f(const float* pSrc, int* pIndx, int len);
Status tevsSortIndxDown_64f(const double* pSrc, int* pIndx, int len);

TEVS_END

#endif
