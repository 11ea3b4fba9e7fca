#pragma once

#include <emmintrin.h>
#include <stddef.h>

#include "core/simd/dispatch.h"

namespace tevs {

// The bits are moved as they are, so one kernel serves all types of a width. The number in a name is that width in bits: of an element, and of a part
// where the elements are complex. Counts are elements.
struct MovementKernels {
    // The 16 bytes of pattern over and over: equal elements of 2, 4, 8 or 16 bytes (unit). The number of bytes is a multiple of unit.
    void (*fill)(__m128i pattern, int unit, void* dst, size_t bytes);
    // Elements in reversed order.
    void (*flip8)(const void* src, void* dst, ptrdiff_t n);
    void (*flip16)(const void* src, void* dst, ptrdiff_t n);
    void (*flip32)(const void* src, void* dst, ptrdiff_t n);
    void (*flip64)(const void* src, void* dst, ptrdiff_t n);
    // Bytes of each element in reversed order.
    void (*swap16)(const void* src, void* dst, ptrdiff_t n);
    void (*swap24)(const void* src, void* dst, ptrdiff_t n);
    void (*swap32)(const void* src, void* dst, ptrdiff_t n);
    void (*swap64)(const void* src, void* dst, ptrdiff_t n);
    // Complex elements: one part, both parts, from parts, from one part and zeros.
    void (*real16)(const void* src, void* dst, ptrdiff_t n);
    void (*real32)(const void* src, void* dst, ptrdiff_t n);
    void (*real64)(const void* src, void* dst, ptrdiff_t n);
    void (*imag16)(const void* src, void* dst, ptrdiff_t n);
    void (*imag32)(const void* src, void* dst, ptrdiff_t n);
    void (*imag64)(const void* src, void* dst, ptrdiff_t n);
    void (*split16)(const void* src, void* re, void* im, ptrdiff_t n);
    void (*split32)(const void* src, void* re, void* im, ptrdiff_t n);
    void (*split64)(const void* src, void* re, void* im, ptrdiff_t n);
    void (*join16)(const void* re, const void* im, void* dst, ptrdiff_t n);
    void (*join32)(const void* re, const void* im, void* dst, ptrdiff_t n);
    void (*join64)(const void* re, const void* im, void* dst, ptrdiff_t n);
    void (*onlyReal16)(const void* re, void* dst, ptrdiff_t n);
    void (*onlyReal32)(const void* re, void* dst, ptrdiff_t n);
    void (*onlyReal64)(const void* re, void* dst, ptrdiff_t n);
    void (*onlyImag16)(const void* im, void* dst, ptrdiff_t n);
    void (*onlyImag32)(const void* im, void* dst, ptrdiff_t n);
    void (*onlyImag64)(const void* im, void* dst, ptrdiff_t n);
    // Complex conjugates, in order and in reversed order: integer parts saturated, floating-point ones with the sign bit flipped.
    void (*conj16)(const void* src, void* dst, ptrdiff_t n);
    void (*conj32)(const void* src, void* dst, ptrdiff_t n);
    void (*conj64)(const void* src, void* dst, ptrdiff_t n);
    void (*conjFlip16)(const void* src, void* dst, ptrdiff_t n);
    void (*conjFlip32)(const void* src, void* dst, ptrdiff_t n);
    void (*conjFlip64)(const void* src, void* dst, ptrdiff_t n);
    // Complex elements to lower, and their conjugates in reversed order to upper. lower may be src, or lie above it by half an element.
    void (*unfold16)(const void* src, void* lower, void* upper, ptrdiff_t n);
    void (*unfold32)(const void* src, void* lower, void* upper, ptrdiff_t n);
    void (*unfold64)(const void* src, void* lower, void* upper, ptrdiff_t n);
    // n bytes of a bit string, most significant bit first, that starts at bit 1 to 7 of src: the string ends in src[n].
    void (*shiftBits)(const uint8_t* src, int bit, uint8_t* dst, ptrdiff_t n);
};

}   // namespace tevs

TEVS_KERNEL_TABLE(MovementKernels, movement, 2)
