#pragma once

#include <stdint.h>

#include "core/formats.h"
#include "core/simd/dispatch.h"

namespace tevs {

template <class S, class D> using Convert = void (*)(const S* src, D* dst, int len);

// As it is, and of src * factor.
template <class S, class D, class F = float> struct Scalable {
    Convert<S, D> plain;
    void (*times)(const S* src, D* dst, int len, F factor);
};
template <class S, class D, class F = float> struct Rounded { Scalable<S, D, F> nearest, truncated; };

// Saturated: as it is, src * 2^-s for 1 <= s < the width of S (unsigned: <=), src * 2^s for 1 <= s <= the width of D, at most 31.
template <class S, class D> struct Narrowing {
    Convert<S, D> exact;
    void (*right)(const S* src, D* dst, int len, int s);
    void (*left)(const S* src, D* dst, int len, int s);
};

struct ConversionKernels {
    Convert<int8_t, int16_t> widen8s16s;
    Convert<int16_t, int32_t> widen16s32s;
    Convert<Int24, int32_t> widen24s32s;
    Convert<UInt24, uint32_t> widen24u32u;
    Convert<float, double> widen32f64f;
    Convert<double, float> narrow64f32f;

    Convert<int8_t, float> float8s;
    Convert<uint8_t, float> float8u;
    Convert<uint16_t, float> float16u;
    Convert<UInt24, float> float24u;
    Convert<Half, float> float16f;
    Scalable<int16_t, float> float16s;
    Scalable<int32_t, float> float32s;
    Scalable<Int24, float> float24s;
    Scalable<int16_t, double> double16s;
    Scalable<int32_t, double> double32s;

    Narrowing<int32_t, int16_t> narrow32s16s;
    Narrowing<int64_t, int32_t> narrow64s32s;
    Narrowing<int32_t, Int24> narrow32s24s;
    Narrowing<uint32_t, UInt24> narrow32u24u;

    // To the nearest integer or toward zero, saturated; NaN gives the type's minimum.
    Rounded<float, int8_t> round32f8s;
    Rounded<float, uint8_t> round32f8u;
    Rounded<float, int16_t> round32f16s;
    Rounded<float, uint16_t> round32f16u;
    Rounded<float, int32_t> round32f32s;
    Rounded<double, int32_t, double> round64f32s;
    Rounded<Half, int16_t> round16f16s;
    Scalable<float, Int24> nearest32f24s;
    Scalable<float, UInt24> nearest32f24u;

    Convert<int16_t, Half> halfNearest16s, halfTruncated16s;
    Convert<float, Half> halfNearest32f, halfTruncated32f;

    // `frames` samples from `first` on of each channel, as frames of one sample per channel, and back. The frames have room for
    // kFrameSlack samples past the last, which may be written to.
    void (*interleave)(const float* const* channels, int first, int nChannels, int frames, float* dst);
    void (*deinterleave)(const float* src, float* const* channels, int first, int nChannels, int frames);
};
constexpr int kFrameSlack = 4;

}   // namespace tevs

TEVS_KERNEL_TABLE(ConversionKernels, conversion, 2)
