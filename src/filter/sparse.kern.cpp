#include "filter/sparse.table.h"

#include "core/simd/vec.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

constexpr int kWidth = kLanes<float>;
// Vectors of outputs at a time: as many sums as hide the latency of one, within the registers there are.
constexpr int kSums = kFewRegisters ? 4 : 8;

template <int N, int K> using Outputs = Vec<float, N>[K];

template <int N, int K> TEVS_INLINE void add(Outputs<N, K>& sum, const float* in, float tap) {
    const auto h = splat<N>(tap);
#pragma GCC unroll 8
    for (int j = 0; j < K; ++j) sum[j] = fma(h, load<float, N>(in + j * N), sum[j]);
}
template <int N, int K> TEVS_INLINE void put(const Outputs<N, K>& sum, float* out) {
#pragma GCC unroll 8
    for (int j = 0; j < K; ++j) store(out + j * N, sum[j]);
}

// f<lanes, vectors>(n) for blocks of outputs that make up 0 .. len-1, none of them longer than `most`, which is at least 1.
template <int N, int K> struct Size { static constexpr int lanes = N, vectors = K, outputs = N * K; };
template <class F> TEVS_INLINE void inBlocks(int len, int most, F f) {
    int n = 0;
    const auto while_ = [&](auto size) TEVS_HERE {
        if (size.outputs <= most)
            for (; len - n >= size.outputs; n += size.outputs) f(size, n);
    };
    while_(Size<kWidth, kSums>{});
    while_(Size<kWidth, 2>{});
    while_(Size<kWidth, 1>{});
    if constexpr (kWidth > 4) while_(Size<4, 1>{});
    while_(Size<1, 1>{});
}

void fir(const float* in, const float* taps, const int32_t* delays, int count, float* out, int len) {
    inBlocks(len, len, [=](auto size, int n) TEVS_HERE {
        Outputs<size.lanes, size.vectors> sum = {};
        for (int k = 0; k < count; ++k) add<size.lanes, size.vectors>(sum, in + (ptrdiff_t{n} - delays[k]), taps[k]);
        put<size.lanes, size.vectors>(sum, out + n);
    });
}

// A block is as long as the least delay allows, but at least a vector: in a shorter block nothing would be gained by one. What outputs take from their own block is added
// one by one, and comes last in every order: those are the least delays.
void iir(float* out, const float* taps, const int32_t* delays, int count, int len) {
    inBlocks(len, delays[0] < kWidth ? kWidth : delays[0], [=](auto size, int n) TEVS_HERE {
        Outputs<size.lanes, size.vectors> sum;
        float* const y = out + n;
#pragma GCC unroll 8
        for (int j = 0; j < size.vectors; ++j) sum[j] = load<float, size.lanes>(y + j * size.lanes);
        int k = count - 1;
        for (; k >= 0 && delays[k] >= size.outputs; --k) add<size.lanes, size.vectors>(sum, y - delays[k], taps[k]);
        put<size.lanes, size.vectors>(sum, y);
        if (k >= 0)
            for (int i = 0; i < size.outputs; ++i) {
                Outputs<1, 1> one = {load<float, 1>(y + i)};
                for (int l = k; l >= 0; --l) add<1, 1>(one, y + (i - ptrdiff_t{delays[l]}), taps[l]);
                put<1, 1>(one, y + i);
            }
    });
}

}   // namespace

extern const SparseKernels sparse = {.fir = fir, .iir = iir};

}   // namespace tevs::TEVS_LEVEL_NS
