// Interleaved pairs taken apart by shuffles within blocks of 128 bits, which wider registers have two execution ports for and whose results need no permutation
// where they are interleaved again: blocksInterleaved() of lanes.h undoes blocksSplit().
#pragma once

#include "core/simd/vec.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// The even and the odd lanes of x and y laid end to end, in an order that inOrder() makes good.
template <class V> TEVS_INLINE Two<V> blocksSplit(V x, V y) {
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (sizeof(V) == 32 && kCount<V> == 8)
        return {(V)_mm256_shuffle_ps((__m256)x, (__m256)y, 0x88), (V)_mm256_shuffle_ps((__m256)x, (__m256)y, 0xdd)};
    if constexpr (sizeof(V) == 32 && kCount<V> == 4) return {(V)_mm256_unpacklo_pd((__m256d)x, (__m256d)y), (V)_mm256_unpackhi_pd((__m256d)x, (__m256d)y)};
#endif
    return {evens(x, y), odds(x, y)};
}
template <class V> TEVS_INLINE V inOrder(V v) {
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (sizeof(V) == 32) return (V)_mm256_permute4x64_pd((__m256d)v, 0xd8);
#endif
    return v;
}

}   // namespace
}   // namespace tevs::TEVS_LEVEL_NS
