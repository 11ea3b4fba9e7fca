// The rounding and saturation of core/scale.h over vectors: the same results to the bit.
#pragma once

#include "core/simd/vec.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// Shifts by one run-time count for all lanes. The intrinsics take the count from a register's low half in one instruction; v >> s makes the compiler
// build a vector of counts on levels without per-lane shifts.
TEVS_INLINE Vec<int32_t, 4> shiftRight(Vec<int32_t, 4> v, int s) { return (Vec<int32_t, 4>)_mm_sra_epi32((__m128i)v, _mm_cvtsi32_si128(s)); }
TEVS_INLINE Vec<uint32_t, 4> shiftRight(Vec<uint32_t, 4> v, int s) { return (Vec<uint32_t, 4>)_mm_srl_epi32((__m128i)v, _mm_cvtsi32_si128(s)); }
TEVS_INLINE Vec<int32_t, 4> shiftLeft(Vec<int32_t, 4> v, int s) { return (Vec<int32_t, 4>)_mm_sll_epi32((__m128i)v, _mm_cvtsi32_si128(s)); }
#if TEVS_LEVEL >= 2
TEVS_INLINE Vec<int32_t, 8> shiftRight(Vec<int32_t, 8> v, int s) { return (Vec<int32_t, 8>)_mm256_sra_epi32((__m256i)v, _mm_cvtsi32_si128(s)); }
TEVS_INLINE Vec<uint32_t, 8> shiftRight(Vec<uint32_t, 8> v, int s) { return (Vec<uint32_t, 8>)_mm256_srl_epi32((__m256i)v, _mm_cvtsi32_si128(s)); }
TEVS_INLINE Vec<int32_t, 8> shiftLeft(Vec<int32_t, 8> v, int s) { return (Vec<int32_t, 8>)_mm256_sll_epi32((__m256i)v, _mm_cvtsi32_si128(s)); }
#endif

// r * 2^-s for 1 <= s <= 31, to nearest, ties to even; a bit to spare over r, as in the scalar twin.
template <class V> TEVS_INLINE V roundShift(V r, int s) {
    const V half = V{} + ((1 << (s - 1)) - 1);
    return shiftRight(r + half + (shiftRight(r, s) & (V{} + 1)), s);
}

// 32-bit lanes to 16 bits, saturated, in order.
TEVS_INLINE Vec<int16_t, 8> pack16(Vec<int32_t, 4> a, Vec<int32_t, 4> b) { return (Vec<int16_t, 8>)_mm_packs_epi32((__m128i)a, (__m128i)b); }
#if TEVS_LEVEL >= 2
TEVS_INLINE Vec<int16_t, 16> pack16(Vec<int32_t, 8> a, Vec<int32_t, 8> b) {
    // The instruction packs each 128-bit half by itself; the permutation puts the quarters in order.
    return (Vec<int16_t, 16>)_mm256_permute4x64_epi64(_mm256_packs_epi32((__m256i)a, (__m256i)b), 0xd8);
}
#endif

// 16-bit lanes to 32 bits, in order.
TEVS_INLINE Two<Vec<int32_t, 4>> widen16(Vec<int16_t, 8> v) {
    const auto sign = v >> 15;
    return {(Vec<int32_t, 4>)interleaveLow(v, sign), (Vec<int32_t, 4>)interleaveHigh(v, sign)};
}
#if TEVS_LEVEL >= 2
TEVS_INLINE Two<Vec<int32_t, 8>> widen16(Vec<int16_t, 16> v) {
    return {(Vec<int32_t, 8>)_mm256_cvtepi16_epi32((__m128i)low(v)), (Vec<int32_t, 8>)_mm256_cvtepi16_epi32((__m128i)high(v))};
}
#endif

// The three ways to store an exact 32-bit result as 16 bits: as it is, times 2^-s for 1 <= s <= 31 (|r| <= 2^30), times 2^s for 0 <= s <= 16.
// On the left, what leaves 16 bits before the shift would leave it after: cut off first, the shifted value fits 32 bits.
template <class V> TEVS_INLINE auto exact16(Two<V> r) { return pack16(r.a, r.b); }
template <class V> TEVS_INLINE auto right16(Two<V> r, int s) { return pack16(roundShift(r.a, s), roundShift(r.b, s)); }
template <class V> TEVS_INLINE auto left16(Two<V> r, int s) {
    const Two<V> wide = widen16(pack16(r.a, r.b));
    return pack16(shiftLeft(wide.a, s), shiftLeft(wide.b, s));
}

}   // namespace
}   // namespace tevs::TEVS_LEVEL_NS
