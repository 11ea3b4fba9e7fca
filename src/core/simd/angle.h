// Arctangents over lanes of float, sines and cosines over lanes of either width, and arctangents over lanes of double in two qualities:
// "single" is good for one rounding to an integer of 16 bits, "double" for one to double.
//
// Every step is one rounded operation, none of them fused unless its product is exact, so results are the same to the bit at every level. The lanes of one vector do not know of each other:
// an unusual lane changes the path, not what comes out of the usual ones.
#pragma once

#include "core/angle.h"
#include "core/simd/real.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

constexpr double kPi = 0x1.921fb54442d18p+1, kPiLow = 0x1.1a62633145c07p-53;
constexpr double kInfinity = __builtin_inf();

// polynomial() by pairs of terms, w being z^2: one operation more, and half the wait from one to the next, which is what limits long ones.
template <class V> TEVS_INLINE V byPairs(V, V, double c) { return constant<V>(c); }
template <class V> TEVS_INLINE V byPairs(V z, V, double c, double d) { return constant<V>(c) + z * constant<V>(d); }
template <class V, class... C> TEVS_INLINE V byPairs(V z, V w, double c, double d, double e, C... rest) {
    return (constant<V>(c) + z * constant<V>(d)) + w * byPairs(z, w, e, rest...);
}

// ---- arctangent: minimax polynomials (Remez) behind one or two steps of the addition theorem ------------------------------------------
//
//     atan(a / b) = atan(c) + atan((a - c b) / (b + c a))
//
// The quotient is formed after the step, by the only division. Quadrants and the half turn follow C's atan2: signed zeros, infinities and NaN included.

// atan(r) for |r| <= tan(pi/8), off by 2^-30.5.
template <class V> TEVS_INLINE V smallArctanSingle(V r) {
    const V z = r * r;
    return r + r * (z * polynomial(z, -0x1.5555495d12fddp-2, 0x1.9991ad6a5867ep-3, -0x1.23b6bb1bc9e6ep-3, 0x1.b20234a5789abp-4, -0x1.f25655680d30bp-5));
}

// atan(a / b) for 0 <= a <= b, 2^-1000 < b < 2^1000. c is 0 or 1.
template <class V> TEVS_INLINE V octantSingle(V a, V b) {
    const auto far = a > b * constant<V>(0x1.a827999fcef32p-2);
    return (far ? constant<V>(kPi / 4) : V{}) + smallArctanSingle((a - (far ? b : V{})) / (b + (far ? a : V{})));
}

// For x and y that come from integers. Clamping keeps the quotient of zeros defined.
template <class V> TEVS_INLINE V angleSingle(V x, V y) {
    const V ax = abs(x), ay = abs(y);
    const auto steep = ay > ax;
    const V a = atMost(ax, ay), b = atLeast(constant<V>(1), atLeast(ay, ax));
    const V v = octantSingle(a, b), w = steep ? constant<V>(kPi / 2) - v : v;
    return withSign(bySign(x, constant<V>(kPi) - w, w), signOf(y));
}
// Of float lanes, by another route: no step, but a polynomial over all of 0 .. 1, off by 2^-25.8. Arctangents are off by 1.5 units, angles, whose quotient is rounded, by 2.
// r is signed as it is added to turn, whose own rounding error is the multiple of it that is added with the small terms.
template <class V> TEVS_INLINE V turnedArctan(V turn, V r) {
    const V z = r * r;
    const V p = byPairs(z, z * z, -0x1.5554dcp-2, 0x1.9978ecp-3, -0x1.230a92p-3, 0x1.b4de92p-4, -0x1.355080p-4, 0x1.61eda0p-5, -0x1.0c1636p-6, 0x1.7ea2a0p-9);
    return turn + (r + (r * (z * p) + turn * constant<V>(-0x1.de12cap-26)));
}
template <class V> TEVS_INLINE V angleFloat(V x, V y) {
    const V ax = abs(x), ay = abs(y);
    const auto steep = ay > ax;
    V a = atMost(ax, ay), b = atLeast(ay, ax);
    b = b == V{} ? constant<V>(1) : b;                 // not a least number, which a caller's control word may turn into 0
    if (any((Bits<V>)b > 0x7f7fffff)) [[unlikely]] {   // infinities and NaN
        const auto infinite = b == constant<V>(kInfinity);
        a = infinite ? (a == b ? constant<V>(1) : a * V{}) : a;
        b = infinite ? constant<V>(1) : b;
    }
    const V turn = steep ? constant<V>(kPi / 2) : bySign(x, constant<V>(kPi), V{});
    return withSign(turnedArctan(turn, flip(a / b, flip(signOf(x), steep ? constant<V>(-0.0) : V{}))), signOf(y));
}
template <class V> TEVS_INLINE V arctanFloat(V y) {
    const V t = abs(y), one = constant<V>(1);
    const auto far = t > one;
    return withSign(turnedArctan(far ? constant<V>(kPi / 2) : V{}, (far ? -one : t) / (far ? t : one)), signOf(y));
}

// atan(a / b) as a sum of two parts, for 0 <= a <= b of moderate size (isModerate). c is 0, 1/2 or 1: c b is exact and within a factor of two of a, so a - c b is exact
// as well (Sterbenz); |r| <= 1/4. The quotient's remainder is formed from half-length products (Dekker) and divided once more, by a product.
// The polynomial is off by 2^-63 of the result, its evaluation by 0.04 units.
template <class V> TEVS_INLINE Two<V> octantDouble(V a, V b) {
    const auto middle = a > b * constant<V>(0.25), far = a > b * constant<V>(0.75);
    const V c = far ? constant<V>(1) : middle ? constant<V>(0.5) : V{};
    const V turn = far ? constant<V>(kPi / 4) : middle ? constant<V>(0x1.dac670561bb4fp-2) : V{};
    const V turnLow = far ? constant<V>(kPiLow / 4) : middle ? constant<V>(0x1.a2b7f222f65e2p-56) : V{};
    const V ca = c * a, n = a - c * b, d = b + ca, dLow = (b - d) + ca;
    const V inverse = constant<V>(1) / d, r = n * inverse;
    const V rh = upperHalf(r), rl = r - rh, dh = upperHalf(d), dl = d - dh;
    const V remainder = (((n - rh * dh) - rh * dl) - rl * dh) - (rl * dl + r * dLow);
    const V z = r * r;
    const V p = byPairs(z, z * z, -0x1.5555555555553p-2, 0x1.9999999998d6bp-3, -0x1.24924923e941ap-3, 0x1.c71c7137392bdp-4, -0x1.745cf491ee5b4p-4,
                        0x1.3b0e9f76816eep-4, -0x1.109ba9426e7cep-4, 0x1.d4f19a8441490p-5, -0x1.478a44f024d88p-5);
    const V sum = turn + r;
    return {sum, ((turn - sum) + r) + (remainder * inverse + (turnLow + r * (z * p)))};
}

// No product in octantDouble leaves the range where its parts are exact.
template <class V> TEVS_INLINE auto isModerate(V a, V b) { return (a >= constant<V>(0x1p-500)) & (b <= constant<V>(0x1p500)); }

template <class V> TEVS_INLINE V angleDouble(V x, V y) {
    const V ax = abs(x), ay = abs(y);
    const auto steep = ay > ax;
    V a = atMost(ax, ay), b = atLeast(ay, ax);
    // Elsewhere quotients of zeros or infinities become 0 and 1, and other lanes are scaled. Where the quotient is below 2^-60 it is its own arctangent.
    const auto unusual = ~isModerate(a, b);
    const bool anyUnusual = any(unusual);
    V quotient{};
    Bits<V> tiny{};
    if (anyUnusual) [[unlikely]] {
        const auto infinite = b == constant<V>(kInfinity), zero = b == V{};
        quotient = zero ? a : a / b;
        tiny = unusual & ~infinite & (zero | (a < b * constant<V>(0x1p-60)));
        const V scale = b < constant<V>(0x1p-400) ? constant<V>(0x1p600) : b > constant<V>(0x1p400) ? constant<V>(0x1p-600) : constant<V>(1);
        a = infinite ? (a == b ? constant<V>(1) : a * V{}) : (unusual & ~zero) ? a * scale : a;   // a is 0 or NaN beside a zero, and a NaN stays one
        b = (infinite | zero) ? constant<V>(1) : unusual ? b * scale : b;
    }
    Two<V> v = octantDouble(a, b);
    if (anyUnusual) [[unlikely]] {
        v.a = tiny ? quotient : v.a;
        v.b = tiny ? V{} : v.b;
    }
    // pi/2 - v, pi/2 + v, pi - v or v itself, with the constant's lower part and the sum's error beside v's.
    const V sign = flip(signOf(x), steep ? constant<V>(-0.0) : V{});
    const V turn = steep ? constant<V>(kPi / 2) : bySign(x, constant<V>(kPi), V{}), h = flip(v.a, sign), l = flip(v.b, sign);
    const V sum = turn + h;
    return withSign(sum + (((turn - sum) + h) + (turn * constant<V>(kPiLow / kPi) + l)), signOf(y));
}
template <class V> TEVS_INLINE V arctanDouble(V y) {
    // Beyond 2^400 the result is pi/2 to the last bit. A small y is divided by 1, with a remainder of 0, so it needs no care.
    const V one = constant<V>(1), ay = atMost(constant<V>(0x1p400), abs(y));
    const auto steep = ay > one;
    const Two<V> v = octantDouble(atMost(one, ay), atLeast(one, ay));
    const V sign = steep ? constant<V>(-0.0) : V{}, turn = steep ? constant<V>(kPi / 2) : V{}, h = flip(v.a, sign), l = flip(v.b, sign);
    const V sum = turn + h;
    return withSign(sum + (((turn - sum) + h) + (turn * constant<V>(kPiLow / kPi) + l)), signOf(y));
}

// ---- sine and cosine: reduction to the nearest quarter turn, two polynomials, and an exchange by quadrant -----------------------------------------------

// Phases up to 2^20, in single precision 6000, are reduced by Cody and Waite's subtraction of parts of pi/2. The first two sum up to pi/2 in the lanes' precision: what they leave
// of a phase has no finer digits than a phase near pi/4, and is exact. The products of the quarter's number, 20 bits or 12, with the first three parts are exact as well.
template <class T> struct HalfPi;
template <> struct HalfPi<double> {
    static constexpr double kParts[] = {0x1.921fb544p+0, 0x1.0b46p-34, 0x1.1a626331p-54, 0x1.1701b839a252p-88}, kReducible = 0x1p20;
};
template <> struct HalfPi<float> { static constexpr double kParts[] = {0x1.922p+0, -0x1.28p-18, -0x1.778p-25, 0x1.68c234p-39}, kReducible = 6000; };

// phase = r + low + quarter * pi/2 for phase >= 0; the number of the quarter is right modulo 4.
template <class V> struct Reduced {
    V r, low;
    Bits<V> quarter;
};

template <class V> TEVS_INLINE Two<V> nearestQuarter(V phase) {
    // 1.5 * 2^52, or 2^23, has units in the last place: the sum's lowest bits are the integer.
    const V shifter = constant<V>(sizeof(phase[0]) == 4 ? 0x1.8p23 : 0x1.8p52), shifted = phase * constant<V>(0x1.45f306dc9c883p-1) + shifter;
    return {shifted - shifter, shifted};
}

// Out of line, and through memory: an index that is not a constant would keep the vectors there on the usual path too.
template <int N> __attribute__((noinline, cold)) void reduceLanes(const double* phase, const int64_t* which, double* r, double* low, int64_t* quarter) {
    for (int i = 0; i < N; ++i)
        if (which[i]) {
            double parts[2];
            quarter[i] = reducePhase(phase[i], parts);
            r[i] = parts[0];
            low[i] = parts[1];
        }
}
template <class V> TEVS_INLINE Reduced<V> reducedOneByOne(Reduced<V> to, V phase, Bits<V> which) {
    constexpr int n = kCount<V>;
    double phases[n], r[n], low[n];
    int64_t chosen[n], quarter[n];
    store(phases, phase);
    store(chosen, which);
    store(r, to.r);
    store(low, to.low);
    store(quarter, to.quarter);
    reduceLanes<n>(phases, chosen, r, low, quarter);
    return {load<double, n>(r), load<double, n>(low), loadAs<Bits<V>>(quarter)};
}

// low is what r leaves (Dekker's fast sum of two). Where t is the lesser term the difference may round once more, to a unit of the greater.
template <class V> TEVS_INLINE Reduced<V> reduceUsual(V phase) {
    using H = HalfPi<Element<V>>;
    const Two<V> quarter = nearestQuarter(phase);
    const V q = quarter.a, t = fnma(q, constant<V>(H::kParts[1]), fnma(q, constant<V>(H::kParts[0]), phase));
    const V third = constant<V>(H::kParts[2]), r = fnma(q, third, t);
    return {r, fnma(q, third, t - r) - q * constant<V>(H::kParts[3]), (Bits<V>)quarter.b};
}
// Good for a rest in single precision.
template <class V> TEVS_INLINE Reduced<V> reduceRoughly(V phase) {
    using H = HalfPi<Element<V>>;
    const Two<V> quarter = nearestQuarter(phase);
    const V q = quarter.a;
    return {fnma(q, constant<V>(H::kParts[0]), phase) - q * constant<V>(H::kParts[1] + H::kParts[2]), V{}, (Bits<V>)quarter.b};
}
// Member by member: the compiler would move a copy of the whole through memory.
template <class V> TEVS_INLINE void reduceFar(Reduced<V>& to, V phase) {
    const auto far = ~(phase <= constant<V>(HalfPi<double>::kReducible));
    if (any(far)) [[unlikely]] {
        const Reduced<V> exact = reducedOneByOne(to, phase, far);
        to.r = exact.r;
        to.low = exact.low;
        to.quarter = exact.quarter;
    }
}
template <class V> TEVS_INLINE Reduced<V> reduced(V phase) {
    Reduced<V> to = reduceUsual(phase);
    if constexpr (sizeof(phase[0]) == 8) {
        reduceFar(to, phase);
    } else if (const auto far = ~(phase <= constant<V>(HalfPi<float>::kReducible)); any(far)) [[unlikely]] {
        const auto wide = widen(phase);
        auto a = reduceRoughly(wide.a), b = reduceRoughly(wide.b);
        reduceFar(a, wide.a);
        reduceFar(b, wide.b);
        const V r = narrow(Two{a.r, b.r});
        const auto back = widen(r);
        to.r = far ? r : to.r;
        to.low = far ? narrow(Two{a.r - back.a, b.r - back.b}) : to.low;
        to.quarter = far ? evens((Bits<V>)a.quarter, (Bits<V>)b.quarter) : to.quarter;
    }
    return to;
}

// The quarters' lower bit as a sign bit, which exchanges sine and cosine, and the signs of both.
template <class V> struct Quadrant { V odd, cosine, sine; };
template <class V> TEVS_INLINE Quadrant<V> quadrantOf(Bits<V> quarter, V phase) {
    constexpr int top = 8 * int(sizeof(V{}[0])) - 1;
    return {(V)(quarter << top), signOf((V)((quarter + 1) << (top - 1))), signOf(flip((V)(quarter << (top - 1)), phase))};
}

// (re, im) = magnitude * (cos phase, sin phase). The cosine is off by up to 1.4 units, the sine by 0.7; their products, rounded once more, by 2.5.
template <class V> TEVS_INLINE V sineOver(V z) {
    if constexpr (sizeof(z[0]) == 4)
        return polynomial(z, -0x1.555546p-3, 0x1.110774p-7, -0x1.9951d8p-13);
    else
        return byPairs(z, z * z, -0x1.5555555555555p-3, 0x1.111111111110bp-7, -0x1.a01a01a018ae6p-13, 0x1.71de3a5339acfp-19, -0x1.ae64529894892p-26,
                       0x1.612092e78f177p-33, -0x1.aaa55f96c4421p-41);
}
template <class V> TEVS_INLINE V cosineOver(V z) {
    if constexpr (sizeof(z[0]) == 4)
        return polynomial(z, 0x1.55554ap-5, -0x1.6c0c28p-10, 0x1.99e80ap-16);
    else
        return byPairs(z, z * z, 0x1.555555555554cp-5, -0x1.6c16c16c15181p-10, 0x1.a01a019cb219ap-16, -0x1.27e4f80a35a8cp-22, 0x1.1ee9ec19d5103p-29,
                       -0x1.8faeb68577f3ap-37);
}
template <class V> TEVS_INLINE Two<V> cartesian(V magnitude, V phase) {
    const Reduced<V> to = reduced(abs(phase));
    const V r = to.r, low = to.low, z = r * r;
    const V sine = magnitude * (r + (low + r * (z * sineOver(z))));
    const V cosine = magnitude * (constant<V>(1) - (z * (constant<V>(0.5) - z * cosineOver(z)) + r * low));
    const auto quadrant = quadrantOf(to.quarter, phase);
    return {flip(bySign(quadrant.odd, sine, cosine), quadrant.cosine), flip(bySign(quadrant.odd, cosine, sine), quadrant.sine)};
}

}   // namespace
}   // namespace tevs::TEVS_LEVEL_NS
