#pragma once

#include <stddef.h>
#include <stdint.h>

#include "core/simd/dispatch.h"

namespace tevs {

// Synthesis by two halves of a filter: one makes the outputs at even places, the other those at odd ones. taps are pairs, one for each of both, in the order in which
// they meet a channel's values, the oldest first. A tap that only the even outputs have may come before the pairs, one that only the odd ones have behind them.
template <class T> struct SynthesisTaps {
    const T* taps;
    int32_t pairs;
    bool evenFirst, oddLast;
};

template <class T> struct WaveletKernel {
    // Sums and differences of pairs, times 1/sqrt 2, and back. low may be src.
    void (*haarAnalysis)(const T* src, T* low, T* high, int len);
    void (*haarSynthesis)(const T* low, const T* high, T* dst, int len);
    // low[i] = sum over j < 2 pairs of lowTaps[j] * in[2i+j] for 0 <= i < n, high alike; the outputs lie apart from in. With odd, the first tap is left out, whatever the
    // sample there, which is read. high may be null.
    // Sums of even and of odd places are formed in their order and added in the end, whatever i and n are.
    void (*analysis)(const T* in, const T* lowTaps, const T* highTaps, int pairs, bool odd, T* low, T* high, ptrdiff_t n);
    // dst[2i] and dst[2i+1] for 0 <= i < n; the first pair of taps meets low[i] and high[i]. First all of low is added, then all of high.
    void (*synthesis)(const T* low, const T* high, const SynthesisTaps<T>* lowTaps, const SynthesisTaps<T>* highTaps, T* dst, ptrdiff_t n);
};

template <class T> struct LiftKernel {
    void (*haarAnalysis)(const T* src, T* low, T* high, int len);
    void (*haarSynthesis)(const T* low, const T* high, T* dst, int len);
    // Of srcLen >= 2 samples, the ends included.
    void (*analysis53)(const T* src, T* low, T* high, int srcLen);
    void (*synthesis53)(const T* low, const T* high, T* dst, int dstLen);
};

struct WaveletKernels {
    WaveletKernel<float> real32f;
    WaveletKernel<double> real64f;
    LiftKernel<int16_t> lift16s;
    LiftKernel<int32_t> lift32s;
    // scaleFactor at most 31
    void (*haarAnalysis16s)(const int16_t* src, int16_t* low, int16_t* high, int len, int scaleFactor);
    void (*haarSynthesis16s)(const int16_t* low, const int16_t* high, int16_t* dst, int len, int scaleFactor);
};

}   // namespace tevs

TEVS_KERNEL_TABLE(WaveletKernels, wavelet, 2, FMA)
