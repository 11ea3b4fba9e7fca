#include <climits>
#include <functional>

#include "support/elements.h"

using namespace test;

namespace {

template <class Op> struct Logic {
    Op op;
    template <class T> void operator()(Status (*f)(const T*, const T*, T*, int)) const {
        EXPECT_TRUE(agrees<T>(f, of(randomVector<T>(kMany), randomVector<T>(kMany)), [=, this](T a, T b) { return T(op(a, b)); }));
    }
    template <class T> void operator()(Status (*f)(const T*, T, T*, int)) const {
        for (const T val : {T(0), T(~T(0)), T(0x12345678), T(0x9c3e5a81)})
            EXPECT_TRUE(agrees<T>(by(f, val), of(randomVector<T>(kMany)), [=, this](T x) { return T(op(x, val)); })) << +val;
    }
};
constexpr auto negation = []<class T>(Status (*f)(const T*, T*, int)) { EXPECT_TRUE(agrees<T>(f, of(randomVector<T>(kMany)), [](T x) { return T(~x); })); };

#define EVERY(op) tevs##op##_8u, tevs##op##_16u, tevs##op##_32u

TEST(Logic, EveryTypeAndOperation) {
    each(Logic{std::bit_and()}, EVERY(And), EVERY(AndC));
    each(Logic{std::bit_or()}, EVERY(Or), EVERY(OrC));
    each(Logic{std::bit_xor()}, EVERY(Xor), EVERY(XorC));
    each(negation, EVERY(Not));
}

// The n-fold double, not saturated, and the n-fold half, rounded down.
template <class T> T leftOracle(T x, int count) {
    for (; count > 0 && x != 0; --count) x = T(uint64_t(x) * 2);
    return x;
}
template <class T> T rightOracle(T x, int count) {
    for (int n = 0; n < count && n < 40; ++n) x = T((int64_t(x) - (x < 0 && x % 2 != 0)) / 2);
    return x;
}

constexpr auto shift = [](bool left) {
    return [left]<class T>(Status (*f)(const T*, int, T*, int)) {
        constexpr int width = 8 * sizeof(T);
        for (const int count : {0, 1, 3, width - 1, width, width + 1, 200, INT_MAX}) {
            const auto want = [=](T x) { return left ? leftOracle(x, count) : rightOracle(x, count); };
            EXPECT_TRUE(agrees<T>(by(f, count), of(randomVector<T>(kMany)), want)) << count;
        }
        const T x = 5;
        T d = 77;
        for (const int val : {-1, INT_MIN}) {   // is found last
            EXPECT_EQ(f(nullptr, val, &d, 1), StatusNullPtr);
            EXPECT_EQ(f(&x, val, nullptr, 1), StatusNullPtr);
            EXPECT_EQ(f(&x, val, &d, 0), StatusBadSize);
            EXPECT_EQ(f(&x, val, &d, 1), StatusShift);
        }
        EXPECT_EQ(d, 77);
    };
};

TEST(Shift, EveryTypeAndCount) {
    each(shift(true), tevsLShiftC_8u, tevsLShiftC_16u, tevsLShiftC_16s, tevsLShiftC_32s);
    each(shift(false), tevsRShiftC_8u, tevsRShiftC_16u, tevsRShiftC_16s, tevsRShiftC_32s);
    int16_t x = 5;
    EXPECT_EQ(tevsLShiftC_16s_I(-1, &x, 1), StatusShift);
    EXPECT_EQ(x, 5);
}

}   // namespace
