#include <climits>
#include <cmath>
#include <complex>

#include "support/control_words.h"
#include "support/data.h"
#include "tevcore.h"
#include "tevs.h"

using namespace test;

namespace {

// ---- the functions of each type, those of floats with a scale factor that does nothing --------------------------------------------------

template <class D> using AutoCorr = Status (*)(const D*, int, D*, int, int);
enum Norm { kNone, kByLength, kByOverlap };
template <class D> struct Api;
#define CORRELATION(D, T, SFS, SCALE)                                                                                             \
    static constexpr bool kWhole = std::is_integral_v<D>;                                                                         \
    static Status crossCorr(const D* a, int m, const D* b, int n, D* r, int len, int lag, [[maybe_unused]] int s) {               \
        return tevsCrossCorr_##T##SFS(a, m, b, n, r, len, lag SCALE);                                                             \
    }                                                                                                                             \
    static constexpr AutoCorr<D> autoCorr[3] = {                                                                                  \
        [](const D* x, int n, D* r, int len, [[maybe_unused]] int s) { return tevsAutoCorr_##T##SFS(x, n, r, len SCALE); },       \
        [](const D* x, int n, D* r, int len, [[maybe_unused]] int s) { return tevsAutoCorr_NormA_##T##SFS(x, n, r, len SCALE); }, \
        [](const D* x, int n, D* r, int len, [[maybe_unused]] int s) { return tevsAutoCorr_NormB_##T##SFS(x, n, r, len SCALE); }};
#define CONVOLUTION(D, T, SFS, SCALE) \
    static Status conv(const D* a, int m, const D* b, int n, D* y, [[maybe_unused]] int s) { return tevsConv_##T##SFS(a, m, b, n, y SCALE); }
// clang-format off
#define COMMA_S , s
template <> struct Api<float> { CORRELATION(float, 32f, , ) CONVOLUTION(float, 32f, , ) static constexpr int kLags = 383, kAutoLags = 856; };
template <> struct Api<double> { CORRELATION(double, 64f, , ) CONVOLUTION(double, 64f, , ) static constexpr int kLags = 511, kAutoLags = 856; };
template <> struct Api<int16_t> { CORRELATION(int16_t, 16s, _Sfs, COMMA_S) CONVOLUTION(int16_t, 16s, _Sfs, COMMA_S) static constexpr int kLags = 383, kAutoLags = 856; };
template <> struct Api<Complex32f> { CORRELATION(Complex32f, 32fc, , ) static constexpr int kLags = 255, kAutoLags = 152; };
template <> struct Api<Complex64f> { CORRELATION(Complex64f, 64fc, , ) static constexpr int kLags = 511, kAutoLags = 368; };
// clang-format on

// ---- the oracle ----------------------------------------------------------------------------------------------------------------------------

using Real = long double;
using Value = std::complex<Real>;
template <class D> Value valueOf(const D& x) {
    if constexpr (Complex<D>)
        return {x.re, x.im};
    else
        return x;
}
template <class D> D made(Real re, Real im) {
    using T = decltype([] {
        if constexpr (Complex<D>)
            return decltype(D::re){};
        else
            return D{};
    }());
    if constexpr (Complex<D>)
        return {T(re), T(im)};
    else
        return T(re);
}

// r(lag) = sum over k of conj(a[k]) b[k+lag]
template <class D> std::vector<Value> correlation(const std::vector<D>& a, const std::vector<D>& b, int64_t lowLag, int len) {
    std::vector<Value> r(size_t(len), 0);
    const int64_t m = int64_t(a.size()), n = int64_t(b.size());
    for (int i = 0; i < len; ++i)
        for (int64_t lag = lowLag + i, k = std::max<int64_t>(0, -lag); k < std::min(m, n - lag); ++k)
            r[size_t(i)] += std::conj(valueOf(a[size_t(k)])) * valueOf(b[size_t(k + lag)]);
    return r;
}
template <class D> std::vector<Value> convolution(std::vector<D> a, const std::vector<D>& b, int64_t first, int len) {
    std::reverse(a.begin(), a.end());
    return correlation(a, b, first + 1 - int64_t(a.size()), len);
}
// Integers as they are rounded, floats within so many units of the sources' norms.
template <class D>
::testing::AssertionResult close(const std::vector<Value>& want, const std::vector<D>& got, const std::vector<D>& a, const std::vector<D>& b, int scale,
                                 bool exact) {
    const auto norm = [](const std::vector<D>& v) {
        Real sum = 0;
        for (const D& x : v) sum += std::norm(valueOf(x));
        return std::sqrt(sum);
    };
    const Real size = norm(a) * norm(b), unit = sizeof(made<D>(0, 0)) / (Complex<D> ? 2 : 1) == 8 ? 0x1p-52L : 0x1p-23L;
    Real slack = exact ? 0 : 16 * size * unit;
    if (Api<D>::kWhole && !exact) slack = std::ldexp(slack, -scale) + 1;
    for (size_t i = 0; i < want.size(); ++i) {
        Value w = want[i];
        if (Api<D>::kWhole) w = std::clamp<Real>(std::nearbyint(std::ldexp(w.real(), -scale)), -32768, 32767);
        if (!(std::abs(w - valueOf(got[i])) <= slack))
            return ::testing::AssertionFailure() << "at " << i << " of " << want.size() << ": want " << w << ", got " << valueOf(got[i]) << ", slack " << slack;
    }
    return ::testing::AssertionSuccess();
}

// Few numbers that are not 0, whose products and sums are whole numbers that floats hold: direct sums are exact, and transforms are not.
template <class D> std::vector<D> impulses(size_t n) {
    std::vector<D> v(n);
    const auto height = [] { return Real(500 + generator()() % 700); };
    for (size_t k = 0; k < 5; ++k) v[generator()() % n] = made<D>(height(), height());
    return v;
}

template <class D> class Convolution : public ::testing::Test {};
template <class D> class Correlation : public ::testing::Test {};
struct TypeName {
    template <class D> static std::string GetName(int) {
        return std::string(Complex<D> ? "complex" : "") + (Api<D>::kWhole ? "16s" : sizeof(D) <= 8 ? "single" : "double") + std::to_string(sizeof(D));
    }
};
using Reals = ::testing::Types<float, double, int16_t>;
using All = ::testing::Types<float, double, int16_t, Complex32f, Complex64f>;
TYPED_TEST_SUITE(Convolution, Reals, TypeName);
TYPED_TEST_SUITE(Correlation, All, TypeName);

int randomScale(size_t terms) { return int(generator()() % 6) + int(std::log2(Real(terms))) + 10; }
// Of long vectors there are few tests: they end where their page does.
template <class D> Place somewhere(size_t n = 0) {
    if (n > 100) return {};
    return {int(generator()() % 4 * sizeof(D)), generator()() % 2 == 0};
}

// ---- Conv -----------------------------------------------------------------------------------------------------------------------------------

template <class D> std::vector<D> conv(const std::vector<D>& a, const std::vector<D>& b, int scale) {
    Guarded<D> x(a, somewhere<D>(a.size())), h(b, somewhere<D>(b.size())), y(a.size() + b.size() - 1, somewhere<D>());
    EXPECT_EQ(Api<D>::conv(x, int(a.size()), h, int(b.size()), y, scale), StatusOk);
    EXPECT_TRUE(y.intact());
    return y.values();
}
template <class D> bool checkConv(size_t m, size_t n, bool exact) {
    const auto a = randomVector<D>(m), b = randomVector<D>(n);
    const int scale = randomScale(std::min(m, n));
    const auto good = close(convolution(a, b, 0, int(m + n - 1)), conv(a, b, scale), a, b, scale, exact && Api<D>::kWhole);
    EXPECT_TRUE(good) << m << " and " << n;
    return bool(good);
}

TYPED_TEST(Convolution, EqualsItsSum) {
    for (size_t m = 1; m <= 70; ++m)
        for (size_t n : {size_t{1}, size_t{2}, m, size_t{71}, size_t{200}}) ASSERT_TRUE(checkConv<TypeParam>(m, n, true) && checkConv<TypeParam>(n, m, true));
    for (auto [m, n] : {std::pair{255, 256}, {17, 4095}, {63, 4096}, {9000, 50}}) ASSERT_TRUE(checkConv<TypeParam>(size_t(m), size_t(n), true));
    for (auto [m, n] : {std::pair{256, 257}, {64, 449}, {2048, 70}, {300, 899}, {300, 900}, {64, 4097}, {10000, 100}, {128, 384}})
        ASSERT_TRUE(checkConv<TypeParam>(size_t(m), size_t(n), false));
}

TYPED_TEST(Convolution, TransformsFromItsThresholdsOn) {
    using D = TypeParam;
    for (auto [m, n, direct] :
         {std::tuple{64, 448, true}, {255, 257, true}, {63, 450, true}, {63, 4097, true}, {64, 449, false}, {256, 257, false}, {600, 64, false}}) {
        const auto a = impulses<D>(size_t(m)), b = impulses<D>(size_t(n));
        EXPECT_EQ(direct, bool(close(convolution(a, b, 0, m + n - 1), conv(a, b, -6), a, b, -6, true))) << m << " and " << n;
    }
}

// An infinity reaches the results of its blocks, or all of them.
TEST(Conv, GoesByBlocksFromThreeTimesTheShorterLengthOn) {
    for (const size_t n : {767u, 768u}) {
        std::vector<float> a(256, 0.5f), b(n, 0.25f);
        b[0] = std::numeric_limits<float>::infinity();
        EXPECT_EQ(n == 768, std::isfinite(conv(a, b, 0).back())) << n;
        EXPECT_EQ(n == 768, std::isfinite(conv(b, a, 0).back())) << n;
    }
}

TYPED_TEST(Convolution, IsTheSameByAnyNumberOfThreads) {
    using D = TypeParam;
    const int before = tevGetNumThreads();
    for (auto [m, n] : {std::pair{64, 4096}, {64, 4097}, {100, 20001}, {1300, 4200}}) {
        const auto a = randomVector<D>(size_t(m)), b = randomVector<D>(size_t(n));
        tevSetNumThreads(1);
        const auto want = conv(a, b, 20);
        for (int threads : {2, 3, 1000}) {
            tevSetNumThreads(threads);
            EXPECT_TRUE(same(want, conv(a, b, 20))) << m << " and " << n << ", " << threads << " threads";
        }
    }
    tevSetNumThreads(before);
}

TYPED_TEST(Convolution, ControlWordsChangeNothing) {
    for (size_t m : {20u, 100u, 300u}) {
        const auto a = randomVector<TypeParam>(m), b = randomVector<TypeParam>(500);
        expectOwnModes([&] { return conv(a, b, 20); });
    }
}

TYPED_TEST(Convolution, RejectsBadArguments) {
    using D = TypeParam;
    const auto conv = Api<D>::conv;
    const D x[4] = {};
    Guarded<D> y(8);
    for (Status s : {conv(nullptr, 0, x, 0, y, 0), conv(x, 0, nullptr, 4, y, 0), conv(x, 4, x, 4, nullptr, 0)}) EXPECT_EQ(s, StatusNullPtr);
    for (Status s : {conv(x, 0, x, 4, y, 0), conv(x, 4, x, -1, y, 0), conv(x, INT_MAX, x, 2, y, 0), conv(x, INT_MAX, x, INT_MAX, y, 0)})
        EXPECT_EQ(s, StatusBadSize);
    EXPECT_TRUE(y.untouched());
}

// ---- ConvBiased, ConvCyclic ---------------------------------------------------------------------------------------------------------------------

bool checkBiased(int m, int n, int len, int bias) {
    const auto a = randomVector<float>(size_t(m)), b = randomVector<float>(size_t(n));
    Guarded<float> h(a, somewhere<float>()), x(b, somewhere<float>()), y(size_t(len), somewhere<float>());
    EXPECT_EQ(tevsConvBiased_32f(h, m, x, n, y, len, bias), StatusOk);
    const auto good = close(convolution(a, b, bias, len), y.values(), a, b, 0, false);
    EXPECT_TRUE(y.intact());
    EXPECT_TRUE(good) << m << ", " << n << ", " << len << ", " << bias;
    return bool(good);
}
TEST(ConvBiased, EqualsItsSum) {
    constexpr int kSizes[][4] = {{4, 45, 41, 4},      {11, 50, 40, 10},     {16, 56, 40, 16},    {31, 70, 40, 30}, {31, 110, 80, 30},
                                 {40, 40, 40, 0},     {60, 60, 60, 0},      {64, 64, 64, 0},     {10, 100, 91, 9}, {100, 10, 91, 9},
                                 {700, 600, 1299, 0}, {700, 1500, 40, 650}, {1500, 600, 900, 77}};
    for (const auto& [m, n, len, bias] : kSizes) checkBiased(m, n, len, bias);
    for (int m = 1; m <= 20; ++m)
        for (int n : {1, 2, 7, 19})
            for (int bias = -12; bias <= m + n; bias += 3)
                for (int len : {1, 5, 30}) ASSERT_TRUE(checkBiased(m, n, len, bias));
    for (int bias : {INT_MIN, INT_MIN + 1, -30, 40, INT_MAX - 1, INT_MAX}) checkBiased(20, 20, 30, bias);
}
TEST(ConvBiased, RejectsBadArguments) {
    const float x[4] = {};
    Guarded<float> y(8);
    for (Status s :
         {tevsConvBiased_32f(nullptr, 0, x, 4, y, 4, 0), tevsConvBiased_32f(x, 4, nullptr, 4, y, 4, 0), tevsConvBiased_32f(x, 4, x, 4, nullptr, 4, 0)})
        EXPECT_EQ(s, StatusNullPtr);
    for (Status s : {tevsConvBiased_32f(x, 0, x, 4, y, 4, 0), tevsConvBiased_32f(x, 4, x, -1, y, 4, 0), tevsConvBiased_32f(x, 4, x, 4, y, INT_MIN, 0)})
        EXPECT_EQ(s, StatusBadSize);
    EXPECT_TRUE(y.untouched());
}

template <class X, class H> std::vector<Value> ring(const X* x, const H* h, int n) {
    std::vector<Value> y(size_t(n), 0);
    for (int i = 0; i < n * n; ++i) y[size_t(i % n)] += valueOf(x[i / n]) * valueOf(h[(i % n + n - i / n) % n]);
    return y;
}
TEST(ConvCyclic, EqualsItsSum) {
    for (int run = 0; run < 200; ++run) {
        const auto x = randomVector<float>(8), h = randomVector<float>(8);
        const auto z = randomVector<Complex32f>(4), yz = std::vector<Complex32f>(4);
        Guarded<float> gx(x), gh(h), y(8), x4(std::vector<float>(x.begin(), x.begin() + 4));
        Guarded<Complex32f> gz(z), y4(4);
        EXPECT_EQ(tevsConvCyclic8x8_32f(gx, gh, y), StatusOk);
        EXPECT_EQ(tevsConvCyclic4x4_32f32fc(x4, gz, y4), StatusOk);
        ASSERT_TRUE(close(ring(x.data(), h.data(), 8), y.values(), x, h, 0, false));
        ASSERT_TRUE(close(ring(x.data(), z.data(), 4), y4.values(), z, z, 0, false) ||
                    close(ring(x.data(), z.data(), 4), y4.values(), {{4, 0}}, {{1, 0}}, 0, false));
        const int scale = std::array{0, 1, 15, 18, 33, 34, -3, -40, INT_MIN, INT_MAX}[size_t(run) % 10];
        std::vector<int16_t> s = randomVector<int16_t>(8), t = randomVector<int16_t>(8);
        if (run % 20 < 10) s.assign(8, INT16_MIN), t = s;
        Guarded<int16_t> gs(s), gt(t), ys(8);
        EXPECT_EQ(tevsConvCyclic8x8_16s_Sfs(gs, gt, ys, scale), StatusOk);
        ASSERT_TRUE(close(ring(s.data(), t.data(), 8), ys.values(), s, t, std::clamp(scale, -100, 100), true)) << scale;
    }
}

// ---- CrossCorr ----------------------------------------------------------------------------------------------------------------------------------

template <class D> std::vector<D> crossCorr(const std::vector<D>& a, const std::vector<D>& b, int len, int lowLag, int scale) {
    Guarded<D> x(a, somewhere<D>(a.size())), h(b, somewhere<D>(b.size())), r(size_t(len), somewhere<D>());
    EXPECT_EQ(Api<D>::crossCorr(x, int(a.size()), h, int(b.size()), r, len, lowLag, scale), StatusOk);
    EXPECT_TRUE(r.intact());
    return r.values();
}
template <class D> bool checkCross(int m, int n, int len, int lowLag, bool exact = true) {
    const auto a = randomVector<D>(size_t(m)), b = randomVector<D>(size_t(n));
    const int scale = randomScale(size_t(std::min(m, n)));
    const auto good = close(correlation(a, b, lowLag, len), crossCorr(a, b, len, lowLag, scale), a, b, scale, exact && Api<D>::kWhole);
    EXPECT_TRUE(good) << m << " and " << n << ", " << len << " lags from " << lowLag;
    return bool(good);
}

TYPED_TEST(Correlation, EqualsItsSum) {
    for (int m = 1; m <= 40; ++m)
        for (int n : {1, 2, 9, 40, 70})
            for (int len : {1, 3, 16, 17, 45, 120})
                for (int lag : {-m - 3, 1 - m, -m / 2, 0, n / 2}) ASSERT_TRUE(checkCross<TypeParam>(m, n, len, lag));
    for (auto [m, n, len, lag] : {std::tuple{600, 1100, 250, 300},
                                  {1100, 600, 250, -900},
                                  {1500, 40, 1539, -1499},
                                  {40, 1500, 1539, -39},
                                  {1200, 1200, 250, -125},
                                  {513, 513, 20, -10}})
        ASSERT_TRUE(checkCross<TypeParam>(m, n, len, lag));
    for (auto [m, n, len, lag] : {std::tuple{600, 700, 1299, -599}, {700, 600, 1500, -800}, {600, 600, 650, -100}})
        ASSERT_TRUE(checkCross<TypeParam>(m, n, len, lag, false));
    for (int lag : {INT_MIN, INT_MIN + 1, -70, -50, 60, INT_MAX - 1, INT_MAX}) ASSERT_TRUE(checkCross<TypeParam>(50, 60, 30, lag));
}

TYPED_TEST(Correlation, TransformsAboveItsThreshold) {
    using D = TypeParam;
    const int most = Api<D>::kLags;
    // Lags times the shorter over the longer length, counted without the zeros on either side.
    for (auto [m, n, len, lag, direct] : {std::tuple{most, most, most, 0, true},
                                          {most, most, 5 * most, 0, true},
                                          {900, 900, most, -40, true},
                                          {900, 900, most + 1, -40, false},
                                          {900, 1800, 2 * most + 1, 0, true},
                                          {1800, 900, 2 * most + 2, -1500, false}}) {
        const auto a = impulses<D>(size_t(m)), b = impulses<D>(size_t(n));
        EXPECT_EQ(direct, bool(close(correlation(a, b, lag, len), crossCorr(a, b, len, lag, -6), a, b, -6, true))) << m << " and " << n << ", " << len;
    }
}

// ---- AutoCorr -----------------------------------------------------------------------------------------------------------------------------------

template <class D> std::vector<D> autoCorr(Norm norm, const std::vector<D>& a, int len, int scale) {
    Guarded<D> x(a, somewhere<D>(a.size())), r(size_t(len), somewhere<D>());
    EXPECT_EQ(Api<D>::autoCorr[norm](x, int(a.size()), r, len, scale), StatusOk);
    EXPECT_TRUE(r.intact());
    return r.values();
}
template <class D> bool checkAuto(int m, int len, bool exact = true) {
    const auto a = randomVector<D>(size_t(m));
    bool all = true;
    for (Norm norm : {kNone, kByLength, kByOverlap}) {
        auto want = correlation(a, a, 0, len);
        for (int i = 0; i < std::min(m, len); ++i) want[size_t(i)] /= Real(norm == kNone ? 1 : norm == kByLength ? m : m - i);
        const int scale = norm == kNone ? randomScale(size_t(m)) : int(generator()() % 9) + 11;
        const auto good = close(want, autoCorr(norm, a, len, scale), a, a, scale, exact && Api<D>::kWhole);
        EXPECT_TRUE(good) << m << ", " << len << " lags, norm " << norm;
        all = all && bool(good);
    }
    return all;
}

TYPED_TEST(Correlation, OfAVectorAndItself) {
    for (int m = 1; m <= 70; ++m)
        for (int len : {1, 2, 7, 16, 71}) ASSERT_TRUE(checkAuto<TypeParam>(m, len));
    for (auto [m, len] : {std::pair{160, 11}, {140, 140}, {1024, 64}, {1500, 150}, {513, 100}}) ASSERT_TRUE(checkAuto<TypeParam>(m, len));
    for (auto [m, len] : {std::pair{900, 900}, {1023, 1100}, {1025, 870}}) ASSERT_TRUE(checkAuto<TypeParam>(m, len, false));
}

TYPED_TEST(Correlation, OfAVectorAndItselfTransformsFromItsThresholdOn) {
    using D = TypeParam;
    const int fewest = Api<D>::kAutoLags;
    for (auto [m, len, direct] : {std::tuple{1000, fewest - 1, true}, {fewest - 1, 1000, true}, {1000, fewest, false}, {fewest, 1000, false}}) {
        const auto a = impulses<D>(size_t(m));
        EXPECT_EQ(direct, bool(close(correlation(a, a, 0, len), autoCorr(kNone, a, len, -6), a, a, -6, true))) << m << ", " << len;
    }
}

// Quotients are not rounded before they are scaled: 5 / 2 * 2^1, 3 / 2 / 2 and so on.
TEST(AutoCorr, DividesBeforeItScales) {
    const std::vector<int16_t> x = {1, 3, 2};   // 14, 9, 2
    EXPECT_TRUE(same({9, 6, 1}, autoCorr(kByLength, x, 3, -1)));
    EXPECT_TRUE(same({9, 9, 4, 0}, autoCorr(kByOverlap, x, 4, -1)));
    EXPECT_TRUE(same({2, 2, 0}, autoCorr(kByLength, x, 3, 1)));
}

TYPED_TEST(Correlation, ControlWordsChangeNothing) {
    for (size_t m : {20u, 900u}) {
        const auto a = randomVector<TypeParam>(m), b = randomVector<TypeParam>(900);
        expectOwnModes([&] { return crossCorr(a, b, 1200, -300, 20); });
        for (Norm norm : {kByLength, kByOverlap}) expectOwnModes([&] { return autoCorr(norm, a, 900, 12); });
    }
}

TYPED_TEST(Correlation, RejectsBadArguments) {
    using D = TypeParam;
    const auto cross = Api<D>::crossCorr;
    const D x[4] = {};
    Guarded<D> r(8);
    for (Status s : {cross(nullptr, 0, x, 4, r, 4, 0, 0), cross(x, 4, nullptr, 0, r, 4, 0, 0), cross(x, 4, x, 4, nullptr, 0, 0, 0)})
        EXPECT_EQ(s, StatusNullPtr);
    for (Status s : {cross(x, 0, x, 4, r, 4, 0, 0), cross(x, 4, x, -1, r, 4, 0, 0), cross(x, 4, x, 4, r, INT_MIN, 0, 0)}) EXPECT_EQ(s, StatusBadSize);
    for (const auto autoCorr : Api<D>::autoCorr) {
        for (Status s : {autoCorr(nullptr, 0, r, 4, 0), autoCorr(x, 4, nullptr, 0, 0)}) EXPECT_EQ(s, StatusNullPtr);
        for (Status s : {autoCorr(x, 0, r, 4, 0), autoCorr(x, 4, r, -7, 0)}) EXPECT_EQ(s, StatusBadSize);
    }
    EXPECT_TRUE(r.untouched());
}

}   // namespace
