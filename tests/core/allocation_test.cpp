// Every allocation inside every function that allocates is made to fail in turn: StatusNoMemory, nothing leaked, nothing stored.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)   // which bring a malloc of their own
#include "filter/filters.h"
#include "support/records.h"

using namespace test;

namespace {

bool armed = false;
int allocationsUntilFailure = 0, live = 0;
const uint32_t* record = nullptr;   // whose identifier is looked at before memory goes back
uint32_t identifier = 0;
int threadsMeanwhileAt = -1;   // the allocation in which the thread count rises, as another thread may make it

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

template <class Call> Status withAllocations(int count, Call call) {
    allocationsUntilFailure = count;
    live = 0;
    armed = true;
    const Status s = call();
    armed = false;
    return s;
}

template <class Call> void failEachAllocation(const std::string& name, Call call) {
    for (int k = 0;; ++k) {
        const Status s = withAllocations(k, call);
        EXPECT_EQ(live, 0) << name << ", allocation " << k;
        if (allocationsUntilFailure >= 0) {
            EXPECT_EQ(s, StatusOk) << name;
            EXPECT_GE(k, 1) << name << " allocates nothing";
            return;
        }
        ASSERT_EQ(s, StatusNoMemory) << name << ", allocation " << k;
    }
}

// Builds a record and frees it again.
template <class Record = void, class Free, class Init> void failEachOfRecord(const std::string& name, Free free, Init init) {
    failEachAllocation(name, [=]() -> Status {
        Record* const mark = reinterpret_cast<Record*>(0x40);
        Record* p = mark;
        if (const Status s = init(&p); s != StatusOk) {
            EXPECT_EQ(p, mark);
            return s;
        }
        record = reinterpret_cast<const uint32_t*>(p);
        const Status freed = free(p);
        record = nullptr;
        EXPECT_EQ(identifier, 0u) << "a record that is freed keeps its identifier";
        return freed;
    });
}

// A call that is refused leaves its destination, which begins at `first`.
template <class T, class Call> void failEachOfCall(const std::string& name, T& first, Call call) {
    failEachAllocation(name, [&] {
        first = 3;
        const Status s = call();
        EXPECT_EQ(first == 3, s != StatusOk) << name;
        return s;
    });
}

const Kind kKinds[] = {TEVS_FFT_KIND(C_32fc, 4, f32, f32, 4), TEVS_FFT_KIND(C_64fc, 7, f64, f64, 4), TEVS_FFT_KIND(R_32f, 6, f32, f32, 4),
                       TEVS_FFT_KIND(R_16s, 3, i16, i16, 1),  TEVS_FFT_KIND(C_16sc, 1, i16, i16, 1), TEVS_FFT_KIND(R_32s, 0x4C4D5366, i32, i32, 4)};
const Form kForms[] = {
    TEVS_COMPLEX_FORMS(kKinds[0], Pairs, TEVS_FFT_PAIRS, 32fc, , _I),
    TEVS_COMPLEX_FORMS(kKinds[1], Pairs, TEVS_FFT_PAIRS, 64fc, , _I),
    {kKinds[2], "Fwd_RToPerm", Reals, Perm, TEVS_FFT_PAIRS(Fwd_RToPerm_32f, , _I)},
    {kKinds[3], "Fwd_RToPerm", Reals, Perm, TEVS_FFT_PAIRS(Fwd_RToPerm_16s, _Sfs, _ISfs)},
};

TEST(NoMemory, FftRecords) {
    for (const Kind& kind : kKinds)
        for (int order : {0, 1, 4, 10, 16, 17})
            for (int flag : {ScaleInvByN, NoScale}) failEachOfRecord(kind.name, kind.free, [&](void** p) { return kind.initAlloc(p, order, flag, HintNone); });
}

TEST(NoMemory, FftWorkBuffer) {
    for (const Form& form : kForms)
        for (int order : {10, 16}) {
            const size_t n = samples(order);
            const Spec spec(form.kind, size_t(order), NoScale, HintNone);
            const Vector src = form.source(n);
            Vector dst = src;
            failEachOfCall(form.name, *reinterpret_cast<uint32_t*>(dst.at(0)), [&] { return form.call(src, dst, spec, n); });
        }
}

// A power of two, mixed radices and a convolution: building, and calls that have no work buffer.
TEST(NoMemory, TransformsOfAnyLength) {
    std::vector<Complex32f> x(3000), y(3000);
    for (int n : {1024, 1000, 1009}) {
        failEachOfRecord<DFTSpec_C_32fc>("DFT", tevsDFTFree_C_32fc, [=](auto** p) { return tevsDFTInitAlloc_C_32fc(p, n, NoScale, HintNone); });
        failEachOfRecord<DFTSpec_R_16s>("DFT", tevsDFTFree_R_16s, [=](auto** p) { return tevsDFTInitAlloc_R_16s(p, n, NoScale, HintNone); });
        failEachOfRecord<DCTFwdSpec_32f>("DCT", tevsDCTFwdFree_32f, [=](auto** p) { return tevsDCTFwdInitAlloc_32f(p, n, HintNone); });
        DFTSpec_C_32fc* dft = nullptr;
        DCTInvSpec_32f* dct = nullptr;
        HilbertSpec_16s16sc* hilbert = nullptr;
        ASSERT_EQ(tevsDFTInitAlloc_C_32fc(&dft, n, NoScale, HintNone), StatusOk);
        ASSERT_EQ(tevsDCTInvInitAlloc_32f(&dct, n, HintNone), StatusOk);
        ASSERT_EQ(tevsHilbertInitAlloc_16s16sc(&hilbert, n, HintNone), StatusOk);
        float& first = y[0].re;
        failEachOfCall("DFTFwd", first, [&] { return tevsDFTFwd_CToC_32fc(x.data(), y.data(), dft, nullptr); });
        failEachOfCall("DCTInv", first, [&] { return tevsDCTInv_32f(&x[0].re, &y[0].re, dct, nullptr); });
        failEachOfCall("Hilbert", first,
                       [&] { return tevsHilbert_16s16sc_Sfs(reinterpret_cast<int16_t*>(x.data()), reinterpret_cast<Complex16s*>(y.data()), hilbert, 0); });
        std::vector<uint8_t> buffer(size_t(1) << 17);
        EXPECT_EQ(withAllocations(0, [&] { return tevsDFTFwd_CToC_32fc(x.data(), y.data(), dft, buffer.data()); }), StatusOk);
        EXPECT_EQ(withAllocations(0, [&] { return tevsDCTInv_32f(&x[0].re, &y[0].re, dct, buffer.data()); }), StatusOk);
        tevsDFTFree_C_32fc(dft);
        tevsDCTInvFree_32f(dct);
        tevsHilbertFree_16s16sc(hilbert);
    }
}

TEST(NoMemory, Wavelets) {
    std::vector<float> h(8), x(20000), y(20000);
    const float* const p = h.data();
    failEachOfRecord<WtState_32f>("WtAnalysis", tevsWtFree_32f, [=](auto** s) { return tevsWtAnalysisInitAlloc_32f(s, p, 8, -1, p, 8, -1); });
    failEachOfRecord<WtState_32f>("WtSynthesis", tevsWtFree_32f, [=](auto** s) { return tevsWtSynthesisInitAlloc_32f(s, p, 8, -1, p, 8, -1); });
    failEachOfRecord<DWTSpec_32f>("DWT", tevsDWTFree_32f, [=](auto** s) { return tevsDWTInitAlloc_32f(s, 20000, 5, p, p, p, p, 8, ExtPeriodic); });
    DWTSpec_32f* spec = nullptr;
    ASSERT_EQ(tevsDWTInitAlloc_32f(&spec, 20000, 5, p, p, p, p, 8, ExtPeriodic), StatusOk);
    for (const auto call : {tevsDWTFwd_32f, tevsDWTInv_32f})
        for (float* dst : {y.data(), x.data()}) failEachOfCall("DWT", dst[0], [&] { return call(x.data(), dst, spec, nullptr); });
    tevsDWTFree_32f(spec);
}

TEST(NoMemory, OscillatorsAndDecoders) {
    const int poly[] = {0171, 0133};
    const int16_t next[] = {0, 1};
    const uint8_t symbol[] = {1, 0};
    failEachOfRecord<ViterbiState>("Viterbi", tevsViterbiFree, [&](auto** p) { return tevsViterbiInitAlloc(p, poly, 2, 7, 30); });
    failEachOfRecord<ViterbiState>("Viterbi_Table", tevsViterbiFree, [&](auto** p) { return tevsViterbiInitAlloc_Table(p, next, symbol, 2, 1, 2, 9); });
    failEachOfRecord<ToneState>("Tone", tevsToneFree, [](auto** p) { return tevsToneInitAlloc(p, 0.1, 1); });
}

// The record stays where the memory of a transform in it is refused; it is no use, and Free says so.
TEST(NoMemory, HilbertRecord) {
    for (int k = 0;; ++k) {
        HilbertSpec_32f32fc* spec = reinterpret_cast<HilbertSpec_32f32fc*>(0x40);
        const Status s = withAllocations(k, [&] { return tevsHilbertInitAlloc_32f32fc(&spec, 1009, HintNone); });
        if (s == StatusOk) {
            EXPECT_GE(k, 3);
            EXPECT_EQ(tevsHilbertFree_32f32fc(spec), StatusOk);
            return;
        }
        ASSERT_EQ(s, StatusNoMemory) << k;
        EXPECT_EQ(live, spec ? 1 : 0) << k;
        EXPECT_EQ(spec == nullptr, k == 0);
        if (spec) {
            EXPECT_EQ(tevsHilbertFree_32f32fc(spec), StatusNullPtr);
        }
        tevsFree(spec);
    }
}

// A call that was given its work buffer, of the size reported, cannot fail: it does what it did with memory, but for rounding.
TEST(NoMemory, IsNotNeededBesideAWorkBuffer) {
    struct Row {
        int form, order;
    };
    // With fewer tiles, and with none.
    for (const auto& [i, order] : {Row{0, 19}, {0, 22}, {0, 23}, {1, 19}, {1, 22}, {1, 23}, {2, 14}, {2, 20}, {2, 21}, {3, 14}, {3, 20}, {3, 21}}) {
        const Form& form = kForms[i];
        const size_t n = samples(order);
        const Spec spec(form.kind, size_t(order), ScaleBySqrtN, HintNone);
        Guarded<uint8_t> buffer(spec.buffer());
        const Vector x = form.source(n);
        Vector got = x, both = x;
        const Vector want = form.run(x, spec, n);
        ASSERT_EQ(withAllocations(0, [&] { return form.call(x, got, spec, n, 0, buffer.data()); }), StatusOk) << order;
        ASSERT_EQ(withAllocations(0, [&] { return form.inPlace(both, spec, n, 0, buffer.data()); }), StatusOk) << order;
        const double most = 2 * roundings(form.in().number, n);
        for (size_t k = 0; k < 2 * n; k += samples(14))
            for (const Vector& y : {got.slice(k, samples(14)), both.slice(k, samples(14))})
                EXPECT_LE(distance(reals(want.slice(k, samples(14))), reals(y)), most) << ::testing::PrintToString(form) << " " << order << " at " << k;
        EXPECT_TRUE(buffer.intact()) << ::testing::PrintToString(form) << " " << order;
    }
}

TEST(NoMemory, FirRecords) {
    for (const Api& api : kPairs)
        for (int taps : {1, 16, 100}) {
            const Vector h = randomVector(api.tap, 3000);
            failEachOfRecord(api.name, api.free, [&](void** p) { return api.initAlloc(p, h, taps, Factor{0}, nullptr); });
            failEachOfRecord(api.name, api.free, [&](void** p) { return api.rateInitAlloc(p, h, 30 * taps, Factor{0}, Factors{40, 3, 7, 2}, nullptr); });
        }
}

// A record owns all that its blocks need: also of orders where a transform works best in more than the least scratch.
TEST(NoMemory, FirBlocks) {
    const Threads one(1);
    for (const auto& [name, taps] : {std::pair{"_32f", 1 << 18}, {"_32fc", 1 << 17}, {"_64f", 1 << 13}, {"_64fc", 1 << 12}, {"_64fc", 1 << 17}}) {
        const Api& api = pairNamed(name);
        Filter filter(api, Taps(api, Vector(api.tap, size_t(taps))), nullptr, true);
        const Vector x(api.sample, 600);
        Vector y = x;
        EXPECT_EQ(withAllocations(0, [&] { return filter.block(x, y, 600, 0); }), StatusOk);
        EXPECT_EQ(allocationsUntilFailure, 0) << taps << " taps allocate";
        EXPECT_EQ(withAllocations(0, [&] { return filter.inPlace(y, 600, 0); }), StatusOk);
        EXPECT_EQ(allocationsUntilFailure, 0) << taps << " taps allocate in place";
    }
}

// Work areas for two threads stay two, though the count rises while the record is built.
TEST(ThreadCount, IsReadOnceForARecord) {
    const Api& api = pairNamed("_64f");
    const Vector h = randomVector(api.tap, 64);
    Vector y = randomVector(api.sample, 5000);
    for (int k = 0; k < 5; ++k) {
        void* state = nullptr;
        const Threads two(2);
        fenceCount = 0;
        threadsMeanwhileAt = k;
        ASSERT_EQ(withAllocations(INT_MAX, [&] { return api.initAlloc(&state, h, 64, Factor{0}, nullptr); }), StatusOk);
        threadsMeanwhileAt = -1;
        tevSetNumThreads(8);
        EXPECT_EQ(api.blockInPlace(y, 5000, state, Scale{0}), StatusOk);
        for (size_t n = 0; n < fenceCount; ++n) EXPECT_EQ(std::count(fences[n], fences[n] + kFence, 0x5a), ptrdiff_t{kFence}) << "block " << n;
        api.free(state);
    }
}

TEST(NoMemory, MultirateFilters) {
    const std::vector<float> taps(3000, 0.01f);
    float src[2] = {1, 1}, dst[3], past[1000] = {};
    failEachOfCall("FIRMR_Direct_32f", dst[0], [&] {
        past[0] = 0;
        const Status s = tevsFIRMR_Direct_32f(src, dst, 1, taps.data(), 3000, 3, 0, 2, 0, past);
        EXPECT_EQ(past[0] == 0, s != StatusOk);
        return s;
    });
}

TEST(NoMemory, RecursiveAndAdaptiveFilters) {
    const std::vector<float> taps(60, 0.5f);
    const std::vector<int32_t> integers(60, 5);
    failEachOfRecord<IIRState_32f>("IIR_32f", tevsIIRFree_32f, [&](auto p) { return tevsIIRInitAlloc_32f(p, taps.data(), 20, nullptr); });
    failEachOfRecord<IIRState32s_16s>("BiQuad", tevsIIRFree32s_16s, [&](auto p) { return tevsIIRInitAlloc32s_BiQuad_16s(p, integers.data(), 10, 3, nullptr); });
    failEachOfRecord<FIRLMSMRState_32f>("multirate LMS", tevsFIRLMSMRFree_32f,
                                        [&](auto p) { return tevsFIRLMSMRInitAlloc_32f(p, taps.data(), 60, 2, 1, 3, 2, nullptr); });
    failEachOfRecord<FIRLMSState32f_16s>("LMS", tevsFIRLMSFree32f_16s, [&](auto p) { return tevsFIRLMSInitAlloc32f_16s(p, taps.data(), 60, nullptr, 0); });
}

// By transforms, in blocks and at once; directly nothing is allocated.
TEST(NoMemory, ConvolutionAndCorrelation) {
    const Threads one(1);
    std::vector<float> x(12000, 0.5f), y(12000);
    auto* const shorts = reinterpret_cast<int16_t*>(x.data());
    auto* const to = reinterpret_cast<int16_t*>(y.data());
    for (const auto& [m, n] : {std::pair{1000, 1000}, {100, 5000}}) {
        failEachOfCall("Conv_32f", y[0], [&, m = m, n = n] { return tevsConv_32f(x.data(), m, x.data(), n, y.data()); });
        failEachOfCall("Conv_16s", to[0], [&, m = m, n = n] { return tevsConv_16s_Sfs(shorts, m, shorts, n, to, 30); });
    }
    failEachOfCall("CrossCorr_16s", to[0], [&] { return tevsCrossCorr_16s_Sfs(shorts, 900, shorts, 900, to, 900, -5, 30); });
    failEachOfCall("AutoCorr_NormB_32f", y[0], [&] { return tevsAutoCorr_NormB_32f(x.data(), 900, y.data(), 1000); });
    EXPECT_EQ(withAllocations(0, [&] { return tevsConv_32f(x.data(), 63, x.data(), 9000, y.data()); }), StatusOk);
    EXPECT_EQ(withAllocations(0, [&] { return tevsCrossCorr_32f(x.data(), 9000, x.data(), 9000, y.data(), 383, 0); }), StatusOk);
    EXPECT_EQ(withAllocations(0, [&] { return tevsAutoCorr_NormB_32f(x.data(), 9000, y.data(), 855); }), StatusOk);
    EXPECT_EQ(withAllocations(0, [&] { return tevsConvBiased_32f(x.data(), 900, x.data(), 900, y.data(), 900, 0); }), StatusOk);
}

TEST(NoMemory, Medians) {
    const std::vector<float> x(3000, 1.0f);
    std::vector<float> y(3000);
    for (int mask : {22, 1500, 2999})
        failEachOfCall("FilterMedian_32f", y[0], [&] {
            const Status s = tevsFilterMedian_32f(x.data(), y.data(), 3000, mask);
            return s == WarnEvenMedianMask ? StatusOk : s;
        });
}

TEST(NoMemory, GeneratorRecords) {
    const auto record = []<class State, class T>(Status (*init)(State**, T, T, uint32_t), Status (*release)(State*)) {
        failEachOfRecord<State>("random", release, [=](auto p) { return init(p, T(1), T(100), 7); });
    };
    record(tevsRandUniformInitAlloc_8u, tevsRandUniformFree_8u);
    record(tevsRandUniformInitAlloc_16s, tevsRandUniformFree_16s);
    record(tevsRandUniformInitAlloc_32f, tevsRandUniformFree_32f);
    record(tevsRandGaussInitAlloc_8u, tevsRandGaussFree_8u);
    record(tevsRandGaussInitAlloc_16s, tevsRandGaussFree_16s);
    record(tevsRandGaussInitAlloc_32f, tevsRandGaussFree_32f);
    failEachOfRecord<TriangleState_16s>("triangle", tevsTriangleFree, [](auto p) { return tevsTriangleInitAllocQ15_16s(p, 100, 77, 0, 0); });
}

TEST(NoMemory, UnsignedChirps) {
    uint8_t v[100];
    failEachOfCall("8u", v[0], [&] { return tevsVectorJaehne_8u(v, 100, 200); });
}

}   // namespace
#endif
