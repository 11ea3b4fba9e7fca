// The loops that a caller would write, left to the compiler's vectoriser.
#include "vector/statistics_plain.h"

#include <algorithm>
#include <cmath>

namespace plain {
namespace {

template <class R, class T, class F> R total(const T* src, int len, F f) {
    R sum = 0;
    for (int n = 0; n < len; ++n) sum += f(R(src[n]));
    return sum;
}
constexpr auto same = [](auto x) { return x; };
constexpr auto magnitude = [](auto x) { return std::abs(x); };
constexpr auto square = [](auto x) { return x * x; };

template <class T> T largestOf(const T* src, int len) {
    T m = src[0];
    for (int n = 1; n < len; ++n) m = std::max(m, src[n]);
    return m;
}
template <class T> int largestAt(const T* src, int len) {
    int at = 0;
    for (int n = 1; n < len; ++n)
        if (src[n] > src[at]) at = n;
    return at;
}
template <class R, class T> R products(const T* a, const T* b, int len) {
    R sum = 0;
    for (int n = 0; n < len; ++n) sum += R(a[n]) * R(b[n]);
    return sum;
}
template <class R, class Part, class C> R complexProducts(const C* a, const C* b, int len) {
    R sum = {0, 0};
    for (int n = 0; n < len; ++n) {
        sum.re += Part(a[n].re) * Part(b[n].re) - Part(a[n].im) * Part(b[n].im);
        sum.im += Part(a[n].re) * Part(b[n].im) + Part(a[n].im) * Part(b[n].re);
    }
    return sum;
}

}   // namespace

float sum(const float* src, int len) { return total<float>(src, len, same); }
float sumExtended(const float* src, int len) { return float(total<long double>(src, len, same)); }
double sum(const double* src, int len) { return total<double>(src, len, same); }
int64_t sum(const int16_t* src, int len) { return total<int64_t>(src, len, same); }
int64_t sum(const int32_t* src, int len) { return total<int64_t>(src, len, same); }
float deviation(const float* src, int len) {
    float sum = 0, squares = 0;
    for (int n = 0; n < len; ++n) {
        sum += src[n];
        squares += src[n] * src[n];
    }
    return std::sqrt((float(len) * squares - sum * sum) / (float(len) * float(len - 1)));
}
float max(const float* src, int len) { return largestOf(src, len); }
int16_t max(const int16_t* src, int len) { return largestOf(src, len); }
void minMax(const float* src, int len, float* min, float* max) {
    float lo = src[0], hi = src[0];
    for (int n = 1; n < len; ++n) {
        lo = std::min(lo, src[n]);
        hi = std::max(hi, src[n]);
    }
    *min = lo;
    *max = hi;
}
int maxIndex(const float* src, int len) { return largestAt(src, len); }
int maxIndex(const int16_t* src, int len) { return largestAt(src, len); }
void maxEvery(const float* src, float* srcDst, int len) {
    for (int n = 0; n < len; ++n) srcDst[n] = std::max(src[n], srcDst[n]);
}
int order(const float* src, int len) {
    int e;
    std::frexp(largest(src, len), &e);
    return e;
}
float largest(const float* src, int len) {
    float m = 0;
    for (int n = 0; n < len; ++n) m = std::max(m, std::abs(src[n]));
    return m;
}
double sumAbs(const float* src, int len) { return total<double>(src, len, magnitude); }
int64_t sumAbs(const int16_t* src, int len) { return total<int64_t>(src, len, magnitude); }
double sumAbs(const Complex32f* src, int len) {
    double sum = 0;
    for (int n = 0; n < len; ++n) sum += std::sqrt(double(src[n].re) * src[n].re + double(src[n].im) * src[n].im);
    return sum;
}
double squares(const float* src, int len) { return total<double>(src, len, square); }
int64_t squares(const int16_t* src, int len) { return total<int64_t>(src, len, square); }
int64_t squaresOfDifference(const int16_t* a, const int16_t* b, int len) {
    int64_t sum = 0;
    for (int n = 0; n < len; ++n) sum += square(int64_t{a[n]} - b[n]);
    return sum;
}
double dot(const float* a, const float* b, int len) { return products<double>(a, b, len); }
double dot(const double* a, const double* b, int len) { return products<double>(a, b, len); }
int64_t dot(const int16_t* a, const int16_t* b, int len) {
    int64_t sum = 0;
    for (int n = 0; n < len; ++n) sum += a[n] * b[n];
    return sum;
}
int64_t dot(const int32_t* a, const int32_t* b, int len) { return products<int64_t>(a, b, len); }
Complex64f dot(const Complex32f* a, const Complex32f* b, int len) { return complexProducts<Complex64f, double>(a, b, len); }
Complex64f dot(const float* a, const Complex32f* b, int len) {
    Complex64f sum = {0, 0};
    for (int n = 0; n < len; ++n) {
        sum.re += double(a[n]) * b[n].re;
        sum.im += double(a[n]) * b[n].im;
    }
    return sum;
}
Complex64s dot(const Complex16s* a, const Complex16s* b, int len) { return complexProducts<Complex64s, int64_t>(a, b, len); }
int count(const int32_t* src, int len, int32_t lower, int32_t upper) {
    int count = 0;
    for (int n = 0; n < len; ++n) count += src[n] > lower && src[n] < upper;
    return count;
}
double sumLn(const float* src, int len) {
    double sum = 0;
    for (int n = 0; n < len; ++n) sum += std::log(double(src[n]));
    return sum;
}

}   // namespace plain
