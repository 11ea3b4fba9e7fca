#pragma once

namespace plain {

// y[n] = sum over k of h[k] x[n-k]; x[-1] .. x[-(taps-1)] lie before x.
void fir(const float* x, const float* h, int taps, float* y, int len);

}   // namespace plain
