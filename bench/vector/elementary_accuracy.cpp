// Prints the worst error of each function in units in the last place of the result, against extended precision, and how many results are off by more than 0.6.
//
//     elementary_accuracy         a sample of 2^22 arguments each, from a fixed seed: any bit pattern
//     elementary_accuracy all     all 2^32 arguments of single precision, where the reference is the C library's double precision
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "tevs.h"

namespace {

constexpr size_t kBlock = 1 << 16, kSample = 1 << 22;

template <class R> class Worst {
public:
    template <class S, class D> void add(S x, D got, R want) {
        using Limits = std::numeric_limits<D>;
        if (std::isnan(want) || std::isinf(D(want)) || std::isinf(got) || want == 0) return;   // the tests compare these
        ++count_;
        const int exponent = std::max(std::ilogb(want), Limits::min_exponent - 1) - Limits::digits + 1;
        const double off = double(std::ldexp(std::fabs(got - want), -exponent));
        if (off > 0.6) ++far_;
        if (off > worst_) {
            worst_ = off;
            at_ = double(x);
        }
    }
    void print(const char* name) const { std::printf("| %s | %.4f | %a | %.2g %% |\n", name, worst_, at_, 100.0 * double(far_) / double(count_)); }

private:
    double worst_ = 0, at_ = 0;
    uint64_t count_ = 0, far_ = 0;
};

template <class S, class D, class R, class Next> void measure(const char* name, Status (*f)(const S*, D*, int), R (*reference)(R), uint64_t count, Next next) {
    Worst<R> worst;
    std::vector<S> x(kBlock);
    std::vector<D> y(kBlock);
    for (uint64_t done = 0; done < count; done += kBlock) {
        for (size_t i = 0; i < kBlock; ++i) x[i] = next(done + i);
        f(x.data(), y.data(), int(kBlock));
        for (size_t i = 0; i < kBlock; ++i) worst.add(x[i], y[i], reference(x[i]));
    }
    worst.print(name);
}

template <class D> void single(bool all, const char* name, Status (*f)(const float*, D*, int), long double (*extended)(long double), double (*twice)(double)) {
    if (all && sizeof(D) == 4) return measure(name, f, twice, uint64_t{1} << 32, [](uint64_t i) { return std::bit_cast<float>(uint32_t(i)); });
    std::mt19937 random(2005);
    measure(name, f, extended, kSample, [&](uint64_t) { return std::bit_cast<float>(uint32_t(random())); });
}
// Half of the arguments any bit pattern, half within -40 .. 40.
template <class D> void twofold(const char* name, Status (*f)(const double*, D*, int), long double (*extended)(long double)) {
    std::mt19937_64 random(2005);
    std::uniform_real_distribution<double> usual(-40, 40);
    measure(name, f, extended, kSample, [&](uint64_t i) { return i % 2 ? usual(random) : std::bit_cast<double>(uint64_t(random())); });
}

}   // namespace

int main(int argc, char** argv) {
    const bool all = argc > 1 && std::strcmp(argv[1], "all") == 0;
    std::printf("| function | worst error | at | above 0.6 |\n|---|---|---|---|\n");
    single(all, "Exp_32f", tevsExp_32f, expl, exp);
    single(all, "Exp_32f64f", tevsExp_32f64f, expl, exp);
    single(all, "Ln_32f", tevsLn_32f, logl, log);
    single(all, "Sqrt_32f", tevsSqrt_32f, sqrtl, sqrt);
    single(all, "Cubrt_32f", tevsCubrt_32f, cbrtl, cbrt);
    twofold("Exp_64f", tevsExp_64f, expl);
    twofold("Ln_64f", tevsLn_64f, logl);
    twofold("Ln_64f32f", tevsLn_64f32f, logl);
    twofold("Sqrt_64f", tevsSqrt_64f, sqrtl);
}
