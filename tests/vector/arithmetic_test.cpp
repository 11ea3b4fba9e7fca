#include "tevs/arithmetic.h"

#include <climits>
#include <cmath>

#include "support/data.h"
#include "support/guarded.h"
#include "support/rejects.h"
#include "tevcore.h"

using namespace test;

namespace {

// ---- the oracle: exact in extended precision, whose 64 bits hold every sum and product of 32-bit parts ----------------------------------------

struct Z {
    long double re, im;
};
template <class T>
concept Complex = requires(T z) {
    z.re;
};
template <class T> Z exact(T x) {
    if constexpr (Complex<T>)
        return {(long double)x.re, (long double)x.im};
    else
        return {(long double)x, 0};
}
template <class T> T rounded(long double exact, int scale) {
    if constexpr (std::is_floating_point_v<T>)
        return T(exact + 0.0L);   // integers know no -0
    else {
        const long double v = std::nearbyint(std::ldexp(exact, -std::clamp(scale, -1000, 1000)));
        return T(std::clamp<long double>(v, std::numeric_limits<T>::min(), std::numeric_limits<T>::max()));
    }
}
template <class D> D stored(Z r, int scale) {
    if constexpr (Complex<D>)
        return {rounded<decltype(D::re)>(r.re, scale), rounded<decltype(D::re)>(r.im, scale)};
    else
        return rounded<D>(r.re, scale);
}

constexpr auto add = [](Z a, Z b) { return Z{a.re + b.re, a.im + b.im}; };
constexpr auto sub = [](Z a, Z b) { return Z{b.re - a.re, b.im - a.im}; };   // the first is the subtrahend
constexpr auto mul = [](Z a, Z b) { return Z{a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re}; };

// Both sides of every bound at which something changes, and the ends.
const std::vector<int> kScales = {0,  1,  2,  7,  8,  9,  10, 15, 16,  17,  18,  24,  29,  30,  31,  32,      33,     34,
                                  61, 62, 63, 64, -1, -2, -7, -8, -14, -15, -16, -17, -30, -31, -32, INT_MIN, INT_MAX};
const std::vector<int> kUnscaled = {0};

// call(a, b, dst, len, scale) against op, and callInPlace(a, dst, len, scale) with dst for b.
template <class A, class B, class D, class Call, class InPlace, class Op>
void sweepBinary(const std::vector<int>& scales, Call call, InPlace callInPlace, Op op) {
    sweep<D>([&](int len, Place at) {
        const size_t n = size_t(len);
        const Guarded<A> a(randomVector<A>(n), at);
        const Guarded<B> b(randomVector<B>(n), Place{0, !at.atEnd});
        Guarded<D> dst(n, at);
        const auto x = a.values();
        const auto y = b.values();
        for (int scale : scales) {
            std::vector<D> want(n);
            for (size_t i = 0; i < n; ++i) want[i] = stored<D>(op(exact(x[i]), exact(y[i])), scale);
            if constexpr (!std::is_null_pointer_v<Call>) {
                ASSERT_EQ(call(a.data(), b.data(), dst.data(), len, scale), StatusOk);
                ASSERT_TRUE(same(want, dst.values())) << len << " scale " << scale;
            }
            if constexpr (std::is_same_v<B, D> && !std::is_null_pointer_v<InPlace>) {
                dst.assign(y);
                ASSERT_EQ(callInPlace(a.data(), dst.data(), len, scale), StatusOk);
                ASSERT_TRUE(same(want, dst.values())) << "in place, " << len << " scale " << scale;
            }
        }
        ASSERT_TRUE(dst.intact());
    });
}

template <class A, class B, class D, class Op>
void binary(Status (*f)(const A*, const B*, D*, int, int), std::type_identity_t<Status (*)(const A*, D*, int, int)> inPlace, Op op) {
    rejects(f);
    if (inPlace) rejects(inPlace);
    if (inPlace)
        sweepBinary<A, B, D>(kScales, f, inPlace, op);
    else
        sweepBinary<A, B, D>(kScales, f, nullptr, op);
}
template <class A, class B, class D, class Op>
void binary(Status (*f)(const A*, const B*, D*, int), std::type_identity_t<Status (*)(const A*, D*, int)> inPlace, Op op) {
    rejects(f);
    const auto call = [f](const A* a, const B* b, D* d, int len, int) { return f(a, b, d, len); };
    if (inPlace) {
        rejects(inPlace);
        sweepBinary<A, B, D>(
            kUnscaled, call, [inPlace](const A* a, D* d, int len, int) { return inPlace(a, d, len); }, op);
    } else {
        sweepBinary<A, B, D>(kUnscaled, call, nullptr, op);
    }
}

TEST(Arithmetic, ScaledSumsDifferencesAndProducts) {
    binary(tevsAdd_8u_Sfs, tevsAdd_8u_ISfs, add);
    binary(tevsAdd_16u_Sfs, tevsAdd_16u_ISfs, add);
    binary(tevsAdd_16s_Sfs, tevsAdd_16s_ISfs, add);
    binary(tevsAdd_32s_Sfs, tevsAdd_32s_ISfs, add);
    binary(tevsAdd_16sc_Sfs, tevsAdd_16sc_ISfs, add);
    binary(tevsAdd_32sc_Sfs, tevsAdd_32sc_ISfs, add);
    binary(tevsSub_8u_Sfs, tevsSub_8u_ISfs, sub);
    binary(tevsSub_16u_Sfs, tevsSub_16u_ISfs, sub);
    binary(tevsSub_16s_Sfs, tevsSub_16s_ISfs, sub);
    binary(tevsSub_32s_Sfs, tevsSub_32s_ISfs, sub);
    binary(tevsSub_16sc_Sfs, tevsSub_16sc_ISfs, sub);
    binary(tevsSub_32sc_Sfs, tevsSub_32sc_ISfs, sub);
    binary(tevsMul_8u_Sfs, tevsMul_8u_ISfs, mul);
    binary(tevsMul_16u_Sfs, tevsMul_16u_ISfs, mul);
    binary(tevsMul_16s_Sfs, tevsMul_16s_ISfs, mul);
    binary(tevsMul_32s_Sfs, tevsMul_32s_ISfs, mul);
    binary(tevsMul_16sc_Sfs, tevsMul_16sc_ISfs, mul);
    binary(tevsMul_32sc_Sfs, tevsMul_32sc_ISfs, mul);
    binary(tevsMul_16u16s_Sfs, nullptr, mul);
    binary(tevsMul_16s32s_Sfs, nullptr, mul);
    binary(tevsMul_32s32sc_Sfs, tevsMul_32s32sc_ISfs, mul);
    binary(tevsMul_Low_32s_Sfs, nullptr, mul);
}

TEST(Arithmetic, UnscaledAndMixedTypes) {
    binary(tevsAdd_16s, tevsAdd_16s_I, add);
    binary(tevsAdd_16u, nullptr, add);
    binary(tevsAdd_32u, nullptr, add);
    binary(tevsAdd_8u16u, nullptr, add);
    binary(tevsAdd_16s32f, nullptr, add);
    binary(tevsSub_16s, tevsSub_16s_I, sub);
    binary(tevsSub_16s32f, nullptr, sub);
    binary(tevsMul_16s, tevsMul_16s_I, mul);
    binary(tevsMul_8u16u, nullptr, mul);
    binary(tevsMul_16s32f, nullptr, mul);
    rejects(tevsAdd_16s32s_I);
    sweepBinary<int16_t, int32_t, int32_t>(
        kUnscaled, nullptr, [](auto a, auto d, int len, int) { return tevsAdd_16s32s_I(a, d, len); }, add);
}

template <class T> std::vector<T> constants() {
    std::vector<T> v = randomVector<T>(6);
    for (int c : {0, 1}) {
        T x{};
        if constexpr (Complex<T>)
            x.re = decltype(x.re)(c);
        else
            x = T(c);
        v.push_back(x);
    }
    return v;
}

// A constant is a vector of equal elements: op(constant, element).
template <class T, class Op>
void withConstant(Status (*f)(const T*, T, T*, int, int), Status (*inPlace)(T, T*, int, int), Op op, const std::vector<int>& scales = kScales) {
    rejects(f);
    rejects(inPlace);
    sweep<T>([&](int len, Place at) {
        const size_t n = size_t(len);
        const Guarded<T> src(randomVector<T>(n), at);
        Guarded<T> dst(n, at);
        const auto x = src.values();
        const auto all = constants<T>();
        const T val = all[n % all.size()];
        for (int scale : scales) {
            std::vector<T> want(n);
            for (size_t i = 0; i < n; ++i) want[i] = stored<T>(op(exact(val), exact(x[i])), scale);
            ASSERT_EQ(f(src.data(), val, dst, len, scale), StatusOk);
            ASSERT_TRUE(same(want, dst.values())) << len << " scale " << scale;
            dst.assign(x);
            ASSERT_EQ(inPlace(val, dst, len, scale), StatusOk);
            ASSERT_TRUE(same(want, dst.values())) << "in place, " << len << " scale " << scale;
        }
        ASSERT_TRUE(dst.intact());
    });
}

constexpr auto subRev = [](Z a, Z b) { return sub(b, a); };

TEST(Arithmetic, ScaledConstants) {
    withConstant(tevsAddC_8u_Sfs, tevsAddC_8u_ISfs, add);
    withConstant(tevsAddC_16u_Sfs, tevsAddC_16u_ISfs, add);
    withConstant(tevsAddC_16s_Sfs, tevsAddC_16s_ISfs, add);
    withConstant(tevsAddC_32s_Sfs, tevsAddC_32s_ISfs, add);
    withConstant(tevsAddC_16sc_Sfs, tevsAddC_16sc_ISfs, add);
    withConstant(tevsAddC_32sc_Sfs, tevsAddC_32sc_ISfs, add);
    withConstant(tevsSubC_8u_Sfs, tevsSubC_8u_ISfs, sub);
    withConstant(tevsSubC_16u_Sfs, tevsSubC_16u_ISfs, sub);
    withConstant(tevsSubC_16s_Sfs, tevsSubC_16s_ISfs, sub);
    withConstant(tevsSubC_32s_Sfs, tevsSubC_32s_ISfs, sub);
    withConstant(tevsSubC_16sc_Sfs, tevsSubC_16sc_ISfs, sub);
    withConstant(tevsSubC_32sc_Sfs, tevsSubC_32sc_ISfs, sub);
    withConstant(tevsSubCRev_8u_Sfs, tevsSubCRev_8u_ISfs, subRev);
    withConstant(tevsSubCRev_16u_Sfs, tevsSubCRev_16u_ISfs, subRev);
    withConstant(tevsSubCRev_16s_Sfs, tevsSubCRev_16s_ISfs, subRev);
    withConstant(tevsSubCRev_32s_Sfs, tevsSubCRev_32s_ISfs, subRev);
    withConstant(tevsSubCRev_16sc_Sfs, tevsSubCRev_16sc_ISfs, subRev);
    withConstant(tevsSubCRev_32sc_Sfs, tevsSubCRev_32sc_ISfs, subRev);
    withConstant(tevsMulC_8u_Sfs, tevsMulC_8u_ISfs, mul);
    withConstant(tevsMulC_16u_Sfs, tevsMulC_16u_ISfs, mul);
    withConstant(tevsMulC_16s_Sfs, tevsMulC_16s_ISfs, mul);
    withConstant(tevsMulC_32s_Sfs, tevsMulC_32s_ISfs, mul);
    withConstant(tevsMulC_16sc_Sfs, tevsMulC_16sc_ISfs, mul);
    withConstant(tevsMulC_32sc_Sfs, tevsMulC_32sc_ISfs, mul);
    int16_t a[2] = {30000, -3}, b[2] = {30000, -3}, c[2] = {30000, -3};
    EXPECT_EQ(tevsAddC_16s_I(10000, a, 2), StatusOk);
    EXPECT_EQ(tevsSubC_16s_I(10000, b, 2), StatusOk);
    EXPECT_EQ(tevsMulC_16s_I(-2, c, 2), StatusOk);
    EXPECT_EQ((std::vector<int>{a[0], a[1], b[0], b[1], c[0], c[1]}), (std::vector<int>{32767, 9997, 20000, -10003, -32768, 6}));
}

// All of 16-bit input space through each form of the vector rounding: in lanes of the stored width and in wider ones.
TEST(Arithmetic, EverySixteenBitValueAtEveryScale) {
    std::vector<int16_t> all(65536), got(65536);
    for (int i = 0; i < 65536; ++i) all[size_t(i)] = int16_t(i);
    for (int16_t val : {int16_t(-32768), int16_t(181)})
        for (int scale = -17; scale <= 32; ++scale) {
            const auto check = [&](auto f, auto op) {
                ASSERT_EQ(f(all.data(), val, got.data(), 65536, scale), StatusOk);
                for (size_t i = 0; i < 65536; ++i)
                    ASSERT_EQ(got[i], stored<int16_t>(op(exact(val), exact(all[i])), scale)) << all[i] << ", " << val << " scale " << scale;
            };
            check(tevsAddC_16s_Sfs, add);
            check(tevsSubCRev_16s_Sfs, subRev);
            check(tevsMulC_16s_Sfs, mul);
        }
}

// ---- accumulation, absolute values --------------------------------------------------------------------------------------------------------------

template <class A, class D> void accumulates(Status (*f)(const A*, const A*, D*, int, int)) {
    rejects(f);
    sweep<D>([&](int len, Place at) {
        const size_t n = size_t(len);
        const Guarded<A> a(randomVector<A>(n), at), b(randomVector<A>(n), at);
        const auto before = randomVector<D>(n);
        Guarded<D> dst(n, at);
        for (int scale : kScales) {
            std::vector<D> want(n);
            for (size_t i = 0; i < n; ++i) want[i] = stored<D>(add(exact(before[i]), mul(exact(a.data()[i]), exact(b.data()[i]))), scale);
            dst.assign(before);
            ASSERT_EQ(f(a.data(), b.data(), dst, len, scale), StatusOk);
            ASSERT_TRUE(same(want, dst.values())) << len << " scale " << scale;
        }
        ASSERT_TRUE(dst.intact());
    });
}

TEST(Arithmetic, AccumulatedProductsAreRoundedOnce) {
    accumulates(tevsAddProduct_16s_Sfs);
    accumulates(tevsAddProduct_16s32s_Sfs);
    accumulates(tevsAddProduct_32s_Sfs);
}

// ---- floats: the same expression, element by element ----------------------------------------------------------------------------------------------

template <class T> std::vector<T> wild(size_t n) {
    if constexpr (Complex<T>) {
        const auto parts = wildFloats<decltype(T::re)>(2 * n);
        std::vector<T> v(n);
        std::memcpy(v.data(), parts.data(), n * sizeof(T));
        return v;
    } else {
        return wildFloats<T>(n);
    }
}

// A NaN is a NaN: which of two operands' signs and payloads a sum keeps is not laid down.
template <class T> T canonical(T x) {
    if constexpr (Complex<T>)
        return {canonical(x.re), canonical(x.im)};
    else
        return std::isnan(x) ? std::numeric_limits<T>::quiet_NaN() : x;
}
template <class T> std::vector<T> canonical(std::vector<T> v) {
    for (T& x : v) x = canonical(x);
    return v;
}

template <class T> T fAdd(T a, T b) {
    if constexpr (Complex<T>)
        return {a.re + b.re, a.im + b.im};
    else
        return a + b;
}
template <class T> T fSub(T a, T b) {
    if constexpr (Complex<T>)
        return {b.re - a.re, b.im - a.im};
    else
        return b - a;
}
template <class T> T fMul(T a, T b) {
    if constexpr (Complex<T>)
        return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
    else
        return a * b;
}

template <class T, class Op> void floats(Status (*f)(const T*, const T*, T*, int), Status (*inPlace)(const T*, T*, int), Op op) {
    rejects(f);
    rejects(inPlace);
    sweep<T>([&](int len, Place at) {
        const size_t n = size_t(len);
        const Guarded<T> a(wild<T>(n), at), b(wild<T>(n), at);
        Guarded<T> dst(n, at), both(b.values(), at);
        std::vector<T> want(n);
        for (size_t i = 0; i < n; ++i) want[i] = op(a.data()[i], b.data()[i]);
        ASSERT_EQ(f(a.data(), b.data(), dst, len), StatusOk);
        ASSERT_EQ(inPlace(a.data(), both, len), StatusOk);
        ASSERT_TRUE(same(canonical(want), canonical(dst.values()))) << len;
        ASSERT_TRUE(same(canonical(want), canonical(both.values()))) << "in place, " << len;
        ASSERT_TRUE(dst.intact() && both.intact());
    });
}
template <class T, class Op> void floatsC(Status (*f)(const T*, T, T*, int), Status (*inPlace)(T, T*, int), Op op) {
    rejects(f);
    rejects(inPlace);
    sweep<T>([&](int len, Place at) {
        const size_t n = size_t(len);
        const T val = randomValue<T>();
        const Guarded<T> src(wild<T>(n), at);
        Guarded<T> dst(n, at), both(src.values(), at);
        std::vector<T> want(n);
        for (size_t i = 0; i < n; ++i) want[i] = op(val, src.data()[i]);
        ASSERT_EQ(f(src.data(), val, dst, len), StatusOk);
        ASSERT_EQ(inPlace(val, both, len), StatusOk);
        ASSERT_TRUE(same(canonical(want), canonical(dst.values()))) << len;
        ASSERT_TRUE(same(canonical(want), canonical(both.values()))) << "in place, " << len;
        ASSERT_TRUE(dst.intact() && both.intact());
    });
}
template <class T> void accumulatesFloats(Status (*f)(const T*, const T*, T*, int)) {
    rejects(f);
    sweep<T>([&](int len, Place at) {
        const size_t n = size_t(len);
        const Guarded<T> a(wild<T>(n), at), b(wild<T>(n), at);
        Guarded<T> dst(randomVector<T>(n), at);
        std::vector<T> want(n);
        for (size_t i = 0; i < n; ++i) want[i] = fAdd(dst.data()[i], fMul(a.data()[i], b.data()[i]));
        ASSERT_EQ(f(a.data(), b.data(), dst, len), StatusOk);
        ASSERT_TRUE(same(canonical(want), canonical(dst.values()))) << len;
        ASSERT_TRUE(dst.intact());
    });
}

template <class T> constexpr auto kSubC = [](T val, T x) { return fSub(val, x); };
template <class T> constexpr auto kSubCRev = [](T val, T x) { return fSub(x, val); };
template <class T> constexpr auto kMulC = [](T val, T x) { return fMul(x, val); };

TEST(Arithmetic, FloatsAreIeee) {
    floats(tevsAdd_32f, tevsAdd_32f_I, fAdd<float>);
    floats(tevsAdd_64f, tevsAdd_64f_I, fAdd<double>);
    floats(tevsAdd_32fc, tevsAdd_32fc_I, fAdd<Complex32f>);
    floats(tevsAdd_64fc, tevsAdd_64fc_I, fAdd<Complex64f>);
    floats(tevsSub_32f, tevsSub_32f_I, fSub<float>);
    floats(tevsSub_64f, tevsSub_64f_I, fSub<double>);
    floats(tevsSub_32fc, tevsSub_32fc_I, fSub<Complex32f>);
    floats(tevsSub_64fc, tevsSub_64fc_I, fSub<Complex64f>);
    floats(tevsMul_32f, tevsMul_32f_I, fMul<float>);
    floats(tevsMul_64f, tevsMul_64f_I, fMul<double>);
    floats(tevsMul_32fc, tevsMul_32fc_I, fMul<Complex32f>);
    floats(tevsMul_64fc, tevsMul_64fc_I, fMul<Complex64f>);
    floatsC(tevsAddC_32f, tevsAddC_32f_I, fAdd<float>);
    floatsC(tevsAddC_64f, tevsAddC_64f_I, fAdd<double>);
    floatsC(tevsAddC_32fc, tevsAddC_32fc_I, fAdd<Complex32f>);
    floatsC(tevsAddC_64fc, tevsAddC_64fc_I, fAdd<Complex64f>);
    floatsC(tevsSubC_32f, tevsSubC_32f_I, kSubC<float>);
    floatsC(tevsSubC_64f, tevsSubC_64f_I, kSubC<double>);
    floatsC(tevsSubC_32fc, tevsSubC_32fc_I, kSubC<Complex32f>);
    floatsC(tevsSubC_64fc, tevsSubC_64fc_I, kSubC<Complex64f>);
    floatsC(tevsSubCRev_32f, tevsSubCRev_32f_I, kSubCRev<float>);
    floatsC(tevsSubCRev_64f, tevsSubCRev_64f_I, kSubCRev<double>);
    floatsC(tevsSubCRev_32fc, tevsSubCRev_32fc_I, kSubCRev<Complex32f>);
    floatsC(tevsSubCRev_64fc, tevsSubCRev_64fc_I, kSubCRev<Complex64f>);
    floatsC(tevsMulC_32f, tevsMulC_32f_I, kMulC<float>);
    floatsC(tevsMulC_64f, tevsMulC_64f_I, kMulC<double>);
    floatsC(tevsMulC_32fc, tevsMulC_32fc_I, kMulC<Complex32f>);
    floatsC(tevsMulC_64fc, tevsMulC_64fc_I, kMulC<Complex64f>);
    accumulatesFloats(tevsAddProduct_32f);
    accumulatesFloats(tevsAddProduct_64f);
    accumulatesFloats(tevsAddProduct_32fc);
    accumulatesFloats(tevsAddProduct_64fc);
}

TEST(Arithmetic, RealTimesComplexAndAddProductC) {
    rejects(tevsMul_32f32fc);
    rejects(tevsMul_32f32fc_I);
    rejects(tevsAddProductC_32f);
    sweep<Complex32f>([](int len, Place at) {
        const size_t n = size_t(len);
        const Guarded<float> a(wildFloats<float>(n), at);
        const Guarded<Complex32f> b(wild<Complex32f>(n), at);
        Guarded<Complex32f> dst(n, at), both(b.values(), at);
        Guarded<float> sum(randomVector<float>(n), at);
        std::vector<Complex32f> want;
        std::vector<float> wantSum;
        for (size_t i = 0; i < n; ++i) {
            const float x = a.data()[i];
            want.push_back({x * b.data()[i].re, x * b.data()[i].im});
            wantSum.push_back(sum.data()[i] + x * 0.3f);
        }
        ASSERT_EQ(tevsMul_32f32fc(a.data(), b.data(), dst, len), StatusOk);
        ASSERT_EQ(tevsMul_32f32fc_I(a.data(), both, len), StatusOk);
        ASSERT_EQ(tevsAddProductC_32f(a.data(), 0.3f, sum, len), StatusOk);
        ASSERT_TRUE(same(canonical(want), canonical(dst.values())));
        ASSERT_TRUE(same(canonical(want), canonical(both.values())));
        ASSERT_TRUE(same(canonical(wantSum), canonical(sum.values())));
        ASSERT_TRUE(dst.intact() && both.intact() && sum.intact());
    });
}

TEST(Arithmetic, FloatProductsToSixteenBits) {
    rejects(tevsMulC_32f16s_Sfs);
    rejects(tevsMulC_Low_32f16s);
    sweep<float>([](int len, Place at) {
        const Guarded<float> src(wildFloats<float>(size_t(len)), at);
        Guarded<int16_t> dst(size_t(len), at);
        for (int scale : {0, 1, 5, -3, 120, -140, INT_MIN, INT_MAX}) {
            std::vector<int16_t> want;
            for (float x : src.values()) want.push_back(std::isnan(x) ? int16_t(-32768) : rounded<int16_t>(x * 1.7f, scale));
            ASSERT_EQ(tevsMulC_32f16s_Sfs(src.data(), 1.7f, dst, len, scale), StatusOk);
            ASSERT_TRUE(same(want, dst.values())) << len << " scale " << scale;
            if (scale == 0) {
                ASSERT_EQ(tevsMulC_Low_32f16s(src.data(), 1.7f, dst, len), StatusOk);
                ASSERT_TRUE(same(want, dst.values())) << len;
            }
        }
        ASSERT_TRUE(dst.intact());
    });
}

template <class T> void absolutes(Status (*f)(const T*, T*, int), Status (*inPlace)(T*, int), std::vector<T> (*data)(size_t)) {
    rejects(f);
    sweep<T>([=](int len, Place at) {
        const Guarded<T> src(data(size_t(len)), at);
        Guarded<T> dst(size_t(len), at), both(src.values(), at);
        std::vector<T> want;
        for (T x : src.values()) want.push_back(std::is_integral_v<T> ? rounded<T>(std::fabs((long double)x), 0) : T(std::fabs(x)));
        ASSERT_EQ(f(src.data(), dst, len), StatusOk);
        ASSERT_EQ(inPlace(both, len), StatusOk);
        ASSERT_TRUE(same(want, dst.values()));
        ASSERT_TRUE(same(want, both.values()));
        ASSERT_TRUE(dst.intact() && both.intact());
    });
}

TEST(Arithmetic, AbsoluteValues) {
    absolutes(tevsAbs_16s, tevsAbs_16s_I, randomVector<int16_t>);
    absolutes(tevsAbs_32s, tevsAbs_32s_I, randomVector<int32_t>);
    absolutes(tevsAbs_32f, tevsAbs_32f_I, wildFloats<float>);
    absolutes(tevsAbs_64f, tevsAbs_64f_I, wildFloats<double>);
}

// ---- division ------------------------------------------------------------------------------------------------------------------------------------------

// In 64 bits a quotient of 32-bit numbers is nearer to itself than to a tie, at any scale.
template <class D> D quotient(Z y, Z x, int scale, bool& zero) {
    const long double m = y.re * y.re + y.im * y.im;
    zero = zero || m == 0;
    if constexpr (Complex<D>) {
        if (m == 0) return {0, 0};
        const Z q = {x.re * y.re + x.im * y.im, x.im * y.re - x.re * y.im};
        if (scale < -32) scale = -200;
        return stored<D>({q.re / m, q.im / m}, scale);
    } else {
        if (m == 0) return x.re > 0 ? std::numeric_limits<D>::max() : x.re < 0 ? std::numeric_limits<D>::min() : D(0);
        return rounded<D>(x.re / y.re, scale);
    }
}

template <class A, class B, class D, class InPlace> void divides(Status (*f)(const A*, const B*, D*, int, int), InPlace inPlace) {
    rejects(f);
    sweep<D>([&](int len, Place at) {
        const size_t n = size_t(len);
        auto divisors = randomVector<A>(n);
        for (size_t i = 0; n % 3 == 0 && i < n; ++i)   // some calls without a zero divisor
            if (exact(divisors[i]).re == 0) std::memset(&divisors[i], 1, sizeof(A));
        const Guarded<A> a(divisors, at);
        const Guarded<B> b(randomVector<B>(n), at);
        Guarded<D> dst(n, at);
        for (int scale : kScales) {
            bool zero = false;
            std::vector<D> want(n);
            for (size_t i = 0; i < n; ++i) want[i] = quotient<D>(exact(divisors[i]), exact(b.data()[i]), scale, zero);
            const Status status = zero ? WarnDivByZero : StatusOk;
            ASSERT_EQ(f(a.data(), b.data(), dst, len, scale), status);
            ASSERT_TRUE(same(want, dst.values())) << len << " scale " << scale;
            if constexpr (!std::is_null_pointer_v<InPlace>) {
                dst.assign(b.values());
                ASSERT_EQ(inPlace(a.data(), dst, len, scale), status);
                ASSERT_TRUE(same(want, dst.values())) << "in place, " << len << " scale " << scale;
            }
        }
        ASSERT_TRUE(dst.intact());
    });
}
template <class T> void dividesC(Status (*f)(const T*, T, T*, int, int), Status (*inPlace)(T, T*, int, int)) {
    rejects(inPlace);
    sweep<T>([&](int len, Place at) {
        const size_t n = size_t(len);
        T val = randomValue<T>();
        if (exact(val).re == 0) std::memset(&val, 1, sizeof val);
        const Guarded<T> src(randomVector<T>(n), at);
        Guarded<T> dst(n, at);
        for (int scale : kScales) {
            bool zero = false;
            std::vector<T> want(n);
            // Only the quotient of two vectors has a rule of its own below -32.
            for (size_t i = 0; i < n; ++i) want[i] = quotient<T>(exact(val), exact(src.data()[i]), std::max(scale, -32), zero);
            if (Complex<T> && scale < -32) continue;
            ASSERT_EQ(f(src.data(), val, dst, len, scale), StatusOk);
            ASSERT_TRUE(same(want, dst.values())) << len << " scale " << scale;
            dst.assign(src.values());
            ASSERT_EQ(inPlace(val, dst, len, scale), StatusOk);
            ASSERT_TRUE(same(want, dst.values())) << "in place, " << len << " scale " << scale;
        }
        ASSERT_EQ(f(src.data(), T{}, dst, len, 0), StatusDivByZeroErr);
        ASSERT_EQ(f(src.data(), T{}, dst, 0, 0), StatusBadSize);
        ASSERT_TRUE(dst.intact());
    });
}

TEST(Division, IntegerQuotientsAreRoundedOnce) {
    divides(tevsDiv_8u_Sfs, tevsDiv_8u_ISfs);
    divides(tevsDiv_16u_Sfs, tevsDiv_16u_ISfs);
    divides(tevsDiv_16s_Sfs, tevsDiv_16s_ISfs);
    divides(tevsDiv_32s_Sfs, tevsDiv_32s_ISfs);
    divides(tevsDiv_16sc_Sfs, tevsDiv_16sc_ISfs);
    divides(tevsDiv_32s16s_Sfs, nullptr);
    dividesC(tevsDivC_8u_Sfs, tevsDivC_8u_ISfs);
    dividesC(tevsDivC_16u_Sfs, tevsDivC_16u_ISfs);
    dividesC(tevsDivC_16s_Sfs, tevsDivC_16s_ISfs);
    dividesC(tevsDivC_16sc_Sfs, tevsDivC_16sc_ISfs);
}

TEST(Division, UnscaledFormsAreScaleZero) {
    const auto equals = [](auto scaled, auto plain, auto a, auto b, auto d) {
        auto e = d;
        ASSERT_EQ(scaled(a.data(), b.data(), d.data(), int(d.size()), 0), plain(a.data(), b.data(), e.data(), int(e.size())));
        ASSERT_TRUE(same(d, e));
    };
    const auto r16 = randomVector<int16_t>(99), s16 = randomVector<int16_t>(99);
    const auto r32 = randomVector<int32_t>(99), s32 = randomVector<int32_t>(99);
    const auto r8 = randomVector<uint8_t>(99), s8 = randomVector<uint8_t>(99);
    const auto rc = randomVector<Complex16s>(99), sc = randomVector<Complex16s>(99);
    equals(tevsDiv_16s_Sfs, tevsDiv_16s, r16, s16, s16);
    equals(tevsDiv_32s_Sfs, tevsDiv_32s, r32, s32, s32);
    equals(tevsDiv_8u_Sfs, tevsDiv_8u, r8, s8, s8);
    equals(tevsDiv_16sc_Sfs, tevsDiv_16sc, rc, sc, sc);
    equals(tevsDiv_32s16s_Sfs, tevsDiv_32s16s, r16, s32, s16);
    std::vector<int16_t> q(99), p(99);
    tevsDivC_16s(r16.data(), -7, q.data(), 99), tevsDivC_16s_Sfs(r16.data(), -7, p.data(), 99, 0);
    EXPECT_EQ(q, p);
    std::vector<uint8_t> u(99), v(99);
    tevsDivC_8u(r8.data(), 7, u.data(), 99), tevsDivC_8u_Sfs(r8.data(), 7, v.data(), 99, 0);
    EXPECT_EQ(u, v);
    std::vector<Complex16s> y(99), z(99);
    tevsDivC_16sc(rc.data(), {3, -4}, y.data(), 99), tevsDivC_16sc_Sfs(rc.data(), {3, -4}, z.data(), 99, 0);
    EXPECT_TRUE(same(y, z));
}

TEST(Division, EveryPairOfBytes) {
    std::vector<uint8_t> a(65536), b(65536), got(65536);
    for (size_t i = 0; i < 65536; ++i) a[i] = uint8_t(i), b[i] = uint8_t(i >> 8);
    for (int scale = -17; scale <= 10; ++scale) {
        ASSERT_EQ(tevsDiv_8u_Sfs(a.data(), b.data(), got.data(), 65536, scale), WarnDivByZero);
        bool zero = false;
        for (size_t i = 0; i < 65536; ++i) ASSERT_EQ(got[i], quotient<uint8_t>(exact(a[i]), exact(b[i]), scale, zero)) << i << " scale " << scale;
    }
    std::vector<uint16_t> x(70000), y(70000);
    for (size_t i = 0; i < x.size(); ++i) x[i] = uint16_t(i);
    for (uint16_t val : {uint16_t(0), uint16_t(1), uint16_t(40503), uint16_t(65535)}) {
        ASSERT_EQ(tevsDivCRev_16u(x.data(), val, y.data(), 70000), WarnDivByZero);
        bool zero = false;
        for (size_t i = 0; i < x.size(); ++i) ASSERT_EQ(y[i], quotient<uint16_t>(exact(x[i]), exact(val), 0, zero)) << i;
    }
    x.assign(5, 3);
    ASSERT_EQ(tevsDivCRev_16u_I(10, x.data(), 5), StatusOk);
    EXPECT_EQ(x, std::vector<uint16_t>(5, 3));
    rejects(tevsDivCRev_16u);
    rejects(tevsDivCRev_16u_I);
}

constexpr float kInf = INFINITY;
template <class T> T theNaN() { return std::numeric_limits<T>::quiet_NaN(); }   // 0x7FC00000, 0x7FF8000000000000

template <class T> T floatQuotient(T y, T x, bool& zero) {
    if (y != 0 || std::isnan(y)) return x / y;
    zero = true;
    return x > 0 ? T(kInf) : x < 0 ? -T(kInf) : theNaN<T>();
}
template <class T> void dividesFloats(Status (*f)(const T*, const T*, T*, int), Status (*inPlace)(const T*, T*, int)) {
    rejects(f);
    rejects(inPlace);
    sweep<T>([&](int len, Place at) {
        const size_t n = size_t(len);
        auto divisors = wildFloats<T>(n);
        for (T& y : divisors)
            if (n % 2 && y == 0) y = 3;
        const Guarded<T> a(divisors, at), b(wildFloats<T>(n), at);
        Guarded<T> dst(n, at), both(b.values(), at);
        std::vector<T> want(n);
        bool zero = false;
        for (size_t i = 0; i < n; ++i) want[i] = floatQuotient(divisors[i], b.data()[i], zero);
        ASSERT_EQ(f(a.data(), b.data(), dst, len), zero ? WarnDivByZero : StatusOk);
        ASSERT_EQ(inPlace(a.data(), both, len), zero ? WarnDivByZero : StatusOk);
        for (size_t i = 0; i < n; ++i) {
            if (divisors[i] == 0) {
                ASSERT_TRUE(same(std::vector<T>{want[i]}, std::vector<T>{dst.data()[i]})) << "over zero";
            }
        }
        ASSERT_TRUE(same(canonical(want), canonical(dst.values())));
        ASSERT_TRUE(same(canonical(want), canonical(both.values())));
        ASSERT_TRUE(dst.intact() && both.intact());
    });
}

TEST(Division, FloatsAreIeeeButOverZero) {
    dividesFloats(tevsDiv_32f, tevsDiv_32f_I);
    dividesFloats(tevsDiv_64f, tevsDiv_64f_I);
    rejects(tevsDivCRev_32f);
    rejects(tevsDivCRev_32f_I);
    for (float val : {0.0f, -2.5f, theNaN<float>(), kInf}) {
        const auto src = wildFloats<float>(77);
        std::vector<float> got(77), want, both = src;
        bool zero = false;
        for (float y : src) want.push_back(floatQuotient(y, val, zero));
        ASSERT_EQ(tevsDivCRev_32f(src.data(), val, got.data(), 77), zero ? WarnDivByZero : StatusOk);
        ASSERT_EQ(tevsDivCRev_32f_I(val, both.data(), 77), zero ? WarnDivByZero : StatusOk);
        EXPECT_TRUE(same(canonical(want), canonical(got)));
        EXPECT_TRUE(same(canonical(want), canonical(both)));
    }
}

template <class T> void reciprocals(Status (*f)(const T*, T, T*, int), Status (*inPlace)(T, T*, int)) {
    const auto src = wildFloats<T>(77);
    std::vector<T> got(77), both = src, want;
    for (T x : src) want.push_back(x * (T(1) / T(3)));
    EXPECT_EQ(f(src.data(), 3, got.data(), 77), StatusOk);
    EXPECT_EQ(inPlace(3, both.data(), 77), StatusOk);
    EXPECT_TRUE(same(canonical(want), canonical(got)));
    EXPECT_TRUE(same(canonical(want), canonical(both)));
    for (T bad : {T(0), -T(0), theNaN<T>()}) {
        EXPECT_EQ(f(src.data(), bad, got.data(), 77), StatusDivByZeroErr);
        EXPECT_EQ(f(src.data(), bad, got.data(), 0), StatusBadSize);
        EXPECT_EQ(inPlace(bad, both.data(), 77), StatusDivByZeroErr);
    }
    EXPECT_TRUE(same(canonical(want), canonical(both)));
    rejects(inPlace);
}

// |x| |y| bounds every term, so an error is measured against |x / y|.
template <class C>
void dividesComplex(Status (*f)(const C*, const C*, C*, int), Status (*inPlace)(const C*, C*, int), Status (*byConstant)(const C*, C, C*, int),
                    Status (*byConstantInPlace)(C, C*, int), double bound) {
    using T = decltype(C::re);
    rejects(f);
    rejects(inPlace);
    const auto near = [bound](C got, C y, C x, const char* what) {
        const long double m = (long double)y.re * y.re + (long double)y.im * y.im;
        const long double re = ((long double)x.re * y.re + (long double)x.im * y.im) / m, im = ((long double)x.im * y.re - (long double)x.re * y.im) / m;
        const long double size = std::hypot(re, im);
        ASSERT_LE(std::fabs(got.re - re), bound * size) << what << " (" << x.re << ", " << x.im << ") / (" << y.re << ", " << y.im << ")";
        ASSERT_LE(std::fabs(got.im - im), bound * size) << what;
    };
    sweep<C>([&](int len, Place at) {
        const size_t n = size_t(len);
        auto divisors = randomVector<C>(n), dividends = randomVector<C>(n);
        for (size_t i = 0; i < n; ++i) {   // far out of where squares stay in range
            const int e = int(generator()() % 401) - 200, scale = std::is_same_v<T, double> ? 4 : 0;
            divisors[i] = {std::ldexp(divisors[i].re, e / 4 + e * scale), std::ldexp(divisors[i].im, e / 4 + e * scale)};
            dividends[i] = {std::ldexp(dividends[i].re, e / 4 + e * scale), std::ldexp(dividends[i].im, e / 4 + e * scale)};
        }
        const bool zero = len % 4 == 1;
        if (zero) divisors[n / 2] = {T(0), -T(0)};
        const Guarded<C> a(divisors, at), b(dividends, at);
        Guarded<C> dst(n, at), both(dividends, at);
        ASSERT_EQ(f(a.data(), b.data(), dst, len), zero ? WarnDivByZero : StatusOk);
        ASSERT_EQ(inPlace(a.data(), both, len), zero ? WarnDivByZero : StatusOk);
        ASSERT_TRUE(same(dst.values(), both.values()));
        ASSERT_TRUE(dst.intact() && both.intact());
        for (size_t i = 0; i < n; ++i) {
            const C got = dst.data()[i];
            if (divisors[i].re != 0 || divisors[i].im != 0)
                near(got, divisors[i], dividends[i], "Div");
            else
                ASSERT_TRUE(same(std::vector<C>{{theNaN<T>(), theNaN<T>()}}, std::vector<C>{got}));
        }
    });
    const C src[2] = {{3, 4}, {-1, 0.5}}, val = {T(0.6), T(-0.8)};
    C got[2], both[2] = {src[0], src[1]};
    EXPECT_EQ(byConstant(src, val, got, 2), StatusOk);
    EXPECT_EQ(byConstantInPlace(val, both, 2), StatusOk);
    for (int i = 0; i < 2; ++i) near(got[i], val, src[i], "DivC"), near(both[i], val, src[i], "DivC_I");
    for (C bad : {C{0, 0}, C{theNaN<T>(), 1}, C{std::numeric_limits<T>::denorm_min(), 0}}) EXPECT_EQ(byConstant(src, bad, got, 2), StatusDivByZeroErr);
    EXPECT_EQ(byConstant(src, C{0, 0}, got, 0), StatusBadSize);
    rejects(byConstantInPlace);
}

TEST(Division, FloatConstantsAndComplex) {
    reciprocals(tevsDivC_32f, tevsDivC_32f_I);
    reciprocals(tevsDivC_64f, tevsDivC_64f_I);
    dividesComplex(tevsDiv_32fc, tevsDiv_32fc_I, tevsDivC_32fc, tevsDivC_32fc_I, 0x1p-22);
    dividesComplex(tevsDiv_64fc, tevsDiv_64fc_I, tevsDivC_64fc, tevsDivC_64fc_I, 0x1p-50);
}

// Every part of a size of its own: the formula's quotient where exponents have no bounds, whatever the neighbours are. Its terms bound the error.
template <class C> void dividesAnySize(Status (*f)(const C*, const C*, C*, int), int exponents, long double bound) {
    using T = decltype(C::re);
    const auto part = [=] {
        const uint64_t r = generator()();
        return r % 8 == 0 ? T(0) : std::ldexp(T(1) + std::abs(randomValue<T>()), int((r >> 8) % (2 * uint64_t(exponents))) - exponents);
    };
    for (int round = 0; round < 4000; ++round) {
        const int len = round % 7 + 1;
        std::vector<C> x(static_cast<size_t>(len)), y = x, got = x;
        for (C& z : x) z = {part(), part()};
        for (C& z : y) z = {part(), -part()};
        bool zero = false;
        const Status status = f(y.data(), x.data(), got.data(), len);
        for (size_t i = 0; i < x.size(); ++i) {
            C alone;
            const bool none = y[i].re == 0 && y[i].im == 0;
            zero |= none;
            ASSERT_EQ(f(&y[i], &x[i], &alone, 1), none ? WarnDivByZero : StatusOk);
            ASSERT_TRUE(same(std::vector<C>{alone}, std::vector<C>{got[i]}));
            if (none) continue;
            const long double a = x[i].re, b = x[i].im, c = y[i].re, d = y[i].im, m = c * c + d * d;
            const auto near = [&](long double p, long double q, T part) {
                const long double want = (p + q) / m, off = bound * (std::abs(p) + std::abs(q)) / m + std::numeric_limits<T>::denorm_min();
                ASSERT_TRUE(std::abs(want) > std::numeric_limits<T>::max() ? std::isinf(part) : std::abs(part - want) <= off)
                    << "(" << x[i].re << ", " << x[i].im << ") / (" << y[i].re << ", " << y[i].im << "): want " << want << ", got " << part;
            };
            near(a * c, b * d, got[i].re);
            near(b * c, -(a * d), got[i].im);
        }
        ASSERT_EQ(status, zero ? WarnDivByZero : StatusOk);
    }
}

TEST(Division, ComplexPartsOfAnySize) {
    dividesAnySize(tevsDiv_32fc, 126, 0x1p-22L);
    dividesAnySize(tevsDiv_64fc, 1022, 0x1p-50L);
}

// What pads a short vector meets no zero that is not there.
TEST(Division, ImaginaryDivisorsAreNoZeros) {
    for (int len = 1; len < 9; ++len) {
        const std::vector<Complex16s> y16(static_cast<size_t>(len), {0, 5});
        std::vector<Complex16s> x16(y16.size(), {20, 10});
        EXPECT_EQ(tevsDiv_16sc_ISfs(y16.data(), x16.data(), len, 0), StatusOk) << len;
        EXPECT_TRUE(same(std::vector<Complex16s>(y16.size(), {2, -4}), x16));
        const std::vector<Complex32f> y32(y16.size(), {0, 5});
        std::vector<Complex32f> x32(y16.size(), {20, 10});
        EXPECT_EQ(tevsDiv_32fc_I(y32.data(), x32.data(), len), StatusOk) << len;
        EXPECT_TRUE(same(std::vector<Complex32f>(y16.size(), {2, -4}), x32));
    }
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

TEST(Arithmetic, IgnoresAndKeepsTheCallersRounding) {
    for (uint32_t rc : {1u, 2u, 3u}) {
        const float x = 1, y = 3, half = 3.5f;
        const int16_t a = 7, b = 2;
        float sum = 0, quotient = 0, reciprocal = 0;
        int16_t r = 0, h = 0;
        const uint32_t before = tev_set_rc_ssx(rc);
        tevsAddC_32f(&x, 0x1.8p-24f, &sum, 1);
        tevsDiv_32f(&y, &x, &quotient, 1);
        tevsDivC_32f(&x, 3, &reciprocal, 1);
        tevsDiv_16s(&b, &a, &r, 1);
        tevsMulC_Low_32f16s(&half, 1, &h, 1);
        const uint32_t after = tev_set_cw_ssx(before);
        EXPECT_EQ(sum, 1 + 0x1p-23f);
        EXPECT_EQ(quotient, 0x1.555556p-2f);
        EXPECT_EQ(reciprocal, 0x1.555556p-2f);
        EXPECT_EQ(r, 4);
        EXPECT_EQ(h, 4);
        EXPECT_EQ((after >> 13) & 3, rc);
    }
}

}   // namespace
