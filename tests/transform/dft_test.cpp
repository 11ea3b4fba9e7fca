// Transforms of any length against their definition in extended precision.
#include "support/records.h"

using namespace test;

namespace {

// clang-format off
#define TEVS_DFT_KIND(prefix, k, identifier, number) \
    {#k, identifier, Number::number, Number::number, erased<prefix##InitAlloc_##k>, erased<prefix##Free_##k>, erased<prefix##GetBufSize_##k>}
#define TEVS_DFT_PAIRS(name, suffix) erased<tevsDFT##name##suffix>, nullptr
#define TEVS_DFT_PARTS(name, suffix) nullptr, erased<tevsDFT##name##suffix>
// clang-format on
enum { kC16sc, kC16s, kR16s, kC32fc, kC32f, kR32f, kC64fc, kC64f, kR64f, kOutOrd32fc, kOutOrd64fc };
const Kind kKinds[] = {
    TEVS_DFT_KIND(tevsDFT, C_16sc, 10, i16),
    TEVS_DFT_KIND(tevsDFT, C_16s, 11, i16),
    TEVS_DFT_KIND(tevsDFT, R_16s, 12, i16),
    TEVS_DFT_KIND(tevsDFT, C_32fc, 13, f32),
    TEVS_DFT_KIND(tevsDFT, C_32f, 14, f32),
    TEVS_DFT_KIND(tevsDFT, R_32f, 15, f32),
    TEVS_DFT_KIND(tevsDFT, C_64fc, 16, f64),
    TEVS_DFT_KIND(tevsDFT, C_64f, 17, f64),
    TEVS_DFT_KIND(tevsDFT, R_64f, 18, f64),
    TEVS_DFT_KIND(tevsDFTOutOrd, C_32fc, 0x4C4D535E, f32),
    TEVS_DFT_KIND(tevsDFTOutOrd, C_64fc, 0x4C4D535F, f64),
};
const Form kForms[] = {
    TEVS_COMPLEX_FORMS(kKinds[kC16sc], Pairs, TEVS_DFT_PAIRS, 16sc, _Sfs),
    TEVS_COMPLEX_FORMS(kKinds[kC16s], Parts, TEVS_DFT_PARTS, 16s, _Sfs),
    TEVS_REAL_FORMS(kKinds[kR16s], TEVS_DFT_PAIRS, 16s, _Sfs),
    TEVS_COMPLEX_FORMS(kKinds[kC32fc], Pairs, TEVS_DFT_PAIRS, 32fc, ),
    TEVS_COMPLEX_FORMS(kKinds[kC32f], Parts, TEVS_DFT_PARTS, 32f, ),
    TEVS_REAL_FORMS(kKinds[kR32f], TEVS_DFT_PAIRS, 32f, ),
    TEVS_COMPLEX_FORMS(kKinds[kC64fc], Pairs, TEVS_DFT_PAIRS, 64fc, ),
    TEVS_COMPLEX_FORMS(kKinds[kC64f], Parts, TEVS_DFT_PARTS, 64f, ),
    TEVS_REAL_FORMS(kKinds[kR64f], TEVS_DFT_PAIRS, 64f, ),
};
const Form kOutOfOrder[] = {
    {kKinds[kOutOrd32fc], "Fwd", Pairs, Pairs, erased<tevsDFTOutOrdFwd_CToC_32fc>, nullptr},
    {kKinds[kOutOrd32fc], "Inv", Pairs, Pairs, erased<tevsDFTOutOrdInv_CToC_32fc>, nullptr},
    {kKinds[kOutOrd64fc], "Fwd", Pairs, Pairs, erased<tevsDFTOutOrdFwd_CToC_64fc>, nullptr},
    {kKinds[kOutOrd64fc], "Inv", Pairs, Pairs, erased<tevsDFTOutOrdInv_CToC_64fc>, nullptr},
};
template <class F> void forEachForm(F f) {
    for (const Form& form : kForms) f(form);
    for (const Form& form : kOutOfOrder) f(form);
}

// ---- results -----------------------------------------------------------------------------------------------------------------------------

// Of error norm over signal norm: measured at all levels, and a little. Direct sums and convolutions add more terms; over a few values the norm scatters.
double bound(Number number, size_t n) { return (largestPrime(n) > 13 ? 1.8 : n < 32 ? 1.3 : 1.1) * roundings(number, n); }

void expectDefinition(const Form& form, size_t n, std::span<const int> flags) {
    const bool isWhole = form.in().whole();
    const Vector src = form.source(n);
    const Values sums = slowDft(unpacked(form.from, reals(src), n), form.forward() ? -1 : 1);
    for (int flag : flags) {
        const Spec spec(form.kind, n, flag, HintNone);
        const Real f = factor(flag, form.forward(), n);
        auto want = packed(form.to, sums);
        for (Real& v : want) v *= f;
        // A scale that leaves the values of a noisy spectrum within 16 bits, most of the time.
        const int scaleFactor = isWhole ? int(std::lround(std::log2(std::sqrt(double(n)) * double(f)))) + 1 : 0;
        const auto got = reals(form.run(src, spec, n, scaleFactor));
        SCOPED_TRACE(::testing::Message() << ::testing::PrintToString(form) << " " << n << " flag " << flag);
        // Rounded once: what the transform in single precision may be off, and the half of an integer.
        const Real most = flag != ScaleBySqrtN && (n <= 2 || n == 4) ? 0.5L + 1e-9L : 0.55L;
        for (size_t i = 0; i < got.size(); ++i)
            ASSERT_TRUE(isWhole ? distanceSaturated(want[i], scaleFactor, got[i]) <= most : want[i] != 0 || got[i] == 0) << i;
        ASSERT_TRUE(isWhole || distance(want, got) <= bound(form.in().number, n));
    }
}

TEST(Dft, EqualsTheDefinition) {
    for (const Form& form : kForms)
        for (size_t n = 1; n <= 300; ++n) expectDefinition(form, n, n <= 20 ? std::span(kFlags) : std::span(kFlags).subspan(n % 4, 1));
    for (const Form& form : kForms)
        for (size_t n : {331, 337, 360, 480, 539, 606, 960, 1000, 1009, 1024, 1155, 1920}) expectDefinition(form, n, std::span(kFlags).subspan(n % 4, 1));
}

// Long ones: some bins each, and the way back.
TEST(Dft, LongLengths) {
    for (const Form* form = kForms; form != std::end(kForms); form += 2) {
        if (form->in().whole() || form->from > Parts) continue;
        for (size_t n : {4410, 6561, 10007, 10501, 22050, 22201, 44100, 48000, 65536, 100000, 144144}) {
            const Vector x = form->source(n);
            const Spec spec(form->kind, n, ScaleInvByN, HintNone);
            const Vector y = form->run(x, spec, n), back = form[1].run(y, spec, n);
            const Values in = unpacked(form->from, reals(x), n), out = unpacked(form->from, reals(y), n), again = unpacked(form->from, reals(back), n);
            const double limit = bound(form->in().number, n);
            for (size_t k : {size_t{0}, size_t{1}, n / 3, n / 2, n - 7}) {
                Value want;
                for (size_t t = 0; t < n; ++t) want += in[t] * std::conj(root(size_t(uint64_t(t) * k % n), n));
                EXPECT_LE(double(std::abs(want - out[k])), 6 * limit * std::sqrt(double(n))) << form->kind.name << " " << n << " " << k;
            }
            EXPECT_LE(distance(in, again), 1.5 * limit) << form->kind.name << " " << n;
        }
    }
}

TEST(Dft, SixteenBitsSaturateAndVanish) {
    for (size_t n : {1, 3, 8, 100, 151})
        for (const Form& form : kForms) {
            if (!form.in().whole()) continue;
            const Spec spec(form.kind, n, NoScale, HintNone);
            Vector x = form.source(n);
            x.setPart(0, 77);
            SCOPED_TRACE(::testing::Message() << ::testing::PrintToString(form) << " " << n);
            checkExtremeScales(x, [&](const Vector& v, int scaleFactor) { return form.run(v, spec, n, scaleFactor); });
        }
}

// The order is the library's own, but products of spectra are spectra of cyclic convolutions.
TEST(DftOutOrd, ConvolvesAndReturns) {
    for (const Form* form = kOutOfOrder; form != std::end(kOutOfOrder); form += 2)
        for (size_t n : {1, 2, 3, 4, 5, 6, 7, 12, 16, 31, 60, 64, 100, 149, 151, 231, 302}) {
            const Spec spec(form->kind, n, ScaleInvByN, HintNone);
            const Vector x = form->source(n), h = form->source(n);
            Vector y = form->run(x, spec, n);
            const Vector g = form->run(h, spec, n);
            for (size_t k = 0; k < n; ++k) {
                const Value p = Value(y.part(2 * k), y.part(2 * k + 1)) * Value(g.part(2 * k), g.part(2 * k + 1));
                y.setPart(2 * k, p.real());
                y.setPart(2 * k + 1, p.imag());
            }
            ASSERT_EQ(form[1].call(y, y, spec, n), StatusOk);
            const Values a = unpacked(Pairs, reals(x), n), b = unpacked(Pairs, reals(h), n), got = unpacked(Pairs, reals(y), n);
            Values want(n);
            for (size_t k = 0; k < n; ++k)
                for (size_t t = 0; t < n; ++t) want[k] += a[t] * b[(k + n - t) % n];
            EXPECT_LE(distance(want, got), 2.5 * bound(form->in().number, n)) << form->kind.name << " " << n;
        }
}

// ---- where things lie -----------------------------------------------------------------------------------------------------------------

constexpr size_t kLengths[] = {1,  2,  3,  4,  5,  6,  7,  8,   9,   10,  12,  15,  16,  17,  18,  20,  21,  24,  26,   27,  33,
                               34, 35, 45, 49, 60, 63, 85, 100, 127, 149, 151, 202, 289, 298, 302, 360, 501, 960, 1009, 2048};

TEST(Dft, GivesTheSameBitsWhereverThingsLie) {
    forEachForm([](const Form& form) {
        for (size_t n : kLengths) expectSameEverywhere(form, n, n);
    });
}

TEST(Dft, ArraysMayBeShared) {
    for (const Form& form : kForms)
        for (size_t n : kLengths)
            if (form.parts) expectShareableArrays(form, n, n);
}

TEST(Dft, IgnoresAndKeepsTheCallersRounding) {
    for (const Form& form : kForms)
        for (size_t n : {1, 3, 7, 15, 16, 34, 60, 149, 151}) expectOwnRounding(form, n, n);
}

// ---- records --------------------------------------------------------------------------------------------------------------------------

TEST(DftRecord, BufferSizes) {
    struct Row {
        int kind, length, size;
    };
    for (const Row& r : {Row{kC32fc, 1, 0},      Row{kC32fc, 2, 0},       Row{kC32fc, 3, 0},     Row{kC32fc, 4, 0},   Row{kC32fc, 5, 72},
                         Row{kC32fc, 7, 88},     Row{kC32fc, 8, 0},       Row{kC32fc, 16, 160},  Row{kC32fc, 6, 80},  Row{kC32fc, 149, 1224},
                         Row{kC32fc, 151, 8224}, Row{kC32fc, 302, 16416}, Row{kC32f, 7, 88},     Row{kC64fc, 7, 144}, Row{kC64f, 60, 992},
                         Row{kR32f, 3, 0},       Row{kR32f, 60, 512},     Row{kC16sc, 1, 0},     Row{kC16sc, 2, 48},  Row{kC16sc, 7, 88 + 56 + 32},
                         Row{kR16s, 4, 24 + 32}, Row{kOutOrd32fc, 7, 88}, Row{kOutOrd64fc, 4, 0}}) {
        const Spec spec(kKinds[r.kind], size_t(r.length), NoScale, HintNone);
        EXPECT_EQ(spec.buffer(), size_t(r.size)) << kKinds[r.kind].name << " " << r.length;
    }
}

TEST(DftRecord, ChecksInOrder) {
    void *const mark = &std::cout, *spec = mark;
    for (const Kind& kind : kKinds) {
        EXPECT_EQ(kind.initAlloc(nullptr, 0, 3, 0), StatusNullPtr);
        for (int length : {0, -1, INT_MIN}) EXPECT_EQ(kind.initAlloc(&spec, length, 3, 0), StatusBadSize);
        for (int flag : {0, 3, 5, 16, -1})
            for (int length : {1, 6, 8, 151, INT_MAX}) EXPECT_EQ(kind.initAlloc(&spec, length, flag, 0), StatusFftFlag);
        for (int length : {INT_MAX, INT_MAX - 1, 1 << 30, (1 << 29) * 3, 1 << 28, 1 << 29})
            EXPECT_EQ(kind.initAlloc(&spec, length, NoScale, 0), StatusNoMemory) << kind.name << " " << length;
        EXPECT_EQ(spec, mark) << kind.name;
        int size = 7;
        alignas(16) uint32_t stranger[64] = {kind.identifier ^ 1, 5};
        expectEach(StatusNullPtr, {kind.free(nullptr), kind.getBufSize(nullptr, &size), kind.getBufSize(stranger, nullptr)});
        expectEach(StatusContextMismatch, {kind.free(stranger), kind.getBufSize(stranger, &size)});
        EXPECT_EQ(size, 7);
        const Spec own(kind, 6, NoScale, HintNone);
        EXPECT_EQ(std::memcmp(Ptr(own).p, &kind.identifier, sizeof kind.identifier), 0);
    }
}

TEST(Dft, ChecksInOrder) {
    forEachForm([](const Form& form) {
        for (size_t n : {1, 6, 151}) expectCallChecks(form, Spec(form.kind, n, NoScale, HintNone), n);
    });
}

}   // namespace
