#include <climits>
#include <cmath>

#include "support/reduction.h"

using namespace test;

namespace {

constexpr int kScales[] = {INT_MIN, -64, -63, -20, -3, 0, 1, 2, 5, 17, 31, 32, 33, 47, 62, 63, 64, INT_MAX};

std::vector<int16_t> highest(size_t n) { return std::vector<int16_t>(n, 32767); }

// The elements summed exactly, part by part.
constexpr auto exactSums = [](const auto& v) {
    ExactSums s(partsOf(v[0]).size());
    for (const auto& x : v)
        for (size_t i = 0; i < s.size(); ++i) s[i].add(int64_t(partsOf(x)[i]));
    return s;
};

// ---- sums and means of integers ------------------------------------------------------------------------------------------------------------

constexpr auto sums = []<class T, class R>(Status (*sum)(const T*, int, R*, int)) {
    for (int scale : kScales)
        reduces(
            sum, [=](const auto& v) { return scaled<R>(exactSums(v), scale); }, {lengthsAt(scale)}, scale);
};

TEST(Statistics, ScaledSumsAreOfTheExactSum) {
    each(sums, tevsSum_16s_Sfs, tevsSum_16s32s_Sfs, tevsSum_32s_Sfs, tevsSum_16sc_Sfs, tevsSum_16sc32sc_Sfs);
    const auto want = [](const auto& v) { return converted<double>(exactSums(v)); };
    for (auto make : {randomVector<int16_t>, lowest<int16_t>, highest}) reduces(tevsSum_16s64f, want, {lengthsFrom(1), make});
    reduces(tevsSum_16sc64fc, want);
    int16_t sum;
    ASSERT_EQ(tevsSum_16s_Sfs(std::vector<int16_t>(40000, 1).data(), 40000, &sum, 0), StatusOk);
    EXPECT_EQ(sum, 32767);
}

struct MeanRow {
    int32_t x[3];
    int len, scale, want16s, want32s;
};
constexpr MeanRow kMeans[] = {
    {{1, 2}, 2, 0, 2, 2},   // 1.5 and 0.5: ties to even
    {{0, 1}, 2, 0, 0, 0}, {{-1, -2}, 2, 0, -2, -2}, {{1, 1, 0}, 3, -1, 1, 1}, {{0, 0, 0}, 3, INT_MIN, 0, 0},
};

// Ties, and nothing else, come out at a half: the quotient is good to 2^-64 of itself.
constexpr auto means = []<class T, class R>(Status (*mean)(const T*, int, R*, int)) {
    using Bound = std::numeric_limits<Part<R>>;
    const auto want = [](int scale) {
        return [=](const std::vector<T>& v) {
            Want w;
            for (const ExactSum& s : exactSums(v)) {
                const long double m = std::nearbyint(std::ldexp(s.value(), -std::clamp(scale, -1000, 1000)) / (long double)v.size());
                w.parts.push_back(std::clamp<long double>(m, Bound::min(), Bound::max()));
            }
            return w;
        };
    };
    for (int scale : kScales) reduces(mean, want(scale), {lengthsAt(scale)}, scale);
};

TEST(Statistics, MeansRoundOnce) {
    for (const MeanRow& r : kMeans) {
        const int16_t x[3] = {int16_t(r.x[0]), int16_t(r.x[1]), int16_t(r.x[2])};
        int16_t got16;
        int32_t got32;
        ASSERT_EQ(tevsMean_16s_Sfs(x, r.len, &got16, r.scale), StatusOk);
        ASSERT_EQ(tevsMean_32s_Sfs(r.x, r.len, &got32, r.scale), StatusOk);
        EXPECT_TRUE(got16 == r.want16s && got32 == r.want32s) << r.x[0] << ", " << r.x[1] << " scale " << r.scale << ": " << got16 << ", " << got32;
    }
    each(means, tevsMean_16s_Sfs, tevsMean_32s_Sfs, tevsMean_16sc_Sfs);
}

// ---- sums and means of floats ----------------------------------------------------------------------------------------------------------------

constexpr long double kSingle = 0x1p-24L, kDouble = 0x1p-53L, kExtended = 0x1p-63L;
enum Of { Sum, Mean };

// Each addition is off by at most `unit` of the magnitudes.
template <class T, class R, class... Hint> void checkFloats(Of what, long double unit, Status (*f)(const T*, int, R*, Hint...), Hint... hint) {
    const auto want = [=](const std::vector<T>& v) {
        std::vector<long double> sums(kParts<T>);
        long double magnitudes = 0;
        for (const T& x : v)
            for (size_t i = 0; i < sums.size(); ++i) {
                sums[i] += partsOf(x)[i];
                magnitudes += std::abs(partsOf(x)[i]);
            }
        const long double n = (long double)v.size(), divisor = what == Mean ? n : 1;
        for (long double& s : sums) s /= divisor;
        return rounded<R>(sums, n * unit * magnitudes / divisor);
    };
    reduces(f, want, {}, hint...);
}

TEST(Statistics, FloatSumsAndMeans) {
    const auto check = [](Of what, long double unit, auto... hint) { return [=](auto f) { checkFloats(what, unit, f, hint...); }; };
    each(check(Sum, kSingle), tevsSum_32f_Fast, tevsSum_32fc_Fast);
    each(check(Sum, kExtended), tevsSum_32f_Accur, tevsSum_32fc_Accur);
    each(check(Sum, kDouble), tevsSum_64f, tevsSum_64fc);
    each(check(Mean, kDouble), tevsMean_64f, tevsMean_64fc);
    for (int hint : {-7, 0, 1, 2, 3}) {
        const long double unit = hint == HintFast ? kSingle : kExtended;
        each(check(Sum, unit, hint), tevsSum_32f, tevsSum_32fc);
        each(check(Mean, unit, hint), tevsMean_32f, tevsMean_32fc);
    }
}

// 2^70 swallows a 1 that meets it in a partial sum. Element n belongs to sum n mod 8, in what is left of a turn to sum 0.
TEST(Statistics, AccurateSumsKeepEightPartialSums) {
    struct {
        int len, big, minusBig, one;
        float want;
    } const rows[] = {
        {16, 0, 8, 3, 1},                       // 2^70 is gone before the sums meet
        {16, 0, 8, 15, 1},                      //
        {16, 0, 1, 2, 1},                       // likewise: sum 0 meets sum 1 first
        {16, 0, 2, 9, 0},                       // sum 1 comes between
        {16, 0, 8, 0, 0},  {11, 0, 1, 10, 0},   // the tail goes to sum 0
        {11, 8, 9, 10, 1}, {7, 0, 1, 2, 1},     // all of it tail
        {7, 0, 2, 1, 0},
    };
    for (const auto& r : rows) {
        std::vector<float> v(size_t(r.len));
        v[size_t(r.one)] = 1;
        v[size_t(r.big)] = 0x1p70f;
        v[size_t(r.minusBig)] = -0x1p70f;
        std::vector<Complex32f> z;
        for (float x : v) z.push_back({x, -x});
        float sum;
        Complex32f sums;
        ASSERT_EQ(tevsSum_32f(v.data(), r.len, &sum, HintAccurate), StatusOk);
        ASSERT_EQ(tevsSum_32fc_Accur(z.data(), r.len, &sums), StatusOk);
        EXPECT_TRUE(sum == r.want && fits({{r.want, 0 - r.want}}, sums)) << r.len << ": " << r.big << ", " << r.minusBig << ", " << r.one;
    }
}

// ---- deviations --------------------------------------------------------------------------------------------------------------------------------

constexpr auto deviation = [](const auto& v) {
    long double sum = 0, squares = 0;
    for (auto x : v) sum += x;
    const long double mean = sum / (long double)v.size();
    for (auto x : v) squares += (x - mean) * (x - mean);
    return std::sqrt(squares / (long double)(v.size() - 1));
};
constexpr auto deviations16s = []<class R>(Status (*f)(const int16_t*, int, R*, int)) {
    for (int scale : {INT_MIN, -20, -3, 0, 1, 4, 15, 16, 40, INT_MAX})
        for (auto make : {randomVector<int16_t>, lowest<int16_t>, highest}) {
            const auto want = [=](const auto& v) {
                const long double d = std::ldexp(deviation(v), -std::clamp(scale, -1000, 1000));
                return rounded<R>({std::min<long double>(d, std::numeric_limits<R>::max())}, 1e-9L);
            };
            reduces(f, want, {scale == 0 ? lengthsFrom(2) : std::vector<int>{2, 3, 61, 1003}, make}, scale);
        }
};
template <class T, class... Hint> void checkDeviation(long double unit, Status (*f)(const T*, int, T*, Hint...), Hint... hint) {
    reduces(
        f, [=](const auto& v) { return rounded<T>({deviation(v)}, unit * (long double)v.size()); }, {lengthsFrom(2)}, hint...);
}

TEST(Statistics, Deviations) {
    each(deviations16s, tevsStdDev_16s_Sfs, tevsStdDev_16s32s_Sfs);
    checkDeviation(0x1p-22L, tevsStdDev_32f_Fast);
    checkDeviation(0x1p-60L, tevsStdDev_32f_Accur);
    checkDeviation(0x1p-52L, tevsStdDev_64f);
    for (int hint : {-1, 0, 1, 2}) checkDeviation(hint == HintFast ? 0x1p-22L : 0x1p-60L, tevsStdDev_32f, hint);

    struct {
        std::vector<int16_t> x;
        int scale, want;
    } const rows[] = {
        {{1, 1, 1}, 0, 0},   {{-32768, 32767}, 0, 32767},         {{-32768, 32767}, 1, 23170},         {{0, 1, 0, 1, 0}, -4, 9},
        {{2, -1, -1}, 0, 2}, {{3, 0, 0, 0, 0, 0, 0, 0, 0}, 1, 0}, {{9, 0, 0, 0, 0, 0, 0, 0, 0}, 1, 2},   // 3 / 2: the tie goes to even
    };
    for (const auto& r : rows) {
        int16_t got;
        ASSERT_EQ(tevsStdDev_16s_Sfs(r.x.data(), int(r.x.size()), &got, r.scale), StatusOk);
        EXPECT_EQ(got, r.want) << r.x[0] << ", " << r.x[1] << " scale " << r.scale;
    }
    const float close[4] = {16777216, 16777216, 16777218, 16777216};   // the first two do not deviate, all four by 1
    const double far[3] = {1e15, 1e15 + 1, 1e15 + 2};
    float got[3] = {77, 77, 77};
    double got64 = 77;
    // Of one element there is none.
    EXPECT_EQ(tevsStdDev_16s_Sfs(rows[0].x.data(), 1, reinterpret_cast<int16_t*>(got), 0), StatusBadSize);
    for (int hint : {HintFast, HintAccurate}) EXPECT_EQ(tevsStdDev_32f(close, 1, got, hint), StatusBadSize);
    EXPECT_EQ(tevsStdDev_64f(far, 1, &got64), StatusBadSize);
    EXPECT_TRUE(got[0] == 77 && got64 == 77);
    EXPECT_EQ(tevsStdDev_32f_Fast(close, 2, &got[0]) | tevsStdDev_32f_Accur(close, 2, &got[1]) | tevsStdDev_32f(close, 4, &got[2], HintNone), StatusOk);
    EXPECT_TRUE(got[0] == 0 && got[1] == 0 && got[2] == 1) << got[0] << ", " << got[1] << ", " << got[2];
    EXPECT_EQ(tevsStdDev_64f(far, 3, &got64), StatusOk);
    EXPECT_NEAR(got64, 1, 1e-12);
}

// ---- norms ---------------------------------------------------------------------------------------------------------------------------------------

enum Kind { Inf, L1, L2, L2Sqr };

// The norm of a - b in extended precision.
template <class T> long double normOf(Kind kind, const std::vector<T>& a, const std::vector<T>& b) {
    long double norm = 0;
    for (size_t i = 0; i < a.size(); ++i) {
        const auto x = partsOf(a[i]), y = partsOf(b[i]);
        const long double m = kParts<T> == 1 ? std::abs(x[0] - y[0]) : std::hypot(x[0] - y[0], x.back() - y.back());
        norm = kind == Inf ? std::max(norm, m) : norm + (kind == L1 ? m : m * m);
    }
    return kind == L2 ? std::sqrt(norm) : norm;
}
// Whose squares leave the range of their type, or are zeros.
template <class T, int Exponent> std::vector<T> times2To(size_t n) {
    return withParts(randomVector<T>(n), [](Part<T>& part) { part = std::ldexp(-std::fabs(part), Exponent); });
}

// Of one vector and of a difference. Of floats: off by 2^-52 for each addition, of those with results in single precision by 2^-24 for each in a lane of a block. Of integers: exact but for the result's rounding, and of a scaled norm the exact
// one is scaled, or its root in double precision.
template <class T, class R, class... Scale>
void checkNorm(Kind kind, Status (*one)(const T*, int, R*, Scale...), Status (*difference)(const T*, const T*, int, R*, Scale...), Scale... scale) {
    const auto want = [=](const std::vector<T>& a, const std::vector<T>& b) {
        const long double norm = normOf(kind, a, b);
        if constexpr (sizeof...(Scale) > 0) {
            if (kind == L2) return exactly(R(std::min(std::nearbyint(std::ldexp(double(norm), -std::clamp(scale..., -1000, 1000))), 2147483647.0)));
            ExactSums s(1);
            s[0].add(int64_t(norm));
            return scaled<R>(s, scale...);
        } else {
            const bool exact = std::is_integral_v<T> && kind != L2;
            const auto n = (long double)a.size();
            const long double error = std::is_same_v<T, float> && kind != Inf ? (std::min(n, 8192.0L) / 16 + 8) * 0x1p-24L : (n + 1) * 0x1p-52L;
            return exact ? exactly(R(norm)) : rounded<R>({norm}, norm * error);
        }
    };
    const auto sweep = [=](Make<T> a, Make<T> b) {
        const std::vector<int> lengths = lengthsAt((0 + ... + scale));
        reduces(
            one, [=](const auto& v) { return want(v, std::vector<T>(v.size())); }, {lengths, a}, scale...);
        reduces(difference, want, {lengths, a, b}, scale...);
    };
    sweep(randomVector<T>, randomVector<T>);
    if constexpr (std::is_integral_v<T>) sweep(lowest<T>, highest);
    if constexpr (std::is_same_v<T, float>) {
        sweep(times2To<T, -100>, times2To<T, -100>);
        sweep(times2To<T, 100>, times2To<T, 100>);
    }
    if constexpr (std::is_same_v<Part<T>, double>) {
        sweep(times2To<T, -1000>, times2To<T, -1000>);
        sweep(times2To<T, 1000>, times2To<T, 1000>);
    }
    if constexpr (std::is_floating_point_v<T>) sweep(times2To<T, -3000>, [](size_t n) { return std::vector<T>(n); });   // -0, whose magnitude has no sign
}

#define NORM(kind, type, ...) checkNorm(kind, tevsNorm_##kind##_##type, tevsNormDiff_##kind##_##type __VA_OPT__(, ) __VA_ARGS__);
TEST(Statistics, Norms){NORM(Inf, 32f) NORM(Inf, 64f) NORM(Inf, 16s32f) NORM(Inf, 32fc32f) NORM(Inf, 64fc64f) NORM(L1, 32f) NORM(L1, 64f) NORM(L1, 16s32f)
                            NORM(L1, 32fc64f) NORM(L1, 64fc64f) NORM(L2, 32f) NORM(L2, 64f) NORM(L2, 16s32f) NORM(L2, 32fc64f) NORM(L2, 64fc64f)}

TEST(Statistics, ScaledNorms) {
    for (int scale : kScales) {
        NORM(Inf, 16s32s_Sfs, scale) NORM(L1, 16s32s_Sfs, scale) NORM(L1, 16s64s_Sfs, scale) NORM(L2, 16s32s_Sfs, scale) NORM(L2Sqr, 16s64s_Sfs, scale)
    }
}

TEST(Statistics, NormsOfSpecialValues) {
    for (double special : {double(INFINITY), double(NAN), 0.0}) {
        const double x[2] = {0, special};
        double got = 77;
        tevsNorm_L2_64f(x, 2, &got);
        EXPECT_TRUE(fits({{special}}, got));
    }
}

// ---- counts and logarithms -----------------------------------------------------------------------------------------------------------------------

TEST(Statistics, CountsBetweenExclusiveBounds) {
    const struct { int32_t lower, upper; } bounds[] = {{1, 3}, {-1, 1}, {INT_MIN, INT_MAX}, {INT_MAX, INT_MIN}, {5, 5}, {0, INT_MAX}};
    for (const auto& b : bounds) {
        const auto between = [=](int32_t x) { return b.lower < x && x < b.upper; };
        reduces(
            tevsCountInRange_32s, [=](const auto& v) { return exactly(int(std::count_if(v.begin(), v.end(), between))); }, {}, b.lower, b.upper);
    }
}

template <class T> std::vector<T> positive(size_t n) {
    std::vector<T> v(n);
    for (T& x : v) {
        if constexpr (std::is_integral_v<T>)
            x = T(1 + generator()() % 32767);
        else
            x = std::ldexp(T(1.5) + randomValue<T>() / 2, int(generator()() % 240) - 145);   // floats that are subnormal too
    }
    return v;
}
template <class T> std::vector<T> nearOne(size_t n) {
    std::vector<T> v(n);
    for (T& x : v) x = 1 + std::ldexp(randomValue<T>(), -std::numeric_limits<T>::digits * 2 / 3);   // logarithms that a product's rounding would blur
    return v;
}

template <class T, class R> void checkSumLn(Status (*f)(const T*, int, R*)) {
    const auto want = [](const std::vector<T>& v) {
        long double sum = 0, magnitudes = 0;
        for (T x : v) {
            sum += std::log((long double)x);
            magnitudes += std::abs(std::log((long double)x));
        }
        return rounded<R>({sum}, magnitudes * 0x1p-50L);
    };
    reduces(f, want, {lengthsFrom(1), positive<T>});
    if constexpr (std::is_floating_point_v<T>) reduces(f, want, {lengthsFrom(1), nearOne<T>});

    // The first element that has no logarithm decides.
    constexpr T kBad[] = {0, T(-1)};
    for (int len : {1, 5, 40, 511, 512, 513, 1500})
        for (int at = 0; at < len; at += 1 + len / 7)
            for (int bad : {0, 1})
                for (int next : {0, 1}) {
                    std::vector<T> v = positive<T>(size_t(len));
                    if (at + 1 < len) v[size_t(at) + 1] = kBad[next];
                    v[size_t(at)] = kBad[bad];
                    R got = 77;
                    ASSERT_EQ(f(v.data(), len, &got), bad ? WarnLnNegArg : WarnLnZeroArg) << len << " at " << at;
                    EXPECT_TRUE(bad ? std::isnan(got) && !std::signbit(got) : got == R(INFINITY)) << len << " at " << at;
                }
}

TEST(Statistics, SumsOfLogarithms) {
    checkSumLn(tevsSumLn_32f);
    checkSumLn(tevsSumLn_64f);
    checkSumLn(tevsSumLn_32f64f);
    checkSumLn(tevsSumLn_16s32f);
    const struct {
        double x[2];
        Status status;
        double want;
    } rows[] = {
        {{1, 1}, StatusOk, 0},
        {{INFINITY, 1}, StatusOk, INFINITY},
        {{NAN, 1}, StatusOk, NAN},
        {{-0.0, 1}, WarnLnZeroArg, INFINITY},
        {{NAN, -1}, WarnLnNegArg, NAN},
        {{-INFINITY, 0}, WarnLnNegArg, NAN},
        {{0x1p-1074, 0x1p1023}, StatusOk, -51 * 0.69314718055994530942},
        {{0x1.fffffffffffffp1023, 0x1.fffffffffffffp1023}, StatusOk, 2048 * 0.69314718055994530942},
    };
    for (const auto& r : rows) {
        double got = 77;
        EXPECT_EQ(tevsSumLn_64f(r.x, 2, &got), r.status) << r.x[0];
        EXPECT_TRUE(fits({{r.want}, std::abs(r.want) * 1e-15L}, got)) << r.x[0];
    }
}

}   // namespace
