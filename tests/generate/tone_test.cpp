#include <climits>
#include <cmath>
#include <functional>
#include <memory>
#include <numbers>

#include "support/control_words.h"
#include "support/elements.h"

using namespace test;

namespace {

using Exact = long double;
constexpr Exact kTurn = 2 * std::numbers::pi_v<Exact>;
constexpr double kTwoPi = 6.283185307179586;

// rFreq * n modulo 1, with products that are exact in 64 bits.
Exact turnsOf(double rFreq, int64_t n) {
    Exact sum = 0;
    for (int shift = 0; shift < 44; shift += 11) sum += std::fmod(std::ldexp(Exact(rFreq), shift) * Exact(n >> shift & 0x7ff), Exact(1));
    return sum - std::floor(sum);
}

struct Free {
    void operator()(ToneState* s) const { EXPECT_EQ(tevsToneFree(s), StatusOk); }
};
using Oscillator = std::unique_ptr<ToneState, Free>;
Oscillator at(double rFreq, double phase) {
    ToneState* s = nullptr;
    EXPECT_EQ(tevsToneInitAlloc(&s, rFreq, phase), StatusOk);
    return Oscillator(s);
}
double phaseOf(const Oscillator& o) {
    double phase = -1;
    EXPECT_EQ(tevsToneGetPhase(o.get(), &phase), StatusOk);
    EXPECT_TRUE(phase >= 0 && phase < kTwoPi);
    return phase;
}

template <class T> std::vector<double> parts(const std::vector<T>& v) {
    std::vector<double> p;
    for (const T& x : v)
        if constexpr (Complex<T>)
            p.insert(p.end(), {double(x.re), double(x.im)});
        else
            p.push_back(x);
    return p;
}
template <class T> struct PartOf { using Type = T; };
template <Complex T> struct PartOf<T> { using Type = decltype(T::re); };
template <class T> using Part = typename PartOf<T>::Type;
template <class T> constexpr bool kInteger = std::is_integral_v<Part<T>>;
template <class T> Exact boundOf(Exact magn) { return sizeof(Part<T>) == 8 ? magn * 0x1p-51L : magn * 0x1p-23L + (kInteger<T> ? 0.5L : 0); }

// Each part of v against magn * (cos, sin) of phi + turns(n), within the bound and `slack` radians.
template <class T, class Turns>::testing::AssertionResult follows(const std::vector<T>& v, Exact magn, Exact phi, Turns turns, Exact slack) {
    const auto got = parts(v);
    const size_t k = got.size() / v.size();
    for (size_t i = 0; i < got.size(); ++i) {
        const Exact theta = phi + kTurn * turns(int64_t(i / k));
        Exact want = magn * (i % k ? std::sin(theta) : std::cos(theta));
        if (kInteger<T>) want = std::clamp<Exact>(want, -32768, 32767);
        if (!(std::fabs(got[i] - want) <= boundOf<T>(magn) + slack * magn))
            return ::testing::AssertionFailure() << got[i] << " at " << i << ", want " << double(want);
    }
    return ::testing::AssertionSuccess();
}

template <class T> struct Forms {
    Status (*tone)(T*, int, double, ToneState*);
    Status (*direct)(T*, int, double, double, double*);
};
const auto kForms = std::tuple(Forms<int16_t>{tevsTone_16s, tevsTone_Direct_16s}, Forms<Complex16s>{tevsTone_16sc, tevsTone_Direct_16sc},
                               Forms<float>{tevsTone_32f, tevsTone_Direct_32f}, Forms<Complex32f>{tevsTone_32fc, tevsTone_Direct_32fc},
                               Forms<double>{tevsTone_64f, tevsTone_Direct_64f}, Forms<Complex64f>{tevsTone_64fc, tevsTone_Direct_64fc});
template <class Check> void forEachType(Check check) {
    std::apply([&](auto... f) { (check(f), ...); }, kForms);
}
template <class T> std::vector<T> block(const Forms<T>& f, const Oscillator& o, int len, double magn = 1000) {
    std::vector<T> v(size_t(len), T{});
    EXPECT_EQ(f.tone(v.data(), len, magn, o.get()), StatusOk);
    return v;
}

const double kBelowHalf = std::nextafter(0.5, 0), kBelowTwoPi = std::nextafter(kTwoPi, 0);
constexpr Exact kPhaseError = 0x1p-52L * kTurn;   // of an initial phase

TEST(Tone, IsACosineOfAnyFrequencyPhaseAndMagnitude) {
    forEachType([]<class T>(Forms<T> f) {
        for (double rFreq : {0.0, 0.01, 0.1234567, 0.25, kBelowHalf, 5e-324, 1e-19, 0x1p-33, 0.49})
            for (double phase : {0.0, 1.0, 3.9, kBelowTwoPi, 1e-300})
                for (double magn : {1.0, 0.7, 12345.678, 32767.0}) {
                    for (int len : {1, 2, 3, 7, 16, 33, 70, 1003}) {
                        const Oscillator o = at(rFreq, phase);
                        const auto turns = [=](int64_t n) { return turnsOf(rFreq, n); };
                        const auto v = block(f, o, len, magn);
                        ASSERT_TRUE(follows(v, magn, phase, turns, kPhaseError)) << rFreq << " " << phase << " " << magn << " " << len;
                        double p = phase;
                        std::vector<T> direct(v.size());
                        ASSERT_EQ(f.direct(direct.data(), len, magn, rFreq, &p), StatusOk);
                        ASSERT_TRUE(same(v, direct));
                        ASSERT_EQ(p, phaseOf(o));
                        ASSERT_LE(std::fabs(std::remainder(p - phase - kTurn * turns(len), kTurn)), 0x1p-49L) << rFreq << " " << phase;
                    }
                }
    });
}

// The upper words of single precision: 2^21 of them, in all of the turn. And magnitudes that leave no bit to spare.
TEST(Tone, SinglePrecisionOfEveryPhase) {
    for (double magn : {1.0, 1 + 0x1p-24, 1.5, 1.9999999}) {
        const double rFreq = 0x1.ffff1p-12 / 3;
        const Oscillator o = at(rFreq, 0);
        const auto v = block(std::get<3>(kForms), o, 1 << 19, magn);
        ASSERT_TRUE(follows(
            v, magn, 0, [=](int64_t n) { return turnsOf(rFreq, n); }, 0x1p-31L))
            << magn;
    }
}

TEST(Tone, QuarterTurnsAreExact) {
    const auto expect = [](auto type, double magn) {
        using T = decltype(type);
        const auto v = parts(block(std::get<Forms<T>>(kForms), at(0.25, 0), 101, magn));
        const double want[] = {magn, 0, 0, magn, -magn, 0, 0, -magn};
        const size_t step = Complex<T> ? 1 : 2;
        for (size_t i = 0; i < v.size(); ++i) ASSERT_EQ(v[i], want[i * step % 8]) << i;
    };
    for (float magn : {1.0f, 0.1f, 32767.0f}) expect(float{}, magn), expect(Complex32f{}, magn), expect(double{}, magn * 1.1), expect(Complex64f{}, magn * 1.1);
    expect(int16_t{}, 32767), expect(Complex16s{}, 1);
}

TEST(Tone, MagnitudesOfAnySize) {
    const auto ratios = [](auto type, std::initializer_list<double> magnitudes) {
        using T = decltype(type);
        const auto& f = std::get<Forms<T>>(kForms);
        const auto unit = block(f, at(0.0123, 0.3), 70, 1);
        for (double magn : magnitudes) {
            const auto v = block(f, at(0.0123, 0.3), 70, magn);
            for (size_t i = 0; i < 70; ++i)
                ASSERT_NEAR(v[i], T(unit[i] * magn), std::fabs(unit[i] * magn) * 2e-7 + std::numeric_limits<T>::denorm_min()) << magn;
        }
    };
    ratios(float{}, {1e-45, 1e-38, 1e-30, 1e20, 3e38});
    ratios(double{}, {5e-324, 1e-310, 1e-290, 1e290, 1.7e308});
    const auto f = block(std::get<2>(kForms), at(0.0625, 0), 9, 1e39);   // beyond the type at its peak, not near zeros
    EXPECT_TRUE(std::isinf(f[0]) && f[4] == 0 && std::isinf(f[8]) && f[8] < 0 && std::isinf(f[2]));
    const auto d = block(std::get<4>(kForms), at(0.125, 0), 5, INFINITY);
    EXPECT_TRUE(d[0] == INFINITY && d[1] == INFINITY && std::isnan(d[2]) && d[3] == -INFINITY);
    const std::vector<int16_t> want = {32767, 32767, 0, -32768, -32768};
    for (double magn : {double(INFINITY), 1e300, 1e9}) EXPECT_TRUE(same(want, block(std::get<0>(kForms), at(0.125, 0), 5, magn))) << magn;
}

TEST(Tone, ALongStreamKeepsItsPhase) {
    constexpr int64_t n = int64_t{1} << 25;
    const double rFreq = 0.0123456789;
    const Oscillator o = at(rFreq, 1);
    std::vector<int16_t> v(1 << 16);
    for (int64_t i = 0; i < n; i += int64_t(v.size())) tevsTone_16s(v.data(), int(v.size()), 1, o.get());
    EXPECT_LE(std::fabs(std::remainder(phaseOf(o) - 1 - kTurn * turnsOf(rFreq, n), kTurn)), (n + 8192) * 0x1p-65L * kTurn + 0x1p-51L);
}

// A 32f tone at the centre of a line: no other line is above -140 dB.
TEST(Tone, IsPure) {
    constexpr int order = 14, n = 1 << order;
    const auto x = block(std::get<2>(kForms), at(1237.0 / n, 0.1), n, 1);
    FFTSpec_R_64f* spec;
    ASSERT_EQ(tevsFFTInitAlloc_R_64f(&spec, order, NoScale, HintNone), StatusOk);
    std::vector<double> y(x.begin(), x.end());
    ASSERT_EQ(tevsFFTFwd_RToPerm_64f_I(y.data(), spec, nullptr), StatusOk);
    for (size_t k = 1; k < n / 2; ++k) ASSERT_LE(std::hypot(y[2 * k], y[2 * k + 1]), k == 1237 ? n : 1e-7 * n / 2) << k;
    tevsFFTFree_R_64f(spec);
}

// ---- what changes under way ----------------------------------------------------------------------------------------------------------------

TEST(ToneGlide, SweepsLinearlyAndEndsOnTheExactSum) {
    for (double f0 : {0.0, 0.1, kBelowHalf})
        for (double f1 : {0.0, 0.3, 0.1000001, kBelowHalf})
            for (int glide : {1, 2, 511, 512, 513, 70001}) {
                const Oscillator o = at(f0, 0.5);
                block(std::get<5>(kForms), o, 3);
                ASSERT_EQ(tevsToneSetFreq(o.get(), f1, glide), StatusOk);
                const auto turns = [=](int64_t n) {
                    const Exact g = std::min<Exact>(Exact(n), glide), sweep = (Exact(f1) - Exact(f0)) * g * g / (2 * Exact(glide));
                    return turnsOf(f0, 3 + int64_t(g)) + sweep + turnsOf(f1, n - int64_t(g));
                };
                const auto v = block(std::get<5>(kForms), o, glide + 100);
                ASSERT_TRUE(follows(v, 1000, 0.5L, turns, 0x1p-45L * kTurn)) << f0 << " to " << f1 << " in " << glide;
                ASSERT_LE(std::fabs(std::remainder(phaseOf(o) - 0.5L - kTurn * turns(glide + 100), kTurn)), 0x1p-49L + glide * 0x1p-63L * kTurn)
                    << f0 << " to " << f1 << " in " << glide;
                // It stands at f1, and starts from there.
                ASSERT_EQ(tevsToneSetFreq(o.get(), f1, 1000), StatusOk);
                const double before = phaseOf(o);
                block(std::get<0>(kForms), o, 777);
                ASSERT_LE(std::fabs(std::remainder(phaseOf(o) - before - kTurn * turnsOf(f1, 777), kTurn)), 0x1p-48L);
            }
}

TEST(ToneGlide, IsBrokenOffAtTheFrequencyReached) {
    const Oscillator o = at(0.1, 0);
    tevsToneSetFreq(o.get(), 0.3, 4000);
    block(std::get<0>(kForms), o, 1000);
    tevsToneSetPhase(o.get(), 2);   // the glide goes on
    block(std::get<0>(kForms), o, 1000);
    EXPECT_NEAR(std::remainder(phaseOf(o) - 2 - kTurn * (0.15L * 1000 + 0.2L * 1e6L / 8000), kTurn), 0, 1e-12);
    tevsToneSetFreq(o.get(), 0.2, 1000);   // from 0.2
    tevsToneSetPhase(o.get(), 0);
    block(std::get<0>(kForms), o, 500);
    EXPECT_NEAR(std::remainder(phaseOf(o), kTurn), 0, 1e-12);
    tevsToneSetFreq(o.get(), 0.05, 0);
    block(std::get<0>(kForms), o, 10);
    EXPECT_NEAR(phaseOf(o), std::numbers::pi, 1e-12);
}

// Whatever the blocks and their types, a stream is the same to the bit.
TEST(Tone, AnyCutGivesTheSameBits) {
    const auto run = [](bool cut) {
        const Oscillator o = at(0.0371, 0.2);
        std::vector<Complex32f> all;
        for (int segment = 0; segment < 6; ++segment) {
            tevsToneSetFreq(o.get(), 0.03 * segment + 0.001, segment % 2 ? 1200 * segment : 0);
            const size_t end = all.size() + 2500;
            for (int n = 1; all.size() < end; n = 7 * n % 211 + 1) {
                const size_t from = all.size(), len = cut ? std::min(end - from, size_t(n)) : end - from;
                all.resize(from + len);
                if (cut && n % 5 == 0) {
                    Complex64f wide[256];
                    EXPECT_EQ(tevsTone_64fc(wide, int(len), 1, o.get()), StatusOk);
                    all.resize(from);
                    for (size_t i = 0; i < len; ++i) all.push_back({float(wide[i].re), float(wide[i].im)});
                } else {
                    EXPECT_EQ(tevsTone_32fc(&all[from], int(len), 1, o.get()), StatusOk);
                }
            }
        }
        return std::pair(all, phaseOf(o));
    };
    const auto [whole, phase] = run(false);
    const auto [pieces, phaseOfPieces] = run(true);
    EXPECT_EQ(phase, phaseOfPieces);
    for (size_t i = 0; i < whole.size(); ++i) ASSERT_TRUE(std::hypot(whole[i].re - pieces[i].re, whole[i].im - pieces[i].im) < 2e-7f) << i;
    forEachType([]<class T>(Forms<T> f) {
        const Oscillator a = at(0.0371, 3), b = at(0.0371, 3);
        tevsToneSetFreq(a.get(), 0.4, 2000), tevsToneSetFreq(b.get(), 0.4, 2000);
        const auto want = block(f, a, 5000);
        std::vector<T> got;
        for (int n = 1; got.size() < want.size(); n = 11 * n % 97 + 1)
            for (const T& x : block(f, b, int(std::min(size_t(n), want.size() - got.size())))) got.push_back(x);
        ASSERT_TRUE(same(want, got));
    });
}

// ---- mixing -----------------------------------------------------------------------------------------------------------------------------------

template <class S, class D> void mixes(Status (*mix)(const S*, D*, int, ToneState*), Status (*inPlace)(D*, int, ToneState*), double sign) {
    eachLength([&](int len) {
        const auto x = randomVector<S>(size_t(len));
        for (int glide : {0, 40}) {
            const Oscillator o = at(0.0321, 1.5), tone = at(0.0321, 1.5), again = at(0.0321, 1.5);
            for (auto* s : {&o, &tone, &again}) tevsToneSetFreq(s->get(), 0.4, glide);
            std::vector<D> y(x.size());
            ASSERT_EQ(mix(x.data(), y.data(), len, o.get()), StatusOk);
            const auto z = parts(block(std::get<5>(kForms), tone, len, 1)), got = parts(y);
            ASSERT_EQ(phaseOf(o), phaseOf(tone));
            const auto in = parts(x);
            for (size_t i = 0; i < x.size(); ++i) {
                const double re = Complex<S> ? in[2 * i] : in[i], im = Complex<S> ? in[2 * i + 1] : 0, c = z[2 * i], s = sign * z[2 * i + 1];
                const double bound = kInteger<S> ? 0.51 : std::hypot(re, im) * 0x1p-22, want[] = {re * c - im * s, re * s + im * c};
                for (size_t k = 0; k < got.size() / x.size(); ++k)
                    ASSERT_NEAR(got[got.size() / x.size() * i + k], kInteger<D> ? std::clamp(want[k], -32768.0, 32767.0) : want[k], bound)
                        << i << " of " << len;
            }
            if (!inPlace) continue;
            if constexpr (std::is_same_v<S, D>) {
                Guarded<D> v(x, Place{len % 4, len % 2 == 0});
                ASSERT_EQ(inPlace(v, len, again.get()), StatusOk);
                ASSERT_TRUE(same(y, v.values()) && v.intact());
            }
        }
    });
}
TEST(ToneMix, Shifts) {
    mixes(tevsToneMixUp_16sc, tevsToneMixUp_16sc_I, 1);
    mixes(tevsToneMixDown_16sc, tevsToneMixDown_16sc_I, -1);
    mixes(tevsToneMixUp_32fc, tevsToneMixUp_32fc_I, 1);
    mixes(tevsToneMixDown_32fc, tevsToneMixDown_32fc_I, -1);
    mixes<Complex32f, float>(tevsToneMixUp_32fc32f, nullptr, 1);
    mixes<float, Complex32f>(tevsToneMixDown_32f32fc, nullptr, -1);
}

// ---- the frame ----------------------------------------------------------------------------------------------------------------------------------

template <class T> uint64_t hashed(const std::vector<T>& v, uint64_t h) { return hashOf(v.data(), v.size() * sizeof(T), h); }

TEST(Tone, SameBitsAtEveryLevelInBothAbisAndInAnyMode) {
    generator().seed(5);
    const auto floats = randomVector<Complex32f>(777);
    const auto shorts = randomVector<Complex16s>(777);
    const auto run = [&] {
        uint64_t h = 7;
        forEachType([&]<class T>(Forms<T> f) {
            const Oscillator o = at(0.0371, 3);
            h = hashed(block(f, o, 901), h);
            tevsToneSetFreq(o.get(), 0.4, 700);
            h = hashed(block(f, o, 901, 0.3), h);
            double phase = phaseOf(o);
            std::vector<T> v(333);
            f.direct(v.data(), 333, 1e39, 0.02, &phase);
            h = hashOf(&phase, sizeof phase, hashed(v, h));
        });
        auto x = floats;
        auto y = shorts;
        const Oscillator o = at(0.0371, 3);
        tevsToneMixUp_32fc_I(x.data(), 777, o.get());
        tevsToneMixDown_16sc_I(y.data(), 777, o.get());
        return std::vector<uint64_t>{hashed(x, hashed(y, h))};
    };
    EXPECT_EQ(run()[0], 12735220112627238776u);
    expectOwnModes(run);
}

TEST(Tone, RecordsAtAnyAddress) {
    int size = 0;
    ASSERT_EQ(tevsToneGetStateSize(&size), StatusOk);
    for (int offset = 0; offset < 16; ++offset) {
        Guarded<uint8_t> memory(size_t(size), Place{offset, true});
        ToneState* s = nullptr;
        ASSERT_EQ(tevsToneInit(&s, 0.01, 0, memory), StatusOk);
        ASSERT_EQ(uintptr_t(s), (uintptr_t(memory.data()) + 15) / 16 * 16);
        float x[3];
        ASSERT_EQ(tevsTone_32f(x, 3, 1, s), StatusOk);
        ASSERT_EQ(tevsToneFree(s), StatusOk);
        ASSERT_EQ(tevsTone_32f(x, 3, 1, s), StatusOk);   // it remains
        ASSERT_TRUE(memory.intact());
    }
}

TEST(Tone, BadArguments) {
    const Oscillator o = at(0.1, 0.5);
    ToneState* const s = o.get();
    uint32_t stranger[32] = {1};
    const auto other = reinterpret_cast<ToneState*>(stranger);
    float x = 7;
    double phase = 7;
    ToneState* made = other;
    EXPECT_EQ(tevsToneGetStateSize(nullptr), StatusNullPtr);
    EXPECT_EQ(tevsToneInit(nullptr, 1, 7, nullptr), StatusNullPtr);
    EXPECT_EQ(tevsToneInit(&made, 1, 7, nullptr), StatusNullPtr);
    EXPECT_EQ(tevsToneInitAlloc(nullptr, 1, 7), StatusNullPtr);
    for (double f : {0.5, -1e-300, double(NAN)}) {
        EXPECT_EQ(tevsToneInitAlloc(&made, f, 7), StatusToneFreq);
        EXPECT_EQ(tevsToneSetFreq(s, f, -1), StatusToneFreq);
        EXPECT_EQ(tevsTone_Direct_32f(&x, 1, 1, f, &phase), StatusToneFreq);
    }
    for (double p : {kTwoPi, -1e-300, double(NAN)}) {
        EXPECT_EQ(tevsToneInitAlloc(&made, 0, p), StatusTonePhase);
        EXPECT_EQ(tevsToneSetPhase(s, p), StatusTonePhase);
        EXPECT_EQ(tevsTone_Direct_32f(&x, 1, 1, 0, &(phase = p)), StatusTonePhase);
    }
    EXPECT_EQ(tevsToneSetFreq(nullptr, 1, -1), StatusNullPtr);
    EXPECT_EQ(tevsToneSetFreq(other, 1, -1), StatusContextMismatch);
    EXPECT_EQ(tevsToneSetFreq(s, 0.1, -1), StatusBadSize);
    EXPECT_EQ(tevsToneSetPhase(nullptr, 7), StatusNullPtr);
    EXPECT_EQ(tevsToneSetPhase(other, 7), StatusContextMismatch);
    EXPECT_EQ(tevsToneGetPhase(s, nullptr), StatusNullPtr);
    EXPECT_EQ(tevsToneGetPhase(other, &phase), StatusContextMismatch);
    for (double m : {0.0, -1.0, double(NAN)}) {
        EXPECT_EQ(tevsTone_32f(&x, 1, m, s), StatusToneMagnitude);
        EXPECT_EQ(tevsTone_Direct_32f(&x, 1, m, 1, &phase), StatusToneMagnitude);
    }
    EXPECT_EQ(tevsTone_32f(nullptr, 0, 0, s), StatusNullPtr);
    EXPECT_EQ(tevsTone_32f(&x, 0, 0, nullptr), StatusNullPtr);
    EXPECT_EQ(tevsTone_32f(&x, 0, 0, other), StatusBadSize);
    EXPECT_EQ(tevsTone_32f(&x, 1, 0, other), StatusContextMismatch);
    EXPECT_EQ(tevsToneMixUp_32fc32f(nullptr, &x, 0, s), StatusNullPtr);
    EXPECT_EQ(tevsToneMixDown_32f32fc(&x, nullptr, 0, s), StatusNullPtr);
    EXPECT_EQ(tevsToneMixUp_16sc_I(reinterpret_cast<Complex16s*>(&x), INT_MIN, s), StatusBadSize);
    EXPECT_EQ(tevsToneMixUp_16sc_I(reinterpret_cast<Complex16s*>(&x), 1, other), StatusContextMismatch);
    EXPECT_EQ(tevsToneFree(nullptr), StatusNullPtr);
    EXPECT_EQ(tevsToneFree(other), StatusContextMismatch);
    EXPECT_TRUE(x == 7 && made == other && phaseOf(o) == 0.5);
}

}   // namespace
