#include <climits>

#include "support/elements.h"

using namespace test;

namespace {

constexpr auto conjunction = [](auto a, auto b) { return a & b; };
constexpr auto disjunction = [](auto a, auto b) { return a | b; };
constexpr auto difference = [](auto a, auto b) { return a ^ b; };

template <class T, class F, class C, class Op> void logic(F two, C constant, Op op) {
    const auto want = [op](T a, T b) { return T(op(a, b)); };
    const auto a = randomVector<T>(kMany);
    EXPECT_TRUE(agrees<T>(two, want, a, randomVector<T>(kMany)));
    for (const T val : {T(0), T(~T(0)), T(0x12345678), T(0x9c3e5a81)})
        EXPECT_TRUE(agrees<T>([=](const T* s, T* d, int len) { return constant(s, val, d, len); }, [=](T x) { return want(x, val); }, a)) << +val;
}

TEST(Logic, EveryTypeAndOperation) {
#define X(T, type)                                          \
    logic<T>(tevsAnd_##type, tevsAndC_##type, conjunction); \
    logic<T>(tevsOr_##type, tevsOrC_##type, disjunction);   \
    logic<T>(tevsXor_##type, tevsXorC_##type, difference);  \
    EXPECT_TRUE(agrees<T>(                                  \
        tevsNot_##type, [](T x) { return T(~x); }, randomVector<T>(kMany)));
    X(uint8_t, 8u) X(uint16_t, 16u) X(uint32_t, 32u)
#undef X
}

// The n-fold double and the n-fold half, rounded down.
template <class T> T leftOracle(T x, int count) {
    for (; count > 0 && x != 0; --count) x = T(uint64_t(x) * 2);
    return x;
}
template <class T> T rightOracle(T x, int count) {
    for (int n = 0; n < count && n < 40; ++n) x = T((int64_t(x) - (x < 0 && x % 2 != 0)) / 2);
    return x;
}

template <class T> using Shift = Status (*)(const T*, int, T*, int);

template <class T> void shifts(Shift<T> left, Shift<T> right) {
    constexpr int width = 8 * sizeof(T);
    for (const auto& [f, oracle] : {std::pair{left, &leftOracle<T>}, std::pair{right, &rightOracle<T>}})
        for (const int count : {0, 1, 3, width - 1, width, width + 1, 200, INT_MAX})
            for (const size_t n : {kMany, size_t{5}})
                EXPECT_TRUE(agrees<T>([f = f, count](const T* s, T* d, int len) { return f(s, count, d, len); },
                                      [oracle = oracle, count](T x) { return oracle(x, count); }, randomVector<T>(n)))
                    << count;
    const T x = 5;
    T d = 77;
    for (const auto f : {left, right})
        for (const int val : {-1, INT_MIN, 0, 1, width}) {   // a negative count is found last
            EXPECT_EQ(f(nullptr, val, &d, 0), StatusNullPtr);
            EXPECT_EQ(f(&x, val, nullptr, 0), StatusNullPtr);
            EXPECT_EQ(f(&x, val, &d, 0), StatusBadSize);
            if (val < 0) {
                EXPECT_EQ(f(&x, val, &d, 1), StatusShift);
            }
        }
    EXPECT_EQ(d, 77);
}

TEST(Shift, EveryTypeAndCount) {
    shifts(tevsLShiftC_8u, tevsRShiftC_8u);
    shifts(tevsLShiftC_16u, tevsRShiftC_16u);
    shifts(tevsLShiftC_16s, tevsRShiftC_16s);
    shifts(tevsLShiftC_32s, tevsRShiftC_32s);
    int16_t x = 5;
    EXPECT_EQ(tevsLShiftC_16s_I(-1, &x, 1), StatusShift);
    EXPECT_EQ(tevsRShiftC_16s_I(-1, &x, 0), StatusBadSize);
    EXPECT_EQ(tevsLShiftC_16s_I(16, &x, 0), StatusBadSize);
    EXPECT_EQ(x, 5);
}

struct Row {
    Shift<int16_t> shift;
    int val;
    int16_t x, want;
};
constexpr Row kShift16s[] = {
    {tevsLShiftC_16s, 1, 0x4000, -32768},   // no saturation
    {tevsRShiftC_16s, 1, -5, -3},           // toward minus infinity
    {tevsRShiftC_16s, 20, 5, 0},          {tevsRShiftC_16s, 20, -5, -1}, {tevsRShiftC_16s, 16, -32768, -1}, {tevsLShiftC_16s, 15, 3, -32768},
};
TEST(Shift, TellingCases) {
    for (const Row& r : kShift16s) {
        int16_t got = 77;
        ASSERT_EQ(r.shift(&r.x, r.val, &got, 1), StatusOk);
        EXPECT_EQ(got, r.want) << r.x << " by " << r.val;
    }
}

}   // namespace
