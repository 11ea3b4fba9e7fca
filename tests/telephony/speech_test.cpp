#include <cfloat>
#include <cmath>
#include <numeric>

#include "support/elements.h"
#include "support/exact.h"

using namespace test;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN(), kInf = std::numeric_limits<double>::infinity();

// ---- emphasis -------------------------------------------------------------------------------------------------------------------------

template <class T> T stored(double y, int scale) {
    if constexpr (std::is_floating_point_v<T>) return T(y);
    if (std::isnan(y)) return 0;
    const long double exact = std::ldexp(static_cast<long double>(y), -std::clamp(scale, -16000, 16000));
    return T(std::nearbyint(std::clamp(exact, -32768.0L, 32767.0L)));
}

// The formula as it stands, every operation in double precision.
template <class T> std::vector<T> emphasised(bool undo, const std::vector<T>& x, double alpha, double& mem, int scale) {
    std::vector<T> y;
    for (const T v : x) {
        const volatile double product = alpha * mem;
        const double exact = undo ? double(v) + product : double(v) - product;
        mem = undo ? exact : double(v);
        y.push_back(stored<T>(exact, scale));
    }
    return y;
}

// The forms in place are the environment's test's.
template <bool Undo, class T, class... Scale> void emphasis(Status (*f)(const T*, T*, int, double, double*, Scale...)) {
    for (const double alpha : {0.95, 0.0, -1.5, 1.0, 1e300, -kInf, kNaN})
        for (const int scale : {0, 3, -2, 40, -40, INT_MAX, INT_MIN}) {
            if (sizeof...(Scale) == 0 && scale != 0) continue;
            eachLength([&](int len) {
                std::vector<T> x = randomVector<T>(size_t(len)), got(x.size());
                if constexpr (std::is_floating_point_v<T>)
                    if (len % 3 == 0) x = wildFloats<T>(size_t(len));
                for (const int cut : {0, 1, len / 2}) {
                    double wantMem = 0.3, mem = wantMem;
                    const auto want = emphasised(Undo, x, alpha, wantMem, scale);
                    for (const auto& [at, n] : {std::pair{0, cut}, {cut, len - cut}})
                        ASSERT_TRUE(n < 1 || f(x.data() + at, got.data() + at, n, alpha, &mem, Scale(scale)...) == StatusOk);
                    ASSERT_TRUE(sameNumbers(want, got)) << nameOf(f) << " alpha " << alpha << " scale " << scale << " length " << len << " cut " << cut;
                    ASSERT_TRUE(sameNumbers<double>({wantMem}, {mem})) << mem << ", want " << wantMem;
                }
            });
        }
}
TEST(Emphasis, IsTheFormulaToTheBit) {
    each([](auto f) { emphasis<false>(f); }, tevsPreEmphasis_16s_Sfs, tevsPreEmphasis_32f, tevsPreEmphasis_64f);
    each([](auto f) { emphasis<true>(f); }, tevsDeEmphasis_16s_Sfs, tevsDeEmphasis_32f, tevsDeEmphasis_64f);
}

// ---- running levels -------------------------------------------------------------------------------------------------------------------

template <bool Power, class S> void levels(Status (*f)(const S*, int, double*, double)) {
    const auto sample = [](const S& v) -> long double {
        if constexpr (Complex<S>)
            return static_cast<long double>(v.re) * v.re + static_cast<long double>(v.im) * v.im;
        else
            return Power ? static_cast<long double>(v) * v : v;
    };
    for (const double alpha : {0.0, 1e-300, 0.001, 0.5, 0.9, 0.999, 1 - 1e-9, 1.0, 1.0001, -0.5}) {
        const auto check = [&](int len) {
            const auto x = randomVector<S>(size_t(len));
            long double want = 1000, largest = want;
            double level = 1000;
            for (const S& v : x) {
                want = alpha * want + (1 - static_cast<long double>(alpha)) * sample(v);
                largest = std::max({largest, std::abs(sample(v)), std::abs(want)});
            }
            ASSERT_EQ(f(x.data(), len, &level, alpha), StatusOk);
            const double room = alpha >= 0 && alpha < 1 ? std::min(double(len), 1 / (1 - alpha)) : 4.0 * len;
            ASSERT_NEAR(level, double(want), room * 0x1p-50 * double(largest)) << alpha << ", length " << len;
        };
        eachLength(check);
        check(100003);
    }
    for (const double stays : {kNaN, kInf}) {
        double level = stays;
        EXPECT_EQ(f(std::vector<S>(100).data(), 100, &level, 0.9), StatusOk);
        EXPECT_TRUE(sameNumbers<double>({stays}, {level}));
    }
}
TEST(Track, IsTheRecursion) {
    each([](auto f) { levels<false>(f); }, tevsTrackMean_16s, tevsTrackMean_32f, tevsTrackMean_64f);
    each([](auto f) { levels<true>(f); }, tevsTrackPower_16s, tevsTrackPower_32f, tevsTrackPower_64f, tevsTrackPower_32fc);
    const std::vector<double> most(1000, DBL_MAX / 2);
    double level = 0;
    tevsTrackMean_64f(most.data(), 1000, &level, 0.999);
    EXPECT_TRUE(std::isfinite(level) && level > DBL_MAX / 4);
}

// ---- window sums ------------------------------------------------------------------------------------------------------------------------

constexpr int kMasks[] = {1, 2, 3, 11, 12, 13, 16, 31, 32, 33, 100, 256, 257, 1000};

constexpr auto integerSums = []<class S>(Status (*f)(const S*, int32_t*, int, int)) {
    const auto check = [&](const std::vector<S>& x, int mask) {
        std::vector<int32_t> want, got(x.size() - size_t(mask) + 1);
        int64_t sum = 0;
        for (size_t n = 0; n < x.size(); ++n) {
            sum += x[n] - (n < size_t(mask) ? 0 : x[n - size_t(mask)]);
            if (n + 1 >= size_t(mask)) want.push_back(int32_t(std::clamp<int64_t>(sum, INT32_MIN, INT32_MAX)));
        }
        const Guarded<S> src(x);
        ASSERT_EQ(f(src.data(), got.data(), int(got.size()), mask), StatusOk);
        ASSERT_TRUE(same(want, got)) << "mask " << mask << ", length " << got.size();
    };
    for (const int mask : kMasks) eachLength([&](int len) { check(randomVector<S>(size_t(len + mask - 1)), mask); });
    // Sums at the bounds of 32 bits, and beyond them.
    constexpr int fitting = INT32_MAX / (sizeof(S) == 1 ? 255 : 32768);
    for (const S extreme : {std::numeric_limits<S>::max(), std::numeric_limits<S>::min()})
        for (const int mask : {fitting, fitting + 1, fitting + 5})
            for (const size_t zeroAt : {5, 43}) {
                std::vector<S> x(size_t(mask) + 42, extreme);
                x[zeroAt] = 0;
                check(x, mask);
            }
};
TEST(SumWindow, OfIntegersIsExactAndSaturated) { each(integerSums, tevsSumWindow_8u32s, tevsSumWindow_16s32s); }

constexpr auto floatSums = []<class T>(Status (*f)(const T*, T*, int, int)) {
    const auto check = [&](const std::vector<T>& x, int len, int mask) {
        const Guarded<T> src(x);
        std::vector<T> y(static_cast<size_t>(len)), same = x;
        ASSERT_EQ(f(src.data(), y.data(), len, mask), StatusOk);
        ASSERT_EQ(f(same.data(), same.data(), len, mask), StatusOk);
        for (size_t n = 0; n < y.size(); ++n) {
            long double sum = 0, size = 0;
            for (size_t k = n; k < n + size_t(mask); ++k) sum += x[k], size += std::abs(x[k]);
            ASSERT_TRUE(y[n] == same[n] || std::isnan(y[n])) << "in place " << n;
            if (!std::isfinite(size)) {
                ASSERT_TRUE(std::isnan(sum) ? std::isnan(y[n]) : y[n] == T(sum)) << n << " mask " << mask << ": " << y[n] << ", want " << sum;
                continue;
            }
            const long double bound = (sizeof(T) == 4 ? std::abs(sum) * 0x1p-24L : 0) + mask * 0x1p-52L * size;
            ASSERT_TRUE(std::abs(y[n] - sum) <= bound) << n << " mask " << mask << " length " << len << ": " << y[n] << ", want " << sum;
        }
    };
    for (const int mask : kMasks)
        for (const int len : {1, 2, 3, 4, 5, 7, 8, 9, 16, 17, 31, 63, 64, 65, 200, mask - 1, mask, mask + 1, 2 * mask + 3}) {
            if (len < 1) continue;
            auto x = randomVector<T>(size_t(len + mask - 1));
            check(x, len, mask);
            // What is large or no number at all touches the windows that hold it and no other.
            const T outliers[] = {T(1e30), T(kInf), T(-kInf), T(kNaN)};
            for (size_t k = 0; k < x.size(); k += 41 + size_t(mask)) x[k] = outliers[k / 7 % 4];
            check(x, len, mask);
        }
};
TEST(SumWindow, OfFloatsIsAsExactAsItsWindow) { each(floatSums, tevsSumWindow_32f, tevsSumWindow_64f); }

TEST(SumWindow, RefusesMasks) {
    float x = 1, y = 7;
    for (const int mask : {0, -1, INT_MIN})
        for (const int len : {0, 1}) EXPECT_EQ(tevsSumWindow_32f(&x, &y, len, mask), len ? StatusMaskSize : StatusBadSize);
    EXPECT_EQ(y, 7);
}

// ---- linear prediction ------------------------------------------------------------------------------------------------------------------

// Auto-correlations of noise through a resonance, rich in every order.
std::vector<double> correlations(int order) {
    const auto noise = randomVector<double>(size_t(4 * order + 300));
    std::vector<double> x(noise.size()), r;
    for (size_t n = 2; n < x.size(); ++n) x[n] = noise[n] + 1.6 * x[n - 1] - 0.81 * x[n - 2];
    for (size_t lag = 0; lag <= size_t(order); ++lag) r.push_back(std::inner_product(x.begin() + ptrdiff_t(lag), x.end(), x.begin(), 0.0));
    return r;
}

TEST(Levinson, SolvesTheNormalEquations) {
    for (int order = 1; order <= 300; order += order < 40 ? 1 : 52) {
        const auto r = correlations(order);
        std::vector<double> a(size_t(order) + 1), k(static_cast<size_t>(order));
        double energy;
        ASSERT_EQ(tevsLevinson_64f(r.data(), a.data(), order, k.data(), &energy), StatusOk);
        long double growth = 1, left = r[0];
        for (const double x : k) growth *= 1 + std::abs(x), left *= 1 - static_cast<long double>(x) * x;
        EXPECT_NEAR(energy, double(left), 1e-13 * order * double(left));
        ASSERT_EQ(a[0], 1);
        ASSERT_EQ(a.back(), k.back());
        for (int i = 1; i <= order; ++i) {
            long double sum = 0;
            for (int j = 0; j <= order; ++j) sum += static_cast<long double>(a[size_t(j)]) * r[size_t(std::abs(i - j))];
            ASSERT_LE(std::abs(sum), (order + 4.0) * (order + 4.0) * 0x1p-52 * r[0] * double(growth)) << "order " << order << " equation " << i;
        }
        const std::vector<float> r32(r.begin(), r.end());
        const std::vector<double> rounded(r32.begin(), r32.end());
        std::vector<float> a32(size_t(order) + 1), k32(static_cast<size_t>(order));
        float energy32;
        ASSERT_EQ(tevsLevinson_32f(r32.data(), a32.data(), order, k32.data(), &energy32), StatusOk);
        ASSERT_EQ(tevsLevinson_64f(rounded.data(), a.data(), order, k.data(), &energy), StatusOk);
        EXPECT_TRUE(same(std::vector<float>(a.begin(), a.end()), a32));
        EXPECT_TRUE(same(std::vector<float>(k.begin(), k.end()), k32));
        EXPECT_EQ(energy32, float(energy));
    }
}

TEST(Levinson, StopsWhereNoFilterIsStable) {
    struct Row {
        double r[4], a[4], k[3], energy;
    };
    const double inf = kInf, nan = kNaN;
    const Row rows[] = {
        {{1, 0.5, 0.25, 0.125}, {1, -0.5, 0, 0}, {-0.5, 0, 0}, 0.75},   // of the first order
        {{0, 0, 0, 0}, {1, 0, 0, 0}, {0, 0, 0}, 0},                     // silence
        {{-2, 1, 0, 0}, {1, 0, 0, 0}, {0, 0, 0}, 0},
        {{nan, 1, 0, 0}, {1, 0, 0, 0}, {0, 0, 0}, 0},
        {{2, 2, 2, 2}, {1, 0, 0, 0}, {0, 0, 0}, 2},          // a constant: k would be -1
        {{2, -3, 1, 1}, {1, 0, 0, 0}, {0, 0, 0}, 2},         // no auto-correlation at all
        {{4, 2, -5, 1}, {1, -0.5, 0, 0}, {-0.5, 0, 0}, 3},   // k[2] would be beyond 1
        {{4, 2, nan, 1}, {1, -0.5, 0, 0}, {-0.5, 0, 0}, 3},
        {{4, inf, 1, 1}, {1, 0, 0, 0}, {0, 0, 0}, 4},
    };
    for (const Row& row : rows) {
        double a[4], alone[4], k[3], energy;
        EXPECT_EQ(tevsLevinson_64f(row.r, a, 3, k, &energy), StatusOk);
        EXPECT_EQ(tevsLevinson_64f(row.r, alone, 3, nullptr, nullptr), StatusOk);
        EXPECT_TRUE(std::equal(a, a + 4, row.a) && std::equal(a, a + 4, alone) && std::equal(k, k + 3, row.k) && energy == row.energy) << &row - rows;
        const float r32[2] = {float(row.r[0]), float(row.r[1])};
        float a32[2];
        EXPECT_EQ(tevsLevinson_32f(r32, a32, 1, nullptr, nullptr), StatusOk);
        EXPECT_EQ(a32[1], float(row.a[1]));
    }
    double one = 1, untouched = 7;
    for (const int order : {0, -1, INT_MIN}) EXPECT_EQ(tevsLevinson_64f(&one, &untouched, order, nullptr, nullptr), StatusBadSize);
    EXPECT_EQ(untouched, 7);
}

}   // namespace
