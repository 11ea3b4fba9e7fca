#include "tevs/arithmetic.h"

#include <climits>
#include <cmath>

#include "support/elements.h"

using namespace test;

namespace {

// ---- the oracle: exact in extended precision, whose 64 bits hold every sum and product of 32-bit parts; of floats, the same expression in their type ---------

struct Z {
    long double re, im;
};
template <class T> Z exact(T x) {
    if constexpr (Complex<T>)
        return {(long double)x.re, (long double)x.im};
    else
        return {(long double)x, 0};
}
template <class T> T rounded(long double exact, int scale) {
    const long double v = std::nearbyint(std::ldexp(exact, -std::clamp(scale, -1000, 1000)));
    return T(std::clamp<long double>(v, std::numeric_limits<T>::min(), std::numeric_limits<T>::max()));
}
template <class D> D stored(Z r, int scale) {
    if constexpr (Complex<D>)
        return {rounded<decltype(D::re)>(r.re, scale), rounded<decltype(D::re)>(r.im, scale)};
    else
        return rounded<D>(r.re, scale);
}
template <class T> constexpr bool kIsFloat = std::is_floating_point_v<T>;
template <Complex T> constexpr bool kIsFloat<T> = std::is_floating_point_v<decltype(T::re)>;

template <class D, class Op, class... T> D result(Op op, int scale, T... x) {
    if constexpr (kIsFloat<D>)
        return D(op(x...));
    else
        return stored<D>(op(exact(x)...), scale);
}

constexpr auto add = []<class T>(T a, T b) {
    if constexpr (Complex<T>)
        return T{a.re + b.re, a.im + b.im};
    else
        return a + b;
};
constexpr auto subRev = []<class T>(T a, T b) {
    if constexpr (Complex<T>)
        return T{a.re - b.re, a.im - b.im};
    else
        return a - b;
};
constexpr auto sub = [](auto a, auto b) { return subRev(b, a); };   // the first is the subtrahend
constexpr auto mul = []<class T>(T a, T b) {
    if constexpr (Complex<T>)
        return T{a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
    else
        return a * b;
};
constexpr auto timesComplex = [](float a, Complex32f b) { return Complex32f{a * b.re, a * b.im}; };

// Both sides of every bound at which something changes, and the ends.
const std::vector<int> kScales = {0,  1,  2,  7,  8,  9,  10, 15, 16,  17,  18,  24,  29,  30,  31,  32,      33,     34,
                                  61, 62, 63, 64, -1, -2, -7, -8, -14, -15, -16, -17, -30, -31, -32, INT_MIN, INT_MAX};
template <class... Scale> std::vector<int> scalesOf() { return sizeof...(Scale) ? kScales : std::vector<int>{0}; }

template <class T> std::vector<T> data(size_t n = kMany) {
    if constexpr (kIsFloat<T>)
        return wildFloats<T>(n);
    else
        return randomVector<T>(n);
}

template <class A, class B, class D, class Op, class... Scale> void binary(Status (*f)(const A*, const B*, D*, int, Scale...), Op op) {
    const auto a = data<A>();
    const auto b = data<B>();
    for (const int scale : scalesOf<Scale...>())
        ASSERT_TRUE(agrees<D>([=](auto... v) { return f(v..., Scale(scale)...); }, [=](A x, B y) { return result<D>(op, scale, x, y); }, a, b))
            << "scale " << scale;
}

// A constant is a vector of equal elements: op(constant, element).
template <class T, class Op, class... Scale> void constant(Status (*f)(const T*, T, T*, int, Scale...), Op op) {
    const auto x = data<T>(703);
    auto vals = randomVector<T>(6);
    for (const int c : {0, 1}) {
        T val{};
        if constexpr (Complex<T>)
            val.re = decltype(val.re)(c);
        else
            val = T(c);
        vals.push_back(val);
    }
    for (const T val : vals)
        for (const int scale : scalesOf<Scale...>())
            ASSERT_TRUE(
                agrees<T>([=](const T* s, T* d, int len) { return f(s, val, d, len, Scale(scale)...); }, [=](T y) { return result<T>(op, scale, val, y); }, x))
                << "scale " << scale;
}

#define SCALED(check, op, oracle)       \
    check(tevs##op##_8u_Sfs, oracle);   \
    check(tevs##op##_16u_Sfs, oracle);  \
    check(tevs##op##_16s_Sfs, oracle);  \
    check(tevs##op##_32s_Sfs, oracle);  \
    check(tevs##op##_16sc_Sfs, oracle); \
    check(tevs##op##_32sc_Sfs, oracle);
#define FLOATS(check, op, oracle)   \
    check(tevs##op##_32f, oracle);  \
    check(tevs##op##_64f, oracle);  \
    check(tevs##op##_32fc, oracle); \
    check(tevs##op##_64fc, oracle);

TEST(Arithmetic, TwoVectors) {
    SCALED(binary, Add, add)
    SCALED(binary, Sub, sub)
    SCALED(binary, Mul, mul)
    binary(tevsMul_16u16s_Sfs, mul);
    binary(tevsMul_16s32s_Sfs, mul);
    binary(tevsMul_32s32sc_Sfs, mul);
    binary(tevsMul_Low_32s_Sfs, mul);
    binary(tevsAdd_16s, add);
    binary(tevsAdd_16u, add);
    binary(tevsAdd_32u, add);
    binary(tevsAdd_8u16u, add);
    binary(tevsAdd_16s32f, add);
    binary(tevsSub_16s, sub);
    binary(tevsSub_16s32f, sub);
    binary(tevsMul_16s, mul);
    binary(tevsMul_8u16u, mul);
    binary(tevsMul_16s32f, mul);
    FLOATS(binary, Add, add)
    FLOATS(binary, Sub, sub)
    FLOATS(binary, Mul, mul)
    binary(tevsMul_32f32fc, timesComplex);
}

TEST(Arithmetic, Constants) {
    SCALED(constant, AddC, add)
    SCALED(constant, SubC, sub)
    SCALED(constant, SubCRev, subRev)
    SCALED(constant, MulC, mul)
    FLOATS(constant, AddC, add)
    FLOATS(constant, SubC, sub)
    FLOATS(constant, SubCRev, subRev)
    FLOATS(constant, MulC, [](auto val, auto x) { return mul(x, val); })
    int16_t a[2] = {30000, -3}, b[2] = {30000, -3}, c[2] = {30000, -3};
    EXPECT_EQ(tevsAddC_16s_I(10000, a, 2), StatusOk);
    EXPECT_EQ(tevsSubC_16s_I(10000, b, 2), StatusOk);
    EXPECT_EQ(tevsMulC_16s_I(-2, c, 2), StatusOk);
    EXPECT_EQ((std::vector<int>{a[0], a[1], b[0], b[1], c[0], c[1]}), (std::vector<int>{32767, 9997, 20000, -10003, -32768, 6}));
}

// A constant of -0 is no +0.
TEST(Arithmetic, ConstantsKeepTheSignOfZero) {
    for (const int len : {1, 3, 4, 8, 9, 40}) {
        std::vector<float> x(size_t(len), -0.0f), five(size_t(len), 5.0f), sum(x), product(x), quotient(x);
        std::vector<double> d(size_t(len), -0.0), dsum(d);
        EXPECT_EQ(tevsAddC_32f(x.data(), -0.0f, sum.data(), len), StatusOk);
        EXPECT_EQ(tevsAddC_64f(d.data(), -0.0, dsum.data(), len), StatusOk);
        EXPECT_EQ(tevsMulC_32f(five.data(), -0.0f, product.data(), len), StatusOk);
        EXPECT_EQ(tevsDivCRev_32f(five.data(), -0.0f, quotient.data(), len), StatusOk);
        for (size_t i = 0; i < size_t(len); ++i)
            EXPECT_TRUE(std::signbit(sum[i]) && std::signbit(dsum[i]) && std::signbit(product[i]) && std::signbit(quotient[i])) << len;
    }
}

// All of 16-bit input space through each form of the vector rounding: in lanes of the stored width and in wider ones.
TEST(Arithmetic, EverySixteenBitValueAtEveryScale) {
    std::vector<int16_t> all(65536);
    for (int i = 0; i < 65536; ++i) all[size_t(i)] = int16_t(i);
    for (const int16_t val : {int16_t(-32768), int16_t(181)})
        for (int scale = -17; scale <= 32; ++scale) {
            const auto check = [&](auto f, auto op) {
                ASSERT_TRUE(agrees<int16_t>([=](const int16_t* s, int16_t* d, int len) { return f(s, val, d, len, scale); },
                                            [=](int16_t x) { return result<int16_t>(op, scale, val, x); }, all))
                    << val << " scale " << scale;
            };
            check(tevsAddC_16s_Sfs, add);
            check(tevsSubCRev_16s_Sfs, subRev);
            check(tevsMulC_16s_Sfs, mul);
        }
}

// ---- accumulation, absolute values --------------------------------------------------------------------------------------------------------------

// f with a destination that is a source too, as a function of three sources.
template <class D, class F, class... Scale> auto from(F f, Scale... scale) {
    return [=](auto a, auto b, const D* before, D* dst, int len) {
        std::copy_n(before, len, dst);
        return f(a, b, dst, len, scale...);
    };
}
template <class A, class D, class... Scale> void accumulates(Status (*f)(const A*, const A*, D*, int, Scale...)) {
    for (const int scale : scalesOf<Scale...>())
        ASSERT_TRUE(agrees<D>(
            from<D>(f, Scale(scale)...),
            [=](A a, A b, D before) { return result<D>([](auto x, auto y, auto z) { return add(z, mul(x, y)); }, scale, a, b, before); }, data<A>(), data<A>(),
            data<D>()))
            << "scale " << scale;
}

TEST(Arithmetic, AccumulatedProductsAreRoundedOnce) {
    accumulates(tevsAddProduct_16s_Sfs);
    accumulates(tevsAddProduct_16s32s_Sfs);
    accumulates(tevsAddProduct_32s_Sfs);
    accumulates(tevsAddProduct_32f);
    accumulates(tevsAddProduct_64f);
    accumulates(tevsAddProduct_32fc);
    accumulates(tevsAddProduct_64fc);
    const auto one = [](const float* a, const float*, float* d, int len) { return tevsAddProductC_32f(a, 0.3f, d, len); };
    EXPECT_TRUE(agrees<float>(
        from<float>(one), [](float a, float, float before) { return before + a * 0.3f; }, data<float>(), data<float>(), data<float>()));
    const auto wide = [](const int16_t* a, const int16_t*, int32_t* d, int len) { return tevsAdd_16s32s_I(a, d, len); };
    EXPECT_TRUE(agrees<int32_t>(
        from<int32_t>(wide), [](int16_t a, int16_t, int32_t before) { return result<int32_t>(add, 0, a, before); }, data<int16_t>(), data<int16_t>(),
        data<int32_t>()));
}

template <class T> void absolutes(Status (*f)(const T*, T*, int)) {
    EXPECT_TRUE(agrees<T>(
        f, [](T x) { return std::is_integral_v<T> ? rounded<T>(std::fabs((long double)x), 0) : T(std::fabs(x)); }, data<T>()));
}
TEST(Arithmetic, AbsoluteValues) {
    absolutes(tevsAbs_16s);
    absolutes(tevsAbs_32s);
    absolutes(tevsAbs_32f);
    absolutes(tevsAbs_64f);
}

TEST(Arithmetic, FloatProductsToSixteenBits) {
    const auto x = wildFloats<float>(kMany);
    for (const int scale : {0, 1, 5, -3, 120, -140, INT_MIN, INT_MAX}) {
        const auto want = [=](float v) { return std::isnan(v) ? int16_t(-32768) : rounded<int16_t>(v * 1.7f, scale); };
        EXPECT_TRUE(agrees<int16_t>([=](auto s, auto d, int len) { return tevsMulC_32f16s_Sfs(s, 1.7f, d, len, scale); }, want, x)) << scale;
    }
    EXPECT_TRUE(agrees<int16_t>([=](auto s, auto d, int len) { return tevsMulC_Low_32f16s(s, 1.7f, d, len); },
                                [](float v) { return std::isnan(v) ? int16_t(-32768) : rounded<int16_t>(v * 1.7f, 0); }, x));
}

// ---- division ------------------------------------------------------------------------------------------------------------------------------------------

template <class T> bool isZero(T x) { return exact(x).re == 0 && exact(x).im == 0; }

// In 64 bits a quotient of 32-bit numbers is nearer to itself than to a tie, at any scale.
template <class D> D quotient(Z y, Z x, int scale) {
    const long double m = y.re * y.re + y.im * y.im;
    if constexpr (Complex<D>) {
        if (m == 0) return {0, 0};
        return stored<D>({(x.re * y.re + x.im * y.im) / m, (x.im * y.re - x.re * y.im) / m}, scale < -32 ? -200 : scale);
    } else {
        if (m == 0) return x.re > 0 ? std::numeric_limits<D>::max() : x.re < 0 ? std::numeric_limits<D>::min() : D(0);
        return rounded<D>(x.re / y.re, scale);
    }
}
template <class T> std::vector<T> divisors(bool zeros) {
    auto v = data<T>();
    for (T& y : v)
        if (!zeros && isZero(y)) std::memset(&y, 1, sizeof y);
    return v;
}

template <class A, class B, class D, class... Scale> void divides(Status (*f)(const A*, const B*, D*, int, Scale...)) {
    const auto b = data<B>();
    for (const bool zeros : {true, false})
        for (const int scale : scalesOf<Scale...>())
            ASSERT_TRUE(agrees<D>(
                zeros ? WarnDivByZero : StatusOk, [=](auto... v) { return f(v..., Scale(scale)...); },
                [=](A y, B x) { return quotient<D>(exact(y), exact(x), scale); }, divisors<A>(zeros), b))
                << "scale " << scale;
}
template <class T, class... Scale> void dividesC(Status (*f)(const T*, T, T*, int, Scale...)) {
    const auto x = data<T>();
    for (const T val : divisors<T>(false)) {
        const int scale = sizeof...(Scale) ? kScales[size_t(generator()() % kScales.size())] : 0;
        if (Complex<T> && scale < -32) continue;   // only the quotient of two vectors has a rule of its own there
        ASSERT_TRUE(agrees<T>([=](const T* s, T* d, int len) { return f(s, val, d, len, Scale(scale)...); },
                              [=](T v) { return quotient<T>(exact(val), exact(v), scale); }, std::vector<T>(x.begin(), x.begin() + 77)))
            << "scale " << scale;
    }
    T dst[1] = {};
    EXPECT_EQ(f(x.data(), T{}, dst, 1, Scale(0)...), StatusDivByZeroErr);
    EXPECT_EQ(f(x.data(), T{}, dst, 0, Scale(0)...), StatusBadSize);
    EXPECT_TRUE(isZero(dst[0]));
}

TEST(Division, IntegerQuotientsAreRoundedOnce) {
    divides(tevsDiv_8u_Sfs);
    divides(tevsDiv_16u_Sfs);
    divides(tevsDiv_16s_Sfs);
    divides(tevsDiv_32s_Sfs);
    divides(tevsDiv_16sc_Sfs);
    divides(tevsDiv_32s16s_Sfs);
    divides(tevsDiv_8u);
    divides(tevsDiv_16s);
    divides(tevsDiv_32s);
    divides(tevsDiv_16sc);
    divides(tevsDiv_32s16s);
    dividesC(tevsDivC_8u_Sfs);
    dividesC(tevsDivC_16u_Sfs);
    dividesC(tevsDivC_16s_Sfs);
    dividesC(tevsDivC_16sc_Sfs);
    dividesC(tevsDivC_8u);
    dividesC(tevsDivC_16s);
    dividesC(tevsDivC_16sc);
}

TEST(Division, EveryPairOfBytes) {
    std::vector<uint8_t> a(65536), b(65536);
    std::vector<uint16_t> all(65536);
    for (size_t i = 0; i < 65536; ++i) a[i] = uint8_t(i), b[i] = uint8_t(i >> 8), all[i] = uint16_t(i);
    for (int scale = -17; scale <= 10; ++scale)
        EXPECT_TRUE(agrees<uint8_t>(
            WarnDivByZero, [=](auto... v) { return tevsDiv_8u_Sfs(v..., scale); },
            [=](uint8_t y, uint8_t x) { return quotient<uint8_t>(exact(y), exact(x), scale); }, a, b))
            << scale;
    for (const uint16_t val : {uint16_t(0), uint16_t(1), uint16_t(40503), uint16_t(65535)})
        EXPECT_TRUE(agrees<uint16_t>(
            WarnDivByZero, [=](auto s, auto d, int len) { return tevsDivCRev_16u(s, val, d, len); },
            [=](uint16_t x) { return quotient<uint16_t>(exact(x), exact(val), 0); }, all))
            << val;
    EXPECT_EQ(tevsDivCRev_16u(all.data() + 1, 10, all.data(), 5), StatusOk);
}

template <class T> constexpr T kNaN = std::numeric_limits<T>::quiet_NaN();   // 0x7FC00000, 0x7FF8000000000000

template <class T> T floatQuotient(T y, T x) { return y != 0 || std::isnan(y) ? x / y : x > 0 ? T(INFINITY) : x < 0 ? -T(INFINITY) : kNaN<T>; }

template <class T> void dividesFloats(Status (*f)(const T*, const T*, T*, int)) {
    for (const bool zeros : {true, false}) EXPECT_TRUE(agrees<T>(zeros ? WarnDivByZero : StatusOk, f, floatQuotient<T>, divisors<T>(zeros), data<T>()));
    const T over[] = {0, -T(0), -T(0), 0, T(0)}, x[] = {-2, 1, 0, kNaN<T>, -kNaN<T>};
    std::vector<T> got(5);
    EXPECT_EQ(f(over, x, got.data(), 5), WarnDivByZero);
    EXPECT_TRUE(same({-T(INFINITY), T(INFINITY), kNaN<T>, kNaN<T>, kNaN<T>}, got));
}

template <class T> void reciprocals(Status (*f)(const T*, T, T*, int)) {
    const auto x = wildFloats<T>(77);
    EXPECT_TRUE(agrees<T>([=](const T* s, T* d, int len) { return f(s, 3, d, len); }, [](T v) { return v * (T(1) / T(3)); }, x));
    T dst = 5;
    for (const T bad : {T(0), -T(0), kNaN<T>}) {
        EXPECT_EQ(f(x.data(), bad, &dst, 1), StatusDivByZeroErr);
        EXPECT_EQ(f(x.data(), bad, &dst, 0), StatusBadSize);
    }
    EXPECT_EQ(dst, 5);
}

TEST(Division, FloatsAreIeeeButOverZero) {
    dividesFloats(tevsDiv_32f);
    dividesFloats(tevsDiv_64f);
    reciprocals(tevsDivC_32f);
    reciprocals(tevsDivC_64f);
    for (const float val : {0.0f, -2.5f, kNaN<float>, INFINITY})
        EXPECT_TRUE(agrees<float>(
            WarnDivByZero, [=](auto s, auto d, int len) { return tevsDivCRev_32f(s, val, d, len); }, [=](float y) { return floatQuotient(y, val); },
            wildFloats<float>(777)));
}

// The formula's quotient where exponents have no bounds. Its terms bound the error.
template <class C>::testing::AssertionResult near(C got, C y, C x, long double bound) {
    using T = decltype(C::re);
    const long double a = x.re, b = x.im, c = y.re, d = y.im, m = c * c + d * d;
    const auto fits = [=](long double p, long double q, T part) {
        const long double want = (p + q) / m, off = bound * (std::fabs(p) + std::fabs(q)) / m + std::numeric_limits<T>::denorm_min();
        return std::fabs(want) > std::numeric_limits<T>::max() ? std::isinf(part) : std::fabs(part - want) <= off;
    };
    if (fits(a * c, b * d, got.re) && fits(b * c, -a * d, got.im)) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "(" << a << ", " << b << ") / (" << c << ", " << d << ") gives (" << got.re << ", " << got.im << ")";
}
template <class C> void dividesComplex(Status (*f)(const C*, const C*, C*, int), Status (*byConstant)(const C*, C, C*, int), int exponents, long double bound) {
    using T = decltype(C::re);
    auto y = randomVector<C>(20 * kMany), x = randomVector<C>(y.size()), got = x;
    for (size_t i = 0; i < y.size(); ++i) {   // every part of a size of its own, and all four of the same
        const auto exponent = [=] { return int(generator()() % (2 * uint64_t(exponents))) - exponents; };
        const int e = exponent();
        for (C* z : {&y[i], &x[i]})
            for (T* part : {&z->re, &z->im})
                *part = generator()() % 8 == 0 ? T(0) : std::ldexp(std::copysign(1 + std::fabs(*part), *part), i % 2 ? e : exponent());
    }
    y[777] = {T(0), -T(0)};
    for (const bool zeros : {true, false}) {
        EXPECT_EQ(f(y.data(), x.data(), got.data(), int(x.size())), zeros ? WarnDivByZero : StatusOk);
        for (size_t i = 0; i < y.size(); ++i)
            if (!isZero(y[i])) {
                ASSERT_TRUE(near(got[i], y[i], x[i], bound));
            } else {
                ASSERT_TRUE(same<C>({{kNaN<T>, kNaN<T>}}, {got[i]}));
                y[i].im = 1;
            }
    }
    const C src[2] = {{3, 4}, {-1, 0.5}}, val = {T(0.6), T(-0.8)};
    EXPECT_EQ(byConstant(src, val, got.data(), 2), StatusOk);
    for (const size_t i : {0, 1}) EXPECT_TRUE(near(got[i], val, src[i], bound));
    for (const C bad : {C{0, 0}, C{kNaN<T>, 1}, C{std::numeric_limits<T>::denorm_min(), 0}}) EXPECT_EQ(byConstant(src, bad, got.data(), 2), StatusDivByZeroErr);
    EXPECT_EQ(byConstant(src, C{0, 0}, got.data(), 0), StatusBadSize);
}

TEST(Division, ComplexPartsOfAnySize) {
    dividesComplex(tevsDiv_32fc, tevsDivC_32fc, 126, 0x1p-22L);
    dividesComplex(tevsDiv_64fc, tevsDivC_64fc, 1022, 0x1p-50L);
}

// ---- what is said about single cases ---------------------------------------------------------------------------------------------------------------

TEST(Arithmetic, TellingCases) {
    const Complex32s lowest = {INT32_MIN, INT32_MIN};
    Complex32s c;
    EXPECT_EQ(tevsMul_32sc_Sfs(&lowest, &lowest, &c, 1, 63), StatusOk);
    EXPECT_EQ(c.im, 1);   // 2^63 / 2^63
    const Complex16s edge[2] = {{32767, 32766}, {1, -1}};
    Complex16s q;
    tevsDiv_16sc_Sfs(&edge[0], &edge[1], &q, 1, -32);
    EXPECT_EQ(q.re, 2);   // exact
    tevsDiv_16sc_Sfs(&edge[0], &edge[1], &q, 1, -33);
    EXPECT_EQ(q.re, 32767);   // by sign
    uint16_t zeros[3] = {7, 7, 7};
    EXPECT_EQ(tevsAdd_16u_Sfs(nullptr, nullptr, zeros, 3, 18), StatusOk);   // only zeros are left: no source is looked at
    EXPECT_EQ(zeros[0] | zeros[1] | zeros[2], 0);
    EXPECT_EQ(tevsAdd_16u_Sfs(nullptr, nullptr, zeros, 3, 17), StatusNullPtr);
    EXPECT_EQ(tevsAdd_16u_ISfs(nullptr, zeros, 3, 18), StatusNullPtr);
}

}   // namespace
