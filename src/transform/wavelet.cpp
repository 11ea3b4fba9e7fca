// Wavelets: taps of the named ones, a level of pairs without state, a level of a stream, all levels of a whole signal.
#include <limits.h>
#include <string.h>

#include <algorithm>

#include "core/args.h"
#include "core/memory.h"
#include "core/rounding.h"
#include "core/scale.h"
#include "core/work.h"
#include "tevs/wavelet.h"
#include "transform/wavelet.table.h"
#include "transform/wavelet_taps.h"

namespace tevs {
namespace {

template <class T> const WaveletKernel<T>& kernelOf(const WaveletKernels* k);
template <> const WaveletKernel<float>& kernelOf(const WaveletKernels* k) { return k->real32f; }
template <> const WaveletKernel<double>& kernelOf(const WaveletKernels* k) { return k->real64f; }
const LiftKernel<int16_t>& liftKernel(int16_t) { return wavelet->lift16s; }
const LiftKernel<int32_t>& liftKernel(int32_t) { return wavelet->lift32s; }

// ---- named wavelets -------------------------------------------------------------------------------------------------------------------------

// The low-pass filters of a bank as they stand in the tables: count taps behind zeros.
struct Named {
    const double* taps;
    int zeros, count;
    double operator()(int k) const { return k < zeros || k >= zeros + count ? 0 : taps[k - zeros]; }
};

struct NamedBank {
    Named analysis, synthesis;
    bool reversed;   // the analysis filter is the synthesis filter from its end
    // pLowA[k] and pLowS[k].
    double lowA(int k, int tapsLen) const { return reversed ? synthesis(tapsLen - 1 - k) : analysis(k); }
    double lowS(int k) const { return synthesis(k); }
};

// Null where the family has no filter of that length.
NamedBank namedBank(int tapsLen, int family) {
    if (family == WaveletCdf) {
        if (tapsLen == 6) return {{kCdf53Low, 1, 5}, {kCdf53Low + 5, 1, 3}, false};
        if (tapsLen == 10) return {{kCdf97Low, 1, 9}, {kCdf97Low + 9, 1, 7}, false};
        return {};
    }
    const int p = tapsLen / 2, fewest = family == WaveletSymlet ? 2 : 1;
    if (tapsLen % 2 != 0 || p < fewest || p > 20) return {};
    // Filters of 2 fewest, .. 2 p - 2 taps come before it.
    const double* const table = family == WaveletSymlet ? kSymletTaps : kDaubechiesTaps;
    return {{}, {table + p * (p - 1) - fewest * (fewest - 1), 0, tapsLen}, true};
}

template <class T> Status genTaps(T* pLowA, T* pHighA, T* pLowS, T* pHighS, int tapsLen, int family) {
    if (Status s = Args().ptr(pLowA).ptr(pHighA).ptr(pLowS).ptr(pHighS)) return s;
    const NamedBank bank = namedBank(tapsLen, family);
    if (!bank.synthesis.taps) return StatusBadSize;
    toNearest(
        [](const NamedBank* b, int n, T* lowA, T* highA, T* lowS, T* highS) {
            for (int k = 0; k < n; ++k) {
                const T a = T(b->lowA(k, n)), s = T(b->lowS(k));
                lowA[k] = a;
                lowS[k] = s;
                highS[k] = k % 2 && a != 0 ? -a : a;
                highA[k] = k % 2 || s == 0 ? s : -s;
            }
        },
        &bank, tapsLen, pLowA, pHighA, pLowS, pHighS);
    return StatusOk;
}

// ---- a level without state ------------------------------------------------------------------------------------------------------------------

template <class T> Status haarAnalysis(const T* pSrc, T* pDstLow, T* pDstHigh, int len) {
    if (Status s = Args().ptr(pSrc).ptr(pDstLow).ptr(pDstHigh).len(len)) return s;
    const NearestRounding guard;
    kernelOf<T>(wavelet).haarAnalysis(pSrc, pDstLow, pDstHigh, len);
    return StatusOk;
}
template <class T> Status haarSynthesis(const T* pSrcLow, const T* pSrcHigh, T* pDst, int len) {
    if (Status s = Args().ptr(pSrcLow).ptr(pSrcHigh).ptr(pDst).len(len)) return s;
    const NearestRounding guard;
    kernelOf<T>(wavelet).haarSynthesis(pSrcLow, pSrcHigh, pDst, len);
    return StatusOk;
}
constexpr int kAllOut = 31;   // from a shift by 18 on all sums are 0; the kernels' lanes allow as many bits

template <class T> Status liftAnalysis(const T* pSrc, T* pDstLow, T* pDstHigh, int srcLen, int lift) {
    if (Status s = Args().ptr(pSrc).ptr(pDstLow).ptr(pDstHigh).len(srcLen)) return s;
    if (lift == Lift53 && srcLen > 1) {
        liftKernel(T{}).analysis53(pSrc, pDstLow, pDstHigh, srcLen);
        return StatusOk;
    }
    if (srcLen > 1) liftKernel(T{}).haarAnalysis(pSrc, pDstLow, pDstHigh, srcLen / 2);
    if (srcLen % 2) pDstLow[srcLen / 2] = pSrc[srcLen - 1];
    return StatusOk;
}
template <class T> Status liftSynthesis(const T* pSrcLow, const T* pSrcHigh, T* pDst, int dstLen, int lift) {
    if (Status s = Args().ptr(pSrcLow).ptr(pSrcHigh).ptr(pDst).len(dstLen)) return s;
    if (lift == Lift53 && dstLen > 1) {
        liftKernel(T{}).synthesis53(pSrcLow, pSrcHigh, pDst, dstLen);
        return StatusOk;
    }
    if (dstLen > 1) liftKernel(T{}).haarSynthesis(pSrcLow, pSrcHigh, pDst, dstLen / 2);
    if (dstLen % 2) pDst[dstLen - 1] = pSrcLow[dstLen / 2];
    return StatusOk;
}

// ---- filters in the kernels' order ----------------------------------------------------------------------------------------------------------

int64_t floorHalf(int64_t n) { return n >> 1; }

// Output n of an analysis filter takes the samples x[2n - offs - tapsLen + 1] .. x[2n - offs], in pairs from the newest back: where tapsLen is odd, the first pair's
// first sample is left out.
struct AnalysisShape {
    int pairs = 0;
    bool odd = false;
    int64_t first = 0;   // from x[2n] to the first pair
    AnalysisShape() = default;
    AnalysisShape(int tapsLen, int64_t offs) : pairs(int((int64_t{tapsLen} + 1) / 2)), odd(tapsLen % 2), first(1 - offs - tapsLen - odd) {}
    bool operator==(const AnalysisShape&) const = default;

    uint64_t values() const { return 2 * uint64_t(pairs); }
    template <class T> void put(const T* pTaps, int tapsLen, T* to) const {
        if (odd) to[0] = 0;
        std::reverse_copy(pTaps, pTaps + tapsLen, to + odd);
    }
};

// Outputs 2i and 2i+1 of a synthesis filter take the value d before the i-th through the taps 2d - 1 - offs and 2d - offs, where there are such taps.
struct SynthesisShape {
    int64_t oldest = 0, newest = 0;   // d of the first and of the last pair of taps
    bool evenFirst = false, oddLast = false;
    SynthesisShape() = default;
    SynthesisShape(int tapsLen, int64_t offs)
        : oldest(floorHalf(tapsLen - 1 + offs)), newest(floorHalf(offs + 2)), evenFirst((tapsLen + offs) % 2 == 0), oddLast(offs % 2 == 0) {}

    uint64_t values() const { return 2 * uint64_t(oldest - newest + 1 + evenFirst + oddLast); }
    int64_t before() const { return oldest + evenFirst; }   // values before the i-th, and behind it, that are taken
    int64_t behind() const { return oddLast - newest; }
    template <class T> void put(const T* pTaps, int tapsLen, int64_t offs, T* to) const {
        for (int64_t d = before(); d >= -behind(); --d)
            for (int64_t k = 2 * d - 1 - offs; k <= 2 * d - offs; ++k) *to++ = k >= 0 && k < tapsLen ? pTaps[k] : T(0);
    }
    template <class T> SynthesisTaps<T> over(const T* taps) const { return {taps, int32_t(oldest - newest + 1), evenFirst, oddLast}; }
};

// ---- a level of a stream --------------------------------------------------------------------------------------------------------------------

enum Direction { kAnalysis, kSynthesis };

// A record, at a 16-byte boundary, its arrays behind it. Of the two channels, low is the first.
template <class T, uint32_t AnalysisId, uint32_t SynthesisId> struct WtKind {
    using Sample = T;
    static constexpr uint32_t kIds[] = {AnalysisId, SynthesisId};

    uint32_t id;
    int32_t allocated;               // 1 where InitAlloc made the block
    const WaveletKernels* kernels;   // of the level that the record was built for
    int32_t past[2];                 // values before the next one; of analysis the first alone, of its input
    T* taps[2];
    T* line[2];   // the past, oldest first, and room for what a block begins with
    AnalysisShape analysis[2];
    SynthesisShape synthesis[2];
};

}   // namespace
}   // namespace tevs

struct WtState_32f : tevs::WtKind<float, tevs::identifier("WA01"), tevs::identifier("WS01")> {};
struct WtState_64f : tevs::WtKind<double, tevs::identifier("WA02"), tevs::identifier("WS02")> {};

namespace tevs {
namespace {

struct FilterSize {
    int tapsLen, offs;
};

// Values that a channel's line takes on at a time: no fewer than make a vector of outputs.
constexpr int64_t headOf(int64_t past) { return past > 8 ? past : 8; }

// What a record of filters of these sizes takes; with a block, also lays it out there.
template <class State> uint64_t layOut(Direction direction, FilterSize low, FilterSize high, void* block) {
    using T = typename State::Sample;
    const FilterSize sizes[] = {low, high};
    Carve c(block);
    auto* const s = c.take<State>(1);
    if (s) {
        memset(static_cast<void*>(s), 0, sizeof *s);
        s->id = State::kIds[direction];
        s->kernels = wavelet;
    }
    int64_t inputs = 0;
    for (int i = 0; i < 2; ++i) {
        const auto [tapsLen, offs] = sizes[i];
        const AnalysisShape a(tapsLen, offs);
        const SynthesisShape y(tapsLen, offs);
        const int64_t past = floorHalf(int64_t{tapsLen} + offs);
        T* const taps = c.take<T>(direction == kAnalysis ? a.values() : y.values());
        T* const line = direction == kAnalysis ? nullptr : c.take<T>(uint64_t(past + headOf(past)));
        inputs = std::max(inputs, int64_t{tapsLen} + offs - 1);
        if (!s) continue;
        s->taps[i] = taps;
        s->line[i] = line;
        s->past[i] = int32_t(past);
        s->analysis[i] = a;
        s->synthesis[i] = y;
    }
    if (direction == kAnalysis) {
        // The sample before the past stands for one that is left out, the pairs behind it for those whose filters reach into the past.
        T* const line = c.take<T>(2 * uint64_t(inputs) + 4);
        if (s) {
            line[0] = 0;
            s->line[0] = line + 1;
            s->past[0] = int32_t(inputs);
            s->past[1] = 0;
        }
    }
    return c.size();
}
template <class State> uint64_t stateBytes(FilterSize low, FilterSize high) {
    return std::max(layOut<State>(kAnalysis, low, high, nullptr), layOut<State>(kSynthesis, low, high, nullptr)) + 15;
}

// Each size is checked with those behind it at their least: the first with which the bytes pass the limit is the one that is wrong.
template <class State> void checkSizes(Args& args, FilterSize low, FilterSize high) {
    const auto fits = [](FilterSize l, FilterSize h) { return [=] { return stateBytes<State>(l, h) <= INT_MAX; }; };
    args.require(low.tapsLen >= 1, StatusFilterLength)
        .require(fits({low.tapsLen, -1}, {1, -1}), StatusFilterLength)
        .require(low.offs >= -1, StatusWtOffset)
        .require(fits(low, {1, -1}), StatusWtOffset)
        .require(high.tapsLen >= 1, StatusFilterLength)
        .require(fits(low, {high.tapsLen, -1}), StatusFilterLength)
        .require(high.offs >= -1, StatusWtOffset)
        .require(fits(low, high), StatusWtOffset);
}

template <class State> Status getStateSize(FilterSize low, FilterSize high, int* pSize) {
    Args args;
    args.ptr(pSize);
    checkSizes<State>(args, low, high);
    if (Status s = args) return s;
    *pSize = int(stateBytes<State>(low, high));
    return StatusOk;
}

template <class T, uint32_t A, uint32_t S> void setPast(WtKind<T, A, S>* s, const T* pDlyLine) {
    for (int i = 0; i < 2; ++i) {
        if (pDlyLine)
            std::reverse_copy(pDlyLine, pDlyLine + s->past[i], s->line[i]);
        else if (s->past[i] > 0)
            memset(s->line[i], 0, size_t(s->past[i]) * sizeof(T));
        if (pDlyLine) pDlyLine += s->past[i];
    }
}

// In a block of the caller's, or, with a null one, of its own.
template <class State, class T>
Status init(Direction direction, State** ppState, const T* pTapsLow, FilterSize low, const T* pTapsHigh, FilterSize high, bool own, uint8_t* pBuffer) {
    Args args;
    args.ptr(ppState).ptr(pTapsLow).ptr(pTapsHigh).require(own || pBuffer, StatusNullPtr);
    checkSizes<State>(args, low, high);
    if (Status s = args) return s;
    void* const block = own ? allocate(layOut<State>(direction, low, high, nullptr)) : align16(pBuffer);
    if (!block) return StatusNoMemory;
    layOut<State>(direction, low, high, block);
    auto* const state = static_cast<State*>(block);
    state->allocated = own;
    const T* const taps[] = {pTapsLow, pTapsHigh};
    const FilterSize sizes[] = {low, high};
    for (int i = 0; i < 2; ++i)
        if (direction == kAnalysis)
            state->analysis[i].put(taps[i], sizes[i].tapsLen, state->taps[i]);
        else
            state->synthesis[i].put(taps[i], sizes[i].tapsLen, sizes[i].offs, state->taps[i]);
    setPast(state, static_cast<const T*>(nullptr));
    *ppState = state;
    return StatusOk;
}

template <class State> Args& ofEither(Args& args, const State* pState) { return args.record(pState, State::kIds[kAnalysis], State::kIds[kSynthesis]); }

template <class State> Status freeState(State* pState) {
    Args args;
    if (Status s = ofEither(args.ptr(pState), pState)) return s;
    if (pState->allocated) releaseRecord(pState);
    return StatusOk;
}
template <class State, class T> Status setDlyLine(State* pState, const T* pDlyLine) {
    Args args;
    if (Status s = ofEither(args.ptr(pState), pState)) return s;
    setPast(pState, pDlyLine);
    return StatusOk;
}
template <class State, class T> Status getDlyLine(const State* pState, T* pDlyLine) {
    Args args;
    if (Status s = ofEither(args.ptr(pState).ptr(pDlyLine), pState)) return s;
    for (int i = 0; i < 2; ++i) {
        const T* const line = pState->line[i];
        pDlyLine = std::reverse_copy(line, line + pState->past[i], pDlyLine);
    }
    return StatusOk;
}

// The last `past` of the values in line and then those of the block.
template <class T> void advance(T* line, int past, const T* block, int64_t len) {
    const auto fresh = ptrdiff_t(std::min<int64_t>(past, len)), old = past - fresh;
    memmove(line, line + fresh, size_t(old) * sizeof(T));
    memcpy(line + old, block + (len - fresh), size_t(fresh) * sizeof(T));
}

template <class State, class T> Status analyse(const T* pSrc, T* pDstLow, T* pDstHigh, int len, State* pState) {
    if (Status s = Args().ptr(pSrc).ptr(pDstLow).ptr(pDstHigh).ptr(pState).len(len).record(pState, State::kIds[kAnalysis])) return s;
    const NearestRounding guard;
    const auto& kernel = kernelOf<T>(pState->kernels);
    const auto &low = pState->analysis[0], &high = pState->analysis[1];
    const auto run = [&](const T* x, ptrdiff_t at, ptrdiff_t n) {
        if (low == high) {
            kernel.analysis(x + low.first, pState->taps[0], pState->taps[1], low.pairs, low.odd, pDstLow + at, pDstHigh + at, n);
        } else {
            kernel.analysis(x + low.first, pState->taps[0], nullptr, low.pairs, low.odd, pDstLow + at, nullptr, n);
            kernel.analysis(x + high.first, pState->taps[1], nullptr, high.pairs, high.odd, pDstHigh + at, nullptr, n);
        }
    };
    // The pairs whose filters, and the sample before them, reach into the past; the rest is filtered where it lies.
    const int past = pState->past[0], head = std::min(len, past / 2 + 1);
    T* const line = pState->line[0];
    memcpy(line + past, pSrc, 2 * size_t(head) * sizeof(T));
    run(line + past, 0, head);
    if (len > head) run(pSrc + 2 * ptrdiff_t{head}, head, ptrdiff_t{len} - head);
    advance(line, past, pSrc, 2 * int64_t{len});
    return StatusOk;
}

template <class State, class T> Status synthesise(const T* pSrcLow, const T* pSrcHigh, T* pDst, int len, State* pState) {
    if (Status s = Args().ptr(pSrcLow).ptr(pSrcHigh).ptr(pDst).ptr(pState).len(len).record(pState, State::kIds[kSynthesis])) return s;
    const NearestRounding guard;
    const T* const src[] = {pSrcLow, pSrcHigh};
    SynthesisTaps<T> taps[2];
    for (int i = 0; i < 2; ++i) taps[i] = pState->synthesis[i].over(pState->taps[i]);
    const auto run = [&](const T* low, const T* high, ptrdiff_t at, ptrdiff_t n) {
        kernelOf<T>(pState->kernels).synthesis(low - pState->synthesis[0].oldest, high - pState->synthesis[1].oldest, taps, taps + 1, pDst + 2 * at, n);
    };
    // Each channel from its line as long as its filter reaches into the past; the rest where it lies.
    const int heads[2] = {int(std::min<int64_t>(len, headOf(pState->past[0]))), int(std::min<int64_t>(len, headOf(pState->past[1])))};
    const int from[3] = {0, std::min(heads[0], heads[1]), std::max(heads[0], heads[1])};
    for (int i = 0; i < 2; ++i) memcpy(pState->line[i] + pState->past[i], src[i], size_t(heads[i]) * sizeof(T));
    const auto at = [&](int i, int n) { return n < heads[i] ? pState->line[i] + pState->past[i] + n : src[i] + n; };
    for (int piece = 0; piece < 3; ++piece) {
        const int n = from[piece], end = piece < 2 ? from[piece + 1] : len;
        if (end > n) run(at(0, n), at(1, n), n, end - n);
    }
    for (int i = 0; i < 2; ++i) advance(pState->line[i], pState->past[i], src[i], len);
    return StatusOk;
}

// ---- all levels of a whole signal -----------------------------------------------------------------------------------------------------------

constexpr int kMostLevels = 30;

// What a transform is made of beside its taps.
struct DwtShape {
    int length, levels, tapsLen;
    bool mirror;
    int64_t lens[kMostLevels + 1];   // of the signal, and of either channel of each level

    DwtShape(int n, int l, int t, int ext) : length(n), levels(l), tapsLen(t), mirror(ext == ExtMirror) {
        lens[0] = n;
        for (int i = 1; i <= levels; ++i) lens[i] = (lens[i - 1] + (mirror ? tapsLen - 1 : 1)) / 2;
    }
    int64_t coefLen() const {
        int64_t n = lens[levels];
        for (int i = 1; i <= levels; ++i) n += lens[i];
        return n;
    }
};

// A record, at a 16-byte boundary, its taps behind it.
template <class T, uint32_t Id> struct DwtKind {
    using Sample = T;
    static constexpr uint32_t kId = Id;

    uint32_t id;
    bool owned, mirror;
    int32_t length, levels, tapsLen, coefLen;
    int32_t lens[kMostLevels + 1];
    int32_t offsets[kMostLevels + 1];   // of the approximation, and of each level's details
    const T *lowA, *highA;
    SynthesisShape shape;
    const T *lowS, *highS;
};

}   // namespace
}   // namespace tevs

struct DWTSpec_32f : tevs::DwtKind<float, tevs::identifier("DW01")> {};
struct DWTSpec_64f : tevs::DwtKind<double, tevs::identifier("DW02")> {};

namespace tevs {
namespace {

// Where synthesis begins: as in a stream with filters that reach into the future.
int64_t synthesisOffset(const DwtShape& f) { return f.mirror ? 1 - f.tapsLen : -f.tapsLen / 2; }

template <class Spec> uint64_t layOut(const DwtShape& f, void* block) {
    using T = typename Spec::Sample;
    Carve c(block);
    auto* const spec = c.take<Spec>(1);
    const SynthesisShape shape(f.tapsLen, synthesisOffset(f));
    T* const taps[] = {c.take<T>(uint64_t(f.tapsLen)), c.take<T>(uint64_t(f.tapsLen)), c.take<T>(shape.values()), c.take<T>(shape.values())};
    if (!spec) return c.size();
    memset(static_cast<void*>(spec), 0, sizeof *spec);
    spec->mirror = f.mirror;
    spec->length = f.length;
    spec->levels = f.levels;
    spec->tapsLen = f.tapsLen;
    spec->coefLen = int(f.coefLen());
    int64_t at = f.lens[f.levels];
    for (int i = f.levels; i >= 1; --i) {
        spec->lens[i] = int(f.lens[i]);
        spec->offsets[i] = int(at);
        at += f.lens[i];
    }
    spec->lens[0] = f.length;
    spec->lowA = taps[0];
    spec->highA = taps[1];
    spec->shape = shape;
    spec->lowS = taps[2];
    spec->highS = taps[3];
    return c.size();
}

// Outputs near an end are computed from a copy with what lies beyond it; so are all where fewer than so many are not near one. What that takes, of one signal or of
// two channels.
constexpr int kFewest = 32;
template <class T> struct Areas {
    T *edges, *odd, *even, *whole;

    // even and odd: the approximations of such levels, which of a short mirrored signal grow from one to the next; whole: a copy of the source, where that is the
    // destination.
    template <class Int> uint64_t carve(Carve& c, int tapsLen, const Int* lens, int levels, bool inPlace) {
        edges = c.take<T>(4 * uint64_t(tapsLen) + 4 * kFewest);
        odd = c.take<T>(levels > 1 ? uint64_t(std::max(lens[1], lens[levels])) : 0);
        even = c.take<T>(levels > 2 ? uint64_t(std::max(lens[2], lens[levels])) : 0);
        whole = c.take<T>(inPlace ? std::max(uint64_t(lens[0]), 2 * uint64_t(lens[1])) : 0);
        return c.size();
    }
};

template <class Spec> uint64_t workBytes(const DwtShape& f) {
    Carve c;
    Areas<typename Spec::Sample> areas;
    return areas.carve(c, f.tapsLen, f.lens, f.levels, true);
}

// Whether there is such a transform: its sizes are computed once its numbers are in range.
template <class Spec> bool goodDwt(int length, int levels, int tapsLen, int ext) {
    if (length < 1 || levels < 1 || levels > kMostLevels || tapsLen < 2 || tapsLen % 2 != 0) return false;
    const DwtShape f(length, levels, tapsLen, ext);
    return layOut<Spec>(f, nullptr) + 15 <= INT_MAX && workBytes<Spec>(f) + kAlignmentRoom <= INT_MAX && f.coefLen() <= INT_MAX;
}

template <class Spec> Status getSize(int length, int levels, int tapsLen, int ext, int* pSpecSize, int* pBufferSize, int* pCoefLen) {
    const auto good = [=] { return goodDwt<Spec>(length, levels, tapsLen, ext); };
    if (Status s = Args().ptr(pSpecSize).ptr(pBufferSize).ptr(pCoefLen).require(good, StatusBadSize)) return s;
    const DwtShape f(length, levels, tapsLen, ext);
    *pSpecSize = int(layOut<Spec>(f, nullptr) + 15);
    *pBufferSize = int(workBytes<Spec>(f) + kAlignmentRoom);
    *pCoefLen = int(f.coefLen());
    return StatusOk;
}

template <class T> struct Bank { const T *lowA, *highA, *lowS, *highS; };

template <class Spec, class T> Status initDwt(Spec** ppSpec, int length, int levels, Bank<T> h, int tapsLen, int ext, bool own, uint8_t* pMemSpec) {
    const auto good = [=] { return goodDwt<Spec>(length, levels, tapsLen, ext); };
    if (Status s = Args().ptr(ppSpec).ptr(h.lowA).ptr(h.highA).ptr(h.lowS).ptr(h.highS).require(own || pMemSpec, StatusNullPtr).require(good, StatusBadSize))
        return s;
    const DwtShape f(length, levels, tapsLen, ext);
    void* const block = own ? allocate(layOut<Spec>(f, nullptr)) : align16(pMemSpec);
    if (!block) return StatusNoMemory;
    layOut<Spec>(f, block);
    auto* const spec = static_cast<Spec*>(block);
    std::reverse_copy(h.lowA, h.lowA + tapsLen, const_cast<T*>(spec->lowA));
    std::reverse_copy(h.highA, h.highA + tapsLen, const_cast<T*>(spec->highA));
    spec->shape.put(h.lowS, tapsLen, synthesisOffset(f), const_cast<T*>(spec->lowS));
    spec->shape.put(h.highS, tapsLen, synthesisOffset(f), const_cast<T*>(spec->highS));
    spec->owned = own;
    spec->id = Spec::kId;
    *ppSpec = spec;
    return StatusOk;
}

template <class Spec> Status freeDwt(Spec* pSpec) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId)) return s;
    pSpec->id = 0;
    if (pSpec->owned) release(pSpec);
    return StatusOk;
}

template <class Spec> Status getBand(const Spec* pSpec, int level, int* pOffset, int* pLen) {
    if (Status s =
            Args().ptr(pSpec).ptr(pOffset).ptr(pLen).record(pSpec, Spec::kId).require([=] { return level >= 0 && level <= pSpec->levels; }, StatusBadArg))
        return s;
    *pOffset = pSpec->offsets[level];
    *pLen = pSpec->lens[level == 0 ? pSpec->levels : level];
    return StatusOk;
}

// A signal of len samples that goes on: round and round, with the last sample twice where their number is odd, or mirrored, the end samples repeated.
template <class T> class Extended {
public:
    Extended(const T* x, int64_t len, bool mirror) : x_(x), len_(len), period_(mirror ? 2 * len : len + len % 2), mirror_(mirror) {}
    void copy(int64_t from, int64_t count, T* to) const {
        int64_t j = from % period_;
        if (j < 0) j += period_;
        while (count > 0) {
            const int64_t n = std::min(count, (j < len_ ? len_ : period_) - j);
            if (j < len_)
                std::copy_n(x_ + j, n, to);
            else if (mirror_)
                std::reverse_copy(x_ + (period_ - j - n), x_ + (period_ - j), to);
            else
                *to = x_[len_ - 1];
            to += n;
            count -= n;
            j = j + n == period_ ? 0 : j + n;
        }
    }

private:
    const T* const x_;
    const int64_t len_, period_;
    const bool mirror_;
};

// inside(from, count) for the outputs from .. from+count-1 of m that take nothing from beyond the ends, and atEdge(from, count) for others.
template <class Inside, class AtEdge> void inPieces(int64_t m, int64_t before, int64_t behind, Inside inside, AtEdge atEdge) {
    const int64_t first = std::max<int64_t>(before, 0), end = m - std::max<int64_t>(behind, 0);
    if (end - first < kFewest && (first > 0 || end < m)) return atEdge(0, m);
    if (first > 0) atEdge(0, first);
    inside(first, end - first);
    if (end < m) atEdge(end, m - end);
}

template <class Spec, class T> void analyseLevel(const Spec& spec, const T* src, int64_t len, T* low, T* high, int64_t m, T* edges) {
    const auto& kernel = kernelOf<T>(wavelet);
    const int taps = spec.tapsLen, pairs = taps / 2;
    // Output n takes the samples from 2n - before on.
    const int64_t before = spec.mirror ? taps - 2 : pairs - 1, last = taps - 1 - before;
    const Extended<T> all(src, len, spec.mirror);
    const int64_t past = std::max<int64_t>(0, 2 * (m - 1) + last - (len - 1));   // samples beyond the end that the last output takes
    inPieces(
        m, (before + 1) / 2, (past + 1) / 2,
        [&](int64_t n, int64_t count) { kernel.analysis(src + (2 * n - before), spec.lowA, spec.highA, pairs, false, low + n, high + n, ptrdiff_t(count)); },
        [&](int64_t n, int64_t count) {
            all.copy(2 * n - before, 2 * (count - 1) + taps, edges);
            kernel.analysis(edges, spec.lowA, spec.highA, pairs, false, low + n, high + n, ptrdiff_t(count));
        });
}

template <class Spec, class T> void synthesiseLevel(const Spec& spec, const T* low, const T* high, int64_t m, T* dst, int64_t len, T* edges) {
    const auto& kernel = kernelOf<T>(wavelet);
    const SynthesisShape& shape = spec.shape;
    const SynthesisTaps<T> taps[] = {shape.over(spec.lowS), shape.over(spec.highS)};
    // Pairs of outputs; of an odd number of samples the last one is made beside them.
    const auto run = [&](const T* l, const T* h, int64_t n, int64_t count) {
        const int64_t whole = std::min(count, len / 2 - n);
        kernel.synthesis(l - shape.oldest, h - shape.oldest, taps, taps + 1, dst + 2 * n, ptrdiff_t(whole));
        if (whole == count) return;
        T pair[2];
        kernel.synthesis(l - shape.oldest + whole, h - shape.oldest + whole, taps, taps + 1, pair, 1);
        dst[len - 1] = pair[0];
    };
    const int64_t before = shape.before(), behind = shape.behind(), outputs = (len + 1) / 2;
    inPieces(
        outputs, before, std::max<int64_t>(0, outputs - 1 + behind - (m - 1)), [&](int64_t n, int64_t count) { run(low + n, high + n, n, count); },
        [&](int64_t n, int64_t count) {
            const int64_t values = count + before + behind;
            const auto copy = [=](const T* x, T* to) {   // the channels of a periodic signal go round as they are
                for (int64_t i = 0, j = ((n - before) % m + m) % m; i < values; ++i, j = j + 1 == m ? 0 : j + 1) to[i] = x[j];
            };
            copy(low, edges);
            copy(high, edges + values);
            run(edges + before, edges + values + before, n, count);
        });
}

constexpr int kDwtStackBytes = 8192;

// body(areas) in the caller's work buffer, or in one of its own with what the call needs.
template <class Spec, class Body> Status withAreas(const Spec& spec, bool inPlace, uint8_t* pBuffer, const Body& body) {
    Areas<typename Spec::Sample> areas;
    Carve sizes;
    const uint64_t bytes = areas.carve(sizes, spec.tapsLen, spec.lens, spec.levels, inPlace);
    const NearestRounding guard;
    return withWorkOnStack<kDwtStackBytes>(pBuffer, bytes, [&](uint8_t* work) {
        Carve c(work);
        areas.carve(c, spec.tapsLen, spec.lens, spec.levels, inPlace);
        body(areas);
    });
}

template <class Spec, class T> Status forward(const T* pSrc, T* pDst, const Spec* pSpec, uint8_t* pBuffer) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId).ptr(pSrc).ptr(pDst)) return s;
    const Spec& spec = *pSpec;
    const bool inPlace = pSrc == pDst;
    return withAreas(spec, inPlace, pBuffer, [&](const Areas<T>& areas) {
        const T* src = pSrc;
        if (inPlace) src = static_cast<const T*>(memcpy(areas.whole, pSrc, size_t(spec.length) * sizeof(T)));
        for (int level = 1; level <= spec.levels; ++level) {
            T* const low = level == spec.levels ? pDst : level % 2 ? areas.odd : areas.even;
            analyseLevel(spec, src, spec.lens[level - 1], low, pDst + spec.offsets[level], spec.lens[level], areas.edges);
            src = low;
        }
    });
}

template <class Spec, class T> Status inverse(const T* pSrc, T* pDst, const Spec* pSpec, uint8_t* pBuffer) {
    if (Status s = Args().ptr(pSpec).record(pSpec, Spec::kId).ptr(pSrc).ptr(pDst)) return s;
    const Spec& spec = *pSpec;
    const bool inPlace = pSrc == pDst;
    return withAreas(spec, inPlace, pBuffer, [&](const Areas<T>& areas) {
        const T* low = pSrc;
        for (int level = spec.levels; level >= 1; --level) {
            const int m = spec.lens[level];
            const T* high = pSrc + spec.offsets[level];
            T* const dst = level == 1 ? pDst : level % 2 ? areas.even : areas.odd;
            if (level == 1 && inPlace) {
                high = static_cast<const T*>(memcpy(areas.whole + m, high, size_t(m) * sizeof(T)));
                if (low == pSrc) low = static_cast<const T*>(memcpy(areas.whole, low, size_t(m) * sizeof(T)));
            }
            synthesiseLevel(spec, low, high, m, dst, spec.lens[level - 1], areas.edges);
            low = dst;
        }
    });
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsWtGenTaps_32f(float* pLowA, float* pHighA, float* pLowS, float* pHighS, int tapsLen, int family) {
    return genTaps(pLowA, pHighA, pLowS, pHighS, tapsLen, family);
}
Status tevsWtGenTaps_64f(double* pLowA, double* pHighA, double* pLowS, double* pHighS, int tapsLen, int family) {
    return genTaps(pLowA, pHighA, pLowS, pHighS, tapsLen, family);
}

Status tevsWtHaarAnalysis_16s_Sfs(const int16_t* pSrc, int16_t* pDstLow, int16_t* pDstHigh, int len, int scaleFactor) {
    if (Status s = Args().ptr(pSrc).ptr(pDstLow).ptr(pDstHigh).len(len)) return s;
    wavelet->haarAnalysis16s(pSrc, pDstLow, pDstHigh, len, std::min(scaleFactor, kAllOut));
    return StatusOk;
}
Status tevsWtHaarAnalysis_32f(const float* pSrc, float* pDstLow, float* pDstHigh, int len) { return haarAnalysis(pSrc, pDstLow, pDstHigh, len); }
Status tevsWtHaarAnalysis_64f(const double* pSrc, double* pDstLow, double* pDstHigh, int len) { return haarAnalysis(pSrc, pDstLow, pDstHigh, len); }
Status tevsWtHaarSynthesis_16s_Sfs(const int16_t* pSrcLow, const int16_t* pSrcHigh, int16_t* pDst, int len, int scaleFactor) {
    if (Status s = Args().ptr(pSrcLow).ptr(pSrcHigh).ptr(pDst).len(len)) return s;
    wavelet->haarSynthesis16s(pSrcLow, pSrcHigh, pDst, len, std::min(scaleFactor, kAllOut));
    return StatusOk;
}
Status tevsWtHaarSynthesis_32f(const float* pSrcLow, const float* pSrcHigh, float* pDst, int len) { return haarSynthesis(pSrcLow, pSrcHigh, pDst, len); }
Status tevsWtHaarSynthesis_64f(const double* pSrcLow, const double* pSrcHigh, double* pDst, int len) { return haarSynthesis(pSrcLow, pSrcHigh, pDst, len); }

Status tevsWtLiftAnalysis_16s(const int16_t* pSrc, int16_t* pDstLow, int16_t* pDstHigh, int srcLen, int lift) {
    return liftAnalysis(pSrc, pDstLow, pDstHigh, srcLen, lift);
}
Status tevsWtLiftAnalysis_32s(const int32_t* pSrc, int32_t* pDstLow, int32_t* pDstHigh, int srcLen, int lift) {
    return liftAnalysis(pSrc, pDstLow, pDstHigh, srcLen, lift);
}
Status tevsWtLiftSynthesis_16s(const int16_t* pSrcLow, const int16_t* pSrcHigh, int16_t* pDst, int dstLen, int lift) {
    return liftSynthesis(pSrcLow, pSrcHigh, pDst, dstLen, lift);
}
Status tevsWtLiftSynthesis_32s(const int32_t* pSrcLow, const int32_t* pSrcHigh, int32_t* pDst, int dstLen, int lift) {
    return liftSynthesis(pSrcLow, pSrcHigh, pDst, dstLen, lift);
}

Status tevsWtGetStateSize_32f(int tapsLenLow, int offsLow, int tapsLenHigh, int offsHigh, int* pSize) {
    return getStateSize<WtState_32f>({tapsLenLow, offsLow}, {tapsLenHigh, offsHigh}, pSize);
}
Status tevsWtGetStateSize_64f(int tapsLenLow, int offsLow, int tapsLenHigh, int offsHigh, int* pSize) {
    return getStateSize<WtState_64f>({tapsLenLow, offsLow}, {tapsLenHigh, offsHigh}, pSize);
}

Status tevsWtAnalysisInit_32f(WtState_32f** ppState, const float* pTapsLow, int tapsLenLow, int offsLow, const float* pTapsHigh, int tapsLenHigh, int offsHigh,
                              uint8_t* pBuffer) {
    return init(kAnalysis, ppState, pTapsLow, {tapsLenLow, offsLow}, pTapsHigh, {tapsLenHigh, offsHigh}, false, pBuffer);
}
Status tevsWtAnalysisInit_64f(WtState_64f** ppState, const double* pTapsLow, int tapsLenLow, int offsLow, const double* pTapsHigh, int tapsLenHigh,
                              int offsHigh, uint8_t* pBuffer) {
    return init(kAnalysis, ppState, pTapsLow, {tapsLenLow, offsLow}, pTapsHigh, {tapsLenHigh, offsHigh}, false, pBuffer);
}

Status tevsWtAnalysisInitAlloc_32f(WtState_32f** ppState, const float* pTapsLow, int tapsLenLow, int offsLow, const float* pTapsHigh, int tapsLenHigh,
                                   int offsHigh) {
    return init(kAnalysis, ppState, pTapsLow, {tapsLenLow, offsLow}, pTapsHigh, {tapsLenHigh, offsHigh}, true, nullptr);
}
Status tevsWtAnalysisInitAlloc_64f(WtState_64f** ppState, const double* pTapsLow, int tapsLenLow, int offsLow, const double* pTapsHigh, int tapsLenHigh,
                                   int offsHigh) {
    return init(kAnalysis, ppState, pTapsLow, {tapsLenLow, offsLow}, pTapsHigh, {tapsLenHigh, offsHigh}, true, nullptr);
}

Status tevsWtSynthesisInit_32f(WtState_32f** ppState, const float* pTapsLow, int tapsLenLow, int offsLow, const float* pTapsHigh, int tapsLenHigh, int offsHigh,
                               uint8_t* pBuffer) {
    return init(kSynthesis, ppState, pTapsLow, {tapsLenLow, offsLow}, pTapsHigh, {tapsLenHigh, offsHigh}, false, pBuffer);
}
Status tevsWtSynthesisInit_64f(WtState_64f** ppState, const double* pTapsLow, int tapsLenLow, int offsLow, const double* pTapsHigh, int tapsLenHigh,
                               int offsHigh, uint8_t* pBuffer) {
    return init(kSynthesis, ppState, pTapsLow, {tapsLenLow, offsLow}, pTapsHigh, {tapsLenHigh, offsHigh}, false, pBuffer);
}

Status tevsWtSynthesisInitAlloc_32f(WtState_32f** ppState, const float* pTapsLow, int tapsLenLow, int offsLow, const float* pTapsHigh, int tapsLenHigh,
                                    int offsHigh) {
    return init(kSynthesis, ppState, pTapsLow, {tapsLenLow, offsLow}, pTapsHigh, {tapsLenHigh, offsHigh}, true, nullptr);
}
Status tevsWtSynthesisInitAlloc_64f(WtState_64f** ppState, const double* pTapsLow, int tapsLenLow, int offsLow, const double* pTapsHigh, int tapsLenHigh,
                                    int offsHigh) {
    return init(kSynthesis, ppState, pTapsLow, {tapsLenLow, offsLow}, pTapsHigh, {tapsLenHigh, offsHigh}, true, nullptr);
}

Status tevsWtFree_32f(WtState_32f* pState) { return freeState(pState); }
Status tevsWtFree_64f(WtState_64f* pState) { return freeState(pState); }

Status tevsWtSetDlyLine_32f(WtState_32f* pState, const float* pDlyLine) { return setDlyLine(pState, pDlyLine); }
Status tevsWtSetDlyLine_64f(WtState_64f* pState, const double* pDlyLine) { return setDlyLine(pState, pDlyLine); }

Status tevsWtGetDlyLine_32f(const WtState_32f* pState, float* pDlyLine) { return getDlyLine(pState, pDlyLine); }
Status tevsWtGetDlyLine_64f(const WtState_64f* pState, double* pDlyLine) { return getDlyLine(pState, pDlyLine); }

Status tevsWtAnalysis_32f(const float* pSrc, float* pDstLow, float* pDstHigh, int len, WtState_32f* pState) {
    return analyse(pSrc, pDstLow, pDstHigh, len, pState);
}
Status tevsWtAnalysis_64f(const double* pSrc, double* pDstLow, double* pDstHigh, int len, WtState_64f* pState) {
    return analyse(pSrc, pDstLow, pDstHigh, len, pState);
}

Status tevsWtSynthesis_32f(const float* pSrcLow, const float* pSrcHigh, float* pDst, int len, WtState_32f* pState) {
    return synthesise(pSrcLow, pSrcHigh, pDst, len, pState);
}
Status tevsWtSynthesis_64f(const double* pSrcLow, const double* pSrcHigh, double* pDst, int len, WtState_64f* pState) {
    return synthesise(pSrcLow, pSrcHigh, pDst, len, pState);
}

Status tevsDWTGetSize_32f(int length, int levels, int tapsLen, int ext, int* pSpecSize, int* pBufferSize, int* pCoefLen) {
    return getSize<DWTSpec_32f>(length, levels, tapsLen, ext, pSpecSize, pBufferSize, pCoefLen);
}
Status tevsDWTGetSize_64f(int length, int levels, int tapsLen, int ext, int* pSpecSize, int* pBufferSize, int* pCoefLen) {
    return getSize<DWTSpec_64f>(length, levels, tapsLen, ext, pSpecSize, pBufferSize, pCoefLen);
}

Status tevsDWTInit_32f(DWTSpec_32f** ppSpec, int length, int levels, const float* pLowA, const float* pHighA, const float* pLowS, const float* pHighS,
                       int tapsLen, int ext, uint8_t* pMemSpec) {
    return initDwt(ppSpec, length, levels, Bank<float>{pLowA, pHighA, pLowS, pHighS}, tapsLen, ext, false, pMemSpec);
}
Status tevsDWTInit_64f(DWTSpec_64f** ppSpec, int length, int levels, const double* pLowA, const double* pHighA, const double* pLowS, const double* pHighS,
                       int tapsLen, int ext, uint8_t* pMemSpec) {
    return initDwt(ppSpec, length, levels, Bank<double>{pLowA, pHighA, pLowS, pHighS}, tapsLen, ext, false, pMemSpec);
}

Status tevsDWTInitAlloc_32f(DWTSpec_32f** ppSpec, int length, int levels, const float* pLowA, const float* pHighA, const float* pLowS, const float* pHighS,
                            int tapsLen, int ext) {
    return initDwt(ppSpec, length, levels, Bank<float>{pLowA, pHighA, pLowS, pHighS}, tapsLen, ext, true, nullptr);
}
Status tevsDWTInitAlloc_64f(DWTSpec_64f** ppSpec, int length, int levels, const double* pLowA, const double* pHighA, const double* pLowS, const double* pHighS,
                            int tapsLen, int ext) {
    return initDwt(ppSpec, length, levels, Bank<double>{pLowA, pHighA, pLowS, pHighS}, tapsLen, ext, true, nullptr);
}

Status tevsDWTFree_32f(DWTSpec_32f* pSpec) { return freeDwt(pSpec); }
Status tevsDWTFree_64f(DWTSpec_64f* pSpec) { return freeDwt(pSpec); }

Status tevsDWTGetBand_32f(const DWTSpec_32f* pSpec, int level, int* pOffset, int* pLen) { return getBand(pSpec, level, pOffset, pLen); }
Status tevsDWTGetBand_64f(const DWTSpec_64f* pSpec, int level, int* pOffset, int* pLen) { return getBand(pSpec, level, pOffset, pLen); }

Status tevsDWTFwd_32f(const float* pSrc, float* pDst, const DWTSpec_32f* pSpec, uint8_t* pBuffer) { return forward(pSrc, pDst, pSpec, pBuffer); }
Status tevsDWTFwd_64f(const double* pSrc, double* pDst, const DWTSpec_64f* pSpec, uint8_t* pBuffer) { return forward(pSrc, pDst, pSpec, pBuffer); }

Status tevsDWTInv_32f(const float* pSrc, float* pDst, const DWTSpec_32f* pSpec, uint8_t* pBuffer) { return inverse(pSrc, pDst, pSpec, pBuffer); }
Status tevsDWTInv_64f(const double* pSrc, double* pDst, const DWTSpec_64f* pSpec, uint8_t* pBuffer) { return inverse(pSrc, pDst, pSpec, pBuffer); }
