#pragma once

#include <stdint.h>

#include "core/simd/level.h"

// The vector forms of the scaling rule, over whole arrays; len is a multiple of 16.
struct ScaleKernels {
    void (*exact)(const int32_t* r, int16_t* dst, int len);
    void (*right)(const int32_t* r, int16_t* dst, int len, int shift);
    void (*left)(const int32_t* r, int16_t* dst, int len, int shift);
};

namespace tevs {
namespace level0 {
extern const ScaleKernels scaleTwins;
}
namespace level1 {
extern const ScaleKernels scaleTwins;
}
namespace level2 {
extern const ScaleKernels scaleTwins;
}
}   // namespace tevs
