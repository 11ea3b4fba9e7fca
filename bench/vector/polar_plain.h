#pragma once

#include "tevs.h"

namespace plain {

void arctan(const float* src, float* dst, int len);
void arctan(const double* src, double* dst, int len);
void magnitude(const Complex32f* src, float* dst, int len);
void magnitude(const Complex64f* src, double* dst, int len);
void magnitude(const Complex16s* src, int16_t* dst, int len);
void phase(const Complex32f* src, float* dst, int len);
void phase(const Complex64f* src, double* dst, int len);
void phase(const Complex16s* src, int16_t* dst, int len);
void power(const Complex32f* src, float* dst, int len);
void power(const Complex64f* src, double* dst, int len);
void power(const Complex16s* src, int16_t* dst, int len);
void cartesian(const float* magnitude, const float* phase, float* re, float* im, int len);
void cartesian(const double* magnitude, const double* phase, double* re, double* im, int len);

}   // namespace plain
