// Every allocation inside every function that allocates is made to fail in turn: StatusNoMemory, nothing leaked, nothing stored.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <vector>

#include "support/data.h"
#include "tevcore.h"
#include "tevs.h"

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define TEVS_OWN_MALLOC 0   // the sanitizer brings its own malloc
#else
#define TEVS_OWN_MALLOC 1
#endif

namespace {

bool armed = false;
int allocationsUntilFailure = 0, live = 0;
const uint32_t* record = nullptr;   // whose identifier is looked at before memory goes back
uint32_t identifier = 0;
int threadsMeanwhileAt = -1;   // the allocation in which the thread count rises, as another thread may make it

#if TEVS_OWN_MALLOC
extern "C" void* __libc_malloc(size_t);
extern "C" void __libc_free(void*);

// Blocks with a fence behind them, that a write past their end damages.
constexpr size_t kFence = 1 << 20;
unsigned char* fences[8];
size_t fenceCount = 0;
void* fenced(size_t n) {
    auto* const p = static_cast<unsigned char*>(__libc_malloc(n + kFence));
    fences[fenceCount++] = static_cast<unsigned char*>(std::memset(p + n, 0x5a, kFence));
    return p;
}
extern "C" __attribute__((visibility("default"))) void* malloc(size_t n) {
    if (!armed) return __libc_malloc(n);
    if (allocationsUntilFailure-- == 0) return nullptr;
    ++live;
    if (threadsMeanwhileAt < 0) return __libc_malloc(n);
    if (threadsMeanwhileAt == INT_MAX - 1 - allocationsUntilFailure) tevSetNumThreads(8);
    return fenced(n);
}
extern "C" __attribute__((visibility("default"))) void free(void* p) {
    if (armed && p) --live;
    if (record) identifier = *record;
    __libc_free(p);
}
#endif

// Builds a record and frees it again.
template <class Record, class Init, class Free> Status lifecycle(Init init, Free free) {
    Record* const mark = reinterpret_cast<Record*>(0x40);
    Record* p = mark;
    const Status s = init(&p);
    if (s != StatusOk) {
        EXPECT_EQ(p, mark);
        return s;
    }
    record = reinterpret_cast<const uint32_t*>(p);
    const Status freed = free(p);
    record = nullptr;
    EXPECT_TRUE(!TEVS_OWN_MALLOC || identifier == 0) << "a record that is freed keeps its identifier";
    return freed;
}

template <class Call> void failEachAllocation(const char* name, Call call) {
    if (!TEVS_OWN_MALLOC) GTEST_SKIP();
    for (int k = 0;; ++k) {
        allocationsUntilFailure = k;
        live = 0;
        armed = true;
        const Status s = call();
        armed = false;
        EXPECT_EQ(live, 0) << name << ", allocation " << k;
        if (allocationsUntilFailure >= 0) {
            EXPECT_EQ(s, StatusOk) << name;
            EXPECT_GE(k, 1) << name << " allocates nothing";
            return;
        }
        ASSERT_EQ(s, StatusNoMemory) << name << ", allocation " << k;
    }
}

TEST(NoMemory, FftRecords) {
    for (int order : {0, 4, 10, 16, 17})
        for (int flag : {ScaleInvByN, NoScale}) {
            failEachAllocation("C_32fc", [=] {
                return lifecycle<FFTSpec_C_32fc>([=](auto p) { return tevsFFTInitAlloc_C_32fc(p, order, flag, HintNone); }, tevsFFTFree_C_32fc);
            });
            failEachAllocation(
                "R_32f", [=] { return lifecycle<FFTSpec_R_32f>([=](auto p) { return tevsFFTInitAlloc_R_32f(p, order, flag, HintNone); }, tevsFFTFree_R_32f); });
        }
}

TEST(NoMemory, IntegerFftRecords) {
    for (int order : {0, 1, 4, 10, 16}) {
        failEachAllocation("C_16sc", [=] {
            return lifecycle<FFTSpec_C_16sc>([=](auto p) { return tevsFFTInitAlloc_C_16sc(p, order, NoScale, HintNone); }, tevsFFTFree_C_16sc);
        });
        failEachAllocation(
            "R_32s", [=] { return lifecycle<FFTSpec_R_32s>([=](auto p) { return tevsFFTInitAlloc_R_32s(p, order, NoScale, HintNone); }, tevsFFTFree_R_32s); });
    }
}

TEST(NoMemory, IntegerFftWorkBuffer) {
    FFTSpec_R_16s* spec;
    for (int order : {10, 16}) {
        ASSERT_EQ(tevsFFTInitAlloc_R_16s(&spec, order, NoScale, HintNone), StatusOk);
        const std::vector<int16_t> src(size_t{1} << order, 1);
        std::vector<int16_t> dst(src.size(), 3);
        failEachAllocation("R_16s", [&] {
            const Status s = tevsFFTFwd_RToPerm_16s_Sfs(src.data(), dst.data(), spec, 0, nullptr);
            EXPECT_TRUE(s == StatusOk || dst[0] == 3);
            return s;
        });
        tevsFFTFree_R_16s(spec);
    }
}

TEST(NoMemory, FftWorkBuffer) {
    FFTSpec_C_32fc* complex;
    FFTSpec_R_32f* real;
    for (int order : {10, 16}) {
        ASSERT_EQ(tevsFFTInitAlloc_C_32fc(&complex, order, NoScale, HintNone), StatusOk);
        ASSERT_EQ(tevsFFTInitAlloc_R_32f(&real, order, NoScale, HintNone), StatusOk);
        const std::vector<Complex32f> src(size_t{1} << order, {1, 2});
        std::vector<Complex32f> dst(src.size(), {3, 4});
        failEachAllocation("complex", [&] {
            const Status s = tevsFFTFwd_CToC_32fc(src.data(), dst.data(), complex, nullptr);
            EXPECT_TRUE(s == StatusOk || dst[0].re == 3);
            return s;
        });
        dst.assign(src.size(), {3, 4});
        failEachAllocation("real", [&] {
            const Status s = tevsFFTFwd_RToPerm_32f(&src[0].re, &dst[0].re, real, nullptr);
            EXPECT_TRUE(s == StatusOk || dst[0].re == 3);
            return s;
        });
        tevsFFTFree_C_32fc(complex);
        tevsFFTFree_R_32f(real);
    }
}

// A call that was given its work buffer, of the size reported, cannot fail: it does what it did with memory, but for rounding.
template <class C, class Spec, class InitAlloc, class GetBufSize, class Transform, class Free>
void expectNoNeed(int order, InitAlloc initAlloc, GetBufSize getBufSize, std::initializer_list<Transform> directions, Free free) {
    if (!TEVS_OWN_MALLOC) GTEST_SKIP();
    Spec* spec;
    int size;
    ASSERT_EQ(initAlloc(&spec, order, ScaleBySqrtN, HintNone), StatusOk);
    ASSERT_EQ(getBufSize(spec, &size), StatusOk);
    std::vector<uint8_t> buffer(size_t(size) + 64, 0xa5);
    const auto x = test::randomVector<C>(size_t{1} << order);
    std::vector<C> want(x.size()), got(x.size());
    for (Transform call : directions) {
        ASSERT_EQ(call(x.data(), want.data(), spec, buffer.data()), StatusOk);
        for (const bool inPlace : {true, false}) {
            if (inPlace) got = x;
            allocationsUntilFailure = 0;
            armed = true;
            const Status s = call(inPlace ? got.data() : x.data(), got.data(), spec, buffer.data());
            armed = false;
            ASSERT_EQ(s, StatusOk) << order;
            double worst = 0;
            for (size_t i = 0; i < x.size(); ++i) worst = std::max<double>({worst, std::abs(got[i].re - want[i].re), std::abs(got[i].im - want[i].im)});
            EXPECT_LE(worst, 16 * std::numeric_limits<decltype(C::re)>::epsilon()) << order << (inPlace ? " in place" : "");
            EXPECT_TRUE(std::all_of(buffer.end() - 64, buffer.end(), [](uint8_t b) { return b == 0xa5; })) << order;
        }
    }
    free(spec);
}
TEST(NoMemory, IsNotNeededBesideAWorkBuffer) {
    for (int order : {19, 22, 23})   // with fewer tiles, and with none
        expectNoNeed<Complex32f, FFTSpec_C_32fc>(order, tevsFFTInitAlloc_C_32fc, tevsFFTGetBufSize_C_32fc, {tevsFFTFwd_CToC_32fc, tevsFFTInv_CToC_32fc},
                                                 tevsFFTFree_C_32fc);
    for (int order : {14, 20, 21})
        expectNoNeed<Complex64f, FFTSpec_C_64fc>(order, tevsFFTInitAlloc_C_64fc, tevsFFTGetBufSize_C_64fc, {tevsFFTFwd_CToC_64fc, tevsFFTInv_CToC_64fc},
                                                 tevsFFTFree_C_64fc);
}

TEST(NoMemory, FirRecords) {
    const std::vector<float> taps(100, 0.01f);
    const std::vector<Complex64f> complexTaps(100, {0.01, 0.02});
    const std::vector<int32_t> wholeTaps(100, 77);
    for (int tapsLen : {1, 16, 100}) {
        failEachAllocation("FIR_32f", [&] {
            return lifecycle<FIRState_32f>([&](auto p) { return tevsFIRInitAlloc_32f(p, taps.data(), tapsLen, nullptr); }, tevsFIRFree_32f);
        });
        failEachAllocation("FIR64fc_16sc", [&] {
            return lifecycle<FIRState64fc_16sc>([&](auto p) { return tevsFIRInitAlloc64fc_16sc(p, complexTaps.data(), tapsLen, nullptr); },
                                                tevsFIRFree64fc_16sc);
        });
        failEachAllocation("FIR32s_16s", [&] {
            return lifecycle<FIRState32s_16s>([&](auto p) { return tevsFIRInitAlloc32s_16s(p, wholeTaps.data(), tapsLen, 0, nullptr); }, tevsFIRFree32s_16s);
        });
    }
}

// A record owns all that its blocks need: also of orders where a transform works best in more than the least scratch.
template <class Sample, class State, class Init, class Block, class Free> void blocksNeedNoMemory(Init init, Block block, Free free, int tapsLen, size_t len) {
    tevSetNumThreads(1);
    const std::vector<Sample> taps(size_t(tapsLen), Sample{}), x(len, Sample{});
    std::vector<Sample> y(len), inPlace = x;
    State* state;
    ASSERT_EQ(init(&state, taps.data(), tapsLen, nullptr), StatusOk);
    allocationsUntilFailure = 0;
    armed = TEVS_OWN_MALLOC;
    EXPECT_EQ(block(x.data(), y.data(), int(len), state), StatusOk);
    EXPECT_EQ(block(inPlace.data(), inPlace.data(), int(len), state), StatusOk);
    armed = false;
    EXPECT_EQ(allocationsUntilFailure, 0) << tapsLen << " taps allocate";
    free(state);
}
TEST(NoMemory, FirBlocks) {
    blocksNeedNoMemory<float, FIRState_32f>(tevsFIRInitAlloc_32f, tevsFIR_32f, tevsFIRFree_32f, 1 << 18, 600);
    blocksNeedNoMemory<Complex32f, FIRState_32fc>(tevsFIRInitAlloc_32fc, tevsFIR_32fc, tevsFIRFree_32fc, 1 << 17, 600);
    blocksNeedNoMemory<double, FIRState_64f>(tevsFIRInitAlloc_64f, tevsFIR_64f, tevsFIRFree_64f, 1 << 13, 600);
    blocksNeedNoMemory<Complex64f, FIRState_64fc>(tevsFIRInitAlloc_64fc, tevsFIR_64fc, tevsFIRFree_64fc, 1 << 12, 600);
    blocksNeedNoMemory<Complex64f, FIRState_64fc>(tevsFIRInitAlloc_64fc, tevsFIR_64fc, tevsFIRFree_64fc, 1 << 17, 600);
}

// Work areas for two threads stay two, though the count rises while the record is built.
TEST(ThreadCount, IsReadOnceForARecord) {
    if (!TEVS_OWN_MALLOC) GTEST_SKIP();
    const std::vector<double> taps(64, 1), x(5000, 1);
    std::vector<double> y(x.size());
    for (int k = 0; k < 5; ++k) {
        FIRState_64f* state;
        tevSetNumThreads(2);
        allocationsUntilFailure = INT_MAX;
        fenceCount = 0;
        threadsMeanwhileAt = k;
        armed = true;
        const Status s = tevsFIRInitAlloc_64f(&state, taps.data(), 64, nullptr);
        armed = false;
        threadsMeanwhileAt = -1;
        ASSERT_EQ(s, StatusOk);
        tevSetNumThreads(8);
        EXPECT_EQ(tevsFIR_64f(x.data(), y.data(), 5000, state), StatusOk);
        for (size_t n = 0; n < fenceCount; ++n) EXPECT_EQ(std::count(fences[n], fences[n] + kFence, 0x5a), ptrdiff_t{kFence}) << "block " << n;
        tevsFIRFree_64f(state);
    }
}

TEST(NoMemory, MultirateFilters) {
    const std::vector<float> taps(3000, 0.01f);
    failEachAllocation("FIRMR_32f", [&] {
        return lifecycle<FIRMRState_32f>([&](auto p) { return tevsFIRMRInitAlloc_32f(p, taps.data(), 40, 3, 0, 2, 0, nullptr); }, tevsFIRFree_32f);
    });
    failEachAllocation("FIRMR_Direct_32f", [&] {
        float src[2] = {1, 1}, dst[3] = {7, 7, 7}, past[1000] = {};
        const Status s = tevsFIRMR_Direct_32f(src, dst, 1, taps.data(), 3000, 3, 0, 2, 0, past);
        EXPECT_EQ(dst[0] == 7 && past[0] == 0, s != StatusOk);
        return s;
    });
}

TEST(NoMemory, GeneratorRecords) {
    const auto record = []<class State, class T>(Status (*init)(State**, T, T, uint32_t), Status (*release)(State*)) {
        failEachAllocation("random", [=] { return lifecycle<State>([=](auto p) { return init(p, T(1), T(100), 7); }, release); });
    };
    record(tevsRandUniformInitAlloc_8u, tevsRandUniformFree_8u);
    record(tevsRandUniformInitAlloc_16s, tevsRandUniformFree_16s);
    record(tevsRandUniformInitAlloc_32f, tevsRandUniformFree_32f);
    record(tevsRandGaussInitAlloc_8u, tevsRandGaussFree_8u);
    record(tevsRandGaussInitAlloc_16s, tevsRandGaussFree_16s);
    record(tevsRandGaussInitAlloc_32f, tevsRandGaussFree_32f);
    failEachAllocation("triangle",
                       [] { return lifecycle<TriangleState_16s>([](auto p) { return tevsTriangleInitAllocQ15_16s(p, 100, 77, 0, 0); }, tevsTriangleFree); });
}

TEST(NoMemory, UnsignedChirps) {
    uint8_t v[100] = {9};
    failEachAllocation("8u", [&] {
        v[0] = 9;
        const Status s = tevsVectorJaehne_8u(v, 100, 200);
        EXPECT_EQ(v[0] == 9, s != StatusOk);
        return s;
    });
}

}   // namespace
