#include "filter/fir.table.h"

#include "core/simd/vec.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// Lanes of an output vector, and the step in tap order between the taps that share a load. 256 bits at level 3 too, where its 32 registers serve.
constexpr int kStep = kRegisterBytes >= 32 ? 8 : 4;

// Output vectors held at a time, enough independent sums to cover the latency of two multiply-adds a cycle, and the most taps that share a load. With eight
// registers there is no room to share.
#ifdef __i386__
constexpr int kVectors = 5, kShared = 1;
#else
constexpr int kVectors = 10, kShared = 4;
#endif

// Adds the taps j = s + q kStep, s < kStep, q < C, to A vectors of W outputs, kStep apart.
//
// A load of in[n+j ..] serves tap q of vector a and tap q+1 of vector a-1, so A C products take A + C - 1 loads; one load each would keep the multipliers
// waiting, since nearly half of them cross a cache line. Every sum runs over s, then q: the same order in whichever vector an output lies.
template <int W, int A, int C> TEVS_INLINE void addTaps(const float* in, const float* taps, Vec<float, W> (&sum)[A]) {
    for (int s = 0; s < kStep; ++s) {
#pragma GCC unroll 16
        for (int c = 0; c < A + C - 1; ++c) {
            const auto x = inRegister(load<float, W>(in + s + c * kStep));
#pragma GCC unroll 16
            for (int q = 0; q < C; ++q)
                if (c - q >= 0 && c - q < A) sum[c - q] = fma(Vec<float, W>{} + taps[s + q * kStep], x, sum[c - q]);
        }
    }
}
template <int W, int A> TEVS_INLINE void addTap(const float* in, float tap, Vec<float, W> (&sum)[A]) {
#pragma GCC unroll 16
    for (int a = 0; a < A; ++a) sum[a] = fma(Vec<float, W>{} + tap, load<float, W>(in + a * kStep), sum[a]);
}

template <int W, int A> TEVS_INLINE void outputs(const float* in, const float* taps, int tapsLen, float* out) {
    Vec<float, W> sum[A] = {};
    int j = 0;
    if constexpr (kShared > 1) {
        for (; j + kShared * kStep <= tapsLen; j += kShared * kStep) addTaps<W, A, kShared>(in + j, taps + j, sum);
        for (; j + 2 * kStep <= tapsLen; j += 2 * kStep) addTaps<W, A, 2>(in + j, taps + j, sum);
    }
    for (; j < tapsLen; ++j) addTap<W, A>(in + j, taps[j], sum);
    for (int a = 0; a < A; ++a) store(out + a * kStep, sum[a]);
}

using Outputs = void(const float* in, const float* taps, int tapsLen, float* out);
struct OutputsByCount {
    Outputs* of[kVectors];
};
template <int A> void vectors(const float* in, const float* taps, int tapsLen, float* out) { outputs<kStep, A>(in, taps, tapsLen, out); }
template <int... A> constexpr OutputsByCount outputsByCount(Lane<A...>) { return {{vectors<A + 1>...}}; }
constexpr OutputsByCount kOutputs = outputsByCount(Iota<kVectors>{});

void block(const float* in, const float* taps, int tapsLen, float* out, int len) {
    int n = 0;
    for (; len - n >= 2 * kVectors * kStep; n += kVectors * kStep) outputs<kStep, kVectors>(in + n, taps, tapsLen, out + n);
    // What is left is shared out evenly: the few vectors of a last full group's remainder would have too few sums to keep the multipliers busy.
    for (int left = (len - n) / kStep; left > 0;) {
        const int now = left > kVectors ? (left + 1) / 2 : left;
        kOutputs.of[now - 1](in + n, taps, tapsLen, out + n);
        n += now * kStep;
        left -= now;
    }
    if constexpr (kStep > 4)
        for (; n + 4 <= len; n += 4) outputs<4, 1>(in + n, taps, tapsLen, out + n);
    for (; n < len; ++n) outputs<1, 1>(in + n, taps, tapsLen, out + n);
}

float dot(const float* in, const float* taps, int tapsLen) {
    constexpr int K = kStep;
    Vec<float, K> sum[4] = {};
    int j = 0;
    for (; j + 4 * K <= tapsLen; j += 4 * K)
        for (int a = 0; a < 4; ++a) sum[a] = fma(load<float, K>(taps + j + a * K), load<float, K>(in + j + a * K), sum[a]);
    for (; j + K <= tapsLen; j += K) sum[0] = fma(load<float, K>(taps + j), load<float, K>(in + j), sum[0]);
    const auto all = (sum[0] + sum[1]) + (sum[2] + sum[3]);
    float y = 0;
    for (int l = 0; l < K; ++l) y += all[l];
    for (; j < tapsLen; ++j) y = fma(Vec<float, 1>{taps[j]}, Vec<float, 1>{in[j]}, Vec<float, 1>{y})[0];
    return y;
}

}   // namespace

extern const FirKernels fir = {
    .block = block,
    .dot = dot,
};

}   // namespace tevs::TEVS_LEVEL_NS
