#include <algorithm>
#include <array>
#include <bit>
#include <climits>
#include <cmath>
#include <tuple>
#include <utility>

#include "support/data.h"
#include "support/guarded.h"
#include "tevcore.h"

using namespace test;

namespace {

using Exact = long double;

// ---- floating point: distance from extended precision, in units in the last place of the true result ----------------------------------------

template <class T> double ulps(Exact want, T got) {
    if (std::isnan(want) || std::isnan(got)) return std::isnan(want) && std::isnan(got) ? 0 : INFINITY;
    if (T(want) == got) return T(want) == 0 && std::signbit(want) != std::signbit(got) ? INFINITY : 0;
    if (std::isinf(got)) return INFINITY;
    const int exponent = std::max(want == 0 ? INT_MIN : std::ilogb(want) + 1, std::numeric_limits<T>::min_exponent);
    return double(std::fabs(std::ldexp(got - want, std::numeric_limits<T>::digits - exponent)));
}

// Equal to the bit; the sign and payload of a NaN are the machine's choice.
template <class T>::testing::AssertionResult sameNumbers(std::vector<T> want, std::vector<T> got) {
    for (auto* v : {&want, &got})
        for (T& x : *v)
            if (std::isnan(x)) x = T(NAN);
    return same(want, got);
}

template <class T> using Complex = std::conditional_t<sizeof(T) == 4, Complex32f, Complex64f>;
// Half a unit for the root and 1/(2 sqrt 2) for its argument; a result below the normal range is rounded once more.
template <class T> double magnitudeBound(Exact want) { return want < std::numeric_limits<T>::min() ? 1 : 0.86; }

template <class T> struct Names;
#define NAMES(T, code)                                                                                                                \
    template <> struct Names<T> {                                                                                                     \
        static constexpr auto arctan = tevsArctan_##code;                                                                             \
        static constexpr auto arctanInPlace = tevsArctan_##code##_I;                                                                  \
        static constexpr auto magnitude = tevsMagnitude_##code, phase = tevsPhase_##code, power = tevsPowerSpectr_##code;             \
        static constexpr auto magnitudeC = tevsMagnitude_##code##c, phaseC = tevsPhase_##code##c, powerC = tevsPowerSpectr_##code##c; \
        static constexpr auto toPolar = tevsCartToPolar_##code;                                                                       \
        static constexpr auto toPolarC = tevsCartToPolar_##code##c;                                                                   \
        static constexpr auto toCart = tevsPolarToCart_##code;                                                                        \
        static constexpr auto toCartC = tevsPolarToCart_##code##c;                                                                    \
    };
NAMES(float, 32f)
NAMES(double, 64f)

Exact exactMagnitude(Exact re, Exact im) { return std::isinf(re) || std::isinf(im) ? Exact(INFINITY) : std::hypot(re, im); }

// A mixture: the whole range, the range of signals, multiples of pi/4 and so on, where an unusual value sits beside usual ones.
template <class T> std::vector<T> mixture(size_t n) {
    std::vector<T> v = wildFloats<T>(n);
    for (T& x : v) switch (generator()() % 4) {
            case 0:
                x = T(4) * randomValue<T>();
                break;
            case 1:
                x = T(0.785398163397448309616L * Exact(int(generator()() % 65) - 32));
                break;
            default:
                break;
        }
    return v;
}

// Every function of two parts over one set of samples; `bound` is asked of what the library computes itself.
template <class T> void sweepParts() {
    using N = Names<T>;
    sweep<T>([](int len, Place at) {
        const auto n = size_t(len);
        const Guarded<T> a(mixture<T>(n), at), b(mixture<T>(n), {at.offset, !at.atEnd});
        std::vector<Complex<T>> pairs(n);
        for (size_t i = 0; i < n; ++i) pairs[i] = {a.data()[i], b.data()[i]};
        const Guarded<Complex<T>> z(pairs, at);
        Guarded<T> magnitude(n, at), phase(n, at), power(n, at), re(n, at), im(n, at), other(n, at), second(n, at);
        ASSERT_EQ(N::magnitude(a.data(), b.data(), magnitude, len), StatusOk);
        ASSERT_EQ(N::phase(a.data(), b.data(), phase, len), StatusOk);
        ASSERT_EQ(N::power(a.data(), b.data(), power, len), StatusOk);
        ASSERT_EQ(N::toCart(a.data(), b.data(), re, im, len), StatusOk);
        for (size_t i = 0; i < n; ++i) {
            const T x = a.data()[i], y = b.data()[i];
            ASSERT_LE(ulps(exactMagnitude(x, y), magnitude.data()[i]), magnitudeBound<T>(exactMagnitude(x, y))) << "|" << x << ", " << y << "|";
            ASSERT_LE(ulps(std::atan2(Exact(y), Exact(x)), phase.data()[i]), 0.65) << "phase of " << x << ", " << y;
            ASSERT_LE(ulps(Exact(x) * x + Exact(y) * y, power.data()[i]), sizeof(T) == 4 ? 0.5 : 0.76) << x << "^2 + " << y << "^2";
            ASSERT_LE(ulps(x * std::cos(Exact(y)), re.data()[i]), sizeof(T) == 4 ? 0.51 : 1.0) << x << " cos " << y;
            ASSERT_LE(ulps(x * std::sin(Exact(y)), im.data()[i]), sizeof(T) == 4 ? 0.51 : 1.0) << x << " sin " << y;
            // A lane's neighbours are without influence: the element alone gives the same.
            T alone[2];
            N::toCart(&x, &y, &alone[0], &alone[1], 1);
            ASSERT_TRUE(sameNumbers<T>({re.data()[i], im.data()[i]}, {alone[0], alone[1]})) << x << ", " << y;
            N::toPolar(&x, &y, &alone[0], &alone[1], 1);
            ASSERT_TRUE(sameNumbers<T>({magnitude.data()[i], phase.data()[i]}, {alone[0], alone[1]})) << x << ", " << y;
        }
        // The other forms give the same bits.
        ASSERT_EQ(N::magnitudeC(z.data(), other, len), StatusOk);
        ASSERT_TRUE(sameNumbers(magnitude.values(), other.values()));
        ASSERT_EQ(N::phaseC(z.data(), other, len), StatusOk);
        ASSERT_TRUE(sameNumbers(phase.values(), other.values()));
        ASSERT_EQ(N::powerC(z.data(), other, len), StatusOk);
        ASSERT_TRUE(sameNumbers(power.values(), other.values()));
        ASSERT_EQ(N::toPolarC(z.data(), other, second, len), StatusOk);
        ASSERT_TRUE(sameNumbers(magnitude.values(), other.values()) && sameNumbers(phase.values(), second.values()));
        Guarded<Complex<T>> cart(n, at);
        ASSERT_EQ(N::toCartC(a.data(), b.data(), cart, len), StatusOk);
        for (size_t i = 0; i < n; ++i) ASSERT_TRUE(sameNumbers<T>({re.data()[i], im.data()[i]}, {cart.data()[i].re, cart.data()[i].im}));
        // In place, also with the destinations exchanged.
        Guarded<T> p(a.values(), at), q(b.values(), at);
        ASSERT_EQ(N::toPolar(p.data(), q.data(), p, q, len), StatusOk);
        ASSERT_TRUE(sameNumbers(magnitude.values(), p.values()) && sameNumbers(phase.values(), q.values()));
        p.assign(a.values());
        q.assign(b.values());
        ASSERT_EQ(N::toCart(p.data(), q.data(), q, p, len), StatusOk);
        ASSERT_TRUE(sameNumbers(re.values(), q.values()) && sameNumbers(im.values(), p.values()));
        for (const Guarded<T>* d : {&magnitude, &phase, &power, &re, &im, &other, &second, &p, &q}) ASSERT_TRUE(d->intact());
        ASSERT_TRUE(cart.intact());
    });
}
TEST(Parts, FloatWithinBoundsInEveryForm) { sweepParts<float>(); }
TEST(Parts, DoubleWithinBoundsInEveryForm) { sweepParts<double>(); }

template <class T> void sweepArctan() {
    sweep<T>([](int len, Place at) {
        const Guarded<T> src(mixture<T>(size_t(len)), at);
        Guarded<T> dst(size_t(len), at), both(src.values(), at);
        ASSERT_EQ(Names<T>::arctan(src.data(), dst, len), StatusOk);
        for (int i = 0; i < len; ++i) ASSERT_LE(ulps(std::atan(Exact(src.data()[i])), dst.data()[i]), sizeof(T) == 4 ? 0.51 : 0.6) << src.data()[i];
        ASSERT_EQ(Names<T>::arctanInPlace(both, len), StatusOk);
        ASSERT_TRUE(sameNumbers(dst.values(), both.values()));
        ASSERT_TRUE(dst.intact() && both.intact());
    });
}
TEST(Arctan, WithinBounds) {
    sweepArctan<float>();
    sweepArctan<double>();
}

template <class T> T largest() { return std::numeric_limits<T>::max(); }
template <class T> T smallest() { return std::numeric_limits<T>::denorm_min(); }

template <class T> void corners() {
    using N = Names<T>;
    const T inf = std::numeric_limits<T>::infinity(), tiny = smallest<T>(), huge = largest<T>(), eps = std::numeric_limits<T>::epsilon();
    const T values[] = {0,        -T(0), tiny, -tiny, std::numeric_limits<T>::min(), eps, 1, T(1) + eps, -1, T(0.25), T(0.5), T(0.75), huge, -huge,
                        huge / 2, inf,   -inf, T(NAN)};
    for (T x : values)
        for (T y : values) {
            T phase, magnitude, re, im;
            N::toPolar(&x, &y, &magnitude, &phase, 1);
            EXPECT_LE(ulps(std::atan2(Exact(y), Exact(x)), phase), 0.65) << x << ", " << y;
            EXPECT_LE(ulps(exactMagnitude(x, y), magnitude), magnitudeBound<T>(exactMagnitude(x, y))) << x << ", " << y;
            N::toCart(&x, &y, &re, &im, 1);
            EXPECT_LE(ulps(x * std::cos(Exact(y)), re), 1.0) << x << " cos " << y;
            EXPECT_LE(ulps(x * std::sin(Exact(y)), im), 1.0) << x << " sin " << y;
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
    const double one = 1;
    for (const Row& r : rows) {
        double re, im;
        tevsPolarToCart_64f(&one, &r.phase, &re, &im, 1);
        EXPECT_LE(ulps(Exact(r.cosine), re), 1) << r.phase;
        EXPECT_LE(ulps(Exact(r.sine), im), 1) << r.phase;
    }
    for (int k = 1; k < 2000; ++k)
        for (int scale : {0, 3, 9, 12}) {
            const double phase = double(1.57079632679489661923132169163975144L * std::ldexp(Exact(k), scale));
            double re, im;
            tevsPolarToCart_64f(&one, &phase, &re, &im, 1);
            ASSERT_LE(ulps(std::cos(Exact(phase)), re), 1) << phase;
            ASSERT_LE(ulps(std::sin(Exact(phase)), im), 1) << phase;
        }
}

// The bits of a fixed set of results: equal at every level and in both ABIs. A change of an approximation changes them, a change of anything else must not.
template <class T> struct Hashed {
    uint64_t hash = 1469598103934665603u;
    void add(const std::vector<T>& v) {
        for (T x : v) {
            if (std::isnan(x)) x = T(0);   // the sign of a NaN is the machine's choice
            for (const char c : std::bit_cast<std::array<char, sizeof(T)>>(x)) hash = (hash ^ uint8_t(c)) * 1099511628211u;
        }
    }
};
template <class T> uint64_t resultBits() {
    constexpr int n = 4099;
    std::mt19937_64 random(1729);
    std::vector<T> a(n), b(n), p(n), q(n);
    for (int i = 0; i < n; ++i)
        for (auto* v : {&a, &b}) {
            // 24 bits of mantissa, and exponents of signals in two of three values.
            const uint64_t r = random();
            const int exponent =
                r % 3 == 0 ? int(r >> 32) % (2 * std::numeric_limits<T>::max_exponent) - std::numeric_limits<T>::max_exponent : int(r >> 32) % 8 - 4;
            (*v)[size_t(i)] = std::ldexp(T(int(random() >> 39) - (1 << 24)), exponent - 24);
        }
    using N = Names<T>;
    Hashed<T> h;
    N::arctan(a.data(), p.data(), n);
    h.add(p);
    N::toPolar(a.data(), b.data(), p.data(), q.data(), n);
    h.add(p);
    h.add(q);
    N::power(a.data(), b.data(), p.data(), n);
    h.add(p);
    N::toCart(a.data(), b.data(), p.data(), q.data(), n);
    h.add(p);
    h.add(q);
    return h.hash;
}
TEST(Parts, SameBitsAtEveryLevel) {
    EXPECT_EQ(resultBits<float>(), 14436251285580121015u);
    EXPECT_EQ(resultBits<double>(), 2003760929774492543u);
}

// ---- integers: the exact result in extended precision, scaled, rounded and saturated -----------------------------------------------------------

template <class D> D scaledTo(Exact exact, int scale) {
    const Exact v = std::nearbyint(std::ldexp(exact, -std::clamp(scale, -2000, 2000)));
    return D(std::clamp(v, Exact(std::numeric_limits<D>::min()), Exact(std::numeric_limits<D>::max())));
}
Exact magnitudeOf(int re, int im) { return std::sqrt(Exact(int64_t{re} * re + int64_t{im} * im)); }
Exact powerOf(int re, int im) { return Exact(int64_t{re} * re + int64_t{im} * im); }
Exact phaseOf(int re, int im) { return std::atan2(Exact(im), Exact(re)); }

constexpr int kScales[] = {0, 1, 2, 5, 14, 16, 17, 30, 31, 32, 33, -1, -12, -13, -15, -16, -17, -29, -40, INT_MIN, INT_MAX};

// Small values, where ties are, half of the time.
template <class T> std::vector<T> integers(size_t n) {
    std::vector<T> v = randomVector<T>(n);
    for (T& x : v)
        if (generator()() % 2) x = T(int(generator()() % 41) - 20);
    return v;
}

using Parts16 = std::vector<int16_t>;
template <class Z> std::vector<Z> paired(const auto& re, const auto& im) {
    std::vector<Z> z(re.size());
    for (size_t i = 0; i < z.size(); ++i) z[i] = {re[i], im[i]};
    return z;
}

void scaledParts(Status (*complex)(const Complex16s*, int16_t*, int, int), Status (*split)(const int16_t*, const int16_t*, int16_t*, int, int),
                 Exact (*exact)(int, int)) {
    sweep<int16_t>([=](int len, Place at) {
        const Guarded<int16_t> re(integers<int16_t>(size_t(len)), at), im(integers<int16_t>(size_t(len)), at);
        const Guarded<Complex16s> z(paired<Complex16s>(re.values(), im.values()), at);
        for (int scale : kScales) {
            Guarded<int16_t> a(size_t(len), at), b(re.values(), at);
            ASSERT_EQ(complex(z.data(), a, len, scale), StatusOk);
            ASSERT_EQ(split(b.data(), im.data(), b, len, scale), StatusOk);
            Parts16 want;
            for (int i = 0; i < len; ++i) want.push_back(scaledTo<int16_t>(exact(re.data()[i], im.data()[i]), scale));
            ASSERT_TRUE(same(want, a.values())) << len << " scale " << scale;
            ASSERT_TRUE(same(want, b.values())) << len << " in place, scale " << scale;
            ASSERT_TRUE(a.intact() && b.intact());
        }
    });
}
TEST(Integers, ScaledFormsEqualOracle) {
    scaledParts(tevsMagnitude_16sc_Sfs, tevsMagnitude_16s_Sfs, magnitudeOf);
    scaledParts(tevsPhase_16sc_Sfs, tevsPhase_16s_Sfs, phaseOf);
    scaledParts(tevsPowerSpectr_16sc_Sfs, tevsPowerSpectr_16s_Sfs, powerOf);
}

TEST(Integers, EveryMagnitudeAlongTheDiagonalAndTheAxes) {
    for (int k = -32768; k <= 32767; ++k) {
        const Complex16s z[] = {{int16_t(k), int16_t(k)}, {int16_t(k), 0}, {int16_t(k), int16_t(-k - 1)}};
        for (int scale : {0, 1, 3}) {
            int16_t got[3];
            tevsMagnitude_16sc_Sfs(z, got, 3, scale);
            for (int i = 0; i < 3; ++i) ASSERT_EQ(got[i], scaledTo<int16_t>(magnitudeOf(z[i].re, z[i].im), scale)) << k << " scale " << scale;
        }
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
    sweep<int16_t>([=](int len, Place at) {
        const Guarded<int16_t> re(integers<int16_t>(size_t(len)), at), im(integers<int16_t>(size_t(len)), at);
        const Guarded<Complex16s> z(paired<Complex16s>(re.values(), im.values()), at);
        Guarded<float> a(size_t(len), at), b(size_t(len), at);
        ASSERT_EQ(complex(z.data(), a, len), StatusOk);
        ASSERT_EQ(split(re.data(), im.data(), b, len), StatusOk);
        for (int i = 0; i < len; ++i) ASSERT_LE(ulps(exact(re.data()[i], im.data()[i]), a.data()[i]), bound) << re.data()[i] << ", " << im.data()[i];
        ASSERT_TRUE(same(a.values(), b.values()));
        ASSERT_TRUE(a.intact() && b.intact());
    });
}
TEST(Integers, FloatResultsWithinBounds) {
    floatParts(tevsMagnitude_16sc32f, tevsMagnitude_16s32f, magnitudeOf, 0.86);
    floatParts(tevsPhase_16sc32f, tevsPhase_16s32f, phaseOf, 0.51);
    floatParts(tevsPowerSpectr_16sc32f, tevsPowerSpectr_16s32f, powerOf, 0.5);
}

TEST(Integers, WidePhaseAndPolarForm) {
    sweep<int32_t>([](int len, Place at) {
        const auto n = size_t(len);
        const Guarded<Complex32s> z(paired<Complex32s>(integers<int32_t>(n), integers<int32_t>(n)), at);
        const Guarded<Complex16s> s(paired<Complex16s>(integers<int16_t>(n), integers<int16_t>(n)), at);
        const Guarded<int16_t> m(integers<int16_t>(n), at), p(integers<int16_t>(n), at);
        const Guarded<int32_t> wideM(integers<int32_t>(n), at), wideP(integers<int32_t>(n), at);
        for (int scale : kScales) {
            Guarded<int32_t> phase(n, at);
            Guarded<int16_t> a(n, at), b(n, at);
            Guarded<Complex16s> c(n, at);
            ASSERT_EQ(tevsPhase_32sc_Sfs(z.data(), phase, len, scale), StatusOk);
            ASSERT_EQ(tevsCartToPolar_16sc_Sfs(s.data(), a, b, len, scale), StatusOk);
            ASSERT_EQ(tevsPolarToCart_16sc_Sfs(m.data(), p.data(), c, len, scale), StatusOk);
            for (size_t i = 0; i < n; ++i) {
                ASSERT_EQ(phase.data()[i], scaledTo<int32_t>(phaseOf(z.data()[i].re, z.data()[i].im), scale)) << scale;
                ASSERT_EQ(a.data()[i], scaledTo<int16_t>(magnitudeOf(s.data()[i].re, s.data()[i].im), scale)) << scale;
                ASSERT_EQ(b.data()[i], scaledTo<int16_t>(phaseOf(s.data()[i].re, s.data()[i].im), scale)) << scale;
                ASSERT_EQ(c.data()[i].re, scaledTo<int16_t>(m.data()[i] * std::cos(Exact(p.data()[i])), scale)) << scale;
                ASSERT_EQ(c.data()[i].im, scaledTo<int16_t>(m.data()[i] * std::sin(Exact(p.data()[i])), scale)) << scale;
            }
            ASSERT_TRUE(phase.intact() && a.intact() && b.intact() && c.intact());
        }
        Guarded<Complex32s> cart(n, at);
        ASSERT_EQ(tevsPolarToCart_32sc(wideM.data(), wideP.data(), cart, len), StatusOk);
        for (size_t i = 0; i < n; ++i) {
            // 2^-21: the error of a double with 31 bits before the point.
            ASSERT_LE(std::fabs(cart.data()[i].re - std::min<Exact>(wideM.data()[i] * std::cos(Exact(wideP.data()[i])), INT_MAX)), 0.5 + 0x1p-21);
            ASSERT_LE(std::fabs(cart.data()[i].im - std::min<Exact>(wideM.data()[i] * std::sin(Exact(wideP.data()[i])), INT_MAX)), 0.5 + 0x1p-21);
        }
        ASSERT_TRUE(cart.intact());
    });
}

// ---- the call -----------------------------------------------------------------------------------------------------------------------------------

// Each pointer null in turn, first of all; then lengths below 1; nothing written.
template <class... A> void rejects(Status (*f)(A...)) {
    Guarded<double> memory(64);
    const auto call = [&](size_t nullAt, int len) {
        std::tuple<A...> args{};
        size_t at = 0;
        bool first = true;
        std::apply(
            [&](auto&... arg) {
                const auto set = [&](auto& a) {
                    if constexpr (std::is_pointer_v<std::remove_reference_t<decltype(a)>>)
                        a = at == nullAt ? nullptr : reinterpret_cast<std::remove_reference_t<decltype(a)>>(memory.data() + 8 * at);
                    else
                        a = std::exchange(first, false) ? len : 0;
                    ++at;
                };
                (set(arg), ...);
            },
            args);
        return std::apply(f, args);
    };
    constexpr size_t pointers = (size_t{std::is_pointer_v<A>} + ...);
    for (size_t i = 0; i < pointers; ++i)
        for (int len : {4, 0}) EXPECT_EQ(call(i, len), StatusNullPtr);
    for (int len : {0, -1, INT_MIN}) EXPECT_EQ(call(pointers, len), StatusBadSize);
    EXPECT_TRUE(memory.untouched());
}
TEST(Parts, RejectBadArguments) {
    const auto all = [](auto... f) { (rejects(f), ...); };
    all(tevsArctan_32f, tevsArctan_64f, tevsArctan_32f_I, tevsArctan_64f_I);
#define X(op) \
    all(tevs##op##_32fc, tevs##op##_64fc, tevs##op##_16sc_Sfs, tevs##op##_16sc32f, tevs##op##_32f, tevs##op##_64f, tevs##op##_16s_Sfs, tevs##op##_16s32f);
    X(Magnitude)
    X(Phase)
    X(PowerSpectr)
#undef X
    all(tevsPhase_32sc_Sfs, tevsPolarToCart_32sc);
#define X(op) all(tevs##op##_32fc, tevs##op##_64fc, tevs##op##_16sc_Sfs, tevs##op##_32f, tevs##op##_64f);
    X(CartToPolar) X(PolarToCart)
#undef X
}

TEST(Parts, IgnoreAndKeepTheCallersRounding) {
    const uint64_t single = resultBits<float>(), twice = resultBits<double>();
    const Complex16s z = {181, 181};   // 255.97
    for (uint32_t rc : {1u, 2u, 3u}) {
        const uint32_t before = tev_set_rc_ssx(rc);
        int16_t m = 0;
        tevsMagnitude_16sc_Sfs(&z, &m, 1, 0);
        const float one = 1;
        float quarter;
        tevsArctan_32f(&one, &quarter, 1);
        const uint32_t after = tev_set_cw_ssx(before);
        EXPECT_EQ(m, 256);
        EXPECT_EQ(quarter, 0x1.921fb6p-1f);
        EXPECT_EQ((after >> 13) & 3, rc);
    }
    EXPECT_EQ(single, resultBits<float>());
    EXPECT_EQ(twice, resultBits<double>());
}

}   // namespace
