#include <omp.h>

#include <array>
#include <climits>
#include <cmath>
#include <memory>

#include "support/data.h"
#include "support/exact.h"
#include "support/guarded.h"
#include "tevcore.h"
#include "tevs.h"

using namespace test;

namespace {

// ---- the functions of a pair of tap and sample types --------------------------------------------------------------------------------------

struct Nothing {};

// BUILD names a record's builders, T its taps, D its data; STATELESS is NO where such forms are another pair's.
#define PAIR(NAME, T, BUILD, D, SFS, ISFS, STATELESS, TAP, SAMPLE, STORED, PARALLEL) \
    struct NAME {                                                                    \
        using State = FIRState##BUILD;                                               \
        using Tap = TAP;                                                             \
        using Sample = SAMPLE;                                                       \
        using Stored = STORED;                                                       \
        static constexpr const char* name = #BUILD;                                  \
        static constexpr int parallelAbove = PARALLEL;                               \
        static constexpr auto getStateSize = tevsFIRGetStateSize##BUILD;             \
        static constexpr auto init = tevsFIRInit##BUILD;                             \
        static constexpr auto initAlloc = tevsFIRInitAlloc##BUILD;                   \
        static constexpr auto free = tevsFIRFree##BUILD;                             \
        static constexpr auto setTaps = tevsFIRSetTaps##BUILD;                       \
        static constexpr auto getTaps = tevsFIRGetTaps##BUILD;                       \
        static constexpr auto setDlyLine = tevsFIRSetDlyLine##T##_##D;               \
        static constexpr auto getDlyLine = tevsFIRGetDlyLine##T##_##D;               \
        static constexpr auto block = tevsFIR##T##_##D##SFS;                         \
        static constexpr auto blockInPlace = tevsFIR##T##_##D##ISFS;                 \
        static constexpr auto one = tevsFIROne##T##_##D##SFS;                        \
        STATELESS(T, D, SFS, ISFS)                                                   \
    };
#define YES(T, D, SFS, ISFS)                                                \
    static constexpr auto stateless = tevsFIR##T##_Direct_##D##SFS;         \
    static constexpr auto statelessInPlace = tevsFIR##T##_Direct_##D##ISFS; \
    static constexpr auto statelessOne = tevsFIROne##T##_Direct_##D##SFS;   \
    static constexpr auto statelessOneInPlace = tevsFIROne##T##_Direct_##D##ISFS;
#define NO(T, D, SFS, ISFS) static constexpr Nothing stateless{};
#define FLOATS , _I, YES
#define INTEGERS _Sfs, _ISfs, YES
#define BUILDERS _Sfs, _ISfs, NO
#define PAIR2(...) PAIR(__VA_ARGS__)

PAIR2(Pair_32f, , _32f, 32f, FLOATS, float, float, float, 160000)
PAIR2(Pair_32fc, , _32fc, 32fc, FLOATS, Complex32f, Complex32f, float, 80000)
PAIR2(Pair32f_16s, 32f, 32f_16s, 16s, INTEGERS, float, int16_t, float, 1600)
PAIR2(Pair32fc_16sc, 32fc, 32fc_16sc, 16sc, INTEGERS, Complex32f, Complex16s, float, 800)
PAIR2(Pair32s_16s, 32s, 32s_16s, 16s, INTEGERS, int32_t, int16_t, int16_t, 1600)
PAIR2(Pair32s_16s32f, 32s, 32s_16s32f, 16s, BUILDERS, float, int16_t, int16_t, 1600)
PAIR2(Pair32sc_16sc, 32sc, 32sc_16sc, 16sc, INTEGERS, Complex32s, Complex16s, int16_t, 1600)
PAIR2(Pair32sc_16sc32fc, 32sc, 32sc_16sc32fc, 16sc, BUILDERS, Complex32f, Complex16s, int16_t, 1600)
PAIR2(Pair_64f, , _64f, 64f, FLOATS, double, double, double, 1600)
PAIR2(Pair_64fc, , _64fc, 64fc, FLOATS, Complex64f, Complex64f, double, 800)
PAIR2(Pair64f_32f, 64f, 64f_32f, 32f, FLOATS, double, float, double, 1600)
PAIR2(Pair64fc_32fc, 64fc, 64fc_32fc, 32fc, FLOATS, Complex64f, Complex32f, double, 800)
PAIR2(Pair64f_32s, 64f, 64f_32s, 32s, INTEGERS, double, int32_t, double, 1600)
PAIR2(Pair_32s, , _32s, 32s, INTEGERS, double, int32_t, double, 1600)
PAIR2(Pair64fc_32sc, 64fc, 64fc_32sc, 32sc, INTEGERS, Complex64f, Complex32s, double, 800)
PAIR2(Pair64f_16s, 64f, 64f_16s, 16s, INTEGERS, double, int16_t, double, 1600)
PAIR2(Pair64fc_16sc, 64fc, 64fc_16sc, 16sc, INTEGERS, Complex64f, Complex16s, double, 1600)

// f(head..., factor, tail..., scale) with the factor and the scale that f takes.
template <class F, class... H, class... T> Status call(F f, int factor, int scale, const std::tuple<H...>& head, const std::tuple<T...>& tail = {}) {
    const std::tuple factors{factor}, scales{scale};
    if constexpr (std::is_invocable_v<F, H..., T...>)
        return std::apply(f, std::tuple_cat(head, tail));
    else if constexpr (std::is_invocable_v<F, H..., T..., int>)
        return std::apply(f, std::tuple_cat(head, tail, scales));
    else if constexpr (std::is_invocable_v<F, H..., int, T...>)
        return std::apply(f, std::tuple_cat(head, factors, tail));
    else
        return std::apply(f, std::tuple_cat(head, factors, tail, scales));
}
template <class F, class... A> Status scaledCall(F f, int scale, A... a) { return call(f, 0, scale, std::tuple{a...}); }
template <class F, class State, class Tap, class... A> Status build(F f, int factor, State** state, const Tap* h, int taps, A... a) {
    return call(f, factor, 0, std::tuple{state, h, taps}, std::tuple{a...});
}
// The samples, or the place and the sample, come first.
template <class F, class Tap, class S, class... A> Status stateless(F f, const Tap* h, int taps, int factor, S* line, int* at, int scale, A... a) {
    return call(f, factor, scale, std::tuple{a..., h, taps}, std::tuple{line, at});
}

template <class T> struct PartOf {
    using type = T;
    static constexpr int count = 1;
};
template <class T>
requires requires(T z) { z.re; }
struct PartOf<T> {
    using type = decltype(T::re);
    static constexpr int count = 2;
};
template <class T> using Part = typename PartOf<T>::type;
template <class T> constexpr int parts = PartOf<T>::count;
template <class T> Part<T> partAt(const T& x, int i) { return reinterpret_cast<const Part<T>*>(&x)[i]; }
template <class T> Part<T>& partAt(T& x, int i) { return reinterpret_cast<Part<T>*>(&x)[i]; }

// ---- what comes out -------------------------------------------------------------------------------------------------------------------------

template <class P> constexpr bool kExact = std::is_same_v<typename P::Stored, int16_t>;
template <class P> constexpr bool kScaled = std::is_integral_v<Part<typename P::Sample>>;

template <class P> using Samples = std::vector<typename P::Sample>;
template <class P> struct Taps {
    std::vector<typename P::Tap> h;
    int factor = 0;
};

// Magnitudes below 1, of integers with the factor. Of those that are kept in 16 bits, some come with little in them.
template <class P> Taps<P> randomTaps(size_t n) {
    Taps<P> t{randomVector<typename P::Tap>(n)};
    if constexpr (std::is_integral_v<Part<typename P::Tap>>) {
        const int shift = int(generator()() % 4) * 8;
        t.factor = shift - 31;
        for (auto& h : t.h)
            for (int i = 0; i < parts<typename P::Tap>; ++i) partAt(h, i) >>= shift;
    } else if constexpr (kExact<P>) {
        // One large tap and many small ones add up to less than 2^16 in 16 bits.
        if (generator()() % 2)
            for (size_t k = 1; k < n; ++k)
                for (int i = 0; i < parts<typename P::Tap>; ++i) partAt(t.h[k], i) *= 0.001f;
    }
    return t;
}
// So that some results saturate and some do not.
template <class P> int usualScale(size_t taps) {
    int scale = 0;
    while (size_t{1} << 2 * (scale + 1) <= taps) ++scale;
    return kScaled<P> ? scale : 0;
}

// Taps as 16-bit numbers times 2^exponent: integers halved until below 32767; floats scaled by the power of two that leaves the largest just below.
template <class Tap> struct Quantised {
    std::vector<std::array<int64_t, 2>> h;
    int exponent = 0;
    Quantised(const std::vector<Tap>& taps, int factor) : h(taps.size()) {
        double most = 0;
        for (const Tap& t : taps)
            for (int i = 0; i < parts<Tap>; ++i) most = std::max(most, std::fabs(double(partAt(t, i))));
        if constexpr (std::is_integral_v<Part<Tap>>) {
            exponent = factor;
            int shift = 0;
            for (int64_t m = int64_t(most); m > 32766; m /= 2) ++shift;
            exponent += shift;
            for (size_t k = 0; k < h.size(); ++k)
                for (int i = 0; i < parts<Tap>; ++i) h[k][size_t(i)] = int64_t(std::floor(std::ldexp(double(partAt(taps[k], i)), -shift)));
        } else if (most > 0) {
            while (std::ldexp(most, -exponent) > 32767) ++exponent;
            while (std::ldexp(most, 1 - exponent) < 32767) --exponent;
            for (size_t k = 0; k < h.size(); ++k)
                for (int i = 0; i < parts<Tap>; ++i) h[k][size_t(i)] = std::lround(std::ldexp(double(partAt(taps[k], i)), -exponent));
        }
    }
};

// Sums over k of h[k] x[n-k], one part after the other; what lies before x is taken from the delay line, newest first.
template <class Number, class Tap, class Sample, class TapPart>
std::vector<Number> convolution(const std::vector<Sample>& x, const std::vector<Sample>& before, TapPart h, const Tap*) {
    const size_t taps = before.size();
    constexpr int c = parts<Sample>;
    std::vector<Number> all, y;
    for (size_t k = taps; k-- > 0;)
        for (int i = 0; i < c; ++i) all.push_back(Number(partAt(before[k], i)));
    for (const Sample& s : x)
        for (int i = 0; i < c; ++i) all.push_back(Number(partAt(s, i)));
    for (size_t n = 0; n < x.size(); ++n) {
        Number re = 0, im = 0;
        for (size_t k = 0; k < taps; ++k) {
            const Number* const s = &all[(taps + n - k) * c];
            re += h(k, 0) * s[0];
            if (c == 2) {
                re -= h(k, 1) * s[1];
                im += h(k, 0) * s[1] + h(k, 1) * s[0];
            }
        }
        y.push_back(re);
        if (c == 2) y.push_back(im);
    }
    return y;
}

// A running sum of n products of random signs grows like n^(1/2) and is rounded n times: its error has a deviation of about n eps / 4 here, and
// six of these are allowed. A transform's error is below that. Sums of 16-bit products are exact.
template <class P>
::testing::AssertionResult fits(const Taps<P>& t, const Samples<P>& x, const Samples<P>& before, const Samples<P>& got, int scale, bool roundedOnce = false) {
    using Sample = typename P::Sample;
    using S = Part<Sample>;
    constexpr int c = parts<Sample>;
    const typename P::Tap* const type = nullptr;
    const auto differs = [&](size_t i, long double want) {
        return ::testing::AssertionFailure() << t.h.size() << " taps, at " << i / c << " of " << x.size() << " part " << i % c << ": want " << double(want)
                                             << ", got " << double(partAt(got[i / c], int(i % c))) << ", scale " << scale;
    };
    if constexpr (kExact<P>) {
        const Quantised<typename P::Tap> q(t.h, t.factor);
        const auto want = convolution<int64_t>(
            x, before, [&](size_t k, int i) { return q.h[k][size_t(i)]; }, type);
        for (size_t i = 0; i < want.size(); ++i) {
            ExactSum sum;
            sum.add(want[i]);
            const auto w = sum.scaled<S>(int(std::clamp(int64_t{scale} - q.exponent, int64_t{-100}, int64_t{100})));
            if (w != partAt(got[i / c], int(i % c))) return differs(i, w);
        }
    } else {
        const auto want = convolution<long double>(
            x, before, [&](size_t k, int i) { return (long double)partAt(t.h[k], i); }, type);
        constexpr bool single = std::is_same_v<typename P::Stored, float>;
        const long double most = kScaled<P> ? -(long double)std::numeric_limits<S>::min() : 1, eps = single && !roundedOnce ? 0x1p-24L : 0x1p-53L;
        const long double bound = most * eps * c * (1.5L * (long double)t.h.size() + 6);
        for (size_t i = 0; i < want.size(); ++i) {
            const long double g = partAt(got[i / c], int(i % c));
            long double w = want[i], allowed = bound;
            if constexpr (kScaled<P>) {
                const int s = std::clamp(scale, -2000, 2000);
                w = std::clamp(std::ldexp(w, -s), (long double)std::numeric_limits<S>::min(), (long double)std::numeric_limits<S>::max());
                allowed = std::ldexp(bound, -s) + 0.5L;
            } else if (sizeof(S) == 4) {
                allowed += std::fabs(w) * 0x1.01p-24L;
            }
            if (!(std::fabs(w - g) <= allowed)) return differs(i, w);
        }
    }
    return ::testing::AssertionSuccess();
}

// The delay line after x.
template <class S> std::vector<S> pastAfter(const std::vector<S>& x, const std::vector<S>& before) {
    std::vector<S> d(before.size());
    for (size_t k = 0; k < d.size(); ++k) d[k] = k < x.size() ? x[x.size() - 1 - k] : before[k - x.size()];
    return d;
}

// A record of either lifecycle; the caller's memory has exactly the reported size, at any address, between guard pages.
template <class P> class Filter {
    using Sample = typename P::Sample;

public:
    Filter(const Taps<P>& t, const Sample* before, bool owned, int offset = 0) {
        const int taps = int(t.h.size());
        if (owned) {
            EXPECT_EQ(build(P::initAlloc, t.factor, &state, t.h.data(), taps, before), StatusOk);
            return;
        }
        int size = 0;
        EXPECT_EQ(P::getStateSize(taps, &size), StatusOk);
        memory = std::make_unique<Guarded<uint8_t>>(size_t(size), Place{offset, false});
        EXPECT_EQ(build(P::init, t.factor, &state, t.h.data(), taps, before, memory->data()), StatusOk);
    }
    ~Filter() {
        EXPECT_EQ(P::free(state), StatusOk);
        EXPECT_TRUE(!memory || memory->intact());
    }
    operator typename P::State *() { return state; }
    Status block(const Sample* src, Sample* dst, size_t len, int scale) { return scaledCall(P::block, scale, src, dst, int(len), state); }
    Status inPlace(Sample* both, size_t len, int scale) { return scaledCall(P::blockInPlace, scale, both, int(len), state); }
    Status one(Sample src, Sample* dst, int scale) { return scaledCall(P::one, scale, src, dst, state); }
    Samples<P> past(size_t taps) const {
        Guarded<Sample> d(taps);
        EXPECT_EQ(P::getDlyLine(state, d), StatusOk);
        return d.values();
    }

private:
    typename P::State* state = nullptr;
    std::unique_ptr<Guarded<uint8_t>> memory;
};

struct Threads {   // the count while a scope lasts
    explicit Threads(int n) : before(tevGetNumThreads()) { tevSetNumThreads(n); }
    ~Threads() { tevSetNumThreads(before); }
    const int before;
};

// ---- every pair -------------------------------------------------------------------------------------------------------------------------------

template <class P> class Fir : public ::testing::Test {};
using Pairs = ::testing::Types<Pair_32f, Pair_32fc, Pair32f_16s, Pair32fc_16sc, Pair32s_16s, Pair32s_16s32f, Pair32sc_16sc, Pair32sc_16sc32fc, Pair_64f,
                               Pair_64fc, Pair64f_32f, Pair64fc_32fc, Pair64f_32s, Pair_32s, Pair64fc_32sc, Pair64f_16s, Pair64fc_16sc>;
struct Names {
    template <class P> static std::string GetName(int) { return P::name; }
};
TYPED_TEST_SUITE(Fir, Pairs, Names);

template <class P> void block(size_t taps, size_t len, bool owned, Place at, int offset) {
    const auto t = randomTaps<P>(taps);
    const auto x = randomVector<typename P::Sample>(len), before = randomVector<typename P::Sample>(taps);
    const Guarded<typename P::Tap> gh(t.h, at);
    const Guarded<typename P::Sample> gbefore(before, at), src(x, at);
    const int scale = usualScale<P>(taps);
    Filter<P> apart(Taps<P>{gh.values(), t.factor}, gbefore.data(), owned, offset), inPlace(t, before.data(), owned, offset);
    Guarded<typename P::Sample> dst(len, at), both(x, at);
    ASSERT_EQ(apart.block(src.data(), dst, len, scale), StatusOk);
    ASSERT_EQ(inPlace.inPlace(both, len, scale), StatusOk);
    ASSERT_TRUE(fits<P>(t, x, before, dst.values(), scale)) << "owned " << owned;
    ASSERT_TRUE(same(dst.values(), both.values())) << taps << " taps, " << len << " samples, owned " << owned;
    ASSERT_TRUE(same(pastAfter(x, before), apart.past(taps)));
    ASSERT_TRUE(same(pastAfter(x, before), inPlace.past(taps)));
    ASSERT_TRUE(dst.intact() && both.intact());
}

TYPED_TEST(Fir, BlocksEqualConvolution) {
    const int size = int(sizeof(typename TypeParam::Sample));
    for (size_t taps = 1; taps <= 70; ++taps) {
        const size_t chunk = ((taps + 3) & ~size_t{3}) + 1;   // where the way through a block changes
        for (size_t len : {taps, chunk - 1, chunk, chunk + 1, 3 * taps + 7})
            block<TypeParam>(taps, len, taps % 2, Place{int(taps % 4) * size, taps % 3 != 0}, int(taps % 16));
    }
    for (size_t len = 1; len <= 70; ++len) block<TypeParam>(33, len, false, Place{int(len % 4) * size, len % 2 == 0}, int(len % 16));
}

TYPED_TEST(Fir, LongBlocksEqualConvolution) {
    for (size_t taps : {15u, 16u, 31u, 32u, 63u, 64u, 130u, 600u})
        for (size_t len : {511u, 512u, 513u, 1300u})
            for (bool owned : {false, true}) block<TypeParam>(taps, len, owned, {}, 0);
    block<TypeParam>(20, 9000, true, {}, 0);
}

// Overlap-save rounds otherwise than the direct sums: equal bits tell which of them a block went through.
TYPED_TEST(Fir, OverlapSaveFromItsThresholdsOn) {
    using P = TypeParam;
    if constexpr (!kScaled<P>) {
        const size_t fewest = parts<typename P::Tap> == 2 ? 16 : std::is_same_v<typename P::Stored, float> ? 64 : 32;
        for (size_t taps : {fewest - 1, fewest})
            for (size_t len : {511u, 512u}) {
                const auto t = randomTaps<P>(taps);
                const auto x = randomVector<typename P::Sample>(len);
                Filter<P> direct(t, nullptr, false), owned(t, nullptr, true);
                Samples<P> want(len), got(len);
                ASSERT_EQ(direct.block(x.data(), want.data(), len, 0), StatusOk);
                ASSERT_EQ(owned.block(x.data(), got.data(), len, 0), StatusOk);
                const bool byFft = taps == fewest && len == 512;
                // Doubles that come out as floats seldom show it.
                if (!byFft || sizeof(Part<typename P::Sample>) == sizeof(typename P::Stored)) {
                    EXPECT_EQ(!byFft, bool(same(want, got))) << taps << " taps, " << len << " samples";
                }
            }
    }
}

TYPED_TEST(Fir, AnySplitOfAStreamGivesTheSameBits) {
    using P = TypeParam;
    for (size_t taps : {1u, 2u, 7u, 16u, 33u, 100u}) {
        const auto t = randomTaps<P>(taps);
        const auto x = randomVector<typename P::Sample>(1500);
        const int scale = usualScale<P>(taps);
        Samples<P> whole(x.size());
        Filter<P> one(t, nullptr, false);
        ASSERT_EQ(one.block(x.data(), whole.data(), x.size(), scale), StatusOk);
        for (unsigned most : {1u, 3u, 17u, 40u, 300u}) {
            Samples<P> parts(x.size());
            Filter<P> other(t, nullptr, false);
            for (size_t n = 0; n < x.size();) {
                const size_t len = std::min<size_t>(1 + generator()() % most, x.size() - n);
                ASSERT_EQ(other.block(&x[n], &parts[n], len, scale), StatusOk);
                n += len;
            }
            ASSERT_TRUE(same(whole, parts)) << taps << " taps, parts up to " << most;
        }
    }
}

// Blocks by FFT, blocks done directly and single samples, in any order on one record.
TYPED_TEST(Fir, MixesBlocksAndSamples) {
    using P = TypeParam;
    for (size_t taps : {1u, 2u, 5u, 20u, 64u, 511u})
        for (bool owned : {false, true}) {
            const auto t = randomTaps<P>(taps);
            const auto x = randomVector<typename P::Sample>(2500), before = randomVector<typename P::Sample>(taps);
            const int scale = usualScale<P>(taps);
            Samples<P> y(x.size());
            Filter<P> f(t, before.data(), owned);
            for (size_t n = 0; n < x.size();) {
                const size_t lengths[] = {1, 1, 2, 30, 511, 600};
                const size_t len = std::min(lengths[generator()() % 6], x.size() - n);
                ASSERT_EQ(len == 1 ? f.one(x[n], &y[n], scale) : f.block(&x[n], &y[n], len, scale), StatusOk);
                n += len;
            }
            ASSERT_TRUE(fits<P>(t, x, before, y, scale)) << "owned " << owned;
            ASSERT_TRUE(same(pastAfter(x, before), f.past(taps)));
        }
}

TYPED_TEST(Fir, EveryScaleFactor) {
    using P = TypeParam;
    if constexpr (kScaled<P>) {
        for (size_t taps : {3u, 70u}) {
            const auto t = randomTaps<P>(taps);
            const auto x = randomVector<typename P::Sample>(600), before = randomVector<typename P::Sample>(taps);
            for (int scale :
                 {INT_MIN, INT_MIN + 1, -1200, -200, -127, -64, -31, -16, -7, -1, 0, 1, 2, 8, 15, 17, 33, 63, 126, 200, 1200, INT_MAX - 1, INT_MAX}) {
                Filter<P> f(t, before.data(), true), g(t, before.data(), false);
                Samples<P> y(x.size()), z(x.size());
                ASSERT_EQ(f.block(x.data(), y.data(), x.size(), scale), StatusOk);
                ASSERT_TRUE(fits<P>(t, x, before, y, scale));
                for (size_t n = 0; n < 20; ++n) ASSERT_EQ(g.one(x[n], &z[n], scale), StatusOk);
                z.resize(20);
                ASSERT_TRUE(fits<P>(t, Samples<P>(x.begin(), x.begin() + 20), before, z, scale));
            }
        }
    }
}

TYPED_TEST(Fir, TapsAndDelayLineCanBeExchanged) {
    using P = TypeParam;
    for (bool owned : {false, true}) {
        const auto first = randomTaps<P>(80), t = randomTaps<P>(80);
        const auto x = randomVector<typename P::Sample>(600), before = randomVector<typename P::Sample>(80);
        const int scale = usualScale<P>(80);
        Filter<P> f(first, nullptr, owned);
        typename P::Sample y;
        f.one(x[0], &y, 0);   // leaves the past in the middle of its buffer
        const Guarded<typename P::Tap> gh(t.h);
        const Guarded<typename P::Sample> gd(before);
        ASSERT_EQ(scaledCall(P::setTaps, t.factor, gh.data(), static_cast<typename P::State*>(f)), StatusOk);
        ASSERT_EQ(P::setDlyLine(f, gd.data()), StatusOk);
        Guarded<typename P::Tap> read(80);
        Guarded<typename P::Sample> dst(600);
        ASSERT_EQ(P::getTaps(f, read), StatusOk);
        auto held = t.h;   // what is read back: of 16-bit taps the bits, as floats with the exponent
        if constexpr (kExact<P>) {
            const Quantised<typename P::Tap> q(t.h, t.factor);
            for (size_t k = 0; k < held.size(); ++k)
                for (int i = 0; i < parts<typename P::Tap>; ++i) {
                    using H = Part<typename P::Tap>;
                    partAt(held[k], i) = std::is_integral_v<H> ? H(q.h[k][size_t(i)]) : H(std::ldexp(double(q.h[k][size_t(i)]), q.exponent));
                }
        }
        EXPECT_TRUE(same(held, read.values()));
        EXPECT_TRUE(same(before, f.past(80)));
        ASSERT_EQ(f.block(x.data(), dst, 600, scale), StatusOk);
        EXPECT_TRUE(fits<P>(t, x, before, dst.values(), scale));
        ASSERT_EQ(P::setDlyLine(f, nullptr), StatusOk);
        EXPECT_TRUE(same(Samples<P>(80), f.past(80)));
    }
}

TYPED_TEST(Fir, StatelessForms) {
    using P = TypeParam;
    using Sample = typename P::Sample;
    if constexpr (!std::is_same_v<decltype(P::stateless), const Nothing>) {
        for (size_t taps : {1u, 2u, 3u, 4u, 5u, 31u, 64u, 255u, 256u, 257u, 600u}) {
            const auto t = randomTaps<P>(taps);
            const auto x = randomVector<Sample>(700), before = randomVector<Sample>(taps);
            const int scale = usualScale<P>(taps);
            Guarded<Sample> line(2 * taps), lineInPlace(2 * taps), lineOne(2 * taps), dst(x.size()), both(x), one(x.size());
            for (Guarded<Sample>* l : {&line, &lineInPlace, &lineOne})
                for (size_t k = 0; k < 2 * taps; ++k) l->data()[k] = before[taps - 1 - k % taps];
            const Guarded<typename P::Tap> gh(t.h);
            const int n = int(taps);
            int index = 0, indexInPlace = 3 * n, indexOne = -n;   // all the same place in the circle
            for (size_t i = 0, piece = 1; i < x.size(); i += piece, piece = std::min(piece * 3 - 1, x.size() - i)) {
                ASSERT_EQ(stateless(P::stateless, gh.data(), n, t.factor, line.data(), &index, scale, &x[i], dst.data() + i, int(piece)), StatusOk);
                ASSERT_EQ(stateless(P::statelessInPlace, gh.data(), n, t.factor, lineInPlace.data(), &indexInPlace, scale, both.data() + i, int(piece)),
                          StatusOk);
            }
            for (size_t i = 0; i < x.size(); ++i) {
                one.data()[i] = x[i];
                if (i % 2)
                    ASSERT_EQ(stateless(P::statelessOne, gh.data(), n, t.factor, lineOne.data(), &indexOne, scale, x[i], one.data() + i), StatusOk);
                else
                    ASSERT_EQ(stateless(P::statelessOneInPlace, gh.data(), n, t.factor, lineOne.data(), &indexOne, scale, one.data() + i), StatusOk);
            }
            EXPECT_EQ(index, 700 % n);
            EXPECT_EQ(indexOne, 700 % n);
            ASSERT_TRUE(fits<P>(t, x, before, dst.values(), scale, true));
            ASSERT_TRUE(fits<P>(t, x, before, one.values(), scale, true));
            EXPECT_TRUE(same(dst.values(), both.values()));
            EXPECT_TRUE(same(line.values(), lineOne.values()));
            EXPECT_TRUE(line.intact() && dst.intact());
        }
    }
}

TYPED_TEST(Fir, ThreadsChangeNothing) {
    using P = TypeParam;
    const size_t at = size_t(P::parallelAbove);
    for (size_t taps : {7u, 64u, 900u})
        for (size_t len : {at, at + 1, at + 403}) {
            const auto t = randomTaps<P>(taps);
            const auto x = randomVector<typename P::Sample>(len);
            for (bool owned : {false, true}) {
                Samples<P> want;
                struct {
                    int built, run;
                } counts[] = {{1, 1}, {2, 2}, {3, 3}, {1, 8}, {3, 1}, {2, -5}};   // also raised and lowered after the record was built
                for (auto c : counts) {
                    if (at > 10000 && c.built + c.run > 6) continue;
                    std::unique_ptr<Filter<P>> apart, inPlace;
                    {
                        Threads built(c.built);
                        apart = std::make_unique<Filter<P>>(t, nullptr, owned);
                        inPlace = std::make_unique<Filter<P>>(t, nullptr, owned);
                    }
                    Threads run(c.run);
                    Samples<P> y(len), z = x;
                    ASSERT_EQ(apart->block(x.data(), y.data(), len, 2), StatusOk);
                    ASSERT_EQ(inPlace->inPlace(z.data(), len, 2), StatusOk);
                    if (want.empty()) want = y;
                    ASSERT_TRUE(same(want, y)) << taps << " taps, " << len << ", owned " << owned << ", built for " << c.built << ", run with " << c.run;
                    ASSERT_TRUE(same(want, z)) << taps << " taps, " << len << ", owned " << owned << ", built for " << c.built << ", run with " << c.run;
                    ASSERT_TRUE(same(pastAfter(x, Samples<P>(taps)), apart->past(taps)));
                    ASSERT_TRUE(same(pastAfter(x, Samples<P>(taps)), inPlace->past(taps)));
                }
            }
        }
}

TYPED_TEST(Fir, WorksInExactlyTheReportedSizeAtAnyAddress) {
    using P = TypeParam;
    for (size_t taps : {1u, 2u, 3u, 8u, 9u, 500u})
        for (int offset = 0; offset < 16; ++offset) {
            const auto t = randomTaps<P>(taps);
            const auto x = randomVector<typename P::Sample>(5000);
            Threads built(1);
            Filter<P> f(t, nullptr, false, offset);
            Threads more(64);   // building does not depend on the count of the moment
            Samples<P> y = x;
            ASSERT_EQ(f.inPlace(y.data(), y.size(), 0), StatusOk);
            for (int n = 0; n < 40; ++n) ASSERT_EQ(f.one(x[0], &y[0], 0), StatusOk);
        }
}

TYPED_TEST(Fir, RejectsBadArguments) {
    using P = TypeParam;
    using State = typename P::State;
    using Sample = typename P::Sample;
    const std::vector<typename P::Tap> h(4);
    alignas(16) uint8_t foreign[256] = {};
    auto* const stranger = reinterpret_cast<State*>(foreign);
    Filter<P> good({h}, nullptr, true);
    State *const mark = stranger, *state = mark, *const ok = good;
    Guarded<uint8_t> memory(40000);
    Guarded<Sample> dst(4), line(8);
    Guarded<typename P::Tap> taps(4);
    const Sample src[4] = {};
    const Sample* const none = nullptr;
    Sample* const noDst = nullptr;
    State* const noState = nullptr;
    State** const nowhere = nullptr;
    uint8_t* const noMemory = nullptr;
    const typename P::Tap* const noTaps = nullptr;
    int size = 77;
    struct {
        Status want, got;
    } rows[] = {
        {StatusNullPtr, P::getStateSize(0, nullptr)},
        {StatusFilterLength, P::getStateSize(0, &size)},
        {StatusFilterLength, P::getStateSize(INT_MIN, &size)},
        {StatusFilterLength, P::getStateSize(INT_MAX, &size)},
        {StatusNullPtr, build(P::init, 0, nowhere, h.data(), 4, none, memory.data())},
        {StatusNullPtr, build(P::init, 0, &state, noTaps, 0, none, memory.data())},
        {StatusNullPtr, build(P::init, 0, &state, h.data(), 0, none, noMemory)},
        {StatusFilterLength, build(P::init, 0, &state, h.data(), 0, none, memory.data())},
        {StatusFilterLength, build(P::init, 0, &state, h.data(), INT_MAX, none, memory.data())},
        {StatusNullPtr, build(P::initAlloc, 0, nowhere, h.data(), 4, none)},
        {StatusNullPtr, build(P::initAlloc, 0, &state, noTaps, 0, none)},
        {StatusFilterLength, build(P::initAlloc, 0, &state, h.data(), -1, none)},
        {StatusNullPtr, P::free(nullptr)},
        {StatusContextMismatch, P::free(stranger)},
        {StatusNullPtr, scaledCall(P::setTaps, 0, noTaps, stranger)},
        {StatusNullPtr, scaledCall(P::setTaps, 0, h.data(), noState)},
        {StatusContextMismatch, scaledCall(P::setTaps, 0, h.data(), stranger)},
        {StatusNullPtr, P::getTaps(noState, taps)},
        {StatusNullPtr, P::getTaps(stranger, nullptr)},
        {StatusContextMismatch, P::getTaps(stranger, taps)},
        {StatusNullPtr, P::setDlyLine(nullptr, src)},
        {StatusContextMismatch, P::setDlyLine(stranger, nullptr)},
        {StatusNullPtr, P::getDlyLine(nullptr, dst)},
        {StatusNullPtr, P::getDlyLine(good, nullptr)},
        {StatusContextMismatch, P::getDlyLine(stranger, dst)},
        {StatusNullPtr, scaledCall(P::block, 0, none, dst.data(), 0, stranger)},
        {StatusNullPtr, scaledCall(P::block, 0, src, noDst, 0, stranger)},
        {StatusNullPtr, scaledCall(P::block, 0, src, dst.data(), 0, noState)},
        {StatusBadSize, scaledCall(P::block, 0, src, dst.data(), 0, stranger)},
        {StatusBadSize, scaledCall(P::block, 0, src, dst.data(), INT_MIN, ok)},
        {StatusContextMismatch, scaledCall(P::block, 0, src, dst.data(), 4, stranger)},
        {StatusNullPtr, scaledCall(P::blockInPlace, 0, noDst, 4, ok)},
        {StatusNullPtr, scaledCall(P::blockInPlace, 0, dst.data(), 4, noState)},
        {StatusContextMismatch, scaledCall(P::blockInPlace, 0, dst.data(), 4, stranger)},
        {StatusNullPtr, scaledCall(P::one, 0, src[0], noDst, ok)},
        {StatusNullPtr, scaledCall(P::one, 0, src[0], dst.data(), noState)},
        {StatusContextMismatch, scaledCall(P::one, 0, src[0], dst.data(), stranger)},
    };
    int row = 0;
    for (auto r : rows) EXPECT_EQ(r.got, r.want) << "row " << row++;
    if constexpr (!std::is_same_v<decltype(P::stateless), const Nothing>) {
        int index = 0;
        int* const noIndex = nullptr;
        Sample* const noLine = nullptr;
        struct {
            Status want, got;
        } direct[] = {
            {StatusNullPtr, stateless(P::stateless, noTaps, 0, 0, line.data(), &index, 0, none, dst.data(), 0)},
            {StatusNullPtr, stateless(P::stateless, noTaps, 0, 0, line.data(), &index, 0, src, noDst, 0)},
            {StatusBadSize, stateless(P::stateless, noTaps, 0, 0, line.data(), &index, 0, src, dst.data(), 0)},
            {StatusNullPtr, stateless(P::stateless, noTaps, 0, 0, line.data(), &index, 0, src, dst.data(), 4)},
            {StatusFilterLength, stateless(P::stateless, h.data(), 0, 0, noLine, &index, 0, src, dst.data(), 4)},
            {StatusNullPtr, stateless(P::stateless, h.data(), 4, 0, noLine, &index, 0, src, dst.data(), 4)},
            {StatusNullPtr, stateless(P::stateless, h.data(), 4, 0, line.data(), noIndex, 0, src, dst.data(), 4)},
            {StatusNullPtr, stateless(P::statelessInPlace, h.data(), 4, 0, line.data(), &index, 0, noDst, 4)},
            {StatusNullPtr, stateless(P::statelessOne, noTaps, 0, 0, line.data(), &index, 0, src[0], noDst)},
            {StatusFilterLength, stateless(P::statelessOne, h.data(), 0, 0, noLine, &index, 0, src[0], dst.data())},
            {StatusNullPtr, stateless(P::statelessOneInPlace, noTaps, 0, 0, line.data(), &index, 0, dst.data())},
        };
        row = 0;
        for (auto r : direct) EXPECT_EQ(r.got, r.want) << "stateless, row " << row++;
        EXPECT_EQ(index, 0);
    }
    EXPECT_EQ(size, 77);
    EXPECT_EQ(state, mark);
    EXPECT_TRUE(dst.untouched() && line.untouched() && memory.untouched() && taps.untouched());
    EXPECT_TRUE(same(Samples<P>(4), good.past(4)));
}

TYPED_TEST(Fir, IgnoresAndKeepsTheCallersRounding) {
    using P = TypeParam;
    const auto t = randomTaps<P>(70);
    const auto x = randomVector<typename P::Sample>(1000);
    for (bool owned : {false, true}) {
        Samples<P> want(x.size()), got(x.size());
        Filter<P> a(t, nullptr, owned), b(t, nullptr, owned);
        a.block(x.data(), want.data(), x.size() - 1, 3);
        a.one(x[0], &want.back(), 3);
        const uint32_t before = tev_set_rc_ssx(3);
        b.block(x.data(), got.data(), x.size() - 1, 3);
        b.one(x[0], &got.back(), 3);
        EXPECT_EQ(tev_set_cw_ssx(before) >> 13 & 3, 3u);
        EXPECT_TRUE(same(want, got));
    }
}

// ---- single cases -------------------------------------------------------------------------------------------------------------------------------

TEST(FirRecords, StateSizes) {
    struct {
        Status (*size)(int, int*);
        int taps, threads, bytes;
    } rows[] = {
        {tevsFIRGetStateSize_32f, 8, 1, 16784},
        {tevsFIRGetStateSize_32f, 8, 2, 16800},
        {tevsFIRGetStateSize_32f, 1, 1, 32 + 5 * 16 + 128 + 16384},
        {tevsFIRGetStateSize_32f, 100, 4, 1216 + 2000 + 128 + 4 * (16 + 4092)},
        {tevsFIRGetStateSize32f_16s, 8, 2, 16800},
        {tevsFIRGetStateSize_64fc, 8, 1, 16 * 28 + 5 * 128 + 128 + 16 * 4096},
    };
    for (auto r : rows) {
        Threads at(r.threads);
        int size = 0;
        ASSERT_EQ(r.size(r.taps, &size), StatusOk);
        EXPECT_EQ(size, r.bytes);
    }
}

TEST(FirRecords, RunInsideACallersParallelRegion) {
    const Taps<Pair_32f> t = randomTaps<Pair_32f>(100);
    const auto x = randomVector<float>(170000);
    Threads two(2);
    std::vector<float> want(x.size()), got[2] = {want, want};
    Filter<Pair_32f> alone(t, nullptr, true), a(t, nullptr, true), b(t, nullptr, true);
    tevsFIR_32f(x.data(), want.data(), int(x.size()), alone);
    FIRState_32f* states[] = {a, b};
#pragma omp parallel for num_threads(2)
    for (int i = 0; i < 2; ++i) tevsFIR_32f(x.data(), got[i].data(), int(x.size()), states[i]);
    EXPECT_TRUE(same(want, got[0]));
    EXPECT_TRUE(same(want, got[1]));
}

// What 16-bit taps are kept as, and that they filter so.
TEST(FirShortTaps, Quantisation) {
    struct {
        std::vector<int32_t> taps, kept;
    } integers[] = {
        {{32766, -1, 1}, {32766, -1, 1}},
        {{32767, -1, 3}, {16383, -1, 1}},
        {{-32767, 5}, {-16384, 2}},
        {{INT_MIN, INT_MAX, -1}, {-16384, 16383, -1}},
        {{0, 0}, {0, 0}},
    };
    for (const auto& r : integers) {
        FIRState32s_16s* f;
        std::vector<int32_t> kept(r.taps.size());
        ASSERT_EQ(tevsFIRInitAlloc32s_16s(&f, r.taps.data(), int(r.taps.size()), 0, nullptr), StatusOk);
        ASSERT_EQ(tevsFIRGetTaps32s_16s(f, kept.data()), StatusOk);
        EXPECT_EQ(kept, r.kept);
        tevsFIRFree32s_16s(f);
    }
    const float inf = INFINITY, nan = NAN, tiny = 0x1p-149f;
    struct {
        std::vector<float> taps, kept;
    } floats[] = {
        {{32767, 0.5f, 1.5f, -0.5f}, {32767, 1, 2, -1}},   // halves go away from zero
        {{16383.5f, 0.25f, -0.25f}, {16384, 0, 0}},
        {{32768, 1}, {32768, 2}},
        {{1, -1, 0.25f}, {1, -1, 0.25f}},
        {{0, 0, -0.0f}, {0, 0, 0}},
        {{tiny, -2 * tiny}, {tiny, -2 * tiny}},
        {{0x1p127f, 0x1.8p127f}, {0x1p127f, 0x1.8p127f}},
        {{nan, 1, inf, -inf}, {0, 1, 32767.0f / 16384, -32767.0f / 16384}},
        {{inf, nan}, {32767, 0}},
    };
    for (const auto& r : floats) {
        FIRState32s_16s32f* f;
        std::vector<float> kept(r.taps.size());
        ASSERT_EQ(tevsFIRInitAlloc32s_16s32f(&f, r.taps.data(), int(r.taps.size()), nullptr), StatusOk);
        ASSERT_EQ(tevsFIRGetTaps32s_16s32f(f, kept.data()), StatusOk);
        EXPECT_EQ(kept, r.kept);
        tevsFIRFree32s_16s32f(f);
    }
}

TEST(FirShortTaps, LargestSumsAreExact) {
    for (int taps : {2, 3, 511, 512, 2000}) {
        const std::vector<int32_t> h(size_t(taps), -32766);
        const std::vector<int16_t> x(size_t(taps), -32768);
        FIRState32s_16s* f;
        ASSERT_EQ(tevsFIRInitAlloc32s_16s(&f, h.data(), taps, 0, nullptr), StatusOk);
        std::vector<int16_t> y(x.size());
        ASSERT_EQ(tevsFIR32s_16s_Sfs(x.data(), y.data(), taps, f, 30), StatusOk);
        EXPECT_EQ(y.back(), std::lround(std::ldexp(32766.0 * 32768.0 * taps, -30)));
        int16_t one;
        ASSERT_EQ(tevsFIROne32s_16s_Sfs(-32768, &one, f, 30), StatusOk);
        EXPECT_EQ(one, y.back());
        tevsFIRFree32s_16s(f);
    }
}

// The smallest sum that 32 bits do not hold, though single products and pairs of them do.
TEST(FirShortTaps, SumsOf31Bits) {
    const int32_t h[] = {-32766, -32766, -4};
    const int16_t x[] = {-32768, -32768, -32768};
    FIRState32s_16s* f;
    ASSERT_EQ(tevsFIRInitAlloc32s_16s(&f, h, 3, 0, x), StatusOk);
    int16_t y[3];
    ASSERT_EQ(tevsFIR32s_16s_Sfs(x, y, 3, f, 30), StatusOk);
    for (int16_t v : y) EXPECT_EQ(v, 2);
    tevsFIRFree32s_16s(f);
    const Complex32s hc[] = {{-32766, -32766}, {-4, 0}};
    const Complex16s xc[] = {{-32768, -32768}, {-32768, -32768}};
    FIRState32sc_16sc* fc;
    ASSERT_EQ(tevsFIRInitAlloc32sc_16sc(&fc, hc, 2, 0, xc), StatusOk);
    Complex16s yc[2];
    ASSERT_EQ(tevsFIR32sc_16sc_Sfs(xc, yc, 2, fc, 30), StatusOk);
    for (Complex16s v : yc) EXPECT_EQ(v.im, 2);
    tevsFIRFree32sc_16sc(fc);
}

// The tap exponent takes part in the scale even where the sum of both leaves 32 bits.
TEST(FirShortTaps, EveryTapsFactor) {
    const int32_t h[] = {100, 200};
    const int16_t x[] = {5, -7};
    struct {
        int tapsFactor, scaleFactor, first, second;
    } rows[] = {
        {0, 0, 500, 300},   {3, 3, 500, 300}, {INT_MAX, INT_MAX, 500, 300},     {INT_MIN, INT_MIN, 500, 300}, {2, 0, 2000, 1200},
        {-2, 0, 125, 75},   {-3, 0, 62, 38},  {INT_MAX, INT_MIN, 32767, 32767}, {INT_MIN, INT_MAX, 0, 0},     {0, INT_MIN, 32767, 32767},
        {INT_MIN, 0, 0, 0},
    };
    for (auto r : rows) {
        FIRState32s_16s* f;
        ASSERT_EQ(tevsFIRInitAlloc32s_16s(&f, h, 2, r.tapsFactor, nullptr), StatusOk);
        int16_t y[2], z[2], w[2], line[4] = {}, lineOne[4] = {};
        int index = 0, indexOne = 0;
        ASSERT_EQ(tevsFIR32s_16s_Sfs(x, y, 2, f, r.scaleFactor), StatusOk);
        ASSERT_EQ(tevsFIR32s_Direct_16s_Sfs(x, z, 2, h, 2, r.tapsFactor, line, &index, r.scaleFactor), StatusOk);
        for (int n = 0; n < 2; ++n) ASSERT_EQ(tevsFIROne32s_Direct_16s_Sfs(x[n], w + n, h, 2, r.tapsFactor, lineOne, &indexOne, r.scaleFactor), StatusOk);
        for (const int16_t* got : {y, z, w}) {
            EXPECT_EQ(got[0], r.first) << r.tapsFactor << " " << r.scaleFactor;
            EXPECT_EQ(got[1], r.second) << r.tapsFactor << " " << r.scaleFactor;
        }
        tevsFIRFree32s_16s(f);
    }
}

// Sums of Q15 products wrap in 32 bits; then the scale, 15 more than given.
TEST(FirQ15, Stateless) {
    for (size_t taps : {1u, 2u, 3u, 9u, 64u, 255u, 257u, 300u}) {
        const auto h = randomVector<int16_t>(taps), x = randomVector<int16_t>(300);
        for (int scale : {INT_MIN, -40, -31, -16, -15, -14, -3, 0, 1, 5, 16, 17, 40, INT_MAX}) {
            std::vector<int16_t> y(x.size()), both = x, one(x.size()), want(x.size());
            std::vector<int16_t> line(2 * taps), lineInPlace(line), lineOne(line);
            int index = 0, indexInPlace = 0, indexOne = 0;
            const int n = int(taps);
            ASSERT_EQ(tevsFIR_Direct_16s_Sfs(x.data(), y.data(), 100, h.data(), n, line.data(), &index, scale), StatusOk);
            ASSERT_EQ(tevsFIR_Direct_16s_Sfs(&x[100], &y[100], 200, h.data(), n, line.data(), &index, scale), StatusOk);
            ASSERT_EQ(tevsFIR_Direct_16s_ISfs(both.data(), 300, h.data(), n, lineInPlace.data(), &indexInPlace, scale), StatusOk);
            for (size_t i = 0; i < x.size(); ++i) {
                one[i] = x[i];
                ASSERT_EQ(i % 2 ? tevsFIROne_Direct_16s_Sfs(x[i], &one[i], h.data(), n, lineOne.data(), &indexOne, scale)
                                : tevsFIROne_Direct_16s_ISfs(&one[i], h.data(), n, lineOne.data(), &indexOne, scale),
                          StatusOk);
            }
            for (size_t i = 0; i < x.size(); ++i) {
                uint32_t sum = 0;
                for (size_t k = 0; k <= std::min(i, taps - 1); ++k) sum += uint32_t(h[k] * x[i - k]);
                ExactSum exact;
                exact.add(int32_t(sum));
                want[i] = exact.scaled<int16_t>(int(std::clamp(int64_t{scale} + 15, int64_t{-100}, int64_t{100})));
            }
            EXPECT_TRUE(same(want, y)) << taps << " taps, scale " << scale;
            EXPECT_TRUE(same(want, both)) << taps << " taps, scale " << scale;
            EXPECT_TRUE(same(want, one)) << taps << " taps, scale " << scale;
        }
    }
}

TEST(FirQ15, ChecksTheIndexLast) {
    const int16_t h[3] = {1, 2, 3}, x[2] = {4, 5};
    int16_t y[2] = {6, 7}, line[6] = {};
    for (int at : {-1, 3, INT_MIN, INT_MAX}) {
        int index = at;
        EXPECT_EQ(tevsFIR_Direct_16s_Sfs(x, y, 2, h, 3, line, &index, 0), StatusDelayIndex);
        EXPECT_EQ(tevsFIR_Direct_16s_ISfs(y, 2, h, 3, line, &index, 0), StatusDelayIndex);
        EXPECT_EQ(tevsFIROne_Direct_16s_Sfs(1, y, h, 3, line, &index, 0), StatusDelayIndex);
        EXPECT_EQ(tevsFIROne_Direct_16s_ISfs(y, h, 3, line, &index, 0), StatusDelayIndex);
        EXPECT_EQ(tevsFIR_Direct_16s_Sfs(x, y, 0, h, 3, line, &index, 0), StatusBadSize);
        EXPECT_EQ(tevsFIR_Direct_16s_Sfs(x, y, 2, h, 0, line, &index, 0), StatusFilterLength);
        EXPECT_EQ(tevsFIR_Direct_16s_Sfs(x, y, 2, h, 3, nullptr, &index, 0), StatusNullPtr);
        EXPECT_EQ(index, at);
    }
    EXPECT_EQ(tevsFIROne_Direct_16s_Sfs(1, y, h, 3, line, nullptr, 0), StatusNullPtr);
    EXPECT_EQ(y[0], 6);
    EXPECT_EQ(y[1], 7);
}

}   // namespace
