#pragma once

#include <cstdint>

namespace plain {

struct Packed24 {
    uint8_t bytes[3];
};   // signed

// Unscaled, to a type that holds the value or its nearest float.
template <class S, class D> void convert(const S* src, D* dst, int len);
// src * 2^-shift, to nearest, ties to even, saturated.
template <class S, class D> void narrow(const S* src, D* dst, int len, int shift);
// src * factor, to nearest, saturated.
template <class S, class D> void round(const S* src, D* dst, int len, S factor);

void unpack(const Packed24* src, int32_t* dst, int len);
void unpack(const Packed24* src, float* dst, int len);
void pack(const int32_t* src, Packed24* dst, int len, int shift);
void pack(const float* src, Packed24* dst, int len, float factor);

void join(const float* const* src, int nChannels, int chanLen, int16_t* dst, float factor);
void split(const int16_t* src, float* const* dst, int nChannels, int chanLen, float factor);

}   // namespace plain
