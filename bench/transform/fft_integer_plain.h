// The conversions that a caller would write around a float transform, left to the compiler's vectoriser.
#pragma once

#include <cstdint>

namespace plain {

template <class S, class F> void toFloat(const S* src, F* dst, int n);
template <class F, class D> void toInteger(const F* src, D* dst, int n, F factor);   // to nearest, saturated

}   // namespace plain
