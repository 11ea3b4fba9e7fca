#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <functional>
#include <numbers>

#include "support/reduction.h"

using namespace test;

namespace {

using Exact = long double;

// ---- the weights by their formulas, n in the first half --------------------------------------------------------------------------------

Exact squareOfSine(int n, int len) {
    const Exact s = std::sin(n * std::numbers::pi_v<Exact> / (len - 1));
    return s * s;
}
Exact bartlett(int n, int len) { return 2 * Exact(n) / (len - 1); }
Exact hann(int n, int len) { return squareOfSine(n, len); }
Exact hamming(int n, int len) { return 0.08L + 0.92L * squareOfSine(n, len); }
Exact blackman(int n, int len, Exact alpha) {
    const Exact q = squareOfSine(n, len);
    return q + alpha * 4 * q * (1 - q);
}
Exact optimum(int len) {
    const Exact a = 0.5L / std::cos(std::numbers::pi_v<Exact> / (len - 1));
    return -a * a;
}

Exact sum(Exact x, const std::vector<Exact>& c) {
    Exact y = 0;
    for (size_t i = c.size(); i-- > 0;) y = y * x + c[i];
    return y;
}
// I0 with these coefficients.
struct Bessel {
    Exact far;
    std::vector<Exact> near, ahead;
    Exact operator()(Exact x) const {
        const Exact r = x / far;
        return x < far ? sum(r * r, near) : std::exp(x) / std::sqrt(x) * sum(1 / r, ahead);
    }
};
const std::vector<Exact> kFar32 = {0.39894228L, 0.01328592L, 0.00225319L, -0.00157565L, 0.00916281L, -0.02057706L, 0.02635537L, -0.01647633L, 0.00392377L};
const Bessel kPeak32{3.75L, {1, 3.5156229L, 3.0899424L, 1.2067492L, 0.2659732L, 0.0360768L, 0.0045813L}, kFar32};
const Bessel kElement32{3.75L, {1, 3.5156229L, 3.0899424L, 1.2067492L, 0.26687756L, 0.0360768L, 0.0045813L}, kFar32};
const Bessel kPeak64{4,
                     {0.9999999985L, 4.0000001935L, 3.9999959541L, 1.777809969L, 0.4443189384L, 0.0713758187L, 0.0075942968L, 0.0008267816L},
                     {0.3989422809L, 0.0124667783L, 0.0017623668L, 0.00026L, 0.0022585672L, -0.0128314822L, 0.0495811118L, -0.1209940805L, 0.1895476618L,
                      -0.1867783276L, 0.1113315511L, -0.0366694767L, 0.0051246015L}};
const Bessel kElement64{4,
                        {0.9999999985L, 4.000003096L, 3.9999959541L, 1.777809969L, 0.4443189384L, 0.0713758187L, 0.0075942968L, 0.000674193709375L},
                        {0.3989422809L, 0.0124667783L, 0.0017623668L, 0.00026L, 0.0022585681074049L, -0.0128314822L, 0.04958113163828737L, -0.1209940805L,
                         0.18954771930079328L, -0.1867783276L, 0.1113315511L, -0.0366694767L, 0.0051246015L}};
template <class T> constexpr bool kWide = std::is_same_v<Part<T>, double>;
template <class T> Exact kaiser(int n, int len, float alpha) {
    const Exact x = alpha * std::sqrt(Exact(n) * (len - 1 - n)), peak = Exact(float(len - 1) * alpha) / 2;
    return kWide<T> ? kElement64(x) / kPeak64(peak) : kElement32(x) / kPeak32(peak);
}

// ---- what a window makes of a sample ----------------------------------------------------------------------------------------------------

constexpr std::array kNextTo = {1 - 0x1p-48L, 1 + 0x1p-48L};

// `error` bounds a weight's, relative to the weight or, if absolute, to 1; 0: none but that of rounding to single precision, so that results are known to the bit.
template <class T> struct Window {
    const char* name;
    std::function<Status(const T*, T*, int)> call;
    std::function<Exact(int, int)> weight;
    int least = 3;
    bool threeAreZero = true;
    Exact error = 0;
    bool absolute = false;
};

// `error` bounds got's error relative to x. Where there is none, the weight is rounded to single precision; where it lies half-way between two numbers of that, either will do.
template <class T>::testing::AssertionResult fits(T x, Exact w, Exact error, T got) {
    if constexpr (Complex<T>) {
        const auto re = fits(x.re, w, error, got.re);
        return re ? fits(x.im, w, error, got.im) : re;
    } else {
        const auto stored = [](Exact v) { return std::is_integral_v<T> ? std::clamp<Exact>(std::nearbyint(float(v)), -32768, 32767) : v; };
        const bool known = std::any_of(kNextTo.begin(), kNextTo.end(), [=](Exact f) { return error == 0 && got == stored(float(w * f) * float(x)); });
        if (known || (error > 0 && std::fabs(got - stored(w * x)) <= (std::is_integral_v<T> ? std::ceil(error * std::fabs(x)) : error * std::fabs(x))))
            return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure() << x << " by " << w << ": " << got << ", off by " << double((got - w * x) / x);
    }
}

template <class T> void check(const Window<T>& window, int len) {
    const std::vector<T> x = randomVector<T>(size_t(len));
    std::vector<T> y(x.size());
    ASSERT_EQ(window.call(x.data(), y.data(), len), StatusOk);
    for (int n = 0; n < len; ++n) {
        const T &from = x[size_t(n)], &to = y[size_t(n)];
        if (2 * n + 1 == len || (len == 3 && window.threeAreZero)) {
            const T want = 2 * n + 1 == len ? from : T{};
            ASSERT_EQ(std::memcmp(&want, &to, sizeof to), 0) << window.name << " length " << len << " at " << n;
            continue;
        }
        const Exact w = window.weight(std::min(n, len - 1 - n), len);
        ASSERT_TRUE(fits(from, w, window.error * (window.absolute ? 1 : std::fabs(w)), to)) << window.name << " length " << len << " at " << n;
    }
}

template <class T> struct Names;
#define NAMES(T, code)                                                                                                       \
    template <> struct Names<T> {                                                                                            \
        static constexpr auto bartlett = tevsWinBartlett_##code, hann = tevsWinHann_##code, hamming = tevsWinHamming_##code; \
        static constexpr auto blackmanStd = tevsWinBlackmanStd_##code, blackmanOpt = tevsWinBlackmanOpt_##code;              \
        static constexpr auto blackman = tevsWinBlackman_##code, kaiser = tevsWinKaiser_##code;                              \
    };
NAMES(int16_t, 16s)
NAMES(Complex16s, 16sc)
NAMES(float, 32f)
NAMES(Complex32f, 32fc)
NAMES(double, 64f)
NAMES(Complex64f, 64fc)

template <class T> std::vector<Window<T>> windows() {
    using N = Names<T>;
    const Exact tight = kWide<T> ? 0x1p-48L : 0;
    const auto rounded = [](Exact a) { return kWide<T> ? Exact(double(a)) : Exact(float(a)); };
    std::vector<Window<T>> all = {
        {"Bartlett", N::bartlett, bartlett, 3, true, tight},
        {"Hann", N::hann, hann, 3, !kWide<T>, tight},
        {"Hamming", N::hamming, hamming, 3, false, tight},
        {"BlackmanStd", N::blackmanStd, [=](int n, int len) { return blackman(n, len, rounded(-0.16L)); }, 3, true, tight},
        {"BlackmanOpt", N::blackmanOpt, [=](int n, int len) { return blackman(n, len, rounded(optimum(len))); }, 4, true, kWide<T> ? tight : 0x1p-22L, true}};
    for (float alpha : {-0.16f, 0.75f, -2.5f, 0.0f})
        all.push_back({"Blackman", [=](const T* s, T* d, int len) { return N::blackman(s, d, len, alpha); },
                       [=](int n, int len) { return blackman(n, len, alpha); }, 3, true, tight * (1 + std::fabs(alpha)), true});
    for (float beta : {0.0f, 2.0f, 3.9f, 7.5f, 37.0f}) {   // the arguments at the middle: below and above where the forms change
        const auto alpha = [=](int len) { return len == 1 ? beta : 2 * beta / float(len - 1); };
        all.push_back({"Kaiser", [=](const T* s, T* d, int len) { return N::kaiser(s, d, len, alpha(len)); },
                       [=](int n, int len) { return kaiser<T>(n, len, alpha(len)); }, 1, false, kWide<T> ? 1e-13L : 1e-6L + 3e-7L * beta});
    }
    return all;
}

// Also the weights at the ends of a long window, where the cosine form would have none of its digits left; and the hash of results, which are the same everywhere.
template <class T> void checkWindows(uint64_t hash) {
    uint64_t h = 0;
    for (const auto& window : windows<T>()) {
        eachLength([&](int len) {
            if (len >= window.least) check(window, len);
        });
        for (int len : {1024, 1281, 1282, 1283, 40001}) check(window, len);
        if (window.error == 0 || (window.error < 1e-14L && !window.absolute)) check(window, 300001);
        for (int len : {17, 1003, 5000}) {
            std::vector<T> x(size_t(len), T{});
            for (size_t i = 0; i < x.size() * kParts<T>; ++i) reinterpret_cast<Part<T>*>(x.data())[i] = Part<T>(12345 - int(i % 7919));
            window.call(x.data(), x.data(), len);
            h = hashOf(x.data(), x.size() * sizeof(T), h);
        }
    }
    EXPECT_EQ(h, hash);
}
TEST(Window, IsTheFormulaAndTheSameEverywhere) {
    checkWindows<int16_t>(0xc14e5894ea6fd7af);
    checkWindows<Complex16s>(0x872069bd5a57cf41);
    checkWindows<float>(0xf23d283916bc778f);
    checkWindows<Complex32f>(0xeb925b42bcad64ee);
    checkWindows<double>(0x78f5c0ce56a1db4c);
    checkWindows<Complex64f>(0x5eba732a91e5a1b);
}

// ---- telling cases ------------------------------------------------------------------------------------------------------------------------

template <class T> std::vector<T> of(Status (*f)(T*, int), std::vector<T> x) {
    EXPECT_EQ(f(x.data(), int(x.size())), StatusOk);
    return x;
}

TEST(Window, ThreeSamples) {
    EXPECT_TRUE(same(of(tevsWinHann_64f_I, {-2.0, 5, 3}), {-0.0, 5, 0}));
    EXPECT_TRUE(same(of(tevsWinBartlett_64f_I, {-2.0, 5, -INFINITY}), {0.0, 5, 0}));
    EXPECT_TRUE(same(of(tevsWinBlackmanStd_64f_I, {-2.0, -0.0, -3}), {0.0, -0.0, 0}));
}

TEST(Kaiser, RangeOfTheParameter) {
    std::vector<float> f(9, 1.0f);
    std::vector<double> d(9, 1.0);
    std::vector<int16_t> s(9, 10000);
    EXPECT_EQ(tevsWinKaiser_32f_I(f.data(), 9, 10), StatusHugeWindow);
    EXPECT_EQ(f[0], 1);
    EXPECT_EQ(tevsWinKaiser_32f_I(f.data(), 9, -9.5f), StatusOk);
    EXPECT_EQ(tevsWinKaiser_32f_I(f.data(), 8, 10), StatusOk);
    EXPECT_EQ(tevsWinKaiser_64f_I(d.data(), 9, 77.001f), StatusHugeWindow);
    EXPECT_EQ(tevsWinKaiser_16s_I(s.data(), 9, INFINITY), StatusHugeWindow);
    EXPECT_EQ(tevsWinKaiserQ15_16s_I(s.data(), 9, INT_MIN), StatusHugeWindow);
    // As far as 16 bits may go, e^x has left single precision: the weights have not.
    EXPECT_EQ(tevsWinKaiser_16s_I(s.data(), 9, -77), StatusOk);
    for (int n = 0; n < 9; ++n) EXPECT_EQ(s[size_t(n)], n == 4 ? 10000 : int(std::nearbyint(10000 * ::kaiser<int16_t>(n, 9, 77)))) << n;
    // A parameter that is no number fills 16 bits with zeros, but for the middle; one sample is copied with any.
    EXPECT_TRUE(same(of<int16_t>([](int16_t* x, int len) { return tevsWinKaiser_16s_I(x, len, NAN); }, {5, 6, 7}), {0, 6, 0}));
    const float one = -7;
    float copy = 0;
    EXPECT_EQ(tevsWinKaiser_32f(&one, &copy, 1, INFINITY), StatusOk);
    EXPECT_EQ(copy, -7);
}

TEST(Blackman, FixedPoint) {
    const auto x = randomVector<int16_t>(202);
    const auto z = reinterpret_cast<const Complex16s*>(x.data());
    std::vector<int16_t> y(202), want(202);
    for (int alphaQ15 : {-5243, 32768, INT_MIN, INT_MAX})
        for (int len : {3, 4, 100, 101}) {
            tevsWinBlackmanQ15_16s(x.data(), y.data(), len, alphaQ15);
            tevsWinBlackman_16s(x.data(), want.data(), len, float(alphaQ15) / 32768);
            EXPECT_EQ(y, want) << alphaQ15;
            tevsWinBlackmanQ15_16sc(z, reinterpret_cast<Complex16s*>(y.data()), len, alphaQ15);
            tevsWinBlackman_16sc(z, reinterpret_cast<Complex16s*>(want.data()), len, float(alphaQ15) / 32768);
            EXPECT_EQ(y, want) << alphaQ15;
        }
    std::vector<Complex16s> a(z, z + 101), b(a);
    EXPECT_EQ(tevsWinKaiserQ15_16sc_I(a.data(), 101, 4096) | tevsWinKaiser_16sc_I(b.data(), 101, 0.125f), StatusOk);
    EXPECT_TRUE(same(a, b));
}

// The scale comes before the one rounding, and the middle sample takes ties away from zero.
TEST(Blackman, ScaledProducts) {
    for (int scale : {0, 1, 3, 15, 16, 17, 40, -1, -5, -15, -16, -40, INT_MAX, INT_MIN})
        for (int len : {3, 4, 5, 16, 33, 1100}) {
            const auto x = randomVector<int16_t>(size_t(len));
            auto y = x;
            ASSERT_EQ(tevsWinBlackmanQ15_16s_ISfs(y.data(), len, -5243, scale), StatusOk);
            for (int n = 0; n < len; ++n) {
                const int from = x[size_t(n)];
                const bool middle = 2 * n + 1 == len;
                const double product = middle ? from : len == 3 ? 0 : double(float(::blackman(std::min(n, len - 1 - n), len, -5243 / 32768.0L)) * float(from));
                const double scaled = std::ldexp(product, -std::clamp(scale, -300, 300));
                const double want = std::clamp(middle ? std::round(scaled) : std::nearbyint(scaled), -32768.0, 32767.0);
                ASSERT_EQ(y[size_t(n)], want) << scale << " " << len << " " << n;
            }
        }
}

TEST(Window, BadArguments) {
    float x[3] = {1, 2, 3}, y[3] = {7, 7, 7};
    EXPECT_EQ(tevsWinBlackmanOpt_32f(nullptr, nullptr, 3), StatusBadSize);
    EXPECT_EQ(tevsWinBlackmanOpt_32f(x, nullptr, 4), StatusNullPtr);
    for (int len : {2, 1}) {
        EXPECT_EQ(tevsWinHann_32f(x, y, len), StatusBadSize);
        EXPECT_EQ(tevsWinKaiser_32f_I(x, len, 0), StatusOk);
    }
    EXPECT_EQ(y[0] + y[1] + y[2], 21);
    EXPECT_EQ(x[0] + x[1] + x[2], 6);
}

}   // namespace
