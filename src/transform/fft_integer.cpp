// FFT of integer samples: converted to floating point, transformed, and rounded once on the way back.
#include "transform/fft_integer.h"

#include <emmintrin.h>

#include <algorithm>

#include "core/args.h"
#include "core/scale.h"
#include "tevs/fft.h"
#include "transform/fft_integer.table.h"
#include "transform/float_fft.h"
#include "transform/integer.h"

namespace tevs {
namespace {

// One sample is its own spectrum. What a source array has less than a destination array is 0.
template <size_t Arrays> Status narrow(const int16_t* const (&src)[Arrays], int16_t* const (&dst)[Arrays], int in, int out, int scaleFactor) {
    int16_t y[Arrays][2] = {};
    for (size_t a = 0; a < Arrays; ++a)
        for (int i = 0; i < std::min(in, out); ++i) y[a][i] = scaled<int16_t, 15>(int32_t{src[a][i]}, scaleFactor);
    for (size_t a = 0; a < Arrays; ++a) std::copy_n(y[a], out, dst[a]);
    return StatusOk;
}

// In place through the float record.
template <class Spec, class S, class D, size_t Arrays, class Body>
Status transform(const S* const (&src)[Arrays], D* const (&dst)[Arrays], const Spec* pSpec, int taken, int given, int scaleFactor, uint8_t* pBuffer,
                 const Body& body) {
    using T = typename Spec::Real;
    const FftSpec<T>& inner = pSpec->inner();
    return throughFloats<T>(src, dst, 1 << pSpec->order, taken, given, scaleFactor, pBuffer, uint64_t(pSpec->workBytes), uint64_t(inner.workBytes),
                            [&](T* x, uint8_t* work) { body(inner, x, work); });
}

// The whole transform in one kernel, if the order has such a one. Beyond 2^+-100 no scale changes a result: sums of integers lie between 2^-40 and 2^60 or are 0. The
// product with the record's own factor is exact within.
template <Way way, class T> T scaleOf(const FftSpec<T>& inner, int scaleFactor) {
    const int e = -std::clamp(scaleFactor, -100, 100);
    const T scale = way == Way::Forward ? inner.forwardScale : inner.inverseScale;
    if constexpr (sizeof(T) == 4)
        return scale * powerOfTwo<T>(e);
    else   // 2^e put together in a vector register: two words stored by 32-bit code would not be there in time to be loaded as one
        return scale * _mm_cvtsd_f64(_mm_castsi128_pd(_mm_slli_epi64(_mm_cvtsi32_si128(e + 1023), 52)));
}
template <Way way, class T, template <class> class Place>
bool inRegisters(const typename FftKernels<T>::template IntegerDirections<Place>& kernels, Place<const T> src, Place<T> dst, const FftSpec<T>& inner,
                 int scaleFactor) {
    if (inner.order >= FftKernels<T>::kIntegerOrders) return false;
    FftTransform<T, Place>* const kernel = (way == Way::Forward ? kernels.forward : kernels.inverse)[inner.order];
    if (!kernel) return false;
    NearestRounding guard;
    kernel(inner.tables, src, dst, nullptr, scaleOf<way>(inner, scaleFactor));
    return true;
}
// Of reals by the types of the signal's samples and the spectrum's values.
const auto& realKernels(const int16_t*, const int16_t*) { return fftInteger->of16s; }
const auto& realKernels(const int16_t*, const int32_t*) { return fftInteger->of16s32s; }
const auto& realKernels(const int32_t*, const int32_t*) { return fftInteger->of32s; }
template <Way way, class T, class S, class D> bool inRegisters(const S* src, D* dst, const FftSpec<T>& inner, int scaleFactor, Packing packing) {
    const auto call = [&](const auto& kernels, const auto& ofOrder) {
        const int at = inner.order - 1;
        if (at < 0 || at >= kernels.kOrders) return false;
        NearestRounding guard;
        ofOrder[at](src, dst, packing, scaleOf<way>(inner, scaleFactor));
        return true;
    };
    if constexpr (way == Way::Forward)
        return call(realKernels(src, dst), realKernels(src, dst).forward);
    else
        return call(realKernels(dst, src), realKernels(dst, src).inverse);
}

template <Way way, class Spec, class C> Status interleaved(const C* pSrc, C* pDst, const Spec* pSpec, int scaleFactor, uint8_t* pBuffer) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId).ptr(pSrc).ptr(pDst)) return s;
    using T = typename Spec::Real;
    const int n = 1 << pSpec->order;
    if constexpr (Spec::kShort)
        if (n == 1) return narrow({&pSrc->re}, {&pDst->re}, 2, 2, scaleFactor);
    const FftSpec<T>& inner = pSpec->inner();
    if (inRegisters<way, T>(inner.kernels->integerPairs, IntegerPairs<const T>{&pSrc->re}, IntegerPairs<T>{&pDst->re}, inner, scaleFactor)) return StatusOk;
    return transform({&pSrc->re}, {&pDst->re}, pSpec, 2 * n, 2 * n, scaleFactor, pBuffer,
                     [](const FftSpec<T>& fft, T* x, uint8_t* work) { transformBy<way>(fft, Pairs<const T>{x}, Pairs<T>{x}, work); });
}
template <Way way, class Spec, class S>
Status parts(const S* pSrcRe, const S* pSrcIm, S* pDstRe, S* pDstIm, const Spec* pSpec, int scaleFactor, uint8_t* pBuffer) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId).ptr(pSrcRe).ptr(pSrcIm).ptr(pDstRe).ptr(pDstIm)) return s;
    using T = typename Spec::Real;
    const int n = 1 << pSpec->order;
    if constexpr (Spec::kShort)
        if (n == 1) return narrow({pSrcRe, pSrcIm}, {pDstRe, pDstIm}, 1, 1, scaleFactor);
    const FftSpec<T>& inner = pSpec->inner();
    if (inRegisters<way, T>(inner.kernels->integerParts, IntegerParts<const T>{pSrcRe, pSrcIm}, IntegerParts<T>{pDstRe, pDstIm}, inner, scaleFactor))
        return StatusOk;
    return transform({pSrcRe, pSrcIm}, {pDstRe, pDstIm}, pSpec, n, n, scaleFactor, pBuffer, [n](const FftSpec<T>& fft, T* x, uint8_t* work) {
        transformBy<way>(fft, Parts<const T>{x, x + n}, Parts<T>{x, x + n}, work);
    });
}
template <Way way, class Spec, class S, class D> Status real(const S* pSrc, D* pDst, const Spec* pSpec, int scaleFactor, uint8_t* pBuffer, Packing packing) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId).ptr(pSrc).ptr(pDst)) return s;
    using T = typename Spec::Real;
    const int n = 1 << pSpec->order, bins = packedLen(packing, n);
    const int taken = way == Way::Forward ? n : bins, given = way == Way::Forward ? bins : n;
    if constexpr (Spec::kShort)
        if (n == 1) return narrow({pSrc}, {pDst}, taken, given, scaleFactor);
    if (inRegisters<way>(pSrc, pDst, pSpec->inner(), scaleFactor, packing)) return StatusOk;
    return transform({pSrc}, {pDst}, pSpec, taken, given, scaleFactor, pBuffer, [packing](const FftSpec<T>& fft, T* x, uint8_t* work) {
        if constexpr (way == Way::Forward)
            forwardBy<T>(fft, x, x, packing, work);
        else
            inverseBy<T>(fft, x, x, packing, work);
    });
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsFFTGetSize_C_16sc(int order, int, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize) {
    return getSize<FFTSpec_C_16sc>(order, hint, pSpecSize, pSpecBufferSize, pBufferSize);
}
Status tevsFFTGetSize_C_16s(int order, int, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize) {
    return getSize<FFTSpec_C_16s>(order, hint, pSpecSize, pSpecBufferSize, pBufferSize);
}
Status tevsFFTGetSize_R_16s(int order, int, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize) {
    return getSize<FFTSpec_R_16s>(order, hint, pSpecSize, pSpecBufferSize, pBufferSize);
}
Status tevsFFTGetSize_C_32sc(int order, int, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize) {
    return getSize<FFTSpec_C_32sc>(order, hint, pSpecSize, pSpecBufferSize, pBufferSize);
}
Status tevsFFTGetSize_C_32s(int order, int, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize) {
    return getSize<FFTSpec_C_32s>(order, hint, pSpecSize, pSpecBufferSize, pBufferSize);
}
Status tevsFFTGetSize_R_32s(int order, int, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize) {
    return getSize<FFTSpec_R_32s>(order, hint, pSpecSize, pSpecBufferSize, pBufferSize);
}
Status tevsFFTGetSize_R_16s32s(int order, int, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize) {
    return getSize<FFTSpec_R_16s32s>(order, hint, pSpecSize, pSpecBufferSize, pBufferSize);
}
Status tevsFFTInit_C_16sc(FFTSpec_C_16sc** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit) {
    return init(ppSpec, order, flag, hint, pMemSpec, pMemInit);
}
Status tevsFFTInit_C_16s(FFTSpec_C_16s** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit) {
    return init(ppSpec, order, flag, hint, pMemSpec, pMemInit);
}
Status tevsFFTInit_R_16s(FFTSpec_R_16s** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit) {
    return init(ppSpec, order, flag, hint, pMemSpec, pMemInit);
}
Status tevsFFTInit_C_32sc(FFTSpec_C_32sc** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit) {
    return init(ppSpec, order, flag, hint, pMemSpec, pMemInit);
}
Status tevsFFTInit_C_32s(FFTSpec_C_32s** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit) {
    return init(ppSpec, order, flag, hint, pMemSpec, pMemInit);
}
Status tevsFFTInit_R_32s(FFTSpec_R_32s** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit) {
    return init(ppSpec, order, flag, hint, pMemSpec, pMemInit);
}
Status tevsFFTInit_R_16s32s(FFTSpec_R_16s32s** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit) {
    return init(ppSpec, order, flag, hint, pMemSpec, pMemInit);
}
Status tevsFFTInitAlloc_C_16sc(FFTSpec_C_16sc** ppSpec, int order, int flag, int hint) { return initAlloc(ppSpec, order, flag, hint); }
Status tevsFFTInitAlloc_C_16s(FFTSpec_C_16s** ppSpec, int order, int flag, int hint) { return initAlloc(ppSpec, order, flag, hint); }
Status tevsFFTInitAlloc_R_16s(FFTSpec_R_16s** ppSpec, int order, int flag, int hint) { return initAlloc(ppSpec, order, flag, hint); }
Status tevsFFTInitAlloc_C_32sc(FFTSpec_C_32sc** ppSpec, int order, int flag, int hint) { return initAlloc(ppSpec, order, flag, hint); }
Status tevsFFTInitAlloc_C_32s(FFTSpec_C_32s** ppSpec, int order, int flag, int hint) { return initAlloc(ppSpec, order, flag, hint); }
Status tevsFFTInitAlloc_R_32s(FFTSpec_R_32s** ppSpec, int order, int flag, int hint) { return initAlloc(ppSpec, order, flag, hint); }
Status tevsFFTInitAlloc_R_16s32s(FFTSpec_R_16s32s** ppSpec, int order, int flag, int hint) { return initAlloc(ppSpec, order, flag, hint); }
Status tevsFFTFree_C_16sc(FFTSpec_C_16sc* pSpec) { return freeSpec(pSpec); }
Status tevsFFTFree_C_16s(FFTSpec_C_16s* pSpec) { return freeSpec(pSpec); }
Status tevsFFTFree_R_16s(FFTSpec_R_16s* pSpec) { return freeSpec(pSpec); }
Status tevsFFTFree_C_32sc(FFTSpec_C_32sc* pSpec) { return freeSpec(pSpec); }
Status tevsFFTFree_C_32s(FFTSpec_C_32s* pSpec) { return freeSpec(pSpec); }
Status tevsFFTFree_R_32s(FFTSpec_R_32s* pSpec) { return freeSpec(pSpec); }
Status tevsFFTFree_R_16s32s(FFTSpec_R_16s32s* pSpec) { return freeSpec(pSpec); }
Status tevsFFTGetBufSize_C_16sc(const FFTSpec_C_16sc* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsFFTGetBufSize_C_16s(const FFTSpec_C_16s* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsFFTGetBufSize_R_16s(const FFTSpec_R_16s* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsFFTGetBufSize_C_32sc(const FFTSpec_C_32sc* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsFFTGetBufSize_C_32s(const FFTSpec_C_32s* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsFFTGetBufSize_R_32s(const FFTSpec_R_32s* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsFFTGetBufSize_R_16s32s(const FFTSpec_R_16s32s* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }

Status tevsFFTFwd_CToC_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, const FFTSpec_C_16sc* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return interleaved<Way::Forward>(pSrc, pDst, pSpec, scaleFactor, pBuffer);
}
Status tevsFFTFwd_CToC_16sc_ISfs(Complex16s* pSrcDst, const FFTSpec_C_16sc* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return interleaved<Way::Forward>(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer);
}
Status tevsFFTInv_CToC_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, const FFTSpec_C_16sc* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return interleaved<Way::Inverse>(pSrc, pDst, pSpec, scaleFactor, pBuffer);
}
Status tevsFFTInv_CToC_16sc_ISfs(Complex16s* pSrcDst, const FFTSpec_C_16sc* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return interleaved<Way::Inverse>(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer);
}
Status tevsFFTFwd_CToC_16s_Sfs(const int16_t* pSrcRe, const int16_t* pSrcIm, int16_t* pDstRe, int16_t* pDstIm, const FFTSpec_C_16s* pSpec, int scaleFactor,
                               uint8_t* pBuffer) {
    return parts<Way::Forward>(pSrcRe, pSrcIm, pDstRe, pDstIm, pSpec, scaleFactor, pBuffer);
}
Status tevsFFTFwd_CToC_16s_ISfs(int16_t* pSrcDstRe, int16_t* pSrcDstIm, const FFTSpec_C_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return parts<Way::Forward>(pSrcDstRe, pSrcDstIm, pSrcDstRe, pSrcDstIm, pSpec, scaleFactor, pBuffer);
}
Status tevsFFTInv_CToC_16s_Sfs(const int16_t* pSrcRe, const int16_t* pSrcIm, int16_t* pDstRe, int16_t* pDstIm, const FFTSpec_C_16s* pSpec, int scaleFactor,
                               uint8_t* pBuffer) {
    return parts<Way::Inverse>(pSrcRe, pSrcIm, pDstRe, pDstIm, pSpec, scaleFactor, pBuffer);
}
Status tevsFFTInv_CToC_16s_ISfs(int16_t* pSrcDstRe, int16_t* pSrcDstIm, const FFTSpec_C_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return parts<Way::Inverse>(pSrcDstRe, pSrcDstIm, pSrcDstRe, pSrcDstIm, pSpec, scaleFactor, pBuffer);
}
Status tevsFFTFwd_CToC_32sc_Sfs(const Complex32s* pSrc, Complex32s* pDst, const FFTSpec_C_32sc* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return interleaved<Way::Forward>(pSrc, pDst, pSpec, scaleFactor, pBuffer);
}
Status tevsFFTFwd_CToC_32sc_ISfs(Complex32s* pSrcDst, const FFTSpec_C_32sc* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return interleaved<Way::Forward>(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer);
}
Status tevsFFTInv_CToC_32sc_Sfs(const Complex32s* pSrc, Complex32s* pDst, const FFTSpec_C_32sc* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return interleaved<Way::Inverse>(pSrc, pDst, pSpec, scaleFactor, pBuffer);
}
Status tevsFFTInv_CToC_32sc_ISfs(Complex32s* pSrcDst, const FFTSpec_C_32sc* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return interleaved<Way::Inverse>(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer);
}
Status tevsFFTFwd_CToC_32s_Sfs(const int32_t* pSrcRe, const int32_t* pSrcIm, int32_t* pDstRe, int32_t* pDstIm, const FFTSpec_C_32s* pSpec, int scaleFactor,
                               uint8_t* pBuffer) {
    return parts<Way::Forward>(pSrcRe, pSrcIm, pDstRe, pDstIm, pSpec, scaleFactor, pBuffer);
}
Status tevsFFTFwd_CToC_32s_ISfs(int32_t* pSrcDstRe, int32_t* pSrcDstIm, const FFTSpec_C_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return parts<Way::Forward>(pSrcDstRe, pSrcDstIm, pSrcDstRe, pSrcDstIm, pSpec, scaleFactor, pBuffer);
}
Status tevsFFTInv_CToC_32s_Sfs(const int32_t* pSrcRe, const int32_t* pSrcIm, int32_t* pDstRe, int32_t* pDstIm, const FFTSpec_C_32s* pSpec, int scaleFactor,
                               uint8_t* pBuffer) {
    return parts<Way::Inverse>(pSrcRe, pSrcIm, pDstRe, pDstIm, pSpec, scaleFactor, pBuffer);
}
Status tevsFFTInv_CToC_32s_ISfs(int32_t* pSrcDstRe, int32_t* pSrcDstIm, const FFTSpec_C_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return parts<Way::Inverse>(pSrcDstRe, pSrcDstIm, pSrcDstRe, pSrcDstIm, pSpec, scaleFactor, pBuffer);
}

Status tevsFFTFwd_RToCCS_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Forward>(pSrc, pDst, pSpec, scaleFactor, pBuffer, Packing::Ccs);
}
Status tevsFFTFwd_RToCCS_16s_ISfs(int16_t* pSrcDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Forward>(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, Packing::Ccs);
}
Status tevsFFTFwd_RToPack_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Forward>(pSrc, pDst, pSpec, scaleFactor, pBuffer, Packing::Pack);
}
Status tevsFFTFwd_RToPack_16s_ISfs(int16_t* pSrcDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Forward>(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, Packing::Pack);
}
Status tevsFFTFwd_RToPerm_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Forward>(pSrc, pDst, pSpec, scaleFactor, pBuffer, Packing::Perm);
}
Status tevsFFTFwd_RToPerm_16s_ISfs(int16_t* pSrcDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Forward>(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, Packing::Perm);
}
Status tevsFFTFwd_RToCCS_32s_Sfs(const int32_t* pSrc, int32_t* pDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Forward>(pSrc, pDst, pSpec, scaleFactor, pBuffer, Packing::Ccs);
}
Status tevsFFTFwd_RToCCS_32s_ISfs(int32_t* pSrcDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Forward>(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, Packing::Ccs);
}
Status tevsFFTFwd_RToPack_32s_Sfs(const int32_t* pSrc, int32_t* pDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Forward>(pSrc, pDst, pSpec, scaleFactor, pBuffer, Packing::Pack);
}
Status tevsFFTFwd_RToPack_32s_ISfs(int32_t* pSrcDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Forward>(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, Packing::Pack);
}
Status tevsFFTFwd_RToPerm_32s_Sfs(const int32_t* pSrc, int32_t* pDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Forward>(pSrc, pDst, pSpec, scaleFactor, pBuffer, Packing::Perm);
}
Status tevsFFTFwd_RToPerm_32s_ISfs(int32_t* pSrcDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Forward>(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, Packing::Perm);
}
Status tevsFFTFwd_RToCCS_16s32s_Sfs(const int16_t* pSrc, int32_t* pDst, const FFTSpec_R_16s32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Forward>(pSrc, pDst, pSpec, scaleFactor, pBuffer, Packing::Ccs);
}
Status tevsFFTInv_CCSToR_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Inverse>(pSrc, pDst, pSpec, scaleFactor, pBuffer, Packing::Ccs);
}
Status tevsFFTInv_CCSToR_16s_ISfs(int16_t* pSrcDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Inverse>(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, Packing::Ccs);
}
Status tevsFFTInv_PackToR_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Inverse>(pSrc, pDst, pSpec, scaleFactor, pBuffer, Packing::Pack);
}
Status tevsFFTInv_PackToR_16s_ISfs(int16_t* pSrcDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Inverse>(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, Packing::Pack);
}
Status tevsFFTInv_PermToR_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Inverse>(pSrc, pDst, pSpec, scaleFactor, pBuffer, Packing::Perm);
}
Status tevsFFTInv_PermToR_16s_ISfs(int16_t* pSrcDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Inverse>(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, Packing::Perm);
}
Status tevsFFTInv_CCSToR_32s_Sfs(const int32_t* pSrc, int32_t* pDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Inverse>(pSrc, pDst, pSpec, scaleFactor, pBuffer, Packing::Ccs);
}
Status tevsFFTInv_CCSToR_32s_ISfs(int32_t* pSrcDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Inverse>(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, Packing::Ccs);
}
Status tevsFFTInv_PackToR_32s_Sfs(const int32_t* pSrc, int32_t* pDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Inverse>(pSrc, pDst, pSpec, scaleFactor, pBuffer, Packing::Pack);
}
Status tevsFFTInv_PackToR_32s_ISfs(int32_t* pSrcDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Inverse>(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, Packing::Pack);
}
Status tevsFFTInv_PermToR_32s_Sfs(const int32_t* pSrc, int32_t* pDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Inverse>(pSrc, pDst, pSpec, scaleFactor, pBuffer, Packing::Perm);
}
Status tevsFFTInv_PermToR_32s_ISfs(int32_t* pSrcDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Inverse>(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, Packing::Perm);
}
Status tevsFFTInv_CCSToR_32s16s_Sfs(const int32_t* pSrc, int16_t* pDst, const FFTSpec_R_16s32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Inverse>(pSrc, pDst, pSpec, scaleFactor, pBuffer, Packing::Ccs);
}
