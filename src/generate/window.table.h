#pragma once

#include "core/simd/dispatch.h"
#include "tevs/types.h"

namespace tevs {

// Weights are made a block at a time: those of one half of the window, n = first .. first + count - 1, where first is a multiple of kTaperBlock and count at most that.
constexpr int kTaperBlock = 512;
// What is stored past the last weight of a block, to the end of a vector.
constexpr int kTaperSlack = 8;

// The sines of a block are sums of the angles of kFine neighbours and of every kFine-th.
constexpr int kFine = 32;

struct Taper {
    int len;
    double alpha = 0;   // Blackman, Kaiser
    double peak = 0;    // Kaiser: the argument of I0 at the middle
};
// What the first block of a call leaves for the others.
struct TaperWork {
    alignas(64) double sine[kFine], cosine[kFine];   // of the first angles
    double low, high;                                // Kaiser: the factors of I0's form for small arguments, and of that for large ones less its e^peak
};

template <class W> using Weigh = void (*)(const Taper& t, TaperWork& work, int first, int count, W* w);
struct Weights {
    Weigh<float> single;
    Weigh<double> wide;
};

// dst[i] = src[i] * w[i], and dst[i] = src[i] * w[len - 1 - i]. Integers are rounded to nearest and saturated; NaN gives 0.
template <class T, class W> struct Products {
    void (*forward)(const T* src, const W* w, T* dst, int len), (*backward)(const T* src, const W* w, T* dst, int len);
};
// The same times f and g, before it is rounded.
struct ScaledProducts {
    void (*forward)(const int16_t* src, const float* w, int16_t* dst, int len, float f, float g),
        (*backward)(const int16_t* src, const float* w, int16_t* dst, int len, float f, float g);
};

struct WindowKernels {
    Weights bartlett, hann, hamming, blackman, kaiser;
    Products<int16_t, float> by16s;
    Products<Complex16s, float> by16sc;
    Products<float, float> by32f;
    Products<Complex32f, float> by32fc;
    Products<double, double> by64f;
    Products<Complex64f, double> by64fc;
    ScaledProducts by16sScaled;
};

}   // namespace tevs

TEVS_KERNEL_TABLE(WindowKernels, window, 2)
