#include <climits>
#include <cmath>

#include "support/exact.h"
#include "support/reduction.h"
#include "tevcore.h"

using namespace test;

namespace {

constexpr int kScales[] = {INT_MIN, -64, -63, -20, -3, 0, 1, 2, 5, 17, 31, 32, 33, 47, 62, 63, 64, INT_MAX};

template <class T> struct PartOf { using type = T; };
template <> struct PartOf<Complex16s> { using type = int16_t; };
template <> struct PartOf<Complex32s> { using type = int32_t; };

template <class T> std::vector<T> allOf(T x, size_t n) { return std::vector<T>(n, x); }
std::vector<int16_t> lowest(size_t n) { return allOf<int16_t>(-32768, n); }
std::vector<int16_t> highest(size_t n) { return allOf<int16_t>(32767, n); }

// What f(element) gives, summed exactly, part by part.
template <class T> std::vector<ExactSum> exactSums(const std::vector<T>& v) {
    std::vector<ExactSum> s(partsOf(v[0]).size());
    for (const T& x : v) {
        const auto parts = partsOf(x);
        for (size_t i = 0; i < parts.size(); ++i) s[i].add(int64_t(parts[i]));
    }
    return s;
}

// ---- sums and means of integers ------------------------------------------------------------------------------------------------------------

template <class T, class R> using Scaled = Status (*)(const T*, int, R*, int);

template <class T, class R> void checkSum(Scaled<T, R> sum) {
    using D = typename PartOf<R>::type;
    for (int scale : kScales)
        sweepReduction1<T, R>([=](const T* p, int len, R* r) { return sum(p, len, r, scale); },
                              [=](const std::vector<T>& v) {
                                  Want w;
                                  for (const ExactSum& s : exactSums(v)) w.parts.push_back(s.template scaled<D>(scale));
                                  return w;
                              },
                              randomVector<T>, lengthsAt(scale));
}

TEST(Statistics, ScaledSumsAreOfTheExactSum) {
    checkSum<int16_t, int16_t>(tevsSum_16s_Sfs);
    checkSum<int16_t, int32_t>(tevsSum_16s32s_Sfs);
    checkSum<int32_t, int32_t>(tevsSum_32s_Sfs);
    checkSum<Complex16s, Complex16s>(tevsSum_16sc_Sfs);
    checkSum<Complex16s, Complex32s>(tevsSum_16sc32sc_Sfs);
    const auto want = [](const auto& v) {
        Want w;
        for (const ExactSum& s : exactSums(v)) w.parts.push_back(s.value());
        return w;
    };
    for (auto make : {randomVector<int16_t>, lowest, highest}) sweepReduction1<int16_t, double>(tevsSum_16s64f, want, make);
    sweepReduction1<Complex16s, Complex64f>(tevsSum_16sc64fc, want);
    int16_t sum;
    ASSERT_EQ(tevsSum_16s_Sfs(allOf<int16_t>(1, 40000).data(), 40000, &sum, 0), StatusOk);
    EXPECT_EQ(sum, 32767);
}

struct MeanRow {
    int32_t x[3];
    int len, scale, want16s, want32s;
};
constexpr MeanRow kMeans[] = {
    {{1, 2}, 2, 0, 2, 2},   // 1.5 and 0.5: ties to even
    {{0, 1}, 2, 0, 0, 0},
    {{-1, -2}, 2, 0, -2, -2},
    {{-1, 0}, 2, 0, 0, 0},
    {{5, 5, 6}, 3, 0, 5, 5},
    {{1, 1, 0}, 3, -1, 1, 1},
    {{1, 0, 0}, 3, -20, 32767, 349525},
    {{-1, 0, 0}, 3, -62, -32768, INT_MIN},
    {{1, 0, 0}, 3, INT_MIN, 32767, INT_MAX},
    {{0, 0, 0}, 3, INT_MIN, 0, 0},
    {{32767, 32767, 32767}, 3, 15, 1, 1},
    {{32767, 32767, 32767}, 3, INT_MAX, 0, 0},
};

template <class T, class R> void checkMean(Scaled<T, R> mean) {
    using D = typename PartOf<R>::type;
    for (int scale : kScales)
        sweepReduction1<T, R>([=](const T* p, int len, R* r) { return mean(p, len, r, scale); },
                              [=](const std::vector<T>& v) {
                                  Want w;
                                  for (const ExactSum& s : exactSums(v)) {
                                      // Ties, and nothing else, come out at a half: the quotient is good to 2^-64 of itself.
                                      const long double m = std::nearbyint(std::ldexp(s.value(), -std::clamp(scale, -1000, 1000)) / (long double)v.size());
                                      w.parts.push_back(std::clamp<long double>(m, std::numeric_limits<D>::min(), std::numeric_limits<D>::max()));
                                  }
                                  return w;
                              },
                              randomVector<T>, lengthsAt(scale));
}

TEST(Statistics, MeansRoundOnce) {
    for (const MeanRow& r : kMeans) {
        const int16_t x[3] = {int16_t(r.x[0]), int16_t(r.x[1]), int16_t(r.x[2])};
        int16_t got16;
        int32_t got32;
        ASSERT_EQ(tevsMean_16s_Sfs(x, r.len, &got16, r.scale), StatusOk);
        EXPECT_EQ(got16, r.want16s) << r.x[0] << ", " << r.x[1] << " scale " << r.scale;
        ASSERT_EQ(tevsMean_32s_Sfs(r.x, r.len, &got32, r.scale), StatusOk);
        EXPECT_EQ(got32, r.want32s) << r.x[0] << ", " << r.x[1] << " scale " << r.scale;
    }
    checkMean<int16_t, int16_t>(tevsMean_16s_Sfs);
    checkMean<int32_t, int32_t>(tevsMean_32s_Sfs);
    checkMean<Complex16s, Complex16s>(tevsMean_16sc_Sfs);
}

// ---- sums and means of floats ----------------------------------------------------------------------------------------------------------------

// The sum over `divisor` (0: over the length), off by at most `perElement` of the magnitudes for each addition and by half a unit of R.
template <class T, class R, class Call> void checkFloatSum(Call call, long double perElement, bool mean) {
    sweepReduction1<T, R>(call, [=](const std::vector<T>& v) {
        const long double divisor = mean ? (long double)v.size() : 1;
        Want w{std::vector<long double>(partsOf(v[0]).size())};
        long double magnitudes = 0;
        for (const T& x : v)
            for (size_t i = 0; i < w.parts.size(); ++i) {
                w.parts[i] += partsOf(x)[i] / divisor;
                magnitudes += std::abs(partsOf(x)[i]) / divisor;
            }
        const bool single = sizeof(R) / w.parts.size() == 4;
        for (long double p : w.parts) w.tolerance = std::max(w.tolerance, std::abs(p) * (single ? 0x1p-24L : 0x1p-53L));
        w.tolerance += magnitudes * perElement * (long double)v.size();
        return w;
    });
}
template <class T, class R> auto hinted(Status (*f)(const T*, int, R*, int), int hint) {
    return [=](const T* p, int len, R* r) { return f(p, len, r, hint); };
}

TEST(Statistics, FloatSumsAndMeans) {
    constexpr long double kSingle = 0x1p-24L, kDouble = 0x1p-53L, kExtended = 0x1p-63L;
    checkFloatSum<float, float>(tevsSum_32f_Fast, kSingle, false);
    checkFloatSum<float, float>(tevsSum_32f_Accur, kExtended, false);
    checkFloatSum<Complex32f, Complex32f>(tevsSum_32fc_Fast, kSingle, false);
    checkFloatSum<Complex32f, Complex32f>(tevsSum_32fc_Accur, kExtended, false);
    checkFloatSum<double, double>(tevsSum_64f, kDouble, false);
    checkFloatSum<Complex64f, Complex64f>(tevsSum_64fc, kDouble, false);
    checkFloatSum<double, double>(tevsMean_64f, kDouble, true);
    checkFloatSum<Complex64f, Complex64f>(tevsMean_64fc, kDouble, true);
    for (int hint : {-7, 0, 1, 2, 3}) {
        const long double each = hint == HintFast ? kSingle : kExtended;
        checkFloatSum<float, float>(hinted(tevsSum_32f, hint), each, false);
        checkFloatSum<Complex32f, Complex32f>(hinted(tevsSum_32fc, hint), each, false);
        checkFloatSum<float, float>(hinted(tevsMean_32f, hint), each, true);
        checkFloatSum<Complex32f, Complex32f>(hinted(tevsMean_32fc, hint), each, true);
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
        EXPECT_EQ(sum, r.want) << r.len << ": " << r.big << ", " << r.minusBig << ", " << r.one;
        ASSERT_EQ(tevsSum_32fc_Accur(z.data(), r.len, &sums), StatusOk);
        EXPECT_TRUE(fits({{r.want, -r.want}}, sums));
    }
}

// ---- deviations --------------------------------------------------------------------------------------------------------------------------------

template <class T> long double deviation(const std::vector<T>& v) {
    long double sum = 0, squares = 0;
    for (T x : v) sum += x;
    const long double mean = sum / (long double)v.size();
    for (T x : v) squares += (x - mean) * (x - mean);
    return std::sqrt(squares / (long double)(v.size() - 1));
}
template <class R> void checkDeviation16s(Scaled<int16_t, R> f) {
    for (int scale : {INT_MIN, -20, -3, 0, 1, 4, 15, 16, 40, INT_MAX})
        for (auto make : {randomVector<int16_t>, lowest, highest})
            sweepReduction1<int16_t, R>([=](const int16_t* p, int len, R* r) { return f(p, len, r, scale); },
                                        [=](const std::vector<int16_t>& v) {
                                            const long double d = std::ldexp(deviation(v), -std::clamp(scale, -1000, 1000));
                                            return Want{{std::min<long double>(d, std::numeric_limits<R>::max())}, 0.5L + 1e-9L};
                                        },
                                        make, scale == 0 ? lengthsFrom(2) : std::vector<int>{2, 3, 61, 1003});
}
template <class T, class Call> void checkDeviation(Call call, long double perElement) {
    sweepReduction1<T, T>(
        call,
        [=](const std::vector<T>& v) {
            return Want{{deviation(v)}, perElement * (long double)v.size() + (sizeof(T) == 4 ? 0x1p-24L : 0x1p-52L)};
        },
        randomVector<T>, lengthsFrom(2));
}

TEST(Statistics, Deviations) {
    checkDeviation16s<int16_t>(tevsStdDev_16s_Sfs);
    checkDeviation16s<int32_t>(tevsStdDev_16s32s_Sfs);
    checkDeviation<float>(tevsStdDev_32f_Fast, 0x1p-22L);
    checkDeviation<float>(tevsStdDev_32f_Accur, 0x1p-60L);
    checkDeviation<double>(tevsStdDev_64f, 0x1p-52L);
    for (int hint : {-1, 0, 1, 2}) checkDeviation<float>(hinted(tevsStdDev_32f, hint), hint == HintFast ? 0x1p-22L : 0x1p-60L);

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
    const float same[3] = {1, 1, 1}, close[4] = {16777216, 16777216, 16777218, 16777216};
    for (auto f : {tevsStdDev_32f_Fast, tevsStdDev_32f_Accur}) {
        float got;
        ASSERT_EQ(f(same, 3, &got), StatusOk);
        EXPECT_EQ(got, 0);
    }
    float got;
    ASSERT_EQ(tevsStdDev_32f(close, 4, &got, HintNone), StatusOk);
    EXPECT_EQ(got, 1);
    const double far[3] = {1e15, 1e15 + 1, 1e15 + 2};
    double got64;
    ASSERT_EQ(tevsStdDev_64f(far, 3, &got64), StatusOk);
    EXPECT_NEAR(got64, 1, 1e-12);
}

// ---- norms ---------------------------------------------------------------------------------------------------------------------------------------

enum Kind { Inf, L1, L2, L2Sqr };
template <class T, class R> struct Norm {
    Kind kind;
    Status (*one)(const T*, int, R*);
    Status (*difference)(const T*, const T*, int, R*);
};

// The norm of a - b in extended precision.
template <class T> long double normOf(Kind kind, const std::vector<T>& a, const std::vector<T>& b) {
    long double norm = 0;
    for (size_t i = 0; i < a.size(); ++i) {
        const auto x = partsOf(a[i]), y = partsOf(b[i]);
        long double m = std::abs(x[0] - y[0]);
        if (x.size() > 1) m = std::hypot(x[0] - y[0], x.back() - y.back());
        norm = kind == Inf ? std::max(norm, m) : norm + (kind == L1 ? m : m * m);
    }
    return kind == L2 ? std::sqrt(norm) : norm;
}
// Of floats: off by 2^-52 for each addition and by half a unit of the result. Of integers: exact but for the result's rounding.
template <class T, class R> void checkNorm(const Norm<T, R>& n) {
    const auto want = [=](const std::vector<T>& a, const std::vector<T>& b) {
        const long double norm = normOf(n.kind, a, b);
        const bool exact = std::is_integral_v<T> && n.kind != L2;
        return exact ? exactly(R(norm)) : Want{{norm}, norm * ((long double)a.size() * 0x1p-52L + (sizeof(R) == 4 ? 0x1p-24L : 0x1p-52L))};
    };
    sweepReduction1<T, R>(n.one, [=](const std::vector<T>& v) { return want(v, std::vector<T>(v.size())); });
    sweepReduction<T, T, R>(n.difference, want);
}

TEST(Statistics, NormsOfFloats) {
    for (const Norm<float, float>& n : {Norm<float, float>{Inf, tevsNorm_Inf_32f, tevsNormDiff_Inf_32f},
                                        {L1, tevsNorm_L1_32f, tevsNormDiff_L1_32f},
                                        {L2, tevsNorm_L2_32f, tevsNormDiff_L2_32f}})
        checkNorm(n);
    for (const Norm<double, double>& n : {Norm<double, double>{Inf, tevsNorm_Inf_64f, tevsNormDiff_Inf_64f},
                                          {L1, tevsNorm_L1_64f, tevsNormDiff_L1_64f},
                                          {L2, tevsNorm_L2_64f, tevsNormDiff_L2_64f}})
        checkNorm(n);
    checkNorm(Norm<Complex32f, float>{Inf, tevsNorm_Inf_32fc32f, tevsNormDiff_Inf_32fc32f});
    for (const Norm<Complex32f, double>& n :
         {Norm<Complex32f, double>{L1, tevsNorm_L1_32fc64f, tevsNormDiff_L1_32fc64f}, {L2, tevsNorm_L2_32fc64f, tevsNormDiff_L2_32fc64f}})
        checkNorm(n);
    for (const Norm<Complex64f, double>& n : {Norm<Complex64f, double>{Inf, tevsNorm_Inf_64fc64f, tevsNormDiff_Inf_64fc64f},
                                              {L1, tevsNorm_L1_64fc64f, tevsNormDiff_L1_64fc64f},
                                              {L2, tevsNorm_L2_64fc64f, tevsNormDiff_L2_64fc64f}})
        checkNorm(n);
}

// Squares that no double holds.
TEST(Statistics, NormsOfDoublesLeaveTheRangeOnTheWay) {
    for (double unit : {1e-300, 1e-200, 1e200, 1e300}) {
        const double x[4] = {3 * unit, 0, -4 * unit, 0}, zero[4] = {};
        const Complex64f z[3] = {{3 * unit, 0}, {3 * unit, -4 * unit}, {0, 0}}, none[3] = {};
        double got[9];
        tevsNorm_L2_64f(x, 4, &got[0]);
        tevsNormDiff_L2_64f(zero, x, 4, &got[1]);
        tevsNorm_Inf_64fc64f(z, 3, &got[2]);
        tevsNormDiff_Inf_64fc64f(none, z, 3, &got[3]);
        tevsNorm_L2_64fc64f(z + 1, 2, &got[4]);
        tevsNormDiff_L2_64fc64f(z + 1, none, 2, &got[5]);
        tevsNorm_L1_64fc64f(z, 3, &got[6]);
        tevsNormDiff_L1_64fc64f(z, none, 3, &got[7]);
        for (int i = 0; i < 8; ++i) EXPECT_NEAR(got[i] / unit, i < 6 ? 5 : 8, 1e-14) << i << " unit " << unit;
        tevsNorm_L2_64fc64f(none, 3, &got[8]);
        EXPECT_EQ(got[8], 0);
    }
    const double inf[2] = {1, INFINITY}, nan[2] = {1, NAN};
    double got;
    tevsNorm_L2_64f(inf, 2, &got);
    EXPECT_EQ(got, INFINITY);
    tevsNorm_L2_64f(nan, 2, &got);
    EXPECT_TRUE(std::isnan(got));
}

template <class R> struct ScaledNorm {
    Kind kind;
    Scaled<int16_t, R> one;
    Status (*difference)(const int16_t*, const int16_t*, int, R*, int);

    void check() const {
        for (int scale : kScales) {
            const auto want = [=, kind = kind](const std::vector<int16_t>& a, const std::vector<int16_t>& b) {
                if (kind == L2) {   // the root in double precision is scaled
                    const double root = std::sqrt(double(normOf(L2Sqr, a, b)));
                    return exactly(R(std::min(std::nearbyint(std::ldexp(root, -std::clamp(scale, -1000, 1000))), 2147483647.0)));
                }
                ExactSum s;
                s.add(int64_t(normOf(kind, a, b)));
                return exactly(s.scaled<R>(scale));
            };
            const auto call = [=, f = one](const int16_t* p, int len, R* r) { return f(p, len, r, scale); };
            const auto callBoth = [=, f = difference](const int16_t* a, const int16_t* b, int len, R* r) { return f(a, b, len, r, scale); };
            for (auto make : {randomVector<int16_t>, lowest}) {
                sweepReduction1<int16_t, R>(
                    call, [=](const auto& v) { return want(v, std::vector<int16_t>(v.size())); }, make, lengthsAt(scale));
                sweepReduction<int16_t, int16_t, R>(callBoth, want, make, highest, lengthsAt(scale));
            }
        }
    }
};

TEST(Statistics, NormsOf16Bits) {
    for (const Norm<int16_t, float>& n : {Norm<int16_t, float>{Inf, tevsNorm_Inf_16s32f, tevsNormDiff_Inf_16s32f},
                                          {L1, tevsNorm_L1_16s32f, tevsNormDiff_L1_16s32f},
                                          {L2, tevsNorm_L2_16s32f, tevsNormDiff_L2_16s32f}})
        checkNorm(n);
    ScaledNorm<int32_t>{Inf, tevsNorm_Inf_16s32s_Sfs, tevsNormDiff_Inf_16s32s_Sfs}.check();
    ScaledNorm<int32_t>{L1, tevsNorm_L1_16s32s_Sfs, tevsNormDiff_L1_16s32s_Sfs}.check();
    ScaledNorm<int64_t>{L1, tevsNorm_L1_16s64s_Sfs, tevsNormDiff_L1_16s64s_Sfs}.check();
    ScaledNorm<int32_t>{L2, tevsNorm_L2_16s32s_Sfs, tevsNormDiff_L2_16s32s_Sfs}.check();
    ScaledNorm<int64_t>{L2Sqr, tevsNorm_L2Sqr_16s64s_Sfs, tevsNormDiff_L2Sqr_16s64s_Sfs}.check();
}

// ---- counts and logarithms -----------------------------------------------------------------------------------------------------------------------

TEST(Statistics, CountsBetweenExclusiveBounds) {
    const struct { int32_t lower, upper; } bounds[] = {{1, 3}, {-1, 1}, {INT_MIN, INT_MAX}, {INT_MAX, INT_MIN}, {5, 5}, {0, INT_MAX}};
    for (const auto& b : bounds)
        sweepReduction1<int32_t, int>([=](const int32_t* p, int len, int* r) { return tevsCountInRange_32s(p, len, r, b.lower, b.upper); },
                                      [=](const std::vector<int32_t>& v) {
                                          return exactly(int(std::count_if(v.begin(), v.end(), [=](int32_t x) { return b.lower < x && x < b.upper; })));
                                      });
    const int32_t x[3] = {1, 2, 3};
    int count;
    ASSERT_EQ(tevsCountInRange_32s(x, 3, &count, 1, 3), StatusOk);
    EXPECT_EQ(count, 1);
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
        return Want{{sum}, magnitudes * 0x1p-50L + std::abs(sum) * (sizeof(R) == 4 ? 0x1p-24L : 0x1p-52L)};
    };
    sweepReduction1<T, R>(f, want, positive<T>);
    if constexpr (std::is_floating_point_v<T>) sweepReduction1<T, R>(f, want, nearOne<T>);

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
    checkSumLn<float, float>(tevsSumLn_32f);
    checkSumLn<double, double>(tevsSumLn_64f);
    checkSumLn<float, double>(tevsSumLn_32f64f);
    checkSumLn<int16_t, float>(tevsSumLn_16s32f);
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

// A magnitude has no sign, not even of 0.
template <class T> void normOfNegativeZeros(Status (*norm)(const T*, int, T*), Status (*difference)(const T*, const T*, int, T*)) {
    const std::vector<T> zeros(70, T(0)), negative(70, -T(0));
    for (int len = 1; len <= 70; ++len) {
        T got = 1;
        EXPECT_EQ(norm(negative.data(), len, &got), StatusOk);
        EXPECT_TRUE(got == 0 && !std::signbit(got)) << len;
        EXPECT_EQ(difference(negative.data(), zeros.data(), len, &got), StatusOk);
        EXPECT_TRUE(got == 0 && !std::signbit(got)) << len;
    }
}
TEST(Statistics, NormsOfZerosArePositive) {
    normOfNegativeZeros(tevsNorm_Inf_32f, tevsNormDiff_Inf_32f);
    normOfNegativeZeros(tevsNorm_Inf_64f, tevsNormDiff_Inf_64f);
}

// ---- frame -------------------------------------------------------------------------------------------------------------------------------------

TEST(Statistics, ResultsIgnoreAndKeepTheCallersRounding) {
    const std::vector<float> f = randomVector<float>(103);
    const std::vector<int16_t> s = positive<int16_t>(103);
    const auto all = [&] {
        std::vector<double> r(11);
        float x;
        tevsSum_32f_Fast(f.data(), 103, &x), r[0] = x;
        tevsSum_32f_Accur(f.data(), 103, &x), r[1] = x;
        tevsNorm_L2_16s32f(s.data(), 103, &x), r[2] = x;
        tevsNorm_L1_32f(f.data(), 103, &x), r[3] = x;
        tevsDotProd_16s32f(s.data(), s.data(), 103, &x), r[4] = x;
        tevsDotProd_32f(f.data(), f.data(), 103, &x), r[5] = x;
        tevsSumLn_16s32f(s.data(), 103, &x), r[6] = x;
        tevsStdDev_32f_Accur(f.data(), 103, &x), r[7] = x;
        tevsMean_32f(f.data(), 103, &x, HintFast), r[8] = x;
        tevsSumLn_64f(std::vector<double>(7, 3.0).data(), 7, &r[9]);
        int32_t i;
        tevsNorm_L2_16s32s_Sfs(s.data(), 103, &i, 2), r[10] = i;
        return r;
    };
    const std::vector<double> want = all();
    for (uint32_t rc : {1u, 2u, 3u}) {
        uint16_t x87, down;
        asm volatile("fnstcw %0" : "=m"(x87));
        down = uint16_t((x87 & 0xf0ff) | rc << 10);   // and single precision
        const uint32_t before = tev_set_rc_ssx(rc);
        asm volatile("fldcw %0" : : "m"(down));
        const std::vector<double> got = all();
        uint16_t left;
        asm volatile("fnstcw %0" : "=m"(left));
        asm volatile("fldcw %0" : : "m"(x87));
        const uint32_t after = tev_set_cw_ssx(before);
        EXPECT_TRUE(same(want, got)) << rc;
        EXPECT_EQ(left, down);
        EXPECT_EQ((after >> 13) & 3, rc);
    }
}

TEST(Statistics, RejectBadArguments) {
    const int16_t a[2] = {5, 6};
    const float f[2] = {5, 6};
    int16_t r = 77;
    float x = 77;
    int count = 77;
    const int32_t w[1] = {5};
    for (int len : {0, -1, INT_MIN}) {
        EXPECT_EQ(tevsSum_16s_Sfs(nullptr, len, &r, 0), StatusNullPtr);
        EXPECT_EQ(tevsSum_16s_Sfs(a, len, nullptr, 0), StatusNullPtr);
        EXPECT_EQ(tevsSum_16s_Sfs(a, len, &r, 0), StatusBadSize);
        for (int hint : {HintFast, HintAccurate}) {
            EXPECT_EQ(tevsSum_32f(f, len, nullptr, hint), StatusNullPtr);
            EXPECT_EQ(tevsSum_32f(f, len, &x, hint), StatusBadSize);
            EXPECT_EQ(tevsMean_32f(nullptr, len, &x, hint), StatusNullPtr);
            EXPECT_EQ(tevsMean_32f(f, len, &x, hint), StatusBadSize);
            EXPECT_EQ(tevsStdDev_32f(f, len, nullptr, hint), StatusNullPtr);
        }
        EXPECT_EQ(tevsNormDiff_L1_32f(f, nullptr, len, &x), StatusNullPtr);
        EXPECT_EQ(tevsNormDiff_L1_32f(f, f, len, &x), StatusBadSize);
        EXPECT_EQ(tevsCountInRange_32s(w, len, nullptr, 0, 9), StatusNullPtr);
        EXPECT_EQ(tevsCountInRange_32s(w, len, &count, 0, 9), StatusBadSize);
        EXPECT_EQ(tevsSumLn_32f(f, len, nullptr), StatusNullPtr);
        EXPECT_EQ(tevsSumLn_32f(f, len, &x), StatusBadSize);
    }
    double d = 77;
    EXPECT_EQ(tevsStdDev_16s_Sfs(a, 1, &r, 0), StatusBadSize);
    for (int hint : {HintFast, HintAccurate}) EXPECT_EQ(tevsStdDev_32f(f, 1, &x, hint), StatusBadSize);
    EXPECT_EQ(tevsStdDev_32f_Fast(f, 1, &x), StatusBadSize);
    EXPECT_EQ(tevsStdDev_64f(&d, 1, &d), StatusBadSize);
    EXPECT_EQ(r, 77);
    EXPECT_EQ(x, 77);
    EXPECT_EQ(count, 77);
    EXPECT_EQ(d, 77);
}

}   // namespace
