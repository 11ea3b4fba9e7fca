// FFT of integer samples: converted to floating point, transformed, and rounded once on the way back.
#include "transform/fft_integer.h"

#include <string.h>

#include <algorithm>

#include "core/args.h"
#include "core/memory.h"
#include "core/rounding.h"
#include "core/scale.h"
#include "tevs/fft.h"
#include "transform/fft_integer.table.h"
#include "vector/conversion.table.h"

namespace tevs {
namespace {

// ---- the float transforms -----------------------------------------------------------------------------------------------------------

template <class Inner> struct Lifecycle {
    Status (*getSize)(int, int, int, int*, int*, int*);
    Status (*init)(Inner**, int, int, int, uint8_t*, uint8_t*);
};
template <class Inner> constexpr Lifecycle<Inner> kLifecycle;
template <> constexpr Lifecycle<FFTSpec_C_32fc> kLifecycle<FFTSpec_C_32fc>{tevsFFTGetSize_C_32fc, tevsFFTInit_C_32fc};
template <> constexpr Lifecycle<FFTSpec_C_32f> kLifecycle<FFTSpec_C_32f>{tevsFFTGetSize_C_32f, tevsFFTInit_C_32f};
template <> constexpr Lifecycle<FFTSpec_R_32f> kLifecycle<FFTSpec_R_32f>{tevsFFTGetSize_R_32f, tevsFFTInit_R_32f};
template <> constexpr Lifecycle<FFTSpec_C_64fc> kLifecycle<FFTSpec_C_64fc>{tevsFFTGetSize_C_64fc, tevsFFTInit_C_64fc};
template <> constexpr Lifecycle<FFTSpec_C_64f> kLifecycle<FFTSpec_C_64f>{tevsFFTGetSize_C_64f, tevsFFTInit_C_64f};
template <> constexpr Lifecycle<FFTSpec_R_64f> kLifecycle<FFTSpec_R_64f>{tevsFFTGetSize_R_64f, tevsFFTInit_R_64f};

template <class Spec> using Real = typename Spec::Inner::Real;
template <class Spec> auto innerOf(const Spec* spec) { return reinterpret_cast<const typename Spec::Inner*>(spec + 1); }

// Beyond 2^+-100 no scale changes a result: sums of integers lie between 2^-40 and 2^60 or are 0. The product with the record's own factor is exact within.
template <class T> T scaleOf(int scaleFactor) { return powerOfTwo<T>(-std::clamp(scaleFactor, -100, 100)); }

void convert(const int16_t* src, float* dst, int n) { conversion->float16s.plain(src, dst, n); }
void convert(const int32_t* src, float* dst, int n) { conversion->float32s.plain(src, dst, n); }
void convert(const int32_t* src, double* dst, int n) { conversion->double32s.plain(src, dst, n); }
void convert(const float* src, int16_t* dst, int n, float scale) { conversion->round32f16s.nearest.times(src, dst, n, scale); }
void convert(const float* src, int32_t* dst, int n, float scale) { conversion->round32f32s.nearest.times(src, dst, n, scale); }
void convert(const double* src, int32_t* dst, int n, double scale) { conversion->round64f32s.nearest.times(src, dst, n, scale); }

// ---- sizes --------------------------------------------------------------------------------------------------------------------------

// What N samples or their spectrum take in floating point.
template <class Spec> constexpr uint64_t areaBytes(uint64_t n) { return sizeof(Real<Spec>) * (Spec::Inner::kReal ? n + 2 : 2 * n); }

// The sizes of 16-bit records of orders 1 to 3 are those of tables for 16-bit arithmetic. Single precision is exact for sums of 16-bit samples and needs no tables
// there, so the float record takes their place.
template <class Spec> constexpr FftSizes shortSizes(uint64_t n) {
    constexpr uint64_t kHead = 80, kPermutation = 16;
    const uint64_t factors = Spec::Inner::kReal ? roundUp16(4 * n) + roundUp16(8 * n) : roundUp16(8 * n);
    const uint64_t work = Spec::kId == FFTSpec_C_16s::kId ? 12 * n : areaBytes<Spec>(n);
    return {kHead + kPermutation + factors, roundUp16(n / 2 + 2) + kAlignmentRoom, work + kAlignmentRoom};
}

template <class Spec> FftSizes sizesFor(int order, int hint) {
    const uint64_t n = uint64_t{1} << order;
    if (Spec::kShort && order == 0) return {68, 0, 0};
    if (Spec::kShort && order <= 3 && hint != HintAccurate) return shortSizes<Spec>(n);
    int spec, init, work;   // INT_MAX where they are larger still, and so is the sum
    kLifecycle<typename Spec::Inner>.getSize(order, NoScale, HintNone, &spec, &init, &work);
    const auto more = [](int inner) { return Spec::kShort || inner ? uint64_t(inner) + 16 : 0; };
    return {uint64_t(spec) + (Spec::kShort ? 80 : 48), more(init), more(work) + areaBytes<Spec>(n)};
}

// ---- lifecycle ----------------------------------------------------------------------------------------------------------------------

// Builds a record in a block of the reported size from its 16-byte boundary on. Whoever uses the block after a failure finds no identifier in it.
template <class Spec> Status build(Spec** ppSpec, void* block, int order, int flag, const FftSizes& sizes, uint8_t* pMemInit, bool owned) {
    auto* const spec = static_cast<Spec*>(block);
    memset(block, 0, sizeof *spec);
    if (Status s = Args().require(goodFlag(flag), StatusFftFlag).require(order < (Spec::kShort ? 1 : 4) || pMemInit, StatusNullPtr)) return s;
    if (sizes.work > 0) {
        typename Spec::Inner* inner;
        if (Status s = kLifecycle<typename Spec::Inner>.init(&inner, order, flag, HintNone, reinterpret_cast<uint8_t*>(spec + 1), pMemInit)) return s;
    }
    spec->order = order;
    // Where the float transform needs no work area, the size that 32-bit kinds report has no room to align in.
    spec->workBytes = int(sizes.work - (sizes.work > areaBytes<Spec>(uint64_t{1} << order) ? kAlignmentRoom : 0));
    spec->owned = owned;
    spec->id = Spec::kId;
    *ppSpec = spec;
    return StatusOk;
}

template <class Spec> Status getSize(int order, int hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize) {
    if (Status s = Args().require(goodOrder(order), StatusFftOrder).ptr(pSpecSize).ptr(pSpecBufferSize).ptr(pBufferSize)) return s;
    sizesFor<Spec>(order, hint).report(pSpecSize, pSpecBufferSize, pBufferSize);
    return StatusOk;
}

template <class Spec> Status init(Spec** ppSpec, int order, int flag, int hint, uint8_t* pMemSpec, uint8_t* pMemInit) {
    if (Status s = Args().ptr(ppSpec).require(goodOrder(order), StatusFftOrder)) return s;
    const FftSizes sizes = sizesFor<Spec>(order, hint);
    if (Status s = Args().require(sizes.fitInt(), StatusFftOrder).ptr(pMemSpec)) return s;
    return build(ppSpec, align16(pMemSpec), order, flag, sizes, pMemInit, false);
}

template <class Spec> Status initAlloc(Spec** ppSpec, int order, int flag, int hint) {
    if (Status s = Args().ptr(ppSpec).require(goodOrder(order), StatusFftOrder).require(goodFlag(flag), StatusFftFlag)) return s;
    const FftSizes sizes = sizesFor<Spec>(order, hint);
    if (!sizes.fitInt()) return StatusNoMemory;
    Scratch block(allocate(size_t(sizes.spec)));
    const Scratch whileBuilding(sizes.init ? allocate(size_t(sizes.init)) : nullptr);
    if (!block || (sizes.init && !whileBuilding)) return StatusNoMemory;
    if (Status s = build(ppSpec, block.get(), order, flag, sizes, static_cast<uint8_t*>(whileBuilding.get()), true)) return s;
    block.release();
    return StatusOk;
}

template <class Spec> Status free(Spec* pSpec) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId)) return s;
    pSpec->id = 0;
    if (pSpec->owned) release(pSpec);
    return StatusOk;
}

template <class Spec> Status getBufSize(const Spec* pSpec, int* pSize) {
    if (Status s = Args().ptr(pSpec).ptr(pSize).record(pSpec, Spec::kId)) return s;
    *pSize = pSpec->workBytes < 1 ? 0 : clampToInt(uint64_t(pSpec->workBytes) + kAlignmentRoom);
    return StatusOk;
}

// ---- transforms ---------------------------------------------------------------------------------------------------------------------

// Scalars in an array of N samples or of their spectrum.
using Count = int(int n);
int pairs(int n) { return 2 * n; }
int reals(int n) { return n; }
int ccs(int n) { return n == 1 ? 2 : n + 2; }

// One sample is its own spectrum. What a source array has less than a destination array is 0.
template <size_t Arrays> void narrow(const int16_t* const (&src)[Arrays], int16_t* const (&dst)[Arrays], int in, int out, int scaleFactor) {
    int16_t y[Arrays][2] = {};
    for (size_t a = 0; a < Arrays; ++a)
        for (int i = 0; i < std::min(in, out); ++i) y[a][i] = scaled<int16_t, 15>(int32_t{src[a][i]}, scaleFactor);
    for (size_t a = 0; a < Arrays; ++a) std::copy_n(y[a], out, dst[a]);
}

// Up to here a call converts on its stack: the longest complex transforms with a work area of less than a page's allocation, orders 8 (16 bits) and 7.
constexpr int kStackBytes = 4096 + 64;

// Of a call's work area, the float transform's.
template <class Spec> uint64_t innerWorkBytes(const Spec& spec) {
    const uint64_t rest = uint64_t(spec.workBytes) - areaBytes<Spec>(uint64_t{1} << spec.order);
    return rest > kAlignmentRoom ? rest - kAlignmentRoom : 0;
}
// Two times 16 bytes are left to align in, the float transform's and the call's own. Vectors of 32 bytes that each cross a line of the cache cost half as much
// time again, and blocks off the heap lie so more often than not.
uint8_t* align32(uint8_t* p) { return reinterpret_cast<uint8_t*>((reinterpret_cast<uintptr_t>(p) + 31) & ~uintptr_t{31}); }

template <class T, class E, class Inner> Status run(Status (*inPlace)(E*, const Inner*, uint8_t*), T* x, int, const Inner* inner, uint8_t* work) {
    return inPlace(reinterpret_cast<E*>(x), inner, work);
}
template <class T, class Inner> Status run(Status (*inPlace)(T*, T*, const Inner*, uint8_t*), T* x, int n, const Inner* inner, uint8_t* work) {
    return inPlace(x, x + n, inner, work);
}

// Source and destination are scalars in one array, or real and imaginary parts in two. Nothing is stored before the transform has succeeded, and all is
// read before: any array may be any other.
template <class Spec, class S, class D, size_t Arrays, class InPlace>
Status transform(const S* const (&src)[Arrays], D* const (&dst)[Arrays], const Spec* pSpec, int scaleFactor, uint8_t* pBuffer, InPlace* inPlace, Count* in,
                 Count* out) {
    const int n = 1 << pSpec->order, taken = in(n), given = out(n);
    if constexpr (Spec::kShort)
        if (n == 1) {
            narrow(src, dst, taken, given, scaleFactor);
            return StatusOk;
        }
    // The transform's own work area lies first: the converted samples of a real one are no multiple of 32 bytes.
    const uint64_t innerBytes = innerWorkBytes(*pSpec);
    alignas(64) uint8_t onStack[kStackBytes];
    const bool fits = pSpec->workBytes <= kStackBytes;
    const Scratch own(fits || pBuffer ? nullptr : allocate(size_t(pSpec->workBytes)));
    uint8_t* const work = fits ? onStack : pBuffer ? align32(pBuffer) : static_cast<uint8_t*>(own.get());
    if (!work) return StatusNoMemory;

    NearestRounding guard;
    auto* const x = reinterpret_cast<Real<Spec>*>(work + innerBytes);
    for (size_t a = 0; a < Arrays; ++a) convert(src[a], x + a * size_t(n), taken);
    if (Status s = run(inPlace, x, n, innerOf(pSpec), work)) return s;
    for (size_t a = 0; a < Arrays; ++a) convert(x + a * size_t(n), dst[a], given, scaleOf<Real<Spec>>(scaleFactor));
    return StatusOk;
}

// The whole transform in one kernel, if the order has such a one.
template <Way way, class Spec, class T, template <class> class Place>
bool inRegisters(const IntegerFftKernels::Directions<T, Place>& kernels, Place<const T> src, Place<T> dst, const Spec* pSpec, int scaleFactor) {
    if (pSpec->order >= IntegerFftKernels::kOrders) return false;
    FftTransform<T, Place>* const kernel = (way == Way::Forward ? kernels.forward : kernels.inverse)[pSpec->order];
    if (!kernel) return false;
    NearestRounding guard;
    const auto& inner = *innerOf(pSpec);
    const T scale = way == Way::Forward ? inner.forwardScale : inner.inverseScale;
    kernel(inner.tables, src, dst, nullptr, scale * scaleOf<T>(scaleFactor));
    return true;
}
const auto& pairKernels(float) { return integerFft->pairs16; }
const auto& pairKernels(double) { return integerFft->pairs32; }
const auto& partKernels(float) { return integerFft->parts16; }
const auto& partKernels(double) { return integerFft->parts32; }

template <Way way, class Spec, class C, class InPlace>
Status interleaved(const C* pSrc, C* pDst, const Spec* pSpec, int scaleFactor, uint8_t* pBuffer, InPlace* inPlace) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId).ptr(pSrc).ptr(pDst)) return s;
    using T = Real<Spec>;
    if (inRegisters<way>(pairKernels(T{}), IntegerPairs<const T>{&pSrc->re}, IntegerPairs<T>{&pDst->re}, pSpec, scaleFactor)) return StatusOk;
    return transform({&pSrc->re}, {&pDst->re}, pSpec, scaleFactor, pBuffer, inPlace, pairs, pairs);
}
template <Way way, class Spec, class S, class InPlace>
Status parts(const S* pSrcRe, const S* pSrcIm, S* pDstRe, S* pDstIm, const Spec* pSpec, int scaleFactor, uint8_t* pBuffer, InPlace* inPlace) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId).ptr(pSrcRe).ptr(pSrcIm).ptr(pDstRe).ptr(pDstIm)) return s;
    using T = Real<Spec>;
    if (inRegisters<way>(partKernels(T{}), IntegerParts<const T>{pSrcRe, pSrcIm}, IntegerParts<T>{pDstRe, pDstIm}, pSpec, scaleFactor)) return StatusOk;
    return transform({pSrcRe, pSrcIm}, {pDstRe, pDstIm}, pSpec, scaleFactor, pBuffer, inPlace, reals, reals);
}
template <class Spec, class S, class D, class InPlace>
Status real(const S* pSrc, D* pDst, const Spec* pSpec, int scaleFactor, uint8_t* pBuffer, InPlace* inPlace, Count* in, Count* out) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId).ptr(pSrc).ptr(pDst)) return s;
    return transform({pSrc}, {pDst}, pSpec, scaleFactor, pBuffer, inPlace, in, out);
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
Status tevsFFTFree_C_16sc(FFTSpec_C_16sc* pSpec) { return tevs::free(pSpec); }
Status tevsFFTFree_C_16s(FFTSpec_C_16s* pSpec) { return tevs::free(pSpec); }
Status tevsFFTFree_R_16s(FFTSpec_R_16s* pSpec) { return tevs::free(pSpec); }
Status tevsFFTFree_C_32sc(FFTSpec_C_32sc* pSpec) { return tevs::free(pSpec); }
Status tevsFFTFree_C_32s(FFTSpec_C_32s* pSpec) { return tevs::free(pSpec); }
Status tevsFFTFree_R_32s(FFTSpec_R_32s* pSpec) { return tevs::free(pSpec); }
Status tevsFFTFree_R_16s32s(FFTSpec_R_16s32s* pSpec) { return tevs::free(pSpec); }
Status tevsFFTGetBufSize_C_16sc(const FFTSpec_C_16sc* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsFFTGetBufSize_C_16s(const FFTSpec_C_16s* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsFFTGetBufSize_R_16s(const FFTSpec_R_16s* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsFFTGetBufSize_C_32sc(const FFTSpec_C_32sc* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsFFTGetBufSize_C_32s(const FFTSpec_C_32s* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsFFTGetBufSize_R_32s(const FFTSpec_R_32s* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsFFTGetBufSize_R_16s32s(const FFTSpec_R_16s32s* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }

Status tevsFFTFwd_CToC_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, const FFTSpec_C_16sc* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return interleaved<Way::Forward>(pSrc, pDst, pSpec, scaleFactor, pBuffer, tevsFFTFwd_CToC_32fc_I);
}
Status tevsFFTFwd_CToC_16sc_ISfs(Complex16s* pSrcDst, const FFTSpec_C_16sc* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return interleaved<Way::Forward>(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, tevsFFTFwd_CToC_32fc_I);
}
Status tevsFFTInv_CToC_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, const FFTSpec_C_16sc* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return interleaved<Way::Inverse>(pSrc, pDst, pSpec, scaleFactor, pBuffer, tevsFFTInv_CToC_32fc_I);
}
Status tevsFFTInv_CToC_16sc_ISfs(Complex16s* pSrcDst, const FFTSpec_C_16sc* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return interleaved<Way::Inverse>(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, tevsFFTInv_CToC_32fc_I);
}
Status tevsFFTFwd_CToC_16s_Sfs(const int16_t* pSrcRe, const int16_t* pSrcIm, int16_t* pDstRe, int16_t* pDstIm, const FFTSpec_C_16s* pSpec, int scaleFactor,
                               uint8_t* pBuffer) {
    return parts<Way::Forward>(pSrcRe, pSrcIm, pDstRe, pDstIm, pSpec, scaleFactor, pBuffer, tevsFFTFwd_CToC_32f_I);
}
Status tevsFFTFwd_CToC_16s_ISfs(int16_t* pSrcDstRe, int16_t* pSrcDstIm, const FFTSpec_C_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return parts<Way::Forward>(pSrcDstRe, pSrcDstIm, pSrcDstRe, pSrcDstIm, pSpec, scaleFactor, pBuffer, tevsFFTFwd_CToC_32f_I);
}
Status tevsFFTInv_CToC_16s_Sfs(const int16_t* pSrcRe, const int16_t* pSrcIm, int16_t* pDstRe, int16_t* pDstIm, const FFTSpec_C_16s* pSpec, int scaleFactor,
                               uint8_t* pBuffer) {
    return parts<Way::Inverse>(pSrcRe, pSrcIm, pDstRe, pDstIm, pSpec, scaleFactor, pBuffer, tevsFFTInv_CToC_32f_I);
}
Status tevsFFTInv_CToC_16s_ISfs(int16_t* pSrcDstRe, int16_t* pSrcDstIm, const FFTSpec_C_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return parts<Way::Inverse>(pSrcDstRe, pSrcDstIm, pSrcDstRe, pSrcDstIm, pSpec, scaleFactor, pBuffer, tevsFFTInv_CToC_32f_I);
}
Status tevsFFTFwd_CToC_32sc_Sfs(const Complex32s* pSrc, Complex32s* pDst, const FFTSpec_C_32sc* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return interleaved<Way::Forward>(pSrc, pDst, pSpec, scaleFactor, pBuffer, tevsFFTFwd_CToC_64fc_I);
}
Status tevsFFTFwd_CToC_32sc_ISfs(Complex32s* pSrcDst, const FFTSpec_C_32sc* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return interleaved<Way::Forward>(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, tevsFFTFwd_CToC_64fc_I);
}
Status tevsFFTInv_CToC_32sc_Sfs(const Complex32s* pSrc, Complex32s* pDst, const FFTSpec_C_32sc* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return interleaved<Way::Inverse>(pSrc, pDst, pSpec, scaleFactor, pBuffer, tevsFFTInv_CToC_64fc_I);
}
Status tevsFFTInv_CToC_32sc_ISfs(Complex32s* pSrcDst, const FFTSpec_C_32sc* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return interleaved<Way::Inverse>(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, tevsFFTInv_CToC_64fc_I);
}
Status tevsFFTFwd_CToC_32s_Sfs(const int32_t* pSrcRe, const int32_t* pSrcIm, int32_t* pDstRe, int32_t* pDstIm, const FFTSpec_C_32s* pSpec, int scaleFactor,
                               uint8_t* pBuffer) {
    return parts<Way::Forward>(pSrcRe, pSrcIm, pDstRe, pDstIm, pSpec, scaleFactor, pBuffer, tevsFFTFwd_CToC_64f_I);
}
Status tevsFFTFwd_CToC_32s_ISfs(int32_t* pSrcDstRe, int32_t* pSrcDstIm, const FFTSpec_C_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return parts<Way::Forward>(pSrcDstRe, pSrcDstIm, pSrcDstRe, pSrcDstIm, pSpec, scaleFactor, pBuffer, tevsFFTFwd_CToC_64f_I);
}
Status tevsFFTInv_CToC_32s_Sfs(const int32_t* pSrcRe, const int32_t* pSrcIm, int32_t* pDstRe, int32_t* pDstIm, const FFTSpec_C_32s* pSpec, int scaleFactor,
                               uint8_t* pBuffer) {
    return parts<Way::Inverse>(pSrcRe, pSrcIm, pDstRe, pDstIm, pSpec, scaleFactor, pBuffer, tevsFFTInv_CToC_64f_I);
}
Status tevsFFTInv_CToC_32s_ISfs(int32_t* pSrcDstRe, int32_t* pSrcDstIm, const FFTSpec_C_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return parts<Way::Inverse>(pSrcDstRe, pSrcDstIm, pSrcDstRe, pSrcDstIm, pSpec, scaleFactor, pBuffer, tevsFFTInv_CToC_64f_I);
}

Status tevsFFTFwd_RToCCS_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real(pSrc, pDst, pSpec, scaleFactor, pBuffer, tevsFFTFwd_RToCCS_32f_I, reals, ccs);
}
Status tevsFFTFwd_RToCCS_16s_ISfs(int16_t* pSrcDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, tevsFFTFwd_RToCCS_32f_I, reals, ccs);
}
Status tevsFFTFwd_RToPack_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real(pSrc, pDst, pSpec, scaleFactor, pBuffer, tevsFFTFwd_RToPack_32f_I, reals, reals);
}
Status tevsFFTFwd_RToPack_16s_ISfs(int16_t* pSrcDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, tevsFFTFwd_RToPack_32f_I, reals, reals);
}
Status tevsFFTFwd_RToPerm_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real(pSrc, pDst, pSpec, scaleFactor, pBuffer, tevsFFTFwd_RToPerm_32f_I, reals, reals);
}
Status tevsFFTFwd_RToPerm_16s_ISfs(int16_t* pSrcDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, tevsFFTFwd_RToPerm_32f_I, reals, reals);
}
Status tevsFFTFwd_RToCCS_32s_Sfs(const int32_t* pSrc, int32_t* pDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real(pSrc, pDst, pSpec, scaleFactor, pBuffer, tevsFFTFwd_RToCCS_64f_I, reals, ccs);
}
Status tevsFFTFwd_RToCCS_32s_ISfs(int32_t* pSrcDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, tevsFFTFwd_RToCCS_64f_I, reals, ccs);
}
Status tevsFFTFwd_RToPack_32s_Sfs(const int32_t* pSrc, int32_t* pDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real(pSrc, pDst, pSpec, scaleFactor, pBuffer, tevsFFTFwd_RToPack_64f_I, reals, reals);
}
Status tevsFFTFwd_RToPack_32s_ISfs(int32_t* pSrcDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, tevsFFTFwd_RToPack_64f_I, reals, reals);
}
Status tevsFFTFwd_RToPerm_32s_Sfs(const int32_t* pSrc, int32_t* pDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real(pSrc, pDst, pSpec, scaleFactor, pBuffer, tevsFFTFwd_RToPerm_64f_I, reals, reals);
}
Status tevsFFTFwd_RToPerm_32s_ISfs(int32_t* pSrcDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, tevsFFTFwd_RToPerm_64f_I, reals, reals);
}
Status tevsFFTFwd_RToCCS_16s32s_Sfs(const int16_t* pSrc, int32_t* pDst, const FFTSpec_R_16s32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real(pSrc, pDst, pSpec, scaleFactor, pBuffer, tevsFFTFwd_RToCCS_32f_I, reals, ccs);
}
Status tevsFFTInv_CCSToR_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real(pSrc, pDst, pSpec, scaleFactor, pBuffer, tevsFFTInv_CCSToR_32f_I, ccs, reals);
}
Status tevsFFTInv_CCSToR_16s_ISfs(int16_t* pSrcDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, tevsFFTInv_CCSToR_32f_I, ccs, reals);
}
Status tevsFFTInv_PackToR_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real(pSrc, pDst, pSpec, scaleFactor, pBuffer, tevsFFTInv_PackToR_32f_I, reals, reals);
}
Status tevsFFTInv_PackToR_16s_ISfs(int16_t* pSrcDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, tevsFFTInv_PackToR_32f_I, reals, reals);
}
Status tevsFFTInv_PermToR_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real(pSrc, pDst, pSpec, scaleFactor, pBuffer, tevsFFTInv_PermToR_32f_I, reals, reals);
}
Status tevsFFTInv_PermToR_16s_ISfs(int16_t* pSrcDst, const FFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, tevsFFTInv_PermToR_32f_I, reals, reals);
}
Status tevsFFTInv_CCSToR_32s_Sfs(const int32_t* pSrc, int32_t* pDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real(pSrc, pDst, pSpec, scaleFactor, pBuffer, tevsFFTInv_CCSToR_64f_I, ccs, reals);
}
Status tevsFFTInv_CCSToR_32s_ISfs(int32_t* pSrcDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, tevsFFTInv_CCSToR_64f_I, ccs, reals);
}
Status tevsFFTInv_PackToR_32s_Sfs(const int32_t* pSrc, int32_t* pDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real(pSrc, pDst, pSpec, scaleFactor, pBuffer, tevsFFTInv_PackToR_64f_I, reals, reals);
}
Status tevsFFTInv_PackToR_32s_ISfs(int32_t* pSrcDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, tevsFFTInv_PackToR_64f_I, reals, reals);
}
Status tevsFFTInv_PermToR_32s_Sfs(const int32_t* pSrc, int32_t* pDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real(pSrc, pDst, pSpec, scaleFactor, pBuffer, tevsFFTInv_PermToR_64f_I, reals, reals);
}
Status tevsFFTInv_PermToR_32s_ISfs(int32_t* pSrcDst, const FFTSpec_R_32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real(pSrcDst, pSrcDst, pSpec, scaleFactor, pBuffer, tevsFFTInv_PermToR_64f_I, reals, reals);
}
Status tevsFFTInv_CCSToR_32s16s_Sfs(const int32_t* pSrc, int16_t* pDst, const FFTSpec_R_16s32s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real(pSrc, pDst, pSpec, scaleFactor, pBuffer, tevsFFTInv_CCSToR_32f_I, ccs, reals);
}
