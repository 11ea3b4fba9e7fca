#include "core/complex.h"
#include "core/simd/angle.h"
#include "core/simd/blocks.h"
#include "core/simd/lanes.h"
#include "core/simd/map.h"
#include "vector/polar.table.h"

// Of a function object that map() calls: left to itself the compiler calls the longer ones, with vectors in memory.
#define TEVS_FLAT __attribute__((always_inline))

namespace tevs::TEVS_LEVEL_NS {
namespace {

// ---- samples in, samples out ----------------------------------------------------------------------------------------------------

// Elements a step, by the sources' type. Integers gain nothing from registers wider than 32 bytes.
constexpr int kInts = kLanes<int32_t> < 8 ? kLanes<int32_t> : 8;
template <class S, class...> constexpr int kStep = Scalar<S>(0.5) == 0 ? kInts : kLanes<Scalar<S>>;
template <class S, class...> constexpr int kLeastStep = sizeof(Scalar<S>) == 8 ? 2 : 4;

// N samples as two vectors of parts: real and imaginary, or magnitude and phase. 16-bit samples come as 32-bit lanes.
template <int N, class T> TEVS_INLINE Two<Vec<T, N>> parts(const T* a, const T* b) { return {load<T, N>(a), load<T, N>(b)}; }
template <int N, class Z> TEVS_INLINE Two<Vec<Scalar<Z>, N>> parts(const Z* z) { return loadSplit<Scalar<Z>, N>(partsOf(z)); }
template <int N> TEVS_INLINE Two<Vec<int32_t, N>> parts(const int16_t* a, const int16_t* b) { return {loadWide<N>(a), loadWide<N>(b)}; }
template <int N> TEVS_INLINE Two<Vec<int32_t, N>> parts(const Complex16s* z) {
    const auto v = loadAs<Vec<int32_t, N>>(z);
    return {v << 16 >> 16, v >> 16};
}

// The exact re^2 + im^2 of N samples. Its one value beyond 32 bits, 2^31, comes out as INT32_MIN.
template <int N> TEVS_INLINE Vec<int32_t, N> squares(const Complex16s* z) {
    const auto v = loadAs<Vec<int16_t, 2 * N>>(z);
    return multiplyPairs(v, v);
}
template <int N> TEVS_INLINE Vec<int32_t, N> squares(const int16_t* re, const int16_t* im) {
    const auto v = (Vec<int16_t, 2 * N>)((loadWide<N>(re) & 0xffff) | loadWide<N>(im) << 16);
    return multiplyPairs(v, v);
}

// Samples of 16 bits are floats exactly.
template <class V> TEVS_INLINE auto asFloats(V v) {
    if constexpr (Element<V>(0.5) == 0)
        return __builtin_convertvector(v, Vec<float, kCount<V>>);
    else
        return v;
}

// f over both halves of widened lanes.
template <class V, class F> TEVS_INLINE auto widened(Two<V> z, F f) {
    const auto a = widen(z.a), b = widen(z.b);
    return Two{f(Two{a.a, b.a}), f(Two{a.b, b.b})};
}
template <class V> TEVS_INLINE Two<Two<V>> transposed(Two<Two<V>> v) { return {{v.a.a, v.b.a}, {v.a.b, v.b.b}}; }

// v * factor, saturated to D.
template <class D, class V> TEVS_INLINE V saturated(V v, double factor) { return clamped<D>(v * constant<V>(factor)); }
template <class V> TEVS_INLINE auto as16(V v) { return packed<int16_t>(Some<V, 1>{v}); }

// ---- operations --------------------------------------------------------------------------------------------------------------------

struct Phase {
    static constexpr bool kShort = false;
    template <class V> TEVS_INLINE auto operator()(Two<V> z) const {
        if constexpr (sizeof(V{}[0]) == 8)
            return angleDouble(z.a, z.b);
        else
            return angleFloat(asFloats(z.a), asFloats(z.b));
    }
};

// The phase times factor as an integer in double lanes: of quick arithmetic, unless that cannot tell the value from a tie.
template <class D> struct ScaledPhase {
    double factor;
    template <class V> TEVS_INLINE V half(Two<V> z) const {
        constexpr bool narrow = sizeof(D) == 2;
        V v = saturated<D>(narrow ? angleSingle(z.a, z.b) : angleDouble(z.a, z.b), factor);
        const V shifter = constant<V>(0x1.8p52), whole = (v + shifter) - shifter;
        // v is off by 2^-15 or less, of 32-bit results by 2^-21.
        const auto nearTie = abs(v - whole) > constant<V>(0.5 - (narrow ? 0x1p-14 : 0x1p-20));
        if (any(nearTie)) [[unlikely]] {
            constexpr int n = kCount<V>;
            double x[n], y[n], result[n];
            store(x, z.a);
            store(y, z.b);
            for (int i = 0; i < n; ++i) result[i] = roundedPhase(x[i], y[i], factor);
            v = nearTie ? load<double, n>(result) : v;
        }
        return v;
    }
    template <class V> TEVS_INLINE auto operator()(Two<V> z) const {
        const auto v = nearestInt(widened(z, [f = *this](auto h) TEVS_FLAT { return f.half(h); }));
        if constexpr (sizeof(D) == 2)
            return as16(v);
        else
            return v;
    }
};

// Three rounded steps. A square that underflows or overflows costs no more than its share: the result does then, too.
struct Power {
    static constexpr bool kShort = true;
    template <class V> TEVS_INLINE V operator()(Two<V> z) const { return z.a * z.a + z.b * z.b; }
};

// The root of a sum that is off by 1 unit, and by 1.25 in the upper half of its binade: 0.5 + 1.25 / sqrt(3) units at most.
struct Magnitude {
    static constexpr bool kShort = true;
    template <class V> TEVS_INLINE V operator()(Two<V> z) const {
        constexpr bool wide = sizeof(z.a[0]) == 8;
        const V s = Power()(z);
        V m = squareRoot(s);
        const auto usual = isAtMost(constant<V>(wide ? 0x1p-960 : 0x1p-100), s) & isAtMost(s, constant<V>(wide ? 0x1.fffffffffffffp1023 : 0x1.fffffep127));
        if (!all(usual)) [[unlikely]] {
            // The root of a true zero is right. Sums that overflow, or whose parts underflow, come from samples that a power of two brings back.
            const auto unusual = ~usual & ~((V)((Bits<V>)z.a | (Bits<V>)z.b) == V{});
            if (any(unusual)) {
                const V infinity = constant<V>(kInfinity), re = abs(z.a), im = abs(z.b);
                const auto large = atLeast(re, im) > constant<V>(1);
                const V down = constant<V>(wide ? 0x1p-600 : 0x1p-90), up = constant<V>(wide ? 0x1p600 : 0x1p90);
                const V factor = large ? down : up;
                const V scaled = squareRoot(Power()(Two<V>{re * factor, im * factor})) * (large ? up : down);
                m = unusual ? scaled : m;
                m = ((re == infinity) | (im == infinity)) ? infinity : m;
            }
        }
        return m;
    }
};

// Of exact squares. A square of 2^31, INT32_MIN, is right but for its sign as a number, and saturates as 2^31 - 1 for any scale.
struct SquareAsFloat {
    template <class V> TEVS_INLINE auto operator()(V n) const { return abs(__builtin_convertvector(n, Vec<float, kCount<V>>)); }
};
struct RootOfSquare {
    template <class V> TEVS_INLINE auto operator()(V n) const { return squareRoot(SquareAsFloat()(n)); }
};
template <class V> TEVS_INLINE V scaledRoot(V n, double factor) { return saturated<int16_t>(squareRoot(abs(n)), factor); }
struct ScaledRootOfSquare {
    double factor;
    template <class I> TEVS_INLINE auto operator()(I n) const {
        using V = Vec<float, kCount<I>>;
        // Any factor beyond 2^100 saturates what is not 0.
        const V v = atMost(constant<V>(32767), RootOfSquare()(n) * constant<V>(factor < 0x1p100 ? factor : 0x1p100));
        I m = nearestInt(v);
        // v is off by 2^-9 or less. Roots in double are right even where the exact one is a tie, since other roots keep clear of ties by 2^-18.
        const auto nearTie = abs(v - __builtin_convertvector(m, V)) > constant<V>(0.5 - 0x1p-8);
        if (any(nearTie)) [[unlikely]] {
            const auto wide = widen(n);
            m = nearestInt(Two{scaledRoot(wide.a, factor), scaledRoot(wide.b, factor)});
        }
        return as16(m);
    }
};

// ---- kernels -----------------------------------------------------------------------------------------------------------------------

// Squares and roots are short enough for the tails that map() gives them, angles are not.
template <class D, class Op, class... S> TEVS_INLINE void eachSample(int len, D* dst, Op op, const S*... src) {
    mapLong<kStep<S...>>(
        len, dst, [=](auto w, auto... s) TEVS_FLAT { return op(parts<w.n>(s...)); }, src...);
}
template <class D, class Op, class... S> TEVS_INLINE void eachSampleShort(int len, D* dst, Op op, const S*... src) {
    map<kStep<S...>, kLeastStep<S...>>(
        len, dst, [=](auto w, auto... s) TEVS_FLAT { return op(parts<w.n>(s...)); }, src...);
}
template <class D, class Op, class... S> TEVS_INLINE void eachSquare(int len, D* dst, Op op, const S*... src) {
    map<kInts, 4>(
        len, dst, [=](auto w, auto... s) TEVS_FLAT { return op(squares<w.n>(s...)); }, src...);
}

template <class Op, class D, class... S> struct OfParts {
    static void kernel(const S*... src, D* dst, int len) {
        if constexpr (Op::kShort)
            eachSampleShort(len, dst, Op(), src...);
        else
            eachSample(len, dst, Op(), src...);
    }
};
// Of interleaved samples: one permutation, of the results.
template <class Op, class D, class Z> struct OfPairs {
    static void kernel(const Z* src, D* dst, int len) {
        map<kStep<Z>, kLeastStep<Z>>(
            len, dst,
            [](auto w, auto s) TEVS_FLAT {
                const auto z = loadTwo<D, w.n>(partsOf(s));
                return inOrder(Op()(blocksSplit(z.a, z.b)));
            },
            src);
    }
};
template <class Op, class T, class Z, class D> constexpr FromParts<T, Z, D> kOfParts = {OfParts<Op, D, Z>::kernel, OfParts<Op, D, T, T>::kernel};
template <class Op, class T, class Z> constexpr FromParts<T, Z, T> kOfPairs = {OfPairs<Op, T, Z>::kernel, OfParts<Op, T, T, T>::kernel};

template <class Op, class D, class... S> struct OfSquares {
    static void kernel(const S*... src, D* dst, int len) { eachSquare(len, dst, Op(), src...); }
};
template <class Op>
constexpr FromParts<int16_t, Complex16s, float> kOfSquares = {OfSquares<Op, float, Complex16s>::kernel, OfSquares<Op, float, int16_t, int16_t>::kernel};

template <class... S> struct Scaled {
    static void magnitude(const S*... src, int16_t* dst, int len, double factor) { eachSquare(len, dst, ScaledRootOfSquare{factor}, src...); }
    static void phase(const S*... src, int16_t* dst, int len, double factor) { eachSample(len, dst, ScaledPhase<int16_t>{factor}, src...); }
    static void power(const S*... src, int16_t* dst, int len, int scale) {
        withScale(scale, [=](auto scaling) TEVS_FLAT {
            map<2 * kInts, 8>(
                len, dst,
                [=](auto w, auto... s) TEVS_FLAT {
                    constexpr int half = w.n / 2;
                    const auto a = squares<half>(s...), b = squares<half>((s + half)...);
                    return fit(scaling, InOrder{a ^ (a >> 31), b ^ (b >> 31)});   // 2^31 - 1 for 2^31
                },
                src...);
        });
    }
};

template <class D, class... S> struct ToPolar {
    static void kernel(const S*... src, D* magnitude, D* phase, int len) {
        mapLong<kStep<S...>>(
            len, Both<D>{magnitude, phase},
            [](auto w, auto... s) TEVS_FLAT {
                const auto z = parts<w.n>(s...);
                return Two{Magnitude()(z), Phase()(z)};
            },
            src...);
    }
};

void phase32sc(const Complex32s* src, int32_t* dst, int len, double factor) { eachSample(len, dst, ScaledPhase<int32_t>{factor}, src); }

void toPolar16sc(const Complex16s* src, int16_t* magnitude, int16_t* phase, int len, double factor) {
    mapLong<kInts>(
        len, Both<int16_t>{magnitude, phase},
        [=](auto w, auto s) TEVS_FLAT {
            return Two{ScaledRootOfSquare{factor}(squares<w.n>(s)), ScaledPhase<int16_t>{factor}(parts<w.n>(s))};
        },
        src);
}

template <class Z, class T> void toComplex(const T* magnitude, const T* phase, Z* dst, int len) {
    eachSample(
        len, dst,
        [](auto polar) TEVS_FLAT {
            const auto z = cartesian(polar.a, polar.b);
            return interleave(z.a, z.b);
        },
        magnitude, phase);
}
template <class T> void toSplit(const T* magnitude, const T* phase, T* re, T* im, int len) {
    mapLong<kStep<T>>(
        len, Both<T>{re, im},
        [](auto w, auto m, auto p) TEVS_FLAT {
            const auto polar = parts<w.n>(m, p);
            return cartesian(polar.a, polar.b);
        },
        magnitude, phase);
}

// Products of 32-bit magnitudes are off by 2^-21 before they are rounded; those of 16-bit ones by 2^-51 of themselves, and keep clear of ties by 2^-48.
template <class D, class V> TEVS_INLINE auto cartesianInts(Two<V> polar, double factor) {
    const auto z = transposed(widened(polar, [=](auto h) TEVS_FLAT {
        const auto c = cartesian(h.a, h.b);
        return Two{saturated<D>(c.a, factor), saturated<D>(c.b, factor)};
    }));
    return Two{nearestInt(z.a), nearestInt(z.b)};
}
void toCart16sc(const int16_t* magnitude, const int16_t* phase, Complex16s* dst, int len, double factor) {
    eachSample(
        len, dst,
        [=](auto polar) TEVS_FLAT {
            const auto z = cartesianInts<int16_t>(polar, factor);
            return (z.a & 0xffff) | z.b << 16;
        },
        magnitude, phase);
}
void toCart32sc(const int32_t* magnitude, const int32_t* phase, Complex32s* dst, int len) {
    eachSample(
        len, dst,
        [](auto polar) TEVS_FLAT {
            const auto z = cartesianInts<int32_t>(polar, 1);
            return interleave(z.a, z.b);
        },
        magnitude, phase);
}

void arctan32f(const float* src, float* dst, int len) {
    mapLong<kLanes<float>>(
        len, dst, [](auto w, auto s) TEVS_FLAT { return arctanFloat(load<float, w.n>(s)); }, src);
}
void arctan64f(const double* src, double* dst, int len) {
    mapLong<kLanes<double>>(
        len, dst, [](auto w, auto s) TEVS_FLAT { return arctanDouble(load<double, w.n>(s)); }, src);
}

}   // namespace

extern const PolarKernels polar = {
    .arctan32f = arctan32f,
    .arctan64f = arctan64f,
    .magnitude32f = kOfPairs<Magnitude, float, Complex32f>,
    .phase32f = kOfParts<Phase, float, Complex32f, float>,
    .power32f = kOfPairs<Power, float, Complex32f>,
    .magnitude64f = kOfPairs<Magnitude, double, Complex64f>,
    .phase64f = kOfParts<Phase, double, Complex64f, double>,
    .power64f = kOfPairs<Power, double, Complex64f>,
    .magnitude16s32f = kOfSquares<RootOfSquare>,
    .phase16s32f = kOfParts<Phase, int16_t, Complex16s, float>,
    .power16s32f = kOfSquares<SquareAsFloat>,
    .magnitude16s = {Scaled<Complex16s>::magnitude, Scaled<int16_t, int16_t>::magnitude},
    .phase16s = {Scaled<Complex16s>::phase, Scaled<int16_t, int16_t>::phase},
    .phase32sc = phase32sc,
    .power16s = {Scaled<Complex16s>::power, Scaled<int16_t, int16_t>::power},
    .toPolar32fc = ToPolar<float, Complex32f>::kernel,
    .toPolar64fc = ToPolar<double, Complex64f>::kernel,
    .toPolar16sc = toPolar16sc,
    .toPolar32f = ToPolar<float, float, float>::kernel,
    .toPolar64f = ToPolar<double, double, double>::kernel,
    .toCart32fc = toComplex<Complex32f, float>,
    .toCart64fc = toComplex<Complex64f, double>,
    .toCart16sc = toCart16sc,
    .toCart32sc = toCart32sc,
    .toCart32f = toSplit<float>,
    .toCart64f = toSplit<double>,
};

}   // namespace tevs::TEVS_LEVEL_NS
