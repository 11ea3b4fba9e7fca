// The analytic signal against its definition in extended precision.
#include <climits>

#include "support/control_words.h"
#include "support/dft.h"
#include "support/erased.h"

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

class Spec {
public:
    Spec(const Kind& kind, size_t n) : kind_(kind) { EXPECT_EQ(kind.initAlloc(&spec_, int(n), HintFast), StatusOk) << kind.name << " " << n; }
    ~Spec() { EXPECT_EQ(kind_.free(spec_), StatusOk) << kind_.name; }
    Spec(const Spec&) = delete;
    operator Ptr() const { return spec_; }

private:
    const Kind& kind_;
    void* spec_ = nullptr;
};

Values analytic(const Vector& x) {
    const size_t n = x.size();
    Values v(n), w(n), spectrum(n), y(n);
    for (size_t t = 0; t < n; ++t) {
        v[t] = x.part(t);
        w[t] = root(t, n);
    }
    for (size_t k = 0; 2 * k <= n; ++k) {
        for (size_t t = 0; t < n; ++t) spectrum[k] += v[t] * std::conj(w[t * k % n]);
        if (k > 0 && 2 * k < n) spectrum[k] *= 2;
    }
    for (size_t t = 0; t < n; ++t) {
        for (size_t k = 0; 2 * k <= n; ++k) y[t] += spectrum[k] * w[t * k % n];
        y[t] /= (long double)n;
    }
    return y;
}

constexpr size_t kLengths[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 16, 17, 31, 32, 60, 99, 100, 128, 151, 210, 302, 441, 480};

TEST(Hilbert, EqualsTheDefinition) {
    for (const Kind& kind : kKinds)
        for (size_t n : kLengths) {
            const Spec spec(kind, n);
            const Vector x = randomVector(kind.from, n);
            const Values want = analytic(x);
            for (int scaleFactor : {0, 2}) {
                const Vector y = kind.run(x, spec, scaleFactor);
                long double off = 0, all = 0;
                for (size_t t = 0; t < n; ++t) {
                    if (kind.to.whole()) {
                        const long double f = std::ldexp(1.0L, -scaleFactor);
                        ASSERT_LE(std::abs(std::clamp(want[t].real() * f, -32768.0L, 32767.0L) - y.part(2 * t)), 0.55L) << n << " " << t;
                        ASSERT_LE(std::abs(std::clamp(want[t].imag() * f, -32768.0L, 32767.0L) - y.part(2 * t + 1)), 0.55L) << n << " " << t;
                    }
                    off += std::norm(want[t] - Value(y.part(2 * t), y.part(2 * t + 1)));
                    all += std::norm(want[t]);
                }
                if (!kind.to.whole()) {
                    EXPECT_LE(double(std::sqrt(off / all)), 0x1p-24 * 2.5 * std::sqrt(std::log2(double(n)) + 1)) << kind.name << " " << n;
                }
            }
        }
}

TEST(Hilbert, ShortestAreThemselves) {
    for (const Kind& kind : kKinds)
        for (size_t n : {1, 2}) {
            const Spec spec(kind, n);
            Vector x(kind.from, n);
            for (size_t i = 0; i < n; ++i) x.setPart(i, i ? -7 : 5);
            for (int scaleFactor : {0, 1, -3, INT_MAX, INT_MIN}) {
                if (!kind.to.whole() && scaleFactor) continue;
                const Vector y = kind.run(x, spec, scaleFactor);
                for (size_t i = 0; i < n; ++i) {
                    const Real rows[][2] = {{5, -7}, {2, -4}, {40, -56}, {0, 0}, {32767, -32768}};
                    const size_t row = scaleFactor == 0 ? 0 : scaleFactor == 1 ? 1 : scaleFactor == -3 ? 2 : scaleFactor > 0 ? 3 : 4;
                    EXPECT_EQ(y.part(2 * i), rows[row][i]) << kind.name << " " << scaleFactor;
                    EXPECT_EQ(y.part(2 * i + 1), 0);
                }
            }
        }
}

TEST(Hilbert, KeepsToItsVectors) {
    for (const Kind& kind : kKinds)
        for (size_t n : kLengths) {
            const Spec spec(kind, n);
            const Vector x = randomVector(kind.from, n), want = kind.run(x, spec, 1);
            for (Place at : {Place{0, false}, Place{4, false}, Place{1, false}, Place{0, true}, Place{1, true}}) {
                const Guarded<uint8_t> in(x.bytes, at);
                Guarded<uint8_t> out(want.bytes.size(), at);
                ASSERT_EQ(kind.transform(in.data(), out.data(), spec, {1}), StatusOk);
                ASSERT_TRUE(same(want.bytes, out.values()) && same(x.bytes, in.values()) && out.intact() && in.intact()) << kind.name << " " << n;
            }
        }
}

TEST(Hilbert, IgnoresAndKeepsTheCallersRounding) {
    for (const Kind& kind : kKinds)
        for (size_t n : {1, 2, 15, 60, 151}) {
            const Vector x = randomVector(kind.from, n);
            SCOPED_TRACE(::testing::Message() << kind.name << " " << n);
            expectOwnModes([&] { return kind.run(x, Spec(kind, n), 1).bytes; });
        }
}

TEST(Hilbert, ChecksInOrder) {
    for (const Kind& kind : kKinds) {
        void *const mark = &std::cout, *none = mark;
        EXPECT_EQ(kind.initAlloc(nullptr, 0, 0), StatusNullPtr);
        for (int length : {0, -1, INT_MIN}) EXPECT_EQ(kind.initAlloc(&none, length, 0), StatusBadSize);
        EXPECT_EQ(none, mark);
        // A length that there is no memory for leaves a record without transforms.
        EXPECT_EQ(kind.initAlloc(&none, INT_MAX, 0), StatusNoMemory);
        ASSERT_TRUE(none && none != mark);
        EXPECT_EQ(std::memcmp(none, &kind.identifier, 4), 0);
        EXPECT_EQ(kind.free(none), StatusNullPtr);
        tevsFree(none);
        const Spec spec(kind, 6);
        const Vector x = randomVector(kind.from, 6);
        Vector y(kind.to, 6);
        alignas(16) uint32_t stranger[64] = {kind.identifier ^ 1, 6};
        EXPECT_EQ(kind.free(nullptr), StatusNullPtr);
        EXPECT_EQ(kind.free(stranger), StatusContextMismatch);
        EXPECT_EQ(kind.transform(nullptr, y, stranger, {0}), StatusNullPtr);
        EXPECT_EQ(kind.transform(x, nullptr, stranger, {0}), StatusNullPtr);
        EXPECT_EQ(kind.transform(x, y, nullptr, {0}), StatusNullPtr);
        EXPECT_EQ(kind.transform(x, y, stranger, {0}), StatusContextMismatch);
        EXPECT_TRUE(same(y, Vector(kind.to, 6)));
    }
}

TEST(Hilbert, RecordsWithoutTransformsAreRefused) {
    for (const Kind& kind : kKinds) {
        void* spec = nullptr;
        EXPECT_EQ(kind.initAlloc(&spec, INT_MAX, 0), StatusNoMemory);
        const Vector x = randomVector(kind.from, 6);
        Vector y(kind.to, 6);
        EXPECT_EQ(kind.transform(x, y, spec, {0}), StatusNullPtr);
        EXPECT_TRUE(same(y, Vector(kind.to, 6)));
        tevsFree(spec);
    }
}

}   // namespace
