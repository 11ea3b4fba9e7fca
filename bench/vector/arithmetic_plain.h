// The loops that a caller would write, left to the compiler's vectoriser.
#pragma once

#include "tevs.h"

namespace plain {

struct Sum {
    template <class W> W operator()(W a, W b) const { return a + b; }
};
struct Product {
    template <class W> W operator()(W a, W b) const { return a * b; }
};
struct Quotient {
    template <class W> W operator()(W a, W b) const { return b / a; }
};

template <class T, class Op> void binary(const T* a, const T* b, T* dst, int len);
// In W, which holds the exact result; to nearest, ties to even, saturated.
template <class T, class W, class Op> void scaled(const T* a, const T* b, T* dst, int len, int scaleFactor);
// In F, which holds the quotient well enough; 0 where the divisor is 0.
template <class T, class F> void divide(const T* a, const T* b, T* dst, int len, int scaleFactor);
template <class C, class W> void complexProduct(const C* a, const C* b, C* dst, int len, int scaleFactor);
template <class C> void complexProduct(const C* a, const C* b, C* dst, int len);
template <class C> void complexQuotient(const C* a, const C* b, C* dst, int len);
template <class T> void addProduct(const T* a, const T* b, T* dst, int len);
void abs(const int16_t* src, int16_t* dst, int len);

}   // namespace plain
