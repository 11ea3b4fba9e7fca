#include "core/complex.h"
#include "core/simd/lanes.h"
#include "core/simd/map.h"
#include "filter/multirate.table.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// Vectors of periods at a time: four sums each, within the registers there are.
template <class T> constexpr int kVectors = kFewRegisters ? 1 : 3;
// Products of pairs want a register more than fused operations: the last vector of three stays in memory, from which registers of 16 bytes could not be multiplied
// at any address.
#if TEVS_REGISTER_BYTES >= 32
template <class T> constexpr int kHeld = __is_same(T, int32_t) ? 2 : 3;
#else
template <class T> constexpr int kHeld = 3;
#endif

// h x + sum. A lane of int32_t holds two 16-bit numbers, whose products are both added.
template <class V> TEVS_INLINE V multiplyAdd(V h, V x, V sum) {
    if constexpr (__is_same(Element<V>, int32_t)) {
        using Pairs = Vec<int16_t, 2 * kCount<V>>;
        return sum + multiplyPairs((Pairs)h, (Pairs)x);
    } else {
        return fma(h, x, sum);
    }
}
#if TEVS_REGISTER_BYTES >= 32
TEVS_INLINE Vec<int32_t, 8> multiplyAdd(Vec<int32_t, 8> h, const int32_t* x, Vec<int32_t, 8> sum) {
    struct Bytes {
        char of[32];
    };
    asm("vpmaddwd %1, %0, %0" : "+x"(h) : "m"(*reinterpret_cast<const Bytes*>(x)));
    return sum + h;
}
#endif

// ---- inputs to streams ------------------------------------------------------------------------------------------------------------------

template <class V> TEVS_INLINE Two<V> blocksOfPairs(V a, V b) {
    using D = Vec<double, int(sizeof(V) / 8)>;
    return {(V)blockLow((D)a, (D)b), (V)blockHigh((D)a, (D)b)};
}

// The inputs of type S, as numbers of T; those of 16 bits as pairs in 32: a complex one, or a real one behind the input before it.
template <class S, class T> struct Splitter {
    static constexpr bool kPairs = __is_same(T, int32_t);
    static constexpr int kPer = kPairs ? 1 : kParts<S>, kRun = 16 / (kPer * int(sizeof(T)));
    using Block = Vec<T, 16 / int(sizeof(T))>;

    // The elements at one place and the ones behind it that belong to the same 16 bytes.
    static TEVS_INLINE Block block(const S* p) {
        if constexpr (!kPairs)
            return loadLanes<T, 16, 1>(partsOf(p)).v[0];
        else if constexpr (kComplex<S>)
            return loadAs<Block>(p);
        else
            return (Block)_mm_unpacklo_epi16(loadLow<8>(p - 1), loadLow<8>(p));
    }
    static TEVS_INLINE void one(const S* p, T* to) {
        if constexpr (kPairs)
            memcpy(to, p - !kComplex<S>, sizeof *to);
        else
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

// The first period by itself: what comes before it lies elsewhere. In a last period that is not whole, the pair behind the last input has this as its first.
void splitPairs(const int16_t* src, int16_t before, int count, const Streams* streams, int32_t* to) {
    using Splitter = TEVS_LEVEL_NS::Splitter<int16_t, int32_t>;
    const Streams s = *streams;
    const int run = s.places < Splitter::kRun ? s.places : Splitter::kRun, n = count / s.places, rest = count % s.places;
    if (count > s.places) Splitter::split(src + s.places, count - s.places, streams, to + 1);
    for (int r = 0; r < s.runs; ++r)
        for (int e = 0; e < run; ++e) {
            const int i = s.starts[r] + e;
            int32_t* const stream = to + (ptrdiff_t{r} * run + e) * s.stride;
            const auto put = [&](int period, int16_t older, int16_t newer) {
                const int16_t pair[] = {older, newer};
                memcpy(stream + period, pair, sizeof pair);
            };
            if (i < count) put(0, i == 0 ? before : src[i - 1], src[i]);
            if (i == rest && rest > 0) put(n, src[count - 1], 0);
        }
}

// ---- sums -----------------------------------------------------------------------------------------------------------------------------------

// N vectors for each of four rows: of N successive runs of periods, or of the same periods for as many groups.
template <class T, int N> using Sums = Vec<T, kLanes<T>>[4][N];

// The inputs from .. end-1 of the first group, and their like of the others, times the taps of Count rows: A vectors of periods for each of G groups of one shape.
// Step inputs lie in a lane.
template <int First, int Count, int Step, class T, int A, int G>
TEVS_INLINE void add(const Phases<T>& f, const PhaseGroup* g, const T* streams, int from, int end, Sums<T, A * G>& sum) {
    constexpr int W = kLanes<T>;
    const T* taps[G];
    const int32_t* place[G];
    for (int b = 0; b < G; ++b) {
        const ptrdiff_t first = ptrdiff_t{from} + (g[b].from[0] - g->from[0]);
        taps[b] = f.taps + g[b].rows[First] + 4 / Step * first;
        place[b] = f.place + first;
    }
    for (ptrdiff_t i = 0; i < end - from; i += Step) {
        Vec<T, W> x[A * G];
        for (int b = 0; b < G; ++b)
            for (int a = 0; a < A && a < kHeld<T>; ++a) x[b * A + a] = inRegister(load<T, W>(streams + place[b][i] + a * W));
#pragma GCC unroll 4
        for (int r = First; r < First + Count; ++r)
#pragma GCC unroll 2
            for (int b = 0; b < G; ++b) {
                const auto h = same<Vec<T, W>>(taps[b][4 / Step * i + r]);
#pragma GCC unroll 4
                for (int a = 0; a < A && a < kHeld<T>; ++a) sum[r][b * A + a] = multiplyAdd(h, x[b * A + a], sum[r][b * A + a]);
                if constexpr (A > kHeld<T>) sum[r][A - 1] = multiplyAdd(h, streams + place[b][i] + (A - 1) * W, sum[r][A - 1]);
            }
    }
}

// Every output's products are added in the order of its inputs, whatever it shares with its neighbours.
template <int Step, class T, int A, int G> TEVS_INLINE void addAll(const Phases<T>& f, const PhaseGroup* g, const T* streams, Sums<T, A * G>& sum) {
    if (g->overlap == kTogether) return add<0, 4, Step, T, A, G>(f, g, streams, g->from[0], g->end[0], sum);
    if (!g->overlap) {
        add<0, 1, Step, T, A, G>(f, g, streams, g->from[0], g->end[0], sum);
        add<1, 1, Step, T, A, G>(f, g, streams, g->from[1], g->end[1], sum);
        add<2, 1, Step, T, A, G>(f, g, streams, g->from[2], g->end[2], sum);
        add<3, 1, Step, T, A, G>(f, g, streams, g->from[3], g->end[3], sum);
        return;
    }
    add<0, 1, Step, T, A, G>(f, g, streams, g->from[0], g->shared[1], sum);
    add<1, 1, Step, T, A, G>(f, g, streams, g->from[1], g->shared[1], sum);
    add<0, 2, Step, T, A, G>(f, g, streams, g->shared[1], g->shared[2], sum);
    add<2, 1, Step, T, A, G>(f, g, streams, g->from[2], g->shared[2], sum);
    add<0, 3, Step, T, A, G>(f, g, streams, g->shared[2], g->shared[3], sum);
    add<3, 1, Step, T, A, G>(f, g, streams, g->from[3], g->shared[3], sum);
    add<0, 4, Step, T, A, G>(f, g, streams, g->shared[3], g->end[0], sum);
    add<1, 3, Step, T, A, G>(f, g, streams, g->end[0], g->end[1], sum);
    add<2, 2, Step, T, A, G>(f, g, streams, g->end[1], g->end[2], sum);
    add<3, 1, Step, T, A, G>(f, g, streams, g->end[2], g->end[3], sum);
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
template <class T, int Parts, int Step, int A, int G> TEVS_INLINE void group(const Phases<T>& f, const PhaseGroup* g, const T* streams, T* dst) {
    Sums<T, A* G> sum = {};
    addAll<Step, T, A, G>(f, g, streams, sum);
    const ptrdiff_t period = f.period;
    for (int b = 0; b < G; ++b) {
        T* to = dst + g[b].output;
        for (int a = b * A; a < (b + 1) * A; ++a, to += kLanes<T> / Parts * period)
            scatter<T, Parts>(to, period * int(sizeof(T)), sum[0][a], sum[1][a], sum[2][a], sum[3][a]);
    }
}

// A vectors of periods of every group. One vector's four sums alone would leave the multipliers waiting: two groups are added side by side.
template <class T, int Parts, int Step, int A> void vectors(const Phases<T>& f, const T* streams, T* dst) {
    const PhaseGroup* const end = f.groups + f.count;
    for (const PhaseGroup* g = f.groups; g < end;) {
        if constexpr (A == 1 && kVectors < T >> 1)
            if (g->paired) {
                group<T, Parts, Step, 1, 2>(f, g, streams, dst);
                g += 2;
                continue;
            }
        group<T, Parts, Step, A, 1>(f, g++, streams, dst);
    }
}

template <class T, int Parts, int Step = 1> void filter(const Phases<T>* f, const T* streams, T* dst, int n) {
    int left = n * kPeriodsAtOnce * Parts / kLanes<T>;
    const auto pass = [&](auto step, int count) {
        step(*f, streams, dst);
        streams += count * kLanes<T>;
        dst += count * (kLanes<T> / Parts) * f->period;
        left -= count;
    };
    // Two vectors and two are better than three and one.
    if constexpr (kVectors < T >> 2)
        while (left > 4 || left == 3) pass(vectors<T, Parts, Step, 3>, 3);
    if constexpr (kVectors < T >> 1)
        while (left > 1) pass(vectors<T, Parts, Step, 2>, 2);
    while (left > 0) pass(vectors<T, Parts, Step, 1>, 1);
}

// ---- sums by digits --------------------------------------------------------------------------------------------------------------------------
//
// lower + 256 upper is 256 t + (lower mod 256) with t = upper + floor(lower / 256), which has room in 32 bits.

// t made odd where something is left: as good to whoever rounds two or more of its bits away.
void joinRounded(const int32_t* lower, const int32_t* upper, int32_t* dst, int len) {
    const auto join = [](auto w, const int32_t* l, const int32_t* u) TEVS_HERE {
        const auto low = load<int32_t, w.n>(l);
        return (load<int32_t, w.n>(u) + (low >> 8)) | ((low & 255) + 255) >> 8;
    };
    map<kRegisterBytes / 4, 4>(len, dst, join, lower, upper);
}
// All of it, within +-2^28.
void joinWhole(const int32_t* lower, const int32_t* upper, int32_t* dst, int len) {
    const auto join = [](auto w, const int32_t* l, const int32_t* u) TEVS_HERE {
        using V = Vec<int32_t, w.n>;
        const auto low = load<int32_t, w.n>(l);
        const V most = same<V>(1 << 20);
        return maximum(-most, minimum(most, load<int32_t, w.n>(u) + (low >> 8))) * 256 + (low & 255);
    };
    map<kRegisterBytes / 4, 4>(len, dst, join, lower, upper);
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
template <class T, int Parts> struct FloatRun {
    template <int A, bool Wide> static TEVS_INLINE void filter(const OutputRuns<T>& f, const OutputRun& r, const T* inputs, T* dst) {
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
};
// The same of 16-bit numbers, Step inputs at a time.
template <int Step, int Digits> struct ShortRun {
    template <int A, bool Wide> static TEVS_INLINE void filter(const OutputRuns<int32_t>& f, const OutputRun& r, const int32_t* inputs, int32_t* dst) {
        using V = Vec<int32_t, 8>;
        const auto order = load<int32_t, 8>(r.order);
        const int32_t *taps = f.taps + r.taps, *p = inputs + r.first;
        V sum[Digits][A] = {};
        for (int s = 0; s < r.steps; ++s, taps += 8, p += Step)
            for (int a = 0; a < A; ++a) {
                const V x = permuted<V>(p + a * f.inputs, order, Wide);
                for (int d = 0; d < Digits; ++d) sum[d][a] = multiplyAdd(load<int32_t, 8>(taps + d * f.upperTaps), x, sum[d][a]);
            }
        for (int d = 0; d < Digits; ++d)
            for (int a = 0; a < A; ++a) store(dst + d * f.upperSums + r.output + a * f.outputs, sum[d][a]);
    }
};
template <class Run, int A, class T> TEVS_INLINE void runs(const OutputRuns<T>& f, const T* inputs, T* dst) {
    for (const OutputRun* r = f.runs; r < f.runs + f.count; ++r) {
        if (r->wide)
            Run::template filter<A, true>(f, *r, inputs, dst);
        else
            Run::template filter<A, false>(f, *r, inputs, dst);
    }
}
template <class Run, class T> void filterRuns(const OutputRuns<T>* runs, const T* inputs, T* dst, int n) {
    const OutputRuns<T> f = *runs;
    for (; n >= 4; n -= 4, inputs += 4 * f.inputs, dst += 4 * f.outputs) TEVS_LEVEL_NS::runs<Run, 4>(f, inputs, dst);
    if (n == 3) TEVS_LEVEL_NS::runs<Run, 3>(f, inputs, dst);
    if (n == 2) TEVS_LEVEL_NS::runs<Run, 2>(f, inputs, dst);
    if (n == 1) TEVS_LEVEL_NS::runs<Run, 1>(f, inputs, dst);
}
template <int Step> void filterShortRuns(const OutputRuns<int32_t>* runs, const int32_t* inputs, int32_t* dst, int n) {
    (runs->digits == 1 ? filterRuns<ShortRun<Step, 1>, int32_t> : filterRuns<ShortRun<Step, 2>, int32_t>)(runs, inputs, dst, n);
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
    .split_16s = splitPairs,
    .split_16sc = Splitter<Complex16s, int32_t>::split,

    .real32f = filter<float, 1>,
    .complex32f = filter<float, 2>,
    .real64f = filter<double, 1>,
    .complex64f = filter<double, 2>,
    .real16s = filter<int32_t, 1, 2>,
    .complex16s = filter<int32_t, 1>,
    .joinRounded = joinRounded,
    .joinWhole = joinWhole,

#if TEVS_REGISTER_BYTES >= 32
    .runs32f = filterRuns<FloatRun<float, 1>>,
    .runs32fc = filterRuns<FloatRun<float, 2>>,
    .runs64f = filterRuns<FloatRun<double, 1>>,
    .runs64fc = filterRuns<FloatRun<double, 2>>,
    .runs16s = filterShortRuns<2>,
    .runs16sc = filterShortRuns<1>,
#else
    .runs32f = nullptr,
    .runs32fc = nullptr,
    .runs64f = nullptr,
    .runs64fc = nullptr,
    .runs16s = nullptr,
    .runs16sc = nullptr,
#endif
};

}   // namespace tevs::TEVS_LEVEL_NS
