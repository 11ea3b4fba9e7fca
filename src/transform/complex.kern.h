// Complex vectors, and the straight-line DFTs that the passes are made of.
#pragma once

#include "core/simd/vec.h"
#include "transform/fft.plan.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// Separate real and imaginary parts, so that a product needs no shuffle.
template <class V> struct Cx { V re, im; };
template <class V> TEVS_INLINE Cx<V> operator+(Cx<V> a, Cx<V> b) { return {a.re + b.re, a.im + b.im}; }
template <class V> TEVS_INLINE Cx<V> operator-(Cx<V> a, Cx<V> b) { return {a.re - b.re, a.im - b.im}; }
template <class V> TEVS_INLINE Cx<V> plusI(Cx<V> a, Cx<V> b) { return {a.re - b.im, a.im + b.re}; }    // a + i b
template <class V> TEVS_INLINE Cx<V> minusI(Cx<V> a, Cx<V> b) { return {a.re + b.im, a.im - b.re}; }   // a - i b
template <class V> TEVS_INLINE Cx<V> swapped(Cx<V> a) { return {a.im, a.re}; }
template <class V> TEVS_INLINE Cx<V> mul(Cx<V> a, Cx<V> w) { return {fnma(a.im, w.im, a.re * w.re), fma(a.im, w.re, a.re * w.im)}; }
template <class V> TEVS_INLINE Cx<V> times(Cx<V> a, float f) { return {a.re * (V{} + f), a.im * (V{} + f)}; }
template <class V> TEVS_INLINE Cx<V> mul(Cx<V> a, float c, float s) { return mul(a, Cx<V>{V{} + c, V{} + s}); }

constexpr float kSqrtHalf = 0.70710678118654752440f;
constexpr float kCos16 = 0.92387953251128675613f;   // of a sixteenth turn
constexpr float kSin16 = 0.38268343236508977173f;

// Forward DFTs, natural order in and out. The inverse is the same with real and imaginary parts exchanged on the way in and out.
template <class V> TEVS_INLINE void dft(Cx<V> (&x)[4]) {
    const auto a = x[0] + x[2], b = x[0] - x[2], c = x[1] + x[3], d = x[1] - x[3];
    x[0] = a + c;
    x[2] = a - c;
    x[1] = minusI(b, d);
    x[3] = plusI(b, d);
}

// Radix 2 by 4. The factor sqrt(1/2) of w_8 and w_8^3 is taken out of both and applied where their sum and difference join the rest.
template <class V> TEVS_INLINE void dft(Cx<V> (&x)[8]) {
    const V h = V{} + kSqrtHalf;
    Cx<V> even[4] = {x[0] + x[4], x[1] + x[5], x[2] + x[6], x[3] + x[7]};
    const auto d0 = x[0] - x[4], d1 = x[1] - x[5], d2 = x[2] - x[6], d3 = x[3] - x[7];
    const auto p = minusI(d0, d2), q = plusI(d0, d2);
    const Cx<V> e = {d1.re + d1.im, d1.im - d1.re};   // sqrt(2) w_8 d1
    const Cx<V> f = {d3.im - d3.re, d3.re + d3.im};   // sqrt(2) w_8^3 d3, imaginary part negated
    const Cx<V> s = {e.re + f.re, e.im - f.im}, t = {e.re - f.re, e.im + f.im};
    dft(even);
    x[0] = even[0];
    x[2] = even[1];
    x[4] = even[2];
    x[6] = even[3];
    x[1] = {fma(h, s.re, p.re), fma(h, s.im, p.im)};
    x[5] = {fnma(h, s.re, p.re), fnma(h, s.im, p.im)};
    x[3] = {fma(h, t.im, q.re), fnma(h, t.re, q.im)};
    x[7] = {fnma(h, t.im, q.re), fma(h, t.re, q.im)};
}

// Radix 4 by 4.
template <class V> TEVS_INLINE void dft(Cx<V> (&x)[16]) {
    const V h = V{} + kSqrtHalf;
    Cx<V> y[4][4];
    for (int b = 0; b < 4; ++b) {
        Cx<V> t[4] = {x[b], x[b + 4], x[b + 8], x[b + 12]};
        dft(t);
        for (int j = 0; j < 4; ++j) y[j][b] = t[j];
    }
    const auto w2 = [=](Cx<V> a) { return Cx<V>{(a.re + a.im) * h, (a.im - a.re) * h}; };    // w_8 a
    const auto w6 = [=](Cx<V> a) { return Cx<V>{(a.im - a.re) * h, (a.re + a.im) * -h}; };   // w_8^3 a
    y[1][1] = mul(y[1][1], kCos16, -kSin16);
    y[1][2] = w2(y[1][2]);
    y[1][3] = mul(y[1][3], kSin16, -kCos16);
    y[2][1] = w2(y[2][1]);
    y[2][2] = {y[2][2].im, -y[2][2].re};
    y[2][3] = w6(y[2][3]);
    y[3][1] = mul(y[3][1], kSin16, -kCos16);
    y[3][2] = w6(y[3][2]);
    y[3][3] = mul(y[3][3], -kCos16, kSin16);
    for (int j = 0; j < 4; ++j) {
        dft(y[j]);
        for (int l = 0; l < 4; ++l) x[j + 4 * l] = y[j][l];
    }
}

// ---- blocks -------------------------------------------------------------------------------------------------------------------------

// A block is K real parts followed by K imaginary parts. Between interleaved memory and a block, only shuffles that stay within 128 bits are
// used, one each; the lane order that results (laneAt) is undone by the same shuffles on the way out.
template <auto From, class V, int... I> TEVS_INLINE V shuffle(V a, V b, Lane<I...>) { return __builtin_shufflevector(a, b, From(I)...); }
template <auto From, class V> TEVS_INLINE V shuffle(V a, V b) { return shuffle<From>(a, b, Iota<kCount<V>>{}); }

template <class V> TEVS_INLINE Cx<V> separated(V a, V b) {
    constexpr int K = kCount<V>;
    return {shuffle<[](int i) { return (i & ~3) + (i & 1) * 2 + (i & 2 ? K : 0); }>(a, b),
            shuffle<[](int i) { return (i & ~3) + (i & 1) * 2 + 1 + (i & 2 ? K : 0); }>(a, b)};
}
template <int K> TEVS_INLINE Cx<Vec<float, K>> loadPairs(const float* p) { return separated(load<float, K>(p), load<float, K>(p + K)); }
template <class V> TEVS_INLINE Two<V> interleaved(Cx<V> v) {
    constexpr int K = kCount<V>;
    return {shuffle<[](int i) { return (i & ~3) + (i & 2) / 2 + (i & 1 ? K : 0); }>(v.re, v.im),
            shuffle<[](int i) { return (i & ~3) + 2 + (i & 2) / 2 + (i & 1 ? K : 0); }>(v.re, v.im)};
}
template <int K> TEVS_INLINE void storePairs(float* p, Cx<Vec<float, K>> v) { store(p, interleaved(v)); }
template <int K> TEVS_INLINE Cx<Vec<float, K>> loadBlock(const float* p) { return {load<float, K>(p), load<float, K>(p + K)}; }
template <int K> TEVS_INLINE void storeBlock(float* p, Cx<Vec<float, K>> v) {
    store(p, v.re);
    store(p + K, v.im);
}
TEVS_INLINE Cx<Vec<float, 4>> reversed(Cx<Vec<float, 4>> v) { return {reverse(v.re), reverse(v.im)}; }
TEVS_INLINE Cx<Vec<float, 8>> reversed(Cx<Vec<float, 8>> v) { return {reverse(v.re), reverse(v.im)}; }

// Row r of K goes in, column r comes out; lanes in block order on both sides.
template <class V, int K> TEVS_INLINE void transpose(V (&x)[K]) {
    constexpr auto low1 = [](int i) { return (i & ~3) + (i & 3) / 2 + (i & 1 ? K : 0); };
    constexpr auto high1 = [](int i) { return (i & ~3) + 2 + (i & 3) / 2 + (i & 1 ? K : 0); };
    constexpr auto low2 = [](int i) { return (i & ~3) + (i & 1) + (i & 2 ? K : 0); };
    constexpr auto high2 = [](int i) { return (i & ~3) + 2 + (i & 1) + (i & 2 ? K : 0); };
    V s[K];
    for (int g = 0; g < K; g += 4) {
        const V a = x[laneAt(K, g)], b = x[laneAt(K, g + 1)], c = x[laneAt(K, g + 2)], d = x[laneAt(K, g + 3)];
        const V t0 = shuffle<low1>(a, b), t1 = shuffle<high1>(a, b), t2 = shuffle<low1>(c, d), t3 = shuffle<high1>(c, d);
        s[g] = shuffle<low2>(t0, t2);
        s[g + 1] = shuffle<high2>(t0, t2);
        s[g + 2] = shuffle<low2>(t1, t3);
        s[g + 3] = shuffle<high2>(t1, t3);
    }
    for (int c = 0; c < 4; ++c) {
        if constexpr (K == 4) x[c] = s[c];
        if constexpr (K == 8) {
            x[laneAt(K, c)] = shuffle<[](int i) { return i < 4 ? i : i - 4 + K; }>(s[c], s[4 + c]);
            x[laneAt(K, 4 + c)] = shuffle<[](int i) { return i < 4 ? i + 4 : i + K; }>(s[c], s[4 + c]);
        }
    }
}
template <int K> TEVS_INLINE void transpose(Cx<Vec<float, K>>* x) {
    Vec<float, K> re[K], im[K];
    for (int l = 0; l < K; ++l) re[l] = x[l].re;
    transpose(re);
    for (int l = 0; l < K; ++l) im[l] = x[l].im;
    transpose(im);
    for (int l = 0; l < K; ++l) x[l] = {re[l], im[l]};
}

}   // namespace
}   // namespace tevs::TEVS_LEVEL_NS
