// FIR filters: y[t] = sum over k of h[k] x[t-k], with taps and past in a record, or passed on every call.
#include "tevs/fir.h"

#include <limits.h>
#include <string.h>

#include <algorithm>
#include <utility>

#include "core/args.h"
#include "core/memory.h"
#include "core/parallel.h"
#include "core/rounding.h"
#include "filter/fir.table.h"
#include "tevs/fft.h"

namespace tevs {

constexpr uint32_t kFir32f = identifier("FI01");

// A record, at a 16-byte boundary, its arrays behind it.
struct FirState {
    uint32_t id;
    int32_t tapsLen;
    int32_t dlyIndex;    // where the oldest sample of the past lies in delay
    int32_t fftLen;      // transform length of overlap-save, -1 for direct filtering at every length
    int32_t threads;     // work areas, one a thread
    int32_t allocated;   // 1 where InitAlloc made the block
    int64_t workBytes;   // of one area: fftLen samples and a transform's scratch
    float* reversed;     // h[tapsLen-1] .. h[0]: the order in which a block runs along the past
    float* delay;        // the past, oldest first from dlyIndex on: twice over for single samples, or followed by the head of a block
    float* stage;        // kStage samples and the past before them, for blocks in place
    float* spectrum;     // Perm transform of the taps, zeros behind them, divided by nothing
    FFTSpec_R_32f* fft;
    unsigned char* work;
};
static_assert(sizeof(FirState) <= 112);   // with what 16-byte alignment costs, the 128 bytes of the reported size

namespace {

constexpr int kStage = 4092;          // samples of a block in place that are copied at a time
constexpr int kFewestFftTaps = 64;    // from which on InitAlloc prepares overlap-save
constexpr int kLongestDirect = 511;   // samples of a block that is filtered directly even so
constexpr int kParallelAbove = 160000;

constexpr int64_t floats(int64_t n) { return int64_t(roundUp16(uint64_t(n) * sizeof(float))); }

// Taps, past and stage lie within this at any address: it has four times the taps and kStage samples more than they take.
int64_t stateBytes(int tapsLen, int threads) {
    const int64_t t = tapsLen;
    return floats(3 * t + 4) + 5 * floats(t) + 128 + 4 * (4 * int64_t{threads} + kStage);
}

// The first outputs of a block are computed from the past with the block's head behind it; the rest straight from the source.
int headLen(int tapsLen) { return (tapsLen + 3) & ~3; }

// The part of a record that both lifecycles have. Over no block it only adds up.
uint64_t layOut(FirState* s, void* block, int tapsLen) {
    Carve c(block);
    c.take<FirState>(1);
    float* const reversed = c.take<float>(uint64_t(tapsLen));
    float* const delay = c.take<float>(3 * uint64_t(tapsLen) + 4);
    float* const stage = c.take<float>(uint64_t(tapsLen) + kStage);
    if (s)
        *s = {.id = kFir32f,
              .tapsLen = tapsLen,
              .dlyIndex = 0,
              .fftLen = -1,
              .threads = 1,
              .allocated = 0,
              .workBytes = 0,
              .reversed = reversed,
              .delay = delay,
              .stage = stage,
              .spectrum = nullptr,
              .fft = nullptr,
              .work = nullptr};
    return c.size();
}

Status setTaps(const float* pTaps, FirState* s) {
    std::reverse_copy(pTaps, pTaps + s->tapsLen, s->reversed);
    if (s->fftLen < 0) return StatusOk;
    memcpy(s->spectrum, pTaps, size_t(s->tapsLen) * sizeof(float));
    memset(s->spectrum + s->tapsLen, 0, size_t(s->fftLen - s->tapsLen) * sizeof(float));
    return tevsFFTFwd_RToPerm_32f_I(s->spectrum, s->fft, s->work + floats(s->fftLen));
}

void setPast(const float* pDlyLine, FirState* s) {
    s->dlyIndex = 0;
    if (pDlyLine)
        std::reverse_copy(pDlyLine, pDlyLine + s->tapsLen, s->delay);
    else
        memset(s->delay, 0, size_t(s->tapsLen) * sizeof(float));
}

// fftLen of a record that is built for overlap-save: four times the largest power of two not above tapsLen.
int fftOrder(int tapsLen) {
    int k = 2;
    while (int64_t{1} << k <= tapsLen) ++k;
    return k + 1;
}

// A record in a block of the library's own, with what overlap-save needs where there are taps enough.
Status build(FirState** ppState, const float* pTaps, int tapsLen, const float* pDlyLine) {
    FFTSpec_R_32f* fft = nullptr;
    int scratchBytes = 0, order = 0;
    if (tapsLen >= kFewestFftTaps) {
        order = fftOrder(tapsLen);
        if (Status s = tevsFFTInitAlloc_R_32f(&fft, order, ScaleInvByN, HintNone)) return s;
        tevsFFTGetBufSize_R_32f(fft, &scratchBytes);
    }
    const uint64_t fftLen = fft ? uint64_t{1} << order : 0;
    const int threads = std::max(threads_omp_of_n_tev, 1);
    const uint64_t areaBytes = (uint64_t(floats(int64_t(fftLen))) + uint64_t(scratchBytes) + 63) & ~uint64_t{63};
    const uint64_t stateBytes = (layOut(nullptr, nullptr, tapsLen) + 63) & ~uint64_t{63};
    const uint64_t bytes = stateBytes + fftLen * sizeof(float) + uint64_t(threads) * areaBytes;
    auto* const block = static_cast<unsigned char*>(bytes <= SIZE_MAX / 2 ? allocate(size_t(bytes)) : nullptr);
    if (!block) {
        if (fft) tevsFFTFree_R_32f(fft);
        return StatusNoMemory;
    }
    auto* const state = reinterpret_cast<FirState*>(block);
    layOut(state, block, tapsLen);
    state->threads = threads;
    state->allocated = 1;
    if (fft) {
        state->fft = fft;
        state->fftLen = int(fftLen);
        state->spectrum = reinterpret_cast<float*>(block + stateBytes);
        state->work = block + stateBytes + fftLen * sizeof(float);
        state->workBytes = int64_t(areaBytes);
    }
    setPast(pDlyLine, state);
    if (Status s = setTaps(pTaps, state)) {
        if (fft) tevsFFTFree_R_32f(fft);
        release(state);
        return s;
    }
    *ppState = state;
    return StatusOk;
}

// ---- filtering ------------------------------------------------------------------------------------------------------------------------

const float* past(const FirState* s) { return s->delay + s->dlyIndex; }

// The last tapsLen samples of the past and the block become the past.
void keep(const float* pSrc, int numIters, FirState* s) {
    const int t = s->tapsLen;
    if (numIters < t) memmove(s->delay, past(s) + numIters, size_t(t - numIters) * sizeof(float));
    const int n = std::min(numIters, t);
    memcpy(s->delay + (t - n), pSrc + (numIters - n), size_t(n) * sizeof(float));
    s->dlyIndex = 0;
}

void direct(const float* pSrc, float* pDst, int numIters, FirState* s) {
    const int t = s->tapsLen, head = headLen(t);
    float* const base = s->delay + s->dlyIndex;
    if (numIters <= head + 1) {
        memcpy(base + t, pSrc, size_t(numIters) * sizeof(float));
        fir->block(base + 1, s->reversed, t, pDst, numIters);
        memmove(s->delay, base + numIters, size_t(t) * sizeof(float));
        s->dlyIndex = 0;
        return;
    }
    memcpy(base + t, pSrc, size_t(head) * sizeof(float));
    fir->block(base + 1, s->reversed, t, pDst, head);
    const float* const rest = pSrc + (head - t + 1);
    const auto range = [=](int first, int count) { fir->block(rest + first, s->reversed, t, pDst + head + first, count); };
    if (numIters > kParallelAbove)
        parallelRanges(numIters - head, teamSize(s->threads), range);
    else
        range(0, numIters - head);
    keep(pSrc, numIters, s);
}

// The samples that an output overwrites are still wanted by the next tapsLen - 1: each part of the block is copied behind its past first.
void directInPlace(float* pSrcDst, int numIters, FirState* s) {
    const int t = s->tapsLen;
    if (numIters <= headLen(t) + 1) return direct(pSrcDst, pSrcDst, numIters, s);
    memcpy(s->stage, past(s), size_t(t) * sizeof(float));
    for (int n = 0; n < numIters;) {
        const int count = std::min(numIters - n, kStage);
        memcpy(s->stage + t, pSrcDst + n, size_t(count) * sizeof(float));
        fir->block(s->stage + 1, s->reversed, t, pSrcDst + n, count);
        memmove(s->stage, s->stage + count, size_t(t) * sizeof(float));
        n += count;
    }
    memcpy(s->delay, s->stage, size_t(t) * sizeof(float));
    s->dlyIndex = 0;
}

// One block of overlap-save in a thread's work area, which begins with the tapsLen - 1 samples before it: `fresh` more samples make as many
// outputs. The first tapsLen - 1 points of a circular convolution are wrapped round and dropped.
Status filterBlock(float* area, const float* src, float* dst, int fresh, const FirState* s) {
    const int kept = s->tapsLen - 1;
    uint8_t* const scratch = reinterpret_cast<uint8_t*>(area) + floats(s->fftLen);
    memcpy(area + kept, src, size_t(fresh) * sizeof(float));
    memset(area + kept + fresh, 0, size_t(s->fftLen - kept - fresh) * sizeof(float));
    Status status = tevsFFTFwd_RToPerm_32f_I(area, s->fft, scratch);
    if (status == StatusOk) status = tevsMulPerm_32f_I(s->spectrum, area, s->fftLen);
    if (status == StatusOk) status = tevsFFTInv_PermToR_32f_I(area, s->fft, scratch);
    if (status == StatusOk) memcpy(dst, area + kept, size_t(fresh) * sizeof(float));
    return status;
}

Status overlapSave(const float* pSrc, float* pDst, int numIters, FirState* s) {
    const int kept = s->tapsLen - 1, step = s->fftLen - kept, blocks = (numIters - 1) / step + 1;
    const auto fresh = [=](int b) { return std::min(step, numIters - b * step); };
    const auto area = [=](int thread) { return reinterpret_cast<float*>(s->work + s->workBytes * thread); };
    if (numIters > kParallelAbove && pSrc != pDst) {
        const Status status = parallelUnits(blocks, teamSize(s->threads), [=](int b, int thread) {
            const int64_t at = int64_t{b} * step;
            // What comes before a block, if it does not reach back to inputs of this call alone, begins in the past.
            const int before = int(std::min<int64_t>(at, kept));
            memcpy(area(thread), past(s) + 1 + before, size_t(kept - before) * sizeof(float));
            memcpy(area(thread) + (kept - before), pSrc + at - before, size_t(before) * sizeof(float));
            return filterBlock(area(thread), pSrc + at, pDst + at, fresh(b), s);
        });
        keep(pSrc, numIters, s);
        return status;
    }
    // One after another: each block's last inputs are set aside before its outputs may overwrite them.
    float* const overlap = s->stage;
    memcpy(overlap, past(s) + 1, size_t(kept) * sizeof(float));
    keep(pSrc, numIters, s);
    for (int b = 0; b < blocks; ++b) {
        float* const to = area(0);
        const float* const src = pSrc + int64_t{b} * step;
        memcpy(to, overlap, size_t(kept) * sizeof(float));
        const int n = fresh(b), carried = std::min(n, kept);
        memmove(overlap, overlap + carried, size_t(kept - carried) * sizeof(float));
        memcpy(overlap + (kept - carried), src + (n - carried), size_t(carried) * sizeof(float));
        if (Status status = filterBlock(to, src, pDst + int64_t{b} * step, n, s)) return status;
    }
    return StatusOk;
}

Status filter(const float* pSrc, float* pDst, int numIters, FirState* s) {
    if (Status status = Args().ptr(pSrc).ptr(pDst).ptr(s).len(numIters).record(s, kFir32f)) return status;
    NearestRounding guard;
    const bool byFft = numIters > kLongestDirect && s->fftLen > 0;
    if (pSrc == pDst && numIters > kParallelAbove && teamSize(s->threads) > 1) {
        // Threads in place would overwrite each other's past: they work from a copy. Without memory for it one thread does, by parts.
        if (const Scratch copy{allocate(size_t(numIters) * sizeof(float))}) {
            auto* const src = static_cast<float*>(copy.get());
            memcpy(src, pSrc, size_t(numIters) * sizeof(float));
            if (byFft) return overlapSave(src, pDst, numIters, s);
            direct(src, pDst, numIters, s);
            return StatusOk;
        }
    }
    if (byFft) return overlapSave(pSrc, pDst, numIters, s);
    if (pSrc == pDst)
        directInPlace(pDst, numIters, s);
    else
        direct(pSrc, pDst, numIters, s);
    return StatusOk;
}

// ---- without a record ---------------------------------------------------------------------------------------------------------------

// The past lies twice over in 2 tapsLen samples, so that it is in one piece from any index on.
class Circle {
public:
    Circle(float* line, int tapsLen, int index) : line_(line), tapsLen_(tapsLen), at_(index % tapsLen) {
        if (at_ < 0) at_ += tapsLen;
    }
    const float* push(float x) {   // the past with x as its newest sample, oldest first
        line_[at_] = line_[at_ + tapsLen_] = x;
        if (++at_ == tapsLen_) at_ = 0;
        return line_ + at_;
    }
    int index() const { return at_; }

private:
    float* const line_;
    const int tapsLen_;
    int at_;
};

// h[0] .. h[tapsLen-1] on the past, oldest sample first.
float sumInDouble(const float* pTaps, const float* past, int tapsLen) {
    double sums[4] = {};
    int k = 0;
    for (; k + 4 <= tapsLen; k += 4)
        for (int l = 0; l < 4; ++l) sums[l] += double(pTaps[k + l]) * double(past[tapsLen - 1 - k - l]);
    for (; k < tapsLen; ++k) sums[0] += double(pTaps[k]) * double(past[tapsLen - 1 - k]);
    return float((sums[0] + sums[1]) + (sums[2] + sums[3]));
}

Status stateless(const float* pSrc, float* pDst, int numIters, const float* pTaps, int tapsLen, float* pDlyLine, int* pDlyLineIndex) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(numIters).ptr(pTaps).require(tapsLen >= 1, StatusFilterLength).ptr(pDlyLine).ptr(pDlyLineIndex)) return s;
    NearestRounding guard;
    Circle circle(pDlyLine, tapsLen, *pDlyLineIndex);
    for (int n = 0; n < numIters; ++n) pDst[n] = sumInDouble(pTaps, circle.push(pSrc[n]), tapsLen);
    *pDlyLineIndex = circle.index();
    return StatusOk;
}

}   // namespace
}   // namespace tevs

struct FIRState_32f : tevs::FirState {};

using namespace tevs;

Status tevsFIRGetStateSize_32f(int tapsLen, int* pSize) {
    if (Status s = Args().ptr(pSize).require(tapsLen >= 1 && stateBytes(tapsLen, std::max(threads_omp_of_n_tev, 1)) <= INT_MAX, StatusFilterLength)) return s;
    *pSize = int(stateBytes(tapsLen, std::max(threads_omp_of_n_tev, 1)));
    return StatusOk;
}

Status tevsFIRInit_32f(FIRState_32f** ppState, const float* pTaps, int tapsLen, const float* pDlyLine, uint8_t* pBuffer) {
    const bool legal = tapsLen >= 1 && stateBytes(tapsLen, 1) <= INT_MAX;
    if (Status s = Args().ptr(ppState).ptr(pTaps).ptr(pBuffer).require(legal, StatusFilterLength)) return s;
    auto* const state = align16<FIRState_32f>(pBuffer);
    layOut(state, state, tapsLen);
    state->threads = std::max(threads_omp_of_n_tev, 1);
    setTaps(pTaps, state);
    setPast(pDlyLine, state);
    *ppState = state;
    return StatusOk;
}

Status tevsFIRInitAlloc_32f(FIRState_32f** ppState, const float* pTaps, int tapsLen, const float* pDlyLine) {
    if (Status s = Args().ptr(ppState).ptr(pTaps).require(tapsLen >= 1, StatusFilterLength)) return s;
    FirState* state;
    if (Status s = build(&state, pTaps, tapsLen, pDlyLine)) return s;
    *ppState = static_cast<FIRState_32f*>(state);
    return StatusOk;
}

Status tevsFIRFree_32f(FIRState_32f* pState) {
    if (Status s = Args().ptr(pState).record(pState, kFir32f)) return s;
    if (!pState->allocated) return StatusOk;
    if (pState->fft) tevsFFTFree_R_32f(pState->fft);
    release(pState);
    return StatusOk;
}

Status tevsFIRSetTaps_32f(const float* pTaps, FIRState_32f* pState) {
    if (Status s = Args().ptr(pTaps).ptr(pState).record(pState, kFir32f)) return s;
    return setTaps(pTaps, pState);
}

Status tevsFIRGetTaps_32f(const FIRState_32f* pState, float* pTaps) {
    if (Status s = Args().ptr(pState).ptr(pTaps).record(pState, kFir32f)) return s;
    std::reverse_copy(pState->reversed, pState->reversed + pState->tapsLen, pTaps);
    return StatusOk;
}

Status tevsFIRSetDlyLine_32f(FIRState_32f* pState, const float* pDlyLine) {
    if (Status s = Args().ptr(pState).record(pState, kFir32f)) return s;
    setPast(pDlyLine, pState);
    return StatusOk;
}

Status tevsFIRGetDlyLine_32f(const FIRState_32f* pState, float* pDlyLine) {
    if (Status s = Args().ptr(pState).ptr(pDlyLine).record(pState, kFir32f)) return s;
    std::reverse_copy(past(pState), past(pState) + pState->tapsLen, pDlyLine);
    return StatusOk;
}

Status tevsFIR_32f(const float* pSrc, float* pDst, int numIters, FIRState_32f* pState) { return filter(pSrc, pDst, numIters, pState); }
Status tevsFIR_32f_I(float* pSrcDst, int numIters, FIRState_32f* pState) { return filter(pSrcDst, pSrcDst, numIters, pState); }

Status tevsFIROne_32f(float src, float* pDst, FIRState_32f* pState) {
    if (Status s = Args().ptr(pDst).ptr(pState).record(pState, kFir32f)) return s;
    NearestRounding guard;
    Circle circle(pState->delay, pState->tapsLen, pState->dlyIndex);
    // The newest sample is added by itself: a vector load that takes in what was stored a moment ago waits for the store.
    const int older = pState->tapsLen - 1;
    *pDst = fir->dot(circle.push(src), pState->reversed, older) + pState->reversed[older] * src;
    pState->dlyIndex = circle.index();
    return StatusOk;
}

Status tevsFIR_Direct_32f(const float* pSrc, float* pDst, int numIters, const float* pTaps, int tapsLen, float* pDlyLine, int* pDlyLineIndex) {
    return stateless(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIR_Direct_32f_I(float* pSrcDst, int numIters, const float* pTaps, int tapsLen, float* pDlyLine, int* pDlyLineIndex) {
    return stateless(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIROne_Direct_32f(float src, float* pDst, const float* pTaps, int tapsLen, float* pDlyLine, int* pDlyLineIndex) {
    return stateless(&src, pDst, 1, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
Status tevsFIROne_Direct_32f_I(float* pSrcDst, const float* pTaps, int tapsLen, float* pDlyLine, int* pDlyLineIndex) {
    return stateless(pSrcDst, pSrcDst, 1, pTaps, tapsLen, pDlyLine, pDlyLineIndex);
}
