#pragma once

#include "core/simd/dispatch.h"
#include "tevs/types.h"

namespace tevs {

// A wave in cycles: its phase at the first sample and the step to the next one; where it has fallen from 1 to -1, and the slopes down and up again.
struct Wave {
    double phase, step, fall, down, up, magn;
};

template <class T> using Waves = void (*)(const Wave& wave, T* dst, int len);
// Complex samples have the wave in their real part and the wave three quarters of a cycle on in the imaginary one. Integers to nearest, saturated.
struct TriangleKernels {
    Waves<int16_t> by16s;
    Waves<Complex16s> by16sc;
    Waves<float> by32f;
    Waves<Complex32f> by32fc;
    Waves<double> by64f;
    Waves<Complex64f> by64fc;
};

}   // namespace tevs

TEVS_KERNEL_TABLE(TriangleKernels, triangle, 2)
