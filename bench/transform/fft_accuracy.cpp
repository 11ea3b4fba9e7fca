// Prints the relative error of transforms in the Euclidean norm, in units of 2^-24 and 2^-53, against a transform in extended precision, next to FFTW's on
// the same input: noise, uniform in -1 .. 1, of as many transforms as make 2^16 points or more.
#if TEVS_PEER_FFTW
#include <fftw3.h>
#endif

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdio>
#include <random>
#include <vector>

#include "tevs.h"

namespace {

using Exact = std::complex<long double>;

// Radix 2, decimation in time, every factor from its angle.
std::vector<Exact> transform(const std::vector<Exact>& x) {
    const size_t n = x.size();
    if (n == 1) return x;
    std::vector<Exact> even(n / 2), odd(n / 2);
    for (size_t i = 0; i < n / 2; ++i) {
        even[i] = x[2 * i];
        odd[i] = x[2 * i + 1];
    }
    even = transform(even);
    odd = transform(odd);
    std::vector<Exact> y(n);
    for (size_t k = 0; k < n / 2; ++k) {
        const Exact t = odd[k] * std::polar(1.0L, -2 * 3.14159265358979323846264338327950288L * (long double)k / (long double)n);
        y[k] = even[k] + t;
        y[k + n / 2] = even[k] - t;
    }
    return y;
}

// Squared error and squared norm, summed over transforms.
template <class T> struct Error {
    long double off = 0, all = 0;
    void add(const std::vector<Exact>& want, const T* got) {
        for (size_t k = 0; k < want.size(); ++k) {
            off += std::norm(Exact(got[2 * k], got[2 * k + 1]) - want[k]);
            all += std::norm(want[k]);
        }
    }
    double relative() const { return all > 0 ? double(std::sqrt(off / all)) * (sizeof(T) == 4 ? 0x1p24 : 0x1p53) : 0; }
};

template <class T> struct Own;
#define TEVS_OWN(T, c, f)                                                                                        \
    template <> struct Own<T> {                                                                                  \
        FFTSpec_C_##c* pairs;                                                                                    \
        FFTSpec_R_##f* real;                                                                                     \
        explicit Own(int order) {                                                                                \
            tevsFFTInitAlloc_C_##c(&pairs, order, NoScale, HintNone);                                            \
            tevsFFTInitAlloc_R_##f(&real, order, NoScale, HintNone);                                             \
        }                                                                                                        \
        ~Own() {                                                                                                 \
            tevsFFTFree_C_##c(pairs);                                                                            \
            tevsFFTFree_R_##f(real);                                                                             \
        }                                                                                                        \
        void complex(const T* x, T* y) {                                                                         \
            using C = decltype(tevsMalloc_##c(0));                                                               \
            tevsFFTFwd_CToC_##c(reinterpret_cast<C>(const_cast<T*>(x)), reinterpret_cast<C>(y), pairs, nullptr); \
        }                                                                                                        \
        void forward(const T* x, T* y) { tevsFFTFwd_RToCCS_##f(x, y, real, nullptr); }                           \
    };
TEVS_OWN(float, 32fc, 32f)
TEVS_OWN(double, 64fc, 64f)

#if TEVS_PEER_FFTW
template <class T> struct Fftw;
#define TEVS_FFTW(T, fftw)                                                                                      \
    template <> struct Fftw<T> {                                                                                \
        std::vector<T> in, out;                                                                                 \
        fftw##_plan plan, planReal;                                                                             \
        static fftw##_complex* pairs(std::vector<T>& v) { return reinterpret_cast<fftw##_complex*>(v.data()); } \
        explicit Fftw(size_t n) : in(2 * n), out(2 * n + 2) {                                                   \
            plan = fftw##_plan_dft_1d(int(n), pairs(in), pairs(out), FFTW_FORWARD, FFTW_MEASURE);               \
            planReal = fftw##_plan_dft_r2c_1d(int(n), in.data(), pairs(out), FFTW_MEASURE);                     \
        }                                                                                                       \
        ~Fftw() {                                                                                               \
            fftw##_destroy_plan(plan);                                                                          \
            fftw##_destroy_plan(planReal);                                                                      \
        }                                                                                                       \
        const T* run(const std::vector<T>& x, bool real) {                                                      \
            std::copy(x.begin(), x.end(), in.begin());                                                          \
            fftw##_execute(real ? planReal : plan);                                                             \
            return out.data();                                                                                  \
        }                                                                                                       \
    };
TEVS_FFTW(float, fftwf)
TEVS_FFTW(double, fftw)
#endif

template <class T> void print() {
    std::mt19937 random(2006);
    std::uniform_real_distribution<T> uniform(-1, 1);
    std::printf("order    complex       FFTW   real forward       FFTW   (relative errors, in units of 2^-%d)\n", sizeof(T) == 4 ? 24 : 53);
    for (int order = 1; order <= 20; ++order) {
        const size_t n = size_t{1} << order;
        Own<T> own(order);
        std::vector<T> x(2 * n), y(2 * n + 2), r(n);
        Error<T> owns[2], fftws[2];
#if TEVS_PEER_FFTW
        Fftw<T> fftw(n);
#endif
        for (size_t points = 0; points < size_t{1} << 16; points += n) {
            for (T& v : x) v = uniform(random);
            for (T& v : r) v = uniform(random);
            std::vector<Exact> exact(n), real(n);
            for (size_t i = 0; i < n; ++i) {
                exact[i] = {x[2 * i], x[2 * i + 1]};
                real[i] = r[i];
            }
            exact = transform(exact);
            real = transform(real);
            real.resize(n / 2 + 1);
            own.complex(x.data(), y.data());
            owns[0].add(exact, y.data());
            own.forward(r.data(), y.data());
            owns[1].add(real, y.data());
#if TEVS_PEER_FFTW
            fftws[0].add(exact, fftw.run(x, false));
            fftws[1].add(real, fftw.run(r, true));
#endif
        }
        std::printf("%5d %10.2f %10.2f %14.2f %10.2f\n", order, owns[0].relative(), fftws[0].relative(), owns[1].relative(), fftws[1].relative());
    }
}

}   // namespace

int main() {
    print<float>();
    print<double>();
}
