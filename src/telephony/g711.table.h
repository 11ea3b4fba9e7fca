#pragma once

#include <stdint.h>

#include "core/simd/dispatch.h"

namespace tevs {

// One of the two codes.
struct Companding {
    void (*compress16s)(const int16_t* src, uint8_t* dst, int len);
    void (*compress32f)(const float* src, uint8_t* dst, int len);
    void (*expand16s)(const uint8_t* src, int16_t* dst, int len);
    void (*expand32f)(const uint8_t* src, float* dst, int len);
};

struct G711Kernels {
    Companding aLaw, muLaw;
    // dst[n] = table[src[n] & 0x7f] with the sign bit of src[n].
    void (*transcode)(const uint8_t* src, uint8_t* dst, int len, const uint8_t* table);
};

}   // namespace tevs

TEVS_KERNEL_TABLE(G711Kernels, g711, 2)
