// The discrete Fourier transform in extended precision: the textbook radix-2 transform, and the definition that it is checked against.
#pragma once

#include <cmath>
#include <complex>
#include <numbers>
#include <utility>
#include <vector>

namespace test {

using Value = std::complex<long double>;
using Values = std::vector<Value>;

inline Value root(size_t k, size_t n) {
    const long double angle = 2 * std::numbers::pi_v<long double> * (long double)(k) / (long double)(n);
    return {std::cos(angle), std::sin(angle)};
}

inline Values slowDft(const Values& x, int sign) {
    const size_t n = x.size();
    Values y(n);
    for (size_t k = 0; k < n; ++k)
        for (size_t t = 0; t < n; ++t) {
            const Value w = root(t * k % n, n);
            y[k] += x[t] * (sign < 0 ? std::conj(w) : w);
        }
    return y;
}

inline Values oracle(Values x, int sign) {
    const size_t n = x.size();
    for (size_t i = 1, j = 0; i < n; ++i) {
        size_t bit = n >> 1;
        for (; j & bit; bit >>= 1) j ^= bit;
        j |= bit;
        if (i < j) std::swap(x[i], x[j]);
    }
    Values w(n / 2);
    for (size_t k = 0; k < n / 2; ++k) w[k] = sign < 0 ? std::conj(root(k, n)) : root(k, n);
    for (size_t len = 2; len <= n; len *= 2)
        for (size_t i = 0; i < n; i += len)
            for (size_t k = 0; k < len / 2; ++k) {
                const Value u = x[i + k], f = w[k * (n / len)], z = x[i + k + len / 2];
                const Value v{z.real() * f.real() - z.imag() * f.imag(), z.real() * f.imag() + z.imag() * f.real()};
                x[i + k] = u + v;
                x[i + k + len / 2] = u - v;
            }
    return x;
}

}   // namespace test
