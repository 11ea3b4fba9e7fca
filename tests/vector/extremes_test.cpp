#include <climits>
#include <cmath>

#include "support/elements.h"
#include "support/reduction.h"

using namespace test;

namespace {

// Values that come more than once, and for floats the ones that compare oddly.
template <class T> std::vector<T> repeated(size_t n) {
    auto& g = generator();
    const std::vector<T> few = randomVector<T>(1 + g() % 9);
    std::vector<T> v(n);
    for (T& x : v) x = few[g() % few.size()];
    if constexpr (std::is_floating_point_v<T>) {
        const T odd[] = {T(0), -T(0), T(NAN), T(INFINITY), -T(INFINITY)};
        const bool zeros = g() % 3 == 0;
        for (size_t i = 0; i < n; ++i)
            if (g() % 4 == 0)
                v[i] = odd[g() % (zeros ? 3 : 5)];
            else if (zeros)
                v[i] = T(0) * v[i];
    }
    return v;
}

// The definition, one element at a time.
template <class T> int firstBest(const std::vector<T>& v, bool max) {
    int at = 0;
    for (size_t i = 1; i < v.size(); ++i)
        if (max ? v[i] > v[size_t(at)] : v[i] < v[size_t(at)]) at = int(i);
    return at;
}

template <class T> struct ExtremesOf {
    Status (*one[2])(const T*, int, T*);           // min, max
    Status (*place[2])(const T*, int, T*, int*);   // min, max
    Status (*both)(const T*, int, T*, T*);
    Status (*places)(const T*, int, T*, int*, T*, int*);

    void check(int len) const {
        for (auto make : {randomVector<T>, repeated<T>}) {
            const std::vector<T> v = make(size_t(len));
            const int want[2] = {firstBest(v, false), firstBest(v, true)};
            T value[2];
            int at[2];
            const auto expectFound = [&](Status status, std::initializer_list<int> which, bool placed) {
                ASSERT_EQ(status, StatusOk);
                for (int max : which)
                    ASSERT_TRUE(same<T>({v[size_t(want[max])]}, {std::exchange(value[max], T(1))}) && (!placed || at[max] == want[max]))
                        << max << " of " << len;
            };
            for (int max = 0; max < 2 && one[0]; ++max) {
                expectFound(one[max](v.data(), len, &value[max]), {max}, false);
                expectFound(place[max](v.data(), len, &value[max], &at[max]), {max}, true);
                expectFound(place[max](v.data(), len, &value[max], nullptr), {max}, false);
            }
            expectFound(both(v.data(), len, &value[0], &value[1]), {0, 1}, false);
            expectFound(places(v.data(), len, &value[0], &at[0], &value[1], &at[1]), {0, 1}, true);
        }
    }
    void check() const {
        for (int round = 0; round < 5; ++round) eachLength([this](int len) { check(len); });
        for (int i = 0; i < 40; ++i) check(16384 / int(sizeof(T)) + i);   // past two blocks
    }
};

#define ONES(type) \
    {tevsMin_##type, tevsMax_##type}, { tevsMinIndx_##type, tevsMaxIndx_##type }
#define BOTH(type) tevsMinMax_##type, tevsMinMaxIndx_##type

TEST(Extremes, FirstOfTheBestAtAnyLengthAndAddress) {
    ExtremesOf<int16_t>{ONES(16s), BOTH(16s)}.check();
    ExtremesOf<int32_t>{ONES(32s), BOTH(32s)}.check();
    ExtremesOf<float>{ONES(32f), BOTH(32f)}.check();
    ExtremesOf<double>{ONES(64f), BOTH(64f)}.check();
    ExtremesOf<uint8_t>{{}, {}, BOTH(8u)}.check();
    ExtremesOf<uint16_t>{{}, {}, BOTH(16u)}.check();
    ExtremesOf<uint32_t>{{}, {}, BOTH(32u)}.check();
}

TEST(Extremes, OfEqualsInLaterBlocksTheFirstCounts) {
    std::vector<int16_t> v(20000);
    v[5000] = v[5001] = v[19999] = 7;
    v[9000] = v[4999] = -7;
    int16_t value, other;
    int at, otherAt;
    ASSERT_EQ(tevsMaxIndx_16s(v.data(), int(v.size()), &value, &at), StatusOk);
    EXPECT_EQ(at, 5000);
    ASSERT_EQ(tevsMinMaxIndx_16s(v.data(), int(v.size()), &value, &at, &other, &otherAt), StatusOk);
    EXPECT_EQ(at, 4999);
    EXPECT_EQ(otherAt, 5000);
}

constexpr auto magnitude = [](bool largest) {
    return [largest]<class T>(Status (*f)(const T*, int, T*)) {
        const auto want = [=](const std::vector<T>& v) {
            int64_t m = std::abs(int64_t{v[0]});
            for (T x : v) m = largest ? std::max(m, std::abs(int64_t{x})) : std::min(m, std::abs(int64_t{x}));
            return exactly(T(std::min<int64_t>(m, std::numeric_limits<T>::max())));
        };
        for (auto make : {randomVector<T>, lowest<T>}) reduces(f, want, {lengthsFrom(1), make});
    };
};
TEST(Extremes, MagnitudesSaturate) {
    each(magnitude(true), tevsMaxAbs_16s, tevsMaxAbs_32s);
    each(magnitude(false), tevsMinAbs_16s, tevsMinAbs_32s);
}

// An element is replaced only by a better one.
constexpr auto replacement = [](bool max) {
    return [max]<class T>(Status (*f)(const T*, T*, int)) {
        EXPECT_TRUE(agrees<T>(onto(f), of(repeated<T>(kMany), repeated<T>(kMany)), [=](T a, T b) { return (max ? a > b : a < b) ? a : b; }));
    };
};
TEST(Extremes, EveryElementIsReplacedOnlyByABetterOne) {
    each(replacement(true), tevsMaxEvery_16s_I, tevsMaxEvery_32s_I, tevsMaxEvery_32f_I);
    each(replacement(false), tevsMinEvery_16s_I, tevsMinEvery_32s_I, tevsMinEvery_32f_I);
}

template <class T> void checkOrder(Status (*order)(const T*, int, int*), const std::vector<std::pair<T, int>>& rows) {
    for (const auto& [x, want] : rows)
        for (int len : {1, 2, 7, 40, 133})
            for (size_t at = 0; at < size_t(len); ++at) {
                std::vector<T> src(size_t(len), T(0));
                src[at] = x;
                int got = 77;
                ASSERT_EQ(order(src.data(), len, &got), std::isfinite(x) ? StatusOk : WarnInfOrNaN) << x;
                ASSERT_EQ(got, want) << x << " at " << at << " of " << len;
            }
    for (int len : {0, -1, INT_MIN}) EXPECT_EQ(order(nullptr, len, nullptr), StatusBadSize);   // the length comes first
}

TEST(Extremes, MaxOrder) {
    checkOrder<int16_t>(tevsMaxOrder_16s, {{0, 0}, {1, 1}, {-1, 1}, {2, 2}, {3, 2}, {-4, 3}, {32767, 15}, {-32767, 15}, {-32768, 16}});
    checkOrder<int32_t>(tevsMaxOrder_32s, {{0, 0}, {-1, 1}, {65535, 16}, {INT_MAX, 31}, {INT_MIN, 32}});
    checkOrder<float>(tevsMaxOrder_32f, {{0, 0}, {0.25f, -1}, {-0.5f, 0}, {1, 1}, {-1.5f, 1}, {0x1p-149f, -148}, {0x1.fffffep127f, 128}});
    checkOrder<float>(tevsMaxOrder_32f, {{INFINITY, 129}, {-INFINITY, 129}, {NAN, 129}, {-NAN, 129}});
    checkOrder<double>(tevsMaxOrder_64f, {{-0.0, 0}, {0.25, -1}, {-3, 2}, {0x1p-1074, -1073}, {-0x1.fffffffffffffp1023, 1024}, {-INFINITY, 1025}, {NAN, 1025}});
}

}   // namespace
