// FIR filters: y[t] = sum over k of h[k] x[t-k], with taps and past in a record.
#include "filter/fir.h"

#include <string.h>

#include <algorithm>
#include <utility>

#include "core/args.h"
#include "core/memory.h"
#include "core/parallel.h"
#include "core/rounding.h"
#include "filter/delay_line.h"
#include "filter/fir_kernels.h"
#include "filter/fir_taps.h"
#include "filter/multirate.h"
#include "filter/overlap_save.h"

namespace tevs {
namespace {

constexpr int kStage = 4080;          // the most samples that are copied at a time, of a block in place or in another type
constexpr int kChunk = 256;           // outputs in another type that are made at a time
constexpr int kLongestDirect = 511;   // samples of a block that is filtered directly even where the record has a transform

// ---- what the engine asks of a type that taps and past are kept in ----------------------------------------------------------------------

// The number of taps from which on InitAlloc prepares overlap-save.
template <class Stored> constexpr int kFewestTransformed = kComplex<Stored> ? 16 : sizeof(Stored) == 4 ? 64 : 32;

// Order of the transform: of four times the largest power of two not above tapsLen.
int fftOrder(int tapsLen) {
    int k = 2;
    while (int64_t{1} << k <= tapsLen) ++k;
    return k + 1;
}

void setKernelTap(int16_t* to, int16_t h, int16_t) { *to = h; }
void setKernelTap(TapMatrix* to, int16_t re, int16_t im) { *to = {{re, int16_t(-im)}, {im, re}}; }
Complex64s kernelProduct(int16_t t, int16_t x) { return {t * x, 0}; }
Complex64s kernelProduct(const TapMatrix& t, Complex16s x) { return {int64_t{t.re[0] * x.re} + t.re[1] * x.im, int64_t{t.im[0] * x.re} + t.im[1] * x.im}; }
int16_t kernelTap(int16_t t, int) { return t; }
int16_t kernelTap(const TapMatrix& t, int part) { return part == 0 ? t.re[0] : t.im[0]; }

// ---- a record ---------------------------------------------------------------------------------------------------------------------------

template <class Kind> class Fir {
    using Tap = typename Kind::Tap;
    using Stored = typename Kind::Stored;
    using Sample = typename Kind::Sample;
    using KernelTap = std::conditional_t<std::is_same_v<Stored, Complex16s>, TapMatrix, Stored>;
    static constexpr bool kIntegerTaps = Kind::kIntegerTaps;            // kept in 16 bits
    static constexpr bool kStraight = std::is_same_v<Stored, Sample>;   // samples are filtered where they lie
    static constexpr bool kPaired = std::is_same_v<Stored, int16_t>;    // the kernel takes an even number of taps: a 0 comes first
    static constexpr int kDigits = kIntegerTaps ? 2 : 1;
    static constexpr int kPiece = std::min(kStage, 16320 / int(sizeof(Stored)));   // what is copied stays in the first cache

public:
    explicit Fir(const FirState* s) : s_(const_cast<FirState*>(s)) {}

    // Taps, past and stage lie within this at any address: it has more than the taps take, and kStage samples.
    static int64_t stateBytes(int tapsLen, int threads) {
        constexpr int64_t size = sizeof(Stored);
        const int64_t t = tapsLen;
        const auto rounded = [](int64_t samples) { return int64_t(roundUp16(uint64_t(samples * size))); };
        return rounded(3 * t + 4) + 5 * rounded(t) + 128 + size * (4 * int64_t{threads} + 4092);
    }
    static bool fits(int tapsLen, int threads) { return tapsLen >= 1 && stateBytes(tapsLen, threads) <= INT_MAX; }

    // The part of a record that both lifecycles have. Over no block it only adds up.
    static uint64_t layOut(void* block, int tapsLen, int threads) {
        Carve c(block);
        auto* const s = reinterpret_cast<FirState*>(c.take<unsigned char>(kFirStateBytes));
        auto* const taps = c.take<KernelTap>(kDigits * tapRoom(tapsLen));
        auto* const delay = c.take<Stored>(3 * uint64_t(tapsLen) + 4);
        auto* const stage = c.take<Stored>(uint64_t(tapsLen) + kStage);
        if (s)
            *s = {.id = Kind::kId,
                  .tapsLen = tapsLen,
                  .dlyIndex = 0,
                  .threads = threads,
                  .allocated = 0,
                  .digits = 1,
                  .exponent = 0,
                  .kernels = fir,
                  .reversed = taps,
                  .delay = delay,
                  .stage = stage,
                  .overlapSave = nullptr};
        return c.size();
    }

    // A record in a block of the library's own, with what overlap-save needs where there are taps enough.
    static Status build(FirState** ppState, const Tap* pTaps, int tapsLen, const Sample* pDlyLine, int tapsFactor) {
        const int threads = threadsAtBuild(), order = !kIntegerTaps && tapsLen >= kFewestTransformed<Stored> ? fftOrder(tapsLen) : 0;
        if (order > kMaxOrder) return StatusFftOrder;
        auto* const state = static_cast<FirState*>(allocate(layOut(nullptr, tapsLen, threads)));
        if (!state) return StatusNoMemory;
        layOut(state, tapsLen, threads);
        state->allocated = 1;
        Fir f(state);
        if constexpr (!kIntegerTaps)
            if (order > 0) {
                state->overlapSave = OverlapSave<Stored>::create(tapsLen, order, threads);
                if (!state->overlapSave) {
                    f.free();
                    return StatusNoMemory;
                }
            }
        f.setTaps(pTaps, tapsFactor);
        f.setPast(pDlyLine);
        *ppState = state;
        return StatusOk;
    }
    void free() {
        if (!s_->allocated) return;
        if constexpr (!kIntegerTaps) OverlapSave<Stored>::destroy(overlapSave());
        releaseRecord(s_);
    }

    void setTaps(const Tap* pTaps, int tapsFactor) {
        if constexpr (kIntegerTaps) {
            setShortTaps(pTaps, tapsFactor);
        } else {
            if (auto* const o = overlapSave()) o->setTaps(pTaps);
            std::reverse_copy(pTaps, pTaps + tapsLen(), taps());
        }
    }
    void getTaps(Tap* pTaps) const {
        if constexpr (kIntegerTaps) {
            const KernelTap *const lower = taps() + kernelTapsLen() - 1, *const upper = lower + tapRoom(tapsLen());
            Scalar<Tap>* to = partsOf(pTaps);
            for (int k = 0; k < tapsLen(); ++k)
                for (int part = 0; part < kParts<Tap>; ++part) {
                    const int h = kernelTap(lower[-k], part) + (s_->digits == 2 ? 256 * kernelTap(upper[-k], part) : 0);
                    *to++ = tapValue<Scalar<Tap>>(int16_t(h), s_->exponent);
                }
        } else {
            std::reverse_copy(taps(), taps() + tapsLen(), pTaps);
        }
    }

    void setPast(const Sample* pDlyLine) {
        s_->dlyIndex = 0;
        tevs::setPast(delay(), pDlyLine, tapsLen());
    }
    void getPast(Sample* pDlyLine) const { tevs::getPast(past(), pDlyLine, tapsLen()); }

    void block(const Sample* pSrc, Sample* pDst, int numIters, int scaleFactor) {
        const int team = numIters > Kind::kParallelAbove ? teamSize(s_->threads) : 1;
        if constexpr (!kIntegerTaps)
            if (numIters > kLongestDirect && s_->overlapSave) return byTransforms(pSrc, pDst, numIters, team, scaleFactor);
        direct(pSrc, pDst, numIters, team, scaleFactor);
    }

    // The newest sample is added by itself: a vector load that takes in what was stored a moment ago waits for the store.
    void one(Sample src, Sample* pDst, int scaleFactor) {
        const auto x = toStored<Stored>(src);
        const int older = tapsLen() - 1;
        Circle<Stored> circle(delay(), tapsLen(), s_->dlyIndex);
        const Stored* const in = circle.push(x);
        if constexpr (kIntegerTaps) {
            int64_t total[kParts<Stored>] = {};
            const KernelTap* digit = taps() + (kernelTapsLen() - tapsLen());
            for (int d = 0; d < s_->digits; ++d, digit += tapRoom(tapsLen())) {
                const auto add = [&total, unit = d == 0 ? 1 : 256](const auto& sum) {
                    for (int part = 0; part < kParts<Stored>; ++part) total[part] += int64_t{partsOf(&sum)[part]} * unit;
                };
                forEachRun(older, [&](int first, int count) { add(kernel().dot(in + first, digit + first, count)); });
                add(kernelProduct(digit[older], x));
            }
            for (int part = 0; part < kParts<Stored>; ++part) partsOf(pDst)[part] = scaled<int16_t, 62>(total[part], sumScale(scaleFactor));
        } else {
            *pDst = fromStored<Sample>(sumOf(kernel().dot(in, taps(), older), productOf(taps()[older], x)), scaleFactor);
        }
        s_->dlyIndex = circle.index();
    }

private:
    static int kernelTapsLen(int tapsLen) { return kPaired ? tapsLen + (tapsLen & 1) : tapsLen; }
    static uint64_t tapRoom(int tapsLen) { return uint64_t(kPaired ? int64_t{tapsLen} + (tapsLen & 1) : int64_t{tapsLen}); }
    const auto& kernel() const { return kernelOf<Stored>(s_->kernels); }
    int tapsLen() const { return s_->tapsLen; }
    int kernelTapsLen() const { return kernelTapsLen(tapsLen()); }
    KernelTap* taps() const { return static_cast<KernelTap*>(s_->reversed); }
    Stored* delay() const { return static_cast<Stored*>(s_->delay); }
    Stored* past() const { return delay() + s_->dlyIndex; }
    Stored* stage() const { return static_cast<Stored*>(s_->stage); }
    auto* overlapSave() const { return static_cast<OverlapSave<Stored>*>(s_->overlapSave); }

    void setShortTaps(const Tap* pTaps, int tapsFactor) {
        const ShortTaps<Tap> shorten(partsOf(pTaps), int64_t{tapsLen()} * kParts<Tap>, tapsFactor);
        int64_t magnitudes = 0;
        const auto part = [&](int k, int i) { return shorten(partsOf(pTaps + k)[i]); };
        for (int k = 0; k < tapsLen(); ++k)
            for (int i = 0; i < kParts<Tap>; ++i) magnitudes += std::abs(int{part(k, i)});
        s_->exponent = shorten.exponent();
        s_->digits = magnitudes <= kMostAtOnce ? 1 : 2;
        const auto fill = [&](KernelTap* to, auto digit) {
            if (kPaired) *to = {};
            to += kernelTapsLen();
            for (int k = 0; k < tapsLen(); ++k) setKernelTap(--to, digit(part(k, 0)), digit(part(k, kParts<Tap> - 1)));
        };
        if (s_->digits == 1) return fill(taps(), [](int16_t h) { return h; });
        fill(taps(), lowerDigit);
        fill(taps() + tapRoom(tapsLen()), upperDigit);
    }

    // body(first, count) for runs of `count` taps whose sums keep to 32 bits.
    template <class Body> void forEachRun(int count, Body body) const {
        const int most = s_->digits == 1 ? count : kRun<Stored>;
        for (int first = 0; first < count; first += most) body(first, std::min(most, count - first));
    }
    // The scale of sums of products with 16-bit taps. Beyond +-64 nothing changes any more.
    int sumScale(int scaleFactor) const { return int(std::clamp<int64_t>(scaleFactor - s_->exponent, -64, 64)); }

    // ---- filtering --------------------------------------------------------------------------------------------------------------------------

    // Outputs from samples in one piece: in[0] is the oldest that the first output takes. There is one more before it.
    void produce(const Stored* in, Sample* dst, int count, int scaleFactor) const {
        if constexpr (kIntegerTaps) {
            produceFromShortTaps(in, dst, count, sumScale(scaleFactor));
        } else if constexpr (kStraight) {
            kernel().block(in, taps(), tapsLen(), dst, count);
        } else {
            Stored y[kChunk];
            for (; count > 0; count -= kChunk, in += kChunk, dst += kChunk) {
                const int n = std::min(count, kChunk);
                kernel().block(in, taps(), tapsLen(), y, n);
                fromStored(y, dst, n, scaleFactor);
            }
        }
    }
    void produceFromShortTaps(const Stored* in, Sample* dst, int count, int scale) const {
        constexpr int parts = kParts<Stored>;
        const auto& kernel = this->kernel();
        const int all = kernelTapsLen();
        std::conditional_t<kComplex<Stored>, Complex32s, int32_t> sums[kChunk];
        int64_t totals[kChunk * parts];
        in -= all - tapsLen();
        for (; count > 0; count -= kChunk, in += kChunk, dst += kChunk) {
            const int n = std::min(count, kChunk);
            if (s_->digits == 1) {
                kernel.block(in, taps(), all, sums, n);
                narrowParts(partsOf(sums), partsOf(dst), n * parts, scale);
                continue;
            }
            memset(totals, 0, size_t(n) * parts * sizeof(int64_t));
            for (int d = 0; d < 2; ++d)
                forEachRun(all, [&](int first, int length) {
                    kernel.block(in + first, taps() + tapRoom(tapsLen()) * uint64_t(d) + first, length, sums, n);
                    s_->kernels->addShifted(partsOf(sums), 8 * d, totals, n * parts);
                });
            narrowParts(totals, partsOf(dst), n * parts, scale);
        }
    }

    // The last tapsLen samples of the past and the block become the past.
    void keep(const Sample* pSrc, int numIters) {
        pastAt(past(), tapsLen(), pSrc, numIters, delay());
        s_->dlyIndex = 0;
    }

    // The first outputs of a block are computed from the past with the block's head behind it; the rest straight from the source, unless that is not in the type of
    // the past, or is going to be overwritten while it is still wanted. The rest goes first: vector loads of what was copied a moment ago wait for the stores.
    void direct(const Sample* pSrc, Sample* pDst, int numIters, int team, int scaleFactor) {
        const int t = tapsLen(), head = (t + 3) & ~3;
        Stored* const base = past();
        if (numIters <= head + 1) {
            toStored(pSrc, base + t, numIters);
            produce(base + 1, pDst, numIters, scaleFactor);
            memmove(delay(), base + numIters, size_t(t) * sizeof(Stored));
            s_->dlyIndex = 0;
            return;
        }
        if constexpr (kStraight)
            if (pSrc != pDst) {
                toStored(pSrc, base + t, head);
                parallelRanges(numIters - head, team,
                               [=, this](int first, int count, int) { produce(pSrc + (head - t + 1) + first, pDst + head + first, count, scaleFactor); });
                produce(base + 1, pDst, head, scaleFactor);
                return keep(pSrc, numIters);
            }
        if (team > 1 && directInShares(pSrc, pDst, numIters, team, scaleFactor)) return;
        memcpy(stage(), base, size_t(t) * sizeof(Stored));
        inPieces(pSrc, pDst, numIters, stage(), scaleFactor);
        memcpy(delay(), stage(), size_t(t) * sizeof(Stored));
        s_->dlyIndex = 0;
    }

    // By way of a stage that begins with the tapsLen samples before pSrc, and ends so with the last ones.
    void inPieces(const Sample* pSrc, Sample* pDst, int numIters, Stored* stage, int scaleFactor) const {
        const int t = tapsLen();
        for (int n = 0, count; n < numIters; n += count) {
            count = std::min(numIters - n, kPiece);
            toStored(pSrc + n, stage + t, count);
            produce(stage + 1, pDst + n, count, scaleFactor);
            memmove(stage, stage + count, size_t(t) * sizeof(Stored));
        }
    }

    // Each share in pieces, on a stage of its own. The past of all is put there before any output is written. False, with nothing done, if there is no memory.
    bool directInShares(const Sample* pSrc, Sample* pDst, int numIters, int team, int scaleFactor) {
        const int t = tapsLen(), share = numIters / team;
        const size_t each = size_t(t) + kPiece;
        const Scratch memory(allocate<Stored>(uint64_t(team) * each));
        auto* const stages = static_cast<Stored*>(memory.get());
        if (!stages) return false;
        for (int u = 0; u < team; ++u) pastAt(past(), t, pSrc, ptrdiff_t{u} * share, stages + size_t(u) * each);
        parallelUnits(team, team, [=, this](int u) {
            const ptrdiff_t at = ptrdiff_t{u} * share;
            inPieces(pSrc + at, pDst + at, u == team - 1 ? int(numIters - at) : share, stages + size_t(u) * each, scaleFactor);
        });
        memcpy(delay(), stages + size_t(team - 1) * each, size_t(t) * sizeof(Stored));
        s_->dlyIndex = 0;
        return true;
    }

    void byTransforms(const Sample* pSrc, Sample* pDst, int numIters, int team, int scaleFactor) {
        pastAt(past(), tapsLen(), pSrc, numIters, stage());   // before any output is written
        const auto load = [=](Stored* to, ptrdiff_t n, int m) { toStored(pSrc + n, to, m); };
        const auto store = [=](const Stored* y, ptrdiff_t n, int m) { fromStored(y, pDst + n, m, scaleFactor); };
        overlapSave()->filter(past() + 1, numIters, team, load, store);
        memcpy(delay(), stage(), size_t(tapsLen()) * sizeof(Stored));
        s_->dlyIndex = 0;
    }

    FirState* const s_;
};

// ---- frames -----------------------------------------------------------------------------------------------------------------------------

template <class Kind> Status getStateSize(int tapsLen, int* pSize) {
    const int threads = threadsAtBuild();
    if (Status s = Args().ptr(pSize).require(Fir<Kind>::fits(tapsLen, threads), StatusFilterLength)) return s;
    *pSize = int(Fir<Kind>::stateBytes(tapsLen, threads));
    return StatusOk;
}

template <class Kind, class State>
Status init(State** ppState, const typename Kind::Tap* pTaps, int tapsLen, const typename Kind::Sample* pDlyLine, uint8_t* pBuffer, int tapsFactor = 0) {
    if (Status s = Args().ptr(ppState).ptr(pTaps).ptr(pBuffer).require(Fir<Kind>::fits(tapsLen, 1), StatusFilterLength)) return s;
    auto* const state = align16<State>(pBuffer);
    Fir<Kind>::layOut(state, tapsLen, threadsAtBuild());
    Fir<Kind> f(state);
    f.setTaps(pTaps, tapsFactor);
    f.setPast(pDlyLine);
    *ppState = state;
    return StatusOk;
}

template <class Kind, class State>
Status initAlloc(State** ppState, const typename Kind::Tap* pTaps, int tapsLen, const typename Kind::Sample* pDlyLine, int tapsFactor = 0) {
    if (Status s = Args().ptr(ppState).ptr(pTaps).require(tapsLen >= 1, StatusFilterLength)) return s;
    NearestRounding guard;
    FirState* state;
    if (Status s = Fir<Kind>::build(&state, pTaps, tapsLen, pDlyLine, tapsFactor)) return s;
    *ppState = static_cast<State*>(state);
    return StatusOk;
}

template <class Kind> Status free(FirState* s) {
    if (Status status = Args().ptr(s).record(s, Kind::kId, Kind::kMultirateId)) return status;
    Fir<Kind>(s).free();
    return StatusOk;
}

template <class Kind> Status setTaps(const typename Kind::Tap* pTaps, FirState* s, int tapsFactor = 0) {
    if (Status status = Args().ptr(pTaps).ptr(s).record(s, Kind::kId, Kind::kMultirateId)) return status;
    if (s->id == Kind::kMultirateId) return multirateSetTaps<Kind>(pTaps, tapsFactor, s);
    NearestRounding guard;
    Fir<Kind>(s).setTaps(pTaps, tapsFactor);
    return StatusOk;
}

template <class Kind> Status getTaps(const FirState* s, typename Kind::Tap* pTaps) {
    if (Status status = Args().ptr(s).ptr(pTaps).record(s, Kind::kId, Kind::kMultirateId)) return status;
    if (s->id == Kind::kMultirateId) return multirateGetTaps<Kind>(s, pTaps);
    Fir<Kind>(s).getTaps(pTaps);
    return StatusOk;
}

template <class Kind> Status setDlyLine(FirState* s, const typename Kind::Sample* pDlyLine) {
    if (Status status = Args().ptr(s).record(s, Kind::kId, Kind::kMultirateId)) return status;
    if (s->id == Kind::kMultirateId) return multirateSetPast<Kind>(pDlyLine, s);
    Fir<Kind>(s).setPast(pDlyLine);
    return StatusOk;
}

template <class Kind> Status getDlyLine(const FirState* s, typename Kind::Sample* pDlyLine) {
    if (Status status = Args().ptr(s).ptr(pDlyLine).record(s, Kind::kId, Kind::kMultirateId)) return status;
    if (s->id == Kind::kMultirateId) return multirateGetPast<Kind>(s, pDlyLine);
    Fir<Kind>(s).getPast(pDlyLine);
    return StatusOk;
}

template <class Kind> Status filter(const typename Kind::Sample* pSrc, typename Kind::Sample* pDst, int numIters, FirState* s, int scaleFactor = 0) {
    if (Status status = Args().ptr(pSrc).ptr(pDst).ptr(s).len(numIters).record(s, Kind::kId, Kind::kMultirateId)) return status;
    NearestRounding guard;
    if (s->id == Kind::kMultirateId) return multirateBlock<Kind>(pSrc, pDst, numIters, s, scaleFactor);
    Fir<Kind>(s).block(pSrc, pDst, numIters, scaleFactor);
    return StatusOk;
}

template <class Kind> Status filterOne(typename Kind::Sample src, typename Kind::Sample* pDst, FirState* s, int scaleFactor = 0) {
    if (Status status = Args().ptr(pDst).ptr(s).record(s, Kind::kId)) return status;
    NearestRounding guard;
    Fir<Kind>(s).one(src, pDst, scaleFactor);
    return StatusOk;
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsFIRGetStateSize_32f(int tapsLen, int* pSize) { return getStateSize<Fir_32f>(tapsLen, pSize); }
Status tevsFIRGetStateSize_32fc(int tapsLen, int* pSize) { return getStateSize<Fir_32fc>(tapsLen, pSize); }
Status tevsFIRGetStateSize32f_16s(int tapsLen, int* pSize) { return getStateSize<Fir32f_16s>(tapsLen, pSize); }
Status tevsFIRGetStateSize32fc_16sc(int tapsLen, int* pSize) { return getStateSize<Fir32fc_16sc>(tapsLen, pSize); }
Status tevsFIRGetStateSize32s_16s(int tapsLen, int* pSize) { return getStateSize<Fir32s_16s>(tapsLen, pSize); }
Status tevsFIRGetStateSize32s_16s32f(int tapsLen, int* pSize) { return getStateSize<Fir32s_16s32f>(tapsLen, pSize); }
Status tevsFIRGetStateSize32sc_16sc(int tapsLen, int* pSize) { return getStateSize<Fir32sc_16sc>(tapsLen, pSize); }
Status tevsFIRGetStateSize32sc_16sc32fc(int tapsLen, int* pSize) { return getStateSize<Fir32sc_16sc32fc>(tapsLen, pSize); }
Status tevsFIRGetStateSize_64f(int tapsLen, int* pSize) { return getStateSize<Fir_64f>(tapsLen, pSize); }
Status tevsFIRGetStateSize_64fc(int tapsLen, int* pSize) { return getStateSize<Fir_64fc>(tapsLen, pSize); }
Status tevsFIRGetStateSize64f_32f(int tapsLen, int* pSize) { return getStateSize<Fir64f_32f>(tapsLen, pSize); }
Status tevsFIRGetStateSize64fc_32fc(int tapsLen, int* pSize) { return getStateSize<Fir64fc_32fc>(tapsLen, pSize); }
Status tevsFIRGetStateSize64f_32s(int tapsLen, int* pSize) { return getStateSize<Fir64f_32s>(tapsLen, pSize); }
Status tevsFIRGetStateSize_32s(int tapsLen, int* pSize) { return getStateSize<Fir64f_32s>(tapsLen, pSize); }
Status tevsFIRGetStateSize64fc_32sc(int tapsLen, int* pSize) { return getStateSize<Fir64fc_32sc>(tapsLen, pSize); }
Status tevsFIRGetStateSize64f_16s(int tapsLen, int* pSize) { return getStateSize<Fir64f_16s>(tapsLen, pSize); }
Status tevsFIRGetStateSize64fc_16sc(int tapsLen, int* pSize) { return getStateSize<Fir64fc_16sc>(tapsLen, pSize); }

Status tevsFIRInit_32f(FIRState_32f** ppState, const float* pTaps, int tapsLen, const float* pDlyLine, uint8_t* pBuffer) {
    return init<Fir_32f>(ppState, pTaps, tapsLen, pDlyLine, pBuffer);
}
Status tevsFIRInit_32fc(FIRState_32fc** ppState, const Complex32f* pTaps, int tapsLen, const Complex32f* pDlyLine, uint8_t* pBuffer) {
    return init<Fir_32fc>(ppState, pTaps, tapsLen, pDlyLine, pBuffer);
}
Status tevsFIRInit32f_16s(FIRState32f_16s** ppState, const float* pTaps, int tapsLen, const int16_t* pDlyLine, uint8_t* pBuffer) {
    return init<Fir32f_16s>(ppState, pTaps, tapsLen, pDlyLine, pBuffer);
}
Status tevsFIRInit32fc_16sc(FIRState32fc_16sc** ppState, const Complex32f* pTaps, int tapsLen, const Complex16s* pDlyLine, uint8_t* pBuffer) {
    return init<Fir32fc_16sc>(ppState, pTaps, tapsLen, pDlyLine, pBuffer);
}
Status tevsFIRInit32s_16s(FIRState32s_16s** ppState, const int32_t* pTaps, int tapsLen, int tapsFactor, const int16_t* pDlyLine, uint8_t* pBuffer) {
    return init<Fir32s_16s>(ppState, pTaps, tapsLen, pDlyLine, pBuffer, tapsFactor);
}
Status tevsFIRInit32s_16s32f(FIRState32s_16s32f** ppState, const float* pTaps, int tapsLen, const int16_t* pDlyLine, uint8_t* pBuffer) {
    return init<Fir32s_16s32f>(ppState, pTaps, tapsLen, pDlyLine, pBuffer);
}
Status tevsFIRInit32sc_16sc(FIRState32sc_16sc** ppState, const Complex32s* pTaps, int tapsLen, int tapsFactor, const Complex16s* pDlyLine, uint8_t* pBuffer) {
    return init<Fir32sc_16sc>(ppState, pTaps, tapsLen, pDlyLine, pBuffer, tapsFactor);
}
Status tevsFIRInit32sc_16sc32fc(FIRState32sc_16sc32fc** ppState, const Complex32f* pTaps, int tapsLen, const Complex16s* pDlyLine, uint8_t* pBuffer) {
    return init<Fir32sc_16sc32fc>(ppState, pTaps, tapsLen, pDlyLine, pBuffer);
}
Status tevsFIRInit_64f(FIRState_64f** ppState, const double* pTaps, int tapsLen, const double* pDlyLine, uint8_t* pBuffer) {
    return init<Fir_64f>(ppState, pTaps, tapsLen, pDlyLine, pBuffer);
}
Status tevsFIRInit_64fc(FIRState_64fc** ppState, const Complex64f* pTaps, int tapsLen, const Complex64f* pDlyLine, uint8_t* pBuffer) {
    return init<Fir_64fc>(ppState, pTaps, tapsLen, pDlyLine, pBuffer);
}
Status tevsFIRInit64f_32f(FIRState64f_32f** ppState, const double* pTaps, int tapsLen, const float* pDlyLine, uint8_t* pBuffer) {
    return init<Fir64f_32f>(ppState, pTaps, tapsLen, pDlyLine, pBuffer);
}
Status tevsFIRInit64fc_32fc(FIRState64fc_32fc** ppState, const Complex64f* pTaps, int tapsLen, const Complex32f* pDlyLine, uint8_t* pBuffer) {
    return init<Fir64fc_32fc>(ppState, pTaps, tapsLen, pDlyLine, pBuffer);
}
Status tevsFIRInit64f_32s(FIRState64f_32s** ppState, const double* pTaps, int tapsLen, const int32_t* pDlyLine, uint8_t* pBuffer) {
    return init<Fir64f_32s>(ppState, pTaps, tapsLen, pDlyLine, pBuffer);
}
Status tevsFIRInit_32s(FIRState_32s** ppState, const double* pTaps, int tapsLen, const int32_t* pDlyLine, uint8_t* pBuffer) {
    return init<Fir64f_32s>(ppState, pTaps, tapsLen, pDlyLine, pBuffer);
}
Status tevsFIRInit64fc_32sc(FIRState64fc_32sc** ppState, const Complex64f* pTaps, int tapsLen, const Complex32s* pDlyLine, uint8_t* pBuffer) {
    return init<Fir64fc_32sc>(ppState, pTaps, tapsLen, pDlyLine, pBuffer);
}
Status tevsFIRInit64f_16s(FIRState64f_16s** ppState, const double* pTaps, int tapsLen, const int16_t* pDlyLine, uint8_t* pBuffer) {
    return init<Fir64f_16s>(ppState, pTaps, tapsLen, pDlyLine, pBuffer);
}
Status tevsFIRInit64fc_16sc(FIRState64fc_16sc** ppState, const Complex64f* pTaps, int tapsLen, const Complex16s* pDlyLine, uint8_t* pBuffer) {
    return init<Fir64fc_16sc>(ppState, pTaps, tapsLen, pDlyLine, pBuffer);
}

Status tevsFIRInitAlloc_32f(FIRState_32f** ppState, const float* pTaps, int tapsLen, const float* pDlyLine) {
    return initAlloc<Fir_32f>(ppState, pTaps, tapsLen, pDlyLine);
}
Status tevsFIRInitAlloc_32fc(FIRState_32fc** ppState, const Complex32f* pTaps, int tapsLen, const Complex32f* pDlyLine) {
    return initAlloc<Fir_32fc>(ppState, pTaps, tapsLen, pDlyLine);
}
Status tevsFIRInitAlloc32f_16s(FIRState32f_16s** ppState, const float* pTaps, int tapsLen, const int16_t* pDlyLine) {
    return initAlloc<Fir32f_16s>(ppState, pTaps, tapsLen, pDlyLine);
}
Status tevsFIRInitAlloc32fc_16sc(FIRState32fc_16sc** ppState, const Complex32f* pTaps, int tapsLen, const Complex16s* pDlyLine) {
    return initAlloc<Fir32fc_16sc>(ppState, pTaps, tapsLen, pDlyLine);
}
Status tevsFIRInitAlloc32s_16s(FIRState32s_16s** ppState, const int32_t* pTaps, int tapsLen, int tapsFactor, const int16_t* pDlyLine) {
    return initAlloc<Fir32s_16s>(ppState, pTaps, tapsLen, pDlyLine, tapsFactor);
}
Status tevsFIRInitAlloc32s_16s32f(FIRState32s_16s32f** ppState, const float* pTaps, int tapsLen, const int16_t* pDlyLine) {
    return initAlloc<Fir32s_16s32f>(ppState, pTaps, tapsLen, pDlyLine);
}
Status tevsFIRInitAlloc32sc_16sc(FIRState32sc_16sc** ppState, const Complex32s* pTaps, int tapsLen, int tapsFactor, const Complex16s* pDlyLine) {
    return initAlloc<Fir32sc_16sc>(ppState, pTaps, tapsLen, pDlyLine, tapsFactor);
}
Status tevsFIRInitAlloc32sc_16sc32fc(FIRState32sc_16sc32fc** ppState, const Complex32f* pTaps, int tapsLen, const Complex16s* pDlyLine) {
    return initAlloc<Fir32sc_16sc32fc>(ppState, pTaps, tapsLen, pDlyLine);
}
Status tevsFIRInitAlloc_64f(FIRState_64f** ppState, const double* pTaps, int tapsLen, const double* pDlyLine) {
    return initAlloc<Fir_64f>(ppState, pTaps, tapsLen, pDlyLine);
}
Status tevsFIRInitAlloc_64fc(FIRState_64fc** ppState, const Complex64f* pTaps, int tapsLen, const Complex64f* pDlyLine) {
    return initAlloc<Fir_64fc>(ppState, pTaps, tapsLen, pDlyLine);
}
Status tevsFIRInitAlloc64f_32f(FIRState64f_32f** ppState, const double* pTaps, int tapsLen, const float* pDlyLine) {
    return initAlloc<Fir64f_32f>(ppState, pTaps, tapsLen, pDlyLine);
}
Status tevsFIRInitAlloc64fc_32fc(FIRState64fc_32fc** ppState, const Complex64f* pTaps, int tapsLen, const Complex32f* pDlyLine) {
    return initAlloc<Fir64fc_32fc>(ppState, pTaps, tapsLen, pDlyLine);
}
Status tevsFIRInitAlloc64f_32s(FIRState64f_32s** ppState, const double* pTaps, int tapsLen, const int32_t* pDlyLine) {
    return initAlloc<Fir64f_32s>(ppState, pTaps, tapsLen, pDlyLine);
}
Status tevsFIRInitAlloc_32s(FIRState_32s** ppState, const double* pTaps, int tapsLen, const int32_t* pDlyLine) {
    return initAlloc<Fir64f_32s>(ppState, pTaps, tapsLen, pDlyLine);
}
Status tevsFIRInitAlloc64fc_32sc(FIRState64fc_32sc** ppState, const Complex64f* pTaps, int tapsLen, const Complex32s* pDlyLine) {
    return initAlloc<Fir64fc_32sc>(ppState, pTaps, tapsLen, pDlyLine);
}
Status tevsFIRInitAlloc64f_16s(FIRState64f_16s** ppState, const double* pTaps, int tapsLen, const int16_t* pDlyLine) {
    return initAlloc<Fir64f_16s>(ppState, pTaps, tapsLen, pDlyLine);
}
Status tevsFIRInitAlloc64fc_16sc(FIRState64fc_16sc** ppState, const Complex64f* pTaps, int tapsLen, const Complex16s* pDlyLine) {
    return initAlloc<Fir64fc_16sc>(ppState, pTaps, tapsLen, pDlyLine);
}

Status tevsFIRFree_32f(FIRState_32f* pState) { return free<Fir_32f>(pState); }
Status tevsFIRFree_32fc(FIRState_32fc* pState) { return free<Fir_32fc>(pState); }
Status tevsFIRFree32f_16s(FIRState32f_16s* pState) { return free<Fir32f_16s>(pState); }
Status tevsFIRFree32fc_16sc(FIRState32fc_16sc* pState) { return free<Fir32fc_16sc>(pState); }
Status tevsFIRFree32s_16s(FIRState32s_16s* pState) { return free<Fir32s_16s>(pState); }
Status tevsFIRFree32s_16s32f(FIRState32s_16s32f* pState) { return free<Fir32s_16s32f>(pState); }
Status tevsFIRFree32sc_16sc(FIRState32sc_16sc* pState) { return free<Fir32sc_16sc>(pState); }
Status tevsFIRFree32sc_16sc32fc(FIRState32sc_16sc32fc* pState) { return free<Fir32sc_16sc32fc>(pState); }
Status tevsFIRFree_64f(FIRState_64f* pState) { return free<Fir_64f>(pState); }
Status tevsFIRFree_64fc(FIRState_64fc* pState) { return free<Fir_64fc>(pState); }
Status tevsFIRFree64f_32f(FIRState64f_32f* pState) { return free<Fir64f_32f>(pState); }
Status tevsFIRFree64fc_32fc(FIRState64fc_32fc* pState) { return free<Fir64fc_32fc>(pState); }
Status tevsFIRFree64f_32s(FIRState64f_32s* pState) { return free<Fir64f_32s>(pState); }
Status tevsFIRFree_32s(FIRState_32s* pState) { return free<Fir64f_32s>(pState); }
Status tevsFIRFree64fc_32sc(FIRState64fc_32sc* pState) { return free<Fir64fc_32sc>(pState); }
Status tevsFIRFree64f_16s(FIRState64f_16s* pState) { return free<Fir64f_16s>(pState); }
Status tevsFIRFree64fc_16sc(FIRState64fc_16sc* pState) { return free<Fir64fc_16sc>(pState); }

Status tevsFIRSetTaps_32f(const float* pTaps, FIRState_32f* pState) { return setTaps<Fir_32f>(pTaps, pState); }
Status tevsFIRSetTaps_32fc(const Complex32f* pTaps, FIRState_32fc* pState) { return setTaps<Fir_32fc>(pTaps, pState); }
Status tevsFIRSetTaps32f_16s(const float* pTaps, FIRState32f_16s* pState) { return setTaps<Fir32f_16s>(pTaps, pState); }
Status tevsFIRSetTaps32fc_16sc(const Complex32f* pTaps, FIRState32fc_16sc* pState) { return setTaps<Fir32fc_16sc>(pTaps, pState); }
Status tevsFIRSetTaps32s_16s(const int32_t* pTaps, FIRState32s_16s* pState, int tapsFactor) { return setTaps<Fir32s_16s>(pTaps, pState, tapsFactor); }
Status tevsFIRSetTaps32s_16s32f(const float* pTaps, FIRState32s_16s32f* pState) { return setTaps<Fir32s_16s32f>(pTaps, pState); }
Status tevsFIRSetTaps32sc_16sc(const Complex32s* pTaps, FIRState32sc_16sc* pState, int tapsFactor) { return setTaps<Fir32sc_16sc>(pTaps, pState, tapsFactor); }
Status tevsFIRSetTaps32sc_16sc32fc(const Complex32f* pTaps, FIRState32sc_16sc32fc* pState) { return setTaps<Fir32sc_16sc32fc>(pTaps, pState); }
Status tevsFIRSetTaps_64f(const double* pTaps, FIRState_64f* pState) { return setTaps<Fir_64f>(pTaps, pState); }
Status tevsFIRSetTaps_64fc(const Complex64f* pTaps, FIRState_64fc* pState) { return setTaps<Fir_64fc>(pTaps, pState); }
Status tevsFIRSetTaps64f_32f(const double* pTaps, FIRState64f_32f* pState) { return setTaps<Fir64f_32f>(pTaps, pState); }
Status tevsFIRSetTaps64fc_32fc(const Complex64f* pTaps, FIRState64fc_32fc* pState) { return setTaps<Fir64fc_32fc>(pTaps, pState); }
Status tevsFIRSetTaps64f_32s(const double* pTaps, FIRState64f_32s* pState) { return setTaps<Fir64f_32s>(pTaps, pState); }
Status tevsFIRSetTaps_32s(const double* pTaps, FIRState_32s* pState) { return setTaps<Fir64f_32s>(pTaps, pState); }
Status tevsFIRSetTaps64fc_32sc(const Complex64f* pTaps, FIRState64fc_32sc* pState) { return setTaps<Fir64fc_32sc>(pTaps, pState); }
Status tevsFIRSetTaps64f_16s(const double* pTaps, FIRState64f_16s* pState) { return setTaps<Fir64f_16s>(pTaps, pState); }
Status tevsFIRSetTaps64fc_16sc(const Complex64f* pTaps, FIRState64fc_16sc* pState) { return setTaps<Fir64fc_16sc>(pTaps, pState); }

Status tevsFIRGetTaps_32f(const FIRState_32f* pState, float* pTaps) { return getTaps<Fir_32f>(pState, pTaps); }
Status tevsFIRGetTaps_32fc(const FIRState_32fc* pState, Complex32f* pTaps) { return getTaps<Fir_32fc>(pState, pTaps); }
Status tevsFIRGetTaps32f_16s(const FIRState32f_16s* pState, float* pTaps) { return getTaps<Fir32f_16s>(pState, pTaps); }
Status tevsFIRGetTaps32fc_16sc(const FIRState32fc_16sc* pState, Complex32f* pTaps) { return getTaps<Fir32fc_16sc>(pState, pTaps); }
Status tevsFIRGetTaps32s_16s(const FIRState32s_16s* pState, int32_t* pTaps) { return getTaps<Fir32s_16s>(pState, pTaps); }
Status tevsFIRGetTaps32s_16s32f(const FIRState32s_16s32f* pState, float* pTaps) { return getTaps<Fir32s_16s32f>(pState, pTaps); }
Status tevsFIRGetTaps32sc_16sc(const FIRState32sc_16sc* pState, Complex32s* pTaps) { return getTaps<Fir32sc_16sc>(pState, pTaps); }
Status tevsFIRGetTaps32sc_16sc32fc(const FIRState32sc_16sc32fc* pState, Complex32f* pTaps) { return getTaps<Fir32sc_16sc32fc>(pState, pTaps); }
Status tevsFIRGetTaps_64f(const FIRState_64f* pState, double* pTaps) { return getTaps<Fir_64f>(pState, pTaps); }
Status tevsFIRGetTaps_64fc(const FIRState_64fc* pState, Complex64f* pTaps) { return getTaps<Fir_64fc>(pState, pTaps); }
Status tevsFIRGetTaps64f_32f(const FIRState64f_32f* pState, double* pTaps) { return getTaps<Fir64f_32f>(pState, pTaps); }
Status tevsFIRGetTaps64fc_32fc(const FIRState64fc_32fc* pState, Complex64f* pTaps) { return getTaps<Fir64fc_32fc>(pState, pTaps); }
Status tevsFIRGetTaps64f_32s(const FIRState64f_32s* pState, double* pTaps) { return getTaps<Fir64f_32s>(pState, pTaps); }
Status tevsFIRGetTaps_32s(const FIRState_32s* pState, double* pTaps) { return getTaps<Fir64f_32s>(pState, pTaps); }
Status tevsFIRGetTaps64fc_32sc(const FIRState64fc_32sc* pState, Complex64f* pTaps) { return getTaps<Fir64fc_32sc>(pState, pTaps); }
Status tevsFIRGetTaps64f_16s(const FIRState64f_16s* pState, double* pTaps) { return getTaps<Fir64f_16s>(pState, pTaps); }
Status tevsFIRGetTaps64fc_16sc(const FIRState64fc_16sc* pState, Complex64f* pTaps) { return getTaps<Fir64fc_16sc>(pState, pTaps); }

Status tevsFIRSetDlyLine_32f(FIRState_32f* pState, const float* pDlyLine) { return setDlyLine<Fir_32f>(pState, pDlyLine); }
Status tevsFIRSetDlyLine_32fc(FIRState_32fc* pState, const Complex32f* pDlyLine) { return setDlyLine<Fir_32fc>(pState, pDlyLine); }
Status tevsFIRSetDlyLine32f_16s(FIRState32f_16s* pState, const int16_t* pDlyLine) { return setDlyLine<Fir32f_16s>(pState, pDlyLine); }
Status tevsFIRSetDlyLine32fc_16sc(FIRState32fc_16sc* pState, const Complex16s* pDlyLine) { return setDlyLine<Fir32fc_16sc>(pState, pDlyLine); }
Status tevsFIRSetDlyLine32s_16s(FIRState32s_16s* pState, const int16_t* pDlyLine) { return setDlyLine<Fir32s_16s>(pState, pDlyLine); }
Status tevsFIRSetDlyLine32sc_16sc(FIRState32sc_16sc* pState, const Complex16s* pDlyLine) { return setDlyLine<Fir32sc_16sc>(pState, pDlyLine); }
Status tevsFIRSetDlyLine_64f(FIRState_64f* pState, const double* pDlyLine) { return setDlyLine<Fir_64f>(pState, pDlyLine); }
Status tevsFIRSetDlyLine_64fc(FIRState_64fc* pState, const Complex64f* pDlyLine) { return setDlyLine<Fir_64fc>(pState, pDlyLine); }
Status tevsFIRSetDlyLine64f_32f(FIRState64f_32f* pState, const float* pDlyLine) { return setDlyLine<Fir64f_32f>(pState, pDlyLine); }
Status tevsFIRSetDlyLine64fc_32fc(FIRState64fc_32fc* pState, const Complex32f* pDlyLine) { return setDlyLine<Fir64fc_32fc>(pState, pDlyLine); }
Status tevsFIRSetDlyLine64f_32s(FIRState64f_32s* pState, const int32_t* pDlyLine) { return setDlyLine<Fir64f_32s>(pState, pDlyLine); }
Status tevsFIRSetDlyLine_32s(FIRState_32s* pState, const int32_t* pDlyLine) { return setDlyLine<Fir64f_32s>(pState, pDlyLine); }
Status tevsFIRSetDlyLine64fc_32sc(FIRState64fc_32sc* pState, const Complex32s* pDlyLine) { return setDlyLine<Fir64fc_32sc>(pState, pDlyLine); }
Status tevsFIRSetDlyLine64f_16s(FIRState64f_16s* pState, const int16_t* pDlyLine) { return setDlyLine<Fir64f_16s>(pState, pDlyLine); }
Status tevsFIRSetDlyLine64fc_16sc(FIRState64fc_16sc* pState, const Complex16s* pDlyLine) { return setDlyLine<Fir64fc_16sc>(pState, pDlyLine); }

Status tevsFIRGetDlyLine_32f(const FIRState_32f* pState, float* pDlyLine) { return getDlyLine<Fir_32f>(pState, pDlyLine); }
Status tevsFIRGetDlyLine_32fc(const FIRState_32fc* pState, Complex32f* pDlyLine) { return getDlyLine<Fir_32fc>(pState, pDlyLine); }
Status tevsFIRGetDlyLine32f_16s(const FIRState32f_16s* pState, int16_t* pDlyLine) { return getDlyLine<Fir32f_16s>(pState, pDlyLine); }
Status tevsFIRGetDlyLine32fc_16sc(const FIRState32fc_16sc* pState, Complex16s* pDlyLine) { return getDlyLine<Fir32fc_16sc>(pState, pDlyLine); }
Status tevsFIRGetDlyLine32s_16s(const FIRState32s_16s* pState, int16_t* pDlyLine) { return getDlyLine<Fir32s_16s>(pState, pDlyLine); }
Status tevsFIRGetDlyLine32sc_16sc(const FIRState32sc_16sc* pState, Complex16s* pDlyLine) { return getDlyLine<Fir32sc_16sc>(pState, pDlyLine); }
Status tevsFIRGetDlyLine_64f(const FIRState_64f* pState, double* pDlyLine) { return getDlyLine<Fir_64f>(pState, pDlyLine); }
Status tevsFIRGetDlyLine_64fc(const FIRState_64fc* pState, Complex64f* pDlyLine) { return getDlyLine<Fir_64fc>(pState, pDlyLine); }
Status tevsFIRGetDlyLine64f_32f(const FIRState64f_32f* pState, float* pDlyLine) { return getDlyLine<Fir64f_32f>(pState, pDlyLine); }
Status tevsFIRGetDlyLine64fc_32fc(const FIRState64fc_32fc* pState, Complex32f* pDlyLine) { return getDlyLine<Fir64fc_32fc>(pState, pDlyLine); }
Status tevsFIRGetDlyLine64f_32s(const FIRState64f_32s* pState, int32_t* pDlyLine) { return getDlyLine<Fir64f_32s>(pState, pDlyLine); }
Status tevsFIRGetDlyLine_32s(const FIRState_32s* pState, int32_t* pDlyLine) { return getDlyLine<Fir64f_32s>(pState, pDlyLine); }
Status tevsFIRGetDlyLine64fc_32sc(const FIRState64fc_32sc* pState, Complex32s* pDlyLine) { return getDlyLine<Fir64fc_32sc>(pState, pDlyLine); }
Status tevsFIRGetDlyLine64f_16s(const FIRState64f_16s* pState, int16_t* pDlyLine) { return getDlyLine<Fir64f_16s>(pState, pDlyLine); }
Status tevsFIRGetDlyLine64fc_16sc(const FIRState64fc_16sc* pState, Complex16s* pDlyLine) { return getDlyLine<Fir64fc_16sc>(pState, pDlyLine); }

Status tevsFIR_32f(const float* pSrc, float* pDst, int numIters, FIRState_32f* pState) { return filter<Fir_32f>(pSrc, pDst, numIters, pState); }
Status tevsFIR_32f_I(float* pSrcDst, int numIters, FIRState_32f* pState) { return filter<Fir_32f>(pSrcDst, pSrcDst, numIters, pState); }
Status tevsFIR_32fc(const Complex32f* pSrc, Complex32f* pDst, int numIters, FIRState_32fc* pState) { return filter<Fir_32fc>(pSrc, pDst, numIters, pState); }
Status tevsFIR_32fc_I(Complex32f* pSrcDst, int numIters, FIRState_32fc* pState) { return filter<Fir_32fc>(pSrcDst, pSrcDst, numIters, pState); }
Status tevsFIR32f_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int numIters, FIRState32f_16s* pState, int scaleFactor) {
    return filter<Fir32f_16s>(pSrc, pDst, numIters, pState, scaleFactor);
}
Status tevsFIR32f_16s_ISfs(int16_t* pSrcDst, int numIters, FIRState32f_16s* pState, int scaleFactor) {
    return filter<Fir32f_16s>(pSrcDst, pSrcDst, numIters, pState, scaleFactor);
}
Status tevsFIR32fc_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int numIters, FIRState32fc_16sc* pState, int scaleFactor) {
    return filter<Fir32fc_16sc>(pSrc, pDst, numIters, pState, scaleFactor);
}
Status tevsFIR32fc_16sc_ISfs(Complex16s* pSrcDst, int numIters, FIRState32fc_16sc* pState, int scaleFactor) {
    return filter<Fir32fc_16sc>(pSrcDst, pSrcDst, numIters, pState, scaleFactor);
}
Status tevsFIR32s_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int numIters, FIRState32s_16s* pState, int scaleFactor) {
    return filter<Fir32s_16s>(pSrc, pDst, numIters, pState, scaleFactor);
}
Status tevsFIR32s_16s_ISfs(int16_t* pSrcDst, int numIters, FIRState32s_16s* pState, int scaleFactor) {
    return filter<Fir32s_16s>(pSrcDst, pSrcDst, numIters, pState, scaleFactor);
}
Status tevsFIR32sc_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int numIters, FIRState32sc_16sc* pState, int scaleFactor) {
    return filter<Fir32sc_16sc>(pSrc, pDst, numIters, pState, scaleFactor);
}
Status tevsFIR32sc_16sc_ISfs(Complex16s* pSrcDst, int numIters, FIRState32sc_16sc* pState, int scaleFactor) {
    return filter<Fir32sc_16sc>(pSrcDst, pSrcDst, numIters, pState, scaleFactor);
}
Status tevsFIR_64f(const double* pSrc, double* pDst, int numIters, FIRState_64f* pState) { return filter<Fir_64f>(pSrc, pDst, numIters, pState); }
Status tevsFIR_64f_I(double* pSrcDst, int numIters, FIRState_64f* pState) { return filter<Fir_64f>(pSrcDst, pSrcDst, numIters, pState); }
Status tevsFIR_64fc(const Complex64f* pSrc, Complex64f* pDst, int numIters, FIRState_64fc* pState) { return filter<Fir_64fc>(pSrc, pDst, numIters, pState); }
Status tevsFIR_64fc_I(Complex64f* pSrcDst, int numIters, FIRState_64fc* pState) { return filter<Fir_64fc>(pSrcDst, pSrcDst, numIters, pState); }
Status tevsFIR64f_32f(const float* pSrc, float* pDst, int numIters, FIRState64f_32f* pState) { return filter<Fir64f_32f>(pSrc, pDst, numIters, pState); }
Status tevsFIR64f_32f_I(float* pSrcDst, int numIters, FIRState64f_32f* pState) { return filter<Fir64f_32f>(pSrcDst, pSrcDst, numIters, pState); }
Status tevsFIR64fc_32fc(const Complex32f* pSrc, Complex32f* pDst, int numIters, FIRState64fc_32fc* pState) {
    return filter<Fir64fc_32fc>(pSrc, pDst, numIters, pState);
}
Status tevsFIR64fc_32fc_I(Complex32f* pSrcDst, int numIters, FIRState64fc_32fc* pState) { return filter<Fir64fc_32fc>(pSrcDst, pSrcDst, numIters, pState); }
Status tevsFIR64f_32s_Sfs(const int32_t* pSrc, int32_t* pDst, int numIters, FIRState64f_32s* pState, int scaleFactor) {
    return filter<Fir64f_32s>(pSrc, pDst, numIters, pState, scaleFactor);
}
Status tevsFIR64f_32s_ISfs(int32_t* pSrcDst, int numIters, FIRState64f_32s* pState, int scaleFactor) {
    return filter<Fir64f_32s>(pSrcDst, pSrcDst, numIters, pState, scaleFactor);
}
Status tevsFIR_32s_Sfs(const int32_t* pSrc, int32_t* pDst, int numIters, FIRState_32s* pState, int scaleFactor) {
    return filter<Fir64f_32s>(pSrc, pDst, numIters, pState, scaleFactor);
}
Status tevsFIR_32s_ISfs(int32_t* pSrcDst, int numIters, FIRState_32s* pState, int scaleFactor) {
    return filter<Fir64f_32s>(pSrcDst, pSrcDst, numIters, pState, scaleFactor);
}
Status tevsFIR64fc_32sc_Sfs(const Complex32s* pSrc, Complex32s* pDst, int numIters, FIRState64fc_32sc* pState, int scaleFactor) {
    return filter<Fir64fc_32sc>(pSrc, pDst, numIters, pState, scaleFactor);
}
Status tevsFIR64fc_32sc_ISfs(Complex32s* pSrcDst, int numIters, FIRState64fc_32sc* pState, int scaleFactor) {
    return filter<Fir64fc_32sc>(pSrcDst, pSrcDst, numIters, pState, scaleFactor);
}
Status tevsFIR64f_16s_Sfs(const int16_t* pSrc, int16_t* pDst, int numIters, FIRState64f_16s* pState, int scaleFactor) {
    return filter<Fir64f_16s>(pSrc, pDst, numIters, pState, scaleFactor);
}
Status tevsFIR64f_16s_ISfs(int16_t* pSrcDst, int numIters, FIRState64f_16s* pState, int scaleFactor) {
    return filter<Fir64f_16s>(pSrcDst, pSrcDst, numIters, pState, scaleFactor);
}
Status tevsFIR64fc_16sc_Sfs(const Complex16s* pSrc, Complex16s* pDst, int numIters, FIRState64fc_16sc* pState, int scaleFactor) {
    return filter<Fir64fc_16sc>(pSrc, pDst, numIters, pState, scaleFactor);
}
Status tevsFIR64fc_16sc_ISfs(Complex16s* pSrcDst, int numIters, FIRState64fc_16sc* pState, int scaleFactor) {
    return filter<Fir64fc_16sc>(pSrcDst, pSrcDst, numIters, pState, scaleFactor);
}

Status tevsFIROne_32f(float src, float* pDst, FIRState_32f* pState) { return filterOne<Fir_32f>(src, pDst, pState); }
Status tevsFIROne_32fc(Complex32f src, Complex32f* pDst, FIRState_32fc* pState) { return filterOne<Fir_32fc>(src, pDst, pState); }
Status tevsFIROne32f_16s_Sfs(int16_t src, int16_t* pDst, FIRState32f_16s* pState, int scaleFactor) {
    return filterOne<Fir32f_16s>(src, pDst, pState, scaleFactor);
}
Status tevsFIROne32fc_16sc_Sfs(Complex16s src, Complex16s* pDst, FIRState32fc_16sc* pState, int scaleFactor) {
    return filterOne<Fir32fc_16sc>(src, pDst, pState, scaleFactor);
}
Status tevsFIROne32s_16s_Sfs(int16_t src, int16_t* pDst, FIRState32s_16s* pState, int scaleFactor) {
    return filterOne<Fir32s_16s>(src, pDst, pState, scaleFactor);
}
Status tevsFIROne32sc_16sc_Sfs(Complex16s src, Complex16s* pDst, FIRState32sc_16sc* pState, int scaleFactor) {
    return filterOne<Fir32sc_16sc>(src, pDst, pState, scaleFactor);
}
Status tevsFIROne_64f(double src, double* pDst, FIRState_64f* pState) { return filterOne<Fir_64f>(src, pDst, pState); }
Status tevsFIROne_64fc(Complex64f src, Complex64f* pDst, FIRState_64fc* pState) { return filterOne<Fir_64fc>(src, pDst, pState); }
Status tevsFIROne64f_32f(float src, float* pDst, FIRState64f_32f* pState) { return filterOne<Fir64f_32f>(src, pDst, pState); }
Status tevsFIROne64fc_32fc(Complex32f src, Complex32f* pDst, FIRState64fc_32fc* pState) { return filterOne<Fir64fc_32fc>(src, pDst, pState); }
Status tevsFIROne64f_32s_Sfs(int32_t src, int32_t* pDst, FIRState64f_32s* pState, int scaleFactor) {
    return filterOne<Fir64f_32s>(src, pDst, pState, scaleFactor);
}
Status tevsFIROne_32s_Sfs(int32_t src, int32_t* pDst, FIRState_32s* pState, int scaleFactor) { return filterOne<Fir64f_32s>(src, pDst, pState, scaleFactor); }
Status tevsFIROne64fc_32sc_Sfs(Complex32s src, Complex32s* pDst, FIRState64fc_32sc* pState, int scaleFactor) {
    return filterOne<Fir64fc_32sc>(src, pDst, pState, scaleFactor);
}
Status tevsFIROne64f_16s_Sfs(int16_t src, int16_t* pDst, FIRState64f_16s* pState, int scaleFactor) {
    return filterOne<Fir64f_16s>(src, pDst, pState, scaleFactor);
}
Status tevsFIROne64fc_16sc_Sfs(Complex16s src, Complex16s* pDst, FIRState64fc_16sc* pState, int scaleFactor) {
    return filterOne<Fir64fc_16sc>(src, pDst, pState, scaleFactor);
}
