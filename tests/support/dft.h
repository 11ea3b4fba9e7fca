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
    Values w(n), y(n);
    for (size_t k = 0; k < n; ++k) w[k] = sign < 0 ? std::conj(root(k, n)) : root(k, n);
    for (size_t k = 0; k < n; ++k) {
        long double re = 0, im = 0;
        for (size_t t = 0, at = 0; t < n; ++t, at = at + k < n ? at + k : at + k - n) {
            re += x[t].real() * w[at].real() - x[t].imag() * w[at].imag();
            im += x[t].real() * w[at].imag() + x[t].imag() * w[at].real();
        }
        y[k] = {re, im};
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

// ---- layouts: which part of which value an array of scalars holds where ---------------------------------------------------------------------

enum Layout { Pairs, Parts, Reals, Ccs, Pack, Perm };

inline size_t samples(int order) { return size_t{1} << order; }
inline size_t scalars(Layout layout, size_t n) { return layout <= Parts ? 2 * n : layout == Ccs ? 2 * (n / 2 + 1) : n; }
struct Where {
    size_t k;
    bool imaginary;
};
inline Where whereIs(Layout layout, size_t i, size_t n) {
    if (layout == Parts) return {i % n, i >= n};
    if (layout == Reals) return {i, false};
    if (layout == Pack || (layout == Perm && n % 2 == 1)) return i == 0 ? Where{0, false} : Where{(i + 1) / 2, i % 2 == 0};
    if (layout == Perm && i < 2) return {i * n / 2, false};
    return {i / 2, i % 2 == 1};
}
// The ends of a real signal's spectrum are real: CCS has zeros there.
inline bool isZero(Layout layout, Where at, size_t n) { return layout == Ccs && at.imaginary && at.k % n * 2 % n == 0; }

template <class T> Values unpacked(Layout layout, const std::vector<T>& v, size_t n) {
    Values x(n);
    for (size_t i = 0; i < v.size(); ++i) {
        const Where at = whereIs(layout, i, n);
        if (!isZero(layout, at, n)) x[at.k] += at.imaginary ? Value(0, v[i]) : Value(v[i], 0);
    }
    if (layout >= Ccs)
        for (size_t k = n / 2 + 1; k < n; ++k) x[k] = std::conj(x[n - k]);
    return x;
}
inline std::vector<long double> packed(Layout layout, const Values& x) {
    const size_t n = x.size();
    std::vector<long double> v(scalars(layout, n));
    for (size_t i = 0; i < v.size(); ++i) {
        const Where at = whereIs(layout, i, n);
        v[i] = isZero(layout, at, n) ? 0 : at.imaginary ? x[at.k].imag() : x[at.k].real();
    }
    return v;
}

}   // namespace test
