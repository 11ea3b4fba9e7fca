// Cosine transforms of any length against their definition in extended precision.
#include "support/spec.h"

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
#define TEVS_DCT_KIND(d, t, id, number, s, is)                                                                                                     \
    {                                                                                                                                              \
#d #t, id, Number::number,                                                                                                                 \
            #d[0] == 'F', erased < tevsDCT##d##GetSize_##t>, erased < tevsDCT##d##Init_##t>, erased < tevsDCT##d##InitAlloc_##t>,                  \
               erased < tevsDCT##d##Free_##t>, erased < tevsDCT##d##GetBufSize_##t>, erased < tevsDCT##d##_##t##s>, erased < tevsDCT##d##_##t##is> \
    }
const Kind kKinds[] = {TEVS_DCT_KIND(Fwd, 16s, 19, i16, _Sfs, _ISfs), TEVS_DCT_KIND(Inv, 16s, 20, i16, _Sfs, _ISfs), TEVS_DCT_KIND(Fwd, 32f, 21, f32, , _I),
                       TEVS_DCT_KIND(Inv, 32f, 22, f32, , _I),        TEVS_DCT_KIND(Fwd, 64f, 23, f64, , _I),        TEVS_DCT_KIND(Inv, 64f, 24, f64, , _I)};

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
double bound(Number number, size_t n) { return (largestPrime(n) > 13 || n <= 100 ? 2 : 1.3) * roundings(number, n); }

void expectDefinition(const Kind& kind, size_t n, int hint, size_t step = 1) {
    const Spec spec(kind, n, hint);
    const Vector x = kind.source(n), y = kind.run(x, spec, kind.whole() ? 1 : 0);
    const Cosines c(n);
    std::vector<Real> want, got;
    SCOPED_TRACE(::testing::Message() << kind.name << " " << n << " hint " << hint);
    for (size_t i = 0; i < n; i += step) {
        want.push_back(exact(c, x, kind.forward, i)), got.push_back(y.part(i));
        ASSERT_TRUE(!kind.whole() || distanceSaturated(want.back(), 1, got.back()) <= 0.55L) << i;
    }
    ASSERT_TRUE(kind.whole() || distance(want, got) <= bound(kind.number, n) * (step > 1 ? 2 : 1));   // of a few values the norm scatters
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
                EXPECT_LE(distance(reals(x), reals(back)), 1.5 * bound(kKinds[k].number, n)) << kKinds[k].name << " " << n;
            }
}

TEST(Dct, SixteenBitsSaturateAndVanish) {
    for (const Kind* kind = kKinds; kind->whole(); ++kind)
        for (size_t n : {1, 2, 8, 16, 100, 101, 128}) {
            const Spec spec(*kind, n, HintNone);
            checkExtremeScales(kind->source(n), [&](const Vector& v, int scaleFactor) { return kind->run(v, spec, scaleFactor); });
        }
}

// ---- where things lie -----------------------------------------------------------------------------------------------------------------

constexpr size_t kLengths[] = {1,  2,   3,   4,   5,   6,   7,   8,   9,   15,   16,   20,   31,    32,    45,    64,
                               99, 100, 101, 102, 127, 128, 149, 210, 302, 1000, 1009, 4096, 32768, 32769, 45045, 131072};

// A record in a block of exactly its size, at any address: the same bits as of one on the heap, and nothing touched beside. At last the longest tables, and a work
// area that only just has room.
TEST(Dct, GivesTheSameBitsWhereverThingsLie) {
    for (const Kind& kind : kKinds)
        for (size_t n : kLengths) {
            SCOPED_TRACE(::testing::Message() << kind.name << " " << n);
            const Spec own(kind, n, HintNone);
            const Vector x = kind.source(n), want = kind.run(x, own, 2);
            int specSize, initSize, workSize;
            ASSERT_EQ(kind.getSize(int(n), HintNone, &specSize, &initSize, &workSize), StatusOk);
            EXPECT_EQ(own.buffer(), size_t(workSize));
            const auto init = [&](Ptr spec, Ptr memory, Ptr scratch) { return kind.init(spec, int(n), HintNone, memory, scratch); };
            checkRecordPlaces(kind, specSize, initSize, 15, init, [&](Ptr spec) {
                checkPlaces(x, want, size_t(workSize), [&](Ptr src, Ptr dst, Ptr buffer) {
                    return src.p == dst.p ? kind.inPlace(dst, spec, {2}, buffer) : kind.transform(src, dst, spec, {2}, buffer);
                });
            });
        }
}

TEST(Dct, IgnoresAndKeepsTheCallersRounding) {
    for (const Kind& kind : kKinds)
        for (size_t n : {1, 2, 8, 31, 32, 100, 101, 128}) {
            const Vector x = kind.source(n);
            SCOPED_TRACE(::testing::Message() << kind.name << " " << n);
            expectOwnModes([&] { return kind.run(x, Spec(kind, n, HintNone), 1).bytes; });
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
        void *const mark = &a, *spec = mark;
        alignas(16) uint8_t block[8192], scratch[1024];
        expectEach(StatusBadSize, {kind.getSize(0, 0, nullptr, nullptr, nullptr), kind.init(&spec, 0, 0, nullptr, nullptr), kind.initAlloc(&spec, -1, 0)});
        expectEach(StatusNullPtr, {kind.getSize(5, 0, nullptr, &b, &c), kind.getSize(5, 0, &a, nullptr, &c), kind.getSize(5, 0, &a, &b, nullptr),
                                   kind.init(nullptr, 0, 0, nullptr, nullptr), kind.init(&spec, 64, 0, nullptr, scratch),
                                   kind.init(&spec, 64, 0, block, nullptr), kind.init(&spec, 101, 0, block, nullptr), kind.initAlloc(nullptr, 0, 0),
                                   kind.free(nullptr), kind.getBufSize(nullptr, &a), kind.getBufSize(block, nullptr)});
        expectEach(StatusFftOrder, {kind.getSize(INT_MAX, 0, &a, &b, &c), kind.init(&spec, INT_MAX, 0, block, scratch), kind.initAlloc(&spec, INT_MAX, 0)});
        EXPECT_EQ(kind.initAlloc(&spec, 1 << 29, 0), StatusNoMemory);
        EXPECT_TRUE(a == 7 && b == 7 && c == 7 && spec == mark);
        const Spec own(kind, 16, HintNone);
        Vector x = kind.source(16), y = x;
        alignas(16) uint32_t stranger[64] = {kind.identifier ^ 1, 5};
        expectEach(StatusNullPtr, {kind.transform(nullptr, nullptr, nullptr, {0}, nullptr), kind.transform(nullptr, y, own, {0}, nullptr),
                                   kind.transform(x, nullptr, own, {0}, nullptr), kind.inPlace(nullptr, own, {0}, nullptr)});
        expectEach(StatusContextMismatch, {kind.getBufSize(stranger, &a), kind.free(stranger), kind.transform(nullptr, nullptr, stranger, {0}, nullptr),
                                           kind.inPlace(y, stranger, {0}, nullptr)});
        EXPECT_TRUE(same(x, y));
        // 8 or 16 bytes for each of 2^30 values are more than 32 bits count.
        EXPECT_EQ(kind.getSize((1 << 28) + 1, 0, &a, &b, &c), StatusOk);
        EXPECT_TRUE(a == INT_MAX && c == INT_MAX) << kind.name << ": " << a << " " << c;
    }
}

}   // namespace
