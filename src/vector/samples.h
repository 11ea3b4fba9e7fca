// Samples on their way from the type that a caller gives into the one that is kept or computed with, and results on their way out.
#pragma once

#include <emmintrin.h>
#include <string.h>

#include <type_traits>

#include "core/complex.h"
#include "core/scale.h"
#include "tevs/conversion.h"
#include "vector/conversion.table.h"

namespace tevs {

// n parts, exactly; integers of 32 bits to single precision to nearest.
inline void widenParts(const int16_t* src, float* dst, int n) { conversion->float16s.plain(src, dst, n); }
inline void widenParts(const int16_t* src, double* dst, int n) { conversion->double16s.plain(src, dst, n); }
inline void widenParts(const int32_t* src, float* dst, int n) { conversion->float32s.plain(src, dst, n); }
inline void widenParts(const int32_t* src, double* dst, int n) { conversion->double32s.plain(src, dst, n); }
inline void widenParts(const float* src, double* dst, int n) { conversion->widen32f64f(src, dst, n); }

// n parts times 2^-scaleFactor, to nearest, saturated; floats have no scale.
inline void narrowParts(const double* src, float* dst, int n, int) { conversion->narrow64f32f(src, dst, n); }
inline void narrowParts(const float* src, int16_t* dst, int n, int scaleFactor) { tevsConvert_32f16s_Sfs(src, dst, n, RoundNearest, scaleFactor); }
inline void narrowParts(const float* src, int32_t* dst, int n, int scaleFactor) { tevsConvert_32f32s_Sfs(src, dst, n, RoundNearest, scaleFactor); }
inline void narrowParts(const double* src, int32_t* dst, int n, int scaleFactor) { tevsConvert_64f32s_Sfs(src, dst, n, RoundNearest, scaleFactor); }
// To 16 bits by way of 32: what saturates there saturates here all the more.
template <class S, class Narrow> void narrowTwice(const S* src, int16_t* dst, int n, Narrow narrow) {
    constexpr int kBlock = 512;
    for (int32_t whole[kBlock]; n > 0; n -= kBlock, src += kBlock, dst += kBlock) {
        const int count = n < kBlock ? n : kBlock;
        narrow(src, whole, count);
        conversion->narrow32s16s.exact(whole, dst, count);
    }
}
inline void narrowParts(const double* src, int16_t* dst, int n, int scaleFactor) {
    narrowTwice(src, dst, n, [=](auto from, auto to, int count) { narrowParts(from, to, count, scaleFactor); });
}
inline void narrowParts(const int32_t* src, int16_t* dst, int n, int scaleFactor) { tevsConvert_32s16s_Sfs(src, dst, n, scaleFactor); }
inline void narrowParts(const int64_t* src, int16_t* dst, int n, int scaleFactor) {
    narrowTwice(src, dst, n, [=](auto from, auto to, int count) { tevsConvert_64s32s_Sfs(from, to, count, scaleFactor); });
}

// n >= 1 samples. Between equal types they are only copied.
template <class S, class D> void toStored(const S* src, D* dst, int n) {
    if constexpr (std::is_same_v<S, D>)
        memcpy(dst, src, size_t(n) * sizeof(D));
    else
        widenParts(partsOf(src), partsOf(dst), n * kParts<S>);
}
template <class S, class D> void fromStored(const S* src, D* dst, int n, int scaleFactor) {
    if constexpr (std::is_same_v<S, D>)
        memcpy(dst, src, size_t(n) * sizeof(D));
    else
        narrowParts(partsOf(src), partsOf(dst), n * kParts<S>, scaleFactor);
}

// A single sample likewise, to the bit, without the way through kernels that are made for many.
template <class D, class F> D narrowPart(F y, int scaleFactor) {
    if constexpr (std::is_floating_point_v<D>) {
        return D(y);
    } else {
        constexpr int kFar = sizeof(F) == 4 ? 190 : 1110;   // where everything saturates, or becomes 0
        const int e = scaleFactor < -kFar ? kFar : scaleFactor > kFar ? -kFar : -scaleFactor;
        const F scaled = y * powerOfTwo<F>(e / 2) * powerOfTwo<F>(e - e / 2);
        // What is below the range of 32 bits, and NaN, converts to the least integer.
        if constexpr (sizeof(F) == 4)
            return saturate<D>(_mm_cvtss_si32(_mm_set_ss(scaled > 32767.0f ? 32767.0f : scaled)));
        else
            return saturate<D>(_mm_cvtsd_si32(_mm_set_sd(scaled > 2147483647.0 ? 2147483647.0 : scaled)));
    }
}
template <class D, class S> D toStored(S x) {
    return eachPart<D>(x, [](auto part) { return Scalar<D>(part); });
}
template <class D, class S> D fromStored(S y, int scaleFactor) {
    return eachPart<D>(y, [=](auto part) { return narrowPart<Scalar<D>>(part, scaleFactor); });
}

}   // namespace tevs
