#include <climits>

#include "support/elements.h"
#include "support/erased.h"
#include "tevs.h"

using namespace test;

namespace {

template <class T> struct Api;
#define MEDIAN_API(T, CODE)                                          \
    template <> struct Api<T> {                                      \
        static constexpr auto apart = tevsFilterMedian_##CODE;       \
        static constexpr auto inPlace = tevsFilterMedian_##CODE##_I; \
    }
MEDIAN_API(float, 32f);
MEDIAN_API(double, 64f);
MEDIAN_API(int16_t, 16s);
MEDIAN_API(uint8_t, 8u);
MEDIAN_API(int32_t, 32s);

// Numbers in order, -0 before +0, any NaN last.
template <class T> bool before(T a, T b) {
    if constexpr (std::is_floating_point_v<T>) {
        if (std::isnan(a) || std::isnan(b)) return !std::isnan(a) && std::isnan(b);
        if (a == b) return std::signbit(a) && !std::signbit(b);
    }
    return a < b;
}
// The results from .. to-1. A window that reaches far past both ends is as one that reaches further.
template <class T> std::vector<T> oracle(const std::vector<T>& x, int maskSize, size_t from, size_t to) {
    const ptrdiff_t last = ptrdiff_t(x.size()) - 1, w = std::min<ptrdiff_t>((maskSize - 1) / 2, 2 * last + 5);
    std::vector<T> y, window;
    for (ptrdiff_t n = ptrdiff_t(from); n < ptrdiff_t(to); ++n) {
        window.clear();
        for (ptrdiff_t i = n - w; i <= n + w; ++i) window.push_back(x[size_t(std::clamp<ptrdiff_t>(i, 0, last))]);
        std::nth_element(window.begin(), window.begin() + w, window.end(), before<T>);
        y.push_back(window[size_t(w)]);
    }
    return y;
}

enum Kind { Any, Few, Ramp, Special, kKinds };
template <class T> std::vector<T> signal(size_t n, int kind) {
    std::vector<T> v = randomVector<T>(n);
    for (size_t i = 0; i < n; ++i) {
        if (kind == Few) v[i] = T(generator()() % 3);
        if (kind == Ramp) v[i] = T(int(i / 2 % 200) - int(generator()() % 9));
    }
    if constexpr (std::is_floating_point_v<T>)
        if (kind == Special) {
            v = wildFloats<T>(n);
            for (T& x : v)
                if (generator()() % 4 == 0) x = std::copysign(T(generator()() % 2 ? NAN : 0), x);
        }
    return v;
}

// Apart and in place; looked at from `starts` on.
template <class T> void check(const std::vector<T>& x, int maskSize, Place at = {}, const std::vector<size_t>& starts = {0}, size_t count = 5001) {
    const Guarded<T> src(x, at);
    Guarded<T> dst(x.size(), at), both(x, at);
    const Status want = maskSize % 2 ? StatusOk : WarnEvenMedianMask;
    ASSERT_EQ(Api<T>::apart(src.data(), dst.data(), int(x.size()), maskSize), want);
    ASSERT_EQ(Api<T>::inPlace(both.data(), int(x.size()), maskSize), want);
    const auto y = dst.values();
    ASSERT_TRUE(same(y, both.values()) && same(src.values(), x) && dst.intact() && both.intact()) << "mask " << maskSize << ", " << x.size() << " samples";
    for (const size_t from : starts) {
        const size_t to = std::min(x.size(), from + count);
        ASSERT_TRUE(sameNumbers(oracle(x, maskSize, from, to), {y.begin() + long(from), y.begin() + long(to)}))
            << "mask " << maskSize << ", " << x.size() << " samples, from " << from << " on";
    }
}

template <class T> class Median : public ::testing::Test {};
using Types = ::testing::Types<float, double, int16_t, uint8_t, int32_t>;
TYPED_TEST_SUITE(Median, Types);

TYPED_TEST(Median, IsThatOfEachWindow) {
    eachLength([](int len) {
        for (int mask = 1; mask <= 24; ++mask) check(signal<TypeParam>(size_t(len), mask % kKinds), mask, {len % 4 * int(sizeof(TypeParam)), mask % 3 == 0});
    });
}

// Every shape that tiles have: their size changes at powers of two, how many runs of it the core takes in between.
TYPED_TEST(Median, OfAnyMask) {
    for (int mask : {25, 29, 31, 33, 39, 45, 47, 61, 62, 63, 65, 93, 97, 127, 129, 190, 255, 301, 511, 512, 1023, 1025, 2045, 2047})
        for (int len : {100, 1200}) check(signal<TypeParam>(size_t(len), (mask / 2 + len) % kKinds), mask);
    for (int mask : {5, 21, 63}) check(signal<TypeParam>(5001, Special), mask);
}

// Up to the largest mask, most of them longer than the vector.
TYPED_TEST(Median, OfMasksLongerThanTheVector) {
    for (int len : {3, 4, 17, 300, 1500})
        for (int mask : {2 * len - 1, 4 * len, 100001, INT_MAX - 1, INT_MAX}) check(signal<TypeParam>(size_t(len), Special), mask);
}

// Several pieces of those that long vectors are worked on in, and more than one window of values in order.
TYPED_TEST(Median, OfLongVectors) {
    auto x = signal<TypeParam>(70000, Any);
    x[40000] = std::is_floating_point_v<TypeParam> ? TypeParam(-0.0) : TypeParam(1);
    for (int mask : {3, 9, 11, 2047, 2501}) check(x, mask, {}, {0, 15000, 39800, 69600}, 400);
}

TEST(Median, KeepsTheBitsOfSignallingNaN) {
    const std::vector<uint32_t> x(3000, 0x7fa18181);
    for (int mask : {1, 3, 9, 11, 2047}) {
        auto y = x;
        EXPECT_EQ(tevsFilterMedian_32f_I(reinterpret_cast<float*>(y.data()), 3000, mask), StatusOk);
        EXPECT_TRUE(same(x, y)) << mask;
    }
}

TYPED_TEST(Median, LooksAtTheMaskLast) {
    TypeParam x[4] = {3, 1, 2, 0}, y[4] = {7, 7, 7, 7};
    expectEach(StatusNullPtr, {Api<TypeParam>::apart(nullptr, y, 0, 0), Api<TypeParam>::apart(x, nullptr, 0, 0), Api<TypeParam>::inPlace(nullptr, 0, 0)});
    expectEach(StatusBadSize, {Api<TypeParam>::apart(x, y, 4, 0), Api<TypeParam>::apart(x, y, 4, INT_MIN), Api<TypeParam>::inPlace(x, 4, -1)});
    EXPECT_TRUE(x[0] == 3 && y[0] == 7 && y[3] == 7);
}

}   // namespace
