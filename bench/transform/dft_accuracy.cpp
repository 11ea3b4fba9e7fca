// Prints the relative error of transforms of any length in the Euclidean norm, in units of 2^-24 and 2^-53, against sums in extended precision, next to FFTW's on the same
// input: noise, uniform in -1 .. 1, of as many transforms as make 2^12 points or more.
#if TEVS_PEER_FFTW
#include <fftw3.h>
#endif

#include <cmath>
#include <cstdio>
#include <random>
#include <vector>

#include "tevs.h"

namespace {

using Real = long double;
constexpr int kLengths[] = {3, 5, 7, 12, 15, 31, 60, 100, 120, 127, 149, 151, 360, 480, 960, 1000, 1009, 1024, 1920, 4096, 4410};

template <class T> struct Error {
    Real off = 0, all = 0;
    void add(Real want, T got) {
        off += (want - got) * (want - got);
        all += want * want;
    }
    double relative() const { return all > 0 ? double(std::sqrt(off / all)) * (sizeof(T) == 4 ? 0x1p24 : 0x1p53) : 0; }
};

template <class T> struct Calls;
#define TEVS_CALLS(T, c, f, fftw)                                                                                                 \
    template <> struct Calls<T> {                                                                                                 \
        DFTSpec_C_##c* complex;                                                                                                   \
        DFTSpec_R_##f* real;                                                                                                      \
        DCTFwdSpec_##f* cosine;                                                                                                   \
        explicit Calls(int n) {                                                                                                   \
            tevsDFTInitAlloc_C_##c(&complex, n, NoScale, HintNone);                                                               \
            tevsDFTInitAlloc_R_##f(&real, n, NoScale, HintNone);                                                                  \
            tevsDCTFwdInitAlloc_##f(&cosine, n, HintNone);                                                                        \
        }                                                                                                                         \
        ~Calls() {                                                                                                                \
            tevsDFTFree_C_##c(complex);                                                                                           \
            tevsDFTFree_R_##f(real);                                                                                              \
            tevsDCTFwdFree_##f(cosine);                                                                                           \
        }                                                                                                                         \
        void run(int kind, const T* x, T* y) const {                                                                              \
            using C = decltype(tevsMalloc_##c(0));                                                                                \
            if (kind == 0) tevsDFTFwd_CToC_##c(reinterpret_cast<C>(const_cast<T*>(x)), reinterpret_cast<C>(y), complex, nullptr); \
            if (kind == 1) tevsDFTFwd_RToCCS_##f(x, y, real, nullptr);                                                            \
            if (kind == 2) tevsDCTFwd_##f(x, y, cosine, nullptr);                                                                 \
        }                                                                                                                         \
        TEVS_PEER_CALLS(T, fftw)                                                                                                  \
    };
#if TEVS_PEER_FFTW
#define TEVS_PEER_CALLS(T, fftw)                                                                                                \
    static void peer(int kind, int n, const std::vector<T>& x, std::vector<T>& y) {                                             \
        std::vector<T> in(x.size());                                                                                            \
        auto *const ci = reinterpret_cast<fftw##_complex*>(in.data()), *const co = reinterpret_cast<fftw##_complex*>(y.data()); \
        const auto plan = kind == 0   ? fftw##_plan_dft_1d(n, ci, co, FFTW_FORWARD, FFTW_ESTIMATE)                              \
                          : kind == 1 ? fftw##_plan_dft_r2c_1d(n, in.data(), co, FFTW_ESTIMATE)                                 \
                                      : fftw##_plan_r2r_1d(n, in.data(), y.data(), FFTW_REDFT10, FFTW_ESTIMATE);                \
        in = x;                                                                                                                 \
        fftw##_execute(plan);                                                                                                   \
        fftw##_destroy_plan(plan);                                                                                              \
    }
#else
#define TEVS_PEER_CALLS(T, fftw) \
    static void peer(int, int, const std::vector<T>&, std::vector<T>&) {}
#endif
TEVS_CALLS(float, 32fc, 32f, fftwf)
TEVS_CALLS(double, 64fc, 64f, fftw)

template <class T> void print() {
    std::mt19937 random(2006);
    std::uniform_real_distribution<T> uniform(-1, 1);
    std::printf("length    complex       FFTW       real       FFTW     cosine       FFTW   (relative errors, in units of 2^-%d)\n", sizeof(T) == 4 ? 24 : 53);
    for (int n : kLengths) {
        const auto count = size_t(n);
        const Calls<T> own(n);
        std::vector<Real> turn(4 * count);
        for (size_t i = 0; i < 4 * count; ++i) turn[i] = std::cos(3.14159265358979323846264338327950288L * Real(i) / Real(2 * n));
        // cos and sin of pi i / 2N.
        const auto cos = [&](size_t i) { return turn[i % (4 * count)]; };
        const auto sin = [&](size_t i) { return turn[(i + 3 * count) % (4 * count)]; };
        Error<T> owns[3], peers[3];
        for (size_t points = 0; points < size_t{1} << 12; points += count) {
            std::vector<T> x(2 * count), y(2 * count + 2), z(2 * count + 2);
            for (T& v : x) v = uniform(random);
            for (int kind = 0; kind < 3; ++kind) {
                own.run(kind, x.data(), y.data());
                Calls<T>::peer(kind, n, x, z);
                for (size_t k = 0; k < (kind == 1 ? count / 2 + 1 : count); ++k) {
                    Real re = 0, im = 0;
                    for (size_t t = 0; t < count; ++t) {
                        const size_t at = kind == 2 ? (2 * t + 1) * k : 4 * (t * k % count);
                        const Real a = kind == 0 ? x[2 * t] : x[t], b = kind == 0 ? x[2 * t + 1] : T(0);
                        re += a * cos(at) + b * sin(at);
                        im += b * cos(at) - a * sin(at);
                    }
                    if (kind == 2) {
                        const Real f = std::sqrt(Real(k == 0 ? 1 : 2) / Real(n));
                        owns[2].add(re * f, y[k]);
                        peers[2].add(2 * re, z[k]);
                    } else {
                        owns[kind].add(re, y[2 * k]);
                        owns[kind].add(im, y[2 * k + 1]);
                        peers[kind].add(re, z[2 * k]);
                        peers[kind].add(im, z[2 * k + 1]);
                    }
                }
            }
        }
        std::printf("%6d", n);
        for (int kind = 0; kind < 3; ++kind) std::printf(" %10.2f %10.2f", owns[kind].relative(), peers[kind].relative());
        std::printf("\n");
    }
}

}   // namespace

int main() {
    print<float>();
    print<double>();
}
