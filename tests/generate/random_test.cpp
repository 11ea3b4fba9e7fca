#include <algorithm>
#include <climits>
#include <cmath>
#include <array>

#include "support/elements.h"
#include "support/values.h"

using namespace test;

namespace {

// ---- the generator by its recurrence --------------------------------------------------------------------------------------------------

class Generator {
public:
    explicit Generator(uint32_t seed) : x_{seed, next(seed), next(next(seed))} {}
    int32_t raw() {
        lcg_ = next(lcg_);
        const uint32_t t = x_[1] - x_[2] - carry_;
        carry_ = t >= 0x80000000u;
        x_[2] = x_[1];
        x_[1] = x_[0];
        x_[0] = t - 18 * carry_;
        return int32_t(x_[0] + lcg_);
    }
    uint32_t seed() const { return x_[0]; }
    // Both of a pair, less the deviation: u2's first.
    std::pair<double, double> normal() {
        for (;;) {
            const double u1 = raw() / 2147483648.0, u2 = raw() / 2147483648.0, s = u1 * u1 + u2 * u2;
            if (s >= 1 || s == 0) continue;
            const double f = double(std::sqrt(-2 * std::log((long double)s) / s));
            return {f * u2, f * u1};
        }
    }

private:
    static uint32_t next(uint32_t x) { return 69069 * x + 1013904243; }
    uint32_t x_[3], lcg_ = 1131199209, carry_ = 1;
};

template <class T> std::vector<T> uniformBy(Generator g, T low, T high, int len) {
    const double mean = std::is_same_v<T, float> ? double(low + high) * 0.5 : (double(low) + high) * 0.5;
    const double scale = double(std::is_same_v<T, float> ? T(high - low) : double(high) - low) / 4294967296.0;
    std::vector<T> v(size_t(len), T{});
    for (T& x : v) x = T(g.raw() * scale + mean);
    return v;
}
template <class T> T shifted(double product, double mean) {
    if constexpr (std::is_integral_v<T>)
        return nearest<T>(std::trunc(product + mean), 0);
    else
        return T(T(product) + T(mean));
}
// Results off by an error of the logarithm, and an integer that lies next to one.
template <class T> void near(const std::vector<T>& want, const std::vector<T>& got, double deviation) {
    ASSERT_EQ(want.size(), got.size());
    for (size_t i = 0; i < want.size(); ++i) {
        const double tolerance = std::is_integral_v<T> ? 0 : deviation * 10 * std::numeric_limits<T>::epsilon();
        ASSERT_NEAR(want[i], got[i], tolerance) << i;
    }
}
template <class T> std::vector<T> normalBy(Generator g, double mean, double deviation, int len) {
    std::vector<T> v;
    while (int(v.size()) < len) {
        const auto [first, second] = g.normal();
        v.push_back(shifted<T>(deviation * first, mean));
        v.push_back(shifted<T>(deviation * second, mean));
    }
    v.resize(size_t(len));
    return v;
}

// ---- records --------------------------------------------------------------------------------------------------------------------------

// One sequence, in blocks of every length.
template <class T> std::vector<T> inBlocks(auto fill) {
    std::vector<T> all;
    eachLength([&](int len) {
        all.resize(all.size() + size_t(len));
        ASSERT_EQ(fill(&all.back() + 1 - len, len), StatusOk);
    });
    return all;
}

template <class T, class Uniform, class Gauss>
void records(Status (*initUniform)(Uniform**, T, T, uint32_t), Status (*uniform)(T*, int, Uniform*), Status (*freeUniform)(Uniform*),
             Status (*initGauss)(Gauss**, T, T, uint32_t), Status (*gauss)(T*, int, Gauss*), Status (*freeGauss)(Gauss*),
             std::vector<std::array<T, 2>> bounds) {
    for (uint32_t seed : {0u, 1u, 12345u, 0x80000000u, UINT32_MAX})
        for (const auto [low, high] : bounds) {
            Uniform* u;
            ASSERT_EQ(initUniform(&u, low, high, seed), StatusOk);
            const auto all = inBlocks<T>([=](T* to, int len) { return uniform(to, len, u); });
            EXPECT_TRUE(same(uniformBy(Generator(seed), low, high, int(all.size())), all)) << seed;
            EXPECT_EQ(freeUniform(u), StatusOk);
            Gauss* g;
            const T deviation = T(high - low);
            ASSERT_EQ(initGauss(&g, low, deviation, seed), StatusOk);
            const auto normal = inBlocks<T>([=](T* to, int len) { return gauss(to, len, g); });
            near(normalBy<T>(Generator(seed), low, deviation, int(normal.size())), normal, std::fabs(double(deviation)) + std::fabs(double(low)));
            EXPECT_EQ(freeGauss(g), StatusOk);
        }
}
TEST(Record, GoesOnWithOneSequence) {
#define X(code, ...)                                                                                                                                  \
    records(tevsRandUniformInitAlloc_##code, tevsRandUniform_##code, tevsRandUniformFree_##code, tevsRandGaussInitAlloc_##code, tevsRandGauss_##code, \
            tevsRandGaussFree_##code, {__VA_ARGS__});
    X(8u, {0, 100}, {3, 100}, {100, 7}, {0, 255}, {5, 5})
    X(16s, {0, 100}, {-100, 100}, {100, 7}, {INT16_MIN, INT16_MAX}, {5, 5})
    X(32f, {0, 100}, {-100, 100}, {100, 7}, {-1e6f, 1e6f}, {5, 5})
#undef X
}

// Any address will do for a record, which keeps to the size reported and goes on after the caller moves it.
TEST(Record, InTheCallersMemory) {
    EXPECT_EQ(reported(tevsRandUniformGetSize_16s), 48u);
    EXPECT_EQ(reported(tevsRandGaussGetSize_16s), 60u);
    for (int offset : {0, 1, 2, 7}) {
        Guarded<uint8_t> a(48, Place{offset, true}), b(60, Place{offset, false});
        const auto uniform = reinterpret_cast<RandUniState_16s*>(a.data());
        const auto gauss = reinterpret_cast<RandGaussState_16s*>(b.data());
        int16_t x[12], y[8];
        for (int again = 0; again < 2; ++again) {
            EXPECT_EQ(tevsRandUniformInit_16s(uniform, -100, 100, 0), StatusOk);
            EXPECT_EQ(tevsRandGaussInit_16s(gauss, 0, 1000, 0), StatusOk);
            EXPECT_EQ(tevsRandUniform_16s(x, 12, uniform), StatusOk);
            EXPECT_EQ(tevsRandGauss_16s(y, 3, gauss), StatusOk);
            Guarded<uint8_t> moved(b.values());
            EXPECT_EQ(tevsRandGauss_16s(y + 3, 5, reinterpret_cast<RandGaussState_16s*>(moved.data())), StatusOk);
            const int16_t wantX[] = {-99, -73, -57, -19, -29, 48, 64, -52, 53, 7, 94, 8}, wantY[] = {-448, -1336, 1290, -788, -533, 657, 223, 1563};
            EXPECT_TRUE(std::memcmp(x, wantX, sizeof x) == 0 && std::memcmp(y, wantY, sizeof y) == 0);
        }
        EXPECT_TRUE(a.intact() && b.intact());
        EXPECT_EQ(tevsRandUniformFree_16s(uniform), StatusOk);
        EXPECT_EQ(tevsRandGaussFree_16s(gauss), StatusOk);
    }
}

// ---- without a record -----------------------------------------------------------------------------------------------------------------

template <class T> void direct(Status (*uniform)(T*, int, T, T, uint32_t*), Status (*gauss)(T*, int, T, T, uint32_t*), T low, T high) {
    uint32_t seed = 9;
    eachLength([&](int len) {
        Generator g(seed);
        std::vector<T> want(size_t(len), T(0)), got(want);
        for (T& x : want) {
            const double v = g.raw() * ((high - low) / 4294967296.0) + (low + high) * 0.5;
            x = T(std::is_integral_v<T> ? std::nearbyint(v) : v);
        }
        ASSERT_EQ(uniform(got.data(), len, low, high, &seed), StatusOk);
        ASSERT_TRUE(same(want, got));
        ASSERT_EQ(seed, g.seed());
        Generator h(seed);
        ASSERT_EQ(gauss(got.data(), len, low, high, &seed), StatusOk);
        near(normalBy<T>(h, low, high, len), got, std::fabs(double(high)) + std::fabs(double(low)));
        for (int i = 0; i < len; i += 2) h.normal();
        ASSERT_EQ(seed, h.seed());
    });
}

TEST(Direct, StartsFromTheSeed) {
    direct<int16_t>(tevsRandUniform_Direct_16s, tevsRandGauss_Direct_16s, -100, 100);
    direct<int16_t>(tevsRandUniform_Direct_16s, tevsRandGauss_Direct_16s, -32768, 32767);
    direct<float>(tevsRandUniform_Direct_32f, tevsRandGauss_Direct_32f, -0.1f, 1.7f);
    direct<double>(tevsRandUniform_Direct_64f, tevsRandGauss_Direct_64f, -0.1, -1e6);
}

TEST(Random, SameBitsAtEveryLevelAndInBothAbis) {
    std::vector<double> v(5000);
    std::vector<float> f(5001);
    uint32_t seed = 5;
    tevsRandGauss_Direct_64f(v.data(), 5000, 0.1, 1.1, &seed);
    tevsRandGauss_Direct_32f(f.data(), 5001, 0.1f, 1.1f, &seed);
    EXPECT_EQ(hashOf(f.data(), f.size() * 4, hashOf(v.data(), v.size() * 8)), 0xb6e077524262d60au);
}

TEST(Random, TakesNoOtherRecord) {
    alignas(8) uint8_t memory[60];
    const Ptr other = memory;
    int16_t x = 7;
    float y = 7;
    ASSERT_EQ(tevsRandGaussInit_16s(other, 0, 1, 0), StatusOk);
    expectEach(StatusContextMismatch, {tevsRandUniform_16s(&x, 1, other), tevsRandGauss_8u(memory, 1, other), tevsRandGauss_32f(&y, 1, other),
                                       tevsRandUniformFree_16s(other), tevsRandGaussFree_32f(other)});
    EXPECT_TRUE(x == 7 && y == 7);
}

}   // namespace
