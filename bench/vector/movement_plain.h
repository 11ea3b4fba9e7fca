#pragma once

#include <cstddef>
#include <cstdint>

#include "tevs.h"

namespace plain {

void set(float val, float* dst, int len);
void flip(const uint8_t* src, uint8_t* dst, int len);
void flip(const float* src, float* dst, int len);
void swapBytes16(const uint16_t* src, uint16_t* dst, int len);
void swapBytes24(const uint8_t* src, uint8_t* dst, int len);
void swapBytes32(const uint32_t* src, uint32_t* dst, int len);
void real(const Complex16s* src, int16_t* dst, int len);
void split(const Complex32f* src, float* re, float* im, int len);
void join(const float* re, const float* im, Complex32f* dst, int len);
void conj(const Complex32f* src, Complex32f* dst, int len);
void conjFlip(const Complex32f* src, Complex32f* dst, int len);
void bitAnd(const uint32_t* a, const uint32_t* b, uint32_t* dst, int len);
void left(const uint8_t* src, int count, uint8_t* dst, int len);
void right(const int16_t* src, int count, int16_t* dst, int len);

}   // namespace plain
