#include <climits>
#include <cmath>

#include "support/data.h"
#include "support/guarded.h"
#include "tevcore.h"

using namespace test;

namespace {

// x * 2^-scale in extended precision, rounded and saturated: exact, since a double-extended exponent holds every product.
int16_t oracle16s(float x, int mode, int scale) {
    if (std::isnan(x)) return -32768;
    const long double v = std::ldexp((long double)x, -std::clamp(scale, -1000, 1000));
    const long double r = mode == RoundTowardZero ? std::trunc(v) : std::nearbyint(v);
    return int16_t(std::clamp<long double>(r, -32768, 32767));
}

struct Row {
    float x;
    int mode, scale;
    int16_t want;
};
constexpr Row kTo16s[] = {
    {2.5f, RoundNearest, 0, 2},
    {3.5f, RoundNearest, 0, 4},
    {-2.7f, RoundTowardZero, 0, -2},
    {2.7f, 2, 0, 3},   // any other mode is to nearest
    {40000.0f, RoundNearest, 0, 32767},
    {-40000.0f, RoundNearest, 0, -32768},
    {5.0f, RoundNearest, 1, 2},
    {1e10f, RoundNearest, 0, 32767},
    {-1e10f, RoundNearest, 0, -32768},
    {INFINITY, RoundTowardZero, 0, 32767},
    {NAN, RoundNearest, 3, -32768},
    {3.4e38f, RoundNearest, 127, 2},
    {3.4e38f, RoundNearest, 128, 1},
    {3.4e38f, RoundNearest, 129, 0},
    {0.0f, RoundNearest, INT_MIN, 0},
    {0x1p-149f, RoundNearest, -163, 16384},
    {-1.0f, RoundNearest, INT_MIN, -32768},
    {3e38f, RoundNearest, INT_MAX, 0},
};

TEST(Convert_32f16s_Sfs, TellingCases) {
    for (const Row& r : kTo16s) {
        int16_t got = 77;
        ASSERT_EQ(tevsConvert_32f16s_Sfs(&r.x, &got, 1, r.mode, r.scale), StatusOk);
        EXPECT_EQ(got, r.want) << r.x << " mode " << r.mode << " scale " << r.scale;
    }
}

TEST(Convert_32f16s_Sfs, EqualsOracle) {
    sweep<float>([](int len, Place at) {
        const Guarded<float> src(wildFloats<float>(size_t(len)), at);
        for (int mode : {RoundTowardZero, RoundNearest})
            for (int scale : {0, 1, 7, -5, -140, 120, 128}) {
                Guarded<int16_t> dst(size_t(len), at);
                ASSERT_EQ(tevsConvert_32f16s_Sfs(src.data(), dst, len, mode, scale), StatusOk);
                std::vector<int16_t> want;
                for (float x : src.values()) want.push_back(oracle16s(x, mode, scale));
                ASSERT_TRUE(same(want, dst.values())) << len << " mode " << mode << " scale " << scale;
                ASSERT_TRUE(dst.intact());
            }
    });
}

template <class S, class D> void equalsCast(Status (*convert)(const S*, D*, int), std::vector<S> (*data)(size_t)) {
    sweep<S>([=](int len, Place at) {
        const Guarded<S> src(data(size_t(len)), at);
        Guarded<D> dst(size_t(len), at);
        ASSERT_EQ(convert(src.data(), dst, len), StatusOk);
        std::vector<D> want;
        for (S x : src.values()) want.push_back(D(x));
        ASSERT_TRUE(same(want, dst.values())) << len;
        ASSERT_TRUE(dst.intact());
    });
}

TEST(Convert, WidensAndNarrowsAsTheLanguageDoes) {
    equalsCast<int16_t, float>(tevsConvert_16s32f, randomVector<int16_t>);
    equalsCast<float, double>(tevsConvert_32f64f, wildFloats<float>);
    equalsCast<double, float>(tevsConvert_64f32f, wildFloats<double>);
}

TEST(Convert, IgnoresAndKeepsTheCallersRounding) {
    for (uint32_t rc : {1u, 2u, 3u}) {
        const float half = 3.5f;
        const double third = 1.0 / 3.0;
        int16_t s = 0;
        float f = 0;
        const uint32_t before = tev_set_rc_ssx(rc);
        tevsConvert_32f16s_Sfs(&half, &s, 1, RoundNearest, 0);
        tevsConvert_64f32f(&third, &f, 1);
        const uint32_t after = tev_set_cw_ssx(before);
        EXPECT_EQ(s, 4);
        EXPECT_EQ(f, 0x1.555556p-2f);
        EXPECT_EQ((after >> 13) & 3, rc);
    }
}

TEST(Convert, RejectsBadArguments) {
    const std::vector<float> src(4);
    Guarded<int16_t> dst(4);
    EXPECT_EQ(tevsConvert_32f16s_Sfs(nullptr, dst, 0, RoundNearest, 0), StatusNullPtr);
    EXPECT_EQ(tevsConvert_32f16s_Sfs(src.data(), nullptr, 0, RoundNearest, 0), StatusNullPtr);
    for (int len : {0, -1, INT_MIN}) EXPECT_EQ(tevsConvert_32f16s_Sfs(src.data(), dst, len, RoundNearest, 0), StatusBadSize);
    EXPECT_TRUE(dst.untouched());
    float f;
    double d;
    int16_t s = 0;
    EXPECT_EQ(tevsConvert_16s32f(nullptr, &f, 1), StatusNullPtr);
    EXPECT_EQ(tevsConvert_16s32f(&s, &f, 0), StatusBadSize);
    EXPECT_EQ(tevsConvert_32f64f(&f, nullptr, 0), StatusNullPtr);
    EXPECT_EQ(tevsConvert_64f32f(&d, &f, -1), StatusBadSize);
}

}   // namespace
