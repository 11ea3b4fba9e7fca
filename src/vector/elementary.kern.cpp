#include "vector/elementary.table.h"

#include "core/simd/explog.h"
#include "core/simd/lanes.h"
#include "core/simd/map.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

constexpr int kFloats = kLanes<float>, kDoubles = kLanes<double>;

// A kernel with all that it calls, but for what is marked cold: the compiler's own measure stops in the middle of a polynomial.
#define TEVS_WHOLE [[gnu::flatten]]

// f over one vector, or over each of two that belong together.
template <class V, class F> TEVS_INLINE auto each(V v, F f) { return f(v); }
template <class V, class F> TEVS_INLINE auto each(Two<V> v, F f) { return Two<decltype(f(v.a))>{f(v.a), f(v.b)}; }

// ---- elements out of the domain -----------------------------------------------------------------------------------------------

constexpr auto logarithmDomain = [](auto x) { return x < 0 ? WarnLnNegArg : x == 0 ? WarnLnZeroArg : StatusOk; };
constexpr auto squareRootDomain = [](auto x) { return x < 0 ? WarnSqrtNegArg : StatusOk; };

// The warning of the first offending element. Vectors are not visited in order, the last comes first; each is looked at before anything is stored over it.
template <class S> class Warning {
public:
    template <class F> TEVS_INLINE void look(const S* s, int n, F domain) {
        for (int i = 0; i < n && reinterpret_cast<uintptr_t>(s + i) < at_; ++i)
            if (const Status found = domain(s[i])) {
                at_ = reinterpret_cast<uintptr_t>(s + i);
                status_ = found;
            }
    }
    Status status() const { return status_; }

private:
    uintptr_t at_ = UINTPTR_MAX;
    Status status_ = StatusOk;
};

// ---- floating point -----------------------------------------------------------------------------------------------------------------

TEVS_WHOLE void exp32f(const float* src, float* dst, int len) {
    map<2 * kFloats, 8>(
        len, dst, [](auto w, auto s) { return exponential(loadTwo<float, w.n / 2>(s)); }, src);
}
TEVS_WHOLE void exp64f(const double* src, double* dst, int len) {
    map<kDoubles, 2>(
        len, dst, [](auto w, auto s) { return exponential(load<double, w.n>(s)); }, src);
}
TEVS_WHOLE void exp32f64f(const float* src, double* dst, int len) {
    map<kFloats, 4>(
        len, dst, [](auto w, auto s) { return each(widen(load<float, w.n>(s)), [](auto x) { return exponential(x); }); }, src);
}

template <class T> TEVS_WHOLE Status ln(const T* src, T* dst, int len) {
    Warning<T> warning;
    map<kLanes<T>, kLeast<T>>(
        len, dst, [&](auto w, auto s) { return logarithm(load<T, w.n>(s), [&] { warning.look(s, w.n, logarithmDomain); }); }, src);
    return warning.status();
}
TEVS_WHOLE Status ln64f32f(const double* src, float* dst, int len) {
    Warning<double> warning;
    map<kFloats, 4>(
        len, dst,
        [&](auto w, auto s) {
            return narrow(each(loadTwo<double, w.n / 2>(s), [&](auto x) { return logarithm(x, [&] { warning.look(s, w.n, logarithmDomain); }); }));
        },
        src);
    return warning.status();
}

template <class T> Status sqrt(const T* src, T* dst, int len) {
    Warning<T> warning;
    map<kLanes<T>, kLeast<T>>(
        len, dst,
        [&](auto w, auto s) {
            const auto x = load<T, w.n>(s);
            if (any(isLess(x, decltype(x){}))) [[unlikely]]
                warning.look(s, w.n, squareRootDomain);
            return squareRoot(x);
        },
        src);
    return warning.status();
}

TEVS_WHOLE void cubrt32f(const float* src, float* dst, int len) {
    map<kFloats, 4>(
        len, dst, [](auto w, auto s) { return cubeRoot<w.n>(load<float, w.n>(s)); }, src);
}

template <class T> void normalize(const T* src, T* dst, int len, T sub, T by) {
    map<kLanes<T>, kLeast<T>>(
        len, dst, [=](auto w, auto s) { return (load<T, w.n>(s) - splat<w.n>(sub)) * splat<w.n>(by); }, src);
}

// ---- complex floating point -------------------------------------------------------------------------------------------------------

template <class V, int... I> TEVS_INLINE V alternating(Element<V> even, Element<V> odd, Lane<I...>) { return V{(I & 1 ? odd : even)...}; }

template <class T, class Z> void normalizePairs(const Z* src, Z* dst, int len, Z sub, T by) {
    map<kLanes<T>, kLeast<T>>(
        ptrdiff_t{2} * len, &dst->re,
        [=](auto w, auto s) { return (load<T, w.n>(s) - alternating<Vec<T, w.n>>(sub.re, sub.im, Iota<w.n>{})) * splat<w.n>(by); }, &src->re);
}

template <class V> TEVS_INLINE V withSignOf(V v, V sign) { return (V)((Bits<V>)abs(v) | ((Bits<V>)sign & (Bits<V>)constant<V>(-0.0))); }

// The principal root. With t = sqrt((|z| + |re|) / 2) its parts are t and im / 2t, which no cancellation spoils, for re >= 0, and |im / 2t| and t with the sign
// of im for re < 0. t is found at a scale of up^2 where squares neither overflow nor lose what matters.
template <class V> TEVS_INLINE Two<V> scaledRoot(Two<V> z, V up, V back) {
    const V re = z.a * up, im = z.b * up;
    const V t = back * squareRoot((squareRoot(re * re + im * im) + abs(re)) * constant<V>(0.5));
    const V other = z.b / atLeast(constant<V>(0x1p-1000), t + t);   // where t is 0, im is too
    const auto left = isLess(z.a, V{});
    return {select(left, abs(other), t), select(left, withSignOf(t, z.b), other)};
}
// The same with each step's error carried along, for results that are rounded no more.
template <class V> TEVS_INLINE V productError(V a, V b, V product) {   // Dekker
    const V ah = upperHalf(a), bh = upperHalf(b), al = a - ah, bl = b - bh;
    return (((ah * bh - product) + ah * bl) + al * bh) + al * bl;
}
template <class V> TEVS_INLINE Two<V> rootOfTwo(V high, V low) {
    const V root = squareRoot(high), square = root * root;
    const V rest = ((high - square) - productError(root, root, square)) + low;
    return {root, rest / atLeast(constant<V>(0x1p-1000), root + root)};
}
template <class V> TEVS_INLINE Two<V> preciseRoot(Two<V> z, V up, V back) {
    const V re = abs(z.a * up), im = abs(z.b * up);
    const V p = re * re, q = im * im, square = p + q;
    const Two<V> m = rootOfTwo(square, ((atLeast(p, q) - square) + atMost(p, q)) + (productError(re, re, p) + productError(im, im, q)));
    const V sum = m.a + re, half = constant<V>(0.5);
    const Two<V> t = rootOfTwo(sum * half, (((m.a - sum) + re) + m.b) * half);
    // The other part may be far smaller: it is divided at a scale of its own, where its remainder does not underflow.
    const V size = abs(z.b);
    const auto tiny = isLess(size, constant<V>(0x1p-300)), huge = isLess(constant<V>(0x1p500), size);
    const V lift = select(tiny, constant<V>(0x1p500), select(huge, constant<V>(0x1p-600), constant<V>(1)));
    const V drop = select(tiny, constant<V>(0x1p-500), select(huge, constant<V>(0x1p600), constant<V>(1)));
    const V dividend = size * lift, divisor = atLeast(constant<V>(0x1p-1000), t.a + t.a), w = dividend / divisor, product = w * divisor;
    const V rest = ((dividend - product) - productError(w, divisor, product)) - w * (t.b + t.b);
    const V root = (t.a + t.b) * back, other = (w + rest / divisor) * (drop / back);
    const auto left = isLess(z.a, V{});
    const V sign = signOf(z.b);
    return {select(left, other, root), withSign(select(left, root, other), sign)};
}
template <class V> TEVS_INLINE Two<V> moderateRoot(Two<V> z) { return scaledRoot(z, constant<V>(1), constant<V>(1)); }

// For parts of any size, with the root of moderate ones given; infinities and NaN as in C's csqrt.
template <class V, class F> TEVS_INLINE Two<V> principalRoot(Two<V> z, F scaledRoot) {
    const V size = atLeast(abs(z.a), abs(z.b));
    if (allBetween(constant<V>(0x1p-480), size, constant<V>(0x1p500))) [[likely]]
        return scaledRoot(z, constant<V>(1), constant<V>(1));
    const auto small = isLess(size, constant<V>(0x1p-480)), large = isLess(constant<V>(0x1p500), size);
    const V up = small ? constant<V>(0x1p600) : large ? constant<V>(0x1p-600) : constant<V>(1);
    const V back = small ? constant<V>(0x1p-300) : large ? constant<V>(0x1p300) : constant<V>(1);
    Two<V> root = scaledRoot(z, up, back);
    const V infinity = constant<V>(__builtin_inf());
    const auto right = z.a == infinity, left = z.a == -infinity, upright = abs(z.b) == infinity;
    const V flat = z.b == z.b ? V{} : z.b;
    root.a = right | upright ? infinity : left ? flat : root.a;
    root.b = upright ? z.b : right ? withSignOf(flat, z.b) : left ? withSignOf(infinity, z.b) : root.b;
    return root;
}

TEVS_WHOLE void sqrt32fc(const Complex32f* src, Complex32f* dst, int len) {
    map<kFloats, 4>(
        len, dst,
        [](auto w, auto s) {
            const auto z = loadSplit<float, w.n>(&s->re);
            const auto re = widen(z.a), im = widen(z.b);
            constexpr auto half = [](auto h) { return principalRoot(h, [](auto... a) { return scaledRoot(a...); }); };
            const auto a = half(decltype(re){re.a, im.a}), b = half(decltype(re){re.b, im.b});
            return interleave(narrow(decltype(re){a.a, b.a}), narrow(decltype(re){a.b, b.b}));
        },
        src);
}
TEVS_WHOLE void sqrt64fc(const Complex64f* src, Complex64f* dst, int len) {
    map<kDoubles, 2>(
        len, dst,
        [](auto w, auto s) {
            const auto root = principalRoot(loadSplit<double, w.n>(&s->re), [](auto... a) { return preciseRoot(a...); });
            return interleave(root.a, root.b);
        },
        src);
}

// ---- integers, by way of floating-point lanes ------------------------------------------------------------------------------------

// Lanes of R, exactly.
template <class R, class V> TEVS_INLINE auto real(V ints) {
    if constexpr (sizeof(R) == 4)
        return __builtin_convertvector(ints, Vec<float, kCount<V>>);
    else
        return widen(ints);
}

// Real lanes times factor as integers of D's range, rounded.
template <class D, class R> TEVS_INLINE auto toInts(R v, double factor) {
    return nearestInt(each(v, [=](auto x) { return clamped<D>(x * constant<decltype(x)>(factor)); }));
}
// Lanes within D's range, as D.
template <class D, class V> TEVS_INLINE auto narrowTo(V ints) {
#if TEVS_LEVEL == 0
    // Without what packed() does for numbers far below the range.
    if constexpr (__is_same(D, uint16_t)) return LowBytes<8>{_mm_xor_si128(packed<int16_t>(Some<V, 1>{ints - 32768}).v, _mm_set1_epi16(-32768))};
#endif
    return packed<D>(Some<V, 1>{ints});
}

// Roots in R. A root that is not a tie is off the next tie by 2^-19 of itself or more where a 16-bit number's root is stored as it is or smaller,
// and by 2^-35 or more where a 32-bit number's is stored in 16 bits: (k + 1/2)^2 and the argument, scaled, are multiples of 1/4. A tie is the root of a square, and exact.
template <class R, class S, class D> TEVS_INLINE Status sqrtIn(const S* src, D* dst, int len, double factor) {
    Warning<S> warning;
    map<kFloats, 4>(
        len, dst,
        [&](auto w, auto s) {
            auto v = loadInts<int32_t, 4 * w.n>(s);
            const auto negative = v < 0;
            if (any(negative)) [[unlikely]]
                warning.look(s, w.n, squareRootDomain);
            return narrowTo<D>(toInts<D>(each(real<R>(v & ~negative), [](auto x) { return squareRoot(x); }), factor));
        },
        src);
    return warning.status();
}
template <class S, class D> TEVS_WHOLE Status sqrtInts(const S* src, D* dst, int len, double factor) {
    if (sizeof(S) <= 2 && factor <= 1) return sqrtIn<float>(src, dst, len, factor);
    return sqrtIn<double>(src, dst, len, factor);
}

// The float root, cut to 14 bits, is exact where the argument is a cube. Its cube is then rounded by 2^-53 of itself, and what is missing follows
// from the series of (1 + u)^(1/3), u < 2^-13, to 2^-52: a root that is no tie is off the next tie by 2^-49.6 or more.
TEVS_WHOLE Status cubrt32s16s(const int32_t* src, int16_t* dst, int len, double factor) {
    map<kFloats, 4>(
        len, dst,
        [=](auto w, auto s) {
            using V = Vec<float, w.n>;
            const auto v = load<int32_t, w.n>(s);
            const V single = cubeRoot<w.n>(__builtin_convertvector(v, V));
            const auto x = widen(v), t = widen((V)(((Integers<V>)single + 0x200) & ~0x3ffu));
            const auto root = [](auto x, auto t) {
                using W = decltype(x);
                const W cube = t * t * t, u = (x - cube) / (cube + constant<W>(0x1p-1000));
                return t + t * (u * polynomial(u, 1.0 / 3, -1.0 / 9, 5.0 / 81));
            };
            return narrowTo<int16_t>(toInts<int16_t>(decltype(x){root(x.a, t.a), root(x.b, t.b)}, factor));
        },
        src);
    return StatusOk;
}

// Of f(x), off by at most 2 units in the last place: at 2^31 that is 2^-20. Lanes that are nearer to a tie than 2^-18 are computed again.
template <class S, class D, class F> TEVS_INLINE void careful(const S* src, D* dst, int len, double factor, ExactElement* exact, F f) {
    map<kFloats, 4>(
        len, dst,
        [&](auto w, auto s) {
            const auto y = each(f(real<double>(loadInts<int32_t, 4 * w.n>(s)), s, w.n), [=](auto v) { return clamped<D>(v * constant<decltype(v)>(factor)); });
            auto ints = nearestInt(y);
            const auto doubtful = each(y, [](auto v) {
                using V = decltype(v);
                const V whole = constant<V>(kWhole<V>);
                return isLess(constant<V>(0.5 - 0x1p-18), abs(v - ((v + whole) - whole)));
            });
            if (any(doubtful)) [[unlikely]] {
                constexpr int half = w.n / 2;
                for (int i = 0; i < w.n; ++i)
                    if (i < half ? doubtful.a[i] : doubtful.b[i - half]) ints[i] = exact(double(s[i]), factor);
            }
            return narrowTo<D>(ints);
        },
        src);
}

template <class T> TEVS_WHOLE Status expInts(const T* src, T* dst, int len, double factor, ExactElement* exact) {
    careful(src, dst, len, factor, exact, [](auto x, const T*, int) { return each(x, [](auto v) { return exponential(v); }); });
    return StatusOk;
}

// times * ln x, and the least number of D for zeros and negative numbers.
template <class S, class D> TEVS_INLINE Status lnInts(const S* src, D* dst, int len, double factor, ExactElement* exact, double times) {
    Warning<S> warning;
    careful(src, dst, len, factor, exact, [&](auto x, const S* s, int n) {
        return each(x, [&](auto v) {
            using V = decltype(v);
            const V y = logarithm(v, [&] { warning.look(s, n, logarithmDomain); });
            return select(isLess(v, V{}), constant<V>(-__builtin_inf()), y * constant<V>(times));
        });
    });
    return warning.status();
}
template <class S, class D> TEVS_WHOLE Status lnScaled(const S* src, D* dst, int len, double factor, ExactElement* exact) {
    return lnInts(src, dst, len, factor, exact, 1);
}
TEVS_WHOLE Status decibel32s(const int32_t* src, int32_t* dst, int len, double factor, ExactElement* exact) {
    return lnInts(src, dst, len, factor, exact, 0x1.15f2ced384f29p+2);   // 10 / ln 10
}

TEVS_WHOLE void normalize16s(const int16_t* src, int16_t* dst, int len, int16_t sub, double by) {
    map<kFloats, 4>(
        len, dst, [=](auto w, auto s) { return narrowTo<int16_t>(toInts<int16_t>(real<double>(loadInts<int32_t, 4 * w.n>(s) - int32_t{sub}), by)); }, src);
}

// N complex numbers of 16 bits, one in each lane of 32: the real parts, the imaginary parts.
template <class F> TEVS_INLINE void mapPairs16(const Complex16s* src, Complex16s* dst, int len, double factor, F f) {
    map<kFloats, 4>(
        len, dst,
        [=](auto w, auto s) {
            const auto pairs = loadAs<Vec<int32_t, w.n>>(s);
            const auto [re, im] = f(pairs << 16 >> 16, pairs >> 16);
            return (toInts<int16_t>(re, factor) & 0xffff) | toInts<int16_t>(im, factor) << 16;
        },
        src);
}

TEVS_WHOLE Status sqrt16sc(const Complex16s* src, Complex16s* dst, int len, double factor) {
    mapPairs16(src, dst, len, factor, [](auto reInts, auto imInts) {
        const auto re = real<double>(reInts), im = real<double>(imInts);
        using W = decltype(real<double>(reInts));
        const W a = moderateRoot(W{re.a, im.a}), b = moderateRoot(W{re.b, im.b});
        return Two<W>{{a.a, b.a}, {a.b, b.b}};
    });
    return StatusOk;
}
TEVS_WHOLE void normalize16sc(const Complex16s* src, Complex16s* dst, int len, Complex16s sub, double by) {
    mapPairs16(src, dst, len, by, [=](auto re, auto im) {
        return Two<decltype(real<double>(re))>{real<double>(re - int32_t{sub.re}), real<double>(im - int32_t{sub.im})};
    });
}

}   // namespace

extern const ElementaryKernels elementary = {
    .exp32f = exp32f,
    .exp64f = exp64f,
    .exp32f64f = exp32f64f,
    .exp16s = expInts<int16_t>,
    .exp32s = expInts<int32_t>,
    .ln32f = ln<float>,
    .ln64f = ln<double>,
    .ln64f32f = ln64f32f,
    .ln16s = lnScaled<int16_t, int16_t>,
    .ln32s = lnScaled<int32_t, int32_t>,
    .ln32s16s = lnScaled<int32_t, int16_t>,
    .decibel32s = decibel32s,
    .sqrt32f = sqrt<float>,
    .sqrt64f = sqrt<double>,
    .sqrt32fc = sqrt32fc,
    .sqrt64fc = sqrt64fc,
    .sqrt8u = sqrtInts<uint8_t, uint8_t>,
    .sqrt16u = sqrtInts<uint16_t, uint16_t>,
    .sqrt16s = sqrtInts<int16_t, int16_t>,
    .sqrt32s16s = sqrtInts<int32_t, int16_t>,
    .sqrt16sc = sqrt16sc,
    .cubrt32f = cubrt32f,
    .cubrt32s16s = cubrt32s16s,
    .normalize32f = normalize<float>,
    .normalize64f = normalize<double>,
    .normalize32fc = normalizePairs<float, Complex32f>,
    .normalize64fc = normalizePairs<double, Complex64f>,
    .normalize16s = normalize16s,
    .normalize16sc = normalize16sc,
};

}   // namespace tevs::TEVS_LEVEL_NS
