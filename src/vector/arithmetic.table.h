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

// The largest magnitude of an operation's exact results.
template <class T> constexpr uint64_t kMostDifference = ~uint64_t{0} >> (64 - 8 * sizeof(T));
template <class T> constexpr uint64_t kMost = T(-1) < T(0) ? uint64_t{1} << (8 * sizeof(T) - 1) : kMostDifference<T>;   // of a single element
template <class T> constexpr uint64_t kMostSum = 2 * kMost<T>;
template <class A, class B = A> constexpr uint64_t kMostProduct = kMost<A>* kMost<B>;
template <class T> constexpr uint64_t kMostComplexProduct = 2 * kMostProduct<T>;
template <class A, class D> constexpr uint64_t kMostAddProduct = kMostProduct<A> + kMost<D>;

// A kernel with a scale factor s, whose exact results are Most at most in magnitude. kLast is the largest s at which not all of them round to 0: as long as
// 2^(s-1) < Most, since the tie Most * 2^-s = 1/2 goes to 0.
template <uint64_t Most, class Kernel> struct UpTo {
    Kernel* kernel;
    static constexpr int kLast = 64 - __builtin_clzll(Most - 1);
};
static_assert(UpTo<kMostSum<uint8_t>, void>::kLast == 9 && UpTo<kMostSum<int16_t>, void>::kLast == 16 && UpTo<kMostDifference<uint8_t>, void>::kLast == 8);
static_assert(UpTo<kMostProduct<int32_t>, void>::kLast == 62 && UpTo<kMostComplexProduct<int32_t>, void>::kLast == 63);

// Of one type. A complex vector is added to and subtracted from as the vector of its parts.
template <class T> struct ScaledKernels {
    UpTo<kMostSum<T>, ScaledBinary<T>> add;
    UpTo<kMostDifference<T>, ScaledBinary<T>> sub;
    UpTo<kMostProduct<T>, ScaledBinary<T>> mul;
    UpTo<kMostSum<T>, ScaledWithConstant<T>> addC;
    UpTo<kMostDifference<T>, ScaledWithConstant<T>> subC, subCRev;
    UpTo<kMostProduct<T>, ScaledWithConstant<T>> mulC;
};

struct ArithmeticKernels {
    ScaledKernels<uint8_t> scaled8u;
    ScaledKernels<uint16_t> scaled16u;
    ScaledKernels<int16_t> scaled16s;
    ScaledKernels<int32_t> scaled32s;
    UpTo<kMostComplexProduct<int16_t>, ScaledBinary<int16_t>> mul16sc;
    UpTo<kMostComplexProduct<int32_t>, ScaledBinary<int32_t>> mul32sc;
    UpTo<kMostComplexProduct<int16_t>, ScaledWithConstant<int16_t>> mulC16sc;
    UpTo<kMostComplexProduct<int32_t>, ScaledWithConstant<int32_t>> mulC32sc;
    UpTo<kMostProduct<int32_t>, ScaledBinary<int32_t>> mul32s32sc;   // counts complex elements
    UpTo<kMostProduct<uint16_t, int16_t>, ScaledBinary<uint16_t, int16_t>> mul16u16s;
    UpTo<kMostProduct<int16_t>, ScaledBinary<int16_t, int16_t, int32_t>> mul16s32s;
    UpTo<kMostAddProduct<int16_t, int16_t>, ScaledBinary<int16_t>> addProduct16s;
    UpTo<kMostAddProduct<int32_t, int32_t>, ScaledBinary<int32_t>> addProduct32s;
    UpTo<kMostAddProduct<int16_t, int32_t>, ScaledBinary<int16_t, int16_t, int32_t>> addProduct16s32s;

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
