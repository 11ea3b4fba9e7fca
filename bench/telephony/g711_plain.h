#pragma once

#include <cstdint>

namespace plain {

void aLaw(const int16_t* src, uint8_t* dst, int len);
void muLaw(const int16_t* src, uint8_t* dst, int len);
void aLaw(const float* src, uint8_t* dst, int len);
void muLaw(const float* src, uint8_t* dst, int len);

// dst[n] = table[src[n]]
template <class D> void lookUp(const uint8_t* src, D* dst, int len, const D* table);

}   // namespace plain
