#include "telephony/threshold.table.h"

#include "core/simd/lanes.h"
#include "core/simd/map.h"
#include "core/simd/real.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// ---- real elements --------------------------------------------------------------------------------------------------------------------

template <class T> constexpr bool kFloating = T(0.5) != 0;

// map() for an f of few instructions: Steps at a time, their loads before their stores, and to addresses from which on no store crosses a cache line.
template <int Steps, int N, int Least, class T, class F> TEVS_INLINE void mapInLines(int n, T* d, F f, const T* s) {
    if (n < 512 / int(sizeof(T))) return map<N, Least>(n, d, f, s);
    const auto first = f(Lanes<N>{}, s), last = f(Lanes<N>{}, s + (n - N));
    int i = int(-uintptr_t(d) % kRegisterBytes) / int(sizeof(T));
    for (; i <= n - Steps * N; i += Steps * N) {
        Some<decltype(f(Lanes<N>{}, s)), Steps> r;
#pragma GCC unroll 8
        for (int k = 0; k < Steps; ++k) r.v[k] = f(Lanes<N>{}, s + i + k * N);
#pragma GCC unroll 8
        for (int k = 0; k < Steps; ++k) {
            store(d + i + k * N, r.v[k]);
            asm volatile("" : : : "memory");   // in this order: beyond the first cache, stores that jump between lines took half as long again
        }
    }
    for (; i < n - N; i += N) store(d + i, f(Lanes<N>{}, s + i));
    store(d, first);
    store(d + (n - N), last);
}

template <int Steps = kFewRegisters ? 2 : 4, class T, class F> TEVS_INLINE void eachElement(const T* src, T* dst, int len, F f) {
    mapInLines<Steps, kLanes<T>, kLeast<T>>(
        len, dst, [=](auto w, auto s) { return f(load<T, w.n>(s)); }, src);
}
// x > y ? x : y and x < y ? x : y: y where either is NaN, and of two zeros y.
template <class V> TEVS_INLINE V larger(V x, V y) {
    if constexpr (kFloating<Element<V>>)
        return atLeast(x, y);
    else
        return x > y ? x : y;
}
template <class V> TEVS_INLINE V smaller(V x, V y) {
    if constexpr (kFloating<Element<V>>)
        return atMost(x, y);
    else
        return x < y ? x : y;
}

// Which elements lie beyond the level.
struct Below {
    template <class V> static TEVS_INLINE auto beyond(V x, V level) { return isLess(x, level); }
    template <class V> static TEVS_INLINE V limit(V x, V level) { return larger(x, level); }
};
struct Above {
    template <class V> static TEVS_INLINE auto beyond(V x, V level) { return isLess(level, x); }
    template <class V> static TEVS_INLINE V limit(V x, V level) { return smaller(x, level); }
};

template <class T, class Side> void limited(const T* src, T* dst, int len, T level) {
    eachElement<4>(src, dst, len, [=](auto x) { return Side::limit(x, same<decltype(x)>(level)); });
}
template <class T, class Side> void replaced(const T* src, T* dst, int len, T level, T value) {
    eachElement(src, dst, len, [=](auto x) {
        using V = decltype(x);
        return select(Side::beyond(x, same<V>(level)), same<V>(value), x);
    });
}
template <class T> void clipped(const T* src, T* dst, int len, T levelLT, T valueLT, T levelGT, T valueGT) {
    eachElement(src, dst, len, [=](auto x) {
        using V = decltype(x);
        const V low = select(Below::beyond(x, same<V>(levelLT)), same<V>(valueLT), x);
        return select(Above::beyond(x, same<V>(levelGT)), same<V>(valueGT), low);
    });
}

// Integers of at least a magnitude, with the sign of x, which of 0 is positive. From level 2 on a choice by sign takes three steps: there the size is read without
// a sign, in which that of the type's minimum fits.
template <class V> TEVS_INLINE V atLeastInSize(V x, V level) {
#if TEVS_LEVEL >= 2
    const auto grown = [=](auto size) { return (V)(size > (decltype(size))level ? size : (decltype(size))level); };
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (kCount<V> == 16) return (V)_mm256_sign_epi16((__m256i)grown((Vec<uint16_t, 16>)_mm256_abs_epi16((__m256i)x)), (__m256i)(x | 1));
    if constexpr (kCount<V> == 8 && sizeof(V) == 32)
        return (V)_mm256_sign_epi32((__m256i)grown((Vec<uint32_t, 8>)_mm256_abs_epi32((__m256i)x)), (__m256i)(x | 1));
#endif
    if constexpr (kCount<V> == 8 && sizeof(V) == 16) return (V)_mm_sign_epi16((__m128i)grown((Vec<uint16_t, 8>)_mm_abs_epi16((__m128i)x)), (__m128i)(x | 1));
    if constexpr (kCount<V> == 4) return (V)_mm_sign_epi32((__m128i)grown((Vec<uint32_t, 4>)_mm_abs_epi32((__m128i)x)), (__m128i)(x | 1));
#else
    return x < 0 ? smaller(x, -level) : larger(x, level);
#endif
}
// Of integers -level .. level is what GT leaves. Of floats NaN is above every level.
template <class T, class Side> void limitedMagnitude(const T* src, T* dst, int len, T level) {
    eachElement(src, dst, len, [=](auto x) {
        using V = decltype(x);
        if constexpr (kFloating<T>) {
            const V bound = abs(same<V>(level));
            const V size = __is_same(Side, Below) ? larger(bound, abs(x)) : smaller(abs(x), bound);
            return withSign(size, signOf(x));
        } else {
            if constexpr (__is_same(Side, Below))
                return atLeastInSize(x, same<V>(level));
            else
                return smaller(larger(x, same<V>(T(-level))), same<V>(level));
        }
    });
}

template <class V> TEVS_INLINE auto isInfinite(V v) { return isAtMost(constant<V>(__builtin_inf()), abs(v)); }

// Nothing becomes infinite where 1 / level is not.
template <class T, bool MayOverflow> bool invertedBy(const T* src, T* dst, int len, T level) {
    bool infinite = false;
    map<kLanes<T>, kLeast<T>>(
        len, dst,
        [&](auto w, auto s) {
            const auto x = load<T, w.n>(s);
            using V = decltype(x + x);
            const V y = constant<V>(1) / larger(abs(same<V>(level)), abs(x));
            if constexpr (MayOverflow) infinite |= any(isInfinite(y));
            return withSign(y, signOf(x));
        },
        src);
    return infinite;
}
template <class T> bool inverted(const T* src, T* dst, int len, T level) {
    return __builtin_isinf(1 / level) ? invertedBy<T, true>(src, dst, len, level) : invertedBy<T, false>(src, dst, len, level);
}

// ---- complex integers --------------------------------------------------------------------------------------------------------------------
//
// An element is a lane of 32 bits with re in the lower half. Squared magnitudes go up to 2^31, one past int32_t: their sign bit counts as a digit.

template <class Side, class V> TEVS_INLINE auto beyondSquare(V z, int16_t level) {
    const auto parts = (Vec<int16_t, 2 * kCount<V>>)z;
    return Side::beyond(multiplyPairs(parts, parts) ^ INT32_MIN, same<V>((int32_t{level} * level) ^ INT32_MIN));
}

template <class F> TEVS_INLINE void eachPair16(const Complex16s* src, Complex16s* dst, int len, F f) {
    map<kLanes<int32_t>, kLeast<int32_t>>(
        len, dst, [=](auto w, auto s) { return f(loadAs<Vec<int32_t, w.n>>(s)); }, src);
}
template <class Side> void replaced16sc(const Complex16s* src, Complex16s* dst, int len, int16_t level, Complex16s value) {
    int32_t pair;
    memcpy(&pair, &value, sizeof pair);
    eachPair16(src, dst, len, [=](auto z) { return select(beyondSquare<Side>(z, level), same<decltype(z)>(pair), z); });
}

template <class V> TEVS_INLINE Two<V> operator*(Two<V> a, Two<V> b) { return {a.a * b.a, a.b * b.b}; }

// Of a magnitude of level. The double-precision product is off by less than 2^-36, and no exact one is halfway between integers: re / |z| is irrational, or a
// fraction whose denominator is odd, since the longest side of a primitive Pythagorean triangle is.
template <class V> TEVS_INLINE V withMagnitude(V z, int16_t level) {
    const auto re = widen(z << 16 >> 16), im = widen(z >> 16);
    using D = decltype(re.a + re.a);
    const auto factor = [=](D x, D y) { return constant<D>(level) / squareRoot(x * x + y * y); };
    const Two<D> f = {factor(re.a, im.a), factor(re.b, im.b)};
    const V r = (nearestInt(re * f) & 0xffff) | nearestInt(im * f) << 16;
    return z == 0 ? same<V>(level) : r;
}
template <class Side> void limited16sc(const Complex16s* src, Complex16s* dst, int len, int16_t level) {
    eachPair16(src, dst, len, [=](auto z) {
        const auto beyond = beyondSquare<Side>(z, level);
        return any(beyond) ? select(beyond, withMagnitude(z, level), z) : z;
    });
}

// ---- complex floats ----------------------------------------------------------------------------------------------------------------------
//
// Two registers of interleaved elements as their real and their imaginary parts, in an order that puts no lane into another block of 128 bits, and back.

template <class V> TEVS_INLINE Two<V> partsOfBlocks(V a, V b) {
    constexpr bool wide = sizeof(a[0]) == 8;
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (sizeof(V) == 32 && wide) return {(V)_mm256_unpacklo_pd((__m256d)a, (__m256d)b), (V)_mm256_unpackhi_pd((__m256d)a, (__m256d)b)};
    if constexpr (sizeof(V) == 32 && !wide) return {(V)_mm256_shuffle_ps((__m256)a, (__m256)b, 0x88), (V)_mm256_shuffle_ps((__m256)a, (__m256)b, 0xdd)};
#endif
    if constexpr (sizeof(V) == 16 && wide) return {(V)_mm_unpacklo_pd((__m128d)a, (__m128d)b), (V)_mm_unpackhi_pd((__m128d)a, (__m128d)b)};
    if constexpr (sizeof(V) == 16 && !wide) return {(V)_mm_shuffle_ps((__m128)a, (__m128)b, 0x88), (V)_mm_shuffle_ps((__m128)a, (__m128)b, 0xdd)};
}
template <class V> TEVS_INLINE Two<V> joinedBlocks(V re, V im) {
    constexpr bool wide = sizeof(re[0]) == 8;
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (sizeof(V) == 32 && wide) return {(V)_mm256_unpacklo_pd((__m256d)re, (__m256d)im), (V)_mm256_unpackhi_pd((__m256d)re, (__m256d)im)};
    if constexpr (sizeof(V) == 32 && !wide) return {(V)_mm256_unpacklo_ps((__m256)re, (__m256)im), (V)_mm256_unpackhi_ps((__m256)re, (__m256)im)};
#endif
    if constexpr (sizeof(V) == 16 && wide) return {(V)_mm_unpacklo_pd((__m128d)re, (__m128d)im), (V)_mm_unpackhi_pd((__m128d)re, (__m128d)im)};
    if constexpr (sizeof(V) == 16 && !wide) return {(V)_mm_unpacklo_ps((__m128)re, (__m128)im), (V)_mm_unpackhi_ps((__m128)re, (__m128)im)};
}
template <class V> TEVS_INLINE Two<V> select(Bits<V> mask, Two<V> a, Two<V> b) { return {select(mask, a.a, b.a), select(mask, a.b, b.b)}; }
template <class V> TEVS_INLINE Two<V> times(Two<V> z, V factor) { return {z.a * factor, z.b * factor}; }
template <class V> TEVS_INLINE V square(Two<V> z) { return z.a * z.a + z.b * z.b; }

template <int Steps = 0, class Complex, class F> TEVS_INLINE void eachComplex(const Complex* src, Complex* dst, int len, F f) {
    using T = Scalar<Complex>;
    const auto step = [&](auto w, auto s) {
        const auto z = loadTwo<T, w.n>(partsOf(s));
        const auto r = f(partsOfBlocks(z.a, z.b));
        return joinedBlocks(r.a, r.b);
    };
    if constexpr (Steps > 0)
        mapInLines<Steps, kLanes<T>, kLeast<T>>(len, dst, step, src);
    else
        map<kLanes<T>, kLeast<T>>(len, dst, step, src);
}

// Which elements' magnitudes lie beyond a level.
//
// Double precision squares multiples of the level's unit: a square that overflows or vanishes then belongs to a magnitude far above or below it.
template <class Side, class T> struct Beyond {
    T perUnit, square2;
    TEVS_INLINE explicit Beyond(ScaledLevel<T> l) : perUnit(1 / l.unit), square2(l.mantissa * l.mantissa) {}
    template <class V> TEVS_INLINE Bits<V> operator()(Two<V> z) const { return Side::beyond(square(times(z, same<V>(perUnit))), same<V>(square2)); }
};
// Single precision decides where the rounding of squares cannot matter. Elsewhere they are taken one by one: doubles hold the squares of floats exactly, and the sum
// of two with its rounding error (Dekker). NaN is beyond nothing.
template <class Side> struct Beyond<Side, float> {
    float low, high;   // squares between these are not told apart from the level's
    double exact;
    TEVS_INLINE explicit Beyond(ScaledLevel<float> l) : exact(double(l.level) * double(l.level)) {
        const float square2 = l.level * l.level;
        const bool inRange = l.level >= 0x1p-50f && l.level <= 0x1p63f;   // elsewhere the square, or its rounding, leaves the range
        low = inRange ? square2 - square2 * 0x1p-20f : -__builtin_inff();
        high = inRange ? square2 + square2 * 0x1p-20f : __builtin_inff();
    }
    template <class V> TEVS_INLINE Bits<V> operator()(Two<V> z) const {
        const V s = square(z), least = same<V>(low), most = same<V>(high);
        const auto certain = __is_same(Side, Below) ? isLess(s, least) : isLess(most, s);
        const auto possible = __is_same(Side, Below) ? isAtMost(s, most) : isAtMost(least, s);
        if (any(certain ^ possible)) [[unlikely]] {
            const Two<V> held = z;   // so that z itself stays in registers
            Bits<V> mask;
            oneByOne(&held, kCount<V>, &mask);
            return mask;
        }
        return certain;
    }
    [[gnu::noinline]] void oneByOne(const void* parts, int n, void* mask) const {
        const float* const re = static_cast<const float*>(parts);
        for (int i = 0; i < n; ++i) {
            const double x = double(re[i]) * re[i], y = double(re[n + i]) * re[n + i], s = x + y;
            const double error = x > y ? y - (s - x) : x - (s - y);
            const bool is = __is_same(Side, Below) ? s < exact || (s == exact && error < 0) : s > exact || (s == exact && error > 0);
            static_cast<int32_t*>(mask)[i] = -int32_t(is);
        }
    }
};

template <class Complex, class Side> void replacedComplex(const Complex* src, Complex* dst, int len, ScaledLevel<Scalar<Complex>> level, Complex value) {
    const Beyond<Side, Scalar<Complex>> beyond(level);
    eachComplex<1>(src, dst, len, [&](auto z) {
        using V = decltype(z.a);
        return select(beyond(z), Two<V>{same<V>(value.re), same<V>(value.im)}, z);
    });
}

// Elements times powers of two (factor), which make their squares neither overflow nor lose bits. Infinite parts become 1 with their sign, finite ones beside
// them 0 and the factor 0: the direction of a point that goes to infinity. NaN in either part stays.
template <class V> struct Polar {
    Two<V> z;
    V factor, square2;
    Bits<V> zero;
    TEVS_INLINE explicit Polar(Two<V> x) {
        constexpr bool wide = sizeof(Element<V>) == 8;
        constexpr double kLarge = wide ? 0x1p500 : 0x1p60, kSmall = wide ? 0x1p-450 : 0x1p-40, kFar = wide ? 0x1p700 : 0x1p100;
        const V size = larger(abs(x.a), abs(x.b));
        factor = select(isLess(size, constant<V>(kSmall)), constant<V>(kFar), constant<V>(1));
        factor = select(isLess(constant<V>(kLarge), size), constant<V>(1 / kFar), factor);
        z = times(x, factor);
        zero = isAtMost(abs(x.a), V{}) & isAtMost(abs(x.b), V{});
        if (const auto infinite = isInfinite(size) & isAtMost(x.a, x.a) & isAtMost(x.b, x.b); any(infinite)) [[unlikely]] {
            const auto direction = [](V v) { return withSign((V)((Bits<V>)constant<V>(1) & isInfinite(v)), signOf(v)); };
            z = select(infinite, Two<V>{direction(x.a), direction(x.b)}, z);
            factor = select(infinite, V{}, factor);
        }
        square2 = square(z);
    }
};

// Whether squares s are all so far from the bounds of the range that Polar scales none of their elements.
template <class V> TEVS_INLINE bool isModerate(V s) {
    constexpr bool wide = sizeof(Element<V>) == 8;
    return all(isAtMost(constant<V>(wide ? 0x1p-898 : 0x1p-78), s) & isAtMost(s, constant<V>(wide ? 0x1p998 : 0x1p118)));
}

// What is beyond the level keeps its phase and gets its magnitude; zero has none and counts as positive.
template <class Complex, class Side> void limitedComplex(const Complex* src, Complex* dst, int len, ScaledLevel<Scalar<Complex>> level) {
    const Beyond<Side, Scalar<Complex>> beyond(level);
    eachComplex(src, dst, len, [&](auto z) {
        using V = decltype(z.a);
        const auto mask = beyond(z);
        if (!any(mask)) return z;
        const auto scaled = [&](Two<V> x, V square2) { return times(times(x, same<V>(level.mantissa) / squareRoot(square2)), same<V>(level.unit)); };
        if (const V s = square(z); isModerate(s)) [[likely]]
            return select(mask, scaled(z, s), z);
        const Polar<V> p(z);
        const Two<V> r = scaled(p.z, p.square2);
        return select(mask, select(p.zero, Two<V>{same<V>(level.level), V{}}, r), z);
    });
}

// 1 / z = conj(z) / |z|^2, and of what is below the level conj(z) / (|z| level).
template <class Complex> bool invertedComplex(const Complex* src, Complex* dst, int len, ScaledLevel<Scalar<Complex>> level) {
    using T = Scalar<Complex>;
    const Beyond<Below, T> below(level);
    // Of a moderate level one factor does for both.
    const T perLevel = 1 / level.level, perUnit = 1 / level.unit;
    const bool inTwo = !(perUnit >= T(0x1p-60) && perUnit <= T(0x1p60));
    const T perMantissa = inTwo ? 1 / level.mantissa : 1 / level.mantissa * perUnit;
    bool infinite = false;
    eachComplex(src, dst, len, [&](auto z) {
        using V = decltype(z.a);
        const auto mask = below(z);
        const auto quotient = [&](Two<V> x, V square2, V first) {
            const Two<V> conj = {x.a, flip(x.b, constant<V>(-0.0))};
            if (!any(mask)) return times(times(conj, constant<V>(1) / square2), first);
            const V divisor = select(mask, squareRoot(square2), square2);
            const Two<V> r = times(times(conj, constant<V>(1) / divisor), select(mask, same<V>(perMantissa), first));
            return inTwo ? times(r, select(mask, same<V>(perUnit), constant<V>(1))) : r;
        };
        // No quotient is infinite there.
        if (const V s = square(z); isModerate(s)) [[likely]]
            return quotient(z, s, constant<V>(1));
        const Polar<V> p(z);
        const Two<V> r = select(p.zero, Two<V>{same<V>(perLevel), V{}}, quotient(p.z, p.square2, p.factor));
        infinite |= any(isInfinite(r.a) | isInfinite(r.b));
        return r;
    });
    return infinite;
}

template <class T> constexpr Sides<Limit<T>> limits = {limited<T, Below>, limited<T, Above>};
template <class T> constexpr Sides<Replace<T>> replacements = {replaced<T, Below>, replaced<T, Above>};
template <class T> constexpr Sides<Limit<T>> magnitudes = {limitedMagnitude<T, Below>, limitedMagnitude<T, Above>};
template <class T> constexpr Sides<Limit<T>> complexLimits = {limitedComplex<T, Below>, limitedComplex<T, Above>};
template <class T> constexpr Sides<Replace<T>> complexReplacements = {replacedComplex<T, Below>, replacedComplex<T, Above>};

}   // namespace

extern const ThresholdKernels threshold = {
    .limit16s = limits<int16_t>,
    .limit32s = limits<int32_t>,
    .limit32f = limits<float>,
    .limit64f = limits<double>,
    .limit16sc = {limited16sc<Below>, limited16sc<Above>},
    .limit32fc = complexLimits<Complex32f>,
    .limit64fc = complexLimits<Complex64f>,

    .replace16s = replacements<int16_t>,
    .replace32f = replacements<float>,
    .replace64f = replacements<double>,
    .replace16sc = {replaced16sc<Below>, replaced16sc<Above>},
    .replace32fc = complexReplacements<Complex32f>,
    .replace64fc = complexReplacements<Complex64f>,

    .clip16s = clipped<int16_t>,
    .clip32s = clipped<int32_t>,
    .clip32f = clipped<float>,
    .clip64f = clipped<double>,

    .magnitude16s = magnitudes<int16_t>,
    .magnitude32s = magnitudes<int32_t>,
    .magnitude32f = magnitudes<float>,
    .magnitude64f = magnitudes<double>,

    .invert32f = inverted<float>,
    .invert64f = inverted<double>,
    .invert32fc = invertedComplex<Complex32f>,
    .invert64fc = invertedComplex<Complex64f>,
};

}   // namespace tevs::TEVS_LEVEL_NS
