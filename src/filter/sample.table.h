#pragma once

#include <stddef.h>
#include <stdint.h>

#include "core/simd/dispatch.h"

namespace tevs {

// Elements of `Size` bytes each; factors of 2 and above.
struct SampleKernels {
    // n * factor elements, all zero but dst[k * factor + phase] = src[k].
    using Up = void (*)(const void* src, void* dst, ptrdiff_t n, int factor, int phase);
    Up up16, up32, up64, up128;
    // dst[k] = src[k * factor] for 0 <= k < n, n >= 1. Between them nothing is read past src[(n - 1) * factor].
    using Down = void (*)(const void* src, void* dst, ptrdiff_t n, int factor);
    Down down16, down32, down64, down128;
};

}   // namespace tevs

TEVS_KERNEL_TABLE(SampleKernels, sample, 2)
