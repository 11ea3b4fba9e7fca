#pragma once

#include <cstdint>

namespace plain {

struct Complex32f {
    float re, im;
};
struct Complex64f {
    double re, im;
};
struct Complex16s {
    int16_t re, im;
};

// y[n] = sum over k of h[k] x[n-k]; x[-1] .. x[-(taps-1)] lie before x.
void fir(const float* x, const float* h, int taps, float* y, int len);
void fir(const double* x, const double* h, int taps, double* y, int len);
void fir(const Complex32f* x, const Complex32f* h, int taps, Complex32f* y, int len);
void fir(const Complex64f* x, const Complex64f* h, int taps, Complex64f* y, int len);
// In Q15: rounded and saturated, of sums in 32 bits.
void fir(const int16_t* x, const int16_t* h, int taps, int16_t* y, int len);
void fir(const Complex16s* x, const Complex16s* h, int taps, Complex16s* y, int len);

// The sum of n products.
float dot(const float* x, const float* h, int n);

}   // namespace plain
