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

// The same for arithmetic in 80-bit extended precision, and for the conversions that a 32-bit build makes by way of it: to nearest, with all 64 bits.
// What is computed in the scope has to come from memory and go to memory, which the changes of the control word are ordered with.
class NearestExtended {
public:
    NearestExtended() {
        asm volatile("fnstcw %0" : "=m"(before_));
        if ((before_ & kControl) != kExtended) [[unlikely]]
            load(uint16_t((before_ & ~kControl) | kExtended));
    }
    ~NearestExtended() {
        if ((before_ & kControl) != kExtended) [[unlikely]]
            load(before_);
    }
    NearestExtended(const NearestExtended&) = delete;
    NearestExtended& operator=(const NearestExtended&) = delete;

private:
    static constexpr int kControl = 0x0f00, kExtended = 0x0300;   // rounding in bits 10 and 11, precision in 8 and 9
    static void load(uint16_t word) { asm volatile("fldcw %0" : : "m"(word) : "memory"); }

    uint16_t before_;
};

// x rounded to nearest; in a 32-bit build by the extended unit, which has the only conversion of 64-bit integers.
template <class F> F toFloat(int64_t x) {
#ifdef __i386__
    NearestExtended guard;
    asm volatile("" : "+m"(x));   // the conversion keeps its place between the control words
    F y = F(x);
    asm volatile("" : "+m"(y));
    return y;
#else
    return F(x);
#endif
}

}   // namespace tevs
