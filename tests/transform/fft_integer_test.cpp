#include <algorithm>
#include <climits>
#include <cmath>

#include "support/records.h"

using namespace test;

namespace {

constexpr Kind kC16sc = TEVS_KIND(C_16sc, 1, 1), kC16s = TEVS_KIND(C_16s, 2, 1), kR16s = TEVS_KIND(R_16s, 3, 1), kC32sc = TEVS_KIND(C_32sc, 0x4C4D5364, 4),
               kC32s = TEVS_KIND(C_32s, 0x4C4D5365, 4), kR32s = TEVS_KIND(R_32s, 0x4C4D5366, 4), kR16s32s = TEVS_KIND(R_16s32s, 0x4C4D5367, 4);
constexpr const Kind* kKinds[] = {&kC16sc, &kC16s, &kR16s, &kC32sc, &kC32s, &kR32s, &kR16s32s};
// 16 bits both in time and frequency; the unit of the floats within.
bool isShort(const Kind& kind) { return kind.firstWithInit == 1; }
double unit(const Kind& kind) { return isShort(kind) || &kind == &kR16s32s ? 0x1p-24 : 0x1p-53; }

const Form<int16_t, int16_t> kForms16sc[] = TEVS_COMPLEX_FORMS(kC16sc, 16sc, _Sfs, _ISfs, Pairs);
const Form<int16_t, int16_t> kForms16s[] = TEVS_COMPLEX_FORMS(kC16s, 16s, _Sfs, _ISfs, Parts);
const Form<int16_t, int16_t> kRealForms16s[] = TEVS_REAL_FORMS(kR16s, 16s, _Sfs, _ISfs);
const Form<int32_t, int32_t> kForms32sc[] = TEVS_COMPLEX_FORMS(kC32sc, 32sc, _Sfs, _ISfs, Pairs);
const Form<int32_t, int32_t> kForms32s[] = TEVS_COMPLEX_FORMS(kC32s, 32s, _Sfs, _ISfs, Parts);
const Form<int32_t, int32_t> kRealForms32s[] = TEVS_REAL_FORMS(kR32s, 32s, _Sfs, _ISfs);
const Form<int16_t, int32_t> kForward16s32s[] = {{kR16s32s, "Fwd_RToCCS_16s32s", Reals, Ccs, Flat<tevsFFTFwd_RToCCS_16s32s_Sfs>::call, nullptr}};
const Form<int32_t, int16_t> kInverse32s16s[] = {{kR16s32s, "Inv_CCSToR_32s16s", Ccs, Reals, Flat<tevsFFTInv_CCSToR_32s16s_Sfs>::call, nullptr}};

template <class F> void forEachForm(F f) {
    const auto all = [&](const auto& forms) {
        for (const auto& form : forms) f(form);
    };
    all(kForms16sc), all(kForms16s), all(kRealForms16s), all(kForms32sc), all(kForms32s), all(kRealForms32s), all(kForward16s32s), all(kInverse32s16s);
}

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
template <class S, class D> void expectOracle(const Form<S, D>& form, int order, int flag, int hint) {
    const auto spec = record(form.kind, order, flag, hint);
    const auto src = form.source(order);
    Values x = oracle(unpacked(form.from, src, samples(order)), form.forward() ? -1 : 1);
    const double by = shift(flag, form.forward(), order);
    for (Value& v : x) v *= std::exp2(-(long double)by);
    const auto exact = packed(form.to, x, order);
    const bool isExact = order <= 2 && (flag != ScaleBySqrtN || order % 2 == 0) && (sizeof(S) == 2 || unit(form.kind) < 0x1p-24);
    long double squares = 0;
    for (const Value& v : x) squares += std::norm(v);
    const long double rms = std::sqrt(squares / x.size());
    // Without a scale, and at the scales that leave about a quarter of the range, and 16 times as much.
    const int natural = std::max(0, int(std::log2(rms + 1))) - std::numeric_limits<D>::digits + 3;
    constexpr long double lo = std::numeric_limits<D>::min(), hi = std::numeric_limits<D>::max();
    for (int scale : {0, natural, natural - 4, natural + 6}) {
        const auto got = run(form, src, spec.get(), order, scale);
        const long double f = std::ldexp(1.0L, -scale), error = isExact ? 0 : errorOf(unit(form.kind), order) * f;
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
    forEachForm([](const auto& form) {
        for (int order = 0; order <= 14; ++order)
            for (int flag : kFlags)
                for (int hint : {HintNone, HintAccurate})
                    if (hint == HintNone || (isShort(form.kind) && order <= 5))
                        for (int round = 0; round < std::max(1, 64 >> order); ++round) expectOracle(form, order, flag, hint);
    });
}

TEST(FftInteger, LargeOrders) {
    for (int order : {16, 17}) {
        expectOracle(kForms16sc[0], order, NoScale, HintNone);
        expectOracle(kForms32s[1], order, ScaleBySqrtN, HintNone);
        expectOracle(kForward16s32s[0], order, NoScale, HintNone);
    }
}

// An impulse at 0 is exact at every step, and its zeros stay zeros at any scale.
template <class S, class D> void expectImpulse(const Form<S, D>& form, int order, int value) {
    const auto spec = record(form.kind, order, NoScale);
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
    forEachForm([](const auto& form) {
        for (int order : {0, 1, 3, 4, 6, 10})
            for (int value : {0, 1, -1, 3, -5, 1000, -32768}) expectImpulse(form, order, value);
    });
}

// Orders 1 to 3 of 16 bits with a hint that allows tables of their own, and one that does not.
TEST(FftInteger, HintsDoNotChangeResults) {
    forEachForm([](const auto& form) {
        for (int order = 1; order <= 4; ++order) {
            const auto src = form.source(order);
            const auto want = run(form, src, record(form.kind, order, ScaleBySqrtN, HintNone).get(), order, 1);
            for (int hint : {1, 2, -1}) EXPECT_TRUE(same(want, run(form, src, record(form.kind, order, ScaleBySqrtN, hint).get(), order, 1))) << form.name;
        }
    });
}

// ---- where things lie, and records ----------------------------------------------------------------------------------------------------------

TEST(FftInteger, GivesTheSameWhereverThingsLie) {
    forEachForm([](const auto& form) {
        for (int order = 0; order <= 16; order += order < 11 ? 1 : 5) expectSameEverywhere(form, order, 1);
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
        ASSERT_EQ(
            tevsFFTFwd_CToC_16s_Sfs(both.data(), both.data() + n, both.data() + n, both.data(), static_cast<const FFTSpec_C_16s*>(spec.get()), order, nullptr),
            StatusOk);
        std::rotate(both.begin(), both.begin() + ptrdiff_t(n), both.end());
        EXPECT_TRUE(same(want, both)) << order;
    }
}

TEST(FftInteger, IgnoresAndKeepsTheCallersRounding) {
    forEachForm([](const auto& form) {
        for (int order : {0, 1, 3, 5, 10}) expectOwnRounding(form, order);
    });
}

TEST(FftIntegerRecord, Sizes) {
    constexpr Sizes c16[] = {4, 352, 64, 288, 10, 9424, 1072, 16416, 15, 295120, 32816, 524320, 16, 622800, 65584, 557088, 20, 9568464, 1048624, 8519712};
    constexpr Sizes c16sc[] = {{0, 68, 0, 0}, {1, 112, 32, 32}, {2, 128, 32, 48}, {3, 160, 32, 80}};
    constexpr Sizes c16s[] = {{0, 68, 0, 0}, {1, 112, 32, 40}, {2, 128, 32, 64}, {3, 160, 32, 112}};
    constexpr Sizes c16Accurate[] = {{0, 68, 0, 0}, {1, 176, 16, 32}, {3, 176, 16, 80}};
    constexpr Sizes r16[] = {{10, 8912, 1072, 8232}, {15, 278736, 32816, 262184}, {16, 557264, 65584, 524328}, {20, 9044176, 1048624, 4325416}};
    constexpr Sizes r16s[] = {{0, 68, 0, 0}, {1, 128, 32, 32}, {2, 144, 32, 40}, {3, 192, 32, 56}, {4, 240, 64, 88}};
    constexpr Sizes r16Accurate[] = {{0, 68, 0, 0}, {1, 176, 16, 32}, {3, 176, 16, 56}, {4, 240, 64, 88}};
    constexpr Sizes c32[] = {0,  148,   0,    16,    1,  148,    0,     32,     3,  148,     0,      128,     4,  464,      80,      544,
                             10, 17600, 2096, 32800, 15, 590016, 65584, 557088, 16, 1179840, 131120, 1114144, 20, 17957056, 2097200, 16908320};
    constexpr Sizes r32[] = {0,  148,   0,    24,    1,  148,    0,     32,     3,  148,     0,      80,     4,  276,      80,      144,
                             10, 17076, 2096, 16432, 15, 573620, 65584, 294960, 16, 1114292, 131120, 557104, 20, 17432756, 2097200, 8519728};
    constexpr Sizes r16s32s[] = {0,  144,  0,    12,   1,  144,    0,     16,     3,  144,    0,     40,     4,  208,     64,      72,
                                 10, 8880, 1072, 8232, 15, 278704, 32816, 262184, 16, 557232, 65584, 524328, 20, 9044144, 1048624, 4325416};
    for (int hint : {0, 1, 2, 99}) {
        const auto check = [&](const Kind& kind, std::span<const Sizes> rows) {
            expectSizes(kind, hint, rows, 28, [&](int order) { return !isShort(kind) && order <= (kind.name[0] == 'R' ? 4 : 3) ? 16 : 0; });
        };
        check(kC32sc, c32), check(kC32s, c32), check(kR32s, r32), check(kR16s32s, r16s32s);
        check(kC16sc, c16), check(kC16s, c16), check(kR16s, r16);
        const bool accurate = hint == HintAccurate;
        check(kC16sc, accurate ? std::span<const Sizes>(c16Accurate) : c16sc);
        check(kC16s, accurate ? std::span<const Sizes>(c16Accurate) : c16s);
        check(kR16s, accurate ? std::span<const Sizes>(r16Accurate) : r16s);
    }
}

TEST(FftIntegerRecord, LiesAnywhere) {
    forEachForm([](const auto& form) {
        if (form.forward() && (form.to == Ccs || form.to < Reals))
            for (int order = 0; order <= 17; order += order < 10 ? 1 : 7)
                for (int hint : {HintNone, HintAccurate}) expectInitAnywhere(form, order, hint, order < 8 ? 1 : 7);
    });
}

TEST(FftInteger, ChecksInOrder) {
    for (const Kind* kind : kKinds) expectChecks(*kind, kKinds);
    forEachForm([](const auto& form) { expectCallChecks(form); });
    // Each of four arrays.
    const auto record = test::record(kC32s, 3, NoScale);
    const auto* const spec = static_cast<const FFTSpec_C_32s*>(record.get());
    int32_t v[8] = {};
    EXPECT_EQ(tevsFFTFwd_CToC_32s_Sfs(v, nullptr, v, v, spec, 0, nullptr), StatusNullPtr);
    EXPECT_EQ(tevsFFTFwd_CToC_32s_Sfs(v, v, v, nullptr, spec, 0, nullptr), StatusNullPtr);
    EXPECT_EQ(tevsFFTInv_CToC_32s_ISfs(v, nullptr, spec, 0, nullptr), StatusNullPtr);
}

}   // namespace
