// FIR filters, per output: direct against a blocked loop and the filters of other libraries, overlap-save against one over FFTW.
#if TEVS_PEER_FFTW
#include <fftw3.h>
#endif
#if TEVS_PEER_LIQUID
#include <complex>
#include <liquid/liquid.h>
#endif
#if TEVS_PEER_VOLK
#include <volk/volk.h>
#endif

#include <memory>

#include "filter/fir_plain.h"
#include "support/bench.h"
#include "tevs.h"

namespace {

using Floats = std::vector<float>;

Floats noise(size_t n) {
    Floats v(n);
    for (size_t i = 0; i < n; ++i) v[i] = float(i * 2654435761u % 1000) * 1e-3f - 0.5f;
    return v;
}

std::shared_ptr<FIRState_32f> record(const Floats& h) {
    FIRState_32f* p = nullptr;
    tevsFIRInitAlloc_32f(&p, h.data(), int(h.size()), nullptr);
    return {p, tevsFIRFree_32f};
}

#if TEVS_PEER_FFTW
// Overlap-save with real transforms of fftLen points and measured plans.
class OverlapSave {
public:
    OverlapSave(const Floats& h, int fftLen) : taps_(int(h.size())), n_(fftLen), x_(alloc(n_)), X_(alloc(n_ + 2)), H_(alloc(n_ + 2)) {
        forward_.reset(fftwf_plan_dft_r2c_1d(n_, x_.get(), complex(X_), FFTW_MEASURE));
        inverse_.reset(fftwf_plan_dft_c2r_1d(n_, complex(X_), x_.get(), FFTW_MEASURE));
        std::fill_n(x_.get(), n_, 0.0f);
        std::copy(h.begin(), h.end(), x_.get());
        fftwf_execute_dft_r2c(forward_.get(), x_.get(), complex(H_));
        for (int i = 0; i < n_ + 2; ++i) H_.get()[i] /= float(n_);
    }
    void run(const float* x, float* y, int len) {   // taps - 1 samples lie before x
        const int kept = taps_ - 1, step = n_ - kept;
        for (int at = 0; at < len; at += step) {
            const int fresh = std::min(step, len - at);
            std::copy_n(x + at - kept, kept + fresh, x_.get());
            std::fill(x_.get() + kept + fresh, x_.get() + n_, 0.0f);
            fftwf_execute(forward_.get());
            float* const X = X_.get();
            const float* const H = H_.get();
            for (int k = 0; k < n_ + 2; k += 2) {
                const float re = X[k] * H[k] - X[k + 1] * H[k + 1], im = X[k] * H[k + 1] + X[k + 1] * H[k];
                X[k] = re;
                X[k + 1] = im;
            }
            fftwf_execute(inverse_.get());
            std::copy_n(x_.get() + kept, fresh, y + at);
        }
    }

private:
    using Buffer = std::shared_ptr<float>;
    static Buffer alloc(int n) { return {fftwf_alloc_real(size_t(n)), fftwf_free}; }
    static fftwf_complex* complex(const Buffer& b) { return reinterpret_cast<fftwf_complex*>(b.get()); }
    struct Destroy {
        void operator()(fftwf_plan p) const { fftwf_destroy_plan(p); }
    };
    using Plan = std::unique_ptr<fftwf_plan_s, Destroy>;
    int taps_, n_;
    Buffer x_, X_, H_;
    Plan forward_, inverse_;
};
#endif

void add(int taps, const std::vector<int64_t>& sizes) {
    const std::string name = "FIR_32f_" + std::to_string(taps) + "_taps";
    const auto input = [=](int n) { return noise(size_t(taps) + size_t(n)); };
    bench::row(name, "tevs", sizes, [=](int n) {
        return [=, f = record(noise(size_t(taps))), x = input(n), y = Floats(size_t(n))]() mutable { tevsFIR_32f(&x[size_t(taps)], y.data(), n, f.get()); };
    });
    bench::row(name, "plain", sizes, [=](int n) {
        return [=, h = noise(size_t(taps)), x = input(n), y = Floats(size_t(n))]() mutable { plain::fir(&x[size_t(taps)], h.data(), taps, y.data(), n); };
    });
#if TEVS_PEER_LIQUID
    bench::row(name, "liquid-dsp", sizes, [=](int n) {
        Floats h = noise(size_t(taps));
        std::shared_ptr<firfilt_rrrf_s> q(firfilt_rrrf_create(h.data(), unsigned(taps)), [](firfilt_rrrf p) { firfilt_rrrf_destroy(p); });
        return [=, x = input(n), y = Floats(size_t(n))]() mutable { firfilt_rrrf_execute_block(q.get(), &x[size_t(taps)], unsigned(n), y.data()); };
    });
#endif
#if TEVS_PEER_VOLK
    bench::row(name, "VOLK", sizes, [=](int n) {
        return [=, h = noise(size_t(taps)), x = input(n), y = Floats(size_t(n))]() mutable {
            for (int i = 0; i < n; ++i) volk_32f_x2_dot_prod_32f(&y[size_t(i)], &x[size_t(i)], h.data(), unsigned(taps));
        };
    });
#endif
#if TEVS_PEER_FFTW
    if (taps < 63) return;
    for (int factor : {4, 8, 16}) {
        bench::row(name, "FFTW" + std::to_string(factor), sizes, [=](int n) {
            int fftLen = 1;
            while (fftLen < factor * taps) fftLen *= 2;
            return [=, f = std::make_shared<OverlapSave>(noise(size_t(taps)), fftLen), x = input(n), y = Floats(size_t(n))]() mutable {
                f->run(&x[size_t(taps)], y.data(), n);
            };
        });
    }
#endif
}

const bool registered = [] {
    for (int taps : {16, 32, 63}) add(taps, {64, 256, 4096});
    for (int taps : {64, 128, 512, 2048}) add(taps, {4096, 16384});
    bench::row("FIROne_32f", "tevs", {16, 64, 256},
               [](int taps) { return [f = record(noise(size_t(taps))), y = 0.0f]() mutable { tevsFIROne_32f(0.5f, &y, f.get()); }; });
#if TEVS_PEER_LIQUID
    bench::row("FIROne_32f", "liquid-dsp", {16, 64, 256}, [](int taps) {
        Floats h = noise(size_t(taps));
        std::shared_ptr<firfilt_rrrf_s> q(firfilt_rrrf_create(h.data(), unsigned(taps)), [](firfilt_rrrf p) { firfilt_rrrf_destroy(p); });
        return [=, y = 0.0f]() mutable {
            firfilt_rrrf_push(q.get(), 0.5f);
            firfilt_rrrf_execute(q.get(), &y);
        };
    });
#endif
    return true;
}();

}   // namespace
