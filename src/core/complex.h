// Complex samples as numbers, and the parts of samples that are real or complex.
//
// Kernels use them too, so the functions are always inlined: no copy of one, compiled at some level, is left for the linker to choose.
#pragma once

#include <stddef.h>

#include "tevs/types.h"

namespace tevs {

template <class T> struct PartsOf {
    using Scalar = T;
    static constexpr int count = 1;
};
template <class T>
requires requires(T z) { z.re; }
struct PartsOf<T> {
    using Scalar = decltype(T::re);
    static constexpr int count = 2;
};
// What a sample is made of, and of how many.
template <class T> using Scalar = typename PartsOf<T>::Scalar;
template <class T> constexpr int kParts = PartsOf<T>::count;
template <class T> constexpr bool kComplex = kParts<T> == 2;

// A vector of n samples is one of partCount<T>(n) scalars.
template <class T> [[gnu::always_inline]] inline const Scalar<T>* partsOf(const T* p) { return reinterpret_cast<const Scalar<T>*>(p); }
template <class T> [[gnu::always_inline]] inline Scalar<T>* partsOf(T* p) { return reinterpret_cast<Scalar<T>*>(p); }
template <class T> [[gnu::always_inline]] inline ptrdiff_t partCount(int n) { return ptrdiff_t{kParts<T>} * n; }

// f of each part.
template <class D, class S, class F> [[gnu::always_inline]] inline D eachPart(S x, F f) {
    if constexpr (kComplex<S>)
        return {f(x.re), f(x.im)};
    else
        return f(x);
}

template <class T> [[gnu::always_inline]] inline T sumOf(T x, T y) {
    if constexpr (kComplex<T>)
        return {x.re + y.re, x.im + y.im};
    else
        return x + y;
}
template <class T> [[gnu::always_inline]] inline T productOf(T x, T y) {
    if constexpr (kComplex<T>)
        return {x.re * y.re - x.im * y.im, x.re * y.im + x.im * y.re};
    else
        return x * y;
}

}   // namespace tevs
