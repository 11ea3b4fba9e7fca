#pragma once

#include "tevs.h"

namespace plain {

void tone(float* dst, int len, float magn, float rFreq);
void tone(Complex32f* dst, int len, float magn, float rFreq);
void tone(int16_t* dst, int len, float magn, float rFreq);
void tone(double* dst, int len, double magn, double rFreq);
void mix(const Complex32f* src, Complex32f* dst, int len, float rFreq);

}   // namespace plain
