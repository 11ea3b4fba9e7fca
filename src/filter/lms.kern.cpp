#include "filter/lms.table.h"

#include "core/simd/lanes.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

constexpr int kBytes = kRegisterBytes >= 32 ? 32 : 16;

template <int N> struct Bytes { static constexpr int n = N; };

// Zeros behind what does not fill a register.
template <int N> TEVS_INLINE Vec<float, (N < 16 ? 16 : N) / 4> loadBytes(const float* p) {
    if constexpr (N >= 16)
        return loadAs<Vec<float, N / 4>>(p);
    else
        return (Vec<float, 4>)loadLow<N>(p);
}

// e in as many bytes, and zeros behind them likewise: no sum is to hold the product of an infinite e and a sample that is not there.
template <int N> TEVS_INLINE auto sameBytes(float e) {
    if constexpr (N >= 16)
        return same<Vec<float, N / 4>>(e);
    else
        return (Vec<float, 4>)(N == 8 ? _mm_movelh_ps(_mm_set1_ps(e), _mm_setzero_ps()) : _mm_set_ss(e));
}

template <class V> TEVS_INLINE auto folded(V v) {
    if constexpr (sizeof(V) > 16)
        return low(v) + high(v);
    else
        return v;
}

// What is done at a window of samples: its taps are adapted with e, and a dot product is formed: where they are adapted, of the taps that come of it and the
// window one sample further on, while they are in registers. That takes two thirds of the loads and a pass less than one after the other.
template <bool Adapts, bool Sums> TEVS_INLINE float pass(const float* in, float* taps, int tapsLen, float e) {
    constexpr int K = kBytes / 4, A = 4;
    Vec<float, K> sum[A] = {};
    Vec<float, 4> rest = {};
    const auto at = [&](int j, auto bytes, auto& s) TEVS_HERE {
        auto t = loadBytes<bytes.n>(taps + j);
        if constexpr (Adapts) {
            t = fma(sameBytes<bytes.n>(e), loadBytes<bytes.n>(in + j), t);
            memcpy(taps + j, &t, bytes.n);
        }
        if constexpr (Sums) s = fma(t, loadBytes<bytes.n>(in + j + Adapts), s);
    };
    int j = 0;
    for (; j + A * K <= tapsLen; j += A * K)
        for (int a = 0; a < A; ++a) at(j + a * K, Bytes<kBytes>{}, sum[a]);
    for (; j + K <= tapsLen; j += K) at(j, Bytes<kBytes>{}, sum[0]);
    if (K > 4 && tapsLen - j >= 4) at(j, Bytes<16>{}, rest), j += 4;
    if (tapsLen - j >= 2) at(j, Bytes<8>{}, rest), j += 2;
    if (j < tapsLen) at(j, Bytes<4>{}, rest);
    if constexpr (!Sums) return 0;
    rest += folded((sum[0] + sum[1]) + (sum[2] + sum[3]));
    return (rest[0] + rest[2]) + (rest[1] + rest[3]);
}

float dot(const float* in, const float* taps, int tapsLen) { return pass<false, true>(in, const_cast<float*>(taps), tapsLen, 0); }
void adapt(const float* in, float* taps, int tapsLen, float e) { pass<true, false>(in, taps, tapsLen, e); }

void block(const float* in, const float* ref, float* out, int len, float step, float* taps, int tapsLen) {
    if (step == 0) {
        for (int n = 0; n < len; ++n) out[n] = dot(in + n, taps, tapsLen);
        return;
    }
    float y = dot(in, taps, tapsLen);
    for (int n = 0;; ++n) {
        const float e = (ref[n] - y) * step;
        out[n] = y;
        if (n == len - 1) return adapt(in + n, taps, tapsLen, e);
        y = pass<true, true>(in + n, taps, tapsLen, e);
    }
}

}   // namespace

extern const LmsKernels lms = {.dot = dot, .adapt = adapt, .block = block};

}   // namespace tevs::TEVS_LEVEL_NS
