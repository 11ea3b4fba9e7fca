#pragma once

#include <stdint.h>

#include "core/simd/dispatch.h"

namespace tevs {

struct ConversionKernels {
    void (*widen16s32f)(const int16_t* src, float* dst, int len);
    void (*widen32f64f)(const float* src, double* dst, int len);
    void (*narrow64f32f)(const double* src, float* dst, int len);
    // To the nearest integer or toward zero, saturated; the scaled ones of src * f * g.
    void (*nearest32f16s)(const float* src, int16_t* dst, int len);
    void (*truncate32f16s)(const float* src, int16_t* dst, int len);
    void (*nearestScaled32f16s)(const float* src, int16_t* dst, int len, float f, float g);
    void (*truncateScaled32f16s)(const float* src, int16_t* dst, int len, float f, float g);
};

}   // namespace tevs

TEVS_KERNEL_TABLE(ConversionKernels, conversion, 2)
