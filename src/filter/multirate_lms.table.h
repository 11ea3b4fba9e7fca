#pragma once

#include <stdint.h>

#include "core/simd/dispatch.h"
#include "tevs/types.h"

namespace tevs {

// Taps lie in the order in which they meet the samples: the one of the oldest first.
struct OutputAndPower {
    float output, power;
};

struct MultirateLmsKernels {
    // The sums of taps[j] * in[j] and of in[j]^2; and the same after taps[j] += g * before[j], in one pass. They are formed in an order that depends on n alone.
    OutputAndPower (*dot32f)(const float* in, const float* taps, int n);
    OutputAndPower (*adaptAndDot32f)(const float* before, float g, const float* in, float* taps, int n);
    // The sum of in[j]^2.
    float (*power32f)(const float* in, int n);
    // The sum of taps[j] * in[j] over j = 0 .. n-1, exact as long as 64 bits hold it.
    int64_t (*dot16s)(const int16_t* in, const int32_t* taps, int n);
    Complex64s (*dot16sc)(const Complex16s* in, const Complex32s* taps, int n);
    // taps[j] += g * conj(in[j]). Of integers the step is rounded to nearest, NaN counts as 0, and the sum is saturated.
    void (*adapt16s)(const int16_t* in, int32_t* taps, int n, double g);
    void (*adapt16sc)(const Complex16s* in, Complex32s* taps, int n, Complex64f g);
    void (*adapt32fc)(const Complex32f* in, Complex32f* taps, int n, Complex32f g);
};

}   // namespace tevs

TEVS_KERNEL_TABLE(MultirateLmsKernels, multirateLms, 2, FMA)
