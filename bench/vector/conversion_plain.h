#pragma once

#include <cstdint>

namespace plain {

void convert(const int16_t* src, float* dst, int len);
void convert(const float* src, double* dst, int len);
void convert(const double* src, float* dst, int len);
void convertScaled(const float* src, int16_t* dst, int len, float factor);

}   // namespace plain
