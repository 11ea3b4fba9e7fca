// Fixed point over vectors: the rounding and saturation of core/scale.h, the same to the bit.
//
// An operation yields its exact result in one of the forms below: a sum or a difference of two vectors, which is exact without being widened, or lanes
// wide enough to hold it. fit(scaling, exact) makes the vector of it that is stored; withScale() picks the scaling once, outside the loop.
#pragma once

#include "core/simd/vec.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// ---- instructions that no operator says, for each lane type that has them ------------------------------------------------------------

#define TEVS_AT_16(name, type, expression)                                                                          \
    TEVS_INLINE Vec<type, 16 / sizeof(type)> name(Vec<type, 16 / sizeof(type)> x, Vec<type, 16 / sizeof(type)> y) { \
        const __m128i a = (__m128i)x, b = (__m128i)y;                                                               \
        return (Vec<type, 16 / sizeof(type)>)_mm_##expression(a, b);                                                \
    }
#define TEVS_SHIFT_AT_16(name, type, expression)                                                 \
    TEVS_INLINE Vec<type, 16 / sizeof(type)> name(Vec<type, 16 / sizeof(type)> v, int s) {       \
        return (Vec<type, 16 / sizeof(type)>)_mm_##expression((__m128i)v, _mm_cvtsi32_si128(s)); \
    }
#if TEVS_REGISTER_BYTES >= 32
#define TEVS_EACH_WIDTH(name, type, expression)                                                                     \
    TEVS_AT_16(name, type, expression)                                                                              \
    TEVS_INLINE Vec<type, 32 / sizeof(type)> name(Vec<type, 32 / sizeof(type)> x, Vec<type, 32 / sizeof(type)> y) { \
        const __m256i a = (__m256i)x, b = (__m256i)y;                                                               \
        return (Vec<type, 32 / sizeof(type)>)_mm256_##expression(a, b);                                             \
    }
#define TEVS_SHIFT(name, type, expression)                                                          \
    TEVS_SHIFT_AT_16(name, type, expression)                                                        \
    TEVS_INLINE Vec<type, 32 / sizeof(type)> name(Vec<type, 32 / sizeof(type)> v, int s) {          \
        return (Vec<type, 32 / sizeof(type)>)_mm256_##expression((__m256i)v, _mm_cvtsi32_si128(s)); \
    }
#else
#define TEVS_EACH_WIDTH TEVS_AT_16
#define TEVS_SHIFT TEVS_SHIFT_AT_16
#endif

// All lanes by one run-time count; counts from the width on shift everything out. The instructions take the count from a register's low half; v >> s makes
// the compiler build a vector of counts on levels without per-lane shifts.
TEVS_SHIFT(shiftRight, int16_t, sra_epi16)
TEVS_SHIFT(shiftRight, uint16_t, srl_epi16)
TEVS_SHIFT(shiftRight, int32_t, sra_epi32)
TEVS_SHIFT(shiftRight, uint32_t, srl_epi32)
TEVS_SHIFT(shiftRight, uint64_t, srl_epi64)
TEVS_SHIFT(shiftLeft, int16_t, sll_epi16)
TEVS_SHIFT(shiftLeft, uint16_t, sll_epi16)
TEVS_SHIFT(shiftLeft, int32_t, sll_epi32)
TEVS_SHIFT(shiftLeft, uint32_t, sll_epi32)

TEVS_EACH_WIDTH(addSat, uint8_t, adds_epu8)
TEVS_EACH_WIDTH(addSat, uint16_t, adds_epu16)
TEVS_EACH_WIDTH(addSat, int16_t, adds_epi16)
TEVS_EACH_WIDTH(subSat, uint8_t, subs_epu8)
TEVS_EACH_WIDTH(subSat, uint16_t, subs_epu16)
TEVS_EACH_WIDTH(subSat, int16_t, subs_epi16)
TEVS_EACH_WIDTH(mulHigh, int16_t, mulhi_epi16)
TEVS_EACH_WIDTH(mulHigh, uint16_t, mulhi_epu16)

TEVS_EACH_WIDTH(blockLow, double, unpacklo_epi64)
TEVS_EACH_WIDTH(blockHigh, double, unpackhi_epi64)
// Within each block of 128 bits: the lower, the upper halves interleaved; two vectors to lanes of half the width, saturated.
TEVS_EACH_WIDTH(blockLow, uint8_t, unpacklo_epi8)
TEVS_EACH_WIDTH(blockHigh, uint8_t, unpackhi_epi8)
TEVS_EACH_WIDTH(blockLow, int16_t, unpacklo_epi16)
TEVS_EACH_WIDTH(blockHigh, int16_t, unpackhi_epi16)
TEVS_EACH_WIDTH(blockLow, int32_t, unpacklo_epi32)
TEVS_EACH_WIDTH(blockHigh, int32_t, unpackhi_epi32)
TEVS_EACH_WIDTH(blockPack, int32_t, packs_epi32)
TEVS_EACH_WIDTH(blockPackUnsigned, int16_t, packus_epi16)
#if TEVS_LEVEL >= 1
TEVS_EACH_WIDTH(blockPackUnsigned, int32_t, packus_epi32)
#endif

#undef TEVS_AT_16
#undef TEVS_SHIFT_AT_16
#undef TEVS_EACH_WIDTH
#undef TEVS_SHIFT

// ---- lanes of any type ----------------------------------------------------------------------------------------------------------------

template <class T> struct LimitsOf {
    static constexpr bool isSigned = T(-1) < T(0);
    static constexpr int width = 8 * int(sizeof(T)) - isSigned;   // of the magnitude
    static constexpr T max = T(~uint64_t{0} >> (64 - width)), min = isSigned ? -max - 1 : 0;
};
template <class V> using Limits = LimitsOf<Element<V>>;

// 2^s - 1 and 2^(s-1) in every lane, 0 <= s <= 64.
template <class V> TEVS_INLINE V ones(int s) { return same<V>(Element<V>(s >= 64 ? ~uint64_t{0} : (uint64_t{1} << s) - 1)); }
template <class V> TEVS_INLINE V half(int s) { return same<V>(Element<V>(uint64_t{1} << (s - 1))); }

// There are no shifts of 8-bit lanes: those of 16 bits, less what came from the neighbour.
template <class V> TEVS_INLINE V shiftRight(V v, int s) {
    static_assert(sizeof(Element<V>) == 1);
    return (V)shiftRight((Vec<uint16_t, kCount<V> / 2>)v, s) & same<V>(Element<V>(s > 8 ? 0 : 0xff >> s));
}
template <class V> TEVS_INLINE V shiftLeft(V v, int s) {
    static_assert(sizeof(Element<V>) == 1);
    return (V)shiftLeft((Vec<uint16_t, kCount<V> / 2>)v, s) & same<V>(Element<V>(s > 8 ? 0 : 0xff << s));
}

// There is no saturating arithmetic of 32-bit lanes: a sum has overflowed where its sign is neither addend's, of unsigned lanes where it is less than one.
template <class V> TEVS_INLINE V addSat(V a, V b) {
    static_assert(sizeof(Element<V>) == 4);
    using U = Vec<uint32_t, kCount<V>>;
    const V r = (V)((U)a + (U)b);
    if constexpr (Limits<V>::isSigned)
        return ((a ^ r) & (b ^ r)) < 0 ? (a >> 31) ^ INT32_MAX : r;
    else
        return r | (V)(r < a);
}
template <class V> TEVS_INLINE V subSat(V a, V b) {
    static_assert(sizeof(Element<V>) == 4 && Limits<V>::isSigned);
    using U = Vec<uint32_t, kCount<V>>;
    const V r = (V)((U)a - (U)b);
    return ((a ^ b) & (a ^ r)) < 0 ? (a >> 31) ^ INT32_MAX : r;
}

// v * 2^s, saturated.
template <class V> TEVS_INLINE V shiftLeftSat(V v, int s) {
    using L = Limits<V>;
    if (s > L::width) s = L::width;   // where everything but 0 saturates (of negative numbers, -1 by being shifted to the minimum)
    const V shifted = shiftLeft(v, s);
    if constexpr (L::isSigned)
        return shiftRight(shifted, s) == v ? shifted : (v >> L::width) ^ same<V>(L::max);
    else
        return shifted | (V)(v > same<V>(Element<V>(uint64_t{L::max} >> s)));
}

// v * 2^-s to nearest, ties to even, for 1 <= s, up to the width of unsigned and one less for signed lanes. What is shifted out is compared with a half, so v
// may use all bits of its lanes.
template <class V> TEVS_INLINE V roundRight(V v, int s) {
    if constexpr (sizeof(Element<V>) == 8) {
        // Signed numbers in unsigned lanes, for which alone there is a shift: with the sign bit flipped they are 2^63 too high. There is no
        // comparison either: the sign of a difference tells.
        static_assert(!Limits<V>::isSigned);
        const V q = shiftRight(v ^ same<V>(uint64_t{1} << 63), s) - same<V>(uint64_t{1} << (63 - s));
        return q + shiftRight(half<V>(s) - (q & same<V>(1)) - (v & ones<V>(s)), 63);
    } else {
        const V q = shiftRight(v, s);
        return q - (V)((v & ones<V>(s)) > half<V>(s) - (q & same<V>(1)));
    }
}
// v * 2^-s as above with two operations less, for signed lanes with a bit to spare: adding 2^(s-1) does not overflow.
template <class V> TEVS_INLINE V roundShift(V v, int s) { return shiftRight(v + ones<V>(s - 1) + (shiftRight(v, s) & same<V>(1)), s); }

// 32-bit lanes to 16 bits, saturated, in order.
TEVS_INLINE Vec<int16_t, 8> pack16(Vec<int32_t, 4> a, Vec<int32_t, 4> b) { return (Vec<int16_t, 8>)blockPack(a, b); }
#if TEVS_REGISTER_BYTES >= 32
TEVS_INLINE Vec<int16_t, 16> pack16(Vec<int32_t, 8> a, Vec<int32_t, 8> b) {
    // The permutation puts the quarters in order.
    return (Vec<int16_t, 16>)_mm256_permute4x64_epi64((__m256i)blockPack(a, b), 0xd8);
}
#endif

// ---- exact results ------------------------------------------------------------------------------------------------------------------------

struct Exact {};
struct One {};
struct Right {
    int s;
};   // 2 <= s, up to where everything rounds to 0
struct Left {
    int s;
};   // 1 <= s

template <class F> TEVS_INLINE void withScale(int scaleFactor, F f) {
    if (scaleFactor == 0)
        f(Exact{});
    else if (scaleFactor == 1)
        f(One{});
    else if (scaleFactor > 0)
        f(Right{scaleFactor});
    else
        f(Left{scaleFactor < -64 ? 64 : -scaleFactor});
}

template <class X> TEVS_INLINE auto fit(One, X x) { return fit(Right{1}, x); }
template <class X> TEVS_INLINE auto fit(Left by, X x) { return shiftLeftSat(fit(Exact{}, x), by.s); }   // what saturates before the shift would after

// a + b = 2 f + r with f = (a AND b) + (a XOR b) / 2, r = (a XOR b) AND 1, none of which overflows. H. S. Warren, Hacker's Delight, 2-5.
template <class V> struct Sum { V a, b; };
template <class V> TEVS_INLINE V fit(Exact, Sum<V> x) { return addSat(x.a, x.b); }
template <class V> TEVS_INLINE V fit(One, Sum<V> x) {
    const V odd = x.a ^ x.b, f = (x.a & x.b) + shiftRight(odd, 1);
    return f + (f & odd & same<V>(1));
}
// Of 2 f + r shifted by s, f shifted by s - 1 remains; r makes what is shifted out more than the half that f alone would make.
template <class V> TEVS_INLINE V halvesRight(V f, V odd, int s) {
    const V q = shiftRight(f, s - 1);
    return q - (V)((f & ones<V>(s - 1)) > half<V>(s - 1) - ((q | odd) & same<V>(1)));
}
template <class V> TEVS_INLINE V fit(Right by, Sum<V> x) {
    const V odd = x.a ^ x.b;
    return halvesRight((x.a & x.b) + shiftRight(odd, 1), odd, by.s);
}

// a - b = 2 f + r with f = (a XOR b) / 2 - (NOT a AND b). Of unsigned lanes, what lies below 0 is stored as 0 at any scale.
template <class V> struct Difference { V a, b; };
template <class V> TEVS_INLINE V fit(Exact, Difference<V> x) { return subSat(x.a, x.b); }
template <class V> TEVS_INLINE V fit(One, Difference<V> x) {
    if constexpr (!Limits<V>::isSigned) return roundRight(subSat(x.a, x.b), 1);
    const V odd = x.a ^ x.b, f = shiftRight(odd, 1) - (~x.a & x.b);
    return addSat(f, f & odd & same<V>(1));   // 65535 / 2 rounds up to 32768
}
template <class V> TEVS_INLINE V fit(Right by, Difference<V> x) {
    if constexpr (!Limits<V>::isSigned) return roundRight(subSat(x.a, x.b), by.s);
    const V odd = x.a ^ x.b;
    return halvesRight(shiftRight(odd, 1) - (~x.a & x.b), odd, by.s);
}

// Lanes of the stored type that hold the result exactly, with a bit to spare.
template <class V> struct Whole { V v; };
template <class V> TEVS_INLINE V fit(Exact, Whole<V> x) { return x.v; }
template <class V> TEVS_INLINE V fit(Right by, Whole<V> x) { return roundShift(x.v, by.s); }

// Lanes of twice the stored type T's width, block by block: the first vector holds the lower half of each block of 128 bits, the second the upper.
// No permutation across blocks is needed then. Spare: every result leaves a bit of the lanes to spare.
template <class T, class V, bool Spare = false> struct Widened { V low, high; };
template <class V, bool Spare> TEVS_INLINE auto packed(Widened<int16_t, V, Spare> x) { return (Vec<int16_t, 2 * kCount<V>>)blockPack(x.low, x.high); }
template <class V> TEVS_INLINE auto packed(Widened<uint8_t, V> x) {
    const auto clamped = [](V v) { return (Vec<int16_t, kCount<V>>)(v - subSat(v, same<V>(255))); };
    return (Vec<uint8_t, 2 * kCount<V>>)blockPackUnsigned(clamped(x.low), clamped(x.high));
}
template <class V> TEVS_INLINE auto packed(Widened<uint16_t, V> x) {
    using S = Vec<int32_t, kCount<V>>;
#if TEVS_LEVEL >= 1
    const auto clamped = [](V v) { return (S)(v < same<V>(65535) ? v : same<V>(65535)); };
    return (Vec<uint16_t, 2 * kCount<V>>)blockPackUnsigned(clamped(x.low), clamped(x.high));
#else
    // Packed as the signed number of the same low half.
    const auto clamped = [](V v) { return (S)(v | (V)((v >> 16) != 0)) << 16 >> 16; };
    return (Vec<uint16_t, 2 * kCount<V>>)blockPack(clamped(x.low), clamped(x.high));
#endif
}
template <class T, class V, bool Spare> TEVS_INLINE auto fit(Exact, Widened<T, V, Spare> x) { return packed(x); }
template <class T, class V> TEVS_INLINE auto fit(Right by, Widened<T, V, true> x) {
    return packed(Widened<T, V>{roundShift(x.low, by.s), roundShift(x.high, by.s)});
}
template <class T, class V> TEVS_INLINE auto fit(Right by, Widened<T, V> x) { return packed(Widened<T, V>{roundRight(x.low, by.s), roundRight(x.high, by.s)}); }

// 32-bit lanes for 16-bit results, in order.
template <class V> struct InOrder { V a, b; };
template <class V> InOrder(V, V) -> InOrder<V>;
template <class V> TEVS_INLINE auto fit(Exact, InOrder<V> x) { return pack16(x.a, x.b); }
template <class V> TEVS_INLINE auto fit(Right by, InOrder<V> x) { return pack16(roundRight(x.a, by.s), roundRight(x.b, by.s)); }

// 64-bit lanes for 32-bit results: of the even lanes and of the odd ones.
template <class V> struct EvenOdd { V even, odd; };
template <class V> TEVS_INLINE auto packed(EvenOdd<V> x) {
    using S = Vec<int32_t, 2 * kCount<V>>;
    const S low = alternate((S)x.even, swapPairs((S)x.odd)), high = alternate(swapPairs((S)x.even), (S)x.odd);
    return low >> 31 == high ? low : (high >> 31) ^ INT32_MAX;
}
template <class V> TEVS_INLINE auto fit(Exact, EvenOdd<V> x) { return packed(x); }
template <class V> TEVS_INLINE auto fit(Right by, EvenOdd<V> x) { return packed(EvenOdd<V>{roundRight(x.even, by.s), roundRight(x.odd, by.s)}); }

}   // namespace
}   // namespace tevs::TEVS_LEVEL_NS
