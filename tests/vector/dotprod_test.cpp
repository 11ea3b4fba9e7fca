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
        const auto small = [](auto& part) { part %= 64; };   // where ties are
        all(withParts(randomVector<A>(n), small), withParts(randomVector<B>(n), small));
    }
    all(lowest<A>(kLong), lowest<B>(kLong));
    const auto one = [](auto& part) { part = 1; };   // which the least scale makes the most
    all(withParts(std::vector<A>(1), one), withParts(std::vector<B>(1), one));
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
            const auto scale = [=](float& part) { part *= factor; };
            auto a = withParts(randomVector<A>(50), scale);
            auto b = withParts(randomVector<B>(50), scale);
            const auto again = a;
            const auto opposite = withParts(b, [=](float& part) { part *= factor < 1 ? 1 : -1; });
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
