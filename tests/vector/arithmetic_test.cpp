#include "tevs/arithmetic.h"

#include <climits>
#include <cmath>
#include <numeric>

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
template <class D> D stored(Z r, int scale) {
    if constexpr (Complex<D>)
        return {nearest<decltype(D::re)>(r.re, scale), nearest<decltype(D::re)>(r.im, scale)};
    else
        return nearest<D>(r.re, scale);
}
template <class T> constexpr bool kIsFloat = std::is_floating_point_v<T>;
template <Complex T> constexpr bool kIsFloat<T> = std::is_floating_point_v<decltype(T::re)>;

template <class D, class Op, class... T> D result(Op op, int scale, T... x) {
    if constexpr (kIsFloat<D>)
        return D(op(x...));
    else
        return stored<D>(op(exact(x)...), scale);
}

template <Complex C> C operator+(C a, C b) { return {a.re + b.re, a.im + b.im}; }
template <Complex C> C operator-(C a, C b) { return {a.re - b.re, a.im - b.im}; }
template <Complex C> C operator*(C a, C b) { return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re}; }
Complex32f operator*(float a, Complex32f b) { return {a * b.re, a * b.im}; }

constexpr auto add = [](auto a, auto b) { return a + b; };
constexpr auto subRev = [](auto a, auto b) { return a - b; };
constexpr auto sub = [](auto a, auto b) { return b - a; };   // the first is the subtrahend
constexpr auto mul = [](auto a, auto b) { return a * b; };
constexpr auto addProduct = [](auto a, auto b, auto c) { return c + a * b; };

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

constexpr auto binary = [](auto op) {
    return [op]<class A, class B, class D, class... Scale>(Status (*f)(const A*, const B*, D*, int, Scale...)) {
        const auto a = data<A>();
        const auto b = data<B>();
        for (const int scale : scalesOf<Scale...>())
            ASSERT_TRUE(agrees<D>(with(f, Scale(scale)...), of(a, b), [=](A x, B y) { return result<D>(op, scale, x, y); })) << "scale " << scale;
    };
};
constexpr auto accumulation = []<class A, class D, class... Scale>(Status (*f)(const A*, const A*, D*, int, Scale...)) {
    const auto a = data<A>(), b = data<A>();
    const auto before = data<D>();
    for (const int scale : scalesOf<Scale...>())
        ASSERT_TRUE(agrees<D>(onto(f, Scale(scale)...), of(a, b, before), [=](A x, A y, D z) { return result<D>(addProduct, scale, x, y, z); }))
            << "scale " << scale;
};

// A constant is a vector of equal elements: op(constant, element).
template <class T, class Op, class... Scale>
void constants(const std::vector<T>& vals, const std::vector<int>& scales, Op op, Status (*f)(const T*, T, T*, int, Scale...), const std::vector<T>& x) {
    for (const T val : vals)
        for (const int scale : scales)
            ASSERT_TRUE(agrees<T>(by(f, val, Scale(scale)...), of(x), [=](T y) { return result<T>(op, scale, val, y); })) << "scale " << scale;
}
constexpr auto constant = [](auto op) {
    return [op]<class T, class... Scale>(Status (*f)(const T*, T, T*, int, Scale...)) {
        auto vals = randomVector<T>(6);
        for (const double c : {0., 1., -0.})   // a constant of -0 is no +0
            if constexpr (Complex<T>)
                vals.push_back({decltype(T::re)(c), 0});
            else
                vals.push_back(T(c));
        constants(vals, scalesOf<Scale...>(), op, f, data<T>(703));
    };
};

#define SCALED(op) tevs##op##_8u_Sfs, tevs##op##_16u_Sfs, tevs##op##_16s_Sfs, tevs##op##_32s_Sfs, tevs##op##_16sc_Sfs, tevs##op##_32sc_Sfs
#define FLOATS(op) tevs##op##_32f, tevs##op##_64f, tevs##op##_32fc, tevs##op##_64fc

TEST(Arithmetic, TwoVectors) {
    each(binary(add), SCALED(Add), FLOATS(Add), tevsAdd_16s, tevsAdd_16u, tevsAdd_32u, tevsAdd_8u16u, tevsAdd_16s32f);
    each(binary(sub), SCALED(Sub), FLOATS(Sub), tevsSub_16s, tevsSub_16s32f);
    each(binary(mul), SCALED(Mul), FLOATS(Mul), tevsMul_16s, tevsMul_8u16u, tevsMul_16s32f, tevsMul_32f32fc, tevsMul_16u16s_Sfs, tevsMul_16s32s_Sfs,
         tevsMul_32s32sc_Sfs, tevsMul_Low_32s_Sfs);
}

TEST(Arithmetic, Constants) {
    each(constant(add), SCALED(AddC), FLOATS(AddC));
    each(constant(sub), SCALED(SubC), FLOATS(SubC));
    each(constant(subRev), SCALED(SubCRev), FLOATS(SubCRev));
    each(constant(mul), SCALED(MulC), FLOATS(MulC));
    int16_t a[2] = {30000, -3}, b[2] = {30000, -3}, c[2] = {30000, -3};
    EXPECT_EQ(tevsAddC_16s_I(10000, a, 2) | tevsSubC_16s_I(10000, b, 2) | tevsMulC_16s_I(-2, c, 2), StatusOk);
    EXPECT_EQ((std::vector<int>{a[0], a[1], b[0], b[1], c[0], c[1]}), (std::vector<int>{32767, 9997, 20000, -10003, -32768, 6}));
}

// All of 16-bit input space through each form of the vector rounding: in lanes of the stored width and in wider ones.
TEST(Arithmetic, EverySixteenBitValueAtEveryScale) {
    std::vector<int16_t> all(65536);
    std::iota(all.begin(), all.end(), INT16_MIN);
    std::vector<int> scales(50);
    std::iota(scales.begin(), scales.end(), -17);
    constants({-32768, 181}, scales, add, tevsAddC_16s_Sfs, all);
    constants({-32768, 181}, scales, subRev, tevsSubCRev_16s_Sfs, all);
    constants({-32768, 181}, scales, mul, tevsMulC_16s_Sfs, all);
}

TEST(Arithmetic, AccumulatedProductsAreRoundedOnce) {
    each(accumulation, tevsAddProduct_16s_Sfs, tevsAddProduct_16s32s_Sfs, tevsAddProduct_32s_Sfs, FLOATS(AddProduct));
    const auto byConstant = [](auto a, auto d, int len) { return tevsAddProductC_32f(a, 0.3f, d, len); };
    EXPECT_TRUE(agrees<float>(onto(byConstant), of(data<float>(), data<float>()), [](float a, float before) { return before + a * 0.3f; }));
    const auto sum = [](int16_t a, int32_t before) { return result<int32_t>(add, 0, a, before); };
    EXPECT_TRUE(agrees<int32_t>(onto(tevsAdd_16s32s_I), of(data<int16_t>(), data<int32_t>()), sum));
}

TEST(Arithmetic, AbsoluteValues) {
    const auto check = []<class T>(Status (*f)(const T*, T*, int)) {
        EXPECT_TRUE(agrees<T>(f, of(data<T>()), [](T x) { return std::is_integral_v<T> ? nearest<T>(std::fabs((long double)x), 0) : T(std::fabs(x)); }));
    };
    each(check, tevsAbs_16s, tevsAbs_32s, tevsAbs_32f, tevsAbs_64f);
}

TEST(Arithmetic, FloatProductsToSixteenBits) {
    const auto x = wildFloats<float>(kMany);
    for (const int scale : {0, 1, 5, -3, 120, -140, INT_MIN, INT_MAX}) {
        const auto want = [=](float v) { return nearest<int16_t>(v * 1.7f, scale); };
        EXPECT_TRUE(agrees<int16_t>(by(tevsMulC_32f16s_Sfs, 1.7f, scale), of(x), want)) << scale;
        if (scale == 0) {
            EXPECT_TRUE(agrees<int16_t>(by(tevsMulC_Low_32f16s, 1.7f), of(x), want));
        }
    }
}

// ---- division ------------------------------------------------------------------------------------------------------------------------------------------

template <class T> constexpr T kNaN = std::numeric_limits<T>::quiet_NaN();   // 0x7FC00000, 0x7FF8000000000000
template <class T> bool isZero(T x) { return exact(x).re == 0 && exact(x).im == 0; }

// In 64 bits a quotient of 32-bit numbers is nearer to itself than to a tie, at any scale. Over zero, the sign decides.
template <class D, class A, class B> D quotient(A divisor, B dividend, int scale) {
    const Z y = exact(divisor), x = exact(dividend);
    const long double m = y.re * y.re + y.im * y.im;
    if constexpr (std::is_floating_point_v<D>)
        return m != 0 ? dividend / divisor : x.re > 0 ? D(INFINITY) : x.re < 0 ? -D(INFINITY) : kNaN<D>;
    else if constexpr (Complex<D>)
        return m == 0 ? D{0, 0} : stored<D>({(x.re * y.re + x.im * y.im) / m, (x.im * y.re - x.re * y.im) / m}, scale < -32 ? -200 : scale);
    else
        return m != 0 ? nearest<D>(x.re / y.re, scale) : x.re == 0 ? D(0) : nearest<D>(x.re * INFINITY, 0);
}
template <class T> std::vector<T> divisors(bool zeros) {
    auto v = data<T>();
    for (T& y : v)
        if (!zeros && isZero(y)) std::memset(&y, 1, sizeof y);
    return v;
}

constexpr auto division = []<class A, class B, class D, class... Scale>(Status (*f)(const A*, const B*, D*, int, Scale...)) {
    const auto b = data<B>();
    for (const bool zeros : {true, false})
        for (const int scale : scalesOf<Scale...>()) {
            const auto want = [=](A y, B x) { return quotient<D>(y, x, scale); };
            ASSERT_TRUE(agrees<D>(with(f, Scale(scale)...), of(divisors<A>(zeros), b), want, zeros ? WarnDivByZero : StatusOk)) << "scale " << scale;
        }
};
// A float is multiplied by the reciprocal.
constexpr auto divisionC = []<class T, class... Scale>(Status (*f)(const T*, T, T*, int, Scale...)) {
    const auto x = data<T>(77);
    for (const T val : divisors<T>(false)) {
        const int scale = sizeof...(Scale) ? kScales[size_t(generator()() % kScales.size())] : 0;
        if (kIsFloat<T> ? std::isnan(exact(val).re) : Complex<T> && scale < -32) continue;   // only the quotient of two vectors has a rule of its own there
        const auto want = [=](T v) {
            if constexpr (kIsFloat<T>)
                return v * (1 / val);
            else
                return quotient<T>(val, v, scale);
        };
        ASSERT_TRUE(agrees<T>(by(f, val, Scale(scale)...), of(x), want)) << "scale " << scale;
    }
    std::vector<T> bad(1), dst(1);
    if constexpr (std::is_floating_point_v<T>) bad = {0, -T(0), kNaN<T>};
    for (const T val : bad) {
        EXPECT_EQ(f(x.data(), val, dst.data(), 1, Scale(0)...), StatusDivByZeroErr);
        EXPECT_EQ(f(x.data(), val, dst.data(), 0, Scale(0)...), StatusBadSize);
    }
    EXPECT_TRUE(isZero(dst[0]));
};

TEST(Division, QuotientsAreRoundedOnce) {
    each(division, tevsDiv_8u_Sfs, tevsDiv_16u_Sfs, tevsDiv_16s_Sfs, tevsDiv_32s_Sfs, tevsDiv_16sc_Sfs, tevsDiv_32s16s_Sfs);
    each(division, tevsDiv_8u, tevsDiv_16s, tevsDiv_32s, tevsDiv_16sc, tevsDiv_32s16s, tevsDiv_32f, tevsDiv_64f);
    each(divisionC, tevsDivC_8u_Sfs, tevsDivC_16u_Sfs, tevsDivC_16s_Sfs, tevsDivC_16sc_Sfs, tevsDivC_8u, tevsDivC_16s, tevsDivC_16sc);
    each(divisionC, tevsDivC_32f, tevsDivC_64f);
}

TEST(Division, EveryPairOfBytes) {
    std::vector<uint8_t> a(65536), b(65536);
    for (size_t i = 0; i < 65536; ++i) a[i] = uint8_t(i), b[i] = uint8_t(i >> 8);
    for (int scale = -17; scale <= 10; ++scale) {
        const auto want = [=](uint8_t y, uint8_t x) { return quotient<uint8_t>(y, x, scale); };
        EXPECT_TRUE(agrees<uint8_t>(with(tevsDiv_8u_Sfs, scale), of(a, b), want, WarnDivByZero)) << scale;
    }
}

template <class T> void dividesConstants(Status (*f)(const T*, T, T*, int), std::initializer_list<T> vals, const std::vector<T>& x) {
    for (const T val : vals)
        EXPECT_TRUE(agrees<T>(
            by(f, val), of(x), [=](T y) { return quotient<T>(y, val, 0); }, WarnDivByZero))
            << val;
    T dst;
    EXPECT_EQ(f(std::vector<T>{1}.data(), 10, &dst, 1), StatusOk);
}
// The NaN of a quotient over zero has bits of its own.
template <class T> void dividesByZero(Status (*f)(const T*, const T*, T*, int)) {
    const T over[] = {0, -T(0), -T(0), 0, T(0)}, x[] = {-2, 1, 0, kNaN<T>, -kNaN<T>};
    std::vector<T> got(5);
    EXPECT_EQ(f(over, x, got.data(), 5), WarnDivByZero);
    EXPECT_TRUE(same({-T(INFINITY), T(INFINITY), kNaN<T>, kNaN<T>, kNaN<T>}, got));
}
TEST(Division, ConstantsOverVectorsAndZeros) {
    std::vector<uint16_t> all(65536);
    std::iota(all.begin(), all.end(), 0);
    dividesConstants<uint16_t>(tevsDivCRev_16u, {0, 1, 40503, 65535}, all);
    dividesConstants<float>(tevsDivCRev_32f, {0.0f, -0.0f, -2.5f, kNaN<float>, INFINITY}, wildFloats<float>(777));
    dividesByZero(tevsDiv_32f);
    dividesByZero(tevsDiv_64f);
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
    dividesComplex(tevsDiv_32fc, tevsDivC_32fc, 126, 6 * 0x1p-24L);
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
