// The kernels of transforms of interleaved values, for the sources that make them in one precision each.
#pragma once

#include "transform/complex.kern.h"
#include "transform/dft_pairs.table.h"
#include "transform/turns.kern.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// ---- DFTs in registers -----------------------------------------------------------------------------------------------------------------

// s in the even lanes, -s in the odd ones.
template <class V, int... I> TEVS_INLINE V alternatingOf(Element<V> s, Lane<I...>) { return V{(I % 2 ? -s : s)...}; }
template <class V> TEVS_INLINE V alternating(double s) { return alternatingOf<V>(Element<V>(s), Iota<kCount<V>>{}); }

// a - i b and a + i b: -i b is b with its parts exchanged and the imaginary one negated.
#ifdef __FMA__
template <class V> TEVS_INLINE V minusI(V a, V b) { return fma(alternating<V>(1), swapPairs(b), a); }
template <class V> TEVS_INLINE V plusI(V a, V b) { return fnma(alternating<V>(1), swapPairs(b), a); }
#else
template <class V> TEVS_INLINE V minusI(V a, V b) { return a + conjugate(swapPairs(b)); }
template <class V> TEVS_INLINE V plusI(V a, V b) { return a - conjugate(swapPairs(b)); }
#endif
// x (c + i s).
template <class V> TEVS_INLINE V turned(V x, double c, double s) { return fma(alternating<V>(-s), swapPairs(x), x * same<V>(Element<V>(c))); }

template <class V> TEVS_INLINE void dft(V (&x)[2]) {
    const V sum = x[0] + x[1], difference = x[0] - x[1];
    x[0] = sum;
    x[1] = difference;
}
template <class V> TEVS_INLINE void dft(V (&x)[3]) {
    const V t = x[1] + x[2], u = swapPairs(x[1] - x[2]), a = fnma(same<V>(Element<V>(0.5)), t, x[0]), s = alternating<V>(0.86602540378443864676);
    x[0] = x[0] + t;
    x[1] = fma(s, u, a);
    x[2] = fnma(s, u, a);
}
template <class V> TEVS_INLINE void dft(V (&x)[4]) {
    const V a = x[0] + x[2], b = x[0] - x[2], c = x[1] + x[3], d = x[1] - x[3];
    x[0] = a + c;
    x[2] = a - c;
    x[1] = minusI(b, d);
    x[3] = plusI(b, d);
}

// Of a prime: with t = x[j] + x[P-j] and u = x[j] - x[P-j],
//
//     X[k], X[P-k] = x[0] + sum over j of  t cos(2 pi j k / P)  -+  i sum over j of  u sin(2 pi j k / P)
template <int P, int K, class V> TEVS_INLINE void binsOfPrime(const V (&x)[P], const V* t, const V* u, V* y) {
    V a = x[0], b;
    for (int j = 1; j <= P / 2; ++j) {
        const V c = same<V>(Element<V>(kTurns<P>.cos[j * K % P])), s = alternating<V>(kTurns<P>.sin[j * K % P]);
        a = fma(c, t[j], a);
        b = j == 1 ? s * u[j] : fma(s, u[j], b);
    }
    y[K] = a + b;
    y[P - K] = a - b;
}
template <int P, class V, int... K> TEVS_INLINE void prime(V (&x)[P], Lane<K...>) {
    V t[P / 2 + 1], u[P / 2 + 1], y[P];
    for (int j = 1; j <= P / 2; ++j) {
        t[j] = x[j] + x[P - j];
        u[j] = swapPairs(x[j] - x[P - j]);
    }
    y[0] = x[0];
    for (int j = 1; j <= P / 2; ++j) y[0] = y[0] + t[j];
    (binsOfPrime<P, K + 1>(x, t, u, y), ...);
    for (int j = 0; j < P; ++j) x[j] = y[j];
}
template <class V> TEVS_INLINE void dft(V (&x)[5]) { prime(x, Iota<2>{}); }
template <class V> TEVS_INLINE void dft(V (&x)[7]) { prime(x, Iota<3>{}); }
template <class V> TEVS_INLINE void dft(V (&x)[11]) { prime(x, Iota<5>{}); }
template <class V> TEVS_INLINE void dft(V (&x)[13]) { prime(x, Iota<6>{}); }

// Radix 2 by 4. The factor sqrt(1/2) of w_8 and w_8^3 is applied where their sum and difference join the rest.
template <class V> TEVS_INLINE void dft(V (&x)[8]) {
    const V h = same<V>(Element<V>(kSqrtHalf));
    V even[4] = {x[0] + x[4], x[1] + x[5], x[2] + x[6], x[3] + x[7]};
    const V d0 = x[0] - x[4], d1 = x[1] - x[5], d2 = x[2] - x[6], d3 = x[3] - x[7];
    const V p = minusI(d0, d2), q = plusI(d0, d2), sum = d1 + d3, difference = d1 - d3, s = minusI(difference, sum), t = plusI(difference, sum);
    dft(even);
    x[0] = even[0];
    x[2] = even[1];
    x[4] = even[2];
    x[6] = even[3];
    x[1] = fma(h, s, p);
    x[5] = fnma(h, s, p);
    x[3] = fnma(h, t, q);
    x[7] = fma(h, t, q);
}

// R by R, with factors w^(j b) in between.
template <int R, int N, class V, class Turn> TEVS_INLINE void square(V (&x)[N], Turn turn) {
    V y[R][R];
    for (int b = 0; b < R; ++b) {
        V t[R];
        for (int j = 0; j < R; ++j) t[j] = x[b + R * j];
        dft(t);
        for (int j = 0; j < R; ++j) y[j][b] = t[j];
    }
    turn(y);
    for (int j = 0; j < R; ++j) {
        dft(y[j]);
        for (int l = 0; l < R; ++l) x[j + R * l] = y[j][l];
    }
}
template <class V> TEVS_INLINE void dft(V (&x)[9]) {
    square<3>(x, [](V(&y)[3][3]) TEVS_HERE {
        constexpr double c1 = 0.766044443118978035202, s1 = 0.642787609686539326323, c2 = 0.173648177666930348852, s2 = 0.984807753012208059367;
        constexpr double c4 = -0.939692620785908384054, s4 = 0.342020143325668733044;
        y[1][1] = turned(y[1][1], c1, -s1);
        y[1][2] = turned(y[1][2], c2, -s2);
        y[2][1] = turned(y[2][1], c2, -s2);
        y[2][2] = turned(y[2][2], c4, -s4);
    });
}
template <class V> TEVS_INLINE void dft(V (&x)[16]) {
    square<4>(x, [](V(&y)[4][4]) TEVS_HERE {
        constexpr double c = kCos16, s = kSin16, h = kSqrtHalf;
        const V zero = {};
        y[1][1] = turned(y[1][1], c, -s);
        y[1][2] = turned(y[1][2], h, -h);
        y[1][3] = turned(y[1][3], s, -c);
        y[2][1] = turned(y[2][1], h, -h);
        y[2][2] = minusI(zero, y[2][2]);
        y[2][3] = turned(y[2][3], -h, -h);
        y[3][1] = turned(y[3][1], s, -c);
        y[3][2] = turned(y[3][2], -h, -h);
        y[3][3] = turned(y[3][3], -c, s);
    });
}

// Of coprime factors, without factors in between (I. J. Good, The Interaction Algorithm and Practical Fourier Analysis, 1958): n = B a + A b modulo A B on the way in, and on the
// way out k = a modulo A and k = b modulo B.
template <int A, int B, class V> TEVS_INLINE void coprime(V (&x)[A * B]) {
    V y[A][B];
    for (int b = 0; b < B; ++b) {
        V t[A];
        for (int a = 0; a < A; ++a) t[a] = x[(B * a + A * b) % (A * B)];
        dft(t);
        for (int a = 0; a < A; ++a) y[a][b] = t[a];
    }
    for (int a = 0; a < A; ++a) dft(y[a]);
    for (int k = 0; k < A * B; ++k) x[k] = y[k % A][k % B];
}
template <class V> TEVS_INLINE void dft(V (&x)[6]) { coprime<3, 2>(x); }
template <class V> TEVS_INLINE void dft(V (&x)[10]) { coprime<5, 2>(x); }
template <class V> TEVS_INLINE void dft(V (&x)[12]) { coprime<3, 4>(x); }
template <class V> TEVS_INLINE void dft(V (&x)[14]) { coprime<7, 2>(x); }
template <class V> TEVS_INLINE void dft(V (&x)[15]) { coprime<5, 3>(x); }

// ---- whole transforms in registers -----------------------------------------------------------------------------------------------------

// One value to a register, of floats in its lower half.
TEVS_INLINE Vec<float, 4> readOne(const float* p) { return (Vec<float, 4>)_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)); }
TEVS_INLINE Vec<double, 2> readOne(const double* p) { return load<double, 2>(p); }
TEVS_INLINE void writeOne(float* p, Vec<float, 4> v) { _mm_storel_pi(reinterpret_cast<__m64*>(p), (__m128)v); }
TEVS_INLINE void writeOne(double* p, Vec<double, 2> v) { store(p, v); }

template <int N, bool Inverse, class T> void whole(const T* src, T* dst, T scale) {
    using V = Vec<T, 16 / int(sizeof(T))>;
    V x[N];
    for (int n = 0; n < N; ++n) x[n] = readOne(src + 2 * (Inverse ? (N - n) % N : n));
    dft(x);
    if (scale != 1)
        for (int n = 0; n < N; ++n) x[n] = x[n] * same<V>(scale);
    for (int n = 0; n < N; ++n) writeOne(dst + 2 * n, x[n]);
}

// ---- spectra of reals, in registers ------------------------------------------------------------------------------------------------------

template <class T> TEVS_INLINE auto pairOf(T a, T b) { return Vec<T, 16 / int(sizeof(T))>{a, b}; }

// N odd, by definition over t = x[j] + x[N-j] and u = x[j] - x[N-j]: X[k] = x[0] + sum over j = 1 .. (N-1)/2 of  t cos(2 pi j k / N) - i u sin(2 pi j k / N)
template <int N, class T> void oddSpectrum(const T* src, T* first, T*, T* bins, T scale) {
    using V = Vec<T, 16 / int(sizeof(T))>;
    constexpr int H = N / 2;
    V x[H + 1], y[H + 1];
    const V start = pairOf<T>(src[0], 0);
    T sum = src[0];
    for (int j = 1; j <= H; ++j) {
        x[j] = same<V>(src[j]) + conjugate(same<V>(src[N - j]));   // t and u
        sum += x[j][0];
    }
    for (int k = 1; k <= H; ++k) {
        y[k] = start;
        for (int j = 1; j <= H; ++j) y[k] = fma(x[j], V{T(kTurns<N>.cos[j * k % N]), T(-kTurns<N>.sin[j * k % N])}, y[k]);
    }
    *first = sum * scale;
    for (int k = 1; k <= H; ++k) writeOne(bins + 2 * (k - 1), y[k] * same<V>(scale));
}
template <int N, class T> void oddReals(const T* bins, T first, T, T* dst, T scale) {
    using V = Vec<T, 16 / int(sizeof(T))>;
    constexpr int H = N / 2;
    V x[H + 1], y[H + 1], sum = {};
    const V start = pairOf<T>(first, 0);
    for (int k = 1; k <= H; ++k) {
        x[k] = readOne(bins + 2 * (k - 1));
        sum = sum + x[k];
    }
    for (int j = 1; j <= H; ++j) {
        y[j] = start;
        for (int k = 1; k <= H; ++k) y[j] = fma(x[k], V{T(2 * kTurns<N>.cos[j * k % N]), T(2 * kTurns<N>.sin[j * k % N])}, y[j]);
    }
    dst[0] = (first + (sum[0] + sum[0])) * scale;
    for (int j = 1; j <= H; ++j) {
        const V both = subAdd(evensTwice(y[j]), oddsTwice(y[j])) * same<V>(scale);
        dst[j] = both[0];
        dst[N - j] = both[1];
    }
}

// N = 2n: from the transform z of pairs, X[k] = E + W O and X[n-k] = conj(E - W O) with E = (z[k] + conj z[n-k]) / 2, O = (z[k] - conj z[n-k]) / 2 and W = -i exp(-2 pi i k / N).
template <int N, class T> void evenSpectrum(const T* src, T* first, T* last, T* bins, T scale) {
    using V = Vec<T, 16 / int(sizeof(T))>;
    constexpr int n = N / 2;
    V z[n], x[n + 1];
    for (int j = 0; j < n; ++j) z[j] = readOne(src + 2 * j);
    dft(z);
    const V half = same<V>(T(0.5) * scale);
    for (int k = 1; k <= n / 2; ++k) {
        const V m = conjugate(z[n - k]), e = z[k] + m, o = z[k] - m, v = turned(o, -kTurns<N>.sin[k], -kTurns<N>.cos[k]);
        x[k] = (e + v) * half;
        x[n - k] = conjugate(e - v) * half;
    }
    const T a = z[0][0], b = z[0][1];
    *first = (a + b) * scale;
    *last = (a - b) * scale;
    for (int k = 1; k < n; ++k) writeOne(bins + 2 * (k - 1), x[k]);
}
// And back: z[k] = E + conj(W) O and z[n-k] = conj(E - conj(W) O), with E = X[k] + conj X[n-k] and O = X[k] - conj X[n-k].
template <int N, class T> void evenReals(const T* bins, T first, T last, T* dst, T scale) {
    using V = Vec<T, 16 / int(sizeof(T))>;
    constexpr int n = N / 2;
    V x[n], z[n];
    for (int k = 1; k < n; ++k) x[k] = readOne(bins + 2 * (k - 1));
    z[0] = pairOf(first + last, first - last);
    for (int k = 1; k <= n / 2; ++k) {   // places of the inverse: k and n - k exchanged
        const V m = conjugate(x[n - k]), e = x[k] + m, o = x[k] - m, v = turned(o, -kTurns<N>.sin[k], kTurns<N>.cos[k]);
        z[n - k] = e + v;
        z[k] = conjugate(e - v);
    }
    dft(z);
    for (int j = 0; j < n; ++j) writeOne(dst + 2 * j, z[j] * same<V>(scale));
}

// ---- two steps -------------------------------------------------------------------------------------------------------------------------

constexpr int roundedUp(int n, int k) { return (n + k - 1) / k * k; }

// The values of N rows from `first` on, of the inverse in the order 0, N - 1, .. 1.
template <int K, int N, class T> TEVS_INLINE void readRows(const T* first, ptrdiff_t pitch, bool inverse, Vec<T, 2 * K> (&x)[N]) {
    const T* const rest = inverse ? first + N * pitch : first;
    const ptrdiff_t gap = inverse ? -pitch : pitch;
    x[0] = load<T, 2 * K>(first);
    for (int n = 1; n < N; ++n) x[n] = load<T, 2 * K>(rest + gap * n);
}

template <int K, int A, class T> __attribute__((noinline)) void columns(const PairSteps<T>& steps, const T* src, T* y, bool inverse) {
    using V = Vec<T, 2 * K>;
    constexpr int kPitch = 2 * roundedUp(A, K);
    const ptrdiff_t columns = steps.b;
    const T* __restrict w = steps.factors;
    for (ptrdiff_t b = 0;; w += 4 * K * (A - 1)) {
        V x[A];
        readRows<K>(src + 2 * b, 2 * columns, inverse, x);
        dft(x);
        if (inverse)
            for (int j = 1; j < A; ++j) x[j] = fnma(load<T, 2 * K>(w + 4 * K * (j - 1) + 2 * K), swapPairs(x[j]), x[j] * load<T, 2 * K>(w + 4 * K * (j - 1)));
        else
            for (int j = 1; j < A; ++j) x[j] = fma(load<T, 2 * K>(w + 4 * K * (j - 1) + 2 * K), swapPairs(x[j]), x[j] * load<T, 2 * K>(w + 4 * K * (j - 1)));
        for (int j = 0; j < A; j += K) {
            V t[K];
            for (int i = 0; i < K; ++i) t[i] = x[j + i < A ? j + i : A - 1];
            turnUnits<2>(t);
            for (int i = 0; i < K; ++i) store(y + kPitch * (b + i) + 2 * j, t[i]);
        }
        if (b == columns - K) break;
        b = b + 2 * K <= columns ? b + K : columns - K;
    }
}

// The first `count` of the values in v, fewer than all.
template <class T, class V> TEVS_INLINE void storeFirst(T* p, V v, int count) {
#if TEVS_LEVEL >= 3
    const auto mask = uint32_t(1 << 2 * count) - 1;
    if constexpr (sizeof(V) == 64 && sizeof(T) == 8) return _mm512_mask_storeu_pd(p, __mmask8(mask), (__m512d)v);
    if constexpr (sizeof(V) == 64 && sizeof(T) == 4) return _mm512_mask_storeu_ps(p, __mmask16(mask), (__m512)v);
#endif
    if constexpr (sizeof(V) == 32) {
        auto half = low(v);
        if (2 * int(sizeof(T)) * count >= 16) {
            store(p, half);
            p += kCount<V> / 2;
            half = high(v);
        }
        if constexpr (sizeof(T) == 4)
            if (count % 2) writeOne(p, half);
    }
    if constexpr (sizeof(V) == 16 && sizeof(T) == 4) writeOne(p, v);
}

// The two numbers at p in all pairs of lanes.
template <class V, int... I> TEVS_INLINE V everyPair(const float* p, Lane<I...>) {
    const double both = loadAs<double>(p);
    return (V)Vec<double, sizeof(V) / 8>{((void)I, both)...};
}
template <class V, class L> TEVS_INLINE V everyPair(const double* p, L) {
#if TEVS_LEVEL >= 3
    if constexpr (sizeof(V) == 64) return (V)_mm512_maskz_broadcast_f64x2(0xff, _mm_loadu_pd(p));
#endif
#if TEVS_REGISTER_BYTES >= 32
    if constexpr (sizeof(V) == 32) return (V)_mm256_broadcast_pd(reinterpret_cast<const __m128d*>(p));
#endif
    if constexpr (sizeof(V) == 16) return load<double, 2>(p);
}
template <class V, class T> TEVS_INLINE V everyPair(const T* p) { return everyPair<V>(p, Iota<sizeof(V) / 8>{}); }

template <int K, int R, class T> __attribute__((noinline)) void pass(const PairPass<T>& pass, int a, T* y, bool inverse) {
    using V = Vec<T, 2 * K>;
    const ptrdiff_t pitch = 2 * a, gap = pitch * pass.rest;
    for (int run = 0; run < pass.runs; ++run, y += gap * R) {
        const T* __restrict w = pass.factors;
        for (ptrdiff_t l = 0; l < pass.rest; ++l) {
            if (l > 1) w += 4 * (R - 1);
            for (ptrdiff_t k = 0; k < pitch; k += 2 * K) {
                T* const at = y + pitch * l + k;
                V x[R];
                readRows<K>(at, gap, inverse, x);
                dft(x);
                if (l && inverse)
                    for (int j = 1; j < R; ++j) x[j] = fnma(everyPair<V>(w + 4 * j - 2), swapPairs(x[j]), x[j] * same<V>(w[4 * j - 4]));
                else if (l)
                    for (int j = 1; j < R; ++j) x[j] = fma(everyPair<V>(w + 4 * j - 2), swapPairs(x[j]), x[j] * same<V>(w[4 * j - 4]));
                for (int j = 0; j < R; ++j) store(at + gap * j, x[j]);
            }
        }
    }
}

template <int K, int B, class T> __attribute__((noinline)) void rows(const PairSteps<T>& steps, const T* y, T* dst, T scale, bool inverse) {
    using V = Vec<T, 2 * K>;
    const ptrdiff_t rows = steps.a, pitch = (rows + K - 1) / K * (2 * K), gap = 2 * rows * steps.runs;
    for (int run = 0; run < steps.runs; ++run, y += pitch * B) {
        T* const first = dst + (steps.runs > 1 ? 2 * rows * steps.place[run] : 0);
        for (ptrdiff_t k = 0; k < rows; k += K) {
            V x[B];
            readRows<K>(y + 2 * k, pitch, inverse, x);
            dft(x);
            if (scale != 1)
                for (int j = 0; j < B; ++j) x[j] = x[j] * same<V>(scale);
            T* const to = first + 2 * k;
            if (k + K <= rows)
                for (int j = 0; j < B; ++j) store(to + gap * j, x[j]);
            else
                for (int j = 0; j < B; ++j) storeFirst(to + gap * j, x[j], int(rows - k));
        }
    }
}

// ---- the table ---------------------------------------------------------------------------------------------------------------------------

template <class T, int K, int R> constexpr typename DftPairKernels<T>::Columns* columnsOf() {
    if constexpr (R < 2)
        return nullptr;
    else
        return columns<K, R, T>;
}
template <class T, int K, int R> constexpr typename DftPairKernels<T>::Pass* passOf() {
    if constexpr (R < 2)
        return nullptr;
    else
        return pass<K, R, T>;
}
template <class T, int K, int R> constexpr typename DftPairKernels<T>::Rows* rowsOf() {
    if constexpr (R < 2)
        return nullptr;
    else
        return rows<K, R, T>;
}
template <class T, bool Inverse, int N> constexpr typename DftPairKernels<T>::Whole* wholeOf() {
    if constexpr (N < 2)
        return nullptr;
    else
        return whole<N, Inverse, T>;
}
template <int N, class T> constexpr void setReal(DftPairKernels<T>& kernels) {
    if constexpr (N < 3 || (N & (N - 1)) == 0) {
        return;
    } else if constexpr (N % 2 == 0) {
        kernels.spectrum[N] = evenSpectrum<N, T>;
        kernels.reals[N] = evenReals<N, T>;
    } else if constexpr (N <= kMostOdd) {
        kernels.spectrum[N] = oddSpectrum<N, T>;
        kernels.reals[N] = oddReals<N, T>;
    }
}
template <class T, int... N> constexpr void setReals(DftPairKernels<T>& kernels, Lane<N...>) { (setReal<N>(kernels), ...); }
template <class T, int K, int... R> constexpr typename DftPairKernels<T>::Width width(Lane<R...>) {
    return {K, {columnsOf<T, K, R>()...}, {passOf<T, K, R>()...}, {rowsOf<T, K, R>()...}};
}
template <class T, int... R> constexpr DftPairKernels<T> dftPairKernels(Lane<R...> radices) {
    constexpr int kBytes = 2 * int(sizeof(T));
    DftPairKernels<T> kernels = {
#if TEVS_LEVEL >= 3
        3,
        {width<T, 16 / kBytes>(radices), width<T, 32 / kBytes>(radices), width<T, 64 / kBytes>(radices)},
#elif TEVS_REGISTER_BYTES >= 32
        2,
        {width<T, 16 / kBytes>(radices), width<T, 32 / kBytes>(radices)},
#else
        1,
        {width<T, 16 / kBytes>(radices)},
#endif
        {wholeOf<T, false, R>()...},
        {wholeOf<T, true, R>()...},
        {},
        {}
    };
    setReals<T>(kernels, Iota<2 * kMostAtOnce + 1>{});
    return kernels;
}
template <class T> constexpr DftPairKernels<T> dftPairKernels() { return dftPairKernels<T>(Iota<kMostAtOnce + 1>{}); }

}   // namespace
}   // namespace tevs::TEVS_LEVEL_NS
