// The record of FIR filters, and the pairs of tap and sample types that they are built for.
#pragma once

#include <limits.h>
#include <stdint.h>

#include <type_traits>

#include "core/complex.h"
#include "tevs/fir.h"

namespace tevs {

// A record, at a 16-byte boundary, its arrays behind it. Records of several rates begin with the same members.
struct FirState {
    uint32_t id;
    int32_t tapsLen;
    int32_t dlyIndex;    // where the oldest sample of the past lies in delay
    int32_t fftLen;      // transform length of overlap-save, -1 for direct filtering at every length
    int32_t threads;     // work areas, one a thread
    int32_t allocated;   // 1 where InitAlloc made the block
    int64_t exponent;    // 16-bit taps stand for taps * 2^exponent
    int32_t digits;      // arrays that 16-bit taps are split into
    int64_t workBytes;   // of one area: fftLen samples and a transform's scratch
    void* reversed;      // h[tapsLen-1] .. h[0]: the order in which a block runs along the past
    void* delay;         // the past, oldest first from dlyIndex on: twice over for single samples, or followed by the head of a block
    void* stage;         // kStage samples and the past before them, for blocks in place or in another type
    void* spectrum;      // transform of the taps, zeros behind them, divided by nothing
    void* fft;
    unsigned char* work;
};
static_assert(sizeof(FirState) <= 112);   // with what 16-byte alignment costs, the 128 bytes of the reported size

// Taps of type TapT over samples of type SampleT. Taps and delay line are kept, and sums formed, in StoredT.
// "FI01" and so on is the identifier of a record for one rate, the second next one that of a record for several. A block of more than Above samples is shared
// out over threads.
template <class TapT, class StoredT, class SampleT, int Number, int Above> struct FirKind {
    using Tap = TapT;
    using Stored = StoredT;
    using Sample = SampleT;
    static constexpr uint32_t identify(int n) { return 0x46490000u | uint32_t('0' + n / 10) << 8 | uint32_t('0' + n % 10); }
    static constexpr uint32_t kId = identify(Number), kMultirateId = identify(Number + 2);
    static constexpr int kParallelAbove = Above;
    static constexpr bool kIntegerTaps = std::is_same_v<Scalar<StoredT>, int16_t>;
    static constexpr bool kScaled = std::is_integral_v<Scalar<SampleT>>;
};
constexpr int kNever = INT_MAX;

using Fir_32f = FirKind<float, float, float, 1, 160000>;
using Fir_32fc = FirKind<Complex32f, Complex32f, Complex32f, 2, 80000>;
using Fir32f_16s = FirKind<float, float, int16_t, 5, 1600>;
using Fir32fc_16sc = FirKind<Complex32f, Complex32f, Complex16s, 6, 800>;
using Fir32s_16s = FirKind<int32_t, int16_t, int16_t, 9, kNever>;
using Fir32s_16s32f = FirKind<float, int16_t, int16_t, 9, kNever>;
using Fir32sc_16sc = FirKind<Complex32s, Complex16s, Complex16s, 10, kNever>;
using Fir32sc_16sc32fc = FirKind<Complex32f, Complex16s, Complex16s, 10, kNever>;
using Fir_64f = FirKind<double, double, double, 13, 1600>;
using Fir_64fc = FirKind<Complex64f, Complex64f, Complex64f, 14, 800>;
using Fir64f_32f = FirKind<double, double, float, 17, 1600>;
using Fir64fc_32fc = FirKind<Complex64f, Complex64f, Complex32f, 18, 800>;
using Fir64f_32s = FirKind<double, double, int32_t, 21, 1600>;
using Fir64fc_32sc = FirKind<Complex64f, Complex64f, Complex32s, 22, 800>;
using Fir64f_16s = FirKind<double, double, int16_t, 25, kNever>;
using Fir64fc_16sc = FirKind<Complex64f, Complex64f, Complex16s, 26, kNever>;

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
