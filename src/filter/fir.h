// The record of FIR filters.
#pragma once

#include <limits.h>
#include <stdint.h>

#include <type_traits>

#include "filter/pairs.h"
#include "tevs/fir.h"

namespace tevs {

struct FirKernels;

// A record, at a 16-byte boundary, its arrays behind it. Records of several rates begin with the same members.
struct FirState {
    uint32_t id;
    int32_t tapsLen;
    int32_t dlyIndex;            // where the oldest sample of the past lies in delay
    int32_t threads;             // at most so many filter a block
    int32_t allocated;           // 1 where InitAlloc made the block
    int32_t digits;              // arrays that 16-bit taps are split into
    int64_t exponent;            // 16-bit taps stand for taps * 2^exponent
    const FirKernels* kernels;   // of the level that the record was built for
    void* reversed;              // h[tapsLen-1] .. h[0]: the order in which a block runs along the past
    void* delay;                 // the past, oldest first from dlyIndex on: twice over for single samples, or followed by the head of a block
    void* stage;                 // kStage samples and the past before them, for blocks in place or in another type
    void* overlapSave;           // null for direct filtering at every length
};
// What it takes: in blocks of InitAlloc's, at multiples of 32, its arrays begin at one too. With what 16-byte alignment costs, within 128 bytes of the reported size.
constexpr int kFirStateBytes = 96;
static_assert(sizeof(FirState) <= kFirStateBytes);

// A pair's record. Taps and delay line are kept, and sums formed, in Stored. "FI01" and so on is the identifier of a record for one rate, the second next one that
// of a record for several. A block of more than Above samples is shared out over threads.
template <class P, int Above> struct FirKind : P {
    using Stored = std::conditional_t<P::kIntegerTaps, typename P::Sample, typename P::Float>;
    static constexpr uint32_t kId = numberedIdentifier("FI", P::kPlace / 2 * 4 + P::kPlace % 2 + 1),
                              kMultirateId = numberedIdentifier("FI", P::kPlace / 2 * 4 + P::kPlace % 2 + 3);
    static constexpr int kParallelAbove = Above;
};
constexpr int kNever = INT_MAX;

using Fir_32f = FirKind<Pair_32f, 160000>;
using Fir_32fc = FirKind<Pair_32fc, 80000>;
using Fir32f_16s = FirKind<Pair32f_16s, 1600>;
using Fir32fc_16sc = FirKind<Pair32fc_16sc, 800>;
using Fir32s_16s = FirKind<Pair32s_16s, kNever>;
using Fir32s_16s32f = FirKind<Pair32s_16s32f, kNever>;
using Fir32sc_16sc = FirKind<Pair32sc_16sc, kNever>;
using Fir32sc_16sc32fc = FirKind<Pair32sc_16sc32fc, kNever>;
using Fir_64f = FirKind<Pair_64f, 1600>;
using Fir_64fc = FirKind<Pair_64fc, 800>;
using Fir64f_32f = FirKind<Pair64f_32f, 1600>;
using Fir64fc_32fc = FirKind<Pair64fc_32fc, 800>;
using Fir64f_32s = FirKind<Pair64f_32s, 1600>;
using Fir64fc_32sc = FirKind<Pair64fc_32sc, 800>;
using Fir64f_16s = FirKind<Pair64f_16s, kNever>;
using Fir64fc_16sc = FirKind<Pair64fc_16sc, kNever>;
static_assert(Fir_32f::kId == identifier("FI01") && Fir32sc_16sc::kMultirateId == identifier("FI12") && Fir64fc_16sc::kId == identifier("FI26"));

}   // namespace tevs

struct FIRState_32f : tevs::FirState {};
struct FIRState_32fc : tevs::FirState {};
struct FIRState32f_16s : tevs::FirState {};
struct FIRState32fc_16sc : tevs::FirState {};
struct FIRState32s_16s : tevs::FirState {};
struct FIRState32sc_16sc : tevs::FirState {};
struct FIRState_64f : tevs::FirState {};
struct FIRState_64fc : tevs::FirState {};
struct FIRState64f_32f : tevs::FirState {};
struct FIRState64fc_32fc : tevs::FirState {};
struct FIRState64f_32s : tevs::FirState {};
struct FIRState64fc_32sc : tevs::FirState {};
struct FIRState64f_16s : tevs::FirState {};
struct FIRState64fc_16sc : tevs::FirState {};
