// Floating-point lanes as bits, and what elementary functions are put together from.
#pragma once

#include "core/simd/vec.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

template <class V> using Bits = decltype(V{} == V{});
template <class V> TEVS_INLINE V constant(double x) { return Element<V>(x) - V{}; }
template <class V> TEVS_INLINE V signOf(V v) { return (V)((Bits<V>)v & (Bits<V>)constant<V>(-0.0)); }
template <class V> TEVS_INLINE V abs(V v) { return (V)((Bits<V>)v & ~(Bits<V>)constant<V>(-0.0)); }
template <class V> TEVS_INLINE V flip(V v, V sign) { return (V)((Bits<V>)v ^ (Bits<V>)sign); }
template <class V> TEVS_INLINE V withSign(V v, V sign) { return (V)((Bits<V>)v | (Bits<V>)sign); }   // of v >= 0

// The upper half of a significand: 12 bits of single precision, 26 of double. Products of two such are exact, and so is one with what they leave of a number.
template <class V> TEVS_INLINE V upperHalf(V v) { return (V)((Bits<V>)v & (sizeof(v[0]) == 4 ? ~0xfff : ~0x7ffffffll)); }

// c[0] + c[1] z + ... (Horner).
template <class V> TEVS_INLINE V polynomial(V, double c) { return constant<V>(c); }
template <class V, class... C> TEVS_INLINE V polynomial(V z, double c, C... rest) { return constant<V>(c) + z * polynomial(z, rest...); }

}   // namespace
}   // namespace tevs::TEVS_LEVEL_NS
