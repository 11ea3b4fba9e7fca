#include "filter/convolution.table.h"

#include "core/simd/lanes.h"
#include "core/simd/map.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// ---- few outputs ----------------------------------------------------------------------------------------------------------------------------
//
// One register of outputs for each of V, the last of them ending with the last output. U sums of each take the taps by turns: V U of them cover the latency of two
// multiply-adds a cycle. Complex taps go by their parts, y = sum of re(h) x + i sum of im(h) x.

constexpr int kBytes = kRegisterBytes >= 32 ? 32 : 16;
constexpr int kSums = kFewRegisters ? 4 : 12;

template <int Parts, int Bytes, int V, int U, class T> TEVS_INLINE void vectors(const T* in, const T* taps, ptrdiff_t step, int tapsLen, T* out, int scalars) {
    constexpr int K = Bytes / int(sizeof(T));
    using R = Vec<T, K>;
    R sum[U][V][Parts] = {};
    const auto at = [=](int v) TEVS_HERE { return v < V - 1 ? v * K : scalars - K; };
    const auto add = [&](int j, int u) TEVS_HERE {
        R tap[Parts];
#pragma GCC unroll 2
        for (int p = 0; p < Parts; ++p) tap[p] = same<R>(taps[p]);
#pragma GCC unroll 6
        for (int v = 0; v < V; ++v) {
            const R x = inRegister(load<T, K>(in + j * Parts + at(v)));
#pragma GCC unroll 2
            for (int p = 0; p < Parts; ++p) sum[u][v][p] = fma(tap[p], x, sum[u][v][p]);
        }
        taps += step * Parts;
    };
    int j = 0;
    for (; j + U <= tapsLen; j += U)
#pragma GCC unroll 8
        for (int u = 0; u < U; ++u) add(j + u, u);
    for (; j < tapsLen; ++j) add(j, 0);
#pragma GCC unroll 6
    for (int v = 0; v < V; ++v) {
#pragma GCC unroll 2
        for (int p = 0; p < Parts; ++p)
#pragma GCC unroll 8
            for (int u = 1; u < U; ++u) sum[0][v][p] += sum[u][v][p];
        if constexpr (Parts == 2)
            store(out + at(v), subAdd(sum[0][v][0], swapPairs(sum[0][v][1])));
        else
            store(out + at(v), sum[0][v][0]);
    }
}

template <class T, class Sample> struct Few {
    static constexpr int kParts = int(sizeof(Sample) / sizeof(T)), K = kBytes / int(sizeof(T)), kVectors = kSums / kParts / 2;

    template <int Bytes, int V> static TEVS_INLINE void turns(const T* in, const T* taps, ptrdiff_t step, int tapsLen, T* out, int scalars) {
        constexpr int most = kSums / (V * kParts), U = most > 8 ? 8 : most;
        vectors<kParts, Bytes, V, U>(in, taps, step, tapsLen, out, scalars);
    }
    static void kernel(const Sample* in, const Sample* taps, ptrdiff_t step, int tapsLen, Sample* out, int len) {
        const T *const x = reinterpret_cast<const T*>(in), *const h = reinterpret_cast<const T*>(taps);
        T* const y = reinterpret_cast<T*>(out);
        const int scalars = len * kParts;
        if constexpr (kBytes > 16) {
            if (scalars == K / 2) return turns<16, 1>(x, h, step, tapsLen, y, scalars);
            if (scalars < K) return turns<16, 2>(x, h, step, tapsLen, y, scalars);
        }
        if (scalars <= K) return turns<kBytes, 1>(x, h, step, tapsLen, y, scalars);
        more<2>(x, h, step, tapsLen, y, scalars);
    }
    template <int V> static TEVS_INLINE void more(const T* in, const T* taps, ptrdiff_t step, int tapsLen, T* out, int scalars) {
        if constexpr (V <= kVectors) {
            if (scalars <= V * K)
                turns<kBytes, V>(in, taps, step, tapsLen, out, scalars);
            else
                more<V + 1>(in, taps, step, tapsLen, out, scalars);
        }
    }
    static constexpr FewOutputs<Sample> entry = {int(16 / sizeof(Sample)), kVectors* kBytes / int(sizeof(Sample)), kernel};
};

void digits(const int16_t* taps, int16_t* lower, int16_t* upper, int n) {
    const auto split = [](auto w, const int16_t* p) TEVS_HERE {
        const auto tap = load<int16_t, w.n>(p), low = shiftRight(shiftLeft(tap, 8), 8);
        return Two{low, shiftRight(tap, 8) - (low >> 15)};   // one more where the lower digit is negative
    };
    map<kBytes / 2, 8>(n, Both<int16_t>{lower, upper}, split, taps);
}

// ---- cyclic convolutions ------------------------------------------------------------------------------------------------------------------------

// Four lanes of a and b laid end to end, from lane 4 - By on.
template <int By, class V> TEVS_INLINE V window(V a, V b) {
    if constexpr (By == 0)
        return b;
    else
        return __builtin_shufflevector(a, b, 4 - By, 5 - By, 6 - By, 7 - By);
}

// Of real taps h in two halves: x[k] meets a window of the taps laid in a ring, and x[k+4] the opposite one.
template <int K = 0> TEVS_INLINE void ring8(const float* x, Two<Vec<float, 4>> h, Two<Vec<float, 4>>& y) {
    using V = Vec<float, 4>;
    if constexpr (K < 4) {
        const V back = window<K>(h.b, h.a), front = window<K>(h.a, h.b), near = same<V>(x[K]), far = same<V>(x[K + 4]);
        y.a = fma(far, front, fma(near, back, y.a));
        y.b = fma(far, back, fma(near, front, y.b));
        ring8<K + 1>(x, h, y);
    }
}
void cyclic8(const float* x, const float* h, float* y) {
    Two<Vec<float, 4>> sum{};
    ring8(x, loadTwo<float, 4>(h), sum);
    store(y, sum);
}

void cyclic4(const float* x, const Complex32f* h, Complex32f* y) {
    using V = Vec<float, 4>;
    const Two<V> pairs = loadTwo<float, 4>(&h->re);
    const V a = pairs.a, b = pairs.b, ba = __builtin_shufflevector(b, a, 2, 3, 4, 5), ab = __builtin_shufflevector(a, b, 2, 3, 4, 5);
    const V x0 = same<V>(x[0]), x1 = same<V>(x[1]), x2 = same<V>(x[2]), x3 = same<V>(x[3]);
    store(&y->re, Two<V>{fma(x1, ba, x0 * a) + fma(x3, ab, x2 * b), fma(x1, ab, x0 * b) + fma(x3, ba, x2 * a)});
}

// Lane n of the ring turned by K is h[(n-K) mod 8].
template <int K, int... I> TEVS_INLINE Vec<int16_t, 8> turned(Vec<int16_t, 8> h, Lane<I...>) { return __builtin_shufflevector(h, h, ((I - K + 8) % 8)...); }

// Products in twos are at least -2^31 + 2^16, and 2^31, which wraps, at most. With kBias they are not negative, and four of them add up exactly by halves of 16 bits.
constexpr uint32_t kBias = 0x7fff0000;
template <int K> TEVS_INLINE void ring8of16s(const int16_t* x, Vec<int16_t, 8> h, Two<Vec<uint32_t, 4>>& low, Two<Vec<uint32_t, 4>>& high) {
    if constexpr (K < 8) {
        int32_t pair;
        memcpy(&pair, x + K, sizeof pair);
        const auto both = (Vec<int16_t, 8>)(Vec<int32_t, 4>{} + pair);
        const auto taps = interleave(turned<K>(h, Iota<8>{}), turned<K + 1>(h, Iota<8>{}));
        const auto a = (Vec<uint32_t, 4>)multiplyPairs(taps.a, both) + kBias, b = (Vec<uint32_t, 4>)multiplyPairs(taps.b, both) + kBias;
        low.a += a & 0xffff;
        low.b += b & 0xffff;
        high.a += a >> 16;
        high.b += b >> 16;
        ring8of16s<K + 2>(x, h, low, high);
    }
}
void cyclic8of16s(const int16_t* x, const int16_t* h, int64_t* y) {
    Two<Vec<uint32_t, 4>> low{}, high{};
    ring8of16s<0>(x, load<int16_t, 8>(h), low, high);
    const auto total = [](uint32_t l, uint32_t u) { return (int64_t{u} << 16) + l - 4 * int64_t{kBias}; };
    for (int n = 0; n < 4; ++n) {
        y[n] = total(low.a[n], high.a[n]);
        y[n + 4] = total(low.b[n], high.b[n]);
    }
}

}   // namespace

extern const ConvolutionKernels convolution = {
    .few32f = Few<float, float>::entry,
    .few64f = Few<double, double>::entry,
    .few32fc = Few<float, Complex32f>::entry,
    .few64fc = Few<double, Complex64f>::entry,
    .digits = digits,
    .cyclic4 = cyclic4,
    .cyclic8 = cyclic8,
    .cyclic8of16s = cyclic8of16s,
};

}   // namespace tevs::TEVS_LEVEL_NS
