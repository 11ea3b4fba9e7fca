// Complex integers as places that convert: what is read is T, and what is written is rounded and saturated.
#pragma once

#include "core/simd/lanes.h"
#include "transform/complex.kern.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// To nearest. What is above the range would convert to the minimum, as what is below does.
template <class V> TEVS_INLINE auto rounded(Two<V> v) {
    constexpr bool isShort = sizeof(Element<V>) == 4;
    constexpr Element<V> most = isShort ? 32767 : 2147483647;
    const Two<V> below{atMost(same<V>(most), v.a), atMost(same<V>(most), v.b)};
    if constexpr (isShort)
        return pack16(nearestInt(below.a), nearestInt(below.b));
    else
        return nearestInt(below);
}
TEVS_INLINE int16_t rounded(float x) { return int16_t(rounded(Two<Vec<float, 4>>{Vec<float, 4>{x}, Vec<float, 4>{}})[0]); }
TEVS_INLINE int32_t rounded(double x) { return rounded(Two<Vec<double, 2>>{Vec<double, 2>{x}, Vec<double, 2>{}})[0]; }

// A block from, to the values i .. i + K - 1, as for the float places.
template <int K, class T, class F = typename Mutable<T>::type> TEVS_INLINE Cx<Vec<F, K>> read(IntegerParts<T> a, int64_t i) {
    const auto part = [i](auto* p) {
        if constexpr (K == 1)
            return Vec<F, 1>{F(loadAs<typename IntegerOf<F>::type>(p + i))};
        else
            return reordered(loadLanes<F, K* int(sizeof(F)), 1>(p + i).v[0]);
    };
    return {part(a.re), part(a.im)};
}
template <int K, class T, class F = typename Mutable<T>::type> TEVS_INLINE Cx<Vec<F, K>> read(IntegerPairs<T> a, int64_t i) {
    if constexpr (K == 1) {
        return read<1>(IntegerParts<T>{a.p, a.p + 1}, 2 * i);
    } else {
        const auto v = loadLanes<F, K* int(sizeof(F)), 2>(a.p + 2 * i);
        return separated(v.v[0], v.v[1]);
    }
}
template <class T, class V> TEVS_INLINE void write(IntegerParts<T> a, int64_t i, Cx<V> v) {
    if constexpr (kCount<V> == 1) {
        store(a.re + i, rounded(v.re[0]));
        store(a.im + i, rounded(v.im[0]));
    } else {
        const auto both = rounded(Two<V>{reordered(v.re), reordered(v.im)});
        store(a.re + i, low(both));
        store(a.im + i, high(both));
    }
}
template <class T, class V> TEVS_INLINE void write(IntegerPairs<T> a, int64_t i, Cx<V> v) {
    if constexpr (kCount<V> == 1)
        write(IntegerParts<T>{a.p, a.p + 1}, 2 * i, v);
    else
        store(a.p + 2 * i, rounded(interleaved(v)));
}

}   // namespace
}   // namespace tevs::TEVS_LEVEL_NS
