#include <array>
#include <climits>
#include <cmath>

#include "support/control_words.h"
#include "support/values.h"
#include "tevcore.h"
#include "tevs.h"

using namespace test;

namespace {

// ---- the functions of each type -------------------------------------------------------------------------------------------------------------

enum Op { kAuto, kByLength, kByOverlap, kCross, kConv, kBiased };

struct Api {
    const char* name;
    Type type;
    int mostLags, fewestLags;   // of cross-correlations that are direct, and of auto-correlations that are not
    Status (*autoCorr[3])(Ptr, int, Ptr, int, Scale);
    Status (*crossCorr)(Ptr, int, Ptr, int, Ptr, int, int, Scale);
    Status (*conv)(Ptr, int, Ptr, int, Ptr, Scale) = nullptr;
    Status (*convBiased)(Ptr, int, Ptr, int, Ptr, int, int) = nullptr;

    bool has(Op op) const { return op < kConv || (op == kConv ? conv != nullptr : convBiased != nullptr); }
    Status operator()(Op op, Ptr a, int m, Ptr b, int n, Ptr y, int len, int first, int scale) const {
        if (op == kConv) return conv(a, m, b, n, y, Scale{scale});
        if (op == kBiased) return convBiased(a, m, b, n, y, len, first);
        if (op == kCross) return crossCorr(a, m, b, n, y, len, first, Scale{scale});
        return autoCorr[op](a, m, y, len, Scale{scale});
    }
};
#define CORRELATION(CODE, SFS) \
    {erased<tevsAutoCorr_##CODE##SFS>, erased<tevsAutoCorr_NormA_##CODE##SFS>, erased<tevsAutoCorr_NormB_##CODE##SFS>}, erased<tevsCrossCorr_##CODE##SFS>
const Api kApis[] = {{"32f", typeOf<float>(), 383, 856, CORRELATION(32f, ), erased<tevsConv_32f>, erased<tevsConvBiased_32f>},
                     {"64f", typeOf<double>(), 511, 856, CORRELATION(64f, ), erased<tevsConv_64f>},
                     {"16s", typeOf<int16_t>(), 383, 856, CORRELATION(16s, _Sfs), erased<tevsConv_16s_Sfs>},
                     {"32fc", typeOf<Complex32f>(), 255, 152, CORRELATION(32fc, )},
                     {"64fc", typeOf<Complex64f>(), 511, 368, CORRELATION(64fc, )}};
const Api &kSingle = kApis[0], &kShort = kApis[2];
void PrintTo(const Api& api, std::ostream* out) { *out << api.name; }

// Of sources of m and n elements the results first .. first+len-1.
struct Case {
    Op op;
    int m, n, len, first;
};
constexpr Case conv(int m, int n) { return {kConv, m, n, m + n - 1, 0}; }
constexpr Case cross(int m, int n, int len, int lowLag) { return {kCross, m, n, len, lowLag}; }
constexpr Case biased(int m, int n, int len, int bias) { return {kBiased, m, n, len, bias}; }
constexpr Case autoCorr(Op op, int m, int len) { return {op, m, m, len, 0}; }
std::ostream& operator<<(std::ostream& out, const Case& c) {
    return out << "operation " << c.op << " of " << c.m << " and " << c.n << ", " << c.len << " results from " << c.first << " on";
}

// ---- the oracle -----------------------------------------------------------------------------------------------------------------------------

Real normOf(const Vector& v) {
    Real sum = 0;
    for (const Value& z : numbers(v)) sum += std::norm(z);
    return std::sqrt(sum);
}

// r(lag) = sum over k of conj(a[k]) b[k+lag]; a convolution is that of its first source in reversed order.
std::vector<Value> oracle(const Case& c, const Vector& first, const Vector& second) {
    auto a = numbers(first), r = std::vector<Value>(size_t(c.len));
    const auto b = numbers(second);
    if (c.op >= kConv) std::reverse(a.begin(), a.end());
    for (int i = 0; i < c.len; ++i) {
        const int64_t lag = int64_t{c.first} + i + (c.op >= kConv ? 1 - c.m : 0);
        for (int64_t k = std::max<int64_t>(0, -lag); k < std::min<int64_t>(c.m, c.n - lag); ++k) r[size_t(i)] += std::conj(a[size_t(k)]) * b[size_t(k + lag)];
        if (c.op == kByLength || c.op == kByOverlap) r[size_t(i)] /= Real(c.op == kByLength || i >= c.m ? c.m : c.m - i);
    }
    return r;
}

// Within so many units of what `size` bounds the sum by; integers as they are rounded, and one beside where they are not exact. At a size of 0 all are exact.
::testing::AssertionResult close(const std::vector<Value>& want, const Vector& got, Real size, int scale) {
    const Real unit = got.type.number == Number::f64 ? 0x1p-52L : 0x1p-23L;
    const Real slack = size == 0 ? 0 : !got.type.whole() ? 16 * size * unit : std::ldexp(16 * size * unit, -scale) + 1;
    const auto values = numbers(got);
    for (size_t i = 0; i < want.size(); ++i) {
        Value w = want[i];
        if (got.type.whole()) w = std::clamp<Real>(std::nearbyint(std::ldexp(w.real(), -scale)), -32768, 32767);
        if (!(std::abs(w - values[i]) <= slack))
            return ::testing::AssertionFailure() << "at " << i << ": want " << w << ", got " << values[i] << ", slack " << slack << ", scale " << scale;
    }
    return ::testing::AssertionSuccess();
}

// ---- calls ----------------------------------------------------------------------------------------------------------------------------------

// Of long vectors there are few tests: they end where their page does.
Place somewhere(Type type, int n) { return n > 100 ? Place{} : Place{int(generator()() % 4 * type.size()), generator()() % 2 == 0}; }

Vector run(const Api& api, const Case& c, const Vector& a, const Vector& b, int scale) {
    const Guarded<uint8_t> x(a.bytes, somewhere(api.type, c.m)), h(b.bytes, somewhere(api.type, c.n));
    Guarded<uint8_t> y(size_t(c.len) * api.type.size(), somewhere(api.type, c.len));
    EXPECT_EQ(api(c.op, x.data(), c.m, h.data(), c.n, y.data(), c.len, c.first, scale), StatusOk);
    EXPECT_TRUE(y.intact());
    return {api.type, y.values()};
}

// Direct sums of integers are exact, by transforms they are not.
bool check(const Api& api, const Case& c, bool direct = true) {
    if (!api.has(c.op)) return true;
    const Vector a = randomVector(api.type, size_t(c.m)), b = c.op < kCross ? a : randomVector(api.type, size_t(c.n));
    const bool divided = c.op == kByLength || c.op == kByOverlap;
    const int scale = int(generator()() % 6) + (divided ? 12 : int(std::log2(std::min(c.m, c.n))) + 10);
    const auto good = close(oracle(c, a, b), run(api, c, a, b, scale), direct && api.type.whole() ? 0 : normOf(a) * normOf(b), scale);
    EXPECT_TRUE(good) << c;
    return bool(good);
}

// Whether results are exact of few numbers that are not 0, whose products and sums are whole numbers that floats hold: direct sums are, and transforms are not.
bool isDirect(const Api& api, const Case& c) {
    Vector a(api.type, size_t(c.m)), b(api.type, size_t(c.n));
    for (Vector* v : {&a, &b})
        for (int k = 0; k < 5 * api.type.parts; ++k) v->setPart(generator()() % v->parts(), Real(500 + generator()() % 700));
    if (c.op < kCross) b = a;
    return bool(close(oracle(c, a, b), run(api, c, a, b, -6), 0, -6));
}

class Convolution : public ::testing::TestWithParam<Api> {};
INSTANTIATE_TEST_SUITE_P(All, Convolution, ::testing::ValuesIn(kApis), [](const auto& api) { return std::string(api.param.name); });

// ---- tests ----------------------------------------------------------------------------------------------------------------------------------

TEST_P(Convolution, EqualsItsSum) {
    const Api& api = GetParam();
    for (int m = 1; m <= 70; ++m) {
        for (const int n : {1, 2, m, 71, 200}) ASSERT_TRUE(check(api, conv(m, n)) && check(api, conv(n, m)));
        for (const int len : {1, 2, 7, 16, 71})
            for (const Op op : {kAuto, kByLength, kByOverlap}) ASSERT_TRUE(check(api, autoCorr(op, m, len)));
    }
    for (int m = 1; m <= 40; ++m)
        for (const int n : {1, 2, 9, 40, 70})
            for (const int len : {1, 3, 16, 17, 45, 120})
                for (const int first : {-m - 3, 1 - m, -m / 2, 0, n / 2, m + n - 9})
                    for (const Op op : {kCross, kBiased}) ASSERT_TRUE(check(api, {op, m, n, len, first}));
    for (const int first : {INT_MIN, INT_MIN + 1, -70, -50, 60, INT_MAX - 1, INT_MAX})
        for (const Op op : {kCross, kBiased}) ASSERT_TRUE(check(api, {op, 50, 60, 30, first}));
}

TEST_P(Convolution, OfLongVectorsEqualsItsSum) {
    for (const Case& c : {conv(255, 256), conv(17, 4095), conv(63, 4096), conv(9000, 50), cross(600, 1100, 250, 300), cross(1100, 600, 250, -900),
                          cross(1500, 40, 1539, -1499), cross(40, 1500, 1539, -39), cross(1200, 1200, 250, -125), cross(513, 513, 20, -10)})
        check(GetParam(), c);
    for (const Case& c :
         {autoCorr(kByOverlap, 160, 11), autoCorr(kAuto, 140, 140), autoCorr(kAuto, 1024, 64), autoCorr(kByOverlap, 1500, 150), autoCorr(kByLength, 513, 100)})
        check(GetParam(), c);
    for (const Case& c : {biased(4, 45, 41, 4), biased(11, 50, 40, 10), biased(16, 56, 40, 16), biased(31, 70, 40, 30), biased(31, 110, 80, 30),
                          biased(60, 60, 60, 0), biased(100, 10, 91, 9), biased(700, 600, 1299, 0), biased(700, 1500, 40, 650), biased(1500, 600, 900, 77)})
        check(GetParam(), c);
    for (const Case& c : {conv(256, 257), conv(64, 449), conv(2048, 70), conv(300, 899), conv(300, 900), conv(64, 4097), conv(10000, 100), conv(128, 384),
                          cross(600, 700, 1299, -599), cross(700, 600, 1500, -800), cross(600, 600, 650, -100), autoCorr(kAuto, 900, 900),
                          autoCorr(kByLength, 1023, 1100), autoCorr(kByOverlap, 1025, 870)})
        check(GetParam(), c, false);
}

// Lags of a cross-correlation count times the shorter over the longer length, and without the zeros on either side.
TEST_P(Convolution, TransformsFromItsThresholdsOn) {
    const int most = GetParam().mostLags, few = GetParam().fewestLags;
    for (const Case& c :
         {conv(64, 448), conv(255, 257), conv(63, 450), conv(63, 4097), biased(700, 600, 1299, 0), cross(most, most, most, 0), cross(most, most, 5 * most, 0),
          cross(900, 900, most, -40), cross(900, 1800, 2 * most + 1, 0), autoCorr(kAuto, 1000, few - 1), autoCorr(kAuto, few - 1, 1000)})
        EXPECT_TRUE(!GetParam().has(c.op) || isDirect(GetParam(), c)) << c;
    for (const Case& c : {conv(64, 449), conv(256, 257), conv(600, 64), cross(900, 900, most + 1, -40), cross(1800, 900, 2 * most + 2, -1500),
                          autoCorr(kAuto, 1000, few), autoCorr(kAuto, few, 1000)})
        EXPECT_FALSE(GetParam().has(c.op) && isDirect(GetParam(), c)) << c;
}

// From three times the shorter length on by blocks: an infinity reaches the results of its own, or all of them.
TEST(Conv, GoesByBlocks) {
    for (const auto& [m, n, reached] : {std::tuple{256, 767, 1022}, {256, 768, 769}, {100, 2000, 413}, {64, 449, 193}}) {
        Vector a(kSingle.type, size_t(m)), b(kSingle.type, size_t(n));
        a.setPart(0, 0.5L), b.setPart(0, INFINITY);
        const Vector y = run(kSingle, conv(m, n), a, b, 0);
        EXPECT_TRUE(same(y, run(kSingle, conv(n, m), b, a, 0)));
        for (int i = 0; i < m + n - 1; ++i) ASSERT_EQ(i >= reached, std::isfinite(y.part(size_t(i)))) << m << " and " << n << ", at " << i;
    }
}

TEST_P(Convolution, IsTheSameByAnyNumberOfThreads) {
    const int before = tevGetNumThreads();
    for (const Case& c : {conv(64, 4096), conv(64, 4097), conv(100, 20001), conv(1300, 4200)}) {
        if (!GetParam().has(kConv)) continue;
        const Vector a = randomVector(GetParam().type, size_t(c.m)), b = randomVector(GetParam().type, size_t(c.n));
        tevSetNumThreads(1);
        const Vector want = run(GetParam(), c, a, b, 20);
        for (const int threads : {2, 3, 1000}) {
            tevSetNumThreads(threads);
            EXPECT_TRUE(same(want, run(GetParam(), c, a, b, 20))) << c << ", " << threads << " threads";
        }
    }
    tevSetNumThreads(before);
}

// 485 * 26131 / 33004 is 384 where it is rounded upward.
TEST_P(Convolution, ControlWordsChangeNothing) {
    for (const Case& c : {conv(20, 500), conv(100, 500), conv(300, 500), cross(20, 900, 1200, -300), cross(900, 900, 1200, -300), cross(485, 33004, 26131, 0),
                          autoCorr(kByLength, 20, 900), autoCorr(kByLength, 900, 900), autoCorr(kByOverlap, 20, 900), autoCorr(kByOverlap, 900, 900)}) {
        const Vector a = randomVector(GetParam().type, size_t(c.m)), b = randomVector(GetParam().type, size_t(c.n));
        if (GetParam().has(c.op)) expectOwnModes([&] { return run(GetParam(), c, a, b, 16).bytes; });
    }
}

// Quotients are not rounded before they are scaled: 9 / 3 * 2, 9 / 2 * 2, 14 / 3 / 2 and so on.
TEST(AutoCorr, DividesBeforeItScales) {
    Vector x(kShort.type, 3);   // of sums 14, 9 and 2
    for (size_t i = 0; i < 3; ++i) x.setPart(i, std::array{1, 3, 2}[i]);
    for (const auto& [c, scale, want] : {std::tuple{autoCorr(kByLength, 3, 3), -1, std::vector<Value>{9, 6, 1}},
                                         {autoCorr(kByOverlap, 3, 4), -1, {9, 9, 4, 0}},
                                         {autoCorr(kByLength, 3, 3), 1, {2, 2, 0}}})
        EXPECT_TRUE(close(want, run(kShort, c, x, x, scale), 0, 0));
}

// Lengths are looked at before vectors: these are short.
TEST_P(Convolution, RejectsBadArguments) {
    const Vector four(GetParam().type, 4);
    const Ptr x = four;
    Guarded<uint8_t> r(64);
    for (const Op op : {kAuto, kByLength, kByOverlap, kCross, kConv, kBiased}) {
        if (!GetParam().has(op)) continue;
        const auto call = [&](Ptr a, int m, Ptr b, int n, Ptr y, int len) { return GetParam()(op, a, m, b, n, y, len, 0, 0); };
        expectEach(StatusNullPtr, {call(nullptr, 0, x, 0, r.data(), 0), call(x, 0, x, 0, nullptr, 0), call(x, 0, op < kCross ? x : nullptr, 0, nullptr, 0)});
        expectEach(StatusBadSize, {call(x, 0, x, 4, r.data(), 4), call(x, INT_MIN, x, 4, r.data(), 4)});
        if (op >= kCross) expectEach(StatusBadSize, {call(x, 4, x, 0, r.data(), 4), call(x, 4, x, -1, r.data(), 4)});
        if (op == kConv) expectEach(StatusBadSize, {call(x, INT_MAX, x, 2, r.data(), 0), call(x, INT_MAX, x, INT_MAX, r.data(), 0)});
        if (op == kConv) expectEach(StatusFftOrder, {call(x, 1 << 30, x, 1 << 30, r.data(), 0), call(x, 530000000, x, 1600000000, r.data(), 0)});
        if (op != kConv) expectEach(StatusBadSize, {call(x, 4, x, 4, r.data(), 0), call(x, 4, x, 4, r.data(), INT_MIN)});
        if (op <= kCross) expectEach(StatusFftOrder, {call(x, INT_MAX, x, INT_MAX, r.data(), 900), call(x, (1 << 29) + 1, x, (1 << 29) + 1, r.data(), 900)});
        if (op <= kConv) expectEach(StatusNoMemory, {call(x, 1 << 29, x, 1 << 29, r.data(), 900)});
    }
    EXPECT_TRUE(r.untouched());
}

// At a distance from its sources and in the place of either.
TEST(ConvCyclic, EqualsItsSum) {
    struct Row {
        Status (*f)(Ptr, Ptr, Ptr, Scale);
        Type x, h;
        size_t n;
    };
    for (const Row& r : {Row{erased<tevsConvCyclic8x8_32f>, typeOf<float>(), typeOf<float>(), 8},
                         Row{erased<tevsConvCyclic4x4_32f32fc>, typeOf<float>(), typeOf<Complex32f>(), 4},
                         Row{erased<tevsConvCyclic8x8_16s_Sfs>, typeOf<int16_t>(), typeOf<int16_t>(), 8}})
        for (int turn = 0; turn < 200; ++turn) {
            Vector x = randomVector(r.x, r.n), h = randomVector(r.h, r.n);
            if (turn % 20 < 10 && x.type.whole())
                for (size_t i = 0; i < r.n; ++i) x.setPart(i, INT16_MIN), h.setPart(i, INT16_MIN);
            const auto a = numbers(x), b = numbers(h);
            std::vector<Value> want(r.n);
            for (size_t i = 0; i < r.n * r.n; ++i) want[i % r.n] += a[i / r.n] * b[(i % r.n + r.n - i / r.n) % r.n];
            const Scale scale{std::array{0, 1, 15, 18, 33, 34, -3, -40, INT_MIN, INT_MAX}[size_t(turn) % 10]};
            x.bytes.resize(h.bytes.size());   // has room for complex results
            for (const int place : {0, 1, 2}) {
                Guarded<uint8_t> at[] = {h.bytes, x.bytes, h.bytes};
                EXPECT_EQ(r.f(place == 1 ? at[1].data() : x.at(0), place == 2 ? at[2].data() : h.at(0), at[place].data(), scale), StatusOk);
                ASSERT_TRUE(close(want, Vector(r.h, at[place].values()), x.type.whole() ? 0 : 8, std::clamp(scale.of, -100, 100))) << turn << ", " << place;
            }
        }
}

}   // namespace
