// Roots of unity for the transforms' tables.
#pragma once

#include <math.h>
#include <stdint.h>

namespace tevs {

struct Root {
    double re, im;
};

// exp(-2 pi i * num / den) for den a power of two: the angle is folded into the first octant in integers, so sine and cosine are called where they are most
// accurate, multiples of an eighth turn come out exact or as sqrt(1/2), and mirrored entries agree to the bit.
inline Root unityRoot(uint64_t num, uint64_t den) {
    uint64_t x = 8 * (num % den);   // in units of 1/(8 den) turn
    const bool lower = x >= 4 * den;
    if (lower) x = 8 * den - x;
    const bool left = x > 2 * den;
    if (left) x = 4 * den - x;
    const bool steep = x > den;
    if (steep) x = 2 * den - x;
    const double angle = 6.283185307179586 * double(x) / (8.0 * double(den));
    double c = cos(angle), s = sin(angle);
    if (x == den) c = s = 0.70710678118654752440;
    const double re = steep ? s : c, im = steep ? c : s;
    return {left ? -re : re, lower ? im : -im};
}

}   // namespace tevs
