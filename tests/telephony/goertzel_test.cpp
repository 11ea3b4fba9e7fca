#include <algorithm>
#include <climits>
#include <cmath>
#include <complex>
#include <numbers>

#include "support/data.h"
#include "support/guarded.h"

using namespace test;

namespace {

using Value = std::complex<long double>;

long double reOf(auto x) {
    if constexpr (std::is_arithmetic_v<decltype(x)>)
        return x;
    else
        return x.re;
}
long double imOf(auto x) {
    if constexpr (std::is_arithmetic_v<decltype(x)>)
        return 0;
    else
        return x.im;
}

// The recurrence as it is defined, in extended precision, and the sum of magnitudes that errors are measured by.
template <class S> struct Recurrence {
    Value y;
    long double size = 0;
    Recurrence(const std::vector<S>& x, double f) {
        const long double omega = 6.283185307179586 * f, c = std::cos(omega), s = std::sin(omega);
        Value s1, s2;
        for (const S& v : x) {
            const Value z(reOf(v), imOf(v)), next = z + 2 * c * s1 - s2;
            s2 = s1;
            s1 = next;
            size += std::abs(z);
        }
        y = Value(c, s) * s1 - s2;
    }
};

// The definition's sum, which does not lose digits in long signals.
template <class S> Value sumOf(const std::vector<S>& x, double f) {
    const long double omega = 6.283185307179586 * f;
    Value y;
    for (size_t n = 0; n < x.size(); ++n) y += Value(reOf(x[n]), imOf(x[n])) * std::polar<long double>(1, omega * (long double)(x.size() - n));
    return y;
}

template <class S> constexpr double kBound = 0x1p-21;   // of the sum of magnitudes, what the header says
template <> constexpr double kBound<Complex64f> = 0x1p-49;

template <class D>::testing::AssertionResult near(Value want, D got, long double tolerance) {
    const Value g(got.re, got.im);
    if (std::abs(g - want) <= tolerance) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "want " << want << " within " << tolerance << ", got " << g;
}

int16_t scaled(long double x, int scale) {
    return int16_t(std::nearbyint(std::clamp<long double>(std::ldexp(x, -std::clamp(scale, -9999, 9999)), -32768, 32767)));
}

constexpr float kFrequencies[] = {0, 0.25f, 0.5f, 0.75f, 1.0f / 64, 3.0f / 32, 697.0f / 8000, 1e-5f, 0.4999f, 0.99999994f, 0.3217f};

// Any form as f(src, len, result, frequency).
template <class S, class D, class F> void sweepFloats(F f) {
    size_t turn = 0;
    for (int len = 1; len <= 140; ++len)
        for (int offset = 0; offset < 3; ++offset) {
            const std::vector<S> x = randomVector<S>(size_t(len));
            const Guarded<S> src(x, Place{offset * int(sizeof(S)), offset == 0});
            Guarded<D> y(1, Place{offset == 1, true});
            const double frequency = kFrequencies[turn++ % std::size(kFrequencies)];
            ASSERT_EQ(f(src.data(), len, y.data(), frequency), StatusOk);
            ASSERT_TRUE(y.intact());
            const Recurrence<S> want(x, frequency);
            ASSERT_TRUE(near(want.y, y.values()[0], want.size * kBound<S>)) << "length " << len << " at " << frequency;
        }
    for (int len : {1003, 65536 + 77}) {   // past the blocks that are put together
        const std::vector<S> x = randomVector<S>(size_t(len));
        for (const double frequency : {0.0f, 0.5f, 1e-5f, 0.3217f}) {
            std::vector<D> y;
            for (int offset = 0; offset < 4; ++offset) {
                const Guarded<S> src(x, Place{offset * int(sizeof(S)), true});
                y.emplace_back();
                ASSERT_EQ(f(src.data(), len, &y.back(), frequency), StatusOk);
                ASSERT_EQ(std::memcmp(&y.back(), y.data(), sizeof(D)), 0) << offset;   // wherever it lies
            }
            ASSERT_TRUE(near(sumOf(x, frequency), y[0], Recurrence<S>(x, frequency).size * kBound<S>)) << len << " at " << frequency;
        }
    }
}

TEST(Goertzel, Floats) {
    sweepFloats<float, Complex32f>([](const float* x, int len, Complex32f* y, double f) { return tevsGoertz_32f(x, len, y, float(f)); });
    sweepFloats<Complex32f, Complex32f>([](const Complex32f* x, int len, Complex32f* y, double f) { return tevsGoertz_32fc(x, len, y, float(f)); });
    sweepFloats<Complex64f, Complex64f>(tevsGoertz_64fc);
}

// The second frequency's value is never what the first one's would be.
TEST(Goertzel, TwoFrequenciesAreTwoCalls) {
    for (int len : {1, 7, 31, 32, 33, 205, 1003}) {
        const auto x = randomVector<Complex32f>(size_t(len));
        const auto xx = randomVector<Complex64f>(size_t(len));
        const auto shorts = randomVector<Complex16s>(size_t(len));
        const float f[2] = {0.3f, 0.0871f};
        const double ff[2] = {0.3, 0.0871};
        const int16_t q[2] = {9830, 2854};
        const float fromQ[2] = {9830 / 32768.0f, 2854 / 32768.0f};
        Guarded<Complex32f> y(2);
        Guarded<Complex64f> yy(2);
        Guarded<Complex16s> s(2), sq(2);
        ASSERT_EQ(tevsGoertzTwo_32fc(x.data(), len, y, f), StatusOk);
        ASSERT_EQ(tevsGoertzTwo_64fc(xx.data(), len, yy, ff), StatusOk);
        ASSERT_EQ(tevsGoertzTwo_16sc_Sfs(shorts.data(), len, s, fromQ, 5), StatusOk);
        ASSERT_EQ(tevsGoertzTwoQ15_16sc_Sfs(shorts.data(), len, sq, q, 5), StatusOk);
        std::vector<Complex32f> one(2);
        std::vector<Complex64f> oneOne(2);
        std::vector<Complex16s> oneS(2), oneQ(2);
        for (int i = 0; i < 2; ++i) {
            tevsGoertz_32fc(x.data(), len, &one[size_t(i)], f[i]);
            tevsGoertz_64fc(xx.data(), len, &oneOne[size_t(i)], ff[i]);
            tevsGoertz_16sc_Sfs(shorts.data(), len, &oneS[size_t(i)], fromQ[i], 5);
            ASSERT_EQ(tevsGoertzQ15_16sc_Sfs(shorts.data(), len, &oneQ[size_t(i)], q[i], 5), StatusOk);
        }
        EXPECT_TRUE(same(one, y.values()) && same(oneOne, yy.values()) && same(oneS, s.values()) && same(oneS, sq.values()) && same(oneS, oneQ)) << len;
        EXPECT_TRUE(y.intact() && yy.intact() && s.intact() && sq.intact());
    }
}

// Where the exact value is not within the error of the tie between two integers, the integer is the nearest one.
template <class S, class F> void sweepIntegers(F f) {
    size_t turn = 0;
    for (int scale : {0, 1, -3, 5, 9, 15, 20, 31, 40, 190, INT_MAX, -40, INT_MIN})
        for (int len : {1, 2, 3, 8, 17, 31, 64, 65, 205, 1003}) {
            std::vector<S> x = randomVector<S>(size_t(len));
            const Guarded<S> src(x);
            Guarded<Complex16s> y(1);
            const double frequency = kFrequencies[turn++ % std::size(kFrequencies)];
            ASSERT_EQ(f(src.data(), len, y.data(), float(frequency), scale), StatusOk);
            ASSERT_TRUE(y.intact());
            const Recurrence<S> want(x, frequency);
            const long double slack = want.size * 0x1p-21;
            const auto fits = [=](long double exact, int16_t got) { return got >= scaled(exact - slack, scale) && got <= scaled(exact + slack, scale); };
            ASSERT_TRUE(fits(want.y.real(), y.values()[0].re) && fits(want.y.imag(), y.values()[0].im))
                << want.y << " at " << scale << ", got " << y.values()[0].re << ", " << y.values()[0].im;
        }
}
TEST(Goertzel, Integers) {
    sweepIntegers<int16_t>(tevsGoertz_16s_Sfs);
    sweepIntegers<Complex16s>(tevsGoertz_16sc_Sfs);
}

TEST(Goertzel, KnownValues) {
    const int16_t x[6] = {3, 4, 5, 6, 7, -22}, one = 1000, zeros[5] = {};
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
    tevsGoertz_16s_Sfs(x + 5, 1, &y, 0.0f, -11);
    EXPECT_EQ(y.re, -32768);
    EXPECT_EQ(tevsGoertz_16s_Sfs(zeros, 5, &y, 0.3f, INT_MIN), StatusOk);
    EXPECT_TRUE(y.re == 0 && y.im == 0);
    tevsGoertz_16s_Sfs(&one, 1, &y, 0.25f, 0);   // one sample turned by its own factor
    EXPECT_TRUE(y.re == 0 && y.im == 1000);
    EXPECT_EQ(tevsGoertz_16s_Sfs(&one, 1, &y, 0.99999994f, 0), StatusOk);
    EXPECT_TRUE(y.re == 1000 && y.im == 0);
}

TEST(Goertzel, BadFrequencies) {
    Guarded<Complex32f> y(2);
    Guarded<Complex64f> yy(2);
    Guarded<Complex16s> s(2);
    const Complex32f x{1, 1};
    const Complex64f xx{1, 1};
    const Complex16s z{1, 1};
    EXPECT_EQ(tevsGoertzQ15_16sc_Sfs(nullptr, 0, nullptr, -1, 0), StatusRelFreq);
    for (double bad : {-0x1p-149, 1.0, 2.0, -1.0, double(NAN), double(INFINITY), -double(INFINITY)}) {
        const float b = float(bad);
        EXPECT_EQ(tevsGoertz_32f(&x.re, 0, y, b), StatusBadSize);
        EXPECT_EQ(tevsGoertz_32f(&x.re, 1, y, b), StatusRelFreq);
        EXPECT_EQ(tevsGoertz_32fc(&x, 1, y, b), StatusRelFreq);
        EXPECT_EQ(tevsGoertz_64fc(&xx, 1, yy, bad), StatusRelFreq);
        EXPECT_EQ(tevsGoertz_16s_Sfs(&z.re, 1, s, b, 0), StatusRelFreq);
        EXPECT_EQ(tevsGoertz_16sc_Sfs(&z, 1, s, b, 0), StatusRelFreq);
        for (int at = 0; at < 2; ++at) {
            const float f[2] = {at ? 0.25f : b, at ? b : 0.25f};
            const double ff[2] = {at ? 0.25 : bad, at ? bad : 0.25};
            EXPECT_EQ(tevsGoertzTwo_32fc(&x, 1, y, f), StatusRelFreq);
            EXPECT_EQ(tevsGoertzTwo_64fc(&xx, 1, yy, ff), StatusRelFreq);
            EXPECT_EQ(tevsGoertzTwo_16sc_Sfs(&z, 1, s, f, 0), StatusRelFreq);
            EXPECT_EQ(tevsGoertzTwo_32fc(&x, 0, y, f), StatusBadSize);
        }
    }
    for (int at = 0; at < 2; ++at) {
        const int16_t q[2] = {int16_t(-at), int16_t(at - 1)};
        EXPECT_EQ(tevsGoertzTwoQ15_16sc_Sfs(nullptr, 0, s, q, 0), StatusRelFreq);
    }
    EXPECT_TRUE(y.untouched() && yy.untouched() && s.untouched());
}

// The same to the bit at every level and in both ABIs.
TEST(Goertzel, SameEverywhere) {
    generator().seed(3);
    const auto shorts = randomVector<int16_t>(4000);
    const auto floats = randomVector<float>(4000);
    const auto doubles = randomVector<Complex64f>(2000);
    uint64_t h = 14695981039346656037u;
    const auto add = [&](const auto& y) {
        for (size_t i = 0; i < sizeof y; ++i) h = (h ^ reinterpret_cast<const unsigned char*>(&y)[i]) * 1099511628211u;
    };
    for (float f : {0.0f, 0.1f, 0.25f, 0.77f, 0.5f})
        for (int len : {1, 5, 205, 2000}) {
            Complex16s s;
            Complex32f y;
            Complex64f z;
            tevsGoertz_16s_Sfs(shorts.data(), len, &s, f, 7);
            add(s);
            tevsGoertz_32f(floats.data(), len, &y, f);
            add(y);
            tevsGoertz_32fc(reinterpret_cast<const Complex32f*>(floats.data()), len, &y, f);
            add(y);
            tevsGoertz_64fc(doubles.data(), len, &z, double(f));
            add(z);
        }
    EXPECT_EQ(h, 0x28dc326758387f1a) << std::hex << h;
}

}   // namespace
