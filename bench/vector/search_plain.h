#pragma once

namespace plain {

// For T of int16_t, int32_t, float and double.
template <class T> void sort(T* p, int n);
template <class T> void sortIndx(const T* src, int* indx, int n);
// By std::lower_bound and a look at the two neighbours.
template <class T> void nearest(const T* src, int* indx, int len, const T* table, int tableLen);
void nearestVec(const float* src, int* indx, float* dist, int len, const float* book, int bookLen, int dim);

}   // namespace plain
