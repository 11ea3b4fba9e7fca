#include <algorithm>
#include <climits>
#include <cmath>
#include <complex>
#include <memory>
#include <numbers>
#include <thread>

#include "support/data.h"
#include "support/dft.h"
#include "support/guarded.h"
#include "tevcore.h"

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

// ---- records and calls ----------------------------------------------------------------------------------------------------------

template <class S> struct Kind {
    uint32_t identifier;   // the first word of a record
    Status (*getSize)(int, int, int, int*, int*, int*);
    Status (*init)(S**, int, int, int, uint8_t*, uint8_t*);
    Status (*initAlloc)(S**, int, int, int);
    Status (*free)(S*);
    Status (*getBufSize)(const S*, int*);
};
template <class S> auto record(const Kind<S>& kind, int order, int flag) {
    S* spec = nullptr;
    EXPECT_EQ(kind.initAlloc(&spec, order, flag, HintNone), StatusOk);
    return std::unique_ptr<S, Status (*)(S*)>(spec, kind.free);
}
template <class S> int bufferSize(const Kind<S>& kind, const S* spec) {
    int size = -1;
    EXPECT_EQ(kind.getBufSize(spec, &size), StatusOk);
    return size;
}

constexpr int kFlags[] = {ScaleFwdByN, ScaleInvByN, ScaleBySqrtN, NoScale};

// What a direction multiplies its result by.
template <class T> double factor(int flag, bool forward, int order) {
    if (flag == ScaleBySqrtN) return T(1 / std::sqrt(std::ldexp(1.0, order)));
    return flag == (forward ? ScaleFwdByN : ScaleInvByN) ? std::ldexp(1.0, -order) : 1;
}

template <class T> using ComplexOf = std::conditional_t<sizeof(T) == 4, Complex32f, Complex64f>;

size_t samples(int order) { return size_t{1} << order; }
size_t ccs(int order) { return order == 0 ? 2 : samples(order) + 2; }
size_t parts(int order) { return 2 * samples(order); }

// One transform in both of its forms, over elements S to elements D; `in` and `out` are the elements of 2^order samples. n is samples(order).
template <class S, class D, class Spec> struct Form {
    const char* name;
    bool forward;
    Status (*call)(const S*, D*, const Spec*, uint8_t*, size_t n);
    Status (*inPlace)(S*, const Spec*, uint8_t*, size_t n);
    size_t (*in)(int order);
    size_t (*out)(int order);
};

// The calls in one shape. Two arrays are the halves of one here.
template <auto F, class S, class D, class Spec> Status whole(const S* src, D* dst, const Spec* spec, uint8_t* buffer, size_t) {
    return F(src, dst, spec, buffer);
}
template <auto F, class S, class Spec> Status whole(S* data, const Spec* spec, uint8_t* buffer, size_t) { return F(data, spec, buffer); }
template <class S> S* half(S* p, size_t n) { return p ? p + n : nullptr; }
template <auto F, class S, class Spec> Status halves(const S* src, S* dst, const Spec* spec, uint8_t* buffer, size_t n) {
    return F(src, half(src, n), dst, half(dst, n), spec, buffer);
}
template <auto F, class S, class Spec> Status halves(S* data, const Spec* spec, uint8_t* buffer, size_t n) { return F(data, half(data, n), spec, buffer); }

template <class T> struct Library;
#define TEVS_KIND(k, id) \
    { id, tevsFFTGetSize_##k, tevsFFTInit_##k, tevsFFTInitAlloc_##k, tevsFFTFree_##k, tevsFFTGetBufSize_##k }
#define TEVS_FORM(name, forward, shape, in, out) \
    { #name, forward, shape < tevsFFT##name>, shape < tevsFFT##name##_I>, in, out }
#define TEVS_LIBRARY(T, Complex, c, f, id)                                                                                                \
    template <> struct Library<T> {                                                                                                       \
        static constexpr Kind<FFTSpec_C_##c> kPairs = TEVS_KIND(C_##c, id);                                                               \
        static constexpr Kind<FFTSpec_C_##f> kParts = TEVS_KIND(C_##f, id + 1);                                                           \
        static constexpr Kind<FFTSpec_R_##f> kReal = TEVS_KIND(R_##f, id + 2);                                                            \
        static constexpr Form<Complex, Complex, FFTSpec_C_##c> kPairsForms[] = {TEVS_FORM(Fwd_CToC_##c, true, whole, samples, samples),   \
                                                                                TEVS_FORM(Inv_CToC_##c, false, whole, samples, samples)}; \
        static constexpr Form<T, T, FFTSpec_C_##f> kPartsForms[] = {TEVS_FORM(Fwd_CToC_##f, true, halves, parts, parts),                  \
                                                                    TEVS_FORM(Inv_CToC_##f, false, halves, parts, parts)};                \
        static constexpr Form<T, T, FFTSpec_R_##f> kRealForms[] = {                                                                       \
            TEVS_FORM(Fwd_RToCCS_##f, true, whole, samples, ccs),       TEVS_FORM(Fwd_RToPack_##f, true, whole, samples, samples),        \
            TEVS_FORM(Fwd_RToPerm_##f, true, whole, samples, samples),  TEVS_FORM(Inv_CCSToR_##f, false, whole, ccs, samples),            \
            TEVS_FORM(Inv_PackToR_##f, false, whole, samples, samples), TEVS_FORM(Inv_PermToR_##f, false, whole, samples, samples)};      \
    };
TEVS_LIBRARY(float, Complex32f, 32fc, 32f, 4)
TEVS_LIBRARY(double, Complex64f, 64fc, 64f, 7)

// Calls check(form, kind) for every transform of a precision.
template <class T, class Check> void eachForm(const Check& check) {
    using L = Library<T>;
    for (const auto& form : L::kPairsForms) check(form, L::kPairs);
    for (const auto& form : L::kPartsForms) check(form, L::kParts);
    for (const auto& form : L::kRealForms) check(form, L::kReal);
}

template <class T> class Fft : public testing::Test {};
template <class T> class FftRecord : public testing::Test {};
using Precisions = testing::Types<float, double>;
TYPED_TEST_SUITE(Fft, Precisions);
TYPED_TEST_SUITE(FftRecord, Precisions);

// Where the layouts keep X[k], 0 <= k <= N/2: the real part's position; the imaginary part follows, but for the ends, which are real.
size_t position(const std::string& form, size_t k, size_t n) {
    if (form.find("CCS") != std::string::npos) return 2 * k;
    if (k == 0) return 0;
    if (form.find("Pack") != std::string::npos) return 2 * k - 1;
    return 2 * k == n ? 1 : 2 * k;
}

// What a form's source or result holds, as complex values.
template <class C, class Spec> Values values(const Form<C, C, Spec>&, const std::vector<C>& v, size_t n, bool) {
    Values x(n);
    for (size_t k = 0; k < n; ++k) x[k] = {v[k].re, v[k].im};
    return x;
}
template <std::floating_point T, class Spec> Values values(const Form<T, T, Spec>& form, const std::vector<T>& v, size_t n, bool spectrum) {
    Values x(n);
    const std::string name = form.name;
    if (name.find("CToC") != std::string::npos) {
        for (size_t k = 0; k < n; ++k) x[k] = {v[k], v[n + k]};
    } else if (!spectrum) {
        for (size_t k = 0; k < n; ++k) x[k] = v[k];
    } else {
        for (size_t k = 0; k <= n / 2; ++k) {
            const size_t at = position(name, k, n);
            x[k] = {v[at], k == 0 || 2 * k == n ? T(0) : v[at + 1]};
            x[(n - k) % n] = std::conj(x[k]);
        }
    }
    return x;
}

template <class S, class D, class Spec> std::vector<D> run(const Form<S, D, Spec>& f, const std::vector<S>& src, const Spec* spec, int order) {
    std::vector<D> dst(f.out(order));
    EXPECT_EQ(f.call(src.data(), dst.data(), spec, nullptr, samples(order)), StatusOk);
    return dst;
}

// ---- results ----------------------------------------------------------------------------------------------------------------------

// Short transforms meet several signals: over a few values, the error's norm scatters.
template <class T, class S, class D, class Spec>
void expectOracle(const Form<S, D, Spec>& form, const Kind<Spec>& kind, int order, std::span<const int> flags) {
    std::vector<Error> errors(flags.size());
    const size_t n = samples(order);
    for (int round = 0; round < std::max(1, 512 >> order); ++round) {
        const auto src = randomVector<S>(form.in(order));
        const Values want = oracle(values(form, src, n, !form.forward), form.forward ? -1 : 1);
        for (size_t i = 0; i < flags.size(); ++i) {
            const auto spec = record(kind, order, flags[i]);
            const Values got = values(form, run(form, src, spec.get(), order), n, form.forward);
            const long double f = factor<T>(flags[i], form.forward, order);
            for (size_t k = 0; k < n; ++k) errors[i].add(f * want[k], got[k]);
        }
    }
    for (size_t i = 0; i < flags.size(); ++i) EXPECT_LE(errors[i].relative(), bound<T>(order)) << form.name << " order " << order << " flag " << flags[i];
}

TYPED_TEST(Fft, EqualsOracle) {
    constexpr bool kWide = sizeof(TypeParam) == 8;
    for (int order = 0; order <= 22; order += order < 18 ? 1 : 2)
        eachForm<TypeParam>([&](const auto& form, const auto& kind) {
            const std::string name = form.name;
            const bool real = name.find("CToC") == std::string::npos;
            if (order >= (real ? 18 : 20) && form.forward != (order == 20)) return;
            if (order > 20 && (kWide || real)) return;
            expectOracle<TypeParam>(form, kind, order, std::span(kFlags).first(order <= 12 ? 4 : order == 16 ? 2 : 1));
        });
}

// The norm hides one poor factor among many. What an impulse becomes is a product of factors, alone: roots of unity to a few roundings, and exact where
// there is no factor but i.
TYPED_TEST(Fft, ImpulsesGiveRoots) {
    using L = Library<TypeParam>;
    // Units, by order; measured, and a little. sqrt(1/2) is off by 0.14 units in single, by 0.44 in double precision.
    constexpr double kSingle[] = {0, 0, 0, 0.3, 0.55, 0.9, 1.65, 2.2, 2.9, 3.5}, kDouble[] = {0, 0, 0, 0.65, 0.65, 1.2, 1.65, 2.9, 3.5, 5.2};
    const auto& kWorst = sizeof(TypeParam) == 4 ? kSingle : kDouble;
    for (int order = 0; order <= 9; ++order) {
        const size_t n = samples(order);
        const auto spec = record(L::kPairs, order, NoScale);
        double worst = 0;
        for (size_t at = 0; at < n; ++at) {
            std::vector<ComplexOf<TypeParam>> x(n);
            x[at] = {1, 0};
            const auto y = run(L::kPairsForms[0], x, spec.get(), order);
            for (size_t k = 0; k < n; ++k) worst = std::max(worst, double(std::abs(Value(y[k].re, y[k].im) - std::conj(root(at * k % n, n)))));
        }
        EXPECT_LE(worst, kWorst[order] * kUnit<TypeParam> + 1e-18) << order;
    }
}

// Bins below the first radix see an early impulse through one factor, and are it: rounded once. The extended reference is 2^-11 of a unit off at most.
TYPED_TEST(Fft, FactorsAreCorrectlyRounded) {
    using T = TypeParam;
    using L = Library<T>;
    const auto offBy = [](T got, long double want) {
        const T ulp = std::nextafter(std::abs(T(want)), T(2)) - std::abs(T(want));
        return double(std::abs(got - want) / ulp);
    };
    for (int order : {4, 5, 7, 9, 12, 13}) {
        const size_t n = samples(order);
        const auto spec = record(L::kPairs, order, NoScale);
        for (size_t at = 1; at < n / 16; at += 1 + n / 16 / 97) {
            std::vector<ComplexOf<T>> x(n);
            x[at] = {1, 0};
            const auto y = run(L::kPairsForms[0], x, spec.get(), order);
            for (size_t k = 1; k < 4; ++k) {
                const Value want = std::conj(root(at * k, n));
                ASSERT_LE(std::max(offBy(y[k].re, want.real()), offBy(y[k].im, want.imag())), 0.5 + 0x1p-9) << order << " " << at << " " << k;
            }
        }
    }
}

// One value of the definition's sum: Horner's rule over blocks, and over their sums.
template <class C> Value bin(const std::vector<C>& x, size_t k) {
    constexpr size_t kBlock = 4096;
    const auto step = [](Value sum, Value w, Value next) {
        return Value{sum.real() * w.real() - sum.imag() * w.imag() + next.real(), sum.real() * w.imag() + sum.imag() * w.real() + next.imag()};
    };
    const Value w = std::conj(root(k, x.size())), between = std::conj(root(k * kBlock % x.size(), x.size()));
    Value sum = 0;
    for (size_t first = x.size(); first > 0;) {
        first -= kBlock;
        Value block = 0;
        for (size_t n = kBlock; n-- > 0;) block = step(block, w, {x[first + n].re, x[first + n].im});
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
        const auto spec = record(L::kPairs, order, ScaleBySqrtN);
        const auto x = randomVector<ComplexOf<T>>(samples(order));
        auto y = x;
        Guarded<uint8_t> buffer(size_t(bufferSize(L::kPairs, spec.get())), {5, true});
        ASSERT_EQ(L::kPairsForms[0].inPlace(y.data(), spec.get(), buffer, 0), StatusOk);
        ASSERT_TRUE(buffer.intact());
        const double f = factor<T>(ScaleBySqrtN, true, order);
        for (size_t k : {size_t{1}, x.size() / 3, x.size() - 7})   // a value's error is that of the norm per value, scattered
            EXPECT_LE(double(std::abs(bin(x, k) * (long double)(f)-Value(y[k].re, y[k].im))), 4 * bound<T>(order)) << order << " " << k;
        ASSERT_EQ(L::kPairsForms[1].inPlace(y.data(), spec.get(), nullptr, 0), StatusOk);
        Error error;
        for (size_t n = 0; n < x.size(); ++n) error.add({x[n].re, x[n].im}, {y[n].re, y[n].im});
        EXPECT_LE(error.relative(), std::numbers::sqrt2 * bound<T>(order)) << order;
    }
}

TYPED_TEST(Fft, CcsHasZerosAndNeedsNone) {
    using L = Library<TypeParam>;
    for (int order : {0, 1, 3, 4, 10, 17}) {
        const size_t n = samples(order);
        const auto spec = record(L::kReal, order, NoScale);
        auto x = run(L::kRealForms[0], randomVector<TypeParam>(n), spec.get(), order);
        EXPECT_EQ(x[1], 0);
        EXPECT_EQ(x[x.size() - 1], 0);
        const auto want = run(L::kRealForms[3], x, spec.get(), order);
        x[1] = x[x.size() - 1] = NAN;
        EXPECT_TRUE(same(want, run(L::kRealForms[3], x, spec.get(), order))) << order;
    }
}

Status forwardParts(const float* a, const float* b, float* c, float* d, const FFTSpec_C_32f* spec) { return tevsFFTFwd_CToC_32f(a, b, c, d, spec, nullptr); }
Status forwardParts(const double* a, const double* b, double* c, double* d, const FFTSpec_C_64f* spec) {
    return tevsFFTFwd_CToC_64f(a, b, c, d, spec, nullptr);
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
            ASSERT_EQ(forwardParts(p(0), p(1), p(2), p(3), spec.get()), StatusOk);
            EXPECT_TRUE(std::equal(want.begin(), want.begin() + ptrdiff_t(n), p(2)) && std::equal(want.begin() + ptrdiff_t(n), want.end(), p(3)))
                << "order " << order << " sharing " << at[0] << at[1] << at[2] << at[3];
        }
    }
}

// ---- where things lie -----------------------------------------------------------------------------------------------------------

// In place or not, at any address, in whose work buffer ever: the same bits, and nothing touched beside the destination.
template <class S, class D, class Spec> void expectSameEverywhere(const Form<S, D, Spec>& form, const Kind<Spec>& kind, int order) {
    const auto spec = record(kind, order, ScaleBySqrtN);
    const auto src = randomVector<S>(form.in(order));
    const auto want = run(form, src, spec.get(), order);
    const size_t work = size_t(bufferSize(kind, spec.get()));
    constexpr int e = int(sizeof(S));
    for (Place at : {Place{0, false}, Place{e, false}, Place{2 * e, false}, Place{3 * e, false}, Place{0, true}, Place{1, true}}) {
        const Guarded<S> in(src, at);
        Guarded<D> out(want.size(), at);
        Guarded<uint8_t> buffer(work, {at.offset / e * 5 + at.offset % e, at.atEnd});
        ASSERT_EQ(form.call(in.data(), out, spec.get(), buffer, samples(order)), StatusOk);
        ASSERT_TRUE(same(want, out.values())) << form.name << " order " << order << " offset " << at.offset;
        ASSERT_TRUE(same(src, in.values())) << form.name << " order " << order;
        ASSERT_TRUE(out.intact() && in.intact() && buffer.intact()) << form.name << " order " << order;

        Guarded<S> both(std::max(src.size(), want.size()), at);
        both.assign(src);
        ASSERT_EQ(form.inPlace(both, spec.get(), at.atEnd ? nullptr : buffer.data(), samples(order)), StatusOk);
        auto got = both.values();
        got.resize(want.size());
        ASSERT_TRUE(same(want, got)) << form.name << " in place, order " << order << " offset " << at.offset;
        ASSERT_TRUE(both.intact() && buffer.intact()) << form.name << " order " << order;
    }
}

TYPED_TEST(Fft, GivesTheSameBitsWhereverThingsLie) {
    for (int order = 0; order <= 18; ++order) eachForm<TypeParam>([=](const auto& form, const auto& kind) { expectSameEverywhere(form, kind, order); });
}

template <class S, class D, class Spec> void expectOwnRounding(const Form<S, D, Spec>& form, const Kind<Spec>& kind) {
    for (int order : {0, 1, 2, 3, 5, 7, 10, 17}) {
        const auto src = randomVector<S>(form.in(order));
        const auto want = run(form, src, record(kind, order, ScaleBySqrtN).get(), order);
        const uint32_t before = tev_set_rc_ssx(3);
        const auto got = run(form, src, record(kind, order, ScaleBySqrtN).get(), order);
        const uint32_t after = tev_set_cw_ssx(before);
        EXPECT_TRUE(same(want, got)) << form.name << " " << order;
        EXPECT_EQ((after >> 13) & 3, 3u);
    }
}
TYPED_TEST(Fft, IgnoresAndKeepsTheCallersRounding) {
    eachForm<TypeParam>([](const auto& form, const auto& kind) { expectOwnRounding(form, kind); });
}

// Four threads with buffers of their own and four without.
template <class S, class D, class Spec> void expectShareable(const Form<S, D, Spec>& form, const Kind<Spec>& kind, int order) {
    const auto spec = record(kind, order, NoScale);
    const auto src = randomVector<S>(form.in(order));
    const auto want = run(form, src, spec.get(), order);
    const size_t size = size_t(bufferSize(kind, spec.get()));
    std::vector<std::vector<D>> got(8, std::vector<D>(want.size()));
    {
        std::vector<std::jthread> threads;
        for (size_t i = 0; i < got.size(); ++i)
            threads.emplace_back([&, i] {
                std::vector<uint8_t> buffer(size);
                for (int round = 0; round < 10; ++round) form.call(src.data(), got[i].data(), spec.get(), i % 2 ? buffer.data() : nullptr, samples(order));
            });
    }
    for (const auto& g : got) EXPECT_TRUE(same(want, g)) << form.name << " order " << order;
}
TYPED_TEST(Fft, OneRecordServesManyThreads) {
    for (int order : {5, 10, 17})
        eachForm<TypeParam>([=](const auto& form, const auto& kind) {
            if (form.forward) expectShareable(form, kind, order);
        });
}

// ---- records -----------------------------------------------------------------------------------------------------------------------

struct Sizes {
    int order, spec, init, work;
};
constexpr Sizes kComplex32[] = {{0, 96, 0, 0},
                                {1, 96, 0, 0},
                                {3, 96, 0, 0},
                                {4, 272, 48, 144},
                                {10, 9344, 1056, 8208},
                                {15, 295040, 32800, 262160},
                                {16, 622720, 65568, 32784},
                                {20, 9568384, 1048608, 131088}};
constexpr Sizes kReal32[] = {{0, 96, 0, 0},
                             {1, 96, 0, 0},
                             {3, 96, 0, 0},
                             {4, 160, 48, 0},
                             {10, 8832, 1056, 4112},
                             {15, 278656, 32800, 131088},
                             {16, 557184, 65568, 262160},
                             {20, 9044096, 1048608, 131088}};

constexpr Sizes kComplex64[] = {{0, 100, 0, 0},
                                {3, 100, 0, 0},
                                {4, 416, 64, 272},
                                {10, 17552, 2080, 16400},
                                {13, 139408, 16416, 131088},
                                {14, 311440, 32800, 32784},
                                {15, 589968, 65568, 32784},
                                {16, 1179792, 131104, 65552},
                                {20, 17957008, 2097184, 131088}};
constexpr Sizes kReal64[] = {{0, 100, 0, 0},
                             {3, 100, 0, 0},
                             {4, 228, 64, 0},
                             {10, 17028, 2080, 8208},
                             {15, 573572, 65568, 32784},
                             {16, 1114244, 131104, 32784},
                             {20, 17432708, 2097184, 131088}};

template <class S> void expectSizes(const Kind<S>& kind, std::span<const Sizes> rows, int firstTooLarge) {
    for (const Sizes& r : rows) {
        int spec = 0, init = 0, work = 0;
        ASSERT_EQ(kind.getSize(r.order, -7, 99, &spec, &init, &work), StatusOk);
        EXPECT_EQ(spec, r.spec) << r.order;
        EXPECT_EQ(init, r.init) << r.order;
        EXPECT_EQ(work, r.work) << r.order;
        EXPECT_EQ(bufferSize(kind, record(kind, r.order, NoScale).get()), r.work) << r.order;
    }
    for (int order = firstTooLarge - 1; order <= 30; ++order) {
        int spec = 0, init = 0, work = 0;
        ASSERT_EQ(kind.getSize(order, NoScale, HintNone, &spec, &init, &work), StatusOk);
        EXPECT_EQ(spec == INT_MAX, order >= firstTooLarge) << order;
        EXPECT_GT(init, 0);
        EXPECT_GT(work, 0);
    }
}
TYPED_TEST(FftRecord, Sizes) {
    using L = Library<TypeParam>;
    constexpr bool kSingle = sizeof(TypeParam) == 4;
    expectSizes(L::kPairs, kSingle ? std::span<const Sizes>(kComplex32) : kComplex64, kSingle ? 28 : 27);
    expectSizes(L::kParts, kSingle ? std::span<const Sizes>(kComplex32) : kComplex64, kSingle ? 28 : 27);
    expectSizes(L::kReal, kSingle ? std::span<const Sizes>(kReal32) : kReal64, kSingle ? 28 : 27);
}

// A record in a block of exactly the reported size, at any address, works as one of the library's own does; building it keeps to its two blocks.
template <class S, class D, class Spec> void expectInitAnywhere(const Form<S, D, Spec>& form, const Kind<Spec>& kind, int order) {
    int specSize, initSize, workSize;
    ASSERT_EQ(kind.getSize(order, NoScale, HintNone, &specSize, &initSize, &workSize), StatusOk);
    const auto src = randomVector<S>(form.in(order));
    const auto want = run(form, src, record(kind, order, ScaleFwdByN).get(), order);
    for (int offset = 0; offset < 16; offset += order < 12 ? 1 : 7)
        for (bool atEnd : {false, true}) {
            Guarded<uint8_t> memory(size_t(specSize), {offset, atEnd}), scratch(size_t(initSize), {offset, atEnd});
            Spec* spec = nullptr;
            ASSERT_EQ(kind.init(&spec, order, ScaleFwdByN, HintFast, memory, initSize ? scratch.data() : nullptr), StatusOk);
            ASSERT_EQ(reinterpret_cast<uintptr_t>(spec), (reinterpret_cast<uintptr_t>(memory.data()) + 15) / 16 * 16);
            const auto before = memory.values();
            const auto identifier = [&] {
                uint32_t word;
                std::memcpy(&word, spec, sizeof word);
                return word;
            };
            ASSERT_EQ(identifier(), kind.identifier);
            ASSERT_TRUE(same(want, run(form, src, spec, order))) << form.name << " order " << order << " offset " << offset;
            ASSERT_TRUE(same(before, memory.values())) << "a call changed the record";
            ASSERT_EQ(kind.free(spec), StatusOk);
            ASSERT_EQ(kind.free(spec), StatusContextMismatch);
            ASSERT_EQ(identifier(), 0u);
            ASSERT_TRUE(memory.intact() && scratch.intact()) << order << " offset " << offset;
        }
}
TYPED_TEST(FftRecord, LiesAnywhere) {
    using L = Library<TypeParam>;
    for (int order = 0; order <= 18; ++order) {
        expectInitAnywhere(L::kPairsForms[0], L::kPairs, order);
        expectInitAnywhere(L::kPartsForms[0], L::kParts, order);
        expectInitAnywhere(L::kRealForms[0], L::kReal, order);
    }
}

// `stranger` is a record of another kind.
template <class S> void expectChecks(const Kind<S>& kind, void* other) {
    S* const stranger = static_cast<S*>(other);
    int a = 7, b = 7, c = 7;
    for (int order : {-1, 31, INT_MIN, INT_MAX}) EXPECT_EQ(kind.getSize(order, 0, 0, nullptr, nullptr, nullptr), StatusFftOrder);
    EXPECT_EQ(kind.getSize(5, 0, 0, nullptr, &b, &c), StatusNullPtr);
    EXPECT_EQ(kind.getSize(5, 0, 0, &a, nullptr, &c), StatusNullPtr);
    EXPECT_EQ(kind.getSize(5, 0, 0, &a, &b, nullptr), StatusNullPtr);
    EXPECT_TRUE(a == 7 && b == 7 && c == 7);

    alignas(16) uint8_t block[100], scratch[1];
    S *const mark = reinterpret_cast<S*>(0x40), *spec = mark;
    struct Row {
        bool ppSpec;
        int order, flag;
        bool memory, init;
        Status want;
    };
    constexpr Row kRows[] = {
        {false, -1, 3, false, false, StatusNullPtr}, {true, -1, 3, false, false, StatusFftOrder}, {true, 31, 3, false, false, StatusFftOrder},
        {true, 28, 3, false, false, StatusFftOrder}, {true, 4, 3, false, false, StatusNullPtr},   {true, 4, 3, true, false, StatusFftFlag},
        {true, 4, 0, true, true, StatusFftFlag},     {true, 3, 16, true, true, StatusFftFlag},    {true, 4, NoScale, true, false, StatusNullPtr},
    };
    for (const Row& r : kRows) {
        std::memcpy(block, &kind.identifier, sizeof kind.identifier);   // a failure must end what looks like a record
        EXPECT_EQ(kind.init(r.ppSpec ? &spec : nullptr, r.order, r.flag, HintNone, r.memory ? block : nullptr, r.init ? scratch : nullptr), r.want)
            << r.order << " " << r.flag;
        EXPECT_EQ(spec, mark);
        if (r.memory) {
            EXPECT_EQ(kind.getBufSize(reinterpret_cast<S*>(block), &a), StatusContextMismatch);
        }
    }
    EXPECT_EQ(kind.initAlloc(nullptr, 31, 3, HintNone), StatusNullPtr);
    EXPECT_EQ(kind.initAlloc(&spec, 31, 3, HintNone), StatusFftOrder);
    EXPECT_EQ(kind.initAlloc(&spec, 5, 3, HintNone), StatusFftFlag);
    EXPECT_EQ(kind.initAlloc(&spec, 30, NoScale, HintNone), StatusNoMemory);
    EXPECT_EQ(spec, mark);

    EXPECT_EQ(kind.free(nullptr), StatusNullPtr);
    EXPECT_EQ(kind.getBufSize(nullptr, &a), StatusNullPtr);
    std::memset(block, 0, sizeof block);
    EXPECT_EQ(kind.getBufSize(reinterpret_cast<S*>(block), nullptr), StatusNullPtr);
    EXPECT_EQ(kind.free(reinterpret_cast<S*>(block)), StatusContextMismatch);
    EXPECT_EQ(kind.getBufSize(stranger, &a), StatusContextMismatch);
    EXPECT_EQ(kind.free(stranger), StatusContextMismatch);
    EXPECT_EQ(a, 7);
}
TYPED_TEST(FftRecord, ChecksInOrder) {
    using L = Library<TypeParam>;
    const auto pairs = record(L::kPairs, 5, NoScale);
    const auto parts = record(L::kParts, 5, NoScale);
    const auto real = record(L::kReal, 5, NoScale);
    expectChecks(L::kPairs, real.get());
    expectChecks(L::kParts, pairs.get());
    expectChecks(L::kReal, parts.get());
    EXPECT_GT(bufferSize(L::kPairs, pairs.get()), 0);
    EXPECT_GT(bufferSize(L::kParts, parts.get()), 0);
    EXPECT_GT(bufferSize(L::kReal, real.get()), 0);
}

template <class S, class D, class Spec> void expectCallChecks(const Form<S, D, Spec>& form, const Kind<Spec>& kind) {
    constexpr int order = 5;
    const size_t n = samples(order);
    const auto spec = record(kind, order, NoScale);
    alignas(16) uint8_t zeros[128] = {};
    const auto* const stranger = reinterpret_cast<const Spec*>(zeros);
    const auto src = randomVector<S>(form.in(order));
    Guarded<D> dst(form.out(order));
    EXPECT_EQ(form.call(nullptr, nullptr, nullptr, nullptr, n), StatusNullPtr);
    EXPECT_EQ(form.call(nullptr, nullptr, stranger, nullptr, n), StatusContextMismatch);
    EXPECT_EQ(form.call(nullptr, dst, spec.get(), nullptr, n), StatusNullPtr);
    EXPECT_EQ(form.call(src.data(), nullptr, spec.get(), nullptr, n), StatusNullPtr);
    EXPECT_EQ(form.call(src.data(), dst, nullptr, nullptr, n), StatusNullPtr);
    EXPECT_EQ(form.call(src.data(), dst, stranger, nullptr, n), StatusContextMismatch);
    EXPECT_EQ(form.inPlace(nullptr, spec.get(), nullptr, n), StatusNullPtr);
    EXPECT_EQ(form.inPlace(nullptr, stranger, nullptr, n), StatusContextMismatch);
    EXPECT_TRUE(dst.untouched()) << form.name;
}
TYPED_TEST(Fft, ChecksInOrder) {
    using T = TypeParam;
    eachForm<T>([](const auto& form, const auto& kind) { expectCallChecks(form, kind); });
    const auto spec = record(Library<T>::kParts, 5, NoScale);
    std::vector<T> a(32), b(32);
    for (int missing = 0; missing < 4; ++missing) {
        const auto p = [&](int i, std::vector<T>& v) { return i == missing ? nullptr : v.data(); };
        EXPECT_EQ(forwardParts(p(0, a), p(1, a), p(2, b), p(3, b), spec.get()), StatusNullPtr) << missing;
    }
    EXPECT_TRUE(std::all_of(b.begin(), b.end(), [](T x) { return x == 0; }));
}

}   // namespace
