#pragma once

#include <stdint.h>

#include "core/simd/dispatch.h"
#include "tevs/types.h"

namespace tevs {

// Phases in 2^-64 of a turn: that of sample n is phase + n step + n (n - 1) / 2 bend, modulo 2^64.
struct ToneWords {
    uint64_t phase, step, bend;
};

template <class T> using Tone = void (*)(T* dst, int len, const ToneWords& words, double magn);
template <class S, class D = S> using ToneMix = void (*)(const S* src, D* dst, int len, const ToneWords& words);

struct ToneKernels {
    Tone<int16_t> tone16s;
    Tone<Complex16s> tone16sc;
    Tone<float> tone32f;
    Tone<Complex32f> tone32fc;
    Tone<double> tone64f;
    Tone<Complex64f> tone64fc;
    ToneMix<Complex16s> up16sc, down16sc;
    ToneMix<Complex32f> up32fc, down32fc;
    ToneMix<Complex32f, float> up32fc32f;
    ToneMix<float, Complex32f> down32f32fc;
};

}   // namespace tevs

TEVS_KERNEL_TABLE(ToneKernels, tone, 2)
