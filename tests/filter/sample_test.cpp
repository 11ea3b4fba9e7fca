#include <climits>

#include "support/elements.h"
#include "support/erased.h"
#include "tevs.h"

using namespace test;

namespace {

template <class T> struct Api;
#define SAMPLE_API(T, CODE)                                 \
    template <> struct Api<T> {                             \
        static constexpr auto up = tevsSampleUp_##CODE;     \
        static constexpr auto down = tevsSampleDown_##CODE; \
    }
SAMPLE_API(float, 32f);
SAMPLE_API(Complex32f, 32fc);
SAMPLE_API(double, 64f);
SAMPLE_API(Complex64f, 64fc);
SAMPLE_API(int16_t, 16s);
SAMPLE_API(Complex16s, 16sc);

template <class T> class Sample : public ::testing::Test {};
using Types = ::testing::Types<float, Complex32f, double, Complex64f, int16_t, Complex16s>;
TYPED_TEST_SUITE(Sample, Types);

const int kFactors[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 15, 16, 17, 18, 33, 64, 100, 1000};
std::vector<int> phases(int factor) {
    std::vector<int> all;
    for (int p = 0; p < factor; p += factor <= 5 || p == factor - 2 ? 1 : (factor - 2) / 2) all.push_back(p);
    return all;
}

TYPED_TEST(Sample, UpPutsZerosBetween) {
    using T = TypeParam;
    eachLength([](int len) {
        for (int factor : kFactors)
            for (int phase : phases(factor)) {
                if (int64_t{len} * factor > 20000) continue;
                const Place at{(len + factor) % 4 * int(sizeof(T)), phase % 2 == 0};
                const auto x = randomVector<T>(size_t(len));
                const Guarded<T> src(x, at);
                std::vector<T> want(size_t(len) * size_t(factor), T{});
                for (size_t k = 0; k < x.size(); ++k) want[k * size_t(factor) + size_t(phase)] = x[k];
                Guarded<T> dst(want.size(), at);
                int n = -1, p = phase;
                ASSERT_EQ(Api<T>::up(src.data(), len, dst.data(), &n, factor, &p), StatusOk);
                ASSERT_TRUE(n == len * factor && p == phase);
                ASSERT_TRUE(same(want, dst.values())) << len << " times " << factor << ", phase " << phase;
                ASSERT_TRUE(dst.intact());
            }
    });
}

TYPED_TEST(Sample, DownTakesEachOfAFactor) {
    using T = TypeParam;
    eachLength([](int len) {
        for (int factor : kFactors)
            for (int phase : phases(factor)) {
                const Place at{(len + factor) % 4 * int(sizeof(T)), phase % 2 == 0};
                const auto x = randomVector<T>(size_t(len));
                const Guarded<T> src(x, at);
                std::vector<T> want;
                int i = phase;
                for (; i < len; i += factor) want.push_back(x[size_t(i)]);
                Guarded<T> dst(want.size(), at);
                int n = -1, p = phase;
                ASSERT_EQ(Api<T>::down(src.data(), len, dst.data(), &n, factor, &p), StatusOk);
                ASSERT_TRUE(n == int(want.size()) && p == i - len) << len << " by " << factor << ", phase " << phase << ": " << n << ", " << p;
                ASSERT_TRUE(same(want, dst.values())) << len << " by " << factor << ", phase " << phase;
                ASSERT_TRUE(dst.intact());
            }
    });
}

// Blocks of any lengths, shorter than the phase too, are one stream.
TYPED_TEST(Sample, StreamsMayBeCutAnywhere) {
    using T = TypeParam;
    const auto x = randomVector<T>(500);
    for (int factor : kFactors) {
        std::vector<T> whole(500), parts(500);
        int n, p = factor / 2, left = p, total = 0;
        ASSERT_EQ(Api<T>::down(x.data(), 500, whole.data(), &n, factor, &p), StatusOk);
        for (int at = 0, m; at < 500; at += m) {
            int got;
            m = std::min(1 + int(generator()() % 9), 500 - at);
            ASSERT_EQ(Api<T>::down(&x[size_t(at)], m, &parts[size_t(total)], &got, factor, &left), StatusOk);
            total += got;
        }
        ASSERT_TRUE(total == n && left == p && same(whole, parts)) << factor;
    }
}

// Indices pass what an int holds.
TYPED_TEST(Sample, DownByTheLargestFactors) {
    using T = TypeParam;
    const auto x = randomVector<T>(5);
    struct Row {
        int factor, phase, count, left;
    };
    for (const Row& r : {Row{INT_MAX, 0, 1, INT_MAX - 5}, Row{INT_MAX, 4, 1, INT_MAX - 1}, Row{INT_MAX, 5, 0, 0}, Row{INT_MAX, INT_MAX - 1, 0, INT_MAX - 6},
                         Row{INT_MAX - 1, 3, 1, INT_MAX - 3}}) {
        T y[5];
        int n = -1, p = r.phase;
        ASSERT_EQ(Api<T>::down(x.data(), 5, y, &n, r.factor, &p), StatusOk);
        EXPECT_TRUE(n == r.count && p == r.left) << r.factor << ", " << r.phase << ": " << n << ", " << p;
        if (n) {
            EXPECT_EQ(std::memcmp(y, &x[size_t(r.phase)], sizeof(T)), 0);
        }
    }
}

TYPED_TEST(Sample, ChecksInOrder) {
    using T = TypeParam;
    T x[4] = {}, y[4] = {};
    for (const auto call : {Api<T>::up, Api<T>::down}) {
        int n = 77, p = 3, none = 0;
        expectEach(StatusNullPtr,
                   {call(nullptr, 0, y, &n, 0, &p), call(x, 0, nullptr, &n, 0, &p), call(x, 0, y, nullptr, 0, &p), call(x, 0, y, &n, 0, nullptr)});
        expectEach(StatusBadSize, {call(x, 0, y, &n, 0, &p), call(x, INT_MIN, y, &n, 3, &p)});
        expectEach(StatusSampleFactor, {call(x, 4, y, &n, 0, &p), call(x, 4, y, &n, INT_MIN, &p)});
        expectEach(StatusSamplePhase,
                   {call(x, 4, y, &n, 3, &p), call(x, 4, y, &n, 1, &p), call(x, 4, y, &n, 3, &(none = -1)), call(x, 4, y, &n, 3, &(none = INT_MIN))});
        EXPECT_TRUE(n == 77 && p == 3 && std::all_of(reinterpret_cast<char*>(y), reinterpret_cast<char*>(y + 4), [](char c) { return c == 0; }));
    }
    int n = 77, p = 0;
    EXPECT_EQ(Api<T>::up(x, 2, y, &n, INT_MAX / 2 + 1, &p), StatusBadSize);
    EXPECT_EQ(n, 77);
}

}   // namespace
