#pragma once

#include "tevs/types.h"

namespace plain {

template <class T> void below(const T* src, T* dst, int len, T level);
template <class T> void belowValue(const T* src, T* dst, int len, T level, T value);
template <class T> void aboveValue(const T* src, T* dst, int len, T level, T value);
template <class T> void outside(const T* src, T* dst, int len, T low, T valueLow, T high, T valueHigh);
template <class T> void smallMagnitude(const T* src, T* dst, int len, T level);
void inverse(const float* src, float* dst, int len, float level);

void below(const Complex32f* src, Complex32f* dst, int len, float level);
void belowValue(const Complex32f* src, Complex32f* dst, int len, float level, Complex32f value);
void belowValue(const Complex64f* src, Complex64f* dst, int len, double level, Complex64f value);
void belowValue(const Complex16s* src, Complex16s* dst, int len, int16_t level, Complex16s value);
void inverse(const Complex32f* src, Complex32f* dst, int len, float level);

}   // namespace plain
