#pragma once

#include <stdint.h>

#include "core/simd/dispatch.h"
#include "tevs/types.h"

namespace tevs {

// 2^-scaleFactor in two factors, since one would leave the range of a double; floats are not scaled.
struct SpeechScale {
    double f, g;
};

// src and dst may be equal. DeEmphasis returns its last output as it was before it became a T.
template <class T> using PreEmphasis = void (*)(const T* src, T* dst, int len, double alpha, double before, SpeechScale by);
template <class T> using DeEmphasis = double (*)(const T* src, T* dst, int len, double alpha, double before, SpeechScale by);
// The level after the last sample.
template <class T> using Track = double (*)(const T* src, int len, double level, double alpha);
template <class S, class D> using SumWindow = void (*)(const S* src, D* dst, int len, int maskSize, double* sums);
// From r[0] .. r[order] to a[0] .. a[order], k[0] .. k[order - 1] where k is not null; returns the energy left.
using Levinson = double (*)(const double* r, double* a, int order, double* k);

// The widest mask of floats whose window is summed anew for every output; wider ones take memory for maskSize sums.
constexpr int kSummedAnew = 12;

struct SpeechKernels {
    PreEmphasis<int16_t> preEmphasis16s;
    PreEmphasis<float> preEmphasis32f;
    PreEmphasis<double> preEmphasis64f;
    DeEmphasis<int16_t> deEmphasis16s;
    DeEmphasis<float> deEmphasis32f;
    DeEmphasis<double> deEmphasis64f;
    Track<int16_t> mean16s, power16s;
    Track<float> mean32f, power32f;
    Track<double> mean64f, power64f;
    Track<Complex32f> power32fc;
    SumWindow<uint8_t, int32_t> sumWindow8u;
    SumWindow<int16_t, int32_t> sumWindow16s;
    SumWindow<float, float> sumWindow32f;
    SumWindow<double, double> sumWindow64f;
    Levinson levinson;
};

}   // namespace tevs

TEVS_KERNEL_TABLE(SpeechKernels, speech, 2, FMA)
