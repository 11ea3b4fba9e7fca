#pragma once

#include <stdint.h>

#include "core/simd/dispatch.h"
#include "tevs/types.h"

namespace tevs {

// Kernels whose elements may be out of the function's domain return the warning of the first that is, in the order of the vector, or StatusOk.
template <class S, class D = S> using Plain = void(const S* src, D* dst, int len);
template <class S, class D = S> using Checked = Status(const S* src, D* dst, int len);

// Integers from the exact or nearly exact result times factor, a power of two: rounded to nearest, ties to even, saturated.
template <class S, class D = S> using Scaled = Status(const S* src, D* dst, int len, double factor);

// The same of functions that double precision cannot always tell from a tie: exact(x, factor) then gives the rounded value from extended precision.
using ExactElement = int32_t(double x, double factor);
template <class S, class D = S> using Careful = Status(const S* src, D* dst, int len, double factor, ExactElement* exact);

struct ElementaryKernels {
    Plain<float>* exp32f;
    Plain<double>* exp64f;
    Plain<float, double>* exp32f64f;
    Careful<int16_t>* exp16s;
    Careful<int32_t>* exp32s;

    Checked<float>* ln32f;
    Checked<double>* ln64f;
    Checked<double, float>* ln64f32f;
    Careful<int16_t>* ln16s;
    Careful<int32_t>* ln32s;
    Careful<int32_t, int16_t>* ln32s16s;
    Careful<int32_t>* decibel32s;   // 10 log10 x

    Checked<float>* sqrt32f;
    Checked<double>* sqrt64f;
    Plain<Complex32f>* sqrt32fc;
    Plain<Complex64f>* sqrt64fc;
    Scaled<uint8_t>* sqrt8u;
    Scaled<uint16_t>* sqrt16u;
    Scaled<int16_t>* sqrt16s;
    Scaled<int32_t, int16_t>* sqrt32s16s;
    Scaled<Complex16s>* sqrt16sc;

    Plain<float>* cubrt32f;
    Scaled<int32_t, int16_t>* cubrt32s16s;

    // (src - sub) * by; the integers' by holds the power of two as well.
    void (*normalize32f)(const float* src, float* dst, int len, float sub, float by);
    void (*normalize64f)(const double* src, double* dst, int len, double sub, double by);
    void (*normalize32fc)(const Complex32f* src, Complex32f* dst, int len, Complex32f sub, float by);
    void (*normalize64fc)(const Complex64f* src, Complex64f* dst, int len, Complex64f sub, double by);
    void (*normalize16s)(const int16_t* src, int16_t* dst, int len, int16_t sub, double by);
    void (*normalize16sc)(const Complex16s* src, Complex16s* dst, int len, Complex16s sub, double by);
};

}   // namespace tevs

TEVS_KERNEL_TABLE(ElementaryKernels, elementary, 3)
