// Convolutional codes and trellises: tables, encoder, puncturing, branch metrics and one decoder (Viterbi, 1967; Forney, 1973).
#include "tevs/viterbi.h"

#include <limits.h>

#include <algorithm>
#include <bit>
#include <cstring>

#include "core/args.h"
#include "core/memory.h"
#include "core/rounding.h"
#include "core/work.h"
#include "telephony/viterbi.table.h"

namespace tevs {
namespace {

constexpr int kMostPolys = 8, kMostConstraint = 15;
bool isConstraint(int constraintLen) { return constraintLen >= 2 && constraintLen <= kMostConstraint; }
bool isPolys(int numPoly) { return numPoly >= 1 && numPoly <= kMostPolys; }

int symbolOf(const int* poly, int numPoly, int mask, int r) {
    int symbol = 0;
    for (int i = 0; i < numPoly; ++i) symbol = symbol << 1 | (std::popcount(unsigned(r & poly[i] & mask)) & 1);
    return symbol;
}

}   // namespace
}   // namespace tevs

// What decoders of either kind keep: decisions in blocks of traceLen steps, in a ring.
struct ViterbiState {
    uint32_t id;
    bool owned;
    int traceLen, blocks;         // of each, and how many there is room for
    int first, complete, steps;   // the oldest block that is held, how many are complete, and steps in the one behind them
    int states, width;            // as the caller counts them, and values of the source a step

    int held() const { return complete * traceLen + steps; }
    int blockAt(int i) const { return (first + i) % blocks; }
    void empty() { first = complete = steps = 0; }
};

namespace tevs {
namespace {

constexpr uint32_t kCode = identifier("VI01"), kTable = identifier("VI02");

// ---- a code ---------------------------------------------------------------------------------------------------------------------------------

// After n steps metrics lie at most 2^8 n numPoly apart. The largest is then put at 2^7 (n + 1) numPoly, and no step moves one by more than 2^7 numPoly.
constexpr int stepsInRange(int n, int numPoly) { return (INT16_MAX - 128 * (n + 1) * numPoly) / (128 * numPoly); }
static_assert(stepsInRange(kMostConstraint - 1, kMostPolys) >= kMostConstraint - 1);

// Decoded as one of 64 states or more: where there are fewer, the oldest bits are some that no output depends on. Among equal paths it comes down to the same choice, since
// they are told apart by those bits in the order in which the smaller trellis drops them.
struct CodeDecoder : ViterbiState {
    static constexpr int kLeastBits = 6;
    enum Kind { kNone, kSoft, kRows };   // of metrics in a frame; it begins with the first

    Trellis trellis;
    int constraintLen, spare;   // spare: oldest bits without effect
    Kind kind;
    int start, sinceStart;   // the state that it began in, and steps since then as long as some are out of reach
    int16_t *metrics, *other;
    int32_t *wide, *otherWide;
    uint8_t *lookup, *symbols;
    uint32_t* decisions;

    static CodeDecoder* layOut(void* block, int numPoly, int constraintLen, int traceLen, uint64_t* size) {
        const int bits = std::max(constraintLen - 1, kLeastBits), parts = (numPoly + Trellis::kPartPolys - 1) / Trellis::kPartPolys;
        const uint64_t states = uint64_t{1} << bits, words = states / 32;
        const int blocks = words * uint64_t(traceLen) > 4096 ? 2 : kWindows + 1;
        Carve c(block);
        auto* const d = c.take<CodeDecoder>(1);
        auto* const metrics = c.take<int16_t>(2 * states);
        auto* const wide = c.take<int32_t>(2 * states);
        auto* const lookup = c.take<uint8_t>(4 * uint64_t(parts) * states);
        auto* const symbols = c.take<uint8_t>(2 * states);
        auto* const decisions = c.take<uint32_t>(uint64_t(blocks) * uint64_t(traceLen) * words);
        *size = c.size();
        if (!d) return nullptr;
        d->id = kCode;
        d->traceLen = traceLen;
        d->blocks = blocks;
        d->states = 1 << (constraintLen - 1);
        d->trellis = {
            .bits = bits, .numPoly = numPoly, .parts = parts, .symmetric = false, .interval = stepsInRange(bits, numPoly), .since = 0, .lookup = lookup};
        d->constraintLen = constraintLen;
        d->spare = bits + 1 - constraintLen;
        d->metrics = metrics;
        d->other = metrics + states;
        d->wide = wide;
        d->otherWide = wide + states;
        d->lookup = lookup;
        d->symbols = symbols;
        d->decisions = decisions;
        return d;
    }

    void build(const int* pPoly) {
        const Trellis& t = trellis;
        int poly[kMostPolys];
        bool symmetric = true;
        for (int i = 0; i < t.numPoly; ++i) {
            poly[i] = (pPoly[i] & ((1 << constraintLen) - 1)) << spare;
            symmetric = symmetric && (poly[i] & 1) && poly[i] >> t.bits;
        }
        trellis.symmetric = symmetric;
        for (int r = 0; r < 2 * t.states(); ++r) symbols[r] = uint8_t(symbolOf(poly, t.numPoly, -1, r));
        uint8_t* to = lookup;
        for (int branch = 0; branch < 4; ++branch)
            for (int part = 0; part < t.parts; ++part) {
                const int behind = std::max(t.numPoly - (part + 1) * Trellis::kPartPolys, 0),
                          polys = std::min(t.numPoly - part * Trellis::kPartPolys, +Trellis::kPartPolys);
                for (int i = 0; i < t.states() / 2; ++i, to += 2) {
                    const int r = (branch >> 1) << t.bits | evenState(i / 16, i % 16) | (branch & 1);
                    const int y = symbols[r] >> behind & ((1 << polys) - 1);
                    to[0] = uint8_t(2 * y);
                    to[1] = uint8_t(2 * y + 1);
                }
            }
    }
    // Of a lane of a pair of groups of the kernels' order; and the state at a place in that.
    int evenState(int pair, int lane) const {
        const int reversed = (lane & 1) << 3 | (lane & 2) << 1 | (lane & 4) >> 1 | (lane & 8) >> 3;
        return reversed << (trellis.bits - 4) | 2 * pair;
    }

    uint32_t* block(int i) const { return decisions + uint64_t(blockAt(i)) * uint64_t(traceLen) * uint64_t(trellis.words()); }

    void reset(int startState) {
        empty();
        kind = kNone;
        start = startState;
        sinceStart = 0;
    }
    // Metrics as they begin: those of states out of reach cannot win as long as they are.
    void begin(Kind now) {
        kind = now;
        width = now == kSoft ? trellis.numPoly : 1 << trellis.numPoly;
        const int n = trellis.states(), apart = 128 * (trellis.bits + 1) * trellis.numPoly, low = apart - trellis.bits * trellis.numPoly * 256 - 1;
        trellis.since = 0;
        for (int i = 0; i < n; ++i) {
            const bool any = start == StateAny;
            metrics[i] = int16_t(any || stateAt(i) == start << spare ? apart : low);
            wide[i] = any || i == start << spare ? 0 : -(1 << 20);
        }
    }
    int stateAt(int place) const { return evenState(0, place % 16) | place / 16; }

    // Whether a path leads into a state; steps count as long as it matters.
    bool reaches(int state) const {
        if (start == StateAny || sinceStart >= constraintLen - 1) return true;
        return (state & ((1 << (constraintLen - 1 - sinceStart)) - 1)) == start >> sinceStart;
    }

    void forward(const int8_t* src, int len) {
        viterbi->forward(trellis, src, len, metrics, other, block(complete) + uint64_t(steps) * uint64_t(trellis.words()));
        sinceStart = std::min(sinceStart + std::min(len, kMostConstraint), +kMostConstraint);
    }
    void forward(const int16_t* src, int len) {
        const Trellis& t = trellis;
        uint32_t* to = block(complete) + uint64_t(steps) * uint64_t(t.words());
        for (int n = 0; n < len; ++n, src += width) {
            if (n % 256 == 0) {
                const int32_t most = *std::max_element(wide, wide + t.states());
                for (int i = 0; i < t.states(); ++i) wide[i] -= most;
            }
            for (int pair = 0; pair < t.words(); ++pair) {
                uint32_t word = 0;
                for (int lane = 0; lane < 16; ++lane) {
                    const int s = evenState(pair, lane), i = s / 2, bit = lane % 8 + lane / 8 * 16;
                    const int32_t even = wide[s], odd = wide[s + 1];
                    const auto symbol = [&](int r) { return int32_t{src[symbols[r]]}; };
                    const int32_t a = even + symbol(s), b = odd + symbol(s + 1), c = even + symbol(s + t.states()), d = odd + symbol(s + 1 + t.states());
                    otherWide[i] = std::max(a, b);
                    otherWide[i + t.states() / 2] = std::max(c, d);
                    word |= uint32_t(b > a) << bit | uint32_t(d > c) << (bit + 8);
                }
                *to++ = word;
            }
            std::swap(wide, otherWide);
        }
        sinceStart = std::min(sinceStart + std::min(len, kMostConstraint), +kMostConstraint);
    }
    // The best of the states that a path may end in, as the trellis counts them.
    int best(int endState) const {
        const bool any = endState == StateAny || !reaches(endState);
        const int first = any ? 0 : endState << spare, last = any ? trellis.states() - 1 : first + (1 << spare) - 1;
        if (kind == kSoft) return viterbi->best(trellis, metrics, first, last);
        return int(std::max_element(wide + first, wide + last + 1) - wide);
    }
    void back(int count, const int* blockOf, int len, int* state, uint8_t* const* dst) const {
        const uint32_t* from[kWindows];
        for (int w = 0; w < count; ++w) from[w] = block(blockOf[w]);
        viterbi->back(trellis, count, from, len, state, dst);
    }
};

// ---- a table --------------------------------------------------------------------------------------------------------------------------------

// Branches are numbered by state and input, in the order in which equal paths are preferred.
struct TableDecoder : ViterbiState {
    static constexpr int64_t kOut = INT64_MIN;   // of a state that no path reaches

    int inputs, symbolCount;
    bool narrow;   // branches fit into 16 bits
    int64_t *metrics, *other;
    int16_t* next;
    uint8_t* symbol;
    void* decisions;   // the branch into each state

    static TableDecoder* layOut(void* block, int states, int inputs, int symbols, int traceLen, uint64_t* size) {
        const uint64_t branches = uint64_t(states) * uint64_t(inputs);
        const bool narrow = branches <= 65536;
        Carve c(block);
        auto* const d = c.take<TableDecoder>(1);
        auto* const metrics = c.take<int64_t>(2 * uint64_t(states));
        auto* const next = c.take<int16_t>(branches);
        auto* const symbol = c.take<uint8_t>(branches);
        auto* const decisions = c.take<uint16_t>(2 * uint64_t(traceLen) * uint64_t(states) * (narrow ? 1 : 2));
        *size = c.size();
        if (!d) return nullptr;
        d->id = kTable;
        d->traceLen = traceLen;
        d->blocks = 2;
        d->states = states;
        d->width = symbols;
        d->inputs = inputs;
        d->symbolCount = symbols;
        d->narrow = narrow;
        d->metrics = metrics;
        d->other = metrics + states;
        d->next = next;
        d->symbol = symbol;
        d->decisions = decisions;
        return d;
    }

    template <class Id> Id* block(int i) const { return static_cast<Id*>(decisions) + uint64_t(blockAt(i)) * uint64_t(traceLen) * uint64_t(states); }
    void reset(int startState) {
        empty();
        for (int i = 0; i < states; ++i) metrics[i] = startState == StateAny || i == startState ? 0 : kOut;
    }
    template <class Id> void forwardBy(const int16_t* src, int len) {
        Id* to = block<Id>(complete) + uint64_t(steps) * uint64_t(states);
        for (int n = 0; n < len; ++n, src += symbolCount, to += states) {
            std::fill_n(other, states, kOut);
            for (int s = 0, branch = 0; s < states; ++s, branch += inputs) {
                if (metrics[s] == kOut) continue;
                for (int u = branch; u < branch + inputs; ++u) {
                    const int64_t m = metrics[s] + src[symbol[u]];
                    int64_t& best = other[next[u]];
                    if (m <= best) continue;
                    best = m;
                    to[next[u]] = Id(u);
                }
            }
            std::swap(metrics, other);
        }
        // So that no stream is long enough for an overflow.
        const int64_t most = *std::max_element(metrics, metrics + states);
        for (int i = 0; i < states; ++i)
            if (metrics[i] != kOut) metrics[i] -= most;
    }
    void forward(const int16_t* src, int len) { narrow ? forwardBy<uint16_t>(src, len) : forwardBy<uint32_t>(src, len); }
    int best(int endState) const {
        if (endState != StateAny && metrics[endState] != kOut) return endState;
        return int(std::max_element(metrics, metrics + states) - metrics);
    }
    template <class Id> void backBy(int i, int len, int& state, uint8_t* dst) const {
        const Id* const from = block<Id>(i);
        for (ptrdiff_t n = len - 1; n >= 0; --n) {
            const int branch = int(from[n * states + state]);
            if (dst) dst[n] = uint8_t(branch % inputs);
            state = branch / inputs;
        }
    }
    void back(int, const int* blockOf, int len, int* state, uint8_t* const* dst) const {
        uint8_t* const to = dst ? *dst : nullptr;
        narrow ? backBy<uint16_t>(*blockOf, len, *state, to) : backBy<uint32_t>(*blockOf, len, *state, to);
    }
};

// ---- streams ----------------------------------------------------------------------------------------------------------------------------------

// Releases all complete blocks but the newest: the trace of each begins in the best state behind the one that follows.
template <class Decoder> int release(Decoder& d, const int* ends, uint8_t* dst) {
    const int windows = d.complete - 1;
    for (int w = 0, count; w < windows; w += count) {
        count = windows - w >= kWindows ? kWindows : 1;
        int state[kWindows], newer[kWindows], older[kWindows];
        uint8_t* to[kWindows];
        for (int i = 0; i < count; ++i) {
            state[i] = ends[w + i];
            older[i] = w + i;
            newer[i] = w + i + 1;
            to[i] = dst + ptrdiff_t{w + i} * d.traceLen;
        }
        d.back(count, newer, d.traceLen, state, nullptr);
        d.back(count, older, d.traceLen, state, to);
    }
    d.first = d.blockAt(windows);
    d.complete = 1;
    return windows * d.traceLen;
}
template <class Decoder, class T> int decode(Decoder& d, const T* src, int len, uint8_t* dst) {
    uint8_t* const begin = dst;
    int ends[kWindows];
    for (int n; len > 0; len -= n) {
        n = std::min(len, d.traceLen - d.steps);
        d.forward(src, n);
        src += ptrdiff_t{n} * d.width;
        d.steps += n;
        if (d.steps < d.traceLen) continue;
        d.steps = 0;
        ++d.complete;
        if (d.complete > 1) ends[d.complete - 2] = d.best(StateAny);
        if (d.complete == d.blocks) dst += release(d, ends, dst);
    }
    if (d.complete > 1) dst += release(d, ends, dst);
    return int(dst - begin);
}
// Whether what that would release can be counted: all blocks but the newest.
bool countable(const ViterbiState* s, int len) { return ((int64_t{s->held()} + len) / s->traceLen - 1) * s->traceLen <= INT_MAX; }
template <class Decoder> int flush(Decoder& d, uint8_t* dst, int endState) {
    const int held = d.held();
    if (held > 0) {
        int state = d.best(endState);
        const int zero = 0;
        uint8_t* to = dst + ptrdiff_t{d.complete} * d.traceLen;
        d.back(1, &d.complete, d.steps, &state, &to);
        if (d.complete) d.back(1, &zero, d.traceLen, &state, &dst);
    }
    d.reset(endState);
    return held;
}

// call(decoder) with the record as what it is.
template <class Call> auto asDecoder(ViterbiState* s, Call call) {
    return s->id == kCode ? call(*static_cast<CodeDecoder*>(s)) : call(*static_cast<TableDecoder*>(s));
}

// ---- frames -------------------------------------------------------------------------------------------------------------------------------------

bool fits(uint64_t size) { return size + kAlignmentRoom <= INT_MAX; }

bool isCode(int constraintLen, int numPoly, int traceLen, uint64_t* size) {
    if (!isConstraint(constraintLen) || !isPolys(numPoly) || traceLen < 1) return false;
    CodeDecoder::layOut(nullptr, numPoly, constraintLen, traceLen, size);
    return fits(*size);
}
Status init(ViterbiState** ppState, const int* pPoly, int numPoly, int constraintLen, int traceLen, void* block, bool owned) {
    if (!block) return StatusNoMemory;
    uint64_t size;
    CodeDecoder* const d = CodeDecoder::layOut(block, numPoly, constraintLen, traceLen, &size);
    d->owned = owned;
    d->build(pPoly);
    d->reset(0);
    *ppState = d;
    return StatusOk;
}

bool isTable(int numStates, int numInputs, int numSymbols, int traceLen, uint64_t* size) {
    if (numStates < 1 || numStates > 16384 || numInputs < 1 || numInputs > 16 || numSymbols < 1 || numSymbols > 256 || traceLen < 1) return false;
    TableDecoder::layOut(nullptr, numStates, numInputs, numSymbols, traceLen, size);
    return fits(*size);
}
bool areBelow(const int16_t* next, const uint8_t* symbol, int branches, int states, int symbols) {
    for (int i = 0; i < branches; ++i)
        if (next[i] < 0 || next[i] >= states || symbol[i] >= symbols) return false;
    return true;
}
Status init(ViterbiState** ppState, const int16_t* pNext, const uint8_t* pSymbol, int numStates, int numInputs, int numSymbols, int traceLen, void* block,
            bool owned) {
    if (!block) return StatusNoMemory;
    uint64_t size;
    TableDecoder* const d = TableDecoder::layOut(block, numStates, numInputs, numSymbols, traceLen, &size);
    d->owned = owned;
    std::copy_n(pNext, numStates * numInputs, d->next);
    std::copy_n(pSymbol, numStates * numInputs, d->symbol);
    d->reset(0);
    *ppState = d;
    return StatusOk;
}

bool isState(const ViterbiState* s, int state) { return state >= StateAny && state < s->states; }

// Metrics of the other kind than those before them in a frame.
bool mixes(ViterbiState* s, CodeDecoder::Kind kind) {
    return s->id == kCode && static_cast<CodeDecoder*>(s)->kind != CodeDecoder::kNone && static_cast<CodeDecoder*>(s)->kind != kind;
}
template <class T> int decodeCode(ViterbiState* s, const T* src, int len, uint8_t* dst, CodeDecoder::Kind kind) {
    CodeDecoder& d = *static_cast<CodeDecoder*>(s);
    if (d.kind == CodeDecoder::kNone) d.begin(kind);
    return decode(d, src, len, dst);
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsViterbiSymbols_8u(const int* pPoly, uint8_t* pDst, int numPoly, int constraintLen) {
    if (Status s = Args().ptr(pPoly).ptr(pDst).require(isPolys(numPoly) && isConstraint(constraintLen), StatusBadSize)) return s;
    const int count = 1 << constraintLen, half = count / 2;   // a state's entries are neighbours
    for (int i = 0; i < count; ++i) pDst[i] = uint8_t(symbolOf(pPoly, numPoly, count - 1, (i & 1) * half + i / 2));
    return StatusOk;
}
Status tevsViterbiNext_16s(int16_t* pDst, int constraintLen) {
    if (Status s = Args().ptr(pDst).require(isConstraint(constraintLen), StatusBadSize)) return s;
    const int count = 1 << constraintLen, half = count / 2;
    for (int i = 0; i < count; ++i) pDst[i] = int16_t(((i & 1) * half + i / 2) >> 1);
    return StatusOk;
}
Status tevsViterbiEncode_8u(const uint8_t* pSrc, uint8_t* pDst, int len, const int* pPoly, int numPoly, int constraintLen, int* pShift) {
    if (Status s = Args()
                       .ptr(pSrc)
                       .ptr(pDst)
                       .ptr(pPoly)
                       .ptr(pShift)
                       .len(len)
                       .require(isPolys(numPoly) && isConstraint(constraintLen), StatusBadSize)
                       .require([=] { return *pShift >= 0 && *pShift < 1 << (constraintLen - 1); }, StatusBadArg))
        return s;
    viterbi->encode(pSrc, pDst, len, pPoly, numPoly, constraintLen, *pShift);
    int state = *pShift;
    for (int n = std::max(0, len - kMostConstraint); n < len; ++n) state = (pSrc[n] & 1) << (constraintLen - 1) >> 1 | state >> 1;
    *pShift = state;
    return StatusOk;
}
Status tevsViterbiPuncture_8u(const uint8_t* pSrc, int srcLen, uint8_t* pDst, int* pDstLen, const uint8_t* pPattern, int patternLen, int* pPhase) {
    if (Status s = Args()
                       .ptr(pSrc)
                       .ptr(pDst)
                       .ptr(pDstLen)
                       .ptr(pPattern)
                       .ptr(pPhase)
                       .len(srcLen)
                       .len(patternLen)
                       .require([=] { return *pPhase >= 0 && *pPhase < patternLen; }, StatusSamplePhase))
        return s;
    int phase = *pPhase, kept = 0;
    for (int n = 0; n < srcLen; ++n) {
        if (pPattern[phase]) pDst[kept++] = pSrc[n];
        if (++phase == patternLen) phase = 0;
    }
    *pDstLen = kept;
    *pPhase = phase;
    return StatusOk;
}
Status tevsViterbiDepuncture_8s(const int8_t* pSrc, int* pSrcLen, int8_t* pDst, int dstLen, const uint8_t* pPattern, int patternLen, int* pPhase) {
    if (Status s = Args()
                       .ptr(pSrc)
                       .ptr(pSrcLen)
                       .ptr(pDst)
                       .ptr(pPattern)
                       .ptr(pPhase)
                       .len(dstLen)
                       .len(patternLen)
                       .require([=] { return *pPhase >= 0 && *pPhase < patternLen; }, StatusSamplePhase))
        return s;
    int phase = *pPhase, taken = 0;
    for (int n = 0; n < dstLen; ++n) {
        pDst[n] = pPattern[phase] ? pSrc[taken++] : int8_t{0};
        if (++phase == patternLen) phase = 0;
    }
    *pSrcLen = taken;
    *pPhase = phase;
    return StatusOk;
}

Status tevsViterbiMetric_8s16s(const int8_t* pSrc, int16_t* pDst, int len, int numPoly) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len).require(isPolys(numPoly), StatusBadSize)) return s;
    viterbi->rows(pSrc, pDst, len, numPoly);
    return StatusOk;
}
Status tevsViterbiMetric_32fc16s(const Complex32f* pSrc, int16_t* pDst, uint8_t* pIndx, int len, const Complex32f* pPoints, int numPoints, int numSymbols,
                                 float scale) {
    const auto isGrouped = [=] { return numPoints >= numSymbols && numPoints % numSymbols == 0 && numPoints / numSymbols <= 256; };
    if (Status s =
            Args().ptr(pSrc).ptr(pDst).ptr(pPoints).len(len).require(numSymbols >= 1 && numSymbols <= 256, StatusBadSize).require(isGrouped, StatusBadSize))
        return s;
    NearestRounding guard;
    viterbi->nearest(pSrc, pDst, pIndx, len, pPoints, numPoints, numSymbols, scale);
    return StatusOk;
}

Status tevsViterbiGetStateSize(int constraintLen, int numPoly, int traceLen, int* pSize) {
    uint64_t size;
    if (Status s = Args().ptr(pSize).require([&] { return isCode(constraintLen, numPoly, traceLen, &size); }, StatusBadSize)) return s;
    *pSize = int(size + kAlignmentRoom);
    return StatusOk;
}
Status tevsViterbiInit(ViterbiState** ppState, const int* pPoly, int numPoly, int constraintLen, int traceLen, uint8_t* pBuffer) {
    uint64_t size;
    if (Status s = Args().ptr(ppState).ptr(pPoly).ptr(pBuffer).require([&] { return isCode(constraintLen, numPoly, traceLen, &size); }, StatusBadSize))
        return s;
    return init(ppState, pPoly, numPoly, constraintLen, traceLen, align16(pBuffer), false);
}
Status tevsViterbiInitAlloc(ViterbiState** ppState, const int* pPoly, int numPoly, int constraintLen, int traceLen) {
    uint64_t size;
    if (Status s = Args().ptr(ppState).ptr(pPoly).require([&] { return isCode(constraintLen, numPoly, traceLen, &size); }, StatusBadSize)) return s;
    return init(ppState, pPoly, numPoly, constraintLen, traceLen, allocate(size), true);
}
Status tevsViterbiGetStateSize_Table(int numStates, int numInputs, int numSymbols, int traceLen, int* pSize) {
    uint64_t size;
    if (Status s = Args().ptr(pSize).require([&] { return isTable(numStates, numInputs, numSymbols, traceLen, &size); }, StatusBadSize)) return s;
    *pSize = int(size + kAlignmentRoom);
    return StatusOk;
}
Status tevsViterbiInit_Table(ViterbiState** ppState, const int16_t* pNext, const uint8_t* pSymbol, int numStates, int numInputs, int numSymbols, int traceLen,
                             uint8_t* pBuffer) {
    uint64_t size;
    if (Status s = Args()
                       .ptr(ppState)
                       .ptr(pNext)
                       .ptr(pSymbol)
                       .ptr(pBuffer)
                       .require([&] { return isTable(numStates, numInputs, numSymbols, traceLen, &size); }, StatusBadSize)
                       .require([=] { return areBelow(pNext, pSymbol, numStates * numInputs, numStates, numSymbols); }, StatusBadArg))
        return s;
    return init(ppState, pNext, pSymbol, numStates, numInputs, numSymbols, traceLen, align16(pBuffer), false);
}
Status tevsViterbiInitAlloc_Table(ViterbiState** ppState, const int16_t* pNext, const uint8_t* pSymbol, int numStates, int numInputs, int numSymbols,
                                  int traceLen) {
    uint64_t size;
    if (Status s = Args()
                       .ptr(ppState)
                       .ptr(pNext)
                       .ptr(pSymbol)
                       .require([&] { return isTable(numStates, numInputs, numSymbols, traceLen, &size); }, StatusBadSize)
                       .require([=] { return areBelow(pNext, pSymbol, numStates * numInputs, numStates, numSymbols); }, StatusBadArg))
        return s;
    return init(ppState, pNext, pSymbol, numStates, numInputs, numSymbols, traceLen, allocate(size), true);
}
Status tevsViterbiFree(ViterbiState* pState) {
    if (Status s = Args().ptr(pState).record(pState, kCode, kTable)) return s;
    if (pState->owned) releaseRecord(pState);
    return StatusOk;
}
Status tevsViterbiReset(ViterbiState* pState, int startState) {
    if (Status s = Args().ptr(pState).record(pState, kCode, kTable).require([=] { return isState(pState, startState); }, StatusBadArg)) return s;
    asDecoder(pState, [=](auto& d) { d.reset(startState); });
    return StatusOk;
}
Status tevsViterbi_8s8u(const int8_t* pSrc, int len, uint8_t* pDst, int* pDstLen, ViterbiState* pState) {
    if (Status s = Args()
                       .ptr(pSrc)
                       .ptr(pDst)
                       .ptr(pDstLen)
                       .ptr(pState)
                       .len(len)
                       .record(pState, kCode)
                       .require([=] { return !mixes(pState, CodeDecoder::kSoft); }, StatusContextMismatch)
                       .require([=] { return countable(pState, len); }, StatusBadSize))
        return s;
    *pDstLen = decodeCode(pState, pSrc, len, pDst, CodeDecoder::kSoft);
    return StatusOk;
}
Status tevsViterbi_16s8u(const int16_t* pMetric, int len, uint8_t* pDst, int* pDstLen, ViterbiState* pState) {
    if (Status s = Args()
                       .ptr(pMetric)
                       .ptr(pDst)
                       .ptr(pDstLen)
                       .ptr(pState)
                       .len(len)
                       .record(pState, kCode, kTable)
                       .require([=] { return !mixes(pState, CodeDecoder::kRows); }, StatusContextMismatch)
                       .require([=] { return countable(pState, len); }, StatusBadSize))
        return s;
    *pDstLen =
        pState->id == kTable ? decode(*static_cast<TableDecoder*>(pState), pMetric, len, pDst) : decodeCode(pState, pMetric, len, pDst, CodeDecoder::kRows);
    return StatusOk;
}
Status tevsViterbiFlush_8u(uint8_t* pDst, int* pDstLen, int endState, ViterbiState* pState) {
    if (Status s = Args().ptr(pDst).ptr(pDstLen).ptr(pState).record(pState, kCode, kTable).require([=] { return isState(pState, endState); }, StatusBadArg))
        return s;
    *pDstLen = asDecoder(pState, [=](auto& d) { return flush(d, pDst, endState); });
    return StatusOk;
}
