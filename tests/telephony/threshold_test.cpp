#include <algorithm>
#include <cmath>

#include "support/elements.h"

using namespace test;

namespace {

// Elements on both sides of a level, on it, and next to it; floats of every kind too.
template <class T> std::vector<T> around(T level, size_t n = kMany) {
    std::vector<T> v = randomVector<T>(n);
    if constexpr (std::is_floating_point_v<T>) {
        const std::vector<T> wild = wildFloats<T>(n);
        for (size_t i = 0; i < n; ++i) v[i] = i % 2 ? wild[i] : v[i] * 2 * (std::isfinite(level) && level != 0 ? level : T(1));
    }
    for (T& x : v) {
        const uint64_t r = generator()();
        if (r % 4) continue;
        x = !(r & 16) ? level : std::is_integral_v<T> ? T(-int64_t(level)) : T(-level);
        if (r & 32) x = std::is_integral_v<T> ? T(int64_t(x) + 1) : T(std::nextafter(x, T(INFINITY)));
    }
    return v;
}

// ---- real elements -------------------------------------------------------------------------------------------------------------------------

template <class T> std::vector<T> levels() {
    if constexpr (std::is_integral_v<T>)
        return {0, 1, 777, -777, std::numeric_limits<T>::max(), std::numeric_limits<T>::min()};
    else
        return {T(0), T(0.5), T(-0.25), T(-0.0), std::numeric_limits<T>::denorm_min(), std::numeric_limits<T>::max(), T(INFINITY), T(NAN)};
}

template <class T> T sized(T size, T x) {
    if constexpr (std::is_floating_point_v<T>)
        return std::copysign(size, x);
    else
        return T(x < 0 ? -size : size);
}

template <class T> using Limit = Status (*)(const T*, T*, int, T);
template <class T> using Clip = Status (*)(const T*, T*, int, T, T, T, T);

template <class T> void limits(Limit<T> below, Limit<T> above, Clip<T> clip, Limit<T> smallest, Limit<T> largest) {
    for (const T level : levels<T>()) {
        const auto x = around(level);
        EXPECT_TRUE(agrees<T>(with(below, level), of(x), [=](T x) { return x > level ? x : level; })) << +level;
        EXPECT_TRUE(agrees<T>(with(above, level), of(x), [=](T x) { return x < level ? x : level; })) << +level;
        for (const T upper : levels<T>()) {
            const T low = 7, high = T(-8);
            if (!(upper >= level)) continue;
            EXPECT_TRUE(agrees<T>(with(clip, level, low, upper, high), of(x), [=](T x) { return x > upper ? high : x < level ? low : x; })) << +level;
        }
        const auto size = [](T x) { return std::abs((long double)x); };
        if (level >= 0) {
            EXPECT_TRUE(agrees<T>(with(smallest, level), of(x), [=](T x) { return size(x) < level ? sized(level, x) : x; })) << +level;
            EXPECT_TRUE(agrees<T>(with(largest, level), of(x), [=](T x) { return size(x) <= level ? x : sized(level, x); })) << +level;
        }
        T kept = 42;
        EXPECT_EQ(smallest(x.data(), &kept, 1, level), level >= 0 ? StatusOk : StatusThresholdErr);
        EXPECT_EQ(largest(x.data(), &kept, 0, level), StatusBadSize);
        kept = 42;
        EXPECT_EQ(largest(x.data(), level >= 0 ? nullptr : &kept, 1, level), level >= 0 ? StatusNullPtr : StatusThresholdErr);
        EXPECT_EQ(clip(x.data(), level >= 1 ? nullptr : &kept, 1, 1, 2, level, 3), level >= 1 ? StatusNullPtr : StatusThresholdErr);
        EXPECT_EQ(clip(x.data(), &kept, 0, 1, 2, 0, 3), StatusBadSize);
        EXPECT_EQ(kept, 42);
    }
}
TEST(Threshold, Limits) {
#define X(type) \
    limits(tevsThreshold_LT_##type, tevsThreshold_GT_##type, tevsThreshold_LTValGTVal_##type, tevsThreshold_LTAbs_##type, tevsThreshold_GTAbs_##type);
    X(16s) X(32s) X(32f) X(64f)
#undef X
}

template <class T> using Replace = Status (*)(const T*, T*, int, T, T);
template <class T> void values(Status (*byCode)(const T*, T*, int, T, int), Replace<T> below, Replace<T> above) {
    for (const T level : levels<T>()) {
        const auto x = around(level);
        for (const int relOp : {-1, int(CmpLess), int(CmpLessOrEqual), int(CmpEqual), int(CmpGreaterOrEqual), 5})
            EXPECT_TRUE(agrees<T>(with(byCode, level, relOp), of(x), [=](T x) { return x > level ? x : level; })) << relOp;
        EXPECT_TRUE(agrees<T>(with(byCode, level, CmpGreater), of(x), [=](T x) { return x < level ? x : level; }));
        EXPECT_TRUE(agrees<T>(with(below, level, 99), of(x), [=](T x) { return x < level ? T(99) : x; })) << +level;
        EXPECT_TRUE(agrees<T>(with(above, level, T(-99)), of(x), [=](T x) { return x > level ? T(-99) : x; })) << +level;
    }
}
TEST(Threshold, Values) {
#define X(type) values(tevsThreshold_##type, tevsThreshold_LTVal_##type, tevsThreshold_GTVal_##type);
    X(16s) X(32f) X(64f)
#undef X
}

// As many elements as fill some lines of the cache, from every place within one, and in place. Each value lies beyond the other level: none may be looked at twice.
template <class T> void lines(Clip<T> clip) {
    const auto x = around<T>(5, 700);
    std::vector<T> want(x.size());
    for (size_t i = 0; i < x.size(); ++i) want[i] = x[i] > 5 ? T(-9) : x[i] < -3 ? T(9) : x[i];
    for (int offset = 0; offset < int(64 / sizeof(T)); ++offset)
        for (const int len : {int(512 / sizeof(T)) - 1, int(512 / sizeof(T)), int(520 / sizeof(T)) + 1, 331, 600}) {
            std::vector<T> got = x, expected = x;
            std::copy_n(want.begin() + offset, len, expected.begin() + offset);
            ASSERT_EQ(clip(got.data() + offset, got.data() + offset, len, -3, 9, 5, -9), StatusOk);
            ASSERT_TRUE(sameNumbers(expected, got)) << "in place, " << len << " from " << offset;
            got = x;
            clip(x.data() + 3, got.data() + offset, len, -3, 9, 5, -9);
            std::copy_n(want.begin() + 3, len, expected.begin() + offset);
            ASSERT_TRUE(sameNumbers(expected, got)) << len << " to " << offset;
        }
}
TEST(Threshold, Lines) {
    lines(tevsThreshold_LTValGTVal_16s), lines(tevsThreshold_LTValGTVal_32s), lines(tevsThreshold_LTValGTVal_32f), lines(tevsThreshold_LTValGTVal_64f);
}

// ---- complex elements ----------------------------------------------------------------------------------------------------------------------

template <class Z> using Part = decltype(Z::re);

// On which side of the level, by the squares, which extended precision holds of 16-bit parts and of floats: what the larger one leaves of the level's, and the smaller.
template <class Z> int side(Z z, long double level) {
    const long double re = std::fabs((long double)z.re), im = std::fabs((long double)z.im), x = std::max(re, im), y = std::min(re, im);
    if (std::isnan((long double)z.re) || std::isnan((long double)z.im)) return 0;
    const long double left = level * level - x * x;
    return y * y < left ? -1 : y * y > left;
}

// Magnitudes that are exactly the level, too: its sides are 3 and 4 fifths of it; and zeros.
template <class Z> std::vector<Z> plane(Part<Z> level) {
    using T = Part<Z>;
    const std::vector<T> parts = around(level, 2 * kMany);
    std::vector<Z> v(kMany);
    for (size_t i = 0; i < kMany; ++i) {
        v[i] = {parts[2 * i], parts[2 * i + 1]};
        if (i % 5 == 2) v[i] = {T(level / 5 * 3), T(level / 5 * -4)};
        if (i % 11 == 3) v[i] = {0, T(-0.0)};
    }
    // Of doubles only those remain that double precision can tell from the level.
    std::erase_if(v, [=](Z z) {
        const long double re = z.re, im = z.im, off = (re * re + im * im) / level / level - 1;
        return std::is_same_v<T, double> && side(z, level) != 0 && std::fabs(off) < 0x1p-50;
    });
    return v;
}

struct Want {
    long double re, im;
};

// A part of a result, within 3 units of the last place of the larger part; signs of zero and infinities are exact.
template <class T> bool fits(long double want, T got, Want whole) {
    using Limits = std::numeric_limits<T>;
    if constexpr (std::is_integral_v<T>) return got == std::nearbyint(want);
    if (std::isnan(want)) return std::isnan((long double)got);
    if (want == 0 || std::isinf(T(want))) return got == T(want) && std::signbit((long double)got) == std::signbit(want);
    const long double larger = std::min<long double>(std::max(std::fabs(whole.re), std::fabs(whole.im)), Limits::max());
    return std::fabs(got - want) <= std::ldexp(3.0L, std::max(std::ilogb(larger), Limits::min_exponent - 1) - Limits::digits + 1);
}
template <class Z, class Call, class F> void agreesNearly(Status status, Call call, F want, const std::vector<Z>& z) {
    std::vector<Z> got(z.size());
    ASSERT_EQ(call(z.data(), got.data(), int(z.size())), status);
    for (size_t i = 0; i < z.size(); ++i) {
        const Want w = want(z[i]);
        ASSERT_TRUE(fits(w.re, got[i].re, w) && fits(w.im, got[i].im, w))
            << +z[i].re << ", " << +z[i].im << ": want " << w.re << ", " << w.im << ", got " << +got[i].re << ", " << +got[i].im;
    }
}

// An infinite point's direction is that of its infinite parts.
template <class Z> Want direction(Z z) {
    if (std::isnan((long double)z.re) || std::isnan((long double)z.im)) return {NAN, NAN};
    const auto infinite = [](auto x) { return std::isinf((long double)x); };
    if (!infinite(z.re) && !infinite(z.im)) return {(long double)z.re, (long double)z.im};
    return {std::copysign((long double)infinite(z.re), (long double)z.re), std::copysign((long double)infinite(z.im), (long double)z.im)};
}
template <class Z> Want limited(Z z, long double level, int beyond) {
    if (side(z, level) != beyond) return {(long double)z.re, (long double)z.im};
    const Want d = direction(z);
    const long double m = std::hypot(d.re, d.im);
    return m == 0 ? Want{level, 0} : Want{d.re * (level / m), d.im * (level / m)};
}

template <class Z> using LimitOf = Status (*)(const Z*, Z*, int, Part<Z>);
template <class Z> using ReplaceOf = Status (*)(const Z*, Z*, int, Part<Z>, Z);

template <class Z>
void complexForms(Status (*byCode)(const Z*, Z*, int, Part<Z>, int), LimitOf<Z> below, LimitOf<Z> above, ReplaceOf<Z> belowValue, ReplaceOf<Z> aboveValue,
                  std::vector<Part<Z>> levels) {
    using T = Part<Z>;
    for (const T level : levels) {
        const auto z = plane<Z>(level);
        const auto isLimited = [&](int beyond) { return [=](Z x) { return limited(x, level, beyond); }; };
        agreesNearly(StatusOk, with(below, level), isLimited(-1), z);
        agreesNearly(StatusOk, with(above, level), isLimited(1), z);
        agreesNearly(StatusOk, with(byCode, level, CmpGreaterOrEqual), isLimited(-1), z);
        agreesNearly(StatusOk, with(byCode, level, CmpGreater), isLimited(1), z);
        EXPECT_TRUE(agrees<Z>(with(belowValue, level, Z{1, 2}), of(z), [=](Z x) { return side(x, level) < 0 ? Z{1, 2} : x; })) << +level;
        EXPECT_TRUE(agrees<Z>(with(aboveValue, level, Z{-3, 4}), of(z), [=](Z x) { return side(x, level) > 0 ? Z{-3, 4} : x; })) << +level;
    }
    std::vector<T> bad = {T(-1), std::numeric_limits<T>::lowest()};
    if (std::is_floating_point_v<T>) bad.push_back(T(NAN));
    const Z x{1, 1};
    Z kept{42, 43};
    for (const T level : bad) {
        for (const int relOp : {CmpLess, CmpGreater}) EXPECT_EQ(byCode(&x, &kept, 1, level, relOp), StatusThresholdNegLevel);
        for (const auto f : {below, above}) EXPECT_EQ(f(&x, &kept, 1, level), StatusThresholdNegLevel);
        for (const auto f : {belowValue, aboveValue}) EXPECT_EQ(f(&x, &kept, 1, level, Z{}), StatusThresholdNegLevel);
        EXPECT_EQ(below(&x, &kept, 0, level), StatusBadSize);
    }
    EXPECT_TRUE(kept.re == 42 && kept.im == 43);
    // Level 0: everything as it is, or zeros, of NaN too; by value the rule holds as it stands.
    std::vector<Z> v = plane<Z>(T(1)), dst(v.size());
    EXPECT_EQ(below(v.data(), dst.data(), int(v.size()), 0), StatusOk);
    EXPECT_TRUE(same(v, dst));
    EXPECT_EQ(below(dst.data(), dst.data(), int(v.size()), 0), StatusOk);
    EXPECT_TRUE(same(v, dst));
    EXPECT_EQ(above(v.data(), dst.data(), int(v.size()), T(-0.0)), StatusOk);
    EXPECT_TRUE(same(std::vector<Z>(v.size()), dst));
    EXPECT_TRUE(agrees<Z>(with(aboveValue, 0, Z{5, 6}), of(v), [](Z x) { return side(x, 0) > 0 ? Z{5, 6} : x; }));
    EXPECT_TRUE(agrees<Z>(with(belowValue, 0, Z{5, 6}), of(v), [](Z x) { return x; }));
}
TEST(Threshold, Complex) {
#define X(type, ...)                                                                                                                            \
    complexForms<Complex##type>(tevsThreshold_##type##c, tevsThreshold_LT_##type##c, tevsThreshold_GT_##type##c, tevsThreshold_LTVal_##type##c, \
                                tevsThreshold_GTVal_##type##c, {__VA_ARGS__});
    X(16s, 1, 5, 777, 12345, 32767)
    X(32f, 0.5f, 5.0f, 0x1p-149f, 0x1.4p-60f, 0x1.4p-48f, 0x1.4p70f, 3e38f)
    X(64f, 0.625, 5.0, 0x1p-1074, 0x1.4p-600, 0x1.4p-48, 0x1.4p700, 0x1.4p1023)
#undef X
}

// A magnitude a hair off the level, where single precision cannot tell.
TEST(Threshold, SquaresOfFloatsAreExact) {
    std::vector<Complex32f> z(24, Complex32f{1.0f, 0x1p-13f}), dst(24);
    z[3] = {1.0f, 0.0f};
    z[7] = {1 - 0x1p-24f, 0x1p-13f};
    tevsThreshold_GTVal_32fc(z.data(), dst.data(), 24, 1.0f, Complex32f{5, 5});
    for (size_t n = 0; n < 24; ++n) EXPECT_EQ(dst[n].re, n == 3 ? 1.0f : n == 7 ? 1 - 0x1p-24f : 5.0f) << n;
    tevsThreshold_LTVal_32fc(z.data(), dst.data(), 24, 1.0f, Complex32f{5, 5});
    for (size_t n = 0; n < 24; ++n) EXPECT_EQ(dst[n].re, n == 7 ? 5.0f : 1.0f) << n;
}

// ---- reciprocals ----------------------------------------------------------------------------------------------------------------------------

template <class T> void inverses(Limit<T> f) {
    const auto want = [](T x, T level) { return std::isnan(x) ? x : std::copysign(T(1) / std::max(std::abs(x), level), x); };
    for (const T level : {T(0), T(0.5), T(5), std::numeric_limits<T>::denorm_min(), std::numeric_limits<T>::max()}) {
        const auto x = around(level);
        const bool infinite = std::ranges::any_of(x, [=](T v) { return std::isinf(want(v, level)); });
        EXPECT_TRUE(agrees<T>(
            with(f, level), of(x), [=](T v) { return want(v, level); }, infinite ? WarnInvZero : StatusOk))
            << level;
    }
}
template <class Z> void complexInverses(LimitOf<Z> f) {
    using T = Part<Z>;
    for (const T level : {T(0), T(0.5), T(5), std::numeric_limits<T>::denorm_min(), std::numeric_limits<T>::max()}) {
        const auto want = [=](Z z) {
            const Want d = direction(z);
            const long double m = std::hypot(d.re, d.im), infinity = INFINITY;
            if (m == 0) return Want{1 / (long double)level, 0};
            if (std::isinf((long double)z.re) || std::isinf((long double)z.im)) return Want{d.re / infinity, -d.im / infinity};
            const long double divisor = side(z, level) < 0 ? m * level : m * m;
            return Want{d.re / divisor, -d.im / divisor};
        };
        const auto z = plane<Z>(level);
        const bool infinite = std::ranges::any_of(z, [=](Z x) { return std::isinf(T(want(x).re)) || std::isinf(T(want(x).im)); });
        agreesNearly(infinite ? WarnInvZero : StatusOk, with(f, level), want, z);
    }
}

// The warning comes with an infinite result, wherever it stands, and with nothing else. Everything is written all the same.
template <class Z, class T> void warns(Status (*f)(const Z*, Z*, int, T), bool keepsSign) {
    const auto real = [](T x) {
        Z z{};
        std::memcpy(&z, &x, sizeof x);
        return z;
    };
    for (size_t at = 0; at < 19; ++at)
        for (const T x : {T(0), T(-0.0), std::numeric_limits<T>::denorm_min(), T(INFINITY), T(NAN), T(2)})
            for (const T level : {T(0), T(0.25), std::numeric_limits<T>::denorm_min()}) {
                std::vector<Z> v(19, real(4)), dst(19);
                v[at] = real(x);
                EXPECT_EQ(f(v.data(), dst.data(), 19, level), std::abs(x) < 1 && level < T(0.25) ? WarnInvZero : StatusOk) << x << " " << level;
                T got, other;
                std::memcpy(&got, &dst[at], sizeof got);
                std::memcpy(&other, &dst[at ? 0 : 1], sizeof other);
                EXPECT_EQ(other, T(0.25));
                if (x == 0) {
                    EXPECT_EQ(std::abs(got), 1 / level);
                    EXPECT_EQ(std::signbit(got), keepsSign && std::signbit(x));
                }
            }
    const Z x = real(3);
    Z kept = x;
    for (const T level : {T(-0.5), T(NAN)}) {
        EXPECT_EQ(f(&x, &kept, 1, level), StatusThresholdNegLevel);
        EXPECT_EQ(f(&x, &kept, 0, level), StatusBadSize);
    }
    EXPECT_EQ(std::memcmp(&x, &kept, sizeof x), 0);
}
TEST(Threshold, Inverses) {
    inverses(tevsThreshold_LTInv_32f), inverses(tevsThreshold_LTInv_64f);
    complexInverses<Complex32f>(tevsThreshold_LTInv_32fc), complexInverses<Complex64f>(tevsThreshold_LTInv_64fc);
    warns(tevsThreshold_LTInv_32f, true), warns(tevsThreshold_LTInv_64f, true);
    warns(tevsThreshold_LTInv_32fc, false), warns(tevsThreshold_LTInv_64fc, false);
}

// ---- the same to the bit at every level and in both ABIs -----------------------------------------------------------------------------------------

template <class Z> uint64_t hashOfForms(std::initializer_list<LimitOf<Z>> forms) {
    generator().seed(7);
    const auto z = plane<Z>(3000);
    uint64_t h = 14695981039346656037u;
    for (const auto f : forms) {
        std::vector<Z> dst(z.size());
        f(z.data(), dst.data(), int(z.size()), 3000);
        for (Z& x : dst) canonical(x);
        h = hashOf(dst.data(), dst.size() * sizeof(Z), h);
    }
    return h;
}
TEST(Threshold, SameEverywhere) {
    EXPECT_EQ(hashOfForms<Complex16s>({tevsThreshold_LT_16sc, tevsThreshold_GT_16sc}), 0x2b52e400fe4932d8);
    EXPECT_EQ(hashOfForms<Complex32f>({tevsThreshold_LT_32fc, tevsThreshold_GT_32fc, tevsThreshold_LTInv_32fc}), 0xbe26998d60449469);
    EXPECT_EQ(hashOfForms<Complex64f>({tevsThreshold_LT_64fc, tevsThreshold_GT_64fc, tevsThreshold_LTInv_64fc}), 0xc053fca23970972f);
}

}   // namespace
