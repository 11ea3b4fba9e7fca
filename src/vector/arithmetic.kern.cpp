#include "vector/arithmetic.table.h"

#include "core/simd/blocks.h"
#include "core/simd/lanes.h"
#include "core/simd/map.h"
#include "core/simd/real.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

constexpr int kFloats = kLanes<float>;

// ---- integer operations, as exact results -----------------------------------------------------------------------------------------------

// (a0, b0), (a1, b1) ... as 16-bit lanes: the sign bits of a, or zeros, above its lanes widen them.
template <class V> TEVS_INLINE auto widened(V v) {
    if constexpr (sizeof(Element<V>) == 1) {
        using W = Vec<uint16_t, kCount<V> / 2>;
        return Widened<uint8_t, W>{(W)blockLow(v, V{}), (W)blockHigh(v, V{})};
    } else {
        using W = Vec<int32_t, kCount<V> / 2>;
        const V sign = v >> 15;
        return Widened<int16_t, W>{(W)blockLow(v, sign), (W)blockHigh(v, sign)};
    }
}
// Products of 16-bit lanes from their low and high halves.
template <class T, class W, bool Spare = false, class L, class H> TEVS_INLINE auto joined(L low, H high) {
    using S = Vec<int16_t, kCount<L>>;
    return Widened<T, W, Spare>{(W)blockLow((S)low, (S)high), (W)blockHigh((S)low, (S)high)};
}
TEVS_INLINE Vec<uint64_t, 2> shiftLeft64(Vec<uint64_t, 2> v, int s) { return (Vec<uint64_t, 2>)_mm_sll_epi64((__m128i)v, _mm_cvtsi32_si128(s)); }
#if TEVS_REGISTER_BYTES >= 32
TEVS_INLINE Vec<uint64_t, 4> shiftLeft64(Vec<uint64_t, 4> v, int s) { return (Vec<uint64_t, 4>)_mm256_sll_epi64((__m256i)v, _mm_cvtsi32_si128(s)); }
#endif

// 64-bit products of 32-bit lanes.
template <class V> TEVS_INLINE auto products32(V a, V b) {
    using W = Vec<uint64_t, kCount<V> / 2>;
    return EvenOdd<W>{(W)mulEven(a, b), (W)mulEven(swapPairs(a), swapPairs(b))};
}

// The same where nothing is added to them: a product, of at most 2^62, leaves room for half of what is shifted out. Of the sum all that counts lies in 32 bits once it is
// shifted, so a shift without sign will do, of odd lanes to where they are stored.
template <class W> struct Product32 { W even, odd; };
template <class W> TEVS_INLINE auto fit(Exact, Product32<W> x) { return packed(EvenOdd<W>{x.even, x.odd}); }
template <class W> TEVS_INLINE Product32<W> halfAdded(Product32<W> x, int s) {
    const auto sum = [=](W v) { return v + ones<W>(s - 1) + (shiftRight(v, s) & same<W>(1)); };
    return {sum(x.even), sum(x.odd)};
}
template <class W> using Halves32 = Vec<int32_t, 2 * kCount<W>>;
template <class W> TEVS_INLINE Halves32<W> upperWords(Product32<W> x) { return alternate((Halves32<W>)shiftRight(x.even, 32), (Halves32<W>)x.odd); }
template <class W> TEVS_INLINE auto fit(Right by, Product32<W> x) {   // by.s <= 30
    using S = Halves32<W>;
    const auto sum = halfAdded(x, by.s);
    const S q = alternate((S)shiftRight(sum.even, by.s), (S)shiftLeft64(sum.odd, 32 - by.s)), high = upperWords(sum);
    return q >> 31 == shiftRight(high, by.s - 1) ? q : (high >> 31) ^ INT32_MAX;
}
// By 31 only the square of -2^31 leaves the range, and nothing but it gives these bits; by more, nothing does.
struct Right31 {};
struct RightFar {
    int s;
};
template <class W> TEVS_INLINE auto fit(Right31, Product32<W> x) {
    using S = Halves32<W>;
    const auto sum = halfAdded(x, 31);
    const S q = alternate((S)shiftRight(sum.even, 31), (S)(sum.odd + sum.odd));
    return q ^ (q == INT32_MIN);
}
template <class W> TEVS_INLINE auto fit(RightFar by, Product32<W> x) { return shiftRight(upperWords(halfAdded(x, by.s)), by.s - 32); }
template <class F> TEVS_INLINE void withScale32(int scaleFactor, F f) {
    if (scaleFactor == 31)
        f(Right31{});
    else if (scaleFactor > 31)
        f(RightFar{scaleFactor});
    else
        withScale(scaleFactor, f);
}
template <class V> TEVS_INLINE auto widened32(V v) { return products32(v, same<V>(1)); }
template <class W> TEVS_INLINE EvenOdd<W> operator+(EvenOdd<W> a, EvenOdd<W> b) { return {a.even + b.even, a.odd + b.odd}; }
// 32-bit products of 16-bit numbers in 32-bit lanes: the high half of one factor's lanes is emptied, so that it adds nothing.
template <class V> TEVS_INLINE V products16(V a, V b) {
    using S = Vec<int16_t, 2 * kCount<V>>;
    return (V)multiplyPairs((S)(a & 0xffff), (S)b);
}

constexpr auto sum = [](auto a, auto b) { return Sum<decltype(a)>{a, b}; };
constexpr auto difference = [](auto a, auto b) { return Difference<decltype(a)>{a, b}; };
constexpr auto reversed = [](auto a, auto b) { return difference(b, a); };

constexpr auto product = [](auto a, auto b) {
    using V = decltype(b);
    constexpr int n = kCount<V> / 2;
    if constexpr (sizeof(Element<V>) == 1) {
        const auto x = widened(a), y = widened(b);
        return Widened<uint8_t, Vec<uint16_t, n>>{x.low * y.low, x.high * y.high};
    } else if constexpr (sizeof(Element<V>) == 4) {
        const auto p = products32(a, b);
        return Product32<decltype(p.even)>{p.even, p.odd};
    } else if constexpr (!Limits<V>::isSigned) {
        return joined<uint16_t, Vec<uint32_t, n>>(a * b, mulHigh(a, b));
    } else if constexpr (!Limits<decltype(a)>::isSigned) {
        // The unsigned high half counts a negative b 2^16 too high.
        using U = decltype(a);
        return joined<int16_t, Vec<int32_t, n>>(a * (U)b, mulHigh(a, (U)b) - ((U)(b >> 15) & a));
    } else {
        using U = Vec<uint16_t, kCount<V>>;
        return joined<int16_t, Vec<int32_t, n>, true>((U)a * (U)b, mulHigh(a, b));
    }
};

constexpr auto complexProduct = [](auto a, auto b) {
    using V = decltype(a);
    if constexpr (sizeof(Element<V>) == 4) {
        // im reaches 2^63 where all four parts are -2^31 and wraps to -2^63, which no other im is: 2^63 - 1 rounds and saturates as it would.
        const V x = swapPairs(a), y = swapPairs(b);
        using W = Vec<uint64_t, kCount<V> / 2>;
        const W re = (W)mulEven(a, b) - (W)mulEven(x, y), im = (W)mulEven(a, y) + (W)mulEven(x, b);
        const auto high = (V)im == INT32_MIN, low = (V)im == 0;   // the even lanes are the low words
        const auto wrapped = (W)(high & swapPairs(low)) >> 32;    // 0 or 2^32 - 1
        return EvenOdd<W>{re, im - (wrapped & 1)};
    } else {
        // With NOT bi = -bi - 1 in the place of bi, a pair sums to re - ai; ai is the upper half of its lane. Negating -2^15 would wrap. im reaches
        // 2^31 as above.
        using W = Vec<int32_t, kCount<V> / 2>;
        using U = Vec<uint32_t, kCount<V> / 2>;
        const W re = (W)((U)multiplyPairs(a, (V)((W)b ^ same<W>(int32_t(0xffff0000)))) + (U)((W)a >> 16));
        const W whole = (W)multiplyPairs(a, swapPairs(b)), im = (W)((U)whole + (U)(whole == INT32_MIN));
        return Widened<int16_t, W>{blockLow(re, im), blockHigh(re, im)};
    }
};

// Whether an operation makes one lane of two.
template <class Op> constexpr bool kOfPairs = false;
template <> constexpr bool kOfPairs<decltype(complexProduct)> = true;
template <class Op> constexpr bool kIsProduct = false;
template <> constexpr bool kIsProduct<decltype(product)> = true;

// f of the scaling, of the kinds that Op's results of type T have.
template <class Op, class T, class F> TEVS_INLINE void withScaleOf(int scaleFactor, F f) {
    if constexpr (sizeof(T) == 4 && kIsProduct<Op>)
        withScale32(scaleFactor, f);
    else
        withScale(scaleFactor, f);
}
// f over the lanes, as Op goes by them or by pairs.
template <class Op, int N, int Least, class T, class F, class... S> TEVS_INLINE void mapFor(ptrdiff_t n, T* dst, F f, const S*... s) {
    if constexpr (kOfPairs<Op>)
        mapPairs<N, Least>(n, dst, f, s...);
    else
        map<N, Least>(n, dst, f, s...);
}

template <class A, class B, class Op> void scaledBinary(const A* a, const B* b, B* dst, ptrdiff_t n, int scaleFactor) {
    withScaleOf<Op, B>(scaleFactor, [=](auto scaling) {
        mapFor<Op, kLanes<B>, kLeast<B>>(
            n, dst, [=](auto w, auto x, auto y) { return fit(scaling, Op{}(load<A, w.n>(x), load<B, w.n>(y))); }, a, b);
    });
}

template <class V> TEVS_INLINE V repeated(Constant<Element<V>> c) { return alternate(same<V>(c.even), same<V>(c.odd)); }

template <class T, class Op> void scaledWithConstant(const T* src, Constant<T> c, T* dst, ptrdiff_t n, int scaleFactor) {
    withScaleOf<Op, T>(scaleFactor, [=](auto scaling) {
        mapFor<Op, kLanes<T>, kLeast<T>>(
            n, dst, [=](auto w, auto x) { return fit(scaling, Op{}(load<T, w.n>(x), repeated<Vec<T, w.n>>(c))); }, src);
    });
}

// n real factors and n complex ones.
void mul32s32sc(const int32_t* a, const int32_t* b, int32_t* dst, ptrdiff_t n, int scaleFactor) {
    withScale32(scaleFactor, [=](auto scaling) {
        map<kLanes<int32_t> / 2, 2>(
            n, reinterpret_cast<LanePair<int32_t>*>(dst),
            [=](auto w, auto x, auto y) {
                using V = Vec<int32_t, 2 * w.n>;
                return fit(scaling, product(loadTwice<V>(x), loadAs<V>(y)));
            },
            a, reinterpret_cast<const LanePair<int32_t>*>(b));
    });
}

void mul16s32s(const int16_t* a, const int16_t* b, int32_t* dst, ptrdiff_t n, int scaleFactor) {
    withScale(scaleFactor, [=](auto scaling) {
        map<kLanes<int32_t>, 4>(
            n, dst, [=](auto w, auto x, auto y) { return fit(scaling, Whole<Vec<int32_t, w.n>>{products16(loadWide<w.n>(x), loadWide<w.n>(y))}); }, a, b);
    });
}

// The products and what is there already are one exact result, rounded once.
void addProduct16s(const int16_t* a, const int16_t* b, int16_t* dst, ptrdiff_t n, int scaleFactor) {
    withScale(scaleFactor, [=](auto scaling) {
        map<kLanes<int16_t>, 8>(
            n, dst,
            [=](auto w, auto x, auto y, auto z) {
                const auto p = product(load<int16_t, w.n>(x), load<int16_t, w.n>(y));
                const auto before = widened(load<int16_t, w.n>(z));
                return fit(scaling, decltype(before){p.low + before.low, p.high + before.high});
            },
            a, b, static_cast<const int16_t*>(dst));
    });
}
void addProduct16s32s(const int16_t* a, const int16_t* b, int32_t* dst, ptrdiff_t n, int scaleFactor) {
    withScale(scaleFactor, [=](auto scaling) {
        map<kLanes<int32_t>, 4>(
            n, dst,
            [=](auto w, auto x, auto y, auto z) {
                return fit(scaling, widened32(products16(loadWide<w.n>(x), loadWide<w.n>(y))) + widened32(load<int32_t, w.n>(z)));
            },
            a, b, static_cast<const int32_t*>(dst));
    });
}
void addProduct32s(const int32_t* a, const int32_t* b, int32_t* dst, ptrdiff_t n, int scaleFactor) {
    withScale(scaleFactor, [=](auto scaling) {
        map<kLanes<int32_t>, 4>(
            n, dst,
            [=](auto w, auto x, auto y, auto z) {
                return fit(scaling, products32(load<int32_t, w.n>(x), load<int32_t, w.n>(y)) + widened32(load<int32_t, w.n>(z)));
            },
            a, b, static_cast<const int32_t*>(dst));
    });
}

void add32u(const uint32_t* a, const uint32_t* b, uint32_t* dst, ptrdiff_t n) {
    map<kLanes<uint32_t>, 4>(
        n, dst, [](auto w, auto x, auto y) { return addSat(load<uint32_t, w.n>(x), load<uint32_t, w.n>(y)); }, a, b);
}
void add16s32s(const int16_t* a, const int32_t* b, int32_t* dst, ptrdiff_t n) {
    map<kLanes<int32_t>, 4>(
        n, dst, [](auto w, auto x, auto y) { return addSat(loadWide<w.n>(x), load<int32_t, w.n>(y)); }, a, b);
}

constexpr auto plus = [](auto a, auto b) { return a + b; };
constexpr auto minus = [](auto a, auto b) { return a - b; };
constexpr auto minusReversed = [](auto a, auto b) { return b - a; };
constexpr auto times = [](auto a, auto b) { return a * b; };

// Sums and products of 8-bit lanes fit 16.
template <class Op> void wide8u(const uint8_t* a, const uint8_t* b, uint16_t* dst, ptrdiff_t n) {
    map<kLanes<uint16_t>, 8>(
        n, dst, [](auto w, auto x, auto y) { return Op{}(loadInts<uint16_t, 2 * w.n>(x), loadInts<uint16_t, 2 * w.n>(y)); }, a, b);
}
// Sums, differences and products of 16-bit lanes fit 32; a product is rounded where it becomes a float.
template <class Op> void floats16s(const int16_t* a, const int16_t* b, float* dst, ptrdiff_t n) {
    map<kFloats, 4>(
        n, dst, [](auto w, auto x, auto y) { return __builtin_convertvector(Op{}(loadWide<w.n>(x), loadWide<w.n>(y)), Vec<float, w.n>); }, a, b);
}

// ---- float operations -----------------------------------------------------------------------------------------------------------------------

// re = ar br - ai bi, im = ar bi + ai br. Each factor is loaded once: of unaligned vectors, half the loads cross a cache line.
constexpr auto timesComplex = [](auto a, auto b) {
    const auto x = inRegister(a), y = inRegister(b);
    return subAdd(evensTwice(x) * y, oddsTwice(x) * swapPairs(y));
};
// a conj(b).
constexpr auto timesConjugate = [](auto a, auto b) {
    const auto x = inRegister(a), y = inRegister(b);
    return addSub(evensTwice(y) * x, oddsTwice(y) * swapPairs(x));
};
template <> constexpr bool kOfPairs<decltype(timesComplex)> = true;
template <> constexpr bool kOfPairs<decltype(timesConjugate)> = true;

template <class T, class Op> void binary(const T* a, const T* b, T* dst, ptrdiff_t n) {
    mapFor<Op, kLanes<T>, kLeast<T>>(
        n, dst, [](auto w, auto x, auto y) { return Op{}(load<T, w.n>(x), load<T, w.n>(y)); }, a, b);
}
template <class T, class Op> void withConstant(const T* src, Constant<T> c, T* dst, ptrdiff_t n) {
    mapFor<Op, kLanes<T>, kLeast<T>>(
        n, dst, [=](auto w, auto x) { return Op{}(load<T, w.n>(x), repeated<Vec<T, w.n>>(c)); }, src);
}

// n real factors and n complex ones.
void mul32f32fc(const float* a, const float* b, float* dst, ptrdiff_t n) {
    map<kFloats / 2, 2>(
        n, reinterpret_cast<LanePair<float>*>(dst),
        [](auto w, auto x, auto y) {
            using V = Vec<float, 2 * w.n>;
            return loadTwice<V>(x) * loadAs<V>(y);
        },
        a, reinterpret_cast<const LanePair<float>*>(b));
}

template <class T, class Op> void addProduct(const T* a, const T* b, T* dst, ptrdiff_t n) {
    mapFor<Op, kLanes<T>, kLeast<T>>(
        n, dst, [](auto w, auto x, auto y, auto z) { return load<T, w.n>(z) + Op{}(load<T, w.n>(x), load<T, w.n>(y)); }, a, b, static_cast<const T*>(dst));
}
void addProductC32f(const float* src, Constant<float> c, float* dst, ptrdiff_t n) {
    map<kFloats, 4>(
        n, dst, [=](auto w, auto x, auto z) { return load<float, w.n>(z) + load<float, w.n>(x) * repeated<Vec<float, w.n>>(c); }, src,
        static_cast<const float*>(dst));
}

// What is below the range converts to INT32_MIN and packs to -32768, as NaN does; what is above would too, so it is cut off first.
void mulC32f16s(const float* src, float val, int16_t* dst, ptrdiff_t n, float f, float g) {
    map<2 * kFloats, 8>(
        n, dst,
        [=](auto w, auto s) {
            const auto part = [=](auto v) { return nearestInt(atMost(decltype(v){} + 32767.0f, v * val * f * g)); };
            const auto v = loadTwo<float, w.n / 2>(s);
            return pack16(part(v.a), part(v.b));
        },
        src);
}

// ---- division ----------------------------------------------------------------------------------------------------------------------------------

template <class V> TEVS_INLINE V quietNaN() { return same<V>((Element<V>)__builtin_nan("")); }
template <class V> TEVS_INLINE V infinity() { return same<V>((Element<V>)__builtin_inf()); }

// x / y by IEEE, but over a zero of either sign: infinity with the sign of x, or a NaN where x is 0 or NaN.
constexpr auto quotient = [](auto x, auto y, bool& zero) {
    using V = decltype(x);
    const auto isZero = y == 0;
    const V q = x / y;
    if (!any(isZero)) [[likely]]
        return q;
    zero = true;
    return isZero ? x > 0 ? infinity<V>() : x < 0 ? -infinity<V>() : quietNaN<V>() : q;
};

template <class T> bool divide(const T* dividend, const T* divisor, T* dst, ptrdiff_t n) {
    bool zero = false;
    map<kLanes<T>, kLeast<T>>(
        n, dst, [&](auto w, auto x, auto y) { return quotient(load<T, w.n>(x), load<T, w.n>(y), zero); }, dividend, divisor);
    return zero;
}
bool divCRev32f(const float* divisor, float dividend, float* dst, ptrdiff_t n) {
    bool zero = false;
    map<kFloats, 4>(
        n, dst, [&](auto w, auto y) { return quotient(same<Vec<float, w.n>>(dividend), load<float, w.n>(y), zero); }, divisor);
    return zero;
}

// |y|^2 in both lanes.
template <class V> TEVS_INLINE V squaredMagnitude(V y) {
    const V s = y * y;
    return s + swapPairs(s);
}

// N lanes of quotients by way of double precision, where no square of a single-precision number leaves the range, and none but that of 0 is 0. The reciprocals of two
// vectors' magnitudes are one division; the second rounding that this costs is 2^-29 of a result's last bit.
template <int N> TEVS_INLINE Vec<float, N> wideQuotients(const float* p, const float* q, bool& zero) {
    constexpr int h = N / 2;
    using V = Vec<double, h>;
    const V x = loadWide<h>(p), xh = loadWide<h>(p + h), y = loadWide<h>(q), yh = loadWide<h>(q + h);
    const V s = y * y, sh = yh * yh, m = blockLow(s, sh) + blockHigh(s, sh), r = 1 / m;
    const auto v = Two{timesConjugate(x, y) * evensTwice(r), timesConjugate(xh, yh) * oddsTwice(r)};
    if (!any(m == 0)) [[likely]]
        return narrow(v);
    zero = true;
    const auto only = [](V mag, V z) { return mag == 0 ? quietNaN<V>() : z; };
    return narrow(Two{only(evensTwice(m), v.a), only(oddsTwice(m), v.b)});
}

// x conj(y) (1 / |y|^2), each step rounded in single precision: off by 6 half units of the terms over |y|^2 at most. Where a sum of products may have overflowed or lost one the
// quotient is found the other way, each for its own sake.
template <class V> struct SingleQuotients {
    V xr, xi, yr, yi;
    V re = xr * yr + xi * yi, im = xi * yr - xr * yi, m = yr * yr + yi * yi, by = 1 / m;
    static constexpr float kLeastPart = 0x1p-100, kMostPart = 0x1p126;   // whose reciprocals are normal

    // Of the N lanes at p and q. Each vector is loaded once: of unaligned ones half the loads cross a cache line.
    template <int N> static TEVS_INLINE SingleQuotients of(const float* p, const float* q) {
        constexpr int second = N - kCount<V>;   // four lanes are one vector, taken twice
        const auto x = blocksSplit(inRegister(loadAs<V>(p)), inRegister(loadAs<V>(p + second)));
        const auto y = blocksSplit(inRegister(loadAs<V>(q)), inRegister(loadAs<V>(q + second)));
        return {x.a, x.b, y.a, y.b};
    }
    TEVS_INLINE Two<V> interleaved() const { return blocksInterleaved(re * by, im * by); }
    TEVS_INLINE bool allUsual() const {
        const V a = abs(re), b = abs(im);
        return all((atMost(a, atMost(b, m)) >= constant<V>(kLeastPart)) & (a + b + m <= constant<V>(kMostPart)));
    }
    // A part whose terms both have a factor of 0 is one, too. So is a NaN, that of both parts.
    TEVS_INLINE auto usual() const {
        const auto part = [](V v, V a, V b, V c, V d) {
            const auto zero = (v == 0) & (atMost(abs(a), abs(b)) + atMost(abs(c), abs(d)) == 0);
            return zero | ~((abs(v) < constant<V>(kLeastPart)) | (abs(v) > constant<V>(kMostPart)));
        };
        return (m >= constant<V>(kLeastPart)) & (m <= constant<V>(kMostPart)) & part(re, xr, yr, xi, yi) & part(im, xi, yr, xr, yi);
    }
};
template <int N> using QuotientVector = Vec<float, (N > 8 ? N / 2 : 4)>;
// The N lanes at p and q, where not all are usual. Out of line, so that nothing is kept in registers for it.
template <int N> __attribute__((noinline)) void unusualQuotients(const float* p, const float* q, float* dst, bool& zero) {
    using V = QuotientVector<N>;
    constexpr int n = kCount<V>;
    const auto single = SingleQuotients<V>::template of<N>(p, q);
    const auto usual = single.usual();
    Two<V> v = single.interleaved();
    const auto pairs = blocksInterleaved(usual, usual);
    if (any(~usual)) v = {pairs.a ? v.a : wideQuotients<n>(p, q, zero), pairs.b ? v.b : wideQuotients<n>(p + (N - n), q + (N - n), zero)};
    store(dst, v);
}
bool div32fc(const float* dividend, const float* divisor, float* dst, ptrdiff_t n) {
    bool zero = false;
    mapPairs<2 * kFloats, 4>(
        n, dst,
        [&](auto w, auto p, auto q) {
            using V = QuotientVector<w.n>;
            const auto single = SingleQuotients<V>::template of<w.n>(p, q);
            Two<V> v = single.interleaved();
            if (!single.allUsual()) [[unlikely]] {
                float careful[2 * kCount<V>];
                unusualQuotients<w.n>(p, q, careful, zero);
                v = loadTwo<float, kCount<V>>(careful);
            }
            if constexpr (w.n == 4)
                return v.a;
            else
                return v;
        },
        dividend, divisor);
    return zero;
}

// m * 2^e, rounded as doubles are but without bounds to the exponent. m has a magnitude of 1 to 2, or is 0, infinite or NaN.
struct Unbounded {
    double m;
    int e;

    static Unbounded of(double x, int e = 0) {
        if (!(__builtin_fabs(x) >= 0x1p-1022)) {
            x *= 0x1p100;
            e -= 100;
        }
        const auto bits = __builtin_bit_cast(uint64_t, x);
        const int exponent = int(bits >> 52 & 0x7ff);
        if (x == 0 || exponent == 0x7ff) return {x, e};
        return {__builtin_bit_cast(double, (bits & ~(uint64_t{0x7ff} << 52)) | uint64_t{1023} << 52), e + exponent - 1023};
    }
    friend Unbounded operator*(Unbounded a, Unbounded b) { return of(a.m * b.m, a.e + b.e); }
    friend Unbounded operator/(Unbounded a, Unbounded b) { return of(a.m / b.m, a.e - b.e); }
    Unbounded operator-() const { return {-m, e}; }
    friend Unbounded operator+(Unbounded a, Unbounded b) {
        if (a.m == 0 || (b.m != 0 && a.e < b.e)) {
            const Unbounded larger = b;
            b = a;
            a = larger;
        }
        // What is 2^-100 of the larger term decides no rounding but as any smaller term does.
        const int apart = b.m == 0 ? 0 : a.e - b.e > 100 ? 100 : a.e - b.e;
        return of(a.m + b.m * power(-apart), a.e);
    }
    // In two steps, of which the first is exact.
    double value() const {
        const int all = e < -1200 ? -1200 : e > 1200 ? 1200 : e, half = all / 2;
        return m * power(half) * power(all - half);
    }
    static double power(int e) { return __builtin_bit_cast(double, uint64_t(e + 1023) << 52); }
};

// x / y, where what is formed on the way may leave the range that the quotient is in.
__attribute__((noinline)) void divideUnbounded(double (&x)[2], const double (&y)[2], bool& zero) {
    if (y[0] == 0 && y[1] == 0) {
        x[0] = x[1] = __builtin_nan("");
        zero = true;
        return;
    }
    const auto xr = Unbounded::of(x[0]), xi = Unbounded::of(x[1]), yr = Unbounded::of(y[0]), yi = Unbounded::of(y[1]);
    const auto m = yr * yr + yi * yi;
    x[0] = ((xr * yr + xi * yi) / m).value();
    x[1] = ((xi * yr + -(xr * yi)) / m).value();
}

// Where every part is 0 or has a magnitude of 2^-240 to 2^240, products have one of 2^-480 or more, their sums of 2^-533 and quotients of 2^-1014, and none overflows:
// the same to the bit as without bounds. Each element is divided the one way or the other for its own sake.
bool div64fc(const double* dividend, const double* divisor, double* dst, ptrdiff_t n) {
    bool zero = false;
    mapPairs<kLanes<double>, 2>(
        n, dst,
        [&](auto w, auto p, auto q) {
            using V = Vec<double, w.n>;
            const V x = load<double, w.n>(p), y = load<double, w.n>(q), m = squaredMagnitude(y);
            V v = timesConjugate(x, y) / m;
            const auto moderate = [](V part) { return isAtMost(constant<V>(0x1p-240), abs(part)) & isAtMost(abs(part), constant<V>(0x1p240)); };
            const auto inX = moderate(x), inY = moderate(y);
            if (all(inX & inY)) [[likely]]
                return v;
            const auto safe = (inX | (x == 0)) & (inY | (y == 0)) & (m != 0);
            if (all(safe)) return v;
            for (int k = 0; k < w.n; k += 2) {
                if (safe[k] && safe[k + 1]) continue;
                double a[2] = {x[k], x[k + 1]};
                divideUnbounded(a, {y[k], y[k + 1]}, zero);
                v[k] = a[0];
                v[k + 1] = a[1];
            }
            return v;
        },
        dividend, divisor);
    return zero;
}

// q within T's range, NaN as 0.
template <class T, class V> TEVS_INLINE V clampedOrZero(V q) { return clamped<T>((V)((Bits<V>)q & (q == q))); }

// |x / y| 2^k to the nearest integer, where that is below 2^31: the shifted dividend fits 63 bits then.
__attribute__((noinline)) int32_t exactQuotient(int32_t x, int32_t y, int k) {
    const uint64_t dividend = (x < 0 ? -uint64_t(x) : uint64_t(x)) << k, divisor = y < 0 ? -uint64_t(y) : uint64_t(y);
    uint64_t q = dividend / divisor;
    const uint64_t twice = 2 * (dividend - q * divisor);
    q += twice > divisor || (twice == divisor && (q & 1));
    return int32_t((x < 0) == (y < 0) ? q : -q);
}

// Integer quotients x / y * 2^-s of 32-bit lanes that hold T. The factor is exact, and 0 / 0 is 0.
//
// A quotient differs from a tie by at least 1 / (2 |y| 2^s), or 1 / (2 |y|) for s < 0, unless it is one. In single precision the division's error is below that for
// 8-bit operands, and for 16-bit ones where s >= 0: 2^-24 |x / y| 2^-s. In double precision it always is for quotients of 16 bits, and for those
// of 32 where s >= 0; else a quotient that comes as near to a tie as the error allows is found exactly.
template <class T> struct SingleQuotient {
    float factor;
    explicit SingleQuotient(int s) : factor(__builtin_bit_cast(float, uint32_t(127 - s) << 23)) {}
    template <class V> TEVS_INLINE V operator()(V x, V y) const {
        using F = Vec<float, kCount<V>>;
        return nearestInt(clampedOrZero<T>(__builtin_convertvector(x, F) / __builtin_convertvector(y, F) * factor));
    }
};
template <class T> struct DoubleQuotient {
    double factor;
    int shift;
    explicit DoubleQuotient(int s) : factor(__builtin_bit_cast(double, uint64_t(1023 - s) << 52)), shift(s) {}
    template <class V> TEVS_INLINE V operator()(V x, V y) const {
        const auto a = widen(x), b = widen(y);
        const auto p = a.a / b.a * factor, q = a.b / b.b * factor;
        V r = nearestInt(Two{clampedOrZero<T>(p), clampedOrZero<T>(q)});
        if (sizeof(T) < 4 || shift >= 0) return r;
        const auto nearTie = [](auto v) {   // and not so large that it saturates
            using D = decltype(v);
            const D m = abs(v), fraction = m - (m + 0x1p52 - 0x1p52);   // -0.5 .. 0.5
            const D off = abs(fraction) - 0.5;
            return (off > -0x1p-20) & (m < 0x1p31);
        };
        if (!any(nearTie(p) | nearTie(q))) [[likely]]
            return r;
        for (int i = 0; i < kCount<V>; ++i) {
            const double v = i < kCount<V> / 2 ? p[i % (kCount<V> / 2)] : q[i % (kCount<V> / 2)];
            if (v > -0x1p31 && v < 0x1p31 - 1) r[i] = exactQuotient(x[i], y[i], -shift);
        }
        return r;
    }
};
// (x conj y) / |y|^2 * 2^-s of complex numbers in neighbouring lanes: 0 where y is. Numerator and denominator are exact.
struct ComplexQuotient {
    double factor;
    explicit ComplexQuotient(int s) : factor(__builtin_bit_cast(double, uint64_t(1023 - s) << 52)) {}
    template <class V> TEVS_INLINE V operator()(V x, V y) const {
        const auto a = widen(x), b = widen(y);
        const auto part = [this](auto u, auto v) { return clampedOrZero<int16_t>(timesConjugate(u, v) / squaredMagnitude(v) * factor); };
        return nearestInt(Two{part(a.a, b.a), part(a.b, b.b)});
    }
};

template <> constexpr bool kOfPairs<ComplexQuotient> = true;

template <class Q, class A, class B> TEVS_INLINE bool quotients(const A* dividend, const B* divisor, B* dst, ptrdiff_t n, Q q) {
    bool zero = false;
    const auto step = [&](auto w, auto x, auto y) {
        constexpr int h = w.n / 2;
        const auto a = loadInts<int32_t, 4 * h>(y), b = loadInts<int32_t, 4 * h>(y + h);
        if constexpr (kOfPairs<Q>)
            zero |= any(((a | swapPairs(a)) == 0) | ((b | swapPairs(b)) == 0));
        else
            zero |= any((a == 0) | (b == 0));
        return packed<B>(Some{{q(loadInts<int32_t, 4 * h>(x), a), q(loadInts<int32_t, 4 * h>(x + h), b)}});
    };
    mapFor<Q, 2 * kFloats, 8>(n, dst, step, dividend, divisor);
    return zero;
}
template <class Q, class T> TEVS_INLINE void quotientsC(const T* src, Constant<T> val, T* dst, ptrdiff_t n, Q q) {
    mapFor<Q, 2 * kFloats, 8>(
        n, dst,
        [=](auto w, auto x) {
            constexpr int h = w.n / 2;
            const auto c = repeated<Vec<int32_t, h>>({val.even, val.odd});
            return packed<T>(Some{{q(loadInts<int32_t, 4 * h>(x), c), q(loadInts<int32_t, 4 * h>(x + h), c)}});
        },
        src);
}

int within(int s, int lo, int hi) { return s < lo ? lo : s > hi ? hi : s; }

// Scales are cut off where every quotient that is not 0 saturates, and where all round to 0.
template <class T> bool divideInts(const T* dividend, const T* divisor, T* dst, ptrdiff_t n, int scaleFactor) {
    constexpr int bits = 8 * sizeof(T);
    const int s = within(scaleFactor, -2 * bits, bits + 1);
    if constexpr (sizeof(T) == 1) return quotients(dividend, divisor, dst, n, SingleQuotient<T>(s));
    if constexpr (sizeof(T) == 2)
        if (s >= 0) return quotients(dividend, divisor, dst, n, SingleQuotient<T>(s));
    if constexpr (sizeof(T) > 1) return quotients(dividend, divisor, dst, n, DoubleQuotient<T>(s));
}
bool div32s16s(const int32_t* dividend, const int16_t* divisor, int16_t* dst, ptrdiff_t n, int scaleFactor) {
    return quotients(dividend, divisor, dst, n, DoubleQuotient<int16_t>(within(scaleFactor, -32, 33)));
}
// Below -32 the sign of each part of the numerator decides: so it does at -200.
int complexScale(int scaleFactor) { return scaleFactor < -32 ? -200 : within(scaleFactor, -32, 33); }
bool div16sc(const int16_t* dividend, const int16_t* divisor, int16_t* dst, ptrdiff_t n, int scaleFactor) {
    return quotients(dividend, divisor, dst, n, ComplexQuotient(complexScale(scaleFactor)));
}
template <class T> void divideIntsC(const T* src, Constant<T> val, T* dst, ptrdiff_t n, int scaleFactor) {
    constexpr int bits = 8 * sizeof(T);
    const int s = within(scaleFactor, -2 * bits, bits + 1);
    if constexpr (sizeof(T) == 1)
        quotientsC(src, val, dst, n, SingleQuotient<T>(s));
    else if (s >= 0)
        quotientsC(src, val, dst, n, SingleQuotient<T>(s));
    else
        quotientsC(src, val, dst, n, DoubleQuotient<T>(s));
}
void divC16sc(const int16_t* src, Constant<int16_t> val, int16_t* dst, ptrdiff_t n, int scaleFactor) {
    quotientsC(src, val, dst, n, ComplexQuotient(within(scaleFactor, -64, 33)));
}
bool divCRev16u(const uint16_t* divisor, uint16_t dividend, uint16_t* dst, ptrdiff_t n) {
    bool zero = false;
    map<2 * kFloats, 8>(
        n, dst,
        [&](auto w, auto y) {
            constexpr int h = w.n / 2;
            const auto a = loadInts<int32_t, 4 * h>(y), b = loadInts<int32_t, 4 * h>(y + h), x = decltype(a){} + int32_t(dividend);
            zero |= any((a == 0) | (b == 0));
            const SingleQuotient<uint16_t> q(0);
            return packed<uint16_t>(Some{{q(x, a), q(x, b)}});
        },
        divisor);
    return zero;
}

// ---- absolute values ----------------------------------------------------------------------------------------------------------------------------

template <class V> TEVS_INLINE V magnitude(V v) {
    if constexpr (Element<V>(0.5) != 0) {
        return abs(v);
    } else if constexpr (sizeof(Element<V>) == 2) {
        const V negated = subSat(V{}, v);
        return v > negated ? v : negated;
    } else {
        using U = Vec<uint32_t, kCount<V>>;
        const V sign = v >> 31, r = (V)((U)(v ^ sign) - (U)sign);
        return (V)((U)r + (U)(r >> 31));   // the minimum has no counterpart: less 1, it is the maximum
    }
}
template <class T> void absolute(const T* src, T* dst, ptrdiff_t n) {
    map<kLanes<T>, kLeast<T>>(
        n, dst, [](auto w, auto s) { return magnitude(load<T, w.n>(s)); }, src);
}

using SumOf = decltype(sum);
using DifferenceOf = decltype(difference);
using ReversedOf = decltype(reversed);
using ProductOf = decltype(product);
using ComplexProductOf = decltype(complexProduct);

template <class T>
constexpr ScaledKernels<T> kScaled = {
    .add = {scaledBinary<T, T, SumOf>},
    .sub = {scaledBinary<T, T, DifferenceOf>},
    .mul = {scaledBinary<T, T, ProductOf>},
    .addC = {scaledWithConstant<T, SumOf>},
    .subC = {scaledWithConstant<T, DifferenceOf>},
    .subCRev = {scaledWithConstant<T, ReversedOf>},
    .mulC = {scaledWithConstant<T, ProductOf>},
};

}   // namespace

extern const ArithmeticKernels arithmetic = {
    .scaled8u = kScaled<uint8_t>,
    .scaled16u = kScaled<uint16_t>,
    .scaled16s = kScaled<int16_t>,
    .scaled32s = kScaled<int32_t>,
    .mul16sc = {scaledBinary<int16_t, int16_t, ComplexProductOf>},
    .mul32sc = {scaledBinary<int32_t, int32_t, ComplexProductOf>},
    .mulC16sc = {scaledWithConstant<int16_t, ComplexProductOf>},
    .mulC32sc = {scaledWithConstant<int32_t, ComplexProductOf>},
    .mul32s32sc = {mul32s32sc},
    .mul16u16s = {scaledBinary<uint16_t, int16_t, ProductOf>},
    .mul16s32s = {mul16s32s},
    .addProduct16s = {addProduct16s},
    .addProduct32s = {addProduct32s},
    .addProduct16s32s = {addProduct16s32s},
    .add32u = add32u,
    .add8u16u = wide8u<decltype(plus)>,
    .mul8u16u = wide8u<decltype(times)>,
    .add16s32f = floats16s<decltype(plus)>,
    .sub16s32f = floats16s<decltype(minus)>,
    .mul16s32f = floats16s<decltype(times)>,
    .add16s32s = add16s32s,
    .add32f = binary<float, decltype(plus)>,
    .sub32f = binary<float, decltype(minus)>,
    .mul32f = binary<float, decltype(times)>,
    .mul32fc = binary<float, decltype(timesComplex)>,
    .mulConj32fc = binary<float, decltype(timesConjugate)>,
    .mul32f32fc = mul32f32fc,
    .addProduct32f = addProduct<float, decltype(times)>,
    .addProduct32fc = addProduct<float, decltype(timesComplex)>,
    .add64f = binary<double, decltype(plus)>,
    .sub64f = binary<double, decltype(minus)>,
    .mul64f = binary<double, decltype(times)>,
    .mul64fc = binary<double, decltype(timesComplex)>,
    .mulConj64fc = binary<double, decltype(timesConjugate)>,
    .addProduct64f = addProduct<double, decltype(times)>,
    .addProduct64fc = addProduct<double, decltype(timesComplex)>,
    .addC32f = withConstant<float, decltype(plus)>,
    .subC32f = withConstant<float, decltype(minus)>,
    .subCRev32f = withConstant<float, decltype(minusReversed)>,
    .mulC32f = withConstant<float, decltype(times)>,
    .mulC32fc = withConstant<float, decltype(timesComplex)>,
    .addProductC32f = addProductC32f,
    .addC64f = withConstant<double, decltype(plus)>,
    .subC64f = withConstant<double, decltype(minus)>,
    .subCRev64f = withConstant<double, decltype(minusReversed)>,
    .mulC64f = withConstant<double, decltype(times)>,
    .mulC64fc = withConstant<double, decltype(timesComplex)>,
    .mulC32f16s = mulC32f16s,
    .div32f = divide<float>,
    .div32fc = div32fc,
    .div64f = divide<double>,
    .div64fc = div64fc,
    .divCRev32f = divCRev32f,
    .div8u = divideInts<uint8_t>,
    .div16u = divideInts<uint16_t>,
    .div16s = divideInts<int16_t>,
    .div16sc = div16sc,
    .div32s = divideInts<int32_t>,
    .div32s16s = div32s16s,
    .divC8u = divideIntsC<uint8_t>,
    .divC16u = divideIntsC<uint16_t>,
    .divC16s = divideIntsC<int16_t>,
    .divC16sc = divC16sc,
    .divCRev16u = divCRev16u,
    .abs32f = absolute<float>,
    .abs64f = absolute<double>,
    .abs16s = absolute<int16_t>,
    .abs32s = absolute<int32_t>,
};

}   // namespace tevs::TEVS_LEVEL_NS
