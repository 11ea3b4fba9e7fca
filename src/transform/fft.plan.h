// How a transform of length N = 2^order is split into passes, for the kernels that run them and the tables that feed them.
//
// Orders from 4 to 15, in double precision 13: Stockham's autosort form (Van Loan, Computational Frameworks for the FFT, section 1.7), decimation in frequency. With n points left
// after strides s, n * s = N, a pass of radix R takes, for p < m = n/R and q < s,
//
//     y[q + s (R p + j)] = w_n^(p j) * sum over l of x[q + s (p + m l)] w_R^(j l),   w_n = exp(-2 pi i / n)
//
// Larger orders: N = P x Q in two sweeps over memory (Bailey, FFTs in external or hierarchical memory, 1990): transforms of length P down the columns of the
// source, taken a few columns at a time into the work buffer, times w_N^(n2 k1), turned over; then transforms of length Q down the columns of that.
#pragma once

namespace tevs {
namespace {

// From this order on two sweeps; the scratch of a call holds a whole transform below.
template <class T> constexpr int kFirstLargeOrder = sizeof(T) == 4 ? 16 : 14;
// Complex values of a row that a sweep of columns of length 2^order takes at once: a cache line, or two where that keeps the tiles small.
template <class T> constexpr int tileColumns(int order) { return (order <= 6 ? 64 : 32) / int(sizeof(T)); }

// And in a block of a tile: of 256 bits at most, so that its real and imaginary parts are no more than a cache line.
template <class T> constexpr int columnLanes(int lanes) { return lanes * int(sizeof(T)) > 32 ? 32 / int(sizeof(T)) : lanes; }

struct Radices {
    int count = 0;
    int r[10] = {};
    constexpr void push(int bits) { r[count++] = 1 << bits; }
    // As radix 8, and as radix 4 first where 3 does not divide the bits.
    constexpr void pushAll(int bits) {
        for (; bits % 3 != 0; bits -= 2) push(2);
        for (; bits > 0; bits -= 3) push(3);
    }
};

// Passes over `bits` bits, after a first one where there is one.
//
// Eight registers hold little of what a pass holds in any radix, and what lies in memory anyway is read again for free: radix 16 then costs least where its 16
// streams do not fall into the same few sets of the first cache, up to 32 KiB; from there on radix 8. The pass that turns over takes radix 4.
#ifdef __i386__
constexpr int turningBits(int) { return 2; }
constexpr Radices radicesOf(int bits, Radices r = {}) {
    r.push(2);
    bits -= 2;
    if (bits == 4) {
        r.push(4);
        return r;
    }
    r.pushAll(bits);
    return r;
}
template <class T> constexpr Radices radicesAfterTurning(int order, int bits, Radices r) {
    if (2 * int(sizeof(T)) << order <= 32 << 10) {
        if (bits % 4 == 1 || bits % 4 == 3) {
            r.push(3);
            bits -= 3;
        }
        if (bits % 4 == 2) {
            r.push(2);
            bits -= 2;
        }
        for (; bits > 0; bits -= 4) r.push(4);
        return r;
    }
    r.pushAll(bits - 2);
    r.push(2);
    return r;
}
#else
// Of 16 values at a time as many as become a block.
constexpr int turningBits(int lanes) { return lanes == 16 ? 4 : 3; }
constexpr Radices radicesOf(int bits, Radices r = {}) {
    r.pushAll(bits);
    return r;
}
template <class T> constexpr Radices radicesAfterTurning(int, int bits, Radices r) { return radicesOf(bits, r); }
#endif

// Orders whose transform is one kernel in registers: N = lanes x radix, two passes with nothing stored between. Of doubles two at a time only that of integers reads its factors.
template <class T> constexpr int fusedLanes(int order, int lanes) {
    if (lanes == 2) return order <= 6 ? 2 : 0;
    if (order <= 5) return 4;
    if (order == 6) return lanes * sizeof(T) < 32 ? 0 : lanes < 8 ? lanes : 8;
    if (order == 7) return lanes >= 8 ? 8 : 0;
    return order == 8 && lanes == 16 ? 16 : 0;
}

// The passes of an order below the large ones. The first one turns `lanes` transforms at a time over, so that the blocks of all later passes are contiguous.
template <class T> constexpr Radices passesOf(int order, int lanes) {
    const int fused = fusedLanes<T>(order, lanes);
    Radices r;
    if (fused) {
        r.count = 2;
        r.r[0] = (1 << order) / fused;
        r.r[1] = fused;
        return r;
    }
    r.push(turningBits(lanes));
    return radicesAfterTurning<T>(order, order - turningBits(lanes), r);
}

// Large orders: the orders of P and Q, Q being P, 2 P or 4 P. Where P = Q would put all rows of both sweeps at a distance of 4096 bytes, in the same few sets
// of the caches, Q is larger. 64 by 256 takes a pass less than 128 by 128.
template <class T> constexpr int outerOrder(int order) {
    const bool sameSets = order % 2 == 0 && (2 * sizeof(T) << order / 2) == 4096;
    return order / 2 - (sameSets || order == 14);
}
template <class T> constexpr int innerOrder(int order) { return order - outerOrder<T>(order); }

template <class T> constexpr int64_t tileBytes(int rows) { return int64_t{2} * sizeof(T) * tileColumns<T>(rows) << rows; }

// Room for the tiles of a sweep. Two will do, one that is filled and one that is free.
template <class T> constexpr int64_t leastRoom(int order) { return 2 * tileBytes<T>(innerOrder<T>(order)); }
// More of them make longer runs of each row: lines that lie far apart come from memory at a quarter of the speed of runs of 512 bytes. They are to stay in the
// second cache.
template <class T> constexpr int64_t tileRoom(int order) {
    constexpr int64_t kSecondCache = 640 << 10, kScratch = 128 << 10;   // kScratch: what a call for 2 MiB of data has anyway
    const int64_t least = leastRoom<T>(order), data = int64_t{2} * sizeof(T) << order;
    const int64_t most = order >= 19 ? kSecondCache : data == 2 << 20 ? kScratch : 0;
    return least < most ? most : least;
}
// Where a call has less than two tiles, of 128 KiB at least, the order of the rows that are transforms within that.
template <class T> constexpr int rowOrder(int order) { return sizeof(T) == 4 && order == 25 ? 16 : order - 10; }
constexpr int kMostTiles = 8;
// The tiles that a sweep fills at once; one more is free.
template <class T> constexpr int tilesAtOnce(int64_t room, int rows) {
    int tiles = 1;
    while (tiles < kMostTiles && (2 * tiles + 1) * tileBytes<T>(rows) <= room) tiles *= 2;
    return tiles;
}

// The lane order of a block: what a block of `lanes` interleaved complex values becomes under the shuffles that stay within 128 bits, which hold `group`. In 512 bits the shuffles
// that cross them cost no more, and the order is natural.
constexpr int laneAt(int lanes, int l, int group) {
    const int half = group / 2;
    return lanes > 2 * group ? l : (l & half ? lanes / 2 : 0) + l / group * half + l % half;
}

}   // namespace
}   // namespace tevs
