// Taps from edges and ripples. Everything is computed in 80-bit extended precision and rounded once to double.
#include "tevs/design.h"

#include <limits.h>
#include <math.h>
#include <stddef.h>

#include <algorithm>

#include "core/args.h"
#include "core/rounding.h"
#include "tevs/window.h"

namespace tevs {
namespace {

using Real = long double;
constexpr Real kPi = 0xc.90fdaa22168c235p-2L;

// f(values...) with all of the extended unit's digits, and in the mode in which the C library's functions, whose reduction of angles is in double precision, hold too.
template <class F, class... V> auto exactly(F f, V... values) {
    return toNearest([](F g, V... v) { return inExtended(g, v...); }, f, values...);
}

// ---- angles ---------------------------------------------------------------------------------------------------------------------------------

// A frequency in cycles per sample, as a sum: the difference of two doubles is exact.
struct Frequency {
    Real f, rest;
    Frequency(Real a, Real b = 0) : f(a + b) {   // D. E. Knuth, The Art of Computer Programming, vol. 2, 4.2.2
        const Real bb = f - a;
        rest = (a - (f - bb)) + (b - bb);
    }
    // Turns at the time twice/2, less whole ones. The upper 31 bits meet an int exactly.
    Real turns(int64_t twice) const {
        const Real high = rintl(f * 0x1p30L) * 0x1p-30L, low = f - high, whole = high * Real(twice) / 2;
        return (whole - rintl(whole)) + (low + rest) * Real(twice) / 2;
    }
};

struct Complex {
    Real re, im;
    friend Complex operator*(Complex a, Complex b) { return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re}; }
    friend Complex operator+(Complex a, Complex b) { return {a.re + b.re, a.im + b.im}; }
    friend Complex operator*(Complex a, Real b) { return {a.re * b, a.im * b}; }
    Real square() const { return re * re + im * im; }
};
Complex unit(Real turns) {   // e^(2 pi i turns)
    Complex z;
    sincosl(2 * kPi * turns, &z.im, &z.re);
    return z;
}

// e^(2 pi i f t) at t = twice/2, and one sample later with each step, from the exact angle anew every kRun steps. A sine below a right angle keeps its relative accuracy.
class Rotor {
public:
    Rotor(const Frequency& f, int64_t twice) : f_(f), step_(unit(f.turns(2))), z_(unit(f.turns(twice))), twice_(twice) {}
    const Complex* operator->() const { return &z_; }
    Complex operator*() const { return z_; }
    void step() {
        twice_ += 2;
        if (++steps_ % kRun == 0)
            z_ = unit(f_.turns(twice_));
        else
            z_ = z_ * step_;
    }

private:
    static constexpr int kRun = 256;
    const Frequency f_;
    const Complex step_;
    Complex z_;
    int64_t twice_;
    int steps_ = 0;
};

// ---- FIR ------------------------------------------------------------------------------------------------------------------------------------

enum Shape { kLowpass, kHighpass, kBandpass, kBandstop };

// put(i, twice) for each tap i of the second half, twice/2 samples from the middle.
template <class Put> void eachOfHalf(int tapsLen, Put put) {
    for (int i = tapsLen / 2; i < tapsLen; ++i) put(i, i - (tapsLen - 1 - i));
}

// With lp(f) = sin(2 pi f t) / (pi t), the others of odd lengths in terms of the distance from 1/2, so that no two large numbers are subtracted:
//
//     highpass    delta - lp(f) = (-1)^t lp(1/2 - f)
//     bandpass    lp(f2) - lp(f1) = 2 sin(pi (f2 - f1) t) cos(pi (f1 + f2) t) / (pi t)
//     bandstop    delta - lp(f2) + lp(f1) = lp(f1) + (-1)^t lp(1/2 - f2)
void idealTaps(double* pTaps, int tapsLen, double f1, double f2, Shape shape) {
    const bool isBand = shape == kBandpass;
    const Frequency first = isBand ? Frequency(Real(f2) / 2, -Real(f1) / 2) : shape == kHighpass ? Frequency(0.5L, -Real(f1)) : Frequency(f1);
    const Frequency second = isBand ? Frequency(Real(f2) / 2, Real(f1) / 2) : Frequency(0.5L, -Real(f2));
    Rotor a(first, tapsLen % 2 ? 0 : 1), b(second, tapsLen % 2 ? 0 : 1);
    eachOfHalf(tapsLen, [&](int i, int twice) {
        const Real pt = kPi * Real(twice) / 2, sign = twice % 4 == 0 ? 1 : -1;
        const auto lp = [=](const Rotor& r, const Frequency& f) { return twice == 0 ? 2 * f.f : r->im / pt; };
        Real h = lp(a, first);
        if (shape == kHighpass) h *= sign;
        if (shape == kBandpass) h *= 2 * b->re;
        if (shape == kBandstop) h += sign * lp(b, second);
        pTaps[i] = pTaps[tapsLen - 1 - i] = double(h);
        a.step();
        if (shape >= kBandpass) b.step();
    });
}

// Divides by the gain where it is to be 1.
void normalise(double* pTaps, int tapsLen, double f1, double f2, Shape shape) {
    Real gain = 0;
    Rotor z(shape == kBandpass ? Frequency(Real(f1) / 2, Real(f2) / 2) : Frequency(shape == kHighpass ? 0.5L : 0), tapsLen % 2 ? 0 : 1);
    eachOfHalf(tapsLen, [&](int i, int twice) {
        gain += (twice == 0 ? 1 : 2) * z->re * pTaps[i];
        z.step();
    });
    eachOfHalf(tapsLen, [&](int i, int) { pTaps[i] = pTaps[tapsLen - 1 - i] = double(pTaps[i] / gain); });
}

void applyTaper(double* pTaps, int tapsLen, int taper) {
    if (tapsLen < (taper == TaperBlackman ? 5 : 3)) return;   // of four, that window leaves nothing
    switch (taper) {
        case TaperBartlett:
            tevsWinBartlett_64f_I(pTaps, tapsLen);
            break;
        case TaperHann:
            tevsWinHann_64f_I(pTaps, tapsLen);
            break;
        case TaperHamming:
            tevsWinHamming_64f_I(pTaps, tapsLen);
            break;
        case TaperBlackman:
            tevsWinBlackmanOpt_64f_I(pTaps, tapsLen);
            break;
    }
}

bool isInside(double f) { return f > 0 && f < 0.5; }

// Designs of one edge leave f2 alone.
Status firGen(double* pTaps, int tapsLen, double f1, double f2, int taper, Shape shape) {
    const bool oneEdge = shape <= kHighpass, oddOnly = shape == kHighpass || shape == kBandstop;
    if (Status s = Args()
                       .ptr(pTaps)
                       .len(tapsLen)
                       .require(!oddOnly || tapsLen % 2 != 0, StatusBadSize)
                       .require(isInside(f1) && (oneEdge || (isInside(f2) && f1 < f2)), StatusRelFreq))
        return s;
    exactly(idealTaps, pTaps, tapsLen, f1, f2, shape);
    applyTaper(pTaps, tapsLen, taper);
    exactly(normalise, pTaps, tapsLen, f1, f2, shape);
    return StatusOk;
}

// With d = 4 b s - 1 and p = pi s (1 - b) the numerator is sin p - (1 + d) sin(p + pi d / 2): both it and the denominator have the factor d, which is left out here
// but for small s.
//
//     h = (2 cos(p + pi d / 4) sin(pi d / 4) / d + sin(p + pi d / 2)) / (pi s (2 + d))
//
// z is e^(i p), v is e^(i pi b s).
Real rootCosine(Real s, Real b, Complex z, Complex v) {
    if (s == 0) return 1 - b + 4 * b / kPi;
    const Real d = 4 * b * s - 1;
    if (d < -0.5L) return (z.im + (1 + d) * (z * (v * v)).re) / (kPi * s * -d * (2 + d));
    constexpr Real kRoot = 0.70710678118654752440L;
    const Complex quarter = v * Complex{kRoot, -kRoot}, near = z * quarter;   // e^(i pi d / 4)
    const Real q = kPi * d / 4, q2 = q * q;
    const Real series = kPi / 4 * (1 - q2 / 6 * (1 - q2 / 20 * (1 - q2 / 42 * (1 - q2 / 72 * (1 - q2 / 110 * (1 - q2 / 156))))));
    return (2 * near.re * (fabsl(d) < 0.25L ? series : quarter.im / d) + (near * quarter).im) / (kPi * s * (2 + d));
}
void rootCosineTaps(double* pTaps, int tapsLen, double rFreq, double rolloff) {
    const int first = tapsLen % 2 ? 0 : 1;
    Rotor z(Frequency(Real(rFreq) * (1 - Real(rolloff)) / 2), first), v(Frequency(Real(rFreq) * rolloff / 2), first);
    Real energy = 0;
    eachOfHalf(tapsLen, [&](int i, int twice) {
        pTaps[i] = double(rootCosine(Real(rFreq) * twice / 2, rolloff, *z, *v));
        energy += (twice == 0 ? 1 : 2) * Real(pTaps[i]) * pTaps[i];
        z.step();
        v.step();
    });
    const Real root = sqrtl(energy);
    eachOfHalf(tapsLen, [&](int i, int) { pTaps[i] = pTaps[tapsLen - 1 - i] = double(pTaps[i] / root); });
}

struct Kaiser {
    Real tapsLen;
    float alpha;
};
void kaiserEstimate(double rWidth, double decibels, Kaiser* k) {
    const Real a = decibels, least = 1 + (a - 7.95L) / (2.285L * 2 * kPi * rWidth);
    k->tapsLen = least <= 1 ? 1 : 2 * ceill((least - 1) / 2) + 1;
    const Real beta = a <= 21 ? 0 : a < 50 ? 0.5842L * powl(a - 21, 0.4L) + 0.07886L * (a - 21) : 0.1102L * (a - 8.7L);
    k->alpha = float(2 * beta / (k->tapsLen - 1));
}

// ---- responses ------------------------------------------------------------------------------------------------------------------------------

Complex delay(double rFreq) {   // z^-1, for any finite frequency
    const Real f = rFreq;
    return unit(rintl(f) - f);
}
// sum of taps[k] z^-k (Horner).
Complex polynomial(const double* taps, ptrdiff_t count, Complex z1) {
    Complex sum = {0, 0};
    for (ptrdiff_t k = count - 1; k >= 0; --k) {
        sum = sum * z1;
        sum.re += taps[k];
    }
    return sum;
}
Complex quotient(Complex a, Complex b) { return a * Complex{b.re, -b.im} * (1 / b.square()); }
Complex64f rounded(Complex z) { return {double(z.re), double(z.im)}; }

void firResponse(const double* pTaps, int tapsLen, const double* pRFreq, Complex64f* pDst, int len) {
    for (int i = 0; i < len; ++i) pDst[i] = rounded(polynomial(pTaps, tapsLen, delay(pRFreq[i])));
}
void iirResponse(const double* pTaps, int order, const double* pRFreq, Complex64f* pDst, int len) {
    const ptrdiff_t terms = ptrdiff_t{order} + 1;
    for (int i = 0; i < len; ++i) {
        const Complex z1 = delay(pRFreq[i]);
        pDst[i] = rounded(quotient(polynomial(pTaps, terms, z1), polynomial(pTaps + terms, terms, z1)));
    }
}
void iirResponseOfSections(const double* pTaps, int numBq, const double* pRFreq, Complex64f* pDst, int len) {
    for (int i = 0; i < len; ++i) {
        const Complex z1 = delay(pRFreq[i]);
        Complex h = {1, 0};
        for (ptrdiff_t s = 0; s < numBq; ++s) h = h * quotient(polynomial(pTaps + 6 * s, 3, z1), polynomial(pTaps + 6 * s + 3, 3, z1));
        pDst[i] = rounded(h);
    }
}
bool isDivisor(double a0) { return a0 < 0 || a0 > 0; }

// ---- IIR ------------------------------------------------------------------------------------------------------------------------------------

constexpr int kMostOrder = 12;
constexpr double kLeastEdge = 0x1p-24, kLeastBandEdge = 0x1p-20, kLeastRipple = 0.001, kMostRipple = 29;

Real tangent(Real f) { return f > 0.25L ? 1 / tanl(kPi * (0.5L - f)) : tanl(kPi * f); }   // of pi f
Real cosine(Real f) { return f > 0.25L ? sinl(kPi * (0.5L - f)) : cosl(kPi * f); }
Real squareOfRipple(Real ripple) { return expm1l(ripple * (M_LN10l / 10)); }   // epsilon^2

bool isRipple(double ripple) { return ripple >= 0 && ripple <= kMostRipple; }

// Poles of the prototype from the one on the real axis (or nearest to it) to the highest: rising Q. Those of a pair have the sum -2 decay.
struct Prototype {
    int order;
    Real sinhV, coshV, gain;   // of Chebyshev's, 1 and 1 of Butterworth's; at frequency 0

    Prototype(int n, double ripple) : order(n), sinhV(1), coshV(1), gain(1) {
        if (ripple == 0) return;
        const Real db = std::max(ripple, kLeastRipple), v = asinhl(1 / sqrtl(squareOfRipple(db))) / order;
        sinhV = sinhl(v);
        coshV = coshl(v);
        if (order % 2 == 0) gain = expl(-db * (M_LN10l / 20));
    }
    int pairs() const { return (order + 1) / 2; }
    bool isSingle(int i) const { return order % 2 && i == 0; }
    // -sigma + j omega, omega >= 0: the angle from the imaginary axis is that of the i-th pair from the middle.
    Complex pole(int i) const {
        if (isSingle(i)) return {-sinhV, 0};
        const Real steps = order % 2 ? 2 * i : 2 * i + 1, fromReal = kPi * steps / (2 * order);
        return {-sinhV * cosl(fromReal), coshV * sinl(fromReal)};
    }
};

// s^2 + b s + c by the bilinear transform; what keeps a section's gain at 1 at the reference is taken from the rounded coefficients.
struct Denominator {
    Real a1, a2;
};   // doubles
Denominator bilinear(Real b, Real c) {
    const Real a0 = 1 + b + c;
    return {Real(double(2 * (c - 1) / a0)), Real(double((1 - b + c) / a0))};
}
void putSection(double* taps, Real b0, Real b1, Real b2, Denominator a) {
    const double section[] = {double(b0), double(b0 * b1), double(b0 * b2), 1, double(a.a1), double(a.a2)};
    std::copy_n(section, 6, taps);
}

constexpr Real kNothing = 0x1p-60L;

// Every second-order section of a low-pass or high-pass design.
void sectionsOfOneEdge(double* pTaps, int order, double rFreq, double ripple, bool highpass) {
    const Prototype prototype(order, ripple);
    if (rFreq == 0.5) {
        for (int i = 0; i < prototype.pairs(); ++i) putSection(pTaps + 6 * i, i > 0 ? 1 : highpass ? kNothing : prototype.gain, 0, 0, {0, 0});
        return;
    }
    const Real w = tangent(std::clamp(rFreq, kLeastEdge, 0.5 - kLeastEdge)), side = highpass ? -1 : 1;
    for (int i = 0; i < prototype.pairs(); ++i) {
        const Complex p = prototype.pole(i);
        const Real scale = highpass ? w / p.square() : w;   // 1/p is p's conjugate over its square
        Real gain = i == 0 ? prototype.gain : 1;
        if (prototype.isSingle(i)) {
            const Real decay = -p.re * scale;
            const Real a1 = Real(double((decay - 1) / (decay + 1)));
            putSection(pTaps + 6 * i, gain * (1 + side * a1) / 2, side, 0, {a1, 0});
        } else {
            const Denominator a = bilinear(-2 * p.re * scale, p.square() * scale * scale);
            putSection(pTaps + 6 * i, gain * (1 + side * a.a1 + a.a2) / 4, 2 * side, 1, a);
        }
    }
}

void arbitraryOfOneEdge(double* pTaps, int order, double rFreq, double ripple, bool highpass) {
    double sections[6 * (kMostOrder + 1) / 2];
    sectionsOfOneEdge(sections, order, rFreq, ripple, highpass);
    for (int part = 0; part < 2; ++part) {
        Real product[kMostOrder + 3] = {1};
        for (int i = 0; i < (order + 1) / 2; ++i) {
            const double* const f = sections + 6 * i + 3 * part;
            for (int k = order; k >= 0; --k) product[k] = f[0] * product[k] + (k > 0 ? f[1] * product[k - 1] : 0) + (k > 1 ? f[2] * product[k - 2] : 0);
        }
        for (int k = 0; k <= order; ++k) pTaps[part * (order + 1) + k] = double(product[k]);
    }
}

// The root of z with a real part >= 0, each part to its own accuracy.
Complex squareRoot(Complex z) {
    const Real size = sqrtl((hypotl(z.re, z.im) + fabsl(z.re)) / 2), other = size > 0 ? z.im / (2 * size) : 0;
    if (z.re >= 0) return {size, other};
    return {fabsl(other), z.im < 0 ? -size : size};
}

void sectionsOfBand(double* pTaps, int order, double f1, double f2, double ripple, bool stop) {
    const Prototype prototype(order, ripple);
    const Real w1 = tangent(f1), w2 = tangent(f2), middle = w1 * w2;
    const Real width = sinl(kPi * (Real(f2) - f1)) / (cosine(f1) * cosine(f2));
    // The centre: tan^2(omega / 2) = middle.
    const Real cosOmega = (1 - middle) / (1 + middle), sinOmega = 2 * sqrtl(middle) / (1 + middle);
    auto put = [&, first = true](Real b, Real c) mutable {
        const Denominator a = bilinear(b, c);
        Real gain = first ? prototype.gain : 1;
        first = false;
        if (stop) {
            gain *= (1 + a.a1 + a.a2) / (4 * middle / (1 + middle));   // 2 - 2 cos omega
            putSection(pTaps, gain, -2 * cosOmega, 1, a);
        } else {
            // |1 + a1 z^-1 + a2 z^-2| over |1 - z^-2|, of the rounded coefficients
            const Real re = (1 + a.a2) * cosOmega + a.a1, im = (1 - a.a2) * sinOmega;
            putSection(pTaps, gain * hypotl(re, im) / (2 * sinOmega), 0, -1, a);
        }
        pTaps += 6;
    };
    for (int i = 0; i < prototype.pairs(); ++i) {
        const Complex p = prototype.pole(i);
        const Complex half = Complex{p.re, stop ? -p.im : p.im} * (width / 2 / (stop ? p.square() : 1));
        if (prototype.isSingle(i)) {   // a pair of complex roots, or both of its real ones
            put(-2 * half.re, middle);
            continue;
        }
        // Roots of s^2 - 2 half s + middle: the larger one, and the smaller one from their product.
        Complex d = half * half;
        d.re -= middle;
        d = squareRoot(d);
        if (half.re * d.re + half.im * d.im < 0) d = d * -1;
        const Complex larger = half + d;
        const Real square = larger.square(), ratio = middle / square;
        put(-2 * larger.re * ratio, middle * ratio);
        put(-2 * larger.re, square);
    }
}

Args& ofDesign(Args& args, const double* pTaps, int order, bool goodFrequency, double ripple) {
    return args.ptr(pTaps)
        .require(order >= 1 && order <= kMostOrder, StatusIirGenOrder)
        .require(goodFrequency, StatusIirGenFreq)
        .require(isRipple(ripple), StatusIirGenDecibels);
}
using OneEdge = void(double*, int, double, double, bool);
Status iirGen(OneEdge* design, double* pTaps, int order, double rFreq, double ripple, bool highpass) {
    Args args;
    if (Status s = ofDesign(args, pTaps, order, rFreq > 0 && rFreq <= 0.5, ripple)) return s;
    exactly(design, pTaps, order, rFreq, ripple, highpass);
    return StatusOk;
}
Status iirGenBand(double* pTaps, int order, double f1, double f2, double ripple, bool stop) {
    Args args;
    const bool good = f1 >= kLeastBandEdge && f1 <= f2 - kLeastBandEdge && f2 <= 0.5 - kLeastBandEdge;
    if (Status s = ofDesign(args, pTaps, order, good, ripple)) return s;
    exactly(sectionsOfBand, pTaps, order, f1, f2, ripple, stop);
    return StatusOk;
}

// Of r - 1, since r may lie close to 1.
void leastOrder(double pass, double stop, double ripple, double decibels, Real* order) {
    const Real low = std::min(pass, stop), high = std::max(pass, stop);
    const Real x = sinl(kPi * (high - low)) / (cosine(high) * sinl(kPi * low)), square = squareOfRipple(decibels);   // tan(high) / tan(low) - 1
    if (ripple == 0) {
        *order = ceill(logl(square) / 2 / log1pl(x));
    } else {
        const Real d = sqrtl(square / squareOfRipple(std::max(ripple, kLeastRipple)));
        *order = d <= 1 ? 1 : ceill(acoshl(d) / log1pl(x + sqrtl(x * (2 + x))));
    }
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsFIRGenLowpass_64f(double* pTaps, int tapsLen, double rFreq, int taper) { return firGen(pTaps, tapsLen, rFreq, 0, taper, kLowpass); }
Status tevsFIRGenHighpass_64f(double* pTaps, int tapsLen, double rFreq, int taper) { return firGen(pTaps, tapsLen, rFreq, 0, taper, kHighpass); }
Status tevsFIRGenBandpass_64f(double* pTaps, int tapsLen, double rFreq1, double rFreq2, int taper) {
    return firGen(pTaps, tapsLen, rFreq1, rFreq2, taper, kBandpass);
}
Status tevsFIRGenBandstop_64f(double* pTaps, int tapsLen, double rFreq1, double rFreq2, int taper) {
    return firGen(pTaps, tapsLen, rFreq1, rFreq2, taper, kBandstop);
}
Status tevsFIRGenRootCosine_64f(double* pTaps, int tapsLen, double rFreq, double rolloff) {
    if (Status s = Args().ptr(pTaps).len(tapsLen).require(rFreq > 0 && rFreq <= 0.5 && rolloff >= 0 && rolloff <= 1, StatusRelFreq)) return s;
    exactly(rootCosineTaps, pTaps, tapsLen, rFreq, rolloff);
    return StatusOk;
}
Status tevsFIRGenKaiser_64f(double rWidth, double decibels, int* pTapsLen, float* pAlpha) {
    Kaiser k;
    if (Status s = Args().ptr(pTapsLen).ptr(pAlpha).require(isInside(rWidth), StatusRelFreq).require(isfinite(decibels), StatusBadSize)) return s;
    exactly(kaiserEstimate, rWidth, decibels, &k);
    if (!(k.tapsLen <= INT_MAX)) return StatusBadSize;
    *pTapsLen = int(k.tapsLen);
    *pAlpha = *pTapsLen == 1 ? 0 : k.alpha;
    return StatusOk;
}
Status tevsFIRResponse_64f(const double* pTaps, int tapsLen, const double* pRFreq, Complex64f* pDst, int len) {
    if (Status s = Args().ptr(pTaps).ptr(pRFreq).ptr(pDst).len(tapsLen).len(len)) return s;
    exactly(firResponse, pTaps, tapsLen, pRFreq, pDst, len);
    return StatusOk;
}

Status tevsIIRGenLowpass_64f(double* pTaps, int order, double rFreq, double ripple) { return iirGen(arbitraryOfOneEdge, pTaps, order, rFreq, ripple, false); }
Status tevsIIRGenLowpass_BiQuad_64f(double* pTaps, int order, double rFreq, double ripple) {
    return iirGen(sectionsOfOneEdge, pTaps, order, rFreq, ripple, false);
}
Status tevsIIRGenHighpass_64f(double* pTaps, int order, double rFreq, double ripple) { return iirGen(arbitraryOfOneEdge, pTaps, order, rFreq, ripple, true); }
Status tevsIIRGenHighpass_BiQuad_64f(double* pTaps, int order, double rFreq, double ripple) {
    return iirGen(sectionsOfOneEdge, pTaps, order, rFreq, ripple, true);
}
Status tevsIIRGenBandpass_BiQuad_64f(double* pTaps, int order, double rFreq1, double rFreq2, double ripple) {
    return iirGenBand(pTaps, order, rFreq1, rFreq2, ripple, false);
}
Status tevsIIRGenBandstop_BiQuad_64f(double* pTaps, int order, double rFreq1, double rFreq2, double ripple) {
    return iirGenBand(pTaps, order, rFreq1, rFreq2, ripple, true);
}
Status tevsIIRGenOrder_64f(double rFreqPass, double rFreqStop, double ripple, double decibels, int* pOrder) {
    const bool good = isInside(rFreqPass) && isInside(rFreqStop) && rFreqPass != rFreqStop;
    if (Status s = Args().ptr(pOrder).require(good, StatusIirGenFreq).require(isRipple(ripple) && decibels > 0 && isfinite(decibels), StatusIirGenDecibels))
        return s;
    Real order;
    exactly(leastOrder, rFreqPass, rFreqStop, ripple, decibels, &order);
    if (!(order <= kMostOrder)) return StatusIirGenOrder;
    *pOrder = order < 1 ? 1 : int(order);
    return StatusOk;
}
Status tevsIIRResponse_64f(const double* pTaps, int order, const double* pRFreq, Complex64f* pDst, int len) {
    if (Status s = Args()
                       .ptr(pTaps)
                       .ptr(pRFreq)
                       .ptr(pDst)
                       .len(len)
                       .require(order >= 1, StatusFilterOrder)
                       .require([=] { return isDivisor(pTaps[ptrdiff_t{order} + 1]); }, StatusDivByZeroErr))
        return s;
    exactly(iirResponse, pTaps, order, pRFreq, pDst, len);
    return StatusOk;
}
Status tevsIIRResponse_BiQuad_64f(const double* pTaps, int numBq, const double* pRFreq, Complex64f* pDst, int len) {
    const auto good = [=] {
        for (ptrdiff_t s = 0; s < numBq; ++s)
            if (!isDivisor(pTaps[6 * s + 3])) return false;
        return true;
    };
    if (Status s = Args().ptr(pTaps).ptr(pRFreq).ptr(pDst).len(len).require(numBq >= 1, StatusFilterOrder).require(good, StatusDivByZeroErr)) return s;
    exactly(iirResponseOfSections, pTaps, numBq, pRFreq, pDst, len);
    return StatusOk;
}
