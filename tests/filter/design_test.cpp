// Designs against their formulas in extended precision. Null pointers, lengths of vectors and control words are core/environment_test's.
#include <climits>
#include <complex>
#include <cmath>
#include <numbers>

#include "support/erased.h"

using namespace test;

namespace {

using Value = std::complex<Real>;
using Taps = std::vector<double>;
constexpr Real kPi = std::numbers::pi_v<Real>;
const double kNan = std::numeric_limits<double>::quiet_NaN(), kInf = std::numeric_limits<double>::infinity();

Value z1(Real f) { return std::polar<Real>(1, -2 * kPi * (f - std::rint(f))); }
Value polynomial(const double* taps, size_t n, Real f) {
    Value sum = 0;
    for (size_t k = n; k-- > 0;) sum = sum * z1(f) + Value(taps[k]);
    return sum;
}
Value response(const Taps& sections, Real f) {
    Value h = 1;
    for (size_t s = 0; s < sections.size(); s += 6) h *= polynomial(&sections[s], 3, f) / polynomial(&sections[s + 3], 3, f);
    return h;
}
Real decibels(Value h) { return 20 * std::log10(std::abs(h)); }

// ---- FIR ------------------------------------------------------------------------------------------------------------------------------------

enum Shape { kLow, kHigh, kBand, kStop };
Status firGen(Shape shape, double* taps, int n, double f1, double f2, int taper) {
    if (shape <= kHigh) return (shape == kLow ? tevsFIRGenLowpass_64f : tevsFIRGenHighpass_64f)(taps, n, f1, taper);
    return (shape == kBand ? tevsFIRGenBandpass_64f : tevsFIRGenBandstop_64f)(taps, n, f1, f2, taper);
}
Taps firTaps(Shape shape, int n, double f1, double f2, int taper) {
    Guarded<double> taps(size_t(n), {8 * (n % 2), n % 3 == 0});
    EXPECT_EQ(firGen(shape, taps, n, f1, f2, taper), StatusOk);
    EXPECT_TRUE(taps.intact());
    return taps.values();
}
Real weight(int taper, int i, int n) {
    const Real x = Real(std::min(i, n - 1 - i)) / (n - 1);
    if (n < (taper == TaperBlackman ? 5 : 3) || 2 * i == n - 1) return 1;
    const Real best = -0.5L / (1 + std::cos(2 * kPi / (n - 1)));   // of Blackman's parameter
    const Real c = std::cos(2 * kPi * x), c2 = std::cos(4 * kPi * x),
               all[] = {1, 2 * x, (1 - c) / 2, 0.54L - 0.46L * c, (best + 1) / 2 - c / 2 - best * c2 / 2};
    return all[std::max(taper, 0)];
}

TEST(FirGen, IsItsFormula) {
    for (Shape shape : {kLow, kHigh, kBand, kStop})
        for (int taper : {0, 1, 2, 3, 4, -7})
            for (int n : {1, 2, 3, 4, 5, 8, 31, 64, 255, 2001})
                for (auto [f1, f2] : {std::pair{0.1, 0.35}, {0.0375, 0.425}, {0.25, 0.3}, {0.4, 0.49}}) {
                    if ((shape == kHigh || shape == kStop) && n % 2 == 0) continue;
                    SCOPED_TRACE(::testing::Message() << shape << ", " << taper << ", " << n << ", " << f1);
                    const Taps taps = firTaps(shape, n, f1, f2, taper);
                    std::vector<Real> want;
                    const Real reference = shape == kHigh ? 0.5L : shape == kBand ? (Real(f1) + f2) / 2 : 0;
                    Real gain = 0, most = 0, sum = 0;
                    for (int i = 0; i < n; ++i) {
                        const Real t = i - (n - 1) / 2.0L;
                        const auto lp = [=](Real f) { return t == 0 ? 2 * f : std::sin(2 * kPi * f * t) / (kPi * t); };
                        const Real ideal[] = {lp(f1), (t == 0) - lp(f1), lp(f2) - lp(f1), (t == 0) - lp(f2) + lp(f1)};
                        want.push_back(ideal[shape] * weight(taper, i, n));
                        gain += want.back() * std::cos(2 * kPi * reference * t);
                        sum += std::fabs(want.back());
                    }
                    for (Real& h : want) most = std::max(most, std::fabs(h /= gain));
                    const Real ratio = std::max<Real>(1, sum / std::fabs(gain) / 4);
                    for (size_t i = 0; i < taps.size(); ++i) {
                        ASSERT_LE(std::fabs(taps[i] - want[i]), most * ratio * (taper > 0 ? 0x1p-46L : 0x1p-50L)) << i;
                        ASSERT_EQ(taps[i], taps[taps.size() - 1 - i]);
                    }
                    ASSERT_NEAR(double(std::abs(polynomial(taps.data(), taps.size(), reference))), 1, double(ratio) * n * 0x1p-52);
                }
}

// Where a plain difference of sincs loses its digits: narrow bands, and edges next to 0 and 1/2.
TEST(FirGen, NarrowDesignsKeepTheirDigits) {
    for (double width : {0x1p-20, 0x1p-30})
        for (Shape shape : {kLow, kHigh, kBand, kStop}) {
            const double f1[] = {width, 0.5 - width, 0.25 - width, width}, f2[] = {0, 0, 0.25 + width, 0.5 - width};
            const Taps taps = firTaps(shape, 101, f1[shape], f2[shape], TaperNone);
            for (int i = 0, t = -50; i < 101; ++i, ++t) {
                const int even = t % 2 == 0, sign[] = {1, even ? 1 : -1, !even ? 0 : t % 4 == 0 ? 1 : -1, even};
                const Real x = 2 * kPi * width * t, sinc = t == 0 ? 1 : std::sin(x) / x;
                EXPECT_NEAR(taps[size_t(i)] / taps[50], double(sign[shape] * sinc), 0x1p-50) << shape;
            }
        }
    const Taps longest = firTaps(kLow, 1 << 20, 0.237, 0, TaperNone);   // angles of 10^5 turns
    for (int i : {0, 1, 77, 250000, 524000}) {
        const Real t = i - (1048575 / 2.0L), sinc = std::sin(2 * kPi * std::fmod(Real(0.237) * t, 1.0L)) / t, first = std::sin(kPi * Real(0.237)) * 2;
        EXPECT_NEAR(double(longest[size_t(i)] / longest[524288] * first), double(sinc), 0x1p-51);
    }
}

Real rootCosine(Real s, Real b) {
    const auto h = [b](Real x) { return (std::sin(kPi * x * (1 - b)) + 4 * b * x * std::cos(kPi * x * (1 + b))) / (kPi * x * (1 - 16 * b * b * x * x)); };
    if (s == 0) return 1 - b + 4 * b / kPi;
    const Real pole = 1 / (4 * b), x = (std::fabs(s) - pole) * 256;
    if (!(std::fabs(x) < 0.5L)) return h(s);
    Real sum = 0;   // interpolated between points where the quotient has its digits
    for (int k = -5; k <= 5; ++k) {
        Real term = k ? h(pole + k / 256.0L) : 0;
        for (int j = -5; j <= 5; ++j) term *= j && j != k ? (x - j) / (k - j) : 1;
        sum += term;
    }
    return sum;
}
TEST(FirGenRootCosine, IsItsFormula) {
    for (double rolloff : {0.0, 0.01, 0.1, 0.25, 0.5, 1 / 3.0, 0.7, 1.0})
        for (double rFreq : {0.5, 0.25, 0.125, 1 / 3.0, 0.01, 0.5 - 1e-10, 0.25 - 1e-15, 0.5 - 1e-7})
            for (int n : {1, 2, 3, 8, 33, 65, 200, 801}) {
                Guarded<double> taps{size_t(n)};
                ASSERT_EQ(tevsFIRGenRootCosine_64f(taps, n, rFreq, rolloff), StatusOk);
                std::vector<Real> want;
                Real energy = 0;
                for (int i = 0; i < n; ++i) {
                    want.push_back(rootCosine((i - (n - 1) / 2.0L) * rFreq, rolloff));
                    energy += want.back() * want.back();
                }
                for (int i = 0; i < n; ++i) {
                    const Real off = taps.data()[i] - want[size_t(i)] / std::sqrt(energy);
                    ASSERT_LE(std::fabs(off), 0x1p-48L) << i << " of " << n << ", " << rolloff << ", " << rFreq;
                    ASSERT_EQ(taps.data()[i], taps.data()[n - 1 - i]);
                }
            }
}

TEST(FirGenKaiser, IsTheEstimate) {
    const double between = 0.5842 * std::pow(28.999, 0.4) + 0.07886 * 28.999;
    for (const auto& [width, decibels, tapsLen, beta] : {std::tuple{0.05, 60.0, 75, 5.65326},
                                                         {0.025, 30.0, 63, 2.1166248611409806},
                                                         {0.025, 21.0, 39, 0.0},
                                                         {0.1, 7.0, 1, 0.0},
                                                         {0.1, -1e300, 1, 0.0},
                                                         {0.1, 50.0, 31, 0.1102 * 41.3},
                                                         {1e-6, 49.999, 2928801, between}}) {
        int n = 0;
        float alpha = -1;
        ASSERT_EQ(tevsFIRGenKaiser_64f(width, decibels, &n, &alpha), StatusOk);
        EXPECT_EQ(n, tapsLen);
        EXPECT_FLOAT_EQ(alpha, n == 1 ? 0 : float(2 * beta / (n - 1)));
    }
}

TEST(FirGen, ChecksItsArguments) {
    int n = 7;
    float alpha = 7;
    Taps h(16, 7);
    for (Shape shape : {kLow, kHigh, kBand, kStop}) {
        for (int len : {0, -1, INT_MIN, shape % 2 ? 4 : 0}) EXPECT_EQ(firGen(shape, h.data(), len, 0, 0, 0), StatusBadSize);
        for (double f : {0.0, -0.1, 0.5, 0.6, kNan, kInf}) EXPECT_EQ(firGen(shape, h.data(), 5, f, 0.3, 0), StatusRelFreq) << shape << " " << f;
        for (double f : {0.0, 0.5, 0.1, 0.2, kNan}) EXPECT_EQ(firGen(shape >= kBand ? shape : kBand, h.data(), 5, 0.2, f, 0), StatusRelFreq);
    }
    EXPECT_EQ(tevsFIRGenRootCosine_64f(h.data(), 0, 0, 0), StatusBadSize);
    for (auto [f, rolloff] : {std::pair{0.0, 0.5}, {-0.1, 0.5}, {0.51, 0.5}, {kNan, 0.5}, {0.25, -0.01}, {0.25, 1.01}, {0.25, kNan}})
        EXPECT_EQ(tevsFIRGenRootCosine_64f(h.data(), 5, f, rolloff), StatusRelFreq) << f << " " << rolloff;
    for (double width : {0.0, -0.1, 0.5, kNan, kInf}) EXPECT_EQ(tevsFIRGenKaiser_64f(width, kNan, &n, &alpha), StatusRelFreq);
    for (auto [width, db] : {std::pair{0.1, kNan}, {0.1, kInf}, {0.1, -kInf}, {0.1, 1e300}, {1e-9, 60.0}})
        EXPECT_EQ(tevsFIRGenKaiser_64f(width, db, &n, &alpha), StatusBadSize) << db;
    EXPECT_TRUE(h == Taps(16, 7) && n == 7 && alpha == 7);
}

// ---- responses ------------------------------------------------------------------------------------------------------------------------------

TEST(Responses, AreTheirSums) {
    const Taps f = {0, 0.1, 0.25, -0.3, 0.5, 0.4999999, 7.3, -1e6 + 0.2, 0x1p60 + 0.5, 1e-300, 0.123456789};
    std::vector<Complex64f> h(f.size()), g(f.size());
    const auto valueOf = [](Complex64f z) { return Value(z.re, z.im); };
    for (int n : {1, 2, 3, 6, 7, 100, 1001}) {
        const auto taps = randomVector<double>(size_t(n));
        Real sum = 0;
        for (double x : taps) sum += std::fabs(x);
        ASSERT_EQ(tevsFIRResponse_64f(taps.data(), n, f.data(), h.data(), int(f.size())), StatusOk);
        for (size_t i = 0; i < f.size(); ++i)
            ASSERT_LE(std::abs(polynomial(taps.data(), taps.size(), f[i]) - valueOf(h[i])), 4 * n * 0x1p-53L * sum) << n << " at " << f[i];
    }
    for (int order : {1, 2, 5, 12}) {
        const auto taps = randomVector<double>(size_t(2 * order + 2)), sections = randomVector<double>(size_t(6 * order));
        ASSERT_EQ(tevsIIRResponse_64f(taps.data(), order, f.data(), h.data(), int(f.size())), StatusOk);
        ASSERT_EQ(tevsIIRResponse_BiQuad_64f(sections.data(), order, f.data(), g.data(), int(f.size())), StatusOk);
        for (size_t i = 0; i < f.size(); ++i) {
            const size_t n = size_t(order) + 1;
            const Value want = polynomial(taps.data(), n, f[i]) / polynomial(&taps[n], n, f[i]), all = response(sections, f[i]);
            ASSERT_LE(std::abs(want - valueOf(h[i])), 1e-12L * std::abs(want));
            ASSERT_LE(std::abs(all - valueOf(g[i])), 1e-12L * std::abs(all));
        }
    }
    const double pole[] = {1, 1, 1, -1}, zero = 0;
    EXPECT_EQ(tevsIIRResponse_64f(pole, 1, &zero, &h[0], 1), StatusOk);
    EXPECT_FALSE(std::isfinite(h[0].re));
}

TEST(Responses, CheckTheirArguments) {
    Taps taps(18, 1);
    const double f = 0.1;
    Complex64f h{7, 7};
    expectEach(StatusBadSize, {tevsFIRResponse_64f(taps.data(), 0, &f, &h, 1), tevsIIRResponse_64f(taps.data(), 0, &f, &h, 0),
                               tevsIIRResponse_BiQuad_64f(taps.data(), 0, &f, &h, 0)});
    for (int order : {0, INT_MIN})
        expectEach(StatusFilterOrder, {tevsIIRResponse_64f(taps.data(), order, &f, &h, 1), tevsIIRResponse_BiQuad_64f(taps.data(), order, &f, &h, 1)});
    for (double a0 : {0.0, -0.0, kNan}) {
        taps[3] = 1, taps[2] = taps[9] = a0;
        expectEach(StatusDivByZeroErr, {tevsIIRResponse_64f(taps.data(), 1, &f, &h, 1), tevsIIRResponse_BiQuad_64f(taps.data(), 3, &f, &h, 1)});
    }
    EXPECT_TRUE(h.re == 7 && h.im == 7);
}

// ---- IIR ------------------------------------------------------------------------------------------------------------------------------------

Taps sections(Shape shape, int order, double f1, double f2, double ripple) {
    Guarded<double> taps(size_t(shape <= kHigh ? (order + 1) / 2 : order) * 6);
    if (shape <= kHigh)
        expectEach(StatusOk, {(shape == kLow ? tevsIIRGenLowpass_BiQuad_64f : tevsIIRGenHighpass_BiQuad_64f)(taps, order, f1, ripple)});
    else
        expectEach(StatusOk, {(shape == kBand ? tevsIIRGenBandpass_BiQuad_64f : tevsIIRGenBandstop_BiQuad_64f)(taps, order, f1, f2, ripple)});
    EXPECT_TRUE(taps.intact());
    return taps.values();
}

Real tangent(Real f) { return f > 0.25L ? 1 / std::tan(kPi * (0.5L - f)) : std::tan(kPi * f); }
// Decibels of the design at f, of the analog frequency that it has in the prototype.
Real wanted(Shape shape, int order, Real f1, Real f2, Real ripple, Real f) {
    const Real w = tangent(f), w1 = tangent(f1), w2 = tangent(f2);
    const Real band = (w * w - w1 * w2) / (w * (w2 - w1));
    const Real x = std::fabs(shape == kLow ? w / w1 : shape == kHigh ? w1 / w : shape == kBand ? band : 1 / band);
    if (ripple == 0) return -10 * std::log10(1 + std::pow(x, 2 * order));
    const Real chebyshev = x <= 1 ? std::cos(order * std::acos(x)) : std::cosh(order * std::acosh(x));
    return -10 * std::log10(1 + std::expm1(std::max<Real>(ripple, 0.001L) * std::log(10.0L) / 10) * chebyshev * chebyshev);
}

void checkForm(const Taps& taps, Shape shape, int order) {
    Real before = 0, lower = 0;
    for (size_t s = 0; s < taps.size(); s += 6) {
        const double* const b = &taps[s];
        const Real a1 = b[4], a2 = b[5];
        const bool single = shape <= kHigh && order % 2 && s == 0;
        ASSERT_TRUE(b[3] == 1 && b[0] != 0);
        ASSERT_TRUE(std::fabs(a2) < 1 && std::fabs(a1) < 1 + a2) << "section " << s / 6;   // stable
        ASSERT_EQ(b[2], shape == kBand ? -b[0] : single ? 0 : b[0]);
        ASSERT_TRUE(shape == kStop || b[1] == (shape == kBand ? 0 : (shape == kHigh ? -b[0] : b[0]) * (single ? 1 : 2)));
        ASSERT_TRUE(!single || a2 == 0);
        const Real q = single ? 0 : std::sqrt((1 + a1 + a2) * (1 - a1 + a2)) / (1 - a2);   // twice that of the analog pair
        ASSERT_GE(q, before * (1 - 1e-3L)) << "section " << s / 6;
        const Real frequency = (1 + a1 + a2) / (1 - a1 + a2);   // of the analog pair, squared: rising where two have one Q
        ASSERT_TRUE(shape <= kHigh || (int(s / 6) + order) % 2 == 0 || frequency > lower * (1 - 1e-3L)) << "section " << s / 6;
        before = q, lower = frequency;
    }
}

// Of every order and ripple: its form, stability, and the gain at the edges as far as the rounding of coefficients lets them have it, in single precision too.
void checkDesigns(Shape shape, double f1, double f2) {
    const bool band = shape >= kBand;
    const double least = band ? std::min(f1, 0.5 - f2) : std::min(f1, 0.5 - f1);
    const bool wide = !band || f2 - f1 >= 0.00099, tame = wide && least >= 0.0099;
    for (int order = 1; order <= 12; ++order)
        for (double ripple : {0.0, 0.0001, 0.01, 1.0, 3.0, 29.0}) {
            SCOPED_TRACE(::testing::Message() << shape << ", order " << order << ", " << ripple << " dB, " << f1 << ", " << f2);
            const Taps taps = sections(shape, order, f1, f2, ripple);
            checkForm(taps, shape, order);
            const auto expectGain = [&](Real f, double tolerance) {   // down to where zeros hide the rest
                const Real want = wanted(shape, order, f1, f2, ripple, f), got = decibels(response(taps, f));
                ASSERT_NEAR(double(std::max<Real>(got, -400)), double(std::max<Real>(want, -400)), want > -250 ? tolerance : kInf) << double(f);
            };
            if (wide && least >= 0x1p-13) expectGain(f1, tame ? 1e-9 : 1e-5), expectGain(band ? f2 : f1, tame ? 1e-9 : 1e-5);
            for (int k = 1; k < 40 && tame; ++k) expectGain(k / 80.0L, 1e-7);
            if (band) continue;
            for (size_t s = 4; s < taps.size() && least >= 0x1p-10; s += 6)
                ASSERT_TRUE(std::fabs(float(taps[s + 1])) < 1 && std::fabs(double(float(taps[s]))) < 1 + double(float(taps[s + 1]))) << "in single precision";
            if (!tame) continue;
            ASSERT_NEAR(double(decibels(response(taps, shape == kHigh ? 0.5L : 0))), order % 2 || ripple == 0 ? 0 : -std::max(ripple, 0.001), 1e-12);
            const size_t n = size_t(order) + 1;
            Taps whole(2 * n);
            ASSERT_EQ((shape == kLow ? tevsIIRGenLowpass_64f : tevsIIRGenHighpass_64f)(whole.data(), order, f1, ripple), StatusOk);
            ASSERT_EQ(whole[n], 1);
            const Real f = f1, got = decibels(polynomial(whole.data(), n, f) / polynomial(&whole[n], n, f));
            ASSERT_NEAR(double(got), double(decibels(response(taps, f))), order <= 4 ? 1e-6 : least > 0.05 ? 1e-3 : kInf);
        }
}

TEST(IirGen, HasTheGainOfItsPrototypeAndIsStableEverywhere) {
    for (double f : {0.01, 0.05, 0.1, 0.2125, 0.25, 0.48})
        for (Shape shape : {kLow, kHigh}) checkDesigns(shape, f, 0);
    for (int e = 3; e <= 30; ++e)   // as near to 0 and 1/2 as edges go, and nearer
        for (double f : {std::ldexp(1.0, -e), std::ldexp(1.3, -e), 0.5 - std::ldexp(1.0, -e), 0.5 - std::ldexp(1.7, -e)})
            for (Shape shape : {kLow, kHigh}) checkDesigns(shape, f, 0);
    for (Shape shape : {kBand, kStop}) {
        for (auto [f1, f2] : {std::pair{0.01, 0.02}, {0.05, 0.051}, {0.1, 0.4}, {0.2125, 0.2625}, {0.25, 0.49}, {0.48, 0.49}, {0.01, 0.49}})
            checkDesigns(shape, f1, f2);
        for (double centre : {0x1p-19, 0x1p-15, 0.001, 0.1, 0.25, 0.4, 0.499, 0.5 - 0x1p-15, 0.5 - 0x1p-19})
            for (double width : {0x1p-20, 0x1.8p-18, 0x1p-14, 0.001, 0.1, 0.49}) {
                const double f1 = centre - width / 2, f2 = centre + width / 2;
                if (f1 >= 0x1p-20 && f2 <= 0.5 - 0x1p-20 && f1 <= f2 - 0x1p-20) checkDesigns(shape, f1, f2);
            }
    }
}

TEST(IirGen, AtOneHalfIsItsLimit) {
    for (int order : {1, 4, 7})
        for (double ripple : {0.0, 1.0}) {
            const double gain = order % 2 || ripple == 0 ? 1 : std::pow(10, -0.05);
            const Taps low = sections(kLow, order, 0.5, 0, ripple), high = sections(kHigh, order, 0.5, 0, ripple);
            for (size_t k = 0; k < low.size(); ++k) {
                EXPECT_DOUBLE_EQ(low[k], k == 0 ? gain : k % 3 == 0);
                EXPECT_EQ(high[k], k == 0 ? 0x1p-60 : k % 3 == 0);
            }
            Taps whole(2 * size_t(order) + 2), want(whole.size());
            want[0] = 0x1p-60, want[size_t(order) + 1] = 1;
            ASSERT_EQ(tevsIIRGenHighpass_64f(whole.data(), order, 0.5, ripple), StatusOk);
            EXPECT_EQ(whole, want);
        }
}

TEST(IirGen, ChecksItsArguments) {
    Taps h(80, 7);
    for (const auto call : {tevsIIRGenLowpass_64f, tevsIIRGenHighpass_64f, tevsIIRGenLowpass_BiQuad_64f, tevsIIRGenHighpass_BiQuad_64f}) {
        for (int order : {0, -1, 13, INT_MIN, INT_MAX}) EXPECT_EQ(call(h.data(), order, 0, -1), StatusIirGenOrder);
        for (double f : {0.0, -0.1, 0.500001, kNan, kInf}) EXPECT_EQ(call(h.data(), 3, f, -1), StatusIirGenFreq);
        for (double ripple : {-1.0, -1e-300, 29.001, kNan, kInf}) EXPECT_EQ(call(h.data(), 3, 0.2, ripple), StatusIirGenDecibels);
    }
    for (const auto call : {tevsIIRGenBandpass_BiQuad_64f, tevsIIRGenBandstop_BiQuad_64f}) {
        for (int order : {0, 13, INT_MIN}) EXPECT_EQ(call(h.data(), order, 0, 0, -1), StatusIirGenOrder);
        for (auto [f1, f2] :
             {std::pair{0x1p-21, 0.2}, {0.2, 0.2}, {0.3, 0.2}, {0.2, 0.2 + 0x1p-21}, {0.2, 0.5}, {0.2, 0.5 - 0x1p-21}, {kNan, 0.2}, {0.2, kNan}, {0.0, 0.2}})
            EXPECT_EQ(call(h.data(), 3, f1, f2, -1), StatusIirGenFreq) << f1 << " " << f2;
        for (double ripple : {-1.0, 29.001, kNan}) EXPECT_EQ(call(h.data(), 3, 0.1, 0.2, ripple), StatusIirGenDecibels);
    }
    EXPECT_EQ(h, Taps(80, 7));
}

TEST(IirGenOrder, IsTheLeast) {
    for (const auto& [pass, stop, ripple, db, want] :
         {std::tuple{0.1, 0.15, 0.0, 40.0, 11}, {0.1, 0.15, 1.0, 40.0, 6}, {0.15, 0.1, 1.0, 40.0, 6}, {0.1, 0.4, 0.0, 1.0, 1}, {0.1, 0.4, 3.0, 0.5, 1}}) {
        int order = 0;
        ASSERT_EQ(tevsIIRGenOrder_64f(pass, stop, ripple, db, &order), StatusOk);
        EXPECT_EQ(order, want);
    }
    for (double ripple : {0.0, 0.1, 3.0})
        for (double pass : {0.01, 0.2, 0.4})
            for (double stop : {0.011, 0.05, 0.3, 0.49})
                for (double db : {0.1, 20.0, 80.0}) {
                    int order = 13;
                    const Status s = tevsIIRGenOrder_64f(pass, stop, ripple, db, &order);
                    const auto reaches = [&](int n) { return -wanted(pass < stop ? kLow : kHigh, n, pass, 0, ripple, stop) >= db - 1e-9; };
                    ASSERT_EQ(s, reaches(12) ? StatusOk : StatusIirGenOrder);
                    EXPECT_TRUE((order == 13 || reaches(order)) && (order == 1 || !reaches(order - 1))) << pass << ", " << stop << ", " << db;
                }
    int order = 7;
    for (auto [p, s] : {std::pair{0.0, 0.1}, {0.1, 0.5}, {0.2, 0.2}, {kNan, 0.1}, {0.1, kNan}})
        EXPECT_EQ(tevsIIRGenOrder_64f(p, s, -1, 0, &order), StatusIirGenFreq);
    for (auto [r, d] : {std::pair{-1.0, 40.0}, {30.0, 40.0}, {kNan, 40.0}, {1.0, 0.0}, {1.0, -3.0}, {1.0, kNan}, {1.0, kInf}})
        EXPECT_EQ(tevsIIRGenOrder_64f(0.1, 0.2, r, d, &order), StatusIirGenDecibels);
    expectEach(StatusIirGenOrder, {tevsIIRGenOrder_64f(0.1, 0.101, 0, 40, &order), tevsIIRGenOrder_64f(0.1, 0.4, 1, 1e308, &order)});
    EXPECT_EQ(order, 7);
}

}   // namespace
