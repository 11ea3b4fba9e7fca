#pragma once

namespace plain {

// A pass over the output for each tap; x[-delay] lies before x.
void firSparse(const float* x, const float* taps, const int* delays, int count, float* y, int n);
// y[-delay] lies before y.
void iirSparse(float* y, const float* taps, const int* delays, int count, int n);

}   // namespace plain
