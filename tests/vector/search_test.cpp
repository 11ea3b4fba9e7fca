#include <array>
#include <cfloat>
#include <climits>
#include <cmath>
#include <functional>
#include <numeric>

#include "support/elements.h"

using namespace test;

namespace {

// ---- order ------------------------------------------------------------------------------------------------------------------------------

// Whether a has to stand in front of b: by value, -0 before +0 and back, NaN after everything.
template <class T> bool precedes(T a, T b, bool down) {
    if constexpr (std::is_floating_point_v<T>) {
        if (std::isnan(a) || std::isnan(b)) return !std::isnan(a) && std::isnan(b);
        if (a == b) return std::signbit(down ? b : a) && !std::signbit(down ? a : b);
    }
    return down ? a > b : a < b;
}
template <class T> std::vector<int> orderOf(const std::vector<T>& v, bool down) {
    std::vector<int> order(v.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return precedes(v[size_t(a)], v[size_t(b)], down); });
    return order;
}

// What sorting is known to trip over.
template <class T> T wild() { return std::is_integral_v<T> ? randomValue<T>() : wildFloats<T>(1)[0]; }
template <class T>
const std::vector<std::function<std::vector<T>(size_t)>> kInputs = {
    [](size_t n) { return randomVector<T>(n); },
    [](size_t n) {
        std::vector<T> v(n);
        for (T& x : v) x = wild<T>();
        return v;
    },
    [](size_t n) {   // of few values
        const auto few = [] { return std::array{wild<T>(), wild<T>(), T(0), T(-T(0)), T(3), wild<T>(), wild<T>()}; }();
        std::vector<T> v(n);
        for (T& x : v) x = few[generator()() % (1 + n % few.size())];
        return v;
    },
    [](size_t n) {   // of a range that 16 bits hold several times over, and in double precision of close neighbours far from one other
        std::vector<T> v(n);
        for (T& x : v) x = std::is_integral_v<T> ? T(generator()() % 600) : T(1 + T(generator()() % 3000) * std::numeric_limits<T>::epsilon());
        v[n / 2] = std::numeric_limits<T>::lowest();
        return v;
    },
    [](size_t n) {   // rising, falling, organ pipe, saw
        std::vector<T> v(n);
        for (size_t i = 0; i < n; ++i) v[i] = T(std::array{i, n - i, std::min(i, n - i), i % 17}[n % 4]);
        return v;
    }};

template <class T> struct Sorting {
    Status (*sort[2])(T*, int);
    Status (*indices[2])(const T*, int*, int);

    void check(const std::vector<T>& v) const {
        const int n = int(v.size());
        for (const bool down : {false, true}) {
            const std::vector<int> want = orderOf(v, down);
            std::vector<T> sorted(v.size());
            for (size_t i = 0; i < v.size(); ++i) sorted[i] = v[size_t(want[i])];
            const Guarded<T> source(v);
            Guarded<T> got(v, Place{n % 2, n % 3 != 0});
            Guarded<int> indices_(v.size());
            ASSERT_EQ(sort[down](got, n), StatusOk);
            ASSERT_TRUE(sameNumbers(sorted, got.values()) && got.intact()) << nameOf(sort[down]) << " of " << n;
            ASSERT_EQ(indices[down](source.data(), indices_, n), StatusOk);
            ASSERT_TRUE(same(want, indices_.values()) && indices_.intact()) << nameOf(indices[down]) << " of " << n;
        }
    }
    void check() const {
        for (const auto& make : kInputs<T>) {
            for (size_t n = 1; n < 700; n += n < 140 ? 1 : 13) check(make(n));
            for (const size_t n : {1023, 1024, 1025, 2050, 4099, 9000, 65535, 65536, 65537, 150001}) check(make(n));
        }
        std::vector<T> v;
        for (int n = 2; n <= 6; ++n) {
            v.assign(size_t(n), T(0));
            std::iota(v.begin(), v.end(), T(-3));
            do check(v);
            while (std::next_permutation(v.begin(), v.end()));
        }
    }
};
#define SORTING(type) \
    {tevsSort_##type##_I, tevsSortDown_##type##_I}, { tevsSortIndx_##type, tevsSortIndxDown_##type }

TEST(Sort, IsTheStableOrder) {
    Sorting<int16_t>{SORTING(16s)}.check();
    Sorting<int32_t>{SORTING(32s)}.check();
    Sorting<float>{SORTING(32f)}.check();
    Sorting<double>{SORTING(64f)}.check();
}

// The bits of a NaN are the caller's.
TEST(Sort, KeepsEveryNaN) {
    std::vector<uint32_t> v(1000);
    for (size_t i = 0; i < v.size(); ++i) v[i] = uint32_t(generator()()) | (i % 3 ? 0 : 0x7f800000);
    for (const auto sort : {tevsSort_32f_I, tevsSortDown_32f_I}) {
        std::vector<uint32_t> got = v;
        sort(reinterpret_cast<float*>(got.data()), int(got.size()));
        std::sort(got.begin(), got.end());
        std::vector<uint32_t> want = v;
        std::sort(want.begin(), want.end());
        EXPECT_EQ(want, got);
    }
}

// ---- nearest values -----------------------------------------------------------------------------------------------------------------------

// The sign of an exact sum of finite numbers, in units of the least of all.
int signOfSum(std::initializer_list<double> terms) {
    std::array<int64_t, 140> digits{};   // of 16 bits, before carries
    for (const double x : terms) {
        int e;
        const double m = std::frexp(x, &e);
        const int shift = std::max(e - 53 + 1074, 0);
        const auto whole = int64_t(std::ldexp(m, e + 1074 - shift));
        const int64_t by = int64_t{1} << shift % 16;
        digits[size_t(shift / 16)] += (whole & 0xffffffff) * by;
        digits[size_t(shift / 16 + 2)] += (whole >> 32) * by;
    }
    bool any = false;
    for (size_t k = 0; k + 1 < digits.size(); ++k) {
        digits[k + 1] += digits[k] >> 16;
        any |= (digits[k] & 0xffff) != 0;
    }
    return digits.back() < 0 ? -1 : any || digits.back() > 0;
}
template <class T> int nearestTo(T x, const std::vector<T>& table) {
    int best = 0;
    for (int i = 1; i < int(table.size()) && !std::isnan(double(x)); ++i) {
        const double a = double(table[size_t(best)]), b = double(table[size_t(i)]), v = double(x);
        const bool nearer = std::isinf(a) || std::isinf(b) || std::isinf(v)
                                ? (b == v && a != v) || (std::isinf(a) && a != v && std::isfinite(b)) || (v > b && b > a)
                                : b > a && signOfSum({v, v, -a, -b}) > 0;
        if (nearer && !(std::isinf(b) && b != v)) best = i;
    }
    return best;
}

template <class T> void checkNearest(Status (*f)(const T*, int*, int, const T*, int), const std::vector<T>& table, const std::vector<T>& samples) {
    std::vector<int> want;
    for (const T x : samples) want.push_back(nearestTo(x, table));
    const Guarded<T> source(samples), entries(table);
    for (const size_t n : {size_t(1), size_t(2), size_t(3), size_t(5), size_t(8), size_t(17), size_t(39), samples.size()}) {
        const size_t from = samples.size() - n;   // they end where the page does
        Guarded<int> got(n);
        ASSERT_EQ(f(source.data() + from, got, int(n), entries.data(), int(table.size())), StatusOk);
        ASSERT_TRUE(got.intact());
        for (size_t i = 0; i < n; ++i)
            ASSERT_EQ(want[from + i], got[i]) << nameOf(f) << ": " << double(samples[from + i]) << " among " << table.size() << ", " << i << " of " << n;
    }
}

constexpr auto findsTheNearest = []<class T>(Status (*f)(const T*, int*, int, const T*, int)) {
    for (int turn = 0; turn < 50; ++turn) {
        const size_t n = turn < 40 ? size_t(turn + 1) : 50 + generator()() % 120;
        std::vector<T> table(n);
        for (T& x : table) {
            do x = turn % 3 == 0 ? wild<T>() : turn % 3 == 1 ? T(generator()() % 40) : randomValue<T>();
            while (std::isnan(double(x)));
        }
        std::sort(table.begin(), table.end());
        // The entries, what lies between them and beside, and anything.
        std::vector<T> samples = std::is_integral_v<T> ? randomVector<T>(40) : wildFloats<T>(40);
        for (size_t i = 0; i < n; ++i) {
            const T a = table[i], b = table[std::min(i + 1 + size_t(generator()() % 2), n - 1)], middle = T(a / 2 + b / 2);
            for (const T x : {a, middle})
                if constexpr (std::is_integral_v<T>)
                    samples.insert(samples.end(), {x, T(x + (x < std::numeric_limits<T>::max())), T(x - (x > std::numeric_limits<T>::min()))});
                else
                    samples.insert(samples.end(), {x, std::nextafter(x, a), std::nextafter(x, b), -x});
        }
        checkNearest(f, table, samples);
    }
    const T any[] = {T(5), T(-1), T(7), T(7), T(2), T(-8)};
    for (const T x : randomVector<T>(50)) {
        int i = -1;
        ASSERT_EQ(f(&x, &i, 1, any, 6), StatusOk);
        ASSERT_TRUE(i >= 0 && i < 6);
    }
};
TEST(Nearest, IsExact) { each(findsTheNearest, tevsNearest_16s, tevsNearest_32s, tevsNearest_32f, tevsNearest_64f); }

TEST(Nearest, OfInfinities) {
    const double inf = INFINITY;
    for (const auto& table : {std::vector{-inf, -inf, 1.0, 2.0, inf, inf}, std::vector{-1.0, 3.0, 3.0}, std::vector{-inf, inf}, std::vector{5.0}}) {
        const double x[] = {-inf, inf, NAN, 0, DBL_MAX, -DBL_MAX};
        int got[6];
        ASSERT_EQ(tevsNearest_64f(x, got, 6, table.data(), int(table.size())), StatusOk);
        for (int i = 0; i < (table.size() == 2 ? 3 : 6); ++i) EXPECT_EQ(got[i], nearestTo(x[i], table)) << x[i] << " of " << table.size();
    }
}

// ---- nearest vectors ------------------------------------------------------------------------------------------------------------------------

double distance(const float* a, const float* b, int dim) {
    double sum = 0;
    for (int k = 0; k < dim; ++k) sum += (double(a[k]) - b[k]) * (double(a[k]) - b[k]);
    return sum;
}

void checkVectors(int len, int bookLen, int dim, bool whole) {
    auto make = [=](int n) {
        std::vector<float> v = randomVector<float>(size_t(n) * size_t(dim));
        if (whole)   // exact sums, equal ones among them
            for (float& x : v) x = std::round(2 * x);
        return v;
    };
    const std::vector<float> x = make(len), rows = make(bookLen);
    const Guarded<float> src(x), book(rows);
    Guarded<int> at(static_cast<size_t>(len));
    Guarded<float> dist(static_cast<size_t>(len));
    ASSERT_EQ(tevsNearestVec_32f(src.data(), at, dist, len, book.data(), bookLen, dim), StatusOk);
    ASSERT_TRUE(at.intact() && dist.intact());
    Guarded<int> again(static_cast<size_t>(len));
    ASSERT_EQ(tevsNearestVec_32f(src.data(), again, nullptr, len, book.data(), bookLen, dim), StatusOk);
    ASSERT_TRUE(same(at.values(), again.values()));
    const double u = (dim + 2) * 0x1p-24;
    for (int i = 0; i < len; ++i) {
        const float* v = x.data() + ptrdiff_t{i} * dim;
        ASSERT_TRUE(at[i] >= 0 && at[i] < bookLen);
        const double found = distance(v, rows.data() + ptrdiff_t{at[i]} * dim, dim);
        ASSERT_LE(std::fabs(dist[i] - found), u * found) << len << " " << bookLen << " " << dim;
        for (int j = 0; j < bookLen; ++j) {
            const double other = distance(v, rows.data() + ptrdiff_t{j} * dim, dim);
            ASSERT_TRUE(whole ? found < other || (found == other && at[i] <= j) : found * (1 - u) <= other * (1 + u))
                << i << " of " << len << ": row " << at[i] << " at " << found << ", row " << j << " at " << other << ", dim " << dim;
        }
    }
}
TEST(NearestVec, IsTheFirstOfTheNearest) {
    for (const int dim : {1, 2, 3, 4, 5, 7, 8, 10, 16, 33, 127, 128, 129, 150, 256})
        for (const int len : {1, 2, 3, 7, 8, 15, 16, 17, 31, 32, 33, 70})
            for (const int bookLen : {1, 2, 3, 5, 8, 31, 64, 67}) checkVectors(len, bookLen, dim, (dim + len + bookLen) % 2);
}

TEST(NearestVec, NaNIsNeverNearest) {
    for (const int dim : {1, 3, 20, 200})
        for (const int len : {1, 20, 40}) {
            const int rows = 40;
            std::vector<float> book(size_t(rows * dim), 1e30f), src(size_t(len * dim), -1e30f), dist(size_t(len), 0.f);
            std::vector<int> at(size_t(len), 9);
            const auto row = [&](int j) -> float& { return book[size_t(j * dim + dim / 2)]; };
            const auto expectEach = [&](int index, float sum) {
                ASSERT_EQ(tevsNearestVec_32f(src.data(), at.data(), dist.data(), len, book.data(), rows, dim), StatusOk);
                EXPECT_TRUE(sameNumbers(std::vector<float>(size_t(len), sum), dist)) << dim;
                EXPECT_EQ(at, std::vector<int>(size_t(len), index)) << dim << ", " << len;
            };
            expectEach(0, INFINITY);   // the squares overflow
            for (int j : {0, 1, 2, 4, 5}) row(j) = NAN;
            expectEach(3, INFINITY);
            std::fill_n(book.begin() + 33 * dim, dim, -1e30f);
            expectEach(33, 0);
            for (int j = 0; j < rows; ++j) row(j) = NAN;
            expectEach(0, NAN);
        }
}

TEST(Search, RejectsBadSizes) {
    const float x = 1;
    int at = 7;
    EXPECT_EQ(tevsNearest_32f(&x, &at, 1, &x, 0), StatusBadSize);
    EXPECT_EQ(tevsNearest_32f(&x, &at, 1, nullptr, 0), StatusNullPtr);
    EXPECT_EQ(tevsNearestVec_32f(&x, &at, nullptr, 1, &x, 0, 1), StatusBadSize);
    EXPECT_EQ(tevsNearestVec_32f(&x, &at, nullptr, 1, &x, 1, 0), StatusBadSize);
    EXPECT_EQ(at, 7);
}

}   // namespace
