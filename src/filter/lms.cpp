// Adaptive FIR filters by the rule of least mean squares (Widrow and Hoff, 1960).
#include <limits.h>
#include <string.h>

#include <algorithm>

#include "core/args.h"
#include "core/memory.h"
#include "core/rounding.h"
#include "core/scale.h"
#include "filter/delay_line.h"
#include "filter/lms.table.h"
#include "tevs/lms.h"

namespace tevs {

// A record. Samples are kept in single precision, whatever they come in.
struct LmsState {
    uint32_t id;
    int32_t tapsLen;
    int32_t dlyIndex;   // as the caller gave it, or as it follows from there
    int32_t at;         // where the past begins in line
    float* taps;        // h[tapsLen-1] .. h[0]
    float* line;        // the past, tapsLen samples, oldest first, from `at` on; room for more behind it
};

namespace {

constexpr uint32_t kLms = identifier("LMS1");
constexpr int kPiece = 1024;         // the most samples that a line takes on at a time
constexpr int kRestartsBelow = 80;   // with fewer taps a block leaves the index at 0

class Lms {
public:
    explicit Lms(const LmsState* s) : s_(const_cast<LmsState*>(s)) {}

    // Null stands for zeros. Over no block it only adds up.
    static uint64_t layOut(void* block, int tapsLen) {
        Carve c(block);
        auto* const s = c.take<LmsState>(1);
        auto* const taps = c.take<float>(uint64_t(tapsLen));
        auto* const line = c.take<float>(lineLen(tapsLen));
        if (s) *s = {.id = kLms, .tapsLen = tapsLen, .dlyIndex = 0, .at = 0, .taps = taps, .line = line};
        return c.size();
    }
    static bool fits(int tapsLen) { return layOut(nullptr, tapsLen) <= INT_MAX; }

    void setTaps(const float* pTaps) {
        if (pTaps)
            std::reverse_copy(pTaps, pTaps + s_->tapsLen, s_->taps);
        else
            std::fill_n(s_->taps, s_->tapsLen, 0.0f);
    }
    void getTaps(float* pTaps) const { std::reverse_copy(s_->taps, s_->taps + s_->tapsLen, pTaps); }

    // Sample i of pDlyLine is at place i of a circle whose oldest sample is at the index.
    template <class Sample> void setPast(const Sample* pDlyLine, int index) {
        s_->dlyIndex = index;
        s_->at = 0;
        if (!pDlyLine) {
            std::fill_n(s_->line, s_->tapsLen, 0.0f);
            return;
        }
        const int oldest = place(index);
        toStored(pDlyLine + oldest, s_->line, s_->tapsLen - oldest);
        if (oldest > 0) toStored(pDlyLine, s_->line + (s_->tapsLen - oldest), oldest);
    }
    template <class Sample> void getPast(Sample* pDlyLine, int* pIndex) const {
        fromStored(s_->line + s_->at, pDlyLine, s_->tapsLen, 0);
        *pIndex = s_->dlyIndex;
    }

    template <class Sample> void block(const Sample* pSrc, const Sample* pRef, Sample* pDst, int len, float mu) {
        const int t = s_->tapsLen;
        const float step = 2 * mu;
        s_->dlyIndex = t < kRestartsBelow ? 0 : int((int64_t{place(s_->dlyIndex)} + len) % t);
        for (int m; len > 0; len -= m, pSrc += m, pRef += m, pDst += m) {
            m = std::min(len, kPiece);
            if (uint64_t(s_->at) + uint64_t(t) + uint64_t(m) > lineLen(t)) {
                memmove(s_->line, s_->line + s_->at, size_t(t) * sizeof(float));
                s_->at = 0;
            }
            float* const past = s_->line + s_->at;
            toStored(pSrc, past + t, m);
            if constexpr (std::is_same_v<Sample, float>) {
                lms->block(past + 1, pRef, pDst, m, step, s_->taps, t);
            } else {
                float ref[kPiece];
                toStored(pRef, ref, m);
                lms->block(past + 1, ref, ref, m, step, s_->taps, t);
                fromStored(ref, pDst, m, 0);
            }
            s_->at += m;
        }
    }

private:
    // So that samples one at a time have the past moved back once in so many.
    static uint64_t lineLen(int tapsLen) { return uint64_t(tapsLen) + std::max(kPiece, tapsLen); }
    // An index that is out of range counts as 0.
    int place(int index) const { return index >= 0 && index < s_->tapsLen ? index : 0; }

    LmsState* const s_;
};

// ---- frames -------------------------------------------------------------------------------------------------------------------------------

template <class State, class Sample> Status initAlloc(State** ppState, const float* pTaps, int tapsLen, const Sample* pDlyLine, int dlyLineIndex) {
    if (Status s = Args().ptr(ppState).require(tapsLen >= 1, StatusBadSize)) return s;
    auto* const state = static_cast<State*>(Lms::fits(tapsLen) ? allocate(Lms::layOut(nullptr, tapsLen)) : nullptr);
    if (!state) return StatusNoMemory;
    Lms::layOut(state, tapsLen);
    Lms f(state);
    f.setTaps(pTaps);
    f.setPast(pDlyLine, dlyLineIndex);
    *ppState = state;
    return StatusOk;
}

Status free(LmsState* s) {
    if (Status status = Args().ptr(s).record(s, kLms)) return status;
    releaseRecord(s);
    return StatusOk;
}

Status getTaps(const LmsState* s, float* pOutTaps) {
    if (Status status = Args().ptr(s).ptr(pOutTaps).record(s, kLms)) return status;
    Lms(s).getTaps(pOutTaps);
    return StatusOk;
}

template <class Sample> Status getDlyLine(const LmsState* s, Sample* pDlyLine, int* pDlyLineIndex) {
    if (Status status = Args().ptr(s).ptr(pDlyLine).ptr(pDlyLineIndex).record(s, kLms)) return status;
    Lms(s).getPast(pDlyLine, pDlyLineIndex);
    return StatusOk;
}

template <class Sample> Status setDlyLine(LmsState* s, const Sample* pDlyLine, int dlyLineIndex) {
    if (Status status = Args().ptr(s).record(s, kLms)) return status;
    Lms(s).setPast(pDlyLine, dlyLineIndex);
    return StatusOk;
}

template <class Sample> Status filter(const Sample* pSrc, const Sample* pRef, Sample* pDst, int len, float mu, LmsState* s) {
    if (Status status = Args().ptr(s).ptr(pSrc).ptr(pRef).ptr(pDst).len(len).record(s, kLms)) return status;
    const NearestRounding guard;
    Lms(s).block(pSrc, pRef, pDst, len, mu);
    return StatusOk;
}

// ---- one sample without a record ------------------------------------------------------------------------------------------------------------

// body(past) with the window that the sample completes, oldest first.
template <class Sample, class Tap, class Body>
Status filterOne(Sample src, Sample* pDst, Tap* pTaps, int tapsLen, Sample* pDlyLine, int* pDlyLineIndex, Body body) {
    if (Status s = Args()
                       .ptr(pTaps)
                       .ptr(pDlyLine)
                       .ptr(pDlyLineIndex)
                       .ptr(pDst)
                       .len(tapsLen)
                       .require([=] { return *pDlyLineIndex >= 0 && *pDlyLineIndex < tapsLen; }, StatusDelayIndex))
        return s;
    const NearestRounding guard;
    Circle<Sample> circle(pDlyLine, tapsLen, *pDlyLineIndex);
    const Sample* const past = circle.push(src);
    *pDlyLineIndex = circle.index();
    *pDst = body(past);
    return StatusOk;
}

// body(samples in single precision, first, count) for a window of 16-bit samples, in pieces.
template <class Body> void forEachPiece(const int16_t* past, int tapsLen, Body body) {
    float samples[kPiece];
    for (int first = 0, n; first < tapsLen; first += n) {
        n = std::min(tapsLen - first, kPiece);
        toStored(past + first, samples, n);
        body(samples, first, n);
    }
}

// In Q15: y = sum of t x / 2^15, and t += mu (ref - y) x / 2^29, each rounded once and saturated.
int16_t adaptQ15(const int16_t* past, int16_t* taps, int tapsLen, int16_t ref, int16_t mu) {
    int64_t sum = 0;
    for (int j = 0; j < tapsLen; ++j) sum += taps[j] * past[j];
    const int16_t y = scaled<int16_t, 62>(sum, 15);
    const int64_t e = int64_t{mu} * (ref - y);
    if (e != 0)
        for (int j = 0; j < tapsLen; ++j) taps[j] = saturate<int16_t>(taps[j] + roundShift(e * past[j], 29));
    return y;
}

}   // namespace
}   // namespace tevs

struct FIRLMSState_32f : tevs::LmsState {};
struct FIRLMSState32f_16s : tevs::LmsState {};

using namespace tevs;

Status tevsFIRLMSInitAlloc_32f(FIRLMSState_32f** ppState, const float* pTaps, int tapsLen, const float* pDlyLine, int dlyLineIndex) {
    return initAlloc(ppState, pTaps, tapsLen, pDlyLine, dlyLineIndex);
}
Status tevsFIRLMSFree_32f(FIRLMSState_32f* pState) { return free(pState); }
Status tevsFIRLMSGetTaps_32f(const FIRLMSState_32f* pState, float* pOutTaps) { return getTaps(pState, pOutTaps); }
Status tevsFIRLMSGetDlyLine_32f(const FIRLMSState_32f* pState, float* pDlyLine, int* pDlyLineIndex) { return getDlyLine(pState, pDlyLine, pDlyLineIndex); }
Status tevsFIRLMSSetDlyLine_32f(FIRLMSState_32f* pState, const float* pDlyLine, int dlyLineIndex) { return setDlyLine(pState, pDlyLine, dlyLineIndex); }
Status tevsFIRLMS_32f(const float* pSrc, const float* pRef, float* pDst, int len, float mu, FIRLMSState_32f* pState) {
    return filter(pSrc, pRef, pDst, len, mu, pState);
}
Status tevsFIRLMSInitAlloc32f_16s(FIRLMSState32f_16s** ppState, const float* pTaps, int tapsLen, const int16_t* pDlyLine, int dlyLineIndex) {
    return initAlloc(ppState, pTaps, tapsLen, pDlyLine, dlyLineIndex);
}
Status tevsFIRLMSFree32f_16s(FIRLMSState32f_16s* pState) { return free(pState); }
Status tevsFIRLMSGetTaps32f_16s(const FIRLMSState32f_16s* pState, float* pOutTaps) { return getTaps(pState, pOutTaps); }
Status tevsFIRLMSGetDlyLine32f_16s(const FIRLMSState32f_16s* pState, int16_t* pDlyLine, int* pDlyLineIndex) {
    return getDlyLine(pState, pDlyLine, pDlyLineIndex);
}
Status tevsFIRLMSSetDlyLine32f_16s(FIRLMSState32f_16s* pState, const int16_t* pDlyLine, int dlyLineIndex) { return setDlyLine(pState, pDlyLine, dlyLineIndex); }
Status tevsFIRLMS32f_16s(const int16_t* pSrc, const int16_t* pRef, int16_t* pDst, int len, float mu, FIRLMSState32f_16s* pState) {
    return filter(pSrc, pRef, pDst, len, mu, pState);
}

Status tevsFIRLMSOne_Direct_32f(float src, float ref, float* pDst, float* pTaps, int tapsLen, float mu, float* pDlyLine, int* pDlyLineIndex) {
    return filterOne(src, pDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, [=](const float* past) {
        float y;
        lms->block(past, &ref, &y, 1, 2 * mu, pTaps, tapsLen);
        return y;
    });
}
Status tevsFIRLMSOne_Direct32f_16s(int16_t src, int16_t ref, int16_t* pDst, float* pTaps, int tapsLen, float mu, int16_t* pDlyLine, int* pDlyLineIndex) {
    return filterOne(src, pDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, [=](const int16_t* past) {
        float y = 0;
        forEachPiece(past, tapsLen, [&](const float* x, int first, int n) { y += lms->dot(x, pTaps + first, n); });
        const float step = 2 * mu, e = (ref - y) * step;
        if (step != 0) forEachPiece(past, tapsLen, [&](const float* x, int first, int n) { lms->adapt(x, pTaps + first, n, e); });
        return fromStored<int16_t>(y, 0);
    });
}
Status tevsFIRLMSOne_DirectQ15_16s(int16_t src, int16_t ref, int16_t* pDst, int16_t* pTapsQ15, int tapsLen, int16_t muQ15, int16_t* pDlyLine,
                                   int* pDlyLineIndex) {
    return filterOne(src, pDst, pTapsQ15, tapsLen, pDlyLine, pDlyLineIndex, [=](const int16_t* past) { return adaptQ15(past, pTapsQ15, tapsLen, ref, muQ15); });
}
