#include <climits>

#include "support/data.h"
#include "support/guarded.h"

using namespace test;

namespace {

template <class T> using Out2 = Status (*)(const T*, const T*, T*, int);
template <class T> using In2 = Status (*)(const T*, T*, int);

template <class T, class Op> void twoSources(Out2<T> out, In2<T> in, Op op) {
    sweep<T>([=](int len, Place at) {
        const Guarded<T> a(randomVector<T>(size_t(len)), at), b(randomVector<T>(size_t(len)), {at.offset, !at.atEnd});
        Guarded<T> dst(size_t(len), at), both(b.values(), at);
        std::vector<T> want;
        for (int n = 0; n < len; ++n) want.push_back(T(op(a.data()[n], b.data()[n])));
        ASSERT_EQ(out(a.data(), b.data(), dst, len), StatusOk);
        ASSERT_EQ(in(a.data(), both, len), StatusOk);
        ASSERT_TRUE(same(want, dst.values()) && same(want, both.values())) << len;
        ASSERT_TRUE(dst.intact() && both.intact());
    });
    const T s = 0;
    Guarded<T> d(1);
    EXPECT_EQ(out(nullptr, &s, d, 0), StatusNullPtr);
    EXPECT_EQ(out(&s, nullptr, d, 0), StatusNullPtr);
    EXPECT_EQ(out(&s, &s, nullptr, 0), StatusNullPtr);
    EXPECT_EQ(out(&s, &s, d, 0), StatusBadSize);
    EXPECT_EQ(in(nullptr, d, 0), StatusNullPtr);
    EXPECT_EQ(in(&s, nullptr, 0), StatusNullPtr);
    EXPECT_EQ(in(&s, d, INT_MIN), StatusBadSize);
    EXPECT_TRUE(d.untouched());
}

// out(src, val, dst, len) and in(val, srcDst, len) for each of vals.
template <class T, class C, class Out, class In, class Op> void oneSource(Out out, In in, std::vector<C> vals, Op op) {
    sweep<T>([=](int len, Place at) {
        const Guarded<T> src(randomVector<T>(size_t(len)), at);
        for (C val : vals) {
            Guarded<T> dst(size_t(len), {at.offset, !at.atEnd}), both(src.values(), at);
            std::vector<T> want;
            for (T x : src.values()) want.push_back(T(op(x, val)));
            ASSERT_EQ(out(src.data(), val, dst.data(), len), StatusOk);
            ASSERT_EQ(in(val, both.data(), len), StatusOk);
            ASSERT_TRUE(same(want, dst.values()) && same(want, both.values())) << len << " with " << int(val);
            ASSERT_TRUE(dst.intact() && both.intact());
        }
    });
    const T s = 0;
    Guarded<T> d(1);
    for (C val : vals) {
        EXPECT_EQ(out(nullptr, val, d.data(), 0), StatusNullPtr);
        EXPECT_EQ(out(&s, val, nullptr, 0), StatusNullPtr);
        EXPECT_EQ(out(&s, val, d.data(), 0), StatusBadSize);
        EXPECT_EQ(in(val, nullptr, 0), StatusNullPtr);
        EXPECT_EQ(in(val, d.data(), -1), StatusBadSize);
    }
    EXPECT_TRUE(d.untouched());
}

constexpr auto conjunction = [](auto a, auto b) { return a & b; };
constexpr auto disjunction = [](auto a, auto b) { return a | b; };
constexpr auto difference = [](auto a, auto b) { return a ^ b; };

TEST(Logic, TwoSources) {
#define X(T, type)                                                  \
    twoSources<T>(tevsAnd_##type, tevsAnd_##type##_I, conjunction); \
    twoSources<T>(tevsOr_##type, tevsOr_##type##_I, disjunction);   \
    twoSources<T>(tevsXor_##type, tevsXor_##type##_I, difference);
    X(uint8_t, 8u) X(uint16_t, 16u) X(uint32_t, 32u)
#undef X
}

TEST(Logic, ConstantAndComplement) {
#define X(T, type)                                                                                                                                            \
    {                                                                                                                                                         \
        const std::vector<T> vals = {0, T(~T(0)), T(0x12345678), T(0x9c3e5a81)};                                                                              \
        oneSource<T>(tevsAndC_##type, tevsAndC_##type##_I, vals, conjunction);                                                                                \
        oneSource<T>(tevsOrC_##type, tevsOrC_##type##_I, vals, disjunction);                                                                                  \
        oneSource<T>(tevsXorC_##type, tevsXorC_##type##_I, vals, difference);                                                                                 \
        oneSource<T>([](const T* s, int, T* d, int len) { return tevsNot_##type(s, d, len); }, [](int, T* d, int len) { return tevsNot_##type##_I(d, len); }, \
                     std::vector<int>{0}, [](T x, int) { return ~x; });                                                                                       \
    }
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

template <class T, class Out, class In> void shifts(Out left, In leftIn, Out right, In rightIn) {
    constexpr int width = 8 * sizeof(T);
    const std::vector<int> counts = {0, 1, 3, width - 1, width, width + 1, 200, INT_MAX};
    oneSource<T>(left, leftIn, counts, leftOracle<T>);
    oneSource<T>(right, rightIn, counts, rightOracle<T>);

    // A negative count is found last, and one from the width on, where zeros enter, sees no more of the source than its address.
    const T s = 5;
    Guarded<T> d(1);
    for (auto [shift, in] : {std::pair{left, leftIn}, std::pair{right, rightIn}})
        for (int val : {-1, INT_MIN}) {
            EXPECT_EQ(shift(nullptr, val, d.data(), 0), StatusNullPtr);
            EXPECT_EQ(shift(&s, val, nullptr, 1), StatusNullPtr);
            EXPECT_EQ(shift(&s, val, d.data(), 0), StatusBadSize);
            EXPECT_EQ(shift(&s, val, d.data(), 1), StatusShift);
            EXPECT_EQ(in(val, d.data(), 0), StatusBadSize);
            EXPECT_EQ(in(val, d.data(), 1), StatusShift);
        }
    EXPECT_TRUE(d.untouched());
}

TEST(Shift, EveryTypeAndCount) {
    shifts<uint8_t>(tevsLShiftC_8u, tevsLShiftC_8u_I, tevsRShiftC_8u, tevsRShiftC_8u_I);
    shifts<uint16_t>(tevsLShiftC_16u, tevsLShiftC_16u_I, tevsRShiftC_16u, tevsRShiftC_16u_I);
    shifts<int16_t>(tevsLShiftC_16s, tevsLShiftC_16s_I, tevsRShiftC_16s, tevsRShiftC_16s_I);
    shifts<int32_t>(tevsLShiftC_32s, tevsLShiftC_32s_I, tevsRShiftC_32s, tevsRShiftC_32s_I);
}

struct Row {
    Status (*shift)(const int16_t*, int, int16_t*, int);
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
