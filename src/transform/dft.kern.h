// The kernels of transforms of any length, for the sources that make them in one precision each.
#pragma once

#include "transform/complex.kern.h"
#include "transform/dft.table.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// ---- DFTs in registers -----------------------------------------------------------------------------------------------------------------

// Cosines and sines of 2 pi k / P, k = 1 .. (P-1)/2.
template <int P> struct Turns;
template <> struct Turns<5> {
    static constexpr double cos[] = {0.309016994374947424102, -0.809016994374947424102};
    static constexpr double sin[] = {0.951056516295153572116, 0.587785252292473129169};
};
template <> struct Turns<7> {
    static constexpr double cos[] = {0.623489801858733530525, -0.222520933956314404289, -0.900968867902419126236};
    static constexpr double sin[] = {0.781831482468029808708, 0.974927912181823607018, 0.433883739117558120476};
};
template <> struct Turns<11> {
    static constexpr double cos[] = {0.841253532831181168862, 0.415415013001886425529, -0.142314838273285140444, -0.654860733945285064057,
                                     -0.95949297361449738989};
    static constexpr double sin[] = {0.540640817455597582108, 0.909631995354518371412, 0.989821441880932732376, 0.755749574354258283774,
                                     0.281732556841429697711};
};
template <> struct Turns<13> {
    static constexpr double cos[] = {0.8854560256532098959,   0.568064746731155802512,  0.120536680255323053349,
                                     -0.35460488704253562597, -0.748510748171101098635, -0.970941817426052027157};
    static constexpr double sin[] = {0.464723172043768545656, 0.82298386589365639458,  0.992708874098053992801,
                                     0.93501624268541482344,  0.663122658240795202377, 0.239315664287557767149};
};
template <int P> constexpr double turnCos(int k) { return k <= P / 2 ? Turns<P>::cos[k - 1] : Turns<P>::cos[P - k - 1]; }
template <int P> constexpr double turnSin(int k) { return k <= P / 2 ? Turns<P>::sin[k - 1] : -Turns<P>::sin[P - k - 1]; }

template <class V> TEVS_INLINE void dft(Cx<V> (&x)[3]) {
    const V half = same<V>(Element<V>(0.5)), s = same<V>(Element<V>(0.86602540378443864676));
    const auto t = x[1] + x[2], u = x[1] - x[2];
    const Cx<V> a = {fnma(half, t.re, x[0].re), fnma(half, t.im, x[0].im)};
    x[0] = x[0] + t;
    x[1] = {fma(s, u.im, a.re), fnma(s, u.re, a.im)};
    x[2] = {fnma(s, u.im, a.re), fma(s, u.re, a.im)};
}

// Of a prime: with t = x[j] + x[P-j] and u = x[j] - x[P-j],
//
//     X[k], X[P-k] = x[0] + sum over j of  t cos(2 pi j k / P)  -+  i sum over j of  u sin(2 pi j k / P)
template <int P, int K, class V> TEVS_INLINE void binsOfPrime(const Cx<V> (&x)[P], const Cx<V>* t, const Cx<V>* u, Cx<V>* y) {
    Cx<V> a = x[0], b;
    for (int j = 1; j <= P / 2; ++j) {
        const V c = same<V>(Element<V>(turnCos<P>(j * K % P))), s = same<V>(Element<V>(turnSin<P>(j * K % P)));
        a = {fma(c, t[j].re, a.re), fma(c, t[j].im, a.im)};
        b = j == 1 ? Cx<V>{s * u[j].re, s * u[j].im} : Cx<V>{fma(s, u[j].re, b.re), fma(s, u[j].im, b.im)};
    }
    y[K] = minusI(a, b);
    y[P - K] = plusI(a, b);
}
template <int P, class V, int... K> TEVS_INLINE void prime(Cx<V> (&x)[P], Lane<K...>) {
    Cx<V> t[P / 2 + 1], u[P / 2 + 1], y[P];
    for (int j = 1; j <= P / 2; ++j) {
        t[j] = x[j] + x[P - j];
        u[j] = x[j] - x[P - j];
    }
    y[0] = x[0];
    for (int j = 1; j <= P / 2; ++j) y[0] = y[0] + t[j];
    (binsOfPrime<P, K + 1>(x, t, u, y), ...);
    for (int j = 0; j < P; ++j) x[j] = y[j];
}
template <class V> TEVS_INLINE void dft(Cx<V> (&x)[5]) { prime(x, Iota<2>{}); }
template <class V> TEVS_INLINE void dft(Cx<V> (&x)[7]) { prime(x, Iota<3>{}); }
template <class V> TEVS_INLINE void dft(Cx<V> (&x)[11]) { prime(x, Iota<5>{}); }
template <class V> TEVS_INLINE void dft(Cx<V> (&x)[13]) { prime(x, Iota<6>{}); }

template <class V> TEVS_INLINE void dft(Cx<V> (&x)[9]) {
    constexpr double c1 = 0.766044443118978035202, s1 = 0.642787609686539326323, c2 = 0.173648177666930348852, s2 = 0.984807753012208059367;
    constexpr double c4 = -0.939692620785908384054, s4 = 0.342020143325668733044;
    Cx<V> y[3][3];
    for (int b = 0; b < 3; ++b) {
        Cx<V> t[3] = {x[b], x[b + 3], x[b + 6]};
        dft(t);
        for (int j = 0; j < 3; ++j) y[j][b] = t[j];
    }
    y[1][1] = mul(y[1][1], Element<V>(c1), Element<V>(-s1));
    y[1][2] = mul(y[1][2], Element<V>(c2), Element<V>(-s2));
    y[2][1] = mul(y[2][1], Element<V>(c2), Element<V>(-s2));
    y[2][2] = mul(y[2][2], Element<V>(c4), Element<V>(-s4));
    for (int j = 0; j < 3; ++j) {
        dft(y[j]);
        for (int l = 0; l < 3; ++l) x[j + 3 * l] = y[j][l];
    }
}

// Of coprime factors, without factors in between (I. J. Good, The Interaction Algorithm and Practical Fourier Analysis, 1958): n = B a + A b modulo A B on the way in, and on the
// way out k = a modulo A and k = b modulo B.
template <int A, int B, class V> TEVS_INLINE void coprime(Cx<V> (&x)[A * B]) {
    Cx<V> y[A][B];
    for (int b = 0; b < B; ++b) {
        Cx<V> t[A];
        for (int a = 0; a < A; ++a) t[a] = x[(B * a + A * b) % (A * B)];
        dft(t);
        for (int a = 0; a < A; ++a) y[a][b] = t[a];
    }
    for (int a = 0; a < A; ++a) dft(y[a]);
    for (int k = 0; k < A * B; ++k) x[k] = y[k % A][k % B];
}
template <class V> TEVS_INLINE void dft(Cx<V> (&x)[6]) { coprime<3, 2>(x); }
template <class V> TEVS_INLINE void dft(Cx<V> (&x)[10]) { coprime<5, 2>(x); }
template <class V> TEVS_INLINE void dft(Cx<V> (&x)[12]) { coprime<3, 4>(x); }
template <class V> TEVS_INLINE void dft(Cx<V> (&x)[14]) { coprime<7, 2>(x); }
template <class V> TEVS_INLINE void dft(Cx<V> (&x)[15]) { coprime<5, 3>(x); }

// ---- places ----------------------------------------------------------------------------------------------------------------------------

// Between passes values lie in two arrays. Runs of any length begin anywhere in them, so lanes are in natural order there.
template <int K, class T> TEVS_INLINE Cx<Vec<T, K>> inOrder(Pairs<const T> a, ptrdiff_t i) {
    const auto x = read<K>(a, i);
    return {reordered(x.re), reordered(x.im)};
}
template <int K, class T> TEVS_INLINE Cx<Vec<T, K>> inOrder(Parts<const T> a, ptrdiff_t i) { return {load<T, K>(a.re + i), load<T, K>(a.im + i)}; }
template <class T, class V> TEVS_INLINE void put(Parts<T> a, ptrdiff_t i, Cx<V> v) {
    store(a.re + i, v.re);
    store(a.im + i, v.im);
}

// A block from a place of one form.
template <int K, Form F, class T> TEVS_INLINE Cx<Vec<T, K>> take(Values<const T> a, ptrdiff_t i) {
    if constexpr (F == Form::Parts)
        return inOrder<K>(Parts<const T>{a.re, a.im}, i);
    else if constexpr (F == Form::Reals)
        return {load<T, K>(a.re + i), Vec<T, K>{}};
    else if constexpr (F == Form::Pairs)
        return inOrder<K>(Pairs<const T>{a.re}, i);
    else
        return swapped(inOrder<K>(Pairs<const T>{a.re}, i));
}
// r blocks to places `gap` apart from i on. Which form that is, is asked once for all of them. Lanes are in the order of a block.
template <int Most, class V, class T> TEVS_INLINE void give(Values<T> a, ptrdiff_t i, ptrdiff_t gap, int r, const Cx<V> (&x)[Most]) {
    if (a.form == Form::Pairs)
        for (int j = 0; j < r; ++j) write(Pairs<T>{a.re}, i + gap * j, x[j]);
    else if (a.form == Form::SwappedPairs)
        for (int j = 0; j < r; ++j) write(Pairs<T>{a.re}, i + gap * j, swapped(x[j]));
    else
        for (int j = 0; j < r; ++j) write(Parts<T>{a.re, a.im}, i + gap * j, x[j]);
}
template <class T> TEVS_INLINE void giveOne(Values<T> a, ptrdiff_t i, T re, T im) {
    const Cx<Vec<T, 1>> x[] = {{Vec<T, 1>{re}, Vec<T, 1>{im}}};
    give(a, i, 0, 1, x);
}

// ---- passes ----------------------------------------------------------------------------------------------------------------------------

// Radix R, or the prime that the pass names where R is 0.
template <int R, class V, class T> TEVS_INLINE void butterfly(Cx<V> (&x)[R], const DftPass<T>&) { dft(x); }
template <int, class V, class T> TEVS_INLINE void butterfly(Cx<V> (&x)[kMostPrime], const DftPass<T>& a) {
    constexpr int kMost = kMostPrime / 2 + 1;
    const int r = a.radix, h = r / 2;
    Cx<V> t[kMost], u[kMost];
    const Cx<V> first = x[0];
    for (int j = 1; j <= h; ++j) {
        t[j] = x[j] + x[r - j];
        u[j] = x[j] - x[r - j];
        x[0] = x[0] + t[j];
    }
    const T* c = a.prime;
    for (int k = 1; k <= h; k += 2, c += 4 * h) {   // two at a time: each term is loaded once for both
        Cx<V> p[2] = {first, first}, q[2] = {};
        for (int j = 1; j <= h; ++j)
            for (int i = 0; i < 2; ++i) {
                const T* const turn = c + 2 * (j - 1) + 2 * h * i;
                const V cos = same<V>(turn[0]), sin = same<V>(turn[1]);
                p[i] = {fma(cos, t[j].re, p[i].re), fma(cos, t[j].im, p[i].im)};
                q[i] = {fma(sin, u[j].re, q[i].re), fma(sin, u[j].im, q[i].im)};
            }
        for (int i = 0; i < 2 && k + i <= h; ++i) {
            x[k + i] = minusI(p[i], q[i]);
            x[r - k - i] = plusI(p[i], q[i]);
        }
    }
}

// One p of a pass. Where a run is no multiple of K, its last K values are not all new.
template <int K, int R, Form F, bool Twiddled, class T>
TEVS_INLINE void columns(const DftPass<T>& a, Values<const T> in, ptrdiff_t from, Parts<T> out, ptrdiff_t to, const T* __restrict w) {
    const int r = R ? R : a.radix;
    const ptrdiff_t s = a.stride, gap = s * a.m;
    for (ptrdiff_t q = 0;;) {
        Cx<Vec<T, K>> x[R ? R : kMostPrime];
        for (int j = 0; j < r; ++j) x[j] = take<K, F>(in, from + q + gap * j);
        butterfly<R>(x, a);
        put(out, to + q, x[0]);
        for (int j = 1; j < r; ++j) put(out, to + q + s * j, Twiddled ? mul(x[j], w[2 * j - 2], w[2 * j - 1]) : x[j]);
        if (q == s - K) break;
        q = q + 2 * K <= s ? q + K : s - K;
    }
}

template <int K, int R, Form F, class T> __attribute__((noinline)) void pass(const DftPass<T>& a, const Values<const T>& from, Parts<T> dst) {
    const Values<const T> src = from;
    const int r = R ? R : a.radix;
    const T* w = a.factors;
    columns<K, R, F, false>(a, src, 0, dst, 0, w);
    for (int p = 1; p < a.m; ++p, w += 2 * (r - 1)) columns<K, R, F, true>(a, src, a.stride * p, dst, a.stride * r * p, w);
}

// ---- rows --------------------------------------------------------------------------------------------------------------------------------

// Columns c .. c + K - 1 of the rows at `row`, a vector each. Lanes go over the rows in the order of a block.
template <int K, class T> TEVS_INLINE void turned(const ptrdiff_t (&row)[K], Parts<const T> src, int c, Cx<Vec<T, K>>* x) {
    Cx<Vec<T, K>> y[K];
    for (int i = 0; i < K; ++i) y[i] = inOrder<K>(src, row[i] + c);
    transpose<K>(y);
    for (int i = 0; i < K; ++i) x[i] = y[laneAt(K, i, kGroup<Vec<T, K>>)];
}
template <class T, int K, int... I> TEVS_INLINE Vec<T, K> gathered(const T* p, const ptrdiff_t (&row)[K], Lane<I...>) {
    return Vec<T, K>{p[row[laneAt(K, I, kGroup<Vec<T, K>>)]]...};
}

template <int K, int L, class T> __attribute__((noinline)) void rows(const DftRows<T>& a, Parts<const T> src, const Values<T>& to, T scale) {
    const Values<T> dst = to;
    using Block = Cx<Vec<T, K>>;
    const int m = a.rows;
    const T* w = a.factors;
    for (int first = 0; first < m; first += K) {
        const int k = first + K <= m ? first : m > K ? m - K : 0;
        ptrdiff_t row[K];
        for (int i = 0; i < K; ++i) row[i] = ptrdiff_t{L} * (k + i < m ? k + i : m - 1);
        Block x[L];
        for (int c = 0; c + K <= L; c += K) turned<K>(row, src, c, x + c);
        if constexpr (L % K == 1) {
            x[L - 1] = {gathered<T>(src.re + L - 1, row, Iota<K>{}), gathered<T>(src.im + L - 1, row, Iota<K>{})};
        } else if constexpr (L % K > 1) {
            Block y[K];
            turned<K>(row, src, L - K, y);
            for (int i = L / K * K; i < L; ++i) x[i] = y[i - (L - K)];
        }
        for (int l = 1; l < L; ++l, w += 2 * K) x[l] = mul(x[l], loadBlock<K>(w));
        dft(x);
        for (int j = 0; j < L; ++j) x[j] = times(x[j], scale);
        if (m >= K) {
            give(dst, k, m, L, x);
            continue;
        }
        // What a row writes behind its values is where the next one's go.
        const int whole = (m * L - K) / m + 1;
        give(dst, 0, m, whole, x);
        for (int j = whole; j < L; ++j) {
            T last[2 * K];
            write(Parts<T>{last, last + K}, 0, x[j]);
            for (int i = 0; i < m; ++i) giveOne(dst, ptrdiff_t{m} * j + i, last[i], last[i + K]);
        }
    }
}

// Rows of a prime of values, by symmetric sums, with vectors along the bins.
template <int K, class T> __attribute__((noinline)) void primeRows(const DftRows<T>& a, Parts<const T> src, const Values<T>& to, T scale) {
    const Values<T> dst = to;
    constexpr int kMost = kMostPrime / 2;
    using V = Vec<T, K>;
    const int r = a.columns, h = r / 2;
    const T* w = a.factors;
    for (int k = 0; k < a.rows; ++k) {
        Cx<Vec<T, 1>> x[kMostPrime], t[kMost], u[kMost];
        for (int l = 0; l < r; ++l) x[l] = inOrder<1>(src, ptrdiff_t{r} * k + l);
        if (k) {
            for (int l = 1; l < r; ++l) x[l] = mul(x[l], w[2 * l - 2], w[2 * l - 1]);
            w += 2 * (r - 1);
        }
        auto sum = x[0];
        for (int j = 0; j < h; ++j) {
            t[j] = x[j + 1] + x[r - 1 - j];
            u[j] = x[j + 1] - x[r - 1 - j];
            sum = sum + t[j];
        }
        sum = times(sum, scale);
        giveOne(dst, k, sum.re[0], sum.im[0]);
        const T* turn = a.prime;
        for (int first = 1; first <= h; first += K) {
            Cx<V> p = {same<V>(x[0].re[0]), same<V>(x[0].im[0])}, q = {};
            for (int j = 0; j < h; ++j, turn += 2 * K) {
                const V cos = load<T, K>(turn), sin = load<T, K>(turn + K);
                p = {fma(cos, same<V>(t[j].re[0]), p.re), fma(cos, same<V>(t[j].im[0]), p.im)};
                q = {fma(sin, same<V>(u[j].re[0]), q.re), fma(sin, same<V>(u[j].im[0]), q.im)};
            }
            T low[2 * K], high[2 * K];
            put(Parts<T>{low, low + K}, 0, times(minusI(p, q), scale));
            put(Parts<T>{high, high + K}, 0, times(plusI(p, q), scale));
            for (int i = 0; i < K && first + i <= h; ++i) {
                giveOne(dst, k + ptrdiff_t{a.rows} * (first + i), low[i], low[i + K]);
                giveOne(dst, k + ptrdiff_t{a.rows} * (r - first - i), high[i], high[i + K]);
            }
        }
    }
}

// ---- whole transforms in registers -----------------------------------------------------------------------------------------------------

// In the first lane of vectors: from arrays of scalars the compiler would copy through memory. Where things lie is in pointers and steps, so that there is one way through.
template <int N, class T> void whole(const Values<const T>& src, const Values<T>& dst, T scale) {
    using V = Vec<T, 16 / int(sizeof(T))>;
    static constexpr T kZero = 0;
    const bool apart = src.form == Form::Parts || src.form == Form::Reals, swapIn = src.form == Form::SwappedPairs;
    const T* const re = src.re + swapIn;
    const T* const im = src.form == Form::Parts ? src.im : src.form == Form::Reals ? &kZero : src.re + !swapIn;
    const ptrdiff_t step = apart ? 1 : 2, imStep = src.form == Form::Reals ? 0 : step;
    Cx<V> x[N];
    for (int n = 0; n < N; ++n) x[n] = {V{re[step * n]}, V{im[imStep * n]}};
    dft(x);
    const bool swapOut = dst.form == Form::SwappedPairs;
    T* const outRe = dst.re + swapOut;
    T* const outIm = dst.form == Form::Parts ? dst.im : dst.re + !swapOut;
    const ptrdiff_t gap = dst.form == Form::Parts ? 1 : 2;
    for (int n = 0; n < N; ++n) {
        outRe[gap * n] = (x[n].re * same<V>(scale))[0];
        outIm[gap * n] = (x[n].im * same<V>(scale))[0];
    }
}

// ---- spectra of reals --------------------------------------------------------------------------------------------------------------------

// For 0 < k < n - k and, of an even n, k = n - k. The last register of values may overlap the one before: out is not in.
template <bool Inverse, class T> void recombine(const T* in, T* out, int n, const T* w) {
    constexpr int kMost = kPairsAtOnce<T>, kHalf = kMost * int(2 * sizeof(T)) > 32 ? kMost / 2 : kMost;
    const int end = (n + 1) / 2;
    const auto by = [=]<int K>(At<K>) TEVS_HERE {
        for (int k = 1; k < end; k += K) {
            const int from = k + K <= end ? k : end - K;
            recombined<Inverse, K>(in, out, from, n - from - K + 1, w + 2 * from);
        }
    };
    if (end > kMost) {
        by(At<kMost>{});
    } else if (end > kHalf) {
        by(At<kHalf>{});
    } else {
        for (int k = 1; k < end; ++k) {
            const T *const a = in + 2 * k, *const b = in + 2 * (n - k);
            T *const x = out + 2 * k, *const y = out + 2 * (n - k);
            const T re = a[0] - b[0], im = a[1] + b[1], c = Inverse ? -w[2 * k] : w[2 * k], s = w[2 * k + 1];
            const T eRe = a[0] + b[0], eIm = a[1] - b[1], vRe = re * s + im * c, vIm = im * s - re * c;
            x[0] = eRe + vRe;
            x[1] = eIm + vIm;
            y[0] = eRe - vRe;
            y[1] = vIm - eIm;
        }
    }
    if (n % 2 == 0) {
        out[n] = in[n] + in[n];
        out[n + 1] = -(in[n + 1] + in[n + 1]);
    }
}

// ---- the table ---------------------------------------------------------------------------------------------------------------------------

template <class T, int K, Form F, int R> constexpr typename DftKernels<T>::Pass* passOf() {
    if constexpr (isPassRadix(R) && (F != Form::Reals || R % 2 == 1 || R == 0))
        return pass<K, R, F, T>;
    else
        return nullptr;
}
template <class T, int K, int R> constexpr typename DftKernels<T>::Rows* rowsOf() {
    if constexpr (R == 0)
        return primeRows<K, T>;
    else if constexpr (R < K || R < 2)
        return nullptr;
    else
        return rows<K, R, T>;
}
template <class T, int R> constexpr typename DftKernels<T>::Whole* wholeOf() {
    if constexpr (R < 2)
        return nullptr;
    else
        return whole<R, T>;
}
template <class T, int K, int... R> constexpr typename DftKernels<T>::Width width(Lane<R...>) {
    return {K,
            {{passOf<T, K, Form::Parts, R>()...},
             {passOf<T, K, Form::Pairs, R>()...},
             {passOf<T, K, Form::SwappedPairs, R>()...},
             {passOf<T, K, Form::Reals, R>()...}},
            {rowsOf<T, K, R>()...}};
}
template <class T, int... R> constexpr DftKernels<T> dftKernels(Lane<R...> radices) {
    constexpr int kWide = (kRegisterBytes >= 32 ? 32 : 16) / int(sizeof(T)), kNarrow = 16 / int(sizeof(T));
    return {kWide > kNarrow ? 2 : 1, {width<T, kWide>(radices), width<T, kNarrow>(radices)}, {wholeOf<T, R>()...}, recombine<false, T>, recombine<true, T>};
}
template <class T> constexpr DftKernels<T> dftKernels() { return dftKernels<T>(Iota<kMostRadix + 1>{}); }

}   // namespace
}   // namespace tevs::TEVS_LEVEL_NS
