#pragma once

#include <stdint.h>

#include "core/simd/dispatch.h"

namespace tevs {

// Pairs of the polar method: u1, u2 and s = u1^2 + u2^2 in 0 < s < 1.
constexpr int kPairBlock = 128;
struct PolarPairs {
    alignas(64) double u1[kPairBlock], u2[kPairBlock], s[kPairBlock];
};

// raw[i] * scale + mean, in double; a double is rounded to T, or truncated toward zero.
template <class T> using Uniform = void (*)(const int32_t* raw, T* dst, int len, double scale, double mean);
// product[i] + mean: of a float, both in single precision; of a double in double, truncated toward zero and saturated to integers.
template <class T> using Shifted = void (*)(const double* product, T* dst, int len, double mean);

struct RandomKernels {
    Uniform<uint8_t> truncated8u;
    Uniform<int16_t> truncated16s, nearest16s;
    Uniform<float> uniform32f;
    Uniform<double> uniform64f;

    // f = sqrt(-2 ln s / s) in place of s, and dst[2 i] = (f * stdDev) * u2[i], dst[2 i + 1] = (f * stdDev) * u1[i]; all up to the next whole vector.
    void (*normal)(PolarPairs& pairs, int count, double stdDev, double* dst);
    Shifted<uint8_t> shifted8u;
    Shifted<int16_t> shifted16s;
    Shifted<float> shifted32f;
    Shifted<double> shifted64f;
};

}   // namespace tevs

TEVS_KERNEL_TABLE(RandomKernels, randomNumbers, 2)
