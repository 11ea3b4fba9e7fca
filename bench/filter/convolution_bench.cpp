// Convolution and correlation, per result: against plain loops, dot products of another library, and transforms of another with plans measured beforehand.
#if TEVS_PEER_FFTW
#include <fftw3.h>
#endif
#if TEVS_PEER_VOLK
#include <volk/volk.h>
#endif

#include <memory>

#include "filter/convolution_plain.h"
#include "support/bench.h"
#include "tevcore.h"
#include "tevs.h"

namespace {

template <class T> std::vector<T> noise(int n) {
    std::vector<T> v(static_cast<size_t>(n));
    uint32_t state = 12345;
    for (T& x : v) {
        state = state * 1664525 + 1013904223;
        x = T((double(state >> 8) / (1 << 24) - 0.5) * (std::is_integral_v<T> ? 6000 : 1));
    }
    return v;
}

void conv(const float* a, int m, const float* b, int n, float* y) { tevsConv_32f(a, m, b, n, y); }
void conv(const double* a, int m, const double* b, int n, double* y) { tevsConv_64f(a, m, b, n, y); }
void conv(const int16_t* a, int m, const int16_t* b, int n, int16_t* y) { tevsConv_16s_Sfs(a, m, b, n, y, 15); }
void autoCorr(const float* x, int n, float* r, int lags) { tevsAutoCorr_32f(x, n, r, lags); }
void autoCorr(const int16_t* x, int n, int16_t* r, int lags) { tevsAutoCorr_16s_Sfs(x, n, r, lags, 15); }

#if TEVS_PEER_FFTW
// Real transforms of one length, planned before and used in every call.
class Fftw {
public:
    explicit Fftw(int points) : n(points), x(alloc()), h(alloc()), X(alloc()), H(alloc()) {
        forwardX = fftwf_plan_dft_r2c_1d(n, x, spectrum(X), FFTW_MEASURE);
        forwardH = fftwf_plan_dft_r2c_1d(n, h, spectrum(H), FFTW_MEASURE);
        inverse = fftwf_plan_dft_c2r_1d(n, spectrum(X), x, FFTW_MEASURE);
    }
    ~Fftw() {
        for (auto p : {forwardX, forwardH, inverse}) fftwf_destroy_plan(p);
        for (auto p : {x, h, X, H}) fftwf_free(p);
    }
    Fftw(const Fftw&) = delete;
    // X times h's spectrum, or its own conjugate.
    void multiply(bool bySelf) {
        const float f = 1.0f / float(n);
        for (int k = 0; k < n + 2; k += 2) {
            const float a = X[k], b = X[k + 1], c = bySelf ? a : H[k], d = bySelf ? -b : H[k + 1];
            X[k] = (a * c - b * d) * f;
            X[k + 1] = (a * d + b * c) * f;
        }
    }
    static int atLeast(int points) {
        int n = 2;
        while (n < points) n *= 2;
        return n;
    }
    const int n;
    float *x, *h, *X, *H;
    fftwf_plan forwardX, forwardH, inverse;

private:
    float* alloc() const { return fftwf_alloc_real(size_t(n) + 2); }
    static fftwf_complex* spectrum(float* p) { return reinterpret_cast<fftwf_complex*>(p); }
};

void load(float* to, const float* from, int count, int n) {
    std::memcpy(to, from, size_t(count) * sizeof(float));
    std::memset(to + count, 0, size_t(n - count) * sizeof(float));
}
void convFftw(Fftw& f, const float* a, int m, const float* b, int n, float* y) {
    load(f.h, a, m, f.n);
    load(f.x, b, n, f.n);
    fftwf_execute(f.forwardH);
    fftwf_execute(f.forwardX);
    f.multiply(false);
    fftwf_execute(f.inverse);
    std::memcpy(y, f.x, size_t(m + n - 1) * sizeof(float));
}
// Overlap-add in blocks of what the transform leaves room for.
void convFftwBlocks(Fftw& f, const float* a, int m, const float* b, int n, float* y) {
    const int step = f.n - m + 1;
    load(f.h, a, m, f.n);
    fftwf_execute(f.forwardH);
    std::memset(y, 0, size_t(m + n - 1) * sizeof(float));
    for (int at = 0; at < n; at += step) {
        const int count = std::min(step, n - at);
        load(f.x, b + at, count, f.n);
        fftwf_execute(f.forwardX);
        f.multiply(false);
        fftwf_execute(f.inverse);
        for (int i = 0; i < count + m - 1; ++i) y[at + i] += f.x[i];
    }
}
#endif

template <class T> void convolution(const char* type, int m, int n) {
    const std::string name = std::string("Conv_") + type + "_" + std::to_string(m) + "x" + std::to_string(n);
    const auto h = noise<T>(m), x = noise<T>(n);
    bench::row(name, "tevs", {m + n - 1},
               [=](int count) { return [=, y = std::vector<T>(size_t(count))]() mutable { conv(h.data(), m, x.data(), n, y.data()); }; });
    if (m <= 512)
        bench::row(name, "plain", {m + n - 1},
                   [=](int count) { return [=, y = std::vector<T>(size_t(count))]() mutable { plain::convolve(h.data(), m, x.data(), n, y.data()); }; });
#if TEVS_PEER_FFTW
    if constexpr (std::is_same_v<T, float>) {
        bench::row(name, "FFTW", {m + n - 1}, [=](int count) {
            return [=, f = std::make_shared<Fftw>(Fftw::atLeast(count)), y = std::vector<T>(size_t(count))]() mutable {
                convFftw(*f, h.data(), m, x.data(), n, y.data());
            };
        });
        if (n >= 3 * m)
            bench::row(name, "FFTWblocks", {m + n - 1}, [=](int count) {
                return [=, f = std::make_shared<Fftw>(Fftw::atLeast(4 * m)), y = std::vector<T>(size_t(count))]() mutable {
                    convFftwBlocks(*f, h.data(), m, x.data(), n, y.data());
                };
            });
    }
#endif
#if TEVS_PEER_VOLK
    if constexpr (std::is_same_v<T, float>)
        if (m <= 64)
            bench::row(name, "VOLK", {m + n - 1}, [=](int count) {
                return [=, padded = noise<float>(n + 2 * m), y = std::vector<T>(size_t(count))]() mutable {
                    for (int i = 0; i < count; ++i) volk_32f_x2_dot_prod_32f(&y[size_t(i)], &padded[size_t(i)], h.data(), unsigned(m));
                };
            });
#endif
}

template <class T> void autoCorrelation(const char* type, int n, int lags) {
    const std::string name = std::string("AutoCorr_") + type + "_" + std::to_string(n);
    const auto x = noise<T>(n);
    bench::row(name, "tevs", {lags}, [=](int count) { return [=, r = std::vector<T>(size_t(count))]() mutable { autoCorr(x.data(), n, r.data(), count); }; });
    bench::row(name, "plain", {lags},
               [=](int count) { return [=, r = std::vector<T>(size_t(count))]() mutable { plain::autoCorrelate(x.data(), n, r.data(), count); }; });
#if TEVS_PEER_FFTW
    if constexpr (std::is_same_v<T, float>)
        bench::row(name, "FFTW", {lags}, [=](int count) {
            return [=, f = std::make_shared<Fftw>(Fftw::atLeast(n + lags)), r = std::vector<T>(size_t(count))]() mutable {
                load(f->x, x.data(), n, f->n);
                fftwf_execute(f->forwardX);
                f->multiply(true);
                fftwf_execute(f->inverse);
                std::memcpy(r.data(), f->x, size_t(count) * sizeof(float));
            };
        });
#endif
#if TEVS_PEER_VOLK
    if constexpr (std::is_same_v<T, float>)
        if (lags <= 256)
            bench::row(name, "VOLK", {lags}, [=](int count) {
                return [=, r = std::vector<T>(size_t(count))]() mutable {
                    for (int lag = 0; lag < count; ++lag) volk_32f_x2_dot_prod_32f(&r[size_t(lag)], x.data(), &x[size_t(lag)], unsigned(n - lag));
                };
            });
#endif
}

void biased(int len2, int len1, int dstLen, int bias) {
    const std::string name = "ConvBiased_32f_" + std::to_string(len1) + "x" + std::to_string(len2);
    const auto h = noise<float>(len1), x = noise<float>(len2);
    bench::row(name, "tevs", {dstLen}, [=](int count) {
        return [=, y = std::vector<float>(size_t(count))]() mutable { tevsConvBiased_32f(h.data(), len1, x.data(), len2, y.data(), count, bias); };
    });
    bench::row(name, "plain", {dstLen}, [=](int count) {
        return [=, y = std::vector<float>(size_t(count))]() mutable { plain::convolveBiased(h.data(), len1, x.data(), len2, y.data(), count, bias); };
    });
}

void threads(int m, int n) {
    for (int count : {2, 1})
        bench::row("Conv_32f_" + std::to_string(m) + "x" + std::to_string(n) + "_two_threads", count == 2 ? "tevs" : "one thread", {m + n - 1}, [=](int len) {
            return [=, h = noise<float>(m), x = noise<float>(n), y = std::vector<float>(size_t(len))]() mutable {
                const int before = tevGetNumThreads();
                tevSetNumThreads(count);
                tevsConv_32f(h.data(), m, x.data(), n, y.data());
                tevSetNumThreads(before);
            };
        });
}

const bool registered = [] {
    constexpr int kSizes[][2] = {{16, 128}, {64, 64}, {256, 256}, {512, 512}, {2048, 2048}, {32, 4096}, {128, 4096}, {1024, 65536}};
    for (const auto& [m, n] : kSizes) convolution<float>("32f", m, n);
    for (const auto& [m, n] : {std::pair{16, 128}, {64, 64}, {256, 256}, {32, 4096}}) {
        convolution<double>("64f", m, n);
        convolution<int16_t>("16s", m, n);
    }
    for (const auto& [n, lags] : {std::pair{160, 11}, {256, 256}, {1024, 64}, {4096, 4096}, {65536, 256}}) autoCorrelation<float>("32f", n, lags);
    for (const auto& [n, lags] : {std::pair{160, 11}, {256, 256}, {1024, 64}}) autoCorrelation<int16_t>("16s", n, lags);
    constexpr int kBiased[][4] = {{45, 4, 41, 4}, {50, 11, 40, 10}, {56, 16, 40, 16}, {70, 31, 40, 30}, {110, 31, 80, 30}, {40, 40, 40, 0}, {60, 60, 60, 0}};
    for (const auto& [len2, len1, dstLen, bias] : kBiased) biased(len2, len1, dstLen, bias);
    bench::row("ConvCyclic8x8_32f", "tevs", {8}, [](int) {
        return [x = noise<float>(8), h = noise<float>(8), y = std::vector<float>(8)]() mutable { tevsConvCyclic8x8_32f(x.data(), h.data(), y.data()); };
    });
    bench::row("ConvCyclic8x8_32f", "plain", {8}, [](int) {
        return [x = noise<float>(8), h = noise<float>(8), y = std::vector<float>(8)]() mutable { plain::cyclic8(x.data(), h.data(), y.data()); };
    });
    threads(1024, 65536);
    threads(128, 1 << 20);
    return true;
}();

}   // namespace
