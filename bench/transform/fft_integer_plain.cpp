#include "transform/fft_integer_plain.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace plain {

template <class S, class F> void toFloat(const S* src, F* dst, int n) {
    for (int i = 0; i < n; ++i) dst[i] = F(src[i]);
}
template <class F, class D> void toInteger(const F* src, D* dst, int n, F factor) {
    // The largest float below a 32-bit bound: the bound itself would round up.
    constexpr F lo = F(std::numeric_limits<D>::min()), hi = sizeof(F) == 4 && sizeof(D) == 4 ? F(2147483520) : F(std::numeric_limits<D>::max());
    for (int i = 0; i < n; ++i) dst[i] = D(std::rint(std::min(std::max(src[i] * factor, lo), hi)));
}

template void toFloat(const int16_t*, float*, int);
template void toFloat(const int32_t*, float*, int);
template void toFloat(const int32_t*, double*, int);
template void toInteger(const float*, int16_t*, int, float);
template void toInteger(const float*, int32_t*, int, float);
template void toInteger(const double*, int32_t*, int, double);

}   // namespace plain
