#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <numbers>

#include "support/reduction.h"
#include "support/values.h"

using namespace test;

namespace {

using Exact = long double;
constexpr Exact kPi = std::numbers::pi_v<Exact>;

// The wave step by step, folded at its peaks: the direction is all that it knows of its phase.
std::vector<Exact> stepped(int len, Exact magn, Exact rFreq, Exact asym, Exact phase) {
    const Exact g = std::max(kPi + asym, Exact(0)), h = kPi - asym, travel = 4 * kPi * magn * rFreq, down = -travel / g, up = travel / h;
    bool falling = phase < g;
    Exact x = falling ? magn * (1 - 2 * phase / g) : magn * (2 * (phase - g) / h - 1);
    std::vector<Exact> v;
    for (int n = 0; n < len; ++n) {
        v.push_back(x);
        x += falling ? down : up;
        if (!falling && x > magn) {
            const Exact folded = magn - h / g * (x - magn);
            falling = g > 0 && folded >= -magn;
            x = falling ? folded : x - 4 * kPi * magn / h;
        } else if (falling && x < -magn) {
            const Exact folded = -magn - g / h * (x + magn);
            falling = folded > magn;
            x = falling ? x + 4 * kPi * magn / g : folded;
        }
    }
    return v;
}

template <class T> using Direct = Status (*)(T*, int, float, float, float, float*);

struct Row {
    float magn, rFreq, asym, phase;
};
constexpr Row kRows[] = {{1, 0.25f, 0, 0},          {1, 0, 0.5f, 4},         {3, 0.01f, 0, 1},       {0.5f, 0.1f, 1.5f, 6.2f}, {1000, 0.37f, -2, 3},
                         {30000, 0.499f, -3.1f, 0}, {7, 0.45f, 3.05f, 2.5f}, {40000, 0.003f, -1, 5}, {1, 1e-9f, 0.1f, 3.24f}};

template <class T> T stored(Exact v) { return T(std::is_integral_v<T> ? nearest<int16_t>(v, 0) : v); }
template <class T> double slackOf(const Row& r) {
    return std::is_integral_v<T> ? 1 : r.magn * (1e-12 / (double(kPi) - std::fabs(r.asym)) + std::numeric_limits<T>::epsilon());
}
// Slopes make more of a rounding of the phase the steeper they are. An imaginary part is the wave three quarters of a turn further on.
constexpr auto follows = []<class Z>(Direct<Z> f) {
    using T = Part<Z>;
    for (const Row& r : kRows)
        eachLength([&](int len) {
            std::vector<Z> got(size_t(len), Z{});
            float phase = r.phase;
            ASSERT_EQ(f(got.data(), len, r.magn, r.rFreq, r.asym, &phase), StatusOk);
            for (size_t part = 0; part < kParts<Z>; ++part) {
                const auto want = stepped(len, r.magn, r.rFreq, r.asym, std::fmod(r.phase + 1.5L * kPi * Exact(part), 2 * kPi));
                int off = 0;
                for (size_t n = 0; n < got.size(); ++n) {
                    const T y = reinterpret_cast<const T*>(&got[n])[part];
                    ASSERT_NEAR(stored<T>(want[n]), y, slackOf<T>(r)) << r.magn << " " << r.rFreq << " " << r.asym << " " << r.phase << " at " << n;
                    off += stored<T>(want[n]) != y;
                }
                ASSERT_TRUE(std::is_floating_point_v<T> || off <= len / 500);   // at ties
            }
            const Exact turns = (Exact(r.rFreq) * len + r.phase / (2 * kPi)), after = 2 * kPi * (turns - std::floor(turns));
            ASSERT_LE(std::fabs(std::remainder(phase - after, 2 * kPi)), 1e-6L);
            ASSERT_TRUE(phase >= 0 && phase < 2 * kPi);
        });
};
TEST(Triangle, FollowsTheWave) {
    each(follows, tevsTriangle_Direct_32f, tevsTriangle_Direct_64f, tevsTriangle_Direct_16s, tevsTriangle_Direct_32fc, tevsTriangle_Direct_64fc,
         tevsTriangle_Direct_16sc);
}

TEST(Triangle, TellingCases) {
    float x[5], phase = 0;
    // No falling slope: up from -magn, and down at once.
    EXPECT_EQ(tevsTriangle_Direct_32f(x, 5, 2, 0.25f, -float(kPi), &phase), StatusOk);
    EXPECT_TRUE(x[0] == -2 && x[1] == -1 && x[2] == 0 && x[3] == 1 && x[4] == -2);
    // From the last float below a full turn past it, and to where single precision rounds up to one.
    for (float rFreq : {6e-8f, 4.3e-8f}) {
        EXPECT_EQ(tevsTriangle_Direct_32f(x, 1, 1, rFreq, 0, &(phase = 6.283185f)), StatusOk);
        EXPECT_TRUE(phase >= 0 && phase < 2 * kPi);
    }
    // Between -magn and magn also where roundings add up.
    std::vector<double> v(100000);
    tevsTriangle_Direct_64f(v.data(), 100000, 0.1f, 0.00171f, 2.9f, &(phase = 0.3f));
    for (double y : v) ASSERT_LE(std::fabs(y), 0.1f);
}

// A record's wave is the same to the bit however it is cut, for as long as one likes; and it is the wave of the same parameters in single precision.
TEST(TriangleQ15, BlocksFollowEachOtherToTheBit) {
    for (auto [rFreqQ15, asymQ15, phaseQ15] : {std::array{400, 0, 0}, {1, -102943, 205887}, {16383, 60000, 100000}, {0, 1, 77777}}) {
        const auto parameters = [&](auto f, auto p) { return f(p, 30000, int16_t(rFreqQ15), asymQ15, phaseQ15); };
        Guarded<uint8_t> memory(reported(tevsTriangleGetStateSizeQ15_16s), Place{1, true});
        const auto state = reinterpret_cast<TriangleState_16s*>(memory.data());
        TriangleState_16s* other;
        ASSERT_EQ(parameters(tevsTriangleInitQ15_16s, state), StatusOk);
        ASSERT_EQ(parameters(tevsTriangleInitAllocQ15_16s, &other), StatusOk);
        std::vector<int16_t> whole(40000), single(40000), direct(40000);
        ASSERT_EQ(tevsTriangleQ15_16s(whole.data(), 40000, other), StatusOk);
        std::vector<int16_t> cut(40000);
        for (int at = 0, n = 1; at < 40000; at += n, n = std::min(3 * n % 997 + 1, 40000 - at))
            ASSERT_EQ(tevsTriangleQ15_16s(&cut[size_t(at)], n, state), StatusOk);
        EXPECT_TRUE(same(whole, cut) && memory.intact());
        float phase = float(phaseQ15) / 32768;
        int back = phaseQ15;
        ASSERT_EQ(tevsTriangle_Direct_16s(single.data(), 40000, 30000, float(rFreqQ15) / 32768, float(asymQ15) / 32768, &phase), StatusOk);
        ASSERT_EQ(tevsTriangleQ15_Direct_16s(direct.data(), 40000, 30000, int16_t(rFreqQ15), asymQ15, &back), StatusOk);
        EXPECT_TRUE(same(whole, direct));
        EXPECT_NEAR(back, phase * 32768, 2);
        for (size_t i = 0; i < 40000; ++i) ASSERT_NEAR(single[i], whole[i], std::abs(asymQ15) > 100000 ? 200 : 1) << i;
        EXPECT_EQ(tevsTriangleFree(state), StatusOk);
        EXPECT_EQ(tevsTriangleFree(other), StatusOk);
    }
}

TEST(Triangle, BadArguments) {
    const float nan = NAN, pi = float(kPi);
    float x = 5;
    const auto status = [&](float* dst, int len, float magn, float rFreq, float asym, float phase, bool null = false) {
        float p = phase;
        const Status s = tevsTriangle_Direct_32f(dst, len, magn, rFreq, asym, null ? nullptr : &p);
        EXPECT_TRUE(s == StatusOk || std::memcmp(&p, &phase, sizeof p) == 0);
        return s;
    };
    EXPECT_EQ(status(nullptr, 0, 0, 1, 4, 7, true), StatusNullPtr);
    for (float magn : {0.0f, -1.0f, nan}) EXPECT_EQ(status(nullptr, 0, magn, 1, 4, 7), StatusTriangleMagnitude);
    for (float rFreq : {0.5f, -0.1f, nan}) EXPECT_EQ(status(nullptr, 0, 1, rFreq, 4, 7), StatusTriangleFreq);
    for (float asym : {pi, -3.1415930f, 4.0f, nan}) EXPECT_EQ(status(nullptr, 0, 1, 0, asym, 7), StatusTriangleAsym);
    for (float phase : {2 * pi, -1e-9f, 7.0f, nan}) EXPECT_EQ(status(nullptr, 0, 1, 0, 0, phase), StatusTrianglePhase);
    EXPECT_EQ(status(nullptr, 0, 1, 0, -pi, 0), StatusNullPtr);
    EXPECT_EQ(status(&x, 0, 1, 0, 0, 6.2831850f), StatusBadSize);
    EXPECT_EQ(status(&x, INT_MIN, 1, 0, 0, 0), StatusBadSize);
    EXPECT_EQ(x, 5);

    alignas(8) uint8_t memory[64] = {};
    const auto state = reinterpret_cast<TriangleState_16s*>(memory);
    TriangleState_16s* made = state;
    int16_t y = 5;
    int phase = 205888;
    EXPECT_EQ(tevsTriangleInitQ15_16s(state, 0, -1, INT_MIN, -1), StatusTriangleMagnitude);
    EXPECT_EQ(tevsTriangleInitQ15_16s(state, 1, 16384, INT_MIN, -1), StatusTriangleFreq);
    EXPECT_EQ(tevsTriangleInitAllocQ15_16s(&made, 1, 16383, 102944, -1), StatusTriangleAsym);
    EXPECT_EQ(tevsTriangleInitAllocQ15_16s(&made, 1, 16383, -102944, -1), StatusTriangleAsym);
    EXPECT_EQ(tevsTriangleInitAllocQ15_16s(&made, 1, 16383, -102943, INT_MAX), StatusTrianglePhase);
    EXPECT_EQ(tevsTriangleQ15_Direct_16s(nullptr, 0, 1, 0, 0, &phase), StatusTrianglePhase);
    EXPECT_EQ(tevsTriangleQ15_Direct_16s(nullptr, 0, 1, 0, 0, &(phase = 205887)), StatusNullPtr);
    EXPECT_EQ(tevsTriangleQ15_Direct_16s(&y, 0, 1, 0, 0, &phase), StatusBadSize);
    EXPECT_TRUE(y == 5 && phase == 205887 && made == state);
}

}   // namespace
