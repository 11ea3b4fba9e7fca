#include "transform/wavelet.table.h"

#include "core/simd/map.h"
#include "core/simd/real.h"
#include "core/simd/scale.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// ---- pairs ----------------------------------------------------------------------------------------------------------------------------------

// Two vectors of pairs: the sum of each pair, in order.
template <class V> TEVS_INLINE V pairSums(V a, V b) {
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (sizeof(V) == 32) {
        // Halves of blocks first: one permutation across them, of the sum.
        if constexpr (sizeof(a[0]) == 4)
            a = (V)(_mm256_shuffle_ps((__m256)a, (__m256)b, 0x88) + _mm256_shuffle_ps((__m256)a, (__m256)b, 0xdd));
        else
            a = (V)(_mm256_unpacklo_pd((__m256d)a, (__m256d)b) + _mm256_unpackhi_pd((__m256d)a, (__m256d)b));
        return (V)_mm256_permute4x64_pd((__m256d)a, 0xd8);
    }
#endif
    return evens(a, b) + odds(a, b);
}

// The pair at p, over and over.
template <class V> TEVS_INLINE V pairOf(const Element<V>* p) {
    if constexpr (sizeof(p[0]) == 4) {
        double pair;
        memcpy(&pair, p, sizeof pair);
        return (V)same<Vec<double, kCount<V> / 2>>(pair);
    } else {
        const auto pair = load<double, 2>(p);
        if constexpr (sizeof(V) == 16)
            return pair;
        else
            return join(pair, pair);
    }
}

// N numbers at even and N at odd places.
template <int N, class T> TEVS_INLINE Two<Vec<T, N>> split(const T* p) {
    using V = Vec<T, N>;
    if constexpr (sizeof(T) == 2) {
        using W = Vec<int32_t, N / 2>;
        const auto x = loadAs<W>(p), y = loadAs<W>(p + N);
        return {pack16(x << 16 >> 16, y << 16 >> 16), pack16(x >> 16, y >> 16)};
    } else {
        const V x = load<T, N>(p), y = load<T, N>(p + N);
#if TEVS_REGISTER_BYTES >= 32
        if constexpr (sizeof(V) == 32) {   // in halves of blocks; the compiler's own way takes more steps
            const auto ordered = [](auto v) TEVS_HERE { return (V)_mm256_permute4x64_pd((__m256d)v, 0xd8); };
            if constexpr (sizeof(T) == 4)
                return {ordered(_mm256_shuffle_ps((__m256)x, (__m256)y, 0x88)), ordered(_mm256_shuffle_ps((__m256)x, (__m256)y, 0xdd))};
            else
                return {ordered(_mm256_unpacklo_pd((__m256d)x, (__m256d)y)), ordered(_mm256_unpackhi_pd((__m256d)x, (__m256d)y))};
        }
#endif
        return {evens(x, y), odds(x, y)};
    }
}

// The last lane of `before` and all but the last of v.
template <class V, int... I> TEVS_INLINE V behindOf(V before, V v, Lane<I...>) { return __builtin_shufflevector(before, v, (int(sizeof...(I)) - 1 + I)...); }
template <class V> TEVS_INLINE V behind(V before, V v) {
#if TEVS_LEVEL == 0
    constexpr int size = sizeof(v[0]);
    return (V)_mm_or_si128(_mm_srli_si128((__m128i)before, 16 - size), _mm_slli_si128((__m128i)v, size));
#else
    return behindOf(before, v, Iota<kCount<V>>{});
#endif
}

// ---- Haar -----------------------------------------------------------------------------------------------------------------------------------

constexpr double kRootHalf = 0.70710678118654752440;

template <class T> void haarAnalysis(const T* src, T* low, T* high, int len) {
    map<kLanes<T>, kLeast<T>>(
        len, Both<T>{low, high},
        [](auto n, const LanePair<T>* p) TEVS_HERE {
            using V = Vec<T, n.n>;
            const auto x = split<n.n>(reinterpret_cast<const T*>(p));
            return Two<V>{(x.a + x.b) * constant<V>(kRootHalf), (x.a - x.b) * constant<V>(kRootHalf)};
        },
        reinterpret_cast<const LanePair<T>*>(src));
}
template <class T> void haarSynthesis(const T* low, const T* high, T* dst, int len) {
    map<kLanes<T>, kLeast<T>>(
        len, reinterpret_cast<LanePair<T>*>(dst),
        [](auto n, const T* l, const T* h) TEVS_HERE {
            using V = Vec<T, n.n>;
            const V x = load<T, n.n>(l), y = load<T, n.n>(h);
            return interleave((x + y) * constant<V>(kRootHalf), (x - y) * constant<V>(kRootHalf));
        },
        low, high);
}

// Of 16-bit pairs in one 32-bit lane, sum and difference are dot products with (1, 1) and (1, -1).
template <class V> TEVS_INLINE V ofPairs(int16_t second) { return (V)same<Vec<int32_t, kCount<V> / 2>>(int32_t(uint32_t(uint16_t(second)) << 16 | 1)); }
void haarAnalysis16s(const int16_t* src, int16_t* low, int16_t* high, int len, int scaleFactor) {
    withScale(scaleFactor, [=](auto scale) {
        map<kLanes<int16_t>, kLeast<int16_t>>(
            len, Both<int16_t>{low, high},
            [=](auto n, const LanePair<int16_t>* p) TEVS_HERE {
                using V = Vec<int16_t, n.n>;
                const auto x = loadTwo<int16_t, n.n>(reinterpret_cast<const int16_t*>(p));
                const auto with = [&](V signs) TEVS_HERE { return fit(scale, InOrder{multiplyPairs(x.a, signs), multiplyPairs(x.b, signs)}); };
                return Two<V>{with(ofPairs<V>(1)), with(ofPairs<V>(-1))};
            },
            reinterpret_cast<const LanePair<int16_t>*>(src));
    });
}
void haarSynthesis16s(const int16_t* low, const int16_t* high, int16_t* dst, int len, int scaleFactor) {
    withScale(scaleFactor, [=](auto scale) {
        map<kLanes<int16_t>, kLeast<int16_t>>(
            len, reinterpret_cast<LanePair<int16_t>*>(dst),
            [=](auto n, const int16_t* l, const int16_t* h) TEVS_HERE {
                using V = Vec<int16_t, n.n>;
                const Two<V> x = interleave(load<int16_t, n.n>(l), load<int16_t, n.n>(h));
                const auto with = [&](V signs) TEVS_HERE { return fit(scale, InOrder{multiplyPairs(x.a, signs), multiplyPairs(x.b, signs)}); };
                return interleave(with(ofPairs<V>(1)), with(ofPairs<V>(-1)));
            },
            low, high);
    });
}

// ---- lifting --------------------------------------------------------------------------------------------------------------------------------
//
// Stored values wrap; what is added to them and taken away again is exact in the lanes there are.

template <int Bytes> struct Word { using T = uint32_t; };
template <> struct Word<2> { using T = uint16_t; };
template <class V> using Wrapping = Vec<typename Word<sizeof(Element<V>)>::T, kCount<V>>;
template <class V> TEVS_INLINE V wrappedSum(V a, V b) { return (V)((Wrapping<V>)a + (Wrapping<V>)b); }
template <class V> TEVS_INLINE V wrappedDifference(V a, V b) { return (V)((Wrapping<V>)a - (Wrapping<V>)b); }
// floor((a + b) / 2) and floor((a + b + 2) / 4).
template <class V> TEVS_INLINE V mean(V a, V b) { return (a & b) + ((a ^ b) >> 1); }
template <class V> TEVS_INLINE V quarter(V a, V b) {
    const V f = mean(a, b);
    return (f >> 1) + (f & 1);
}
// The same of single samples, in 64 bits.
template <class T> T predicted(T left, T odd, T right) { return T(odd - ((int64_t{left} + right) >> 1)); }
template <class T> T updated(T even, T left, T right) { return T(even + ((int64_t{left} + right + 2) >> 2)); }
template <class T> T restoredEven(T low, T left, T right) { return T(low - ((int64_t{left} + right + 2) >> 2)); }
template <class T> T restoredOdd(T high, T left, T right) { return T(high + ((int64_t{left} + right) >> 1)); }

template <class T> void liftHaarAnalysis(const T* src, T* low, T* high, int len) {
    map<kLanes<T>, kLeast<T>>(
        len, Both<T>{low, high},
        [](auto n, const LanePair<T>* p) TEVS_HERE {
            const auto x = split<n.n>(reinterpret_cast<const T*>(p));
            const auto h = wrappedDifference(x.a, x.b);
            return Two{wrappedSum(x.b, h >> 1), h};
        },
        reinterpret_cast<const LanePair<T>*>(src));
}
template <class T> void liftHaarSynthesis(const T* low, const T* high, T* dst, int len) {
    map<kLanes<T>, kLeast<T>>(
        len, reinterpret_cast<LanePair<T>*>(dst),
        [](auto n, const T* l, const T* h) TEVS_HERE {
            const auto x = load<T, n.n>(h), odd = wrappedDifference(load<T, n.n>(l), x >> 1);
            return interleave(wrappedSum(x, odd), odd);
        },
        low, high);
}

template <class T> void analysis53(const T* src, T* low, T* high, int srcLen) {
    constexpr int N = kLanes<T>;
    const ptrdiff_t lows = (ptrdiff_t{srcLen} + 1) / 2, highs = srcLen / 2;
    const auto even = [=](ptrdiff_t n) { return src[n < lows ? 2 * n : 2 * lows - 2]; };   // x[N] = x[N-2]
    ptrdiff_t n = 0;
    if (highs > N) {
        auto before = same<Vec<T, N>>(predicted(src[0], src[1], even(1)));   // high[-1] is high[0]
        for (; n + N < lows; n += N) {
            const auto x = split<N>(src + 2 * n);
            const auto next = split<N>(src + 2 * n + 1).b;   // x[2n+2] and on: the last is at 2 (n + N) < srcLen
            const auto h = wrappedDifference(x.b, mean(x.a, next));
            store(high + n, h);
            store(low + n, wrappedSum(x.a, quarter(behind(before, h), h)));
            before = h;
        }
    }
    T left = n > 0 ? high[n - 1] : predicted(src[0], src[1], even(1));
    for (; n < lows; ++n) {
        const T h = n < highs ? predicted(src[2 * n], src[2 * n + 1], even(n + 1)) : left;
        if (n < highs) high[n] = h;
        low[n] = updated(src[2 * n], left, h);
        left = h;
    }
}

template <class T> void synthesis53(const T* low, const T* high, T* dst, int dstLen) {
    constexpr int N = kLanes<T>;
    const ptrdiff_t lows = (ptrdiff_t{dstLen} + 1) / 2, highs = dstLen / 2;
    const auto even = [=](ptrdiff_t n) { return restoredEven(low[n], high[n > 0 ? n - 1 : 0], high[n < highs ? n : highs - 1]); };
    ptrdiff_t n = 0;
    T x = even(0);
    if (highs > 2 * N) {
        // The even samples of a vector and the first of the next: each vector of them serves twice.
        const auto evensAt = [=](ptrdiff_t k)
                                 TEVS_HERE { return wrappedDifference(load<T, N>(low + k), quarter(load<T, N>(high + k - 1), load<T, N>(high + k))); };
        const auto first = [&] {
            T t[N];
            for (int i = 0; i < N; ++i) t[i] = even(i);
            return load<T, N>(t);
        };
        auto before = first();
        for (; n + 2 * N <= highs; n += N) {
            const auto after = evensAt(n + N);
            // x[2n+2] and on: all but the first of these, the first of those.
            const auto next = [&]<int... I>(Lane<I...>) TEVS_HERE { return __builtin_shufflevector(before, after, (I + 1)...); }
            (Iota<N>{});
            store(dst + 2 * n, interleave(before, wrappedSum(load<T, N>(high + n), mean(before, next))));
            before = after;
        }
        x = before[0];
    }
    for (; n < lows; ++n) {
        dst[2 * n] = x;
        if (n >= highs) break;
        const T next = n + 1 < lows ? even(n + 1) : x;
        dst[2 * n + 1] = restoredOdd(high[n], x, next);
        x = next;
    }
}

// ---- two channels ---------------------------------------------------------------------------------------------------------------------------

// Lanes are pairs of samples, products of taps at even and at odd places; they are added up in the end. No sample is moved to another lane on the way, and one load serves
// both channels. 2 U registers of pairs make U registers of outputs in each of C channels.
template <int B, int C, int U, class T>
TEVS_INLINE void analyse(const T* in, const T* const (&taps)[C], int pairs, bool odd, T* const (&dst)[C], ptrdiff_t at) {
    using V = Vec<T, B / int(sizeof(T))>;
    constexpr int W = kCount<V>;
    in += 2 * at;
    V sum[C][2 * U] = {};
    const auto add = [&](int j, auto sample) TEVS_HERE {
        V tap[C];
        for (int c = 0; c < C; ++c) tap[c] = pairOf<V>(taps[c] + 2 * ptrdiff_t{j});
#pragma GCC unroll 8
        for (int u = 0; u < 2 * U; ++u) {
            const V x = inRegister(sample(load<T, W>(in + 2 * ptrdiff_t{j} + u * W)));
#pragma GCC unroll 2
            for (int c = 0; c < C; ++c) sum[c][u] = fma(tap[c], x, sum[c][u]);
        }
    };
    int j = 0;
    if (odd) {
        // An infinity there would make a NaN of its tap, which is 0.
        using I = Vec<int32_t, B / 4>;
        static const int32_t kSecond[4] = {0, sizeof(T) == 4 ? -1 : 0, -1, -1};
        const V mask = pairOf<V>(reinterpret_cast<const T*>(kSecond));
        add(j++, [=](V x) TEVS_HERE { return (V)((I)x & (I)mask); });
    }
    for (; j < pairs; ++j) add(j, [](V x) TEVS_HERE { return x; });
#pragma GCC unroll 2
    for (int c = 0; c < C; ++c)
#pragma GCC unroll 4
        for (int u = 0; u < U; ++u) store(dst[c] + at + u * W, pairSums(sum[c][2 * u], sum[c][2 * u + 1]));
}

// One output of each channel.
template <int C, class T> TEVS_INLINE void analyseOne(const T* in, const T* const (&taps)[C], int pairs, bool odd, T* const (&dst)[C], ptrdiff_t at) {
    in += 2 * at;
    for (int c = 0; c < C; ++c) {
        using One = Vec<T, 1>;
        One even = {}, other = {};
        for (int j = 0; j < pairs; ++j) {
            const T* const h = taps[c] + 2 * ptrdiff_t{j};
            if (j > 0 || !odd) even = fma(One{h[0]}, One{in[2 * ptrdiff_t{j}]}, even);
            other = fma(One{h[1]}, One{in[2 * ptrdiff_t{j} + 1]}, other);
        }
        dst[c][at] = even[0] + other[0];
    }
}

template <int C, class T> TEVS_INLINE void analyseAll(const T* in, const T* const (&taps)[C], int pairs, bool odd, T* const (&dst)[C], ptrdiff_t n) {
    constexpr int W = kLanes<T>, U = kFewRegisters ? (C == 1 ? 2 : 1) : C == 1 ? 4 : 3;
    ptrdiff_t i = 0;
    if (n >= W) {
        for (; i + U * W <= n; i += U * W) analyse<kRegisterBytes, C, U>(in, taps, pairs, odd, dst, i);
        for (; i + W <= n; i += W) analyse<kRegisterBytes, C, 1>(in, taps, pairs, odd, dst, i);
        if (i < n) analyse<kRegisterBytes, C, 1>(in, taps, pairs, odd, dst, n - W);   // some of them once more
        return;
    }
    if constexpr (kRegisterBytes > 16)
        if (n >= W / 2) {
            analyse<16, C, 1>(in, taps, pairs, odd, dst, 0);
            if (n > W / 2) analyse<16, C, 1>(in, taps, pairs, odd, dst, n - W / 2);
            return;
        }
    for (; i < n; ++i) analyseOne<C>(in, taps, pairs, odd, dst, i);
}

template <class T> void analysis(const T* in, const T* lowTaps, const T* highTaps, int pairs, bool odd, T* low, T* high, ptrdiff_t n) {
    if (high)
        analyseAll<2, T>(in, {lowTaps, highTaps}, pairs, odd, {low, high}, n);
    else
        analyseAll<1, T>(in, {lowTaps}, pairs, odd, {low}, n);
}

// A load of a channel's values serves the outputs at even and those at odd places, which are interleaved in the end. U registers of each.
template <class V, int U> TEVS_INLINE void addChannel(const Element<V>* in, const SynthesisTaps<Element<V>>& f, V (&even)[U], V (&odd)[U]) {
    constexpr int W = kCount<V>;
    const Element<V>* taps = f.taps;
    const auto at = [](const Element<V>* p) TEVS_HERE {
        if constexpr (W == 1)
            return V{*p};
        else
            return load<Element<V>, W>(p);
    };
    const auto all = [](Element<V> x) TEVS_HERE { return same<V>(x); };
    if (f.evenFirst) {
        for (int u = 0; u < U; ++u) even[u] = fma(all(taps[0]), at(in - 1 + u * W), even[u]);
        taps += 2;
    }
    for (int j = 0; j < f.pairs; ++j, taps += 2, ++in) {
        const V e = all(taps[0]), o = all(taps[1]);
#pragma GCC unroll 4
        for (int u = 0; u < U; ++u) {
            const V x = inRegister(at(in + u * W));
            even[u] = fma(e, x, even[u]);
            odd[u] = fma(o, x, odd[u]);
        }
    }
    if (f.oddLast)
        for (int u = 0; u < U; ++u) odd[u] = fma(all(taps[1]), at(in + u * W), odd[u]);
}

template <class V, int U>
TEVS_INLINE void synthesise(const Element<V>* low, const Element<V>* high, const SynthesisTaps<Element<V>>& l, const SynthesisTaps<Element<V>>& h,
                            Element<V>* dst, ptrdiff_t at) {
    constexpr int W = kCount<V>;
    V even[U] = {}, odd[U] = {};
    addChannel(low + at, l, even, odd);
    addChannel(high + at, h, even, odd);
    for (int u = 0; u < U; ++u)
        if constexpr (W == 1) {
            dst[2 * at] = even[u][0];
            dst[2 * at + 1] = odd[u][0];
        } else {
            store(dst + 2 * (at + u * W), interleave(even[u], odd[u]));
        }
}

template <class T> void synthesis(const T* low, const T* high, const SynthesisTaps<T>* lowTaps, const SynthesisTaps<T>* highTaps, T* dst, ptrdiff_t n) {
    constexpr int W = kLanes<T>, U = kFewRegisters ? 2 : 4;
    using V = Vec<T, W>;
    const SynthesisTaps<T> l = *lowTaps, h = *highTaps;
    ptrdiff_t i = 0;
    if (n >= W) {
        for (; i + U * W <= n; i += U * W) synthesise<V, U>(low, high, l, h, dst, i);
        for (; i + W <= n; i += W) synthesise<V, 1>(low, high, l, h, dst, i);
        if (i < n) synthesise<V, 1>(low, high, l, h, dst, n - W);
        return;
    }
    if constexpr (kRegisterBytes > 16)
        if (n >= W / 2) {
            using Half = Vec<T, W / 2>;
            synthesise<Half, 1>(low, high, l, h, dst, 0);
            if (n > W / 2) synthesise<Half, 1>(low, high, l, h, dst, n - W / 2);
            return;
        }
    for (; i < n; ++i) synthesise<Vec<T, 1>, 1>(low, high, l, h, dst, i);
}

}   // namespace

extern const WaveletKernels wavelet = {
    .real32f = {haarAnalysis<float>, haarSynthesis<float>, analysis<float>, synthesis<float>},
    .real64f = {haarAnalysis<double>, haarSynthesis<double>, analysis<double>, synthesis<double>},
    .lift16s = {liftHaarAnalysis<int16_t>, liftHaarSynthesis<int16_t>, analysis53<int16_t>, synthesis53<int16_t>},
    .lift32s = {liftHaarAnalysis<int32_t>, liftHaarSynthesis<int32_t>, analysis53<int32_t>, synthesis53<int32_t>},
    .haarAnalysis16s = haarAnalysis16s,
    .haarSynthesis16s = haarSynthesis16s,
};

}   // namespace tevs::TEVS_LEVEL_NS
