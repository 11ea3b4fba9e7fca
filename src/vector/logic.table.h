#pragma once

#include <stddef.h>
#include <stdint.h>

#include "core/simd/dispatch.h"

namespace tevs {

// Bits know nothing of elements: the logic kernels count bytes, and a constant is repeated to 32 bits. Shift counts lie in 1 .. width - 1.
struct LogicKernels {
    void (*bitAnd)(const void* a, const void* b, void* dst, ptrdiff_t bytes);
    void (*bitOr)(const void* a, const void* b, void* dst, ptrdiff_t bytes);
    void (*bitXor)(const void* a, const void* b, void* dst, ptrdiff_t bytes);
    void (*bitAndC)(const void* src, uint32_t val, void* dst, ptrdiff_t bytes);
    void (*bitOrC)(const void* src, uint32_t val, void* dst, ptrdiff_t bytes);
    void (*bitXorC)(const void* src, uint32_t val, void* dst, ptrdiff_t bytes);
    void (*left8)(const void* src, int count, void* dst, ptrdiff_t bytes);
    void (*left16)(const void* src, int count, void* dst, ptrdiff_t bytes);
    void (*left32)(const void* src, int count, void* dst, ptrdiff_t bytes);
    void (*right8u)(const void* src, int count, void* dst, ptrdiff_t bytes);
    void (*right16u)(const void* src, int count, void* dst, ptrdiff_t bytes);
    void (*right16s)(const void* src, int count, void* dst, ptrdiff_t bytes);
    void (*right32s)(const void* src, int count, void* dst, ptrdiff_t bytes);
};

}   // namespace tevs

TEVS_KERNEL_TABLE(LogicKernels, logic, 2)
