// Samples of any format as lanes of integers or floats, and back: what kernels of mixed types load and store.
#pragma once

#include "core/formats.h"
#include "core/simd/scale.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// B bytes of T, and K such registers of consecutive lanes.
template <class T, int B> using Register = Vec<T, B / int(sizeof(T))>;
template <class V, int K> struct Some { V v[K]; };
template <class V, int K> Some(const V (&)[K]) -> Some<V, K>;   // not every compiler finds it by itself

template <class V, int K> TEVS_INLINE void store(void* p, const Some<V, K>& s) {
    for (int k = 0; k < K; ++k) store(static_cast<char*>(p) + k * int(sizeof(V)), s.v[k]);
}
// f of each register, and of each two neighbours.
template <class V, int K, class F> TEVS_INLINE auto each(const Some<V, K>& s, F f) {
    Some<decltype(f(s.v[0])), K> r;
    for (int k = 0; k < K; ++k) r.v[k] = f(s.v[k]);
    return r;
}
template <class V, int K, class F> TEVS_INLINE auto eachPair(const Some<V, K>& s, F f) {
    Some<decltype(f(s.v[0], s.v[0])), K / 2> r;
    for (int k = 0; k < K / 2; ++k) r.v[k] = f(s.v[2 * k], s.v[2 * k + 1]);
    return r;
}

// In each block of 128 bits: the 32-bit lanes of a and b interleaved; and the matrix of 4 x 4 such lanes with rows and columns exchanged.
template <class V> TEVS_INLINE Two<V> blocksInterleaved(V a, V b) {
    using I = Vec<int32_t, int(sizeof(V) / 4)>;
    if constexpr (sizeof(V) == 16)
        return interleave(a, b);
    else
        return {(V)blockLow((I)a, (I)b), (V)blockHigh((I)a, (I)b)};
}
template <class V> TEVS_INLINE Some<V, 4> transposed(V a, V b, V c, V d) {
    const Two<V> even = blocksInterleaved(a, c), odd = blocksInterleaved(b, d);
    const Two<V> low = blocksInterleaved(even.a, odd.a), high = blocksInterleaved(even.b, odd.b);
    return {{low.a, low.b, high.a, high.b}};
}

// ---- integers from memory -----------------------------------------------------------------------------------------------------------

// Bytes bytes at p, at the low end of a register.
template <int Bytes> TEVS_INLINE __m128i loadLow(const void* p) {
    if constexpr (Bytes == 16) return _mm_loadu_si128(static_cast<const __m128i*>(p));
    if constexpr (Bytes == 8) return _mm_loadl_epi64(static_cast<const __m128i*>(p));
    if constexpr (Bytes == 4) {
        int x;
        memcpy(&x, p, sizeof x);
        return _mm_cvtsi32_si128(x);
    }
}

// The low samples of v, a register of S, as a register of the wider integer T.
template <class S, class T> TEVS_INLINE __m128i widenLow(__m128i v) {
    constexpr bool isSigned = S(-1) < S(0);
    if constexpr (sizeof(S) == sizeof(T)) {
        return v;
    } else if constexpr (sizeof(S) == 1 && sizeof(T) == 2) {
#if TEVS_LEVEL >= 1
        return isSigned ? _mm_cvtepi8_epi16(v) : _mm_cvtepu8_epi16(v);
#else
        return isSigned ? _mm_srai_epi16(_mm_unpacklo_epi8(v, v), 8) : _mm_unpacklo_epi8(v, _mm_setzero_si128());
#endif
    } else if constexpr (sizeof(S) == 2) {
#if TEVS_LEVEL >= 1
        return isSigned ? _mm_cvtepi16_epi32(v) : _mm_cvtepu16_epi32(v);
#else
        return isSigned ? _mm_srai_epi32(_mm_unpacklo_epi16(v, v), 16) : _mm_unpacklo_epi16(v, _mm_setzero_si128());
#endif
    } else {
#if TEVS_LEVEL >= 1
        return isSigned ? _mm_cvtepi8_epi32(v) : _mm_cvtepu8_epi32(v);
#else
        return isSigned ? widenLow<int16_t, T>(widenLow<S, int16_t>(v)) : widenLow<uint16_t, T>(widenLow<S, int16_t>(v));
#endif
    }
}

// One register of T from as many samples of S, the same or a narrower integer.
template <class T, int B, class S> TEVS_INLINE Register<T, B> loadInts(const S* p) {
    if constexpr (sizeof(S) == sizeof(T)) {
        return loadAs<Register<T, B>>(p);
    } else if constexpr (B == 64) {
        return __builtin_convertvector((load<S, B / int(sizeof(T))>(p)), Register<T, B>);
    } else {
        const __m128i v = loadLow<B / int(sizeof(T)) * int(sizeof(S))>(p);
        if constexpr (B == 16) return (Register<T, B>)widenLow<S, T>(v);
#if TEVS_REGISTER_BYTES >= 32
        constexpr bool isSigned = S(-1) < S(0);
        if constexpr (B == 32 && sizeof(T) == 2) return (Register<T, B>)(isSigned ? _mm256_cvtepi8_epi16(v) : _mm256_cvtepu8_epi16(v));
        if constexpr (B == 32 && sizeof(T) == 4 && sizeof(S) == 2) return (Register<T, B>)(isSigned ? _mm256_cvtepi16_epi32(v) : _mm256_cvtepu16_epi32(v));
        if constexpr (B == 32 && sizeof(T) == 4 && sizeof(S) == 1) return (Register<T, B>)(isSigned ? _mm256_cvtepi8_epi32(v) : _mm256_cvtepu8_epi32(v));
#endif
    }
}

template <> struct LimitsOf<Int24> {
    static constexpr bool isSigned = true;
    static constexpr int32_t max = 0x7fffff, min = -0x800000;
};
template <> struct LimitsOf<UInt24> {
    static constexpr bool isSigned = false;
    static constexpr int32_t max = 0xffffff, min = 0;
};

// Four packed integers at byte `from` (0 or 4) of each 128-bit half of v, as 32 bits.
#if TEVS_LEVEL >= 1
// Byte I of a lane order in which each integer lies in the upper three bytes of its lane (signed: a shift brings the sign), or in the lower three.
template <class S, int... I> TEVS_INLINE auto order24(int from, Lane<I...>) {
    constexpr int blank = LimitsOf<S>::isSigned ? 0 : 3;
    return Vec<int8_t, 16>{int8_t(I % 4 == blank ? -128 : from + I / 4 * 3 + I % 4 - LimitsOf<S>::isSigned)...};
}
template <class S> TEVS_INLINE Vec<int32_t, 4> unpack24(__m128i v, int from) {
    const auto r = (Vec<int32_t, 4>)_mm_shuffle_epi8(v, (__m128i)order24<S>(from, Iota<16>{}));
    return LimitsOf<S>::isSigned ? r >> 8 : r;
}
#else
template <class S> TEVS_INLINE Vec<int32_t, 4> unpack24(__m128i v, int from) {
    if (from == 4) v = _mm_srli_si128(v, 4);
    const auto pairs = (Vec<uint64_t, 2>)_mm_unpacklo_epi64(v, _mm_srli_si128(v, 6));   // 48 bits of two integers in each
    const auto r = (pairs << 8 & 0xffffff00u) | (pairs << 16 & 0xffffff0000000000u);
    return LimitsOf<S>::isSigned ? (Vec<int32_t, 4>)r >> 8 : (Vec<int32_t, 4>)((Vec<uint32_t, 4>)r >> 8);
}
#endif

// K >= 2 registers of packed integers. Every load is of 16 bytes inside the samples: the last one ends where they end.
template <int B, int K, class S> TEVS_INLINE Some<Register<int32_t, B>, K> load24(const S* samples) {
    static_assert(K >= 2);
    const auto p = reinterpret_cast<const unsigned char*>(samples);
    Some<Register<int32_t, B>, K> r;
    for (int k = 0; k < K; ++k) {
#if TEVS_REGISTER_BYTES >= 32
        if constexpr (B == 32) {
            const __m256i v = _mm256_inserti128_si256(_mm256_castsi128_si256(loadLow<16>(p + 24 * k)), loadLow<16>(p + 24 * k + 8), 1);
            const auto order = join(order24<S>(0, Iota<16>{}), order24<S>(4, Iota<16>{}));
            const auto lanes = (Vec<int32_t, 8>)_mm256_shuffle_epi8(v, (__m256i)order);
            r.v[k] = LimitsOf<S>::isSigned ? lanes >> 8 : lanes;
        }
#endif
        if constexpr (B == 16) r.v[k] = k < K - 1 ? unpack24<S>(loadLow<16>(p + 12 * k), 0) : unpack24<S>(loadLow<16>(p + 12 * K - 16), 4);
    }
    return r;
}

// ---- half precision --------------------------------------------------------------------------------------------------------------------

// Exact; NaN becomes quiet and keeps its sign and payload, as the instruction does.
#if TEVS_LEVEL >= 2
TEVS_INLINE Vec<float, 4> halfToFloat(__m128i h) { return (Vec<float, 4>)_mm_cvtph_ps(h); }
#else
TEVS_INLINE Vec<float, 4> halfToFloat(__m128i h) {
    const auto bits = (Vec<uint32_t, 4>)widenLow<uint16_t, int32_t>(h);
    const auto magnitude = (Vec<int32_t, 4>)((bits & 0x7fff) << 13);
    // A normal number needs its exponent rebiased. A subnormal one is m * 2^-24: behind the exponent of 2^-14 it reads 2^-14 + m * 2^-24.
    const auto rebiased = magnitude + (112 << 23);
    const auto subnormal = (Vec<int32_t, 4>)((Vec<float, 4>)(rebiased + (1 << 23)) - 0x1p-14f);
    const auto infinite = magnitude | 0x7f800000;
    auto r = magnitude < 0x00800000 ? subnormal : rebiased;
    r = magnitude > 0x0f7fffff ? infinite : r;
    r |= (magnitude > 0x0f800000) & 0x00400000;
    return (Vec<float, 4>)(r | (Vec<int32_t, 4>)((bits & 0x8000) << 16));
}
#endif
template <int B> TEVS_INLINE Register<float, B> loadHalves(const Half* p) {
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (B == 32) return (Vec<float, 8>)_mm256_cvtph_ps(loadLow<16>(p));
#endif
    if constexpr (B == 16) return halfToFloat(loadLow<8>(p));
}

struct Nearest {};
struct Truncated {};

// Two registers of floats as halves, rounded once. Beyond the range: infinity to nearest, 65504 toward zero. NaN as above.
#if TEVS_LEVEL >= 2
template <class Mode> constexpr int kHalfRounding = _MM_FROUND_TO_NEAREST_INT;
template <> constexpr int kHalfRounding<Truncated> = _MM_FROUND_TO_ZERO;
template <class Mode> TEVS_INLINE Vec<uint16_t, 8> toHalf(Vec<float, 4> a, Vec<float, 4> b) {
    return (Vec<uint16_t, 8>)_mm_unpacklo_epi64(_mm_cvtps_ph((__m128)a, kHalfRounding<Mode>), _mm_cvtps_ph((__m128)b, kHalfRounding<Mode>));
}
#if TEVS_REGISTER_BYTES >= 32
template <class Mode> TEVS_INLINE Vec<uint16_t, 16> toHalf(Vec<float, 8> a, Vec<float, 8> b) {
    return join((Vec<uint16_t, 8>)_mm256_cvtps_ph((__m256)a, kHalfRounding<Mode>), (Vec<uint16_t, 8>)_mm256_cvtps_ph((__m256)b, kHalfRounding<Mode>));
}
#endif
#else
template <class Mode> TEVS_INLINE Vec<int32_t, 4> toHalf(Vec<float, 4> v) {
    constexpr bool truncates = __is_same(Mode, Truncated);
    const auto bits = (Vec<int32_t, 4>)v, magnitude = bits & 0x7fffffff;
    // Above 2^-14: the exponent rebiased and 13 bits rounded away, where a carry goes on into the exponent. Below it: the multiple of 2^-24.
    const auto rebiased = magnitude - (112 << 23);
    auto r = (truncates ? rebiased : rebiased + 0xfff + ((magnitude >> 13) & 1)) >> 13;
    const auto steps = (Vec<float, 4>)magnitude * 0x1p24f;
    r = magnitude < (113 << 23) ? (truncates ? truncatedInt(steps) : nearestInt(steps)) : r;
    r = minimum(r, Vec<int32_t, 4>{} + (truncates ? 0x7bff : 0x7c00));
    r = magnitude >= 0x7f800000 ? Vec<int32_t, 4>{} + 0x7c00 : r;
    r = magnitude > 0x7f800000 ? (magnitude >> 13 & 0x3ff) | 0x7e00 : r;
    return r | (bits >> 31 & ~0x7fff);   // as a signed number in 16 bits
}
template <class Mode> TEVS_INLINE Vec<uint16_t, 8> toHalf(Vec<float, 4> a, Vec<float, 4> b) {
    return (Vec<uint16_t, 8>)pack16(toHalf<Mode>(a), toHalf<Mode>(b));
}
#endif

// ---- any format -------------------------------------------------------------------------------------------------------------------------

// K registers of T from consecutive samples of S. T is an integer at least as wide, or float, or double; every value is exact but 32s as float.
template <class T, int B, int K, class S> TEVS_INLINE Some<Register<T, B>, K> loadLanes(const S* p) {
    constexpr int n = B / int(sizeof(T));
    Some<Register<T, B>, K> r;
    if constexpr (__is_same(S, Int24) || __is_same(S, UInt24)) {
        const auto ints = load24<B, K>(p);
        if constexpr (__is_same(T, float))
            return each(ints, [](auto v) { return __builtin_convertvector(v, Register<float, B>); });
        else
            return each(ints, [](auto v) { return (Register<T, B>)v; });
    } else {
        for (int k = 0; k < K; ++k) {
            const S* const s = p + n * k;
            if constexpr (sizeof(S) == 8)
                // The 32-bit compiler would load such a register in halves.
                r.v[k] = B == 16 ? inRegister(loadAs<Register<T, B>>(s)) : loadAs<Register<T, B>>(s);
            else if constexpr (__is_same(S, T))
                r.v[k] = loadAs<Register<T, B>>(s);
            else if constexpr (__is_same(S, Half))
                r.v[k] = loadHalves<B>(s);
            else if constexpr (__is_same(T, float))
                r.v[k] = __builtin_convertvector((loadInts<int32_t, B>(s)), Register<float, B>);
            else if constexpr (__is_same(T, double) && __is_same(S, float))
                r.v[k] = loadWide<n>(s);
            else if constexpr (__is_same(T, double) && B == 16)
                r.v[k] = (Vec<double, 2>)_mm_cvtepi32_pd(widenLow<S, int32_t>(loadLow<n* int(sizeof(S))>(s)));
            else if constexpr (__is_same(T, double))
                r.v[k] = __builtin_convertvector((loadInts<int32_t, B / 2>(s)), Register<double, B>);
            else
                r.v[k] = loadInts<T, B>(s);
        }
        return r;
    }
}

// ---- lanes as narrower integers, saturated, in order ------------------------------------------------------------------------------------------

TEVS_INLINE Vec<uint16_t, 8> packU16(Vec<int32_t, 4> a, Vec<int32_t, 4> b) {
#if TEVS_LEVEL >= 1
    return (Vec<uint16_t, 8>)_mm_packus_epi32((__m128i)a, (__m128i)b);
#else
    const auto low = [](Vec<int32_t, 4> v) { return (v & ~(v >> 31)) - 32768; };   // what is negative as 0, and 0 as -32768
    return (Vec<uint16_t, 8>)pack16(low(a), low(b)) ^ 0x8000;
#endif
}
#if TEVS_REGISTER_BYTES >= 32
TEVS_INLINE Vec<uint16_t, 16> packU16(Vec<int32_t, 8> a, Vec<int32_t, 8> b) {
    return (Vec<uint16_t, 16>)_mm256_permute4x64_epi64(_mm256_packus_epi32((__m256i)a, (__m256i)b), 0xd8);
}
#endif
// To 16 bits, and from 16 to 8.
template <class D, class V> TEVS_INLINE auto packShorts(V a, V b) {
    if constexpr (LimitsOf<D>::isSigned)
        return pack16(a, b);
    else
        return packU16(a, b);
}
template <class D> TEVS_INLINE Vec<D, 16> packBytes(Vec<int16_t, 8> a, Vec<int16_t, 8> b) {
    return (Vec<D, 16>)(LimitsOf<D>::isSigned ? _mm_packs_epi16((__m128i)a, (__m128i)b) : _mm_packus_epi16((__m128i)a, (__m128i)b));
}

// 64-bit lanes: what fits has nothing but copies of its own sign above it.
template <class V> TEVS_INLINE auto pack32(V a, V b) {
    using Ints = Vec<int32_t, 2 * kCount<V>>;
    const auto packed = [](Ints low, Ints high) { return high == low >> 31 ? low : high >> 31 ^ 0x7fffffff; };
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (sizeof(V) == 32) {
        // Each 128-bit half is shuffled by itself; the permutation puts the quarters in order.
        const Ints r = packed((Ints)_mm256_shuffle_ps((__m256)a, (__m256)b, 0x88), (Ints)_mm256_shuffle_ps((__m256)a, (__m256)b, 0xdd));
        return (Ints)_mm256_permute4x64_epi64((__m256i)r, 0xd8);
    }
#endif
    if constexpr (sizeof(V) == 16) return packed((Ints)_mm_shuffle_ps((__m128)a, (__m128)b, 0x88), (Ints)_mm_shuffle_ps((__m128)a, (__m128)b, 0xdd));
}

// The low bytes of a register, of results that do not fill one.
template <int Bytes> struct LowBytes { __m128i v; };
template <int Bytes> TEVS_INLINE void store(void* p, LowBytes<Bytes> low) {
    if constexpr (Bytes == 8) {
        _mm_storel_epi64(static_cast<__m128i*>(p), low.v);
    } else {
        const int32_t word = _mm_cvtsi128_si32(low.v);
        memcpy(p, &word, sizeof word);
    }
}

// K registers of 32-bit lanes as D, an integer of up to 32 bits; or of 64-bit lanes as 32 bits.
template <class D, class V, int K> TEVS_INLINE auto packed(const Some<V, K>& s) {
    if constexpr (sizeof(D) == sizeof(Element<V>)) {
        return s;
    } else if constexpr (sizeof(Element<V>) == 8) {
        return eachPair(s, [](V a, V b) { return pack32(a, b); });
    } else if constexpr (sizeof(V) == 64) {
        static_assert(K == 1);
#if TEVS_LEVEL >= 3
        constexpr bool isSigned = LimitsOf<D>::isSigned;
        const __m512i v = isSigned ? (__m512i)s.v[0] : _mm512_maskz_max_epi32(0xffff, (__m512i)s.v[0], __m512i{});
        if constexpr (sizeof(D) == 2)
            return (Vec<D, 16>)(isSigned ? _mm512_maskz_cvtsepi32_epi16(0xffff, v) : _mm512_maskz_cvtusepi32_epi16(0xffff, v));
        else
            return (Vec<D, 16>)(isSigned ? _mm512_maskz_cvtsepi32_epi8(0xffff, v) : _mm512_maskz_cvtusepi32_epi8(0xffff, v));
#endif
    } else if constexpr (sizeof(V) == 32 && K == 1) {
        return packed<D>(Some<Vec<int32_t, 4>, 2>{low(s.v[0]), high(s.v[0])});
    } else if constexpr (sizeof(D) == 2 && K == 1) {
        return LowBytes<8>{(__m128i)packShorts<D>(s.v[0], s.v[0])};
    } else if constexpr (sizeof(D) == 2) {
        return eachPair(s, [](V a, V b) { return packShorts<D>(a, b); });
    } else if constexpr (K == 1) {
        const auto words = pack16(s.v[0], s.v[0]);
        return LowBytes<4>{(__m128i)packBytes<D>(words, words)};
    } else if constexpr (K == 2) {
        const auto words = pack16(s.v[0], s.v[1]);
        if constexpr (sizeof(V) == 32)
            return packBytes<D>(low(words), high(words));
        else
            return LowBytes<8>{(__m128i)packBytes<D>(words, words)};
    } else {
        static_assert(K == 4);
#if TEVS_REGISTER_BYTES >= 32
        if constexpr (sizeof(V) == 32) {
            // Packed twice within each 128-bit half, the quarters of four lanes stand as 0 2 4 6 1 3 5 7.
            const __m256i a = (__m256i)blockPack(s.v[0], s.v[1]), b = (__m256i)blockPack(s.v[2], s.v[3]);
            return (Vec<D, 32>)_mm256_permutevar8x32_epi32(LimitsOf<D>::isSigned ? _mm256_packs_epi16(a, b) : _mm256_packus_epi16(a, b),
                                                           _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
        }
#endif
        if constexpr (sizeof(V) == 16) return packBytes<D>(pack16(s.v[0], s.v[1]), pack16(s.v[2], s.v[3]));
    }
}

// v within D's range; NaN stays.
template <class D, class V> TEVS_INLINE V clamped(V v) {
    constexpr Element<V> lo = LimitsOf<D>::min, hi = LimitsOf<D>::max;
    return atLeast(same<V>(lo), atMost(same<V>(hi), v));
}

// The lower three bytes of each lane, close together: each register's part is turned to where it belongs in the three that are stored.
template <class V> TEVS_INLINE Some<V, 3> pack24(const Some<V, 4>& s) {
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (sizeof(V) == 32) {
        const auto turned = [&](int k, auto... lane) {
            const __m256i order = _mm256_broadcastsi128_si256(_mm_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1));
            return _mm256_permutevar8x32_epi32(_mm256_shuffle_epi8((__m256i)s.v[k], order), _mm256_setr_epi32(lane...));
        };
        const __m256i a = turned(0, 0, 1, 2, 4, 5, 6, 3, 3), b = turned(1, 2, 4, 5, 6, 3, 3, 0, 1);
        const __m256i c = turned(2, 5, 6, 3, 3, 0, 1, 2, 4), d = turned(3, 3, 3, 0, 1, 2, 4, 5, 6);
        return {(V)_mm256_blend_epi32(a, b, 0xc0), (V)_mm256_blend_epi32(b, c, 0xf0), (V)_mm256_blend_epi32(c, d, 0xfc)};
    }
#endif
    if constexpr (sizeof(V) == 16) {
#if TEVS_LEVEL >= 1
        const auto turned = [&](int k, auto... byte) { return (__m128)_mm_shuffle_epi8((__m128i)s.v[k], _mm_setr_epi8(byte...)); };
        const __m128 a = turned(0, 0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 3, 3, 3, 3), b = turned(1, 5, 6, 8, 9, 10, 12, 13, 14, 3, 3, 3, 3, 0, 1, 2, 4);
        const __m128 c = turned(2, 10, 12, 13, 14, 3, 3, 3, 3, 0, 1, 2, 4, 5, 6, 8, 9), d = turned(3, 3, 3, 3, 3, 0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14);
        return {(V)_mm_blend_ps(a, b, 0x8), (V)_mm_blend_ps(b, c, 0xc), (V)_mm_blend_ps(c, d, 0xe)};
#else
        const auto close = [&](int k) {
            const auto q = (Vec<uint64_t, 2>)s.v[k];
            const auto pairs = (__m128i)((q & 0xffffff) | (q >> 8 & 0xffffff000000));   // 48 bits of two lanes in each
            return _mm_or_si128(_mm_move_epi64(pairs), _mm_slli_si128(_mm_srli_si128(pairs, 8), 6));
        };
        const __m128i a = close(0), b = close(1), c = close(2), d = close(3);
        return {(V)_mm_or_si128(a, _mm_slli_si128(b, 12)), (V)_mm_or_si128(_mm_srli_si128(b, 4), _mm_slli_si128(c, 8)),
                (V)_mm_or_si128(_mm_srli_si128(c, 8), _mm_slli_si128(d, 4))};
#endif
    }
}

}   // namespace
}   // namespace tevs::TEVS_LEVEL_NS
