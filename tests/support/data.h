// Test data: seeded, and rich in the values that trip arithmetic.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <type_traits>
#include <vector>

#include "tevs.h"

namespace test {

inline std::mt19937_64& generator() {
    static std::mt19937_64 g(20061);
    return g;
}

// Integers: any bit pattern, every fourth one an extreme. Floats: uniform in -1 .. 1.
template <class T> T randomValue() {
    auto& g = generator();
    if constexpr (std::is_integral_v<T>) {
        constexpr T lo = std::numeric_limits<T>::min(), hi = std::numeric_limits<T>::max();
        const T edges[] = {lo, hi, T(lo + 1), 0};
        const uint64_t r = g();
        return (r & 3) == 0 ? edges[(r >> 2) & 3] : T(r >> 8);
    } else if constexpr (std::is_floating_point_v<T>) {
        return std::uniform_real_distribution<T>(-1, 1)(g);
    } else {
        T z;
        z.re = randomValue<decltype(z.re)>();
        z.im = randomValue<decltype(z.im)>();
        return z;
    }
}
template <class T> std::vector<T> randomVector(size_t n) {
    std::vector<T> v(n);
    for (T& x : v) x = randomValue<T>();
    return v;
}

// Floats over the whole range: every exponent, both signs, zeros, subnormals, infinities and NaN.
template <class T> std::vector<T> wildFloats(size_t n) {
    constexpr T inf = std::numeric_limits<T>::infinity();
    const T special[] = {T(0),
                         -T(0),
                         inf,
                         -inf,
                         std::numeric_limits<T>::quiet_NaN(),
                         std::numeric_limits<T>::denorm_min(),
                         -std::numeric_limits<T>::max(),
                         std::numeric_limits<T>::min(),
                         T(0.5),
                         T(-2.5),
                         T(32767.5),
                         T(-32768.5)};
    std::vector<T> v(n);
    auto& g = generator();
    for (T& x : v) {
        const uint64_t r = g();
        x = (r & 7) == 0 ? special[(r >> 8) % std::size(special)]
                         : std::ldexp(randomValue<T>(), int((r >> 8) % (std::numeric_limits<T>::max_exponent * 2)) - std::numeric_limits<T>::max_exponent + 1);
    }
    return v;
}

// The same of complex numbers.
template <class T>
concept Complex = requires(T z) {
    z.im;
};
template <Complex Z> std::vector<Z> wildFloats(size_t n) {
    const auto parts = wildFloats<decltype(Z::re)>(2 * n);
    std::vector<Z> v(n);
    std::memcpy(v.data(), parts.data(), n * sizeof(Z));
    return v;
}

// A NaN is a NaN: which of two operands' signs and payloads a result keeps is not laid down.
template <class T> void canonical(T& x) {
    if constexpr (std::is_floating_point_v<T>) {
        if (std::isnan(x)) x = std::numeric_limits<T>::quiet_NaN();
    } else if constexpr (Complex<T>) {
        canonical(x.re), canonical(x.im);
    }
}

// f(len) for every length from 1 to 70 and a long one, where what an element becomes depends on more than itself.
template <class F> void eachLength(F f) {
    for (int len = 1; len <= 71; ++len) f(len == 71 ? 1003 : len);
}

// What tells results of one level or ABI from another's, all in a number; going on from h.
inline uint64_t hashOf(const void* p, size_t bytes, uint64_t h = 14695981039346656037u) {
    for (size_t i = 0; i < bytes; ++i) h = (h ^ static_cast<const unsigned char*>(p)[i]) * 1099511628211u;
    return h;
}

}   // namespace test
