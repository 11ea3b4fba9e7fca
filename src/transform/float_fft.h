// The float FFT for the rest of the library: built in memory that its owner brings, and from then on without a failure.
#pragma once

#include <stdint.h>

#include <algorithm>

#include "core/complex.h"
#include "tevs/arithmetic.h"
#include "tevs/fft.h"
#include "transform/fft.h"
#include "transform/packing.h"

namespace tevs {

// What a record takes with its tables, from a multiple of 16 on; no more than is reported.
template <class T> uint64_t fftBytes(bool real, int order, Places places = Places::Pairs);
// The scratch that a call is fastest with; workBytes will do.
template <class T> constexpr uint64_t bestWorkBytes(const FftSpec<T>& spec) { return std::max(uint64_t(spec.workBytes), uint64_t(spec.tables.room)); }

// Transforms, with workBytes of scratch from a multiple of 32 on, or 16 more from one of 16 on (workIn). src may equal dst. Where workBytes are less than is best, a call tries to allocate that.
template <Way way, class T> void transformBy(const FftSpec<T>& spec, Pairs<const T> src, Pairs<T> dst, uint8_t* work);
template <Way way, class T> void transformBy(const FftSpec<T>& spec, Parts<const T> src, Parts<T> dst, uint8_t* work);
template <class T> void forwardBy(const FftSpec<T>& spec, const T* src, T* dst, Packing to, uint8_t* work);
template <class T> void inverseBy(const FftSpec<T>& spec, const T* src, T* dst, Packing from, uint8_t* work);

// The transform of one type of samples that an owner keeps in a block of its own: of reals to Perm order, or of complex values. Nothing is allocated.
template <class Sample> class FloatFft : FftSpec<Scalar<Sample>> {
    using T = Scalar<Sample>;
    static constexpr bool kReal = !kComplex<Sample>;

public:
    static uint64_t bytes(int order) { return fftBytes<T>(kReal, order); }
    // at is a multiple of 16, with room for bytes(order).
    static FloatFft* build(void* at, int order, int flag) {
        auto* const fft = static_cast<FloatFft*>(at);
        buildFft<T>(fft, kReal, order, flag);
        fft->FftSpec<T>::workBytes = int(bestWorkBytes<T>(*fft));
        return fft;
    }
    uint64_t workBytes() const { return uint64_t(FftSpec<T>::workBytes); }
    void forward(const Sample* src, Sample* dst, void* work) const {
        if constexpr (kReal)
            forwardBy<T>(*this, src, dst, Packing::Perm, static_cast<uint8_t*>(work));
        else
            transformBy<Way::Forward, T>(*this, Pairs<const T>{&src->re}, Pairs<T>{&dst->re}, static_cast<uint8_t*>(work));
    }
    void inverse(const Sample* src, Sample* dst, void* work) const {
        if constexpr (kReal)
            inverseBy<T>(*this, src, dst, Packing::Perm, static_cast<uint8_t*>(work));
        else
            transformBy<Way::Inverse, T>(*this, Pairs<const T>{&src->re}, Pairs<T>{&dst->re}, static_cast<uint8_t*>(work));
    }
    // The spectrum x times the spectrum h.
    void multiply(const Sample* h, Sample* x) const { product(h, x, 1 << this->order); }

private:
    static void product(const float* h, float* x, int n) { tevsMulPerm_32f_I(h, x, n); }
    static void product(const double* h, double* x, int n) { tevsMulPerm_64f_I(h, x, n); }
    static void product(const Complex32f* h, Complex32f* x, int n) { tevsMul_32fc_I(h, x, n); }
    static void product(const Complex64f* h, Complex64f* x, int n) { tevsMul_64fc_I(h, x, n); }
};

}   // namespace tevs
