#include <algorithm>
#include <thread>

#include "support/records.h"

using namespace test;

namespace {

TEST(Oracle, EqualsTheDefinition) {
    for (size_t n : {1, 2, 4, 16, 64})
        for (int sign : {-1, 1}) {
            Values x(n);
            for (Value& v : x) v = {randomValue<float>(), randomValue<float>()};
            const Values want = slowDft(x, sign), got = oracle(x, sign);
            for (size_t k = 0; k < n; ++k) EXPECT_LT(std::abs(want[k] - got[k]), 1e-16L * n) << n << " " << k;
        }
}

// Error norm over signal norm. The stages' rounding errors are independent and add up in squares; 0.6 of the type's unit * sqrt(order) is measured, at all
// levels and orders. One wrong value of the 2^22 is an error of 2^-11.
struct Error {
    long double difference = 0, norm = 0;
    void add(Value want, Value got) {
        difference += std::norm(want - got);
        norm += std::norm(want);
    }
    double relative() const { return double(std::sqrt(difference / norm)); }
};
template <class T> constexpr double kUnit = std::numeric_limits<T>::epsilon() / 2;
template <class T> double bound(int order) { return 0.85 * kUnit<T> * std::sqrt(order + 1.0); }

// What a direction multiplies its result by.
template <class T> double factor(int flag, bool forward, int order) {
    if (flag == ScaleBySqrtN) return T(1 / std::sqrt(std::ldexp(1.0, order)));
    return flag == (forward ? ScaleFwdByN : ScaleInvByN) ? std::ldexp(1.0, -order) : 1;
}

template <class T> struct Library;
#define TEVS_LIBRARY(T, c, f, id)                                                                                                          \
    template <> struct Library<T> {                                                                                                        \
        static constexpr Kind kPairs = TEVS_KIND(C_##c, id, 4), kParts = TEVS_KIND(C_##f, id + 1, 4), kReal = TEVS_KIND(R_##f, id + 2, 4); \
        static inline const Form<T, T> kPairsForms[] = TEVS_COMPLEX_FORMS(kPairs, c, , _I, Pairs);                                         \
        static inline const Form<T, T> kPartsForms[] = TEVS_COMPLEX_FORMS(kParts, f, , _I, Parts);                                         \
        static inline const Form<T, T> kRealForms[] = TEVS_REAL_FORMS(kReal, f, , _I);                                                     \
        static Status forwardParts(const T* re, const T* im, T* toRe, T* toIm, const Record& spec) {                                       \
            return tevsFFTFwd_CToC_##f(re, im, toRe, toIm, static_cast<const FFTSpec_C_##f*>(spec.get()), nullptr);                        \
        }                                                                                                                                  \
    };
TEVS_LIBRARY(float, 32fc, 32f, 4)
TEVS_LIBRARY(double, 64fc, 64f, 7)

// Calls check(form) for every transform of a precision.
template <class T, class Check> void eachForm(const Check& check) {
    using L = Library<T>;
    for (const auto& form : L::kPairsForms) check(form);
    for (const auto& form : L::kPartsForms) check(form);
    for (const auto& form : L::kRealForms) check(form);
}

template <class T> class Fft : public testing::Test {};
using Precisions = testing::Types<float, double>;
TYPED_TEST_SUITE(Fft, Precisions);

// ---- results ----------------------------------------------------------------------------------------------------------------------

// Short transforms meet several signals: over a few values, the error's norm scatters.
template <class T> void expectOracle(const Form<T, T>& form, int order, std::span<const int> flags) {
    std::vector<Error> errors(flags.size());
    const size_t n = samples(order);
    for (int round = 0; round < std::max(1, 512 >> order); ++round) {
        const auto src = form.source(order);
        const Values want = oracle(unpacked(form.from, src, n), form.forward() ? -1 : 1);
        for (size_t i = 0; i < flags.size(); ++i) {
            const Values got = unpacked(form.to, run(form, src, record(form.kind, order, flags[i]).get(), order), n);
            const long double f = factor<T>(flags[i], form.forward(), order);
            for (size_t k = 0; k < n; ++k) errors[i].add(f * want[k], got[k]);
        }
    }
    for (size_t i = 0; i < flags.size(); ++i) EXPECT_LE(errors[i].relative(), bound<T>(order)) << form.name << " order " << order << " flag " << flags[i];
}

TYPED_TEST(Fft, EqualsOracle) {
    constexpr bool kWide = sizeof(TypeParam) == 8;
    for (int order = 0; order <= 22; order += order < 18 ? 1 : 2)
        eachForm<TypeParam>([&](const auto& form) {
            const bool real = form.from == Reals || form.to == Reals;
            if (order >= (real ? 18 : 20) && form.forward() != (order == 20)) return;
            if (order > 20 && (kWide || real)) return;
            expectOracle<TypeParam>(form, order, std::span(kFlags).first(order <= 12 ? 4 : order == 16 ? 2 : 1));
        });
}

// What an impulse of 1 becomes.
template <class T> Values impulseResponse(const Record& spec, int order, size_t at) {
    std::vector<T> x(scalars(Pairs, order));
    x[2 * at] = 1;
    return unpacked(Pairs, run(Library<T>::kPairsForms[0], x, spec.get(), order), samples(order));
}

// The norm hides one poor factor among many. What an impulse becomes is a product of factors, alone: roots of unity to a few roundings, and exact where
// there is no factor but i.
TYPED_TEST(Fft, ImpulsesGiveRoots) {
    // Units, by order; measured, and a little. sqrt(1/2) is off by 0.14 units in single, by 0.44 in double precision.
    constexpr double kSingle[] = {0, 0, 0, 0.3, 0.55, 0.9, 1.65, 2.2, 2.9, 3.9}, kDouble[] = {0, 0, 0, 0.65, 0.9, 1.2, 1.65, 2.9, 3.5, 5.2};
    const auto& kWorst = sizeof(TypeParam) == 4 ? kSingle : kDouble;
    for (int order = 0; order <= 9; ++order) {
        const size_t n = samples(order);
        const auto spec = record(Library<TypeParam>::kPairs, order, NoScale);
        double worst = 0;
        for (size_t at = 0; at < n; ++at) {
            const Values y = impulseResponse<TypeParam>(spec, order, at);
            for (size_t k = 0; k < n; ++k) worst = std::max(worst, double(std::abs(y[k] - std::conj(root(at * k % n, n)))));
        }
        EXPECT_LE(worst, kWorst[order] * kUnit<TypeParam> + 1e-18) << order;
    }
}

// Bins below the first radix see an early impulse through one factor, and are it: rounded once. The extended reference is 2^-11 of a unit off at most.
TYPED_TEST(Fft, FactorsAreCorrectlyRounded) {
    using T = TypeParam;
    const auto offBy = [](long double got, long double want) {
        const T nearest = std::abs(T(want));
        return double(std::abs(got - want) / (std::nextafter(nearest, T(2)) - nearest));
    };
    for (int order : {4, 5, 7, 9, 12, 13}) {
        const size_t n = samples(order);
        const auto spec = record(Library<T>::kPairs, order, NoScale);
        for (size_t at = 1; at < n / 16; at += 1 + n / 16 / 97) {
            const Values y = impulseResponse<T>(spec, order, at);
            for (size_t k = 1; k < 4; ++k) {
                const Value want = std::conj(root(at * k, n));
                ASSERT_LE(std::max(offBy(y[k].real(), want.real()), offBy(y[k].imag(), want.imag())), 0.5 + 0x1p-9) << order << " " << at << " " << k;
            }
        }
    }
}

// One value of the definition's sum: Horner's rule over blocks, and over their sums.
template <class T> Value bin(const std::vector<T>& x, size_t k) {
    constexpr size_t kBlock = 4096;
    const auto step = [](Value sum, Value w, Value next) {
        return Value{sum.real() * w.real() - sum.imag() * w.imag() + next.real(), sum.real() * w.imag() + sum.imag() * w.real() + next.imag()};
    };
    const size_t n = x.size() / 2;
    const Value w = std::conj(root(k, n)), between = std::conj(root(k * kBlock % n, n));
    Value sum = 0;
    for (size_t first = n; first > 0;) {
        first -= kBlock;
        Value block = 0;
        for (size_t i = first + kBlock; i-- > first;) block = step(block, w, {x[2 * i], x[2 * i + 1]});
        sum = step(sum, between, block);
    }
    return sum;
}

// Where a whole oracle would take too long: a few values by the definition, and the way back. Both forms, the one with a buffer of the reported size.
TYPED_TEST(Fft, LongTransforms) {
    using T = TypeParam;
    using L = Library<T>;
    // The longest in double precision takes 1.2 GiB.
    const std::vector<int> orders = sizeof(T) == 4 ? std::vector{19, 21, 23, 24} : sizeof(void*) == 4 ? std::vector{19, 22} : std::vector{19, 21, 22, 24};
    for (int order : orders) {
        const size_t n = samples(order);
        const auto spec = record(L::kPairs, order, ScaleBySqrtN);
        const auto x = randomVector<T>(2 * n);
        auto y = x;
        Guarded<uint8_t> buffer(bufferSize(L::kPairs, spec.get()), {5, true});
        ASSERT_EQ(L::kPairsForms[0].inPlace(nullptr, y.data(), spec.get(), 0, buffer, order), StatusOk);
        ASSERT_TRUE(buffer.intact());
        const double f = factor<T>(ScaleBySqrtN, true, order);
        for (size_t k : {size_t{1}, n / 3, n - 7})   // a value's error is that of the norm per value, scattered
            EXPECT_LE(double(std::abs(bin(x, k) * (long double)(f)-Value(y[2 * k], y[2 * k + 1]))), 4 * bound<T>(order)) << order << " " << k;
        ASSERT_EQ(L::kPairsForms[1].inPlace(nullptr, y.data(), spec.get(), 0, nullptr, order), StatusOk);
        Error error;
        for (size_t i = 0; i < 2 * n; ++i) error.add(x[i], y[i]);
        EXPECT_LE(error.relative(), std::numbers::sqrt2 * bound<T>(order)) << order;
    }
}

TYPED_TEST(Fft, CcsHasZerosAndNeedsNone) {
    using L = Library<TypeParam>;
    for (int order : {0, 1, 3, 4, 10, 17}) {
        const auto spec = record(L::kReal, order, NoScale);
        auto x = run(L::kRealForms[0], randomVector<TypeParam>(samples(order)), spec.get(), order);
        EXPECT_EQ(x[1], 0);
        EXPECT_EQ(x[x.size() - 1], 0);
        const auto want = run(L::kRealForms[3], x, spec.get(), order);
        x[1] = x[x.size() - 1] = NAN;
        EXPECT_TRUE(same(want, run(L::kRealForms[3], x, spec.get(), order))) << order;
    }
}

// Any array of a source may be any of the destination.
TYPED_TEST(Fft, ArraysMayBeShared) {
    using T = TypeParam;
    using L = Library<T>;
    for (int order : {0, 2, 3, 5, 8, 13, 14, 17}) {
        const size_t n = samples(order);
        const auto spec = record(L::kParts, order, NoScale);
        const auto re = randomVector<T>(n), im = randomVector<T>(n);
        auto both = re;
        both.insert(both.end(), im.begin(), im.end());
        const auto want = run(L::kPartsForms[0], both, spec.get(), order);
        // Three arrays; which of them are source re, im and destination re, im.
        constexpr int kSharings[][4] = {{0, 1, 0, 1}, {0, 1, 1, 0}, {0, 1, 0, 2}, {0, 1, 2, 1}, {0, 1, 2, 0}, {0, 1, 1, 2}};
        for (const auto& at : kSharings) {
            std::vector<T> arrays[3] = {re, im, std::vector<T>(n)};
            const auto p = [&](int i) { return arrays[at[i]].data(); };
            ASSERT_EQ(L::forwardParts(p(0), p(1), p(2), p(3), spec), StatusOk);
            EXPECT_TRUE(std::equal(want.begin(), want.begin() + ptrdiff_t(n), p(2)) && std::equal(want.begin() + ptrdiff_t(n), want.end(), p(3)))
                << "order " << order << " sharing " << at[0] << at[1] << at[2] << at[3];
        }
    }
}

// ---- where things lie, and records --------------------------------------------------------------------------------------------------

TYPED_TEST(Fft, GivesTheSameBitsWhereverThingsLie) {
    for (int order = 0; order <= 18; ++order) eachForm<TypeParam>([=](const auto& form) { expectSameEverywhere(form, order, 0); });
}

TYPED_TEST(Fft, IgnoresAndKeepsTheCallersRounding) {
    for (int order : {0, 1, 2, 3, 5, 7, 10, 17}) eachForm<TypeParam>([=](const auto& form) { expectOwnRounding(form, order); });
}

// Four threads with buffers of their own and four without.
template <class T> void expectShareable(const Form<T, T>& form, int order) {
    const auto spec = record(form.kind, order, NoScale);
    const auto src = form.source(order);
    const auto want = run(form, src, spec.get(), order);
    const size_t size = bufferSize(form.kind, spec.get());
    std::vector<std::vector<T>> got(8, std::vector<T>(want.size()));
    {
        std::vector<std::jthread> threads;
        for (size_t i = 0; i < got.size(); ++i)
            threads.emplace_back([&, i] {
                std::vector<uint8_t> buffer(size);
                for (int round = 0; round < 10; ++round) form.call(src.data(), got[i].data(), spec.get(), 0, i % 2 ? buffer.data() : nullptr, order);
            });
    }
    for (const auto& g : got) EXPECT_TRUE(same(want, g)) << form.name << " order " << order;
}
TYPED_TEST(Fft, OneRecordServesManyThreads) {
    for (int order : {5, 10, 17})
        eachForm<TypeParam>([=](const auto& form) {
            if (form.forward()) expectShareable(form, order);
        });
}

constexpr Sizes kComplex32[] = {0,  96,   0,    0,    1,  96,     0,     0,      3,  96,     0,     0,     4,  272,     48,      144,
                                10, 9344, 1056, 8208, 15, 295040, 32800, 262160, 16, 622720, 65568, 32784, 20, 9568384, 1048608, 131088};
constexpr Sizes kReal32[] = {0,  96,   0,    0,    1,  96,     0,     0,      3,  96,     0,     0,      4,  160,     48,      0,
                             10, 8832, 1056, 4112, 15, 278656, 32800, 131088, 16, 557184, 65568, 262160, 20, 9044096, 1048608, 131088};

constexpr Sizes kComplex64[] = {3,  100,    0,     0,     4,  416,    64,    272,   10, 17552,   2080,   16400, 13, 139408,   16416,   131088,
                                14, 311440, 32800, 32784, 15, 589968, 65568, 32784, 16, 1179792, 131104, 65552, 20, 17957008, 2097184, 131088};
constexpr Sizes kReal64[] = {0,    100,  0,  0,      3,     100,   0,  0,       4,      228,   64, 0,        10,      17028,
                             2080, 8208, 15, 573572, 65568, 32784, 16, 1114244, 131104, 32784, 20, 17432708, 2097184, 131088};

TYPED_TEST(Fft, RecordSizes) {
    using L = Library<TypeParam>;
    constexpr bool kSingle = sizeof(TypeParam) == 4;
    for (const Kind* kind : {&L::kPairs, &L::kParts, &L::kReal}) {
        const bool real = kind == &L::kReal;
        const std::span<const Sizes> single = real ? std::span<const Sizes>(kReal32) : kComplex32, wide = real ? std::span<const Sizes>(kReal64) : kComplex64;
        expectSizes(*kind, 99, kSingle ? single : wide, kSingle ? 28 : 27, [](int) { return 0; });
    }
}

TYPED_TEST(Fft, RecordLiesAnywhere) {
    using L = Library<TypeParam>;
    for (int order = 0; order <= 18; ++order)
        for (const auto* form : {&L::kPairsForms[0], &L::kPartsForms[0], &L::kRealForms[0]}) expectInitAnywhere(*form, order, HintFast, order < 12 ? 1 : 7);
}

TYPED_TEST(Fft, ChecksInOrder) {
    using T = TypeParam;
    const Kind* const all[] = {&Library<T>::kPairs, &Library<T>::kParts, &Library<T>::kReal};
    for (const Kind* kind : all) expectChecks(*kind, all);
    eachForm<T>([](const auto& form) { expectCallChecks(form); });
    const auto spec = record(Library<T>::kParts, 5, NoScale);
    std::vector<T> a(32), b(32);
    for (int missing = 0; missing < 4; ++missing) {
        const auto p = [&](int i, std::vector<T>& v) { return i == missing ? nullptr : v.data(); };
        EXPECT_EQ(Library<T>::forwardParts(p(0, a), p(1, a), p(2, b), p(3, b), spec), StatusNullPtr) << missing;
    }
    EXPECT_TRUE(std::all_of(b.begin(), b.end(), [](T x) { return x == 0; }));
}

}   // namespace
