#pragma once

#include <stdint.h>

namespace plain {

// For T of int16_t, float and double.
template <class T> void preEmphasis(const T* src, T* dst, int len, double alpha, double* mem);
template <class T> void deEmphasis(const T* src, T* dst, int len, double alpha, double* mem);
template <class T> void trackMean(const T* src, int len, double* level, double alpha);
template <class T> void trackPower(const T* src, int len, double* level, double alpha);
// What enters less what leaves.
void sumWindow(const uint8_t* src, int32_t* dst, int len, int maskSize);
void sumWindow(const int16_t* src, int32_t* dst, int len, int maskSize);
void sumWindow(const float* src, float* dst, int len, int maskSize);
void sumWindow(const double* src, double* dst, int len, int maskSize);
void levinson(const double* r, double* a, int order, double* k);

}   // namespace plain
