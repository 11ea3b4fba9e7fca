// Samples that are computed in lanes of double, from their index or from data, and stored in any type.
#pragma once

#include "core/simd/lanes.h"
#include "core/simd/map.h"
#include "core/simd/real.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// The indices n, n + 1, ... as a source of map().
struct Index {
    int n;
    friend TEVS_INLINE Index operator+(Index a, ptrdiff_t i) { return {a.n + int(i)}; }
    TEVS_INLINE Index at() const { return *this; }
};
template <int N> TEVS_INLINE Index staged(Index a, int) { return a; }

template <class V, int... I> TEVS_INLINE V countOf(Lane<I...>) { return V{I...}; }
template <int N> TEVS_INLINE Vec<int32_t, N> indices(Index a) { return Vec<int32_t, N>{} + a.n + countOf<Vec<int32_t, N>>(Iota<N>{}); }

template <class V, class F> TEVS_INLINE auto both(Two<V> v, F f) { return Two{f(v.a), f(v.b)}; }

// So many registers of 32-bit lanes make one of T.
template <class T> constexpr int kIntsPer = 4 / int(sizeof(T) < 4 ? sizeof(T) : 4);

// To 32 bits, to nearest or toward zero, saturated; NaN gives the minimum of T.
template <class T, class Mode, class V> TEVS_INLINE auto toInts(Two<V> v) {
    using I = Vec<int32_t, 2 * kCount<V>>;
    const auto converted = [](Two<V> x) {
        if constexpr (__is_same(Mode, Truncated))
            return truncatedInt(x);
        else
            return nearestInt(x);
    };
    if constexpr (__is_same(T, uint32_t)) {
        const V middle = constant<V>(0x1p31);
        const auto x = both(v, [](V y) { return atMost(constant<V>(0xffffffffp0), atLeast(y, V{})); });
        const auto upper = both(x, [=](V y) { return isAtMost(middle, y); });
        const auto rest = converted(Two{x.a - (V)((Bits<V>)middle & upper.a), x.b - (V)((Bits<V>)middle & upper.b)});
        return (Vec<uint32_t, kCount<I>>)(rest ^ (evens((I)upper.a, (I)upper.b) & INT32_MIN));
    } else {
        return converted(both(v, [](V y) { return atMost(constant<V>(0x7fffffffp0), y); }));
    }
}

// dst[i] = f(Lanes<N>, sources at i ...) for 0 <= i < len, where f returns N results as two registers of double: one rounding to float, and to integers by Mode.
template <class Mode, class T, class F, class... S> TEVS_INLINE void produce(T* dst, int len, F f, S... s) {
    constexpr int k = kIntsPer<T>;
    map<kRegisterBytes / 4 * k, 4 * k>(
        len, dst,
        [=](auto w, auto... at) {
            constexpr int n = w.n / k;
            if constexpr (__is_same(T, double))
                return f(Lanes<n>{}, at...);
            else if constexpr (__is_same(T, float))
                return narrow(f(Lanes<n>{}, at...));
            else {
                Some<decltype(toInts<T, Mode>(f(Lanes<n>{}, at...))), k> ints;
                for (int i = 0; i < k; ++i) ints.v[i] = toInts<T, Mode>(f(Lanes<n>{}, (at + i * n)...));
                return packed<T>(ints);
            }
        },
        s...);
}

}   // namespace
}   // namespace tevs::TEVS_LEVEL_NS
