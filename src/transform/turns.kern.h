// Cosines and sines of whole parts of a turn, as the compiler computes them.
#pragma once

#include "core/simd/level.h"

namespace tevs::TEVS_LEVEL_NS {
namespace {

// cos(2 pi num / den), rounded to double from series in extended precision over the first octant.
constexpr double turnCos(int num, int den) {
    num %= den;
    if (num < 0) num += den;
    if (2 * num > den) num = den - num;
    if (4 * num > den) return -turnCos(den - 2 * num, 2 * den);
    constexpr long double kTurn = 6.28318530717958647692528676655900577L;
    const bool isSine = 8 * num > den;
    const long double x = isSine ? kTurn * (den - 4 * num) / (4 * den) : kTurn * num / den;
    long double sum = 0, term = isSine ? x : 1;
    for (int i = isSine ? 2 : 1; i < 28; i += 2) {
        sum += term;
        term *= -x * x / (i * (i + 1));
    }
    return double(sum);
}
constexpr double turnSin(int num, int den) { return turnCos(4 * num - den, 4 * den); }

// Of N parts.
template <int N> struct Turns {
    double cos[N], sin[N];
    constexpr Turns() : cos(), sin() {
        for (int k = 0; k < N; ++k) {
            cos[k] = turnCos(k, N);
            sin[k] = turnSin(k, N);
        }
    }
};
template <int N> constexpr Turns<N> kTurns;
static_assert(turnCos(1, 4) == 0 && turnSin(1, 4) == 1 && turnCos(1, 3) == -0.5 && turnSin(1, 12) == 0.5 && turnCos(1, 8) == 0.70710678118654752440 &&
              turnSin(5, 7) == -0.974927912181823607018);

}   // namespace
}   // namespace tevs::TEVS_LEVEL_NS
