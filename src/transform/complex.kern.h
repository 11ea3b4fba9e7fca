// Complex vectors, and the straight-line DFTs that the passes are made of.
#pragma once

#include <type_traits>

#include "core/simd/vec.h"
#include "transform/fft.table.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// A number as an argument.
template <int J> using At = std::integral_constant<int, J>;

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

// Whether the lanes of a block are in natural order.
template <class V> constexpr bool kNatural = sizeof(V) <= 16 || kCount<V> > 2 * kGroup<V>;

// Every second lane of each group, of a and then of b, from lane Odd on; and the lanes of a and b by turns, from the groups' lower or upper halves. The groups are 128 bits or, where
// the order is natural, whole registers.
template <class V> constexpr int kReach = kNatural<V> ? kCount<V> : kGroup<V>;
template <int Odd, class V> TEVS_INLINE V unzipped(V a, V b) {
    constexpr int K = kCount<V>, G = kReach<V>, H = G / 2;
    return shuffle<[](int i) { return i / G * G + i % H * 2 + Odd + (i % G < H ? 0 : K); }>(a, b);
}
template <int Upper, class V> TEVS_INLINE V zipped(V a, V b) {
    constexpr int K = kCount<V>, G = kReach<V>;
    return shuffle<[](int i) { return i / G * G + Upper * G / 2 + i % G / 2 + (i & 1 ? K : 0); }>(a, b);
}
template <class V> TEVS_INLINE Cx<V> separated(V a, V b) { return {unzipped<0>(a, b), unzipped<1>(a, b)}; }
template <class V> TEVS_INLINE Two<V> interleaved(Cx<V> v) { return {zipped<0>(v.re, v.im), zipped<1>(v.re, v.im)}; }
// Between natural order and that of a block, in either direction: the order, if another, exchanges two bits of a lane's number.
template <class V> TEVS_INLINE V reordered(V a) {
    if constexpr (kNatural<V>)
        return a;
    else
        return shuffle<[](int i) { return laneAt(kCount<V>, i, kGroup<V>); }>(a, a);
}
template <class V> TEVS_INLINE Cx<V> reversed(Cx<V> v) { return {reverse(v.re), reverse(v.im)}; }

// ---- spectra of reals, complex values as they lie in memory -----------------------------------------------------------------------------

template <class T> constexpr int kPairsAtOnce = kLanes<T> / 2;

// The sign of every second lane, the imaginary parts.
template <class V> TEVS_INLINE V conjugate(V a) {
    using Bits = Vec<std::conditional_t<sizeof(V{}[0]) == 4, uint32_t, uint64_t>, kCount<V>>;
    return (V)((Bits)a ^ (Bits)alternate(V{}, -V{}));
}
// a b + c in the real parts, a b - c in the imaginary ones; or the other way round.
template <bool Minus, class V> TEVS_INLINE V productAnd(V a, V b, V c) {
#ifdef __FMA__
    if constexpr (sizeof(V{}[0]) == 4) {
        if constexpr (sizeof(V) == 16)
            return Minus ? (V)_mm_fmaddsub_ps((__m128)a, (__m128)b, (__m128)c) : (V)_mm_fmsubadd_ps((__m128)a, (__m128)b, (__m128)c);
        else if constexpr (sizeof(V) == 32)
            return Minus ? (V)_mm256_fmaddsub_ps((__m256)a, (__m256)b, (__m256)c) : (V)_mm256_fmsubadd_ps((__m256)a, (__m256)b, (__m256)c);
        else
            return Minus ? (V)_mm512_fmaddsub_ps((__m512)a, (__m512)b, (__m512)c) : (V)_mm512_fmsubadd_ps((__m512)a, (__m512)b, (__m512)c);
    } else if constexpr (sizeof(V) == 16) {
        return Minus ? (V)_mm_fmaddsub_pd((__m128d)a, (__m128d)b, (__m128d)c) : (V)_mm_fmsubadd_pd((__m128d)a, (__m128d)b, (__m128d)c);
    } else if constexpr (sizeof(V) == 32) {
        return Minus ? (V)_mm256_fmaddsub_pd((__m256d)a, (__m256d)b, (__m256d)c) : (V)_mm256_fmsubadd_pd((__m256d)a, (__m256d)b, (__m256d)c);
    } else {
        return Minus ? (V)_mm512_fmaddsub_pd((__m512d)a, (__m512d)b, (__m512d)c) : (V)_mm512_fmsubadd_pd((__m512d)a, (__m512d)b, (__m512d)c);
    }
#else
    return Minus ? subAdd(a * b, c) : addSub(a * b, c);
#endif
}
// Complex values in the opposite order; from memory and to it, where two registers of doubles are two halves each.
template <class V> TEVS_INLINE V pairsReversed(V a) {
    return shuffle<[](int i) { return kCount<V> - 1 - (i ^ 1); }>(a, a);
}
template <class V, class T> TEVS_INLINE V loadReversed(const T* p) {
    constexpr int n = kCount<V>;
    if constexpr (n == 2)
        return load<T, n>(p);
    else if constexpr (sizeof(V) == 32 && n == 4)
        return join(load<T, 2>(p + 2), load<T, 2>(p));
    else
        return pairsReversed(load<T, n>(p));
}
template <class T, class V> TEVS_INLINE void storeReversed(T* p, V v) {
    constexpr int n = kCount<V>;
    if constexpr (n == 2) {
        store(p, v);
    } else if constexpr (sizeof(V) == 32 && n == 4) {
        store(p, high(v));
        store(p + 2, low(v));
    } else {
        store(p, pairsReversed(v));
    }
}

// With E = Z[k] + conj Z[n-k] and O = Z[k] - conj Z[n-k], w^k from the table of w = exp(-2 pi i / 2n), z being half the transform of pairs of reals:
//     X[k] = E - i w^k O,   X[n-k] = conj(E + i w^k O)
// And back, Inverse: Z[k] = E + i conj(w^k) O, Z[n-k] = conj(E - i conj(w^k) O) with E = X[k] + conj X[n-k], O = X[k] - conj X[n-k].
// Of K values from k on and K up to n - k. At k = n/2 both are the same value. out may be in.
template <bool Inverse, int K, class T> TEVS_INLINE void recombined(const T* in, T* out, int k, int mirror, const T* w) {
    using V = Vec<T, 2 * K>;
    const V a = load<T, 2 * K>(in + 2 * k), b = conjugate(loadReversed<V>(in + 2 * mirror)), root = load<T, 2 * K>(w);
    const V e = a + b, o = a - b, v = productAnd<Inverse>(o, oddsTwice(root), swapPairs(o) * evensTwice(root));
    storeReversed(out + 2 * mirror, conjugate(e - v));
    store(out + 2 * k, e + v);
}

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

// One part of a block: the real ones or, Part = 1, the imaginary ones.
template <int K, int Part, class T> TEVS_INLINE T* partAt(Blocks<T> a, int64_t i) { return a.p + 2 * i + Part * K; }
template <int K, int Part, class T> TEVS_INLINE T* partAt(PartBlocks<T> a, int64_t i) { return (Part ? a.im : a.re) + i; }

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
template <class T> TEVS_INLINE Blocks<T> operator+(Blocks<T> a, int64_t i) { return {a.p + 2 * i}; }
template <class T> TEVS_INLINE PartBlocks<T> operator+(PartBlocks<T> a, int64_t i) { return {a.re + i, a.im + i}; }

// K rows of K units of so many lanes: rows become columns.
template <int Unit, int K, class V> TEVS_INLINE void turnUnits(V (&x)[K]) {
    constexpr int n = Unit * K;
    const auto exchange = [&]<int D>(At<D>) TEVS_HERE {   // the units D columns to the right in row i and D rows below
        for (int i = 0; i < K; ++i)
            if ((i & D) == 0) {
                const V a = x[i], b = x[i + D];
                x[i] = shuffle<[](int l) { return l / Unit & D ? n + l - Unit * D : l; }>(a, b);
                x[i + D] = shuffle<[](int l) { return l / Unit & D ? n + l : l + Unit * D; }>(a, b);
            }
    };
    if constexpr (K >= 2) exchange(At<1>{});
    if constexpr (K >= 4) exchange(At<2>{});
    if constexpr (K >= 8) exchange(At<4>{});
    if constexpr (K >= 16) exchange(At<8>{});
}
// Row r of K goes in, column r comes out; lanes in block order on both sides.
template <class V, int K>
requires(K > 2 * kGroup<V>) TEVS_INLINE void transpose(V (&x)[K]) { turnUnits<1>(x); }
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

// Lanes 0 and 1, or 2 and 3.
TEVS_INLINE void storeLow(float* p, Vec<float, 4> v) { _mm_storel_pi(reinterpret_cast<__m64*>(p), (__m128)v); }
TEVS_INLINE void storeHigh(float* p, Vec<float, 4> v) { _mm_storeh_pi(reinterpret_cast<__m64*>(p), (__m128)v); }

// Block l of K, turned over, goes to i + stride l.
template <int K, class To, class V> TEVS_INLINE void writeTurned(To to, int stride, Cx<V>* x) {
    if constexpr (kFewRegisters && kGroup<V> == 4) {
        // Halves of what the first half of the shuffles yields are stored where they belong: stores are free, and shuffles share their ports with additions.
        const auto part = [&](auto at, auto of) TEVS_HERE {
            for (int h = 0; h < 2; ++h) {
                const V a = of(x[2 * h]), b = of(x[2 * h + 1]), low = zipped<0>(a, b), high = zipped<1>(a, b);
                storeLow(at(0) + 2 * h, low);
                storeHigh(at(1) + 2 * h, low);
                storeLow(at(2) + 2 * h, high);
                storeHigh(at(3) + 2 * h, high);
            }
        };
        part([&](int l) TEVS_HERE { return partAt<K, 0>(to, stride * l); }, [](const Cx<V>& v) { return v.re; });
        part([&](int l) TEVS_HERE { return partAt<K, 1>(to, stride * l); }, [](const Cx<V>& v) { return v.im; });
    } else {
        transpose<K>(x);
        for (int l = 0; l < K; ++l) write(to, stride * l, x[l]);
    }
}

// ---- DFTs from memory -----------------------------------------------------------------------------------------------------------------

// The outputs of radix 4 in the order 0 2 1 3, each given away before the next is formed: with what the caller does to an output, eight registers hold all.
// re(j) and im(j) are parts of the inputs.
template <class Re, class Im, class Emit> TEVS_INLINE void dft4InOrder(Re re, Im im, Emit emit) {
    const auto r0 = re(0), r2 = re(2), sumR = r0 + r2, differenceR = r0 - r2;
    const auto r1 = re(1), r3 = re(3), sumR1 = r1 + r3, differenceR1 = r1 - r3;
    const auto evenR = sumR + sumR1, evenR2 = sumR - sumR1;
    const auto i0 = im(0), i2 = im(2), sumI = i0 + i2, differenceI = i0 - i2;
    const auto i1 = im(1), i3 = im(3), sumI1 = i1 + i3, differenceI1 = i1 - i3;
    emit(At<0>{}, Cx{evenR, sumI + sumI1});
    emit(At<2>{}, Cx{evenR2, sumI - sumI1});
    emit(At<1>{}, Cx{differenceR + differenceI1, differenceI - differenceR1});
    emit(At<3>{}, Cx{differenceR - differenceI1, differenceI + differenceR1});
}

// Radix 8: radix 4 over the sums of inputs four apart, and the rest from their differences. sumR(j) .. differenceI(j) are those.
template <class SumR, class SumI, class DifferenceR, class DifferenceI, class Emit>
TEVS_INLINE void dft8InOrder(SumR sumR, SumI sumI, DifferenceR differenceR, DifferenceI differenceI, Emit emit) {
    using V = decltype(sumR(0));
    dft4InOrder(sumR, sumI, [&](auto j, Cx<V> y) TEVS_HERE { emit(2 * j, y); });
    const V h = same<V>(Element<V>(kSqrtHalf));
    const V r1 = differenceR(1), i1 = differenceI(1), r3 = differenceR(3), i3 = differenceI(3);
    const Cx<V> e = {r1 + i1, i1 - r1}, f = {i3 - r3, r3 + i3};
    const Cx<V> s = {e.re + f.re, e.im - f.im}, t = {e.re - f.re, e.im + f.im};
    const V r0 = differenceR(0), i2 = differenceI(2), i0 = differenceI(0), r2 = differenceR(2);
    const Cx<V> p = {r0 + i2, i0 - r2};
    emit(1, Cx<V>{fma(h, s.re, p.re), fma(h, s.im, p.im)});
    emit(5, Cx<V>{fnma(h, s.re, p.re), fnma(h, s.im, p.im)});
    const Cx<V> q = {r0 - i2, i0 + r2};
    emit(3, Cx<V>{fma(h, t.im, q.re), fnma(h, t.re, q.im)});
    emit(7, Cx<V>{fnma(h, t.im, q.re), fma(h, t.re, q.im)});
}
// All inputs are read before the first output.
template <class V, class Value, class Emit> TEVS_INLINE void dft8OfValues(Value value, Emit emit) {
    Cx<V> sum[4], difference[4];
    for (int j = 0; j < 4; ++j) {
        const auto a = value(j), b = value(j + 4);
        sum[j] = a + b;
        difference[j] = a - b;
    }
    const auto re = [](const Cx<V>* x) TEVS_HERE { return [=](int j) TEVS_HERE { return x[j].re; }; };
    const auto im = [](const Cx<V>* x) TEVS_HERE { return [=](int j) TEVS_HERE { return x[j].im; }; };
    dft8InOrder(re(sum), im(sum), re(difference), im(difference), emit);
}

// x w_16^J.
template <int J, class V> TEVS_INLINE Cx<V> turnedBy16th(Cx<V> x) {
    using T = Element<V>;
    constexpr T h = T(kSqrtHalf), c = T(kCos16), s = T(kSin16);
    if constexpr (J == 0) return x;
    if constexpr (J == 1) return mul(x, c, -s);
    if constexpr (J == 2) return {(x.re + x.im) * same<V>(h), (x.im - x.re) * same<V>(h)};
    if constexpr (J == 3) return mul(x, s, -c);
    if constexpr (J == 4) return {x.im, -x.re};
    if constexpr (J == 6) return {(x.im - x.re) * same<V>(h), (x.re + x.im) * same<V>(-h)};
    if constexpr (J == 9) return mul(x, -c, s);
}

// Radix 4 by 4, by way of memory. first(b, emit) does radix 4 over the inputs b, b + 4, b + 8 and b + 12. All are read before the first output.
template <class V, class First, class Emit> TEVS_INLINE void dft16InOrder(First first, Emit emit) {
    Cx<V> y[4][4];
    const auto column = [&]<int B>(At<B>) TEVS_HERE { first(B, [&](auto j, Cx<V> x) TEVS_HERE { y[j.value][B] = turnedBy16th<j.value * B>(x); }); };
    const auto row = [&]<int J>(At<J>) TEVS_HERE {
        const auto re = [&](int b) TEVS_HERE { return y[J][b].re; };
        const auto im = [&](int b) TEVS_HERE { return y[J][b].im; };
        dft4InOrder(re, im, [&](int l, Cx<V> x) TEVS_HERE { emit(J + 4 * l, x); });
    };
    const auto each = [](auto f) TEVS_HERE {
        f(At<0>{});
        f(At<1>{});
        f(At<2>{});
        f(At<3>{});
    };
    each(column);
    each(row);
}

// Hands the R outputs over the blocks at from + stride j to emit(j, y), j in no certain order. InPlace: emit may write where they lie.
template <int K, int R, bool InPlace, class In, class Emit> TEVS_INLINE void dftOfBlocks(In from, int stride, Emit emit) {
    using T = std::remove_pointer_t<decltype(partAt<K, 0>(from, 0))>;
    using V = Vec<T, K>;
    const auto re = [&](int j) TEVS_HERE { return load<T, K>(partAt<K, 0>(from, stride * j)); };
    const auto im = [&](int j) TEVS_HERE { return load<T, K>(partAt<K, 1>(from, stride * j)); };
    if constexpr (kFewRegisters && R == 4) {
        dft4InOrder(re, im, emit);
    } else if constexpr (kFewRegisters && R == 8 && InPlace) {
        dft8OfValues<V>([&](int j) TEVS_HERE { return Cx<V>{re(j), im(j)}; }, emit);
    } else if constexpr (kFewRegisters && R == 8) {
        // Sums first: the inputs are read anew for the differences.
        dft8InOrder([&](int j) TEVS_HERE { return re(j) + re(j + 4); }, [&](int j) TEVS_HERE { return im(j) + im(j + 4); },
                    [&](int j) TEVS_HERE { return re(j) - re(j + 4); }, [&](int j) TEVS_HERE { return im(j) - im(j + 4); }, emit);
    } else if constexpr (kFewRegisters && R == 16) {
        const auto quarter = [&](int b, auto take) TEVS_HERE {
            dft4InOrder([&](int j) TEVS_HERE { return re(b + 4 * j); }, [&](int j) TEVS_HERE { return im(b + 4 * j); }, take);
        };
        dft16InOrder<V>(quarter, emit);
    } else {
        Cx<V> x[R];
        for (int j = 0; j < R; ++j) x[j] = {re(j), im(j)};
        dft(x);
        for (int j = 0; j < R; ++j) emit(j, x[j]);
    }
}

// The R outputs over values that are read at once, parts together: both of a pair are used before the next is read.
template <class Value, class Emit> TEVS_INLINE void dft4OfValues(Value value, Emit emit) {
    const auto x0 = value(0), x2 = value(2), a = x0 + x2, b = x0 - x2;
    const auto x1 = value(1), x3 = value(3), c = x1 + x3, d = x1 - x3;
    emit(At<0>{}, a + c);
    emit(At<2>{}, a - c);
    emit(At<1>{}, minusI(b, d));
    emit(At<3>{}, plusI(b, d));
}
template <int R, class Value, class Emit> TEVS_INLINE void dftOfValues(Value value, Emit emit) {
    using V = decltype(value(0).re);
    if constexpr (kFewRegisters && R == 4) {
        dft4OfValues(value, emit);
    } else if constexpr (kFewRegisters && R == 8) {
        dft8OfValues<V>(value, emit);
    } else {
        Cx<V> x[R];
        for (int j = 0; j < R; ++j) x[j] = value(j);
        dft(x);
        for (int j = 0; j < R; ++j) emit(j, x[j]);
    }
}

}   // namespace
}   // namespace tevs::TEVS_LEVEL_NS
