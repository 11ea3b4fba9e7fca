// The transforms' kernels, for the sources that make them in one precision each.
#pragma once

#include "transform/complex.kern.h"
#include "transform/fft.table.h"
#include "transform/integer.kern.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

template <class T> constexpr int kBlock = kLanes<T>;   // complex values in a block
template <class T> constexpr int kColumnBlock = columnLanes<T>(kBlock<T>);

// ---- passes -------------------------------------------------------------------------------------------------------------------------

// A pass is a function of its own with its sizes constant: strides then fold into the addresses. With sizes in registers, or all passes inlined
// into one function, register allocation suffers and a transform of order 9 takes 15 % longer.
#define TEVS_PASS __attribute__((noinline))

// n = N, s = 1: K values of p at a time. Each value's R results go out next to each other, turned over in registers.
template <int K, int R, int M, bool Inverse, class In, class Out, class T> TEVS_PASS const T* firstPass(In src, Out dst, const T* __restrict w) {
    for (int p = 0; p < M; p += K) {
        const auto from = src + p;
        Cx<Vec<T, K>> x[R];
        dftOfValues<R>([&](int j) TEVS_HERE { return Inverse ? swapped(read<K>(from, M * j)) : read<K>(from, M * j); },
                       [&](int j, auto y) TEVS_HERE { x[j] = j > 0 ? mul(y, loadBlock<K>(w + 2 * K * (j - 1))) : y; });
        w += 2 * K * (R - 1);
        for (int g = 0; g < R; g += K) writeTurned<K>(dst + (R * p + g), R, x + g);
    }
    return w;
}

template <class T> const void* start(Pairs<T> a) { return a.p; }
template <class T> const void* start(Parts<T> a) { return a.re; }
template <class T> const void* start(Blocks<T> a) { return a.p; }
template <class T> const void* start(PartBlocks<T> a) { return a.re; }

// Which way to run along q, as a mask to exchange ascending q for descending. Streams that are multiples of 4096 bytes apart move through the same low 12
// bits of address together, and a load waits for an earlier store that has these in common with it: it must not come upon the track of the stores.
// Large buffers often lie so, a few bytes apart in those bits; transforms of order 13 took twice as long.
template <int StreamBytes, class In, class Out> TEVS_INLINE int qOrder(In src, Out dst, int most) {
    if (StreamBytes % 4096 != 0) return 0;
    const unsigned ahead = unsigned(reinterpret_cast<uintptr_t>(start(dst)) - reinterpret_cast<uintptr_t>(start(src))) & 4095;
    return ahead > 0 && ahead < 2048 ? most : 0;
}

// s >= K: blocks are contiguous, and a factor is one for all q.
template <int K, int R, int M, int S, class In, class Out, class T> TEVS_PASS const T* middlePass(In src, Out dst, const T* __restrict w) {
    const int order = qOrder<int(2 * sizeof(T)) * S * M>(src, dst, S - K);
    for (int p = 0; p < M; ++p) {
        for (int i = 0; i < S; i += K) {
            const int q = i ^ order;
            const auto to = dst + (q + S * R * p);
            dftOfBlocks<K, R, false>(src + (q + S * p), S * M,
                                     [&](int j, auto y) TEVS_HERE { write(to, S * j, j > 0 ? mul(y, w[2 * j - 2], w[2 * j - 1]) : y); });
        }
        w += 2 * (R - 1);
    }
    return w;
}

// m = 1: no factors, and what is read at q + s j is written there, so src may be dst.
template <int K, int R, int S, bool Inverse, bool Scaled, class In, class Out, class T> TEVS_PASS void lastPass(In src, Out dst, T scale) {
    const int order = qOrder<int(2 * sizeof(T)) * S>(src, dst, S - K);
    for (int i = 0; i < S; i += K) {
        const int q = i ^ order;
        const auto to = dst + q;
        dftOfBlocks<K, R, true>(src + q, S, [&](int j, auto x) TEVS_HERE {
            const auto y = Inverse ? swapped(x) : x;
            write(to, S * j, Scaled ? times(y, scale) : y);
        });
    }
}

// The middle passes I .. of a transform, S being the product of the radices before: the data alternates between two places. last(place) goes on where it
// ends.
template <int K, Radices Passes, int I, int M, int S, class From, class To, class T, class Last>
TEVS_INLINE void middlePasses(From from, To to, const T* w, Last last) {
    if constexpr (I == Passes.count - 1) {
        last(from, to);
    } else {
        constexpr int R = Passes.r[I];
        w = middlePass<K, R, M / R, S>(from, to, w);
        middlePasses<K, Passes, I + 1, M / R, S * R>(to, from, w, last);
    }
}

// ---- from order 4 to the large ones -----------------------------------------------------------------------------------------------

// First and last pass in one, N = K R, with nothing stored between.
template <int K, int R, bool Inverse, bool Scaled, class In, class Out, class T> TEVS_INLINE void fused(In src, Out dst, const T* w, T scale) {
    Cx<Vec<T, K>> x[R];
    dftOfValues<R>([&](int j) TEVS_HERE { return Inverse ? swapped(read<K>(src, K * j)) : read<K>(src, K * j); },
                   [&](int j, auto y) TEVS_HERE { x[j] = j > 0 ? mul(y, loadBlock<K>(w + 2 * K * (j - 1))) : y; });
    for (int g = 0; g < R; g += K) transpose<K>(x + g);
    for (int g = 0; g < R; g += K)
        dftOfValues<K>([&](int p) TEVS_HERE { return x[g + p]; },
                       [&](int j, auto y) TEVS_HERE {
                           const auto z = Inverse ? swapped(y) : y;
                           write(dst, g + R * j, Scaled ? times(z, scale) : z);
                       });
}

// The data alternates between dst and work. The first pass turns it over and so needs another place than its source; the last one can run in place, where
// the data is in dst already.
template <int Order, bool Inverse, bool Scaled, class In, class First, class Second, class Out, class T>
TEVS_INLINE void stockham(const FftTables<T>& t, In src, First first, Second second, Out dst, T scale) {
    constexpr int K = kBlock<T>, N = 1 << Order;
    constexpr Radices kPasses = passesOf<T>(Order, K);
    constexpr int R0 = kPasses.r[0], R = kPasses.r[kPasses.count - 1];
    const T* const w = firstPass<K, R0, N / R0, Inverse>(src, first, t.passes);
    middlePasses<K, kPasses, 1, N / R0, R0>(first, second, w, [&](auto at, auto) { lastPass<K, R, N / R, Inverse, Scaled>(at, dst, scale); });
}
template <int Order, bool Inverse, bool Scaled, class T> TEVS_INLINE void stockham(const FftTables<T>& t, Pairs<const T> src, Pairs<T> dst, T* work, T scale) {
    const bool inPlace = src.p == dst.p;
    stockham<Order, Inverse, Scaled>(t, src, Blocks<T>{inPlace ? work : dst.p}, Blocks<T>{inPlace ? dst.p : work}, dst, scale);
}
template <int Order, bool Inverse, bool Scaled, class T> TEVS_INLINE void stockham(const FftTables<T>& t, Parts<const T> src, Parts<T> dst, T* work, T scale) {
    stockham<Order, Inverse, Scaled>(t, src, Blocks<T>{work}, PartBlocks<T>{dst.re, dst.im}, dst, scale);
}

// ---- large orders: two sweeps of column transforms --------------------------------------------------------------------------------

// A matrix of complex values whose rows are `stride` apart. Folded, its rows come in `fold` pieces of equal size, dealt like cards: row l of piece h is at
// l fold + h.
template <class In> struct Rows {
    In at;
    int64_t stride;   // in values
    int fold;         // 1, 2 or 4
};

// The first pass of transforms down the columns of m R rows, into as many tiles of blocks, one after another.
template <int K, int R, int M, int Columns, bool Inverse, class In, class T>
TEVS_PASS const T* firstColumnPass(const Rows<In>& in, T* __restrict tile, int tiles, const T* w) {
    In column[R];
    const int perPiece = R / in.fold;
    for (int j = 0; j < R; ++j) column[j] = in.at + in.stride * (int64_t{M} * in.fold * (j % perPiece) + j / perPiece);
    const int64_t step = in.stride * in.fold;
    for (int p = 0; p < M; ++p) {
        T* out = tile + 2 * Columns * R * p;
        for (int c = 0; c < Columns * tiles; c += Columns) {
            for (int q = 0; q < Columns; q += K) {
                const auto value = [&](int j) TEVS_HERE {
                    const auto v = read<K>(column[j], step * p + c + q);
                    return Inverse ? swapped(v) : v;
                };
                dftOfValues<R>(value,
                               [&](int j, auto y) TEVS_HERE { storeBlock(out + 2 * (q + Columns * j), j > 0 ? mul(y, w[2 * j - 2], w[2 * j - 1]) : y); });
            }
            out += 2 * Columns * R * M;
        }
        w += 2 * (R - 1);
    }
    return w;
}

// All passes but the last over the columns of some tiles. done(tile, at, free) gets the place of each one's data, and a free one until the next is done.
template <int Order, bool Inverse, class In, class T, class Done> TEVS_INLINE void columnPasses(const Rows<In>& in, const T* w, T* work, int tiles, Done done) {
    constexpr int N = 1 << Order, K = kColumnBlock<T>, kColumns = tileColumns<T>(Order);
    constexpr Radices kPasses = radicesOf(Order);
    constexpr int R = kPasses.r[0];
    w = firstColumnPass<K, R, N / R, kColumns, Inverse>(in, work, tiles, w);
    Blocks<T> free{work + int64_t{2} * kColumns * N * tiles};
    for (int t = 0; t < tiles; ++t)
        middlePasses<K, kPasses, 1, N / R, kColumns * R>(Blocks<T>{work + int64_t{2} * kColumns * N * t}, free, w, [&](Blocks<T> at, Blocks<T> other) {
            free = other;
            done(t, at, other);
        });
}

// The last pass; emit(row, column, block) places what it has, rows of all tiles side by side.
template <int Order, class T, class Emit> TEVS_INLINE void lastColumnPass(const Blocks<T>* at, int tiles, Emit emit) {
    constexpr int K = kColumnBlock<T>, kColumns = tileColumns<T>(Order);
    constexpr Radices kPasses = radicesOf(Order);
    constexpr int R = kPasses.r[kPasses.count - 1], M = (1 << Order) / R;
    for (int k = 0; k < M; ++k)
        for (int t = 0; t < tiles; ++t)
            for (int q = 0; q < kColumns; q += K) {
                dftOfBlocks<K, R, false>(at[t] + (q + kColumns * k), kColumns * M, [&](int j, auto y) TEVS_HERE { emit(k + M * j, t * kColumns + q, y); });
            }
}

// Rows [k1][columns] of a tile become dst[n2][k1]: column c + l of the first sweep is row c + l of the second's matrix.
template <class T, class Place> void storeTurned(const T* tile, Place dst, int c, int p) {
    constexpr int K = kColumnBlock<T>;
    const int columns = tileColumns<T>(p);
    for (int k = 0; k < 1 << p; k += K)
        for (int q = 0; q < columns; q += K) {
            Cx<Vec<T, K>> x[K];
            for (int l = 0; l < K; ++l) x[l] = loadBlock<K>(tile + 2 * ((k + l) * columns + q));
            transpose<K>(x);
            for (int l = 0; l < K; ++l) write(dst, (int64_t{c + q + l} << p) + k, x[l]);
        }
}

// The first sweep over the columns from c on of some tiles of a matrix of 2^P rows: transforms of length 2^P times w_N^(n2 k1), turned over into dst, or,
// in place, left where they are.
template <int P, bool Inverse, class In, class Out, class T> TEVS_PASS void outerColumns(const FftTables<T>& t, In src, Out dst, int c, int tiles, T* work) {
    constexpr int K = kColumnBlock<T>, kColumns = tileColumns<T>(P);
    const int q = t.order - P;
    const bool inPlace = start(src) == start(dst);
    // n2 = c + l: w_N^(n2 k1) as the product of w_N^(l k1), from a table that stays in the cache, and w_N^(c k1), one number a row. A table of all N factors
    // would be a third stream as long as the data.
    const T* const lanes = t.outer;
    const T* const rows = t.outer + (2 * kColumns << P) + (int64_t{2} * (c / kColumns) << P);
    const auto times = [=](Cx<Vec<T, K>> x, int row, int column) TEVS_HERE {
        const T* const f = rows + (int64_t{2} * (column / kColumns) << P) + 2 * row;
        return mul(x, mul(loadBlock<K>(lanes + 2 * (row * kColumns + column % kColumns)), f[0], f[1]));
    };
    Blocks<T> done[kMostTiles];
    columnPasses<P, Inverse>(Rows<In>{src + c, int64_t{1} << q, 1}, t.passes, work, tiles, [&](int tile, Blocks<T> at, Blocks<T> free) {
        done[tile] = at;
        if (inPlace) return;
        const int first = tile * kColumns;
        lastColumnPass<P>(&at, 1, [&](int row, int column, auto x) { write(free, row * kColumns + column, times(x, row, first + column)); });
        storeTurned(free.p, dst, c + first, P);
    });
    if (inPlace) lastColumnPass<P>(done, tiles, [&](int row, int column, auto x) { write(dst, (int64_t{row} << q) + c + column, times(x, row, column)); });
}

// The second sweep, over the columns from c on of some tiles of a matrix of 2^Q rows, in place.
template <int Q, bool Inverse, bool Scaled, class Place, class T>
TEVS_PASS void innerColumns(const FftTables<T>& t, Place data, int c, int fold, int tiles, T* work, T scale) {
    const int p = outerOrder<T>(t.order);
    const Place at = data + c;
    Blocks<T> done[kMostTiles];
    columnPasses<Q, false>(Rows<Place>{at, int64_t{1} << p, fold}, t.passes + (int64_t{2} << p), work, tiles,
                           [&](int tile, Blocks<T> place, Blocks<T>) { done[tile] = place; });
    lastColumnPass<Q>(done, tiles, [&](int row, int column, auto x) {
        auto y = Inverse ? swapped(x) : x;
        if (Scaled) y = times(y, scale);
        write(at, (int64_t{row} << p) + column, y);
    });
}

// In place the first sweep leaves dst[k1][n2], and each square of P x P in it, Q/P side by side, is turned over across its diagonal: row n2 of the second
// sweep's matrix is then row (n2 mod P) Q/P + n2 / P, folded in the sense of Rows.
//
// Blocks of a patch are taken along its diagonals: rows often lie multiples of 4096 bytes apart, and a load waits for an earlier store to such a distance.
template <class T, bool Swap, class Place> void turnSquare(Place a, int64_t stride, int rows) {
    constexpr int K = kColumnBlock<T>, kPatch = 32, kBlocks = kPatch / K;   // a patch's rows lie in as many pages, which the first level of the TLB holds
    const auto exchange = [=](int i, int j) TEVS_HERE {
        Cx<Vec<T, K>> x[K], y[K];
        for (int l = 0; l < K; ++l) x[l] = read<K>(a, stride * (i + l) + j);
        transpose<K>(x);
        if (i != j) {
            for (int l = 0; l < K; ++l) y[l] = read<K>(a, stride * (j + l) + i);
            transpose<K>(y);
            for (int l = 0; l < K; ++l) write(a, stride * (i + l) + j, Swap ? swapped(y[l]) : y[l]);
        }
        for (int l = 0; l < K; ++l) write(a, stride * (j + l) + i, Swap ? swapped(x[l]) : x[l]);
    };
    for (int i0 = 0; i0 < rows; i0 += kPatch) {
        for (int d = 0; d < kBlocks; ++d)
            for (int t = 0; t < kBlocks - d; ++t) exchange(i0 + K * t, i0 + K * (t + d));
        for (int j0 = i0 + kPatch; j0 < rows; j0 += kPatch)
            for (int d = 0; d < kBlocks; ++d)
                for (int t = 0; t < kBlocks; ++t) exchange(i0 + K * t, j0 + K * ((t + d) % kBlocks));
    }
}

// The column transforms of one length, as first sweep and as second.
template <class T, template <class> class Place> struct Sweeps {
    void (*outer[2])(const FftTables<T>& t, Place<const T> src, Place<T> dst, int c, int tiles, T* work);      // [inverse]
    void (*inner[2][2])(const FftTables<T>& t, Place<T> data, int c, int fold, int tiles, T* work, T scale);   // [inverse][scaled]
};
constexpr int kLastColumnOrder = 15;
template <class T> constexpr int kFirstColumnOrder = outerOrder<T>(kFirstLargeOrder<T>);
template <class T, template <class> class Place> struct SweepsByOrder { Sweeps<T, Place> of[kLastColumnOrder + 1 - kFirstColumnOrder<T>]; };
template <class T, template <class> class Place, int Order> constexpr Sweeps<T, Place> sweeps() {
    return {{outerColumns<Order, false, Place<const T>, Place<T>, T>, outerColumns<Order, true, Place<const T>, Place<T>, T>},
            {{innerColumns<Order, false, false, Place<T>, T>, innerColumns<Order, false, true, Place<T>, T>},
             {innerColumns<Order, true, false, Place<T>, T>, innerColumns<Order, true, true, Place<T>, T>}}};
}
template <class T, template <class> class Place, int... I> constexpr SweepsByOrder<T, Place> sweepsByOrder(Lane<I...>) {
    return {{sweeps<T, Place, kFirstColumnOrder<T> + I>()...}};
}
template <class T, template <class> class Place>
constexpr SweepsByOrder<T, Place> kSweeps = sweepsByOrder<T, Place>(Iota<kLastColumnOrder + 1 - kFirstColumnOrder<T>>{});

// Row j m + h of rows of P values goes to h P + j: along each cycle once, from its least row, by way of one row's room.
template <class T, class Place> void dealRows(Place a, int P, int m, T* work) {
    constexpr int K = kColumnBlock<T>;
    const auto from = [=](int row) { return row % P * m + row / P; };
    const auto copy = [=](auto source, int64_t i, auto target, int64_t j) {
        for (int c = 0; c < P; c += K) write(target, j * P + c, read<K>(source, i * P + c));
    };
    const Blocks<T> aside{work};
    for (int first = 1; first < P * m - 1; ++first) {
        int row = from(first);
        while (row > first) row = from(row);
        if (row < first) continue;
        copy(a, first, aside, 0);
        for (int next = from(row); next != first; row = next, next = from(row)) copy(a, next, a, row);
        copy(aside, 0, a, row);
    }
}

template <class T, template <class> class Place> FftTransform<T, Place>* forwardOf(int order);

// In place, with no room for tiles of the second sweep: transforms of length P down the columns as above, then of length Q along the rows, by the routine of their
// order, and then the whole is turned over, in squares and rows. The inverse works on exchanged parts up to there.
template <bool Inverse, class T, template <class> class Place> void inLittleRoom(const FftTables<T>& t, Place<const T> src, Place<T> dst, T* work, T scale) {
    const FftTables<T>&columns = t.little[0], &rows = t.little[1];
    const int q = rows.order, p = t.order - q, P = 1 << p, Q = 1 << q;
    if (start(src) != start(dst))
        for (int64_t i = 0; i < int64_t{1} << t.order; i += kColumnBlock<T>) write(dst, i, read<kColumnBlock<T>>(src, i));
    const auto constant = [](auto place) -> Place<const T> {
        if constexpr (requires { place.p; })
            return {place.p};
        else
            return {place.re, place.im};
    };
    const auto outer = kSweeps<T, Place>.of[p - kFirstColumnOrder<T>].outer[Inverse];
    const int tiles = tilesAtOnce<T>(t.room, p);
    for (int c = 0; c < Q; c += tiles * tileColumns<T>(p)) outer(columns, constant(dst), dst, c, tiles, work);
    const auto row = forwardOf<T, Place>(q);
    for (int64_t k = 0; k < P; ++k) row(rows, constant(dst + (k << q)), dst + (k << q), work, scale);
    for (int square = 0; square < Q; square += P) turnSquare<T, Inverse>(dst + square, Q, P);
    dealRows(dst, P, Q / P, work);
}

template <bool Inverse, class T, template <class> class Place> void large(const FftTables<T>& t, Place<const T> src, Place<T> dst, T* work, T scale) {
    const int p = outerOrder<T>(t.order), q = innerOrder<T>(t.order), P = 1 << p, Q = 1 << q;
    if (t.room < leastRoom<T>(t.order)) return inLittleRoom<Inverse>(t, src, dst, work, scale);
    const auto outer = kSweeps<T, Place>.of[p - kFirstColumnOrder<T>].outer[Inverse];
    const auto inner = kSweeps<T, Place>.of[q - kFirstColumnOrder<T>].inner[Inverse][scale != 1];
    const int outerTiles = tilesAtOnce<T>(t.room, p), innerTiles = tilesAtOnce<T>(t.room, q);
    const bool inPlace = start(src) == start(dst);
    for (int c = 0; c < Q; c += outerTiles * tileColumns<T>(p)) outer(t, src, dst, c, outerTiles, work);
    if (inPlace)
        for (int square = 0; square < Q; square += P) turnSquare<T, false>(dst + square, int64_t{1} << q, P);
    for (int c = 0; c < P; c += innerTiles * tileColumns<T>(q)) inner(t, dst, c, inPlace ? Q / P : 1, innerTiles, work, scale);
}

// ---- orders 0 to 3: no tables ------------------------------------------------------------------------------------------------------

template <int N, bool Inverse, class T, template <class> class Place> void small(const FftTables<T>&, Place<const T> src, Place<T> dst, T*, T scale) {
    Cx<Vec<T, 1>> x[N];
    for (int n = 0; n < N; ++n) {
        x[n] = read<1>(src, n);
        if (Inverse) x[n] = swapped(x[n]);
    }
    if constexpr (N > 1) dft(x);
    for (int n = 0; n < N; ++n) write(dst, n, times(Inverse ? swapped(x[n]) : x[n], scale));
}

// Order 3 in single precision: radix 2 across two vectors, then radix 4 within them. u holds the even outputs' inputs, v the odd ones'.
template <bool Inverse, template <class> class Place> void eight(const FftTables<float>&, Place<const float> src, Place<float> dst, float*, float scale) {
    using V = Vec<float, 4>;
    constexpr float h = float(kSqrtHalf);
    auto a = read<4>(src, 0), b = read<4>(src, 4);
    if (Inverse) {
        a = swapped(a);
        b = swapped(b);
    }
    const Cx<V> w = {V{1, h, 0, -h}, V{0, -h, -1, -h}};
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
    write(dst, 0, Inverse ? swapped(low) : low);
    write(dst, 4, Inverse ? swapped(high) : high);
}
// In double precision, the same for vectors whose lanes come as 0 2 1 3, and radix 4, then 2, where they are shorter than four.
template <bool Inverse, template <class> class Place> void eight(const FftTables<double>&, Place<const double> src, Place<double> dst, double*, double scale) {
    constexpr double h = kSqrtHalf;
    if constexpr (kBlock<double> == 2) {
        static constexpr double kFactors[] = {1, h, 0, -h, 1, 0, 0, -1, 1, -h, 0, -h};   // w_8^(p j) for j = 1, 2, 3 and p = 0, 1
        fused<2, 4, Inverse, true>(src, dst, kFactors, scale);
    } else {
        using V = Vec<double, 4>;
        auto a = read<4>(src, 0), b = read<4>(src, 4);
        if (Inverse) {
            a = swapped(a);
            b = swapped(b);
        }
        const Cx<V> w = {V{1, 0, h, -h}, V{0, -1, -h, -h}};
        const auto u = a + b, v = mul(a - b, w);
        const Cx<V> p = {zipped<0>(u.re, v.re), zipped<0>(u.im, v.im)}, q = {zipped<1>(u.re, v.re), zipped<1>(u.im, v.im)};   // u0 v0 u1 v1, u2 v2 u3 v3
        const auto sum = p + q, difference = p - q;
        constexpr auto evens = [](int i) { return i < 2 ? i : i + 2; };
        constexpr auto odds = [](int i) { return i < 2 ? i + 2 : i + 4; };
        const Cx<V> e = {shuffle<evens>(sum.re, difference.re), shuffle<evens>(sum.im, difference.im)};
        const Cx<V> o = {shuffle<odds>(sum.re, difference.im), shuffle<odds>(sum.im, -difference.re)};
        const auto low = times(e + o, scale), high = times(e - o, scale);
        const auto put = [&](int at, Cx<V> x) { write(dst, at, Cx<V>{reordered(Inverse ? x.im : x.re), reordered(Inverse ? x.re : x.im)}); };
        put(0, low);
        put(4, high);
    }
}

// ---- 8 to 64 points, a complex value to a register -------------------------------------------------------------------------------------
//
// A register that holds one complex double takes it as it lies: no shuffles between layouts, which at these lengths cost as much as a third of the arithmetic. A quarter turn is
// a shuffle and a sign.

using Pair = Vec<double, 2>;

TEVS_INLINE Pair readPair(Pairs<const double> a, int i) { return load<double, 2>(a.p + 2 * i); }
TEVS_INLINE Pair readPair(Parts<const double> a, int i) { return Pair{a.re[i], a.im[i]}; }
TEVS_INLINE void writePair(Pairs<double> a, int i, Pair x) { store(a.p + 2 * i, x); }
TEVS_INLINE void writePair(Parts<double> a, int i, Pair x) {
    a.re[i] = x[0];
    a.im[i] = x[1];
}

TEVS_INLINE Pair exchanged(Pair x) { return __builtin_shufflevector(x, x, 1, 0); }
// -i x, of the inverse i x.
template <bool Inverse> TEVS_INLINE Pair quarter(Pair x) {
    constexpr int64_t kSign = INT64_MIN;
    constexpr Vec<int64_t, 2> kSigns = {Inverse ? kSign : 0, Inverse ? 0 : kSign};
    return (Pair)((Vec<int64_t, 2>)exchanged(x) ^ kSigns);
}
// x (c + i s).
TEVS_INLINE Pair times(Pair x, double c, double s) {
    const Pair crossed = exchanged(x) * same<Pair>(s);
#if TEVS_LEVEL >= 2
    return (Pair)_mm_fmaddsub_pd((__m128d)x, (__m128d)same<Pair>(c), (__m128d)crossed);
#else
    return subAdd(x * same<Pair>(c), crossed);
#endif
}

// cos(2 pi k / 64).
constexpr double kCos64[] = {1,         0.99518472667219688624, 0.98078528040323044913, 0.95694033573220886494,
                             kCos16,    0.88192126434835502971, 0.83146961230254523708, 0.77301045336273696081,
                             kSqrtHalf, 0.63439328416364549822, 0.55557023301960222474, 0.47139673682599764856,
                             kSin16,    0.29028467725446236764, 0.19509032201612826785, 0.098017140329560601994,
                             0};
constexpr double cos64(int k) {
    k = k % 64 > 32 ? 64 - k % 64 : k % 64;
    return k <= 16 ? kCos64[k] : -kCos64[32 - k];
}
// x w^K, w = exp(-2 pi i / 64) or, of the inverse, its conjugate.
template <bool Inverse, int K> TEVS_INLINE Pair turned(Pair x) {
    if constexpr (K == 0) return x;
    if constexpr (K == 16) return quarter<Inverse>(x);
    if constexpr (K == 8) return (x + quarter<Inverse>(x)) * same<Pair>(kSqrtHalf);
    if constexpr (K == 24) return (quarter<Inverse>(x) - x) * same<Pair>(kSqrtHalf);
    if constexpr (K % 8 != 0) return times(x, cos64(K), (Inverse ? 1 : -1) * cos64(K + 48));
}

// What comes before is stored, and what comes after loaded anew: straight-line code this long else keeps more values than there are registers, in memory of its own.
TEVS_INLINE void endOfStep() { asm volatile("" : : : "memory"); }

// Transforms of the values that value(j) reads, as often as they are wanted: what memory holds need not stay in one of eight registers. Each output is given away before the next
// is formed.
template <bool Inverse, class Value, class Emit> TEVS_INLINE void dftOfPairs(At<4>, Value value, Emit emit) {
    const Pair x0 = value(0), x2 = value(2), a = x0 + x2, b = x0 - x2, x1 = value(1), x3 = value(3), c = x1 + x3, d = quarter<Inverse>(x1 - x3);
    emit(At<0>{}, a + c);
    emit(At<2>{}, a - c);
    emit(At<1>{}, b + d);
    emit(At<3>{}, b - d);
}
template <bool Inverse, class Value, class Emit> TEVS_INLINE void dftOfPairs(At<8>, Value value, Emit emit) {
    dftOfPairs<Inverse>(
        At<4>{}, [&](int j) TEVS_HERE { return value(j) + value(j + 4); }, [&]<int J>(At<J>, Pair y) TEVS_HERE { emit(At<2 * J>{}, y); });
    endOfStep();
    const Pair h = same<Pair>(kSqrtHalf);
    const Pair d1 = value(1) - value(5), d3 = value(3) - value(7), sum = d1 + d3, difference = d1 - d3;
    const Pair s = difference + quarter<Inverse>(sum), t = quarter<Inverse>(sum + quarter<Inverse>(difference));
    const Pair d0 = value(0) - value(4), d2 = quarter<Inverse>(value(2) - value(6)), p = d0 + d2, q = d0 - d2;
    emit(At<1>{}, fma(h, s, p));
    emit(At<5>{}, fnma(h, s, p));
    emit(At<3>{}, fma(h, t, q));
    emit(At<7>{}, fnma(h, t, q));
}

// N = C R: transforms of length C down R columns, then of length R along C rows. All is read before anything is written.
template <int C, int R, bool Inverse, bool Scaled, class In, class Out> TEVS_INLINE void columnsAndRows(In src, Out dst, double scale) {
    Pair y[C][R];
    const auto column = [&]<int B>(At<B>) TEVS_HERE {
        dftOfPairs<Inverse>(
            At<C>{}, [&](int l) TEVS_HERE { return readPair(src, B + R * l); },
            [&]<int J>(At<J>, Pair x) TEVS_HERE { y[J][B] = turned<Inverse, 64 / (C * R) * J * B>(x); });
        endOfStep();
    };
    [&]<int... B>(Lane<B...>) TEVS_HERE { (column(At<B>{}), ...); }
    (Iota<R>{});
    for (int j = 0; j < C; ++j) {
        dftOfPairs<Inverse>(
            At<R>{}, [&](int b) TEVS_HERE { return y[j][b]; },
            [&]<int L>(At<L>, Pair x) TEVS_HERE { writePair(dst, j + C * L, Scaled ? x * same<Pair>(scale) : x); });
        endOfStep();
    }
}
template <int Order, bool Inverse, template <class> class Place>
void inPairs(const FftTables<double>&, Place<const double> src, Place<double> dst, double*, double scale) {
    constexpr int C = Order == 6 ? 8 : 4, R = (1 << Order) / C;
    if (scale == 1)
        columnsAndRows<C, R, Inverse, false>(src, dst, scale);
    else
        columnsAndRows<C, R, Inverse, true>(src, dst, scale);
}
template <bool Inverse, template <class> class Place>
void eightInPairs(const FftTables<double>&, Place<const double> src, Place<double> dst, double*, double scale) {
    Pair x[8];
    for (int j = 0; j < 8; ++j) x[j] = readPair(src, j);
    dftOfPairs<Inverse>(
        At<8>{}, [&](int j) TEVS_HERE { return x[j]; }, [&]<int J>(At<J>, Pair y) TEVS_HERE { writePair(dst, J, y * same<Pair>(scale)); });
}

// ---- one routine for each order -----------------------------------------------------------------------------------------------------

template <int K, int R, bool Inverse, class T, template <class> class Place>
void fusedOrder(const FftTables<T>& t, Place<const T> src, Place<T> dst, T*, T scale) {
    if (scale == 1)
        fused<K, R, Inverse, false>(src, dst, t.passes, scale);
    else
        fused<K, R, Inverse, true>(src, dst, t.passes, scale);
}
template <int Order, bool Inverse, class T, template <class> class Place>
void stockhamOrder(const FftTables<T>& t, Place<const T> src, Place<T> dst, T* work, T scale) {
    if (scale == 1)
        stockham<Order, Inverse, false>(t, src, dst, work, scale);
    else
        stockham<Order, Inverse, true>(t, src, dst, work, scale);
}

template <class T, template <class> class Place, bool Inverse, int Order> constexpr FftTransform<T, Place>* transformOf() {
    constexpr int lanes = Order < 4 ? 0 : fusedLanes<T>(Order, kBlock<T>);
    if constexpr (Order < 3)
        return small<1 << Order, Inverse, T, Place>;
    else if constexpr (kBlock<T> == 2 && Order == 3)
        return eightInPairs<Inverse, Place>;
    else if constexpr (kBlock<T> == 2 && lanes > 0)
        return inPairs<Order, Inverse, Place>;
    else if constexpr (Order == 3)
        return eight<Inverse, Place>;
    else if constexpr (lanes > 0)
        return fusedOrder<lanes, (1 << Order) / lanes, Inverse, T, Place>;
    else if constexpr (Order < kFirstLargeOrder<T>)
        return stockhamOrder<Order, Inverse, T, Place>;
    else
        return large<Inverse, T, Place>;
}
template <class T, template <class> class Place, bool Inverse, int... Order>
constexpr typename FftKernels<T>::template Orders<Place> transforms(Lane<Order...>) {
    return {{transformOf<T, Place, Inverse, Order>()...}};
}
template <class T, template <class> class Place> constexpr typename FftKernels<T>::template Directions<Place> directions() {
    return {transforms<T, Place, false>(Iota<kFirstLargeOrder<T> + 1>{}), transforms<T, Place, true>(Iota<kFirstLargeOrder<T> + 1>{})};
}
template <class T, template <class> class Place> FftTransform<T, Place>* forwardOf(int order) { return directions<T, Place>().forward[order]; }

// ---- real transforms --------------------------------------------------------------------------------------------------------------

template <bool Inverse, class T> TEVS_INLINE void recombine(const T* in, T* out, int n, const T* w) {
    constexpr int K = kPairsAtOnce<T>;
    const auto by = [=]<int Values>(At<Values>) TEVS_HERE {
        for (int k = 1; k <= n / 2; k += Values) recombined<Inverse, Values>(in, out, k, n - k - Values + 1, w + 2 * (k - 1));
    };
    if constexpr (kBlock<T> * int(sizeof(T)) == 64)
        if (n < kBlock<T> * kBlock<T>) return by(At<K / 2>{});   // as the transform has stored them a moment ago
    by(At<K>{});
}

// Of eight points, by loads and stores that lie where the transform stores and loads: any others would wait.
constexpr auto binsOfPair = [](auto p, auto m, auto w, auto& x, auto& y) {
    const decltype(p) e = {p.re + m.re, p.im - m.im}, o = {p.re - m.re, p.im + m.im}, v = mul(o, w);
    x = minusI(e, v);
    y = {e.re - v.im, -e.im - v.re};
};
template <class T> TEVS_INLINE void binsOfEight(const T* z, T* bins, const T* w) {
    if constexpr (kBlock<T> == 2) {
        recombine<false>(z, bins, 8, w);
    } else {
        const auto a = load<T, 4>(z), b = load<T, 4>(z + 4), c = load<T, 4>(z + 8), d = load<T, 4>(z + 12);
        const auto p = separated(__builtin_shufflevector(a, b, 2, 3, 4, 5), __builtin_shufflevector(b, c, 2, 3, 4, 5));
        Cx<Vec<T, 4>> x, y;
        binsOfPair(p, reversed(separated(c, d)), read<4>(Pairs<const T>{w}, 0), x, y);
        write(Pairs<T>{bins}, 4, reversed(y));
        write(Pairs<T>{bins}, 1, x);
    }
}

template <class T> void spectrumOfReal(const FftTables<T>& t, const T* z, T* bins, T* first, T* last) {
    const T a = z[0] + z[0], b = z[1] + z[1];
    if (t.order == 3)
        binsOfEight(z, bins, t.recombination);
    else
        recombine<false>(z, bins, 1 << t.order, t.recombination);
    *first = a + b;
    *last = a - b;
}

constexpr auto pairOfBins = [](auto p, auto m, auto w, auto& x, auto& y) {
    const decltype(p) e = {p.re + m.re, p.im - m.im}, o = {p.re - m.re, p.im + m.im};
    const decltype(p) v = {fma(o.re, w.re, o.im * w.im), fnma(o.re, w.im, o.im * w.re)};   // conj(w) O
    x = plusI(e, v);
    y = {e.re + v.im, v.re - e.im};
};
template <class T> TEVS_INLINE void pairsOfEight(const T* bins, T first, T last, T* z, const T* w) {
    if constexpr (kBlock<T> == 2) {
        recombine<true>(bins, z, 8, w);
        z[0] = first + last;
        z[1] = first - last;
    } else {
        Cx<Vec<T, 4>> x, y;
        pairOfBins(read<4>(Pairs<const T>{bins}, 1), reversed(read<4>(Pairs<const T>{bins}, 4)), read<4>(Pairs<const T>{w}, 0), x, y);
        const auto up = interleaved(x), down = interleaved(reversed(y));   // Z[1] .. Z[4], Z[4] .. Z[7]
        const Vec<T, 4> ends = {first + last, first - last};
        store(z, __builtin_shufflevector(ends, up.a, 0, 1, 4, 5));
        store(z + 4, __builtin_shufflevector(up.a, up.b, 2, 3, 4, 5));
        store(z + 8, down.a);
        store(z + 12, down.b);
    }
}

template <class T> void pairsOfSpectrum(const FftTables<T>& t, const T* bins, T first, T last, T* z) {
    if (t.order == 3) return pairsOfEight(bins, first, last, z, t.recombination);
    recombine<true>(bins, z, 1 << t.order, t.recombination);
    z[0] = first + last;
    z[1] = first - last;
}

// ---- short transforms of integers -----------------------------------------------------------------------------------------------------

// Without an array: the compiler would copy its elements through memory, and wait for their halves.
template <class T, template <class> class Place> void two(const FftTables<T>&, Place<const T> src, Place<T> dst, T*, T scale) {
    const auto a = read<1>(src, 0), b = read<1>(src, 1), sum = times(a + b, scale), difference = times(a - b, scale);
    write(dst, 0, sum);
    write(dst, 1, difference);
}

// Radix 2 by 2 within one vector, lanes in natural order: u = x0 + x2, x1 + x3, x0 - x2, x1 - x3.
template <bool Inverse, class T, template <class> class Place> void four(const FftTables<T>&, Place<const T> src, Place<T> dst, T*, T scale) {
    using V = Vec<T, 4>;
    constexpr auto lows = [](int i) { return i & 1; };
    constexpr auto highs = [](int i) { return i | 2; };
    constexpr auto evens = [](int i) { return 2 * (i & 1); };
    constexpr auto odds = [](int i) { return i & 1 ? 7 : 1; };   // u3 takes a factor -i: (re, im) becomes (im, -re)
    const V sign = {1, 1, -1, -1}, signOfIm = {1, -1, -1, 1};
    const auto half = [=](V x) { return shuffle<lows>(x, x) + sign * shuffle<highs>(x, x); };
    const auto x = read<4>(src, 0);
    const V re = half(reordered(Inverse ? x.im : x.re)), im = half(reordered(Inverse ? x.re : x.im));
    const Cx<V> y = {shuffle<evens>(re, re) + sign * shuffle<odds>(re, im), shuffle<evens>(im, im) + signOfIm * shuffle<odds>(im, re)};
    const auto z = times(Cx<V>{reordered(y.re), reordered(y.im)}, scale);
    write(dst, 0, Inverse ? swapped(z) : z);
}

// Always scaled: a scale of 1 is the exception.
template <int K, int R, bool Inverse, class T, template <class> class Place>
void scaledOrder(const FftTables<T>& t, Place<const T> src, Place<T> dst, T*, T scale) {
    fused<K, R, Inverse, true>(src, dst, t.passes, scale);
}
template <class T, template <class> class Place, bool Inverse, int Order> constexpr FftTransform<T, Place>* shortTransform() {
    constexpr int lanes = Order > 3 ? fusedLanes<T>(Order, kBlock<T>) : 0;
    if constexpr (Order > 3 && lanes > 0 && 1 << Order <= 16 * lanes)
        return scaledOrder<lanes, (1 << Order) / lanes, Inverse, T, Place>;
    else if constexpr (Order == 0 || Order > 3)
        return nullptr;
    else if constexpr (Order == 1)
        return two<T, Place>;
    else if constexpr (Order == 2 && kBlock<T> >= 4)
        return four<Inverse, T, Place>;
    else if constexpr (Order == 3)
        return eight<Inverse, Place>;
    else
        return transformOf<T, Place, Inverse, Order>();
}
template <class T, template <class> class Place, int... Order>
constexpr typename FftKernels<T>::template IntegerDirections<Place> shortTransforms(Lane<Order...>) {
    return {{shortTransform<T, Place, false, Order>()...}, {shortTransform<T, Place, true, Order>()...}};
}

template <class T> constexpr FftKernels<T> kernels() {
    constexpr Iota<FftKernels<T>::kIntegerOrders> kShortOrders;
    return {
        .lanes = kBlock<T>,
        .pairs = directions<T, Pairs>(),
        .parts = directions<T, Parts>(),
        .spectrumOfReal = spectrumOfReal<T>,
        .pairsOfSpectrum = pairsOfSpectrum<T>,
        .integerPairs = shortTransforms<T, IntegerPairs>(kShortOrders),
        .integerParts = shortTransforms<T, IntegerParts>(kShortOrders),
    };
}

}   // namespace
}   // namespace tevs::TEVS_LEVEL_NS
