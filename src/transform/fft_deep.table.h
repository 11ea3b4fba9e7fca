#pragma once

#include "transform/fft.table.h"

namespace tevs {

// Orders 14 to 16 of interleaved doubles, where a block holds two of them: in place or from elsewhere, without a work area. The factors end where those of the sweeps would
// begin.
constexpr int kFirstDeepOrder = 14, kDeepOrders = 3;
template <class T> constexpr bool goesDeep(int order, int lanes) {
    return sizeof(T) == 8 && lanes == 2 && order >= kFirstDeepOrder && order < kFirstDeepOrder + kDeepOrders;
}

// Their radices, the outermost first, and 64 points at the end as 8 by 8: the same when read backwards. A transform in place then begins with an exchange of pairs.
constexpr Radices deepRadices(int order) {
    Radices r;
    r.push(3);
    r.push(3);
    r.push(order == 15 ? 3 : 2);
    if (order == 16) r.push(2);
    r.push(6);
    return r;
}
constexpr int64_t deepFactors(int order) { return (int64_t{2} << order) - 2 * 64; }   // reals

struct DeepFftKernels {
    FftTransform<double, Pairs>*forward[kDeepOrders], *inverse[kDeepOrders];
};

}   // namespace tevs

TEVS_KERNEL_TABLE(DeepFftKernels, fftDeep, 2, FMA)
