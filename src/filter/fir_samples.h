// Samples on their way into the type that a record keeps, and results on their way out.
#pragma once

#include <string.h>

#include "core/complex.h"
#include "core/scale.h"
#include "tevs/conversion.h"
#include "vector/conversion.table.h"

namespace tevs {

// n parts, exactly.
inline void widenParts(const int16_t* src, float* dst, int n) { conversion->float16s.plain(src, dst, n); }
inline void widenParts(const int16_t* src, double* dst, int n) { conversion->double16s.plain(src, dst, n); }
inline void widenParts(const int32_t* src, double* dst, int n) { conversion->double32s.plain(src, dst, n); }
inline void widenParts(const float* src, double* dst, int n) { conversion->widen32f64f(src, dst, n); }

// n parts times 2^-scaleFactor, to nearest, saturated; floats have no scale.
inline void narrowParts(const double* src, float* dst, int n, int) { conversion->narrow64f32f(src, dst, n); }
inline void narrowParts(const float* src, int16_t* dst, int n, int scaleFactor) { tevsConvert_32f16s_Sfs(src, dst, n, RoundNearest, scaleFactor); }
inline void narrowParts(const double* src, int32_t* dst, int n, int scaleFactor) { tevsConvert_64f32s_Sfs(src, dst, n, RoundNearest, scaleFactor); }
inline void narrowParts(const double* src, int16_t* dst, int n, int scaleFactor) {
    constexpr int kBlock = 512;
    for (int32_t whole[kBlock]; n > 0; n -= kBlock, src += kBlock, dst += kBlock) {
        const int count = n < kBlock ? n : kBlock;
        narrowParts(src, whole, count, scaleFactor);
        conversion->narrow32s16s.exact(whole, dst, count);
    }
}
inline void narrowParts(const int32_t* src, int16_t* dst, int n, int scaleFactor) { tevsConvert_32s16s_Sfs(src, dst, n, scaleFactor); }
inline void narrowParts(const int64_t* src, int16_t* dst, int n, int scaleFactor) {
    constexpr int kBlock = 512;
    for (int32_t whole[kBlock]; n > 0; n -= kBlock, src += kBlock, dst += kBlock) {
        const int count = n < kBlock ? n : kBlock;
        tevsConvert_64s32s_Sfs(src, whole, count, scaleFactor);
        conversion->narrow32s16s.exact(whole, dst, count);
    }
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

}   // namespace tevs
