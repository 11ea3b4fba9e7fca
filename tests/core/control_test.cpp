// Control words: what the guards hold in, what a team takes over from its caller. And the rest of the parallel frame: shares, statuses, forks.
#include "core/parallel.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <thread>
#include <vector>

#include "core/rounding.h"
#include "support/control_words.h"
#include "tevs.h"

namespace tevs {
namespace {

// The given rounding mode, and the extended unit with the precision of a float.
constexpr test::ControlWords rounding(uint32_t rc, uint32_t more = 0) { return {0x1f80 | rc << 13 | more, uint16_t(0x7f | rc << 10)}; }

// All that is computed with is in registers here, where only the pins keep it in its place.
[[gnu::noinline]] float third(float x, float y) {
    return toNearest([](float a, float b) { return a / b; }, x, y);
}
[[gnu::noinline]] float single(int64_t x) {
    return toNearest([](int64_t a) { return toFloat<float>(a); }, x);
}
[[gnu::noinline]] double product(int x, double y) {
    return inExtended([](int a, double b) { return double((long double)a * a * b); }, x, y);
}

TEST(Guards, HoldArithmeticOnRegisters) {
    volatile float one = -1, three = 3;   // not known to the compiler
    volatile double unit = -1;
    volatile int64_t big = 0x7fffff7fffffffff;
    volatile int root = 0x7ffffff1;
    const auto results = [&] { return std::array<double, 3>{third(one, three), single(big), product(root, unit)}; };
    const auto want = results();
    for (uint32_t rc : {0u, 1u, 2u, 3u}) {
        auto got = want;
        EXPECT_TRUE(rounding(rc).keptBy([&] { got = results(); })) << rc;
        EXPECT_EQ(got, want) << rc;
    }
}

// Subnormal numbers count or do not as the caller says, in every mode; only in the conversion to the nearest integer does changing the mode make them count.
TEST(Guards, LeaveTheFlushBits) {
    const float tiny = 0x1p-149f, one = 1;
    for (uint32_t rc : {0u, 1u, 2u, 3u}) {
        float product = 5, quotient = 5;
        int32_t whole = 5, cut = 5;
        rounding(rc, test::kFlush).keptBy([&] {
            tevsMulC_32f(&tiny, 1, &product, 1);
            tevsDiv_32f(&one, &tiny, &quotient, 1);
            tevsConvert_32f32s_Sfs(&tiny, &whole, 1, RoundNearest, -160);
            tevsConvert_32f32s_Sfs(&tiny, &cut, 1, RoundTowardZero, -160);
        });
        EXPECT_EQ(product, 0) << rc;
        EXPECT_EQ(quotient, 0) << rc;
        EXPECT_EQ(whole, rc == 0 ? 0 : 2048) << rc;
        EXPECT_EQ(cut, 0) << rc;
    }
}

TEST(Team, ComputesUnderTheCallersControlWord) {
    for (uint32_t more : {test::kFlush, 0u}) {   // the second time the threads are there already
        std::atomic<int> other = 0, members = 0;
        const test::ControlWords words{0x1f80 | more};
        words.keptBy([&] {
            parallelUnits(4, 4, [&](int) {
                other += test::ControlWords::read().sse != words.sse;
                ++members;
            });
        });
        EXPECT_EQ(other, 0);
        EXPECT_EQ(members, 4);
    }
}

TEST(Team, SharesEachUnitOutOnce) {
    for (int threads : {0, 1, 3, 4})
        for (int count : {1, 2, 3, 4, 5, 11}) {
            std::vector<std::atomic<int>> units(static_cast<size_t>(count)), ranges(static_cast<size_t>(count));
            std::atomic<int> beyond = 0;
            parallelUnits(count, threads, [&](int u) { ++units[size_t(u)]; });
            parallelRanges(count, threads, [&](int first, int n, int thread) {
                beyond += thread >= std::max(threads, 1);
                for (int i = first; i < first + n; ++i) ++ranges[size_t(i)];
            });
            EXPECT_EQ(beyond, 0);
            for (int i = 0; i < count; ++i) EXPECT_EQ(units[size_t(i)] + 10 * ranges[size_t(i)], 11) << i << " of " << count << " on " << threads;
        }
}

TEST(Team, IsNoLargerThanItsAreas) {
    const int before = tevGetNumThreads();
    tevSetNumThreads(-1);
    EXPECT_EQ(threadsAtBuild(), 1);
    tevSetNumThreads(5);
    EXPECT_EQ(threadsAtBuild(), 5);
    EXPECT_EQ(teamSize(3), 3);
    EXPECT_EQ(teamSize(0), 1);
    tevSetNumThreads(before);
}

// The runtime's threads stay behind in the parent.
TEST(Team, IsNotWaitedForAfterAFork) {
    const std::vector<double> taps(20, 0.05), src(20000, 1);
    const auto filtered = [&] {
        std::vector<double> dst(src.size()), past(taps.size());
        FIRState_64f* state;
        EXPECT_EQ(tevsFIRInitAlloc_64f(&state, taps.data(), int(taps.size()), nullptr), StatusOk);
        EXPECT_EQ(tevsFIR_64f(src.data(), dst.data(), int(src.size()), state), StatusOk);
        tevsFIRFree_64f(state);
        return dst;
    };
    const int before = tevGetNumThreads();
    tevSetNumThreads(2);
    const auto want = filtered();
    const pid_t child = fork();
    if (child == 0) {
        alarm(30);
        bool right = filtered() == want;
        std::thread([&] { right &= filtered() == want; }).join();   // a thread of the child's own may have a team
        _exit(right ? 0 : 1);
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(filtered(), want);
    tevSetNumThreads(before);
}

}   // namespace
}   // namespace tevs
