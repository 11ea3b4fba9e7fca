#pragma once

#include <cstdint>

#include "tevs.h"

namespace plain {

float sum(const float* src, int len);
float sumExtended(const float* src, int len);
double sum(const double* src, int len);
int64_t sum(const int16_t* src, int len);
int64_t sum(const int32_t* src, int len);
float deviation(const float* src, int len);
float max(const float* src, int len);
int16_t max(const int16_t* src, int len);
void minMax(const float* src, int len, float* min, float* max);
int maxIndex(const float* src, int len);
int maxIndex(const int16_t* src, int len);
void maxEvery(const float* src, float* srcDst, int len);
int order(const float* src, int len);
float largest(const float* src, int len);
double sumAbs(const float* src, int len);
int64_t sumAbs(const int16_t* src, int len);
double sumAbs(const Complex32f* src, int len);
double squares(const float* src, int len);
int64_t squares(const int16_t* src, int len);
int64_t squaresOfDifference(const int16_t* a, const int16_t* b, int len);
double dot(const float* a, const float* b, int len);
double dot(const double* a, const double* b, int len);
int64_t dot(const int16_t* a, const int16_t* b, int len);
int64_t dot(const int32_t* a, const int32_t* b, int len);
Complex64f dot(const Complex32f* a, const Complex32f* b, int len);
Complex64f dot(const float* a, const Complex32f* b, int len);
Complex64s dot(const Complex16s* a, const Complex16s* b, int len);
int count(const int32_t* src, int len, int32_t lower, int32_t upper);
double sumLn(const float* src, int len);

}   // namespace plain
