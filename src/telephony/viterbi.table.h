#pragma once

#include <stdint.h>

#include "core/simd/dispatch.h"
#include "tevs/types.h"

namespace tevs {

// A convolutional code as kernels see it: 64 states or more, of n bits b[n-1] .. b[0].
//
// Metrics of states lie in the order that is the same after every step: 16 lanes, whose index has b[n-1], b[n-2], b[n-3], b[n-4] as bits 0 .. 3, and as the number of such a group the
// bits that are left. Groups 2 p and 2 p + 1 are what states are that differ in b[0]; from them come the new groups p and p + half, whatever the width of registers.
// Decisions are a bit for each new state, set where the odd predecessor won, in a word for each pair of groups: bit 16 b[n-5] + 8 b[n-1] + 4 b[n-4] + 2 b[n-3] + b[n-2], in terms of the
// new state, whose lower n - 5 bits are the number of the word.
struct Trellis {
    static constexpr int kMostParts = 3, kPartPolys = 3;
    int bits;             // n
    int numPoly, parts;   // outputs, and how many lots of up to kPartPolys they are taken in
    bool
        symmetric;   // all outputs depend on the newest and on the oldest bit: of the four branches between two states and two, two pairs are equal and opposite
    int interval;    // steps after which 16 bits might not hold all metrics: n or more
    int since;       // steps since they were moved
    const uint8_t* lookup;   // for each branch (input, oldest bit), part, pair and lane of 16 bits which two bytes of a row of metrics to take

    int states() const { return 1 << bits; }
    int words() const { return 1 << (bits - 5); }
};

constexpr int kWindows = 4;   // that are traced back side by side

struct ViterbiKernels {
    // y[n] = sum over outputs of src, negative where the symbol has a 1: 2^numPoly for each step
    void (*rows)(const int8_t* src, int16_t* dst, int len, int numPoly);
    void (*nearest)(const Complex32f* src, int16_t* dst, uint8_t* indx, int len, const Complex32f* points, int numPoints, int numSymbols, float scale);
    void (*encode)(const uint8_t* src, uint8_t* dst, int len, const int* poly, int numPoly, int constraintLen, int state);

    // len steps; metrics in `now`, with room for as many in `other`. Words of decisions go one after the other.
    void (*forward)(Trellis& t, const int8_t* src, int len, int16_t* now, int16_t* other, uint32_t* decisions);
    // The lowest of the states from `first` to `last` with the largest metric.
    int (*best)(const Trellis& t, const int16_t* metrics, int first, int last);
    // From the states after len steps to those before them, `count` at once (1 or kWindows), and the inputs on the way unless dst is null.
    void (*back)(const Trellis& t, int count, const uint32_t* const* decisions, int len, int* states, uint8_t* const* dst);
};

}   // namespace tevs

TEVS_KERNEL_TABLE(ViterbiKernels, viterbi, 2)
