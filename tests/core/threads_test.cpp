// The library keeps no mutable state: any number of threads may call, each with outputs and filter records of its own, and one transform record
// serves them all. What the thread sanitizer watches runs here without OpenMP teams, whose runtime it does not know.
#include <gtest/gtest.h>

#include <thread>

#include "support/data.h"
#include "tevcore.h"

namespace {

constexpr int kThreads = 8, kRounds = 50;

// Every thread makes the same calls; each result is the first thread's.
template <class Work> void inParallel(Work work) {
    tevSetNumThreads(1);
    const auto want = work();
    std::vector<decltype(work())> got(kThreads);
    {
        std::vector<std::jthread> threads;
        threads.reserve(kThreads);
        for (auto& result : got)
            threads.emplace_back([&result, work] {
                for (int round = 0; round < kRounds; ++round) result = work();
            });
    }
    for (const auto& result : got) EXPECT_EQ(result, want);
}

TEST(Threads, ConversionAndMemory) {
    const auto src = test::randomVector<float>(1003);
    inParallel([&] {
        int16_t* p = tevsMalloc_16s(1003);
        EXPECT_EQ(tevsConvert_32f16s_Sfs(src.data(), p, 1003, RoundNearest, -15), StatusOk);
        std::vector<int16_t> dst(p, p + 1003);
        tevsFree(p);
        return dst;
    });
}

TEST(Threads, OneTransformRecord) {
    for (int order : {5, 10, 17}) {
        FFTSpec_R_32f* spec;
        int bufferSize;
        ASSERT_EQ(tevsFFTInitAlloc_R_32f(&spec, order, NoScale, HintNone), StatusOk);
        ASSERT_EQ(tevsFFTGetBufSize_R_32f(spec, &bufferSize), StatusOk);
        const auto src = test::randomVector<float>(size_t{1} << order);
        inParallel([&] {
            std::vector<float> dst(src.size() + 2), again(dst);
            std::vector<uint8_t> buffer(static_cast<size_t>(bufferSize));
            EXPECT_EQ(tevsFFTFwd_RToCCS_32f(src.data(), dst.data(), spec, nullptr), StatusOk);
            EXPECT_EQ(tevsFFTFwd_RToCCS_32f(src.data(), again.data(), spec, buffer.data()), StatusOk);
            EXPECT_EQ(dst, again);
            return dst;
        });
        tevsFFTFree_R_32f(spec);
    }
}

TEST(Threads, FilterRecordsOfTheirOwn) {
    const auto src = test::randomVector<float>(1003), taps = test::randomVector<float>(63);
    inParallel([&] {
        FIRState_32f* state;
        EXPECT_EQ(tevsFIRInitAlloc_32f(&state, taps.data(), 63, nullptr), StatusOk);
        std::vector<float> dst(1003);
        EXPECT_EQ(tevsFIR_32f(src.data(), dst.data(), 1003, state), StatusOk);
        tevsFIRFree_32f(state);
        return dst;
    });
}

}   // namespace
