#pragma once

#include <stdint.h>

#include "core/simd/dispatch.h"
#include "transform/fft.table.h"

namespace tevs {

// The samples that are transformed in T.
template <class T> struct IntegerOf;
template <> struct IntegerOf<float> { typedef int16_t type; };
template <> struct IntegerOf<double> { typedef int32_t type; };
template <class T> struct IntegerOf<const T> { typedef const typename IntegerOf<T>::type type; };

// Where complex integers lie, as Pairs and Parts of fft.table.h: read as T, and written rounded and saturated.
template <class T> struct IntegerPairs { typename IntegerOf<T>::type* p; };
template <class T> struct IntegerParts { typename IntegerOf<T>::type *re, *im; };

// The transforms that are one kernel in registers convert on the way in and out: nothing is stored between.
struct IntegerFftKernels {
    static constexpr int kOrders = 8;   // 1 to 7; null where the order is none of them
    template <class T, template <class> class Place> struct Directions { FftTransform<T, Place>*forward[kOrders], *inverse[kOrders]; };
    Directions<float, IntegerPairs> pairs16;
    Directions<float, IntegerParts> parts16;
    Directions<double, IntegerPairs> pairs32;
    Directions<double, IntegerParts> parts32;
};

}   // namespace tevs

TEVS_KERNEL_TABLE(IntegerFftKernels, integerFft, 3, FMA)
