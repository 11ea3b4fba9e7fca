// The loops that a caller would write for himself.
#pragma once

#include <cstdint>

namespace plain {

// low[n] and high[n] of a stream with its past before x.
void analysis(const float* x, const float* lowTaps, const float* highTaps, int taps, float* low, float* high, int n);
// All levels of a periodic signal.
void dwt(const double* x, double* y, double* work, int n, int levels, const double* lowTaps, const double* highTaps, int taps);
void haar(const float* x, float* low, float* high, int n);
void haar(const int16_t* x, int16_t* low, int16_t* high, int n);
void lift53(const int16_t* x, int16_t* low, int16_t* high, int n);

}   // namespace plain
