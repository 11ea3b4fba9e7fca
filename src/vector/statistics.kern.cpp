#include "core/simd/single_sum.h"
#include "vector/statistics.table.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

constexpr int kDoubles = kLanes<double>;

// ---- sums -----------------------------------------------------------------------------------------------------------------------------

struct PlainSum : Additive {
    template <class V> TEVS_INLINE V start() const { return V{}; }
    template <class V> TEVS_INLINE V step(V s, V x) const { return s + x; }
    template <class V> TEVS_INLINE auto finish(V s) const { return sumOfLanes(s); }
};
// The sums of even and of odd lanes.
struct PartSums : PlainSum {
    template <class V> TEVS_INLINE auto finish(V s) const { return foldLanes<2>(s, plus); }
};

template <class T> T sum(const T* src, int n) { return reduce<kLanes<T>, kLeast<T>, kTurns>(n, PlainSum{}, Elements<T>{src}); }
template <class C> C sumOfParts(const C* src, int n) {
    using T = Scalar<C>;
    const auto s = reduce<kLanes<T>, kLeast<T>, kTurns>(partCount<C>(n), PartSums{}, Elements<T>{partsOf(src)});
    return {s[0], s[1]};
}

// Pairs of 16-bit elements fit 32 bits, and so does the sum of a block.
template <class V> using PairSums = Vec<int32_t, kCount<V> / 2>;
template <class V> TEVS_INLINE V ones() { return same<V>(1); }

struct Sum16 : Additive {
    template <class V> TEVS_INLINE PairSums<V> start() const { return PairSums<V>{}; }
    template <class V> TEVS_INLINE PairSums<V> step(PairSums<V> s, V x) const { return s + multiplyPairs(x, ones<V>()); }
    template <class V> TEVS_INLINE int64_t finish(V s) const { return sumOfLanes(s); }
};
struct PartSums16 : Additive {
    template <class V> TEVS_INLINE Two<PairSums<V>> start() const { return Two<PairSums<V>>{}; }
    template <class V> TEVS_INLINE auto step(Two<PairSums<V>> s, V x) const {
        const auto even = (V)(PairSums<V>{} + 0x00000001), odd = (V)(PairSums<V>{} + 0x00010000);
        return s + Two<PairSums<V>>{multiplyPairs(x, even), multiplyPairs(x, odd)};
    }
    template <class V> TEVS_INLINE Complex64s finish(Two<V> s) const { return {sumOfLanes(s.a), sumOfLanes(s.b)}; }
};
struct Sum32 : Additive {
    template <class V> TEVS_INLINE ExactSum<V> start() const { return ExactSum<V>{}; }
    template <class V> TEVS_INLINE ExactSum<V> step(ExactSum<V> s, V x) const { return s + ExactSum<V>{(Unsigned32<V>)x, x >> 16}; }
    template <class V> TEVS_INLINE int64_t finish(ExactSum<V> s) const { return s.sum(); }
};
int64_t sum16s(const int16_t* src, int n) { return reduceBlocks<kLanes<int16_t>, 8, 4>(n, Sum16{}, Elements<int16_t>{src}); }
Complex64s sum16sc(const Complex16s* src, int n) {
    return reduceBlocks<kLanes<int16_t>, 8, 4>(partCount<Complex16s>(n), PartSums16{}, Elements<int16_t>{partsOf(src)});
}
int64_t sum32s(const int32_t* src, int n) { return reduceBlocks<kLanes<int32_t>, 4, kTurns / 2>(n, Sum32{}, Elements<int32_t>{src}); }

struct SquareSum : PlainSum {
    template <class V> TEVS_INLINE V step(V s, V x) const { return kFusedTurns ? fma(x, x, s) : s + x * x; }
};
float singleSquares32f(const float* src, int n) { return reduce<kLanes<float>, 4, kTurns>(n, SquareSum{}, Elements<float>{src}); }

// x[n] - mean
struct About {
    const double* p;
    double mean;
    friend TEVS_INLINE About operator+(About s, ptrdiff_t i) { return {s.p + i, s.mean}; }
    template <int N> TEVS_INLINE auto load() const { return TEVS_LEVEL_NS::load<double, N>(p) - splat<N>(mean); }
    template <int N> TEVS_INLINE auto held(int n) const { return heldCopy<N>(*this, n); }
};
double squaresAbout64f(const double* src, int n, double mean) { return reduce<kDoubles, 2, kTurns>(n, SquareSum{}, About{src, mean}); }

// ---- norms of 16-bit elements -----------------------------------------------------------------------------------------------------------

// |a[n] - b[n]|, which 16 bits hold without a sign.
struct Distance16 {
    Elements<int16_t> a, b;
    friend TEVS_INLINE Distance16 operator+(Distance16 s, ptrdiff_t i) { return {s.a + i, s.b + i}; }
    template <int N> TEVS_INLINE auto load() const {
        const auto x = a.load<N>(), y = b.load<N>();
        return (Vec<uint16_t, N>)Greater::pick(x, y) - (Vec<uint16_t, N>)Less::pick(x, y);
    }
    template <int N> TEVS_INLINE auto held(int n) const {
        return madeOf([](auto x, auto y) { return Distance16{x, y}; }, a.held<N>(n), b.held<N>(n));
    }
};

// Per pair of elements at most 2^16 without a difference, and 2 * 65535 with one: a block's sum fits 32 bits without a sign.
struct AbsSum16 : Additive {
    template <class V> TEVS_INLINE Unsigned32<V> start() const { return Unsigned32<V>{}; }
    template <class V> TEVS_INLINE Unsigned32<V> step(Unsigned32<V> s, V x) const { return s + (Unsigned32<V>)multiplyPairs(x, x >> 15 | ones<V>()); }
    template <class V> TEVS_INLINE int64_t finish(V s) const { return sumOfLanes(s); }
};
struct DistanceSum16 : AbsSum16 {
    template <class V> TEVS_INLINE Unsigned32<V> step(Unsigned32<V> s, V d) const { return s + (((Unsigned32<V>)d & 0xffff) + ((Unsigned32<V>)d >> 16)); }
};

// Two squares reach 2^31 and are taken without a sign.
struct SquareSum16 : Additive {
    template <class V> TEVS_INLINE ExactSum<PairSums<V>> start() const { return ExactSum<PairSums<V>>{}; }
    template <class V> TEVS_INLINE ExactSum<PairSums<V>> step(ExactSum<PairSums<V>> s, V x) const {
        const auto t = multiplyPairs(x, x);
        return s + ExactSum<PairSums<V>>{(Unsigned32<V>)t, (PairSums<V>)((Unsigned32<V>)t >> 16)};
    }
    template <class V> TEVS_INLINE int64_t finish(ExactSum<V> s) const { return s.sum(); }
};
// d^2 = 4 floor(d / 2) ceil(d / 2) + (d mod 2). The halves are at most 32767 and 32768; with the second one negated, both are 16-bit numbers, and so
// are their products' pairs 32-bit ones. Odd elements are counted in 16 bits, even and odd lanes apart.
template <class V> struct Halves {
    ExactSum<V> products;
    Unsigned32<V> odd;
    friend TEVS_INLINE Halves operator+(Halves x, Halves y) { return {x.products + y.products, x.odd + y.odd}; }
};
struct DistanceSquareSum16 : Additive {
    template <class V> TEVS_INLINE Halves<PairSums<V>> start() const { return Halves<PairSums<V>>{}; }
    template <class V> TEVS_INLINE Halves<PairSums<V>> step(Halves<PairSums<V>> s, V d) const {
        using Signed = Vec<int16_t, kCount<V>>;
        const V half = d >> 1;
        const auto t = multiplyPairs((Signed)half, (Signed)(half - d));
        return s + Halves<PairSums<V>>{{(Unsigned32<V>)t, t >> 16}, (Unsigned32<V>)(d & 1)};
    }
    template <class V> TEVS_INLINE int64_t finish(Halves<V> s) const {
        const uint32_t odd = sumOfLanes(s.odd);
        return -4 * s.products.sum() + (odd & 0xffff) + (odd >> 16);
    }
};

template <class Op> int64_t measure16(const int16_t* src, int n) { return reduceBlocks<kLanes<int16_t>, 8, 4>(n, Op{}, Elements<int16_t>{src}); }
template <class Op> int64_t measureDistance16(const int16_t* a, const int16_t* b, int n) {
    return reduceBlocks<kLanes<int16_t>, 8, 2>(n, Op{}, Distance16{{a}, {b}});
}

int32_t largest16s(const int16_t* src, int n) {
    const auto r = Running<int16_t, Less, Greater>{{src[0], src[0]}}.over<8>(n, Elements<int16_t>{src});
    return -r.best[0] > r.best[1] ? -r.best[0] : r.best[1];
}
int32_t largestDistance16(const int16_t* a, const int16_t* b, int n) { return Running<uint16_t, Greater>{{0}}.over<8>(n, Distance16{{a}, {b}}).best[0]; }

// ---- norms of floats ----------------------------------------------------------------------------------------------------------------------

// re^2 + im^2 of complex elements, whose parts are those of a.
template <class S> struct SquaredMagnitudes {
    S a;
    friend TEVS_INLINE SquaredMagnitudes operator+(SquaredMagnitudes s, ptrdiff_t i) { return {s.a + 2 * i}; }
    TEVS_INLINE auto first() const { return a.first() * a.first() + (a + 1).first() * (a + 1).first(); }
    template <int N> TEVS_INLINE auto load() const {
        const auto x = a.template load<N>(), y = (a + N).template load<N>();
        const auto re = evens(x, y), im = odds(x, y);
        return fma(re, re, im * im);
    }
    template <int N> TEVS_INLINE auto held(int n) const {
        return madeOf([](auto x) { return SquaredMagnitudes<decltype(x)>{x}; }, a.template held<2 * N>(2 * n));
    }
};

struct AbsSum : PlainSum {
    template <class V> TEVS_INLINE V step(V s, V x) const { return s + abs(x); }
};
struct RootSum : PlainSum {
    template <class V> TEVS_INLINE V step(V s, V x) const { return s + squareRoot(x); }
};

template <class Op, class S> TEVS_INLINE double inDouble(ptrdiff_t n, S s) { return reduce<kDoubles, 2, kTurns>(n, Op{}, s); }

// The measures: of the source of a vector's parts, of n elements.
template <class T> struct Precise { using Source = Elements<T>; };
template <> struct Precise<float> { using Source = WideElements<float>; };

struct Largest {
    template <class T> using Source = Elements<T>;
    template <class S> TEVS_INLINE static auto of(ptrdiff_t n, S s) { return largestOf(n, Magnitudes<S>{s}); }
    template <class S> TEVS_INLINE static auto largestOf(ptrdiff_t n, S s) {
        using T = decltype(s.first());
        return Running<T, Greater>{{s.first()}}.template over<kLeast<T>>(n, s).best[0];
    }
};
struct LargestComplex {
    template <class T> using Source = typename Precise<T>::Source;
    template <class S> TEVS_INLINE static double of(ptrdiff_t n, S s) { return Largest::largestOf(n, SquaredMagnitudes<S>{s}); }
};
struct SumAbs {
    template <class T> using Source = typename Precise<T>::Source;
    template <class S> TEVS_INLINE static double of(ptrdiff_t n, S s) { return inDouble<AbsSum>(n, s); }
};
struct SumAbsComplex {
    template <class T> using Source = typename Precise<T>::Source;
    template <class S> TEVS_INLINE static double of(ptrdiff_t n, S s) { return inDouble<RootSum>(n, SquaredMagnitudes<S>{s}); }
};
struct Squares {
    template <class T> using Source = typename Precise<T>::Source;
    template <class S> TEVS_INLINE static double of(ptrdiff_t n, S s) { return inDouble<SquareSum>(n, s); }
};
// For results in single precision.
template <class Op> struct InDouble : Op {
    template <class V> TEVS_INLINE double finish(V s) const { return Op::finish(s); }
};
TEVS_INLINE auto precise(Elements<float> s) { return WideElements<float>{s.p}; }
TEVS_INLINE auto precise(Differences<Elements<float>> s) { return Differences<WideElements<float>>{precise(s.a), precise(s.b)}; }
struct SingleSumAbs {
    template <class S> TEVS_INLINE static double of(ptrdiff_t n, S s) { return inSingle<kTurns>(n, InDouble<AbsSum>{}, s); }
};
struct SingleSquares {
    template <class S> TEVS_INLINE static double of(ptrdiff_t n, S s) {
        const double sum = inSingle<kTurns>(n, InDouble<SquareSum>{}, s);
        return stands(sum) ? sum : inDouble<SquareSum>(n, precise(s));
    }
};
struct SquaresComplex {
    template <class T> using Source = typename Precise<T>::Source;
    template <class S> TEVS_INLINE static double of(ptrdiff_t n, S s) { return Squares::of(2 * n, s); }
};

template <class M, class T, class R, class S = typename M::template Source<Scalar<T>>> R one(const T* src, int n) { return M::of(n, S{partsOf(src)}); }
template <class M, class T, class R, class S = typename M::template Source<Scalar<T>>> R difference(const T* a, const T* b, int n) {
    return M::of(n, Differences<S>{{partsOf(a)}, {partsOf(b)}});
}
template <class M, class T, class R = double> constexpr Measure<T, R> kMeasure = {one<M, T, R>, difference<M, T, R>};

template <class M> double oneInBlocks(const float* src, int n) {
    return n > kSingleBlock ? sumOfBlocks<oneInBlocks<M>>(n, src) : M::of(n, Elements<float>{src});
}
template <class M> double differenceInBlocks(const float* a, const float* b, int n) {
    return n > kSingleBlock ? sumOfBlocks<differenceInBlocks<M>>(n, a, b) : M::of(n, Differences<Elements<float>>{{a}, {b}});
}
template <class M> constexpr Measure<float, double> kInBlocks = {oneInBlocks<M>, differenceInBlocks<M>};

// ---- counts ---------------------------------------------------------------------------------------------------------------------------------

// -1 for each element between the bounds.
struct Between {
    const int32_t* p;
    int32_t lower, upper;
    friend TEVS_INLINE Between operator+(Between s, ptrdiff_t i) { return {s.p + i, s.lower, s.upper}; }
    template <int N> TEVS_INLINE auto load() const {
        const auto x = TEVS_LEVEL_NS::load<int32_t, N>(p);
        return (x > lower) & (x < upper);
    }
    template <int N> TEVS_INLINE auto held(int n) const { return heldCopy<N>(*this, n); }
};
int countInRange(const int32_t* src, int n, int32_t lower, int32_t upper) {
    return -reduce<kLanes<int32_t>, 4, kTurns / 2>(n, PlainSum{}, Between{src, lower, upper});
}

}   // namespace

extern const StatisticsKernels statistics = {
    .sum16s = sum16s,
    .sum16sc = sum16sc,
    .sum32s = sum32s,
    .sum32f = sum,
    .sum32fc = sumOfParts,
    .sum64f = sum,
    .sum64fc = sumOfParts,
    .singleSquares32f = singleSquares32f,
    .squaresAbout64f = squaresAbout64f,
    .largest16s = {largest16s, largestDistance16},
    .largest32f = kMeasure<Largest, float, float>,
    .largest64f = kMeasure<Largest, double>,
    .largest32fc = kMeasure<LargestComplex, Complex32f>,
    .largest64fc = kMeasure<LargestComplex, Complex64f>,
    .sum16sAbs = {measure16<AbsSum16>, measureDistance16<DistanceSum16>},
    .sum32fAbs = kInBlocks<SingleSumAbs>,
    .sum64fAbs = kMeasure<SumAbs, double>,
    .sum32fcAbs = kMeasure<SumAbsComplex, Complex32f>,
    .sum64fcAbs = kMeasure<SumAbsComplex, Complex64f>,
    .squares16s = {measure16<SquareSum16>, measureDistance16<DistanceSquareSum16>},
    .squares32f = kInBlocks<SingleSquares>,
    .squares64f = kMeasure<Squares, double>,
    .squares32fc = kMeasure<SquaresComplex, Complex32f>,
    .squares64fc = kMeasure<SquaresComplex, Complex64f>,
    .countInRange = countInRange,
};

}   // namespace tevs::TEVS_LEVEL_NS
