#include "core/simd/single_sum.h"
#include "vector/dotprod.table.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

constexpr int kDoubles = kLanes<double>, kWords = kLanes<int32_t>, kShorts = kLanes<int16_t>;

// Complex factors are vectors of their parts, twice as many, even lanes real and odd ones imaginary. A real factor of a complex one has each
// element twice, as T: the odd lanes' products are the imaginary parts then.
template <class S, class T = S> struct Doubled {
    const S* p;
    friend TEVS_INLINE Doubled operator+(Doubled s, ptrdiff_t i) { return {s.p + i / 2}; }
    template <int N> TEVS_INLINE auto load() const {
        if constexpr (N == 2) {
            return splat<2>(double(*p));
        } else if constexpr (sizeof(S) != sizeof(T)) {
            return wide(Doubled<S>{p}.template load<N>());
        } else if constexpr (N * sizeof(S) == 16) {
            const auto pairs = (Vec<S, N>)_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p));
            return interleaveLow(pairs, pairs);
        } else {
            const auto x = TEVS_LEVEL_NS::load<S, N / 2>(p);
#if TEVS_REGISTER_BYTES >= 32
            if constexpr (sizeof(S) == 4) {
                const __m256 twice = _mm256_broadcast_ps((const __m128*)p);
                return (Vec<S, N>)_mm256_permutevar_ps(twice, _mm256_setr_epi32(0, 0, 1, 1, 2, 2, 3, 3));
            }
#endif
            return join(interleaveLow(x, x), interleaveHigh(x, x));
        }
    }
    template <int N> TEVS_INLINE auto held(int n) const { return heldCopy<N>(*this, n / 2); }
};

// ---- floats -----------------------------------------------------------------------------------------------------------------------------

template <bool Fused> struct Products : Additive {
    template <class V, class> TEVS_INLINE V start() const { return V{}; }
    template <class V> TEVS_INLINE V step(V s, V a, V b) const { return Fused ? fma(a, b, s) : s + a * b; }
    template <class V> TEVS_INLINE double finish(V s) const { return sumOfLanes(s); }
};
template <bool Fused> struct MixedProducts : Products<Fused> {
    template <class V> TEVS_INLINE Complex64f finish(V s) const {
        const auto parts = foldLanes<2>(s, plus);
        return {parts[0], parts[1]};
    }
};
// a * b has the products of equal parts, a * (b with its parts exchanged) those of unequal ones.
template <bool Fused> struct ComplexProducts : Additive {
    template <class V, class> TEVS_INLINE Two<V> start() const { return Two<V>{}; }
    template <class V> TEVS_INLINE Two<V> step(Two<V> s, V a, V b) const {
        constexpr Products<Fused> sum;
        return {sum.step(s.a, a, b), sum.step(s.b, a, swapPairs(b))};
    }
    template <class V> TEVS_INLINE Complex64f finish(Two<V> s) const {
        const auto equal = foldLanes<2>(s.a, plus);
        return {double(equal[0]) - equal[1], sumOfLanes(s.b)};
    }
};

// Sums of elements that come through a conversion, which takes longer than fused steps wait if four take turns.
constexpr int kWideTurns = 4;

double real32f(const float* a, const float* b, int n) {
    return reduce<kDoubles, 2, kWideTurns>(n, Products<true>{}, WideElements<float>{a}, WideElements<float>{b});
}
Complex64f mixed32f(const float* a, const Complex32f* b, int n) {
    return reduce<kDoubles, 2, kWideTurns>(partCount<Complex32f>(n), MixedProducts<true>{}, Doubled<float, double>{a}, WideElements<float>{partsOf(b)});
}
Complex64f complex32f(const Complex32f* a, const Complex32f* b, int n) {
    return reduce<kDoubles, 2, kTurns / 2>(partCount<Complex32f>(n), ComplexProducts<true>{}, WideElements<float>{partsOf(a)}, WideElements<float>{partsOf(b)});
}

double single32f(const float* a, const float* b, int n) {
    if (n > kSingleBlock) [[unlikely]]
        return sumOfBlocks<single32f>(n, a, b);
    const double sum = inSingle<kTurns>(n, Products<kFusedTurns>{}, Elements<float>{a}, Elements<float>{b});
    return stands(__builtin_fabs(sum)) ? sum : real32f(a, b, n);
}
TEVS_INLINE bool stands(Complex64f sum) { return stands(__builtin_fabs(sum.re) + __builtin_fabs(sum.im)); }
Complex64f singleMixed32f(const float* a, const Complex32f* b, int n) {
    if (n > kSingleBlock) [[unlikely]]
        return sumOfBlocks<singleMixed32f>(n, a, b);
    const Complex64f sum = inSingle<kTurns>(partCount<Complex32f>(n), MixedProducts<kFusedTurns>{}, Doubled<float>{a}, Elements<float>{partsOf(b)});
    return stands(sum) ? sum : mixed32f(a, b, n);
}
Complex64f singleComplex32f(const Complex32f* a, const Complex32f* b, int n) {
    if (n > kSingleBlock) [[unlikely]]
        return sumOfBlocks<singleComplex32f>(n, a, b);
    const Complex64f sum =
        inSingle<kTurns / 2>(partCount<Complex32f>(n), ComplexProducts<kFusedTurns>{}, Elements<float>{partsOf(a)}, Elements<float>{partsOf(b)});
    return stands(sum) ? sum : complex32f(a, b, n);
}

double real64f(const double* a, const double* b, int n) {
    return reduce<kDoubles, 2, kTurns>(n, Products<kFusedTurns>{}, Elements<double>{a}, Elements<double>{b});
}
Complex64f mixed64f(const double* a, const Complex64f* b, int n) {
    return reduce<kDoubles, 2, kTurns>(partCount<Complex64f>(n), MixedProducts<kFusedTurns>{}, Doubled<double>{a}, Elements<double>{partsOf(b)});
}
Complex64f complex64f(const Complex64f* a, const Complex64f* b, int n) {
    return reduce<kDoubles, 2, kTurns / 2>(partCount<Complex64f>(n), ComplexProducts<kFusedTurns>{}, Elements<double>{partsOf(a)},
                                           Elements<double>{partsOf(b)});
}

// ---- 16 bits ------------------------------------------------------------------------------------------------------------------------------

template <class V> using PairSums = Vec<int32_t, kCount<V> / 2>;

// Products of the lanes two by two, as terms of an exact sum. They lie in -2^31 + 2^16 .. 2^31, of which multiplyPairs gives 2^31 as -2^31: right in the lower 32
// bits. One less fits them all, and its upper half is within 2^16 of the term; with kExactBlock / 2 terms that is as good as the floor.
template <class V> TEVS_INLINE ExactSum<PairSums<V>> exactPairs(V a, V b) {
    const auto t = multiplyPairs(a, b);
    return {(Unsigned32<V>)t, (PairSums<V>)((Unsigned32<V>)t - 1) >> 16};
}

struct Products16 : Additive {
    template <class V, class> TEVS_INLINE ExactSum<PairSums<V>> start() const { return ExactSum<PairSums<V>>{}; }
    template <class V> TEVS_INLINE ExactSum<PairSums<V>> step(ExactSum<PairSums<V>> s, V a, V b) const { return s + exactPairs(a, b); }
    template <class V> TEVS_INLINE int64_t finish(ExactSum<V> s) const { return s.sum(); }
};
int64_t real16s(const int16_t* a, const int16_t* b, int n) { return reduceBlocks<kShorts, 8, 2>(n, Products16{}, Elements<int16_t>{a}, Elements<int16_t>{b}); }

template <class V> struct ExactSums2 {
    ExactSum<V> re, im;
    friend TEVS_INLINE ExactSums2 operator+(ExactSums2 x, ExactSums2 y) { return {x.re + y.re, x.im + y.im}; }
};
struct MixedProducts16 : Additive {
    template <class V, class> TEVS_INLINE ExactSums2<PairSums<V>> start() const { return ExactSums2<PairSums<V>>{}; }
    template <class V> TEVS_INLINE ExactSums2<PairSums<V>> step(ExactSums2<PairSums<V>> s, V a, V b) const {
        const auto re = (V)(PairSums<V>{} + 0xffff);
        return s + ExactSums2<PairSums<V>>{exactPairs(a, b & re), exactPairs(a, b & ~re)};
    }
    template <class V> TEVS_INLINE Complex64s finish(ExactSums2<V> s) const { return {s.re.sum(), s.im.sum()}; }
};
// re * re - im * im as re * re + im * ~im + im: -im would not do for -32768.
template <class V> struct ComplexExact {
    ExactSum<V> re, im;
    V more;
    friend TEVS_INLINE ComplexExact operator+(ComplexExact x, ComplexExact y) { return {x.re + y.re, x.im + y.im, x.more + y.more}; }
};
struct ComplexProducts16 : Additive {
    template <class V, class> TEVS_INLINE ComplexExact<PairSums<V>> start() const { return ComplexExact<PairSums<V>>{}; }
    template <class V> TEVS_INLINE ComplexExact<PairSums<V>> step(ComplexExact<PairSums<V>> s, V a, V b) const {
        const auto im = (V)(PairSums<V>{} + ~0xffff);
        return s + ComplexExact<PairSums<V>>{exactPairs(a, b ^ im), exactPairs(a, swapPairs(b)), (PairSums<V>)a >> 16};
    }
    template <class V> TEVS_INLINE Complex64s finish(ComplexExact<V> s) const { return {s.re.sum() + sumOfLanes(s.more), s.im.sum()}; }
};
Complex64s mixed16s(const int16_t* a, const Complex16s* b, int n) {
    return reduceBlocks<kShorts, 8, kTurns / 4>(partCount<Complex16s>(n), MixedProducts16{}, Doubled<int16_t>{a}, Elements<int16_t>{partsOf(b)});
}
Complex64s complex16s(const Complex16s* a, const Complex16s* b, int n) {
    return reduceBlocks<kShorts, 8, kTurns / 4>(partCount<Complex16s>(n), ComplexProducts16{}, Elements<int16_t>{partsOf(a)}, Elements<int16_t>{partsOf(b)});
}

// ---- 32 bits ------------------------------------------------------------------------------------------------------------------------------

// As above, of 64-bit products t: modulo 2^64, and floor(t / 2^48), which lies in every second 32-bit lane of t >> 16.
template <class V> struct ExactSum64 {
    Vec<uint64_t, kCount<V>> low;
    Unsigned32<V> high;
    friend TEVS_INLINE ExactSum64 operator+(ExactSum64 x, ExactSum64 y) { return {x.low + y.low, x.high + y.high}; }
    TEVS_INLINE ExactSum64 with(V t) const { return {low + (decltype(low))t, high + (Unsigned32<V>)((Vec<int32_t, 2 * kCount<V>>)t >> 16)}; }
    TEVS_INLINE WideSum sum() const {
        const auto h = int32_t(foldLanes<2>(high, plus)[1]);
        const uint64_t rest = sumOfLanes(low) - (uint64_t(h) << 48);
        return {int64_t(h) + int64_t(rest >> 48), int64_t(rest & 0xffffffffffff)};
    }
};

template <class V> using Products32Of = Vec<int64_t, kCount<V> / 2>;
// Every second lane from lane 1 on, where mulEven looks.
template <class V> TEVS_INLINE V oddLanes(V v) { return (V)((Vec<uint64_t, kCount<V> / 2>)v >> 32); }

struct Products32 : Additive {
    template <class V, class> TEVS_INLINE ExactSum64<Products32Of<V>> start() const { return ExactSum64<Products32Of<V>>{}; }
    template <class V> TEVS_INLINE auto step(ExactSum64<Products32Of<V>> s, V a, V b) const {
        return s.with(mulEven(a, b)).with(mulEven(oddLanes(a), oddLanes(b)));
    }
    template <class V> TEVS_INLINE WideSum finish(ExactSum64<V> s) const { return s.sum(); }
};
// The sums of products of even lanes, and of odd ones.
template <class V> struct EvenOddSums64 {
    ExactSum64<V> even, odd;
    friend TEVS_INLINE EvenOddSums64 operator+(EvenOddSums64 x, EvenOddSums64 y) { return {x.even + y.even, x.odd + y.odd}; }
};
struct MixedProducts32 : Additive {
    template <class V, class> TEVS_INLINE EvenOddSums64<Products32Of<V>> start() const { return EvenOddSums64<Products32Of<V>>{}; }
    template <class V> TEVS_INLINE EvenOddSums64<Products32Of<V>> step(EvenOddSums64<Products32Of<V>> s, V a, V b) const {
        return {s.even.with(mulEven(a, b)), s.odd.with(mulEven(oddLanes(a), oddLanes(b)))};
    }
    template <class V> TEVS_INLINE ComplexWideSum finish(EvenOddSums64<V> s) const { return {s.even.sum(), s.odd.sum()}; }
};
// The sums of products of equal parts, and of unequal ones.
template <class V> struct ComplexSums64 {
    EvenOddSums64<V> equal;
    ExactSum64<V> unequal;
    friend TEVS_INLINE ComplexSums64 operator+(ComplexSums64 x, ComplexSums64 y) { return {x.equal + y.equal, x.unequal + y.unequal}; }
};
struct ComplexProducts32 : Additive {
    template <class V, class> TEVS_INLINE ComplexSums64<Products32Of<V>> start() const { return ComplexSums64<Products32Of<V>>{}; }
    template <class V> TEVS_INLINE ComplexSums64<Products32Of<V>> step(ComplexSums64<Products32Of<V>> s, V a, V b) const {
        return {MixedProducts32{}.step(s.equal, a, b), s.unequal.with(mulEven(a, oddLanes(b))).with(mulEven(oddLanes(a), b))};
    }
    template <class V> TEVS_INLINE ComplexWideSum finish(ComplexSums64<V> s) const { return {s.equal.even.sum() - s.equal.odd.sum(), s.unequal.sum()}; }
};

template <class A> TEVS_INLINE WideSum real(const int32_t* b, int n, A a) { return reduceBlocks<kWords, 4, 2>(n, Products32{}, a, Elements<int32_t>{b}); }
WideSum real32s(const int32_t* a, const int32_t* b, int n) { return real(b, n, Elements<int32_t>{a}); }
WideSum real16s32s(const int16_t* a, const int32_t* b, int n) { return real(b, n, WideElements<int16_t>{a}); }
ComplexWideSum mixed32s(const int32_t* a, const Complex32s* b, int n) {
    return reduceBlocks<kWords, 4, kTurns / 4>(partCount<Complex32s>(n), MixedProducts32{}, Doubled<int32_t>{a}, Elements<int32_t>{partsOf(b)});
}
ComplexWideSum complex32s(const Complex32s* a, const Complex32s* b, int n) {
    return reduceBlocks<kWords, 4, kTurns / 4>(partCount<Complex32s>(n), ComplexProducts32{}, Elements<int32_t>{partsOf(a)}, Elements<int32_t>{partsOf(b)});
}

}   // namespace

extern const DotProdKernels dotProd = {
    .real16s = real16s,
    .mixed16s = mixed16s,
    .complex16s = complex16s,
    .real32s = real32s,
    .real16s32s = real16s32s,
    .mixed32s = mixed32s,
    .complex32s = complex32s,
    .real32f = real32f,
    .mixed32f = mixed32f,
    .complex32f = complex32f,
    .single32f = single32f,
    .singleMixed32f = singleMixed32f,
    .singleComplex32f = singleComplex32f,
    .real64f = real64f,
    .mixed64f = mixed64f,
    .complex64f = complex64f,
};

}   // namespace tevs::TEVS_LEVEL_NS
