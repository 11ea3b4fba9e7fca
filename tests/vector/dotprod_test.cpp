#include <climits>
#include <cmath>

#include "support/exact.h"
#include "support/reduction.h"

using namespace test;

namespace {

constexpr int kScales[] = {INT_MIN, -70, -16, -15, -3, 0, 1, 2, 3, 15, 29, 30, 31, 32, 33, 34, 35, 36, 40, 61, 62, 63, 64, 90, INT_MAX};

// A real number as a complex one.
template <class T> Complex64s wide(T x) {
    if constexpr (std::is_integral_v<T>)
        return {x, 0};
    else
        return {x.re, x.im};
}
struct ExactParts {
    ExactSum re, im;
};
template <class A, class B> ExactParts exactDot(const std::vector<A>& a, const std::vector<B>& b) {
    ExactParts s;
    for (size_t i = 0; i < a.size(); ++i) {
        const Complex64s x = wide(a[i]), y = wide(b[i]);
        s.re.addProduct(x.re, y.re);
        s.re.subtractProduct(x.im, y.im);
        s.im.addProduct(x.re, y.im);
        s.im.addProduct(x.im, y.re);
    }
    return s;
}

// All parts at the type's minimum, where products and their sums are largest.
template <class T> T lowest() {
    if constexpr (std::is_integral_v<T>) {
        return std::numeric_limits<T>::min();
    } else {
        T z;
        z.re = z.im = lowest<decltype(z.re)>();
        return z;
    }
}
template <class T> std::vector<T> allLowest(size_t n) { return std::vector<T>(n, lowest<T>()); }
template <class T> std::vector<T> small(size_t n) {
    std::vector<T> v = randomVector<T>(n);
    for (T& x : v) {
        if constexpr (std::is_integral_v<T>)
            x = T(x % 64);
        else
            x = {decltype(x.re)(x.re % 64), decltype(x.im)(x.im % 64)};
    }
    return v;
}

template <class A, class B, class R> using Dot = Status (*)(const A*, const B*, int, R*);
template <class A, class B, class R> using ScaledDot = Status (*)(const A*, const B*, int, R*, int);

template <class R> R resultOf(const ExactParts& s) {
    if constexpr (std::is_arithmetic_v<R>)
        return R(s.re.value());
    else
        return {decltype(R::re)(s.re.value()), decltype(R::im)(s.im.value())};
}
template <class A, class B, class R> void checkExact(Dot<A, B, R> dot) {
    const auto want = [](const auto& a, const auto& b) { return exactly(resultOf<R>(exactDot(a, b))); };
    sweepReduction<A, B, R>(dot, want);
    sweepReduction<A, B, R>(dot, want, allLowest<A>, allLowest<B>);
}

template <class R> R scaledOf(const ExactParts& s, int scale) {
    if constexpr (std::is_arithmetic_v<R>)
        return s.re.scaled<R>(scale);
    else
        return {s.re.scaled<decltype(R::re)>(scale), s.im.scaled<decltype(R::im)>(scale)};
}
// Every scale on a few vectors, with results of 16 bits held to -15 .. 31, and a sweep of lengths and places at some.
template <class A, class B, class R> void checkScaled(ScaledDot<A, B, R> dot) {
    const bool held = sizeof(decltype(partsOf(R{}))) && sizeof(R) / partsOf(R{}).size() == 2;
    const auto want = [=](const auto& a, const auto& b, int scale) { return scaledOf<R>(exactDot(a, b), held ? std::clamp(scale, -15, 31) : scale); };
    const auto all = [&](const std::vector<A>& a, const std::vector<B>& b) {
        for (int scale : kScales) {
            R got;
            ASSERT_EQ(dot(a.data(), b.data(), int(a.size()), &got, scale), StatusOk);
            ASSERT_TRUE(fits(exactly(want(a, b, scale)), got)) << "length " << a.size() << " scale " << scale;
        }
    };
    for (size_t n : {1, 2, 3, 4, 37, 1003}) {
        for (int i = 0; i < 20; ++i) all(randomVector<A>(n), randomVector<B>(n));
        all(allLowest<A>(n), allLowest<B>(n));
        all(small<A>(n), small<B>(n));
    }
    all(allLowest<A>(kLong), allLowest<B>(kLong));
    for (int scale : {0, 20, 31, 45})
        sweepReduction<A, B, R>([=](const A* a, const B* b, int len, R* r) { return dot(a, b, len, r, scale); },
                                [=](const auto& a, const auto& b) { return exactly(want(a, b, scale)); });
}

TEST(DotProd, IntegerSumsAreExact) {
    checkExact<int16_t, int16_t, int64_t>(tevsDotProd_16s64s);
    checkExact<int16_t, int16_t, float>(tevsDotProd_16s32f);
    checkExact<Complex16s, Complex16s, Complex64s>(tevsDotProd_16sc64sc);
    checkExact<Complex16s, Complex16s, Complex32f>(tevsDotProd_16sc32fc);
    checkExact<int16_t, Complex16s, Complex64s>(tevsDotProd_16s16sc64sc);
    checkExact<int16_t, Complex16s, Complex32f>(tevsDotProd_16s16sc32fc);
}

TEST(DotProd, ScaledSumsRoundAndSaturate) {
    checkScaled<int16_t, int16_t, int16_t>(tevsDotProd_16s_Sfs);
    checkScaled<Complex16s, Complex16s, Complex16s>(tevsDotProd_16sc_Sfs);
    checkScaled<int32_t, int32_t, int32_t>(tevsDotProd_32s_Sfs);
    checkScaled<Complex32s, Complex32s, Complex32s>(tevsDotProd_32sc_Sfs);
    checkScaled<int16_t, int16_t, int32_t>(tevsDotProd_16s32s_Sfs);
    checkScaled<Complex16s, Complex16s, Complex32s>(tevsDotProd_16sc32sc_Sfs);
    checkScaled<int16_t, Complex16s, Complex16s>(tevsDotProd_16s16sc_Sfs);
    checkScaled<int16_t, Complex16s, Complex32s>(tevsDotProd_16s16sc32sc_Sfs);
    checkScaled<int16_t, int32_t, int32_t>(tevsDotProd_16s32s32s_Sfs);
    checkScaled<int32_t, Complex32s, Complex32s>(tevsDotProd_32s32sc_Sfs);
}

struct Row {
    int32_t a[3], b[3];
    int scale;
    int32_t want16s, want32s;
};
constexpr Row kRows[] = {
    {{-32768, -32768, 0}, {-32768, -32768, 0}, 31, 1, 1},   // 2^31
    {{-32768, -32768, 0}, {-32768, -32768, 0}, 32, 1, 0},   // the factor of 16-bit results stops at 31
    {{-32768, -32768, 0}, {-32768, -32768, 0}, 0, 32767, INT_MAX},
    {{3, 0, 0}, {1, 0, 0}, 1, 2, 2},   // 1.5: the tie goes to even
    {{5, 0, 0}, {1, 0, 0}, 1, 2, 2},
    {{-3, 1, 0}, {1, 2, 0}, 1, 0, 0},
    {{100, 1, 0}, {-100, -1, 0}, -15, -32768, -10001 * 32768},
    {{1, 0, 0}, {1, 0, 0}, INT_MIN, 32767, INT_MAX},
};
TEST(DotProd, TellingCases) {
    for (const Row& r : kRows) {
        int16_t a[3], b[3], got16 = 0;
        int32_t got32 = 0;
        for (int i = 0; i < 3; ++i) a[i] = int16_t(r.a[i]), b[i] = int16_t(r.b[i]);
        ASSERT_EQ(tevsDotProd_16s_Sfs(a, b, 3, &got16, r.scale), StatusOk);
        EXPECT_EQ(got16, r.want16s) << r.a[0] << " * " << r.b[0] << " scale " << r.scale;
        ASSERT_EQ(tevsDotProd_16s32s_Sfs(a, b, 3, &got32, r.scale), StatusOk);
        EXPECT_EQ(got32, r.want32s) << r.a[0] << " * " << r.b[0] << " scale " << r.scale;
    }
}

// Sums in double precision: off by 2^-53 of the magnitudes per addition, and by the rounding to the result.
template <class A, class B, class R> void checkFloats(Dot<A, B, R> dot) {
    const auto re = [](const auto& x) { return partsOf(x)[0]; };
    const auto im = [](const auto& x) { return partsOf(x).size() > 1 ? partsOf(x).back() : 0; };
    sweepReduction<A, B, R>(dot, [=](const std::vector<A>& a, const std::vector<B>& b) {
        Want w{{0, 0}};
        long double magnitudes = 0;
        for (size_t i = 0; i < a.size(); ++i) {
            w.parts[0] += re(a[i]) * re(b[i]) - im(a[i]) * im(b[i]);
            w.parts[1] += re(a[i]) * im(b[i]) + im(a[i]) * re(b[i]);
            magnitudes += std::hypot(re(a[i]), im(a[i])) * std::hypot(re(b[i]), im(b[i]));
        }
        const bool single = sizeof(R) / partsOf(R{}).size() == 4;
        w.tolerance = magnitudes * (double(a.size()) * 0x1p-53) + (single ? (std::abs(w.parts[0]) + std::abs(w.parts[1])) * 0x1p-24L : 0);
        return w;
    });
}

TEST(DotProd, FloatSumsAreFormedInDoublePrecision) {
    checkFloats<float, float, float>(tevsDotProd_32f);
    checkFloats<double, double, double>(tevsDotProd_64f);
    checkFloats<Complex32f, Complex32f, Complex32f>(tevsDotProd_32fc);
    checkFloats<Complex64f, Complex64f, Complex64f>(tevsDotProd_64fc);
    checkFloats<float, float, double>(tevsDotProd_32f64f);
    checkFloats<Complex32f, Complex32f, Complex64f>(tevsDotProd_32fc64fc);
    checkFloats<float, Complex32f, Complex32f>(tevsDotProd_32f32fc);
    checkFloats<float, Complex32f, Complex64f>(tevsDotProd_32f32fc64fc);
    checkFloats<double, Complex64f, Complex64f>(tevsDotProd_64f64fc);
}

TEST(DotProd, RejectsBadArguments) {
    const int16_t a[1] = {5};
    const Complex32f z[1] = {{1, 2}};
    int16_t r = 77;
    Complex32f c = {77, 77};
    for (int len : {0, -1, INT_MIN}) {
        EXPECT_EQ(tevsDotProd_16s_Sfs(nullptr, a, len, &r, 0), StatusNullPtr);
        EXPECT_EQ(tevsDotProd_16s_Sfs(a, nullptr, len, &r, 0), StatusNullPtr);
        EXPECT_EQ(tevsDotProd_16s_Sfs(a, a, len, nullptr, 0), StatusNullPtr);
        EXPECT_EQ(tevsDotProd_16s_Sfs(a, a, len, &r, 0), StatusBadSize);
        EXPECT_EQ(tevsDotProd_32fc(z, z, len, nullptr), StatusNullPtr);
        EXPECT_EQ(tevsDotProd_32fc(z, z, len, &c), StatusBadSize);
    }
    EXPECT_EQ(r, 77);
    EXPECT_EQ(c.re, 77);
}

}   // namespace
