#pragma once

#include <stdint.h>

#include "core/simd/dispatch.h"

namespace tevs {

template <class T> using Ramp = void (*)(T* dst, int len, float offset, float slope);
// y[i], to integers rounded half away from zero and saturated; and (y[i] - low) * (magn / (high - low)) rounded half up.
template <class T> using Stored = void (*)(const double* y, T* dst, int len);
template <class T> using Spread = void (*)(const double* y, T* dst, int len, double low, double high, double magn);

struct TestVectorKernels {
    Ramp<uint8_t> ramp8u;
    Ramp<int8_t> ramp8s;
    Ramp<uint16_t> ramp16u;
    Ramp<int16_t> ramp16s;
    Ramp<uint32_t> ramp32u;
    Ramp<int32_t> ramp32s;
    Ramp<float> ramp32f;
    Ramp<double> ramp64f;

    // y[i] = magn * sin(pi / 2 / len * n^2), n = first + i: `count` of them and what fills the last vector, kSweepSlack at most.
    void (*sweep)(double* y, int first, int count, int len, double magn);
    Stored<int8_t> stored8s;
    Stored<int16_t> stored16s;
    Stored<int32_t> stored32s;
    Stored<float> stored32f;
    Spread<uint8_t> spread8u;
    Spread<uint16_t> spread16u;
    Spread<uint32_t> spread32u;
};
constexpr int kSweepSlack = 8;

}   // namespace tevs

TEVS_KERNEL_TABLE(TestVectorKernels, testVector, 2)
