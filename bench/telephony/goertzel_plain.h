#pragma once

#include "tevs/types.h"

namespace plain {

void goertzel(const float* src, int len, Complex32f* result, float f);
void goertzel(const int16_t* src, int len, Complex32f* result, float f);
void goertzel(const Complex32f* src, int len, Complex32f* result, float f);
void goertzel(const Complex16s* src, int len, Complex32f* result, float f);
void goertzel(const Complex64f* src, int len, Complex64f* result, double f);

}   // namespace plain
