// Prints the relative error of single-precision transforms in the Euclidean norm, against a transform in extended precision, next to FFTW's on the
// same input: noise, uniform in -1 .. 1, of as many transforms as make 2^16 points or more.
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
struct Error {
    long double off = 0, all = 0;
    void add(const std::vector<Exact>& want, const float* got) {
        for (size_t k = 0; k < want.size(); ++k) {
            off += std::norm(Exact(got[2 * k], got[2 * k + 1]) - want[k]);
            all += std::norm(want[k]);
        }
    }
    double relative() const { return all > 0 ? double(std::sqrt(off / all)) * 0x1p24 : 0; }
};

}   // namespace

int main() {
    std::mt19937 random(2006);
    std::uniform_real_distribution<float> uniform(-1, 1);
    std::printf("order    complex       FFTW   real forward       FFTW   (relative errors, in units of 2^-24)\n");
    for (int order = 1; order <= 20; ++order) {
        const size_t n = size_t{1} << order;
        FFTSpec_C_32fc* c;
        FFTSpec_R_32f* f;
        if (tevsFFTInitAlloc_C_32fc(&c, order, NoScale, HintNone) != StatusOk || tevsFFTInitAlloc_R_32f(&f, order, NoScale, HintNone) != StatusOk) return 1;
        std::vector<float> x(2 * n), y(2 * n + 2), in(2 * n), r(n), s(n + 2), out(2 * n + 2);
#if TEVS_PEER_FFTW
        const auto complex = [](std::vector<float>& v) { return reinterpret_cast<fftwf_complex*>(v.data()); };
        const fftwf_plan plan = fftwf_plan_dft_1d(int(n), complex(in), complex(out), FFTW_FORWARD, FFTW_MEASURE | FFTW_UNALIGNED);
        const fftwf_plan planReal = fftwf_plan_dft_r2c_1d(int(n), in.data(), complex(out), FFTW_MEASURE | FFTW_UNALIGNED);
#endif
        Error own[2], fftw[2];
        for (size_t points = 0; points < size_t{1} << 16; points += n) {
            for (float& v : x) v = uniform(random);
            for (float& v : r) v = uniform(random);
            std::vector<Exact> exact(n), real(n);
            for (size_t i = 0; i < n; ++i) {
                exact[i] = {x[2 * i], x[2 * i + 1]};
                real[i] = r[i];
            }
            exact = transform(exact);
            real = transform(real);
            real.resize(n / 2 + 1);
            tevsFFTFwd_CToC_32fc(reinterpret_cast<Complex32f*>(x.data()), reinterpret_cast<Complex32f*>(y.data()), c, nullptr);
            own[0].add(exact, y.data());
            tevsFFTFwd_RToCCS_32f(r.data(), s.data(), f, nullptr);
            own[1].add(real, s.data());
#if TEVS_PEER_FFTW
            in = x;
            fftwf_execute_dft(plan, complex(in), complex(out));
            fftw[0].add(exact, out.data());
            std::copy(r.begin(), r.end(), in.begin());
            fftwf_execute_dft_r2c(planReal, in.data(), complex(out));
            fftw[1].add(real, out.data());
#endif
        }
        std::printf("%5d %10.2f %10.2f %14.2f %10.2f\n", order, own[0].relative(), fftw[0].relative(), own[1].relative(), fftw[1].relative());
#if TEVS_PEER_FFTW
        fftwf_destroy_plan(plan);
        fftwf_destroy_plan(planReal);
#endif
        tevsFFTFree_C_32fc(c);
        tevsFFTFree_R_32f(f);
    }
}
