#pragma once

#include <stddef.h>
#include <stdint.h>

#include "core/simd/dispatch.h"

namespace tevs {

// A constant as the lanes see it: of a real vector both are val, of a complex one its two parts.
template <class T> struct Constant { T even, odd; };

// The kinds of kernel. n counts the lanes of T: a complex vector has two for each element. Sources that are operands of a subtraction or division come in the
// order of the formula. Those that divide say whether a divisor was zero.
template <class T, class D = T> using Unary = void(const T* src, D* dst, ptrdiff_t n);
template <class A, class B = A, class D = B> using Binary = void(const A* a, const B* b, D* dst, ptrdiff_t n);
template <class T> using WithConstant = void(const T* src, Constant<T> c, T* dst, ptrdiff_t n);
template <class A, class B = A, class D = B> using ScaledBinary = void(const A* a, const B* b, D* dst, ptrdiff_t n, int scaleFactor);
template <class T> using ScaledWithConstant = void(const T* src, Constant<T> c, T* dst, ptrdiff_t n, int scaleFactor);
template <class A, class B = A> using Division = bool(const A* dividend, const B* divisor, B* dst, ptrdiff_t n);
template <class A, class B = A> using ScaledDivision = bool(const A* dividend, const B* divisor, B* dst, ptrdiff_t n, int scaleFactor);

struct ArithmeticKernels {
    ScaledBinary<uint8_t>*add8u, *sub8u, *mul8u;
    ScaledBinary<uint16_t>*add16u, *sub16u, *mul16u;
    ScaledBinary<int16_t>*add16s, *sub16s, *mul16s, *mul16sc, *addProduct16s;
    ScaledBinary<int32_t>*add32s, *sub32s, *mul32s, *mul32sc, *mul32s32sc, *addProduct32s;   // mul32s32sc counts complex elements
    ScaledBinary<uint16_t, int16_t>* mul16u16s;
    ScaledBinary<int16_t, int16_t, int32_t>*mul16s32s, *addProduct16s32s;

    ScaledWithConstant<uint8_t>*addC8u, *subC8u, *subCRev8u, *mulC8u;
    ScaledWithConstant<uint16_t>*addC16u, *subC16u, *subCRev16u, *mulC16u;
    ScaledWithConstant<int16_t>*addC16s, *subC16s, *subCRev16s, *mulC16s, *mulC16sc;
    ScaledWithConstant<int32_t>*addC32s, *subC32s, *subCRev32s, *mulC32s, *mulC32sc;

    Binary<uint32_t>* add32u;
    Binary<uint8_t, uint8_t, uint16_t>*add8u16u, *mul8u16u;
    Binary<int16_t, int16_t, float>*add16s32f, *sub16s32f, *mul16s32f;
    Binary<int16_t, int32_t>* add16s32s;

    Binary<float>*add32f, *sub32f, *mul32f, *mul32fc, *mulConj32fc, *mul32f32fc, *addProduct32f, *addProduct32fc;   // mul32f32fc counts complex elements
    Binary<double>*add64f, *sub64f, *mul64f, *mul64fc, *mulConj64fc, *addProduct64f, *addProduct64fc;
    WithConstant<float>*addC32f, *subC32f, *subCRev32f, *mulC32f, *mulC32fc, *addProductC32f;
    WithConstant<double>*addC64f, *subC64f, *subCRev64f, *mulC64f, *mulC64fc;
    // To the nearest integer, saturated: src * val, rounded to single precision, times f times g.
    void (*mulC32f16s)(const float* src, float val, int16_t* dst, ptrdiff_t n, float f, float g);

    Division<float>*div32f, *div32fc;
    Division<double>*div64f, *div64fc;
    bool (*divCRev32f)(const float* divisor, float dividend, float* dst, ptrdiff_t n);
    ScaledDivision<uint8_t>* div8u;
    ScaledDivision<uint16_t>* div16u;
    ScaledDivision<int16_t>*div16s, *div16sc;
    ScaledDivision<int32_t>* div32s;
    ScaledDivision<int32_t, int16_t>* div32s16s;
    ScaledWithConstant<uint8_t>* divC8u;   // the constant is not 0
    ScaledWithConstant<uint16_t>* divC16u;
    ScaledWithConstant<int16_t>*divC16s, *divC16sc;
    bool (*divCRev16u)(const uint16_t* divisor, uint16_t dividend, uint16_t* dst, ptrdiff_t n);

    Unary<float>* abs32f;
    Unary<double>* abs64f;
    Unary<int16_t>* abs16s;
    Unary<int32_t>* abs32s;
};

}   // namespace tevs

TEVS_KERNEL_TABLE(ArithmeticKernels, arithmetic, 2)
