#include <algorithm>
#include <climits>
#include <cmath>
#include <complex>
#include <utility>

#include "support/reduction.h"

using namespace test;

namespace {

using Value = std::complex<long double>;

// The recurrence as it is defined, in extended precision, and the sum of magnitudes that errors are measured by.
template <class S> struct Recurrence {
    Value y;
    long double size = 0;
    Recurrence(const std::vector<S>& x, double f) {
        const long double omega = 6.283185307179586 * f, c = std::cos(omega), s = std::sin(omega);
        Value s1, s2;
        for (const S& v : x) {
            const auto [re, im] = complexOf<long double>(v);
            const Value z(re, im), next = z + 2 * c * s1 - s2;
            s2 = s1;
            s1 = next;
            size += std::abs(z);
        }
        y = Value(c, s) * s1 - s2;
    }
};

// e^(j omega n) for n = 0 .. count <= 2^21, of exact angles.
std::vector<Value> turns(long double omega, size_t count) {
    std::vector<Value> z(count + 1);
    Value block;
    for (size_t n = 0; n <= count; ++n) {
        if (n % 1024 == 0) block = std::polar<long double>(1, omega * n);
        z[n] = n < 1024 ? std::polar<long double>(1, omega * n) : z[n % 1024] * block;
    }
    return z;
}

// The definition's sum, which does not lose digits in long signals: by blocks.
template <class S> Value sumOf(const std::vector<S>& x, double f) {
    const auto z = turns(6.283185307179586 * f, x.size());
    Value y, block;
    for (size_t n = 0; n < x.size(); ++n) {
        const auto [re, im] = complexOf<long double>(x[n]);
        block += Value(re, im) * z[x.size() - n];
        if (n % 1024 == 0) y += std::exchange(block, Value());
    }
    return y + block;
}

// Of the sum of magnitudes, of samples of like size; what the header promises of any is eight times that.
template <class S> constexpr double kBound = 0x1p-21;
template <> constexpr double kBound<Complex64f> = 0x1p-49;

constexpr float kFrequencies[] = {0, 0.25f, 0.5f, 0.75f, 1.0f / 64, 3.0f / 32, 697.0f / 8000, 1e-5f, 0.4999f, 0.99999994f, 0.3217f};

template <class S, class D, class F> void floats(Status (*f)(const S*, int, D*, F)) {
    const auto check = [&](const std::vector<S>& x, double frequency, auto exact) {
        const int len = int(x.size());
        D y;
        ASSERT_EQ(f(x.data(), len, &y, F(frequency)), StatusOk);
        const Value want = exact(x, frequency);
        ASSERT_TRUE(fits({{want.real(), want.imag()}, Recurrence<S>(x, frequency).size * kBound<S>}, y)) << "length " << len << " at " << frequency;
    };
    for (int turn = 0; turn < 420; ++turn)
        check(randomVector<S>(size_t(turn / 3 + 1)), kFrequencies[size_t(turn) % std::size(kFrequencies)],
              [](const auto& x, double w) { return Recurrence<S>(x, w).y; });
    // Blocks that are put together, with and without a rest.
    for (int len : {256, 257, 512, 513, 768, 1003, 1024, 1025, 2048, (std::is_same_v<S, Complex64f> ? 1 << 20 : 1 << 16) + 77})
        for (const double frequency : {0.0f, 0.5f, 1e-5f, 0.3217f}) {
            auto x = randomVector<S>(size_t(len));
            check(x, frequency, sumOf<S>);
            // The tone itself, of which no two errors cancel.
            const auto z = turns(6.283185307179586 * frequency, x.size());
            for (size_t n = 0; n < x.size(); ++n) {
                const auto part = reinterpret_cast<Part<S>*>(&x[n]);
                part[0] = Part<S>(z[n].real());
                if (kParts<S> == 2) part[1] = Part<S>(z[n].imag());
            }
            check(x, frequency, sumOf<S>);
        }
}
TEST(Goertzel, Floats) {
    floats(tevsGoertz_32f);
    floats(tevsGoertz_32fc);
    floats(tevsGoertz_64fc);
}

// A few samples so large that every one after them in the lanes' sums is half a unit of those.
template <class S, class D, class F> void oneSided(Status (*f)(const S*, int, D*, F), int len, Part<S> small) {
    for (int at = 0; at < len; at += 4) {
        std::vector<S> x(size_t(len), S{});
        for (int n = 0; n < len; ++n) *reinterpret_cast<Part<S>*>(&x[size_t(n)]) = n >= at && n < at + 8 ? Part<S>(32) : small;
        D y;
        ASSERT_EQ(f(x.data(), len, &y, F(0)), StatusOk);
        const Value want = sumOf<S>(x, 0);
        ASSERT_TRUE(fits({{want.real(), want.imag()}, Recurrence<S>(x, 0).size * 8 * kBound<S>}, y)) << len << " from " << at;
    }
}
TEST(Goertzel, FewLargeSamples) {
    oneSided(tevsGoertz_32f, 1024, 0x1p-19f);
    oneSided(tevsGoertz_32fc, 512, 0x1p-19f);
    oneSided(tevsGoertz_64fc, 256, 0x1p-48);
}

// The second frequency's value is never what the first one's would be.
template <class S, class D, class F, class... Scale>
void two(Status (*both)(const S*, int, D*, const F*, Scale...), Status (*one)(const S*, int, D*, F, Scale...), std::array<F, 2> f) {
    for (int len : {1, 7, 31, 32, 33, 205, 1003}) {
        const auto x = randomVector<S>(size_t(len));
        std::vector<D> want(2), got(2);
        ASSERT_EQ(both(x.data(), len, got.data(), f.data(), Scale(5)...), StatusOk);
        for (size_t i = 0; i < 2; ++i) ASSERT_EQ(one(x.data(), len, &want[i], f[i], Scale(5)...), StatusOk);
        EXPECT_TRUE(same(want, got)) << len;
    }
}
TEST(Goertzel, TwoFrequenciesAreTwoCalls) {
    two(tevsGoertzTwo_32fc, tevsGoertz_32fc, {0.3f, 0.0871f});
    two(tevsGoertzTwo_64fc, tevsGoertz_64fc, {0.3, 0.0871});
    two(tevsGoertzTwo_16sc_Sfs, tevsGoertz_16sc_Sfs, {0.3f, 0.0871f});
    two(tevsGoertzTwoQ15_16sc_Sfs, tevsGoertzQ15_16sc_Sfs, {9830, 2854});
    for (int16_t q : {9830, 2854, 0, 32767}) {
        const auto x = randomVector<Complex16s>(205);
        std::vector<Complex16s> want(1), got(1);
        tevsGoertz_16sc_Sfs(x.data(), 205, want.data(), q / 32768.0f, 5);
        tevsGoertzQ15_16sc_Sfs(x.data(), 205, got.data(), q, 5);
        EXPECT_TRUE(same(want, got)) << q;
    }
}

// Where the exact value is not within the error of the tie between two integers, the integer is the nearest one.
constexpr auto integers = []<class S>(Status (*f)(const S*, int, Complex16s*, float, int)) {
    size_t turn = 0;
    for (int scale : {0, 1, -3, 5, 9, 15, 20, 31, 40, 190, INT_MAX, -40, INT_MIN})
        for (int len : {1, 2, 3, 8, 17, 31, 64, 65, 205, 1003}) {
            const auto x = randomVector<S>(size_t(len));
            Complex16s y;
            const float frequency = kFrequencies[turn++ % std::size(kFrequencies)];
            ASSERT_EQ(f(x.data(), len, &y, frequency, scale), StatusOk);
            const Recurrence<S> want(x, frequency);
            const long double slack = want.size * 0x1p-21;
            const auto fits = [=](long double exact, int16_t got) {
                return got >= nearest<int16_t>(exact - slack, scale) && got <= nearest<int16_t>(exact + slack, scale);
            };
            ASSERT_TRUE(fits(want.y.real(), y.re) && fits(want.y.imag(), y.im)) << want.y << " at " << scale << ", got " << y.re << ", " << y.im;
        }
};
TEST(Goertzel, Integers) { each(integers, tevsGoertz_16s_Sfs, tevsGoertz_16sc_Sfs); }

TEST(Goertzel, KnownValues) {
    const int16_t x[6] = {3, 4, 5, 6, 7, -22}, zeros[5] = {};
    Complex16s y;
    struct Row {
        int len, scale;
        int16_t re;
    };
    // At frequency 0 the sum, which is exact, so that ties go to the even integer.
    for (const Row r : {Row{2, 0, 7}, {2, 1, 4}, {3, 3, 2}, {1, 1, 2}, {5, 1, 12}, {6, 1, 2}, {5, -11, 32767}, {6, -INT_MAX, 32767}, {2, INT_MAX, 0}}) {
        EXPECT_EQ(tevsGoertz_16s_Sfs(x, r.len, &y, 0.0f, r.scale), StatusOk);
        EXPECT_TRUE(y.re == r.re && y.im == 0) << r.len << " " << r.scale << ": " << y.re;
    }
    EXPECT_EQ(tevsGoertz_16s_Sfs(zeros, 5, &y, 0.3f, INT_MIN), StatusOk);
    EXPECT_TRUE(y.re == 0 && y.im == 0);
}

constexpr auto refusals = []<class S, class D, class F, class... Scale>(Status (*f)(const S*, int, D*, F, Scale...)) {
    using T = std::remove_const_t<std::remove_pointer_t<F>>;
    const S x{};
    D y[2] = {{7, 7}, {7, 7}};
    for (double bad : {-0x1p-149, 1.0, 2.0, -1.0, double(NAN), double(INFINITY), -double(INFINITY)})
        for (int at : {0, 1}) {
            T frequencies[2] = {T(0.25), T(0.25)};
            frequencies[at] = T(bad);
            const auto call = [&](int len) {
                if constexpr (std::is_pointer_v<F>)
                    return f(&x, len, y, frequencies, Scale(0)...);
                else
                    return f(&x, len, y, T(bad), Scale(0)...);
            };
            EXPECT_EQ(call(0), StatusBadSize);
            EXPECT_EQ(call(1), StatusRelFreq) << bad;
        }
    EXPECT_TRUE(y[0].re == 7 && y[1].im == 7);
};
TEST(Goertzel, BadFrequencies) {
    each(refusals, tevsGoertz_32f, tevsGoertz_32fc, tevsGoertz_64fc, tevsGoertz_16s_Sfs, tevsGoertz_16sc_Sfs, tevsGoertzTwo_32fc, tevsGoertzTwo_64fc,
         tevsGoertzTwo_16sc_Sfs);
    // Of a format where negative ones are all that is bad, before the pointers.
    EXPECT_EQ(tevsGoertzQ15_16sc_Sfs(nullptr, 0, nullptr, -1, 0), StatusRelFreq);
    Complex16s y;
    for (const std::array<int16_t, 2> q : {std::array<int16_t, 2>{0, -1}, {-1, 0}})
        EXPECT_EQ(tevsGoertzTwoQ15_16sc_Sfs(nullptr, 0, &y, q.data(), 0), StatusRelFreq);
}

// The same to the bit at every level and in both ABIs.
TEST(Goertzel, SameEverywhere) {
    generator().seed(3);
    uint64_t h = 14695981039346656037u;
    const auto add = [&]<class S, class D, class F, class... Scale>(Status (*f)(const S*, int, D*, F, Scale...)) {
        const auto x = randomVector<S>(2000);
        for (const double frequency : {0.0, 0.1, 0.25, 0.77, 0.5})
            for (const int len : {1, 5, 205, 2000}) {
                D y;
                f(x.data(), len, &y, F(frequency), Scale(7)...);
                h = hashOf(&y, sizeof y, h);
            }
    };
    each(add, tevsGoertz_16s_Sfs, tevsGoertz_32f, tevsGoertz_32fc, tevsGoertz_64fc);
    EXPECT_EQ(h, 0x46362d89a096a6f8) << std::hex << h;
}

}   // namespace
