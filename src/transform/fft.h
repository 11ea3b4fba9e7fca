// FFT records: what they hold and how they are laid out.
#pragma once

#include <stdint.h>

#include "transform/fft.table.h"

namespace tevs {

// Identifiers of the record kinds.
constexpr uint32_t kFftC32fc = 4;
constexpr uint32_t kFftR32f = 6;

// A record, at a 16-byte boundary, its tables behind it in the same block. Every reported size leaves room for 80 bytes of it, at any address.
struct FftSpec {
    uint32_t id;
    int32_t order;        // of the transform; the complex one inside a real one is one less
    float forwardScale;   // 1/N, 1/sqrt(N), or 1 for none
    float inverseScale;
    int32_t hint;        // as given
    int32_t workBytes;   // scratch of one call, 0 for none
    int32_t owned;       // 1 where InitAlloc made the block
    FftTables tables;
};
static_assert(sizeof(FftSpec) <= 80);

// The three sizes that GetSize reports, in bytes.
struct FftSizes {
    uint64_t spec, init, work;
};

}   // namespace tevs

// The public names of the records; every kind is an FftSpec and is told apart by its identifier.
struct FFTSpec_C_32fc : tevs::FftSpec {};
struct FFTSpec_R_32f : tevs::FftSpec {};
