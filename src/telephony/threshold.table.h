#pragma once

#include <stdint.h>

#include "core/complex.h"
#include "core/simd/dispatch.h"

namespace tevs {

// What becomes of elements below the level, and of elements above it; complex ones count by their magnitude.
template <class F> struct Sides { F below, above; };

// The level of complex floats: mantissa * unit, where unit is a power of two. It and 1 / unit are normal numbers, and so far from the bounds of the range that
// mantissa may be divided by a magnitude near 1.
template <class T> struct ScaledLevel { T level, mantissa, unit; };

template <class T> struct LevelOf { using type = Scalar<T>; };
template <> struct LevelOf<Complex32f> { using type = ScaledLevel<float>; };
template <> struct LevelOf<Complex64f> { using type = ScaledLevel<double>; };

template <class T> using Limit = void (*)(const T* src, T* dst, int len, typename LevelOf<T>::type level);
template <class T> using Replace = void (*)(const T* src, T* dst, int len, typename LevelOf<T>::type level, T value);
template <class T> using Clip = void (*)(const T* src, T* dst, int len, T levelLT, T valueLT, T levelGT, T valueGT);
template <class T> using Invert = bool (*)(const T* src, T* dst, int len, typename LevelOf<T>::type level);   // whether a result is infinite

struct ThresholdKernels {
    Sides<Limit<int16_t>> limit16s;
    Sides<Limit<int32_t>> limit32s;
    Sides<Limit<float>> limit32f;
    Sides<Limit<double>> limit64f;
    // Of level > 0.
    Sides<Limit<Complex16s>> limit16sc;
    Sides<Limit<Complex32f>> limit32fc;
    Sides<Limit<Complex64f>> limit64fc;

    Sides<Replace<int16_t>> replace16s;
    Sides<Replace<float>> replace32f;
    Sides<Replace<double>> replace64f;
    Sides<Replace<Complex16s>> replace16sc;
    Sides<Replace<Complex32f>> replace32fc;
    Sides<Replace<Complex64f>> replace64fc;

    Clip<int16_t> clip16s;
    Clip<int32_t> clip32s;
    Clip<float> clip32f;
    Clip<double> clip64f;

    // Of magnitudes; signs stay.
    Sides<Limit<int16_t>> magnitude16s;
    Sides<Limit<int32_t>> magnitude32s;
    Sides<Limit<float>> magnitude32f;
    Sides<Limit<double>> magnitude64f;

    Invert<float> invert32f;
    Invert<double> invert64f;
    Invert<Complex32f> invert32fc;
    Invert<Complex64f> invert64fc;
};

}   // namespace tevs

TEVS_KERNEL_TABLE(ThresholdKernels, threshold, 2)
