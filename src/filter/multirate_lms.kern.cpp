#include "filter/multirate_lms.table.h"

#include "core/complex.h"
#include "core/simd/vec.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

constexpr int kInts = kLanes<int32_t>;
using Ints = Vec<int32_t, kInts>;
using Longs = Vec<int64_t, kInts / 2>;
using Doubles = Vec<double, kInts / 2>;

// ---- dot products ---------------------------------------------------------------------------------------------------------------------------

TEVS_INLINE Ints odd(Ints v) { return (Ints)((Vec<uint64_t, kInts / 2>)v >> 32); }
TEVS_INLINE int64_t total(Longs v) {
    int64_t sum = 0;
    for (int i = 0; i < kInts / 2; ++i) sum += v[i];
    return sum;
}

template <bool Adapts> TEVS_INLINE OutputAndPower pass(const float* before, float g, const float* in, float* taps, int n) {
    using V = Vec<float, kInts>;
    constexpr int A = 2;
    const V all = same<V>(g);
    V sum[A] = {}, power[A] = {};
    const auto at = [&](const float* b, const float* x, float* h, int a) TEVS_HERE {
        V t = load<float, kInts>(h);
        const V v = load<float, kInts>(x);
        if constexpr (Adapts) {
            t = fma(all, load<float, kInts>(b), t);
            store(h, t);
        }
        sum[a] = fma(t, v, sum[a]);
        power[a] = fma(v, v, power[a]);
    };
    int j = 0;
    for (; j + A * kInts <= n; j += A * kInts)
        for (int a = 0; a < A; ++a) at(before + j + a * kInts, in + j + a * kInts, taps + j + a * kInts, a);
    for (; j + kInts <= n; j += kInts) at(before + j, in + j, taps + j, 0);
    OutputAndPower r = {0, 0};
    for (; j < n; ++j) {
        using One = Vec<float, 1>;   // moved with the rounding that a vector has: every cut of a stream gives the same bits
        float h = taps[j];
        if (Adapts) taps[j] = h = fma(One{g}, One{before[j]}, One{h})[0];
        r.output += h * in[j];
        r.power += in[j] * in[j];
    }
    const V y = sum[0] + sum[1], p = power[0] + power[1];
    for (int i = 0; i < kInts; ++i) r.output += y[i], r.power += p[i];
    return r;
}
OutputAndPower dot32f(const float* in, const float* taps, int n) { return pass<false>(nullptr, 0, in, const_cast<float*>(taps), n); }
OutputAndPower adaptAndDot32f(const float* before, float g, const float* in, float* taps, int n) { return pass<true>(before, g, in, taps, n); }

float power32f(const float* in, int n) {
    using V = Vec<float, kInts>;
    V sum[2] = {};
    int j = 0;
    for (; j + 2 * kInts <= n; j += 2 * kInts)
        for (int a = 0; a < 2; ++a) {
            const V v = load<float, kInts>(in + j + a * kInts);
            sum[a] = fma(v, v, sum[a]);
        }
    const V all = sum[0] + sum[1];
    float total = 0;
    for (int i = 0; i < kInts; ++i) total += all[i];
    for (; j < n; ++j) total += in[j] * in[j];
    return total;
}

int64_t dot16s(const int16_t* in, const int32_t* taps, int n) {
    Longs sum = {};
    int j = 0;
    for (; j + kInts <= n; j += kInts) {
        const Ints x = loadWide<kInts>(in + j), t = load<int32_t, kInts>(taps + j);
        sum += mulEven(x, t) + mulEven(odd(x), odd(t));
    }
    int64_t rest = 0;
    for (; j < n; ++j) rest += int64_t{taps[j]} * in[j];
    return total(sum) + rest;
}
Complex64s dot16sc(const Complex16s* in, const Complex32s* taps, int n) {
    Longs re = {}, im = {};
    int j = 0;
    for (; j + kInts / 2 <= n; j += kInts / 2) {
        const Ints x = loadWide<kInts>(partsOf(in + j)), t = load<int32_t, kInts>(partsOf(taps + j));
        re += mulEven(x, t) - mulEven(odd(x), odd(t));
        im += mulEven(odd(x), t) + mulEven(x, odd(t));
    }
    Complex64s sum = {total(re), total(im)};
    for (; j < n; ++j) {
        sum.re += int64_t{taps[j].re} * in[j].re - int64_t{taps[j].im} * in[j].im;
        sum.im += int64_t{taps[j].re} * in[j].im + int64_t{taps[j].im} * in[j].re;
    }
    return sum;
}

// ---- steps ----------------------------------------------------------------------------------------------------------------------------------

// Rounded to nearest, ties to even; 0 for NaN, unless steps are Bounded: known to be numbers of less than 2^41. What is beyond that saturates whatever it is added to.
template <bool Bounded> TEVS_INLINE Doubles wholeStep(Doubles p) {
    constexpr double kMost = 0x1p40, kToWhole = 0x1.8p52;
    if constexpr (!Bounded) {
        const auto number = isAtMost(p, p);   // no NaN
        p = atLeast(same<Doubles>(-kMost), atMost(same<Doubles>(kMost), p));
        p = (Doubles)((Longs)p & number);
    }
    return (p + kToWhole) - kToWhole;
}
// What is below the range converts to its least number by itself.
TEVS_INLINE Doubles saturated(Doubles v) { return atMost(same<Doubles>(0x1p31 - 1), v); }

// product(samples) for each half of a vector of parts. What does not fill one passes through a copy.
template <bool Bounded, class F> TEVS_INLINE void adaptBy(const int16_t* in, int32_t* taps, int64_t n, F product) {
    const auto step = [&](const int16_t* x, int32_t* t) TEVS_HERE {
        const Two<Doubles> samples = widen(Ints(loadWide<kInts>(x))), before = widen(Ints(load<int32_t, kInts>(t)));
        const Doubles a = before.a + wholeStep<Bounded>(product(samples.a)), b = before.b + wholeStep<Bounded>(product(samples.b));
        store(t, nearestInt(Two<Doubles>{saturated(a), saturated(b)}));
    };
    int64_t j = 0;
    for (; j + kInts <= n; j += kInts) step(in + j, taps + j);
    if (j == n) return;
    int16_t x[kInts] = {};
    int32_t t[kInts] = {};
    memcpy(x, in + j, size_t(n - j) * sizeof x[0]);
    memcpy(t, taps + j, size_t(n - j) * sizeof t[0]);
    step(x, t);
    memcpy(taps + j, t, size_t(n - j) * sizeof t[0]);
}
TEVS_INLINE bool isSmall(double g) { return g >= -0x1p24 && g <= 0x1p24; }
template <class F> TEVS_INLINE void adaptInts(const int16_t* in, int32_t* taps, int64_t n, bool bounded, F product) {
    bounded ? adaptBy<true>(in, taps, n, product) : adaptBy<false>(in, taps, n, product);
}

template <class V, int... I> TEVS_INLINE V alternating(Element<V> a, Element<V> b, Lane<I...>) { return V{(I % 2 ? b : a)...}; }
template <class V> TEVS_INLINE V alternating(Element<V> a, Element<V> b) { return alternating<V>(a, b, Iota<kCount<V>>{}); }

void adapt16s(const int16_t* in, int32_t* taps, int n, double g) {
    const Doubles all = same<Doubles>(g);
    adaptInts(in, taps, n, isSmall(g), [=](Doubles x) { return all * x; });
}
// g conj(x) = (g.re x.re + g.im x.im) + i (g.im x.re - g.re x.im)
void adapt16sc(const Complex16s* in, Complex32s* taps, int n, Complex64f g) {
    const Doubles straight = alternating<Doubles>(g.re, -g.re), across = same<Doubles>(g.im);
    adaptInts(partsOf(in), partsOf(taps), 2 * int64_t{n}, isSmall(g.re) && isSmall(g.im), [=](Doubles x) { return straight * x + across * swapPairs(x); });
}

void adapt32fc(const Complex32f* in, Complex32f* taps, int n, Complex32f g) {
    using V = Vec<float, kInts>;
    const V straight = alternating<V>(g.re, -g.re), across = same<V>(g.im);
    const auto step = [=](const Complex32f* x, Complex32f* t) TEVS_HERE {
        const V samples = load<float, kInts>(partsOf(x));
        store(t, load<float, kInts>(partsOf(t)) + fma(swapPairs(samples), across, samples * straight));
    };
    int j = 0;
    for (; j + kInts / 2 <= n; j += kInts / 2) step(in + j, taps + j);
    if (j == n) return;
    Complex32f x[kInts / 2] = {}, t[kInts / 2] = {};
    memcpy(x, in + j, size_t(n - j) * sizeof x[0]);
    memcpy(t, taps + j, size_t(n - j) * sizeof t[0]);
    step(x, t);
    memcpy(taps + j, t, size_t(n - j) * sizeof t[0]);
}

}   // namespace

extern const MultirateLmsKernels multirateLms = {.dot32f = dot32f,
                                                 .adaptAndDot32f = adaptAndDot32f,
                                                 .power32f = power32f,
                                                 .dot16s = dot16s,
                                                 .dot16sc = dot16sc,
                                                 .adapt16s = adapt16s,
                                                 .adapt16sc = adapt16sc,
                                                 .adapt32fc = adapt32fc};

}   // namespace tevs::TEVS_LEVEL_NS
