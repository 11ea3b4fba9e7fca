// Prints the worst error of the arctangent and the polar functions against extended precision, in units in the last place of the true result, with the argument where it was
// met. Samples are seeded: every function sees values over its whole range, and values such as signals have.
//
//     polar_accuracy [MILLIONS]    so many million samples a function and range, 4 by default
//     polar_accuracy all           Arctan_32f of every float
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "tevs.h"

namespace {

using Exact = long double;
using std::size_t;

std::mt19937_64 random64(2005);

// Any bit pattern, which is any exponent with the same chance.
template <class T> T wild() {
    if constexpr (sizeof(T) == 4)
        return std::bit_cast<T>(uint32_t(random64()));
    else
        return std::bit_cast<T>(random64());
}
template <class T> T uniform(T limit) { return std::uniform_real_distribution<T>(-limit, limit)(random64); }

template <class T> struct Worst {
    double ulps = 0;
    T a{}, b{};
    size_t over = 0, count = 0;   // over 0.6 units
    void add(T x, T y, T got, Exact want) {
        if (std::isnan(want) || std::isinf(want) || std::isinf(got)) {
            const bool bothNaN = std::isnan(want) && std::isnan(got);
            if (bothNaN || T(want) == got) return;
        }
        int exponent;
        std::frexp(want, &exponent);
        exponent = std::max(exponent, std::numeric_limits<T>::min_exponent) - std::numeric_limits<T>::digits;
        double e = double(std::fabs(std::ldexp(Exact(got) - want, -exponent)));
        if (!(e <= 1e9)) e = 1e9;
        ++count;
        over += e > 0.6;
        if (e > ulps) {
            ulps = e;
            a = x;
            b = y;
        }
    }
    void print(const char* name, const char* range) const {
        std::printf("%-20s %-22s %9.5f   %8.5f %%   at %a %a\n", name, range, ulps, count ? 100.0 * double(over) / double(count) : 0.0, double(a), double(b));
    }
};

constexpr int kBlock = 1 << 16;

template <class T, class Draw, class Call, class Want> void sample(const char* name, const char* range, size_t count, Draw draw, Call call, Want want) {
    Worst<T> worst;
    std::vector<T> a(kBlock), b(kBlock), got(kBlock);
    for (size_t done = 0; done < count; done += kBlock) {
        for (int i = 0; i < kBlock; ++i) draw(a[size_t(i)], b[size_t(i)]);
        call(a.data(), b.data(), got.data());
        for (size_t i = 0; i < kBlock; ++i) worst.add(a[i], b[i], got[i], want(Exact(a[i]), Exact(b[i])));
    }
    worst.print(name, range);
}

template <class T> struct Functions;
template <> struct Functions<float> {
    static constexpr auto arctan = tevsArctan_32f;
    static constexpr auto magnitude = tevsMagnitude_32f, phase = tevsPhase_32f, power = tevsPowerSpectr_32f;
    static constexpr auto cartesian = tevsPolarToCart_32f;
    static constexpr const char* names[] = {"Arctan_32f", "Magnitude_32f", "Phase_32f", "PowerSpectr_32f", "PolarToCart_32f re", "PolarToCart_32f im"};
};
template <> struct Functions<double> {
    static constexpr auto arctan = tevsArctan_64f;
    static constexpr auto magnitude = tevsMagnitude_64f, phase = tevsPhase_64f, power = tevsPowerSpectr_64f;
    static constexpr auto cartesian = tevsPolarToCart_64f;
    static constexpr const char* names[] = {"Arctan_64f", "Magnitude_64f", "Phase_64f", "PowerSpectr_64f", "PolarToCart_64f re", "PolarToCart_64f im"};
};

template <class T> void report(size_t count) {
    using F = Functions<T>;
    const auto everywhere = [](T& x, T& y) {
        x = wild<T>();
        y = wild<T>();
    };
    const auto signal = [](T& x, T& y) {
        x = uniform(T(1));
        y = uniform(T(1));
    };
    // The same exponent give or take a few: where roundings of both parts count.
    const auto alike = [](T& x, T& y) {
        x = wild<T>();
        y = std::ldexp(uniform(T(1)), std::isfinite(x) ? std::ilogb(x) + 2 : 0);
    };
    const auto each = [&](const char* name, auto call, auto want) {
        sample<T>(name, "everywhere", count, everywhere, call, want);
        sample<T>(name, "-1 .. 1", count, signal, call, want);
        sample<T>(name, "equal exponents", count, alike, call, want);
    };
    const auto arctan = [](const T* x, const T*, T* d) { F::arctan(x, d, kBlock); };
    const auto want = [](Exact x, Exact) { return std::atan(x); };
    sample<T>(F::names[0], "everywhere", count, everywhere, arctan, want);
    sample<T>(
        F::names[0], "-4 .. 4", 2 * count, [](T& x, T&) { x = uniform(T(4)); }, arctan, want);

    each(
        F::names[1], [](const T* x, const T* y, T* d) { F::magnitude(x, y, d, kBlock); }, [](Exact x, Exact y) { return std::hypot(x, y); });
    each(
        F::names[2], [](const T* x, const T* y, T* d) { F::phase(x, y, d, kBlock); }, [](Exact x, Exact y) { return std::atan2(y, x); });
    each(
        F::names[3], [](const T* x, const T* y, T* d) { F::power(x, y, d, kBlock); }, [](Exact x, Exact y) { return x * x + y * y; });

    static std::vector<T> other(kBlock);
    for (const bool im : {false, true}) {
        const auto call = [=](const T* m, const T* p, T* d) { F::cartesian(m, p, im ? other.data() : d, im ? d : other.data(), kBlock); };
        const auto product = [=](Exact m, Exact p) { return m * (im ? std::sin(p) : std::cos(p)); };
        const char* name = F::names[im ? 5 : 4];
        sample<T>(name, "everywhere", count / 4, everywhere, call, product);
        sample<T>(
            name, "phase -4 .. 4", 2 * count,
            [](T& m, T& p) {
                m = uniform(T(1));
                p = uniform(T(4));
            },
            call, product);
        sample<T>(
            name, "phase -2^20 .. 2^20", count,
            [](T& m, T& p) {
                m = wild<T>();
                p = uniform(T(0x1p20));
            },
            call, product);
        // The nearest values to multiples of pi/2.
        sample<T>(
            name, "near quarter turns", count / 4,
            [](T& m, T& p) {
                m = uniform(T(1));
                p = T(std::rint(std::ldexp(uniform(1.0), int(random64() % 40))) * 1.57079632679489661923132169163975144L);
            },
            call, product);
    }
}

void everyFloat() {
    Worst<float> worst;
    std::vector<float> x(kBlock), got(kBlock);
    for (uint64_t first = 0; first < uint64_t{1} << 32; first += kBlock) {
        for (size_t i = 0; i < kBlock; ++i) x[i] = std::bit_cast<float>(uint32_t(first + i));
        tevsArctan_32f(x.data(), got.data(), kBlock);
        // A double arctangent is off by 2^-29 of a single's unit.
        for (size_t i = 0; i < kBlock; ++i) worst.add(x[i], 0, got[i], std::atan(double(x[i])));
    }
    worst.print("Arctan_32f", "every float");
}

}   // namespace

int main(int argc, char** argv) {
    std::printf("%-20s %-22s %9s   %10s   worst\n", "function", "range", "ulp", "over 0.6");
    if (argc > 1 && std::strcmp(argv[1], "all") == 0) {
        everyFloat();
        return 0;
    }
    const size_t count = size_t(argc > 1 ? std::atoi(argv[1]) : 4) * 1000000;
    report<float>(count);
    report<double>(count);
}
