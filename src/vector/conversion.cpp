// Conversion between sample types: each element in another type, widened exactly, or narrowed with rounding and saturation.
#include "tevs/conversion.h"

#include <stddef.h>

#include <algorithm>
#include <cstring>
#include <limits>

#include "core/args.h"
#include "core/rounding.h"
#include "core/scale.h"
#include "vector/conversion.table.h"

namespace tevs {
namespace {

// Packed integers and halves go by their bytes or bits in the interface.
template <class Format, class P> const Format* as(const P* p) { return reinterpret_cast<const Format*>(p); }
template <class Format, class P> Format* as(P* p) { return reinterpret_cast<Format*>(p); }

// The kernel's own types of source and destination, where the interface has others.
template <class S, class D, class P, class Q> Status exact(const P* pSrc, Q* pDst, int len, Convert<S, D> kernel) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    kernel(as<S>(pSrc), as<D>(pDst), len);
    return StatusOk;
}
template <class S, class D, class P, class Q> Status nearest(const P* pSrc, Q* pDst, int len, Convert<S, D> kernel) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    NearestRounding guard;
    kernel(as<S>(pSrc), as<D>(pDst), len);
    return StatusOk;
}

// The factor is a normal single-precision number for every destination.
template <class S, class D> Status floating(const S* pSrc, D* pDst, int len, int scaleFactor, const Scalable<S, D>& kernel) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    NearestRounding guard;
    if (scaleFactor == 0)
        kernel.plain(pSrc, pDst, len);
    else
        kernel.times(pSrc, pDst, len, powerOfTwo<float>(-std::clamp(scaleFactor, -112, 126)));
    return StatusOk;
}

// To the right by Right at most: beyond it there is nothing but zeros. To the left by Left at most: beyond it the same saturates.
template <int Right, int Left, class S, class D, class Q> Status narrow(const S* pSrc, Q* pDst, int len, int scaleFactor, const Narrowing<S, D>& kernel) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    if (scaleFactor == 0)
        kernel.exact(pSrc, as<D>(pDst), len);
    else if (scaleFactor < 0)
        kernel.left(pSrc, as<D>(pDst), len, -std::max(scaleFactor, -Left));
    else if (scaleFactor <= Right)
        kernel.right(pSrc, as<D>(pDst), len, scaleFactor);
    else
        std::memset(pDst, 0, size_t(len) * sizeof(D));
    return StatusOk;
}

// For scales whose factor leaves the range of S, in two steps of half the exponent. Magnitudes of S go from 2^-149 to 2^128, or from 2^-1074 to
// 2^1024: the scale at which all saturate, or become 0, in 32 bits is 32 past these. A product that overflows between the steps saturates in the end,
// one that loses bits to underflow rounds to 0, and all others are exact.
template <class S, class D> void convertFarScaled(const S* src, D* dst, int len, int scaleFactor, const Scalable<S, D, S>& kernel) {
    constexpr int kFar = sizeof(S) == 4 ? 190 : 1110, kBlock = 256;
    const int e = -std::clamp(scaleFactor, -kFar, kFar);
    const S f = powerOfTwo<S>(e / 2), g = powerOfTwo<S>(e - e / 2);
    S product[kBlock];
    for (int left = len; left > 0; left -= kBlock, src += kBlock, dst += kBlock) {
        const int n = std::min(left, kBlock);
        for (int i = 0; i < n; ++i) product[i] = src[i] * f;
        kernel.times(product, dst, n, g);
    }
}

template <class S, class D, class Q> Status convertScaled(const S* src, Q* dst, int len, int scaleFactor, const Scalable<S, D, S>* kernel) {
    constexpr int kNormal = std::numeric_limits<S>::max_exponent - 2;   // 2^+-kNormal are normal numbers
    if (scaleFactor == 0)
        kernel->plain(src, as<D>(dst), len);
    else if (scaleFactor >= -kNormal && scaleFactor <= kNormal)
        kernel->times(src, as<D>(dst), len, powerOfTwo<S>(-scaleFactor));
    else
        convertFarScaled(src, as<D>(dst), len, scaleFactor, *kernel);
    return StatusOk;
}

// Subnormal numbers count where the rounding mode has to be changed.
template <class S, class D, class Q> Status integers(const S* pSrc, Q* pDst, int len, int scaleFactor, const Scalable<S, D, S>& kernel) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    return toNearest<_MM_DENORMALS_ZERO_MASK>(convertScaled<S, D, Q>, pSrc, pDst, len, scaleFactor, &kernel);
}
// Truncation goes by no mode: products that are not exact are below 1 or beyond every range.
template <class S, class D> Status integers(const S* pSrc, D* pDst, int len, int rndMode, int scaleFactor, const Rounded<S, D, S>& kernels) {
    if (rndMode != RoundTowardZero) return integers(pSrc, pDst, len, scaleFactor, kernels.nearest);
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    return convertScaled(pSrc, pDst, len, scaleFactor, &kernels.truncated);
}

// A half's magnitude goes from 2^-24 to 2^16 and is then infinite: at the scales +-42 all saturate or become 0.
Status halfToInteger(const uint16_t* pSrc, int16_t* pDst, int len, int scaleFactor, const Scalable<Half, int16_t>& kernel) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len)) return s;
    NearestRounding guard;
    if (scaleFactor == 0)
        kernel.plain(as<Half>(pSrc), pDst, len);
    else
        kernel.times(as<Half>(pSrc), pDst, len, powerOfTwo<float>(-std::clamp(scaleFactor, -42, 42)));
    return StatusOk;
}

// Frames are made up, or taken apart, in a block of floats between the channels and the conversion: it stays in the first cache, and every format is
// served by the kernel that converts it elsewhere.
constexpr int kBlock = 1024;
struct Frames {
    alignas(64) float samples[kBlock + kFrameSlack];
};

// step(first, frames, channel, channels, at) for one block after the other: whole frames, or a piece of one that is longer than a block. `at` is the
// block's place in the interleaved vector.
template <class Step> void forEachBlock(int nChannels, int chanLen, Step step) {
    const int channels = std::min(nChannels, kBlock), rows = kBlock / channels;
    for (int left = chanLen; left > 0; left -= rows) {
        const int first = chanLen - left, frames = std::min(left, rows);
        for (int c = 0; c < nChannels; c += channels) step(first, frames, c, std::min(channels, nChannels - c), ptrdiff_t{first} * nChannels + c);
    }
}

Args channelArgs(const void* interleaved, const void* const* channels, int nChannels, int chanLen) {
    return Args()
        .ptr(interleaved)
        .len(nChannels)
        .len(chanLen)
        .ptr(channels)
        .require([=] { return std::all_of(channels, channels + nChannels, [](const void* p) { return p != nullptr; }); }, StatusNullPtr);
}

template <class D, class Q, class Kernel> Status join(const float* const* pSrc, int nChannels, int chanLen, Q* pDst, Kernel kernel) {
    if (Status s = channelArgs(pDst, as<const void*>(pSrc), nChannels, chanLen)) return s;
    NearestRounding guard;
    D* const dst = as<D>(pDst);
    if (nChannels == 1) {
        kernel(pSrc[0], dst, chanLen);
        return StatusOk;
    }
    Frames block;
    forEachBlock(nChannels, chanLen, [&](int first, int frames, int channel, int channels, ptrdiff_t at) {
        conversion->interleave(pSrc + channel, first, channels, frames, block.samples);
        kernel(block.samples, dst + at, frames * channels);
    });
    return StatusOk;
}

template <class S, class P> Status split(const P* pSrc, float* const* pDst, int nChannels, int chanLen, const Scalable<S, float>& kernel, float factor) {
    if (Status s = channelArgs(pSrc, as<const void*>(pDst), nChannels, chanLen)) return s;
    const S* const src = as<S>(pSrc);
    if (nChannels == 1) {
        kernel.times(src, pDst[0], chanLen, factor);
        return StatusOk;
    }
    Frames block;
    forEachBlock(nChannels, chanLen, [&](int first, int frames, int channel, int channels, ptrdiff_t at) {
        kernel.times(src + at, block.samples, frames * channels, factor);
        conversion->deinterleave(block.samples, pDst + channel, first, channels, frames);
    });
    return StatusOk;
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsConvert_8s16s(const int8_t* pSrc, int16_t* pDst, int len) { return exact(pSrc, pDst, len, conversion->widen8s16s); }
Status tevsConvert_16s32s(const int16_t* pSrc, int32_t* pDst, int len) { return exact(pSrc, pDst, len, conversion->widen16s32s); }
Status tevsConvert_32s64f(const int32_t* pSrc, double* pDst, int len) { return exact(pSrc, pDst, len, conversion->double32s.plain); }
Status tevsConvert_32f64f(const float* pSrc, double* pDst, int len) { return exact(pSrc, pDst, len, conversion->widen32f64f); }
Status tevsConvert_24s32s(const uint8_t* pSrc, int32_t* pDst, int len) { return exact(pSrc, pDst, len, conversion->widen24s32s); }
Status tevsConvert_24u32u(const uint8_t* pSrc, uint32_t* pDst, int len) { return exact(pSrc, pDst, len, conversion->widen24u32u); }

Status tevsConvert_8s32f(const int8_t* pSrc, float* pDst, int len) { return exact(pSrc, pDst, len, conversion->float8s); }
Status tevsConvert_8u32f(const uint8_t* pSrc, float* pDst, int len) { return exact(pSrc, pDst, len, conversion->float8u); }
Status tevsConvert_16s32f(const int16_t* pSrc, float* pDst, int len) { return exact(pSrc, pDst, len, conversion->float16s.plain); }
Status tevsConvert_16u32f(const uint16_t* pSrc, float* pDst, int len) { return exact(pSrc, pDst, len, conversion->float16u); }
Status tevsConvert_32s32f(const int32_t* pSrc, float* pDst, int len) { return nearest(pSrc, pDst, len, conversion->float32s.plain); }
Status tevsConvert_24s32f(const uint8_t* pSrc, float* pDst, int len) { return exact(pSrc, pDst, len, conversion->float24s.plain); }
Status tevsConvert_24u32f(const uint8_t* pSrc, float* pDst, int len) { return exact(pSrc, pDst, len, conversion->float24u); }
Status tevsConvert_16f32f(const uint16_t* pSrc, float* pDst, int len) { return nearest(pSrc, pDst, len, conversion->float16f); }   // the sign of 0 - 0

Status tevsConvert_64f32f(const double* pSrc, float* pDst, int len) { return nearest(pSrc, pDst, len, conversion->narrow64f32f); }
Status tevsConvert_32s16s(const int32_t* pSrc, int16_t* pDst, int len) { return exact(pSrc, pDst, len, conversion->narrow32s16s.exact); }

Status tevsConvert_16s32f_Sfs(const int16_t* pSrc, float* pDst, int len, int scaleFactor) {
    return floating(pSrc, pDst, len, scaleFactor, conversion->float16s);
}
Status tevsConvert_16s64f_Sfs(const int16_t* pSrc, double* pDst, int len, int scaleFactor) {
    return floating(pSrc, pDst, len, scaleFactor, conversion->double16s);
}
Status tevsConvert_32s32f_Sfs(const int32_t* pSrc, float* pDst, int len, int scaleFactor) {
    return floating(pSrc, pDst, len, scaleFactor, conversion->float32s);
}
Status tevsConvert_32s64f_Sfs(const int32_t* pSrc, double* pDst, int len, int scaleFactor) {
    return floating(pSrc, pDst, len, scaleFactor, conversion->double32s);
}

Status tevsConvert_32s16s_Sfs(const int32_t* pSrc, int16_t* pDst, int len, int scaleFactor) {
    return narrow<31, 16>(pSrc, pDst, len, scaleFactor, conversion->narrow32s16s);
}
Status tevsConvert_64s32s_Sfs(const int64_t* pSrc, int32_t* pDst, int len, int scaleFactor) {
    return narrow<63, 31>(pSrc, pDst, len, std::min(scaleFactor, 63), conversion->narrow64s32s);
}
Status tevsConvert_32s24s_Sfs(const int32_t* pSrc, uint8_t* pDst, int len, int scaleFactor) {
    return narrow<31, 31>(pSrc, pDst, len, std::min(scaleFactor, 31), conversion->narrow32s24s);
}
Status tevsConvert_32u24u_Sfs(const uint32_t* pSrc, uint8_t* pDst, int len, int scaleFactor) {
    return narrow<32, 31>(pSrc, pDst, len, scaleFactor, conversion->narrow32u24u);
}

Status tevsConvert_32f8s_Sfs(const float* pSrc, int8_t* pDst, int len, int rndMode, int scaleFactor) {
    return integers(pSrc, pDst, len, rndMode, scaleFactor, conversion->round32f8s);
}
Status tevsConvert_32f8u_Sfs(const float* pSrc, uint8_t* pDst, int len, int rndMode, int scaleFactor) {
    return integers(pSrc, pDst, len, rndMode, scaleFactor, conversion->round32f8u);
}
Status tevsConvert_32f16s_Sfs(const float* pSrc, int16_t* pDst, int len, int rndMode, int scaleFactor) {
    return integers(pSrc, pDst, len, rndMode, scaleFactor, conversion->round32f16s);
}
Status tevsConvert_32f16u_Sfs(const float* pSrc, uint16_t* pDst, int len, int rndMode, int scaleFactor) {
    return integers(pSrc, pDst, len, rndMode, scaleFactor, conversion->round32f16u);
}
Status tevsConvert_32f32s_Sfs(const float* pSrc, int32_t* pDst, int len, int rndMode, int scaleFactor) {
    return integers(pSrc, pDst, len, rndMode, scaleFactor, conversion->round32f32s);
}
Status tevsConvert_64f32s_Sfs(const double* pSrc, int32_t* pDst, int len, int rndMode, int scaleFactor) {
    return integers(pSrc, pDst, len, rndMode, scaleFactor, conversion->round64f32s);
}
Status tevsConvert_32f24s_Sfs(const float* pSrc, uint8_t* pDst, int len, int scaleFactor) {
    return integers(pSrc, pDst, len, scaleFactor, conversion->nearest32f24s);
}
Status tevsConvert_32f24u_Sfs(const float* pSrc, uint8_t* pDst, int len, int scaleFactor) {
    return integers(pSrc, pDst, len, scaleFactor, conversion->nearest32f24u);
}

Status tevsConvert_16s16f(const int16_t* pSrc, uint16_t* pDst, int len, int rndMode) {
    return nearest(pSrc, pDst, len, rndMode == RoundNearest ? conversion->halfNearest16s : conversion->halfTruncated16s);
}
Status tevsConvert_32f16f(const float* pSrc, uint16_t* pDst, int len, int rndMode) {
    return nearest(pSrc, pDst, len, rndMode == RoundNearest ? conversion->halfNearest32f : conversion->halfTruncated32f);
}

Status tevsConvert_16f16s_Sfs(const uint16_t* pSrc, int16_t* pDst, int len, int rndMode, int scaleFactor) {
    return halfToInteger(pSrc, pDst, len, scaleFactor, rndMode == RoundNearest ? conversion->round16f16s.nearest : conversion->round16f16s.truncated);
}

Status tevsJoin_32f16s_D2L(const float* const* pSrc, int nChannels, int chanLen, int16_t* pDst) {
    return join<int16_t>(pSrc, nChannels, chanLen, pDst, conversion->round32f16s.nearest.plain);
}
Status tevsJoinScaled_32f16s_D2L(const float* const* pSrc, int nChannels, int chanLen, int16_t* pDst) {
    return join<int16_t>(pSrc, nChannels, chanLen, pDst, [](const float* s, int16_t* d, int n) { conversion->round32f16s.nearest.times(s, d, n, 0x1p15f); });
}
Status tevsJoinScaled_32f24s_D2L(const float* const* pSrc, int nChannels, int chanLen, uint8_t* pDst) {
    return join<Int24>(pSrc, nChannels, chanLen, pDst, [](const float* s, Int24* d, int n) { conversion->nearest32f24s.times(s, d, n, 0x1p23f); });
}
Status tevsSplitScaled_16s32f_D2L(const int16_t* pSrc, float* const* pDst, int nChannels, int chanLen) {
    return split(pSrc, pDst, nChannels, chanLen, conversion->float16s, 0x1p-15f);
}
Status tevsSplitScaled_24s32f_D2L(const uint8_t* pSrc, float* const* pDst, int nChannels, int chanLen) {
    return split(pSrc, pDst, nChannels, chanLen, conversion->float24s, 0x1p-23f);
}
