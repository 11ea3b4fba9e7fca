#include "vector/polar_sleef.h"

#include <immintrin.h>
#include <sleef.h>

#ifdef __AVX512F__
#define SLEEF_NS sleef512
#define OF_FLOAT(f, quality) Sleef_##f##f16_##quality
#define OF_DOUBLE(f, quality) Sleef_##f##d8_##quality
typedef __m512 Float;
typedef __m512d Double;
#else
#define SLEEF_NS sleef256
#define OF_FLOAT(f, quality) Sleef_##f##f8_##quality
#define OF_DOUBLE(f, quality) Sleef_##f##d4_##quality
typedef __m256 Float;
typedef __m256d Double;
#endif

namespace SLEEF_NS {
namespace {

template <class T> struct VectorOf { using V = Float; };
template <> struct VectorOf<double> { using V = Double; };

template <class T> auto load(const T* p) {
    typename VectorOf<T>::V v;
    __builtin_memcpy(&v, p, sizeof v);
    return v;
}
template <class T, class V> void store(T* p, V v) { __builtin_memcpy(p, &v, sizeof v); }

template <class T, class F> void each(T* dst, int len, F f) {
    constexpr int lanes = int(sizeof(typename VectorOf<T>::V) / sizeof(T));
    for (int n = 0; n < len; n += lanes) store(dst + n, f(n));
}
template <class T, class F> void eachCartesian(const T* m, const T* p, T* re, T* im, int len, F sincos) {
    constexpr int lanes = int(sizeof(typename VectorOf<T>::V) / sizeof(T));
    for (int n = 0; n < len; n += lanes) {
        const auto both = sincos(load(p + n));
        const auto magnitude = load(m + n);
        store(re + n, magnitude * both.y);
        store(im + n, magnitude * both.x);
    }
}

}   // namespace

#define UNARY(name, T, f)                                        \
    void name(const T* src, T* dst, int len) {                   \
        each(dst, len, [=](int n) { return f(load(src + n)); }); \
    }
#define BINARY(name, T, f)                                                  \
    void name(const T* a, const T* b, T* dst, T*, int len) {                \
        each(dst, len, [=](int n) { return f(load(a + n), load(b + n)); }); \
    }
#define CARTESIAN(name, T, f)                                          \
    void name(const T* m, const T* p, T* re, T* im, int len) {         \
        eachCartesian(m, p, re, im, len, [](auto v) { return f(v); }); \
    }
#define BOTH(kind, name, f, quality) kind(name, float, OF_FLOAT(f, quality)) kind(name, double, OF_DOUBLE(f, quality))

BOTH(UNARY, arctanU10, atan, u10)
BOTH(UNARY, arctanU35, atan, u35)
BOTH(BINARY, phaseU10, atan2, u10)
BOTH(BINARY, phaseU35, atan2, u35)
BOTH(BINARY, magnitudeU05, hypot, u05)
BOTH(BINARY, magnitudeU35, hypot, u35)
BOTH(CARTESIAN, cartesianU10, sincos, u10)
BOTH(CARTESIAN, cartesianU35, sincos, u35)

}   // namespace SLEEF_NS
