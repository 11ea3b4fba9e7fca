#include <algorithm>
#include <climits>
#include <cmath>

#include "support/records.h"
#include "support/values.h"

using namespace test;

namespace {

enum { kC16sc, kC16s, kR16s, kC32sc, kC32s, kR32s, kR16s32s };
const Kind kKinds[] = {
    TEVS_FFT_KIND(C_16sc, 1, i16, i16, 1),
    TEVS_FFT_KIND(C_16s, 2, i16, i16, 1),
    TEVS_FFT_KIND(R_16s, 3, i16, i16, 1),
    TEVS_FFT_KIND(C_32sc, 0x4C4D5364, i32, i32, 4),
    TEVS_FFT_KIND(C_32s, 0x4C4D5365, i32, i32, 4),
    TEVS_FFT_KIND(R_32s, 0x4C4D5366, i32, i32, 4),
    TEVS_FFT_KIND(R_16s32s, 0x4C4D5367, i16, i32, 4),
};
// 16 bits both in time and frequency; the unit of the floats within.
bool isShort(const Kind& kind) { return kind.frequency == Number::i16; }
double unit(const Kind& kind) { return kind.time == Number::i16 ? 0x1p-24 : 0x1p-53; }

const Form kForms[] = {
    TEVS_COMPLEX_FORMS(kKinds[kC16sc], Pairs, TEVS_FFT_PAIRS, 16sc, _Sfs, _ISfs),
    TEVS_COMPLEX_FORMS(kKinds[kC16s], Parts, TEVS_FFT_PARTS, 16s, _Sfs, _ISfs),
    TEVS_REAL_FORMS(kKinds[kR16s], TEVS_FFT_PAIRS, 16s, _Sfs, _ISfs),
    TEVS_COMPLEX_FORMS(kKinds[kC32sc], Pairs, TEVS_FFT_PAIRS, 32sc, _Sfs, _ISfs),
    TEVS_COMPLEX_FORMS(kKinds[kC32s], Parts, TEVS_FFT_PARTS, 32s, _Sfs, _ISfs),
    TEVS_REAL_FORMS(kKinds[kR32s], TEVS_FFT_PAIRS, 32s, _Sfs, _ISfs),
    {kKinds[kR16s32s], "Fwd_RToCCS", Reals, Ccs, erased<tevsFFTFwd_RToCCS_16s32s_Sfs>, nullptr},
    {kKinds[kR16s32s], "Inv_CCSToR", Ccs, Reals, erased<tevsFFTInv_CCSToR_32s16s_Sfs>, nullptr},
};

// ---- results --------------------------------------------------------------------------------------------------------------------------------

// A float result has an error of at most so much of the root mean square of all of them, or of itself where it stands out: the norm's error is measured, a
// value's is scattered around it. Beside that, what one of them stands out by is rounded once where it cancels, as the mean does in bin N/2.
double errorOf(double epsilon, int order) { return 6 * 0.85 * epsilon * std::sqrt(order + 1.0); }

// The integer is the nearest one to something that is this close to the exact result; where sums and factors are exact, to the exact result itself.
void expectOracle(const Form& form, int order, int flag, int hint) {
    const size_t n = samples(order);
    const Spec spec(form.kind, size_t(order), flag, hint);
    const Vector src = form.source(n);
    Values x = oracle(unpacked(form.from, reals(src), n), form.forward() ? -1 : 1);
    for (Value& v : x) v *= factor(flag, form.forward(), n);
    const auto exact = packed(form.to, x);
    const bool isExact = order <= 2 && (flag != ScaleBySqrtN || order % 2 == 0) && (form.in().number == Number::i16 || unit(form.kind) < 0x1p-24);
    long double squares = 0, largest = 0;
    for (const Value& v : x) {
        squares += std::norm(v);
        largest = std::max(largest, std::abs(v));
    }
    const long double rms = std::sqrt(squares / x.size());
    // Without a scale, and at the scales that leave about a quarter of the range, and 16 times as much.
    const auto [lo, hi] = rangeOf(form.out().number);
    const int natural = std::max(0, int(std::log2(rms + 1))) - std::ilogb(lo) + 3;
    for (int scale : {0, natural, natural - 4, natural + 6}) {
        const auto got = reals(form.run(src, spec, n, scale));
        const long double f = std::ldexp(1.0L, -scale), rounding = isExact ? 0 : unit(form.kind) * f, error = errorOf(rounding, order);
        for (size_t i = 0; i < got.size(); ++i) {
            ASSERT_LE(std::abs(got[i] - std::clamp(exact[i] * f, lo, hi)), 0.5L + error * std::max(rms, std::abs(exact[i])) + rounding * largest + 1e-7L)
                << ::testing::PrintToString(form) << " order " << order << " flag " << flag << " hint " << hint << " scale " << scale << " at " << i;
            if (!isExact) continue;   // else a multiple of 1/4, and the oracle's own error
            ASSERT_EQ(got[i], std::nearbyint(std::clamp(std::nearbyint(exact[i] * 4) / 4 * f, lo, hi)))
                << ::testing::PrintToString(form) << " order " << order << " flag " << flag << " scale " << scale << " at " << i;
        }
    }
}

TEST(FftInteger, EqualsOracle) {
    for (const Form& form : kForms)
        for (int order = 0; order <= 14; ++order)
            for (int flag : kFlags)
                for (int hint : {HintNone, HintAccurate})
                    if (hint == HintNone || (isShort(form.kind) && order <= 5))
                        for (int round = 0; round < std::max(1, 64 >> order); ++round) expectOracle(form, order, flag, hint);
}

TEST(FftInteger, LargeOrders) {
    for (int order : {16, 17}) {
        expectOracle(kForms[0], order, NoScale, HintNone);
        expectOracle(kForms[13], order, ScaleBySqrtN, HintNone);
        expectOracle(kForms[20], order, NoScale, HintNone);
    }
}

// An impulse at 0 is exact at every step, and its zeros stay zeros at any scale.
void expectImpulse(const Form& form, int order, int value) {
    const size_t n = samples(order);
    const Spec spec(form.kind, size_t(order), NoScale, HintNone);
    Values x(n);
    x[0] = value;
    const auto parts = packed(form.from, x), exact = packed(form.to, Values(n, value));
    Vector src(form.in(), parts.size());
    for (size_t i = 0; i < parts.size(); ++i) src.setPart(i, parts[i]);
    const auto [lo, hi] = rangeOf(form.out().number);
    for (int scale : {INT_MIN, -200, -33, -32, -31, -16, -15, -14, -1, 0, 1, 2, 3, 9, 10, 14, 15, 16, 17, 31, 32, 33, 200, INT_MAX}) {
        const auto got = reals(form.run(src, spec, n, scale));
        for (size_t i = 0; i < got.size(); ++i)
            ASSERT_EQ(got[i], std::clamp(std::nearbyint(std::ldexp(exact[i], -std::clamp(scale, -1000, 1000))), lo, hi))
                << ::testing::PrintToString(form) << " order " << order << " value " << value << " scale " << scale << " at " << i;
    }
}
TEST(FftInteger, AnyScaleFactor) {
    for (const Form& form : kForms)
        for (int order : {0, 1, 3, 4, 6, 10})
            for (int value : {0, 1, -1, 3, -5, 1000, -32768}) expectImpulse(form, order, value);
}

// Orders 1 to 3 of 16 bits with a hint that allows tables of their own, and one that does not.
TEST(FftInteger, HintsDoNotChangeResults) {
    for (const Form& form : kForms)
        for (size_t order = 1; order <= 4; ++order) {
            const size_t n = samples(int(order));
            const Vector src = form.source(n);
            const auto run = [&](int hint) { return form.run(src, Spec(form.kind, order, ScaleBySqrtN, hint), n, 1); };
            for (int hint : {1, 2, -1}) EXPECT_TRUE(same(run(HintNone), run(hint))) << ::testing::PrintToString(form);
        }
}

// ---- where things lie, and records ----------------------------------------------------------------------------------------------------------

TEST(FftInteger, GivesTheSameWhereverThingsLie) {
    for (const Form& form : kForms)
        for (int order = 0; order <= 16; order += order < 11 ? 1 : 5) expectSameEverywhere(form, size_t(order), samples(order));
}

TEST(FftInteger, ArraysMayBeShared) {
    for (const Form& form : kForms)
        for (int order : {0, 1, 3, 5, 9})
            if (form.parts) expectShareableArrays(form, size_t(order), samples(order));
}

TEST(FftInteger, IgnoresAndKeepsTheCallersRounding) {
    for (const Form& form : kForms)
        for (int order : {0, 1, 3, 5, 10}) expectOwnRounding(form, size_t(order), samples(order));
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
        const auto check = [&](int k, std::span<const Sizes> rows) {
            const Kind& kind = kKinds[k];
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
    for (const Form& form : kForms)
        if (form.forward() && (form.to == Ccs || form.to < Reals))
            for (int order = 0; order <= 17; order += order < 10 ? 1 : 7)
                for (int hint : {HintNone, HintAccurate}) expectInitAnywhere(form, order, hint, order < 8 ? 1 : 7);
}

TEST(FftInteger, ChecksInOrder) {
    for (const Kind& kind : kKinds) expectChecks(kind);
    for (const Form& form : kForms)
        for (int order : {0, 5}) expectCallChecks(form, Spec(form.kind, size_t(order), NoScale, HintNone), samples(order));
}

}   // namespace
