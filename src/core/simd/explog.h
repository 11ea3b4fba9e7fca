// Exponential, logarithm and cube root over lanes of float or double, in the lanes' own precision.
//
// Every step is one rounded operation, none of them fused, so results are the same to the bit at every level. Where a sum's rounding would show, what it leaves behind
// is kept and added with the small terms (Dekker's fast two-sum), so that the last addition is the only one whose rounding counts.
//
// Polynomials are minimax (Remez) over the reduced range, their coefficients rounded to the lanes' precision.
// Arguments are reduced as in Cody and Waite, Software Manual for the Elementary Functions: ln 2 is the sum of a short number, whose product with
// any exponent is exact, and a rest. The logarithm is arranged as in Tang, Table-driven implementation of the logarithm function (1990), without the table.
#pragma once

#include "core/simd/vec.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

template <class V> using LaneOf = decltype(+V{}[0]);
template <class V> using Bits = decltype(V{} == V{});

template <class V> TEVS_INLINE V constant(double x) { return LaneOf<V>(x) - V{}; }
template <class V> TEVS_INLINE V abs(V v) { return (V)((Bits<V>)v & ~(Bits<V>)constant<V>(-0.0)); }

// c[0] + c[1] z + ... (Horner).
template <class V> TEVS_INLINE V polynomial(V, double c) { return constant<V>(c); }
template <class V, class... C> TEVS_INLINE V polynomial(V z, double c, C... rest) { return constant<V>(c) + z * polynomial(z, rest...); }

template <class T> struct Format;
template <> struct Format<float> {
    static constexpr int kMantissa = 23, kBias = 127;
    static constexpr double kSmallest = 0x1p-126, kLargest = 0x1.fffffep127;
    static constexpr double kLn2 = 0x1.62e4p-1, kLn2Rest = 0x1.7f7d1cp-20;   // 15 bits: exact times an exponent of 8
    static constexpr double kExpLowest = -104, kExpHighest = 89;             // e^x is below half the least float, and past the largest
    static constexpr uint32_t kSqrtHalf = 0x3f3504f3, kOne = 0x3f800000, kNegativeNaN = 0xffc00000;
};
template <> struct Format<double> {
    static constexpr int kMantissa = 52, kBias = 1023;
    static constexpr double kSmallest = 0x1p-1022, kLargest = 0x1.fffffffffffffp1023;
    static constexpr double kLn2 = 0x1.62e42fefa38p-1, kLn2Rest = 0x1.ef35793c7673p-45;   // 42 bits: exact times an exponent of 11
    static constexpr double kExpLowest = -746, kExpHighest = 710;
    static constexpr uint64_t kSqrtHalf = 0x3fe6a09e667f3bcd, kOne = 0x3ff0000000000000, kNegativeNaN = 0xfff8000000000000;
};
template <class V> using FormatOf = Format<LaneOf<V>>;
template <class V> using Integers = Vec<decltype(+FormatOf<V>::kOne), kCount<V>>;
template <class V> constexpr bool isSingle = sizeof(LaneOf<V>) == 4;
template <class V> constexpr double kWhole = isSingle<V> ? 0x1.8p23 : 0x1.8p52;   // adding it rounds to an integer, which then stands in the low bits

// v * 2^k, for whole k of up to twice the exponents' range. The first product is exact, so a subnormal result is rounded only once.
template <class V> TEVS_INLINE V timesPowerOfTwo(V v, V k) {
    using F = FormatOf<V>;
    const V biased = constant<V>(kWhole<V> + F::kBias);
    const V half = k * constant<V>(0.5) + biased, rest = (k - (half - biased)) + biased;
    return v * (V)((Bits<V>)half << F::kMantissa) * (V)((Bits<V>)rest << F::kMantissa);
}

// e^x: x = k ln 2 + r, |r| <= ln 2 / 2, and e^r = 1 + r + r^2 q(r). The polynomial is off by 2^-27.5 of e^r for float, 2^-56 for double.
template <class V> TEVS_INLINE V exponential(V x) {
    using F = FormatOf<V>;
    x = atLeast(constant<V>(F::kExpLowest), atMost(constant<V>(F::kExpHighest), x));
    const V one = constant<V>(1), whole = constant<V>(kWhole<V>);
    const V k = (x * constant<V>(0x1.71547652b82fep+0) + whole) - whole;
    const V high = x - k * constant<V>(F::kLn2), low = k * constant<V>(F::kLn2Rest), r = high - low, z = r * r;
    V q;
    if constexpr (isSingle<V>)
        q = polynomial(r, 0x1p-1, 0x1.55548ep-3, 0x1.55545ep-5, 0x1.123b92p-7, 0x1.6db44cp-10);
    else
        q = polynomial(z, 0x1.000000000000cp-1, 0x1.555555554fff0p-5, 0x1.6c16c185b5d13p-10, 0x1.a019966b0e942p-16, 0x1.28b06ff082866p-22) +
            r * polynomial(z, 0x1.5555555555561p-3, 0x1.111111110d5ebp-7, 0x1.a01a01bafdb75p-13, 0x1.71dddf8ca335ep-19, 0x1.af85ee6d217d2p-26);
    const V sum = one + high, left = (one - sum) + high;
    return timesPowerOfTwo(sum + (left + (z * q - low)), k);
}

// Positive normal numbers, whose logarithm needs no care.
template <class V> TEVS_INLINE auto isOrdinary(V x) { return (x >= constant<V>(FormatOf<V>::kSmallest)) & (x <= constant<V>(FormatOf<V>::kLargest)); }

// ln(x 2^shift) for positive normal x: x = 2^k m, f = m - 1 in sqrt(1/2) - 1 .. sqrt(2) - 1, s = f / (2 + f), and
//     ln(1 + f) = 2 artanh(s) = f - (f^2 / 2 - s (f^2 / 2 + s^2 p(s^2)))
// The polynomial is off by 2^-30 of the logarithm for float, 2^-58.8 for double.
template <class V> TEVS_INLINE V logarithmOfOrdinary(V x, V shift) {
    using F = FormatOf<V>;
    using U = Integers<V>;
    const U from = (U)x - (F::kSqrtHalf - F::kOne);   // the exponent, biased, of x sqrt(2), in place
    // An integer below 2^kMantissa, as the low bits of 2^kMantissa.
    constexpr double base = isSingle<V> ? 0x1p23 : 0x1p52;
    const V k = ((V)(from >> F::kMantissa | (U)constant<V>(base)) - constant<V>(base + F::kBias)) + shift;
    const U exponent = from >> F::kMantissa << F::kMantissa;
    const V f = (V)((U)x - exponent + F::kOne) - constant<V>(1);
    const V s = f / (constant<V>(2) + f), z = s * s, half = constant<V>(0.5) * f * f;
    V p;
    if constexpr (isSingle<V>)
        p = polynomial(z, 0x1.55557ap-1, 0x1.995eaap-2, 0x1.31e4b2p-2);
    else {
        const V w = z * z;
        p = polynomial(w, 0x1.5555555555593p-1, 0x1.24924942044c5p-2, 0x1.74664284ba37ap-3, 0x1.2f0971a47e1a7p-3) +
            z * polynomial(w, 0x1.999999997fc76p-2, 0x1.c71c51f8c1849p-3, 0x1.39a1588790825p-3);
    }
    const V high = k * constant<V>(F::kLn2), sum = high + f, left = (high - sum) + f;
    return sum + (left - (half - (s * (half + z * p) + k * constant<V>(F::kLn2Rest))));
}

// ln x: -infinity for zeros, NaN with its sign set for negative numbers, infinity and NaN themselves. A lane's result does not depend on its neighbours'.
// Calls unusual() if some lane is not ordinary.
template <class V, class F> TEVS_INLINE V logarithm(V x, F unusual) {
    using Form = FormatOf<V>;
    if (!any(~isOrdinary(x))) [[likely]]
        return logarithmOfOrdinary(x, V{});
    unusual();
    constexpr double up = isSingle<V> ? 0x1p24 : 0x1p53, shift = isSingle<V> ? -24 : -53;
    const auto subnormal = x < constant<V>(Form::kSmallest);
    V y = logarithmOfOrdinary(subnormal ? x * constant<V>(up) : x, subnormal ? constant<V>(shift) : V{});
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
    const V t = (V)(((I)(a * (y * y)) + 0x800) & ~0xfff), r = a / (t * t);
    const V root = t + (r - t) * (t * y * constant<V>(1.0 / 3));
    const V scaled = tiny ? root * constant<V>(0x1p-8) : root;
    const auto ordinary = (ax > V{}) & (ax <= constant<V>(0x1.fffffep127));
    return ordinary ? (V)((I)scaled | (I)sign) : x + x;   // of zeros, infinities and NaN
}

}   // namespace
}   // namespace tevs::TEVS_LEVEL_NS
