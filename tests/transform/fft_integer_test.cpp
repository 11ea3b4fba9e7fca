#include <algorithm>
#include <climits>
#include <cmath>
#include <memory>

#include "support/data.h"
#include "support/dft.h"
#include "support/guarded.h"
#include "tevcore.h"

using namespace test;

namespace {

// ---- layouts: which part of which value an array of scalars holds where -------------------------------------------------------------------

enum Layout { Pairs, Parts, Reals, Ccs, Pack, Perm };

size_t samples(int order) { return size_t{1} << order; }
size_t scalars(Layout layout, int order) {
    const size_t n = samples(order);
    return layout <= Parts ? 2 * n : layout == Ccs ? (n == 1 ? 2 : n + 2) : n;
}
struct Where {
    size_t k;
    bool imaginary;
};
Where whereIs(Layout layout, size_t i, size_t n) {
    switch (layout) {
        case Parts:
            return {i % n, i >= n};
        case Reals:
            return {i, false};
        case Pack:
            return i == 0 ? Where{0, false} : Where{(i + 1) / 2, i % 2 == 0};
        case Perm:
            return i < 2 ? Where{i * n / 2, false} : Where{i / 2, i % 2 == 1};
        default:
            return {i / 2, i % 2 == 1};
    }
}
// The ends of a real signal's spectrum are real: CCS has zeros there.
bool isZero(Layout layout, Where at, size_t n) { return layout == Ccs && at.imaginary && at.k % n * 2 % n == 0; }

template <class T> Values unpacked(Layout layout, const std::vector<T>& v, size_t n) {
    Values x(n);
    for (size_t i = 0; i < v.size(); ++i) {
        const Where at = whereIs(layout, i, n);
        if (isZero(layout, at, n)) continue;
        x[at.k] += at.imaginary ? Value(0, v[i]) : Value(v[i], 0);
    }
    if (layout >= Ccs)
        for (size_t k = n / 2 + 1; k < n; ++k) x[k] = std::conj(x[n - k]);
    return x;
}
std::vector<long double> packed(Layout layout, const Values& x, int order) {
    const size_t n = samples(order);
    std::vector<long double> v(scalars(layout, order));
    for (size_t i = 0; i < v.size(); ++i) {
        const Where at = whereIs(layout, i, n);
        v[i] = isZero(layout, at, n) ? 0 : at.imaginary ? x[at.k].imag() : x[at.k].real();
    }
    return v;
}

// ---- kinds and forms ----------------------------------------------------------------------------------------------------------------------

struct Sizes {
    int order, spec, init, work;
};
template <class S> struct Kind {
    const char* name;
    uint32_t identifier;
    bool isShort;     // 16 bits both in time and frequency
    double epsilon;   // of the floats within
    Status (*getSize)(int, int, int, int*, int*, int*);
    Status (*init)(S**, int, int, int, uint8_t*, uint8_t*);
    Status (*initAlloc)(S**, int, int, int);
    Status (*free)(S*);
    Status (*getBufSize)(const S*, int*);
};
#define KIND(name, identifier, isShort, epsilon) \
    { #name, identifier, isShort, epsilon, tevsFFTGetSize_##name, tevsFFTInit_##name, tevsFFTInitAlloc_##name, tevsFFTFree_##name, tevsFFTGetBufSize_##name }
constexpr Kind<FFTSpec_C_16sc> kC16sc = KIND(C_16sc, 1, true, 0x1p-24);
constexpr Kind<FFTSpec_C_16s> kC16s = KIND(C_16s, 2, true, 0x1p-24);
constexpr Kind<FFTSpec_R_16s> kR16s = KIND(R_16s, 3, true, 0x1p-24);
constexpr Kind<FFTSpec_C_32sc> kC32sc = KIND(C_32sc, 0x4C4D5364, false, 0x1p-53);
constexpr Kind<FFTSpec_C_32s> kC32s = KIND(C_32s, 0x4C4D5365, false, 0x1p-53);
constexpr Kind<FFTSpec_R_32s> kR32s = KIND(R_32s, 0x4C4D5366, false, 0x1p-53);
constexpr Kind<FFTSpec_R_16s32s> kR16s32s = KIND(R_16s32s, 0x4C4D5367, false, 0x1p-24);

// One transform, over scalars: parts lie one behind the other.
template <class S, class D, class Spec> struct Form {
    const char* name;
    bool forward;
    Layout from, to;
    Status (*call)(const S*, D*, const Spec*, int, uint8_t*, int order);
    Status (*inPlace)(S*, const Spec*, int, uint8_t*, int order);
};
template <auto F> struct Flat;
template <class S, class D, class Spec, Status (*F)(const S*, D*, const Spec*, int, uint8_t*)> struct Flat<F> {
    template <class P, class Q> static Status call(const P* src, Q* dst, const Spec* spec, int scaleFactor, uint8_t* buffer, int) {
        return F(reinterpret_cast<const S*>(src), reinterpret_cast<D*>(dst), spec, scaleFactor, buffer);
    }
};
template <class S, class Spec, Status (*F)(S*, const Spec*, int, uint8_t*)> struct Flat<F> {
    template <class P> static Status inPlace(P* srcDst, const Spec* spec, int scaleFactor, uint8_t* buffer, int) {
        return F(reinterpret_cast<S*>(srcDst), spec, scaleFactor, buffer);
    }
};
template <class S, class Spec, Status (*F)(const S*, const S*, S*, S*, const Spec*, int, uint8_t*)> struct Flat<F> {
    static Status call(const S* src, S* dst, const Spec* spec, int scaleFactor, uint8_t* buffer, int order) {
        return F(src, src ? src + samples(order) : src, dst, dst ? dst + samples(order) : dst, spec, scaleFactor, buffer);
    }
};
template <class S, class Spec, Status (*F)(S*, S*, const Spec*, int, uint8_t*)> struct Flat<F> {
    static Status inPlace(S* srcDst, const Spec* spec, int scaleFactor, uint8_t* buffer, int order) {
        return F(srcDst, srcDst ? srcDst + samples(order) : srcDst, spec, scaleFactor, buffer);
    }
};
#define FORM(name, type, forward, from, to) \
    { #name "_" #type, forward, from, to, Flat < tevsFFT##name##_##type##_Sfs> ::call, Flat < tevsFFT##name##_##type##_ISfs> ::inPlace }
#define COMPLEX_FORMS(type, layout) \
    { FORM(Fwd_CToC, type, true, layout, layout), FORM(Inv_CToC, type, false, layout, layout) }
#define REAL_FORMS(type)                                                                                                                        \
    {                                                                                                                                           \
        FORM(Fwd_RToCCS, type, true, Reals, Ccs), FORM(Fwd_RToPack, type, true, Reals, Pack), FORM(Fwd_RToPerm, type, true, Reals, Perm),       \
            FORM(Inv_CCSToR, type, false, Ccs, Reals), FORM(Inv_PackToR, type, false, Pack, Reals), FORM(Inv_PermToR, type, false, Perm, Reals) \
    }
constexpr Form<int16_t, int16_t, FFTSpec_C_16sc> kForms16sc[] = COMPLEX_FORMS(16sc, Pairs);
constexpr Form<int16_t, int16_t, FFTSpec_C_16s> kForms16s[] = COMPLEX_FORMS(16s, Parts);
constexpr Form<int16_t, int16_t, FFTSpec_R_16s> kRealForms16s[] = REAL_FORMS(16s);
constexpr Form<int32_t, int32_t, FFTSpec_C_32sc> kForms32sc[] = COMPLEX_FORMS(32sc, Pairs);
constexpr Form<int32_t, int32_t, FFTSpec_C_32s> kForms32s[] = COMPLEX_FORMS(32s, Parts);
constexpr Form<int32_t, int32_t, FFTSpec_R_32s> kRealForms32s[] = REAL_FORMS(32s);
constexpr Form<int16_t, int32_t, FFTSpec_R_16s32s> kForward16s32s[] = {
    {"Fwd_RToCCS_16s32s", true, Reals, Ccs, Flat<tevsFFTFwd_RToCCS_16s32s_Sfs>::call, nullptr}};
constexpr Form<int32_t, int16_t, FFTSpec_R_16s32s> kInverse32s16s[] = {
    {"Inv_CCSToR_32s16s", false, Ccs, Reals, Flat<tevsFFTInv_CCSToR_32s16s_Sfs>::call, nullptr}};

// f(kind, form) for every form of every kind; g(kind) for every kind.
template <class F> void forEachForm(F f) {
    const auto all = [&](const auto& kind, const auto& forms) {
        for (const auto& form : forms) f(kind, form);
    };
    all(kC16sc, kForms16sc);
    all(kC16s, kForms16s);
    all(kR16s, kRealForms16s);
    all(kC32sc, kForms32sc);
    all(kC32s, kForms32s);
    all(kR32s, kRealForms32s);
    all(kR16s32s, kForward16s32s);
    all(kR16s32s, kInverse32s16s);
}
template <class G> void forEachKind(G g) { g(kC16sc), g(kC16s), g(kR16s), g(kC32sc), g(kC32s), g(kR32s), g(kR16s32s); }

template <class S> auto record(const Kind<S>& kind, int order, int flag, int hint = HintNone) {
    S* spec = nullptr;
    EXPECT_EQ(kind.initAlloc(&spec, order, flag, hint), StatusOk);
    return std::unique_ptr<S, Status (*)(S*)>(spec, kind.free);
}
template <class S> int bufferSize(const Kind<S>& kind, const S* spec) {
    int size = -1;
    EXPECT_EQ(kind.getBufSize(spec, &size), StatusOk);
    return size;
}
template <class S, class D, class Spec> std::vector<D> run(const Form<S, D, Spec>& f, const std::vector<S>& src, const Spec* spec, int order, int scaleFactor) {
    std::vector<D> dst(scalars(f.to, order));
    EXPECT_EQ(f.call(src.data(), dst.data(), spec, scaleFactor, nullptr, order), StatusOk);
    return dst;
}

template <class S, class D, class Spec> std::vector<S> sourceOf(const Form<S, D, Spec>& f, int order) { return randomVector<S>(scalars(f.from, order)); }

constexpr int kFlags[] = {ScaleFwdByN, ScaleInvByN, ScaleBySqrtN, NoScale};
// The binary logarithm of what a direction divides its result by.
double shift(int flag, bool forward, int order) {
    if (flag == ScaleBySqrtN) return order / 2.0;
    return flag == (forward ? ScaleFwdByN : ScaleInvByN) ? order : 0;
}

// ---- results --------------------------------------------------------------------------------------------------------------------------------

// A float result has an error of at most so much of the root mean square of all of them, or of itself where it stands out: the norm's error is measured, a
// value's is scattered around it.
double errorOf(double epsilon, int order) { return 6 * 0.85 * epsilon * std::sqrt(order + 1.0); }

// The integer is the nearest one to something that is this close to the exact result; where sums and factors are exact, to the exact result itself.
template <class S, class D, class Spec> void expectOracle(const Kind<Spec>& kind, const Form<S, D, Spec>& form, int order, int flag, int hint) {
    const auto spec = record(kind, order, flag, hint);
    const auto src = sourceOf(form, order);
    Values x = oracle(unpacked(form.from, src, samples(order)), form.forward ? -1 : 1);
    const double by = shift(flag, form.forward, order);
    for (Value& v : x) v *= std::exp2(-(long double)by);
    const auto exact = packed(form.to, x, order);
    const bool isExact = order <= 2 && (flag != ScaleBySqrtN || order % 2 == 0) && (sizeof(S) == 2 || kind.epsilon < 0x1p-24);
    long double squares = 0;
    for (const Value& v : x) squares += std::norm(v);
    const long double rms = std::sqrt(squares / x.size());
    // Without a scale, and at the scales that leave about a quarter of the range, and 16 times as much.
    const int natural = std::max(0, int(std::log2(rms + 1))) - std::numeric_limits<D>::digits + 3;
    constexpr long double lo = std::numeric_limits<D>::min(), hi = std::numeric_limits<D>::max();
    for (int scale : {0, natural, natural - 4, natural + 6}) {
        const auto got = run(form, src, spec.get(), order, scale);
        const long double f = std::ldexp(1.0L, -scale), error = isExact ? 0 : errorOf(kind.epsilon, order) * f;
        for (size_t i = 0; i < got.size(); ++i) {
            ASSERT_LE(std::abs(got[i] - std::clamp(exact[i] * f, lo, hi)), 0.5L + error * std::max(rms, std::abs(exact[i])) + 1e-7L)
                << form.name << " order " << order << " flag " << flag << " hint " << hint << " scale " << scale << " at " << i;
            if (!isExact) continue;   // else a multiple of 1/4, and the oracle's own error
            ASSERT_EQ((long double)got[i], std::nearbyint(std::clamp(std::nearbyint(exact[i] * 4) / 4 * f, lo, hi)))
                << form.name << " order " << order << " flag " << flag << " scale " << scale << " at " << i;
        }
    }
}

TEST(FftInteger, EqualsOracle) {
    forEachForm([](const auto& kind, const auto& form) {
        for (int order = 0; order <= 14; ++order)
            for (int flag : kFlags)
                for (int hint : {HintNone, HintAccurate})
                    if (hint == HintNone || (kind.isShort && order <= 5))
                        for (int round = 0; round < std::max(1, 64 >> order); ++round) expectOracle(kind, form, order, flag, hint);
    });
}

TEST(FftInteger, LargeOrders) {
    for (int order : {16, 17}) {
        expectOracle(kC16sc, kForms16sc[0], order, NoScale, HintNone);
        expectOracle(kC32s, kForms32s[1], order, ScaleBySqrtN, HintNone);
        expectOracle(kR16s32s, kForward16s32s[0], order, NoScale, HintNone);
    }
}

// An impulse at 0 is exact at every step, and its zeros stay zeros at any scale.
template <class S, class D, class Spec> void expectImpulse(const Kind<Spec>& kind, const Form<S, D, Spec>& form, int order, int value) {
    const auto spec = record(kind, order, NoScale);
    Values x(samples(order));
    x[0] = value;
    std::vector<S> src;
    for (long double v : packed(form.from, x, order)) src.push_back(S(v));
    const auto exact = packed(form.to, Values(x.size(), value), order);
    for (int scale : {INT_MIN, -200, -33, -32, -31, -16, -15, -14, -1, 0, 1, 2, 3, 9, 10, 14, 15, 16, 17, 31, 32, 33, 200, INT_MAX}) {
        const auto got = run(form, src, spec.get(), order, scale);
        for (size_t i = 0; i < got.size(); ++i) {
            const long double v = std::nearbyint(std::ldexp(exact[i], -std::clamp(scale, -1000, 1000)));
            ASSERT_EQ((long double)got[i], std::clamp<long double>(v, std::numeric_limits<D>::min(), std::numeric_limits<D>::max()))
                << form.name << " order " << order << " value " << value << " scale " << scale << " at " << i;
        }
    }
}
TEST(FftInteger, AnyScaleFactor) {
    forEachForm([](const auto& kind, const auto& form) {
        for (int order : {0, 1, 3, 4, 6, 10})
            for (int value : {0, 1, -1, 3, -5, 1000, -32768}) expectImpulse(kind, form, order, value);
    });
}

// Orders 1 to 3 of 16 bits with a hint that allows tables of their own, and one that does not.
TEST(FftInteger, HintsDoNotChangeResults) {
    forEachForm([](const auto& kind, const auto& form) {
        for (int order = 1; order <= 4; ++order) {
            const auto src = sourceOf(form, order);
            const auto want = run(form, src, record(kind, order, ScaleBySqrtN, HintNone).get(), order, 1);
            for (int hint : {1, 2, -1}) EXPECT_TRUE(same(want, run(form, src, record(kind, order, ScaleBySqrtN, hint).get(), order, 1))) << form.name;
        }
    });
}

// ---- where things lie -------------------------------------------------------------------------------------------------------------------------

// In place or not, at any address, in whose work buffer ever: the same integers, and nothing touched beside the destination.
template <class S, class D, class Spec> void expectSameEverywhere(const Kind<Spec>& kind, const Form<S, D, Spec>& form, int order) {
    const auto spec = record(kind, order, ScaleBySqrtN);
    const auto src = sourceOf(form, order);
    const auto want = run(form, src, spec.get(), order, 1);
    int ignored, reported;
    ASSERT_EQ(kind.getSize(order, NoScale, HintNone, &ignored, &ignored, &reported), StatusOk);
    const size_t work = size_t(std::min(reported, bufferSize(kind, spec.get())));
    constexpr int e = int(sizeof(S));
    for (Place at : {Place{0, false}, Place{e, false}, Place{2 * e, false}, Place{3 * e, false}, Place{0, true}, Place{1, true}}) {
        const Guarded<S> in(src, at);
        Guarded<D> out(want.size(), at);
        Guarded<uint8_t> buffer(work, {at.offset / e * 5 + at.offset % e, at.atEnd}), large(work + 99, {at.offset + 1, at.atEnd});
        ASSERT_EQ(form.call(in.data(), out, spec.get(), 1, buffer, order), StatusOk);
        ASSERT_TRUE(same(want, out.values())) << form.name << " order " << order << " offset " << at.offset;
        ASSERT_TRUE(same(src, in.values())) << form.name << " order " << order;
        ASSERT_TRUE(out.intact() && in.intact() && buffer.intact()) << form.name << " order " << order;
        if constexpr (std::is_same_v<S, D>) {
            Guarded<S> both(std::max(src.size(), want.size()), at);
            both.assign(src);
            ASSERT_EQ(form.inPlace(both, spec.get(), 1, at.atEnd ? nullptr : large.data(), order), StatusOk);
            auto got = both.values();
            got.resize(want.size());
            ASSERT_TRUE(same(want, got)) << form.name << " in place, order " << order << " offset " << at.offset;
            ASSERT_TRUE(both.intact() && large.intact()) << form.name << " order " << order;
        }
    }
}
TEST(FftInteger, GivesTheSameWhereverThingsLie) {
    forEachForm([](const auto& kind, const auto& form) {
        for (int order = 0; order <= 16; order += order < 11 ? 1 : 5) expectSameEverywhere(kind, form, order);
    });
}

// The real parts' array may be the imaginary parts' destination.
TEST(FftInteger, PartsMayChangePlaces) {
    for (int order : {0, 1, 3, 5, 9}) {
        const size_t n = samples(order);
        const auto spec = record(kC16s, order, NoScale);
        const auto src = randomVector<int16_t>(2 * n);
        const auto want = run(kForms16s[0], src, spec.get(), order, order);
        auto both = src;
        ASSERT_EQ(tevsFFTFwd_CToC_16s_Sfs(both.data(), both.data() + n, both.data() + n, both.data(), spec.get(), order, nullptr), StatusOk);
        std::rotate(both.begin(), both.begin() + ptrdiff_t(n), both.end());
        EXPECT_TRUE(same(want, both)) << order;
    }
}

TEST(FftInteger, IgnoresAndKeepsTheCallersRounding) {
    forEachForm([](const auto& kind, const auto& form) {
        for (int order : {0, 1, 3, 5, 10}) {
            const auto src = sourceOf(form, order);
            const auto want = run(form, src, record(kind, order, ScaleBySqrtN).get(), order, 1);
            const uint32_t before = tev_set_rc_ssx(3);
            const auto got = run(form, src, record(kind, order, ScaleBySqrtN).get(), order, 1);
            const uint32_t after = tev_set_cw_ssx(before);
            EXPECT_TRUE(same(want, got)) << form.name << " " << order;
            EXPECT_EQ((after >> 13) & 3, 3u);
        }
    });
}

// ---- records ------------------------------------------------------------------------------------------------------------------------------------

template <class S> void expectSizes(const Kind<S>& kind, int hint, std::span<const Sizes> rows) {
    for (const Sizes& r : rows) {
        int spec = 0, init = 0, work = 0;
        ASSERT_EQ(kind.getSize(r.order, -7, hint, &spec, &init, &work), StatusOk);
        EXPECT_EQ(spec, r.spec) << kind.name << " " << r.order;
        EXPECT_EQ(init, r.init) << kind.name << " " << r.order;
        EXPECT_EQ(work, r.work) << kind.name << " " << r.order;
        // What a call is told to bring: 16 bytes to align in more than 32-bit kinds report where the transform itself needs no work area.
        const bool bare = !kind.isShort && r.order <= (kind.name[0] == 'R' ? 4 : 3);
        EXPECT_EQ(bufferSize(kind, record(kind, r.order, NoScale, hint).get()), r.work + (bare ? 16 : 0)) << kind.name << " " << r.order;
    }
    for (int order = 28; order <= 30; ++order) {
        int spec = 0, init = 0, work = 0;
        ASSERT_EQ(kind.getSize(order, NoScale, hint, &spec, &init, &work), StatusOk);
        EXPECT_EQ(spec, INT_MAX) << kind.name << " " << order;
        EXPECT_GT(init, 0);
        EXPECT_GT(work, 0);
    }
}
TEST(FftIntegerRecord, Sizes) {
    constexpr Sizes c16[] = {
        {4, 352, 64, 288}, {10, 9424, 1072, 16416}, {15, 295120, 32816, 524320}, {16, 622800, 65584, 557088}, {20, 9568464, 1048624, 8519712}};
    constexpr Sizes c16sc[] = {{0, 68, 0, 0}, {1, 112, 32, 32}, {2, 128, 32, 48}, {3, 160, 32, 80}};
    constexpr Sizes c16s[] = {{0, 68, 0, 0}, {1, 112, 32, 40}, {2, 128, 32, 64}, {3, 160, 32, 112}};
    constexpr Sizes c16Accurate[] = {{0, 68, 0, 0}, {1, 176, 16, 32}, {3, 176, 16, 80}};
    constexpr Sizes r16[] = {{10, 8912, 1072, 8232}, {15, 278736, 32816, 262184}, {16, 557264, 65584, 524328}, {20, 9044176, 1048624, 4325416}};
    constexpr Sizes r16s[] = {{0, 68, 0, 0}, {1, 128, 32, 32}, {2, 144, 32, 40}, {3, 192, 32, 56}, {4, 240, 64, 88}};
    constexpr Sizes r16Accurate[] = {{0, 68, 0, 0}, {1, 176, 16, 32}, {3, 176, 16, 56}, {4, 240, 64, 88}};
    constexpr Sizes c32[] = {{0, 148, 0, 16},
                             {1, 148, 0, 32},
                             {3, 148, 0, 128},
                             {4, 464, 80, 544},
                             {10, 17600, 2096, 32800},
                             {15, 590016, 65584, 557088},
                             {16, 1179840, 131120, 1114144},
                             {20, 17957056, 2097200, 16908320}};
    constexpr Sizes r32[] = {{0, 148, 0, 24},
                             {1, 148, 0, 32},
                             {3, 148, 0, 80},
                             {4, 276, 80, 144},
                             {10, 17076, 2096, 16432},
                             {15, 573620, 65584, 294960},
                             {16, 1114292, 131120, 557104},
                             {20, 17432756, 2097200, 8519728}};
    constexpr Sizes r16s32s[] = {{0, 144, 0, 12},
                                 {1, 144, 0, 16},
                                 {3, 144, 0, 40},
                                 {4, 208, 64, 72},
                                 {10, 8880, 1072, 8232},
                                 {15, 278704, 32816, 262184},
                                 {16, 557232, 65584, 524328},
                                 {20, 9044144, 1048624, 4325416}};
    for (int hint : {0, 1, 2, 99}) {
        expectSizes(kC16sc, hint, c16);
        expectSizes(kC16s, hint, c16);
        expectSizes(kR16s, hint, r16);
        expectSizes(kC32sc, hint, c32);
        expectSizes(kC32s, hint, c32);
        expectSizes(kR32s, hint, r32);
        expectSizes(kR16s32s, hint, r16s32s);
        const bool accurate = hint == HintAccurate;
        expectSizes(kC16sc, hint, accurate ? std::span<const Sizes>(c16Accurate) : c16sc);
        expectSizes(kC16s, hint, accurate ? std::span<const Sizes>(c16Accurate) : c16s);
        expectSizes(kR16s, hint, accurate ? std::span<const Sizes>(r16Accurate) : r16s);
    }
}

template <class S> uint32_t identifierOf(const S* spec) {
    uint32_t word;
    std::memcpy(&word, spec, sizeof word);
    return word;
}

// A record in a block of exactly the reported size, at any address, works as one of the library's own does; building it keeps to its two blocks.
template <class S, class D, class Spec> void expectInitAnywhere(const Kind<Spec>& kind, const Form<S, D, Spec>& form, int order, int hint) {
    int specSize, initSize, workSize;
    ASSERT_EQ(kind.getSize(order, NoScale, hint, &specSize, &initSize, &workSize), StatusOk);
    const auto src = sourceOf(form, order);
    const auto want = run(form, src, record(kind, order, ScaleFwdByN, hint).get(), order, 0);
    for (int offset = 0; offset < 16; offset += order < 8 ? 1 : 7)
        for (bool atEnd : {false, true}) {
            Guarded<uint8_t> memory(size_t(specSize), {offset, atEnd}), scratch(size_t(initSize), {offset, atEnd});
            Spec* spec = nullptr;
            ASSERT_EQ(kind.init(&spec, order, ScaleFwdByN, hint, memory, initSize ? scratch.data() : nullptr), StatusOk);
            ASSERT_EQ(reinterpret_cast<uintptr_t>(spec), (reinterpret_cast<uintptr_t>(memory.data()) + 15) / 16 * 16);
            const auto before = memory.values();
            ASSERT_EQ(identifierOf(spec), kind.identifier);
            ASSERT_TRUE(same(want, run(form, src, spec, order, 0))) << form.name << " order " << order << " offset " << offset;
            ASSERT_TRUE(same(before, memory.values())) << "a call changed the record";
            ASSERT_EQ(kind.free(spec), StatusOk);
            ASSERT_EQ(kind.free(spec), StatusContextMismatch);
            ASSERT_EQ(identifierOf(spec), 0u);
            ASSERT_TRUE(memory.intact() && scratch.intact()) << order << " offset " << offset;
        }
}
TEST(FftIntegerRecord, LiesAnywhere) {
    forEachForm([](const auto& kind, const auto& form) {
        if (form.forward && (form.to == Ccs || form.to < Reals))
            for (int order = 0; order <= 17; order += order < 10 ? 1 : 7)
                for (int hint : {HintNone, HintAccurate}) expectInitAnywhere(kind, form, order, hint);
    });
}

template <class S> void expectChecks(const Kind<S>& kind) {
    int a = 7, b = 7, c = 7;
    for (int order : {-1, 31, INT_MIN, INT_MAX}) EXPECT_EQ(kind.getSize(order, 0, 0, nullptr, nullptr, nullptr), StatusFftOrder);
    EXPECT_EQ(kind.getSize(5, 0, 0, nullptr, &b, &c), StatusNullPtr);
    EXPECT_EQ(kind.getSize(5, 0, 0, &a, nullptr, &c), StatusNullPtr);
    EXPECT_EQ(kind.getSize(5, 0, 0, &a, &b, nullptr), StatusNullPtr);
    EXPECT_TRUE(a == 7 && b == 7 && c == 7);

    const int first = kind.isShort ? 1 : 4;   // order that Init needs memory for
    alignas(16) uint8_t block[176], scratch[32];
    S *const mark = reinterpret_cast<S*>(0x40), *spec = mark;
    struct Row {
        bool ppSpec;
        int order, flag;
        bool memory, init;
        Status want;
    };
    const Row rows[] = {
        {false, -1, 3, false, false, StatusNullPtr},        {true, -1, 3, false, false, StatusFftOrder},   {true, 31, 3, false, false, StatusFftOrder},
        {true, 28, 3, false, false, StatusFftOrder},        {true, first, 3, false, false, StatusNullPtr}, {true, first, 3, true, false, StatusFftFlag},
        {true, first, 0, true, true, StatusFftFlag},        {true, 0, 16, true, true, StatusFftFlag},      {true, 0, -1, true, false, StatusFftFlag},
        {true, first, NoScale, true, false, StatusNullPtr},
    };
    for (const Row& r : rows) {
        std::memcpy(block, &kind.identifier, sizeof kind.identifier);   // a failure must end what looks like a record
        EXPECT_EQ(kind.init(r.ppSpec ? &spec : nullptr, r.order, r.flag, HintNone, r.memory ? block : nullptr, r.init ? scratch : nullptr), r.want)
            << kind.name << " " << r.order << " " << r.flag;
        EXPECT_EQ(spec, mark);
        if (r.memory) {
            EXPECT_EQ(identifierOf(block), 0u);
            EXPECT_EQ(kind.getBufSize(reinterpret_cast<S*>(block), &a), StatusContextMismatch);
        }
    }
    EXPECT_EQ(kind.initAlloc(nullptr, 31, 3, HintNone), StatusNullPtr);
    EXPECT_EQ(kind.initAlloc(&spec, 31, 3, HintNone), StatusFftOrder);
    EXPECT_EQ(kind.initAlloc(&spec, 0, 3, HintNone), StatusFftFlag);
    EXPECT_EQ(kind.initAlloc(&spec, 5, 3, HintNone), StatusFftFlag);
    EXPECT_EQ(kind.initAlloc(&spec, 30, NoScale, HintNone), StatusNoMemory);
    EXPECT_EQ(spec, mark);
    EXPECT_EQ(kind.init(&spec, first - 1, NoScale, HintNone, block, nullptr), StatusOk);
    EXPECT_EQ(kind.free(spec), StatusOk);

    EXPECT_EQ(kind.free(nullptr), StatusNullPtr);
    EXPECT_EQ(kind.getBufSize(nullptr, &a), StatusNullPtr);
    EXPECT_EQ(kind.getBufSize(reinterpret_cast<S*>(block), nullptr), StatusNullPtr);
    // Strangers: a freed record, and one of every other kind.
    EXPECT_EQ(kind.free(spec), StatusContextMismatch);
    forEachKind([&](const auto& other) {
        if (other.identifier == kind.identifier) return;
        const auto stranger = record(other, 5, NoScale);
        EXPECT_EQ(kind.getBufSize(reinterpret_cast<S*>(stranger.get()), &a), StatusContextMismatch);
        EXPECT_EQ(kind.free(reinterpret_cast<S*>(stranger.get())), StatusContextMismatch);
    });
    EXPECT_EQ(a, 7);
}
TEST(FftIntegerRecord, ChecksInOrder) {
    forEachKind([](const auto& kind) { expectChecks(kind); });
}

template <class S, class D, class Spec> void expectCallChecks(const Kind<Spec>& kind, const Form<S, D, Spec>& form) {
    uint32_t strange[4] = {kind.identifier ^ 1, 5, 0, 0};
    const auto* const stranger = reinterpret_cast<const Spec*>(strange);
    for (int order : {0, 5}) {
        const auto spec = record(kind, order, NoScale);
        const auto src = sourceOf(form, order);
        Guarded<D> dst(scalars(form.to, order));
        EXPECT_EQ(form.call(nullptr, nullptr, nullptr, 0, nullptr, order), StatusNullPtr);
        EXPECT_EQ(form.call(nullptr, nullptr, stranger, 0, nullptr, order), StatusContextMismatch);
        EXPECT_EQ(form.call(nullptr, dst, spec.get(), 0, nullptr, order), StatusNullPtr);
        EXPECT_EQ(form.call(src.data(), nullptr, spec.get(), 0, nullptr, order), StatusNullPtr);
        EXPECT_EQ(form.call(src.data(), dst, nullptr, 0, nullptr, order), StatusNullPtr);
        EXPECT_EQ(form.call(src.data(), dst, stranger, 0, nullptr, order), StatusContextMismatch);
        if (form.inPlace) {
            EXPECT_EQ(form.inPlace(nullptr, spec.get(), 0, nullptr, order), StatusNullPtr);
            EXPECT_EQ(form.inPlace(nullptr, stranger, 0, nullptr, order), StatusContextMismatch);
        }
        EXPECT_TRUE(dst.untouched()) << form.name;
    }
}
TEST(FftInteger, ChecksInOrder) {
    forEachForm([](const auto& kind, const auto& form) { expectCallChecks(kind, form); });
    // Each of four arrays.
    const auto spec = record(kC32s, 3, NoScale);
    int32_t v[8] = {};
    EXPECT_EQ(tevsFFTFwd_CToC_32s_Sfs(v, nullptr, v, v, spec.get(), 0, nullptr), StatusNullPtr);
    EXPECT_EQ(tevsFFTFwd_CToC_32s_Sfs(v, v, v, nullptr, spec.get(), 0, nullptr), StatusNullPtr);
    EXPECT_EQ(tevsFFTInv_CToC_32s_ISfs(v, nullptr, spec.get(), 0, nullptr), StatusNullPtr);
}

}   // namespace
