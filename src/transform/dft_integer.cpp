// DFT of 16-bit samples: converted to floating point, transformed, and rounded once on the way back.
#include "core/args.h"
#include "tevs/dft.h"
#include "transform/dft.h"
#include "transform/integer.h"

namespace tevs {
namespace {

// In place through the float transform, of which one sample needs none.
template <class Spec, size_t Arrays, class Body>
Status throughDft(const int16_t* const (&src)[Arrays], int16_t* const (&dst)[Arrays], const Spec* pSpec, int taken, int given, int scaleFactor,
                  uint8_t* pBuffer, const Body& body) {
    const int n = pSpec->length;
    const uint64_t bytes = pSpec->workBytes > 0 ? uint64_t(pSpec->workBytes) : 16;
    return throughFloats<float>(src, dst, n, taken, given, scaleFactor, pBuffer, bytes, Spec::inner(pSpec->dft), [&](float* x, uint8_t* work) {
        if (pSpec->dft.workBytes <= Spec::inner(pSpec->dft)) return body(x, work);
        alignas(32) uint8_t few[512];
        body(x, few);
    });
}

template <Way way, class Spec, class C> Status transform(const C* pSrc, C* pDst, const Spec* pSpec, int scaleFactor, uint8_t* pBuffer) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId).ptr(pSrc).ptr(pDst)) return s;
    const int n = pSpec->length;
    return throughDft({&pSrc->re}, {&pDst->re}, pSpec, 2 * n, 2 * n, scaleFactor, pBuffer, [=](float* x, uint8_t* work) {
        if (n > 1) runDft<way, float>(pSpec->dft, {Form::Pairs, x, nullptr}, {Form::Pairs, x, nullptr}, work);
    });
}
template <Way way, class Spec>
Status transform(const int16_t* pSrcRe, const int16_t* pSrcIm, int16_t* pDstRe, int16_t* pDstIm, const Spec* pSpec, int scaleFactor, uint8_t* pBuffer) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId).ptr(pSrcRe).ptr(pSrcIm).ptr(pDstRe).ptr(pDstIm)) return s;
    const int n = pSpec->length;
    return throughDft({pSrcRe, pSrcIm}, {pDstRe, pDstIm}, pSpec, n, n, scaleFactor, pBuffer, [=](float* x, uint8_t* work) {
        if (n > 1) runDft<way, float>(pSpec->dft, {Form::Parts, x, x + n}, {Form::Parts, x, x + n}, work);
    });
}
template <Way way, class Spec> Status real(const int16_t* pSrc, int16_t* pDst, const Spec* pSpec, int scaleFactor, uint8_t* pBuffer, Packing packing) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId).ptr(pSrc).ptr(pDst)) return s;
    const int n = pSpec->length, bins = packedLen(packing, n);
    const int taken = way == Way::Forward ? n : bins, given = way == Way::Forward ? bins : n;
    return throughDft({pSrc}, {pDst}, pSpec, taken, given, scaleFactor, pBuffer, [=](float* x, uint8_t* work) {
        if (n == 1)
            x[1] = 0;
        else if (way == Way::Forward)
            forwardReal<float>(pSpec->dft, x, x, packing, work);
        else
            inverseReal<float>(pSpec->dft, x, x, packing, work);
    });
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsDFTInitAlloc_C_16sc(DFTSpec_C_16sc** ppSpec, int length, int flag, int) { return initAllocDft(ppSpec, length, flag); }
Status tevsDFTInitAlloc_C_16s(DFTSpec_C_16s** ppSpec, int length, int flag, int) { return initAllocDft(ppSpec, length, flag); }
Status tevsDFTInitAlloc_R_16s(DFTSpec_R_16s** ppSpec, int length, int flag, int) { return initAllocDft(ppSpec, length, flag); }
Status tevsDFTFree_C_16sc(DFTSpec_C_16sc* pSpec) { return freeSpec(pSpec); }
Status tevsDFTFree_C_16s(DFTSpec_C_16s* pSpec) { return freeSpec(pSpec); }
Status tevsDFTFree_R_16s(DFTSpec_R_16s* pSpec) { return freeSpec(pSpec); }
Status tevsDFTGetBufSize_C_16sc(const DFTSpec_C_16sc* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsDFTGetBufSize_C_16s(const DFTSpec_C_16s* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsDFTGetBufSize_R_16s(const DFTSpec_R_16s* pSpec, int* pSize) { return getBufSize(pSpec, pSize); }
Status tevsDFTFwd_CToC_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, const DFTSpec_C_16sc* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return transform<Way::Forward>(pSrc, pDst, pSpec, scaleFactor, pBuffer);
}
Status tevsDFTInv_CToC_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, const DFTSpec_C_16sc* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return transform<Way::Inverse>(pSrc, pDst, pSpec, scaleFactor, pBuffer);
}
Status tevsDFTFwd_CToC_16s_Sfs(const int16_t* pSrcRe, const int16_t* pSrcIm, int16_t* pDstRe, int16_t* pDstIm, const DFTSpec_C_16s* pSpec, int scaleFactor,
                               uint8_t* pBuffer) {
    return transform<Way::Forward>(pSrcRe, pSrcIm, pDstRe, pDstIm, pSpec, scaleFactor, pBuffer);
}
Status tevsDFTInv_CToC_16s_Sfs(const int16_t* pSrcRe, const int16_t* pSrcIm, int16_t* pDstRe, int16_t* pDstIm, const DFTSpec_C_16s* pSpec, int scaleFactor,
                               uint8_t* pBuffer) {
    return transform<Way::Inverse>(pSrcRe, pSrcIm, pDstRe, pDstIm, pSpec, scaleFactor, pBuffer);
}
Status tevsDFTFwd_RToCCS_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const DFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Forward>(pSrc, pDst, pSpec, scaleFactor, pBuffer, Packing::Ccs);
}
Status tevsDFTFwd_RToPack_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const DFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Forward>(pSrc, pDst, pSpec, scaleFactor, pBuffer, Packing::Pack);
}
Status tevsDFTFwd_RToPerm_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const DFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Forward>(pSrc, pDst, pSpec, scaleFactor, pBuffer, Packing::Perm);
}
Status tevsDFTInv_CCSToR_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const DFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Inverse>(pSrc, pDst, pSpec, scaleFactor, pBuffer, Packing::Ccs);
}
Status tevsDFTInv_PackToR_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const DFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Inverse>(pSrc, pDst, pSpec, scaleFactor, pBuffer, Packing::Pack);
}
Status tevsDFTInv_PermToR_16s_Sfs(const int16_t* pSrc, int16_t* pDst, const DFTSpec_R_16s* pSpec, int scaleFactor, uint8_t* pBuffer) {
    return real<Way::Inverse>(pSrc, pDst, pSpec, scaleFactor, pBuffer, Packing::Perm);
}
