#include "filter/filters.h"

using namespace test;

namespace {

int random(int below) { return int(generator()() % unsigned(below)); }
Factors atRandomPhases(int up, int down) { return {up, random(up), down, random(down)}; }

void checkEveryForm(const Api& api, int taps, Factors f, int numIters, int variant) {
    checkBlock(api, size_t(taps), &f, size_t(numIters), variant % 2, usualScale(api, taps, f), variant);
}

constexpr std::array<int, 2> kFactors[] = {{1, 2}, {1, 3},  {1, 4},  {1, 5},   {1, 6},   {1, 8},     {1, 13},    {2, 1},    {3, 1},
                                           {4, 1}, {5, 1},  {7, 1},  {8, 1},   {3, 2},   {2, 3},     {4, 3},     {3, 4},    {2, 2},
                                           {4, 6}, {6, 4},  {5, 7},  {7, 5},   {9, 4},   {20, 3},    {3, 20},    {37, 41},  {6, 1},
                                           {1, 7}, {1, 60}, {60, 1}, {12, 12}, {2, 101}, {160, 147}, {147, 160}, {100, 30}, {30, 100}};

class Multirate : public ::testing::TestWithParam<Api> {};
INSTANTIATE_TEST_SUITE_P(Pairs, Multirate, ::testing::ValuesIn(kPairs), pairName);

TEST_P(Multirate, BlocksEqualTheFilterBetweenTwoRates) {
    int variant = 0;
    for (auto [up, down] : kFactors)
        for (int taps : {1, 2, up, up + 1, 1 + 3 * std::max(up, down), 12 * up + random(4 * down + 1)})
            for (int numIters : {1, 2, 1 + random(30)})
                if (int64_t{numIters} * up * taps <= 100000) checkEveryForm(GetParam(), taps, atRandomPhases(up, down), numIters, variant++);
    for (int numIters : {71, 700, 1500}) checkEveryForm(GetParam(), 53, atRandomPhases(1, 4), numIters, variant++);
}

// Lengths of blocks that end anywhere in a step of the kernels, tap counts at every distance from whole phases.
TEST(MultirateBlocks, EveryLengthAndPhase) {
    const Api& api = pairNamed("_32f");
    for (int n = 1; n <= 70; ++n) {
        checkEveryForm(api, 40, atRandomPhases(1, 4), n, n);
        checkEveryForm(api, 17, atRandomPhases(3, 2), n, n);
        checkEveryForm(pairNamed("_64f"), 23, atRandomPhases(4, 1), n, n);
        checkEveryForm(pairNamed("_32fc"), 23, atRandomPhases(2, 1), n, n);
        for (auto [up, down] : {std::pair{1, 6}, {8, 1}, {5, 4}, {4, 9}}) checkEveryForm(api, n, atRandomPhases(up, down), 9, n);
    }
    for (auto [up, down] : {std::pair{3, 4}, {4, 2}, {6, 1}, {1, 6}})
        for (int u = 0; u < up; ++u)
            for (int d = 0; d < down; ++d) checkEveryForm(api, 19, {up, u, down, d}, 5, u + d);
}

// More taps to a phase than the products of 16-bit numbers are summed in one go.
TEST(MultirateBlocks, LongPhases) {
    for (const char* pair : {"32s_16s", "32sc_16sc"})
        for (auto [up, down] : {std::pair{1, 2}, {3, 2}, {2, 1}})
            for (int taps : {240, 241, 496, 497, 1193}) checkEveryForm(pairNamed(pair), taps * up, atRandomPhases(up, down), 41, taps);
}

TEST_P(Multirate, EveryScale) {
    const Api& api = GetParam();
    const Factors f{3, 1, 2, 0};
    for (int scale : {INT_MIN, -1000, -40, -16, -1, 0, 1, 5, 31, 62, 1000, INT_MAX})
        if (api.sample.whole()) checkBlock(api, 9, &f, 20, false, scale, 0);
}

// Taps that are taken by digits, and sums small enough to be in range under any scale.
TEST(MultirateBlocks, EveryScaleOfSmallSums) {
    for (const char* pair : {"32s_16s", "32sc_16sc"})
        for (const Factors f : {Factors{1, 0, 2, 1}, Factors{3, 1, 2, 0}})
            for (int scale = -2; scale <= 14; ++scale) {
                const Api& api = pairNamed(pair);
                const auto t = randomTaps(api, 30);
                auto x = randomVector(api.sample, 120);
                for (size_t i = 0; i < x.parts(); ++i) x.setPart(i, (int(i * 7 % 5) - 2) * (1 << std::max(scale - 4, 0)));
                Vector y(api.sample, size_t(60 * f.up));
                ASSERT_EQ(Filter(api, t, nullptr, true, &f).block(x, y, 60, scale + t.exponent), StatusOk);
                ASSERT_TRUE(fits(api, t, x, Vector(api.sample, size_t(pastLen(t.size(), f))), y, scale + t.exponent, f)) << pair << ", scale " << scale;
            }
}

TEST_P(Multirate, AnySplitOfAStreamGivesTheSameBits) {
    const Api& api = GetParam();
    for (auto [up, down] : {std::pair{1, 4}, {3, 1}, {3, 2}, {7, 10}, {2, 2}, {20, 17}, {37, 60}}) {
        const Factors f = atRandomPhases(up, down);
        const auto t = randomTaps(api, size_t(12 * std::max(up, down)));
        checkRecordSplits(api, t.h.size(), &f, 500, {1, 3, 40});
        if (!api.rateDirect) continue;
        checkSplits(api, f, 500, {1, 3, 40}, [&] {
            return [&, past = Vector(api.sample, size_t(pastLen(t.size(), f)))](Ptr src, Ptr dst, size_t n) mutable {
                return api.rateDirect(src, dst, int(n), t.h, t.size(), Factor{t.factor}, f, past, Scale{1});
            };
        });
    }
}

TEST_P(Multirate, TapsAndDelayLineCanBeExchanged) {
    for (const Factors f : {Factors{3, 2, 2, 1}, Factors{4, 1, 2, 0}, Factors{1, 0, 5, 4}, Factors{1, 0, 1, 0}})
        for (bool owned : {false, true}) checkExchange(GetParam(), &f, owned);
}

// What is not a number in the input shows in the outputs that it is a factor of, and in no others.
TEST(MultirateBlocks, OutputsTakeNoOtherInputs) {
    const Api& api = pairNamed("_32f");
    for (auto [up, down] : {std::pair{1, 5}, {8, 1}, {4, 3}, {3, 7}, {30, 1}, {17, 20}})
        for (size_t taps : {3u, 20u, 31u})
            for (int bad = 0; bad < 4 * down; ++bad) {
                const Factors f = atRandomPhases(up, down);
                const int numIters = bad % 2 ? 12 : 5;   // few periods are filtered in another way
                const auto t = randomTaps(api, taps);
                auto x = randomVector(api.sample, size_t(numIters * down));
                x.setPart(size_t(bad), NAN);
                const auto want = convolution(t, x, Vector(api.sample, size_t(pastLen(t.size(), f))), f);
                Vector y(api.sample, size_t(numIters * up));
                ASSERT_EQ(Filter(api, t, nullptr, true, &f).block(x, y, size_t(numIters), 0), StatusOk);
                for (size_t m = 0; m < y.size(); ++m) ASSERT_EQ(std::isnan(want[m]), std::isnan(y.part(m))) << up << "/" << down << ", output " << m;
            }
}

TEST_P(Multirate, ThreadsChangeNothing) {
    const size_t above = size_t(GetParam().parallelAbove);
    for (const Factors f : {Factors{3, 1, 2, 1}, Factors{1, 0, 3, 2}, Factors{2, 0, 1, 0}})
        for (size_t numIters : {above, above + 1})
            for (bool owned : {false, true}) checkThreads(GetParam(), 31, &f, numIters, owned, {{2, 2}, {3, 3}, {1, 8}, {2, -5}});
}

// A share may begin before as many inputs have passed as an output reaches back to.
TEST(MultirateThreads, SharesShorterThanTheDelayLine) {
    const Factors f{2, 1, 1, 0};
    checkThreads(pairNamed("_64f"), 9001, &f, 1601, true, {{3, 3}});
}

TEST_P(Multirate, FactorsOfOneGiveASingleRateRecord) {
    const Api& api = GetParam();
    const auto t = randomTaps(api, 20);
    const Factors ones, twos{2, 0, 2, 0};
    EXPECT_GE(reported(api.rateStateSize, 20, 1, 1), reported(api.stateSize, 20));
    Vector y(api.sample, 1);
    for (bool owned : {false, true}) {
        EXPECT_EQ(Filter(api, t, nullptr, owned, &ones).one(y.at(0), y, 0), StatusOk);
        EXPECT_EQ(Filter(api, t, nullptr, owned, &twos).one(y.at(0), y, 0), StatusContextMismatch);
    }
}

TEST_P(Multirate, RejectsBadArguments) {
    const Api& api = GetParam();
    const Vector taps(api.tap, 4), x(api.sample, 8);
    Guarded<uint8_t> memory(256), to(128);
    const Ptr h = taps, mem = memory.data(), dst = to.data(), none;
    void *const mark = &memory, *state = mark;
    const Ptr out = &state;
    const Factor factor{0};
    const Scale scale{0};
    int size = 77;
    struct {
        Factors f;
        Status want;
    } factors[] = {
        {{0, 5, 3, 5}, StatusRateFactor},       {{2, 2, 0, 5}, StatusRateFactor},      {{-1, 0, 1, 0}, StatusRateFactor}, {{2, 2, 3, 0}, StatusRatePhase},
        {{2, -1, 3, 3}, StatusRatePhase},       {{2, 1, 3, 3}, StatusRatePhase},       {{2, 1, 3, -1}, StatusRatePhase},  {{1, 1, 1, 0}, StatusRatePhase},
        {{INT_MIN, 0, 1, 0}, StatusRateFactor}, {{1, 0, 2, INT_MAX}, StatusRatePhase},
    };
    for (auto& row : factors) {
        EXPECT_EQ(api.rateInit(out, h, 4, factor, row.f, none, mem), row.want);
        EXPECT_EQ(api.rateInitAlloc(out, h, 4, factor, row.f, none), row.want);
        if (!api.rateDirect) continue;
        EXPECT_EQ(api.rateDirect(x, dst, 1, h, 4, factor, row.f, none, scale), row.want);
        EXPECT_EQ(api.rateDirectInPlace(dst, 1, h, 4, factor, row.f, none, scale), row.want);
    }
    const Factors bad{0, 0, 0, 0}, good{2, 1, 3, 2};
    expectEach(StatusFilterLength, {api.rateStateSize(0, 0, 0, &size), api.rateStateSize(INT_MAX, 2, 3, &size), api.rateStateSize(4, INT_MAX, 1, &size),
                                    api.rateStateSize(4, INT_MAX, INT_MAX - 1, &size), api.rateInit(out, h, 0, factor, bad, none, mem),
                                    api.rateInit(out, h, INT_MAX, factor, good, none, mem), api.rateInitAlloc(out, h, INT_MIN, factor, bad, none)});
    expectEach(StatusRateFactor, {api.rateStateSize(1, 0, 1, &size), api.rateStateSize(1, 1, -3, &size)});
    expectEach(StatusNoMemory, {api.rateInitAlloc(out, h, 4, factor, {INT_MAX, 0, 1, 0}, none)});
    if (api.rateDirect) {
        expectEach(StatusNullPtr, {api.rateDirect(x, none, 0, none, 0, factor, bad, none, scale), api.rateDirect(x, dst, 1, none, 0, factor, bad, none, scale),
                                   api.rateDirect(x, dst, 1, h, 4, factor, good, none, scale)});
        expectEach(StatusBadSize,
                   {api.rateDirect(x, dst, 0, none, 0, factor, bad, none, scale), api.rateDirectInPlace(dst, INT_MIN, none, 0, factor, bad, none, scale)});
        expectEach(StatusFilterLength, {api.rateDirect(x, dst, 1, h, 0, factor, bad, none, scale)});
    }
    EXPECT_TRUE(size == 77 && state == mark && to.untouched() && memory.untouched());
}

TEST_P(Multirate, ControlWordsChangeNothing) {
    const Api& api = GetParam();
    const Factors f{2, 0, 3, 1};
    const auto t = randomTaps(api, 70);
    const auto x = randomVector(api.sample, 6000);
    expectOwnModes([&] {
        Threads two(2);
        Vector y(api.sample, 4000), line(api.sample, 35);
        Filter(api, t, nullptr, true, &f).block(x, y, 1900, 3);
        if (api.rateDirect) api.rateDirect(x.at(5700), y.at(3800), 100, t.h, 70, Factor{t.factor}, f, line, Scale{3});
        return y;
    });
}

}   // namespace
