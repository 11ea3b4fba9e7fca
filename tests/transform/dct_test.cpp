// Cosine transforms of any length against their definition in extended precision.
#include <climits>
#include <numbers>

#include "support/control_words.h"
#include "support/erased.h"

using namespace test;

namespace {

struct Kind {
    const char* name;
    uint32_t identifier;
    Number number;
    bool forward;
    Status (*getSize)(int length, int hint, Ptr spec, Ptr init, Ptr work);
    Status (*init)(Ptr ppSpec, int length, int hint, Ptr memory, Ptr scratch);
    Status (*initAlloc)(Ptr ppSpec, int length, int hint);
    Status (*free)(Ptr spec);
    Status (*getBufSize)(Ptr spec, Ptr size);
    Status (*transform)(Ptr src, Ptr dst, Ptr spec, Scale scale, Ptr buffer);
    Status (*inPlace)(Ptr srcDst, Ptr spec, Scale scale, Ptr buffer);

    bool whole() const { return number == Number::i16; }
    Vector source(size_t n) const { return randomVector({number, 1}, n); }
    Vector run(const Vector& x, Ptr spec, int scaleFactor = 0) const {
        Vector y({number, 1}, x.size());
        EXPECT_EQ(transform(x, y, spec, {scaleFactor}, nullptr), StatusOk) << name;
        return y;
    }
};
#define TEVS_DCT_KIND(d, t, id, number, s)                                                                                        \
    {                                                                                                                             \
#d #t, id, Number::number,                                                                                                \
            #d[0] == 'F', erased < tevsDCT##d##GetSize_##t>, erased < tevsDCT##d##Init_##t>, erased < tevsDCT##d##InitAlloc_##t>, \
               erased < tevsDCT##d##Free_##t>, erased < tevsDCT##d##GetBufSize_##t>, erased < tevsDCT##d##_##t##s##Sfs>,          \
               erased < tevsDCT##d##_##t##_I##s##Sfs>                                                                             \
    }
#define tevsDCTFwd_32fNoSfs tevsDCTFwd_32f
#define tevsDCTInv_32fNoSfs tevsDCTInv_32f
#define tevsDCTFwd_64fNoSfs tevsDCTFwd_64f
#define tevsDCTInv_64fNoSfs tevsDCTInv_64f
#define tevsDCTFwd_32f_INoSfs tevsDCTFwd_32f_I
#define tevsDCTInv_32f_INoSfs tevsDCTInv_32f_I
#define tevsDCTFwd_64f_INoSfs tevsDCTFwd_64f_I
#define tevsDCTInv_64f_INoSfs tevsDCTInv_64f_I
#define tevsDCTFwd_16s_Sfs tevsDCTFwd_16s_Sfs
#define tevsDCTFwd_16s_I_Sfs tevsDCTFwd_16s_ISfs
#define tevsDCTInv_16s_I_Sfs tevsDCTInv_16s_ISfs
const Kind kKinds[] = {TEVS_DCT_KIND(Fwd, 16s, 19, i16, _),  TEVS_DCT_KIND(Inv, 16s, 20, i16, _),  TEVS_DCT_KIND(Fwd, 32f, 21, f32, No),
                       TEVS_DCT_KIND(Inv, 32f, 22, f32, No), TEVS_DCT_KIND(Fwd, 64f, 23, f64, No), TEVS_DCT_KIND(Inv, 64f, 24, f64, No)};

class Spec {
public:
    Spec(const Kind& kind, size_t n, int hint = HintNone) : kind_(kind) { EXPECT_EQ(kind.initAlloc(&spec_, int(n), hint), StatusOk) << kind.name << " " << n; }
    ~Spec() { EXPECT_EQ(kind_.free(spec_), StatusOk) << kind_.name; }
    Spec(const Spec&) = delete;
    operator Ptr() const { return spec_; }
    size_t buffer() const {
        int size = -1;
        EXPECT_EQ(kind_.getBufSize(spec_, &size), StatusOk);
        return size_t(size);
    }

private:
    const Kind& kind_;
    void* spec_ = nullptr;
};

// cos(pi i / 2N) for all i.
class Cosines {
public:
    explicit Cosines(size_t n) : n_(n), at_(4 * n) {
        for (size_t i = 0; i < 4 * n; ++i) at_[i] = std::cos(std::numbers::pi_v<Real> * Real(i) / Real(2 * n));
    }
    Real operator()(size_t n, size_t k) const { return at_[(2 * n + 1) * k % (4 * n_)] * std::sqrt(Real(k == 0 ? 1 : 2) / Real(n_)); }

private:
    size_t n_;
    std::vector<Real> at_;
};
Real exact(const Cosines& c, const Vector& x, bool forward, size_t i) {
    Real sum = 0;
    for (size_t j = 0; j < x.size(); ++j) sum += x.part(j) * (forward ? c(j, i) : c(i, j));
    return sum;
}
double bound(Number number, size_t n) {
    size_t most = 1;
    for (size_t d = 2, m = n; m > 1; ++d)
        for (; m % d == 0; m /= d) most = d;
    return (number == Number::f64 ? 0x1p-53 : 0x1p-24) * (most > 13 || n <= 100 ? 2 : 1.3) * std::sqrt(std::log2(double(n)) + 1);
}

void expectDefinition(const Kind& kind, size_t n, int hint, size_t step = 1) {
    const Spec spec(kind, n, hint);
    const Vector x = kind.source(n), y = kind.run(x, spec, kind.whole() ? 1 : 0);
    const Cosines c(n);
    Real off = 0, all = 0;
    for (size_t i = 0; i < n; i += step) {
        const Real want = exact(c, x, kind.forward, i);
        if (kind.whole()) {
            ASSERT_LE(std::abs(std::clamp<Real>(want / 2, -32768, 32767) - y.part(i)), 0.55L) << kind.name << " " << n << " at " << i;
        }
        off += (want - y.part(i)) * (want - y.part(i));
        all += want * want;
    }
    if (!kind.whole()) {
        ASSERT_LE(double(std::sqrt(off / all)), bound(kind.number, n) * (step > 1 ? 2 : 1))
            << kind.name << " " << n << " hint " << hint;   // of a few values the norm scatters
    }
}

TEST(Dct, EqualsTheDefinition) {
    for (const Kind& kind : kKinds) {
        for (size_t n = 1; n <= 300; ++n) expectDefinition(kind, n, int(n % 3));
        for (size_t n : {441, 512, 960, 1000, 1009, 1024, 2048, 4096}) expectDefinition(kind, n, HintNone);
    }
}

// At the switch of methods, and beyond. Some values against the definition, and all on the way back.
TEST(Dct, LongLengths) {
    for (size_t k = 0; k < 6; k += 2)
        for (size_t n : {10007, 32768, 44100, 45045, 65536, 131072})
            for (int hint : {HintNone, HintAccurate}) {
                expectDefinition(kKinds[k], n, hint, n / 5);
                expectDefinition(kKinds[k + 1], n, hint, n / 5);
                if (kKinds[k].whole()) continue;
                const Spec forward(kKinds[k], n, hint), inverse(kKinds[k + 1], n, hint);
                const Vector x = kKinds[k].source(n), back = kKinds[k + 1].run(kKinds[k].run(x, forward), inverse);
                Real off = 0, all = 0;
                for (size_t i = 0; i < n; ++i) {
                    off += (x.part(i) - back.part(i)) * (x.part(i) - back.part(i));
                    all += x.part(i) * x.part(i);
                }
                EXPECT_LE(double(std::sqrt(off / all)), 1.5 * bound(kKinds[k].number, n)) << kKinds[k].name << " " << n;
            }
}

TEST(Dct, SixteenBitsSaturateAndVanish) {
    for (const Kind* kind = kKinds; kind->whole(); ++kind)
        for (size_t n : {1, 2, 8, 16, 100, 101, 128}) {
            const Spec spec(*kind, n);
            Vector zero({Number::i16, 1}, n), x = kind->source(n);
            for (int scaleFactor : {INT_MIN, -128, 128, INT_MAX})
                for (size_t i = 0; i < n; ++i) {
                    ASSERT_EQ(kind->run(zero, spec, scaleFactor).part(i), 0) << n << " " << scaleFactor;
                    const Real v = kind->run(x, spec, scaleFactor).part(i);
                    ASSERT_TRUE(v == 0 || (scaleFactor < 0 && (v == 32767 || v == -32768))) << n << " " << scaleFactor;
                }
        }
}

// ---- where things lie -----------------------------------------------------------------------------------------------------------------

constexpr size_t kLengths[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 15, 16, 20, 31, 32, 45, 64, 99, 100, 101, 102, 127, 128, 149, 210, 302, 1000, 1009, 4096};

// A record in a block of exactly its size, in place or not, with a buffer of its size or none: the same bits, and nothing touched beside.
TEST(Dct, GivesTheSameBitsWhereverThingsLie) {
    for (const Kind& kind : kKinds)
        for (size_t n : kLengths) {
            const Spec own(kind, n);
            const Vector x = kind.source(n), want = kind.run(x, own, 2);
            int specSize, initSize, workSize;
            ASSERT_EQ(kind.getSize(int(n), HintNone, &specSize, &initSize, &workSize), StatusOk);
            EXPECT_EQ(own.buffer(), size_t(workSize)) << kind.name << " " << n;
            const int e = int(x.type.size());
            for (Place at : {Place{0, false}, Place{1, false}, Place{3 * e, false}, Place{5, false}, Place{0, true}, Place{1, true}}) {
                Guarded<uint8_t> memory(size_t(specSize), at), scratch(size_t(initSize), at), buffer(size_t(workSize), {at.offset + 4, at.atEnd});
                void* spec = nullptr;
                ASSERT_EQ(kind.init(&spec, int(n), HintNone, memory.data(), initSize ? Ptr(scratch.data()) : Ptr()), StatusOk);
                const auto record = memory.values();
                const Guarded<uint8_t> in(x.bytes, at);
                Guarded<uint8_t> out(x.bytes.size(), at), both(x.bytes, at);
                ASSERT_EQ(kind.transform(in.data(), out.data(), spec, {2}, workSize ? Ptr(buffer.data()) : Ptr()), StatusOk);
                ASSERT_TRUE(same(want.bytes, out.values())) << kind.name << " " << n << " offset " << at.offset;
                ASSERT_EQ(kind.inPlace(both.data(), spec, {2}, at.atEnd ? Ptr() : Ptr(buffer.data())), StatusOk);
                ASSERT_TRUE(same(want.bytes, both.values())) << kind.name << " in place " << n << " offset " << at.offset;
                ASSERT_TRUE(same(record, memory.values()) && same(x.bytes, in.values())) << kind.name << " " << n;
                ASSERT_EQ(kind.free(spec), StatusOk);
                ASSERT_EQ(kind.free(spec), StatusContextMismatch);
                ASSERT_TRUE(memory.intact() && scratch.intact() && buffer.intact() && out.intact() && both.intact() && in.intact()) << kind.name << " " << n;
            }
        }
}

// The longest tables, and a work area that only just has room.
TEST(Dct, LongRecordsKeepToTheirSizes) {
    for (const Kind& kind : kKinds)
        for (size_t n : {32768, 32769, 45045, 65536, 131072})
            for (int offset : {0, 1, 15}) {
                int specSize, initSize, workSize;
                ASSERT_EQ(kind.getSize(int(n), HintNone, &specSize, &initSize, &workSize), StatusOk);
                Guarded<uint8_t> memory(size_t(specSize), {offset, true}), scratch(size_t(initSize), Place{}), buffer(size_t(workSize), {offset, true});
                void* spec = nullptr;
                ASSERT_EQ(kind.init(&spec, int(n), HintNone, memory.data(), scratch.data()), StatusOk);
                const Vector x = kind.source(n), want = kind.run(x, Spec(kind, n));
                Vector y = x;
                ASSERT_EQ(kind.inPlace(y, spec, {0}, buffer.data()), StatusOk);
                EXPECT_TRUE(same(want, y) && memory.intact() && buffer.intact()) << kind.name << " " << n;
            }
}

TEST(Dct, IgnoresAndKeepsTheCallersRounding) {
    for (const Kind& kind : kKinds)
        for (size_t n : {1, 2, 8, 31, 32, 100, 101, 128}) {
            const Vector x = kind.source(n);
            SCOPED_TRACE(::testing::Message() << kind.name << " " << n);
            expectOwnModes([&] { return kind.run(x, Spec(kind, n), 1).bytes; });
        }
}

// ---- records --------------------------------------------------------------------------------------------------------------------------

TEST(DctRecord, Sizes) {
    struct Row {
        int kind, length, hint, spec, init, work;
    };
    for (const Row& r :
         {Row{2, 1, 0, 100, 0, 0}, Row{2, 8, 0, 100, 0, 0}, Row{2, 16, 2, 176, 0, 80}, Row{2, 100, 0, 1712, 0, 416}, Row{2, 128, 0, 3440, 304, 2080},
          Row{2, 3, 0, 160, 0, 28}, Row{2, 65536, 0, 262256, 0, 262160}, Row{4, 8, 0, 100, 0, 0}, Row{4, 16, 1, 240, 0, 144}, Row{4, 100, 0, 3312, 0, 816},
          Row{4, 128, 0, 6516, 560, 4128}, Row{0, 1, 0, 48, 0, 0}, Row{0, 8, 2, 148, 0, 48}, Row{0, 16, 0, 224, 0, 160}, Row{0, 100, 0, 1760, 0, 832},
          Row{0, 128, 0, 3488, 320, 2608}, Row{0, 65536, 2, 262304, 0, 524320}, Row{2, 101, 0, 6208, 304, 4128}})
        for (int d : {0, 1}) {
            int spec, init, work;
            ASSERT_EQ(kKinds[r.kind + d].getSize(r.length, r.hint, &spec, &init, &work), StatusOk);
            EXPECT_TRUE(spec == r.spec && init == r.init && work == r.work)
                << kKinds[r.kind + d].name << " " << r.length << ": " << spec << " " << init << " " << work;
        }
}

TEST(DctRecord, ChecksInOrder) {
    for (const Kind& kind : kKinds) {
        int a = 7, b = 7, c = 7;
        EXPECT_EQ(kind.getSize(0, 0, nullptr, nullptr, nullptr), StatusBadSize);
        EXPECT_EQ(kind.getSize(5, 0, nullptr, &b, &c), StatusNullPtr);
        EXPECT_EQ(kind.getSize(5, 0, &a, nullptr, &c), StatusNullPtr);
        EXPECT_EQ(kind.getSize(5, 0, &a, &b, nullptr), StatusNullPtr);
        EXPECT_EQ(kind.getSize(INT_MAX, 0, &a, &b, &c), StatusFftOrder);
        EXPECT_TRUE(a == 7 && b == 7 && c == 7);
        void *const mark = &a, *spec = mark;
        alignas(16) uint8_t block[8192], scratch[1024];
        EXPECT_EQ(kind.init(nullptr, 0, 0, nullptr, nullptr), StatusNullPtr);
        EXPECT_EQ(kind.init(&spec, 0, 0, nullptr, nullptr), StatusBadSize);
        EXPECT_EQ(kind.init(&spec, 64, 0, nullptr, scratch), StatusNullPtr);
        EXPECT_EQ(kind.init(&spec, 64, 0, block, nullptr), StatusNullPtr);
        EXPECT_EQ(kind.init(&spec, 101, 0, block, nullptr), StatusNullPtr);
        EXPECT_EQ(kind.init(&spec, INT_MAX, 0, block, scratch), StatusFftOrder);
        EXPECT_EQ(kind.initAlloc(nullptr, 0, 0), StatusNullPtr);
        EXPECT_EQ(kind.initAlloc(&spec, -1, 0), StatusBadSize);
        EXPECT_EQ(kind.initAlloc(&spec, INT_MAX, 0), StatusFftOrder);
        EXPECT_EQ(kind.initAlloc(&spec, 1 << 29, 0), StatusNoMemory);
        EXPECT_EQ(spec, mark);
        EXPECT_EQ(kind.free(nullptr), StatusNullPtr);
        EXPECT_EQ(kind.getBufSize(nullptr, &a), StatusNullPtr);
        EXPECT_EQ(kind.getBufSize(block, nullptr), StatusNullPtr);
        const Spec own(kind, 16);
        Vector x = kind.source(16), y = x;
        alignas(16) uint32_t stranger[64] = {kind.identifier ^ 1, 5};
        EXPECT_EQ(kind.getBufSize(stranger, &a), StatusContextMismatch);
        EXPECT_EQ(kind.free(stranger), StatusContextMismatch);
        EXPECT_EQ(kind.transform(nullptr, nullptr, nullptr, {0}, nullptr), StatusNullPtr);
        EXPECT_EQ(kind.transform(nullptr, nullptr, stranger, {0}, nullptr), StatusContextMismatch);
        EXPECT_EQ(kind.transform(nullptr, y, own, {0}, nullptr), StatusNullPtr);
        EXPECT_EQ(kind.transform(x, nullptr, own, {0}, nullptr), StatusNullPtr);
        EXPECT_EQ(kind.inPlace(y, stranger, {0}, nullptr), StatusContextMismatch);
        EXPECT_EQ(kind.inPlace(nullptr, own, {0}, nullptr), StatusNullPtr);
        EXPECT_TRUE(same(x, y));
    }
}

// 8 or 16 bytes for each of 2^30 values are more than 32 bits count.
TEST(DctRecord, SizesDoNotWrap) {
    for (const Kind& kind : kKinds) {
        int spec, init, work;
        ASSERT_EQ(kind.getSize((1 << 28) + 1, 0, &spec, &init, &work), StatusOk);
        EXPECT_TRUE(spec == INT_MAX && work == INT_MAX) << kind.name << ": " << spec << " " << work;
    }
}

}   // namespace
