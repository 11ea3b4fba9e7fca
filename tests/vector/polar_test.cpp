#include <algorithm>
#include <climits>
#include <cmath>
#include <functional>

#include "support/elements.h"

using namespace test;

namespace {

using Exact = long double;

// ---- floating point: distance from extended precision, in units in the last place of the true result ----------------------------------------

template <class T> using Pair = std::conditional_t<sizeof(T) == 4, Complex32f, Complex64f>;
template <class T> constexpr bool kIsSingle = sizeof(T) == 4;

template <class T> struct Names;
#define NAMES(T, code)                                                                                                                \
    template <> struct Names<T> {                                                                                                     \
        static constexpr auto arctan = tevsArctan_##code;                                                                             \
        static constexpr auto magnitude = tevsMagnitude_##code, phase = tevsPhase_##code, power = tevsPowerSpectr_##code;             \
        static constexpr auto magnitudeC = tevsMagnitude_##code##c, phaseC = tevsPhase_##code##c, powerC = tevsPowerSpectr_##code##c; \
        static constexpr auto toPolar = tevsCartToPolar_##code, toCart = tevsPolarToCart_##code;                                      \
        static constexpr auto toPolarC = tevsCartToPolar_##code##c, toCartC = tevsPolarToCart_##code##c;                              \
    };
NAMES(float, 32f)
NAMES(double, 64f)

// (x, y) in polar form, and x and y as a magnitude and a phase in Cartesian form. The bound of a magnitude is half a unit for the root and 1.25 / sqrt(3) for its
// argument.
template <class T> void expectParts(T x, T y, T magnitude, T phase, T re, T im) {
    const Exact size = std::isinf(x) || std::isinf(y) ? Exact(INFINITY) : std::hypot(Exact(x), Exact(y));
    ASSERT_LE(ulps(magnitude, size), 1.23) << "|" << x << ", " << y << "|";
    ASSERT_LE(ulps(phase, std::atan2(Exact(y), Exact(x))), kIsSingle<T> ? 2 : 0.65) << "phase of " << x << ", " << y;
    ASSERT_LE(ulps(re, x * std::cos(Exact(y))), 2.5) << x << " cos " << y;
    ASSERT_LE(ulps(im, x * std::sin(Exact(y))), 2.5) << x << " sin " << y;
}

// A mixture: the whole range, the range of signals, multiples of pi/4 and so on, where an unusual value sits beside usual ones.
template <class T> std::vector<T> mixture(size_t n) {
    std::vector<T> v = wildFloats<T>(n);
    for (T& x : v)
        if (const auto kind = generator()() % 4; kind < 2) x = kind ? T(0.785398163397448309616L * Exact(int(generator()() % 65) - 32)) : 4 * randomValue<T>();
    return v;
}

// Every function of two parts over one set of samples; the forms without a bound of their own give the same bits.
template <class T> void withinBounds() {
    using N = Names<T>;
    constexpr int len = 20011;
    const std::vector<T> a = mixture<T>(len), b = mixture<T>(len);
    std::vector<T> magnitude(len), phase(len), power(len), re(len), im(len), arctan(len);
    std::vector<Pair<T>> z(len), cart(len);
    for (size_t i = 0; i < len; ++i) z[i] = {a[i], b[i]};
    ASSERT_EQ(N::magnitude(a.data(), b.data(), magnitude.data(), len), StatusOk);
    ASSERT_EQ(N::phase(a.data(), b.data(), phase.data(), len), StatusOk);
    ASSERT_EQ(N::power(a.data(), b.data(), power.data(), len), StatusOk);
    ASSERT_EQ(N::toCart(a.data(), b.data(), re.data(), im.data(), len), StatusOk);
    ASSERT_EQ(N::arctan(a.data(), arctan.data(), len), StatusOk);
    for (size_t i = 0; i < len; ++i) {
        const T x = a[i], y = b[i];
        expectParts(x, y, magnitude[i], phase[i], re[i], im[i]);
        ASSERT_LE(ulps(power[i], Exact(x) * x + Exact(y) * y), 1.25) << x << "^2 + " << y << "^2";
        ASSERT_LE(ulps(arctan[i], std::atan(Exact(x))), kIsSingle<T> ? 1.5 : 0.6) << x;
    }
    const auto bits = [](const std::vector<T>& want, auto f, auto... sources) {
        return agrees<T>([=](const T*, T* d, int n) { return f(sources..., d, n); }, of(want), std::identity());
    };
    EXPECT_TRUE(bits(magnitude, N::magnitudeC, z.data()));
    EXPECT_TRUE(bits(phase, N::phaseC, z.data()));
    EXPECT_TRUE(bits(power, N::powerC, z.data()));
    std::vector<T> m(len), p(len);
    for (const bool complex : {true, false}) {
        ASSERT_EQ(complex ? N::toPolarC(z.data(), m.data(), p.data(), len) : N::toPolar(a.data(), b.data(), m.data(), p.data(), len), StatusOk);
        ASSERT_TRUE(sameNumbers(magnitude, m) && sameNumbers(phase, p));
    }
    ASSERT_EQ(N::toCartC(a.data(), b.data(), cart.data(), len), StatusOk);
    for (size_t i = 0; i < len; ++i) ASSERT_TRUE(sameNumbers<T>({re[i], im[i]}, {cart[i].re, cart[i].im}));
}
TEST(Parts, WithinBoundsInEveryForm) {
    withinBounds<float>();
    withinBounds<double>();
}

template <class T> void corners() {
    using N = Names<T>;
    const T inf = std::numeric_limits<T>::infinity(), tiny = std::numeric_limits<T>::denorm_min(), huge = std::numeric_limits<T>::max(),
            eps = std::numeric_limits<T>::epsilon();
    const T values[] = {0,        -T(0), tiny, -tiny, std::numeric_limits<T>::min(), eps, 1, T(1) + eps, -1, T(0.25), T(0.5), T(0.75), huge, -huge,
                        huge / 2, inf,   -inf, T(NAN)};
    for (T x : values)
        for (T y : values) {
            T phase, magnitude, re, im;
            N::toPolar(&x, &y, &magnitude, &phase, 1);
            N::toCart(&x, &y, &re, &im, 1);
            expectParts(x, y, magnitude, phase, re, im);
        }
}
TEST(Parts, Corners) {
    corners<float>();
    corners<double>();
}

// The quarters' nearest neighbours, and values with long known results: 1e22 (Ng, ARGUMENT REDUCTION FOR HUGE ARGUMENTS: GOOD TO THE LAST BIT), and the double nearest to a multiple
// of pi/2 of all (Muller, Elementary Functions, table 11.1).
TEST(PolarToCart, HardPhases) {
    struct Row {
        double phase, cosine, sine;
    };
    const Row rows[] = {
        {1e22, 0.5232147853951389454975945, -0.8522008497671888017727059},
        {std::ldexp(6381956970095103.0, 797), -4.687165924254627611122583e-19, 1},
        {-std::ldexp(6381956970095103.0, 797), -4.687165924254627611122583e-19, -1},
        {1.5707963267948966, 6.12323399573676588613033e-17, 1},
        {3.1415926535897931, -1, 1.224646799147353177226066e-16},
        {0x1p1023, -0.8263698346141479945007857, 0.5631277798508840134529434},
    };
    const auto check = [](double phase, Exact cosine, Exact sine) {
        double one = 1, re, im;
        tevsPolarToCart_64f(&one, &phase, &re, &im, 1);
        ASSERT_TRUE(ulps(re, cosine) <= 1.1 && ulps(im, sine) <= 1.1) << phase;
    };
    for (const Row& r : rows) check(r.phase, r.cosine, r.sine);
    for (int k = 1; k < 2000; ++k)
        for (int scale : {0, 3, 9, 12}) {
            const double phase = double(1.57079632679489661923132169163975144L * std::ldexp(Exact(k), scale));
            check(phase, std::cos(Exact(phase)), std::sin(Exact(phase)));
        }
}

// The bits of a fixed set of results: equal at every level and in both ABIs. A change of an approximation changes them, a change of anything else must not.
template <class T> uint64_t resultBits() {
    constexpr int n = 4099;
    std::mt19937_64 random(1729);
    std::vector<T> a(n), b(n), results(6 * n);
    for (int i = 0; i < n; ++i)
        for (auto* v : {&a, &b}) {
            // 24 bits of mantissa, and exponents of signals in two of three values.
            const uint64_t r = random();
            const int exponent =
                r % 3 == 0 ? int(r >> 32) % (2 * std::numeric_limits<T>::max_exponent) - std::numeric_limits<T>::max_exponent : int(r >> 32) % 8 - 4;
            (*v)[size_t(i)] = std::ldexp(T(int(random() >> 39) - (1 << 24)), exponent - 24);
        }
    using N = Names<T>;
    const auto result = [&](int k) { return &results[size_t(k * n)]; };
    N::arctan(a.data(), result(0), n);
    N::toPolar(a.data(), b.data(), result(1), result(2), n);
    N::power(a.data(), b.data(), result(3), n);
    N::toCart(a.data(), b.data(), result(4), result(5), n);
    return hashOf(results);
}
TEST(Parts, SameBitsAtEveryLevel) {
    EXPECT_EQ(resultBits<float>(), 4618324064987561605u);
    EXPECT_EQ(resultBits<double>(), 6452916733136595189u);
}

// ---- integers: the exact result in extended precision, scaled, rounded and saturated -----------------------------------------------------------

Exact magnitudeOf(int re, int im) { return std::sqrt(Exact(int64_t{re} * re + int64_t{im} * im)); }
Exact powerOf(int re, int im) { return Exact(int64_t{re} * re + int64_t{im} * im); }
Exact phaseOf(int re, int im) { return std::atan2(Exact(im), Exact(re)); }

constexpr int kScales[] = {0, 1, 2, 5, 14, 16, 17, 30, 31, 32, 33, -1, -12, -13, -15, -16, -17, -29, -40, INT_MIN, INT_MAX};

template <class Z> std::vector<Z> paired(const auto& re, const auto& im) {
    std::vector<Z> z(re.size());
    for (size_t i = 0; i < z.size(); ++i) z[i] = {re[i], im[i]};
    return z;
}

// Small values, where ties are, half of the time.
template <class T> std::vector<T> integers(size_t n) {
    std::vector<T> v = randomVector<T>(n);
    for (T& x : v)
        if (generator()() % 2) x = T(int(generator()() % 41) - 20);
    return v;
}

void scaledParts(Exact (*exact)(int, int), Status (*complex)(const Complex16s*, int16_t*, int, int),
                 Status (*split)(const int16_t*, const int16_t*, int16_t*, int, int)) {
    const auto re = integers<int16_t>(kMany), im = integers<int16_t>(kMany);
    const auto z = paired<Complex16s>(re, im);
    for (int scale : kScales) {
        const auto want = [=](int16_t x, int16_t y) { return nearest<int16_t>(exact(x, y), scale); };
        EXPECT_TRUE(agrees<int16_t>(with(complex, scale), of(z), [=](Complex16s v) { return want(v.re, v.im); })) << scale;
        EXPECT_TRUE(agrees<int16_t>(with(split, scale), of(re, im), want)) << scale;
    }
}
TEST(Integers, ScaledFormsEqualOracle) {
    scaledParts(magnitudeOf, tevsMagnitude_16sc_Sfs, tevsMagnitude_16s_Sfs);
    scaledParts(phaseOf, tevsPhase_16sc_Sfs, tevsPhase_16s_Sfs);
    scaledParts(powerOf, tevsPowerSpectr_16sc_Sfs, tevsPowerSpectr_16s_Sfs);
}

TEST(Integers, EveryMagnitudeAlongTheDiagonalAndTheAxes) {
    std::vector<Complex16s> z;
    for (int k = -32768; k <= 32767; ++k)
        for (const int other : {k, 0, -k - 1}) z.push_back({int16_t(k), int16_t(other)});
    for (int scale : {0, 1, 3}) {
        const auto want = [=](Complex16s v) { return nearest<int16_t>(magnitudeOf(v.re, v.im), scale); };
        EXPECT_TRUE(agrees<int16_t>(with(tevsMagnitude_16sc_Sfs, scale), of(z), want)) << scale;
    }
}

// Phases so near to a tie of units of 2^-29 that a double falls on the other side.
TEST(Integers, PhasesNextToTies) {
    struct Row {
        Complex32s z;
        int32_t want;
    };
    for (const Row& r : {Row{{861965561, -1749193941}, -597506405}, {{-349996574, -78106597}, -1568751049}, {{-648025050, 312423097}, 1445446825}}) {
        int32_t got;
        tevsPhase_32sc_Sfs(&r.z, &got, 1, -29);
        EXPECT_EQ(got, r.want);
    }
}

void floatParts(Status (*complex)(const Complex16s*, float*, int), Status (*split)(const int16_t*, const int16_t*, float*, int), Exact (*exact)(int, int),
                double bound) {
    const auto re = integers<int16_t>(kMany), im = integers<int16_t>(kMany);
    std::vector<float> a(kMany), b(kMany);
    ASSERT_EQ(complex(paired<Complex16s>(re, im).data(), a.data(), kMany), StatusOk);
    ASSERT_EQ(split(re.data(), im.data(), b.data(), kMany), StatusOk);
    for (size_t i = 0; i < kMany; ++i) ASSERT_LE(ulps(a[i], exact(re[i], im[i])), bound) << re[i] << ", " << im[i];
    ASSERT_TRUE(same(a, b));
}
TEST(Integers, FloatResultsWithinBounds) {
    floatParts(tevsMagnitude_16sc32f, tevsMagnitude_16s32f, magnitudeOf, 0.86);
    floatParts(tevsPhase_16sc32f, tevsPhase_16s32f, phaseOf, 2);
    floatParts(tevsPowerSpectr_16sc32f, tevsPowerSpectr_16s32f, powerOf, 0.5);
}

TEST(Integers, WidePhaseAndPolarForm) {
    constexpr int n = kMany;
    const auto z = paired<Complex32s>(integers<int32_t>(n), integers<int32_t>(n));
    const auto s = paired<Complex16s>(integers<int16_t>(n), integers<int16_t>(n));
    const auto m = integers<int16_t>(n), p = integers<int16_t>(n);
    for (int scale : kScales) {
        const auto phase = [=](Complex32s v) { return nearest<int32_t>(phaseOf(v.re, v.im), scale); };
        const auto cart = [=](int16_t size, int16_t angle) {
            return Complex16s{nearest<int16_t>(size * std::cos(Exact(angle)), scale), nearest<int16_t>(size * std::sin(Exact(angle)), scale)};
        };
        EXPECT_TRUE(agrees<int32_t>(with(tevsPhase_32sc_Sfs, scale), of(z), phase)) << scale;
        EXPECT_TRUE(agrees<Complex16s>(with(tevsPolarToCart_16sc_Sfs, scale), of(m, p), cart)) << scale;
        std::vector<int16_t> a(n), b(n);
        ASSERT_EQ(tevsCartToPolar_16sc_Sfs(s.data(), a.data(), b.data(), n, scale), StatusOk);
        for (size_t i = 0; i < n; ++i) {
            ASSERT_EQ(a[i], nearest<int16_t>(magnitudeOf(s[i].re, s[i].im), scale)) << scale;
            ASSERT_EQ(b[i], nearest<int16_t>(phaseOf(s[i].re, s[i].im), scale)) << scale;
        }
    }
    const auto wideM = integers<int32_t>(n), wideP = integers<int32_t>(n);
    std::vector<Complex32s> cart(n);
    ASSERT_EQ(tevsPolarToCart_32sc(wideM.data(), wideP.data(), cart.data(), n), StatusOk);
    for (size_t i = 0; i < n; ++i) {   // 2^-21: the error of a double with 31 bits before the point
        ASSERT_LE(std::fabs(cart[i].re - std::min<Exact>(wideM[i] * std::cos(Exact(wideP[i])), INT_MAX)), 0.5 + 0x1p-21);
        ASSERT_LE(std::fabs(cart[i].im - std::min<Exact>(wideM[i] * std::sin(Exact(wideP[i])), INT_MAX)), 0.5 + 0x1p-21);
    }
}

}   // namespace
