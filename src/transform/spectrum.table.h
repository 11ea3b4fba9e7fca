#pragma once

#include "core/simd/dispatch.h"

namespace tevs {

struct SpectrumKernels {
    // dst[n] = a[n] b[n] for len complex values, interleaved. dst may equal a source.
    void (*mulPairs)(const float* a, const float* b, float* dst, int len);
};

}   // namespace tevs

TEVS_KERNEL_TABLE(SpectrumKernels, spectrum, 2)
