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
    int32_t owned;       // 1 where InitAlloc made the block
};
static_assert(sizeof(IntegerFftSpec) == 16);

// What sets the kinds apart: their identifier, the float record inside, and whether the signal's samples and the spectrum's values have 16 bits. Those kinds
// have sizes of their own, which leave no room for a float record at order 0, where there is nothing to transform.
template <uint32_t Id, class InnerSpec, bool IsShort = false> struct IntegerFftKind : IntegerFftSpec {
    using Inner = InnerSpec;
    static constexpr uint32_t kId = Id;
    static constexpr bool kShort = IsShort;
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
