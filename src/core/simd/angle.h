// Arctangents, sines and cosines over lanes of double, in two qualities: "single" is good for one rounding to single precision, "double" for one to double.
// Single-precision samples come here widened: with 29 bits to spare nothing overflows, underflows or needs care, and half the lanes cost less than
// the corrections that their own width would need.
//
// Every step is one rounded operation, none of them fused, so results are the same to the bit at every level. The lanes of one vector do not know of each other:
// an unusual lane changes the path, not what comes out of the usual ones.
#pragma once

#include "core/angle.h"
#include "core/simd/real.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

constexpr double kPi = 0x1.921fb54442d18p+1, kPiLow = 0x1.1a62633145c07p-53;
constexpr double kInfinity = __builtin_inf();

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

// For x and y that come from single precision. Clamping keeps quotients of zeros and infinities defined: the true ones lie between 2^-277 and 2^277.
template <class V> TEVS_INLINE V angleSingle(V x, V y) {
    const V ax = abs(x), ay = abs(y), huge = constant<V>(0x1p900);
    const auto steep = ay > ax;
    const V a = atMost(huge, atMost(ax, ay)), b = atLeast(constant<V>(0x1p-900), atMost(huge, atLeast(ay, ax)));
    const V v = octantSingle(a, b), w = steep ? constant<V>(kPi / 2) - v : v;
    return withSign(bySign(x, constant<V>(kPi) - w, w), signOf(y));
}
// atan(t) for t >= 0: c is 0, 1 or infinity, where it turns into pi/2 - atan(1 / t).
template <class V> TEVS_INLINE V arctanSingle(V t) {
    const V one = constant<V>(1);
    const auto middle = t > constant<V>(0x1.a827999fcef32p-2), far = t > constant<V>(0x1.3504f333f9de6p+1);
    const V n = far ? -one : t - (middle ? one : V{}), d = far ? t : one + (middle ? t : V{});
    return (far ? constant<V>(kPi / 2) : middle ? constant<V>(kPi / 4) : V{}) + smallArctanSingle(n / d);
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
    const V p = polynomial(z, -0x1.5555555555553p-2, 0x1.9999999998d6bp-3, -0x1.24924923e941ap-3, 0x1.c71c7137392bdp-4, -0x1.745cf491ee5b4p-4,
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

// Phases up to 2^20 are reduced by Cody and Waite's subtraction of parts of pi/2: the products of the quarter's number, 20 bits, with the upper parts, 33 bits, are exact.
constexpr double kHalfPiParts[] = {0x1.921fb544p+0, 0x1.0b4611a6p-34, 0x1.3198a2e037073p-69};
constexpr double kHalfPiRest = 0x1.0b4611a626331p-34;   // all that the first part leaves
constexpr double kReducible = 0x1p20;

// phase = r + low + quarter * pi/2 for phase >= 0; the number of the quarter is right modulo 4.
template <class V> struct Reduced {
    V r, low;
    Bits<V> quarter;
};

template <class V> TEVS_INLINE Two<V> nearestQuarter(V phase) {
    // 1.5 * 2^52 has units in the last place: the sum's lowest bits are the integer.
    const V shifter = constant<V>(0x1.8p52), shifted = phase * constant<V>(0x1.45f306dc9c883p-1) + shifter;
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

template <class V> TEVS_INLINE Reduced<V> reduceSingle(V phase) {
    const Two<V> quarter = nearestQuarter(phase);
    return {(phase - quarter.a * constant<V>(kHalfPiParts[0])) - quarter.a * constant<V>(kHalfPiRest), V{}, (Bits<V>)quarter.b};
}

template <class V> TEVS_INLINE Reduced<V> reduceDouble(V phase) {
    const Two<V> quarter = nearestQuarter(phase);
    const V q = quarter.a, t = phase - q * constant<V>(kHalfPiParts[0]), w = q * constant<V>(kHalfPiParts[1]);   // both exact
    const V s = t - w, back = s - t, error = (t - (s - back)) - (w + back);                                      // Knuth's sum of two
    const V rest = error - q * constant<V>(kHalfPiParts[2]), r = s + rest;
    Reduced<V> to = {r, (s - r) + rest, (Bits<V>)quarter.b};
    // The third product is off by 2^-119 q, which is too much for phases that all but equal a multiple of pi/2.
    const auto far = ~((phase <= constant<V>(kReducible)) & (abs(r) >= q * constant<V>(0x1p-60)));
    if (any(far)) [[unlikely]]
        return reducedOneByOne(to, phase, far);
    return to;
}

// The quarters' lower bit as a sign bit, which exchanges sine and cosine, and the signs of both.
template <class V> struct Quadrant { V odd, cosine, sine; };
template <class V> TEVS_INLINE Quadrant<V> quadrantOf(Bits<V> quarter, V phase) {
    constexpr int top = 8 * int(sizeof(V{}[0])) - 1;
    return {(V)(quarter << top), signOf((V)((quarter + 1) << (top - 1))), signOf(flip((V)(quarter << (top - 1)), phase))};
}

// The sine and cosine of a reduced phase times m.
template <class V> TEVS_INLINE Two<V> productsSingle(V m, V r) {
    const V z = r * r;
    const V sine = r + r * (z * polynomial(z, -0x1.5555554cb9d5ap-3, 0x1.111108963d279p-7, -0x1.a00f9d9c158fap-13, 0x1.6cd85632e04fcp-19));
    const V cosine = (constant<V>(1) - constant<V>(0.5) * z) + (z * z) * polynomial(z, 0x1.55554ab43370cp-5, -0x1.6c0c8bcc953ccp-10, 0x1.9a025a16fd34cp-16);
    return {m * sine, m * cosine};
}

// (re, im) = magnitude * (cos phase, sin phase), of lanes of float.
template <class F> TEVS_INLINE Two<F> cartesianSingle(F magnitude, F phase) {
    using I = Bits<F>;
    const F turned = abs(phase);
    const auto m = widen(magnitude), p = widen(turned);
    auto a = reduceSingle(p.a), b = reduceSingle(p.b);
    if (any(~(turned <= constant<F>(kReducible)))) [[unlikely]] {
        a = reducedOneByOne(a, p.a, ~(p.a <= constant<decltype(p.a)>(kReducible)));
        b = reducedOneByOne(b, p.b, ~(p.b <= constant<decltype(p.b)>(kReducible)));
    }
    const auto x = productsSingle(m.a, a.r), y = productsSingle(m.b, b.r);
    const F sine = narrow(Two{x.a, y.a}), cosine = narrow(Two{x.b, y.b});
    const auto quadrant = quadrantOf(evens((I)a.quarter, (I)b.quarter), phase);
    return {flip(bySign(quadrant.odd, sine, cosine), quadrant.cosine), flip(bySign(quadrant.odd, cosine, sine), quadrant.sine)};
}

// m * (high + low), where high is the greater: rounded once but for 2^-26 of a unit, since the product of upper halves is exact.
template <class V> TEVS_INLINE V productOf(V m, V high, V low) {
    const V sum = high + low, rest = (high - sum) + low;
    const V mh = upperHalf(m), ml = m - mh, sh = upperHalf(sum), sl = (sum - sh) + rest;
    return mh * sh + (mh * sl + ml * sum);
}

template <class V> TEVS_INLINE Two<V> cartesianDouble(V magnitude, V phase) {
    const Reduced<V> to = reduceDouble(abs(phase));
    // r^2 with its rounding error (Dekker): next to pi/4 that error alone would be a quarter of a unit of the cosine.
    const V r = to.r, low = to.low, rHigh = upperHalf(r), z = r * r, zLow = (rHigh * rHigh - z) + (r - rHigh) * (r + rHigh);
    const V half = constant<V>(0.5) * z, cosHigh = constant<V>(1) - half;
    const V p = polynomial(z, -0x1.5555555555555p-3, 0x1.111111111110bp-7, -0x1.a01a01a018ae6p-13, 0x1.71de3a5339acfp-19, -0x1.ae64529894892p-26,
                           0x1.612092e78f177p-33, -0x1.aaa55f96c4421p-41);
    const V q = polynomial(z, 0x1.555555555554cp-5, -0x1.6c16c16c15181p-10, 0x1.a01a019cb219ap-16, -0x1.27e4f80a35a8cp-22, 0x1.1ee9ec19d5103p-29,
                           -0x1.8faeb68577f3ap-37);
    const V sinLow = low * cosHigh + r * (z * p - zLow * constant<V>(1.0 / 6));
    const V cosLow = ((constant<V>(1) - cosHigh) - half) + ((z * z) * q - (r * low + zLow * constant<V>(0.5)));
    // Half-length products that underflow round more than once, and of an infinity there is no lower half.
    V m = abs(magnitude);
    const auto unusual = ~((m * abs(r) >= constant<V>(0x1p-900)) & (m < constant<V>(kInfinity)));
    const bool anyUnusual = any(unusual);
    const auto scaled = unusual & (m < constant<V>(0x1p500));
    if (anyUnusual) [[unlikely]]
        m = scaled ? m * constant<V>(0x1p200) : m;
    V ms = productOf(m, r, sinLow), mc = productOf(m, cosHigh, cosLow);
    if (anyUnusual) [[unlikely]] {
        const auto finite = m < constant<V>(kInfinity);
        const V unscale = scaled ? constant<V>(0x1p-200) : constant<V>(1);
        ms = finite ? ms * unscale : m * r;
        mc = finite ? mc * unscale : m * cosHigh;
    }
    ms = withSign(abs(ms), signOf(r));   // of a zero, too
    const auto quadrant = quadrantOf(to.quarter, phase);
    const V sign = signOf(magnitude);
    return {flip(bySign(quadrant.odd, ms, mc), flip(quadrant.cosine, sign)), flip(bySign(quadrant.odd, mc, ms), flip(quadrant.sine, sign))};
}

}   // namespace
}   // namespace tevs::TEVS_LEVEL_NS
