#include "core/simd/reduce.h"
#include "vector/statistics.table.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

template <class T> constexpr int kLeast = 16 / int(sizeof(T));
constexpr int kDoubles = kLanes<double>;

// A complex vector of n elements is one of 2n parts.
TEVS_INLINE const int16_t* parts(const Complex16s* p) { return reinterpret_cast<const int16_t*>(p); }
TEVS_INLINE const float* parts(const Complex32f* p) { return reinterpret_cast<const float*>(p); }
TEVS_INLINE const double* parts(const Complex64f* p) { return reinterpret_cast<const double*>(p); }
template <class T> TEVS_INLINE const T* parts(const T* p) { return p; }

// ---- sums -----------------------------------------------------------------------------------------------------------------------------

struct Sum : Additive {
    template <class V> TEVS_INLINE V start() const { return V{}; }
    template <class V> TEVS_INLINE V step(V s, V x) const { return s + x; }
    template <class V> TEVS_INLINE auto finish(V s) const { return sumOfLanes(s); }
};
// The sums of even and of odd lanes.
struct PartSums : Sum {
    template <class V> TEVS_INLINE auto finish(V s) const { return foldLanes<2>(s, plus); }
};

template <class T> T sum(const T* src, int n) { return reduce<kLanes<T>, kLeast<T>, kTurns>(n, Sum{}, Elements<T>{src}); }
template <class C> C sumOfParts(const C* src, int n) {
    using T = decltype(C::re);
    const auto s = reduce<kLanes<T>, kLeast<T>, kTurns>(2 * ptrdiff_t{n}, PartSums{}, Elements<T>{parts(src)});
    return {s[0], s[1]};
}

// Pairs of 16-bit elements fit 32 bits, and so does the sum of a block.
template <class V> using Pairs = Vec<int32_t, kCount<V> / 2>;
template <class V> TEVS_INLINE V ones() { return V{} + 1; }

struct Sum16 : Sum {
    template <class V> TEVS_INLINE Pairs<V> start() const { return Pairs<V>{}; }
    template <class V> TEVS_INLINE Pairs<V> step(Pairs<V> s, V x) const { return s + multiplyPairs(x, ones<V>()); }
};
int64_t sum16s(const int16_t* src, int n) {
    int64_t sum = 0;
    inBlocks(n, [&](ptrdiff_t i, ptrdiff_t m) { sum += reduce<kLanes<int16_t>, 8, 4>(m, Sum16{}, Elements<int16_t>{src + i}); });
    return sum;
}

struct PartSums16 : Additive {
    template <class V> TEVS_INLINE Two<Pairs<V>> start() const { return Two<Pairs<V>>{}; }
    template <class V> TEVS_INLINE auto step(Two<Pairs<V>> s, V x) const {
        const auto even = (V)(Pairs<V>{} + 0x00000001), odd = (V)(Pairs<V>{} + 0x00010000);
        return s + Two<Pairs<V>>{multiplyPairs(x, even), multiplyPairs(x, odd)};
    }
    template <class V> TEVS_INLINE Complex32s finish(Two<V> s) const { return {sumOfLanes(s.a), sumOfLanes(s.b)}; }
};
Complex64s sum16sc(const Complex16s* src, int n) {
    Complex64s sum = {0, 0};
    inBlocks(2 * ptrdiff_t{n}, [&](ptrdiff_t i, ptrdiff_t m) {
        const Complex32s s = reduce<kLanes<int16_t>, 8, 4>(m, PartSums16{}, Elements<int16_t>{parts(src) + i});
        sum = {sum.re + s.re, sum.im + s.im};
    });
    return sum;
}

struct Sum32 : Additive {
    template <class V> TEVS_INLINE Exact<V> start() const { return Exact<V>{}; }
    template <class V> TEVS_INLINE Exact<V> step(Exact<V> s, V x) const { return s + Exact<V>{(Unsigned32<V>)x, x >> 16}; }
    template <class V> TEVS_INLINE int64_t finish(Exact<V> s) const { return s.sum(); }
};
int64_t sum32s(const int32_t* src, int n) {
    int64_t sum = 0;
    inBlocks(n, [&](ptrdiff_t i, ptrdiff_t m) { sum += reduce<kLanes<int32_t>, 4, kTurns / 2>(m, Sum32{}, Elements<int32_t>{src + i}); });
    return sum;
}

struct SquareSum : Sum {
    template <class V> TEVS_INLINE V step(V s, V x) const { return fma(x, x, s); }
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
struct AbsSum16 : Sum {
    template <class V> TEVS_INLINE Unsigned32<V> start() const { return Unsigned32<V>{}; }
    template <class V> TEVS_INLINE Unsigned32<V> step(Unsigned32<V> s, V x) const { return s + (Unsigned32<V>)multiplyPairs(x, x >> 15 | ones<V>()); }
};
struct DistanceSum16 : AbsSum16 {
    template <class V> TEVS_INLINE Unsigned32<V> step(Unsigned32<V> s, V d) const { return s + (((Unsigned32<V>)d & 0xffff) + ((Unsigned32<V>)d >> 16)); }
};

// Two squares reach 2^31 and are taken without a sign.
struct SquareSum16 : Additive {
    template <class V> TEVS_INLINE Exact<Pairs<V>> start() const { return Exact<Pairs<V>>{}; }
    template <class V> TEVS_INLINE Exact<Pairs<V>> step(Exact<Pairs<V>> s, V x) const {
        const auto t = multiplyPairs(x, x);
        return s + Exact<Pairs<V>>{(Unsigned32<V>)t, (Pairs<V>)((Unsigned32<V>)t >> 16)};
    }
    template <class V> TEVS_INLINE int64_t finish(Exact<V> s) const { return s.sum(); }
};
// d^2 = 4 floor(d / 2) ceil(d / 2) + (d mod 2). The halves are at most 32767 and 32768; with the second one negated, both are 16-bit numbers, and so
// are their products' pairs 32-bit ones. Odd elements are counted in 16 bits, even and odd lanes apart.
template <class V> struct Halves {
    Exact<V> products;
    Unsigned32<V> odd;
    friend TEVS_INLINE Halves operator+(Halves x, Halves y) { return {x.products + y.products, x.odd + y.odd}; }
};
struct DistanceSquareSum16 : Additive {
    template <class V> TEVS_INLINE Halves<Pairs<V>> start() const { return Halves<Pairs<V>>{}; }
    template <class V> TEVS_INLINE Halves<Pairs<V>> step(Halves<Pairs<V>> s, V d) const {
        using Signed = Vec<int16_t, kCount<V>>;
        const V half = d >> 1;
        const auto t = multiplyPairs((Signed)half, (Signed)(half - d));
        return s + Halves<Pairs<V>>{{(Unsigned32<V>)t, t >> 16}, (Unsigned32<V>)(d & 1)};
    }
    template <class V> TEVS_INLINE int64_t finish(Halves<V> s) const {
        const uint32_t odd = sumOfLanes(s.odd);
        return -4 * s.products.sum() + (odd & 0xffff) + (odd >> 16);
    }
};

// The sum of op over blocks; a block's sum of 32 bits is one without a sign.
template <class Op, int U, class S> TEVS_INLINE int64_t measureBlocks(ptrdiff_t n, S s) {
    int64_t sum = 0;
    inBlocks(n, [&](ptrdiff_t i, ptrdiff_t m) {
        const auto part = reduce<kLanes<int16_t>, 8, U>(m, Op{}, s + i);
        sum += sizeof part == 4 ? int64_t{uint32_t(part)} : int64_t{part};
    });
    return sum;
}
template <class Op> int64_t measure16(const int16_t* src, int n) { return measureBlocks<Op, 4>(n, Elements<int16_t>{src}); }
template <class Op> int64_t measureDistance16(const int16_t* a, const int16_t* b, int n) { return measureBlocks<Op, 2>(n, Distance16{{a}, {b}}); }

int32_t largest16s(const int16_t* src, int n) {
    const auto r = Running<int16_t, Less, Greater>{{src[0], src[0]}}.over<8>(n, Elements<int16_t>{src});
    return -r.best[0] > r.best[1] ? -r.best[0] : r.best[1];
}
int32_t largestDistance16(const int16_t* a, const int16_t* b, int n) { return Running<uint16_t, Greater>{{0}}.over<8>(n, Distance16{{a}, {b}}).best[0]; }

// ---- norms of floats ----------------------------------------------------------------------------------------------------------------------

// re^2 + im^2 of complex elements, whose parts are those of a.
template <class S> struct SquaredMagnitude {
    S a;
    friend TEVS_INLINE SquaredMagnitude operator+(SquaredMagnitude s, ptrdiff_t i) { return {s.a + 2 * i}; }
    TEVS_INLINE auto first() const { return a.first() * a.first() + (a + 1).first() * (a + 1).first(); }
    template <int N> TEVS_INLINE auto load() const {
        const auto x = a.template load<N>(), y = (a + N).template load<N>();
        const auto re = evens(x, y), im = odds(x, y);
        return fma(re, re, im * im);
    }
    template <int N> TEVS_INLINE auto held(int n) const {
        return madeOf([](auto x) { return SquaredMagnitude<decltype(x)>{x}; }, a.template held<2 * N>(2 * n));
    }
};

struct AbsSum : Sum {
    template <class V> TEVS_INLINE V step(V s, V x) const { return s + abs(x); }
};
struct RootSum : Sum {
    template <class V> TEVS_INLINE V step(V s, V x) const { return s + squareRoot(x); }
};

template <class Op, class S> TEVS_INLINE double inDouble(ptrdiff_t n, S s) { return reduce<kDoubles, 2, kTurns>(n, Op{}, s); }

// The measures: of the source of a vector's parts, of n elements.
template <class T> struct Precise { using Source = Elements<T>; };
template <> struct Precise<float> { using Source = Widened<float>; };

struct Largest {
    template <class T> using Source = Elements<T>;
    template <class S> TEVS_INLINE static auto of(ptrdiff_t n, S s) { return largestOf(n, Absolute<S>{s}); }
    template <class S> TEVS_INLINE static auto largestOf(ptrdiff_t n, S s) {
        using T = decltype(s.first());
        return Running<T, Greater>{{s.first()}}.template over<kLeast<T>>(n, s).best[0];
    }
};
struct LargestComplex {
    template <class T> using Source = typename Precise<T>::Source;
    template <class S> TEVS_INLINE static double of(ptrdiff_t n, S s) { return Largest::largestOf(n, SquaredMagnitude<S>{s}); }
};
struct SumAbs {
    template <class T> using Source = typename Precise<T>::Source;
    template <class S> TEVS_INLINE static double of(ptrdiff_t n, S s) { return inDouble<AbsSum>(n, s); }
};
struct SumAbsComplex {
    template <class T> using Source = typename Precise<T>::Source;
    template <class S> TEVS_INLINE static double of(ptrdiff_t n, S s) { return inDouble<RootSum>(n, SquaredMagnitude<S>{s}); }
};
struct Squares {
    template <class T> using Source = typename Precise<T>::Source;
    template <class S> TEVS_INLINE static double of(ptrdiff_t n, S s) { return inDouble<SquareSum>(n, s); }
};
struct SquaresComplex {
    template <class T> using Source = typename Precise<T>::Source;
    template <class S> TEVS_INLINE static double of(ptrdiff_t n, S s) { return Squares::of(2 * n, s); }
};

template <class T> struct PartType { using type = T; };
template <> struct PartType<Complex32f> { using type = float; };
template <> struct PartType<Complex64f> { using type = double; };

template <class M, class T, class R, class S = typename M::template Source<typename PartType<T>::type>> R one(const T* src, int n) {
    return M::of(n, S{parts(src)});
}
template <class M, class T, class R, class S = typename M::template Source<typename PartType<T>::type>> R difference(const T* a, const T* b, int n) {
    return M::of(n, Difference<S>{{parts(a)}, {parts(b)}});
}
template <class M, class T, class R = double> constexpr Measure<T, R> kMeasure = {one<M, T, R>, difference<M, T, R>};

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
    return -reduce<kLanes<int32_t>, 4, kTurns / 2>(n, Sum{}, Between{src, lower, upper});
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
    .sum32fAbs = kMeasure<SumAbs, float>,
    .sum64fAbs = kMeasure<SumAbs, double>,
    .sum32fcAbs = kMeasure<SumAbsComplex, Complex32f>,
    .sum64fcAbs = kMeasure<SumAbsComplex, Complex64f>,
    .squares16s = {measure16<SquareSum16>, measureDistance16<DistanceSquareSum16>},
    .squares32f = kMeasure<Squares, float>,
    .squares64f = kMeasure<Squares, double>,
    .squares32fc = kMeasure<SquaresComplex, Complex32f>,
    .squares64fc = kMeasure<SquaresComplex, Complex64f>,
    .countInRange = countInRange,
};

}   // namespace tevs::TEVS_LEVEL_NS
