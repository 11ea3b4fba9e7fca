// The analytic signal against its definition in extended precision.
#include "support/spec.h"

using namespace test;

namespace {

struct Kind {
    const char* name;
    uint32_t identifier;
    Type from, to;
    Status (*initAlloc)(Ptr ppSpec, int length, int hint);
    Status (*free)(Ptr spec);
    Status (*transform)(Ptr src, Ptr dst, Ptr spec, Scale scale);

    Vector run(const Vector& x, Ptr spec, int scaleFactor) const {
        Vector y(to, x.size());
        EXPECT_EQ(transform(x, y, spec, {scaleFactor}), StatusOk) << name;
        return y;
    }
};
constexpr Type kShort{Number::i16, 1}, kFloat{Number::f32, 1}, kShorts{Number::i16, 2}, kFloats{Number::f32, 2};
const Kind kKinds[] = {
    {"32f32fc", 0x4C4D5359, kFloat, kFloats, erased<tevsHilbertInitAlloc_32f32fc>, erased<tevsHilbertFree_32f32fc>, erased<tevsHilbert_32f32fc>},
    {"16s32fc", 0x4C4D535A, kShort, kFloats, erased<tevsHilbertInitAlloc_16s32fc>, erased<tevsHilbertFree_16s32fc>, erased<tevsHilbert_16s32fc>},
    {"16s16sc", 0x4C4D535B, kShort, kShorts, erased<tevsHilbertInitAlloc_16s16sc>, erased<tevsHilbertFree_16s16sc>, erased<tevsHilbert_16s16sc_Sfs>}};

Values analytic(const Vector& x) {
    const size_t n = x.size();
    Values spectrum = slowDft(unpacked(Reals, reals(x), n), -1);
    for (size_t k = 0; k < n; ++k) spectrum[k] *= (k == 0 || 2 * k == n ? 1.0L : 2 * k < n ? 2.0L : 0.0L) / Real(n);
    return slowDft(spectrum, 1);
}

constexpr size_t kLengths[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 16, 17, 31, 32, 60, 99, 100, 128, 151, 210, 302, 441, 480};

TEST(Hilbert, EqualsTheDefinition) {
    for (const Kind& kind : kKinds)
        for (size_t n : kLengths) {
            SCOPED_TRACE(::testing::Message() << kind.name << " " << n);
            const Spec spec(kind, n, HintFast);
            const Vector x = randomVector(kind.from, n);
            const Values want = analytic(x);
            for (int scaleFactor : {0, 2}) {
                const Values y = unpacked(Pairs, reals(kind.run(x, spec, scaleFactor)), n);
                for (size_t t = 0; t < n && kind.to.whole(); ++t) {
                    ASSERT_LE(distanceSaturated(want[t].real(), scaleFactor, y[t].real()), 0.55L) << t;
                    ASSERT_LE(distanceSaturated(want[t].imag(), scaleFactor, y[t].imag()), 0.55L) << t;
                }
                EXPECT_TRUE(kind.to.whole() || distance(want, y) <= 2.5 * roundings(Number::f32, n));
            }
        }
}

TEST(Hilbert, ShortestAreThemselves) {
    for (const Kind& kind : kKinds)
        for (size_t n : {1, 2}) {
            const Spec spec(kind, n, HintFast);
            Vector x(kind.from, n);
            for (size_t i = 0; i < n; ++i) x.setPart(i, i ? -7 : 5);
            struct Row {
                int scaleFactor;
                Real parts[2];
            };
            for (const Row& row : {Row{0, {5, -7}}, Row{1, {2, -4}}, Row{-3, {40, -56}}, Row{INT_MAX, {0, 0}}, Row{INT_MIN, {32767, -32768}}}) {
                if (!kind.to.whole() && row.scaleFactor) continue;
                const Vector y = kind.run(x, spec, row.scaleFactor);
                for (size_t i = 0; i < y.parts(); ++i) EXPECT_EQ(y.part(i), i % 2 ? 0 : row.parts[i / 2]) << kind.name << " " << row.scaleFactor;
            }
        }
}

TEST(Hilbert, KeepsToItsVectors) {
    for (const Kind& kind : kKinds)
        for (size_t n : kLengths) {
            SCOPED_TRACE(::testing::Message() << kind.name << " " << n);
            const Spec spec(kind, n, HintFast);
            const Vector x = randomVector(kind.from, n), want = kind.run(x, spec, 1);
            checkPlaces(x, want, 0, [&](Ptr src, Ptr dst, Ptr) { return kind.transform(src, dst, spec, {1}); });
        }
}

TEST(Hilbert, IgnoresAndKeepsTheCallersRounding) {
    for (const Kind& kind : kKinds)
        for (size_t n : {1, 2, 15, 60, 151}) {
            const Vector x = randomVector(kind.from, n);
            SCOPED_TRACE(::testing::Message() << kind.name << " " << n);
            expectOwnModes([&] { return kind.run(x, Spec(kind, n, HintFast), 1).bytes; });
        }
}

TEST(Hilbert, ChecksInOrder) {
    for (const Kind& kind : kKinds) {
        void *const mark = &std::cout, *none = mark;
        EXPECT_EQ(kind.initAlloc(nullptr, 0, 0), StatusNullPtr);
        for (int length : {0, -1, INT_MIN}) EXPECT_EQ(kind.initAlloc(&none, length, 0), StatusBadSize);
        EXPECT_EQ(none, mark);
        const Vector x = randomVector(kind.from, 6);
        Vector y(kind.to, 6);
        // A length that there is no memory for leaves a record without transforms.
        EXPECT_EQ(kind.initAlloc(&none, INT_MAX, 0), StatusNoMemory);
        ASSERT_TRUE(none && none != mark);
        EXPECT_EQ(std::memcmp(none, &kind.identifier, 4), 0);
        expectEach(StatusNullPtr, {kind.free(none), kind.transform(x, y, none, {0})});
        tevsFree(none);
        alignas(16) uint32_t stranger[64] = {kind.identifier ^ 1, 6};
        expectEach(StatusNullPtr, {kind.free(nullptr), kind.transform(nullptr, y, stranger, {0}), kind.transform(x, nullptr, stranger, {0}),
                                   kind.transform(x, y, nullptr, {0})});
        expectEach(StatusContextMismatch, {kind.free(stranger), kind.transform(x, y, stranger, {0})});
        EXPECT_TRUE(same(y, Vector(kind.to, 6)));
    }
}

}   // namespace
