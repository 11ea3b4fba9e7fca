#include "filter/iir.table.h"

#include "core/simd/lanes.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

constexpr int kBytes = kRegisterBytes >= 32 ? 32 : 16;
#ifdef __FMA__
constexpr bool kFused = true;
#else
constexpr bool kFused = false;
#endif

// Neither infinite nor NaN, any lane.
template <class V> TEVS_INLINE bool allFinite(V v) { return all(v - v == V{}); }

// ---- sections -----------------------------------------------------------------------------------------------------------------------------

// Lane l holds element From + l / Each of v.
template <int From, int Each, class V, int... I> TEVS_INLINE V spreadOf(V v, Lane<I...>) { return __builtin_shufflevector(v, v, (From + I / Each)...); }
template <int From, int Each, class V> TEVS_INLINE V spread(V v) {
    if constexpr (Each == 1 && From == 0)
        return v;
    else
        return spreadOf<From, Each>(v, Iota<kCount<V>>{});
}

// The state's registers: doubles, in 16 bytes or, where there are four and as many lanes, in 32.
template <int States> constexpr int kWide = States * 8 < kBytes ? States : kBytes / 8;
template <int States> struct State { Vec<double, kWide<States>> v[States / kWide<States>]; };

// Part q of a state of doubles in every lane.
template <class V, int States> TEVS_INLINE V partOf(const State<States>& s, int q) {
    constexpr int W = kWide<States>;
    return same<V>(s.v[q / W][q % W]);
}
// In single precision: four lanes, the upper ones of no account where there are two parts.
TEVS_INLINE Vec<float, 4> narrowed(const State<2>& s) { return (Vec<float, 4>)_mm_cvtpd_ps((__m128d)s.v[0]); }
TEVS_INLINE Vec<float, 4> narrowed(const State<4>& s) {
#if TEVS_REGISTER_BYTES >= 32
    return (Vec<float, 4>)_mm256_cvtpd_ps((__m256d)s.v[0]);
#else
    return narrow(Two<Vec<double, 2>>{s.v[0], s.v[1]});
#endif
}
// And back.
template <int States> TEVS_INLINE State<States> widened(Vec<float, 4> v) {
    if constexpr (States == 2) {
        return {(Vec<double, 2>)_mm_cvtps_pd((__m128)v)};
    } else {
#if TEVS_REGISTER_BYTES >= 32
        return {wide(v)};
#else
        return {(Vec<double, 2>)_mm_cvtps_pd((__m128)v), (Vec<double, 2>)_mm_cvtps_pd(_mm_movehl_ps((__m128)v, (__m128)v))};
#endif
    }
}
// The halves of a register added up until States lanes are left.
template <int States, class V> TEVS_INLINE auto foldedTo(V v) {
    if constexpr (kCount < V >> States && sizeof(V) > 16)
        return foldedTo<States>(low(v) + high(v));
    else if constexpr (kCount<V> > States)
        return v + (V)_mm_movehl_ps((__m128)v, (__m128)v);
    else
        return v;
}

template <class T> struct Block {
    using Table = SectionTable<T>;
    using S = Scalar<T>;
    static constexpr int P = Table::kParts, States = Table::kStates, N = kBytes / int(sizeof(S)), R = kIirBlock / N;
    static constexpr int kInputs = N < States ? 1 : N / States, kIntoRegisters = N < States ? States / N : 1;   // of an input, or inputs of a register
    static constexpr bool kSingle = sizeof(S) == 4;
    using V = Vec<S, N>;

    V direct[P], response[kIirBlock][R], outOf[States][R], into[kIirBlock / kInputs][kIntoRegisters];
    State<States> step[States], stepRest[States];

    TEVS_INLINE explicit Block(const Table* t) {
        direct[0] = same<V>(t->direct[0]);
        if constexpr (P == 2) direct[1] = alternate(same<V>(-t->direct[1]), same<V>(t->direct[1]));
#pragma GCC unroll 8
        for (int k = 0; k < kIirBlock; ++k)
            for (int r = 0; r < R; ++r) response[k][r] = load<S, N>(t->response[k % P] + kIirBlock - P + r * N - (k - k % P));
        for (int q = 0; q < States; ++q) {
            for (int r = 0; r < R; ++r) outOf[q][r] = load<S, N>(t->outOf + q * kIirBlock + r * N);
            step[q] = loadAs<State<States>>(t->step + q * States);
            stepRest[q] = loadAs<State<States>>(t->stepRest + q * States);
        }
        for (int i = 0; i < kIirBlock / kInputs; ++i)
            for (int h = 0; h < kIntoRegisters; ++h) into[i][h] = load<S, N>(t->into + (i * kIntoRegisters + h) * N);
    }

    TEVS_INLINE V stateOut(const State<States>& s, Vec<float, 4> single, int q) const {
        if constexpr (kSingle)
            return same<V>(single[q]);
        else
            return partOf<V>(s, q);
    }
    template <int I = 0> TEVS_INLINE void addInputs(const V (&x)[R], V& u) const {
        u = fma(into[I][0], spread<I * kInputs % N, States>(x[I * kInputs / N]), u);
        if constexpr ((I + 1) * kInputs < kIirBlock) addInputs<I + 1>(x, u);
    }
    // What the inputs add to the state.
    TEVS_INLINE State<States> fromInputs(const S* x, const V (&in)[R]) const {
        if constexpr (kIntoRegisters > 1) {
            State<States> u = {};
            for (int k = 0; k < kIirBlock; ++k)
                for (int h = 0; h < kIntoRegisters; ++h) u.v[h] = fma(into[k][h], same<V>(x[k]), u.v[h]);
            return u;
        } else {
            V u = {};
            addInputs(in, u);
            if constexpr (kSingle)
                return widened<States>(foldedTo<States>(u));
            else
                return {foldedTo<States>(u)};
        }
    }

    // One block; false, with nothing changed, where not all of it is finite.
    TEVS_INLINE bool operator()(const S* x, S* y, State<States>& s) const {
        Vec<float, 4> single = {};
        if constexpr (kSingle) single = narrowed(s);
        const auto fromState = [&](int r) TEVS_HERE {
            V sum = outOf[0][r] * stateOut(s, single, 0);
            for (int q = 1; q < States; ++q) sum = fma(outOf[q][r], stateOut(s, single, q), sum);
            return sum;
        };
        // b0 x, mostly the largest part, comes last: fewer sums of full size are rounded. The state's part would best come first, but where products are
        // fused the wait for it would bind; and fewer things are rounded there anyway.
        V in[R], out[R];
        for (int r = 0; r < R; ++r) {
            in[r] = inRegister(load<S, N>(x + r * N));
            out[r] = kFused ? V{} : fromState(r);
        }
#pragma GCC unroll 8
        for (int k = 0; k < kIirBlock - P; ++k) {
            const V c = same<V>(x[k]);
#pragma GCC unroll 4
            for (int r = 0; r < R; ++r)
                if ((r + 1) * N > k + P) out[r] = fma(response[k][r], c, out[r]);
        }
#pragma GCC unroll 4
        for (int r = 0; r < R; ++r) {
            if constexpr (kFused) out[r] += fromState(r);
            if constexpr (P == 2) out[r] = fma(direct[1], swapPairs(in[r]), out[r]);
            out[r] = fma(direct[0], in[r], out[r]);
        }
        State<States> next = fromInputs(x, in);
        for (int h = 0; h < States / kWide<States>; ++h) {
            using W = Vec<double, kWide<States>>;
            if constexpr (!kSingle)
                for (int q = 0; q < States; ++q) next.v[h] = fma(stepRest[q].v[h], partOf<W>(s, q), next.v[h]);
            for (int q = 0; q < States; ++q) next.v[h] = fma(step[q].v[h], partOf<W>(s, q), next.v[h]);
        }
        V sum = out[0];
        for (int r = 1; r < R; ++r) sum = (sum - sum) + out[r];
        if (!allFinite(sum)) [[unlikely]]
            return false;
        if constexpr (!kSingle)   // whose state would show in the outputs of the next block, and is beyond their range then
            for (const auto& v : next.v)
                if (!allFinite(v)) [[unlikely]]
                    return false;
        for (int r = 0; r < R; ++r) store(y + r * N, out[r]);
        s = next;
        return true;
    }
};

template <class T> int section(const T* x, T* y, int len, const SectionTable<T>* table, T* d) {
    using S = Scalar<T>;
    constexpr int samples = SectionTable<T>::kSamples, States = SectionTable<T>::kStates;
    const Block<T> block(table);
    double v[States];
    const double* const sigma = table->sigma;
    const S* const parts = partsOf(d);
    if constexpr (kComplex<T>) {
        v[0] = parts[0], v[1] = parts[1];
        v[2] = parts[2] + (sigma[0] * v[0] - sigma[1] * v[1]);
        v[3] = parts[3] + (sigma[0] * v[1] + sigma[1] * v[0]);
    } else {
        v[0] = parts[0];
        v[1] = parts[1] + sigma[0] * v[0];
    }
    State<States> s = loadAs<State<States>>(v);
    int n = 0;
    while (len - n >= samples && block(partsOf(x + n), partsOf(y + n), s)) n += samples;
    if (n == 0) return 0;
    store(v, s);
    if constexpr (kComplex<T>)
        *d = {S(v[0]), S(v[1])}, d[1] = {S(v[2] - (sigma[0] * v[0] - sigma[1] * v[1])), S(v[3] - (sigma[0] * v[1] + sigma[1] * v[0]))};
    else
        d[0] = S(v[0]), d[1] = S(v[1] - sigma[0] * v[0]);
    return n;
}

// ---- cascades -------------------------------------------------------------------------------------------------------------------------------
//
// Lane k is section k. Its inputs are the outputs of lane k - 1, kLag steps old: an exchange of lanes and three operations take as long as four steps, for an output waits for the
// one before it by a single operation, in the direct form I,
//
//     y[n] = (b0 x[n] + g[n-1] - a2 y[n-2]) - a1 y[n-1],   g[n] = b1 x[n] + h[n-1],   h[n] = b2 x[n]
//
// which begins with g = d[0], h = d[1] and no outputs, and ends with d[0] = g - a2 y[n-1] - a1 y[n], d[1] = h - a2 y[n]. Until its first sample a lane is all zeros. Lanes without a
// section hand on what they get.

template <class V, int... I> TEVS_INLINE V rotatedOf(V v, Lane<I...>) {
    return __builtin_shufflevector(v, v, ((I + int(sizeof...(I)) - 1) % int(sizeof...(I)))...);
}
template <class V, int... I> TEVS_INLINE V withFirstOf(V v, V first, Lane<I...>) {
    return __builtin_shufflevector(v, first, (I == 0 ? int(sizeof...(I)) : I)...);
}

template <class S, int W> class Wave {
public:
    static constexpr int kLag = 4, kLead = (W - 1) * kLag;   // the steps before the last lane begins, and behind the end of the first

    Wave(const Section<S>* sections, int count, const S* d) {
        S taps[5][W] = {};
        for (int k = 0; k < W; ++k) {
            const Section<S> s = k < count ? sections[k] : Section<S>{1, 0, 0, 0, 0};
            taps[0][k] = s.b0, taps[1][k] = s.b1, taps[2][k] = s.b2, taps[3][k] = s.a1, taps[4][k] = s.a2;
            if (k < count) first_[k][k] = d[2 * k], second_[k][k] = d[2 * k + 1];
        }
        b0_ = load<S, W>(taps[0]), b1_ = load<S, W>(taps[1]), b2_ = load<S, W>(taps[2]), a1_ = load<S, W>(taps[3]), a2_ = load<S, W>(taps[4]);
    }
    bool isFinite() const { return allFinite(b0_ - b0_ + (b1_ - b1_) + (b2_ - b2_) + (a1_ - a1_) + (a2_ - a2_)); }
    // At least kLead samples; y may be x.
    void operator()(const S* x, S* y, int len) {
        Steps steps{b0_, b1_, b2_, a1_, a2_};
        V handed[kLag] = {};
        int t = 0;
        const auto group = [&](auto in, auto out) TEVS_HERE {
#pragma GCC unroll 4
            for (int i = 0; i < kLag; ++i) {
                handed[i] = steps(handed[i], in(t + i));
                out(t + i - kLead, handed[i][0]);
            }
            t += kLag;
        };
        const auto read = [=](int n) TEVS_HERE { return same<V>(x[n]); };
        const auto write = [=](int n, S v) TEVS_HERE { y[n] = v; };
        for (int k = 0; k < W; ++k) {
            steps.begin(load<S, W>(first_[k]), load<S, W>(second_[k]));
            if (k < W - 1) group(read, [](int, S) {});
        }
        while (len - t >= kLag) group(read, write);
        for (; t < len; ++t) {
            const V last = steps(handed[0], read(t));
            for (int i = 0; i + 1 < kLag; ++i) handed[i] = handed[i + 1];
            handed[kLag - 1] = last;
            write(t - kLead, last[0]);
        }
        for (int k = 0; k < W; ++k) {
            if (k > 0) group([](int) { return V{}; }, write);
            store(first_[k], fnma(a1_, steps.y, fnma(a2_, steps.before, steps.g)));
            store(second_[k], fnma(a2_, steps.y, steps.h));
        }
    }
    void state(int count, S* d) const {
        for (int k = 0; k < count; ++k) d[2 * k] = first_[k][k], d[2 * k + 1] = second_[k][k];
    }

private:
    using V = Vec<S, W>;
    using Lanes = Iota<W>;

    struct Steps {
        V b0, b1, b2, a1, a2, y = {}, before = {}, g = {}, h = {};
        TEVS_INLINE void begin(V first, V second) {
            g += first;
            h += second;
        }
        // The outputs of a step, each in the lane that it goes to, from those of kLag steps before. As whole registers: the compiler would take single lanes out of them, and put them in.
        TEVS_INLINE V operator()(V handed, V x) {
            const V in = withFirstOf(handed, inRegister(x), Lanes{});
            const V next = fnma(a1, y, fnma(a2, before, fma(b0, in, g)));
            g = fma(b1, in, h);
            h = b2 * in;
            before = y;
            y = next;
            return inRegister(rotatedOf(next, Lanes{}));
        }
    };

    V b0_, b1_, b2_, a1_, a2_;
    S first_[W][W] = {}, second_[W][W] = {};   // row k: the state of lane k, in lane k, when its samples begin; from their end on of all lanes
};

template <class S, int W> int waveOf(const S* x, S* y, int len, const Section<S>* sections, int count, S* d) {
    if (count > W) count = W;
    Wave<S, W> wave(sections, count, d);
    if (len < wave.kLead || !wave.isFinite()) return 0;
    wave(x, y, len);
    wave.state(count, d);
    return count;
}
// A step takes as long as a sample of two or three sections does one after another.
template <class T> int cascade(const T* x, T* y, int len, const Section<T>* sections, int count, T* d) {
    constexpr int most = kComplex<T> ? 0 : kBytes / int(sizeof(T)), least = sizeof(T) == 4 ? 3 : 2;
    if constexpr (most == 8)
        if (count > 4) return waveOf<T, 8>(x, y, len, sections, count, d);
    if constexpr (most >= 4)
        if (count >= least) return waveOf<T, 4>(x, y, len, sections, count, d);
    return 0;
}

// ---- arbitrary order ------------------------------------------------------------------------------------------------------------------------
//
// acc holds what the samples so far add to the next outputs: the direct form's state, W outputs to a register. What a group of W inputs adds is put together apart from it,
// since nobody waits for that; then each output in turn, which is complete by then, is taken off those behind it.

template <class T, int R> int arbitraryOf(const T* x, T* y, int len, const Scalar<T>* table, T* d) {
    using S = Scalar<T>;
    constexpr int P = kParts<T>, W = 16 / int(sizeof(S)), samples = W / P, stride = (R + 2) * W;
    using V = Vec<S, W>;
    const S *const b = table + W - P, *const a = b + P * stride;
    V acc[R + 1];
    for (int r = 0; r < R; ++r) acc[r] = load<S, W>(partsOf(d) + r * W);
    int n = 0;
    for (; len - n >= samples; n += samples) {
        const S* const in = partsOf(x + n);
        V added[R + 1];
#pragma GCC unroll 4
        for (int k = 0; k < W; ++k) {
            const V c = same<V>(in[k]);
#pragma GCC unroll 16
            for (int r = 0; r <= R; ++r) {
                const V h = load<S, W>(b + k % P * stride - (k - k % P) + r * W);
                added[r] = k == 0 ? h * c : fma(h, c, added[r]);
            }
        }
        acc[R] = added[R];
#pragma GCC unroll 16
        for (int r = 0; r < R; ++r) acc[r] += added[r];
#pragma GCC unroll 4
        for (int k = 0; k < W; ++k) {
            const V c = same<V>(acc[0][k]);
#pragma GCC unroll 16
            for (int r = 0; r <= R; ++r) acc[r] = fnma(load<S, W>(a + k % P * stride - (k - k % P) + r * W), c, acc[r]);
        }
        if (!allFinite(acc[0])) [[unlikely]]
            break;
        store(y + n, acc[0]);
#pragma GCC unroll 16
        for (int r = 0; r < R; ++r) {
            acc[r] = acc[r + 1];
            store(partsOf(d) + r * W, acc[r]);
        }
    }
    return n;
}

template <class T> struct Arbitrary {
    using Of = int(const T* x, T* y, int len, const Scalar<T>* table, T* d);
    struct ByRegisters {
        Of* of[kMostIirRegisters];
    };
    template <int... R> static constexpr ByRegisters all(Lane<R...>) { return {{arbitraryOf<T, R + 1>...}}; }
    static int filter(const T* x, T* y, int len, const Scalar<T>* table, int registers, T* d) {
        static constexpr ByRegisters kAll = all(Iota<kMostIirRegisters>{});
        return kAll.of[registers - 1](x, y, len, table, d);
    }
};

}   // namespace

extern const IirKernels iir = {
    .real32f = {section<float>, cascade<float>, Arbitrary<float>::filter},
    .complex32f = {section<Complex32f>, cascade<Complex32f>, Arbitrary<Complex32f>::filter},
    .real64f = {section<double>, cascade<double>, Arbitrary<double>::filter},
    .complex64f = {section<Complex64f>, cascade<Complex64f>, Arbitrary<Complex64f>::filter},
};

}   // namespace tevs::TEVS_LEVEL_NS
