// Payne and Hanek, Radian Reduction for Trigonometric Functions, ACM SIGNUM Newsletter 18 (1983): of the product phase * 2 / pi only the bits that decide
// its remainder modulo 4 are formed.
#include "core/angle.h"

#include <bit>
#include <cstdint>
#include <limits>

namespace tevs {
namespace {

// 2 / pi behind 64 zero bits, which a phase with a fraction reaches into: 1280 bits, as far as the largest double needs.
constexpr uint32_t kTwoOverPi[] = {0,          0,          0xa2f9836e, 0x4e441529, 0xfc2757d1, 0xf534ddc0, 0xdb629599, 0x3c439041, 0xfe5163ab,
                                   0xdebbc561, 0xb7246e3a, 0x424dd2e0, 0x06492eea, 0x09d1921c, 0xfe1deb1c, 0xb129a73e, 0xe88235f5, 0x2ebb4484,
                                   0xe99c7026, 0xb45f7e41, 0x3991d639, 0x835339f4, 0x9c845f8b, 0xbdf9283b, 0x1ff897ff, 0xde05980f, 0xef2f118b,
                                   0x5a0a6d1f, 0x6d367ecf, 0x27cb09b7, 0x4f463f66, 0x9e5fea2d, 0x7527bac7, 0xebe5f17b, 0x3d0739f7, 0x8a5292ea,
                                   0x6bfb5fb1, 0x1f8d5d08, 0x56033046, 0xfc7b6bab, 0xf0cfbc20, 0x9af4361d};

struct Split {
    double high, low;
};
// The upper 26 bits, and the rest: products of such halves are exact.
Split split(double x) {
    const double high = std::bit_cast<double>(std::bit_cast<uint64_t>(x) & ~uint64_t{0x7ffffff});
    return {high, x - high};
}

}   // namespace

int reducePhase(double phase, double* r) {
    const uint64_t bits = std::bit_cast<uint64_t>(phase);
    const int exponent = int(bits >> 52 & 0x7ff) - 1075;   // phase = m * 2^exponent
    if (exponent == 0x7ff - 1075) {
        r[0] = r[1] = std::numeric_limits<double>::quiet_NaN();
        return 0;
    }
    const uint64_t m = (bits & 0xfffffffffffff) | 0x10000000000000;

    // Bits of 2 / pi of weight 2^(2-exponent) and above contribute multiples of 4. The next 192, b, leave m * b * 2^-190 modulo 4, off by 2^-137; no double is nearer than
    // 2^-62 of itself to a multiple of pi / 2 (Kahan; Muller, Elementary Functions, ch. 11).
    constexpr int kLimbs = 6;
    const int first = exponent - 2 + 64;
    uint32_t f[kLimbs];   // m * b modulo 2^192, the least significant limb first
    uint64_t carry[2] = {};
    uint32_t below = 0;
    for (int i = 0; i < kLimbs; ++i) {
        const int at = first + 32 * (kLimbs - 1 - i), shift = at % 32;
        const uint64_t pair = uint64_t{kTwoOverPi[at / 32]} << 32 | kTwoOverPi[at / 32 + 1];
        const uint32_t b = uint32_t(pair >> (32 - shift));
        const uint64_t low = (m & 0xffffffff) * b + carry[0], sum = (low & 0xffffffff) + (m >> 32) * below + carry[1];
        carry[0] = low >> 32;
        carry[1] = sum >> 32;
        f[i] = uint32_t(sum);
        below = b;
    }

    // To the nearest quarter: the fraction that remains is in -1/2 .. 1/2, as sign and magnitude.
    const int quarter = int((f[5] + 0x20000000u) >> 30) & 3;
    f[5] -= uint32_t(quarter) << 30;
    const bool negative = f[5] >> 31;
    uint32_t borrow = negative;
    for (uint32_t& limb : f) {
        limb = negative ? ~limb + borrow : limb;
        borrow = borrow && limb == 0;
    }

    int top = kLimbs - 1;
    while (top > 2 && f[top] == 0) --top;
    const auto limb = [&](int i) { return i < 0 ? 0u : f[i]; };
    const int up = std::countl_zero(f[top]);
    const auto word = [&](int i) { return uint32_t((uint64_t{limb(i)} << 32 | limb(i - 1)) << up >> 32); };
    const uint64_t head = uint64_t{word(top)} << 32 | word(top - 1), tail = uint64_t{word(top - 2)} << 32 | word(top - 3);
    const double unit = std::bit_cast<double>(uint64_t(1023 + 32 * (top + 1) - up - 190 - 53) << 52);
    // Both are made of 53 bits, which the conversion takes over as they are in any mode.
    const double high = double(int64_t(head >> 11)) * unit;
    const double low = double(int64_t((head & 0x7ff) << 42 | tail >> 22)) * 0x1p-53 * unit;

    // Times pi / 2, in two parts (Dekker).
    constexpr double kHalfPi = 0x1.921fb54442d18p+0, kHalfPiLow = 0x1.1a62633145c07p-54;
    const Split x = split(high), p = split(kHalfPi);
    const double product = high * kHalfPi;
    const double error = ((x.high * p.high - product) + x.high * p.low + x.low * p.high) + x.low * p.low;
    const double rest = error + (high * kHalfPiLow + low * kHalfPi);
    const double sum = product + rest, sumLow = (product - sum) + rest;
    r[0] = negative ? -sum : sum;
    r[1] = negative ? -sumLow : sumLow;
    return quarter;
}

}   // namespace tevs
