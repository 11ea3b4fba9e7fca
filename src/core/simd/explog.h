// Exponential, logarithm and cube root over lanes of float or double, in the lanes' own precision.
//
// Every step is one rounded operation, none fused unless its product is exact, so results are the same to the bit at every level. Where the logarithm's leading sum
// would be rounded, what it leaves behind is kept and added with the small terms (Dekker's fast two-sum).
//
// Polynomials are minimax (Remez) over the reduced range, their coefficients rounded to the lanes' precision.
// Arguments are reduced as in Cody and Waite, Software Manual for the Elementary Functions: ln 2 is the sum of a short number, whose product with
// any exponent is exact, and a rest. The logarithm is arranged as in Tang, Table-driven implementation of the logarithm function (1990), without the table.
#pragma once

#include "core/simd/real.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// Whether low <= v <= high in all lanes. AVX-512 compares into masks, which the compiler would turn into vectors and back.
template <class V> TEVS_INLINE bool allBetween(V low, V v, V high) {
#if TEVS_LEVEL >= 3
    if constexpr (sizeof(V) == 64 && sizeof(V{}[0]) == 4)
        return _mm512_mask_cmp_ps_mask(_mm512_cmp_ps_mask((__m512)low, (__m512)v, _CMP_LE_OQ), (__m512)v, (__m512)high, _CMP_LE_OQ) == 0xffff;
    else if constexpr (sizeof(V) == 64)
        return _mm512_mask_cmp_pd_mask(_mm512_cmp_pd_mask((__m512d)low, (__m512d)v, _CMP_LE_OQ), (__m512d)v, (__m512d)high, _CMP_LE_OQ) == 0xff;
#endif
    return all(isAtMost(low, v) & isAtMost(v, high));
}
template <class V> TEVS_INLINE bool allBetween(V low, Two<V> v, V high) {
#if TEVS_LEVEL >= 3
    return allBetween(low, v.a, high) && allBetween(low, v.b, high);
#endif
    return all(isAtMost(low, v.a) & isAtMost(v.a, high) & isAtMost(low, v.b) & isAtMost(v.b, high));
}

template <class T> struct Format;
template <> struct Format<float> {
    static constexpr int kMantissa = 23, kBias = 127;
    static constexpr double kSmallest = 0x1p-126, kLargest = 0x1.fffffep127;
    static constexpr double kLn2 = 0x1.62e4p-1, kLn2Rest = 0x1.7f7d1cp-20;            // 15 bits: exact times an exponent of 8
    static constexpr double kExpOrdinary = 86, kExpLowest = -104, kExpHighest = 89;   // normal, below half of the least number, above the largest
    static constexpr uint32_t kSqrtHalf = 0x3f3504f3, kOne = 0x3f800000, kExponentMask = 0xff800000, kNegativeNaN = 0xffc00000;
};
template <> struct Format<double> {
    static constexpr int kMantissa = 52, kBias = 1023;
    static constexpr double kSmallest = 0x1p-1022, kLargest = 0x1.fffffffffffffp1023;
    static constexpr double kLn2 = 0x1.62e42fefa38p-1, kLn2Rest = 0x1.ef35793c7673p-45;   // 42 bits: exact times an exponent of 11
    static constexpr double kExpOrdinary = 707, kExpLowest = -746, kExpHighest = 710;
    static constexpr uint64_t kSqrtHalf = 0x3fe6a09e667f3bcd, kOne = 0x3ff0000000000000, kExponentMask = 0xfff0000000000000, kNegativeNaN = 0xfff8000000000000;
};
template <class V> using FormatOf = Format<Element<V>>;
template <class V> using Integers = Vec<decltype(+FormatOf<V>::kOne), kCount<V>>;
template <class V> constexpr bool isSingle = sizeof(Element<V>) == 4;
template <class V> constexpr double kWhole = isSingle<V> ? 0x1.8p23 : 0x1.8p52;   // adding it rounds to an integer, which then stands in the low bits

// v * 2^k, for whole k of up to twice the exponents' range. The first product is exact, so a subnormal result is rounded only once.
template <class V> TEVS_INLINE V timesPowerOfTwo(V v, V k) {
    using F = FormatOf<V>;
    const V biased = constant<V>(kWhole<V> + F::kBias);
    const V half = k * constant<V>(0.5) + biased, rest = (k - (half - biased)) + biased;
    return v * (V)((Bits<V>)half << F::kMantissa) * (V)((Bits<V>)rest << F::kMantissa);
}

// e^x = e^r 2^k for x in the range where that is not 0 or infinity: x = k ln 2 + r, |r| <= ln 2 / 2, and e^r = 1 + r + r^2 q(r).
// The polynomial is off by 2^-27.5 of e^r for float, 2^-60 for double. r = high - low, where high is exact, fused or not, and only the
// small terms see the rounding of r.
template <class V> struct Exponential {
    V fraction, whole;   // e^r, k + kWhole
    TEVS_INLINE explicit Exponential(V x) {
        using F = FormatOf<V>;
        whole = x * constant<V>(0x1.71547652b82fep+0) + constant<V>(kWhole<V>);
        const V k = whole - constant<V>(kWhole<V>);
        const V high = fnma(k, constant<V>(F::kLn2), x), low = k * constant<V>(F::kLn2Rest), r = high - low, z = r * r;
        // Estrin's scheme: the square that it takes is there anyway.
        const auto pair = [=](double even, double odd) { return constant<V>(even) + r * constant<V>(odd); };
        V q;
        if constexpr (isSingle<V>)
            q = pair(0x1p-1, 0x1.55548ep-3) + z * (pair(0x1.55545ep-5, 0x1.123b92p-7) + z * constant<V>(0x1.6db44cp-10));
        else {
            const V w = z * z;
            q = (pair(0x1p-1, 0x1.555555555555cp-3) + z * pair(0x1.555555555555ep-5, 0x1.111111110eb94p-7)) +
                w * ((pair(0x1.6c16c16c1352cp-10, 0x1.a01a01b3c72ccp-13) + z * pair(0x1.a01a01b46d0f0p-16, 0x1.71ddef7533f43p-19)) +
                     w * (pair(0x1.27e4bf05a428cp-22, 0x1.af6d02fe2640fp-26) + z * constant<V>(0x1.1f9e29ab02490p-29)));
        }
        fraction = constant<V>(1) + (high + (z * q - low));
    }
    TEVS_INLINE V ordinary() const { return (V)((Bits<V>)fraction + ((Bits<V>)whole << FormatOf<V>::kMantissa)); }
    TEVS_INLINE V any() const { return timesPowerOfTwo(fraction, whole - constant<V>(kWhole<V>)); }
};

// Where e^x is far from the ends of the normal numbers, the exponent is added in place; elsewhere there are two products. The results are the same where both will do.
template <class V, class X> TEVS_INLINE bool isFarFromEnds(X x) {
    return allBetween(constant<V>(-FormatOf<V>::kExpOrdinary), x, constant<V>(FormatOf<V>::kExpOrdinary));
}
template <class V> TEVS_INLINE V exponential(V x) {
    using F = FormatOf<V>;
    if (isFarFromEnds<V>(x)) [[likely]]
        return Exponential<V>(x).ordinary();
    return Exponential<V>(atLeast(constant<V>(F::kExpLowest), atMost(constant<V>(F::kExpHighest), x))).any();
}
// Two vectors at a time keep more of a long chain of operations in flight: a gain for float, and a loss for double, whose polynomials are longer.
template <class V> TEVS_INLINE Two<V> exponential(Two<V> x) {
    if (isFarFromEnds<V>(x)) [[likely]]
        return {Exponential<V>(x.a).ordinary(), Exponential<V>(x.b).ordinary()};
    return {exponential(x.a), exponential(x.b)};
}

// Positive normal numbers, whose logarithm needs no care.
template <class V, class X> TEVS_INLINE bool isOrdinary(X x) { return allBetween(constant<V>(FormatOf<V>::kSmallest), x, constant<V>(FormatOf<V>::kLargest)); }

// The exponent that a lane of bits, shifted arithmetically by kMantissa, holds: there is no such shift, nor a conversion, of 64 bits below AVX-512. The bias makes the
// exponent positive, and so a part of the bits of a number that is a constant more.
template <class U> TEVS_INLINE auto exponentOf(U bits) {
    if constexpr (sizeof(bits[0]) == 4)
        return __builtin_convertvector((Vec<int32_t, kCount<U>>)bits >> 23, Vec<float, kCount<U>>);
    else {
        using V = Vec<double, kCount<U>>;
        return (V)((bits + Format<double>::kOne) >> 52 | (U)constant<V>(0x1p52)) - constant<V>(0x1p52 + 1023);
    }
}

// ln x, or ln(x 2^shift), for positive normal x: x = 2^k m, f = m - 1 in sqrt(1/2) - 1 .. sqrt(2) - 1, s = f / (2 + f), and
//     ln(1 + f) = 2 artanh(s) = 2 s + s^3 p(s^2) = f - s (f - s^2 p(s^2)) = f - (f^2 / 2 - s (f^2 / 2 + s^2 p(s^2)))
// The polynomial is off by 2^-30 of the logarithm for float, 2^-58.8 for double. The last form costs more than the one before and loses less to rounding:
// float, of which all arguments can be tried, stays within 0.96 units in the last place without it.
template <class V, class... Shift> TEVS_INLINE V logarithmOfOrdinary(V x, Shift... shift) {
    using F = FormatOf<V>;
    using U = Integers<V>;
    const U above = (U)x - F::kSqrtHalf;
    const V k = (exponentOf(above) + ... + shift);
    const V f = (V)((U)x - (above & F::kExponentMask)) - constant<V>(1);
    const V s = f / (constant<V>(2) + f), z = s * s;
    const auto pair = [=](double even, double odd) { return constant<V>(even) + z * constant<V>(odd); };
    V less;   // f - ln(1 + f)
    if constexpr (isSingle<V>)
        less = s * (f - z * (pair(0x1.55557ap-1, 0x1.995eaap-2) + (z * z) * constant<V>(0x1.31e4b2p-2)));
    else {
        const V w = z * z;
        const V p = (pair(0x1.5555555555593p-1, 0x1.999999997fc76p-2) + w * pair(0x1.24924942044c5p-2, 0x1.c71c51f8c1849p-3)) +
                    (w * w) * (pair(0x1.74664284ba37ap-3, 0x1.39a1588790825p-3) + w * constant<V>(0x1.2f0971a47e1a7p-3));
        const V half = constant<V>(0.5) * f * f;
        less = half - s * (half + z * p);
    }
    const V high = k * constant<V>(F::kLn2), sum = high + f, left = (high - sum) + f;
    return sum + (left - (less - k * constant<V>(F::kLn2Rest)));
}

// ln x: -infinity for zeros, NaN with its sign set for negative numbers, infinity and NaN themselves. A lane's result does not depend on its neighbours'.
// Calls unusual() if some lane is not ordinary.
template <class V, class F> TEVS_INLINE V logarithm(V x, F unusual) {
    using Form = FormatOf<V>;
    if (isOrdinary<V>(x)) [[likely]]
        return logarithmOfOrdinary(x);
    unusual();
    constexpr double up = isSingle<V> ? 0x1p24 : 0x1p53, down = isSingle<V> ? -24 : -53;
    const auto subnormal = x < constant<V>(Form::kSmallest);
    V y = logarithmOfOrdinary(subnormal ? x * constant<V>(up) : x, subnormal ? constant<V>(down) : V{});
    y = x <= constant<V>(Form::kLargest) ? y : x + x;
    y = x < V{} ? (V)(Integers<V>{} + Form::kNegativeNaN) : y;
    return x == V{} ? constant<V>(-__builtin_inf()) : y;
}

// The cube root of float lanes. A third of the bits, taken from a constant, is y = x^(-1/3) within 4 %; one step of the series of (1 - h)^(-1/3), h = 1 - x y^3,
// leaves 2^-15. t, the root in 12 bits, has an exact square, so r = x / t^2 is off by its own rounding only, r - t is exact (Sterbenz), and with u = (r - t) / t
//     x^(1/3) = t (1 + u)^(1/3) = t + (r - t) (1 - u/3)/3 + ...,  1 - u/3 = t y
// After Kahan, Computing a Real Cube Root (1991).
template <int N> TEVS_INLINE Vec<float, N> cubeRoot(Vec<float, N> x) {
    using V = Vec<float, N>;
    using I = Vec<int32_t, N>;
    const V ax = abs(x), sign = (V)((I)x ^ (I)ax);
    const auto tiny = ax < constant<V>(0x1p-126);
    const V a = tiny ? ax * constant<V>(0x1p24) : ax;
    V y = (V)(0x54a21d2a - nearestInt(__builtin_convertvector((I)a, V) * constant<V>(1.0 / 3)));
    const V h = constant<V>(1) - (a * y) * (y * y);
    y = y + y * (h * polynomial(h, 1.0 / 3, 2.0 / 9, 14.0 / 81));
    const V t = (V)(((Integers<V>)(a * (y * y)) + 0x800) & ~0xfffu), r = a / (t * t);
    const V root = t + (r - t) * (t * y * constant<V>(1.0 / 3));
    const V scaled = tiny ? root * constant<V>(0x1p-8) : root;
    const auto ordinary = (ax > V{}) & (ax <= constant<V>(0x1.fffffep127));
    return ordinary ? (V)((I)scaled | (I)sign) : x + x;   // of zeros, infinities and NaN
}

}   // namespace
}   // namespace tevs::TEVS_LEVEL_NS
