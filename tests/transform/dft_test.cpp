// Transforms of any length against their definition in extended precision.
#include "support/spec.h"

using namespace test;

namespace {

size_t scalarsOf(Layout layout, size_t n) { return layout <= Parts ? 2 * n : layout == Ccs ? 2 * (n / 2 + 1) : n; }

// ---- kinds and calls --------------------------------------------------------------------------------------------------------------------

struct Kind {
    const char* name;
    uint32_t identifier;
    Number number;
    Layout layout;
    Status (*initAlloc)(Ptr ppSpec, int length, int flag, int hint);
    Status (*free)(Ptr spec);
    Status (*getBufSize)(Ptr spec, Ptr size);
    Type type() const { return {number, 1}; }
};
#define TEVS_DFT_KIND(prefix, k, identifier, number, layout) \
    { #k, identifier, Number::number, layout, erased < prefix##InitAlloc_##k>, erased < prefix##Free_##k>, erased < prefix##GetBufSize_##k> }
enum { kC16sc, kC16s, kR16s, kC32fc, kC32f, kR32f, kC64fc, kC64f, kR64f, kOutOrd32fc, kOutOrd64fc };
const Kind kKinds[] = {TEVS_DFT_KIND(tevsDFT, C_16sc, 10, i16, Pairs),
                       TEVS_DFT_KIND(tevsDFT, C_16s, 11, i16, Parts),
                       TEVS_DFT_KIND(tevsDFT, R_16s, 12, i16, Reals),
                       TEVS_DFT_KIND(tevsDFT, C_32fc, 13, f32, Pairs),
                       TEVS_DFT_KIND(tevsDFT, C_32f, 14, f32, Parts),
                       TEVS_DFT_KIND(tevsDFT, R_32f, 15, f32, Reals),
                       TEVS_DFT_KIND(tevsDFT, C_64fc, 16, f64, Pairs),
                       TEVS_DFT_KIND(tevsDFT, C_64f, 17, f64, Parts),
                       TEVS_DFT_KIND(tevsDFT, R_64f, 18, f64, Reals),
                       TEVS_DFT_KIND(tevsDFTOutOrd, C_32fc, 0x4C4D535E, f32, Pairs),
                       TEVS_DFT_KIND(tevsDFTOutOrd, C_64fc, 0x4C4D535F, f64, Pairs)};

struct Form {
    int kind;
    const char* name;
    Layout from, to;
    Status (*pairs)(Ptr src, Ptr dst, Ptr spec, Scale scale, Ptr buffer);
    Status (*parts)(Ptr srcRe, Ptr srcIm, Ptr dstRe, Ptr dstIm, Ptr spec, Scale scale, Ptr buffer);

    const Kind& of() const { return kKinds[kind]; }
    bool forward() const { return name[0] == 'F'; }
    Vector source(size_t n) const { return randomVector(of().type(), scalarsOf(from, n)); }
    Status call(Ptr src, Ptr dst, Ptr spec, size_t n, int scaleFactor = 0, Ptr buffer = nullptr) const {
        if (pairs) return pairs(src, dst, spec, {scaleFactor}, buffer);
        const auto second = [&](Ptr p) -> Ptr { return p.p ? static_cast<const char*>(p.p) + n * of().type().size() : nullptr; };
        return parts(src, second(src), dst, second(dst), spec, {scaleFactor}, buffer);
    }
    Vector run(const Vector& src, Ptr spec, size_t n, int scaleFactor = 0) const {
        Vector dst(of().type(), scalarsOf(to, n));
        EXPECT_EQ(call(src, dst, spec, n, scaleFactor), StatusOk) << of().name << " " << name << " " << n;
        return dst;
    }
};
#define TEVS_PAIRS_FORMS(kind, type, s) \
    {kind, "Fwd_CToC", Pairs, Pairs, erased<tevsDFTFwd_CToC_##type##s>, nullptr}, { kind, "Inv_CToC", Pairs, Pairs, erased<tevsDFTInv_CToC_##type##s>, nullptr }
#define TEVS_PARTS_FORMS(kind, type, s) \
    {kind, "Fwd_CToC", Parts, Parts, nullptr, erased<tevsDFTFwd_CToC_##type##s>}, { kind, "Inv_CToC", Parts, Parts, nullptr, erased<tevsDFTInv_CToC_##type##s> }
#define TEVS_REAL_FORMS(kind, type, s)                                                       \
    {kind, "Fwd_RToCCS", Reals, Ccs, erased<tevsDFTFwd_RToCCS_##type##s>, nullptr},          \
        {kind, "Fwd_RToPack", Reals, Pack, erased<tevsDFTFwd_RToPack_##type##s>, nullptr},   \
        {kind, "Fwd_RToPerm", Reals, Perm, erased<tevsDFTFwd_RToPerm_##type##s>, nullptr},   \
        {kind, "Inv_CCSToR", Ccs, Reals, erased<tevsDFTInv_CCSToR_##type##s>, nullptr},      \
        {kind, "Inv_PackToR", Pack, Reals, erased<tevsDFTInv_PackToR_##type##s>, nullptr}, { \
        kind, "Inv_PermToR", Perm, Reals, erased<tevsDFTInv_PermToR_##type##s>, nullptr      \
    }
const Form kForms[] = {TEVS_PAIRS_FORMS(kC16sc, 16sc, _Sfs), TEVS_PARTS_FORMS(kC16s, 16s, _Sfs), TEVS_REAL_FORMS(kR16s, 16s, _Sfs),
                       TEVS_PAIRS_FORMS(kC32fc, 32fc, ),     TEVS_PARTS_FORMS(kC32f, 32f, ),     TEVS_REAL_FORMS(kR32f, 32f, ),
                       TEVS_PAIRS_FORMS(kC64fc, 64fc, ),     TEVS_PARTS_FORMS(kC64f, 64f, ),     TEVS_REAL_FORMS(kR64f, 64f, )};
const Form kOutOfOrder[] = {{kOutOrd32fc, "Fwd", Pairs, Pairs, erased<tevsDFTOutOrdFwd_CToC_32fc>, nullptr},
                            {kOutOrd32fc, "Inv", Pairs, Pairs, erased<tevsDFTOutOrdInv_CToC_32fc>, nullptr},
                            {kOutOrd64fc, "Fwd", Pairs, Pairs, erased<tevsDFTOutOrdFwd_CToC_64fc>, nullptr},
                            {kOutOrd64fc, "Inv", Pairs, Pairs, erased<tevsDFTOutOrdInv_CToC_64fc>, nullptr}};

// ---- results -----------------------------------------------------------------------------------------------------------------------------

constexpr int kFlags[] = {ScaleFwdByN, ScaleInvByN, ScaleBySqrtN, NoScale};
long double factor(int flag, bool forward, size_t n) {
    if (flag == ScaleBySqrtN) return 1 / std::sqrt((long double)n);
    return flag == (forward ? ScaleFwdByN : ScaleInvByN) ? 1 / (long double)n : 1;
}
// Of error norm over signal norm: measured at all levels, and a little. Direct sums and convolutions add more terms; over a few values the norm scatters.
double bound(Number number, size_t n) { return (largestPrime(n) > 13 ? 1.8 : n < 32 ? 1.3 : 1.1) * roundings(number, n); }

void expectDefinition(const Form& form, size_t n, std::span<const int> flags) {
    const bool isWhole = form.of().number == Number::i16;
    Vector src = form.source(n);
    const Values want = slowDft(unpacked(form.from, reals(src), n), form.forward() ? -1 : 1);
    for (int flag : flags) {
        const Spec spec(form.of(), n, flag, HintNone);
        const long double f = factor(flag, form.forward(), n);
        // A scale that leaves the values of a noisy spectrum within 16 bits, most of the time.
        const int scaleFactor = isWhole ? int(std::lround(std::log2(std::sqrt(double(n)) * double(f)))) + 1 : 0;
        const Vector got = form.run(src, spec, n, scaleFactor);
        SCOPED_TRACE(::testing::Message() << form.of().name << " " << form.name << " " << n << " flag " << flag);
        std::vector<Real> exact(got.size());
        for (size_t i = 0; i < got.size(); ++i) {
            const Where at = whereIs(form.to, i, n);
            const bool zero = isZero(form.to, at, n);
            exact[i] = zero ? 0 : f * (at.imaginary ? want[at.k].imag() : want[at.k].real());
            // Rounded once: what the transform in single precision may be off, and the half of an integer.
            const Real most = flag != ScaleBySqrtN && (n <= 2 || n == 4) ? 0.5L + 1e-9L : 0.55L;
            ASSERT_TRUE(!isWhole || distanceSaturated(exact[i], scaleFactor, got.part(i)) <= most) << i;
            ASSERT_TRUE(isWhole || !zero || got.part(i) == 0) << i;
        }
        ASSERT_TRUE(isWhole || distance(exact, reals(got)) <= bound(form.of().number, n));
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
        if (form->of().number == Number::i16 || form->of().layout == Reals) continue;
        for (size_t n : {4410, 6561, 10007, 10501, 22050, 22201, 44100, 48000, 65536, 100000, 120120}) {
            const Vector x = form->source(n);
            const Spec spec(form->of(), n, ScaleInvByN, HintNone);
            const Vector y = form->run(x, spec, n), back = form[1].run(y, spec, n);
            const Values in = unpacked(form->from, reals(x), n), out = unpacked(form->from, reals(y), n), again = unpacked(form->from, reals(back), n);
            const double limit = bound(form->of().number, n);
            for (size_t k : {size_t{0}, size_t{1}, n / 3, n / 2, n - 7}) {
                Value want;
                for (size_t t = 0; t < n; ++t) want += in[t] * std::conj(root(size_t(uint64_t(t) * k % n), n));
                EXPECT_LE(double(std::abs(want - out[k])), 6 * limit * std::sqrt(double(n))) << form->of().name << " " << n << " " << k;
            }
            EXPECT_LE(distance(in, again), 1.5 * limit) << form->of().name << " " << n;
        }
    }
}

TEST(Dft, SixteenBitsSaturateAndVanish) {
    for (size_t n : {1, 3, 8, 100, 151})
        for (const Form& form : kForms) {
            if (form.of().number != Number::i16) continue;
            const Spec spec(form.of(), n, NoScale, HintNone);
            Vector x = form.source(n);
            x.setPart(0, 77);
            SCOPED_TRACE(::testing::Message() << form.of().name << " " << form.name << " " << n);
            checkExtremeScales(x, [&](const Vector& v, int scaleFactor) { return form.run(v, spec, n, scaleFactor); });
        }
}

// The order is the library's own, but products of spectra are spectra of cyclic convolutions.
TEST(DftOutOrd, ConvolvesAndReturns) {
    for (const Form* form = kOutOfOrder; form != std::end(kOutOfOrder); form += 2)
        for (size_t n : {1, 2, 3, 4, 5, 6, 7, 12, 16, 31, 60, 64, 100, 149, 151, 231, 302}) {
            const Spec spec(form->of(), n, ScaleInvByN, HintNone);
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
            EXPECT_LE(distance(want, got), 2.5 * bound(form->of().number, n)) << form->of().name << " " << n;
        }
}

// ---- where things lie -----------------------------------------------------------------------------------------------------------------

constexpr size_t kLengths[] = {1,  2,  3,  4,  5,  6,  7,  8,   9,   10,  12,  15,  16,  17,  18,  20,  21,  24,  26,   27,  33,
                               34, 35, 45, 49, 60, 63, 85, 100, 127, 149, 151, 202, 289, 298, 302, 360, 501, 960, 1009, 2048};

template <class F> void forEachForm(F f) {
    for (const Form& form : kForms) f(form);
    for (const Form& form : kOutOfOrder) f(form);
}
TEST(Dft, GivesTheSameBitsWhereverThingsLie) {
    forEachForm([](const Form& form) {
        for (size_t n : kLengths) {
            SCOPED_TRACE(::testing::Message() << form.of().name << " " << form.name << " " << n);
            const Spec spec(form.of(), n, ScaleBySqrtN, HintNone);
            const Vector src = form.source(n);
            checkPlaces(src, form.run(src, spec, n, 1), spec.buffer(), [&](Ptr x, Ptr y, Ptr buffer) { return form.call(x, y, spec, n, 1, buffer); });
        }
    });
}

// Three arrays; which of them are source re, im and destination re, im.
TEST(Dft, ArraysMayBeShared) {
    constexpr int kSharings[][4] = {{0, 1, 0, 1}, {0, 1, 1, 0}, {0, 1, 0, 2}, {0, 1, 2, 1}, {0, 1, 2, 0}, {0, 1, 1, 2}};
    for (const Form& form : kForms)
        for (size_t n : kLengths) {
            if (form.from != Parts) continue;
            const Spec spec(form.of(), n, NoScale, HintNone);
            const Vector src = form.source(n), want = form.run(src, spec, n, 3);
            for (const auto& at : kSharings) {
                Vector arrays[] = {src.slice(0, n), src.slice(n, n), Vector(form.of().type(), n)};
                ASSERT_EQ(form.parts(arrays[at[0]], arrays[at[1]], arrays[at[2]], arrays[at[3]], spec, {3}, nullptr), StatusOk);
                EXPECT_TRUE(same(want.slice(0, n), arrays[at[2]]) && same(want.slice(n, n), arrays[at[3]]))
                    << form.of().name << " " << form.name << " " << n << " sharing " << at[0] << at[1] << at[2] << at[3];
            }
        }
}

TEST(Dft, IgnoresAndKeepsTheCallersRounding) {
    for (const Form& form : kForms)
        for (size_t n : {1, 3, 7, 15, 16, 34, 60, 149, 151}) {
            const Vector src = form.source(n);
            SCOPED_TRACE(::testing::Message() << form.of().name << " " << form.name << " " << n);
            expectOwnModes([&] {
                const Spec spec(form.of(), n, ScaleBySqrtN, HintNone);
                return form.run(src, spec, n, 1).bytes;
            });
        }
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
        for (size_t n : {1, 6, 151}) {
            SCOPED_TRACE(::testing::Message() << form.of().name << " " << form.name);
            const Spec spec(form.of(), n, NoScale, HintNone);
            const Vector src = form.source(n);
            Vector dst(form.of().type(), scalarsOf(form.to, n));
            const Vector before = dst;
            alignas(16) uint32_t stranger[64] = {form.of().identifier ^ 1, 5};
            expectEach(StatusNullPtr, {form.call(nullptr, nullptr, nullptr, n), form.call(src, dst, nullptr, n), form.call(nullptr, dst, spec, n),
                                       form.call(src, nullptr, spec, n)});
            expectEach(StatusContextMismatch, {form.call(nullptr, nullptr, stranger, n), form.call(src, dst, stranger, n)});
            for (int missing = 0; missing < 4 && form.parts; ++missing) {
                const auto p = [&](int i, const Vector& v) { return i == missing ? Ptr() : Ptr(v); };
                EXPECT_EQ(form.parts(p(0, src), p(1, src), p(2, dst), p(3, dst), spec, {0}, nullptr), StatusNullPtr);
            }
            EXPECT_TRUE(same(before, dst));
        }
    });
}

}   // namespace
