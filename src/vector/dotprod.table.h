#pragma once

#include <stdint.h>

#include "core/simd/dispatch.h"
#include "tevs/types.h"

namespace tevs {

// high * 2^48 + low, where 0 <= low < 2^48.
struct WideSum {
    int64_t high, low;
    [[gnu::always_inline]] friend inline WideSum operator+(WideSum x, WideSum y) { return carried(x.high + y.high, x.low + y.low); }
    [[gnu::always_inline]] friend inline WideSum operator-(WideSum x, WideSum y) { return carried(x.high - y.high, x.low - y.low); }
    [[gnu::always_inline]] static inline WideSum carried(int64_t high, int64_t low) { return {high + (low >> 48), low & 0xffffffffffff}; }
};
struct ComplexWideSum {
    WideSum re, im;
};

// Sums of integers are exact, those of floats in double precision, or, for single-precision results, in single precision over blocks of them.
struct DotProdKernels {
    int64_t (*real16s)(const int16_t* a, const int16_t* b, int len);
    Complex64s (*mixed16s)(const int16_t* a, const Complex16s* b, int len);
    Complex64s (*complex16s)(const Complex16s* a, const Complex16s* b, int len);
    WideSum (*real32s)(const int32_t* a, const int32_t* b, int len);
    WideSum (*real16s32s)(const int16_t* a, const int32_t* b, int len);
    ComplexWideSum (*mixed32s)(const int32_t* a, const Complex32s* b, int len);
    ComplexWideSum (*complex32s)(const Complex32s* a, const Complex32s* b, int len);
    double (*real32f)(const float* a, const float* b, int len);
    Complex64f (*mixed32f)(const float* a, const Complex32f* b, int len);
    Complex64f (*complex32f)(const Complex32f* a, const Complex32f* b, int len);
    double (*single32f)(const float* a, const float* b, int len);
    Complex64f (*singleMixed32f)(const float* a, const Complex32f* b, int len);
    Complex64f (*singleComplex32f)(const Complex32f* a, const Complex32f* b, int len);
    double (*real64f)(const double* a, const double* b, int len);
    Complex64f (*mixed64f)(const double* a, const Complex64f* b, int len);
    Complex64f (*complex64f)(const Complex64f* a, const Complex64f* b, int len);
};

}   // namespace tevs

TEVS_KERNEL_TABLE(DotProdKernels, dotProd, 2, FMA)
