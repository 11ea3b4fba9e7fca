// The three packings of the spectrum X[0] .. X[len/2] of len reals: X[0], and of even length X[len/2], are real and stand alone; X[1] .. are pairs, one after another.
#pragma once

namespace tevs {

enum class Packing { Ccs, Pack, Perm };

// Where X[1] begins. An odd length has no second real value to stand before it in Perm order.
constexpr int firstPair(Packing packing, int len) { return packing == Packing::Ccs || (packing == Packing::Perm && len % 2 == 0) ? 2 : 1; }
// Where the second real value stands, of an even length.
constexpr int secondReal(Packing packing, int len) { return packing == Packing::Ccs ? len : packing == Packing::Pack ? len - 1 : 1; }
// Reals in all. CCS has a 0 beside each value that is real.
constexpr int packedLen(Packing packing, int len) { return packing == Packing::Ccs ? 2 * (len / 2 + 1) : len; }
static_assert(packedLen(Packing::Ccs, 1) == 2 && packedLen(Packing::Ccs, 5) == 6 && packedLen(Packing::Ccs, 6) == 8);

}   // namespace tevs
