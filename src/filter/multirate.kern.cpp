#include "core/complex.h"
#include "core/simd/lanes.h"
#include "filter/multirate.table.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// Vectors of periods at a time: four sums each, within the registers there are.
constexpr int kVectors = kFewRegisters ? 1 : 3;

// ---- inputs to streams ------------------------------------------------------------------------------------------------------------------

template <class V> TEVS_INLINE Two<V> blocksOfPairs(V a, V b) {
    using D = Vec<double, int(sizeof(V) / 8)>;
    return {(V)blockLow((D)a, (D)b), (V)blockHigh((D)a, (D)b)};
}

// The inputs of type S, as numbers of T.
template <class S, class T> struct Splitter {
    static constexpr int kPer = kParts<S>, kRun = 16 / (kPer * int(sizeof(T)));
    using Block = Vec<T, 16 / int(sizeof(T))>;

    // The elements at one place and the ones behind it that belong to the same 16 bytes.
    static TEVS_INLINE Block block(const S* p) { return loadLanes<T, 16, 1>(partsOf(p)).v[0]; }
    static TEVS_INLINE void one(const S* p, T* to) {
        for (int c = 0; c < kPer; ++c) to[c] = T(partsOf(p)[c]);
    }

    static TEVS_INLINE void splitRun(const S* src, int places, int n, T* to, ptrdiff_t stride) {
        int k = 0;
        if constexpr (kRun == 4) {
#if TEVS_REGISTER_BYTES >= 32
            for (; k + 8 <= n; k += 8) {
                const auto both = [&](int i) { return join(block(src + ptrdiff_t(k + i) * places), block(src + ptrdiff_t(k + i + 4) * places)); };
                const auto t = transposed(both(0), both(1), both(2), both(3));
                for (int e = 0; e < 4; ++e) store(to + e * stride + k, t.v[e]);
            }
#endif
            // Behind the last period it is repeated: the streams have room.
            for (; k < n; k += 4) {
                const auto at = [&](int i) { return block(src + ptrdiff_t(k + i < n ? k + i : n - 1) * places); };
                const auto t = transposed(at(0), at(1), at(2), at(3));
                for (int e = 0; e < 4; ++e) store(to + e * stride + k, t.v[e]);
            }
        } else if constexpr (kRun == 2) {
            for (; k + 2 <= n; k += 2) {
                const auto t = blocksOfPairs(block(src + ptrdiff_t(k) * places), block(src + ptrdiff_t(k + 1) * places));
                store(to + k * kPer, t.a);
                store(to + stride + k * kPer, t.b);
            }
        } else {
            for (; k < n; ++k) store(to + k * kPer, block(src + ptrdiff_t(k) * places));
        }
        for (; k < n; ++k)
            for (int e = 0; e < kRun; ++e) one(src + ptrdiff_t(k) * places + e, to + e * stride + k * kPer);
    }

    // Of periods of one and of two places. Below a run of four these are all that occur.
    static TEVS_INLINE void copy(const S* src, int n, T* to) {
        int k = 0;
        for (; k + kRun <= n; k += kRun) store(to + k * kPer, block(src + k));
        for (; k < n; ++k) one(src + k, to + k * kPer);
    }
    static TEVS_INLINE void pairs(const S* src, int n, T* to, ptrdiff_t stride) {
        int k = 0;
        for (; k + kRun <= n; k += kRun) {
            const Block a = block(src + 2 * k), b = block(src + 2 * k + kRun);
            store(to + k, evens(a, b));
            store(to + stride + k, odds(a, b));
        }
        for (; k < n; ++k)
            for (int e = 0; e < 2; ++e) one(src + 2 * k + e, to + e * stride + k);
    }

    static void split(const S* src, int count, const Streams* streams, T* to) {
        const Streams s = *streams;
        const int n = count / s.places, rest = count % s.places;
        const ptrdiff_t stride = s.stride * kPer;
        if (s.places == 1) return copy(src, n, to);
        const int run = s.places < kRun ? s.places : kRun;
        if (kRun == 4 && s.places == 2)
            pairs(src, n, to, stride);
        else
            for (int r = 0; r < s.runs; ++r) Splitter::splitRun(src + s.starts[r], s.places, n, to + ptrdiff_t(r) * run * stride, stride);
        if (rest == 0) return;
        const S* const last = src + ptrdiff_t(n) * s.places;
        for (int r = 0; r < s.runs; ++r)
            for (int e = 0; e < run; ++e)
                if (s.starts[r] + e < rest) one(last + s.starts[r] + e, to + (ptrdiff_t(r) * run + e) * stride + ptrdiff_t(n) * kPer);
    }
};

// ---- sums -----------------------------------------------------------------------------------------------------------------------------------

// N vectors for each of four rows: of N successive runs of periods, or of the same periods for as many groups.
template <class T, int N> using Sums = Vec<T, kLanes<T>>[4][N];

// The inputs from .. end-1 of the first group, and their like of the others, times the taps of Count rows: A vectors of periods for each of G groups of one shape.
template <int First, int Count, class T, int A, int G>
TEVS_INLINE void add(const Phases<T>& f, const PhaseGroup* g, const T* streams, int from, int end, Sums<T, A * G>& sum) {
    constexpr int W = kLanes<T>;
    const T* taps[G];
    const int32_t* place[G];
    for (int b = 0; b < G; ++b) {
        const ptrdiff_t first = ptrdiff_t{from} + (g[b].from[0] - g->from[0]);
        taps[b] = f.taps + g[b].rows[First] + 4 * first;
        place[b] = f.place + first;
    }
    for (ptrdiff_t i = 0; i < end - from; ++i) {
        Vec<T, W> x[A * G];
        for (int b = 0; b < G; ++b)
            for (int a = 0; a < A; ++a) x[b * A + a] = inRegister(load<T, W>(streams + place[b][i] + a * W));
#pragma GCC unroll 4
        for (int r = First; r < First + Count; ++r)
#pragma GCC unroll 2
            for (int b = 0; b < G; ++b) {
                const auto h = splat<W>(taps[b][4 * i + r]);
#pragma GCC unroll 4
                for (int a = 0; a < A; ++a) sum[r][b * A + a] = fma(h, x[b * A + a], sum[r][b * A + a]);
            }
    }
}

// Every output's products are added in the order of its inputs, whatever it shares with its neighbours.
template <class T, int A, int G> TEVS_INLINE void addAll(const Phases<T>& f, const PhaseGroup* g, const T* streams, Sums<T, A * G>& sum) {
    if (!g->overlap) {
        add<0, 1, T, A, G>(f, g, streams, g->from[0], g->end[0], sum);
        add<1, 1, T, A, G>(f, g, streams, g->from[1], g->end[1], sum);
        add<2, 1, T, A, G>(f, g, streams, g->from[2], g->end[2], sum);
        add<3, 1, T, A, G>(f, g, streams, g->from[3], g->end[3], sum);
        return;
    }
    add<0, 1, T, A, G>(f, g, streams, g->from[0], g->shared[1], sum);
    add<1, 1, T, A, G>(f, g, streams, g->from[1], g->shared[1], sum);
    add<0, 2, T, A, G>(f, g, streams, g->shared[1], g->shared[2], sum);
    add<2, 1, T, A, G>(f, g, streams, g->from[2], g->shared[2], sum);
    add<0, 3, T, A, G>(f, g, streams, g->shared[2], g->shared[3], sum);
    add<3, 1, T, A, G>(f, g, streams, g->from[3], g->shared[3], sum);
    add<0, 4, T, A, G>(f, g, streams, g->shared[3], g->end[0], sum);
    add<1, 3, T, A, G>(f, g, streams, g->end[0], g->end[1], sum);
    add<2, 2, T, A, G>(f, g, streams, g->end[1], g->end[2], sum);
    add<3, 1, T, A, G>(f, g, streams, g->end[2], g->end[3], sum);
}

// ---- outputs --------------------------------------------------------------------------------------------------------------------------------

// The blocks of 128 bits of v, `apart` bytes from one to the next, straight to memory.
template <class V> TEVS_INLINE void storeBlocks(char* dst, [[maybe_unused]] ptrdiff_t apart, V v) {
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (sizeof(V) == 32) {
        store(dst, _mm256_castps256_ps128((__m256)v));
        store(dst + apart, _mm256_extractf128_ps((__m256)v, 1));
    }
#endif
    if constexpr (sizeof(V) == 16) store(dst, v);
}

// A vector of periods of each row, `period` bytes from one period's outputs to the next one's.
template <class T, int Parts, class V> TEVS_INLINE void scatter(T* to, ptrdiff_t period, V a, V b, V c, V d) {
    char* const dst = reinterpret_cast<char*>(to);
    if constexpr (Parts == 1 && sizeof(T) == 4) {
        const auto t = transposed(a, b, c, d);
        for (int k = 0; k < 4; ++k) storeBlocks(dst + k * period, 4 * period, t.v[k]);
    } else if constexpr (Parts == 1) {
        const Two<V> first = blocksOfPairs(a, b), second = blocksOfPairs(c, d);
        storeBlocks(dst, 2 * period, first.a);
        storeBlocks(dst + 16, 2 * period, second.a);
        storeBlocks(dst + period, 2 * period, first.b);
        storeBlocks(dst + period + 16, 2 * period, second.b);
    } else {
        // Products with the real parts of the taps, and with the imaginary parts.
        const V first = subAdd(a, swapPairs(b)), second = subAdd(c, swapPairs(d));
        if constexpr (sizeof(T) == 4) {
            const Two<V> t = blocksOfPairs(first, second);
            storeBlocks(dst, 2 * period, t.a);
            storeBlocks(dst + period, 2 * period, t.b);
        } else {
            storeBlocks(dst, period, first);
            storeBlocks(dst + 16, period, second);
        }
    }
}

// A vectors of periods of G groups.
template <class T, int Parts, int A, int G> TEVS_INLINE void group(const Phases<T>& f, const PhaseGroup* g, const T* streams, T* dst) {
    Sums<T, A* G> sum = {};
    addAll<T, A, G>(f, g, streams, sum);
    const ptrdiff_t period = f.period;
    for (int b = 0; b < G; ++b) {
        T* to = dst + g[b].output;
        for (int a = b * A; a < (b + 1) * A; ++a, to += kLanes<T> / Parts * period)
            scatter<T, Parts>(to, period * int(sizeof(T)), sum[0][a], sum[1][a], sum[2][a], sum[3][a]);
    }
}

// A vectors of periods of every group. One vector's four sums alone would leave the multipliers waiting: two groups are added side by side.
template <class T, int Parts, int A> void vectors(const Phases<T>& f, const T* streams, T* dst) {
    const PhaseGroup* const end = f.groups + f.count;
    for (const PhaseGroup* g = f.groups; g < end;) {
        if constexpr (A == 1 && kVectors > 1)
            if (g->paired) {
                group<T, Parts, 1, 2>(f, g, streams, dst);
                g += 2;
                continue;
            }
        group<T, Parts, A, 1>(f, g++, streams, dst);
    }
}

template <class T, int Parts> void filter(const Phases<T>* f, const T* streams, T* dst, int n) {
    int left = n * kPeriodsAtOnce * Parts / kLanes<T>;
    const auto pass = [&](auto step, int count) {
        step(*f, streams, dst);
        streams += count * kLanes<T>;
        dst += count * (kLanes<T> / Parts) * f->period;
        left -= count;
    };
    // Two vectors and two are better than three and one.
    if constexpr (kVectors == 3) {
        while (left > 4 || left == 3) pass(vectors<T, Parts, 3>, 3);
        while (left > 1) pass(vectors<T, Parts, 2>, 2);
    }
    while (left > 0) pass(vectors<T, Parts, 1>, 1);
}

// ---- few periods ----------------------------------------------------------------------------------------------------------------------------

#if TEVS_REGISTER_BYTES >= 32
using Index = Vec<int32_t, 8>;
template <class V> TEVS_INLINE V permuted(const Element<V>* p, Index order, bool wide) {
    const auto from = [&](V v) { return _mm256_permutevar8x32_ps((__m256)v, (__m256i)order); };
    const __m256 near = from(load<Element<V>, kCount<V>>(p));
    if (!wide) return (V)near;
    return (V)_mm256_blendv_ps(near, from(load<Element<V>, kCount<V>>(p + kCount<V>)), (__m256)(Index)(order > 7));
}

// A periods of one run.
template <class T, int Parts, int A, bool Wide> TEVS_INLINE void filterRun(const OutputRuns<T>& f, const OutputRun& r, const T* inputs, T* dst) {
    constexpr int W = kRunBytes / int(sizeof(T));
    using V = Vec<T, W>;
    const auto order = load<int32_t, 8>(r.order), last = load<int32_t, 8>(r.last);
    const T* taps = f.taps + r.taps;
    const T* p = inputs + ptrdiff_t{r.first} * Parts;
    V sum[Parts][A] = {};
    const auto step = [&](auto add) {
        for (int a = 0; a < A; ++a) {
            const V x = permuted<V>(p + a * f.inputs, order, Wide);
            for (int part = 0; part < Parts; ++part) sum[part][a] = add(sum[part][a], fma(load<T, W>(taps + part * W), x, sum[part][a]));
        }
        taps += Parts * W;
        p += Parts;
    };
    for (int s = 1; s < r.steps; ++s) step([](V, V all) { return all; });
    if (r.steps > 0) step([&](V before, V all) { return (V)_mm256_blendv_ps((__m256)before, (__m256)all, (__m256)last); });
    for (int a = 0; a < A; ++a) {
        T* const to = dst + r.output + a * f.outputs;
        if constexpr (Parts == 1)
            store(to, sum[0][a]);
        else
            store(to, subAdd(sum[0][a], swapPairs(sum[1][a])));
    }
}
template <class T, int Parts, int A> TEVS_INLINE void runs(const OutputRuns<T>& f, const T* inputs, T* dst) {
    for (const OutputRun* r = f.runs; r < f.runs + f.count; ++r) {
        if (r->wide)
            filterRun<T, Parts, A, true>(f, *r, inputs, dst);
        else
            filterRun<T, Parts, A, false>(f, *r, inputs, dst);
    }
}
template <class T, int Parts> void filterRuns(const OutputRuns<T>* runs, const T* inputs, T* dst, int n) {
    const OutputRuns<T> f = *runs;
    for (; n >= 4; n -= 4, inputs += 4 * f.inputs, dst += 4 * f.outputs) TEVS_LEVEL_NS::runs<T, Parts, 4>(f, inputs, dst);
    if (n == 3) TEVS_LEVEL_NS::runs<T, Parts, 3>(f, inputs, dst);
    if (n == 2) TEVS_LEVEL_NS::runs<T, Parts, 2>(f, inputs, dst);
    if (n == 1) TEVS_LEVEL_NS::runs<T, Parts, 1>(f, inputs, dst);
}
#endif

}   // namespace

extern const MultirateKernels multirate = {
    .split_32f = Splitter<float, float>::split,
    .split_32fc = Splitter<Complex32f, float>::split,
    .split16s_32f = Splitter<int16_t, float>::split,
    .split16sc_32fc = Splitter<Complex16s, float>::split,
    .split_64f = Splitter<double, double>::split,
    .split_64fc = Splitter<Complex64f, double>::split,
    .split32f_64f = Splitter<float, double>::split,
    .split32fc_64fc = Splitter<Complex32f, double>::split,
    .split32s_64f = Splitter<int32_t, double>::split,
    .split32sc_64fc = Splitter<Complex32s, double>::split,
    .split16s_64f = Splitter<int16_t, double>::split,
    .split16sc_64fc = Splitter<Complex16s, double>::split,

    .real32f = filter<float, 1>,
    .complex32f = filter<float, 2>,
    .real64f = filter<double, 1>,
    .complex64f = filter<double, 2>,

#if TEVS_REGISTER_BYTES >= 32
    .runs32f = filterRuns<float, 1>,
    .runs32fc = filterRuns<float, 2>,
    .runs64f = filterRuns<double, 1>,
    .runs64fc = filterRuns<double, 2>,
#else
    .runs32f = nullptr,
    .runs32fc = nullptr,
    .runs64f = nullptr,
    .runs64fc = nullptr,
#endif
};

}   // namespace tevs::TEVS_LEVEL_NS
