#include <omp.h>

#include "filter/filters.h"

using namespace test;

namespace {

class Fir : public ::testing::TestWithParam<Api> {};
INSTANTIATE_TEST_SUITE_P(Pairs, Fir, ::testing::ValuesIn(kPairs), pairName);

TEST_P(Fir, BlocksEqualConvolution) {
    for (size_t taps = 1; taps <= 70; ++taps) {
        const size_t chunk = ((taps + 3) & ~size_t{3}) + 1;   // where the way through a block changes
        for (size_t len : {taps, chunk - 1, chunk, chunk + 1, 3 * taps + 7})
            checkBlock(GetParam(), taps, nullptr, len, taps % 2, usualScale(GetParam(), int(taps)), int(taps));
    }
    for (size_t len = 1; len <= 70; ++len) checkBlock(GetParam(), 33, nullptr, len, false, usualScale(GetParam(), 33), int(len));
    for (size_t taps : {15u, 16u, 31u, 32u, 63u, 64u, 130u, 600u})
        for (size_t len : {511u, 512u, 513u, 1300u})
            for (bool owned : {false, true}) checkBlock(GetParam(), taps, nullptr, len, owned, usualScale(GetParam(), int(taps)), 0);
    checkBlock(GetParam(), 20, nullptr, 9000, true, usualScale(GetParam(), 20), 0);
}

// Overlap-save rounds otherwise than the direct sums: equal bits tell which of them a block went through.
TEST_P(Fir, OverlapSaveFromItsThresholdsOn) {
    const Api& api = GetParam();
    if (api.sample.whole()) return;
    const size_t fewest = api.tap.parts == 2 ? 16 : api.kept == Number::f32 ? 64 : 32;
    for (size_t taps : {fewest - 1, fewest})
        for (size_t len : {511u, 512u}) {
            const auto t = randomTaps(api, taps);
            const auto x = randomVector(api.sample, len);
            Vector want(api.sample, len), got(want);
            ASSERT_EQ(Filter(api, t, nullptr, false).block(x, want, len, 0), StatusOk);
            ASSERT_EQ(Filter(api, t, nullptr, true).block(x, got, len, 0), StatusOk);
            const bool byFft = taps == fewest && len == 512;
            if (byFft && api.sample.number != api.kept) continue;   // doubles that come out as floats seldom show it
            EXPECT_EQ(!byFft, bool(same(want, got))) << taps << " taps, " << len << " samples";
        }
}

TEST_P(Fir, AnySplitOfAStreamGivesTheSameBits) {
    for (size_t taps : {1u, 2u, 7u, 16u, 33u, 100u}) checkRecordSplits(GetParam(), taps, nullptr, 1500, {1, 3, 17, 40, 300});
}

// Single samples, then blocks by FFT, blocks done directly and samples in any order on one record.
void checkMixture(const Api& api, size_t taps, bool owned, int scale) {
    const auto t = randomTaps(api, taps);
    const auto x = randomVector(api.sample, 2500), before = randomVector(api.sample, taps);
    Vector y(api.sample, x.size());
    Filter f(api, t, before, owned);
    for (size_t n = 0, len; n < x.size(); n += len) {
        const size_t lengths[] = {1, 1, 2, 30, 511, 600};
        len = n < 20 ? 1 : std::min(lengths[generator()() % 6], x.size() - n);
        ASSERT_EQ(len == 1 ? f.one(x.at(n), y.at(n), scale) : f.block(x.at(n), y.at(n), len, scale), StatusOk);
    }
    ASSERT_TRUE(fits(api, t, x, before, y, scale)) << taps << " taps, owned " << owned;
    ASSERT_TRUE(same(pastAfter(x, before), f.past()));
}
TEST_P(Fir, MixesBlocksAndSamples) {
    for (size_t taps : {1u, 2u, 5u, 20u, 64u, 511u})
        for (bool owned : {false, true}) checkMixture(GetParam(), taps, owned, usualScale(GetParam(), int(taps)));
}
TEST_P(Fir, EveryScaleFactor) {
    for (int scale : {INT_MIN, INT_MIN + 1, -1200, -200, -127, -64, -31, -16, -7, -1, 0, 1, 2, 8, 15, 17, 33, 63, 126, 200, 1200, INT_MAX - 1, INT_MAX})
        for (size_t taps : {3u, 70u})
            if (GetParam().sample.whole()) checkMixture(GetParam(), taps, taps == 70, scale);
}

TEST_P(Fir, TapsAndDelayLineCanBeExchanged) {
    for (bool owned : {false, true}) checkExchange(GetParam(), nullptr, owned);
}

TEST_P(Fir, StatelessForms) {
    const Api& api = GetParam();
    if (!api.direct) return;
    for (size_t taps : {1u, 2u, 3u, 4u, 5u, 31u, 64u, 255u, 256u, 257u, 600u}) {
        const auto t = randomTaps(api, taps);
        const auto x = randomVector(api.sample, 700), before = randomVector(api.sample, taps);
        const int n = int(taps);
        const Factor factor{t.factor};
        const Scale scale{usualScale(api, n)};
        const Guarded<uint8_t> h(t.h.bytes);
        const Vector oldestFirst = pastAfter(before, before);
        auto twice = oldestFirst.bytes;
        twice.insert(twice.end(), oldestFirst.bytes.begin(), oldestFirst.bytes.end());
        Guarded<uint8_t> line(twice), lineInPlace(twice), lineOne(twice), dst(x.bytes.size()), both(x.bytes);
        Vector one = x;
        int index = 0, indexInPlace = 3 * n, indexOne = -n;   // all the same place in the circle
        const size_t size = api.sample.size();
        for (size_t i = 0, piece = 1; i < x.size(); i += piece, piece = std::min(piece * 3 - 1, x.size() - i)) {
            ASSERT_EQ(api.direct(x.at(i), dst.data() + i * size, int(piece), h.data(), n, factor, line.data(), &index, scale), StatusOk);
            ASSERT_EQ(api.directInPlace(both.data() + i * size, int(piece), h.data(), n, factor, lineInPlace.data(), &indexInPlace, scale), StatusOk);
        }
        for (size_t i = 0; i < x.size(); ++i)
            ASSERT_EQ(i % 2 ? api.directOne(Element{x.at(i)}, one.at(i), h.data(), n, factor, lineOne.data(), &indexOne, scale)
                            : api.directOneInPlace(one.at(i), h.data(), n, factor, lineOne.data(), &indexOne, scale),
                      StatusOk);
        EXPECT_EQ(index, 700 % n);
        EXPECT_EQ(indexOne, 700 % n);
        ASSERT_TRUE(fits(api, t, x, before, {api.sample, dst.values()}, scale.of, {}, true));
        ASSERT_TRUE(fits(api, t, x, before, one, scale.of, {}, true));
        EXPECT_TRUE(same(dst.values(), both.values()));
        EXPECT_TRUE(same(line.values(), lineOne.values()));
        EXPECT_TRUE(line.intact() && dst.intact());
        checkSplits(api, {}, 700, {1, 3, 40}, [&] {
            return [&, past = Vector(api.sample, 2 * taps), at = 0](Ptr src, Ptr to, size_t len) mutable {
                return api.direct(src, to, int(len), t.h, n, factor, past, &at, scale);
            };
        });
    }
}

TEST_P(Fir, ThreadsChangeNothing) {
    const size_t at = size_t(GetParam().parallelAbove);
    for (size_t taps : {7u, 64u, 900u})
        for (size_t len : {at, at + 1, at + 403})
            for (bool owned : {false, true})
                if (at > 10000)
                    checkThreads(GetParam(), taps, nullptr, len, owned, {{2, 2}, {3, 3}});
                else
                    checkThreads(GetParam(), taps, nullptr, len, owned);
}

TEST_P(Fir, RejectsBadArguments) {
    const Api& api = GetParam();
    const Vector taps(api.tap, 4), src(api.sample, 4);
    Guarded<uint8_t> memory(256), to(128);
    const Ptr h = taps, mem = memory.data(), dst = to.data(), none;
    const Factor f{0};
    const Scale s{0};
    void *const mark = &memory, *state = mark;
    const Ptr out = &state;
    int size = 77;
    expectEach(StatusFilterLength, {api.stateSize(0, &size), api.stateSize(INT_MIN, &size), api.stateSize(INT_MAX, &size), api.init(out, h, 0, f, none, mem),
                                    api.init(out, h, INT_MAX, f, none, mem), api.initAlloc(out, h, -1, f, none)});
    if (api.direct) {
        expectEach(StatusNullPtr, {api.direct(none, dst, 0, none, 0, f, none, none, s), api.direct(src, none, 0, none, 0, f, none, none, s),
                                   api.direct(src, dst, 4, none, 0, f, none, none, s), api.directOneInPlace(dst, none, 0, f, none, none, s)});
        expectEach(StatusBadSize, {api.direct(src, dst, 0, none, 0, f, none, none, s)});
        expectEach(StatusFilterLength, {api.direct(src, dst, 4, h, 0, f, none, none, s), api.directOne(Element{src.at(0)}, dst, h, 0, f, none, none, s)});
    }
    EXPECT_TRUE(size == 77 && state == mark && to.untouched() && memory.untouched());
}

TEST_P(Fir, ControlWordsChangeNothing) {
    const Api& api = GetParam();
    const auto t = randomTaps(api, 70);
    const auto x = randomVector(api.sample, 2000);
    for (bool owned : {false, true})
        expectOwnModes([&] {
            Threads two(2);
            Vector y(api.sample, x.size());
            Filter f(api, t, nullptr, owned);
            f.block(x, y, x.size() - 5, 3);
            f.one(x.at(0), y.at(1995), 3);
            Vector line(api.sample, 140);
            int at = 0;
            if (api.direct) api.direct(x, y.at(1996), 4, t.h, 70, Factor{t.factor}, line, &at, Scale{3});
            return y;
        });
}

// ---- single cases -------------------------------------------------------------------------------------------------------------------------------

// Records as another library's constructor may build them: before this one's own has chosen the level of the kernels.
constexpr float kEarlyTaps[64] = {1, -0.5f, 0.25f};
FIRState_32f *early, *earlyRates;
void buildEarly(int, char**, char**) {
    tevsFIRInitAlloc_32f(&early, kEarlyTaps, 64, nullptr);
    tevsFIRMRInitAlloc_32f(&earlyRates, kEarlyTaps, 64, 20, 0, 17, 0, nullptr);
}
[[gnu::section(".preinit_array"), gnu::used]] void (*const kBuildEarly)(int, char**, char**) = buildEarly;

TEST(FirRecords, BuiltBeforeTheLevelIsChosen) {
    const Api& api = pairNamed("_32f");
    const Taps t(api, Vector(api.tap, {reinterpret_cast<const uint8_t*>(kEarlyTaps), reinterpret_cast<const uint8_t*>(kEarlyTaps + 64)}));
    const Factors rates{20, 0, 17, 0};
    for (const auto& [state, f] : {std::pair{early, Factors{}}, {earlyRates, rates}}) {
        const auto x = randomVector(api.sample, size_t(600 * f.down));
        Vector y(api.sample, size_t(600 * f.up));
        ASSERT_EQ(api.block(x, y, 600, state, Scale{0}), StatusOk);
        EXPECT_TRUE(fits(api, t, x, Vector(api.sample, 64), y, 0, f));
        EXPECT_EQ(api.free(state), StatusOk);
    }
}

TEST(FirRecords, StateSizes) {
    struct {
        const char* pair;
        int taps, threads, bytes;
    } rows[] = {{"_32f", 8, 1, 16784},
                {"_32f", 8, 2, 16800},
                {"_32f", 1, 1, 32 + 5 * 16 + 128 + 16384},
                {"_32f", 100, 4, 1216 + 2000 + 128 + 4 * (16 + 4092)},
                {"32f_16s", 8, 2, 16800},
                {"_64fc", 8, 1, 16 * 28 + 5 * 128 + 128 + 16 * 4096}};
    for (auto r : rows) {
        Threads at(r.threads);
        EXPECT_EQ(reported(pairNamed(r.pair).stateSize, r.taps), size_t(r.bytes));
    }
}

TEST(FirRecords, RunInsideACallersParallelRegion) {
    const Api& api = pairNamed("_32f");
    const auto t = randomTaps(api, 100);
    const auto x = randomVector(api.sample, 170000);
    Threads two(2);
    Vector want(api.sample, x.size()), got[2] = {want, want};
    ASSERT_EQ(Filter(api, t, nullptr, true).block(x, want, x.size(), 0), StatusOk);
    Filter a(api, t, nullptr, true), b(api, t, nullptr, true);
#pragma omp parallel for num_threads(2)
    for (int i = 0; i < 2; ++i) (i ? b : a).block(x, got[i], x.size(), 0);
    EXPECT_TRUE(same(want, got[0]) && same(want, got[1]));
}

// What 16-bit taps are kept as.
template <class T> void checkKept(const char* pair, const std::vector<T>& taps, const std::vector<T>& want) {
    const Api& api = pairNamed(pair);
    void* state = nullptr;
    std::vector<T> kept(taps.size());
    ASSERT_EQ(api.initAlloc(&state, taps.data(), int(taps.size()), Factor{0}, nullptr), StatusOk);
    ASSERT_EQ(api.getTaps(state, kept.data()), StatusOk);
    EXPECT_EQ(kept, want);
    EXPECT_EQ(api.free(state), StatusOk);
}
TEST(FirShortTaps, Quantisation) {
    const auto integers = checkKept<int32_t>;
    integers("32s_16s", {32766, -1, 1}, {32766, -1, 1});
    integers("32s_16s", {32767, -1, 3}, {16383, -1, 1});
    integers("32s_16s", {-32767, 5}, {-16384, 2});
    integers("32s_16s", {INT_MIN, INT_MAX, -1}, {-16384, 16383, -1});
    integers("32s_16s", {0, 0}, {0, 0});
    const auto floats = checkKept<float>;
    const float inf = INFINITY, nan = NAN, tiny = 0x1p-149f;
    floats("32s_16s32f", {32767, 0.5f, 1.5f, -0.5f}, {32767, 1, 2, -1});   // halves go away from zero
    floats("32s_16s32f", {16383.5f, 0.25f, -0.25f}, {16384, 0, 0});
    floats("32s_16s32f", {32768, 1}, {32768, 2});
    floats("32s_16s32f", {1, -1, 0.25f}, {1, -1, 0.25f});
    floats("32s_16s32f", {0, 0, -0.0f}, {0, 0, 0});
    floats("32s_16s32f", {tiny, -2 * tiny}, {tiny, -2 * tiny});
    floats("32s_16s32f", {0x1p127f, 0x1.8p127f}, {0x1p127f, 0x1.8p127f});
    floats("32s_16s32f", {nan, 1, inf, -inf}, {0, 1, 32767.0f / 16384, -32767.0f / 16384});
    floats("32s_16s32f", {inf, nan}, {32767, 0});
}

// Sums of the largest products, and the smallest that 32 bits do not hold, though single products and pairs of them do.
TEST(FirShortTaps, LargestSumsAreExact) {
    for (const char* pair : {"32s_16s", "32sc_16sc"})
        for (size_t taps : {2u, 3u, 511u, 512u, 2000u})
            for (bool small : {false, true}) {
                const Api& api = pairNamed(pair);
                Vector h(api.tap, taps), x(api.sample, taps);
                for (size_t i = 0; i < h.parts(); ++i) h.setPart(i, small && i > 1 ? (i < 4 ? -4.0L : 0.0L) : -32766.0L);
                for (size_t i = 0; i < x.parts(); ++i) x.setPart(i, -32768);
                const Taps t(api, h);
                Vector y(api.sample, taps), one(api.sample, 1);
                Filter f(api, t, x, true);
                ASSERT_EQ(f.block(x, y, taps, 30), StatusOk);
                EXPECT_TRUE(fits(api, t, x, x, y, 30));
                ASSERT_EQ(f.one(x.at(0), one, 30), StatusOk);
                EXPECT_TRUE(fits(api, t, x.slice(0, 1), x, one, 30));
            }
}

// The tap exponent takes part in the scale even where the sum of both leaves 32 bits.
TEST(FirShortTaps, EveryTapsFactor) {
    const Api& api = pairNamed("32s_16s");
    Vector h(api.tap, 2), x(api.sample, 2);
    h.setPart(0, 100), h.setPart(1, 200), x.setPart(0, 5), x.setPart(1, -7);
    struct {
        int factor, scale;
    } rows[] = {{0, 0},       {3, 3},      {INT_MAX, INT_MAX}, {INT_MIN, INT_MIN}, {2, 0}, {-2, 0}, {-3, 0}, {INT_MAX, INT_MIN}, {INT_MIN, INT_MAX},
                {0, INT_MIN}, {INT_MIN, 0}};
    for (const auto& [factor, scale] : rows) {
        const Taps t(api, h, factor);
        Vector y(x), z(x), w(x), line(api.sample, 4), lineOne(line);
        int index = 0, indexOne = 0;
        ASSERT_EQ(Filter(api, t, nullptr, true).block(x, y, 2, scale), StatusOk);
        ASSERT_EQ(api.direct(x, z, 2, h, 2, Factor{factor}, line, &index, Scale{scale}), StatusOk);
        for (size_t n : {0, 1}) ASSERT_EQ(api.directOneInPlace(w.at(n), h, 2, Factor{factor}, lineOne, &indexOne, Scale{scale}), StatusOk);
        for (const Vector& got : {y, z, w}) EXPECT_TRUE(fits(api, t, x, Vector(api.sample, 2), got, scale)) << factor;
    }
}

// Sums of Q15 products wrap in 32 bits; then the scale, 15 more than given.
TEST(FirQ15, Stateless) {
    for (size_t taps : {1u, 2u, 3u, 9u, 64u, 255u, 257u, 300u}) {
        const auto h = randomVector<int16_t>(taps), x = randomVector<int16_t>(300);
        for (int scale : {INT_MIN, -40, -31, -16, -15, -14, -3, 0, 1, 5, 16, 17, 40, INT_MAX}) {
            std::vector<int16_t> y(x.size()), both = x, one = x, want(x.size()), line(2 * taps), lineInPlace(line), lineOne(line);
            int index = 0, indexInPlace = 0, indexOne = 0;
            const int n = int(taps);
            ASSERT_EQ(tevsFIR_Direct_16s_Sfs(x.data(), y.data(), 2, h.data(), n, line.data(), &index, scale), StatusOk);
            ASSERT_EQ(tevsFIR_Direct_16s_Sfs(&x[2], &y[2], 298, h.data(), n, line.data(), &index, scale), StatusOk);
            ASSERT_EQ(tevsFIR_Direct_16s_ISfs(both.data(), 300, h.data(), n, lineInPlace.data(), &indexInPlace, scale), StatusOk);
            for (size_t i = 0; i < x.size(); ++i) {
                ASSERT_EQ(i % 2 ? tevsFIROne_Direct_16s_Sfs(x[i], &one[i], h.data(), n, lineOne.data(), &indexOne, scale)
                                : tevsFIROne_Direct_16s_ISfs(&one[i], h.data(), n, lineOne.data(), &indexOne, scale),
                          StatusOk);
                uint32_t sum = 0;
                for (size_t k = 0; k <= std::min(i, taps - 1); ++k) sum += uint32_t(h[k] * x[i - k]);
                const Real exact = std::ldexp(Real(int32_t(sum)), -std::clamp(scale, -100, 100) - 15);
                want[i] = int16_t(std::clamp(std::nearbyint(exact), -32768.0L, 32767.0L));
            }
            EXPECT_TRUE(same(want, y) && same(want, both) && same(want, one)) << taps << " taps, scale " << scale;
        }
    }
}

TEST(FirQ15, ChecksTheIndexLast) {
    const int16_t h[3] = {1, 2, 3}, x[2] = {4, 5};
    int16_t y[2] = {6, 7}, line[6] = {};
    for (int at : {-1, 3, INT_MIN, INT_MAX}) {
        int index = at;
        expectEach(StatusDelayIndex, {tevsFIR_Direct_16s_Sfs(x, y, 2, h, 3, line, &index, 0), tevsFIR_Direct_16s_ISfs(y, 2, h, 3, line, &index, 0),
                                      tevsFIROne_Direct_16s_Sfs(1, y, h, 3, line, &index, 0), tevsFIROne_Direct_16s_ISfs(y, h, 3, line, &index, 0)});
        expectEach(StatusBadSize, {tevsFIR_Direct_16s_Sfs(x, y, 0, h, 3, line, &index, 0)});
        expectEach(StatusFilterLength, {tevsFIR_Direct_16s_Sfs(x, y, 2, h, 0, line, &index, 0)});
        EXPECT_TRUE(index == at && y[0] == 6 && y[1] == 7);
    }
}

}   // namespace
