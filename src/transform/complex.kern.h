// Complex vectors, and the straight-line DFTs that the passes are made of.
#pragma once

#include "core/simd/vec.h"
#include "transform/fft.table.h"

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
template <class V> TEVS_INLINE Cx<V> times(Cx<V> a, Element<V> f) { return {a.re * same<V>(f), a.im * same<V>(f)}; }
template <class V> TEVS_INLINE Cx<V> mul(Cx<V> a, Element<V> c, Element<V> s) { return mul(a, Cx<V>{same<V>(c), same<V>(s)}); }

constexpr double kSqrtHalf = 0.70710678118654752440;
constexpr double kCos16 = 0.92387953251128675613;   // of a sixteenth turn
constexpr double kSin16 = 0.38268343236508977173;

// Forward DFTs, natural order in and out. The inverse is the same with real and imaginary parts exchanged on the way in and out.
template <class V> TEVS_INLINE void dft(Cx<V> (&x)[2]) {
    const auto sum = x[0] + x[1], difference = x[0] - x[1];
    x[0] = sum;
    x[1] = difference;
}

template <class V> TEVS_INLINE void dft(Cx<V> (&x)[4]) {
    const auto a = x[0] + x[2], b = x[0] - x[2], c = x[1] + x[3], d = x[1] - x[3];
    x[0] = a + c;
    x[2] = a - c;
    x[1] = minusI(b, d);
    x[3] = plusI(b, d);
}

// Radix 2 by 4. The factor sqrt(1/2) of w_8 and w_8^3 is taken out of both and applied where their sum and difference join the rest.
template <class V> TEVS_INLINE void dft(Cx<V> (&x)[8]) {
    const V h = same<V>(Element<V>(kSqrtHalf));
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
    const V h = same<V>(Element<V>(kSqrtHalf));
    Cx<V> y[4][4];
    for (int b = 0; b < 4; ++b) {
        Cx<V> t[4] = {x[b], x[b + 4], x[b + 8], x[b + 12]};
        dft(t);
        for (int j = 0; j < 4; ++j) y[j][b] = t[j];
    }
    const auto w2 = [=](Cx<V> a) { return Cx<V>{(a.re + a.im) * h, (a.im - a.re) * h}; };    // w_8 a
    const auto w6 = [=](Cx<V> a) { return Cx<V>{(a.im - a.re) * h, (a.re + a.im) * -h}; };   // w_8^3 a
    y[1][1] = mul(y[1][1], Element<V>(kCos16), Element<V>(-kSin16));
    y[1][2] = w2(y[1][2]);
    y[1][3] = mul(y[1][3], Element<V>(kSin16), Element<V>(-kCos16));
    y[2][1] = w2(y[2][1]);
    y[2][2] = {y[2][2].im, -y[2][2].re};
    y[2][3] = w6(y[2][3]);
    y[3][1] = mul(y[3][1], Element<V>(kSin16), Element<V>(-kCos16));
    y[3][2] = w6(y[3][2]);
    y[3][3] = mul(y[3][3], Element<V>(-kCos16), Element<V>(kSin16));
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

template <int K, class T> TEVS_INLINE Cx<Vec<T, K>> loadBlock(const T* p) { return {load<T, K>(p), load<T, K>(p + K)}; }
template <class T, class V> TEVS_INLINE void storeBlock(T* p, Cx<V> v) {
    store(p, v.re);
    store(p + kCount<V>, v.im);
}

// Lanes within 128 bits.
template <class V> constexpr int kGroup = 16 / int(sizeof(V{}[0]));

// Every second lane of each group, of a and then of b, from lane Odd on; and the lanes of a and b by turns, from the groups' lower or upper halves.
template <int Odd, class V> TEVS_INLINE V unzipped(V a, V b) {
    constexpr int K = kCount<V>, G = kGroup<V>, H = G / 2;
    return shuffle<[](int i) { return i / G * G + i % H * 2 + Odd + (i % G < H ? 0 : K); }>(a, b);
}
template <int Upper, class V> TEVS_INLINE V zipped(V a, V b) {
    constexpr int K = kCount<V>, G = kGroup<V>;
    return shuffle<[](int i) { return i / G * G + Upper * G / 2 + i % G / 2 + (i & 1 ? K : 0); }>(a, b);
}
template <class V> TEVS_INLINE Cx<V> separated(V a, V b) { return {unzipped<0>(a, b), unzipped<1>(a, b)}; }
template <class V> TEVS_INLINE Two<V> interleaved(Cx<V> v) { return {zipped<0>(v.re, v.im), zipped<1>(v.re, v.im)}; }
// Between natural order and that of a block, in either direction: the order exchanges two bits of a lane's number, if any.
template <class V> TEVS_INLINE V reordered(V a) {
    if constexpr (sizeof(V) <= 16)
        return a;
    else
        return shuffle<[](int i) { return laneAt(kCount<V>, i, kGroup<V>); }>(a, a);
}
template <class V> TEVS_INLINE Cx<V> reversed(Cx<V> v) { return {reverse(v.re), reverse(v.im)}; }

// Passes keep their results as blocks: one after another, or with the parts of each in two arrays.
template <class T> struct Blocks { T* p; };
template <class T> struct PartBlocks { T *re, *im; };
template <class T> struct Mutable { typedef T type; };
template <class T> struct Mutable<const T> { typedef T type; };

// A block from, to the values i .. i + K - 1 of a place.
template <int K, class T, class V = Vec<typename Mutable<T>::type, K>> TEVS_INLINE Cx<V> read(Pairs<T> a, int64_t i) {
    if constexpr (K == 1)
        return {V{a.p[2 * i]}, V{a.p[2 * i + 1]}};
    else
        return separated(loadAs<V>(a.p + 2 * i), loadAs<V>(a.p + 2 * i + K));
}
template <int K, class T, class V = Vec<typename Mutable<T>::type, K>> TEVS_INLINE Cx<V> read(Parts<T> a, int64_t i) {
    return {reordered(loadAs<V>(a.re + i)), reordered(loadAs<V>(a.im + i))};
}
template <int K, class T> TEVS_INLINE Cx<Vec<T, K>> read(Blocks<T> a, int64_t i) { return loadBlock<K>(a.p + 2 * i); }
template <int K, class T> TEVS_INLINE Cx<Vec<T, K>> read(PartBlocks<T> a, int64_t i) { return {load<T, K>(a.re + i), load<T, K>(a.im + i)}; }

template <class T, class V> TEVS_INLINE void write(Pairs<T> a, int64_t i, Cx<V> v) {
    if constexpr (kCount<V> == 1)
        storeBlock(a.p + 2 * i, v);
    else
        store(a.p + 2 * i, interleaved(v));
}
template <class T, class V> TEVS_INLINE void write(Parts<T> a, int64_t i, Cx<V> v) {
    store(a.re + i, reordered(v.re));
    store(a.im + i, reordered(v.im));
}
template <class T, class V> TEVS_INLINE void write(Blocks<T> a, int64_t i, Cx<V> v) { storeBlock(a.p + 2 * i, v); }
template <class T, class V> TEVS_INLINE void write(PartBlocks<T> a, int64_t i, Cx<V> v) {
    store(a.re + i, v.re);
    store(a.im + i, v.im);
}

template <class T> TEVS_INLINE Pairs<T> operator+(Pairs<T> a, int64_t i) { return {a.p + 2 * i}; }
template <class T> TEVS_INLINE Parts<T> operator+(Parts<T> a, int64_t i) { return {a.re + i, a.im + i}; }

// Row r of K goes in, column r comes out; lanes in block order on both sides.
template <class V, int K> TEVS_INLINE void transpose(V (&x)[K]) {
    constexpr int G = kGroup<V>, H = G / 2;
    constexpr auto low = [](int i) { return i / G * G + i % H + (i % G < H ? 0 : K); };
    constexpr auto high = [](int i) { return i / G * G + H + i % H + (i % G < H ? 0 : K); };
    V s[K];
    for (int g = 0; g < K; g += G) {
        V row[G];
        for (int l = 0; l < G; ++l) row[l] = x[laneAt(K, g + l, G)];
        if constexpr (G == 4) {
            const V t0 = zipped<0>(row[0], row[1]), t1 = zipped<1>(row[0], row[1]), t2 = zipped<0>(row[2], row[3]), t3 = zipped<1>(row[2], row[3]);
            s[g] = shuffle<low>(t0, t2);
            s[g + 1] = shuffle<high>(t0, t2);
            s[g + 2] = shuffle<low>(t1, t3);
            s[g + 3] = shuffle<high>(t1, t3);
        } else {
            s[g] = zipped<0>(row[0], row[1]);
            s[g + 1] = zipped<1>(row[0], row[1]);
        }
    }
    for (int c = 0; c < G; ++c) {
        if constexpr (K == G) {
            x[c] = s[c];
        } else {
            x[laneAt(K, c, G)] = shuffle<[](int i) { return i < G ? i : i - G + K; }>(s[c], s[G + c]);
            x[laneAt(K, G + c, G)] = shuffle<[](int i) { return i < G ? i + G : i + K; }>(s[c], s[G + c]);
        }
    }
}
template <int K, class V> TEVS_INLINE void transpose(Cx<V>* x) {
    V re[K], im[K];
    for (int l = 0; l < K; ++l) re[l] = x[l].re;
    transpose(re);
    for (int l = 0; l < K; ++l) im[l] = x[l].im;
    transpose(im);
    for (int l = 0; l < K; ++l) x[l] = {re[l], im[l]};
}

}   // namespace
}   // namespace tevs::TEVS_LEVEL_NS
