#pragma once

#include <stddef.h>
#include <stdint.h>

#include "core/simd/dispatch.h"
#include "tevs/types.h"

namespace tevs {

// out[n] = sum over j = 0 .. tapsLen-1 of taps[step * j] * in[n+j] for 0 <= n < len, where least <= len <= most: so few outputs that a block filter's sums would wait
// for themselves. in and out lie apart.
template <class T> struct FewOutputs {
    int least, most;
    void (*kernel)(const T* in, const T* taps, ptrdiff_t step, int tapsLen, T* out, int len);
};

struct ConvolutionKernels {
    FewOutputs<float> few32f;
    FewOutputs<double> few64f;
    FewOutputs<Complex32f> few32fc;
    FewOutputs<Complex64f> few64fc;

    // 16-bit taps as lower + 256 upper digits of magnitudes up to 128.
    void (*digits)(const int16_t* taps, int16_t* lower, int16_t* upper, int n);

    // y[n] = sum over k of x[k] * h[(n-k) mod N]. All is read before anything is written.
    void (*cyclic4)(const float* x, const Complex32f* h, Complex32f* y);
    void (*cyclic8)(const float* x, const float* h, float* y);
    void (*cyclic8of16s)(const int16_t* x, const int16_t* h, int64_t* y);   // exact
};

}   // namespace tevs

TEVS_KERNEL_TABLE(ConvolutionKernels, convolution, 3, FMA)
