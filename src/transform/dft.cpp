// DFT of any length: tables, methods, and the float records.
#include "transform/dft.h"

#include <string.h>

#include <bit>
#include <cmath>
#include <utility>

#include "core/args.h"
#include "core/complex.h"
#include "tevs/dft.h"
#include "transform/roots.h"
#include "vector/arithmetic.table.h"
#include "vector/movement.table.h"

namespace tevs {
namespace {

constexpr bool isPowerOfTwo(int n) { return std::has_single_bit(unsigned(n)); }
constexpr int orderOf(int n) { return std::bit_width(unsigned(n)) - 1; }

template <class T> FftSpec<T>* planFft(bool real, int order, int flag, Carve& c, bool write, Places places = Places::Pairs) {
    auto* const fft = reinterpret_cast<FftSpec<T>*>(c.take<uint8_t>(fftBytes<T>(real, order, places)));
    if (write) buildFft<T>(fft, real, order, flag, places);
    return fft;
}
// What a record of the FFT says of its work area: more than any has where it could not be built by itself.
template <class T> uint64_t fftWork(bool real, int order) {
    const SpecSizes sizes = fftSizes<T>(real, order);
    return !sizes.fitInt() ? UINT64_MAX / 2 : sizes.work ? sizes.work - kAlignmentRoom : 0;
}

template <class T> void setScales(T (&scale)[2], int length, int flag) {
    const T factor = flag == ScaleBySqrtN ? T(1.0 / std::sqrt(double(length))) : T(1) / T(length);
    scale[0] = flag == ScaleFwdByN || flag == ScaleBySqrtN ? factor : T(1);
    scale[1] = flag == ScaleInvByN || flag == ScaleBySqrtN ? factor : T(1);
}

template <class T> auto* productKernel() {
    if constexpr (sizeof(T) == 4)
        return arithmetic->mul32fc;
    else
        return arithmetic->mul64fc;
}

template <Way way, class T> void runChirp(const AnyDft<T>& dft, const Values<const T>& src, const Values<T>& dst, uint8_t* work) {
    if (reinterpret_cast<uintptr_t>(work) % 32 != 0) work += 16;
    const size_t n = size_t(dft.length), m = size_t(dft.convolution);
    T* const x = reinterpret_cast<T*>(work);
    uint8_t* const free = work + 2 * m * sizeof(T);
    const auto multiply = productKernel<T>();
    if (src.form == Form::Parts || src.form == Form::Reals) {
        if (src.form == Form::Parts)
            (sizeof(T) == 4 ? movement->join32 : movement->join64)(src.re, src.im, x, ptrdiff_t(n));
        else
            (sizeof(T) == 4 ? movement->onlyReal32 : movement->onlyReal64)(src.re, x, ptrdiff_t(n));
        multiply(x, dft.chirp, x, 2 * ptrdiff_t(n));
    } else {
        multiply(src.re, dft.chirp, x, 2 * ptrdiff_t(n));
    }
    memset(x + 2 * n, 0, 2 * (m - n) * sizeof(T));
    transformBy<Way::Forward, T>(*dft.fft, Pairs<const T>{x}, Pairs<T>{x}, free);
    multiply(x, dft.spectrum, x, 2 * ptrdiff_t(m));
    transformBy<Way::Inverse, T>(*dft.fft, Pairs<const T>{x}, Pairs<T>{x}, free);
    const bool parts = dst.form == Form::Parts;
    T* const y = parts ? x : dst.re;
    multiply(x, dft.chirp, y, 2 * ptrdiff_t(n));
    const T scale = dft.scale[way == Way::Inverse];
    if (scale != 1)
        for (size_t i = 0; i < 2 * n; ++i) y[i] *= scale;
    if (way == Way::Inverse)
        for (size_t i = 1, j = n - 1; i < j; ++i, --j) {
            std::swap(y[2 * i], y[2 * j]);
            std::swap(y[2 * i + 1], y[2 * j + 1]);
        }
    if (parts) (sizeof(T) == 4 ? movement->split32 : movement->split64)(y, dst.re, dst.im, ptrdiff_t(n));
}

template <class T> const DftKernels<T>* kernelsOf(const RealDft<T>& real) {
    if (real.dft.mixed.kernels) return real.dft.mixed.kernels;
    if constexpr (sizeof(T) == 4)
        return dft32;
    else
        return dft64;
}

}   // namespace

// Bluestein's form of the transform as a convolution with a chirp (L. Bluestein, A linear filtering approach to the computation of the discrete Fourier transform, 1970).
template <class T> void planChirp(AnyDft<T>& dft, int length, int flag, T* scratch, Carve& c, bool write) {
    dft = {};
    dft.length = length;
    setScales(dft.scale, length, flag);
    const auto n = uint64_t(dft.length), m = std::bit_ceil(2 * n - 1);
    const int order = std::bit_width(m) - 1;
    dft.workBytes = 2 * sizeof(T) * m;
    if (order > kMaxOrder) return;   // more than any record may have
    dft.workBytes += fftWork<T>(false, order) + kAlignmentRoom;
    dft.convolution = int(m);
    dft.fft = planFft<T>(false, order, NoScale, c, write);
    T *const chirp = c.take<T>(2 * n), *const h = c.take<T>(2 * m);
    dft.chirp = chirp;
    dft.spectrum = h;
    if (!write) return;
    memset(h, 0, size_t(2 * m) * sizeof(T));
    const T over = T(1) / T(m);
    for (uint64_t k = 0, square = 0; k < n; ++k) {
        const Root r = rootOfUnity(square, 2 * n);
        chirp[2 * k] = T(r.re);
        chirp[2 * k + 1] = T(r.im);
        for (uint64_t at : {k, (m - k) % m}) {
            h[2 * at] = T(r.re) * over;
            h[2 * at + 1] = T(-r.im) * over;
        }
        square = (square + 2 * k + 1) % (2 * n);   // (k + 1)^2
    }
    transformBy<Way::Forward, T>(*dft.fft, Pairs<const T>{h}, Pairs<T>{h}, reinterpret_cast<uint8_t*>(scratch));
}

template <class T> void planDft(AnyDft<T>& dft, int length, int flag, T* scratch, Carve& c, bool write) {
    if (!isPowerOfTwo(length) && !isMixedLength(length)) return planChirp(dft, length, flag, scratch, c, write);
    dft = {};
    dft.length = length;
    setScales(dft.scale, length, flag);
    if (isPowerOfTwo(length)) {
        const int order = orderOf(length);
        dft.fft = planFft<T>(false, order, flag, c, write, Places::Either);
        const uint64_t work = fftWork<T>(false, order);
        dft.workBytes = work ? work + kAlignmentRoom : 0;
    } else {
        planMixedRadix(dft.mixed, length, c, write);
        dft.workBytes = length <= 4 ? 0 : 2 * sizeof(T) * uint64_t(length) + kAlignmentRoom;
    }
}

template <Way way, class T> void runDft(const AnyDft<T>& dft, const Values<const T>& src, const Values<T>& dst, uint8_t* work) {
    if (dft.convolution) return runChirp<way>(dft, src, dst, work);
    if (dft.fft) {
        if (src.form == Form::Parts)
            transformBy<way, T>(*dft.fft, Parts<const T>{src.re, src.im}, Parts<T>{dst.re, dst.im}, work);
        else
            transformBy<way, T>(*dft.fft, Pairs<const T>{src.re}, Pairs<T>{dst.re}, work);
        return;
    }
    const T scale = dft.scale[way == Way::Inverse];
    T* const area = reinterpret_cast<T*>(work);
    if (way == Way::Forward) return runMixedRadix(dft.mixed, src, dst, scale, area);
    const auto exchanged = []<class V>(const V& v) { return v.form == Form::Parts ? V{v.form, v.im, v.re} : V{Form::SwappedPairs, v.re, nullptr}; };
    runMixedRadix(dft.mixed, exchanged(src), exchanged(dst), scale, area);
}

template <class T> void planDft(RealDft<T>& real, int length, int flag, T* scratch, Carve& c, bool write) {
    real = {};
    real.length = length;
    const auto n = uint64_t(length);
    if (isPowerOfTwo(length)) {
        const int order = orderOf(length);
        real.fft = planFft<T>(true, order, flag, c, write);
        const uint64_t work = fftWork<T>(true, order);
        real.workBytes = work ? work + kAlignmentRoom : 0;
        return;
    }
    const bool even = length % 2 == 0;
    planDft(real.dft, even ? length / 2 : length, NoScale, scratch, c, write);
    setScales(real.dft.scale, length, flag);
    real.workBytes = roundUp16((even ? 1 : 2) * n * sizeof(T)) + real.dft.workBytes;
    if (!even) return;
    real.dft.scale[0] *= T(0.5);   // the recombination takes half the transform
    T* const roots = c.take<T>((n / 2 + 1) / 2 * 2);
    real.roots = roots;
    for (uint64_t k = 0; write && k < (n / 2 + 1) / 2; ++k) {
        const Root r = rootOfUnity(k, n);
        roots[2 * k] = T(r.re);
        roots[2 * k + 1] = T(r.im);
    }
}

template <class T> void forwardReal(const RealDft<T>& real, const T* src, T* dst, Packing to, uint8_t* work) {
    if (real.fft) return forwardBy<T>(*real.fft, src, dst, to, work);
    const int n = real.length, half = n / 2;
    const uint64_t area = roundUp16((n % 2 == 0 ? 1 : 2) * uint64_t(n) * sizeof(T));
    T* const z = reinterpret_cast<T*>(work);
    T* const bins = dst + firstPair(to, n);   // X[1]
    if (n % 2 == 0) {
        runDft<Way::Forward, T>(real.dft, {Form::Pairs, src, nullptr}, {Form::Pairs, z, nullptr}, work + area);
        kernelsOf(real)->binsOfPairs(z, bins - 2, half, real.roots);
        const T a = z[0] + z[0], b = z[1] + z[1];
        dst[0] = a + b;
        dst[secondReal(to, n)] = a - b;
        if (to == Packing::Ccs) dst[1] = dst[n + 1] = 0;
        return;
    }
    runDft<Way::Forward, T>(real.dft, {Form::Reals, src, nullptr}, {Form::Pairs, z, nullptr}, work + area);
    memcpy(bins, z + 2, 2 * size_t(half) * sizeof(T));
    dst[0] = z[0];
    if (to == Packing::Ccs) dst[1] = 0;
}

template <class T> void inverseReal(const RealDft<T>& real, const T* src, T* dst, Packing from, uint8_t* work) {
    if (real.fft) return inverseBy<T>(*real.fft, src, dst, from, work);
    const int n = real.length, half = n / 2;
    const uint64_t area = roundUp16((n % 2 == 0 ? 1 : 2) * uint64_t(n) * sizeof(T));
    T* const z = reinterpret_cast<T*>(work);
    const T* const bins = src + firstPair(from, n);
    if (n % 2 == 0) {
        kernelsOf(real)->pairsOfBins(bins - 2, z, half, real.roots);
        const T first = src[0], last = src[secondReal(from, n)];
        z[0] = first + last;
        z[1] = first - last;
        runDft<Way::Inverse, T>(real.dft, {Form::Pairs, z, nullptr}, {Form::Pairs, dst, nullptr}, work + area);
        return;
    }
    z[0] = src[0];
    z[1] = 0;
    (sizeof(T) == 4 ? movement->unfold32 : movement->unfold64)(bins, z + 2, z + 2 * (n - half), half);
    runDft<Way::Inverse, T>(real.dft, {Form::Pairs, z, nullptr}, {Form::Pairs, z, nullptr}, work + area);
    (sizeof(T) == 4 ? movement->real32 : movement->real64)(z, dst, n);
}

#define TEVS_ANY_DFT(T)                                                                                       \
    template void planChirp(AnyDft<T>&, int, int, T*, Carve&, bool);                                          \
    template void planDft(AnyDft<T>&, int, int, T*, Carve&, bool);                                            \
    template void planDft(RealDft<T>&, int, int, T*, Carve&, bool);                                           \
    template void runDft<Way::Forward>(const AnyDft<T>&, const Values<const T>&, const Values<T>&, uint8_t*); \
    template void runDft<Way::Inverse>(const AnyDft<T>&, const Values<const T>&, const Values<T>&, uint8_t*); \
    template void forwardReal(const RealDft<T>&, const T*, T*, Packing, uint8_t*);                            \
    template void inverseReal(const RealDft<T>&, const T*, T*, Packing, uint8_t*);
TEVS_ANY_DFT(float)
TEVS_ANY_DFT(double)
#undef TEVS_ANY_DFT

namespace {

// ---- calls -----------------------------------------------------------------------------------------------------------------------------

// Calls body(work): on the stack, where that has the room; else the caller's, or the library's own.
template <class Any, class Body> [[gnu::always_inline]] inline Status withDftWork(const Any& dft, uint8_t* pBuffer, const Body& body) {
    NearestRounding guard;
    return withWorkOnStack<kDftStackBytes>(pBuffer, dft.workBytes, body);
}

template <Way way, class Spec, class C> Status transform(const C* pSrc, C* pDst, const Spec* pSpec, uint8_t* pBuffer) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId).ptr(pSrc).ptr(pDst)) return s;
    using T = typename Spec::Real;
    return withDftWork(pSpec->dft, pBuffer, [=](uint8_t* work) {
        runDft<way, T>(pSpec->dft, {Form::Pairs, &pSrc->re, nullptr}, {Form::Pairs, &pDst->re, nullptr}, work);
    });
}
template <Way way, class Spec, class T> Status transform(const T* pSrcRe, const T* pSrcIm, T* pDstRe, T* pDstIm, const Spec* pSpec, uint8_t* pBuffer) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId).ptr(pSrcRe).ptr(pSrcIm).ptr(pDstRe).ptr(pDstIm)) return s;
    return withDftWork(pSpec->dft, pBuffer, [=](uint8_t* work) {
        runDft<way, T>(pSpec->dft, {Form::Parts, pSrcRe, pSrcIm}, {Form::Parts, pDstRe, pDstIm}, work);
    });
}
template <class Spec, class T> Status forward(const T* pSrc, T* pDst, const Spec* pSpec, uint8_t* pBuffer, Packing to) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId).ptr(pSrc).ptr(pDst)) return s;
    return withDftWork(pSpec->dft, pBuffer, [=](uint8_t* work) { forwardReal<T>(pSpec->dft, pSrc, pDst, to, work); });
}
template <class Spec, class T> Status inverse(const T* pSrc, T* pDst, const Spec* pSpec, uint8_t* pBuffer, Packing from) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId).ptr(pSrc).ptr(pDst)) return s;
    return withDftWork(pSpec->dft, pBuffer, [=](uint8_t* work) { inverseReal<T>(pSpec->dft, pSrc, pDst, from, work); });
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsDFTInitAlloc_C_32fc(DFTSpec_C_32fc** ppSpec, int length, int flag, int) { return initAllocDft(ppSpec, length, flag); }
Status tevsDFTInitAlloc_C_32f(DFTSpec_C_32f** ppSpec, int length, int flag, int) { return initAllocDft(ppSpec, length, flag); }
Status tevsDFTInitAlloc_R_32f(DFTSpec_R_32f** ppSpec, int length, int flag, int) { return initAllocDft(ppSpec, length, flag); }
Status tevsDFTInitAlloc_C_64fc(DFTSpec_C_64fc** ppSpec, int length, int flag, int) { return initAllocDft(ppSpec, length, flag); }
Status tevsDFTInitAlloc_C_64f(DFTSpec_C_64f** ppSpec, int length, int flag, int) { return initAllocDft(ppSpec, length, flag); }
Status tevsDFTInitAlloc_R_64f(DFTSpec_R_64f** ppSpec, int length, int flag, int) { return initAllocDft(ppSpec, length, flag); }
Status tevsDFTFree_C_32fc(DFTSpec_C_32fc* pSpec) { return freeSpec(pSpec); }
Status tevsDFTFree_C_32f(DFTSpec_C_32f* pSpec) { return freeSpec(pSpec); }
Status tevsDFTFree_R_32f(DFTSpec_R_32f* pSpec) { return freeSpec(pSpec); }
Status tevsDFTFree_C_64fc(DFTSpec_C_64fc* pSpec) { return freeSpec(pSpec); }
Status tevsDFTFree_C_64f(DFTSpec_C_64f* pSpec) { return freeSpec(pSpec); }
Status tevsDFTFree_R_64f(DFTSpec_R_64f* pSpec) { return freeSpec(pSpec); }
Status tevsDFTGetBufSize_C_32fc(const DFTSpec_C_32fc* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsDFTGetBufSize_C_32f(const DFTSpec_C_32f* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsDFTGetBufSize_R_32f(const DFTSpec_R_32f* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsDFTGetBufSize_C_64fc(const DFTSpec_C_64fc* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsDFTGetBufSize_C_64f(const DFTSpec_C_64f* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsDFTGetBufSize_R_64f(const DFTSpec_R_64f* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsDFTFwd_CToC_32fc(const Complex32f* pSrc, Complex32f* pDst, const DFTSpec_C_32fc* pSpec, uint8_t* pBuffer) {
    return transform<Way::Forward>(pSrc, pDst, pSpec, pBuffer);
}
Status tevsDFTInv_CToC_32fc(const Complex32f* pSrc, Complex32f* pDst, const DFTSpec_C_32fc* pSpec, uint8_t* pBuffer) {
    return transform<Way::Inverse>(pSrc, pDst, pSpec, pBuffer);
}
Status tevsDFTFwd_CToC_32f(const float* pSrcRe, const float* pSrcIm, float* pDstRe, float* pDstIm, const DFTSpec_C_32f* pSpec, uint8_t* pBuffer) {
    return transform<Way::Forward>(pSrcRe, pSrcIm, pDstRe, pDstIm, pSpec, pBuffer);
}
Status tevsDFTInv_CToC_32f(const float* pSrcRe, const float* pSrcIm, float* pDstRe, float* pDstIm, const DFTSpec_C_32f* pSpec, uint8_t* pBuffer) {
    return transform<Way::Inverse>(pSrcRe, pSrcIm, pDstRe, pDstIm, pSpec, pBuffer);
}
Status tevsDFTFwd_CToC_64fc(const Complex64f* pSrc, Complex64f* pDst, const DFTSpec_C_64fc* pSpec, uint8_t* pBuffer) {
    return transform<Way::Forward>(pSrc, pDst, pSpec, pBuffer);
}
Status tevsDFTInv_CToC_64fc(const Complex64f* pSrc, Complex64f* pDst, const DFTSpec_C_64fc* pSpec, uint8_t* pBuffer) {
    return transform<Way::Inverse>(pSrc, pDst, pSpec, pBuffer);
}
Status tevsDFTFwd_CToC_64f(const double* pSrcRe, const double* pSrcIm, double* pDstRe, double* pDstIm, const DFTSpec_C_64f* pSpec, uint8_t* pBuffer) {
    return transform<Way::Forward>(pSrcRe, pSrcIm, pDstRe, pDstIm, pSpec, pBuffer);
}
Status tevsDFTInv_CToC_64f(const double* pSrcRe, const double* pSrcIm, double* pDstRe, double* pDstIm, const DFTSpec_C_64f* pSpec, uint8_t* pBuffer) {
    return transform<Way::Inverse>(pSrcRe, pSrcIm, pDstRe, pDstIm, pSpec, pBuffer);
}
Status tevsDFTFwd_RToCCS_32f(const float* pSrc, float* pDst, const DFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return forward(pSrc, pDst, pSpec, pBuffer, Packing::Ccs);
}
Status tevsDFTFwd_RToPack_32f(const float* pSrc, float* pDst, const DFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return forward(pSrc, pDst, pSpec, pBuffer, Packing::Pack);
}
Status tevsDFTFwd_RToPerm_32f(const float* pSrc, float* pDst, const DFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return forward(pSrc, pDst, pSpec, pBuffer, Packing::Perm);
}
Status tevsDFTFwd_RToCCS_64f(const double* pSrc, double* pDst, const DFTSpec_R_64f* pSpec, uint8_t* pBuffer) {
    return forward(pSrc, pDst, pSpec, pBuffer, Packing::Ccs);
}
Status tevsDFTFwd_RToPack_64f(const double* pSrc, double* pDst, const DFTSpec_R_64f* pSpec, uint8_t* pBuffer) {
    return forward(pSrc, pDst, pSpec, pBuffer, Packing::Pack);
}
Status tevsDFTFwd_RToPerm_64f(const double* pSrc, double* pDst, const DFTSpec_R_64f* pSpec, uint8_t* pBuffer) {
    return forward(pSrc, pDst, pSpec, pBuffer, Packing::Perm);
}
Status tevsDFTInv_CCSToR_32f(const float* pSrc, float* pDst, const DFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return inverse(pSrc, pDst, pSpec, pBuffer, Packing::Ccs);
}
Status tevsDFTInv_PackToR_32f(const float* pSrc, float* pDst, const DFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return inverse(pSrc, pDst, pSpec, pBuffer, Packing::Pack);
}
Status tevsDFTInv_PermToR_32f(const float* pSrc, float* pDst, const DFTSpec_R_32f* pSpec, uint8_t* pBuffer) {
    return inverse(pSrc, pDst, pSpec, pBuffer, Packing::Perm);
}
Status tevsDFTInv_CCSToR_64f(const double* pSrc, double* pDst, const DFTSpec_R_64f* pSpec, uint8_t* pBuffer) {
    return inverse(pSrc, pDst, pSpec, pBuffer, Packing::Ccs);
}
Status tevsDFTInv_PackToR_64f(const double* pSrc, double* pDst, const DFTSpec_R_64f* pSpec, uint8_t* pBuffer) {
    return inverse(pSrc, pDst, pSpec, pBuffer, Packing::Pack);
}
Status tevsDFTInv_PermToR_64f(const double* pSrc, double* pDst, const DFTSpec_R_64f* pSpec, uint8_t* pBuffer) {
    return inverse(pSrc, pDst, pSpec, pBuffer, Packing::Perm);
}
Status tevsDFTOutOrdInitAlloc_C_32fc(DFTOutOrdSpec_C_32fc** ppSpec, int length, int flag, int) { return initAllocDft(ppSpec, length, flag); }
Status tevsDFTOutOrdInitAlloc_C_64fc(DFTOutOrdSpec_C_64fc** ppSpec, int length, int flag, int) { return initAllocDft(ppSpec, length, flag); }
Status tevsDFTOutOrdFree_C_32fc(DFTOutOrdSpec_C_32fc* pSpec) { return freeSpec(pSpec); }
Status tevsDFTOutOrdFree_C_64fc(DFTOutOrdSpec_C_64fc* pSpec) { return freeSpec(pSpec); }
Status tevsDFTOutOrdGetBufSize_C_32fc(const DFTOutOrdSpec_C_32fc* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsDFTOutOrdGetBufSize_C_64fc(const DFTOutOrdSpec_C_64fc* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsDFTOutOrdFwd_CToC_32fc(const Complex32f* pSrc, Complex32f* pDst, const DFTOutOrdSpec_C_32fc* pSpec, uint8_t* pBuffer) {
    return transform<Way::Forward>(pSrc, pDst, pSpec, pBuffer);
}
Status tevsDFTOutOrdInv_CToC_32fc(const Complex32f* pSrc, Complex32f* pDst, const DFTOutOrdSpec_C_32fc* pSpec, uint8_t* pBuffer) {
    return transform<Way::Inverse>(pSrc, pDst, pSpec, pBuffer);
}
Status tevsDFTOutOrdFwd_CToC_64fc(const Complex64f* pSrc, Complex64f* pDst, const DFTOutOrdSpec_C_64fc* pSpec, uint8_t* pBuffer) {
    return transform<Way::Forward>(pSrc, pDst, pSpec, pBuffer);
}
Status tevsDFTOutOrdInv_CToC_64fc(const Complex64f* pSrc, Complex64f* pDst, const DFTOutOrdSpec_C_64fc* pSpec, uint8_t* pBuffer) {
    return transform<Way::Inverse>(pSrc, pDst, pSpec, pBuffer);
}
