// Sums of floats whose result is a float: in single precision, without the error of a long sum in single precision.
#pragma once

#include "core/simd/reduce.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// A block of at most so many elements is summed in single precision, the blocks in double. A lane has a sixteenth of a block, of complex elements a fourth, or less.
constexpr int kSingleBlock = 1 << 13;
template <auto Kernel, class... T> __attribute__((noinline)) auto sumOfBlocks(int n, const T*... src) {
    decltype(Kernel(src..., n)) sum{};
    for (ptrdiff_t i = 0; i < n; i += kSingleBlock) sum = sumOf(sum, Kernel((src + i)..., n - i < kSingleBlock ? int(n - i) : kSingleBlock));
    return sum;
}
template <int U, class Op, class... S> TEVS_INLINE auto inSingle(ptrdiff_t n, Op op, S... s) { return reduce<kLanes<float>, 4, U>(n, op, s...); }

// Whether a sum of products so found stands. Where it is this small, products may have underflowed that count; where it is not finite, one may have overflowed.
TEVS_INLINE bool stands(double magnitude) { return magnitude >= 0x1p-80 && magnitude <= 0x1.fffffffffffffp1023; }

}   // namespace
}   // namespace tevs::TEVS_LEVEL_NS
