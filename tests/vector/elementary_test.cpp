#include <climits>
#include <cmath>
#include <complex>

#include "support/elements.h"

using namespace test;

namespace {

constexpr float kInf = INFINITY;

long double square(long double x) { return x * x; }

template <class S, class D> using Function = Status (*)(const S*, D*, int);
template <class S, class D = S> using ScaledFunction = Status (*)(const S*, D*, int, int);

// ---- accuracy ---------------------------------------------------------------------------------------------------------------------

// Every 4093rd float; of doubles as many bit patterns, and as many numbers in each of some ranges where a function changes its ways.
std::vector<float> samples(float) {
    std::vector<float> v;
    for (uint64_t b = 0; b < uint64_t{1} << 32; b += 4093) v.push_back(std::bit_cast<float>(uint32_t(b)));
    return v;
}
std::vector<double> samples(double) {
    std::vector<double> v;
    auto& g = generator();
    for (int i = 0; i < 200000; ++i) v.push_back(std::bit_cast<double>(g()));
    const double ranges[][2] = {{-1, 1}, {0.6, 1.5}, {-746, -700}, {-40, 40}, {700, 710}, {0, 0x1p-1020}, {1 - 0x1p-20, 1 + 0x1p-20}, {-0x1p-30, 0x1p-30},
                                {0, 1e6}};
    for (const auto& r : ranges)
        for (int i = 0; i < 60000; ++i) v.push_back(std::uniform_real_distribution<double>(r[0], r[1])(g));
    return v;
}

// Within the bound of the function, which works in extended precision, and the same to the bit (by their hash) at every level and in both ABIs.
template <class S, class D> void accurate(Function<S, D> f, long double (*reference)(long double), double bound, uint64_t hash) {
    generator().seed(26);
    const std::vector<S> x = samples(S());
    std::vector<D> y(x.size());
    ASSERT_GE(f(x.data(), y.data(), int(x.size())), StatusOk);
    double worst = 0;
    S at = 0;
    for (size_t i = 0; i < x.size(); ++i)
        if (const double e = ulps(y[i], reference(x[i])); e > worst) worst = e, at = x[i];
    EXPECT_LE(worst, bound) << nameOf(f) << " at " << at;
    EXPECT_EQ(hashOf(y), hash) << nameOf(f) << std::hex << " 0x" << hashOf(y);
}

TEST(Elementary, AccurateAndTheSameEverywhere) {
    accurate(tevsExp_32f, expl, 0.90, 0xe7e092d8684d509b);
    accurate(tevsExp_32f64f, expl, 0.92, 0x67cb18b97f160cef);
    accurate(tevsLn_32f, logl, 0.86, 0x7c449d8fbce2c194);
    accurate(tevsSqrt_32f, sqrtl, 0.5, 0x96dce02d81c58e3d);
    accurate(tevsCubrt_32f, cbrtl, 0.84, 0x3b8ea65be145f085);
    accurate(tevsSqr_32f, square, 0.5, 0xdd35fd4723b8cf9e);
    accurate(tevsExp_64f, expl, 0.92, 0xca6a084f997282a0);
    accurate(tevsLn_64f, logl, 0.94, 0x09113e4bad688288);
    accurate(tevsLn_64f32f, logl, 0.501, 0xad14ea50ddb1a134);
    accurate(tevsSqrt_64f, sqrtl, 0.5005, 0xab598ec228ca1cd2);
}

// A part of the complex root beside the extended one's, whose parts are formed without cancellation as well.
template <class Z> void accurateRoots(Function<Z, Z> f, double bound) {
    std::vector<Z> z = wildFloats<Z>(20000), usual = randomVector<Z>(20000), root(40000);
    z.insert(z.end(), usual.begin(), usual.end());
    ASSERT_EQ(f(z.data(), root.data(), int(z.size())), StatusOk);
    for (size_t i = 0; i < z.size(); ++i) {
        if (std::isnan(z[i].re) || std::isnan(z[i].im)) continue;
        const std::complex<long double> want = std::sqrt(std::complex<long double>(z[i].re, z[i].im));
        ASSERT_LE(ulps(root[i].re, want.real()), bound) << z[i].re << " " << z[i].im;
        ASSERT_LE(ulps(root[i].im, want.imag()), bound) << z[i].re << " " << z[i].im;
    }
}

TEST(Sqrt, ComplexRootsAreAccurate) {
    accurateRoots(tevsSqrt_32fc, 0.51);
    accurateRoots(tevsSqrt_64fc, 0.75);
}

// ---- special values ---------------------------------------------------------------------------------------------------------------

struct Special {
    float x;
    uint32_t exp, ln, sqrt, cubrt;
};
constexpr uint32_t kNegativeNaN = 0xffc00000, kOne = 0x3f800000, kPlus = 0x7f800000, kMinus = 0xff800000;
constexpr Special kSpecials[] = {
    {0.0f, kOne, kMinus, 0, 0},
    {-0.0f, kOne, kMinus, 0x80000000, 0x80000000},
    {1.0f, 0x402df854, 0, kOne, kOne},
    {-1.0f, 0x3ebc5ab2, kNegativeNaN, kNegativeNaN, 0xbf800000},
    {kInf, kPlus, kPlus, kPlus, kPlus},
    {-kInf, 0, kNegativeNaN, kNegativeNaN, kMinus},
    {0x1p-149f, kOne, 0xc2ce8ed0, 0x1a3504f3, 0x26a14518},
    {-27.0f, 0x2c044295, kNegativeNaN, kNegativeNaN, 0xc0400000},
};

// The largest and the least argument whose expl is finite and not 0, and their neighbours.
constexpr float kThresholds[][2] = {{0x1.62e42ep6f, 0x1.ffff08p127f}, {0x1.62e43p6f, kInf}, {-0x1.9fe368p6f, 0x1p-149f}, {-0x1.9fe36ap6f, 0}};

TEST(Elementary, SpecialValues) {
    const auto gives = [](Function<float, float> f, float x, uint32_t want, Status status = StatusOk) {
        float y;
        EXPECT_EQ(f(&x, &y, 1), status) << nameOf(f) << " of " << x;
        EXPECT_EQ(std::bit_cast<uint32_t>(y), want) << nameOf(f) << " of " << x;
    };
    for (const auto& [x, want] : kThresholds) gives(tevsExp_32f, x, std::bit_cast<uint32_t>(want));
    for (const Special& s : kSpecials) {
        gives(tevsExp_32f, s.x, s.exp);
        gives(tevsLn_32f, s.x, s.ln, s.x < 0 ? WarnLnNegArg : s.x == 0 ? WarnLnZeroArg : StatusOk);
        gives(tevsSqrt_32f, s.x, s.sqrt, s.x < 0 ? WarnSqrtNegArg : StatusOk);
        gives(tevsCubrt_32f, s.x, s.cubrt);
    }
    const double x[] = {0, -1, INFINITY, -INFINITY, 709.8, -745.2, -0.0};
    double y[7];
    EXPECT_EQ(tevsLn_64f(x, y, 7), WarnLnZeroArg);
    EXPECT_EQ(y[0], -INFINITY);
    EXPECT_EQ(std::bit_cast<uint64_t>(y[1]), 0xfff8000000000000);
    EXPECT_EQ(y[2], INFINITY);
    float single[7];
    EXPECT_EQ(tevsLn_64f32f(x + 1, single, 6), WarnLnNegArg);
    EXPECT_EQ(std::bit_cast<uint32_t>(single[0]), kNegativeNaN);
    EXPECT_EQ(tevsExp_64f(x, y, 7), StatusOk);
    EXPECT_TRUE(same(std::vector<double>{1, y[1], INFINITY, 0, INFINITY, 0, 1}, std::vector<double>(y, y + 7)));
    EXPECT_EQ(tevsSqrt_64f(x + 6, y, 1), StatusOk);
    EXPECT_TRUE(std::signbit(y[0]));
}

TEST(Elementary, NaNIsNoWarning) {
    const std::vector<double> d(9, NAN);
    const std::vector<float> f(9, std::bit_cast<float>(kNegativeNaN));   // as a negative element would leave it
    std::vector<float> y(9);
    std::vector<double> z(9);
    for (auto call : {tevsLn_32f, tevsSqrt_32f}) EXPECT_EQ(call(f.data(), y.data(), 9), StatusOk);
    for (auto call : {tevsLn_64f, tevsSqrt_64f}) EXPECT_EQ(call(d.data(), z.data(), 9), StatusOk);
    EXPECT_EQ(tevsLn_64f32f(d.data(), y.data(), 9), StatusOk);
}

TEST(Sqrt, ComplexBranchesAndInfinities) {
    const double zero = 0, inf = INFINITY;
    const double
        rows[] = {3,    4,     2,   1,   3,     -4,       2,   -1,      -3,    4,    1,         2,        -3,      -4,   1,    -2,    -4,
                  zero, zero,  2,   -4,  -zero, zero,     -2,  4,       -zero, 2,    -zero,     zero,     zero,    zero, zero, -zero, -zero,
                  zero, -zero, 0,   2,   1,     1,        inf, 1,       inf,   zero, -inf,      -1,       zero,    -inf, 1,    -inf,  inf,
                  -inf, -inf,  inf, inf, inf,   0x1p1022, 0,   0x1p511, 0,     0,    0x1p-1073, 0x1p-537, 0x1p-537};   // re, im of an element and of its root
    for (size_t i = 0; i < std::size(rows); i += 4) {
        const Complex64f x = {rows[i], rows[i + 1]};
        Complex64f y;
        tevsSqrt_64fc(&x, &y, 1);
        EXPECT_TRUE(same<Complex64f>({{rows[i + 2], rows[i + 3]}}, {y})) << x.re << " " << x.im << " gives " << y.re << " " << y.im;
    }
    const Complex32f odd[] = {{NAN, kInf}, {kInf, NAN}, {1, 2}};
    Complex32f y[3];
    tevsSqrt_32fc(odd, y, 3);
    EXPECT_EQ(y[0].re, kInf);
    EXPECT_EQ(y[1].re, kInf);
    EXPECT_TRUE(std::isnan(y[1].im));
}

// The parts' expression, an operation at a time.
TEST(Sqr, OfComplexAndDouble) {
    const auto square = []<class Z>(Z z) { return Z{z.re * z.re - z.im * z.im, z.re * z.im + z.im * z.re}; };
    EXPECT_TRUE(agrees<Complex32f>(tevsSqr_32fc, of(wildFloats<Complex32f>(kMany)), square));
    EXPECT_TRUE(agrees<Complex64f>(tevsSqr_64fc, of(wildFloats<Complex64f>(kMany)), square));
    EXPECT_TRUE(agrees<double>(tevsSqr_64f, of(wildFloats<double>(kMany)), [](double x) { return x * x; }));
}

// ---- integer results ------------------------------------------------------------------------------------------------------------------

constexpr int kScales[] = {0, 1, 2, 3, 7, 12, 16, 31, 40, 101, INT_MAX, -1, -2, -5, -9, -14, -20, -31, -64, INT_MIN};

template <class S, class D, class F> void integers(ScaledFunction<S, D> f, const std::vector<S>& x, F exact, std::initializer_list<int> more = {}) {
    std::vector<int> scales(std::begin(kScales), std::end(kScales));
    scales.insert(scales.end(), more);
    std::vector<D> y(x.size());
    for (int scale : scales) {
        ASSERT_GE(f(x.data(), y.data(), int(x.size()), scale), StatusOk);
        for (size_t i = 0; i < x.size(); ++i) {
            const std::complex<long double> want = exact(x[i]);
            if constexpr (Complex<D>) {
                const D w = {nearest<int16_t>(want.real(), scale), nearest<int16_t>(want.imag(), scale)};
                ASSERT_TRUE(same<D>({w}, {y[i]})) << nameOf(f) << " of " << x[i].re << " " << x[i].im << " scale " << scale;
            } else if (!(std::isinf(want.real()) && scale > 1000) && !(want.real() == 0 && x[i] != 0 && scale < -1000)) {   // else: the rows below
                ASSERT_EQ(y[i], nearest<D>(want.real(), scale)) << nameOf(f) << " of " << int64_t(x[i]) << " scale " << scale;
            }
        }
    }
}

// Every value of up to 16 bits.
template <class T> std::vector<T> all() {
    std::vector<T> v;
    for (int x = std::numeric_limits<T>::min(); x <= std::numeric_limits<T>::max(); ++x) v.push_back(T(x));
    return v;
}
// Powers of small numbers, where ties are, with their neighbours; and others of all sizes.
std::vector<int32_t> telling32s() {
    std::vector<int32_t> v = randomVector<int32_t>(5000);
    for (size_t i = 0; i < 5000; ++i) v[i] >>= i % 32;
    for (int64_t k = 0; k <= 46340; k += k < 1300 ? 1 : 13)
        for (int64_t p : {k, k * k, k * k + k, k * k * k, (k * k * k + 4) / 8})
            for (int64_t x : {p - 1, p, p + 1})
                if (x <= INT32_MAX) v.insert(v.end(), {int32_t(x), int32_t(-x)});
    return v;
}

long double root(long double x) { return x < 0 ? 0 : std::sqrt(x); }
long double ln(long double x) { return x <= 0 ? -INFINITY : std::log(x); }
long double decibel(long double x) { return x <= 0 ? -INFINITY : 10 * std::log10(x); }

TEST(Elementary, IntegersAreRoundedFromTheExactValue) {
    const std::vector<int32_t> wide = telling32s();
    const auto cube = [](long double x) {
        const long double root = std::cbrt(x), whole = std::nearbyint(root);   // not every library's is exact where it could be
        return whole * whole * whole == x ? whole : root;
    };
    integers(tevsExp_16s_Sfs, all<int16_t>(), expl);
    integers(tevsExp_32s_Sfs, wide, expl);
    integers(tevsExp_64s_Sfs, std::vector<int64_t>(wide.begin(), wide.end()), expl);
    integers(tevsLn_16s_Sfs, all<int16_t>(), ln, {-10, -11, -12, -13});
    integers(tevsLn_32s_Sfs, wide, ln, {-26, -27, -28, -30});
    integers(tevsLn_32s16s_Sfs, wide, ln, {-10, -11, -12});
    integers(tevs10Log10_32s_Sfs, wide, decibel, {-24, -25, -26});
    integers(tevsSqr_8u_Sfs, all<uint8_t>(), square, {8, 9, 15});
    integers(tevsSqr_16u_Sfs, all<uint16_t>(), square, {17, 30, 32, 33});
    integers(tevsSqr_16s_Sfs, all<int16_t>(), square, {14, 15, 30});
    integers(tevsSqrt_8u_Sfs, all<uint8_t>(), root, {-4, -8});
    integers(tevsSqrt_16u_Sfs, all<uint16_t>(), root, {-3, -8, -12, -16});
    integers(tevsSqrt_16s_Sfs, all<int16_t>(), root, {-7, -8, -12, -15});
    integers(tevsSqrt_32s16s_Sfs, wide, root, {-3, -8, 15});
    integers(tevsCubrt_32s16s_Sfs, wide, cube, {-3, -4, -8, -12, 10});
}

TEST(Elementary, ComplexIntegersAreRoundedFromTheExactValue) {
    std::vector<Complex16s> z = randomVector<Complex16s>(20000);
    for (size_t i = 0; i < z.size(); ++i) z[i] = {int16_t(z[i].re >> i % 16), int16_t(z[i].im >> i / 16 % 16)};
    for (int a = -60; a <= 60; ++a)   // squares, whose roots are ties of some scale
        for (int b = 0; b <= 60; ++b) z.push_back({int16_t(a * a - b * b), int16_t(2 * a * b)});
    integers(tevsSqr_16sc_Sfs, z,
             [](Complex16s v) {
                 const std::complex<long double> w(v.re, v.im);
                 return std::complex<long double>(w.real() * w.real() - w.imag() * w.imag(), 2 * w.real() * w.imag());
             },
             {14, 15, 30});
    integers(tevsSqrt_16sc_Sfs, z, [](Complex16s v) {
        const long double size = std::hypot((long double)v.re, (long double)v.im), t = std::sqrt((size + std::abs(v.re)) / 2);
        const long double other = t == 0 ? 0 : v.im / (2 * t);
        return v.re < 0 ? std::complex<long double>(std::fabs(other), v.im < 0 ? -t : t) : std::complex<long double>(t, other);
    });
}

struct Row {
    int64_t x;
    int scale;
    int64_t want;
};

template <class S, class D, size_t N> void rows(ScaledFunction<S, D> f, const Row (&table)[N]) {
    for (const Row& r : table) {
        const S x = S(r.x);
        D y;
        f(&x, &y, 1, r.scale);
        EXPECT_EQ(y, D(r.want)) << r.x << " scale " << r.scale;
    }
}

TEST(Exp, ScalesBringHugeExponentialsBack) {
    rows(tevsExp_16s_Sfs, {{5000, 7200, 11388}, {-20000, -28860, 69}, {0, 1, 0}, {0, -14, 16384}, {0, -15, 32767}, {-1, -14, 6027}, {32767, 0, 32767}});
    rows(tevsExp_32s_Sfs,
         {{1000000000, 1442695010, 1988403508}, {21, 0, 1318815734}, {22, 0, INT32_MAX}, {INT32_MAX, INT_MAX, INT32_MAX}, {INT32_MIN, INT_MIN, 0}});
    rows(tevsExp_64s_Sfs,
         {{40, 0, 235385266837019985}, {44, 0, INT64_MAX}, {-1000000, -1442730, 33399582936}, {INT64_MAX, INT_MAX, INT64_MAX}, {INT64_MIN, INT_MIN, 0}});
}

TEST(Sqrt, WideRootsAreExact) {
    rows(tevsSqrt_64s_Sfs, {{INT64_MAX, 0, 3037000500}, {INT64_MAX, 31, 1}, {INT64_MAX, 32, 1}, {INT64_MAX, 33, 0}, {-5, 0, 0}, {0, INT_MIN, 0}});
    rows(tevsSqrt_64s_Sfs, {{INT64_MAX, -31, 6521908912666391106}, {INT64_MAX, -32, INT64_MAX}, {2, -62, 6521908912666391106}, {2, -63, INT64_MAX}});
    rows(tevsSqrt_64s_Sfs, {{2305843009213706297, -30, 1630477228166602141}, {8931995135108137449, -10, 3060371828845}, {1, INT_MIN, INT64_MAX}});
    rows(tevsSqrt_64s_Sfs, {{5784308861153737271, -20, 2521887160736238}, {8605771329772434688, -30, 3149885526463414462}});
    // (k + 1/2)^2 = k^2 + k + 1/4 lies between two integers, one of whose roots rounds down.
    auto& g = generator();
    for (int i = 0; i < 20000; ++i) {
        const int64_t k = i < 2000 ? 3037000498 - i : int64_t(g() % 3037000499) >> i % 31, tie = k * k + k;
        const int64_t x[] = {tie, tie + 1, k * k};
        int64_t y[3];
        ASSERT_EQ(tevsSqrt_64s_Sfs(x, y, 3, 0), StatusOk);
        ASSERT_TRUE(y[0] == k && y[1] == k + 1 && y[2] == k) << k;
        if (k % 2 == 0) continue;   // half of an odd root is a tie, and its neighbours are not
        const int64_t z[] = {k * k - 1, k * k, k * k + 1};
        ASSERT_EQ(tevsSqrt_64s_Sfs(z, y, 3, 1), StatusOk);
        ASSERT_TRUE(y[0] == k / 2 && y[1] == (k / 2 + 1) / 2 * 2 && y[2] == k / 2 + 1) << k;
    }
    const int64_t wide[] = {INT64_MAX, -1, int64_t{32767} * 32767};
    int16_t narrow[3];
    EXPECT_EQ(tevsSqrt_64s16s_Sfs(wide, narrow, 3, 0), WarnSqrtNegArg);
    EXPECT_TRUE(narrow[0] == 32767 && narrow[1] == 0 && narrow[2] == 32767);
}

// ---- warnings, statuses, normalisation ------------------------------------------------------------------------------------------

// Of several that warn the first decides, as the environment test has it.
TEST(Elementary, IntegersWarn) {
    int16_t x[] = {5, 0, 7}, y[3];
    EXPECT_EQ(tevsLn_16s_Sfs(x, y, 3, 0), WarnLnZeroArg);
    EXPECT_TRUE(y[0] == 2 && y[1] == -32768 && y[2] == 2);
    x[0] = -4;
    EXPECT_EQ(tevsSqrt_16s_Sfs(x, y, 3, 0), WarnSqrtNegArg);
    EXPECT_TRUE(y[0] == 0 && y[1] == 0 && y[2] == 3);
}

template <class T, class V> void normalizes(Status (*f)(const T*, T*, int, T, V), T sub, V div) {
    const auto want = [=](T x) {
        const V r = 1 / div;
        if constexpr (Complex<T>)
            return T{(x.re - sub.re) * r, (x.im - sub.im) * r};
        else
            return (x - sub) * r;
    };
    const auto x = wildFloats<T>(kMany);
    EXPECT_TRUE(agrees<T>(with(f, sub, div), of(x), want));
    T y{};
    for (V bad : {V(0), -V(0), V(1e-39f), V(-1e-39f)}) {
        EXPECT_EQ(f(x.data(), &y, 1, sub, bad), StatusDivByZeroErr);
        EXPECT_EQ(f(x.data(), &y, 0, sub, bad), StatusBadSize);
    }
    EXPECT_TRUE(same<T>({T{}}, {y}));
    EXPECT_EQ(f(x.data(), &y, 1, sub, V(0x1p-126f)), StatusOk);
    EXPECT_EQ(f(x.data(), &y, 1, sub, V(NAN)), StatusOk);
}

TEST(Normalize, SubtractsAndMultipliesByTheReciprocal) {
    normalizes(tevsNormalize_32f, 0.25f, 3.0f), normalizes(tevsNormalize_32f, -0.1f, 1e-37f), normalizes(tevsNormalize_64f, 0.1, -7.0);
    normalizes(tevsNormalize_32fc, {1, -2}, 3.0f), normalizes(tevsNormalize_64fc, {1, -2}, 3.0);
    const std::vector<int16_t> x = all<int16_t>();
    const std::vector<Complex16s> z = randomVector<Complex16s>(kMany);
    for (int16_t div : {2, -3, 10, 32767, -32768})
        for (int16_t sub : {0, 17, -32768})
            for (int scale : kScales) {
                const auto want = [=](int16_t v) { return nearest<int16_t>((v - sub) * (1.0 / div), scale); };
                const auto wantC = [=](Complex16s v) { return Complex16s{want(v.re), nearest<int16_t>((v.im + 9) * (1.0 / div), scale)}; };
                ASSERT_TRUE(agrees<int16_t>(with(tevsNormalize_16s_Sfs, sub, div, scale), of(x), want)) << sub << " " << div << " " << scale;
                ASSERT_TRUE(agrees<Complex16s>(with(tevsNormalize_16sc_Sfs, Complex16s{sub, -9}, div, scale), of(z), wantC))
                    << sub << " " << div << " " << scale;
            }
    int16_t y = 5;
    Complex16s w = {5, 5};
    EXPECT_EQ(tevsNormalize_16s_Sfs(x.data(), &y, 1, 0, 0, 3), StatusDivByZeroErr);
    EXPECT_EQ(tevsNormalize_16sc_Sfs(z.data(), &w, 1, {0, 0}, 0, 3), StatusDivByZeroErr);
    EXPECT_TRUE(y == 5 && w.re == 5);
}

}   // namespace
