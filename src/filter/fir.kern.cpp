#include "filter/fir.table.h"

#include "core/simd/lanes.h"
#include "core/simd/map.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// ---- outputs in lanes ---------------------------------------------------------------------------------------------------------------------
//
// W outputs of a filter, one after the other: how their samples are loaded, what a tap is in registers, what sums are kept, and how outputs come of them.

// Bytes bytes at p in a register of no less than 16 bytes, zeros behind them; and back.
template <class T, int Bytes> TEVS_INLINE Register<T, (Bytes < 16 ? 16 : Bytes)> loadBytes(const void* p) {
    if constexpr (Bytes >= 16)
        return loadAs<Register<T, Bytes>>(p);
    else
        return (Register<T, 16>)loadLow<Bytes>(p);
}
template <int Bytes, class V> TEVS_INLINE void storeBytes(void* p, V v) { memcpy(p, &v, Bytes); }

template <class T, int W> struct RealOutputs {
    using Sample = T;
    using Tap = T;
    using Sum = T;
    static constexpr int kBytes = W * int(sizeof(T)), kTaps = 1, kParts = 1;
    using V = decltype(loadBytes<T, kBytes>(nullptr));
    static TEVS_INLINE V tap(const T* p) { return same<V>(*p); }
    static TEVS_INLINE V part(const T* p, int) { return same<V>(*p); }
    static TEVS_INLINE V samples(const T* p) { return inRegister(loadBytes<T, kBytes>(p)); }
    V by[kParts] = {};
    TEVS_INLINE void add(V tap, V x) { by[0] = fma(tap, x, by[0]); }
    TEVS_INLINE void put(T* out) const { storeBytes<kBytes>(out, by[0]); }
};

// By the parts of the taps: y = sum of re(h) x + i sum of im(h) x.
template <class T, class C, int W> struct ComplexOutputs {
    using Sample = C;
    using Tap = C;
    using Sum = C;
    static constexpr int kBytes = W * int(sizeof(C)), kTaps = 1, kParts = 2;
    using V = decltype(loadBytes<T, kBytes>(nullptr));
    static TEVS_INLINE Two<V> tap(const C* p) { return {same<V>(p->re), same<V>(p->im)}; }
    static TEVS_INLINE V part(const C* p, int k) { return same<V>(k == 0 ? p->re : p->im); }
    static TEVS_INLINE V samples(const C* p) { return inRegister(loadBytes<T, kBytes>(p)); }
    V by[kParts] = {};
    TEVS_INLINE void add(const Two<V>& tap, V x) {
        by[0] = fma(tap.a, x, by[0]);
        by[1] = fma(tap.b, x, by[1]);
    }
    TEVS_INLINE void put(C* out) const { storeBytes<kBytes>(out, subAdd(by[0], swapPairs(by[1]))); }
};

// Two taps at a time: outputs at even places from pairs of samples that begin at even ones, the others from pairs that begin at odd ones.
template <int W> struct ShortOutputs {
    using Sample = int16_t;
    using Tap = int16_t;
    using Sum = int32_t;
    static constexpr int kTaps = 2;
    using V = Vec<int16_t, W>;
    using Sums = Vec<uint32_t, W / 2>;
    static TEVS_INLINE V tap(const int16_t* p) {
        int32_t pair;
        memcpy(&pair, p, sizeof pair);
        return (V)(Vec<int32_t, W / 2>{} + pair);
    }
    static TEVS_INLINE Two<V> samples(const int16_t* p) { return {inRegister(load<int16_t, W>(p)), inRegister(load<int16_t, W>(p + 1))}; }
    Sums even = {}, odd = {};
    TEVS_INLINE void add(V tap, const Two<V>& x) {
        even += (Sums)multiplyPairs(x.a, tap);
        odd += (Sums)multiplyPairs(x.b, tap);
    }
    TEVS_INLINE void put(int32_t* out) const { store(out, interleave(even, odd)); }
};

template <int W> struct ComplexShortOutputs {
    using Sample = Complex16s;
    using Tap = TapMatrix;
    using Sum = Complex32s;
    static constexpr int kBytes = 4 * W, kTaps = 1;
    using V = decltype(loadBytes<int16_t, kBytes>(nullptr));
    using Sums = Vec<uint32_t, kCount<V> / 2>;
    static TEVS_INLINE V row(const int16_t* p) {
        int32_t pair;
        memcpy(&pair, p, sizeof pair);
        return (V)((Vec<int32_t, kCount<V> / 2>){} + pair);
    }
    static TEVS_INLINE Two<V> tap(const TapMatrix* p) { return {row(p->re), row(p->im)}; }
    static TEVS_INLINE V samples(const Complex16s* p) { return inRegister(loadBytes<int16_t, kBytes>(p)); }
    Sums re = {}, im = {};
    TEVS_INLINE void add(const Two<V>& tap, V x) {
        re += (Sums)multiplyPairs(x, tap.a);
        im += (Sums)multiplyPairs(x, tap.b);
    }
    TEVS_INLINE void put(Complex32s* out) const {
        const Two<Sums> pairs = interleave(re, im);
        if constexpr (kBytes >= 16)
            store(out, pairs);
        else
            storeBytes<2 * kBytes>(out, pairs.a);
    }
};

// ---- blocks -------------------------------------------------------------------------------------------------------------------------------
//
// A shape says what outputs there are:
//   Outputs<W>   W of them in lanes, for W from kLeast to kStep
//   kStep        those of a register (256 bits at level 3 too, where its 32 registers serve), and the step in tap order between taps that share a load
//   kVectors     registers of outputs held at a time: enough independent sums to cover the latency of two multiply-adds a cycle
//   kShared      the most taps that share a load
//   kPaired      whether two such are added up first
//   kAlone       registers of outputs where none share a load

constexpr int kBytes = kRegisterBytes >= 32 ? 32 : 16;

// Adds the taps j = s + q kStep, s < count <= kStep, q < C, to A vectors of outputs, kStep apart.
//
// A load of in[n+j ..] serves tap q of vector a and tap q+1 of vector a-1, so A C products take A + C - 1 loads; one load each would keep the multipliers
// waiting, since nearly half of them cross a cache line. Every sum runs over s, then q: the same order in whichever vector an output lies.
template <class Shape, int C, int A, class Outputs>
TEVS_INLINE void addTaps(const typename Outputs::Sample* in, const typename Outputs::Tap* taps, int count, Outputs (&sum)[A]) {
    constexpr int step = Shape::kStep;
    for (int s = 0; s < count; s += Outputs::kTaps) {
#pragma GCC unroll 16
        for (int c = 0; c < A + C - 1; ++c) {
            const auto x = Outputs::samples(in + s + c * step);
#pragma GCC unroll 16
            for (int q = 0; q < C; ++q)
                if (c - q >= 0 && c - q < A) sum[c - q].add(Outputs::tap(taps + s + q * step), x);
        }
    }
}

// The same for two taps, which are added up before they join the sum. A chain of fused operations waits for both a product and a sum at each tap; here it waits
// for one sum in two taps, and so few registers of outputs as eight registers allow keep the multipliers busy.
template <class Shape, int A, class Outputs>
TEVS_INLINE void addPairs(const typename Outputs::Sample* in, const typename Outputs::Tap* taps, int count, Outputs (&sum)[A]) {
    constexpr int step = Shape::kStep;
    for (int s = 0; s < count; ++s)
#pragma GCC unroll 2
        for (int k = 0; k < Outputs::kParts; ++k) {
            const auto first = Outputs::part(taps + s, k), second = Outputs::part(taps + s + step, k);
            auto product = first * Outputs::samples(in + s);
#pragma GCC unroll 16
            for (int a = 0; a < A; ++a) {
                const auto x = Outputs::samples(in + s + (a + 1) * step);
                sum[a].by[k] += fma(second, x, product);
                product = first * x;
                // Step by step: what the compiler would mix of several has no room in the registers, and sums that wait in memory are four times as slow.
                asm volatile("" : "+x"(sum[a].by[k]) : : "memory");
            }
        }
}

// Two or more taps that share their loads.
template <class Shape, int C, int A, class Outputs>
TEVS_INLINE void addShared(const typename Outputs::Sample* in, const typename Outputs::Tap* taps, int count, Outputs (&sum)[A]) {
    if constexpr (C == 2 && Shape::kPaired)
        addPairs<Shape>(in, taps, count, sum);
    else
        addTaps<Shape, C>(in, taps, count, sum);
}

template <class Shape, int W, int A, class Sample, class Tap, class Sum> TEVS_INLINE void outputs(const Sample* in, const Tap* taps, int tapsLen, Sum* out) {
    using Outputs = typename Shape::template Outputs<W>;
    constexpr int step = Shape::kStep;
    Outputs sum[A] = {};
    int j = 0;
    if constexpr (Shape::kShared > 2)
        for (; j + Shape::kShared * step <= tapsLen; j += Shape::kShared * step) addShared<Shape, Shape::kShared>(in + j, taps + j, step, sum);
    if constexpr (Shape::kShared > 1) {
        for (; j + 2 * step <= tapsLen; j += 2 * step) addShared<Shape, 2>(in + j, taps + j, step, sum);
        if (const int pairs = tapsLen - j - step; pairs > 0) {
            addShared<Shape, 2>(in + j, taps + j, pairs, sum);
            addTaps<Shape, 1>(in + j + pairs, taps + j + pairs, step - pairs, sum);
            j = tapsLen;
        }
    }
    addTaps<Shape, 1>(in + j, taps + j, tapsLen - j, sum);
#pragma GCC unroll 16
    for (int a = 0; a < A; ++a) sum[a].put(out + a * step);
}

// Of filters with so few taps that none share a load: as many registers of outputs as there is room for then.
template <class Shape> struct OfFewTaps : Shape {
    static constexpr int kVectors = Shape::kAlone, kShared = 1;
    static constexpr bool kPaired = false;
};

template <class Shape> struct Filter {
    using Sample = typename Shape::template Outputs<Shape::kStep>::Sample;
    using Tap = typename Shape::template Outputs<Shape::kStep>::Tap;
    using Sum = typename Shape::template Outputs<Shape::kStep>::Sum;
    static constexpr int kStep = Shape::kStep, kVectors = Shape::kVectors;

    using Some = void(const Sample* in, const Tap* taps, int tapsLen, Sum* out);
    struct SomeByCount {
        Some* of[kVectors];
    };
    template <int A> static void vectors(const Sample* in, const Tap* taps, int tapsLen, Sum* out) { outputs<Shape, kStep, A>(in, taps, tapsLen, out); }
    template <int... A> static constexpr SomeByCount byCount(Lane<A...>) { return {{vectors<A + 1>...}}; }

    // Fewer outputs than a register has: W of them and, once more with some of these, the last W.
    template <int W> static TEVS_INLINE void few(const Sample* in, const Tap* taps, int tapsLen, Sum* out, int len) {
        if constexpr (W >= Shape::kLeast) {
            if (len < W) return few<W / 2>(in, taps, tapsLen, out, len);
            outputs<Shape, W, 1>(in, taps, tapsLen, out);
            if (len > W) outputs<Shape, W, 1>(in + (len - W), taps, tapsLen, out + (len - W));
        } else if constexpr (Shape::kLeast > 1) {
            for (int n = 0; n < len; ++n) out[n] = Shape::dot(in + n, taps, tapsLen);
        }
    }

    static void block(const Sample* in, const Tap* taps, int tapsLen, Sum* out, int len) {
        static constexpr SomeByCount kSome = byCount(Iota<kVectors>{});
        if constexpr (kVectors < Shape::kAlone)
            if (tapsLen <= kStep) return Filter<OfFewTaps<Shape>>::block(in, taps, tapsLen, out, len);
        if (len < kStep) return few<kStep / 2>(in, taps, tapsLen, out, len);
        int n = 0;
        for (; len - n >= 2 * kVectors * kStep; n += kVectors * kStep) vectors<kVectors>(in + n, taps, tapsLen, out + n);
        // What is left is shared out evenly: the few vectors of a last full group's remainder would have too few sums to keep the multipliers busy.
        for (int left = (len - n) / kStep; left > 0;) {
            const int now = left > kVectors ? (left + 1) / 2 : left;
            kSome.of[now - 1](in + n, taps, tapsLen, out + n);
            n += now * kStep;
            left -= now;
        }
        if (n < len) kSome.of[0](in + (len - kStep), taps, tapsLen, out + (len - kStep));   // some of them once more
    }
};

// ---- single sums ----------------------------------------------------------------------------------------------------------------------------

template <int B> struct Bytes { static constexpr int n = B; };

// add(Bytes<B>, j) for the elements of Size bytes from j to n, fewer than fill a register, in pieces of falling width. Returns where the last one ends; elements
// of two bytes may leave one over.
template <int Size, class Add> TEVS_INLINE int inPieces(int j, int n, Add add) {
    const auto piece = [&](auto bytes) TEVS_HERE {
        if ((n - j) * Size >= bytes.n) {
            add(bytes, j);
            j += bytes.n / Size;
        }
    };
    if constexpr (kBytes > 16) piece(Bytes<16>{});
    if constexpr (Size <= 8) piece(Bytes<8>{});
    if constexpr (Size <= 4) piece(Bytes<4>{});
    return j;
}
// The halves of a register added up.
template <class V> TEVS_INLINE auto folded(V v) {
    if constexpr (sizeof(V) > 16)
        return low(v) + high(v);
    else
        return v;
}

template <class T> T dotReal(const T* in, const T* taps, int tapsLen) {
    constexpr int K = kBytes / int(sizeof(T));
    using V = Vec<T, K>;
    V sum[4] = {};
    int j = 0;
    for (; j + 4 * K <= tapsLen; j += 4 * K)
        for (int a = 0; a < 4; ++a) sum[a] = fma(load<T, K>(taps + j + a * K), load<T, K>(in + j + a * K), sum[a]);
    for (; j + K <= tapsLen; j += K) sum[0] = fma(load<T, K>(taps + j), load<T, K>(in + j), sum[0]);
    Register<T, 16> rest = {};
    inPieces<sizeof(T)>(j, tapsLen, [&](auto b, int i) TEVS_HERE { rest = fma(loadBytes<T, b.n>(taps + i), loadBytes<T, b.n>(in + i), rest); });
    const auto all = folded((sum[0] + sum[1]) + (sum[2] + sum[3])) + rest;
    if constexpr (sizeof(T) == 4)
        return (all[0] + all[2]) + (all[1] + all[3]);
    else
        return all[0] + all[1];
}

// Products of equal parts have opposite signs in the real part, those of unequal parts add up to the imaginary part.
template <class T, class C> C dotComplex(const C* in, const C* taps, int tapsLen) {
    constexpr int K = kBytes / int(sizeof(C));
    using V = Vec<T, 2 * K>;
    V equal[4] = {}, unequal[4] = {};
    const auto add = [](auto h, auto x, auto& same, auto& crossed) TEVS_HERE {
        same = fma(h, x, same);
        crossed = fma(swapPairs(h), x, crossed);
    };
    const auto values = [](const C* p) TEVS_HERE { return inRegister(loadAs<V>(p)); };
    int j = 0;
    for (; j + 4 * K <= tapsLen; j += 4 * K)
        for (int a = 0; a < 4; ++a) add(values(taps + j + a * K), values(in + j + a * K), equal[a], unequal[a]);
    for (; j + K <= tapsLen; j += K) add(values(taps + j), values(in + j), equal[0], unequal[0]);
    Register<T, 16> equalRest = {}, unequalRest = {};
    inPieces<sizeof(C)>(j, tapsLen, [&](auto b, int i) TEVS_HERE { add(loadBytes<T, b.n>(taps + i), loadBytes<T, b.n>(in + i), equalRest, unequalRest); });
    const auto e = folded((equal[0] + equal[1]) + (equal[2] + equal[3])) + equalRest;
    const auto u = folded((unequal[0] + unequal[1]) + (unequal[2] + unequal[3])) + unequalRest;
    if constexpr (sizeof(T) == 4)
        return {(e[0] + e[2]) - (e[1] + e[3]), (u[0] + u[2]) + (u[1] + u[3])};
    else
        return {e[0] - e[1], u[0] + u[1]};
}

int32_t dotShort(const int16_t* in, const int16_t* taps, int tapsLen) {
    constexpr int K = kBytes / 2;
    using Sums = Vec<uint32_t, K / 2>;
    Sums sum[2] = {};
    int j = 0;
    for (; j + 2 * K <= tapsLen; j += 2 * K)
        for (int a = 0; a < 2; ++a) sum[a] += (Sums)multiplyPairs(load<int16_t, K>(taps + j + a * K), load<int16_t, K>(in + j + a * K));
    for (; j + K <= tapsLen; j += K) sum[0] += (Sums)multiplyPairs(load<int16_t, K>(taps + j), load<int16_t, K>(in + j));
    Vec<uint32_t, 4> rest = {};
    j = inPieces<2>(j, tapsLen, [&](auto b, int i) TEVS_HERE {
        rest += (Vec<uint32_t, 4>)multiplyPairs(loadBytes<int16_t, b.n>(taps + i), loadBytes<int16_t, b.n>(in + i));
    });
    const auto all = folded(sum[0] + sum[1]) + rest;
    return int32_t((all[0] + all[2]) + (all[1] + all[3]) + (j < tapsLen ? uint32_t(taps[j] * in[j]) : 0));
}

Complex32s dotComplexShort(const Complex16s* in, const TapMatrix* taps, int tapsLen) {
    constexpr int K = kBytes / 8;
    using V = Vec<int16_t, 4 * K>;
    using Sums = Vec<uint32_t, 2 * K>;
    Sums sum = {};
    int j = 0;
    for (; j + K <= tapsLen; j += K) sum += (Sums)multiplyPairs(loadAs<V>(taps + j), loadTwice<V>(in + j));
    uint32_t re = 0, im = 0;
    for (int l = 0; l < 2 * K; l += 2) {
        re += sum[l];
        im += sum[l + 1];
    }
    for (; j < tapsLen; ++j) {
        re += uint32_t(taps[j].re[0] * in[j].re) + uint32_t(taps[j].re[1] * in[j].im);
        im += uint32_t(taps[j].im[0] * in[j].re) + uint32_t(taps[j].im[1] * in[j].im);
    }
    return {int32_t(re), int32_t(im)};
}

// ---- shapes ---------------------------------------------------------------------------------------------------------------------------------
//
// Numbers by measurement. Complex taps use each load twice as it is.

constexpr bool kWide = kBytes >= 32;
// Two taps at a time: in eight registers, with fused operations.
constexpr bool kByPairs = kFewRegisters && TEVS_LEVEL >= 2;

template <class T> struct RealShape {
    template <int W> using Outputs = RealOutputs<T, W>;
    static constexpr int kStep = kBytes / int(sizeof(T)), kLeast = 1,
                         kVectors = kByPairs        ? 4
                                    : kFewRegisters ? 5
                                    : kWide         ? 10
                                                    : 8,
                         kShared = kByPairs        ? 2
                                   : kFewRegisters ? 1
                                   : kWide         ? 4
                                                   : 2;
    static constexpr int kAlone = kByPairs ? 5 : kVectors;
    static constexpr bool kPaired = kByPairs;
};
template <class T, class C> struct ComplexShape {
    template <int W> using Outputs = ComplexOutputs<T, C, W>;
    static constexpr int kStep = kBytes / int(sizeof(C)), kLeast = 1,
                         kVectors = kFewRegisters ? 2
                                    : kWide       ? 6
                                                  : 5,
                         kShared = kByPairs ? 2 : 1, kAlone = kVectors;
    static constexpr bool kPaired = kByPairs;
};
struct ShortShape {
    template <int W> using Outputs = ShortOutputs<W>;
    static constexpr int kStep = kBytes / 2, kLeast = 8,
                         kVectors = kFewRegisters ? 3
                                    : kWide       ? 4
                                                  : 6,
                         kShared = kFewRegisters || kWide ? 2 : 1, kAlone = kVectors;
    [[maybe_unused]] static constexpr bool kPaired = false;
    static constexpr auto dot = dotShort;
};
struct ComplexShortShape {
    template <int W> using Outputs = ComplexShortOutputs<W>;
    static constexpr int kStep = kBytes / 4, kLeast = 1, kVectors = kFewRegisters ? 2 : 6, kShared = 1, kAlone = kVectors;
    [[maybe_unused]] static constexpr bool kPaired = false;
};

void addShifted(const int32_t* sums, int s, int64_t* totals, int len) {
    const auto add = [=](auto w, const int32_t* from, const int64_t* to) TEVS_HERE {
        using Totals = Vec<int64_t, w.n / 2>;
        const auto x = load<int32_t, w.n>(from);
        const auto wide = interleave(x, x >> 31);
        const auto before = loadTwo<int64_t, w.n / 2>(to);
        return Two<Totals>{before.a + ((Totals)wide.a << s), before.b + ((Totals)wide.b << s)};
    };
    map<kBytes / 4, 4>(len, totals, add, sums, static_cast<const int64_t*>(totals));
}

}   // namespace

extern const FirKernels fir = {
    .real32f = {Filter<RealShape<float>>::block, dotReal<float>},
    .complex32f = {Filter<ComplexShape<float, Complex32f>>::block, dotComplex<float, Complex32f>},
    .real64f = {Filter<RealShape<double>>::block, dotReal<double>},
    .complex64f = {Filter<ComplexShape<double, Complex64f>>::block, dotComplex<double, Complex64f>},
    .real16s = {Filter<ShortShape>::block, dotShort},
    .complex16s = {Filter<ComplexShortShape>::block, dotComplexShort},
    .addShifted = addShifted,
};

}   // namespace tevs::TEVS_LEVEL_NS
