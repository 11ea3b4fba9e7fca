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

template <class T> struct Found {
    T value;
    int at;
};
template <class T> void expectFound(const std::vector<T>& v, int at, Found<T> got, bool placed) {
    ASSERT_EQ(std::memcmp(&v[size_t(at)], &got.value, sizeof(T)), 0) << "want " << +v[size_t(at)] << ", got " << +got.value << ", length " << v.size();
    if (placed) {
        ASSERT_EQ(got.at, at) << "length " << v.size();
    }
}

template <class T> struct ExtremesOf {
    Status (*one[2])(const T*, int, T*);           // min, max
    Status (*place[2])(const T*, int, T*, int*);   // min, max
    Status (*both)(const T*, int, T*, T*);
    Status (*places)(const T*, int, T*, int*, T*, int*);

    void check() const {
        const auto every = [this](int len, Place at) {
            for (auto make : {randomVector<T>, repeated<T>}) {
                const std::vector<T> v = make(size_t(len));
                const Guarded<T> src(v, at);
                const int want[2] = {firstBest(v, false), firstBest(v, true)};
                Found<T> got[2];
                if (one[0])
                    for (int max : {0, 1}) {
                        ASSERT_EQ(one[max](src.data(), len, &got[max].value), StatusOk);
                        expectFound(v, want[max], got[max], false);
                        ASSERT_EQ(place[max](src.data(), len, &got[max].value, &got[max].at), StatusOk);
                        expectFound(v, want[max], got[max], true);
                        got[max].value = 0;
                        ASSERT_EQ(place[max](src.data(), len, &got[max].value, nullptr), StatusOk);
                        expectFound(v, want[max], got[max], false);
                    }
                ASSERT_EQ(both(src.data(), len, &got[0].value, &got[1].value), StatusOk);
                for (int max : {0, 1}) expectFound(v, want[max], got[max], false);
                ASSERT_EQ(places(src.data(), len, &got[0].value, &got[0].at, &got[1].value, &got[1].at), StatusOk);
                for (int max : {0, 1}) expectFound(v, want[max], got[max], true);
            }
        };
        sweep<T>(every);
        for (int i = 0; i < 40; ++i) every(16384 / int(sizeof(T)) + i, Place{i % 4, true});   // past two blocks
    }
};

TEST(Extremes, FirstOfTheBestAtAnyLengthAndAddress) {
    ExtremesOf<int16_t>{{tevsMin_16s, tevsMax_16s}, {tevsMinIndx_16s, tevsMaxIndx_16s}, tevsMinMax_16s, tevsMinMaxIndx_16s}.check();
    ExtremesOf<int32_t>{{tevsMin_32s, tevsMax_32s}, {tevsMinIndx_32s, tevsMaxIndx_32s}, tevsMinMax_32s, tevsMinMaxIndx_32s}.check();
    ExtremesOf<float>{{tevsMin_32f, tevsMax_32f}, {tevsMinIndx_32f, tevsMaxIndx_32f}, tevsMinMax_32f, tevsMinMaxIndx_32f}.check();
    ExtremesOf<double>{{tevsMin_64f, tevsMax_64f}, {tevsMinIndx_64f, tevsMaxIndx_64f}, tevsMinMax_64f, tevsMinMaxIndx_64f}.check();
    ExtremesOf<uint8_t>{{}, {}, tevsMinMax_8u, tevsMinMaxIndx_8u}.check();
    ExtremesOf<uint16_t>{{}, {}, tevsMinMax_16u, tevsMinMaxIndx_16u}.check();
    ExtremesOf<uint32_t>{{}, {}, tevsMinMax_32u, tevsMinMaxIndx_32u}.check();
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

template <class T> void checkMagnitudes(Status (*max)(const T*, int, T*), Status (*min)(const T*, int, T*)) {
    const auto saturated = [](int64_t m) { return T(std::min<int64_t>(m, std::numeric_limits<T>::max())); };
    for (bool largest : {true, false})
        for (auto make : {randomVector<T>, +[](size_t n) { return std::vector<T>(n, std::numeric_limits<T>::min()); }})
            reduces(
                largest ? max : min,
                [=](const std::vector<T>& v) {
                    int64_t m = std::abs(int64_t{v[0]});
                    for (T x : v) m = largest ? std::max(m, std::abs(int64_t{x})) : std::min(m, std::abs(int64_t{x}));
                    return exactly(saturated(m));
                },
                {lengthsFrom(1), make});
}

TEST(Extremes, MagnitudesSaturate) {
    checkMagnitudes<int16_t>(tevsMaxAbs_16s, tevsMinAbs_16s);
    checkMagnitudes<int32_t>(tevsMaxAbs_32s, tevsMinAbs_32s);
}

// f with its source and its destination as sources of another destination; an element is replaced only by a better one.
template <class T> void replaces(Status (*f)(const T*, T*, int), bool max) {
    EXPECT_TRUE(agrees<T>(
        [=](const T* a, const T* b, T* d, int len) {
            std::copy_n(b, len, d);
            return f(a, d, len);
        },
        [=](T a, T b) { return (max ? a > b : a < b) ? a : b; }, repeated<T>(kMany), repeated<T>(kMany)));
}

TEST(Extremes, EveryElementIsReplacedOnlyByABetterOne) {
    replaces(tevsMaxEvery_16s_I, true);
    replaces(tevsMaxEvery_32s_I, true);
    replaces(tevsMaxEvery_32f_I, true);
    replaces(tevsMinEvery_16s_I, false);
    replaces(tevsMinEvery_32s_I, false);
    replaces(tevsMinEvery_32f_I, false);
}

template <class T> struct OrderRow {
    T x;
    int want;
    Status status = StatusOk;
};
template <class T> void checkOrder(Status (*order)(const T*, int, int*), const std::vector<OrderRow<T>>& rows) {
    for (const OrderRow<T>& r : rows)
        for (int len : {1, 2, 7, 40, 133})
            for (int at = 0; at < len; ++at) {
                Guarded<T> src(std::vector<T>(size_t(len)), Place{at % 4 * int(sizeof(T)), true});
                src.data()[at] = r.x;
                int got = 77;
                ASSERT_EQ(order(src.data(), len, &got), r.status) << r.x;
                ASSERT_EQ(got, r.want) << r.x << " at " << at << " of " << len;
            }
    int got = 77;
    for (int len : {0, -1, INT_MIN}) EXPECT_EQ(order(nullptr, len, nullptr), StatusBadSize);
    EXPECT_EQ(order(nullptr, 1, &got), StatusNullPtr);
    EXPECT_EQ(order(&rows[0].x, 1, nullptr), StatusNullPtr);
    EXPECT_EQ(got, 77);
}

TEST(Extremes, MaxOrder) {
    checkOrder<int16_t>(tevsMaxOrder_16s, {{0, 0}, {1, 1}, {-1, 1}, {2, 2}, {3, 2}, {-4, 3}, {32767, 15}, {-32767, 15}, {-32768, 16}});
    checkOrder<int32_t>(tevsMaxOrder_32s, {{0, 0}, {-1, 1}, {65535, 16}, {INT_MAX, 31}, {INT_MIN, 32}});
    checkOrder<float>(tevsMaxOrder_32f, {{0, 0},
                                         {0.25f, -1},
                                         {-0.5f, 0},
                                         {1, 1},
                                         {-1.5f, 1},
                                         {0x1p-149f, -148},
                                         {0x1.fffffep127f, 128},
                                         {INFINITY, 129, WarnInfOrNaN},
                                         {-INFINITY, 129, WarnInfOrNaN},
                                         {NAN, 129, WarnInfOrNaN},
                                         {-NAN, 129, WarnInfOrNaN}});
    checkOrder<double>(
        tevsMaxOrder_64f,
        {{-0.0, 0}, {0.25, -1}, {-3, 2}, {0x1p-1074, -1073}, {-0x1.fffffffffffffp1023, 1024}, {-INFINITY, 1025, WarnInfOrNaN}, {NAN, 1025, WarnInfOrNaN}});
}

}   // namespace
