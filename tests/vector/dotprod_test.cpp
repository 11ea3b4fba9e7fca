#include <climits>
#include <cmath>

#include "support/reduction.h"

using namespace test;

namespace {

constexpr int kScales[] = {INT_MIN, -70, -16, -15, -3, 0, 1, 2, 3, 15, 29, 30, 31, 32, 33, 34, 35, 36, 40, 61, 62, 63, 64, 90, INT_MAX};

constexpr auto exactDot = [](const auto& a, const auto& b) {
    ExactSums s(2);
    for (size_t i = 0; i < a.size(); ++i) {
        const auto x = complexOf<int64_t>(a[i]), y = complexOf<int64_t>(b[i]);
        s[0].addProduct(x[0], y[0]);
        s[0].subtractProduct(x[1], y[1]);
        s[1].addProduct(x[0], y[1]);
        s[1].addProduct(x[1], y[0]);
    }
    return s;
};

constexpr auto exact = []<class A, class B, class R>(Status (*dot)(const A*, const B*, int, R*)) {
    const auto want = [](const auto& a, const auto& b) { return converted<R>(exactDot(a, b)); };
    reduces(dot, want);
    reduces(dot, want, {lengthsFrom(1), lowest<A>, lowest<B>});   // where products and their sums are largest
};

template <class T> std::vector<T> small(size_t n) {
    std::vector<T> v = randomVector<T>(n);
    for (T& x : v) {
        Part<T> parts[kParts<T>];
        std::memcpy(parts, &x, sizeof x);
        for (auto& p : parts) p = Part<T>(p % 64);
        std::memcpy(&x, parts, sizeof x);
    }
    return v;
}
// Every scale on a few vectors, with results of 16 bits held to -15 .. 31, and a sweep of lengths and places at some.
constexpr auto atEveryScale = []<class A, class B, class R>(Status (*dot)(const A*, const B*, int, R*, int)) {
    const auto want = [](const auto& a, const auto& b, int scale) {
        return scaled<R>(exactDot(a, b), sizeof(Part<R>) == 2 ? std::clamp(scale, -15, 31) : scale);
    };
    const auto all = [&](const std::vector<A>& a, const std::vector<B>& b) {
        for (int scale : kScales) {
            R got;
            ASSERT_EQ(dot(a.data(), b.data(), int(a.size()), &got, scale), StatusOk);
            ASSERT_TRUE(fits(want(a, b, scale), got)) << "length " << a.size() << " scale " << scale;
        }
    };
    for (size_t n : {1, 2, 3, 4, 37, 1003}) {
        for (int i = 0; i < 20; ++i) all(randomVector<A>(n), randomVector<B>(n));
        all(lowest<A>(n), lowest<B>(n));
        all(small<A>(n), small<B>(n));
    }
    all(lowest<A>(kLong), lowest<B>(kLong));
    for (int scale : {0, 20, 31, 45})
        reduces(
            dot, [=](const auto& a, const auto& b) { return want(a, b, scale); }, {}, scale);
};

TEST(DotProd, IntegerSumsAreExact) {
    each(exact, tevsDotProd_16s64s, tevsDotProd_16s32f, tevsDotProd_16sc64sc, tevsDotProd_16sc32fc, tevsDotProd_16s16sc64sc, tevsDotProd_16s16sc32fc);
}

TEST(DotProd, ScaledSumsRoundAndSaturate) {
    each(atEveryScale, tevsDotProd_16s_Sfs, tevsDotProd_16sc_Sfs, tevsDotProd_32s_Sfs, tevsDotProd_32sc_Sfs, tevsDotProd_16s32s_Sfs, tevsDotProd_16sc32sc_Sfs,
         tevsDotProd_16s16sc_Sfs, tevsDotProd_16s16sc32sc_Sfs, tevsDotProd_16s32s32s_Sfs, tevsDotProd_32s32sc_Sfs);
}

struct Row {
    int16_t a[3], b[3];
    int scale, want16s, want32s;
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
        int16_t got16 = 0;
        int32_t got32 = 0;
        ASSERT_EQ(tevsDotProd_16s_Sfs(r.a, r.b, 3, &got16, r.scale), StatusOk);
        ASSERT_EQ(tevsDotProd_16s32s_Sfs(r.a, r.b, 3, &got32, r.scale), StatusOk);
        EXPECT_TRUE(got16 == r.want16s && got32 == r.want32s) << r.a[0] << " * " << r.b[0] << " scale " << r.scale << ": " << got16 << ", " << got32;
    }
}

template <class T> std::vector<T> times(std::vector<T> v, float factor) {
    for (size_t i = 0; i < v.size() * kParts<T>; ++i) reinterpret_cast<Part<T>*>(v.data())[i] *= factor;
    return v;
}
// Of sums in double precision, off by 2^-53 of the magnitudes per addition; of those in single, by 2^-24 per addition in a lane of a block and for what is around them.
template <bool Single>
constexpr auto within = []<class A, class B, class R>(Status (*dot)(const A*, const B*, int, R*)) {
    const auto want = [=](const std::vector<A>& a, const std::vector<B>& b) {
        long double sumRe = 0, sumIm = 0, magnitudes = 0;
        for (size_t i = 0; i < a.size(); ++i) {
            const auto x = complexOf<long double>(a[i]), y = complexOf<long double>(b[i]);
            sumRe += x[0] * y[0] - x[1] * y[1];
            sumIm += x[0] * y[1] + x[1] * y[0];
            magnitudes += std::hypot(x[0], x[1]) * std::hypot(y[0], y[1]);
        }
        const auto n = (long double)a.size();
        return rounded<R>({sumRe, sumIm}, magnitudes * (Single ? (std::min(n, 4096.0L) / 4 + 8) * 0x1p-24L : n * 0x1p-53L) + (Single ? 0x1p-150L : 0));
    };
    reduces(dot, want);
    // Where the products leave the range of single precision, below it and above it, there with a sum of 0.
    if constexpr (Single)
        for (const float factor : {0x1p-70f, 0x1p70f}) {
            auto a = times(randomVector<A>(50), factor);
            auto b = times(randomVector<B>(50), factor);
            const auto again = a;
            const auto opposite = times(b, factor < 1 ? 1 : -1);
            a.insert(a.end(), again.begin(), again.end());
            b.insert(b.end(), opposite.begin(), opposite.end());
            R got;
            ASSERT_EQ(dot(a.data(), b.data(), 100, &got), StatusOk);
            ASSERT_TRUE(fits(want(a, b), got));
        }
};

TEST(DotProd, FloatSums) {
    each(within<false>, tevsDotProd_64f, tevsDotProd_64fc, tevsDotProd_32f64f, tevsDotProd_32fc64fc, tevsDotProd_32f32fc64fc, tevsDotProd_64f64fc);
    each(within<true>, tevsDotProd_32f, tevsDotProd_32fc, tevsDotProd_32f32fc);
}

}   // namespace
