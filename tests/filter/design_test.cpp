// Designs against their formulas in extended precision, and against SciPy 1.10.1.
#include <climits>
#include <complex>
#include <cmath>
#include <numbers>

#include "support/control_words.h"
#include "support/data.h"
#include "tevs.h"

using namespace test;

namespace {

using Real = long double;
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
    switch (shape) {
        case kLow:
            return tevsFIRGenLowpass_64f(taps, n, f1, taper);
        case kHigh:
            return tevsFIRGenHighpass_64f(taps, n, f1, taper);
        case kBand:
            return tevsFIRGenBandpass_64f(taps, n, f1, f2, taper);
        default:
            return tevsFIRGenBandstop_64f(taps, n, f1, f2, taper);
    }
}
Real weight(int taper, int i, int n) {
    const Real x = Real(std::min(i, n - 1 - i)) / (n - 1);
    if (n < (taper == TaperBlackman ? 5 : 3) || 2 * i == n - 1) return 1;
    const Real best = -0.5L / (1 + std::cos(2 * kPi / (n - 1)));   // of Blackman's parameter
    return taper == TaperBartlett   ? 2 * x
           : taper == TaperHann     ? (1 - std::cos(2 * kPi * x)) / 2
           : taper == TaperHamming  ? 0.54L - 0.46L * std::cos(2 * kPi * x)
           : taper == TaperBlackman ? (best + 1) / 2 - std::cos(2 * kPi * x) / 2 - best * std::cos(4 * kPi * x) / 2
                                    : 1;
}

TEST(FirGen, IsItsFormula) {
    for (Shape shape : {kLow, kHigh, kBand, kStop})
        for (int taper : {0, 1, 2, 3, 4, -7})
            for (int n : {1, 2, 3, 4, 5, 8, 31, 64, 255, 2001})
                for (auto [f1, f2] : {std::pair{0.1, 0.35}, {0.0375, 0.425}, {0.25, 0.3}, {0.4, 0.49}}) {
                    SCOPED_TRACE(::testing::Message() << shape << ", " << taper << ", " << n << ", " << f1);
                    Guarded<double> guarded(size_t(n), {8 * (n % 2), n % 3 == 0});
                    const bool odd = shape == kHigh || shape == kStop;
                    ASSERT_EQ(firGen(shape, guarded, n, f1, f2, taper), odd && n % 2 == 0 ? StatusBadSize : StatusOk);
                    if (odd && n % 2 == 0) continue;
                    const Taps taps = guarded.values();
                    ASSERT_TRUE(guarded.intact());
                    std::vector<Real> want(taps.size());
                    const Real reference = shape == kHigh ? 0.5L : shape == kBand ? (Real(f1) + f2) / 2 : 0;
                    Real gain = 0, most = 0, sum = 0;
                    for (int i = 0; i < n; ++i) {
                        const Real t = i - (n - 1) / 2.0L;
                        const auto lp = [=](Real f) { return t == 0 ? 2 * f : std::sin(2 * kPi * f * t) / (kPi * t); };
                        Real& h = want[size_t(i)];
                        h = shape == kLow ? lp(f1) : shape == kHigh ? (t == 0) - lp(f1) : shape == kBand ? lp(f2) - lp(f1) : (t == 0) - lp(f2) + lp(f1);
                        h *= weight(taper, i, n);
                        gain += h * std::cos(2 * kPi * reference * t);
                        sum += std::fabs(h);
                    }
                    for (Real& h : want) most = std::max(most, std::fabs(h /= gain));
                    const Real ratio = std::max<Real>(1, sum / std::fabs(gain) / 4);
                    for (size_t i = 0; i < taps.size(); ++i) {
                        ASSERT_LE(std::fabs(taps[i] - want[i]), most * ratio * (taper > 0 ? 0x1p-46L : 0x1p-49L)) << i;
                        ASSERT_EQ(taps[i], taps[taps.size() - 1 - i]);
                    }
                    ASSERT_NEAR(double(std::abs(polynomial(taps.data(), taps.size(), reference))), 1, double(ratio) * n * 0x1p-52);
                }
}

// Where a plain difference of sincs loses its digits: narrow bands, and edges next to 0 and 1/2.
TEST(FirGen, NarrowDesignsKeepTheirDigits) {
    for (double width : {0x1p-20, 0x1p-30}) {
        Taps low(101), high(101), band(101), stop(101);
        ASSERT_EQ(tevsFIRGenLowpass_64f(low.data(), 101, width, TaperNone), StatusOk);
        ASSERT_EQ(tevsFIRGenHighpass_64f(high.data(), 101, 0.5 - width, TaperNone), StatusOk);
        ASSERT_EQ(tevsFIRGenBandpass_64f(band.data(), 101, 0.25 - width, 0.25 + width, TaperNone), StatusOk);
        ASSERT_EQ(tevsFIRGenBandstop_64f(stop.data(), 101, width, 0.5 - width, TaperNone), StatusOk);
        for (size_t i = 0; i < 101; ++i) {
            const int t = int(i) - 50, even = t % 2 == 0;
            const Real x = 2 * kPi * width * t, sinc = t == 0 ? 1 : std::sin(x) / x;
            EXPECT_NEAR(double(low[i] / low[50]), double(sinc), 0x1p-50);
            EXPECT_NEAR(double(high[i] / high[50]), double(even ? sinc : -sinc), 0x1p-50);
            EXPECT_NEAR(double(band[i] / band[50]), double(!even ? 0 : t % 4 == 0 ? sinc : -sinc), 0x1p-50);
            EXPECT_NEAR(double(stop[i] / stop[50]), double(even ? sinc : 0), 0x1p-50);
        }
    }
    Taps longest(1 << 20);   // angles of 10^5 turns
    ASSERT_EQ(tevsFIRGenLowpass_64f(longest.data(), 1 << 20, 0.237, TaperNone), StatusOk);
    for (int i : {0, 1, 77, 250000, 524000}) {
        const Real t = i - (1048575 / 2.0L);
        const Real sinc = std::sin(2 * kPi * std::fmod(Real(0.237) * t, 1.0L)) / t, first = std::sin(kPi * Real(0.237)) * 2;
        EXPECT_NEAR(double(longest[size_t(i)] / longest[524288] * first), double(sinc), 0x1p-51);
    }
}

TEST(FirGen, AgreesWithSciPy) {
    const double hann[] = {0, 0.21539595, 0.5692081}, hamming[] = {-0.02069067, -0.10322698, -0.02605689, 0.45371191},
                 bartlett[] = {0, 0.01701269, 0.05103808, -0.24774406, 0.43646109}, boxcar[] = {0.07377908, 0.18989861, -0.03505638, 0.54275737};
    Taps h(9);
    EXPECT_EQ(tevsFIRGenLowpass_64f(h.data(), 5, 0.2, TaperHann), StatusOk);
    for (size_t i = 0; i < 3; ++i) EXPECT_NEAR(h[i], hann[i], 1e-8);
    EXPECT_EQ(tevsFIRGenBandpass_64f(h.data(), 8, 0.1, 0.25, TaperHamming), StatusOk);
    for (size_t i = 0; i < 4; ++i) EXPECT_NEAR(h[i], hamming[i], 1e-8);
    EXPECT_EQ(tevsFIRGenHighpass_64f(h.data(), 9, 0.3, TaperBartlett), StatusOk);
    for (size_t i = 0; i < 5; ++i) EXPECT_NEAR(h[i], bartlett[i], 1e-8);
    EXPECT_EQ(tevsFIRGenBandstop_64f(h.data(), 7, 0.15, 0.3, TaperNone), StatusOk);
    for (size_t i = 0; i < 4; ++i) EXPECT_NEAR(h[i], boxcar[i], 1e-8);
}

Real rootCosine(Real s, Real b) {
    const auto h = [b](Real x) { return (std::sin(kPi * x * (1 - b)) + 4 * b * x * std::cos(kPi * x * (1 + b))) / (kPi * x * (1 - 16 * b * b * x * x)); };
    if (s == 0) return 1 - b + 4 * b / kPi;
    s = std::fabs(s);
    const Real d = 4 * b * s - 1;
    if (std::fabs(d) > 0x1p-12L) return h(s);
    // Between two points where the quotient still has its digits, and its value at the pole.
    const Real at = 1 / (4 * b), e = 0x1p-8L * at,
               middle = b / std::sqrt(2.0L) * ((1 + 2 / kPi) * std::sin(kPi / (4 * b)) + (1 - 2 / kPi) * std::cos(kPi / (4 * b)));
    const Real x = (s - at) / e;
    return middle + x * (h(at + e) - h(at - e)) / 2 + x * x * ((h(at + e) + h(at - e)) / 2 - middle);
}
TEST(FirGenRootCosine, IsItsFormula) {
    for (double rolloff : {0.0, 0.01, 0.1, 0.25, 0.5, 1 / 3.0, 0.7, 1.0})
        for (double rFreq : {0.5, 0.25, 0.125, 1 / 3.0, 0.01})
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
                    ASSERT_NEAR(double(taps.data()[i] - want[size_t(i)] / std::sqrt(energy)), 0, 0x1p-48)
                        << i << " of " << n << ", " << rolloff << ", " << rFreq;
                    ASSERT_EQ(taps.data()[i], taps.data()[n - 1 - i]);
                }
            }
    // A matched pair of 16 symbols to either side, 4 samples each: what is left at other symbols' instants.
    Taps h(129);
    ASSERT_EQ(tevsFIRGenRootCosine_64f(h.data(), 129, 0.25, 0.25), StatusOk);
    for (size_t apart = 0; apart < 129; apart += 4) {
        double sum = 0;
        for (size_t k = apart; k < 129; ++k) sum += h[k] * h[k - apart];
        EXPECT_NEAR(sum, apart == 0, apart == 0 ? 1e-15 : 5e-3) << apart;
    }
    // A hair beside the pole of the quotient, where it loses all of its digits.
    for (double s : {1 - 1e-9, 1.0, 1 + 1e-9, 1 + 1e-15}) {
        Taps three(3);
        const double rolloff = 0.5, rFreq = 0.5 * s;   // |s| = 1 / (4 rolloff) at the outer taps
        ASSERT_EQ(tevsFIRGenRootCosine_64f(three.data(), 3, std::min(rFreq, 0.5), rolloff), StatusOk);
        EXPECT_NEAR(three[0] / three[1], double(rootCosine(0.5L, 0.5L) / rootCosine(0, 0.5L)), 2e-9);
    }
}

TEST(FirGenKaiser, IsTheEstimate) {
    struct Row {
        double width, decibels;
        int tapsLen;
        double beta;
    };
    for (const Row& r : {Row{0.05, 60, 75, 5.65326}, Row{0.025, 30, 63, 2.1166248611409806}, Row{0.025, 21, 39, 0}, Row{0.1, 7, 1, 0}, Row{0.1, -1e300, 1, 0},
                         Row{0.1, 50, 31, 0.1102 * 41.3}, Row{1e-6, 49.999, 2928739, 0.5842 * std::pow(28.999, 0.4) + 0.07886 * 28.999}}) {
        int n = 0;
        float alpha = -1;
        ASSERT_EQ(tevsFIRGenKaiser_64f(r.width, r.decibels, &n, &alpha), StatusOk);
        const Real least = 1 + (r.decibels - 7.95L) / (2.285L * 2 * kPi * r.width);
        EXPECT_TRUE(n % 2 == 1 && n >= least && (n == 1 || n - 2 < least)) << n << " for " << double(least);
        EXPECT_FLOAT_EQ(alpha, n == 1 ? 0 : float(2 * r.beta / (n - 1)));
        if (r.width > 1e-5) {
            EXPECT_EQ(n, r.tapsLen);
        }
    }
    int n = 7;
    float alpha = 7;
    EXPECT_EQ(tevsFIRGenKaiser_64f(0, 60, nullptr, &alpha), StatusNullPtr);
    EXPECT_EQ(tevsFIRGenKaiser_64f(0, 60, &n, nullptr), StatusNullPtr);
    for (double width : {0.0, -0.1, 0.5, kNan, kInf}) EXPECT_EQ(tevsFIRGenKaiser_64f(width, kNan, &n, &alpha), StatusRelFreq);
    for (double db : {kNan, kInf, -kInf, 1e300}) EXPECT_EQ(tevsFIRGenKaiser_64f(0.1, db, &n, &alpha), StatusBadSize);
    EXPECT_EQ(tevsFIRGenKaiser_64f(1e-9, 60, &n, &alpha), StatusBadSize);
    EXPECT_TRUE(n == 7 && alpha == 7);
}

TEST(FirGen, ChecksItsArguments) {
    Taps h(16, 7);
    const auto run = [&](Shape shape, int n, double f1, double f2) { return firGen(shape, h.data(), n, f1, f2, TaperHann); };
    for (Shape shape : {kLow, kHigh, kBand, kStop}) {
        EXPECT_EQ(firGen(shape, nullptr, 0, 0, 0, 0), StatusNullPtr);
        for (int n : {0, -1, INT_MIN}) EXPECT_EQ(run(shape, n, 0, 0), StatusBadSize);
        for (double f : {0.0, -0.1, 0.5, 0.6, kNan, kInf}) EXPECT_EQ(run(shape, 5, f, 0.3), StatusRelFreq) << shape << " " << f;
    }
    for (Shape shape : {kBand, kStop})
        for (double f : {0.0, 0.5, 0.1, 0.2, kNan}) EXPECT_EQ(run(shape, 5, 0.2, f), StatusRelFreq);
    EXPECT_EQ(tevsFIRGenRootCosine_64f(nullptr, 0, 0.2, 0.2), StatusNullPtr);
    EXPECT_EQ(tevsFIRGenRootCosine_64f(h.data(), 0, 0, 0), StatusBadSize);
    for (double f : {0.0, -0.1, 0.51, kNan}) EXPECT_EQ(tevsFIRGenRootCosine_64f(h.data(), 5, f, 0.5), StatusRelFreq);
    for (double rolloff : {-0.01, 1.01, kNan}) EXPECT_EQ(tevsFIRGenRootCosine_64f(h.data(), 5, 0.25, rolloff), StatusRelFreq);
    EXPECT_EQ(h, Taps(16, 7));
}

// ---- responses ------------------------------------------------------------------------------------------------------------------------------

TEST(Responses, AreTheirSums) {
    const Taps f = {0, 0.1, 0.25, -0.3, 0.5, 0.4999999, 7.3, -1e6 + 0.2, 0x1p60 + 0.5, 1e-300, 0.123456789};
    for (int n : {1, 2, 3, 6, 7, 100, 1001}) {
        const auto taps = randomVector<double>(size_t(n));
        Real sum = 0;
        for (double h : taps) sum += std::fabs(h);
        Guarded<Complex64f> h(f.size());
        ASSERT_EQ(tevsFIRResponse_64f(taps.data(), n, f.data(), h, int(f.size())), StatusOk);
        for (size_t i = 0; i < f.size(); ++i) {
            const Value want = polynomial(taps.data(), taps.size(), f[i]);
            ASSERT_LE(std::abs(want - Value(h.data()[i].re, h.data()[i].im)), 4 * n * 0x1p-53L * sum) << n << " at " << f[i];
        }
    }
    for (int order : {1, 2, 5, 12}) {
        const auto taps = randomVector<double>(size_t(2 * order + 2)), sections = randomVector<double>(size_t(6 * order));
        std::vector<Complex64f> h(f.size()), g(f.size());
        ASSERT_EQ(tevsIIRResponse_64f(taps.data(), order, f.data(), h.data(), int(f.size())), StatusOk);
        ASSERT_EQ(tevsIIRResponse_BiQuad_64f(sections.data(), order, f.data(), g.data(), int(f.size())), StatusOk);
        for (size_t i = 0; i < f.size(); ++i) {
            const size_t n = size_t(order) + 1;
            const Value want = polynomial(taps.data(), n, f[i]) / polynomial(&taps[n], n, f[i]), all = response(sections, f[i]);
            ASSERT_LE(std::abs(want - Value(h[i].re, h[i].im)), 1e-12L * std::abs(want));
            ASSERT_LE(std::abs(all - Value(g[i].re, g[i].im)), 1e-12L * std::abs(all));
        }
    }
    const double pole[] = {1, 1, 1, -1}, zero = 0;
    Complex64f h{7, 7};
    EXPECT_EQ(tevsIIRResponse_64f(pole, 1, &zero, &h, 1), StatusOk);
    EXPECT_FALSE(std::isfinite(h.re));
}

TEST(Responses, CheckTheirArguments) {
    Taps taps(18, 1);
    const double f = 0.1;
    Complex64f h{7, 7};
    EXPECT_EQ(tevsFIRResponse_64f(nullptr, 0, &f, &h, 0), StatusNullPtr);
    EXPECT_EQ(tevsFIRResponse_64f(taps.data(), 0, nullptr, &h, 0), StatusNullPtr);
    EXPECT_EQ(tevsFIRResponse_64f(taps.data(), 0, &f, nullptr, 0), StatusNullPtr);
    EXPECT_EQ(tevsFIRResponse_64f(taps.data(), 0, &f, &h, 1), StatusBadSize);
    EXPECT_EQ(tevsFIRResponse_64f(taps.data(), 1, &f, &h, 0), StatusBadSize);
    for (const auto call : {tevsIIRResponse_64f, tevsIIRResponse_BiQuad_64f}) {
        EXPECT_EQ(call(nullptr, 0, &f, &h, 0), StatusNullPtr);
        EXPECT_EQ(call(taps.data(), 0, nullptr, &h, 0), StatusNullPtr);
        EXPECT_EQ(call(taps.data(), 0, &f, nullptr, 0), StatusNullPtr);
        EXPECT_EQ(call(taps.data(), 0, &f, &h, 0), StatusBadSize);
        EXPECT_EQ(call(taps.data(), 0, &f, &h, 1), StatusFilterOrder);
        EXPECT_EQ(call(taps.data(), INT_MIN, &f, &h, 1), StatusFilterOrder);
    }
    for (double a0 : {0.0, -0.0, kNan}) {
        taps[3] = taps[9] = a0;
        EXPECT_EQ(tevsIIRResponse_64f(taps.data(), 2, &f, &h, 1), StatusDivByZeroErr);
        taps[3] = 1;
        EXPECT_EQ(tevsIIRResponse_BiQuad_64f(taps.data(), 3, &f, &h, 1), StatusDivByZeroErr);
    }
    EXPECT_TRUE(h.re == 7 && h.im == 7);
}

// ---- IIR ------------------------------------------------------------------------------------------------------------------------------------

constexpr double kRipples[] = {0, 0.0001, 0.01, 1, 3, 29};

Taps sections(Shape shape, int order, double f1, double f2, double ripple) {
    Guarded<double> taps(size_t(shape <= kHigh ? (order + 1) / 2 : order) * 6);
    EXPECT_EQ(shape == kLow    ? tevsIIRGenLowpass_BiQuad_64f(taps, order, f1, ripple)
              : shape == kHigh ? tevsIIRGenHighpass_BiQuad_64f(taps, order, f1, ripple)
              : shape == kBand ? tevsIIRGenBandpass_BiQuad_64f(taps, order, f1, f2, ripple)
                               : tevsIIRGenBandstop_BiQuad_64f(taps, order, f1, f2, ripple),
              StatusOk);
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
    Real before = 0;
    for (size_t s = 0; s < taps.size(); s += 6) {
        const double* const b = &taps[s];
        const Real a1 = b[4], a2 = b[5];
        const bool single = shape <= kHigh && order % 2 && s == 0;
        ASSERT_EQ(b[3], 1);
        ASSERT_NE(b[0], 0);
        ASSERT_TRUE(std::fabs(a2) < 1 && std::fabs(a1) < 1 + a2) << "section " << s / 6;   // stable
        if (shape == kBand)
            ASSERT_TRUE(b[1] == 0 && b[2] == -b[0]);
        else if (shape == kStop)
            ASSERT_EQ(b[2], b[0]);
        else
            ASSERT_TRUE(b[1] == (shape == kHigh ? -b[0] : b[0]) * (single ? 1 : 2) && b[2] == (single ? 0 : b[0]) && (!single || a2 == 0));
        if (single) continue;
        const Real q = std::sqrt((1 + a1 + a2) * (1 - a1 + a2)) / (1 - a2);   // twice that of the analog pair
        ASSERT_GE(q, before * (1 - 1e-3L)) << "section " << s / 6;
        before = q;
    }
}

TEST(IirGen, HasTheGainOfItsPrototype) {
    for (Shape shape : {kLow, kHigh, kBand, kStop})
        for (int order = 1; order <= 12; ++order)
            for (double ripple : kRipples)
                for (auto [f1, f2] : {std::pair{0.01, 0.02}, {0.05, 0.051}, {0.1, 0.4}, {0.2125, 0.2625}, {0.25, 0.49}, {0.48, 0.49}, {0.01, 0.49}}) {
                    SCOPED_TRACE(::testing::Message() << shape << ", order " << order << ", " << ripple << " dB, " << f1 << ", " << f2);
                    const Taps taps = sections(shape, order, f1, f2, ripple);
                    checkForm(taps, shape, order);
                    for (Real f : {Real(f1), Real(f2)})
                        if (f == f1 || shape >= kBand) {
                            ASSERT_NEAR(double(decibels(response(taps, f))), double(wanted(shape, order, f1, f2, ripple, f)), 1e-9) << double(f);
                        }
                    for (int k = 1; k < 40; ++k) {   // down to where zeros hide the rest
                        const Real f = k / 80.0L, want = wanted(shape, order, f1, f2, ripple, f);
                        if (want > -250) {
                            ASSERT_NEAR(double(decibels(response(taps, f))), double(want), 1e-7) << double(f);
                        }
                    }
                    if (shape <= kHigh) {
                        const Real reference = shape == kHigh ? 0.5L : 0;
                        ASSERT_NEAR(double(decibels(response(taps, reference))), order % 2 || ripple == 0 ? 0 : -std::max(ripple, 0.001), 1e-12);
                        Taps whole(2 * size_t(order) + 2);
                        ASSERT_EQ((shape == kLow ? tevsIIRGenLowpass_64f : tevsIIRGenHighpass_64f)(whole.data(), order, f1, ripple), StatusOk);
                        const size_t n = size_t(order) + 1;
                        if (order <= 4 || (f1 > 0.05 && f1 < 0.45)) {
                            const Real f = f1, got = decibels(polynomial(whole.data(), n, f) / polynomial(&whole[n], n, f));
                            ASSERT_NEAR(double(got), double(decibels(response(taps, f))), 1e-6);
                        }
                        ASSERT_EQ(whole[n], 1);
                    }
                }
}

// Edges as near to 0 and 1/2 as they go, bands as narrow as they go: stable, and right as far as the rounding of the coefficients lets them be.
TEST(IirGen, IsStableEverywhere) {
    for (int order = 1; order <= 12; ++order)
        for (double ripple : kRipples) {
            for (int e = 3; e <= 30; ++e)
                for (double f : {std::ldexp(1.0, -e), std::ldexp(1.3, -e), 0.5 - std::ldexp(1.0, -e), 0.5 - std::ldexp(1.7, -e)})
                    for (Shape shape : {kLow, kHigh}) {
                        SCOPED_TRACE(::testing::Message() << shape << ", order " << order << ", " << ripple << " dB, " << e);
                        const Taps taps = sections(shape, order, f, 0, ripple);
                        checkForm(taps, shape, order);
                        if (e <= 12) {
                            ASSERT_NEAR(double(decibels(response(taps, f))), double(wanted(shape, order, f, 0, ripple, f)), 1e-5);
                        }
                        if (e <= 9)
                            for (size_t s = 0; s < taps.size(); s += 6) {
                                const float a1 = float(taps[s + 4]), a2 = float(taps[s + 5]);
                                ASSERT_TRUE(std::fabs(a2) < 1 && std::fabs(double(a1)) < 1 + double(a2)) << "in single precision";
                            }
                    }
            for (double centre : {0x1p-19, 0x1p-15, 0.001, 0.1, 0.25, 0.4, 0.499, 0.5 - 0x1p-15, 0.5 - 0x1p-19})
                for (double width : {0x1p-20, 0x1.8p-18, 0x1p-14, 0.001, 0.1, 0.49})
                    for (Shape shape : {kBand, kStop}) {
                        const double f1 = centre - width / 2, f2 = centre + width / 2;
                        if (!(f1 >= 0x1p-20 && f2 <= 0.5 - 0x1p-20 && f1 <= f2 - 0x1p-20)) continue;
                        SCOPED_TRACE(::testing::Message() << shape << ", order " << order << ", " << ripple << " dB, " << centre << ", " << width);
                        const Taps taps = sections(shape, order, f1, f2, ripple);
                        checkForm(taps, shape, order);
                        if (width >= 0.001 && f1 >= 0x1p-13 && f2 <= 0.5 - 0x1p-13) {
                            for (double f : {f1, f2}) ASSERT_NEAR(double(decibels(response(taps, f))), double(wanted(shape, order, f1, f2, ripple, f)), 1e-5);
                        }
                    }
        }
}

TEST(IirGen, AtOneHalfIsItsLimit) {
    for (int order : {1, 4, 7})
        for (double ripple : {0.0, 1.0}) {
            const Taps low = sections(kLow, order, 0.5, 0, ripple), high = sections(kHigh, order, 0.5, 0, ripple);
            for (size_t s = 0; s < low.size(); s += 6) {
                const double gain = s > 0 || order % 2 || ripple == 0 ? 1 : std::pow(10, -0.05);
                EXPECT_DOUBLE_EQ(low[s], gain);
                EXPECT_EQ(high[s], s > 0 ? 1 : 0x1p-60);
                for (const Taps* t : {&low, &high}) EXPECT_EQ(Taps(t->begin() + long(s) + 1, t->begin() + long(s) + 6), (Taps{0, 0, 1, 0, 0}));
            }
            Taps whole(2 * size_t(order) + 2);
            ASSERT_EQ(tevsIIRGenHighpass_64f(whole.data(), order, 0.5, ripple), StatusOk);
            EXPECT_TRUE(whole[0] == 0x1p-60 && whole[size_t(order) + 1] == 1 && whole[1] == 0);
        }
}

TEST(IirGen, AgreesWithSciPy) {
    const double butter[] = {-1.0485995763626117, 0.2961403575616696, -1.320913430819426, 0.6327387928852762},
                 cheby[] = {-0.7429129729922831, 0, -1.3162498545953598, 0.6464507863864473, -1.1032018201485518, 0.864718306107551};
    const Taps b = sections(kLow, 4, 0.1, 0, 0), c = sections(kLow, 5, 0.15, 0, 1);
    for (size_t k = 0; k < 4; ++k) EXPECT_NEAR(b[k / 2 * 6 + 4 + k % 2], butter[k], 1e-14);
    for (size_t k = 0; k < 6; ++k) EXPECT_NEAR(c[k / 2 * 6 + 4 + k % 2], cheby[k], 1e-14);
    EXPECT_NEAR(b[0] * b[6], 0.004824343357716231, 1e-16);
    // Poles, of rising frequency where their Q is equal.
    const Value bandpass[] = {{0.68296653L, 0.44278474L}, {-0.02770652L, 0.68869312L}},
                bandstop[] = {{0.33754015L, 0.4593325L}, {0.68073242L, 0.51012567L}, {0.04202887L, 0.76429889L}};
    const Taps p = sections(kBand, 2, 0.1, 0.25, 0.5), q = sections(kStop, 3, 0.1, 0.25, 0);
    const auto expectPole = [](const double* section, Value pole) {
        EXPECT_NEAR(section[4], double(-2 * pole.real()), 1e-7);
        EXPECT_NEAR(section[5], double(std::norm(pole)), 1e-7);
    };
    for (size_t s = 0; s < 2; ++s) expectPole(&p[6 * s], bandpass[s]);
    for (size_t s = 0; s < 3; ++s) expectPole(&q[6 * s], bandstop[s]);
}

TEST(IirGen, SectionsLoadAndDecay) {
    for (Shape shape : {kLow, kHigh, kBand, kStop})
        for (int order : {1, 5, 12}) {
            const Taps taps = sections(shape, order, 0.03, 0.2, 1);
            IIRState_64f* state = nullptr;
            ASSERT_EQ(tevsIIRInitAlloc_BiQuad_64f(&state, taps.data(), int(taps.size() / 6), nullptr), StatusOk);
            Taps x(40000);
            x[0] = 1;
            ASSERT_EQ(tevsIIR_64f_I(x.data(), 40000, state), StatusOk);
            EXPECT_LT(std::fabs(x.back()), 1e-9);
            tevsIIRFree_64f(state);
        }
}

TEST(IirGen, ChecksItsArguments) {
    Taps h(80, 7);
    for (const auto call : {tevsIIRGenLowpass_64f, tevsIIRGenHighpass_64f, tevsIIRGenLowpass_BiQuad_64f, tevsIIRGenHighpass_BiQuad_64f}) {
        EXPECT_EQ(call(nullptr, 0, 0, -1), StatusNullPtr);
        for (int order : {0, -1, 13, INT_MIN, INT_MAX}) EXPECT_EQ(call(h.data(), order, 0, -1), StatusIirGenOrder);
        for (double f : {0.0, -0.1, 0.500001, kNan, kInf}) EXPECT_EQ(call(h.data(), 3, f, -1), StatusIirGenFreq);
        for (double ripple : {-1.0, -1e-300, 29.001, kNan, kInf}) EXPECT_EQ(call(h.data(), 3, 0.2, ripple), StatusIirGenDecibels);
    }
    for (const auto call : {tevsIIRGenBandpass_BiQuad_64f, tevsIIRGenBandstop_BiQuad_64f}) {
        EXPECT_EQ(call(nullptr, 0, 0, 0, -1), StatusNullPtr);
        for (int order : {0, 13, INT_MIN}) EXPECT_EQ(call(h.data(), order, 0, 0, -1), StatusIirGenOrder);
        for (auto [f1, f2] :
             {std::pair{0x1p-21, 0.2}, {0.2, 0.2}, {0.3, 0.2}, {0.2, 0.2 + 0x1p-21}, {0.2, 0.5}, {0.2, 0.5 - 0x1p-21}, {kNan, 0.2}, {0.2, kNan}, {0.0, 0.2}})
            EXPECT_EQ(call(h.data(), 3, f1, f2, -1), StatusIirGenFreq) << f1 << " " << f2;
        EXPECT_EQ(call(h.data(), 3, 0.1, 0.2, -1), StatusIirGenDecibels);
    }
    EXPECT_EQ(h, Taps(80, 7));
}

TEST(IirGenOrder, IsTheLeast) {
    struct Row {
        double pass, stop, ripple, decibels;
        int want;
    };
    for (const Row& r : {Row{0.1, 0.15, 0, 40, 11}, Row{0.1, 0.15, 1, 40, 6}, Row{0.15, 0.1, 1, 40, 6}, Row{0.1, 0.4, 0, 1, 1}, Row{0.1, 0.4, 3, 0.5, 1}}) {
        int order = 0;
        ASSERT_EQ(tevsIIRGenOrder_64f(r.pass, r.stop, r.ripple, r.decibels, &order), StatusOk);
        EXPECT_EQ(order, r.want);
    }
    for (double ripple : {0.0, 0.1, 3.0})
        for (double pass : {0.01, 0.2, 0.4})
            for (double stop : {0.011, 0.05, 0.3, 0.49})
                for (double db : {0.1, 20.0, 80.0}) {
                    int order = 0;
                    const Status s = tevsIIRGenOrder_64f(pass, stop, ripple, db, &order);
                    const Shape shape = pass < stop ? kLow : kHigh;
                    const auto reaches = [&](int n) { return -wanted(shape, n, pass, 0, ripple, stop) >= db - 1e-9; };
                    if (s == StatusIirGenOrder) {
                        EXPECT_FALSE(reaches(12));
                    } else {
                        ASSERT_EQ(s, StatusOk);
                        EXPECT_TRUE(reaches(order)) << pass << ", " << stop << ", " << db;
                        EXPECT_FALSE(order > 1 && reaches(order - 1)) << pass << ", " << stop << ", " << db;
                    }
                }
    int order = 7;
    EXPECT_EQ(tevsIIRGenOrder_64f(0, 0, -1, 0, nullptr), StatusNullPtr);
    for (auto [p, s] : {std::pair{0.0, 0.1}, {0.1, 0.5}, {0.2, 0.2}, {kNan, 0.1}, {0.1, kNan}})
        EXPECT_EQ(tevsIIRGenOrder_64f(p, s, -1, 0, &order), StatusIirGenFreq);
    for (auto [r, d] : {std::pair{-1.0, 40.0}, {30.0, 40.0}, {kNan, 40.0}, {1.0, 0.0}, {1.0, -3.0}, {1.0, kNan}, {1.0, kInf}})
        EXPECT_EQ(tevsIIRGenOrder_64f(0.1, 0.2, r, d, &order), StatusIirGenDecibels);
    EXPECT_EQ(tevsIIRGenOrder_64f(0.1, 0.101, 0, 40, &order), StatusIirGenOrder);
    EXPECT_EQ(tevsIIRGenOrder_64f(0.1, 0.4, 1, 1e308, &order), StatusIirGenOrder);
    EXPECT_EQ(order, 7);
}

TEST(Designs, FollowNoControlWord) {
    expectOwnModes([] {
        Taps h(200), f = {0.1, 0.27};
        tevsFIRGenBandpass_64f(&h[0], 33, 0.1, 0.23, TaperHann);
        tevsFIRGenRootCosine_64f(&h[33], 20, 0.27, 0.3);
        tevsIIRGenLowpass_64f(&h[60], 7, 0.13, 0.7);
        tevsIIRGenBandstop_BiQuad_64f(&h[80], 5, 0.11, 0.23, 0.3);
        tevsFIRResponse_64f(&h[0], 33, f.data(), reinterpret_cast<Complex64f*>(&h[120]), 2);
        tevsIIRResponse_BiQuad_64f(&h[80], 5, f.data(), reinterpret_cast<Complex64f*>(&h[124]), 2);
        int n = 0;
        float alpha = 0;
        tevsFIRGenKaiser_64f(0.013, 61.7, &n, &alpha);
        h[130] = n, h[131] = alpha;
        return h;
    });
}

}   // namespace
