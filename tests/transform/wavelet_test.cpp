// Wavelets against their formulas in extended precision, and taps against another library.
#include <climits>
#include <cmath>

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
// Output n of an analysis filter and output m of a synthesis filter, of samples x(i) at any place.
template <class T, class X> Sum analysed(const std::vector<T>& h, int64_t offs, int64_t n, X x) {
    Sum s;
    for (size_t k = 0; k < h.size(); ++k) s.add(h[k], x(2 * n - offs - int64_t(k)));
    return s;
}
template <class T, class X> Sum synthesised(const std::vector<T>& h, int64_t offs, int64_t m, X x) {
    Sum s;
    for (int64_t k = (m - 1 - offs) & 1; k < int64_t(h.size()); k += 2) s.add(h[size_t(k)], x((m - 1 - offs - k) / 2));
    return s;
}
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
    const Real s = std::sqrt(Real(2)), r = std::sqrt(Real(3)), four[] = {(1 + r) / (4 * s), (3 + r) / (4 * s), (3 - r) / (4 * s), (1 - r) / (4 * s)},
               five[] = {0, -1, 2, 6, 2, -1}, three[] = {0, 1, 2, 1, 0, 0},
               nine[] = {0, 0.037828455507, -0.023849465019, -0.110624404418, 0.377402855613, 0.852698679009},
               seven[] = {0, -0.064538882629, -0.040689417609, 0.418092273222, 0.788485616406, 0.418092273222};
    const Bank<double> d4(4, 77), cdf53(6, WaveletCdf), cdf97(10, WaveletCdf);   // no name's number: Daubechies
    for (size_t k = 0; k < 6; ++k) {
        EXPECT_TRUE(k > 3 || d4[kLowS][k] == double(four[k]));
        EXPECT_TRUE(cdf53[kLowA][k] == double(five[k] * s / 8) && cdf53[kLowS][k] == double(three[k] * s / 4)) << k;
        for (size_t i : {k, (10 - k) % 10}) EXPECT_NEAR(cdf97[kLowA][i], double(nine[k]), 1e-11);
        for (size_t i : {k, 8 - k}) EXPECT_NEAR(cdf97[kLowS][i], double(seven[k]), 1e-11);
    }
    EXPECT_EQ(cdf97[kLowS][9], 0);
}

// ---- pairs ----------------------------------------------------------------------------------------------------------------------------------

// Each result is scaled(a, +-b).
template <class T, class Analysis, class Synthesis, class Scaled> void checkHaar(Analysis analysis, Synthesis synthesis, Scaled scaled) {
    eachLength([&](int len) {
        const auto n = size_t(len);
        auto x = randomVector<T>(2 * n);
        std::vector<T> low(n), high(n), back(2 * n), sums, differences, pairs;
        for (size_t i = 0; i < n; ++i) {
            sums.push_back(scaled(x[2 * i], x[2 * i + 1]));
            differences.push_back(scaled(x[2 * i], -x[2 * i + 1]));
            pairs.insert(pairs.end(), {scaled(x[i], x[i + n]), scaled(x[i], -x[i + n])});
        }
        expectEach(StatusOk, {analysis(x.data(), low.data(), high.data(), len), synthesis(x.data(), x.data() + n, back.data(), len)});
        ASSERT_TRUE(sameNumbers(sums, low) && sameNumbers(differences, high) && sameNumbers(pairs, back)) << len;
        ASSERT_EQ(analysis(x.data(), x.data(), low.data(), len), StatusOk);
        ASSERT_TRUE(std::equal(sums.begin(), sums.end(), x.begin()) && sameNumbers(high, low)) << len << " in place";
    });
}
TYPED_TEST(Wavelet, HaarIsItsFormula) {
    using T = TypeParam;
    checkHaar<T>(OF(WtHaarAnalysis), OF(WtHaarSynthesis), [](T a, T b) { return T(a + b) * T(std::sqrt(Real(0.5))); });
}
TEST(Haar16s, RoundsOnce) {
    for (int scale : {0, 1, 2, 3, 15, 16, 17, 18, 19, 31, 32, 77, INT_MAX, -1, -2, -15, -16, -17, -40, INT_MIN})
        checkHaar<int16_t>([=](auto... a) { return tevsWtHaarAnalysis_16s_Sfs(a..., scale); },
                           [=](auto... a) { return tevsWtHaarSynthesis_16s_Sfs(a..., scale); }, [=](int a, int b) { return nearest<int16_t>(a + b, scale); });
}

template <class T, class Analysis, class Synthesis> void checkLift(const std::vector<T>& x, int lift, Analysis analysis, Synthesis synthesis) {
    const int n = int(x.size()), lows = (n + 1) / 2, highs = n / 2;
    std::vector<T> low, high;
    const auto at = [&](int i) { return int64_t{x[size_t(i == n ? n - 2 : i)]}; };
    const auto near = [&](int i) { return int64_t{high[size_t(std::clamp(i, 0, highs - 1))]}; };
    for (int i = 0; i < 2 * highs; i += 2) high.push_back(T(lift == Lift53 ? at(i + 1) - ((at(i) + at(i + 2)) >> 1) : at(i) - at(i + 1)));
    for (int i = 0; i < lows; ++i)
        low.push_back(T(lift == Lift53 && n > 1 ? at(2 * i) + ((near(i - 1) + near(i) + 2) >> 2) : i < highs ? at(2 * i + 1) + (near(i) >> 1) : at(2 * i)));
    std::vector<T> gotLow(low.size()), gotHigh(high.size() + 1, 77), back(x.size());
    expectEach(StatusOk, {analysis(x.data(), gotLow.data(), gotHigh.data(), n, lift), synthesis(low.data(), gotHigh.data(), back.data(), n, lift)});
    high.push_back(77);
    ASSERT_TRUE(same(low, gotLow) && same(high, gotHigh) && same(x, back)) << n;
}
template <class T, class... Functions> void checkLifts(Functions... f) {
    std::vector<T> v;
    constexpr T lo = std::numeric_limits<T>::min(), hi = std::numeric_limits<T>::max(), edges[] = {lo, lo + 1, -1, 0, 1, hi - 1, hi};
    for (int i = 0; i < 343; ++i) v.insert(v.end(), {edges[i / 49], edges[i / 7 % 7], edges[i % 7]});
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

// A block behind a past, perhaps with a NaN.
template <class T> struct Stream {
    const Direction d;
    const int len;
    const FilterSize size[2];
    std::vector<T> taps[2], x[2], line, lineAfter;   // of analysis, x[0] alone
    Stream(Direction dir, FilterSize low, FilterSize high, int n, int nanAt) : d(dir), len(n), size{low, high} {
        for (int c = 0; c < 2; ++c) {
            taps[c] = randomVector<T>(size_t(size[c].tapsLen));
            if (d == kAnalysis && c == 1) break;
            x[c] = randomVector<T>(size_t(past(c) + (d == kAnalysis ? 2 * len : len)));
            if (nanAt >= 0) x[c][size_t(past(c) + nanAt)] = std::numeric_limits<T>::quiet_NaN();
            line.insert(line.end(), x[c].rend() - past(c), x[c].rend());
            lineAfter.insert(lineAfter.end(), x[c].rbegin(), x[c].rbegin() + past(c));
        }
    }
    int past(int c) const {
        return d == kSynthesis ? (size[c].tapsLen + size[c].offs) / 2 : std::max({0, size[0].tapsLen + size[0].offs - 1, size[1].tapsLen + size[1].offs - 1});
    }
    Sums want() const {
        const auto from = [&](int c) { return [&, c](int64_t i) { return Sum(x[c].at(size_t(past(c) + i))); }; };
        Sums y;
        for (int i = 0; i < 2 * len; ++i) {
            const int c = d == kAnalysis ? i / len : 0;
            y.push_back(d == kAnalysis ? analysed(taps[c], size[c].offs, i % len, from(0)) : synthesised(taps[0], size[0].offs, i, from(0)));
            if (d == kSynthesis) y.back().add(1, synthesised(taps[1], size[1].offs, i, from(1)));
        }
        return y;
    }
    // In blocks of up to `most` pairs, by a record in memory of its own or (place >= 0) in a block of the reported size.
    std::vector<T> run(int most, int place) const {
        int bytes = 0, unequal = len % 3 * int(sizeof(T));
        EXPECT_EQ(OF(WtGetStateSize)(size[0].tapsLen, size[0].offs, size[1].tapsLen, size[1].offs, &bytes), StatusOk);
        Guarded<uint8_t> block(size_t(bytes), {std::max(place, 0)});
        Guarded<T> pairs(size_t(2 * len), {unequal, len % 2 == 0}), low(size_t(len), {unequal, len % 5 == 0}), high{size_t(len)}, after(line.size());
        (d == kAnalysis ? pairs : low).assign(std::span(x[0]).subspan(size_t(past(0))));
        if (d == kSynthesis) high.assign(std::span(x[1]).subspan(size_t(past(1))));
        WtState<T>* state = nullptr;
        const auto init = [&](auto f, auto... in) {
            return f(&state, taps[0].data(), size[0].tapsLen, size[0].offs, taps[1].data(), size[1].tapsLen, size[1].offs, in...);
        };
        const bool analysis = d == kAnalysis, own = place < 0;
        expectEach(StatusOk, {own && analysis ? init(OF(WtAnalysisInitAlloc))
                              : own           ? init(OF(WtSynthesisInitAlloc))
                              : analysis      ? init(OF(WtAnalysisInit), block.data())
                                              : init(OF(WtSynthesisInit), block.data())});
        EXPECT_EQ(OF(WtSetDlyLine)(state, line.data()), StatusOk);
        for (int at = 0, n; at < len; at += n) {
            n = std::min(len - at, most == len ? len : 1 + int(generator()() % uint64_t(most)));
            const auto [l, h, p] = std::tuple{low + at, high + at, pairs + 2 * at};
            EXPECT_EQ(analysis ? OF(WtAnalysis)(p, l, h, n, state) : OF(WtSynthesis)(l, h, p, n, state), StatusOk);
        }
        expectEach(StatusOk, {OF(WtGetDlyLine)(state, after), OF(WtFree)(state)});
        EXPECT_TRUE(sameNumbers(lineAfter, after.values()) && after.intact() && pairs.intact() && low.intact() && high.intact() && block.intact());
        auto y = pairs.values(), h = high.values();
        if (d == kAnalysis) y = low.values(), y.insert(y.end(), h.begin(), h.end());
        return y;
    }
};

TYPED_TEST(Wavelet, StreamsAreTheirFormula) {
    constexpr size_t n = std::size(kSizes);
    for (size_t i = 0; i < 6 * n; ++i)
        for (int len : {1, 2, 3, 5, 8, 13, 19, 33, 50, 70, 201, 400})
            for (int nanAt : {-1, 0, 1, 30, 31}) {
                if (nanAt >= 0 && len != 33) continue;
                const FilterSize l = kSizes[i % n], h = kSizes[(i + i / n / 2 * 3) % n];   // of the same size, or of others
                SCOPED_TRACE(::testing::Message() << l.tapsLen << "," << l.offs << " and " << h.tapsLen << "," << h.offs << ": " << i / n % 2 << ", " << len);
                const Stream<TypeParam> s(Direction(i / n % 2), l, h, len, nanAt);
                const auto whole = s.run(len, len % 17 - 1);
                ASSERT_TRUE(areNear(whole.data(), s.want(), std::max(l.tapsLen, h.tapsLen)));
                for (int most : {1, 3, 20, 90}) ASSERT_TRUE(len < 33 || sameNumbers(whole, s.run(most, -1))) << "by up to " << most;
                if (len == 50 && i < 2 * n) expectOwnModes([&] { return s.run(len, -1); });
            }
}

// ---- whole signals --------------------------------------------------------------------------------------------------------------------------

// length samples forward, or what makes so many back; everywhere and anyhow the same bits: between guard pages, in a work buffer of the reported size, in place.
template <class T> std::vector<T> dwt(bool ahead, const std::vector<T>& x, int length, int levels, const Bank<T>& b, int ext) {
    DWTSpec<T>* spec[2] = {};
    int size = 0, bufferSize = 0, coefLen = 0;
    EXPECT_EQ(OF(DWTGetSize)(length, levels, b.tapsLen(), ext, &size, &bufferSize, &coefLen), StatusOk);
    EXPECT_EQ(int(x.size()), ahead ? length : coefLen);
    Guarded<uint8_t> block(size_t(size), {length % 16}), buffer(size_t(bufferSize), {length % 32, length % 2 == 0});
    Guarded<T> src(x), out(size_t(ahead ? coefLen : length));
    const auto init = [&](auto f, int i, auto... in) {
        return f(&spec[i], length, levels, b[0].data(), b[1].data(), b[2].data(), b[3].data(), b.tapsLen(), ext, in...);
    };
    expectEach(StatusOk, {init(OF(DWTInitAlloc), 0), init(OF(DWTInit), 1, block.data())});
    const auto f = ahead ? OF(DWTFwd) : OF(DWTInv);
    EXPECT_EQ(f(src, out, spec[0], nullptr), StatusOk);
    const auto y = out.values();
    EXPECT_EQ(f(src, out, spec[1], buffer), StatusOk);
    EXPECT_TRUE(same(y, out.values()) && same(x, src.values()));
    if (x.size() == y.size()) {
        EXPECT_EQ(f(src, src, spec[0], ahead || levels % 2 ? buffer.data() : nullptr), StatusOk);
        EXPECT_TRUE(same(y, src.values())) << "in place";
    }
    expectEach(StatusOk, {OF(DWTFree)(spec[0]), OF(DWTFree)(spec[1])});
    EXPECT_EQ(OF(DWTFree)(spec[1]), StatusContextMismatch);
    EXPECT_TRUE(out.intact() && src.intact() && buffer.intact() && block.intact());
    return y;
}

// The definitions, level by level: streams whose filters reach into the future.
int64_t modulo(int64_t i, int64_t n) { return (i % n + n) % n; }
int64_t channelLen(int64_t n, int tapsLen, int ext) { return ext == ExtMirror ? (n + tapsLen - 1) / 2 : (n + 1) / 2; }
template <class T> Sums forward(const Sums& a, int levels, const Bank<T>& b, int ext) {
    if (levels == 0) return a;
    const int64_t n = int64_t(a.size()), m = channelLen(n, b.tapsLen(), ext), offs = ext == ExtMirror ? -1 : -b.tapsLen() / 2;
    const auto at = [&](int64_t i) { return a[size_t((i = modulo(i, 2 * (ext == ExtMirror ? n : m))) < n ? i : 2 * n - 1 - i)]; };
    Sums channel[2];
    for (int64_t i = 0; i < 2 * m; ++i) channel[i % 2].push_back(analysed(b[i % 2 ? kHighA : kLowA], offs, i / 2, at));
    Sums y = forward(channel[0], levels - 1, b, ext);
    y.insert(y.end(), channel[1].begin(), channel[1].end());
    return y;
}
template <class T> Sums inverse(const Sums& y, int64_t length, int levels, const Bank<T>& b, int ext) {
    if (levels == 0) return y;
    const int64_t m = channelLen(length, b.tapsLen(), ext), offs = ext == ExtMirror ? 1 - b.tapsLen() : -b.tapsLen() / 2;
    const Sums low = inverse(Sums(y.begin(), y.end() - m), m, levels - 1, b, ext);
    const auto of = [=](auto x) { return [=](int64_t i) { return x[ext == ExtMirror ? i : modulo(i, m)]; }; };
    Sums a;
    for (int64_t i = 0; i < length; ++i) {
        a.push_back(synthesised(b[kLowS], offs, i, of(low.begin())));
        a.back().add(1, synthesised(b[kHighS], offs, i, of(y.end() - m)));
    }
    return a;
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
                    const auto x = randomVector<T>(size_t(length));
                    const Sums want = forward(Sums(x.begin(), x.end()), levels, b, ext);
                    const auto coefs = randomVector<T>(want.size());
                    ASSERT_TRUE(areNear(dwt(true, x, length, levels, b, ext).data(), want, levels * tapsLen));
                    ASSERT_TRUE(areNear(dwt(false, coefs, length, levels, b, ext).data(), inverse(Sums(coefs.begin(), coefs.end()), length, levels, b, ext),
                                        levels * tapsLen));
                }
}

// As PyWavelets 1.1.1 has them.
TEST(DwtValues, AreThoseOfAnother) {
    const auto expect = [](int tapsLen, int family, int ext, const Reals& want) {
        const auto y = dwt(true, std::vector<double>{3, -1, 4, 1, -5, 9, 2}, 7, 1, Bank<double>(tapsLen, family), ext);
        EXPECT_LE(distance(want, Reals(y.begin(), y.end())), 1e-11) << tapsLen;
    };
    expect(4, WaveletDaubechies, ExtPeriodic,
           {2.733692779255, 3.734293782605, -1.941142838269, 6.079757994207, -3.699618605545, 2.484164919844, 7.554030725010, -1.388829571003});
    expect(10, WaveletCdf, ExtMirror,
           {-0.339804459513, 1.981490404319, 2.710467387870, 3.383678400145, -0.723119264359, 5.698871289700, 5.673192552688, -0.339804459513, -4.009787892385,
            -1.729898463090, 4.265122495166, -1.203756961897, -9.067584588661, 3.442956973578, 8.302948437270, -4.009787892385});
}
TYPED_TEST(Wavelet, DwtIsAccurate) {
    using T = TypeParam;
    eachWavelet([](int tapsLen, int family) {
        const Bank<T> b(tapsLen, family);
        for (int ext : {ExtPeriodic, ExtMirror})
            for (int length : {64, 257, 3000})
                for (int levels : {1, 4, 10}) {
                    SCOPED_TRACE(::testing::Message() << ext << ", " << length << ", " << levels);
                    std::vector<T> x(size_t(length), 0);
                    for (T& v : x) v = T(randomValue<double>() + randomValue<double>() + randomValue<double>());
                    const auto y = dwt(true, x, length, levels, b, ext), back = dwt(false, y, length, levels, b, ext);
                    Reals want;
                    for (const Sum& s : forward(Sums(x.begin(), x.end()), levels, Bank<double>(tapsLen, family), ext)) want.push_back(s.want);
                    const bool coarse = int64_t{4} << levels <= length;
                    EXPECT_LE(distance(want, Reals(y.begin(), y.end())), (coarse ? 5 : 3 * levels + 6) * kUnit<T>);
                    EXPECT_LE(distance(Reals(x.begin(), x.end()), Reals(back.begin(), back.end())), (coarse ? 7 : 3 * levels + 6) * kUnit<T>);
                }
    });
    expectOwnModes([] { return dwt(true, std::vector<T>(300, T(0.3)), 300, 4, Bank<T>(8, WaveletSymlet), ExtMirror); });
}

// ---- arguments ------------------------------------------------------------------------------------------------------------------------------

TYPED_TEST(Wavelet, ChecksItsArguments) {
    using T = TypeParam;
    T v[64] = {}, *const p = v;
    for (const auto& [family, sizes] : {std::pair{WaveletDaubechies, std::vector{INT_MIN, -2, 0, 1, 3, 39, 41, 42, INT_MAX, INT_MAX - 1}},
                                        {WaveletSymlet, {2, 5, 42}},
                                        {WaveletCdf, {2, 4, 5, 8, 12}}})
        for (int n : sizes) EXPECT_EQ(OF(WtGenTaps)(v, v, v, v, n, family), StatusBadSize) << n;

    alignas(16) uint8_t block[16] = {};
    auto* const stranger = reinterpret_cast<WtState<T>*>(block);
    auto* const other = reinterpret_cast<DWTSpec<T>*>(block);
    WtState<T>*state = stranger, *a = nullptr, *s = nullptr;
    DWTSpec<T>*spec = other, *good = nullptr;
    constexpr int most = INT_MAX, large = most / 4 / int(sizeof(T));
    int x = -7, y = -7, z = -7;
    using Row = std::tuple<FilterSize, FilterSize, Status>;
    for (const auto& [l, h, want] :
         {Row{{0, -2}, {0, -2}, StatusFilterLength}, Row{{1, -2}, {0, -2}, StatusWtOffset}, Row{{1, -1}, {0, -2}, StatusFilterLength},
          Row{{1, -1}, {1, -2}, StatusWtOffset}, Row{{INT_MIN, 0}, {1, 0}, StatusFilterLength}, Row{{2, INT_MIN}, {1, 0}, StatusWtOffset},
          Row{{most, -2}, {1, -1}, StatusFilterLength}, Row{{2, most}, {0, -1}, StatusWtOffset}, Row{{2, -1}, {most, -2}, StatusFilterLength},
          Row{{2, -1}, {2, most}, StatusWtOffset}, Row{{large, -1}, {large, -2}, StatusFilterLength}})
        expectEach(want,
                   {OF(WtGetStateSize)(l.tapsLen, l.offs, h.tapsLen, h.offs, &x), OF(WtAnalysisInit)(&state, p, l.tapsLen, l.offs, p, h.tapsLen, h.offs, block),
                    OF(WtSynthesisInitAlloc)(&state, p, l.tapsLen, l.offs, p, h.tapsLen, h.offs)});
    using Sizes = std::tuple<int, int, int>;
    for (const auto& [length, levels, tapsLen] :
         {Sizes{0, 1, 4}, Sizes{-1, 1, 4}, Sizes{INT_MIN, 1, 4}, Sizes{8, 0, 4}, Sizes{8, 31, 4}, Sizes{8, INT_MIN, 4}, Sizes{8, 1, 0}, Sizes{8, 1, 3},
          Sizes{8, 1, -2}, Sizes{INT_MAX, 1, 4}, Sizes{INT_MAX, 30, INT_MAX - 1}, Sizes{8, 2, INT_MAX - 1}, Sizes{1 << 29, 1, 2}})
        for (int ext : {ExtPeriodic, ExtMirror})
            expectEach(StatusBadSize,
                       {OF(DWTGetSize)(length, levels, tapsLen, ext, &x, &y, &z), OF(DWTInit)(&spec, length, levels, p, p, p, p, tapsLen, ext, block),
                        OF(DWTInitAlloc)(&spec, length, levels, p, p, p, p, tapsLen, ext)});

    expectEach(StatusOk, {OF(WtAnalysisInitAlloc)(&a, p, 4, -1, p, 4, -1), OF(WtSynthesisInitAlloc)(&s, p, 4, -1, p, 4, -1), OF(WtSetDlyLine)(s, nullptr),
                          OF(DWTInitAlloc)(&good, 100, 3, p, p, p, p, 8, ExtMirror)});
    EXPECT_TRUE(std::memcmp(a, sizeof(T) == 4 ? "10AW" : "20AW", 4) == 0 && std::memcmp(good, sizeof(T) == 4 ? "10WD" : "20WD", 4) == 0);
    for (int k = 0; k < 6; ++k) {
        const auto at = [=](int i, auto* q) { return k == i ? nullptr : q; };
        const Status ofThree = k < 3 ? StatusNullPtr : StatusBadSize, ofFour = k < 4 ? StatusNullPtr : StatusBadSize;
        for (const auto init : {OF(WtAnalysisInit), OF(WtSynthesisInit)})
            EXPECT_EQ(init(at(0, &state), at(1, p), 0, 0, at(2, p), 2, -1, at(3, block)), k < 4 ? StatusNullPtr : StatusFilterLength);
        expectEach(ofFour, {OF(WtAnalysis)(at(0, p), at(1, p), at(2, p), 0, at(3, s)), OF(WtSynthesis)(at(0, p), at(1, p), at(2, p), INT_MIN, at(3, a))});
        EXPECT_EQ(OF(DWTInit)(at(0, &spec), 0, 1, at(1, p), at(2, p), at(3, p), at(4, p), 4, 0, at(5, block)), StatusNullPtr);
        EXPECT_EQ(OF(DWTInitAlloc)(at(0, &spec), 0, 1, at(1, p), at(2, p), at(3, p), at(4, p), 4, 0), k < 5 ? StatusNullPtr : StatusBadSize);
        EXPECT_EQ(OF(DWTGetSize)(0, 1, 4, 0, at(0, &x), at(1, &y), at(2, &z)), ofThree);
        EXPECT_EQ(OF(DWTGetBand)(at(0, good), 5 - k % 2 * 6, at(1, &x), at(2, &y)), k < 3 ? StatusNullPtr : StatusBadArg);
    }
    expectEach(StatusNullPtr,
               {OF(WtGetDlyLine)(stranger, nullptr), OF(WtGetDlyLine)(nullptr, p), OF(WtSetDlyLine)(nullptr, p), OF(WtFree)(nullptr), OF(DWTFree)(nullptr),
                OF(DWTFwd)(p, p, nullptr, block), OF(DWTFwd)(nullptr, p, good, nullptr), OF(DWTInv)(p, nullptr, good, nullptr)});
    expectEach(StatusContextMismatch, {OF(WtAnalysis)(p, p, p, 2, s), OF(WtSynthesis)(p, p, p, 2, a), OF(WtFree)(stranger), OF(WtSetDlyLine)(stranger, p),
                                       OF(WtGetDlyLine)(stranger, p), OF(DWTFwd)(nullptr, p, other, nullptr), OF(DWTInv)(p, nullptr, other, nullptr),
                                       OF(DWTGetBand)(other, 9, &x, &y)});
    EXPECT_TRUE(state == stranger && spec == other && x == -7 && y == -7 && z == -7 && std::all_of(v, v + 64, [](T e) { return e == 0; }));
    std::pair<int, int> bands[4];   // 100: 53, 30, 18
    for (int level = 0; level <= 3; ++level) EXPECT_EQ(OF(DWTGetBand)(good, level, &bands[level].first, &bands[level].second), StatusOk);
    EXPECT_TRUE(std::ranges::equal(bands, std::vector<std::pair<int, int>>{{0, 18}, {66, 53}, {36, 30}, {18, 18}}));
    expectEach(StatusOk, {OF(WtFree)(a), OF(WtFree)(s), OF(DWTFree)(good)});
}

}   // namespace
