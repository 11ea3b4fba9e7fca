// Wavelets against their formulas in extended precision, and taps and coefficients of another library.
#include <climits>
#include <cmath>
#include <numbers>

#include "support/control_words.h"
#include "support/function.h"

using namespace test;

namespace {

using Real = long double;
using Reals = std::vector<Real>;

template <class T> struct Api;
#define WT_API(T, t)                                                                \
    template <> struct Api<T> {                                                     \
        using State = WtState_##t;                                                  \
        using Spec = DWTSpec_##t;                                                   \
        static constexpr const char* analysisId = sizeof(T) == 4 ? "10AW" : "20AW"; \
        static constexpr auto genTaps = tevsWtGenTaps_##t;                          \
        static constexpr auto haarAnalysis = tevsWtHaarAnalysis_##t;                \
        static constexpr auto haarSynthesis = tevsWtHaarSynthesis_##t;              \
        static constexpr auto getStateSize = tevsWtGetStateSize_##t;                \
        static constexpr auto analysisInit = tevsWtAnalysisInit_##t;                \
        static constexpr auto analysisInitAlloc = tevsWtAnalysisInitAlloc_##t;      \
        static constexpr auto synthesisInit = tevsWtSynthesisInit_##t;              \
        static constexpr auto synthesisInitAlloc = tevsWtSynthesisInitAlloc_##t;    \
        static constexpr auto free = tevsWtFree_##t;                                \
        static constexpr auto setDlyLine = tevsWtSetDlyLine_##t;                    \
        static constexpr auto getDlyLine = tevsWtGetDlyLine_##t;                    \
        static constexpr auto analysis = tevsWtAnalysis_##t;                        \
        static constexpr auto synthesis = tevsWtSynthesis_##t;                      \
        static constexpr auto dwtGetSize = tevsDWTGetSize_##t;                      \
        static constexpr auto dwtInit = tevsDWTInit_##t;                            \
        static constexpr auto dwtInitAlloc = tevsDWTInitAlloc_##t;                  \
        static constexpr auto dwtFree = tevsDWTFree_##t;                            \
        static constexpr auto dwtGetBand = tevsDWTGetBand_##t;                      \
        static constexpr auto dwtFwd = tevsDWTFwd_##t;                              \
        static constexpr auto dwtInv = tevsDWTInv_##t;                              \
    }
WT_API(float, 32f);
WT_API(double, 64f);
template <class T> constexpr Real kUnit = std::numeric_limits<T>::epsilon() / 2;

template <class T> class Wavelet : public ::testing::Test {};
using Types = ::testing::Types<float, double>;
TYPED_TEST_SUITE(Wavelet, Types);

// ---- taps -----------------------------------------------------------------------------------------------------------------------------------

template <class T> struct Bank {
    std::vector<T> lowA, highA, lowS, highS;
    Bank(int tapsLen, int family) {
        for (auto* v : {&lowA, &highA, &lowS, &highS}) v->resize(size_t(tapsLen));
        EXPECT_EQ(Api<T>::genTaps(lowA.data(), highA.data(), lowS.data(), highS.data(), tapsLen, family), StatusOk) << tapsLen << " of " << family;
    }
    explicit Bank(size_t tapsLen)   // of no wavelet
        : lowA(randomVector<T>(tapsLen)), highA(randomVector<T>(tapsLen)), lowS(randomVector<T>(tapsLen)), highS(randomVector<T>(tapsLen)) {}
    int tapsLen() const { return int(lowA.size()); }
};
template <class F> void eachWavelet(F f) {
    for (int tapsLen = 2; tapsLen <= 40; tapsLen += 2) {
        f(tapsLen, WaveletDaubechies);
        if (tapsLen >= 4) f(tapsLen, WaveletSymlet);
    }
    f(6, WaveletCdf), f(10, WaveletCdf);
}

// pLowS[0] and the centre of the energy, as PyWavelets 1.1.1 has them; with the moments and orthogonality they leave no other choice of roots.
struct Known {
    double first, centre;
};
constexpr Known kDaubechies[] = {{0.70710678119, 0.500000000}, {0.48296291314, 0.850480947}, {0.33267055295, 1.164137772}, {0.23037781331, 1.461333907},
                                 {0.16010239797, 1.749111497}, {0.11154074335, 2.030750574}, {0.07785205409, 2.308052958}, {0.05441584224, 2.582118626},
                                 {0.03807794736, 2.853670352}, {0.02667005790, 3.123209554}, {0.01869429776, 3.391098921}, {0.01311225796, 3.657609637},
                                 {0.00920213354, 3.922950004}, {0.00646115346, 4.187283640}, {0.00453853736, 4.450741508}, {0.00318922093, 4.713430137},
                                 {0.00224180700, 4.975437394}, {0.00157631022, 5.236836638}, {0.00110866976, 5.497689778}, {0.00077995361, 5.758049554}};
constexpr Known kSymlets[] = {{0.48296291314, 0.850480947},   {0.33267055295, 1.164137772},  {0.03222310060, 4.153564003},   {0.01953888274, 4.550034550},
                              {-0.00780070833, 6.154342840},  {0.01026817671, 5.161504160},  {0.00188995033, 8.154613634},   {0.00106949003, 8.552868446},
                              {-0.00045932942, 10.154737835}, {0.00048926361, 9.161122274},  {-0.00017906659, 10.845195219}, {0.00007042987, 12.538438711},
                              {0.00004461898, 12.839373278},  {0.00002866071, 13.151360487}, {-0.00001079798, 14.837832945}, {0.00000379125, 16.464878064},
                              {-0.00000151315, 18.163064338}, {0.00000175094, 17.143907627}, {-0.00000063291, 18.836362865}};

TEST(WaveletTaps, AreThoseOfTheirFamily) {
    eachWavelet([](int n, int family) {
        SCOPED_TRACE(::testing::Message() << n << " of " << family);
        const Bank<double> b(n, family);
        const Bank<float> single(n, family);
        for (int k = 0; k < n; ++k) {
            const auto i = size_t(k);
            for (auto v : {&Bank<double>::lowA, &Bank<double>::highA, &Bank<double>::lowS, &Bank<double>::highS}) {
                ASSERT_FALSE((b.*v)[i] == 0 && std::signbit((b.*v)[i]));
            }
            ASSERT_EQ(b.highS[i], k % 2 ? -b.lowA[i] : b.lowA[i]);
            ASSERT_EQ(b.highA[i], k % 2 ? b.lowS[i] : -b.lowS[i]);
            ASSERT_EQ(single.lowA[i], float(b.lowA[i]));
            ASSERT_EQ(single.highS[i], float(b.highS[i]));
        }
        const int moments = family == WaveletCdf ? n == 6 ? 2 : 4 : n / 2;
        for (int shift = 0; shift < n; shift += 2) {   // of a rounded bank: orthogonal within its rounding
            Real dot = 0;
            for (int k = 0; k + shift < n; ++k) dot += Real(b.lowA[size_t(n - 1 - k)]) * b.lowS[size_t(k + shift)];
            ASSERT_LE(std::fabs(dot - (shift == 0)), 0x1p-52L) << shift;
        }
        for (int m = 0; m < moments; ++m) {
            Real moment = 0;
            for (int k = 0; k < n; ++k) moment += b.highA[size_t(k)] * std::pow(Real(2 * k - n) / n, Real(m));
            ASSERT_LE(std::fabs(moment), 0x1p-51L) << m;
        }
        if (family == WaveletCdf) return;
        const Known known = family == WaveletSymlet ? kSymlets[n / 2 - 2] : kDaubechies[n / 2 - 1];
        Real centre = 0;
        for (int k = 0; k < n; ++k) centre += k * Real(b.lowS[size_t(k)]) * b.lowS[size_t(k)];
        EXPECT_NEAR(b.lowS[0], known.first, 1.5e-11);
        EXPECT_NEAR(double(centre), known.centre, 2e-9);
        for (int k = 0; k < n; ++k) ASSERT_EQ(b.lowA[size_t(k)], b.lowS[size_t(n - 1 - k)]);
    });
}

TEST(WaveletTaps, ExactOnes) {
    const Real s = std::sqrt(Real(2)), r = std::sqrt(Real(3));
    const Bank<double> d4(4, WaveletDaubechies), cdf53(6, WaveletCdf), cdf97(10, WaveletCdf), unknown(4, 77);
    const Real four[] = {(1 + r) / (4 * s), (3 + r) / (4 * s), (3 - r) / (4 * s), (1 - r) / (4 * s)}, five[] = {0, -1, 2, 6, 2, -1},
               three[] = {0, 1, 2, 1, 0, 0};
    for (size_t k = 0; k < 4; ++k) EXPECT_EQ(d4.lowS[k], double(four[k]));
    for (size_t k = 0; k < 6; ++k) EXPECT_TRUE(cdf53.lowA[k] == double(five[k] * s / 8) && cdf53.lowS[k] == double(three[k] * s / 4)) << k;
    EXPECT_EQ(unknown.lowS, d4.lowS);
    const double nine[] = {0, 0.037828455507, -0.023849465019, -0.110624404418, 0.377402855613, 0.852698679009},
                 seven[] = {0, -0.064538882629, -0.040689417609, 0.418092273222, 0.788485616406};
    for (size_t k = 0; k < 10; ++k) EXPECT_NEAR(cdf97.lowA[k], nine[k < 6 ? k : 10 - k], 1e-11);
    for (size_t k = 0; k < 10; ++k) EXPECT_NEAR(cdf97.lowS[k], k < 8 ? seven[k < 5 ? k : 8 - k] : 0, 1e-11);
}

TYPED_TEST(Wavelet, TapsCheckTheirArguments) {
    std::vector<TypeParam> v(44, 7);
    TypeParam* const p = v.data();
    const auto run = [=](int hole, int n, int family) {
        return Api<TypeParam>::genTaps(hole == 0 ? nullptr : p, hole == 1 ? nullptr : p, hole == 2 ? nullptr : p, hole == 3 ? nullptr : p, n, family);
    };
    for (int hole = 0; hole < 4; ++hole) EXPECT_EQ(run(hole, -1, 0), StatusNullPtr);
    for (int n : {INT_MIN, -2, 0, 1, 3, 39, 41, 42, INT_MAX, INT_MAX - 1}) EXPECT_EQ(run(4, n, WaveletDaubechies), StatusBadSize) << n;
    EXPECT_EQ(run(4, 2, WaveletSymlet), StatusBadSize);
    for (int n : {2, 4, 5, 8, 12}) EXPECT_EQ(run(4, n, WaveletCdf), StatusBadSize) << n;
    EXPECT_EQ(v, std::vector<TypeParam>(44, 7));
    expectOwnModes([] { return Bank<TypeParam>(40, WaveletSymlet).lowA; });
}

// ---- pairs ----------------------------------------------------------------------------------------------------------------------------------

TYPED_TEST(Wavelet, HaarIsItsFormula) {
    using T = TypeParam;
    const T c = T(std::sqrt(Real(0.5)));
    for (int len : {1, 2, 3, 7, 8, 9, 31, 70}) {
        const auto x = randomVector<T>(size_t(2 * len));
        Guarded<T> src(x), low{size_t(len)}, high{size_t(len)}, back{size_t(2 * len)};
        ASSERT_EQ(Api<T>::haarAnalysis(src, low, high, len), StatusOk);
        ASSERT_EQ(Api<T>::haarSynthesis(low, high, back, len), StatusOk);
        for (int n = 0; n < len; ++n) {
            const T a = x[size_t(2 * n)], b = x[size_t(2 * n + 1)], sum = a + b, difference = a - b;
            ASSERT_EQ(low.data()[n], sum * c);
            ASSERT_EQ(high.data()[n], difference * c);
            ASSERT_EQ(back.data()[2 * n], T(T(sum * c) + T(difference * c)) * c);
            ASSERT_EQ(back.data()[2 * n + 1], T(T(sum * c) - T(difference * c)) * c);
        }
        ASSERT_EQ(Api<T>::haarAnalysis(src, src, high, len), StatusOk);
        const auto got = src.values();
        ASSERT_TRUE(same(low.values(), std::vector<T>(got.begin(), got.begin() + len)));
    }
}

TEST(Haar16s, RoundsOnce) {
    const auto nearest = [](Real v, int s) { return int16_t(std::clamp<Real>(std::nearbyint(std::ldexp(v, -std::clamp(s, -40, 40))), -32768, 32767)); };
    for (int scale : {0, 1, 2, 3, 15, 16, 17, 18, 19, 31, 32, 77, INT_MAX, -1, -2, -15, -16, -17, -40, INT_MIN})
        for (int len : {1, 2, 5, 8, 15, 16, 17, 40, 300}) {
            const auto x = samples<int16_t>(size_t(2 * len), Data::Wild);
            Guarded<int16_t> src(x), low{size_t(len)}, high{size_t(len)}, back{size_t(2 * len)};
            ASSERT_EQ(tevsWtHaarAnalysis_16s_Sfs(src, low, high, len, scale), StatusOk);
            ASSERT_EQ(tevsWtHaarSynthesis_16s_Sfs(src, src + len, back, len, scale), StatusOk);
            for (int n = 0; n < len; ++n) {
                const int a = x[size_t(2 * n)], b = x[size_t(2 * n + 1)], l = x[size_t(n)], h = x[size_t(n + len)];
                ASSERT_EQ(low.data()[n], nearest(a + b, scale)) << a << " " << b << " " << scale;
                ASSERT_EQ(high.data()[n], nearest(a - b, scale)) << a << " " << b << " " << scale;
                ASSERT_EQ(back.data()[2 * n], nearest(l + h, scale));
                ASSERT_EQ(back.data()[2 * n + 1], nearest(l - h, scale));
            }
        }
}

template <class T> struct Lift;
template <> struct Lift<int16_t> {
    static constexpr auto analysis = tevsWtLiftAnalysis_16s;
    static constexpr auto synthesis = tevsWtLiftSynthesis_16s;
};
template <> struct Lift<int32_t> {
    static constexpr auto analysis = tevsWtLiftAnalysis_32s;
    static constexpr auto synthesis = tevsWtLiftSynthesis_32s;
};
int64_t floorDiv(int64_t a, int64_t b) { return a / b - (a % b < 0); }

template <class T> void checkLift(const std::vector<T>& x, int lift) {
    const int n = int(x.size()), lows = (n + 1) / 2, highs = n / 2;
    std::vector<T> wantLow(x.size() - x.size() / 2), wantHigh(x.size() / 2);
    const auto at = [&](int i) { return int64_t{x[size_t(i == n ? n - 2 : i)]}; };
    const auto high = [&](int i) { return int64_t{wantHigh[size_t(std::clamp(i, 0, highs - 1))]}; };
    for (int i = 0; i < highs; ++i)
        wantHigh[size_t(i)] = T(lift == Lift53 ? at(2 * i + 1) - floorDiv(at(2 * i) + at(2 * i + 2), 2) : at(2 * i) - at(2 * i + 1));
    for (int i = 0; i < lows; ++i)
        wantLow[size_t(i)] = T(n == 1           ? at(0)
                               : lift == Lift53 ? at(2 * i) + floorDiv(high(i - 1) + high(i) + 2, 4)
                               : 2 * i + 1 < n  ? at(2 * i + 1) + floorDiv(high(i), 2)
                                                : at(2 * i));
    const Guarded<T> src(x);
    Guarded<T> low(size_t(lows), {n % 3 * int(sizeof(T)), n % 2 == 0}), highOut(size_t(highs), {n % 5 * int(sizeof(T)), false}), back{size_t(n)};
    ASSERT_EQ(Lift<T>::analysis(src.data(), low, highOut, n, lift), StatusOk);
    ASSERT_TRUE(same(wantLow, low.values())) << n;
    ASSERT_TRUE(same(wantHigh, highOut.values())) << n;
    ASSERT_EQ(Lift<T>::synthesis(low, highOut, back, n, lift), StatusOk);
    ASSERT_TRUE(same(x, back.values())) << n;
    ASSERT_TRUE(low.intact() && highOut.intact() && back.intact());
}
template <class T> class Lifting : public ::testing::Test {};
using Integers = ::testing::Types<int16_t, int32_t>;
TYPED_TEST_SUITE(Lifting, Integers);
TYPED_TEST(Lifting, LosesNothing) {
    for (int lift : {int(LiftHaar), int(Lift53), 5}) eachLength([&](int n) { checkLift(randomVector<TypeParam>(size_t(n)), lift); });
    constexpr TypeParam lo = std::numeric_limits<TypeParam>::min(), hi = std::numeric_limits<TypeParam>::max();
    const TypeParam edges[] = {lo, TypeParam(lo + 1), -1, 0, 1, TypeParam(hi - 1), hi};
    std::vector<TypeParam> v;
    for (TypeParam a : edges)
        for (TypeParam b : edges)
            for (TypeParam c : edges) v.insert(v.end(), {a, b, c});
    checkLift(v, Lift53), checkLift(v, LiftHaar);
    TypeParam one[2] = {};
    EXPECT_EQ(Lift<TypeParam>::analysis(one, one, nullptr, 1, Lift53), StatusNullPtr);
    EXPECT_EQ(Lift<TypeParam>::synthesis(one, one, one, 0, Lift53), StatusBadSize);
}

// ---- streams --------------------------------------------------------------------------------------------------------------------------------

struct FilterSize {
    int tapsLen, offs;
};
template <class T> struct Filters {
    FilterSize size[2];
    std::vector<T> taps[2];
    Filters(FilterSize low, FilterSize high) : size{low, high}, taps{randomVector<T>(size_t(low.tapsLen)), randomVector<T>(size_t(high.tapsLen))} {}
    Filters(std::vector<T> low, int offsLow, std::vector<T> high, int offsHigh)
        : size{{int(low.size()), offsLow}, {int(high.size()), offsHigh}}, taps{std::move(low), std::move(high)} {}
    int inputs() const { return std::max({0, size[0].tapsLen + size[0].offs - 1, size[1].tapsLen + size[1].offs - 1}); }
    int past(int c) const { return (size[c].tapsLen + size[c].offs) / 2; }
};

enum Direction { kAnalysis, kSynthesis };
template <class T> class Stream {
public:
    Stream(const Filters<T>& f, Direction d, std::vector<uint8_t>* memory = nullptr) {
        const auto [l, h] = f.size;
        if (memory) {
            int size = 0;
            EXPECT_EQ(Api<T>::getStateSize(l.tapsLen, l.offs, h.tapsLen, h.offs, &size), StatusOk);
            block_ = std::make_unique<Guarded<uint8_t>>(size_t(size), Place{size % 16, true});
            const auto init = d == kAnalysis ? Api<T>::analysisInit : Api<T>::synthesisInit;
            EXPECT_EQ(init(&state_, f.taps[0].data(), l.tapsLen, l.offs, f.taps[1].data(), h.tapsLen, h.offs, *block_), StatusOk);
        } else {
            const auto init = d == kAnalysis ? Api<T>::analysisInitAlloc : Api<T>::synthesisInitAlloc;
            EXPECT_EQ(init(&state_, f.taps[0].data(), l.tapsLen, l.offs, f.taps[1].data(), h.tapsLen, h.offs), StatusOk);
        }
    }
    ~Stream() {
        EXPECT_EQ(Api<T>::free(state_), StatusOk);
        EXPECT_TRUE(!block_ || block_->intact());
    }
    Stream(const Stream&) = delete;
    operator typename Api<T>::State *() { return state_; }

private:
    typename Api<T>::State* state_ = nullptr;
    std::unique_ptr<Guarded<uint8_t>> block_;
};

constexpr FilterSize kSizes[] = {{1, -1}, {1, 0},  {1, 1}, {2, -1}, {2, 0},   {3, 0},  {3, 1},   {4, -1}, {5, 0},
                                 {6, 3},  {7, -1}, {8, 2}, {9, 0},  {20, -1}, {21, 6}, {40, -1}, {3, 40}};

// The value before the first at place i: of a delay line, newest first, or silence.
template <class T> Real before(const std::vector<T>& x, const std::vector<T>& past, int64_t i) {
    return i >= 0 ? Real(x[size_t(i)]) : i >= -int64_t(past.size()) ? Real(past[size_t(-i - 1)]) : 0;
}
// A result within its bound of 2 tapsLen u sum |tap| |sample|, or one that has underflowed.
template <class T>::testing::AssertionResult isNear(T got, Real want, Real magnitude, int tapsLen) {
    if (std::fabs(got - want) <= 2 * tapsLen * kUnit<T> * magnitude + std::numeric_limits<T>::min()) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << got << ", want " << want;
}

template <class T> void checkAnalysis(const Filters<T>& f, int len, const std::vector<int>& cuts) {
    const auto past = randomVector<T>(size_t(f.inputs())), x = randomVector<T>(size_t(2 * len));
    std::vector<uint8_t> memory;
    Stream<T> stream(f, kAnalysis, len % 2 ? &memory : nullptr);
    ASSERT_EQ(Api<T>::setDlyLine(stream, past.data()), StatusOk);
    const Guarded<T> src(x, {int(sizeof(T)) * (len % 5), len % 2 == 0});
    Guarded<T> low{size_t(len)}, high(size_t(len), {int(sizeof(T)) * (len % 3), len % 3 == 0});
    for (int at = 0, c = 0; at < len; ++c) {
        const int n = std::min(cuts[size_t(c) % cuts.size()], len - at);
        ASSERT_EQ(Api<T>::analysis(src.data() + 2 * at, low + at, high + at, n, stream), StatusOk);
        at += n;
    }
    for (int c = 0; c < 2; ++c)
        for (int n = 0; n < len; ++n) {
            Real want = 0, magnitude = 0;
            for (int k = 0; k < f.size[c].tapsLen; ++k) {
                const Real v = f.taps[c][size_t(k)] * before(x, past, 2 * n - f.size[c].offs - k);
                want += v;
                magnitude += std::fabs(v);
            }
            ASSERT_TRUE(isNear((c ? high : low).data()[n], want, magnitude, f.size[c].tapsLen)) << "channel " << c << " at " << n << " of " << len;
        }
    std::vector<T> line(past.size());
    if (line.empty()) line.resize(1);
    ASSERT_EQ(Api<T>::getDlyLine(stream, line.data()), StatusOk);
    for (size_t i = 0; i < past.size(); ++i) ASSERT_EQ(line[i], T(before(x, past, 2 * len - 1 - int64_t(i))));
    ASSERT_TRUE(low.intact() && high.intact());
}

template <class T> void checkSynthesis(const Filters<T>& f, int len, const std::vector<int>& cuts) {
    const std::vector<T> past[2] = {randomVector<T>(size_t(f.past(0))), randomVector<T>(size_t(f.past(1)))},
                         x[2] = {randomVector<T>(size_t(len)), randomVector<T>(size_t(len))};
    std::vector<T> line = past[0];
    line.insert(line.end(), past[1].begin(), past[1].end());
    line.push_back(0);
    std::vector<uint8_t> memory;
    Stream<T> stream(f, kSynthesis, len % 2 ? &memory : nullptr);
    ASSERT_EQ(Api<T>::setDlyLine(stream, line.data()), StatusOk);
    const Guarded<T> low(x[0], {int(sizeof(T)) * (len % 5), len % 2 == 0}), high(x[1]);
    Guarded<T> dst(size_t(2 * len), {int(sizeof(T)) * (len % 3), len % 3 == 0});
    for (int at = 0, c = 0; at < len; ++c) {
        const int n = std::min(cuts[size_t(c) % cuts.size()], len - at);
        ASSERT_EQ(Api<T>::synthesis(low.data() + at, high.data() + at, dst + 2 * at, n, stream), StatusOk);
        at += n;
    }
    for (int m = 0; m < 2 * len; ++m) {
        Real want = 0, magnitude = 0;
        for (int c = 0; c < 2; ++c)
            for (int k = 0; k < f.size[c].tapsLen; ++k) {
                const int twice = m - 1 - f.size[c].offs - k;
                if (twice % 2 != 0) continue;
                const Real v = f.taps[c][size_t(k)] * before(x[c], past[c], twice / 2);
                want += v;
                magnitude += std::fabs(v);
            }
        ASSERT_TRUE(isNear(dst.data()[m], want, magnitude, f.size[0].tapsLen + f.size[1].tapsLen)) << m << " of " << 2 * len;
    }
    ASSERT_EQ(Api<T>::getDlyLine(stream, line.data()), StatusOk);
    for (size_t i = 0; i < past[0].size(); ++i) ASSERT_EQ(line[i], T(before(x[0], past[0], len - 1 - int64_t(i))));
    for (size_t i = 0; i < past[1].size(); ++i) ASSERT_EQ(line[past[0].size() + i], T(before(x[1], past[1], len - 1 - int64_t(i))));
    ASSERT_TRUE(dst.intact());
}

TYPED_TEST(Wavelet, StreamsAreTheirFormula) {
    using T = TypeParam;
    for (size_t i = 0; i < std::size(kSizes); ++i)
        for (size_t j : {i, (i + 1) % std::size(kSizes), (i + 5) % std::size(kSizes)}) {
            const Filters<T> f(kSizes[i], kSizes[j]);
            SCOPED_TRACE(::testing::Message() << kSizes[i].tapsLen << "," << kSizes[i].offs << " and " << kSizes[j].tapsLen << "," << kSizes[j].offs);
            for (int len : {1, 2, 3, 5, 8, 13, 19, 33, 50, 70, 201}) {
                checkAnalysis(f, len, {len});
                checkSynthesis(f, len, {len});
            }
            checkAnalysis<T>(f, 150, {1, 2, 1, 7, 30});
            checkSynthesis<T>(f, 150, {1, 2, 1, 7, 30});
        }
}

// The same bits, wherever a stream is cut and in whichever mode.
TYPED_TEST(Wavelet, StreamsAreCutAnywhere) {
    using T = TypeParam;
    for (FilterSize size : kSizes) {
        const Filters<T> f(size, {size.tapsLen / 2 + 1, size.offs});
        const auto x = randomVector<T>(800);
        const auto run = [&](int most) {
            Stream<T> analysis(f, kAnalysis), synthesis(f, kSynthesis);
            std::vector<T> low(400), high(400), y(800);
            for (size_t n = 0, m; n < 400; n += m) {
                m = std::min<size_t>(400 - n, most == 400 ? 400 : 1 + generator()() % uint64_t(most));
                EXPECT_EQ(Api<T>::analysis(&x[2 * n], &low[n], &high[n], int(m), analysis), StatusOk);
                EXPECT_EQ(Api<T>::synthesis(&x[n], &x[400 + n], &y[2 * n], int(m), synthesis), StatusOk);
            }
            for (const auto& v : {low, high}) y.insert(y.end(), v.begin(), v.end());
            return y;
        };
        const auto want = run(400);
        for (int most : {1, 3, 20, 90}) ASSERT_TRUE(same(want, run(most))) << size.tapsLen << ", " << most;
        expectOwnModes([&] { return run(400); });
    }
}

TYPED_TEST(Wavelet, BanksArePerfect) {
    using T = TypeParam;
    eachWavelet([](int tapsLen, int family) {
        const Bank<T> b(tapsLen, family);
        // With their leading zeros given as offsets too: 5/3 and 9/7.
        const auto trimmed = [](std::vector<T> v, int& offs) {
            for (offs = -1; v.front() == 0; ++offs) v.erase(v.begin());
            while (v.back() == 0) v.pop_back();
            return v;
        };
        int offs[4];
        const Filters<T> whole[] = {{b.lowA, -1, b.highA, -1}, {b.lowS, -1, b.highS, -1}};
        std::vector<T> cut[4] = {trimmed(b.lowA, offs[0]), trimmed(b.highA, offs[1]), trimmed(b.lowS, offs[2]), trimmed(b.highS, offs[3])};
        const Filters<T> less[] = {{cut[0], offs[0], cut[1], offs[1]}, {cut[2], offs[2], cut[3], offs[3]}};
        const int len = 100, delay = tapsLen - 2;
        const auto x = randomVector<T>(2 * len);
        for (const auto* f : {whole, less}) {
            Stream<T> analysis(f[0], kAnalysis), synthesis(f[1], kSynthesis);
            std::vector<T> low(len), high(len), y(2 * len);
            ASSERT_EQ(Api<T>::analysis(x.data(), low.data(), high.data(), len, analysis), StatusOk);
            ASSERT_EQ(Api<T>::synthesis(low.data(), high.data(), y.data(), len, synthesis), StatusOk);
            for (int m = 0; m < 2 * len; ++m)
                ASSERT_NEAR(double(y[size_t(m)]), m < delay ? 0 : double(x[size_t(m - delay)]), double(60 * kUnit<T>))
                    << tapsLen << " of " << family << " at " << m;
        }
    });
}

// A NaN reaches the outputs whose taps meet it, and no other; so does what stands for a tap left out.
TYPED_TEST(Wavelet, NaNsReachNoFurtherThanTaps) {
    using T = TypeParam;
    const T nan = std::numeric_limits<T>::quiet_NaN();
    for (FilterSize size : kSizes)
        for (int at : {0, 1, 30, 31}) {
            Filters<T> f(size, {size.tapsLen + 1, size.offs});
            const int len = 60;
            std::vector<T> x(2 * len), low(len), high(len), y(2 * len);
            x[size_t(at)] = nan;
            Stream<T> analysis(f, kAnalysis), synthesis(f, kSynthesis);
            ASSERT_EQ(Api<T>::analysis(x.data(), low.data(), high.data(), len, analysis), StatusOk);
            ASSERT_EQ(Api<T>::synthesis(x.data(), x.data() + len, y.data(), len, synthesis), StatusOk);
            const auto meets = [](int k, int tapsLen) { return k >= 0 && k < tapsLen; };
            for (int n = 0; n < len; ++n) {
                ASSERT_EQ(std::isnan(low[size_t(n)]), meets(2 * n - size.offs - at, size.tapsLen)) << size.tapsLen << "," << size.offs << " at " << n;
                ASSERT_EQ(std::isnan(high[size_t(n)]), meets(2 * n - size.offs - at, size.tapsLen + 1)) << n;
            }
            for (int m = 0; m < 2 * len; ++m) ASSERT_EQ(std::isnan(y[size_t(m)]), meets(m - 2 * at - 1 - size.offs, size.tapsLen)) << m;
        }
}

TYPED_TEST(Wavelet, StreamsCheckTheirArguments) {
    using T = TypeParam;
    using A = Api<T>;
    std::vector<T> v(64, 3);
    std::vector<uint8_t> block(8192);
    T* const p = v.data();
    auto* const mark = reinterpret_cast<typename A::State*>(0x40);
    struct Row {
        int tapsLenLow, offsLow, tapsLenHigh, offsHigh;
        Status want;
    };
    constexpr int most = INT_MAX;
    for (const Row& r : {Row{0, -2, 0, -2, StatusFilterLength}, Row{1, -2, 0, -2, StatusWtOffset}, Row{1, -1, 0, -2, StatusFilterLength},
                         Row{1, -1, 1, -2, StatusWtOffset}, Row{INT_MIN, 0, 1, 0, StatusFilterLength}, Row{2, INT_MIN, 1, 0, StatusWtOffset},
                         Row{most, -2, 1, -1, StatusFilterLength}, Row{2, most, 0, -1, StatusWtOffset}, Row{2, -1, most, -2, StatusFilterLength},
                         Row{2, -1, 2, most, StatusWtOffset}, Row{most / 4 / int(sizeof(T)), -1, most / 4 / int(sizeof(T)), -2, StatusFilterLength}}) {
        int size = -7;
        auto* state = mark;
        EXPECT_EQ(A::getStateSize(r.tapsLenLow, r.offsLow, r.tapsLenHigh, r.offsHigh, &size), r.want)
            << r.tapsLenLow << " " << r.offsLow << " " << r.tapsLenHigh;
        EXPECT_EQ(size, -7);
        EXPECT_EQ(A::analysisInit(&state, p, r.tapsLenLow, r.offsLow, p, r.tapsLenHigh, r.offsHigh, block.data()), r.want);
        EXPECT_EQ(A::synthesisInitAlloc(&state, p, r.tapsLenLow, r.offsLow, p, r.tapsLenHigh, r.offsHigh), r.want);
        EXPECT_EQ(state, mark);
    }
    auto* state = mark;
    EXPECT_EQ(A::getStateSize(0, 0, 0, 0, nullptr), StatusNullPtr);
    for (const auto init : {A::analysisInit, A::synthesisInit}) {
        EXPECT_EQ(init(nullptr, p, 0, 0, p, 2, -1, block.data()), StatusNullPtr);
        EXPECT_EQ(init(&state, nullptr, 0, 0, p, 2, -1, block.data()), StatusNullPtr);
        EXPECT_EQ(init(&state, p, 0, 0, nullptr, 2, -1, block.data()), StatusNullPtr);
        EXPECT_EQ(init(&state, p, 0, 0, p, 2, -1, nullptr), StatusNullPtr);
    }
    EXPECT_EQ(state, mark);
    Stream<T> analysis({{4, -1}, {4, -1}}, kAnalysis), synthesis({{4, -1}, {4, -1}}, kSynthesis);
    EXPECT_EQ(std::memcmp(static_cast<typename A::State*>(analysis), A::analysisId, 4), 0);
    EXPECT_EQ(A::analysis(p, p + 20, p + 40, 2, synthesis), StatusContextMismatch);
    EXPECT_EQ(A::synthesis(p, p + 20, p + 40, 2, analysis), StatusContextMismatch);
    EXPECT_EQ(A::analysis(p, p + 20, p + 40, 0, synthesis), StatusBadSize);
    EXPECT_EQ(A::synthesis(p, p + 20, p + 40, INT_MIN, analysis), StatusBadSize);
    EXPECT_EQ(A::analysis(p, p + 20, nullptr, 0, analysis), StatusNullPtr);
    EXPECT_EQ(A::analysis(p, p + 20, p + 40, 0, nullptr), StatusNullPtr);
    EXPECT_EQ(A::getDlyLine(analysis, nullptr), StatusNullPtr);
    EXPECT_EQ(A::setDlyLine(synthesis, nullptr), StatusOk);
    auto* const stranger = reinterpret_cast<typename A::State*>(block.data());
    EXPECT_EQ(A::free(nullptr), StatusNullPtr);
    EXPECT_EQ(A::free(stranger), StatusContextMismatch);
    EXPECT_EQ(A::setDlyLine(stranger, p), StatusContextMismatch);
    EXPECT_EQ(A::getDlyLine(stranger, p), StatusContextMismatch);
    EXPECT_EQ(v, std::vector<T>(64, 3));
}

// ---- whole signals --------------------------------------------------------------------------------------------------------------------------

template <class T> class Dwt {
public:
    Dwt(int length, int levels, const Bank<T>& b, int ext, int offset = -1) : length_(length), levels_(levels) {
        EXPECT_EQ(Api<T>::dwtGetSize(length, levels, b.tapsLen(), ext, &specSize_, &bufferSize_, &coefLen_), StatusOk);
        if (offset >= 0) {
            block_ = std::make_unique<Guarded<uint8_t>>(size_t(specSize_), Place{offset, true});
            EXPECT_EQ(Api<T>::dwtInit(&spec_, length, levels, b.lowA.data(), b.highA.data(), b.lowS.data(), b.highS.data(), b.tapsLen(), ext, *block_),
                      StatusOk);
        } else {
            EXPECT_EQ(Api<T>::dwtInitAlloc(&spec_, length, levels, b.lowA.data(), b.highA.data(), b.lowS.data(), b.highS.data(), b.tapsLen(), ext), StatusOk);
        }
    }
    ~Dwt() {
        EXPECT_EQ(Api<T>::dwtFree(spec_), StatusOk);
        if (block_) {
            EXPECT_TRUE(block_->intact());
            EXPECT_EQ(Api<T>::dwtFree(spec_), StatusContextMismatch);
        }
    }
    Dwt(const Dwt&) = delete;
    operator const typename Api<T>::Spec *() const { return spec_; }
    int bufferSize() const { return bufferSize_; }
    int coefLen() const { return coefLen_; }
    std::vector<T> forward(const std::vector<T>& x) const {
        std::vector<T> y(size_t(coefLen_), 7);
        EXPECT_EQ(Api<T>::dwtFwd(x.data(), y.data(), spec_, nullptr), StatusOk);
        return y;
    }
    std::vector<T> inverse(const std::vector<T>& y) const {
        std::vector<T> x(size_t(length_), 7);
        EXPECT_EQ(Api<T>::dwtInv(y.data(), x.data(), spec_, nullptr), StatusOk);
        return x;
    }

private:
    int length_, levels_, specSize_ = 0, bufferSize_ = 0, coefLen_ = 0;
    typename Api<T>::Spec* spec_ = nullptr;
    std::unique_ptr<Guarded<uint8_t>> block_;
};

// The definition, level by level.
int64_t modulo(int64_t i, int64_t n) { return (i % n + n) % n; }
int64_t channelLen(int64_t n, int tapsLen, int ext) { return ext == ExtMirror ? (n + tapsLen - 1) / 2 : (n + 1) / 2; }
template <class T> Reals definition(Reals a, int levels, const Bank<T>& b, int ext) {
    const int L = b.tapsLen();
    Reals out;
    for (int level = 0; level < levels; ++level) {
        const int64_t n = int64_t(a.size()), m = channelLen(n, L, ext);
        Reals channel[2];
        for (int c = 0; c < 2; ++c)
            for (int64_t i = 0; i < m; ++i) {
                Real sum = 0;
                for (int k = 0; k < L; ++k) {
                    int64_t at;
                    if (ext == ExtMirror) {
                        at = modulo(2 * i + 1 - k, 2 * n);
                        at = at < n ? at : 2 * n - 1 - at;
                    } else {
                        at = std::min(modulo(2 * i + L / 2 - k, 2 * m), n - 1);
                    }
                    sum += (c ? b.highA : b.lowA)[size_t(k)] * a[size_t(at)];
                }
                channel[c].push_back(sum);
            }
        out.insert(out.begin(), channel[1].begin(), channel[1].end());
        a = channel[0];
    }
    out.insert(out.begin(), a.begin(), a.end());
    return out;
}
template <class T> Reals inverseDefinition(const Reals& y, int64_t length, int levels, const Bank<T>& b, int ext) {
    const int L = b.tapsLen();
    std::vector<int64_t> lens{length};
    for (int level = 0; level < levels; ++level) lens.push_back(channelLen(lens.back(), L, ext));
    size_t at = size_t(lens.back());
    Reals low(y.begin(), y.begin() + lens.back());
    for (int level = levels; level >= 1; --level) {
        const int64_t m = lens[size_t(level)], n = lens[size_t(level - 1)];
        Reals a(size_t(ext == ExtMirror ? n : 2 * m));
        for (int64_t i = 0; i < m; ++i)
            for (int k = 0; k < L; ++k) {
                const Real v = low[size_t(i)] * b.lowS[size_t(k)] + y[at + size_t(i)] * b.highS[size_t(k)];
                const int64_t to = ext == ExtMirror ? k + 2 * i + 2 - L : modulo(2 * i + k + 1 - L / 2, 2 * m);
                if (to >= 0 && to < int64_t(a.size())) a[size_t(to)] += v;
            }
        a.resize(size_t(n));
        at += size_t(m);
        low = a;
    }
    return low;
}
template <class T> Real distance(const Reals& want, const std::vector<T>& got) {
    Real off = 0, all = 0;
    for (size_t i = 0; i < want.size(); ++i) {
        off += (want[i] - got[i]) * (want[i] - got[i]);
        all += want[i] * want[i];
    }
    return all == 0 ? off : std::sqrt(off / all);
}

TYPED_TEST(Wavelet, DwtIsItsDefinition) {
    using T = TypeParam;
    for (int ext : {int(ExtPeriodic), int(ExtMirror), 9})
        for (size_t tapsLen : {2, 4, 6, 8, 10, 20, 40, 42})
            for (int levels : {1, 2, 3, 5, 30})
                for (int length : {1, 2, 3, 4, 5, 7, 8, 13, 21, 37, 64, 65, 70, 71, 72, 100, 127, 160, 203}) {
                    if (levels == 30 && length > 8) continue;
                    SCOPED_TRACE(::testing::Message() << ext << ", " << tapsLen << " taps, " << levels << " levels, " << length);
                    Bank<T> b(tapsLen), magnitudes(tapsLen);
                    for (auto h : {&Bank<T>::lowA, &Bank<T>::highA, &Bank<T>::lowS, &Bank<T>::highS})
                        for (size_t k = 0; k < tapsLen; ++k) (magnitudes.*h)[k] = std::fabs((b.*h)[k]);
                    const Dwt<T> dwt(length, levels, b, ext, length % 16);
                    const auto x = randomVector<T>(size_t(length)), y = randomVector<T>(size_t(dwt.coefLen()));
                    const int as = ext == 9 ? int(ExtPeriodic) : ext;
                    // Within what roundings of sums of so many products come to, at each value.
                    const auto near = [&](const std::vector<T>& got, const std::vector<T>& from, auto define) {
                        Reals v(from.begin(), from.end());
                        const Reals want = define(v, b);
                        for (Real& r : v) r = std::fabs(r);
                        const Reals most = define(v, magnitudes);
                        ASSERT_EQ(want.size(), got.size());
                        for (size_t i = 0; i < want.size(); ++i) ASSERT_TRUE(isNear(got[i], want[i], most[i], levels * int(tapsLen))) << i;
                    };
                    near(dwt.forward(x), x, [&](const Reals& v, const Bank<T>& h) { return definition(v, levels, h, as); });
                    near(dwt.inverse(y), y, [&](const Reals& v, const Bank<T>& h) { return inverseDefinition(v, length, levels, h, as); });
                    // Between guard pages, in a work buffer of the reported size, in place: the same bits.
                    const Guarded<T> src(x), coefs(y);
                    Guarded<T> out(y.size()), back(x.size()), both(std::max(x.size(), y.size()));
                    Guarded<uint8_t> buffer(size_t(dwt.bufferSize()), {length % 32, length % 2 == 0});
                    ASSERT_EQ(Api<T>::dwtFwd(src.data(), out, dwt, buffer), StatusOk);
                    ASSERT_EQ(Api<T>::dwtInv(coefs.data(), back, dwt, buffer), StatusOk);
                    ASSERT_TRUE(same(dwt.forward(x), out.values()) && same(dwt.inverse(y), back.values()));
                    if (x.size() == y.size()) {
                        both.assign(x);
                        ASSERT_EQ(Api<T>::dwtFwd(both, both, dwt, buffer), StatusOk);
                        ASSERT_TRUE(same(out.values(), both.values())) << "in place";
                        both.assign(y);
                        ASSERT_EQ(Api<T>::dwtInv(both, both, dwt, levels % 2 ? buffer.data() : nullptr), StatusOk);
                        ASSERT_TRUE(same(back.values(), both.values())) << "in place";
                    }
                    ASSERT_TRUE(out.intact() && back.intact() && buffer.intact() && both.intact());
                }
}

// Coefficients of another library, and where they lie.
TEST(DwtValues, AreThoseOfPyWavelets) {
    const std::vector<double> x = {3, -1, 4, 1, -5, 9, 2};
    struct Row {
        int tapsLen, family, ext;
        std::vector<double> want;
    };
    const Row rows[] = {
        {4,
         WaveletDaubechies,
         ExtPeriodic,
         {2.733692779255, 3.734293782605, -1.941142838269, 6.079757994207, -3.699618605545, 2.484164919844, 7.554030725010, -1.388829571003}},
        {10,
         WaveletCdf,
         ExtPeriodic,
         {1.654973260861, 3.521013231686, -0.950089997403, 6.380705222654, 4.030816429670, -1.203756961897, -8.680351292888, 0.903544356799}},
        {4,
         WaveletDaubechies,
         ExtMirror,
         {2.828427124746, 1.379538385313, 0.482962913145, 5.303300858899, 5.303300858899, 2.449489742783, 2.699017602195, -9.271029695237, -0.663140418435,
          9.236354518176}},
        {10,
         WaveletCdf,
         ExtMirror,
         {-0.339804459513, 1.981490404319, 2.710467387870, 3.383678400145, -0.723119264359, 5.698871289700, 5.673192552688, -0.339804459513, -4.009787892385,
          -1.729898463090, 4.265122495166, -1.203756961897, -9.067584588661, 3.442956973578, 8.302948437270, -4.009787892385}}};
    for (const Row& r : rows) {
        const Dwt<double> dwt(7, 1, Bank<double>(r.tapsLen, r.family), r.ext);
        const auto y = dwt.forward(x);
        ASSERT_EQ(y.size(), r.want.size());
        for (size_t i = 0; i < y.size(); ++i) EXPECT_NEAR(y[i], r.want[i], 1e-10) << r.tapsLen << ", " << r.ext << " at " << i;
    }
    const Dwt<double> dwt(100, 3, Bank<double>(8, WaveletSymlet), ExtMirror);   // 100: 53, 30, 18
    const int want[][2] = {{0, 18}, {66, 53}, {36, 30}, {18, 18}};
    for (int level = 0; level <= 3; ++level) {
        int offset = -1, len = -1;
        EXPECT_EQ(tevsDWTGetBand_64f(dwt, level, &offset, &len), StatusOk);
        EXPECT_TRUE(offset == want[level][0] && len == want[level][1]) << level << ": " << offset << ", " << len;
    }
    EXPECT_EQ(dwt.coefLen(), 119);
}

TYPED_TEST(Wavelet, DwtIsAccurate) {
    using T = TypeParam;
    eachWavelet([](int tapsLen, int family) {
        const Bank<T> b(tapsLen, family);
        const Bank<double> exact(tapsLen, family);
        for (int ext : {ExtPeriodic, ExtMirror})
            for (int length : {64, 257, 3000})
                for (int levels : {1, 4, 10}) {
                    SCOPED_TRACE(::testing::Message() << tapsLen << " of " << family << ", " << ext << ", " << length << ", " << levels);
                    const Dwt<T> dwt(length, levels, b, ext);
                    std::vector<T> x(size_t(length), 0);
                    for (T& v : x) v = T(randomValue<double>() + randomValue<double>() + randomValue<double>());
                    const Reals samples(x.begin(), x.end());
                    const auto y = dwt.forward(x);
                    const bool coarse = int64_t{4} << levels <= length;
                    EXPECT_LE(distance(definition(samples, levels, exact, ext), y), (coarse ? 5 : 3 * levels + 6) * kUnit<T>);
                    EXPECT_LE(distance(samples, dwt.inverse(y)), (coarse ? 7 : 3 * levels + 6) * kUnit<T>);
                }
    });
    expectOwnModes([] { return Dwt<T>(300, 4, Bank<T>(8, WaveletSymlet), ExtMirror).forward(std::vector<T>(300, T(0.3))); });
}

TYPED_TEST(Wavelet, DwtChecksItsArguments) {
    using T = TypeParam;
    using A = Api<T>;
    const Bank<T> b(4, WaveletDaubechies);
    int s = -7, w = -7, c = -7;
    auto* const mark = reinterpret_cast<typename A::Spec*>(0x40);
    auto* spec = mark;
    std::vector<uint8_t> block(4096);
    const T* const h = b.lowA.data();
    struct Row {
        int length, levels, tapsLen;
    };
    for (const Row& r : {Row{0, 1, 4}, Row{-1, 1, 4}, Row{INT_MIN, 1, 4}, Row{8, 0, 4}, Row{8, 31, 4}, Row{8, INT_MIN, 4}, Row{8, 1, 0}, Row{8, 1, 3},
                         Row{8, 1, -2}, Row{INT_MAX, 1, 4}, Row{INT_MAX, 30, INT_MAX - 1}, Row{8, 2, INT_MAX - 1}, Row{1 << 29, 1, 2}})
        for (int ext : {ExtPeriodic, ExtMirror}) {
            EXPECT_EQ(A::dwtGetSize(r.length, r.levels, r.tapsLen, ext, &s, &w, &c), StatusBadSize) << r.length << ", " << r.levels << ", " << r.tapsLen;
            EXPECT_EQ(A::dwtInit(&spec, r.length, r.levels, h, h, h, h, r.tapsLen, ext, block.data()), StatusBadSize);
            EXPECT_EQ(A::dwtInitAlloc(&spec, r.length, r.levels, h, h, h, h, r.tapsLen, ext), StatusBadSize);
        }
    EXPECT_EQ(A::dwtGetSize(0, 0, 0, 0, nullptr, &w, &c), StatusNullPtr);
    EXPECT_EQ(A::dwtGetSize(0, 0, 0, 0, &s, nullptr, &c), StatusNullPtr);
    EXPECT_EQ(A::dwtGetSize(0, 0, 0, 0, &s, &w, nullptr), StatusNullPtr);
    for (int hole = 0; hole < 6; ++hole) {
        const auto tap = [=](int i) { return hole == i ? nullptr : h; };
        EXPECT_EQ(A::dwtInit(hole == 0 ? nullptr : &spec, 0, 1, tap(1), tap(2), tap(3), tap(4), 4, 0, hole == 5 ? nullptr : block.data()), StatusNullPtr);
        if (hole < 5) {
            EXPECT_EQ(A::dwtInitAlloc(hole == 0 ? nullptr : &spec, 0, 1, tap(1), tap(2), tap(3), tap(4), 4, 0), StatusNullPtr);
        }
    }
    EXPECT_TRUE(s == -7 && w == -7 && c == -7 && spec == mark);
    const Dwt<T> dwt(16, 2, b, ExtPeriodic);
    std::vector<T> x(16, 3), y(16, 5);
    alignas(16) uint32_t stranger[64] = {0x44573033};
    const auto* const other = reinterpret_cast<const typename A::Spec*>(stranger);
    EXPECT_EQ(std::memcmp(static_cast<const typename A::Spec*>(dwt), sizeof(T) == 4 ? "10WD" : "20WD", 4), 0);
    for (const auto run : {A::dwtFwd, A::dwtInv}) {
        EXPECT_EQ(run(nullptr, nullptr, nullptr, nullptr), StatusNullPtr);
        EXPECT_EQ(run(nullptr, nullptr, other, nullptr), StatusContextMismatch);
        EXPECT_EQ(run(nullptr, y.data(), dwt, nullptr), StatusNullPtr);
        EXPECT_EQ(run(x.data(), nullptr, dwt, nullptr), StatusNullPtr);
    }
    EXPECT_EQ(A::dwtFree(nullptr), StatusNullPtr);
    EXPECT_EQ(A::dwtGetBand(nullptr, 0, &s, &w), StatusNullPtr);
    EXPECT_EQ(A::dwtGetBand(dwt, 0, nullptr, &w), StatusNullPtr);
    EXPECT_EQ(A::dwtGetBand(dwt, 0, &s, nullptr), StatusNullPtr);
    EXPECT_EQ(A::dwtGetBand(other, 0, &s, &w), StatusContextMismatch);
    for (int level : {-1, 3, INT_MIN, INT_MAX}) EXPECT_EQ(A::dwtGetBand(dwt, level, &s, &w), StatusBadArg);
    EXPECT_TRUE(s == -7 && w == -7 && y == std::vector<T>(16, 5));
}

}   // namespace
