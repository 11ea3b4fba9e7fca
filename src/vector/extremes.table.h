#pragma once

#include <stdint.h>

#include "core/simd/dispatch.h"

namespace tevs {

// What is found goes to the pointers, after all of src has been read. An index is that of the first of equals.
template <class T> struct OneExtreme {
    void (*value)(const T* src, int len, T* value);
    void (*place)(const T* src, int len, T* value, int* index);
};
template <class T> struct TwoExtremes {
    void (*value)(const T* src, int len, T* min, T* max);
    void (*place)(const T* src, int len, T* min, int* minIndex, T* max, int* maxIndex);
};

struct ExtremesKernels {
    OneExtreme<int16_t> max16s, min16s;
    OneExtreme<int32_t> max32s, min32s;
    OneExtreme<float> max32f, min32f;
    OneExtreme<double> max64f, min64f;
    TwoExtremes<uint8_t> minMax8u;
    TwoExtremes<uint16_t> minMax16u;
    TwoExtremes<int16_t> minMax16s;
    TwoExtremes<uint32_t> minMax32u;
    TwoExtremes<int32_t> minMax32s;
    TwoExtremes<float> minMax32f;
    TwoExtremes<double> minMax64f;
    // The largest of -|x|, where -|INT_MIN| is INT_MIN.
    int16_t (*nearest16s)(const int16_t* src, int len);
    int32_t (*nearest32s)(const int32_t* src, int len);
    // The largest magnitude; NaN where an element is not finite.
    float (*magnitude32f)(const float* src, int len);
    double (*magnitude64f)(const double* src, int len);
    void (*maxEvery16s)(const int16_t* src, int16_t* srcDst, int len);
    void (*maxEvery32s)(const int32_t* src, int32_t* srcDst, int len);
    void (*maxEvery32f)(const float* src, float* srcDst, int len);
    void (*minEvery16s)(const int16_t* src, int16_t* srcDst, int len);
    void (*minEvery32s)(const int32_t* src, int32_t* srcDst, int len);
    void (*minEvery32f)(const float* src, float* srcDst, int len);
};

}   // namespace tevs

TEVS_KERNEL_TABLE(ExtremesKernels, extremes, 2)
