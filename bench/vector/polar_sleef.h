// SLEEF's vector functions over vectors, in 256 and in 512 bits: polar_sleef.cpp is compiled once for each. Lengths are multiples of 16.
#pragma once

#define SLEEF_UNARY(name)                             \
    void name(const float* src, float* dst, int len); \
    void name(const double* src, double* dst, int len);
#define SLEEF_BINARY(name)                                                         \
    void name(const float* a, const float* b, float* dst, float* unused, int len); \
    void name(const double* a, const double* b, double* dst, double* unused, int len);
#define SLEEF_SET              \
    SLEEF_UNARY(arctanU10)     \
    SLEEF_UNARY(arctanU35)     \
    SLEEF_BINARY(phaseU10)     \
    SLEEF_BINARY(phaseU35)     \
    SLEEF_BINARY(magnitudeU05) \
    SLEEF_BINARY(magnitudeU35) \
    SLEEF_BINARY(cartesianU10) \
    SLEEF_BINARY(cartesianU35)

namespace sleef256 {
SLEEF_SET
}
namespace sleef512 {
SLEEF_SET
}
