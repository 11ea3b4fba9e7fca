#pragma once

#include <stddef.h>
#include <stdint.h>

#include "core/simd/dispatch.h"
#include "tevs/types.h"

namespace tevs {

// Periods that the kernels work on at a time, at every level.
constexpr int kPeriodsAtOnce = 8;

// The inputs of a run of periods, one stream for each place in a period: what an output of the period takes from one stream lies close together for successive
// periods. Streams come in runs of as many neighbouring places as fill 16 bytes (or all places, where a period has no more); places that no output takes
// an input from may be left out.
struct Streams {
    int32_t places;          // inputs of a period
    int32_t runs;            // of streams
    const int32_t* starts;   // the first place of each run
    ptrdiff_t stride;        // elements from a stream to the next; four more than are used, which may be overwritten
};

// Four rows of taps that are applied to the inputs together: four neighbouring outputs of a period, or two complex ones as the products with the real and with
// the imaginary parts of their taps. Row r takes the inputs from[r] .. end[r]-1, counted from the period's first; negative ones lie before it. end[] does not
// decrease. Its tap for input i is taps[rows[r] + 4i + r].
//
// With 16-bit samples a number is 32 bits that hold two, and sums are of 32 bits. A complex output takes the rows (re, -im) and (im, re) of its taps. Real inputs are
// taken in pairs: that of input i holds i-1 and i. A row takes every second pair, from[] to end[]-2, and its two taps for pair i are taps[rows[r] + 2i + r].
struct PhaseGroup {
    int32_t from[4], end[4];
    int32_t shared[4];   // rows 0 .. r are added together from here on: the largest of from[0] .. from[r]
    int32_t overlap;     // whether there is an input that all rows take, or kTogether where all take the same; rows[] are equal then
    int32_t rows[4];
    int32_t output;   // of the first row, in scalars from the period's first
    int32_t paired;   // whether the next group is one of the same shape, that is not paired itself: from[], end[] differ from this one's by one number
};

constexpr int32_t kTogether = 2;

template <class T> struct Phases {
    const PhaseGroup* groups;
    int32_t count;
    const T* taps;
    const int32_t* place;   // place[i]: where input i of the first period lies in the streams, in scalars
    ptrdiff_t period;       // scalars from a period's outputs to the next one's
};

// Neighbouring outputs of a period in one vector of 32 bytes, for blocks of too few periods to fill vectors with these. Step s takes for each output the input
// s places behind its oldest one; all of them lie in two neighbouring vectors of inputs, or in one.
struct OutputRun {
    int32_t order[8];   // of 32-bit lanes, from the oldest input of all on
    int32_t last[8];    // -1 in lanes of outputs that take part in the last step, where the number of taps differs by one; not with 16-bit samples
    int32_t first;      // the oldest input
    int32_t steps;
    int32_t wide;     // whether two vectors are needed
    int32_t output;   // the first, in scalars from the period's first
    int32_t taps;     // a vector for each step, for complex ones two: real parts, then imaginary parts, each for both parts of a sample
};

template <class T> struct OutputRuns {
    const OutputRun* runs;
    int32_t count;
    const T* taps;
    ptrdiff_t inputs, outputs;   // scalars of a period
    int32_t digits;              // of 16-bit taps: with two there are as many taps again, and sums
    ptrdiff_t upperTaps, upperSums;
};
constexpr int kRunBytes = 32;

// count inputs, from the start of a period on, go to the streams; the last period need not be whole.
template <class S, class T> using Split = void (*)(const S* src, int count, const Streams* streams, T* to);
// Real ones of 16 bits as pairs, each behind the input before it. `before` comes before the first.
using SplitPairs = void (*)(const int16_t* src, int16_t before, int count, const Streams* streams, int32_t* to);
// The outputs of kPeriodsAtOnce * n periods.
template <class T> using Filter = void (*)(const Phases<T>* phases, const T* streams, T* dst, int n);
// The outputs of n periods from inputs in order of time. Vectors of inputs may reach kRunSlack elements past the last.
template <class T> using FilterRuns = void (*)(const OutputRuns<T>* runs, const T* inputs, T* dst, int n);
constexpr int kRunSlack = 16;
using JoinDigits = void (*)(const int32_t* lower, const int32_t* upper, int32_t* dst, int len);

struct MultirateKernels {
    Split<float, float> split_32f;
    Split<Complex32f, float> split_32fc;
    Split<int16_t, float> split16s_32f;
    Split<Complex16s, float> split16sc_32fc;
    Split<double, double> split_64f;
    Split<Complex64f, double> split_64fc;
    Split<float, double> split32f_64f;
    Split<Complex32f, double> split32fc_64fc;
    Split<int32_t, double> split32s_64f;
    Split<Complex32s, double> split32sc_64fc;
    Split<int16_t, double> split16s_64f;
    Split<Complex16s, double> split16sc_64fc;
    SplitPairs split_16s;
    Split<Complex16s, int32_t> split_16sc;

    Filter<float> real32f, complex32f;
    Filter<double> real64f, complex64f;
    Filter<int32_t> real16s, complex16s;
    // Sums with the lower and the upper digits of taps as one: in units of 256, made odd where a rest is left, and in units of 1, within +-2^28.
    JoinDigits joinRounded, joinWhole;

    // Null where there is no instruction to permute lanes by a vector. The same results to the bit.
    FilterRuns<float> runs32f, runs32fc;
    FilterRuns<double> runs64f, runs64fc;
    FilterRuns<int32_t> runs16s, runs16sc;
};

}   // namespace tevs

TEVS_KERNEL_TABLE(MultirateKernels, multirate, 2, FMA)
