// Roots of unity for the transforms' tables.
#pragma once

#include <stdint.h>

namespace tevs {

// The unevaluated sum of two doubles, 106 bits (Dekker, A floating-point technique for extending the available precision, 1971).
struct Wide {
    double hi, lo;
};
constexpr Wide normalized(double hi, double lo) {
    const double s = hi + lo;
    return {s, lo - (s - hi)};
}
constexpr Wide exactProduct(double a, double b) {
    constexpr double kSplit = 0x1p27 + 1;
    const double p = a * b, as = kSplit * a, bs = kSplit * b;
    const double ah = as - (as - a), bh = bs - (bs - b), al = a - ah, bl = b - bh;
    return {p, ((ah * bh - p) + ah * bl + al * bh) + al * bl};
}
constexpr Wide operator*(Wide a, Wide b) {
    const Wide p = exactProduct(a.hi, b.hi);
    return normalized(p.hi, p.lo + (a.hi * b.lo + a.lo * b.hi));
}
constexpr Wide operator+(Wide a, Wide b) {
    const double s = a.hi + b.hi, t = s - a.hi;
    return normalized(s, ((a.hi - (s - t)) + (b.hi - t)) + (a.lo + b.lo));
}
constexpr Wide operator-(Wide a) { return {-a.hi, -a.lo}; }
constexpr Wide operator/(Wide a, int d) {
    const double q = a.hi / d;
    const Wide p = exactProduct(q, d);
    return normalized(q, ((a.hi - p.hi) - p.lo + a.lo) / d);
}

struct WideRoot {
    Wide cos, sin;
};
constexpr WideRoot operator*(const WideRoot& a, const WideRoot& b) { return {a.cos * b.cos + -(a.sin * b.sin), a.sin * b.cos + a.cos * b.sin}; }

// Roots at the multiples of 2^-9, 2^-16, 2^-23 and 2^-30 of a turn: an angle in units of the last is a sum of one of each.
struct RootTables {
    static constexpr int kDigit = 7, kDigits = 4, kBits = 9 + kDigit * (kDigits - 1);
    WideRoot of[kDigits][1 << kDigit];

    constexpr RootTables() : of() {
        for (int d = 0; d < kDigits; ++d) {
            const double turn = 1.0 / double(int64_t{1} << (9 + kDigit * d));
            const Wide angle{6.283185307179586 * turn, 2.4492935982947064e-16 * turn};
            WideRoot one{{1, 0}, angle};
            Wide term = angle;
            for (int k = 2; k < 20; ++k) {   // Taylor's series: angle^k / k!
                term = term * angle / k;
                Wide& sum = k % 2 ? one.sin : one.cos;
                sum = sum + (k / 2 % 2 ? -term : term);
            }
            of[d][0] = {{1, 0}, {0, 0}};
            for (int j = 1; j < 1 << kDigit; ++j) of[d][j] = of[d][j - 1] * one;
        }
    }
};
inline constexpr RootTables kRoots;

struct Root {
    double re, im;
};

// exp(-2 pi i * num / den) for den a power of two up to 2^27, each part rounded once. The angle is folded into the first octant, so that mirrored entries agree to the bit.
constexpr Root unityRoot(uint64_t num, uint64_t den) {
    uint64_t x = 8 * (num & (den - 1));   // in units of 1/(8 den) turn
    const bool lower = x >= 4 * den;
    if (lower) x = 8 * den - x;
    const bool left = x > 2 * den;
    if (left) x = 4 * den - x;
    const bool steep = x > den;
    if (steep) x = 2 * den - x;
    x <<= RootTables::kBits - 3 - __builtin_ctzll(den);
    WideRoot r = kRoots.of[0][x >> (RootTables::kBits - 9)];
    for (int d = 1; d < RootTables::kDigits; ++d)
        if (const auto digit = x >> (RootTables::kBits - 9 - RootTables::kDigit * d) & ((1 << RootTables::kDigit) - 1)) r = r * kRoots.of[d][digit];
    const double re = steep ? r.sin.hi : r.cos.hi, im = steep ? r.cos.hi : r.sin.hi;
    return {left ? -re : re, lower ? im : -im};
}

// These of every den up to 2^13, computed beforehand: a transform of one call's own would spend most of its time on its tables. Those of den stand together, from den on.
constexpr uint32_t kMostListed = 1 << 13;
extern const Root (&kListedRoots)[2 * kMostListed];

// For den from 2^13 on with an error of 2^-52, which single precision does not see: a listed root, turned by less than 2^-13 of a turn.
inline Root turnedRoot(uint64_t num, uint64_t den) {
    const int bits = __builtin_ctzll(den) - 13;   // of num that are less than what is listed
    const auto n = uint32_t(num & (den - 1));
    const Root r = kListedRoots[kMostListed + (n >> bits)];
    const double d = double(int32_t(n & ((1u << bits) - 1))) * (6.283185307179586 / double(int64_t(den)));
    const double sin = d - d * d * d * (1.0 / 6), versed = d * d * (0.5 - d * d * (1.0 / 24));
    return {r.re - (r.re * versed - r.im * sin), r.im - (r.im * versed + r.re * sin)};
}

// exp(-2 pi i num / den) for any den below 2^34, each part with hardly an error but that of its last rounding. Folded likewise; the 16 upper bits of the angle come from the
// tables, and the rest turns them by d < 2^-13: that correction needs no more than a double's digits.
inline Root rootOfUnity(uint64_t num, uint64_t den) {
    uint64_t x = 8 * (num % den);   // in units of 1/(8 den) turn
    const bool lower = x >= 4 * den;
    if (lower) x = 8 * den - x;
    const bool left = x > 2 * den;
    if (left) x = 4 * den - x;
    const bool steep = x > den;
    if (steep) x = 2 * den - x;
    constexpr int kBits = 9 + RootTables::kDigit;
    const uint64_t scaled = x << (kBits - 3), upper = scaled / den;
    const double d = double(int64_t(scaled % den)) / double(int64_t(den)) * (6.283185307179586 / (1 << kBits));
    const double sin = d - d * d * d * (1.0 / 6), versed = d * d * (0.5 - d * d * (1.0 / 24));
    const WideRoot r = kRoots.of[0][upper >> RootTables::kDigit] * kRoots.of[1][upper & ((1 << RootTables::kDigit) - 1)];
    const double c = r.cos.hi + (r.cos.lo - (r.cos.hi * versed + r.sin.hi * sin)), s = r.sin.hi + (r.sin.lo + (r.cos.hi * sin - r.sin.hi * versed));
    const double re = steep ? s : c, im = steep ? c : s;
    return {left ? -re : re, lower ? im : -im};
}

}   // namespace tevs
