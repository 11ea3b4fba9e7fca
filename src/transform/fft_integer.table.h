#pragma once

#include <stdint.h>

#include "core/simd/dispatch.h"
#include "transform/packing.h"

namespace tevs {

// Short transforms of integers in one kernel each, which converts on the way in and out: N reals of type Samples and their spectrum of type Values, computed in T, times
// scale. All is read before anything is written.
template <class T, class Samples, class Values> struct RealIntegers {
    static constexpr int kOrders = 4;   // N = 2, 4, 8, 16
    void (*forward[kOrders])(const Samples* src, Values* dst, Packing to, T scale);
    void (*inverse[kOrders])(const Values* src, Samples* dst, Packing from, T scale);
};

struct FftIntegerKernels {
    RealIntegers<float, int16_t, int16_t> of16s;
    RealIntegers<float, int16_t, int32_t> of16s32s;
    RealIntegers<double, int32_t, int32_t> of32s;
};

}   // namespace tevs

TEVS_KERNEL_TABLE(FftIntegerKernels, fftInteger, 2, FMA)
