// The vector layer: Vec<T, N> is N lanes of T on the compiler's own vector types, so + - * & | ^ ~ < == and the like are written
// as operators. Here are loads and stores, lane permutations, and the few instructions that no operator says.
//
// Only kernel sources include this file. Everything is in an unnamed namespace inside the level's own: no symbol leaves the object, so the
// linker can never choose code of a higher level for a caller on an older machine.
#pragma once

#include <stddef.h>
#include <stdint.h>
#include <string.h>
#if TEVS_LEVEL >= 2
#include <immintrin.h>
#elif TEVS_LEVEL == 1
#include <smmintrin.h>
#else
#include <pmmintrin.h>
#endif

#include "core/simd/level.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

#define TEVS_INLINE inline __attribute__((always_inline))
#define TEVS_HERE __attribute__((always_inline))   // on lambdas

constexpr int kRegisterBytes = TEVS_REGISTER_BYTES;

// 32-bit code has eight vector registers; 64-bit code has 16, at level 3 32.
#ifdef __i386__
constexpr bool kFewRegisters = true;
#else
constexpr bool kFewRegisters = false;
#endif

template <class T, int N> struct VecOf { typedef T type __attribute__((vector_size(N * sizeof(T)))); };
template <class T, int N> using Vec = typename VecOf<T, N>::type;

// Lanes of T in one register of the level.
template <class T> constexpr int kLanes = kRegisterBytes / int(sizeof(T));
// And in 16 bytes, the narrowest vector that kernels step down to.
template <class T> constexpr int kLeast = 16 / int(sizeof(T));

template <class V> constexpr int kCount = int(sizeof(V) / sizeof(V{}[0]));

template <class T> struct Unqualified { typedef T type; };
template <class T> struct Unqualified<T&> { typedef T type; };
template <class T> struct Unqualified<T&&> { typedef T type; };
template <class V> using Element = typename Unqualified<decltype(V{}[0])>::type;

// ---- loads, stores, constants: any address will do ------------------------------------------------------------------------

template <class V> TEVS_INLINE V loadAs(const void* p) {
    V v;
    memcpy(&v, p, sizeof v);
    return v;
}
template <class T, int N> TEVS_INLINE Vec<T, N> load(const T* p) { return loadAs<Vec<T, N>>(p); }
template <class V> TEVS_INLINE void store(void* p, V v) { memcpy(p, &v, sizeof v); }

template <class T, int N> TEVS_INLINE Vec<T, N> splat(T x) { return Vec<T, N>{} + x; }
template <int N> TEVS_INLINE Vec<float, N> splat(float x) { return x - Vec<float, N>{}; }   // -0.0f stays -0.0f
template <int N> TEVS_INLINE Vec<double, N> splat(double x) { return x - Vec<double, N>{}; }

// ---- lane permutations ------------------------------------------------------------------------------------------------------

template <int... I> struct Lane {};
template <int N, int... I> struct MakeLane : MakeLane<N - 1, N - 1, I...> {};
template <int... I> struct MakeLane<0, I...> { using type = Lane<I...>; };
template <int N> using Iota = typename MakeLane<N>::type;

// x in every lane. Not V{} + x: that makes +0 of -0, and adds where the register could be loaded with what is repeated.
template <class V, int... I> TEVS_INLINE V sameOf(Element<V> x, Lane<I...>) { return V{((void)I, x)...}; }
template <class V> TEVS_INLINE V same(Element<V> x) { return sameOf<V>(x, Iota<kCount<V>>{}); }

template <class V, int... I> TEVS_INLINE auto evensOf(V a, V b, Lane<I...>) { return __builtin_shufflevector(a, b, (2 * I)...); }
template <class V, int... I> TEVS_INLINE auto oddsOf(V a, V b, Lane<I...>) { return __builtin_shufflevector(a, b, (2 * I + 1)...); }
template <class V, int... I> TEVS_INLINE auto lowOf(V a, Lane<I...>) { return __builtin_shufflevector(a, a, I...); }
template <class V, int... I> TEVS_INLINE auto highOf(V a, Lane<I...>) { return __builtin_shufflevector(a, a, (int(sizeof...(I)) + I)...); }
template <class V, int... I> TEVS_INLINE auto joinOf(V a, V b, Lane<I...>) { return __builtin_shufflevector(a, b, I...); }
template <class V, int... I> TEVS_INLINE V reverseOf(V a, Lane<I...>) { return __builtin_shufflevector(a, a, (int(sizeof...(I)) - 1 - I)...); }
template <class V, int... I> TEVS_INLINE V swapPairsOf(V a, Lane<I...>) { return __builtin_shufflevector(a, a, (I ^ 1)...); }
template <int From, class V, int... I> TEVS_INLINE V interleaveOf(V a, V b, Lane<I...>) {
    constexpr int n = int(sizeof...(I));
    return __builtin_shufflevector(a, b, (From + I / 2 + (I % 2) * n)...);
}

// Of two vectors laid end to end: every second lane, from lane 0 or from lane 1.
template <class V> TEVS_INLINE V evens(V a, V b) { return evensOf(a, b, Iota<kCount<V>>{}); }
template <class V> TEVS_INLINE V odds(V a, V b) { return oddsOf(a, b, Iota<kCount<V>>{}); }
// a0 b0 a1 b1 ...: the lower and the upper half of that double-length vector.
template <class V> TEVS_INLINE V interleaveLow(V a, V b) { return interleaveOf<0>(a, b, Iota<kCount<V>>{}); }
template <class V> TEVS_INLINE V interleaveHigh(V a, V b) { return interleaveOf<kCount<V> / 2>(a, b, Iota<kCount<V>>{}); }
template <class V> TEVS_INLINE V reverse(V a) {
#if TEVS_LEVEL == 0
    // Without a byte shuffle the compiler would take lanes this narrow apart one by one.
    if constexpr (sizeof(V) == 16 && kCount<V> >= 8) {
        const __m128i halves = _mm_shuffle_epi32((__m128i)a, 0x4e);
        const auto words = (Vec<uint16_t, 8>)_mm_shufflehi_epi16(_mm_shufflelo_epi16(halves, 0x1b), 0x1b);
        return kCount<V> == 8 ? (V)words : (V)(words << 8 | words >> 8);
    }
#endif
    return reverseOf(a, Iota<kCount<V>>{});
}
template <class V, int... I> TEVS_INLINE V alternateOf(V a, V b, Lane<I...>) { return __builtin_shufflevector(a, b, (I + (I % 2) * int(sizeof...(I)))...); }
// The even lanes of a, the odd lanes of b.
template <class V> TEVS_INLINE V alternate(V a, V b) { return alternateOf(a, b, Iota<kCount<V>>{}); }
// Of floats and doubles from AVX on the compiler takes its newer permutation, for which many processors have one port where they have two for these.
template <class V> constexpr bool kByOlderShuffles = TEVS_LEVEL >= 2 && sizeof(V) == 16 && Element<V>(0.5) != 0;
template <class V> TEVS_INLINE V swapPairs(V a) {
    if constexpr (kByOlderShuffles<V> && kCount<V> == 4)
        return (V)_mm_shuffle_ps((__m128)a, (__m128)a, 0xb1);
    else if constexpr (kByOlderShuffles<V>)
        return (V)_mm_shuffle_pd((__m128d)a, (__m128d)a, 1);
    else
        return swapPairsOf(a, Iota<kCount<V>>{});
}
template <class V> TEVS_INLINE auto low(V a) { return lowOf(a, Iota<kCount<V> / 2>{}); }
template <class V> TEVS_INLINE auto high(V a) { return highOf(a, Iota<kCount<V> / 2>{}); }
template <class V> TEVS_INLINE auto join(V a, V b) {
    using W = decltype(joinOf(a, b, Iota<2 * kCount<V>>{}));
#if TEVS_REGISTER_BYTES >= 32
    // One instruction, where the compiler's own shuffle first copies a to itself.
    if constexpr (sizeof(V) == 16) return (W)_mm256_insertf128_ps(_mm256_castps128_ps256((__m128)a), (__m128)b, 1);
#endif
    return W(joinOf(a, b, Iota<2 * kCount<V>>{}));
}

// The even, the odd lanes, each in its own place and its neighbour's.
template <class V, int... I> TEVS_INLINE V evensTwiceOf(V a, Lane<I...>) { return __builtin_shufflevector(a, a, (I & ~1)...); }
template <class V, int... I> TEVS_INLINE V oddsTwiceOf(V a, Lane<I...>) { return __builtin_shufflevector(a, a, (I | 1)...); }
template <class V> TEVS_INLINE V evensTwice(V a) {
    if constexpr (kByOlderShuffles<V> && kCount<V> == 4)
        return (V)_mm_moveldup_ps((__m128)a);
    else
        return evensTwiceOf(a, Iota<kCount<V>>{});
}
template <class V> TEVS_INLINE V oddsTwice(V a) {
    if constexpr (kByOlderShuffles<V> && kCount<V> == 4)
        return (V)_mm_movehdup_ps((__m128)a);
    else if constexpr (kByOlderShuffles<V>)
        return (V)_mm_unpackhi_pd((__m128d)a, (__m128d)a);
    else
        return oddsTwiceOf(a, Iota<kCount<V>>{});
}

// Two vectors that belong together: consecutive in memory where they are stored, or the two parts of a complex vector.
template <class V> struct Two { V a, b; };
template <class V> Two(V, V) -> Two<V>;
template <class V> TEVS_INLINE void store(void* p, Two<V> v) {
    store(p, v.a);
    store(static_cast<char*>(p) + sizeof(V), v.b);
}

// v, kept in a register: for a load that several operations share, which the compiler would otherwise repeat as each one's memory operand.
template <class V> TEVS_INLINE V inRegister(V v) {
    if constexpr (sizeof v >= 16) asm("" : "+x"(v));
    return v;
}

template <class T, int N> TEVS_INLINE Two<Vec<T, N>> loadTwo(const T* p) { return {load<T, N>(p), load<T, N>(p + N)}; }

// N interleaved pairs at p, as N first members and N second members; and back.
template <class T, int N> TEVS_INLINE Two<Vec<T, N>> loadSplit(const T* p) {
    const auto x = load<T, N>(p), y = load<T, N>(p + N);
    return {evens(x, y), odds(x, y)};
}
template <class V> TEVS_INLINE Two<V> interleave(V a, V b) { return {interleaveLow(a, b), interleaveHigh(a, b)}; }

// As many 32-bit elements at p as half fill V, each in two lanes.
template <class V> TEVS_INLINE V loadTwice(const void* p) {
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (sizeof(V) == 32) {
        const auto v = loadAs<Vec<int32_t, 4>>(p);
        return (V)join(interleaveLow(v, v), interleaveHigh(v, v));
    }
#endif
    if constexpr (sizeof(V) == 16) {
        const auto v = (Vec<int32_t, 4>)_mm_loadl_epi64(static_cast<const __m128i*>(p));
        return (V)interleaveLow(v, v);
    }
}

// ---- arithmetic that no operator says -----------------------------------------------------------------------------------------

// a * b + c, rounded once where the source is compiled with fused multiply-add, after each step elsewhere.
// Only for families whose results may differ in rounding between levels, and where the product is exact.
template <class V> TEVS_INLINE V fma(V a, V b, V c) {
#ifdef __FMA__
    if constexpr (sizeof(V{}[0]) == 4) {
        if constexpr (sizeof(V) == 4) return V{__builtin_fmaf(a[0], b[0], c[0])};
        if constexpr (sizeof(V) == 16) return (V)_mm_fmadd_ps((__m128)a, (__m128)b, (__m128)c);
        if constexpr (sizeof(V) == 32) return (V)_mm256_fmadd_ps((__m256)a, (__m256)b, (__m256)c);
#ifdef __AVX512F__
        if constexpr (sizeof(V) == 64) return (V)_mm512_fmadd_ps((__m512)a, (__m512)b, (__m512)c);
#endif
    } else {
        if constexpr (sizeof(V) == 8) return V{__builtin_fma(a[0], b[0], c[0])};
        if constexpr (sizeof(V) == 16) return (V)_mm_fmadd_pd((__m128d)a, (__m128d)b, (__m128d)c);
        if constexpr (sizeof(V) == 32) return (V)_mm256_fmadd_pd((__m256d)a, (__m256d)b, (__m256d)c);
#ifdef __AVX512F__
        if constexpr (sizeof(V) == 64) return (V)_mm512_fmadd_pd((__m512d)a, (__m512d)b, (__m512d)c);
#endif
    }
#else
    return a * b + c;
#endif
}
template <class V> TEVS_INLINE V fms(V a, V b, V c) { return fma(a, b, -c); }   // a * b - c
template <class V> TEVS_INLINE V fnma(V a, V b, V c) {                          // c - a * b
#ifdef __FMA__
    return fma(-a, b, c);
#else
    return c - a * b;
#endif
}

// a - b in the even lanes and a + b in the odd ones, and the other way round.
TEVS_INLINE Vec<float, 4> subAdd(Vec<float, 4> a, Vec<float, 4> b) { return (Vec<float, 4>)_mm_addsub_ps((__m128)a, (__m128)b); }
TEVS_INLINE Vec<double, 2> subAdd(Vec<double, 2> a, Vec<double, 2> b) { return (Vec<double, 2>)_mm_addsub_pd((__m128d)a, (__m128d)b); }
#if TEVS_REGISTER_BYTES >= 32
TEVS_INLINE Vec<float, 8> subAdd(Vec<float, 8> a, Vec<float, 8> b) { return (Vec<float, 8>)_mm256_addsub_ps((__m256)a, (__m256)b); }
TEVS_INLINE Vec<double, 4> subAdd(Vec<double, 4> a, Vec<double, 4> b) { return (Vec<double, 4>)_mm256_addsub_pd((__m256d)a, (__m256d)b); }
#endif
template <class V> TEVS_INLINE V addSub(V a, V b) { return subAdd(a, -b); }

// The smaller and the larger of two integers. Below SSE4.1 there is no instruction for 32 bits.
#if TEVS_LEVEL >= 1
TEVS_INLINE Vec<int32_t, 4> minimum(Vec<int32_t, 4> a, Vec<int32_t, 4> b) { return (Vec<int32_t, 4>)_mm_min_epi32((__m128i)a, (__m128i)b); }
TEVS_INLINE Vec<int32_t, 4> maximum(Vec<int32_t, 4> a, Vec<int32_t, 4> b) { return (Vec<int32_t, 4>)_mm_max_epi32((__m128i)a, (__m128i)b); }
TEVS_INLINE Vec<uint32_t, 4> minimum(Vec<uint32_t, 4> a, Vec<uint32_t, 4> b) { return (Vec<uint32_t, 4>)_mm_min_epu32((__m128i)a, (__m128i)b); }
#else
template <class V> TEVS_INLINE V minimum(V a, V b) { return a < b ? a : b; }
template <class V> TEVS_INLINE V maximum(V a, V b) { return a < b ? b : a; }
#endif
#if TEVS_REGISTER_BYTES >= 32
TEVS_INLINE Vec<int32_t, 8> minimum(Vec<int32_t, 8> a, Vec<int32_t, 8> b) { return (Vec<int32_t, 8>)_mm256_min_epi32((__m256i)a, (__m256i)b); }
TEVS_INLINE Vec<int32_t, 8> maximum(Vec<int32_t, 8> a, Vec<int32_t, 8> b) { return (Vec<int32_t, 8>)_mm256_max_epi32((__m256i)a, (__m256i)b); }
TEVS_INLINE Vec<uint32_t, 8> minimum(Vec<uint32_t, 8> a, Vec<uint32_t, 8> b) { return (Vec<uint32_t, 8>)_mm256_min_epu32((__m256i)a, (__m256i)b); }
#endif

// min(limit, v) and max(limit, v), and v itself where v is NaN.
template <class V> TEVS_INLINE V atMost(V limit, V v) {
    constexpr bool wide = sizeof(v[0]) == 8;
#if TEVS_LEVEL >= 3
    if constexpr (sizeof(V) == 64 && wide) return (V)_mm512_maskz_min_pd(0xff, (__m512d)limit, (__m512d)v);
    if constexpr (sizeof(V) == 64 && !wide) return (V)_mm512_maskz_min_ps(0xffff, (__m512)limit, (__m512)v);
#endif
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (sizeof(V) == 32 && wide) return (V)_mm256_min_pd((__m256d)limit, (__m256d)v);
    if constexpr (sizeof(V) == 32 && !wide) return (V)_mm256_min_ps((__m256)limit, (__m256)v);
#endif
    if constexpr (sizeof(V) == 16 && wide) return (V)_mm_min_pd((__m128d)limit, (__m128d)v);
    if constexpr (sizeof(V) == 16 && !wide) return (V)_mm_min_ps((__m128)limit, (__m128)v);
}
template <class V> TEVS_INLINE V atLeast(V limit, V v) {
    constexpr bool wide = sizeof(v[0]) == 8;
#if TEVS_LEVEL >= 3
    if constexpr (sizeof(V) == 64 && wide) return (V)_mm512_maskz_max_pd(0xff, (__m512d)limit, (__m512d)v);
    if constexpr (sizeof(V) == 64 && !wide) return (V)_mm512_maskz_max_ps(0xffff, (__m512)limit, (__m512)v);
#endif
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (sizeof(V) == 32 && wide) return (V)_mm256_max_pd((__m256d)limit, (__m256d)v);
    if constexpr (sizeof(V) == 32 && !wide) return (V)_mm256_max_ps((__m256)limit, (__m256)v);
#endif
    if constexpr (sizeof(V) == 16 && wide) return (V)_mm_max_pd((__m128d)limit, (__m128d)v);
    if constexpr (sizeof(V) == 16 && !wide) return (V)_mm_max_ps((__m128)limit, (__m128)v);
}

TEVS_INLINE Vec<float, 4> squareRoot(Vec<float, 4> v) { return (Vec<float, 4>)_mm_sqrt_ps((__m128)v); }
TEVS_INLINE Vec<double, 2> squareRoot(Vec<double, 2> v) { return (Vec<double, 2>)_mm_sqrt_pd((__m128d)v); }
#if TEVS_REGISTER_BYTES >= 32
TEVS_INLINE Vec<float, 8> squareRoot(Vec<float, 8> v) { return (Vec<float, 8>)_mm256_sqrt_ps((__m256)v); }
TEVS_INLINE Vec<double, 4> squareRoot(Vec<double, 4> v) { return (Vec<double, 4>)_mm256_sqrt_pd((__m256d)v); }
#endif
#if TEVS_LEVEL >= 3
TEVS_INLINE Vec<float, 16> squareRoot(Vec<float, 16> v) { return (Vec<float, 16>)_mm512_maskz_sqrt_ps(0xffff, (__m512)v); }
TEVS_INLINE Vec<double, 8> squareRoot(Vec<double, 8> v) { return (Vec<double, 8>)_mm512_maskz_sqrt_pd(0xff, (__m512d)v); }
#endif

// a if the lane of sign has its sign bit set, b if not.
template <class V> TEVS_INLINE V bySign(V sign, V a, V b) {
    constexpr bool wide = sizeof(sign[0]) == 8;
#if TEVS_LEVEL >= 3
    if constexpr (sizeof(V) == 64 && wide) return (V)_mm512_mask_blend_pd(_mm512_movepi64_mask((__m512i)sign), (__m512d)b, (__m512d)a);
    if constexpr (sizeof(V) == 64 && !wide) return (V)_mm512_mask_blend_ps(_mm512_movepi32_mask((__m512i)sign), (__m512)b, (__m512)a);
#endif
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (sizeof(V) == 32 && wide) return (V)_mm256_blendv_pd((__m256d)b, (__m256d)a, (__m256d)sign);
    if constexpr (sizeof(V) == 32 && !wide) return (V)_mm256_blendv_ps((__m256)b, (__m256)a, (__m256)sign);
#endif
#if TEVS_LEVEL >= 1
    if constexpr (sizeof(V) == 16 && wide) return (V)_mm_blendv_pd((__m128d)b, (__m128d)a, (__m128d)sign);
    if constexpr (sizeof(V) == 16 && !wide) return (V)_mm_blendv_ps((__m128)b, (__m128)a, (__m128)sign);
#else
    __m128i mask = _mm_srai_epi32((__m128i)sign, 31);
    if constexpr (wide) mask = _mm_shuffle_epi32(mask, 0xf5);
    return (V)_mm_or_si128(_mm_and_si128(mask, (__m128i)a), _mm_andnot_si128(mask, (__m128i)b));
#endif
}

// a < b, a <= b, and a where mask holds, b elsewhere, by lane. As operators, but that in 32-bit code the compiler turns comparisons of double, and
// choices by them, into ones of single lanes through memory.
template <class V> TEVS_INLINE auto isLess(V a, V b) { return a < b; }
template <class V> TEVS_INLINE auto isAtMost(V a, V b) { return a <= b; }
template <class M, class V> TEVS_INLINE V select(M mask, V a, V b) {
#ifdef __i386__
    if constexpr (sizeof(V{}[0]) == 8) return (V)(((M)a & mask) | ((M)b & ~mask));
#endif
    return mask ? a : b;
}
#ifdef __i386__
TEVS_INLINE Vec<int64_t, 2> isLess(Vec<double, 2> a, Vec<double, 2> b) { return (Vec<int64_t, 2>)_mm_cmplt_pd((__m128d)a, (__m128d)b); }
TEVS_INLINE Vec<int64_t, 2> isAtMost(Vec<double, 2> a, Vec<double, 2> b) { return (Vec<int64_t, 2>)_mm_cmple_pd((__m128d)a, (__m128d)b); }
#endif

// Whether any lane of a comparison holds.
template <class M> TEVS_INLINE bool any(M mask) {
#if TEVS_LEVEL >= 3
    if constexpr (sizeof(M) == 64) return sizeof(M{}[0]) == 8 ? _mm512_movepi64_mask((__m512i)mask) != 0 : _mm512_movepi32_mask((__m512i)mask) != 0;
#endif
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (sizeof(M) == 32) return _mm256_movemask_epi8((__m256i)mask) != 0;
#endif
    if constexpr (sizeof(M) == 16) return _mm_movemask_epi8((__m128i)mask) != 0;
}

template <class M> TEVS_INLINE bool any(Two<M> mask) { return any(mask.a | mask.b); }
// Whether all lanes do.
template <class M> TEVS_INLINE bool all(M mask) {
#if TEVS_LEVEL >= 3
    if constexpr (sizeof(M) == 64) return sizeof(M{}[0]) == 8 ? _mm512_movepi64_mask((__m512i)mask) == 0xff : _mm512_movepi32_mask((__m512i)mask) == 0xffff;
#endif
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (sizeof(M) == 32) return _mm256_movemask_epi8((__m256i)mask) == -1;
#endif
    if constexpr (sizeof(M) == 16) return _mm_movemask_epi8((__m128i)mask) == 0xffff;
}

// v[2i] * w[2i] + v[2i+1] * w[2i+1] in 32 bits. Only four factors of -32768 leave that range: 2^31 comes out as INT32_MIN.
TEVS_INLINE Vec<int32_t, 4> multiplyPairs(Vec<int16_t, 8> v, Vec<int16_t, 8> w) { return (Vec<int32_t, 4>)_mm_madd_epi16((__m128i)v, (__m128i)w); }
#if TEVS_REGISTER_BYTES >= 32
TEVS_INLINE Vec<int32_t, 8> multiplyPairs(Vec<int16_t, 16> v, Vec<int16_t, 16> w) { return (Vec<int32_t, 8>)_mm256_madd_epi16((__m256i)v, (__m256i)w); }
#endif

// a0*b0, a2*b2, ...: every second product, exact.
TEVS_INLINE Vec<int64_t, 2> mulEven(Vec<int32_t, 4> a, Vec<int32_t, 4> b) {
#if TEVS_LEVEL >= 1
    return (Vec<int64_t, 2>)_mm_mul_epi32((__m128i)a, (__m128i)b);
#else
    // Of the unsigned product, less the other factor * 2^32 for each negative one.
    const auto over = (Vec<uint64_t, 2>)((Vec<uint32_t, 4>)(a >> 31 & b) + (Vec<uint32_t, 4>)(b >> 31 & a)) << 32;
    return (Vec<int64_t, 2>)((Vec<uint64_t, 2>)_mm_mul_epu32((__m128i)a, (__m128i)b) - over);
#endif
}
#if TEVS_REGISTER_BYTES >= 32
TEVS_INLINE Vec<int64_t, 4> mulEven(Vec<int32_t, 8> a, Vec<int32_t, 8> b) { return (Vec<int64_t, 4>)_mm256_mul_epi32((__m256i)a, (__m256i)b); }
#endif

// A bit for every byte of v: its highest.
TEVS_INLINE uint32_t byteSigns(Vec<uint8_t, 16> v) { return uint32_t(_mm_movemask_epi8((__m128i)v)); }
#if TEVS_REGISTER_BYTES >= 32
TEVS_INLINE uint32_t byteSigns(Vec<uint8_t, 32> v) { return uint32_t(_mm256_movemask_epi8((__m256i)v)); }
#endif

// ---- conversions ------------------------------------------------------------------------------------------------------------------

// Float to the nearest integer (ties to even, in the rounding mode that exports keep) or toward zero; out of range and NaN: INT32_MIN.
TEVS_INLINE Vec<int32_t, 4> nearestInt(Vec<float, 4> v) { return (Vec<int32_t, 4>)_mm_cvtps_epi32((__m128)v); }
TEVS_INLINE Vec<int32_t, 4> truncatedInt(Vec<float, 4> v) { return (Vec<int32_t, 4>)_mm_cvttps_epi32((__m128)v); }
#if TEVS_REGISTER_BYTES >= 32
TEVS_INLINE Vec<int32_t, 8> nearestInt(Vec<float, 8> v) { return (Vec<int32_t, 8>)_mm256_cvtps_epi32((__m256)v); }
TEVS_INLINE Vec<int32_t, 8> truncatedInt(Vec<float, 8> v) { return (Vec<int32_t, 8>)_mm256_cvttps_epi32((__m256)v); }
#endif

// Double to integer likewise: the lanes of two registers in one.
TEVS_INLINE Vec<int32_t, 4> nearestInt(Two<Vec<double, 2>> v) {
    return (Vec<int32_t, 4>)_mm_unpacklo_epi64(_mm_cvtpd_epi32((__m128d)v.a), _mm_cvtpd_epi32((__m128d)v.b));
}
TEVS_INLINE Vec<int32_t, 4> truncatedInt(Two<Vec<double, 2>> v) {
    return (Vec<int32_t, 4>)_mm_unpacklo_epi64(_mm_cvttpd_epi32((__m128d)v.a), _mm_cvttpd_epi32((__m128d)v.b));
}
#if TEVS_REGISTER_BYTES >= 32
TEVS_INLINE Vec<int32_t, 8> nearestInt(Two<Vec<double, 4>> v) {
    return join((Vec<int32_t, 4>)_mm256_cvtpd_epi32((__m256d)v.a), (Vec<int32_t, 4>)_mm256_cvtpd_epi32((__m256d)v.b));
}
TEVS_INLINE Vec<int32_t, 8> truncatedInt(Two<Vec<double, 4>> v) {
    return join((Vec<int32_t, 4>)_mm256_cvttpd_epi32((__m256d)v.a), (Vec<int32_t, 4>)_mm256_cvttpd_epi32((__m256d)v.b));
}
#endif

#if TEVS_LEVEL >= 3
TEVS_INLINE Vec<int32_t, 16> nearestInt(Vec<float, 16> v) { return (Vec<int32_t, 16>)_mm512_maskz_cvtps_epi32(0xffff, (__m512)v); }
TEVS_INLINE Vec<int32_t, 16> nearestInt(Two<Vec<double, 8>> v) {
    return join((Vec<int32_t, 8>)_mm512_maskz_cvtpd_epi32(0xff, (__m512d)v.a), (Vec<int32_t, 8>)_mm512_maskz_cvtpd_epi32(0xff, (__m512d)v.b));
}
#endif

// N lanes from memory in a type of twice the width, and N lanes in half the width: exact, and rounded to nearest.
template <int N> TEVS_INLINE Vec<int32_t, N> loadWide(const int16_t* p) {
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (N == 8) return (Vec<int32_t, 8>)_mm256_cvtepi16_epi32((__m128i)loadAs<Vec<int16_t, 8>>(p));
#endif
#if TEVS_LEVEL >= 1
    if constexpr (N == 4) return (Vec<int32_t, 4>)_mm_cvtepi16_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)));
#else
    if constexpr (N == 4) {
        const __m128i v = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p));
        return (Vec<int32_t, 4>)_mm_srai_epi32(_mm_unpacklo_epi16(v, v), 16);
    }
#endif
}
template <int N> TEVS_INLINE Vec<double, N> loadWide(const float* p) {
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (N == 4) return (Vec<double, 4>)_mm256_cvtps_pd((__m128)load<float, 4>(p));
#endif
    if constexpr (N == 2) {
        // As the memory operand of the conversion, which takes half the steps of one from a register; the compiler takes only one of 16 bytes.
        struct Pair {
            float v[2];
        };
        Vec<double, 2> r;
#ifdef __AVX__
        asm("vcvtps2pd %1, %0" : "=x"(r) : "m"(*reinterpret_cast<const Pair*>(p)));
#else
        asm("cvtps2pd %1, %0" : "=x"(r) : "m"(*reinterpret_cast<const Pair*>(p)));
#endif
        return r;
    }
}
#if TEVS_REGISTER_BYTES >= 32
TEVS_INLINE Vec<double, 4> wide(Vec<float, 4> v) { return (Vec<double, 4>)_mm256_cvtps_pd((__m128)v); }
#endif
TEVS_INLINE Vec<float, 4> narrow(Two<Vec<double, 2>> v) { return (Vec<float, 4>)_mm_movelh_ps(_mm_cvtpd_ps((__m128d)v.a), _mm_cvtpd_ps((__m128d)v.b)); }
#if TEVS_REGISTER_BYTES >= 32
TEVS_INLINE Vec<float, 8> narrow(Two<Vec<double, 4>> v) {
    return join((Vec<float, 4>)_mm256_cvtpd_ps((__m256d)v.a), (Vec<float, 4>)_mm256_cvtpd_ps((__m256d)v.b));
}
#endif
#if TEVS_LEVEL >= 3
TEVS_INLINE Vec<float, 16> narrow(Two<Vec<double, 8>> v) {
    return join((Vec<float, 8>)_mm512_maskz_cvtpd_ps(0xff, (__m512d)v.a), (Vec<float, 8>)_mm512_maskz_cvtpd_ps(0xff, (__m512d)v.b));
}
#endif

// The same for what is stored at once: two stores are faster than joining the halves.
template <class V> TEVS_INLINE auto narrowed(Two<V> v) {
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (sizeof(V) == 32) return Two{(Vec<float, 4>)_mm256_cvtpd_ps((__m256d)v.a), (Vec<float, 4>)_mm256_cvtpd_ps((__m256d)v.b)};
#endif
    if constexpr (sizeof(V) == 16) return narrow(v);
}

// Lanes as doubles, exactly.
TEVS_INLINE Two<Vec<double, 2>> widen(Vec<float, 4> v) {
    return {(Vec<double, 2>)_mm_cvtps_pd((__m128)v), (Vec<double, 2>)_mm_cvtps_pd(_mm_movehl_ps((__m128)v, (__m128)v))};
}
TEVS_INLINE Two<Vec<double, 2>> widen(Vec<int32_t, 4> v) {
    return {(Vec<double, 2>)_mm_cvtepi32_pd((__m128i)v), (Vec<double, 2>)_mm_cvtepi32_pd(_mm_unpackhi_epi64((__m128i)v, (__m128i)v))};
}
#if TEVS_REGISTER_BYTES >= 32
TEVS_INLINE Two<Vec<double, 4>> widen(Vec<float, 8> v) {
    return {(Vec<double, 4>)_mm256_cvtps_pd((__m128)low(v)), (Vec<double, 4>)_mm256_cvtps_pd((__m128)high(v))};
}
TEVS_INLINE Two<Vec<double, 4>> widen(Vec<int32_t, 8> v) {
    return {(Vec<double, 4>)_mm256_cvtepi32_pd((__m128i)low(v)), (Vec<double, 4>)_mm256_cvtepi32_pd((__m128i)high(v))};
}
#endif
#if TEVS_LEVEL >= 3
TEVS_INLINE Two<Vec<double, 8>> widen(Vec<float, 16> v) {
    return {(Vec<double, 8>)_mm512_maskz_cvtps_pd(0xff, (__m256)low(v)), (Vec<double, 8>)_mm512_maskz_cvtps_pd(0xff, (__m256)high(v))};
}
TEVS_INLINE Two<Vec<double, 8>> widen(Vec<int32_t, 16> v) {
    return {(Vec<double, 8>)_mm512_maskz_cvtepi32_pd(0xff, (__m256i)low(v)), (Vec<double, 8>)_mm512_maskz_cvtepi32_pd(0xff, (__m256i)high(v))};
}
#endif

}   // namespace
}   // namespace tevs::TEVS_LEVEL_NS
