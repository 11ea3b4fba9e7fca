// Results never follow the caller's rounding mode, and the caller's mode is never changed.
#pragma once

#include <pmmintrin.h>
#include <stdint.h>

namespace tevs {

// Rounding to nearest, ties to even, for the length of a scope. Stands after the checks of every export whose results are rounded.
class NearestRounding {
public:
    NearestRounding() {
        if (!isNearest()) [[unlikely]]
            set();
    }
    ~NearestRounding() {
        if (before_) [[unlikely]]
            _mm_setcsr(before_);
    }
    NearestRounding(const NearestRounding&) = delete;
    NearestRounding& operator=(const NearestRounding&) = delete;

private:
    // 1 + 2^-30 and 1 - 2^-30 both round to 1 in this mode and in no other. Two additions beside the call's other work; reading the
    // control word instead costs 3 ns a call, as much as adding two short vectors. The statements keep their place because they are volatile.
    static bool isNearest() {
        float one = 1.0f, tiny = 0x1p-30f;
        asm volatile("" : "+x"(one), "+x"(tiny));
        float above = one + tiny, below = one - tiny;
        asm volatile("" : "+x"(above), "+x"(below));
        return above == below;
    }
    void set() {
        before_ = _mm_getcsr();
        _mm_setcsr(before_ & ~uint32_t{_MM_ROUND_MASK | _MM_DENORMALS_ZERO_MASK});
    }

    uint32_t before_ = 0;   // the caller's word where it was changed; its rounding field is not 0 then
};

// The same for long double, whose mode, and number of digits, stand in a control word of their own.
class NearestExtended {
public:
    NearestExtended() {
        asm volatile("fnstcw %0" : "=m"(before_));
        const uint16_t wanted = uint16_t((before_ & ~kRoundAndPrecision) | kNearest64);
        if (wanted != before_) asm volatile("fldcw %0" : : "m"(wanted));
    }
    ~NearestExtended() {
        if ((before_ & kRoundAndPrecision) != kNearest64) asm volatile("fldcw %0" : : "m"(before_));
    }
    NearestExtended(const NearestExtended&) = delete;
    NearestExtended& operator=(const NearestExtended&) = delete;

private:
    static constexpr uint16_t kRoundAndPrecision = 0x0f00, kNearest64 = 0x0300;
    uint16_t before_;
};

}   // namespace tevs
