#pragma once

#include <complex>
#include <cstdint>

namespace plain {

void exp(const float* src, float* dst, int len);
void exp(const double* src, double* dst, int len);
void ln(const float* src, float* dst, int len);
void ln(const double* src, double* dst, int len);
void sqrt(const float* src, float* dst, int len);
void sqrt(const double* src, double* dst, int len);
void cubrt(const float* src, float* dst, int len);
void sqr(const float* src, float* dst, int len);
void sqrt(const std::complex<float>* src, std::complex<float>* dst, int len);
void sqr(const int16_t* src, int16_t* dst, int len, int scaleFactor);
void sqrt(const int16_t* src, int16_t* dst, int len, int scaleFactor);
void ln(const int32_t* src, int32_t* dst, int len, int scaleFactor);
void normalize(const float* src, float* dst, int len, float sub, float div);

}   // namespace plain
