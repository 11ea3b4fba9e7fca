#pragma once

#include <stdint.h>

#include "core/simd/dispatch.h"
#include "tevs/types.h"

namespace tevs {

// Of complex samples, and of their parts in two vectors.
template <class T, class Z, class D> struct FromParts {
    void (*complex)(const Z* src, D* dst, int len);
    void (*split)(const T* re, const T* im, D* dst, int len);
};
// The same for the scaled forms, with a power of two as a factor or as its exponent.
template <class T, class Z, class D, class Scale> struct ScaledFromParts {
    void (*complex)(const Z* src, D* dst, int len, Scale scale);
    void (*split)(const T* re, const T* im, D* dst, int len, Scale scale);
};

// The phase of x + i y times factor, a power of two, rounded to the nearest integer, ties to even, from extended precision: for the rare phase that double precision
// cannot tell from a tie.
double roundedPhase(double x, double y, double factor);

struct PolarKernels {
    void (*arctan32f)(const float* src, float* dst, int len);
    void (*arctan64f)(const double* src, double* dst, int len);

    FromParts<float, Complex32f, float> magnitude32f, phase32f, power32f;
    FromParts<double, Complex64f, double> magnitude64f, phase64f, power64f;
    FromParts<int16_t, Complex16s, float> magnitude16s32f, phase16s32f, power16s32f;
    ScaledFromParts<int16_t, Complex16s, int16_t, double> magnitude16s, phase16s;
    void (*phase32sc)(const Complex32s* src, int32_t* dst, int len, double factor);
    ScaledFromParts<int16_t, Complex16s, int16_t, int> power16s;   // times 2^-scale, for -16 <= scale <= 31

    void (*toPolar32fc)(const Complex32f* src, float* magnitude, float* phase, int len);
    void (*toPolar64fc)(const Complex64f* src, double* magnitude, double* phase, int len);
    void (*toPolar16sc)(const Complex16s* src, int16_t* magnitude, int16_t* phase, int len, double factor);
    void (*toPolar32f)(const float* re, const float* im, float* magnitude, float* phase, int len);
    void (*toPolar64f)(const double* re, const double* im, double* magnitude, double* phase, int len);

    void (*toCart32fc)(const float* magnitude, const float* phase, Complex32f* dst, int len);
    void (*toCart64fc)(const double* magnitude, const double* phase, Complex64f* dst, int len);
    void (*toCart16sc)(const int16_t* magnitude, const int16_t* phase, Complex16s* dst, int len, double factor);
    void (*toCart32sc)(const int32_t* magnitude, const int32_t* phase, Complex32s* dst, int len);
    void (*toCart32f)(const float* magnitude, const float* phase, float* re, float* im, int len);
    void (*toCart64f)(const double* magnitude, const double* phase, double* re, double* im, int len);
};

}   // namespace tevs

TEVS_KERNEL_TABLE(PolarKernels, polar, 3, FMA)
