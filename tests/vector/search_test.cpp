#include <array>
#include <cfloat>
#include <climits>
#include <cmath>
#include <numeric>

#include "support/elements.h"
#include "vector/search.kern.cpp"   // at level 1: pivots and partitions, for an adversary

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
template <class T> std::vector<T> input(int kind, size_t n) {
    const T few[] = {wild<T>(), wild<T>(), T(0), T(-T(0)), T(3), wild<T>(), wild<T>()};
    std::vector<T> v(n);
    for (size_t i = 0; i < n; ++i) {
        const uint64_t r = generator()();
        // The fourth of a range that 16 bits hold several times over, and in double precision of close neighbours far from one other; the last rising, falling, an
        // organ pipe, a saw.
        const T close = std::is_integral_v<T> ? T(r % 600) : T(1 + T(r % 3000) * std::numeric_limits<T>::epsilon());
        v[i] = std::array{randomValue<T>(), wild<T>(), few[r % (1 + n % 7)], i == n / 2 ? std::numeric_limits<T>::lowest() : close,
                          T(std::array{i, n - i, std::min(i, n - i), i % 17}[n % 4])}[size_t(kind)];
    }
    return v;
}

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
        for (int kind = 0; kind < 5; ++kind) {
            for (size_t n = 1; n < 700; n += n < 140 ? 1 : 13) check(input<T>(kind, n));
            for (const size_t n : {1023, 1024, 1025, 2050, 4099, 9000, 65535, 65536, 65537, 150001}) check(input<T>(kind, n));
        }
        for (size_t n = 2; n <= 6; ++n) {
            std::vector<T> v(n);
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

// Elements take their values, each greater than all before, when a pivot is looked for among them: at level 1 every split leaves less than a sixteenth on one side, until
// the heap takes over (M. D. McIlroy, A killer adversary for quicksort, 1999).
struct AboveByPlace {
    const int *v, pivot;
    bool operator()(int i) const { return v[i] > pivot; }
    template <class V> uint32_t operator()(V, const int* p) const {
        uint32_t bits = 0;
        for (size_t k = 0; k < sizeof(V) / sizeof *p; ++k) bits |= uint32_t((*this)(p[k])) << k;
        return bits;
    }
};
std::vector<int> adversary(int n) {
    std::vector<int> v(size_t(n), INT_MAX), place(v);
    std::iota(place.begin(), place.end(), 0);
    int next = 0, splits = 0;
    for (int *p = place.data(), left; n > 1024; p += left, n -= left, ++splits) {
        const int pivot = tevs::level1::middle<int>(n, [&](ptrdiff_t i) { return v[size_t(p[i])] == INT_MAX ? v[size_t(p[i])] = next++ : v[size_t(p[i])]; });
        left = int(tevs::level1::partition(p, n, AboveByPlace{v.data(), pivot}));
        EXPECT_TRUE(left > 0 && left < n / 16) << left << " of " << n;
    }
    EXPECT_GT(splits, tevs::level1::patience(ptrdiff_t(v.size())) + 1);
    for (int& x : v) x = x == INT_MAX ? next + int(generator()() % 1000000) : x;
    return v;
}
TEST(Sort, OutlastsItsAdversary) {
    std::vector<int> v = adversary(4096);
    Sorting<int>{SORTING(32s)}.check(v);
    v.push_back(INT_MAX);   // too wide a range for indices beside the values: they are all in one bucket
    Sorting<int>{SORTING(32s)}.check(v);
}

// The bits of a NaN are the caller's.
TEST(Sort, KeepsEveryNaN) {
    std::vector<int> v(1000);
    for (size_t i = 0; i < v.size(); ++i) v[i] = int(uint32_t(generator()()) | (i % 3 ? 0 : 0x7f800000));
    for (const auto sort : {tevsSort_32f_I, tevsSortDown_32f_I}) {
        std::vector<int> got = v;
        sort(reinterpret_cast<float*>(got.data()), int(got.size()));
        EXPECT_TRUE(std::is_permutation(got.begin(), got.end(), v.begin()));
    }
}

// ---- nearest values -----------------------------------------------------------------------------------------------------------------------

// Whether an exact sum is above 0, of components that do not overlap (J. R. Shewchuk, Adaptive Precision Floating-Point Arithmetic, 1997).
bool isPositive(std::initializer_list<long double> terms) {
    long double part[4];
    int n = 0;
    for (long double x : terms) {
        for (int k = 0; k < n; ++k) {
            const long double y = part[k], sum = x + y, of = sum - x;
            part[k] = (x - (sum - of)) + (y - of);
            x = sum;
        }
        part[n++] = x;
    }
    while (n > 1 && part[n - 1] == 0) --n;
    return part[n - 1] > 0;
}
template <class T> int nearestTo(T x, const std::vector<T>& table) {
    int best = 0;
    for (int i = 1; i < int(table.size()) && !std::isnan(double(x)); ++i) {
        const double a = double(table[size_t(best)]), b = double(table[size_t(i)]), v = double(x);
        const bool nearer = std::isinf(a) || std::isinf(b) || std::isinf(v)
                                ? (b == v && a != v) || (std::isinf(a) && a != v && std::isfinite(b)) || (v > b && b > a)
                                : b > a && isPositive({v, v, -a, -b});
        if (nearer && !(std::isinf(b) && b != v)) best = i;
    }
    return best;
}

template <class T> void checkNearest(Status (*f)(const T*, int*, int, const T*, int), const std::vector<T>& table, const std::vector<T>& samples) {
    std::vector<int> want;
    for (const T x : samples) want.push_back(nearestTo(x, table));
    const Guarded<T> source(samples), entries(table);
    for (size_t n : {1, 2, 3, 5, 8, 17, 39, 1000}) {
        n = std::min(n, samples.size());   // they end where the page does
        Guarded<int> got(n);
        ASSERT_EQ(f(source.data() + samples.size() - n, got, int(n), entries.data(), int(table.size())), StatusOk);
        ASSERT_TRUE(same({want.end() - ptrdiff_t(n), want.end()}, got.values()) && got.intact()) << nameOf(f) << " among " << table.size();
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
    int i = -1;
    for (const T x : randomVector<T>(50)) ASSERT_TRUE(f(&x, &i, 1, std::array{T(5), T(-1), T(7), T(7), T(2), T(-8)}.data(), 6) == StatusOk && i >= 0 && i < 6);
};
TEST(Nearest, IsExact) { each(findsTheNearest, tevsNearest_16s, tevsNearest_32s, tevsNearest_32f, tevsNearest_64f); }

TEST(Nearest, OfInfinities) {
    constexpr double inf = INFINITY, most = DBL_MAX;
    for (const auto& table : {std::vector{-inf, -inf, 1.0, 2.0, inf, inf}, {-1.0, 3.0, 3.0}, {-inf, most}, {-inf, -most, most, inf}, {5.0}})
        checkNearest(tevsNearest_64f, table, {-inf, inf, NAN, 0, most, -most, most / 2});
}

// ---- nearest vectors ------------------------------------------------------------------------------------------------------------------------

void checkVectors(int len, int bookLen, int dim, bool whole) {
    std::vector<float> x = randomVector<float>(size_t(len * dim)), rows = randomVector<float>(size_t(bookLen * dim));
    for (auto* v : {&x, &rows})
        for (float& e : *v) e = whole ? std::round(2 * e) : e;   // exact sums, equal ones among them
    const Guarded<float> src(x), book(rows);
    Guarded<int> at(static_cast<size_t>(len)), again(static_cast<size_t>(len));
    Guarded<float> dist(static_cast<size_t>(len));
    ASSERT_EQ(tevsNearestVec_32f(src.data(), at, dist, len, book.data(), bookLen, dim), StatusOk);
    ASSERT_EQ(tevsNearestVec_32f(src.data(), again, nullptr, len, book.data(), bookLen, dim), StatusOk);
    ASSERT_TRUE(same(at.values(), again.values()) && at.intact() && again.intact() && dist.intact());
    const double u = (dim + 2) * 0x1p-24;
    for (int i = 0; i < len; ++i) {
        std::vector<double> sums(static_cast<size_t>(bookLen));
        for (int j = 0; j < bookLen * dim; ++j) sums[size_t(j / dim)] += std::pow(double(x[size_t(i * dim + j % dim)]) - rows[size_t(j)], 2);
        const auto least = std::min_element(sums.begin(), sums.end());
        const double found = sums.at(size_t(at[i]));
        ASSERT_TRUE(whole ? at[i] == least - sums.begin() : found * (1 - u) <= *least * (1 + u))
            << i << " of " << len << ": row " << at[i] << " at " << found << ", row " << least - sums.begin() << " at " << *least << ", dim " << dim;
        ASSERT_LE(std::fabs(dist[i] - found), u * found) << len << " " << bookLen << " " << dim;
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
            constexpr int rows = 40;
            std::vector<float> book(size_t(rows * dim), 1e30f), src(size_t(len * dim), -1e30f), dist(size_t(len), 0.f);
            std::vector<int> at(size_t(len), 9);
            const auto expectEach = [&](int index, float sum) {
                ASSERT_EQ(tevsNearestVec_32f(src.data(), at.data(), dist.data(), len, book.data(), rows, dim), StatusOk);
                EXPECT_TRUE(sameNumbers(std::vector<float>(size_t(len), sum), dist) && same(std::vector<int>(size_t(len), index), at)) << dim << ", " << len;
            };
            expectEach(0, INFINITY);   // the squares overflow
            for (int j : {0, 1, 2, 4, 5}) book[size_t(j * dim + dim / 2)] = NAN;
            expectEach(3, INFINITY);
            std::fill_n(book.begin() + 33 * dim, dim, -1e30f);
            expectEach(33, 0);
            std::fill(book.begin(), book.end(), NAN);
            expectEach(0, NAN);
        }
}

TEST(Search, RejectsBadSizes) {
    const float x = 1;
    int at = 7;
    for (int n : {0, INT_MIN})
        for (const Status s :
             {tevsNearest_32f(&x, &at, 1, &x, n), tevsNearestVec_32f(&x, &at, nullptr, 1, &x, n, 1), tevsNearestVec_32f(&x, &at, nullptr, 1, &x, 1, n)})
            EXPECT_EQ(s, StatusBadSize);
    EXPECT_EQ(at, 7);
}

}   // namespace
