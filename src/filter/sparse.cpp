// Filters given by their taps that are not zero, with the delays that these stand at.
#include "tevs/sparse.h"

#include <limits.h>
#include <string.h>

#include "core/args.h"
#include "core/memory.h"
#include "core/rounding.h"
#include "filter/delay_line.h"
#include "filter/sparse.table.h"

namespace tevs {
namespace {

// The past of a stream, `order` samples oldest first from `at` on in a line of twice as many: it moves on with each block, and back to the start where the line ends, so that a
// block of any length costs no more than a copy of itself on average.
class Line {
public:
    Line(float* line, int order, int32_t* at) : line_(line), order_(order), at_(at) {}
    // The place of n <= order samples more behind the past, of which they are the newest from here on.
    float* advance(int n) {
        if (*at_ > order_ - n) {
            memmove(line_, line_ + *at_, size_t(order_) * sizeof(float));
            *at_ = 0;
        }
        float* const fresh = line_ + *at_ + order_;
        *at_ += n;
        return fresh;
    }
    void set(const float* past) {
        memcpy(line_, past, size_t(order_) * sizeof(float));
        *at_ = 0;
    }

private:
    float* const line_;
    const int order_;
    int32_t* const at_;
};

// Taps and line of one side of a filter, numerator or denominator, in a record that holds no addresses: these follow from its own.
struct Side {
    int32_t count, order, at;
};
struct Parts {
    float* taps;
    int32_t* delays;
    float* line;
    Parts(Carve& c, const Side& h)
        : taps(c.take<float>(uint64_t(h.count))), delays(c.take<int32_t>(uint64_t(h.count))), line(c.take<float>(2 * uint64_t(h.order))) {}
};

// n taps, and the past that they reach into, newest first, or null for silence; taps are kept times `sign`.
void fill(const Parts& p, const Side& h, const float* pTaps, const int32_t* pDelays, float sign, const float* pDlyLine) {
    for (int k = 0; k < h.count; ++k) p.taps[k] = sign * pTaps[k];
    memcpy(p.delays, pDelays, size_t(h.count) * sizeof(int32_t));
    setPast(p.line, pDlyLine, h.order);
}

// From `least` on, each above the one before.
bool rising(const int32_t* delays, int count, int least) {
    for (int k = 0; k < count; ++k)
        if (delays[k] < (k == 0 ? least : delays[k - 1] + int64_t{1})) return false;
    return true;
}
int lastOf(const int32_t* delays, int count) { return count > 0 ? delays[count - 1] : 0; }

// The outputs of a numerator, and what its line holds then.
void numerator(const Parts& p, Side* h, const float* src, float* dst, int len) {
    const auto sums = [&](const float* x, float* y, int n) { sparse->fir(x, p.taps, p.delays, h->count, y, n); };
    Line line(p.line, h->order, &h->at);
    const int first = len < h->order ? len : h->order;
    if (first > 0) {
        float* const x = line.advance(first);
        memcpy(x, src, size_t(first) * sizeof(float));
        sums(x, dst, first);
    }
    if (len > first) {
        sums(src + first, dst + first, len - first);
        line.set(src + (len - h->order));
    }
}

// dst holds the outputs of the numerator, and those of the filter then.
void denominator(const Parts& p, Side* h, float* dst, int len) {
    if (h->count == 0) return;
    const auto sums = [&](float* y, int n) { sparse->iir(y, p.taps, p.delays, h->count, n); };
    Line line(p.line, h->order, &h->at);
    const int first = len < h->order ? len : h->order;
    float* const y = line.advance(first);
    memcpy(y, dst, size_t(first) * sizeof(float));
    sums(y, first);
    memcpy(dst, y, size_t(first) * sizeof(float));
    if (len > first) {
        sums(dst + first, len - first);
        line.set(dst + (len - h->order));
    }
}

// ---- records --------------------------------------------------------------------------------------------------------------------------------------

struct FirSparseState {
    uint32_t id;
    Side b;
};
struct IirSparseState {
    uint32_t id;
    Side b, a;
};
constexpr uint32_t kFirSparse = identifier("FS01"), kIirSparse = identifier("IS01");

// The sizes that are reported are of blocks at any address.
constexpr int64_t firBytes(int64_t count, int64_t order) { return int64_t(roundUp16(uint64_t(8 * order)) + 2 * roundUp16(uint64_t(4 * count)) + 48); }
static_assert(sizeof(FirSparseState) + 15 <= 48 && firBytes(2, 5) == 128);
constexpr int64_t iirBytes(int64_t count1, int64_t count2, int64_t order1, int64_t order2) { return firBytes(count1, order1) + firBytes(count2, order2) - 48; }
static_assert(roundUp16(sizeof(IirSparseState)) + 15 <= 48);

}   // namespace
}   // namespace tevs

struct FIRSparseState_32f : tevs::FirSparseState {};
struct IIRSparseState_32f : tevs::IirSparseState {};

using namespace tevs;

Status tevsFIRSparseGetStateSize_32f(int nzTapsLen, int order, int* pSize) {
    if (Status s = Args()
                       .ptr(pSize)
                       .require(nzTapsLen >= 1 && firBytes(nzTapsLen, 0) <= INT_MAX, StatusFilterLength)
                       .require(order >= 0 && firBytes(nzTapsLen, order) <= INT_MAX, StatusSparseArg))
        return s;
    *pSize = int(firBytes(nzTapsLen, order));
    return StatusOk;
}
Status tevsFIRSparseInit_32f(FIRSparseState_32f** ppState, const float* pNZTaps, const int32_t* pNZTapPos, int nzTapsLen, const float* pDlyLine,
                             uint8_t* pBuffer) {
    if (Status s =
            Args()
                .ptr(ppState)
                .ptr(pNZTaps)
                .ptr(pNZTapPos)
                .ptr(pBuffer)
                .require(nzTapsLen >= 1 && firBytes(nzTapsLen, 0) <= INT_MAX, StatusFilterLength)
                .require([=] { return rising(pNZTapPos, nzTapsLen, 0) && firBytes(nzTapsLen, lastOf(pNZTapPos, nzTapsLen)) <= INT_MAX; }, StatusSparseArg))
        return s;
    const Side b = {.count = nzTapsLen, .order = lastOf(pNZTapPos, nzTapsLen), .at = 0};
    Carve c(align16(pBuffer));
    auto* const state = c.take<FIRSparseState_32f>(1);
    state->id = kFirSparse;
    state->b = b;
    fill(Parts(c, b), b, pNZTaps, pNZTapPos, 1, pDlyLine);
    *ppState = state;
    return StatusOk;
}
Status tevsFIRSparse_32f(const float* pSrc, float* pDst, int len, FIRSparseState_32f* pState) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).ptr(pState).len(len).record(pState, kFirSparse)) return s;
    const NearestRounding guard;
    Carve c(pState);
    c.take<FirSparseState>(1);
    numerator(Parts(c, pState->b), &pState->b, pSrc, pDst, len);
    return StatusOk;
}

Status tevsIIRSparseGetStateSize_32f(int nzTapsLen1, int nzTapsLen2, int order1, int order2, int* pSize) {
    if (Status s = Args()
                       .ptr(pSize)
                       .require(nzTapsLen1 >= 1 && nzTapsLen2 >= 0 && iirBytes(nzTapsLen1, nzTapsLen2, 0, 0) <= INT_MAX, StatusFilterOrder)
                       .require(order1 >= 0 && order2 >= 0 && iirBytes(nzTapsLen1, nzTapsLen2, order1, order2) <= INT_MAX, StatusSparseArg))
        return s;
    *pSize = int(iirBytes(nzTapsLen1, nzTapsLen2, order1, order2));
    return StatusOk;
}
Status tevsIIRSparseInit_32f(IIRSparseState_32f** ppState, const float* pNZTaps, const int32_t* pNZTapPos, int nzTapsLen1, int nzTapsLen2,
                             const float* pDlyLine, uint8_t* pBuffer) {
    const auto feedback = [=] { return pNZTapPos + nzTapsLen1; };
    if (Status s = Args()
                       .ptr(ppState)
                       .ptr(pNZTaps)
                       .ptr(pNZTapPos)
                       .ptr(pBuffer)
                       .require(nzTapsLen1 >= 1 && nzTapsLen2 >= 0 && iirBytes(nzTapsLen1, nzTapsLen2, 0, 0) <= INT_MAX, StatusFilterOrder)
                       .require(
                           [=] {
                               return rising(pNZTapPos, nzTapsLen1, 0) && rising(feedback(), nzTapsLen2, 1) &&
                                      iirBytes(nzTapsLen1, nzTapsLen2, lastOf(pNZTapPos, nzTapsLen1), lastOf(feedback(), nzTapsLen2)) <= INT_MAX;
                           },
                           StatusSparseArg))
        return s;
    const Side b = {.count = nzTapsLen1, .order = lastOf(pNZTapPos, nzTapsLen1), .at = 0};
    const Side a = {.count = nzTapsLen2, .order = lastOf(feedback(), nzTapsLen2), .at = 0};
    Carve c(align16(pBuffer));
    auto* const state = c.take<IIRSparseState_32f>(1);
    state->id = kIirSparse;
    state->b = b;
    state->a = a;
    fill(Parts(c, b), b, pNZTaps, pNZTapPos, 1, pDlyLine);
    fill(Parts(c, a), a, pNZTaps + nzTapsLen1, feedback(), -1, pDlyLine ? pDlyLine + b.order : nullptr);
    *ppState = state;
    return StatusOk;
}
Status tevsIIRSparse_32f(const float* pSrc, float* pDst, int len, IIRSparseState_32f* pState) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).ptr(pState).len(len).record(pState, kIirSparse)) return s;
    const NearestRounding guard;
    Carve c(pState);
    c.take<IirSparseState>(1);
    const Parts b(c, pState->b), a(c, pState->a);
    numerator(b, &pState->b, pSrc, pDst, len);
    denominator(a, &pState->a, pDst, len);
    return StatusOk;
}
