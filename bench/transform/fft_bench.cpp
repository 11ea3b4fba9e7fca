// Transforms against FFTW's measured plans, per point.
#if TEVS_PEER_FFTW
#include <fftw3.h>
#endif

#include <cmath>
#include <memory>

#include "support/bench.h"
#include "tevs.h"

namespace {

std::vector<int64_t> lengths() {
    std::vector<int64_t> n;
    for (int order = 4; order <= 20; ++order) n.push_back(int64_t{1} << order);
    return n;
}

struct Free {
    void operator()(void* p) const { tevsFree(p); }
};
using Buffer = std::shared_ptr<float>;
Buffer buffer(size_t floats) {
    Buffer b(tevsMalloc_32f(int(floats)), Free{});
    for (size_t i = 0; i < floats; ++i) b.get()[i] = float(i * 2654435761u % 1000) * 1e-3f - 0.5f;
    return b;
}

template <class Spec> using Record = std::shared_ptr<Spec>;
Record<FFTSpec_C_32fc> complexRecord(int n) {
    FFTSpec_C_32fc* p = nullptr;
    tevsFFTInitAlloc_C_32fc(&p, int(std::log2(n)), NoScale, HintNone);
    return {p, tevsFFTFree_C_32fc};
}
Record<FFTSpec_R_32f> realRecord(int n) {
    FFTSpec_R_32f* p = nullptr;
    tevsFFTInitAlloc_R_32f(&p, int(std::log2(n)), NoScale, HintNone);
    return {p, tevsFFTFree_R_32f};
}
template <class Spec> std::vector<uint8_t> work(Status (*size)(const Spec*, int*), const Record<Spec>& r) {
    int bytes = 0;
    size(r.get(), &bytes);
    return std::vector<uint8_t>(size_t(bytes) + 1);
}

using Complex = Status (*)(const Complex32f*, Complex32f*, const FFTSpec_C_32fc*, uint8_t*);
using Real = Status (*)(const float*, float*, const FFTSpec_R_32f*, uint8_t*);

void add(const char* name, Complex transform, bool inPlace = false) {
    bench::row(name, "tevs", lengths(), [=](int n) {
        return [=, r = complexRecord(n), w = work(tevsFFTGetBufSize_C_32fc, complexRecord(n)), a = buffer(2 * size_t(n)), b = buffer(2 * size_t(n))]() mutable {
            auto* const src = reinterpret_cast<Complex32f*>(a.get());
            // In place a copy of the input comes first: a transform run on its own output again and again would leave the range of the type.
            if (inPlace) tevsCopy_32fc(src, reinterpret_cast<Complex32f*>(b.get()), n);
            transform(inPlace ? reinterpret_cast<Complex32f*>(b.get()) : src, reinterpret_cast<Complex32f*>(b.get()), r.get(), w.data());
        };
    });
}
void add(const char* name, Real transform) {
    bench::row(name, "tevs", lengths(), [=](int n) {
        return [=, r = realRecord(n), w = work(tevsFFTGetBufSize_R_32f, realRecord(n)), a = buffer(size_t(n) + 2), b = buffer(size_t(n) + 2)]() mutable {
            transform(a.get(), b.get(), r.get(), w.data());
        };
    });
}

#if TEVS_PEER_FFTW
enum class Kind { Complex, ToComplex, ToReal };
void addFftw(const char* name, Kind kind, int sign, bool inPlace = false) {
    bench::row(name, "FFTW", lengths(), [=](int n) {
        const Buffer a = buffer(2 * size_t(n) + 2), b = inPlace ? a : buffer(2 * size_t(n) + 2);
        auto* const ca = reinterpret_cast<fftwf_complex*>(a.get());
        auto* const cb = reinterpret_cast<fftwf_complex*>(b.get());
        const Buffer saved = buffer(2 * size_t(n) + 2);
        const fftwf_plan plan = kind == Kind::Complex     ? fftwf_plan_dft_1d(n, ca, cb, sign, FFTW_MEASURE)
                                : kind == Kind::ToComplex ? fftwf_plan_dft_r2c_1d(n, a.get(), cb, FFTW_MEASURE)
                                                          : fftwf_plan_dft_c2r_1d(n, ca, b.get(), FFTW_MEASURE | FFTW_PRESERVE_INPUT);
        std::copy_n(saved.get(), 2 * size_t(n) + 2, a.get());   // planning writes to its buffers
        return [=, p = std::shared_ptr<fftwf_plan_s>(plan, fftwf_destroy_plan)] {
            if (inPlace) std::copy_n(saved.get(), 2 * size_t(n), b.get());
            fftwf_execute(p.get());
        };
    });
}
#endif

const bool registered = [] {
    add("FFTFwd_CToC_32fc", tevsFFTFwd_CToC_32fc);
    add("FFTInv_CToC_32fc", tevsFFTInv_CToC_32fc);
    add("FFTFwd_CToC_32fc_I", tevsFFTFwd_CToC_32fc, true);
    add("FFTFwd_RToCCS_32f", tevsFFTFwd_RToCCS_32f);
    add("FFTInv_CCSToR_32f", tevsFFTInv_CCSToR_32f);
#if TEVS_PEER_FFTW
    addFftw("FFTFwd_CToC_32fc", Kind::Complex, FFTW_FORWARD);
    addFftw("FFTInv_CToC_32fc", Kind::Complex, FFTW_BACKWARD);
    addFftw("FFTFwd_CToC_32fc_I", Kind::Complex, FFTW_FORWARD, true);
    addFftw("FFTFwd_RToCCS_32f", Kind::ToComplex, 0);
    addFftw("FFTInv_CCSToR_32f", Kind::ToReal, 0);
#endif
    return true;
}();

}   // namespace
