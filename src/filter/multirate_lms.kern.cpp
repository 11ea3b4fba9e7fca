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

// Rounded to nearest, ties to even; 0 for NaN. A step beyond 2^40 saturates whatever it is added to.
TEVS_INLINE Doubles wholeStep(Doubles p) {
    constexpr double kMost = 0x1p40, kToWhole = 0x1.8p52;
    const auto number = isAtMost(p, p);   // no NaN
    p = atLeast(same<Doubles>(-kMost), atMost(same<Doubles>(kMost), p));
    p = (Doubles)((Longs)p & number);
    return (p + kToWhole) - kToWhole;
}
TEVS_INLINE Doubles saturated(Doubles v) { return atLeast(same<Doubles>(-0x1p31), atMost(same<Doubles>(0x1p31 - 1), v)); }

// product(samples) for each half of a vector of parts. What does not fill one passes through a copy.
template <class F> TEVS_INLINE void adaptInts(const int16_t* in, int32_t* taps, int64_t n, F product) {
    const auto step = [&](const int16_t* x, int32_t* t) __attribute__((always_inline)) {
        const Two<Doubles> samples = widen(Ints(loadWide<kInts>(x))), before = widen(Ints(load<int32_t, kInts>(t)));
        store(t, nearestInt(Two<Doubles>{saturated(before.a + wholeStep(product(samples.a))), saturated(before.b + wholeStep(product(samples.b)))}));
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

template <class V, int... I> TEVS_INLINE V alternating(Element<V> a, Element<V> b, Lane<I...>) { return V{(I % 2 ? b : a)...}; }
template <class V> TEVS_INLINE V alternating(Element<V> a, Element<V> b) { return alternating<V>(a, b, Iota<kCount<V>>{}); }

void adapt16s(const int16_t* in, int32_t* taps, int n, double g) {
    const Doubles all = same<Doubles>(g);
    adaptInts(in, taps, n, [=](Doubles x) { return all * x; });
}
// g conj(x) = (g.re x.re + g.im x.im) + i (g.im x.re - g.re x.im)
void adapt16sc(const Complex16s* in, Complex32s* taps, int n, Complex64f g) {
    const Doubles straight = alternating<Doubles>(g.re, -g.re), across = same<Doubles>(g.im);
    adaptInts(partsOf(in), partsOf(taps), 2 * int64_t{n}, [=](Doubles x) { return straight * x + across * swapPairs(x); });
}

void adapt32fc(const Complex32f* in, Complex32f* taps, int n, Complex32f g) {
    using V = Vec<float, kInts>;
    const V straight = alternating<V>(g.re, -g.re), across = same<V>(g.im);
    const auto step = [=](const Complex32f* x, Complex32f* t) __attribute__((always_inline)) {
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

extern const MultirateLmsKernels multirateLms = {.dot16s = dot16s, .dot16sc = dot16sc, .adapt16s = adapt16s, .adapt16sc = adapt16sc, .adapt32fc = adapt32fc};

}   // namespace tevs::TEVS_LEVEL_NS
