#pragma once

#include <stddef.h>
#include <stdint.h>

#include "core/simd/dispatch.h"

namespace tevs {

// Medians of windows that reach w samples to each side, 3 <= 2w + 1 <= 9 by networks, w >= 5 by tiles. Elements are compared as T is: floats hold no NaN and no -0.
template <class T> struct MedianKernel {
    // network[w - 1]: dst[i] from src[i-w] .. src[i+w] for 0 <= i < n; n >= 16 bytes. dst may be src, where all of src[-w] .. src[n+w-1] is as it was until then.
    void (*network[4])(const T* src, T* dst, ptrdiff_t n);
    // All outputs of `tiles` tiles.
    void (*tile)(const struct Tiles* shape, const T* streams, T* out, void* rows, int tiles);
};
constexpr int kMostHalf = 4;   // of a network

// A tile is b = 2^log2 <= w + 1 neighbouring outputs. The inputs of all tiles lie in b streams, of which stream j holds input j of each tile, so that a vector has the like
// inputs of successive tiles: input q of the tiles from t on is at streams + offset[q] + t. Output j of tile t goes to out[j * stride + t]. Input 0 is the
// oldest one of the tile's first window. There are b + 2w inputs to a tile.
struct Tiles {
    int w, log2;
    ptrdiff_t stride;
    const int32_t* offset;
};
constexpr int kTileLanes = 32;   // the most of a level; streams have inputs, and room for outputs, of a multiple
constexpr int kRowBytes = 32;    // rows: 6 b vectors of so many bytes, aligned
constexpr int kRowsPerOutput = 6;

// The w medians at each end of a vector of n >= 2w, where windows reach past it, floats in whatever order.
template <class T> using MedianEnds = void (*)(const T* src, ptrdiff_t n, T* head, T* tail);

struct MedianKernels {
    MedianKernel<uint8_t> of8u;
    MedianKernel<int16_t> of16s;
    MedianKernel<int32_t> of32s;
    MedianKernel<int64_t> of64s;
    MedianKernel<float> of32f;
    MedianKernel<double> of64f;
    MedianEnds<uint8_t> ends8u[4];
    MedianEnds<int16_t> ends16s[4];
    MedianEnds<int32_t> ends32s[4];
    MedianEnds<float> ends32f[4];
    MedianEnds<double> ends64f[4];
    // Elements of 2^i bytes: element j of each tile, all tiles one behind the other in src, goes to its place in stream j; and back. Of `tiles` tiles, a multiple
    // of kTileLanes / 4 and of 16 bytes.
    void (*split[4])(const void* src, void* streams, int log2, ptrdiff_t stride, ptrdiff_t tiles);
    void (*join[4])(const void* streams, void* dst, int log2, ptrdiff_t stride, ptrdiff_t tiles);
    // Whether no element is NaN or -0.
    bool (*plain32f)(const float* src, ptrdiff_t n);
    bool (*plain64f)(const double* src, ptrdiff_t n);
    // Integers in the order of the numbers, -0 below +0, all NaN behind infinity; and back. The vectors may be one.
    void (*toKeys32f)(const float* src, int32_t* dst, ptrdiff_t n);
    void (*toKeys64f)(const double* src, int64_t* dst, ptrdiff_t n);
    void (*fromKeys32f)(const int32_t* src, float* dst, ptrdiff_t n);
    void (*fromKeys64f)(const int64_t* src, double* dst, ptrdiff_t n);
};

}   // namespace tevs

TEVS_KERNEL_TABLE(MedianKernels, median, 2)
