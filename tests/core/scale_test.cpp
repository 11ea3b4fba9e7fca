// The scalar form of the scaling rule against extended precision. The vector forms meet the same oracle in the families that use them.
#include "core/scale.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>

using namespace tevs;

namespace {

template <class D> D oracle(long double exact, int scale) {
    const long double v = std::nearbyint(std::ldexp(exact, -std::clamp(scale, -16000, 16000)));
    return D(std::clamp<long double>(v, std::numeric_limits<D>::min(), std::numeric_limits<D>::max()));
}

constexpr int kScales[] = {INT_MIN, INT_MIN + 1, -1000, -33, -32, -31, 31, 32, 33, 64, 1000, INT_MAX};

// All sums of two 16-bit values, that is 17 bits, hold all of 16-bit input space.
TEST(Scale, ScalarEqualsOracle) {
    const auto check = [](int scale) {
        for (int r = -65536; r <= 65534; ++r) {
            ASSERT_EQ((scaled<int16_t, 17>(r, scale)), oracle<int16_t>(r, scale)) << r << " scale " << scale;
            ASSERT_EQ((scaled<uint8_t, 17>(r, scale)), oracle<uint8_t>(r, scale)) << r << " scale " << scale;
        }
    };
    for (int scale = -20; scale <= 20; ++scale) check(scale);
    for (int scale : kScales) check(scale);
}

TEST(Scale, WideProductsEqualOracle) {
    const int64_t edges[] = {0, 1, 2, 3, INT32_MAX, INT32_MIN, int64_t{INT32_MIN} * INT32_MIN, int64_t{INT32_MIN} * INT32_MAX, 0x155555555, -0x2aaaaaaab};
    for (int64_t e : edges)
        for (int64_t r : {e - 1, e, std::min(e + 1, int64_t{1} << 62)})   // |r| <= 2^62, the product of two 32-bit values
            for (int scale = -40; scale <= 70; ++scale) ASSERT_EQ((scaled<int32_t, 62>(r, scale)), oracle<int32_t>(r, scale)) << r << " scale " << scale;
}

TEST(Scale, FullWidthEqualsOracle) {
    const int64_t edges[] = {
        0, 1, 3, -1, -3, INT64_MAX, INT64_MIN, INT64_MAX - 1, INT64_MIN + 1, INT64_MAX / 2, INT64_MIN / 2 - 1, 0x5555555555555555, -0x2aaaaaaaaaaaaaab};
    const auto check = [&](int scale) {
        for (int64_t r : edges) ASSERT_EQ((scaled<int64_t, 63>(r, scale)), oracle<int64_t>(r, scale)) << r << " scale " << scale;
    };
    for (int scale = -70; scale <= 70; ++scale) check(scale);
    for (int scale : kScales) check(scale);
}

}   // namespace
