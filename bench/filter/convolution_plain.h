#pragma once

#include <cstdint>

namespace plain {

// y[n] = sum over k of h[k] x[n-k] for 0 <= n < m + len - 1
void convolve(const float* h, int m, const float* x, int len, float* y);
void convolve(const double* h, int m, const double* x, int len, double* y);
// The sums as 32-bit integers, which overflow, times 2^-15.
void convolve(const int16_t* h, int m, const int16_t* x, int len, int16_t* y);
// y[n] = sum over k of h[k] x[bias+n-k] for 0 <= n < count
void convolveBiased(const float* h, int m, const float* x, int len, float* y, int count, int bias);
// r[lag] = sum over k of x[k] x[k+lag] for 0 <= lag < lags
void autoCorrelate(const float* x, int len, float* r, int lags);
void autoCorrelate(const int16_t* x, int len, int16_t* r, int lags);
void cyclic8(const float* x, const float* h, float* y);

}   // namespace plain
