#pragma once

#include <stdint.h>

#include "core/complex.h"
#include "core/simd/dispatch.h"

namespace tevs {

// y[n] = b0 x[n] + b1 x[n-1] + b2 x[n-2] - a1 y[n-1] - a2 y[n-2], with the state d[0] = b1 x[n] + b2 x[n-1] - a1 y[n] - a2 y[n-1], d[1] = b2 x[n] - a2 y[n].
template <class T> struct Section { T b0, b1, b2, a1, a2; };

// A second-order section as a linear map from a block of inputs and the state before it to a block of outputs and the state behind it; all as real numbers, so that a
// complex one is a map twice as wide, whose inputs enter by their real and their imaginary parts. The state s is the direct form's
// d in another basis, s[0] = d[0] and s[1] = d[1] + sigma d[0] with sigma = -a1 / 2. There a step multiplies by [sigma 1; sigma^2 - a2 sigma], which turns and shrinks
// vectors but hardly shears them, so that errors do not grow in its powers, as they do in d's where poles lie near the unit circle and the real axis. It goes from block to
// block in double precision: rounded to single, the eighth power of a pole of radius 0.9999 stands for one a good part of the way to the circle off.
constexpr int kIirBlock = 8;   // real numbers
template <class T> struct SectionTable {
    using S = Scalar<T>;
    static constexpr int kParts = tevs::kParts<T>, kStates = 2 * kParts, kSamples = kIirBlock / kParts;
    double step[kStates * kStates];       // by columns: what each part of the state adds to the next one
    double stepRest[kStates * kStates];   // and what is lost of that in rounding, which counts where the samples are double too
    double sigma[kParts];
    S into[kIirBlock * kStates];         // what each part of an input adds to the next state
    S outOf[kStates * kIirBlock];        // what each part of the state adds to the outputs
    S response[kParts][2 * kIirBlock];   // zeros, then from 8 on the response to a 1, and to an i, after its first sample
    S direct[kParts];                    // b0, which that is
    bool usable;                         // all of it is finite
};

template <class T> struct IirKernel {
    // Filters whole blocks as long as everything is finite, and says how many samples that were. d is in and out; x may be y.
    int (*section)(const T* x, T* y, int len, const SectionTable<T>* table, T* d);
    // As many of the next `count` sections as do well side by side, over all samples, and says how many that are; none where there are too few for that, or a tap is not finite.
    int (*cascade)(const T* x, T* y, int len, const Section<T>* sections, int count, T* d);
    // Like `section` a filter of arbitrary order in groups of 16 bytes. d, in and out, fills `registers` of 16 bytes, with zeros behind it. table holds b, and a with 0 for
    // a0, and each once more times i where they are complex; each in registers + 2 of 16 bytes, from the last element of the first on, zeros around it.
    int (*arbitrary)(const T* x, T* y, int len, const Scalar<T>* table, int registers, T* d);
};
constexpr int kMostIirRegisters = 12;

struct IirKernels {
    IirKernel<float> real32f;
    IirKernel<Complex32f> complex32f;
    IirKernel<double> real64f;
    IirKernel<Complex64f> complex64f;
};

}   // namespace tevs

TEVS_KERNEL_TABLE(IirKernels, iir, 2, FMA)
