// The kernels of cosine transforms, for the sources that make them in one precision each.
#pragma once

#include "transform/complex.kern.h"
#include "transform/dct.table.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

template <class T> constexpr int kDctBlock = (kRegisterBytes >= 32 ? 32 : 16) / int(sizeof(T));

// ---- the order ---------------------------------------------------------------------------------------------------------------------------

template <class T> void fold(const T* x, T* v, ptrdiff_t n) {
    constexpr int K = kDctBlock<T>;
    ptrdiff_t i = 0;
    for (; 2 * (i + K) <= n; i += K) {
        const auto pairs = loadSplit<T, K>(x + 2 * i);
        store(v + i, pairs.a);
        store(v + n - i - K, reverse(pairs.b));
    }
    for (; 2 * i + 1 < n; ++i) {
        v[i] = x[2 * i];
        v[n - 1 - i] = x[2 * i + 1];
    }
    if (2 * i < n) v[i] = x[2 * i];
}
template <class T> void unfold(const T* v, T* x, ptrdiff_t n) {
    constexpr int K = kDctBlock<T>;
    ptrdiff_t i = 0;
    for (; 2 * (i + K) <= n; i += K) store(x + 2 * i, interleave(load<T, K>(v + i), reverse(load<T, K>(v + n - i - K))));
    for (; 2 * i + 1 < n; ++i) {
        x[2 * i] = v[i];
        x[2 * i + 1] = v[n - 1 - i];
    }
    if (2 * i < n) x[2 * i] = v[i];
}

// ---- between spectrum and cosines ------------------------------------------------------------------------------------------------------------

// body(k) for k = from .. to - 1, by K where there are so many: the last K may include some of the ones before.
template <int K, class Body> TEVS_INLINE void blocksOf(ptrdiff_t from, ptrdiff_t to, Body body) {
    for (ptrdiff_t k = from;; k = k + 2 * K <= to ? k + K : to - K) {
        body(k);
        if (k == to - K) return;
    }
}
template <int K, class T> TEVS_INLINE void cosinesAt(const T* bins, T* y, ptrdiff_t n, ptrdiff_t k, const T* w, T f) {
    const auto z = times(mul(read<K>(Pairs<const T>{bins}, k), read<K>(Pairs<const T>{w}, 0)), f);
    store(y + k, reordered(z.re));
    store(y + n - k - K + 1, reverse(reordered(-z.im)));
}
template <class T> void cosines(const T* bins, T* y, ptrdiff_t n, ptrdiff_t from, ptrdiff_t to, const T* w, T f) {
    constexpr int K = kDctBlock<T>;
    if (to - from >= K)
        blocksOf<K>(from, to, [=](ptrdiff_t k) TEVS_HERE { cosinesAt<K>(bins, y, n, k, w + 2 * (k - from), f); });
    else
        for (ptrdiff_t k = from; k < to; ++k) cosinesAt<1>(bins, y, n, k, w + 2 * (k - from), f);
}
template <int K, class T> TEVS_INLINE void spectrumAt(const T* y, T* bins, ptrdiff_t n, ptrdiff_t k, const T* w, T f) {
    using V = Vec<T, K>;
    const V a = reordered(load<T, K>(y + k)) * same<V>(f), b = reordered(reverse(load<T, K>(y + n - k - K + 1))) * same<V>(f);
    const auto c = read<K>(Pairs<const T>{w}, 0);
    write(Pairs<T>{bins}, k, Cx<V>{fnma(c.im, b, c.re * a), -fma(c.im, a, c.re * b)});
}
template <class T> void spectrum(const T* y, T* bins, ptrdiff_t n, ptrdiff_t from, ptrdiff_t to, const T* w, T f) {
    constexpr int K = kDctBlock<T>;
    if (to - from >= K)
        blocksOf<K>(from, to, [=](ptrdiff_t k) TEVS_HERE { spectrumAt<K>(y, bins, n, k, w + 2 * (k - from), f); });
    else
        for (ptrdiff_t k = from; k < to; ++k) spectrumAt<1>(y, bins, n, k, w + 2 * (k - from), f);
}

// ---- powers of two up to 32 --------------------------------------------------------------------------------------------------------------------

// cos(pi x / 2) for 0 <= x <= 1, for the tables: Taylor's series of the cosine, or of the sine near a quarter turn, where the cosine's has lost its digits.
constexpr double cosOfQuarters(double x) {
    const bool isSine = x > 0.5;
    const double a = 1.5707963267948966192 * (isSine ? 1 - x : x);
    double term = isSine ? a : 1, sum = term;
    for (int k = 1; k < 16; ++k) sum += term *= -a * a / ((2 * k - 1 + isSine) * (2 * k + isSine));
    return sum;
}
// The odd half of a transform of length 2M: row n has cos(pi (2n+1) (2k+1) / 4M) for k = 0 .. M-1, and column n the same.
template <class T, int M> struct OddMatrix {
    alignas(32) T at[M][M];
    constexpr OddMatrix() : at() {
        for (int n = 0; n < M; ++n)
            for (int k = 0; k < M; ++k) {
                const int turn = (2 * n + 1) * (2 * k + 1) % (8 * M), half = turn > 4 * M ? 8 * M - turn : turn;   // in units of 1/8M turn, folded to 0 .. 1/2
                const double c = cosOfQuarters(double(half > 2 * M ? 4 * M - half : half) / (2 * M));
                at[n][k] = T(half > 2 * M ? -c : c);
            }
    }
};
template <class T, int M> constexpr OddMatrix<T, M> kOddMatrix{};

// y = matrix x.
template <int M, class T> TEVS_INLINE void oddHalf(const T* x, T* y) {
    constexpr int K = M * sizeof(T) < 16 ? 1 : M < kDctBlock<T> ? M : kDctBlock<T>;
    using V = Vec<T, K>;
    V sum[M / K];
    for (int i = 0; i < M / K; ++i) sum[i] = load<T, K>(kOddMatrix<T, M>.at[0] + K * i) * same<V>(x[0]);
    for (int n = 1; n < M; ++n)
        for (int i = 0; i < M / K; ++i) sum[i] = fma(load<T, K>(kOddMatrix<T, M>.at[n] + K * i), same<V>(x[n]), sum[i]);
    for (int i = 0; i < M / K; ++i) store(y + K * i, sum[i]);
}
// Sums of x[n] cos(pi (2n+1) k / 2N); and of y[k] cos(pi (2n+1) k / 2N).
template <int N, class T> TEVS_INLINE void forwardMatrix(const T* x, T* y) {
    if constexpr (N == 1) {
        y[0] = x[0];
    } else {
        T sums[N / 2], differences[N / 2], even[N / 2], odd[N / 2];
        for (int n = 0; n < N / 2; ++n) {
            sums[n] = x[n] + x[N - 1 - n];
            differences[n] = x[n] - x[N - 1 - n];
        }
        forwardMatrix<N / 2>(sums, even);
        oddHalf<N / 2>(differences, odd);
        for (int k = 0; k < N / 2; ++k) {
            y[2 * k] = even[k];
            y[2 * k + 1] = odd[k];
        }
    }
}
template <int N, class T> TEVS_INLINE void inverseMatrix(const T* y, T* x) {
    if constexpr (N == 1) {
        x[0] = y[0];
    } else {
        T evens[N / 2], odds[N / 2], even[N / 2], odd[N / 2];
        for (int k = 0; k < N / 2; ++k) {
            evens[k] = y[2 * k];
            odds[k] = y[2 * k + 1];
        }
        inverseMatrix<N / 2>(evens, even);
        oddHalf<N / 2>(odds, odd);
        for (int n = 0; n < N / 2; ++n) {
            x[n] = even[n] + odd[n];
            x[N - 1 - n] = even[n] - odd[n];
        }
    }
}
template <int N, class T> TEVS_INLINE void forwardOf(const T* x, T* y, T first, T other) {
    T z[N];
    forwardMatrix<N>(x, z);
    y[0] = z[0] * first;
    for (int k = 1; k < N; ++k) y[k] = z[k] * other;
}
template <int N, class T> TEVS_INLINE void inverseOf(const T* y, T* x, T first, T other) {
    T z[N];
    z[0] = y[0] * first;
    for (int k = 1; k < N; ++k) z[k] = y[k] * other;
    inverseMatrix<N>(z, x);
}
template <class T> void shortForward(const T* x, T* y, int n, T first, T other) {
    switch (n) {
        case 2:
            return forwardOf<2>(x, y, first, other);
        case 4:
            return forwardOf<4>(x, y, first, other);
        case 8:
            return forwardOf<8>(x, y, first, other);
        case 16:
            return forwardOf<16>(x, y, first, other);
        default:
            return forwardOf<32>(x, y, first, other);
    }
}
template <class T> void shortInverse(const T* y, T* x, int n, T first, T other) {
    switch (n) {
        case 2:
            return inverseOf<2>(y, x, first, other);
        case 4:
            return inverseOf<4>(y, x, first, other);
        case 8:
            return inverseOf<8>(y, x, first, other);
        case 16:
            return inverseOf<16>(y, x, first, other);
        default:
            return inverseOf<32>(y, x, first, other);
    }
}

// ---- direct sums -----------------------------------------------------------------------------------------------------------------------------

constexpr int kMostSums = 100;

// cos and sin of pi (index + step l) / 2N in the lanes l.
template <class V> TEVS_INLINE void turnsAt(const double* turns, int n, int index, int step, V& c, V& s) {
    for (int l = 0; l < kCount<V>; ++l, index += step) {
        const int at = index % (4 * n), quarter = at / n, rest = at % n;
        const double cos = turns[rest], sin = turns[n + rest], x = quarter % 2 ? sin : cos, y = quarter % 2 ? cos : sin;
        c[l] = quarter == 1 || quarter == 2 ? -x : x;
        s[l] = quarter >= 2 ? -y : y;
    }
}
// How often a turn is taken from the table, so that errors do not add up to any that the result has room for.
template <class T> constexpr int kFresh = sizeof(T) == 4 ? 64 : 4;

// For K frequencies, forward: the samples, folded around the middle for even and odd k, times the cosines, which turn by a complex product each: in double precision, so that
// a result in single precision has none of that error.
template <class T> void forwardSums(const T* x, T* y, int n, const double* turns, T first, T other) {
    constexpr int K = kDctBlock<double>;
    using V = Vec<double, K>;
    const int half = n / 2;
    double sums[2][kMostSums / 2 + 1];
    for (int i = 0; i < half; ++i) {
        sums[0][i] = double(x[i]) + double(x[n - 1 - i]);
        sums[1][i] = double(x[i]) - double(x[n - 1 - i]);
    }
    const double middle = n % 2 ? double(x[half]) : 0;
    sums[0][half] = middle;
    sums[1][half] = 0;
    double z[kMostSums + K];
    for (int k = 0; k < n; k += K) {
        V c, s;
        turnsAt(turns, n, k, 1, c, s);
        const V twiceC = fnma(same<V>(2) * s, s, same<V>(1)), twiceS = (c + c) * s;
        V even{}, odd{};
        for (int i = 0; i <= half; ++i) {
            if (i % kFresh<T> == 0) turnsAt(turns, n, (2 * i + 1) * k, 2 * i + 1, c, s);
            even = fma(c, same<V>(sums[0][i]), even);
            odd = fma(c, same<V>(sums[1][i]), odd);
            const V next = fnma(s, twiceS, c * twiceC);
            s = fma(c, twiceS, s * twiceC);
            c = next;
        }
        for (int l = 0; l < K; ++l) z[k + l] = (k + l) % 2 ? odd[l] : even[l];
    }
    y[0] = T(z[0] * double(first));
    for (int k = 1; k < n; ++k) y[k] = T(z[k] * double(other));
}

// For K samples of the first half, and by symmetry the other, inverse.
template <class T> void inverseSums(const T* y, T* x, int n, const double* turns, T first, T other) {
    constexpr int K = kDctBlock<double>;
    using V = Vec<double, K>;
    const int half = (n + 1) / 2;
    double in[kMostSums], even[kMostSums / 2 + K], odd[kMostSums / 2 + K];
    in[0] = double(y[0]) * double(first);
    for (int k = 1; k < n; ++k) in[k] = double(y[k]) * double(other);
    for (int i = 0; i < half; i += K) {
        V c, s, re, im, sum[2] = {};
        turnsAt(turns, n, 2 * i + 1, 2, c, s);
        for (int k = 0; k < n; ++k) {
            if (k % kFresh<T> == 0) turnsAt(turns, n, k * (2 * i + 1), 2 * k, re, im);
            sum[k % 2] = fma(re, same<V>(in[k]), sum[k % 2]);
            const V next = fnma(im, s, re * c);
            im = fma(re, s, im * c);
            re = next;
        }
        store(even + i, sum[0]);
        store(odd + i, sum[1]);
    }
    for (int i = 0; i < half; ++i) {
        x[n - 1 - i] = T(even[i] - odd[i]);
        x[i] = T(even[i] + odd[i]);
    }
}

template <class T> constexpr DctKernels<T> dctKernels() {
    return {fold<T>, unfold<T>, cosines<T>, spectrum<T>, shortForward<T>, shortInverse<T>, forwardSums<T>, inverseSums<T>};
}

}   // namespace
}   // namespace tevs::TEVS_LEVEL_NS
