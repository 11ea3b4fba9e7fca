#pragma once

#include "tevs/types.h"

namespace plain {

// Least mean squares at one rate: x[-(taps-1)] .. x[-1] lie before x; h is h[taps-1] .. h[0]. With norm > 0 normalised.
void lms(const float* x, const float* ref, float* y, int n, float mu, float norm, float* h, int taps);
void lms(const Complex32f* x, const Complex32f* ref, Complex32f* y, int n, float mu, float norm, Complex32f* h, int taps);
void lms(const int16_t* x, const int16_t* ref, int16_t* y, int n, float mu, float norm, int32_t* h, int taps);

}   // namespace plain
