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

#include <algorithm>
#include <memory>

#include "filter/fir_plain.h"
#include "support/bench.h"
#include "tevcore.h"
#include "tevs.h"

namespace {

template <class T> constexpr bool kComplex = requires(T z) { z.re; };

template <class T> std::vector<T> noise(size_t n) {
    std::vector<T> v(n);
    auto part = [i = size_t{0}]() mutable { return double(i++ * 2654435761u % 1000) * 1e-3 - 0.5; };
    const auto of = [&]<class P>(P) { return P(std::is_integral_v<P> ? part() * 30000 : part()); };
    for (T& x : v)
        if constexpr (kComplex<T>)
            x = {of(x.re), of(x.im)};
        else
            x = of(x);
    return v;
}
// Taps whose sum is small enough for 16 bits, and fills them.
template <class T> std::vector<T> lowPass(size_t n) {
    auto h = noise<T>(n);
    const auto fit = [&](auto& p) {
        if constexpr (std::is_integral_v<std::remove_reference_t<decltype(p)>>) p = std::remove_reference_t<decltype(p)>(p / (int(n) / 4 + 1));
    };
    for (T& x : h)
        if constexpr (kComplex<T>)
            fit(x.re), fit(x.im);
        else
            fit(x);
    return h;
}

// How a pair of types is built and called.
template <class StateT, class TapT, class SampleT, class PlainT, auto Size, auto Init, auto InitAlloc, auto Free, auto Block> struct Pair {
    using State = StateT;
    using Tap = TapT;
    using Sample = SampleT;
    using Plain = PlainT;
    static std::shared_ptr<State> owned(const std::vector<Tap>& h) {
        State* p = nullptr;
        if constexpr (std::is_invocable_v<decltype(InitAlloc), State**, const Tap*, int, const Sample*>)
            InitAlloc(&p, h.data(), int(h.size()), nullptr);
        else
            InitAlloc(&p, h.data(), int(h.size()), -15, nullptr);
        return {p, Free};
    }
    static std::shared_ptr<State> direct(const std::vector<Tap>& h) {   // in the caller's memory, so without a transform
        int size = 0;
        Size(int(h.size()), &size);
        auto memory = std::make_shared<std::vector<uint8_t>>(size_t(size));
        State* p = nullptr;
        if constexpr (std::is_invocable_v<decltype(Init), State**, const Tap*, int, const Sample*, uint8_t*>)
            Init(&p, h.data(), int(h.size()), nullptr, memory->data());
        else
            Init(&p, h.data(), int(h.size()), -15, nullptr, memory->data());
        return {memory, p};
    }
    static void run(const Sample* x, Sample* y, int n, State* s) {
        if constexpr (std::is_invocable_v<decltype(Block), const Sample*, Sample*, int, State*>)
            Block(x, y, n, s);
        else
            Block(x, y, n, s, 15);
    }
};
#define PAIR(T, P) tevsFIRGetStateSize##T, tevsFIRInit##T, tevsFIRInitAlloc##T, tevsFIRFree##T, tevsFIR##T##P
using P_32f = Pair<FIRState_32f, float, float, float, PAIR(_32f, )>;
using P_32fc = Pair<FIRState_32fc, Complex32f, Complex32f, plain::Complex32f, PAIR(_32fc, )>;
using P_64f = Pair<FIRState_64f, double, double, double, PAIR(_64f, )>;
using P_64fc = Pair<FIRState_64fc, Complex64f, Complex64f, plain::Complex64f, PAIR(_64fc, )>;
using P32s_16s = Pair<FIRState32s_16s, int32_t, int16_t, int16_t, PAIR(32s_16s, _Sfs)>;
using P32sc_16sc = Pair<FIRState32sc_16sc, Complex32s, Complex16s, plain::Complex16s, PAIR(32sc_16sc, _Sfs)>;
using P32f_16s = Pair<FIRState32f_16s, float, int16_t, int16_t, PAIR(32f_16s, _Sfs)>;
using P64f_32f = Pair<FIRState64f_32f, double, float, float, PAIR(64f_32f, )>;

#if TEVS_PEER_FFTW
#define FFTW_OF(PRECISION, X)                                \
    template <> struct Fftw<PRECISION> {                     \
        using Complex = X##_complex;                         \
        using Plan = std::remove_pointer_t<X##_plan>;        \
        static constexpr auto alloc = X##_alloc_real;        \
        static constexpr auto free = X##_free;               \
        static constexpr auto forward = X##_plan_dft_r2c_1d; \
        static constexpr auto inverse = X##_plan_dft_c2r_1d; \
        static constexpr auto complex = X##_plan_dft_1d;     \
        static constexpr auto execute = X##_execute;         \
        static constexpr auto destroy = X##_destroy_plan;    \
    };
template <class S> struct Fftw;
FFTW_OF(float, fftwf)
#if TEVS_PEER_FFTW64
FFTW_OF(double, fftw)
#endif

// Overlap-save with transforms of fftLen points and measured plans, of real or of complex samples.
template <class T, class S> class OverlapSave {
    using F = Fftw<S>;
    static constexpr int kParts = kComplex<T> ? 2 : 1;

public:
    OverlapSave(const std::vector<T>& h, int fftLen) : taps_(int(h.size())), n_(fftLen), x_(alloc(n_ * kParts)), X_(alloc(spectrum())), H_(alloc(spectrum())) {
        if constexpr (kParts == 1) {
            forward_.reset(F::forward(n_, x_.get(), complex(X_), FFTW_MEASURE));
            inverse_.reset(F::inverse(n_, complex(X_), x_.get(), FFTW_MEASURE));
        } else {
            forward_.reset(F::complex(n_, complex(x_), complex(X_), FFTW_FORWARD, FFTW_MEASURE));
            inverse_.reset(F::complex(n_, complex(X_), complex(x_), FFTW_BACKWARD, FFTW_MEASURE));
        }
        std::fill_n(x_.get(), n_ * kParts, S{});
        std::memcpy(x_.get(), h.data(), h.size() * sizeof(T));
        F::execute(forward_.get());
        for (int i = 0; i < spectrum(); ++i) H_.get()[i] = X_.get()[i] / S(n_);
    }
    void run(const T* x, T* y, int len) {   // taps - 1 samples lie before x
        const int kept = taps_ - 1, step = n_ - kept;
        for (int at = 0; at < len; at += step) {
            const int fresh = std::min(step, len - at);
            std::memcpy(x_.get(), x + at - kept, size_t(kept + fresh) * sizeof(T));
            std::fill(x_.get() + (kept + fresh) * kParts, x_.get() + n_ * kParts, S{});
            F::execute(forward_.get());
            S* const X = X_.get();
            const S* const H = H_.get();
            for (int k = 0; k < spectrum(); k += 2) {
                const S re = X[k] * H[k] - X[k + 1] * H[k + 1], im = X[k] * H[k + 1] + X[k + 1] * H[k];
                X[k] = re;
                X[k + 1] = im;
            }
            F::execute(inverse_.get());
            std::memcpy(y + at, x_.get() + kept * kParts, size_t(fresh) * sizeof(T));
        }
    }

private:
    using Buffer = std::shared_ptr<S>;
    int spectrum() const { return kParts == 1 ? n_ + 2 : 2 * n_; }
    static Buffer alloc(int n) { return {F::alloc(size_t(n)), F::free}; }
    static typename F::Complex* complex(const Buffer& b) { return reinterpret_cast<typename F::Complex*>(b.get()); }
    struct Destroy {
        void operator()(typename F::Plan* p) const { F::destroy(p); }
    };
    using Plan = std::unique_ptr<typename F::Plan, Destroy>;
    int taps_, n_;
    Buffer x_, X_, H_;
    Plan forward_, inverse_;
};

template <class T, class S> void overFftw(const std::string& name, int taps, const std::vector<int64_t>& sizes) {
    for (int factor : {4, 8, 16})
        bench::row(name, "FFTW" + std::to_string(factor), sizes, [=](int n) {
            int fftLen = 1;
            while (fftLen < factor * taps) fftLen *= 2;
            return [=, f = std::make_shared<OverlapSave<T, S>>(noise<T>(size_t(taps)), fftLen), x = noise<T>(size_t(taps + n)),
                    y = std::vector<T>(size_t(n))]() mutable { f->run(&x[size_t(taps)], y.data(), n); };
        });
}
#endif

#if TEVS_PEER_LIQUID
using Liquid = std::complex<float>;
template <class T, class L, auto Create, auto Destroy, auto Execute> void overLiquid(const std::string& name, int taps, const std::vector<int64_t>& sizes) {
    bench::row(name, "liquid-dsp", sizes, [=](int n) {
        auto h = noise<T>(size_t(taps));
        auto* const made = Create(reinterpret_cast<L*>(h.data()), unsigned(taps));
        const std::shared_ptr<std::remove_pointer_t<decltype(made)>> q(made, [](auto p) { Destroy(p); });
        return [=, x = noise<T>(size_t(n)), y = std::vector<T>(size_t(n))]() mutable {
            Execute(q.get(), reinterpret_cast<L*>(x.data()), unsigned(n), reinterpret_cast<L*>(y.data()));
        };
    });
}
// Blocks of as many samples as taps, and of four times as many; the transforms are of twice the block.
template <class T, class L, auto Create, auto Destroy, auto Execute> void overLiquidFft(const std::string& name, int taps, const std::vector<int64_t>& sizes) {
    for (int factor : {1, 4})
        bench::row(name, "liquid-dsp" + std::to_string(factor), sizes, [=](int n) {
            auto h = noise<T>(size_t(taps));
            const int block = factor * taps;
            auto* const made = Create(reinterpret_cast<L*>(h.data()), unsigned(taps), unsigned(block));
            const std::shared_ptr<std::remove_pointer_t<decltype(made)>> q(made, [](auto p) { Destroy(p); });
            return [=, x = noise<T>(size_t(n + block)), y = std::vector<T>(size_t(n + block))]() mutable {
                for (int i = 0; i < n; i += block) Execute(q.get(), reinterpret_cast<L*>(&x[size_t(i)]), reinterpret_cast<L*>(&y[size_t(i)]));
            };
        });
}
#endif

template <class P> void direct(const std::string& type, int taps, const std::vector<int64_t>& sizes, bool plainToo = true) {
    using Sample = typename P::Sample;
    const std::string name = "FIR" + type + "_" + std::to_string(taps) + "_taps";
    bench::row(name, "tevs", sizes, [=](int n) {
        return [=, f = P::direct(lowPass<typename P::Tap>(size_t(taps))), x = noise<Sample>(size_t(n)), y = std::vector<Sample>(size_t(n))]() mutable {
            P::run(x.data(), y.data(), n, f.get());
        };
    });
    if (!plainToo) return;
    using Plain = typename P::Plain;
    bench::row(name, "plain", sizes, [=](int n) {
        return [=, h = noise<Plain>(size_t(taps)), x = noise<Plain>(size_t(taps + n)), y = std::vector<Plain>(size_t(n))]() mutable {
            plain::fir(&x[size_t(taps)], h.data(), taps, y.data(), n);
        };
    });
#if TEVS_PEER_VOLK
    if constexpr (std::is_same_v<Sample, float>)
        bench::row(name, "VOLK", sizes, [=](int n) {
            return [=, h = noise<float>(size_t(taps)), x = noise<float>(size_t(taps + n)), y = std::vector<float>(size_t(n))]() mutable {
                for (int i = 0; i < n; ++i) volk_32f_x2_dot_prod_32f(&y[size_t(i)], &x[size_t(i)], h.data(), unsigned(taps));
            };
        });
    if constexpr (std::is_same_v<Sample, Complex32f>)
        bench::row(name, "VOLK", sizes, [=](int n) {
            using V = std::vector<Liquid>;
            return [=, h = V(size_t(taps), 0.5f), x = V(size_t(taps + n), 0.25f), y = V(size_t(n))]() mutable {
                for (int i = 0; i < n; ++i) volk_32fc_x2_dot_prod_32fc(&y[size_t(i)], &x[size_t(i)], h.data(), unsigned(taps));
            };
        });
#endif
}

template <class P> void overlapSave(const std::string& type, int taps) {
    using Sample = typename P::Sample;
    const std::vector<int64_t> sizes = {4096, 16384};
    const std::string name = "FIR" + type + "_fft_" + std::to_string(taps) + "_taps";
    bench::row(name, "tevs", sizes, [=](int n) {
        return [=, f = P::owned(noise<typename P::Tap>(size_t(taps))), x = noise<Sample>(size_t(n)), y = std::vector<Sample>(size_t(n))]() mutable {
            P::run(x.data(), y.data(), n, f.get());
        };
    });
    using Plain = typename P::Plain;
    if (taps <= 512)
        bench::row(name, "plain", sizes, [=](int n) {
            return [=, h = noise<Plain>(size_t(taps)), x = noise<Plain>(size_t(taps + n)), y = std::vector<Plain>(size_t(n))]() mutable {
                plain::fir(&x[size_t(taps)], h.data(), taps, y.data(), n);
            };
        });
#if TEVS_PEER_FFTW
    if constexpr (std::is_same_v<Sample, float> || std::is_same_v<Sample, Complex32f>) overFftw<Sample, float>(name, taps, sizes);
#if TEVS_PEER_FFTW64
    if constexpr (std::is_same_v<Sample, double> || std::is_same_v<Sample, Complex64f>) overFftw<Sample, double>(name, taps, sizes);
#endif
#endif
#if TEVS_PEER_LIQUID
    if constexpr (std::is_same_v<Sample, float>)
        overLiquidFft<float, float, fftfilt_rrrf_create, fftfilt_rrrf_destroy, fftfilt_rrrf_execute>(name, taps, sizes);
    if constexpr (std::is_same_v<Sample, Complex32f>)
        overLiquidFft<Complex32f, Liquid, fftfilt_cccf_create, fftfilt_cccf_destroy, fftfilt_cccf_execute>(name, taps, sizes);
#endif
}

// Blocks of a million samples, shared out over two threads and not. The library is told before each call: the count holds for all rows of the program.
template <class P> void threads(const std::string& type, int taps, bool byFft) {
    using Sample = typename P::Sample;
    for (int count : {2, 1})
        bench::row("FIR" + type + (byFft ? "_fft_" : "_") + std::to_string(taps) + "_taps_two_threads", count == 2 ? "tevs" : "one thread", {1 << 20},
                   [=](int n) {
                       const int before = tevGetNumThreads();
                       tevSetNumThreads(2);
                       const auto h = lowPass<typename P::Tap>(size_t(taps));
                       const auto f = byFft ? P::owned(h) : P::direct(h);
                       tevSetNumThreads(before);
                       return [=, x = noise<Sample>(size_t(n)), y = std::vector<Sample>(size_t(n))]() mutable {
                           tevSetNumThreads(count);
                           P::run(x.data(), y.data(), n, f.get());
                           tevSetNumThreads(before);
                       };
                   });
}

const bool registered = [] {
    for (int taps : {8, 16, 32, 63, 128}) {
        const std::vector<int64_t> sizes = {64, 256, 4096};
        direct<P_32f>("_32f", taps, sizes);
        direct<P_32fc>("_32fc", taps, sizes);
        direct<P_64f>("_64f", taps, sizes);
        direct<P_64fc>("_64fc", taps, sizes);
        direct<P32s_16s>("32s_16s", taps, sizes);
        direct<P32sc_16sc>("32sc_16sc", taps, sizes);
#if TEVS_PEER_LIQUID
        const std::string end = "_" + std::to_string(taps) + "_taps";
        overLiquid<float, float, firfilt_rrrf_create, firfilt_rrrf_destroy, firfilt_rrrf_execute_block>("FIR_32f" + end, taps, sizes);
        overLiquid<Complex32f, Liquid, firfilt_cccf_create, firfilt_cccf_destroy, firfilt_cccf_execute_block>("FIR_32fc" + end, taps, sizes);
#endif
    }
    for (int taps : {16, 63}) {
        direct<P32f_16s>("32f_16s", taps, {256, 4096}, false);
        direct<P64f_32f>("64f_32f", taps, {256, 1600}, false);
    }
    for (int taps : {64, 128, 512, 2048, 4096}) {
        overlapSave<P_32f>("_32f", taps);
        overlapSave<P_32fc>("_32fc", taps);
    }
    for (int taps : {64, 512, 4096}) {
        overlapSave<P_64f>("_64f", taps);
        overlapSave<P_64fc>("_64fc", taps);
    }

    threads<P_32f>("_32f", 32, false);
    threads<P_32f>("_32f", 512, true);
    threads<P_64f>("_64f", 32, false);
    threads<P_64f>("_64f", 512, true);
    threads<P32f_16s>("32f_16s", 32, false);

    bench::row("FIROne_32f", "tevs", {16, 64, 256},
               [](int taps) { return [f = P_32f::owned(noise<float>(size_t(taps))), y = 0.0f]() mutable { tevsFIROne_32f(0.5f, &y, f.get()); }; });
    bench::row("FIROne_32f", "plain", {16, 64, 256}, [](int taps) {
        return [=, h = noise<float>(size_t(taps)), line = std::vector<float>(size_t(2 * taps)), at = 0, y = 0.0f]() mutable {
            line[size_t(at)] = line[size_t(at + taps)] = 0.5f;
            if (++at == taps) at = 0;
            y = plain::dot(&line[size_t(at)], h.data(), taps);
            benchmark::DoNotOptimize(y);
        };
    });
    bench::row("FIROne_32fc", "tevs", {16, 64, 256}, [](int taps) {
        return [f = P_32fc::owned(noise<Complex32f>(size_t(taps))), y = Complex32f{}]() mutable { tevsFIROne_32fc({0.5f, 0.25f}, &y, f.get()); };
    });
    bench::row("FIROne_64f", "tevs", {16, 64, 256},
               [](int taps) { return [f = P_64f::owned(noise<double>(size_t(taps))), y = 0.0]() mutable { tevsFIROne_64f(0.5, &y, f.get()); }; });
    bench::row("FIROne32f_16s", "tevs", {16, 64, 256}, [](int taps) {
        return [f = P32f_16s::owned(noise<float>(size_t(taps))), y = int16_t{}]() mutable { tevsFIROne32f_16s_Sfs(5, &y, f.get(), 1); };
    });
    bench::row("FIROne32s_16s", "tevs", {16, 64, 256}, [](int taps) {
        return [f = P32s_16s::owned(lowPass<int32_t>(size_t(taps))), y = int16_t{}]() mutable { tevsFIROne32s_16s_Sfs(5, &y, f.get(), 1); };
    });
#if TEVS_PEER_LIQUID
    bench::row("FIROne_32f", "liquid-dsp", {16, 64, 256}, [](int taps) {
        auto h = noise<float>(size_t(taps));
        std::shared_ptr<firfilt_rrrf_s> q(firfilt_rrrf_create(h.data(), unsigned(taps)), [](firfilt_rrrf p) { firfilt_rrrf_destroy(p); });
        return [=, y = 0.0f]() mutable {
            firfilt_rrrf_push(q.get(), 0.5f);
            firfilt_rrrf_execute(q.get(), &y);
        };
    });
#endif
    for (int taps : {16, 64}) {
        const std::string end = "_" + std::to_string(taps) + "_taps";
        bench::row("FIR_Direct_32f" + end, "tevs", {1, 4096}, [=](int n) {
            return [=, h = noise<float>(size_t(taps)), x = noise<float>(size_t(n)), line = std::vector<float>(size_t(2 * taps)),
                    y = std::vector<float>(size_t(n)), at = 0]() mutable { tevsFIR_Direct_32f(x.data(), y.data(), n, h.data(), taps, line.data(), &at); };
        });
        bench::row("FIROne_Direct_32f" + end, "tevs", {1}, [=](int) {
            return [=, h = noise<float>(size_t(taps)), line = std::vector<float>(size_t(2 * taps)), y = 0.0f, at = 0]() mutable {
                tevsFIROne_Direct_32f(0.5f, &y, h.data(), taps, line.data(), &at);
            };
        });
    }
    return true;
}();

}   // namespace
