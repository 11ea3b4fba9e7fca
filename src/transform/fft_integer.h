// FFT records of integer samples: a head, and behind it the record of the float transform that does the work.
#pragma once

#include <stdint.h>

#include "transform/fft.h"

namespace tevs {

// 16 bytes, so that the float record behind it stands at a 16-byte boundary too, and within the smallest reported size.
struct IntegerFftSpec {
    uint32_t id;
    int32_t order;
    int32_t workBytes;   // scratch of one call: the converted samples, and the float transform's own; 0 for none
    bool owned;          // where InitAlloc made the block
};
static_assert(sizeof(IntegerFftSpec) == 16);

// What sets the kinds apart: their identifier, the float record inside, and whether the signal's samples and the spectrum's values have 16 bits. Those kinds
// have sizes of their own, which leave no room for a float record at order 0, where there is nothing to transform.
template <uint32_t Id, class InnerSpec, bool IsShort = false> struct IntegerFftKind : IntegerFftSpec {
    using Inner = InnerSpec;
    using Real = typename Inner::Real;
    static constexpr uint32_t kId = Id;
    static constexpr bool kShort = IsShort;
    static constexpr Status kBadLength = StatusFftOrder;
    static constexpr bool goodLength(int order) { return Inner::goodLength(order); }
    static constexpr bool needsInit(int order) { return kShort ? order > 0 : Inner::needsInit(order); }

    // What N samples or their spectrum take in floating point.
    static constexpr uint64_t areaBytes(int order) { return sizeof(Real) * ((Inner::kReal ? 1 : 2) * (uint64_t{1} << order) + (Inner::kReal ? 2 : 0)); }
    static SpecSizes sizes(int order, int hint) {
        if (kShort && order == 0) return {68, 0, 0};
        if (kShort && order <= 3 && hint != HintAccurate) return shortSizes(order);
        const SpecSizes inner = Inner::sizes(order, HintNone);
        const auto more = [](uint64_t bytes) { return kShort || bytes ? bytes + 16 : 0; };
        return {inner.spec + (kShort ? 80 : 48), more(inner.init), more(inner.work) + areaBytes(order)};
    }
    static void build(IntegerFftKind* spec, int order, int flag, int hint) {
        const uint64_t work = sizes(order, hint).work;
        spec->order = order;
        // Where the float transform needs no work area, the size that 32-bit kinds report has no room to align in.
        spec->workBytes = int(work - (work > areaBytes(order) ? kAlignmentRoom : 0));
        if (work) buildFft<Real>(spec->inner(), Inner::kReal, order, flag, Inner::kParts ? Places::Parts : Places::Pairs);
        spec->id = Id;
    }
    FftSpec<Real>* inner() { return reinterpret_cast<FftSpec<Real>*>(this + 1); }
    const FftSpec<Real>& inner() const { return *reinterpret_cast<const FftSpec<Real>*>(this + 1); }

private:
    // The sizes of 16-bit records of orders 1 to 3 are those of tables for 16-bit arithmetic. Single precision is exact for sums of 16-bit samples and needs no tables
    // there, so the float record takes their place.
    static constexpr SpecSizes shortSizes(int order) {
        constexpr uint64_t kHead = 80, kPermutation = 16;
        const uint64_t n = uint64_t{1} << order;
        const uint64_t factors = Inner::kReal ? roundUp16(4 * n) + roundUp16(8 * n) : roundUp16(8 * n);
        const uint64_t work = Inner::kParts ? 12 * n : areaBytes(order);
        return {kHead + kPermutation + factors, roundUp16(n / 2 + 2) + kAlignmentRoom, work + kAlignmentRoom};
    }
};

}   // namespace tevs

// The public names of the records.
struct FFTSpec_C_16sc : tevs::IntegerFftKind<1, FFTSpec_C_32fc, true> {};
struct FFTSpec_C_16s : tevs::IntegerFftKind<2, FFTSpec_C_32f, true> {};
struct FFTSpec_R_16s : tevs::IntegerFftKind<3, FFTSpec_R_32f, true> {};
struct FFTSpec_C_32sc : tevs::IntegerFftKind<0x4C4D5364, FFTSpec_C_64fc> {};
struct FFTSpec_C_32s : tevs::IntegerFftKind<0x4C4D5365, FFTSpec_C_64f> {};
struct FFTSpec_R_32s : tevs::IntegerFftKind<0x4C4D5366, FFTSpec_R_64f> {};
struct FFTSpec_R_16s32s : tevs::IntegerFftKind<0x4C4D5367, FFTSpec_R_32f> {};
