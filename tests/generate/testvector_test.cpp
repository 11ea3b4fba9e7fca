#include <algorithm>
#include <climits>
#include <cmath>
#include <limits>
#include <type_traits>

#include "support/elements.h"

using namespace test;

namespace {

// Half away from zero, saturated; NaN to the minimum.
template <class T> T rounded(long double v) {
    if constexpr (std::is_floating_point_v<T>)
        return T(v);
    else
        return nearest<T>(std::round(v), 0);
}

constexpr auto ramp = []<class T>(Status (*f)(T*, int, float, float)) {
    const float inf = INFINITY, nan = NAN;
    const float lines[][2] = {{-3, 1},        {250.6f, 1},        {-0.5f, 0},      {0.49999997f, 0.25f}, {-200, 3.7f}, {40000, 600.5f}, {-33000, 0.5f},
                              {2.1e9f, 7e6f}, {-2.2e9f, 3e6f},    {4.2e9f, 1e7f},  {1e30f, -1e28f},      {inf, -1},    {-inf, 1},       {nan, 1},
                              {0, 1e-3f},     {8388607.5f, 0.5f}, {126.5f, 1e-6f}, {4294967040.0f, 8},   {0.1f, nan}};
    for (const auto& [offset, slope] : lines) {
        std::vector<T> want;
        eachLength([&, o = offset, s = slope](int len) {
            for (int n = int(want.size()); n < len; ++n) {
                volatile float product = float(n) * s;
                want.push_back(std::is_same_v<T, double> ? T(double(o) + n * double(s)) : rounded<T>(float(o + product)));
            }
            std::vector<T> got(want.size());
            ASSERT_EQ(f(got.data(), len, o, s), StatusOk);
            ASSERT_TRUE(sameNumbers(want, got)) << o << " + n * " << s;
        });
    }
};

TEST(VectorRamp, IsALineInSinglePrecision) {
    each(ramp, tevsVectorRamp_8u, tevsVectorRamp_8s, tevsVectorRamp_16u, tevsVectorRamp_16s, tevsVectorRamp_32u, tevsVectorRamp_32s, tevsVectorRamp_32f,
         tevsVectorRamp_64f);
}

template <class T> void jaehne(Status (*f)(T*, int, T), std::type_identity_t<std::initializer_list<T>> magnitudes) {
    for (T magn : magnitudes)
        for (int len : {1, 2, 3, 5, 7, 12, 31, 70, 1003, 300007}) {
            std::vector<T> got(size_t(len), T(7));
            ASSERT_EQ(f(got.data(), len, magn), StatusOk);
            std::vector<long double> y;
            for (int n = 0; n < len; ++n) y.push_back(magn * std::sin((long double)(1.5707963267948966 / len * (double(n) * n))));
            const auto [low, high] = std::minmax_element(y.begin(), y.end());
            for (size_t n = 0; n < y.size(); ++n) {
                long double want = y[n], error = magn * 0x1p-50L;   // which decides between two integers where the sine is half-way
                if (std::is_unsigned_v<T>) want = *high > *low ? (want - *low) * (magn / (*high - *low)) : 0;
                ASSERT_TRUE(got[n] >= rounded<T>(want - error) && got[n] <= rounded<T>(want + error)) << len << " at " << n << ": " << +got[n];
            }
        }
    T x[2] = {7, 7};
    if (std::is_signed_v<T>) {
        EXPECT_EQ(f(x, 0, T(-1)), StatusBadSize);
        EXPECT_EQ(f(x, 1, T(-1)), StatusJaehneMagnitude);
        EXPECT_EQ(f(x, 2, std::numeric_limits<T>::lowest()), StatusJaehneMagnitude);
        EXPECT_EQ(x[0], 7);
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

TEST(TestVectors, SameBitsAtEveryLevelAndInBothAbis) {
    std::vector<double> v(5003);
    tevsVectorJaehne_64f(v.data(), 5003, 1.1);
    EXPECT_EQ(hashOf(v), 10685645990575303824u);
}

}   // namespace
