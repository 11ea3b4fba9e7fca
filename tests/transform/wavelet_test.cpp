// Wavelets against their formulas in extended precision, and taps and coefficients of another library.
#include <climits>
#include <cmath>
#include <memory>

#include "support/control_words.h"
#include "support/elements.h"
#include "support/erased.h"

using namespace test;

namespace {

using Reals = std::vector<Real>;

// The function for T of a pair.
#define OF(name) std::get<sizeof(T) / 8>(std::make_tuple(tevs##name##_32f, tevs##name##_64f))
template <class T> using WtState = std::conditional_t<sizeof(T) == 4, WtState_32f, WtState_64f>;
template <class T> using DWTSpec = std::conditional_t<sizeof(T) == 4, DWTSpec_32f, DWTSpec_64f>;
template <class T> constexpr Real kUnit = std::numeric_limits<T>::epsilon() / 2;

template <class T> class Wavelet : public ::testing::Test {};
using Types = ::testing::Types<float, double>;
TYPED_TEST_SUITE(Wavelet, Types);

// A sum of products of taps and samples, or of such sums, and of their magnitudes.
struct Sum {
    Real want, magnitude;
    Sum(Real v = 0) : want(v), magnitude(std::fabs(v)) {}
    void add(Real tap, Sum v) {
        want += tap * v.want;
        magnitude += std::fabs(tap) * v.magnitude;
    }
};
using Sums = std::vector<Sum>;
// Each result within 2 n u of the magnitudes, or underflown; NaN where NaN is wanted and nowhere else.
template <class T>::testing::AssertionResult areNear(const T* got, const Sums& want, int n) {
    for (size_t i = 0; i < want.size(); ++i)
        if (const Sum& w = want[i];
            !(std::isnan(w.want) ? std::isnan(got[i]) : std::fabs(got[i] - w.want) <= 2 * n * kUnit<T> * w.magnitude + std::numeric_limits<T>::min()))
            return ::testing::AssertionFailure() << got[i] << " at " << i << " of " << want.size() << ", want " << w.want;
    return ::testing::AssertionSuccess();
}

// ---- taps -----------------------------------------------------------------------------------------------------------------------------------

enum { kLowA, kHighA, kLowS, kHighS };
template <class T> struct Bank {
    std::vector<T> taps[4];
    explicit Bank(int tapsLen, int family = -1) {   // -1: of no wavelet
        for (auto& v : taps) v = randomVector<T>(size_t(tapsLen));
        if (family < 0) return;
        EXPECT_EQ(OF(WtGenTaps)(taps[0].data(), taps[1].data(), taps[2].data(), taps[3].data(), tapsLen, family), StatusOk) << tapsLen << " of " << family;
    }
    const std::vector<T>& operator[](int i) const { return taps[i]; }
    int tapsLen() const { return int(taps[0].size()); }
};
template <class F> void eachWavelet(F f) {
    for (int tapsLen = 2; tapsLen <= 40; tapsLen += 2)
        for (int family : {WaveletDaubechies, WaveletSymlet, WaveletCdf})
            if (family == WaveletCdf ? tapsLen == 6 || tapsLen == 10 : family == WaveletDaubechies || tapsLen >= 4) {
                SCOPED_TRACE(::testing::Message() << tapsLen << " of " << family);
                f(tapsLen, family);
            }
}

// The centre of the energy of pLowS, as PyWavelets 1.1.1 has it; with the moments and orthogonality it leaves no other choice of roots.
constexpr double kDaubechies[] = {0.500000000, 0.850480947, 1.164137772, 1.461333907, 1.749111497, 2.030750574, 2.308052958,
                                  2.582118626, 2.853670352, 3.123209554, 3.391098921, 3.657609637, 3.922950004, 4.187283640,
                                  4.450741508, 4.713430137, 4.975437394, 5.236836638, 5.497689778, 5.758049554};
constexpr double kSymlets[] = {0.850480947,  1.164137772,  4.153564003,  4.550034550,  6.154342840,  5.161504160,  8.154613634,
                               8.552868446,  10.154737835, 9.161122274,  10.845195219, 12.538438711, 12.839373278, 13.151360487,
                               14.837832945, 16.464878064, 18.163064338, 17.143907627, 18.836362865};

TEST(WaveletTaps, AreThoseOfTheirFamily) {
    eachWavelet([](int n, int family) {
        const Bank<double> b(n, family);
        const Bank<float> single(n, family);
        for (size_t k = 0; k < size_t(n); ++k) {
            for (int i : {kLowA, kHighA, kLowS, kHighS}) ASSERT_TRUE((b[i][k] != 0 || !std::signbit(b[i][k])) && single[i][k] == float(b[i][k]));
            ASSERT_EQ(b[kHighS][k], k % 2 ? -b[kLowA][k] : b[kLowA][k]);
            ASSERT_EQ(b[kHighA][k], k % 2 ? b[kLowS][k] : -b[kLowS][k]);
            ASSERT_TRUE(family == WaveletCdf || b[kLowA][k] == b[kLowS][size_t(n) - 1 - k]);
        }
        const auto sum = [=](auto term) {
            Real s = 0;
            for (int k = 0; k < n; ++k) s += term(k, size_t(k));
            return s;
        };
        const auto at = [=](const std::vector<double>& v, int k) { return k >= 0 && k < n ? Real(v[size_t(k)]) : 0; };
        for (int shift = 0; shift < n; shift += 2)   // of a rounded bank: orthogonal within its rounding
            ASSERT_LE(std::fabs(sum([&](int k, size_t) { return at(b[kLowA], n - 1 - k) * at(b[kLowS], k + shift); }) - (shift == 0)), 0x1p-52L) << shift;
        for (int m = 0; m < (family != WaveletCdf ? n / 2 : n == 6 ? 2 : 4); ++m)
            ASSERT_LE(std::fabs(sum([&](int k, size_t i) { return b[kHighA][i] * std::pow(Real(2 * k - n) / n, Real(m)); })), 0x1p-51L) << m;
        if (family == WaveletCdf) return;
        const double centre = family == WaveletSymlet ? kSymlets[n / 2 - 2] : kDaubechies[n / 2 - 1];
        EXPECT_NEAR(double(sum([&](int k, size_t i) { return k * Real(b[kLowS][i]) * b[kLowS][i]; })), centre, 2e-9);
    });
}

TEST(WaveletTaps, ExactOnes) {
    const Real s = std::sqrt(Real(2)), r = std::sqrt(Real(3));
    const Bank<double> d4(4, WaveletDaubechies), cdf53(6, WaveletCdf), cdf97(10, WaveletCdf);
    const Real four[] = {(1 + r) / (4 * s), (3 + r) / (4 * s), (3 - r) / (4 * s), (1 - r) / (4 * s)}, five[] = {0, -1, 2, 6, 2, -1},
               three[] = {0, 1, 2, 1, 0, 0}, nine[] = {0, 0.037828455507, -0.023849465019, -0.110624404418, 0.377402855613, 0.852698679009},
               seven[] = {0, -0.064538882629, -0.040689417609, 0.418092273222, 0.788485616406};
    for (size_t k = 0; k < 4; ++k) EXPECT_EQ(d4[kLowS][k], double(four[k]));
    for (size_t k = 0; k < 6; ++k) EXPECT_TRUE(cdf53[kLowA][k] == double(five[k] * s / 8) && cdf53[kLowS][k] == double(three[k] * s / 4)) << k;
    for (size_t k = 0; k < 10; ++k) {
        EXPECT_NEAR(cdf97[kLowA][k], double(nine[k < 6 ? k : 10 - k]), 1e-11);
        EXPECT_NEAR(cdf97[kLowS][k], k < 8 ? double(seven[k < 5 ? k : 8 - k]) : 0, 1e-11);
    }
    EXPECT_EQ(Bank<double>(4, 77)[kLowS], d4[kLowS]);
}

TYPED_TEST(Wavelet, TapsCheckTheirArguments) {
    using T = TypeParam;
    T v[44] = {};
    for (int n : {INT_MIN, -2, 0, 1, 3, 39, 41, 42, INT_MAX, INT_MAX - 1}) EXPECT_EQ(OF(WtGenTaps)(v, v, v, v, n, WaveletDaubechies), StatusBadSize) << n;
    for (int n : {2, 4, 5, 8, 12}) EXPECT_EQ(OF(WtGenTaps)(v, v, v, v, n, WaveletCdf), StatusBadSize) << n;
    EXPECT_EQ(OF(WtGenTaps)(v, v, v, v, 2, WaveletSymlet), StatusBadSize);
    EXPECT_EQ(OF(WtGenTaps)(v, v, v, nullptr, -1, 0), StatusNullPtr);
    EXPECT_TRUE(std::all_of(v, v + 44, [](T x) { return x == 0; }));
}

// ---- pairs ----------------------------------------------------------------------------------------------------------------------------------

// Each result is scaled(a, +-b).
template <class T, class Analysis, class Synthesis, class Scaled> void checkHaar(Analysis analysis, Synthesis synthesis, Scaled scaled) {
    for (int len : {1, 2, 3, 5, 7, 8, 9, 15, 16, 17, 31, 40, 70, 300}) {
        const auto x = randomVector<T>(size_t(2 * len));
        Guarded<T> src(x), low{size_t(len)}, high{size_t(len)}, back{size_t(2 * len)};
        ASSERT_EQ(analysis(src.data(), low.data(), high.data(), len), StatusOk);
        ASSERT_EQ(synthesis(src.data(), src + len, back.data(), len), StatusOk);
        std::vector<T> sums, differences, pairs;
        for (size_t n = 0, m = size_t(len); n < m; ++n) {
            sums.push_back(scaled(x[2 * n], x[2 * n + 1]));
            differences.push_back(scaled(x[2 * n], -x[2 * n + 1]));
            pairs.insert(pairs.end(), {scaled(x[n], x[n + m]), scaled(x[n], -x[n + m])});
        }
        ASSERT_TRUE(sameNumbers(sums, low.values()) && sameNumbers(differences, high.values()) && sameNumbers(pairs, back.values())) << len;
        ASSERT_EQ(analysis(src.data(), src.data(), high.data(), len), StatusOk);
        ASSERT_TRUE(std::equal(sums.begin(), sums.end(), src.data()) && sameNumbers(differences, high.values()) && low.intact() && back.intact());
    }
}
TYPED_TEST(Wavelet, HaarIsItsFormula) {
    using T = TypeParam;
    checkHaar<T>(OF(WtHaarAnalysis), OF(WtHaarSynthesis), [](T a, T b) {
        const T sum = a + b;
        return sum * T(std::sqrt(Real(0.5)));
    });
}
TEST(Haar16s, RoundsOnce) {
    for (int scale : {0, 1, 2, 3, 15, 16, 17, 18, 19, 31, 32, 77, INT_MAX, -1, -2, -15, -16, -17, -40, INT_MIN})
        checkHaar<int16_t>([=](auto... a) { return tevsWtHaarAnalysis_16s_Sfs(a..., scale); },
                           [=](auto... a) { return tevsWtHaarSynthesis_16s_Sfs(a..., scale); }, [=](int a, int b) { return nearest<int16_t>(a + b, scale); });
}

template <class T, class Analysis, class Synthesis> void checkLift(const std::vector<T>& x, int lift, Analysis analysis, Synthesis synthesis) {
    const int n = int(x.size()), lows = (n + 1) / 2, highs = n / 2;
    std::vector<T> wantLow, wantHigh;
    const auto at = [&](int i) { return int64_t{x[size_t(i == n ? n - 2 : i)]}; };
    const auto high = [&](int i) { return int64_t{wantHigh[size_t(std::clamp(i, 0, highs - 1))]}; };
    for (int i = 0; i < highs; ++i) wantHigh.push_back(T(lift == Lift53 ? at(2 * i + 1) - ((at(2 * i) + at(2 * i + 2)) >> 1) : at(2 * i) - at(2 * i + 1)));
    for (int i = 0; i < lows; ++i)
        wantLow.push_back(T(n == 1           ? at(0)
                            : lift == Lift53 ? at(2 * i) + ((high(i - 1) + high(i) + 2) >> 2)
                            : 2 * i + 1 < n  ? at(2 * i + 1) + (high(i) >> 1)
                                             : at(2 * i)));
    const Guarded<T> src(x);
    Guarded<T> low(size_t(lows), {n % 3 * int(sizeof(T)), n % 2 == 0}), highOut(size_t(highs), {n % 5 * int(sizeof(T)), false}), back{size_t(n)};
    ASSERT_EQ(analysis(src.data(), low, highOut, n, lift), StatusOk);
    ASSERT_TRUE(same(wantLow, low.values()) && same(wantHigh, highOut.values())) << n;
    ASSERT_EQ(synthesis(low, highOut, back, n, lift), StatusOk);
    ASSERT_TRUE(same(x, back.values()) && low.intact() && highOut.intact() && back.intact()) << n;
}
template <class T, class... Functions> void checkLifts(Functions... f) {
    std::vector<T> v;
    constexpr T lo = std::numeric_limits<T>::min(), hi = std::numeric_limits<T>::max(), edges[] = {lo, lo + 1, -1, 0, 1, hi - 1, hi};
    for (T a : edges)
        for (T b : edges)
            for (T c : edges) v.insert(v.end(), {a, b, c});
    for (int lift : {int(LiftHaar), int(Lift53), 5}) {
        checkLift(v, lift, f...);
        eachLength([&](int n) { checkLift(randomVector<T>(size_t(n)), lift, f...); });
    }
}
TEST(Lifting, LosesNothing) {
    checkLifts<int16_t>(tevsWtLiftAnalysis_16s, tevsWtLiftSynthesis_16s);
    checkLifts<int32_t>(tevsWtLiftAnalysis_32s, tevsWtLiftSynthesis_32s);
}

// ---- streams --------------------------------------------------------------------------------------------------------------------------------

struct FilterSize {
    int tapsLen, offs;
};
constexpr FilterSize kSizes[] = {{1, -1}, {1, 0},  {1, 1}, {2, -1}, {2, 0},   {3, 0},  {3, 1},   {4, -1}, {5, 0},
                                 {6, 3},  {7, -1}, {8, 2}, {9, 0},  {20, -1}, {21, 6}, {40, -1}, {3, 40}};
enum Direction { kAnalysis, kSynthesis };

template <class T> class Stream {
public:
    Stream(Direction d, FilterSize low, FilterSize high, int place = -1)   // -1: in memory of its own
        : d_(d), size_{low, high}, taps_{randomVector<T>(size_t(low.tapsLen)), randomVector<T>(size_t(high.tapsLen))} {
        const auto init = [&](auto f, auto... block) {
            EXPECT_EQ(f(&state_, taps_[0].data(), low.tapsLen, low.offs, taps_[1].data(), high.tapsLen, high.offs, block...), StatusOk);
        };
        if (place < 0) init(d == kAnalysis ? OF(WtAnalysisInitAlloc) : OF(WtSynthesisInitAlloc));
        if (place < 0) return;
        int size = 0;
        EXPECT_EQ(OF(WtGetStateSize)(low.tapsLen, low.offs, high.tapsLen, high.offs, &size), StatusOk);
        block_ = std::make_unique<Guarded<uint8_t>>(size_t(size), Place{place, true});
        init(d == kAnalysis ? OF(WtAnalysisInit) : OF(WtSynthesisInit), block_->data());
    }
    ~Stream() {
        EXPECT_EQ(OF(WtFree)(state_), StatusOk);
        EXPECT_TRUE(!block_ || block_->intact());
    }
    Stream(const Stream&) = delete;
    operator WtState<T>*() { return state_; }

    // A signal behind a past against the formula: whole, cut anywhere, and in every mode; perhaps with a NaN, which reaches what its taps meet.
    void check(int len, int nanAt, bool everyMode) {
        const int twice = 2 * len, past[] = {pastOf(0), pastOf(1)};
        std::vector<T> x[2], line, lineAfter;
        for (int c = 0; c < (d_ == kAnalysis ? 1 : 2); ++c) {
            x[c] = randomVector<T>(size_t(past[c] + (d_ == kAnalysis ? twice : len)));
            if (nanAt >= 0) x[c][size_t(past[c] + nanAt)] = std::numeric_limits<T>::quiet_NaN();
            line.insert(line.end(), x[c].rend() - past[c], x[c].rend());
            lineAfter.insert(lineAfter.end(), x[c].rbegin(), x[c].rbegin() + past[c]);
        }
        Sums want(size_t(twice), 0);
        for (int c = 0; c < 2; ++c)
            for (int k = 0; k < size_[c].tapsLen; ++k)
                for (int i = d_ == kAnalysis ? 0 : -past[c]; i < len; ++i) {
                    const int m = 2 * i + 1 + size_[c].offs + k, from = d_ == kAnalysis ? past[0] + 2 * i - size_[c].offs - k : past[c] + i;
                    if (const int to = d_ == kAnalysis ? c * len + i : m; to >= 0 && to < twice)
                        want[size_t(to)].add(taps_[c][size_t(k)], x[d_ == kAnalysis ? 0 : c][size_t(from)]);
                }
        const auto run = [&](int most) {
            const Place end{int(sizeof(T)) * (len % 5), len % 2 == 0}, other{int(sizeof(T)) * (len % 3), len % 3 == 0};
            Guarded<T> pairs(size_t(twice), other), low(size_t(len), end), high{size_t(len)};
            d_ == kAnalysis ? pairs.assign({&x[0][size_t(past[0])], size_t(twice)}) : low.assign({&x[0][size_t(past[0])], size_t(len)});
            if (d_ == kSynthesis) high.assign({&x[1][size_t(past[1])], size_t(len)});
            EXPECT_EQ(OF(WtSetDlyLine)(state_, line.data()), StatusOk);
            for (int at = 0, n; at < len; at += n) {
                n = std::min(len - at, most == len ? len : 1 + int(generator()() % uint64_t(most)));
                EXPECT_EQ(d_ == kAnalysis ? OF(WtAnalysis)(pairs + 2 * at, low + at, high + at, n, state_)
                                          : OF(WtSynthesis)(low + at, high + at, pairs + 2 * at, n, state_),
                          StatusOk);
            }
            EXPECT_TRUE(pairs.intact() && low.intact() && high.intact());
            Guarded<T> after(line.size());
            EXPECT_EQ(OF(WtGetDlyLine)(state_, after), StatusOk);
            EXPECT_TRUE(sameNumbers(lineAfter, after.values()) && after.intact());
            auto y = pairs.values(), h = high.values();
            if (d_ == kAnalysis) y = low.values(), y.insert(y.end(), h.begin(), h.end());
            return y;
        };
        const auto whole = run(len);
        ASSERT_TRUE(areNear(whole.data(), want, d_ == kAnalysis ? std::max(size_[0].tapsLen, size_[1].tapsLen) : size_[0].tapsLen + size_[1].tapsLen)) << len;
        for (int most : {1, 3, 20, 90}) ASSERT_TRUE(len < 33 || sameNumbers(whole, run(most))) << len << " by up to " << most;
        if (everyMode) expectOwnModes([&] { return run(len); });
    }

private:
    int pastOf(int c) const {
        if (d_ == kSynthesis) return (size_[c].tapsLen + size_[c].offs) / 2;
        return c ? 0 : std::max({0, size_[0].tapsLen + size_[0].offs - 1, size_[1].tapsLen + size_[1].offs - 1});
    }
    const Direction d_;
    const FilterSize size_[2];
    const std::vector<T> taps_[2];
    WtState<T>* state_ = nullptr;
    std::unique_ptr<Guarded<uint8_t>> block_;
};

TYPED_TEST(Wavelet, StreamsAreTheirFormula) {
    for (size_t i = 0; i < std::size(kSizes); ++i)
        for (size_t j : {i, (i + 1) % std::size(kSizes), (i + 5) % std::size(kSizes)})
            for (Direction d : {kAnalysis, kSynthesis}) {
                SCOPED_TRACE(::testing::Message() << kSizes[i].tapsLen << "," << kSizes[i].offs << " and " << kSizes[j].tapsLen << "," << kSizes[j].offs << ": "
                                                  << d);
                Stream<TypeParam> owned(d, kSizes[i], kSizes[j]), placed(d, kSizes[i], kSizes[j], int(i) % 16);
                for (int len : {1, 2, 3, 5, 8, 13, 19, 33, 50, 70, 201, 400}) (len % 2 ? owned : placed).check(len, -1, len == 50 && i == j);
                for (int at : {0, 1, 30, 31}) owned.check(60, at, false);
            }
}

TYPED_TEST(Wavelet, StreamsCheckTheirArguments) {
    using T = TypeParam;
    T v[64] = {}, *const p = v;
    std::vector<uint8_t> block(8192);
    auto* const stranger = reinterpret_cast<WtState<T>*>(block.data());
    auto* state = stranger;
    struct Row {
        FilterSize low, high;
        Status want;
    };
    constexpr int most = INT_MAX, large = most / 4 / int(sizeof(T));
    int size = -7;
    for (const auto& [l, h, want] : {Row{{0, -2}, {0, -2}, StatusFilterLength},
                                     {{1, -2}, {0, -2}, StatusWtOffset},
                                     {{1, -1}, {0, -2}, StatusFilterLength},
                                     {{1, -1}, {1, -2}, StatusWtOffset},
                                     {{INT_MIN, 0}, {1, 0}, StatusFilterLength},
                                     {{2, INT_MIN}, {1, 0}, StatusWtOffset},
                                     {{most, -2}, {1, -1}, StatusFilterLength},
                                     {{2, most}, {0, -1}, StatusWtOffset},
                                     {{2, -1}, {most, -2}, StatusFilterLength},
                                     {{2, -1}, {2, most}, StatusWtOffset},
                                     {{large, -1}, {large, -2}, StatusFilterLength}})
        expectEach(want, {OF(WtGetStateSize)(l.tapsLen, l.offs, h.tapsLen, h.offs, &size),
                          OF(WtAnalysisInit)(&state, p, l.tapsLen, l.offs, p, h.tapsLen, h.offs, block.data()),
                          OF(WtSynthesisInitAlloc)(&state, p, l.tapsLen, l.offs, p, h.tapsLen, h.offs)});
    for (const auto init : {OF(WtAnalysisInit), OF(WtSynthesisInit)})
        expectEach(StatusNullPtr, {init(nullptr, p, 0, 0, p, 2, -1, block.data()), init(&state, nullptr, 0, 0, p, 2, -1, block.data()),
                                   init(&state, p, 0, 0, nullptr, 2, -1, block.data()), init(&state, p, 0, 0, p, 2, -1, nullptr)});
    EXPECT_TRUE(state == stranger && size == -7);
    Stream<T> analysis(kAnalysis, {4, -1}, {4, -1}), synthesis(kSynthesis, {4, -1}, {4, -1});
    EXPECT_EQ(std::memcmp(static_cast<WtState<T>*>(analysis), sizeof(T) == 4 ? "10AW" : "20AW", 4), 0);
    EXPECT_EQ(OF(WtSetDlyLine)(synthesis, nullptr), StatusOk);
    expectEach(StatusContextMismatch, {OF(WtAnalysis)(p, p + 20, p + 40, 2, synthesis), OF(WtSynthesis)(p, p + 20, p + 40, 2, analysis), OF(WtFree)(stranger),
                                       OF(WtSetDlyLine)(stranger, p), OF(WtGetDlyLine)(stranger, p)});
    expectEach(StatusBadSize, {OF(WtAnalysis)(p, p + 20, p + 40, 0, synthesis), OF(WtSynthesis)(p, p + 20, p + 40, INT_MIN, analysis)});
    expectEach(StatusNullPtr, {OF(WtAnalysis)(p, p + 20, nullptr, 0, analysis), OF(WtAnalysis)(p, p + 20, p + 40, 0, nullptr),
                               OF(WtGetDlyLine)(analysis, nullptr), OF(WtSynthesis)(p, nullptr, p + 40, 0, synthesis), OF(WtFree)(nullptr)});
    EXPECT_TRUE(std::all_of(v, v + 64, [](T x) { return x == 0; }));
}

// ---- whole signals --------------------------------------------------------------------------------------------------------------------------

template <class T> class Dwt {
public:
    int bufferSize = 0, coefLen = 0;

    Dwt(int length, int levels, const Bank<T>& b, int ext, int place = -1) : length_(length) {
        int size = 0;
        EXPECT_EQ(OF(DWTGetSize)(length, levels, b.tapsLen(), ext, &size, &bufferSize, &coefLen), StatusOk);
        const auto init = [&](auto f, auto... block) {
            EXPECT_EQ(f(&spec_, length, levels, b[0].data(), b[1].data(), b[2].data(), b[3].data(), b.tapsLen(), ext, block...), StatusOk);
        };
        if (place < 0) init(OF(DWTInitAlloc));
        if (place < 0) return;
        block_ = std::make_unique<Guarded<uint8_t>>(size_t(size), Place{place, true});
        init(OF(DWTInit), block_->data());
    }
    ~Dwt() {
        EXPECT_EQ(OF(DWTFree)(spec_), StatusOk);
        EXPECT_TRUE(!block_ || (block_->intact() && OF(DWTFree)(spec_) == StatusContextMismatch));
    }
    Dwt(const Dwt&) = delete;
    operator const DWTSpec<T>*() const { return spec_; }
    std::vector<T> run(bool forward, const std::vector<T>& x) const {
        std::vector<T> y(size_t(forward ? coefLen : length_), 7);
        EXPECT_EQ((forward ? OF(DWTFwd) : OF(DWTInv))(x.data(), y.data(), spec_, nullptr), StatusOk);
        return y;
    }

private:
    const int length_;
    DWTSpec<T>* spec_ = nullptr;
    std::unique_ptr<Guarded<uint8_t>> block_;
};

// The definitions, level by level.
int64_t modulo(int64_t i, int64_t n) { return (i % n + n) % n; }
int64_t channelLen(int64_t n, int tapsLen, int ext) { return ext == ExtMirror ? (n + tapsLen - 1) / 2 : (n + 1) / 2; }
template <class T> Sums forward(Sums a, int levels, const Bank<T>& b, int ext) {
    Sums all;
    while (levels-- > 0) {
        const int64_t L = b.tapsLen(), n = int64_t(a.size()), m = channelLen(n, int(L), ext);
        Sums low(size_t(m), 0), high(low);
        for (int64_t i = 0; i < m; ++i)
            for (int64_t k = 0; k < L; ++k) {
                const int64_t at = ext == ExtMirror ? modulo(2 * i + 1 - k, 2 * n) : std::min(modulo(2 * i + L / 2 - k, 2 * m), n - 1);
                const Sum& v = a[size_t(at < n ? at : 2 * n - 1 - at)];
                low[size_t(i)].add(b[kLowA][size_t(k)], v), high[size_t(i)].add(b[kHighA][size_t(k)], v);
            }
        all.insert(all.begin(), high.begin(), high.end());
        a = low;
    }
    all.insert(all.begin(), a.begin(), a.end());
    return all;
}
template <class T> Sums inverse(const Sums& y, int64_t length, int levels, const Bank<T>& b, int ext) {
    const int64_t L = b.tapsLen(), zeros = ext == ExtMirror ? L - 2 : 0;
    std::vector<int64_t> lens{length};
    for (int level = 0; level < levels; ++level) lens.push_back(channelLen(lens.back(), int(L), ext));
    auto high = y.begin() + lens.back();
    Sums low(y.begin(), high);
    for (int level = levels; level-- > 0;) {
        const auto m = int64_t(low.size());
        Sums a(size_t(2 * m + zeros), 0);
        for (int64_t i = 0; i < m; ++i, ++high)
            for (int64_t k = 0; k < L; ++k) {
                Sum& to = a[size_t(ext == ExtMirror ? k + 2 * i : modulo(2 * i + k + 1 - L / 2, 2 * m))];
                to.add(b[kLowS][size_t(k)], low[size_t(i)]), to.add(b[kHighS][size_t(k)], *high);
            }
        low.assign(a.begin() + zeros, a.begin() + zeros + lens[size_t(level)]);
    }
    return low;
}

TYPED_TEST(Wavelet, DwtIsItsDefinition) {
    using T = TypeParam;
    for (int ext : {int(ExtPeriodic), int(ExtMirror), 9})
        for (int tapsLen : {2, 4, 6, 8, 10, 20, 40, 42})
            for (int levels : {1, 2, 3, 5, 30})
                for (int length : {1, 2, 3, 4, 5, 7, 8, 13, 21, 37, 64, 65, 70, 71, 72, 100, 127, 160, 203}) {
                    if (levels == 30 && length > 8) continue;
                    SCOPED_TRACE(::testing::Message() << ext << ", " << tapsLen << " taps, " << levels << " levels, " << length);
                    const Bank<T> b(tapsLen);
                    const Dwt<T> dwt(length, levels, b, ext, length % 16);
                    Guarded<uint8_t> buffer(size_t(dwt.bufferSize), {length % 32, length % 2 == 0});
                    for (bool ahead : {true, false}) {
                        const auto x = randomVector<T>(size_t(ahead ? length : dwt.coefLen));
                        const auto got = dwt.run(ahead, x);
                        const Sums v(x.begin(), x.end()), want = ahead ? forward(v, levels, b, ext) : inverse(v, length, levels, b, ext);
                        ASSERT_EQ(want.size(), got.size());
                        ASSERT_TRUE(areNear(got.data(), want, levels * tapsLen));
                        // Between guard pages, in a work buffer of the reported size, in place: the same bits.
                        Guarded<T> src(x), out(got.size());
                        const auto f = ahead ? OF(DWTFwd) : OF(DWTInv);
                        ASSERT_EQ(f(src, out, dwt, buffer), StatusOk);
                        ASSERT_TRUE(same(got, out.values()) && same(x, src.values()));
                        if (x.size() == got.size()) {
                            ASSERT_EQ(f(src, src, dwt, ahead || levels % 2 ? buffer.data() : nullptr), StatusOk);
                            ASSERT_TRUE(same(got, src.values())) << "in place";
                        }
                        ASSERT_TRUE(out.intact() && src.intact() && buffer.intact());
                    }
                }
}

// Coefficients of another library, and where they lie.
TEST(DwtValues, AreThoseOfPyWavelets) {
    const std::vector<double> x = {3, -1, 4, 1, -5, 9, 2};
    const auto expect = [&](int tapsLen, int family, int ext, const std::vector<double>& want) {
        const auto y = Dwt<double>(7, 1, Bank<double>(tapsLen, family), ext).run(true, x);
        ASSERT_EQ(y.size(), want.size());
        for (size_t i = 0; i < y.size(); ++i) EXPECT_NEAR(y[i], want[i], 1e-10) << tapsLen << ", " << ext << " at " << i;
    };
    expect(4, WaveletDaubechies, ExtPeriodic,
           {2.733692779255, 3.734293782605, -1.941142838269, 6.079757994207, -3.699618605545, 2.484164919844, 7.554030725010, -1.388829571003});
    expect(10, WaveletCdf, ExtMirror,
           {-0.339804459513, 1.981490404319, 2.710467387870, 3.383678400145, -0.723119264359, 5.698871289700, 5.673192552688, -0.339804459513, -4.009787892385,
            -1.729898463090, 4.265122495166, -1.203756961897, -9.067584588661, 3.442956973578, 8.302948437270, -4.009787892385});
    const Dwt<double> dwt(100, 3, Bank<double>(8, WaveletSymlet), ExtMirror);   // 100: 53, 30, 18
    const int want[][2] = {{0, 18}, {66, 53}, {36, 30}, {18, 18}};
    for (int level = 0; level <= 3; ++level) {
        int offset = -1, len = -1;
        EXPECT_EQ(tevsDWTGetBand_64f(dwt, level, &offset, &len), StatusOk);
        EXPECT_TRUE(offset == want[level][0] && len == want[level][1]) << level << ": " << offset << ", " << len;
    }
    EXPECT_EQ(dwt.coefLen, 119);
}

Reals valuesOf(const Sums& s) {
    Reals v;
    for (const Sum& x : s) v.push_back(x.want);
    return v;
}
TYPED_TEST(Wavelet, DwtIsAccurate) {
    using T = TypeParam;
    eachWavelet([](int tapsLen, int family) {
        const Bank<double> exact(tapsLen, family);
        for (int ext : {ExtPeriodic, ExtMirror})
            for (int length : {64, 257, 3000})
                for (int levels : {1, 4, 10}) {
                    SCOPED_TRACE(::testing::Message() << ext << ", " << length << ", " << levels);
                    const Dwt<T> dwt(length, levels, Bank<T>(tapsLen, family), ext);
                    std::vector<T> x(size_t(length), 0);
                    for (T& v : x) v = T(randomValue<double>() + randomValue<double>() + randomValue<double>());
                    const auto y = dwt.run(true, x), back = dwt.run(false, y);
                    const Reals in(x.begin(), x.end()), want = valuesOf(forward(Sums(x.begin(), x.end()), levels, exact, ext));
                    const bool coarse = int64_t{4} << levels <= length;
                    EXPECT_LE(distance(want, Reals(y.begin(), y.end())), (coarse ? 5 : 3 * levels + 6) * kUnit<T>);
                    EXPECT_LE(distance(in, Reals(back.begin(), back.end())), (coarse ? 7 : 3 * levels + 6) * kUnit<T>);
                }
    });
    expectOwnModes([] { return Dwt<T>(300, 4, Bank<T>(8, WaveletSymlet), ExtMirror).run(true, std::vector<T>(300, T(0.3))); });
}

TYPED_TEST(Wavelet, DwtChecksItsArguments) {
    using T = TypeParam;
    int s = -7, w = -7, c = -7;
    alignas(16) uint8_t block[4096] = {};
    auto* const other = reinterpret_cast<DWTSpec<T>*>(block);
    auto* spec = other;
    T x[16] = {}, *const h = x;
    struct Row {
        int length, levels, tapsLen;
    };
    for (const Row& r : {Row{0, 1, 4}, Row{-1, 1, 4}, Row{INT_MIN, 1, 4}, Row{8, 0, 4}, Row{8, 31, 4}, Row{8, INT_MIN, 4}, Row{8, 1, 0}, Row{8, 1, 3},
                         Row{8, 1, -2}, Row{INT_MAX, 1, 4}, Row{INT_MAX, 30, INT_MAX - 1}, Row{8, 2, INT_MAX - 1}, Row{1 << 29, 1, 2}})
        for (int ext : {ExtPeriodic, ExtMirror})
            expectEach(StatusBadSize, {OF(DWTGetSize)(r.length, r.levels, r.tapsLen, ext, &s, &w, &c),
                                       OF(DWTInit)(&spec, r.length, r.levels, h, h, h, h, r.tapsLen, ext, block),
                                       OF(DWTInitAlloc)(&spec, r.length, r.levels, h, h, h, h, r.tapsLen, ext)});
    for (int hole = 0; hole < 6; ++hole) {
        const auto at = [=](int i, auto* p) { return hole == i ? nullptr : p; };
        EXPECT_EQ(OF(DWTInit)(at(0, &spec), 0, 1, at(1, h), at(2, h), at(3, h), at(4, h), 4, 0, at(5, block)), StatusNullPtr);
        EXPECT_EQ(OF(DWTInitAlloc)(at(0, &spec), 0, 1, at(1, h), at(2, h), at(3, h), at(4, h), 4, 0), hole < 5 ? StatusNullPtr : StatusBadSize);
    }
    const Dwt<T> dwt(16, 2, Bank<T>(4), ExtPeriodic);
    EXPECT_EQ(std::memcmp(static_cast<const DWTSpec<T>*>(dwt), sizeof(T) == 4 ? "10WD" : "20WD", 4), 0);
    for (const auto run : {OF(DWTFwd), OF(DWTInv)}) {
        expectEach(StatusNullPtr, {run(nullptr, nullptr, nullptr, nullptr), run(nullptr, x, dwt, nullptr), run(x, nullptr, dwt, nullptr)});
        EXPECT_EQ(run(nullptr, nullptr, other, nullptr), StatusContextMismatch);
    }
    expectEach(StatusNullPtr,
               {OF(DWTFree)(nullptr), OF(DWTGetBand)(nullptr, 0, &s, &w), OF(DWTGetBand)(dwt, 0, nullptr, &w), OF(DWTGetBand)(dwt, 0, &s, nullptr)});
    EXPECT_EQ(OF(DWTGetBand)(other, 0, &s, &w), StatusContextMismatch);
    for (int level : {-1, 3, INT_MIN, INT_MAX}) EXPECT_EQ(OF(DWTGetBand)(dwt, level, &s, &w), StatusBadArg);
    EXPECT_TRUE(s == -7 && w == -7 && c == -7 && spec == other && std::all_of(x, x + 16, [](T v) { return v == 0; }));
}

}   // namespace
