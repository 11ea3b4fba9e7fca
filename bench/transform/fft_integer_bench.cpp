// Integer transforms against FFTW's measured plans between plain conversion loops, per point.
#if TEVS_PEER_FFTW && TEVS_PEER_FFTW64
#include <fftw3.h>
#endif

#include <cmath>
#include <memory>

#include "support/bench.h"
#include "tevs.h"
#include "transform/fft_integer_plain.h"

namespace {

std::vector<int64_t> lengths() {
    std::vector<int64_t> n;
    for (int order = 1; order <= 16; ++order) n.push_back(int64_t{1} << order);
    return n;
}
int orderOf(int n) { return int(std::log2(n)); }
int scaleOf(int n) { return orderOf(n) / 2 + 1; }

template <class T> std::vector<T> values(size_t n) {
    std::vector<T> v(n);
    for (size_t i = 0; i < n; ++i) v[i] = T(uint32_t(i) * 2654435761u >> (32 - 8 * sizeof(T) + 1));
    return v;
}

// A row of call(src, dst, record, scaleFactor, buffer), over scalars of S and D.
template <class Spec> struct Kind {
    Status (*initAlloc)(Spec**, int, int, int);
    Status (*free)(Spec*);
    Status (*getBufSize)(const Spec*, int*);
};
#define KIND(name) \
    Kind<FFTSpec_##name> { tevsFFTInitAlloc_##name, tevsFFTFree_##name, tevsFFTGetBufSize_##name }

template <class S, class D, class Spec, class Call> void add(const char* name, const Kind<Spec>& kind, Call call) {
    bench::row(name, "tevs", lengths(), [=](int n) {
        Spec* p = nullptr;
        kind.initAlloc(&p, orderOf(n), NoScale, HintNone);
        int bytes = 0;
        kind.getBufSize(p, &bytes);
        return [=, r = std::shared_ptr<Spec>(p, kind.free), w = std::vector<uint8_t>(size_t(bytes) + 1), a = values<S>(2 * size_t(n) + 2),
                b = std::vector<D>(2 * size_t(n) + 2)]() mutable { call(a.data(), b.data(), r.get(), scaleOf(n), w.data(), n); };
    });
}

#if TEVS_PEER_FFTW && TEVS_PEER_FFTW64
// FFTW's two precisions by one name.
struct Single {
    using Real = float;
    using Complex = fftwf_complex;
    using Plan = std::shared_ptr<fftwf_plan_s>;
    static Plan complex(int n, Complex* x) { return {fftwf_plan_dft_1d(n, x, x, FFTW_FORWARD, FFTW_MEASURE), fftwf_destroy_plan}; }
    static Plan split(int n, Real* re, Real* im) {
        const fftwf_iodim dim{n, 1, 1};
        return {fftwf_plan_guru_split_dft(1, &dim, 0, nullptr, re, im, re, im, FFTW_MEASURE), fftwf_destroy_plan};
    }
    static Plan toComplex(int n, Real* x) { return {fftwf_plan_dft_r2c_1d(n, x, reinterpret_cast<Complex*>(x), FFTW_MEASURE), fftwf_destroy_plan}; }
    static Plan toReal(int n, Real* x) { return {fftwf_plan_dft_c2r_1d(n, reinterpret_cast<Complex*>(x), x, FFTW_MEASURE), fftwf_destroy_plan}; }
    static void execute(const Plan& p) { fftwf_execute(p.get()); }
};
struct Double {
    using Real = double;
    using Complex = fftw_complex;
    using Plan = std::shared_ptr<fftw_plan_s>;
    static Plan complex(int n, Complex* x) { return {fftw_plan_dft_1d(n, x, x, FFTW_FORWARD, FFTW_MEASURE), fftw_destroy_plan}; }
    static Plan split(int n, Real* re, Real* im) {
        const fftw_iodim dim{n, 1, 1};
        return {fftw_plan_guru_split_dft(1, &dim, 0, nullptr, re, im, re, im, FFTW_MEASURE), fftw_destroy_plan};
    }
    static Plan toComplex(int n, Real* x) { return {fftw_plan_dft_r2c_1d(n, x, reinterpret_cast<Complex*>(x), FFTW_MEASURE), fftw_destroy_plan}; }
    static Plan toReal(int n, Real* x) { return {fftw_plan_dft_c2r_1d(n, reinterpret_cast<Complex*>(x), x, FFTW_MEASURE), fftw_destroy_plan}; }
    static void execute(const Plan& p) { fftw_execute(p.get()); }
};

enum class Shape { Pairs, Parts, Forward, Inverse };

// In place in a buffer of floats that stays in the caches, as the library does it.
template <class S, class D, class Fftw> void addFftw(const char* name, Shape shape) {
    using Real = typename Fftw::Real;
    bench::row(name, "FFTW", lengths(), [=](int n) {
        const std::shared_ptr<void> memory(fftw_malloc(sizeof(Real) * (2 * size_t(n) + 2)), fftw_free);
        auto* const x = static_cast<Real*>(memory.get());
        const auto plan = shape == Shape::Pairs     ? Fftw::complex(n, reinterpret_cast<typename Fftw::Complex*>(x))
                          : shape == Shape::Parts   ? Fftw::split(n, x, x + n)
                          : shape == Shape::Forward ? Fftw::toComplex(n, x)
                                                    : Fftw::toReal(n, x);
        const int in = shape == Shape::Forward ? n : shape == Shape::Inverse ? n + 2 : 2 * n;
        const int out = shape == Shape::Forward ? n + 2 : shape == Shape::Inverse ? n : 2 * n;
        return [=, a = values<S>(2 * size_t(n) + 2), b = std::vector<D>(2 * size_t(n) + 2), factor = std::ldexp(Real(1), -scaleOf(n))]() mutable {
            (void)memory;
            plain::toFloat(a.data(), x, in);
            Fftw::execute(plan);
            plain::toInteger(x, b.data(), out, factor);
        };
    });
}
#endif

const bool registered = [] {
    using Z16 = Complex16s;
    using Z32 = Complex32s;
    add<int16_t, int16_t>("FFTFwd_CToC_16sc_Sfs", KIND(C_16sc), [](auto* a, auto* b, auto* r, int s, uint8_t* w, int) {
        tevsFFTFwd_CToC_16sc_Sfs(reinterpret_cast<const Z16*>(a), reinterpret_cast<Z16*>(b), r, s, w);
    });
    add<int16_t, int16_t>("FFTFwd_CToC_16s_Sfs", KIND(C_16s),
                          [](auto* a, auto* b, auto* r, int s, uint8_t* w, int n) { tevsFFTFwd_CToC_16s_Sfs(a, a + n, b, b + n, r, s, w); });
    add<int16_t, int16_t>("FFTFwd_RToCCS_16s_Sfs", KIND(R_16s),
                          [](auto* a, auto* b, auto* r, int s, uint8_t* w, int) { tevsFFTFwd_RToCCS_16s_Sfs(a, b, r, s, w); });
    add<int16_t, int16_t>("FFTInv_CCSToR_16s_Sfs", KIND(R_16s),
                          [](auto* a, auto* b, auto* r, int s, uint8_t* w, int) { tevsFFTInv_CCSToR_16s_Sfs(a, b, r, s, w); });
    add<int16_t, int32_t>("FFTFwd_RToCCS_16s32s_Sfs", KIND(R_16s32s),
                          [](auto* a, auto* b, auto* r, int s, uint8_t* w, int) { tevsFFTFwd_RToCCS_16s32s_Sfs(a, b, r, s, w); });
    add<int32_t, int32_t>("FFTFwd_CToC_32sc_Sfs", KIND(C_32sc), [](auto* a, auto* b, auto* r, int s, uint8_t* w, int) {
        tevsFFTFwd_CToC_32sc_Sfs(reinterpret_cast<const Z32*>(a), reinterpret_cast<Z32*>(b), r, s, w);
    });
    add<int32_t, int32_t>("FFTFwd_CToC_32s_Sfs", KIND(C_32s),
                          [](auto* a, auto* b, auto* r, int s, uint8_t* w, int n) { tevsFFTFwd_CToC_32s_Sfs(a, a + n, b, b + n, r, s, w); });
    add<int32_t, int32_t>("FFTFwd_RToCCS_32s_Sfs", KIND(R_32s),
                          [](auto* a, auto* b, auto* r, int s, uint8_t* w, int) { tevsFFTFwd_RToCCS_32s_Sfs(a, b, r, s, w); });
#if TEVS_PEER_FFTW && TEVS_PEER_FFTW64
    addFftw<int16_t, int16_t, Single>("FFTFwd_CToC_16sc_Sfs", Shape::Pairs);
    addFftw<int16_t, int16_t, Single>("FFTFwd_CToC_16s_Sfs", Shape::Parts);
    addFftw<int16_t, int16_t, Single>("FFTFwd_RToCCS_16s_Sfs", Shape::Forward);
    addFftw<int16_t, int16_t, Single>("FFTInv_CCSToR_16s_Sfs", Shape::Inverse);
    addFftw<int16_t, int32_t, Single>("FFTFwd_RToCCS_16s32s_Sfs", Shape::Forward);
    addFftw<int32_t, int32_t, Double>("FFTFwd_CToC_32sc_Sfs", Shape::Pairs);
    addFftw<int32_t, int32_t, Double>("FFTFwd_CToC_32s_Sfs", Shape::Parts);
    addFftw<int32_t, int32_t, Double>("FFTFwd_RToCCS_32s_Sfs", Shape::Forward);
#endif
    return true;
}();

}   // namespace
