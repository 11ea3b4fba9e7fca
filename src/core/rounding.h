// Results never follow the caller's rounding mode or precision, and the caller's control words are never changed.
#pragma once

#include <pmmintrin.h>
#include <stdint.h>

#include <type_traits>

namespace tevs {

// Rounding to nearest, ties to even, for the length of a scope; all other bits of the control word stay as the caller has them, but for those in Cleared, which
// are cleared where the mode has to be changed. Orders calls and memory, and so guards kernels over vectors. Arithmetic on values
// in registers is not held in the scope: toNearest() is for that.
template <uint32_t Cleared> class Nearest {
public:
    Nearest() {
        if (!isNearest()) [[unlikely]]
            set();
    }
    ~Nearest() {
        if (before_) [[unlikely]]
            _mm_setcsr(before_);
    }
    Nearest(const Nearest&) = delete;
    Nearest& operator=(const Nearest&) = delete;

    // 1 + 2^-30 and 1 - 2^-30 both round to 1 in this mode and in no other. Two additions beside the call's other work; reading the
    // control word instead costs 3 ns a call, as much as adding two short vectors. The statements keep their place because they are volatile.
    static bool isNearest() {
        float one = 1.0f, tiny = 0x1p-30f;
        asm volatile("" : "+x"(one), "+x"(tiny));
        float above = one + tiny, below = one - tiny;
        asm volatile("" : "+x"(above), "+x"(below));
        return above == below;
    }

private:
    void set() {
        before_ = _mm_getcsr();
        _mm_setcsr(before_ & ~(uint32_t{_MM_ROUND_MASK} | Cleared));
    }

    uint32_t before_ = 0;   // the caller's word where it was changed; its rounding field is not 0 then
};
using NearestRounding = Nearest<0>;

// Makes a value known only from here on, and computed by now: a volatile statement that uses and changes it, which stays where it is among others. A pointer to data
// keeps its value, and what it points to is pinned: a pointer that comes out of a statement is taken by GCC to point to no local of the caller.
template <class T> void pin(T& value) {
    if constexpr (std::is_pointer_v<T> && !std::is_function_v<std::remove_pointer_t<T>>)
        asm volatile("" : : "rm"(value) : "memory");
    else if constexpr (std::is_integral_v<T> || std::is_enum_v<T> || std::is_pointer_v<T>)
        asm volatile("" : "+rm"(value));
    else if constexpr (std::is_same_v<T, float> || std::is_same_v<T, double>)
        asm volatile("" : "+xm"(value));
    else
        asm volatile("" : "+m"(value));
}

// f(values...) in the scope of a Guard. Everything that f computes with goes in through `values`, for f has no state, and comes out as its result or by way of pointers:
// nothing of it can be moved out of the scope.
template <class Guard, class F, class... V> auto guarded(F f, V... values) {
    static_assert(std::is_empty_v<F> || std::is_pointer_v<F>, "a captured value would not be pinned");
    const Guard guard;
    (pin(values), ...);
    if constexpr (std::is_void_v<decltype(f(values...))>) {
        f(values...);
        asm volatile("" : : : "memory");
    } else {
        auto result = f(values...);
        asm volatile("" : : : "memory");
        pin(result);
        return result;
    }
}

// f(values...) with results in single and double precision rounded to nearest. Where they are anyway there is nothing to hold in, and f may end the caller. The
// other way is kept out of line, so that frames stay small.
template <uint32_t Cleared, class F, class... V> [[gnu::noinline, gnu::cold]] auto inNearestMode(F f, V... values) {
    return guarded<Nearest<Cleared>>(f, values...);
}
template <uint32_t Cleared = 0, class F, class... V> auto toNearest(F f, V... values) {
    if (Nearest<Cleared>::isNearest()) [[likely]]
        return f(values...);
    return inNearestMode<Cleared>(f, values...);
}

// f(values...) with arithmetic in 80-bit extended precision, and the conversions that a 32-bit build makes by way of it, to nearest and with all 64 bits.
template <class F, class... V> auto inExtended(F f, V... values) {
    class Guard {
    public:
        Guard() {
            asm volatile("fnstcw %0" : "=m"(before_));
            if ((before_ & kControl) != kExtended) [[unlikely]]
                load(uint16_t((before_ & ~kControl) | kExtended));
        }
        ~Guard() {
            if ((before_ & kControl) != kExtended) [[unlikely]]
                load(before_);
        }

    private:
        enum { kControl = 0x0f00, kExtended = 0x0300 };   // rounding in bits 10 and 11, precision in 8 and 9
        static void load(uint16_t word) { asm volatile("fldcw %0" : : "m"(word) : "memory"); }

        uint16_t before_;
    };
    return guarded<Guard>(f, values...);
}

// x rounded to nearest; in a 32-bit build by the extended unit, which has the only conversion of 64-bit integers.
template <class F> F toFloat(int64_t x) {
#ifdef __i386__
    return inExtended([](int64_t y) { return F(y); }, x);
#else
    return F(x);
#endif
}

// One thread's control word in another, for the length of a scope: rounding mode, flush bits and masks.
class ControlWordOf {
public:
    explicit ControlWordOf(uint32_t word) : before_(_mm_getcsr()) { _mm_setcsr(word); }
    ~ControlWordOf() { _mm_setcsr(before_); }
    ControlWordOf(const ControlWordOf&) = delete;
    ControlWordOf& operator=(const ControlWordOf&) = delete;

private:
    uint32_t before_;
};

}   // namespace tevs
