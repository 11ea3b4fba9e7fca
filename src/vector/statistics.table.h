#pragma once

#include <stdint.h>

#include "core/simd/dispatch.h"
#include "tevs/types.h"

namespace tevs {

// The same measure of src, and of a - b.
template <class T, class R> struct Measure {
    R (*one)(const T* src, int len);
    R (*difference)(const T* a, const T* b, int len);
};

// Sums of integers are exact; those of floats are of the type's own precision where nothing else is said, and differ in rounding between levels.
struct StatisticsKernels {
    int64_t (*sum16s)(const int16_t* src, int len);
    Complex64s (*sum16sc)(const Complex16s* src, int len);
    int64_t (*sum32s)(const int32_t* src, int len);
    float (*sum32f)(const float* src, int len);
    Complex32f (*sum32fc)(const Complex32f* src, int len);
    double (*sum64f)(const double* src, int len);
    Complex64f (*sum64fc)(const Complex64f* src, int len);
    float (*singleSquares32f)(const float* src, int len);
    double (*squaresAbout64f)(const double* src, int len, double mean);
    // Largest magnitude, sum of magnitudes, sum of squares; sums in double precision, but for those of blocks of single-precision reals. The largest magnitude of complex elements is given squared.
    Measure<int16_t, int32_t> largest16s;
    Measure<float, float> largest32f;
    Measure<double, double> largest64f;
    Measure<Complex32f, double> largest32fc;
    Measure<Complex64f, double> largest64fc;
    Measure<int16_t, int64_t> sum16sAbs;
    Measure<float, double> sum32fAbs;
    Measure<double, double> sum64fAbs;
    Measure<Complex32f, double> sum32fcAbs;
    Measure<Complex64f, double> sum64fcAbs;
    Measure<int16_t, int64_t> squares16s;
    Measure<float, double> squares32f;
    Measure<double, double> squares64f;
    Measure<Complex32f, double> squares32fc;
    Measure<Complex64f, double> squares64fc;
    int (*countInRange)(const int32_t* src, int len, int32_t lower, int32_t upper);
};

}   // namespace tevs

TEVS_KERNEL_TABLE(StatisticsKernels, statistics, 2, FMA)
