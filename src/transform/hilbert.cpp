// The analytic signal, by way of the spectrum.
#include <string.h>

#include <algorithm>

#include "core/args.h"
#include "core/complex.h"
#include "core/scale.h"
#include "tevs/dft.h"
#include "tevs/hilbert.h"
#include "transform/dft.h"
#include "vector/arithmetic.table.h"
#include "vector/samples.h"

namespace tevs {
namespace {

// A record, and in blocks of their own those of its two transforms; null where their allocation failed.
template <uint32_t Id> struct HilbertKind {
    static constexpr uint32_t kId = Id;
    uint32_t id;
    int32_t length;
    int32_t workBytes;
    int32_t hint;
    DFTSpec_C_32fc* complex;
    DFTSpec_R_32f* real;
};

}   // namespace
}   // namespace tevs

struct HilbertSpec_32f32fc : tevs::HilbertKind<0x4C4D5359> {};
struct HilbertSpec_16s32fc : tevs::HilbertKind<0x4C4D535A> {};
struct HilbertSpec_16s16sc : tevs::HilbertKind<0x4C4D535B> {};

namespace tevs {
namespace {

template <class Spec> Status initAlloc(Spec** ppSpec, int length, int hint) {
    if (Status s = Args().ptr(ppSpec).len(length)) return s;
    auto* const spec = static_cast<Spec*>(allocate(sizeof(Spec)));
    *ppSpec = spec;
    if (!spec) return StatusNoMemory;
    *spec = {};
    spec->id = Spec::kId;
    spec->length = length;
    spec->hint = hint;
    if (Status s = initAllocDft(&spec->complex, length, ScaleInvByN)) return s;
    if (Status s = initAllocDft(&spec->real, length, ScaleInvByN)) {
        freeSpec(spec->complex);
        spec->complex = nullptr;
        return s;
    }
    int ofReal = 0;
    getBufSize(spec->complex, &spec->workBytes);
    getBufSize(spec->real, &ofReal);
    spec->workBytes = std::max(spec->workBytes, ofReal);
    return StatusOk;
}

template <class Spec> Status freeRecord(Spec* pSpec) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId)) return s;
    if (Status s = freeSpec(pSpec->complex)) return s;
    if (Status s = freeSpec(pSpec->real)) return s;
    releaseRecord(pSpec);
    return StatusOk;
}

// dst may begin where src does.
template <class Spec> void analytic(const Spec& spec, const float* src, float* dst, uint8_t* work) {
    const int n = spec.length, positive = (n - 1) / 2;
    forwardReal<float>(spec.real->dft, src, dst, Packing::Ccs, work);
    arithmetic->add32f(dst + 2, dst + 2, dst + 2, 2 * ptrdiff_t{positive});
    memset(dst + 2 * (n / 2 + 1), 0, size_t(positive) * 2 * sizeof(float));
    runDft<Way::Inverse, float>(spec.complex->dft, {Form::Pairs, dst, nullptr}, {Form::Pairs, dst, nullptr}, work);
}

// Up to two samples are their own analytic signal.
constexpr bool isItself(int n) { return n <= 2; }

// Calls body(work, more) with the transforms' work area and `bytes` more. A record that could not be built whole has no transforms.
template <class Spec, class Body> Status withAreas(const Spec& spec, uint64_t bytes, const Body& body) {
    if (Status s = Args().ptr(spec.real)) return s;
    const uint64_t both = roundUp16(std::max(spec.complex->dft.workBytes, spec.real->dft.workBytes) + kAlignmentRoom);
    NearestRounding guard;
    return withWorkOnStack<kDftStackBytes>(nullptr, both + bytes, [&](uint8_t* work) { body(work, reinterpret_cast<float*>(work + both)); });
}

template <class S, class Spec> Status toFloats(const S* pSrc, Complex32f* pDst, const Spec* pSpec) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).ptr(pSpec).record(pSpec, Spec::kId)) return s;
    const int n = pSpec->length;
    if (isItself(n)) {
        const float x[] = {float(pSrc[0]), float(pSrc[n - 1])};
        for (int i = 0; i < n; ++i) pDst[i] = {x[i], 0};
        return StatusOk;
    }
    constexpr bool isFloat = sizeof(S) == sizeof(float);
    return withAreas(*pSpec, isFloat ? 0 : uint64_t(n) * sizeof(float), [=](uint8_t* work, float* x) {
        const float* src = x;
        if constexpr (isFloat)
            src = pSrc;
        else
            toStored(pSrc, x, n);
        analytic(*pSpec, src, &pDst->re, work);
    });
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsHilbertInitAlloc_32f32fc(HilbertSpec_32f32fc** ppSpec, int length, int hint) { return initAlloc(ppSpec, length, hint); }
Status tevsHilbertInitAlloc_16s32fc(HilbertSpec_16s32fc** ppSpec, int length, int hint) { return initAlloc(ppSpec, length, hint); }
Status tevsHilbertInitAlloc_16s16sc(HilbertSpec_16s16sc** ppSpec, int length, int hint) { return initAlloc(ppSpec, length, hint); }
Status tevsHilbertFree_32f32fc(HilbertSpec_32f32fc* pSpec) { return freeRecord(pSpec); }
Status tevsHilbertFree_16s32fc(HilbertSpec_16s32fc* pSpec) { return freeRecord(pSpec); }
Status tevsHilbertFree_16s16sc(HilbertSpec_16s16sc* pSpec) { return freeRecord(pSpec); }
Status tevsHilbert_32f32fc(const float* pSrc, Complex32f* pDst, const HilbertSpec_32f32fc* pSpec) { return toFloats(pSrc, pDst, pSpec); }
Status tevsHilbert_16s32fc(const int16_t* pSrc, Complex32f* pDst, const HilbertSpec_16s32fc* pSpec) { return toFloats(pSrc, pDst, pSpec); }
Status tevsHilbert_16s16sc_Sfs(const int16_t* pSrc, Complex16s* pDst, const HilbertSpec_16s16sc* pSpec, int scaleFactor) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).ptr(pSpec).record(pSpec, HilbertSpec_16s16sc::kId)) return s;
    const int n = pSpec->length;
    if (isItself(n)) {
        const int16_t x[] = {pSrc[0], pSrc[n - 1]};
        for (int i = 0; i < n; ++i) pDst[i] = {scaled<int16_t, 15>(int32_t{x[i]}, scaleFactor), 0};
        return StatusOk;
    }
    return withAreas(*pSpec, uint64_t(n) * 2 * sizeof(float), [=](uint8_t* work, float* y) {
        toStored(pSrc, y, n);
        analytic(*pSpec, y, y, work);
        fromStored(y, &pDst->re, 2 * n, scaleFactor);
    });
}
