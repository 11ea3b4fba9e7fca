#include <algorithm>

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

const Kind kKinds[] = {
    TEVS_FFT_KIND(C_32fc, 4, f32, f32, 4), TEVS_FFT_KIND(C_32f, 5, f32, f32, 4), TEVS_FFT_KIND(R_32f, 6, f32, f32, 4),
    TEVS_FFT_KIND(C_64fc, 7, f64, f64, 4), TEVS_FFT_KIND(C_64f, 8, f64, f64, 4), TEVS_FFT_KIND(R_64f, 9, f64, f64, 4),
};
const Form kForms[] = {
    TEVS_COMPLEX_FORMS(kKinds[0], Pairs, TEVS_FFT_PAIRS, 32fc, , _I),
    TEVS_COMPLEX_FORMS(kKinds[1], Parts, TEVS_FFT_PARTS, 32f, , _I),
    TEVS_REAL_FORMS(kKinds[2], TEVS_FFT_PAIRS, 32f, , _I),
    TEVS_COMPLEX_FORMS(kKinds[3], Pairs, TEVS_FFT_PAIRS, 64fc, , _I),
    TEVS_COMPLEX_FORMS(kKinds[4], Parts, TEVS_FFT_PARTS, 64f, , _I),
    TEVS_REAL_FORMS(kKinds[5], TEVS_FFT_PAIRS, 64f, , _I),
};
enum { kFwdPairs, kInvPairs, kFwdParts, kFwdReal = 4, kInvReal = 7 };   // of either precision's forms
const Form* const kPrecisions[] = {kForms, kForms + std::size(kForms) / 2};

// The stages' rounding errors are independent and add up in squares; 0.6 of the type's unit * sqrt(order) is measured, at all levels and orders. One wrong value
// of the 2^22 is an error of 2^-11.
double bound(const Form& form, size_t n) { return 0.85 * roundings(form.in().number, n); }
bool isSingle(const Form& form) { return form.in().number == Number::f32; }
double unit(const Form& form) { return isSingle(form) ? 0x1p-24 : 0x1p-53; }

// ---- results ----------------------------------------------------------------------------------------------------------------------

// Short transforms meet several signals: over a few values, the error's norm scatters.
void expectOracle(const Form& form, int order, std::span<const int> flags) {
    const size_t n = samples(order);
    for (const int flag : flags) {
        const Spec spec(form.kind, size_t(order), flag, HintNone);
        Values want, got;
        for (int round = 0; round < std::max(1, 512 >> order); ++round) {
            const Vector src = form.source(n);
            for (const Value& v : oracle(unpacked(form.from, reals(src), n), form.forward() ? -1 : 1)) want.push_back(v * factor(flag, form.forward(), n));
            for (const Value& v : unpacked(form.to, reals(form.run(src, spec, n)), n)) got.push_back(v);
        }
        EXPECT_LE(distance(want, got), bound(form, n)) << ::testing::PrintToString(form) << " order " << order << " flag " << flag;
    }
}

TEST(Fft, EqualsOracle) {
    for (int order = 0; order <= 22; order += order < 18 ? 1 : 2)
        for (const Form& form : kForms) {
            const bool real = form.from == Reals || form.to == Reals;
            if (order >= (real ? 18 : 20) && form.forward() != (order == 20)) continue;
            if (order > 20 && (!isSingle(form) || real)) continue;
            expectOracle(form, order, std::span(kFlags).first(order <= 12 ? 4 : order == 16 ? 2 : 1));
        }
}

// What an impulse of 1 becomes.
Values impulseResponse(const Form& form, Ptr spec, size_t n, size_t at) {
    Vector x(form.in(), 2 * n);
    x.setPart(2 * at, 1);
    return unpacked(Pairs, reals(form.run(x, spec, n)), n);
}

// The norm hides one poor factor among many. What an impulse becomes is a product of factors, alone: roots of unity to a few roundings, and exact where
// there is no factor but i.
TEST(Fft, ImpulsesGiveRoots) {
    // Units, by order; measured, and a little. sqrt(1/2) is off by 0.14 units in single, by 0.44 in double precision.
    constexpr double kWorst[][10] = {{0, 0, 0, 0.3, 0.55, 0.9, 1.65, 2.2, 2.9, 3.9}, {0, 0, 0, 0.65, 0.9, 1.2, 1.65, 2.9, 3.5, 5.2}};
    for (const Form* form : kPrecisions)
        for (int order = 0; order <= 9; ++order) {
            const size_t n = samples(order);
            const Spec spec(form->kind, size_t(order), NoScale, HintNone);
            double worst = 0;
            for (size_t at = 0; at < n; ++at) {
                const Values y = impulseResponse(*form, spec, n, at);
                for (size_t k = 0; k < n; ++k) worst = std::max(worst, double(std::abs(y[k] - std::conj(root(at * k % n, n)))));
            }
            EXPECT_LE(worst, kWorst[!isSingle(*form)][order] * unit(*form) + 1e-18) << order;
        }
}

// Bins below the first radix see an early impulse through one factor, and are it: rounded once. The extended reference is 2^-11 of a unit off at most.
TEST(Fft, FactorsAreCorrectlyRounded) {
    for (const Form* form : kPrecisions) {
        const auto offBy = [=](Real got, Real want) { return double(std::abs(got - want) / (2 * unit(*form) * std::exp2(Real(std::ilogb(want))))); };
        for (int order : {4, 5, 7, 9, 12, 13}) {
            const size_t n = samples(order);
            const Spec spec(form->kind, size_t(order), NoScale, HintNone);
            for (size_t at = 1; at < n / 16; at += 1 + n / 16 / 97) {
                const Values y = impulseResponse(*form, spec, n, at);
                for (size_t k = 1; k < 4; ++k) {
                    const Value want = std::conj(root(at * k, n));
                    ASSERT_LE(std::max(offBy(y[k].real(), want.real()), offBy(y[k].imag(), want.imag())), 0.5 + 0x1p-9) << order << " " << at << " " << k;
                }
            }
        }
    }
}

// One value of the definition's sum: Horner's rule over blocks, and over their sums.
Value bin(const Vector& x, size_t k) {
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
        for (size_t i = first + kBlock; i-- > first;) block = step(block, w, {x.part(2 * i), x.part(2 * i + 1)});
        sum = step(sum, between, block);
    }
    return sum;
}

// Where a whole oracle would take too long: a few values by the definition, and the way back. Both forms, the one with a buffer of the reported size.
TEST(Fft, LongTransforms) {
    for (const Form* form : kPrecisions) {
        // The longest in double precision takes 1.2 GiB.
        const std::vector<int> orders = isSingle(*form) ? std::vector{19, 21, 23, 24} : sizeof(void*) == 4 ? std::vector{19, 22} : std::vector{19, 21, 22, 24};
        for (int order : orders) {
            const size_t n = samples(order);
            const Spec spec(form->kind, size_t(order), ScaleBySqrtN, HintNone);
            const Vector x = form->source(n);
            Vector y = x;
            Guarded<uint8_t> buffer(spec.buffer(), {5, true});
            ASSERT_EQ(form->inPlace(y, spec, n, 0, buffer.data()), StatusOk);
            ASSERT_TRUE(buffer.intact());
            const Real f = factor(ScaleBySqrtN, true, n), limit = bound(*form, n);
            for (size_t k : {size_t{1}, n / 3, n - 7})   // a value's error is that of the norm per value, scattered
                EXPECT_LE(std::abs(bin(x, k) * f - Value(y.part(2 * k), y.part(2 * k + 1))), 4 * limit) << order << " " << k;
            ASSERT_EQ(form[kInvPairs].inPlace(y, spec, n), StatusOk);
            for (size_t at = 0; at < 2 * n; at += samples(16))
                ASSERT_LE(distance(reals(x.slice(at, samples(16))), reals(y.slice(at, samples(16)))), std::numbers::sqrt2 * limit) << order << " " << at;
        }
    }
}

TEST(Fft, CcsHasZerosAndNeedsNone) {
    for (const Form* forms : kPrecisions)
        for (int order : {0, 1, 3, 4, 10, 17}) {
            const Form &forward = forms[kFwdReal], &inverse = forms[kInvReal];
            const size_t n = samples(order);
            const Spec spec(forward.kind, size_t(order), NoScale, HintNone);
            Vector x = forward.run(forward.source(n), spec, n);
            EXPECT_TRUE(x.part(1) == 0 && x.part(x.size() - 1) == 0);
            const Vector want = inverse.run(x, spec, n);
            for (size_t zero : {size_t{1}, x.size() - 1}) x.setPart(zero, NAN);
            EXPECT_TRUE(same(want, inverse.run(x, spec, n))) << order;
        }
}

TEST(Fft, ArraysMayBeShared) {
    for (const Form* forms : kPrecisions)
        for (int order : {0, 2, 3, 5, 8, 13, 14, 17}) expectShareableArrays(forms[kFwdParts], size_t(order), samples(order));
}

// ---- where things lie, and records --------------------------------------------------------------------------------------------------

TEST(Fft, GivesTheSameBitsWhereverThingsLie) {
    for (size_t order = 0; order <= 18; ++order)
        for (const Form& form : kForms) expectSameEverywhere(form, order, samples(int(order)));
}

TEST(Fft, IgnoresAndKeepsTheCallersRounding) {
    for (int order : {0, 1, 2, 3, 5, 7, 10, 17})
        for (const Form& form : kForms) expectOwnRounding(form, size_t(order), samples(order));
}

constexpr Sizes kComplex32[] = {0,  96,   0,    0,    1,  96,     0,     0,      3,  96,     0,     0,     4,  272,     48,      144,
                                10, 9344, 1056, 8208, 15, 295040, 32800, 262160, 16, 622720, 65568, 32784, 20, 9568384, 1048608, 131088};
constexpr Sizes kReal32[] = {0,  96,   0,    0,    1,  96,     0,     0,      3,  96,     0,     0,      4,  160,     48,      0,
                             10, 8832, 1056, 4112, 15, 278656, 32800, 131088, 16, 557184, 65568, 262160, 20, 9044096, 1048608, 131088};

constexpr Sizes kComplex64[] = {3,  100,    0,     0,     4,  416,    64,    272,   10, 17552,   2080,   16400, 13, 139408,   16416,   131088,
                                14, 311440, 32800, 32784, 15, 589968, 65568, 32784, 16, 1179792, 131104, 65552, 20, 17957008, 2097184, 131088};
constexpr Sizes kReal64[] = {0,    100,  0,  0,      3,     100,   0,  0,       4,      228,   64, 0,        10,      17028,
                             2080, 8208, 15, 573572, 65568, 32784, 16, 1114244, 131104, 32784, 20, 17432708, 2097184, 131088};

TEST(FftRecord, Sizes) {
    for (const Kind& kind : kKinds) {
        const bool real = kind.name[0] == 'R', single = kind.time == Number::f32;
        const std::span<const Sizes> ofSingle = real ? std::span<const Sizes>(kReal32) : kComplex32, wide = real ? std::span<const Sizes>(kReal64) : kComplex64;
        expectSizes(kind, 99, single ? ofSingle : wide, single ? 28 : 27, [](int) { return 0; });
    }
}

TEST(FftRecord, LiesAnywhere) {
    for (int order = 0; order <= 18; ++order)
        for (const Form* forms : kPrecisions)
            for (int form : {kFwdPairs, kFwdParts, kFwdReal}) expectInitAnywhere(forms[form], order, HintFast, order < 12 ? 1 : 7);
}

TEST(Fft, ChecksInOrder) {
    for (const Kind& kind : kKinds) expectChecks(kind);
    for (const Form& form : kForms)
        for (int order : {0, 5}) expectCallChecks(form, Spec(form.kind, size_t(order), NoScale, HintNone), samples(order));
}

}   // namespace
