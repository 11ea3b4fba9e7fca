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
template <class T> std::vector<T> oracle(const std::vector<T>& x, int maskSize) {
    const ptrdiff_t len = ptrdiff_t(x.size()), w = (maskSize - 1) / 2;
    std::vector<T> y(x.size()), window;
    for (ptrdiff_t n = 0; n < len; ++n) {
        window.clear();
        for (ptrdiff_t i = n - w; i <= n + w; ++i) window.push_back(x[size_t(std::clamp<ptrdiff_t>(i, 0, len - 1))]);
        std::nth_element(window.begin(), window.begin() + w, window.end(), before<T>);
        y[size_t(n)] = window[size_t(w)];
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

template <class T> void check(const std::vector<T>& x, int maskSize, Place at = {}) {
    const Guarded<T> src(x, at);
    Guarded<T> dst(x.size(), at), both(x, at);
    const Status want = maskSize % 2 ? StatusOk : WarnEvenMedianMask;
    ASSERT_EQ(Api<T>::apart(src.data(), dst.data(), int(x.size()), maskSize), want);
    ASSERT_EQ(Api<T>::inPlace(both.data(), int(x.size()), maskSize), want);
    ASSERT_TRUE(sameNumbers(oracle(x, maskSize), dst.values())) << "mask " << maskSize << ", " << x.size() << " samples";
    ASSERT_TRUE(same(dst.values(), both.values())) << "in place, mask " << maskSize << ", " << x.size() << " samples";
    ASSERT_TRUE(same(src.values(), x) && dst.intact() && both.intact());
}

template <class T> class Median : public ::testing::Test {};
using Types = ::testing::Types<float, double, int16_t, uint8_t, int32_t>;
TYPED_TEST_SUITE(Median, Types);

TYPED_TEST(Median, IsThatOfEachWindow) {
    using T = TypeParam;
    eachLength([](int len) {
        for (int mask = 1; mask <= 24; ++mask) check(signal<T>(size_t(len), mask % kKinds), mask, {len % 4 * int(sizeof(T)), mask % 3 == 0});
    });
}

// Every shape that tiles have: their size changes at powers of two, how many runs of it the core takes in between.
TYPED_TEST(Median, OfAnyMask) {
    using T = TypeParam;
    for (int mask : {25, 29, 31, 33, 39, 45, 47, 61, 62, 63, 65, 93, 97, 127, 129, 190, 255, 301, 511, 512, 1023, 1025, 2045, 2047})
        for (int len : {100, 1200}) check(signal<T>(size_t(len), (mask / 2 + len) % kKinds), mask);
    for (int mask : {5, 21, 63}) check(signal<T>(5001, Special), mask);
}

// Longer than the vector, up to the largest: as one that reaches past both ends.
TYPED_TEST(Median, OfMasksLongerThanTheVector) {
    using T = TypeParam;
    for (int len : {3, 4, 17, 300, 1500}) {
        const auto x = signal<T>(size_t(len), Special);
        const auto want = oracle(x, 2 * len + 9);
        for (int mask : {2 * len - 1, 4 * len, 100001, INT_MAX - 1, INT_MAX}) {
            std::vector<T> y = x;
            ASSERT_EQ(Api<T>::inPlace(y.data(), len, mask), mask % 2 ? StatusOk : WarnEvenMedianMask);
            ASSERT_TRUE(sameNumbers(want, y)) << mask << " of " << len;
        }
    }
}

// Several pieces of those that long vectors are worked on in, and more than one window of values in order.
TYPED_TEST(Median, OfLongVectors) {
    using T = TypeParam;
    auto x = signal<T>(70000, Any);
    x[40000] = std::is_floating_point_v<T> ? T(-0.0) : T(1);
    for (int mask : {3, 9, 11, 2047, 2501}) {
        std::vector<T> y = x, z(x.size());
        ASSERT_EQ(Api<T>::inPlace(y.data(), 70000, mask), StatusOk);
        ASSERT_EQ(Api<T>::apart(x.data(), z.data(), 70000, mask), StatusOk);
        ASSERT_TRUE(same(z, y)) << mask;
        for (size_t from : {size_t{0}, size_t{15000}, size_t{39000}, size_t{67000}}) {
            const size_t w = size_t(mask / 2), begin = from < w ? 0 : from - w, end = std::min<size_t>(x.size(), from + 400 + w);
            const auto want = oracle(std::vector<T>(x.begin() + long(begin), x.begin() + long(end)), mask);
            const size_t last = end == x.size() ? end : from + 400;
            for (size_t n = from; n < last; ++n) ASSERT_EQ(std::memcmp(&want[n - begin], &y[n], sizeof(T)), 0) << n << ", mask " << mask;
        }
    }
}

TEST(Median, Examples) {
    struct Row {
        int mask;
        std::vector<float> x, want;
        Status status;
    };
    for (const Row& r :
         {Row{3, {1, 9, 2, 8, 3}, {1, 2, 8, 3, 3}, StatusOk}, Row{4, {1, 9, 2, 8, 3}, {1, 2, 8, 3, 3}, WarnEvenMedianMask},
          Row{2, {1, 9, 2, 8, 3}, {1, 9, 2, 8, 3}, WarnEvenMedianMask}, Row{1, {5, 4, 3}, {5, 4, 3}, StatusOk}, Row{6, {7, 1}, {7, 1}, WarnEvenMedianMask},
          Row{5, {0, 0, 9, 0, 0}, {0, 0, 0, 0, 0}, StatusOk}, Row{3, {1, NAN, 2, NAN, NAN}, {1, 2, NAN, NAN, NAN}, StatusOk},
          Row{3, {-NAN, -INFINITY, 5}, {-NAN, 5, 5}, StatusOk}, Row{3, {0.0f, -0.0f, 0.0f, -0.0f, -0.0f}, {0.0f, 0.0f, -0.0f, -0.0f, -0.0f}, StatusOk}}) {
        auto y = r.x;
        EXPECT_EQ(tevsFilterMedian_32f_I(y.data(), int(y.size()), r.mask), r.status);
        EXPECT_TRUE(sameNumbers(r.want, y)) << "mask " << r.mask;
    }
}

TYPED_TEST(Median, ChecksInOrder) {
    using T = TypeParam;
    T x[4] = {T(3), T(1), T(2), T(0)}, y[4] = {T(7), T(7), T(7), T(7)};
    expectEach(StatusNullPtr, {Api<T>::apart(nullptr, y, 0, 0), Api<T>::apart(x, nullptr, 0, 0), Api<T>::inPlace(nullptr, 0, 0)});
    expectEach(StatusBadSize, {Api<T>::apart(x, y, 0, 3), Api<T>::apart(x, y, 4, 0), Api<T>::apart(x, y, 4, INT_MIN), Api<T>::apart(x, y, INT_MIN, 4),
                               Api<T>::inPlace(x, 0, 3), Api<T>::inPlace(x, 4, -1)});
    EXPECT_TRUE(x[0] == T(3) && y[0] == T(7) && y[3] == T(7));
}

}   // namespace
