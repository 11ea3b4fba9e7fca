#include <algorithm>
#include <climits>
#include <cmath>
#include <complex>
#include <memory>
#include <numbers>
#include <thread>

#include "support/data.h"
#include "support/guarded.h"
#include "tevcore.h"

using namespace test;

namespace {

// ---- oracle: the textbook radix-2 transform in extended precision, and the definition that it is checked against ------------------

using Value = std::complex<long double>;
using Values = std::vector<Value>;

Value root(size_t k, size_t n) {
    const long double angle = 2 * std::numbers::pi_v<long double> * (long double)(k) / (long double)(n);
    return {std::cos(angle), std::sin(angle)};
}

Values slowDft(const Values& x, int sign) {
    const size_t n = x.size();
    Values y(n);
    for (size_t k = 0; k < n; ++k)
        for (size_t t = 0; t < n; ++t) {
            const Value w = root(t * k % n, n);
            y[k] += x[t] * (sign < 0 ? std::conj(w) : w);
        }
    return y;
}

Values oracle(Values x, int sign) {
    const size_t n = x.size();
    for (size_t i = 1, j = 0; i < n; ++i) {
        size_t bit = n >> 1;
        for (; j & bit; bit >>= 1) j ^= bit;
        j |= bit;
        if (i < j) std::swap(x[i], x[j]);
    }
    Values w(n / 2);
    for (size_t k = 0; k < n / 2; ++k) w[k] = sign < 0 ? std::conj(root(k, n)) : root(k, n);
    for (size_t len = 2; len <= n; len *= 2)
        for (size_t i = 0; i < n; i += len)
            for (size_t k = 0; k < len / 2; ++k) {
                const Value u = x[i + k], f = w[k * (n / len)], z = x[i + k + len / 2];
                const Value v{z.real() * f.real() - z.imag() * f.imag(), z.real() * f.imag() + z.imag() * f.real()};
                x[i + k] = u + v;
                x[i + k + len / 2] = u - v;
            }
    return x;
}

TEST(Oracle, EqualsTheDefinition) {
    for (size_t n : {1, 2, 4, 16, 64})
        for (int sign : {-1, 1}) {
            Values x(n);
            for (Value& v : x) v = {randomValue<float>(), randomValue<float>()};
            const Values want = slowDft(x, sign), got = oracle(x, sign);
            for (size_t k = 0; k < n; ++k) EXPECT_LT(std::abs(want[k] - got[k]), 1e-16L * n) << n << " " << k;
        }
}

// Error norm over signal norm. The stages' rounding errors are independent and add up in squares; 0.6 * 2^-24 * sqrt(order) is measured, at all levels and
// orders. One wrong value of the 2^22 is an error of 2^-11.
struct Error {
    long double difference = 0, norm = 0;
    void add(Value want, Value got) {
        difference += std::norm(want - got);
        norm += std::norm(want);
    }
    double relative() const { return double(std::sqrt(difference / norm)); }
};
double bound(int order) { return 0.85 * 0x1p-24 * std::sqrt(order + 1.0); }

// ---- records and calls ----------------------------------------------------------------------------------------------------------

template <class S> struct Kind {
    uint32_t identifier;   // the first word of a record
    Status (*getSize)(int, int, int, int*, int*, int*);
    Status (*init)(S**, int, int, int, uint8_t*, uint8_t*);
    Status (*initAlloc)(S**, int, int, int);
    Status (*free)(S*);
    Status (*getBufSize)(const S*, int*);
};
constexpr Kind<FFTSpec_C_32fc> kComplex{4, tevsFFTGetSize_C_32fc, tevsFFTInit_C_32fc, tevsFFTInitAlloc_C_32fc, tevsFFTFree_C_32fc, tevsFFTGetBufSize_C_32fc};
constexpr Kind<FFTSpec_R_32f> kReal{6, tevsFFTGetSize_R_32f, tevsFFTInit_R_32f, tevsFFTInitAlloc_R_32f, tevsFFTFree_R_32f, tevsFFTGetBufSize_R_32f};

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
double factor(int flag, bool forward, int order) {
    if (flag == ScaleBySqrtN) return float(1 / std::sqrt(std::ldexp(1.0, order)));
    return flag == (forward ? ScaleFwdByN : ScaleInvByN) ? std::ldexp(1.0, -order) : 1;
}

// One transform in both of its forms, over elements S to elements D; `in` and `out` are the elements of 2^order samples.
template <class S, class D, class Spec> struct Form {
    const char* name;
    bool forward;
    Status (*call)(const S*, D*, const Spec*, uint8_t*);
    Status (*inPlace)(S*, const Spec*, uint8_t*);
    size_t (*in)(int order);
    size_t (*out)(int order);
};
using ComplexForm = Form<Complex32f, Complex32f, FFTSpec_C_32fc>;
using RealForm = Form<float, float, FFTSpec_R_32f>;

size_t samples(int order) { return size_t{1} << order; }
size_t ccs(int order) { return order == 0 ? 2 : samples(order) + 2; }

constexpr ComplexForm kComplexForms[] = {
    {"Fwd_CToC", true, tevsFFTFwd_CToC_32fc, tevsFFTFwd_CToC_32fc_I, samples, samples},
    {"Inv_CToC", false, tevsFFTInv_CToC_32fc, tevsFFTInv_CToC_32fc_I, samples, samples},
};
constexpr RealForm kRealForms[] = {
    {"Fwd_RToCCS", true, tevsFFTFwd_RToCCS_32f, tevsFFTFwd_RToCCS_32f_I, samples, ccs},
    {"Fwd_RToPack", true, tevsFFTFwd_RToPack_32f, tevsFFTFwd_RToPack_32f_I, samples, samples},
    {"Fwd_RToPerm", true, tevsFFTFwd_RToPerm_32f, tevsFFTFwd_RToPerm_32f_I, samples, samples},
    {"Inv_CCSToR", false, tevsFFTInv_CCSToR_32f, tevsFFTInv_CCSToR_32f_I, ccs, samples},
    {"Inv_PackToR", false, tevsFFTInv_PackToR_32f, tevsFFTInv_PackToR_32f_I, samples, samples},
    {"Inv_PermToR", false, tevsFFTInv_PermToR_32f, tevsFFTInv_PermToR_32f_I, samples, samples},
};

// Where the layouts keep X[k], 0 <= k <= N/2: the real part's position; the imaginary part follows, but for the ends, which are real.
size_t position(const std::string& form, size_t k, size_t n) {
    if (form.find("CCS") != std::string::npos) return 2 * k;
    if (k == 0) return 0;
    if (form.find("Pack") != std::string::npos) return 2 * k - 1;
    return 2 * k == n ? 1 : 2 * k;
}
Values unpacked(const std::string& form, const std::vector<float>& v, size_t n) {
    Values x(n);
    for (size_t k = 0; k <= n / 2; ++k) {
        const size_t at = position(form, k, n);
        x[k] = {v[at], k == 0 || 2 * k == n ? 0.0f : v[at + 1]};
        x[(n - k) % n] = std::conj(x[k]);
    }
    return x;
}

Values wide(const std::vector<Complex32f>& v) {
    Values x;
    for (Complex32f z : v) x.emplace_back(z.re, z.im);
    return x;
}
Values wide(const std::vector<float>& v) { return {v.begin(), v.end()}; }

// The exact result of a form, and what it gave, as complex values.
Values exact(const ComplexForm& f, const std::vector<Complex32f>& src, int) { return oracle(wide(src), f.forward ? -1 : 1); }
Values exact(const RealForm& f, const std::vector<float>& src, int order) {
    return f.forward ? oracle(wide(src), -1) : oracle(unpacked(f.name, src, samples(order)), 1);
}
Values given(const ComplexForm&, const std::vector<Complex32f>& dst, int) { return wide(dst); }
Values given(const RealForm& f, const std::vector<float>& dst, int order) { return f.forward ? unpacked(f.name, dst, samples(order)) : wide(dst); }

template <class S, class D, class Spec> std::vector<D> run(const Form<S, D, Spec>& f, const std::vector<S>& src, const Spec* spec, int order) {
    std::vector<D> dst(f.out(order));
    EXPECT_EQ(f.call(src.data(), dst.data(), spec, nullptr), StatusOk);
    return dst;
}

// ---- results ----------------------------------------------------------------------------------------------------------------------

// Short transforms meet several signals: over a few values, the error's norm scatters.
template <class S, class D, class Spec> void expectOracle(const Form<S, D, Spec>& form, const Kind<Spec>& kind, int order, std::span<const int> flags) {
    std::vector<Error> errors(flags.size());
    for (int round = 0; round < std::max(1, 512 >> order); ++round) {
        const auto src = randomVector<S>(form.in(order));
        const Values want = exact(form, src, order);
        for (size_t i = 0; i < flags.size(); ++i) {
            const auto spec = record(kind, order, flags[i]);
            const Values got = given(form, run(form, src, spec.get(), order), order);
            const long double f = factor(flags[i], form.forward, order);
            for (size_t k = 0; k < want.size(); ++k) errors[i].add(f * want[k], got[k]);
        }
    }
    for (size_t i = 0; i < flags.size(); ++i) EXPECT_LE(errors[i].relative(), bound(order)) << form.name << " order " << order << " flag " << flags[i];
}

TEST(Fft, EqualsOracle) {
    for (int order = 0; order <= 22; order += order < 18 ? 1 : 2) {
        const std::span<const int> flags = order <= 17 ? kFlags : std::span(kFlags).first(order == 18 ? 2 : 1);
        for (const auto& form : kComplexForms)
            if (order < 20 || form.forward) expectOracle(form, kComplex, order, flags);
        for (const auto& form : kRealForms)
            if (order < 18 || form.forward == (order == 20)) expectOracle(form, kReal, order, flags.first(order <= 12 ? flags.size() : 1));
    }
}

// The norm hides one poor factor among many. What an impulse becomes is a product of factors, alone: roots of unity to a few roundings, and exact where
// there is no factor but i.
TEST(Fft, ImpulsesGiveRoots) {
    constexpr double kWorst[] = {0, 0, 0, 0.3, 0.55, 0.9, 1.65, 2.2, 2.9, 3.5};   // of 2^-24, by order; measured, and a little
    for (int order = 0; order <= 9; ++order) {
        const size_t n = samples(order);
        const auto spec = record(kComplex, order, NoScale);
        double worst = 0;
        for (size_t at = 0; at < n; ++at) {
            std::vector<Complex32f> x(n);
            x[at] = {1, 0};
            const auto y = run(kComplexForms[0], x, spec.get(), order);
            for (size_t k = 0; k < n; ++k) worst = std::max(worst, double(std::abs(Value(y[k].re, y[k].im) - std::conj(root(at * k % n, n)))));
        }
        EXPECT_LE(worst, kWorst[order] * 0x1p-24 + 1e-18) << order;
    }
}

// One value of the definition's sum, by Horner's rule.
Value bin(const std::vector<Complex32f>& x, size_t k) {
    const Value w = std::conj(root(k, x.size()));
    long double re = 0, im = 0;
    for (size_t n = x.size(); n-- > 0;) {
        const long double r = re * w.real() - im * w.imag() + x[n].re;
        im = re * w.imag() + im * w.real() + x[n].im;
        re = r;
    }
    return {re, im};
}

// Where a whole oracle would take too long: a few values by the definition, and the way back. Both forms, the one with a buffer of the reported size.
TEST(Fft, LongTransforms) {
    for (int order : {19, 21, 23, 24}) {
        const auto spec = record(kComplex, order, ScaleBySqrtN);
        const auto x = randomVector<Complex32f>(samples(order));
        auto y = x, z = x;
        Guarded<uint8_t> buffer(size_t(bufferSize(kComplex, spec.get())), {5, true});
        ASSERT_EQ(tevsFFTFwd_CToC_32fc(x.data(), y.data(), spec.get(), nullptr), StatusOk);
        ASSERT_EQ(tevsFFTFwd_CToC_32fc_I(z.data(), spec.get(), buffer), StatusOk);
        ASSERT_TRUE(buffer.intact());
        ASSERT_TRUE(same(y, z)) << order;
        const double f = factor(ScaleBySqrtN, true, order);
        for (size_t k : {size_t{1}, x.size() / 3, x.size() - 7})   // a value's error is that of the norm per value, scattered
            EXPECT_LE(double(std::abs(bin(x, k) * (long double)(f)-Value(y[k].re, y[k].im))), 4 * bound(order)) << order << " " << k;
        ASSERT_EQ(tevsFFTInv_CToC_32fc_I(z.data(), spec.get(), nullptr), StatusOk);
        Error error;
        for (size_t n = 0; n < x.size(); ++n) error.add({x[n].re, x[n].im}, {z[n].re, z[n].im});
        EXPECT_LE(error.relative(), std::numbers::sqrt2 * bound(order)) << order;
    }
}

TEST(Fft, CcsHasZerosAndNeedsNone) {
    for (int order : {0, 1, 3, 4, 10, 17}) {
        const size_t n = samples(order);
        const auto spec = record(kReal, order, NoScale);
        auto x = run(kRealForms[0], randomVector<float>(n), spec.get(), order);
        EXPECT_EQ(x[1], 0);
        EXPECT_EQ(x[x.size() - 1], 0);
        const auto want = run(kRealForms[3], x, spec.get(), order);
        x[1] = x[x.size() - 1] = NAN;
        EXPECT_TRUE(same(want, run(kRealForms[3], x, spec.get(), order))) << order;
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
        ASSERT_EQ(form.call(in.data(), out, spec.get(), buffer), StatusOk);
        ASSERT_TRUE(same(want, out.values())) << form.name << " order " << order << " offset " << at.offset;
        ASSERT_TRUE(same(src, in.values())) << form.name << " order " << order;
        ASSERT_TRUE(out.intact() && in.intact() && buffer.intact()) << form.name << " order " << order;

        Guarded<S> both(std::max(src.size(), want.size()), at);
        both.assign(src);
        ASSERT_EQ(form.inPlace(both, spec.get(), at.atEnd ? nullptr : buffer.data()), StatusOk);
        auto got = both.values();
        got.resize(want.size());
        ASSERT_TRUE(same(want, got)) << form.name << " in place, order " << order << " offset " << at.offset;
        ASSERT_TRUE(both.intact() && buffer.intact()) << form.name << " order " << order;
    }
}

TEST(Fft, GivesTheSameBitsWhereverThingsLie) {
    for (int order = 0; order <= 18; ++order) {
        for (const auto& form : kComplexForms) expectSameEverywhere(form, kComplex, order);
        for (const auto& form : kRealForms) expectSameEverywhere(form, kReal, order);
    }
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
TEST(Fft, IgnoresAndKeepsTheCallersRounding) {
    for (const auto& form : kComplexForms) expectOwnRounding(form, kComplex);
    for (const auto& form : kRealForms) expectOwnRounding(form, kReal);
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
                for (int round = 0; round < 10; ++round) form.call(src.data(), got[i].data(), spec.get(), i % 2 ? buffer.data() : nullptr);
            });
    }
    for (const auto& g : got) EXPECT_TRUE(same(want, g)) << form.name << " order " << order;
}
TEST(Fft, OneRecordServesManyThreads) {
    for (int order : {5, 10, 17}) {
        expectShareable(kComplexForms[0], kComplex, order);
        expectShareable(kRealForms[3], kReal, order);
    }
}

// ---- records -----------------------------------------------------------------------------------------------------------------------

struct Sizes {
    int order, spec, init, work;
};
constexpr Sizes kComplexSizes[] = {{0, 96, 0, 0},
                                   {1, 96, 0, 0},
                                   {3, 96, 0, 0},
                                   {4, 272, 48, 144},
                                   {10, 9344, 1056, 8208},
                                   {15, 295040, 32800, 262160},
                                   {16, 622720, 65568, 32784},
                                   {20, 9568384, 1048608, 131088}};
constexpr Sizes kRealSizes[] = {{0, 96, 0, 0},
                                {1, 96, 0, 0},
                                {3, 96, 0, 0},
                                {4, 160, 48, 0},
                                {10, 8832, 1056, 4112},
                                {15, 278656, 32800, 131088},
                                {16, 557184, 65568, 262160},
                                {20, 9044096, 1048608, 131088}};

template <class S> void expectSizes(const Kind<S>& kind, std::span<const Sizes> rows) {
    for (const Sizes& r : rows) {
        int spec = 0, init = 0, work = 0;
        ASSERT_EQ(kind.getSize(r.order, -7, 99, &spec, &init, &work), StatusOk);
        EXPECT_EQ(spec, r.spec) << r.order;
        EXPECT_EQ(init, r.init) << r.order;
        EXPECT_EQ(work, r.work) << r.order;
        EXPECT_EQ(bufferSize(kind, record(kind, r.order, NoScale).get()), r.work) << r.order;
    }
    for (int order = 28; order <= 30; ++order) {
        int spec = 0, init = 0, work = 0;
        ASSERT_EQ(kind.getSize(order, NoScale, HintNone, &spec, &init, &work), StatusOk);
        EXPECT_EQ(spec, INT_MAX) << order;
        EXPECT_GT(init, 0);
        EXPECT_GT(work, 0);
    }
}
TEST(FftRecord, Sizes) {
    expectSizes(kComplex, kComplexSizes);
    expectSizes(kReal, kRealSizes);
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
TEST(FftRecord, LiesAnywhere) {
    for (int order = 0; order <= 18; ++order) {
        expectInitAnywhere(kComplexForms[0], kComplex, order);
        expectInitAnywhere(kRealForms[0], kReal, order);
    }
}

// `stranger` is a record of another kind.
template <class S> void expectChecks(const Kind<S>& kind, S* stranger) {
    int a = 7, b = 7, c = 7;
    for (int order : {-1, 31, INT_MIN, INT_MAX}) EXPECT_EQ(kind.getSize(order, 0, 0, nullptr, nullptr, nullptr), StatusFftOrder);
    EXPECT_EQ(kind.getSize(5, 0, 0, nullptr, &b, &c), StatusNullPtr);
    EXPECT_EQ(kind.getSize(5, 0, 0, &a, nullptr, &c), StatusNullPtr);
    EXPECT_EQ(kind.getSize(5, 0, 0, &a, &b, nullptr), StatusNullPtr);
    EXPECT_TRUE(a == 7 && b == 7 && c == 7);

    alignas(16) uint8_t block[96], scratch[1];
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
TEST(FftRecord, ChecksInOrder) {
    const auto complex = record(kComplex, 5, NoScale);
    const auto real = record(kReal, 5, NoScale);
    expectChecks(kComplex, reinterpret_cast<FFTSpec_C_32fc*>(real.get()));
    expectChecks(kReal, reinterpret_cast<FFTSpec_R_32f*>(complex.get()));
    EXPECT_GT(bufferSize(kComplex, complex.get()), 0);
    EXPECT_GT(bufferSize(kReal, real.get()), 0);
}

template <class S, class D, class Spec> void expectCallChecks(const Form<S, D, Spec>& form, const Kind<Spec>& kind, const Spec* stranger) {
    const auto spec = record(kind, 5, NoScale);
    const auto src = randomVector<S>(form.in(5));
    Guarded<D> dst(form.out(5));
    EXPECT_EQ(form.call(nullptr, nullptr, nullptr, nullptr), StatusNullPtr);
    EXPECT_EQ(form.call(nullptr, nullptr, stranger, nullptr), StatusContextMismatch);
    EXPECT_EQ(form.call(nullptr, dst, spec.get(), nullptr), StatusNullPtr);
    EXPECT_EQ(form.call(src.data(), nullptr, spec.get(), nullptr), StatusNullPtr);
    EXPECT_EQ(form.call(src.data(), dst, nullptr, nullptr), StatusNullPtr);
    EXPECT_EQ(form.call(src.data(), dst, stranger, nullptr), StatusContextMismatch);
    EXPECT_EQ(form.inPlace(nullptr, spec.get(), nullptr), StatusNullPtr);
    EXPECT_EQ(form.inPlace(nullptr, stranger, nullptr), StatusContextMismatch);
    EXPECT_TRUE(dst.untouched()) << form.name;
}
TEST(Fft, ChecksInOrder) {
    const auto complex = record(kComplex, 5, NoScale);
    const auto real = record(kReal, 5, NoScale);
    for (const auto& form : kComplexForms) expectCallChecks(form, kComplex, reinterpret_cast<const FFTSpec_C_32fc*>(real.get()));
    for (const auto& form : kRealForms) expectCallChecks(form, kReal, reinterpret_cast<const FFTSpec_R_32f*>(complex.get()));
}

}   // namespace
