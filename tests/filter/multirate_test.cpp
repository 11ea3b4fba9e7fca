#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <memory>
#include <type_traits>

#include "support/data.h"
#include "support/guarded.h"
#include "support/reduction.h"
#include "tevcore.h"

using namespace test;

namespace {

template <class S> struct PartOf { using type = S; };
template <class S>
requires requires(S z) { z.re; }
struct PartOf<S> {
    using type = decltype(S::re);
};
template <class S> using Part = typename PartOf<S>::type;
using Real = long double;

struct Factors {
    int up, upPhase, down, downPhase;
};

// The functions of a type pair, with all arguments that any of them has.
#define MULTIRATE_PAIR(Name, X, T, S, above, direct, taps_, factor_, set_, sfs, isfs, scale_)                                                                 \
    struct Name {                                                                                                                                             \
        using Tap = T;                                                                                                                                        \
        using Sample = S;                                                                                                                                     \
        using State = FIRMRState##X;                                                                                                                          \
        static constexpr int kAbove = above;                                                                                                                  \
        static Status size(int n, int up, int down, int* p) { return tevsFIRMRGetStateSize##X(n, up, down, p); }                                              \
        static Status sizeOfSingle(int n, int* p) { return tevsFIRGetStateSize##X(n, p); }                                                                    \
        static Status init(State** s, const T* h, int n, [[maybe_unused]] int tapsFactor, Factors f, const S* d, uint8_t* buffer) {                           \
            return tevsFIRMRInit##X(s, h, n factor_, f.up, f.upPhase, f.down, f.downPhase, d, buffer);                                                        \
        }                                                                                                                                                     \
        static Status alloc(State** s, const T* h, int n, [[maybe_unused]] int tapsFactor, Factors f, const S* d) {                                           \
            return tevsFIRMRInitAlloc##X(s, h, n factor_, f.up, f.upPhase, f.down, f.downPhase, d);                                                           \
        }                                                                                                                                                     \
        static Status setTaps(const T* h, State* s, [[maybe_unused]] int tapsFactor) { return tevsFIRSetTaps##X(h, s set_); }                                 \
        static Status getTaps(const State* s, T* h) { return tevsFIRGetTaps##X(s, h); }                                                                       \
        static Status free(State* s) { return tevsFIRFree##X(s); }                                                                                            \
        static Status setPast(State* s, const S* d) { return tevsFIRSetDlyLine##taps_(s, d); }                                                                \
        static Status getPast(const State* s, S* d) { return tevsFIRGetDlyLine##taps_(s, d); }                                                                \
        static Status one(S x, S* y, State* s, [[maybe_unused]] int scale) { return tevsFIROne##taps_##sfs(x, y, s scale_); }                                 \
        static Status run(const S* x, S* y, int n, State* s, [[maybe_unused]] int scale) { return tevsFIR##taps_##sfs(x, y, n, s scale_); }                   \
        static Status runInPlace(S* x, int n, State* s, [[maybe_unused]] int scale) { return tevsFIR##taps_##isfs(x, n, s scale_); }                          \
        static Status stateless(const S* x, S* y, int n, const T* h, int len, [[maybe_unused]] int tapsFactor, Factors f, S* d, [[maybe_unused]] int scale) { \
            return tevsFIRMR##direct##sfs(x, y, n, h, len factor_, f.up, f.upPhase, f.down, f.downPhase, d scale_);                                           \
        }                                                                                                                                                     \
        static Status statelessInPlace(S* x, int n, const T* h, int len, [[maybe_unused]] int tapsFactor, Factors f, S* d, [[maybe_unused]] int scale) {      \
            return tevsFIRMR##direct##isfs(x, n, h, len factor_, f.up, f.upPhase, f.down, f.downPhase, d scale_);                                             \
        }                                                                                                                                                     \
    };
#define MULTIRATE_COMMA ,
#define MULTIRATE_SCALE MULTIRATE_COMMA scale
#define MULTIRATE_FACTOR MULTIRATE_COMMA tapsFactor
#define MULTIRATE_FLOAT(Name, X, T, S, above, direct) MULTIRATE_PAIR(Name, X, T, S, above, direct, X, , , , _I, )
#define MULTIRATE_MIXED(Name, X, T, S, above, direct) MULTIRATE_PAIR(Name, X, T, S, above, direct, X, , , _Sfs, _ISfs, MULTIRATE_SCALE)
#define MULTIRATE_SHORT(Name, X, T, S, direct) \
    MULTIRATE_PAIR(Name, X, T, S, INT_MAX, direct, X, MULTIRATE_FACTOR, MULTIRATE_FACTOR, _Sfs, _ISfs, MULTIRATE_SCALE)

MULTIRATE_FLOAT(P32f, _32f, float, float, 160000, _Direct_32f)
MULTIRATE_FLOAT(P32fc, _32fc, Complex32f, Complex32f, 80000, _Direct_32fc)
MULTIRATE_MIXED(P32f16s, 32f_16s, float, int16_t, 1600, 32f_Direct_16s)
MULTIRATE_MIXED(P32fc16sc, 32fc_16sc, Complex32f, Complex16s, 800, 32fc_Direct_16sc)
MULTIRATE_SHORT(P32s16s, 32s_16s, int32_t, int16_t, 32s_Direct_16s)
MULTIRATE_SHORT(P32sc16sc, 32sc_16sc, Complex32s, Complex16s, 32sc_Direct_16sc)
MULTIRATE_FLOAT(P64f, _64f, double, double, 1600, _Direct_64f)
MULTIRATE_FLOAT(P64fc, _64fc, Complex64f, Complex64f, 800, _Direct_64fc)
MULTIRATE_FLOAT(P64f32f, 64f_32f, double, float, 1600, 64f_Direct_32f)
MULTIRATE_FLOAT(P64fc32fc, 64fc_32fc, Complex64f, Complex32f, 800, 64fc_Direct_32fc)
MULTIRATE_MIXED(P64f32s, 64f_32s, double, int32_t, 1600, 64f_Direct_32s)
MULTIRATE_MIXED(P32s, _32s, double, int32_t, 1600, _Direct_32s)
MULTIRATE_MIXED(P64fc32sc, 64fc_32sc, Complex64f, Complex32s, 800, 64fc_Direct_32sc)
MULTIRATE_MIXED(P64f16s, 64f_16s, double, int16_t, INT_MAX, 64f_Direct_16s)
MULTIRATE_MIXED(P64fc16sc, 64fc_16sc, Complex64f, Complex16s, INT_MAX, 64fc_Direct_16sc)

using Pairs =
    ::testing::Types<P32f, P32fc, P32f16s, P32fc16sc, P32s16s, P32sc16sc, P64f, P64fc, P64f32f, P64fc32fc, P64f32s, P32s, P64fc32sc, P64f16s, P64fc16sc>;

template <class P> constexpr bool kShort = std::is_integral_v<Part<typename P::Tap>>;
template <class P> constexpr bool kRounded = std::is_integral_v<Part<typename P::Sample>>;

// Magnitudes up to a quarter of the range for integers: sums and their shifts reach the bounds now and then.
template <class T> std::vector<T> taps(int n) {
    auto h = randomVector<T>(size_t(n));
    if constexpr (std::is_integral_v<Part<T>>)
        for (T& x : h) {
            auto* const p = reinterpret_cast<Part<T>*>(&x);
            for (size_t c = 0; c < partsOf(x).size(); ++c) p[c] /= 4096;   // 16-bit taps, and some bits to shift out
        }
    return h;
}
int pastLen(int taps, Factors f) { return (taps + f.up - 1) / f.up; }

// ---- the oracle: zeros in between, a filter over all of it, and every so many of the results -----------------------------------------

// What the taps stand for: themselves, or 16-bit integers and a power of two.
struct Values {
    std::vector<std::array<Real, 2>> tap;
    int64_t exponent = 0;
};
template <class P> Values valuesOf(const std::vector<typename P::Tap>& h, int tapsFactor) {
    Values v;
    int64_t largest = 0;
    if (kShort<P>)
        for (auto x : h)
            for (auto c : partsOf(x)) largest = std::max<int64_t>(largest, std::llabs((long long)c));
    int shift = 0;
    while (largest >> shift > 32766) ++shift;
    v.exponent = kShort<P> ? int64_t{tapsFactor} + shift : 0;
    for (auto x : h) {
        const auto p = partsOf(x);
        std::array<Real, 2> t{};
        for (size_t c = 0; c < p.size(); ++c) t[c] = kShort<P> ? std::floor(Real(p[c]) / Real(1 << shift)) : Real(p[c]);
        v.tap.push_back(t);
    }
    return v;
}

struct Expected {
    std::vector<std::array<Real, 2>> value, magnitude;   // of the products' magnitudes, the sum
};
template <class S> Expected oracle(const Values& v, const std::vector<S>& x, const std::vector<S>& past, Factors f, int numIters, int scale) {
    const int64_t n = int64_t{numIters} * f.up * f.down;
    const auto part = [](const S& s, size_t c) {
        const auto p = partsOf(s);
        return c < p.size() ? Real(p[c]) : Real(0);
    };
    Expected e;
    for (int64_t t = f.downPhase; t < n; t += f.down) {
        std::array<Real, 2> y{}, m{};
        for (int64_t k = 0; k < int64_t(v.tap.size()); ++k) {
            const int64_t since = t - k - f.upPhase;   // an input is there, or a zero
            if (since % f.up != 0) continue;
            const int64_t i = since / f.up;
            const S& s = i >= 0 ? x.at(size_t(i)) : past.at(size_t(-1 - i));
            const Real a = v.tap[size_t(k)][0], b = v.tap[size_t(k)][1], c = part(s, 0), d = part(s, 1);
            y[0] += a * c - b * d;
            y[1] += a * d + b * c;
            m[0] += std::fabs(a * c) + std::fabs(b * d);
            m[1] += std::fabs(a * d) + std::fabs(b * c);
        }
        for (auto* z : {&y, &m})
            for (Real& r : *z) r = std::ldexp(r, int(std::clamp<int64_t>(v.exponent - scale, -5000, 5000)));
        e.value.push_back(y);
        e.magnitude.push_back(m);
    }
    return e;
}

// terms products summed in arithmetic of relative error unit; integers are rounded once more, and 16-bit taps give exactly the nearest.
template <class P>::testing::AssertionResult fits(const Expected& e, const std::vector<typename P::Sample>& y, int terms, Real unit) {
    using D = Part<typename P::Sample>;
    if (e.value.size() != y.size()) return ::testing::AssertionFailure() << e.value.size() << " outputs, not " << y.size();
    for (size_t n = 0; n < y.size(); ++n) {
        const auto got = partsOf(y[n]);
        for (size_t c = 0; c < got.size(); ++c) {
            Real want = e.value[n][c], bound = e.magnitude[n][c] * unit * Real(terms + 2);
            if constexpr (kRounded<P>) {
                want = std::min<Real>(std::max<Real>(want, std::numeric_limits<D>::min()), std::numeric_limits<D>::max());
                if (kShort<P>)
                    want = std::nearbyint(want), bound = 0;
                else
                    bound += 0.5L;
            } else {
                bound += std::fabs(want) * std::numeric_limits<D>::epsilon() / 2;
            }
            if (!(std::fabs(want - Real(got[c])) <= bound))
                return ::testing::AssertionFailure() << "output " << n << ", part " << c << ": want " << want << " within " << bound << ", got " << got[c];
        }
    }
    return ::testing::AssertionSuccess();
}
template <class P> constexpr Real kUnit = std::is_same_v<Part<typename P::Tap>, float> ? 0x1p-23L : 0x1p-52L;
constexpr Real kDouble = 0x1p-52L;

template <class S> std::vector<S> pastAfter(const std::vector<S>& x, const std::vector<S>& before) {
    std::vector<S> d(before.size());
    for (size_t k = 0; k < d.size(); ++k) d[k] = k < x.size() ? x[x.size() - 1 - k] : before[k - x.size()];
    return d;
}

// ---- records ----------------------------------------------------------------------------------------------------------------------------

// Of either lifecycle; the caller's memory has exactly the reported size, at any address, between guard pages.
template <class P> class Filter {
public:
    Filter(const std::vector<typename P::Tap>& h, Factors f, const typename P::Sample* past, bool owned, int offset = 0, int tapsFactor = 0)
        : len_(pastLen(int(h.size()), f)) {
        if (owned) {
            EXPECT_EQ(P::alloc(&state_, h.data(), int(h.size()), tapsFactor, f, past), StatusOk);
            return;
        }
        int size = 0;
        EXPECT_EQ(P::size(int(h.size()), f.up, f.down, &size), StatusOk);
        memory_ = std::make_unique<Guarded<uint8_t>>(size_t(size), Place{offset, offset % 2 == 0});
        EXPECT_EQ(P::init(&state_, h.data(), int(h.size()), tapsFactor, f, past, memory_->data()), StatusOk);
    }
    ~Filter() {
        EXPECT_EQ(P::free(state_), StatusOk);
        EXPECT_TRUE(!memory_ || memory_->intact());
    }
    operator typename P::State *() { return state_; }
    std::vector<typename P::Sample> past() const {
        Guarded<typename P::Sample> d(size_t{unsigned(len_)});
        EXPECT_EQ(P::getPast(state_, d), StatusOk);
        EXPECT_TRUE(d.intact());
        return d.values();
    }

private:
    typename P::State* state_ = nullptr;
    std::unique_ptr<Guarded<uint8_t>> memory_;
    int len_;
};

// One block in every form.
template <class P> void block(int tapsLen, Factors f, int numIters, int scale, int tapsFactor, int variant) {
    using T = typename P::Tap;
    using S = typename P::Sample;
    SCOPED_TRACE(::testing::Message() << tapsLen << " taps, up " << f.up << " at " << f.upPhase << ", down " << f.down << " at " << f.downPhase << ", "
                                      << numIters << " iterations, scale " << scale << ", taps * 2^" << tapsFactor);
    const size_t inputs = size_t(numIters) * size_t(f.down), outputs = size_t(numIters) * size_t(f.up);
    const auto h = taps<T>(tapsLen);
    const auto x = randomVector<S>(inputs), before = randomVector<S>(size_t(pastLen(tapsLen, f)));
    const Expected want = oracle(valuesOf<P>(h, tapsFactor), x, before, f, numIters, scale);
    const Place at{variant % 4 * int(sizeof(S)), variant % 8 < 4};
    const Guarded<T> gh(h, at);
    const Guarded<S> src(x, at), gpast(before, at);
    Guarded<S> dst(outputs, at), both(std::max(inputs, outputs), at);
    both.assign(x);
    const auto firstOf = [](Guarded<S>& v, size_t n) { return std::vector<S>(v.data(), v.data() + n); };

    Filter<P> apart(gh.values(), f, gpast.data(), variant % 2, variant % 16, tapsFactor),
        inPlace(h, f, before.data(), variant % 2 == 0, variant % 16, tapsFactor);
    ASSERT_EQ(P::run(src.data(), dst, numIters, apart, scale), StatusOk);
    ASSERT_EQ(P::runInPlace(both, numIters, inPlace, scale), StatusOk);
    ASSERT_TRUE(fits<P>(want, dst.values(), tapsLen / f.up + 1, kUnit<P>));
    ASSERT_TRUE(same(dst.values(), firstOf(both, outputs)));
    ASSERT_TRUE(same(pastAfter(x, before), apart.past()));
    ASSERT_TRUE(same(pastAfter(x, before), inPlace.past()));
    ASSERT_TRUE(dst.intact() && both.intact());

    Guarded<S> line(before, at), lineInPlace(before, at), exact(outputs, at);
    both.assign(x);
    ASSERT_EQ(P::stateless(src.data(), exact, numIters, gh.data(), tapsLen, tapsFactor, f, line, scale), StatusOk);
    ASSERT_EQ(P::statelessInPlace(both, numIters, gh.data(), tapsLen, tapsFactor, f, lineInPlace, scale), StatusOk);
    ASSERT_TRUE(fits<P>(want, exact.values(), tapsLen / f.up + 1, kDouble));
    ASSERT_TRUE(same(exact.values(), firstOf(both, outputs)));
    ASSERT_TRUE(same(pastAfter(x, before), line.values()));
    ASSERT_TRUE(same(pastAfter(x, before), lineInPlace.values()));
    ASSERT_TRUE(exact.intact() && both.intact() && line.intact());
}

int random(int below) { return int(generator()() % unsigned(below)); }
Factors atRandomPhases(int up, int down) { return {up, random(up), down, random(down)}; }

constexpr std::array<int, 2> kFactors[] = {{1, 2}, {1, 3},  {1, 4},  {1, 5},   {1, 6},   {1, 8},     {1, 13},    {2, 1},    {3, 1},
                                           {4, 1}, {5, 1},  {7, 1},  {8, 1},   {3, 2},   {2, 3},     {4, 3},     {3, 4},    {2, 2},
                                           {4, 6}, {6, 4},  {5, 7},  {7, 5},   {9, 4},   {20, 3},    {3, 20},    {37, 41},  {6, 1},
                                           {1, 7}, {1, 60}, {60, 1}, {12, 12}, {2, 101}, {160, 147}, {147, 160}, {100, 30}, {30, 100}};

template <class P> class Multirate : public ::testing::Test {};
TYPED_TEST_SUITE(Multirate, Pairs);

TYPED_TEST(Multirate, BlocksEqualTheFilterBetweenTwoRates) {
    int variant = 0;
    for (auto [up, down] : kFactors) {
        const int longest = 1 + 3 * std::max(up, down);
        for (int tapsLen : {1, 2, up, up + 1, longest, 12 * up + random(4 * down + 1)})
            for (int numIters : {1, 2, 1 + random(30)}) {
                if (int64_t{numIters} * up * tapsLen > 100000) continue;
                const int scale = !kRounded<TypeParam>                            ? 0
                                  : sizeof(Part<typename TypeParam::Sample>) == 4 ? random(4)
                                  : kShort<TypeParam>                             ? 10 + random(8)
                                                                                  : random(4);
                block<TypeParam>(tapsLen, atRandomPhases(up, down), numIters, scale, kShort<TypeParam> ? random(5) - 2 : 0, variant++);
                if (this->HasFatalFailure()) return;
            }
    }
    for (int numIters : {71, 700, 1500}) block<TypeParam>(53, atRandomPhases(1, 4), numIters, kShort<TypeParam> ? 12 : 0, 0, variant++);
}

// Lengths of blocks that end anywhere in a step of the kernels, tap counts at every distance from whole phases.
TEST(MultirateBlocks, EveryLength) {
    for (int numIters = 1; numIters <= 70; ++numIters) {
        block<P32f>(40, atRandomPhases(1, 4), numIters, 0, 0, numIters);
        block<P32f>(17, atRandomPhases(3, 2), numIters, 0, 0, numIters);
        block<P64f>(23, atRandomPhases(4, 1), numIters, 0, 0, numIters);
        block<P32fc>(23, atRandomPhases(2, 1), numIters, 0, 0, numIters);
    }
    for (int tapsLen = 1; tapsLen <= 70; ++tapsLen)
        for (auto [up, down] : {std::pair{1, 6}, {8, 1}, {5, 4}, {4, 9}}) block<P32f>(tapsLen, atRandomPhases(up, down), 9, 0, 0, tapsLen);
}

TEST(MultirateBlocks, EveryPhase) {
    for (auto [up, down] : {std::pair{3, 4}, {4, 2}, {6, 1}, {1, 6}})
        for (int u = 0; u < up; ++u)
            for (int d = 0; d < down; ++d) block<P32f>(19, {up, u, down, d}, 5, 0, 0, u + d);
}

TEST(MultirateBlocks, EveryScale) {
    for (int scale : {INT_MIN, -1000, -40, -16, -1, 0, 1, 5, 31, 62, 1000, INT_MAX})
        for (int tapsFactor : {0, 3, -40}) {
            block<P32s16s>(9, {3, 1, 2, 0}, 20, scale, tapsFactor, 0);
            block<P32f16s>(9, {3, 1, 2, 0}, 20, scale, 0, 0);
            block<P64f32s>(9, {3, 1, 2, 0}, 20, scale, 0, 0);
        }
    block<P32s16s>(9, {1, 0, 2, 0}, 20, INT_MAX, INT_MIN, 0);
    block<P32s16s>(9, {1, 0, 2, 0}, 20, INT_MIN, INT_MAX, 0);
}

TYPED_TEST(Multirate, AnySplitOfAStreamGivesTheSameBits) {
    using S = typename TypeParam::Sample;
    for (auto [up, down] : {std::pair{1, 4}, {3, 1}, {3, 2}, {7, 10}, {2, 2}, {20, 17}, {37, 60}}) {
        const Factors f = atRandomPhases(up, down);
        const int all = 500, scale = kShort<TypeParam> ? 12 : 0;
        const auto h = taps<typename TypeParam::Tap>(12 * std::max(up, down));
        const auto x = randomVector<S>(size_t(all * down));
        std::vector<S> whole(size_t(all * up)), line(size_t(pastLen(int(h.size()), f))), wholeDirect = whole;
        Filter<TypeParam> one(h, f, nullptr, true);
        ASSERT_EQ(TypeParam::run(x.data(), whole.data(), all, one, scale), StatusOk);
        ASSERT_EQ(TypeParam::stateless(x.data(), wholeDirect.data(), all, h.data(), int(h.size()), 0, f, line.data(), scale), StatusOk);
        for (int most : {1, 3, 40}) {
            std::vector<S> parts(whole.size()), partsDirect(whole.size()), past(line.size());
            Filter<TypeParam> other(h, f, nullptr, false);
            for (int n = 0; n < all;) {
                const int now = std::min(1 + random(most), all - n);
                ASSERT_EQ(TypeParam::run(&x[size_t(n * down)], &parts[size_t(n * up)], now, other, scale), StatusOk);
                ASSERT_EQ(TypeParam::stateless(&x[size_t(n * down)], &partsDirect[size_t(n * up)], now, h.data(), int(h.size()), 0, f, past.data(), scale),
                          StatusOk);
                n += now;
            }
            ASSERT_TRUE(same(whole, parts)) << up << "/" << down << ", parts up to " << most;
            ASSERT_TRUE(same(wholeDirect, partsDirect)) << up << "/" << down << ", parts up to " << most;
        }
    }
}

TYPED_TEST(Multirate, TapsAndDelayLineCanBeExchanged) {
    using T = typename TypeParam::Tap;
    using S = typename TypeParam::Sample;
    for (Factors f : {Factors{3, 2, 2, 1}, Factors{4, 1, 2, 0}, Factors{1, 0, 5, 4}, Factors{1, 0, 1, 0}}) {
        const int scale = kShort<TypeParam> ? 12 : 0, numIters = 30;
        const auto first = taps<T>(40), h = taps<T>(40);
        const auto x = randomVector<S>(size_t(numIters * f.down)), before = randomVector<S>(size_t(pastLen(40, f)));
        Filter<TypeParam> a(first, f, nullptr, false, 3, 2), b(h, f, before.data(), true, 0, -1);
        std::vector<S> y(size_t(numIters * f.up)), z = y;
        ASSERT_EQ(TypeParam::run(x.data(), y.data(), numIters, a, scale), StatusOk);
        ASSERT_EQ(TypeParam::setTaps(h.data(), a, -1), StatusOk);
        ASSERT_EQ(TypeParam::setPast(a, before.data()), StatusOk);
        ASSERT_TRUE(same(before, a.past()));
        ASSERT_EQ(TypeParam::run(x.data(), y.data(), numIters, a, scale), StatusOk);
        ASSERT_EQ(TypeParam::run(x.data(), z.data(), numIters, b, scale), StatusOk);
        ASSERT_TRUE(same(z, y));
        Guarded<T> read(40);
        ASSERT_EQ(TypeParam::getTaps(a, read), StatusOk);
        const Values want = valuesOf<TypeParam>(h, 0);
        for (size_t k = 0; k < 40; ++k)
            for (size_t c = 0; c < partsOf(h[k]).size(); ++c) ASSERT_EQ(Real(partsOf(read.values()[k])[c]), want.tap[k][c]);
        ASSERT_EQ(TypeParam::setPast(a, nullptr), StatusOk);
        ASSERT_TRUE(same(std::vector<S>(before.size()), a.past()));
    }
}

// Taps given as floats, kept in 16 bits: powers of two, which are kept exactly.
TEST(MultirateBlocks, FloatTapsInSixteenBits) {
    const Factors f{2, 1, 3, 2};
    const std::vector<float> h = {0.5f, -0.25f, 1.0f, 0.125f, -1.0f};
    const std::vector<int32_t> integers = {4, -2, 8, 1, -8};   // * 2^-3
    const auto x = randomVector<int16_t>(300);
    std::vector<int16_t> want(200), got(200);
    Filter<P32s16s> exact(integers, f, nullptr, true, 0, -3);
    int size = 0;
    ASSERT_EQ(tevsFIRMRGetStateSize32s_16s32f(5, f.up, f.down, &size), StatusOk);
    Guarded<uint8_t> memory(size_t{unsigned(size)});
    FIRState32s_16s32f *a = nullptr, *b = nullptr;
    ASSERT_EQ(tevsFIRMRInit32s_16s32f(&a, h.data(), 5, f.up, f.upPhase, f.down, f.downPhase, nullptr, memory), StatusOk);
    ASSERT_EQ(tevsFIRMRInitAlloc32s_16s32f(&b, h.data(), 5, f.up, f.upPhase, f.down, f.downPhase, nullptr), StatusOk);
    ASSERT_EQ(tevsFIR32s_16s_Sfs(x.data(), want.data(), 100, exact, 1), StatusOk);
    for (auto* s : {a, b}) {
        ASSERT_EQ(tevsFIR32s_16s_Sfs(x.data(), got.data(), 100, s, 1), StatusOk);
        EXPECT_TRUE(same(want, got));
        std::vector<float> read(5);
        ASSERT_EQ(tevsFIRGetTaps32s_16s32f(s, read.data()), StatusOk);
        EXPECT_TRUE(same(h, read));
        EXPECT_EQ(tevsFIRFree32s_16s32f(s), StatusOk);
    }
}

// What is not a number in the input shows in the outputs that it is a factor of, and in no others.
TEST(MultirateBlocks, OutputsTakeNoOtherInputs) {
    for (auto [up, down] : {std::pair{1, 5}, {8, 1}, {4, 3}, {3, 7}, {30, 1}, {17, 20}})
        for (int tapsLen : {3, 20, 31})
            for (int bad = 0; bad < 4 * down; ++bad) {
                const Factors f = atRandomPhases(up, down);
                const int numIters = bad % 2 ? 12 : 5;   // few periods are filtered in another way
                auto x = randomVector<float>(size_t(numIters * down));
                x[size_t(bad)] = NAN;
                const auto h = taps<float>(tapsLen);
                const Expected want = oracle(valuesOf<P32f>(h, 0), x, std::vector<float>(size_t(pastLen(tapsLen, f))), f, numIters, 0);
                std::vector<float> y(size_t(numIters * up));
                Filter<P32f> filter(h, f, nullptr, true);
                ASSERT_EQ(P32f::run(x.data(), y.data(), numIters, filter, 0), StatusOk);
                for (size_t m = 0; m < y.size(); ++m) ASSERT_EQ(std::isnan(want.value[m][0]), std::isnan(y[m])) << up << "/" << down << ", output " << m;
            }
}

// ---- threads ----------------------------------------------------------------------------------------------------------------------------

struct Threads {   // the count while a scope lasts
    explicit Threads(int n) : before(tevGetNumThreads()) { tevSetNumThreads(n); }
    ~Threads() { tevSetNumThreads(before); }
    const int before;
};

TYPED_TEST(Multirate, ThreadsChangeNothing) {
    using S = typename TypeParam::Sample;
    const int above = TypeParam::kAbove == INT_MAX ? 1600 : TypeParam::kAbove, scale = kShort<TypeParam> ? 12 : 0;
    for (Factors f : {Factors{3, 1, 2, 1}, Factors{1, 0, 3, 2}, Factors{2, 0, 1, 0}})
        for (int numIters : {above, above + 1}) {
            const auto h = taps<typename TypeParam::Tap>(31);
            const auto x = randomVector<S>(size_t(numIters) * size_t(f.down));
            const size_t outputs = size_t(numIters) * size_t(f.up);
            std::vector<S> want(outputs), got(outputs);
            Threads one(1);
            Filter<TypeParam> alone(h, f, nullptr, true);
            ASSERT_EQ(TypeParam::run(x.data(), want.data(), numIters, alone, scale), StatusOk);
            for (auto [built, run] : {std::pair{2, 2}, {3, 3}, {1, 8}, {2, -5}}) {
                Threads before(built);
                Filter<TypeParam> apart(h, f, nullptr, true), inPlace(h, f, nullptr, false);
                Threads at(run);
                std::vector<S> both = x;
                both.resize(std::max(x.size(), outputs));
                ASSERT_EQ(TypeParam::run(x.data(), got.data(), numIters, apart, scale), StatusOk);
                ASSERT_EQ(TypeParam::runInPlace(both.data(), numIters, inPlace, scale), StatusOk);
                both.resize(outputs);
                ASSERT_TRUE(same(want, got)) << built << ", then " << run;
                ASSERT_TRUE(same(want, both)) << built << ", then " << run;
                ASSERT_TRUE(same(alone.past(), apart.past()));
                ASSERT_TRUE(same(alone.past(), inPlace.past()));
            }
        }
}

// A share may begin before as many inputs have passed as an output reaches back to.
TEST(MultirateThreads, SharesShorterThanTheDelayLine) {
    const auto h = taps<double>(9001);
    const auto x = randomVector<double>(1601), past = randomVector<double>(4501);
    std::vector<double> want(3202), got(3202);
    Threads one(1);
    Filter<P64f> alone(h, {2, 1, 1, 0}, past.data(), true);
    P64f::run(x.data(), want.data(), 1601, alone, 0);
    Threads three(3);
    Filter<P64f> shared(h, {2, 1, 1, 0}, past.data(), true);
    P64f::run(x.data(), got.data(), 1601, shared, 0);
    EXPECT_TRUE(same(want, got));
    EXPECT_TRUE(same(pastAfter(x, past), shared.past()));
}

// ---- the frame --------------------------------------------------------------------------------------------------------------------------

TYPED_TEST(Multirate, FactorsOfOneGiveASingleRateRecord) {
    const auto h = taps<typename TypeParam::Tap>(20);
    int size = 0, single = 0;
    ASSERT_EQ(TypeParam::size(20, 1, 1, &size), StatusOk);
    ASSERT_EQ(TypeParam::sizeOfSingle(20, &single), StatusOk);
    EXPECT_GE(size, single);
    typename TypeParam::Sample y;
    for (bool owned : {false, true}) {
        Filter<TypeParam> one(h, {1, 0, 1, 0}, nullptr, owned), several(h, {2, 0, 2, 0}, nullptr, owned);
        EXPECT_EQ(TypeParam::one({}, &y, one, 0), StatusOk);
        EXPECT_EQ(TypeParam::one({}, &y, several, 0), StatusContextMismatch);
    }
}

TYPED_TEST(Multirate, RejectsBadArguments) {
    using P = TypeParam;
    using T = typename P::Tap;
    using S = typename P::Sample;
    using State = typename P::State;
    const auto h = taps<T>(4);
    int size = 77;
    State *const mark = reinterpret_cast<State*>(&size), *state = mark;
    Guarded<uint8_t> memory(4096);
    Guarded<S> dst(8), line(4);
    const std::vector<S> x(8);
    const T* const noTaps = nullptr;
    const S* const noSamples = nullptr;
    const Factors good{2, 1, 3, 2};
    struct {
        Factors f;
        Status want;
    } factors[] = {
        {{0, 5, 3, 5}, StatusRateFactor},       {{2, 2, 0, 5}, StatusRateFactor},      {{-1, 0, 1, 0}, StatusRateFactor}, {{2, 2, 3, 0}, StatusRatePhase},
        {{2, -1, 3, 3}, StatusRatePhase},       {{2, 1, 3, 3}, StatusRatePhase},       {{2, 1, 3, -1}, StatusRatePhase},  {{1, 1, 1, 0}, StatusRatePhase},
        {{INT_MIN, 0, 1, 0}, StatusRateFactor}, {{1, 0, 2, INT_MAX}, StatusRatePhase},
    };
    for (auto& row : factors) {
        EXPECT_EQ(P::init(&state, h.data(), 4, 0, row.f, nullptr, memory), row.want);
        EXPECT_EQ(P::alloc(&state, h.data(), 4, 0, row.f, nullptr), row.want);
        EXPECT_EQ(P::stateless(x.data(), dst, 1, h.data(), 4, 0, row.f, nullptr, 0), row.want);
        EXPECT_EQ(P::statelessInPlace(dst, 1, h.data(), 4, 0, row.f, nullptr, 0), row.want);
    }
    const Factors bad{0, 0, 0, 0};
    struct {
        Status want, got;
    } rows[] = {
        {StatusNullPtr, P::size(0, 0, 0, nullptr)},
        {StatusFilterLength, P::size(0, 0, 0, &size)},
        {StatusRateFactor, P::size(1, 0, 1, &size)},
        {StatusRateFactor, P::size(1, 1, -3, &size)},
        {StatusFilterLength, P::size(INT_MAX, 2, 3, &size)},
        {StatusFilterLength, P::size(4, INT_MAX, 1, &size)},
        {StatusFilterLength, P::size(4, INT_MAX, INT_MAX - 1, &size)},
        {StatusNullPtr, P::init(nullptr, h.data(), 0, 0, bad, nullptr, memory)},
        {StatusNullPtr, P::init(&state, noTaps, 0, 0, bad, nullptr, memory)},
        {StatusNullPtr, P::init(&state, h.data(), 0, 0, bad, nullptr, nullptr)},
        {StatusFilterLength, P::init(&state, h.data(), 0, 0, bad, nullptr, memory)},
        {StatusFilterLength, P::init(&state, h.data(), INT_MAX, 0, good, nullptr, memory)},
        {StatusNullPtr, P::alloc(nullptr, h.data(), 0, 0, bad, nullptr)},
        {StatusNullPtr, P::alloc(&state, noTaps, 0, 0, bad, nullptr)},
        {StatusFilterLength, P::alloc(&state, h.data(), INT_MIN, 0, bad, nullptr)},
        {StatusNoMemory, P::alloc(&state, h.data(), 4, 0, {INT_MAX, 0, 1, 0}, nullptr)},
        {StatusNullPtr, P::stateless(noSamples, dst, 0, noTaps, 0, 0, bad, nullptr, 0)},
        {StatusNullPtr, P::stateless(x.data(), nullptr, 0, noTaps, 0, 0, bad, nullptr, 0)},
        {StatusBadSize, P::stateless(x.data(), dst, 0, noTaps, 0, 0, bad, nullptr, 0)},
        {StatusNullPtr, P::stateless(x.data(), dst, 1, noTaps, 0, 0, bad, nullptr, 0)},
        {StatusFilterLength, P::stateless(x.data(), dst, 1, h.data(), 0, 0, bad, nullptr, 0)},
        {StatusNullPtr, P::stateless(x.data(), dst, 1, h.data(), 4, 0, good, nullptr, 0)},
        {StatusNullPtr, P::statelessInPlace(nullptr, 0, noTaps, 0, 0, bad, nullptr, 0)},
        {StatusBadSize, P::statelessInPlace(dst, INT_MIN, noTaps, 0, 0, bad, line, 0)},
    };
    int row = 0;
    for (auto r : rows) EXPECT_EQ(r.got, r.want) << "row " << row++;
    EXPECT_EQ(size, 77);
    EXPECT_EQ(state, mark);
    EXPECT_TRUE(dst.untouched() && line.untouched() && memory.untouched());

    Filter<P> f(h, good, nullptr, true);
    struct {
        Status want, got;
    } calls[] = {
        {StatusNullPtr, P::run(noSamples, dst, 0, f, 0)}, {StatusNullPtr, P::run(x.data(), nullptr, 0, f, 0)}, {StatusBadSize, P::run(x.data(), dst, 0, f, 0)},
        {StatusNullPtr, P::runInPlace(nullptr, 1, f, 0)}, {StatusNullPtr, P::setTaps(noTaps, f, 0)},           {StatusNullPtr, P::getTaps(f, nullptr)},
        {StatusNullPtr, P::getPast(f, nullptr)},
    };
    for (auto r : calls) EXPECT_EQ(r.got, r.want);
    EXPECT_TRUE(dst.untouched());
}

TEST(MultirateFrame, IgnoresAndKeepsTheCallersRounding) {
    const auto h = taps<float>(70);
    const auto x = randomVector<float>(3000);
    std::vector<float> want(2000), got(2000), wantDirect(2000), gotDirect(2000), line(35), lineDirect(35);
    const Factors f{2, 0, 3, 1};
    Filter<P32f> a(h, f, nullptr, true), b(h, f, nullptr, true);
    P32f::run(x.data(), want.data(), 1000, a, 0);
    P32f::stateless(x.data(), wantDirect.data(), 1000, h.data(), 70, 0, f, line.data(), 0);
    const uint32_t before = tev_set_rc_ssx(3);
    P32f::run(x.data(), got.data(), 1000, b, 0);
    P32f::stateless(x.data(), gotDirect.data(), 1000, h.data(), 70, 0, f, lineDirect.data(), 0);
    EXPECT_EQ(tev_set_cw_ssx(before) >> 13 & 3, 3u);
    EXPECT_TRUE(same(want, got));
    EXPECT_TRUE(same(wantDirect, gotDirect));
}

}   // namespace
