#pragma once

#include "tevs/types.h"

namespace plain {

// y[m] = sum over j of h[p][j] x[at + j], where p and at step through the pattern of up outputs and down inputs; h holds up rows of `taps` reversed taps each,
// and the first tap of the first output meets x[0].
void multirate(const float* x, const float* h, int taps, int up, int down, float* y, int len);
void multirate(const double* x, const double* h, int taps, int up, int down, double* y, int len);
void multirate(const Complex32f* x, const Complex32f* h, int taps, int up, int down, Complex32f* y, int len);
void multirate(const int16_t* x, const float* h, int taps, int up, int down, int16_t* y, int len);     // rounded and saturated
void multirate(const int16_t* x, const int16_t* h, int taps, int up, int down, int16_t* y, int len);   // from sums in 32 bits, * 2^-15

}   // namespace plain
