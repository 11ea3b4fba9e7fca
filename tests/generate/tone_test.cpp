#include <climits>
#include <cmath>
#include <memory>
#include <numbers>

#include "support/control_words.h"
#include "support/values.h"

using namespace test;

namespace {

constexpr Real kTurn = 2 * std::numbers::pi_v<Real>;
constexpr double kTwoPi = 6.283185307179586;
const double kBelowHalf = std::nextafter(0.5, 0), kBelowTwoPi = std::nextafter(kTwoPi, 0);

// rFreq * n modulo 1, with products that are exact in 64 bits.
Real turnsOf(double rFreq, int64_t n) {
    Real sum = 0;
    for (int shift = 0; shift < 44; shift += 11) sum += std::fmod(std::ldexp(Real(rFreq), shift) * Real(n >> shift & 0x7ff), Real(1));
    return sum - std::floor(sum);
}

using Oscillator = std::unique_ptr<ToneState, decltype(&tevsToneFree)>;
Oscillator at(double rFreq, double phase) {
    ToneState* s = nullptr;
    EXPECT_EQ(tevsToneInitAlloc(&s, rFreq, phase), StatusOk);
    return {s, tevsToneFree};
}
double phaseOf(const Oscillator& o) {
    double phase = -1;
    EXPECT_TRUE(tevsToneGetPhase(o.get(), &phase) == StatusOk && phase >= 0 && phase < kTwoPi) << phase;
    return phase;
}
// Radians from what is wanted, either way round.
Real off(double phase, Real want) { return std::fabs(std::remainder(phase - want, kTurn)); }

struct Form {
    Type type;
    Status (*tone)(Ptr dst, int len, double magn, ToneState*);
    Status (*direct)(Ptr dst, int len, double magn, double rFreq, double* phase);
    Real bound(Real magn) const { return type.number == Number::f64 ? magn * 0x1p-51L : magn * 0x1p-23L + (type.whole() ? 0.5L : 0); }
};
const Form kForms[] = {
    {typeOf<int16_t>(), erased<tevsTone_16s>, erased<tevsTone_Direct_16s>}, {typeOf<Complex16s>(), erased<tevsTone_16sc>, erased<tevsTone_Direct_16sc>},
    {typeOf<float>(), erased<tevsTone_32f>, erased<tevsTone_Direct_32f>},   {typeOf<Complex32f>(), erased<tevsTone_32fc>, erased<tevsTone_Direct_32fc>},
    {typeOf<double>(), erased<tevsTone_64f>, erased<tevsTone_Direct_64f>},  {typeOf<Complex64f>(), erased<tevsTone_64fc>, erased<tevsTone_Direct_64fc>},
};
const Form &k16s = kForms[0], &k32f = kForms[2], &k32fc = kForms[3], &k64f = kForms[4], &k64fc = kForms[5];

Vector block(const Form& f, const Oscillator& o, int len, double magn = 1000) {
    Guarded<uint8_t> to(size_t(len) * f.type.size(), Place{len % 5, len % 3 > 0});
    EXPECT_TRUE(f.tone(to.data(), len, magn, o.get()) == StatusOk && to.intact()) << len;
    return {f.type, to.values()};
}

// Each part of v against magn * (cos, sin) of phi + turns(n), within the bound and `slack` radians.
template <class Turns>::testing::AssertionResult follows(const Form& f, const Vector& v, Real magn, Real phi, Turns turns, Real slack) {
    for (size_t i = 0, k = size_t(f.type.parts); i < v.parts(); ++i) {
        const Real theta = phi + kTurn * turns(int64_t(i / k)), exact = magn * (i % k ? std::sin(theta) : std::cos(theta));
        const Real want = f.type.whole() ? std::clamp<Real>(exact, -32768, 32767) : exact;
        if (!(std::fabs(v.part(i) - want) <= f.bound(magn) + slack * magn))
            return ::testing::AssertionFailure() << double(v.part(i)) << " at " << i << ", want " << double(want);
    }
    return ::testing::AssertionSuccess();
}

TEST(Tone, IsACosineOfAnyFrequencyPhaseAndMagnitude) {
    for (const Form& f : kForms)
        for (double rFreq : {0.0, 0.01, 0.1234567, 0.25, kBelowHalf, 5e-324, 1e-19, 0x1p-33, 0.49})
            for (double phase : {0.0, 1.0, 3.9, kBelowTwoPi, 1e-300})
                for (double magn : {1.0, 0.7, 12345.678, 32767.0})
                    for (int len : {1, 2, 3, 7, 16, 33, 70, 1003}) {
                        SCOPED_TRACE(::testing::Message() << &f - kForms << ": " << rFreq << " " << phase << " " << magn << " " << len);
                        const Oscillator o = at(rFreq, phase);
                        const auto turns = [=](int64_t n) { return turnsOf(rFreq, n); };
                        const Vector v = block(f, o, len, magn);
                        ASSERT_TRUE(follows(f, v, magn, phase, turns, 0x1p-52L * kTurn));
                        double p = phase;
                        Vector direct(f.type, size_t(len));
                        ASSERT_TRUE(f.direct(direct, len, magn, rFreq, &p) == StatusOk && same(v, direct) && p == phaseOf(o));
                        ASSERT_LE(off(p, phase + kTurn * turns(len)), 0x1p-49L);
                    }
}

// The upper words of single precision: 2^21 of them, in all of the turn. And magnitudes that leave no bit to spare.
TEST(Tone, SinglePrecisionOfEveryPhase) {
    const double rFreq = 0x1.ffff1p-12 / 3;
    const auto turns = [=](int64_t n) { return turnsOf(rFreq, n); };
    for (double magn : {1.0, 1 + 0x1p-24, 1.5, 1.9999999})
        ASSERT_TRUE(follows(k32fc, block(k32fc, at(rFreq, 0), 1 << 19, magn), magn, 0, turns, 0x1p-31L)) << magn;
}

TEST(Tone, QuarterTurnsAreExact) {
    for (const Form& f : kForms)
        for (float magn : {1.0f, 0.1f, 32767.0f}) {
            const double m = f.type.number == Number::f64 ? magn * 1.1 : magn, peak = f.type.whole() ? std::nearbyint(m) : m;
            const double want[] = {peak, 0, 0, peak, -peak, 0, 0, -peak};
            const Vector v = block(f, at(0.25, 0), 101, m);
            for (size_t i = 0; i < v.parts(); ++i) ASSERT_EQ(v.part(i), want[i * size_t(3 - f.type.parts) % 8]) << i;
        }
}

TEST(Tone, MagnitudesOfAnySize) {
    for (double magn : {1e-45, 1e-38, 1e-30, 1e20, 3e38, 5e-324, 1e-310, 1e-290, 1e290, 1.7e308}) {
        const bool single = magn > 1e-46 && magn < 1e39;
        const Form& f = single ? k32f : k64f;
        const Vector unit = block(f, at(0.0123, 0.3), 70, 1), v = block(f, at(0.0123, 0.3), 70, magn);
        for (size_t i = 0; i < 70; ++i) {
            const Real want = unit.part(i) * magn, least = single ? 0x1p-149L : 0x1p-1074L;
            ASSERT_LE(std::fabs(v.part(i) - want), std::fabs(want) * 2e-7L + least) << magn;
        }
    }
    const Vector f = block(k32f, at(0.0625, 0), 9, 1e39);   // beyond the type at its peak, not near zeros
    EXPECT_TRUE(std::isinf(f.part(0)) && f.part(4) == 0 && f.part(8) == -INFINITY && std::isinf(f.part(2)));
    const Vector d = block(k64f, at(0.125, 0), 5, INFINITY);
    EXPECT_TRUE(d.part(0) == INFINITY && d.part(1) == INFINITY && std::isnan(d.part(2)) && d.part(3) == -INFINITY);
    for (double magn : {double(INFINITY), 1e300, 1e9})
        for (size_t i = 0; i < 5; ++i) EXPECT_EQ(block(k16s, at(0.125, 0), 5, magn).part(i), i < 2 ? 32767 : i == 2 ? 0 : -32768) << magn;
}

TEST(Tone, ALongStreamKeepsItsPhase) {
    constexpr int n = 1 << 25, len = 1 << 16;
    for (double rFreq : {0.0123456789, 1.23456789e-7}) {
        const Oscillator o = at(rFreq, 1);
        for (int i = 0; i < n; i += len) block(k16s, o, len, 1);
        EXPECT_LE(off(phaseOf(o), 1 + kTurn * turnsOf(rFreq, n)), (n + 8192) * 0x1p-65L * kTurn + 0x1p-51L);
    }
}

// ---- what changes under way ----------------------------------------------------------------------------------------------------------------

TEST(ToneGlide, SweepsLinearlyAndEndsOnTheExactSum) {
    for (double f0 : {0.0, 0.1, kBelowHalf})
        for (double f1 : {0.0, 0.3, 0.1000001, kBelowHalf})
            for (int glide : {1, 2, 511, 512, 513, 70001}) {
                SCOPED_TRACE(::testing::Message() << f0 << " to " << f1 << " in " << glide);
                const Oscillator o = at(f0, 0.5);
                block(k64fc, o, 3);
                ASSERT_EQ(tevsToneSetFreq(o.get(), f1, glide), StatusOk);
                const auto turns = [=](int64_t n) {
                    const Real g = std::min<Real>(Real(n), glide), sweep = (Real(f1) - Real(f0)) * g * g / (2 * Real(glide));
                    return turnsOf(f0, 3 + int64_t(g)) + sweep + turnsOf(f1, n - int64_t(g));
                };
                ASSERT_TRUE(follows(k64fc, block(k64fc, o, glide + 100), 1000, 0.5L, turns, 0x1p-45L * kTurn));
                ASSERT_LE(off(phaseOf(o), 0.5L + kTurn * turns(glide + 100)), 0x1p-49L + glide * 0x1p-63L * kTurn);
            }
}

// Each row: the frequency and the phase that are set, where not negative, and what the samples behind that turn by.
TEST(ToneGlide, IsBrokenOffAtTheFrequencyReached) {
    const Oscillator o = at(0.1, 0);
    Real want = 0;
    for (const auto& [rFreq, glide, phase, len, turns] :
         {std::tuple{0.3, 4000, -1.0, 1001, 125.150025}, {-1.0, 0, 2.0, 1000, 175.05}, {0.2, 1000, 0.0, 500, 100.01875}, {0.05, 0, -1.0, 10, 0.5}}) {
        EXPECT_EQ(rFreq < 0 ? StatusOk : tevsToneSetFreq(o.get(), rFreq, glide), StatusOk);
        EXPECT_EQ(phase < 0 ? StatusOk : tevsToneSetPhase(o.get(), phase), StatusOk);
        block(k16s, o, len);
        want = (phase < 0 ? want : phase) + kTurn * turns;
        EXPECT_LE(off(phaseOf(o), want), 1e-12L) << len;
    }
}

// Whatever the blocks and their types, and wherever the record lies, a stream is the same to the bit.
TEST(Tone, AnyCutGivesTheSameBits) {
    for (const Form& f : kForms) {
        Guarded<uint8_t> memory(reported(tevsToneGetStateSize), Place{3 * int(&f - kForms), true});
        ToneState* s = nullptr;
        expectEach(StatusOk, {tevsToneInit(&s, 0.0371, 0.2, memory), tevsToneFree(s)});   // it remains
        const auto run = [&](const Oscillator& o, bool cut) {
            std::vector<uint8_t> all;
            for (int segment = 0, n = 1; segment < 6; ++segment) {
                tevsToneSetFreq(o.get(), 0.03 * segment + 0.001, segment % 2 ? 1200 * segment : 0);
                for (int left = 2500, len; left > 0; left -= len, n = 7 * n % 211 + 1) {
                    len = cut ? std::min(left, n) : left;
                    const auto v = block(f, o, len).bytes;
                    all.insert(all.end(), v.begin(), v.end());
                }
                block(kForms[cut ? segment : 5 - segment], o, 100);
            }
            return std::pair(all, phaseOf(o));
        };
        EXPECT_TRUE(run(at(0.0371, 0.2), false) == run({s, tevsToneFree}, true)) << &f - kForms;
        EXPECT_TRUE(memory.intact() && uintptr_t(s) == (uintptr_t(memory.data()) + 15) / 16 * 16);
    }
}

// ---- mixing -----------------------------------------------------------------------------------------------------------------------------------

struct Mix {
    int sign;
    Type from, to;
    Status (*mix)(Ptr src, Ptr dst, int len, ToneState*);
    Status (*inPlace)(Ptr both, int len, ToneState*);
};
const Mix kMixes[] = {
    {1, typeOf<Complex16s>(), typeOf<Complex16s>(), erased<tevsToneMixUp_16sc>, erased<tevsToneMixUp_16sc_I>},
    {-1, typeOf<Complex16s>(), typeOf<Complex16s>(), erased<tevsToneMixDown_16sc>, erased<tevsToneMixDown_16sc_I>},
    {1, typeOf<Complex32f>(), typeOf<Complex32f>(), erased<tevsToneMixUp_32fc>, erased<tevsToneMixUp_32fc_I>},
    {-1, typeOf<Complex32f>(), typeOf<Complex32f>(), erased<tevsToneMixDown_32fc>, erased<tevsToneMixDown_32fc_I>},
    {1, typeOf<Complex32f>(), typeOf<float>(), erased<tevsToneMixUp_32fc32f>, nullptr},
    {-1, typeOf<float>(), typeOf<Complex32f>(), erased<tevsToneMixDown_32f32fc>, nullptr},
};

TEST(ToneMix, Shifts) {
    for (const Mix& m : kMixes)
        eachLength([&](int len) {
            for (int glide : {0, 40}) {
                const Oscillator o = at(0.0321, 1.5), tone = at(0.0321, 1.5), again = at(0.0321, 1.5);
                for (auto* s : {&o, &tone, &again}) tevsToneSetFreq(s->get(), 0.4, glide);
                const Place place = {len % 5, len % 3 > 0};
                const Vector x = randomVector(m.from, size_t(len)), z = block(k64fc, tone, len, 1);
                Guarded<uint8_t> src(x.bytes, place), dst(size_t(len) * m.to.size(), place), both(x.bytes, place);
                ASSERT_TRUE(m.mix(src.data(), dst.data(), len, o.get()) == StatusOk && dst.intact() && phaseOf(o) == phaseOf(tone));
                const Vector y(m.to, dst.values());
                for (size_t i = 0; i < y.parts(); ++i) {
                    const size_t n = i / size_t(m.to.parts), at = n * size_t(m.from.parts);
                    const Real re = x.part(at), im = m.from.parts == 2 ? x.part(at + 1) : 0, c = z.part(2 * n), s = m.sign * z.part(2 * n + 1);
                    const Real exact = i % size_t(m.to.parts) ? re * s + im * c : re * c - im * s;
                    const Real want = m.to.whole() ? std::clamp<Real>(exact, -32768, 32767) : exact;
                    ASSERT_LE(std::fabs(y.part(i) - want), m.to.whole() ? 0.51L : std::hypot(re, im) * 0x1p-22L) << &m - kMixes << " at " << i << " of " << len;
                }
                ASSERT_TRUE(!m.inPlace || (m.inPlace(both.data(), len, again.get()) == StatusOk && same(dst.values(), both.values()) && both.intact()));
            }
        });
}

// ---- the frame ----------------------------------------------------------------------------------------------------------------------------------

TEST(Tone, SameBitsAtEveryLevelInBothAbisAndInAnyMode) {
    const auto run = [] {
        uint64_t h = 7;
        const auto add = [&h](const auto& bytes) { h = hashOf(bytes.data(), bytes.size() * sizeof bytes[0], h); };
        const Oscillator o = at(0.0371, 3);
        for (const Form& f : kForms) {
            add(block(f, o, 901).bytes);
            tevsToneSetFreq(o.get(), 0.2 * f.type.parts, 700);
            for (double magn : {0.3, 1e39}) add(block(f, o, 901, magn).bytes);
            add(std::vector{phaseOf(o)});
        }
        for (const Mix& m : kMixes) {
            Vector y(m.to, 777);
            m.mix(block(kForms[m.from.whole() ? 1 : 1 + m.from.parts], o, 777), y, 777, o.get());
            add(y.bytes);
        }
        return std::vector<uint64_t>{h};
    };
    EXPECT_EQ(run()[0], 14643757267383966192u);
    expectOwnModes(run);
}

TEST(Tone, BadArguments) {
    const Oscillator o = at(0.1, 0.5);
    alignas(16) uint8_t raw[128] = {1};
    ToneState *const s = o.get(), *const other = reinterpret_cast<ToneState*>(raw), *t = other;
    Complex32f z = {7, 7};
    double q = 7;
    expectEach(StatusContextMismatch, {tevsToneSetFreq(other, 1, -1), tevsToneSetPhase(other, 7)});
    for (double f : {0.5, -1e-300, double(NAN)})
        expectEach(StatusToneFreq, {tevsToneInitAlloc(&t, f, 7), tevsToneInit(&t, f, 7, raw), tevsToneSetFreq(s, f, -1), k32f.direct(&z, 1, 1, f, &q)});
    for (double p : {kTwoPi, -1e-300, double(NAN)})
        expectEach(StatusTonePhase, {tevsToneInitAlloc(&t, 0, p), tevsToneInit(&t, 0, p, raw), tevsToneSetPhase(s, p), k32f.direct(&z, 1, 1, 0, &(q = p))});
    for (double m : {0.0, -1.0, double(NAN)}) expectEach(StatusToneMagnitude, {k32f.tone(&z, 1, m, s), k32f.direct(&z, 1, m, 1, &q)});
    expectEach(StatusBadSize, {tevsToneSetFreq(s, 0.1, -1), k32f.direct(&z, 0, 0, 1, &q)});
    EXPECT_TRUE(z.re == 7 && z.im == 7 && t == other && raw[0] == 1 && phaseOf(o) == 0.5);
}

}   // namespace
