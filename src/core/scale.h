// Fixed point: the only code that rounds or saturates integers. Families bring the exact value in a type that holds it.
#pragma once

#include <stdint.h>

#include <limits>

namespace tevs {

// r clamped to D's range. W holds every value of D.
template <class D, class W> constexpr D saturate(W r) {
    constexpr W lo = std::numeric_limits<D>::min(), hi = std::numeric_limits<D>::max();
    return D(r < lo ? lo : r > hi ? hi : r);
}
static_assert(saturate<int16_t>(40000) == 32767 && saturate<int16_t>(-40000) == -32768 && saturate<uint8_t>(-1) == 0);

// r * 2^-s for s >= 1, to nearest, ties to even. The shift is arithmetic, so it holds for r < 0.
// W has a bit to spare over r: adding 2^(s-1) does not overflow.
template <class W> constexpr W roundShift(W r, int s) { return (r + (W{1} << (s - 1)) - 1 + ((r >> s) & 1)) >> s; }
static_assert(roundShift(3, 1) == 2 && roundShift(-3, 1) == -2 && roundShift(1, 1) == 0 && roundShift(-1, 1) == 0);
static_assert(roundShift(5, 1) == 2 && roundShift(510, 9) == 1);

// The same with no bit to spare.
template <class W> constexpr W roundShiftFull(W r, int s) {
    const W q = r >> s, half = W{1} << (s - 1);
    return q + ((r & half) != 0 && ((r & (half - 1)) != 0 || (q & 1) != 0));
}
static_assert(roundShiftFull(int64_t{INT64_MAX}, 1) == int64_t{1} << 62 && roundShiftFull(int64_t{INT64_MIN}, 63) == -1);

// r * 2^-scaleFactor under the rule of every _Sfs form: to nearest, ties to even, saturated to D. Any scaleFactor will do.
// Bits is the width of r's magnitude: from Bits + 1 on the right everything rounds to 0, and a left shift
// by as many bits as D has for magnitudes takes whatever is not 0 to a bound or beyond.
template <class D, int Bits, class W> constexpr D scaled(W r, int scaleFactor) {
    constexpr int kWidth = int(sizeof(W) * 8), kLeft = std::numeric_limits<D>::digits;
    static_assert(Bits < kWidth);
    if (scaleFactor > Bits) return 0;
    if (scaleFactor > 0) return saturate<D>(Bits <= kWidth - 2 ? roundShift(r, scaleFactor) : roundShiftFull(r, scaleFactor));
    if (scaleFactor == 0) return saturate<D>(r);
    constexpr W lo = std::numeric_limits<D>::min(), hi = std::numeric_limits<D>::max();
    const int left = scaleFactor < -kLeft ? kLeft : -scaleFactor;
    if (r > (hi >> left)) return D(hi);
    if (r < (lo >> left)) return D(lo);
    return D(r << left);
}
static_assert(scaled<int16_t, 17>(-65536, 16) == -1 && scaled<int16_t, 17>(-65536, 18) == 0 && scaled<int16_t, 17>(65535, 17) == 0);
static_assert(scaled<int16_t, 17>(-1, -16) == -32768 && scaled<int16_t, 17>(0, -40) == 0 && scaled<int16_t, 17>(1, -14) == 16384);

// 2^e, a normal number of T.
template <class T> constexpr T powerOfTwo(int e) {
    if constexpr (sizeof(T) == 4)
        return __builtin_bit_cast(float, uint32_t(e + 127) << 23);
    else
        return __builtin_bit_cast(double, uint64_t(e + 1023) << 52);
}

// 2^-scaleFactor as f * g, for floats that become integers of up to 32 bits. A non-zero float has a magnitude of 2^-149 to 2^128, so scales beyond +-190 change no
// result. The factor for such scales is out of a float's range: half of the exponent goes into each of two. A product that overflows between
// them saturates in the end, one that loses bits to underflow rounds to 0, and all others are exact.
struct ScaleFactors {
    float f, g;
    explicit ScaleFactors(int scaleFactor) {
        const int e = scaleFactor < -190 ? 190 : scaleFactor > 190 ? -190 : -scaleFactor;
        f = powerOfTwo<float>(e / 2);
        g = powerOfTwo<float>(e - e / 2);
    }
};

}   // namespace tevs
