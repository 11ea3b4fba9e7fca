#include "transform/complex.kern.h"
#include "transform/fft.table.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// Complex values in a block: 256 bits at level 3 too. Its 32 registers are what radix 8 gains by; 512-bit vectors measured no faster.
constexpr int kBlock = kRegisterBytes >= 32 ? 8 : 4;

// ---- passes -------------------------------------------------------------------------------------------------------------------------

// A pass is a function of its own with its sizes constant: strides then fold into the addresses. With sizes in registers, or all passes inlined
// into one function, register allocation suffers and a transform of order 9 takes 15 % longer.
#define TEVS_PASS __attribute__((noinline))

// n = N, s = 1: K values of p at a time, from interleaved memory. Each value's R results go out next to each other, turned over in registers.
template <int K, int R, int M, bool Inverse> TEVS_PASS const float* firstPass(const float* __restrict src, float* __restrict dst, const float* w) {
    for (int p = 0; p < M; p += K) {
        Cx<Vec<float, K>> x[R];
        for (int j = 0; j < R; ++j) {
            x[j] = loadPairs<K>(src + 2 * (p + M * j));
            if (Inverse) x[j] = swapped(x[j]);
        }
        dft(x);
        for (int j = 1; j < R; ++j) x[j] = mul(x[j], loadBlock<K>(w + 2 * K * (j - 1)));
        w += 2 * K * (R - 1);
        for (int g = 0; g < R; g += K) {
            transpose<K>(x + g);
            for (int l = 0; l < K; ++l) storeBlock<K>(dst + 2 * (R * (p + l) + g), x[g + l]);
        }
    }
    return w;
}

// Which way to run along q, as a mask to exchange ascending q for descending. Streams that are multiples of 4096 bytes apart move through the same low 12
// bits of address together, and a load waits for an earlier store that has these in common with it: it must not come upon the track of the stores.
// Large buffers often lie so, a few bytes apart in those bits; transforms of order 13 took twice as long.
template <int StreamBytes> TEVS_INLINE int qOrder(const float* src, const float* dst, int most) {
    if (StreamBytes % 4096 != 0) return 0;
    const unsigned ahead = unsigned(reinterpret_cast<uintptr_t>(dst) - reinterpret_cast<uintptr_t>(src)) & 4095;
    return ahead > 0 && ahead < 2048 ? most : 0;
}

// s >= K: blocks are contiguous, and a factor is one for all q.
template <int K, int R, int M, int S> TEVS_PASS const float* middlePass(const float* __restrict src, float* __restrict dst, const float* w) {
    const int order = qOrder<8 * S * M>(src, dst, S - K);
    for (int p = 0; p < M; ++p) {
        for (int i = 0; i < S; i += K) {
            const int q = i ^ order;
            Cx<Vec<float, K>> x[R];
            for (int j = 0; j < R; ++j) x[j] = loadBlock<K>(src + 2 * (q + S * (p + M * j)));
            dft(x);
            storeBlock<K>(dst + 2 * (q + S * R * p), x[0]);
            for (int j = 1; j < R; ++j) storeBlock<K>(dst + 2 * (q + S * (R * p + j)), mul(x[j], w[2 * j - 2], w[2 * j - 1]));
        }
        w += 2 * (R - 1);
    }
    return w;
}

// m = 1: no factors, and what is read at q + s j is written there, so src may be dst; interleaved again.
template <int K, int R, int S, bool Inverse, bool Scaled> TEVS_PASS void lastPass(const float* src, float* dst, float scale) {
    const int order = qOrder<8 * S>(src, dst, S - K);
    for (int i = 0; i < S; i += K) {
        const int q = i ^ order;
        Cx<Vec<float, K>> x[R];
        for (int j = 0; j < R; ++j) x[j] = loadBlock<K>(src + 2 * (q + S * j));
        dft(x);
        for (int j = 0; j < R; ++j) {
            auto y = Inverse ? swapped(x[j]) : x[j];
            if (Scaled) y = times(y, scale);
            storePairs<K>(dst + 2 * (q + S * j), y);
        }
    }
}

// The middle passes I .. of a transform, S being the product of the radices before: the data alternates between two places. Returns the one where it
// ends.
template <Radices Passes, int I, int M, int S> TEVS_INLINE float* middlePasses(float* from, float* to, const float* w) {
    if constexpr (I == Passes.count - 1) {
        return from;
    } else {
        constexpr int R = Passes.r[I];
        w = middlePass<kBlock, R, M / R, S>(from, to, w);
        return middlePasses<Passes, I + 1, M / R, S * R>(to, from, w);
    }
}

// ---- orders 4 to 15 -----------------------------------------------------------------------------------------------------------------

// First and last pass in one, N = K R, with nothing stored between.
template <int K, int R, bool Inverse, bool Scaled> TEVS_INLINE void fused(const FftTables& t, const float* src, float* dst, float scale) {
    Cx<Vec<float, K>> x[R];
    for (int j = 0; j < R; ++j) {
        x[j] = loadPairs<K>(src + 2 * K * j);
        if (Inverse) x[j] = swapped(x[j]);
    }
    dft(x);
    for (int j = 1; j < R; ++j) x[j] = mul(x[j], loadBlock<K>(t.passes + 2 * K * (j - 1)));
    for (int g = 0; g < R; g += K) transpose<K>(x + g);
    for (int g = 0; g < R; g += K) {
        Cx<Vec<float, K>> y[K];
        for (int p = 0; p < K; ++p) y[p] = x[g + p];
        dft(y);
        for (int j = 0; j < K; ++j) {
            auto z = Inverse ? swapped(y[j]) : y[j];
            if (Scaled) z = times(z, scale);
            storePairs<K>(dst + 2 * (g + R * j), z);
        }
    }
}

// The data alternates between dst and work. The first pass turns it over and so needs another place than its source, which dst may be; the
// last one can run in place, where the data is in dst already.
template <int Order, bool Inverse, bool Scaled> TEVS_INLINE void stockham(const FftTables& t, const float* src, float* dst, float* work, float scale) {
    constexpr int K = kBlock, N = 1 << Order;
    constexpr Radices kPasses = passesOf(Order, K);
    constexpr int R0 = kPasses.r[0], R = kPasses.r[kPasses.count - 1];
    float* const from = src == dst ? work : dst;
    float* const to = src == dst ? dst : work;
    const float* const w = firstPass<K, R0, N / R0, Inverse>(src, from, t.passes);
    const float* const at = middlePasses<kPasses, 1, N / R0, R0>(from, to, w);
    lastPass<K, R, N / R, Inverse, Scaled>(at, dst, scale);
}

// ---- large orders: two sweeps of column transforms --------------------------------------------------------------------------------

// A matrix of complex values in interleaved memory whose rows are `stride` apart. Folded, its rows come in `fold` parts of equal size, dealt like cards: row l of
// part h is at l fold + h.
struct Rows {
    const float* at;
    int64_t stride;   // in floats
    int fold;         // 1, 2 or 4
};

// The first pass of transforms down kTileColumns columns of m R rows, into a tile of blocks.
template <int K, int R, int M, bool Inverse> TEVS_PASS const float* firstColumnPass(const Rows& in, float* __restrict tile, const float* w) {
    const float* column[R];
    const int perPart = R / in.fold;
    for (int j = 0; j < R; ++j) column[j] = in.at + in.stride * (int64_t{M} * in.fold * (j % perPart) + j / perPart);
    const int64_t step = in.stride * in.fold;
    for (int p = 0; p < M; ++p) {
        for (int q = 0; q < kTileColumns; q += K) {
            Cx<Vec<float, K>> x[R];
            for (int j = 0; j < R; ++j) {
                x[j] = loadPairs<K>(column[j] + step * p + 2 * q);
                if (Inverse) x[j] = swapped(x[j]);
            }
            dft(x);
            float* const out = tile + 2 * (q + kTileColumns * R * p);
            storeBlock<K>(out, x[0]);
            for (int j = 1; j < R; ++j) storeBlock<K>(out + 2 * kTileColumns * j, mul(x[j], w[2 * j - 2], w[2 * j - 1]));
        }
        w += 2 * (R - 1);
    }
    return w;
}

struct Tiles {
    float *data, *free;
};

// All column passes but the last, from the rows into one of the two tiles in work.
template <int Order, bool Inverse> TEVS_INLINE Tiles columnPasses(const Rows& in, const float* w, float* work) {
    constexpr int N = 1 << Order;
    constexpr Radices kPasses = radicesOf(Order);
    constexpr int R = kPasses.r[0];
    float* const other = work + int64_t{2} * kTileColumns * N;
    w = firstColumnPass<kBlock, R, N / R, Inverse>(in, work, w);
    float* const at = middlePasses<kPasses, 1, N / R, kTileColumns * R>(work, other, w);
    return {at, at == work ? other : work};
}

// The last column pass; emit(row, column, block) places what comes.
template <int Order, class Emit> TEVS_INLINE void lastColumnPass(const float* tile, Emit emit) {
    constexpr Radices kPasses = radicesOf(Order);
    constexpr int K = kBlock, R = kPasses.r[kPasses.count - 1], M = (1 << Order) / R;
    for (int k = 0; k < M; ++k)
        for (int q = 0; q < kTileColumns; q += K) {
            Cx<Vec<float, K>> x[R];
            for (int j = 0; j < R; ++j) x[j] = loadBlock<K>(tile + 2 * (q + kTileColumns * (k + M * j)));
            dft(x);
            for (int j = 0; j < R; ++j) emit(k + M * j, q, x[j]);
        }
}

// The first sweep over columns c .. c + kTileColumns - 1 of a matrix of P rows: transforms of length P times w_N^(n2 k1), in blocks, row by row.
template <int P, bool Inverse> TEVS_PASS const float* outerColumns(const FftTables& t, const float* src, int c, float* work) {
    constexpr int K = kBlock;
    const Tiles tiles = columnPasses<P, Inverse>(Rows{src + 2 * c, int64_t{2} << innerOrder(t.order), 1}, t.passes, work);
    // n2 = c + l: w_N^(n2 k1) as the product of w_N^(l k1), from a table that stays in the cache, and w_N^(c k1), one number a row. A table of all N factors
    // would be a third stream as long as the data.
    const float* const lanes = t.outer;
    const float* const rows = t.outer + (2 * kTileColumns << P) + (int64_t{2} * (c / kTileColumns) << P);
    lastColumnPass<P>(tiles.data, [&](int row, int column, Cx<Vec<float, K>> x) {
        const int at = 2 * (row * kTileColumns + column);
        storeBlock<K>(tiles.free + at, mul(x, mul(loadBlock<K>(lanes + at), rows[2 * row], rows[2 * row + 1])));
    });
    return tiles.free;
}

// The second sweep, over the same number of columns of a matrix of 2^Q rows, in place.
template <int Q, bool Inverse, bool Scaled> TEVS_PASS void innerColumns(const FftTables& t, float* at, int fold, float* work, float scale) {
    constexpr int K = kBlock;
    const int p = outerOrder(t.order);
    const Tiles tiles = columnPasses<Q, false>(Rows{at, int64_t{2} << p, fold}, t.passes + (int64_t{2} << p), work);
    lastColumnPass<Q>(tiles.data, [&](int row, int column, Cx<Vec<float, K>> x) {
        auto y = Inverse ? swapped(x) : x;
        if (Scaled) y = times(y, scale);
        storePairs<K>(at + 2 * ((int64_t{row} << p) + column), y);
    });
}

// Rows [k1][columns] of the tile become dst[n2][k1]: column c + l of the first sweep is row c + l of the second's matrix.
void storeTurned(const float* tile, float* dst, int c, int p) {
    constexpr int K = kBlock;
    for (int k = 0; k < 1 << p; k += K)
        for (int q = 0; q < kTileColumns; q += K) {
            Cx<Vec<float, K>> x[K];
            for (int l = 0; l < K; ++l) x[l] = loadBlock<K>(tile + 2 * ((k + l) * kTileColumns + q));
            transpose<K>(x);
            for (int l = 0; l < K; ++l) storePairs<K>(dst + 2 * ((int64_t{c + q + l} << p) + k), x[l]);
        }
}

// In place the first sweep leaves dst[k1][n2], and each square of P x P in it, Q/P side by side, is turned over across its diagonal: row n2 of the second
// sweep's matrix is then row (n2 mod P) Q/P + n2 / P, folded in the sense of Rows.
void turnSquare(float* a, int64_t stride, int rows) {
    constexpr int K = kBlock, kPatch = 32;   // a patch's rows lie in as many pages, which the first level of the TLB holds
    for (int i0 = 0; i0 < rows; i0 += kPatch)
        for (int j0 = i0; j0 < rows; j0 += kPatch)
            for (int i = i0; i < i0 + kPatch; i += K)
                for (int j = i0 == j0 ? i : j0; j < j0 + kPatch; j += K) {
                    Cx<Vec<float, K>> x[K], y[K];
                    for (int l = 0; l < K; ++l) x[l] = loadPairs<K>(a + stride * (i + l) + 2 * j);
                    transpose<K>(x);
                    if (i != j) {
                        for (int l = 0; l < K; ++l) y[l] = loadPairs<K>(a + stride * (j + l) + 2 * i);
                        transpose<K>(y);
                        for (int l = 0; l < K; ++l) storePairs<K>(a + stride * (i + l) + 2 * j, y[l]);
                    }
                    for (int l = 0; l < K; ++l) storePairs<K>(a + stride * (j + l) + 2 * i, x[l]);
                }
}

// The column transforms of one length, as first sweep and as second.
struct Sweeps {
    const float* (*outer[2])(const FftTables& t, const float* src, int c, float* work);       // [inverse]
    void (*inner[2][2])(const FftTables& t, float* at, int fold, float* work, float scale);   // [inverse][scaled]
};
template <int Order> constexpr Sweeps sweeps() {
    return {{outerColumns<Order, false>, outerColumns<Order, true>},
            {{innerColumns<Order, false, false>, innerColumns<Order, false, true>}, {innerColumns<Order, true, false>, innerColumns<Order, true, true>}}};
}
constexpr int kFirstColumnOrder = outerOrder(kFirstLargeOrder);
constexpr Sweeps kSweeps[] = {sweeps<8>(), sweeps<9>(), sweeps<10>(), sweeps<11>(), sweeps<12>(), sweeps<13>(), sweeps<14>(), sweeps<15>()};

template <bool Inverse> void large(const FftTables& t, const float* src, float* dst, float* work, float scale) {
    constexpr int K = kBlock;
    const int p = outerOrder(t.order), q = innerOrder(t.order), P = 1 << p, Q = 1 << q;
    const auto outer = kSweeps[p - kFirstColumnOrder].outer[Inverse];
    const auto inner = kSweeps[q - kFirstColumnOrder].inner[Inverse][scale != 1];
    const bool inPlace = src == dst;
    for (int c = 0; c < Q; c += kTileColumns) {
        const float* const tile = outer(t, src, c, work);
        if (!inPlace) {
            storeTurned(tile, dst, c, p);
            continue;
        }
        for (int row = 0; row < P; ++row)
            for (int column = 0; column < kTileColumns; column += K)
                storePairs<K>(dst + 2 * ((int64_t{row} << q) + c + column), loadBlock<K>(tile + 2 * (row * kTileColumns + column)));
    }
    if (inPlace)
        for (int square = 0; square < Q; square += P) turnSquare(dst + 2 * square, int64_t{2} << q, P);

    for (int c = 0; c < P; c += kTileColumns) inner(t, dst + 2 * c, inPlace ? Q / P : 1, work, scale);
}

// ---- orders 0 to 3: no tables ------------------------------------------------------------------------------------------------------

template <int N, bool Inverse> void small(const FftTables&, const float* src, float* dst, float*, float scale) {
    using V = Vec<float, 1>;
    Cx<V> x[N];
    for (int n = 0; n < N; ++n) x[n] = {V{src[2 * n + Inverse]}, V{src[2 * n + !Inverse]}};
    if constexpr (N == 2) {
        const auto sum = x[0] + x[1], difference = x[0] - x[1];
        x[0] = sum;
        x[1] = difference;
    }
    if constexpr (N == 4) dft(x);
    for (int n = 0; n < N; ++n) {
        dst[2 * n + Inverse] = x[n].re[0] * scale;
        dst[2 * n + !Inverse] = x[n].im[0] * scale;
    }
}

// Order 3: radix 2 across two vectors, then radix 4 within them. u holds the even outputs' inputs, v the odd ones'.
template <bool Inverse> void eight(const FftTables&, const float* src, float* dst, float*, float scale) {
    using V = Vec<float, 4>;
    auto a = loadPairs<4>(src), b = loadPairs<4>(src + 8);
    if (Inverse) {
        a = swapped(a);
        b = swapped(b);
    }
    const Cx<V> w = {V{1, kSqrtHalf, 0, -kSqrtHalf}, V{0, -kSqrtHalf, -1, -kSqrtHalf}};
    const auto u = a + b, v = mul(a - b, w);
    constexpr auto lows = [](int i) { return i < 2 ? i : i + 2; };        // u0 u1 v0 v1
    constexpr auto highs = [](int i) { return i < 2 ? i + 2 : i + 4; };   // u2 u3 v2 v3
    const Cx<V> p = {shuffle<lows>(u.re, v.re), shuffle<lows>(u.im, v.im)}, q = {shuffle<highs>(u.re, v.re), shuffle<highs>(u.im, v.im)};
    const auto sum = p + q, difference = p - q;
    constexpr auto evens = [](int i) { return 2 * (i & 1) + (i & 2 ? 4 : 0); };   // of the sum, then of the difference
    constexpr auto odds = [](int i) { return 2 * (i & 1) + 1 + (i & 2 ? 4 : 0); };
    // The differences at odd places take a factor -i: (re, im) becomes (im, -re).
    const Cx<V> e = {shuffle<evens>(sum.re, difference.re), shuffle<evens>(sum.im, difference.im)};
    const Cx<V> o = {shuffle<odds>(sum.re, difference.im), shuffle<odds>(sum.im, -difference.re)};
    const auto low = times(e + o, scale), high = times(e - o, scale);   // outputs 0 1 2 3 and 4 5 6 7
    storePairs<4>(dst, Inverse ? swapped(low) : low);
    storePairs<4>(dst + 8, Inverse ? swapped(high) : high);
}

// ---- one routine for each order -----------------------------------------------------------------------------------------------------

template <int K, int R, bool Inverse> void fusedOrder(const FftTables& t, const float* src, float* dst, float*, float scale) {
    if (scale == 1)
        fused<K, R, Inverse, false>(t, src, dst, scale);
    else
        fused<K, R, Inverse, true>(t, src, dst, scale);
}
template <int Order, bool Inverse> void stockhamOrder(const FftTables& t, const float* src, float* dst, float* work, float scale) {
    if (scale == 1)
        stockham<Order, Inverse, false>(t, src, dst, work, scale);
    else
        stockham<Order, Inverse, true>(t, src, dst, work, scale);
}

template <bool Inverse, int Order> constexpr FftTransform* transformOf() {
    constexpr int lanes = Order < 4 ? 0 : fusedLanes(Order, kBlock);
    if constexpr (Order < 3)
        return small<1 << Order, Inverse>;
    else if constexpr (Order == 3)
        return eight<Inverse>;
    else if constexpr (lanes > 0)
        return fusedOrder<lanes, (1 << Order) / lanes, Inverse>;
    else if constexpr (Order < kFirstLargeOrder)
        return stockhamOrder<Order, Inverse>;
    else
        return large<Inverse>;
}
template <bool Inverse, int... Order> constexpr FftKernels::Orders transforms(Lane<Order...>) { return {{transformOf<Inverse, Order>()...}}; }

// ---- real transforms --------------------------------------------------------------------------------------------------------------

struct Point {
    float re, im;
    friend TEVS_INLINE Point operator+(Point a, Point b) { return {a.re + b.re, a.im + b.im}; }
    friend TEVS_INLINE Point operator-(Point a, Point b) { return {a.re - b.re, a.im - b.im}; }
};

// Calls pair(k, Z[k], Z[N-k], w^k) for blocks of k that cover 1 .. N/2, where Z[N-k] comes and goes in the order of k. At k = N/2 both are the same value.
template <int K, class Pair> TEVS_INLINE void recombine(const float* in, float* out, int n, const float* w, Pair pair) {
    for (int k = 1; k < n / 2; k += K) {
        const int mirror = n - k - K + 1;
        const auto a = loadPairs<K>(in + 2 * int64_t{k}), b = reversed(loadPairs<K>(in + 2 * int64_t{mirror}));
        Cx<Vec<float, K>> x, y;
        pair(a, b, loadBlock<K>(w), x, y);
        w += 2 * K;
        storePairs<K>(out + 2 * int64_t{mirror}, reversed(y));
        storePairs<K>(out + 2 * int64_t{k}, x);
    }
}

// With E = Z[k] + conj Z[N-k] and O = Z[k] - conj Z[N-k], w = exp(-2 pi i / 2N), z being half the transform:
//     X[k] = E - i w^k O,   X[N-k] = conj(E + i w^k O)
constexpr auto binsOfPair = [](auto p, auto m, auto w, auto& x, auto& y) {
    const decltype(p) e = {p.re + m.re, p.im - m.im}, o = {p.re - m.re, p.im + m.im}, v = mul(o, w);
    x = minusI(e, v);
    y = {e.re - v.im, -e.im - v.re};
};

// Of eight points, by loads that lie where the transform has stored: any others would wait.
TEVS_INLINE void binsOfEight(const FftTables& t, const float* z, float* bins) {
    const auto a = load<float, 4>(z), b = load<float, 4>(z + 4), c = load<float, 4>(z + 8), d = load<float, 4>(z + 12);
    const auto p = separated(__builtin_shufflevector(a, b, 2, 3, 4, 5), __builtin_shufflevector(b, c, 2, 3, 4, 5));
    Cx<Vec<float, 4>> x, y;
    binsOfPair(p, reversed(separated(c, d)), loadBlock<4>(t.recombination), x, y);
    storePairs<4>(bins + 8, reversed(y));
    storePairs<4>(bins + 2, x);
}

void spectrumOfReal(const FftTables& t, const float* z, float* bins, float* first, float* last) {
    const float a = z[0] + z[0], b = z[1] + z[1];
    const int n = 1 << t.order;
    if (t.order <= 2) {
        // N = 1, 2, 4: k = N/2 has w^k = -i, so X = 2 conj Z; the one other k, 1 of 4, has w = exp(-i pi/4).
        if (t.order == 2) {
            const Point p = {z[2], z[3]}, m = {z[6], -z[7]}, e = p + m, o = p - m;
            const Point v = {(o.im - o.re) * kSqrtHalf, (o.re + o.im) * -kSqrtHalf};   // -i w O
            bins[2] = e.re + v.re;
            bins[3] = e.im + v.im;
            bins[6] = e.re - v.re;
            bins[7] = v.im - e.im;
        }
        if (t.order >= 1) {
            const float re = z[n], im = z[n + 1];
            bins[n] = re + re;
            bins[n + 1] = -(im + im);
        }
    } else if (t.order == 3) {
        binsOfEight(t, z, bins);
    } else {
        recombine<kBlock>(z, bins, n, t.recombination, binsOfPair);
    }
    *first = a + b;
    *last = a - b;
}

// Z[k] = E + i conj(w^k) O and Z[N-k] = conj(E - i conj(w^k) O) with E = X[k] + conj X[N-k], O = X[k] - conj X[N-k].
constexpr auto pairOfBins = [](auto p, auto m, auto w, auto& x, auto& y) {
    const decltype(p) e = {p.re + m.re, p.im - m.im}, o = {p.re - m.re, p.im + m.im};
    const decltype(p) v = {fma(o.re, w.re, o.im * w.im), fnma(o.re, w.im, o.im * w.re)};   // conj(w) O
    x = plusI(e, v);
    y = {e.re + v.im, v.re - e.im};
};

// Of eight points, by stores that lie where the transform will load: it would wait for any others.
TEVS_INLINE void pairsOfEight(const FftTables& t, const float* bins, float first, float last, float* z) {
    Cx<Vec<float, 4>> x, y;
    pairOfBins(loadPairs<4>(bins + 2), reversed(loadPairs<4>(bins + 8)), loadBlock<4>(t.recombination), x, y);
    const auto up = interleaved(x), down = interleaved(reversed(y));   // Z[1] .. Z[4], Z[4] .. Z[7]
    const Vec<float, 4> ends = {first + last, first - last};
    store(z, __builtin_shufflevector(ends, up.a, 0, 1, 4, 5));
    store(z + 4, __builtin_shufflevector(up.a, up.b, 2, 3, 4, 5));
    store(z + 8, down.a);
    store(z + 12, down.b);
}

void pairsOfSpectrum(const FftTables& t, const float* bins, float first, float last, float* z) {
    const int n = 1 << t.order;
    if (t.order == 3) return pairsOfEight(t, bins, first, last, z);
    if (t.order <= 2) {
        if (t.order == 2) {
            const Point p = {bins[2], bins[3]}, m = {bins[6], -bins[7]}, e = p + m, o = p - m;
            const Point v = {(o.re + o.im) * -kSqrtHalf, (o.re - o.im) * kSqrtHalf};   // i conj(w) O
            z[2] = e.re + v.re;
            z[3] = e.im + v.im;
            z[6] = e.re - v.re;
            z[7] = v.im - e.im;
        }
        if (t.order >= 1) {
            const float re = bins[n], im = bins[n + 1];
            z[n] = re + re;
            z[n + 1] = -(im + im);
        }
    } else {
        recombine<kBlock>(bins, z, n, t.recombination, pairOfBins);
    }
    z[0] = first + last;
    z[1] = first - last;
}

}   // namespace

extern const FftKernels fft = {
    .lanes = kBlock,
    .forward = transforms<false>(Iota<kFirstLargeOrder + 1>{}),
    .inverse = transforms<true>(Iota<kFirstLargeOrder + 1>{}),
    .spectrumOfReal = spectrumOfReal,
    .pairsOfSpectrum = pairsOfSpectrum,
};

}   // namespace tevs::TEVS_LEVEL_NS
