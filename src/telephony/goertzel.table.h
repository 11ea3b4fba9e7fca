#pragma once

#include <stdint.h>

#include "core/simd/dispatch.h"
#include "tevs/types.h"

namespace tevs {

// z^(2^i) of the phase factor z = e^(j omega) of a frequency, for 2^i up to the length.
constexpr int kPhasePowers = 31;
struct PhasePowers {
    double re[kPhasePowers], im[kPhasePowers];
};

// A frequency in cycles per sample; for samples in double precision, which need more digits of its powers than it has itself, the powers.
template <class S> struct FrequencyFor { using type = double; };
template <> struct FrequencyFor<Complex64f> { using type = PhasePowers; };
template <class S> using FrequencyOf = typename FrequencyFor<S>::type;

// y[i] = sum over n of src[n] * z[i]^(len - n), for one frequency or two.
template <class S> using Goertzel = void (*)(const S* src, int len, const FrequencyOf<S>* frequency, Complex64f* y);

struct GoertzelKernels {
    Goertzel<float> one32f;
    Goertzel<int16_t> one16s;
    Goertzel<Complex32f> one32fc, two32fc;
    Goertzel<Complex64f> one64fc, two64fc;
    Goertzel<Complex16s> one16sc, two16sc;
};

}   // namespace tevs

TEVS_KERNEL_TABLE(GoertzelKernels, goertzel, 2)
