#include <algorithm>
#include <climits>
#include <cmath>
#include <limits>
#include <type_traits>

#include "support/data.h"
#include "support/guarded.h"

using namespace test;

namespace {

// Half away from zero, saturated; NaN to the minimum.
template <class T> T rounded(long double v) {
    using L = std::numeric_limits<T>;
    if constexpr (std::is_floating_point_v<T>)
        return T(v);
    else
        return std::isnan(v) ? L::min() : T(std::min<long double>(std::max<long double>(std::round(v), L::min()), L::max()));
}

template <class T> void ramp(Status (*f)(T*, int, float, float)) {
    const float inf = INFINITY, nan = NAN;
    const float lines[][2] = {{-3, 1},        {250.6f, 1},        {-0.5f, 0},      {0.49999997f, 0.25f}, {-200, 3.7f}, {40000, 600.5f}, {-33000, 0.5f},
                              {2.1e9f, 7e6f}, {-2.2e9f, 3e6f},    {4.2e9f, 1e7f},  {1e30f, -1e28f},      {inf, -1},    {-inf, 1},       {nan, 1},
                              {0, 1e-3f},     {8388607.5f, 0.5f}, {126.5f, 1e-6f}, {4294967040.0f, 8},   {0.1f, nan}};
    for (const auto& [offset, slope] : lines) {
        sweep<T>([&](int len, Place at) {
            Guarded<T> dst(size_t(len), at);
            ASSERT_EQ(f(dst.data(), len, offset, slope), StatusOk);
            ASSERT_TRUE(dst.intact());
            for (int n = 0; n < len; ++n) {
                volatile float product = float(n) * slope;
                const T want = std::is_same_v<T, double> ? T(double(offset) + n * double(slope)) : rounded<T>(float(offset + product));
                const T got = dst.data()[n];
                ASSERT_TRUE(want == got || (want != want && got != got)) << offset << " + " << n << " * " << slope << ": " << +want << ", got " << +got;
            }
        });
    }
}

TEST(VectorRamp, IsALineInSinglePrecision) {
    ramp(tevsVectorRamp_8u);
    ramp(tevsVectorRamp_8s);
    ramp(tevsVectorRamp_16u);
    ramp(tevsVectorRamp_16s);
    ramp(tevsVectorRamp_32u);
    ramp(tevsVectorRamp_32s);
    ramp(tevsVectorRamp_32f);
    ramp(tevsVectorRamp_64f);
}

template <class T> std::vector<long double> chirp(int len, T magn) {
    std::vector<long double> y(static_cast<size_t>(len));
    const double rate = 1.5707963267948966 / len;
    for (int n = 0; n < len; ++n) y[size_t(n)] = magn * std::sin((long double)(rate * (double(n) * n)));
    return y;
}
template <class T> void jaehne(Status (*f)(T*, int, T), std::type_identity_t<std::initializer_list<T>> magnitudes) {
    for (T magn : magnitudes) {
        const auto check = [&](int len, Place at) {
            Guarded<T> dst(size_t(len), at);
            ASSERT_EQ(f(dst.data(), len, magn), StatusOk);
            ASSERT_TRUE(dst.intact());
            const auto y = chirp(len, magn);
            const auto [low, high] = std::minmax_element(y.begin(), y.end());
            for (int n = 0; n < len; ++n) {
                long double want = y[size_t(n)];
                if (std::is_unsigned_v<T>) want = *high > *low ? (want - *low) * (magn / (*high - *low)) : 0;
                const long double got = dst.data()[n], error = magn * 0x1p-50L;   // which decides between two integers where the sine is half-way
                ASSERT_TRUE(got >= rounded<T>(want - error) && got <= rounded<T>(want + error)) << len << " at " << n << ": " << got << ", want " << want;
            }
        };
        sweep<T>(check);
        check(300007, {});
    }
    T x[2] = {7, 7};
    EXPECT_EQ(f(x, 1, 0), StatusOk);
    EXPECT_EQ(x[0], 0);
    EXPECT_EQ(f(x + 1, 1, 100), StatusOk);
    EXPECT_EQ(x[1], 0);
    if (std::is_signed_v<T>) {
        EXPECT_EQ(f(x, 0, T(-1)), StatusBadSize);
        EXPECT_EQ(f(x, 1, T(-1)), StatusJaehneMagnitude);
        EXPECT_EQ(f(x, 2, std::numeric_limits<T>::lowest()), StatusJaehneMagnitude);
        EXPECT_EQ(x[0], 0);
    }
}

TEST(VectorJaehne, SweepsToHalfTheSamplingRate) {
    jaehne(tevsVectorJaehne_8u, {255, 100, 0});
    jaehne(tevsVectorJaehne_8s, {127, 1});
    jaehne(tevsVectorJaehne_16u, {65535, 1000});
    jaehne(tevsVectorJaehne_16s, {32767, 0});
    jaehne(tevsVectorJaehne_32u, {UINT32_MAX, 70000});
    jaehne(tevsVectorJaehne_32s, {INT32_MAX, 12345});
    jaehne(tevsVectorJaehne_32f, {1.0f, 1e-3f});
    jaehne(tevsVectorJaehne_64f, {1.0, 1e300});
}

// The whole range is used: the least element is 0 and the greatest magn.
TEST(VectorJaehne, SpreadsUnsignedNumbers) {
    for (int len = 2; len < 300; ++len) {
        std::vector<uint8_t> v(static_cast<size_t>(len));
        ASSERT_EQ(tevsVectorJaehne_8u(v.data(), len, 201), StatusOk);
        const auto [low, high] = std::minmax_element(v.begin(), v.end());
        ASSERT_TRUE(*low == 0 && *high == 201) << len;
    }
}

TEST(TestVectors, SameBitsAtEveryLevelAndInBothAbis) {
    std::vector<double> v(5003);
    tevsVectorJaehne_64f(v.data(), 5003, 1.1);
    EXPECT_EQ(hashOf(v.data(), v.size() * sizeof v[0]), 10734818272175502883u);
}

}   // namespace
